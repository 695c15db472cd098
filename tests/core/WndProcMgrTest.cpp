// Hooks on real windows: order of the passes, swallowing, detaching, destruction.
#include "KxUiWndProcMgr.h"
#include <afxwin.h>
#include <string>
#include <vector>

namespace {

const UINT WM_PROBE = WM_APP + 1;      // the window answers 42
const UINT WM_REENTER = WM_APP + 2;    // a hook removes other hooks while its pass runs

// What hooks and the window saw, in order, as one readable line.
std::vector<std::string> g_log;
AFX_MODULE_STATE* g_windowModuleState = nullptr;  // current when the window last got WM_PROBE

std::string logText()
{
    std::string text;
    for (const std::string& entry : g_log)
        text += (text.empty() ? "" : " ") + entry;
    return text;
}

const char* messageName(UINT message)
{
    if (message == WM_PROBE)
        return "probe";
    if (message == WM_NCDESTROY)
        return "ncdestroy";
    if (message == TM_DETACH_WNDPROC)
        return "detach";
    return nullptr;
}

LRESULT CALLBACK testWindowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (const char* name = messageName(message)) {
        // For the messages that unhook: whether the window's own procedure is back in place
        // when the window sees them.
        const bool own = GetWindowLongPtrW(hWnd, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(&testWindowProc);
        g_log.push_back(std::string("wnd.") + name + (own || message == WM_PROBE ? "" : "(hooked)"));
    }
    if (message == WM_PROBE) {
        g_windowModuleState = AfxGetModuleState();
        return 42;
    }
    return DefWindowProcW(hWnd, message, wParam, lParam);
}

class RecordingHook : public KxUiWndProc {
public:
    explicit RecordingHook(const char* name, bool* deleted = nullptr) : m_name(name), m_deleted(deleted) {}
    ~RecordingHook() override
    {
        if (m_deleted)
            *m_deleted = true;
    }

    int windowProc(HWND hWnd, UINT message, WPARAM, LPARAM, LRESULT& result) override
    {
        if (const char* name = messageName(message))
            g_log.push_back(m_name + ".before." + name);
        m_moduleState = AfxGetModuleState();
        if (message == WM_REENTER) {
            for (KxUiWndProc* hook : m_detachOnReenter)
                kxUiWndProcMgr().sendDetachMessage(hWnd, hook);
        }
        if (m_swallow && message == WM_PROBE) {
            result = m_swallowResult;
            return 1;
        }
        return 0;
    }

    void windowProcCallBack(HWND, UINT message, WPARAM, LPARAM, LRESULT& result) override
    {
        if (const char* name = messageName(message))
            g_log.push_back(m_name + ".after." + name + "=" + std::to_string(result));
        if (message == WM_PROBE)
            result += m_addToResult;
    }

    std::string m_name;
    bool* m_deleted;
    bool m_swallow = false;
    LRESULT m_swallowResult = 0;
    LRESULT m_addToResult = 0;
    AFX_MODULE_STATE* m_moduleState = nullptr;
    std::vector<KxUiWndProc*> m_detachOnReenter;
};

class WndProcMgr : public testing::Test {
protected:
    void SetUp() override
    {
        g_log.clear();
        WNDCLASSW wc = {};
        wc.lpfnWndProc = &testWindowProc;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.lpszClassName = L"KxCoreHookedWindow";
        RegisterClassW(&wc);  // fails harmlessly when already registered
        m_hWnd = create();
        ASSERT_NE(nullptr, m_hWnd);
    }

    void TearDown() override
    {
        if (IsWindow(m_hWnd))
            DestroyWindow(m_hWnd);
    }

