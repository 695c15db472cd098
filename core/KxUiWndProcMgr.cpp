#include "KxUiWndProcMgr.h"
#include <afxwin.h>
#include <vector>

UINT TM_DETACH_WNDPROC = ::RegisterWindowMessageW(L"TM_DETACH_WNDPROC");

namespace {

// The manager while it exists. Hooks destroyed after it (static objects at process exit) and
// windows still subclassed then must not reach a destroyed object.
KxUiWndProcMgr* g_pLiveManager = nullptr;

} // namespace

KxUiWndProc::~KxUiWndProc()
{
    if (g_pLiveManager)
        g_pLiveManager->forget(this);
}

void KxUiWndProc::windowProcCallBack(HWND, UINT, WPARAM, LPARAM, LRESULT&)
{
}

KxUiWndProcMgr& kxUiWndProcMgr()
{
    static KxUiWndProcMgr manager;
    return manager;
}

// Counts one call of the manager's procedure running on a record; the last one to return
// carries out what detaching had to defer.
class KxUiWndProcMgr::PassGuard {
public:
    PassGuard(KxUiWndProcMgr& manager, KxUiWndsProc& record) : m_manager(manager), m_record(record)
    {
        ++m_record.m_nPasses;
    }
    ~PassGuard()
    {
        if (--m_record.m_nPasses == 0)
            m_manager.settle(&m_record);
    }
    PassGuard(const PassGuard&) = delete;
    PassGuard& operator=(const PassGuard&) = delete;

private:
    KxUiWndProcMgr& m_manager;
    KxUiWndsProc& m_record;
};

KxUiWndProcMgr::KxUiWndProcMgr() : m_mapWnds(10)
{
    g_pLiveManager = this;
}

KxUiWndProcMgr::~KxUiWndProcMgr()
{
    g_pLiveManager = nullptr;
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

void KxUiWndProcMgr::deleteHook(KxUiWndsProc* record, KxUiWndProc* hook)
{
    if (!hook || hook->m_nAutoDelete != 1)
        return;
    if (record->m_nPasses > 0)
        record->m_deferred.Add(hook);  // its windowProc may be on the stack right now
    else
        delete hook;
}

bool KxUiWndProcMgr::unhook(KxUiWndsProc* record)
{
    // Put back what was there at the first attach, even if someone subclassed the window
    // after the manager did: the manager's procedure must not outlive the record.
    if (::IsWindow(record->m_hWnd))
        ::SetWindowLongPtrW(record->m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(record->m_pfnPrevWndProc));

    // Unlinked and emptied before any hook is deleted, so a hook's destructor that attaches or
    // sends a detach message again meets a window in a consistent state, and a pass still
    // running on the record meets an empty array.
    const bool removed = m_mapWnds.RemoveKey(record->m_hWnd) != FALSE;
    record->m_bUnlinked = true;
    std::vector<KxUiWndProc*> hooks(record->GetData(), record->GetData() + record->GetCount());
    record->RemoveAll();
    const bool running = record->m_nPasses > 0;
    for (KxUiWndProc* hook : hooks)
        deleteHook(record, hook);
    if (!running)
        settle(record);
    return removed;
}

void KxUiWndProcMgr::settle(KxUiWndsProc* record)
{
    if (record->m_nPasses > 0)
        return;
    // Deleting a hook may run code that hooks again: take the list first.
    while (record->m_deferred.GetCount() > 0) {
        std::vector<KxUiWndProc*> hooks(record->m_deferred.GetData(),
                                        record->m_deferred.GetData() + record->m_deferred.GetCount());
        record->m_deferred.RemoveAll();
        for (KxUiWndProc* hook : hooks)
            delete hook;
    }
    if (record->m_bUnlinked)
        delete record;
}

bool KxUiWndProcMgr::detach(HWND hWnd)
{
    KxUiWndsProc* record = lookup(hWnd);
    if (!record || !record->m_hWnd)
        return false;
    return unhook(record);
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
            deleteHook(record, hook);
            return true;
        }
    }
    return false;
}

void KxUiWndProcMgr::forget(KxUiWndProc* hook)
{
    // The windows first: unhooking changes the map, which must not happen while walking it.
    std::vector<KxUiWndsProc*> holding;
    POSITION pos = m_mapWnds.GetStartPosition();
    while (pos) {
        HWND hWnd = nullptr;
        KxUiWndsProc* record = nullptr;
        m_mapWnds.GetNextAssoc(pos, hWnd, record);
        for (INT_PTR i = record->GetCount() - 1; i >= 0; --i) {
            if (record->GetAt(i) == hook) {
                holding.push_back(record);
                break;
            }
        }
    }
    for (KxUiWndsProc* record : holding) {
        for (INT_PTR i = record->GetCount() - 1; i >= 0; --i) {
            if (record->GetAt(i) == hook)
                record->RemoveAt(i);
        }
        // Only the hook going away leaves: the others stay, and the window is unhooked when it
        // was the last.
        if (record->GetCount() == 0)
            unhook(record);
    }
}

LRESULT KxUiWndProcMgr::dispatch(KxUiWndsProc* record, HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    // The hooks run with the module state of the code that first attached to the window,
    // restored on every way out, exceptions included.
    AFX_MAINTAIN_STATE2 moduleState(record->m_pModuleState);
    PassGuard before(*this, *record);

    // The record may be unlinked once detach has run; the window's procedure is called through this copy.
    const WNDPROC previous = record->m_pfnPrevWndProc;
    LRESULT result = 0;
    bool callWindow = true;

    // Before pass, newest hook first. Hooks removed under the running pass leave the index
    // outside the shortened (or emptied) array: an invalid argument, not something to skip.
    for (INT_PTR i = record->GetCount() - 1; i >= 0; --i) {
        if (i >= record->GetCount())
            AfxThrowInvalidArgException();
        if (record->GetAt(i)->windowProc(hWnd, message, wParam, lParam, result)) {
            callWindow = false;
            break;
        }
    }

    if (message == WM_NCDESTROY) {
        detach(hWnd);
    } else if (message == TM_DETACH_WNDPROC && TM_DETACH_WNDPROC != 0) {
        if (wParam)
            detach(hWnd, reinterpret_cast<KxUiWndProc*>(wParam));
        else
            detach(hWnd);
    }

    if (callWindow)
        result = ::CallWindowProcW(previous, hWnd, message, wParam, lParam);

    // After pass, again newest first; every hook is called. Skipped when the window has left.
    if (KxUiWndsProc* after = lookup(hWnd)) {
        PassGuard afterPass(*this, *after);
        for (INT_PTR i = after->GetCount() - 1; i >= 0; --i) {
            if (i >= after->GetCount())
                AfxThrowInvalidArgException();
            after->GetAt(i)->windowProcCallBack(hWnd, message, wParam, lParam, result);
        }
    }
    return result;
}

LRESULT CALLBACK KxUiWndProcMgr::_windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    KxUiWndProcMgr* manager = g_pLiveManager;
    KxUiWndsProc* record = manager ? manager->lookup(hWnd) : nullptr;
    if (!record)
        return 0;  // unhooked by someone else: nobody to pass the message to

    // The one exception fence of the manager: an exception must not unwind through the
    // system's message dispatch. Handled as the framework's own window procedure does.
    try {
        return manager->dispatch(record, hWnd, message, wParam, lParam);
    } catch (CException* e) {
        e->Delete();
    } catch (...) {
    }
    return message == WM_CREATE ? -1 : 0;
}
