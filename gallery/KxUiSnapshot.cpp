#include "KxUiSnapshot.h"
#include <wincodec.h>
#include <vector>

HBITMAP KxCaptureWindow(HWND hWnd)
{
    RedrawWindow(hWnd, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_FRAME | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    RECT wr;
    GetWindowRect(hWnd, &wr);
    const int w = wr.right - wr.left, h = wr.bottom - wr.top;
    BITMAPINFO bi = {};
    bi.bmiHeader.biSize = sizeof bi.bmiHeader;
    bi.bmiHeader.biWidth = w;
    bi.bmiHeader.biHeight = -h;
    bi.bmiHeader.biPlanes = 1;
    bi.bmiHeader.biBitCount = 32;
    bi.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    HBITMAP bmp = CreateDIBSection(nullptr, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (!bmp)
        return nullptr;
    HDC mem = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(mem, bmp);
    HDC wdc = GetWindowDC(hWnd);
    BitBlt(mem, 0, 0, w, h, wdc, 0, 0, SRCCOPY);
    ReleaseDC(hWnd, wdc);
    SelectObject(mem, old);
    DeleteDC(mem);
    return bmp;
}

bool KxHasContent(HBITMAP hBitmap)
{
    DIBSECTION ds;
    if (GetObjectW(hBitmap, sizeof ds, &ds) != sizeof ds || !ds.dsBm.bmBits || ds.dsBm.bmBitsPixel != 32)
        return false;
    const auto* px = static_cast<const DWORD*>(ds.dsBm.bmBits);
    const size_t n = static_cast<size_t>(ds.dsBm.bmWidth) * static_cast<size_t>(ds.dsBm.bmHeight);
    for (size_t i = 1; i < n; ++i)
        if ((px[i] & 0xFFFFFF) != (px[0] & 0xFFFFFF))
            return true;
    return false;
}

namespace {

template <class T>
struct ComPtr {
    T* p = nullptr;
    ~ComPtr()
    {
        if (p)
            p->Release();
    }
    T** operator&() { return &p; }
    T* operator->() const { return p; }
};

}  // namespace

bool KxWritePng(HBITMAP hBitmap, LPCWSTR path)
{
    ComPtr<IWICImagingFactory> factory;
    if (FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                reinterpret_cast<void**>(&factory))))
        return false;
    ComPtr<IWICBitmap> source;
    ComPtr<IWICStream> stream;
    ComPtr<IWICBitmapEncoder> encoder;
    ComPtr<IWICBitmapFrameEncode> frame;
    return SUCCEEDED(factory->CreateBitmapFromHBITMAP(hBitmap, nullptr, WICBitmapIgnoreAlpha, &source)) &&
           SUCCEEDED(factory->CreateStream(&stream)) &&
           SUCCEEDED(stream->InitializeFromFilename(path, GENERIC_WRITE)) &&
           SUCCEEDED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder)) &&
           SUCCEEDED(encoder->Initialize(stream.p, WICBitmapEncoderNoCache)) &&
           SUCCEEDED(encoder->CreateNewFrame(&frame, nullptr)) && SUCCEEDED(frame->Initialize(nullptr)) &&
           SUCCEEDED(frame->WriteSource(source.p, nullptr)) && SUCCEEDED(frame->Commit()) &&
           SUCCEEDED(encoder->Commit());
}
