// The grid: a virtual grid of ten million rows against one of a thousand (painting a page,
// Ctrl+End, Page Down: the work must not grow with the row count; aim: ratio at most 1.5),
// and a sort of 100,000 rows by a text column against std::sort of the same strings with the
// same ordinal comparison (aim: at most 2.0).
#include <afxwin.h>
#include "KxUiGridCtrl2.h"
#include "KxBench.h"
#include <algorithm>
#include <cwchar>
#include <random>
#include <string>
#include <vector>

KXBENCH_SINK

namespace {

int CALLBACK FillCell(GV2_DISPINFO* info, LPARAM)
{
    info->item.strText.Format(L"R%d C%d", info->item.row, info->item.col);
    return 0;
}

void PressWithCtrl(CWnd& wnd, UINT vk, bool ctrl)
{
    BYTE keys[256], held[256];
    ::GetKeyboardState(keys);
    memcpy(held, keys, sizeof(held));
    held[VK_CONTROL] = ctrl ? 0x80 : 0;
    ::SetKeyboardState(held);
    wnd.SendMessage(WM_KEYDOWN, vk, 0);
    ::SetKeyboardState(keys);
}

// One round of what a user does on a big list: paint the page, jump to the end, back to the
// start, and a page down.
void UseVirtualGrid(KxUiGridCtrl2& grid)
{
    grid.SetFocusCell(1, 1);
    grid.Invalidate(FALSE);
    grid.UpdateWindow();
    PressWithCtrl(grid, VK_END, true);
    grid.UpdateWindow();
    PressWithCtrl(grid, VK_HOME, true);
    grid.UpdateWindow();
    PressWithCtrl(grid, VK_NEXT, false);
    grid.UpdateWindow();
    KxBench::Keep(static_cast<size_t>(grid.GetFocusCell().row));
}

std::vector<std::wstring> RandomWords(size_t n, unsigned seed)
{
    std::mt19937 rng(seed);
    std::vector<std::wstring> words(n);
    for (auto& w : words) {
        const int len = 4 + static_cast<int>(rng() % 12);
        for (int i = 0; i < len; ++i)
            w.push_back(static_cast<wchar_t>(L'a' + rng() % 26));
    }
    return words;
}

}  // namespace

int main()
{
    CWnd host;
    host.CreateEx(0, AfxRegisterWndClass(0), L"bench", WS_POPUP | WS_VISIBLE, CRect(0, 0, 900, 700), nullptr, 0);

    KxBench::Header("Grid", "ours", "baseline");

    // Virtual mode: ten million rows against a thousand, same window, same work.
    KxUiGridCtrl2 big, small;
    KxUiGridCtrl2* grids[] = {&big, &small};
    const int rows[] = {10000000, 1000};
    for (int i = 0; i < 2; ++i) {
        KxUiGridCtrl2& g = *grids[i];
        g.Create(CRect(0, i * 350, 900, i * 350 + 340), &host, 100 + i, WS_CHILD | WS_VISIBLE);
        g.SetVirtualMode(TRUE);
        g.SetCallbackFunc(FillCell, 0);
        g.SetColumnCount(8);
        g.SetRowCount(rows[i]);
        g.SetFixedRowCount(1);
        g.SetFixedColumnCount(1);
    }
    KxBench::Compare("virtual page, Ctrl+End, Page Down: 10M vs 1k rows", [&] { UseVirtualGrid(big); },
                     [&] { UseVirtualGrid(small); }, 9);

    // Sorting 100,000 stored rows by a text column.
    const size_t n = 100000;
    const std::vector<std::wstring> words = RandomWords(n, 7);
    KxUiGridCtrl2 sorted;
    sorted.Create(CRect(0, 0, 400, 300), &host, 200, WS_CHILD);
    sorted.SetColumnCount(2);
    sorted.SetRowCount(static_cast<int>(n) + 1);
    sorted.SetFixedRowCount(1);
    double bestOurs = 1e300, bestStd = 1e300;
    for (int run = 0; run < 5; ++run) {
        for (size_t i = 0; i < n; ++i)
            sorted.SetItemText(static_cast<int>(i) + 1, 1, words[i].c_str());
        double t0 = KxBench::NowMs();
        sorted.SortTextItems(1, TRUE);
        bestOurs = std::min(bestOurs, KxBench::NowMs() - t0);

        std::vector<std::wstring> copy = words;
        t0 = KxBench::NowMs();
        std::sort(copy.begin(), copy.end(),
                  [](const std::wstring& a, const std::wstring& b) { return wcscmp(a.c_str(), b.c_str()) < 0; });
        bestStd = std::min(bestStd, KxBench::NowMs() - t0);
        KxBench::Keep(copy.front().size());
    }
    // The grid's result is checked, so a broken sort cannot look fast.
    for (int r = 2; r <= static_cast<int>(n); ++r)
        if (wcscmp(sorted.GetItemText(r - 1, 1), sorted.GetItemText(r, 1)) > 0) {
            std::printf("grid sort: rows %d and %d out of order\n", r - 1, r);
            return 1;
        }
    KxBench::Report("sort 100,000 rows by text (std::sort, wcscmp)", bestOurs, bestStd);

    sorted.DestroyWindow();
    big.DestroyWindow();
    small.DestroyWindow();
    host.DestroyWindow();
    return 0;
}
