// Common controls: list view, header, tree view, tab, progress, spin button, slider and
// tool tip wrappers.
#include "afxcmn.h"

namespace {

void SetResult(LRESULT* pResult, LRESULT value)
{
    if (pResult != NULL)
        *pResult = value;
}

// Creates a common control of class lpszClass after registering the classes in dwICC.
BOOL CreateCommon(CWnd* pWnd, DWORD dwICC, LPCTSTR lpszClass, DWORD dwExStyle, DWORD dwStyle, const RECT& rect,
                  CWnd* pParentWnd, UINT nID)
{
    if (!AfxInitCommonControls(dwICC))
        return FALSE;
    return pWnd->CreateEx(dwExStyle, lpszClass, NULL, dwStyle, rect, pParentWnd, nID);
}

}  // namespace

////////////////////////////////////////////////////////////////////////////
// CHeaderCtrl

IMPLEMENT_DYNAMIC(CHeaderCtrl, CWnd)

CHeaderCtrl::~CHeaderCtrl()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CHeaderCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommon(this, ICC_LISTVIEW_CLASSES, WC_HEADERW, 0, dwStyle, rect, pParentWnd, nID);
}

BOOL CHeaderCtrl::CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommon(this, ICC_LISTVIEW_CLASSES, WC_HEADERW, dwExStyle, dwStyle, rect, pParentWnd, nID);
}

BOOL CHeaderCtrl::GetOrderArray(LPINT piArray, int iCount)
{
    if (piArray == NULL)
        return FALSE;
    if (iCount < 0)
        iCount = GetItemCount();
    return (BOOL)SendMessage(HDM_GETORDERARRAY, iCount, (LPARAM)piArray);
}

CImageList* CHeaderCtrl::SetImageList(CImageList* pImageList)
{
    return CImageList::FromHandle((HIMAGELIST)SendMessage(HDM_SETIMAGELIST, 0, (LPARAM)pImageList->GetSafeHandle()));
}

CImageList* CHeaderCtrl::GetImageList() const
{
    return CImageList::FromHandle((HIMAGELIST)SendMessage(HDM_GETIMAGELIST));
}

CImageList* CHeaderCtrl::CreateDragImage(int nIndex)
{
    HIMAGELIST h = (HIMAGELIST)SendMessage(HDM_CREATEDRAGIMAGE, nIndex);
    if (h == NULL)
        return NULL;
    CImageList* pList = new CImageList;
    pList->Attach(h);
    return pList;
}

void CHeaderCtrl::DrawItem(LPDRAWITEMSTRUCT)
{
}

BOOL CHeaderCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    SetResult(pResult, TRUE);
    return TRUE;
}

////////////////////////////////////////////////////////////////////////////
// CListCtrl

IMPLEMENT_DYNAMIC(CListCtrl, CWnd)

CListCtrl::~CListCtrl()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CListCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommon(this, ICC_LISTVIEW_CLASSES, WC_LISTVIEWW, 0, dwStyle, rect, pParentWnd, nID);
}

BOOL CListCtrl::CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommon(this, ICC_LISTVIEW_CLASSES, WC_LISTVIEWW, dwExStyle, dwStyle, rect, pParentWnd, nID);
}

CImageList* CListCtrl::GetImageList(int nImageList) const
{
    return CImageList::FromHandle((HIMAGELIST)SendMessage(LVM_GETIMAGELIST, nImageList));
}

CImageList* CListCtrl::SetImageList(CImageList* pImageList, int nImageListType)
{
    return CImageList::FromHandle(
        (HIMAGELIST)SendMessage(LVM_SETIMAGELIST, nImageListType, (LPARAM)pImageList->GetSafeHandle()));
}

CHeaderCtrl* CListCtrl::GetHeaderCtrl() const
{
    // The header is the list view's own child; a wrapper of it may be temporary.
    HWND hHeader = (HWND)SendMessage(LVM_GETHEADER);
    return hHeader == NULL ? NULL : static_cast<CHeaderCtrl*>(CWnd::FromHandle(hHeader));
}

