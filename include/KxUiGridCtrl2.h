// KxUiGridCtrl2: a spreadsheet-like grid of typed cells, with fixed (header) rows at the
// top and fixed columns at the left that do not scroll.
//
// Model, in separable parts:
// - the table: stored cells (an array of rows, each an array of cell pointers) or, in
//   virtual mode, no cells at all: content comes from a callback or the GVN_GETDISPINFO
//   notification, one visible cell at a time;
// - the geometry: two KxUiGridAxis2 (row heights, column widths, 0 = hidden), 64-bit
//   offsets throughout, so ten million rows scroll, page and jump to the end exactly;
// - the renderers: each cell draws itself (KxUiGridCellBase2::Draw) into a memory bitmap;
//   only invalidated cells are drawn, then copied to the window in one blit;
// - the selection: a list of cell ranges kept by the grid (not by the cells), plus the
//   focus cell and the anchor a Shift-extension starts from.
// Row and column order tables map a visible index to a stored one; a virtual sort only
// reorders the row table.
//
//     KxUiGridCtrl2 grid;                           // a child of a dialog or a view
//     grid.Create(CRect(0, 0, 400, 300), pParent, IDC_GRID, WS_CHILD | WS_VISIBLE | WS_TABSTOP);
//     grid.SetColumnCount(4);
//     grid.SetRowCount(101);
//     grid.SetFixedRowCount(1);
//     grid.SetItemText(0, 0, L"Part");
//     grid.SetItemText(1, 0, L"Bolt M6");
//     grid.SetHeaderSort(TRUE);                     // a header click sorts by its column
//
// Notifications reach GetOwner() as WM_NOTIFY with an NM_GRIDVIEW2 (GVN_* codes).
//
// Overridables, in slot order after CWnd's: GetVirtualCellType, CutSelectedText,
// CopyTextFromGrid, PasteTextToGrid, OnEditCut, OnEditCopy, OnEditPaste, OnEditSelectAll;
// then CreateCell, DestroyCell, OnEditCell, OnEndEditCell.
#pragma once
#include "KxUiGridCell2.h"
#include "KxUiGridAxis2.h"
#include <afxcmn.h>
#include <memory>
#include <vector>

class COleDataSource;
class COleDataObject;

// Comparison of two cells (KxUiGridCellBase2*, passed as LPARAM) with a user value.
typedef int(CALLBACK* PFNLVCOMPARE2)(LPARAM, LPARAM, LPARAM);
// Fills a cell's display information in virtual mode; the LPARAM is the value given to
// SetCallbackFunc.
typedef int(CALLBACK* GRIDCALLBACK2)(tagGV2_DISPINFO*, LPARAM);
// Virtual sort: TRUE when stored row a sorts before stored row b.
typedef bool (*PFNVIRTUALCOMPARE2)(int, int);

// Window class of the grid.
#define KXUIGRIDCTRL2_CLASSNAME _T("KxUiGridCtrl2")
// Control id of the in-place editors the cells open.
#define IDC_KXUI_INPLACE_CONTROL 8

class KXUI_API KxUiGridCtrl2 : public CWnd {
    DECLARE_DYNCREATE(KxUiGridCtrl2)
public:
    // Reads the wheel setting and initialises OLE (a message box says so when it cannot).
    explicit KxUiGridCtrl2(HINSTANCE hInst = NULL, int nRows = 0, int nCols = 0, int nFixedRows = 0,
                           int nFixedCols = 0);
    ~KxUiGridCtrl2() override;

    // ---- creation ----
    BOOL Create(const RECT& rect, CWnd* pParentWnd, UINT nID,
                DWORD dwStyle = WS_CHILD | WS_BORDER | WS_TABSTOP | WS_VISIBLE);
    // Registers "KxUiGridCtrl2" for the module once; TRUE when it is registered.
    static BOOL RegisterWindowClass(HINSTANCE hInst = NULL);
    // Sets up the window after creation or subclassing (scroll bars, font).
    BOOL Initialise();
    // Gives the four default cells the grid, its text colour and backgrounds.
    void SetupDefaultCells();

