// The extended list over a real list view: cells, painting, editors opened by clicks and keys,
// write-back to the selected rows, check and radio cells, the header check and the sort.
#include <KxUiXListCtrl.h>
#include <KxUiSortHeaderCtrl.h>
#include <KxUiXListBox.h>
#include <KxUiXComboBoxEdit.h>
#include "KxInput.h"
#include "KxPixelProbe.h"
#include <string>
#include <vector>

using namespace XControl;
using XData::CELLNOTIFY;
using XData::SUBITEM;
using XData::SUBITEMARRAY;

namespace {

// One registered message the parent received.
struct Event {
    std::string name;
    LPARAM lParam;  // the row count for XM_BEGINEDIT
    int row, col;   // of the announced cell
    CString text;   // its text after the change
    int state;      // its check state after the change
    bool operator==(const Event& o) const
    {
        return name == o.name && lParam == o.lParam && row == o.row && col == o.col;
    }
};

std::ostream& operator<<(std::ostream& os, const Event& e)
{
    return os << e.name << "(" << e.lParam << ", " << e.row << ", " << e.col << ")";
}

Event Ev(const char* name, LPARAM l = 0, int row = -1, int col = -1)
{
    return Event{name, l, row, col, CString(), 0};
}

// A shown top-level window hosting the list; it records the registered messages the list
// sends to its parent, with the cell each announcement carries.
class ListHost : public CWnd {
public:
    std::vector<Event> events;
    HWND listFromWParam = nullptr;

    BOOL Open()
    {
        LPCTSTR cls = AfxRegisterWndClass(0, ::LoadCursorW(nullptr, IDC_ARROW), (HBRUSH)(COLOR_WINDOW + 1));
        return CreateEx(0, cls, L"list", WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 520, 360), nullptr, 0);
    }

protected:
    LRESULT record(const char* name, WPARAM wParam, LPARAM lParam, bool bCell)
    {
        listFromWParam = (HWND)wParam;
        Event e{name, bCell ? 0 : lParam, -1, -1, CString(), 0};
        if (bCell) {
            const CELLNOTIFY* p = reinterpret_cast<const CELLNOTIFY*>(lParam);
            e.row = p->nRow;
            e.col = p->nCol;
            e.text = p->cell.m_strText;
            e.state = p->cell.GetCheckbox();
        }
        events.push_back(e);
        return 0;
    }
    afx_msg LRESULT OnBegin(WPARAM w, LPARAM l) { return record("begin", w, l, false); }
    afx_msg LRESULT OnEnd(WPARAM w, LPARAM l) { return record("end", w, l, false); }
    afx_msg LRESULT OnSelection(WPARAM w, LPARAM l) { return record("selection", w, l, true); }
    afx_msg LRESULT OnCheck(WPARAM w, LPARAM l) { return record("check", w, l, true); }
    afx_msg LRESULT OnButton(WPARAM w, LPARAM l) { return record("button", w, l, true); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ListHost, CWnd)
    ON_REGISTERED_MESSAGE(XM_BEGINEDIT, &ListHost::OnBegin)
    ON_REGISTERED_MESSAGE(XM_ENDEDIT, &ListHost::OnEnd)
    ON_REGISTERED_MESSAGE(XM_SELECTION_2, &ListHost::OnSelection)
    ON_REGISTERED_MESSAGE(XM_CHECKBOX_CLICKED_2, &ListHost::OnCheck)
    ON_REGISTERED_MESSAGE(XM_BOUTONDOWN_2, &ListHost::OnButton)
END_MESSAGE_MAP()

// Exposes the protected parts the tests look at, and answers push-button clicks.
template <class BASE>
class Probe : public BASE {
public:
    bool buttonAnswer = true;
    int buttonClicks = 0;
    using BASE::InsertItem;
    int InsertBareRow(int nRow) { return BASE::InsertItem(nRow, new SUBITEMARRAY); }
    bool scratchReused() const { return this->m_bScratchReused; }
    XData::SUBITEM* scratch() { return &this->m_scratchCell; }
    HWND toolTip() const { return this->m_toolTip.m_hWnd; }
    bool onClickButton(int, int, CUIntArray&) override
    {
        ++buttonClicks;
        return buttonAnswer;
    }
};

CStringArray& Items(CStringArray& a, std::initializer_list<LPCWSTR> list)
{
    a.RemoveAll();
    for (LPCWSTR s : list)
        a.Add(s);
    return a;
}

template <class LIST>
class ListFixture : public ::testing::Test {
protected:
    ListHost host;
    Probe<LIST> list;

