// Selection modes and options, typing into the grid, the wheel setting, column order and
// what the grid tells a virtual owner while it copies.
#include "GridTestHost.h"
#include <KxInput.h>
#include <KxTestApp.h>
#include <afxole.h>
#include <memory>

namespace {

class GridSel : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(host.Open(480, 320));
        ASSERT_TRUE(host.AddGrid(grid, 7, 6, 1, 1));
        host.notes.clear();
    }
    void TearDown() override
    {
        grid.DestroyWindow();
        host.DestroyWindow();
    }
    void Click(int row, int col, UINT mods = KxNoMod)
    {
        KxClick(grid.GetSafeHwnd(), col * 50 + 25, row * 20 + 10, mods);
    }

    GridHost host;
    KxUiGridCtrl2 grid;
};

}  // namespace

TEST_F(GridSel, RowAndColumnHeadersSelectByTheirOptions)
{
    // Without the options a header click selects nothing and says nothing.
    Click(0, 3);
    Click(4, 0);
    EXPECT_FALSE(grid.GetSelectedCellRange().IsValid());
    EXPECT_TRUE(host.notes.empty() || host.Codes() == (std::vector<int>{GVN_CLICK, GVN_CLICK}));

    grid.SetFixedColumnSelection(TRUE);
    grid.SetFixedRowSelection(TRUE);
    Click(2, 0);
    Click(4, 0, KxShift);
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(2, 1, 4, 5)) << "rows 2 to 4";
    grid.SetSelectFixedColumns(TRUE);
    Click(3, 0);
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(3, 0, 3, 5)) << "with the fixed column";

    Click(0, 2);
    Click(0, 4, KxShift);
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(1, 2, 6, 4));
    grid.SetSingleColSelection(TRUE);
    Click(0, 2);
    Click(0, 4, KxShift);
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(1, 4, 6, 4)) << "one column only";

    // The corner selects everything.
    Click(0, 0);
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(1, 1, 6, 5));
}

TEST_F(GridSel, SingleRowSelectionNeedsListModeAndReportsListMode)
{
    grid.SetSingleRowSelection(TRUE);
    EXPECT_FALSE(grid.GetSingleRowSelection()) << "the getter answers with the list-mode flag";
    grid.SetFixedColumnSelection(TRUE);
    Click(2, 0);
    Click(4, 0, KxShift);
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(2, 1, 4, 5)) << "no list mode: rows still extend";

    grid.SetListMode(TRUE);
    EXPECT_TRUE(grid.GetSingleRowSelection());
    grid.SetSingleRowSelection(FALSE);
    EXPECT_TRUE(grid.GetSingleRowSelection()) << "still the list-mode flag";
    grid.SetSingleRowSelection(TRUE);
    Click(2, 3);
    Click(5, 3, KxShift);
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(5, 1, 5, 5)) << "one whole row";
    grid.SetFocusCell(2, 2);
    KxPressKey(grid.GetSafeHwnd(), VK_DOWN, KxShift);
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(3, 1, 3, 5));
}

TEST_F(GridSel, CtrlClicksKeepEarlierRangesAndSelectionCanBeSwitchedOff)
{
    Click(1, 1);
    Click(3, 3, KxCtrl);
    Click(5, 5, KxCtrl);
    EXPECT_EQ(3, grid.GetSelectedCount());
    EXPECT_TRUE(grid.IsCellSelected(1, 1));
    EXPECT_TRUE(grid.IsCellSelected(3, 3));
    EXPECT_FALSE(grid.IsCellSelected(2, 2));
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(1, 1, 5, 5));
    EXPECT_TRUE(grid.GetItemState(3, 3) & GVIS_SELECTED);
    EXPECT_EQ(0u, grid.GetItemState(2, 2) & GVIS_SELECTED);
    Click(2, 2);
    EXPECT_EQ(1, grid.GetSelectedCount()) << "a plain click starts over";

    grid.EnableSelection(FALSE);
    EXPECT_FALSE(grid.GetSelectedCellRange().IsValid());
    host.notes.clear();
    Click(4, 4);
    EXPECT_FALSE(grid.GetSelectedCellRange().IsValid());
    EXPECT_EQ((std::vector<int>{GVN_CLICK}), host.Codes());
    grid.SetSelectedRange(1, 1, 2, 2);
    EXPECT_FALSE(grid.GetSelectedCellRange().IsValid());
}

