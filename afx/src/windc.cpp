// CWnd members and message-map dispatch that work with device contexts and fonts.
#include "afximpl.h"

BOOL AfxDispatchDCEntry(CWnd* pWnd, UINT_PTR nSig, AFX_PMSG pfn, WPARAM wParam, LPARAM lParam, LRESULT* pResult)
{
    LRESULT lResult = 0;
    auto* ctl = reinterpret_cast<AFX_CTLCOLOR*>(lParam);
    switch (nSig) {
    case AfxSig_b_D:
        lResult = (pWnd->*reinterpret_cast<BOOL (CWnd::*)(CDC*)>(pfn))(CDC::FromHandle(reinterpret_cast<HDC>(wParam)));
        break;
    case AfxSig_hbr_D_W_u:
        lResult = reinterpret_cast<LRESULT>((pWnd->*reinterpret_cast<HBRUSH (CWnd::*)(CDC*, CWnd*, UINT)>(pfn))(
            CDC::FromHandle(ctl->hDC), CWnd::FromHandle(ctl->hWnd), ctl->nCtlType));
        break;
    case AfxSig_hbr_D_u:
        lResult = reinterpret_cast<LRESULT>(
            (pWnd->*reinterpret_cast<HBRUSH (CWnd::*)(CDC*, UINT)>(pfn))(CDC::FromHandle(ctl->hDC), ctl->nCtlType));
        break;
    default:
        return FALSE;
    }
    if (pResult != nullptr)
        *pResult = lResult;
    return TRUE;
}

CDC* CWnd::GetDC()
{
    return CDC::FromHandle(::GetDC(m_hWnd));
}

CDC* CWnd::GetWindowDC()
{
    return CDC::FromHandle(::GetWindowDC(m_hWnd));
}

int CWnd::ReleaseDC(CDC* pDC)
{
    return pDC != nullptr ? ::ReleaseDC(m_hWnd, pDC->m_hDC) : 0;
}

CDC* CWnd::BeginPaint(LPPAINTSTRUCT lpPaint)
{
    return CDC::FromHandle(::BeginPaint(m_hWnd, lpPaint));
}

void CWnd::SetFont(CFont* pFont, BOOL bRedraw)
{
    ::SendMessageW(m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(pFont->GetSafeHandle()), bRedraw);
}

CFont* CWnd::GetFont() const
{
    return CFont::FromHandle(reinterpret_cast<HFONT>(::SendMessageW(m_hWnd, WM_GETFONT, 0, 0)));
}

BOOL CWnd::RedrawWindow(LPCRECT lpRectUpdate, CRgn* prgnUpdate, UINT flags)
{
    return ::RedrawWindow(m_hWnd, lpRectUpdate, static_cast<HRGN>(prgnUpdate->GetSafeHandle()), flags);
}

void CView::OnPaint()
{
    CPaintDC dc(this);
    OnDraw(&dc);
}
