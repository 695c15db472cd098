#include "KxTestApp.h"
#include <cstdlib>

namespace {
KxTestApp* g_app = nullptr;

void ReplaceName(LPCTSTR& field, LPCTSTR value)
{
    free(const_cast<LPTSTR>(field));
    field = value != nullptr ? _wcsdup(value) : nullptr;
}
}  // namespace

KxTestApp::KxTestApp() : CWinApp(L"KxUiTests")
{
    g_app = this;
}

KxTestApp::~KxTestApp()
{
    EndTest();
    g_app = nullptr;
}

KxTestApp& KxTestApp::Get()
{
    return *g_app;
}

int KxTestApp::DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT nIDPrompt)
{
    m_boxes.push_back(Box{CString(lpszPrompt), nType, nIDPrompt});
    if (!m_answers.empty()) {
        const int answer = m_answers.front();
        m_answers.pop_front();
        return answer;
    }
    // The button a user pressing Enter would get.
    static const int buttons[][3] = {
        {IDOK, IDOK, IDOK},             // MB_OK
        {IDOK, IDCANCEL, IDCANCEL},     // MB_OKCANCEL
        {IDABORT, IDRETRY, IDIGNORE},   // MB_ABORTRETRYIGNORE
        {IDYES, IDNO, IDCANCEL},        // MB_YESNOCANCEL
        {IDYES, IDNO, IDNO},            // MB_YESNO
        {IDRETRY, IDCANCEL, IDCANCEL},  // MB_RETRYCANCEL
        {IDCANCEL, IDTRYAGAIN, IDCONTINUE},
    };
    const UINT type = nType & MB_TYPEMASK;
    const UINT def = (nType & MB_DEFMASK) >> 8;
    return type < 7 && def < 3 ? buttons[type][def] : IDOK;
}

CString KxTestApp::ProfileKeyPath() const
{
    return CString(L"Software\\") + m_runKey + L"\\" + m_pszAppName;
}

CString KxTestApp::UseIniFile()
{
    wchar_t dir[MAX_PATH];
    ::GetTempPathW(MAX_PATH, dir);
    m_iniPath.Format(L"%sKxUiTest-%lu-%d.ini", dir, ::GetCurrentProcessId(), m_testNumber);
    ::DeleteFileW(m_iniPath);
    ReplaceName(m_pszRegistryKey, nullptr);
    ReplaceName(m_pszProfileName, m_iniPath);
    return m_iniPath;
}

void KxTestApp::BeginTest()
{
    EndTest();
    ++m_testNumber;
    m_runKey.Format(L"KxUiTestRuns\\%lu-%d", ::GetCurrentProcessId(), m_testNumber);
    SetRegistryKey(m_runKey);
}

void KxTestApp::EndTest()
{
    m_boxes.clear();
    m_answers.clear();
    if (!m_runKey.IsEmpty()) {
        const CString path = CString(L"Software\\") + m_runKey;
        ::RegDeleteTreeW(HKEY_CURRENT_USER, path);
        ::RegDeleteKeyW(HKEY_CURRENT_USER, path);
        ::RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\KxUiTestRuns");  // only when empty
        m_runKey.Empty();
    }
    if (!m_iniPath.IsEmpty()) {
        ::WritePrivateProfileStringW(nullptr, nullptr, nullptr, m_iniPath);  // flush the cache
        ::DeleteFileW(m_iniPath);
        m_iniPath.Empty();
    }
}
