// Colouring C++ source in a rich edit control held as an editor holds it: a child of a frame
// that asks for change and selection notifications, undo recording on, focused.
//
// 1. The tokenizer alone, its rich edit calls counted instead of made.
// 2. What each way of quieting the control is worth, on a hidden and on a shown editor: the
//    colorizer's selection and format calls replayed on a fresh control with nothing
//    suspended (what Colorize cost before it quieted the control) and with one kind of
//    suspension at a time.
// 3. The curve: Colorize against that plain replay at several sizes, in ms per KB.
//
//   bench_colorizer.exe [KB ...] [--large] [--shown] [--rounds N] [--options KB]
//
// Without sizes the curve runs 64, 128, 256 and 512 KB on a hidden editor; --large adds
// 1024 KB, which takes minutes because the control's cost grows faster than its text;
// --shown runs the curve on a shown editor, whose plain replay is slower still. --options
// sets the text size of the suspension table, step 2 above (16 KB; 0 skips it).
#include "KxUiSyntaxColorizer.h"
#include "../textshell/KxUiColorizerSample.h"
#include "../textshell/KxUiRichEditQuiet.h"
#include <afxcmn.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>


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

// A rich edit control loaded with the unformatted text, as an editor holds it: a child of a
// frame that listens to its change and selection notifications, undo recording on, focused.
// Shown or not: a shown control also draws every selection change.
class Editor {
public:
    Editor(const std::wstring& source, bool visible)
    {
        parent = ::CreateWindowExW(0, L"KxBenchEditorFrame", L"",
                                   WS_OVERLAPPEDWINDOW | (visible ? WS_VISIBLE : 0), 0, 0, 820,
                                   640, nullptr, nullptr, nullptr, nullptr);
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
    Run replay(unsigned quiet, bool visible)
    {
        Editor editor(m_source, visible);
        if (!editor.valid())
            return {};
        const double t0 = seconds();
        {
            KxUiRichEditQuiet suspended(editor.edit, quiet);
            editor.edit.SetSel(0, -1);
            editor.edit.SendMessage(EM_GETSELTEXT, 0, reinterpret_cast<LPARAM>(m_text.data()));
            editor.edit.SetSelectionCharFormat(m_default);
            for (const auto& span : m_spans) {
                CHARFORMATW format = *span.format;
                editor.edit.SetSel(span.start, span.end);
                editor.edit.SetSelectionCharFormat(format);
            }
        }
        Editor::pump();
        return {seconds() - t0, g_notifications};
    }

    Run colorize(bool visible)
    {
        Editor editor(m_source, visible);
        if (!editor.valid())
            return {};
        const double t0 = seconds();
        m_colorizer.Colorize(0, -1, &editor.edit);
        Editor::pump();
        return {seconds() - t0, g_notifications};
    }

    // Each suspension alone against none, on a hidden and on a shown editor.
    void options(long kilobytes)
    {
        load(kilobytes);
        tokenizer();
        const unsigned what[] = {0,
                                 KxUiRichEditQuiet::undo,
                                 KxUiRichEditQuiet::events,
                                 KxUiRichEditQuiet::redraw,
                                 KxUiRichEditQuiet::selection,
                                 KxUiRichEditQuiet::all};
        const char* names[] = {"nothing suspended (baseline)", "undo recording suspended",
                               "event mask cleared", "redraw off", "selection hidden",
                               "all four"};
        for (bool visible : {false, true}) {
            Run runs[6];
            for (auto& r : runs)
                r.seconds = 1e30;
            for (int round = 0; round < m_rounds; ++round)
                for (size_t n = 0; n < 6; ++n) {
                    const Run r = replay(what[n], visible);
                    if (r.seconds >= 0 && r.seconds < runs[n].seconds)
                        runs[n] = r;
                }
            std::printf("the colorizer's calls replayed on %ld KB in a %s editor (%zu selections "
                        "and formats):\n",
                        kilobytes, visible ? "shown" : "hidden", m_spans.size() + 1);
            std::printf("  %-30s %10s %8s %14s\n", "", "ms", "ratio", "notifications");
            for (size_t n = 0; n < 6; ++n)
                std::printf("  %-30s %10.1f %8.2f %14ld\n", names[n], runs[n].seconds * 1e3,
                            runs[n].seconds / runs[0].seconds, runs[n].notifications);
            std::printf("\n");
            std::fflush(stdout);
        }
    }

    void curve(const std::vector<long>& sizes, bool visible)
    {
        std::printf("Colorize against the plain replay (its calls with nothing suspended), %s "
                    "editor:\n",
                    visible ? "shown" : "hidden");
        std::printf("  %8s %12s %12s %8s %12s %14s\n", "KB", "replay ms", "Colorize ms",
                    "speed-up", "replay ms/KB", "Colorize ms/KB");
        for (long kilobytes : sizes) {
            load(kilobytes);
            // The largest sizes take seconds each: one round is a fair reading there.
            const int rounds = kilobytes > 256 ? 1 : m_rounds;
            Run plain, whole;
            plain.seconds = whole.seconds = 1e30;
            for (int round = 0; round < rounds; ++round) {
                const Run p = replay(0, visible);
                const Run w = colorize(visible);
                if (p.seconds >= 0 && p.seconds < plain.seconds)
                    plain = p;
                if (w.seconds >= 0 && w.seconds < whole.seconds)
                    whole = w;
            }
            std::printf("  %8ld %12.1f %12.1f %8.2f %12.3f %14.3f\n", kilobytes,
                        plain.seconds * 1e3, whole.seconds * 1e3, plain.seconds / whole.seconds,
                        plain.seconds * 1e3 / kilobytes, whole.seconds * 1e3 / kilobytes);
            std::fflush(stdout);
        }
        std::printf("\n");
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
    bool large = false, visible = false;
    int rounds = 2;
    long optionSize = 16;
    for (int n = 1; n < argc; ++n) {
        if (!std::strcmp(argv[n], "--large"))
            large = true;
        else if (!std::strcmp(argv[n], "--shown"))
            visible = true;
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
    bench.curve(sizes, visible);
    return 0;
}
