// Bitmap menus: conversion of a frame's popup and back, measuring, the column layout, and
// the pixels each drawing rule puts down, all through the frame's real menu messages.
#include "KxMenuFixture.h"
#include <afxcmn.h>
#include <algorithm>

namespace {

// Exposes the layout hooks and the extents, so the arithmetic can be checked on given numbers.
class OpenMenu : public KxUiBitmapMenu {
public:
    using KxUiBitmapMenu::AddItemInfo;
    using KxUiBitmapMenu::DistributeSpace;
    void SetExtents(int bitmap, int text, int accel, int textHeight)
    {
        m_nBitmapExtent = bitmap;
        m_nStringExtent = text;
        m_nAcceleratorExtent = accel;
        m_nTextHeight = textHeight;
    }
};

// Width of a text drawn in the system's menu font, as a menu would measure it.
int MenuTextWidth(const wchar_t* text)
{
    NONCLIENTMETRICSW ncm{};
    ncm.cbSize = sizeof(ncm);
    ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, ncm.cbSize, &ncm, 0);
    HFONT font = ::CreateFontIndirectW(&ncm.lfMenuFont);
    HDC dc = ::GetDC(nullptr);
    HGDIOBJ old = ::SelectObject(dc, font);
    RECT r = {0, 0, 0, 0};
    ::DrawTextW(dc, text, -1, &r, DT_CALCRECT | DT_SINGLELINE);
    ::SelectObject(dc, old);
    ::ReleaseDC(nullptr, dc);
    ::DeleteObject(font);
    return r.right - r.left;
}

// A strip of 16x16 images, one solid colour each.
void MakeStrip(CBitmap& bmp, std::initializer_list<COLORREF> colours)
{
    HDC screen = ::GetDC(nullptr);
    bmp.Attach(::CreateCompatibleBitmap(screen, 16 * static_cast<int>(colours.size()), 16));
    HDC dc = ::CreateCompatibleDC(screen);
    ::ReleaseDC(nullptr, screen);
    HGDIOBJ old = ::SelectObject(dc, bmp.GetSafeHandle());
    int x = 0;
    for (COLORREF c : colours) {
        HBRUSH b = ::CreateSolidBrush(c);
        RECT r = {x, 0, x + 16, 16};
        ::FillRect(dc, &r, b);
        ::DeleteObject(b);
        x += 16;
    }
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
}

bool IsOwnerDrawn(HMENU menu, int pos)
{
    MENUITEMINFOW mii{};
    mii.cbSize = sizeof(mii);
    mii.fMask = MIIM_FTYPE;
    ::GetMenuItemInfoW(menu, pos, TRUE, &mii);
    return (mii.fType & MFT_OWNERDRAW) != 0;
}

std::vector<UINT> Ids(HMENU menu)
{
    std::vector<UINT> ids;
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i)
        ids.push_back(::GetMenuItemID(menu, i));
    return ids;
}

// Wine's default scheme paints menus in the button-highlight colour (both white), where a
// dither of the two cannot be seen; these tests give menus the classic grey meanwhile.
class ClassicMenuColour {
public:
    ClassicMenuColour() : m_saved(::GetSysColor(COLOR_MENU))
    {
        const int element = COLOR_MENU;
        const COLORREF grey = RGB(212, 208, 200);
        ::SetSysColors(1, &element, &grey);
    }
    ~ClassicMenuColour()
    {
        const int element = COLOR_MENU;
        ::SetSysColors(1, &element, &m_saved);
    }

private:
    COLORREF m_saved;
};

const COLORREF kRed = RGB(255, 0, 0);
const COLORREF kBlue = RGB(0, 0, 255);
const COLORREF kMaskGreen = RGB(0, 255, 0);

}  // namespace

using BitmapMenu = MenuFixture;

