// The masked edit driven through its window: mask language, positions, keystrokes, keys,
// mouse, focus, clipboard, text set from outside and the notifications it sends.
#include "KxEditHost.h"
#include "KxUiOXEdit.h"
#include "KxPixelProbe.h"

namespace {

class OXEditTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(CreateEdit(edit, host));
    }
    HWND h() const
    {
        return edit.m_hWnd;
    }
    // Mask "(#)" with the given input, caret placed at pos.
    void Parens(const wchar_t* input, int pos)
    {
        ASSERT_TRUE(edit.SetMask(L"(#)"));
        SetWindowTextW(h(), input);
        Select(h(), pos, pos);
        host.notifications.clear();
    }

    EditHost host;
    Counting<KxUiOXEdit> edit;
};

TEST(OXEditMask, LanguageSplitsLiteralsAroundTheInputArea)
{
    KxUiOXEdit e; // no window: the mask logic works on its own
    EXPECT_EQ(CString(L"#"), e.GetMask());
    struct {
        const wchar_t* mask;
        const wchar_t* left;
        const wchar_t* right;
    } cases[] = {
        {L"(#)", L"(", L")"},     {L"##-#", L"#-", L""},  {L"# kg", L"", L" kg"},
        {L"a#b#c", L"a", L"bc"},  {L"#", L"", L""},       {L"x##y#z##", L"x#y", L"z#"},
        {L"Tel. #", L"Tel. ", L""},
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(e.SetMask(c.mask)) << c.mask;
        EXPECT_EQ(CString(c.mask), e.GetMask());
        EXPECT_EQ(CString(c.left), e.GetLeftLiterals()) << c.mask;
        EXPECT_EQ(CString(c.right), e.GetRightLiterals()) << c.mask;
        EXPECT_EQ(CString(c.left) + c.right, e.GetFormattedText()) << c.mask;
    }
}

TEST(OXEditMask, MasksWithoutInputAreaAreRefusedAndTheOldOneKept)
{
    KxUiOXEdit e;
    ASSERT_TRUE(e.SetMask(L"[#]"));
    for (const wchar_t* bad : {L"abc", L"##", L"", L"####", L"a##b"}) {
        EXPECT_FALSE(e.SetMask(bad)) << bad;
        EXPECT_EQ(CString(L"[#]"), e.GetMask()) << bad;
        EXPECT_EQ(CString(L"["), e.GetLeftLiterals()) << bad;
        EXPECT_EQ(CString(L"]"), e.GetRightLiterals()) << bad;
    }
    EXPECT_FALSE(e.SetMask(nullptr));
}

TEST(OXEditMask, RealAndLogicalPositions)
{
    KxUiOXEdit e;
    ASSERT_TRUE(e.SetMask(L"<<#>"));
    ASSERT_TRUE(e.SetInputData(L"abc", 0));
    EXPECT_EQ(CString(L"<<abc>"), e.GetFormattedText());
    EXPECT_EQ(CString(L"abc"), e.GetInputData());
    // L = 2, N = 3: real 2..5 are logical 0..3.
    EXPECT_EQ(-1, e.RPtoLP(1));
    EXPECT_EQ(0, e.RPtoLP(2));
    EXPECT_EQ(3, e.RPtoLP(5));
    EXPECT_EQ(-1, e.RPtoLP(6));
    EXPECT_EQ(-1, e.LPtoRP(-1));
    EXPECT_EQ(2, e.LPtoRP(0));
    EXPECT_EQ(5, e.LPtoRP(3));
    EXPECT_EQ(-1, e.LPtoRP(4));
    EXPECT_FALSE(e.IsInputData(1));
    EXPECT_TRUE(e.IsInputData(2));
    EXPECT_TRUE(e.IsInputData(4));
    EXPECT_FALSE(e.IsInputData(5)); // after the last typed character
    EXPECT_TRUE(e.IsInputPosition(5));
    EXPECT_FALSE(e.IsInputPosition(6));
    EXPECT_EQ(2, e.GetNextInputLocation(0));
    EXPECT_EQ(3, e.GetNextInputLocation(3));
    EXPECT_EQ(5, e.GetNextInputLocation(6));
    EXPECT_EQ(5, e.GetPreviousInputLocation(6));
    EXPECT_EQ(2, e.GetPreviousInputLocation(0));
    // Insert and overwrite of the data.
    EXPECT_FALSE(e.SetInputData(L"x", 4));
    EXPECT_FALSE(e.SetInputData(L"x", -1));
    EXPECT_TRUE(e.SetInputData(L"XY", 1));
    EXPECT_EQ(CString(L"aXYbc"), e.GetInputData());
    e.SetInsertMode(0);
    EXPECT_TRUE(e.SetInputData(L"1234", 3));
    EXPECT_EQ(CString(L"aXY1234"), e.GetInputData());
    // Characters at real positions; a literal position moves to the next input position.
    EXPECT_EQ(2, e.SetAt(0, L'z'));
    EXPECT_EQ(CString(L"zXY1234"), e.GetInputData());
    EXPECT_EQ(-1, e.SetAt(9, L'q')); // after the last character: nothing to replace
    e.SetInsertMode(1);
    EXPECT_EQ(9, e.InsertAt(9, L'!'));
    EXPECT_EQ(CString(L"<<zXY1234!>"), e.GetFormattedText());
}

