// Drawing objects: CGdiObject and the pens, brushes, fonts, bitmaps, palettes and regions
// built on it.
#include "afxwin.h"

IMPLEMENT_DYNAMIC(CResourceException, CSimpleException)

CResourceException::~CResourceException() = default;

LPCWSTR CResourceException::GetDefaultMessage() const
{
    return L"The system could not provide a window, drawing object or device context.";
}

void AFXAPI AfxThrowResourceException()
{
    throw new CResourceException;
}

////////////////////////////////////////////////////////////////////////////
// Handle map of drawing objects: one map for every kind, as a handle says its kind.

namespace {

CObject* NewTempGdiObject(HANDLE h)
{
    CGdiObject* p = new CGdiObject;
    p->m_hObject = static_cast<HGDIOBJ>(h);
    return p;
}

void DeleteTempGdiObject(CObject* p)
{
    CGdiObject* obj = static_cast<CGdiObject*>(p);
    obj->m_hObject = NULL;  // a temporary object never frees the handle it wraps
    delete obj;
}

const AFX_HANDLEMAP_CLASS gdiMapClass = {NewTempGdiObject, DeleteTempGdiObject};

CHandleMap* GdiMap(BOOL bCreate = TRUE)
{
    return AfxGetHandleMap(&gdiMapClass, bCreate);
}

}  // namespace

IMPLEMENT_DYNCREATE(CGdiObject, CObject)

CGdiObject::~CGdiObject()
{
    DeleteObject();
}

HGDIOBJ CGdiObject::GetSafeHandle() const
{
    // Called through NULL pointers by design (MFC code selects "old" objects that may be
    // NULL); the volatile copy keeps the compiler from assuming `this` is never NULL.
    const CGdiObject* volatile self = this;
    return self != nullptr ? self->m_hObject : NULL;
}

CGdiObject* PASCAL CGdiObject::FromHandle(HGDIOBJ hObject)
{
    return static_cast<CGdiObject*>(GdiMap()->FromHandle(hObject));
}

void PASCAL CGdiObject::DeleteTempMap()
{
    if (CHandleMap* map = GdiMap(FALSE))
        map->DeleteTemp();
}

BOOL CGdiObject::Attach(HGDIOBJ hObject)
{
    if (hObject == NULL || m_hObject != NULL)
        return FALSE;
    m_hObject = hObject;
    GdiMap()->SetPermanent(m_hObject, this);
    return TRUE;
}

HGDIOBJ CGdiObject::Detach()
{
    HGDIOBJ h = m_hObject;
    if (h != NULL) {
        if (CHandleMap* map = GdiMap(FALSE))
            if (map->LookupPermanent(h) == this)
                map->RemoveHandle(h);
    }
    m_hObject = NULL;
    return h;
}

BOOL CGdiObject::DeleteObject()
{
    if (m_hObject == NULL)
        return FALSE;
    return ::DeleteObject(Detach());
}

int CGdiObject::GetObject(int nCount, LPVOID lpObject) const
{
    if (m_hObject == NULL)
        return 0;
    return ::GetObjectW(m_hObject, nCount, lpObject);
}

UINT CGdiObject::GetObjectType() const
{
    return m_hObject == NULL ? 0 : static_cast<UINT>(::GetObjectType(m_hObject));
}

BOOL CGdiObject::CreateStockObject(int nIndex)
{
    return m_hObject == NULL && Attach(::GetStockObject(nIndex));
}

BOOL CGdiObject::UnrealizeObject()
{
    return m_hObject != NULL && ::UnrealizeObject(m_hObject);
}

////////////////////////////////////////////////////////////////////////////
// Pens

IMPLEMENT_DYNAMIC(CPen, CGdiObject)

CPen::CPen(int nPenStyle, int nWidth, COLORREF crColor)
{
    if (!CreatePen(nPenStyle, nWidth, crColor))
        AfxThrowResourceException();
}

CPen::CPen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount, const DWORD* lpStyle)
{
    if (!CreatePen(nPenStyle, nWidth, pLogBrush, nStyleCount, lpStyle))
        AfxThrowResourceException();
}

