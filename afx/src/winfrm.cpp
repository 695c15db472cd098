// CFrameWnd and CView: frames with menus, control bars and a view; command routing.
#include "afximpl.h"

IMPLEMENT_DYNCREATE(CFrameWnd, CWnd)
IMPLEMENT_DYNAMIC(CView, CWnd)

const CRect CFrameWnd::rectDefault(CW_USEDEFAULT, CW_USEDEFAULT, 0, 0);

BEGIN_MESSAGE_MAP(CFrameWnd, CWnd)
    ON_WM_CREATE()
    ON_WM_SIZE()
    ON_WM_CLOSE()
    ON_WM_DESTROY()
    ON_WM_SETFOCUS()
    ON_WM_INITMENUPOPUP()
    ON_MESSAGE(WM_IDLEUPDATECMDUI, &CFrameWnd::OnIdleUpdateCmdUI)
    ON_MESSAGE(WM_SETMESSAGESTRING, &CFrameWnd::OnSetMessageString)
END_MESSAGE_MAP()

void AFXAPI AfxRepositionWindow(AFX_SIZEPARENTPARAMS* lpLayout, HWND hWnd, LPCRECT lpRect)
{
    if (lpLayout != nullptr && lpLayout->hDWP == nullptr)
        return;
    CRect old;
    ::GetWindowRect(hWnd, &old);
    ::MapWindowPoints(nullptr, ::GetParent(hWnd), reinterpret_cast<POINT*>(&old), 2);
    if (::EqualRect(&old, lpRect))
        return;
    if (lpLayout != nullptr)
        lpLayout->hDWP = ::DeferWindowPos(lpLayout->hDWP, hWnd, nullptr, lpRect->left, lpRect->top,
                                          lpRect->right - lpRect->left, lpRect->bottom - lpRect->top,
                                          SWP_NOACTIVATE | SWP_NOZORDER);
    else
        ::SetWindowPos(hWnd, nullptr, lpRect->left, lpRect->top, lpRect->right - lpRect->left,
                       lpRect->bottom - lpRect->top, SWP_NOACTIVATE | SWP_NOZORDER);
}

void CWnd::RepositionBars(UINT nIDFirst, UINT nIDLast, UINT nIDLeftOver, UINT nFlag, LPRECT lpRectParam,
                          LPCRECT lpRectClient, BOOL bStretch)
{
    AFX_SIZEPARENTPARAMS layout = {};
    layout.bStretch = bStretch;
    if (lpRectClient != nullptr)
        layout.rect = *lpRectClient;
    else
        ::GetClientRect(m_hWnd, &layout.rect);
    if (nFlag & reposExtra && lpRectParam != nullptr) {
        // lpRectParam holds borders to keep free around the bars.
        layout.rect.left += lpRectParam->left;
        layout.rect.top += lpRectParam->top;
        layout.rect.right -= lpRectParam->right;
        layout.rect.bottom -= lpRectParam->bottom;
    }
    const bool query = (nFlag & 0xFF) == reposQuery;
    layout.hDWP = query ? nullptr : ::BeginDeferWindowPos(8);
    HWND hWndLeftOver = nullptr;
    // Each bar takes its share from the free rectangle, in z order.
    for (HWND child = ::GetTopWindow(m_hWnd); child != nullptr; child = ::GetNextWindow(child, GW_HWNDNEXT)) {
        const UINT id = static_cast<UINT>(::GetDlgCtrlID(child));
        if (id == nIDLeftOver)
            hWndLeftOver = child;
        else if (id >= nIDFirst && id <= nIDLast && CWnd::FromHandlePermanent(child) != nullptr)
            ::SendMessageW(child, WM_SIZEPARENT, 0, reinterpret_cast<LPARAM>(&layout));
    }
    if (query) {
        if (lpRectParam != nullptr) {
            if (bStretch)
                *lpRectParam = layout.rect;
            else
                ::SetRect(lpRectParam, 0, 0, layout.sizeTotal.cx, layout.sizeTotal.cy);
        }
        return;
    }
    if (nIDLeftOver != 0 && hWndLeftOver != nullptr && !(nFlag & reposNoPosLeftOver))
        AfxRepositionWindow(&layout, hWndLeftOver, &layout.rect);
    if (layout.hDWP != nullptr)
        ::EndDeferWindowPos(layout.hDWP);
}

////////////////////////////////////////////////////////////////////////////
// CFrameWnd

