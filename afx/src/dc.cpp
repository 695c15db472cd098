// Device contexts: CDC and the window DCs (CPaintDC, CClientDC, CWindowDC).
#include "afxwin.h"

namespace {

CObject* NewTempDC(HANDLE h)
{
    CDC* p = new CDC;
    p->m_hDC = p->m_hAttribDC = static_cast<HDC>(h);
    return p;
}

void DeleteTempDC(CObject* p)
{
    CDC* dc = static_cast<CDC*>(p);
    dc->m_hDC = dc->m_hAttribDC = NULL;  // a temporary object never frees the DC it wraps
    delete dc;
}

const AFX_HANDLEMAP_CLASS dcMapClass = {NewTempDC, DeleteTempDC};

CHandleMap* DCMap(BOOL bCreate = TRUE)
{
    return AfxGetHandleMap(&dcMapClass, bCreate);
}

HDC SrcDC(CDC* pDC)
{
    return pDC->GetSafeHdc();
}

}  // namespace

IMPLEMENT_DYNCREATE(CDC, CObject)

CDC::CDC() noexcept : m_hDC(NULL), m_hAttribDC(NULL), m_bPrinting(FALSE)
{
}

CDC::~CDC()
{
    if (m_hDC != NULL)
        ::DeleteDC(Detach());
}

HDC CDC::GetSafeHdc() const
{
    // Called through NULL pointers by design; see CGdiObject::GetSafeHandle.
    const CDC* volatile self = this;
    return self != nullptr ? self->m_hDC : NULL;
}

CWnd* CDC::GetWindow() const
{
    return m_hDC == NULL ? NULL : CWnd::FromHandle(::WindowFromDC(m_hDC));
}

CDC* PASCAL CDC::FromHandle(HDC hDC)
{
    return static_cast<CDC*>(DCMap()->FromHandle(hDC));
}

void PASCAL CDC::DeleteTempMap()
{
    if (CHandleMap* map = DCMap(FALSE))
        map->DeleteTemp();
}

BOOL CDC::Attach(HDC hDC)
{
    if (hDC == NULL || m_hDC != NULL)
        return FALSE;
    m_hDC = m_hAttribDC = hDC;
    DCMap()->SetPermanent(m_hDC, this);
    return TRUE;
}

HDC CDC::Detach()
{
    HDC hDC = m_hDC;
    if (hDC != NULL) {
        if (CHandleMap* map = DCMap(FALSE))
            if (map->LookupPermanent(hDC) == this)
                map->RemoveHandle(hDC);
    }
    ReleaseAttribDC();
    ReleaseOutputDC();
    return hDC;
}

void CDC::SetAttribDC(HDC hDC)
{
    m_hAttribDC = hDC;
}

void CDC::SetOutputDC(HDC hDC)
{
    m_hDC = hDC;
}

void CDC::ReleaseAttribDC()
{
    m_hAttribDC = NULL;
}

void CDC::ReleaseOutputDC()
{
    m_hDC = NULL;
}

BOOL CDC::CreateDC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData)
{
    return m_hDC == NULL &&
           Attach(::CreateDCW(lpszDriverName, lpszDeviceName, lpszOutput, static_cast<const DEVMODEW*>(lpInitData)));
}

BOOL CDC::CreateIC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData)
{
    return m_hDC == NULL &&
           Attach(::CreateICW(lpszDriverName, lpszDeviceName, lpszOutput, static_cast<const DEVMODEW*>(lpInitData)));
}

BOOL CDC::CreateCompatibleDC(CDC* pDC)
{
    return m_hDC == NULL && Attach(::CreateCompatibleDC(pDC->GetSafeHdc()));
}

BOOL CDC::DeleteDC()
{
    if (m_hDC == NULL)
        return FALSE;
    return ::DeleteDC(Detach());
}

int CDC::SaveDC()
{
    int n = 0;
    if (m_hAttribDC != NULL)
        n = ::SaveDC(m_hAttribDC);
    if (m_hDC != m_hAttribDC && m_hDC != NULL && ::SaveDC(m_hDC) != 0)
        n = -1;  // -1 restores the last saved state of both
    return n;
}

