// One relayout of a container with 50, 200 and 1000 children, against moving the same children to
// precomputed rectangles with one deferred batch, measured in the same run. The ratio is what the
// constraint computation adds to the batch (aim: under 1.20).
#include <afxwin.h>
#include "KxUiLayoutManager.h"
#include "KxBench.h"
#include <algorithm>
#include <cstdio>
#include <vector>

KXBENCH_SINK

namespace {

typedef KxUiLayoutManager LM;

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

void moveInOneBatch(const std::vector<HWND>& children, const std::vector<CRect>& rects)
{
    HDWP hdwp = ::BeginDeferWindowPos((int)children.size());
    for (size_t i = 0; i < children.size() && hdwp; ++i)
        hdwp = ::DeferWindowPos(hdwp, children[i], nullptr, rects[i].left, rects[i].top, rects[i].Width(),
                                rects[i].Height(), SWP_NOZORDER);
    if (hdwp)
        ::EndDeferWindowPos(hdwp);
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

    // Both sides alternate between the two sizes; the relayout computes the rectangles, the
    // baseline has them already.
    char szWhat[64];
    std::snprintf(szWhat, sizeof szWhat, "relayout of %d children (x%d)", n, nRepeats);
    KxBench::Compare(szWhat,
                     [&] {
                         for (int r = 0; r < nRepeats; ++r)
                             KxBench::Keep((size_t)lm.OnSize(sizes[r & 1].cx, sizes[r & 1].cy));
                     },
                     [&] {
                         for (int r = 0; r < nRepeats; ++r)
                             moveInOneBatch(children, rects[r & 1]);
                     });
    if (childRects(container.m_hWnd, n) != rects[(nRepeats - 1) & 1])
        std::printf("  the relayout did not give the precomputed rectangles\n");
    container.DestroyWindow();
}

}  // namespace

int main()
{
    KxBench::Header("KxUiLayoutManager: relayout vs the same moves precomputed (best of 7, alternating; aim < 1.20)",
                    "relayout", "batch only");
    run(50, 200);
    run(200, 60);
    run(1000, 12);
    return 0;
}