    void SetUp() override
    {
        ASSERT_TRUE(host.Open());
        ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | LVS_SHOWSELALWAYS, CRect(10, 10, 490, 310), &host,
                                100));
        list.InsertColumn(0, L"Item", LVCFMT_LEFT, 120);
        list.InsertColumn(1, L"Qty", LVCFMT_RIGHT, 80);
        list.InsertColumn(2, L"Status", LVCFMT_LEFT, 100);
        list.InsertColumn(3, L"Paid", LVCFMT_CENTER, 60);
        list.InsertColumn(4, L"Note", LVCFMT_LEFT, 100);
        host.SetActiveWindow();
        list.SetFocus();
    }

    void TearDown() override
    {
        list.DestroyWindow();
        host.DestroyWindow();
        KxUiXListCtrl::defaultCell() = SUBITEM();  // shared by every list: leave it as found
    }

    // Rows "Bolts", "Nuts", "Screws" with an edit, a number, a combo, a check box, a text edit.
    void Fill(int n = 3)
    {
        static const wchar_t* names[] = {L"Bolts", L"Nuts", L"Screws", L"Washers", L"Rivets"};
        CStringArray states;
        Items(states, {L"Open", L"Shipped", L"Closed"});
        for (int i = 0; i < n; ++i) {
            list.InsertItem(i, names[i % 5]);
            list.SetEditNum(i, 1, 10 * (i + 1));
            list.SetComboBox(i, 2, states, 3, i % 3);
            list.SetCheckbox(i, 3, 0);
            list.SetEditText(i, 4, L"note");
        }
        list.UpdateWindow();
    }

    // Centre of a cell in the list's client coordinates.
    CPoint Centre(int row, int col)
    {
        CRect rc;
        EXPECT_TRUE(list.GetSubItemRect(row, col, LVIR_BOUNDS, rc));
        return rc.CenterPoint();
    }

    void Click(int row, int col, UINT mods = KxNoMod)
    {
        CPoint pt = Centre(row, col);
        KxClick(list.m_hWnd, pt.x, pt.y, mods);
        KxPumpMessages();
    }

    void Select(std::initializer_list<int> rows)
    {
        list.SelectAll(false);
        for (int r : rows)
            list.SetItemState(r, LVIS_SELECTED, LVIS_SELECTED);
    }

    HWND Editor() { return list.getEditor() != nullptr ? list.getEditor()->m_hWnd : nullptr; }

    // Replaces the editor's text as a user does: select all, type.
    void TypeInto(HWND hWnd, const wchar_t* text)
    {
        ::SendMessageW(hWnd, EM_SETSEL, 0, -1);
        KxTypeText(hWnd, text);
    }

    void Key(HWND hWnd, UINT vk)
    {
        KxPressKey(hWnd, vk);
        KxPumpMessages();
    }
};

using XListCtrlTest = ListFixture<KxUiXListCtrl>;
using SortXListCtrlTest = ListFixture<KxUiSortXListCtrl>;

}  // namespace

TEST_F(XListCtrlTest, RowsCellsAndMissingAddresses)
{
    EXPECT_EQ((DWORD)(LVS_OWNERDATA | LVS_REPORT), list.GetStyle() & (LVS_OWNERDATA | LVS_TYPEMASK));
    EXPECT_EQ((DWORD)(LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES),
              list.GetExtendedStyle() & (LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES));
    Fill();
    EXPECT_EQ(3, list.GetItemCount());
    EXPECT_EQ(3, list.CListCtrl::GetItemCount());  // the list view counts the rows
    ASSERT_NE(nullptr, list.getSUBITEMARRAY(2));
    EXPECT_EQ(5, list.getSUBITEMARRAY(2)->GetSize());
    EXPECT_STREQ(L"Screws", list.GetItemText(2, 0));
    EXPECT_STREQ(L"30", list.GetItemText(2, 1));
    EXPECT_STREQ(L"Closed", list.GetComboText(2, 2));
    EXPECT_STREQ(L"Screws", list.CListCtrl::GetItemText(2, 0));  // through LVN_GETDISPINFO

    // Every missing address is the one default cell; the setters write into it.
    SUBITEM* pDefault = &KxUiXListCtrl::defaultCell();
    EXPECT_EQ(pDefault, list.GetSubItemData(-1, 0, false));
    EXPECT_EQ(pDefault, list.GetSubItemData(3, 0, false));
    EXPECT_EQ(pDefault, list.GetSubItemData(0, 5, false));
    EXPECT_EQ(pDefault, list.GetSubItemData(0, -1, false));
    EXPECT_EQ(1, list.SetItemText(7, 1, L"lost"));
    EXPECT_STREQ(L"lost", list.GetSubItemData(9, 9, false)->m_strText);
    EXPECT_STREQ(L"", list.GetItemText(7, 1));
    EXPECT_EQ(0, list.SetItemToolTipText(7, 1, L"x"));
    EXPECT_EQ(-1, list.GetHeaderCheckedState(9));
    EXPECT_FALSE(list.GetEnabled(9));
    EXPECT_FALSE(list.GetBold(0, 9));
    EXPECT_EQ(0, list.CountCheckedItems(9));

    // Deleting a row keeps the others; deleting a column drops its cells.
    EXPECT_TRUE(list.DeleteItem(0));
    EXPECT_STREQ(L"Nuts", list.GetItemText(0, 0));
    EXPECT_EQ(2, list.CListCtrl::GetItemCount());
    EXPECT_TRUE(list.DeleteColumn(1));
    EXPECT_EQ(4, list.getSUBITEMARRAY(0)->GetSize());
    EXPECT_STREQ(L"Shipped", list.GetItemText(0, 1));
    list.InsertColumn(1, L"New", LVCFMT_LEFT, 50);
    EXPECT_EQ(5, list.getSUBITEMARRAY(0)->GetSize());
    EXPECT_EQ(TypeText, list.GetSubItemData(0, 1, false)->m_nType);
    list.removeAllColumn();
    EXPECT_EQ(0, list.GetColumnsCount());
    EXPECT_TRUE(list.DeleteAllItems());
    EXPECT_EQ(0, list.CListCtrl::GetItemCount());
}

