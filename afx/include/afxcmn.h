// Common controls: image lists, list views, headers, tabs, progress bars, spin buttons,
// sliders, tool tips, tree views and rich edit controls.
//
// Each control class is a thin wrapper: members send the control's messages to m_hWnd.
// Create registers the control classes it needs (InitCommonControlsEx, once per class).
// Host executables select version 6 of the common controls with a manifest.
#pragma once
#include "afxwin.h"
#include <richedit.h>

#ifndef BEFORE_START_POSITION
struct __POSITION {};
typedef __POSITION* POSITION;
#define BEFORE_START_POSITION ((POSITION)-1L)
#endif

class CHeaderCtrl;
class CToolTipCtrl;

////////////////////////////////////////////////////////////////////////////
// CImageList

// Owns the image list it created or attached and destroys it once; FromHandle of a list
// nobody owns gives a temporary object (freed at idle time) that never destroys it.
class KXAFX_API CImageList : public CObject {
    DECLARE_DYNCREATE(CImageList)
public:
    CImageList() noexcept : m_hImageList(NULL) {}
    virtual ~CImageList();

    HIMAGELIST m_hImageList;
    operator HIMAGELIST() const { return m_hImageList; }
    // The handle, or NULL when called through a NULL pointer.
    HIMAGELIST GetSafeHandle() const;

    static CImageList* PASCAL FromHandle(HIMAGELIST hImageList);
    static CImageList* PASCAL FromHandlePermanent(HIMAGELIST hImageList);
    static void PASCAL DeleteTempMap();
    // Takes ownership; FALSE for NULL or when the object already holds a list.
    BOOL Attach(HIMAGELIST hImageList);
    HIMAGELIST Detach();
    // Destroys the owned list; FALSE when there is none.
    BOOL DeleteImageList();

    // nFlags: ILC_COLOR32, ILC_MASK, ...; nGrow: images added when the list must grow.
    BOOL Create(int cx, int cy, UINT nFlags, int nInitial, int nGrow);
    // From a bitmap resource of the current resource module, cut in images cx wide;
    // crMask marks the transparent colour (CLR_NONE: none).
    BOOL Create(UINT nBitmapID, int cx, int nGrow, COLORREF crMask);
    BOOL Create(LPCTSTR lpszBitmapID, int cx, int nGrow, COLORREF crMask);
    // Image nImage2 of imagelist2 drawn over image nImage1 of imagelist1, offset by (dx, dy).
    BOOL Create(CImageList& imagelist1, int nImage1, CImageList& imagelist2, int nImage2, int dx, int dy);
    // A copy of pImageList.
    BOOL Create(CImageList* pImageList);

    int GetImageCount() const { return m_hImageList == NULL ? 0 : ImageList_GetImageCount(m_hImageList); }
    BOOL SetImageCount(UINT uNewCount) { return ImageList_SetImageCount(m_hImageList, uNewCount); }
    COLORREF SetBkColor(COLORREF cr) { return ImageList_SetBkColor(m_hImageList, cr); }
    COLORREF GetBkColor() const { return ImageList_GetBkColor(m_hImageList); }
    BOOL GetImageInfo(int nImage, IMAGEINFO* pImageInfo) const
    { return pImageInfo != NULL && ImageList_GetImageInfo(m_hImageList, nImage, pImageInfo); }
    BOOL GetIconSize(int* cx, int* cy) const { return ImageList_GetIconSize(m_hImageList, cx, cy); }
    BOOL SetIconSize(int cx, int cy) { return ImageList_SetIconSize(m_hImageList, cx, cy); }

    // Adds images; the result is the index of the first new image, or -1.
    int Add(CBitmap* pbmImage, CBitmap* pbmMask);
    int Add(CBitmap* pbmImage, COLORREF crMask);
    int Add(HICON hIcon) { return ImageList_ReplaceIcon(m_hImageList, -1, hIcon); }
    // nImage -1 removes every image.
    BOOL Remove(int nImage) { return ImageList_Remove(m_hImageList, nImage); }
    BOOL Replace(int nImage, CBitmap* pbmImage, CBitmap* pbmMask);
    // The index of the image replaced, or -1.
    int Replace(int nImage, HICON hIcon) { return ImageList_ReplaceIcon(m_hImageList, nImage, hIcon); }
    // A new icon the caller destroys.
    HICON ExtractIcon(int nImage) { return ImageList_GetIcon(m_hImageList, nImage, ILD_NORMAL); }
    BOOL SetOverlayImage(int nImage, int nOverlay) { return ImageList_SetOverlayImage(m_hImageList, nImage, nOverlay); }
    BOOL Copy(int iDst, int iSrc, UINT uFlags = ILCF_MOVE)
    { return ImageList_Copy(m_hImageList, iDst, m_hImageList, iSrc, uFlags); }
    BOOL Copy(int iDst, CImageList* pSrc, int iSrc, UINT uFlags = ILCF_MOVE);

    // nStyle: ILD_NORMAL, ILD_TRANSPARENT, ILD_SELECTED, ...
    BOOL Draw(CDC* pDC, int nImage, POINT pt, UINT nStyle);
    BOOL DrawEx(CDC* pDC, int nImage, POINT pt, SIZE sz, COLORREF clrBk, COLORREF clrFg, UINT nStyle);
    BOOL DrawIndirect(IMAGELISTDRAWPARAMS* pimldp);
    BOOL DrawIndirect(CDC* pDC, int nImage, POINT pt, SIZE sz, POINT ptOrigin, UINT fStyle = ILD_NORMAL,
                      DWORD dwRop = SRCCOPY, COLORREF rgbBack = CLR_DEFAULT, COLORREF rgbFore = CLR_DEFAULT,
                      DWORD fState = ILS_NORMAL, DWORD Frame = 0, COLORREF crEffect = CLR_DEFAULT);

    // Dragging
    BOOL BeginDrag(int nImage, CPoint ptHotSpot) { return ImageList_BeginDrag(m_hImageList, nImage, ptHotSpot.x, ptHotSpot.y); }
    static void PASCAL EndDrag() { ImageList_EndDrag(); }
    static BOOL PASCAL DragMove(CPoint pt) { return ImageList_DragMove(pt.x, pt.y); }
    BOOL SetDragCursorImage(int nDrag, CPoint ptHotSpot)
    { return ImageList_SetDragCursorImage(m_hImageList, nDrag, ptHotSpot.x, ptHotSpot.y); }
    static BOOL PASCAL DragShowNolock(BOOL bShow) { return ImageList_DragShowNolock(bShow); }
    static CImageList* PASCAL GetDragImage(LPPOINT lpPoint, LPPOINT lpPointHotSpot);
    static BOOL PASCAL DragEnter(CWnd* pWndLock, CPoint point);
    static BOOL PASCAL DragLeave(CWnd* pWndLock);
};