    // ---- counts ----
    // Each returns FALSE for a negative count (nothing changes).
    BOOL SetRowCount(int nRows);
    BOOL SetColumnCount(int nCols);
    // Raises the row or column count when it is smaller.
    BOOL SetFixedRowCount(int nFixedRows);
    BOOL SetFixedColumnCount(int nFixedCols);
    int GetRowCount() const { return m_rows.GetCount(); }
    int GetColumnCount() const { return m_cols.GetCount(); }
    int GetFixedRowCount() const { return m_rows.GetFixedCount(); }
    int GetFixedColumnCount() const { return m_cols.GetFixedCount(); }

    // ---- rows and columns ----
    // Inserts before nRow (-1 appends); returns the new index, -1 on failure (an index
    // beyond the count included).
    int InsertRow(LPCTSTR strHeading, int nRow = -1);
    int InsertColumn(LPCTSTR strHeading, UINT nFormat = DT_CENTER | DT_VCENTER | DT_SINGLELINE, int nCol = -1);
    BOOL DeleteRow(int nRow);
    BOOL DeleteColumn(int nCol);
    // Removes every row and column.
    BOOL DeleteAllItems();
    // Non-fixed rows only.
    BOOL DeleteNonFixedRows();
    // 0 = hidden; 0 for an index outside the counts.
    int GetRowHeight(int nRow) const { return m_rows.GetSize(nRow); }
    BOOL SetRowHeight(int nRow, int height);
    int GetColumnWidth(int nCol) const { return m_cols.GetSize(nCol); }
    BOOL SetColumnWidth(int nCol, int width);
    int GetFixedRowHeight() const { return static_cast<int>(m_rows.GetFixedTotal()); }
    int GetFixedColumnWidth() const { return static_cast<int>(m_cols.GetFixedTotal()); }
    LONGLONG GetVirtualWidth() const { return m_cols.GetTotal(); }
    LONGLONG GetVirtualHeight() const { return m_rows.GetTotal(); }
    const KxUiGridAxis2& GetRowAxis() const { return m_rows; }
    const KxUiGridAxis2& GetColumnAxis() const { return m_cols; }
    // Visible to stored index through the order tables; the index itself when unmapped.
    int GetStoredRow(int nRow) const;
    int GetStoredColumn(int nCol) const;
    // Puts the row order table back to identity.
    void ResetRowOrder() { m_rowOrder.clear(); }
    // The column order table: visible column i shows stored column order[i]. FALSE (nothing
    // changes) unless order is a permutation of 0..GetColumnCount()-1.
    BOOL SetColumnOrder(const std::vector<int>& order);
    const std::vector<int>& GetColumnOrder() const { return m_colOrder; }
    // Turns the remapping of virtual rows and columns through the order tables off.
    void SetRemapping(BOOL bRemap) { m_bRemap = bRemap; }
    BOOL GetRemapping() const { return m_bRemap; }