CFrameWnd::CFrameWnd()
    : m_bAutoMenuEnable(TRUE), m_hAccelTable(nullptr), m_hMenuDefault(nullptr), m_nIDHelp(0),
      m_pViewActive(nullptr), m_pCreateContext(nullptr)
{
}

CFrameWnd::~CFrameWnd() = default;

BOOL CFrameWnd::PreCreateWindow(CREATESTRUCT& cs)
{
    if (cs.lpszClass == nullptr)
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, ::LoadCursorW(nullptr, IDC_ARROW),
                                           reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1),
                                           ::LoadIconW(nullptr, IDI_APPLICATION));
    return TRUE;
}

BOOL CFrameWnd::Create(LPCTSTR lpszClassName, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                       CWnd* pParentWnd, LPCTSTR lpszMenuName, DWORD dwExStyle, CCreateContext* pContext)
{
    HMENU hMenu = nullptr;
    if (lpszMenuName != nullptr) {
        hMenu = ::LoadMenuW(AfxFindResourceHandle(lpszMenuName, RT_MENU), lpszMenuName);
        if (hMenu == nullptr) {
            PostNcDestroy();
            return FALSE;
        }
    }
    m_strTitle = lpszWindowName != nullptr ? lpszWindowName : L"";
    const int cx = rect.left == CW_USEDEFAULT ? CW_USEDEFAULT : rect.right - rect.left;
    const int cy = rect.top == CW_USEDEFAULT ? CW_USEDEFAULT : rect.bottom - rect.top;
    if (!CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top, cx, cy,
                  CWnd::SafeHwnd(pParentWnd), hMenu, pContext)) {
        if (hMenu != nullptr && ::IsMenu(hMenu))
            ::DestroyMenu(hMenu);
        return FALSE;
    }
    return TRUE;
}

BOOL CFrameWnd::LoadFrame(UINT nIDResource, DWORD dwDefaultStyle, CWnd* pParentWnd, CCreateContext* pContext)
{
    m_nIDHelp = nIDResource;
    LPCTSTR name = MAKEINTRESOURCE(nIDResource);
    HINSTANCE hInst = AfxFindResourceHandle(name, RT_GROUP_ICON);
    HICON hIcon = ::LoadIconW(hInst, name);
    LPCTSTR lpszClass = AfxRegisterWndClass(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, ::LoadCursorW(nullptr, IDC_ARROW),
                                            reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1),
                                            hIcon != nullptr ? hIcon : ::LoadIconW(nullptr, IDI_APPLICATION));
    // The title is the text of the string resource up to its first newline.
    CString title;
    if (title.LoadString(nIDResource)) {
        const int nl = title.Find(L'\n');
        if (nl >= 0)
            title = title.Left(nl);
    }
    if (!Create(lpszClass, title, dwDefaultStyle, rectDefault, pParentWnd, name, 0, pContext))
        return FALSE;
    m_hMenuDefault = ::GetMenu(m_hWnd);
    LoadAccelTable(name);
    if (pContext == nullptr)
        SendMessageToDescendants(WM_INITIALUPDATE, 0, 0, TRUE, TRUE);
    return TRUE;
}

BOOL CFrameWnd::LoadAccelTable(LPCTSTR lpszResourceName)
{
    if (m_hAccelTable != nullptr)
        return FALSE;
    m_hAccelTable = ::LoadAcceleratorsW(AfxFindResourceHandle(lpszResourceName, RT_ACCELERATOR), lpszResourceName);
    return m_hAccelTable != nullptr;
}

int CFrameWnd::OnCreate(LPCREATESTRUCT lpcs)
{
    if (CWnd::OnCreate(lpcs) == -1)
        return -1;
    auto* pContext = static_cast<CCreateContext*>(lpcs->lpCreateParams);
    if (!OnCreateClient(lpcs, pContext))
        return -1;
    if (m_pViewActive == nullptr) {
        CWnd* pane = CWnd::FromHandlePermanent(::GetDlgItem(m_hWnd, AFX_IDW_PANE_FIRST));
        if (pane != nullptr && pane->IsKindOf(RUNTIME_CLASS(CView)))
            SetActiveView(static_cast<CView*>(pane), FALSE);
    }
    PostMessage(WM_SETMESSAGESTRING, AFX_IDS_IDLEMESSAGE);
    RecalcLayout();
    return 0;
}