BOOL CDC::RestoreDC(int nSavedDC)
{
    BOOL ok = TRUE;
    if (m_hDC != NULL && m_hDC != m_hAttribDC)
        ok = ::RestoreDC(m_hDC, nSavedDC);
    if (m_hAttribDC != NULL)
        ok = ::RestoreDC(m_hAttribDC, nSavedDC) && ok;
    return ok;
}

CPoint CDC::GetBrushOrg() const
{
    POINT pt = {0, 0};
    ::GetBrushOrgEx(m_hDC, &pt);
    return CPoint(pt);
}

CPoint CDC::SetBrushOrg(int x, int y)
{
    POINT pt = {0, 0};
    ::SetBrushOrgEx(m_hDC, x, y, &pt);
    return CPoint(pt);
}

////////////////////////////////////////////////////////////////////////////
// Selecting objects: into the output DC and, when it differs, the attribute DC. The
// previous object comes back as its owner or a temporary wrapper.

HGDIOBJ CDC::SelectObject(HGDIOBJ hObject)
{
    if (hObject == NULL)
        return NULL;
    HGDIOBJ old = NULL;
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        old = ::SelectObject(m_hDC, hObject);
    if (m_hAttribDC != NULL)
        old = ::SelectObject(m_hAttribDC, hObject);
    return old;
}

CGdiObject* CDC::SelectObject(CGdiObject* pObject)
{
    return CGdiObject::FromHandle(SelectObject(pObject->GetSafeHandle()));
}

CGdiObject* CDC::SelectStockObject(int nIndex)
{
    return CGdiObject::FromHandle(SelectObject(::GetStockObject(nIndex)));
}

CPen* CDC::SelectObject(CPen* pPen)
{
    return static_cast<CPen*>(CGdiObject::FromHandle(SelectObject(pPen->GetSafeHandle())));
}

CBrush* CDC::SelectObject(CBrush* pBrush)
{
    return static_cast<CBrush*>(CGdiObject::FromHandle(SelectObject(pBrush->GetSafeHandle())));
}

CFont* CDC::SelectObject(CFont* pFont)
{
    return static_cast<CFont*>(CGdiObject::FromHandle(SelectObject(pFont->GetSafeHandle())));
}

CBitmap* CDC::SelectObject(CBitmap* pBitmap)
{
    return static_cast<CBitmap*>(CGdiObject::FromHandle(SelectObject(pBitmap->GetSafeHandle())));
}

int CDC::SelectObject(CRgn* pRgn)
{
    return SelectClipRgn(pRgn);
}

CPalette* CDC::SelectPalette(CPalette* pPalette, BOOL bForceBackground)
{
    return CPalette::FromHandle(
        ::SelectPalette(m_hDC, static_cast<HPALETTE>(pPalette->GetSafeHandle()), bForceBackground));
}

////////////////////////////////////////////////////////////////////////////
// State setters: both DCs, the previous value from the attribute DC.

COLORREF CDC::SetBkColor(COLORREF crColor)
{
    COLORREF old = CLR_INVALID;
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        old = ::SetBkColor(m_hDC, crColor);
    if (m_hAttribDC != NULL)
        old = ::SetBkColor(m_hAttribDC, crColor);
    return old;
}

COLORREF CDC::SetTextColor(COLORREF crColor)
{
    COLORREF old = CLR_INVALID;
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        old = ::SetTextColor(m_hDC, crColor);
    if (m_hAttribDC != NULL)
        old = ::SetTextColor(m_hAttribDC, crColor);
    return old;
}

namespace {

// Sets an int mode on both DCs of pDC and returns the attribute DC's previous value.
template <class F>
int SetBoth(HDC hDC, HDC hAttribDC, F set)
{
    int old = 0;
    if (hDC != hAttribDC && hDC != NULL)
        old = set(hDC);
    if (hAttribDC != NULL)
        old = set(hAttribDC);
    return old;
}

}  // namespace

int CDC::SetBkMode(int nBkMode)
{
    return SetBoth(m_hDC, m_hAttribDC, [=](HDC h) { return ::SetBkMode(h, nBkMode); });
}

int CDC::SetROP2(int nDrawMode)
{
    return SetBoth(m_hDC, m_hAttribDC, [=](HDC h) { return ::SetROP2(h, nDrawMode); });
}

