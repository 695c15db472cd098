// The drop-down list of a combo cell of the extended list.
#include "KxUiXListBox.h"
#include "KxUiXListCtrl.h"
#include <algorithm>

IMPLEMENT_DYNAMIC(KxUiXListBox, CListBox)

BEGIN_MESSAGE_MAP(KxUiXListBox, CListBox)
    ON_WM_KEYDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_KILLFOCUS()
    ON_WM_GETDLGCODE()
END_MESSAGE_MAP()

KxUiXListBox::KxUiXListBox() = default;

KxUiXListBox::~KxUiXListBox()
{
    if (m_hWnd != nullptr)
        DestroyWindow();
}

void KxUiXListBox::setItems(const CStringArray& items)
{
    ResetContent();
    for (INT_PTR i = 0; i < items.GetSize(); ++i)
        AddString(items[i]);
}

void KxUiXListBox::fitToCell(const CRect& rcCell, int nLines)
{
    int nCount = GetCount();
    int nShown = std::max(1, std::min(nCount, nLines > 0 ? nLines : nCount));
    int cyItem = std::max(1, GetItemHeight(0));
    CRect rcFrame(0, 0, rcCell.Width(), nShown * cyItem);
    ::AdjustWindowRectEx(&rcFrame, GetStyle() & ~WS_VSCROLL, FALSE, GetExStyle());
    int cy = rcFrame.Height();
    int y = rcCell.top;
    // Up when the parent's client area ends before the list would.
    if (CWnd* pParent = GetParent()) {
        CRect rcClient;
        pParent->GetClientRect(&rcClient);
        if (y + cy > rcClient.bottom)
            y = std::max(0, (int)rcClient.bottom - cy);
    }
    SetWindowPos(nullptr, rcCell.left, y, rcCell.Width(), cy, SWP_NOZORDER | SWP_NOACTIVATE);
    ShowScrollBar(SB_VERT, nCount > nShown);
}

int KxUiXListBox::selectText(const CString& strText)
{
    if (GetCount() <= 0)
        return -1;
    int nSel = FindStringExact(-1, strText);
    if (nSel == LB_ERR)
        nSel = 0;
    SetCurSel(nSel);
    return nSel;
}

void KxUiXListBox::notifyList(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    if (HWND hParent = ::GetParent(m_hWnd))
        ::PostMessageW(hParent, nMessage, wParam, lParam);
}

void KxUiXListBox::OnKeyDown(UINT nChar, UINT, UINT)
{
    if (nChar == VK_RETURN) {
        notifyList(XControl::XM_VK_RETURN, VK_RETURN, 1);
        return;
    }
    if (nChar == VK_ESCAPE) {
        notifyList(XControl::XM_VK_ESCAPE, 0, 0);
        return;
    }
    Default();
}

void KxUiXListBox::OnLButtonUp(UINT, CPoint point)
{
    Default();
    CRect rc;
    GetClientRect(&rc);
    if (rc.PtInRect(point) && GetCurSel() != LB_ERR)
        notifyList(XControl::XM_VK_RETURN, VK_RETURN, 1);
}

void KxUiXListBox::OnKillFocus(CWnd* pNewWnd)
{
    Default();
    if (KxUiXListCtrl* pList = dynamic_cast<KxUiXListCtrl*>(CWnd::FromHandlePermanent(::GetParent(m_hWnd))))
        pList->editorLostFocus(m_hWnd, pNewWnd != nullptr ? pNewWnd->GetSafeHwnd() : nullptr);
}

UINT KxUiXListBox::OnGetDlgCode()
{
    return DLGC_WANTALLKEYS | DLGC_WANTARROWS | DLGC_WANTCHARS;
}