    // ---- cells ----
    // Null outside the counts. In virtual mode the grid's one virtual cell filled for this
    // position (valid until the next GetCell).
    KxUiGridCellBase2* GetCell(int nRow, int nCol) const;
    // FALSE in virtual mode or outside the counts; the previous cell is not freed.
    BOOL SetCell(int nRow, int nCol, KxUiGridCellBase2* pCell);
    KxUiGridDefaultCell2* GetDefaultCell(BOOL bFixedRow, BOOL bFixedCol) const;
    // Replaces a cell with one of another class (a KxUiGridCellBase2), keeping its content.
    BOOL SetCellType(int nRow, int nCol, CRuntimeClass* pRuntimeClass);
    BOOL SetDefaultCellType(CRuntimeClass* pRuntimeClass);
    CRuntimeClass* GetDefaultCellType() const { return m_pRtcDefault; }
    BOOL SetItem(const _GV2_ITEM* pItem);
    BOOL GetItem(_GV2_ITEM* pItem);
    BOOL SetItemText(int nRow, int nCol, LPCTSTR str);
    CString GetItemText(int nRow, int nCol) const;
    BOOL SetItemData(int nRow, int nCol, LPARAM lParam);
    LPARAM GetItemData(int nRow, int nCol) const;
    BOOL SetItemImage(int nRow, int nCol, int iImage);
    int GetItemImage(int nRow, int nCol) const;
    BOOL SetItemFormat(int nRow, int nCol, UINT nFormat);
    UINT GetItemFormat(int nRow, int nCol) const;
    BOOL SetItemBkColour(int nRow, int nCol, COLORREF cr = CLR_DEFAULT);
    BOOL SetItemFgColour(int nRow, int nCol, COLORREF cr = CLR_DEFAULT);
    // The selected and focused bits belong to the grid's selection and focus cell.
    BOOL SetItemState(int nRow, int nCol, UINT state);
    UINT GetItemState(int nRow, int nCol) const;
    BOOL IsCellFixed(int nRow, int nCol) const;
    BOOL IsCellSelected(int nRow, int nCol) const;
    BOOL IsCellEditable(int nRow, int nCol) const;
    // The cell lies wholly inside the visible part of the window.
    BOOL IsCellVisible(int nRow, int nCol) const;

    // ---- colours ----
    void SetTextColor(COLORREF clr);
    COLORREF GetTextColor() const { return m_crTextColour; }
    void SetTextBkColor(COLORREF clr);
    COLORREF GetTextBkColor() const { return m_crTextBkColour; }
    void SetFixedTextColor(COLORREF clr);
    COLORREF GetFixedTextColor() const { return m_crFixedTextColour; }
    void SetFixedBkColor(COLORREF clr);
    COLORREF GetFixedBkColor() const { return m_crFixedBkColour; }
    void SetGridBkColor(COLORREF clr);
    COLORREF GetGridBkColor() const { return m_crGridBkColour; }
    void SetGridLineColor(COLORREF clr);
    COLORREF GetGridLineColor() const { return m_crGridLineColour; }
    // Images drawn in cells (GetImage); the grid does not own the list.
    void SetImageList(CImageList* pList) { m_pImageList = pList; }
    CImageList* GetImageList() const { return m_pImageList; }
    // Fixed cells drawn as raised buttons.
    void SetFixedCellRelief(BOOL b) { m_bFixedRelief = b; }
    BOOL GetFixedCellRelief() const { return m_bFixedRelief; }

