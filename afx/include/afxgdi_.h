// Drawing: device contexts (CDC, CPaintDC, CClientDC, CWindowDC) and drawing objects
// (CGdiObject, CPen, CBrush, CFont, CBitmap, CPalette, CRgn). Included by afxwin.h.
//
// A wrapper owns the handle it created or was given with Attach and frees it once, in
// DeleteObject/DeleteDC or its destructor. FromHandle of a handle no object owns gives a
// temporary wrapper that never frees the handle; it lives until the thread's next idle time.
#pragma once

class CWnd;
class CDC;
class CBitmap;

// Thrown when the system cannot create a window, drawing object or device context.
class KXAFX_API CResourceException : public CSimpleException {
    DECLARE_DYNAMIC(CResourceException)
public:
    CResourceException() noexcept = default;
    explicit CResourceException(BOOL bAutoDelete) noexcept : CSimpleException(bAutoDelete) {}
    virtual ~CResourceException();

protected:
    virtual LPCWSTR GetDefaultMessage() const override;
};

[[noreturn]] KXAFX_API void AFXAPI AfxThrowResourceException();

////////////////////////////////////////////////////////////////////////////
// Drawing objects

class KXAFX_API CGdiObject : public CObject {
    DECLARE_DYNCREATE(CGdiObject)
public:
    CGdiObject() noexcept : m_hObject(NULL) {}
    // Deletes the object it owns.
    virtual ~CGdiObject();

    HGDIOBJ m_hObject;
    operator HGDIOBJ() const { return m_hObject; }
    // The handle, or NULL when called through a NULL pointer.
    HGDIOBJ GetSafeHandle() const;

    // The object that owns hObject, else a temporary one; NULL for NULL.
    static CGdiObject* PASCAL FromHandle(HGDIOBJ hObject);
    // Frees this thread's temporary drawing objects (done at idle time).
    static void PASCAL DeleteTempMap();
    // Takes ownership of hObject; FALSE for NULL or when the object already holds one.
    BOOL Attach(HGDIOBJ hObject);
    // Gives up ownership and returns the handle.
    HGDIOBJ Detach();
    // Deletes the owned object; FALSE when there is none.
    BOOL DeleteObject();

    int GetObject(int nCount, LPVOID lpObject) const;
    // OBJ_PEN, OBJ_BRUSH, ...; 0 when empty or no longer valid.
    UINT GetObjectType() const;
    BOOL CreateStockObject(int nIndex);
    BOOL UnrealizeObject();
    BOOL operator==(const CGdiObject& obj) const { return obj.m_hObject == m_hObject; }
    BOOL operator!=(const CGdiObject& obj) const { return obj.m_hObject != m_hObject; }
};

class KXAFX_API CPen : public CGdiObject {
    DECLARE_DYNAMIC(CPen)
public:
    CPen() = default;
    // These constructors throw CResourceException when the pen cannot be made.
    CPen(int nPenStyle, int nWidth, COLORREF crColor);
    CPen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount = 0, const DWORD* lpStyle = NULL);
    static CPen* PASCAL FromHandle(HPEN hPen) { return static_cast<CPen*>(CGdiObject::FromHandle(hPen)); }
    operator HPEN() const { return static_cast<HPEN>(m_hObject); }

    BOOL CreatePen(int nPenStyle, int nWidth, COLORREF crColor);
    BOOL CreatePen(int nPenStyle, int nWidth, const LOGBRUSH* pLogBrush, int nStyleCount = 0,
                   const DWORD* lpStyle = NULL);
    BOOL CreatePenIndirect(LPLOGPEN lpLogPen);
    int GetLogPen(LOGPEN* pLogPen) { return GetObject(sizeof(LOGPEN), pLogPen); }
    int GetExtLogPen(EXTLOGPEN* pLogPen) { return GetObject(sizeof(EXTLOGPEN), pLogPen); }
};

