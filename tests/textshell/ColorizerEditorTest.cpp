// Colorize in a rich edit control held as an editor holds it: shown in a frame that listens
// to its notifications, focused, with text typed by the user on the undo stack. Colouring
// must leave all of that as it found it.
#include "KxUiSyntaxColorizer.h"
#include "KxControlHost.h"
#include "KxInput.h"
#include "KxMsgRecorder.h"
#include "KxPixelProbe.h"
#include <afxcmn.h>
#include <string>

namespace {

const COLORREF keywordBlue = RGB(0, 0, 255);
const DWORD editorEvents = ENM_CHANGE | ENM_SELCHANGE | ENM_UPDATE;

// Eighty lines, enough to scroll.
std::wstring source()
{
    std::wstring text;
    for (int line = 0; line < 80; ++line)
        text += L"int value" + std::to_wstring(line) + L" = 0; // note\r";
    return text;
}

class ColorizerEditor : public testing::Test {
protected:
    static void SetUpTestSuite() { ::LoadLibraryW(L"Msftedit.dll"); }

    void SetUp() override
    {
        ASSERT_TRUE(host.Open(420, 300));
        ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE |
                                    ES_AUTOVSCROLL,
                                CRect(0, 0, 400, 260), &host, 100));
        edit.SetWindowText(source().c_str());
        edit.EmptyUndoBuffer();
        edit.SetEventMask(editorEvents);
        edit.SetFocus();
        edit.SetSel(0, 0);
        KxPumpMessages();
    }

    void TearDown() override
    {
        if (edit.m_hWnd)
            edit.DestroyWindow();
        if (host.m_hWnd)
            host.DestroyWindow();
    }

    // The text as WM_GETTEXT gives it, each "\r" of the control as "\r\n".
    std::wstring text()
    {
        CString t;
        edit.GetWindowText(t);
        return std::wstring(t);
    }
    static std::wstring asWindowText(const std::wstring& text)
    {
        std::wstring result;
        for (wchar_t c : text)
            result += c == L'\r' ? std::wstring(L"\r\n") : std::wstring(1, c);
        return result;
    }

    COLORREF colourAt(long at)
    {
        CHARFORMATW cf = {};
        cf.cbSize = sizeof cf;
        edit.SetSel(at, at + 1);
        edit.GetSelectionCharFormat(cf);
        return cf.crTextColor;
    }

    ControlHost host;
    CRichEditCtrl edit;
    KxUiSyntaxColorizer colorizer;
};

TEST_F(ColorizerEditor, SendsNoNotificationAndGivesTheEventMaskBack)
{
    KxMsgRecorder rec;
    rec.Watch(host.m_hWnd, "frame", {WM_COMMAND, WM_NOTIFY});
    colorizer.Colorize(0, -1, &edit);
    EXPECT_TRUE(rec.Matches({}));
    EXPECT_EQ(editorEvents, edit.GetEventMask());

    // The frame hears the user again.
    KxTypeText(edit.m_hWnd, L"x");
    EXPECT_TRUE(rec.Matches({
        KxMsg::Optional("frame", WM_COMMAND),  // EN_UPDATE
        KxMsg::Notify("frame", EN_SELCHANGE),
        KxMsg::Command("frame", EN_CHANGE),
    }));
}

TEST_F(ColorizerEditor, UndoTakesBackTheUsersTypingNotTheColours)
{
    KxTypeText(edit.m_hWnd, L"X");
    ASSERT_EQ(L'X', text()[0]);
    colorizer.Colorize(0, -1, &edit);
    const long secondLine = long(source().find(L'\r')) + 1;  // "int" starts it
    ASSERT_EQ(keywordBlue, colourAt(secondLine + 1));

    // One undo removes what was typed before colouring; the colours stay.
    ASSERT_TRUE(edit.CanUndo());
    edit.Undo();
    EXPECT_EQ(asWindowText(source()), text());
    EXPECT_EQ(keywordBlue, colourAt(secondLine));
    // And what the user types after colouring is recorded as before.
    edit.SetSel(0, 0);
    KxTypeText(edit.m_hWnd, L"Y");
    ASSERT_TRUE(edit.CanUndo());
    edit.Undo();
    EXPECT_EQ(asWindowText(source()), text());
}

TEST_F(ColorizerEditor, DrawsAgainAndKeepsTheScrollPosition)
{
    edit.LineScroll(30);
    POINT before = {};
    edit.SendMessage(EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&before));
    ASSERT_GT(before.y, 0);

    colorizer.Colorize(0, -1, &edit);
    EXPECT_TRUE(edit.IsWindowVisible());
    POINT after = {};
    edit.SendMessage(EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&after));
    EXPECT_EQ(before.y, after.y);
    // The selection is on the last span (the comment of the last line).
    long start = 0, end = 0;
    edit.GetSel(start, end);
    EXPECT_EQ(long(source().size()), end);

    // The control paints: the keywords of the lines in view are blue on screen.
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Capture(edit.m_hWnd));
    EXPECT_GT(probe.Count(keywordBlue), 20);
    probe.SaveIfFailed();
}

TEST_F(ColorizerEditor, LeavesAControlItsOwnerStoppedDrawingAsItIs)
{
    edit.SetRedraw(FALSE);
    colorizer.Colorize(0, -1, &edit);
    EXPECT_FALSE(edit.IsWindowVisible());
    edit.SetRedraw(TRUE);
    EXPECT_EQ(keywordBlue, colourAt(0));
}

} // namespace