TEST_F(XListCtrlTest, RowsWithoutCellsShareTheScratchCell)
{
    list.InsertBareRow(0);
    SUBITEM* a = list.GetSubItemData(0, 2, false);
    EXPECT_EQ(list.scratch(), a);
    EXPECT_FALSE(list.scratchReused());
    a->m_strText = L"kept";
    EXPECT_EQ(a, list.GetSubItemData(0, 2, false));
    EXPECT_TRUE(list.scratchReused());
    EXPECT_STREQ(L"kept", list.GetSubItemData(0, 2, false)->m_strText);
    // Another cell of the row, or a reset, starts from a default cell again.
    EXPECT_STREQ(L"", list.GetSubItemData(0, 3, false)->m_strText);
    EXPECT_FALSE(list.scratchReused());
    list.GetSubItemData(0, 3, false)->SetCheckbox(1, true);
    EXPECT_EQ(nullptr, list.GetSubItemData(0, 3, true)->m_pDefine);
    // Painting such a row works from the scratch cell too.
    KxPixelProbe probe;
    EXPECT_TRUE(probe.Capture(list.m_hWnd));
}

TEST_F(XListCtrlTest, LongTextsAreCutForTheListViewsBuffer)
{
    Fill(1);
    list.SetItemText(0, 4, L"0123456789abcdefghij");
    WCHAR sz[16];
    LVITEMW item = {};
    item.iSubItem = 4;
    item.pszText = sz;
    item.cchTextMax = 10;
    list.SendMessage(LVM_GETITEMTEXTW, 0, (LPARAM)&item);
    EXPECT_STREQ(L"012345...", sz);
    item.cchTextMax = 16;
    list.SetItemText(0, 4, L"0123456789abcde");  // 15 characters fit in 16
    list.SendMessage(LVM_GETITEMTEXTW, 0, (LPARAM)&item);
    EXPECT_STREQ(L"0123456789abcde", sz);
}

TEST_F(XListCtrlTest, CellsArePaintedWithTheSelectionFocusAndEnabledColours)
{
    Fill();
    const COLORREF kBk = RGB(250, 230, 10);
    list.SetBkColor(0, 4, kBk);
    list.SetBkColor(1, 4, kBk);
    list.SetBkColor(2, 4, kBk);
    list.SetEnabled(2, false);
    list.SetItemState(1, LVIS_SELECTED, LVIS_SELECTED);
    CRect rc0, rc1, rc2;
    list.GetSubItemRect(0, 4, LVIR_BOUNDS, rc0);
    list.GetSubItemRect(1, 4, LVIR_BOUNDS, rc1);
    list.GetSubItemRect(2, 4, LVIR_BOUNDS, rc2);

    list.SetFocus();
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Capture(list.m_hWnd));
    EXPECT_EQ(kBk, probe.Pixel(rc0.right - 3, rc0.top + 2));                           // its own colour
    EXPECT_EQ(::GetSysColor(COLOR_HIGHLIGHT), probe.Pixel(rc1.right - 3, rc1.top + 2));  // selected, focused
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), probe.Pixel(rc2.right - 3, rc2.top + 2));     // disabled row
    EXPECT_GT(probe.Count(::GetSysColor(COLOR_GRAYTEXT), &rc2), 0);                      // greyed text
    EXPECT_GT(probe.Count(::GetSysColor(COLOR_HIGHLIGHTTEXT), &rc1), 0);

    // Without the focus, a list that shows its selection always paints it in the face colour.
    host.SetFocus();
    ASSERT_TRUE(probe.Capture(list.m_hWnd));
    EXPECT_EQ(::GetSysColor(COLOR_BTNFACE), probe.Pixel(rc1.right - 3, rc1.top + 2));
    EXPECT_EQ(kBk, probe.Pixel(rc0.right - 3, rc0.top + 2));

    // -1 stands for the system colour; bold text is wider than regular text.
    list.SetBkColor(0, 4, (COLORREF)-1);
    list.SetTextColor(0, 4, RGB(0, 0, 200));
    ASSERT_TRUE(probe.Capture(list.m_hWnd));
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), probe.Pixel(rc0.right - 3, rc0.top + 2));
    int regular = probe.Count(RGB(0, 0, 200), &rc0);
    RECT box = probe.BoundingBox(RGB(0, 0, 200), &rc0);
    EXPECT_GT(regular, 0);
    EXPECT_TRUE(list.SetBold(0, 4, true));
    ASSERT_TRUE(probe.Capture(list.m_hWnd));
    RECT boldBox = probe.BoundingBox(RGB(0, 0, 200), &rc0);
    // Wine smooths the bold glyphs differently, so their width tells, not their pixel count.
    EXPECT_GT(boldBox.right - boldBox.left, box.right - box.left);
}

