#include "KxUiNumberModel.h"
#include <algorithm>
#include <cmath>
#include <cwchar>
#include <tchar.h>

const TCHAR KxUiNumberModel::kPlaceholder[] = _T("1.1");

namespace {

// A separator must not be confused with the number itself or break the single line.
bool isSeparatorChar(TCHAR ch)
{
    return ch >= 0x20 && ch != 0x7F && ch != _T('-') && ch != _T('+') && !::IsCharAlphaNumericW(ch);
}

// Length of the integer part: the text before its last decimal separator.
int integerLength(const CString& s, TCHAR chDecimal)
{
    int n = s.ReverseFind(chDecimal);
    return n >= 0 ? n : s.GetLength();
}

// Fractional digits after the last decimal separator, and how many of them reach up to
// the last non-zero one.
void countFraction(const CString& s, TCHAR chDecimal, int& nDigits, int& nSignificant)
{
    nDigits = nSignificant = 0;
    int nSep = s.ReverseFind(chDecimal);
    for (int i = nSep + 1; nSep >= 0 && i < s.GetLength(); ++i) {
        if (!KxUiNumberModel::IsDigit(s[i]))
            continue;
        ++nDigits;
        if (s[i] != _T('0'))
            nSignificant = nDigits;
    }
}

// Removes zeros in front of another integer digit; nInt is the integer length.
void stripLeadingZeros(CString& s, int& nInt)
{
    while (nInt >= 2 && s[0] == _T('0')) {
        s.Delete(0);
        --nInt;
    }
}

// Negative formats by LOCALE_INEGNUMBER.
const TCHAR* const kNegativeNumberFormats[] = {
    _T("(1.1)"), _T("-1.1"), _T("- 1.1"), _T("1.1-"), _T("1.1 -"),
};
// Positive currency formats by LOCALE_ICURRENCY.
const TCHAR* const kPositiveCurrencyFormats[] = {
    _T("$1.1"), _T("1.1$"), _T("$ 1.1"), _T("1.1 $"),
};
// Negative currency formats by LOCALE_INEGCURR.
const TCHAR* const kNegativeCurrencyFormats[] = {
    _T("($1.1)"), _T("-$1.1"), _T("$-1.1"), _T("$1.1-"), _T("(1.1$)"), _T("-1.1$"),
    _T("1.1-$"),  _T("1.1$-"), _T("-1.1 $"), _T("-$ 1.1"), _T("1.1 $-"), _T("$ 1.1-"),
    _T("$ -1.1"), _T("1.1- $"), _T("($ 1.1)"), _T("(1.1 $)"),
};

CString localeText(LCTYPE type)
{
    WCHAR buf[96] = {};
    if (::GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buf, 96) <= 0)
        return CString();
    return CString(buf);
}

// The leading number of a locale text ("3;2;0" gives 3), -1 when it starts with none.
int localeNumber(LCTYPE type)
{
    CString s = localeText(type);
    if (s.IsEmpty() || !KxUiNumberModel::IsDigit(s[0]))
        return -1;
    return _wtoi(s);
}

// The format a locale number selects from a table; the fallback when out of the table.
CString localeFormat(LCTYPE type, const TCHAR* const* table, int count, const CString& sFallback)
{
    int nIndex = localeNumber(type);
    return nIndex >= 0 && nIndex < count ? CString(table[nIndex]) : sFallback;
}

// Replaces the setting by the locale's value while it still equals the last locale value.
template <typename T>
void takeLocale(T& current, T& snapshot, const T& value)
{
    if (current == snapshot)
        current = value;
    snapshot = value;
}

} // namespace

KxUiNumberModel::KxUiNumberModel(Kind kind)
    : m_kind(kind),
      m_chGroupSeparator(_T(',')),
      m_nGroupLength(3),
      m_chDecimalSeparator(_T('.')),
      m_bShowLeadingZero(true),
      m_nFractionalDigitCount(2),
      m_bInfiniteFractionalDigitCount(false),
      m_nDecimalDigitCount(-1),
      m_bFullStopIsSeparator(true),
      m_sNegativeFormat(kind == kindCurrency ? _T("($1.1)") : _T("-1.1")),
      m_sPositiveFormat(kind == kindCurrency ? _T("$1.1") : _T("1.1")),
      m_bNegative(false),
      m_dValue(0.0)
{
    m_locale = {m_chGroupSeparator, m_nGroupLength, m_chDecimalSeparator, m_bShowLeadingZero,
                m_nFractionalDigitCount, m_sNegativeFormat, m_sPositiveFormat};
    SetText(CString());
}

