// What the grid draws, read back from its pixels: selected, hot and focus-framed cells, the
// raised and sunken headers, the sort triangle and the image box.
#include "GridTestHost.h"
#include <KxPixelProbe.h>

namespace {

const COLORREF kHotBk = RGB(236, 251, 255);
const COLORREF kHotFrame = RGB(142, 230, 255);

class GridDraw : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(host.Open(480, 320));
        ASSERT_TRUE(host.AddGrid(grid, 6, 5, 1, 1));
        for (int r = 0; r < 6; ++r)
            for (int c = 0; c < 5; ++c)
                grid.SetItemText(r, c, L"");
        MoveMouse(CPoint(350, 200));   // outside every cell: nothing is hot
    }
    void TearDown() override
    {
        probe.SaveIfFailed();
        grid.DestroyWindow();
        host.DestroyWindow();
    }
    void MoveMouse(CPoint p) { grid.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(p.x, p.y)); }
    bool Capture() { return probe.Capture(grid.GetSafeHwnd()); }
    // Cell (r, c) of the unscrolled grid: x 50c .. 50c+49, y 20r .. 20r+19; the last column and
    // row of pixels belong to the grid lines.
    static CRect Cell(int r, int c) { return CRect(c * 50, r * 20, c * 50 + 49, r * 20 + 19); }
    COLORREF Inside(int r, int c) const { return probe.Pixel(c * 50 + 25, r * 20 + 10); }

    GridHost host;
    KxUiGridCtrl2 grid;
    KxPixelProbe probe;
};

}  // namespace

TEST_F(GridDraw, SelectedHotAndFocusedCellsDrawByTheirRules)
{
    grid.SetSelectedRange(2, 2, 3, 3);
    grid.GetCell(4, 4)->SetState(grid.GetCell(4, 4)->GetState() | GVIS_READONLY);
    ASSERT_TRUE(Capture());
    EXPECT_EQ(GetSysColor(COLOR_HIGHLIGHT), Inside(2, 2)) << "selected, not hot";
    EXPECT_EQ(GetSysColor(COLOR_WINDOW), Inside(1, 1));

    // The mouse over a selected cell: the hot background wins, with the hot frame.
    MoveMouse(Cell(2, 2).CenterPoint());
    ASSERT_EQ(KxUiCellID2(2, 2), grid.GetHotCell());
    ASSERT_TRUE(Capture());
    EXPECT_EQ(kHotBk, Inside(2, 2));
    EXPECT_EQ(kHotFrame, probe.Pixel(100, 40)) << "top-left corner of the frame";
    EXPECT_EQ(kHotFrame, probe.Pixel(148, 50)) << "right edge of the frame";
    EXPECT_EQ(GetSysColor(COLOR_HIGHLIGHT), Inside(3, 3)) << "the other selected cell is not hot";

    // Read-only and fixed cells are never hot.
    MoveMouse(Cell(4, 4).CenterPoint());
    ASSERT_TRUE(Capture());
    EXPECT_EQ(GetSysColor(COLOR_WINDOW), Inside(4, 4));
    EXPECT_EQ(0, probe.Count(kHotFrame));
    MoveMouse(Cell(0, 2).CenterPoint());
    ASSERT_TRUE(Capture());
    EXPECT_EQ(0, probe.Count(kHotBk));

    // A focused cell under the mouse: focus frame in the text colour, never the hot frame.
    grid.ResetSelectedRange();
    grid.SetFocusCell(1, 3);
    MoveMouse(Cell(1, 3).CenterPoint());
    ASSERT_TRUE(Capture());
    EXPECT_EQ(kHotBk, Inside(1, 3));
    EXPECT_EQ(0, probe.Count(kHotFrame));
    EXPECT_EQ(GetSysColor(COLOR_WINDOWTEXT), probe.Pixel(150, 20));
    EXPECT_EQ(GetSysColor(COLOR_WINDOWTEXT), probe.Pixel(175, 38));

    // Without focus framing the focus cell has no frame at all.
    grid.SetFrameFocusCell(FALSE);
    MoveMouse(CPoint(350, 200));
    ASSERT_TRUE(Capture());
    EXPECT_EQ(GetSysColor(COLOR_WINDOW), probe.Pixel(150, 20));
}

TEST_F(GridDraw, FixedCellsAreRaisedAndTheFocusHeadersSunken)
{
    grid.SetTrackFocusCell(TRUE);
    grid.SetFocusCell(3, 2);
    ASSERT_TRUE(Capture());
    const COLORREF light = GetSysColor(COLOR_3DHIGHLIGHT), dark = GetSysColor(COLOR_3DDKSHADOW);
    // Column header 4 (not the focus column): raised.
    const CRect h = Cell(0, 4);
    EXPECT_EQ(light, probe.Pixel(h.left + 10, h.top));
    EXPECT_EQ(light, probe.Pixel(h.left, h.top + 10));
    EXPECT_EQ(dark, probe.Pixel(h.right, h.top + 10));
    EXPECT_EQ(dark, probe.Pixel(h.left + 10, h.bottom));
    EXPECT_EQ(GetSysColor(COLOR_3DFACE), probe.Pixel(h.left + 25, h.top + 10));
    // The focus column's header and the focus row's header look pressed: no light top-left.
    for (const CRect& s : {Cell(0, 2), Cell(3, 0)}) {
        EXPECT_NE(light, probe.Pixel(s.left + 10, s.top)) << s.left << "," << s.top;
        EXPECT_NE(light, probe.Pixel(s.left, s.top + 10)) << s.left << "," << s.top;
    }
    // Without tracking every header is raised.
    grid.SetTrackFocusCell(FALSE);
    ASSERT_TRUE(Capture());
    EXPECT_EQ(light, probe.Pixel(Cell(0, 2).left + 10, 0));
}

