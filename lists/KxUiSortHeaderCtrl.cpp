// The owner-drawn header of the extended list and its sorting variant.
#include "KxUiSortHeaderCtrl.h"
#include "XControl.h"
#include <algorithm>

IMPLEMENT_DYNAMIC(KxUiXHeaderCtrl, CHeaderCtrl)

BEGIN_MESSAGE_MAP(KxUiXHeaderCtrl, CHeaderCtrl)
    ON_MESSAGE(HDM_INSERTITEMW, &KxUiXHeaderCtrl::OnInsertItem)
    ON_MESSAGE(HDM_SETITEMW, &KxUiXHeaderCtrl::OnSetItem)
    ON_WM_MOUSEMOVE()
END_MESSAGE_MAP()

KxUiXHeaderCtrl::KxUiXHeaderCtrl() : m_nMargin(2) {}

KxUiXHeaderCtrl::~KxUiXHeaderCtrl() = default;

void KxUiXHeaderCtrl::PreSubclassWindow()
{
    CHeaderCtrl::PreSubclassWindow();
    makeOwnerDraw();
}

void KxUiXHeaderCtrl::makeOwnerDraw()
{
    int n = GetItemCount();
    for (int i = 0; i < n; ++i) {
        HDITEM hdi = {};
        hdi.mask = HDI_FORMAT;
        if (GetItem(i, &hdi) && !(hdi.fmt & HDF_OWNERDRAW)) {
            hdi.fmt |= HDF_OWNERDRAW;
            SetItem(i, &hdi);
        }
    }
}

// Items arrive from the list view, which knows nothing of owner drawing: every insertion and
// every format change gets HDF_OWNERDRAW added on its way to the native header.
LRESULT KxUiXHeaderCtrl::OnInsertItem(WPARAM wParam, LPARAM lParam)
{
    if (lParam == 0)
        return Default();
    HDITEMW hdi = *reinterpret_cast<const HDITEMW*>(lParam);
    if (!(hdi.mask & HDI_FORMAT)) {
        hdi.mask |= HDI_FORMAT;
        hdi.fmt = HDF_LEFT | ((hdi.mask & HDI_TEXT) ? HDF_STRING : 0);
    }
    hdi.fmt |= HDF_OWNERDRAW;
    return DefWindowProc(HDM_INSERTITEMW, wParam, (LPARAM)&hdi);
}

LRESULT KxUiXHeaderCtrl::OnSetItem(WPARAM wParam, LPARAM lParam)
{
    if (lParam == 0 || !(reinterpret_cast<const HDITEMW*>(lParam)->mask & HDI_FORMAT))
        return Default();
    HDITEMW hdi = *reinterpret_cast<const HDITEMW*>(lParam);
    hdi.fmt |= HDF_OWNERDRAW;
    return DefWindowProc(HDM_SETITEMW, wParam, (LPARAM)&hdi);
}

void KxUiXHeaderCtrl::OnMouseMove(UINT nFlags, CPoint)
{
    if ((nFlags & MK_LBUTTON) != 0) {
        if (HWND hParent = ::GetParent(m_hWnd))
            ::PostMessageW(hParent, WM_RESIZE_COLUMN_XLISTCTRL, 0, 0);
    }
    Default();
}

void KxUiXHeaderCtrl::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct)
{
    if (lpDrawItemStruct == nullptr || lpDrawItemStruct->hDC == nullptr)
        return;
    CDC* pDC = CDC::FromHandle(lpDrawItemStruct->hDC);
    int nSaved = pDC->SaveDC();
    DrawItem(pDC, (int)lpDrawItemStruct->itemID, CRect(lpDrawItemStruct->rcItem),
             (lpDrawItemStruct->itemState & ODS_SELECTED) != 0);
    pDC->RestoreDC(nSaved);
}

void KxUiXHeaderCtrl::DrawItem(CDC* pDC, int nItem, CRect rect, bool bPressed)
{
    DrawBackground(pDC, rect, bPressed);
    WCHAR szText[260] = {};
    HDITEM hdi = {};
    hdi.mask = HDI_FORMAT | HDI_TEXT | HDI_IMAGE | HDI_BITMAP;
    hdi.pszText = szText;
    hdi.cchTextMax = 260;
    if (!GetItem(nItem, &hdi))
        return;
    CRect rcContent(rect);
    rcContent.DeflateRect(4, 0);
    if (bPressed)
        rcContent.OffsetRect(1, 1);
    DrawImage(pDC, rcContent, hdi);
    DrawTextW(pDC, nItem, rcContent, hdi);
}

void KxUiXHeaderCtrl::DrawBackground(CDC* pDC, const CRect& rect, bool bPressed)
{
    pDC->FillSolidRect(&rect, ::GetSysColor(COLOR_BTNFACE));
    CRect rc(rect);
    ::DrawEdge(pDC->GetSafeHdc(), &rc, bPressed ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT | BF_SOFT);
}

void KxUiXHeaderCtrl::DrawImage(CDC* pDC, CRect& rect, HDITEM& item)
{
    if (!(item.mask & HDI_IMAGE) || item.iImage < 0)
        return;
    if (CImageList* pList = GetImageList()) {
        int cx = 0, cy = 0;
        pList->GetIconSize(&cx, &cy);
        if (item.iImage < pList->GetImageCount()) {
            pList->Draw(pDC, item.iImage, CPoint(rect.left, rect.top + (rect.Height() - cy) / 2), ILD_TRANSPARENT);
            rect.left += cx + m_nMargin;
        }
        return;
    }
    // Without an image list, 1 and 2 are the header check: unchecked and checked.
    if (item.iImage == 1 || item.iImage == 2) {
        int n = std::min(13, rect.Height() - 2);
        CRect box(rect.left, rect.top + (rect.Height() - n) / 2, rect.left + n, 0);
        box.bottom = box.top + n;
        ::DrawFrameControl(pDC->GetSafeHdc(), &box, DFC_BUTTON,
                           DFCS_BUTTONCHECK | DFCS_FLAT | (item.iImage == 2 ? DFCS_CHECKED : 0));
        rect.left += n + m_nMargin + 2;
    }
}

