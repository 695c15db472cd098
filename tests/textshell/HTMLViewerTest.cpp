// The HTML viewer: its failure path, and what creation and navigation give on this platform
// (the browser control may have no engine to render pages here).
#include "KxUiHTMLViewerCtrl.h"

namespace {

class HTMLViewerTest : public testing::Test {
protected:
    static void SetUpTestSuite() { ::OleInitialize(nullptr); }
    static void TearDownTestSuite() { ::OleUninitialize(); }

    void SetUp() override
    {
        HWND hwnd = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 400, 300, nullptr,
                                      nullptr, nullptr, nullptr);
        ASSERT_TRUE(hwnd != nullptr);
        parent.Attach(hwnd);
    }

    void TearDown() override
    {
        if (parent.m_hWnd)
            ::DestroyWindow(parent.Detach());
    }

    CWnd parent;
    const RECT rect = {0, 0, 300, 200};
};

TEST_F(HTMLViewerTest, LoadFailsOnAViewerWithoutBrowser)
{
    KxUiHTMLViewerCtrl never;
    EXPECT_FALSE(never.isValid());
    EXPECT_FALSE(never.loadURL(L"about:blank"));
    EXPECT_FALSE(never.loadCHM(L"help.chm", L"index.htm"));

    // Creation without a usable parent fails and leaves no window behind.
    KxUiHTMLViewerCtrl orphan;
    EXPECT_FALSE(orphan.create(rect, nullptr, 100));
    EXPECT_EQ(nullptr, orphan.m_hWnd);
    EXPECT_FALSE(orphan.loadURL(L"about:blank"));
    CWnd gone;
    gone.Attach(::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                  nullptr, nullptr));
    ::DestroyWindow(gone.Detach());
    EXPECT_FALSE(orphan.create(rect, &gone, 100));
    EXPECT_FALSE(orphan.isValid());
    EXPECT_FALSE(orphan.loadURL(nullptr));
}

// Destroys the viewer's window from inside the synchronous load's message loop: a safety
// net so that a browser that neither completes nor reports its failure cannot hang the run.
HWND g_viewerToDestroy;
void CALLBACK destroyViewer(HWND, UINT, UINT_PTR id, DWORD)
{
    ::KillTimer(nullptr, id);
    ::DestroyWindow(g_viewerToDestroy);
}

TEST_F(HTMLViewerTest, CreatesAndNavigatesWhereTheBrowserExists)
{
    KxUiHTMLViewerCtrl viewer;
    const bool created = viewer.create(rect, &parent, 1234);
    RecordProperty("BrowserCreated", created ? "yes" : "no");
    if (!created) {
        // The platform offers no browser: the failure leaves nothing behind.
        EXPECT_EQ(nullptr, viewer.m_hWnd);
        EXPECT_FALSE(viewer.loadURL(L"about:blank"));
        return;
    }
    EXPECT_TRUE(viewer.isValid());
    EXPECT_EQ(parent.m_hWnd, ::GetParent(viewer.m_hWnd));
    EXPECT_EQ(1234, ::GetDlgCtrlID(viewer.m_hWnd));
    const DWORD style = DWORD(::GetWindowLongW(viewer.m_hWnd, GWL_STYLE));
    EXPECT_EQ(DWORD(WS_CHILD | WS_VISIBLE), style & (WS_CHILD | WS_VISIBLE));
    EXPECT_FALSE(viewer.create(rect, &parent, 1235)) << "a viewer is created once";

    viewer.setLoadAsynchrone(true);
    EXPECT_TRUE(viewer.loadURL(L"about:blank"));
    EXPECT_TRUE(viewer.loadCHM(L"C:\\nowhere\\help.chm", L"index.htm"));

    // The synchronous load returns true when the page completes. Where the browser has no
    // engine, the navigation fails and the wait ends with false, the viewer intact.
    viewer.setLoadAsynchrone(false);
    g_viewerToDestroy = viewer.m_hWnd;
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 5000, destroyViewer);
    ASSERT_NE(0u, timer);
    const bool loaded = viewer.loadURL(L"about:blank");
    const bool survived = ::IsWindow(g_viewerToDestroy) != FALSE;
    ::KillTimer(nullptr, timer);
    RecordProperty("SynchronousLoad", loaded ? "completed" : survived ? "failed" : "timed out");
    EXPECT_TRUE(survived) << "the load neither completed nor reported its failure";
    EXPECT_EQ(survived, viewer.isValid());

    // A destroyed viewer loads nothing.
    viewer.DestroyWindow();
    EXPECT_FALSE(viewer.isValid());
    EXPECT_FALSE(viewer.loadURL(L"about:blank"));
}

} // namespace
