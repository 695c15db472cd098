// CRichEditCtrl: the platform's rich edit control (Msftedit.dll, class RICHEDIT50W).
#include "afxcmn.h"

namespace {

// Loads the rich edit library once; it stays loaded for the life of the process, as
// windows of its class may exist until the end.
BOOL LoadRichEdit()
{
    static HMODULE module = ::LoadLibraryW(L"Msftedit.dll");
    return module != NULL;
}

}  // namespace

IMPLEMENT_DYNAMIC(CRichEditCtrl, CWnd)

CRichEditCtrl::~CRichEditCtrl()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CRichEditCtrl::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CreateEx(0, dwStyle, rect, pParentWnd, nID);
}

BOOL CRichEditCtrl::CreateEx(DWORD dwExStyle, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    if (!LoadRichEdit())
        return FALSE;
    return CWnd::CreateEx(dwExStyle, MSFTEDIT_CLASS, NULL, dwStyle, rect, pParentWnd, nID);
}

long CRichEditCtrl::GetTextLengthEx(DWORD dwFlags, UINT uCodePage) const
{
    GETTEXTLENGTHEX info = {dwFlags, uCodePage};
    return (long)SendMessage(EM_GETTEXTLENGTHEX, (WPARAM)&info);
}

void CRichEditCtrl::GetSel(long& nStartChar, long& nEndChar) const
{
    CHARRANGE cr = {0, 0};
    GetSel(cr);
    nStartChar = cr.cpMin;
    nEndChar = cr.cpMax;
}

void CRichEditCtrl::SetSel(long nStartChar, long nEndChar)
{
    CHARRANGE cr = {nStartChar, nEndChar};
    SetSel(cr);
}

CString CRichEditCtrl::GetSelText() const
{
    CHARRANGE cr = {0, 0};
    GetSel(cr);
    CString text;
    const int n = cr.cpMax - cr.cpMin;
    if (n <= 0)
        return text;
    const long copied = (long)SendMessage(EM_GETSELTEXT, 0, (LPARAM)text.GetBuffer(n + 1));
    text.ReleaseBuffer(copied < 0 ? 0 : (copied > n ? n : copied));
    return text;
}

int CRichEditCtrl::GetTextRange(int nFirst, int nLast, CString& refString) const
{
    if (nLast < 0)  // to the end, counted in the control's characters
        nLast = GetTextLengthEx(GTL_NUMCHARS);
    refString.Empty();
    if (nFirst < 0 || nLast <= nFirst)
        return 0;
    TEXTRANGEW range = {};
    range.chrg.cpMin = nFirst;
    range.chrg.cpMax = nLast;
    range.lpstrText = refString.GetBuffer(nLast - nFirst + 1);
    const int n = (int)SendMessage(EM_GETTEXTRANGE, 0, (LPARAM)&range);
    refString.ReleaseBuffer(n < 0 ? 0 : n);
    return refString.GetLength();
}

int CRichEditCtrl::GetLine(int nIndex, LPTSTR lpszBuffer, int nMaxLength) const
{
    if (lpszBuffer == NULL || nMaxLength < 1)
        return 0;
    *reinterpret_cast<WORD*>(lpszBuffer) = static_cast<WORD>(nMaxLength > 0xFFFF ? 0xFFFF : nMaxLength);
    return (int)SendMessage(EM_GETLINE, nIndex, (LPARAM)lpszBuffer);
}

CPoint CRichEditCtrl::GetCharPos(long lChar) const
{
    POINTL pt = {0, 0};
    SendMessage(EM_POSFROMCHAR, (WPARAM)&pt, lChar);
    return CPoint(pt.x, pt.y);
}

int CRichEditCtrl::CharFromPos(CPoint pt) const
{
    POINTL ptl = {pt.x, pt.y};
    return (int)SendMessage(EM_CHARFROMPOS, 0, (LPARAM)&ptl);
}

////////////////////////////////////////////////////////////////////////////
// Formats: cbSize tells the control which structure it got.

