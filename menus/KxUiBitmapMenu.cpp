// Bitmap menus: measuring and drawing owner-drawn popup items with an image column.
#include "KxUiBitmapMenu.h"
#include "KxUiBitmapMenuOrganizer.h"
#include "KxUiBitmapMenuPopupWnd.h"
#include "KxUiLoadString.h"
#include "res/KxUiRes.h"
#include <afxcmn.h>
#include <algorithm>

IMPLEMENT_DYNAMIC(KxUiBitmapMenu, CMenu)

int KxUiBitmapMenu::m_nGapLeftBitmap = 2;
int KxUiBitmapMenu::m_nGapBitmapText = 4;
int KxUiBitmapMenu::m_nGapTextAcclrtr = 2;
int KxUiBitmapMenu::m_nGapAcclrtrRight = 3;
int KxUiBitmapMenu::m_nGapVertText = 4;
int KxUiBitmapMenu::m_nGapVertBitmap = 3;

namespace {

// The menu font of the system, created for one measuring or drawing pass.
HFONT CreateMenuFont()
{
    NONCLIENTMETRICSW ncm{};
    ncm.cbSize = sizeof(ncm);
    if (!::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, ncm.cbSize, &ncm, 0))
        return static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
    return ::CreateFontIndirectW(&ncm.lfMenuFont);
}

void DeleteMenuFont(HFONT hFont)
{
    if (hFont != static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT)))
        ::DeleteObject(hFont);
}

// The symbol font that holds the submenu arrow and the chevron.
HFONT CreateGlyphFont()
{
    return ::CreateFontW(::GetSystemMetrics(SM_CYMENUCHECK), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                         SYMBOL_CHARSET, 0, 0, 0, 0, L"Marlett");
}

// Text before the first tab and after it.
void SplitText(const CString& sText, CString& sLeft, CString& sRight)
{
    const int tab = sText.Find(L'\t');
    if (tab < 0) {
        sLeft = sText;
        sRight.Empty();
    } else {
        sLeft = sText.Left(tab);
        sRight = sText.Mid(tab + 1);
    }
}

}  // namespace

CSize KxUiImageInfo::GetImageSize() const
{
    IMAGEINFO ii{};
    if (m_pImageList == nullptr || m_pImageList->m_hImageList == nullptr)
        return CSize(0, 0);
    if (!ImageList_GetImageInfo(m_pImageList->m_hImageList, m_nIndex >= 0 ? m_nIndex : 0, &ii)) {
        int cx = 0, cy = 0;
        ImageList_GetIconSize(m_pImageList->m_hImageList, &cx, &cy);
        return CSize(cx, cy);
    }
    return CSize(ii.rcImage.right - ii.rcImage.left, ii.rcImage.bottom - ii.rcImage.top);
}

KxUiBitmapMenu::KxUiBitmapMenu()
    : m_nBitmapExtent(0), m_nTextHeight(0), m_nAcceleratorExtent(0), m_nStringExtent(0), m_bCustomizable(FALSE),
      m_bCustomizationMode(FALSE), m_hWndCustomizeNotify(nullptr), m_nCustomizedItemIndex(-1),
      m_nDraggedItemIndex(-1), m_nInsertMarkIndex(-1), m_bDragDropOwner(FALSE), m_pPopupWnd(nullptr),
      m_bAttachedOnly(FALSE), m_hWndOrganizerFrame(nullptr)
{
}

KxUiBitmapMenu::~KxUiBitmapMenu()
{
    if (m_bAttachedOnly)
        Detach();
}

void KxUiBitmapMenu::AddItemInfo(KxUiItemInfo* pItemInfo)
{
    if (pItemInfo != nullptr)
        m_ItemInfoArray.Add(pItemInfo);
}

KxUiItemInfo* KxUiBitmapMenu::GetItemInfo(int nPos) const
{
    MENUITEMINFOW mii{};
    mii.cbSize = sizeof(mii);
    mii.fMask = MIIM_DATA | MIIM_FTYPE;
    if (m_hMenu == nullptr || !::GetMenuItemInfoW(m_hMenu, nPos, TRUE, &mii) || !(mii.fType & MFT_OWNERDRAW))
        return nullptr;
    // Only data this menu made is read as item data; an application's own owner-drawn
    // items keep whatever they carry.
    auto* info = reinterpret_cast<KxUiItemInfo*>(mii.dwItemData);
    for (INT_PTR i = 0; i < m_ItemInfoArray.GetSize(); ++i) {
        if (m_ItemInfoArray[i] == info)
            return info;
    }
    return nullptr;
}

