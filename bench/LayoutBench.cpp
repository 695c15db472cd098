// One relayout of a container with 50, 200 and 1000 children, against moving the same children to
// precomputed rectangles with one deferred batch, measured in the same run. The ratio is what the
// constraint computation adds to the batch (aim: under 1.20).
#include <afxwin.h>
#include "KxUiLayoutManager.h"
#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

typedef KxUiLayoutManager LM;

double now()
{
    static LARGE_INTEGER freq = [] { LARGE_INTEGER f; QueryPerformanceFrequency(&f); return f; }();
    LARGE_INTEGER t;
    QueryPerformanceCounter(&t);
    return double(t.QuadPart) / double(freq.QuadPart);
}

// A form of n children in columns: fractions of the width for the columns, each child below the one
// above it in its column, the last row stretched to the bottom, sizes kept where nothing is set.
void buildForm(CWnd& container, LM& lm, int n)
{
    const int nColumns = std::max(1, n / 25);
    const int nFraction = 1000;
    lm.SetFractionBase(nFraction);
    for (int i = 0; i < n; ++i) {
        UINT nId = 100 + i;
        int nColumn = i % nColumns, nRow = i / nColumns;
        ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 10, 10 + 22 * nRow, 50, 20, container.m_hWnd,
                          reinterpret_cast<HMENU>(static_cast<UINT_PTR>(nId)), nullptr, nullptr);
        lm.SetConstraint(nId, LM::sideLeft, LM::typeFraction, nColumn * nFraction / nColumns, 0);
        lm.SetConstraint(nId, LM::sideRight, LM::typeFraction, (nColumn + 1) * nFraction / nColumns, 0);
        if (nRow == 0)
            lm.SetConstraint(nId, LM::sideTop, LM::typeSameSide, 4, 0);
        else
            lm.SetConstraint(nId, LM::sideTop, LM::typeOppositeSide, 2, nId - nColumns);
        if (i + nColumns >= n)
            lm.SetConstraint(nId, LM::sideBottom, LM::typeSameSide, -4, 0);
    }
}

std::vector<CRect> childRects(HWND hContainer, int n)
{
    std::vector<CRect> rects;
    for (int i = 0; i < n; ++i) {
        CRect rc;
        ::GetWindowRect(::GetDlgItem(hContainer, 100 + i), &rc);
        ::MapWindowPoints(nullptr, hContainer, reinterpret_cast<POINT*>(&rc), 2);
        rects.push_back(rc);
    }
    return rects;
}

void moveInOneBatch(HWND hContainer, const std::vector<HWND>& children, const std::vector<CRect>& rects)
{
    HDWP hdwp = ::BeginDeferWindowPos((int)children.size());
    for (size_t i = 0; i < children.size() && hdwp; ++i)
        hdwp = ::DeferWindowPos(hdwp, children[i], nullptr, rects[i].left, rects[i].top, rects[i].Width(),
                                rects[i].Height(), SWP_NOZORDER);
    if (hdwp)
        ::EndDeferWindowPos(hdwp);
    (void)hContainer;
}

void run(int n, int nRepeats)
{
    CWnd container;
    container.CreateEx(0, AfxRegisterWndClass(0), L"bench", WS_POPUP | WS_CLIPCHILDREN, CRect(0, 0, 900, 700), nullptr, 0);
    LM lm;
    lm.Attach(&container);
    buildForm(container, lm, n);

    // Two sizes the children alternate between, so that every round really moves them.
    const CSize sizes[2] = {CSize(900, 700), CSize(880, 690)};
    std::vector<CRect> rects[2];
    for (int k = 0; k < 2; ++k) {
        lm.OnSize(sizes[k].cx, sizes[k].cy);
        rects[k] = childRects(container.m_hWnd, n);
    }
    std::vector<HWND> children;
    for (int i = 0; i < n; ++i)
        children.push_back(::GetDlgItem(container.m_hWnd, 100 + i));

    // Interleaved rounds, best of several, so that both see the same machine.
    double dBatch = 1e30, dLayout = 1e30;
    for (int nTrial = 0; nTrial < 5; ++nTrial) {
        double t0 = now();
        for (int r = 0; r < nRepeats; ++r)
            moveInOneBatch(container.m_hWnd, children, rects[r & 1]);
        double t1 = now();
        for (int r = 0; r < nRepeats; ++r)
            lm.OnSize(sizes[r & 1].cx, sizes[r & 1].cy);
        double t2 = now();
        dBatch = std::min(dBatch, (t1 - t0) / nRepeats);
        dLayout = std::min(dLayout, (t2 - t1) / nRepeats);
    }
    bool bSame = childRects(container.m_hWnd, n) == rects[(nRepeats - 1) & 1];
    std::printf("layout %4d children: batch %9.1f us, relayout %9.1f us, ratio %.2f (aim < 1.20)%s\n", n,
                dBatch * 1e6, dLayout * 1e6, dLayout / dBatch, bSame ? "" : "  LAYOUT DIFFERS");
    container.DestroyWindow();
}

}  // namespace

int main()
{
    std::printf("KxUiLayoutManager: one relayout against one deferred batch of the same moves\n");
    run(50, 200);
    run(200, 60);
    run(1000, 12);
    return 0;
}