CEdit* CListCtrl::GetEditControl() const
{
    HWND hEdit = (HWND)SendMessage(LVM_GETEDITCONTROL);
    return hEdit == NULL ? NULL : static_cast<CEdit*>(CWnd::FromHandle(hEdit));
}

CToolTipCtrl* CListCtrl::GetToolTips() const
{
    HWND hTip = (HWND)SendMessage(LVM_GETTOOLTIPS);
    return hTip == NULL ? NULL : static_cast<CToolTipCtrl*>(CWnd::FromHandle(hTip));
}

int CListCtrl::InsertColumn(int nCol, LPCTSTR lpszColumnHeading, int nFormat, int nWidth, int nSubItem)
{
    LVCOLUMN column = {};
    column.mask = LVCF_TEXT | LVCF_FMT;
    column.pszText = const_cast<LPTSTR>(lpszColumnHeading);
    column.fmt = nFormat;
    if (nWidth != -1) {
        column.mask |= LVCF_WIDTH;
        column.cx = nWidth;
    }
    if (nSubItem != -1) {
        column.mask |= LVCF_SUBITEM;
        column.iSubItem = nSubItem;
    }
    return InsertColumn(nCol, &column);
}

BOOL CListCtrl::GetColumnOrderArray(LPINT piArray, int iCount)
{
    if (piArray == NULL)
        return FALSE;
    if (iCount < 0) {
        CHeaderCtrl* pHeader = GetHeaderCtrl();
        if (pHeader == NULL)
            return FALSE;
        iCount = pHeader->GetItemCount();
    }
    return (BOOL)SendMessage(LVM_GETCOLUMNORDERARRAY, iCount, (LPARAM)piArray);
}

int CListCtrl::InsertItem(int nItem, LPCTSTR lpszItem)
{
    return InsertItem(LVIF_TEXT, nItem, lpszItem, 0, 0, 0, 0);
}

int CListCtrl::InsertItem(int nItem, LPCTSTR lpszItem, int nImage)
{
    return InsertItem(LVIF_TEXT | LVIF_IMAGE, nItem, lpszItem, 0, 0, nImage, 0);
}

int CListCtrl::InsertItem(UINT nMask, int nItem, LPCTSTR lpszItem, UINT nState, UINT nStateMask, int nImage,
                          LPARAM lParam)
{
    LVITEM item = {};
    item.mask = nMask;
    item.iItem = nItem;
    item.pszText = const_cast<LPTSTR>(lpszItem);
    item.state = nState;
    item.stateMask = nStateMask;
    item.iImage = nImage;
    item.lParam = lParam;
    return InsertItem(&item);
}

BOOL CListCtrl::SetItem(int nItem, int nSubItem, UINT nMask, LPCTSTR lpszItem, int nImage, UINT nState,
                        UINT nStateMask, LPARAM lParam)
{
    return SetItem(nItem, nSubItem, nMask & ~LVIF_INDENT, lpszItem, nImage, nState, nStateMask, lParam, 0);
}

BOOL CListCtrl::SetItem(int nItem, int nSubItem, UINT nMask, LPCTSTR lpszItem, int nImage, UINT nState,
                        UINT nStateMask, LPARAM lParam, int nIndent)
{
    LVITEM item = {};
    item.mask = nMask;
    item.iItem = nItem;
    item.iSubItem = nSubItem;
    item.pszText = const_cast<LPTSTR>(lpszItem);
    item.state = nState;
    item.stateMask = nStateMask;
    item.iImage = nImage;
    item.lParam = lParam;
    item.iIndent = nIndent;
    return SetItem(&item);
}

