// Timing helpers shared by the benchmarks.
#pragma once
#include <windows.h>
#include <cstdio>

namespace KxBench {

inline double NowMs()
{
    static LARGE_INTEGER freq = [] {
        LARGE_INTEGER f;
        QueryPerformanceFrequency(&f);
        return f;
    }();
    LARGE_INTEGER t;
    QueryPerformanceCounter(&t);
    return 1000.0 * static_cast<double>(t.QuadPart) / static_cast<double>(freq.QuadPart);
}

// Best of several runs of f, in milliseconds (the least disturbed run).
template <class F>
double BestOf(int runs, F f)
{
    double best = 1e300;
    for (int i = 0; i < runs; ++i) {
        double t0 = NowMs();
        f();
        double t = NowMs() - t0;
        if (t < best)
            best = t;
    }
    return best;
}

// One result line: our time, the baseline's, and ours divided by the baseline's.
inline void Report(const char* what, double ours, double baseline)
{
    std::printf("%-44s %9.2f ms %9.2f ms   ratio %5.2f\n", what, ours, baseline,
                baseline > 0 ? ours / baseline : 0.0);
}

// Times ours and the baseline alternately (so both see the same machine load), keeps the
// best run of each and reports them.
template <class Ours, class Baseline>
void Compare(const char* what, Ours ours, Baseline baseline, int runs = 7)
{
    double bestOurs = 1e300, bestBase = 1e300;
    for (int i = 0; i < runs; ++i) {
        double t = BestOf(1, ours);
        bestOurs = t < bestOurs ? t : bestOurs;
        t = BestOf(1, baseline);
        bestBase = t < bestBase ? t : bestBase;
    }
    Report(what, bestOurs, bestBase);
}

inline void Header(const char* title, const char* ours, const char* baseline)
{
    std::printf("%s\n%-44s %12s %12s\n", title, "", ours, baseline);
}

// Keeps a computed value alive so the optimizer cannot drop the work.
extern volatile size_t g_sink;
inline void Keep(size_t v) { g_sink = g_sink + v; }

}  // namespace KxBench

#define KXBENCH_SINK volatile size_t KxBench::g_sink = 0;
