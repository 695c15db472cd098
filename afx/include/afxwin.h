// Windows, message maps, menus, dialogs, frames and the application object.
#pragma once
#include "afx.h"
#include <commctrl.h>
#include "afxstat_.h"
#include "afxmsg_.h"

// windowsx.h's macros of the same names would hide these members.
#undef SubclassWindow
#undef GetFont
#undef SetFont

class CCmdUI;
class CWnd;
class CMenu;
class CDC;
class CFont;
class CRgn;
class CScrollBar;
class CListBox;
class CFrameWnd;
class CView;
class CWinThread;
class CWinApp;
class CDataExchange;

// Drawing objects (CDC, CGdiObject, CPen, CBrush, CFont, CBitmap, CRgn).
#include "afxgdi_.h"

// Where a command handler lives, for CCmdTarget::OnCmdMsg asked only to look.
struct AFX_CMDHANDLERINFO {
    CCmdTarget* pTarget;
    AFX_PMSG pmf;
};

// Flags of CWnd::m_nFlags.
#define WF_TOOLTIPS 0x0001
#define WF_TEMPHIDE 0x0002
#define WF_STAYDISABLED 0x0004
#define WF_MODALLOOP 0x0008
#define WF_CONTINUEMODAL 0x0010
#define WF_OLECTLCONTAINER 0x0100

// Flags of CWnd::RunModalLoop.
#define MLF_NOIDLEMSG 0x0001
#define MLF_NOKICKIDLE 0x0002
#define MLF_SHOWONIDLE 0x0004

// Private messages of the framework.
#define WM_SIZEPARENT 0x0361
#define WM_IDLEUPDATECMDUI 0x0363
#define WM_KICKIDLE 0x036A

// Well-known ids.
#define AFX_IDW_PANE_FIRST 0xE900
#define AFX_IDW_PANE_LAST 0xE9FF
#define AFX_IDW_STATUS_BAR 0xE801
#define AFX_IDW_TOOLBAR 0xE800
#define AFX_IDS_APP_TITLE 0xE000
#define AFX_IDS_IDLEMESSAGE 0xE001
#define ID_SEPARATOR 0
#define ID_APP_EXIT 0xE141
#define ID_APP_ABOUT 0xE140
#define ID_INDICATOR_CAPS 0xE041
#define ID_INDICATOR_NUM 0xE042
#define ID_INDICATOR_SCRL 0xE043

// Frame styles.
#define FWS_ADDTOTITLE 0x00008000L

////////////////////////////////////////////////////////////////////////////
// CCmdTarget: objects that take commands through a message map.

class KXAFX_API CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)
public:
    CCmdTarget();

    // Routes a command or notification to a handler of this object's map. With
    // pHandlerInfo only looks: fills it and returns TRUE when a handler exists.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo);

    void BeginWaitCursor();
    void EndWaitCursor();
    void RestoreWaitCursor();

protected:
    static const AFX_MSGMAP* PASCAL GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
};

// Updates the state of a user-interface item (menu item, control-bar pane, window)
// for one command id.
class KXAFX_API CCmdUI {
public:
    CCmdUI();
    virtual ~CCmdUI() = default;

    virtual void Enable(BOOL bOn = TRUE);
    virtual void SetCheck(int nCheck = 1);  // 0 unchecked, 1 checked, 2 indeterminate
    virtual void SetRadio(BOOL bOn = TRUE);
    virtual void SetText(LPCTSTR lpszText);
    void ContinueRouting();
    // Asks pTarget to update the item; disables it when nobody handles the command and
    // bDisableIfNoHndler. Returns TRUE when an update handler ran.
    BOOL DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler);

    UINT m_nID;
    UINT m_nIndex;
    CMenu* m_pMenu;       // the menu holding the item, or NULL
    CMenu* m_pSubMenu;    // the popup when the item opens one
    CMenu* m_pParentMenu;
    CWnd* m_pOther;       // the window or control bar, or NULL
    BOOL m_bEnableChanged;
    BOOL m_bContinueRouting;
    UINT m_nIndexMax;
};

////////////////////////////////////////////////////////////////////////////
// CWnd

// What CFrameWnd creates its view from.
struct CCreateContext {
    CRuntimeClass* m_pNewViewClass = nullptr;
    CView* m_pLastView = nullptr;
    CFrameWnd* m_pCurrentFrame = nullptr;
};