TEST_F(GridSel, TypingStartsAnEditOfTheFocusCell)
{
    grid.SetFocusCell(3, 2);
    KxTypeText(grid.GetSafeHwnd(), L"7");
    EXPECT_EQ((std::vector<GridNote>{{GVN_BEGINLABELEDIT, 3, 2}}), host.notes);

    // Escape, a Ctrl chord and a Tab the grid handles itself start nothing.
    host.notes.clear();
    grid.SendMessage(WM_CHAR, VK_ESCAPE, 1);
    grid.SendMessage(WM_CHAR, VK_TAB, 1);
    {
        KxKeyState ctrl(KxCtrl);
        grid.SendMessage(WM_CHAR, 'a', 1);
    }
    EXPECT_TRUE(host.notes.empty());
    grid.SetHandleTabKey(FALSE);
    grid.SendMessage(WM_CHAR, VK_TAB, 1);
    EXPECT_EQ((std::vector<GridNote>{{GVN_BEGINLABELEDIT, 3, 2}}), host.notes);

    // A read-only cell is not edited: the owner is not asked.
    host.notes.clear();
    grid.GetCell(3, 2)->SetState(grid.GetCell(3, 2)->GetState() | GVIS_READONLY);
    KxTypeText(grid.GetSafeHwnd(), L"x");
    EXPECT_TRUE(host.notes.empty());
}

TEST_F(GridSel, WheelSettingIsReadAgainWhenTheSystemSaysItChanged)
{
    UINT saved = 3;
    ASSERT_TRUE(SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &saved, 0));
    grid.SetRowCount(200);
    GridHost::UniformSizes(grid);

    // Page scrolling: one page per notch.
    ASSERT_TRUE(SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, WHEEL_PAGESCROLL, NULL, 0));
    grid.SendMessage(WM_SETTINGCHANGE, SPI_SETWHEELSCROLLLINES, 0);
    grid.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -120), MAKELPARAM(10, 10));
    KxPumpMessages();
    const int afterPage = grid.GetTopleftNonFixedCell().row;

    ASSERT_TRUE(SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, 1, NULL, 0));
    grid.SendMessage(WM_SETTINGCHANGE, SPI_SETWHEELSCROLLLINES, 0);
    grid.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -120), MAKELPARAM(10, 10));
    KxPumpMessages();
    const int afterLine = grid.GetTopleftNonFixedCell().row;
    SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, saved, NULL, 0);
    grid.SendMessage(WM_SETTINGCHANGE, SPI_SETWHEELSCROLLLINES, 0);

    // The view shows about eleven rows of 20 pixels below the header.
    EXPECT_GE(afterPage, 9);
    EXPECT_EQ(afterPage + 1, afterLine);

    // A wheel turn smaller than a notch scrolls nothing.
    grid.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -30), MAKELPARAM(10, 10));
    KxPumpMessages();
    EXPECT_EQ(afterLine, grid.GetTopleftNonFixedCell().row);
}

TEST_F(GridSel, ColumnOrderTableRemapsCellsAndRefusesNonPermutations)
{
    EXPECT_FALSE(grid.SetColumnOrder({0, 1, 2}));
    EXPECT_FALSE(grid.SetColumnOrder({0, 1, 2, 3, 4, 4}));
    EXPECT_FALSE(grid.SetColumnOrder({0, 1, 2, 3, 4, 9}));
    EXPECT_EQ(L"r2c5", grid.GetItemText(2, 5));
    ASSERT_TRUE(grid.SetColumnOrder({0, 5, 4, 3, 2, 1}));
    EXPECT_EQ(L"r2c5", grid.GetItemText(2, 1));
    EXPECT_EQ(L"r2c1", grid.GetItemText(2, 5));
    // Inserting a column keeps the order of the others.
    grid.InsertColumn(L"new", DT_LEFT, 1);
    EXPECT_EQ(L"new", grid.GetItemText(0, 1));
    EXPECT_EQ(L"r2c5", grid.GetItemText(2, 2));
}

TEST_F(GridSel, VirtualCopyIsFramedByCacheHints)
{
    ASSERT_TRUE(AfxOleInit());
    grid.DeleteAllItems();
    grid.SetVirtualMode(TRUE);
    grid.SetColumnCount(4);
    grid.SetRowCount(100000);
    grid.SetFixedRowCount(1);
    host.onDispInfo = [](GV2_DISPINFO* info) { info->item.strText.Format(L"%d.%d", info->item.row, info->item.col); };
    grid.SetSelectedRange(50000, 1, 50001, 2);
    host.cacheHints.clear();
    host.notes.clear();
    std::unique_ptr<COleDataSource> src(grid.CopyTextFromGrid());
    ASSERT_NE(nullptr, src);
    ASSERT_EQ(2u, host.cacheHints.size());
    EXPECT_TRUE(host.cacheHints[0] == KxUiCellRange2(50000, 1, 50001, 2));
    EXPECT_TRUE(host.cacheHints[1] == KxUiCellRange2(-1, -1, -1, -1));
    EXPECT_EQ(4u, host.notes.size()) << "one request per copied cell";

    COleDataObject obj;
    obj.Attach(src->GetDataObject(), FALSE);
    HGLOBAL h = obj.GetGlobalData(CF_TEXT);
    ASSERT_NE(nullptr, h);
    EXPECT_EQ(std::string("50000.1\t50000.2\r\n50001.1\t50001.2"), std::string(static_cast<const char*>(GlobalLock(h))));
    GlobalUnlock(h);
    GlobalFree(h);

    // Nothing stored, nothing to paste into or load.
    EXPECT_FALSE(grid.PasteTextToGrid(KxUiCellID2(2, 2), &obj, TRUE));
    EXPECT_FALSE(grid.Load(L"whatever.csv", L','));
}

