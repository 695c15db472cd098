// Window persistence through the test application's real registry: key names and byte layouts,
// states that survive destroying and re-creating a dialog, placement rules, and damaged values.
#include "KxUiLayoutManagerWndBinary.h"
#include "KxUiSplitter.h"
#include "KxTestLayoutDlg.h"
#include "KxTestApp.h"
#include <afxwin.h>
#include <random>
#include <string>
#include <vector>

// The run-time classes give the profile sections their names.
class CMyDlg : public KxTestDlg {
    DECLARE_DYNAMIC(CMyDlg)
};
IMPLEMENT_DYNAMIC(CMyDlg, CDialog)

class CMyEdit : public CWnd {
    DECLARE_DYNAMIC(CMyEdit)
};
IMPLEMENT_DYNAMIC(CMyEdit, CWnd)

namespace {

typedef std::vector<BYTE> Bytes;
typedef KxUiLayoutManager LM;

enum { idCheck = 1001, idList = 1002, idCombo = 1003, idEdit = 1004, idTab = 1005, idNoSel = 1006,
       idStatic = 1007, idLeft = 1010, idRight = 1011, idBar = 1012 };

class TestSplitter : public KxUiSplitter {
public:
    using KxUiSplitter::setCurrentPercent;
};

class NoMovePlacement : public KxUiWindowPlacementBinary {
public:
    NoMovePlacement() { setNoMove(true); }
};

// The value as the registry holds it under the application's key; false when absent.
bool readValue(const CString& strSection, const wchar_t* pszValue, Bytes& bytes)
{
    CString strKey = KxTestApp::Get().ProfileKeyPath() + L"\\" + strSection;
    DWORD nSize = 0;
    if (::RegGetValueW(HKEY_CURRENT_USER, strKey, pszValue, RRF_RT_REG_BINARY, nullptr, nullptr, &nSize) != ERROR_SUCCESS)
        return false;
    bytes.resize(nSize);
    return ::RegGetValueW(HKEY_CURRENT_USER, strKey, pszValue, RRF_RT_REG_BINARY, nullptr, bytes.data(), &nSize) ==
           ERROR_SUCCESS;
}

void storeValue(const CString& strSection, const wchar_t* pszValue, const Bytes& bytes)
{
    BYTE dummy = 0;
    ASSERT_TRUE(AfxGetApp()->WriteProfileBinary(strSection, pszValue, bytes.empty() ? &dummy : const_cast<BYTE*>(bytes.data()),
                                                (UINT)bytes.size()));
}

Bytes textBytes(int nLength, const std::wstring& text)
{
    Bytes bytes(4 + text.size() * 2);
    memcpy(bytes.data(), &nLength, 4);
    memcpy(bytes.data() + 4, text.data(), text.size() * 2);
    return bytes;
}

Bytes intBytes(int nValue)
{
    return Bytes(reinterpret_cast<BYTE*>(&nValue), reinterpret_cast<BYTE*>(&nValue) + 4);
}

CString text(HWND hWnd)
{
    CString str;
    int n = ::GetWindowTextLengthW(hWnd);
    ::GetWindowTextW(hWnd, str.GetBuffer(n + 1), n + 1);
    str.ReleaseBuffer();
    return str;
}

class Persist : public ::testing::Test {
protected:
    void TearDown() override
    {
        if (dlg.GetSafeHwnd())
            dlg.DestroyWindow();
    }

