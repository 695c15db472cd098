// A host program written the way an MFC programmer writes one, built against the
// installed SDK only. It runs headless and ends by itself: the frame shows up, runs its
// About dialog (which closes itself), then asks the application to exit.
#include <afxwin.h>
#include <afxext.h>
#include <commctrl.h>
#include <cstdio>
#include <KxUiVersion.h>
#include "resource.h"

namespace {

bool g_failed = false;
bool g_aboutShown = false;

void Check(bool ok, const char* what)
{
    std::printf("%s: %s\n", what, ok ? "yes" : "NO");
    if (!ok)
        g_failed = true;
}

}  // namespace

class CAboutDlg : public CDialog {
public:
    CString m_strName = L"KxUi";
    CAboutDlg() : CDialog(IDD_ABOUTBOX) {}

protected:
    void DoDataExchange(CDataExchange* pDX) override { DDX_Text(pDX, IDC_ABOUT_NAME, m_strName); }
    BOOL OnInitDialog() override
    {
        CDialog::OnInitDialog();
        // What a user would type, then OK.
        SetDlgItemText(IDC_ABOUT_NAME, L"KxUi host user");
        PostMessage(WM_COMMAND, IDOK);
        return TRUE;
    }
};

class CMainFrame : public CFrameWnd {
public:
    CStatusBar m_wndStatusBar;

protected:
    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct)
    {
        if (CFrameWnd::OnCreate(lpCreateStruct) == -1)
            return -1;
        static const UINT indicators[] = {ID_SEPARATOR, ID_INDICATOR_GREETING};
        if (!m_wndStatusBar.Create(this) || !m_wndStatusBar.SetIndicators(indicators, 2))
            return -1;
        return 0;
    }
    afx_msg void OnHelpAbout()
    {
        CAboutDlg dlg;
        const INT_PTR result = dlg.DoModal();
        std::printf("about dialog: result %d, name \"%ls\"\n", static_cast<int>(result),
                    static_cast<LPCWSTR>(dlg.m_strName));
        Check(result == IDOK && dlg.m_strName == L"KxUi host user", "dialog from the resource template ran");
        g_aboutShown = true;
        // The dialog is gone: time to leave.
        PostMessage(WM_COMMAND, ID_APP_EXIT);
    }
    afx_msg void OnViewGreeting() {}
    afx_msg void OnUpdateViewGreeting(CCmdUI* pCmdUI) { pCmdUI->SetCheck(1); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CMainFrame, CFrameWnd)
    ON_WM_CREATE()
    ON_COMMAND(ID_HELP_ABOUT, &CMainFrame::OnHelpAbout)
    ON_COMMAND(ID_VIEW_GREETING, &CMainFrame::OnViewGreeting)
    ON_UPDATE_COMMAND_UI(ID_VIEW_GREETING, &CMainFrame::OnUpdateViewGreeting)
END_MESSAGE_MAP()

class CHostApp : public CWinApp {
public:
    BOOL InitInstance() override
    {
        CWinApp::InitInstance();
        SetRegistryKey(L"KxUiSdkConsumer");
        WriteProfileInt(L"Settings", L"Runs", 1);
        Check(GetProfileInt(L"Settings", L"Runs", 0) == 1, "profile in the registry");

        // The framework's own exception crosses into the program.
        bool caught = false;
        try {
            AfxThrowInvalidArgException();
        } catch (CInvalidArgException* e) {
            e->Delete();
            caught = true;
        }
        Check(caught, "framework exception caught");
        const DWORD v = KxUiGetVersion();
        std::printf("KxUi version %lu.%lu\n", (v >> 24) & 0xff, (v >> 16) & 0xff);
        Check(v != 0, "library loaded");

        // The manifest from the SDK brings version 6 of the common controls.
        // With the manifest the loader maps comctl32 from the side-by-side common-controls 6.0
        // assembly instead of the system folder. Its path says so on Windows and under Wine
        // alike; its DllGetVersion does not, as Wine's reports 5.81 for both builds.
        wchar_t path[MAX_PATH] = {};
        ::GetModuleFileNameW(::GetModuleHandleW(L"comctl32.dll"), path, MAX_PATH);
        CString loaded(path);
        loaded.MakeLower();
        Check(loaded.Find(L"microsoft.windows.common-controls_") >= 0 && loaded.Find(L"_6.0.") >= 0,
              "common controls 6");

        auto* frame = new CMainFrame;
        if (!frame->LoadFrame(IDR_MAINFRAME))
            return FALSE;
        m_pMainWnd = frame;
        frame->ShowWindow(SW_SHOW);
        frame->UpdateWindow();
        CString title;
        frame->GetWindowText(title);
        std::printf("frame: \"%ls\" with %u menus, %d status panes\n", static_cast<LPCWSTR>(title),
                    frame->GetMenu()->GetMenuItemCount(), frame->m_wndStatusBar.GetCount());
        Check(title == L"KxUi host", "frame title from the string resource");
        Check(frame->m_wndStatusBar.GetPaneText(1) == L"HELLO", "status-bar indicator text");

        // Menu items are updated before their popup opens.
        CMenu* view = frame->GetMenu()->GetSubMenu(1);
        frame->SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(view->m_hMenu), 1);
        Check((view->GetMenuState(ID_VIEW_GREETING, MF_BYCOMMAND) & MF_CHECKED) != 0, "menu item checked by its handler");

        frame->PostMessage(WM_COMMAND, ID_HELP_ABOUT);
        return TRUE;
    }

    int ExitInstance() override
    {
        // The frame deleted itself when it was closed; it ran the dialog before.
        Check(g_aboutShown && m_pMainWnd == nullptr, "main window closed after the dialog");
        ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\KxUiSdkConsumer");
        ::RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\KxUiSdkConsumer");
        CWinApp::ExitInstance();
        if (!g_failed)
            std::printf("KxUi SDK consumer: ok\n");
        std::fflush(stdout);
        return g_failed ? 1 : 0;
    }
};

CHostApp theApp;