    static HWND create()
    {
        return CreateWindowExW(0, L"KxCoreHookedWindow", L"hooked", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200,
                               nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    }

    LRESULT probe() { return SendMessageW(m_hWnd, WM_PROBE, 0, 0); }
    LONG_PTR procedure() const { return GetWindowLongPtrW(m_hWnd, GWLP_WNDPROC); }

    HWND m_hWnd = nullptr;
};

const LONG_PTR kOwnProcedure = reinterpret_cast<LONG_PTR>(&testWindowProc);

} // namespace

TEST(WndProcMgrGlobals, OneManagerAndTheDetachMessageRegisteredAtLoad)
{
    EXPECT_EQ(&kxUiWndProcMgr(), &kxUiWndProcMgr());
    EXPECT_NE(0u, TM_DETACH_WNDPROC);
    EXPECT_EQ(RegisterWindowMessageW(L"TM_DETACH_WNDPROC"), TM_DETACH_WNDPROC);
}

TEST_F(WndProcMgr, NewestHookFirstThenWindowThenAfterPassNewestFirst)
{
    RecordingHook a("A"), b("B");
    ASSERT_TRUE(kxUiWndProcMgr().attach(m_hWnd, &a));
    ASSERT_TRUE(kxUiWndProcMgr().attach(m_hWnd, &b));
    EXPECT_NE(kOwnProcedure, procedure());

    a.m_addToResult = 1;  // the oldest hook sees the result last and may change it
    EXPECT_EQ(43, probe());
    EXPECT_EQ("B.before.probe A.before.probe wnd.probe B.after.probe=42 A.after.probe=42", logText());

    kxUiWndProcMgr().sendDetachMessage(m_hWnd, nullptr);
    EXPECT_EQ(kOwnProcedure, procedure());
}

TEST_F(WndProcMgr, SwallowingSkipsOlderHooksAndWindowButNotTheAfterPass)
{
    RecordingHook a("A"), b("B");
    b.m_swallow = true;
    b.m_swallowResult = 7;
    kxUiWndProcMgr().attach(m_hWnd, &a);
    kxUiWndProcMgr().attach(m_hWnd, &b);

    EXPECT_EQ(7, probe());
    EXPECT_EQ("B.before.probe B.after.probe=7 A.after.probe=7", logText());
    kxUiWndProcMgr().sendDetachMessage(m_hWnd, nullptr);
}

TEST_F(WndProcMgr, AttachRefusals)
{
    RecordingHook a("A"), b("B");
    EXPECT_FALSE(kxUiWndProcMgr().attach(m_hWnd, nullptr));
    EXPECT_FALSE(kxUiWndProcMgr().attach(nullptr, &a));
    EXPECT_EQ(kOwnProcedure, procedure());

    // The same hook twice: refused, and still called once per message.
    ASSERT_TRUE(kxUiWndProcMgr().attach(m_hWnd, &a));
    EXPECT_FALSE(kxUiWndProcMgr().attach(m_hWnd, &a));
    probe();
    EXPECT_EQ("A.before.probe wnd.probe A.after.probe=42", logText());

    // A window whose procedure is already the manager's but which has no record.
    HWND other = create();
    const LONG_PTR otherOwn = GetWindowLongPtrW(other, GWLP_WNDPROC);
    SetWindowLongPtrW(other, GWLP_WNDPROC, procedure());
    EXPECT_FALSE(kxUiWndProcMgr().attach(other, &b));
    g_log.clear();
    EXPECT_EQ(0, SendMessageW(other, WM_PROBE, 0, 0));  // dropped: nobody to pass it to
    EXPECT_EQ("", logText());
    SetWindowLongPtrW(other, GWLP_WNDPROC, otherOwn);

    // A destroyed window.
    DestroyWindow(other);
    EXPECT_FALSE(kxUiWndProcMgr().attach(other, &b));
    kxUiWndProcMgr().sendDetachMessage(m_hWnd, nullptr);
}

TEST_F(WndProcMgr, NcDestroyRemovesHooksAndDeletesOnlyAutoDeleteOnes)
{
    bool ownedDeleted = false, keptDeleted = false;
    RecordingHook* owned = new RecordingHook("O", &ownedDeleted);
    owned->m_nAutoDelete = 1;
    RecordingHook kept("K", &keptDeleted);
    kxUiWndProcMgr().attach(m_hWnd, owned);
    kxUiWndProcMgr().attach(m_hWnd, &kept);

    DestroyWindow(m_hWnd);
    // Hooks see the message first; the window then gets it with its own procedure back in
    // place, and no after pass runs since the window has left the manager.
    EXPECT_EQ("K.before.ncdestroy O.before.ncdestroy wnd.ncdestroy", logText());
    EXPECT_TRUE(ownedDeleted);
    EXPECT_FALSE(keptDeleted);

    // The surviving hook can serve another window.
    HWND next = create();
    EXPECT_TRUE(kxUiWndProcMgr().attach(next, &kept));
    DestroyWindow(next);
    EXPECT_FALSE(keptDeleted);
}

TEST_F(WndProcMgr, DetachByMessage)
{
    bool aDeleted = false;
    RecordingHook* a = new RecordingHook("A", &aDeleted);
    a->m_nAutoDelete = 1;
    RecordingHook b("B"), stranger("S");
    kxUiWndProcMgr().attach(m_hWnd, a);
    kxUiWndProcMgr().attach(m_hWnd, &b);

    // A hook that is not attached: nothing goes.
    kxUiWndProcMgr().sendDetachMessage(m_hWnd, &stranger);
    g_log.clear();
    probe();
    EXPECT_EQ("B.before.probe A.before.probe wnd.probe B.after.probe=42 A.after.probe=42", logText());

    // One of two hooks: only it goes (and is deleted, being auto-delete); the window stays hooked.
    g_log.clear();
    kxUiWndProcMgr().sendDetachMessage(m_hWnd, a);
    EXPECT_TRUE(aDeleted);
    EXPECT_NE(kOwnProcedure, procedure());
    EXPECT_EQ("B.before.detach A.before.detach wnd.detach(hooked) B.after.detach=0", logText());
    g_log.clear();
    probe();
    EXPECT_EQ("B.before.probe wnd.probe B.after.probe=42", logText());

    // The single hook goes whichever hook is named, and the procedure is put back before the
    // window sees the message.
    g_log.clear();
    EXPECT_FALSE(kxUiWndProcMgr().sendDetachMessage(m_hWnd, &stranger));  // the window answers 0
    EXPECT_EQ(kOwnProcedure, procedure());
    EXPECT_EQ("B.before.detach wnd.detach", logText());
    g_log.clear();
    probe();
    EXPECT_EQ("wnd.probe", logText());

    // Detaching from an unmanaged window reaches only the window.
    g_log.clear();
    kxUiWndProcMgr().sendDetachMessage(m_hWnd, nullptr);
    EXPECT_EQ("wnd.detach", logText());
}

TEST_F(WndProcMgr, DetachAllByMessageWithNullHook)
{
    RecordingHook a("A"), b("B"), c("C");
    kxUiWndProcMgr().attach(m_hWnd, &a);
    kxUiWndProcMgr().attach(m_hWnd, &b);
    kxUiWndProcMgr().attach(m_hWnd, &c);
    kxUiWndProcMgr().sendDetachMessage(m_hWnd, nullptr);
    EXPECT_EQ(kOwnProcedure, procedure());
    // All may be attached again: the window is unmanaged, not forgotten in a bad state.
    EXPECT_TRUE(kxUiWndProcMgr().attach(m_hWnd, &c));
    kxUiWndProcMgr().sendDetachMessage(m_hWnd, nullptr);
}

TEST_F(WndProcMgr, HooksAndWindowRunWithTheModuleStateOfTheFirstAttach)
{
    AFX_MODULE_STATE* app = AfxGetModuleState();
    AFX_MODULE_STATE other = {GetModuleHandleW(nullptr), GetModuleHandleW(nullptr), nullptr, nullptr, TRUE};
    RecordingHook a("A"), b("B");
    {
        AFX_MAINTAIN_STATE2 first(&other);
        ASSERT_TRUE(kxUiWndProcMgr().attach(m_hWnd, &a));
    }
    ASSERT_TRUE(kxUiWndProcMgr().attach(m_hWnd, &b));  // a later attach keeps the first state

    probe();
    EXPECT_EQ(&other, a.m_moduleState);
    EXPECT_EQ(&other, b.m_moduleState);
    EXPECT_EQ(&other, g_windowModuleState);
    EXPECT_EQ(app, AfxGetModuleState());

    // Once unhooked, the window runs in whatever state is current.
    kxUiWndProcMgr().sendDetachMessage(m_hWnd, nullptr);
    probe();
    EXPECT_EQ(app, g_windowModuleState);
}

TEST_F(WndProcMgr, HooksRemovedUnderARunningPassRaiseInvalidArgument)
{
    RecordingHook a("A"), b("B"), c("C");
    kxUiWndProcMgr().attach(m_hWnd, &a);
    kxUiWndProcMgr().attach(m_hWnd, &b);
    kxUiWndProcMgr().attach(m_hWnd, &c);
    c.m_detachOnReenter = {&a, &b};  // the newest hook shortens the array under the pass

    // Called directly, so the exception comes back through our own frames only.
    WNDPROC managed = reinterpret_cast<WNDPROC>(procedure());
    AFX_MODULE_STATE* before = AfxGetModuleState();
    bool raised = false;
    try {
        managed(m_hWnd, WM_REENTER, 0, 0);
    } catch (CInvalidArgException* e) {
        raised = true;
        e->Delete();
    }
    EXPECT_TRUE(raised);
    EXPECT_EQ(before, AfxGetModuleState());

    // The surviving hook still works.
    c.m_detachOnReenter.clear();
    g_log.clear();
    probe();
    EXPECT_EQ("C.before.probe wnd.probe C.after.probe=42", logText());
}

// A layout-like hook moves a child to fill its parent on every resize; a persistence-like
// hook writes the parent's placement to the registry when it is destroyed. Both on one window.
namespace {

class FillWithChildHook : public KxUiWndProc {
public:
    explicit FillWithChildHook(HWND child) : m_hChild(child) {}
    int windowProc(HWND, UINT, WPARAM, LPARAM, LRESULT&) override { return 0; }
    void windowProcCallBack(HWND hWnd, UINT message, WPARAM, LPARAM, LRESULT&) override
    {
        if (message != WM_SIZE)
            return;
        RECT client;
        GetClientRect(hWnd, &client);
        InflateRect(&client, -5, -5);
        MoveWindow(m_hChild, client.left, client.top, client.right - client.left, client.bottom - client.top, FALSE);
    }
    HWND m_hChild;
};

const wchar_t kPlacementKey[] = L"Software\\KxUiTests\\core\\WndProcMgr";

class SavePlacementHook : public KxUiWndProc {
public:
    int windowProc(HWND hWnd, UINT message, WPARAM, LPARAM, LRESULT&) override
    {
        if (message == WM_DESTROY) {
            WINDOWPLACEMENT placement = {};
            placement.length = sizeof(placement);
            GetWindowPlacement(hWnd, &placement);
            RegSetKeyValueW(HKEY_CURRENT_USER, kPlacementKey, L"WINDOWPLACEMENT", REG_BINARY, &placement,
                            sizeof(placement));
        }
        return 0;
    }
};

} // namespace

TEST_F(WndProcMgr, LayoutLikeAndPersistenceLikeHooksShareAWindow)
{
    HWND child = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, m_hWnd, nullptr,
                                 GetModuleHandleW(nullptr), nullptr);
    FillWithChildHook* layout = new FillWithChildHook(child);
    layout->m_nAutoDelete = 1;
    SavePlacementHook* persist = new SavePlacementHook;
    persist->m_nAutoDelete = 1;
    ASSERT_TRUE(kxUiWndProcMgr().attach(m_hWnd, layout));
    ASSERT_TRUE(kxUiWndProcMgr().attach(m_hWnd, persist));