CString CListCtrl::GetItemText(int nItem, int nSubItem) const
{
    // The control copies at most cchTextMax - 1 characters; grow until the text fits.
    CString text;
    LVITEM item = {};
    item.iSubItem = nSubItem;
    for (int size = 256;; size *= 2) {
        item.cchTextMax = size;
        item.pszText = text.GetBuffer(size);
        const int n = (int)SendMessage(LVM_GETITEMTEXTW, nItem, (LPARAM)&item);
        text.ReleaseBuffer(n);
        if (n < size - 1 || size >= (1 << 24))
            break;
    }
    return text;
}

int CListCtrl::GetItemText(int nItem, int nSubItem, LPTSTR lpszText, int nLen) const
{
    if (lpszText == NULL || nLen <= 0)
        return 0;
    LVITEM item = {};
    item.iSubItem = nSubItem;
    item.cchTextMax = nLen;
    item.pszText = lpszText;
    lpszText[0] = 0;
    return (int)SendMessage(LVM_GETITEMTEXTW, nItem, (LPARAM)&item);
}

BOOL CListCtrl::SetItemText(int nItem, int nSubItem, LPCTSTR lpszText)
{
    LVITEM item = {};
    item.iSubItem = nSubItem;
    item.pszText = const_cast<LPTSTR>(lpszText);
    return (BOOL)SendMessage(LVM_SETITEMTEXTW, nItem, (LPARAM)&item);
}

BOOL CListCtrl::SetItemState(int nItem, UINT nState, UINT nMask)
{
    LVITEM item = {};
    item.stateMask = nMask;
    item.state = nState;
    return SetItemState(nItem, &item);
}

DWORD_PTR CListCtrl::GetItemData(int nItem) const
{
    LVITEM item = {};
    item.mask = LVIF_PARAM;
    item.iItem = nItem;
    return GetItem(&item) ? (DWORD_PTR)item.lParam : 0;
}

BOOL CListCtrl::SetItemData(int nItem, DWORD_PTR dwData)
{
    return SetItem(nItem, 0, LVIF_PARAM, NULL, 0, 0, 0, (LPARAM)dwData);
}

BOOL CListCtrl::GetCheck(int nItem) const
{
    // The state image index: 1 unchecked, 2 checked.
    return ((GetItemState(nItem, LVIS_STATEIMAGEMASK) >> 12) - 1) > 0;
}

BOOL CListCtrl::SetCheck(int nItem, BOOL fCheck)
{
    return SetItemState(nItem, INDEXTOSTATEIMAGEMASK(fCheck ? 2 : 1), LVIS_STATEIMAGEMASK);
}

POSITION CListCtrl::GetFirstSelectedItemPosition() const
{
    // Positions are item indexes plus one, so that NULL ends the walk.
    const int first = GetNextItem(-1, LVNI_SELECTED);
    return reinterpret_cast<POSITION>(static_cast<INT_PTR>(first + 1));
}

int CListCtrl::GetNextSelectedItem(POSITION& pos) const
{
    const int item = static_cast<int>(reinterpret_cast<INT_PTR>(pos)) - 1;
    if (item < 0) {
        pos = NULL;
        return -1;
    }
    const int next = GetNextItem(item, LVNI_SELECTED);
    pos = reinterpret_cast<POSITION>(static_cast<INT_PTR>(next + 1));
    return item;
}

BOOL CListCtrl::GetItemRect(int nItem, LPRECT lpRect, UINT nCode) const
{
    if (lpRect == NULL)
        return FALSE;
    lpRect->left = nCode;
    return (BOOL)SendMessage(LVM_GETITEMRECT, nItem, (LPARAM)lpRect);
}

BOOL CListCtrl::GetSubItemRect(int iItem, int iSubItem, int nArea, CRect& ref) const
{
    RECT rc = {nArea, iSubItem, 0, 0};
    const BOOL ok = (BOOL)SendMessage(LVM_GETSUBITEMRECT, iItem, (LPARAM)&rc);
    if (ok)
        ref = rc;
    return ok;
}

