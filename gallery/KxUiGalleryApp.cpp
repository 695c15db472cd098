// KxUiGallery.exe: the demonstration application.
//
//   KxUiGallery.exe                      the interactive window
//   KxUiGallery.exe --snapshot DIR [--size WxH]
//                                        each page laid out at a fixed size (default 900x600),
//                                        written to DIR\NN-<page>.png, one line printed per file
//   KxUiGallery.exe --tour               shows every page in turn, then exits 0
//   KxUiGallery.exe --check-layout [--size WxH]
//                                        lays out every page at that size (default: the smallest
//                                        window) and prints each control that lies outside its
//                                        page, overlaps another or clips its text; exit 0 if none
//
// Options of the interactive window, for scripts: --profile KEY keeps the state under
// HKCU\Software\KEY instead of KxUi; --page N opens page N (from 1) instead of the last one;
// --quit closes the window as soon as it is shown, after printing which page it shows and
// where (the state is saved as on any close).
#include "KxUiGalleryFrame.h"
#include "KxUiGalleryPage.h"
#include "KxUiLayoutCheck.h"
#include "KxUiSnapshot.h"
#include <cstdio>
#include <string>

namespace {

// Writes a line to the standard output the program was started with (a GUI program has
// no console of its own, but inherits its parent's handles).
void PrintLine(const CString& text)
{
    HANDLE out = GetStdHandle(STD_OUTPUT_HANDLE);
    if (!out || out == INVALID_HANDLE_VALUE) {
        if (!AttachConsole(ATTACH_PARENT_PROCESS))
            return;
        out = GetStdHandle(STD_OUTPUT_HANDLE);
    }
    const CString line = text + L"\n";
    const int n = WideCharToMultiByte(CP_UTF8, 0, line, line.GetLength(), nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<size_t>(n), '\0');
    WideCharToMultiByte(CP_UTF8, 0, line, line.GetLength(), &utf8[0], n, nullptr, nullptr);
    DWORD written = 0;
    WriteFile(out, utf8.data(), static_cast<DWORD>(utf8.size()), &written, nullptr);
}

// Creates a folder and every missing folder above it; a relative path is taken from the
// current directory, as the user typed it.
void CreateFolderPath(const CString& path)
{
    for (int i = 0; i <= path.GetLength(); ++i) {
        if (i == path.GetLength() || path[i] == L'\\' || path[i] == L'/') {
            if (i > 0 && path[i - 1] != L':')
                CreateDirectoryW(path.Left(i), nullptr);
        }
    }
}

void PumpPending()
{
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
}

// The registry key of automated runs, so that they neither see nor change what a user's
// sessions stored.
const wchar_t kAutomatedKey[] = L"KxUi Gallery (automated run)";

}  // namespace

class CGalleryApp : public CWinApp {
public:
    CGalleryApp() : CWinApp(L"KxUiGallery") {}
    BOOL InitInstance() override;
    int ExitInstance() override;

private:
    bool ParseCommandLine();
    int RunSnapshots();
    int RunTour();
    int RunLayoutCheck();
    void ForgetAutomatedState();

    enum class Mode { Interactive, Snapshot, Tour, CheckLayout } m_mode = Mode::Interactive;
    bool m_bSizeGiven = false;
    CString m_snapshotDir;
    CString m_profileKey = L"KxUi";
    int m_nStartPage = 0;  // from 1; 0 = the page shown last
    bool m_bQuit = false;
    CSize m_size{900, 600};
    int m_nExitCode = 0;
};

CGalleryApp theApp;

bool CGalleryApp::ParseCommandLine()
{
    for (int i = 1; i < __argc; ++i) {
        const CString arg = __wargv[i];
        if (arg == L"--snapshot" && i + 1 < __argc) {
            m_mode = Mode::Snapshot;
            m_snapshotDir = __wargv[++i];
        } else if (arg == L"--size" && i + 1 < __argc) {
            int w = 0, h = 0;
            if (swscanf(__wargv[++i], L"%dx%d", &w, &h) != 2 || w < 200 || h < 150 || w > 8000 || h > 8000) {
                PrintLine(L"KxUiGallery: --size wants WxH, at least 200x150");
                return false;
            }
            m_size = CSize(w, h);
            m_bSizeGiven = true;
        } else if (arg == L"--tour") {
            m_mode = Mode::Tour;
        } else if (arg == L"--check-layout") {
            m_mode = Mode::CheckLayout;
        } else if (arg == L"--profile" && i + 1 < __argc && __wargv[i + 1][0] != L'\0') {
            m_profileKey = __wargv[++i];
        } else if (arg == L"--page" && i + 1 < __argc) {
            m_nStartPage = _wtoi(__wargv[++i]);
            if (m_nStartPage < 1) {
                PrintLine(L"KxUiGallery: --page wants a page number from 1");
                return false;
            }
        } else if (arg == L"--quit") {
            m_bQuit = true;
        } else {
            PrintLine(L"usage: KxUiGallery [--snapshot DIR [--size WxH]] [--tour] [--check-layout [--size WxH]] "
                      L"[--profile KEY] [--page N] [--quit]");
            return false;
        }
    }
    return true;
}

void CGalleryApp::ForgetAutomatedState()
{
    CString key;
    key.Format(L"Software\\%s", kAutomatedKey);
    RegDeleteTreeW(HKEY_CURRENT_USER, key);
}