BOOL CPen::CreatePen(int nPenStyle, int nWidth, COLORREF crColor)
{
    return m_hObject == NULL && Attach(::CreatePen(nPenStyle, nWidth, crColor));
}

BOOL CPen::CreatePen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount, const DWORD* lpStyle)
{
    if (pLogBrush == NULL)
        return FALSE;
    return m_hObject == NULL && Attach(::ExtCreatePen(nPenStyle, nWidth, pLogBrush, nStyleCount, lpStyle));
}

BOOL CPen::CreatePenIndirect(LPLOGPEN lpLogPen)
{
    return lpLogPen != NULL && m_hObject == NULL && Attach(::CreatePenIndirect(lpLogPen));
}

////////////////////////////////////////////////////////////////////////////
// Brushes

IMPLEMENT_DYNAMIC(CBrush, CGdiObject)

CBrush::CBrush(COLORREF crColor)
{
    if (!CreateSolidBrush(crColor))
        AfxThrowResourceException();
}

CBrush::CBrush(int nIndex, COLORREF crColor)
{
    if (!CreateHatchBrush(nIndex, crColor))
        AfxThrowResourceException();
}

CBrush::CBrush(CBitmap* pBitmap)
{
    if (!CreatePatternBrush(pBitmap))
        AfxThrowResourceException();
}

BOOL CBrush::CreateSolidBrush(COLORREF crColor)
{
    return m_hObject == NULL && Attach(::CreateSolidBrush(crColor));
}

BOOL CBrush::CreateHatchBrush(int nIndex, COLORREF crColor)
{
    return m_hObject == NULL && Attach(::CreateHatchBrush(nIndex, crColor));
}

BOOL CBrush::CreateBrushIndirect(const LOGBRUSH* lpLogBrush)
{
    return lpLogBrush != NULL && m_hObject == NULL && Attach(::CreateBrushIndirect(lpLogBrush));
}

BOOL CBrush::CreatePatternBrush(CBitmap* pBitmap)
{
    HBITMAP hbm = static_cast<HBITMAP>(pBitmap->GetSafeHandle());
    return hbm != NULL && m_hObject == NULL && Attach(::CreatePatternBrush(hbm));
}

BOOL CBrush::CreateDIBPatternBrush(const void* lpPackedDIB, UINT nUsage)
{
    return lpPackedDIB != NULL && m_hObject == NULL && Attach(::CreateDIBPatternBrushPt(lpPackedDIB, nUsage));
}

BOOL CBrush::CreateSysColorBrush(int nIndex)
{
    return m_hObject == NULL && Attach(::GetSysColorBrush(nIndex));
}

////////////////////////////////////////////////////////////////////////////
// Fonts

IMPLEMENT_DYNAMIC(CFont, CGdiObject)

BOOL CFont::CreateFontIndirect(const LOGFONT* lpLogFont)
{
    return lpLogFont != NULL && m_hObject == NULL && Attach(::CreateFontIndirectW(lpLogFont));
}

BOOL CFont::CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight, BYTE bItalic,
                       BYTE bUnderline, BYTE cStrikeOut, BYTE nCharSet, BYTE nOutPrecision, BYTE nClipPrecision,
                       BYTE nQuality, BYTE nPitchAndFamily, LPCTSTR lpszFacename)
{
    return m_hObject == NULL && Attach(::CreateFontW(nHeight, nWidth, nEscapement, nOrientation, nWeight, bItalic, bUnderline, cStrikeOut,
                                nCharSet, nOutPrecision, nClipPrecision, nQuality, nPitchAndFamily, lpszFacename));
}

BOOL CFont::CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC* pDC)
{
    LOGFONT lf = {};
    lf.lfCharSet = DEFAULT_CHARSET;
    lf.lfHeight = nPointSize;
    if (lpszFaceName != NULL)
        lstrcpynW(lf.lfFaceName, lpszFaceName, LF_FACESIZE);
    return CreatePointFontIndirect(&lf, pDC);
}