int CListCtrl::HitTest(CPoint pt, UINT* pFlags) const
{
    LVHITTESTINFO info = {};
    info.pt = pt;
    const int item = HitTest(&info);
    if (pFlags != NULL)
        *pFlags = info.flags;
    return item;
}

CSize CListCtrl::SetIconSpacing(int cx, int cy)
{
    const DWORD old = (DWORD)SendMessage(LVM_SETICONSPACING, 0, MAKELPARAM(cx, cy));
    return CSize(LOWORD(old), HIWORD(old));
}

CSize CListCtrl::ApproximateViewRect(CSize sz, int iCount) const
{
    const DWORD r = (DWORD)SendMessage(LVM_APPROXIMATEVIEWRECT, iCount, MAKELPARAM(sz.cx, sz.cy));
    return CSize(LOWORD(r), HIWORD(r));
}

CEdit* CListCtrl::EditLabel(int nItem)
{
    HWND hEdit = (HWND)SendMessage(LVM_EDITLABELW, nItem);
    return hEdit == NULL ? NULL : static_cast<CEdit*>(CWnd::FromHandle(hEdit));
}

CImageList* CListCtrl::CreateDragImage(int nItem, LPPOINT lpPoint)
{
    POINT pt = {0, 0};
    HIMAGELIST h = (HIMAGELIST)SendMessage(LVM_CREATEDRAGIMAGE, nItem, (LPARAM)&pt);
    if (h == NULL)
        return NULL;
    if (lpPoint != NULL)
        *lpPoint = pt;
    CImageList* pList = new CImageList;
    pList->Attach(h);
    return pList;
}

void CListCtrl::DrawItem(LPDRAWITEMSTRUCT)
{
}

BOOL CListCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    SetResult(pResult, TRUE);
    return TRUE;
}

////////////////////////////////////////////////////////////////////////////
// CTreeCtrl

IMPLEMENT_DYNAMIC(CTreeCtrl, CWnd)

CTreeCtrl::~CTreeCtrl()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CTreeCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommon(this, ICC_TREEVIEW_CLASSES, WC_TREEVIEWW, 0, dwStyle, rect, pParentWnd, nID);
}

BOOL CTreeCtrl::CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommon(this, ICC_TREEVIEW_CLASSES, WC_TREEVIEWW, dwExStyle, dwStyle, rect, pParentWnd, nID);
}

HTREEITEM CTreeCtrl::InsertItem(UINT nMask, LPCTSTR lpszItem, int nImage, int nSelectedImage, UINT nState,
                                UINT nStateMask, LPARAM lParam, HTREEITEM hParent, HTREEITEM hInsertAfter)
{
    TVINSERTSTRUCT tvis = {};
    tvis.hParent = hParent;
    tvis.hInsertAfter = hInsertAfter;
    tvis.item.mask = nMask;
    tvis.item.pszText = const_cast<LPTSTR>(lpszItem);
    tvis.item.iImage = nImage;
    tvis.item.iSelectedImage = nSelectedImage;
    tvis.item.state = nState;
    tvis.item.stateMask = nStateMask;
    tvis.item.lParam = lParam;
    return InsertItem(&tvis);
}

HTREEITEM CTreeCtrl::InsertItem(LPCTSTR lpszItem, HTREEITEM hParent, HTREEITEM hInsertAfter)
{
    return InsertItem(TVIF_TEXT, lpszItem, 0, 0, 0, 0, 0, hParent, hInsertAfter);
}

HTREEITEM CTreeCtrl::InsertItem(LPCTSTR lpszItem, int nImage, int nSelectedImage, HTREEITEM hParent,
                                HTREEITEM hInsertAfter)
{
    return InsertItem(TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE, lpszItem, nImage, nSelectedImage, 0, 0, 0, hParent,
                      hInsertAfter);
}