TEST_F(BitmapMenu, ConversionMakesEveryItemOwnerDrawnAndClosingPutsTheMenuBackExactly)
{
    const std::vector<ItemSnapshot> before = SnapshotMenu(hFile);
    KxUiBitmapMenu* menu = OpenFile();
    ASSERT_NE(nullptr, menu);
    ASSERT_EQ(before.size(), static_cast<size_t>(::GetMenuItemCount(hFile)));
    for (int i = 0; i < ::GetMenuItemCount(hFile); ++i)
        EXPECT_TRUE(IsOwnerDrawn(hFile, i)) << i;
    // The submenu opens as a bitmap menu of its own, and goes back too.
    HMENU hRecent = ::GetSubMenu(hFile, 4);
    const std::vector<ItemSnapshot> recentBefore = SnapshotMenu(hRecent);
    ::SendMessageW(hwnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(hRecent), MAKELPARAM(4, FALSE));
    EXPECT_NE(nullptr, organizer.FindBitmapMenu(hRecent));
    EXPECT_TRUE(IsOwnerDrawn(hRecent, 0));

    CloseMenus();
    EXPECT_EQ(nullptr, organizer.FindBitmapMenu(hFile));
    EXPECT_EQ(before, SnapshotMenu(hFile));
    EXPECT_EQ(recentBefore, SnapshotMenu(hRecent));
    // The system menu is never converted.
    ::SendMessageW(hwnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(hFile), MAKELPARAM(0, TRUE));
    EXPECT_EQ(nullptr, organizer.FindBitmapMenu(hFile));
}

TEST_F(BitmapMenu, HidingKeepsRecentItemsWithoutLeadingOrDoubledSeparatorsAndRestores)
{
    const std::vector<ItemSnapshot> before = SnapshotMenu(hFile);
    const UINT kShowAll = ID_KXUI_SHOWALL;
    const struct {
        std::vector<int> recent;
        std::vector<UINT> shown;
    } cases[] = {
        {{ID_T_NEW, ID_T_EXIT}, {ID_T_NEW, 0, ID_T_EXIT, kShowAll}},
        {{ID_T_PRINT}, {ID_T_PRINT, kShowAll}},
        {{ID_T_NEW}, {ID_T_NEW, kShowAll}},
        {{ID_T_OPEN, ID_T_SAVE, ID_T_PRINT}, {ID_T_OPEN, 0, ID_T_SAVE, 0, ID_T_PRINT, kShowAll}},
    };
    organizer.ShowOnlyRecentlyUsedItems(TRUE);
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::PrintToString(c.recent));
        for (int id : {ID_T_NEW, ID_T_OPEN, ID_T_SAVE, ID_T_PRINT, ID_T_EXIT})
            organizer.ExcludeFromRecentlyUsed(id);
        for (int id : c.recent)
            organizer.AddToRecentlyUsed(id);
        OpenFile();
        EXPECT_EQ(c.shown, Ids(hFile));
        CloseMenus();
        EXPECT_EQ(before, SnapshotMenu(hFile));
    }

    // Everything recently used (the submenu too): nothing hidden, no expansion item.
    for (int id : {ID_T_NEW, ID_T_OPEN, ID_T_SAVE, ID_T_PRINT, ID_T_EXIT})
        organizer.AddToRecentlyUsed(id);
    organizer.AddSubmenuToRecentlyUsed(::GetSubMenu(hFile, 4));
    OpenFile();
    EXPECT_EQ(before.size(), static_cast<size_t>(::GetMenuItemCount(hFile)));
    CloseMenus();
    EXPECT_EQ(before, SnapshotMenu(hFile));
}

TEST_F(BitmapMenu, ExpansionCommandReopensTheWholeMenuOnce)
{
    organizer.ShowOnlyRecentlyUsedItems(TRUE);
    organizer.AddToRecentlyUsed(ID_T_NEW);
    OpenFile();
    ASSERT_EQ(2, ::GetMenuItemCount(hFile));
    ::SendMessageW(hwnd, WM_COMMAND, MAKEWPARAM(ID_KXUI_SHOWALL, 0), 0);
    ::SendMessageW(hwnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(hFile), MAKELPARAM(0, FALSE));
    EXPECT_EQ(8, ::GetMenuItemCount(hFile));
    CloseMenus();
    OpenFile();
    EXPECT_EQ(2, ::GetMenuItemCount(hFile));
    CloseMenus();
}

