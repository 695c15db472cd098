// Cost of a message passing through the window-procedure manager with 1, 4 and 16 hooks,
// as a ratio to the same window subclassed once with a plain procedure, in the same run.
#include "KxUiWndProcMgr.h"
#include <cstdio>
#include <vector>

namespace {

const UINT WM_BENCH = WM_APP + 7;
const int kMessages = 50000;
const int kRounds = 9;

LRESULT CALLBACK windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_BENCH)
        return wParam + 1;
    return DefWindowProcW(hWnd, message, wParam, lParam);
}

WNDPROC g_previous = nullptr;

// The baseline: what each object would do if it subclassed the window on its own.
LRESULT CALLBACK plainSubclass(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam)
{
    return CallWindowProcW(g_previous, hWnd, message, wParam, lParam);
}

class PassingHook : public KxUiWndProc {
public:
    int windowProc(HWND, UINT message, WPARAM, LPARAM, LRESULT&) override
    {
        m_seen += message == WM_BENCH;
        return 0;
    }
    unsigned m_seen = 0;
};

HWND createWindow()
{
    return CreateWindowExW(0, L"KxWndProcBench", L"", WS_OVERLAPPED, 0, 0, 100, 100, nullptr, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

// Time of one round, in nanoseconds per message.
double nanosecondsPerMessage(HWND hWnd)
{
    LARGE_INTEGER frequency, start, end;
    QueryPerformanceFrequency(&frequency);
    LRESULT sum = 0;
    QueryPerformanceCounter(&start);
    for (int i = 0; i < kMessages; ++i)
        sum += SendMessageW(hWnd, WM_BENCH, i, 0);
    QueryPerformanceCounter(&end);
    if (sum == 0)
        std::printf("unexpected: the window never answered\n");
    return double(end.QuadPart - start.QuadPart) * 1e9 / double(frequency.QuadPart) / kMessages;
}

} // namespace

int main()
{
    WNDCLASSW wc = {};
    wc.lpfnWndProc = &windowProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = L"KxWndProcBench";
    RegisterClassW(&wc);

    // Window 0 is the baseline, subclassed once by a plain procedure; the others carry 1, 4
    // and 16 hooks through the manager.
    const int hookCounts[] = {0, 1, 4, 16};
    const int kConfigs = 4;
    HWND windows[kConfigs];
    std::vector<PassingHook> hooks[kConfigs];
    for (int c = 0; c < kConfigs; ++c) {
        windows[c] = createWindow();
        hooks[c].resize(hookCounts[c]);
        for (PassingHook& hook : hooks[c])
            kxUiWndProcMgr().attach(windows[c], &hook);
    }
    g_previous = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(windows[0], GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&plainSubclass)));

    // Rounds alternate between the windows so that warming up and frequency changes weigh
    // on all of them alike; the best round of each counts.
    double best[kConfigs];
    for (double& b : best)
        b = 1e30;
    for (int round = 0; round < kRounds; ++round) {
        for (int c = 0; c < kConfigs; ++c) {
            const double ns = nanosecondsPerMessage(windows[c]);
            if (ns < best[c])
                best[c] = ns;
        }
    }

    std::printf("WndProcBench: %d messages per round, best of %d rounds\n", kMessages, kRounds);
    std::printf("  plain subclassed procedure : %8.1f ns/message (baseline)\n", best[0]);
    for (int c = 1; c < kConfigs; ++c) {
        std::printf("  manager with %2d hook%s     : %8.1f ns/message, ratio %.2f%s\n", hookCounts[c],
                    hookCounts[c] == 1 ? " " : "s", best[c], best[c] / best[0],
                    hookCounts[c] == 1 ? " (aim: under 1.50)" : "");
        if (hooks[c].front().m_seen == 0)
            std::printf("  unexpected: the hooks saw nothing\n");
    }
    for (HWND hWnd : windows)
        DestroyWindow(hWnd);
    return 0;
}