    // ---- focus and selection ----
    // Both return the previous focus cell.
    KxUiCellID2 SetFocusCell(KxUiCellID2 cell);
    KxUiCellID2 SetFocusCell(int nRow, int nCol) { return SetFocusCell(KxUiCellID2(nRow, nCol)); }
    KxUiCellID2 GetFocusCell() const { return m_idCurrentCell; }
    // The cell under the mouse, drawn hot; (-1,-1) when none.
    KxUiCellID2 GetHotCell() const { return m_idHotCell; }
    // Bounding range of every selected cell; invalid when nothing is selected.
    KxUiCellRange2 GetSelectedCellRange() const;
    // The selection becomes the range (plus the ranges kept while Ctrl is held).
    void SetSelectedRange(const KxUiCellRange2& Range, BOOL bForceRepaint = FALSE, BOOL bSelectCells = TRUE);
    void SetSelectedRange(int nMinRow, int nMinCol, int nMaxRow, int nMaxCol, BOOL bForceRepaint = FALSE,
                          BOOL bSelectCells = TRUE);
    int GetSelectedCount() const;
    void ResetSelectedRange();
    // All non-fixed cells.
    void SelectAllCells();
    void SetListMode(BOOL bEnableListMode = TRUE);
    BOOL GetListMode() const { return m_bListMode; }
    void SetSingleRowSelection(BOOL bSing = TRUE) { m_bSingleRowSelection = bSing; }
    // The list-mode flag, not the value SetSingleRowSelection stored.
    BOOL GetSingleRowSelection() const { return m_bListMode; }
    void SetSingleColSelection(BOOL bSing = TRUE) { m_bSingleColSelection = bSing; }
    BOOL GetSingleColSelection() const { return m_bSingleColSelection; }
    // A click in a fixed row selects its column; in a fixed column its row.
    void SetFixedRowSelection(BOOL b = TRUE) { m_bFixedRowSelection = b; }
    BOOL GetFixedRowSelection() const { return m_bFixedRowSelection; }
    void SetFixedColumnSelection(BOOL b = TRUE) { m_bFixedColumnSelection = b; }
    BOOL GetFixedColumnSelection() const { return m_bFixedColumnSelection; }
    // Whole-row selections include the fixed columns.
    void SetSelectFixedColumns(BOOL b = TRUE) { m_bSelectFixedColumns = b; }
    BOOL GetSelectFixedColumns() const { return m_bSelectFixedColumns; }
    void EnableSelection(BOOL bEnable = TRUE);
    BOOL IsSelectable() const { return m_bEnableSelection; }
    // Headers of the focus row and column drawn sunken.
    void SetTrackFocusCell(BOOL b = TRUE) { m_bTrackFocusCell = b; }
    BOOL GetTrackFocusCell() const { return m_bTrackFocusCell; }
    // The focus cell framed.
    void SetFrameFocusCell(BOOL b = TRUE) { m_bFrameFocus = b; }
    BOOL GetFrameFocusCell() const { return m_bFrameFocus; }
    void SetHandleTabKey(BOOL b = TRUE) { m_bHandleTabKey = b; }
    BOOL GetHandleTabKey() const { return m_bHandleTabKey; }
    // Tab moves the dialog focus to the next control.
    void ForceQuitFocusOnTab(BOOL b = TRUE) { m_bQuitFocusOnTab = b; }
    BOOL GetQuitFocusOnTab() const { return m_bQuitFocusOnTab; }
    // Hot tracking of the cell under the mouse.
    void SetHotTracking(BOOL b = TRUE) { m_bHotTracking = b; }
    BOOL GetHotTracking() const { return m_bHotTracking; }
    // Dragging the divider in a fixed row or column resizes.
    void SetColumnResize(BOOL b = TRUE) { m_bAllowColumnResize = b; }
    BOOL GetColumnResize() const { return m_bAllowColumnResize; }
    void SetRowResize(BOOL b = TRUE) { m_bAllowRowResize = b; }
    BOOL GetRowResize() const { return m_bAllowRowResize; }
    // Title tips for clipped text.
    void EnableTitleTips(BOOL b = TRUE) { m_bTitleTips = b; }
    BOOL GetTitleTips() const { return m_bTitleTips; }
    void SetGridLines(BOOL b = TRUE) { m_bGridLines = b; }
    BOOL GetGridLines() const { return m_bGridLines; }

    // ---- geometry ----
    // The cell at a client point; the fixed cells only with bAllowFixedCellCheck. A point on
    // a boundary belongs to the right or lower cell; hidden cells are never hit.
    KxUiCellID2 GetCellFromPt(CPoint point, BOOL bAllowFixedCellCheck = TRUE) const;
    // Client rectangle of a cell, right and bottom exclusive; FALSE when not on screen.
    BOOL GetCellRect(int nRow, int nCol, LPRECT pRect) const;
    // The first non-fixed row and column scrolled into view.
    KxUiCellID2 GetTopleftNonFixedCell() const;
    // Rows and columns wholly or partly visible (fixed included).
    KxUiCellRange2 GetVisibleNonFixedCellRange(BOOL bPartial = TRUE) const;
    // Scrolls the fewest lines that make the cell wholly visible.
    void EnsureVisible(int nRow, int nCol);
    void EnsureVisible(KxUiCellID2 cell) { EnsureVisible(cell.row, cell.col); }
    // Scroll-bar units per pixel divisor (1 unless the total passes what a bar holds).
    int GetScrollScale(int nBar) const;

