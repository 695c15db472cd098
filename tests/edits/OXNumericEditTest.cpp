// The numeric and currency edits driven through their windows: typing, deleting, signs,
// separators, digit limits, formats and the settings taken from the user's locale.
#include "KxEditHost.h"
#include "KxUiOXNumericEdit.h"
#include <cmath>

namespace {

class OXNumericEditTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(CreateEdit(edit, host));
        host.notifications.clear();
    }
    HWND h() const
    {
        return edit.m_hWnd;
    }
    std::wstring Text() const
    {
        return WindowText(h());
    }

    EditHost host;
    Counting<KxUiOXNumericEdit> edit;
};

TEST_F(OXNumericEditTest, TypingDigitsGroupsThemWithTwoDecimals)
{
    EXPECT_EQ(L"0.00", Text());
    Select(h(), 0, 0);
    Type(h(), L"1234");
    EXPECT_EQ(L"1,234.00", Text());
    EXPECT_EQ(5, Caret(h()));
    EXPECT_DOUBLE_EQ(1234.0, edit.GetValue());
    EXPECT_EQ(CString(L"1234.00"), edit.GetInputData());
    EXPECT_EQ(4, edit.GetDecimalDigitsInserted());
    EXPECT_EQ(2, edit.GetFractionalDigitsInserted());
    Type(h(), L"567");
    EXPECT_EQ(L"1,234,567.00", Text());
    EXPECT_EQ(0, edit.refusals);
    // Letters are refused; a zero in front of the number too.
    Type(h(), L"x");
    Select(h(), 0, 0);
    Type(h(), L"0");
    EXPECT_EQ(L"1,234,567.00", Text());
    EXPECT_EQ(2, edit.refusals);
}

TEST_F(OXNumericEditTest, DecimalSeparatorMovesIntoTheFraction)
{
    Select(h(), 0, 0);
    Type(h(), L"12.5");
    EXPECT_EQ(L"12.50", Text());
    EXPECT_EQ(4, Caret(h()));
    Type(h(), L"7");
    EXPECT_EQ(L"12.57", Text());
    Type(h(), L"9"); // the fraction is complete
    EXPECT_EQ(L"12.57", Text());
    EXPECT_EQ(1, edit.refusals);
    EXPECT_DOUBLE_EQ(12.57, edit.GetValue());
    // With no fraction the separator is refused.
    edit.SetFractionalDigitCount(0);
    EXPECT_EQ(L"12", Text());
    Select(h(), 2, 2);
    Type(h(), L".");
    EXPECT_EQ(L"12", Text());
    EXPECT_EQ(2, edit.refusals);
}

TEST_F(OXNumericEditTest, MinusSignTogglesTheNegativeFormat)
{
    Select(h(), 0, 0);
    Type(h(), L"-");
    EXPECT_EQ(L"-0.00", Text());
    EXPECT_EQ(1, Caret(h()));
    Type(h(), L"42");
    EXPECT_EQ(L"-42.00", Text());
    EXPECT_DOUBLE_EQ(-42.0, edit.GetValue());
    EXPECT_TRUE(edit.IsNegative());
    Type(h(), L"-");
    EXPECT_EQ(L"42.00", Text());
    EXPECT_DOUBLE_EQ(42.0, edit.GetValue());
    // Other formats: the literals follow the sign.
    EXPECT_TRUE(edit.SetNegativeFormat(L"(1.1)"));
    EXPECT_TRUE(edit.SetPositiveFormat(L"+1.1 #"));
    EXPECT_EQ(L"+42.00 #", Text());
    Select(h(), 3, 3);
    Type(h(), L"-");
    EXPECT_EQ(L"(42.00)", Text());
    EXPECT_EQ(CString(L"("), edit.GetLeftLiterals());
    EXPECT_EQ(CString(L")"), edit.GetRightLiterals());
    // Formats without the placeholder are refused.
    EXPECT_FALSE(edit.SetNegativeFormat(L"-1,1"));
    EXPECT_FALSE(edit.SetPositiveFormat(L"number"));
    EXPECT_FALSE(edit.SetPositiveFormat(nullptr));
    EXPECT_EQ(CString(L"(1.1)"), edit.GetNegativeFormat());
    EXPECT_EQ(CString(L"+1.1 #"), edit.GetPositiveFormat());
    EXPECT_EQ(L"(42.00)", Text());
}

