// The application object of every test executable. The test main constructs it once
// before the tests run and initialises the executable's module state with it, so code
// under test finds an application (AfxGetApp) with a profile, and AfxMessageBox calls
// are recorded instead of blocking a headless run.
//
// Around each test (a listener installed by the test main calls BeginTest/EndTest):
//  - the profile lives in a registry key of the test's own,
//    HKCU\Software\KxUiTestRuns\<process>-<test number>\<application name>, deleted after
//    the test (UseIniFile switches a test to an .ini file, also deleted);
//  - the recorded message boxes and the queued answers are cleared.
//
//     TEST(Foo, AsksBeforeDeleting) {
//         KxTestApp& app = KxTestApp::Get();
//         app.QueueAnswer(IDNO);                 // the next box is answered "No"
//         EXPECT_FALSE(DeleteWithConfirmation());
//         ASSERT_EQ(1u, app.Boxes().size());
//         EXPECT_EQ(CString(L"Delete?"), app.Boxes()[0].text);
//     }
#pragma once
#include <afxwin.h>
#include <deque>
#include <vector>

class KxTestApp : public CWinApp {
public:
    KxTestApp();
    virtual ~KxTestApp();

    // The one instance (constructed by the test main).
    static KxTestApp& Get();

    // ---- message boxes ----
    struct Box {
        CString text;
        UINT type;      // MB_ flags as passed
        UINT idPrompt;  // help id / prompt id as passed
    };
    // The boxes asked for since the test began, in order.
    const std::vector<Box>& Boxes() const { return m_boxes; }
    // The answer to the next box not answered yet (IDYES, IDCANCEL, ...). Without a
    // queued answer a box gets its default button (MB_DEFBUTTONn of its type).
    void QueueAnswer(int answer) { m_answers.push_back(answer); }
    int DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT nIDPrompt) override;

    // ---- profile ----
    // HKCU-relative path of the application's key for the running test
    // ("Software\KxUiTestRuns\<pid>-<n>\<application>").
    CString ProfileKeyPath() const;
    // Makes the profile an .ini file (in the temporary folder) for the rest of the test;
    // returns its path.
    CString UseIniFile();

    // ---- called by the test main ----
    void BeginTest();
    void EndTest();

private:
    std::vector<Box> m_boxes;
    std::deque<int> m_answers;
    CString m_runKey;   // "KxUiTestRuns\<pid>-<n>"
    CString m_iniPath;  // set while a test uses an .ini file
    int m_testNumber = 0;
};
