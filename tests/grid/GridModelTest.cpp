// The grid's windowless parts: the row/column axis against an independent walk over plain
// sizes, cell ids and ranges, and the cell classes with their default cells.
#include <KxUiGridCtrl2.h>
#include <random>
#include <vector>

namespace {

// The plain model the axis must agree with: a vector of sizes, walked entry by entry.
struct NaiveAxis {
    std::vector<int> sizes;
    int fixed = 0;
    LONGLONG Start(int i) const
    {
        LONGLONG s = 0;
        for (int k = 0; k < i; ++k)
            s += sizes[k];
        return s;
    }
    int IndexAt(LONGLONG off) const
    {
        LONGLONG s = 0;
        for (size_t k = 0; k < sizes.size(); ++k) {
            if (off >= s && off < s + sizes[k])
                return static_cast<int>(k);
            s += sizes[k];
        }
        return -1;
    }
    int MaxTop(int extent) const
    {
        const LONGLONG total = Start(static_cast<int>(sizes.size()));
        for (int t = fixed; t < static_cast<int>(sizes.size()); ++t)
            if (total - Start(t) <= extent)
                return t;
        return sizes.empty() ? fixed : static_cast<int>(sizes.size()) - 1;
    }
};

}  // namespace

TEST(GridAxis, AgreesWithAPlainWalkUnderRandomEdits)
{
    std::mt19937 rng(20261124);
    for (int round = 0; round < 40; ++round) {
        KxUiGridAxis2 axis;
        NaiveAxis ref;
        const int def = 1 + static_cast<int>(rng() % 30);
        axis.SetDefaultSize(def);
        const int n = static_cast<int>(rng() % 1500);
        axis.SetCount(n);
        ref.sizes.assign(n, def);
        for (int op = 0; op < 60; ++op) {
            const int k = static_cast<int>(rng() % 4);
            const int cnt = static_cast<int>(ref.sizes.size());
            if (k == 0 && cnt > 0) {
                const int i = static_cast<int>(rng() % cnt), sz = static_cast<int>(rng() % 3) == 0 ? 0 : static_cast<int>(rng() % 40);
                ASSERT_TRUE(axis.SetSize(i, sz));
                ref.sizes[i] = sz;
            } else if (k == 1) {
                const int i = static_cast<int>(rng() % (cnt + 1)), sz = static_cast<int>(rng() % 40);
                ASSERT_TRUE(axis.Insert(i, sz));
                ref.sizes.insert(ref.sizes.begin() + i, sz);
            } else if (k == 2 && cnt > 0) {
                const int i = static_cast<int>(rng() % cnt);
                ASSERT_TRUE(axis.Remove(i));
                ref.sizes.erase(ref.sizes.begin() + i);
            } else if (cnt > 1) {
                const int i = static_cast<int>(rng() % cnt), j = static_cast<int>(rng() % cnt);
                axis.Swap(i, j);
                std::swap(ref.sizes[i], ref.sizes[j]);
            }
        }
        const int cnt = static_cast<int>(ref.sizes.size());
        ref.fixed = cnt > 0 ? static_cast<int>(rng() % std::min(cnt, 4)) : 0;
        axis.SetFixedCount(ref.fixed);
        ASSERT_EQ(cnt, axis.GetCount());
        const LONGLONG total = ref.Start(cnt);
        ASSERT_EQ(total, axis.GetTotal());
        for (int probe = 0; probe < 50 && cnt > 0; ++probe) {
            const int i = static_cast<int>(rng() % (cnt + 1));
            ASSERT_EQ(ref.Start(i), axis.GetStart(i)) << "round " << round << " entry " << i;
            const LONGLONG off = total > 0 ? static_cast<LONGLONG>(rng() % (total + 2)) - 1 : 0;
            ASSERT_EQ(ref.IndexAt(off), axis.IndexAt(off)) << "round " << round << " offset " << off;
            const int extent = static_cast<int>(rng() % 600);
            // Hidden entries just above the top change nothing on screen: compare offsets.
            ASSERT_EQ(ref.Start(ref.MaxTop(extent)), ref.Start(axis.GetMaxTop(extent)))
                << "round " << round << " extent " << extent;
        }
        // The walks skip hidden entries and honour their bounds.
        for (int i = 0; i < cnt; i += 7) {
            int first = -1;
            for (int k = i; k < cnt && first < 0; ++k)
                if (ref.sizes[k] > 0)
                    first = k;
            ASSERT_EQ(first, axis.FirstVisibleFrom(i));
            int last = -1;
            for (int k = i; k >= ref.fixed && last < 0; --k)
                if (ref.sizes[k] > 0)
                    last = k;
            ASSERT_EQ(last, axis.LastVisibleFrom(i, ref.fixed));
        }
    }
}

