// The grid in real windows: creation, counts and bad input, hit testing, the keyboard table,
// the mouse, the wheel, notifications in order, scrolling a ten-million-row virtual grid,
// sorting, the clipboard and files.
#include "GridTestHost.h"
#include <KxInput.h>
#include <KxMsgRecorder.h>
#include <KxTestApp.h>
#include <afxole.h>
#include <fstream>
#include <iterator>

namespace {

class Grid : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(host.Open(480, 320)); }
    void TearDown() override
    {
        if (grid.GetSafeHwnd())
            grid.DestroyWindow();
        host.DestroyWindow();
    }
    // Rows x cols with the given fixed counts, every cell 50 x 20, text "r<row>c<col>".
    void Make(int rows, int cols, int fixedRows = 1, int fixedCols = 1)
    {
        ASSERT_TRUE(host.AddGrid(grid, rows, cols, fixedRows, fixedCols));
        host.notes.clear();
    }
    static CPoint Centre(int row, int col) { return CPoint(col * 50 + 25, row * 20 + 10); }
    void Click(int row, int col, UINT mods = KxNoMod)
    {
        const CPoint p = Centre(row, col);
        KxClick(grid.GetSafeHwnd(), p.x, p.y, mods);
    }
    void Key(UINT vk, UINT mods = KxNoMod) { KxPressKey(grid.GetSafeHwnd(), vk, mods); }
    KxUiCellID2 Focus() const { return grid.GetFocusCell(); }

    GridHost host;
    KxUiGridCtrl2 grid;
};

