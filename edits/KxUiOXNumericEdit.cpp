#include "KxUiOXNumericEdit.h"
#include <algorithm>
#include <cmath>
#include <cwchar>
#include <limits>
#include <tchar.h>
#include <type_traits>

IMPLEMENT_DYNCREATE(KxUiOXNumericEdit, KxUiOXEdit)

namespace {

const TCHAR kPlaceholder[] = _T("1.1");
// Most fractional (and integer limit) digits a setting takes.
const int kMaxFraction = 100;

bool isDigit(TCHAR ch)
{
    return ch >= _T('0') && ch <= _T('9');
}

// A separator must not be confused with the number itself or break the single line.
bool isSeparatorChar(TCHAR ch)
{
    return ch >= 0x20 && ch != 0x7F && ch != _T('-') && ch != _T('+') && !::IsCharAlphaNumericW(ch);
}

// Negative formats by LOCALE_INEGNUMBER.
const TCHAR* const kNegativeNumberFormats[] = {
    _T("(1.1)"), _T("-1.1"), _T("- 1.1"), _T("1.1-"), _T("1.1 -"),
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
    if (s.IsEmpty() || !isDigit(s[0]))
        return -1;
    return _wtoi(s);
}

// Replaces the setting by the locale's value while it still equals the last locale value.
template <typename T>
void takeLocale(T& current, T& snapshot, const T& value)
{
    if (current == snapshot)
        current = value;
    snapshot = value;
}

// Length of the integer part: the text before its last decimal separator.
int integerLength(const CString& s, TCHAR chDecimal)
{
    int n = s.ReverseFind(chDecimal);
    return n >= 0 ? n : s.GetLength();
}

CString escapeLiteral(const CString& s)
{
    CString t = s;
    t.Replace(_T("#"), _T("##"));
    return t;
}

} // namespace

KxUiOXNumericEdit::KxUiOXNumericEdit()
    : m_chGroupSeparator(_T(',')),
      m_nGroupLength(3),
      m_chDecimalSeparator(_T('.')),
      m_bShowLeadingZero(1),
      m_nFractionalDigitCount(2),
      m_bInfiniteFractionalDigitCount(false),
      m_nDecimalDigitCount(-1),
      m_sNegativeFormat(_T("-1.1")),
      m_sPositiveFormat(_T("1.1")),
      m_clrNegativeText(m_clrText),
      m_dValue(0.0),
      m_bNegative(0),
      m_bFullStopIsSeparator(1)
{
    m_locale = {m_chGroupSeparator, m_nGroupLength, m_chDecimalSeparator, m_bShowLeadingZero,
                m_nFractionalDigitCount, m_sNegativeFormat, m_sPositiveFormat};
    ValidateInput();
}

KxUiOXNumericEdit::~KxUiOXNumericEdit() = default;

// ---------------------------------------------------------------------------------------
// Settings

void KxUiOXNumericEdit::Reformat(TCHAR chOldDecimal)
{
    // Keep the digits and the separator (in its new form); group separators come back from
    // validation.
    CString s;
    for (int i = 0; i < m_arrInputData.GetLength(); ++i) {
        TCHAR ch = m_arrInputData[i];
        if (isDigit(ch))
            s += ch;
        else if (ch == chOldDecimal)
            s += m_chDecimalSeparator;
    }
    m_arrInputData = s;
    ValidateInput();
    Update(-1);
}

BOOL KxUiOXNumericEdit::SetGroupSeparator(TCHAR chSeparator)
{
    if (!isSeparatorChar(chSeparator) || chSeparator == m_chDecimalSeparator)
        return FALSE;
    m_chGroupSeparator = chSeparator;
    Reformat(m_chDecimalSeparator);
    return TRUE;
}

BOOL KxUiOXNumericEdit::SetGroupLength(int nLength)
{
    if (nLength < 0 || nLength > kMaxFraction)
        return FALSE;
    m_nGroupLength = nLength;
    Reformat(m_chDecimalSeparator);
    return TRUE;
}