int CDC::SetPolyFillMode(int nPolyFillMode)
{
    return SetBoth(m_hDC, m_hAttribDC, [=](HDC h) { return ::SetPolyFillMode(h, nPolyFillMode); });
}

int CDC::SetStretchBltMode(int nStretchMode)
{
    return SetBoth(m_hDC, m_hAttribDC, [=](HDC h) { return ::SetStretchBltMode(h, nStretchMode); });
}

int CDC::SetMapMode(int nMapMode)
{
    return SetBoth(m_hDC, m_hAttribDC, [=](HDC h) { return ::SetMapMode(h, nMapMode); });
}

UINT CDC::SetTextAlign(UINT nFlags)
{
    return static_cast<UINT>(
        SetBoth(m_hDC, m_hAttribDC, [=](HDC h) { return static_cast<int>(::SetTextAlign(h, nFlags)); }));
}

int CDC::SetTextCharacterExtra(int nCharExtra)
{
    return SetBoth(m_hDC, m_hAttribDC, [=](HDC h) { return ::SetTextCharacterExtra(h, nCharExtra); });
}

////////////////////////////////////////////////////////////////////////////
// Coordinates

CPoint CDC::GetViewportOrg() const
{
    POINT pt = {0, 0};
    ::GetViewportOrgEx(m_hAttribDC, &pt);
    return CPoint(pt);
}

CPoint CDC::SetViewportOrg(int x, int y)
{
    POINT pt = {0, 0};
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        ::SetViewportOrgEx(m_hDC, x, y, &pt);
    if (m_hAttribDC != NULL)
        ::SetViewportOrgEx(m_hAttribDC, x, y, &pt);
    return CPoint(pt);
}

CPoint CDC::OffsetViewportOrg(int nWidth, int nHeight)
{
    POINT pt = {0, 0};
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        ::OffsetViewportOrgEx(m_hDC, nWidth, nHeight, &pt);
    if (m_hAttribDC != NULL)
        ::OffsetViewportOrgEx(m_hAttribDC, nWidth, nHeight, &pt);
    return CPoint(pt);
}

CSize CDC::GetViewportExt() const
{
    SIZE size = {0, 0};
    ::GetViewportExtEx(m_hAttribDC, &size);
    return CSize(size);
}

CSize CDC::SetViewportExt(int cx, int cy)
{
    SIZE size = {0, 0};
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        ::SetViewportExtEx(m_hDC, cx, cy, &size);
    if (m_hAttribDC != NULL)
        ::SetViewportExtEx(m_hAttribDC, cx, cy, &size);
    return CSize(size);
}

CPoint CDC::GetWindowOrg() const
{
    POINT pt = {0, 0};
    ::GetWindowOrgEx(m_hAttribDC, &pt);
    return CPoint(pt);
}

CPoint CDC::SetWindowOrg(int x, int y)
{
    POINT pt = {0, 0};
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        ::SetWindowOrgEx(m_hDC, x, y, &pt);
    if (m_hAttribDC != NULL)
        ::SetWindowOrgEx(m_hAttribDC, x, y, &pt);
    return CPoint(pt);
}

CPoint CDC::OffsetWindowOrg(int nWidth, int nHeight)
{
    POINT pt = {0, 0};
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        ::OffsetWindowOrgEx(m_hDC, nWidth, nHeight, &pt);
    if (m_hAttribDC != NULL)
        ::OffsetWindowOrgEx(m_hAttribDC, nWidth, nHeight, &pt);
    return CPoint(pt);
}

CSize CDC::GetWindowExt() const
{
    SIZE size = {0, 0};
    ::GetWindowExtEx(m_hAttribDC, &size);
    return CSize(size);
}

CSize CDC::SetWindowExt(int cx, int cy)
{
    SIZE size = {0, 0};
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        ::SetWindowExtEx(m_hDC, cx, cy, &size);
    if (m_hAttribDC != NULL)
        ::SetWindowExtEx(m_hAttribDC, cx, cy, &size);
    return CSize(size);
}

////////////////////////////////////////////////////////////////////////////
// Clipping

int CDC::SelectClipRgn(CRgn* pRgn)
{
    HRGN hRgn = static_cast<HRGN>(pRgn->GetSafeHandle());
    int n = ERROR;
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        n = ::SelectClipRgn(m_hDC, hRgn);
    if (m_hAttribDC != NULL)
        n = ::SelectClipRgn(m_hAttribDC, hRgn);
    return n;
}