std::string ReadFileBytes(const wchar_t* path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// Creation, counts and bad input

TEST_F(Grid, RegistersItsClassOnceAndCreatesAChildOfIt)
{
    ASSERT_TRUE(KxUiGridCtrl2::RegisterWindowClass(NULL));
    EXPECT_TRUE(KxUiGridCtrl2::RegisterWindowClass(NULL)) << "a second registration is no failure";
    WNDCLASSW wc = {};
    HINSTANCE inst = AfxGetInstanceHandle();
    ASSERT_TRUE(GetClassInfoW(inst, L"KxUiGridCtrl2", &wc) || GetClassInfoW(NULL, L"KxUiGridCtrl2", &wc));
    EXPECT_EQ(static_cast<UINT>(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW), wc.style);
    EXPECT_EQ(reinterpret_cast<HBRUSH>(COLOR_3DFACE + 1), wc.hbrBackground);

    Make(5, 4);
    wchar_t cls[64] = {};
    GetClassNameW(grid.GetSafeHwnd(), cls, 64);
    EXPECT_STREQ(L"KxUiGridCtrl2", cls);
    EXPECT_EQ(100, grid.GetDlgCtrlID());
    EXPECT_EQ(host.GetSafeHwnd(), ::GetParent(grid.GetSafeHwnd()));
}

TEST_F(Grid, SubclassedWindowIsSetUpLikeACreatedOne)
{
    // A grid placed on a dialog: the window exists first, the object subclasses it.
    ASSERT_TRUE(KxUiGridCtrl2::RegisterWindowClass(NULL));
    HWND h = CreateWindowExW(0, L"KxUiGridCtrl2", L"", WS_CHILD | WS_VISIBLE, 0, 0, 300, 200, host.GetSafeHwnd(),
                             reinterpret_cast<HMENU>(7), AfxGetInstanceHandle(), NULL);
    ASSERT_NE(nullptr, h);
    ASSERT_TRUE(grid.SubclassWindow(h));
    grid.SetColumnCount(3);
    grid.SetRowCount(30);
    grid.SetFixedRowCount(1);
    // Thirty default-height rows do not fit in 200 pixels: the vertical bar is there.
    SCROLLINFO si = {sizeof(si), SIF_ALL};
    ASSERT_TRUE(::GetScrollInfo(h, SB_VERT, &si));
    EXPECT_GT(si.nMax, 0);
    EXPECT_GT(si.nPage, 0u);
    grid.SetFocusCell(3, 1);
    KxPressKey(h, VK_DOWN);
    EXPECT_EQ(KxUiCellID2(4, 1), grid.GetFocusCell());
}

TEST_F(Grid, CountsRefuseBadValuesAndKeepTheData)
{
    Make(6, 5, 1, 1);
    EXPECT_FALSE(grid.SetRowCount(-1));
    EXPECT_FALSE(grid.SetColumnCount(-3));
    EXPECT_FALSE(grid.SetFixedRowCount(-1));
    EXPECT_EQ(6, grid.GetRowCount());
    EXPECT_EQ(5, grid.GetColumnCount());
    EXPECT_EQ(L"r3c2", grid.GetItemText(3, 2));

    // Outside the counts: null, FALSE, empty, and nothing changes.
    EXPECT_EQ(nullptr, grid.GetCell(6, 0));
    EXPECT_EQ(nullptr, grid.GetCell(0, -1));
    EXPECT_FALSE(grid.SetItemText(6, 0, L"x"));
    EXPECT_FALSE(grid.SetItemText(-1, 0, L"x"));
    EXPECT_EQ(L"", grid.GetItemText(0, 9));
    KxUiGridCell2 stray;
    EXPECT_FALSE(grid.SetCell(9, 9, &stray));
    EXPECT_FALSE(grid.DeleteRow(6));
    EXPECT_FALSE(grid.DeleteColumn(-1));
    EXPECT_FALSE(grid.SetCellType(1, 1, NULL));
    EXPECT_FALSE(grid.SetCellType(1, 1, RUNTIME_CLASS(CObject))) << "not a cell class";
    EXPECT_FALSE(grid.SetDefaultCellType(NULL));
    EXPECT_FALSE(grid.SetItem(NULL));

    // Fixed counts above the totals raise the totals.
    EXPECT_TRUE(grid.SetFixedColumnCount(7));
    EXPECT_EQ(7, grid.GetColumnCount());
    EXPECT_EQ(7, grid.GetFixedColumnCount());
    EXPECT_TRUE(grid.GetCell(2, 6)->IsFixedCol());

    // Shrinking and growing keeps the cells that remain.
    EXPECT_TRUE(grid.SetRowCount(3));
    EXPECT_TRUE(grid.SetRowCount(8));
    EXPECT_EQ(L"r2c4", grid.GetItemText(2, 4));
    EXPECT_EQ(L"", grid.GetItemText(5, 4));
}

TEST_F(Grid, InsertAndDeleteMoveRowsAndColumns)
{
    Make(4, 4, 1, 1);
    EXPECT_EQ(2, grid.InsertRow(L"new", 2));
    EXPECT_EQ(5, grid.GetRowCount());
    EXPECT_EQ(L"new", grid.GetItemText(2, 0)) << "the heading goes in the first column";
    EXPECT_EQ(L"r2c1", grid.GetItemText(3, 1));
    EXPECT_EQ(5, grid.InsertRow(L"end"));
    EXPECT_EQ(L"end", grid.GetItemText(5, 0));
    EXPECT_EQ(-1, grid.InsertRow(L"bad", 17));

    EXPECT_EQ(1, grid.InsertColumn(L"Qty", DT_RIGHT, 1));
    EXPECT_EQ(L"Qty", grid.GetItemText(0, 1));
    EXPECT_EQ(L"r1c1", grid.GetItemText(1, 2));
    EXPECT_TRUE(grid.DeleteColumn(1));
    EXPECT_TRUE(grid.DeleteRow(2));
    EXPECT_EQ(L"r2c1", grid.GetItemText(2, 1));
    EXPECT_EQ(5, grid.GetRowCount());

    // A hidden row keeps its cells and is skipped by drawing and hit testing.
    EXPECT_TRUE(grid.SetRowHeight(2, 0));
    EXPECT_EQ(0, grid.GetRowHeight(2));
    EXPECT_EQ(KxUiCellID2(3, 1), grid.GetCellFromPt(CPoint(60, 45)));
}

TEST_F(Grid, ItemRecordAppliesOnlyWhatItsMaskSays)
{
    Make(4, 4, 1, 1);
    GV2_ITEM item;
    item.row = 2;
    item.col = 2;
    item.mask = GVIF_TEXT | GVIF_PARAM | GVIF_BKCLR | GVIF_STATE;
    item.strText = L"set";
    item.lParam = 77;
    item.crBkClr = RGB(9, 8, 7);
    item.crFgClr = RGB(1, 1, 1);   // not in the mask
    item.nState = GVIS_READONLY;
    ASSERT_TRUE(grid.SetItem(&item));
    EXPECT_EQ(L"set", grid.GetItemText(2, 2));
    EXPECT_EQ(77, grid.GetItemData(2, 2));
    EXPECT_EQ(RGB(9, 8, 7), grid.GetCell(2, 2)->GetBackClr());
    EXPECT_EQ(CLR_DEFAULT, grid.GetCell(2, 2)->GetTextClr());
    EXPECT_TRUE(grid.GetCell(2, 2)->IsReadOnly());
    EXPECT_FALSE(grid.IsCellEditable(2, 2));

    GV2_ITEM out;
    out.row = 2;
    out.col = 2;
    out.mask = GVIF_TEXT | GVIF_PARAM;
    ASSERT_TRUE(grid.GetItem(&out));
    EXPECT_EQ(L"set", out.strText);
    EXPECT_EQ(77, out.lParam);
    out.row = 40;
    EXPECT_FALSE(grid.GetItem(&out));
}

// ---------------------------------------------------------------------------------------------
// Hit testing

TEST_F(Grid, PointsOnABoundaryBelongToTheRightAndLowerCell)
{
    Make(8, 6, 1, 1);
    EXPECT_EQ(KxUiCellID2(0, 0), grid.GetCellFromPt(CPoint(0, 0)));
    EXPECT_EQ(KxUiCellID2(0, 0), grid.GetCellFromPt(CPoint(49, 19)));
    EXPECT_EQ(KxUiCellID2(1, 1), grid.GetCellFromPt(CPoint(50, 20)));
    EXPECT_EQ(KxUiCellID2(2, 3), grid.GetCellFromPt(CPoint(150, 40)));
    EXPECT_EQ(-1, grid.GetCellFromPt(CPoint(-1, 5)).col);
    EXPECT_EQ(-1, grid.GetCellFromPt(CPoint(5, -1)).row);
    // Past the last column: no column.
    EXPECT_EQ(-1, grid.GetCellFromPt(CPoint(300, 30)).col);

    // Fixed cells not allowed: the fixed parts give -1.
    EXPECT_EQ(KxUiCellID2(-1, -1), grid.GetCellFromPt(CPoint(10, 10), FALSE));
    EXPECT_EQ(-1, grid.GetCellFromPt(CPoint(10, 30), FALSE).col);
    EXPECT_EQ(1, grid.GetCellFromPt(CPoint(10, 30), FALSE).row);

    // Hidden columns are never hit: the point falls to the next shown one.
    grid.SetColumnWidth(2, 0);
    EXPECT_EQ(3, grid.GetCellFromPt(CPoint(100, 30)).col);

    // Scrolled: the first column after the fixed one is the one scrolled into view.
    grid.SetColumnCount(14);
    GridHost::UniformSizes(grid);
    grid.SendMessage(WM_HSCROLL, SB_LINERIGHT, 0);
    const KxUiCellID2 tl = grid.GetTopleftNonFixedCell();
    EXPECT_GT(tl.col, 1);
    EXPECT_EQ(tl.col, grid.GetCellFromPt(CPoint(50, 30)).col);
    EXPECT_EQ(0, grid.GetCellFromPt(CPoint(49, 30)).col) << "the fixed column does not scroll";
}

// ---------------------------------------------------------------------------------------------
// Keyboard

TEST_F(Grid, ArrowsSkipHiddenRowsAndStopAtTheEdges)
{
    Make(8, 5, 1, 1);
    grid.SetRowHeight(3, 0);
    grid.SetFocusCell(2, 2);
    Key(VK_DOWN);
    EXPECT_EQ(KxUiCellID2(4, 2), Focus()) << "the hidden row 3 is passed over";
    Key(VK_UP);
    EXPECT_EQ(KxUiCellID2(2, 2), Focus());
    Key(VK_UP);
    EXPECT_EQ(KxUiCellID2(1, 2), Focus());
    Key(VK_UP);
    EXPECT_EQ(KxUiCellID2(1, 2), Focus()) << "never into the fixed rows";
    Key(VK_LEFT);
    Key(VK_LEFT);
    EXPECT_EQ(KxUiCellID2(1, 1), Focus()) << "never into the fixed columns";

    grid.SetFocusCell(7, 4);
    Key(VK_DOWN);
    Key(VK_RIGHT);
    EXPECT_EQ(KxUiCellID2(7, 4), Focus()) << "the last row and column keep the focus";
    // Rows hidden at the bottom leave the last shown row as the last stop.
    grid.SetRowHeight(7, 0);
    grid.SetFocusCell(6, 4);
    Key(VK_DOWN);
    EXPECT_EQ(KxUiCellID2(6, 4), Focus());
}

TEST_F(Grid, KeyMoveSendsChangingThenChangedWithTheNewCell)
{
    Make(6, 5, 1, 1);
    grid.SetFocusCell(2, 2);
    grid.SetSelectedRange(2, 2, 2, 2);
    KxMsgRecorder rec;
    rec.Watch(host.GetSafeHwnd(), "host", {WM_NOTIFY});
    Key(VK_RIGHT);
    EXPECT_TRUE(rec.Matches({KxMsg::Notify("host", GVN_SELCHANGING), KxMsg::Notify("host", GVN_SELCHANGED)}));
    const std::vector<GridNote> want = {{GVN_SELCHANGING, 2, 3}, {GVN_SELCHANGED, 2, 3}};
    EXPECT_EQ(want, host.notes);
    EXPECT_TRUE(grid.IsCellSelected(2, 3));
    EXPECT_FALSE(grid.IsCellSelected(2, 2));

    // Shift extends from the anchor; a key that does not move sends nothing.
    Key(VK_DOWN, KxShift);
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(2, 3, 3, 3));
    grid.SetFocusCell(5, 4);
    host.notes.clear();
    Key(VK_DOWN);
    EXPECT_TRUE(host.notes.empty());

    // List mode selects whole rows (of the non-fixed columns).
    grid.SetListMode(TRUE);
    grid.SetFocusCell(2, 2);
    Key(VK_DOWN);
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(3, 1, 3, 4));
}