////////////////////////////////////////////////////////////////////////////
// CHeaderCtrl

class KXAFX_API CHeaderCtrl : public CWnd {
    DECLARE_DYNAMIC(CHeaderCtrl)
public:
    CHeaderCtrl() = default;
    virtual ~CHeaderCtrl();
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    virtual BOOL CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetItemCount() const { return (int)SendMessage(HDM_GETITEMCOUNT); }
    BOOL GetItem(int nPos, HDITEM* pHeaderItem) const { return (BOOL)SendMessage(HDM_GETITEMW, nPos, (LPARAM)pHeaderItem); }
    BOOL SetItem(int nPos, HDITEM* pHeaderItem) { return (BOOL)SendMessage(HDM_SETITEMW, nPos, (LPARAM)pHeaderItem); }
    int InsertItem(int nPos, HDITEM* phdi) { return (int)SendMessage(HDM_INSERTITEMW, nPos, (LPARAM)phdi); }
    BOOL DeleteItem(int nPos) { return (BOOL)SendMessage(HDM_DELETEITEM, nPos); }
    BOOL Layout(HDLAYOUT* pHeaderLayout) { return (BOOL)SendMessage(HDM_LAYOUT, 0, (LPARAM)pHeaderLayout); }
    BOOL GetItemRect(int nIndex, LPRECT lpRect) const { return (BOOL)SendMessage(HDM_GETITEMRECT, nIndex, (LPARAM)lpRect); }
    int HitTest(LPHDHITTESTINFO pHeaderHitTestInfo) { return (int)SendMessage(HDM_HITTEST, 0, (LPARAM)pHeaderHitTestInfo); }
    int OrderToIndex(int nOrder) const { return (int)SendMessage(HDM_ORDERTOINDEX, nOrder); }
    // Fills piArray with the display order; iCount -1: every item.
    BOOL GetOrderArray(LPINT piArray, int iCount = -1);
    BOOL SetOrderArray(int iCount, LPINT piArray) { return (BOOL)SendMessage(HDM_SETORDERARRAY, iCount, (LPARAM)piArray); }
    CImageList* SetImageList(CImageList* pImageList);
    CImageList* GetImageList() const;
    CImageList* CreateDragImage(int nIndex);
    int SetHotDivider(CPoint pt) { return (int)SendMessage(HDM_SETHOTDIVIDER, TRUE, MAKELPARAM(pt.x, pt.y)); }
    int SetHotDivider(int nIndex) { return (int)SendMessage(HDM_SETHOTDIVIDER, FALSE, nIndex); }
    int GetBitmapMargin() const { return (int)SendMessage(HDM_GETBITMAPMARGIN); }
    int SetBitmapMargin(int nWidth) { return (int)SendMessage(HDM_SETBITMAPMARGIN, nWidth); }

    // HDF_OWNERDRAW items.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);

protected:
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

////////////////////////////////////////////////////////////////////////////
// CListCtrl

class KXAFX_API CListCtrl : public CWnd {
    DECLARE_DYNAMIC(CListCtrl)
public:
    CListCtrl() = default;
    virtual ~CListCtrl();
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    virtual BOOL CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // ---- colours and images ----
    COLORREF GetBkColor() const { return (COLORREF)SendMessage(LVM_GETBKCOLOR); }
    BOOL SetBkColor(COLORREF cr) { return (BOOL)SendMessage(LVM_SETBKCOLOR, 0, cr); }
    COLORREF GetTextColor() const { return (COLORREF)SendMessage(LVM_GETTEXTCOLOR); }
    BOOL SetTextColor(COLORREF cr) { return (BOOL)SendMessage(LVM_SETTEXTCOLOR, 0, cr); }
    COLORREF GetTextBkColor() const { return (COLORREF)SendMessage(LVM_GETTEXTBKCOLOR); }
    BOOL SetTextBkColor(COLORREF cr) { return (BOOL)SendMessage(LVM_SETTEXTBKCOLOR, 0, cr); }
    // nImageList: LVSIL_NORMAL, LVSIL_SMALL, LVSIL_STATE. The list view does not own it.
    CImageList* GetImageList(int nImageList) const;
    CImageList* SetImageList(CImageList* pImageList, int nImageListType);

    // ---- styles and view ----
    DWORD GetExtendedStyle() const { return (DWORD)SendMessage(LVM_GETEXTENDEDLISTVIEWSTYLE); }
    DWORD SetExtendedStyle(DWORD dwNewStyle) { return (DWORD)SendMessage(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, dwNewStyle); }
    DWORD GetView() const { return (DWORD)SendMessage(LVM_GETVIEW); }
    int SetView(int iView) { return (int)SendMessage(LVM_SETVIEW, iView); }
    UINT GetCallbackMask() const { return (UINT)SendMessage(LVM_GETCALLBACKMASK); }
    BOOL SetCallbackMask(UINT nMask) { return (BOOL)SendMessage(LVM_SETCALLBACKMASK, nMask); }
    CHeaderCtrl* GetHeaderCtrl() const;
    CEdit* GetEditControl() const;
    CToolTipCtrl* GetToolTips() const;

    // ---- columns ----
    int InsertColumn(int nCol, const LVCOLUMN* pColumn)
    { return (int)SendMessage(LVM_INSERTCOLUMNW, nCol, (LPARAM)pColumn); }
    // nWidth -1 and nSubItem -1 leave the width and the sub-item to the control.
    int InsertColumn(int nCol, LPCTSTR lpszColumnHeading, int nFormat = LVCFMT_LEFT, int nWidth = -1,
                     int nSubItem = -1);
    BOOL DeleteColumn(int nCol) { return (BOOL)SendMessage(LVM_DELETECOLUMN, nCol); }
    BOOL GetColumn(int nCol, LVCOLUMN* pColumn) const { return (BOOL)SendMessage(LVM_GETCOLUMNW, nCol, (LPARAM)pColumn); }
    BOOL SetColumn(int nCol, const LVCOLUMN* pColumn) { return (BOOL)SendMessage(LVM_SETCOLUMNW, nCol, (LPARAM)pColumn); }
    int GetColumnWidth(int nCol) const { return (int)SendMessage(LVM_GETCOLUMNWIDTH, nCol); }
    BOOL SetColumnWidth(int nCol, int cx) { return (BOOL)SendMessage(LVM_SETCOLUMNWIDTH, nCol, MAKELPARAM(cx, 0)); }
    BOOL GetColumnOrderArray(LPINT piArray, int iCount = -1);
    BOOL SetColumnOrderArray(int iCount, LPINT piArray)
    { return (BOOL)SendMessage(LVM_SETCOLUMNORDERARRAY, iCount, (LPARAM)piArray); }

