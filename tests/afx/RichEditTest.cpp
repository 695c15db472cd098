// CRichEditCtrl over the platform's rich edit control (RICHEDIT50W).
#include "KxControlHost.h"
#include "KxInput.h"

#include <algorithm>
#include <string>

namespace {

const UINT kEditId = 201;

class ChangeHost : public ControlHost {
public:
    int changes = 0;
    afx_msg void OnChange() { ++changes; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ChangeHost, ControlHost)
    ON_EN_CHANGE(kEditId, &ChangeHost::OnChange)
END_MESSAGE_MAP()

class RichEdit : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_host.Open());
        ASSERT_TRUE(m_edit.Create(WS_CHILD | WS_VISIBLE | ES_MULTILINE | ES_AUTOVSCROLL, CRect(5, 5, 300, 200),
                                  &m_host, kEditId));
    }
    ChangeHost m_host;
    CRichEditCtrl m_edit;
};

// Stream callbacks over a std::string.
struct StreamBuffer {
    std::string data;
    size_t pos = 0;
};

DWORD CALLBACK ReadFrom(DWORD_PTR cookie, LPBYTE buf, LONG cb, LONG* pcb)
{
    auto* s = reinterpret_cast<StreamBuffer*>(cookie);
    const size_t n = std::min(static_cast<size_t>(cb), s->data.size() - s->pos);
    memcpy(buf, s->data.data() + s->pos, n);
    s->pos += n;
    *pcb = static_cast<LONG>(n);
    return 0;
}

DWORD CALLBACK WriteTo(DWORD_PTR cookie, LPBYTE buf, LONG cb, LONG* pcb)
{
    reinterpret_cast<StreamBuffer*>(cookie)->data.append(reinterpret_cast<const char*>(buf), cb);
    *pcb = cb;
    return 0;
}

}  // namespace

TEST_F(RichEdit, ClassAndStructureSizesAreThePlatformsOwn)
{
    wchar_t cls[32];
    GetClassNameW(m_edit, cls, 32);
    EXPECT_EQ(0, _wcsicmp(L"RICHEDIT50W", cls)) << cls;
    EXPECT_EQ(92u, sizeof(CHARFORMATW));
    EXPECT_EQ(92u, sizeof(CHARFORMAT));
}

TEST_F(RichEdit, SelectionAndTextRoundTripWithLoneCarriageReturns)
{
    m_edit.SetWindowText(L"first line\r\nsecond line");
    // Inside the control every line break is one "\r"; the window text has "\r\n".
    EXPECT_EQ(22, m_edit.GetTextLengthEx(GTL_NUMCHARS));
    EXPECT_EQ(23, m_edit.GetTextLength());
    CString text;
    m_edit.GetWindowText(text);
    EXPECT_STREQ(L"first line\r\nsecond line", text);
    EXPECT_EQ(2, m_edit.GetLineCount());
    EXPECT_EQ(11, m_edit.LineIndex(1));
    EXPECT_EQ(1, m_edit.LineFromChar(15));

    m_edit.SetSel(6, 17);
    long start = -1, end = -1;
    m_edit.GetSel(start, end);
    EXPECT_EQ(6, start);
    EXPECT_EQ(17, end);
    EXPECT_STREQ(L"line\rsecond", m_edit.GetSelText());
    EXPECT_EQ(static_cast<WORD>(SEL_TEXT | SEL_MULTICHAR), m_edit.GetSelectionType());

    m_edit.ReplaceSel(L"LINE", TRUE);
    m_edit.GetWindowText(text);
    EXPECT_STREQ(L"first LINE line", text);
    EXPECT_TRUE(m_edit.CanUndo());
    ASSERT_TRUE(m_edit.Undo());
    m_edit.GetWindowText(text);
    EXPECT_STREQ(L"first line\r\nsecond line", text);

    CString range;
    EXPECT_EQ(6, m_edit.GetTextRange(11, 17, range));
    EXPECT_STREQ(L"second", range);
    EXPECT_EQ(22, m_edit.GetTextRange(0, -1, range));
    EXPECT_STREQ(L"first line\rsecond line", range);
    EXPECT_EQ(0, m_edit.GetTextRange(17, 11, range));
    EXPECT_TRUE(range.IsEmpty());

    m_edit.SetSel(0, -1);  // everything, the closing paragraph mark included
    m_edit.GetSel(start, end);
    EXPECT_EQ(0, start);
    EXPECT_EQ(23, end);
    m_edit.SetSel(-1, 0);  // no selection
    EXPECT_TRUE(m_edit.GetSelText().IsEmpty());
}

