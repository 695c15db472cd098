// KxUiNumberModel: the number behind a numeric or currency edit, with no window.
#pragma once
#include "KxUiDef.h"

// The model holds the settings of a number field, its two display formats, the number's
// text and sign, and its value. It parses what a user typed or pasted, normalises it with
// the settings and formats it with the formats; the edits (KxUiOXNumericEdit,
// KxUiOXCurrencyEdit) are window layers over it that add the caret, and the grid's and the
// list's numeric editors use it the same way.
//
// The text is the number as shown between the format's literals: digits, at most one
// decimal separator and the group separators the model inserts itself, e.g. "1,234.50".
// It is always normalised: no leading zeros before another integer digit, exactly the
// fractional digit count after the separator (padded with "0"), a lone "0" in front of
// the separator when there are no integer digits and the leading zero is shown, and the
// integer digits grouped from the separator leftwards.
//
// A format is the text around the number: "1.1" stands for the number, the text before it
// is shown before the number and the text after it after the number ("-1.1", "(1.1)",
// "1.1 -"). The negative format applies while the number is negative, the positive one
// otherwise.
//
// A new model has the documented defaults (group separator ",", groups of 3, decimal
// separator ".", leading zero shown, 2 fractional digits, no integer limit, formats "1.1"
// and "-1.1"; a currency model "$1.1" and "($1.1)"), whatever the user's locale says.
// ImportLocale() takes the user's locale instead.
//
// Usage:
//     KxUiNumberModel number;
//     number.SetText(L"-0012345.678");      // as typed or pasted
//     number.Format();                      // "-12,345.67"
//     number.GetValue();                    // -12345.67
//     number.SetDecimalSeparator(L',');     // the group separator becomes "."
//     number.Format();                      // "-12.345,67"
//     number.SetValue(0.5);                 // number.Format() is "0,50"
//
// Values a double cannot hold never arise: the integer part keeps at most
// kMaxIntegerDigits digits (every such number is finite as a double). Beyond that the
// first digits go, as they do when an integer digit limit is set.
class KXUI_API KxUiNumberModel {
public:
    // Which defaults and locale items the model uses.
    enum Kind {
        kindNumber,   // formats "1.1" / "-1.1"; locale number items
        kindCurrency, // formats "$1.1" / "($1.1)"; locale currency items ("$" stays for the caller)
    };
    // The placeholder that stands for the number in a format.
    static const TCHAR kPlaceholder[];
    // Most integer digits a number holds when no smaller limit is set.
    static constexpr int kMaxIntegerDigits = 308;
    // Most fractional digits, group length and integer limit a setting takes.
    static constexpr int kMaxSettingDigits = 100;

    explicit KxUiNumberModel(Kind kind = kindNumber);

    Kind GetKind() const { return m_kind; }

    // ---- Settings. Each change normalises the present text again (the value keeps its
    // digits); a refused setting returns false and changes nothing.

    // Separators must not be confused with the number or break the line: digits, letters,
    // "+", "-" and control characters are refused. When the new separator equals the other
    // one, the two trade places (the other takes the old value of the one being set), so
    // both orders of setting a pair work: from the defaults, SetDecimalSeparator(',')
    // alone gives group "." and decimal ",".
    bool SetGroupSeparator(TCHAR chSeparator);
    TCHAR GetGroupSeparator() const { return m_chGroupSeparator; }
    bool SetDecimalSeparator(TCHAR chSeparator);
    TCHAR GetDecimalSeparator() const { return m_chDecimalSeparator; }
    // Digits per group, 0 for no grouping; 0..kMaxSettingDigits.
    bool SetGroupLength(int nLength);
    int GetGroupLength() const { return m_nGroupLength; }
    void SetShowLeadingZero(bool bShow);
    bool GetShowLeadingZero() const { return m_bShowLeadingZero; }
    // Digits after the separator, always shown; 0..kMaxSettingDigits.
    bool SetFractionalDigitCount(int nCount);
    int GetFractionalDigitCount() const { return m_nFractionalDigitCount; }
    // With this on, the fractional digit count follows the digits: it is the number of
    // fractional digits the text holds, at least 1 (see SetText).
    void SetInfiniteFractionalDigitCount(bool bInfinite);
    bool GetInfiniteFractionalDigitCount() const { return m_bInfiniteFractionalDigitCount; }
    // Most integer digits, -1 for no limit (then kMaxIntegerDigits); -1..kMaxSettingDigits.
    bool SetDecimalDigitCount(int nCount);
    int GetDecimalDigitCount() const { return m_nDecimalDigitCount; }
    // A typed full stop counts as the decimal separator whatever that character is.
    void SetFullStopIsSeparator(bool bOn) { m_bFullStopIsSeparator = bOn; }
    bool GetFullStopIsSeparator() const { return m_bFullStopIsSeparator; }