TEST_F(OXEditTest, EmptyParensShowTheLiteralsWithOneInputPosition)
{
    Parens(L"", 0);
    EXPECT_EQ(L"()", WindowText(h()));
    EXPECT_TRUE(edit.IsInputPosition(1));
    EXPECT_FALSE(edit.IsInputPosition(0));
    EXPECT_FALSE(edit.IsInputPosition(2));
    EXPECT_EQ(1, edit.GetNextInputLocation(0));
    EXPECT_EQ(1, edit.GetPreviousInputLocation(2));
}

TEST_F(OXEditTest, TypingInsertsBetweenTheLiterals)
{
    Parens(L"", 1);
    Type(h(), L"ab");
    EXPECT_EQ(L"(ab)", WindowText(h()));
    EXPECT_EQ(3, Caret(h()));
    // On a literal the keystroke is refused and the caret moves to the input.
    Select(h(), 0, 0);
    Type(h(), L"x");
    EXPECT_EQ(L"(ab)", WindowText(h()));
    EXPECT_EQ(1, Caret(h()));
    EXPECT_EQ(1, edit.refusals);
    Select(h(), 2, 2);
    Type(h(), L"Z");
    EXPECT_EQ(L"(aZb)", WindowText(h()));
    EXPECT_EQ(3, Caret(h()));
    // A selection is replaced, whatever part of it is literal.
    Select(h(), 0, 3);
    Type(h(), L"q");
    EXPECT_EQ(L"(qb)", WindowText(h()));
    EXPECT_EQ(2, Caret(h()));
    EXPECT_EQ(CString(L"qb"), edit.GetInputData());
    // A selection of literals only cannot be deleted: refused, caret to the input.
    Select(h(), 4, 5);
    Select(h(), 3, 4);
    Type(h(), L"w");
    EXPECT_EQ(L"(qb)", WindowText(h()));
    EXPECT_EQ(2, edit.refusals);
}

TEST_F(OXEditTest, OverwriteModeReplacesAndInsertToggles)
{
    Parens(L"abc", 1);
    EXPECT_EQ(1, edit.GetInsertMode());
    Key(h(), VK_INSERT);
    EXPECT_EQ(0, edit.GetInsertMode());
    Type(h(), L"XY");
    EXPECT_EQ(L"(XYc)", WindowText(h()));
    EXPECT_EQ(3, Caret(h()));
    // Nothing to overwrite after the last character.
    Select(h(), 4, 4);
    Type(h(), L"Z");
    EXPECT_EQ(L"(XYc)", WindowText(h()));
    EXPECT_EQ(1, edit.refusals);
    Key(h(), VK_INSERT);
    EXPECT_EQ(1, edit.GetInsertMode());
    Type(h(), L"Z");
    EXPECT_EQ(L"(XYcZ)", WindowText(h()));
}

