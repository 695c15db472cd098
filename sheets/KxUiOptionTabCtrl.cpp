// KxUiOptionTabCtrl: one tab per page, the change of tab asked of the sheet.
#include "KxUiOptionTabCtrl.h"
#include <algorithm>

IMPLEMENT_DYNAMIC(KxUiOptionTabCtrl, CTabCtrl)

BEGIN_MESSAGE_MAP(KxUiOptionTabCtrl, CTabCtrl)
    ON_NOTIFY_REFLECT(TCN_SELCHANGING, &KxUiOptionTabCtrl::OnSelectionChanging)
    ON_NOTIFY_REFLECT(TCN_SELCHANGE, &KxUiOptionTabCtrl::OnSelectionChange)
END_MESSAGE_MAP()

KxUiOptionTabCtrl::KxUiOptionTabCtrl() : m_pSheet(nullptr), m_pImageList(nullptr) {}

KxUiOptionTabCtrl::~KxUiOptionTabCtrl()
{
    if (GetSafeHwnd() != nullptr)
        DestroyWindow();
}

BOOL KxUiOptionTabCtrl::Create(KxUiOptionSheet* pSheet, UINT nID)
{
    if (pSheet == nullptr || pSheet->GetSafeHwnd() == nullptr)
        return FALSE;
    if (GetSafeHwnd() != nullptr)
        DestroyWindow();
    m_pSheet = pSheet;
    if (!CTabCtrl::Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS | TCS_TABS | TCS_SINGLELINE,
                          CRect(0, 0, 0, 0), pSheet, nID))
        return FALSE;
    m_images.DeleteImageList();
    m_images.Create(16, 16, ILC_COLOR32 | ILC_MASK, 4, 4);
    CTabCtrl::SetImageList(m_pImageList != nullptr ? m_pImageList : &m_images);
    return TRUE;
}

int KxUiOptionTabCtrl::ImageFor(int nIndex, KxUiOptionPage* pPage)
{
    if (m_pImageList != nullptr)
        return nIndex;
    if (m_images.GetSafeHandle() == nullptr)
        return -1;
    HICON hIcon = pPage->CreatePageIcon(16);
    if (hIcon == nullptr)
        return -1;
    const int image = m_images.Add(hIcon);
    ::DestroyIcon(hIcon);
    return image;
}

BOOL KxUiOptionTabCtrl::InsertPage(int nIndex, KxUiOptionPage* pPage)
{
    if (GetSafeHwnd() == nullptr || pPage == nullptr || FindPage(pPage) >= 0)
        return FALSE;
    nIndex = std::clamp(nIndex, 0, GetItemCount());
    CString title = pPage->GetTitle();
    TCITEMW item = {};
    item.mask = TCIF_TEXT | TCIF_PARAM | TCIF_IMAGE;
    item.pszText = const_cast<LPWSTR>(static_cast<LPCWSTR>(title));
    item.lParam = reinterpret_cast<LPARAM>(pPage);
    item.iImage = ImageFor(nIndex, pPage);
    return CTabCtrl::InsertItem(nIndex, &item) >= 0;
}

BOOL KxUiOptionTabCtrl::AddGroup(KxUiOptionPage* pGroup)
{
    return InsertPage(GetSafeHwnd() != nullptr ? GetItemCount() : 0, pGroup);
}

BOOL KxUiOptionTabCtrl::AddPage(KxUiOptionPage* pPage, KxUiOptionPage*)
{
    return InsertPage(GetSafeHwnd() != nullptr ? GetItemCount() : 0, pPage);
}

BOOL KxUiOptionTabCtrl::RemovePage(KxUiOptionPage* pPage)
{
    const int n = FindPage(pPage);
    if (n < 0)
        return FALSE;
    TCITEMW item = {};
    item.mask = TCIF_IMAGE;
    GetItem(n, &item);
    DeleteItem(n);
    // The control renumbers the other tabs' images.
    if (m_pImageList == nullptr && item.iImage >= 0)
        RemoveImage(item.iImage);
    return TRUE;
}

BOOL KxUiOptionTabCtrl::SetSelection(KxUiOptionPage* pPage)
{
    const int n = FindPage(pPage);
    if (n < 0)
        return FALSE;
    SetCurSel(n);
    return TRUE;
}

int KxUiOptionTabCtrl::FindPage(KxUiOptionPage* pPage) const
{
    if (GetSafeHwnd() == nullptr || pPage == nullptr)
        return -1;
    const int count = GetItemCount();
    for (int i = 0; i < count; ++i)
        if (GetItemPage(i) == pPage)
            return i;
    return -1;
}

KxUiOptionPage* KxUiOptionTabCtrl::GetSelection()
{
    return GetSafeHwnd() != nullptr ? GetItemPage(GetCurSel()) : nullptr;
}

void KxUiOptionTabCtrl::SetImageList(CImageList* pImageList)
{
    m_pImageList = pImageList;
    if (GetSafeHwnd() == nullptr)
        return;
    CTabCtrl::SetImageList(pImageList != nullptr ? pImageList : &m_images);
    // Tab i shows image i of the given list.
    if (pImageList != nullptr) {
        for (int i = 0; i < GetItemCount(); ++i) {
            TCITEMW item = {};
            item.mask = TCIF_IMAGE;
            item.iImage = i;
            SetItem(i, &item);
        }
    }
}

DWORD_PTR KxUiOptionTabCtrl::GetItemData(int nIndex) const
{
    if (GetSafeHwnd() == nullptr || nIndex < 0 || nIndex >= GetItemCount())
        return 0;
    TCITEMW item = {};
    item.mask = TCIF_PARAM;
    return GetItem(nIndex, &item) ? static_cast<DWORD_PTR>(item.lParam) : 0;
}

BOOL KxUiOptionTabCtrl::SetItemData(int nIndex, DWORD_PTR dwData)
{
    if (GetSafeHwnd() == nullptr || nIndex < 0 || nIndex >= GetItemCount())
        return FALSE;
    TCITEMW item = {};
    item.mask = TCIF_PARAM;
    item.lParam = static_cast<LPARAM>(dwData);
    return SetItem(nIndex, &item);
}

KxUiOptionPage* KxUiOptionTabCtrl::GetItemPage(int nIndex) const
{
    return reinterpret_cast<KxUiOptionPage*>(GetItemData(nIndex));
}

KxUiOptionPage* KxUiOptionTabCtrl::GetItemGroup(int nIndex) const
{
    KxUiOptionPage* pPage = GetItemPage(nIndex);
    if (pPage == nullptr || m_pSheet == nullptr)
        return nullptr;
    return m_pSheet->GetPageGroup(m_pSheet->GetPageIndex(pPage));
}

void KxUiOptionTabCtrl::OnSelectionChanging(NMHDR* pNMHDR, LRESULT* pResult)
{
    *pResult = FALSE;
    if (m_pSheet != nullptr)
        m_pSheet->ListSelectionChanging(pNMHDR, pResult);
}

void KxUiOptionTabCtrl::OnSelectionChange(NMHDR* pNMHDR, LRESULT* pResult)
{
    *pResult = 0;
    if (m_pSheet != nullptr)
        m_pSheet->ListSelectionChanged(pNMHDR, pResult);
}