TEST_F(XListCtrlTest, EmptyListShowsItsText)
{
    list.setStrEmptyText(L"No orders yet");
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Capture(list.m_hWnd));
    CRect client, header;
    list.GetClientRect(&client);
    list.GetHeaderCtrl()->GetWindowRect(&header);
    client.top += header.Height() + 1;
    RECT box = probe.BoundingBox(::GetSysColor(COLOR_WINDOWTEXT), &client);
    EXPECT_GT(box.right - box.left, 20);
    // Centred: as much room on the left as on the right, give or take a pixel or two.
    EXPECT_NEAR(box.left - client.left, client.right - box.right, 3);
    Fill(1);
    ASSERT_TRUE(probe.Capture(list.m_hWnd));
    CRect below(client.left, client.top + 40, client.right, client.bottom);
    EXPECT_EQ(0, probe.Count(::GetSysColor(COLOR_WINDOWTEXT), &below));
}

TEST_F(XListCtrlTest, TextEditorCommitsToEverySelectedRowOfTheSameType)
{
    Fill();
    list.SetItemText(1, 4, L"plain");  // row 1's cell is not an edit: left alone
    Select({0, 1, 2});
    Click(0, 4);
    HWND hEdit = Editor();
    ASSERT_NE(nullptr, hEdit);
    EXPECT_EQ(0, list.getCtrlItem());
    EXPECT_EQ(4, list.getCtrlSubItem());
    WCHAR cls[32] = {};
    ::GetClassNameW(hEdit, cls, 32);
    EXPECT_STREQ(L"Edit", cls);
    EXPECT_EQ(hEdit, ::GetFocus());
    TypeInto(hEdit, L"urgent");
    Key(hEdit, VK_RETURN);
    EXPECT_EQ(nullptr, Editor());
    EXPECT_FALSE(::IsWindow(hEdit));
    EXPECT_STREQ(L"urgent", list.GetItemText(0, 4));
    EXPECT_STREQ(L"plain", list.GetItemText(1, 4));
    EXPECT_STREQ(L"urgent", list.GetItemText(2, 4));
    std::vector<Event> want = {Ev("begin", 2), Ev("selection", 0, 0, 4), Ev("selection", 0, 2, 4), Ev("end")};
    EXPECT_EQ(want, host.events);
    EXPECT_EQ(list.m_hWnd, host.listFromWParam);
    EXPECT_EQ(-1, list.getCtrlItem());
}

TEST_F(XListCtrlTest, EscapeAndScrollingCloseWithoutWriting)
{
    Fill(30);
    Click(0, 4);
    HWND hEdit = Editor();
    ASSERT_NE(nullptr, hEdit);
    TypeInto(hEdit, L"dropped");
    Key(hEdit, VK_ESCAPE);
    EXPECT_EQ(nullptr, Editor());
    EXPECT_STREQ(L"note", list.GetItemText(0, 4));
    EXPECT_EQ(-1, list.getCtrlItem());
    EXPECT_TRUE(host.events.empty());

    // A scroll while the editor holds the focus is ignored; the wheel closes the editor.
    Click(1, 4);
    ASSERT_NE(nullptr, Editor());
    int top = list.GetTopIndex();
    list.SendMessage(WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(top, list.GetTopIndex());
    EXPECT_NE(nullptr, Editor());
    list.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), MAKELPARAM(50, 50));
    EXPECT_EQ(nullptr, Editor());
    // Dragging a column divider (the header's message) and a right click close it too.
    Click(1, 4);
    ASSERT_NE(nullptr, Editor());
    list.SendMessage(WM_RESIZE_COLUMN_XLISTCTRL, 0, 0);
    EXPECT_EQ(nullptr, Editor());
    EXPECT_TRUE(host.events.empty());
    EXPECT_STREQ(L"note", list.GetItemText(1, 4));
}

TEST_F(XListCtrlTest, ModifierClicksNeverOpenAnEditorAndCommitAnOpenOne)
{
    Fill();
    Click(0, 4);
    HWND hEdit = Editor();
    ASSERT_NE(nullptr, hEdit);
    TypeInto(hEdit, L"kept");
    Click(2, 4, KxCtrl);
    EXPECT_EQ(nullptr, Editor());
    EXPECT_STREQ(L"kept", list.GetItemText(0, 4));
    Click(1, 4, KxShift);
    EXPECT_EQ(nullptr, Editor());
    // Clicking another cell commits the open editor and opens the new one.
    Select({});
    Click(0, 4);
    ASSERT_NE(nullptr, Editor());
    TypeInto(Editor(), L"first");
    Click(2, 4);
    EXPECT_STREQ(L"first", list.GetItemText(0, 4));
    ASSERT_NE(nullptr, Editor());
    EXPECT_EQ(2, list.getCtrlItem());
}

TEST_F(XListCtrlTest, NumericEditorsStoreTheNumberWithoutTrailingZeros)
{
    Fill();
    list.SetEditNum(0, 1, L"3", false);  // fractions allowed
    list.SetOxEditNum(1, 1, L"2", false, 2);
    TCHAR sep = XUtil::getCurrentFractionnalDigit();
    CString typed;
    typed.Format(L"12%c50", sep);
    Click(0, 1);
    HWND hEdit = Editor();
    ASSERT_NE(nullptr, hEdit);
    TypeInto(hEdit, typed);
    Key(hEdit, VK_RETURN);
    CString want;
    want.Format(L"12%c5", sep);
    EXPECT_STREQ(want, list.GetItemText(0, 1));

    // The masked numeric cell: two fractional digits shown, stored trimmed.
    Click(1, 1);
    hEdit = Editor();
    ASSERT_NE(nullptr, hEdit);
    TypeInto(hEdit, L"7");
    Key(hEdit, VK_RETURN);
    EXPECT_STREQ(L"7", list.GetItemText(1, 1));
}

