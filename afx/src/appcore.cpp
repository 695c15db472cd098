// CWinApp: the application object, the framework's main, message boxes and wait cursor.
#include "afximpl.h"
#include <cstdlib>
#include <cwchar>

IMPLEMENT_DYNAMIC(CWinApp, CWinThread)

BEGIN_MESSAGE_MAP(CWinApp, CWinThread)
    ON_COMMAND(ID_APP_EXIT, &CWinApp::OnAppExit)
END_MESSAGE_MAP()

CWinApp::CWinApp(LPCTSTR lpszAppName)
    : m_pszAppName(lpszAppName != nullptr ? _wcsdup(lpszAppName) : nullptr), m_pszRegistryKey(nullptr),
      m_pszProfileName(nullptr), m_pszExeName(nullptr), m_pszHelpFilePath(nullptr), m_hInstance(nullptr),
      m_lpCmdLine(nullptr), m_nCmdShow(SW_SHOWNORMAL), m_nWaitCursorCount(0), m_hcurWaitCursorRestore(nullptr)
{
    // The application of the module whose state is current (the executable's for a global).
    AfxGetModuleState()->m_pCurrentWinApp = this;
    AfxGetThreadState()->m_pCurrentWinThread = this;
    m_hThread = ::GetCurrentThread();
    m_nThreadID = ::GetCurrentThreadId();
}

CWinApp::~CWinApp()
{
    AFX_MODULE_STATE* state = AfxGetModuleState();
    if (state->m_pCurrentWinApp == this)
        state->m_pCurrentWinApp = nullptr;
    if (state->m_lpszCurrentAppName == m_pszAppName)
        state->m_lpszCurrentAppName = nullptr;
    // The names are allocated with malloc (_wcsdup), as hosts replacing them expect.
    free(const_cast<LPTSTR>(m_pszAppName));
    free(const_cast<LPTSTR>(m_pszRegistryKey));
    free(const_cast<LPTSTR>(m_pszProfileName));
    free(const_cast<LPTSTR>(m_pszExeName));
    free(const_cast<LPTSTR>(m_pszHelpFilePath));
}

void CWinApp::SetCurrentHandles()
{
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(m_hInstance, path, MAX_PATH);
    const wchar_t* base = path;
    for (const wchar_t* p = path; *p; ++p) {
        if (*p == L'\\' || *p == L'/')
            base = p + 1;
    }
    CString exe(base);
    const int dot = exe.ReverseFind(L'.');
    if (dot >= 0)
        exe = exe.Left(dot);
    if (m_pszExeName == nullptr)
        m_pszExeName = _wcsdup(exe);
    if (m_pszAppName == nullptr) {
        CString title;
        if (!title.LoadString(AFX_IDS_APP_TITLE))
            title = m_pszExeName;
        m_pszAppName = _wcsdup(title);
    }
    AfxGetModuleState()->m_lpszCurrentAppName = m_pszAppName;
    if (m_pszProfileName == nullptr)
        m_pszProfileName = _wcsdup(CString(m_pszExeName) + L".INI");
    if (m_pszHelpFilePath == nullptr) {
        CString help(path);
        const int hdot = help.ReverseFind(L'.');
        if (hdot >= 0)
            help = help.Left(hdot);
        m_pszHelpFilePath = _wcsdup(help + L".HLP");
    }
}

BOOL CWinApp::InitApplication()
{
    return TRUE;
}

BOOL CWinApp::InitInstance()
{
    return TRUE;
}

int CWinApp::ExitInstance()
{
    return static_cast<int>(AfxGetThreadState()->m_msgCur.wParam);
}

int CWinApp::Run()
{
    // Without a main window there is nothing to wait for.
    if (m_pMainWnd == nullptr)
        AfxPostQuitMessage(0);
    return CWinThread::Run();
}

BOOL CWinApp::OnIdle(LONG lCount)
{
    return CWinThread::OnIdle(lCount);
}

void CWinApp::OnAppExit()
{
    if (m_pMainWnd != nullptr)
        m_pMainWnd->SendMessage(WM_CLOSE);
    else
        AfxPostQuitMessage(0);
}

