// Drawing through CDC and the drawing objects: the pixels they produce, what they own
// and free, and what they merely wrap.
#include <afxwin.h>
#include "KxPixelProbe.h"

#include <vector>

namespace {

const COLORREF kRed = RGB(255, 0, 0);
const COLORREF kGreen = RGB(0, 160, 0);
const COLORREF kBlue = RGB(0, 0, 255);
const COLORREF kWhite = RGB(255, 255, 255);
const COLORREF kBlack = RGB(0, 0, 0);

// A white canvas wrapped by a CDC that does not own it.
struct Canvas {
    Canvas(int cx, int cy)
    {
        probe.Create(cx, cy, kWhite);
        dc.Attach(probe.Dc());
    }
    ~Canvas() { dc.Detach(); }
    KxPixelProbe probe;
    CDC dc;
};

}  // namespace

TEST(Gdi, FillSolidRectAnd3dRectPaintExactlyTheirPixels)
{
    Canvas c(40, 30);
    c.dc.FillSolidRect(CRect(5, 6, 15, 10), kRed);
    EXPECT_EQ((RECT{5, 6, 15, 10}), c.probe.BoundingBox(kRed));
    EXPECT_EQ(40, c.probe.Count(kRed));
    EXPECT_EQ(kRed, c.dc.GetBkColor());  // FillSolidRect works through the background colour

    c.dc.FillSolidRect(20, 2, 3, 4, kGreen);
    EXPECT_EQ((RECT{20, 2, 23, 6}), c.probe.BoundingBox(kGreen));

    // Top and left in one colour, bottom and right in the other, one pixel wide.
    c.dc.Draw3dRect(CRect(2, 14, 12, 24), kBlue, kBlack);
    EXPECT_EQ((RECT{2, 14, 11, 23}), c.probe.BoundingBox(kBlue));
    EXPECT_EQ(9 + 9 - 1, c.probe.Count(kBlue));
    const RECT inner = {3, 15, 11, 23};
    EXPECT_EQ(0, c.probe.Count(kBlack, &inner));
    EXPECT_EQ(kBlack, c.probe.Pixel(11, 14));
    EXPECT_EQ(kBlack, c.probe.Pixel(2, 23));
    EXPECT_EQ(kBlack, c.probe.Pixel(11, 23));
    EXPECT_EQ(kWhite, c.probe.Pixel(6, 18));
    c.probe.SaveIfFailed();
}

TEST(Gdi, DrawEdgeUsesTheSystemColoursAndShrinksTheRect)
{
    Canvas c(30, 30);
    CRect rc(4, 4, 24, 20);
    ASSERT_TRUE(c.dc.DrawEdge(&rc, EDGE_SUNKEN, BF_RECT | BF_ADJUST));
    EXPECT_EQ(CRect(6, 6, 22, 18), rc);  // a sunken edge is two pixels wide
    // Outer edge: shadow on top and left, highlight on bottom and right.
    EXPECT_EQ(GetSysColor(COLOR_BTNSHADOW), c.probe.Pixel(10, 4));
    EXPECT_EQ(GetSysColor(COLOR_BTNSHADOW), c.probe.Pixel(4, 10));
    EXPECT_EQ(GetSysColor(COLOR_BTNHIGHLIGHT), c.probe.Pixel(10, 19));
    EXPECT_EQ(GetSysColor(COLOR_BTNHIGHLIGHT), c.probe.Pixel(23, 10));
    // Inner edge: dark shadow on top and left.
    EXPECT_EQ(GetSysColor(COLOR_3DDKSHADOW), c.probe.Pixel(10, 5));
    EXPECT_EQ(kWhite, c.probe.Pixel(12, 12));
    c.probe.SaveIfFailed();
}

