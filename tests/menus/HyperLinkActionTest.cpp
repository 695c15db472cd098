// Hyperlink actions: what reaches the shell, user messages, and what the user is told.
#include "KxTestApp.h"
#include "KxControlHost.h"
#include <KxUiHyperLinkAction.h>
#include <shellapi.h>
#include <string>
#include <vector>

namespace {

// Records each shell call and answers with the queued value (42, success, by default).
struct ShellCall {
    std::wstring verb, file, parameters, directory;
    int show;
};
std::vector<ShellCall> g_calls;
INT_PTR g_answer = 42;

HINSTANCE WINAPI RecordShell(HWND, LPCWSTR verb, LPCWSTR file, LPCWSTR parameters, LPCWSTR directory, INT show)
{
    g_calls.push_back({verb ? verb : L"", file ? file : L"", parameters ? parameters : L"",
                       directory ? directory : L"", show});
    return reinterpret_cast<HINSTANCE>(g_answer);
}

class HyperLinkAction : public ::testing::Test {
protected:
    void SetUp() override
    {
        g_calls.clear();
        g_answer = 42;
        m_previous = KxUiSetShellExecute(&RecordShell);
    }
    void TearDown() override { KxUiSetShellExecute(m_previous); }
    KxUiShellExecuteFunc m_previous = nullptr;
};

// A window answering the user message with a chosen value and keeping the lParam it got.
class Recipient : public ControlHost {
public:
    LRESULT m_answer = 0;
    LPARAM m_lastParam = 0;
    int m_count = 0;

protected:
    afx_msg LRESULT OnUserMessage(WPARAM, LPARAM lParam)
    {
        ++m_count;
        m_lastParam = lParam;
        return m_answer;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Recipient, ControlHost)
    ON_MESSAGE(WM_APP + 7, &Recipient::OnUserMessage)
END_MESSAGE_MAP()

}  // namespace

TEST_F(HyperLinkAction, ShellVerbsReachTheShellAndLeaveTheFieldsAsTheyWere)
{
    const struct {
        int action;
        const wchar_t* verb;
        const wchar_t* file;  // what the shell is given
    } cases[] = {
        {KxUiHyperLinkAction::ActionOpen, L"open", L"C:\\docs\\report.txt"},
        {KxUiHyperLinkAction::ActionPrint, L"print", L"C:\\docs\\report.txt"},
        {KxUiHyperLinkAction::ActionExplore, L"explore", L"C:\\docs\\report.txt"},
        {KxUiHyperLinkAction::ActionEmail, L"open", L"mailto:C:\\docs\\report.txt"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.verb);
        g_calls.clear();
        KxUiHyperLinkAction link;
        link.Set(c.action, L"C:\\docs\\report.txt", L"/p", L"C:\\docs", SW_SHOWMAXIMIZED, 0, nullptr);
        EXPECT_TRUE(link.ExecuteIt(TRUE));
        ASSERT_EQ(1u, g_calls.size());
        EXPECT_EQ(c.verb, g_calls[0].verb);
        EXPECT_EQ(c.file, g_calls[0].file);
        EXPECT_EQ(L"/p", g_calls[0].parameters);
        EXPECT_EQ(L"C:\\docs", g_calls[0].directory);
        EXPECT_EQ(SW_SHOWMAXIMIZED, g_calls[0].show);
        // The e-mail prefix is for the call only.
        EXPECT_EQ(CString(L"C:\\docs\\report.txt"), link.GetFile());
        EXPECT_EQ(c.action, link.GetAction());
        EXPECT_EQ(KxUiHyperLinkAction::ErrorNone, link.GetError());
        EXPECT_EQ(reinterpret_cast<HINSTANCE>(42), link.GetResult());
    }
    EXPECT_TRUE(KxTestApp::Get().Boxes().empty());
}

TEST_F(HyperLinkAction, ShellResultsOfAtMost32AreFailuresWithTheirOwnText)
{
    const struct {
        INT_PTR code;
        const wchar_t* text;
    } cases[] = {
        {0, L"The operating system is out\nof memory or resources."},
        {SE_ERR_FNF, L"The specified file was not found."},
        {SE_ERR_PNF, L"The specified path was not found."},
        {SE_ERR_ACCESSDENIED, L"The operating system denied\naccess to the specified file."},
        {SE_ERR_OOM, L"There was not enough memory to complete the operation."},
        {ERROR_BAD_FORMAT, L"The .EXE file is invalid\n(non-Win32 .EXE or error in .EXE image)."},
        {SE_ERR_SHARE, L"A sharing violation occurred."},
        {SE_ERR_ASSOCINCOMPLETE, L"The filename association is\nincomplete or invalid."},
        {SE_ERR_DDETIMEOUT, L"The DDE transaction could not\nbe completed because the request timed out."},
        {SE_ERR_DDEFAIL, L"The DDE transaction failed."},
        {SE_ERR_DDEBUSY,
         L"The DDE transaction could not\nbe completed because other DDE transactions\nwere being processed."},
        {SE_ERR_NOASSOC, L"There is no application associated\nwith the given filename extension."},
        {SE_ERR_DLLNOTFOUND, L"The specified dynamic-link library was not found."},
        {1, L"Unknown error!"},
        {4, L"Unknown error!"},
    };
    KxTestApp& app = KxTestApp::Get();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.code);
        g_answer = c.code;
        const size_t before = app.Boxes().size();
        KxUiHyperLinkAction link;
        link.SetFile(L"C:\\nowhere\\x.abc");
        EXPECT_FALSE(link.ExecuteIt(TRUE));
        EXPECT_EQ(static_cast<int>(c.code), link.GetError());
        EXPECT_EQ(nullptr, link.GetResult());
        ASSERT_EQ(before + 1, app.Boxes().size());
        EXPECT_EQ(CString(c.text), app.Boxes().back().text);
        EXPECT_EQ(static_cast<UINT>(MB_ICONSTOP), app.Boxes().back().type & MB_ICONMASK);
    }
    // 33 is the first success.
    g_answer = 33;
    KxUiHyperLinkAction link;
    const size_t before = app.Boxes().size();
    EXPECT_TRUE(link.ExecuteIt(TRUE));
    EXPECT_EQ(reinterpret_cast<HINSTANCE>(33), link.GetResult());
    EXPECT_EQ(before, app.Boxes().size());
}

