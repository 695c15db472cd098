// The wrappers of the platform's controls: what they set, they read back; owner-drawn
// items reach the control's own object through reflection.
#include "KxControlHost.h"
#include "KxInput.h"
#include "KxPixelProbe.h"

#include <vector>

namespace {

class Controls : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_host.Open()); }
    ControlHost m_host;
};

}  // namespace

TEST_F(Controls, EditSelectionLinesPositionsAndLimits)
{
    CEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE | ES_MULTILINE | ES_AUTOVSCROLL, CRect(5, 5, 300, 120), &m_host, 1));
    edit.SetWindowText(L"one\r\ntwo three\r\nfour");
    EXPECT_EQ(3, edit.GetLineCount());
    EXPECT_EQ(5, edit.LineIndex(1));
    EXPECT_EQ(9, edit.LineLength(edit.LineIndex(1)));  // the line holding a character
    EXPECT_EQ(1, edit.LineFromChar(8));
    EXPECT_EQ(2, edit.LineFromChar(17));
    wchar_t line[16] = {};
    EXPECT_EQ(9, edit.GetLine(1, line, 15));
    line[9] = 0;
    EXPECT_STREQ(L"two three", line);
    EXPECT_EQ(0, edit.GetLine(1, nullptr, 15));

    edit.SetSel(5, 8);
    int start = 0, end = 0;
    edit.GetSel(start, end);
    EXPECT_EQ(5, start);
    EXPECT_EQ(8, end);
    EXPECT_EQ(MAKELONG(5, 8), static_cast<LONG>(edit.GetSel()));
    edit.ReplaceSel(L"2", TRUE);
    CString text;
    edit.GetWindowText(text);
    EXPECT_STREQ(L"one\r\n2 three\r\nfour", text);
    EXPECT_TRUE(edit.CanUndo());
    edit.Undo();
    edit.GetWindowText(text);
    EXPECT_STREQ(L"one\r\ntwo three\r\nfour", text);

    // Positions and characters map onto each other.
    const CPoint p = edit.PosFromChar(6);
    EXPECT_GT(p.x, 0);
    const int hit = edit.CharFromPos(CPoint(p.x + 1, p.y + 1));
    EXPECT_EQ(6, LOWORD(hit));
    EXPECT_EQ(1, HIWORD(hit));
    EXPECT_EQ(CPoint(-1, -1), edit.PosFromChar(500));

    edit.SetMargins(7, 9);
    EXPECT_EQ(MAKELONG(7, 9), static_cast<LONG>(edit.GetMargins()));
    edit.SetLimitText(20);
    EXPECT_EQ(20u, edit.GetLimitText());
    ASSERT_TRUE(edit.SetReadOnly());
    EXPECT_NE(0u, edit.GetStyle() & ES_READONLY);
    SetFocus(edit);
    KxTypeText(edit, L"x");
    edit.GetWindowText(text);
    EXPECT_STREQ(L"one\r\ntwo three\r\nfour", text);
}

