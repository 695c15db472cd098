// Controls over the platform's window classes: CStatic, CButton, CEdit, CListBox,
// CComboBox, CScrollBar.
#include "afxwin.h"

namespace {

// Texts of list and combo items: the length first, then the characters.
void ItemText(const CWnd* pWnd, UINT msgLen, UINT msgText, int nIndex, CString& rString)
{
    const int n = static_cast<int>(pWnd->SendMessage(msgLen, nIndex));
    if (n < 0) {  // LB_ERR / CB_ERR: no such item
        rString.Empty();
        return;
    }
    pWnd->SendMessage(msgText, nIndex, reinterpret_cast<LPARAM>(rString.GetBuffer(n)));
    rString.ReleaseBuffer(n);
}

void SetResult(LRESULT* pResult, LRESULT value)
{
    if (pResult != NULL)
        *pResult = value;
}

}  // namespace

////////////////////////////////////////////////////////////////////////////
// CStatic

IMPLEMENT_DYNAMIC(CStatic, CWnd)

CStatic::~CStatic()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CStatic::Create(LPCTSTR lpszText, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create(L"STATIC", lpszText, dwStyle, rect, pParentWnd, nID);
}

void CStatic::DrawItem(LPDRAWITEMSTRUCT)
{
}

BOOL CStatic::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    SetResult(pResult, TRUE);
    return TRUE;
}

////////////////////////////////////////////////////////////////////////////
// CButton

IMPLEMENT_DYNAMIC(CButton, CWnd)

CButton::~CButton()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CButton::Create(LPCTSTR lpszCaption, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create(L"BUTTON", lpszCaption, dwStyle, rect, pParentWnd, nID);
}

void CButton::DrawItem(LPDRAWITEMSTRUCT)
{
}

BOOL CButton::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    SetResult(pResult, TRUE);
    return TRUE;
}

////////////////////////////////////////////////////////////////////////////
// CEdit

IMPLEMENT_DYNAMIC(CEdit, CWnd)

CEdit::~CEdit()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CEdit::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create(L"EDIT", NULL, dwStyle, rect, pParentWnd, nID);
}

DWORD CEdit::GetSel() const
{
    return static_cast<DWORD>(SendMessage(EM_GETSEL));
}

void CEdit::GetSel(int& nStartChar, int& nEndChar) const
{
    DWORD start = 0, end = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    nStartChar = static_cast<int>(start);
    nEndChar = static_cast<int>(end);
}

void CEdit::SetSel(DWORD dwSelection, BOOL bNoScroll)
{
    SetSel(static_cast<int>(static_cast<short>(LOWORD(dwSelection))),
           static_cast<int>(static_cast<short>(HIWORD(dwSelection))), bNoScroll);
}

void CEdit::SetSel(int nStartChar, int nEndChar, BOOL bNoScroll)
{
    SendMessage(EM_SETSEL, nStartChar, nEndChar);
    if (!bNoScroll)
        SendMessage(EM_SCROLLCARET);
}

int CEdit::GetLine(int nIndex, LPTSTR lpszBuffer, int nMaxLength) const
{
    if (lpszBuffer == NULL || nMaxLength < 1)
        return 0;
    // The first word of the buffer tells the control how much it may copy.
    *reinterpret_cast<WORD*>(lpszBuffer) = static_cast<WORD>(nMaxLength > 0xFFFF ? 0xFFFF : nMaxLength);
    return static_cast<int>(SendMessage(EM_GETLINE, nIndex, reinterpret_cast<LPARAM>(lpszBuffer)));
}

int CEdit::GetLine(int nIndex, LPTSTR lpszBuffer) const
{
    // The caller has stored the buffer's size in its first word.
    return lpszBuffer == NULL ? 0 : static_cast<int>(SendMessage(EM_GETLINE, nIndex, reinterpret_cast<LPARAM>(lpszBuffer)));
}

CPoint CEdit::PosFromChar(UINT nChar) const
{
    const LRESULT r = SendMessage(EM_POSFROMCHAR, nChar);
    if (r == -1)
        return CPoint(-1, -1);
    return CPoint(static_cast<short>(LOWORD(r)), static_cast<short>(HIWORD(r)));
}

////////////////////////////////////////////////////////////////////////////
// CListBox

IMPLEMENT_DYNAMIC(CListBox, CWnd)

CListBox::~CListBox()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CListBox::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create(L"LISTBOX", NULL, dwStyle, rect, pParentWnd, nID);
}

UINT CListBox::ItemFromPoint(CPoint pt, BOOL& bOutside) const
{
    const DWORD r = static_cast<DWORD>(SendMessage(LB_ITEMFROMPOINT, 0, MAKELPARAM(pt.x, pt.y)));
    bOutside = HIWORD(r) != 0;
    return LOWORD(r);
}