    // The dialog with one child of every kind the state record knows.
    void createControls(CMyDlg& d, DWORD dwStyle = WS_POPUP | WS_THICKFRAME)
    {
        ASSERT_TRUE(d.create(400, 300, dwStyle));
        d.addChild(idCheck, L"BUTTON", 10, 10, 100, 20, BS_AUTOCHECKBOX, L"Check");
        HWND hList = d.addChild(idList, L"COMBOBOX", 10, 40, 100, 120, CBS_DROPDOWNLIST);
        HWND hCombo = d.addChild(idCombo, L"COMBOBOX", 10, 70, 100, 120, CBS_DROPDOWN);
        HWND hNoSel = d.addChild(idNoSel, L"COMBOBOX", 10, 100, 100, 120, CBS_DROPDOWNLIST);
        for (HWND h : {hList, hCombo, hNoSel})
            for (const wchar_t* psz : {L"Red", L"Green", L"Blue"})
                ::SendMessageW(h, CB_ADDSTRING, 0, (LPARAM)psz);
        ::SendMessageW(hNoSel, CB_SETCURSEL, 2, 0);
        d.addChild(idEdit, L"EDIT", 120, 10, 100, 20, ES_AUTOHSCROLL);
        HWND hTab = d.addChild(idTab, WC_TABCONTROLW, 120, 40, 200, 100);
        const wchar_t* tabs[] = {L"General", L"View", L"Advanced"};
        for (int i = 0; i < 3; ++i) {
            TCITEMW item = {};
            item.mask = TCIF_TEXT;
            item.pszText = const_cast<wchar_t*>(tabs[i]);
            ::SendMessageW(hTab, TCM_INSERTITEMW, i, (LPARAM)&item);
        }
        d.addStatic(idStatic, 120, 150, 50, 20);
    }

