// Window-procedure manager: several hook objects share one subclassing of a window.
//
// A hook derives from KxUiWndProc and is attached with kxUiWndProcMgr().attach(hWnd, hook).
// The manager subclasses the window once and calls every hook of the window, newest first,
// before the window's own procedure (a hook may swallow the message) and again afterwards with
// the result. Hooks leave by message (sendDetachMessage, i.e. TM_DETACH_WNDPROC), so the
// removal runs inside the window's own message flow; all hooks leave on WM_NCDESTROY, and the
// window's previous procedure is put back when the last hook leaves.
//
//     class CSizeWatcher : public KxUiWndProc {
//         int windowProc(HWND, UINT msg, WPARAM, LPARAM lParam, LRESULT&) override
//         {
//             if (msg == WM_SIZE)
//                 OnContainerSized(LOWORD(lParam), HIWORD(lParam));
//             return 0;                          // let the window's own procedure run
//         }
//     };
//     kxUiWndProcMgr().attach(m_hWnd, &m_watcher);
//     ...
//     kxUiWndProcMgr().sendDetachMessage(m_hWnd, &m_watcher);
//
// Safety rules:
// - A hook that is destroyed while attached detaches itself from every window it is attached to
//   (~KxUiWndProc): the manager forgets it, and a window whose last hook that was gets its
//   procedure back at once. Deleting a hooked object before its window is therefore safe.
// - Hooks may destroy their window, send TM_DETACH_WNDPROC or send other messages to it from
//   inside windowProc or windowProcCallBack. A window's record, and the auto-delete hooks
//   detached from it, are kept alive until the outermost call of the manager's procedure
//   running on that record has returned, and only then deleted; a running pass never reads
//   freed memory.
// - When hooks are removed under a running pass, the pass's next index lies outside the
//   shortened array: that raises the framework's invalid-argument exception
//   (AfxThrowInvalidArgException). The exception, like any other C++ exception thrown by a hook,
//   is caught in one place, at the boundary of the manager's window procedure, and handled as
//   the framework handles an exception in a window procedure: the exception is deleted and the
//   message answers 0 (-1 for WM_CREATE). The rest of that message's passes, and the window's
//   procedure when it had not run yet, are skipped. No exception leaves the procedure the
//   system calls.
#pragma once
#include "KxUiDef.h"
#include <afxtempl.h>

struct AFX_MODULE_STATE;

// Message number of "TM_DETACH_WNDPROC", registered when the library loads.
// wParam: the KxUiWndProc* to remove, or 0 for every hook of the window; lParam: 0.
extern KXUI_API UINT TM_DETACH_WNDPROC;

// A hook on the messages of a window that its owner does not necessarily own.
class KXUI_API KxUiWndProc {
public:
    KxUiWndProc() : m_nAutoDelete(0) {}
    // Copies the ownership flag, nothing else: a copy is attached nowhere.
    KxUiWndProc(const KxUiWndProc& other) : m_nAutoDelete(other.m_nAutoDelete) {}
    KxUiWndProc& operator=(const KxUiWndProc& other)
    {
        m_nAutoDelete = other.m_nAutoDelete;
        return *this;
    }
    // Detaches the hook from every window it is still attached to. A derived destructor runs
    // first, so it must not send messages to a window the hook watches.
    virtual ~KxUiWndProc();

    // Called before the window's own procedure. Non-zero means handled: the window's
    // procedure and older hooks are skipped and `result` is what the window returns.
    virtual int windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) = 0;
    // Called after the window's own procedure with its result, which it may change.
    virtual void windowProcCallBack(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

    // 1: the manager deletes the hook when it detaches it; any other value: the owner does.
    int m_nAutoDelete;
};

// The hooks of one window, oldest at index 0, with what is needed to unhook it.
// Owns the array, not the hooks.
class KXUI_API KxUiWndsProc : public CArray<KxUiWndProc*, KxUiWndProc* const&> {
public:
    KxUiWndsProc() : m_pfnPrevWndProc(nullptr), m_hWnd(nullptr), m_pModuleState(nullptr), m_nPasses(0),
                     m_bUnlinked(false) {}

    WNDPROC m_pfnPrevWndProc;             // the procedure found at the first attach
    HWND m_hWnd;                          // the managed window
    AFX_MODULE_STATE* m_pModuleState;     // current at the first attach; current while hooks run

private:
    friend class KxUiWndProcMgr;
    int m_nPasses;                        // calls of the manager's procedure running on this record
    bool m_bUnlinked;                     // left the map while passes ran; deleted after the last one
    CArray<KxUiWndProc*, KxUiWndProc* const&> m_deferred;   // auto-delete hooks to delete then
};

class KXUI_API KxUiWndProcMgr {
public:
    KxUiWndProcMgr();
    // Empties the map; records still present are neither deleted nor unhooked (process exit).
    virtual ~KxUiWndProcMgr();

    // Adds `hook` to `hWnd` (newest hooks are called first). False for a null hook, a window
    // that does not exist, a hook already attached to this window, or a window whose procedure
    // is already the manager's without a record.
    bool attach(HWND hWnd, KxUiWndProc* hook);
    // Asks the window to remove `hook` (null: every hook) from inside its own message flow;
    // returns whether the window answered non-zero. A window with a single hook loses it
    // whichever hook is named.
    bool sendDetachMessage(HWND hWnd, KxUiWndProc* hook);

private:
    friend class KxUiWndProc;
    class PassGuard;

    KxUiWndProcMgr(const KxUiWndProcMgr&) = delete;
    KxUiWndProcMgr& operator=(const KxUiWndProcMgr&) = delete;

    bool detach(HWND hWnd);
    bool detach(HWND hWnd, KxUiWndProc* hook);
    KxUiWndsProc* lookup(HWND hWnd);
    static LRESULT CALLBACK _windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);

    // The two passes and the window's procedure for one message; may throw.
    LRESULT dispatch(KxUiWndsProc* record, HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
    // Puts the window's procedure back, takes the record out of the map and its auto-delete
    // hooks out of the array; they and the record are deleted now, or after the last running pass.
    bool unhook(KxUiWndsProc* record);
    // Deletes an auto-delete hook now, or after the last pass running on the record.
    void deleteHook(KxUiWndsProc* record, KxUiWndProc* hook);
    // What was deferred while passes ran on the record, once none runs any more.
    void settle(KxUiWndsProc* record);
    // A hook being destroyed: removed from every window it is attached to.
    void forget(KxUiWndProc* hook);

    CMap<HWND, HWND, KxUiWndsProc*, KxUiWndsProc*> m_mapWnds;
};

// The one manager of the process, created on first use and destroyed at process exit.
KXUI_API KxUiWndProcMgr& kxUiWndProcMgr();