BOOL KxUiOXNumericEdit::SetDecimalSeparator(TCHAR chSeparator)
{
    if (!isSeparatorChar(chSeparator) || chSeparator == m_chGroupSeparator)
        return FALSE;
    TCHAR chOld = m_chDecimalSeparator;
    m_chDecimalSeparator = chSeparator;
    Reformat(chOld);
    return TRUE;
}

BOOL KxUiOXNumericEdit::SetShowLeadingZero(BOOL bShow)
{
    m_bShowLeadingZero = bShow != FALSE;
    Reformat(m_chDecimalSeparator);
    return TRUE;
}

BOOL KxUiOXNumericEdit::SetFractionalDigitCount(int nCount)
{
    if (nCount < 0 || nCount > kMaxFraction)
        return FALSE;
    m_nFractionalDigitCount = nCount;
    Reformat(m_chDecimalSeparator);
    return TRUE;
}

void KxUiOXNumericEdit::setInfiniteFractionalDigitCount(bool bInfinite)
{
    m_bInfiniteFractionalDigitCount = bInfinite;
    Reformat(m_chDecimalSeparator);
}

BOOL KxUiOXNumericEdit::SetDecimalDigitCount(int nCount)
{
    if (nCount < -1 || nCount > kMaxFraction)
        return FALSE;
    m_nDecimalDigitCount = nCount;
    Reformat(m_chDecimalSeparator);
    return TRUE;
}

BOOL KxUiOXNumericEdit::SetPositiveFormat(LPCTSTR lpszFormat)
{
    if (lpszFormat == nullptr || _tcsstr(lpszFormat, kPlaceholder) == nullptr)
        return FALSE;
    m_sPositiveFormat = lpszFormat;
    ChangeSign(m_bNegative);
    return TRUE;
}

BOOL KxUiOXNumericEdit::SetNegativeFormat(LPCTSTR lpszFormat)
{
    if (lpszFormat == nullptr || _tcsstr(lpszFormat, kPlaceholder) == nullptr)
        return FALSE;
    m_sNegativeFormat = lpszFormat;
    ChangeSign(m_bNegative);
    return TRUE;
}

void KxUiOXNumericEdit::SetNegativeTextColor(COLORREF clr, BOOL bRedraw)
{
    m_clrNegativeText = clr;
    if (bRedraw && m_hWnd != nullptr)
        ::InvalidateRect(m_hWnd, nullptr, TRUE);
}

// ---------------------------------------------------------------------------------------
// Sign and literals

void KxUiOXNumericEdit::SetLiterals(const CString& sBefore, const CString& sAfter)
{
    CString sMask = escapeLiteral(sBefore) + _T("#") + escapeLiteral(sAfter);
    if (sMask == m_sMask && sBefore == m_arrLeftLiterals && sAfter == m_arrRightLiterals)
        return;
    ParseMask(sMask);
    Update(-1);
}

BOOL KxUiOXNumericEdit::UpdateMask()
{
    const CString& sFormat = CurrentFormat();
    int nAt = sFormat.Find(kPlaceholder);
    if (nAt < 0)
        return FALSE;
    SetLiterals(sFormat.Left(nAt), sFormat.Mid(nAt + 3));
    return TRUE;
}

int KxUiOXNumericEdit::ChangeSign(BOOL bNegative)
{
    int nOldLeft = m_arrLeftLiterals.GetLength();
    bool bColourChanges = (m_bNegative != 0) != (bNegative != FALSE);
    m_bNegative = bNegative != FALSE;
    m_dValue = m_bNegative ? -std::fabs(m_dValue) : std::fabs(m_dValue);
    UpdateMask();
    if (bColourChanges && m_hWnd != nullptr)
        ::InvalidateRect(m_hWnd, nullptr, TRUE);
    return m_arrLeftLiterals.GetLength() - nOldLeft;
}

BOOL KxUiOXNumericEdit::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    BOOL bHandled = KxUiOXEdit::OnChildNotify(message, wParam, lParam, pResult);
    if (bHandled && m_bNegative && (message == WM_CTLCOLOREDIT || message == WM_CTLCOLORSTATIC))
        ::SetTextColor(reinterpret_cast<HDC>(wParam), m_clrNegativeText);
    return bHandled;
}