KxUiBitmapMenuOrganizer* KxUiBitmapMenu::GetOrganizer() const
{
    // The main window's organizer, else the one that converted this menu (found by its
    // frame, so an organizer gone since is never touched).
    if (CWnd* main = AfxGetMainWnd()) {
        if (KxUiBitmapMenuOrganizer* organizer = KxUiBitmapMenuOrganizer::FindOrganizer(main->GetSafeHwnd()))
            return organizer;
    }
    return KxUiBitmapMenuOrganizer::FindOrganizer(m_hWndOrganizerFrame);
}

int KxUiBitmapMenu::FindMnemonic(TCHAR ch) const
{
    int pos = -1;
    const TCHAR lower = static_cast<TCHAR>(reinterpret_cast<UINT_PTR>(::CharLowerW(reinterpret_cast<LPWSTR>(ch))));
    return m_KeyAccessMap.Lookup(lower, pos) ? pos : -1;
}

void KxUiBitmapMenu::CalcExtents()
{
    m_nBitmapExtent = 0;
    m_nAcceleratorExtent = 0;
    m_nStringExtent = 0;

    CWnd* main = AfxGetMainWnd();
    HWND hWnd = main != nullptr ? main->GetSafeHwnd() : nullptr;
    HDC hDC = ::GetDC(hWnd);
    HFONT hFont = CreateMenuFont();
    HGDIOBJ oldFont = ::SelectObject(hDC, hFont);

    const int count = m_hMenu != nullptr ? ::GetMenuItemCount(m_hMenu) : 0;
    for (int pos = 0; pos < count; ++pos) {
        MENUITEMINFOW mii{};
        mii.cbSize = sizeof(mii);
        mii.fMask = MIIM_FTYPE | MIIM_DATA | MIIM_SUBMENU;
        if (!::GetMenuItemInfoW(m_hMenu, pos, TRUE, &mii) || (mii.fType & MFT_SEPARATOR))
            continue;
        KxUiItemInfo* info = GetItemInfo(pos);
        if (info == nullptr)
            continue;
        if (KxUiImageInfo* image = info->GetImageInfo())
            m_nBitmapExtent = std::max(m_nBitmapExtent, static_cast<int>(image->GetImageSize().cx));

        CString sText, sAccel;
        SplitText(info->GetText(), sText, sAccel);
        // A popup item keeps room for its arrow in the accelerator column.
        if (info->GetText().Find(L'\t') < 0 && mii.hSubMenu != nullptr)
            sAccel = L"W";
        CRect r(0, 0, 0, 0);
        ::DrawTextW(hDC, sText, sText.GetLength(), &r, DT_CALCRECT | DT_SINGLELINE);
        m_nStringExtent = std::max(m_nStringExtent, static_cast<int>(r.Width()));
        if (!sAccel.IsEmpty()) {
            r.SetRect(0, 0, 0, 0);
            ::DrawTextW(hDC, sAccel, sAccel.GetLength(), &r, DT_CALCRECT | DT_SINGLELINE);
            m_nAcceleratorExtent = std::max(m_nAcceleratorExtent, static_cast<int>(r.Width()));
        }
    }
    SIZE size{};
    ::GetTextExtentPoint32W(hDC, L"A", 1, &size);
    m_nTextHeight = size.cy;

    ::SelectObject(hDC, oldFont);
    DeleteMenuFont(hFont);
    ::ReleaseDC(hWnd, hDC);
}

void KxUiBitmapMenu::MeasureItem(LPMEASUREITEMSTRUCT lpMIS)
{
    if (lpMIS == nullptr)
        return;
    lpMIS->itemWidth = m_nGapLeftBitmap + m_nBitmapExtent + m_nGapBitmapText + m_nStringExtent +
                       (m_nAcceleratorExtent != 0 ? m_nGapTextAcclrtr : 0) + m_nAcceleratorExtent +
                       m_nGapAcclrtrRight;
    if (lpMIS->itemID == 0) {
        lpMIS->itemHeight = 8;
        return;
    }
    int imageHeight = 0;
    auto* info = reinterpret_cast<KxUiItemInfo*>(lpMIS->itemData);
    bool ours = false;
    for (INT_PTR i = 0; i < m_ItemInfoArray.GetSize() && !ours; ++i)
        ours = m_ItemInfoArray[i] == info;
    if (ours && info->GetImageInfo() != nullptr)
        imageHeight = info->GetImageInfo()->GetImageSize().cy + 2;
    const int byImage = imageHeight + m_nGapVertBitmap;
    const int byText = m_nTextHeight + m_nGapVertText;
    lpMIS->itemHeight = byImage > byText ? byImage : byText;
}

