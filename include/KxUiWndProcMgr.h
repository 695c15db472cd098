// Window-procedure manager: several hook objects share one subclassing of a window.
//
// A hook derives from KxUiWndProc and is attached with kxUiWndProcMgr().attach(hWnd, hook).
// The manager subclasses the window once and calls every hook of the window, newest first,
// before the window's own procedure (a hook may swallow the message) and again afterwards with
// the result. Hooks leave only by message (sendDetachMessage, i.e. TM_DETACH_WNDPROC), so the
// removal always runs inside the window's own message flow; all hooks leave on WM_NCDESTROY,
// and the window's previous procedure is put back when the last hook leaves.
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
    // Copies the ownership flag, nothing else.
    KxUiWndProc(const KxUiWndProc& other) : m_nAutoDelete(other.m_nAutoDelete) {}
    KxUiWndProc& operator=(const KxUiWndProc& other)
    {
        m_nAutoDelete = other.m_nAutoDelete;
        return *this;
    }
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
    KxUiWndsProc() : m_pfnPrevWndProc(nullptr), m_hWnd(nullptr), m_pModuleState(nullptr) {}

    WNDPROC m_pfnPrevWndProc;             // the procedure found at the first attach
    HWND m_hWnd;                          // the managed window
    AFX_MODULE_STATE* m_pModuleState;     // current at the first attach; current while hooks run
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
    // returns whether the window answered non-zero.
    bool sendDetachMessage(HWND hWnd, KxUiWndProc* hook);

private:
    KxUiWndProcMgr(const KxUiWndProcMgr&) = delete;
    KxUiWndProcMgr& operator=(const KxUiWndProcMgr&) = delete;

    bool detach(HWND hWnd);
    bool detach(HWND hWnd, KxUiWndProc* hook);
    KxUiWndsProc* lookup(HWND hWnd);
    static LRESULT CALLBACK _windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);

    CMap<HWND, HWND, KxUiWndsProc*, KxUiWndsProc*> m_mapWnds;
};

// The one manager of the process, created on first use and destroyed at process exit.
KXUI_API KxUiWndProcMgr& kxUiWndProcMgr();
