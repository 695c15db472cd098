// The gallery's main window: a page list on the left, the chosen page on the right, a menu
// and a status bar.
#pragma once
#include <afxwin.h>
#include <afxext.h>
#include <memory>
#include <vector>
#include "KxUiLayoutManagerWndBinary.h"

class CGalleryPage;

class CGalleryFrame : public CFrameWnd {
    DECLARE_DYNAMIC(CGalleryFrame)
public:
    CGalleryFrame();
    ~CGalleryFrame() override;

    // Creates the window with its menu; restores its placement from the profile unless
    // bRestore is false (snapshots use a fixed size).
    BOOL CreateGallery(const CRect& rect, bool bRestore);

    int GetPageCount() const;
    int GetCurrentPage() const { return m_nCurrent; }
    CGalleryPage* GetPage() const;
    // Shows page nIndex in place of the current one, creating it on first use; pages stay alive
    // (hidden) while the program runs, so what the user typed or chose is still there when they
    // come back. False for an index outside the list.
    bool ShowPage(int nIndex);

    // The smallest window the pages are laid out for: nothing clips or overlaps down to it.
    static const CSize kMinSize;

protected:
    void RecalcLayout(BOOL bNotify = TRUE) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;

    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnDestroy();
    afx_msg void OnSelectPage();
    afx_msg void OnNextPage();
    afx_msg void OnPrevPage();
    afx_msg void OnUpdateNextPage(CCmdUI* pCmdUI);
    afx_msg void OnUpdatePrevPage(CCmdUI* pCmdUI);
    afx_msg void OnAbout();
    afx_msg void OnGetMinMaxInfo(MINMAXINFO* lpMMI);
    afx_msg void OnExit();
    afx_msg LRESULT OnSetMessageString(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()

private:
    CRect PageRect() const;

    CStatusBar m_status;
    CListBox m_list;
    std::vector<std::unique_ptr<CGalleryPage>> m_pages;  // created on first show, in list order
    int m_nCurrent;
    bool m_bRestore;
    KxUiLayoutManagerWndBinary m_persist;  // keeps the frame's placement in the profile
};