BOOL CTreeCtrl::SetItem(HTREEITEM hItem, UINT nMask, LPCTSTR lpszItem, int nImage, int nSelectedImage, UINT nState,
                        UINT nStateMask, LPARAM lParam)
{
    TVITEM item = {};
    item.hItem = hItem;
    item.mask = nMask;
    item.pszText = const_cast<LPTSTR>(lpszItem);
    item.iImage = nImage;
    item.iSelectedImage = nSelectedImage;
    item.state = nState;
    item.stateMask = nStateMask;
    item.lParam = lParam;
    return SetItem(&item);
}

CString CTreeCtrl::GetItemText(HTREEITEM hItem) const
{
    CString text;
    if (hItem == NULL)
        return text;
    TVITEM item = {};
    item.hItem = hItem;
    item.mask = TVIF_TEXT;
    for (int size = 256;; size *= 2) {
        item.cchTextMax = size;
        item.pszText = text.GetBuffer(size);
        item.pszText[0] = 0;
        const BOOL ok = GetItem(&item);
        text.ReleaseBuffer();
        if (!ok) {
            text.Empty();
            break;
        }
        if (text.GetLength() < size - 1 || size >= (1 << 24))
            break;
    }
    return text;
}

BOOL CTreeCtrl::SetItemText(HTREEITEM hItem, LPCTSTR lpszItem)
{
    return SetItem(hItem, TVIF_TEXT, lpszItem, 0, 0, 0, 0, 0);
}

BOOL CTreeCtrl::GetItemImage(HTREEITEM hItem, int& nImage, int& nSelectedImage) const
{
    TVITEM item = {};
    item.hItem = hItem;
    item.mask = TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    if (!GetItem(&item))
        return FALSE;
    nImage = item.iImage;
    nSelectedImage = item.iSelectedImage;
    return TRUE;
}

BOOL CTreeCtrl::SetItemImage(HTREEITEM hItem, int nImage, int nSelectedImage)
{
    return SetItem(hItem, TVIF_IMAGE | TVIF_SELECTEDIMAGE, NULL, nImage, nSelectedImage, 0, 0, 0);
}

BOOL CTreeCtrl::SetItemState(HTREEITEM hItem, UINT nState, UINT nStateMask)
{
    return SetItem(hItem, TVIF_STATE, NULL, 0, 0, nState, nStateMask, 0);
}

DWORD_PTR CTreeCtrl::GetItemData(HTREEITEM hItem) const
{
    TVITEM item = {};
    item.hItem = hItem;
    item.mask = TVIF_PARAM;
    return hItem != NULL && GetItem(&item) ? (DWORD_PTR)item.lParam : 0;
}

BOOL CTreeCtrl::SetItemData(HTREEITEM hItem, DWORD_PTR dwData)
{
    return SetItem(hItem, TVIF_PARAM, NULL, 0, 0, 0, 0, (LPARAM)dwData);
}

BOOL CTreeCtrl::ItemHasChildren(HTREEITEM hItem) const
{
    TVITEM item = {};
    item.hItem = hItem;
    item.mask = TVIF_CHILDREN;
    return hItem != NULL && GetItem(&item) && item.cChildren != 0;
}

BOOL CTreeCtrl::GetCheck(HTREEITEM hItem) const
{
    return ((GetItemState(hItem, TVIS_STATEIMAGEMASK) >> 12) - 1) > 0;
}

BOOL CTreeCtrl::SetCheck(HTREEITEM hItem, BOOL fCheck)
{
    return SetItemState(hItem, INDEXTOSTATEIMAGEMASK(fCheck ? 2 : 1), TVIS_STATEIMAGEMASK);
}

BOOL CTreeCtrl::GetItemRect(HTREEITEM hItem, LPRECT lpRect, BOOL bTextOnly) const
{
    if (lpRect == NULL || hItem == NULL)
        return FALSE;
    *reinterpret_cast<HTREEITEM*>(lpRect) = hItem;
    return (BOOL)SendMessage(TVM_GETITEMRECT, bTextOnly, (LPARAM)lpRect);
}