void KxUiBitmapMenu::DistributeSpace(UINT /*nState*/, KxUiImageInfo* pImageInfo, CRect itemRect,
                                     CRect& buttonRect, CRect& imageRect, CRect& text1Rect, CRect& text2Rect)
{
    const int height = itemRect.Height();
    buttonRect.SetRectEmpty();
    imageRect.SetRectEmpty();
    if (pImageInfo != nullptr) {
        const CSize size = pImageInfo->GetImageSize();
        imageRect.left = itemRect.left + m_nGapLeftBitmap;
        imageRect.top = itemRect.top + (height - size.cy) / 2;
        imageRect.right = imageRect.left + size.cx;
        imageRect.bottom = imageRect.top + size.cy;
        buttonRect = imageRect;
        buttonRect.InflateRect(2, 2);
    }

    // The text column starts where the widest image ends, counted from zero rather than from
    // the item's left, as every item of a menu starts at the same x.
    text1Rect = itemRect;
    text1Rect.left = m_nGapLeftBitmap + m_nBitmapExtent + m_nGapBitmapText;
    text1Rect.right = text1Rect.left + m_nStringExtent;
    const int vertical = (height - m_nTextHeight) / 2;
    text1Rect.top += vertical;
    text1Rect.bottom -= vertical;

    // The accelerator column sits midway in the space between the text and the right edge
    // rather than flush right.
    text2Rect = itemRect;
    text2Rect.right -= m_nGapAcclrtrRight;
    text2Rect.left = text2Rect.right - m_nAcceleratorExtent;
    text2Rect.OffsetRect(-(text2Rect.left - text1Rect.right) / 2, 0);
    text2Rect.top = text1Rect.top;
    text2Rect.bottom = text1Rect.bottom;
}

HBRUSH KxUiBitmapMenu::HBrushDitherCreate(COLORREF rgbFace, COLORREF rgbHighlight)
{
    struct {
        BITMAPINFOHEADER header;
        RGBQUAD colors[2];
        DWORD rows[8];
    } dib{};
    dib.header.biSize = sizeof(BITMAPINFOHEADER);
    dib.header.biWidth = 8;
    dib.header.biHeight = 8;
    dib.header.biPlanes = 1;
    dib.header.biBitCount = 1;
    dib.header.biCompression = BI_RGB;
    dib.colors[0] = RGBQUAD{GetBValue(rgbFace), GetGValue(rgbFace), GetRValue(rgbFace), 0};
    dib.colors[1] = RGBQUAD{GetBValue(rgbHighlight), GetGValue(rgbHighlight), GetRValue(rgbHighlight), 0};
    for (int row = 0; row < 8; ++row)
        dib.rows[row] = (row % 2 == 0) ? 0xAAAA : 0x5555;
    return ::CreateDIBPatternBrushPt(&dib, DIB_RGB_COLORS);
}

void KxUiBitmapMenu::DrawBackground(CDC* pDC, UINT nState, KxUiImageInfo* pImageInfo, CRect buttonRect,
                                    CRect textAreaRect)
{
    const bool selected = (nState & ODS_SELECTED) != 0;
    const bool checked = (nState & ODS_CHECKED) != 0;
    const bool notRecent = (nState & KXUI_ODS_NOTRECENTLY) != 0;
    const bool defaultList = pImageInfo != nullptr && pImageInfo->IsDefaultImgList();
    const COLORREF highlight = ::GetSysColor(selected ? COLOR_HIGHLIGHT : COLOR_MENU);
    HBRUSH dither = HBrushDitherCreate(::GetSysColor(COLOR_MENU), ::GetSysColor(COLOR_BTNHIGHLIGHT));

    if (!buttonRect.IsRectEmpty()) {
        if ((notRecent && !defaultList) || (checked && !selected)) {
            ::FillRect(pDC->m_hDC, &buttonRect, dither);
        } else {
            COLORREF fill;
            if (selected)
                fill = checked ? ::GetSysColor(COLOR_MENU) : ::GetSysColor(defaultList ? COLOR_HIGHLIGHT : COLOR_MENU);
            else
                fill = ::GetSysColor(checked ? COLOR_BTNHIGHLIGHT : COLOR_MENU);
            pDC->FillSolidRect(&buttonRect, fill);
        }
    }

    CRect text = textAreaRect;
    const int k = checked ? 2 : (defaultList ? -1 : 1);
    text.left = std::max(static_cast<int>(buttonRect.right), m_nGapLeftBitmap + m_nBitmapExtent + k);
    text.bottom -= 1;
    if (notRecent && !selected)
        ::FillRect(pDC->m_hDC, &text, dither);
    else
        pDC->FillSolidRect(&text, highlight);
    if (notRecent && !selected) {
        if (nState & KXUI_ODS_PREVRECENTLY)
            pDC->FillSolidRect(text.left, text.top, text.Width(), 1, ::GetSysColor(COLOR_BTNSHADOW));
        if (nState & KXUI_ODS_NEXTRECENTLY)
            pDC->FillSolidRect(text.left, text.bottom - 1, text.Width(), 1, ::GetSysColor(COLOR_BTNHIGHLIGHT));
    }
    ::DeleteObject(dither);
}