    // ---- items ----
    int GetItemCount() const { return (int)SendMessage(LVM_GETITEMCOUNT); }
    // LVS_OWNERDATA: the number of items the owner will be asked about.
    void SetItemCount(int nItems) { SendMessage(LVM_SETITEMCOUNT, nItems); }
    BOOL SetItemCountEx(int iCount, DWORD dwFlags = LVSICF_NOINVALIDATEALL)
    { return (BOOL)SendMessage(LVM_SETITEMCOUNT, iCount, dwFlags); }
    int InsertItem(const LVITEM* pItem) { return (int)SendMessage(LVM_INSERTITEMW, 0, (LPARAM)pItem); }
    int InsertItem(int nItem, LPCTSTR lpszItem);
    int InsertItem(int nItem, LPCTSTR lpszItem, int nImage);
    int InsertItem(UINT nMask, int nItem, LPCTSTR lpszItem, UINT nState, UINT nStateMask, int nImage, LPARAM lParam);
    BOOL DeleteItem(int nItem) { return (BOOL)SendMessage(LVM_DELETEITEM, nItem); }
    BOOL DeleteAllItems() { return (BOOL)SendMessage(LVM_DELETEALLITEMS); }
    BOOL GetItem(LVITEM* pItem) const { return (BOOL)SendMessage(LVM_GETITEMW, 0, (LPARAM)pItem); }
    BOOL SetItem(const LVITEM* pItem) { return (BOOL)SendMessage(LVM_SETITEMW, 0, (LPARAM)pItem); }
    BOOL SetItem(int nItem, int nSubItem, UINT nMask, LPCTSTR lpszItem, int nImage, UINT nState, UINT nStateMask,
                 LPARAM lParam);
    BOOL SetItem(int nItem, int nSubItem, UINT nMask, LPCTSTR lpszItem, int nImage, UINT nState, UINT nStateMask,
                 LPARAM lParam, int nIndent);
    // The text of an item or sub-item; empty when there is none.
    CString GetItemText(int nItem, int nSubItem) const;
    int GetItemText(int nItem, int nSubItem, LPTSTR lpszText, int nLen) const;
    BOOL SetItemText(int nItem, int nSubItem, LPCTSTR lpszText);
    UINT GetItemState(int nItem, UINT nMask) const { return (UINT)SendMessage(LVM_GETITEMSTATE, nItem, nMask); }
    BOOL SetItemState(int nItem, UINT nState, UINT nMask);
    BOOL SetItemState(int nItem, LVITEM* pItem) { return (BOOL)SendMessage(LVM_SETITEMSTATE, nItem, (LPARAM)pItem); }
    DWORD_PTR GetItemData(int nItem) const;
    BOOL SetItemData(int nItem, DWORD_PTR dwData);
    BOOL GetCheck(int nItem) const;
    BOOL SetCheck(int nItem, BOOL fCheck = TRUE);

    // ---- selection and navigation ----
    int GetNextItem(int nItem, int nFlags) const { return (int)SendMessage(LVM_GETNEXTITEM, nItem, MAKELPARAM(nFlags, 0)); }
    UINT GetSelectedCount() const { return (UINT)SendMessage(LVM_GETSELECTEDCOUNT); }
    // Walks the selected items: NULL when none is selected.
    POSITION GetFirstSelectedItemPosition() const;
    // The item at pos; pos moves to the next selected item or becomes NULL.
    int GetNextSelectedItem(POSITION& pos) const;
    int GetSelectionMark() const { return (int)SendMessage(LVM_GETSELECTIONMARK); }
    int SetSelectionMark(int iIndex) { return (int)SendMessage(LVM_SETSELECTIONMARK, 0, iIndex); }
    int GetHotItem() const { return (int)SendMessage(LVM_GETHOTITEM); }
    int SetHotItem(int iIndex) { return (int)SendMessage(LVM_SETHOTITEM, iIndex); }
    int FindItem(LVFINDINFO* pFindInfo, int nStart = -1) const
    { return (int)SendMessage(LVM_FINDITEMW, nStart, (LPARAM)pFindInfo); }

    // ---- geometry ----
    // nCode: LVIR_BOUNDS, LVIR_ICON, LVIR_LABEL, LVIR_SELECTBOUNDS.
    BOOL GetItemRect(int nItem, LPRECT lpRect, UINT nCode) const;
    BOOL GetSubItemRect(int iItem, int iSubItem, int nArea, CRect& ref) const;
    BOOL GetItemPosition(int nItem, LPPOINT lpPoint) const
    { return (BOOL)SendMessage(LVM_GETITEMPOSITION, nItem, (LPARAM)lpPoint); }
    BOOL SetItemPosition(int nItem, POINT pt) { return (BOOL)SendMessage(LVM_SETITEMPOSITION32, nItem, (LPARAM)&pt); }
    BOOL GetViewRect(LPRECT lpRect) const { return (BOOL)SendMessage(LVM_GETVIEWRECT, 0, (LPARAM)lpRect); }
    BOOL GetOrigin(LPPOINT lpPoint) const { return (BOOL)SendMessage(LVM_GETORIGIN, 0, (LPARAM)lpPoint); }
    int GetTopIndex() const { return (int)SendMessage(LVM_GETTOPINDEX); }
    int GetCountPerPage() const { return (int)SendMessage(LVM_GETCOUNTPERPAGE); }
    int GetStringWidth(LPCTSTR lpsz) const { return (int)SendMessage(LVM_GETSTRINGWIDTHW, 0, (LPARAM)lpsz); }
    int HitTest(LVHITTESTINFO* pHitTestInfo) const { return (int)SendMessage(LVM_HITTEST, 0, (LPARAM)pHitTestInfo); }
    int HitTest(CPoint pt, UINT* pFlags = NULL) const;
    int SubItemHitTest(LPLVHITTESTINFO pInfo) { return (int)SendMessage(LVM_SUBITEMHITTEST, 0, (LPARAM)pInfo); }
    CSize SetIconSpacing(int cx, int cy);
    CSize SetIconSpacing(CSize size) { return SetIconSpacing(size.cx, size.cy); }
    CSize ApproximateViewRect(CSize sz = CSize(-1, -1), int iCount = -1) const;

