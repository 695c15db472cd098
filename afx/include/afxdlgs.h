// Standard dialogs of the platform.
#pragma once
#include "afxwin.h"
#include <commdlg.h>

// Open and save file dialogs (GetOpenFileName / GetSaveFileName).
class KXAFX_API CFileDialog : public CCommonDialog {
    DECLARE_DYNAMIC(CFileDialog)
public:
    // lpszFilter: "Text files (*.txt)|*.txt|All files (*.*)|*.*||".
    explicit CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt = NULL, LPCTSTR lpszFileName = NULL,
                         DWORD dwFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCTSTR lpszFilter = NULL,
                         CWnd* pParentWnd = NULL, DWORD dwSize = 0);
    virtual ~CFileDialog();

    virtual INT_PTR DoModal();
    CString GetPathName() const;
    CString GetFileName() const;
    CString GetFileExt() const;
    CString GetFileTitle() const;
    BOOL GetReadOnlyPref() const { return (m_ofn.Flags & OFN_READONLY) != 0; }

    OPENFILENAME m_ofn;
    BOOL m_bOpenFileDialog;

protected:
    CString m_strFilter;
    CString m_strDefExt;
    TCHAR m_szFileName[MAX_PATH];
    TCHAR m_szFileTitle[MAX_PATH];
};