    // ---- auto-sizing ----
    BOOL AutoSizeColumn(int nCol);
    BOOL AutoSizeRow(int nRow);
    void AutoSizeColumns();
    void AutoSizeRows();
    void AutoSize();

    // ---- sorting ----
    void SetCompareFunction(PFNLVCOMPARE2 pfnCompare) { m_pfnCompare = pfnCompare; }
    static int CALLBACK pfnCellTextCompare(LPARAM lParam1, LPARAM lParam2, LPARAM lParamSort);
    static int CALLBACK pfnCellNumericCompare(LPARAM lParam1, LPARAM lParam2, LPARAM lParamSort);
    BOOL SortTextItems(int nCol, BOOL bAscending, LPARAM data = 0);
    BOOL SortItems(int nCol, BOOL bAscending, LPARAM data = 0);
    BOOL SortItems(PFNLVCOMPARE2 pfnCompare, int nCol, BOOL bAscending, LPARAM data = 0);
    void SetHeaderSort(BOOL bSortOnClick = TRUE) { m_bSortOnClick = bSortOnClick; }
    BOOL GetHeaderSort() const { return m_bSortOnClick; }
    void SetSortColumn(int nCol);
    int GetSortColumn() const { return m_nSortColumn; }
    void SetSortAscending(BOOL bAscending) { m_bAscending = bAscending; }
    BOOL GetSortAscending() const { return m_bAscending; }
    void SetVirtualCompare(PFNVIRTUALCOMPARE2 pfn) { m_pfnVirtualCompare = pfn; }
    // During a virtual sort: the grid being sorted and its stored sort column.
    static KxUiGridCtrl2* GetVirtualSortGrid();
    int GetVirtualSortColumn() const { return m_nVirtualSortColumn; }

    // ---- virtual mode ----
    // Switching drops every stored cell (on) or starts empty cells (off).
    void SetVirtualMode(BOOL bVirtual);
    BOOL GetVirtualMode() const { return m_bVirtualMode; }
    void SetCallbackFunc(GRIDCALLBACK2 pCallback, LPARAM lParam);
    GRIDCALLBACK2 GetCallbackFunc() const { return m_pfnCallback; }
    LRESULT SendDisplayRequestToParent(tagGV2_DISPINFO* pDisplayInfo) const;
    LRESULT SendCacheHintToParent(const KxUiCellRange2& range) const;

    // ---- notifications ----
    // WM_NOTIFY with an NM_GRIDVIEW2 to GetOwner(); 0 without a window or owner.
    LRESULT SendMessageToParent(int nRow, int nCol, int nMessage) const;

    // ---- editing ----
    void SetEditable(BOOL bEditable = TRUE) { m_bEditable = bEditable; }
    BOOL IsEditable() const { return m_bEditable; }
    // Ends an open in-place edit.
    void EndEditing();
    // Modified flags of every cell (or one) back to clear.
    void SetModified(BOOL bModified = TRUE, int nRow = -1, int nCol = -1);
    BOOL GetModified(int nRow = -1, int nCol = -1) const;

    // ---- clipboard, files ----
    BOOL Save(LPCTSTR filename, TCHAR chSeparator = _T(','));
    BOOL Load(LPCTSTR filename, TCHAR chSeparator = _T(','));