namespace {

class ClickHost : public ControlHost {
public:
    int clicks = 0;
    afx_msg void OnClicked() { ++clicks; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ClickHost, ControlHost)
    ON_BN_CLICKED(7, &ClickHost::OnClicked)
END_MESSAGE_MAP()

}  // namespace

TEST(ControlsButton, CheckStatesClicksAndImages)
{
    ClickHost host;
    ASSERT_TRUE(host.Open());
    CButton check;
    ASSERT_TRUE(check.Create(L"Check", WS_CHILD | WS_VISIBLE | BS_AUTO3STATE, CRect(5, 5, 120, 30), &host, 7));
    EXPECT_EQ(static_cast<UINT>(BS_AUTO3STATE), check.GetButtonStyle() & BS_TYPEMASK);
    EXPECT_EQ(BST_UNCHECKED, check.GetCheck());
    check.SetCheck(BST_INDETERMINATE);
    EXPECT_EQ(BST_INDETERMINATE, check.GetCheck());
    check.SetCheck(BST_UNCHECKED);
    check.Click();  // as a user's click: the state advances and the parent hears of it
    EXPECT_EQ(BST_CHECKED, check.GetCheck());
    EXPECT_EQ(1, host.clicks);
    KxClick(check, 10, 10);
    EXPECT_EQ(BST_INDETERMINATE, check.GetCheck());
    EXPECT_EQ(2, host.clicks);
    EXPECT_EQ(static_cast<UINT>(BST_INDETERMINATE), check.GetState() & 3);

    CButton push;
    ASSERT_TRUE(push.Create(L"", WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON | BS_ICON, CRect(5, 40, 60, 80), &host, 8));
    HICON icon = LoadIconW(nullptr, IDI_INFORMATION);
    EXPECT_EQ(nullptr, push.SetIcon(icon));
    EXPECT_EQ(icon, push.GetIcon());
    push.SetButtonStyle(BS_DEFPUSHBUTTON);
    EXPECT_EQ(static_cast<UINT>(BS_DEFPUSHBUTTON), push.GetButtonStyle() & BS_TYPEMASK);
}

namespace {

// Owner-drawn list box: rows as tall as MeasureItem says, painted in their item data's colour.
class ColourList : public CListBox {
public:
    int measured = 0;
    std::vector<UINT> drawn;
    std::vector<DWORD_PTR> deleted;
    int compared = 0;
    void MeasureItem(LPMEASUREITEMSTRUCT mis) override
    {
        ++measured;
        mis->itemHeight = 21;
    }
    void DrawItem(LPDRAWITEMSTRUCT dis) override
    {
        drawn.push_back(dis->itemID);
        CDC::FromHandle(dis->hDC)->FillSolidRect(&dis->rcItem, static_cast<COLORREF>(dis->itemData));
    }
    int CompareItem(LPCOMPAREITEMSTRUCT cis) override
    {
        ++compared;
        return cis->itemData1 < cis->itemData2 ? -1 : cis->itemData1 > cis->itemData2 ? 1 : 0;
    }
    void DeleteItem(LPDELETEITEMSTRUCT dis) override { deleted.push_back(dis->itemData); }
};

}  // namespace

TEST_F(Controls, OwnerDrawnListBoxItemsAreMeasuredComparedDrawnAndDeletedThroughReflection)
{
    ColourList list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWFIXED | LBS_SORT | LBS_NOTIFY,
                            CRect(10, 10, 110, 110), &m_host, 3));
    EXPECT_EQ(1, list.measured);  // asked once, while the control was created
    EXPECT_EQ(21, list.GetItemHeight(0));
    // Without LBS_HASSTRINGS the "string" is the item data, ordered by CompareItem.
    const COLORREF colours[] = {RGB(0, 0, 250), RGB(250, 0, 0), RGB(0, 250, 0)};
    for (COLORREF c : colours)
        list.AddString(reinterpret_cast<LPCTSTR>(static_cast<DWORD_PTR>(c)));
    EXPECT_GT(list.compared, 0);
    EXPECT_EQ(RGB(250, 0, 0), list.GetItemData(0));
    EXPECT_EQ(RGB(0, 250, 0), list.GetItemData(1));
    EXPECT_EQ(RGB(0, 0, 250), list.GetItemData(2));

    KxPixelProbe probe;
    ASSERT_TRUE(probe.Capture(list));
    EXPECT_FALSE(list.drawn.empty());
    CRect second;
    list.GetItemRect(1, &second);
    EXPECT_EQ(21, second.Height());
    EXPECT_EQ(static_cast<RECT>(second), probe.BoundingBox(RGB(0, 250, 0)));
    probe.SaveIfFailed();

    EXPECT_EQ(2, list.DeleteString(0));
    EXPECT_EQ((std::vector<DWORD_PTR>{RGB(250, 0, 0)}), list.deleted);
    EXPECT_EQ(LB_ERR, list.DeleteString(9));
}