TEST_F(GridDraw, SortTriangleStandsAtTheRightOfTheHeader)
{
    ASSERT_TRUE(grid.SortTextItems(2, TRUE));
    ASSERT_TRUE(Capture());
    // Its size is the height of "M" in the header font less 4, two pixels above the bottom of
    // the header less its relief and margin.
    KxUiGridDefaultCell2* def = grid.GetDefaultCell(TRUE, FALSE);
    CClientDC dc(&grid);
    CFont* old = dc.SelectObject(def->GetFontObject());
    int s = dc.GetTextExtent(L"M", 1).cy - 4;
    dc.SelectObject(old);
    const int m = static_cast<int>(def->GetMargin());
    const CRect c = Cell(0, 2);
    CRect box(c.left + 1 + m, c.top + 1 + m, c.right - 1 - m + 1, c.bottom - 1 - m + 1);
    if (s >= box.Height())
        s = box.Height() - 4;
    ASSERT_GT(s, 0);
    const int top = box.bottom - 2 - s, left = box.right - s;
    const COLORREF shadow = GetSysColor(COLOR_3DSHADOW);
    const CRect got = probe.BoundingBox(shadow, &c);
    EXPECT_EQ(CRect(left, top, left + s + 1, top + s + 1), got);
    // Ascending points up: the top row is narrower than the bottom one.
    const CRect topRow(got.left, got.top, got.right, got.top + 1), bottomRow(got.left, got.bottom - 1, got.right, got.bottom);
    EXPECT_LT(probe.Count(shadow, &topRow), probe.Count(shadow, &bottomRow));
    const CRect next = Cell(0, 3);
    EXPECT_EQ(0, probe.Count(shadow, &next)) << "only the sort column has it";

    ASSERT_TRUE(grid.SortTextItems(2, FALSE));
    ASSERT_TRUE(Capture());
    const CRect down = probe.BoundingBox(shadow, &c);
    EXPECT_EQ(got, down);
    const CRect topRow2(down.left, down.top, down.right, down.top + 1),
        bottomRow2(down.left, down.bottom - 1, down.right, down.bottom);
    EXPECT_GT(probe.Count(shadow, &topRow2), probe.Count(shadow, &bottomRow2));
}

TEST_F(GridDraw, ImageSitsInASquareBoxAsWideAsTheCellIsHigh)
{
    // One 16 x 16 image of a colour nothing else uses.
    const COLORREF red = RGB(200, 10, 10);
    HIMAGELIST hil = ImageList_Create(16, 16, ILC_COLOR24, 1, 1);
    ASSERT_NE(nullptr, hil);
    HDC screen = GetDC(NULL);
    HBITMAP bmp = CreateCompatibleBitmap(screen, 16, 16);
    HDC mem = CreateCompatibleDC(screen);
    HGDIOBJ oldBmp = SelectObject(mem, bmp);
    HBRUSH brush = CreateSolidBrush(red);
    RECT all = {0, 0, 16, 16};
    FillRect(mem, &all, brush);
    DeleteObject(brush);
    SelectObject(mem, oldBmp);
    DeleteDC(mem);
    ReleaseDC(NULL, screen);
    ASSERT_EQ(0, ImageList_Add(hil, bmp, NULL));
    DeleteObject(bmp);
    CImageList images;
    images.Attach(hil);
    grid.SetImageList(&images);

    grid.SetColumnWidth(2, 120);
    grid.SetRowHeight(2, 40);
    grid.SetItemImage(2, 2, 0);
    grid.SetItemText(2, 2, L"Widget");
    ASSERT_TRUE(Capture());
    // Cell (2, 2) now covers x 100 .. 218, y 40 .. 78 (the grid lines take 219 and 79).
    const int m = static_cast<int>(grid.GetDefaultCell(FALSE, FALSE)->GetMargin());
    const CRect rc(100 + m, 40 + m, 220 - m, 80 - m);
    const int h = rc.Height();
    const CPoint at(rc.left + (h - 16) / 2, rc.top + (h - 16) / 2);
    EXPECT_EQ(CRect(at.x, at.y, at.x + 16, at.y + 16), probe.BoundingBox(red));
    // The text starts after the image width plus one plus the margin.
    const CRect cellArea(100, 40, 219, 79);
    const CRect text = probe.BoundingBox(GetSysColor(COLOR_WINDOWTEXT), &cellArea);
    ASSERT_FALSE(text.IsRectEmpty());
    EXPECT_GE(text.left, rc.left + 17 + m);

    // A cell too low for the image draws none.
    grid.SetRowHeight(2, 12);
    ASSERT_TRUE(Capture());
    EXPECT_EQ(0, probe.Count(red));
    grid.SetImageList(NULL);
}