TEST_F(BitmapMenu, MeasuresFromTheWidestTextAndAcceleratorAndSeparatorsAreEightHigh)
{
    KxUiBitmapMenu* menu = OpenFile();
    ASSERT_NE(nullptr, menu);
    int text = 0;
    for (const wchar_t* t : {L"&New", L"&Open...", L"&Save", L"Recen&t", L"&Print", L"E&xit"})
        text = std::max(text, MenuTextWidth(t));
    // The popup item without a tab keeps "W" for its arrow.
    int accel = 0;
    for (const wchar_t* t : {L"Ctrl+N", L"Ctrl+O", L"W"})
        accel = std::max(accel, MenuTextWidth(t));
    EXPECT_EQ(text, menu->GetStringExtent());
    EXPECT_EQ(accel, menu->GetAcceleratorExtent());
    EXPECT_EQ(16, menu->GetBitmapExtent());  // the check-mark column every item gets

    for (int pos : {0, 2, 4}) {
        SCOPED_TRACE(pos);
        MENUITEMINFOW mii{};
        mii.cbSize = sizeof(mii);
        mii.fMask = MIIM_ID | MIIM_DATA | MIIM_FTYPE;
        ::GetMenuItemInfoW(hFile, pos, TRUE, &mii);
        MEASUREITEMSTRUCT mis{};
        mis.CtlType = ODT_MENU;
        mis.itemID = (mii.fType & MFT_SEPARATOR) ? 0 : mii.wID;
        mis.itemData = mii.dwItemData;
        ASSERT_TRUE(::SendMessageW(hwnd, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&mis)));
        EXPECT_EQ(static_cast<UINT>(2 + 16 + 4 + text + 2 + accel + 3), mis.itemWidth);
        if (pos == 2)
            EXPECT_EQ(8u, mis.itemHeight);
        else
            EXPECT_EQ(static_cast<UINT>(std::max(16 + 2 + 3, menu->GetTextHeight() + 4)), mis.itemHeight);
    }
    CloseMenus();
}

TEST(BitmapMenuAlone, WithoutImagesAndAcceleratorsTheWidthIsGapsAndTextAndHitTestCountsFromTop)
{
    OpenMenu menu;
    ASSERT_TRUE(menu.CreatePopupMenu());
    auto* alpha = new KxUiItemInfo(nullptr, L"Alpha");
    auto* sep = new KxUiItemInfo(nullptr, L"");
    auto* beta = new KxUiItemInfo(nullptr, L"&Beta");
    menu.AddItemInfo(alpha);
    menu.AddItemInfo(sep);
    menu.AddItemInfo(beta);
    ::AppendMenuW(menu.m_hMenu, MF_OWNERDRAW, 1, reinterpret_cast<LPCWSTR>(alpha));
    ::AppendMenuW(menu.m_hMenu, MF_OWNERDRAW | MF_SEPARATOR, 0, reinterpret_cast<LPCWSTR>(sep));
    ::AppendMenuW(menu.m_hMenu, MF_OWNERDRAW, 2, reinterpret_cast<LPCWSTR>(beta));
    menu.CalcExtents();
    EXPECT_EQ(0, menu.GetBitmapExtent());
    EXPECT_EQ(0, menu.GetAcceleratorExtent());
    const int text = std::max(MenuTextWidth(L"Alpha"), MenuTextWidth(L"&Beta"));
    MEASUREITEMSTRUCT mis{ODT_MENU, 0, 1, 0, 0, reinterpret_cast<ULONG_PTR>(alpha)};
    menu.MeasureItem(&mis);
    EXPECT_EQ(static_cast<UINT>(2 + 0 + 4 + text + 3), mis.itemWidth);
    const int h = menu.GetTextHeight() + 4;
    EXPECT_EQ(static_cast<UINT>(h), mis.itemHeight);

    // Rows: Alpha [0, h), separator [h, h + 8), Beta [h + 8, 2h + 8).
    const struct {
        int y, pos, before;
    } hits[] = {
        {0, 0, 1},          {h / 2, 0, 1},      {h / 2 + 1, 0, 0}, {h, 0, 0},
        {h + 1, 1, 1},      {h + 4, 1, 1},      {h + 5, 1, 0},     {h + 8, 1, 0},
        {h + 9, 2, 1},      {2 * h + 8, 2, 0},  {2 * h + 9, -1, -1},
    };
    for (const auto& hit : hits) {
        SCOPED_TRACE(hit.y);
        CPoint pt(5, hit.y);
        int before = -1;
        EXPECT_EQ(hit.pos, menu.HitTest(&pt, &before));
        EXPECT_EQ(hit.before, before);
    }
    menu.DestroyMenu();
}

