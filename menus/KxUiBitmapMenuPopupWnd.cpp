// A bitmap menu shown in a window of its own, for customising menus.
#include "KxUiBitmapMenuPopupWnd.h"
#include "KxUiBitmapMenuOrganizer.h"
#include <algorithm>

IMPLEMENT_DYNAMIC(KxUiBitmapMenuPopupWnd, CWnd)

namespace {
// Timer that keeps the highlight in step when the mouse leaves the window.
const UINT_PTR kHoverTimer = 1;
const UINT kHoverPeriod = 100;
}  // namespace

BEGIN_MESSAGE_MAP(KxUiBitmapMenuPopupWnd, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_MBUTTONDOWN()
    ON_WM_RBUTTONDOWN()
    ON_WM_RBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSEACTIVATE()
    ON_WM_SETTINGCHANGE()
    ON_WM_TIMER()
    ON_WM_CAPTURECHANGED()
    ON_MESSAGE(KXUI_WM_COMMANDCHOSEN, &KxUiBitmapMenuPopupWnd::OnCommandChosen)
    ON_COMMAND(ID_KXUI_CUST_DELETE, &KxUiBitmapMenuPopupWnd::OnCustBMDelete)
    ON_COMMAND(ID_KXUI_CUST_APPEARANCE, &KxUiBitmapMenuPopupWnd::OnCustBMAppearance)
    ON_COMMAND(ID_KXUI_CUST_SEPARATOR_BEFORE, &KxUiBitmapMenuPopupWnd::OnCustBMSeparatorBefore)
    ON_COMMAND(ID_KXUI_CUST_SEPARATOR_AFTER, &KxUiBitmapMenuPopupWnd::OnCustBMSeparatorAfter)
    ON_COMMAND(ID_KXUI_CUST_RECENTLY_USED, &KxUiBitmapMenuPopupWnd::OnCustBMRecentlyUsed)
END_MESSAGE_MAP()

KxUiBitmapMenuPopupWnd::KxUiBitmapMenuPopupWnd()
    : m_pBitmapMenu(nullptr), m_hWndOwner(nullptr), m_nHotItem(-1), m_bDragging(FALSE), m_bChild(FALSE)
{
}

KxUiBitmapMenuPopupWnd::~KxUiBitmapMenuPopupWnd()
{
    if (m_pBitmapMenu != nullptr && m_pBitmapMenu->GetPopupWnd() == this)
        m_pBitmapMenu->SetPopupWnd(nullptr);
    if (GetSafeHwnd() != nullptr)
        DestroyWindow();
}

BOOL KxUiBitmapMenuPopupWnd::TrackPopupMenu(KxUiBitmapMenu* pMenu, UINT nFlags, int x, int y, CWnd* pWnd)
{
    if (pMenu == nullptr || pMenu->m_hMenu == nullptr || !::IsMenu(pMenu->m_hMenu))
        return FALSE;
    if (m_pBitmapMenu != nullptr && m_pBitmapMenu != pMenu)
        ResetPopupMenu();
    const BOOL child = (nFlags & KXUI_TPM_CHILDWINDOW) != 0;
    if (child && pWnd == nullptr)
        return FALSE;
    if (GetSafeHwnd() != nullptr && child != m_bChild)
        DestroyWindow();
    m_bChild = child;
    m_hWndOwner = pWnd != nullptr ? pWnd->GetSafeHwnd() : nullptr;
    if (GetSafeHwnd() == nullptr) {
        LPCTSTR cls = AfxRegisterWndClass(CS_DROPSHADOW * 0, ::LoadCursorW(nullptr, IDC_ARROW));
        const BOOL made = child ? CreateEx(0, cls, L"", WS_CHILD, CRect(0, 0, 1, 1), pWnd, 0)
                                : CreateEx(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, cls, L"", WS_POPUP, CRect(0, 0, 1, 1),
                                           pWnd, 0);
        if (!made)
            return FALSE;
    }
    m_pBitmapMenu = pMenu;
    pMenu->SetPopupWnd(this);
    m_nHotItem = -1;
    pMenu->CalcExtents();
    if (!CalcLayout(nFlags, x, y))
        return FALSE;
    ShowWindow(child ? SW_SHOW : SW_SHOWNOACTIVATE);
    Invalidate();
    return TRUE;
}

void KxUiBitmapMenuPopupWnd::ResetPopupMenu()
{
    if (GetSafeHwnd() != nullptr) {
        KillTimer(kHoverTimer);
        if (::GetCapture() == m_hWnd)
            ::ReleaseCapture();
        ShowWindow(SW_HIDE);
    }
    if (m_pBitmapMenu != nullptr) {
        m_pBitmapMenu->SetCustomizedItem(-1);
        m_pBitmapMenu->SetInsertMark(-1);
        m_pBitmapMenu->SetDraggedItem(-1);
        if (m_pBitmapMenu->GetPopupWnd() == this)
            m_pBitmapMenu->SetPopupWnd(nullptr);
    }
    m_pBitmapMenu = nullptr;
    m_arrItemRects.RemoveAll();
    m_nHotItem = -1;
    m_bDragging = FALSE;
}

BOOL KxUiBitmapMenuPopupWnd::CalcLayout(UINT nFlags, int x, int y)
{
    m_arrItemRects.RemoveAll();
    if (m_pBitmapMenu == nullptr)
        return FALSE;
    HMENU hMenu = m_pBitmapMenu->m_hMenu;
    const int count = ::GetMenuItemCount(hMenu);
    int top = m_nBorder;
    int width = 0;
    for (int pos = 0; pos < count; ++pos) {
        MENUITEMINFOW mii{};
        mii.cbSize = sizeof(mii);
        mii.fMask = MIIM_ID | MIIM_DATA | MIIM_FTYPE;
        ::GetMenuItemInfoW(hMenu, pos, TRUE, &mii);
        MEASUREITEMSTRUCT mis{};
        mis.CtlType = ODT_MENU;
        mis.itemID = (mii.fType & MFT_SEPARATOR) ? 0 : mii.wID;
        mis.itemData = mii.dwItemData;
        m_pBitmapMenu->MeasureItem(&mis);
        m_arrItemRects.Add(CRect(m_nBorder, top, m_nBorder + static_cast<int>(mis.itemWidth),
                                 top + static_cast<int>(mis.itemHeight)));
        top += static_cast<int>(mis.itemHeight);
        width = std::max(width, static_cast<int>(mis.itemWidth));
    }
    // Every row is as wide as the widest.
    for (INT_PTR i = 0; i < m_arrItemRects.GetSize(); ++i)
        m_arrItemRects[i].right = m_nBorder + width;
    const int cx = width + 2 * m_nBorder;
    const int cy = top + m_nBorder;
    if (nFlags & TPM_CENTERALIGN)
        x -= cx / 2;
    else if (nFlags & TPM_RIGHTALIGN)
        x -= cx;
    if (nFlags & TPM_VCENTERALIGN)
        y -= cy / 2;
    else if (nFlags & TPM_BOTTOMALIGN)
        y -= cy;
    if (!m_bChild) {
        // Kept on the monitor's work area.
        MONITORINFO mi{};
        mi.cbSize = sizeof(mi);
        if (::GetMonitorInfoW(::MonitorFromPoint(CPoint(x, y), MONITOR_DEFAULTTONEAREST), &mi)) {
            x = std::max(static_cast<int>(mi.rcWork.left), std::min(x, static_cast<int>(mi.rcWork.right) - cx));
            y = std::max(static_cast<int>(mi.rcWork.top), std::min(y, static_cast<int>(mi.rcWork.bottom) - cy));
        }
    }
    SetWindowPos(m_bChild ? nullptr : &CWnd::wndTopMost, x, y, cx, cy,
                 SWP_NOACTIVATE | (m_bChild ? SWP_NOZORDER : 0));
    return TRUE;
}

void KxUiBitmapMenuPopupWnd::UpdateMenuMetrics()
{
    if (m_pBitmapMenu != nullptr)
        m_pBitmapMenu->CalcExtents();
}

void KxUiBitmapMenuPopupWnd::OnMenuChanged()
{
    if (m_pBitmapMenu == nullptr || GetSafeHwnd() == nullptr)
        return;
    CRect rect;
    GetWindowRect(&rect);
    if (m_bChild)
        GetParent()->ScreenToClient(&rect);
    UpdateMenuMetrics();
    CalcLayout(TPM_LEFTALIGN | TPM_TOPALIGN, rect.left, rect.top);
    Invalidate();
}

CRect KxUiBitmapMenuPopupWnd::GetItemRect(int nIndex) const
{
    if (nIndex < 0 || nIndex >= m_arrItemRects.GetSize())
        return CRect(0, 0, 0, 0);
    return m_arrItemRects[nIndex];
}

int KxUiBitmapMenuPopupWnd::ItemFromPoint(CPoint point, int* pbBefore) const
{
    if (m_pBitmapMenu == nullptr || point.x < m_nBorder || m_arrItemRects.IsEmpty() ||
        point.x >= m_arrItemRects[0].right || point.y < m_nBorder)
        return -1;
    // The menu counts its items from y = 0; the frame drawn here comes first.
    CPoint inMenu(point.x, point.y - m_nBorder);
    return m_pBitmapMenu->HitTest(&inMenu, pbBefore);
}

void KxUiBitmapMenuPopupWnd::RedrawItem(int nIndex)
{
    const CRect rect = GetItemRect(nIndex);
    if (!rect.IsRectEmpty() && GetSafeHwnd() != nullptr)
        InvalidateRect(&rect, FALSE);
}

void KxUiBitmapMenuPopupWnd::SetHotItem(int nIndex)
{
    if (nIndex == m_nHotItem)
        return;
    const int old = m_nHotItem;
    m_nHotItem = nIndex;
    RedrawItem(old);
    RedrawItem(nIndex);
}

BOOL KxUiBitmapMenuPopupWnd::OnEraseBkgnd(CDC*)
{
    return TRUE;  // OnPaint covers every pixel
}

void KxUiBitmapMenuPopupWnd::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    dc.FillSolidRect(&client, ::GetSysColor(COLOR_MENU));
    ::DrawEdge(dc.m_hDC, &client, EDGE_RAISED, BF_RECT);
    if (m_pBitmapMenu == nullptr)
        return;
    HMENU hMenu = m_pBitmapMenu->m_hMenu;
    const int count = std::min(::GetMenuItemCount(hMenu), static_cast<int>(m_arrItemRects.GetSize()));
    for (int pos = 0; pos < count; ++pos) {
        MENUITEMINFOW mii{};
        mii.cbSize = sizeof(mii);
        mii.fMask = MIIM_ID | MIIM_DATA | MIIM_FTYPE | MIIM_STATE;
        ::GetMenuItemInfoW(hMenu, pos, TRUE, &mii);
        DRAWITEMSTRUCT dis{};
        dis.CtlType = ODT_MENU;
        dis.itemID = (mii.fType & MFT_SEPARATOR) ? 0 : mii.wID;
        dis.itemAction = ODA_DRAWENTIRE;
        dis.itemState = (pos == m_nHotItem && !(mii.fType & MFT_SEPARATOR) ? ODS_SELECTED : 0) |
                        ((mii.fState & MFS_GRAYED) ? ODS_GRAYED : 0) | ((mii.fState & MFS_CHECKED) ? ODS_CHECKED : 0);
        dis.hwndItem = reinterpret_cast<HWND>(hMenu);
        dis.hDC = dc.m_hDC;
        dis.rcItem = m_arrItemRects[pos];
        dis.itemData = mii.dwItemData;
        const int saved = ::SaveDC(dc.m_hDC);
        m_pBitmapMenu->DrawItem(&dis);
        ::RestoreDC(dc.m_hDC, saved);
    }
}

