// KxUiOptionListBox: owner-drawn entries with icons, hot tracking, and selection through the sheet.
#include "KxUiOptionListBox.h"
#include <afxcmn.h>
#include <algorithm>

IMPLEMENT_DYNAMIC(KxUiOptionListBox, CListBox)

BEGIN_MESSAGE_MAP(KxUiOptionListBox, CListBox)
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSELEAVE()
    ON_CONTROL_REFLECT_EX(LBN_SELCHANGE, &KxUiOptionListBox::OnSelChange)
    ON_MESSAGE(WM_SETFONT, &KxUiOptionListBox::OnSetFont)
END_MESSAGE_MAP()

KxUiOptionListBox::Item::~Item()
{
    if (m_hIcon != nullptr)
        ::DestroyIcon(m_hIcon);
}

KxUiOptionListBox::KxUiOptionListBox()
    : m_pSheet(nullptr), m_nIconPlacement(iconLeft), m_nHot(-1), m_nIndent(16), m_bTracking(false),
      m_pImageList(nullptr)
{
}

KxUiOptionListBox::~KxUiOptionListBox()
{
    if (GetSafeHwnd() != nullptr)
        DestroyWindow();
}

BOOL KxUiOptionListBox::Create(KxUiOptionSheet* pSheet, UINT nID)
{
    if (pSheet == nullptr || pSheet->GetSafeHwnd() == nullptr)
        return FALSE;
    if (GetSafeHwnd() != nullptr)
        DestroyWindow();
    m_items.RemoveAll();
    m_nHot = -1;
    m_pSheet = pSheet;
    const DWORD style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_OWNERDRAWFIXED |
                        LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT;
    if (!CreateEx(WS_EX_CLIENTEDGE, L"LISTBOX", nullptr, style, CRect(0, 0, 0, 0), pSheet, nID))
        return FALSE;
    SetItemHeight(0, static_cast<UINT>(CalcItemHeight()));
    return TRUE;
}

KxUiOptionListBox::Item* KxUiOptionListBox::GetItem(int nIndex) const
{
    return nIndex >= 0 && nIndex < m_items.GetSize() ? m_items[nIndex] : nullptr;
}

KxUiOptionPage* KxUiOptionListBox::GetItemPage(int nIndex) const
{
    const Item* pItem = GetItem(nIndex);
    return pItem != nullptr ? pItem->m_pPage : nullptr;
}

KxUiOptionPage* KxUiOptionListBox::GetItemGroup(int nIndex) const
{
    const Item* pItem = GetItem(nIndex);
    return pItem != nullptr ? pItem->m_pGroup : nullptr;
}

BOOL KxUiOptionListBox::IsItemGroup(int nIndex) const
{
    const Item* pItem = GetItem(nIndex);
    return pItem != nullptr && pItem->m_bGroup;
}

BOOL KxUiOptionListBox::InsertItem(int nIndex, KxUiOptionPage* pPage, KxUiOptionPage* pGroup, BOOL bGroup)
{
    if (GetSafeHwnd() == nullptr || pPage == nullptr || FindPage(pPage) >= 0)
        return FALSE;
    nIndex = std::clamp(nIndex, 0, static_cast<int>(m_items.GetSize()));
    const int at = InsertString(nIndex, pPage->GetTitle());
    if (at < 0)
        return FALSE;
    m_items.InsertAt(at, new Item{pPage, pGroup, bGroup, nullptr, 0});
    if (m_nHot >= at)
        ++m_nHot;
    return TRUE;
}

BOOL KxUiOptionListBox::AddGroup(KxUiOptionPage* pGroup)
{
    return InsertItem(static_cast<int>(m_items.GetSize()), pGroup, nullptr, TRUE);
}

BOOL KxUiOptionListBox::AddPage(KxUiOptionPage* pPage, KxUiOptionPage* pGroup)
{
    return InsertItem(static_cast<int>(m_items.GetSize()), pPage, pGroup, FALSE);
}

BOOL KxUiOptionListBox::InsertPage(int nIndex, KxUiOptionPage* pPage)
{
    KxUiOptionPage* pGroup = nullptr;
    BOOL bGroup = FALSE;
    if (m_pSheet != nullptr) {
        const int n = m_pSheet->GetPageIndex(pPage);
        pGroup = m_pSheet->GetPageGroup(n);
        bGroup = m_pSheet->IsGroup(n);
    }
    return InsertItem(nIndex, pPage, pGroup, bGroup);
}