TEST_F(Grid, TabWrapsToTheNextRowAndShiftTabBack)
{
    Make(5, 4, 1, 1);
    grid.SetColumnWidth(3, 0);   // the last column is hidden: Tab wraps after column 2
    grid.SetFocusCell(2, 2);
    Key(VK_TAB);
    EXPECT_EQ(KxUiCellID2(3, 1), Focus());
    Key(VK_TAB, KxShift);
    EXPECT_EQ(KxUiCellID2(2, 2), Focus()) << "Shift+Tab wraps to the last shown column above";
    grid.SetFocusCell(1, 1);
    Key(VK_TAB, KxShift);
    EXPECT_EQ(KxUiCellID2(1, 1), Focus()) << "not into the fixed rows";
    grid.SetFocusCell(4, 2);
    Key(VK_TAB);
    EXPECT_EQ(KxUiCellID2(4, 2), Focus()) << "the last row has nowhere to wrap to";
}

TEST_F(Grid, LeaveOnTabMovesTheDialogFocusAndKeepsTheCell)
{
    Make(5, 4, 1, 1);
    grid.ForceQuitFocusOnTab(TRUE);
    grid.SetFocusCell(2, 2);
    KxMsgRecorder rec;
    rec.Watch(host.GetSafeHwnd(), "host", {WM_NEXTDLGCTL});
    Key(VK_TAB);
    EXPECT_TRUE(rec.Matches({KxMsg("host", WM_NEXTDLGCTL, 0, 0)}));
    EXPECT_EQ(KxUiCellID2(2, 2), Focus());
    EXPECT_TRUE(host.notes.empty());
}

