#include "KxUiOXNumericEdit.h"
#include <tchar.h>

IMPLEMENT_DYNCREATE(KxUiOXCurrencyEdit, KxUiOXNumericEdit)

KxUiOXCurrencyEdit::KxUiOXCurrencyEdit()
    : KxUiOXNumericEdit(KxUiNumberModel::kindCurrency), m_sCurrencyName(_T("$"))
{
    // The numeric edit built the literals before this object's name existed.
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

CString KxUiOXCurrencyEdit::ExpandFormatLiteral(const CString& sFormatPart) const
{
    CString s = sFormatPart;
    s.Replace(_T("$"), m_sCurrencyName);
    return s;
}