TEST_F(OXEditTest, BackspaceAndDeleteRemoveInputOnly)
{
    Parens(L"abc", 1);
    Key(h(), VK_BACK); // at the first input position: nothing, and no beep
    EXPECT_EQ(L"(abc)", WindowText(h()));
    EXPECT_EQ(1, Caret(h()));
    EXPECT_EQ(0, edit.refusals);
    Select(h(), 3, 3);
    Key(h(), VK_BACK);
    EXPECT_EQ(L"(ac)", WindowText(h()));
    EXPECT_EQ(2, Caret(h()));
    // Delete in front of the right literal deletes nothing.
    Select(h(), 3, 3);
    Key(h(), VK_DELETE);
    EXPECT_EQ(L"(ac)", WindowText(h()));
    Select(h(), 1, 1);
    Key(h(), VK_DELETE);
    EXPECT_EQ(L"(c)", WindowText(h()));
    EXPECT_EQ(1, Caret(h()));
    // Delete on the left literal moves right until something can go.
    Select(h(), 0, 0);
    Key(h(), VK_DELETE);
    EXPECT_EQ(L"()", WindowText(h()));
    EXPECT_EQ(1, Caret(h()));
    EXPECT_EQ(0, edit.refusals);
    // A selection over literals and input loses its input part.
    SetWindowTextW(h(), L"wxyz");
    Select(h(), 0, 3);
    Key(h(), VK_BACK);
    EXPECT_EQ(L"(yz)", WindowText(h()));
    EXPECT_EQ(1, Caret(h()));
    Select(h(), 2, 6);
    Key(h(), VK_DELETE);
    EXPECT_EQ(L"(y)", WindowText(h()));
    EXPECT_EQ(2, Caret(h()));
}

TEST_F(OXEditTest, ArrowsHomeAndEndStayInTheInputArea)
{
    Parens(L"abc", 1);
    Key(h(), VK_LEFT);
    EXPECT_EQ(1, Caret(h()));
    Key(h(), VK_END);
    EXPECT_EQ(4, Caret(h()));
    Key(h(), VK_RIGHT);
    EXPECT_EQ(4, Caret(h()));
    Key(h(), VK_HOME);
    EXPECT_EQ(1, Caret(h()));
    Key(h(), VK_RIGHT);
    EXPECT_EQ(2, Caret(h()));
    // With Shift the native selection stands, literals included.
    Key(h(), VK_HOME, KxShift);
    EXPECT_EQ(std::make_pair(0, 2), Selection(h()));
    Select(h(), 2, 2);
    Key(h(), VK_END, KxShift);
    EXPECT_EQ(std::make_pair(2, 5), Selection(h()));
}

TEST_F(OXEditTest, EmptyDataWithLiteralsAndWithout)
{
    Parens(L"abc", 1);
    edit.EmptyData(TRUE);
    EXPECT_EQ(L"()", WindowText(h()));
    edit.EmptyData(FALSE);
    EXPECT_EQ(L"", WindowText(h()));
    Select(h(), 0, 0);
    Type(h(), L"xy");
    EXPECT_EQ(L"xy", WindowText(h()));
    EXPECT_EQ(CString(L"xy"), edit.GetFormattedText());
}

TEST_F(OXEditTest, TextSetFromOutsideBecomesInputAndOnlyUpdates)
{
    Parens(L"", 1);
    SetWindowTextW(h(), L"1234");
    EXPECT_EQ(L"(1234)", WindowText(h()));
    EXPECT_EQ(CString(L"1234"), edit.GetInputData());
    EXPECT_EQ(std::vector<UINT>{EN_UPDATE}, host.notifications);
    host.notifications.clear();
    Select(h(), 5, 5);
    Type(h(), L"5");
    EXPECT_EQ((std::vector<UINT>{EN_UPDATE, EN_CHANGE}), host.notifications);
    // Control characters cannot be shown on one line: they do not enter the input.
    SetWindowTextW(h(), L"a\tb\r\nc");
    EXPECT_EQ(L"(abc)", WindowText(h()));
}

