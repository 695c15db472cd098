// Hyperlink actions: a value describing what a link does, and carrying it out.
#include "KxUiHyperLinkAction.h"
#include "KxUiLoadString.h"
#include "res/KxUiRes.h"
#include <shellapi.h>

namespace {

KxUiShellExecuteFunc g_pfnShellExecute = &::ShellExecuteW;

const LPCTSTR g_actionNames[KxUiHyperLinkAction::ActionCount] = {
    L"None", L"User defined", L"Open", L"Print", L"Explore", L"E-mail",
};

}  // namespace

KxUiShellExecuteFunc KxUiSetShellExecute(KxUiShellExecuteFunc func)
{
    KxUiShellExecuteFunc previous = g_pfnShellExecute;
    g_pfnShellExecute = func != nullptr ? func : &::ShellExecuteW;
    return previous;
}

KxUiHyperLinkAction::KxUiHyperLinkAction()
{
    Reset();
}

KxUiHyperLinkAction::~KxUiHyperLinkAction() = default;

void KxUiHyperLinkAction::Reset()
{
    m_hWndOwner = nullptr;
    m_nActionID = ActionOpen;
    m_sFile.Empty();
    m_sParameters.Empty();
    m_sDefaultDirectory.Empty();
    m_nShowCmd = SW_SHOWNORMAL;
    m_nCallbackMsg = 0;
    m_hWndRecipient = nullptr;
    m_nError = ErrorNone;
    m_hResult = nullptr;
}

void KxUiHyperLinkAction::Set(int nAction, LPCTSTR lpszFile, LPCTSTR lpszParameters, LPCTSTR lpszDefaultDirectory,
                              int nShowCmd, UINT nUserMessage, HWND hWndRecipient)
{
    m_nActionID = nAction;
    m_sFile = lpszFile != nullptr ? lpszFile : L"";
    m_sParameters = lpszParameters != nullptr ? lpszParameters : L"";
    m_sDefaultDirectory = lpszDefaultDirectory != nullptr ? lpszDefaultDirectory : L"";
    m_nShowCmd = nShowCmd;
    m_nCallbackMsg = nUserMessage;
    m_hWndRecipient = hWndRecipient;
}

void KxUiHyperLinkAction::SetOwnerWnd(CWnd* pWnd)
{
    m_hWndOwner = pWnd != nullptr ? pWnd->GetSafeHwnd() : nullptr;
}

void KxUiHyperLinkAction::SetRecipientWnd(CWnd* pWnd)
{
    m_hWndRecipient = pWnd != nullptr ? pWnd->GetSafeHwnd() : nullptr;
}

LPCTSTR KxUiHyperLinkAction::GetActionName(int nAction)
{
    return nAction >= 0 && nAction < ActionCount ? g_actionNames[nAction] : nullptr;
}

BOOL KxUiHyperLinkAction::ExecuteIt(BOOL bNotifyError)
{
    // The e-mail action rewrites the file for the call only; everything but the outcome is
    // put back afterwards.
    const KxUiHyperLinkAction saved(*this);
    m_hResult = nullptr;

    LPCTSTR verb = nullptr;
    switch (m_nActionID) {
    case ActionNone:
        m_nError = ErrorNone;
        return TRUE;
    case ActionUserDefined: {
        LRESULT answer;
        if (m_hWndRecipient == HWND_BROADCAST)
            answer = ::PostMessageW(m_hWndRecipient, m_nCallbackMsg, 0, reinterpret_cast<LPARAM>(this));
        else
            answer = ::SendMessageW(m_hWndRecipient, m_nCallbackMsg, 0, reinterpret_cast<LPARAM>(this));
        m_nError = answer != 0 ? ErrorNone : ErrorUserMessage;
        break;
    }
    case ActionOpen:
        verb = L"open";
        break;
    case ActionPrint:
        verb = L"print";
        break;
    case ActionExplore:
        verb = L"explore";
        break;
    case ActionEmail:
        verb = L"open";
        m_sFile = L"mailto:" + m_sFile;
        break;
    default:
        m_nError = ErrorUnknownAction;
        break;
    }

    if (verb != nullptr) {
        m_hResult = g_pfnShellExecute(nullptr, verb, m_sFile, m_sParameters, m_sDefaultDirectory, m_nShowCmd);
        const INT_PTR code = reinterpret_cast<INT_PTR>(m_hResult);
        if (code < 33) {
            m_nError = static_cast<int>(code);
            m_hResult = nullptr;
        } else {
            m_nError = ErrorNone;
        }
    }

    const int error = m_nError;
    const HINSTANCE result = m_hResult;
    *this = saved;
    m_nError = error;
    m_hResult = result;

    if (m_nError == ErrorNone)
        return TRUE;
    if (bNotifyError)
        ErrorNotify();
    return FALSE;
}

CString KxUiHyperLinkAction::GetErrorText(int nError) const
{
    UINT id;
    switch (nError) {
    case ErrorNone:
        return CString();
    case ErrorUserMessage: {
        CString text;
        LPCTSTR name = GetActionName(m_nActionID);
        text.Format(KxUiLoadStringWndRc::loadStringStatic(IDS_KXUI_HLA_USER_FAILED), name != nullptr ? name : L"");
        return text;
    }
    case ErrorUnknownAction: id = IDS_KXUI_HLA_UNKNOWN_ACTION; break;
    case 0: id = IDS_KXUI_HLA_OOM; break;
    case SE_ERR_FNF: id = IDS_KXUI_HLA_FILE_NOT_FOUND; break;
    case SE_ERR_PNF: id = IDS_KXUI_HLA_PATH_NOT_FOUND; break;
    case SE_ERR_ACCESSDENIED: id = IDS_KXUI_HLA_ACCESS_DENIED; break;
    case SE_ERR_OOM: id = IDS_KXUI_HLA_NO_MEMORY; break;
    case ERROR_BAD_FORMAT: id = IDS_KXUI_HLA_BAD_FORMAT; break;
    case SE_ERR_SHARE: id = IDS_KXUI_HLA_SHARE; break;
    case SE_ERR_ASSOCINCOMPLETE: id = IDS_KXUI_HLA_ASSOC_INCOMPLETE; break;
    case SE_ERR_DDETIMEOUT: id = IDS_KXUI_HLA_DDE_TIMEOUT; break;
    case SE_ERR_DDEFAIL: id = IDS_KXUI_HLA_DDE_FAIL; break;
    case SE_ERR_DDEBUSY: id = IDS_KXUI_HLA_DDE_BUSY; break;
    case SE_ERR_NOASSOC: id = IDS_KXUI_HLA_NO_ASSOC; break;
    case SE_ERR_DLLNOTFOUND: id = IDS_KXUI_HLA_DLL_NOT_FOUND; break;
    default: id = IDS_KXUI_HLA_UNKNOWN_ERROR; break;
    }
    return KxUiLoadStringWndRc::loadStringStatic(id);
}

void KxUiHyperLinkAction::ErrorNotify()
{
    if (m_nError == ErrorNone)
        return;
    ::MessageBeep(0);
    AfxMessageBox(GetErrorText(m_nError), MB_ICONSTOP);
}
