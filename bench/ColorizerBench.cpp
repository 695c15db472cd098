// Colouring C++ source in a rich edit control, as an editor holds it: a visible control in a
// visible parent that asks for change and selection notifications, with undo recording on.
//
// 1. The tokenizer alone, its rich edit calls counted instead of made.
// 2. What each way of quieting the control is worth: the colorizer's selection and format
//    calls replayed on a fresh control with nothing suspended (the baseline: what Colorize
//    cost before it quieted the control) and with one thing suspended at a time.
// 3. The curve: Colorize against the plain replay at several sizes, in ms per KB.
//
//   bench_colorizer.exe [KB ...] [--large] [--rounds N] [--options KB]
//
// Without sizes it runs 64, 128, 256 and 512 KB; --large adds 1024 KB, which takes minutes
// because the control's cost grows faster than its text.
#include "KxUiSyntaxColorizer.h"
#include "../textshell/KxUiColorizerSample.h"
#include <afxcmn.h>
#include <richole.h>
#include <tom.h>
#include <wrl/client.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

using Microsoft::WRL::ComPtr;

// The text object model's document interface; MinGW's headers name it without its GUID.
__CRT_UUID_DECL(ITextDocument, 0x8CC497C0, 0xA1DF, 0x11CE, 0x80, 0x98, 0x00, 0xAA, 0x00, 0x47,
                0xBE, 0x5D)

namespace {

double seconds()
{
    static LARGE_INTEGER frequency = [] {
        LARGE_INTEGER f;
        ::QueryPerformanceFrequency(&f);
        return f;
    }();
    LARGE_INTEGER now;
    ::QueryPerformanceCounter(&now);
    return double(now.QuadPart) / double(frequency.QuadPart);
}

// Reaches the tokenizer with a sink that records the spans instead of formatting them.
class RecordingColorizer : public KxUiSyntaxColorizer {
public:
    struct Span {
        long start, end;
        const CHARFORMATW* format;
    };

    size_t tokenize(LPCWSTR text, std::vector<Span>* spans)
    {
        Recorder recorder(spans);
        colorize(text, recorder, 0);
        return recorder.count;
    }

private:
    struct Recorder : FormatSink {
        explicit Recorder(std::vector<Span>* s) : spans(s) {}
        void applyFormat(long start, long end, const CHARFORMATW& format) override
        {
            ++count;
            if (spans)
                spans->push_back({start, end, &format});
        }
        std::vector<Span>* spans;
        size_t count = 0;
    };
};

// The editor's frame: counts the notifications its rich edit child sends.
long g_notifications = 0;

LRESULT CALLBACK parentProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND || message == WM_NOTIFY)
        ++g_notifications;
    return ::DefWindowProcW(hwnd, message, wParam, lParam);
}

// What a replay suspends on the control.
enum : unsigned {
    keepNothing = 0,
    quietUndo = 1,        // undo recording suspended through the text object model
    quietEvents = 2,      // event mask cleared
    quietRedraw = 4,      // WM_SETREDRAW off
    quietSelection = 8,   // selection hidden
    quietAll = 15,
};

// A visible editor loaded with the unformatted text.
class Editor {
public:
    explicit Editor(const std::wstring& source)
    {
        parent = ::CreateWindowExW(0, L"KxBenchEditorFrame", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                   0, 0, 820, 640, nullptr, nullptr, nullptr, nullptr);
        HWND hwnd = ::CreateWindowExW(0, MSFTEDIT_CLASS, L"",
                                      WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE |
                                          ES_AUTOVSCROLL,
                                      0, 0, 800, 600, parent, nullptr, nullptr, nullptr);
        if (!hwnd)
            return;
        edit.Attach(hwnd);
        edit.LimitText(long(source.size()) * 2);
        edit.SetWindowText(source.c_str());
        edit.SetEventMask(ENM_CHANGE | ENM_SELCHANGE);
        edit.SetSel(0, 0);
        edit.SetFocus();
        pump();
        g_notifications = 0;
    }

