// ActiveX control containment on the platform's container window (atl.dll).
#include "afxdisp.h"

namespace {

typedef BOOL(WINAPI* PFN_ATLAXWININIT)();
typedef HRESULT(WINAPI* PFN_ATLAXGETCONTROL)(HWND, IUnknown**);

// Set once the container is ready: the window class is registered and this function,
// which gives a container window's control, is known.
PFN_ATLAXGETCONTROL volatile s_pfnGetControl = NULL;

// The control hosted in container window hWnd, AddRef'ed; NULL when there is none.
IUnknown* HostedControl(HWND hWnd)
{
    IUnknown* pUnk = NULL;
    if (hWnd == NULL || s_pfnGetControl == NULL || FAILED(s_pfnGetControl(hWnd, &pUnk)))
        return NULL;
    return pUnk;
}

}  // namespace

BOOL AFXAPI AfxEnableControlContainer()
{
    // The library stays loaded for the life of the process: container windows may exist
    // until its end.
    static const BOOL ready = [] {
        HMODULE atl = ::LoadLibraryW(L"atl.dll");
        if (atl == NULL)
            return FALSE;
        auto init = reinterpret_cast<PFN_ATLAXWININIT>(::GetProcAddress(atl, "AtlAxWinInit"));
        auto get = reinterpret_cast<PFN_ATLAXGETCONTROL>(::GetProcAddress(atl, "AtlAxGetControl"));
        if (init == NULL || get == NULL || !init())
            return FALSE;
        s_pfnGetControl = get;
        return TRUE;
    }();
    return ready;
}

BOOL CWnd::CreateControl(REFCLSID clsid, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect, CWnd* pParentWnd,
                         UINT nID)
{
    if (s_pfnGetControl == NULL || m_hWnd != NULL)
        return FALSE;
    // The container creates the control named by its window text when it is created.
    wchar_t clsidText[40];
    if (::StringFromGUID2(clsid, clsidText, 40) == 0)
        return FALSE;
    if (!CreateEx(0, L"AtlAxWin", clsidText, dwStyle, rect, pParentWnd, nID))
        return FALSE;
    IUnknown* pUnk = HostedControl(m_hWnd);
    if (pUnk == NULL) {
        DestroyWindow();
        return FALSE;
    }
    pUnk->Release();
    if (lpszWindowName != NULL)
        ::SetWindowTextW(m_hWnd, lpszWindowName);
    return TRUE;
}

BOOL CWnd::CreateControl(LPCTSTR pszClass, LPCTSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                         CWnd* pParentWnd, UINT nID)
{
    CLSID clsid;
    if (pszClass == NULL || FAILED(::CLSIDFromProgID(pszClass, &clsid)))
        return FALSE;
    return CreateControl(clsid, lpszWindowName, dwStyle, rect, pParentWnd, nID);
}

LPUNKNOWN CWnd::GetControlUnknown()
{
    // The container window keeps the control alive as long as it exists.
    IUnknown* pUnk = HostedControl(m_hWnd);
    if (pUnk != NULL)
        pUnk->Release();
    return pUnk;
}