int CListBox::SelItemRange(BOOL bSelect, int nFirstItem, int nLastItem)
{
    if (bSelect)
        return static_cast<int>(SendMessage(LB_SELITEMRANGEEX, nFirstItem, nLastItem));
    return static_cast<int>(SendMessage(LB_SELITEMRANGEEX, nLastItem, nFirstItem));
}

void CListBox::GetText(int nIndex, CString& rString) const
{
    ItemText(this, LB_GETTEXTLEN, LB_GETTEXT, nIndex, rString);
}

void CListBox::DrawItem(LPDRAWITEMSTRUCT)
{
}

void CListBox::MeasureItem(LPMEASUREITEMSTRUCT)
{
}

int CListBox::CompareItem(LPCOMPAREITEMSTRUCT)
{
    return 0;
}

void CListBox::DeleteItem(LPDELETEITEMSTRUCT)
{
}

int CListBox::VKeyToItem(UINT, UINT)
{
    return -1;
}

int CListBox::CharToItem(UINT, UINT)
{
    return -1;
}

BOOL CListBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    switch (message) {
    case WM_DRAWITEM:
        DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
        SetResult(pResult, TRUE);
        return TRUE;
    case WM_MEASUREITEM:
        MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
        SetResult(pResult, TRUE);
        return TRUE;
    case WM_COMPAREITEM:
        SetResult(pResult, CompareItem(reinterpret_cast<LPCOMPAREITEMSTRUCT>(lParam)));
        return TRUE;
    case WM_DELETEITEM:
        DeleteItem(reinterpret_cast<LPDELETEITEMSTRUCT>(lParam));
        SetResult(pResult, TRUE);
        return TRUE;
    case WM_VKEYTOITEM:
        SetResult(pResult, VKeyToItem(LOWORD(wParam), HIWORD(wParam)));
        return TRUE;
    case WM_CHARTOITEM:
        SetResult(pResult, CharToItem(LOWORD(wParam), HIWORD(wParam)));
        return TRUE;
    default:
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    }
}

////////////////////////////////////////////////////////////////////////////
// CComboBox

IMPLEMENT_DYNAMIC(CComboBox, CWnd)

CComboBox::~CComboBox()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CComboBox::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create(L"COMBOBOX", NULL, dwStyle, rect, pParentWnd, nID);
}

BOOL CComboBox::GetComboBoxInfo(PCOMBOBOXINFO pcbi) const
{
    if (pcbi == NULL)
        return FALSE;
    pcbi->cbSize = sizeof(COMBOBOXINFO);
    return ::GetComboBoxInfo(m_hWnd, pcbi);
}

void CComboBox::GetLBText(int nIndex, CString& rString) const
{
    ItemText(this, CB_GETLBTEXTLEN, CB_GETLBTEXT, nIndex, rString);
}

void CComboBox::DrawItem(LPDRAWITEMSTRUCT)
{
}

void CComboBox::MeasureItem(LPMEASUREITEMSTRUCT)
{
}

int CComboBox::CompareItem(LPCOMPAREITEMSTRUCT)
{
    return 0;
}

void CComboBox::DeleteItem(LPDELETEITEMSTRUCT)
{
}

BOOL CComboBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    switch (message) {
    case WM_DRAWITEM:
        DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
        SetResult(pResult, TRUE);
        return TRUE;
    case WM_MEASUREITEM:
        MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
        SetResult(pResult, TRUE);
        return TRUE;
    case WM_COMPAREITEM:
        SetResult(pResult, CompareItem(reinterpret_cast<LPCOMPAREITEMSTRUCT>(lParam)));
        return TRUE;
    case WM_DELETEITEM:
        DeleteItem(reinterpret_cast<LPDELETEITEMSTRUCT>(lParam));
        SetResult(pResult, TRUE);
        return TRUE;
    default:
        return CWnd::OnChildNotify(message, wParam, lParam, pResult);
    }
}

////////////////////////////////////////////////////////////////////////////
// CScrollBar

IMPLEMENT_DYNAMIC(CScrollBar, CWnd)

CScrollBar::~CScrollBar()
{
    if (m_hWnd != NULL)
        DestroyWindow();
}

BOOL CScrollBar::Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID)
{
    return CWnd::Create(L"SCROLLBAR", NULL, dwStyle, rect, pParentWnd, nID);
}

BOOL CScrollBar::GetScrollInfo(LPSCROLLINFO lpScrollInfo, UINT nMask)
{
    if (lpScrollInfo == NULL)
        return FALSE;
    lpScrollInfo->cbSize = sizeof(SCROLLINFO);
    lpScrollInfo->fMask = nMask;
    return ::GetScrollInfo(m_hWnd, SB_CTL, lpScrollInfo);
}

int CScrollBar::GetScrollLimit()
{
    SCROLLINFO info = {};
    if (!GetScrollInfo(&info, SIF_RANGE | SIF_PAGE))
        return 0;
    const int page = info.nPage > 0 ? static_cast<int>(info.nPage) - 1 : 0;
    return info.nMax - page;
}