    // ---- overridables ----
    // The cell GetCell fills in virtual mode.
    virtual KxUiGridCellBase2* GetVirtualCellType(int nRow, int nCol);
    // Empties the text of every selected, editable cell.
    virtual void CutSelectedText();
    // The selected cells as ANSI text (tab between columns, CR LF between rows) in a data
    // source the caller owns; null when nothing is selected.
    virtual COleDataSource* CopyTextFromGrid();
    // Pastes tab/newline text from pDataObject with its first cell at cell, clipped to the
    // grid; read-only and fixed cells are skipped. FALSE when there is no text.
    virtual BOOL PasteTextToGrid(KxUiCellID2 cell, COleDataObject* pDataObject, BOOL bSelectPastedCells = TRUE);
    virtual void OnEditCut();
    virtual void OnEditCopy();
    virtual void OnEditPaste();
    virtual void OnEditSelectAll();
    // Creates a cell of the default cell type (or null on failure); the grid owns it.
    virtual KxUiGridCellBase2* CreateCell(int nRow, int nCol);
    virtual void DestroyCell(int nRow, int nCol);
    // Starts an edit: GVN_BEGINLABELEDIT, then the cell's Edit.
    virtual void OnEditCell(int nRow, int nCol, CPoint point, UINT nChar);
    // Stores the edited text, tells the owner (GVN_ENDLABELEDIT) and puts the old text back
    // when it answers negatively.
    virtual void OnEndEditCell(int nRow, int nCol, CString str);

protected:
    // Selection by mode.
    void SelectRows(KxUiCellID2 currentCell, BOOL bForceRedraw = FALSE, BOOL bSelectCells = TRUE);
    void SelectColumns(KxUiCellID2 currentCell, BOOL bForceRedraw = FALSE, BOOL bSelectCells = TRUE);
    void SelectCells(KxUiCellID2 currentCell, BOOL bForceRedraw = FALSE, BOOL bSelectCells = TRUE);
    void OnSelecting(const KxUiCellID2& currentCell);

    // Draws the part of the grid that pDC's clip box covers.
    virtual void OnDraw(CDC* pDC);
    // Draws one cell at its rectangle (grid lines not included).
    BOOL RedrawCell(int nRow, int nCol, CDC* pDC = NULL);
    void InvalidateCell(int nRow, int nCol);
    void InvalidateRows(int nMinRow, int nMaxRow);
    // Scroll bars from the totals and the window size.
    void ResetScrollBars();
    // Scrolls so that nTop / nLeft is the first non-fixed row / column.
    void ScrollTo(int nTopRow, int nLeftCol);