TEST_F(XListCtrlTest, UpAndDownMoveTheEditorBetweenEditableRows)
{
    Fill(4);
    list.SetItemText(1, 4, L"plain");  // skipped: no editor
    list.SetEnabled(2, false);          // skipped: disabled
    Click(3, 4);
    ASSERT_NE(nullptr, Editor());
    TypeInto(Editor(), L"three");
    Key(Editor(), VK_UP);
    EXPECT_STREQ(L"three", list.GetItemText(3, 4));
    EXPECT_EQ(0, list.getCtrlItem());
    ASSERT_NE(nullptr, Editor());
    EXPECT_EQ(1u, list.GetSelectedCount());
    EXPECT_EQ((UINT)LVIS_SELECTED, list.GetItemState(0, LVIS_SELECTED));
    // Up on the first editable row: no current row, no editor.
    TypeInto(Editor(), L"zero");
    Key(Editor(), VK_UP);
    EXPECT_STREQ(L"zero", list.GetItemText(0, 4));
    EXPECT_EQ(-1, list.getCtrlItem());
    EXPECT_EQ(nullptr, Editor());
    // Down from row 0 jumps over the plain and the disabled row.
    Click(0, 4);
    Key(Editor(), VK_DOWN);
    EXPECT_EQ(3, list.getCtrlItem());
    EXPECT_NE(nullptr, Editor());
}

TEST_F(XListCtrlTest, DropDownListSelectsAnEntryForEverySelectedRow)
{
    Fill();
    Select({0, 2});
    Click(2, 2);
    KxUiXListBox* pBox = dynamic_cast<KxUiXListBox*>(list.getEditor());
    ASSERT_NE(nullptr, pBox);
    EXPECT_EQ(2, pBox->GetCurSel());  // the cell's text, "Closed"
    EXPECT_EQ(3, pBox->GetCount());
    EXPECT_EQ(pBox->m_hWnd, ::GetFocus());
    Key(pBox->m_hWnd, VK_UP);
    EXPECT_EQ(1, pBox->GetCurSel());
    Key(pBox->m_hWnd, VK_RETURN);
    EXPECT_EQ(nullptr, list.getEditor());
    EXPECT_STREQ(L"Shipped", list.GetItemText(0, 2));
    EXPECT_STREQ(L"Shipped", list.GetItemText(2, 2));
    EXPECT_STREQ(L"Shipped", list.GetItemText(1, 2));  // row 1 was "Shipped" already, not selected
    EXPECT_EQ(1, list.GetSubItemData(0, 2, false)->GetInitialComboSel());
    std::vector<Event> want = {Ev("begin", 2), Ev("selection", 0, 0, 2), Ev("selection", 0, 2, 2), Ev("end")};
    EXPECT_EQ(want, host.events);

    // A combo without entries opens nothing.
    CStringArray none;
    list.SetComboBox(0, 2, none, 5, 0);
    Select({});
    Click(0, 2);
    EXPECT_EQ(nullptr, list.getEditor());
}

TEST_F(XListCtrlTest, EditableComboTakesTypedText)
{
    Fill();
    CStringArray sizes;
    Items(sizes, {L"M4", L"M5", L"M6"});
    list.SetComboBoxEdit(1, 4, sizes, 1);
    Click(1, 4);
    KxUiXComboBoxEdit* pCombo = dynamic_cast<KxUiXComboBoxEdit*>(list.getEditor());
    ASSERT_NE(nullptr, pCombo);
    EXPECT_EQ(3, pCombo->GetCount());
    HWND hEdit = pCombo->getEditPart();
    ASSERT_NE(nullptr, hEdit);
    EXPECT_EQ(hEdit, ::GetFocus());
    TypeInto(hEdit, L"M8");
    Key(hEdit, VK_RETURN);
    EXPECT_EQ(nullptr, list.getEditor());
    EXPECT_STREQ(L"M8", list.GetItemText(1, 4));
    auto* pDef = dynamic_cast<DefineComboBoxEdit*>(list.GetSubItemData(1, 4, false)->m_pDefine);
    ASSERT_NE(nullptr, pDef);
    EXPECT_STREQ(L"M8", pDef->m_strText);
    EXPECT_EQ(-1, pDef->m_nSel);
    std::vector<Event> want = {Ev("begin", 1), Ev("selection", 0, 1, 4), Ev("end")};
    EXPECT_EQ(want, host.events);
}