int CDC::SelectClipRgn(CRgn* pRgn, int nMode)
{
    HRGN hRgn = static_cast<HRGN>(pRgn->GetSafeHandle());
    int n = ERROR;
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        n = ::ExtSelectClipRgn(m_hDC, hRgn, nMode);
    if (m_hAttribDC != NULL)
        n = ::ExtSelectClipRgn(m_hAttribDC, hRgn, nMode);
    return n;
}

int CDC::ExcludeClipRect(int x1, int y1, int x2, int y2)
{
    int n = ERROR;
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        n = ::ExcludeClipRect(m_hDC, x1, y1, x2, y2);
    if (m_hAttribDC != NULL)
        n = ::ExcludeClipRect(m_hAttribDC, x1, y1, x2, y2);
    return n;
}

int CDC::ExcludeUpdateRgn(CWnd* pWnd)
{
    return ::ExcludeUpdateRgn(m_hDC, pWnd->GetSafeHwnd());
}

int CDC::IntersectClipRect(int x1, int y1, int x2, int y2)
{
    int n = ERROR;
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        n = ::IntersectClipRect(m_hDC, x1, y1, x2, y2);
    if (m_hAttribDC != NULL)
        n = ::IntersectClipRect(m_hAttribDC, x1, y1, x2, y2);
    return n;
}

int CDC::OffsetClipRgn(int x, int y)
{
    int n = ERROR;
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        n = ::OffsetClipRgn(m_hDC, x, y);
    if (m_hAttribDC != NULL)
        n = ::OffsetClipRgn(m_hAttribDC, x, y);
    return n;
}

////////////////////////////////////////////////////////////////////////////
// Drawing

CPoint CDC::GetCurrentPosition() const
{
    POINT pt = {0, 0};
    ::GetCurrentPositionEx(m_hAttribDC, &pt);
    return CPoint(pt);
}

CPoint CDC::MoveTo(int x, int y)
{
    POINT pt = {0, 0};
    if (m_hDC != m_hAttribDC && m_hDC != NULL)
        ::MoveToEx(m_hDC, x, y, &pt);
    if (m_hAttribDC != NULL)
        ::MoveToEx(m_hAttribDC, x, y, &pt);
    return CPoint(pt);
}

BOOL CDC::LineTo(int x, int y)
{
    if (m_hAttribDC != NULL && m_hAttribDC != m_hDC)
        ::MoveToEx(m_hAttribDC, x, y, NULL);
    return ::LineTo(m_hDC, x, y);
}

void CDC::FillSolidRect(LPCRECT lpRect, COLORREF clr)
{
    ::SetBkColor(m_hDC, clr);
    ::ExtTextOutW(m_hDC, 0, 0, ETO_OPAQUE, lpRect, NULL, 0, NULL);
}

void CDC::FillSolidRect(int x, int y, int cx, int cy, COLORREF clr)
{
    const RECT rc = {x, y, x + cx, y + cy};
    FillSolidRect(&rc, clr);
}

void CDC::Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    Draw3dRect(lpRect->left, lpRect->top, lpRect->right - lpRect->left, lpRect->bottom - lpRect->top, clrTopLeft,
               clrBottomRight);
}

void CDC::Draw3dRect(int x, int y, int cx, int cy, COLORREF clrTopLeft, COLORREF clrBottomRight)
{
    FillSolidRect(x, y, cx - 1, 1, clrTopLeft);
    FillSolidRect(x, y, 1, cy - 1, clrTopLeft);
    FillSolidRect(x + cx - 1, y, 1, cy, clrBottomRight);
    FillSolidRect(x, y + cy - 1, cx, 1, clrBottomRight);
}

BOOL CDC::DrawState(CPoint pt, CSize size, HBITMAP hBitmap, UINT nFlags, HBRUSH hBrush)
{
    return ::DrawStateW(m_hDC, hBrush, NULL, reinterpret_cast<LPARAM>(hBitmap), 0, pt.x, pt.y, size.cx, size.cy,
                        nFlags | DST_BITMAP);
}