void KxUiBitmapMenuPopupWnd::OnMouseMove(UINT, CPoint point)
{
    if (m_pBitmapMenu == nullptr)
        return;
    int before = 1;
    const int item = ItemFromPoint(point, &before);
    if (m_bDragging) {
        // The mark goes before the item under the mouse, or after it in its lower half.
        const int count = static_cast<int>(m_arrItemRects.GetSize());
        int mark = item < 0 ? (point.y < m_nBorder ? 0 : count) : (before ? item : item + 1);
        const int old = m_pBitmapMenu->SetInsertMark(mark);
        if (old != mark)
            Invalidate(FALSE);
        return;
    }
    SetHotItem(item);
    if (!m_bChild)
        SetTimer(kHoverTimer, kHoverPeriod, nullptr);
}

void KxUiBitmapMenuPopupWnd::OnTimer(UINT_PTR nIDEvent)
{
    if (nIDEvent != kHoverTimer)
        return;
    CPoint pt;
    ::GetCursorPos(&pt);
    CRect rect;
    GetWindowRect(&rect);
    if (!rect.PtInRect(pt) && !m_bDragging) {
        KillTimer(kHoverTimer);
        SetHotItem(-1);
    }
}

void KxUiBitmapMenuPopupWnd::OnLButtonDown(UINT, CPoint point)
{
    if (m_pBitmapMenu == nullptr)
        return;
    const int item = ItemFromPoint(point);
    if (item < 0)
        return;
    if (m_pBitmapMenu->IsInCustomizationMode()) {
        const int old = m_pBitmapMenu->SetCustomizedItem(item);
        RedrawItem(old);
        RedrawItem(item);
        m_pBitmapMenu->OnBeginDragDrop(item);
        m_bDragging = TRUE;
        m_ptDragStart = point;
        SetCapture();
        return;
    }
    // Choosing a command: the owner hears of it and the window goes.
    const UINT state = ::GetMenuState(m_pBitmapMenu->m_hMenu, item, MF_BYPOSITION);
    const UINT id = ::GetMenuItemID(m_pBitmapMenu->m_hMenu, item);
    if ((state & (MF_GRAYED | MF_DISABLED | MF_SEPARATOR)) || id == 0 || id == 0xFFFFFFFF)
        return;
    HWND owner = m_hWndOwner;
    ResetPopupMenu();
    if (owner != nullptr && ::IsWindow(owner))
        ::PostMessageW(owner, WM_COMMAND, MAKEWPARAM(id, 0), 0);
}