TEST_F(Controls, ListBoxStringsDataAndMultipleSelection)
{
    CListBox list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LBS_EXTENDEDSEL | LBS_HASSTRINGS, CRect(10, 10, 150, 150),
                            &m_host, 4));
    for (const wchar_t* s : {L"apple", L"Apple pie", L"banana", L"cherry"})
        list.AddString(s);
    EXPECT_EQ(4, list.GetCount());
    EXPECT_EQ(2, list.FindStringExact(-1, L"BANANA"));  // case-insensitive, whole string
    EXPECT_EQ(LB_ERR, list.FindStringExact(-1, L"ban"));
    EXPECT_EQ(1, list.FindString(0, L"apple"));         // a prefix, after item 0
    CString s;
    list.GetText(3, s);
    EXPECT_STREQ(L"cherry", s);
    list.GetText(10, s);
    EXPECT_TRUE(s.IsEmpty());
    EXPECT_EQ(6, list.GetTextLen(3));
    list.SetItemData(2, 42);
    EXPECT_EQ(42u, list.GetItemData(2));
    int value = 7;
    list.SetItemDataPtr(1, &value);
    EXPECT_EQ(&value, list.GetItemDataPtr(1));

    EXPECT_EQ(0, list.GetSelCount());
    list.SelItemRange(TRUE, 1, 3);
    EXPECT_EQ(3, list.GetSelCount());
    list.SetSel(2, FALSE);
    int items[4] = {};
    ASSERT_EQ(2, list.GetSelItems(4, items));
    EXPECT_EQ(1, items[0]);
    EXPECT_EQ(3, items[1]);

    EXPECT_EQ(1, list.InsertString(1, L"avocado"));
    list.DeleteString(0);
    list.GetText(0, s);
    EXPECT_STREQ(L"avocado", s);
    list.ResetContent();
    EXPECT_EQ(0, list.GetCount());
}

TEST_F(Controls, ComboBoxItemsEditPartAndDropDown)
{
    CComboBox combo;
    ASSERT_TRUE(combo.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWN | CBS_AUTOHSCROLL, CRect(10, 10, 200, 200),
                             &m_host, 5));
    for (const wchar_t* s : {L"red", L"green", L"blue"})
        combo.AddString(s);
    EXPECT_EQ(3, combo.GetCount());
    EXPECT_EQ(1, combo.FindStringExact(-1, L"Green"));
    EXPECT_EQ(CB_ERR, combo.FindStringExact(-1, L"gre"));
    EXPECT_EQ(1, combo.SetCurSel(1));
    EXPECT_EQ(1, combo.GetCurSel());
    CString text;
    combo.GetWindowText(text);
    EXPECT_STREQ(L"green", text);
    combo.GetLBText(2, text);
    EXPECT_STREQ(L"blue", text);
    combo.GetLBText(3, text);
    EXPECT_TRUE(text.IsEmpty());
    combo.SetItemData(0, 0x1234);
    EXPECT_EQ(0x1234u, combo.GetItemData(0));

    // The edit part.
    combo.SetEditSel(1, 3);
    const DWORD sel = combo.GetEditSel();
    EXPECT_EQ(1, LOWORD(sel));
    EXPECT_EQ(3, HIWORD(sel));
    COMBOBOXINFO info = {};
    ASSERT_TRUE(combo.GetComboBoxInfo(&info));
    ASSERT_NE(nullptr, info.hwndItem);
    combo.LimitText(4);
    SetWindowTextW(info.hwndItem, L"");
    KxTypeText(info.hwndItem, L"purple");
    combo.GetWindowText(text);
    EXPECT_STREQ(L"purp", text);

    EXPECT_FALSE(combo.GetDroppedState());
    combo.ShowDropDown(TRUE);
    EXPECT_TRUE(combo.GetDroppedState());
    combo.ShowDropDown(FALSE);
    EXPECT_FALSE(combo.GetDroppedState());
}