TEST(GridAxis, TenMillionRowsStayExactBeyondTwoToThe31Pixels)
{
    KxUiGridAxis2 rows;
    rows.SetDefaultSize(300);
    ASSERT_TRUE(rows.SetCount(10000000));
    rows.SetFixedCount(1);
    EXPECT_EQ(0u, rows.GetStorageBytes()) << "uniform sizes are not stored per row";
    EXPECT_EQ(3000000000LL, rows.GetTotal());
    EXPECT_EQ(9999999, rows.IndexAt(2999999999LL));
    EXPECT_EQ(-1, rows.IndexAt(3000000000LL));
    // 600 px show two whole rows: the top that shows the last row.
    EXPECT_EQ(9999998, rows.GetMaxTop(600));
    EXPECT_EQ(9999980, rows.PageForward(9999970, 600 * 10)) << "clamped to the last page";
    EXPECT_EQ(9999980, rows.PageForward(9999960, 600 * 10));
    EXPECT_EQ(1, rows.PageBack(2, 600));

    // One row differs: every offset after it moves by the difference, still exact.
    ASSERT_TRUE(rows.SetSize(5000000, 0));
    EXPECT_EQ(3000000000LL - 300, rows.GetTotal());
    EXPECT_EQ(5000001, rows.IndexAt(5000000LL * 300));
    EXPECT_EQ(5000001, rows.FirstVisibleFrom(5000000));
    EXPECT_EQ(4999999, rows.LastVisibleFrom(5000000, 1));
    EXPECT_GT(rows.GetStorageBytes(), 0u);
}

TEST(GridAxis, RefusesBadIndexesAndCounts)
{
    KxUiGridAxis2 axis;
    axis.SetDefaultSize(10);
    EXPECT_FALSE(axis.SetCount(-1));
    ASSERT_TRUE(axis.SetCount(3));
    EXPECT_FALSE(axis.SetFixedCount(-2));
    EXPECT_TRUE(axis.SetFixedCount(5));
    EXPECT_EQ(3, axis.GetFixedCount()) << "the fixed count never exceeds the count";
    EXPECT_FALSE(axis.SetSize(3, 5));
    EXPECT_FALSE(axis.SetSize(-1, 5));
    EXPECT_FALSE(axis.SetSize(0, -5));
    EXPECT_EQ(0, axis.GetSize(7));
    EXPECT_FALSE(axis.Insert(5, 10));
    EXPECT_FALSE(axis.Remove(3));
    EXPECT_EQ(30, axis.GetTotal());
}

TEST(GridCellId, ValidityEqualityAndRanges)
{
    EXPECT_FALSE(KxUiCellID2().IsValid());
    EXPECT_FALSE(KxUiCellID2(0, -1).IsValid());
    EXPECT_TRUE(KxUiCellID2(0, 0).IsValid());
    EXPECT_TRUE(KxUiCellID2(2, 3) == KxUiCellID2(2, 3));
    EXPECT_TRUE(KxUiCellID2(2, 3) != KxUiCellID2(3, 2));

    const KxUiCellRange2 a(1, 1, 4, 5), b(3, 0, 9, 2);
    EXPECT_TRUE(a.Intersect(b) == KxUiCellRange2(3, 1, 4, 2));
    EXPECT_FALSE(a.Intersect(KxUiCellRange2(5, 6, 7, 7)).IsValid());
    EXPECT_EQ(20, a.Count());
    EXPECT_EQ(0, KxUiCellRange2().Count());
    EXPECT_FALSE(KxUiCellRange2(3, 3, 2, 3).IsValid()) << "corners out of order";
    // Ten million rows by a thousand columns overflow 32 bits.
    EXPECT_EQ(10000000000LL, KxUiCellRange2(0, 0, 9999999, 999).Count());
}