TEST(BitmapMenuAlone, DistributeSpacePutsTheAcceleratorMidwayAndTheTextFromZero)
{
    OpenMenu menu;
    CImageList list;
    ASSERT_TRUE(list.Create(16, 16, ILC_COLOR32 | ILC_MASK, 1, 1));
    CBitmap bmp;
    MakeStrip(bmp, {kRed});
    ASSERT_EQ(0, list.Add(&bmp, kMaskGreen));
    KxUiImageInfo image(&list, 0, FALSE, -1);
    menu.SetExtents(16, 60, 30, 13);

    CRect button, img, text1, text2;
    menu.DistributeSpace(0, &image, CRect(10, 100, 200, 121), button, img, text1, text2);
    EXPECT_EQ(CRect(12, 102, 28, 118), img);
    EXPECT_EQ(CRect(10, 100, 30, 120), button);
    EXPECT_EQ(CRect(22, 104, 82, 117), text1);   // 2 + 16 + 4, not the item's left + 22
    // Flush right it would be [167, 197); it moves left by (167 - 82) / 2 = 42.
    EXPECT_EQ(CRect(125, 104, 155, 117), text2);

    // No image: no button, no image, the columns unchanged.
    menu.DistributeSpace(0, nullptr, CRect(0, 0, 200, 20), button, img, text1, text2);
    EXPECT_TRUE(button.IsRectEmpty());
    EXPECT_TRUE(img.IsRectEmpty());
    EXPECT_EQ(CRect(22, 3, 82, 17), text1);
}

TEST_F(BitmapMenu, DrawsTheImageTheHotImageAndTheButtonEdges)
{
    CBitmap strip;
    MakeStrip(strip, {kRed, kBlue});
    ASSERT_TRUE(organizer.SetMenuImage(ID_T_NEW, &strip, kMaskGreen, 0, 1));
    KxUiBitmapMenu* menu = OpenFile();
    ASSERT_NE(nullptr, menu);
    const CRect item(0, 0, 160, 22);
    const CRect image(2, 3, 18, 19);  // 2 from the left, centred in 22
    const COLORREF shadow = ::GetSysColor(COLOR_BTNSHADOW), light = ::GetSysColor(COLOR_BTNHIGHLIGHT);

    KxPixelProbe plain;
    ASSERT_TRUE(plain.Create(item.Width(), item.Height()));
    DrawItemAt(menu, 0, item, 0, plain);
    EXPECT_EQ(image, CRect(plain.BoundingBox(kRed)));
    EXPECT_EQ(::GetSysColor(COLOR_MENU), plain.Pixel(0, 10));   // no edge
    EXPECT_EQ(::GetSysColor(COLOR_MENU), plain.Pixel(100, 1));  // text area
    EXPECT_GT(plain.Count(::GetSysColor(COLOR_MENUTEXT)), 0);   // the text
    plain.SaveIfFailed(L"plain");

    KxPixelProbe hot;
    ASSERT_TRUE(hot.Create(item.Width(), item.Height()));
    DrawItemAt(menu, 0, item, ODS_SELECTED, hot);
    EXPECT_EQ(0, hot.Count(kRed));
    EXPECT_EQ(image, CRect(hot.BoundingBox(kBlue)));
    EXPECT_EQ(light, hot.Pixel(0, 10));   // raised: light left and top
    EXPECT_EQ(light, hot.Pixel(10, 1));
    EXPECT_EQ(shadow, hot.Pixel(19, 10));  // dark right and bottom
    EXPECT_EQ(shadow, hot.Pixel(10, 20));
    EXPECT_EQ(::GetSysColor(COLOR_HIGHLIGHT), hot.Pixel(100, 1));
    EXPECT_EQ(::GetSysColor(COLOR_HIGHLIGHT), hot.Pixel(20, 1));  // the text area starts at the button's right
    EXPECT_GT(hot.Count(::GetSysColor(COLOR_HIGHLIGHTTEXT)), 0);
    hot.SaveIfFailed(L"hot");

    ClassicMenuColour classic;
    KxPixelProbe grayed;
    ASSERT_TRUE(grayed.Create(item.Width(), item.Height()));
    DrawItemAt(menu, 0, item, ODS_GRAYED | ODS_SELECTED, grayed);
    EXPECT_EQ(0, grayed.Count(kRed));
    EXPECT_EQ(0, grayed.Count(kBlue));
    DrawItemAt(menu, 0, item, ODS_GRAYED | ODS_SELECTED, grayed);
    EXPECT_EQ(::GetSysColor(COLOR_MENU), grayed.Pixel(0, 10));  // no raised edge on a grayed item
    grayed.SaveIfFailed(L"grayed");
    CloseMenus();
}