TEST_F(Grid, HomeEndAndTheirCtrlForms)
{
    Make(12, 6, 2, 1);
    grid.SetFocusCell(5, 3);
    Key(VK_HOME);
    EXPECT_EQ(KxUiCellID2(5, 1), Focus());
    Key(VK_END);
    EXPECT_EQ(KxUiCellID2(5, 5), Focus());
    Key(VK_HOME, KxCtrl);
    EXPECT_EQ(KxUiCellID2(2, 1), Focus());
    Key(VK_END, KxCtrl);
    EXPECT_EQ(KxUiCellID2(11, 5), Focus());
    EXPECT_TRUE(grid.IsCellVisible(11, 5));

    // Ctrl+End over hidden last rows stops one above the fixed count at the lowest.
    for (int r = 2; r < 12; ++r)
        grid.SetRowHeight(r, 0);
    grid.SetRowHeight(2, 20);
    grid.SetFocusCell(2, 1);
    Key(VK_END, KxCtrl);
    EXPECT_EQ(3, Focus().row);
    // Ctrl+Home passes hidden rows downwards.
    grid.SetRowHeight(2, 0);
    grid.SetRowHeight(5, 20);
    grid.SetFocusCell(5, 1);
    Key(VK_HOME, KxCtrl);
    EXPECT_EQ(5, Focus().row);
}

TEST_F(Grid, PageDownMovesTheFocusAsFarAsTheTopMoved)
{
    Make(100, 4, 1, 1);
    grid.SetFocusCell(3, 1);
    const int top0 = grid.GetTopleftNonFixedCell().row;
    Key(VK_NEXT);
    const int moved = grid.GetTopleftNonFixedCell().row - top0;
    ASSERT_GT(moved, 0);
    EXPECT_EQ(3 + moved, Focus().row);
    Key(VK_PRIOR);
    EXPECT_EQ(3, Focus().row);
    Key(VK_PRIOR);
    EXPECT_EQ(1, Focus().row) << "the top did not move: the first non-fixed row";
}

TEST_F(Grid, ClipboardKeysCopyCutPasteAndSelectAll)
{
    Make(4, 4, 1, 1);
    ASSERT_TRUE(AfxOleInit());
    grid.SetFocusCell(1, 1);
    grid.SetSelectedRange(1, 1, 2, 3);
    Key('C', KxCtrl);
    COleDataSource::FlushClipboard();
    ASSERT_TRUE(OpenClipboard(host.GetSafeHwnd()));
    HGLOBAL h = GetClipboardData(CF_TEXT);
    ASSERT_NE(nullptr, h);
    const std::string text(static_cast<const char*>(GlobalLock(h)));
    GlobalUnlock(h);
    CloseClipboard();
    EXPECT_EQ("r1c1\tr1c2\tr1c3\r\nr2c1\tr2c2\tr2c3", text);

    Key('X', KxCtrl);
    EXPECT_EQ(L"", grid.GetItemText(1, 1));
    EXPECT_EQ(L"", grid.GetItemText(2, 3));
    EXPECT_TRUE(grid.GetModified(2, 3));
    EXPECT_EQ(L"r3c3", grid.GetItemText(3, 3));

    grid.SetFocusCell(2, 2);
    Key('V', KxCtrl);
    EXPECT_EQ(L"r1c1", grid.GetItemText(2, 2));
    EXPECT_EQ(L"r1c2", grid.GetItemText(2, 3));
    EXPECT_EQ(L"r2c1", grid.GetItemText(3, 2));
    EXPECT_EQ(L"", grid.GetItemText(1, 1)) << "untouched outside the pasted block";

    host.notes.clear();
    Key('A', KxCtrl);
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(1, 1, 3, 3));
    EXPECT_EQ((std::vector<int>{GVN_SELCHANGING, GVN_SELCHANGED}), host.Codes());

    Key(VK_DELETE);
    EXPECT_EQ(L"", grid.GetItemText(3, 3));
    EXPECT_EQ(L"r0c3", grid.GetItemText(0, 3)) << "fixed cells are not cut";
}

TEST_F(Grid, CopySkipsUnselectedCellsButKeepsTheirTabs)
{
    Make(4, 4, 1, 1);
    // Two ranges with Ctrl: the bounding box is rows 1-2, columns 1-3.
    Click(1, 1);
    Click(2, 3, KxCtrl);
    std::unique_ptr<COleDataSource> src(grid.CopyTextFromGrid());
    ASSERT_NE(nullptr, src);
    COleDataObject obj;
    obj.Attach(src->GetDataObject(), FALSE);
    HGLOBAL h = obj.GetGlobalData(CF_TEXT);
    ASSERT_NE(nullptr, h);
    const char* p = static_cast<const char*>(GlobalLock(h));
    EXPECT_EQ(std::string("r1c1\t\t\r\n\t\tr2c3"), std::string(p));
    GlobalUnlock(h);
    GlobalFree(h);

    grid.ResetSelectedRange();
    EXPECT_EQ(nullptr, grid.CopyTextFromGrid()) << "nothing selected, nothing to copy";
}

