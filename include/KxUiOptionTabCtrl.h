// KxUiOptionTabCtrl: an option sheet's page chooser as a tab control.
//
// One tab per page or group, in the sheet's order; a tab's item data is its page. The pages' icons are
// shown on the tabs (16 x 16, from an image list of the control's own, or image i of a list given with
// SetImageList). Changing tabs asks the sheet first: the active page may refuse to be left.
//
//     KxUiOptionTabCtrl tabs;
//     sheet.SetListControl(&tabs);       // created by the sheet; the pages lie inside it
#pragma once
#include "KxUiOptionSheet.h"
#include <afxcmn.h>

class KXUI_API KxUiOptionTabCtrl : public CTabCtrl, public KxUiOptionSheet::COptionList {
    DECLARE_DYNAMIC(KxUiOptionTabCtrl)
public:
    KxUiOptionTabCtrl();
    ~KxUiOptionTabCtrl() override;

    // ---- the chooser (COptionList) ----
    using CTabCtrl::Create;
    BOOL Create(KxUiOptionSheet* pSheet, UINT nID) override;
    BOOL AddGroup(KxUiOptionPage* pGroup) override;
    BOOL AddPage(KxUiOptionPage* pPage, KxUiOptionPage* pGroup) override;
    BOOL InsertPage(int nIndex, KxUiOptionPage* pPage) override;
    BOOL RemovePage(KxUiOptionPage* pPage) override;
    BOOL SetSelection(KxUiOptionPage* pPage) override;
    int FindPage(KxUiOptionPage* pPage) const override;
    KxUiOptionPage* GetSelection() override;
    CWnd* GetControlWnd() override { return this; }
    void SetImageList(CImageList* pImageList) override;

    // ---- tabs ----
    // The tab's application data (its page); 0 for an index out of range.
    DWORD_PTR GetItemData(int nIndex) const;
    BOOL SetItemData(int nIndex, DWORD_PTR dwData);
    KxUiOptionPage* GetItemPage(int nIndex) const;
    KxUiOptionPage* GetItemGroup(int nIndex) const;

protected:
    // The tab's image: image nIndex of the given list, or the page's icon added to the own list.
    int ImageFor(int nIndex, KxUiOptionPage* pPage);

    afx_msg void OnSelectionChanging(NMHDR* pNMHDR, LRESULT* pResult);
    afx_msg void OnSelectionChange(NMHDR* pNMHDR, LRESULT* pResult);

    KxUiOptionSheet* m_pSheet;
    CImageList m_images;       // the pages' icons
    CImageList* m_pImageList;  // given by the application, not owned

    DECLARE_MESSAGE_MAP()
};