TEST_F(RichEdit, CharacterFormatsRoundTripForDefaultAndSelection)
{
    m_edit.SetWindowText(L"plain bold plain");
    CHARFORMAT cf = {};
    cf.dwMask = CFM_FACE | CFM_SIZE | CFM_COLOR;
    cf.yHeight = 240;  // twips: 12 points
    cf.crTextColor = RGB(0, 0, 160);
    lstrcpyW(cf.szFaceName, L"Tahoma");
    ASSERT_TRUE(m_edit.SetDefaultCharFormat(cf));
    CHARFORMAT back = {};
    m_edit.GetDefaultCharFormat(back);
    EXPECT_EQ(sizeof(CHARFORMAT), back.cbSize);
    EXPECT_EQ(240, back.yHeight);
    EXPECT_STREQ(L"Tahoma", back.szFaceName);
    EXPECT_EQ(RGB(0, 0, 160), back.crTextColor);

    m_edit.SetSel(6, 10);
    CHARFORMAT2 bold = {};
    bold.dwMask = CFM_BOLD | CFM_COLOR | CFM_BACKCOLOR;
    bold.dwEffects = CFE_BOLD;
    bold.crTextColor = RGB(200, 0, 0);
    bold.crBackColor = RGB(255, 255, 0);
    ASSERT_TRUE(m_edit.SetSelectionCharFormat(bold));
    CHARFORMAT2 sel = {};
    const DWORD consistent = m_edit.GetSelectionCharFormat(sel);
    EXPECT_EQ(sizeof(CHARFORMAT2), sel.cbSize);
    EXPECT_NE(0u, consistent & CFM_BOLD);
    EXPECT_NE(0u, sel.dwEffects & CFE_BOLD);
    EXPECT_EQ(RGB(200, 0, 0), sel.crTextColor);
    EXPECT_EQ(RGB(255, 255, 0), sel.crBackColor);

}

TEST_F(RichEdit, StreamsCarryTextInAndOut)
{
    StreamBuffer in;
    in.data = "alpha\r\nbeta";
    EDITSTREAM es = {reinterpret_cast<DWORD_PTR>(&in), 0, ReadFrom};
    EXPECT_EQ(11, m_edit.StreamIn(SF_TEXT, es));  // the bytes read
    EXPECT_EQ(10, m_edit.GetTextLengthEx(GTL_NUMCHARS));

    m_edit.SetSel(0, 5);
    StreamBuffer part;
    EDITSTREAM esPart = {reinterpret_cast<DWORD_PTR>(&part), 0, WriteTo};
    EXPECT_EQ(5, m_edit.StreamOut(SF_TEXT | SFF_SELECTION, esPart));
    EXPECT_EQ("alpha", part.data);

    StreamBuffer rtf;
    EDITSTREAM esRtf = {reinterpret_cast<DWORD_PTR>(&rtf), 0, WriteTo};
    EXPECT_GT(m_edit.StreamOut(SF_RTF, esRtf), 0);
    EXPECT_EQ(0u, rtf.data.find("{\\rtf"));
    EXPECT_NE(std::string::npos, rtf.data.find("beta"));

    // RTF read back replaces the text with the formatted one.
    m_edit.SetWindowText(L"");
    StreamBuffer again;
    again.data = "{\\rtf1 one {\\b two}}";
    EDITSTREAM esAgain = {reinterpret_cast<DWORD_PTR>(&again), 0, ReadFrom};
    m_edit.StreamIn(SF_RTF, esAgain);
    CString text;
    m_edit.GetWindowText(text);
    EXPECT_STREQ(L"one two", text);
}

TEST_F(RichEdit, LimitsReadOnlyAndChangeEvents)
{
    m_edit.LimitText(5);
    EXPECT_EQ(5, m_edit.GetLimitText());
    SetFocus(m_edit);
    KxTypeText(m_edit, L"abcdefgh");
    CString text;
    m_edit.GetWindowText(text);
    EXPECT_STREQ(L"abcde", text);

    // Change notifications reach the parent only when asked for.
    EXPECT_EQ(0, m_host.changes);
    EXPECT_EQ(0u, m_edit.SetEventMask(ENM_CHANGE));
    EXPECT_EQ(static_cast<DWORD>(ENM_CHANGE), m_edit.GetEventMask());
    m_edit.SetSel(0, 1);
    m_edit.ReplaceSel(L"X");
    EXPECT_GT(m_host.changes, 0);

    ASSERT_TRUE(m_edit.SetReadOnly(TRUE));
    EXPECT_NE(0u, m_edit.GetStyle() & ES_READONLY);
    KxTypeText(m_edit, L"z");
    m_edit.GetWindowText(text);
    EXPECT_STREQ(L"Xbcde", text);  // the user cannot type
    m_edit.SetReadOnly(FALSE);
    EXPECT_EQ(0u, m_edit.GetStyle() & ES_READONLY);
}
