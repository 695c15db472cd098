// KxUiListCtrlBase: a report-view list with an owner-drawn header and hideable columns.
//
// The list attaches a header object (KxUiXHeaderCtrl, or what createHeaderCtrl of a derived class
// gives) to the native header as soon as it exists. A hidden column keeps its place and its
// column index but has width 0 and cannot be widened by the user; showing it again gives back its
// width. With the show/hide-column menu on, a right click on the header offers every column with a
// check mark, and SaveState/RestoreState keep widths and visibility in a stream of their own:
//
//   offset 0: column count n (int32); then per column: width (int32; the width it gets back when
//   shown, for a hidden column), visible (int32, 0 or 1).
//
//     KxUiListCtrlBase list;
//     list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, rect, pParent, IDC_LIST);
//     list.InsertColumn(0, L"Name", LVCFMT_LEFT, 120);
//     list.setColumnVisible(0, false);       // width 0, remembered
//
// Overridables, in order: createHeaderCtrl, isColumnVisible, setColumnVisible, SaveState,
// RestoreState.
#pragma once
#include "KxUiDef.h"
#include <afxcmn.h>
#include <afxtempl.h>
#include <memory>

class CFile;
class KxUiXHeaderCtrl;

class KXUI_API KxUiListCtrlBase : public CListCtrl {
    DECLARE_DYNAMIC(KxUiListCtrlBase)
public:
    KxUiListCtrlBase();
    ~KxUiListCtrlBase() override;

    // The header object attached to the native header (new, owned by the list).
    virtual KxUiXHeaderCtrl* createHeaderCtrl();
    // False for a hidden or missing column.
    virtual bool isColumnVisible(int nCol) const;
    // Hides (width 0, the width remembered) or shows (the remembered width back) a column;
    // false for a missing column.
    virtual bool setColumnVisible(int nCol, bool bVisible);
    // Writes widths and visibility (see above).
    virtual void SaveState(CFile& stream) const;
    // Applies a SaveState stream as far as both sides have columns; true only when the stored
    // count equals the list's column count.
    virtual bool RestoreState(CFile& stream);

    // The attached header object; null before the native header exists.
    KxUiXHeaderCtrl* getHeader() const { return m_pHeader.get(); }
    // Number of columns (header items).
    int GetColumnsCount() const;
    // Whether a right click on the header offers the show/hide-column menu.
    bool getShowHideColumnMenu() const { return m_bShowHideColumnMenu; }
    void setShowHideColumnMenu(bool bOn) { m_bShowHideColumnMenu = bOn; }
    // The menu's work without the menu: toggles the column's visibility.
    bool toggleColumnVisible(int nCol) { return setColumnVisible(nCol, !isColumnVisible(nCol)); }

    // Columns; hidden columns shift with insertions and deletions.
    int InsertColumn(int nCol, const LVCOLUMN* pColumn);
    int InsertColumn(int nCol, LPCTSTR lpszColumnHeading, int nFormat = LVCFMT_LEFT, int nWidth = -1,
                     int nSubItem = -1);
    BOOL DeleteColumn(int nCol);

protected:
    // Attaches the header object once the native header exists (creation or subclassing).
    void attachHeader();
    void PreSubclassWindow() override;
    // Called by InsertColumn/DeleteColumn after the native change.
    virtual void onColumnInserted(int nCol);
    virtual void onColumnDeleted(int nCol);

    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg BOOL OnHeaderBeginTrack(UINT nId, NMHDR* pNMHDR, LRESULT* pResult);
    afx_msg BOOL OnHeaderRightClick(UINT nId, NMHDR* pNMHDR, LRESULT* pResult);
    DECLARE_MESSAGE_MAP()

    std::unique_ptr<KxUiXHeaderCtrl> m_pHeader;  // attached to the native header
    CArray<int, int> m_hiddenWidths;              // per column: -1 shown, else the width to give back
    bool m_bShowHideColumnMenu;                   // header right click offers the menu
};
