// XUtil: comparison helpers of the extended list's sort.
//
// The extended list sorts a column by comparing cell texts. A text can be compared as a date
// (parsed in the user's default locale), as a number, or as plain text; these functions decide
// which and do the comparing. quickSort orders an index array over a string array, leaving the
// strings where they are.
//
//     CStringArray names;  names.Add(L"pear");  names.Add(L"apple");
//     CUIntArray order;
//     XUtil::quickSort(order, names, 1);      // order = 1, 0 (ascending)
#pragma once
#include "KxUiDef.h"
#include <afxcoll.h>

namespace XUtil {

// Result of a comparison.
enum CompareResult { CompareLess = -1, CompareEqual = 0, CompareGreater = 1 };

// How a cell text is compared.
enum TextCompareType { CompareAsText = 0, CompareAsNumber = 1, CompareAsDate = 2 };

// 0: not a number; 1: digits, possibly led by one "."; 2: digits led by one ",". A separator is
// accepted only before the first digit ("1.5" is not a number, ".5" is). nLength -1: up to the
// terminator.
KXUI_API int IsNumber(LPCTSTR lpszText, int nLength = -1);
// True when the text parses as a date in the user's default locale.
KXUI_API bool isDate(LPCTSTR lpszText);
// Both texts parsed as dates (user default locale); an unparsable text counts as the earliest.
KXUI_API int DateCompare(LPCTSTR lpszFirst, LPCTSTR lpszSecond);
// Both texts read by wcstod: -1 when the second is greater, 1 when the first is, else 0.
KXUI_API int NumberCompare(LPCTSTR lpszFirst, LPCTSTR lpszSecond);
KXUI_API int NumberCompare(const CString& strFirst, const CString& strSecond);
// Both texts converted to double through a variant (locale-aware); a text that does not convert
// counts as 0.
KXUI_API int NumberCompareVariant(LPCTSTR lpszFirst, LPCTSTR lpszSecond);
// Drops trailing fractional zeros and then a bare trailing separator: "12,500" gives "12,5",
// "12,000" gives "12"; a text without "," or "." is left alone.
KXUI_API void TransformeEntierOuReel(CString& strText);
// The user's decimal separator (LOCALE_SDECIMAL), one character.
KXUI_API TCHAR getCurrentFractionnalDigit();
// Resets indexes to 0..n-1 and sorts them so that the strings they point at are in order:
// descending for nMode 0, ascending otherwise (ordinal comparison, not stable).
KXUI_API void quickSort(CUIntArray& indexes, const CStringArray& strings, int nMode);
KXUI_API void QuickSortRecursive(int nLow, int nHigh, CUIntArray& indexes, const CStringArray& strings,
                                 int nMode);

}  // namespace XUtil