// ---------------------------------------------------------------------------------------
// Number

int KxUiOXNumericEdit::GetDecimalDigitsInserted() const
{
    int nCount = 0;
    for (int i = 0; i < m_arrInputData.GetLength() && m_arrInputData[i] != m_chDecimalSeparator; ++i)
        nCount += isDigit(m_arrInputData[i]);
    return nCount;
}

int KxUiOXNumericEdit::GetFractionalDigitsInserted() const
{
    int nSep = m_arrInputData.Find(m_chDecimalSeparator);
    int nCount = 0;
    for (int i = nSep + 1; nSep >= 0 && i < m_arrInputData.GetLength(); ++i)
        nCount += isDigit(m_arrInputData[i]);
    return nCount;
}

int KxUiOXNumericEdit::GetFractionalDigitsInsertedDifferentZero() const
{
    int nSep = m_arrInputData.Find(m_chDecimalSeparator);
    int nCount = 0, nUpToNonZero = 0;
    for (int i = nSep + 1; nSep >= 0 && i < m_arrInputData.GetLength(); ++i) {
        if (!isDigit(m_arrInputData[i]))
            continue;
        ++nCount;
        if (m_arrInputData[i] != _T('0'))
            nUpToNonZero = nCount;
    }
    return nUpToNonZero;
}

int KxUiOXNumericEdit::FindSymbol(TCHAR ch) const
{
    int n = m_arrInputData.Find(ch);
    return n >= 0 ? n + m_arrLeftLiterals.GetLength() : -1;
}

CString KxUiOXNumericEdit::GetInputData() const
{
    CString s = m_arrInputData;
    if (m_nGroupLength > 0)
        s.Remove(m_chGroupSeparator);
    return s;
}

BOOL KxUiOXNumericEdit::IsInputData(int nPosition) const
{
    if (!KxUiOXEdit::IsInputData(nPosition))
        return FALSE;
    TCHAR ch = m_arrInputData[nPosition - m_arrLeftLiterals.GetLength()];
    return ch != m_chDecimalSeparator && ch != m_chGroupSeparator;
}

