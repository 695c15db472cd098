// CWnd: default message handlers, owner-drawn items, family, geometry and other helpers.
#include "afximpl.h"

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
    ON_WM_DRAWITEM()
    ON_WM_MEASUREITEM()
    ON_WM_COMPAREITEM()
    ON_WM_DELETEITEM()
    ON_WM_CTLCOLOR()
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
    ON_WM_VKEYTOITEM()
    ON_WM_CHARTOITEM()
    ON_WM_PARENTNOTIFY()
    ON_WM_NCDESTROY()
END_MESSAGE_MAP()

////////////////////////////////////////////////////////////////////////////
// Destruction

void CWnd::OnNcDestroy()
{
    if (CWinThread* thread = AfxGetThread()) {
        if (thread->m_pMainWnd == this) {
            // The main window going away ends the application's loop.
            if (thread == AfxGetApp())
                AfxPostQuitMessage(0);
            thread->m_pMainWnd = nullptr;
        }
        if (thread->m_pActiveWnd == this)
            thread->m_pActiveWnd = nullptr;
    }
    // Give the procedure back unless somebody subclassed the window after us.
    auto ours = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(m_hWnd, GWLP_WNDPROC));
    Default();
    if (reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(m_hWnd, GWLP_WNDPROC)) == ours && m_pfnSuper != nullptr)
        ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
    m_pfnSuper = nullptr;
    Detach();
    PostNcDestroy();
}

////////////////////////////////////////////////////////////////////////////
// Handlers that reflect to the child or pass the message on

namespace {

// The permanent menu that holds command nID, searched from hMenu down.
CMenu* FindMenuOfItem(HMENU hMenu, UINT nID)
{
    const int n = ::GetMenuItemCount(hMenu);
    for (int i = 0; i < n; ++i) {
        if (HMENU sub = ::GetSubMenu(hMenu, i)) {
            if (CMenu* found = FindMenuOfItem(sub, nID))
                return found;
        } else if (::GetMenuItemID(hMenu, i) == nID) {
            return CMenu::FromHandlePermanent(hMenu);
        }
    }
    return nullptr;
}

}  // namespace

void CWnd::OnDrawItem(int, LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    if (lpDrawItemStruct->CtlType == ODT_MENU) {
        if (CMenu* menu = CMenu::FromHandlePermanent(reinterpret_cast<HMENU>(lpDrawItemStruct->hwndItem))) {
            menu->DrawItem(lpDrawItemStruct);
            return;
        }
    } else if (ReflectLastMsg(lpDrawItemStruct->hwndItem)) {
        return;
    }
    Default();
}

void CWnd::OnMeasureItem(int nIDCtl, LPMEASUREITEMSTRUCT lpMeasureItemStruct)
{
    if (lpMeasureItemStruct->CtlType == ODT_MENU) {
        CMenu* menu = nullptr;
        if (HMENU tracking = AfxGetThreadState()->m_hTrackingMenu)
            menu = FindMenuOfItem(tracking, lpMeasureItemStruct->itemID);
        if (menu == nullptr && !(GetStyle() & WS_CHILD)) {
            if (HMENU bar = ::GetMenu(m_hWnd))
                menu = FindMenuOfItem(bar, lpMeasureItemStruct->itemID);
        }
        if (menu != nullptr) {
            menu->MeasureItem(lpMeasureItemStruct);
            return;
        }
    } else if (HWND child = ::GetDlgItem(m_hWnd, nIDCtl)) {
        if (ReflectLastMsg(child))
            return;
    }
    Default();
}

int CWnd::OnCompareItem(int, LPCOMPAREITEMSTRUCT lpCompareItemStruct)
{
    LRESULT lResult = 0;
    if (ReflectLastMsg(lpCompareItemStruct->hwndItem, &lResult))
        return static_cast<int>(lResult);
    return static_cast<int>(Default());
}

void CWnd::OnDeleteItem(int, LPDELETEITEMSTRUCT lpDeleteItemStruct)
{
    if (lpDeleteItemStruct->hwndItem != nullptr && ReflectLastMsg(lpDeleteItemStruct->hwndItem))
        return;
    Default();
}