TEST_F(Controls, ScrollBarProgressSpinAndSlider)
{
    CScrollBar bar;
    ASSERT_TRUE(bar.Create(WS_CHILD | WS_VISIBLE | SBS_HORZ, CRect(10, 10, 200, 30), &m_host, 10));
    SCROLLINFO si = {sizeof si, SIF_RANGE | SIF_PAGE | SIF_POS, 0, 100, 10, 40};
    bar.SetScrollInfo(&si);
    EXPECT_EQ(91, bar.GetScrollLimit());  // 100 - (10 - 1)
    EXPECT_EQ(40, bar.GetScrollPos());
    EXPECT_EQ(40, bar.SetScrollPos(95));
    EXPECT_EQ(91, bar.GetScrollPos());  // clamped to the limit
    int lo = -1, hi = -1;
    bar.GetScrollRange(&lo, &hi);
    EXPECT_EQ(0, lo);
    EXPECT_EQ(100, hi);

    CProgressCtrl progress;
    ASSERT_TRUE(progress.Create(WS_CHILD | WS_VISIBLE, CRect(10, 40, 200, 60), &m_host, 11));
    progress.SetRange32(-50, 150000);
    progress.GetRange(lo, hi);
    EXPECT_EQ(-50, lo);
    EXPECT_EQ(150000, hi);
    EXPECT_EQ(0, progress.SetPos(1000));  // the previous position
    EXPECT_EQ(1000, progress.GetPos());
    EXPECT_EQ(1000, progress.OffsetPos(500));
    EXPECT_EQ(1500, progress.GetPos());
    EXPECT_EQ(10, progress.SetStep(100000));
    progress.StepIt();
    EXPECT_EQ(101500, progress.GetPos());
    progress.StepIt();  // past the end: starts again from the bottom
    EXPECT_LT(progress.GetPos(), 101500);
    progress.SetRange(0, 10);
    progress.GetRange(lo, hi);
    EXPECT_EQ(10, hi);
    EXPECT_EQ(CLR_DEFAULT, progress.SetBarColor(RGB(1, 2, 3)));
    EXPECT_EQ(RGB(1, 2, 3), progress.SetBarColor(CLR_DEFAULT));
    EXPECT_EQ(CLR_DEFAULT, progress.SetBkColor(RGB(4, 5, 6)));

    CEdit buddy;
    ASSERT_TRUE(buddy.Create(WS_CHILD | WS_VISIBLE | ES_NUMBER, CRect(10, 70, 80, 92), &m_host, 12));
    CSpinButtonCtrl spin;
    ASSERT_TRUE(spin.Create(WS_CHILD | WS_VISIBLE | UDS_SETBUDDYINT | UDS_NOTHOUSANDS | UDS_ALIGNRIGHT, CRect(0, 0, 0, 0), &m_host, 13));
    spin.SetBuddy(&buddy);
    EXPECT_EQ(buddy.GetSafeHwnd(), spin.GetBuddy()->GetSafeHwnd());
    spin.SetRange32(-5, 100000);
    spin.GetRange32(lo, hi);
    EXPECT_EQ(-5, lo);
    EXPECT_EQ(100000, hi);
    spin.SetPos32(70000);
    CString text;
    buddy.GetWindowText(text);
    EXPECT_STREQ(L"70000", text);  // the buddy shows the position
    BOOL error = TRUE;
    EXPECT_EQ(70000, spin.GetPos32(&error));
    EXPECT_FALSE(error);
    spin.SetRange(0, 20);
    spin.GetRange(lo, hi);
    EXPECT_EQ(0, lo);
    EXPECT_EQ(20, hi);

    CSliderCtrl slider;
    ASSERT_TRUE(slider.Create(WS_CHILD | WS_VISIBLE | TBS_HORZ, CRect(10, 100, 200, 130), &m_host, 14));
    slider.SetRange(10, 20, TRUE);
    slider.SetPos(50);
    EXPECT_EQ(20, slider.GetPos());
    slider.GetRange(lo, hi);
    EXPECT_EQ(10, lo);
    EXPECT_EQ(20, hi);
}