BOOL CFont::CreatePointFontIndirect(const LOGFONT* lpLogFont, CDC* pDC)
{
    if (lpLogFont == NULL)
        return FALSE;
    HDC hDC = pDC != NULL ? pDC->m_hAttribDC : ::GetDC(NULL);
    if (hDC == NULL)
        return FALSE;
    // Tenths of a point to logical units of the DC: device pixels through the DC's
    // vertical resolution, then to logical units (the height is a distance, so the
    // origin is subtracted).
    LOGFONT lf = *lpLogFont;
    POINT pt = {0, ::MulDiv(::GetDeviceCaps(hDC, LOGPIXELSY), lf.lfHeight, 720)};
    POINT ptOrg = {0, 0};
    ::DPtoLP(hDC, &pt, 1);
    ::DPtoLP(hDC, &ptOrg, 1);
    lf.lfHeight = -abs(pt.y - ptOrg.y);
    if (pDC == NULL)
        ::ReleaseDC(NULL, hDC);
    return CreateFontIndirect(&lf);
}

////////////////////////////////////////////////////////////////////////////
// Bitmaps

IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)

BOOL CBitmap::LoadBitmap(LPCTSTR lpszResourceName)
{
    return lpszResourceName != NULL && m_hObject == NULL && Attach(::LoadBitmapW(AfxGetResourceHandle(), lpszResourceName));
}

BOOL CBitmap::LoadBitmap(UINT nIDResource)
{
    return LoadBitmap(MAKEINTRESOURCEW(nIDResource));
}

BOOL CBitmap::LoadOEMBitmap(UINT nIDBitmap)
{
    return m_hObject == NULL && Attach(::LoadBitmapW(NULL, MAKEINTRESOURCEW(nIDBitmap)));
}

BOOL CBitmap::CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits)
{
    return m_hObject == NULL && Attach(::CreateBitmap(nWidth, nHeight, nPlanes, nBitcount, lpBits));
}

BOOL CBitmap::CreateBitmapIndirect(LPBITMAP lpBitmap)
{
    return lpBitmap != NULL && m_hObject == NULL && Attach(::CreateBitmapIndirect(lpBitmap));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight)
{
    HDC hDC = pDC->GetSafeHdc();
    return hDC != NULL && m_hObject == NULL && Attach(::CreateCompatibleBitmap(hDC, nWidth, nHeight));
}

BOOL CBitmap::CreateDiscardableBitmap(CDC* pDC, int nWidth, int nHeight)
{
    return CreateCompatibleBitmap(pDC, nWidth, nHeight);
}

DWORD CBitmap::SetBitmapBits(DWORD dwCount, const void* lpBits)
{
    return m_hObject == NULL ? 0 : ::SetBitmapBits(static_cast<HBITMAP>(m_hObject), dwCount, lpBits);
}

DWORD CBitmap::GetBitmapBits(DWORD dwCount, LPVOID lpBits) const
{
    return m_hObject == NULL ? 0 : ::GetBitmapBits(static_cast<HBITMAP>(m_hObject), dwCount, lpBits);
}

CSize CBitmap::SetBitmapDimension(int nWidth, int nHeight)
{
    SIZE old = {0, 0};
    ::SetBitmapDimensionEx(static_cast<HBITMAP>(m_hObject), nWidth, nHeight, &old);
    return CSize(old);
}

CSize CBitmap::GetBitmapDimension() const
{
    SIZE size = {0, 0};
    ::GetBitmapDimensionEx(static_cast<HBITMAP>(m_hObject), &size);
    return CSize(size);
}

////////////////////////////////////////////////////////////////////////////
// Palettes

IMPLEMENT_DYNAMIC(CPalette, CGdiObject)

BOOL CPalette::CreatePalette(LPLOGPALETTE lpLogPalette)
{
    return lpLogPalette != NULL && m_hObject == NULL && Attach(::CreatePalette(lpLogPalette));
}

BOOL CPalette::CreateHalftonePalette(CDC* pDC)
{
    HDC hDC = pDC->GetSafeHdc();
    return hDC != NULL && m_hObject == NULL && Attach(::CreateHalftonePalette(hDC));
}

int CPalette::GetEntryCount()
{
    WORD n = 0;
    return GetObject(sizeof n, &n) ? n : 0;
}

