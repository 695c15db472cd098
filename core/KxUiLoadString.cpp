#include "KxUiLoadString.h"
#include <afxwin.h>
#include <cstdarg>

namespace KxUi {

const wchar_t emptyString[] = L"";

namespace {

// Directory of this library's own module, with a trailing backslash; empty if unknown.
CString libraryDirectory()
{
    HMODULE self = nullptr;
    if (!::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                              reinterpret_cast<LPCWSTR>(&libraryDirectory), &self))
        return CString();
    for (DWORD capacity = MAX_PATH;; capacity *= 2) {
        CString path;
        const DWORD length = ::GetModuleFileNameW(self, path.GetBuffer(capacity), capacity);
        path.ReleaseBuffer(length < capacity ? static_cast<int>(length) : 0);
        if (length == 0)
            return CString();
        if (length < capacity) {
            const int slash = path.ReverseFind(L'\\');
            return slash < 0 ? CString() : path.Left(slash + 1);
        }
    }
}

bool isPlainFileName(const wchar_t* name)
{
    return wcspbrk(name, L"\\/:") == nullptr;
}

} // namespace

HINSTANCE getHInstanceModuleRc(const wchar_t* baseName, const wchar_t* extension, const wchar_t* language)
{
    if (!baseName)
        return nullptr;
    if (!extension)
        extension = emptyString;

    // A language is part of the name only for language libraries (".kxx"); the test is on the
    // pointer, so an empty text passed by the caller still asks for "<base>U_.kxx".
    CString name(baseName);
    name += L'U';
    if (_wcsicmp(extension, L".kxx") == 0 && language != emptyString && language) {
        name += L'_';
        name += language;
    }
    name += extension;
    if (HMODULE loaded = ::GetModuleHandleW(name))
        return loaded;

    // The fall-back is loaded by full path from this library's directory: the search path
    // (current directory included) is never consulted, so a planted module is not loaded.
    if (!isPlainFileName(baseName))
        return nullptr;
    const CString directory = libraryDirectory();
    if (directory.IsEmpty())
        return nullptr;
    CString fallback = directory;
    fallback += baseName;
    fallback += L"rcU.dll";
    return ::LoadLibraryW(fallback);
}

HINSTANCE _getResourceHandle()
{
    if (HINSTANCE module = getHInstanceModuleRc(L"KxUiDll", L".dll", emptyString))
        return module;
    return AfxGetInstanceHandle();
}

} // namespace KxUi

namespace {

// Loads one string of `module` into `text` (left empty when the module or string is missing).
void loadFrom(HINSTANCE module, UINT id, CString& text)
{
    text.Empty();
    if (module && id)
        text.LoadString(module, id);
}

} // namespace

void KxUiLoadString::setId(UINT id)
{
    m_strText.Empty();
    m_nId = id;
}

const CString& KxUiLoadString::loadString()
{
    if (m_strText.IsEmpty())
        loadFrom(getHINSTANCE(), m_nId, m_strText);
    return m_strText;
}

const CString& KxUiLoadString::loadString(UINT id)
{
    setId(id);
    return loadString();
}

const CString& KxUiLoadString::format(const wchar_t* pattern, ...)
{
    setId(0);
    if (!pattern)
        return m_strText;

    va_list args;
    va_start(args, pattern);
    CString piece;
    for (const wchar_t* p = pattern; *p; ++p) {
        if (*p != L'%') {
            m_strText += *p;
            continue;
        }
        if (p[1] == L'\0')
            break;  // a "%" ending the pattern is dropped
        if (p[1] == L't') {
            const UINT id = va_arg(args, UINT);
            if (id == 0)
                break;
            loadFrom(getHINSTANCE(), id, piece);
            m_strText += piece;
            ++p;
            continue;
        }
        m_strText += L'%';  // the next character is copied on the next turn
    }
    va_end(args);
    return m_strText;
}

bool KxUiLoadString::operator==(KxUiLoadString& other)
{
    if (m_nId != 0 && other.m_nId != 0 && getHINSTANCE() == other.getHINSTANCE())
        return m_nId == other.m_nId;
    return loadString() == other.loadString();
}

namespace {

// The library's resource module: null until found, then kept for the process's life.
HINSTANCE s_hLibraryResources = nullptr;

} // namespace

HINSTANCE KxUiLoadStringWndRc::getHINSTANCE() const
{
    if (!s_hLibraryResources)
        s_hLibraryResources = KxUi::getHInstanceModuleRc(L"KxUiDll", L".dll", KxUi::emptyString);
    return s_hLibraryResources;
}

CString KxUiLoadStringWndRc::loadStringStatic(UINT id)
{
    KxUiLoadStringWndRc text(id);
    return text.loadString();
}
