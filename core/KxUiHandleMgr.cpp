#include "KxUiHandleMgr.h"

namespace {

// Takes a handle into one of the sorted arrays; null when refused.
template <class HANDLE_TYPE>
HANDLE_TYPE addHandle(KxArraySimple<HANDLE_TYPE>& array, HANDLE_TYPE handle)
{
    if (!handle)
        return nullptr;
    return array.insertSorted(handle) < 0 ? nullptr : handle;
}

template <class HANDLE_TYPE>
void freeHandles(KxArraySimple<HANDLE_TYPE>& array, bool (*freeOne)(HANDLE_TYPE))
{
    for (INT_PTR i = array.GetSize() - 1; i >= 0; --i)
        freeOne(array[i]);
    array.RemoveAll();
}

} // namespace

KxUiHandleMgr::KxUiHandleMgr()
    : m_arrayHICON(false), m_arrayHCURSOR(false), m_arrayHGDIOBJ(false), m_arrayHMODULE(true)
{
}

KxUiHandleMgr::~KxUiHandleMgr()
{
    free_All();
}

HICON KxUiHandleMgr::add_HICON(HICON hIcon) { return addHandle(m_arrayHICON, hIcon); }
HCURSOR KxUiHandleMgr::add_HCURSOR(HCURSOR hCursor) { return addHandle(m_arrayHCURSOR, hCursor); }
HGDIOBJ KxUiHandleMgr::add_HGDIOBJ(HGDIOBJ hObject) { return addHandle(m_arrayHGDIOBJ, hObject); }
HMODULE KxUiHandleMgr::add_HMODULE(HMODULE hModule) { return addHandle(m_arrayHMODULE, hModule); }

void KxUiHandleMgr::free_All()
{
    free_HICONs();
    free_HCURSORs();
    free_HGDIOBJs();
    free_HMODULEs();
}

void KxUiHandleMgr::free_HICONs() { freeHandles(m_arrayHICON, &_free_HICON); }
void KxUiHandleMgr::free_HCURSORs() { freeHandles(m_arrayHCURSOR, &_free_HCURSOR); }
void KxUiHandleMgr::free_HGDIOBJs() { freeHandles(m_arrayHGDIOBJ, &_free_HGDIOBJ); }
void KxUiHandleMgr::free_HMODULEs() { freeHandles(m_arrayHMODULE, &_free_HMODULE); }

bool KxUiHandleMgr::_free_HICON(HICON hIcon) { return hIcon && ::DestroyIcon(hIcon); }
bool KxUiHandleMgr::_free_HCURSOR(HCURSOR hCursor) { return hCursor && ::DestroyCursor(hCursor); }
bool KxUiHandleMgr::_free_HGDIOBJ(HGDIOBJ hObject) { return hObject && ::DeleteObject(hObject); }
bool KxUiHandleMgr::_free_HMODULE(HMODULE hModule) { return hModule && ::FreeLibrary(hModule); }

unsigned long KxUiHandleMgr::_countGDIObject(GUIObjectType type)
{
    if (type == GUI_GDI_OBJECTS) {
        const DWORD processId = ::GetCurrentProcessId();
        if (processId == 0) {
            ::OutputDebugStringW(L"WARNING : _countGDIObject, no current process\n");
            return 0;
        }
        HANDLE process = ::OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, processId);
        if (!process) {
            ::OutputDebugStringW(L"WARNING : _countGDIObject, process don't have right to count GDI Object\n");
            return 0;
        }
        const DWORD count = ::GetGuiResources(process, GR_GDIOBJECTS);
        ::CloseHandle(process);
        return count;
    }

    if (type == GUI_GDI_QUOTA) {
        HKEY key = nullptr;
        if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Windows\\",
                            0, KEY_READ, &key) != ERROR_SUCCESS)
            return 0;
        DWORD value = 0;
        DWORD valueType = REG_NONE;
        DWORD size = sizeof(value);
        const LONG status = ::RegQueryValueExW(key, L"GDIProcessHandleQuota", nullptr, &valueType,
                                               reinterpret_cast<BYTE*>(&value), &size);
        ::RegCloseKey(key);
        if (status != ERROR_SUCCESS)
            return 0;
        if (valueType != REG_DWORD && valueType != REG_DWORD_BIG_ENDIAN && valueType != REG_BINARY)
            return 0;
        return value;
    }
    return 0;
}