TEST(Gdi, PatternBrushTilesItsBitmapFromTheBrushOrigin)
{
    // An 8x8 monochrome pattern: the top-left 4x4 quadrant set, the rest clear. Rows
    // of a monochrome bitmap are padded to 16 bits.
    WORD bits[8];
    for (int y = 0; y < 8; ++y)
        bits[y] = y < 4 ? 0x00F0 : 0x0000;  // first byte holds pixels 0..7, MSB first
    CBitmap pattern;
    ASSERT_TRUE(pattern.CreateBitmap(8, 8, 1, 1, bits));
    CBrush brush;
    ASSERT_TRUE(brush.CreatePatternBrush(&pattern));
    EXPECT_EQ(static_cast<UINT>(OBJ_BRUSH), brush.GetObjectType());
    LOGBRUSH lb = {};
    ASSERT_EQ(static_cast<int>(sizeof lb), brush.GetLogBrush(&lb));
    EXPECT_EQ(static_cast<UINT>(BS_PATTERN), lb.lbStyle);

    Canvas c(24, 24);
    // Set bits take the background colour, clear bits the text colour.
    c.dc.SetTextColor(kBlue);
    c.dc.SetBkColor(kRed);
    c.dc.FillRect(CRect(0, 0, 16, 16), &brush);
    EXPECT_EQ(kRed, c.probe.Pixel(0, 0));
    EXPECT_EQ(kRed, c.probe.Pixel(3, 3));
    EXPECT_EQ(kBlue, c.probe.Pixel(4, 0));
    EXPECT_EQ(kBlue, c.probe.Pixel(0, 4));
    EXPECT_EQ(kRed, c.probe.Pixel(8, 8));    // the next tile
    EXPECT_EQ(kRed, c.probe.Pixel(11, 3));
    EXPECT_EQ(kBlue, c.probe.Pixel(15, 15));
    EXPECT_EQ(64, c.probe.Count(kRed));       // four set quadrants of 16 pixels
    EXPECT_EQ(kWhite, c.probe.Pixel(16, 0));  // nothing outside the rectangle
    c.probe.SaveIfFailed();
}

TEST(Gdi, HatchAndSystemColourBrushes)
{
    CBrush hatch(HS_CROSS, kGreen);
    LOGBRUSH lb = {};
    hatch.GetLogBrush(&lb);
    EXPECT_EQ(static_cast<UINT>(BS_HATCHED), lb.lbStyle);
    EXPECT_EQ(static_cast<ULONG_PTR>(HS_CROSS), lb.lbHatch);
    EXPECT_EQ(kGreen, lb.lbColor);

    Canvas c(16, 16);
    c.dc.SetBkMode(TRANSPARENT);
    c.dc.FillRect(CRect(0, 0, 16, 16), &hatch);
    EXPECT_GT(c.probe.Count(kGreen), 16);    // the grid lines
    EXPECT_GT(c.probe.Count(kWhite), 100);   // and the cells between them untouched

    // The system's brush is a stock object: deleting its wrapper leaves it usable.
    HBRUSH sys = GetSysColorBrush(COLOR_WINDOW);
    {
        CBrush face;
        ASSERT_TRUE(face.CreateSysColorBrush(COLOR_WINDOW));
        EXPECT_EQ(sys, static_cast<HBRUSH>(face));
    }
    EXPECT_EQ(OBJ_BRUSH, GetObjectType(sys));
}

TEST(Gdi, ClippingLimitsWhatIsPainted)
{
    Canvas c(40, 40);
    const int saved = c.dc.SaveDC();
    c.dc.IntersectClipRect(10, 10, 30, 30);
    c.dc.ExcludeClipRect(CRect(15, 15, 20, 20));
    CRect box;
    EXPECT_EQ(COMPLEXREGION, c.dc.GetClipBox(&box));
    EXPECT_EQ(CRect(10, 10, 30, 30), box);
    c.dc.FillSolidRect(0, 0, 40, 40, kRed);
    EXPECT_EQ((RECT{10, 10, 30, 30}), c.probe.BoundingBox(kRed));
    EXPECT_EQ(400 - 25, c.probe.Count(kRed));
    ASSERT_TRUE(c.dc.RestoreDC(saved));

    CRgn ellipse, square, both;
    ASSERT_TRUE(ellipse.CreateEllipticRgn(0, 0, 20, 20));
    ASSERT_TRUE(square.CreateRectRgn(10, 0, 40, 10));
    ASSERT_TRUE(both.CreateRectRgn(0, 0, 0, 0));
    EXPECT_EQ(COMPLEXREGION, both.CombineRgn(&ellipse, &square, RGN_OR));
    EXPECT_TRUE(both.PtInRegion(35, 5));
    EXPECT_TRUE(both.PtInRegion(10, 15));
    EXPECT_FALSE(both.PtInRegion(1, 1));  // the ellipse's corner
    EXPECT_EQ(COMPLEXREGION, c.dc.SelectClipRgn(&both));
    c.dc.FillSolidRect(0, 0, 40, 40, kBlue);
    EXPECT_EQ(kBlue, c.probe.Pixel(35, 5));
    EXPECT_EQ(kWhite, c.probe.Pixel(1, 1));
    EXPECT_EQ(kWhite, c.probe.Pixel(35, 15));
    // The DC holds a copy: the region objects stay its owners' to delete.
    EXPECT_EQ(static_cast<UINT>(OBJ_REGION), both.GetObjectType());
    c.dc.SelectClipRgn(nullptr);
    c.probe.SaveIfFailed();
}

