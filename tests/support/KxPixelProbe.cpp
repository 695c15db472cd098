#include "KxPixelProbe.h"

#include <gtest/gtest.h>
#include <wincodec.h>
#include <algorithm>
#include <cstdio>

namespace {

COLORREF ToColorRef(DWORD bgrx)
{
    return RGB((bgrx >> 16) & 0xFF, (bgrx >> 8) & 0xFF, bgrx & 0xFF);
}

POINT ClientOriginOnScreen(HWND wnd)
{
    POINT pt = {0, 0};
    ClientToScreen(wnd, &pt);
    return pt;
}

}  // namespace

KxPixelProbe::~KxPixelProbe()
{
    Free();
}

void KxPixelProbe::Free()
{
    if (m_dc) {
        SelectObject(m_dc, m_oldBmp);
        DeleteDC(m_dc);
    }
    if (m_bmp)
        DeleteObject(m_bmp);
    m_dc = nullptr;
    m_bmp = nullptr;
    m_oldBmp = nullptr;
    m_bits = nullptr;
    m_cx = m_cy = 0;
}

bool KxPixelProbe::Allocate(int cx, int cy, COLORREF fill)
{
    Free();
    if (cx <= 0 || cy <= 0)
        return false;
    BITMAPINFO bi = {};
    bi.bmiHeader.biSize = sizeof bi.bmiHeader;
    bi.bmiHeader.biWidth = cx;
    bi.bmiHeader.biHeight = -cy;  // top-down: row 0 is the top of the picture
    bi.bmiHeader.biPlanes = 1;
    bi.bmiHeader.biBitCount = 32;
    bi.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    m_bmp = CreateDIBSection(nullptr, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
    m_dc = CreateCompatibleDC(nullptr);
    if (!m_bmp || !m_dc) {
        Free();
        return false;
    }
    m_oldBmp = SelectObject(m_dc, m_bmp);
    m_bits = static_cast<DWORD*>(bits);
    m_cx = cx;
    m_cy = cy;
    const DWORD px = (GetRValue(fill) << 16) | (GetGValue(fill) << 8) | GetBValue(fill);
    std::fill(m_bits, m_bits + static_cast<size_t>(cx) * cy, px);
    return true;
}

bool KxPixelProbe::Create(int cx, int cy, COLORREF fill)
{
    return Allocate(cx, cy, fill);
}

bool KxPixelProbe::CopyFrom(HWND wnd, bool whole)
{
    if (!IsWindow(wnd) || !IsWindowVisible(wnd))
        return false;
    RECT rc;
    if (whole) {
        GetWindowRect(wnd, &rc);
        OffsetRect(&rc, -rc.left, -rc.top);
    } else {
        GetClientRect(wnd, &rc);
    }
    if (!Allocate(rc.right, rc.bottom, kUnpainted))
        return false;
    RedrawWindow(wnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    HDC src = whole ? GetWindowDC(wnd) : GetDC(wnd);
    const BOOL ok = BitBlt(m_dc, 0, 0, m_cx, m_cy, src, 0, 0, SRCCOPY);
    ReleaseDC(wnd, src);
    GdiFlush();
    return ok != FALSE;
}

bool KxPixelProbe::Capture(HWND wnd)
{
    return CopyFrom(wnd, false);
}

bool KxPixelProbe::CaptureWindow(HWND wnd)
{
    return CopyFrom(wnd, true);
}

bool KxPixelProbe::Render(HWND wnd)
{
    RECT rc;
    if (!IsWindow(wnd) || !GetClientRect(wnd, &rc) || !Allocate(rc.right, rc.bottom, kUnpainted))
        return false;
    SetViewportOrgEx(m_dc, 0, 0, nullptr);
    SendMessageW(wnd, WM_PRINT, reinterpret_cast<WPARAM>(m_dc), PRF_ERASEBKGND | PRF_CLIENT);
    RenderChildren(wnd, POINT{0, 0});
    GdiFlush();
    return true;
}

// Paints the visible children of parent, bottom of the Z order first, each clipped to
// the parent's client area; clientOrigin is where the parent's client (0,0) lies in the
// picture. Each child paints its frame, then its client area, then its own children.
void KxPixelProbe::RenderChildren(HWND parent, POINT clientOrigin)
{
    RECT parentClient;
    GetClientRect(parent, &parentClient);
    OffsetRect(&parentClient, clientOrigin.x, clientOrigin.y);
    const POINT parentScreen = ClientOriginOnScreen(parent);
    for (HWND child = GetWindow(GetWindow(parent, GW_CHILD), GW_HWNDLAST); child;
         child = GetWindow(child, GW_HWNDPREV)) {
        if (!(GetWindowLongW(child, GWL_STYLE) & WS_VISIBLE))
            continue;
        RECT wr, cr;
        GetWindowRect(child, &wr);
        GetClientRect(child, &cr);
        const POINT childScreen = ClientOriginOnScreen(child);
        const POINT winOrigin = {clientOrigin.x + wr.left - parentScreen.x, clientOrigin.y + wr.top - parentScreen.y};
        const POINT cliOrigin = {clientOrigin.x + childScreen.x - parentScreen.x,
                                 clientOrigin.y + childScreen.y - parentScreen.y};
        RECT frame = {winOrigin.x, winOrigin.y, winOrigin.x + wr.right - wr.left, winOrigin.y + wr.bottom - wr.top};
        RECT clip;
        if (!IntersectRect(&clip, &frame, &parentClient))
            continue;

        int saved = SaveDC(m_dc);
        IntersectClipRect(m_dc, clip.left, clip.top, clip.right, clip.bottom);
        SetViewportOrgEx(m_dc, winOrigin.x, winOrigin.y, nullptr);
        SendMessageW(child, WM_PRINT, reinterpret_cast<WPARAM>(m_dc), PRF_NONCLIENT);
        RestoreDC(m_dc, saved);

        RECT client = {cliOrigin.x, cliOrigin.y, cliOrigin.x + cr.right, cliOrigin.y + cr.bottom};
        if (IntersectRect(&clip, &client, &clip)) {
            saved = SaveDC(m_dc);
            IntersectClipRect(m_dc, clip.left, clip.top, clip.right, clip.bottom);
            SetViewportOrgEx(m_dc, cliOrigin.x, cliOrigin.y, nullptr);
            SendMessageW(child, WM_PRINT, reinterpret_cast<WPARAM>(m_dc), PRF_ERASEBKGND | PRF_CLIENT);
            RestoreDC(m_dc, saved);
            RenderChildren(child, cliOrigin);
        }
    }
}

COLORREF KxPixelProbe::Pixel(int x, int y) const
{
    if (!m_bits || x < 0 || y < 0 || x >= m_cx || y >= m_cy)
        return CLR_INVALID;
    GdiFlush();
    return ToColorRef(m_bits[static_cast<size_t>(y) * m_cx + x]);
}

int KxPixelProbe::Count(COLORREF c, const RECT* within) const
{
    const RECT box = BoundingBox(c, within);  // also clips `within` to the picture
    int n = 0;
    for (int y = box.top; y < box.bottom; ++y)
        for (int x = box.left; x < box.right; ++x)
            n += ToColorRef(m_bits[static_cast<size_t>(y) * m_cx + x]) == c;
    return n;
}

RECT KxPixelProbe::BoundingBox(COLORREF c, const RECT* within) const
{
    RECT area = {0, 0, m_cx, m_cy};
    RECT box = {0, 0, 0, 0};
    if (!m_bits || (within && !IntersectRect(&area, &area, within)))
        return box;
    GdiFlush();
    bool found = false;
    for (int y = area.top; y < area.bottom; ++y) {
        const DWORD* row = m_bits + static_cast<size_t>(y) * m_cx;
        for (int x = area.left; x < area.right; ++x) {
            if (ToColorRef(row[x]) != c)
                continue;
            if (!found) {
                box = {x, y, x + 1, y + 1};
                found = true;
            } else {
                box.left = std::min<LONG>(box.left, x);
                box.right = std::max<LONG>(box.right, x + 1);
                box.bottom = y + 1;
            }
        }
    }
    return box;
}

bool KxPixelProbe::WritePng(const std::wstring& path) const
{
    if (!m_bits)
        return false;
    GdiFlush();
    const HRESULT init = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    bool ok = false;
    IWICImagingFactory* factory = nullptr;
    IWICBitmap* bitmap = nullptr;
    IWICStream* stream = nullptr;
    IWICBitmapEncoder* encoder = nullptr;
    IWICBitmapFrameEncode* frame = nullptr;
    if (SUCCEEDED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&factory))) &&
        SUCCEEDED(factory->CreateBitmapFromMemory(m_cx, m_cy, GUID_WICPixelFormat32bppBGR, m_cx * 4, m_cx * m_cy * 4,
                                                  reinterpret_cast<BYTE*>(m_bits), &bitmap)) &&
        SUCCEEDED(factory->CreateStream(&stream)) &&
        SUCCEEDED(stream->InitializeFromFilename(path.c_str(), GENERIC_WRITE)) &&
        SUCCEEDED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder)) &&
        SUCCEEDED(encoder->Initialize(stream, WICBitmapEncoderNoCache)) &&
        SUCCEEDED(encoder->CreateNewFrame(&frame, nullptr)) && SUCCEEDED(frame->Initialize(nullptr)) &&
        SUCCEEDED(frame->WriteSource(bitmap, nullptr)) && SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder->Commit()))
        ok = true;
    for (IUnknown* p : {static_cast<IUnknown*>(frame), static_cast<IUnknown*>(encoder), static_cast<IUnknown*>(stream),
                        static_cast<IUnknown*>(bitmap), static_cast<IUnknown*>(factory)})
        if (p)
            p->Release();
    if (SUCCEEDED(init))
        CoUninitialize();
    return ok;
}

std::wstring KxPixelProbe::SaveIfFailed(const wchar_t* tag) const
{
    const testing::TestInfo* info = testing::UnitTest::GetInstance()->current_test_info();
    if (!info || !testing::Test::HasFailure())
        return std::wstring();
    wchar_t dir[MAX_PATH];
    DWORD n = GetEnvironmentVariableW(L"KXTEST_IMAGES", dir, MAX_PATH);
    if (n == 0 || n >= MAX_PATH) {
        n = GetModuleFileNameW(nullptr, dir, MAX_PATH);
        wchar_t* slash = wcsrchr(dir, L'\\');
        if (slash)
            *slash = 0;
        wcscat_s(dir, L"\\test-images");
    }
    CreateDirectoryW(dir, nullptr);
    std::wstring path = dir;
    path += L'\\';
    for (const char* s : {info->test_suite_name(), ".", info->name()})
        for (; *s; ++s)
            path += (*s == '/' ? L'_' : static_cast<wchar_t>(*s));
    if (tag && *tag)
        path += std::wstring(L"-") + tag;
    path += L".png";
    if (!WritePng(path))
        return std::wstring();
    std::printf("pixel probe image: %ls\n", path.c_str());
    return path;
}