    ~Editor()
    {
        if (edit.m_hWnd)
            edit.Detach();
        if (parent)
            ::DestroyWindow(parent);
    }

    bool valid() const { return edit.m_hWnd != nullptr; }

    // Switches the chosen suspensions on (true) or back off (false).
    void quiet(unsigned what, bool on)
    {
        if (what & quietUndo) {
            if (!document) {
                ComPtr<IRichEditOle> ole;
                if (edit.SendMessage(EM_GETOLEINTERFACE, 0,
                                     reinterpret_cast<LPARAM>(ole.GetAddressOf())) && ole)
                    ole.As(&document);
            }
            if (document)
                document->Undo(on ? tomSuspend : tomResume, nullptr);
        }
        if (what & quietEvents) {
            if (on)
                savedMask = edit.SetEventMask(0);
            else
                edit.SetEventMask(savedMask);
        }
        if (what & quietRedraw) {
            edit.SetRedraw(on ? FALSE : TRUE);
            if (!on)
                edit.Invalidate(FALSE);
        }
        if (what & quietSelection)
            edit.HideSelection(on, FALSE);
    }

    // Lets the control paint what it has invalidated, as it would between two keystrokes.
    static void pump()
    {
        MSG msg;
        while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            ::TranslateMessage(&msg);
            ::DispatchMessageW(&msg);
        }
    }

    HWND parent = nullptr;
    CRichEditCtrl edit;
    ComPtr<ITextDocument> document;
    DWORD savedMask = 0;
};

struct Run {
    double seconds = -1;
    long notifications = 0;
};

class Bench {
public:
    explicit Bench(int rounds) : m_rounds(rounds)
    {
        KxUiColorizerAddSampleGroup(m_colorizer);
        m_colorizer.GetDefaultStyle(m_default);
    }

    void load(long kilobytes)
    {
        m_source.clear();
        while (m_source.size() < size_t(kilobytes) * 1024)
            m_source += KxUiColorizerSampleSource();
        m_spans.clear();
        m_colorizer.tokenize(m_source.c_str(), &m_spans);
        m_text.assign(m_source.size() + 2, 0);
    }

    void tokenizer()
    {
        double best = 1e30;
        size_t calls = 0;
        for (int run = 0; run < 5; ++run) {
            const double t0 = seconds();
            calls = m_colorizer.tokenize(m_source.c_str(), nullptr);
            best = std::min(best, seconds() - t0);
        }
        std::printf("tokenizer alone, %zu KB: %.3f ms, %.1f M characters/s, %zu spans\n\n",
                    m_source.size() / 1024, best * 1e3, double(m_source.size()) / best / 1e6,
                    calls);
    }

    // The colorizer's calls, in its order, with the chosen suspensions around them.
    Run replay(unsigned quiet)
    {
        Editor editor(m_source);
        if (!editor.valid())
            return {};
        const double t0 = seconds();
        editor.quiet(quiet, true);
        editor.edit.SetSel(0, -1);
        editor.edit.SendMessage(EM_GETSELTEXT, 0, reinterpret_cast<LPARAM>(m_text.data()));
        editor.edit.SetSelectionCharFormat(m_default);
        for (const auto& span : m_spans) {
            CHARFORMATW format = *span.format;
            editor.edit.SetSel(span.start, span.end);
            editor.edit.SetSelectionCharFormat(format);
        }
        editor.quiet(quiet, false);
        Editor::pump();
        return {seconds() - t0, g_notifications};
    }

    Run colorize()
    {
        Editor editor(m_source);
        if (!editor.valid())
            return {};
        const double t0 = seconds();
        m_colorizer.Colorize(0, -1, &editor.edit);
        Editor::pump();
        return {seconds() - t0, g_notifications};
    }