void KxUiBitmapMenuPopupWnd::OnLButtonUp(UINT, CPoint point)
{
    if (!m_bDragging)
        return;
    m_bDragging = FALSE;
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
    // A click without movement only selects.
    if (std::abs(point.y - m_ptDragStart.y) < ::GetSystemMetrics(SM_CYDRAG) &&
        std::abs(point.x - m_ptDragStart.x) < ::GetSystemMetrics(SM_CXDRAG)) {
        m_pBitmapMenu->SetInsertMark(-1);
        m_pBitmapMenu->SetDraggedItem(-1);
        Invalidate(FALSE);
        return;
    }
    DropDraggedItem();
}

void KxUiBitmapMenuPopupWnd::DropDraggedItem()
{
    KxUiBitmapMenu* menu = m_pBitmapMenu;
    const int from = menu->GetDraggedItem();
    int to = menu->GetInsertMark();
    menu->SetInsertMark(-1);
    menu->SetDraggedItem(-1);
    HMENU hMenu = menu->m_hMenu;
    const int count = ::GetMenuItemCount(hMenu);
    if (from < 0 || from >= count || to < 0 || to > count || to == from || to == from + 1) {
        Invalidate(FALSE);
        return;
    }
    // The item is taken out and put in again with everything it had (its submenu too).
    wchar_t text[300] = {};
    MENUITEMINFOW mii{};
    mii.cbSize = sizeof(mii);
    mii.fMask = MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_CHECKMARKS | MIIM_FTYPE | MIIM_DATA | MIIM_STRING;
    mii.dwTypeData = text;
    mii.cch = 300;
    if (!::GetMenuItemInfoW(hMenu, from, TRUE, &mii))
        return;
    if (mii.fType & MFT_SEPARATOR)
        mii.fMask &= ~MIIM_STRING;
    else
        mii.dwTypeData = text;
    ::RemoveMenu(hMenu, from, MF_BYPOSITION);
    if (to > from)
        --to;
    ::InsertMenuItemW(hMenu, static_cast<UINT>(to), TRUE, &mii);
    menu->SetCustomizedItem(to);
    menu->UpdateContents();
}