HTREEITEM CTreeCtrl::HitTest(CPoint pt, UINT* pFlags) const
{
    TVHITTESTINFO info = {};
    info.pt = pt;
    HTREEITEM h = HitTest(&info);
    if (pFlags != NULL)
        *pFlags = info.flags;
    return h;
}

CEdit* CTreeCtrl::EditLabel(HTREEITEM hItem)
{
    HWND hEdit = (HWND)SendMessage(TVM_EDITLABELW, 0, (LPARAM)hItem);
    return hEdit == NULL ? NULL : static_cast<CEdit*>(CWnd::FromHandle(hEdit));
}

CEdit* CTreeCtrl::GetEditControl() const
{
    HWND hEdit = (HWND)SendMessage(TVM_GETEDITCONTROL);
    return hEdit == NULL ? NULL : static_cast<CEdit*>(CWnd::FromHandle(hEdit));
}

CImageList* CTreeCtrl::GetImageList(int nImageList) const
{
    return CImageList::FromHandle((HIMAGELIST)SendMessage(TVM_GETIMAGELIST, nImageList));
}

CImageList* CTreeCtrl::SetImageList(CImageList* pImageList, int nImageListType)
{
    return CImageList::FromHandle(
        (HIMAGELIST)SendMessage(TVM_SETIMAGELIST, nImageListType, (LPARAM)pImageList->GetSafeHandle()));
}

////////////////////////////////////////////////////////////////////////////
// CTabCtrl

IMPLEMENT_DYNAMIC(CTabCtrl, CWnd)

CTabCtrl::~CTabCtrl()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CTabCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommon(this, ICC_TAB_CLASSES, WC_TABCONTROLW, 0, dwStyle, rect, pParentWnd, nID);
}

CImageList* CTabCtrl::GetImageList() const
{
    return CImageList::FromHandle((HIMAGELIST)SendMessage(TCM_GETIMAGELIST));
}

CImageList* CTabCtrl::SetImageList(CImageList* pImageList)
{
    return CImageList::FromHandle((HIMAGELIST)SendMessage(TCM_SETIMAGELIST, 0, (LPARAM)pImageList->GetSafeHandle()));
}

CSize CTabCtrl::SetItemSize(CSize size)
{
    const DWORD old = (DWORD)SendMessage(TCM_SETITEMSIZE, 0, MAKELPARAM(size.cx, size.cy));
    return CSize(LOWORD(old), HIWORD(old));
}

CToolTipCtrl* CTabCtrl::GetToolTips() const
{
    HWND hTip = (HWND)SendMessage(TCM_GETTOOLTIPS);
    return hTip == NULL ? NULL : static_cast<CToolTipCtrl*>(CWnd::FromHandle(hTip));
}

void CTabCtrl::SetToolTips(CToolTipCtrl* pWndTip)
{
    SendMessage(TCM_SETTOOLTIPS, (WPARAM)pWndTip->GetSafeHwnd());
}

LONG CTabCtrl::InsertItem(int nItem, LPCTSTR lpszItem)
{
    return InsertItem(TCIF_TEXT, nItem, lpszItem, 0, 0);
}

LONG CTabCtrl::InsertItem(int nItem, LPCTSTR lpszItem, int nImage)
{
    return InsertItem(TCIF_TEXT | TCIF_IMAGE, nItem, lpszItem, nImage, 0);
}

LONG CTabCtrl::InsertItem(UINT nMask, int nItem, LPCTSTR lpszItem, int nImage, LPARAM lParam)
{
    TCITEM item = {};
    item.mask = nMask;
    item.pszText = const_cast<LPTSTR>(lpszItem);
    item.iImage = nImage;
    item.lParam = lParam;
    return InsertItem(nItem, &item);
}

void CTabCtrl::DrawItem(LPDRAWITEMSTRUCT)
{
}

BOOL CTabCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    SetResult(pResult, TRUE);
    return TRUE;
}

