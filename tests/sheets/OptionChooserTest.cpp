// The choosers (list with icons, tabs, none) kept in step with the active page, choices made with real
// clicks and keys, a page that refuses to be left, and the commands PressButton sends.
#include "SheetTestPages.h"
#include "KxInput.h"
#include "KxMsgRecorder.h"
#include "KxPixelProbe.h"
#include <gtest/gtest.h>
#include <prsht.h>

namespace {

using S = KxUiOptionSheet;

CPoint CentreOfListItem(CListBox& list, int n)
{
    CRect rc;
    list.GetItemRect(n, &rc);
    return rc.CenterPoint();
}

CPoint CentreOfTab(CTabCtrl& tabs, int n)
{
    CRect rc;
    tabs.GetItemRect(n, &rc);
    return rc.CenterPoint();
}

TEST(OptionChooser, ListShowsGroupsAndFollowsClicksAndKeys)
{
    Log log;
    LogPage editor("Editor", &log), fonts("Fonts", &log), colours("Colours", &log), saving("Saving", &log);
    editor.SetIconID(reinterpret_cast<UINT_PTR>(IDI_APPLICATION), nullptr);
    TestSheet sheet(L"Options");
    sheet.setOptionListType(KxUiSimpleOptionSheet::listBox);
    sheet.AddPage(&fonts, &editor);  // the group comes first, with its page
    sheet.AddPage(&saving);
    sheet.InsertPage(5, &colours, &editor);
    ASSERT_TRUE(sheet.open());
    KxUiOptionListBox& list = sheet.GetListBox();
    ASSERT_EQ(&list, sheet.GetListControlWnd());
    ASSERT_EQ(4, list.GetCount());
    const KxUiOptionPage* order[] = {&editor, &fonts, &colours, &saving};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(order[i], list.GetItemPage(i)) << i;
        EXPECT_EQ(i == 1 || i == 2 ? &editor : nullptr, list.GetItemGroup(i)) << i;
        CString text;
        list.GetText(i, text);
        EXPECT_EQ(const_cast<KxUiOptionPage*>(order[i])->GetTitle(), text);
    }
    EXPECT_TRUE(list.IsItemGroup(0));
    EXPECT_EQ(0, list.GetCurSel());

    // A click on an entry shows its page; the old page is asked first.
    log.clear();
    CPoint pt = CentreOfListItem(list, 2);
    KxClick(list.m_hWnd, pt.x, pt.y);
    EXPECT_EQ(&colours, sheet.GetActivePage());
    EXPECT_EQ(2, list.GetCurSel());
    EXPECT_EQ(Log({"Editor.KillActive", "Colours.SetActive"}), log);
    EXPECT_TRUE(colours.GetStyle() & WS_VISIBLE);
    EXPECT_FALSE(editor.GetStyle() & WS_VISIBLE);

    // The keyboard moves through the list the same way.
    KxPressKey(list.m_hWnd, VK_DOWN);
    EXPECT_EQ(&saving, sheet.GetActivePage());

    // A page that refuses to be left keeps the sheet, and the list goes back to it.
    saving.refuseLeave = true;
    log.clear();
    pt = CentreOfListItem(list, 1);
    KxClick(list.m_hWnd, pt.x, pt.y);
    EXPECT_EQ(&saving, sheet.GetActivePage());
    EXPECT_EQ(3, list.GetCurSel());
    EXPECT_EQ(Log({"Saving.KillActive"}), log);

    // The sheet's own moves (and removals) show in the list.
    saving.refuseLeave = false;
    EXPECT_TRUE(sheet.SetActivePage(&fonts));
    EXPECT_EQ(1, list.GetCurSel());
    EXPECT_TRUE(sheet.RemovePage(&fonts));
    EXPECT_EQ(3, list.GetCount());
    EXPECT_EQ(list.FindPage(sheet.GetActivePage()), list.GetCurSel());
    EXPECT_EQ(-1, list.FindPage(&fonts));

    // The mouse over an entry highlights it; leaving the list clears it.
    pt = CentreOfListItem(list, 0);
    list.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(pt.x, pt.y));
    EXPECT_EQ(0, list.getHighLightItem());
    list.SendMessage(WM_MOUSELEAVE);
    EXPECT_EQ(-1, list.getHighLightItem());
}

