// Pixel probes see what windows and their children paint, where they paint it.
#include "KxPixelProbe.h"

#include <wincodec.h>

namespace {

const COLORREF kRed = RGB(255, 0, 0);

// Paints a white background and a red 20x10 block at (10,10) of its client area.
LRESULT CALLBACK BlockProc(HWND h, UINT msg, WPARAM wp, LPARAM lp)
{
    auto paint = [](HDC dc) {
        HBRUSH red = CreateSolidBrush(kRed);
        RECT rc = {10, 10, 30, 20};
        FillRect(dc, &rc, red);
        DeleteObject(red);
    };
    switch (msg) {
    case WM_PRINTCLIENT:
        paint(reinterpret_cast<HDC>(wp));
        return 0;
    case WM_PAINT: {
        PAINTSTRUCT ps;
        paint(BeginPaint(h, &ps));
        EndPaint(h, &ps);
        return 0;
    }
    }
    return DefWindowProcW(h, msg, wp, lp);
}

class PixelProbe : public testing::Test {
protected:
    void SetUp() override
    {
        WNDCLASSW wc = {};
        wc.lpfnWndProc = BlockProc;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
        wc.lpszClassName = L"KxProbeBlock";
        RegisterClassW(&wc);
        m_top = CreateWindowExW(0, wc.lpszClassName, L"probe", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                                nullptr, nullptr, wc.hInstance, nullptr);
        ASSERT_NE(nullptr, m_top);
    }
    void TearDown() override
    {
        DestroyWindow(m_top);
        UnregisterClassW(L"KxProbeBlock", GetModuleHandleW(nullptr));
    }
    HWND Child(int x, int y, int cx, int cy, DWORD style = WS_VISIBLE)
    {
        return CreateWindowExW(0, L"KxProbeBlock", L"", WS_CHILD | style, x, y, cx, cy, m_top, nullptr,
                               GetModuleHandleW(nullptr), nullptr);
    }
    HWND m_top = nullptr;
};

}  // namespace

// What both ways of taking the picture agree on.
void ExpectBlocksAtTheirPlaces(HWND top, const KxPixelProbe& probe)
{
    RECT client;
    GetClientRect(top, &client);
    EXPECT_EQ(client.right, probe.Width());
    EXPECT_EQ(client.bottom, probe.Height());

    const RECT topOnly = {0, 0, 90, 50};
    EXPECT_EQ((RECT{10, 10, 30, 20}), probe.BoundingBox(kRed, &topOnly));
    const RECT child = {100, 50, 160, 90};
    EXPECT_EQ((RECT{110, 60, 130, 70}), probe.BoundingBox(kRed, &child));
    EXPECT_EQ(200, probe.Count(kRed, &child));
    const RECT hidden = {50, 120, 110, 160};
    EXPECT_EQ(0, probe.Count(kRed, &hidden));
    EXPECT_EQ(RGB(255, 255, 255), probe.Pixel(60, 130));

    // The framed child's client starts inside its one-pixel border at (201,101); its
    // grandchild's block (client (10,10) of the grandchild at (231,121)) is cut at the
    // framed child's client edge (259,139).
    const RECT framedBlock = {200, 100, 231, 125};
    EXPECT_EQ((RECT{211, 111, 231, 121}), probe.BoundingBox(kRed, &framedBlock));
    const RECT grandArea = {231, 121, 300, 200};
    EXPECT_EQ((RECT{241, 131, 259, 139}), probe.BoundingBox(kRed, &grandArea));
}

TEST_F(PixelProbe, ClientAreaAndChildrenAppearAtTheirClientCoordinates)
{
    Child(100, 50, 60, 40);                    // block at (110,60)-(130,70)
    HWND framed = Child(200, 100, 60, 40, WS_VISIBLE | WS_BORDER);
    Child(50, 120, 60, 40, 0);                 // hidden: not drawn
    HWND grand = Child(0, 0, 0, 0);            // moved below into the framed child
    SetParent(grand, framed);
    MoveWindow(grand, 30, 20, 40, 30, FALSE);

    KxPixelProbe shown;
    ASSERT_TRUE(shown.Capture(m_top));
    ExpectBlocksAtTheirPlaces(m_top, shown);
    EXPECT_NE(RGB(255, 255, 255), shown.Pixel(200, 100));  // the child's frame is painted
    shown.SaveIfFailed(L"capture");

    KxPixelProbe printed;
    ASSERT_TRUE(printed.Render(m_top));
    ExpectBlocksAtTheirPlaces(m_top, printed);
    printed.SaveIfFailed(L"render");

    // Taken whole, the picture has the frame around the same client area.
    KxPixelProbe whole;
    ASSERT_TRUE(whole.CaptureWindow(m_top));
    RECT wr;
    GetWindowRect(m_top, &wr);
    POINT origin = {0, 0};
    ClientToScreen(m_top, &origin);
    const int dx = origin.x - wr.left, dy = origin.y - wr.top;
    EXPECT_EQ(wr.right - wr.left, whole.Width());
    EXPECT_GT(dy, 0);
    const RECT corner = {0, 0, dx + 90, dy + 50};
    EXPECT_EQ((RECT{dx + 10, dy + 10, dx + 30, dy + 20}), whole.BoundingBox(kRed, &corner));
    EXPECT_NE(KxPixelProbe::kUnpainted, whole.Pixel(2, 2));
    whole.SaveIfFailed(L"window");
}