// ---------------------------------------------------------------------------------------
// Settings

void KxUiNumberModel::Renormalise(TCHAR chOldDecimal)
{
    CString s;
    for (int i = 0; i < m_sText.GetLength(); ++i) {
        TCHAR ch = m_sText[i];
        if (IsDigit(ch))
            s += ch;
        else if (ch == chOldDecimal)
            s += m_chDecimalSeparator;
    }
    SetText(s);
}

bool KxUiNumberModel::SetGroupSeparator(TCHAR chSeparator)
{
    if (!isSeparatorChar(chSeparator))
        return false;
    const TCHAR chOldDecimal = m_chDecimalSeparator;
    if (chSeparator == m_chDecimalSeparator)
        m_chDecimalSeparator = m_chGroupSeparator;
    m_chGroupSeparator = chSeparator;
    Renormalise(chOldDecimal);
    return true;
}

bool KxUiNumberModel::SetDecimalSeparator(TCHAR chSeparator)
{
    if (!isSeparatorChar(chSeparator))
        return false;
    const TCHAR chOldDecimal = m_chDecimalSeparator;
    if (chSeparator == m_chGroupSeparator)
        m_chGroupSeparator = chOldDecimal;
    m_chDecimalSeparator = chSeparator;
    Renormalise(chOldDecimal);
    return true;
}

bool KxUiNumberModel::SetCount(int& nSetting, int nValue, int nLowest)
{
    if (nValue < nLowest || nValue > kMaxSettingDigits)
        return false;
    nSetting = nValue;
    Renormalise(m_chDecimalSeparator);
    return true;
}

bool KxUiNumberModel::SetGroupLength(int nLength)
{
    return SetCount(m_nGroupLength, nLength, 0);
}

void KxUiNumberModel::SetShowLeadingZero(bool bShow)
{
    m_bShowLeadingZero = bShow;
    Renormalise(m_chDecimalSeparator);
}

bool KxUiNumberModel::SetFractionalDigitCount(int nCount)
{
    return SetCount(m_nFractionalDigitCount, nCount, 0);
}

void KxUiNumberModel::SetInfiniteFractionalDigitCount(bool bInfinite)
{
    if (bInfinite && !m_bInfiniteFractionalDigitCount) {
        // The zeros that padded the fixed count are no digits anyone typed: from here on
        // the count follows the digits, so they go ("0.00" becomes "0.0").
        const int nSep = m_sText.ReverseFind(m_chDecimalSeparator);
        while (nSep >= 0 && m_sText.GetLength() > nSep + 1 && m_sText[m_sText.GetLength() - 1] == _T('0'))
            m_sText.Delete(m_sText.GetLength() - 1);
    }
    m_bInfiniteFractionalDigitCount = bInfinite;
    Renormalise(m_chDecimalSeparator);
}

bool KxUiNumberModel::SetDecimalDigitCount(int nCount)
{
    return SetCount(m_nDecimalDigitCount, nCount, -1);
}

bool KxUiNumberModel::SplitFormat(const CString& sFormat, CString& sBefore, CString& sAfter)
{
    int nAt = sFormat.Find(kPlaceholder);
    if (nAt < 0)
        return false;
    sBefore = sFormat.Left(nAt);
    sAfter = sFormat.Mid(nAt + 3);
    return true;
}

bool KxUiNumberModel::SetPositiveFormat(LPCTSTR lpszFormat)
{
    if (lpszFormat == nullptr || _tcsstr(lpszFormat, kPlaceholder) == nullptr)
        return false;
    m_sPositiveFormat = lpszFormat;
    return true;
}

bool KxUiNumberModel::SetNegativeFormat(LPCTSTR lpszFormat)
{
    if (lpszFormat == nullptr || _tcsstr(lpszFormat, kPlaceholder) == nullptr)
        return false;
    m_sNegativeFormat = lpszFormat;
    return true;
}