TEST_F(XListCtrlTest, CheckBoxClickTogglesTheSelectionAndTheHeaderFollows)
{
    Fill();
    EXPECT_TRUE(list.SetHeaderCheckedState(3, 1));
    list.SetCheckbox(1, 3, 1);
    Select({0, 1, 2});
    Click(0, 3);  // row 0 is unchecked: every selected check box becomes checked
    EXPECT_EQ(1, list.GetCheckbox(0, 3));
    EXPECT_EQ(1, list.GetCheckbox(1, 3));
    EXPECT_EQ(1, list.GetCheckbox(2, 3));
    ASSERT_EQ(2u, host.events.size());  // only the cells that changed are announced
    EXPECT_EQ(Ev("check", 0, 0, 3), host.events[0]);
    EXPECT_EQ(1, host.events[0].state);
    EXPECT_EQ(Ev("check", 0, 2, 3), host.events[1]);
    EXPECT_EQ(2, list.GetHeaderCheckedState(3));
    EXPECT_EQ(3, list.CountCheckedItems(3));

    Select({});
    Click(1, 3);
    EXPECT_EQ(0, list.GetCheckbox(1, 3));
    EXPECT_EQ(1, list.GetHeaderCheckedState(3));
    // A cell without a state (-1) does not react; a disabled cell neither.
    list.SetCheckbox(2, 3, -1);
    list.GetSubItemData(0, 3, false)->m_bEnabled = false;
    host.events.clear();
    Select({});
    Click(2, 3);
    Click(0, 3);
    EXPECT_EQ(-1, list.GetCheckbox(2, 3));
    EXPECT_EQ(1, list.GetCheckbox(0, 3));
    EXPECT_TRUE(host.events.empty());
}

TEST_F(XListCtrlTest, HeaderCheckClickSetsTheColumnsCheckCells)
{
    Fill(4);
    list.SetCheckboxBitmap(1, 3, 0, 0, 1);
    list.SetRadioButtonH(2, 3, 0);
    list.SetRadioButtonV(3, 3, 0);
    // No header check: a click on the column header changes nothing.
    NMLISTVIEW nm = {};
    nm.hdr.hwndFrom = list.m_hWnd;
    nm.hdr.idFrom = 100;
    nm.hdr.code = LVN_COLUMNCLICK;
    nm.iItem = -1;
    nm.iSubItem = 3;
    host.SendMessage(WM_NOTIFY, 100, (LPARAM)&nm);
    EXPECT_EQ(0, list.GetCheckbox(0, 3));
    list.SetHeaderCheckedState(3, 1);
    host.SendMessage(WM_NOTIFY, 100, (LPARAM)&nm);
    EXPECT_EQ(2, list.GetHeaderCheckedState(3));
    EXPECT_EQ(1, list.GetCheckbox(0, 3));
    EXPECT_EQ(1, list.GetCheckbox(1, 3));
    EXPECT_EQ(1, list.GetCheckbox(2, 3));  // horizontal radio cells follow
    EXPECT_EQ(0, list.GetCheckbox(3, 3));  // vertical ones do not
    EXPECT_EQ(3, list.CountCheckedItems(3));
    list.SetRadioButtonV(3, 3, 1);
    EXPECT_EQ(3, list.CountCheckedItems(3));  // and are not counted
    host.SendMessage(WM_NOTIFY, 100, (LPARAM)&nm);
    EXPECT_EQ(1, list.GetHeaderCheckedState(3));
    EXPECT_EQ(0, list.GetCheckbox(0, 3));
    EXPECT_EQ(0, list.GetCheckbox(2, 3));
}

TEST_F(XListCtrlTest, RadioFamiliesKeepOneChecked)
{
    Fill(3);
    for (int r = 0; r < 3; ++r)
        list.SetRadioButtonV(r, 3, r == 2 ? 1 : 0);
    list.SetRadioButtonH(0, 1, 1);
    list.SetRadioButtonH(0, 2, 0);
    list.SetRadioButtonH(0, 4, 1);  // not adjacent: another family
    Select({});
    Click(0, 3);
    EXPECT_EQ(1, list.GetCheckbox(0, 3));
    EXPECT_EQ(0, list.GetCheckbox(2, 3));
    std::vector<Event> want = {Ev("check", 0, 2, 3), Ev("check", 0, 0, 3)};
    EXPECT_EQ(want, host.events);
    host.events.clear();
    Click(0, 3);  // already checked: nothing
    EXPECT_TRUE(host.events.empty());

    Click(0, 2);
    EXPECT_EQ(0, list.GetCheckbox(0, 1));
    EXPECT_EQ(1, list.GetCheckbox(0, 2));
    EXPECT_EQ(1, list.GetCheckbox(0, 4));
    want = {Ev("check", 0, 0, 1), Ev("check", 0, 0, 2)};
    EXPECT_EQ(want, host.events);
}

TEST_F(XListCtrlTest, PushButtonAnnouncesThePressWhenTheListAgrees)
{
    Fill();
    list.SetButton(1, 4, L"Ship");
    Select({});
    Click(1, 4);
    EXPECT_EQ(1, list.buttonClicks);
    std::vector<Event> want = {Ev("begin", 1), Ev("button", 0, 1, 4), Ev("end")};
    EXPECT_EQ(want, host.events);
    EXPECT_EQ(-1, list.getCtrlItem());
    host.events.clear();
    list.buttonAnswer = false;
    Click(1, 4);
    EXPECT_EQ(2, list.buttonClicks);
    EXPECT_TRUE(host.events.empty());
}