TEST_F(GridSel, LoadTakesRaggedLinesAndKeepsTheFixedCounts)
{
    wchar_t dir[MAX_PATH], path[MAX_PATH];
    GetTempPathW(MAX_PATH, dir);
    GetTempFileNameW(dir, L"kxg", 0, path);
    {
        CStdioFile f(path, CFile::modeCreate | CFile::modeWrite | CFile::typeText);
        f.WriteString(L"Part;Qty;Note\n");
        f.WriteString(L"Bolt;12\n");
        f.WriteString(L"\n");
        f.WriteString(L"Nut;40;;extra\n");
    }
    ASSERT_TRUE(grid.Load(path, L';'));
    EXPECT_EQ(4, grid.GetRowCount());
    EXPECT_EQ(4, grid.GetColumnCount());
    EXPECT_EQ(1, grid.GetFixedRowCount());
    EXPECT_EQ(1, grid.GetFixedColumnCount());
    EXPECT_EQ(L"Qty", grid.GetItemText(0, 1));
    EXPECT_EQ(L"", grid.GetItemText(1, 2));
    EXPECT_EQ(L"", grid.GetItemText(2, 0));
    EXPECT_EQ(L"extra", grid.GetItemText(3, 3));

    // Saved again with the same delimiter, the short lines come back padded.
    ASSERT_TRUE(grid.Save(path, L';'));
    CStdioFile f(path, CFile::modeRead | CFile::typeText);
    CString line;
    ASSERT_TRUE(f.ReadString(line));
    EXPECT_EQ(L"Part;Qty;Note;", line);
    ASSERT_TRUE(f.ReadString(line));
    EXPECT_EQ(L"Bolt;12;;", line);
    f.Close();
    DeleteFileW(path);
}

TEST_F(GridSel, ModifiedFlagsFollowEditsAndClear)
{
    EXPECT_FALSE(grid.GetModified());
    grid.OnEndEditCell(2, 2, L"changed");
    EXPECT_TRUE(grid.GetModified());
    EXPECT_TRUE(grid.GetModified(2, -1));
    EXPECT_FALSE(grid.GetModified(3, -1));
    grid.SetModified(FALSE);
    EXPECT_FALSE(grid.GetModified());
    EXPECT_EQ(L"changed", grid.GetItemText(2, 2));
}

TEST_F(GridSel, DraggingARowDividerInTheFixedColumnResizesTheRow)
{
    KxDrag(grid.GetSafeHwnd(), CPoint(20, 59), CPoint(20, 79));
    EXPECT_EQ(40, grid.GetRowHeight(2));
    EXPECT_EQ(20, grid.GetRowHeight(3));
    // Dragged above its top the row is hidden, not negative.
    KxDrag(grid.GetSafeHwnd(), CPoint(20, 99), CPoint(20, 10));
    EXPECT_EQ(0, grid.GetRowHeight(3));
}

TEST_F(GridSel, LoadRefusesAFileThatWouldMakeAnAbsurdTable)
{
    wchar_t dir[MAX_PATH], path[MAX_PATH];
    GetTempPathW(MAX_PATH, dir);
    GetTempFileNameW(dir, L"kxg", 0, path);
    {
        // A thousand lines, one of them twenty thousand fields wide: twenty million cells.
        CStdioFile f(path, CFile::modeCreate | CFile::modeWrite | CFile::typeText);
        f.WriteString(CString(L';', 20000) + L"\n");
        for (int i = 0; i < 999; ++i)
            f.WriteString(L"a;b\n");
    }
    KxTestApp& app = KxTestApp::Get();
    const size_t boxes = app.Boxes().size();
    EXPECT_FALSE(grid.Load(path, L';'));
    ASSERT_EQ(boxes + 1, app.Boxes().size());
    EXPECT_EQ(CString(L"Unable to load grid data"), CString(app.Boxes().back().text));
    EXPECT_EQ(7, grid.GetRowCount()) << "the grid is untouched";
    EXPECT_EQ(L"r3c3", grid.GetItemText(3, 3));
    DeleteFileW(path);
}