class KXAFX_API CBrush : public CGdiObject {
    DECLARE_DYNAMIC(CBrush)
public:
    CBrush() = default;
    // These constructors throw CResourceException when the brush cannot be made.
    explicit CBrush(COLORREF crColor);
    CBrush(int nIndex, COLORREF crColor);  // hatched
    explicit CBrush(CBitmap* pBitmap);     // pattern
    static CBrush* PASCAL FromHandle(HBRUSH hBrush) { return static_cast<CBrush*>(CGdiObject::FromHandle(hBrush)); }
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }

    BOOL CreateSolidBrush(COLORREF crColor);
    BOOL CreateHatchBrush(int nIndex, COLORREF crColor);
    BOOL CreateBrushIndirect(const LOGBRUSH* lpLogBrush);
    BOOL CreatePatternBrush(CBitmap* pBitmap);
    BOOL CreateDIBPatternBrush(const void* lpPackedDIB, UINT nUsage);
    // The system's brush of a display element colour (COLOR_*). It is a stock object:
    // deleting it does nothing.
    BOOL CreateSysColorBrush(int nIndex);
    int GetLogBrush(LOGBRUSH* pLogBrush) { return GetObject(sizeof(LOGBRUSH), pLogBrush); }
};

class KXAFX_API CFont : public CGdiObject {
    DECLARE_DYNAMIC(CFont)
public:
    CFont() = default;
    static CFont* PASCAL FromHandle(HFONT hFont) { return static_cast<CFont*>(CGdiObject::FromHandle(hFont)); }
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }

    BOOL CreateFontIndirect(const LOGFONT* lpLogFont);
    BOOL CreateFont(int nHeight, int nWidth, int nEscapement, int nOrientation, int nWeight, BYTE bItalic,
                    BYTE bUnderline, BYTE cStrikeOut, BYTE nCharSet, BYTE nOutPrecision, BYTE nClipPrecision,
                    BYTE nQuality, BYTE nPitchAndFamily, LPCTSTR lpszFacename);
    // A font of nPointSize tenths of a point, scaled for pDC (the screen when NULL).
    BOOL CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC* pDC = NULL);
    // lfHeight of lpLogFont in tenths of a point.
    BOOL CreatePointFontIndirect(const LOGFONT* lpLogFont, CDC* pDC = NULL);
    int GetLogFont(LOGFONT* pLogFont) { return GetObject(sizeof(LOGFONT), pLogFont); }
};

class KXAFX_API CBitmap : public CGdiObject {
    DECLARE_DYNAMIC(CBitmap)
public:
    CBitmap() = default;
    static CBitmap* PASCAL FromHandle(HBITMAP hBitmap)
    { return static_cast<CBitmap*>(CGdiObject::FromHandle(hBitmap)); }
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }

    // From the resources of the current resource module.
    BOOL LoadBitmap(LPCTSTR lpszResourceName);
    BOOL LoadBitmap(UINT nIDResource);
    BOOL LoadOEMBitmap(UINT nIDBitmap);
    BOOL CreateBitmap(int nWidth, int nHeight, UINT nPlanes, UINT nBitcount, const void* lpBits);
    BOOL CreateBitmapIndirect(LPBITMAP lpBitmap);
    BOOL CreateCompatibleBitmap(CDC* pDC, int nWidth, int nHeight);
    BOOL CreateDiscardableBitmap(CDC* pDC, int nWidth, int nHeight);
    int GetBitmap(BITMAP* pBitMap) { return GetObject(sizeof(BITMAP), pBitMap); }
    DWORD SetBitmapBits(DWORD dwCount, const void* lpBits);
    DWORD GetBitmapBits(DWORD dwCount, LPVOID lpBits) const;
    CSize SetBitmapDimension(int nWidth, int nHeight);
    CSize GetBitmapDimension() const;
};