void KxUiBitmapMenu::DrawButton(CDC* pDC, UINT nState, KxUiImageInfo* pImageInfo, CRect buttonRect)
{
    if (pImageInfo == nullptr || buttonRect.IsRectEmpty())
        return;
    const bool selected = (nState & ODS_SELECTED) != 0;
    const bool grayed = (nState & (ODS_GRAYED | ODS_DISABLED)) != 0;
    const bool checked = (nState & ODS_CHECKED) != 0;
    if (selected && !grayed && !checked && !pImageInfo->IsDefaultImgList())
        ::DrawEdge(pDC->m_hDC, &buttonRect, BDR_RAISEDINNER, BF_RECT);
    if (checked)
        ::DrawEdge(pDC->m_hDC, &buttonRect, BDR_SUNKENOUTER, BF_RECT);
}

void KxUiBitmapMenu::DrawImage(CDC* pDC, UINT nState, KxUiImageInfo* pImageInfo, CRect imageRect)
{
    if (pImageInfo == nullptr || pImageInfo->GetImageList() == nullptr)
        return;
    HIMAGELIST list = pImageInfo->GetImageList()->m_hImageList;
    if (list == nullptr)
        return;
    // The default list holds the check mark, shown only on checked items.
    if (pImageInfo->IsDefaultImgList() && !(nState & ODS_CHECKED))
        return;
    int index = pImageInfo->GetIndex();
    if ((nState & ODS_SELECTED) && pImageInfo->GetHotIndex() != -1)
        index = pImageInfo->GetHotIndex();
    if (index < 0 || index >= ImageList_GetImageCount(list))
        return;
    if (nState & (ODS_GRAYED | ODS_DISABLED)) {
        HICON icon = ImageList_GetIcon(list, index, ILD_NORMAL);
        if (icon != nullptr) {
            ::DrawStateW(pDC->m_hDC, nullptr, nullptr, reinterpret_cast<LPARAM>(icon), 0, imageRect.left,
                         imageRect.top, imageRect.Width(), imageRect.Height(), DST_ICON | DSS_DISABLED);
            ::DestroyIcon(icon);
        }
    } else {
        ImageList_Draw(list, index, pDC->m_hDC, imageRect.left, imageRect.top, ILD_TRANSPARENT);
    }
}

void KxUiBitmapMenu::DrawText(CDC* pDC, UINT nState, CString sText, CRect text1Rect, CRect text2Rect)
{
    CString sLeft, sRight;
    SplitText(sText, sLeft, sRight);
    HFONT hFont = CreateMenuFont();
    HGDIOBJ oldFont = ::SelectObject(pDC->m_hDC, hFont);
    const int oldMode = ::SetBkMode(pDC->m_hDC, TRANSPARENT);
    COLORREF colour;
    if (nState & (ODS_GRAYED | ODS_DISABLED))
        colour = ::GetSysColor(COLOR_GRAYTEXT);
    else if (nState & ODS_SELECTED)
        colour = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
    else
        colour = ::GetSysColor(COLOR_MENUTEXT);
    const COLORREF oldColour = ::SetTextColor(pDC->m_hDC, colour);
    const UINT format = DT_SINGLELINE | DT_VCENTER | DT_LEFT | ((nState & ODS_NOACCEL) ? DT_HIDEPREFIX : 0);
    ::DrawTextW(pDC->m_hDC, sLeft, sLeft.GetLength(), &text1Rect, format);
    if (!sRight.IsEmpty())
        ::DrawTextW(pDC->m_hDC, sRight, sRight.GetLength(), &text2Rect, format);
    ::SetTextColor(pDC->m_hDC, oldColour);
    ::SetBkMode(pDC->m_hDC, oldMode);
    ::SelectObject(pDC->m_hDC, oldFont);
    DeleteMenuFont(hFont);
}

void KxUiBitmapMenu::DrawSeparator(CDC* pDC, CRect itemRect)
{
    CRect r = itemRect;
    r.DeflateRect(2, 0);
    r.top = r.top + itemRect.Height() / 2 - 1;
    r.bottom = r.top + 2;
    pDC->Draw3dRect(&r, ::GetSysColor(COLOR_BTNSHADOW), ::GetSysColor(COLOR_BTNHIGHLIGHT));
}

void KxUiBitmapMenu::DrawCustomized(CDC* pDC, CRect itemRect)
{
    // A two-pixel frame in the text colour marks the item the context menu acts on.
    const COLORREF colour = ::GetSysColor(COLOR_MENUTEXT);
    pDC->Draw3dRect(&itemRect, colour, colour);
    itemRect.DeflateRect(1, 1);
    pDC->Draw3dRect(&itemRect, colour, colour);
}