DWORD CRichEditCtrl::GetDefaultCharFormat(CHARFORMAT& cf) const
{
    cf.cbSize = sizeof(CHARFORMAT);
    return (DWORD)SendMessage(EM_GETCHARFORMAT, SCF_DEFAULT, (LPARAM)&cf);
}

DWORD CRichEditCtrl::GetDefaultCharFormat(CHARFORMAT2& cf) const
{
    cf.cbSize = sizeof(CHARFORMAT2);
    return (DWORD)SendMessage(EM_GETCHARFORMAT, SCF_DEFAULT, (LPARAM)&cf);
}

BOOL CRichEditCtrl::SetDefaultCharFormat(CHARFORMAT& cf)
{
    cf.cbSize = sizeof(CHARFORMAT);
    return (BOOL)SendMessage(EM_SETCHARFORMAT, SCF_DEFAULT, (LPARAM)&cf);
}

BOOL CRichEditCtrl::SetDefaultCharFormat(CHARFORMAT2& cf)
{
    cf.cbSize = sizeof(CHARFORMAT2);
    return (BOOL)SendMessage(EM_SETCHARFORMAT, SCF_DEFAULT, (LPARAM)&cf);
}

DWORD CRichEditCtrl::GetSelectionCharFormat(CHARFORMAT& cf) const
{
    cf.cbSize = sizeof(CHARFORMAT);
    return (DWORD)SendMessage(EM_GETCHARFORMAT, SCF_SELECTION, (LPARAM)&cf);
}

DWORD CRichEditCtrl::GetSelectionCharFormat(CHARFORMAT2& cf) const
{
    cf.cbSize = sizeof(CHARFORMAT2);
    return (DWORD)SendMessage(EM_GETCHARFORMAT, SCF_SELECTION, (LPARAM)&cf);
}

BOOL CRichEditCtrl::SetSelectionCharFormat(CHARFORMAT& cf)
{
    cf.cbSize = sizeof(CHARFORMAT);
    return (BOOL)SendMessage(EM_SETCHARFORMAT, SCF_SELECTION, (LPARAM)&cf);
}

BOOL CRichEditCtrl::SetSelectionCharFormat(CHARFORMAT2& cf)
{
    cf.cbSize = sizeof(CHARFORMAT2);
    return (BOOL)SendMessage(EM_SETCHARFORMAT, SCF_SELECTION, (LPARAM)&cf);
}

BOOL CRichEditCtrl::SetWordCharFormat(CHARFORMAT& cf)
{
    cf.cbSize = sizeof(CHARFORMAT);
    return (BOOL)SendMessage(EM_SETCHARFORMAT, SCF_SELECTION | SCF_WORD, (LPARAM)&cf);
}

BOOL CRichEditCtrl::SetWordCharFormat(CHARFORMAT2& cf)
{
    cf.cbSize = sizeof(CHARFORMAT2);
    return (BOOL)SendMessage(EM_SETCHARFORMAT, SCF_SELECTION | SCF_WORD, (LPARAM)&cf);
}

DWORD CRichEditCtrl::GetParaFormat(PARAFORMAT& pf) const
{
    pf.cbSize = sizeof(PARAFORMAT);
    return (DWORD)SendMessage(EM_GETPARAFORMAT, 0, (LPARAM)&pf);
}

DWORD CRichEditCtrl::GetParaFormat(PARAFORMAT2& pf) const
{
    pf.cbSize = sizeof(PARAFORMAT2);
    return (DWORD)SendMessage(EM_GETPARAFORMAT, 0, (LPARAM)&pf);
}

BOOL CRichEditCtrl::SetParaFormat(PARAFORMAT& pf)
{
    pf.cbSize = sizeof(PARAFORMAT);
    return (BOOL)SendMessage(EM_SETPARAFORMAT, 0, (LPARAM)&pf);
}

BOOL CRichEditCtrl::SetParaFormat(PARAFORMAT2& pf)
{
    pf.cbSize = sizeof(PARAFORMAT2);
    return (BOOL)SendMessage(EM_SETPARAFORMAT, 0, (LPARAM)&pf);
}