BOOL CDC::DrawState(CPoint pt, CSize size, CBitmap* pBitmap, UINT nFlags, CBrush* pBrush)
{
    return DrawState(pt, size, static_cast<HBITMAP>(pBitmap->GetSafeHandle()), nFlags,
                     static_cast<HBRUSH>(pBrush->GetSafeHandle()));
}

BOOL CDC::DrawState(CPoint pt, CSize size, HICON hIcon, UINT nFlags, HBRUSH hBrush)
{
    return ::DrawStateW(m_hDC, hBrush, NULL, reinterpret_cast<LPARAM>(hIcon), 0, pt.x, pt.y, size.cx, size.cy,
                        nFlags | DST_ICON);
}

BOOL CDC::DrawState(CPoint pt, CSize size, HICON hIcon, UINT nFlags, CBrush* pBrush)
{
    return DrawState(pt, size, hIcon, nFlags, static_cast<HBRUSH>(pBrush->GetSafeHandle()));
}

BOOL CDC::DrawState(CPoint pt, CSize size, LPCTSTR lpszText, UINT nFlags, BOOL bPrefixText, int nTextLen,
                    HBRUSH hBrush)
{
    if (lpszText == NULL)
        return FALSE;
    return ::DrawStateW(m_hDC, hBrush, NULL, reinterpret_cast<LPARAM>(lpszText), static_cast<WPARAM>(nTextLen), pt.x,
                        pt.y, size.cx, size.cy, nFlags | (bPrefixText ? DST_PREFIXTEXT : DST_TEXT));
}

BOOL CDC::DrawState(CPoint pt, CSize size, LPCTSTR lpszText, UINT nFlags, BOOL bPrefixText, int nTextLen,
                    CBrush* pBrush)
{
    return DrawState(pt, size, lpszText, nFlags, bPrefixText, nTextLen, static_cast<HBRUSH>(pBrush->GetSafeHandle()));
}

BOOL CDC::BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop)
{
    return ::BitBlt(m_hDC, x, y, nWidth, nHeight, SrcDC(pSrcDC), xSrc, ySrc, dwRop);
}

BOOL CDC::StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth,
                     int nSrcHeight, DWORD dwRop)
{
    return ::StretchBlt(m_hDC, x, y, nWidth, nHeight, SrcDC(pSrcDC), xSrc, ySrc, nSrcWidth, nSrcHeight, dwRop);
}

BOOL CDC::TransparentBlt(int xDest, int yDest, int nDestWidth, int nDestHeight, CDC* pSrcDC, int xSrc, int ySrc,
                         int nSrcWidth, int nSrcHeight, UINT clrTransparent)
{
    return ::TransparentBlt(m_hDC, xDest, yDest, nDestWidth, nDestHeight, SrcDC(pSrcDC), xSrc, ySrc, nSrcWidth,
                            nSrcHeight, clrTransparent);
}

BOOL CDC::AlphaBlend(int xDest, int yDest, int nDestWidth, int nDestHeight, CDC* pSrcDC, int xSrc, int ySrc,
                     int nSrcWidth, int nSrcHeight, BLENDFUNCTION blend)
{
    return ::GdiAlphaBlend(m_hDC, xDest, yDest, nDestWidth, nDestHeight, SrcDC(pSrcDC), xSrc, ySrc, nSrcWidth,
                           nSrcHeight, blend);
}

////////////////////////////////////////////////////////////////////////////
// Text

BOOL CDC::TextOut(int x, int y, LPCTSTR lpszString, int nCount)
{
    if (lpszString == NULL)
        return FALSE;
    if (nCount < 0)
        nCount = lstrlenW(lpszString);
    return ::TextOutW(m_hDC, x, y, lpszString, nCount);
}

BOOL CDC::ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCTSTR lpszString, UINT nCount,
                     LPINT lpDxWidths)
{
    return ::ExtTextOutW(m_hDC, x, y, nOptions, lpRect, lpszString, lpszString == NULL ? 0 : nCount, lpDxWidths);
}

CSize CDC::TabbedTextOut(int x, int y, LPCTSTR lpszString, int nCount, int nTabPositions,
                         LPINT lpnTabStopPositions, int nTabOrigin)
{
    if (lpszString == NULL)
        return CSize(0, 0);
    const LONG n = ::TabbedTextOutW(m_hDC, x, y, lpszString, nCount, nTabPositions, lpnTabStopPositions, nTabOrigin);
    return CSize(LOWORD(n), HIWORD(n));
}

