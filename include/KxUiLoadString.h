// Resource modules found by name, and string objects that load their text lazily from them.
#pragma once
#include "KxUiDef.h"

namespace KxUi {

// The library's shared empty string. getHInstanceModuleRc tells "no language" by the
// identity of this pointer, not by the text.
extern KXUI_API const wchar_t emptyString[];

// Finds a resource module by name:
//   1. "<baseName>U<extension>", or "<baseName>U_<language>.kxx" for the extension ".kxx"
//      (any case) with a language other than emptyString, among the loaded modules;
//   2. otherwise loads "<baseName>rcU.dll" from the directory of KxUiDllU.dll itself (never
//      through the search path, so a module of that name planted elsewhere is not loaded).
// Null when neither exists. Nothing is cached; a module loaded in step 2 stays loaded.
KXUI_API HINSTANCE getHInstanceModuleRc(const wchar_t* baseName, const wchar_t* extension,
                                        const wchar_t* language = emptyString);

// The library's resource module, or else the current module's instance handle. Not cached.
KXUI_API HINSTANCE _getResourceHandle();

} // namespace KxUi

// A string resource identifier with its text, loaded at first use from getHINSTANCE().
class KXUI_API KxUiLoadString {
public:
    KxUiLoadString(UINT id = 0) : m_nId(id) {}
    KxUiLoadString(const KxUiLoadString& other) : m_nId(other.m_nId), m_strText(other.m_strText) {}
    KxUiLoadString& operator=(const KxUiLoadString& other)
    {
        m_nId = other.m_nId;
        m_strText = other.m_strText;
        return *this;
    }

    // The module the text is loaded from.
    virtual HINSTANCE getHINSTANCE() const = 0;

    // Forgets the loaded text and takes a new identifier.
    void setId(UINT id);
    UINT getId() const { return m_nId; }

    // The text, loaded if not loaded yet. A missing string stays empty and is looked for
    // again on the next call.
    const CString& loadString();
    const CString& loadString(UINT id);

    // Builds the text from `pattern`: "%t" takes the next argument (a UINT) as a string
    // identifier and appends that string; an identifier of 0 ends the text there. Any other
    // "%" is copied as it is, except a "%" ending the pattern, which is dropped. The
    // identifier becomes 0.
    const CString& format(const wchar_t* pattern, ...);

    operator const wchar_t*() { return loadString(); }

    // Same non-zero identifiers from the same module are equal without loading; otherwise
    // both texts are loaded and compared exactly.
    bool operator==(KxUiLoadString& other);
    bool operator!=(KxUiLoadString& other) { return !(*this == other); }

protected:
    UINT m_nId;          // 0 = none
    CString m_strText;   // empty = not loaded
};

// A string of the library's own resource module (KxUiDllU.dll, or KxUiDllrcU.dll beside it).
class KXUI_API KxUiLoadStringWndRc : public KxUiLoadString {
public:
    KxUiLoadStringWndRc(UINT id = 0) : KxUiLoadString(id) {}

    // The library's resource module, found at first use and kept; looked for again while
    // it is not found.
    HINSTANCE getHINSTANCE() const override;

    // One string of the library's resource module.
    static CString loadStringStatic(UINT id);
};