class KXAFX_API CPalette : public CGdiObject {
    DECLARE_DYNAMIC(CPalette)
public:
    CPalette() = default;
    static CPalette* PASCAL FromHandle(HPALETTE hPalette)
    { return static_cast<CPalette*>(CGdiObject::FromHandle(hPalette)); }
    operator HPALETTE() const { return static_cast<HPALETTE>(m_hObject); }

    BOOL CreatePalette(LPLOGPALETTE lpLogPalette);
    BOOL CreateHalftonePalette(CDC* pDC);
    int GetEntryCount();
    UINT GetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors) const;
    UINT SetPaletteEntries(UINT nStartIndex, UINT nNumEntries, LPPALETTEENTRY lpPaletteColors);
    UINT GetNearestPaletteIndex(COLORREF crColor) const;
};

class KXAFX_API CRgn : public CGdiObject {
    DECLARE_DYNAMIC(CRgn)
public:
    CRgn() = default;
    static CRgn* PASCAL FromHandle(HRGN hRgn) { return static_cast<CRgn*>(CGdiObject::FromHandle(hRgn)); }
    operator HRGN() const { return static_cast<HRGN>(m_hObject); }

    BOOL CreateRectRgn(int x1, int y1, int x2, int y2);
    BOOL CreateRectRgnIndirect(LPCRECT lpRect);
    BOOL CreateEllipticRgn(int x1, int y1, int x2, int y2);
    BOOL CreateEllipticRgnIndirect(LPCRECT lpRect);
    BOOL CreatePolygonRgn(LPPOINT lpPoints, int nCount, int nMode);
    BOOL CreatePolyPolygonRgn(LPPOINT lpPoints, LPINT lpPolyCounts, int nCount, int nPolyFillMode);
    BOOL CreateRoundRectRgn(int x1, int y1, int x2, int y2, int x3, int y3);
    BOOL CreateFromPath(CDC* pDC);
    BOOL CreateFromData(const XFORM* lpXForm, int nCount, const RGNDATA* pRgnData);