TEST_F(BitmapMenu, CheckedItemWithoutImageShowsTheCheckMarkOnADitheredSunkenButton)
{
    ClassicMenuColour classic;
    KxUiBitmapMenu* menu = OpenFile();
    ASSERT_NE(nullptr, menu);
    const COLORREF face = ::GetSysColor(COLOR_MENU), light = ::GetSysColor(COLOR_BTNHIGHLIGHT);
    const COLORREF shadow = ::GetSysColor(COLOR_BTNSHADOW);
    ASSERT_NE(face, light) << "the dither could not be seen";
    const CRect item(0, 0, 160, 22);
    const CRect image(2, 3, 18, 19);

    KxPixelProbe checked;
    ASSERT_TRUE(checked.Create(item.Width(), item.Height()));
    DrawItemAt(menu, 1, item, ODS_CHECKED, checked);  // "&Open..."
    EXPECT_EQ(shadow, checked.Pixel(0, 10));  // sunken: dark left and top
    EXPECT_EQ(shadow, checked.Pixel(10, 1));
    EXPECT_EQ(light, checked.Pixel(19, 10));
    // Inside the button beside the mark, the checkerboard of the two colours.
    const COLORREF a = checked.Pixel(2, 2), b = checked.Pixel(3, 2);
    EXPECT_TRUE((a == face && b == light) || (a == light && b == face)) << std::hex << a << " " << b;
    EXPECT_EQ(a, checked.Pixel(3, 3));
    EXPECT_GT(checked.Count(RGB(0, 0, 0), &image), 0);  // the check mark
    checked.SaveIfFailed(L"checked");

    KxPixelProbe unchecked;
    ASSERT_TRUE(unchecked.Create(item.Width(), item.Height()));
    DrawItemAt(menu, 0, item, 0, unchecked);  // "&New": the default list's mark stays hidden
    EXPECT_EQ(0, unchecked.Count(RGB(0, 0, 0), &image));
    EXPECT_EQ(face, unchecked.Pixel(2, 2));
    CloseMenus();
}

TEST_F(BitmapMenu, ItemsNotRecentlyUsedAreDitheredWithShadowAndHighlightLines)
{
    ClassicMenuColour classic;
    OpenFile();  // everything shown
    KxUiBitmapMenu* menu = organizer.FindBitmapMenu(hFile);
    ASSERT_NE(nullptr, menu);
    organizer.AddToRecentlyUsed(ID_T_OPEN);
    organizer.ShowOnlyRecentlyUsedItems(TRUE);  // now New (before Open) and Print are not recent
    const COLORREF face = ::GetSysColor(COLOR_MENU), light = ::GetSysColor(COLOR_BTNHIGHLIGHT);
    const COLORREF shadow = ::GetSysColor(COLOR_BTNSHADOW);
    ASSERT_NE(face, light);
    const CRect item(0, 0, 160, 22);

    // Print follows a separator (which counts as recent): shadow along the top, dither below.
    KxPixelProbe print;
    ASSERT_TRUE(print.Create(item.Width(), item.Height()));
    DrawItemAt(menu, 6, item, 0, print);
    EXPECT_EQ(shadow, print.Pixel(150, 0));
    EXPECT_NE(print.Pixel(150, 5), print.Pixel(151, 5));
    EXPECT_EQ(print.Pixel(150, 5), print.Pixel(151, 6));
    EXPECT_EQ(face, print.Pixel(5, 1));  // the check-mark column stays plain
    print.SaveIfFailed(L"print");

    // New is followed by Open, which is recent: a highlight line along the bottom (row 20,
    // the text area ends one pixel above the item's bottom).
    KxPixelProbe newItem;
    ASSERT_TRUE(newItem.Create(item.Width(), item.Height()));
    DrawItemAt(menu, 0, item, 0, newItem);
    EXPECT_EQ(light, newItem.Pixel(150, 20));
    EXPECT_NE(shadow, newItem.Pixel(150, 0));
    EXPECT_EQ(KxPixelProbe::kUnpainted, newItem.Pixel(150, 21));  // the text area stops above

    // Selected, a not-recent item is drawn as any other.
    KxPixelProbe selected;
    ASSERT_TRUE(selected.Create(item.Width(), item.Height()));
    DrawItemAt(menu, 6, item, ODS_SELECTED, selected);
    EXPECT_EQ(::GetSysColor(COLOR_HIGHLIGHT), selected.Pixel(150, 0));
    EXPECT_EQ(::GetSysColor(COLOR_HIGHLIGHT), selected.Pixel(150, 5));
    CloseMenus();
}