TEST_F(OXNumericEditTest, DeletingAcrossTheSeparatorKeepsIt)
{
    SetWindowTextW(h(), L"1234.56");
    EXPECT_EQ(L"1,234.56", Text());
    Select(h(), 3, 7); // "34.5"
    Key(h(), VK_DELETE);
    EXPECT_EQ(L"12.60", Text());
    EXPECT_EQ(2, Caret(h()));
    EXPECT_DOUBLE_EQ(12.6, edit.GetValue());
    // Backspace over the separator deletes the digit before it.
    Select(h(), 3, 3);
    Key(h(), VK_BACK);
    EXPECT_EQ(L"1.60", Text());
    EXPECT_EQ(1, Caret(h()));
    // Backspace after a group separator removes the digit before it.
    SetWindowTextW(h(), L"12345");
    Select(h(), 3, 3);
    Key(h(), VK_BACK);
    EXPECT_EQ(L"1,345.00", Text());
    EXPECT_EQ(1, Caret(h()));
    // Deleting every digit leaves a zero.
    Select(h(), 0, -1);
    Key(h(), VK_BACK);
    EXPECT_EQ(L"0.00", Text());
    EXPECT_DOUBLE_EQ(0.0, edit.GetValue());
    EXPECT_EQ(0, edit.refusals);
}

TEST_F(OXNumericEditTest, InfiniteFractionGrowsWithTheDigitsTyped)
{
    edit.setInfiniteFractionalDigitCount(true);
    EXPECT_EQ(L"0.0", Text()); // one position to begin a fraction in
    Select(h(), 0, 0);
    Type(h(), L"1.123");
    EXPECT_EQ(L"1.123", Text());
    EXPECT_EQ(3, edit.GetFractionalDigitCount());
    EXPECT_EQ(5, Caret(h()));
    EXPECT_DOUBLE_EQ(1.123, edit.GetValue());
    // A digit typed inside the fraction is inserted there.
    Select(h(), 2, 2);
    Type(h(), L"0");
    EXPECT_EQ(L"1.0123", Text());
    EXPECT_EQ(3, Caret(h()));
    EXPECT_EQ(4, edit.GetFractionalDigitsInsertedDifferentZero());
    // Deleting digits gives the positions back.
    Select(h(), 6, 6);
    Key(h(), VK_BACK);
    EXPECT_EQ(L"1.012", Text());
    Key(h(), VK_BACK);
    Key(h(), VK_BACK);
    EXPECT_EQ(L"1.0", Text());
    EXPECT_EQ(1, edit.GetFractionalDigitCount());
    // Zeros typed after the fraction's digits stay.
    Select(h(), 3, 3);
    Type(h(), L"05");
    EXPECT_EQ(L"1.005", Text());
    EXPECT_DOUBLE_EQ(1.005, edit.GetValue());
    EXPECT_EQ(0, edit.refusals);
}

TEST_F(OXNumericEditTest, IntegerDigitLimitDropsTheFirstDigit)
{
    ASSERT_TRUE(edit.SetDecimalDigitCount(3));
    Select(h(), 0, 0);
    Type(h(), L"1234");
    EXPECT_EQ(L"234.00", Text());
    EXPECT_EQ(3, Caret(h()));
    // Over a digit the typed one replaces it.
    Select(h(), 1, 1);
    Type(h(), L"9");
    EXPECT_EQ(L"294.00", Text());
    EXPECT_EQ(2, Caret(h()));
    EXPECT_DOUBLE_EQ(294.0, edit.GetValue());
    EXPECT_FALSE(edit.SetDecimalDigitCount(-2));
    EXPECT_EQ(3, edit.GetDecimalDigitCount());
}

