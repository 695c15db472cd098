// Frames: resources, layout of the view and the status bar, command routing, menu updates
// and status-bar panes.
#include <afxwin.h>
#include <afxext.h>
#include "KxAfxTestRes.h"
#include "KxInput.h"
#include "KxMsgRecorder.h"
#include "KxTestApp.h"

namespace {

KxMsgRecorder* g_log = nullptr;

void Log(const char* who, UINT id)
{
    if (g_log != nullptr)
        g_log->Add(who, WM_COMMAND, id);
}

class CTestView : public CView {
    DECLARE_DYNCREATE(CTestView)
public:
    void OnDraw(CDC*) override {}
    afx_msg void OnViewOnly() { Log("view", ID_TEST_VIEWONLY); }
    DECLARE_MESSAGE_MAP()
};

IMPLEMENT_DYNCREATE(CTestView, CView)

BEGIN_MESSAGE_MAP(CTestView, CView)
    ON_COMMAND(ID_TEST_VIEWONLY, &CTestView::OnViewOnly)
END_MESSAGE_MAP()

const UINT indicators[] = {ID_SEPARATOR, ID_TEST_PANE, ID_INDICATOR_CAPS};

class CTestFrame : public CFrameWnd {
public:
    CStatusBar m_wndStatusBar;
    bool paneEnabled = true;