TEST_F(Controls, TabsTreeAndToolTips)
{
    CTabCtrl tabs;
    ASSERT_TRUE(tabs.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 300, 200), &m_host, 20));
    EXPECT_EQ(0, tabs.InsertItem(0, L"General"));
    EXPECT_EQ(1, tabs.InsertItem(1, L"Advanced"));
    EXPECT_EQ(1, tabs.InsertItem(TCIF_TEXT | TCIF_PARAM, 1, L"Colours", 0, 77));
    EXPECT_EQ(3, tabs.GetItemCount());
    TCITEM item = {};
    wchar_t buf[32];
    item.mask = TCIF_TEXT | TCIF_PARAM;
    item.pszText = buf;
    item.cchTextMax = 32;
    ASSERT_TRUE(tabs.GetItem(1, &item));
    EXPECT_STREQ(L"Colours", buf);
    EXPECT_EQ(77, item.lParam);
    EXPECT_EQ(0, tabs.GetCurSel());
    EXPECT_EQ(0, tabs.SetCurSel(2));
    EXPECT_EQ(2, tabs.GetCurSel());
    CRect first, second;
    ASSERT_TRUE(tabs.GetItemRect(0, &first));
    ASSERT_TRUE(tabs.GetItemRect(1, &second));
    EXPECT_EQ(first.right, second.left);
    CRect display(0, 0, 300, 200);
    tabs.AdjustRect(FALSE, &display);
    EXPECT_GT(display.top, first.bottom - 1);
    TCHITTESTINFO hit = {second.CenterPoint(), 0};
    EXPECT_EQ(1, tabs.HitTest(&hit));
    ASSERT_TRUE(tabs.DeleteItem(0));
    EXPECT_EQ(2, tabs.GetItemCount());

    CTreeCtrl tree;
    ASSERT_TRUE(tree.Create(WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS | TVS_HASLINES, CRect(0, 0, 200, 200), &m_host, 21));
    HTREEITEM root = tree.InsertItem(L"root");
    HTREEITEM a = tree.InsertItem(L"a", root);
    HTREEITEM b = tree.InsertItem(L"b", 1, 2, root);
    HTREEITEM a1 = tree.InsertItem(L"a1", a);
    ASSERT_NE(nullptr, a1);
    EXPECT_EQ(4u, tree.GetCount());
    EXPECT_EQ(root, tree.GetRootItem());
    EXPECT_EQ(a, tree.GetChildItem(root));
    EXPECT_EQ(b, tree.GetNextSiblingItem(a));
    EXPECT_EQ(a, tree.GetParentItem(a1));
    EXPECT_TRUE(tree.ItemHasChildren(a));
    EXPECT_FALSE(tree.ItemHasChildren(b));
    EXPECT_STREQ(L"a1", tree.GetItemText(a1));
    ASSERT_TRUE(tree.SetItemText(a1, L"renamed"));
    EXPECT_STREQ(L"renamed", tree.GetItemText(a1));
    EXPECT_STREQ(L"", tree.GetItemText(nullptr));
    int image = 0, selected = 0;
    ASSERT_TRUE(tree.GetItemImage(b, image, selected));
    EXPECT_EQ(1, image);
    EXPECT_EQ(2, selected);
    ASSERT_TRUE(tree.SetItemData(b, 0xABCD));
    EXPECT_EQ(0xABCDu, tree.GetItemData(b));

    EXPECT_EQ(0u, tree.GetItemState(root, TVIS_EXPANDED));
    ASSERT_TRUE(tree.Expand(root, TVE_EXPAND));
    EXPECT_EQ(static_cast<UINT>(TVIS_EXPANDED), tree.GetItemState(root, TVIS_EXPANDED));
    ASSERT_TRUE(tree.SelectItem(b));
    EXPECT_EQ(b, tree.GetSelectedItem());
    CRect rb;
    ASSERT_TRUE(tree.GetItemRect(b, &rb, TRUE));
    UINT flags = 0;
    EXPECT_EQ(b, tree.HitTest(rb.CenterPoint(), &flags));
    EXPECT_NE(0u, flags & TVHT_ONITEM);
    ASSERT_TRUE(tree.DeleteItem(a));  // and its child
    EXPECT_EQ(2u, tree.GetCount());
    ASSERT_TRUE(tree.DeleteAllItems());
    EXPECT_EQ(0u, tree.GetCount());

    CToolTipCtrl tips;
    ASSERT_TRUE(tips.Create(&m_host, TTS_ALWAYSTIP));
    EXPECT_NE(0u, tips.GetStyle() & WS_POPUP);
    ASSERT_TRUE(tips.AddTool(&m_host, L"the whole window", CRect(0, 0, 100, 100), 1));
    ASSERT_TRUE(tips.AddTool(&tree, L"the tree"));
    EXPECT_EQ(2, tips.GetToolCount());
    CString tip;
    tips.GetText(tip, &m_host, 1);
    EXPECT_STREQ(L"the whole window", tip);
    tips.UpdateTipText(L"changed", &m_host, 1);
    tips.GetText(tip, &m_host, 1);
    EXPECT_STREQ(L"changed", tip);
    tips.GetText(tip, &tree);
    EXPECT_STREQ(L"the tree", tip);
    TTTOOLINFO ti;
    EXPECT_TRUE(tips.GetToolInfo(ti, &m_host, 1));
    EXPECT_EQ(CRect(0, 0, 100, 100), CRect(ti.rect));
    tips.DelTool(&m_host, 1);
    EXPECT_EQ(1, tips.GetToolCount());
    EXPECT_FALSE(tips.GetToolInfo(ti, &m_host, 1));
    tips.GetText(tip, &m_host, 1);
    EXPECT_TRUE(tip.IsEmpty());
    tips.Activate(FALSE);
    MSG msg = {m_host.GetSafeHwnd(), WM_MOUSEMOVE, 0, MAKELPARAM(5, 5)};
    tips.RelayEvent(&msg);  // an inactive tip stays hidden
    EXPECT_FALSE(tips.IsWindowVisible());
}

namespace {

class SwatchStatic : public CStatic {
public:
    int drawn = 0;
    void DrawItem(LPDRAWITEMSTRUCT dis) override
    {
        ++drawn;
        CDC::FromHandle(dis->hDC)->FillSolidRect(&dis->rcItem, RGB(20, 180, 20));
    }
};

}  // namespace

TEST_F(Controls, StaticIconsAndOwnerDrawing)
{
    CStatic icon;
    ASSERT_TRUE(icon.Create(L"", WS_CHILD | WS_VISIBLE | SS_ICON, CRect(5, 5, 40, 40), &m_host));
    HICON h = LoadIconW(nullptr, IDI_WARNING);
    icon.SetIcon(h);
    EXPECT_EQ(h, icon.GetIcon());

    SwatchStatic swatch;
    ASSERT_TRUE(swatch.Create(L"", WS_CHILD | WS_VISIBLE | SS_OWNERDRAW, CRect(50, 5, 90, 25), &m_host, 30));
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Capture(m_host));
    EXPECT_GT(swatch.drawn, 0);
    EXPECT_EQ((RECT{50, 5, 90, 25}), probe.BoundingBox(RGB(20, 180, 20)));
    probe.SaveIfFailed();
}