TEST_F(OXNumericEditTest, LeadingZeroAndOverwriteAtTheFront)
{
    edit.SetShowLeadingZero(FALSE);
    EXPECT_EQ(L".00", Text());
    Select(h(), 0, 0);
    Type(h(), L"0"); // a zero that would not show
    EXPECT_EQ(L".00", Text());
    EXPECT_EQ(1, edit.refusals);
    Type(h(), L"7");
    EXPECT_EQ(L"7.00", Text());
    edit.SetShowLeadingZero(TRUE);
    SetWindowTextW(h(), L"5.25");
    edit.SetInsertMode(0);
    Select(h(), 0, 0);
    Type(h(), L"0"); // overwriting the only integer digit with a zero
    EXPECT_EQ(L"0.25", Text());
    EXPECT_EQ(1, Caret(h()));
    SetWindowTextW(h(), L"5234");
    Select(h(), 0, 0);
    Type(h(), L"0"); // would leave 234: refused, nothing changes
    EXPECT_EQ(L"5,234.00", Text());
    EXPECT_EQ(2, edit.refusals);
    Select(h(), 0, 0);
    Type(h(), L"9");
    EXPECT_EQ(L"9,234.00", Text());
    // Overwriting skips the group separator.
    Type(h(), L"8");
    EXPECT_EQ(L"9,834.00", Text());
}

TEST_F(OXNumericEditTest, SeparatorsAndGroupingSettings)
{
    SetWindowTextW(h(), L"1234567.5");
    EXPECT_TRUE(edit.SetGroupSeparator(L' '));
    EXPECT_TRUE(edit.SetDecimalSeparator(L','));
    EXPECT_EQ(L"1 234 567,50", Text());
    EXPECT_DOUBLE_EQ(1234567.5, edit.GetValue());
    // Equal separators trade places: the other takes the old value of the one set.
    EXPECT_TRUE(edit.SetDecimalSeparator(L' '));
    EXPECT_EQ(L',', edit.GetGroupSeparator());
    EXPECT_EQ(L"1,234,567 50", Text());
    EXPECT_TRUE(edit.SetGroupSeparator(L' '));
    EXPECT_EQ(L"1 234 567,50", Text());
    EXPECT_DOUBLE_EQ(1234567.5, edit.GetValue());
    EXPECT_FALSE(edit.SetDecimalSeparator(L'5'));
    EXPECT_FALSE(edit.SetDecimalSeparator(L'-'));
    EXPECT_TRUE(edit.SetGroupLength(2));
    EXPECT_EQ(L"1 23 45 67,50", Text());
    // A typed full stop is the decimal separator unless switched off.
    Select(h(), 0, 0);
    Type(h(), L".");
    EXPECT_EQ(11, Caret(h()));
    edit.SetFullStopIsSeparator(FALSE);
    Type(h(), L".");
    EXPECT_EQ(1, edit.refusals);
    // Without grouping a separator other than "." ends the number for the value.
    EXPECT_TRUE(edit.SetGroupLength(0));
    EXPECT_EQ(L"1234567,50", Text());
    EXPECT_DOUBLE_EQ(1234567.0, edit.GetValue());
    EXPECT_FALSE(edit.SetGroupLength(-1));
    EXPECT_FALSE(edit.SetFractionalDigitCount(-1));
}