    // ---- operations ----
    BOOL EnsureVisible(int nItem, BOOL bPartialOK) { return (BOOL)SendMessage(LVM_ENSUREVISIBLE, nItem, bPartialOK); }
    BOOL Scroll(CSize size) { return (BOOL)SendMessage(LVM_SCROLL, size.cx, size.cy); }
    BOOL RedrawItems(int nFirst, int nLast) { return (BOOL)SendMessage(LVM_REDRAWITEMS, nFirst, nLast); }
    BOOL Update(int nItem) { return (BOOL)SendMessage(LVM_UPDATE, nItem); }
    BOOL Arrange(UINT nCode) { return (BOOL)SendMessage(LVM_ARRANGE, nCode); }
    CEdit* EditLabel(int nItem);
    // pfnCompare gets the items' data (lParam) and dwData.
    BOOL SortItems(PFNLVCOMPARE pfnCompare, DWORD_PTR dwData)
    { return (BOOL)SendMessage(LVM_SORTITEMS, dwData, (LPARAM)pfnCompare); }
    // pfnCompare gets the items' indexes and dwData.
    BOOL SortItemsEx(PFNLVCOMPARE pfnCompare, DWORD_PTR dwData)
    { return (BOOL)SendMessage(LVM_SORTITEMSEX, dwData, (LPARAM)pfnCompare); }
    // A new image list (the caller deletes it) with the item's picture; lpPoint gets
    // the picture's upper-left corner in client coordinates.
    CImageList* CreateDragImage(int nItem, LPPOINT lpPoint);

    // LVS_OWNERDRAWFIXED report views.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);

protected:
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

////////////////////////////////////////////////////////////////////////////
// CTreeCtrl

class KXAFX_API CTreeCtrl : public CWnd {
    DECLARE_DYNAMIC(CTreeCtrl)
public:
    CTreeCtrl() = default;
    virtual ~CTreeCtrl();
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    virtual BOOL CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // ---- items ----
    HTREEITEM InsertItem(LPTVINSERTSTRUCT lpInsertStruct)
    { return (HTREEITEM)SendMessage(TVM_INSERTITEMW, 0, (LPARAM)lpInsertStruct); }
    HTREEITEM InsertItem(UINT nMask, LPCTSTR lpszItem, int nImage, int nSelectedImage, UINT nState, UINT nStateMask,
                         LPARAM lParam, HTREEITEM hParent, HTREEITEM hInsertAfter);
    HTREEITEM InsertItem(LPCTSTR lpszItem, HTREEITEM hParent = TVI_ROOT, HTREEITEM hInsertAfter = TVI_LAST);
    HTREEITEM InsertItem(LPCTSTR lpszItem, int nImage, int nSelectedImage, HTREEITEM hParent = TVI_ROOT,
                         HTREEITEM hInsertAfter = TVI_LAST);
    BOOL DeleteItem(HTREEITEM hItem) { return (BOOL)SendMessage(TVM_DELETEITEM, 0, (LPARAM)hItem); }
    BOOL DeleteAllItems() { return (BOOL)SendMessage(TVM_DELETEITEM, 0, (LPARAM)TVI_ROOT); }
    UINT GetCount() const { return (UINT)SendMessage(TVM_GETCOUNT); }
    UINT GetVisibleCount() const { return (UINT)SendMessage(TVM_GETVISIBLECOUNT); }
    BOOL GetItem(TVITEM* pItem) const { return (BOOL)SendMessage(TVM_GETITEMW, 0, (LPARAM)pItem); }
    BOOL SetItem(TVITEM* pItem) { return (BOOL)SendMessage(TVM_SETITEMW, 0, (LPARAM)pItem); }
    BOOL SetItem(HTREEITEM hItem, UINT nMask, LPCTSTR lpszItem, int nImage, int nSelectedImage, UINT nState,
                 UINT nStateMask, LPARAM lParam);
    CString GetItemText(HTREEITEM hItem) const;
    BOOL SetItemText(HTREEITEM hItem, LPCTSTR lpszItem);
    BOOL GetItemImage(HTREEITEM hItem, int& nImage, int& nSelectedImage) const;
    BOOL SetItemImage(HTREEITEM hItem, int nImage, int nSelectedImage);
    UINT GetItemState(HTREEITEM hItem, UINT nStateMask) const
    { return (UINT)SendMessage(TVM_GETITEMSTATE, (WPARAM)hItem, nStateMask); }
    BOOL SetItemState(HTREEITEM hItem, UINT nState, UINT nStateMask);
    DWORD_PTR GetItemData(HTREEITEM hItem) const;
    BOOL SetItemData(HTREEITEM hItem, DWORD_PTR dwData);
    BOOL ItemHasChildren(HTREEITEM hItem) const;
    BOOL GetCheck(HTREEITEM hItem) const;
    BOOL SetCheck(HTREEITEM hItem, BOOL fCheck = TRUE);
    BOOL GetItemRect(HTREEITEM hItem, LPRECT lpRect, BOOL bTextOnly) const;