class KXAFX_API CWnd : public CCmdTarget {
    DECLARE_DYNCREATE(CWnd)
public:
    CWnd();
    virtual ~CWnd();

protected:
    explicit CWnd(HWND hWnd);  // wraps without attaching (wndTop and kin)

public:
    HWND m_hWnd;
    operator HWND() const { return m_hWnd; }
    BOOL operator==(const CWnd& wnd) const { return wnd.m_hWnd == m_hWnd; }
    BOOL operator!=(const CWnd& wnd) const { return wnd.m_hWnd != m_hWnd; }
    // The handle, or NULL when called on a NULL object pointer.
    HWND GetSafeHwnd() const;
    // The handle of pWnd, NULL for NULL.
    static HWND SafeHwnd(const CWnd* pWnd) { return pWnd != nullptr ? pWnd->m_hWnd : nullptr; }

    // Positions for SetWindowPos.
    static const CWnd wndTop;
    static const CWnd wndBottom;
    static const CWnd wndTopMost;
    static const CWnd wndNoTopMost;

    // ---- handle map ----
    static CWnd* PASCAL FromHandle(HWND hWnd);
    static CWnd* PASCAL FromHandlePermanent(HWND hWnd);
    static void PASCAL DeleteTempMap();
    BOOL Attach(HWND hWndNew);
    HWND Detach();

