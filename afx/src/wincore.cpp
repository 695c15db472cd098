// CWnd: handle map, creation hook, window procedure, message-map dispatch and reflection.
#include "afximpl.h"
#include <mutex>
#include <set>
#include <string>

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

#define GET_X_LPARAM(lp) static_cast<int>(static_cast<short>(LOWORD(lp)))
#define GET_Y_LPARAM(lp) static_cast<int>(static_cast<short>(HIWORD(lp)))

const CWnd CWnd::wndTop(HWND_TOP);
const CWnd CWnd::wndBottom(HWND_BOTTOM);
const CWnd CWnd::wndTopMost(HWND_TOPMOST);
const CWnd CWnd::wndNoTopMost(HWND_NOTOPMOST);

////////////////////////////////////////////////////////////////////////////
// Handle map

namespace {

CObject* NewTempWnd(HANDLE h)
{
    CWnd* p = new CWnd;
    p->m_hWnd = static_cast<HWND>(h);
    return p;
}

void DeleteTempWnd(CObject* p)
{
    auto* w = static_cast<CWnd*>(p);
    w->m_hWnd = nullptr;  // a temporary object never destroys its window
    delete w;
}

const AFX_HANDLEMAP_CLASS wndMapClass = {NewTempWnd, DeleteTempWnd};

}  // namespace

CHandleMap* AFXAPI afxMapHWND(BOOL bCreate)
{
    return AfxGetHandleMap(&wndMapClass, bCreate);
}

CString AfxGetWindowText(HWND hWnd)
{
    CString s;
    const int n = ::GetWindowTextLengthW(hWnd);
    if (n > 0) {
        const int got = ::GetWindowTextW(hWnd, s.GetBuffer(n + 1), n + 1);
        s.ReleaseBuffer(got > 0 ? got : 0);
    }
    return s;
}

CWnd::CWnd() : m_hWnd(nullptr), m_pfnSuper(nullptr), m_hWndOwner(nullptr), m_nFlags(0), m_nModalResult(0) {}

CWnd::CWnd(HWND hWnd) : m_hWnd(hWnd), m_pfnSuper(nullptr), m_hWndOwner(nullptr), m_nFlags(0), m_nModalResult(0)
{
}

CWnd::~CWnd()
{
    // A permanent object going away destroys its window (its handlers are the base's now).
    if (m_hWnd != nullptr && ::IsWindow(m_hWnd) && FromHandlePermanent(m_hWnd) == this)
        DestroyWindow();
    if (m_hWnd != nullptr && FromHandlePermanent(m_hWnd) == this)
        Detach();
}

HWND CWnd::GetSafeHwnd() const
{
    // Callers use this on null pointers; keep the compiler from assuming 'this' is set.
    const CWnd* p = this;
    asm("" : "+r"(p));
    return p != nullptr ? p->m_hWnd : nullptr;
}

CWnd* PASCAL CWnd::FromHandle(HWND hWnd)
{
    return static_cast<CWnd*>(afxMapHWND(TRUE)->FromHandle(hWnd));
}

CWnd* PASCAL CWnd::FromHandlePermanent(HWND hWnd)
{
    CHandleMap* map = afxMapHWND(FALSE);
    return map != nullptr && hWnd != nullptr ? static_cast<CWnd*>(map->LookupPermanent(hWnd)) : nullptr;
}

void PASCAL CWnd::DeleteTempMap()
{
    if (CHandleMap* map = afxMapHWND(FALSE))
        map->DeleteTemp();
}

BOOL CWnd::Attach(HWND hWndNew)
{
    if (hWndNew == nullptr || m_hWnd != nullptr || FromHandlePermanent(hWndNew) != nullptr)
        return FALSE;
    m_hWnd = hWndNew;
    afxMapHWND(TRUE)->SetPermanent(hWndNew, this);
    return TRUE;
}

HWND CWnd::Detach()
{
    HWND hWnd = m_hWnd;
    if (hWnd != nullptr) {
        CHandleMap* map = afxMapHWND(FALSE);
        if (map != nullptr && map->LookupPermanent(hWnd) == this)
            map->RemoveHandle(hWnd);
        m_hWnd = nullptr;
    }
    return hWnd;
}