void KxUiBitmapMenuPopupWnd::OnCaptureChanged(CWnd* pWnd)
{
    if (m_bDragging && pWnd != this) {
        m_bDragging = FALSE;
        if (m_pBitmapMenu != nullptr) {
            m_pBitmapMenu->SetInsertMark(-1);
            m_pBitmapMenu->SetDraggedItem(-1);
        }
        Invalidate(FALSE);
    }
    CWnd::OnCaptureChanged(pWnd);
}

void KxUiBitmapMenuPopupWnd::OnMButtonDown(UINT, CPoint point)
{
    // The middle button highlights without choosing.
    SetHotItem(ItemFromPoint(point));
}

void KxUiBitmapMenuPopupWnd::OnRButtonDown(UINT, CPoint point)
{
    if (m_pBitmapMenu == nullptr || !m_pBitmapMenu->IsInCustomizationMode())
        return;
    const int item = ItemFromPoint(point);
    if (item < 0)
        return;
    const int old = m_pBitmapMenu->SetCustomizedItem(item);
    RedrawItem(old);
    RedrawItem(item);
}

void KxUiBitmapMenuPopupWnd::OnRButtonUp(UINT, CPoint point)
{
    if (m_pBitmapMenu == nullptr || !m_pBitmapMenu->IsInCustomizationMode())
        return;
    const int item = ItemFromPoint(point);
    if (item < 0)
        return;
    CPoint screen = point;
    ClientToScreen(&screen);
    m_pBitmapMenu->DisplayCustomizeItemContextMenu(item, screen);
}