    // ---- creation and destruction ----
    virtual BOOL Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                        CWnd* pParentWnd, UINT nID, CCreateContext* pContext = NULL);
    virtual BOOL CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle,
                          int x, int y, int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu,
                          LPVOID lpParam = NULL);
    virtual BOOL CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle,
                          const RECT& rect, CWnd* pParentWnd, UINT nID, LPVOID lpParam = NULL);
    virtual BOOL DestroyWindow();
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs);

    // ---- subclassing ----
    BOOL SubclassWindow(HWND hWnd);
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);
    HWND UnsubclassWindow();
    virtual void PreSubclassWindow();

    // ---- message processing ----
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    // The previous window procedure (of the class or the subclassed window).
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // DefWindowProc with the message being processed.
    LRESULT Default();
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    BOOL ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    // Sends the message being processed to hWndChild's object as a child notification.
    static BOOL PASCAL ReflectLastMsg(HWND hWndChild, LRESULT* pResult = NULL);
    BOOL SendChildNotifyLastMsg(LRESULT* pResult = NULL);
    static const MSG* PASCAL GetCurrentMessage();
    static BOOL PASCAL WalkPreTranslateTree(HWND hWndStop, MSG* pMsg);
    virtual void PostNcDestroy();

    // ---- modal loops ----
    int RunModalLoop(DWORD dwFlags = 0);
    virtual BOOL ContinueModal();
    virtual void EndModalLoop(int nResult);

    // ---- data exchange ----
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);

    // ---- family ----
    CWnd* GetDlgItem(int nID) const;
    void GetDlgItem(int nID, HWND* phWnd) const { *phWnd = ::GetDlgItem(m_hWnd, nID); }
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    int SetDlgCtrlID(int nID) { return (int)::SetWindowLongPtrW(m_hWnd, GWLP_ID, nID); }
    CWnd* GetParent() const { return CWnd::FromHandle(::GetParent(m_hWnd)); }
    CWnd* SetParent(CWnd* pWndNewParent) { return CWnd::FromHandle(::SetParent(m_hWnd, SafeHwnd(pWndNewParent))); }
    CWnd* GetOwner() const;
    void SetOwner(CWnd* pOwnerWnd) { m_hWndOwner = SafeHwnd(pOwnerWnd); }
    // The window a modal box should be owned by: pParent's top-level window, or the
    // main window, and its last active popup.
    static CWnd* PASCAL GetSafeOwner(CWnd* pParent = NULL, HWND* pWndTop = NULL);
    CWnd* GetTopLevelParent() const;
    CWnd* GetTopLevelOwner() const;
    CFrameWnd* GetParentFrame() const;
    CFrameWnd* GetTopLevelFrame() const;
    CWnd* GetWindow(UINT nCmd) const { return CWnd::FromHandle(::GetWindow(m_hWnd, nCmd)); }
    CWnd* GetNextDlgTabItem(CWnd* pWndCtl, BOOL bPrevious = FALSE) const
    { return CWnd::FromHandle(::GetNextDlgTabItem(m_hWnd, SafeHwnd(pWndCtl), bPrevious)); }
    CWnd* GetNextDlgGroupItem(CWnd* pWndCtl, BOOL bPrevious = FALSE) const
    { return CWnd::FromHandle(::GetNextDlgGroupItem(m_hWnd, SafeHwnd(pWndCtl), bPrevious)); }
    BOOL IsChild(const CWnd* pWnd) const { return ::IsChild(m_hWnd, SafeHwnd(pWnd)); }
    void SendMessageToDescendants(UINT message, WPARAM wParam = 0, LPARAM lParam = 0, BOOL bDeep = TRUE,
                                  BOOL bOnlyPerm = FALSE);
    // Places the control bars with ids in [nIDFirst, nIDLast] and gives the rest of the
    // client area to the child nIDLeftOver.
    void RepositionBars(UINT nIDFirst, UINT nIDLast, UINT nIDLeftOver, UINT nFlag = 0,
                        LPRECT lpRectParam = NULL, LPCRECT lpRectClient = NULL, BOOL bStretch = TRUE);
    enum RepositionFlags { reposDefault = 0, reposQuery = 1, reposExtra = 2, reposNoPosLeftOver = 0x8000 };

    // ---- geometry ----
    void GetClientRect(LPRECT lpRect) const { ::GetClientRect(m_hWnd, lpRect); }
    void GetWindowRect(LPRECT lpRect) const { ::GetWindowRect(m_hWnd, lpRect); }
    void ScreenToClient(LPPOINT lpPoint) const { ::ScreenToClient(m_hWnd, lpPoint); }
    void ScreenToClient(LPRECT lpRect) const { ::MapWindowPoints(NULL, m_hWnd, (LPPOINT)lpRect, 2); }
    void ClientToScreen(LPPOINT lpPoint) const { ::ClientToScreen(m_hWnd, lpPoint); }
    void ClientToScreen(LPRECT lpRect) const { ::MapWindowPoints(m_hWnd, NULL, (LPPOINT)lpRect, 2); }
    void MapWindowPoints(CWnd* pwndTo, LPRECT lpRect) const
    { ::MapWindowPoints(m_hWnd, SafeHwnd(pwndTo), (LPPOINT)lpRect, 2); }
    void MapWindowPoints(CWnd* pwndTo, LPPOINT lpPoint, UINT nCount) const
    { ::MapWindowPoints(m_hWnd, SafeHwnd(pwndTo), lpPoint, nCount); }
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE)
    { ::MoveWindow(m_hWnd, x, y, nWidth, nHeight, bRepaint); }
    void MoveWindow(LPCRECT lpRect, BOOL bRepaint = TRUE)
    { MoveWindow(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top, bRepaint); }
    BOOL SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags)
    { return ::SetWindowPos(m_hWnd, SafeHwnd(pWndInsertAfter), x, y, cx, cy, nFlags); }
    BOOL GetWindowPlacement(WINDOWPLACEMENT* lpwndpl) const
    { lpwndpl->length = sizeof(WINDOWPLACEMENT); return ::GetWindowPlacement(m_hWnd, lpwndpl); }
    BOOL SetWindowPlacement(const WINDOWPLACEMENT* lpwndpl) { return ::SetWindowPlacement(m_hWnd, lpwndpl); }
    // Centres the window over its owner (or pAlternateOwner), inside the work area.
    void CenterWindow(CWnd* pAlternateOwner = NULL);
    BOOL IsIconic() const { return ::IsIconic(m_hWnd); }
    BOOL IsZoomed() const { return ::IsZoomed(m_hWnd); }
    void BringWindowToTop() { ::BringWindowToTop(m_hWnd); }

    // ---- state ----
    BOOL ShowWindow(int nCmdShow) { return ::ShowWindow(m_hWnd, nCmdShow); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    BOOL EnableWindow(BOOL bEnable = TRUE) { return ::EnableWindow(m_hWnd, bEnable); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    DWORD GetStyle() const { return (DWORD)::GetWindowLongPtrW(m_hWnd, GWL_STYLE); }
    DWORD GetExStyle() const { return (DWORD)::GetWindowLongPtrW(m_hWnd, GWL_EXSTYLE); }
    // Change style bits; with nFlags the frame is updated by SetWindowPos(nFlags).
    // FALSE when the style did not change.
    BOOL ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    BOOL ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    CWnd* SetFocus() { return CWnd::FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* PASCAL GetFocus() { return CWnd::FromHandle(::GetFocus()); }
    CWnd* SetCapture() { return CWnd::FromHandle(::SetCapture(m_hWnd)); }
    static CWnd* PASCAL GetCapture() { return CWnd::FromHandle(::GetCapture()); }
    CWnd* SetActiveWindow() { return CWnd::FromHandle(::SetActiveWindow(m_hWnd)); }
    static CWnd* PASCAL GetActiveWindow() { return CWnd::FromHandle(::GetActiveWindow()); }
    BOOL SetForegroundWindow() { return ::SetForegroundWindow(m_hWnd); }
    HICON SetIcon(HICON hIcon, BOOL bBigIcon)
    { return (HICON)::SendMessageW(m_hWnd, WM_SETICON, bBigIcon, (LPARAM)hIcon); }
    HICON GetIcon(BOOL bBigIcon) const { return (HICON)::SendMessageW(m_hWnd, WM_GETICON, bBigIcon, 0); }

    // ---- text and fonts ----
    void SetWindowText(LPCTSTR lpszString) { ::SetWindowTextW(m_hWnd, lpszString); }
    int GetWindowText(LPTSTR lpszStringBuf, int nMaxCount) const
    { return ::GetWindowTextW(m_hWnd, lpszStringBuf, nMaxCount); }
    void GetWindowText(CString& rString) const;
    int GetWindowTextLength() const { return ::GetWindowTextLengthW(m_hWnd); }
    void SetFont(CFont* pFont, BOOL bRedraw = TRUE);
    CFont* GetFont() const;

    // ---- dialog items ----
    void SetDlgItemText(int nID, LPCTSTR lpszString) { ::SetDlgItemTextW(m_hWnd, nID, lpszString); }
    int GetDlgItemText(int nID, CString& rString) const;
    void SetDlgItemInt(int nID, UINT nValue, BOOL bSigned = TRUE) { ::SetDlgItemInt(m_hWnd, nID, nValue, bSigned); }
    UINT GetDlgItemInt(int nID, BOOL* lpTrans = NULL, BOOL bSigned = TRUE) const
    { return ::GetDlgItemInt(m_hWnd, nID, lpTrans, bSigned); }
    void CheckDlgButton(int nIDButton, UINT nCheck) { ::CheckDlgButton(m_hWnd, nIDButton, nCheck); }
    UINT IsDlgButtonChecked(int nIDButton) const { return ::IsDlgButtonChecked(m_hWnd, nIDButton); }
    void CheckRadioButton(int nIDFirst, int nIDLast, int nIDCheck)
    { ::CheckRadioButton(m_hWnd, nIDFirst, nIDLast, nIDCheck); }
    int GetCheckedRadioButton(int nIDFirstButton, int nIDLastButton) const;
    LRESULT SendDlgItemMessage(int nID, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    { return ::SendDlgItemMessageW(m_hWnd, nID, message, wParam, lParam); }

    // ---- messages and timers ----
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    { return ::SendMessageW(m_hWnd, message, wParam, lParam); }
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    { return ::PostMessageW(m_hWnd, message, wParam, lParam); }
    UINT_PTR SetTimer(UINT_PTR nIDEvent, UINT nElapse, void(CALLBACK* lpfnTimer)(HWND, UINT, UINT_PTR, DWORD))
    { return ::SetTimer(m_hWnd, nIDEvent, nElapse, lpfnTimer); }
    BOOL KillTimer(UINT_PTR nIDEvent) { return ::KillTimer(m_hWnd, nIDEvent); }
    int MessageBox(LPCTSTR lpszText, LPCTSTR lpszCaption = NULL, UINT nType = MB_OK);

    // ---- painting ----
    void Invalidate(BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, NULL, bErase); }
    void InvalidateRect(LPCRECT lpRect, BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, lpRect, bErase); }
    void ValidateRect(LPCRECT lpRect) { ::ValidateRect(m_hWnd, lpRect); }
    BOOL GetUpdateRect(LPRECT lpRect, BOOL bErase = FALSE) { return ::GetUpdateRect(m_hWnd, lpRect, bErase); }
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    BOOL RedrawWindow(LPCRECT lpRectUpdate = NULL, CRgn* prgnUpdate = NULL,
                      UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE);
    void SetRedraw(BOOL bRedraw = TRUE) { ::SendMessageW(m_hWnd, WM_SETREDRAW, bRedraw, 0); }
    // Device contexts: temporary CDC objects (ReleaseDC gives the DC back).
    CDC* GetDC();
    CDC* GetWindowDC();
    int ReleaseDC(CDC* pDC);
    CDC* BeginPaint(LPPAINTSTRUCT lpPaint);
    void EndPaint(LPPAINTSTRUCT lpPaint) { ::EndPaint(m_hWnd, lpPaint); }

    // ---- scroll bars ----
    BOOL GetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, UINT nMask = SIF_ALL);
    BOOL SetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, BOOL bRedraw = TRUE);
    int GetScrollPos(int nBar) const { return ::GetScrollPos(m_hWnd, nBar); }
    int SetScrollPos(int nBar, int nPos, BOOL bRedraw = TRUE) { return ::SetScrollPos(m_hWnd, nBar, nPos, bRedraw); }
    void GetScrollRange(int nBar, LPINT lpMinPos, LPINT lpMaxPos) const
    { ::GetScrollRange(m_hWnd, nBar, lpMinPos, lpMaxPos); }
    void SetScrollRange(int nBar, int nMinPos, int nMaxPos, BOOL bRedraw = TRUE)
    { ::SetScrollRange(m_hWnd, nBar, nMinPos, nMaxPos, bRedraw); }
    int GetScrollLimit(int nBar);
    void ShowScrollBar(UINT nBar, BOOL bShow = TRUE) { ::ShowScrollBar(m_hWnd, nBar, bShow); }
    void ScrollWindow(int xAmount, int yAmount, LPCRECT lpRect = NULL, LPCRECT lpClipRect = NULL)
    { ::ScrollWindow(m_hWnd, xAmount, yAmount, lpRect, lpClipRect); }

    // ---- ActiveX controls (afxdisp.h: AfxEnableControlContainer first) ----
    // Creates the control in a container window that this object wraps; FALSE when
    // the control cannot be created (no window is left then).
    BOOL CreateControl(REFCLSID clsid, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                       UINT nID);
    BOOL CreateControl(LPCTSTR pszClass, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                       UINT nID);
    // The hosted control (not AddRef'ed), or NULL.
    LPUNKNOWN GetControlUnknown();

    // ---- menus ----
    CMenu* GetMenu() const;
    BOOL SetMenu(CMenu* pMenu);
    void DrawMenuBar() { ::DrawMenuBar(m_hWnd); }
    CMenu* GetSystemMenu(BOOL bRevert) const;

    // ---- message handlers (the default ones pass the message on) ----