// ---------------------------------------------------------------------------------------------
// Cells

TEST(GridCell, NewCellReadsItsDefaultCellUntilSet)
{
    KxUiGridCtrl2 grid(NULL, 4, 4, 1, 1);
    KxUiGridCell2* cell = static_cast<KxUiGridCell2*>(grid.GetCell(2, 2));
    ASSERT_NE(nullptr, cell);
    KxUiGridDefaultCell2* def = grid.GetDefaultCell(FALSE, FALSE);

    EXPECT_EQ(GVIS_HOT, cell->GetState());
    EXPECT_EQ(-1, cell->GetImage());
    EXPECT_EQ(CLR_DEFAULT, cell->GetTextClr());
    EXPECT_EQ(CLR_DEFAULT, cell->GetBackClr());
    EXPECT_TRUE(cell->IsDefaultFont());
    EXPECT_EQ(def->GetFormat(), cell->GetFormat());
    EXPECT_EQ(def->GetMargin(), cell->GetMargin());
    EXPECT_EQ(def->GetFont(), cell->GetFont());
    EXPECT_EQ(def->GetFontObject(), cell->GetFontObject());
    EXPECT_EQ(RGB(236, 251, 255), cell->GetHotBkClr());
    EXPECT_EQ(RGB(142, 230, 255), cell->GetHotFrameClr());

    // Restyling the default cell restyles the cell; its own setting wins once made.
    def->SetFormat(DT_RIGHT | DT_SINGLELINE);
    def->SetMargin(7);
    EXPECT_EQ(static_cast<DWORD>(DT_RIGHT | DT_SINGLELINE), cell->GetFormat());
    EXPECT_EQ(7u, cell->GetMargin());
    cell->SetFormat(DT_CENTER);
    cell->SetMargin(1);
    def->SetMargin(9);
    EXPECT_EQ(static_cast<DWORD>(DT_CENTER), cell->GetFormat());
    EXPECT_EQ(1u, cell->GetMargin());

    // A cell of its own font draws with the process-wide font object built from it.
    LOGFONT lf = *def->GetFont();
    lf.lfHeight = -20;
    cell->SetFont(&lf);
    EXPECT_FALSE(cell->IsDefaultFont());
    CFont* pFont = cell->GetFontObject();
    ASSERT_NE(nullptr, pFont);
    EXPECT_NE(def->GetFontObject(), pFont);
    LOGFONT got = {};
    pFont->GetLogFont(&got);
    EXPECT_EQ(-20, got.lfHeight);
    cell->SetFont(NULL);
    EXPECT_TRUE(cell->IsDefaultFont());

    // Without a grid, inherited values read as 0 and the font as none.
    KxUiGridCell2 loose;
    EXPECT_EQ(nullptr, loose.GetDefaultCell());
    EXPECT_EQ(0u, loose.GetFormat());
    EXPECT_EQ(0u, loose.GetMargin());
    EXPECT_EQ(nullptr, loose.GetFont());
}

