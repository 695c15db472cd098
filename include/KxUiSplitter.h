// KxUiSplitter: a thin static control between two panes of a dialog that the user drags to share the
// space between them.
//
// The splitter does not move the panes itself: it keeps its position as a fraction constraint in the
// container's KxUiLayoutManager and ties the panes' inner sides to its own sides, so the layout
// manager places all three. The bar is 6 pixels thick. Its position can be kept in the profile with
// KxUiSplitterPositionArchive; a restored position is used once, at the next attach.
//
//     m_splitter.SubclassDlgItem(IDC_SPLITTER, this);
//     m_layout.Attach(this);
//     ... constraints of the panes' outer sides ...
//     m_splitter.attachHorz(&m_layout, IDC_LEFT_PANE, IDC_RIGHT_PANE);
//     m_layout.RedrawLayout();
#pragma once
#include "KxUiDef.h"
#include <afxwin.h>

class KxUiLayoutManager;

class KXUI_API KxUiSplitter : public CStatic {
    DECLARE_DYNCREATE(KxUiSplitter)
public:
    enum { barThickness = 6 };
    enum : UINT { noPane = 0xFFFFFFFF };

    KxUiSplitter();

    // Bar between a left and a right pane (moves left and right).
    bool attachHorz(KxUiLayoutManager* pManager, UINT nFirstPane, UINT nSecondPane);
    // Bar between an upper and a lower pane; lays out once before and once after attaching.
    bool attachVert(KxUiLayoutManager* pManager, UINT nFirstPane, UINT nSecondPane);
    // Removes the constraints the attach set and forgets the manager and the panes.
    void detachConstraint();
    // The position in percent of the container's width (horizontal) or height (vertical).
    int getCurrentPercent() const { return m_nPercent; }

    bool isHorizontal() const { return m_bHorz; }
    bool isAttached() const { return m_pLayoutManager != nullptr; }
    UINT getFirstPane() const { return m_nFirstPane; }
    UINT getSecondPane() const { return m_nSecondPane; }

protected:
    friend class KxUiSplitterPositionArchive;
    // Stores a position to be used at the next attach instead of the measured one.
    void setCurrentPercent(int nPercent);
    bool init(KxUiLayoutManager* pManager, UINT nFirstPane, UINT nSecondPane, bool bHorizontal);
    // attachHorz and attachVert: the constraints of the bar and the panes for one orientation.
    bool attach(KxUiLayoutManager* pManager, UINT nFirstPane, UINT nSecondPane, bool bHorizontal);
    // The position for a point in the splitter's client coordinates, kept at least one bar width
    // inside the panes' outer edges; a position set from outside is returned once instead.
    int getPercent(CPoint point);
    // Makes the bar barThickness pixels thick.
    void resizeSplitterWhenAttach();

    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnLButtonUp(UINT nFlags, CPoint point);
    afx_msg BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    afx_msg void OnCaptureChanged(CWnd* pWnd);
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnDestroy();
    DECLARE_MESSAGE_MAP()

    bool m_bHorz;
    UINT m_nFirstPane;
    UINT m_nSecondPane;
    KxUiLayoutManager* m_pLayoutManager;
    int m_nPercent;
    bool m_bPercentSet;
};
