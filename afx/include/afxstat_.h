// Module states, the per-thread state and handle maps (included by afxwin.h).
//
// Every module built on the framework (the executable and each DLL) has its own
// AFX_MODULE_STATE with its instance handle, resource handle and application object.
// AfxGetStaticModuleState() returns the calling module's state: it is compiled into each
// module from the small static library kxafx_module, which the KxAfxU target (KxUi::afx
// in the SDK) brings to every module that links the framework. The module finds its own
// instance handle through the linker-provided __ImageBase, so no DllMain is needed for
// it and a DLL stays free to define its own DllMain.
#pragma once

class CWinApp;
class CWinThread;
class CWnd;
class CObject;
class CHandleMap;

// State of one module. The executable's state is the process's application module state.
struct AFX_MODULE_STATE {
    HINSTANCE m_hCurrentInstanceHandle;
    HINSTANCE m_hCurrentResourceHandle;
    LPCTSTR m_lpszCurrentAppName;
    CWinApp* m_pCurrentWinApp;
    BOOL m_bDLL;
};

// The executable's module state (the default of every thread).
KXAFX_API AFX_MODULE_STATE* AFXAPI AfxGetAppModuleState();
// The module state in effect on the calling thread.
KXAFX_API AFX_MODULE_STATE* AFXAPI AfxGetModuleState();
// Makes pNewState the thread's module state; returns the previous one.
KXAFX_API AFX_MODULE_STATE* AFXAPI AfxSetModuleState(AFX_MODULE_STATE* pNewState);
// The calling module's own state (defined in each module by kxafx_module).
AFX_MODULE_STATE* AFXAPI AfxGetStaticModuleState();

// Switches the thread to a module state for the lifetime of the object.
class KXAFX_API AFX_MAINTAIN_STATE2 {
public:
    explicit AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* pNewState);
    ~AFX_MAINTAIN_STATE2();
    AFX_MAINTAIN_STATE2(const AFX_MAINTAIN_STATE2&) = delete;
    AFX_MAINTAIN_STATE2& operator=(const AFX_MAINTAIN_STATE2&) = delete;

protected:
    AFX_MODULE_STATE* m_pPrevModuleState;
};

// First statement of an exported function that uses its module's resources.
#define AFX_MANAGE_STATE(p) AFX_MAINTAIN_STATE2 _ctlState(p);

// Handles and the framework objects that wrap them, per thread. A permanent object is
// one the program attached (Attach, Create, SubclassWindow); a temporary one is made by
// FromHandle for a handle nobody attached and lives until the next idle time.
// A wrapper family describes itself once with AFX_HANDLEMAP_CLASS and gets its thread's
// map from AfxGetHandleMap.
struct AFX_HANDLEMAP_CLASS {
    CObject* (*pfnNewTemp)(HANDLE h);    // a new temporary object wrapping h
    void (*pfnDeleteTemp)(CObject* p);   // detaches and deletes a temporary object
};

class KXAFX_API CHandleMap {
public:
    explicit CHandleMap(const AFX_HANDLEMAP_CLASS* pClass);
    ~CHandleMap();
    CHandleMap(const CHandleMap&) = delete;
    CHandleMap& operator=(const CHandleMap&) = delete;

    // The permanent object of h, else a temporary one (created on first request); NULL for NULL.
    CObject* FromHandle(HANDLE h);
    CObject* LookupPermanent(HANDLE h) const;
    CObject* LookupTemporary(HANDLE h) const;
    void SetPermanent(HANDLE h, CObject* pObject);
    void RemoveHandle(HANDLE h);
    // Frees every temporary object.
    void DeleteTemp();

private:
    struct Impl;
    const AFX_HANDLEMAP_CLASS* m_pClass;
    Impl* m_pImpl;
};

// The calling thread's map for a wrapper family; created on first use when bCreate.
KXAFX_API CHandleMap* AFXAPI AfxGetHandleMap(const AFX_HANDLEMAP_CLASS* pClass, BOOL bCreate = TRUE);
// Temporary objects are kept while the maps are locked (nested message loops lock them).
KXAFX_API void AFXAPI AfxLockTempMaps();
// Unlocks; frees every temporary object of the thread when the last lock goes and bDeleteTemps.
KXAFX_API BOOL AFXAPI AfxUnlockTempMaps(BOOL bDeleteTemps = TRUE);

// The thread's maps of window and menu objects (NULL before first use unless bCreate).
KXAFX_API CHandleMap* AFXAPI afxMapHWND(BOOL bCreate = FALSE);
KXAFX_API CHandleMap* AFXAPI afxMapHMENU(BOOL bCreate = FALSE);

// What the framework keeps per thread.
struct _AFX_THREAD_STATE {
    AFX_MODULE_STATE* m_pModuleState;    // NULL: the application module state
    CWinThread* m_pCurrentWinThread;
    MSG m_msgCur;                        // message being dispatched by the loop
    MSG m_lastSentMsg;                   // message being processed by a window object
    CWnd* m_pWndInit;                    // window object waiting for its handle
    HHOOK m_hHookOldCbtFilter;
    HMENU m_hTrackingMenu;               // popup shown by CMenu::TrackPopupMenu
    HWND m_hLockoutNotifyWindow;         // window whose notifications UpdateData ignores
    int m_nTempMapLock;
    int m_nDisablePumpCount;
    void* m_pHandleMaps;                 // the thread's handle maps (internal)
};

KXAFX_API _AFX_THREAD_STATE* AFXAPI AfxGetThreadState();