    // ---- navigation ----
    HTREEITEM GetNextItem(HTREEITEM hItem, UINT nCode) const
    { return (HTREEITEM)SendMessage(TVM_GETNEXTITEM, nCode, (LPARAM)hItem); }
    HTREEITEM GetChildItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_CHILD); }
    HTREEITEM GetNextSiblingItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_NEXT); }
    HTREEITEM GetPrevSiblingItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_PREVIOUS); }
    HTREEITEM GetParentItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_PARENT); }
    HTREEITEM GetFirstVisibleItem() const { return GetNextItem(NULL, TVGN_FIRSTVISIBLE); }
    HTREEITEM GetNextVisibleItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_NEXTVISIBLE); }
    HTREEITEM GetPrevVisibleItem(HTREEITEM hItem) const { return GetNextItem(hItem, TVGN_PREVIOUSVISIBLE); }
    HTREEITEM GetSelectedItem() const { return GetNextItem(NULL, TVGN_CARET); }
    HTREEITEM GetDropHilightItem() const { return GetNextItem(NULL, TVGN_DROPHILITE); }
    HTREEITEM GetRootItem() const { return GetNextItem(NULL, TVGN_ROOT); }

    // ---- selection and expansion ----
    BOOL Select(HTREEITEM hItem, UINT nCode) { return (BOOL)SendMessage(TVM_SELECTITEM, nCode, (LPARAM)hItem); }
    BOOL SelectItem(HTREEITEM hItem) { return Select(hItem, TVGN_CARET); }
    BOOL SelectDropTarget(HTREEITEM hItem) { return Select(hItem, TVGN_DROPHILITE); }
    BOOL SelectSetFirstVisible(HTREEITEM hItem) { return Select(hItem, TVGN_FIRSTVISIBLE); }
    // nCode: TVE_EXPAND, TVE_COLLAPSE, TVE_TOGGLE.
    BOOL Expand(HTREEITEM hItem, UINT nCode) { return (BOOL)SendMessage(TVM_EXPAND, nCode, (LPARAM)hItem); }
    BOOL EnsureVisible(HTREEITEM hItem) { return (BOOL)SendMessage(TVM_ENSUREVISIBLE, 0, (LPARAM)hItem); }
    HTREEITEM HitTest(CPoint pt, UINT* pFlags = NULL) const;
    HTREEITEM HitTest(TVHITTESTINFO* pHitTestInfo) const
    { return (HTREEITEM)SendMessage(TVM_HITTEST, 0, (LPARAM)pHitTestInfo); }
    BOOL SortChildren(HTREEITEM hItem) { return (BOOL)SendMessage(TVM_SORTCHILDREN, 0, (LPARAM)hItem); }
    BOOL SortChildrenCB(LPTVSORTCB pSort) { return (BOOL)SendMessage(TVM_SORTCHILDRENCB, 0, (LPARAM)pSort); }
    CEdit* EditLabel(HTREEITEM hItem);
    CEdit* GetEditControl() const;

    // ---- appearance ----
    CImageList* GetImageList(int nImageList) const;
    CImageList* SetImageList(CImageList* pImageList, int nImageListType);
    UINT GetIndent() const { return (UINT)SendMessage(TVM_GETINDENT); }
    void SetIndent(UINT nIndent) { SendMessage(TVM_SETINDENT, nIndent); }
    SHORT GetItemHeight() const { return (SHORT)SendMessage(TVM_GETITEMHEIGHT); }
    SHORT SetItemHeight(SHORT cyHeight) { return (SHORT)SendMessage(TVM_SETITEMHEIGHT, cyHeight); }
    COLORREF GetBkColor() const { return (COLORREF)SendMessage(TVM_GETBKCOLOR); }
    COLORREF SetBkColor(COLORREF clr) { return (COLORREF)SendMessage(TVM_SETBKCOLOR, 0, clr); }
    COLORREF GetTextColor() const { return (COLORREF)SendMessage(TVM_GETTEXTCOLOR); }
    COLORREF SetTextColor(COLORREF clr) { return (COLORREF)SendMessage(TVM_SETTEXTCOLOR, 0, clr); }
};

////////////////////////////////////////////////////////////////////////////
// CTabCtrl

class KXAFX_API CTabCtrl : public CWnd {
    DECLARE_DYNAMIC(CTabCtrl)
public:
    CTabCtrl() = default;
    virtual ~CTabCtrl();
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    CImageList* GetImageList() const;
    CImageList* SetImageList(CImageList* pImageList);
    int GetItemCount() const { return (int)SendMessage(TCM_GETITEMCOUNT); }
    BOOL GetItem(int nItem, TCITEM* pTabCtrlItem) const { return (BOOL)SendMessage(TCM_GETITEMW, nItem, (LPARAM)pTabCtrlItem); }
    BOOL SetItem(int nItem, TCITEM* pTabCtrlItem) { return (BOOL)SendMessage(TCM_SETITEMW, nItem, (LPARAM)pTabCtrlItem); }
    // Bytes of application data per tab (lParam of TCITEM holds more when set).
    BOOL SetItemExtra(int nBytes) { return (BOOL)SendMessage(TCM_SETITEMEXTRA, nBytes); }
    BOOL GetItemRect(int nItem, LPRECT lpRect) const { return (BOOL)SendMessage(TCM_GETITEMRECT, nItem, (LPARAM)lpRect); }
    int GetCurSel() const { return (int)SendMessage(TCM_GETCURSEL); }
    int SetCurSel(int nItem) { return (int)SendMessage(TCM_SETCURSEL, nItem); }
    void SetCurFocus(int nItem) { SendMessage(TCM_SETCURFOCUS, nItem); }
    int GetCurFocus() const { return (int)SendMessage(TCM_GETCURFOCUS); }
    CSize SetItemSize(CSize size);
    void SetPadding(CSize size) { SendMessage(TCM_SETPADDING, 0, MAKELPARAM(size.cx, size.cy)); }
    int GetRowCount() const { return (int)SendMessage(TCM_GETROWCOUNT); }
    CToolTipCtrl* GetToolTips() const;
    void SetToolTips(CToolTipCtrl* pWndTip);
    int SetMinTabWidth(int cx) { return (int)SendMessage(TCM_SETMINTABWIDTH, 0, cx); }

    LONG InsertItem(int nItem, TCITEM* pTabCtrlItem) { return (LONG)SendMessage(TCM_INSERTITEMW, nItem, (LPARAM)pTabCtrlItem); }
    LONG InsertItem(int nItem, LPCTSTR lpszItem);
    LONG InsertItem(int nItem, LPCTSTR lpszItem, int nImage);
    LONG InsertItem(UINT nMask, int nItem, LPCTSTR lpszItem, int nImage, LPARAM lParam);
    BOOL DeleteItem(int nItem) { return (BOOL)SendMessage(TCM_DELETEITEM, nItem); }
    BOOL DeleteAllItems() { return (BOOL)SendMessage(TCM_DELETEALLITEMS); }
    // bLarger: from a display rectangle to the window rectangle; else the reverse.
    void AdjustRect(BOOL bLarger, LPRECT lpRect) { SendMessage(TCM_ADJUSTRECT, bLarger, (LPARAM)lpRect); }
    void RemoveImage(int nImage) { SendMessage(TCM_REMOVEIMAGE, nImage); }
    int HitTest(TCHITTESTINFO* pHitTestInfo) const { return (int)SendMessage(TCM_HITTEST, 0, (LPARAM)pHitTestInfo); }
    void DeselectAll(BOOL fExcludeFocus) { SendMessage(TCM_DESELECTALL, fExcludeFocus); }
    BOOL HighlightItem(int idItem, BOOL fHighlight = TRUE)
    { return (BOOL)SendMessage(TCM_HIGHLIGHTITEM, idItem, MAKELPARAM(fHighlight, 0)); }

