// KxUiXListCtrl: a report list whose cells carry editors and small controls.
//
// The data lives in the control, one XData::SUBITEMARRAY per row (see XData.h). The native list
// runs in owner-data mode: it only knows the row count and asks for texts; every cell is painted
// by the control through custom draw. A click on a cell whose type has handlers (XControl::TafFcts,
// registered per type code by addAllCtrl and addControl) opens the cell's editor over it, or, for
// check boxes, radio buttons and push buttons, acts at once. When an editor closes with commit its
// value is written into the cell of every selected row whose cell in that column has the same type,
// bracketed by XM_BEGINEDIT and XM_ENDEDIT; each changed cell is announced by XM_SELECTION_2,
// XM_CHECKBOX_CLICKED_2 or XM_BOUTONDOWN_2 (lParam: an XData::CELLNOTIFY) sent to the list and then
// to its parent (wParam: the list's window).
//
// Return commits (Up and Down also move the editor to the previous or next editable row), Escape
// cancels; scrolling, the wheel, resizing, a right click and dragging a column divider close the
// editor without writing anything. The list needs LVS_OWNERDATA | LVS_REPORT: Create adds them; a
// control subclassed from a dialog template must have them in the template.
//
//     KxUiXListCtrl list;
//     list.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | LVS_SHOWSELALWAYS, rect, pParent, IDC_ORDERS);
//     list.InsertColumn(0, L"Item", LVCFMT_LEFT, 120);
//     list.InsertColumn(1, L"Qty", LVCFMT_RIGHT, 60);
//     list.InsertColumn(2, L"Paid", LVCFMT_CENTER, 40);
//     int row = list.InsertItem(0, L"Bolts");
//     list.SetEditNum(row, 1, 12, false);     // an integer editor
//     list.SetCheckbox(row, 2, 0);
//     // in the parent's message map: ON_REGISTERED_MESSAGE(XControl::XM_SELECTION_2, OnCellChanged)
//
// Overridables, in order (after those of KxUiListCtrlBase): getAdditionalWidthFromControlType,
// resizeAllColumnWithItem, getSUBITEMARRAY, GetSubItemData, addAllCtrl, getSelectedSameType,
// createListBox, onClickButton, GetDrawColors, DrawButton, DrawTextW, createComboBoxEdit.
#pragma once
#include "KxUiListCtrlBase.h"
#include "KxArrayPtrDelete.h"
#include "XData.h"

class KxUiXListBox;
class KxUiXComboBoxEdit;

namespace XData {
// What a cell announcement carries (lParam of XM_SELECTION_2 and its siblings): a copy of the
// cell after the change, then its row and column.
struct CELLNOTIFY {
    SUBITEM cell;
    int nRow;
    int nCol;
};
}  // namespace XData