    void SetRectRgn(int x1, int y1, int x2, int y2) { ::SetRectRgn(static_cast<HRGN>(m_hObject), x1, y1, x2, y2); }
    void SetRectRgn(LPCRECT lpRect)
    { ::SetRectRgn(static_cast<HRGN>(m_hObject), lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    // Makes this region pRgn1 combined with pRgn2 (RGN_AND, RGN_OR, ...); the result
    // is the region's complexity or ERROR.
    int CombineRgn(const CRgn* pRgn1, const CRgn* pRgn2, int nCombineMode);
    int CopyRgn(const CRgn* pRgnSrc);
    BOOL EqualRgn(const CRgn* pRgn) const;
    int OffsetRgn(int x, int y) { return ::OffsetRgn(static_cast<HRGN>(m_hObject), x, y); }
    int OffsetRgn(POINT point) { return OffsetRgn(point.x, point.y); }
    int GetRgnBox(LPRECT lpRect) const { return ::GetRgnBox(static_cast<HRGN>(m_hObject), lpRect); }
    BOOL PtInRegion(int x, int y) const { return ::PtInRegion(static_cast<HRGN>(m_hObject), x, y); }
    BOOL PtInRegion(POINT point) const { return PtInRegion(point.x, point.y); }
    BOOL RectInRegion(LPCRECT lpRect) const { return ::RectInRegion(static_cast<HRGN>(m_hObject), lpRect); }
    int GetRegionData(LPRGNDATA lpRgnData, int nCount) const;
};

////////////////////////////////////////////////////////////////////////////
// Device contexts

// m_hDC receives output; m_hAttribDC answers queries. Both are the same handle except
// for print preview style DCs; state setters change both.
class KXAFX_API CDC : public CObject {
    DECLARE_DYNCREATE(CDC)
public:
    CDC() noexcept;
    // Deletes the DC it owns (DeleteDC).
    virtual ~CDC();

    HDC m_hDC;
    HDC m_hAttribDC;
    BOOL m_bPrinting;

    operator HDC() const { return m_hDC; }
    // The output handle, or NULL when called through a NULL pointer.
    HDC GetSafeHdc() const;
    // The window the DC belongs to, or NULL.
    CWnd* GetWindow() const;

    // The object that owns hDC, else a temporary one; NULL for NULL.
    static CDC* PASCAL FromHandle(HDC hDC);
    // Frees this thread's temporary DC objects (done at idle time).
    static void PASCAL DeleteTempMap();
    // Takes ownership of hDC (output and attributes); FALSE for NULL or when holding one.
    BOOL Attach(HDC hDC);
    // Gives up ownership and returns the output handle.
    HDC Detach();
    virtual void SetAttribDC(HDC hDC);
    virtual void SetOutputDC(HDC hDC);
    virtual void ReleaseAttribDC();
    virtual void ReleaseOutputDC();
    BOOL IsPrinting() const { return m_bPrinting; }

    // ---- creation ----
    BOOL CreateDC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData);
    BOOL CreateIC(LPCTSTR lpszDriverName, LPCTSTR lpszDeviceName, LPCTSTR lpszOutput, const void* lpInitData);
    // A memory DC compatible with pDC (the screen when NULL).
    BOOL CreateCompatibleDC(CDC* pDC);
    // Deletes the owned DC; FALSE when there is none.
    BOOL DeleteDC();

    // ---- state ----
    virtual int SaveDC();
    virtual BOOL RestoreDC(int nSavedDC);
    int GetDeviceCaps(int nIndex) const { return ::GetDeviceCaps(m_hAttribDC, nIndex); }
    CPoint GetBrushOrg() const;
    CPoint SetBrushOrg(int x, int y);
    CPoint SetBrushOrg(POINT point) { return SetBrushOrg(point.x, point.y); }

    // ---- drawing objects ----
    CGdiObject* SelectStockObject(int nIndex);
    CPen* SelectObject(CPen* pPen);
    CBrush* SelectObject(CBrush* pBrush);
    virtual CFont* SelectObject(CFont* pFont);
    CBitmap* SelectObject(CBitmap* pBitmap);
    // Selects a copy of the region as the clipping region; returns its complexity.
    int SelectObject(CRgn* pRgn);
    CGdiObject* SelectObject(CGdiObject* pObject);
    HGDIOBJ SelectObject(HGDIOBJ hObject);
    CPalette* SelectPalette(CPalette* pPalette, BOOL bForceBackground);
    UINT RealizePalette() { return ::RealizePalette(m_hDC); }
    CPen* GetCurrentPen() const { return CPen::FromHandle(static_cast<HPEN>(::GetCurrentObject(m_hDC, OBJ_PEN))); }
    CBrush* GetCurrentBrush() const
    { return CBrush::FromHandle(static_cast<HBRUSH>(::GetCurrentObject(m_hDC, OBJ_BRUSH))); }
    CFont* GetCurrentFont() const
    { return CFont::FromHandle(static_cast<HFONT>(::GetCurrentObject(m_hDC, OBJ_FONT))); }
    CBitmap* GetCurrentBitmap() const
    { return CBitmap::FromHandle(static_cast<HBITMAP>(::GetCurrentObject(m_hDC, OBJ_BITMAP))); }

    // ---- colours and modes ----
    COLORREF GetBkColor() const { return ::GetBkColor(m_hAttribDC); }
    virtual COLORREF SetBkColor(COLORREF crColor);
    int GetBkMode() const { return ::GetBkMode(m_hAttribDC); }
    int SetBkMode(int nBkMode);
    COLORREF GetTextColor() const { return ::GetTextColor(m_hAttribDC); }
    virtual COLORREF SetTextColor(COLORREF crColor);
    int GetROP2() const { return ::GetROP2(m_hAttribDC); }
    int SetROP2(int nDrawMode);
    int GetPolyFillMode() const { return ::GetPolyFillMode(m_hAttribDC); }
    int SetPolyFillMode(int nPolyFillMode);
    int GetStretchBltMode() const { return ::GetStretchBltMode(m_hAttribDC); }
    int SetStretchBltMode(int nStretchMode);

    // ---- coordinates ----
    int GetMapMode() const { return ::GetMapMode(m_hAttribDC); }
    virtual int SetMapMode(int nMapMode);
    CPoint GetViewportOrg() const;
    virtual CPoint SetViewportOrg(int x, int y);
    CPoint SetViewportOrg(POINT point) { return SetViewportOrg(point.x, point.y); }
    virtual CPoint OffsetViewportOrg(int nWidth, int nHeight);
    CSize GetViewportExt() const;
    virtual CSize SetViewportExt(int cx, int cy);
    CSize SetViewportExt(SIZE size) { return SetViewportExt(size.cx, size.cy); }
    CPoint GetWindowOrg() const;
    CPoint SetWindowOrg(int x, int y);
    CPoint SetWindowOrg(POINT point) { return SetWindowOrg(point.x, point.y); }
    CPoint OffsetWindowOrg(int nWidth, int nHeight);
    CSize GetWindowExt() const;
    virtual CSize SetWindowExt(int cx, int cy);
    CSize SetWindowExt(SIZE size) { return SetWindowExt(size.cx, size.cy); }
    void DPtoLP(LPPOINT lpPoints, int nCount = 1) const { ::DPtoLP(m_hAttribDC, lpPoints, nCount); }
    void DPtoLP(LPRECT lpRect) const { ::DPtoLP(m_hAttribDC, reinterpret_cast<LPPOINT>(lpRect), 2); }
    void LPtoDP(LPPOINT lpPoints, int nCount = 1) const { ::LPtoDP(m_hAttribDC, lpPoints, nCount); }
    void LPtoDP(LPRECT lpRect) const { ::LPtoDP(m_hAttribDC, reinterpret_cast<LPPOINT>(lpRect), 2); }

    // ---- clipping ----
    virtual int GetClipBox(LPRECT lpRect) const { return ::GetClipBox(m_hDC, lpRect); }
    BOOL PtVisible(int x, int y) const { return ::PtVisible(m_hDC, x, y); }
    BOOL PtVisible(POINT point) const { return PtVisible(point.x, point.y); }
    virtual BOOL RectVisible(LPCRECT lpRect) const { return ::RectVisible(m_hDC, lpRect); }
    int SelectClipRgn(CRgn* pRgn);
    int SelectClipRgn(CRgn* pRgn, int nMode);
    int ExcludeClipRect(int x1, int y1, int x2, int y2);
    int ExcludeClipRect(LPCRECT lpRect) { return ExcludeClipRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    int ExcludeUpdateRgn(CWnd* pWnd);
    int IntersectClipRect(int x1, int y1, int x2, int y2);
    int IntersectClipRect(LPCRECT lpRect)
    { return IntersectClipRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    int OffsetClipRgn(int x, int y);
    int OffsetClipRgn(SIZE size) { return OffsetClipRgn(size.cx, size.cy); }

    // ---- lines ----
    CPoint GetCurrentPosition() const;
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point) { return MoveTo(point.x, point.y); }
    BOOL LineTo(int x, int y);
    BOOL LineTo(POINT point) { return LineTo(point.x, point.y); }
    BOOL Arc(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4)
    { return ::Arc(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4); }
    BOOL Arc(LPCRECT lpRect, POINT ptStart, POINT ptEnd)
    { return Arc(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom, ptStart.x, ptStart.y, ptEnd.x, ptEnd.y); }
    BOOL Polyline(const POINT* lpPoints, int nCount) { return ::Polyline(m_hDC, lpPoints, nCount); }
    BOOL PolyPolyline(const POINT* lpPoints, const DWORD* lpPolyPoints, int nCount)
    { return ::PolyPolyline(m_hDC, lpPoints, lpPolyPoints, nCount); }
    BOOL PolyBezier(const POINT* lpPoints, int nCount) { return ::PolyBezier(m_hDC, lpPoints, nCount); }

    // ---- rectangles and simple shapes ----
    void FillRect(LPCRECT lpRect, CBrush* pBrush) { ::FillRect(m_hDC, lpRect, static_cast<HBRUSH>(pBrush->GetSafeHandle())); }
    void FrameRect(LPCRECT lpRect, CBrush* pBrush) { ::FrameRect(m_hDC, lpRect, static_cast<HBRUSH>(pBrush->GetSafeHandle())); }
    void InvertRect(LPCRECT lpRect) { ::InvertRect(m_hDC, lpRect); }
    // Fills with a colour through the background colour (which it changes).
    void FillSolidRect(LPCRECT lpRect, COLORREF clr);
    void FillSolidRect(int x, int y, int cx, int cy, COLORREF clr);
    // A one-pixel frame: clrTopLeft on the top and left, clrBottomRight on the others.
    void Draw3dRect(LPCRECT lpRect, COLORREF clrTopLeft, COLORREF clrBottomRight);
    void Draw3dRect(int x, int y, int cx, int cy, COLORREF clrTopLeft, COLORREF clrBottomRight);
    BOOL DrawEdge(LPRECT lpRect, UINT nEdge, UINT nFlags) { return ::DrawEdge(m_hDC, lpRect, nEdge, nFlags); }
    BOOL DrawFrameControl(LPRECT lpRect, UINT nType, UINT nState)
    { return ::DrawFrameControl(m_hDC, lpRect, nType, nState); }
    void DrawFocusRect(LPCRECT lpRect) { ::DrawFocusRect(m_hDC, lpRect); }
    BOOL DrawIcon(int x, int y, HICON hIcon) { return ::DrawIcon(m_hDC, x, y, hIcon); }
    BOOL DrawIcon(POINT point, HICON hIcon) { return ::DrawIcon(m_hDC, point.x, point.y, hIcon); }
    BOOL DrawState(CPoint pt, CSize size, HBITMAP hBitmap, UINT nFlags, HBRUSH hBrush = NULL);
    BOOL DrawState(CPoint pt, CSize size, CBitmap* pBitmap, UINT nFlags, CBrush* pBrush = NULL);
    BOOL DrawState(CPoint pt, CSize size, HICON hIcon, UINT nFlags, HBRUSH hBrush = NULL);
    BOOL DrawState(CPoint pt, CSize size, HICON hIcon, UINT nFlags, CBrush* pBrush);
    BOOL DrawState(CPoint pt, CSize size, LPCTSTR lpszText, UINT nFlags, BOOL bPrefixText = TRUE,
                   int nTextLen = 0, HBRUSH hBrush = NULL);
    BOOL DrawState(CPoint pt, CSize size, LPCTSTR lpszText, UINT nFlags, BOOL bPrefixText, int nTextLen,
                   CBrush* pBrush);
    BOOL Chord(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4)
    { return ::Chord(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4); }
    BOOL Pie(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4)
    { return ::Pie(m_hDC, x1, y1, x2, y2, x3, y3, x4, y4); }
    BOOL Ellipse(int x1, int y1, int x2, int y2) { return ::Ellipse(m_hDC, x1, y1, x2, y2); }
    BOOL Ellipse(LPCRECT lpRect) { return Ellipse(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    BOOL Polygon(const POINT* lpPoints, int nCount) { return ::Polygon(m_hDC, lpPoints, nCount); }
    BOOL PolyPolygon(const POINT* lpPoints, const INT* lpPolyCounts, int nCount)
    { return ::PolyPolygon(m_hDC, lpPoints, lpPolyCounts, nCount); }
    BOOL Rectangle(int x1, int y1, int x2, int y2) { return ::Rectangle(m_hDC, x1, y1, x2, y2); }
    BOOL Rectangle(LPCRECT lpRect) { return Rectangle(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom); }
    BOOL RoundRect(int x1, int y1, int x2, int y2, int x3, int y3) { return ::RoundRect(m_hDC, x1, y1, x2, y2, x3, y3); }
    BOOL RoundRect(LPCRECT lpRect, POINT point)
    { return RoundRect(lpRect->left, lpRect->top, lpRect->right, lpRect->bottom, point.x, point.y); }
    BOOL FillRgn(CRgn* pRgn, CBrush* pBrush)
    { return ::FillRgn(m_hDC, static_cast<HRGN>(pRgn->GetSafeHandle()), static_cast<HBRUSH>(pBrush->GetSafeHandle())); }
    BOOL FrameRgn(CRgn* pRgn, CBrush* pBrush, int nWidth, int nHeight)
    { return ::FrameRgn(m_hDC, static_cast<HRGN>(pRgn->GetSafeHandle()), static_cast<HBRUSH>(pBrush->GetSafeHandle()),
                        nWidth, nHeight); }
    BOOL PaintRgn(CRgn* pRgn) { return ::PaintRgn(m_hDC, static_cast<HRGN>(pRgn->GetSafeHandle())); }

    // ---- bitmaps ----
    BOOL PatBlt(int x, int y, int nWidth, int nHeight, DWORD dwRop) { return ::PatBlt(m_hDC, x, y, nWidth, nHeight, dwRop); }
    BOOL BitBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, DWORD dwRop);
    BOOL StretchBlt(int x, int y, int nWidth, int nHeight, CDC* pSrcDC, int xSrc, int ySrc, int nSrcWidth,
                    int nSrcHeight, DWORD dwRop);
    BOOL TransparentBlt(int xDest, int yDest, int nDestWidth, int nDestHeight, CDC* pSrcDC, int xSrc, int ySrc,
                        int nSrcWidth, int nSrcHeight, UINT clrTransparent);
    BOOL AlphaBlend(int xDest, int yDest, int nDestWidth, int nDestHeight, CDC* pSrcDC, int xSrc, int ySrc,
                    int nSrcWidth, int nSrcHeight, BLENDFUNCTION blend);
    COLORREF GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }
    COLORREF GetPixel(POINT point) const { return ::GetPixel(m_hDC, point.x, point.y); }
    COLORREF SetPixel(int x, int y, COLORREF crColor) { return ::SetPixel(m_hDC, x, y, crColor); }
    COLORREF SetPixel(POINT point, COLORREF crColor) { return ::SetPixel(m_hDC, point.x, point.y, crColor); }
    BOOL SetPixelV(int x, int y, COLORREF crColor) { return ::SetPixelV(m_hDC, x, y, crColor); }
    BOOL FloodFill(int x, int y, COLORREF crColor) { return ::FloodFill(m_hDC, x, y, crColor); }
    BOOL ExtFloodFill(int x, int y, COLORREF crColor, UINT nFillType)
    { return ::ExtFloodFill(m_hDC, x, y, crColor, nFillType); }

    // ---- text ----
    virtual BOOL TextOut(int x, int y, LPCTSTR lpszString, int nCount);
    BOOL TextOut(int x, int y, const CString& str) { return TextOut(x, y, str.GetString(), str.GetLength()); }
    virtual BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, LPCTSTR lpszString, UINT nCount,
                            LPINT lpDxWidths);
    BOOL ExtTextOut(int x, int y, UINT nOptions, LPCRECT lpRect, const CString& str, LPINT lpDxWidths)
    { return ExtTextOut(x, y, nOptions, lpRect, str.GetString(), str.GetLength(), lpDxWidths); }
    virtual CSize TabbedTextOut(int x, int y, LPCTSTR lpszString, int nCount, int nTabPositions,
                                LPINT lpnTabStopPositions, int nTabOrigin);
    // Draws formatted text in lpRect; with DT_CALCRECT only measures, widening or
    // heightening lpRect. Returns the text height.
    virtual int DrawText(LPCTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat);
    int DrawText(const CString& str, LPRECT lpRect, UINT nFormat)
    { return DrawText(str.GetString(), str.GetLength(), lpRect, nFormat); }
    virtual int DrawTextEx(LPTSTR lpszString, int nCount, LPRECT lpRect, UINT nFormat,
                           LPDRAWTEXTPARAMS lpDTParams);
    // Extents measured on the attribute DC and the output DC respectively.
    CSize GetTextExtent(LPCTSTR lpszString, int nCount) const;
    CSize GetTextExtent(const CString& str) const { return GetTextExtent(str.GetString(), str.GetLength()); }
    CSize GetOutputTextExtent(LPCTSTR lpszString, int nCount) const;
    CSize GetOutputTextExtent(const CString& str) const
    { return GetOutputTextExtent(str.GetString(), str.GetLength()); }
    CSize GetTabbedTextExtent(LPCTSTR lpszString, int nCount, int nTabPositions, LPINT lpnTabStopPositions) const;
    UINT GetTextAlign() const { return ::GetTextAlign(m_hAttribDC); }
    UINT SetTextAlign(UINT nFlags);
    int GetTextFace(int nCount, LPTSTR lpszFacename) const { return ::GetTextFaceW(m_hAttribDC, nCount, lpszFacename); }
    int GetTextFace(CString& rString) const;
    BOOL GetTextMetrics(LPTEXTMETRIC lpMetrics) const { return ::GetTextMetricsW(m_hAttribDC, lpMetrics); }
    BOOL GetOutputTextMetrics(LPTEXTMETRIC lpMetrics) const { return ::GetTextMetricsW(m_hDC, lpMetrics); }
    int GetTextCharacterExtra() const { return ::GetTextCharacterExtra(m_hAttribDC); }
    int SetTextCharacterExtra(int nCharExtra);
    BOOL GetCharWidth(UINT nFirstChar, UINT nLastChar, LPINT lpBuffer) const
    { return ::GetCharWidth32W(m_hAttribDC, nFirstChar, nLastChar, lpBuffer); }

    // ---- scrolling and paths ----
    BOOL ScrollDC(int dx, int dy, LPCRECT lpRectScroll, LPCRECT lpRectClip, CRgn* pRgnUpdate, LPRECT lpRectUpdate);
    BOOL BeginPath() { return ::BeginPath(m_hDC); }
    BOOL EndPath() { return ::EndPath(m_hDC); }
    BOOL AbortPath() { return ::AbortPath(m_hDC); }
    BOOL FillPath() { return ::FillPath(m_hDC); }
    BOOL StrokePath() { return ::StrokePath(m_hDC); }
    BOOL StrokeAndFillPath() { return ::StrokeAndFillPath(m_hDC); }
    BOOL SelectClipPath(int nMode) { return ::SelectClipPath(m_hDC, nMode); }
};

// BeginPaint in the constructor, EndPaint in the destructor.
class KXAFX_API CPaintDC : public CDC {
    DECLARE_DYNAMIC(CPaintDC)
public:
    // Throws CResourceException when painting cannot begin.
    explicit CPaintDC(CWnd* pWnd);
    virtual ~CPaintDC();
    PAINTSTRUCT m_ps;

protected:
    HWND m_hWnd;
};

// The client area's DC (GetDC); released in the destructor.
class KXAFX_API CClientDC : public CDC {
    DECLARE_DYNAMIC(CClientDC)
public:
    // pWnd NULL: the screen. Throws CResourceException when no DC is available.
    explicit CClientDC(CWnd* pWnd);
    virtual ~CClientDC();

protected:
    HWND m_hWnd;
};

// The whole window's DC (GetWindowDC); released in the destructor.
class KXAFX_API CWindowDC : public CDC {
    DECLARE_DYNAMIC(CWindowDC)
public:
    explicit CWindowDC(CWnd* pWnd);
    virtual ~CWindowDC();

protected:
    HWND m_hWnd;
};