    void PreSubclassWindow() override;
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;

    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnDestroy();
    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg UINT OnGetDlgCode();
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnLButtonDblClk(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnMouseLeave();
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint pt);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnCaptureChanged(CWnd* pWnd);
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg void OnSettingChange(UINT uFlags, LPCTSTR lpszSection);
    afx_msg void OnSysColorChange();
    afx_msg LRESULT OnSetFont(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnGetFont(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    enum MouseMode { MOUSE_NOTHING, MOUSE_SELECT_ALL, MOUSE_SELECT_COL, MOUSE_SELECT_ROW, MOUSE_SELECT_CELLS,
                     MOUSE_SIZING_COL, MOUSE_SIZING_ROW, MOUSE_PREPARE_SORT };
    typedef std::vector<KxUiGridCellBase2*> GridRow;

    void ReadWheelSetting();
    KxUiGridCellBase2* StoredCell(int nRow, int nCol) const;
    void SyncState(KxUiGridCellBase2* pCell, int nRow, int nCol) const;
    GridRow* NewRow(int nRow);
    void FreeRow(int nRow);
    void FreeAllCells();
    BOOL SelectionContains(int nRow, int nCol) const;
    void InvalidateSelection();
    // Invalidates the visible part of a range.
    void InvalidateRange(const KxUiCellRange2& range);
    // Client x of a column's left edge / y of a row's top (may lie outside the client).
    LONGLONG ColumnX(int nCol) const;
    LONGLONG RowY(int nRow) const;
    void SetFocusInternal(KxUiCellID2 cell);
    // Key movement shared by OnKeyDown and the in-place edit's exit keys.
    void MoveFocusByKey(UINT nChar, BOOL& bHandled);
    // The non-fixed area's height and width in pixels.
    int ScrollViewHeight() const;
    int ScrollViewWidth() const;
    int ClampTopRow(int nTop) const;
    int ClampLeftCol(int nLeft) const;
    void UpdateHot(CPoint point);
    void SetHot(KxUiCellID2 cell);
    // A column or row divider within a few pixels of the point in a fixed area.
    int ColumnDividerAt(CPoint point) const;
    int RowDividerAt(CPoint point) const;
    void QuickSortRows(PFNLVCOMPARE2 pfnCompare, int nCol, BOOL bAscending, LPARAM data, int low, int high);
    BOOL SortCommon(PFNLVCOMPARE2 pfnCompare, int nCol, BOOL bAscending, LPARAM data);
    void SwapRows(int r1, int r2);
    void UpdateTitleTip(CPoint point);
    void ScrollLineForKey(UINT nChar);

    // Table
    std::vector<std::unique_ptr<GridRow>> m_table;
    std::vector<int> m_rowOrder;   // empty = identity
    std::vector<int> m_colOrder;   // always GetColumnCount() long
    KxUiGridAxis2 m_rows;
    KxUiGridAxis2 m_cols;
    CRuntimeClass* m_pRtcDefault;
    KxUiGridDefaultCell2 m_cellDefault, m_cellFixedColDef, m_cellFixedRowDef, m_cellFixedRowColDef;
    mutable std::unique_ptr<KxUiGridCellBase2> m_pVirtualCell;
    BOOL m_bVirtualMode;
    GRIDCALLBACK2 m_pfnCallback;
    LPARAM m_lParamCallback;
    BOOL m_bRemap;
    HINSTANCE m_hInstance;

    // Appearance
    COLORREF m_crTextColour, m_crTextBkColour, m_crFixedTextColour, m_crFixedBkColour, m_crGridBkColour,
        m_crGridLineColour;
    CImageList* m_pImageList;
    BOOL m_bFixedRelief, m_bGridLines;
    HFONT m_hFont;   // the font WM_SETFONT gave, or null

    // Selection and focus
    KxUiCellID2 m_idCurrentCell, m_idHotCell, m_SelectionStartCell, m_LeftClickDownCell;
    std::vector<KxUiCellRange2> m_keptSel;   // ranges kept while Ctrl extends the selection
    KxUiCellRange2 m_curSel;
    int m_nSelectionMode;   // 1 all, 2 columns, 3 rows, 4 cells
    BOOL m_bListMode, m_bSingleRowSelection, m_bSingleColSelection, m_bFixedRowSelection,
        m_bFixedColumnSelection, m_bSelectFixedColumns, m_bEnableSelection, m_bTrackFocusCell, m_bFrameFocus;
    BOOL m_bHandleTabKey, m_bQuitFocusOnTab, m_bHotTracking, m_bAllowColumnResize, m_bAllowRowResize,
        m_bTitleTips, m_bEditable;

    // Mouse
    MouseMode m_MouseMode;
    CPoint m_ptLastMouse, m_ptDown;
    int m_nResizeIndex;
    int m_nResizeGrab;   // pointer position less the divider's when a resize began
    UINT_PTR m_nTimerID;
    BOOL m_bTrackingLeave;
    BOOL m_bInCreate;        // Create is running: OnCreate initialises, not PreSubclassWindow
    BOOL m_bInScrollReset;   // showing a scroll bar resizes the client: no re-entry
    CToolTipCtrl m_titleTip;
    KxUiCellID2 m_idTipCell;

    // Scrolling: the first non-fixed row and column in view
    int m_nTopRow, m_nLeftCol;
    UINT m_nRowsPerWheelNotch;

    // Sorting
    PFNLVCOMPARE2 m_pfnCompare;
    PFNVIRTUALCOMPARE2 m_pfnVirtualCompare;
    int m_nSortColumn, m_nVirtualSortColumn;
    BOOL m_bAscending, m_bSortOnClick;

    // Double buffer kept between paints
    CBitmap m_bmpBuffer;
    CSize m_sizeBuffer;
};