TEST_F(OXNumericEditTest, PastedAndSetTextIsNormalised)
{
    struct {
        const wchar_t* in;
        const wchar_t* shown;
        double value;
    } cases[] = {
        {L"abc", L"0.00", 0.0},
        {L"1.2.3", L"12.30", 12.3},
        {L"-0012,345.678", L"-12,345.67", -12345.67},
        {L"12-3", L"123.00", 123.0},
        {L"\x0661\xD83D\xDE00" L"7\t8", L"78.00", 78.0},
        {L"0000", L"0.00", 0.0},
        {L".5", L"0.50", 0.5},
    };
    for (const auto& c : cases) {
        edit.SetValue(0);
        SetWindowTextW(h(), c.in);
        EXPECT_EQ(c.shown, Text()) << c.in;
        EXPECT_DOUBLE_EQ(c.value, edit.GetValue()) << c.in;
        ASSERT_TRUE(PutClipboard(c.in));
        edit.SetValue(0);
        Select(h(), 0, -1);
        SendMessageW(h(), WM_PASTE, 0, 0);
        EXPECT_EQ(c.shown, Text()) << c.in;
        EXPECT_DOUBLE_EQ(c.value, edit.GetValue()) << c.in;
    }
    // Hundreds of digits: the integer part keeps the last 308, which a double can hold.
    std::wstring huge(5000, L'9');
    SetWindowTextW(h(), huge.c_str());
    EXPECT_EQ(308u + 102 + 3, Text().size());
    EXPECT_TRUE(std::isfinite(edit.GetValue()));
    ASSERT_TRUE(PutClipboard(L"-" + huge));
    Select(h(), 0, -1);
    SendMessageW(h(), WM_PASTE, 0, 0);
    EXPECT_EQ(308u + 102 + 4, Text().size());
    EXPECT_TRUE(std::isfinite(edit.GetValue()));
    EXPECT_LT(edit.GetValue(), -9e307);
    // Typing one more digit at the end drops the first, as a digit limit does.
    Select(h(), 411, 411);
    Type(h(), L"1");
    EXPECT_EQ(L'1', Text()[410]);
    EXPECT_EQ(308u + 102 + 4, Text().size());
    EXPECT_TRUE(std::isfinite(edit.GetValue()));
}

TEST_F(OXNumericEditTest, HashInAFormatStaysALiteralOnItsSide)
{
    struct {
        const wchar_t* format;
        const wchar_t* five;
        const wchar_t* zero;
        const wchar_t* seventyFive;
    } cases[] = {
        {L"#1.1#", L"#5.00#", L"#0.00#", L"#75.00#"},
        {L"1.1#", L"5.00#", L"0.00#", L"75.00#"},
        {L"a#1.1#b", L"a#5.00#b", L"a#0.00#b", L"a#75.00#b"},
        {L"##1.1", L"##5.00", L"##0.00", L"##75.00"},
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(edit.SetPositiveFormat(c.format)) << c.format;
        ASSERT_TRUE(edit.SetValue(5));
        EXPECT_EQ(c.five, Text()) << c.format;
        edit.EmptyData(TRUE);
        EXPECT_EQ(c.zero, Text()) << c.format;
        edit.EmptyData(FALSE);
        EXPECT_EQ(c.zero, Text()) << c.format;
        SetWindowTextW(h(), L"5");
        EXPECT_EQ(c.five, Text()) << c.format;
        // The display text pasted back loses its own literals.
        ASSERT_TRUE(PutClipboard(c.five));
        Select(h(), 0, -1);
        SendMessageW(h(), WM_PASTE, 0, 0);
        EXPECT_EQ(c.five, Text()) << c.format;
        EXPECT_DOUBLE_EQ(5.0, edit.GetValue());
        int start = edit.GetLeftLiterals().GetLength();
        Select(h(), start, start);
        Type(h(), L"7");
        EXPECT_EQ(c.seventyFive, Text()) << c.format;
        EXPECT_EQ(c.seventyFive, std::wstring(edit.GetFormattedText()));
    }
    EXPECT_EQ(0, edit.refusals);
}

TEST_F(OXNumericEditTest, SetValueShowsTheNumberInTheSettings)
{
    EXPECT_TRUE(edit.SetValue(-1234.5));
    EXPECT_EQ(L"-1,234.50", Text());
    EXPECT_DOUBLE_EQ(-1234.5, edit.GetValue());
    EXPECT_TRUE(edit.SetValue(0.126));
    EXPECT_EQ(L"0.13", Text());
    EXPECT_FALSE(edit.SetValue(std::nan("")));
    EXPECT_FALSE(edit.SetValue(HUGE_VAL));
    EXPECT_EQ(L"0.13", Text());
    edit.setInfiniteFractionalDigitCount(true);
    EXPECT_TRUE(edit.SetValue(3.14159));
    EXPECT_EQ(L"3.14159", Text());
    EXPECT_DOUBLE_EQ(3.14159, edit.GetValue());
}

