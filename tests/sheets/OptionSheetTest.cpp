// Option sheets: the button row, OK/Apply/Cancel, the wizard's moves, modal and modeless runs, the
// layout when resized, and what bad input gets.
#include "SheetTestPages.h"
#include "KxTestApp.h"
#include <gtest/gtest.h>
#include <prsht.h>

namespace {

using S = KxUiOptionSheet;

// The sheet's push buttons as the window list has them (creation order): id, visible, text, rectangle.
struct ButtonSeen {
    UINT id;
    bool visible;
    CString text;
    CRect rect;
};
std::vector<ButtonSeen> ButtonsOf(const TestSheet& sheet)
{
    std::vector<ButtonSeen> seen;
    for (HWND h = ::GetWindow(sheet.m_hWnd, GW_CHILD); h != nullptr; h = ::GetWindow(h, GW_HWNDNEXT)) {
        wchar_t cls[32] = {};
        ::GetClassNameW(h, cls, 32);
        if (_wcsicmp(cls, L"Button") != 0)
            continue;
        wchar_t text[128] = {};
        ::GetWindowTextW(h, text, 128);
        RECT rc;
        ::GetWindowRect(h, &rc);
        ::MapWindowPoints(nullptr, sheet.m_hWnd, reinterpret_cast<POINT*>(&rc), 2);
        seen.push_back({static_cast<UINT>(::GetDlgCtrlID(h)), (::GetWindowLongW(h, GWL_STYLE) & WS_VISIBLE) != 0,
                        text, CRect(rc)});
    }
    return seen;
}

TEST(OptionSheetButtons, RowFollowsTheFlags)
{
    struct Case {
        DWORD flags;
        bool wizard;
        std::vector<UINT> ids;      // creation order
        std::vector<bool> visible;
    };
    const Case cases[] = {
        {0, false, {S::idOK, S::idApply, S::idCancel}, {true, true, true}},
        {S::flagNoApply | S::flagHelp, false, {S::idOK, S::idCancel, S::idHelp}, {true, true, true}},
        {S::flagCustom, false, {S::idOK, S::idApply, S::idCancel, S::idCustom}, {true, true, true, true}},
        {0, true, {S::idBack, S::idNext, S::idFinish, S::idCancel}, {true, true, false, true}},
        {S::flagWizardHasFinish | S::flagHelp, true, {S::idBack, S::idNext, S::idFinish, S::idCancel, S::idHelp},
         {true, true, true, true, true}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "flags " << c.flags << (c.wizard ? " wizard" : ""));
        Log log;
        LogPage page("General", &log);
        TestSheet sheet(L"Options");
        sheet.SetFlags(c.flags);
        if (c.wizard)
            sheet.SetWizardMode();
        sheet.AddPage(&page);
        ASSERT_TRUE(sheet.open());
        const auto seen = ButtonsOf(sheet);
        ASSERT_EQ(c.ids.size(), seen.size());
        CRect client;
        sheet.GetClientRect(&client);
        int right = -1;
        for (size_t i = 0; i < seen.size(); ++i) {
            EXPECT_EQ(c.ids[i], seen[i].id);
            EXPECT_EQ(c.visible[i], seen[i].visible) << seen[i].id;
            EXPECT_EQ(sheet.getButtonText(seen[i].id), seen[i].text);
            // Shown buttons are 100 wide, 6 apart, their row ending 6 above the bottom; a hidden one
            // takes no room.
            EXPECT_EQ(client.bottom - 6, seen[i].rect.bottom);
            EXPECT_EQ(sheet.GetButtonHeight(), seen[i].rect.Height());
            EXPECT_EQ(seen[i].visible ? 100 : 0, seen[i].rect.Width());
            if (seen[i].visible) {
                if (right >= 0) {
                    EXPECT_EQ(right + 6, seen[i].rect.left);
                }
                right = seen[i].rect.right;
            }
            EXPECT_EQ(static_cast<DWORD>(WS_TABSTOP | BS_DEFPUSHBUTTON),
                      ::GetWindowLongW(sheet.GetDlgItem(static_cast<int>(seen[i].id))->m_hWnd, GWL_STYLE) &
                          (WS_TABSTOP | 0xF));
        }
        EXPECT_EQ(client.right - 7, right);  // the row is right-aligned on the margin
    }
}

TEST(OptionSheetButtons, TextsAreTheKeysAndOverridable)
{
    TestSheet sheet;
    const std::pair<UINT, const wchar_t*> texts[] = {
        {1, L"$$OK"},         {2, L"$$Cancel"},      {9, L"$$Help"},       {10, L"$$Custom"},
        {12321, L"$$Apply"},  {12323, L"$$< Back"},  {12324, L"$$Next >"}, {12325, L"$$Finish"},
        {77, L"$$No Text Button, see KxUiOptionSheet::getButtonText"},
    };
    for (const auto& t : texts)
        EXPECT_EQ(CString(t.second), sheet.getButtonText(t.first)) << t.first;

    // A translating sheet: its texts are what the buttons show.
    class FrenchSheet : public TestSheet {
    public:
        CString getButtonText(UINT nID) override
        {
            return nID == idCancel ? CString(L"Annuler") : KxUiOptionSheet::getButtonText(nID);
        }
    };
    LogPage page("General", nullptr);
    FrenchSheet french;
    french.AddPage(&page);
    ASSERT_TRUE(french.open());
    CString text;
    french.GetDlgItem(S::idCancel)->GetWindowText(text);
    EXPECT_EQ(CString(L"Annuler"), text);
    french.GetDlgItem(S::idOK)->GetWindowText(text);
    EXPECT_EQ(CString(L"$$OK"), text);
}

TEST(OptionSheetButtons, PressButtonSendsOnlyWhatApplies)
{
    Log log;
    LogPage page("General", &log);
    TestSheet sheet(L"Options");
    sheet.AddPage(&page);
    EXPECT_FALSE(sheet.PressButton(S::btnOK));  // no window yet
    ASSERT_TRUE(sheet.open());
    EXPECT_FALSE(sheet.PressButton(S::btnNext));    // wizard buttons outside a wizard
    EXPECT_FALSE(sheet.PressButton(S::btnCustom));  // no custom button
    EXPECT_FALSE(sheet.PressButton(8));
    EXPECT_FALSE(sheet.PressButton(-1));
    EXPECT_TRUE(sheet.GetSafeHwnd() != nullptr);

    // With the flag the custom button says who it is.
    sheet.SetFlags(S::flagCustom);
    EXPECT_TRUE(sheet.PressButton(S::btnCustom));
    KxTestApp& app = KxTestApp::Get();
    ASSERT_EQ(1u, app.Boxes().size());
    EXPECT_EQ(CString(L"KxUiOptionSheet::OnCustom"), app.Boxes()[0].text);

    // OK on a modeless sheet: every page's OnOK, then the window goes.
    log.clear();
    EXPECT_TRUE(sheet.PressButton(S::btnOK));
    EXPECT_EQ(Log({"General.KillActive", "General.OK"}), log);
    EXPECT_EQ(nullptr, sheet.GetSafeHwnd());
}

TEST(OptionSheetButtons, KxuimEnableSwitchesAButtonAndTheFinishState)
{
    EXPECT_NE(0u, KXUIM_ENABLE);
    EXPECT_EQ(::RegisterWindowMessageW(L"KXUIM_ENABLE"), KXUIM_ENABLE);
    LogPage page("Start", nullptr);
    TestSheet sheet;
    sheet.SetFlags(S::flagWizardHasFinish);
    sheet.SetWizardMode();
    sheet.AddPage(&page);
    ASSERT_TRUE(sheet.open());
    CWnd* pFinish = sheet.GetDlgItem(S::idFinish);
    ASSERT_NE(nullptr, pFinish);
    EXPECT_TRUE(pFinish->IsWindowEnabled());
    sheet.SendMessage(KXUIM_ENABLE, S::idFinish, FALSE);
    EXPECT_FALSE(pFinish->IsWindowEnabled());
    EXPECT_EQ(S::stateFinishDisabled, sheet.GetState() & S::stateFinishDisabled);
    sheet.PressButton(S::btnFinish);  // a disabled Finish does not finish
    EXPECT_NE(nullptr, sheet.GetSafeHwnd());
    sheet.SendMessage(KXUIM_ENABLE, S::idFinish, TRUE);
    EXPECT_TRUE(pFinish->IsWindowEnabled());
    EXPECT_EQ(0u, sheet.GetState() & S::stateFinishDisabled);
    sheet.SendMessage(KXUIM_ENABLE, S::idBack, FALSE);
    EXPECT_FALSE(sheet.GetDlgItem(S::idBack)->IsWindowEnabled());
    sheet.SendMessage(KXUIM_ENABLE, 4711, TRUE);  // no such button: nothing happens
}

TEST(OptionSheetModal, OkAndCancelEndTheLoop)
{
    Log log;
    LogPage general("General", &log), fonts("Fonts", &log);
    TestSheet sheet;
    sheet.SetTitle(L"Editor", PSH_PROPTITLE);
    sheet.AddPage(&general);
    sheet.AddPage(&fonts);
    CString caption;
    INT_PTR r = sheet.runModal([&] {
        sheet.GetWindowText(caption);
        sheet.PressButton(S::btnOK);
    });
    EXPECT_EQ(IDOK, r);
    EXPECT_EQ(CString(L"Options for Editor"), caption);
    // Only the first page was shown; every page saves on OK, in sheet order.
    EXPECT_EQ(Log({"General.SetActive", "General.KillActive", "General.OK", "Fonts.OK"}), log);
    EXPECT_EQ(nullptr, sheet.GetSafeHwnd());
    EXPECT_EQ(nullptr, general.GetSafeHwnd());

    // A page that refuses Cancel keeps the sheet; Cancel once it agrees resets every page.
    log.clear();
    fonts.refuseCancel = true;
    bool openAfterRefusal = false;
    r = sheet.runModal([&] {
        sheet.SetActivePage(&fonts);
        sheet.PressButton(S::btnCancel);
        openAfterRefusal = sheet.IsWindowVisible() != FALSE;
        fonts.refuseCancel = false;
        sheet.PostMessage(WM_COMMAND, IDCANCEL);
    });
    EXPECT_EQ(IDCANCEL, r);
    EXPECT_TRUE(openAfterRefusal);
    EXPECT_EQ(Log({"General.SetActive", "General.KillActive", "Fonts.SetActive", "Fonts.QueryCancel",
                   "Fonts.QueryCancel", "General.Cancel", "Fonts.Cancel"}),
              log);

    // A page belongs to one sheet at a time; the second sheet starts on the page asked for.
    TestSheet second(L"Second", nullptr, 1);
    EXPECT_FALSE(second.AddPage(&general));
    EXPECT_TRUE(sheet.RemovePage(&general));
    EXPECT_TRUE(sheet.RemovePage(&fonts));
    EXPECT_TRUE(second.AddPage(&general));
    EXPECT_TRUE(second.AddPage(&fonts));
    int active = -1;
    second.runModal([&] {
        active = second.GetActiveIndex();
        second.PressButton(S::btnCancel);
    });
    EXPECT_EQ(1, active);
}

TEST(OptionSheetModal, ApplyFollowsTheModifiedPages)
{
    Log log;
    LogPage general("General", &log), fonts("Fonts", &log), saving("Saving", &log);
    TestSheet sheet;
    sheet.AddPage(&general);
    sheet.AddPage(&fonts);
    sheet.AddPage(&saving);
    bool initially = true, afterModified = false, afterApply = true, bySheet = false, afterFailure = false;
    int activeAfterFailure = -1;
    Log applied;
    const INT_PTR r = sheet.runModal([&] {
        CWnd* pApply = sheet.GetDlgItem(S::idApply);
        initially = pApply->IsWindowEnabled() != FALSE;
        sheet.SetActivePage(&fonts);
        fonts.SetModified(TRUE);
        afterModified = pApply->IsWindowEnabled() != FALSE;
        log.clear();
        sheet.PressButton(S::btnApply);
        applied = log;  // the pages shown so far commit, the others were never shown
        afterApply = pApply->IsWindowEnabled() != FALSE;
        sheet.SetModified(TRUE);
        bySheet = pApply->IsWindowEnabled() != FALSE;
        // A page that cannot apply is shown and keeps Apply enabled.
        general.refuseApply = true;
        general.SetModified(TRUE);
        sheet.PressButton(S::btnApply);
        afterFailure = pApply->IsWindowEnabled() != FALSE;
        activeAfterFailure = sheet.GetActiveIndex();
        sheet.PressButton(S::btnCancel);
    });
    EXPECT_EQ(IDCANCEL, r);
    EXPECT_FALSE(initially);
    EXPECT_TRUE(afterModified);
    EXPECT_EQ(Log({"Fonts.KillActive", "General.Apply", "Fonts.Apply"}), applied);
    EXPECT_FALSE(afterApply);
    EXPECT_FALSE(fonts.IsModified());
    EXPECT_TRUE(bySheet);
    EXPECT_TRUE(afterFailure);
    EXPECT_EQ(0, activeAfterFailure);
    EXPECT_TRUE(general.IsModified());
}

// A three-page wizard whose middle page refuses once.
TEST(OptionSheetWizard, BackNextAndFinishThroughThePages)
{
    Log log;
    LogPage welcome("Welcome", &log), details("Details", &log), done("Done", &log);
    welcome.wizardButtons = PSWIZB_NEXT;
    details.wizardButtons = PSWIZB_BACK | PSWIZB_NEXT;
    done.wizardButtons = PSWIZB_BACK | PSWIZB_FINISH;
    TestSheet sheet(L"New project");
    sheet.SetWizardMode();
    EXPECT_TRUE(sheet.IsWizardMode());
    sheet.AddPage(&welcome);
    sheet.AddPage(&details);
    sheet.AddPage(&done);
    std::vector<int> trail;
    bool backOnFirst = true, finishShownOnLast = false, nextHiddenOnLast = false, finishAtNext = false;
    CRect nextRect;
    const INT_PTR r = sheet.runModal([&] {
        backOnFirst = sheet.GetDlgItem(S::idBack)->IsWindowEnabled() != FALSE;
        nextRect = sheet.rectOf(S::idNext);
        sheet.PressButton(S::btnBack);  // disabled on the first page: nothing
        trail.push_back(sheet.GetActiveIndex());
        sheet.PressButton(S::btnNext);
        trail.push_back(sheet.GetActiveIndex());
        details.next = -1;  // stays
        sheet.PressButton(S::btnNext);
        trail.push_back(sheet.GetActiveIndex());
        details.next = 0;
        details.refuseLeave = true;  // validation fails: stays as well
        sheet.PressButton(S::btnNext);
        trail.push_back(sheet.GetActiveIndex());
        details.refuseLeave = false;
        sheet.PressButton(S::btnNext);
        trail.push_back(sheet.GetActiveIndex());
        finishShownOnLast = sheet.GetDlgItem(S::idFinish)->IsWindowVisible() != FALSE;
        nextHiddenOnLast = !sheet.GetDlgItem(S::idNext)->IsWindowVisible();
        finishAtNext = sheet.rectOf(S::idFinish) == nextRect;
        sheet.PressButton(S::btnNext);  // past the end: Next is disabled on the last page
        trail.push_back(sheet.GetActiveIndex());
        done.back = 0;
        sheet.PressButton(S::btnBack);
        trail.push_back(sheet.GetActiveIndex());
        details.back = 0;
        details.next = 2;  // a jump by index
        sheet.PressButton(S::btnNext);
        trail.push_back(sheet.GetActiveIndex());
        done.refuseFinish = true;
        sheet.PressButton(S::btnFinish);
        trail.push_back(sheet.IsWindowVisible() ? sheet.GetActiveIndex() : -1);
        done.refuseFinish = false;
        log.clear();
        sheet.PressButton(S::btnFinish);
    });
    EXPECT_EQ(S::idFinish, r);
    EXPECT_FALSE(backOnFirst);
    EXPECT_EQ(std::vector<int>({0, 1, 1, 1, 2, 2, 1, 2, 2}), trail);
    EXPECT_TRUE(finishShownOnLast);
    EXPECT_TRUE(nextHiddenOnLast);
    EXPECT_TRUE(finishAtNext);
    EXPECT_EQ(Log({"Done.WizardFinish", "Welcome.OK", "Details.OK", "Done.OK"}), log);
}

TEST(OptionSheetWizard, HiddenFinishStillFinishesAndDisabledFinishDoesNot)
{
    LogPage only("Only", nullptr);
    TestSheet sheet;
    sheet.SetWizardMode();
    sheet.AddPage(&only);
    // Finish exists but is hidden; PSBTN_FINISH still sends its command.
    INT_PTR r = sheet.runModal([&] {
        EXPECT_FALSE(sheet.GetDlgItem(S::idFinish)->IsWindowVisible());
        EXPECT_TRUE(sheet.PressButton(S::btnFinish));
    });
    EXPECT_EQ(S::idFinish, r);

    only.wizardButtons = PSWIZB_BACK | PSWIZB_DISABLEDFINISH;
    bool shownDisabled = false;
    r = sheet.runModal([&] {
        CWnd* pFinish = sheet.GetDlgItem(S::idFinish);
        shownDisabled = pFinish->IsWindowVisible() && !pFinish->IsWindowEnabled() &&
                        (sheet.GetState() & S::stateFinishDisabled);
        sheet.PressButton(S::btnFinish);
        if (sheet.IsWindowVisible())
            sheet.PressButton(S::btnCancel);
    });
    EXPECT_TRUE(shownDisabled);
    EXPECT_EQ(IDCANCEL, r);

    // SetFinishText on a wizard without a permanent Finish: Finish with that text, no Back.
    only.wizardButtons = 0;
    CString text;
    bool backHidden = false;
    r = sheet.runModal([&] {
        sheet.SetFinishText(L"Close");
        sheet.GetDlgItem(S::idFinish)->GetWindowText(text);
        backHidden = !sheet.GetDlgItem(S::idBack)->IsWindowVisible();
        sheet.PressButton(S::btnCancel);
    });
    EXPECT_EQ(CString(L"Close"), text);
    EXPECT_TRUE(backHidden);
}

TEST(OptionSheetPages, BadInputGetsAClearResult)
{
    Log log;
    LogPage a("A", &log), b("B", &log), c("C", &log), group("Group", &log);
    TestSheet sheet;
    EXPECT_EQ(-1, sheet.DoModal());  // no pages
    EXPECT_FALSE(sheet.Create());
    EXPECT_FALSE(sheet.AddPage(nullptr));
    EXPECT_TRUE(sheet.AddPage(&a));
    EXPECT_FALSE(sheet.AddPage(&a));          // twice
    EXPECT_FALSE(sheet.AddPage(&b, &a));      // a page is no group
    EXPECT_FALSE(sheet.RemovePage(&b));       // not in the sheet
    EXPECT_FALSE(sheet.RemovePage(5));
    EXPECT_EQ(nullptr, sheet.GetPage(-1));
    EXPECT_EQ(nullptr, sheet.GetPage(1));
    EXPECT_FALSE(sheet.SetActivePage(&b));
    // A group not in the sheet yet comes with its page; pages join the end of their group.
    EXPECT_TRUE(sheet.AddPage(&b, &group));
    EXPECT_TRUE(sheet.AddPage(&c));
    auto d = std::make_unique<LogPage>("D", &log);
    EXPECT_TRUE(sheet.InsertPage(99, d.get(), &group));
    ASSERT_EQ(5, sheet.GetPageCount());
    EXPECT_EQ(&a, sheet.GetPage(0));
    EXPECT_EQ(&group, sheet.GetPage(1));
    EXPECT_TRUE(sheet.IsGroup(1));
    EXPECT_EQ(&b, sheet.GetPage(2));
    EXPECT_EQ(&group, sheet.GetPageGroup(2));
    EXPECT_EQ(&group, sheet.GetPageGroup(3));  // D was put at the end of the group, not the sheet
    EXPECT_EQ(&c, sheet.GetPage(4));

    // A page whose template is missing cannot be shown; the sheet stays usable.
    KxUiOptionPage missing(4711);
    EXPECT_TRUE(sheet.AddPage(&missing));
    ASSERT_TRUE(sheet.open());
    EXPECT_EQ(0, sheet.GetActiveIndex());
    EXPECT_FALSE(sheet.SetActivePage(&missing));
    EXPECT_EQ(0, sheet.GetActiveIndex());
    EXPECT_TRUE(a.GetStyle() & WS_VISIBLE);

    // Removing the active page shows its neighbour; removing a group keeps its pages.
    EXPECT_TRUE(sheet.RemovePage(&a));
    EXPECT_EQ(nullptr, a.GetSafeHwnd());
    EXPECT_EQ(&group, sheet.GetActivePage());
    EXPECT_TRUE(group.GetStyle() & WS_VISIBLE);
    EXPECT_FALSE(a.GetStyle() & WS_VISIBLE);
    EXPECT_TRUE(sheet.RemovePage(&group));
    EXPECT_EQ(&b, sheet.GetActivePage());
    EXPECT_EQ(nullptr, sheet.GetPageGroup(0));
    EXPECT_FALSE(sheet.IsGroup(0));

    // A page destroyed before its sheet leaves it; the nearest page that can be shown takes its place
    // (the missing one before it cannot).
    {
        LogPage temporary("T", &log);
        sheet.AddPage(&temporary);
        sheet.SetActivePage(&temporary);
    }
    EXPECT_EQ(-1, sheet.GetPageIndex(nullptr));
    EXPECT_EQ(&b, sheet.GetPage(0));
    for (int i = 0; i < sheet.GetPageCount(); ++i)
        EXPECT_STRNE("T", CStringA(sheet.GetPage(i)->GetTitle()));
    EXPECT_EQ(&c, sheet.GetActivePage());

    // A page that will not be left keeps the sheet on it, and Cancel still closes the sheet.
    c.refuseLeave = true;
    EXPECT_FALSE(sheet.SetActivePage(&b));
    EXPECT_EQ(&c, sheet.GetActivePage());
    EXPECT_TRUE(sheet.PressButton(S::btnCancel));
    EXPECT_EQ(nullptr, sheet.GetSafeHwnd());
}

TEST(OptionSheetLayout, ResizingFollowsTheBorder)
{
    Log log;
    LogPage general("General", &log), fonts("Fonts", &log);
    TestSheet sheet(L"Options");
    sheet.setOptionListType(KxUiSimpleOptionSheet::listBox);
    sheet.setIsResizable(true);
    sheet.AddPage(&general);
    sheet.AddPage(&fonts);
    ASSERT_TRUE(sheet.open());
    EXPECT_TRUE(sheet.GetStyle() & WS_THICKFRAME);
    CRect client;
    sheet.GetClientRect(&client);
    // The list lies left of the page, both above the buttons.
    const CRect list = sheet.rectOf(S::idChooser), page = sheet.pageRect(general), ok = sheet.rectOf(S::idOK);
    EXPECT_EQ(sheet.getPageRect(), page);
    EXPECT_LT(list.right, page.left);
    EXPECT_EQ(list.top, page.top);
    EXPECT_LT(page.bottom, ok.top);
    // Wider and taller: the buttons follow the bottom right corner, the page grows, the list grows
    // in height only.
    {
        RECT rcWnd;
        sheet.GetWindowRect(&rcWnd);
        sheet.SetWindowPos(nullptr, 0, 0, rcWnd.right - rcWnd.left + 120, rcWnd.bottom - rcWnd.top + 80,
                           SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    const CRect list2 = sheet.rectOf(S::idChooser), page2 = sheet.pageRect(general), ok2 = sheet.rectOf(S::idOK);
    EXPECT_EQ(ok + CPoint(120, 80), ok2);
    EXPECT_EQ(CRect(page.left, page.top, page.right + 120, page.bottom + 80), page2);
    EXPECT_EQ(CRect(list.left, list.top, list.right, list.bottom + 80), list2);
    // A page shown after the resize gets the current page rectangle and follows too.
    sheet.SetActivePage(&fonts);
    EXPECT_EQ(page2, sheet.pageRect(fonts));
    EXPECT_EQ(sheet.getPageRect(), sheet.pageRect(fonts));
}

}  // namespace
