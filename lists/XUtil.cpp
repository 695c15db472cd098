// Comparison helpers of the extended list's sort.
#include "XUtil.h"
#include <oleauto.h>
#include <cwchar>

namespace XUtil {

int IsNumber(LPCTSTR lpszText, int nLength)
{
    if (lpszText == nullptr)
        return 0;
    // 0: nothing seen yet; 1: digits or a leading "."; 2: a leading ",". A separator after a
    // digit ends the number: old sort orders depend on "1.5" comparing as text.
    int nState = 0;
    for (int i = 0; (nLength < 0 || i < nLength) && lpszText[i] != 0; ++i) {
        TCHAR ch = lpszText[i];
        if (ch == _T(',')) {
            if (nState != 0)
                return 0;
            nState = 2;
        } else if (ch == _T('.')) {
            if (nState != 0)
                return 0;
            nState = 1;
        } else if (ch >= _T('0') && ch <= _T('9')) {
            if (nState == 0)
                nState = 1;
        } else {
            return 0;
        }
    }
    return nState;
}

static bool parseDate(LPCTSTR lpszText, DATE& date)
{
    if (lpszText == nullptr || *lpszText == 0)
        return false;
    return SUCCEEDED(::VarDateFromStr(const_cast<LPOLESTR>(lpszText), LOCALE_USER_DEFAULT, 0, &date));
}

bool isDate(LPCTSTR lpszText)
{
    DATE date;
    return parseDate(lpszText, date);
}

static int sign(double dDiff)
{
    return dDiff < 0 ? -1 : (dDiff > 0 ? 1 : 0);
}

int DateCompare(LPCTSTR lpszFirst, LPCTSTR lpszSecond)
{
    DATE d1 = 0, d2 = 0;
    bool b1 = parseDate(lpszFirst, d1), b2 = parseDate(lpszSecond, d2);
    if (b1 != b2)
        return b1 ? 1 : -1;
    return sign(d1 - d2);
}

int NumberCompare(LPCTSTR lpszFirst, LPCTSTR lpszSecond)
{
    double d1 = lpszFirst ? wcstod(lpszFirst, nullptr) : 0.0;
    double d2 = lpszSecond ? wcstod(lpszSecond, nullptr) : 0.0;
    return sign(d1 - d2);
}

int NumberCompare(const CString& strFirst, const CString& strSecond)
{
    return NumberCompare((LPCTSTR)strFirst, (LPCTSTR)strSecond);
}

static double variantNumber(LPCTSTR lpszText)
{
    if (lpszText == nullptr)
        return 0;
    double d = 0;
    BSTR bstr = ::SysAllocString(lpszText);
    if (bstr == nullptr)
        return 0;
    VARIANT v;
    ::VariantInit(&v);
    v.vt = VT_BSTR;
    v.bstrVal = bstr;
    if (SUCCEEDED(::VariantChangeType(&v, &v, 0, VT_R8)))
        d = v.dblVal;
    ::VariantClear(&v);
    return d;
}

int NumberCompareVariant(LPCTSTR lpszFirst, LPCTSTR lpszSecond)
{
    return sign(variantNumber(lpszFirst) - variantNumber(lpszSecond));
}

void TransformeEntierOuReel(CString& strText)
{
    TCHAR chSep = 0;
    if (strText.Find(_T(',')) >= 0)
        chSep = _T(',');
    else if (strText.Find(_T('.')) >= 0)
        chSep = _T('.');
    else
        return;
    strText.TrimRight(_T('0'));
    if (!strText.IsEmpty() && strText[strText.GetLength() - 1] == chSep)
        strText.Truncate(strText.GetLength() - 1);
}

TCHAR getCurrentFractionnalDigit()
{
    TCHAR sz[8] = {0};
    if (::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, sz, 8) <= 0)
        return _T('.');
    return sz[0];
}

void quickSort(CUIntArray& indexes, const CStringArray& strings, int nMode)
{
    INT_PTR n = strings.GetSize();
    indexes.SetSize(n);
    for (INT_PTR i = 0; i < n; ++i)
        indexes[i] = (UINT)i;
    if (n >= 2)
        QuickSortRecursive(0, (int)n - 1, indexes, strings, nMode);
}

void QuickSortRecursive(int nLow, int nHigh, CUIntArray& indexes, const CStringArray& strings, int nMode)
{
    int i = nLow, j = nHigh;
    const CString pivot = strings[indexes[(nLow + nHigh) / 2]];
    // Hoare partition: only the indexes move. Mode 0 puts greater strings first.
    do {
        if (nMode == 0) {
            while (strings[indexes[i]].Compare(pivot) > 0)
                ++i;
            while (strings[indexes[j]].Compare(pivot) < 0)
                --j;
        } else {
            while (strings[indexes[i]].Compare(pivot) < 0)
                ++i;
            while (strings[indexes[j]].Compare(pivot) > 0)
                --j;
        }
        if (i <= j) {
            UINT t = indexes[i];
            indexes[i] = indexes[j];
            indexes[j] = t;
            ++i;
            --j;
        }
    } while (i <= j);
    if (nLow < j)
        QuickSortRecursive(nLow, j, indexes, strings, nMode);
    if (i < nHigh)
        QuickSortRecursive(i, nHigh, indexes, strings, nMode);
}

}  // namespace XUtil