////////////////////////////////////////////////////////////////////////////
// Creation: the object is attached in the creation hook, before WM_NCCREATE.

namespace {

LRESULT CALLBACK CbtFilterHook(int code, WPARAM wParam, LPARAM lParam)
{
    _AFX_THREAD_STATE* ts = AfxGetThreadState();
    if (code == HCBT_CREATEWND && ts->m_pWndInit != nullptr) {
        HWND hWnd = reinterpret_cast<HWND>(wParam);
        wchar_t cls[8] = {};
        // The system may create its input-method window first; it is not ours.
        const bool ime = ::GetClassNameW(hWnd, cls, 8) > 0 && ::lstrcmpiW(cls, L"IME") == 0;
        if (!ime) {
            CWnd* pWndInit = ts->m_pWndInit;
            ts->m_pWndInit = nullptr;
            if (pWndInit->Attach(hWnd)) {
                pWndInit->PreSubclassWindow();
                auto old = reinterpret_cast<WNDPROC>(::GetWindowLongPtrW(hWnd, GWLP_WNDPROC));
                if (old != AfxWndProc) {
                    ::SetWindowLongPtrW(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(AfxWndProc));
                    pWndInit->m_pfnSuper = old;
                }
            }
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

void AFXAPI AfxHookWindowCreate(CWnd* pWnd)
{
    _AFX_THREAD_STATE* ts = AfxGetThreadState();
    if (ts->m_hHookOldCbtFilter == nullptr)
        ts->m_hHookOldCbtFilter = ::SetWindowsHookExW(WH_CBT, CbtFilterHook, nullptr, ::GetCurrentThreadId());
    ts->m_pWndInit = pWnd;
}

BOOL AFXAPI AfxUnhookWindowCreate()
{
    _AFX_THREAD_STATE* ts = AfxGetThreadState();
    if (ts->m_hHookOldCbtFilter != nullptr) {
        ::UnhookWindowsHookEx(ts->m_hHookOldCbtFilter);
        ts->m_hHookOldCbtFilter = nullptr;
    }
    if (ts->m_pWndInit != nullptr) {
        ts->m_pWndInit = nullptr;
        return FALSE;  // the window was never created
    }
    return TRUE;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    if (cs.lpszClass == nullptr)
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorW(nullptr, IDC_ARROW));
    return TRUE;
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, int x, int y,
                    int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu, LPVOID lpParam)
{
    if (m_hWnd != nullptr)
        return FALSE;
    CREATESTRUCT cs = {};
    cs.dwExStyle = dwExStyle;
    cs.lpszClass = lpszClassName;
    cs.lpszName = lpszWindowName;
    cs.style = static_cast<LONG>(dwStyle);
    cs.x = x;
    cs.y = y;
    cs.cx = nWidth;
    cs.cy = nHeight;
    cs.hwndParent = hWndParent;
    cs.hMenu = nIDorHMenu;
    cs.hInstance = AfxGetInstanceHandle();
    cs.lpCreateParams = lpParam;
    if (!PreCreateWindow(cs)) {
        PostNcDestroy();
        return FALSE;
    }
    AfxHookWindowCreate(this);
    HWND hWnd = ::CreateWindowExW(cs.dwExStyle, cs.lpszClass, cs.lpszName, static_cast<DWORD>(cs.style), cs.x, cs.y,
                                  cs.cx, cs.cy, cs.hwndParent, cs.hMenu, cs.hInstance, cs.lpCreateParams);
    if (!AfxUnhookWindowCreate())
        PostNcDestroy();  // failed before the object was attached
    return hWnd != nullptr;
}

BOOL CWnd::CreateEx(DWORD dwExStyle, LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                    CWnd* pParentWnd, UINT nID, LPVOID lpParam)
{
    // CW_USEDEFAULT in left or top means "default" for that pair.
    const int cx = rect.left == CW_USEDEFAULT ? CW_USEDEFAULT : rect.right - rect.left;
    const int cy = rect.top == CW_USEDEFAULT ? CW_USEDEFAULT : rect.bottom - rect.top;
    return CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top, cx, cy,
                    CWnd::SafeHwnd(pParentWnd), reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nID)), lpParam);
}

