// KxUiSimpleOptionSheet: an option sheet that owns both choosers and picks one by number.
//
//     KxUiSimpleOptionSheet sheet(L"Options", this);
//     sheet.setOptionListType(KxUiSimpleOptionSheet::listBox);
//     sheet.setIconPlacement_List(KxUiOptionListBox::iconTop);
//     sheet.setIsResizable(true);
//     sheet.AddPage(&general);
//     sheet.DoModal();
#pragma once
#include "KxUiOptionListBox.h"
#include "KxUiOptionTabCtrl.h"

class KXUI_API KxUiSimpleOptionSheet : public KxUiOptionSheet {
    DECLARE_DYNAMIC(KxUiSimpleOptionSheet)
public:
    enum : UINT { noList = 0, listBox = 1, tabCtrl = 2 };

    KxUiSimpleOptionSheet();
    explicit KxUiSimpleOptionSheet(LPCTSTR lpszTitle, CWnd* pParent = NULL, UINT nSelectPage = 0);
    explicit KxUiSimpleOptionSheet(UINT nIDTitle, CWnd* pParent = NULL, UINT nSelectPage = 0);
    ~KxUiSimpleOptionSheet() override;

    // 0: no chooser; 1: the list box; 2: the tabs (with a 26-pixel tab strip); anything else changes
    // nothing. Choose before the sheet is created.
    void setOptionListType(UINT nType);
    UINT getOptionListType() const { return m_nListType; }
    // A resizable sheet has a sizing border; the layout keeps chooser, page and buttons in place.
    void setIsResizable(bool bResizable);
    bool getIsResizable() const { return (m_dwStyle & WS_THICKFRAME) != 0; }
    // Passed to the list box (KxUiOptionListBox::iconLeft, iconTop, iconNone).
    void setIconPlacement_List(UINT nPlacement) { m_listBox.setIconPlacement(nPlacement); }
    KxUiOptionListBox& GetListBox() { return m_listBox; }
    KxUiOptionTabCtrl& GetTabCtrl() { return m_tabCtrl; }

    // The base texts.
    CString getButtonText(UINT nID) override;

protected:
    KxUiOptionListBox m_listBox;
    KxUiOptionTabCtrl m_tabCtrl;
    UINT m_nListType;
};