TEST_F(OXEditTest, ClipboardCutClearAndPasteKeepTheLiterals)
{
    Parens(L"hello", 1);
    Select(h(), 0, 3);
    SendMessageW(h(), WM_CUT, 0, 0);
    EXPECT_EQ(L"(he", ClipboardText());
    EXPECT_EQ(L"(llo)", WindowText(h()));
    EXPECT_EQ(1, Caret(h()));
    // Clearing only literals deletes nothing and leaves them shown.
    Select(h(), 4, 5);
    SendMessageW(h(), WM_CLEAR, 0, 0);
    EXPECT_EQ(L"(llo)", WindowText(h()));
    Select(h(), 2, 4);
    SendMessageW(h(), WM_CLEAR, 0, 0);
    EXPECT_EQ(L"(l)", WindowText(h()));
    EXPECT_EQ(2, Caret(h()));
    // The pasted text's own literals at its ends are stripped.
    ASSERT_TRUE(PutClipboard(L"(42)"));
    Select(h(), 0, 3);
    SendMessageW(h(), WM_PASTE, 0, 0);
    EXPECT_EQ(L"(42)", WindowText(h()));
    EXPECT_EQ(CString(L"42"), edit.GetInputData());
    ASSERT_TRUE(PutClipboard(L"xy"));
    Select(h(), 2, 2);
    Key(h(), 'V', KxCtrl);
    EXPECT_EQ(L"(4xy2)", WindowText(h()));
    EXPECT_EQ(2, Caret(h()));
    // Ctrl+C copies natively, the text stays.
    Select(h(), 1, 3);
    Key(h(), 'C', KxCtrl);
    EXPECT_EQ(L"4x", ClipboardText());
    EXPECT_EQ(L"(4xy2)", WindowText(h()));
    // A text the application puts in replaces the selection like a paste.
    Select(h(), 2, 3);
    SendMessageW(h(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"77"));
    EXPECT_EQ(L"(477y2)", WindowText(h()));
    EXPECT_EQ(CString(L"477y2"), edit.GetInputData());
    // Undo would bring back a text the input data does not know: refused.
    SendMessageW(h(), WM_UNDO, 0, 0);
    EXPECT_EQ(L"(477y2)", WindowText(h()));
    EXPECT_EQ(CString(L"477y2"), edit.GetInputData());
}

TEST_F(OXEditTest, ClickOnALiteralPutsTheCaretAtTheInput)
{
    Parens(L"abc", 3);
    LRESULT pos = SendMessageW(h(), EM_POSFROMCHAR, 0, 0);
    KxClick(h(), static_cast<short>(LOWORD(pos)) + 1, static_cast<short>(HIWORD(pos)) + 2);
    EXPECT_EQ(1, Caret(h()));
}

TEST_F(OXEditTest, FocusReplacesAWholeSelectionByTheCaret)
{
    Parens(L"abc", 0);
    Select(h(), 0, -1);
    SendMessageW(h(), WM_SETFOCUS, 0, 0);
    EXPECT_EQ(1, Caret(h()));
    SendMessageW(h(), WM_KILLFOCUS, 0, 0);
    edit.SetHighlightOnSetFocus(TRUE);
    Select(h(), 0, -1);
    SendMessageW(h(), WM_SETFOCUS, 0, 0);
    EXPECT_EQ(std::make_pair(0, 5), Selection(h()));
}

TEST_F(OXEditTest, FocusAppliesTheSavedFontAgain)
{
    LOGFONTW lf = {};
    lf.lfHeight = -17;
    wcscpy(lf.lfFaceName, L"Arial");
    HFONT hFont = CreateFontIndirectW(&lf);
    SendMessageW(h(), WM_SETFONT, reinterpret_cast<WPARAM>(hFont), FALSE);
    DeleteObject(hFont); // the control keeps a copy
    SendMessageW(h(), WM_SETFOCUS, 0, 0);
    HFONT hNow = reinterpret_cast<HFONT>(SendMessageW(h(), WM_GETFONT, 0, 0));
    LOGFONTW now = {};
    ASSERT_EQ(static_cast<int>(sizeof now), GetObjectW(hNow, sizeof now, &now));
    EXPECT_EQ(-17, now.lfHeight);
    EXPECT_STREQ(L"Arial", now.lfFaceName);
}

TEST_F(OXEditTest, ColoursReachTheDrawnControl)
{
    Parens(L"abc", 1);
    edit.SetTextColor(RGB(200, 0, 0));
    edit.SetBkColor(RGB(0, 0, 120));
    HDC hdc = CreateCompatibleDC(nullptr);
    LRESULT brush = host.SendMessage(WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(hdc),
                                     reinterpret_cast<LPARAM>(h()));
    EXPECT_NE(0, brush);
    EXPECT_EQ(RGB(200, 0, 0), GetTextColor(hdc));
    EXPECT_EQ(RGB(0, 0, 120), GetBkColor(hdc));
    LOGBRUSH lb = {};
    GetObjectW(reinterpret_cast<HBRUSH>(brush), sizeof lb, &lb);
    EXPECT_EQ(RGB(0, 0, 120), lb.lbColor);
    // The same colours are on screen: background around the text.
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Capture(host.m_hWnd));
    EXPECT_EQ(RGB(0, 0, 120), probe.Pixel(200, 20));
    // A disabled control keeps the system's look.
    ::EnableWindow(h(), FALSE);
    SetTextColor(hdc, RGB(1, 2, 3));
    host.SendMessage(WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(hdc), reinterpret_cast<LPARAM>(h()));
    EXPECT_NE(RGB(200, 0, 0), GetTextColor(hdc));
    DeleteDC(hdc);
}

