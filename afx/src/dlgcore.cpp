// CDialog: modal and modeless dialogs from resource or in-memory templates.
#include "afximpl.h"

IMPLEMENT_DYNAMIC(CDialog, CWnd)
IMPLEMENT_DYNAMIC(CCommonDialog, CDialog)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
    ON_COMMAND(IDOK, &CDialog::OnOK)
    ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
    ON_MESSAGE(WM_INITDIALOG, &CDialog::HandleInitDialog)
END_MESSAGE_MAP()

namespace {

// The dialog manager's procedure: the object's message map has already seen each message.
INT_PTR CALLBACK AfxDlgProc(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

}  // namespace

CDialog::CDialog()
    : m_lpszTemplateName(nullptr), m_nIDHelp(0), m_hDialogTemplate(nullptr), m_lpDialogTemplate(nullptr),
      m_lpDialogInit(nullptr), m_pParentWnd(nullptr), m_hWndTop(nullptr)
{
}

CDialog::CDialog(LPCTSTR lpszTemplateName, CWnd* pParentWnd) : CDialog()
{
    m_lpszTemplateName = lpszTemplateName;
    m_pParentWnd = pParentWnd;
    if (IS_INTRESOURCE(lpszTemplateName))
        m_nIDHelp = LOWORD(reinterpret_cast<DWORD_PTR>(lpszTemplateName));
}

CDialog::CDialog(UINT nIDTemplate, CWnd* pParentWnd) : CDialog(MAKEINTRESOURCE(nIDTemplate), pParentWnd) {}

CDialog::~CDialog()
{
    if (m_hWnd != nullptr && FromHandlePermanent(m_hWnd) == this)
        DestroyWindow();
}

BOOL CDialog::Create(LPCTSTR lpszTemplateName, CWnd* pParentWnd)
{
    m_lpszTemplateName = lpszTemplateName;
    if (IS_INTRESOURCE(lpszTemplateName) && m_nIDHelp == 0)
        m_nIDHelp = LOWORD(reinterpret_cast<DWORD_PTR>(lpszTemplateName));
    HINSTANCE hInst = AfxFindResourceHandle(lpszTemplateName, RT_DIALOG);
    HRSRC res = ::FindResourceW(hInst, lpszTemplateName, RT_DIALOG);
    HGLOBAL hTemplate = res != nullptr ? ::LoadResource(hInst, res) : nullptr;
    if (hTemplate == nullptr)
        return FALSE;
    return CreateDlgIndirect(static_cast<LPCDLGTEMPLATE>(::LockResource(hTemplate)), pParentWnd, hInst);
}

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd)
{
    return Create(MAKEINTRESOURCE(nIDTemplate), pParentWnd);
}

BOOL CDialog::CreateIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, void* lpDialogInit)
{
    m_lpDialogInit = lpDialogInit;
    return CreateDlgIndirect(lpDialogTemplate, pParentWnd, nullptr);
}

BOOL CDialog::CreateIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd)
{
    if (hDialogTemplate == nullptr)
        return FALSE;
    auto* p = static_cast<LPCDLGTEMPLATE>(::GlobalLock(hDialogTemplate));
    const BOOL result = CreateDlgIndirect(p, pParentWnd, nullptr);
    ::GlobalUnlock(hDialogTemplate);
    return result;
}

BOOL CDialog::CreateDlgIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, HINSTANCE hInst)
{
    if (lpDialogTemplate == nullptr || m_hWnd != nullptr)
        return FALSE;
    if (hInst == nullptr)
        hInst = AfxGetResourceHandle();
    // EndDialog during OnInitDialog clears the flag: the dialog is then not kept.
    m_nModalResult = -1;
    m_nFlags |= WF_CONTINUEMODAL;
    AfxHookWindowCreate(this);
    HWND hWnd = ::CreateDialogIndirectParamW(hInst, lpDialogTemplate, CWnd::SafeHwnd(pParentWnd), AfxDlgProc, 0);
    if (!AfxUnhookWindowCreate())
        PostNcDestroy();
    if (hWnd != nullptr && !(m_nFlags & WF_CONTINUEMODAL)) {
        ::DestroyWindow(hWnd);
        hWnd = nullptr;
    }
    return hWnd != nullptr;
}

BOOL CDialog::InitModalIndirect(LPCDLGTEMPLATE lpDialogTemplate, CWnd* pParentWnd, void* lpDialogInit)
{
    m_lpDialogTemplate = lpDialogTemplate;
    m_pParentWnd = pParentWnd;
    m_lpDialogInit = lpDialogInit;
    return lpDialogTemplate != nullptr;
}

BOOL CDialog::InitModalIndirect(HGLOBAL hDialogTemplate, CWnd* pParentWnd)
{
    m_hDialogTemplate = hDialogTemplate;
    m_pParentWnd = pParentWnd;
    return hDialogTemplate != nullptr;
}

HWND CDialog::PreModal()
{
    return CWnd::SafeHwnd(CWnd::GetSafeOwner(m_pParentWnd, &m_hWndTop));
}

void CDialog::PostModal()
{
    AfxUnhookWindowCreate();
    Detach();
    if (::IsWindow(m_hWndTop))
        ::EnableWindow(m_hWndTop, TRUE);
    m_hWndTop = nullptr;
}