TEST(OptionChooser, ListDrawsIconsTitlesAndTheHotEntry)
{
    LogPage general("General", nullptr), network("Network", nullptr);
    general.SetIconID(reinterpret_cast<UINT_PTR>(IDI_APPLICATION), nullptr);
    TestSheet sheet(L"Options");
    sheet.setOptionListType(KxUiSimpleOptionSheet::listBox);
    sheet.AddPage(&general);
    sheet.AddPage(&network);
    ASSERT_TRUE(sheet.open());
    KxUiOptionListBox& list = sheet.GetListBox();
    CRect item0, item1;
    list.GetItemRect(0, &item0);
    list.GetItemRect(1, &item1);
    EXPECT_GE(item0.Height(), 16 + 4);  // room for a 16-pixel icon

    // The hot entry's background is the blend of selection and window colours.
    list.highLightItem(1);
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Render(list.m_hWnd));
    auto countNot = [&](const CRect& rc, COLORREF c) { return rc.Width() * rc.Height() - probe.Count(c, &rc); };
    EXPECT_EQ(KxUiOptionListBox::hotColor(), probe.Pixel(item1.right - 3, item1.top + 2));
    // The selected entry has the selection colour; the icon is drawn left of the title on it.
    EXPECT_EQ(::GetSysColor(COLOR_HIGHLIGHT), probe.Pixel(item0.right - 3, item0.top + 2));
    const CRect iconArea(item0.left + 4, item0.CenterPoint().y - 8, item0.left + 20, item0.CenterPoint().y + 8);
    EXPECT_GT(countNot(iconArea, ::GetSysColor(COLOR_HIGHLIGHT)), 20);
    // The second entry has no icon: its icon area is plain background.
    const CRect noIcon(item1.left + 4, item1.CenterPoint().y - 8, item1.left + 20, item1.CenterPoint().y + 8);
    EXPECT_EQ(0, countNot(noIcon, KxUiOptionListBox::hotColor()));

    // Icons above the titles make taller entries.
    list.setIconPlacement(KxUiOptionListBox::iconTop);
    CRect tall;
    list.GetItemRect(0, &tall);
    EXPECT_GE(tall.Height(), 32 + 13);
    list.setIconPlacement(99);  // unknown: no change
    EXPECT_EQ(KxUiOptionListBox::iconTop, list.getIconPlacement());
}

TEST(OptionChooser, TabsFollowClicksAndAskTheSheetFirst)
{
    Log log;
    LogPage general("General", &log), view("View", &log), advanced("Advanced", &log);
    TestSheet sheet(L"Options");
    sheet.setOptionListType(KxUiSimpleOptionSheet::tabCtrl);
    sheet.AddPage(&general);
    sheet.AddPage(&view);
    sheet.AddPage(&advanced);
    ASSERT_TRUE(sheet.open());
    KxUiOptionTabCtrl& tabs = sheet.GetTabCtrl();
    ASSERT_EQ(&tabs, sheet.GetListControlWnd());
    ASSERT_EQ(3, tabs.GetItemCount());
    EXPECT_EQ(&view, tabs.GetItemPage(1));
    EXPECT_EQ(0u, tabs.GetItemData(7));
    // The pages lie inside the tab control, below its tabs.
    CRect tabRect = sheet.rectOf(S::idChooser), page = sheet.pageRect(general), first;
    tabs.GetItemRect(0, &first);
    EXPECT_TRUE(tabRect.PtInRect(page.TopLeft()));
    EXPECT_TRUE(tabRect.PtInRect(page.BottomRight() - CSize(1, 1)));
    EXPECT_GE(page.top, tabRect.top + first.bottom);

    KxMsgRecorder rec;
    rec.Watch(sheet.m_hWnd, "sheet", {WM_NOTIFY});
    KxMsg click = KxMsg::Notify("sheet", NM_CLICK);  // the control's own click report follows
    click.flags |= KxMsg::MayBeMissing;
    CPoint pt = CentreOfTab(tabs, 2);
    log.clear();
    KxClick(tabs.m_hWnd, pt.x, pt.y);
    EXPECT_TRUE(rec.Matches({KxMsg::Notify("sheet", TCN_SELCHANGING), KxMsg::Notify("sheet", TCN_SELCHANGE), click}));
    EXPECT_EQ(&advanced, sheet.GetActivePage());
    EXPECT_EQ(Log({"General.KillActive", "Advanced.SetActive"}), log);

    // Refused: the tab control is told not to change, so no TCN_SELCHANGE follows.
    advanced.refuseLeave = true;
    rec.Clear();
    pt = CentreOfTab(tabs, 1);
    KxClick(tabs.m_hWnd, pt.x, pt.y);
    EXPECT_TRUE(rec.Matches({KxMsg::Notify("sheet", TCN_SELCHANGING), click}));
    EXPECT_EQ(2, tabs.GetCurSel());
    EXPECT_EQ(&advanced, sheet.GetActivePage());

    // A page shown by the program selects its tab.
    advanced.refuseLeave = false;
    sheet.SetActivePage(&view);
    EXPECT_EQ(1, tabs.GetCurSel());
}