TEST_F(OXNumericEditTest, NegativeValuesUseTheNegativeTextColour)
{
    edit.SetTextColor(RGB(0, 0, 0));
    edit.SetNegativeTextColor(RGB(255, 0, 0));
    HDC hdc = CreateCompatibleDC(nullptr);
    host.SendMessage(WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(hdc), reinterpret_cast<LPARAM>(h()));
    EXPECT_EQ(RGB(0, 0, 0), GetTextColor(hdc));
    edit.SetValue(-3);
    host.SendMessage(WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(hdc), reinterpret_cast<LPARAM>(h()));
    EXPECT_EQ(RGB(255, 0, 0), GetTextColor(hdc));
    DeleteDC(hdc);
}

TEST_F(OXNumericEditTest, CellEditorConfiguration)
{
    // As the extended list sets it up: no grouping, locale decimal separator, "1,1" formats.
    Counting<KxUiOXNumericEdit> cell;
    RECT rc = {0, 40, 100, 60};
    wchar_t dec[8] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, dec, 8);
    std::wstring cellText = std::wstring(L"12") + dec[0] + L"5";
    ASSERT_TRUE(cell.CreateCellEditor(rc, &host, 102, 3, false, cellText.c_str()));
    // The edit control takes WS_BORDER off its style when it draws the border itself.
    LONG_PTR style = GetWindowLongPtrW(cell.m_hWnd, GWL_STYLE);
    EXPECT_EQ(WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, style & ~WS_BORDER);
    EXPECT_EQ(dec[0], cell.GetDecimalSeparator());
    EXPECT_EQ(0, cell.GetGroupLength());
    EXPECT_EQ(L' ', cell.GetGroupSeparator());
    EXPECT_EQ(3, cell.GetFractionalDigitCount());
    EXPECT_EQ(-1, cell.GetDecimalDigitCount());
    CString format = L"1,1";
    format.Replace(L',', dec[0]);
    if (dec[0] == L'.') {
        EXPECT_EQ(format, cell.GetPositiveFormat());
        EXPECT_EQ(format, cell.GetNegativeFormat());
    } else {
        EXPECT_EQ(CString(L"1.1"), cell.GetPositiveFormat());
        EXPECT_EQ(CString(L"-1.1"), cell.GetNegativeFormat());
    }
    std::wstring expect = std::wstring(L"12") + dec[0] + L"500";
    EXPECT_EQ(expect, WindowText(cell.m_hWnd));
    EXPECT_EQ(std::make_pair(0, static_cast<int>(expect.size())), Selection(cell.m_hWnd));
}

TEST_F(OXNumericEditTest, DialogDataExchangeOfTheValue)
{
    double d = -12.5;
    CDataExchange load(&host, FALSE);
    DDX_KXUIOXNumericEdit(&load, kEditId, d);
    EXPECT_EQ(L"-12.50", Text());
    Select(h(), 0, -1);
    Type(h(), L"7.259"); // the sign is not part of the selection's input: it stays
    CDataExchange save(&host, TRUE);
    float f = 0;
    int n = 0;
    DDX_KXUIOXNumericEdit(&save, kEditId, d);
    DDX_KXUIOXNumericEdit(&save, kEditId, f);
    DDX_KXUIOXNumericEdit(&save, kEditId, n);
    EXPECT_EQ(L"-7.25", Text());
    EXPECT_DOUBLE_EQ(-7.25, d);
    EXPECT_FLOAT_EQ(-7.25f, f);
    EXPECT_EQ(-7, n);
    // A control of another kind exchanges nothing.
    CEdit plain;
    RECT rc = {0, 50, 50, 70};
    ASSERT_TRUE(plain.Create(WS_CHILD | WS_VISIBLE, rc, &host, 103));
    n = 5;
    DDX_KXUIOXNumericEdit(&save, 103, n);
    EXPECT_EQ(5, n);
}

// ---------------------------------------------------------------------------------------
// Currency

class OXCurrencyEditTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(CreateEdit(edit, host));
    }
    HWND h() const
    {
        return edit.m_hWnd;
    }
    EditHost host;
    Counting<KxUiOXCurrencyEdit> edit;
};

TEST_F(OXCurrencyEditTest, CurrencyNameStandsWhereTheFormatHasTheDollar)
{
    EXPECT_EQ(L"$0.00", WindowText(h()));
    Select(h(), 1, 1);
    Type(h(), L"1234");
    EXPECT_EQ(L"$1,234.00", WindowText(h()));
    Select(h(), 1, 1);
    Type(h(), L"-");
    EXPECT_EQ(L"($1,234.00)", WindowText(h()));
    EXPECT_DOUBLE_EQ(-1234.0, edit.GetValue());
    EXPECT_EQ(2, Caret(h()));
    EXPECT_TRUE(edit.SetCurrencyName(L"EUR"));
    EXPECT_EQ(L"(EUR1,234.00)", WindowText(h()));
    EXPECT_DOUBLE_EQ(-1234.0, edit.GetValue());
    EXPECT_FALSE(edit.SetCurrencyName(L""));
    EXPECT_FALSE(edit.SetCurrencyName(nullptr));
    EXPECT_EQ(CString(L"EUR"), edit.GetCurrencyName());
    EXPECT_TRUE(edit.SetNegativeFormat(L"-1.1 $"));
    EXPECT_EQ(L"-1,234.00 EUR", WindowText(h()));
    // A "#" in the name stays a literal.
    EXPECT_TRUE(edit.SetCurrencyName(L"#"));
    EXPECT_EQ(L"-1,234.00 #", WindowText(h()));
    EXPECT_EQ(CString(L" #"), edit.GetRightLiterals());
    // Typing on the literals goes to the number.
    Select(h(), 0, 0);
    Type(h(), L"5");
    EXPECT_EQ(L"-1,234.00 #", WindowText(h()));
    EXPECT_EQ(1, edit.refusals);
}

// Sets user locale values for the life of the object and puts the old ones back.
class LocaleOverride {
public:
    void Set(LCTYPE type, const wchar_t* value)
    {
        wchar_t old[96] = {};
        GetLocaleInfoW(LOCALE_USER_DEFAULT, type, old, 96);
        saved_.emplace_back(type, old);
        ok = SetLocaleInfoW(LOCALE_USER_DEFAULT, type, value) && ok;
    }
    ~LocaleOverride()
    {
        for (auto it = saved_.rbegin(); it != saved_.rend(); ++it)
            SetLocaleInfoW(LOCALE_USER_DEFAULT, it->first, it->second.c_str());
    }
    bool ok = true;

private:
    std::vector<std::pair<LCTYPE, std::wstring>> saved_;
};

std::wstring LocaleString(LCTYPE type)
{
    wchar_t buf[96] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buf, 96);
    return buf;
}