int CWnd::OnVKeyToItem(UINT, CListBox*, UINT)
{
    LRESULT lResult = 0;
    if (ReflectLastMsg(reinterpret_cast<HWND>(AfxGetThreadState()->m_lastSentMsg.lParam), &lResult))
        return static_cast<int>(lResult);
    return static_cast<int>(Default());
}

int CWnd::OnCharToItem(UINT, CListBox*, UINT)
{
    LRESULT lResult = 0;
    if (ReflectLastMsg(reinterpret_cast<HWND>(AfxGetThreadState()->m_lastSentMsg.lParam), &lResult))
        return static_cast<int>(lResult);
    return static_cast<int>(Default());
}

void CWnd::OnHScroll(UINT, UINT, CScrollBar*)
{
    HWND bar = reinterpret_cast<HWND>(AfxGetThreadState()->m_lastSentMsg.lParam);
    if (bar != nullptr && ReflectLastMsg(bar))
        return;
    Default();
}

void CWnd::OnVScroll(UINT, UINT, CScrollBar*)
{
    HWND bar = reinterpret_cast<HWND>(AfxGetThreadState()->m_lastSentMsg.lParam);
    if (bar != nullptr && ReflectLastMsg(bar))
        return;
    Default();
}

void CWnd::OnParentNotify(UINT message, LPARAM lParam)
{
    if ((LOWORD(message) == WM_CREATE || LOWORD(message) == WM_DESTROY) &&
        ReflectLastMsg(reinterpret_cast<HWND>(lParam)))
        return;
    Default();
}

HBRUSH CWnd::OnCtlColor(CDC*, CWnd* pWnd, UINT)
{
    LRESULT lResult = 0;
    if (pWnd != nullptr && ReflectLastMsg(pWnd->m_hWnd, &lResult))
        return reinterpret_cast<HBRUSH>(lResult);
    return reinterpret_cast<HBRUSH>(Default());
}

