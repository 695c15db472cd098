// CFileDialog: the platform's open and save dialogs.
#include "afximpl.h"
#include "afxdlgs.h"

IMPLEMENT_DYNAMIC(CFileDialog, CCommonDialog)

CFileDialog::CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt, LPCTSTR lpszFileName, DWORD dwFlags,
                         LPCTSTR lpszFilter, CWnd* pParentWnd, DWORD dwSize)
    : CCommonDialog(pParentWnd), m_ofn(), m_bOpenFileDialog(bOpenFileDialog), m_szFileName(), m_szFileTitle()
{
    m_ofn.lStructSize = dwSize != 0 && dwSize <= sizeof m_ofn ? dwSize : sizeof m_ofn;
    m_ofn.Flags = dwFlags | OFN_ENABLESIZING | OFN_EXPLORER;
    m_ofn.lpstrFile = m_szFileName;
    m_ofn.nMaxFile = MAX_PATH;
    m_ofn.lpstrFileTitle = m_szFileTitle;
    m_ofn.nMaxFileTitle = MAX_PATH;
    if (lpszDefExt != nullptr) {
        m_strDefExt = lpszDefExt;
        m_ofn.lpstrDefExt = m_strDefExt;
    }
    if (lpszFileName != nullptr)
        ::lstrcpynW(m_szFileName, lpszFileName, MAX_PATH);
    if (lpszFilter != nullptr) {
        // "a|b|c|d||" becomes "a\0b\0c\0d\0\0".
        m_strFilter = lpszFilter;
        m_strFilter += L'|';
        m_strFilter.Replace(L'|', L'\0');
        m_ofn.lpstrFilter = m_strFilter;
    }
}

CFileDialog::~CFileDialog() = default;

INT_PTR CFileDialog::DoModal()
{
    HWND hWndTop = nullptr;
    m_ofn.hwndOwner = CWnd::SafeHwnd(CWnd::GetSafeOwner(m_pParentWnd, &hWndTop));
    m_ofn.hInstance = AfxGetResourceHandle();
    const BOOL ok = m_bOpenFileDialog ? ::GetOpenFileNameW(&m_ofn) : ::GetSaveFileNameW(&m_ofn);
    if (hWndTop != nullptr)
        ::EnableWindow(hWndTop, TRUE);
    return ok ? IDOK : IDCANCEL;
}

CString CFileDialog::GetPathName() const
{
    return m_szFileName;
}

CString CFileDialog::GetFileName() const
{
    CString path(m_szFileName);
    const int slash = path.ReverseFind(L'\\');
    return slash >= 0 ? path.Mid(slash + 1) : path;
}

CString CFileDialog::GetFileExt() const
{
    CString name = GetFileName();
    const int dot = name.ReverseFind(L'.');
    return dot >= 0 ? name.Mid(dot + 1) : CString();
}

CString CFileDialog::GetFileTitle() const
{
    CString name = GetFileName();
    const int dot = name.ReverseFind(L'.');
    return dot >= 0 ? name.Left(dot) : name;
}