TEST_F(XListCtrlTest, KeysSelectAllAndOpenTheFirstEditableCell)
{
    Fill();
    KxPressKey(list.m_hWnd, 'A', KxCtrl);
    EXPECT_EQ(3u, list.GetSelectedCount());
    Select({1});
    list.SetFocus();
    Key(list.m_hWnd, VK_F2);
    EXPECT_EQ(1, list.getCtrlItem());
    EXPECT_EQ(1, list.getCtrlSubItem());  // column 0 is plain text
    EXPECT_NE(nullptr, Editor());
}

TEST_F(XListCtrlTest, TooltipIsThatOfTheCellUnderTheMouse)
{
    Fill();
    list.SetItemToolTipText(1, 2, L"Status of the order");
    ASSERT_NE(nullptr, list.toolTip());
    auto tipAt = [&](int row, int col, RECT* pRect) {
        CPoint pt = Centre(row, col);
        list.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(pt.x, pt.y));
        NMTTDISPINFOW info = {};
        info.hdr.hwndFrom = list.toolTip();
        info.hdr.idFrom = 1;
        info.hdr.code = TTN_NEEDTEXTW;
        list.SendMessage(WM_NOTIFY, 1, (LPARAM)&info);
        TOOLINFOW ti = {};
        ti.cbSize = sizeof ti;
        ti.hwnd = list.m_hWnd;
        ti.uId = 1;
        ::SendMessageW(list.toolTip(), TTM_GETTOOLINFOW, 0, (LPARAM)&ti);
        *pRect = ti.rect;
        return CString(info.lpszText);
    };
    RECT rcTool;
    EXPECT_STREQ(L"Status of the order", tipAt(1, 2, &rcTool));
    CRect rcCell;
    list.GetSubItemRect(1, 2, LVIR_BOUNDS, rcCell);
    EXPECT_EQ((RECT)rcCell, rcTool);  // the tool covers the cell
    EXPECT_STREQ(L"", tipAt(0, 2, &rcTool));
}

TEST_F(XListCtrlTest, ColumnsFitRowZeroAndTheKindsControl)
{
    Fill();
    list.SetItemText(1, 0, L"A much longer name than the first row's");
    list.resizeAllColumnWithItem();
    EXPECT_EQ(list.GetStringWidth(L"Bolts") + 10, list.GetColumnWidth(0));      // row 0 decides
    EXPECT_EQ(list.GetStringWidth(L"Open") + 16 + 10, list.GetColumnWidth(2));  // a combo's arrow
    EXPECT_EQ(list.GetStringWidth(L"10") + 10, list.GetColumnWidth(1));
    EXPECT_EQ(16, list.getAdditionalWidthFromControlType(3));
    EXPECT_EQ(0, list.getAdditionalWidthFromControlType(7));
    EXPECT_TRUE(list.setColumnVisible(4, false));
    list.resizeAllColumnWithItem();
    EXPECT_EQ(0, list.GetColumnWidth(4));
}

TEST_F(SortXListCtrlTest, HeaderClicksSortWithTheRememberedDirection)
{
    static const wchar_t* names[] = {L"pear", L"apple", L"fig", L"kiwi", L"date"};
    static const int qty[] = {10, 9, 100, 25, 9};
    for (int i = 0; i < 5; ++i) {
        list.InsertItem(i, names[i]);
        list.SetEditNum(i, 1, qty[i]);
        list.SetItemData(i, 100 + i);
    }
    // "kiwi" selected, "fig" focused: the bits stay with their rows.
    list.SetItemState(3, LVIS_SELECTED, LVIS_SELECTED);
    list.SetItemState(2, LVIS_FOCUSED, LVIS_FOCUSED);
    KxUiSortHeaderCtrl* pHeader = dynamic_cast<KxUiSortHeaderCtrl*>(list.getHeader());
    ASSERT_NE(nullptr, pHeader);

    CRect rcItem;
    pHeader->GetItemRect(1, &rcItem);
    KxClick(pHeader->m_hWnd, rcItem.CenterPoint().x, rcItem.CenterPoint().y);
    KxPumpMessages();
    EXPECT_EQ(1, pHeader->getSortColumn());
    std::vector<CString> got;
    for (int i = 0; i < 5; ++i)
        got.push_back(list.GetItemText(i, 1));
    EXPECT_EQ((std::vector<CString>{L"9", L"9", L"10", L"25", L"100"}), got);  // numbers, not texts
    int kiwi = -1, fig = -1;
    for (int i = 0; i < 5; ++i) {
        if (list.GetItemText(i, 0) == L"kiwi")
            kiwi = i;
        if (list.GetItemText(i, 0) == L"fig")
            fig = i;
    }
    EXPECT_EQ(3, kiwi);
    EXPECT_EQ(4, fig);
    EXPECT_EQ((UINT)LVIS_SELECTED, list.GetItemState(kiwi, LVIS_SELECTED));
    EXPECT_EQ(1u, list.GetSelectedCount());
    EXPECT_EQ(fig, list.GetNextItem(-1, LVNI_FOCUSED));
    EXPECT_EQ((DWORD_PTR)102, list.GetItemData(fig));  // the row's value travels too

    // The same header again: descending.
    KxClick(pHeader->m_hWnd, rcItem.CenterPoint().x, rcItem.CenterPoint().y);
    KxPumpMessages();
    EXPECT_STREQ(L"100", list.GetItemText(0, 1));
    EXPECT_FALSE(pHeader->getSortAscending(1));
    // Another column starts ascending; the first keeps its direction for later.
    list.Sort(0, true);
    EXPECT_STREQ(L"apple", list.GetItemText(0, 0));
    EXPECT_FALSE(pHeader->getSortAscending(1));
    list.resizeAllColumnWithItem();
    EXPECT_EQ(-1, pHeader->getSortColumn());
}

