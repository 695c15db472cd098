// Pixel probes: a window (with its children) or a blank canvas rendered into a 32-bit
// top-down DIB section, read pixel by pixel, searched for a colour, written to a PNG.
#pragma once
#include <windows.h>
#include <ostream>
#include <string>

// Rectangles compare and print in test expectations.
inline bool operator==(const RECT& a, const RECT& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
inline bool operator!=(const RECT& a, const RECT& b)
{
    return !(a == b);
}
inline void PrintTo(const RECT& r, std::ostream* os)
{
    *os << "{" << r.left << ", " << r.top << ", " << r.right << ", " << r.bottom << "}";
}

class KxPixelProbe {
public:
    // Colour of the pixels nobody painted (the canvas is filled with it before rendering).
    static constexpr COLORREF kUnpainted = RGB(0xFE, 0x00, 0xFE);

    KxPixelProbe() = default;
    ~KxPixelProbe();
    KxPixelProbe(const KxPixelProbe&) = delete;
    KxPixelProbe& operator=(const KxPixelProbe&) = delete;

    // The client area of a visible window as it is painted on screen, its children
    // included (client coordinates of wnd). The window and its children are repainted
    // first (WM_PAINT, through RedrawWindow); the display driver keeps each top-level
    // window's pixels in memory, so this works without a display. False when the window
    // is not visible.
    bool Capture(HWND wnd);
    // The same for the whole window, frame and menu included (window coordinates).
    bool CaptureWindow(HWND wnd);
    // Renders the client area of wnd and of its visible children through WM_PRINT, for
    // windows that are not shown. Each window paints itself through WM_PRINTCLIENT;
    // frames of children are not drawn (the platform draws no non-client area there).
    bool Render(HWND wnd);
    // A blank canvas of cx x cy filled with fill, for drawing into Dc() directly.
    bool Create(int cx, int cy, COLORREF fill = kUnpainted);

    // Memory DC with the picture selected (NULL before a capture).
    HDC Dc() const { return m_dc; }
    HBITMAP Bitmap() const { return m_bmp; }
    int Width() const { return m_cx; }
    int Height() const { return m_cy; }

    // Colour at (x, y); CLR_INVALID outside the picture.
    COLORREF Pixel(int x, int y) const;
    // Number of pixels of colour c (within rc when given).
    int Count(COLORREF c, const RECT* within = nullptr) const;
    // Smallest rectangle holding every pixel of colour c (within rc when given); empty
    // (all zero) when there is none.
    RECT BoundingBox(COLORREF c, const RECT* within = nullptr) const;

    // Writes the picture as a PNG file; false when it cannot.
    bool WritePng(const std::wstring& path) const;
    // When the running test has failed, writes <suite>.<test>[-tag].png into the folder
    // named by the environment variable KXTEST_IMAGES (default: test-images beside the
    // executable), prints its path and returns it; otherwise does nothing and returns "".
    std::wstring SaveIfFailed(const wchar_t* tag = nullptr) const;

private:
    void Free();
    bool Allocate(int cx, int cy, COLORREF fill);
    bool CopyFrom(HWND wnd, bool whole);
    void RenderChildren(HWND parent, POINT clientOrigin);

    HDC m_dc = nullptr;
    HBITMAP m_bmp = nullptr;
    HGDIOBJ m_oldBmp = nullptr;
    DWORD* m_bits = nullptr;
    int m_cx = 0;
    int m_cy = 0;
};