TEST_F(HyperLinkAction, FailuresAreShownOnlyWhenAskedAndNoneNeverFails)
{
    KxTestApp& app = KxTestApp::Get();
    KxUiHyperLinkAction link;
    link.SetAction(9);
    EXPECT_FALSE(link.ExecuteIt(FALSE));
    EXPECT_EQ(KxUiHyperLinkAction::ErrorUnknownAction, link.GetError());
    EXPECT_TRUE(app.Boxes().empty());
    EXPECT_FALSE(link.ExecuteIt(TRUE));
    ASSERT_EQ(1u, app.Boxes().size());
    EXPECT_EQ(CString(L"Failed to execute unknown action!"), app.Boxes()[0].text);

    // After a failure, "None" succeeds, clears the error and shows nothing.
    link.SetAction(KxUiHyperLinkAction::ActionNone);
    EXPECT_TRUE(link.ExecuteIt(TRUE));
    EXPECT_EQ(KxUiHyperLinkAction::ErrorNone, link.GetError());
    link.ErrorNotify();
    EXPECT_EQ(1u, app.Boxes().size());
    EXPECT_TRUE(g_calls.empty());
}

TEST_F(HyperLinkAction, UserMessageGoesToTheRecipientWithTheActionAndItsAnswerDecides)
{
    Recipient recipient;
    ASSERT_TRUE(recipient.Open());
    KxUiHyperLinkAction link;
    link.Set(KxUiHyperLinkAction::ActionUserDefined, L"x", nullptr, nullptr, SW_SHOW, WM_APP + 7, nullptr);
    link.SetRecipientWnd(&recipient);

    recipient.m_answer = 1;
    EXPECT_TRUE(link.ExecuteIt(TRUE));
    EXPECT_EQ(1, recipient.m_count);
    EXPECT_EQ(reinterpret_cast<LPARAM>(&link), recipient.m_lastParam);

    recipient.m_answer = 0;
    EXPECT_FALSE(link.ExecuteIt(TRUE));
    EXPECT_EQ(KxUiHyperLinkAction::ErrorUserMessage, link.GetError());
    ASSERT_EQ(1u, KxTestApp::Get().Boxes().size());
    EXPECT_EQ(CString(L"User defined action failed!"), KxTestApp::Get().Boxes()[0].text);
    EXPECT_TRUE(g_calls.empty());
    recipient.DestroyWindow();
}