    // Formats must contain "1.1"; otherwise false and nothing changes.
    bool SetPositiveFormat(LPCTSTR lpszFormat);
    bool SetNegativeFormat(LPCTSTR lpszFormat);
    const CString& GetPositiveFormat() const { return m_sPositiveFormat; }
    const CString& GetNegativeFormat() const { return m_sNegativeFormat; }
    // The format for the present sign.
    const CString& GetCurrentFormat() const { return m_bNegative ? m_sNegativeFormat : m_sPositiveFormat; }
    // Splits a format around its first "1.1"; false when it has none.
    static bool SplitFormat(const CString& sFormat, CString& sBefore, CString& sAfter);

    // Takes the separators, grouping, leading zero, fractional digits and formats from the
    // user's locale (the number or the currency items, by kind). A setting is replaced only
    // while it still equals the value last taken from the locale (at first the default),
    // so what the application set itself is kept. A locale separator that would meet one
    // the application chose leaves both separators as they were.
    void ImportLocale();

    // ---- The number.

    // Replaces the text by raw text and normalises it: every character that is not a digit
    // goes, except the last decimal separator; a "-" as the first character makes the
    // number negative (the sign is otherwise kept). Then leading zeros, the fractional
    // digit count, the integer limit, padding, the leading zero and the groups, and the
    // value is read again. Returns the length of the new integer part minus that of the
    // raw one (how far a caret in front of the fraction moves).
    int SetText(const CString& sRaw);
    // The normalised text, group separators included.
    const CString& GetText() const { return m_sText; }
    // The text without group separators (when grouping is on), e.g. "1234.50".
    CString GetDigits() const;
    // Shows a number: false for NaN, infinities and magnitudes of 1e308 or more. The
    // fraction is rounded to the fractional digit count; with an infinite fraction it
    // takes the fewest digits (up to 15) that give the value back.
    bool SetValue(double dValue);
    // The value of the text with its sign. The text is read with wcstod: only while grouping
    // is on are the group separators removed and the decimal separator read as ".", so
    // with grouping off and a separator other than "." the fraction is not read.
    double GetValue() const { return m_dValue; }
    bool IsNegative() const { return m_bNegative; }
    void SetNegative(bool bNegative);

    // The text before and after the number, from the format for the present sign.
    CString GetPrefix() const;
    CString GetSuffix() const;
    // Prefix, text and suffix: the whole display.
    CString Format() const;

    // Integer digits; fractional digits; fractional digits up to the last non-zero one.
    int GetIntegerDigitCount() const;
    int GetFractionalDigitsShown() const;
    int GetSignificantFractionalDigits() const;

    static bool IsDigit(TCHAR ch) { return ch >= _T('0') && ch <= _T('9'); }
    // The decimal separator, or a full stop while it counts as one.
    bool IsDecimalKey(TCHAR ch) const;
    // A character typing can place in a number: a digit, a decimal key or "-".
    bool AcceptsKey(TCHAR ch) const { return IsDigit(ch) || IsDecimalKey(ch) || ch == _T('-'); }

private:
    struct Snapshot {
        TCHAR chGroupSeparator;
        int nGroupLength;
        TCHAR chDecimalSeparator;
        bool bShowLeadingZero;
        int nFractionalDigitCount;
        CString sNegativeFormat;
        CString sPositiveFormat;
    };
    // Keeps the digits and the separator (given in its old form) and normalises again.
    void Renormalise(TCHAR chOldDecimal);
    // Sets a digit count within nLowest..kMaxSettingDigits and normalises; false outside.
    bool SetCount(int& nSetting, int nValue, int nLowest);
    void ComputeValue();

    Kind m_kind;
    TCHAR m_chGroupSeparator;
    int m_nGroupLength;
    TCHAR m_chDecimalSeparator;
    bool m_bShowLeadingZero;
    int m_nFractionalDigitCount;
    bool m_bInfiniteFractionalDigitCount;
    int m_nDecimalDigitCount;
    bool m_bFullStopIsSeparator;
    CString m_sNegativeFormat;
    CString m_sPositiveFormat;
    Snapshot m_locale; // settings last taken from the locale (at first the defaults)
    CString m_sText;
    bool m_bNegative;
    double m_dValue;
};
