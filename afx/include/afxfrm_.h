// Frame windows and views (included by afxwin.h). Control bars are in afxext.h.
#pragma once

class CControlBar;

// What WM_SIZEPARENT carries: the space left for the frame's client, shrunk by each bar.
struct AFX_SIZEPARENTPARAMS {
    HDWP hDWP;        // deferred positions, NULL when only asking
    RECT rect;        // space still free
    SIZE sizeTotal;   // space taken by the bars
    BOOL bStretch;
};

// Sends the window to rect within a layout pass (deferred when the pass has an HDWP).
KXAFX_API void AFXAPI AfxRepositionWindow(AFX_SIZEPARENTPARAMS* lpLayout, HWND hWnd, LPCRECT lpRect);

class KXAFX_API CFrameWnd : public CWnd {
    DECLARE_DYNCREATE(CFrameWnd)
public:
    CFrameWnd();
    virtual ~CFrameWnd();

    static const CRect rectDefault;

    // Creates the frame with the menu lpszMenuName from the current resource handle.
    virtual BOOL Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle = WS_OVERLAPPEDWINDOW,
                        const RECT& rect = rectDefault, CWnd* pParentWnd = NULL, LPCTSTR lpszMenuName = NULL,
                        DWORD dwExStyle = 0, CCreateContext* pContext = NULL);
    // Creates the frame from resources with id nIDResource: title (string, text before the
    // first newline), menu, icon and accelerators (each optional except the menu).
    virtual BOOL LoadFrame(UINT nIDResource, DWORD dwDefaultStyle = WS_OVERLAPPEDWINDOW | FWS_ADDTOTITLE,
                           CWnd* pParentWnd = NULL, CCreateContext* pContext = NULL);

    // Places the control bars and gives the rest of the client area to the view.
    virtual void RecalcLayout(BOOL bNotify = TRUE);
    virtual void ActivateFrame(int nCmdShow = -1);
    CView* GetActiveView() const { return m_pViewActive; }
    void SetActiveView(CView* pViewNew, BOOL bNotify = TRUE);
    CWnd* CreateView(CCreateContext* pContext, UINT nID = AFX_IDW_PANE_FIRST);
    // The status bar (child AFX_IDW_STATUS_BAR), if any.
    virtual CWnd* GetMessageBar();
    virtual void SetMessageText(LPCTSTR lpszText);
    void SetMessageText(UINT nID);
    HACCEL GetDefaultAccelerator() { return m_hAccelTable; }
    BOOL LoadAccelTable(LPCTSTR lpszResourceName);
    virtual void OnUpdateFrameTitle(BOOL bAddToTitle);

    // Commands go to the active view, then the frame, then the application.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo);
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs);
    virtual BOOL OnCreateClient(LPCREATESTRUCT lpcs, CCreateContext* pContext);

    BOOL m_bAutoMenuEnable;  // menu items without a handler are disabled
    HACCEL m_hAccelTable;
    HMENU m_hMenuDefault;
    UINT m_nIDHelp;
    CString m_strTitle;

protected:
    CView* m_pViewActive;
    CCreateContext* m_pCreateContext;  // during creation only

    virtual void PostNcDestroy();  // frames are created with new and delete themselves
    afx_msg int OnCreate(LPCREATESTRUCT lpcs);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnClose();
    afx_msg void OnDestroy();
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnInitMenuPopup(CMenu* pMenu, UINT nIndex, BOOL bSysMenu);
    afx_msg LRESULT OnIdleUpdateCmdUI(WPARAM, LPARAM);
    afx_msg LRESULT OnSetMessageString(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()
};

// Sent by the frame to its views once created: WM_INITIALUPDATE.
#define WM_INITIALUPDATE 0x0364
#define WM_SETMESSAGESTRING 0x0362

// A child window of a frame showing the application's data.
class KXAFX_API CView : public CWnd {
    DECLARE_DYNAMIC(CView)
protected:
    CView();

public:
    virtual ~CView();
    // Draws the view; called for painting.
    virtual void OnDraw(CDC* pDC) = 0;
    virtual void OnInitialUpdate();
    virtual void OnActivateView(BOOL bActivate, CView* pActivateView, CView* pDeactiveView);
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs);

protected:
    virtual void PostNcDestroy();  // views are created with new and delete themselves
    afx_msg int OnCreate(LPCREATESTRUCT lpcs);
    afx_msg void OnDestroy();
    afx_msg void OnPaint();  // calls OnDraw with a CPaintDC
    afx_msg int OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message);
    afx_msg LRESULT OnInitialUpdateMsg(WPARAM, LPARAM);

    DECLARE_MESSAGE_MAP()
};