INT_PTR CDialog::DoModal()
{
    if (m_hWnd != nullptr)
        return -1;  // already shown as a modeless dialog
    LPCDLGTEMPLATE lpTemplate = m_lpDialogTemplate;
    HINSTANCE hInst = AfxGetResourceHandle();
    bool locked = false;
    if (m_lpszTemplateName != nullptr) {
        hInst = AfxFindResourceHandle(m_lpszTemplateName, RT_DIALOG);
        HRSRC res = ::FindResourceW(hInst, m_lpszTemplateName, RT_DIALOG);
        HGLOBAL h = res != nullptr ? ::LoadResource(hInst, res) : nullptr;
        lpTemplate = h != nullptr ? static_cast<LPCDLGTEMPLATE>(::LockResource(h)) : nullptr;
    } else if (m_hDialogTemplate != nullptr) {
        lpTemplate = static_cast<LPCDLGTEMPLATE>(::GlobalLock(m_hDialogTemplate));
        locked = true;
    }
    if (lpTemplate == nullptr)
        return -1;

    HWND hWndFocus = ::GetFocus();
    HWND hWndParent = PreModal();
    // The owner is disabled while the dialog runs.
    BOOL bEnableParent = FALSE;
    if (hWndParent != nullptr && hWndParent != ::GetDesktopWindow() && ::IsWindowEnabled(hWndParent)) {
        ::EnableWindow(hWndParent, FALSE);
        bEnableParent = TRUE;
    }
    try {
        if (CreateDlgIndirect(lpTemplate, CWnd::FromHandle(hWndParent), hInst)) {
            if (m_nFlags & WF_CONTINUEMODAL) {
                DWORD dwFlags = MLF_SHOWONIDLE;
                if (GetStyle() & DS_NOIDLEMSG)
                    dwFlags |= MLF_NOIDLEMSG;
                RunModalLoop(dwFlags);
            }
            if (m_hWnd != nullptr)
                SetWindowPos(nullptr, 0, 0, 0, 0,
                             SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
        }
    } catch (CException* e) {
        e->Delete();
        m_nModalResult = -1;
    }
    if (locked)
        ::GlobalUnlock(m_hDialogTemplate);
    if (bEnableParent)
        ::EnableWindow(hWndParent, TRUE);
    if (hWndParent != nullptr && ::GetActiveWindow() == m_hWnd)
        ::SetActiveWindow(hWndParent);
    DestroyWindow();
    PostModal();
    // Give the focus back to where it was.
    if (hWndFocus != nullptr && ::IsWindow(hWndFocus) && ::IsWindowEnabled(hWndFocus))
        ::SetFocus(hWndFocus);
    return m_nModalResult;
}

void CDialog::EndDialog(int nResult)
{
    if (m_nFlags & (WF_MODALLOOP | WF_CONTINUEMODAL))
        EndModalLoop(nResult);
    if (m_hWnd != nullptr)
        ::EndDialog(m_hWnd, nResult);
}

LRESULT CDialog::HandleInitDialog(WPARAM, LPARAM)
{
    return OnInitDialog();
}

BOOL CDialog::OnInitDialog()
{
    if (!UpdateData(FALSE)) {
        EndDialog(-1);
        return FALSE;
    }
    return TRUE;
}

void CDialog::OnOK()
{
    if (!UpdateData(TRUE))
        return;
    EndDialog(IDOK);
}

void CDialog::OnCancel()
{
    EndDialog(IDCANCEL);
}

BOOL CDialog::PreTranslateMessage(MSG* pMsg)
{
    // Keyboard navigation (tab, arrows, default and cancel buttons) of the dialog.
    const bool key = pMsg->message >= WM_KEYFIRST && pMsg->message <= WM_KEYLAST;
    const bool mouse = pMsg->message >= WM_MOUSEFIRST && pMsg->message <= WM_MOUSELAST;
    if (!key && !mouse)
        return FALSE;
    return ::IsDialogMessageW(m_hWnd, pMsg);
}

BOOL CDialog::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    if ((nCode != CN_COMMAND && nCode != static_cast<int>(CN_UPDATE_COMMAND_UI)) || nID == 0 || nID >= 0xF000)
        return FALSE;
    // Commands the dialog does not take go to the thread (the application).
    CWinThread* thread = AfxGetThread();
    return thread != nullptr && thread->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

void CDialog::NextDlgCtrl() const
{
    ::SendMessageW(m_hWnd, WM_NEXTDLGCTL, 0, 0);
}

void CDialog::PrevDlgCtrl() const
{
    ::SendMessageW(m_hWnd, WM_NEXTDLGCTL, 1, 0);
}

void CDialog::GotoDlgCtrl(CWnd* pWndCtrl)
{
    if (pWndCtrl != nullptr && pWndCtrl->m_hWnd != nullptr)
        SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(pWndCtrl->m_hWnd), 1);
}

void CDialog::SetDefID(UINT nID)
{
    SendMessage(DM_SETDEFID, nID);
}

DWORD CDialog::GetDefID() const
{
    return static_cast<DWORD>(SendMessage(DM_GETDEFID));
}

void CDialog::MapDialogRect(LPRECT lpRect) const
{
    ::MapDialogRect(m_hWnd, lpRect);
}

CCommonDialog::CCommonDialog(CWnd* pParentWnd) : CDialog(static_cast<LPCTSTR>(nullptr), pParentWnd) {}