    // TCS_OWNERDRAWFIXED tabs.
    virtual void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct);

protected:
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

////////////////////////////////////////////////////////////////////////////
// CProgressCtrl

class KXAFX_API CProgressCtrl : public CWnd {
    DECLARE_DYNAMIC(CProgressCtrl)
public:
    CProgressCtrl() = default;
    virtual ~CProgressCtrl();
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // A 16-bit range; SetRange32 for a full int range.
    void SetRange(short nLower, short nUpper) { SendMessage(PBM_SETRANGE, 0, MAKELPARAM(nLower, nUpper)); }
    void SetRange32(int nLower, int nUpper) { SendMessage(PBM_SETRANGE32, nLower, nUpper); }
    void GetRange(int& nLower, int& nUpper) const;
    // Each returns the previous position.
    int GetPos() const { return (int)SendMessage(PBM_GETPOS); }
    int SetPos(int nPos) { return (int)SendMessage(PBM_SETPOS, nPos); }
    int OffsetPos(int nPos) { return (int)SendMessage(PBM_DELTAPOS, nPos); }
    int SetStep(int nStep) { return (int)SendMessage(PBM_SETSTEP, nStep); }
    int StepIt() { return (int)SendMessage(PBM_STEPIT); }
    // Colours (the default colour is CLR_DEFAULT); the previous one is returned.
    COLORREF SetBarColor(COLORREF clrBar) { return (COLORREF)SendMessage(PBM_SETBARCOLOR, 0, clrBar); }
    COLORREF SetBkColor(COLORREF clrNew) { return (COLORREF)SendMessage(PBM_SETBKCOLOR, 0, clrNew); }
};

////////////////////////////////////////////////////////////////////////////
// CSpinButtonCtrl

class KXAFX_API CSpinButtonCtrl : public CWnd {
    DECLARE_DYNAMIC(CSpinButtonCtrl)
public:
    CSpinButtonCtrl() = default;
    virtual ~CSpinButtonCtrl();
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    BOOL SetAccel(int nAccel, UDACCEL* pAccel) { return (BOOL)SendMessage(UDM_SETACCEL, nAccel, (LPARAM)pAccel); }
    UINT GetAccel(int nAccel, UDACCEL* pAccel) const { return (UINT)SendMessage(UDM_GETACCEL, nAccel, (LPARAM)pAccel); }
    int SetBase(int nBase) { return (int)SendMessage(UDM_SETBASE, nBase); }
    UINT GetBase() const { return (UINT)SendMessage(UDM_GETBASE); }
    CWnd* SetBuddy(CWnd* pWndBuddy);
    CWnd* GetBuddy() const;
    // Positions, as 16-bit values (SetPos32/GetPos32 for int). GetPos has an error flag
    // in its high word.
    int SetPos(int nPos) { return (short)SendMessage(UDM_SETPOS, 0, MAKELPARAM(nPos, 0)); }
    int GetPos() const { return (int)SendMessage(UDM_GETPOS); }
    int SetPos32(int nPos) { return (int)SendMessage(UDM_SETPOS32, 0, nPos); }
    int GetPos32(LPBOOL lpbError = NULL) const { return (int)SendMessage(UDM_GETPOS32, 0, (LPARAM)lpbError); }
    void SetRange(short nLower, short nUpper) { SendMessage(UDM_SETRANGE, 0, MAKELPARAM(nUpper, nLower)); }
    void SetRange32(int nLower, int nUpper) { SendMessage(UDM_SETRANGE32, nLower, nUpper); }
    DWORD GetRange() const { return (DWORD)SendMessage(UDM_GETRANGE); }
    void GetRange(int& lower, int& upper) const;
    void GetRange32(int& lower, int& upper) const { SendMessage(UDM_GETRANGE32, (WPARAM)&lower, (LPARAM)&upper); }
};

////////////////////////////////////////////////////////////////////////////
// CSliderCtrl

class KXAFX_API CSliderCtrl : public CWnd {
    DECLARE_DYNAMIC(CSliderCtrl)
public:
    CSliderCtrl() = default;
    virtual ~CSliderCtrl();
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    int GetLineSize() const { return (int)SendMessage(TBM_GETLINESIZE); }
    int SetLineSize(int nSize) { return (int)SendMessage(TBM_SETLINESIZE, 0, nSize); }
    int GetPageSize() const { return (int)SendMessage(TBM_GETPAGESIZE); }
    int SetPageSize(int nSize) { return (int)SendMessage(TBM_SETPAGESIZE, 0, nSize); }
    int GetRangeMax() const { return (int)SendMessage(TBM_GETRANGEMAX); }
    int GetRangeMin() const { return (int)SendMessage(TBM_GETRANGEMIN); }
    void GetRange(int& nMin, int& nMax) const { nMin = GetRangeMin(); nMax = GetRangeMax(); }
    void SetRangeMin(int nMin, BOOL bRedraw = FALSE) { SendMessage(TBM_SETRANGEMIN, bRedraw, nMin); }
    void SetRangeMax(int nMax, BOOL bRedraw = FALSE) { SendMessage(TBM_SETRANGEMAX, bRedraw, nMax); }
    void SetRange(int nMin, int nMax, BOOL bRedraw = FALSE) { SetRangeMin(nMin, FALSE); SetRangeMax(nMax, bRedraw); }
    int GetPos() const { return (int)SendMessage(TBM_GETPOS); }
    void SetPos(int nPos) { SendMessage(TBM_SETPOS, TRUE, nPos); }
    BOOL SetTic(int nTic) { return (BOOL)SendMessage(TBM_SETTIC, 0, nTic); }
    void SetTicFreq(int nFreq) { SendMessage(TBM_SETTICFREQ, nFreq); }
    UINT GetNumTics() const { return (UINT)SendMessage(TBM_GETNUMTICS); }
    void ClearTics(BOOL bRedraw = FALSE) { SendMessage(TBM_CLEARTICS, bRedraw); }
};

////////////////////////////////////////////////////////////////////////////
// CToolTipCtrl

class KXAFX_API CToolTipCtrl : public CWnd {
    DECLARE_DYNAMIC(CToolTipCtrl)
public:
    CToolTipCtrl() = default;
    virtual ~CToolTipCtrl();
    // A top-level tip window owned by pParentWnd (TTS_ALWAYSTIP etc. in dwStyle).
    virtual BOOL Create(CWnd* pParentWnd, DWORD dwStyle = 0);
    virtual BOOL CreateEx(CWnd* pParentWnd, DWORD dwStyle = 0, DWORD dwStyleEx = 0);