int KxUiBitmapMenuPopupWnd::OnMouseActivate(CWnd*, UINT, UINT)
{
    return MA_NOACTIVATE;  // the window the menu belongs to keeps the focus
}

void KxUiBitmapMenuPopupWnd::OnSettingChange(UINT, LPCTSTR)
{
    OnMenuChanged();
}

LRESULT KxUiBitmapMenuPopupWnd::OnCommandChosen(WPARAM, LPARAM)
{
    // The recently-used set may have changed the look of the items.
    Invalidate(FALSE);
    return 0;
}

void KxUiBitmapMenuPopupWnd::OnCustBMDelete()
{
    if (m_pBitmapMenu != nullptr)
        m_pBitmapMenu->OnCustBMDelete();
}

void KxUiBitmapMenuPopupWnd::OnCustBMAppearance()
{
    if (m_pBitmapMenu != nullptr)
        m_pBitmapMenu->OnCustBMAppearance();
}

void KxUiBitmapMenuPopupWnd::OnCustBMSeparatorBefore()
{
    if (m_pBitmapMenu != nullptr)
        m_pBitmapMenu->OnCustBMSeparatorBefore();
}

void KxUiBitmapMenuPopupWnd::OnCustBMSeparatorAfter()
{
    if (m_pBitmapMenu != nullptr)
        m_pBitmapMenu->OnCustBMSeparatorAfter();
}

void KxUiBitmapMenuPopupWnd::OnCustBMRecentlyUsed()
{
    if (m_pBitmapMenu != nullptr)
        m_pBitmapMenu->OnCustBMRecentlyUsed();
}