TEST_F(Grid, PasteOfRaggedOrOversizedTextIsClippedToTheGrid)
{
    Make(4, 4, 1, 1);
    grid.GetCell(2, 2)->SetState(grid.GetCell(2, 2)->GetState() | GVIS_READONLY);
    COleDataSource* src = new COleDataSource;
    const char text[] = "a\tb\tc\td\te\r\nf\r\ng\th\ti\nj\tk";
    HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE, sizeof(text));
    memcpy(GlobalLock(h), text, sizeof(text));
    GlobalUnlock(h);
    src->CacheGlobalData(CF_TEXT, h);
    COleDataObject obj;
    obj.Attach(src->GetDataObject(), FALSE);
    EXPECT_TRUE(grid.PasteTextToGrid(KxUiCellID2(1, 1), &obj, TRUE));
    EXPECT_EQ(L"a", grid.GetItemText(1, 1));
    EXPECT_EQ(L"c", grid.GetItemText(1, 3));
    EXPECT_EQ(L"f", grid.GetItemText(2, 1));
    EXPECT_EQ(L"r2c2", grid.GetItemText(2, 2)) << "a short row leaves the rest alone, read-only too";
    EXPECT_EQ(L"g", grid.GetItemText(3, 1));
    EXPECT_EQ(4, grid.GetRowCount()) << "the grid does not grow";
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(1, 1, 3, 3));
    EXPECT_FALSE(grid.PasteTextToGrid(KxUiCellID2(9, 9), &obj, TRUE));
    EXPECT_FALSE(grid.PasteTextToGrid(KxUiCellID2(1, 1), NULL, TRUE));
    obj.Release();
    src->InternalRelease();
}

// ---------------------------------------------------------------------------------------------
// Mouse

TEST_F(Grid, ClickSendsChangingOnPressChangedAndClickOnRelease)
{
    Make(6, 5, 1, 1);
    Click(3, 2);
    const std::vector<GridNote> want = {{GVN_SELCHANGING, 3, 2}, {GVN_SELCHANGED, 3, 2}, {GVN_CLICK, 3, 2}};
    EXPECT_EQ(want, host.notes);
    EXPECT_EQ(KxUiCellID2(3, 2), Focus());
    EXPECT_TRUE(grid.IsCellSelected(3, 2));

    host.notes.clear();
    const CPoint p = Centre(4, 3);
    KxDoubleClick(grid.GetSafeHwnd(), p.x, p.y);
    EXPECT_NE(host.notes.end(), std::find(host.notes.begin(), host.notes.end(), GridNote{GVN_DBLCLK, 4, 3}));

    // Shift+click extends from the anchor.
    Click(1, 1);
    Click(3, 3, KxShift);
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(1, 1, 3, 3));
}

TEST_F(Grid, DragSelectsARangeAndHeaderClicksSelectOrSort)
{
    Make(6, 5, 1, 1);
    KxDrag(grid.GetSafeHwnd(), Centre(1, 1), Centre(3, 3));
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(1, 1, 3, 3));

    grid.SetFixedRowSelection(TRUE);
    Click(0, 2);
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(1, 2, 5, 2)) << "the column below the header";
    grid.SetFixedColumnSelection(TRUE);
    Click(4, 0);
    EXPECT_TRUE(grid.GetSelectedCellRange() == KxUiCellRange2(4, 1, 4, 4));

    grid.SetHeaderSort(TRUE);
    grid.SetItemText(1, 2, L"b");
    grid.SetItemText(2, 2, L"c");
    grid.SetItemText(3, 2, L"a");
    grid.SetItemText(4, 2, L"e");
    grid.SetItemText(5, 2, L"d");
    Click(0, 2);
    EXPECT_EQ(2, grid.GetSortColumn());
    EXPECT_TRUE(grid.GetSortAscending());
    EXPECT_EQ(L"a", grid.GetItemText(1, 2));
    EXPECT_EQ(L"e", grid.GetItemText(5, 2));
    Click(0, 2);
    EXPECT_FALSE(grid.GetSortAscending()) << "a second click reverses";
    EXPECT_EQ(L"e", grid.GetItemText(1, 2));
}

TEST_F(Grid, DraggingAHeaderDividerResizesTheColumn)
{
    Make(6, 5, 1, 1);
    KxDrag(grid.GetSafeHwnd(), CPoint(99, 10), CPoint(139, 10));
    EXPECT_EQ(90, grid.GetColumnWidth(1));
    EXPECT_EQ(50, grid.GetColumnWidth(2));
}

namespace {

// A cell that logs the mouse hooks the grid calls on it.
class TrackedCell : public KxUiGridCell2 {
    DECLARE_DYNCREATE(TrackedCell)
public:
    static std::vector<std::string>& Log()
    {
        static std::vector<std::string> s_log;
        return s_log;
    }
    void OnMouseEnter(int r, int c) override { Log().push_back("enter " + std::to_string(r) + "," + std::to_string(c)); }
    void OnMouseLeave(int r, int c) override { Log().push_back("leave " + std::to_string(r) + "," + std::to_string(c)); }
};
IMPLEMENT_DYNCREATE(TrackedCell, KxUiGridCell2)

}  // namespace