class KXUI_API KxUiXListCtrl : public KxUiListCtrlBase {
    DECLARE_DYNAMIC(KxUiXListCtrl)
public:
    KxUiXListCtrl();
    ~KxUiXListCtrl() override;

    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID) override;

    // ---- overridables ----
    // 16 when the column's cell in row 0 is of type 1, 4, 5, 8 or 9 (room for its control).
    virtual int getAdditionalWidthFromControlType(int nCol);
    // Every column as wide as row 0's text (see the header comment of the implementation).
    virtual void resizeAllColumnWithItem();
    // The row object, or null.
    virtual XData::SUBITEMARRAY* getSUBITEMARRAY(int nRow) const;
    // The cell; the shared default cell for an address that does not exist, the scratch cell
    // for a row without cells. bReset deletes the scratch cell's definition before reuse.
    virtual XData::SUBITEM* GetSubItemData(int nRow, int nCol, bool bReset);
    // Registers the handlers of every built-in type code.
    virtual void addAllCtrl();
    // The selected rows (in index order) whose cell in nCol has the type of (nRow, nCol); with
    // bOnlyEnabled only enabled rows and cells.
    virtual void getSelectedSameType(int nRow, int nCol, bool bOnlyEnabled, CUIntArray& rows);
    // The drop-down list of a type-4 cell.
    virtual KxUiXListBox* createListBox(int nRow, int nCol, const CRect& rect);
    // A push-button cell was clicked; true commits (XM_BOUTONDOWN_2), false cancels.
    virtual bool onClickButton(int nRow, int nCol, CUIntArray& rows);
    // The colours a cell is painted with, from the cell, the selection and the focus.
    virtual void GetDrawColors(int nRow, int nCol, bool bEnabled, COLORREF& clrText, COLORREF& clrBk);
    // Paints a push button with a caption.
    virtual void DrawButton(CDC* pDC, const CRect& rect, const CString& strCaption, bool bEnabled);
    // Paints a cell's image (first image index) and text with the header item's alignment.
    virtual void DrawTextW(int nRow, int nCol, CDC* pDC, COLORREF clrText, COLORREF clrBk, CRect rect,
                           XData::SUBITEMARRAY* pRow);
    // The editor of a type-5 cell.
    virtual KxUiXComboBoxEdit* createComboBoxEdit(int nRow, int nCol, const CRect& rect);

    // ---- rows ----
    // A row with a default cell per column; state from pItem->state, value from lParam, the text
    // of cell pItem->iSubItem from pszText. Returns 1.
    int InsertItem(const LVITEM* pItem);
    // A row at nRow with its first cell's text; returns the row index (-1 when nRow < 0).
    int InsertItem(int nRow, LPCTSTR lpszText);
    BOOL DeleteItem(int nRow);
    BOOL DeleteAllItems();
    int GetItemCount() const { return (int)m_rows.GetSize(); }
    BOOL SetItemData(int nRow, DWORD_PTR dwData);
    DWORD_PTR GetItemData(int nRow) const;
    // Enables or disables a row (repainted at once); a missing row reads as disabled.
    void SetEnabled(int nRow, bool bEnabled);
    bool GetEnabled(int nRow) const;

    // ---- columns ----
    // Deletes every column, from the last header item to the first.
    void removeAllColumn();
    // The header item's text; empty for a missing column.
    CString getColumnText(int nCol) const;

    // ---- cells (a missing row or column writes into the default cell) ----
    int SetItemText(int nRow, int nCol, const CString& strText);
    int SetEditText(int nRow, int nCol, const CString& strText);
    int SetEditNum(int nRow, int nCol, const CString& strText, bool bIntegerOnly);
    int SetEditNum(int nRow, int nCol, int nValue);
    int SetEditNum(int nRow, int nCol, double dValue);
    int SetOxEditNum(int nRow, int nCol, const CString& strText, bool bInfinite, UINT nFractionalDigits);
    int SetComboBox(int nRow, int nCol, const CStringArray& items, int nLines, int nSel);
    int SetComboBox(int nRow, int nCol, const CStringArray& items, const CString& strText);
    int SetComboBoxEdit(int nRow, int nCol, const CStringArray& items, int nSel);
    int SetComboBoxEdit(int nRow, int nCol, const CStringArray& items, int nLines, const CString& strText);
    // Refreshes the column's header check (when on) from the rows as they are before the change.
    int SetCheckbox(int nRow, int nCol, int nState);
    int SetCheckboxBitmap(int nRow, int nCol, int nState, int nBitmap1, int nBitmap2);
    int SetBitmap(int nRow, int nCol, int nState, int nBitmap1, int nBitmap2);
    int SetRadioButtonV(int nRow, int nCol, int nState);
    int SetRadioButtonH(int nRow, int nCol, int nState);
    int SetColorDialog(int nRow, int nCol);
    int SetButton(int nRow, int nCol, const CString& strCaption);
    int setControl(int nRow, int nCol, const CString& strText, int nType, XControl::TagDefine* pDefine);

    CString GetItemText(int nRow, int nCol) const;
    void GetItemText(int nRow, int nCol, CString& strText);
    CString GetComboText(int nRow, int nCol);
    bool SetBold(int nRow, int nCol, bool bBold);
    bool GetBold(int nRow, int nCol) const;
    // Colours of a cell; -1 (CLR_NONE's bits all set) stands for the system default.
    bool SetTextColor(int nRow, int nCol, COLORREF clr);
    COLORREF GetTextColor(int nRow, int nCol);
    bool SetBkColor(int nRow, int nCol, COLORREF clr);
    COLORREF GetBkColor(int nRow, int nCol);
    // 0 for a missing row or column.
    int SetItemToolTipText(int nRow, int nCol, const CString& strText);
    // Types 8 and 9 only: the state's low byte; 1 when stored. Does not repaint.
    int SetCheckState(int nRow, int nCol, int nState);
    int GetCheckbox(int nRow, int nCol);
    // Rows whose cell in nCol is of type 8, 9 or 14 and checked; 0 for a missing column.
    int CountCheckedItems(int nCol);
    // Header check of a column: 0 none, 1 unchecked, 2 checked (-1 from Get for a missing column).
    bool SetHeaderCheckedState(int nCol, int nState);
    int GetHeaderCheckedState(int nCol) const;

    // ---- selection ----
    void SelectAll(bool bSelect);
    void SetCurSel(int nRow);
    int GetCurSel() const;

    // ---- appearance ----
    // Grid lines (applied when the window is created).
    void setShowGrid(bool bShow) { m_bShowGrid = bShow; }
    bool getShowGrid() const { return m_bShowGrid; }
    // Text painted centred below the header while the list has no rows.
    void setStrEmptyText(const CString& strText);
    const CString& getStrEmptyText() const { return m_strEmptyText; }
    // Cell rectangle; column 0 with LVIR_BOUNDS is narrowed to the first column. 0 when missing.
    BOOL GetSubItemRect(int nRow, int nCol, int nArea, CRect& rect) const;

    // ---- editors ----
    int getCtrlItem() const { return m_nCtrlItem; }
    int getCtrlSubItem() const { return m_nCtrlSubItem; }
    // The cell whose editor is open (create handlers call it).
    void setParentItemControl(int nRow, int nCol);
    // Registers or replaces a type's handlers.
    void addControl(int nType, const XControl::TafFcts& fcts);
    // The handlers of a type; false when none are registered.
    bool getControl(int nType, XControl::TafFcts& fcts) const;
    // Opens the editor of a cell (as a click does).
    void createCtrl(int nRow, int nCol);
    // Closes the open editor, writing its value back first when bCommit.
    void deleteCtrl(bool bCommit);
    // The open editor window, or null; create handlers hand theirs over with setEditor.
    CWnd* getEditor() const { return m_pEditor.get(); }
    void setEditor(CWnd* pEditor);
    // The rows the open editor acts on.
    CUIntArray& getSameTypeRows() { return m_sameTypeRows; }
    // The editor hEditor lost the focus to hNewFocus: unless that is inside the editor, the
    // edit is committed (XM_VK_RETURN posted with wParam 0).
    void editorLostFocus(HWND hEditor, HWND hNewFocus);
    // The colour the colour-dialog cell chose, written back by its end-edit handler.
    void setChosenColor(COLORREF clr) { m_clrChosen = clr; }
    COLORREF getChosenColor() const { return m_clrChosen; }

    // ---- repainting and announcements ----
    // Repaints a cell (the whole row for nCol -1); nothing for a missing row or column.
    void UpdateSubItem(int nRow, int nCol);
    // Announces a changed cell to the list and its parent, then repaints it.
    void UpdateSubItem(UINT nMessage, const XData::SUBITEM& cell, int nRow, int nCol);
    // To the parent (or the owner) with wParam = the list's window; -1 without one.
    LRESULT SendMessageToParent(UINT nMessage, LPARAM lParam);
    LRESULT PostMessageToParent(UINT nMessage, LPARAM lParam);
    // Paints a kind that has no draw handler: a swatch of the cell's colour and its text.
    void DrawDefaultControl(int nRow, int nCol, CDC* pDC, COLORREF clrText, CBrush& brush, const CRect& rect);

    // The cell returned for every address that does not exist.
    static XData::SUBITEM& defaultCell();