int KxUiOXNumericEdit::ValidateInput()
{
    const TCHAR chDec = m_chDecimalSeparator;
    const CString sOld = m_arrInputData;
    const int nOldInteger = integerLength(sOld, chDec);

    // 1. An infinite fraction always offers one spare position after its last non-zero digit.
    if (m_bInfiniteFractionalDigitCount) {
        int nSep = sOld.ReverseFind(chDec);
        int nDigits = 0, nUpToNonZero = 0;
        for (int i = nSep + 1; nSep >= 0 && i < sOld.GetLength(); ++i) {
            if (!isDigit(sOld[i]))
                continue;
            ++nDigits;
            if (sOld[i] != _T('0'))
                nUpToNonZero = nDigits;
        }
        // Moving the count one step per change (down while it exceeds the digits by more
        // than one, up when the digits reach it) only settles at digits + 1; it is settled at
        // once, so that a pasted fraction keeps its digits and a text set from outside does
        // not show a trail of zeros that shrinks one keystroke at a time.
        m_nFractionalDigitCount = std::min(nUpToNonZero + 1, kMaxFraction);
    }

    // 2. Digits only, plus the last decimal separator; a leading "-" asks for a negative number.
    CString s;
    bool bTypedNegative = false, bSeparatorKept = false;
    for (int i = sOld.GetLength() - 1; i >= 0; --i) {
        TCHAR ch = sOld[i];
        if (isDigit(ch)) {
            s.Insert(0, ch);
        } else if (ch == chDec && !bSeparatorKept) {
            s.Insert(0, ch);
            bSeparatorKept = true;
        } else if (ch == _T('-') && i == 0) {
            bTypedNegative = true;
        }
    }

    // 3. No leading zeros in front of another integer digit.
    int nInt = integerLength(s, chDec);
    while (nInt >= 2 && s[0] == _T('0')) {
        s.Delete(0);
        --nInt;
    }
    const CString sBeforeFormat = s;

    // 4. No more fractional digits than the count.
    int nSep = s.Find(chDec);
    if (nSep >= 0 && s.GetLength() - nSep - 1 > m_nFractionalDigitCount)
        s = s.Left(nSep + 1 + m_nFractionalDigitCount);

    // 5. No more integer digits than the limit: the first ones go. A zero that comes to the
    // front this way goes too, as in step 3.
    if (m_nDecimalDigitCount != -1 && nInt > 0 && s[0] != _T('0') && nInt > m_nDecimalDigitCount) {
        s.Delete(0, nInt - m_nDecimalDigitCount);
        nInt = m_nDecimalDigitCount;
        while (nInt >= 2 && s[0] == _T('0')) {
            s.Delete(0);
            --nInt;
        }
    }

    // 6. Separator, padding and leading zero.
    if (m_nFractionalDigitCount > 0) {
        nSep = s.Find(chDec);
        if (nSep < 0) {
            nSep = s.GetLength();
            s += chDec;
        }
        int nFraction = s.GetLength() - nSep - 1;
        for (; nFraction < m_nFractionalDigitCount; ++nFraction)
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

    // 7. Group separators, counted leftwards from the decimal separator.
    if (m_nGroupLength > 0) {
        for (int i = nInt - m_nGroupLength; i > 0; i -= m_nGroupLength)
            s.Insert(i, m_chGroupSeparator);
    }

    m_arrInputData = s;
    // 8. The sign: asked for by a typed "-", else as it was.
    ChangeSign(bTypedNegative ? TRUE : m_bNegative);
    // 9.
    if (s != sBeforeFormat)
        Update(-1);

    // 10. The value. Only with grouping on is the separator turned into the full stop that
    // wcstod reads; without grouping a separator other than "." ends the number there.
    CString sValue = GetInputData();
    if (m_nGroupLength > 0)
        sValue.Replace(chDec, _T('.'));
    m_dValue = wcstod(sValue, nullptr);
    if (m_bNegative)
        m_dValue = -m_dValue;

    // The caret shift is the change of the integer part: padding or truncating the
    // fraction behind the caret must not move it, or typing into an infinite fraction
    // would jump over the spare position it has just been offered.
    return integerLength(s, chDec) - nOldInteger;
}

void KxUiOXNumericEdit::DeleteContents()
{
    KxUiOXEdit::DeleteContents();
    m_dValue = 0.0;
}

void KxUiOXNumericEdit::EmptyData(BOOL bOnlyInput)
{
    // The number is emptied to zero; the literals always come back from the formats.
    m_bNegative = 0;
    KxUiOXEdit::EmptyData(bOnlyInput);
    ValidateInput();
    Update(-1);
}

BOOL KxUiOXNumericEdit::SetValue(double dValue)
{
    if (!std::isfinite(dValue))
        return FALSE;
    double dAbs = std::fabs(dValue);
    if (dAbs >= 1e300)
        return FALSE;
    WCHAR buf[420]; // 300 integer digits, a separator and up to 101 fractional ones

    int nDigits = m_nFractionalDigitCount;
    if (m_bInfiniteFractionalDigitCount) {
        // The fewest fractional digits (up to 15) that give the value back, and a spare one.
        for (nDigits = 0; nDigits < 15; ++nDigits) {
            swprintf(buf, 420, L"%.*f", nDigits, dAbs);
            if (wcstod(buf, nullptr) == dAbs)
                break;
        }
        m_nFractionalDigitCount = nDigits + 1;
    }
    swprintf(buf, 420, L"%.*f", nDigits, dAbs);
    CString sText(buf);
    sText.Replace(_T('.'), m_chDecimalSeparator);
    m_bNegative = dValue < 0;
    m_arrInputData.Empty();
    return SetInputData(sText, 0);
}

int KxUiOXNumericEdit::DeleteRange(int& nSelectionStart, int& nSelectionEnd)
{
    // Only digits go: the decimal separator stays (the digits after it and those before it
    // are deleted apart), and group separators are the control's own. Deleting a group
    // separator alone would bring it straight back and leave Backspace stuck on it.
    const int nLeft = m_arrLeftLiterals.GetLength();
    int nFrom = std::max(nSelectionStart, nLeft);
    int nTo = std::min(nSelectionEnd, nLeft + m_arrInputData.GetLength());
    bool bDeleted = false;
    for (int p = nTo - 1; p >= nFrom; --p) {
        if (IsInputData(p)) {
            m_arrInputData.Delete(p - nLeft);
            bDeleted = true;
        }
    }
    if (!bDeleted)
        return 0;
    nSelectionStart = std::max(nFrom + ValidateInput(), m_arrLeftLiterals.GetLength());
    nSelectionEnd = nSelectionStart;
    return 1;
}

int KxUiOXNumericEdit::InsertAt(int nSelectionStart, TCHAR chNewChar)
{
    return TranslateSymbol(nSelectionStart, chNewChar, FALSE);
}

int KxUiOXNumericEdit::SetAt(int nSelectionStart, TCHAR chNewChar)
{
    return TranslateSymbol(nSelectionStart, chNewChar, TRUE);
}

// Inserts or replaces a character through the masked edit. The position it reports moves
// by the reformatting; when digits in front of it vanished (the first ones beyond the digit
// limit, zeros that came to the front) it can fall before the input area and even onto -1,
// the sign of refusal. A change that was made is reported at the input area's start
// instead; -1 is kept for keystrokes that changed nothing.
int KxUiOXNumericEdit::Place(int nPos, TCHAR ch, bool bReplace)
{
    const CString sBefore = m_arrInputData;
    int nResult = bReplace ? KxUiOXEdit::SetAt(nPos, ch) : KxUiOXEdit::InsertAt(nPos, ch);
    if (nResult >= 0)
        return nResult;
    return m_arrInputData == sBefore ? -1 : std::max(m_arrLeftLiterals.GetLength() - 1, 0);
}

int KxUiOXNumericEdit::TranslateSymbol(int nPos, TCHAR ch, BOOL bOverwrite)
{
    const TCHAR chDec = m_chDecimalSeparator;
    bool bDecimal = ch == chDec || (ch == _T('.') && m_bFullStopIsSeparator);
    if (!isDigit(ch) && !bDecimal && ch != _T('-'))
        return -1;

    if (ch == _T('-')) {
        int nShift = ChangeSign(!m_bNegative);
        // The caller puts the caret after the returned position. When the caret stands at
        // position 0 and the literals keep their length, that would be -1 (a refusal): the
        // sign change is made, so the caret goes one place on instead.
        return std::max(nPos + nShift - 1, 0);
    }

    if (bDecimal) {
        if (m_nFractionalDigitCount == 0)
            return -1;
        int nSep = FindSymbol(chDec);
        if (nSep >= 0)
            return GetNextInputLocation(nSep);
        return Place(m_arrLeftLiterals.GetLength() + m_arrInputData.GetLength(), chDec, false);
    }

    const int nLeft = m_arrLeftLiterals.GetLength();
    if (nPos == nLeft && !m_arrInputData.IsEmpty()) {
        TCHAR chFirst = m_arrInputData[0];
        if (ch == _T('0')) {
            if (!bOverwrite) {
                if (IsInputData(nPos))
                    return -1;
            } else {
                // Overwriting the first digit with a zero drops it. When what follows is
                // another digit the zero would not show, and the keystroke is refused
                // without changing anything.
                CString sSaved = m_arrInputData;
                int nSavedCount = m_nFractionalDigitCount;
                double dSaved = m_dValue;
                m_arrInputData.Delete(0);
                ValidateInput();
                if (!m_arrInputData.IsEmpty() && (m_arrInputData[0] == _T('0') || m_arrInputData[0] == chDec)) {
                    Update(-1);
                    return nPos;
                }
                m_arrInputData = sSaved;
                m_nFractionalDigitCount = nSavedCount;
                m_dValue = dSaved;
                Update(-1);
                return -1;
            }
        } else if (!bOverwrite && chFirst == chDec) {
            return Place(nPos, ch, false);
        } else if (bOverwrite && chFirst == _T('0')) {
            return Place(nPos, ch, true);
        }
    }

    if (bOverwrite)
        return Place(nPos, ch, true);

    int nSep = FindSymbol(chDec);
    if (nSep >= 0 && nSep < nPos) {
        if (GetFractionalDigitsInserted() >= m_nFractionalDigitCount)
            return Place(nPos, ch, true);
        return Place(nPos, ch, false);
    }
    // In the integer part a lone "0" is replaced, whether or not a fraction follows it:
    // typing into a fresh "0.00" gives "1.00", not "10.00".
    int nInt = GetDecimalDigitsInserted();
    if (nInt == 1 && m_arrInputData[0] == _T('0'))
        return Place(nLeft, ch, true);
    // At the digit limit a digit over another replaces it; at the end of the integer part
    // (where no digit stands) it is inserted and the first digit drops out.
    if (m_nDecimalDigitCount != -1 && nInt >= m_nDecimalDigitCount && IsInputData(nPos))
        return Place(nPos, ch, true);
    return Place(nPos, ch, false);
}

// ---------------------------------------------------------------------------------------
// Locale

// The format a locale number selects from a table; the snapshot's when there is none.
CString KxUiOXNumericEdit::LocaleFormat(const LocaleFormats& formats, const CString& sSnapshot)
{
    int nIndex = formats.table != nullptr ? localeNumber(formats.type) : -1;
    return nIndex >= 0 && nIndex < formats.count ? CString(formats.table[nIndex]) : sSnapshot;
}

void KxUiOXNumericEdit::ImportLocale(const LCTYPE types[5], const LocaleFormats& negative,
                                     const LocaleFormats& positive)
{
    const TCHAR chOldDecimal = m_chDecimalSeparator, chOldGroup = m_chGroupSeparator;
    CString sDecimal = localeText(types[0]), sGroup = localeText(types[1]);
    if (!sDecimal.IsEmpty() && isSeparatorChar(sDecimal[0]))
        takeLocale(m_chDecimalSeparator, m_locale.chDecimalSeparator, sDecimal[0]);
    if (!sGroup.IsEmpty() && isSeparatorChar(sGroup[0]))
        takeLocale(m_chGroupSeparator, m_locale.chGroupSeparator, sGroup[0]);
    if (m_chGroupSeparator == m_chDecimalSeparator) {
        // A locale value meeting a separator the application chose: both stay as they were.
        m_chDecimalSeparator = chOldDecimal;
        m_chGroupSeparator = chOldGroup;
    }
    int nLeadingZero = localeNumber(types[2]);
    if (nLeadingZero >= 0)
        takeLocale(m_bShowLeadingZero, m_locale.bShowLeadingZero, nLeadingZero ? 1 : 0);
    int nGroup = localeNumber(types[3]);
    if (nGroup >= 0 && nGroup <= kMaxFraction)
        takeLocale(m_nGroupLength, m_locale.nGroupLength, nGroup);
    int nDigits = localeNumber(types[4]);
    if (nDigits >= 0 && nDigits <= kMaxFraction)
        takeLocale(m_nFractionalDigitCount, m_locale.nFractionalDigitCount, nDigits);
    takeLocale(m_sNegativeFormat, m_locale.sNegativeFormat, LocaleFormat(negative, m_locale.sNegativeFormat));
    takeLocale(m_sPositiveFormat, m_locale.sPositiveFormat, LocaleFormat(positive, m_locale.sPositiveFormat));
    Reformat(chOldDecimal);
}

BOOL KxUiOXNumericEdit::GetLocaleSettings()
{
    static const LCTYPE types[5] = {LOCALE_SDECIMAL, LOCALE_STHOUSAND, LOCALE_ILZERO,
                                    LOCALE_SGROUPING, LOCALE_IDIGITS};
    ImportLocale(types, {LOCALE_INEGNUMBER, kNegativeNumberFormats, 5}, {0, nullptr, 0});
    return TRUE;
}

// ---------------------------------------------------------------------------------------
// Use as the editor of a list cell

BOOL KxUiOXNumericEdit::CreateCellEditor(const RECT& rect, CWnd* pParentWnd, UINT nID,
                                         int nFractionalDigitCount, bool bInfinite, LPCTSTR lpszText)
{
    if (!Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, rect, pParentWnd, nID))
        return FALSE;
    SetMask(_T("#"));
    SetGroupLength(0);
    SetGroupSeparator(_T(' '));
    SetFractionalDigitCount(nFractionalDigitCount);
    setInfiniteFractionalDigitCount(bInfinite);
    SetDecimalDigitCount(-1);
    CString sDecimal = localeText(LOCALE_SDECIMAL);
    if (!sDecimal.IsEmpty())
        SetDecimalSeparator(sDecimal[0]);
    SetShowLeadingZero(TRUE);
    // Formats "1,1" with the locale's separator: where that is not "." they hold no "1.1"
    // and are refused, and the default formats stay.
    CString sFormat = _T("1,1");
    if (!sDecimal.IsEmpty())
        sFormat.Replace(_T(','), sDecimal[0]);
    SetNegativeFormat(sFormat);
    SetPositiveFormat(sFormat);
    ::SetWindowTextW(m_hWnd, lpszText ? lpszText : _T(""));
    ::SendMessageW(m_hWnd, EM_SETSEL, 0, -1);
    ::SendMessageW(m_hWnd, EM_SCROLLCARET, 0, 0);
    return TRUE;
}