TEST_F(PixelProbe, HiddenWindowsAreRenderedButNotCaptured)
{
    ShowWindow(m_top, SW_HIDE);
    KxPixelProbe probe;
    EXPECT_FALSE(probe.Capture(m_top));
    ASSERT_TRUE(probe.Render(m_top));
    EXPECT_EQ((RECT{10, 10, 30, 20}), probe.BoundingBox(kRed));
}

TEST_F(PixelProbe, ReadsOutsideThePictureAreInvalid)
{
    KxPixelProbe probe;
    EXPECT_EQ(CLR_INVALID, probe.Pixel(0, 0));
    EXPECT_EQ((RECT{0, 0, 0, 0}), probe.BoundingBox(kRed));
    ASSERT_TRUE(probe.Create(4, 3, kRed));
    EXPECT_EQ(kRed, probe.Pixel(3, 2));
    EXPECT_EQ(CLR_INVALID, probe.Pixel(4, 0));
    EXPECT_EQ(CLR_INVALID, probe.Pixel(0, -1));
    EXPECT_EQ(12, probe.Count(kRed));
    const RECT outside = {10, 10, 20, 20};
    EXPECT_EQ(0, probe.Count(kRed, &outside));
    EXPECT_FALSE(probe.Create(0, 5));
    EXPECT_FALSE(probe.Capture(nullptr));
}

TEST_F(PixelProbe, CommonControlPaintsIntoThePicture)
{
    INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_PROGRESS_CLASS};
    InitCommonControlsEx(&icc);
    HWND bar = CreateWindowExW(0, PROGRESS_CLASSW, L"", WS_CHILD | WS_VISIBLE, 10, 10, 200, 20, m_top, nullptr,
                               GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(nullptr, bar);
    SendMessageW(bar, PBM_SETPOS, 50, 0);
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Capture(m_top));
    // Whatever the theme's colours, the fill starts at the left and covers half the bar.
    const COLORREF fillColor = probe.Pixel(14, 20);
    const COLORREF emptyColor = probe.Pixel(205, 20);
    EXPECT_NE(fillColor, emptyColor);
    const RECT fill = probe.BoundingBox(fillColor);
    EXPECT_GT(fill.right - fill.left, 80);   // about half of the bar
    EXPECT_LT(fill.right - fill.left, 120);
    EXPECT_GE(fill.left, 10);
    EXPECT_LE(fill.bottom, 30);
    probe.SaveIfFailed();
}

TEST(PixelProbeFile, PngHoldsThePixels)
{
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Create(5, 4, RGB(0, 128, 0)));
    SetPixel(probe.Dc(), 3, 1, RGB(10, 20, 30));
    wchar_t dir[MAX_PATH], path[MAX_PATH];
    GetTempPathW(MAX_PATH, dir);
    GetTempFileNameW(dir, L"kxp", 0, path);
    ASSERT_TRUE(probe.WritePng(path));

    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    IWICImagingFactory* factory = nullptr;
    IWICBitmapDecoder* decoder = nullptr;
    IWICBitmapFrameDecode* frame = nullptr;
    IWICFormatConverter* conv = nullptr;
    ASSERT_HRESULT_SUCCEEDED(
        CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&factory)));
    ASSERT_HRESULT_SUCCEEDED(
        factory->CreateDecoderFromFilename(path, nullptr, GENERIC_READ, WICDecodeMetadataCacheOnDemand, &decoder));
    GUID format = {};
    decoder->GetContainerFormat(&format);
    EXPECT_TRUE(IsEqualGUID(GUID_ContainerFormatPng, format));
    ASSERT_HRESULT_SUCCEEDED(decoder->GetFrame(0, &frame));
    UINT w = 0, h = 0;
    frame->GetSize(&w, &h);
    EXPECT_EQ(5u, w);
    EXPECT_EQ(4u, h);
    factory->CreateFormatConverter(&conv);
    conv->Initialize(frame, GUID_WICPixelFormat32bppBGR, WICBitmapDitherTypeNone, nullptr, 0,
                     WICBitmapPaletteTypeCustom);
    DWORD px[20] = {};
    ASSERT_HRESULT_SUCCEEDED(conv->CopyPixels(nullptr, 20, sizeof px, reinterpret_cast<BYTE*>(px)));
    EXPECT_EQ(0x0A141Eu, px[1 * 5 + 3] & 0xFFFFFF);
    EXPECT_EQ(0x008000u, px[0] & 0xFFFFFF);
    conv->Release();
    frame->Release();
    decoder->Release();
    factory->Release();
    CoUninitialize();
    DeleteFileW(path);
}