protected:
    // Inserts the row object as it is (it may hold no cells); the list owns it.
    int InsertItem(int nRow, XData::SUBITEMARRAY* pRow);
    void PreSubclassWindow() override;
    void onColumnInserted(int nCol) override;
    void onColumnDeleted(int nCol) override;
    // Sets the extended style and the handlers (once).
    void initList();
    // Writes the open editor's value back (XM_BEGINEDIT ... XM_ENDEDIT).
    void endEditCtrl();
    // Paints one cell (subitem pre-paint).
    void drawCell(int nRow, int nCol, CDC* pDC);
    // The next (nStep 1) or previous (-1) row from nRow with an enabled cell of a non-zero type in
    // nCol; -1 when none.
    int findEditableRow(int nRow, int nCol, int nStep);
    // The handlers of a cell that takes input (none for plain text, a disabled row or cell).
    XControl::TafFcts handlersAt(int nRow, int nCol);
    // The create handler of such a cell, or null.
    XControl::FctCreate createHandlerAt(int nRow, int nCol);
    // The cell itself, or null for an address that does not exist (no default or scratch cell).
    const XData::SUBITEM* findCell(int nRow, int nCol) const;
    XData::SUBITEM* findCell(int nRow, int nCol);
    // Tells the list view the row count.
    void syncItemCount();
    // The parent, or the owning frame without one.
    HWND messageTarget() const;
    // The list view's own button-down processing, then an XM_VK_RETURN that arrived meanwhile.
    void runDefaultClick();
    // The empty text below the header.
    void drawEmptyText(CDC* pDC);
    // Moves the tooltip tool onto the cell under point and relays the mouse move to it.
    void updateToolTip(CPoint point);
    // The tooltip text of the cell under the tool.
    CString getToolTipText() const;

    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnDestroy();
    afx_msg void OnPaint();
    afx_msg LRESULT OnPrintClient(WPARAM wParam, LPARAM lParam);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint pt);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnHScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnVScroll(UINT nSBCode, UINT nPos, CScrollBar* pScrollBar);
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg BOOL OnCustomDraw(NMHDR* pNMHDR, LRESULT* pResult);
    afx_msg BOOL OnGetDispInfo(NMHDR* pNMHDR, LRESULT* pResult);
    afx_msg BOOL OnBeginDrag(NMHDR* pNMHDR, LRESULT* pResult);
    afx_msg BOOL OnColumnClick(NMHDR* pNMHDR, LRESULT* pResult);
    afx_msg BOOL OnToolTipText(UINT nId, NMHDR* pNMHDR, LRESULT* pResult);
    afx_msg LRESULT OnXCreate(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnXReturn(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnXEscape(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnXSetFocus(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnResizeColumn(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

    CMap<int, int, XControl::TafFcts, const XControl::TafFcts&> m_handlers;  // per type code
    bool m_bShowGrid;                  // grid lines in the extended style
    bool m_bDragging;                  // a row drag started during the native click
    CFont m_fontBold;                  // the bold font while a bold cell is painted
    CFont* m_pOldFont;                 // the font it replaced
    KxArrayPtrDelete<CArray<XData::SUBITEMARRAY*, XData::SUBITEMARRAY*>> m_rows;  // one per row
    CImageList m_imageList;            // free for derived lists and handlers
    CUIntArray m_sameTypeRows;         // rows the open editor acts on
    int m_nCtrlItem;                   // current cell: row
    int m_nCtrlSubItem;                // current cell: column
    XData::SUBITEM m_scratchCell;      // stands in for the cells of a row without cells
    XData::SUBITEMARRAY m_scratchRow;  // a row without cells for derived lists
    int m_nScratchRow;                 // the cell the scratch cell stands for
    int m_nScratchCol;
    bool m_bScratchReused;             // the last lookup reused the scratch cell unchanged
    bool m_bInsideDefaultClick;        // the native button-down processing runs
    UINT m_nPendingMessage;            // an XM_VK_RETURN received meanwhile
    WPARAM m_nPendingWParam;
    LPARAM m_nPendingLParam;
    CString m_strEmptyText;            // painted when there are no rows
    std::unique_ptr<CWnd> m_pEditor;   // the open editor
    // Not in the model's table: state the window needs.
    bool m_bInitialized;               // initList has run
    bool m_bClosingEditor;             // deleteCtrl is destroying the editor
    COLORREF m_clrChosen;              // last colour chosen in a colour-dialog cell
    CToolTipCtrl m_toolTip;            // per-cell tooltips: one tool moved onto the cell under the mouse
    int m_nToolRow;                    // the cell the tool covers, -1 none
    int m_nToolCol;
    CString m_strToolTipBuffer;        // the text handed to the tooltip
    CStringA m_strToolTipBufferA;
};

// The handlers of the built-in types (registered by addAllCtrl).
namespace XControl {
KXUI_API void fctCreateEditCtrl(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol, CString strText);
KXUI_API void fctCreateEditNumCtrl(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol, CString strText);
KXUI_API void fctCreateOxEditNumCtrl(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol, CString strText);
KXUI_API void fctCreateComboBox(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol, CString strText);
KXUI_API void fctCreateComboBoxEdit(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol, CString strText);
KXUI_API void fctCreateCheckBox(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol, CString strText);
KXUI_API void fctCreateCheckBoxBitmap(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol, CString strText);
KXUI_API void fctCreateBitmap(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol, CString strText);
KXUI_API void fctCreateMyColorDialog(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol, CString strText);
KXUI_API void fctCreateRadioButtonVertical(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol,
                                           CString strText);
KXUI_API void fctCreateRadioButtonHorizontal(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol,
                                             CString strText);
KXUI_API void fctCreateButton(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol, CString strText);
// Asks for a file name and stores it as the cell's text (registered for no type by default).
KXUI_API void fctCreateBrowseFile(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol, CString strText);

KXUI_API void fctEndEditEditCtrl(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol);
KXUI_API void fctEndEditComboBox(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol);
KXUI_API void fctEndEditComboBoxEdit(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol);
KXUI_API void fctEndEditMyColorDialog(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol);
KXUI_API void fctEndEditButton(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol);
// One no-op for the kinds that change on the click itself, under its five names.
KXUI_API void fctEndEditBitmap(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol);
KXUI_API extern const FctEndEdit fctEndEditCheckBox;
KXUI_API extern const FctEndEdit fctEndEditCheckBoxBitmap;
KXUI_API extern const FctEndEdit fctEndEditRadioButtonVertical;
KXUI_API extern const FctEndEdit fctEndEditRadioButtonHorizontal;

KXUI_API void fctDrawEditCtrl(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF clrText, COLORREF clrBk,
                              const RECT& rect);
KXUI_API void fctDrawComboBoxCtrl(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF clrText,
                                  COLORREF clrBk, const RECT& rect);
KXUI_API void fctDrawComboBoxEdit(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF clrText,
                                  COLORREF clrBk, const RECT& rect);
KXUI_API void fctDrawCheckBox(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF clrText, COLORREF clrBk,
                              const RECT& rect);
KXUI_API void fctDrawCheckBoxBitmap(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF clrText,
                                    COLORREF clrBk, const RECT& rect);
KXUI_API void fctDrawBitmap(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF clrText, COLORREF clrBk,
                            const RECT& rect);
KXUI_API void fctDrawRadioButton(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF clrText,
                                 COLORREF clrBk, const RECT& rect);
KXUI_API void fctDrawButton(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF clrText, COLORREF clrBk,
                            const RECT& rect);
}  // namespace XControl

// The sortable extended list: a header click sorts by that column, with the direction the sort
// header remembers (inverted when the column is already the sort column). Rows keep their
// selection and focus while they move.
class KXUI_API KxUiSortXListCtrl : public KxUiXListCtrl {
    DECLARE_DYNAMIC(KxUiSortXListCtrl)
public:
    KxUiSortXListCtrl();
    ~KxUiSortXListCtrl() override;

    // A KxUiSortHeaderCtrl.
    KxUiXHeaderCtrl* createHeaderCtrl() override;
    // Shows the arrow, sorts the rows with their state bits, repaints.
    void Sort(int nCol, bool bAscending);
    // Orders the row objects (quicksort by XData::SUBITEMARRAY::compareTo; not stable).
    virtual void sort(int nCol, bool bAscending);
    // Also removes the sort arrow.
    void resizeAllColumnWithItem() override;

protected:
    void quickSortRows(int nLow, int nHigh, int nCol, bool bAscending);
    // Two rows at nCol; a row without that cell compares as a default cell.
    int compareRows(const XData::SUBITEMARRAY& a, const XData::SUBITEMARRAY& b, int nCol, bool bAscending) const;
    afx_msg BOOL OnSortColumnClick(NMHDR* pNMHDR, LRESULT* pResult);
    DECLARE_MESSAGE_MAP()
};
