// KxUiXListBox: the drop-down list of a combo cell of the extended list.
//
// Created by the list over the cell; it fits itself below the cell's top edge, as wide as the
// cell and as tall as its entries (at most the cell's line count), moving up when the list's
// client area ends before it. A click on an entry or Return commits (XM_VK_RETURN to the list,
// wParam VK_RETURN, lParam 1), Escape cancels (XM_VK_ESCAPE), losing the focus to another window
// commits (wParam 0).
//
//     KxUiXListBox* pBox = list.createListBox(row, col, rect);   // the list owns it
//     pBox->setItems(items);
//     pBox->fitToCell(rect, 8);
#pragma once
#include "KxUiDef.h"
#include <afxcoll.h>
#include <afxwin.h>

class KXUI_API KxUiXListBox : public CListBox {
    DECLARE_DYNAMIC(KxUiXListBox)
public:
    KxUiXListBox();
    ~KxUiXListBox() override;

    // Replaces the entries.
    void setItems(const CStringArray& items);
    // Places and sizes the box for a cell (rectangle in the parent's client coordinates) showing
    // at most nLines entries (at least one).
    void fitToCell(const CRect& rcCell, int nLines);
    // Selects the entry equal to strText, or the first; returns the index selected (-1: empty).
    int selectText(const CString& strText);

protected:
    // Posts to the parent list.
    void notifyList(UINT nMessage, WPARAM wParam, LPARAM lParam);

    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg void OnKillFocus(CWnd* pNewWnd);
    afx_msg UINT OnGetDlgCode();
    DECLARE_MESSAGE_MAP()
};