BOOL CWnd::Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                  UINT nID, CCreateContext* pContext)
{
    // Create makes child windows.
    if (pParentWnd == nullptr || (dwStyle & WS_POPUP))
        return FALSE;
    return CreateEx(0, lpszClassName, lpszWindowName, dwStyle | WS_CHILD, rect, pParentWnd, nID,
                    static_cast<LPVOID>(pContext));
}

BOOL CWnd::DestroyWindow()
{
    if (m_hWnd == nullptr)
        return FALSE;
    const bool permanent = FromHandlePermanent(m_hWnd) == this;
    const BOOL bResult = ::DestroyWindow(m_hWnd);
    // A permanent object was detached by OnNcDestroy and may be deleted by now.
    if (!permanent)
        Detach();
    return bResult;
}

void CWnd::PostNcDestroy() {}

////////////////////////////////////////////////////////////////////////////
// Subclassing

void CWnd::PreSubclassWindow() {}

BOOL CWnd::SubclassWindow(HWND hWnd)
{
    if (!::IsWindow(hWnd) || !Attach(hWnd))
        return FALSE;
    PreSubclassWindow();
    auto old = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(AfxWndProc)));
    if (old != AfxWndProc)
        m_pfnSuper = old;
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT nID, CWnd* pParent)
{
    HWND hWndControl = ::GetDlgItem(CWnd::SafeHwnd(pParent), static_cast<int>(nID));
    return hWndControl != nullptr && SubclassWindow(hWndControl);
}

