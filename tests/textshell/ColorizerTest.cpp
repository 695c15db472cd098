// The syntax colorizer on a real rich edit control (RICHEDIT50W): every case reads back the
// character formats the control holds after colouring.
#include "KxUiSyntaxColorizer.h"
#include <afxcmn.h>
#include <string>

namespace {

const COLORREF keywordBlue = RGB(0, 0, 255);
const COLORREF commentGreen = RGB(0, 170, 0);
const COLORREF stringColor = RGB(55, 0, 200);

class ColorizerTest : public testing::Test {
protected:
    static void SetUpTestSuite() { ::LoadLibraryW(L"Msftedit.dll"); }

    void SetUp() override
    {
        HWND hwnd = ::CreateWindowExW(0, MSFTEDIT_CLASS, L"", WS_POPUP | ES_MULTILINE, 0, 0, 400,
                                      300, nullptr, nullptr, nullptr, nullptr);
        ASSERT_TRUE(hwnd != nullptr);
        edit.Attach(hwnd);
    }

    void TearDown() override
    {
        if (edit.m_hWnd)
            ::DestroyWindow(edit.Detach());
    }

    // Puts text in the control in one plain format (red Arial), so that any character the
    // colorizer misses stands out.
    void setText(LPCWSTR text)
    {
        edit.SetWindowText(text);
        CHARFORMATW cf = {};
        cf.cbSize = sizeof cf;
        cf.dwMask = CFM_COLOR | CFM_FACE | CFM_SIZE | CFM_BOLD;
        cf.dwEffects = CFE_BOLD;
        cf.crTextColor = RGB(255, 0, 0);
        cf.yHeight = 240;
        wcscpy_s(cf.szFaceName, L"Arial");
        edit.SetSel(0, -1);
        edit.SetSelectionCharFormat(cf);
    }

    CHARFORMATW formatOf(long start, long end)
    {
        CHARFORMATW cf = {};
        cf.cbSize = sizeof cf;
        edit.SetSel(start, end);
        edit.GetSelectionCharFormat(cf);
        return cf;
    }

    // One letter per character of the text: K keyword blue, S string, C comment, D default
    // black, X the colour of a keyword group under test, ? anything else.
    std::wstring colours(COLORREF groupColor = CLR_INVALID)
    {
        // Characters as the control counts them, a line break being one '\r'.
        GETTEXTLENGTHEX how = {GTL_NUMCHARS | GTL_PRECISE, 1200};
        const long count = long(edit.SendMessage(EM_GETTEXTLENGTHEX,
                                                 reinterpret_cast<WPARAM>(&how), 0));
        std::wstring map;
        for (long i = 0; i < count; ++i) {
            const CHARFORMATW cf = formatOf(i, i + 1);
            const COLORREF c = (cf.dwEffects & CFE_AUTOCOLOR) ? CLR_INVALID : cf.crTextColor;
            map += c == keywordBlue ? L'K' : c == stringColor ? L'S' : c == commentGreen ? L'C'
                 : c == RGB(0, 0, 0) ? L'D' : (groupColor != CLR_INVALID && c == groupColor) ? L'X'
                 : L'?';
        }
        return map;
    }

    std::wstring colourize(LPCWSTR text)
    {
        setText(text);
        colorizer.Colorize(0, -1, &edit);
        return colours();
    }

