// KxUiXHeaderCtrl and KxUiSortHeaderCtrl: the owner-drawn headers of the extended lists.
//
// KxUiXHeaderCtrl makes every item of the header it is attached to owner-drawn (items inserted or
// changed later included) and paints them itself: a button face, the item's image (from the
// header's image list, or, without one, a check box for image index 1 unchecked / 2 checked: the
// list uses it as a header check), then the text. While the left button is down, each mouse move
// posts WM_RESIZE_COLUMN_XLISTCTRL to the parent, so that dragging a divider closes the list's
// editor.
//
// KxUiSortHeaderCtrl remembers a sort direction per column and marks the sort column with a
// triangle at the right end of its item (apex up: ascending), narrowing the text so that the
// triangle never covers it.
//
//     KxUiSortHeaderCtrl header;
//     header.SubclassWindow(list.GetHeaderCtrl()->GetSafeHwnd());
//     bool ascending = header.getSortAscending(2);    // true the first time
//     header.setSortArrow(2, !ascending);
//
// Overridables, in order: DrawItem(CDC*, ...), DrawTextW, DrawBackground, DrawImage.
#pragma once
#include "KxUiDef.h"
#include <afxcmn.h>

class KXUI_API KxUiXHeaderCtrl : public CHeaderCtrl {
    DECLARE_DYNAMIC(KxUiXHeaderCtrl)
public:
    KxUiXHeaderCtrl();
    ~KxUiXHeaderCtrl() override;

    // Paints item nItem into rect (the whole item); bPressed while the user presses it.
    virtual void DrawItem(CDC* pDC, int nItem, CRect rect, bool bPressed);
    // Draws the item's text into rect; returns the drawn width in pixels (0 when none).
    virtual int DrawTextW(CDC* pDC, int nItem, CRect rect, HDITEM& item);
    // Fills the item's face and edge.
    virtual void DrawBackground(CDC* pDC, const CRect& rect, bool bPressed);
    // Draws the item's image at the left of rect and moves rect.left past it.
    virtual void DrawImage(CDC* pDC, CRect& rect, HDITEM& item);

    // Space in pixels kept left of a cell image by the list (default 2).
    int getMargin() const { return m_nMargin; }
    void setMargin(int nMargin) { m_nMargin = nMargin; }

    // Unpacks the owner-draw request and calls DrawItem(CDC*, ...).
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

protected:
    void PreSubclassWindow() override;
    // Adds HDF_OWNERDRAW to the format of every item.
    void makeOwnerDraw();

    afx_msg LRESULT OnInsertItem(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnSetItem(WPARAM wParam, LPARAM lParam);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    DECLARE_MESSAGE_MAP()

    int m_nMargin;
};

class KXUI_API KxUiSortHeaderCtrl : public KxUiXHeaderCtrl {
    DECLARE_DYNAMIC(KxUiSortHeaderCtrl)
public:
    KxUiSortHeaderCtrl();
    ~KxUiSortHeaderCtrl() override;

    // Shows the arrow on nColumn (-1: none); a real column's direction is remembered.
    void setSortArrow(int nColumn, bool bAscending);
    // The remembered direction; a column never seen is remembered as ascending.
    bool getSortAscending(int nColumn);
    // The column showing the arrow, -1 for none.
    int getSortColumn() const { return m_nSortColumn; }

    // The base item, then the arrow on the sort column.
    void DrawItem(CDC* pDC, int nItem, CRect rect, bool bPressed) override;
    // Centred text, narrowed by a square of the item's height on the sort column.
    int DrawTextW(CDC* pDC, int nItem, CRect rect, HDITEM& item) override;
    using KxUiXHeaderCtrl::DrawItem;

    // The arrow's corners for an item rectangle: apex, then the two ends of the base.
    static void getArrowPoints(const CRect& rect, bool bAscending, POINT pts[3]);

protected:
    CMap<int, int, bool, bool> m_directions;  // true = ascending
    int m_nSortColumn;                        // -1: no arrow
};