TEST(OptionChooser, SimpleSheetPicksTheChooserByNumber)
{
    TestSheet sheet(L"Options");
    EXPECT_EQ(nullptr, sheet.GetListControl());
    sheet.setOptionListType(KxUiSimpleOptionSheet::tabCtrl);
    EXPECT_EQ(static_cast<KxUiOptionSheet::COptionList*>(&sheet.GetTabCtrl()), sheet.GetListControl());
    sheet.setOptionListType(3);  // unknown: no change
    EXPECT_EQ(KxUiSimpleOptionSheet::tabCtrl, sheet.getOptionListType());
    EXPECT_EQ(static_cast<KxUiOptionSheet::COptionList*>(&sheet.GetTabCtrl()), sheet.GetListControl());
    sheet.setOptionListType(KxUiSimpleOptionSheet::listBox);
    EXPECT_EQ(static_cast<KxUiOptionSheet::COptionList*>(&sheet.GetListBox()), sheet.GetListControl());
    sheet.setOptionListType(KxUiSimpleOptionSheet::noList);
    EXPECT_EQ(nullptr, sheet.GetListControl());

    // No chooser: the page takes the sheet's width inside the margins.
    LogPage only("Only", nullptr);
    sheet.AddPage(&only);
    ASSERT_TRUE(sheet.open());
    EXPECT_EQ(nullptr, sheet.GetListControlWnd());
    CRect client;
    sheet.GetClientRect(&client);
    const CRect page = sheet.pageRect(only);
    EXPECT_EQ(client.right - page.right, page.left);
    EXPECT_EQ(nullptr, sheet.GetDlgItem(S::idChooser));
}

// PressButton's numbers and the commands the sheet receives, in a wizard and in an options sheet.
TEST(OptionChooser, PressButtonSendsTheButtonsCommand)
{
    LogPage one("One", nullptr), two("Two", nullptr);
    one.refuseLeave = true;  // keeps the wizard where it is while the buttons are pressed
    TestSheet wizard;
    wizard.SetWizardMode();
    wizard.SetFlags(S::flagHelp);
    wizard.AddPage(&one);
    wizard.AddPage(&two);
    one.refuseCancel = true;
    ASSERT_TRUE(wizard.open());
    KxMsgRecorder rec;
    rec.Watch(wizard.m_hWnd, "sheet", {WM_COMMAND});
    wizard.SendMessage(KXUIM_ENABLE, S::idFinish, FALSE);  // a disabled Finish keeps the wizard open
    for (int n : {S::btnBack, S::btnNext, S::btnFinish, S::btnCancel, S::btnHelp, S::btnOK, S::btnApply})
        EXPECT_TRUE(wizard.PressButton(n)) << n;
    EXPECT_FALSE(wizard.PressButton(S::btnCustom));
    auto cmd = [](UINT id) { return KxMsg("sheet", WM_COMMAND, MAKEWPARAM(id, BN_CLICKED)); };
    EXPECT_TRUE(rec.Matches({cmd(S::idBack), cmd(S::idNext), cmd(S::idFinish), cmd(IDCANCEL), cmd(S::idHelp),
                             cmd(IDOK), cmd(S::idApply)}));
    EXPECT_NE(nullptr, wizard.GetSafeHwnd());
    one.refuseCancel = false;
    EXPECT_TRUE(wizard.PressButton(S::btnCancel));
    EXPECT_EQ(nullptr, wizard.GetSafeHwnd());
}

}  // namespace
