// Cells and rows of the extended list.
#include "XData.h"
#include <oleauto.h>
#include <cwchar>
#include <new>

using namespace XControl;

namespace XData {

SUBITEM::SUBITEM()
    : m_bEnabled(true), m_nType(TypeText), m_pDefine(nullptr), m_clrText(::GetSysColor(COLOR_WINDOWTEXT)),
      m_clrBk(::GetSysColor(COLOR_WINDOW)), m_bBold(false), m_nBitmap1(-1), m_nBitmap2(-1)
{
}

SUBITEM::SUBITEM(const SUBITEM& src) : m_pDefine(nullptr)
{
    *this = src;
}

SUBITEM& SUBITEM::operator=(const SUBITEM& src)
{
    if (this == &src)
        return *this;
    m_bEnabled = src.m_bEnabled;
    m_nType = src.m_nType;
    // The copy gets a definition of its own: editing one cell's combo items must not change
    // another's.
    setDefineControl(src.m_pDefine != nullptr ? src.m_pDefine->clone() : nullptr);
    m_strText = src.m_strText;
    m_strToolTip = src.m_strToolTip;
    m_clrText = src.m_clrText;
    m_clrBk = src.m_clrBk;
    m_bBold = src.m_bBold;
    m_nBitmap1 = src.m_nBitmap1;
    m_nBitmap2 = src.m_nBitmap2;
    return *this;
}

SUBITEM::~SUBITEM()
{
    delete m_pDefine;
}

int SUBITEM::setControl(const CString& strText, int nType, TagDefine* pDefine)
{
    setDefineControl(pDefine);
    m_nType = nType;
    m_strText = strText;
    return 1;
}

void SUBITEM::setDefineControl(TagDefine* pDefine)
{
    if (pDefine != m_pDefine)
        delete m_pDefine;
    m_pDefine = pDefine;
}

int SUBITEM::define(const CString& strText, int nType, TagDefine* pDefine, bool bDefine)
{
    if (bDefine)
        return setControl(strText, nType, pDefine);
    delete pDefine;
    return setControl(strText, nType, m_pDefine);
}

int SUBITEM::SetItemText(const CString& strText, bool bDefine)
{
    return setControl(strText, TypeText, bDefine ? nullptr : m_pDefine);
}

int SUBITEM::SetEditText(const CString& strText, bool)
{
    return setControl(strText, TypeEdit, nullptr);
}

int SUBITEM::SetEditNum(const CString& strText, bool bIntegerOnly, bool bDefine)
{
    return define(strText, TypeEditNum, bDefine ? new (std::nothrow) DefineEditNum(bIntegerOnly) : nullptr,
                  bDefine);
}

int SUBITEM::SetEditNum(int nValue, bool bDefine)
{
    CString str;
    str.Format(_T("%d"), nValue);
    return SetEditNum(str, true, bDefine);
}

int SUBITEM::SetEditNum(double dValue, bool bDefine)
{
    CString str;
    VARIANT v;
    ::VariantInit(&v);
    v.vt = VT_R8;
    v.dblVal = dValue;
    if (SUCCEEDED(::VariantChangeType(&v, &v, 0, VT_BSTR)) && v.bstrVal != nullptr)
        str = v.bstrVal;
    ::VariantClear(&v);
    return SetEditNum(str, false, bDefine);
}

int SUBITEM::SetOxEditNum(const CString& strText, bool bInfinite, UINT nFractionalDigits, bool bDefine)
{
    return define(strText, TypeOxEditNum,
                  bDefine ? new (std::nothrow) DefineOxEditNum(bInfinite, nFractionalDigits) : nullptr, bDefine);
}

int SUBITEM::SetComboBox(const CStringArray& items, int nLines, int nSel, bool bDefine)
{
    if (nSel < -1 || nSel >= items.GetSize())
        nSel = -1;
    CString strText = nSel >= 0 ? items[nSel] : CString();
    DefineComboBox* pDef = nullptr;
    if (bDefine && (pDef = new (std::nothrow) DefineComboBox) != nullptr) {
        pDef->m_items.Copy(items);
        pDef->m_nLines = nLines;
        pDef->m_nSel = nSel;
    }
    return define(strText, TypeComboBox, pDef, bDefine);
}

int SUBITEM::SetComboBox(const CStringArray& items, const CString& strText, bool bDefine)
{
    int nSel = -1;
    for (INT_PTR i = 0; i < items.GetSize(); ++i) {
        if (items[i] == strText) {
            nSel = (int)i;
            break;
        }
    }
    return SetComboBox(items, (int)items.GetSize(), nSel, bDefine);
}

int SUBITEM::SetComboBoxEdit(const CStringArray& items, int nSel, bool bDefine)
{
    const CString& strText = items.GetAt(nSel);  // a bad index raises the invalid-argument exception
    return SetComboBoxEdit(items, (int)items.GetSize(), strText, bDefine);
}

int SUBITEM::SetComboBoxEdit(const CStringArray& items, int nLines, const CString& strText, bool bDefine)
{
    DefineComboBoxEdit* pDef = nullptr;
    if (bDefine && (pDef = new (std::nothrow) DefineComboBoxEdit) != nullptr) {
        pDef->m_items.Copy(items);
        pDef->m_nLines = nLines;
        pDef->m_nSel = -1;
        pDef->m_strText = strText;
    }
    CString str(strText);  // strText may be an item of this cell's own definition
    return define(str, TypeComboBoxEdit, pDef, bDefine);
}

int SUBITEM::setState(int nType, int nState, bool bDefine)
{
    return define(CString(), nType, bDefine ? new (std::nothrow) DefineRadioButton((signed char)(nState & 0xFF)) : nullptr,
                  bDefine);
}

int SUBITEM::SetCheckbox(int nState, bool bDefine)
{
    return setState(TypeCheckBox, nState, bDefine);
}

int SUBITEM::SetCheckboxBitmap(int nState, int nBitmap1, int nBitmap2, bool bDefine)
{
    m_nBitmap1 = nBitmap1;
    m_nBitmap2 = nBitmap2;
    return setState(TypeCheckBoxBitmap, nState, bDefine);
}

int SUBITEM::SetBitmap(int nState, int nBitmap1, int nBitmap2, bool bDefine)
{
    m_nBitmap1 = nBitmap1;
    m_nBitmap2 = nBitmap2;
    return setState(TypeBitmap, nState, bDefine);
}

int SUBITEM::SetRadioButtonV(int nState, bool bDefine)
{
    return setState(TypeRadioV, nState, bDefine);
}

int SUBITEM::SetRadioButtonH(int nState, bool bDefine)
{
    return setState(TypeRadioH, nState, bDefine);
}

int SUBITEM::SetColorDialog(bool bDefine)
{
    return define(CString(), TypeColorDialog, bDefine ? new (std::nothrow) DefineColorDialog : nullptr, bDefine);
}

int SUBITEM::SetButton(const CString& strCaption, bool)
{
    return setControl(strCaption, TypeButton, nullptr);
}

CString SUBITEM::getText() const
{
    if (m_nType == TypeCheckBox || m_nType == TypeCheckBoxBitmap || m_nType == TypeBitmap) {
        CString str;
        str.Format(_T("%d"), GetCheckbox());
        return str;
    }
    return m_strText;
}

int SUBITEM::GetCheckbox() const
{
    if (m_nType != TypeCheckBox && m_nType != TypeCheckBoxBitmap && m_nType != TypeRadioV && m_nType != TypeRadioH)
        return -1;
    const DefineRadioButton* p = dynamic_cast<const DefineRadioButton*>(m_pDefine);
    return p != nullptr ? p->m_cState : -1;
}

int SUBITEM::GetInitialComboSel() const
{
    if (m_nType != TypeComboBox)
        return -1;
    const DefineComboBox* p = dynamic_cast<const DefineComboBox*>(m_pDefine);
    return p != nullptr ? p->m_nSel : -1;
}

double SUBITEM::GetEditNumValue() const
{
    CString str(m_strText);
    str.Replace(_T(','), _T('.'));
    return wcstod(str, nullptr);
}

XUtil::TextCompareType SUBITEM::getCompareText(CString& strText) const
{
    switch (m_nType) {
    case TypeEditNum:
    case TypeOxEditNum:
    case TypeReserved6:
    case TypeReserved7:
        strText = m_strText;
        return XUtil::CompareAsNumber;
    case TypeCheckBox:
    case TypeCheckBoxBitmap:
    case TypeBitmap:
    case TypeRadioV:
    case TypeRadioH: {
        const DefineRadioButton* p = dynamic_cast<const DefineRadioButton*>(m_pDefine);
        strText.Format(_T("%d"), p != nullptr ? (int)p->m_cState : -1);
        return XUtil::CompareAsText;
    }
    default:
        strText = m_strText;
        if (XUtil::isDate(strText))
            return XUtil::CompareAsDate;
        if (XUtil::IsNumber(strText) != 0)
            return XUtil::CompareAsNumber;
        return XUtil::CompareAsText;
    }
}

int SUBITEM::compareTo(const SUBITEM& other) const
{
    CString s1, s2;
    XUtil::TextCompareType t1 = getCompareText(s1);
    XUtil::TextCompareType t2 = other.getCompareText(s2);
    if (t1 == XUtil::CompareAsNumber && t2 == XUtil::CompareAsNumber) {
        s1.Replace(_T(','), _T('.'));
        s2.Replace(_T(','), _T('.'));
        return XUtil::NumberCompare(s1, s2);
    }
    if (t1 == XUtil::CompareAsDate && t2 == XUtil::CompareAsDate)
        return XUtil::DateCompare(s1, s2);
    int n = ::lstrcmpW(s1, s2);
    return n < 0 ? -1 : (n > 0 ? 1 : 0);
}

SUBITEMARRAY::SUBITEMARRAY(const SUBITEMARRAY& src) : CArray(), m_nState(0), m_nItemValue(0), m_bEnabled(true)
{
    *this = src;
}

SUBITEMARRAY& SUBITEMARRAY::operator=(const SUBITEMARRAY& src)
{
    if (this != &src) {
        m_nState = src.m_nState;
        m_nItemValue = src.m_nItemValue;
        m_bEnabled = src.m_bEnabled;
        Copy(src);
    }
    return *this;
}

SUBITEMARRAY::~SUBITEMARRAY() = default;

XUtil::CompareResult SUBITEMARRAY::compareTo(const SUBITEMARRAY& other, int nCol, bool bAscending) const
{
    int n = GetAt(nCol).compareTo(other.GetAt(nCol));
    if (!bAscending)
        n = -n;
    return (XUtil::CompareResult)n;
}

}  // namespace XData
