// Message maps: lookup order, creation messages, commands and reflection of notifications.
#include <afxwin.h>
#include "KxMsgRecorder.h"

namespace {

KxMsgRecorder* g_rec = nullptr;

void Log(const char* who, UINT message, WPARAM wParam = 0)
{
    if (g_rec != nullptr)
        g_rec->Add(who, message, wParam);
}

// A top-level window to parent the objects under test; destroyed with the fixture.
class MsgMapTest : public testing::Test {
protected:
    void SetUp() override
    {
        g_rec = &rec;
        parentHwnd = ::CreateWindowExW(0, L"STATIC", L"parent", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr,
                                       nullptr, nullptr, nullptr);
        ASSERT_NE(nullptr, parentHwnd);
    }
    void TearDown() override
    {
        ::DestroyWindow(parentHwnd);
        g_rec = nullptr;
    }
    KxMsgRecorder rec;
    HWND parentHwnd = nullptr;
};

class CBaseWnd : public CWnd {
public:
    afx_msg void OnSize(UINT, int cx, int) { Log("base", WM_SIZE, static_cast<WPARAM>(cx)); }
    afx_msg LRESULT OnFirst(WPARAM, LPARAM) { return 11; }
    afx_msg LRESULT OnSecond(WPARAM, LPARAM) { return 22; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CBaseWnd, CWnd)
    ON_WM_SIZE()
    ON_MESSAGE(WM_APP + 1, &CBaseWnd::OnFirst)
    ON_MESSAGE(WM_APP + 2, &CBaseWnd::OnSecond)
END_MESSAGE_MAP()

class CDerivedWnd : public CBaseWnd {
public:
    afx_msg void OnSize(UINT, int cx, int) { Log("derived", WM_SIZE, static_cast<WPARAM>(cx)); }
    afx_msg LRESULT OnFirstAgain(WPARAM, LPARAM) { return 111; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CDerivedWnd, CBaseWnd)
    ON_WM_SIZE()
    ON_MESSAGE(WM_APP + 1, &CDerivedWnd::OnFirstAgain)
END_MESSAGE_MAP()

}  // namespace

TEST_F(MsgMapTest, DerivedMapIsSearchedBeforeItsBase)
{
    CDerivedWnd wnd;
    ASSERT_TRUE(wnd.CreateEx(0, nullptr, L"derived", WS_POPUP, 0, 0, 50, 40, nullptr, nullptr));
    rec.Clear();

    EXPECT_EQ(111, wnd.SendMessage(WM_APP + 1));  // both maps have it: the derived one wins
    EXPECT_EQ(22, wnd.SendMessage(WM_APP + 2));   // only the base has it
    EXPECT_EQ(0, wnd.SendMessage(WM_APP + 3));    // nobody: the window procedure of the class
    wnd.SetWindowPos(nullptr, 0, 0, 80, 40, SWP_NOZORDER | SWP_NOMOVE);
    EXPECT_TRUE(rec.Matches({{"derived", WM_SIZE, 80}}));

    CBaseWnd base;
    ASSERT_TRUE(base.CreateEx(0, nullptr, L"base", WS_POPUP, 0, 0, 50, 40, nullptr, nullptr));
    EXPECT_EQ(11, base.SendMessage(WM_APP + 1));
}

namespace {

class CLifeWnd : public CWnd {
public:
    bool failCreate = false;
    bool attachedAtNcCreate = false;
    afx_msg BOOL OnNcCreate(LPCREATESTRUCT cs)
    {
        attachedAtNcCreate = m_hWnd != nullptr && CWnd::FromHandlePermanent(m_hWnd) == this;
        Log("wnd", WM_NCCREATE);
        return CWnd::OnNcCreate(cs);
    }
    afx_msg int OnCreate(LPCREATESTRUCT cs)
    {
        Log("wnd", WM_CREATE);
        return failCreate ? -1 : CWnd::OnCreate(cs);
    }
    afx_msg void OnDestroy()
    {
        Log("wnd", WM_DESTROY);
        CWnd::OnDestroy();
    }
    afx_msg void OnNcDestroy()
    {
        Log("wnd", WM_NCDESTROY);
        CWnd::OnNcDestroy();
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CLifeWnd, CWnd)
    ON_WM_NCCREATE()
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_NCDESTROY()
END_MESSAGE_MAP()

}  // namespace

TEST_F(MsgMapTest, CreationAndDestructionMessagesReachTheMap)
{
    CLifeWnd wnd;
    ASSERT_TRUE(wnd.Create(nullptr, L"child", WS_VISIBLE, CRect(0, 0, 20, 20), CWnd::FromHandle(parentHwnd), 7));
    EXPECT_TRUE(wnd.attachedAtNcCreate);
    HWND h = wnd.m_hWnd;
    EXPECT_EQ(7, wnd.GetDlgCtrlID());
    EXPECT_TRUE(wnd.DestroyWindow());
    EXPECT_TRUE(rec.Matches({{"wnd", WM_NCCREATE}, {"wnd", WM_CREATE}, {"wnd", WM_DESTROY}, {"wnd", WM_NCDESTROY}}));
    EXPECT_EQ(nullptr, wnd.m_hWnd);
    EXPECT_EQ(nullptr, CWnd::FromHandlePermanent(h));
}

TEST_F(MsgMapTest, FailedCreationLeavesTheObjectDetached)
{
    CLifeWnd wnd;
    wnd.failCreate = true;
    EXPECT_FALSE(wnd.CreateEx(0, nullptr, L"x", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    EXPECT_EQ(nullptr, wnd.m_hWnd);
    EXPECT_TRUE(rec.Matches({{"wnd", WM_NCCREATE}, {"wnd", WM_CREATE}, KxMsg::Optional("wnd", WM_DESTROY),
                             {"wnd", WM_NCDESTROY}}));
    // The object can be used again.
    wnd.failCreate = false;
    EXPECT_TRUE(wnd.CreateEx(0, nullptr, L"x", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
}

namespace {

UINT g_registered = ::RegisterWindowMessageW(L"KxUiTests.MsgMap.Registered");

class CCommandWnd : public CWnd {
public:
    UINT lastRange = 0;
    bool saveEnabled = true;
    int saves = 0;
    afx_msg void OnRange(UINT id) { lastRange = id; }
    afx_msg BOOL OnMaybe(UINT id) { return id == 120; }  // takes only 120
    afx_msg void OnSave() { ++saves; }
    afx_msg void OnUpdateSave(CCmdUI* ui) { ui->Enable(saveEnabled); }
    afx_msg LRESULT OnRegistered(WPARAM w, LPARAM) { return static_cast<LRESULT>(w * 2); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CCommandWnd, CWnd)
    ON_COMMAND_RANGE(100, 105, &CCommandWnd::OnRange)
    ON_COMMAND_EX_RANGE(110, 120, &CCommandWnd::OnMaybe)
    ON_COMMAND(200, &CCommandWnd::OnSave)
    ON_UPDATE_COMMAND_UI(200, &CCommandWnd::OnUpdateSave)
    ON_REGISTERED_MESSAGE(g_registered, &CCommandWnd::OnRegistered)
END_MESSAGE_MAP()

}  // namespace

TEST_F(MsgMapTest, CommandsFindTheirRangesAndRespectDisabledState)
{
    CCommandWnd wnd;
    ASSERT_TRUE(wnd.CreateEx(0, nullptr, L"cmd", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    EXPECT_TRUE(wnd.OnCmdMsg(103, CN_COMMAND, nullptr, nullptr));
    EXPECT_EQ(103u, wnd.lastRange);
    EXPECT_FALSE(wnd.OnCmdMsg(106, CN_COMMAND, nullptr, nullptr));
    EXPECT_EQ(103u, wnd.lastRange);
    // An _EX handler that declines leaves the command unhandled.
    EXPECT_FALSE(wnd.OnCmdMsg(111, CN_COMMAND, nullptr, nullptr));
    EXPECT_TRUE(wnd.OnCmdMsg(120, CN_COMMAND, nullptr, nullptr));

    // A menu command is checked against its update handler before it runs.
    wnd.SendMessage(WM_COMMAND, 200);
    EXPECT_EQ(1, wnd.saves);
    wnd.saveEnabled = false;
    wnd.SendMessage(WM_COMMAND, 200);
    EXPECT_EQ(1, wnd.saves);

    EXPECT_EQ(42, wnd.SendMessage(g_registered, 21));
}

namespace {

// Parent whose map takes the notifications of its children.
class CParentWnd : public CWnd {
public:
    afx_msg void OnClickRange(UINT id, NMHDR*, LRESULT* pResult)
    {
        Log("parent", WM_NOTIFY, id);
        *pResult = 7;
    }
    afx_msg void OnClicked(UINT id) { Log("parent", WM_COMMAND, id); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CParentWnd, CWnd)
    ON_NOTIFY_RANGE(NM_CLICK, 1, 9, &CParentWnd::OnClickRange)
    ON_CONTROL_RANGE(BN_CLICKED, 1, 9, &CParentWnd::OnClicked)
END_MESSAGE_MAP()

// A child that takes its notifications.
class CTakerButton : public CWnd {
public:
    afx_msg void OnClicked() { Log("child", WM_COMMAND, 1); }
    afx_msg void OnClick(NMHDR*, LRESULT* pResult)
    {
        Log("child", WM_NOTIFY, 1);
        *pResult = 5;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CTakerButton, CWnd)
    ON_CONTROL_REFLECT(BN_CLICKED, &CTakerButton::OnClicked)
    ON_NOTIFY_REFLECT(NM_CLICK, &CTakerButton::OnClick)
END_MESSAGE_MAP()

// A child that looks at its notifications and leaves them to the parent.
class CDeclinerButton : public CWnd {
public:
    afx_msg BOOL OnClicked()
    {
        Log("child", WM_COMMAND, 2);
        return FALSE;
    }
    afx_msg BOOL OnClick(NMHDR*, LRESULT*)
    {
        Log("child", WM_NOTIFY, 2);
        return FALSE;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CDeclinerButton, CWnd)
    ON_CONTROL_REFLECT_EX(BN_CLICKED, &CDeclinerButton::OnClicked)
    ON_NOTIFY_REFLECT_EX(NM_CLICK, &CDeclinerButton::OnClick)
END_MESSAGE_MAP()

class ReflectionTest : public MsgMapTest {
protected:
    void SetUp() override
    {
        MsgMapTest::SetUp();
        ASSERT_TRUE(parent.CreateEx(0, nullptr, L"parent", WS_POPUP | WS_VISIBLE, 0, 0, 300, 100, nullptr, nullptr));
        const DWORD style = WS_VISIBLE | BS_PUSHBUTTON;
        ASSERT_TRUE(taker.Create(L"BUTTON", L"1", style, CRect(0, 0, 80, 30), &parent, 1));
        ASSERT_TRUE(decliner.Create(L"BUTTON", L"2", style, CRect(90, 0, 170, 30), &parent, 2));
        plain = ::CreateWindowExW(0, L"BUTTON", L"3", WS_CHILD | style, 180, 0, 80, 30, parent.m_hWnd,
                                  reinterpret_cast<HMENU>(3), nullptr, nullptr);
        ASSERT_NE(nullptr, plain);
        rec.Clear();
    }
    LRESULT Notify(HWND from, UINT id)
    {
        NMHDR nmhdr = {from, id, static_cast<UINT>(NM_CLICK)};
        return parent.SendMessage(WM_NOTIFY, id, reinterpret_cast<LPARAM>(&nmhdr));
    }
    CParentWnd parent;
    CTakerButton taker;
    CDeclinerButton decliner;
    HWND plain = nullptr;
};

}  // namespace

TEST_F(ReflectionTest, CommandGoesToTheChildFirstAndToTheParentOnlyWhenDeclined)
{
    taker.SendMessage(BM_CLICK);
    EXPECT_TRUE(rec.Matches({{"child", WM_COMMAND, 1}}));
    rec.Clear();
    decliner.SendMessage(BM_CLICK);
    EXPECT_TRUE(rec.Matches({{"child", WM_COMMAND, 2}, {"parent", WM_COMMAND, 2}}));
    rec.Clear();
    ::SendMessageW(plain, BM_CLICK, 0, 0);
    EXPECT_TRUE(rec.Matches({{"parent", WM_COMMAND, 3}}));
}

TEST_F(ReflectionTest, NotifyGoesToTheChildFirstAndToTheParentOnlyWhenDeclined)
{
    EXPECT_EQ(5, Notify(taker.m_hWnd, 1));
    EXPECT_TRUE(rec.Matches({{"child", WM_NOTIFY, 1}}));
    rec.Clear();
    EXPECT_EQ(7, Notify(decliner.m_hWnd, 2));
    EXPECT_TRUE(rec.Matches({{"child", WM_NOTIFY, 2}, {"parent", WM_NOTIFY, 2}}));
    rec.Clear();
    EXPECT_EQ(7, Notify(plain, 3));
    EXPECT_TRUE(rec.Matches({{"parent", WM_NOTIFY, 3}}));
}