BOOL CFrameWnd::OnCreateClient(LPCREATESTRUCT, CCreateContext* pContext)
{
    if (pContext != nullptr && pContext->m_pNewViewClass != nullptr)
        return CreateView(pContext, AFX_IDW_PANE_FIRST) != nullptr;
    return TRUE;
}

CWnd* CFrameWnd::CreateView(CCreateContext* pContext, UINT nID)
{
    if (pContext == nullptr || pContext->m_pNewViewClass == nullptr)
        return nullptr;
    CObject* obj = pContext->m_pNewViewClass->CreateObject();
    if (obj == nullptr)
        return nullptr;
    if (!obj->IsKindOf(RUNTIME_CLASS(CWnd))) {
        delete obj;
        return nullptr;
    }
    auto* view = static_cast<CWnd*>(obj);
    // A view that fails to be created deletes itself.
    if (!view->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(0, 0, 0, 0), this, nID, pContext))
        return nullptr;
    return view;
}

void CFrameWnd::SetActiveView(CView* pViewNew, BOOL bNotify)
{
    CView* pViewOld = m_pViewActive;
    if (pViewNew == pViewOld)
        return;
    m_pViewActive = nullptr;
    if (pViewOld != nullptr)
        pViewOld->OnActivateView(FALSE, pViewNew, pViewOld);
    m_pViewActive = pViewNew;
    if (pViewNew != nullptr && bNotify)
        pViewNew->OnActivateView(TRUE, pViewNew, pViewOld);
}

void CFrameWnd::RecalcLayout(BOOL)
{
    RepositionBars(0, 0xFFFF, AFX_IDW_PANE_FIRST);
}

void CFrameWnd::ActivateFrame(int nCmdShow)
{
    if (nCmdShow == -1)
        nCmdShow = !IsWindowVisible() ? SW_SHOWNORMAL : (IsIconic() ? SW_RESTORE : SW_SHOW);
    ShowWindow(nCmdShow);
    BringWindowToTop();
}

CWnd* CFrameWnd::GetMessageBar()
{
    return CWnd::FromHandlePermanent(::GetDlgItem(m_hWnd, AFX_IDW_STATUS_BAR));
}

void CFrameWnd::SetMessageText(LPCTSTR lpszText)
{
    SendMessage(WM_SETMESSAGESTRING, 0, reinterpret_cast<LPARAM>(lpszText));
}

void CFrameWnd::SetMessageText(UINT nID)
{
    SendMessage(WM_SETMESSAGESTRING, nID);
}

LRESULT CFrameWnd::OnSetMessageString(WPARAM wParam, LPARAM lParam)
{
    CWnd* bar = GetMessageBar();
    if (bar == nullptr)
        return 0;
    CString text;
    if (lParam != 0) {
        text = reinterpret_cast<LPCTSTR>(lParam);
    } else if (wParam != 0 && text.LoadString(static_cast<UINT>(wParam))) {
        // A command's prompt is the text before its newline.
        const int nl = text.Find(L'\n');
        if (nl >= 0)
            text = text.Left(nl);
    }
    bar->SetWindowText(text);
    return 0;
}

void CFrameWnd::OnUpdateFrameTitle(BOOL)
{
    if ((GetStyle() & FWS_ADDTOTITLE) && AfxGetWindowText(m_hWnd) != m_strTitle)
        SetWindowText(m_strTitle);
}

BOOL CFrameWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, AFX_CMDHANDLERINFO* pHandlerInfo)
{
    if (m_pViewActive != nullptr && m_pViewActive->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo))
        return TRUE;
    CWinApp* app = AfxGetApp();
    return app != nullptr && app->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

BOOL CFrameWnd::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg->message >= WM_KEYFIRST && pMsg->message <= WM_KEYLAST) {
        HACCEL hAccel = GetDefaultAccelerator();
        return hAccel != nullptr && ::TranslateAcceleratorW(m_hWnd, hAccel, pMsg);
    }
    return FALSE;
}

void CFrameWnd::OnSize(UINT nType, int cx, int cy)
{
    CWnd::OnSize(nType, cx, cy);
    if (nType != SIZE_MINIMIZED)
        RecalcLayout();
}

void CFrameWnd::OnClose()
{
    DestroyWindow();
}

void CFrameWnd::OnDestroy()
{
    if (m_hMenuDefault != nullptr && ::GetMenu(m_hWnd) != m_hMenuDefault)
        ::SetMenu(m_hWnd, m_hMenuDefault);
    CWnd::OnDestroy();
}