protected:
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg BOOL OnNcCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnDestroy();
    afx_msg void OnNcDestroy();
    afx_msg void OnClose();
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnSizing(UINT nSide, LPRECT lpRect);
    afx_msg void OnMove(int x, int y);
    afx_msg void OnGetMinMaxInfo(MINMAXINFO* lpMMI);
    afx_msg void OnWindowPosChanging(WINDOWPOS* lpwndpos);
    afx_msg void OnWindowPosChanged(WINDOWPOS* lpwndpos);
    afx_msg void OnNcCalcSize(BOOL bCalcValidRects, NCCALCSIZE_PARAMS* lpncsp);
    afx_msg LRESULT OnNcHitTest(CPoint point);
    afx_msg void OnPaint();
    afx_msg void OnNcPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnRButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnMButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint pt);
    afx_msg void OnMouseLeave();
    afx_msg int OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message);
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnKeyUp(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnSysKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnSysKeyUp(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnSysChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnDeadChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnCaptureChanged(CWnd* pWnd);
    afx_msg void OnCancelMode();
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    afx_msg void OnContextMenu(CWnd* pWnd, CPoint pos);
    afx_msg UINT OnGetDlgCode();
    afx_msg void OnActivate(UINT nState, CWnd* pWndOther, BOOL bMinimized);
    afx_msg void OnShowWindow(BOOL bShow, UINT nStatus);
    afx_msg void OnEnable(BOOL bEnable);
    afx_msg void OnInitMenu(CMenu* pMenu);
    afx_msg void OnInitMenuPopup(CMenu* pPopupMenu, UINT nIndex, BOOL bSysMenu);
    afx_msg LRESULT OnMenuChar(UINT nChar, UINT nFlags, CMenu* pMenu);
    afx_msg void OnMenuSelect(UINT nItemID, UINT nFlags, HMENU hSysMenu);
    // Owner-drawn items: menus go to their CMenu, controls get them reflected.
    afx_msg void OnMeasureItem(int nIDCtl, LPMEASUREITEMSTRUCT lpMeasureItemStruct);
    afx_msg void OnDrawItem(int nIDCtl, LPDRAWITEMSTRUCT lpDrawItemStruct);
    afx_msg int OnCompareItem(int nIDCtl, LPCOMPAREITEMSTRUCT lpCompareItemStruct);
    afx_msg void OnDeleteItem(int nIDCtl, LPDELETEITEMSTRUCT lpDeleteItemStruct);
    afx_msg int OnVKeyToItem(UINT nKey, CListBox* pListBox, UINT nIndex);
    afx_msg int OnCharToItem(UINT nChar, CListBox* pListBox, UINT nIndex);
    afx_msg void OnParentNotify(UINT message, LPARAM lParam);
    afx_msg void OnSettingChange(UINT uFlags, LPCTSTR lpszSection);
    afx_msg void OnSysColorChange();
    afx_msg HBRUSH OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor);

    // ---- overridables and internals ----
    virtual void DoDataExchange(CDataExchange* pDX);
    // Runs one dispatch of the message map; shared by OnWndMsg and reflection.
    BOOL DispatchMapEntry(const AFX_MSGMAP_ENTRY* lpEntry, UINT message, WPARAM wParam, LPARAM lParam,
                          LRESULT* pResult);

public:
    WNDPROC m_pfnSuper;   // procedure the window had before this object took it, or NULL
    HWND m_hWndOwner;     // owner set by SetOwner
    UINT m_nFlags;        // WF_ flags
    int m_nModalResult;

    friend LRESULT AFXAPI AfxCallWndProc(CWnd*, HWND, UINT, WPARAM, LPARAM);
    friend class CCmdUI;

    DECLARE_MESSAGE_MAP()
};