UINT CPalette::GetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors) const
{
    return ::GetPaletteEntries(static_cast<HPALETTE>(m_hObject), nStartIndex, nNumEntries, lpPaletteColors);
}

UINT CPalette::SetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors)
{
    return ::SetPaletteEntries(static_cast<HPALETTE>(m_hObject), nStartIndex, nNumEntries, lpPaletteColors);
}

UINT CPalette::GetNearestPaletteIndex(COLORREF crColor) const
{
    return ::GetNearestPaletteIndex(static_cast<HPALETTE>(m_hObject), crColor);
}

////////////////////////////////////////////////////////////////////////////
// Regions

IMPLEMENT_DYNAMIC(CRgn, CGdiObject)

BOOL CRgn::CreateRectRgn(int x1, int y1, int x2, int y2)
{
    return m_hObject == NULL && Attach(::CreateRectRgn(x1, y1, x2, y2));
}

BOOL CRgn::CreateRectRgnIndirect(LPCRECT lpRect)
{
    return lpRect != NULL && m_hObject == NULL && Attach(::CreateRectRgnIndirect(lpRect));
}

BOOL CRgn::CreateEllipticRgn(int x1, int y1, int x2, int y2)
{
    return m_hObject == NULL && Attach(::CreateEllipticRgn(x1, y1, x2, y2));
}

BOOL CRgn::CreateEllipticRgnIndirect(LPCRECT lpRect)
{
    return lpRect != NULL && m_hObject == NULL && Attach(::CreateEllipticRgnIndirect(lpRect));
}

BOOL CRgn::CreatePolygonRgn(LPPOINT lpPoints, int nCount, int nMode)
{
    return lpPoints != NULL && m_hObject == NULL && Attach(::CreatePolygonRgn(lpPoints, nCount, nMode));
}

BOOL CRgn::CreatePolyPolygonRgn(LPPOINT lpPoints, LPINT lpPolyCounts, int nCount, int nPolyFillMode)
{
    return lpPoints != NULL && lpPolyCounts != NULL &&
           m_hObject == NULL && Attach(::CreatePolyPolygonRgn(lpPoints, lpPolyCounts, nCount, nPolyFillMode));
}

BOOL CRgn::CreateRoundRectRgn(int x1, int y1, int x2, int y2, int x3, int y3)
{
    return m_hObject == NULL && Attach(::CreateRoundRectRgn(x1, y1, x2, y2, x3, y3));
}

BOOL CRgn::CreateFromPath(CDC* pDC)
{
    HDC hDC = pDC->GetSafeHdc();
    return hDC != NULL && m_hObject == NULL && Attach(::PathToRegion(hDC));
}

BOOL CRgn::CreateFromData(const XFORM* lpXForm, int nCount, const RGNDATA* pRgnData)
{
    return pRgnData != NULL && m_hObject == NULL && Attach(::ExtCreateRegion(lpXForm, nCount, pRgnData));
}

int CRgn::CombineRgn(const CRgn* pRgn1, const CRgn* pRgn2, int nCombineMode)
{
    if (m_hObject == NULL)
        return ERROR;
    return ::CombineRgn(static_cast<HRGN>(m_hObject), static_cast<HRGN>(pRgn1->GetSafeHandle()),
                        static_cast<HRGN>(pRgn2->GetSafeHandle()), nCombineMode);
}

int CRgn::CopyRgn(const CRgn* pRgnSrc)
{
    if (m_hObject == NULL || pRgnSrc->GetSafeHandle() == NULL)
        return ERROR;
    return ::CombineRgn(static_cast<HRGN>(m_hObject), static_cast<HRGN>(pRgnSrc->m_hObject), NULL, RGN_COPY);
}

BOOL CRgn::EqualRgn(const CRgn* pRgn) const
{
    return m_hObject != NULL && pRgn->GetSafeHandle() != NULL &&
           ::EqualRgn(static_cast<HRGN>(m_hObject), static_cast<HRGN>(pRgn->m_hObject));
}

int CRgn::GetRegionData(LPRGNDATA lpRgnData, int nCount) const
{
    return static_cast<int>(::GetRegionData(static_cast<HRGN>(m_hObject), nCount, lpRgnData));
}