int CWnd::OnCreate(LPCREATESTRUCT) { return static_cast<int>(Default()); }
BOOL CWnd::OnNcCreate(LPCREATESTRUCT) { return static_cast<BOOL>(Default()); }
void CWnd::OnDestroy() { Default(); }
void CWnd::OnClose() { Default(); }
void CWnd::OnSize(UINT, int, int) { Default(); }
void CWnd::OnSizing(UINT, LPRECT) { Default(); }
void CWnd::OnMove(int, int) { Default(); }
void CWnd::OnGetMinMaxInfo(MINMAXINFO*) { Default(); }
void CWnd::OnWindowPosChanging(WINDOWPOS*) { Default(); }
void CWnd::OnWindowPosChanged(WINDOWPOS*) { Default(); }
void CWnd::OnNcCalcSize(BOOL, NCCALCSIZE_PARAMS*) { Default(); }
LRESULT CWnd::OnNcHitTest(CPoint) { return Default(); }
void CWnd::OnPaint() { Default(); }
void CWnd::OnNcPaint() { Default(); }
BOOL CWnd::OnEraseBkgnd(CDC*) { return static_cast<BOOL>(Default()); }
void CWnd::OnTimer(UINT_PTR) { Default(); }
void CWnd::OnLButtonDown(UINT, CPoint) { Default(); }
void CWnd::OnLButtonUp(UINT, CPoint) { Default(); }
void CWnd::OnLButtonDblClk(UINT, CPoint) { Default(); }
void CWnd::OnRButtonDown(UINT, CPoint) { Default(); }
void CWnd::OnRButtonUp(UINT, CPoint) { Default(); }
void CWnd::OnRButtonDblClk(UINT, CPoint) { Default(); }
void CWnd::OnMButtonDown(UINT, CPoint) { Default(); }
void CWnd::OnMButtonUp(UINT, CPoint) { Default(); }
void CWnd::OnMButtonDblClk(UINT, CPoint) { Default(); }
void CWnd::OnMouseMove(UINT, CPoint) { Default(); }
BOOL CWnd::OnMouseWheel(UINT, short, CPoint) { return static_cast<BOOL>(Default()); }
void CWnd::OnMouseLeave() { Default(); }
int CWnd::OnMouseActivate(CWnd*, UINT, UINT) { return static_cast<int>(Default()); }
void CWnd::OnKeyDown(UINT, UINT, UINT) { Default(); }
void CWnd::OnKeyUp(UINT, UINT, UINT) { Default(); }
void CWnd::OnSysKeyDown(UINT, UINT, UINT) { Default(); }
void CWnd::OnSysKeyUp(UINT, UINT, UINT) { Default(); }
void CWnd::OnChar(UINT, UINT, UINT) { Default(); }
void CWnd::OnSysChar(UINT, UINT, UINT) { Default(); }
void CWnd::OnDeadChar(UINT, UINT, UINT) { Default(); }
void CWnd::OnSetFocus(CWnd*) { Default(); }
void CWnd::OnKillFocus(CWnd*) { Default(); }
void CWnd::OnCaptureChanged(CWnd*) { Default(); }
void CWnd::OnCancelMode() { Default(); }
BOOL CWnd::OnSetCursor(CWnd*, UINT, UINT) { return static_cast<BOOL>(Default()); }
void CWnd::OnContextMenu(CWnd*, CPoint) { Default(); }
UINT CWnd::OnGetDlgCode() { return static_cast<UINT>(Default()); }
void CWnd::OnActivate(UINT, CWnd*, BOOL) { Default(); }
void CWnd::OnShowWindow(BOOL, UINT) { Default(); }
void CWnd::OnEnable(BOOL) { Default(); }
void CWnd::OnInitMenu(CMenu*) { Default(); }
void CWnd::OnInitMenuPopup(CMenu*, UINT, BOOL) { Default(); }
LRESULT CWnd::OnMenuChar(UINT, UINT, CMenu*) { return Default(); }
void CWnd::OnMenuSelect(UINT, UINT, HMENU) { Default(); }
void CWnd::OnSettingChange(UINT, LPCTSTR) { Default(); }
void CWnd::OnSysColorChange() { Default(); }

void CWnd::DoDataExchange(CDataExchange*) {}

////////////////////////////////////////////////////////////////////////////
// Family

CWnd* CWnd::GetDlgItem(int nID) const
{
    return CWnd::FromHandle(::GetDlgItem(m_hWnd, nID));
}

int CWnd::GetDlgItemText(int nID, CString& rString) const
{
    rString = AfxGetWindowText(::GetDlgItem(m_hWnd, nID));
    return rString.GetLength();
}

int CWnd::GetCheckedRadioButton(int nIDFirstButton, int nIDLastButton) const
{
    for (int id = nIDFirstButton; id <= nIDLastButton; ++id) {
        if (::IsDlgButtonChecked(m_hWnd, id))
            return id;
    }
    return 0;
}

void CWnd::GetWindowText(CString& rString) const
{
    rString = AfxGetWindowText(m_hWnd);
}

CWnd* CWnd::GetOwner() const
{
    return m_hWndOwner != nullptr ? CWnd::FromHandle(m_hWndOwner) : GetParent();
}

CWnd* CWnd::GetTopLevelParent() const
{
    if (m_hWnd == nullptr)
        return nullptr;
    HWND top = m_hWnd;
    for (;;) {
        HWND next = (::GetWindowLongPtrW(top, GWL_STYLE) & WS_CHILD) ? ::GetParent(top) : ::GetWindow(top, GW_OWNER);
        if (next == nullptr)
            break;
        top = next;
    }
    return CWnd::FromHandle(top);
}

CWnd* CWnd::GetTopLevelOwner() const
{
    if (m_hWnd == nullptr)
        return nullptr;
    HWND owner = m_hWnd;
    while (HWND next = ::GetWindow(owner, GW_OWNER))
        owner = next;
    return CWnd::FromHandle(owner);
}

CFrameWnd* CWnd::GetParentFrame() const
{
    for (CWnd* p = GetParent(); p != nullptr; p = p->GetParent()) {
        if (p->IsKindOf(RUNTIME_CLASS(CFrameWnd)))
            return static_cast<CFrameWnd*>(p);
    }
    return nullptr;
}