int KxUiXHeaderCtrl::DrawTextW(CDC* pDC, int, CRect rect, HDITEM& item)
{
    if (rect.Width() <= 0 || !(item.mask & HDI_TEXT) || item.pszText == nullptr)
        return 0;
    UINT nAlign = (item.fmt & HDF_JUSTIFYMASK) == HDF_RIGHT ? DT_RIGHT
                  : (item.fmt & HDF_JUSTIFYMASK) == HDF_CENTER ? DT_CENTER
                                                                : DT_LEFT;
    pDC->SetBkMode(TRANSPARENT);
    pDC->SetTextColor(::GetSysColor(COLOR_BTNTEXT));
    pDC->DrawText(item.pszText, -1, &rect, nAlign | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
    CSize size = pDC->GetTextExtent(item.pszText, lstrlenW(item.pszText));
    return std::max(0, (int)std::min<LONG>(size.cx, rect.Width()));
}

////////////////////////////////////////////////////////////////////////////
// KxUiSortHeaderCtrl

IMPLEMENT_DYNAMIC(KxUiSortHeaderCtrl, KxUiXHeaderCtrl)

KxUiSortHeaderCtrl::KxUiSortHeaderCtrl() : m_directions(10), m_nSortColumn(-1)
{
    m_directions.InitHashTable(10);
}

KxUiSortHeaderCtrl::~KxUiSortHeaderCtrl() = default;

void KxUiSortHeaderCtrl::setSortArrow(int nColumn, bool bAscending)
{
    m_nSortColumn = nColumn;
    if (nColumn != -1)
        m_directions.SetAt(nColumn, bAscending);
    if (m_hWnd != nullptr)
        Invalidate();
}

bool KxUiSortHeaderCtrl::getSortAscending(int nColumn)
{
    bool bAscending = true;
    if (!m_directions.Lookup(nColumn, bAscending)) {
        bAscending = true;
        m_directions.SetAt(nColumn, true);
    }
    return bAscending;
}

// Triangle of odd width (a sharp apex) in the item's right end: h = item height, size = h / 2
// made odd by taking one off, margin = h / 4 from the top and from the right. The far corners
// are the last pixels inside the triangle (right - margin and top + margin + size are its
// exclusive ends), so that at height 20 the outlined triangle covers exactly 9 x 9 pixels with
// 5 free pixels above it and 5 to its right, its apex on its middle column.
void KxUiSortHeaderCtrl::getArrowPoints(const CRect& rect, bool bAscending, POINT pts[3])
{
    int h = rect.Height();
    int size = (h * 2) / 4;
    int margin = h / 4;
    if (size % 2 == 0)
        size -= 1;
    int half = (size + 1) / 2;
    int apexX = rect.right - margin - half;
    int left = rect.right - margin - size, right = rect.right - margin - 1;
    int yTop = rect.top + margin, yBottom = rect.top + margin + size - 1;
    pts[0] = POINT{apexX, bAscending ? yTop : yBottom};
    pts[1] = POINT{left, bAscending ? yBottom : yTop};
    pts[2] = POINT{right, bAscending ? yBottom : yTop};
}

void KxUiSortHeaderCtrl::DrawItem(CDC* pDC, int nItem, CRect rect, bool bPressed)
{
    KxUiXHeaderCtrl::DrawItem(pDC, nItem, rect, bPressed);
    if (m_nSortColumn < 0 || nItem != m_nSortColumn)
        return;
    bool bAscending = true;
    m_directions.Lookup(m_nSortColumn, bAscending);
    POINT pts[3];
    getArrowPoints(rect, bAscending, pts);
    CBrush brush;
    brush.CreateSolidBrush(::GetSysColor(COLOR_BTNSHADOW));
    CPen pen;
    pen.CreatePen(PS_SOLID, 1, ::GetSysColor(COLOR_BTNHIGHLIGHT));
    CBrush* pOldBrush = pDC->SelectObject(&brush);
    CPen* pOldPen = pDC->SelectObject(&pen);
    pDC->Polygon(pts, 3);
    pDC->SelectObject(pOldPen);
    pDC->SelectObject(pOldBrush);
}

int KxUiSortHeaderCtrl::DrawTextW(CDC* pDC, int nItem, CRect rect, HDITEM& item)
{
    if (nItem == m_nSortColumn && m_nSortColumn >= 0) {
        CRect rcItem;
        GetItemRect(nItem, &rcItem);
        rect.right -= rcItem.Height();
    }
    if (rect.Width() <= 0 || !(item.mask & HDI_TEXT) || !(item.fmt & HDF_STRING) || item.pszText == nullptr)
        return 0;
    pDC->SetBkMode(TRANSPARENT);
    pDC->SetTextColor(::GetSysColor(COLOR_BTNTEXT));
    pDC->DrawText(item.pszText, -1, &rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
    CSize size = pDC->GetTextExtent(item.pszText, lstrlenW(item.pszText));
    return std::max(0, (int)std::min<LONG>(size.cx, rect.Width()));
}