    afx_msg int OnCreate(LPCREATESTRUCT lpcs)
    {
        if (CFrameWnd::OnCreate(lpcs) == -1)
            return -1;
        if (!m_wndStatusBar.Create(this) || !m_wndStatusBar.SetIndicators(indicators, 3))
            return -1;
        return 0;
    }
    afx_msg void OnOpen() { Log("frame", ID_TEST_OPEN); }
    afx_msg void OnViewOnly() { Log("frame", ID_TEST_VIEWONLY); }
    afx_msg void OnSave() { Log("frame", ID_TEST_SAVE); }
    afx_msg void OnUpdateSave(CCmdUI* ui) { ui->Enable(FALSE); }
    afx_msg void OnChecked() {}
    afx_msg void OnUpdateChecked(CCmdUI* ui) { ui->SetCheck(1); }
    afx_msg void OnRenamed() {}
    afx_msg void OnUpdateRenamed(CCmdUI* ui) { ui->SetText(L"New text"); }
    afx_msg void OnUpdatePane(CCmdUI* ui) { ui->Enable(paneEnabled); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CTestFrame, CFrameWnd)
    ON_WM_CREATE()
    ON_COMMAND(ID_TEST_OPEN, &CTestFrame::OnOpen)
    ON_COMMAND(ID_TEST_VIEWONLY, &CTestFrame::OnViewOnly)
    ON_COMMAND(ID_TEST_SAVE, &CTestFrame::OnSave)
    ON_UPDATE_COMMAND_UI(ID_TEST_SAVE, &CTestFrame::OnUpdateSave)
    ON_COMMAND(ID_TEST_CHECKED, &CTestFrame::OnChecked)
    ON_UPDATE_COMMAND_UI(ID_TEST_CHECKED, &CTestFrame::OnUpdateChecked)
    ON_COMMAND(ID_TEST_RENAMED, &CTestFrame::OnRenamed)
    ON_UPDATE_COMMAND_UI(ID_TEST_RENAMED, &CTestFrame::OnUpdateRenamed)
    ON_UPDATE_COMMAND_UI(ID_TEST_PANE, &CTestFrame::OnUpdatePane)
END_MESSAGE_MAP()

class FrameTest : public testing::Test {
protected:
    void SetUp() override
    {
        g_log = &rec;
        frame = new CTestFrame;
        CCreateContext context;
        context.m_pNewViewClass = RUNTIME_CLASS(CTestView);
        ASSERT_TRUE(frame->LoadFrame(IDR_TEST_FRAME, WS_OVERLAPPEDWINDOW, nullptr, &context));
        hwnd = frame->m_hWnd;
        frame->MoveWindow(0, 0, 500, 300);
    }
    void TearDown() override
    {
        g_log = nullptr;
        KxTestApp::Get().m_pMainWnd = nullptr;
        if (::IsWindow(hwnd))
            ::DestroyWindow(hwnd);  // the frame deletes itself
        MSG msg;
        while (::PeekMessageW(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
        }
    }
    UINT State(CMenu* menu, UINT pos) const { return menu->GetMenuState(pos, MF_BYPOSITION); }
    CString PaneShown(int index) const
    {
        wchar_t text[64] = {};
        frame->m_wndStatusBar.SendMessage(SB_GETTEXTW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text));
        return text;
    }
    CRect ItemRect(int index) const
    {
        CRect r;
        frame->m_wndStatusBar.GetItemRect(index, &r);
        return r;
    }
    KxMsgRecorder rec;
    CTestFrame* frame = nullptr;
    HWND hwnd = nullptr;
};

}  // namespace

TEST_F(FrameTest, LoadFrameMakesTitleMenuViewAndPlacesTheStatusBarBelowTheView)
{
    CString title;
    frame->GetWindowText(title);
    EXPECT_EQ(CString(L"Test frame"), title);
    CMenu* menu = frame->GetMenu();
    ASSERT_NE(nullptr, menu);
    EXPECT_EQ(2u, menu->GetMenuItemCount());
    CString text;
    menu->GetMenuString(1, text, MF_BYPOSITION);
    EXPECT_EQ(CString(L"&View"), text);
    EXPECT_NE(nullptr, frame->m_hAccelTable);

    CView* view = frame->GetActiveView();
    ASSERT_NE(nullptr, view);
    EXPECT_TRUE(view->IsKindOf(RUNTIME_CLASS(CTestView)));
    EXPECT_EQ(AFX_IDW_PANE_FIRST, view->GetDlgCtrlID());
    EXPECT_EQ(static_cast<CWnd*>(&frame->m_wndStatusBar), frame->GetMessageBar());

    CRect client, bar, pane;
    frame->GetClientRect(&client);
    frame->m_wndStatusBar.GetWindowRect(&bar);
    frame->ScreenToClient(&bar);
    view->GetWindowRect(&pane);
    frame->ScreenToClient(&pane);
    EXPECT_EQ(client.bottom, bar.bottom);
    EXPECT_EQ(0, bar.left);
    EXPECT_EQ(client.right, bar.right);
    EXPECT_GT(bar.Height(), 10);
    EXPECT_EQ(CRect(0, 0, client.right, bar.top), pane);

    // The layout follows the frame's size.
    frame->MoveWindow(0, 0, 600, 400);
    frame->GetClientRect(&client);
    view->GetWindowRect(&pane);
    frame->ScreenToClient(&pane);
    EXPECT_EQ(client.right, pane.right);
    EXPECT_EQ(client.bottom - bar.Height(), pane.bottom);
}

TEST_F(FrameTest, CommandsGoToTheActiveViewThenTheFrameThenTheApplication)
{
    frame->SendMessage(WM_COMMAND, ID_TEST_VIEWONLY);  // both have it: the view first
    frame->SendMessage(WM_COMMAND, ID_TEST_OPEN);      // only the frame
    frame->SendMessage(WM_COMMAND, ID_TEST_SAVE);      // disabled by its update handler
    EXPECT_TRUE(rec.Matches({{"view", WM_COMMAND, ID_TEST_VIEWONLY}, {"frame", WM_COMMAND, ID_TEST_OPEN}}));

    // Ctrl+O through the message loop: the frame's accelerators make it a command.
    rec.Clear();
    {
        KxKeyState ctrl(KxCtrl);
        frame->GetActiveView()->PostMessage(WM_KEYDOWN, 'O', 1);
        MSG msg;
        while (::PeekMessageW(&msg, nullptr, 0, 0, PM_NOREMOVE) && msg.message != WM_QUIT)
            AfxPumpMessage();
    }
    EXPECT_TRUE(rec.Matches({{"frame", WM_COMMAND, ID_TEST_OPEN}}));

    // The application's own map: Exit closes the main window.
    KxTestApp::Get().m_pMainWnd = frame;
    frame->SendMessage(WM_COMMAND, ID_APP_EXIT);
    EXPECT_FALSE(::IsWindow(hwnd));
    EXPECT_EQ(nullptr, KxTestApp::Get().m_pMainWnd);
    MSG quit;
    EXPECT_TRUE(::PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
}

TEST_F(FrameTest, MenuItemsAreUpdatedBeforeTheirPopupOpens)
{
    CMenu* view = frame->GetMenu()->GetSubMenu(1);
    CMenu* file = frame->GetMenu()->GetSubMenu(0);
    frame->SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(view->m_hMenu), MAKELPARAM(1, FALSE));
    frame->SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(file->m_hMenu), MAKELPARAM(0, FALSE));

    EXPECT_EQ(0u, State(view, 0) & MF_GRAYED);  // handled by the view
    EXPECT_NE(0u, State(view, 1) & MF_GRAYED);  // nobody handles it
    EXPECT_NE(0u, State(view, 2) & MF_CHECKED);
    EXPECT_NE(0u, State(view, 3) & MF_GRAYED);
    CString text;
    view->GetMenuString(4, text, MF_BYPOSITION);
    EXPECT_EQ(CString(L"New text"), text);
    EXPECT_EQ(static_cast<UINT>(ID_TEST_RENAMED), view->GetMenuItemID(4));

    EXPECT_EQ(0u, State(file, 0) & MF_GRAYED);  // Open
    EXPECT_NE(0u, State(file, 1) & MF_GRAYED);  // Save: its handler disables it
    EXPECT_EQ(0u, State(file, 3) & MF_GRAYED);  // Exit: the application handles it

    // Without automatic disabling, items without a handler stay as they are.
    frame->m_bAutoMenuEnable = FALSE;
    view->EnableMenuItem(1, MF_BYPOSITION | MF_ENABLED);
    frame->SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(view->m_hMenu), MAKELPARAM(1, FALSE));
    EXPECT_EQ(0u, State(view, 1) & MF_GRAYED);
}

