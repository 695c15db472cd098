#include "KxUiOXNumericEdit.h"
#include <algorithm>
#include <cmath>
#include <limits>
#include <tchar.h>
#include <type_traits>

IMPLEMENT_DYNCREATE(KxUiOXNumericEdit, KxUiOXEdit)

BEGIN_MESSAGE_MAP(KxUiOXNumericEdit, KxUiOXEdit)
    ON_WM_CHAR()
    ON_WM_CTLCOLOR_REFLECT()
END_MESSAGE_MAP()

namespace {

CString escapeLiteral(const CString& s)
{
    CString t = s;
    t.Replace(_T("#"), _T("##"));
    return t;
}

CString localeText(LCTYPE type)
{
    WCHAR buf[96] = {};
    if (::GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buf, 96) <= 0)
        return CString();
    return CString(buf);
}

} // namespace

KxUiOXNumericEdit::KxUiOXNumericEdit() : KxUiOXNumericEdit(KxUiNumberModel::kindNumber)
{
}

KxUiOXNumericEdit::KxUiOXNumericEdit(KxUiNumberModel::Kind kind)
    : m_number(kind), m_clrNegativeText(m_clrText)
{
    ValidateInput();
}

KxUiOXNumericEdit::~KxUiOXNumericEdit() = default;

// ---------------------------------------------------------------------------------------
// Settings

BOOL KxUiOXNumericEdit::Reformat(bool bChanged)
{
    if (!bChanged)
        return FALSE;
    m_arrInputData = m_number.GetText();
    ValidateInput();
    Update(-1);
    return TRUE;
}

BOOL KxUiOXNumericEdit::SetGroupSeparator(TCHAR chSeparator)
{
    return Reformat(m_number.SetGroupSeparator(chSeparator));
}

BOOL KxUiOXNumericEdit::SetGroupLength(int nLength)
{
    return Reformat(m_number.SetGroupLength(nLength));
}

BOOL KxUiOXNumericEdit::SetDecimalSeparator(TCHAR chSeparator)
{
    return Reformat(m_number.SetDecimalSeparator(chSeparator));
}

BOOL KxUiOXNumericEdit::SetShowLeadingZero(BOOL bShow)
{
    m_number.SetShowLeadingZero(bShow != FALSE);
    return Reformat(true);
}

BOOL KxUiOXNumericEdit::SetFractionalDigitCount(int nCount)
{
    return Reformat(m_number.SetFractionalDigitCount(nCount));
}

void KxUiOXNumericEdit::setInfiniteFractionalDigitCount(bool bInfinite)
{
    m_number.SetInfiniteFractionalDigitCount(bInfinite);
    Reformat(true);
}

BOOL KxUiOXNumericEdit::SetDecimalDigitCount(int nCount)
{
    return Reformat(m_number.SetDecimalDigitCount(nCount));
}

BOOL KxUiOXNumericEdit::SetPositiveFormat(LPCTSTR lpszFormat)
{
    if (!m_number.SetPositiveFormat(lpszFormat))
        return FALSE;
    ChangeSign(m_number.IsNegative());
    return TRUE;
}

BOOL KxUiOXNumericEdit::SetNegativeFormat(LPCTSTR lpszFormat)
{
    if (!m_number.SetNegativeFormat(lpszFormat))
        return FALSE;
    ChangeSign(m_number.IsNegative());
    return TRUE;
}

void KxUiOXNumericEdit::SetNegativeTextColor(COLORREF clr, BOOL bRedraw)
{
    m_clrNegativeText = clr;
    if (bRedraw && m_hWnd != nullptr)
        ::InvalidateRect(m_hWnd, nullptr, TRUE);
}

BOOL KxUiOXNumericEdit::GetLocaleSettings()
{
    m_number.ImportLocale();
    return Reformat(true);
}

// ---------------------------------------------------------------------------------------
// Sign and literals

void KxUiOXNumericEdit::SetLiterals(const CString& sBefore, const CString& sAfter)
{
    if (sBefore == m_arrLeftLiterals && sAfter == m_arrRightLiterals)
        return;
    m_arrLeftLiterals = sBefore;
    m_arrRightLiterals = sAfter;
    // The mask that describes the literals, for GetMask. A right literal that begins with
    // "#" has no exact mask ("#" right after the input marker would pair with it), which
    // is why the literals are set here and not parsed back from this text.
    m_sMask = escapeLiteral(sBefore) + _T("#") + escapeLiteral(sAfter);
    Update(-1);
}

CString KxUiOXNumericEdit::ExpandFormatLiteral(const CString& sFormatPart) const
{
    return sFormatPart;
}

BOOL KxUiOXNumericEdit::UpdateMask()
{
    CString sBefore, sAfter;
    if (!KxUiNumberModel::SplitFormat(m_number.GetCurrentFormat(), sBefore, sAfter))
        return FALSE;
    SetLiterals(ExpandFormatLiteral(sBefore), ExpandFormatLiteral(sAfter));
    return TRUE;
}

int KxUiOXNumericEdit::ChangeSign(BOOL bNegative)
{
    int nOldLeft = m_arrLeftLiterals.GetLength();
    bool bColourChanges = m_number.IsNegative() != (bNegative != FALSE);
    m_number.SetNegative(bNegative != FALSE);
    UpdateMask();
    if (bColourChanges && m_hWnd != nullptr)
        ::InvalidateRect(m_hWnd, nullptr, TRUE);
    return m_arrLeftLiterals.GetLength() - nOldLeft;
}

