// Command targets, command routing through message maps, CCmdUI and the wait cursor.
#include "afximpl.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

CCmdTarget::CCmdTarget() = default;

const AFX_MSGMAP* PASCAL CCmdTarget::GetThisMessageMap()
{
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, AfxSig_end, nullptr}};
    static const AFX_MSGMAP map = {nullptr, &entries[0]};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const
{
    return GetThisMessageMap();
}

const AFX_MSGMAP_ENTRY* AfxFindMessageEntry(const AFX_MSGMAP_ENTRY* lpEntry, UINT nMsg, UINT nCode, UINT nID)
{
    for (; lpEntry->nSig != AfxSig_end; ++lpEntry) {
        if (lpEntry->nMessage == nMsg && lpEntry->nCode == nCode && nID >= lpEntry->nID && nID <= lpEntry->nLastID)
            return lpEntry;
    }
    return nullptr;
}

namespace {

BOOL DispatchCmdMsg(CCmdTarget* pTarget, UINT nID, AFX_PMSG pfn, void* pExtra, UINT_PTR nSig,
                    AFX_CMDHANDLERINFO* pHandlerInfo)
{
    if (pHandlerInfo != nullptr) {
        pHandlerInfo->pTarget = pTarget;
        pHandlerInfo->pmf = pfn;
        return TRUE;
    }
    auto* notify = static_cast<AFX_NOTIFY*>(pExtra);
    switch (nSig) {
    case AfxSigCmd_v:
        (pTarget->*pfn)();
        return TRUE;
    case AfxSigCmd_b:
        return (pTarget->*reinterpret_cast<BOOL (CCmdTarget::*)()>(pfn))();
    case AfxSigCmd_RANGE:
        (pTarget->*reinterpret_cast<void (CCmdTarget::*)(UINT)>(pfn))(nID);
        return TRUE;
    case AfxSigCmd_EX:
        return (pTarget->*reinterpret_cast<BOOL (CCmdTarget::*)(UINT)>(pfn))(nID);
    case AfxSigCmdUI:
    case AfxSigCmdUI_RANGE: {
        auto* pCmdUI = static_cast<CCmdUI*>(pExtra);
        pCmdUI->m_bContinueRouting = FALSE;
        (pTarget->*reinterpret_cast<void (CCmdTarget::*)(CCmdUI*)>(pfn))(pCmdUI);
        const BOOL handled = !pCmdUI->m_bContinueRouting;
        pCmdUI->m_bContinueRouting = FALSE;
        return handled;
    }
    case AfxSigNotify_v:
        if (notify == nullptr)
            return FALSE;
        (pTarget->*reinterpret_cast<void (CCmdTarget::*)(NMHDR*, LRESULT*)>(pfn))(notify->pNMHDR, notify->pResult);
        return TRUE;
    case AfxSigNotify_b:
        if (notify == nullptr)
            return FALSE;
        return (pTarget->*reinterpret_cast<BOOL (CCmdTarget::*)(NMHDR*, LRESULT*)>(pfn))(notify->pNMHDR,
                                                                                     notify->pResult);
    case AfxSigNotify_RANGE:
        if (notify == nullptr)
            return FALSE;
        (pTarget->*reinterpret_cast<void (CCmdTarget::*)(UINT, NMHDR*, LRESULT*)>(pfn))(nID, notify->pNMHDR,
                                                                                     notify->pResult);
        return TRUE;
    case AfxSigNotify_EX:
        if (notify == nullptr)
            return FALSE;
        return (pTarget->*reinterpret_cast<BOOL (CCmdTarget::*)(UINT, NMHDR*, LRESULT*)>(pfn))(
            nID, notify->pNMHDR, notify->pResult);
    default:
        return FALSE;
    }
}

}  // namespace

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    // Notifications carry their message in the high word of nCode (WM_COMMAND when 0).
    UINT nMsg = 0;
    UINT code = static_cast<UINT>(nCode);
    if (code != CN_UPDATE_COMMAND_UI) {
        nMsg = HIWORD(code);
        code = LOWORD(code);
    }
    if (nMsg == 0)
        nMsg = WM_COMMAND;
    for (const AFX_MSGMAP* map = GetMessageMap(); map != nullptr && map->pfnGetBaseMap != nullptr;
         map = map->pfnGetBaseMap()) {
        if (const AFX_MSGMAP_ENTRY* e = AfxFindMessageEntry(map->lpEntries, nMsg, code, nID))
            return DispatchCmdMsg(this, nID, e->pfn, pExtra, e->nSig, pHandlerInfo);
    }
    return FALSE;
}

////////////////////////////////////////////////////////////////////////////
// Wait cursor

void CCmdTarget::BeginWaitCursor()
{
    if (CWinApp* app = AfxGetApp())
        app->DoWaitCursor(1);
    else
        ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
}