TEST_F(BitmapMenu, SeparatorIsAnEtchedLineAcrossTheMiddle)
{
    KxUiBitmapMenu* menu = OpenFile();
    ASSERT_NE(nullptr, menu);
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Create(100, 8));
    DrawItemAt(menu, 2, CRect(0, 0, 100, 8), 0, probe);
    const COLORREF face = ::GetSysColor(COLOR_MENU);
    for (int x : {2, 50, 96}) {
        SCOPED_TRACE(x);
        EXPECT_EQ(::GetSysColor(COLOR_BTNSHADOW), probe.Pixel(x, 3));
        EXPECT_EQ(::GetSysColor(COLOR_BTNHIGHLIGHT), probe.Pixel(x, 4));
        EXPECT_EQ(face, probe.Pixel(x, 2));
        EXPECT_EQ(face, probe.Pixel(x, 5));
    }
    EXPECT_EQ(face, probe.Pixel(1, 3));  // 2 pixels in from each side
    EXPECT_EQ(face, probe.Pixel(98, 4));
    probe.SaveIfFailed();
    CloseMenus();
}

TEST_F(BitmapMenu, ExpansionItemIsACentredChevron)
{
    organizer.ShowOnlyRecentlyUsedItems(TRUE);
    organizer.AddToRecentlyUsed(ID_T_NEW);
    KxUiBitmapMenu* menu = OpenFile();
    ASSERT_NE(nullptr, menu);
    ASSERT_EQ(ID_KXUI_SHOWALL, ::GetMenuItemID(hFile, 1));
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Create(120, 22));
    DrawItemAt(menu, 1, CRect(0, 0, 120, 22), 0, probe);
    const CRect glyph(probe.BoundingBox(::GetSysColor(COLOR_MENUTEXT)));
    ASSERT_FALSE(glyph.IsRectEmpty());
    EXPECT_NEAR(60, (glyph.left + glyph.right) / 2, 2);
    EXPECT_NEAR(11, (glyph.top + glyph.bottom) / 2, 3);
    probe.SaveIfFailed();
    CloseMenus();
}

TEST_F(BitmapMenu, MnemonicsAnswerMenuCharWithThePositionShown)
{
    OpenFile();
    const struct {
        wchar_t ch;
        int pos;
    } keys[] = {{L'n', 0}, {L'O', 1}, {L's', 3}, {L't', 4}, {L'x', 7}};
    for (const auto& k : keys) {
        SCOPED_TRACE(k.ch);
        const LRESULT r = ::SendMessageW(hwnd, WM_MENUCHAR, MAKEWPARAM(k.ch, MF_POPUP), reinterpret_cast<LPARAM>(hFile));
        EXPECT_EQ(MNC_EXECUTE, HIWORD(r));
        EXPECT_EQ(k.pos, LOWORD(r));
    }
    EXPECT_EQ(0, HIWORD(::SendMessageW(hwnd, WM_MENUCHAR, MAKEWPARAM(L'q', MF_POPUP), reinterpret_cast<LPARAM>(hFile))));
    CloseMenus();

    // With items hidden the positions are those of the items shown.
    organizer.ShowOnlyRecentlyUsedItems(TRUE);
    organizer.AddToRecentlyUsed(ID_T_NEW);
    organizer.AddToRecentlyUsed(ID_T_EXIT);
    OpenFile();  // New, separator, Exit, expansion
    const LRESULT r = ::SendMessageW(hwnd, WM_MENUCHAR, MAKEWPARAM(L'x', MF_POPUP), reinterpret_cast<LPARAM>(hFile));
    EXPECT_EQ(MAKELRESULT(2, MNC_EXECUTE), r);
    CloseMenus();
}

TEST(BitmapMenuAlone, DitherBrushIsACheckerboardOfTheTwoColours)
{
    HBRUSH brush = KxUiBitmapMenu::HBrushDitherCreate(RGB(10, 20, 30), RGB(200, 100, 50));
    ASSERT_NE(nullptr, brush);
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Create(16, 16));
    RECT all = {0, 0, 16, 16};
    ::FillRect(probe.Dc(), &all, brush);
    ::DeleteObject(brush);
    EXPECT_EQ(128, probe.Count(RGB(10, 20, 30)));
    EXPECT_EQ(128, probe.Count(RGB(200, 100, 50)));
    for (int y = 0; y < 15; ++y) {
        for (int x = 0; x < 15; ++x) {
            ASSERT_NE(probe.Pixel(x, y), probe.Pixel(x + 1, y)) << x << "," << y;
            ASSERT_NE(probe.Pixel(x, y), probe.Pixel(x, y + 1)) << x << "," << y;
        }
    }
}