TEST(Gdi, TextIsMeasuredAndDrawnWithTheSelectedFont)
{
    Canvas c(200, 60);
    CFont font;
    ASSERT_TRUE(font.CreatePointFont(120, L"Tahoma"));
    LOGFONT lf = {};
    ASSERT_EQ(static_cast<int>(sizeof lf), font.GetLogFont(&lf));
    EXPECT_EQ(-MulDiv(12, c.dc.GetDeviceCaps(LOGPIXELSY), 72), lf.lfHeight);  // 12 points
    EXPECT_STREQ(L"Tahoma", lf.lfFaceName);

    CFont* old = c.dc.SelectObject(&font);
    ASSERT_NE(nullptr, old);
    EXPECT_EQ(static_cast<UINT>(OBJ_FONT), old->GetObjectType());
    const CString text(L"Wide text");
    const CSize extent = c.dc.GetTextExtent(text);
    EXPECT_EQ(extent, c.dc.GetOutputTextExtent(text.GetString(), text.GetLength()));
    EXPECT_EQ(c.dc.GetTextExtent(L"Wide", 4).cx + c.dc.GetTextExtent(L" text", 5).cx, extent.cx);
    TEXTMETRIC tm = {};
    ASSERT_TRUE(c.dc.GetTextMetrics(&tm));
    EXPECT_EQ(tm.tmHeight, extent.cy);

    // DT_CALCRECT measures without drawing and grows the rectangle to the text.
    CRect calc(10, 10, 11, 11);
    EXPECT_EQ(tm.tmHeight, c.dc.DrawText(text, &calc, DT_SINGLELINE | DT_CALCRECT));
    EXPECT_EQ(CRect(10, 10, 10 + extent.cx, 10 + tm.tmHeight), calc);
    EXPECT_EQ(0, c.probe.Count(kBlack));

    c.dc.SetTextColor(kBlack);
    c.dc.SetBkMode(TRANSPARENT);
    c.dc.DrawText(text, &calc, DT_SINGLELINE);
    const RECT ink = c.probe.BoundingBox(kBlack);
    EXPECT_GE(ink.left, calc.left);
    EXPECT_LE(ink.right, calc.right + 1);
    EXPECT_GE(ink.top, calc.top);
    EXPECT_LE(ink.bottom, calc.bottom);
    EXPECT_GT(ink.right - ink.left, extent.cx / 2);

    // TextOut at a right-aligned reference point ends at x.
    c.dc.SetTextAlign(TA_RIGHT | TA_TOP);
    EXPECT_EQ(static_cast<UINT>(TA_RIGHT | TA_TOP), c.dc.GetTextAlign());
    ASSERT_TRUE(c.dc.TextOut(190, 35, CString(L"R")));
    const RECT band = {100, 35, 200, 60};
    EXPECT_LE(c.probe.BoundingBox(kBlack, &band).right, 191);
    EXPECT_GT(c.probe.BoundingBox(kBlack, &band).right, 180);
    c.dc.SelectObject(old);
    c.probe.SaveIfFailed();
}