void KxUiNumberModel::ImportLocale()
{
    const bool bCurrency = m_kind == kindCurrency;
    const TCHAR chOldDecimal = m_chDecimalSeparator, chOldGroup = m_chGroupSeparator;
    CString sDecimal = localeText(bCurrency ? LOCALE_SMONDECIMALSEP : LOCALE_SDECIMAL);
    CString sGroup = localeText(bCurrency ? LOCALE_SMONTHOUSANDSEP : LOCALE_STHOUSAND);
    if (!sDecimal.IsEmpty() && isSeparatorChar(sDecimal[0]))
        takeLocale(m_chDecimalSeparator, m_locale.chDecimalSeparator, sDecimal[0]);
    if (!sGroup.IsEmpty() && isSeparatorChar(sGroup[0]))
        takeLocale(m_chGroupSeparator, m_locale.chGroupSeparator, sGroup[0]);
    if (m_chGroupSeparator == m_chDecimalSeparator) {
        m_chDecimalSeparator = chOldDecimal;
        m_chGroupSeparator = chOldGroup;
    }
    int nLeadingZero = localeNumber(LOCALE_ILZERO);
    if (nLeadingZero >= 0)
        takeLocale(m_bShowLeadingZero, m_locale.bShowLeadingZero, nLeadingZero != 0);
    int nGroup = localeNumber(bCurrency ? LOCALE_SMONGROUPING : LOCALE_SGROUPING);
    if (nGroup >= 0 && nGroup <= kMaxSettingDigits)
        takeLocale(m_nGroupLength, m_locale.nGroupLength, nGroup);
    int nDigits = localeNumber(bCurrency ? LOCALE_ICURRDIGITS : LOCALE_IDIGITS);
    if (nDigits >= 0 && nDigits <= kMaxSettingDigits)
        takeLocale(m_nFractionalDigitCount, m_locale.nFractionalDigitCount, nDigits);
    CString sNegative = bCurrency ? localeFormat(LOCALE_INEGCURR, kNegativeCurrencyFormats, 16, m_locale.sNegativeFormat)
                                  : localeFormat(LOCALE_INEGNUMBER, kNegativeNumberFormats, 5, m_locale.sNegativeFormat);
    takeLocale(m_sNegativeFormat, m_locale.sNegativeFormat, sNegative);
    if (bCurrency) {
        CString sPositive = localeFormat(LOCALE_ICURRENCY, kPositiveCurrencyFormats, 4, m_locale.sPositiveFormat);
        takeLocale(m_sPositiveFormat, m_locale.sPositiveFormat, sPositive);
    }
    Renormalise(chOldDecimal);
}

// ---------------------------------------------------------------------------------------
// The number

int KxUiNumberModel::SetText(const CString& sRaw)
{
    const TCHAR chDec = m_chDecimalSeparator;
    const int nRawInteger = integerLength(sRaw, chDec);

    if (m_bInfiniteFractionalDigitCount) {
        // The count follows the digits: as many as the text holds after its separator, at
        // least one (to begin a fraction in). So typing 1 . 1 2 3 shows "1.123", a third
        // digit after a count of 2 raises it to 3, and zeros typed inside or after the
        // fraction stay ("1.105", "1.005"). The step rule "down by one when more than one
        // ahead of the last non-zero digit, up by one when it reaches the count" keeps the
        // count one ahead and shows "1.1230", and it drops typed zeros; the count settles
        // at once here, so a pasted fraction keeps its digits and the text reads back the same.
        int nDigits, nSignificant;
        countFraction(sRaw, chDec, nDigits, nSignificant);
        m_nFractionalDigitCount = std::min(std::max(nDigits, 1), static_cast<int>(kMaxSettingDigits));
    }

    // Digits only, plus the last decimal separator; a leading "-" asks for a negative number.
    CString s;
    bool bTypedNegative = false, bSeparatorKept = false;
    for (int i = sRaw.GetLength() - 1; i >= 0; --i) {
        TCHAR ch = sRaw[i];
        if (IsDigit(ch)) {
            s.Insert(0, ch);
        } else if (ch == chDec && !bSeparatorKept) {
            s.Insert(0, ch);
            bSeparatorKept = true;
        } else if (ch == _T('-') && i == 0) {
            bTypedNegative = true;
        }
    }

    int nInt = integerLength(s, chDec);
    stripLeadingZeros(s, nInt);

    // No more fractional digits than the count.
    int nSep = s.Find(chDec);
    if (nSep >= 0 && s.GetLength() - nSep - 1 > m_nFractionalDigitCount)
        s = s.Left(nSep + 1 + m_nFractionalDigitCount);

    // No more integer digits than the limit: the first ones go, and a zero that comes to
    // the front this way too.
    const int nLimit = m_nDecimalDigitCount == -1 ? kMaxIntegerDigits : m_nDecimalDigitCount;
    if (nInt > nLimit && s[0] != _T('0')) {
        s.Delete(0, nInt - nLimit);
        nInt = nLimit;
        stripLeadingZeros(s, nInt);
    }

    // Separator, padding and leading zero.
    if (m_nFractionalDigitCount > 0) {
        nSep = s.Find(chDec);
        if (nSep < 0) {
            nSep = s.GetLength();
            s += chDec;
        }
        for (int nFraction = s.GetLength() - nSep - 1; nFraction < m_nFractionalDigitCount; ++nFraction)
            s += _T('0');
        if (nInt == 0 && m_bShowLeadingZero) {
            s.Insert(0, _T('0'));
            nInt = 1;
        } else if (nInt == 1 && s[0] == _T('0') && !m_bShowLeadingZero) {
            s.Delete(0);
            nInt = 0;
        }
    } else {
        s.Remove(chDec);
        if (nInt == 0 && m_bShowLeadingZero) {
            s.Insert(0, _T('0'));
            nInt = 1;
        }
    }

    // Group separators, counted leftwards from the decimal separator.
    if (m_nGroupLength > 0) {
        for (int i = nInt - m_nGroupLength; i > 0; i -= m_nGroupLength)
            s.Insert(i, m_chGroupSeparator);
    }

    m_sText = s;
    if (bTypedNegative)
        m_bNegative = true;
    ComputeValue();
    return integerLength(s, chDec) - nRawInteger;
}