int CDC::DrawText(LPCTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat)
{
    if (lpszString == NULL || lpRect == NULL)
        return 0;
    // The platform may change the text with DT_MODIFYSTRING; that flag needs a writable
    // buffer, which only DrawTextEx offers.
    return ::DrawTextW(m_hDC, lpszString, nCount, lpRect, nFormat & ~DT_MODIFYSTRING);
}

int CDC::DrawTextEx(LPTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat, LPDRAWTEXTPARAMS lpDTParams)
{
    if (lpszString == NULL || lpRect == NULL)
        return 0;
    return ::DrawTextExW(m_hDC, lpszString, nCount, lpRect, nFormat, lpDTParams);
}

CSize CDC::GetTextExtent(LPCTSTR lpszString, int nCount) const
{
    SIZE size = {0, 0};
    if (lpszString != NULL && m_hAttribDC != NULL)
        ::GetTextExtentPoint32W(m_hAttribDC, lpszString, nCount < 0 ? lstrlenW(lpszString) : nCount, &size);
    return CSize(size);
}

CSize CDC::GetOutputTextExtent(LPCTSTR lpszString, int nCount) const
{
    SIZE size = {0, 0};
    if (lpszString != NULL && m_hDC != NULL)
        ::GetTextExtentPoint32W(m_hDC, lpszString, nCount < 0 ? lstrlenW(lpszString) : nCount, &size);
    return CSize(size);
}

CSize CDC::GetTabbedTextExtent(LPCTSTR lpszString, int nCount, int nTabPositions, LPINT lpnTabStopPositions) const
{
    if (lpszString == NULL)
        return CSize(0, 0);
    const DWORD n = ::GetTabbedTextExtentW(m_hAttribDC, lpszString, nCount, nTabPositions, lpnTabStopPositions);
    return CSize(LOWORD(n), HIWORD(n));
}

int CDC::GetTextFace(CString& rString) const
{
    const int n = ::GetTextFaceW(m_hAttribDC, 0, NULL);
    if (n <= 0) {
        rString.Empty();
        return 0;
    }
    const int copied = ::GetTextFaceW(m_hAttribDC, n, rString.GetBuffer(n));
    rString.ReleaseBuffer();
    return copied;
}

BOOL CDC::ScrollDC(int dx, int dy, LPCRECT lpRectScroll, LPCRECT lpRectClip, CRgn* pRgnUpdate, LPRECT lpRectUpdate)
{
    return ::ScrollDC(m_hDC, dx, dy, lpRectScroll, lpRectClip, static_cast<HRGN>(pRgnUpdate->GetSafeHandle()),
                      lpRectUpdate);
}

////////////////////////////////////////////////////////////////////////////
// Window DCs

IMPLEMENT_DYNAMIC(CPaintDC, CDC)

CPaintDC::CPaintDC(CWnd* pWnd) : m_ps(), m_hWnd(pWnd->GetSafeHwnd())
{
    if (m_hWnd == NULL || !Attach(::BeginPaint(m_hWnd, &m_ps)))
        AfxThrowResourceException();
}

CPaintDC::~CPaintDC()
{
    if (m_hDC != NULL) {
        ::EndPaint(m_hWnd, &m_ps);
        Detach();
    }
}

IMPLEMENT_DYNAMIC(CClientDC, CDC)

CClientDC::CClientDC(CWnd* pWnd) : m_hWnd(pWnd->GetSafeHwnd())
{
    if (!Attach(::GetDC(m_hWnd)))
        AfxThrowResourceException();
}

CClientDC::~CClientDC()
{
    if (m_hDC != NULL)
        ::ReleaseDC(m_hWnd, Detach());
}

IMPLEMENT_DYNAMIC(CWindowDC, CDC)

CWindowDC::CWindowDC(CWnd* pWnd) : m_hWnd(pWnd->GetSafeHwnd())
{
    if (!Attach(::GetWindowDC(m_hWnd)))
        AfxThrowResourceException();
}

CWindowDC::~CWindowDC()
{
    if (m_hDC != NULL)
        ::ReleaseDC(m_hWnd, Detach());
}