    void options(long kilobytes)
    {
        load(kilobytes);
        tokenizer();
        const unsigned what[] = {keepNothing, quietUndo, quietEvents, quietRedraw, quietSelection,
                                 quietAll};
        const char* names[] = {"nothing suspended (baseline)", "undo recording suspended",
                               "event mask cleared", "redraw off", "selection hidden",
                               "all four"};
        Run runs[6];
        for (auto& r : runs)
            r.seconds = 1e30;
        for (int round = 0; round < m_rounds; ++round)
            for (size_t n = 0; n < 6; ++n) {
                const Run r = replay(what[n]);
                if (r.seconds >= 0 && r.seconds < runs[n].seconds)
                    runs[n] = r;
            }
        std::printf("the colorizer's calls replayed on %ld KB (%zu selections and formats):\n",
                    kilobytes, m_spans.size() + 1);
        std::printf("  %-30s %10s %8s %14s\n", "", "ms", "ratio", "notifications");
        for (size_t n = 0; n < 6; ++n)
            std::printf("  %-30s %10.1f %8.2f %14ld\n", names[n], runs[n].seconds * 1e3,
                        runs[n].seconds / runs[0].seconds, runs[n].notifications);
        std::printf("\n");
    }

    void curve(const std::vector<long>& sizes)
    {
        std::printf("Colorize against the plain replay (its calls with nothing suspended):\n");
        std::printf("  %8s %12s %12s %8s %12s %12s\n", "KB", "replay ms", "Colorize ms", "ratio",
                    "replay ms/KB", "Colorize ms/KB");
        for (long kilobytes : sizes) {
            load(kilobytes);
            // The largest sizes take seconds each: one round is a fair reading there.
            const int rounds = kilobytes > 256 ? 1 : m_rounds;
            Run plain, whole;
            plain.seconds = whole.seconds = 1e30;
            for (int round = 0; round < rounds; ++round) {
                const Run p = replay(keepNothing);
                const Run w = colorize();
                if (p.seconds >= 0 && p.seconds < plain.seconds)
                    plain = p;
                if (w.seconds >= 0 && w.seconds < whole.seconds)
                    whole = w;
            }
            std::printf("  %8ld %12.1f %12.1f %8.2f %12.3f %12.3f\n", kilobytes,
                        plain.seconds * 1e3, whole.seconds * 1e3, whole.seconds / plain.seconds,
                        plain.seconds * 1e3 / kilobytes, whole.seconds * 1e3 / kilobytes);
            std::fflush(stdout);
        }
    }

private:
    int m_rounds;
    RecordingColorizer m_colorizer;
    CHARFORMATW m_default;
    std::wstring m_source;
    std::vector<RecordingColorizer::Span> m_spans;
    std::vector<wchar_t> m_text;
};

} // namespace

int main(int argc, char** argv)
{
    std::vector<long> sizes;
    bool large = false;
    int rounds = 2;
    long optionSize = 128;
    for (int n = 1; n < argc; ++n) {
        if (!std::strcmp(argv[n], "--large"))
            large = true;
        else if (!std::strcmp(argv[n], "--rounds") && n + 1 < argc)
            rounds = std::max(1, std::atoi(argv[++n]));
        else if (!std::strcmp(argv[n], "--options") && n + 1 < argc)
            optionSize = std::max(0L, std::atol(argv[++n]));
        else if (std::atol(argv[n]) > 0)
            sizes.push_back(std::atol(argv[n]));
    }
    if (sizes.empty())
        sizes = {64, 128, 256, 512};
    if (large)
        sizes.push_back(1024);

    if (!::LoadLibraryW(L"Msftedit.dll")) {
        std::printf("no rich edit control\n");
        return 1;
    }
    WNDCLASSW frame = {};
    frame.lpfnWndProc = parentProc;
    frame.hInstance = ::GetModuleHandleW(nullptr);
    frame.lpszClassName = L"KxBenchEditorFrame";
    ::RegisterClassW(&frame);

    Bench bench(rounds);
    if (optionSize > 0)
        bench.options(optionSize);
    bench.curve(sizes);
    return 0;
}