TEST(Gdi, LinesShapesAndBlits)
{
    Canvas c(60, 40);
    CPen pen(PS_SOLID, 1, kRed);
    CPen* oldPen = c.dc.SelectObject(&pen);
    c.dc.MoveTo(5, 5);
    EXPECT_EQ(CPoint(5, 5), c.dc.GetCurrentPosition());
    c.dc.LineTo(25, 5);  // the end point is not drawn
    EXPECT_EQ((RECT{5, 5, 25, 6}), c.probe.BoundingBox(kRed));
    const POINT tri[] = {{30, 30}, {50, 30}, {40, 20}};
    CBrush fill(kGreen);
    CBrush* oldBrush = c.dc.SelectObject(&fill);
    ASSERT_TRUE(c.dc.Polygon(tri, 3));
    EXPECT_EQ(kGreen, c.probe.Pixel(40, 27));
    ASSERT_TRUE(c.dc.Rectangle(2, 20, 12, 30));  // outline in the pen, inside in the brush
    EXPECT_EQ(kRed, c.probe.Pixel(2, 25));
    EXPECT_EQ(kGreen, c.probe.Pixel(6, 25));
    c.dc.SelectObject(oldBrush);
    c.dc.SelectObject(oldPen);

    CBitmap check;  // the system's check mark (OBM_CHECK)
    ASSERT_TRUE(check.LoadOEMBitmap(32760));
    BITMAP oem = {};
    ASSERT_TRUE(check.GetBitmap(&oem));
    EXPECT_GT(oem.bmWidth, 0);
    EXPECT_FALSE(check.LoadOEMBitmap(32760));  // holds one already

    // A memory DC with a bitmap, blitted and stretched.
    CDC mem;
    ASSERT_TRUE(mem.CreateCompatibleDC(&c.dc));
    CBitmap bmp;
    ASSERT_TRUE(bmp.CreateCompatibleBitmap(&c.dc, 4, 4));
    BITMAP bm = {};
    ASSERT_TRUE(bmp.GetBitmap(&bm));
    EXPECT_EQ(4, bm.bmWidth);
    CBitmap* oldBmp = mem.SelectObject(&bmp);
    mem.FillSolidRect(0, 0, 4, 4, kBlue);
    ASSERT_TRUE(c.dc.BitBlt(50, 2, 4, 4, &mem, 0, 0, SRCCOPY));
    ASSERT_TRUE(c.dc.StretchBlt(50, 10, 8, 8, &mem, 0, 0, 4, 4, SRCCOPY));
    EXPECT_EQ((RECT{50, 2, 58, 18}), c.probe.BoundingBox(kBlue));
    EXPECT_EQ(16 + 64, c.probe.Count(kBlue));
    mem.SelectObject(oldBmp);

    // InvertRect twice restores the pixels.
    c.dc.InvertRect(CRect(0, 0, 60, 40));
    EXPECT_EQ(RGB(0, 255, 255), c.probe.Pixel(10, 5));
    c.dc.InvertRect(CRect(0, 0, 60, 40));
    EXPECT_EQ(kRed, c.probe.Pixel(10, 5));
    c.probe.SaveIfFailed();
}

TEST(GdiOwnership, WrappersFreeWhatTheyOwnAndNothingElse)
{
    HBRUSH hOwned;
    {
        CBrush owned(kRed);
        hOwned = owned;
        EXPECT_EQ(&owned, CBrush::FromHandle(hOwned));  // the permanent object
    }
    EXPECT_EQ(0u, GetObjectType(hOwned));

    // A temporary wrapper of a brush nobody attached never deletes it.
    HBRUSH hRaw = CreateSolidBrush(kGreen);
    CBrush* temp = CBrush::FromHandle(hRaw);
    ASSERT_NE(nullptr, temp);
    EXPECT_EQ(temp, CBrush::FromHandle(hRaw));
    CGdiObject::DeleteTempMap();
    EXPECT_EQ(static_cast<DWORD>(OBJ_BRUSH), GetObjectType(hRaw));

    // Detach hands the handle back; a second owner frees it once.
    CBrush first;
    ASSERT_TRUE(first.Attach(hRaw));
    EXPECT_FALSE(first.Attach(hRaw));       // already holds one
    EXPECT_FALSE(first.CreateSolidBrush(kBlue));  // and creates no second
    EXPECT_EQ(hRaw, first.Detach());
    EXPECT_EQ(nullptr, first.m_hObject);
    EXPECT_FALSE(first.DeleteObject());
    {
        CBrush second;
        second.Attach(hRaw);
    }
    EXPECT_EQ(0u, GetObjectType(hRaw));

    // DCs: the same rules.
    HDC hRawDC = CreateCompatibleDC(nullptr);
    CDC* tempDC = CDC::FromHandle(hRawDC);
    EXPECT_EQ(hRawDC, tempDC->m_hAttribDC);
    CDC::DeleteTempMap();
    EXPECT_EQ(static_cast<DWORD>(OBJ_MEMDC), GetObjectType(hRawDC));
    {
        CDC owner;
        owner.Attach(hRawDC);
        EXPECT_EQ(&owner, CDC::FromHandle(hRawDC));
    }
    EXPECT_EQ(0u, GetObjectType(hRawDC));

    const CGdiObject* none = nullptr;
    EXPECT_EQ(nullptr, none->GetSafeHandle());
    const CDC* noDC = nullptr;
    EXPECT_EQ(nullptr, noDC->GetSafeHdc());
    EXPECT_EQ(nullptr, CGdiObject::FromHandle(nullptr));
}