CFrameWnd* CWnd::GetTopLevelFrame() const
{
    CFrameWnd* frame = IsKindOf(RUNTIME_CLASS(CFrameWnd)) ? const_cast<CFrameWnd*>(static_cast<const CFrameWnd*>(this))
                                                          : GetParentFrame();
    while (frame != nullptr) {
        CFrameWnd* up = frame->GetParentFrame();
        if (up == nullptr)
            break;
        frame = up;
    }
    return frame;
}

CWnd* PASCAL CWnd::GetSafeOwner(CWnd* pParent, HWND* pWndTop)
{
    HWND hParent = CWnd::SafeHwnd(pParent);
    HWND hWnd = hParent;
    if (hWnd == nullptr)
        hWnd = CWnd::SafeHwnd(AfxGetMainWnd());
    // A popup cannot be owned by a child window.
    while (hWnd != nullptr && (::GetWindowLongPtrW(hWnd, GWL_STYLE) & WS_CHILD))
        hWnd = ::GetParent(hWnd);
    HWND hWndTop = hWnd;
    for (HWND t = hWnd; t != nullptr; t = ::GetParent(t))
        hWndTop = t;
    if (hParent == nullptr && hWnd != nullptr)
        hWnd = ::GetLastActivePopup(hWnd);
    // The caller disables the top-level window too and re-enables it afterwards.
    if (pWndTop != nullptr) {
        if (hWndTop != nullptr && ::IsWindowEnabled(hWndTop) && hWndTop != hWnd) {
            *pWndTop = hWndTop;
            ::EnableWindow(hWndTop, FALSE);
        } else {
            *pWndTop = nullptr;
        }
    }
    return CWnd::FromHandle(hWnd);
}

namespace {

void SendToDescendants(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, BOOL bDeep, BOOL bOnlyPerm)
{
    for (HWND child = ::GetTopWindow(hWnd); child != nullptr; child = ::GetNextWindow(child, GW_HWNDNEXT)) {
        if (bOnlyPerm) {
            if (CWnd* p = CWnd::FromHandlePermanent(child))
                AfxCallWndProc(p, child, message, wParam, lParam);
        } else {
            ::SendMessageW(child, message, wParam, lParam);
        }
        if (bDeep && ::GetTopWindow(child) != nullptr)
            SendToDescendants(child, message, wParam, lParam, bDeep, bOnlyPerm);
    }
}

BOOL ModifyStyleImpl(HWND hWnd, int nOffset, DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    const DWORD style = static_cast<DWORD>(::GetWindowLongPtrW(hWnd, nOffset));
    const DWORD newStyle = (style & ~dwRemove) | dwAdd;
    if (style == newStyle)
        return FALSE;
    ::SetWindowLongPtrW(hWnd, nOffset, static_cast<LONG_PTR>(newStyle));
    if (nFlags != 0)
        ::SetWindowPos(hWnd, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | nFlags);
    return TRUE;
}

}  // namespace

void CWnd::SendMessageToDescendants(UINT message, WPARAM wParam, LPARAM lParam, BOOL bDeep, BOOL bOnlyPerm)
{
    SendToDescendants(m_hWnd, message, wParam, lParam, bDeep, bOnlyPerm);
}

BOOL CWnd::ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    return ModifyStyleImpl(m_hWnd, GWL_STYLE, dwRemove, dwAdd, nFlags);
}

BOOL CWnd::ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags)
{
    return ModifyStyleImpl(m_hWnd, GWL_EXSTYLE, dwRemove, dwAdd, nFlags);
}

////////////////////////////////////////////////////////////////////////////
// Geometry