BOOL KxUiOptionListBox::RemovePage(KxUiOptionPage* pPage)
{
    const int n = FindPage(pPage);
    if (n < 0)
        return FALSE;
    DeleteString(static_cast<UINT>(n));
    m_items.RemoveAt(n);
    // The group's pages stay, no longer indented.
    for (INT_PTR i = 0; i < m_items.GetSize(); ++i)
        if (m_items[i]->m_pGroup == pPage)
            m_items[i]->m_pGroup = nullptr;
    if (m_nHot == n)
        m_nHot = -1;
    else if (m_nHot > n)
        --m_nHot;
    Invalidate();
    return TRUE;
}

BOOL KxUiOptionListBox::SetSelection(KxUiOptionPage* pPage)
{
    const int n = FindPage(pPage);
    if (n < 0 || GetSafeHwnd() == nullptr)
        return FALSE;
    SetCurSel(n);
    return TRUE;
}

int KxUiOptionListBox::FindPage(KxUiOptionPage* pPage) const
{
    for (INT_PTR i = 0; i < m_items.GetSize(); ++i)
        if (m_items[i]->m_pPage == pPage)
            return static_cast<int>(i);
    return -1;
}

KxUiOptionPage* KxUiOptionListBox::GetSelection()
{
    return GetSafeHwnd() != nullptr ? GetItemPage(GetCurSel()) : nullptr;
}

void KxUiOptionListBox::SetImageList(CImageList* pImageList)
{
    m_pImageList = pImageList;
    if (GetSafeHwnd() != nullptr)
        Invalidate();
}

void KxUiOptionListBox::setIconPlacement(UINT nPlacement)
{
    if (nPlacement > iconNone)
        return;
    m_nIconPlacement = nPlacement;
    if (GetSafeHwnd() != nullptr) {
        SetItemHeight(0, static_cast<UINT>(CalcItemHeight()));
        Invalidate();
    }
}

int KxUiOptionListBox::CalcItemHeight()
{
    int textHeight = 13;
    if (GetSafeHwnd() != nullptr) {
        CClientDC dc(this);
        CFont* pFont = GetFont();
        CFont* pOld = pFont != nullptr ? dc.SelectObject(pFont) : nullptr;
        TEXTMETRIC tm = {};
        dc.GetTextMetrics(&tm);
        if (pOld != nullptr)
            dc.SelectObject(pOld);
        textHeight = tm.tmHeight;
    }
    switch (m_nIconPlacement) {
    case iconTop: return 4 + 32 + 2 + textHeight + 6;
    case iconNone: return textHeight + 8;
    default: return std::max(16, textHeight) + 8;
    }
}

LRESULT KxUiOptionListBox::OnSetFont(WPARAM wParam, LPARAM lParam)
{
    const LRESULT result = Default();
    m_fontGroup.DeleteObject();
    LOGFONT lf = {};
    if (wParam != 0 && ::GetObjectW(reinterpret_cast<HFONT>(wParam), sizeof(lf), &lf) != 0) {
        lf.lfWeight = FW_BOLD;
        m_fontGroup.CreateFontIndirect(&lf);
    }
    SetItemHeight(0, static_cast<UINT>(CalcItemHeight()));
    if (lParam)
        Invalidate();
    return result;
}

COLORREF KxUiOptionListBox::hotColor()
{
    const COLORREF hi = ::GetSysColor(COLOR_HIGHLIGHT), bk = ::GetSysColor(COLOR_WINDOW);
    return RGB((GetRValue(hi) + 3 * GetRValue(bk)) / 4, (GetGValue(hi) + 3 * GetGValue(bk)) / 4,
               (GetBValue(hi) + 3 * GetBValue(bk)) / 4);
}

void KxUiOptionListBox::MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct)
{
    lpMeasureItemStruct->itemHeight = static_cast<UINT>(CalcItemHeight());
}