HBRUSH KxUiOXNumericEdit::CtlColor(CDC* pDC, UINT nCtlColor)
{
    HBRUSH hBrush = KxUiOXEdit::CtlColor(pDC, nCtlColor);
    if (hBrush != nullptr && m_number.IsNegative())
        pDC->SetTextColor(m_clrNegativeText);
    return hBrush;
}

// ---------------------------------------------------------------------------------------
// Number

int KxUiOXNumericEdit::FindSymbol(TCHAR ch) const
{
    int n = m_arrInputData.Find(ch);
    return n >= 0 ? n + m_arrLeftLiterals.GetLength() : -1;
}

CString KxUiOXNumericEdit::GetInputData() const
{
    CString s = m_arrInputData;
    if (m_number.GetGroupLength() > 0)
        s.Remove(m_number.GetGroupSeparator());
    return s;
}

BOOL KxUiOXNumericEdit::IsInputData(int nPosition) const
{
    if (!KxUiOXEdit::IsInputData(nPosition))
        return FALSE;
    TCHAR ch = m_arrInputData[nPosition - m_arrLeftLiterals.GetLength()];
    return ch != m_number.GetDecimalSeparator() && ch != m_number.GetGroupSeparator();
}

int KxUiOXNumericEdit::ValidateInput()
{
    // The model normalises the input and reads its value; a "-" typed in front makes the
    // number negative. The literals follow the sign.
    const CString sRaw = m_arrInputData;
    const bool bWasNegative = m_number.IsNegative();
    int nShift = m_number.SetText(sRaw);
    m_arrInputData = m_number.GetText();
    ChangeSign(m_number.IsNegative());
    if (bWasNegative != m_number.IsNegative() && m_hWnd != nullptr)
        ::InvalidateRect(m_hWnd, nullptr, TRUE); // the negative text colour
    if (m_arrInputData != sRaw)
        Update(-1);
    return nShift;
}

void KxUiOXNumericEdit::DeleteContents()
{
    KxUiOXEdit::DeleteContents();
    m_number.SetText(CString());
}

void KxUiOXNumericEdit::EmptyData(BOOL bOnlyInput)
{
    // The number is emptied to zero; the literals always come back from the formats.
    m_number.SetNegative(false);
    KxUiOXEdit::EmptyData(bOnlyInput);
    ValidateInput();
    Update(-1);
}

BOOL KxUiOXNumericEdit::SetValue(double dValue)
{
    return Reformat(m_number.SetValue(dValue));
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
    if (!m_number.AcceptsKey(ch))
        return -1;
    const TCHAR chDec = m_number.GetDecimalSeparator();

    if (ch == _T('-')) {
        int nShift = ChangeSign(!m_number.IsNegative());
        // The caller puts the caret after the returned position. When the caret stands at
        // position 0 and the literals keep their length, that would be -1 (a refusal): the
        // sign change is made, so the caret goes one place on instead.
        return std::max(nPos + nShift - 1, 0);
    }

    if (m_number.IsDecimalKey(ch)) {
        if (m_number.GetFractionalDigitCount() == 0)
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
                const CString sSaved = m_arrInputData;
                const KxUiNumberModel saved = m_number;
                m_arrInputData.Delete(0);
                ValidateInput();
                if (!m_arrInputData.IsEmpty() && (m_arrInputData[0] == _T('0') || m_arrInputData[0] == chDec)) {
                    Update(-1);
                    return nPos;
                }
                m_arrInputData = sSaved;
                m_number = saved;
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
        // A complete fraction takes a digit over the one at the caret. An infinite one
        // grows by insertion, except over the lone "0" that only holds its place: typing
        // 1 into "1.0" gives "1.1", not "1.10".
        if (!m_number.GetInfiniteFractionalDigitCount())
            return Place(nPos, ch, m_number.GetFractionalDigitsShown() >= m_number.GetFractionalDigitCount());
        const bool bPadding = nPos == nSep + 1 && m_number.GetFractionalDigitsShown() == 1 &&
                              m_number.GetSignificantFractionalDigits() == 0;
        return Place(nPos, ch, bPadding);
    }
    // In the integer part a lone "0" is replaced, whether or not a fraction follows it:
    // typing into a fresh "0.00" gives "1.00", not "10.00".
    int nInt = m_number.GetIntegerDigitCount();
    if (nInt == 1 && m_arrInputData[0] == _T('0'))
        return Place(nLeft, ch, true);
    // At the digit limit a digit over another replaces it; at the end of the integer part
    // (where no digit stands) it is inserted and the first digit drops out.
    const int nLimit = m_number.GetDecimalDigitCount() == -1 ? KxUiNumberModel::kMaxIntegerDigits
                                                             : m_number.GetDecimalDigitCount();
    if (nInt >= nLimit && IsInputData(nPos))
        return Place(nPos, ch, true);
    return Place(nPos, ch, false);
}

void KxUiOXNumericEdit::OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    // A character the number can never take does not delete the selection it is typed
    // over: it is refused before anything changes.
    if (nChar >= 0x20 && nChar != 0x7F && !(::GetWindowLongPtrW(m_hWnd, GWL_STYLE) & ES_READONLY) &&
        !m_number.AcceptsKey(static_cast<TCHAR>(nChar))) {
        int nStart, nEnd;
        GetSelection(nStart, nEnd);
        if (nStart != nEnd) {
            ValidationError();
            return;
        }
    }
    KxUiOXEdit::OnChar(nChar, nRepCnt, nFlags);
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
