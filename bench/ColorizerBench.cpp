// Colouring a 1 MB C++ source: the tokenizer alone (its rich edit calls counted, not made),
// the whole Colorize on a real rich edit control, and the same selection and format calls
// replayed on their own. The colorizer's own work is Colorize minus the replay.
// Wine's rich edit grows faster than linearly with the text, so the 1 MB rounds take
// minutes; a smaller size gives a quick reading.
//
//   ColorizerBench.exe [size in KB, default 1024] [rounds, default 1]
#include "KxUiSyntaxColorizer.h"
#include "../textshell/KxUiColorizerSample.h"
#include <afxcmn.h>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
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

} // namespace

int main(int argc, char** argv)
{
    const long kilobytes = argc > 1 ? std::max(1L, std::atol(argv[1])) : 1024;
    const int rounds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 1;
    std::wstring source;
    const size_t target = size_t(kilobytes) * 1024;
    while (source.size() < target)
        source += KxUiColorizerSampleSource();
    std::printf("source: %zu characters\n", source.size());

    RecordingColorizer colorizer;
    KxUiColorizerAddSampleGroup(colorizer);

    // Tokenizer alone, best of five.
    double best = 1e30;
    size_t calls = 0;
    for (int run = 0; run < 5; ++run) {
        const double t0 = seconds();
        calls = colorizer.tokenize(source.c_str(), nullptr);
        best = std::min(best, seconds() - t0);
    }
    std::vector<RecordingColorizer::Span> spans;
    colorizer.tokenize(source.c_str(), &spans);
    std::printf("tokenizer: %.3f ms, %.1f M characters/s, %zu spans (rich edit calls counted)\n",
                best * 1e3, double(source.size()) / best / 1e6, calls);

    ::LoadLibraryW(L"Msftedit.dll");
    CHARFORMATW defaultFormat;
    colorizer.GetDefaultStyle(defaultFormat);
    std::vector<wchar_t> text(source.size() * 2 + 2);

    // Each measurement gets a fresh control loaded with the unformatted text, and the two
    // kinds alternate, so neither profits from the other's state. The best of each counts.
    auto measure = [&](bool replay) {
        HWND hwnd = ::CreateWindowExW(0, MSFTEDIT_CLASS, L"", WS_POPUP | ES_MULTILINE, 0, 0, 800,
                                      600, nullptr, nullptr, nullptr, nullptr);
        if (!hwnd)
            return -1.0;
        CRichEditCtrl edit;
        edit.Attach(hwnd);
        edit.LimitText(long(source.size()) * 2);
        edit.SetWindowText(source.c_str());
        edit.SetSel(0, 0);
        const double t0 = seconds();
        if (replay) {
            edit.SetSel(0, -1);
            edit.SendMessage(EM_GETSELTEXT, 0, reinterpret_cast<LPARAM>(text.data()));
            edit.SetSelectionCharFormat(defaultFormat);
            for (const auto& span : spans) {
                CHARFORMATW format = *span.format;
                edit.SetSel(span.start, span.end);
                edit.SetSelectionCharFormat(format);
            }
        } else {
            colorizer.Colorize(0, -1, &edit);
        }
        const double elapsed = seconds() - t0;
        ::DestroyWindow(edit.Detach());
        return elapsed;
    };
    double replay = 1e30, whole = 1e30;
    for (int round = 0; round < rounds; ++round) {
        replay = std::min(replay, measure(true));
        whole = std::min(whole, measure(false));
        std::printf("round %d: replay %.1f ms, Colorize %.1f ms\n", round + 1, replay * 1e3, whole * 1e3);
    }
    if (replay < 0 || whole < 0) {
        std::printf("no rich edit control\n");
        return 1;
    }

    std::printf("rich edit calls replayed: %.1f ms (%zu selections and formats)\n",
                replay * 1e3, spans.size() + 1);
    std::printf("tokenizer alone / replayed calls: %.4f\n", best / replay);
    std::printf("whole Colorize / replayed calls: %.4f (%.1f ms)\n", whole / replay, whole * 1e3);
    const double own = whole - replay;
    std::printf("colorizer's own work: %.2f%% of Colorize (aim < 10%%: %s)\n",
                100.0 * std::max(0.0, own) / whole, own / whole < 0.10 ? "met" : "missed");
    return 0;
}
