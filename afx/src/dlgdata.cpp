// Dialog data exchange: UpdateData, CDataExchange and the DDX_/DDV_ helpers.
#include "afximpl.h"
#include <cwchar>

IMPLEMENT_DYNAMIC(CUserException, CSimpleException)

CUserException::~CUserException() = default;

void AFXAPI AfxThrowUserException()
{
    throw new CUserException;
}

BOOL CWnd::UpdateData(BOOL bSaveAndValidate)
{
    CDataExchange dx(this, bSaveAndValidate);
    // Filling controls makes them notify; those notifications are not the user's.
    _AFX_THREAD_STATE* ts = AfxGetThreadState();
    HWND oldLockout = ts->m_hLockoutNotifyWindow;
    ts->m_hLockoutNotifyWindow = m_hWnd;
    BOOL ok = FALSE;
    try {
        DoDataExchange(&dx);
        ok = TRUE;
    } catch (CException* e) {
        // A validation failure has been reported to the user already.
        e->Delete();
    }
    ts->m_hLockoutNotifyWindow = oldLockout;
    return ok;
}

CDataExchange::CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate)
    : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd), m_idLastControl(0), m_bEditLastControl(FALSE)
{
}

HWND CDataExchange::PrepareCtrl(int nIDC)
{
    HWND hWndCtrl = ::GetDlgItem(CWnd::SafeHwnd(m_pDlgWnd), nIDC);
    m_idLastControl = static_cast<UINT>(nIDC);
    m_bEditLastControl = FALSE;
    if (hWndCtrl == nullptr) {
        m_idLastControl = 0;
        Fail();  // no such control: the exchange cannot be done
    }
    return hWndCtrl;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC)
{
    HWND hWndCtrl = PrepareCtrl(nIDC);
    m_bEditLastControl = TRUE;
    return hWndCtrl;
}

void CDataExchange::Fail()
{
    if (m_bSaveAndValidate && m_idLastControl != 0) {
        HWND hWndLast = ::GetDlgItem(CWnd::SafeHwnd(m_pDlgWnd), static_cast<int>(m_idLastControl));
        ::SetFocus(hWndLast);
        if (m_bEditLastControl)
            ::SendMessageW(hWndLast, EM_SETSEL, 0, -1);
    }
    AfxThrowUserException();
}

namespace {

void SetTextIfChanged(HWND hWnd, LPCTSTR text)
{
    if (AfxGetWindowText(hWnd) != text)
        ::SetWindowTextW(hWnd, text);
}

}  // namespace

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value)
{
    HWND hWndCtrl = pDX->PrepareEditCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = AfxGetWindowText(hWndCtrl);
    else
        SetTextIfChanged(hWndCtrl, value);
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, int& value)
{
    HWND hWndCtrl = pDX->PrepareEditCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        CString text = AfxGetWindowText(hWndCtrl);
        text.Trim();
        wchar_t* end = nullptr;
        errno = 0;
        const long v = std::wcstol(text, &end, 10);
        if (text.IsEmpty() || *end != 0 || errno == ERANGE || v < INT_MIN || v > INT_MAX) {
            AfxMessageBox(L"Please enter an integer.", MB_ICONEXCLAMATION);
            pDX->Fail();
        }
        value = static_cast<int>(v);
    } else {
        CString text;
        text.Format(L"%d", value);
        SetTextIfChanged(hWndCtrl, text);
    }
}

void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, UINT& value)
{
    HWND hWndCtrl = pDX->PrepareEditCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        CString text = AfxGetWindowText(hWndCtrl);
        text.Trim();
        wchar_t* end = nullptr;
        errno = 0;
        const unsigned long long v = std::wcstoull(text, &end, 10);
        if (text.IsEmpty() || text[0] == L'-' || *end != 0 || errno == ERANGE || v > UINT_MAX) {
            AfxMessageBox(L"Please enter a positive integer.", MB_ICONEXCLAMATION);
            pDX->Fail();
        }
        value = static_cast<UINT>(v);
    } else {
        CString text;
        text.Format(L"%u", value);
        SetTextIfChanged(hWndCtrl, text);
    }
}

