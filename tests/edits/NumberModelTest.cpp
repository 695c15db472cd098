// The number model without a window: parsing, normalising with the settings, formatting
// with the formats, the value, and the limits a double sets.
#include "KxUiNumberModel.h"
#include <cfloat>
#include <cmath>
#include <string>

namespace {

std::wstring Shown(const KxUiNumberModel& m)
{
    return static_cast<LPCTSTR>(m.Format());
}

TEST(NumberModel, TypedAndPastedTextIsNormalised)
{
    struct {
        const wchar_t* raw;
        const wchar_t* shown;
        double value;
    } cases[] = {
        {L"", L"0.00", 0.0},
        {L"abc", L"0.00", 0.0},
        {L"1.2.3", L"12.30", 12.3},              // the last separator survives
        {L"-0012,345.678", L"-12,345.67", -12345.67}, // extra fraction digits are cut, not rounded
        {L"12-3", L"123.00", 123.0},             // "-" counts only in front
        {L".5", L"0.50", 0.5},
        {L"0000", L"0.00", 0.0},
        {L"1234567", L"1,234,567.00", 1234567.0},
        {L"\x0661\xD83D\xDE00" L"7\t8", L"78.00", 78.0},
    };
    for (const auto& c : cases) {
        KxUiNumberModel m;
        m.SetText(c.raw);
        EXPECT_EQ(c.shown, Shown(m)) << c.raw;
        EXPECT_DOUBLE_EQ(c.value, m.GetValue()) << c.raw;
    }
    // The result tells how far the integer part moved (a caret before the fraction moves
    // with it): "1234" gains a group separator, "007" loses two zeros.
    KxUiNumberModel m;
    EXPECT_EQ(1, m.SetText(L"1234"));
    EXPECT_EQ(-2, m.SetText(L"007.5"));
    EXPECT_EQ(CString(L"7.50"), m.GetText());
    EXPECT_EQ(CString(L"7.50"), m.GetDigits());
    EXPECT_EQ(1, m.GetIntegerDigitCount());
    EXPECT_EQ(2, m.GetFractionalDigitsShown());
    EXPECT_EQ(1, m.GetSignificantFractionalDigits());
}

TEST(NumberModel, SettingsReformatTheNumberTheyHold)
{
    KxUiNumberModel m;
    m.SetText(L"1234567.5");
    ASSERT_TRUE(m.SetGroupLength(2));
    EXPECT_EQ(L"1,23,45,67.50", Shown(m));
    ASSERT_TRUE(m.SetFractionalDigitCount(0));
    EXPECT_EQ(L"1,23,45,67", Shown(m)); // the fraction is gone for good
    ASSERT_TRUE(m.SetFractionalDigitCount(3));
    EXPECT_EQ(L"1,23,45,67.000", Shown(m));
    ASSERT_TRUE(m.SetDecimalDigitCount(3)); // the first digits go
    EXPECT_EQ(L"5,67.000", Shown(m));
    EXPECT_DOUBLE_EQ(567.0, m.GetValue());
    m.SetText(L"1000.5"); // "000" after the cut is no number of its own
    EXPECT_EQ(L"0.500", Shown(m));
    m.SetShowLeadingZero(false);
    EXPECT_EQ(L".500", Shown(m));
    // Refused settings change nothing.
    EXPECT_FALSE(m.SetGroupLength(-1));
    EXPECT_FALSE(m.SetFractionalDigitCount(KxUiNumberModel::kMaxSettingDigits + 1));
    EXPECT_FALSE(m.SetDecimalDigitCount(-2));
    EXPECT_EQ(2, m.GetGroupLength());
    EXPECT_EQ(3, m.GetFractionalDigitCount());
    EXPECT_EQ(3, m.GetDecimalDigitCount());
    EXPECT_EQ(L".500", Shown(m));
}

TEST(NumberModel, SeparatorsTradePlacesInEitherOrder)
{
    // The European pair from the defaults, decimal first or group first.
    KxUiNumberModel a, b;
    a.SetText(L"1234.5");
    b.SetText(L"1234.5");
    ASSERT_TRUE(a.SetDecimalSeparator(L','));
    EXPECT_EQ(L'.', a.GetGroupSeparator());
    ASSERT_TRUE(b.SetGroupSeparator(L'.'));
    EXPECT_EQ(L',', b.GetDecimalSeparator());
    ASSERT_TRUE(a.SetGroupSeparator(L'.'));
    ASSERT_TRUE(b.SetDecimalSeparator(L','));
    EXPECT_EQ(L"1.234,50", Shown(a));
    EXPECT_EQ(L"1.234,50", Shown(b));
    EXPECT_DOUBLE_EQ(1234.5, a.GetValue());
    EXPECT_DOUBLE_EQ(1234.5, b.GetValue());
    // With grouping off the unused group separator never stands in the way.
    KxUiNumberModel c;
    ASSERT_TRUE(c.SetGroupLength(0));
    ASSERT_TRUE(c.SetGroupSeparator(L'.'));
    ASSERT_TRUE(c.SetDecimalSeparator(L'.'));
    EXPECT_EQ(L'.', c.GetDecimalSeparator());
    // Characters that belong to the number or break the line are no separators.
    for (wchar_t bad : {L'5', L'-', L'+', L'a', L'\t', L'\x7F', L'\x00E9'}) {
        EXPECT_FALSE(a.SetGroupSeparator(bad)) << int(bad);
        EXPECT_FALSE(a.SetDecimalSeparator(bad)) << int(bad);
    }
    EXPECT_EQ(L"1.234,50", Shown(a));
    // A typed full stop is the separator, whatever it is, until switched off.
    EXPECT_TRUE(a.IsDecimalKey(L'.'));
    a.SetFullStopIsSeparator(false);
    EXPECT_FALSE(a.AcceptsKey(L'.'));
    EXPECT_TRUE(a.AcceptsKey(L','));
}

TEST(NumberModel, ValueReadsTheFractionOnlyWhenGrouping)
{
    KxUiNumberModel m;
    ASSERT_TRUE(m.SetDecimalSeparator(L','));
    m.SetText(L"12,75");
    EXPECT_DOUBLE_EQ(12.75, m.GetValue());
    ASSERT_TRUE(m.SetGroupLength(0));
    EXPECT_EQ(L"12,75", Shown(m));
    EXPECT_DOUBLE_EQ(12.0, m.GetValue());
}

TEST(NumberModel, InfiniteFractionFollowsTheDigitsTyped)
{
    KxUiNumberModel m;
    m.SetInfiniteFractionalDigitCount(true);
    EXPECT_EQ(L"0.0", Shown(m)); // one position to begin a fraction in
    // 1 . 1 2 3, each step as the edit hands it over (the digit inserted into the text).
    struct {
        const wchar_t* raw;
        const wchar_t* shown;
        int count;
    } steps[] = {
        {L"1.0", L"1.0", 1},     {L"1.1", L"1.1", 1},       {L"1.12", L"1.12", 2},
        {L"1.123", L"1.123", 3}, {L"1.12", L"1.12", 2},     {L"1.10", L"1.10", 2},
        {L"1.105", L"1.105", 3}, {L"1.005", L"1.005", 3},   {L"1.", L"1.0", 1},
    };
    for (const auto& s : steps) {
        m.SetText(s.raw);
        EXPECT_EQ(s.shown, Shown(m)) << s.raw;
        EXPECT_EQ(s.count, m.GetFractionalDigitCount()) << s.raw;
        m.SetText(m.GetText()); // what is shown reads back unchanged
        EXPECT_EQ(s.shown, Shown(m)) << s.raw;
    }
    m.SetText(L"0.000000000001");
    EXPECT_EQ(12, m.GetFractionalDigitCount());
    EXPECT_DOUBLE_EQ(1e-12, m.GetValue());
    // A value takes the fewest digits that give it back.
    ASSERT_TRUE(m.SetValue(3.14159));
    EXPECT_EQ(L"3.14159", Shown(m));
    ASSERT_TRUE(m.SetValue(-2));
    EXPECT_EQ(L"-2.0", Shown(m));
}

TEST(NumberModel, NoValueADoubleCannotHold)
{
    KxUiNumberModel m;
    m.SetText(std::wstring(400, L'9').c_str());
    EXPECT_EQ(int{KxUiNumberModel::kMaxIntegerDigits}, m.GetIntegerDigitCount());
    EXPECT_TRUE(std::isfinite(m.GetValue()));
    EXPECT_GT(m.GetValue(), 9.9e307);
    m.SetText((L"-" + std::wstring(309, L'1') + L".5").c_str());
    EXPECT_TRUE(std::isfinite(m.GetValue()));
    EXPECT_LT(m.GetValue(), -1.1e306);
    // Values beyond the integer digits are refused and change nothing.
    m = KxUiNumberModel();
    m.SetText(L"42");
    for (double bad : {DBL_MAX, -1e308, HUGE_VAL, -HUGE_VAL, std::nan("")})
        EXPECT_FALSE(m.SetValue(bad)) << bad;
    EXPECT_EQ(L"42.00", Shown(m));
    ASSERT_TRUE(m.SetValue(9.5e307));
    EXPECT_EQ(308, m.GetIntegerDigitCount());
    EXPECT_DOUBLE_EQ(9.5e307, m.GetValue());
    // Values are rounded to the fraction shown.
    ASSERT_TRUE(m.SetValue(0.126));
    EXPECT_EQ(L"0.13", Shown(m));
    ASSERT_TRUE(m.SetValue(-1234.5));
    EXPECT_EQ(L"-1,234.50", Shown(m));
    EXPECT_TRUE(m.IsNegative());
}

TEST(NumberModel, FormatsPutTheirTextAroundTheNumber)
{
    KxUiNumberModel m;
    m.SetText(L"5");
    struct {
        const wchar_t* format;
        const wchar_t* shown;
    } cases[] = {
        {L"#1.1#", L"#5.00#"}, {L"1.1#", L"5.00#"}, {L"a#1.1#b", L"a#5.00#b"},
        {L"1.1 1.1", L"5.00 1.1"}, {L"(1.1)", L"(5.00)"},
    };
    for (const auto& c : cases) {
        ASSERT_TRUE(m.SetPositiveFormat(c.format)) << c.format;
        EXPECT_EQ(c.shown, Shown(m)) << c.format;
    }
    EXPECT_EQ(CString(L"("), m.GetPrefix());
    EXPECT_EQ(CString(L")"), m.GetSuffix());
    // The negative format applies while the number is negative.
    ASSERT_TRUE(m.SetNegativeFormat(L"1.1 -"));
    m.SetNegative(true);
    EXPECT_EQ(L"5.00 -", Shown(m));
    EXPECT_DOUBLE_EQ(-5.0, m.GetValue());
    // A format without the placeholder is refused.
    EXPECT_FALSE(m.SetNegativeFormat(L"-1,1"));
    EXPECT_FALSE(m.SetPositiveFormat(nullptr));
    EXPECT_EQ(CString(L"1.1 -"), m.GetNegativeFormat());
    // A currency model keeps "$" for the caller to expand.
    KxUiNumberModel money(KxUiNumberModel::kindCurrency);
    money.SetText(L"-3");
    EXPECT_EQ(L"($3.00)", Shown(money));
    money.SetNegative(false);
    EXPECT_EQ(L"$3.00", Shown(money));
}

} // namespace