    SetWindowPos(m_hWnd, nullptr, 40, 30, 400, 300, SWP_NOZORDER);
    RECT client, inChild;
    GetClientRect(m_hWnd, &client);
    GetWindowRect(child, &inChild);
    MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(&inChild), 2);
    EXPECT_EQ(5, inChild.left);
    EXPECT_EQ(5, inChild.top);
    EXPECT_EQ(client.right - 5, inChild.right);
    EXPECT_EQ(client.bottom - 5, inChild.bottom);

    RegDeleteTreeW(HKEY_CURRENT_USER, kPlacementKey);
    DestroyWindow(m_hWnd);
    WINDOWPLACEMENT saved = {};
    DWORD size = sizeof(saved);
    ASSERT_EQ(ERROR_SUCCESS, RegGetValueW(HKEY_CURRENT_USER, kPlacementKey, L"WINDOWPLACEMENT", RRF_RT_REG_BINARY,
                                          nullptr, &saved, &size));
    EXPECT_EQ(44u, size);
    EXPECT_EQ(40, saved.rcNormalPosition.left);
    EXPECT_EQ(30, saved.rcNormalPosition.top);
    EXPECT_EQ(440, saved.rcNormalPosition.right);
    EXPECT_EQ(330, saved.rcNormalPosition.bottom);
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\KxUiTests");
}
