// Dialogs and dialog data exchange (included by afxwin.h).
#pragma once

// Raised by a failed dialog data validation; the user has been told already.
class KXAFX_API CUserException : public CSimpleException {
    DECLARE_DYNAMIC(CUserException)
public:
    CUserException() noexcept = default;
    virtual ~CUserException();
};
[[noreturn]] KXAFX_API void AFXAPI AfxThrowUserException();

// State of one UpdateData pass.
class KXAFX_API CDataExchange {
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate);

    BOOL m_bSaveAndValidate;  // TRUE: controls to variables
    CWnd* m_pDlgWnd;
    UINT m_idLastControl;     // control of the last exchange, focused when it fails
    BOOL m_bEditLastControl;

    // The control's handle; records it as the one a failure refers to.
    HWND PrepareCtrl(int nIDC);
    HWND PrepareEditCtrl(int nIDC);
    // Focuses the last control and throws CUserException.
    [[noreturn]] void Fail();
};

KXAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
KXAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, int& value);
KXAFX_API void AFXAPI DDX_Text(CDataExchange* pDX, int nIDC, UINT& value);
KXAFX_API void AFXAPI DDX_Check(CDataExchange* pDX, int nIDC, int& value);
// Index of the checked button of the group starting at nIDC (-1 none).
KXAFX_API void AFXAPI DDX_Radio(CDataExchange* pDX, int nIDC, int& value);
KXAFX_API void AFXAPI DDX_CBIndex(CDataExchange* pDX, int nIDC, int& index);
KXAFX_API void AFXAPI DDX_CBString(CDataExchange* pDX, int nIDC, CString& value);
KXAFX_API void AFXAPI DDX_LBIndex(CDataExchange* pDX, int nIDC, int& index);
// Subclasses the control with rControl on the first exchange.
KXAFX_API void AFXAPI DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);
KXAFX_API void AFXAPI DDV_MaxChars(CDataExchange* pDX, const CString& value, int nChars);
KXAFX_API void AFXAPI DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal);

class KXAFX_API CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)
public:
    CDialog();
    explicit CDialog(LPCTSTR lpszTemplateName, CWnd* pParentWnd = NULL);
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = NULL);
    virtual ~CDialog();

    // ---- modeless ----
    virtual BOOL Create(LPCTSTR lpszTemplateName, CWnd* pParentWnd = NULL);
    virtual BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = NULL);
    virtual BOOL CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = NULL, void* lpDialogInit = NULL);
    virtual BOOL CreateIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd = NULL);

    // ---- modal ----
    BOOL InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd = NULL, void* lpDialogInit = NULL);
    BOOL InitModalIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd = NULL);
    // Runs the dialog with its owner disabled; returns the EndDialog result, -1 on failure.
    virtual INT_PTR DoModal();
    void EndDialog(int nResult);

    // ---- focus and defaults ----
    void NextDlgCtrl() const;
    void PrevDlgCtrl() const;
    void GotoDlgCtrl(CWnd* pWndCtrl);
    void SetDefID(UINT nID);
    DWORD GetDefID() const;
    void MapDialogRect(LPRECT lpRect) const;

    // ---- overridables ----
    // Fills the controls from the members (UpdateData(FALSE)); TRUE lets the system
    // focus the first control.
    virtual BOOL OnInitDialog();
    virtual void OnOK();
    virtual void OnCancel();
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo);

    LPCTSTR m_lpszTemplateName;  // resource name or MAKEINTRESOURCE id
    UINT m_nIDHelp;
    HGLOBAL m_hDialogTemplate;
    LPCDLGTEMPLATE m_lpDialogTemplate;
    void* m_lpDialogInit;
    CWnd* m_pParentWnd;
    HWND m_hWndTop;

protected:
    BOOL CreateDlgIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, HINSTANCE hInst);
    HWND PreModal();
    void PostModal();
    afx_msg LRESULT HandleInitDialog(WPARAM, LPARAM);

    DECLARE_MESSAGE_MAP()
};

// Base of the platform's common dialogs.
class KXAFX_API CCommonDialog : public CDialog {
    DECLARE_DYNAMIC(CCommonDialog)
public:
    explicit CCommonDialog(CWnd* pParentWnd);
};