// Window procedure of every window a CWnd is attached to.
KXAFX_API LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam);
KXAFX_API LRESULT AFXAPI AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam);
// Attaches pWnd to the next window the thread creates, from its first message on.
KXAFX_API void AFXAPI AfxHookWindowCreate(CWnd* pWnd);
KXAFX_API BOOL AFXAPI AfxUnhookWindowCreate();
// Registers (once) a window class of the calling module's instance with AfxWndProc and
// returns its generated name; the name stays valid for the life of the process.
KXAFX_API LPCTSTR AFXAPI AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor = 0, HBRUSH hbrBackground = 0,
                                             HICON hIcon = 0);
KXAFX_API BOOL AFXAPI AfxRegisterClass(WNDCLASS* lpWndClass);

////////////////////////////////////////////////////////////////////////////
// CMenu

class KXAFX_API CMenu : public CObject {
    DECLARE_DYNCREATE(CMenu)
public:
    CMenu();
    virtual ~CMenu();  // destroys the menu it holds

    HMENU m_hMenu;
    operator HMENU() const { return m_hMenu; }
    HMENU GetSafeHmenu() const;
    BOOL operator==(const CMenu& menu) const { return m_hMenu == menu.m_hMenu; }
    BOOL operator!=(const CMenu& menu) const { return m_hMenu != menu.m_hMenu; }

