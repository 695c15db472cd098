// Control bars: CControlBar and CStatusBar on the platform's status control.
#pragma once
#include "afxwin.h"

// Control-bar styles (kept in CControlBar::m_dwStyle, not in the window style).
#define CBRS_ALIGN_LEFT 0x1000L
#define CBRS_ALIGN_TOP 0x2000L
#define CBRS_ALIGN_RIGHT 0x4000L
#define CBRS_ALIGN_BOTTOM 0x8000L
#define CBRS_ALIGN_ANY 0xF000L
#define CBRS_BORDER_LEFT 0x0100L
#define CBRS_BORDER_TOP 0x0200L
#define CBRS_BORDER_RIGHT 0x0400L
#define CBRS_BORDER_BOTTOM 0x0800L
#define CBRS_BORDER_ANY 0x0F00L
#define CBRS_TOOLTIPS 0x0010L
#define CBRS_FLYBY 0x0020L
#define CBRS_BORDER_3D 0x0080L
#define CBRS_SIZE_FIXED 0x0002L
#define CBRS_SIZE_DYNAMIC 0x0004L
#define CBRS_FLOATING 0x0001L
#define CBRS_ORIENT_HORZ (CBRS_ALIGN_TOP | CBRS_ALIGN_BOTTOM)
#define CBRS_ORIENT_VERT (CBRS_ALIGN_LEFT | CBRS_ALIGN_RIGHT)
#define CBRS_ORIENT_ANY (CBRS_ORIENT_HORZ | CBRS_ORIENT_VERT)
#define CBRS_ALL 0x0040FFFFL
#define CBRS_NOALIGN 0x00000000L
#define CBRS_LEFT (CBRS_ALIGN_LEFT | CBRS_BORDER_RIGHT)
#define CBRS_TOP (CBRS_ALIGN_TOP | CBRS_BORDER_BOTTOM)
#define CBRS_RIGHT (CBRS_ALIGN_RIGHT | CBRS_BORDER_LEFT)
#define CBRS_BOTTOM (CBRS_ALIGN_BOTTOM | CBRS_BORDER_TOP)

// Status-bar pane styles.
#define SBPS_NORMAL 0x0000
#define SBPS_NOBORDERS SBT_NOBORDERS
#define SBPS_POPOUT SBT_POPOUT
#define SBPS_OWNERDRAW SBT_OWNERDRAW
#define SBPS_DISABLED 0x04000000
#define SBPS_STRETCH 0x08000000

// A bar docked along a side of its frame, placed by the frame's RecalcLayout.
class KXAFX_API CControlBar : public CWnd {
    DECLARE_DYNAMIC(CControlBar)
protected:
    CControlBar();

public:
    virtual ~CControlBar();

    // The size the bar wants: full length along its side, its own thickness across.
    virtual CSize CalcFixedLayout(BOOL bStretch, BOOL bHorz);
    // Updates the bar's items through the target's CCmdUI handlers.
    virtual void OnUpdateCmdUI(CFrameWnd* pTarget, BOOL bDisableIfNoHndler) = 0;
    DWORD GetBarStyle() const { return m_dwStyle; }
    void SetBarStyle(DWORD dwStyle) { m_dwStyle = dwStyle; }
    int GetCount() const { return m_nCount; }

    int m_cxLeftBorder, m_cxRightBorder;
    int m_cyTopBorder, m_cyBottomBorder;
    DWORD m_dwStyle;     // CBRS_ styles

protected:
    int m_nCount;        // number of items
    void* m_pData;       // item records of the derived bar

    virtual void PostNcDestroy();
    afx_msg LRESULT OnSizeParent(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnIdleUpdateCmdUI(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()
};

// What CStatusBar keeps for each pane.
struct AFX_STATUSPANE {
    UINT nID;        // indicator command id, ID_SEPARATOR for a plain pane
    UINT nStyle;     // SBPS_ styles
    int cxText;      // width of the text area
    CString strText; // text (kept even while the pane is disabled)
};

class KXAFX_API CStatusBar : public CControlBar {
    DECLARE_DYNAMIC(CStatusBar)
public:
    CStatusBar();
    virtual ~CStatusBar();

    virtual BOOL Create(CWnd* pParentWnd, DWORD dwStyle = WS_CHILD | WS_VISIBLE | CBRS_BOTTOM,
                        UINT nID = AFX_IDW_STATUS_BAR);
    // dwCtrlStyle: SBARS_ styles; a frame that can be resized gets a size grip anyway.
    virtual BOOL CreateEx(CWnd* pParentWnd, DWORD dwCtrlStyle = 0,
                          DWORD dwStyle = WS_CHILD | WS_VISIBLE | CBRS_BOTTOM, UINT nID = AFX_IDW_STATUS_BAR);
    // One pane per id: an indicator's text is its string resource, ID_SEPARATOR is a plain
    // pane a quarter of the screen wide; the first pane stretches.
    BOOL SetIndicators(const UINT* lpIDArray, int nIDCount);

    int CommandToIndex(UINT nIDFind) const;
    UINT GetItemID(int nIndex) const;
    void GetItemRect(int nIndex, LPRECT lpRect) const;
    void GetPaneInfo(int nIndex, UINT& nID, UINT& nStyle, int& cxWidth) const;
    void SetPaneInfo(int nIndex, UINT nID, UINT nStyle, int cxWidth);
    UINT GetPaneStyle(int nIndex) const;
    void SetPaneStyle(int nIndex, UINT nStyle);
    CString GetPaneText(int nIndex) const;
    void GetPaneText(int nIndex, CString& rString) const;
    BOOL SetPaneText(int nIndex, LPCTSTR lpszNewText, BOOL bUpdate = TRUE);

    virtual CSize CalcFixedLayout(BOOL bStretch, BOOL bHorz);
    virtual void OnUpdateCmdUI(CFrameWnd* pTarget, BOOL bDisableIfNoHndler);

protected:
    AFX_STATUSPANE* GetPanePtr(int nIndex) const;
    BOOL AllocElements(int nElements);
    // Sends the pane widths (bUpdateRects) and texts (bUpdateText) to the control.
    void UpdateAllPanes(BOOL bUpdateRects, BOOL bUpdateText);
    int GetTextHeight() const;

    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg LRESULT OnSetText(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnGetText(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnGetTextLength(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()
};
