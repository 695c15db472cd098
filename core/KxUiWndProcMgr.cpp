#include "KxUiWndProcMgr.h"
#include <afxwin.h>

UINT TM_DETACH_WNDPROC = ::RegisterWindowMessageW(L"TM_DETACH_WNDPROC");

KxUiWndProc::~KxUiWndProc() = default;

void KxUiWndProc::windowProcCallBack(HWND, UINT, WPARAM, LPARAM, LRESULT&)
{
}

KxUiWndProcMgr& kxUiWndProcMgr()
{
    static KxUiWndProcMgr manager;
    return manager;
}

KxUiWndProcMgr::KxUiWndProcMgr() : m_mapWnds(10)
{
}

KxUiWndProcMgr::~KxUiWndProcMgr()
{
    m_mapWnds.RemoveAll();
}

KxUiWndsProc* KxUiWndProcMgr::lookup(HWND hWnd)
{
    KxUiWndsProc* record = nullptr;
    return m_mapWnds.Lookup(hWnd, record) ? record : nullptr;
}

bool KxUiWndProcMgr::attach(HWND hWnd, KxUiWndProc* hook)
{
    if (!hook || !hWnd || !::IsWindow(hWnd))
        return false;

    if (KxUiWndsProc* record = lookup(hWnd)) {
        for (INT_PTR i = record->GetCount() - 1; i >= 0; --i) {
            if (record->GetAt(i) == hook)
                return false;
        }
        record->Add(hook);
        return true;
    }

    WNDPROC previous = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(hWnd, GWLP_WNDPROC));
    if (previous == &_windowProc)
        return false;  // subclassed by the manager but unknown to it: calling it would drop messages

    KxUiWndsProc* record = new KxUiWndsProc;
    record->m_pfnPrevWndProc = previous;
    record->m_hWnd = hWnd;
    record->m_pModuleState = AfxGetModuleState();
    record->Add(hook);
    m_mapWnds.SetAt(hWnd, record);

    ::SetLastError(0);
    if (!::SetWindowLongPtrW(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&_windowProc))
        && ::GetLastError() != 0) {
        // A window of another process cannot be subclassed.
        m_mapWnds.RemoveKey(hWnd);
        delete record;
        return false;
    }
    return true;
}

bool KxUiWndProcMgr::sendDetachMessage(HWND hWnd, KxUiWndProc* hook)
{
    return ::SendMessageW(hWnd, TM_DETACH_WNDPROC, reinterpret_cast<WPARAM>(hook), 0) != 0;
}

bool KxUiWndProcMgr::detach(HWND hWnd)
{
    KxUiWndsProc* record = lookup(hWnd);
    if (!record || !record->m_hWnd)
        return false;

    // Put back what was there at the first attach, even if someone subclassed the window
    // after the manager did: the manager's procedure must not outlive the record.
    ::SetWindowLongPtrW(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(record->m_pfnPrevWndProc));

    // Unlinked before any hook is deleted, so a hook's destructor that attaches or sends a
    // detach message again meets a window in a consistent state.
    const bool removed = m_mapWnds.RemoveKey(hWnd) != FALSE;
    for (INT_PTR i = 0; i < record->GetCount(); ++i) {
        KxUiWndProc* hook = record->GetAt(i);
        if (hook && hook->m_nAutoDelete == 1)
            delete hook;
    }
    delete record;
    return removed;
}

bool KxUiWndProcMgr::detach(HWND hWnd, KxUiWndProc* hook)
{
    KxUiWndsProc* record = lookup(hWnd);
    if (!record)
        return false;

    // A window with a single hook loses it whatever hook was named: the request means
    // "this window's hook goes", and the window is unhooked entirely.
    if (record->GetCount() == 1)
        return detach(hWnd);

    for (INT_PTR i = record->GetCount() - 1; i >= 0; --i) {
        if (record->GetAt(i) == hook) {
            record->RemoveAt(i);
            if (hook && hook->m_nAutoDelete == 1)
                delete hook;
            return true;
        }
    }
    return false;
}

LRESULT CALLBACK KxUiWndProcMgr::_windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    KxUiWndProcMgr& manager = kxUiWndProcMgr();
    KxUiWndsProc* record = manager.lookup(hWnd);
    if (!record)
        return 0;

    // The hooks run with the module state of the code that first attached to the window,
    // restored on every way out, exceptions included.
    AFX_MAINTAIN_STATE2 moduleState(record->m_pModuleState);

    // The record may be gone once detach has run; the window's procedure is called through this copy.
    const WNDPROC previous = record->m_pfnPrevWndProc;
    LRESULT result = 0;
    bool callWindow = true;

    // Before pass, newest hook first. Hooks removed under a running pass (a detach message
    // sent from inside a hook) can leave the index outside the array: that is an invalid
    // argument, not something to skip silently.
    for (INT_PTR i = record->GetCount() - 1; i >= 0; --i) {
        if (i >= record->GetCount())
            AfxThrowInvalidArgException();
        if (record->GetAt(i)->windowProc(hWnd, message, wParam, lParam, result)) {
            callWindow = false;
            break;
        }
    }

    if (message == WM_NCDESTROY) {
        manager.detach(hWnd);
    } else if (message == TM_DETACH_WNDPROC && TM_DETACH_WNDPROC != 0) {
        if (wParam)
            manager.detach(hWnd, reinterpret_cast<KxUiWndProc*>(wParam));
        else
            manager.detach(hWnd);
    }

    if (callWindow)
        result = ::CallWindowProcW(previous, hWnd, message, wParam, lParam);

    // After pass, again newest first; every hook is called. Skipped when the window has left.
    if (KxUiWndsProc* after = manager.lookup(hWnd)) {
        for (INT_PTR i = after->GetCount() - 1; i >= 0; --i) {
            if (i >= after->GetCount())
                AfxThrowInvalidArgException();
            after->GetAt(i)->windowProcCallBack(hWnd, message, wParam, lParam, result);
        }
    }
    return result;
}
