// KxUiCellID2, KxUiCellRange2 and the records the grid exchanges with its cells and its owner.
//
// A cell is named by (row, col); both at least 0 make a valid id and (-1, -1) is "no cell".
// A range is the block minRow..maxRow x minCol..maxCol (both ends included); the range with
// -1 everywhere is "no range".
//
//     KxUiCellRange2 sel = grid.GetSelectedCellRange();
//     for (int r = sel.GetMinRow(); r <= sel.GetMaxRow(); ++r) ...
#pragma once
#include "KxUiDef.h"
#include <afxwin.h>

class KxUiGridCtrl2;
class KxUiGridCellBase2;
class KxUiGridDefaultCell2;

// Cell state bits (GetState, GetItemState).
enum : DWORD {
    GVIS_FOCUSED = 0x001,
    GVIS_SELECTED = 0x002,
    GVIS_DROPHILITED = 0x004,
    GVIS_READONLY = 0x008,
    GVIS_FIXED = 0x010,
    GVIS_FIXEDROW = 0x020,
    GVIS_FIXEDCOL = 0x040,
    GVIS_MODIFIED = 0x080,
    GVIS_HOT = 0x100,
};

// Which fields of a _GV2_ITEM are valid; SetItem applies them in the order text, data, image,
// state, format, background, text colour, font, margin.
enum : UINT {
    GVIF_TEXT = 0x001,
    GVIF_IMAGE = 0x002,
    GVIF_PARAM = 0x004,
    GVIF_STATE = 0x008,
    GVIF_BKCLR = 0x010,
    GVIF_FGCLR = 0x020,
    GVIF_FORMAT = 0x040,
    GVIF_FONT = 0x080,
    GVIF_MARGIN = 0x100,
};

// Notification codes sent to the grid's owner by WM_NOTIFY (the list-view codes of the same
// meaning). Every one but GVN_GETDISPINFO and GVN_ODCACHEHINT carries an NM_GRIDVIEW2.
enum : int {
    GVN_SELCHANGING = -100,     // the selection is about to change
    GVN_SELCHANGED = -101,      // the selection has changed
    GVN_CLICK = -2,             // a left click, on button release
    GVN_DBLCLK = -3,            // a double click on a cell
    GVN_BEGINDRAG = -109,       // a drag of the selection begins
    GVN_ODCACHEHINT = -113,     // virtual mode: the range about to be read (GV2_CACHEHINT)
    GVN_BEGINLABELEDIT = -175,  // an edit is about to begin; a negative answer cancels it
    GVN_ENDLABELEDIT = -176,    // an edit has ended; a negative answer restores the old text
    GVN_GETDISPINFO = -177,     // virtual mode: fill in a cell (tagGV2_DISPINFO)
};

class KXUI_API KxUiCellID2 {
public:
    int row;
    int col;

    explicit KxUiCellID2(int nRow = -1, int nCol = -1) : row(nRow), col(nCol) {}
    // Both coordinates at least 0.
    BOOL IsValid() const { return row >= 0 && col >= 0; }
    bool operator==(const KxUiCellID2& other) const { return row == other.row && col == other.col; }
    bool operator!=(const KxUiCellID2& other) const { return !(*this == other); }
};

class KXUI_API KxUiCellRange2 {
public:
    explicit KxUiCellRange2(int nMinRow = -1, int nMinCol = -1, int nMaxRow = -1, int nMaxCol = -1)
        : m_nMinRow(nMinRow), m_nMinCol(nMinCol), m_nMaxRow(nMaxRow), m_nMaxCol(nMaxCol)
    {
    }
    void Set(int nMinRow = -1, int nMinCol = -1, int nMaxRow = -1, int nMaxCol = -1)
    {
        m_nMinRow = nMinRow;
        m_nMinCol = nMinCol;
        m_nMaxRow = nMaxRow;
        m_nMaxCol = nMaxCol;
    }
    // Non-negative corners in order.
    BOOL IsValid() const
    {
        return m_nMinRow >= 0 && m_nMinCol >= 0 && m_nMinRow <= m_nMaxRow && m_nMinCol <= m_nMaxCol;
    }
    BOOL InRange(int row, int col) const
    {
        return row >= m_nMinRow && row <= m_nMaxRow && col >= m_nMinCol && col <= m_nMaxCol;
    }
    BOOL InRange(const KxUiCellID2& cell) const { return InRange(cell.row, cell.col); }
    KxUiCellID2 GetTopLeft() const { return KxUiCellID2(m_nMinRow, m_nMinCol); }
    // The common part of two ranges; invalid when they do not meet.
    KxUiCellRange2 Intersect(const KxUiCellRange2& rhs) const;
    // Number of cells, 0 for an invalid range (64-bit: a virtual grid can be huge).
    LONGLONG Count() const;

    int GetMinRow() const { return m_nMinRow; }
    void SetMinRow(int n) { m_nMinRow = n; }
    int GetMinCol() const { return m_nMinCol; }
    void SetMinCol(int n) { m_nMinCol = n; }
    int GetMaxRow() const { return m_nMaxRow; }
    void SetMaxRow(int n) { m_nMaxRow = n; }
    int GetMaxCol() const { return m_nMaxCol; }
    void SetMaxCol(int n) { m_nMaxCol = n; }
    int GetRowSpan() const { return m_nMaxRow - m_nMinRow + 1; }
    int GetColSpan() const { return m_nMaxCol - m_nMinCol + 1; }

    bool operator==(const KxUiCellRange2& rhs) const
    {
        return m_nMinRow == rhs.m_nMinRow && m_nMinCol == rhs.m_nMinCol && m_nMaxRow == rhs.m_nMaxRow &&
               m_nMaxCol == rhs.m_nMaxCol;
    }
    bool operator!=(const KxUiCellRange2& rhs) const { return !(*this == rhs); }

protected:
    int m_nMinRow;
    int m_nMinCol;
    int m_nMaxRow;
    int m_nMaxCol;
};

// The item record of SetItem/GetItem and of the display-information record. Public layout.
struct _GV2_ITEM {
    int row;
    int col;
    UINT mask;
    UINT nState;
    DWORD nFormat;
    int iImage;
    COLORREF crBkClr;
    COLORREF crFgClr;
    LPARAM lParam;
    LOGFONTW lfFont;
    UINT nMargin;
    CString strText;
};
typedef _GV2_ITEM GV2_ITEM;

// A cell's content in virtual mode and in the edit notifications.
struct tagGV2_DISPINFO {
    NMHDR hdr;
    GV2_ITEM item;
};
typedef tagGV2_DISPINFO GV2_DISPINFO;

// The payload of every other notification: the cell concerned.
struct NM_GRIDVIEW2 {
    NMHDR hdr;
    int iRow;
    int iColumn;
};

// GVN_ODCACHEHINT: the range a virtual grid is about to read; an invalid range ends the hint.
struct GV2_CACHEHINT {
    NMHDR hdr;
    KxUiCellRange2 range;
};

// What Draw hands to DrawItem.
struct _GV2_DRAWCELL {
    CDC* pDC;
    KxUiGridDefaultCell2* pDefaultCell;
    KxUiGridCtrl2* pGrid;
    int nRow;
    int nCol;
    RECT rect;
    bool bSelected;
    bool bBkClr;       // crBk is not CLR_DEFAULT
    bool bHot;
    bool bHotFrame;
    bool bFocusFrame;
    COLORREF crText;
    COLORREF crBk;
};
typedef _GV2_DRAWCELL GV2_DRAWCELL;