HWND CWnd::UnsubclassWindow()
{
    if (m_hWnd == nullptr)
        return nullptr;
    if (m_pfnSuper != nullptr) {
        ::SetWindowLongPtrW(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
        m_pfnSuper = nullptr;
    }
    return Detach();
}

////////////////////////////////////////////////////////////////////////////
// Window procedure

LRESULT AFXAPI AfxCallWndProc(CWnd* pWnd, HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam)
{
    _AFX_THREAD_STATE* ts = AfxGetThreadState();
    const MSG oldState = ts->m_lastSentMsg;
    ts->m_lastSentMsg.hwnd = hWnd;
    ts->m_lastSentMsg.message = nMsg;
    ts->m_lastSentMsg.wParam = wParam;
    ts->m_lastSentMsg.lParam = lParam;
    LRESULT lResult = 0;
    try {
        lResult = pWnd->WindowProc(nMsg, wParam, lParam);
    } catch (CException* e) {
        // An exception must not unwind through the system's message dispatch.
        lResult = nMsg == WM_CREATE ? -1 : 0;
        e->Delete();
    }
    ts->m_lastSentMsg = oldState;
    return lResult;
}

LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam)
{
    CWnd* pWnd = CWnd::FromHandlePermanent(hWnd);
    if (pWnd == nullptr)
        return ::DefWindowProcW(hWnd, nMsg, wParam, lParam);
    return AfxCallWndProc(pWnd, hWnd, nMsg, wParam, lParam);
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT lResult = 0;
    if (!OnWndMsg(message, wParam, lParam, &lResult))
        lResult = DefWindowProc(message, wParam, lParam);
    return lResult;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (m_pfnSuper != nullptr)
        return ::CallWindowProcW(m_pfnSuper, m_hWnd, message, wParam, lParam);
    return ::DefWindowProcW(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default()
{
    const MSG& msg = AfxGetThreadState()->m_lastSentMsg;
    return DefWindowProc(msg.message, msg.wParam, msg.lParam);
}

const MSG* PASCAL CWnd::GetCurrentMessage()
{
    MSG& msg = AfxGetThreadState()->m_lastSentMsg;
    msg.time = static_cast<DWORD>(::GetMessageTime());
    const DWORD pos = ::GetMessagePos();
    msg.pt.x = GET_X_LPARAM(pos);
    msg.pt.y = GET_Y_LPARAM(pos);
    return &msg;
}

BOOL CWnd::PreTranslateMessage(MSG*)
{
    return FALSE;
}

BOOL PASCAL CWnd::WalkPreTranslateTree(HWND hWndStop, MSG* pMsg)
{
    for (HWND hWnd = pMsg->hwnd; hWnd != nullptr; hWnd = ::GetParent(hWnd)) {
        if (CWnd* pWnd = FromHandlePermanent(hWnd)) {
            if (pWnd->PreTranslateMessage(pMsg))
                return TRUE;
        }
        if (hWnd == hWndStop)
            break;
    }
    return FALSE;
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    LRESULT lResult = 0;
    if (message == WM_COMMAND) {
        if (!OnCommand(wParam, lParam))
            return FALSE;
        if (pResult != nullptr)
            *pResult = 1;
        return TRUE;
    }
    if (message == WM_NOTIFY) {
        auto* pNMHDR = reinterpret_cast<NMHDR*>(lParam);
        if (pNMHDR == nullptr || pNMHDR->hwndFrom == nullptr || !OnNotify(wParam, lParam, &lResult))
            return FALSE;
        if (pResult != nullptr)
            *pResult = lResult;
        return TRUE;
    }

    // The WM_CTLCOLORxxx messages reach a map as WM_CTLCOLOR with an AFX_CTLCOLOR.
    AFX_CTLCOLOR ctl;
    if (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) {
        ctl.hWnd = reinterpret_cast<HWND>(lParam);
        ctl.hDC = reinterpret_cast<HDC>(wParam);
        ctl.nCtlType = message - WM_CTLCOLORMSGBOX;
        message = WM_CTLCOLOR;
        lParam = reinterpret_cast<LPARAM>(&ctl);
    }

    for (const AFX_MSGMAP* map = GetMessageMap(); map != nullptr && map->pfnGetBaseMap != nullptr;
         map = map->pfnGetBaseMap()) {
        const AFX_MSGMAP_ENTRY* entry = nullptr;
        if (message < 0xC000) {
            entry = AfxFindMessageEntry(map->lpEntries, message, 0, 0);
        } else {
            // Registered messages: the entry points at the variable holding the number.
            for (const AFX_MSGMAP_ENTRY* e = map->lpEntries; e->nSig != AfxSig_end; ++e) {
                if (e->nMessage == 0xC000 && *reinterpret_cast<const UINT*>(e->nSig) == message) {
                    entry = e;
                    break;
                }
            }
            if (entry != nullptr) {
                lResult = (this->*reinterpret_cast<LRESULT (CWnd::*)(WPARAM, LPARAM)>(entry->pfn))(wParam, lParam);
                if (pResult != nullptr)
                    *pResult = lResult;
                return TRUE;
            }
        }
        if (entry != nullptr)
            return DispatchMapEntry(entry, message, wParam, lParam, pResult);
    }
    return FALSE;
}

BOOL CWnd::DispatchMapEntry(const AFX_MSGMAP_ENTRY* lpEntry, UINT, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
#define KXAFX_CALL(type) (this->*reinterpret_cast<type>(lpEntry->pfn))
    LRESULT lResult = 0;
    const CPoint pt(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
    switch (lpEntry->nSig) {
    case AfxSig_l_w_l:
        lResult = KXAFX_CALL(LRESULT (CWnd::*)(WPARAM, LPARAM))(wParam, lParam);
        break;
    case AfxSig_v_v:
        KXAFX_CALL(void (CWnd::*)())();
        break;
    case AfxSig_b_v:
        lResult = KXAFX_CALL(BOOL (CWnd::*)())();
        break;
    case AfxSig_u_v:
        lResult = KXAFX_CALL(UINT (CWnd::*)())();
        break;
    case AfxSig_i_CS:
        lResult = KXAFX_CALL(int (CWnd::*)(LPCREATESTRUCT))(reinterpret_cast<LPCREATESTRUCT>(lParam));
        break;
    case AfxSig_b_CS:
        lResult = KXAFX_CALL(BOOL (CWnd::*)(LPCREATESTRUCT))(reinterpret_cast<LPCREATESTRUCT>(lParam));
        break;
    case AfxSig_v_u_ii:
        KXAFX_CALL(void (CWnd::*)(UINT, int, int))(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
        break;
    case AfxSig_v_ii:
        KXAFX_CALL(void (CWnd::*)(int, int))(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
        break;
    case AfxSig_v_u_R:
        KXAFX_CALL(void (CWnd::*)(UINT, LPRECT))(static_cast<UINT>(wParam), reinterpret_cast<LPRECT>(lParam));
        lResult = TRUE;
        break;
    case AfxSig_v_MMI:
        KXAFX_CALL(void (CWnd::*)(MINMAXINFO*))(reinterpret_cast<MINMAXINFO*>(lParam));
        break;
    case AfxSig_v_WP:
        KXAFX_CALL(void (CWnd::*)(WINDOWPOS*))(reinterpret_cast<WINDOWPOS*>(lParam));
        break;
    case AfxSig_v_b_NCS:
        KXAFX_CALL(void (CWnd::*)(BOOL, NCCALCSIZE_PARAMS*))(static_cast<BOOL>(wParam),
                                                             reinterpret_cast<NCCALCSIZE_PARAMS*>(lParam));
        break;
    case AfxSig_v_w:
        KXAFX_CALL(void (CWnd::*)(UINT_PTR))(static_cast<UINT_PTR>(wParam));
        break;
    case AfxSig_v_u_u_SB:
        KXAFX_CALL(void (CWnd::*)(UINT, UINT, CScrollBar*))(
            LOWORD(wParam), HIWORD(wParam),
            reinterpret_cast<CScrollBar*>(CWnd::FromHandle(reinterpret_cast<HWND>(lParam))));
        break;
    case AfxSig_v_uu:
        KXAFX_CALL(void (CWnd::*)(UINT, UINT))(LOWORD(wParam), HIWORD(wParam));
        break;
    case AfxSig_v_u_p:
        KXAFX_CALL(void (CWnd::*)(UINT, CPoint))(static_cast<UINT>(wParam), pt);
        break;
    case AfxSig_b_u_s_p: {
        // The wheel's point is in screen coordinates.
        lResult = KXAFX_CALL(BOOL (CWnd::*)(UINT, short, CPoint))(LOWORD(wParam), static_cast<short>(HIWORD(wParam)),
                                                                   pt);
        break;
    }
    case AfxSig_l_p:
        lResult = KXAFX_CALL(LRESULT (CWnd::*)(CPoint))(pt);
        break;
    case AfxSig_i_W_uu:
        lResult = KXAFX_CALL(int (CWnd::*)(CWnd*, UINT, UINT))(CWnd::FromHandle(reinterpret_cast<HWND>(wParam)),
                                                               LOWORD(lParam), HIWORD(lParam));
        break;
    case AfxSig_v_uuu:
        KXAFX_CALL(void (CWnd::*)(UINT, UINT, UINT))(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
        break;
    case AfxSig_v_W:
        KXAFX_CALL(void (CWnd::*)(CWnd*))(CWnd::FromHandle(reinterpret_cast<HWND>(wParam)));
        break;
    case AfxSig_v_W2:
        KXAFX_CALL(void (CWnd::*)(CWnd*))(CWnd::FromHandle(reinterpret_cast<HWND>(lParam)));
        break;
    case AfxSig_b_W_uu:
        lResult = KXAFX_CALL(BOOL (CWnd::*)(CWnd*, UINT, UINT))(CWnd::FromHandle(reinterpret_cast<HWND>(wParam)),
                                                                LOWORD(lParam), HIWORD(lParam));
        break;
    case AfxSig_v_W_p:
        KXAFX_CALL(void (CWnd::*)(CWnd*, CPoint))(CWnd::FromHandle(reinterpret_cast<HWND>(wParam)), pt);
        break;
    case AfxSig_v_u_W_b:
        KXAFX_CALL(void (CWnd::*)(UINT, CWnd*, BOOL))(LOWORD(wParam), CWnd::FromHandle(reinterpret_cast<HWND>(lParam)),
                                                      HIWORD(wParam));
        break;
    case AfxSig_v_b_u:
        KXAFX_CALL(void (CWnd::*)(BOOL, UINT))(static_cast<BOOL>(wParam), static_cast<UINT>(lParam));
        break;
    case AfxSig_v_b:
        KXAFX_CALL(void (CWnd::*)(BOOL))(static_cast<BOOL>(wParam));
        break;
    case AfxSig_v_M_u_b:
        KXAFX_CALL(void (CWnd::*)(CMenu*, UINT, BOOL))(CMenu::FromHandle(reinterpret_cast<HMENU>(wParam)),
                                                       LOWORD(lParam), HIWORD(lParam));
        break;
    case AfxSig_v_M:
        KXAFX_CALL(void (CWnd::*)(CMenu*))(CMenu::FromHandle(reinterpret_cast<HMENU>(wParam)));
        break;
    case AfxSig_l_u_u_M:
        lResult = KXAFX_CALL(LRESULT (CWnd::*)(UINT, UINT, CMenu*))(LOWORD(wParam), HIWORD(wParam),
                                                                    CMenu::FromHandle(reinterpret_cast<HMENU>(lParam)));
        break;
    case AfxSig_v_u_u_h:
        KXAFX_CALL(void (CWnd::*)(UINT, UINT, HMENU))(LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HMENU>(lParam));
        break;
    case AfxSig_v_i_MIS:
        KXAFX_CALL(void (CWnd::*)(int, LPMEASUREITEMSTRUCT))(static_cast<int>(wParam),
                                                             reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
        lResult = TRUE;
        break;
    case AfxSig_v_i_DIS:
        KXAFX_CALL(void (CWnd::*)(int, LPDRAWITEMSTRUCT))(static_cast<int>(wParam),
                                                          reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
        lResult = TRUE;
        break;
    case AfxSig_i_i_CIS:
        lResult = KXAFX_CALL(int (CWnd::*)(int, LPCOMPAREITEMSTRUCT))(static_cast<int>(wParam),
                                                                      reinterpret_cast<LPCOMPAREITEMSTRUCT>(lParam));
        break;
    case AfxSig_v_i_DEL:
        KXAFX_CALL(void (CWnd::*)(int, LPDELETEITEMSTRUCT))(static_cast<int>(wParam),
                                                            reinterpret_cast<LPDELETEITEMSTRUCT>(lParam));
        lResult = TRUE;
        break;
    case AfxSig_v_MIS:
        KXAFX_CALL(void (CWnd::*)(LPMEASUREITEMSTRUCT))(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
        lResult = TRUE;
        break;
    case AfxSig_v_DIS:
        KXAFX_CALL(void (CWnd::*)(LPDRAWITEMSTRUCT))(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
        lResult = TRUE;
        break;
    case AfxSig_i_u_LB_u:
        lResult = KXAFX_CALL(int (CWnd::*)(UINT, CListBox*, UINT))(
            LOWORD(wParam), reinterpret_cast<CListBox*>(CWnd::FromHandle(reinterpret_cast<HWND>(lParam))),
            HIWORD(wParam));
        break;
    case AfxSig_v_u_s:
        KXAFX_CALL(void (CWnd::*)(UINT, LPCTSTR))(static_cast<UINT>(wParam), reinterpret_cast<LPCTSTR>(lParam));
        break;
    case AfxSig_v_u_l:
        KXAFX_CALL(void (CWnd::*)(UINT, LPARAM))(static_cast<UINT>(wParam), lParam);
        break;
    case AfxSig_b_D:
    case AfxSig_hbr_D_W_u:
    case AfxSig_hbr_D_u:
        return AfxDispatchDCEntry(this, lpEntry->nSig, lpEntry->pfn, wParam, lParam, pResult);
    default:
        return FALSE;
    }
#undef KXAFX_CALL
    if (pResult != nullptr)
        *pResult = lResult;
    return TRUE;
}

////////////////////////////////////////////////////////////////////////////
// Commands, notifications and reflection

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const UINT nID = LOWORD(wParam);
    HWND hWndCtrl = reinterpret_cast<HWND>(lParam);
    int nCode = HIWORD(wParam);
    if (hWndCtrl == nullptr) {
        // A menu or accelerator command: it may have been disabled since it was shown.
        if (nID == 0)
            return FALSE;
        struct TestCmdUI : CCmdUI {
            BOOL m_bEnabled = TRUE;
            void Enable(BOOL bOn) override { m_bEnabled = bOn; m_bEnableChanged = TRUE; }
            void SetCheck(int) override {}
            void SetRadio(BOOL) override {}
            void SetText(LPCTSTR) override {}
        } test;
        test.m_nID = nID;
        OnCmdMsg(nID, static_cast<int>(CN_UPDATE_COMMAND_UI), &test, nullptr);
        if (!test.m_bEnabled)
            return TRUE;
        nCode = CN_COMMAND;
    } else {
        if (AfxGetThreadState()->m_hLockoutNotifyWindow == m_hWnd)
            return TRUE;  // UpdateData is filling the controls
        // The control's own object sees its notification first.
        if (ReflectLastMsg(hWndCtrl))
            return TRUE;
        if (nID == 0)
            return FALSE;
    }
    return OnCmdMsg(nID, nCode, nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM, LPARAM lParam, LRESULT* pResult)
{
    auto* pNMHDR = reinterpret_cast<NMHDR*>(lParam);
    if (AfxGetThreadState()->m_hLockoutNotifyWindow == m_hWnd)
        return TRUE;
    if (ReflectLastMsg(pNMHDR->hwndFrom, pResult))
        return TRUE;
    AFX_NOTIFY notify;
    notify.pResult = pResult;
    notify.pNMHDR = pNMHDR;
    return OnCmdMsg(static_cast<UINT>(pNMHDR->idFrom), static_cast<int>(MAKELONG(pNMHDR->code, WM_NOTIFY)), &notify,
                    nullptr);
}

BOOL PASCAL CWnd::ReflectLastMsg(HWND hWndChild, LRESULT* pResult)
{
    CWnd* pWnd = FromHandlePermanent(hWndChild);
    return pWnd != nullptr && pWnd->SendChildNotifyLastMsg(pResult);
}

BOOL CWnd::SendChildNotifyLastMsg(LRESULT* pResult)
{
    const MSG msg = AfxGetThreadState()->m_lastSentMsg;
    return OnChildNotify(msg.message, msg.wParam, msg.lParam, pResult);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    return ReflectChildNotify(message, wParam, lParam, pResult);
}

BOOL CWnd::ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    switch (message) {
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_PARENTNOTIFY:
    case WM_DRAWITEM:
    case WM_MEASUREITEM:
    case WM_DELETEITEM:
    case WM_VKEYTOITEM:
    case WM_CHARTOITEM:
    case WM_COMPAREITEM:
        return CWnd::OnWndMsg(WM_REFLECT_BASE + message, wParam, lParam, pResult);
    case WM_COMMAND: {
        const int nCode = HIWORD(wParam);
        if (CWnd::OnCmdMsg(0, static_cast<int>(MAKELONG(nCode, WM_REFLECT_BASE + WM_COMMAND)), nullptr, nullptr)) {
            if (pResult != nullptr)
                *pResult = 1;
            return TRUE;
        }
        return FALSE;
    }
    case WM_NOTIFY: {
        auto* pNMHDR = reinterpret_cast<NMHDR*>(lParam);
        AFX_NOTIFY notify;
        notify.pResult = pResult;
        notify.pNMHDR = pNMHDR;
        return CWnd::OnCmdMsg(0, static_cast<int>(MAKELONG(pNMHDR->code, WM_REFLECT_BASE + WM_NOTIFY)), &notify,
                              nullptr);
    }
    default:
        if (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) {
            AFX_CTLCOLOR ctl;
            ctl.hDC = reinterpret_cast<HDC>(wParam);
            ctl.hWnd = reinterpret_cast<HWND>(lParam);
            ctl.nCtlType = message - WM_CTLCOLORMSGBOX;
            LRESULT lResult = 0;
            if (!CWnd::OnWndMsg(WM_REFLECT_BASE + WM_CTLCOLOR, 0, reinterpret_cast<LPARAM>(&ctl), &lResult) ||
                lResult == 0)
                return FALSE;  // no brush: the parent decides
            if (pResult != nullptr)
                *pResult = lResult;
            return TRUE;
        }
        return FALSE;
    }
}

////////////////////////////////////////////////////////////////////////////
// Modal loops

BOOL CWnd::ContinueModal()
{
    return (m_nFlags & WF_CONTINUEMODAL) != 0;
}

void CWnd::EndModalLoop(int nResult)
{
    m_nModalResult = nResult;
    if (m_nFlags & WF_CONTINUEMODAL) {
        m_nFlags &= ~WF_CONTINUEMODAL;
        PostMessage(WM_NULL);  // wakes the loop up
    }
}

int CWnd::RunModalLoop(DWORD dwFlags)
{
    BOOL bIdle = TRUE;
    LONG lIdleCount = 0;
    BOOL bShowIdle = (dwFlags & MLF_SHOWONIDLE) && !(GetStyle() & WS_VISIBLE);
    HWND hWndParent = ::GetParent(m_hWnd);
    m_nFlags |= (WF_MODALLOOP | WF_CONTINUEMODAL);
    MSG* pMsg = &AfxGetThreadState()->m_msgCur;
    HWND hWnd = m_hWnd;
    for (;;) {
        // Idle work while the queue is empty: show the window, tell the owner.
        while (bIdle && !::PeekMessageW(pMsg, nullptr, 0, 0, PM_NOREMOVE)) {
            if (bShowIdle) {
                ShowWindow(SW_SHOWNORMAL);
                UpdateWindow();
                bShowIdle = FALSE;
            }
            if (!(dwFlags & MLF_NOIDLEMSG) && hWndParent != nullptr && lIdleCount == 0)
                ::SendMessageW(hWndParent, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(hWnd));
            if ((dwFlags & MLF_NOKICKIDLE) || !SendMessage(WM_KICKIDLE, MSGF_DIALOGBOX, lIdleCount++))
                bIdle = FALSE;
        }
        // Pump messages while there are any.
        do {
            if (!ContinueModal() || !::IsWindow(hWnd))
                goto ExitModal;
            if (!AfxPumpMessage()) {
                AfxPostQuitMessage(0);
                return -1;
            }
            if (bShowIdle && (pMsg->message == 0x118 || pMsg->message == WM_SYSKEYDOWN)) {
                ShowWindow(SW_SHOWNORMAL);
                UpdateWindow();
                bShowIdle = FALSE;
            }
            if (!ContinueModal() || !::IsWindow(hWnd))
                goto ExitModal;
            if (AfxGetThread() == nullptr || AfxGetThread()->IsIdleMessage(pMsg)) {
                bIdle = TRUE;
                lIdleCount = 0;
            }
        } while (::PeekMessageW(pMsg, nullptr, 0, 0, PM_NOREMOVE));
    }
ExitModal:
    m_nFlags &= ~(WF_MODALLOOP | WF_CONTINUEMODAL);
    return m_nModalResult;
}

////////////////////////////////////////////////////////////////////////////
// Window classes

BOOL AFXAPI AfxRegisterClass(WNDCLASS* lpWndClass)
{
    WNDCLASSW existing;
    if (::GetClassInfoW(lpWndClass->hInstance, lpWndClass->lpszClassName, &existing))
        return TRUE;  // registered already
    return ::RegisterClassW(lpWndClass) != 0;
}

LPCTSTR AFXAPI AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor, HBRUSH hbrBackground, HICON hIcon)
{
    static std::mutex lock;
    static std::set<std::wstring> names;
    HINSTANCE hInst = AfxGetInstanceHandle();
    wchar_t name[96];
    ::wsprintfW(name, L"Afx:%p:%x:%p:%p:%p", static_cast<void*>(hInst), nClassStyle, static_cast<void*>(hCursor),
                static_cast<void*>(hbrBackground), static_cast<void*>(hIcon));
    std::lock_guard<std::mutex> guard(lock);
    auto it = names.find(name);
    if (it == names.end()) {
        WNDCLASSW wc = {};
        wc.style = nClassStyle;
        wc.lpfnWndProc = AfxWndProc;
        wc.hInstance = hInst;
        wc.hIcon = hIcon;
        wc.hCursor = hCursor;
        wc.hbrBackground = hbrBackground;
        wc.lpszClassName = name;
        if (!AfxRegisterClass(&wc))
            return nullptr;
        it = names.insert(name).first;
    }
    return it->c_str();
}