TEST_F(FrameTest, StatusBarPanesStretchGetDisabledAndKeepTheirTexts)
{
    CStatusBar& bar = frame->m_wndStatusBar;
    EXPECT_EQ(3, bar.GetCount());
    EXPECT_EQ(1, bar.CommandToIndex(ID_TEST_PANE));
    EXPECT_EQ(-1, bar.CommandToIndex(12345));
    EXPECT_EQ(static_cast<UINT>(ID_INDICATOR_CAPS), bar.GetItemID(2));
    EXPECT_EQ(CString(L"PANE"), bar.GetPaneText(1));
    EXPECT_EQ(CString(L"PANE"), PaneShown(1));
    EXPECT_EQ(static_cast<UINT>(SBPS_STRETCH | SBPS_NOBORDERS), bar.GetPaneStyle(0));
    EXPECT_NE(0u, bar.GetStyle() & SBARS_SIZEGRIP);  // the frame can be resized

    // The first pane takes what the indicators leave.
    const CRect r0 = ItemRect(0), r1 = ItemRect(1), r2 = ItemRect(2);
    EXPECT_LT(r0.right, r1.left + 1);
    frame->MoveWindow(0, 0, 600, 300);
    EXPECT_EQ(r0.Width() + 100, ItemRect(0).Width());
    EXPECT_EQ(r1.Width(), ItemRect(1).Width());
    EXPECT_EQ(r2.Width(), ItemRect(2).Width());

    // A wider indicator takes from the stretching pane.
    UINT id = 0, style = 0;
    int width = 0;
    bar.GetPaneInfo(2, id, style, width);
    bar.SetPaneInfo(2, id, style, width + 40);
    EXPECT_EQ(r2.Width() + 40, ItemRect(2).Width());
    EXPECT_EQ(r0.Width() + 60, ItemRect(0).Width());

    // Texts round trip; a disabled pane shows nothing but keeps its text.
    EXPECT_TRUE(bar.SetPaneText(0, L"Ready"));
    EXPECT_EQ(CString(L"Ready"), bar.GetPaneText(0));
    EXPECT_EQ(CString(L"Ready"), PaneShown(0));
    bar.SetPaneStyle(1, SBPS_DISABLED);
    EXPECT_EQ(CString(), PaneShown(1));
    EXPECT_EQ(CString(L"PANE"), bar.GetPaneText(1));
    bar.SetPaneText(1, L"EDIT");
    EXPECT_EQ(CString(), PaneShown(1));
    bar.SetPaneStyle(1, SBPS_NORMAL);
    EXPECT_EQ(CString(L"EDIT"), PaneShown(1));
    EXPECT_FALSE(bar.SetPaneText(7, L"x"));

    // The frame's message text goes to the first plain pane.
    frame->SetMessageText(L"Working");
    EXPECT_EQ(CString(L"Working"), bar.GetPaneText(0));
    CString barText;
    bar.GetWindowText(barText);
    EXPECT_EQ(CString(L"Working"), barText);
}

TEST_F(FrameTest, StatusBarPanesFollowTheirUpdateHandlersAtIdleTime)
{
    CStatusBar& bar = frame->m_wndStatusBar;
    frame->paneEnabled = false;
    bar.SendMessage(WM_IDLEUPDATECMDUI, TRUE);
    EXPECT_NE(0u, bar.GetPaneStyle(1) & SBPS_DISABLED);
    EXPECT_EQ(CString(), PaneShown(1));
    frame->paneEnabled = true;
    bar.SendMessage(WM_IDLEUPDATECMDUI, TRUE);
    EXPECT_EQ(0u, bar.GetPaneStyle(1) & SBPS_DISABLED);
    EXPECT_EQ(CString(L"PANE"), PaneShown(1));
}

// A frame that centres its drawing must be repainted whole when it grows, not only in the
// strip that the resize uncovered: the frame class redraws on every change of width or height.
TEST(FrameRepaint, GrowingAFrameInvalidatesItsWholeClientArea)
{
    for (bool fromResource : {false, true}) {
        auto* frame = new CFrameWnd;
        if (fromResource)
            ASSERT_TRUE(frame->LoadFrame(IDR_TEST_FRAME, WS_OVERLAPPEDWINDOW, nullptr, nullptr));
        else
            ASSERT_TRUE(frame->Create(nullptr, L"repaint", WS_OVERLAPPEDWINDOW, CRect(0, 0, 200, 150)));
        frame->SetWindowPos(nullptr, 0, 0, 200, 150, SWP_NOZORDER | SWP_SHOWWINDOW);
        frame->UpdateWindow();
        frame->ValidateRect(nullptr);
        frame->SetWindowPos(nullptr, 0, 0, 320, 260, SWP_NOZORDER | SWP_NOMOVE);
        CRect client, update;
        frame->GetClientRect(&client);
        EXPECT_TRUE(frame->GetUpdateRect(&update)) << "from resource: " << fromResource;
        EXPECT_EQ(client, update) << "from resource: " << fromResource;
        frame->DestroyWindow();  // the frame deletes itself
    }
}