TEST(GdiOwnership, TenThousandObjectsLeaveNoHandleBehind)
{
    std::vector<HGDIOBJ> objects;
    std::vector<HDC> dcs;
    objects.reserve(20000);
    dcs.reserve(10000);
    CClientDC screen(nullptr);
    for (int i = 0; i < 10000; ++i) {
        CBrush brush(RGB(i & 0xFF, (i >> 8) & 0xFF, 7));
        CFont font;
        ASSERT_TRUE(font.CreatePointFont(80 + i % 40, L"Tahoma", &screen));
        CDC dc;
        ASSERT_TRUE(dc.CreateCompatibleDC(&screen));
        CFont* old = dc.SelectObject(&font);
        dc.SelectObject(old);
        objects.push_back(brush.m_hObject);
        objects.push_back(font.m_hObject);
        dcs.push_back(dc.m_hDC);
    }
    int left = 0;
    for (HGDIOBJ h : objects)
        left += GetObjectType(h) != 0;
    for (HDC h : dcs)
        left += GetObjectType(h) != 0;
    EXPECT_EQ(0, left);

    // The check sees a handle that is left behind.
    CBrush kept(kBlue);
    HGDIOBJ h = kept.Detach();
    EXPECT_NE(0u, GetObjectType(h));
    DeleteObject(h);
}

////////////////////////////////////////////////////////////////////////////
// Window DCs

namespace {

// Paints its client area through CPaintDC: a frame of one colour around another.
class PaintedWnd : public CWnd {
public:
    int paints = 0;
    CWnd* dcWindow = nullptr;
    afx_msg void OnPaint()
    {
        CPaintDC dc(this);
        ++paints;
        dcWindow = dc.GetWindow();
        CRect rc;
        GetClientRect(&rc);
        dc.FillSolidRect(&rc, kBlue);
        rc.DeflateRect(10, 10);
        dc.FillSolidRect(&rc, kGreen);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(PaintedWnd, CWnd)
    ON_WM_PAINT()
END_MESSAGE_MAP()

}  // namespace

TEST(GdiWindow, PaintDCDrawsTheUpdateAndClientDCBelongsToItsWindow)
{
    PaintedWnd wnd;
    ASSERT_TRUE(wnd.CreateEx(0, AfxRegisterWndClass(0), L"painted", WS_POPUP | WS_VISIBLE, CRect(0, 0, 120, 80),
                             nullptr, 0));
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Capture(wnd));
    EXPECT_GT(wnd.paints, 0);
    EXPECT_EQ(&wnd, wnd.dcWindow);
    EXPECT_EQ((RECT{10, 10, 110, 70}), probe.BoundingBox(kGreen));
    EXPECT_EQ(120 * 80 - 100 * 60, probe.Count(kBlue));
    probe.SaveIfFailed();
    // Everything is painted: nothing is left to update.
    EXPECT_FALSE(GetUpdateRect(wnd, nullptr, FALSE));

    {
        CClientDC dc(&wnd);
        EXPECT_EQ(&wnd, dc.GetWindow());
        EXPECT_EQ(&dc, CDC::FromHandle(dc.m_hDC));  // the permanent object while it lives
        dc.FillSolidRect(0, 0, 5, 5, kRed);
        CWindowDC whole(&wnd);
        EXPECT_NE(nullptr, whole.m_hDC);
    }
    wnd.DestroyWindow();
}