LRESULT KxUiOXNumericEdit::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    // A character the number can never take does not delete the selection it is typed
    // over: it is refused before anything changes.
    if (message == WM_CHAR && wParam >= 0x20 && wParam != 0x7F &&
        !(::GetWindowLongPtrW(m_hWnd, GWL_STYLE) & ES_READONLY)) {
        TCHAR ch = static_cast<TCHAR>(wParam);
        bool bAccepted = isDigit(ch) || ch == _T('-') || ch == m_chDecimalSeparator ||
                         (ch == _T('.') && m_bFullStopIsSeparator);
        DWORD dwStart = 0, dwEnd = 0;
        ::SendMessageW(m_hWnd, EM_GETSEL, reinterpret_cast<WPARAM>(&dwStart), reinterpret_cast<LPARAM>(&dwEnd));
        if (!bAccepted && dwStart != dwEnd) {
            ValidationError();
            return 0;
        }
    }
    return KxUiOXEdit::WindowProc(message, wParam, lParam);
}

// ---------------------------------------------------------------------------------------
// Dialog data exchange

namespace {

KxUiOXNumericEdit* numericEditOf(CDataExchange* pDX, int nIDC)
{
    if (pDX == nullptr)
        return nullptr;
    HWND hCtrl = pDX->PrepareEditCtrl(nIDC);
    return hCtrl != nullptr ? dynamic_cast<KxUiOXNumericEdit*>(CWnd::FromHandlePermanent(hCtrl)) : nullptr;
}

template <typename T>
void exchange(CDataExchange* pDX, int nIDC, T& value)
{
    KxUiOXNumericEdit* pEdit = numericEditOf(pDX, nIDC);
    if (pEdit == nullptr)
        return;
    if (!pDX->m_bSaveAndValidate) {
        pEdit->SetValue(static_cast<double>(value));
    } else if (std::is_integral<T>::value) {
        double d = std::round(pEdit->GetValue());
        value = static_cast<T>(std::max<double>(std::min<double>(d, std::numeric_limits<T>::max()),
                                                std::numeric_limits<T>::lowest()));
    } else {
        value = static_cast<T>(pEdit->GetValue());
    }
}

} // namespace

void AFXAPI DDX_KXUIOXNumericEdit(CDataExchange* pDX, int nIDC, double& value)
{
    exchange(pDX, nIDC, value);
}

void AFXAPI DDX_KXUIOXNumericEdit(CDataExchange* pDX, int nIDC, float& value)
{
    exchange(pDX, nIDC, value);
}

void AFXAPI DDX_KXUIOXNumericEdit(CDataExchange* pDX, int nIDC, int& value)
{
    exchange(pDX, nIDC, value);
}
