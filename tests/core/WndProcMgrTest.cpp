// Hooks on real windows: order of the passes, swallowing, detaching, destruction.
#include "KxUiWndProcMgr.h"
#include "KxWndProcStress.h"
#include <afxwin.h>
#include <functional>
#include <stdexcept>
#include <string>
#include <algorithm>
#include <deque>
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
    if (message == WM_REENTER)
        return "reenter";
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
        if (message == WM_PROBE && m_actBefore)
            act(hWnd, m_actBefore);
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

    void windowProcCallBack(HWND hWnd, UINT message, WPARAM, LPARAM, LRESULT& result) override
    {
        if (const char* name = messageName(message))
            g_log.push_back(m_name + ".after." + name + "=" + std::to_string(result));
        if (message == WM_PROBE)
            result += m_addToResult;
        if (message == WM_PROBE && m_actAfter)
            act(hWnd, m_actAfter);
    }

    // Runs a one-shot action from inside a pass; afterwards the hook is still a live object
    // even if the action detached it (its deletion waits until the pass has returned).
    void act(HWND hWnd, std::function<void(HWND)>& action)
    {
        std::function<void(HWND)> run;
        run.swap(action);
        run(hWnd);
        g_log.push_back(m_name + (m_deleted && *m_deleted ? ".deleted-under-its-pass" : ".back"));
    }

    std::string m_name;
    bool* m_deleted;
    bool m_swallow = false;
    LRESULT m_swallowResult = 0;
    LRESULT m_addToResult = 0;
    AFX_MODULE_STATE* m_moduleState = nullptr;
    std::vector<KxUiWndProc*> m_detachOnReenter;
    std::function<void(HWND)> m_actBefore;   // on the next WM_PROBE, in windowProc
    std::function<void(HWND)> m_actAfter;    // on the next WM_PROBE, in windowProcCallBack
};

// Auto-delete hooks named A, B, C, ... attached in that order, with their deletion flags.
struct OwnedHooks {
    OwnedHooks(HWND hWnd, int count) : deleted(count, false)
    {
        for (int i = 0; i < count; ++i) {
            hooks.push_back(new RecordingHook(std::string(1, char('A' + i)).c_str(), &deleted[i]));
            hooks.back()->m_nAutoDelete = 1;
            EXPECT_TRUE(kxUiWndProcMgr().attach(hWnd, hooks.back()));
        }
    }
    RecordingHook& newest() { return *hooks.back(); }
    int deletedCount() const { return (int)std::count(deleted.begin(), deleted.end(), true); }