HCURSOR CWinApp::LoadCursor(LPCTSTR lpszResourceName) const
{
    return ::LoadCursorW(AfxFindResourceHandle(lpszResourceName, RT_GROUP_CURSOR), lpszResourceName);
}

HICON CWinApp::LoadIcon(LPCTSTR lpszResourceName) const
{
    return ::LoadIconW(AfxFindResourceHandle(lpszResourceName, RT_GROUP_ICON), lpszResourceName);
}

void CWinApp::DoWaitCursor(int nCode)
{
    m_nWaitCursorCount += nCode;
    if (m_nWaitCursorCount > 0) {
        HCURSOR prev = ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
        if (nCode > 0 && m_nWaitCursorCount == 1)
            m_hcurWaitCursorRestore = prev;
    } else {
        m_nWaitCursorCount = 0;
        ::SetCursor(m_hcurWaitCursorRestore);
    }
}

int CWinApp::DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT)
{
    HWND hWndTop = nullptr;
    HWND hWnd = CWnd::SafeHwnd(CWnd::GetSafeOwner(nullptr, &hWndTop));
    // The owner itself stays enabled so that it gets the focus back afterwards.
    if (hWnd != hWndTop && hWnd != nullptr)
        ::EnableWindow(hWnd, TRUE);
    if ((nType & MB_ICONMASK) == 0) {
        switch (nType & MB_TYPEMASK) {
        case MB_OK:
        case MB_OKCANCEL:
            nType |= MB_ICONEXCLAMATION;
            break;
        case MB_YESNO:
        case MB_YESNOCANCEL:
            nType |= MB_ICONQUESTION;
            break;
        default:
            break;
        }
    }
    const int result = ::MessageBoxW(hWnd, lpszPrompt, m_pszAppName != nullptr ? m_pszAppName : L"", nType);
    if (hWndTop != nullptr)
        ::EnableWindow(hWndTop, TRUE);
    return result;
}

////////////////////////////////////////////////////////////////////////////
// Free functions

int AFXAPI AfxMessageBox(LPCTSTR lpszText, UINT nType, UINT nIDHelp)
{
    if (lpszText == nullptr)
        lpszText = L"";
    if (CWinApp* app = AfxGetApp())
        return app->DoMessageBox(lpszText, nType, nIDHelp);
    return ::MessageBoxW(nullptr, lpszText, AfxGetAppName(), nType);
}

int AFXAPI AfxMessageBox(UINT nIDPrompt, UINT nType, UINT nIDHelp)
{
    CString text;
    if (!text.LoadString(nIDPrompt))
        return 0;  // no such string: nothing to show
    if (nIDHelp == static_cast<UINT>(-1))
        nIDHelp = nIDPrompt;
    return AfxMessageBox(text, nType, nIDHelp);
}

BOOL AFXAPI AfxWinInit(HINSTANCE hInstance, HINSTANCE, LPTSTR lpCmdLine, int nCmdShow)
{
    AFX_MODULE_STATE* state = AfxGetModuleState();
    state->m_hCurrentInstanceHandle = hInstance;
    state->m_hCurrentResourceHandle = hInstance;
    if (CWinApp* app = AfxGetApp()) {
        app->m_hInstance = hInstance;
        app->m_lpCmdLine = lpCmdLine;
        app->m_nCmdShow = nCmdShow;
        app->SetCurrentHandles();
    }
    INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_WIN95_CLASSES | ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&icc);
    return TRUE;
}

void AFXAPI AfxWinTerm()
{
    CWnd::DeleteTempMap();
    CMenu::DeleteTempMap();
}

int AFXAPI AfxWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPTSTR lpCmdLine, int nCmdShow)
{
    int nReturnCode = -1;
    CWinThread* thread = AfxGetThread();
    CWinApp* app = AfxGetApp();
    if (thread != nullptr && AfxWinInit(hInstance, hPrevInstance, lpCmdLine, nCmdShow) &&
        (app == nullptr || app->InitApplication())) {
        if (!thread->InitInstance()) {
            if (thread->m_pMainWnd != nullptr)
                thread->m_pMainWnd->DestroyWindow();
            nReturnCode = thread->ExitInstance();
        } else {
            nReturnCode = thread->Run();
        }
    }
    AfxWinTerm();
    return nReturnCode;
}
