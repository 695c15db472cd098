// A window that shows a bitmap menu outside the system's menu loop, for customising menus.
//
// Model: the window lays the menu's items out top to bottom with the menu's own MeasureItem
// and paints each with the menu's DrawItem, so it looks like the real popup. In customisation
// mode a click selects an item (the menu's customised item), a drag moves it (the insert mark
// shows where it lands), and the right button opens the menu's customisation context menu,
// whose commands come back here and go to the menu's OnCustBM... handlers. Out of
// customisation mode a click chooses the command: WM_COMMAND goes to the owner and the window
// hides.
//
//     KxUiBitmapMenuPopupWnd popup;
//     popup.TrackPopupMenu(&bitmapMenu, TPM_LEFTALIGN, pt.x, pt.y, pFrame);
//     ...
//     popup.ResetPopupMenu();                      // hides it and lets the menu go
//
// With KXUI_TPM_CHILDWINDOW the window is created as a child of the owner at (x, y) in its
// client coordinates instead (a menu shown on a page or in a picture).
//
// Overridables: TrackPopupMenu, ResetPopupMenu, OnMenuChanged, CalcLayout, UpdateMenuMetrics.
#pragma once
#include "KxUiBitmapMenu.h"

#define KXUI_TPM_CHILDWINDOW 0x40000000

class KXUI_API KxUiBitmapMenuPopupWnd : public CWnd {
    DECLARE_DYNAMIC(KxUiBitmapMenuPopupWnd)
public:
    KxUiBitmapMenuPopupWnd();
    virtual ~KxUiBitmapMenuPopupWnd();

    // Shows pMenu at the screen point (x, y) aligned by the TPM_ flags; the window stays
    // until ResetPopupMenu. FALSE for a menu without handle or when the window cannot be made.
    virtual BOOL TrackPopupMenu(KxUiBitmapMenu* pMenu, UINT nFlags, int x, int y, CWnd* pWnd);
    // Hides the window and forgets the menu.
    virtual void ResetPopupMenu();
    KxUiBitmapMenu* GetBitmapMenu() const { return m_pBitmapMenu; }
    // The menu's items changed (customisation): measures, lays out and repaints again.
    virtual void OnMenuChanged();
    void RedrawItem(int nIndex);
    // Rectangle of item nIndex in client coordinates (empty outside the menu).
    CRect GetItemRect(int nIndex) const;
    // The item under a client point, or -1; *pbBefore as the menu's HitTest gives it.
    int ItemFromPoint(CPoint point, int* pbBefore = NULL) const;
    // The highlighted item, or -1.
    int GetHotItem() const { return m_nHotItem; }
    // Width of the frame drawn around the items.
    static const int m_nBorder = 3;

protected:
    // Measures the items and places the window for the TPM_ flags at (x, y).
    virtual BOOL CalcLayout(UINT nFlags, int x, int y);
    // The menu's extents again (after a setting change).
    virtual void UpdateMenuMetrics();

    afx_msg void OnPaint();
    afx_msg BOOL OnEraseBkgnd(CDC* pDC);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnRButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnRButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg int OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message);
    afx_msg void OnSettingChange(UINT uFlags, LPCTSTR lpszSection);
    afx_msg void OnTimer(UINT_PTR nIDEvent);
    afx_msg void OnCaptureChanged(CWnd* pWnd);
    afx_msg LRESULT OnCommandChosen(WPARAM wParam, LPARAM lParam);
    afx_msg void OnCustBMDelete();
    afx_msg void OnCustBMAppearance();
    afx_msg void OnCustBMSeparatorBefore();
    afx_msg void OnCustBMSeparatorAfter();
    afx_msg void OnCustBMRecentlyUsed();
    DECLARE_MESSAGE_MAP()

    // Moves the dragged item to the insert mark.
    void DropDraggedItem();
    void SetHotItem(int nIndex);

    KxUiBitmapMenu* m_pBitmapMenu;       // not owned
    HWND m_hWndOwner;                    // receives the chosen command
    CArray<CRect, const CRect&> m_arrItemRects;
    int m_nHotItem;
    BOOL m_bDragging;
    CPoint m_ptDragStart;
    BOOL m_bChild;
};