void KxUiOptionListBox::DrawItem(LPDRAWITEMSTRUCT lpDIS)
{
    HDC hdc = lpDIS->hDC;
    CRect rc(lpDIS->rcItem);
    const int nIndex = static_cast<int>(lpDIS->itemID);
    Item* pItem = GetItem(nIndex);
    if (pItem == nullptr) {
        if (lpDIS->itemState & ODS_FOCUS)
            ::DrawFocusRect(hdc, &rc);
        return;
    }
    const bool selected = (lpDIS->itemState & ODS_SELECTED) != 0;
    const COLORREF bk = selected ? ::GetSysColor(COLOR_HIGHLIGHT) : nIndex == m_nHot ? hotColor()
                                                                                      : ::GetSysColor(COLOR_WINDOW);
    ::SetBkColor(hdc, bk);
    ::ExtTextOutW(hdc, 0, 0, ETO_OPAQUE, &rc, nullptr, 0, nullptr);

    // The icon: from the image list, else the page's, loaded once at the size drawn.
    const int iconSize = m_nIconPlacement == iconTop ? 32 : 16;
    CRect content = rc;
    if (pItem->m_pGroup != nullptr && m_nIconPlacement != iconTop)
        content.left += m_nIndent;
    CPoint iconAt = m_nIconPlacement == iconTop ? CPoint(rc.left + (rc.Width() - iconSize) / 2, rc.top + 4)
                                                : CPoint(content.left + 4, rc.top + (rc.Height() - iconSize) / 2);
    if (m_nIconPlacement != iconNone) {
        if (m_pImageList != nullptr && m_pImageList->GetSafeHandle() != nullptr) {
            ImageList_DrawEx(m_pImageList->GetSafeHandle(), nIndex, hdc, iconAt.x, iconAt.y, iconSize, iconSize,
                             CLR_NONE, CLR_NONE, ILD_TRANSPARENT);
        } else {
            if (pItem->m_nIconSize != iconSize) {
                if (pItem->m_hIcon != nullptr)
                    ::DestroyIcon(pItem->m_hIcon);
                pItem->m_hIcon = nullptr;
                pItem->m_hIcon = pItem->m_pPage->CreatePageIcon(iconSize);
                pItem->m_nIconSize = iconSize;
            }
            if (pItem->m_hIcon != nullptr)
                ::DrawIconEx(hdc, iconAt.x, iconAt.y, pItem->m_hIcon, iconSize, iconSize, 0, nullptr, DI_NORMAL);
        }
    }

    // The title, bold for a group.
    CString text;
    GetText(nIndex, text);
    CRect textRect = content;
    UINT format = DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS;
    if (m_nIconPlacement == iconTop) {
        textRect.top = rc.top + 4 + iconSize + 2;
        textRect.DeflateRect(2, 0);
        format |= DT_CENTER | DT_TOP;
    } else {
        textRect.left += m_nIconPlacement == iconLeft ? 4 + iconSize + 6 : 6;
        format |= DT_LEFT | DT_VCENTER;
    }
    HGDIOBJ hOldFont = nullptr;
    if (pItem->m_bGroup && m_fontGroup.GetSafeHandle() != nullptr)
        hOldFont = ::SelectObject(hdc, m_fontGroup.GetSafeHandle());
    ::SetBkMode(hdc, TRANSPARENT);
    ::SetTextColor(hdc, ::GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    ::DrawTextW(hdc, text, text.GetLength(), &textRect, format);
    if (hOldFont != nullptr)
        ::SelectObject(hdc, hOldFont);
    if (lpDIS->itemState & ODS_FOCUS)
        ::DrawFocusRect(hdc, &rc);
}

void KxUiOptionListBox::InvalidateItem(int nIndex)
{
    CRect rc;
    if (nIndex >= 0 && GetItemRect(nIndex, &rc) != LB_ERR)
        InvalidateRect(&rc, FALSE);
}

void KxUiOptionListBox::highLightItem(int nIndex)
{
    if (nIndex == m_nHot)
        return;
    unHighLightAllItems();
    if (nIndex < 0 || nIndex >= m_items.GetSize())
        return;
    m_nHot = nIndex;
    InvalidateItem(nIndex);
}

void KxUiOptionListBox::unHighLightItem(int nIndex)
{
    if (nIndex < 0 || nIndex != m_nHot)
        return;
    m_nHot = -1;
    InvalidateItem(nIndex);
}

void KxUiOptionListBox::unHighLightAllItems()
{
    unHighLightItem(m_nHot);
}

void KxUiOptionListBox::OnMouseMove(UINT nFlags, CPoint point)
{
    BOOL bOutside = TRUE;
    const UINT n = ItemFromPoint(point, bOutside);
    if (bOutside)
        unHighLightAllItems();
    else
        highLightItem(static_cast<int>(n));
    if (!m_bTracking) {
        TRACKMOUSEEVENT tme = {sizeof(tme), TME_LEAVE, m_hWnd, 0};
        m_bTracking = ::TrackMouseEvent(&tme) != FALSE;
    }
    CListBox::OnMouseMove(nFlags, point);
}

void KxUiOptionListBox::OnMouseLeave()
{
    m_bTracking = false;
    unHighLightAllItems();
    CListBox::OnMouseLeave();
}

BOOL KxUiOptionListBox::OnSelChange()
{
    if (m_pSheet == nullptr)
        return FALSE;
    NMHDR nm = {m_hWnd, static_cast<UINT_PTR>(GetDlgCtrlID()), static_cast<UINT>(LBN_SELCHANGE)};
    LRESULT refused = 0;
    m_pSheet->ListSelectionChanging(&nm, &refused);
    if (refused) {
        // Back to the page that would not be left.
        SetSelection(m_pSheet->GetActivePage());
        return TRUE;
    }
    LRESULT result = 0;
    m_pSheet->ListSelectionChanged(&nm, &result);
    return TRUE;
}