    static CMenu* PASCAL FromHandle(HMENU hMenu);
    static CMenu* PASCAL FromHandlePermanent(HMENU hMenu);
    static void PASCAL DeleteTempMap();
    BOOL Attach(HMENU hMenu);
    HMENU Detach();

    BOOL CreateMenu();
    BOOL CreatePopupMenu();
    BOOL LoadMenu(LPCTSTR lpszResourceName);  // from the current resource handle
    BOOL LoadMenu(UINT nIDResource) { return LoadMenu(MAKEINTRESOURCE(nIDResource)); }
    BOOL LoadMenuIndirect(const void* lpMenuTemplate);
    BOOL DestroyMenu();

    UINT GetMenuItemCount() const { return (UINT)::GetMenuItemCount(m_hMenu); }
    UINT GetMenuItemID(int nPos) const { return ::GetMenuItemID(m_hMenu, nPos); }
    UINT GetMenuState(UINT nID, UINT nFlags) const { return ::GetMenuState(m_hMenu, nID, nFlags); }
    int GetMenuString(UINT nIDItem, LPTSTR lpString, int nMaxCount, UINT nFlags) const
    { return ::GetMenuStringW(m_hMenu, nIDItem, lpString, nMaxCount, nFlags); }
    int GetMenuString(UINT nIDItem, CString& rString, UINT nFlags) const;
    CMenu* GetSubMenu(int nPos) const { return CMenu::FromHandle(::GetSubMenu(m_hMenu, nPos)); }
    BOOL GetMenuItemInfo(UINT uItem, LPMENUITEMINFO lpMenuItemInfo, BOOL fByPos = FALSE)
    { return ::GetMenuItemInfoW(m_hMenu, uItem, fByPos, lpMenuItemInfo); }
    BOOL SetMenuItemInfo(UINT uItem, LPMENUITEMINFO lpMenuItemInfo, BOOL fByPos = FALSE)
    { return ::SetMenuItemInfoW(m_hMenu, uItem, fByPos, lpMenuItemInfo); }
    UINT GetDefaultItem(UINT gmdiFlags, BOOL fByPos = FALSE) { return ::GetMenuDefaultItem(m_hMenu, fByPos, gmdiFlags); }
    BOOL SetDefaultItem(UINT uItem, BOOL fByPos = FALSE) { return ::SetMenuDefaultItem(m_hMenu, uItem, fByPos); }

