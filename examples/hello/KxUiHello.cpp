// A first look at the toolkit: a window with a report list and a status bar, laid out,
// drawn and written to a PNG file. Runs headless: nothing needs a display.
//
//   KxUiHello.exe OUTDIR     writes OUTDIR\hello.png and prints what it did
#include <windows.h>
#include <commctrl.h>
#include <wincodec.h>
#include <cstdio>
#include <string>

namespace {

const wchar_t* const kRows[][3] = {
    {L"Invoice 2026-0142", L"Acme Tools", L"1,250.00"},
    {L"Invoice 2026-0143", L"Northwind", L"86.40"},
    {L"Credit note 2026-0007", L"Acme Tools", L"-120.00"},
    {L"Invoice 2026-0144", L"Contoso", L"9,904.10"},
};

LRESULT CALLBACK FrameProc(HWND h, UINT msg, WPARAM wp, LPARAM lp)
{
    if (msg == WM_SIZE) {
        HWND status = GetDlgItem(h, 2), list = GetDlgItem(h, 1);
        SendMessageW(status, WM_SIZE, 0, 0);
        RECT rs;
        GetWindowRect(status, &rs);
        MoveWindow(list, 8, 8, LOWORD(lp) - 16, HIWORD(lp) - 16 - (rs.bottom - rs.top), TRUE);
    }
    return DefWindowProcW(h, msg, wp, lp);
}

bool WritePng(HBITMAP bmp, const std::wstring& path)
{
    IWICImagingFactory* factory = nullptr;
    if (FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                IID_PPV_ARGS(&factory))))
        return false;
    bool ok = false;
    IWICBitmap* wicBmp = nullptr;
    IWICStream* stream = nullptr;
    IWICBitmapEncoder* encoder = nullptr;
    IWICBitmapFrameEncode* frame = nullptr;
    if (SUCCEEDED(factory->CreateBitmapFromHBITMAP(bmp, nullptr, WICBitmapIgnoreAlpha, &wicBmp)) &&
        SUCCEEDED(factory->CreateStream(&stream)) &&
        SUCCEEDED(stream->InitializeFromFilename(path.c_str(), GENERIC_WRITE)) &&
        SUCCEEDED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder)) &&
        SUCCEEDED(encoder->Initialize(stream, WICBitmapEncoderNoCache)) &&
        SUCCEEDED(encoder->CreateNewFrame(&frame, nullptr)) && SUCCEEDED(frame->Initialize(nullptr)) &&
        SUCCEEDED(frame->WriteSource(wicBmp, nullptr)) && SUCCEEDED(frame->Commit()) &&
        SUCCEEDED(encoder->Commit()))
        ok = true;
    for (IUnknown* p : {static_cast<IUnknown*>(frame), static_cast<IUnknown*>(encoder),
                        static_cast<IUnknown*>(stream), static_cast<IUnknown*>(wicBmp),
                        static_cast<IUnknown*>(factory)})
        if (p)
            p->Release();
    return ok;
}

}  // namespace

int wmain(int argc, wchar_t** argv)
{
    const std::wstring outDir = argc > 1 ? argv[1] : L".";
    INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    InitCommonControlsEx(&icc);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);

    WNDCLASSW wc = {};
    wc.lpfnWndProc = FrameProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    wc.lpszClassName = L"KxUiHelloFrame";
    RegisterClassW(&wc);
    HWND frame = CreateWindowExW(0, wc.lpszClassName, L"KxUi", WS_OVERLAPPEDWINDOW, 0, 0, 640, 320,
                                 nullptr, nullptr, wc.hInstance, nullptr);
    HWND list = CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT,
                                0, 0, 10, 10, frame, reinterpret_cast<HMENU>(1), wc.hInstance, nullptr);
    HWND status = CreateWindowExW(0, STATUSCLASSNAMEW, L"4 documents", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP,
                                  0, 0, 0, 0, frame, reinterpret_cast<HMENU>(2), wc.hInstance, nullptr);
    std::printf("created a frame with a report list and a status bar\n");

    const wchar_t* headers[] = {L"Document", L"Customer", L"Amount"};
    const int widths[] = {220, 180, 120};
    for (int c = 0; c < 3; ++c) {
        LVCOLUMNW col = {LVCF_TEXT | LVCF_WIDTH | LVCF_FMT};
        col.fmt = c == 2 ? LVCFMT_RIGHT : LVCFMT_LEFT;
        col.cx = widths[c];
        col.pszText = const_cast<wchar_t*>(headers[c]);
        SendMessageW(list, LVM_INSERTCOLUMNW, c, reinterpret_cast<LPARAM>(&col));
    }
    for (int r = 0; r < 4; ++r) {
        LVITEMW item = {LVIF_TEXT};
        item.iItem = r;
        item.pszText = const_cast<wchar_t*>(kRows[r][0]);
        SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        for (int c = 1; c < 3; ++c) {
            item.iSubItem = c;
            item.pszText = const_cast<wchar_t*>(kRows[r][c]);
            SendMessageW(list, LVM_SETITEMTEXTW, r, reinterpret_cast<LPARAM>(&item));
        }
    }
    std::printf("filled %d rows in 3 columns\n", static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0)));
    ShowWindow(frame, SW_SHOW);
    SetWindowPos(frame, nullptr, 0, 0, 640, 320, SWP_NOZORDER | SWP_NOMOVE);
    RECT rc;
    GetClientRect(list, &rc);
    std::printf("laid out: the list fills the client area above the status bar (%ldx%ld)\n", rc.right, rc.bottom);
    (void)status;

    RECT wr;
    GetWindowRect(frame, &wr);
    const int w = wr.right - wr.left, h = wr.bottom - wr.top;
    HDC screen = GetDC(nullptr);
    HDC mem = CreateCompatibleDC(screen);
    HBITMAP bmp = CreateCompatibleBitmap(screen, w, h);
    HGDIOBJ old = SelectObject(mem, bmp);
    // Each window paints into its own surface, which the null display driver keeps in
    // memory; once everything is painted, the frame's window DC holds the real picture.
    RedrawWindow(frame, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_FRAME | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    HDC wdc = GetWindowDC(frame);
    BitBlt(mem, 0, 0, w, h, wdc, 0, 0, SRCCOPY);
    ReleaseDC(frame, wdc);
    SelectObject(mem, old);
    const std::wstring path = outDir + L"\\hello.png";
    const bool written = WritePng(bmp, path);
    std::printf(written ? "rendered the window (%dx%d) to %ls\n" : "could not write %dx%d image to %ls\n", w, h,
                path.c_str());
    DeleteObject(bmp);
    DeleteDC(mem);
    ReleaseDC(nullptr, screen);
    DestroyWindow(frame);
    CoUninitialize();
    return written ? 0 : 1;
}