TEST(GridCell, EachKindOfPositionHasItsDefaultCell)
{
    KxUiGridCtrl2 grid(NULL, 5, 5, 2, 1);
    struct Case {
        int row, col;
        KxUiGridDefaultCell2* expected;
    } cases[] = {
        {0, 0, grid.GetDefaultCell(TRUE, TRUE)},    // fixed row and fixed column: corner
        {1, 0, grid.GetDefaultCell(TRUE, TRUE)},
        {0, 3, grid.GetDefaultCell(TRUE, FALSE)},   // fixed row only
        {3, 0, grid.GetDefaultCell(FALSE, TRUE)},   // fixed column only
        {3, 3, grid.GetDefaultCell(FALSE, FALSE)},  // ordinary
    };
    // The four default cells are distinct objects.
    EXPECT_NE(cases[0].expected, cases[2].expected);
    EXPECT_NE(cases[2].expected, cases[3].expected);
    EXPECT_NE(cases[3].expected, cases[4].expected);
    for (const Case& c : cases) {
        KxUiGridCellBase2* cell = grid.GetCell(c.row, c.col);
        ASSERT_NE(nullptr, cell);
        EXPECT_EQ(c.expected, cell->GetDefaultCell()) << c.row << "," << c.col;
    }
    // The state queries give the bit itself.
    KxUiGridCellBase2* corner = grid.GetCell(1, 0);
    EXPECT_EQ(static_cast<BOOL>(GVIS_FIXEDROW), corner->IsFixedRow());
    EXPECT_EQ(static_cast<BOOL>(GVIS_FIXEDCOL), corner->IsFixedCol());
    EXPECT_EQ(static_cast<BOOL>(GVIS_FIXED), corner->IsFixed());

    // The fixed default cells take the grid's fixed background, the ordinary one the cell
    // background; all take the grid's text colour.
    grid.SetFixedBkColor(RGB(1, 2, 3));
    grid.SetTextBkColor(RGB(4, 5, 6));
    EXPECT_EQ(RGB(1, 2, 3), grid.GetDefaultCell(TRUE, FALSE)->GetBackClr());
    EXPECT_EQ(RGB(1, 2, 3), grid.GetDefaultCell(TRUE, TRUE)->GetBackClr());
    EXPECT_EQ(RGB(4, 5, 6), grid.GetDefaultCell(FALSE, FALSE)->GetBackClr());
}

TEST(GridCell, DefaultCellSizesComeFromItsFont)
{
    KxUiGridDefaultCell2 def;
    EXPECT_EQ(static_cast<DWORD>(DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS),
              def.GetFormat());
    EXPECT_EQ(0u, def.GetStyle());
    ASSERT_NE(nullptr, def.GetFont());

    // The message font, measured independently on a screen context.
    NONCLIENTMETRICSW ncm = {};
    ncm.cbSize = 504;
    ASSERT_TRUE(SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, ncm.cbSize, &ncm, 0));
    EXPECT_STREQ(ncm.lfMessageFont.lfFaceName, def.GetFont()->lfFaceName);

    LOGFONT big = ncm.lfMessageFont;
    big.lfHeight = -32;
    def.SetFont(&big);
    HDC dc = GetDC(NULL);
    HFONT hf = CreateFontIndirectW(&big);
    HGDIOBJ old = SelectObject(dc, hf);
    SIZE blank, xs;
    GetTextExtentPoint32W(dc, L" ", 1, &blank);
    GetTextExtentPoint32W(dc, L" XXXXXXXXXXXX ", 14, &xs);
    SelectObject(dc, old);
    DeleteObject(hf);
    ReleaseDC(NULL, dc);
    EXPECT_EQ(static_cast<UINT>(blank.cx), def.GetMargin());
    EXPECT_EQ(xs.cx, def.GetWidth());
    EXPECT_EQ(xs.cy * 3 / 2, def.GetHeight());
    LOGFONT got = {};
    def.GetFontObject()->GetLogFont(&got);
    EXPECT_EQ(-32, got.lfHeight);

    // A null font changes nothing; a default cell holds no data.
    def.SetFont(NULL);
    EXPECT_EQ(-32, def.GetFont()->lfHeight);
    def.SetData(99);
    EXPECT_EQ(0, def.GetData());
}