void KxUiBitmapMenu::DrawInsertMark(CDC* pDC, CRect itemRect, BOOL bBefore)
{
    // A line across the item with small ticks at both ends, where a dragged item would land.
    const COLORREF colour = ::GetSysColor(COLOR_MENUTEXT);
    const int y = bBefore ? itemRect.top : itemRect.bottom - 2;
    pDC->FillSolidRect(itemRect.left + 1, y, itemRect.Width() - 2, 2, colour);
    const int tickTop = bBefore ? itemRect.top : itemRect.bottom - 4;
    pDC->FillSolidRect(itemRect.left, tickTop, 2, 4, colour);
    pDC->FillSolidRect(itemRect.right - 2, tickTop, 2, 4, colour);
}

void KxUiBitmapMenu::DrawSubmenuItem(CDC* pDC, UINT nState, CString sText, KxUiImageInfo* pImageInfo,
                                     CRect itemRect, CRect buttonRect, CRect text1Rect, CRect text2Rect)
{
    CRect imageRect;
    CRect b, t1, t2;
    DistributeSpace(nState, pImageInfo, itemRect, b, imageRect, t1, t2);
    DrawBackground(pDC, nState, pImageInfo, buttonRect, itemRect);
    DrawButton(pDC, nState, pImageInfo, buttonRect);
    DrawImage(pDC, nState, pImageInfo, imageRect);
    CString sLeft, sRight;
    SplitText(sText, sLeft, sRight);
    DrawText(pDC, nState, sLeft, text1Rect, text2Rect);

    // The arrow, right-aligned in the item, in the text's colour.
    HFONT hFont = CreateGlyphFont();
    HGDIOBJ oldFont = ::SelectObject(pDC->m_hDC, hFont);
    const int oldMode = ::SetBkMode(pDC->m_hDC, TRANSPARENT);
    COLORREF colour = ::GetSysColor((nState & (ODS_GRAYED | ODS_DISABLED)) ? COLOR_GRAYTEXT
                                    : (nState & ODS_SELECTED)              ? COLOR_HIGHLIGHTTEXT
                                                                           : COLOR_MENUTEXT);
    const COLORREF oldColour = ::SetTextColor(pDC->m_hDC, colour);
    CRect arrow = itemRect;
    arrow.right -= m_nGapAcclrtrRight;
    ::DrawTextW(pDC->m_hDC, L"8", 1, &arrow, DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
    ::SetTextColor(pDC->m_hDC, oldColour);
    ::SetBkMode(pDC->m_hDC, oldMode);
    ::SelectObject(pDC->m_hDC, oldFont);
    ::DeleteObject(hFont);
}

void KxUiBitmapMenu::DrawExpansionItem(CDC* pDC, CRect itemRect, UINT nState)
{
    HFONT hFont = CreateGlyphFont();
    HGDIOBJ oldFont = ::SelectObject(pDC->m_hDC, hFont);
    const int oldMode = ::SetBkMode(pDC->m_hDC, TRANSPARENT);
    COLORREF colour = ::GetSysColor((nState & (ODS_GRAYED | ODS_DISABLED)) ? COLOR_GRAYTEXT
                                    : (nState & ODS_SELECTED)              ? COLOR_HIGHLIGHTTEXT
                                                                           : COLOR_MENUTEXT);
    const COLORREF oldColour = ::SetTextColor(pDC->m_hDC, colour);
    ::DrawTextW(pDC->m_hDC, L"6", 1, &itemRect, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    ::SetTextColor(pDC->m_hDC, oldColour);
    ::SetBkMode(pDC->m_hDC, oldMode);
    ::SelectObject(pDC->m_hDC, oldFont);
    ::DeleteObject(hFont);
}

int KxUiBitmapMenu::HitTest(LPPOINT pPoint, int* pbBefore)
{
    if (pPoint == nullptr || m_hMenu == nullptr)
        return -1;
    const int count = ::GetMenuItemCount(m_hMenu);
    int total = 0;
    for (int pos = 0; pos < count; ++pos) {
        MENUITEMINFOW mii{};
        mii.cbSize = sizeof(mii);
        mii.fMask = MIIM_ID | MIIM_DATA | MIIM_FTYPE;
        ::GetMenuItemInfoW(m_hMenu, pos, TRUE, &mii);
        MEASUREITEMSTRUCT mis{};
        mis.CtlType = ODT_MENU;
        mis.itemID = (mii.fType & MFT_SEPARATOR) ? 0 : mii.wID;
        mis.itemData = mii.dwItemData;
        MeasureItem(&mis);
        const int height = static_cast<int>(mis.itemHeight);
        total += height;
        if (total >= pPoint->y) {
            if (pbBefore != nullptr)
                *pbBefore = pPoint->y <= total - height / 2 ? 1 : 0;
            return pos;
        }
    }
    return -1;
}

void KxUiBitmapMenu::DrawItem(LPDRAWITEMSTRUCT lpDIS)
{
    if (lpDIS == nullptr || lpDIS->CtlType != ODT_MENU)
        return;
    CRect itemRect(lpDIS->rcItem);
    CDC dc;
    if (!dc.Attach(lpDIS->hDC))
        return;

    // The item's position, found by its data: exact however the menu is scrolled.
    int pos = -1;
    const int count = ::GetMenuItemCount(m_hMenu);
    MENUITEMINFOW mii{};
    for (int i = 0; i < count; ++i) {
        mii = MENUITEMINFOW{};
        mii.cbSize = sizeof(mii);
        mii.fMask = MIIM_DATA | MIIM_FTYPE | MIIM_SUBMENU | MIIM_ID;
        if (::GetMenuItemInfoW(m_hMenu, i, TRUE, &mii) && mii.dwItemData == lpDIS->itemData) {
            pos = i;
            break;
        }
    }
    KxUiItemInfo* info = pos >= 0 ? GetItemInfo(pos) : nullptr;
    if (info == nullptr) {
        // A separator added while customising, before the menu was converted again, has no
        // data of ours; it is drawn all the same so the row is not left blank.
        if (lpDIS->itemID == 0) {
            dc.FillSolidRect(&itemRect, ::GetSysColor(COLOR_MENU));
            DrawSeparator(&dc, itemRect);
        }
        dc.Detach();
        return;
    }
    const CString sText = info->GetText();
    KxUiImageInfo* image = info->GetImageInfo();
    const bool separator = (mii.fType & MFT_SEPARATOR) != 0;
    const bool popup = mii.hSubMenu != nullptr || lpDIS->itemID == 0xFFFFFFFF;

    CRect buttonRect, imageRect, text1Rect, text2Rect;
    if (!separator)
        DistributeSpace(lpDIS->itemState, image, itemRect, buttonRect, imageRect, text1Rect, text2Rect);

    UINT state = lpDIS->itemState;
    if (KxUiBitmapMenuOrganizer* organizer = GetOrganizer()) {
        if (organizer->IsShowOnlyRecentlyUsedItems()) {
            if (!organizer->IsRecentlyUsed(this, pos))
                state |= KXUI_ODS_NOTRECENTLY;
            if (pos > 0 && organizer->IsRecentlyUsed(this, pos - 1))
                state |= KXUI_ODS_PREVRECENTLY;
            if (pos < count - 1 && organizer->IsRecentlyUsed(this, pos + 1))
                state |= KXUI_ODS_NEXTRECENTLY;
        }
    }

    if (separator) {
        // The separator's row is cleared first: the system does not paint owner-drawn rows.
        dc.FillSolidRect(&itemRect, ::GetSysColor(COLOR_MENU));
        DrawSeparator(&dc, itemRect);
    } else if (popup) {
        DrawSubmenuItem(&dc, state, sText, image, itemRect, buttonRect, text1Rect, text2Rect);
    } else {
        DrawBackground(&dc, state, image, buttonRect, itemRect);
        DrawButton(&dc, state, image, buttonRect);
        DrawImage(&dc, state, image, imageRect);
        if (LOWORD(mii.wID) == ID_KXUI_SHOWALL)
            DrawExpansionItem(&dc, itemRect, state);
        else
            DrawText(&dc, state, sText, text1Rect, text2Rect);
    }

    if (m_nCustomizedItemIndex != -1 && m_nCustomizedItemIndex == pos &&
        ::GetMenuItemID(m_hMenu, m_nCustomizedItemIndex) == ::GetMenuItemID(m_hMenu, pos))
        DrawCustomized(&dc, itemRect);

    if (m_nInsertMarkIndex != -1) {
        int mark = m_nInsertMarkIndex;
        BOOL before = TRUE;
        if (mark >= count) {
            mark = count - 1;  // a mark at the end is drawn after the last item
            before = FALSE;
        }
        if (mark == pos)
            DrawInsertMark(&dc, itemRect, before);
    }

    // The system draws its own arrow after a popup item; the item is finished, so its
    // rectangle is taken out of the clip region.
    if (popup)
        dc.ExcludeClipRect(&itemRect);
    dc.Detach();
}

int KxUiBitmapMenu::SetCustomizedItem(int nIndex)
{
    const int previous = m_nCustomizedItemIndex;
    m_nCustomizedItemIndex = nIndex;
    return previous;
}

int KxUiBitmapMenu::SetInsertMark(int nIndex)
{
    const int previous = m_nInsertMarkIndex;
    m_nInsertMarkIndex = nIndex;
    return previous;
}

void KxUiBitmapMenu::SetCutomizationMode(BOOL bCustomize, HWND hWndNotify)
{
    m_bCustomizationMode = bCustomize;
    m_hWndCustomizeNotify = bCustomize ? hWndNotify : nullptr;
    if (!bCustomize) {
        m_nCustomizedItemIndex = -1;
        m_nInsertMarkIndex = -1;
        m_nDraggedItemIndex = -1;
    }
}

void KxUiBitmapMenu::OnUpdateCmdUI(CWnd* pWnd, UINT nID, BOOL bDisableIfNoHndler)
{
    if (pWnd == nullptr || m_hMenu == nullptr)
        return;
    CCmdUI state;
    state.m_pMenu = this;
    state.m_nIndexMax = GetMenuItemCount();
    for (state.m_nIndex = 0; state.m_nIndex < state.m_nIndexMax; ++state.m_nIndex) {
        if (GetMenuItemID(static_cast<int>(state.m_nIndex)) != nID)
            continue;
        state.m_nID = nID;
        state.m_pSubMenu = nullptr;
        state.DoUpdate(pWnd, bDisableIfNoHndler);
    }
}

LRESULT KxUiBitmapMenu::SendCustomizeNotification(UINT nCustomizeCmdID)
{
    HWND receiver = m_hWndCustomizeNotify;
    if (receiver == nullptr || !::IsWindow(receiver)) {
        CWnd* main = AfxGetMainWnd();
        receiver = main != nullptr ? main->GetSafeHwnd() : nullptr;
    }
    if (receiver == nullptr)
        return 0;
    KXUI_NMBMCUSTOMIZE nm{};
    nm.hdr.hwndFrom = m_pPopupWnd != nullptr ? m_pPopupWnd->GetSafeHwnd() : nullptr;
    nm.hdr.idFrom = static_cast<UINT_PTR>(::GetDlgCtrlID(receiver));
    nm.hdr.code = KXUI_BMN_CUSTOMIZE;
    nm.nCommand = nCustomizeCmdID;
    return ::SendMessageW(receiver, WM_NOTIFY, nm.hdr.idFrom, reinterpret_cast<LPARAM>(&nm));
}

void KxUiBitmapMenu::UpdateContents()
{
    KxUiBitmapMenuOrganizer* organizer = GetOrganizer();
    // Items added by customisation (separators) become owner-drawn like the rest.
    if (organizer != nullptr)
        organizer->ConvertBitmapMenu(this, FALSE);
    CalcExtents();
    if (m_pPopupWnd != nullptr && ::IsWindow(m_pPopupWnd->GetSafeHwnd()))
        m_pPopupWnd->OnMenuChanged();
}

BOOL KxUiBitmapMenu::DisplayCustomizeItemContextMenu(int nIndex, CPoint point)
{
    if (m_hMenu == nullptr || nIndex < 0 || nIndex >= ::GetMenuItemCount(m_hMenu))
        return 0;
    const UINT id = ::GetMenuItemID(m_hMenu, nIndex);
    const bool hasSubmenu = ::GetSubMenu(m_hMenu, nIndex) != nullptr;
    if ((id >= 0xE110 && id <= 0xE11F) || (id >= 0xFF00 && id != 0xFFFFFFFF && !hasSubmenu))
        return 0;
    const bool separator = (::GetMenuState(m_hMenu, nIndex, MF_BYPOSITION) & MF_SEPARATOR) != 0;
    auto isCommand = [this](int pos) {
        return pos >= 0 && pos < ::GetMenuItemCount(m_hMenu) &&
               !(::GetMenuState(m_hMenu, pos, MF_BYPOSITION) & MF_SEPARATOR);
    };

    CMenu menu;
    if (!menu.CreatePopupMenu())
        return 0;
    menu.AppendMenu(MF_STRING, ID_KXUI_CUST_DELETE, KxUiLoadStringWndRc::loadStringStatic(IDS_KXUI_BM_DELETE));
    if (!separator) {
        menu.AppendMenu(MF_SEPARATOR);
        menu.AppendMenu(MF_STRING, ID_KXUI_CUST_APPEARANCE,
                        KxUiLoadStringWndRc::loadStringStatic(IDS_KXUI_BM_APPEARANCE));
        menu.AppendMenu(MF_SEPARATOR);
        KxUiBitmapMenuOrganizer* organizer = GetOrganizer();
        if (organizer != nullptr && organizer->IsShowOnlyRecentlyUsedItems()) {
            const UINT checked = organizer->IsRecentlyUsed(this, nIndex) ? MF_CHECKED : MF_UNCHECKED;
            menu.AppendMenu(MF_STRING | checked, ID_KXUI_CUST_RECENTLY_USED,
                            KxUiLoadStringWndRc::loadStringStatic(IDS_KXUI_BM_RECENTLY_USED));
            menu.AppendMenu(MF_SEPARATOR);
        }
        menu.AppendMenu(MF_STRING | (isCommand(nIndex - 1) ? 0 : MF_GRAYED), ID_KXUI_CUST_SEPARATOR_BEFORE,
                        KxUiLoadStringWndRc::loadStringStatic(IDS_KXUI_BM_SEPARATOR_BEFORE));
        menu.AppendMenu(MF_STRING | (isCommand(nIndex + 1) ? 0 : MF_GRAYED), ID_KXUI_CUST_SEPARATOR_AFTER,
                        KxUiLoadStringWndRc::loadStringStatic(IDS_KXUI_BM_SEPARATOR_AFTER));
    }
    SetCustomizedItem(nIndex);
    CWnd* owner = m_pPopupWnd != nullptr && ::IsWindow(m_pPopupWnd->GetSafeHwnd()) ? m_pPopupWnd : AfxGetMainWnd();
    return menu.TrackPopupMenu(TPM_RIGHTBUTTON, point.x, point.y, owner);
}

void KxUiBitmapMenu::OnCustBMDelete()
{
    const int pos = m_nCustomizedItemIndex;
    if (pos < 0 || SendCustomizeNotification(ID_KXUI_CUST_DELETE) != 0)
        return;
    KxUiItemInfo* info = GetItemInfo(pos);
    DeleteMenu(pos, MF_BYPOSITION);
    // The deleted item's data goes with it.
    for (INT_PTR i = 0; info != nullptr && i < m_ItemInfoArray.GetSize(); ++i) {
        if (m_ItemInfoArray[i] == info) {
            m_ItemInfoArray.RemoveAt(i);
            break;
        }
    }
    SetCustomizedItem(-1);
    UpdateContents();
}

void KxUiBitmapMenu::OnCustBMAppearance()
{
    SendCustomizeNotification(ID_KXUI_CUST_APPEARANCE);
}

void KxUiBitmapMenu::OnCustBMSeparatorBefore()
{
    const int pos = m_nCustomizedItemIndex;
    if (pos < 0 || SendCustomizeNotification(ID_KXUI_CUST_SEPARATOR_BEFORE) != 0)
        return;
    InsertMenu(pos, MF_BYPOSITION | MF_SEPARATOR);
    m_nCustomizedItemIndex = pos + 1;  // the item moved down by one
    UpdateContents();
}

void KxUiBitmapMenu::OnCustBMSeparatorAfter()
{
    const int pos = m_nCustomizedItemIndex;
    if (pos < 0 || SendCustomizeNotification(ID_KXUI_CUST_SEPARATOR_AFTER) != 0)
        return;
    InsertMenu(pos + 1, MF_BYPOSITION | MF_SEPARATOR);
    UpdateContents();
}

void KxUiBitmapMenu::OnCustBMRecentlyUsed()
{
    const int pos = m_nCustomizedItemIndex;
    if (pos < 0 || SendCustomizeNotification(ID_KXUI_CUST_RECENTLY_USED) != 0)
        return;
    if (KxUiBitmapMenuOrganizer* organizer = GetOrganizer()) {
        if (organizer->IsRecentlyUsed(this, pos))
            organizer->ExcludeFromRecentlyUsed(this, pos);
        else
            organizer->AddToRecentlyUsed(this, pos);
    }
    UpdateContents();
}

int KxUiBitmapMenu::RetrieveDragDropMenuItem(BYTE*& pData, HMENU hMenu, int nIndex)
{
    // Layout: id (32 bits), state (32 bits), type (32 bits), text length in characters
    // (32 bits), the text without terminator.
    pData = nullptr;
    if (hMenu == nullptr || nIndex < 0 || nIndex >= ::GetMenuItemCount(hMenu))
        return 0;
    MENUITEMINFOW mii{};
    mii.cbSize = sizeof(mii);
    mii.fMask = MIIM_ID | MIIM_STATE | MIIM_FTYPE;
    if (!::GetMenuItemInfoW(hMenu, nIndex, TRUE, &mii))
        return 0;
    CString text;
    if (KxUiItemInfo* info = (hMenu == m_hMenu) ? GetItemInfo(nIndex) : nullptr)
        text = info->GetText();
    else
        CMenu::FromHandle(hMenu)->GetMenuString(nIndex, text, MF_BYPOSITION);
    const DWORD header[4] = {mii.wID, mii.fState, mii.fType & ~MFT_OWNERDRAW, static_cast<DWORD>(text.GetLength())};
    const int size = static_cast<int>(sizeof(header) + text.GetLength() * sizeof(wchar_t));
    pData = new BYTE[size];
    memcpy(pData, header, sizeof(header));
    memcpy(pData + sizeof(header), static_cast<LPCWSTR>(text), text.GetLength() * sizeof(wchar_t));
    return size;
}

void KxUiBitmapMenu::OnBeginDragDrop(int nIndex)
{
    m_nDraggedItemIndex = nIndex;
    m_bDragDropOwner = TRUE;
}