    CRichEditCtrl edit;
    KxUiSyntaxColorizer colorizer;
};

TEST_F(ColorizerTest, DefaultFormatsAndKeywordList)
{
    CHARFORMATW cf;
    colorizer.GetDefaultStyle(cf);
    EXPECT_EQ(92u, cf.cbSize);
    EXPECT_EQ(0xF800000Fu, cf.dwMask);
    EXPECT_EQ(200, cf.yHeight);
    EXPECT_EQ(0x31, cf.bPitchAndFamily);
    EXPECT_STREQ(L"Courier New", cf.szFaceName);
    colorizer.GetCommentStyle(cf);
    EXPECT_EQ(DWORD(CFM_COLOR), cf.dwMask);
    EXPECT_EQ(commentGreen, cf.crTextColor);
    colorizer.GetStringStyle(cf);
    EXPECT_EQ(DWORD(CFM_COLOR), cf.dwMask);
    EXPECT_EQ(stringColor, cf.crTextColor);

    const CString list = colorizer.GetKeywordList();
    EXPECT_EQ(0, list.Find(L"#define,#elif,#else,#endif,#error,#ifdef,"));
    int words = 1;
    for (int i = 0; i < list.GetLength(); ++i)
        words += list[i] == L',';
    EXPECT_EQ(126, words);
    // Code-unit order: '_' (0x5F) sorts before the lower-case letters.
    EXPECT_LT(list.Find(L",__virtual_inheritance,"), list.Find(L",alloc_text,"));
    for (LPCWSTR word : {L",init_seg1,", L",pointers_to_members1,", L",vtordisp1,",
                         L",declaration,", L",directive,"})
        EXPECT_GE(list.Find(word), 0) << word;
    EXPECT_EQ(list.GetLength() - 6, list.Find(L",wmain"));
    EXPECT_EQ(list, colorizer.GetKeywordList(0));
    EXPECT_TRUE(colorizer.GetKeywordList(1).IsEmpty());
    colorizer.GetGroupStyle(0, cf);
    EXPECT_EQ(keywordBlue, cf.crTextColor);
    EXPECT_EQ(0xF800000Fu, cf.dwMask);
}

TEST_F(ColorizerTest, StringsHaveNoEscapesAndRunToTheEndWhenOpen)
{
    // "a\" is a whole string; the last quote opens a string that runs to the end.
    EXPECT_EQ(L"DDSSSSDSS", colourize(L"x=\"a\\\"b\";"));
    EXPECT_EQ(L"SSSSSDD", colourize(L"\"int\"+1"));
}

TEST_F(ColorizerTest, CharacterLiterals)
{
    EXPECT_EQ(L"DDSSSSDD", colourize(L"c='\\'';x"));
    EXPECT_EQ(L"SSSDSSS", colourize(L"'a';'b'"));
    // Without "rem" an open literal is a string up to the end, across lines.
    EXPECT_EQ(L"DSSSSSS", colourize(L"x'ab\rcd"));
}

TEST_F(ColorizerTest, Comments)
{
    EXPECT_EQ(L"DDCCCCCD", colourize(L"a /*b*/c"));
    EXPECT_EQ(L"DCCCCCC", colourize(L"a/* b\rc"));
    EXPECT_EQ(L"DDDCCCCD", colourize(L"x/y//z\ry"));
    // A line comment ends at the line break, which it includes.
    EXPECT_EQ(L"CCCCCKKKD", colourize(L"// x\rint "));
    EXPECT_EQ(L"CCCC", colourize(L"// x"));
    // Strings and keywords inside comments stay comment.
    EXPECT_EQ(L"CCCCCCCCCCC", colourize(L"/* int \"x*/"));
}

TEST_F(ColorizerTest, BackslashContinuesALineComment)
{
    EXPECT_EQ(L"DDCCCCCCCD", colourize(L"a //b\\\rc\rd"));
    // A backslash elsewhere in the line does not.
    EXPECT_EQ(L"CCCCCDD", colourize(L"//\\b\rcd"));
}

// The tokenizer without a control: every line-break form reaches it as written, which a
// rich edit control (it keeps a lone "\r") cannot show. Same letters as above, D where no
// span was applied.
class LineEndProbe : public KxUiSyntaxColorizer {
public:
    std::wstring colours(LPCWSTR text)
    {
        struct Painter : FormatSink {
            void applyFormat(long start, long end, const CHARFORMATW& format) override
            {
                const COLORREF c = format.crTextColor;
                const wchar_t letter = c == keywordBlue ? L'K' : c == stringColor ? L'S'
                                     : c == commentGreen ? L'C' : L'?';
                for (long i = start; i < end && i < long(map.size()); ++i)
                    map[size_t(i)] = letter;
            }
            std::wstring map;
        } painter;
        painter.map.assign(wcslen(text), L'D');
        colorize(text, painter, 0);
        return painter.map;
    }
};

TEST(ColorizerLineEnds, CommentsEndAtEachFormOfLineBreak)
{
    LineEndProbe probe;
    // "\r\n" is one break and both characters are comment.
    EXPECT_EQ(L"CCCCCCD", probe.colours(L"// a\r\nb"));
    EXPECT_EQ(L"CCCCCCDCCCCD", probe.colours(L"// a\r\nb//\r\nc"));
    EXPECT_EQ(L"CCCCCD", probe.colours(L"// a\rb"));
    EXPECT_EQ(L"CCCCCD", probe.colours(L"// a\nb"));
    // A "\r" as the last character of the text (a range cut before its "\n") ends the line.
    EXPECT_EQ(L"DCCCC", probe.colours(L"x// \r"));
    // A blank line after a comment: "\r\n\r\n" is two breaks, the second not in the comment.
    EXPECT_EQ(L"CCCCCCDDD", probe.colours(L"// a\r\n\r\nx"));
    // Keywords resume after the break.
    EXPECT_EQ(L"CCCCKKKD", probe.colours(L"//\r\nint "));
}

TEST(ColorizerLineEnds, BackslashBeforeAnyBreakContinuesTheComment)
{
    LineEndProbe probe;
    EXPECT_EQ(L"CCCCCCCCCCD", probe.colours(L"// a\\\r\nb\r\nc"));
    EXPECT_EQ(L"CCCCCCCCD", probe.colours(L"// a\\\rb\rc"));
    EXPECT_EQ(L"CCCCCCCCD", probe.colours(L"// a\\\nb\nc"));
    // Only the character right before the break counts.
    EXPECT_EQ(L"CCCCCCD", probe.colours(L"//\\a\r\nb"));
    EXPECT_EQ(L"CCCCCCCDD", probe.colours(L"// \\ \r\nb;"));
}

TEST(ColorizerLineEnds, RemCommentsEndTheSameWay)
{
    LineEndProbe probe;
    probe.AddKeyword(L"rem", RGB(9, 9, 9), 3);
    EXPECT_EQ(L"DCCCCD", probe.colours(L"x'a\r\ny"));
    EXPECT_EQ(L"DCCCD", probe.colours(L"x'a\ry"));
    EXPECT_EQ(L"DCCCD", probe.colours(L"x'a\ny"));
    EXPECT_EQ(L"CCCCCCCD", probe.colours(L"rem a\r\ny"));
    EXPECT_EQ(L"DCCCCCCCD", probe.colours(L"x'a\\\r\nb\ry"));
    // Without "rem" a quote span is a string and runs across every break.
    probe.ClearKeywordList();
    EXPECT_EQ(L"DSSSSS", probe.colours(L"x'a\r\ny"));
}

TEST_F(ColorizerTest, KeywordsNeedDelimitersOnBothSides)
{
    EXPECT_EQ(L"KKKD", colourize(L"int("));
    EXPECT_EQ(L"DDDD", colourize(L"int,"));
    EXPECT_EQ(L"DDDDD", colourize(L"x=int"));
    EXPECT_EQ(L"DKKKD", colourize(L"(int)"));
    EXPECT_EQ(L"DDDD", colourize(L"int8"));
    EXPECT_EQ(L"DDDD", colourize(L"xint"));
    EXPECT_EQ(L"KKKDDKKKKKKD", colourize(L"int\r\tsizeof."));
    EXPECT_EQ(L"KKKKKKKDD", colourize(L"#define X"));
    EXPECT_EQ(L"KKKKKKDD", colourize(L"__int8 x"));
    // Keywords are case-sensitive.
    EXPECT_EQ(L"DDD", colourize(L"Int"));
    // Characters from U+8000 up are neither delimiters nor keyword starts.
    EXPECT_EQ(L"DDDD", colourize(L"int\x9000"));
    colorizer.AddKeyword(L"\x9000x", RGB(1, 2, 3), 0);
    EXPECT_EQ(L"DDDD", colourize(L"\x9000x ;"));
}

TEST_F(ColorizerTest, FormatsAreAppliedInFullOrByColourAlone)
{
    setText(L"int \"s\" // c");
    colorizer.Colorize(0, -1, &edit);
    // Every span carries the default face and size; strings and comments change the
    // colour only; keywords get their whole format.
    for (long start : {0L, 4L, 8L}) {
        const CHARFORMATW cf = formatOf(start, start + 1);
        EXPECT_STREQ(L"Courier New", cf.szFaceName) << start;
        EXPECT_EQ(200, cf.yHeight) << start;
        EXPECT_FALSE(cf.dwEffects & CFE_BOLD) << start;
    }
    EXPECT_EQ(L"KKKDSSSDCCCC", colours());
}

TEST_F(ColorizerTest, ColorizesASubRange)
{
    setText(L"int a; xint b; int c");
    colorizer.Colorize(8, 13, &edit);
    // Only [8, 13] is touched; its first character counts as preceded by a delimiter.
    EXPECT_EQ(L"????????KKKDD???????", colours());
    colorizer.Colorize(15, -1, &edit);
    EXPECT_EQ(L"????????KKKDD??KKKDD", colours());

    // Bad ranges and a missing control change nothing.
    setText(L"int");
    colorizer.Colorize(2, 1, &edit);
    colorizer.Colorize(-3, 1, &edit);
    colorizer.Colorize(0, -1, nullptr);
    EXPECT_EQ(L"???", colours());
}

TEST_F(ColorizerTest, RemStartsBasicComments)
{
    EXPECT_EQ(L"DDDDDDDDDD", colourize(L"rem note\rx"));
    colorizer.AddKeyword(L"rem", RGB(9, 9, 9), 3);
    EXPECT_EQ(L"CCCCCCCCCD", colourize(L"rem note\rx"));
    // The word itself is matched case-sensitively, like every keyword.
    EXPECT_EQ(L"DDDDDDDDDD", colourize(L"REM note\rx"));
    EXPECT_EQ(L"DCCCCCD", colourize(L"x'a b\ry"));
    EXPECT_EQ(L"SSSD", colourize(L"'a'y"));
    EXPECT_EQ(L"DDDDDD", colourize(L"remark"));

    colorizer.ClearKeywordList();
    EXPECT_TRUE(colorizer.GetKeywordList().IsEmpty());
    EXPECT_EQ(L"DDDDDDDDDD", colourize(L"rem note\rx"));
    EXPECT_EQ(L"DSSSSSS", colourize(L"x'a b\ry"));
    EXPECT_EQ(L"DDD", colourize(L"int"));
    // Strings and comments do not depend on the keyword list.
    EXPECT_EQ(L"SSSCCC", colourize(L"\"a\"//b"));
}

TEST_F(ColorizerTest, AddingAKeywordAgainReplacesIt)
{
    const COLORREF red = RGB(200, 0, 0);
    const COLORREF teal = RGB(0, 128, 128);
    colorizer.ClearKeywordList();
    colorizer.AddKeyword(L",,beta,,alpha,beta,", red, 1);
    EXPECT_EQ(CString(L"alpha,beta"), colorizer.GetKeywordList());
    colorizer.AddKeyword(L"beta", teal, 2);
    EXPECT_EQ(CString(L"alpha,beta"), colorizer.GetKeywordList());
    EXPECT_EQ(CString(L"alpha"), colorizer.GetKeywordList(1));
    EXPECT_EQ(CString(L"beta"), colorizer.GetKeywordList(2));
    setText(L"beta alpha");
    colorizer.Colorize(0, -1, &edit);
    EXPECT_EQ(L"XXXXD?????", colours(teal));
}

TEST_F(ColorizerTest, GroupStyles)
{
    CHARFORMATW bold;
    colorizer.GetDefaultStyle(bold);
    bold.dwEffects = CFE_BOLD;
    bold.crTextColor = RGB(128, 0, 0);
    colorizer.AddKeyword(L"Foo,Bar", bold, 5);

    CHARFORMATW cf = {};
    colorizer.GetGroupStyle(5, cf);
    EXPECT_EQ(DWORD(CFE_BOLD), cf.dwEffects);
    EXPECT_EQ(RGB(128, 0, 0), cf.crTextColor);
    // A group without keywords yields the default format.
    colorizer.GetGroupStyle(77, cf);
    EXPECT_EQ(0u, cf.dwEffects);
    EXPECT_EQ(RGB(0, 0, 0), cf.crTextColor);

    setText(L"Foo int Bar");
    colorizer.Colorize(0, -1, &edit);
    EXPECT_TRUE(formatOf(0, 3).dwEffects & CFE_BOLD);
    EXPECT_FALSE(formatOf(4, 7).dwEffects & CFE_BOLD);
    EXPECT_TRUE(formatOf(8, 11).dwEffects & CFE_BOLD);

    // A group colour turns the group's format into a colour change alone, applied over the
    // default format: the keywords lose their bold.
    colorizer.SetGroupColor(5, RGB(0, 0, 128));
    colorizer.GetGroupStyle(5, cf);
    EXPECT_EQ(DWORD(CFM_COLOR), cf.dwMask);
    colorizer.Colorize(0, -1, &edit);
    EXPECT_EQ(RGB(0, 0, 128), formatOf(0, 3).crTextColor);
    EXPECT_FALSE(formatOf(0, 3).dwEffects & CFE_BOLD);
    EXPECT_EQ(keywordBlue, formatOf(4, 7).crTextColor);

    // With an empty list the caller's structure is left as it was.
    colorizer.ClearKeywordList();
    cf.crTextColor = RGB(1, 2, 3);
    colorizer.GetGroupStyle(0, cf);
    EXPECT_EQ(RGB(1, 2, 3), cf.crTextColor);
}

TEST_F(ColorizerTest, CopiesShareTablesAndKeywords)
{
    auto* original = new KxUiSyntaxColorizer;
    KxUiSyntaxColorizer copy(*original);
    KxUiSyntaxColorizer assigned;
    assigned = copy;
    assigned = assigned;
    original->AddKeyword(L"widget", keywordBlue, 4);
    EXPECT_EQ(CString(L"widget"), copy.GetKeywordList(4));
    EXPECT_EQ(CString(L"widget"), assigned.GetKeywordList(4));
    copy.SetStringColor(RGB(0, 0, 0));
    delete original;

    // The survivors still hold the tables and the list.
    setText(L"widget \"s\"");
    assigned.Colorize(0, -1, &edit);
    EXPECT_EQ(L"KKKKKKDSSS", colours());
    copy.Colorize(0, -1, &edit);
    EXPECT_EQ(L"KKKKKKDDDD", colours());
}

TEST_F(ColorizerTest, LeavesTheSelectionAtTheLastSpan)
{
    setText(L"int x; // end\rreturn y;");
    colorizer.Colorize(0, -1, &edit);
    long start = 0, end = 0;
    edit.GetSel(start, end);
    EXPECT_EQ(14, start);
    EXPECT_EQ(20, end);
}

} // namespace