    BOOL AppendMenu(UINT nFlags, UINT_PTR nIDNewItem = 0, LPCTSTR lpszNewItem = NULL)
    { return ::AppendMenuW(m_hMenu, nFlags, nIDNewItem, lpszNewItem); }
    BOOL InsertMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem = 0, LPCTSTR lpszNewItem = NULL)
    { return ::InsertMenuW(m_hMenu, nPosition, nFlags, nIDNewItem, lpszNewItem); }
    BOOL ModifyMenu(UINT nPosition, UINT nFlags, UINT_PTR nIDNewItem = 0, LPCTSTR lpszNewItem = NULL)
    { return ::ModifyMenuW(m_hMenu, nPosition, nFlags, nIDNewItem, lpszNewItem); }
    BOOL RemoveMenu(UINT nPosition, UINT nFlags) { return ::RemoveMenu(m_hMenu, nPosition, nFlags); }
    // Removes the item and destroys the popup it opens.
    BOOL DeleteMenu(UINT nPosition, UINT nFlags);
    UINT EnableMenuItem(UINT nIDEnableItem, UINT nEnable) { return ::EnableMenuItem(m_hMenu, nIDEnableItem, nEnable); }
    UINT CheckMenuItem(UINT nIDCheckItem, UINT nCheck) { return (UINT)::CheckMenuItem(m_hMenu, nIDCheckItem, nCheck); }
    BOOL CheckMenuRadioItem(UINT nIDFirst, UINT nIDLast, UINT nIDItem, UINT nFlags)
    { return ::CheckMenuRadioItem(m_hMenu, nIDFirst, nIDLast, nIDItem, nFlags); }
    // Shows the popup; with TPM_RETURNCMD returns the chosen command.
    BOOL TrackPopupMenu(UINT nFlags, int x, int y, CWnd* pWnd, LPCRECT lpRect = NULL);

    // Owner-drawn items.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct);
};

////////////////////////////////////////////////////////////////////////////
// Threads and the application

class KXAFX_API CWinThread : public CCmdTarget {
    DECLARE_DYNAMIC(CWinThread)
public:
    CWinThread();
    virtual ~CWinThread();

    CWnd* m_pMainWnd;
    CWnd* m_pActiveWnd;
    BOOL m_bAutoDelete;
    HANDLE m_hThread;
    DWORD m_nThreadID;

    virtual CWnd* GetMainWnd();
    virtual BOOL InitInstance();
    virtual int ExitInstance();
    // The message loop: idle processing while the queue is empty, then messages, until WM_QUIT.
    virtual int Run();
    // Window-chain PreTranslateMessage from the target window up to the main window.
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    // Gets and dispatches one message; FALSE on WM_QUIT.
    virtual BOOL PumpMessage();
    // lCount 0: updates the user interface of the main window; 1: frees temporary objects.
    // Returns TRUE while more idle work remains.
    virtual BOOL OnIdle(LONG lCount);
    virtual BOOL IsIdleMessage(MSG* pMsg);
    virtual void Delete();

protected:
    POINT m_ptCursorLast;
    UINT m_nMsgLast;
};

class KXAFX_API CWinApp : public CWinThread {
    DECLARE_DYNAMIC(CWinApp)
public:
    explicit CWinApp(LPCTSTR lpszAppName = NULL);
    virtual ~CWinApp();

    LPCTSTR m_pszAppName;       // name of the application (title of message boxes)
    LPCTSTR m_pszRegistryKey;   // profile in HKCU\Software\<key>\<profile name> when set
    LPCTSTR m_pszProfileName;   // .ini file when no registry key; the application's name otherwise
    LPCTSTR m_pszExeName;
    LPCTSTR m_pszHelpFilePath;
    HINSTANCE m_hInstance;
    LPTSTR m_lpCmdLine;
    int m_nCmdShow;