CString KxUiNumberModel::GetDigits() const
{
    CString s = m_sText;
    if (m_nGroupLength > 0)
        s.Remove(m_chGroupSeparator);
    return s;
}

void KxUiNumberModel::ComputeValue()
{
    CString s = GetDigits();
    if (m_nGroupLength > 0)
        s.Replace(m_chDecimalSeparator, _T('.'));
    m_dValue = wcstod(s, nullptr);
    if (m_bNegative)
        m_dValue = -m_dValue;
}

void KxUiNumberModel::SetNegative(bool bNegative)
{
    m_bNegative = bNegative;
    m_dValue = bNegative ? -std::fabs(m_dValue) : std::fabs(m_dValue);
}

bool KxUiNumberModel::SetValue(double dValue)
{
    if (!std::isfinite(dValue))
        return false;
    const double dAbs = std::fabs(dValue);
    if (dAbs >= 1e308)
        return false;
    // Up to 308 integer digits, a separator and up to kMaxSettingDigits fractional ones.
    WCHAR buf[kMaxIntegerDigits + kMaxSettingDigits + 8];
    const int nSize = static_cast<int>(sizeof buf / sizeof *buf);
    int nDigits = m_nFractionalDigitCount;
    if (m_bInfiniteFractionalDigitCount) {
        for (nDigits = 0; nDigits < 15; ++nDigits) {
            swprintf(buf, nSize, L"%.*f", nDigits, dAbs);
            if (wcstod(buf, nullptr) == dAbs)
                break;
        }
    }
    swprintf(buf, nSize, L"%.*f", nDigits, dAbs);
    CString sText(buf);
    sText.Replace(_T('.'), m_chDecimalSeparator);
    m_bNegative = dValue < 0;
    SetText(sText);
    return true;
}

CString KxUiNumberModel::GetPrefix() const
{
    CString sBefore, sAfter;
    SplitFormat(GetCurrentFormat(), sBefore, sAfter);
    return sBefore;
}

CString KxUiNumberModel::GetSuffix() const
{
    CString sBefore, sAfter;
    SplitFormat(GetCurrentFormat(), sBefore, sAfter);
    return sAfter;
}

CString KxUiNumberModel::Format() const
{
    CString sBefore, sAfter;
    SplitFormat(GetCurrentFormat(), sBefore, sAfter);
    return sBefore + m_sText + sAfter;
}

int KxUiNumberModel::GetIntegerDigitCount() const
{
    int nCount = 0;
    for (int i = 0; i < m_sText.GetLength() && m_sText[i] != m_chDecimalSeparator; ++i)
        nCount += IsDigit(m_sText[i]);
    return nCount;
}

int KxUiNumberModel::GetFractionalDigitsShown() const
{
    int nDigits, nSignificant;
    countFraction(m_sText, m_chDecimalSeparator, nDigits, nSignificant);
    return nDigits;
}

int KxUiNumberModel::GetSignificantFractionalDigits() const
{
    int nDigits, nSignificant;
    countFraction(m_sText, m_chDecimalSeparator, nDigits, nSignificant);
    return nSignificant;
}

bool KxUiNumberModel::IsDecimalKey(TCHAR ch) const
{
    return ch == m_chDecimalSeparator || (ch == _T('.') && m_bFullStopIsSeparator);
}