void AFXAPI DDX_Check(CDataExchange* pDX, int nIDC, int& value)
{
    HWND hWndCtrl = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = static_cast<int>(::SendMessageW(hWndCtrl, BM_GETCHECK, 0, 0));
    } else {
        if (value < 0 || value > 2)
            value = 0;
        ::SendMessageW(hWndCtrl, BM_SETCHECK, static_cast<WPARAM>(value), 0);
    }
}

void AFXAPI DDX_Radio(CDataExchange* pDX, int nIDC, int& value)
{
    HWND hWndCtrl = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = -1;
    // The group runs from nIDC to the next control with WS_GROUP.
    int iButton = 0;
    do {
        if (::SendMessageW(hWndCtrl, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) {
            if (pDX->m_bSaveAndValidate) {
                if (::SendMessageW(hWndCtrl, BM_GETCHECK, 0, 0) != 0 && value == -1)
                    value = iButton;
            } else {
                ::SendMessageW(hWndCtrl, BM_SETCHECK, iButton == value ? BST_CHECKED : BST_UNCHECKED, 0);
            }
            ++iButton;
        }
        hWndCtrl = ::GetWindow(hWndCtrl, GW_HWNDNEXT);
    } while (hWndCtrl != nullptr && !(::GetWindowLongPtrW(hWndCtrl, GWL_STYLE) & WS_GROUP));
}

void AFXAPI DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index)
{
    HWND hWndCtrl = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        index = static_cast<int>(::SendMessageW(hWndCtrl, CB_GETCURSEL, 0, 0));
    else
        ::SendMessageW(hWndCtrl, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

void AFXAPI DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index)
{
    HWND hWndCtrl = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        index = static_cast<int>(::SendMessageW(hWndCtrl, LB_GETCURSEL, 0, 0));
    else
        ::SendMessageW(hWndCtrl, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

void AFXAPI DDX_CBString(CDataExchange* pDX, int nIDC, CString& value)
{
    HWND hWndCtrl = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        value = AfxGetWindowText(hWndCtrl);
    } else if (::SendMessageW(hWndCtrl, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                              reinterpret_cast<LPARAM>(static_cast<LPCTSTR>(value))) == CB_ERR) {
        // Not in the list: the edit part shows it (a drop-down list ignores it).
        SetTextIfChanged(hWndCtrl, value);
    }
}

void AFXAPI DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl)
{
    if (rControl.m_hWnd != nullptr)
        return;
    HWND hWndCtrl = pDX->PrepareCtrl(nIDC);
    if (!rControl.SubclassWindow(hWndCtrl))
        pDX->Fail();
}

void AFXAPI DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars)
{
    if (pDX->m_bSaveAndValidate && value.GetLength() > nChars) {
        CString prompt;
        prompt.Format(L"Enter no more than %d characters.", nChars);
        AfxMessageBox(prompt, MB_ICONEXCLAMATION);
        pDX->Fail();
    } else if (!pDX->m_bSaveAndValidate && pDX->m_idLastControl != 0 && pDX->m_bEditLastControl) {
        HWND hWndLast = ::GetDlgItem(CWnd::SafeHwnd(pDX->m_pDlgWnd), static_cast<int>(pDX->m_idLastControl));
        ::SendMessageW(hWndLast, EM_LIMITTEXT, static_cast<WPARAM>(nChars), 0);
    }
}

void AFXAPI DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal)
{
    if (pDX->m_bSaveAndValidate && (value < minVal || value > maxVal)) {
        CString prompt;
        prompt.Format(L"Please enter an integer between %d and %d.", minVal, maxVal);
        AfxMessageBox(prompt, MB_ICONEXCLAMATION);
        pDX->Fail();
    }
}