TEST_F(HyperLinkAction, IsAValueResetToOpenNormal)
{
    KxUiHyperLinkAction a;
    EXPECT_EQ(KxUiHyperLinkAction::ActionOpen, a.GetAction());
    EXPECT_EQ(SW_SHOWNORMAL, a.GetShowCmd());
    EXPECT_EQ(KxUiHyperLinkAction::ErrorNone, a.GetError());

    a.Set(KxUiHyperLinkAction::ActionEmail, L"team@example.org", L"p", L"d", SW_HIDE, 5, HWND_BROADCAST);
    a.SetOwnerWnd(HWND(0x1234));
    KxUiHyperLinkAction b;
    b.Set(a);
    EXPECT_EQ(a.GetFile(), b.GetFile());
    EXPECT_EQ(a.GetParameters(), b.GetParameters());
    EXPECT_EQ(a.GetDefaultDirectory(), b.GetDefaultDirectory());
    EXPECT_EQ(SW_HIDE, b.GetShowCmd());
    EXPECT_EQ(5u, b.GetUserMessage());
    EXPECT_EQ(HWND_BROADCAST, b.GetRecipientWnd());
    EXPECT_EQ(HWND(0x1234), b.GetOwnerWnd());
    b.SetFile(L"other");  // copies do not share their text
    EXPECT_EQ(CString(L"team@example.org"), a.GetFile());

    a.Reset();
    EXPECT_EQ(KxUiHyperLinkAction::ActionOpen, a.GetAction());
    EXPECT_TRUE(a.GetFile().IsEmpty() && a.GetParameters().IsEmpty() && a.GetDefaultDirectory().IsEmpty());
    EXPECT_EQ(nullptr, a.GetOwnerWnd());
    EXPECT_EQ(nullptr, a.GetRecipientWnd());
    EXPECT_EQ(0u, a.GetUserMessage());
    EXPECT_STREQ(L"E-mail", KxUiHyperLinkAction::GetActionName(KxUiHyperLinkAction::ActionEmail));
    EXPECT_EQ(nullptr, KxUiHyperLinkAction::GetActionName(6));
    EXPECT_EQ(nullptr, KxUiHyperLinkAction::GetActionName(-1));
}

// The real shell, on a file that does not exist: nothing starts and the user is told why.
TEST(HyperLinkActionShell, MissingFileIsReportedNotLaunched)
{
    KxUiHyperLinkAction link;
    link.SetFile(L"C:\\kxui-no-such-folder\\missing-file.kxuinone");
    EXPECT_FALSE(link.ExecuteIt(TRUE));
    EXPECT_TRUE(link.GetError() == SE_ERR_FNF || link.GetError() == SE_ERR_PNF) << link.GetError();
    ASSERT_EQ(1u, KxTestApp::Get().Boxes().size());
    EXPECT_EQ(link.GetErrorText(link.GetError()), KxTestApp::Get().Boxes()[0].text);
}