    // ---- tools ----
    // A tool for the area lpRectTool of pWnd (its whole client area when NULL), or for
    // the window pWnd itself when nIDTool is 0; lpszText LPSTR_TEXTCALLBACK asks pWnd
    // for the text through TTN_GETDISPINFO.
    BOOL AddTool(CWnd* pWnd, LPCTSTR lpszText = LPSTR_TEXTCALLBACK, LPCRECT lpRectTool = NULL, UINT_PTR nIDTool = 0);
    BOOL AddTool(CWnd* pWnd, UINT nIDText, LPCRECT lpRectTool = NULL, UINT_PTR nIDTool = 0);
    void DelTool(CWnd* pWnd, UINT_PTR nIDTool = 0);
    BOOL GetToolInfo(TTTOOLINFO& ToolInfo, CWnd* pWnd, UINT_PTR nIDTool = 0) const;
    void SetToolInfo(LPTOOLINFO lpToolInfo) { SendMessage(TTM_SETTOOLINFOW, 0, (LPARAM)lpToolInfo); }
    void SetToolRect(CWnd* pWnd, UINT_PTR nIDTool, LPCRECT lpRect);
    int GetToolCount() const { return (int)SendMessage(TTM_GETTOOLCOUNT); }
    // The tool's text; empty when the tool is unknown.
    void GetText(CString& str, CWnd* pWnd, UINT_PTR nIDTool = 0) const;
    void UpdateTipText(LPCTSTR lpszText, CWnd* pWnd, UINT_PTR nIDTool = 0);
    void UpdateTipText(UINT nIDText, CWnd* pWnd, UINT_PTR nIDTool = 0);
    BOOL HitTest(CWnd* pWnd, CPoint pt, LPTOOLINFO lpToolInfo) const;

    // ---- behaviour ----
    // Passes a mouse message of a tool window to the tip, which shows or hides itself.
    void RelayEvent(LPMSG lpMsg) { SendMessage(TTM_RELAYEVENT, 0, (LPARAM)lpMsg); }
    void Activate(BOOL bActivate) { SendMessage(TTM_ACTIVATE, bActivate); }
    void SetDelayTime(UINT nDelay) { SendMessage(TTM_SETDELAYTIME, TTDT_AUTOMATIC, nDelay); }
    void SetDelayTime(DWORD dwDuration, int iTime) { SendMessage(TTM_SETDELAYTIME, dwDuration, MAKELPARAM(iTime, 0)); }
    int GetDelayTime(DWORD dwDuration) const { return (int)SendMessage(TTM_GETDELAYTIME, dwDuration); }
    int SetMaxTipWidth(int iWidth) { return (int)SendMessage(TTM_SETMAXTIPWIDTH, 0, iWidth); }
    int GetMaxTipWidth() const { return (int)SendMessage(TTM_GETMAXTIPWIDTH); }
    void SetTipBkColor(COLORREF clr) { SendMessage(TTM_SETTIPBKCOLOR, clr); }
    COLORREF GetTipBkColor() const { return (COLORREF)SendMessage(TTM_GETTIPBKCOLOR); }
    void SetTipTextColor(COLORREF clr) { SendMessage(TTM_SETTIPTEXTCOLOR, clr); }
    COLORREF GetTipTextColor() const { return (COLORREF)SendMessage(TTM_GETTIPTEXTCOLOR); }
    void Pop() { SendMessage(TTM_POP); }
    void Update() { SendMessage(TTM_UPDATE); }
    BOOL SetTitle(UINT uIcon, LPCTSTR lpstrTitle) { return (BOOL)SendMessage(TTM_SETTITLEW, uIcon, (LPARAM)lpstrTitle); }
    void TrackActivate(BOOL bActivate, LPTOOLINFO lpToolInfo)
    { SendMessage(TTM_TRACKACTIVATE, bActivate, (LPARAM)lpToolInfo); }
    void TrackPosition(int xPos, int yPos) { SendMessage(TTM_TRACKPOSITION, 0, MAKELPARAM(xPos, yPos)); }

protected:
    void FillInToolInfo(TTTOOLINFO& ti, CWnd* pWnd, UINT_PTR nIDTool) const;
};

////////////////////////////////////////////////////////////////////////////
// CRichEditCtrl