TEST(GridCell, ResetAssignAndDynamicCreation)
{
    KxUiGridCtrl2 grid(NULL, 2, 2);
    KxUiGridCell2 a;
    a.SetGrid(&grid);
    a.SetText(L"alpha");
    a.SetImage(3);
    a.SetData(0x123456789LL);
    a.SetState(GVIS_READONLY | GVIS_MODIFIED);
    a.SetFormat(DT_RIGHT);
    a.SetTextClr(RGB(1, 1, 1));
    a.SetBackClr(RGB(2, 2, 2));
    a.SetHotBkClr(RGB(3, 3, 3));
    a.SetHotFrameClr(RGB(4, 4, 4));
    LOGFONT lf = *grid.GetDefaultCell(FALSE, FALSE)->GetFont();
    lf.lfWeight = FW_BOLD;
    a.SetFont(&lf);
    a.SetMargin(5);

    // operator= copies through the virtual getters and setters, into another class too.
    CObject* obj = RUNTIME_CLASS(KxUiGridCell2)->CreateObject();
    ASSERT_NE(nullptr, obj);
    ASSERT_TRUE(obj->IsKindOf(RUNTIME_CLASS(KxUiGridCellBase2)));
    KxUiGridCell2& b = *static_cast<KxUiGridCell2*>(obj);
    b = a;
    EXPECT_STREQ(L"alpha", b.GetText());
    EXPECT_EQ(3, b.GetImage());
    EXPECT_EQ(0x123456789LL, b.GetData());
    EXPECT_EQ(static_cast<DWORD>(GVIS_READONLY | GVIS_MODIFIED), b.GetState());
    EXPECT_EQ(static_cast<DWORD>(DT_RIGHT), b.GetFormat());
    EXPECT_EQ(RGB(1, 1, 1), b.GetTextClr());
    EXPECT_EQ(RGB(2, 2, 2), b.GetBackClr());
    EXPECT_EQ(RGB(3, 3, 3), b.GetHotBkClr());
    EXPECT_EQ(RGB(4, 4, 4), b.GetHotFrameClr());
    ASSERT_FALSE(b.IsDefaultFont());
    EXPECT_EQ(FW_BOLD, b.GetFont()->lfWeight);
    EXPECT_NE(a.GetFont(), b.GetFont()) << "the font is copied, not shared";
    EXPECT_EQ(5u, b.GetMargin());
    EXPECT_EQ(&grid, b.GetGrid());

    b.Reset();
    EXPECT_EQ(GVIS_HOT, b.GetState());
    EXPECT_STREQ(L"", b.GetText());
    EXPECT_EQ(-1, b.GetImage());
    EXPECT_TRUE(b.IsDefaultFont());
    EXPECT_EQ(nullptr, b.GetGrid());
    EXPECT_EQ(0u, b.GetFormat()) << "no grid, no default cell";
    delete obj;

    CObject* d = RUNTIME_CLASS(KxUiGridDefaultCell2)->CreateObject();
    ASSERT_NE(nullptr, d);
    EXPECT_TRUE(d->IsKindOf(RUNTIME_CLASS(KxUiGridCell2)));
    delete d;

    // The base cell is not editable and accepts every text.
    EXPECT_FALSE(a.Edit(0, 0, CRect(0, 0, 10, 10), CPoint(-1, -1), 1, 'x'));
    EXPECT_TRUE(a.ValidateEdit(L"anything"));
    EXPECT_FALSE(a.IsEditing());
}

TEST(GridCell, DrawRefusesWhatCannotBeDrawn)
{
    KxUiGridCtrl2 grid(NULL, 2, 2);
    KxUiGridCellBase2* cell = grid.GetCell(1, 1);
    HDC screen = GetDC(NULL);
    CDC dc;
    dc.Attach(CreateCompatibleDC(screen));
    ReleaseDC(NULL, screen);
    EXPECT_FALSE(cell->Draw(NULL, 1, 1, CRect(0, 0, 10, 10)));
    EXPECT_FALSE(cell->Draw(&dc, 1, 1, CRect(0, 0, 0, 10)));
    EXPECT_FALSE(cell->Draw(&dc, 1, 1, CRect(5, 0, 4, 10)));
    EXPECT_FALSE(cell->Draw(&dc, 1, 1, CRect(0, 5, 10, 5)));
    KxUiGridCell2 loose;
    EXPECT_FALSE(loose.Draw(&dc, 1, 1, CRect(0, 0, 10, 10))) << "no grid";
    EXPECT_TRUE(cell->Draw(&dc, 1, 1, CRect(0, 0, 10, 10)));
    DeleteDC(dc.Detach());
}
