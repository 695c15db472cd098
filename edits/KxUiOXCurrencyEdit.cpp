#include "KxUiOXNumericEdit.h"
#include <tchar.h>

namespace {

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

} // namespace

IMPLEMENT_DYNCREATE(KxUiOXCurrencyEdit, KxUiOXNumericEdit)

KxUiOXCurrencyEdit::KxUiOXCurrencyEdit()
    : m_sCurrencyName(_T("$")), m_sLocaleCurrencyName(_T("$"))
{
    m_sNegativeFormat = m_locale.sNegativeFormat = _T("($1.1)");
    m_sPositiveFormat = m_locale.sPositiveFormat = _T("$1.1");
    UpdateMask();
}

KxUiOXCurrencyEdit::~KxUiOXCurrencyEdit() = default;

BOOL KxUiOXCurrencyEdit::SetCurrencyName(LPCTSTR lpszName)
{
    if (lpszName == nullptr || *lpszName == 0)
        return FALSE;
    CString sSaved = GetInputData();
    m_sCurrencyName = lpszName;
    m_arrInputData.Empty();
    SetInputData(sSaved, 0);
    return TRUE;
}

BOOL KxUiOXCurrencyEdit::UpdateMask()
{
    const CString& sFormat = CurrentFormat();
    int nAt = sFormat.Find(_T("1.1"));
    if (nAt < 0)
        return FALSE;
    CString sBefore = sFormat.Left(nAt), sAfter = sFormat.Mid(nAt + 3);
    sBefore.Replace(_T("$"), m_sCurrencyName);
    sAfter.Replace(_T("$"), m_sCurrencyName);
    SetLiterals(sBefore, sAfter);
    return TRUE;
}

BOOL KxUiOXCurrencyEdit::GetLocaleSettings()
{
    // The currency name is the application's: the locale's symbol is not taken.
    static const LCTYPE types[5] = {LOCALE_SMONDECIMALSEP, LOCALE_SMONTHOUSANDSEP, LOCALE_ILZERO,
                                    LOCALE_SMONGROUPING, LOCALE_ICURRDIGITS};
    ImportLocale(types, {LOCALE_INEGCURR, kNegativeCurrencyFormats, 16},
                 {LOCALE_ICURRENCY, kPositiveCurrencyFormats, 4});
    return TRUE;
}