TEST(OXNumericLocale, SettingsComeFromTheUsersLocale)
{
    EditHost host;
    KxUiOXNumericEdit edit;
    ASSERT_TRUE(CreateEdit(edit, host));
    EXPECT_TRUE(edit.GetLocaleSettings());
    EXPECT_EQ(LocaleString(LOCALE_SDECIMAL)[0], edit.GetDecimalSeparator());
    EXPECT_EQ(LocaleString(LOCALE_STHOUSAND)[0], edit.GetGroupSeparator());
    EXPECT_EQ(_wtoi(LocaleString(LOCALE_SGROUPING).c_str()), edit.GetGroupLength());
    EXPECT_EQ(_wtoi(LocaleString(LOCALE_IDIGITS).c_str()), edit.GetFractionalDigitCount());
    EXPECT_EQ(_wtoi(LocaleString(LOCALE_ILZERO).c_str()) != 0, edit.GetShowLeadingZero() != 0);

    const wchar_t* negative[] = {L"(1.1)", L"-1.1", L"- 1.1", L"1.1-", L"1.1 -"};
    LocaleOverride locale;
    for (int i = 0; i < 5; ++i) {
        locale.Set(LOCALE_INEGNUMBER, std::to_wstring(i).c_str());
        ASSERT_TRUE(locale.ok);
        edit.GetLocaleSettings();
        EXPECT_EQ(CString(negative[i]), edit.GetNegativeFormat()) << i;
    }
    // A setting the application changed is kept; the others follow the locale.
    locale.Set(LOCALE_SDECIMAL, L",");
    locale.Set(LOCALE_STHOUSAND, L".");
    locale.Set(LOCALE_IDIGITS, L"3");
    locale.Set(LOCALE_SGROUPING, L"4;0");
    ASSERT_TRUE(locale.ok);
    edit.SetFractionalDigitCount(1);
    edit.GetLocaleSettings();
    EXPECT_EQ(L',', edit.GetDecimalSeparator());
    EXPECT_EQ(L'.', edit.GetGroupSeparator());
    EXPECT_EQ(4, edit.GetGroupLength());
    EXPECT_EQ(1, edit.GetFractionalDigitCount());
    SetWindowTextW(edit.m_hWnd, L"-123456,78");
    EXPECT_EQ(L"12.3456,7 -", WindowText(edit.m_hWnd));
    EXPECT_DOUBLE_EQ(-123456.7, edit.GetValue());
    // A new control starts with the documented defaults whatever the locale says; only
    // GetLocaleSettings takes the locale.
    KxUiOXNumericEdit fresh;
    ASSERT_TRUE(CreateEdit(fresh, host));
    EXPECT_EQ(L"0.00", WindowText(fresh.m_hWnd));
    EXPECT_EQ(L',', fresh.GetGroupSeparator());
    EXPECT_EQ(3, fresh.GetGroupLength());
    EXPECT_EQ(CString(L"-1.1"), fresh.GetNegativeFormat());
}

TEST(OXNumericLocale, CurrencyFormatsFollowTheLocaleTables)
{
    EditHost host;
    KxUiOXCurrencyEdit edit;
    ASSERT_TRUE(CreateEdit(edit, host));
    ASSERT_TRUE(edit.SetCurrencyName(L"EUR"));
    LocaleOverride locale;
    locale.Set(LOCALE_SMONDECIMALSEP, L".");
    locale.Set(LOCALE_SMONTHOUSANDSEP, L",");
    locale.Set(LOCALE_SMONGROUPING, L"3;0");
    locale.Set(LOCALE_ICURRDIGITS, L"2");
    ASSERT_TRUE(locale.ok);
    edit.SetValue(-1234.5);
    struct {
        const wchar_t* positiveIndex;
        const wchar_t* negativeIndex;
        const wchar_t* positive;
        const wchar_t* negative;
    } cases[] = {
        {L"0", L"0", L"EUR1,234.50", L"(EUR1,234.50)"},
        {L"1", L"5", L"1,234.50EUR", L"-1,234.50EUR"},
        {L"2", L"9", L"EUR 1,234.50", L"-EUR 1,234.50"},
        {L"3", L"8", L"1,234.50 EUR", L"-1,234.50 EUR"},
        {L"3", L"15", L"1,234.50 EUR", L"(1,234.50 EUR)"},
        {L"0", L"2", L"EUR1,234.50", L"EUR-1,234.50"},
        {L"0", L"13", L"EUR1,234.50", L"1,234.50- EUR"},
    };
    for (const auto& c : cases) {
        locale.Set(LOCALE_ICURRENCY, c.positiveIndex);
        locale.Set(LOCALE_INEGCURR, c.negativeIndex);
        ASSERT_TRUE(locale.ok);
        edit.GetLocaleSettings();
        EXPECT_EQ(c.negative, WindowText(edit.m_hWnd)) << c.negativeIndex;
        edit.SetValue(1234.5);
        EXPECT_EQ(c.positive, WindowText(edit.m_hWnd)) << c.positiveIndex;
        edit.SetValue(-1234.5);
    }
    // The currency name never comes from the locale.
    EXPECT_EQ(CString(L"EUR"), edit.GetCurrencyName());
}

} // namespace