void CCmdTarget::EndWaitCursor()
{
    if (CWinApp* app = AfxGetApp())
        app->DoWaitCursor(-1);
    else
        ::SetCursor(::LoadCursorW(nullptr, IDC_ARROW));
}

void CCmdTarget::RestoreWaitCursor()
{
    if (CWinApp* app = AfxGetApp())
        app->DoWaitCursor(0);
}

CWaitCursor::CWaitCursor()
{
    if (CWinApp* app = AfxGetApp())
        app->BeginWaitCursor();
}

CWaitCursor::~CWaitCursor()
{
    if (CWinApp* app = AfxGetApp())
        app->EndWaitCursor();
}

void CWaitCursor::Restore()
{
    if (CWinApp* app = AfxGetApp())
        app->RestoreWaitCursor();
}

////////////////////////////////////////////////////////////////////////////
// CCmdUI

CCmdUI::CCmdUI()
    : m_nID(0), m_nIndex(0), m_pMenu(nullptr), m_pSubMenu(nullptr), m_pParentMenu(nullptr), m_pOther(nullptr),
      m_bEnableChanged(FALSE), m_bContinueRouting(FALSE), m_nIndexMax(0)
{
}

void CCmdUI::Enable(BOOL bOn)
{
    if (m_pMenu != nullptr) {
        // A popup's own item follows its first command; it is not changed indirectly.
        if (m_pSubMenu != nullptr || m_nIndex >= m_nIndexMax)
            return;
        m_pMenu->EnableMenuItem(m_nIndex, MF_BYPOSITION | (bOn ? MF_ENABLED : (MF_DISABLED | MF_GRAYED)));
    } else if (m_pOther != nullptr) {
        // Move the focus away from a control before disabling it.
        if (!bOn && ::GetFocus() == m_pOther->m_hWnd) {
            HWND parent = ::GetParent(m_pOther->m_hWnd);
            if (parent != nullptr)
                ::SetFocus(::GetNextDlgTabItem(parent, m_pOther->m_hWnd, FALSE));
        }
        m_pOther->EnableWindow(bOn);
    }
    m_bEnableChanged = TRUE;
}

void CCmdUI::SetCheck(int nCheck)
{
    if (m_pMenu != nullptr) {
        if (m_pSubMenu != nullptr || m_nIndex >= m_nIndexMax)
            return;
        m_pMenu->CheckMenuItem(m_nIndex, MF_BYPOSITION | (nCheck ? MF_CHECKED : MF_UNCHECKED));
    } else if (m_pOther != nullptr) {
        if (m_pOther->SendMessage(WM_GETDLGCODE) & DLGC_BUTTON)
            m_pOther->SendMessage(BM_SETCHECK, nCheck);
    }
}

void CCmdUI::SetRadio(BOOL bOn)
{
    SetCheck(bOn ? 1 : 0);
    if (m_pMenu != nullptr && m_pSubMenu == nullptr && m_nIndex < m_nIndexMax) {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE;
        if (::GetMenuItemInfoW(m_pMenu->m_hMenu, m_nIndex, TRUE, &info)) {
            info.fType |= MFT_RADIOCHECK;
            ::SetMenuItemInfoW(m_pMenu->m_hMenu, m_nIndex, TRUE, &info);
        }
    }
}

void CCmdUI::SetText(LPCTSTR lpszText)
{
    if (lpszText == nullptr)
        lpszText = L"";
    if (m_pMenu != nullptr) {
        if (m_pSubMenu != nullptr || m_nIndex >= m_nIndexMax)
            return;
        UINT nState = m_pMenu->GetMenuState(m_nIndex, MF_BYPOSITION);
        nState &= ~(MF_BITMAP | MF_OWNERDRAW | MF_SEPARATOR | MF_POPUP | 0xFF00);
        m_pMenu->ModifyMenu(m_nIndex, MF_BYPOSITION | MF_STRING | nState, m_nID, lpszText);
    } else if (m_pOther != nullptr) {
        CString current;
        m_pOther->GetWindowText(current);
        if (current != lpszText)
            m_pOther->SetWindowText(lpszText);
    }
}

void CCmdUI::ContinueRouting()
{
    m_bContinueRouting = TRUE;
}

BOOL CCmdUI::DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler)
{
    if (m_nID == 0 || LOWORD(m_nID) == 0xFFFF || pTarget == nullptr)
        return TRUE;  // separators and popups are not updated
    m_bEnableChanged = FALSE;
    const BOOL bResult = pTarget->OnCmdMsg(m_nID, static_cast<int>(CN_UPDATE_COMMAND_UI), this, nullptr);
    if (bDisableIfNoHndler && !m_bEnableChanged) {
        AFX_CMDHANDLERINFO info = {nullptr, nullptr};
        if (!pTarget->OnCmdMsg(m_nID, CN_COMMAND, this, &info))
            Enable(FALSE);
    }
    return bResult;
}