TEST_F(SortXListCtrlTest, HeaderArrowGeometryAndRememberedDirections)
{
    KxUiSortHeaderCtrl* pHeader = dynamic_cast<KxUiSortHeaderCtrl*>(list.getHeader());
    ASSERT_NE(nullptr, pHeader);
    EXPECT_EQ(-1, pHeader->getSortColumn());
    EXPECT_TRUE(pHeader->getSortAscending(7));  // never seen: ascending, and remembered
    pHeader->setSortArrow(2, false);
    pHeader->setSortArrow(-1, true);
    EXPECT_EQ(-1, pHeader->getSortColumn());
    EXPECT_FALSE(pHeader->getSortAscending(2));  // unchanged by removing the arrow

    // An item of height 20 drawn on a canvas: a 9 x 9 triangle, 5 pixels from the top and
    // from the right, shadow inside a highlight outline.
    const COLORREF shadow = ::GetSysColor(COLOR_BTNSHADOW), light = ::GetSysColor(COLOR_BTNHIGHLIGHT);
    for (bool ascending : {true, false}) {
        pHeader->setSortArrow(1, ascending);
        KxPixelProbe probe;
        ASSERT_TRUE(probe.Create(100, 20));
        pHeader->DrawItem(CDC::FromHandle(probe.Dc()), 1, CRect(0, 0, 100, 20), false);
        RECT area = {60, 3, 97, 18};
        RECT box = probe.BoundingBox(light, &area);
        EXPECT_EQ((RECT{86, 5, 95, 14}), box) << "ascending " << ascending;
        EXPECT_GT(probe.Count(shadow, &area), 0);
        // The apex is the middle column: one pixel at its tip.
        int tipRow = ascending ? 5 : 13;
        int onTip = 0;
        for (int x = 86; x < 95; ++x)
            onTip += probe.Pixel(x, tipRow) == light ? 1 : 0;
        EXPECT_EQ(1, onTip);
        EXPECT_EQ(light, probe.Pixel(90, tipRow));
    }
    // The sort column's text is narrowed by one square of the height.
    HDITEM hdi = {};
    WCHAR sz[] = L"A very long column heading";
    hdi.mask = HDI_TEXT | HDI_FORMAT;
    hdi.fmt = HDF_STRING;
    hdi.pszText = sz;
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Create(100, 20));
    CRect rcItem;
    pHeader->GetItemRect(1, &rcItem);
    int narrowed = pHeader->DrawTextW(CDC::FromHandle(probe.Dc()), 1, CRect(0, 0, 100, 20), hdi);
    int full = pHeader->DrawTextW(CDC::FromHandle(probe.Dc()), 0, CRect(0, 0, 100, 20), hdi);
    EXPECT_EQ(100, full);
    EXPECT_EQ(100 - rcItem.Height(), narrowed);
    EXPECT_EQ(0, pHeader->DrawTextW(CDC::FromHandle(probe.Dc()), 1, CRect(0, 0, rcItem.Height(), 20), hdi));
}

TEST_F(XListCtrlTest, HiddenColumnsKeepTheirWidthAndTheStateStream)
{
    EXPECT_TRUE(list.isColumnVisible(1));
    EXPECT_TRUE(list.setColumnVisible(1, false));
    EXPECT_FALSE(list.isColumnVisible(1));
    EXPECT_EQ(0, list.GetColumnWidth(1));
    EXPECT_FALSE(list.setColumnVisible(9, false));
    // The user cannot widen it by dragging its divider.
    NMHEADERW nm = {};
    nm.hdr.hwndFrom = list.GetHeaderCtrl()->m_hWnd;
    nm.hdr.code = HDN_BEGINTRACKW;
    nm.iItem = 1;
    EXPECT_EQ(TRUE, list.SendMessage(WM_NOTIFY, 0, (LPARAM)&nm));
    nm.iItem = 0;
    EXPECT_EQ(FALSE, list.SendMessage(WM_NOTIFY, 0, (LPARAM)&nm));

    CMemFile file;
    list.SaveState(file);
    EXPECT_TRUE(list.setColumnVisible(1, true));
    EXPECT_EQ(80, list.GetColumnWidth(1));
    list.SetColumnWidth(0, 33);
    file.SeekToBegin();
    EXPECT_TRUE(list.RestoreState(file));
    EXPECT_FALSE(list.isColumnVisible(1));
    EXPECT_EQ(120, list.GetColumnWidth(0));
    list.setColumnVisible(1, true);
    EXPECT_EQ(80, list.GetColumnWidth(1));
    // A stream for fewer columns applies what it has and reports the mismatch.
    CMemFile shorter;
    int data[] = {1, 44, 1};
    shorter.Write(data, sizeof data);
    shorter.SeekToBegin();
    EXPECT_FALSE(list.RestoreState(shorter));
    EXPECT_EQ(44, list.GetColumnWidth(0));
}