// A rich edit control of class RICHEDIT50W (Msftedit.dll, loaded by Create). Character
// positions count every line break as one character: the control keeps a lone "\r".
class KXAFX_API CRichEditCtrl : public CWnd {
    DECLARE_DYNAMIC(CRichEditCtrl)
public:
    CRichEditCtrl() = default;
    virtual ~CRichEditCtrl();
    virtual BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);
    virtual BOOL CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // ---- text and selection ----
    long GetTextLength() const { return (long)SendMessage(WM_GETTEXTLENGTH); }
    // With flags (GTL_NUMCHARS, GTL_PRECISE, GTL_USECRLF, ...).
    long GetTextLengthEx(DWORD dwFlags, UINT uCodePage = 1200) const;
    void GetSel(CHARRANGE& cr) const { SendMessage(EM_EXGETSEL, 0, (LPARAM)&cr); }
    void GetSel(long& nStartChar, long& nEndChar) const;
    // -1 as the start removes the selection; (0, -1) selects everything.
    void SetSel(long nStartChar, long nEndChar);
    void SetSel(CHARRANGE& cr) { SendMessage(EM_EXSETSEL, 0, (LPARAM)&cr); }
    CString GetSelText() const;
    long GetSelText(LPTSTR lpBuf) const { return (long)SendMessage(EM_GETSELTEXT, 0, (LPARAM)lpBuf); }
    // Text of a range; nLast -1: to the end.
    int GetTextRange(int nFirst, int nLast, CString& refString) const;
    void ReplaceSel(LPCTSTR lpszNewText, BOOL bCanUndo = FALSE) { SendMessage(EM_REPLACESEL, bCanUndo, (LPARAM)lpszNewText); }
    WORD GetSelectionType() const { return (WORD)SendMessage(EM_SELECTIONTYPE); }
    void HideSelection(BOOL bHide, BOOL bPerm) { SendMessage(EM_HIDESELECTION, bHide, bPerm); }
    long FindText(DWORD dwFlags, FINDTEXTEX* pFindText) const
    { return (long)SendMessage(EM_FINDTEXTEXW, dwFlags, (LPARAM)pFindText); }
    void LimitText(long nChars = 0) { SendMessage(EM_EXLIMITTEXT, 0, nChars); }
    long GetLimitText() const { return (long)SendMessage(EM_GETLIMITTEXT); }
    BOOL SetReadOnly(BOOL bReadOnly = TRUE) { return (BOOL)SendMessage(EM_SETREADONLY, bReadOnly); }
    BOOL GetModify() const { return (BOOL)SendMessage(EM_GETMODIFY); }
    void SetModify(BOOL bModified = TRUE) { SendMessage(EM_SETMODIFY, bModified); }
    BOOL CanUndo() const { return (BOOL)SendMessage(EM_CANUNDO); }
    BOOL Undo() { return (BOOL)SendMessage(EM_UNDO); }
    BOOL CanRedo() const { return (BOOL)SendMessage(EM_CANREDO); }
    BOOL Redo() { return (BOOL)SendMessage(EM_REDO); }
    void EmptyUndoBuffer() { SendMessage(EM_EMPTYUNDOBUFFER); }
    BOOL CanPaste(UINT nFormat = 0) const { return (BOOL)SendMessage(EM_CANPASTE, nFormat); }
    void Clear() { SendMessage(WM_CLEAR); }
    void Copy() { SendMessage(WM_COPY); }
    void Cut() { SendMessage(WM_CUT); }
    void Paste() { SendMessage(WM_PASTE); }

    // ---- lines ----
    int GetLineCount() const { return (int)SendMessage(EM_GETLINECOUNT); }
    int GetLine(int nIndex, LPTSTR lpszBuffer, int nMaxLength) const;
    int LineIndex(int nLine = -1) const { return (int)SendMessage(EM_LINEINDEX, nLine); }
    int LineLength(int nLine = -1) const { return (int)SendMessage(EM_LINELENGTH, nLine); }
    long LineFromChar(long nIndex) const { return (long)SendMessage(EM_EXLINEFROMCHAR, 0, nIndex); }
    void LineScroll(int nLines, int nChars = 0) { SendMessage(EM_LINESCROLL, nChars, nLines); }
    int GetFirstVisibleLine() const { return (int)SendMessage(EM_GETFIRSTVISIBLELINE); }
    CPoint GetCharPos(long lChar) const;
    int CharFromPos(CPoint pt) const;
    void GetRect(LPRECT lpRect) const { SendMessage(EM_GETRECT, 0, (LPARAM)lpRect); }
    void SetRect(LPCRECT lpRect) { SendMessage(EM_SETRECT, 0, (LPARAM)lpRect); }

    // ---- formatting ----
    // Formats of the control's default text, the selection, and paragraphs. cbSize
    // is set by these members; the result of a Get is the mask of the consistent fields.
    DWORD GetDefaultCharFormat(CHARFORMAT& cf) const;
    DWORD GetDefaultCharFormat(CHARFORMAT2& cf) const;
    BOOL SetDefaultCharFormat(CHARFORMAT& cf);
    BOOL SetDefaultCharFormat(CHARFORMAT2& cf);
    DWORD GetSelectionCharFormat(CHARFORMAT& cf) const;
    DWORD GetSelectionCharFormat(CHARFORMAT2& cf) const;
    BOOL SetSelectionCharFormat(CHARFORMAT& cf);
    BOOL SetSelectionCharFormat(CHARFORMAT2& cf);
    BOOL SetWordCharFormat(CHARFORMAT& cf);
    BOOL SetWordCharFormat(CHARFORMAT2& cf);
    DWORD GetParaFormat(PARAFORMAT& pf) const;
    DWORD GetParaFormat(PARAFORMAT2& pf) const;
    BOOL SetParaFormat(PARAFORMAT& pf);
    BOOL SetParaFormat(PARAFORMAT2& pf);
    COLORREF SetBackgroundColor(BOOL bSysColor, COLORREF cr)
    { return (COLORREF)SendMessage(EM_SETBKGNDCOLOR, bSysColor, cr); }
    BOOL SetTargetDevice(HDC hDC, long lLineWidth) { return (BOOL)SendMessage(EM_SETTARGETDEVICE, (WPARAM)hDC, lLineWidth); }

    // ---- events and options ----
    // ENM_CHANGE, ENM_SELCHANGE, ...; returns the previous mask.
    DWORD SetEventMask(DWORD dwEventMask) { return (DWORD)SendMessage(EM_SETEVENTMASK, 0, dwEventMask); }
    DWORD GetEventMask() const { return (DWORD)SendMessage(EM_GETEVENTMASK); }
    UINT SetOptions(WORD wOp, DWORD dwFlags) { return (UINT)SendMessage(EM_SETOPTIONS, wOp, dwFlags); }
    UINT GetOptions() const { return (UINT)SendMessage(EM_GETOPTIONS); }
    UINT SetTextMode(UINT fMode) { return (UINT)SendMessage(EM_SETTEXTMODE, fMode); }
    UINT GetTextMode() const { return (UINT)SendMessage(EM_GETTEXTMODE); }
    BOOL SetAutoURLDetect(BOOL bEnable = TRUE) { return !(BOOL)SendMessage(EM_AUTOURLDETECT, bEnable); }
    BOOL DisplayBand(LPRECT pDisplayRect) { return (BOOL)SendMessage(EM_DISPLAYBAND, 0, (LPARAM)pDisplayRect); }
    long FormatRange(FORMATRANGE* pfr, BOOL bDisplay = TRUE) { return (long)SendMessage(EM_FORMATRANGE, bDisplay, (LPARAM)pfr); }
    void RequestResize() { SendMessage(EM_REQUESTRESIZE); }

    // ---- streams ----
    // nFormat: SF_TEXT, SF_RTF, optionally with SF_UNICODE and SFF_SELECTION; the
    // callback of es fills or drains the control. Returns the characters transferred.
    long StreamIn(int nFormat, EDITSTREAM& es) { return (long)SendMessage(EM_STREAMIN, nFormat, (LPARAM)&es); }
    long StreamOut(int nFormat, EDITSTREAM& es) { return (long)SendMessage(EM_STREAMOUT, nFormat, (LPARAM)&es); }
};

////////////////////////////////////////////////////////////////////////////
// Helpers

// Registers the common-control classes in dwICC (ICC_* flags) once per process.
KXAFX_API BOOL AFXAPI AfxInitCommonControls(DWORD dwICC);