TEST_F(Grid, HotTrackingEntersAndLeavesCells)
{
    Make(6, 5, 1, 1);
    ASSERT_TRUE(grid.SetCellType(2, 2, RUNTIME_CLASS(TrackedCell)));
    ASSERT_TRUE(grid.SetCellType(2, 3, RUNTIME_CLASS(TrackedCell)));
    EXPECT_EQ(L"r2c2", grid.GetItemText(2, 2)) << "the new cell keeps the content";
    TrackedCell::Log().clear();
    auto move = [&](CPoint p) { grid.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(p.x, p.y)); };
    move(Centre(2, 2));
    EXPECT_EQ(KxUiCellID2(2, 2), grid.GetHotCell());
    move(Centre(2, 3));
    EXPECT_EQ(KxUiCellID2(2, 3), grid.GetHotCell());
    move(CPoint(420, 200));   // below and right of every cell
    EXPECT_EQ(KxUiCellID2(), grid.GetHotCell());
    EXPECT_EQ((std::vector<std::string>{"enter 2,2", "leave 2,2", "enter 2,3", "leave 2,3"}), TrackedCell::Log());
}

TEST_F(Grid, WheelPostsLineScrollsForEachNotch)
{
    Make(100, 4, 1, 1);
    UINT lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    ASSERT_NE(0xFFFFFFFFu, lines);
    KxMsgRecorder rec;
    rec.Watch(grid.GetSafeHwnd(), "grid", {WM_MOUSEWHEEL, WM_VSCROLL});
    grid.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -240), MAKELPARAM(10, 10));
    // Posted, not sent: nothing has scrolled when the wheel message returns.
    EXPECT_EQ(1u, rec.Log().size());
    KxPumpMessages();
    std::vector<KxMsg> want = {KxMsg("grid", WM_MOUSEWHEEL)};
    for (UINT i = 0; i < 2 * lines; ++i)
        want.push_back(KxMsg("grid", WM_VSCROLL, SB_LINEDOWN, 0));
    EXPECT_TRUE(rec.Matches(want));
    EXPECT_EQ(1 + static_cast<int>(2 * lines), grid.GetTopleftNonFixedCell().row);

    rec.Clear();
    grid.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), MAKELPARAM(10, 10));
    KxPumpMessages();
    want = {KxMsg("grid", WM_MOUSEWHEEL)};
    for (UINT i = 0; i < lines; ++i)
        want.push_back(KxMsg("grid", WM_VSCROLL, SB_LINEUP, 0));
    EXPECT_TRUE(rec.Matches(want));
}

// ---------------------------------------------------------------------------------------------
// Editing hooks

TEST_F(Grid, EndOfAnEditStoresTheTextUnlessTheOwnerRefuses)
{
    Make(4, 4, 1, 1);
    grid.OnEndEditCell(2, 2, L"accepted");
    EXPECT_EQ(L"accepted", grid.GetItemText(2, 2));
    EXPECT_TRUE(grid.GetCell(2, 2)->IsModified());
    EXPECT_EQ((std::vector<GridNote>{{GVN_ENDLABELEDIT, 2, 2}}), host.notes);

    host.endEditAnswer = -1;
    grid.OnEndEditCell(2, 3, L"refused");
    EXPECT_EQ(L"r2c3", grid.GetItemText(2, 3));
    EXPECT_FALSE(grid.GetCell(2, 3)->IsModified());

    // F2 asks the owner first; a fixed or read-only cell is not asked about at all.
    host.notes.clear();
    grid.SetFocusCell(1, 1);
    Key(VK_F2);
    EXPECT_EQ((std::vector<GridNote>{{GVN_BEGINLABELEDIT, 1, 1}}), host.notes);
    host.notes.clear();
    grid.SetEditable(FALSE);
    Key(VK_F2);
    EXPECT_TRUE(host.notes.empty());
}

// ---------------------------------------------------------------------------------------------
// Sorting

TEST_F(Grid, QuickSortKeepsFixedRowsAndItsOwnOrderOfEqualKeys)
{
    Make(4, 3, 1, 1);
    // Keys B, B, A over three rows: the pass exchanges the first B with A and leaves the
    // equal Bs alone, so they come out reversed.
    const wchar_t* keys[] = {L"B", L"B", L"A"};
    const wchar_t* tags[] = {L"1", L"2", L"3"};
    for (int i = 0; i < 3; ++i) {
        grid.SetItemText(i + 1, 1, keys[i]);
        grid.SetItemText(i + 1, 2, tags[i]);
    }
    grid.SetRowHeight(3, 31);
    grid.SetFocusCell(2, 2);
    ASSERT_TRUE(grid.SortTextItems(1, TRUE));
    EXPECT_EQ(L"r0c1", grid.GetItemText(0, 1)) << "the fixed row stays";
    EXPECT_EQ(L"3", grid.GetItemText(1, 2));
    EXPECT_EQ(L"2", grid.GetItemText(2, 2));
    EXPECT_EQ(L"1", grid.GetItemText(3, 2));
    EXPECT_EQ(31, grid.GetRowHeight(1)) << "the height moves with its row";
    EXPECT_EQ(KxUiCellID2(), Focus()) << "a sort clears the focus";
    EXPECT_FALSE(grid.GetSelectedCellRange().IsValid());

    EXPECT_FALSE(grid.SortTextItems(3, TRUE)) << "no such column";
    grid.SetRowCount(2);
    EXPECT_FALSE(grid.SortTextItems(1, TRUE)) << "one row is nothing to sort";
}