////////////////////////////////////////////////////////////////////////////
// CProgressCtrl

IMPLEMENT_DYNAMIC(CProgressCtrl, CWnd)

CProgressCtrl::~CProgressCtrl()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CProgressCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommon(this, ICC_PROGRESS_CLASS, PROGRESS_CLASSW, 0, dwStyle, rect, pParentWnd, nID);
}

void CProgressCtrl::GetRange(int& nLower, int& nUpper) const
{
    PBRANGE range = {};
    SendMessage(PBM_GETRANGE, FALSE, (LPARAM)&range);
    nLower = range.iLow;
    nUpper = range.iHigh;
}

////////////////////////////////////////////////////////////////////////////
// CSpinButtonCtrl

IMPLEMENT_DYNAMIC(CSpinButtonCtrl, CWnd)

CSpinButtonCtrl::~CSpinButtonCtrl()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CSpinButtonCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommon(this, ICC_UPDOWN_CLASS, UPDOWN_CLASSW, 0, dwStyle, rect, pParentWnd, nID);
}

CWnd* CSpinButtonCtrl::SetBuddy(CWnd* pWndBuddy)
{
    return CWnd::FromHandle((HWND)SendMessage(UDM_SETBUDDY, (WPARAM)pWndBuddy->GetSafeHwnd()));
}

CWnd* CSpinButtonCtrl::GetBuddy() const
{
    return CWnd::FromHandle((HWND)SendMessage(UDM_GETBUDDY));
}

void CSpinButtonCtrl::GetRange(int& lower, int& upper) const
{
    const DWORD r = (DWORD)SendMessage(UDM_GETRANGE);
    lower = (short)HIWORD(r);
    upper = (short)LOWORD(r);
}

////////////////////////////////////////////////////////////////////////////
// CSliderCtrl

IMPLEMENT_DYNAMIC(CSliderCtrl, CWnd)

CSliderCtrl::~CSliderCtrl()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CSliderCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateCommon(this, ICC_BAR_CLASSES, TRACKBAR_CLASSW, 0, dwStyle, rect, pParentWnd, nID);
}

////////////////////////////////////////////////////////////////////////////
// CToolTipCtrl

IMPLEMENT_DYNAMIC(CToolTipCtrl, CWnd)

CToolTipCtrl::~CToolTipCtrl()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CToolTipCtrl::Create(CWnd* pParentWnd, DWORD dwStyle)
{
    return CreateEx(pParentWnd, dwStyle, 0);
}

BOOL CToolTipCtrl::CreateEx(CWnd* pParentWnd, DWORD dwStyle, DWORD dwStyleEx)
{
    if (!AfxInitCommonControls(ICC_WIN95_CLASSES))
        return FALSE;
    return CWnd::CreateEx(dwStyleEx, TOOLTIPS_CLASSW, NULL, WS_POPUP | dwStyle, CW_USEDEFAULT, CW_USEDEFAULT,
                          CW_USEDEFAULT, CW_USEDEFAULT, pParentWnd->GetSafeHwnd(), NULL, NULL);
}

void CToolTipCtrl::FillInToolInfo(TTTOOLINFO& ti, CWnd* pWnd, UINT_PTR nIDTool) const
{
    // The size both versions of the control accept.
    ZeroMemory(&ti, sizeof ti);
    ti.cbSize = TTTOOLINFOW_V2_SIZE;
    HWND hWnd = pWnd->GetSafeHwnd();
    if (nIDTool == 0) {
        // The window itself is the tool; its parent gets the notifications.
        ti.hwnd = ::GetParent(hWnd);
        ti.uFlags = TTF_IDISHWND;
        ti.uId = (UINT_PTR)hWnd;
    } else {
        ti.hwnd = hWnd;
        ti.uId = nIDTool;
    }
}