BOOL CGalleryApp::InitInstance()
{
    INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES | ICC_TAB_CLASSES};
    InitCommonControlsEx(&icc);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (!ParseCommandLine()) {
        m_nExitCode = 2;
        return FALSE;
    }
    const bool automated = m_mode != Mode::Interactive;
    if (automated) {
        SetRegistryKey(kAutomatedKey);
        ForgetAutomatedState();
    } else {
        SetRegistryKey(m_profileKey);
    }

    if (m_mode == Mode::CheckLayout && !m_bSizeGiven)
        m_size = CGalleryFrame::kMinSize;
    auto* frame = new CGalleryFrame;
    m_pMainWnd = frame;
    const CRect rect(40, 40, 40 + m_size.cx, 40 + m_size.cy);
    if (!frame->CreateGallery(rect, !automated)) {
        PrintLine(L"KxUiGallery: the main window could not be created");
        m_nExitCode = 1;
        return FALSE;
    }
    frame->ShowWindow(automated ? SW_SHOWNORMAL : m_nCmdShow);
    frame->UpdateWindow();
    if (m_mode == Mode::Snapshot) {
        // Returning FALSE ends the program; the framework destroys the main window.
        m_nExitCode = RunSnapshots();
        return FALSE;
    }
    if (m_mode == Mode::Tour) {
        m_nExitCode = RunTour();
        return FALSE;
    }
    if (m_mode == Mode::CheckLayout) {
        m_nExitCode = RunLayoutCheck();
        return FALSE;
    }
    const int page = m_nStartPage > 0 ? m_nStartPage - 1 : GetProfileInt(L"Gallery", L"Page", 0);
    if (!frame->ShowPage(page))
        frame->ShowPage(0);
    if (m_bQuit) {
        PumpPending();
        CRect rc;
        frame->GetWindowRect(&rc);
        CString line;
        line.Format(L"page %d: %s; window %d,%d %dx%d", frame->GetCurrentPage() + 1, frame->GetPage()->GetTitle(),
                    rc.left, rc.top, rc.Width(), rc.Height());
        PrintLine(line);
        frame->SendMessage(WM_CLOSE);
        return FALSE;
    }
    return TRUE;
}

int CGalleryApp::RunSnapshots()
{
    auto* frame = static_cast<CGalleryFrame*>(m_pMainWnd);
    CreateFolderPath(m_snapshotDir);
    int failures = 0;
    for (int i = 0; i < frame->GetPageCount(); ++i) {
        if (!frame->ShowPage(i)) {
            PrintLine(L"KxUiGallery: a page could not be created");
            ++failures;
            continue;
        }
        PumpPending();
        frame->GetPage()->Animate();
        PumpPending();
        CString path;
        path.Format(L"%s\\%02d-%s.png", static_cast<LPCWSTR>(m_snapshotDir), i + 1, frame->GetPage()->GetSlug());
        HBITMAP bmp = KxCaptureWindow(frame->GetSafeHwnd());
        const bool ok = bmp && KxHasContent(bmp) && KxWritePng(bmp, path);
        if (bmp)
            DeleteObject(bmp);
        PrintLine(ok ? path : L"KxUiGallery: could not write " + path);
        failures += ok ? 0 : 1;
    }
    return failures == 0 ? 0 : 1;
}

int CGalleryApp::RunTour()
{
    auto* frame = static_cast<CGalleryFrame*>(m_pMainWnd);
    int shown = 0;
    for (int i = 0; i < frame->GetPageCount(); ++i) {
        if (!frame->ShowPage(i))
            continue;
        PumpPending();
        frame->GetPage()->Animate();
        ::RedrawWindow(frame->GetSafeHwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        PumpPending();
        ++shown;
        CString line;
        line.Format(L"shown page %d: %s", i + 1, frame->GetPage()->GetTitle());
        PrintLine(line);
    }
    return shown == frame->GetPageCount() ? 0 : 1;
}

int CGalleryApp::RunLayoutCheck()
{
    auto* frame = static_cast<CGalleryFrame*>(m_pMainWnd);
    CRect rc;
    frame->GetWindowRect(&rc);
    int problems = 0;
    for (int i = 0; i < frame->GetPageCount(); ++i) {
        if (!frame->ShowPage(i)) {
            PrintLine(L"KxUiGallery: a page could not be created");
            ++problems;
            continue;
        }
        PumpPending();
        CGalleryPage* page = frame->GetPage();
        // As laid out, then in each position the user can push it into.
        for (int extreme = -1; extreme < page->GetExtremeCount(); ++extreme) {
            if (extreme >= 0) {
                page->ShowExtreme(extreme);
                PumpPending();
            }
            for (const CString& problem : KxCheckPageLayout(page->GetSafeHwnd())) {
                CString line;
                if (extreme < 0)
                    line.Format(L"page %d (%s): %s", i + 1, page->GetSlug(), static_cast<LPCWSTR>(problem));
                else
                    line.Format(L"page %d (%s), position %d: %s", i + 1, page->GetSlug(), extreme + 1,
                                static_cast<LPCWSTR>(problem));
                PrintLine(line);
                ++problems;
            }
        }
    }
    CString summary;
    summary.Format(L"layout checked at %dx%d: %d pages, %d problems", rc.Width(), rc.Height(), frame->GetPageCount(),
                   problems);
    PrintLine(summary);
    return problems == 0 ? 0 : 1;
}

int CGalleryApp::ExitInstance()
{
    if (m_mode != Mode::Interactive)
        ForgetAutomatedState();
    CoUninitialize();
    const int base = CWinApp::ExitInstance();
    return m_mode == Mode::Interactive && m_nExitCode == 0 ? base : m_nExitCode;
}