void CWnd::CenterWindow(CWnd* pAlternateOwner)
{
    const DWORD style = GetStyle();
    HWND hWndCenter = CWnd::SafeHwnd(pAlternateOwner);
    if (pAlternateOwner == nullptr)
        hWndCenter = (style & WS_CHILD) ? ::GetParent(m_hWnd) : ::GetWindow(m_hWnd, GW_OWNER);
    CRect rcDlg;
    GetWindowRect(&rcDlg);
    CRect rcArea, rcCenter;
    if (!(style & WS_CHILD)) {
        // Not against an invisible or minimised window.
        if (hWndCenter != nullptr) {
            const DWORD centerStyle = static_cast<DWORD>(::GetWindowLongPtrW(hWndCenter, GWL_STYLE));
            if (!(centerStyle & WS_VISIBLE) || (centerStyle & WS_MINIMIZE))
                hWndCenter = nullptr;
        }
        MONITORINFO mi = {};
        mi.cbSize = sizeof mi;
        if (hWndCenter == nullptr) {
            ::GetMonitorInfoW(::MonitorFromWindow(CWnd::SafeHwnd(AfxGetMainWnd()), MONITOR_DEFAULTTOPRIMARY), &mi);
            rcCenter = mi.rcWork;
            rcArea = mi.rcWork;
        } else {
            ::GetWindowRect(hWndCenter, &rcCenter);
            ::GetMonitorInfoW(::MonitorFromWindow(hWndCenter, MONITOR_DEFAULTTONEAREST), &mi);
            rcArea = mi.rcWork;
        }
    } else {
        HWND parent = ::GetParent(m_hWnd);
        ::GetClientRect(parent, &rcArea);
        ::GetClientRect(hWndCenter, &rcCenter);
        ::MapWindowPoints(hWndCenter, parent, reinterpret_cast<POINT*>(&rcCenter), 2);
    }
    int x = (rcCenter.left + rcCenter.right) / 2 - rcDlg.Width() / 2;
    int y = (rcCenter.top + rcCenter.bottom) / 2 - rcDlg.Height() / 2;
    if (x + rcDlg.Width() > rcArea.right)
        x = rcArea.right - rcDlg.Width();
    if (x < rcArea.left)
        x = rcArea.left;
    if (y + rcDlg.Height() > rcArea.bottom)
        y = rcArea.bottom - rcDlg.Height();
    if (y < rcArea.top)
        y = rcArea.top;
    ::SetWindowPos(m_hWnd, nullptr, x, y, -1, -1, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

////////////////////////////////////////////////////////////////////////////
// Scroll bars, menus, message boxes

BOOL CWnd::GetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, UINT nMask)
{
    lpScrollInfo->cbSize = sizeof(SCROLLINFO);
    lpScrollInfo->fMask = nMask;
    return ::GetScrollInfo(m_hWnd, nBar, lpScrollInfo);
}

BOOL CWnd::SetScrollInfo(int nBar, LPSCROLLINFO lpScrollInfo, BOOL bRedraw)
{
    lpScrollInfo->cbSize = sizeof(SCROLLINFO);
    ::SetScrollInfo(m_hWnd, nBar, lpScrollInfo, bRedraw);
    return TRUE;
}

int CWnd::GetScrollLimit(int nBar)
{
    int nMin = 0, nMax = 0;
    GetScrollRange(nBar, &nMin, &nMax);
    SCROLLINFO info;
    if (GetScrollInfo(nBar, &info, SIF_PAGE) && info.nPage > 1)
        nMax -= static_cast<int>(info.nPage) - 1;
    return nMax;
}

CMenu* CWnd::GetMenu() const
{
    return CMenu::FromHandle(::GetMenu(m_hWnd));
}

BOOL CWnd::SetMenu(CMenu* pMenu)
{
    return ::SetMenu(m_hWnd, pMenu != nullptr ? pMenu->m_hMenu : nullptr);
}

CMenu* CWnd::GetSystemMenu(BOOL bRevert) const
{
    return CMenu::FromHandle(::GetSystemMenu(m_hWnd, bRevert));
}

int CWnd::MessageBox(LPCTSTR lpszText, LPCTSTR lpszCaption, UINT nType)
{
    if (lpszCaption == nullptr)
        lpszCaption = AfxGetAppName();
    return ::MessageBoxW(GetSafeHwnd(), lpszText, lpszCaption, nType);
}