BOOL CToolTipCtrl::AddTool(CWnd* pWnd, LPCTSTR lpszText, LPCRECT lpRectTool, UINT_PTR nIDTool)
{
    if (pWnd->GetSafeHwnd() == NULL)
        return FALSE;
    TTTOOLINFO ti;
    FillInToolInfo(ti, pWnd, nIDTool);
    if (lpRectTool != NULL)
        ti.rect = *lpRectTool;
    else if (nIDTool != 0)
        ::GetClientRect(pWnd->GetSafeHwnd(), &ti.rect);
    ti.hinst = AfxGetResourceHandle();
    ti.lpszText = const_cast<LPTSTR>(lpszText);  // tools get mouse messages through RelayEvent
    return (BOOL)SendMessage(TTM_ADDTOOLW, 0, (LPARAM)&ti);
}

BOOL CToolTipCtrl::AddTool(CWnd* pWnd, UINT nIDText, LPCRECT lpRectTool, UINT_PTR nIDTool)
{
    return AddTool(pWnd, MAKEINTRESOURCEW(nIDText), lpRectTool, nIDTool);
}

void CToolTipCtrl::DelTool(CWnd* pWnd, UINT_PTR nIDTool)
{
    TTTOOLINFO ti;
    FillInToolInfo(ti, pWnd, nIDTool);
    SendMessage(TTM_DELTOOLW, 0, (LPARAM)&ti);
}

BOOL CToolTipCtrl::GetToolInfo(TTTOOLINFO& ToolInfo, CWnd* pWnd, UINT_PTR nIDTool) const
{
    FillInToolInfo(ToolInfo, pWnd, nIDTool);
    ToolInfo.lpszText = NULL;  // asks for no text (its size is unknown)
    return (BOOL)SendMessage(TTM_GETTOOLINFOW, 0, (LPARAM)&ToolInfo);
}

void CToolTipCtrl::SetToolRect(CWnd* pWnd, UINT_PTR nIDTool, LPCRECT lpRect)
{
    if (lpRect == NULL)
        return;
    TTTOOLINFO ti;
    FillInToolInfo(ti, pWnd, nIDTool);
    ti.rect = *lpRect;
    SendMessage(TTM_NEWTOOLRECTW, 0, (LPARAM)&ti);
}

void CToolTipCtrl::GetText(CString& str, CWnd* pWnd, UINT_PTR nIDTool) const
{
    TTTOOLINFO ti;
    FillInToolInfo(ti, pWnd, nIDTool);
    wchar_t buf[1024] = {};
    ti.lpszText = buf;
    SendMessage(TTM_GETTEXTW, sizeof buf / sizeof buf[0], (LPARAM)&ti);
    str = buf;
}

void CToolTipCtrl::UpdateTipText(LPCTSTR lpszText, CWnd* pWnd, UINT_PTR nIDTool)
{
    TTTOOLINFO ti;
    FillInToolInfo(ti, pWnd, nIDTool);
    ti.hinst = AfxGetResourceHandle();
    ti.lpszText = const_cast<LPTSTR>(lpszText);
    SendMessage(TTM_UPDATETIPTEXTW, 0, (LPARAM)&ti);
}

void CToolTipCtrl::UpdateTipText(UINT nIDText, CWnd* pWnd, UINT_PTR nIDTool)
{
    UpdateTipText(MAKEINTRESOURCEW(nIDText), pWnd, nIDTool);
}

BOOL CToolTipCtrl::HitTest(CWnd* pWnd, CPoint pt, LPTOOLINFO lpToolInfo) const
{
    TTHITTESTINFO hti = {};
    hti.hwnd = pWnd->GetSafeHwnd();
    hti.pt = pt;
    hti.ti.cbSize = TTTOOLINFOW_V2_SIZE;
    if (!(BOOL)SendMessage(TTM_HITTESTW, 0, (LPARAM)&hti))
        return FALSE;
    if (lpToolInfo != NULL)
        *lpToolInfo = hti.ti;
    return TRUE;
}