namespace {
int CALLBACK Contradicts(LPARAM, LPARAM, LPARAM data)
{
    // Answers at random: the sort must still end with every row present once.
    return static_cast<int>((*reinterpret_cast<unsigned*>(data) = *reinterpret_cast<unsigned*>(data) * 1103515245u + 12345u) >> 16) % 3 - 1;
}
}  // namespace

TEST_F(Grid, SortsByNumberAndSurvivesAnInconsistentComparison)
{
    Make(9, 2, 1, 1);
    const wchar_t* nums[] = {L"10", L"9", L"-3", L"x", L"100", L"7abc", L"0", L"55"};
    for (int i = 0; i < 8; ++i)
        grid.SetItemText(i + 1, 1, nums[i]);
    ASSERT_TRUE(grid.SortItems(KxUiGridCtrl2::pfnCellNumericCompare, 1, FALSE));
    std::vector<long> got;
    for (int r = 1; r < 9; ++r)
        got.push_back(_wtol(grid.GetItemText(r, 1)));
    EXPECT_TRUE(std::is_sorted(got.rbegin(), got.rend()));

    unsigned seed = 1;
    ASSERT_TRUE(grid.SortItems(Contradicts, 1, TRUE, reinterpret_cast<LPARAM>(&seed)));
    std::multiset<CString> after;
    for (int r = 1; r < 9; ++r)
        after.insert(grid.GetItemText(r, 1));
    EXPECT_EQ(std::multiset<CString>(std::begin(nums), std::end(nums)), after);

    EXPECT_EQ(0, KxUiGridCtrl2::pfnCellTextCompare(0, reinterpret_cast<LPARAM>(grid.GetCell(1, 1)), 0));
}

// ---------------------------------------------------------------------------------------------
// Virtual mode

namespace {
int CALLBACK FillFromCallback(GV2_DISPINFO* info, LPARAM lParam)
{
    auto* seen = reinterpret_cast<std::vector<GV2_ITEM>*>(lParam);
    seen->push_back(info->item);
    info->item.strText.Format(L"%d:%d", info->item.row, info->item.col);
    info->item.crBkClr = RGB(10, 20, 30);
    return 0;
}

std::vector<int>* g_sortKeys = nullptr;
bool KeyBefore(int a, int b)
{
    return (*g_sortKeys)[a] < (*g_sortKeys)[b];
}
}  // namespace

TEST_F(Grid, VirtualCellsComeFromTheCallbackOrTheOwner)
{
    Make(0, 0, 0, 0);
    grid.SetVirtualMode(TRUE);
    grid.SetColumnCount(4);
    grid.SetRowCount(50);
    grid.SetFixedRowCount(1);
    grid.SetFixedColumnCount(1);
    KxUiGridCell2 stray;
    EXPECT_FALSE(grid.SetCell(2, 2, &stray)) << "no stored cells in virtual mode";

    std::vector<GV2_ITEM> seen;
    grid.SetCallbackFunc(FillFromCallback, reinterpret_cast<LPARAM>(&seen));
    grid.SetFocusCell(3, 2);
    grid.SetSelectedRange(3, 2, 3, 2);
    KxUiGridCellBase2* cell = grid.GetCell(3, 2);
    ASSERT_NE(nullptr, cell);
    EXPECT_STREQ(L"3:2", cell->GetText());
    EXPECT_EQ(RGB(10, 20, 30), cell->GetBackClr());
    ASSERT_EQ(1u, seen.size());
    EXPECT_EQ(0xFFFFFFFFu, seen[0].mask);
    EXPECT_EQ(static_cast<UINT>(GVIS_HOT | GVIS_SELECTED | GVIS_FOCUSED), seen[0].nState);
    EXPECT_EQ(grid.GetDefaultCell(FALSE, FALSE)->GetFormat(), seen[0].nFormat);
    EXPECT_EQ(grid.GetDefaultCell(FALSE, FALSE)->GetMargin(), seen[0].nMargin);
    grid.GetCell(0, 0);
    EXPECT_EQ(static_cast<UINT>(GVIS_HOT | GVIS_FIXED | GVIS_FIXEDROW | GVIS_FIXEDCOL), seen[1].nState);
    EXPECT_EQ(nullptr, grid.GetCell(50, 0));

    // Without a callback the owner is asked.
    grid.SetCallbackFunc(NULL, 0);
    host.notes.clear();
    host.onDispInfo = [](GV2_DISPINFO* info) { info->item.strText = L"from owner"; };
    EXPECT_STREQ(L"from owner", grid.GetCell(7, 1)->GetText());
    EXPECT_EQ((std::vector<GridNote>{{GVN_GETDISPINFO, 7, 1}}), host.notes);

    // Painting asks for the visible cells only, between two cache hints.
    host.notes.clear();
    host.cacheHints.clear();
    grid.Invalidate();
    grid.UpdateWindow();
    ASSERT_GE(host.cacheHints.size(), 2u);
    EXPECT_EQ(0, host.cacheHints.front().GetMinRow());
    EXPECT_FALSE(host.cacheHints.back().IsValid());
    for (const GridNote& n : host.notes)
        EXPECT_LE(n.row, host.cacheHints.front().GetMaxRow());
}