TEST_F(OXEditTest, ToolTipCarriesItsText)
{
    EXPECT_TRUE(edit.SetToolTipText(L"Phone number"));
    EXPECT_EQ(CString(L"Phone number"), edit.GetToolTipText());
    ASSERT_NE(nullptr, edit.GetToolTip().m_hWnd);
    EXPECT_EQ(1, edit.GetToolTip().SendMessage(TTM_GETTOOLCOUNT, 0, 0));
    wchar_t buf[80] = {};
    TOOLINFOW ti = {};
    ti.cbSize = sizeof ti;
    ti.hwnd = h();
    ti.uId = reinterpret_cast<UINT_PTR>(h());
    ti.lpszText = buf;
    edit.GetToolTip().SendMessage(TTM_GETTEXTW, 80, reinterpret_cast<LPARAM>(&ti));
    EXPECT_STREQ(L"Phone number", buf);
    EXPECT_TRUE(edit.SetToolTipText(L""));
    EXPECT_EQ(0, edit.GetToolTip().SendMessage(TTM_GETTOOLCOUNT, 0, 0));
}

TEST(OXEditStyles, ReadOnlyNumberAndMultiLine)
{
    EditHost host;
    Counting<KxUiOXEdit> ro, num, ml;
    ASSERT_TRUE(CreateEdit(ro, host, ES_READONLY));
    ASSERT_TRUE(ro.SetMask(L"[#]"));
    Select(ro.m_hWnd, 1, 1);
    Type(ro.m_hWnd, L"abc");
    Key(ro.m_hWnd, VK_DELETE);
    EXPECT_EQ(L"[]", WindowText(ro.m_hWnd));

    ASSERT_TRUE(CreateEdit(num, host, ES_NUMBER));
    ASSERT_TRUE(num.SetMask(L"#"));
    Type(num.m_hWnd, L"1a2");
    EXPECT_EQ(L"12", WindowText(num.m_hWnd));
    EXPECT_EQ(CString(L"12"), num.GetInputData());

    // A multi-line control takes Return as a line break only with ES_WANTRETURN.
    ASSERT_TRUE(CreateEdit(ml, host, ES_MULTILINE | ES_WANTRETURN));
    ASSERT_TRUE(ml.SetMask(L"<#>"));
    Select(ml.m_hWnd, 1, 1);
    Type(ml.m_hWnd, L"a\rb");
    EXPECT_EQ(CString(L"a\r\nb"), ml.GetInputData());
    EXPECT_EQ(L"<a\r\nb>", WindowText(ml.m_hWnd));
}

// A derived control adds a keystroke filter with one message-map entry; everything else
// still reaches the masked edit's handlers.
class DigitsOnlyEdit : public Counting<KxUiOXEdit> {
protected:
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
    {
        if (nChar >= L'a' && nChar <= L'z')
            ValidationError();
        else
            KxUiOXEdit::OnChar(nChar, nRepCnt, nFlags);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(DigitsOnlyEdit, KxUiOXEdit)
    ON_WM_CHAR()
END_MESSAGE_MAP()

TEST(OXEditDispatch, DerivedFilterWithOneMapEntry)
{
    EditHost host;
    DigitsOnlyEdit edit;
    ASSERT_TRUE(CreateEdit(edit, host));
    ASSERT_TRUE(edit.SetMask(L"Tel. #"));
    Select(edit.m_hWnd, 5, 5);
    Type(edit.m_hWnd, L"1x2");
    EXPECT_EQ(L"Tel. 12", WindowText(edit.m_hWnd));
    EXPECT_EQ(1, edit.refusals); // the letter, refused by the derived filter
    Key(edit.m_hWnd, VK_BACK);
    Key(edit.m_hWnd, VK_HOME);
    EXPECT_EQ(L"Tel. 1", WindowText(edit.m_hWnd));
    EXPECT_EQ(5, Caret(edit.m_hWnd));
}

} // namespace