void CFrameWnd::OnSetFocus(CWnd* pOldWnd)
{
    if (m_pViewActive != nullptr)
        m_pViewActive->SetFocus();
    else
        CWnd::OnSetFocus(pOldWnd);
}

void CFrameWnd::OnInitMenuPopup(CMenu* pMenu, UINT, BOOL bSysMenu)
{
    if (bSysMenu || pMenu == nullptr)
        return;
    // Each command item asks its handlers whether it is enabled, checked, and its text.
    CCmdUI state;
    state.m_pMenu = pMenu;
    state.m_nIndexMax = pMenu->GetMenuItemCount();
    for (state.m_nIndex = 0; state.m_nIndex < state.m_nIndexMax; ++state.m_nIndex) {
        state.m_nID = pMenu->GetMenuItemID(static_cast<int>(state.m_nIndex));
        if (state.m_nID == 0)
            continue;  // separator
        if (state.m_nID == static_cast<UINT>(-1)) {
            // A popup follows its first command.
            state.m_pSubMenu = pMenu->GetSubMenu(static_cast<int>(state.m_nIndex));
            if (state.m_pSubMenu == nullptr || (state.m_nID = state.m_pSubMenu->GetMenuItemID(0)) == 0 ||
                state.m_nID == static_cast<UINT>(-1))
                continue;
            state.DoUpdate(this, TRUE);
        } else {
            state.m_pSubMenu = nullptr;
            state.DoUpdate(this, m_bAutoMenuEnable && state.m_nID < 0xF000);
        }
        // A handler may have added or removed items.
        const UINT count = pMenu->GetMenuItemCount();
        if (count < state.m_nIndexMax) {
            state.m_nIndex -= (state.m_nIndexMax - count);
            while (state.m_nIndex < count && pMenu->GetMenuItemID(static_cast<int>(state.m_nIndex)) == state.m_nID)
                ++state.m_nIndex;
        }
        state.m_nIndexMax = count;
    }
}

LRESULT CFrameWnd::OnIdleUpdateCmdUI(WPARAM, LPARAM)
{
    OnUpdateFrameTitle(TRUE);
    return 0;
}

void CFrameWnd::PostNcDestroy()
{
    delete this;
}

////////////////////////////////////////////////////////////////////////////
// CView

BEGIN_MESSAGE_MAP(CView, CWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_PAINT()
    ON_WM_MOUSEACTIVATE()
    ON_MESSAGE(WM_INITIALUPDATE, &CView::OnInitialUpdateMsg)
END_MESSAGE_MAP()

CView::CView() = default;
CView::~CView() = default;

BOOL CView::PreCreateWindow(CREATESTRUCT& cs)
{
    if (cs.lpszClass == nullptr)
        cs.lpszClass = AfxRegisterWndClass(CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, ::LoadCursorW(nullptr, IDC_ARROW),
                                           reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1));
    if (cs.style & WS_BORDER) {
        cs.dwExStyle |= WS_EX_CLIENTEDGE;
        cs.style &= ~WS_BORDER;
    }
    return TRUE;
}

int CView::OnCreate(LPCREATESTRUCT lpcs)
{
    return CWnd::OnCreate(lpcs);
}

void CView::OnDestroy()
{
    CFrameWnd* frame = GetParentFrame();
    if (frame != nullptr && frame->GetActiveView() == this)
        frame->SetActiveView(nullptr);
    CWnd::OnDestroy();
}

int CView::OnMouseActivate(CWnd* pDesktopWnd, UINT nHitTest, UINT message)
{
    const int result = CWnd::OnMouseActivate(pDesktopWnd, nHitTest, message);
    if (result == MA_NOACTIVATE || result == MA_NOACTIVATEANDEAT)
        return result;
    if (CFrameWnd* frame = GetParentFrame())
        frame->SetActiveView(this);
    return result;
}

LRESULT CView::OnInitialUpdateMsg(WPARAM, LPARAM)
{
    OnInitialUpdate();
    return 0;
}

void CView::OnInitialUpdate() {}

void CView::OnActivateView(BOOL bActivate, CView*, CView*)
{
    if (bActivate) {
        CWnd* top = GetTopLevelParent();
        if (top != nullptr && ::GetActiveWindow() == top->m_hWnd)
            SetFocus();
    }
}

void CView::PostNcDestroy()
{
    delete this;
}