TEST_F(Grid, VirtualSortReordersRowsThroughTheOrderTable)
{
    Make(0, 0, 0, 0);
    grid.SetVirtualMode(TRUE);
    grid.SetColumnCount(2);
    grid.SetRowCount(6);
    grid.SetFixedRowCount(1);
    std::vector<int> keys = {0, 50, 20, 40, 10, 30};
    g_sortKeys = &keys;
    grid.SetVirtualCompare(KeyBefore);
    ASSERT_TRUE(grid.SortItems(1, TRUE));
    EXPECT_EQ(0, grid.GetStoredRow(0)) << "the fixed row keeps its place";
    std::vector<int> order;
    for (int r = 1; r < 6; ++r)
        order.push_back(grid.GetStoredRow(r));
    EXPECT_EQ((std::vector<int>{4, 2, 5, 3, 1}), order);
    ASSERT_TRUE(grid.SortItems(1, FALSE));
    order.clear();
    for (int r = 1; r < 6; ++r)
        order.push_back(grid.GetStoredRow(r));
    EXPECT_EQ((std::vector<int>{1, 3, 5, 2, 4}), order);

    // The callback is asked for the stored row.
    std::vector<GV2_ITEM> seen;
    grid.SetCallbackFunc(FillFromCallback, reinterpret_cast<LPARAM>(&seen));
    EXPECT_STREQ(L"1:1", grid.GetCell(1, 1)->GetText());
    g_sortKeys = nullptr;
}

TEST_F(Grid, TenMillionVirtualRowsScrollPageAndJumpToTheEnd)
{
    Make(0, 0, 0, 0);
    grid.SetVirtualMode(TRUE);
    grid.SetColumnCount(4);
    grid.SetRowCount(10000000);
    grid.SetFixedRowCount(1);
    grid.SetFixedColumnCount(1);
    std::vector<GV2_ITEM> seen;
    grid.SetCallbackFunc(FillFromCallback, reinterpret_cast<LPARAM>(&seen));
    grid.SetFocusCell(1, 1);

    Key(VK_END, KxCtrl);
    EXPECT_EQ(KxUiCellID2(9999999, 3), Focus());
    EXPECT_TRUE(grid.IsCellVisible(9999999, 3));
    SCROLLINFO si = {sizeof(si), SIF_ALL};
    ASSERT_TRUE(::GetScrollInfo(grid.GetSafeHwnd(), SB_VERT, &si));
    EXPECT_EQ(si.nMax - static_cast<int>(si.nPage) + 1, si.nPos) << "the thumb is at the end";

    // The thumb put in the middle lands near the middle row (the 32-bit position is read
    // from the bar, not the message's 16 bits).
    ::SetScrollPos(grid.GetSafeHwnd(), SB_VERT, si.nMax / 2, FALSE);
    grid.SendMessage(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 0), 0);
    const int top = grid.GetTopleftNonFixedCell().row;
    EXPECT_NEAR(5000000, top, 50000);

    Key(VK_HOME, KxCtrl);
    EXPECT_EQ(KxUiCellID2(1, 1), Focus());
    EXPECT_EQ(1, grid.GetTopleftNonFixedCell().row);
    Key(VK_NEXT);
    EXPECT_GT(Focus().row, 1);
    EXPECT_TRUE(grid.IsCellVisible(Focus().row, 1));
}

// ---------------------------------------------------------------------------------------------
// Files

TEST_F(Grid, SaveWritesEveryRowAsOneDelimitedLine)
{
    Make(3, 3, 1, 1);
    grid.SetItemText(1, 1, L"a,b");   // written as it is, not quoted
    wchar_t dir[MAX_PATH], path[MAX_PATH];
    GetTempPathW(MAX_PATH, dir);
    GetTempFileNameW(dir, L"kxg", 0, path);
    ASSERT_TRUE(grid.Save(path, L','));
    EXPECT_EQ("r0c0,r0c1,r0c2\r\nr1c0,a,b,r1c2\r\nr2c0,r2c1,r2c2\r\n", ReadFileBytes(path));

    // Loading it back: one row per line, as many columns as the longest line.
    KxUiGridCtrl2 other;
    ASSERT_TRUE(other.Load(path, L','));
    EXPECT_EQ(3, other.GetRowCount());
    EXPECT_EQ(4, other.GetColumnCount());
    EXPECT_EQ(L"a", other.GetItemText(1, 1));
    EXPECT_EQ(L"r1c2", other.GetItemText(1, 3));
    EXPECT_EQ(L"", other.GetItemText(0, 3));
    DeleteFileW(path);
}

TEST_F(Grid, FilesThatCannotBeOpenedAreReportedAndChangeNothing)
{
    Make(3, 3, 1, 1);
    KxTestApp& app = KxTestApp::Get();
    const size_t boxes = app.Boxes().size();
    EXPECT_FALSE(grid.Load(L"C:\\no\\such\\dir\\grid.csv", L','));
    EXPECT_EQ(boxes + 1, app.Boxes().size()) << "the file error is shown";
    EXPECT_EQ(3, grid.GetRowCount());
    EXPECT_EQ(L"r1c1", grid.GetItemText(1, 1));
    EXPECT_FALSE(grid.Save(L"C:\\no\\such\\dir\\grid.csv", L','));
    EXPECT_EQ(boxes + 2, app.Boxes().size());
}