    virtual BOOL InitApplication();
    virtual BOOL InitInstance();
    virtual int ExitInstance();
    virtual int Run();
    virtual BOOL OnIdle(LONG lCount);
    // Shows every AfxMessageBox of the application.
    virtual int DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT nIDPrompt);
    virtual void DoWaitCursor(int nCode);  // 1 begin, -1 end, 0 restore

    // ---- profile ----
    void SetRegistryKey(LPCTSTR lpszRegistryKey);
    void SetRegistryKey(UINT nIDRegistryKey);
    // HKCU\Software\<registry key>\<application>, created on demand; the caller closes it.
    HKEY GetAppRegistryKey();
    HKEY GetSectionKey(LPCTSTR lpszSection);
    UINT GetProfileInt(LPCTSTR lpszSection, LPCTSTR lpszEntry, int nDefault);
    BOOL WriteProfileInt(LPCTSTR lpszSection, LPCTSTR lpszEntry, int nValue);
    CString GetProfileString(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPCTSTR lpszDefault = NULL);
    // A NULL entry removes the section, a NULL value removes the entry.
    BOOL WriteProfileString(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPCTSTR lpszValue);
    // *ppData is allocated with new BYTE[] and belongs to the caller.
    BOOL GetProfileBinary(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPBYTE* ppData, UINT* pBytes);
    BOOL WriteProfileBinary(LPCTSTR lpszSection, LPCTSTR lpszEntry, LPBYTE pData, UINT nBytes);

    // ---- resources ----
    HCURSOR LoadCursor(LPCTSTR lpszResourceName) const;
    HCURSOR LoadCursor(UINT nIDResource) const { return LoadCursor(MAKEINTRESOURCE(nIDResource)); }
    HCURSOR LoadStandardCursor(LPCTSTR lpszCursorName) const { return ::LoadCursorW(NULL, lpszCursorName); }
    HICON LoadIcon(LPCTSTR lpszResourceName) const;
    HICON LoadIcon(UINT nIDResource) const { return LoadIcon(MAKEINTRESOURCE(nIDResource)); }
    HICON LoadStandardIcon(LPCTSTR lpszIconName) const { return ::LoadIconW(NULL, lpszIconName); }

    // Fills the names from the instance: application, executable and profile.
    void SetCurrentHandles();

    afx_msg void OnAppExit();

protected:
    int m_nWaitCursorCount;
    HCURSOR m_hcurWaitCursorRestore;

    DECLARE_MESSAGE_MAP()
};

KXAFX_API CWinApp* AFXAPI AfxGetApp();
KXAFX_API CWnd* AFXAPI AfxGetMainWnd();
KXAFX_API CWinThread* AFXAPI AfxGetThread();
KXAFX_API HINSTANCE AFXAPI AfxGetInstanceHandle();
KXAFX_API HINSTANCE AFXAPI AfxGetResourceHandle();
KXAFX_API void AFXAPI AfxSetResourceHandle(HINSTANCE hInstResource);
KXAFX_API LPCTSTR AFXAPI AfxGetAppName();
// The resource module holding the resource: the current resource handle.
KXAFX_API HINSTANCE AFXAPI AfxFindResourceHandle(LPCTSTR lpszName, LPCTSTR lpszType);
KXAFX_API BOOL AFXAPI AfxWinInit(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPTSTR lpCmdLine, int nCmdShow);
KXAFX_API void AFXAPI AfxWinTerm();
// The framework's main: initialises the application, runs InitInstance and Run.
KXAFX_API int AFXAPI AfxWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPTSTR lpCmdLine, int nCmdShow);
// Gets and dispatches one message of the thread; FALSE on WM_QUIT.
KXAFX_API BOOL AFXAPI AfxPumpMessage();
KXAFX_API BOOL AFXAPI AfxPreTranslateMessage(MSG* pMsg);
KXAFX_API void AFXAPI AfxPostQuitMessage(int nExitCode);
KXAFX_API int AFXAPI AfxMessageBox(LPCTSTR lpszText, UINT nType = MB_OK, UINT nIDHelp = 0);
KXAFX_API int AFXAPI AfxMessageBox(UINT nIDPrompt, UINT nType = MB_OK, UINT nIDHelp = (UINT)-1);

// Hourglass cursor for the lifetime of the object.
class KXAFX_API CWaitCursor {
public:
    CWaitCursor();
    ~CWaitCursor();
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
    void Restore();
};

#include "afxdlg_.h"
#include "afxfrm_.h"

// Controls over the platform's window classes (CStatic, CButton, CEdit, CListBox, ...).
#include "afxctl_.h"