    CMyDlg dlg;
};

TEST_F(Persist, ChildStateIsStoredUnderTheChildsRunTimeClassAndIdentifier)
{
    createControls(dlg);
    ::SetWindowTextW(dlg.item(idEdit), L"Grüße 1");
    KxUiWindowStateBinary edit(idEdit);
    EXPECT_EQ(CString(L"Window\\CMyDlg\\CWnd_1004"), edit.getSectionName(&dlg));
    EXPECT_EQ(CString(L"WNDSTATE"), edit.getEntryName());
    ASSERT_TRUE(edit.saveData(&dlg));
    Bytes bytes;
    ASSERT_TRUE(readValue(L"Window\\CMyDlg\\CWnd_1004", L"WNDSTATE", bytes));
    EXPECT_EQ(textBytes(7, L"Grüße 1"), bytes);

    // Through an object of another run-time class; an empty text is its length alone.
    CMyEdit myEdit;
    ASSERT_TRUE(myEdit.SubclassWindow(dlg.item(idEdit)));
    ::SetWindowTextW(dlg.item(idEdit), L"");
    ASSERT_TRUE(edit.saveData(&dlg));
    ASSERT_TRUE(readValue(L"Window\\CMyDlg\\CMyEdit_1004", L"WNDSTATE", bytes));
    EXPECT_EQ(Bytes(4, 0), bytes);
    myEdit.UnsubclassWindow();

    KxUiWindowPlacementBinary placement;
    EXPECT_EQ(CString(L"Window\\CMyDlg"), placement.getSectionName(&dlg));
    ASSERT_TRUE(placement.saveData(&dlg));
    ASSERT_TRUE(readValue(L"Window\\CMyDlg", L"WINDOWPLACEMENT", bytes));
    WINDOWPLACEMENT wp = {sizeof(wp)};
    ::GetWindowPlacement(dlg.GetSafeHwnd(), &wp);
    ASSERT_EQ(44u, bytes.size());
    EXPECT_EQ(0, memcmp(&wp, bytes.data(), 44));

    // A child that does not exist has no section: nothing is read or written.
    KxUiWindowStateBinary missing(4242);
    EXPECT_TRUE(missing.getSectionName(&dlg).IsEmpty());
    EXPECT_FALSE(missing.saveData(&dlg));
    EXPECT_TRUE(missing.loadData(&dlg));   // no value, as for a first run: nothing to apply
    EXPECT_FALSE(edit.saveData(nullptr));
    EXPECT_FALSE(edit.loadData(nullptr));
}

TEST_F(Persist, ClassNamesDecideWhatIsStored)
{
    createControls(dlg);
    KxUiWindowStateBinary check(idCheck), list(idList), tab(idTab), other(idStatic);
    EXPECT_TRUE(check.isButton(&dlg));
    EXPECT_TRUE(list.isCombo(&dlg) && !list.isEdit(&dlg));
    EXPECT_TRUE(tab.isTabCtrl(&dlg));
    EXPECT_FALSE(other.isButton(&dlg) || other.isCombo(&dlg) || other.isEdit(&dlg) || other.isTabCtrl(&dlg));
    ::SendMessageW(dlg.item(idCheck), BM_SETCHECK, BST_CHECKED, 0);
    ::SendMessageW(dlg.item(idList), CB_SETCURSEL, 1, 0);
    ::SendMessageW(dlg.item(idTab), TCM_SETCURSEL, 2, 0);
    Bytes bytes;
    ASSERT_TRUE(check.saveData(&dlg) && readValue(check.getSectionName(&dlg), L"WNDSTATE", bytes));
    EXPECT_EQ(intBytes(BST_CHECKED), bytes);
    ASSERT_TRUE(list.saveData(&dlg) && readValue(list.getSectionName(&dlg), L"WNDSTATE", bytes));
    EXPECT_EQ(intBytes(1), bytes);
    ASSERT_TRUE(tab.saveData(&dlg) && readValue(tab.getSectionName(&dlg), L"WNDSTATE", bytes));
    EXPECT_EQ(intBytes(2), bytes);
    // A class the record does not know stores nothing and is never loaded.
    ASSERT_TRUE(other.saveData(&dlg) && readValue(other.getSectionName(&dlg), L"WNDSTATE", bytes));
    EXPECT_TRUE(bytes.empty());
    EXPECT_FALSE(other.loadData(&dlg));
    EXPECT_FALSE(other.getLoaded());
}

// Saves on WM_DESTROY, before the layout manager's own OnDestroy, and records how many were left.
class ProbeManager : public KxUiLayoutManagerWndBinary {
public:
    void OnDestroy() override { m_nArchivesAtDestroy = getArchiveCount(); }
    int m_nArchivesAtDestroy = -1;
};

TEST_F(Persist, ControlStatesSurviveDestroyingAndRecreatingTheDialog)
{
    const UINT ids[] = {idCheck, idList, idCombo, idEdit, idTab, idNoSel};
    {
        ProbeManager lm;
        for (UINT id : ids)
            lm.addArchive(new KxUiWindowStateBinary(id));
        lm.addArchive(nullptr);
        createControls(dlg);
        lm.Attach(&dlg);   // nothing stored yet: the controls keep their state
        EXPECT_EQ(BST_UNCHECKED, ::SendMessageW(dlg.item(idCheck), BM_GETCHECK, 0, 0));
        EXPECT_EQ(2, ::SendMessageW(dlg.item(idNoSel), CB_GETCURSEL, 0, 0));

        ::SendMessageW(dlg.item(idCheck), BM_SETCHECK, BST_CHECKED, 0);
        ::SendMessageW(dlg.item(idList), CB_SETCURSEL, 2, 0);
        ::SetWindowTextW(dlg.item(idCombo), L"Magenta");
        ::SetWindowTextW(dlg.item(idEdit), L"Hello, world");
        ::SendMessageW(dlg.item(idTab), TCM_SETCURSEL, 1, 0);
        ::SendMessageW(dlg.item(idNoSel), CB_SETCURSEL, (WPARAM)-1, 0);
        EXPECT_EQ(6, lm.getArchiveCount());
        dlg.DestroyWindow();
        EXPECT_EQ(0, lm.m_nArchivesAtDestroy);   // saved and deleted before the manager saw it
        EXPECT_EQ(0, lm.getArchiveCount());
    }

    CMyDlg again;
    createControls(again);
    KxUiLayoutManagerWndBinary lm;
    for (UINT id : ids)
        lm.addArchive(new KxUiWindowStateBinary(id));
    lm.Attach(&again);
    EXPECT_EQ(BST_CHECKED, ::SendMessageW(again.item(idCheck), BM_GETCHECK, 0, 0));
    EXPECT_EQ(2, ::SendMessageW(again.item(idList), CB_GETCURSEL, 0, 0));
    EXPECT_EQ(CString(L"Magenta"), text(again.item(idCombo)));
    EXPECT_EQ(CString(L"Hello, world"), text(again.item(idEdit)));
    EXPECT_EQ(1, ::SendMessageW(again.item(idTab), TCM_GETCURSEL, 0, 0));
    EXPECT_EQ(0, ::SendMessageW(again.item(idNoSel), CB_GETCURSEL, 0, 0));   // none stored: the first
    again.DestroyWindow();
}

TEST_F(Persist, PlacementOfTheWrongLengthIsRefused)
{
    createControls(dlg);
    dlg.SetWindowPos(nullptr, 20, 30, 300, 200, SWP_NOZORDER | SWP_NOACTIVATE);
    WINDOWPLACEMENT wp = {sizeof(wp)};
    ::GetWindowPlacement(dlg.GetSafeHwnd(), &wp);
    wp.rcNormalPosition = {50, 60, 450, 360};
    Bytes good(reinterpret_cast<BYTE*>(&wp), reinterpret_cast<BYTE*>(&wp) + 44);

    for (size_t nSize : {43u, 45u}) {
        Bytes bad = good;
        bad.resize(nSize);
        storeValue(L"Window\\CMyDlg", L"WINDOWPLACEMENT", bad);
        KxUiWindowPlacementBinary placement;
        EXPECT_FALSE(placement.loadData(&dlg)) << nSize;
        EXPECT_FALSE(placement.getLoaded());
        CRect rc;
        dlg.GetWindowRect(&rc);
        EXPECT_EQ(CRect(20, 30, 320, 230), rc);
    }

    // The right length is applied whole to a resizable window, and only once.
    storeValue(L"Window\\CMyDlg", L"WINDOWPLACEMENT", good);
    KxUiWindowPlacementBinary placement;
    EXPECT_TRUE(placement.loadData(&dlg));
    EXPECT_TRUE(placement.getLoaded());
    CRect rc;
    dlg.GetWindowRect(&rc);
    EXPECT_EQ(CRect(50, 60, 450, 360), rc);
    dlg.SetWindowPos(nullptr, 0, 0, 100, 100, SWP_NOZORDER | SWP_NOACTIVATE);
    EXPECT_FALSE(placement.loadData(&dlg));
    dlg.GetWindowRect(&rc);
    EXPECT_EQ(CRect(0, 0, 100, 100), rc);
}

TEST_F(Persist, WindowWithoutThickFrameIsOnlyMoved)
{
    createControls(dlg, WS_POPUP | WS_CAPTION | WS_SYSMENU);
    dlg.SetWindowPos(nullptr, 20, 30, 300, 200, SWP_NOZORDER | SWP_NOACTIVATE);
    WINDOWPLACEMENT wp = {sizeof(wp)};
    ::GetWindowPlacement(dlg.GetSafeHwnd(), &wp);
    wp.showCmd = SW_SHOWMAXIMIZED;
    wp.rcNormalPosition = {70, 80, 570, 480};
    storeValue(L"Window\\CMyDlg", L"WINDOWPLACEMENT", Bytes(reinterpret_cast<BYTE*>(&wp), reinterpret_cast<BYTE*>(&wp) + 44));

    NoMovePlacement noMove;   // neither moved nor sized
    EXPECT_TRUE(noMove.loadData(&dlg));
    CRect rc;
    dlg.GetWindowRect(&rc);
    EXPECT_EQ(CRect(20, 30, 320, 230), rc);

    KxUiWindowPlacementBinary placement;
    EXPECT_TRUE(placement.loadData(&dlg));
    dlg.GetWindowRect(&rc);
    EXPECT_EQ(CRect(70, 80, 370, 280), rc);
    EXPECT_FALSE(dlg.IsZoomed());
}

// Without an application object there is no profile: loading and saving answer false and leave
// the record, the control and the stored value as they were, so the value still applies once the
// application exists.
TEST_F(Persist, WithoutAnApplicationNothingIsLoadedOrSaved)
{
    createControls(dlg);
    KxUiWindowStateBinary check(idCheck);
    const CString strSection = check.getSectionName(&dlg);
    storeValue(strSection, L"WNDSTATE", intBytes(BST_CHECKED));
    {
        // Hides the application from AfxGetApp for the scope, in every module state it is found in.
        AFX_MODULE_STATE* states[] = {AfxGetModuleState(), AfxGetAppModuleState()};
        CWinApp* apps[] = {states[0]->m_pCurrentWinApp, states[1]->m_pCurrentWinApp};
        for (AFX_MODULE_STATE* state : states)
            state->m_pCurrentWinApp = nullptr;
        ASSERT_EQ(nullptr, AfxGetApp());
        const bool bLoaded = check.loadData(&dlg);
        const bool bSaved = check.saveData(&dlg);
        for (int i = 1; i >= 0; --i)
            states[i]->m_pCurrentWinApp = apps[i];
        EXPECT_FALSE(bLoaded);
        EXPECT_FALSE(bSaved);
    }
    EXPECT_FALSE(check.getLoaded());
    EXPECT_EQ(BST_UNCHECKED, ::SendMessageW(dlg.item(idCheck), BM_GETCHECK, 0, 0));
    Bytes bytes;
    ASSERT_TRUE(readValue(strSection, L"WNDSTATE", bytes));
    EXPECT_EQ(intBytes(BST_CHECKED), bytes);

    EXPECT_TRUE(check.loadData(&dlg));
    EXPECT_EQ(BST_CHECKED, ::SendMessageW(dlg.item(idCheck), BM_GETCHECK, 0, 0));
}

TEST_F(Persist, LoadingTwiceAppliesOnce)
{
    createControls(dlg);
    KxUiWindowStateBinary check(idCheck);
    storeValue(check.getSectionName(&dlg), L"WNDSTATE", intBytes(BST_CHECKED));
    EXPECT_TRUE(check.loadData(&dlg));
    EXPECT_EQ(BST_CHECKED, ::SendMessageW(dlg.item(idCheck), BM_GETCHECK, 0, 0));
    ::SendMessageW(dlg.item(idCheck), BM_SETCHECK, BST_UNCHECKED, 0);
    EXPECT_FALSE(check.loadData(&dlg));
    EXPECT_EQ(BST_UNCHECKED, ::SendMessageW(dlg.item(idCheck), BM_GETCHECK, 0, 0));
    check.setLoaded(false);
    EXPECT_TRUE(check.loadData(&dlg));
    EXPECT_EQ(BST_CHECKED, ::SendMessageW(dlg.item(idCheck), BM_GETCHECK, 0, 0));
}

TEST_F(Persist, PlacementVisibilityFallsBackToThePrimaryScreen)
{
    RECT rcFar = {-30000, -30000, -29000, -29500};
    RECT rcNear = {10, 10, 200, 100};
    EXPECT_TRUE(KxUiWindowPlacementBinary::isOnScreen(rcFar));   // every rectangle has a nearest monitor
    EXPECT_FALSE(KxUiWindowPlacementBinary::isOnScreen(rcFar, false));
    EXPECT_TRUE(KxUiWindowPlacementBinary::isOnScreen(rcNear, false));
}

TEST_F(Persist, SplitterPositionIsKeptUnderItsShortenedClassName)
{
    WNDCLASSEXW wc = {sizeof(wc)};
    ASSERT_TRUE(::GetClassInfoExW(nullptr, L"STATIC", &wc));
    wc.hInstance = ::GetModuleHandleW(nullptr);
    wc.lpszClassName = L"LongSplitterBar";   // 15 characters
    ::RegisterClassExW(&wc);

    auto build = [](CMyDlg& d, TestSplitter& bar, KxUiLayoutManagerWndBinary& lm) {
        ASSERT_TRUE(d.create(400, 300));
        d.addStatic(idLeft, 10, 10, 180, 280);
        d.addStatic(idRight, 210, 10, 180, 280);
        ASSERT_TRUE(bar.CreateEx(0, L"LongSplitterBar", L"", WS_CHILD | WS_VISIBLE, CRect(195, 10, 205, 290), &d, idBar));
        lm.addArchive(new KxUiSplitterPositionArchive(&bar));
        lm.Attach(&d);
        lm.SetConstraint(idLeft, LM::sideAll, LM::typeSameSide, 10, 0);
        lm.SetConstraint(idLeft, LM::sideBottom, LM::typeSameSide, -10, 0);
        lm.SetConstraint(idRight, LM::sideAll, LM::typeSameSide, -10, 0);
        lm.SetConstraint(idRight, LM::sideTop, LM::typeSameSide, 10, 0);
        ASSERT_TRUE(bar.attachHorz(&lm, idLeft, idRight));
        lm.RedrawLayout();
    };
    {
        TestSplitter bar;
        KxUiLayoutManagerWndBinary lm;
        build(dlg, bar, lm);
        KxUiSplitterPositionArchive archive(&bar);
        EXPECT_EQ(CString(L"Window\\CMyDlg\\LongSplit_1012"), archive.getSectionName(&dlg));
        EXPECT_EQ(49, bar.getCurrentPercent());   // nothing stored: measured
        bar.setCurrentPercent(25);
        dlg.DestroyWindow();
    }
    Bytes bytes;
    ASSERT_TRUE(readValue(L"Window\\CMyDlg\\LongSplit_1012", L"SPLITTERPERCENT", bytes));
    EXPECT_EQ(intBytes(25), bytes);

    CMyDlg again;
    TestSplitter bar;
    KxUiLayoutManagerWndBinary lm;
    build(again, bar, lm);
    EXPECT_EQ(25, bar.getCurrentPercent());
    EXPECT_EQ(100, again.childRect(idBar).left);
    EXPECT_EQ(100, again.childRect(idLeft).right);
    again.DestroyWindow();

    // Damaged: a share no splitter can have, and too few bytes, leave the measured position.
    for (const Bytes& bad : {intBytes(250), intBytes(-1), Bytes{1, 2, 3}}) {
        storeValue(L"Window\\CMyDlg\\LongSplit_1012", L"SPLITTERPERCENT", bad);
        CMyDlg d;
        TestSplitter b;
        KxUiLayoutManagerWndBinary m;
        build(d, b, m);
        EXPECT_EQ(49, b.getCurrentPercent());
        d.DestroyWindow();
    }
    ::UnregisterClassW(L"LongSplitterBar", wc.hInstance);
}

TEST_F(Persist, DamagedTextsAndIndexesLeaveTheControlsAlone)
{
    createControls(dlg);
    KxUiWindowStateBinary edit(idEdit), combo(idCombo), tab(idTab);
    const CString strEdit = edit.getSectionName(&dlg), strCombo = combo.getSectionName(&dlg);
    auto load = [&](KxUiWindowStateBinary& rec, const CString& strSection, const Bytes& bytes) {
        storeValue(strSection, L"WNDSTATE", bytes);
        rec.setLoaded(false);
        return rec.loadData(&dlg);
    };
    ::SetWindowTextW(dlg.item(idEdit), L"keep");
    ::SetWindowTextW(dlg.item(idCombo), L"keep too");

    EXPECT_TRUE(load(edit, strEdit, textBytes(10, L"abc")));      // runs past the stored bytes
    EXPECT_TRUE(load(edit, strEdit, textBytes(-3, L"abcdef")));   // negative
    EXPECT_TRUE(load(edit, strEdit, Bytes{5, 0}));                // not even a length
    EXPECT_TRUE(load(combo, strCombo, textBytes(0x7FFFFFFF, L"x")));
    EXPECT_EQ(CString(L"keep"), text(dlg.item(idEdit)));
    EXPECT_EQ(CString(L"keep too"), text(dlg.item(idCombo)));
    EXPECT_TRUE(load(edit, strEdit, textBytes(2, L"abcdef")));    // shorter than stored: its length
    EXPECT_EQ(CString(L"ab"), text(dlg.item(idEdit)));
    EXPECT_TRUE(load(edit, strEdit, textBytes(0, L"")));
    EXPECT_EQ(CString(L""), text(dlg.item(idEdit)));

    ::SendMessageW(dlg.item(idTab), TCM_SETCURSEL, 1, 0);
    EXPECT_TRUE(load(tab, tab.getSectionName(&dlg), intBytes(7)));   // beyond the three tabs
    EXPECT_EQ(1, ::SendMessageW(dlg.item(idTab), TCM_GETCURSEL, 0, 0));
    EXPECT_EQ(3, ::SendMessageW(dlg.item(idTab), TCM_GETITEMCOUNT, 0, 0));
}

// Random lengths and contents in every record's value: nothing crashes, a text is applied exactly
// when its stored length fits the stored bytes, and then to exactly those code units.
TEST_F(Persist, FuzzedValuesNeverCrashOrReadPastTheData)
{
    createControls(dlg);
    std::mt19937 random(20261122);
    struct Target { UINT nId; bool bText; };
    const Target targets[] = {{idCheck, false}, {idList, false}, {idCombo, true}, {idEdit, true},
                              {idTab, false}, {idNoSel, false}};
    for (int nRound = 0; nRound < 400; ++nRound) {
        const Target& target = targets[nRound % 6];
        Bytes bytes(random() % 24);
        for (BYTE& b : bytes)
            b = (BYTE)random();
        if (bytes.size() >= 4 && nRound % 3 == 0) {   // often a plausible length or index
            int nValue = (int)(random() % 12) - 2;
            memcpy(bytes.data(), &nValue, 4);
        }
        HWND hText = target.nId == idCombo ? ::GetWindow(dlg.item(idCombo), GW_CHILD) : dlg.item(target.nId);
        ::SetWindowTextW(hText, L"before");
        const bool bTab = target.nId == idTab, bList = target.nId == idList || target.nId == idNoSel;
        if (bTab || bList)
            ::SendMessageW(dlg.item(target.nId), bTab ? TCM_SETCURSEL : CB_SETCURSEL, 1, 0);

        KxUiWindowStateBinary record(target.nId);
        storeValue(record.getSectionName(&dlg), L"WNDSTATE", bytes);
        EXPECT_TRUE(record.loadData(&dlg));
        if (bTab || bList) {   // an index of the three entries, or none meaning the first, or nothing
            int nIndex = 1;
            if (bytes.size() >= 4)
                memcpy(&nIndex, bytes.data(), 4);
            int nExpected = nIndex == -1 ? 0 : (nIndex >= 0 && nIndex < 3) ? nIndex : 1;
            EXPECT_EQ(nExpected, ::SendMessageW(dlg.item(target.nId), bTab ? TCM_GETCURSEL : CB_GETCURSEL, 0, 0))
                << "round " << nRound;
        }
        if (!target.bText)
            continue;
        int nLength = 0;
        bool bFits = bytes.size() >= 4 && (memcpy(&nLength, bytes.data(), 4), nLength >= 0) &&
                     4 + 2 * (size_t)nLength <= bytes.size();
        std::wstring expected = L"before";
        if (bFits) {
            expected.assign(reinterpret_cast<const wchar_t*>(bytes.data() + 4), nLength);
            expected = expected.c_str();   // a window text ends at its first null
        }
        EXPECT_EQ(CString(expected.c_str()), text(hText)) << "round " << nRound;
    }

    KxUiWindowPlacementBinary placement;
    for (int nRound = 0; nRound < 100; ++nRound) {
        Bytes bytes(nRound % 2 ? 44 : random() % 60);
        for (BYTE& b : bytes)
            b = (BYTE)random();
        storeValue(L"Window\\CMyDlg", L"WINDOWPLACEMENT", bytes);
        placement.setLoaded(false);
        EXPECT_EQ(bytes.size() == 44, placement.loadData(&dlg)) << "round " << nRound;
        EXPECT_TRUE(::IsWindow(dlg.GetSafeHwnd()));
    }
}

}  // namespace
