// CWinThread: the message loop, message pumping and idle processing.
#include "afximpl.h"

IMPLEMENT_DYNAMIC(CWinThread, CCmdTarget)

CWinThread::CWinThread()
    : m_pMainWnd(nullptr), m_pActiveWnd(nullptr), m_bAutoDelete(TRUE), m_hThread(nullptr), m_nThreadID(0),
      m_ptCursorLast{-1, -1}, m_nMsgLast(0)
{
}

CWinThread::~CWinThread()
{
    _AFX_THREAD_STATE* ts = AfxGetThreadState();
    if (ts->m_pCurrentWinThread == this)
        ts->m_pCurrentWinThread = nullptr;
}

CWnd* CWinThread::GetMainWnd()
{
    if (m_pActiveWnd != nullptr)
        return m_pActiveWnd;
    if (m_pMainWnd != nullptr)
        return m_pMainWnd;
    return CWnd::GetActiveWindow();
}

BOOL CWinThread::InitInstance()
{
    return FALSE;
}

int CWinThread::ExitInstance()
{
    return static_cast<int>(AfxGetThreadState()->m_msgCur.wParam);
}

void CWinThread::Delete()
{
    if (m_bAutoDelete)
        delete this;
}

int CWinThread::Run()
{
    MSG& msg = AfxGetThreadState()->m_msgCur;
    BOOL bIdle = TRUE;
    LONG lIdleCount = 0;
    for (;;) {
        while (bIdle && !::PeekMessageW(&msg, nullptr, 0, 0, PM_NOREMOVE)) {
            if (!OnIdle(lIdleCount++))
                bIdle = FALSE;
        }
        do {
            if (!PumpMessage())
                return ExitInstance();
            if (IsIdleMessage(&msg)) {
                bIdle = TRUE;
                lIdleCount = 0;
            }
        } while (::PeekMessageW(&msg, nullptr, 0, 0, PM_NOREMOVE));
    }
}

namespace {

BOOL InternalPumpMessage()
{
    MSG& msg = AfxGetThreadState()->m_msgCur;
    if (::GetMessageW(&msg, nullptr, 0, 0) <= 0)
        return FALSE;
    if (msg.message != WM_KICKIDLE && !AfxPreTranslateMessage(&msg)) {
        ::TranslateMessage(&msg);
        ::DispatchMessageW(&msg);
    }
    return TRUE;
}

BOOL InternalPreTranslateMessage(MSG* pMsg)
{
    if (pMsg->hwnd == nullptr)
        return FALSE;  // thread messages have no window chain
    CWnd* pMainWnd = AfxGetMainWnd();
    if (CWnd::WalkPreTranslateTree(CWnd::SafeHwnd(pMainWnd), pMsg))
        return TRUE;
    // A modeless window outside the main window still gets the main window's accelerators.
    if (pMainWnd != nullptr) {
        CWnd* pWnd = CWnd::FromHandle(pMsg->hwnd);
        if (pWnd != nullptr && pWnd->GetTopLevelParent() != pMainWnd)
            return pMainWnd->PreTranslateMessage(pMsg);
    }
    return FALSE;
}

}  // namespace

BOOL CWinThread::PumpMessage()
{
    return InternalPumpMessage();
}

BOOL CWinThread::PreTranslateMessage(MSG* pMsg)
{
    return InternalPreTranslateMessage(pMsg);
}

BOOL CWinThread::IsIdleMessage(MSG* pMsg)
{
    // Mouse moves that do not move and the caret blink do not restart idle work.
    if (pMsg->message == WM_MOUSEMOVE || pMsg->message == WM_NCMOUSEMOVE) {
        if (m_ptCursorLast.x == pMsg->pt.x && m_ptCursorLast.y == pMsg->pt.y && pMsg->message == m_nMsgLast)
            return FALSE;
        m_ptCursorLast = pMsg->pt;
        m_nMsgLast = pMsg->message;
        return TRUE;
    }
    return pMsg->message != WM_PAINT && pMsg->message != 0x0118;
}

BOOL CWinThread::OnIdle(LONG lCount)
{
    if (lCount <= 0) {
        // Command-user-interface updates of the main window and its bars.
        CWnd* pMainWnd = m_pMainWnd;
        if (pMainWnd != nullptr && pMainWnd->m_hWnd != nullptr && pMainWnd->IsWindowVisible()) {
            AfxCallWndProc(pMainWnd, pMainWnd->m_hWnd, WM_IDLEUPDATECMDUI, TRUE, 0);
            pMainWnd->SendMessageToDescendants(WM_IDLEUPDATECMDUI, TRUE, 0, TRUE, TRUE);
        }
    } else if (lCount == 1) {
        // Temporary objects live until here.
        AfxLockTempMaps();
        AfxUnlockTempMaps(TRUE);
    }
    return lCount < 1;
}

BOOL AFXAPI AfxPumpMessage()
{
    if (CWinThread* thread = AfxGetThread())
        return thread->PumpMessage();
    return InternalPumpMessage();
}

BOOL AFXAPI AfxPreTranslateMessage(MSG* pMsg)
{
    if (CWinThread* thread = AfxGetThread())
        return thread->PreTranslateMessage(pMsg);
    return InternalPreTranslateMessage(pMsg);
}

void AFXAPI AfxPostQuitMessage(int nExitCode)
{
    ::PostQuitMessage(nExitCode);
}
