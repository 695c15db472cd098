// KxUiOptionListBox: an option sheet's page chooser as an owner-drawn list with icons.
//
// One entry per page or group, in the sheet's order; a group's pages are indented under it and groups are
// written in bold. Each entry shows the page's icon (GetIconID from GetIconResourceHandle, or image i of
// an image list given with SetImageList) and its title. The entry under the mouse is highlighted; the
// icon goes left of the text (16 x 16), above it (32 x 32, centred) or nowhere (setIconPlacement).
// Choosing an entry (mouse or keyboard) asks the sheet: the active page may refuse to be left, and the
// selection then goes back to it.
//
//     KxUiOptionListBox list;
//     list.setIconPlacement(KxUiOptionListBox::iconTop);
//     sheet.SetListControl(&list);       // created by the sheet, left of the pages
#pragma once
#include "KxUiOptionSheet.h"
#include "KxArrayPtrDelete.h"

class KXUI_API KxUiOptionListBox : public CListBox, public KxUiOptionSheet::COptionList {
    DECLARE_DYNAMIC(KxUiOptionListBox)
public:
    enum : UINT { iconLeft = 0, iconTop = 1, iconNone = 2 };

    KxUiOptionListBox();
    ~KxUiOptionListBox() override;

    // ---- the chooser (COptionList) ----
    using CListBox::Create;
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

    // ---- entries ----
    KxUiOptionPage* GetItemPage(int nIndex) const;
    // The entry's group page, NULL for a top-level page or a group.
    KxUiOptionPage* GetItemGroup(int nIndex) const;
    BOOL IsItemGroup(int nIndex) const;

    // ---- look ----
    void setIconPlacement(UINT nPlacement);
    UINT getIconPlacement() const { return m_nIconPlacement; }
    // The hot entry (under the mouse): -1 for none.
    void highLightItem(int nIndex);
    void unHighLightItem(int nIndex);
    void unHighLightAllItems();
    int getHighLightItem() const { return m_nHot; }
    // Background of the hot entry: a quarter of the selection colour over the window colour.
    static COLORREF hotColor();
    // Pixels the pages of a group are indented by.
    int getIndent() const { return m_nIndent; }

    // ---- overridables ----
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;
    void MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct) override;

protected:
    struct Item {
        ~Item();
        KxUiOptionPage* m_pPage;
        KxUiOptionPage* m_pGroup;
        BOOL m_bGroup;
        HICON m_hIcon;   // owned, loaded at m_nIconSize on first drawing
        int m_nIconSize;
    };
    Item* GetItem(int nIndex) const;
    BOOL InsertItem(int nIndex, KxUiOptionPage* pPage, KxUiOptionPage* pGroup, BOOL bGroup);
    // Item height for the font and the icon placement.
    int CalcItemHeight();
    void InvalidateItem(int nIndex);

    afx_msg void OnMouseMove(UINT nFlags, CPoint point);
    afx_msg void OnMouseLeave();
    afx_msg BOOL OnSelChange();
    afx_msg LRESULT OnSetFont(WPARAM wParam, LPARAM lParam);

    KxUiOptionSheet* m_pSheet;
    KxArrayPtrDelete<CArray<Item*, Item*>> m_items;   // owned, one per entry
    UINT m_nIconPlacement;
    int m_nHot;
    int m_nIndent;
    bool m_bTracking;          // a mouse-leave notice is asked for
    CImageList* m_pImageList;  // not owned
    CFont m_fontGroup;         // bold for groups

    DECLARE_MESSAGE_MAP()
};