    std::vector<RecordingHook*> hooks;   // deleted by the manager
    std::deque<bool> deleted;            // stable addresses
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

// Hooks removed under a running pass leave its next index outside the array: the invalid-argument
// exception that raises ends the message at the manager's procedure, which answers 0; neither the
// window's procedure nor the after pass runs for it, and nothing escapes to the caller.
TEST_F(WndProcMgr, HooksRemovedUnderARunningPassEndTheMessageAtTheBoundary)
{
    RecordingHook a("A"), b("B"), c("C");
    kxUiWndProcMgr().attach(m_hWnd, &a);
    kxUiWndProcMgr().attach(m_hWnd, &b);
    kxUiWndProcMgr().attach(m_hWnd, &c);
    c.m_detachOnReenter = {&a, &b};  // the newest hook shortens the array under the pass

    // Called directly as well as through the system: no exception comes back either way.
    WNDPROC managed = reinterpret_cast<WNDPROC>(procedure());
    AFX_MODULE_STATE* before = AfxGetModuleState();
    LRESULT answer = -1;
    EXPECT_NO_THROW(answer = managed(m_hWnd, WM_REENTER, 0, 0));
    EXPECT_EQ(0, answer);
    EXPECT_EQ(before, AfxGetModuleState());
    EXPECT_EQ("C.before.reenter C.before.detach B.before.detach A.before.detach wnd.detach(hooked) "
              "C.after.detach=0 B.after.detach=0 "
              "C.before.detach B.before.detach wnd.detach(hooked) C.after.detach=0",
              logText());

    // The surviving hook still works.
    c.m_detachOnReenter.clear();
    g_log.clear();
    probe();
    EXPECT_EQ("C.before.probe wnd.probe C.after.probe=42", logText());
    kxUiWndProcMgr().sendDetachMessage(m_hWnd, nullptr);
}

// The newest hook destroys the window while older hooks are still to be called, in either pass:
// the nested WM_NCDESTROY unhooks the window, the outer pass meets an emptied record (never freed
// memory) and ends; every auto-delete hook is deleted once, after the pass that was running.
TEST_F(WndProcMgr, NewestHookDestroysTheWindowWhileOlderHooksWait)
{
    struct Case {
        int hooks;
        bool inAfterPass;
        const char* log;
    };
    const Case cases[] = {
        {2, false, "B.before.probe B.before.ncdestroy A.before.ncdestroy wnd.ncdestroy B.back"},
        {3, false, "C.before.probe C.before.ncdestroy B.before.ncdestroy A.before.ncdestroy wnd.ncdestroy C.back"},
        {2, true, "B.before.probe A.before.probe wnd.probe B.after.probe=42 "
                  "B.before.ncdestroy A.before.ncdestroy wnd.ncdestroy B.back"},
        {3, true, "C.before.probe B.before.probe A.before.probe wnd.probe C.after.probe=42 "
                  "C.before.ncdestroy B.before.ncdestroy A.before.ncdestroy wnd.ncdestroy C.back"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.hooks << " hooks, after pass " << c.inAfterPass);
        HWND hWnd = create();
        OwnedHooks owned(hWnd, c.hooks);
        auto destroy = [](HWND h) { DestroyWindow(h); };
        (c.inAfterPass ? owned.newest().m_actAfter : owned.newest().m_actBefore) = destroy;
        g_log.clear();
        EXPECT_EQ(0, SendMessageW(hWnd, WM_PROBE, 0, 0));
        EXPECT_EQ(c.log, logText());
        EXPECT_FALSE(IsWindow(hWnd));
        EXPECT_EQ(c.hooks, owned.deletedCount());
    }
}

// The newest hook asks for every hook to go, from either pass: the window is unhooked before it
// sees the detach message, and the pass that was running ends without touching freed memory.
TEST_F(WndProcMgr, NewestHookSendsDetachAll)
{
    for (bool inAfterPass : {false, true}) {
        SCOPED_TRACE(inAfterPass ? "after pass" : "before pass");
        OwnedHooks owned(m_hWnd, 3);
        auto detachAll = [](HWND h) { kxUiWndProcMgr().sendDetachMessage(h, nullptr); };
        (inAfterPass ? owned.newest().m_actAfter : owned.newest().m_actBefore) = detachAll;
        g_log.clear();
        probe();
        const std::string nested = "C.before.detach B.before.detach A.before.detach wnd.detach C.back";
        EXPECT_EQ(inAfterPass ? "C.before.probe B.before.probe A.before.probe wnd.probe C.after.probe=42 " + nested
                              : "C.before.probe " + nested,
                  logText());
        EXPECT_EQ(kOwnProcedure, procedure());
        EXPECT_EQ(3, owned.deletedCount());
        g_log.clear();
        EXPECT_EQ(42, probe());
        EXPECT_EQ("wnd.probe", logText());
    }
}

// A hook removes an older hook and then a newer one while its pass runs. The removed hooks are not
// called again, their deletion waits until the message is done, and the window stays hooked by
// the survivors.
TEST_F(WndProcMgr, HookDetachesAnOlderAndThenANewerHookDuringOnePass)
{
    OwnedHooks owned(m_hWnd, 4);   // A B C D
    RecordingHook& b = *owned.hooks[1];
    RecordingHook& c = *owned.hooks[2];
    RecordingHook& d = *owned.hooks[3];
    bool deletedDuringPass = true;
    c.m_actBefore = [&](HWND h) {
        kxUiWndProcMgr().sendDetachMessage(h, &b);
        kxUiWndProcMgr().sendDetachMessage(h, &d);
        deletedDuringPass = owned.deletedCount() != 0;
    };
    g_log.clear();
    probe();
    EXPECT_FALSE(deletedDuringPass);
    EXPECT_EQ(2, owned.deletedCount());
    EXPECT_TRUE(owned.deleted[1] && owned.deleted[3]);
    const std::string log = logText();
    const size_t back = log.find("C.back");
    ASSERT_NE(std::string::npos, back);
    EXPECT_EQ(std::string::npos, log.find("B.", back)) << log;
    EXPECT_EQ(std::string::npos, log.find("D.", back)) << log;
    EXPECT_NE(kOwnProcedure, procedure());

    g_log.clear();
    EXPECT_EQ(42, probe());
    EXPECT_EQ("C.before.probe A.before.probe wnd.probe C.after.probe=42 A.after.probe=42", logText());
    kxUiWndProcMgr().sendDetachMessage(m_hWnd, nullptr);
    EXPECT_EQ(4, owned.deletedCount());
}

// A hook sends the window another message from inside its pass: the nested message goes through
// every hook and the window and answers, then the outer one goes on. When the nested message
// destroys the window, the outer pass ends with it.
TEST_F(WndProcMgr, ReentrantSendMessageFromInsideAHook)
{
    OwnedHooks owned(m_hWnd, 2);
    LRESULT nested = 0;
    owned.newest().m_actBefore = [&](HWND h) { nested = SendMessageW(h, WM_PROBE, 0, 0); };
    owned.hooks[0]->m_addToResult = 1;
    g_log.clear();
    EXPECT_EQ(43, probe());
    EXPECT_EQ(43, nested);
    EXPECT_EQ("B.before.probe B.before.probe A.before.probe wnd.probe B.after.probe=42 A.after.probe=42 B.back "
              "A.before.probe wnd.probe B.after.probe=42 A.after.probe=42",
              logText());

    owned.newest().m_actBefore = [&](HWND h) { SendMessageW(h, WM_PROBE, 0, 0); };
    owned.hooks[0]->m_actBefore = [](HWND h) { DestroyWindow(h); };   // runs in the nested message
    g_log.clear();
    EXPECT_EQ(0, probe());
    EXPECT_FALSE(IsWindow(m_hWnd));
    EXPECT_EQ(2, owned.deletedCount());
}

// What a hook throws stops at the manager's procedure: the message answers 0 (-1 for WM_CREATE),
// the module state is restored, and the next message is handled normally.
namespace {

class ThrowingHook : public KxUiWndProc {
public:
    int windowProc(HWND, UINT message, WPARAM, LPARAM, LRESULT&) override
    {
        if (message == m_throwOn && !m_inAfterPass)
            raise();
        return 0;
    }
    void windowProcCallBack(HWND, UINT message, WPARAM, LPARAM, LRESULT&) override
    {
        if (message == m_throwOn && m_inAfterPass)
            raise();
    }
    void raise()
    {
        if (m_standard)
            throw std::runtime_error("hook failed");
        AfxThrowInvalidArgException();
    }
    UINT m_throwOn = WM_PROBE;
    bool m_inAfterPass = false;
    bool m_standard = false;
};

} // namespace

TEST_F(WndProcMgr, ExceptionsFromHooksStopAtTheManagersProcedure)
{
    ThrowingHook thrower;
    RecordingHook older("A");
    kxUiWndProcMgr().attach(m_hWnd, &older);
    kxUiWndProcMgr().attach(m_hWnd, &thrower);
    AFX_MODULE_STATE* state = AfxGetModuleState();
    for (bool standard : {false, true}) {
        for (bool inAfterPass : {false, true}) {
            thrower.m_standard = standard;
            thrower.m_inAfterPass = inAfterPass;
            g_log.clear();
            EXPECT_EQ(0, probe());
            EXPECT_EQ(state, AfxGetModuleState());
            // Thrown in the before pass, the rest of the message is skipped; in the after pass the
            // window has already answered, and the older hook's after pass is skipped.
            EXPECT_EQ(inAfterPass ? "A.before.probe wnd.probe" : "", logText());
        }
    }
    thrower.m_throwOn = WM_CREATE;
    thrower.m_inAfterPass = false;
    CREATESTRUCTW cs = {};
    EXPECT_EQ(-1, SendMessageW(m_hWnd, WM_CREATE, 0, reinterpret_cast<LPARAM>(&cs)));

    thrower.m_throwOn = 0;
    g_log.clear();
    EXPECT_EQ(42, probe());
    EXPECT_EQ("A.before.probe wnd.probe A.after.probe=42", logText());
    kxUiWndProcMgr().sendDetachMessage(m_hWnd, nullptr);
}

// A hooked object deleted before its window detaches itself: the manager forgets it, the other
// hooks keep working, and the window's procedure comes back when it was the last, on every window
// it was attached to.
TEST_F(WndProcMgr, AHookDeletedBeforeItsWindowDetachesItself)
{
    HWND other = create();
    RecordingHook* a = new RecordingHook("A");
    RecordingHook* b = new RecordingHook("B");
    ASSERT_TRUE(kxUiWndProcMgr().attach(m_hWnd, a));
    ASSERT_TRUE(kxUiWndProcMgr().attach(m_hWnd, b));
    ASSERT_TRUE(kxUiWndProcMgr().attach(other, b));

    delete b;
    EXPECT_NE(kOwnProcedure, procedure());
    EXPECT_EQ(kOwnProcedure, GetWindowLongPtrW(other, GWLP_WNDPROC));
    g_log.clear();
    EXPECT_EQ(42, probe());
    EXPECT_EQ(42, SendMessageW(other, WM_PROBE, 0, 0));
    EXPECT_EQ("A.before.probe wnd.probe A.after.probe=42 wnd.probe", logText());

    delete a;
    EXPECT_EQ(kOwnProcedure, procedure());
    g_log.clear();
    EXPECT_EQ(42, probe());
    EXPECT_EQ("wnd.probe", logText());

    // The window can be hooked again, and a hook deleted from inside another hook's pass
    // leaves that pass without harm.
    RecordingHook c("C");
    RecordingHook* d = new RecordingHook("D");
    kxUiWndProcMgr().attach(m_hWnd, &c);
    kxUiWndProcMgr().attach(m_hWnd, d);
    c.m_actBefore = [&](HWND) { delete d; };
    g_log.clear();
    EXPECT_EQ(42, probe());
    EXPECT_EQ("D.before.probe C.before.probe C.back wnd.probe C.after.probe=42", logText());
    g_log.clear();
    EXPECT_EQ(42, probe());
    EXPECT_EQ("C.before.probe wnd.probe C.after.probe=42", logText());
    DestroyWindow(other);
    kxUiWndProcMgr().sendDetachMessage(m_hWnd, nullptr);
}

// A thousand random sequences of attach, detach, destroy and delete over several windows, with
// hooks acting from inside their passes, against a model of which hooks each window holds.
TEST(WndProcMgrStress, RandomSequencesOverSeveralWindowsMatchTheModel)
{
    const KxWndProcStress::Report report = KxWndProcStress::Run(20261124, 1000);
    EXPECT_EQ(0, report.failures) << report.firstFailure;
    EXPECT_EQ(1000, report.sequences);
    EXPECT_GT(report.actionsInPasses, 1000);
    std::printf("[ stress   ] %s\n", report.Summary().c_str());
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
