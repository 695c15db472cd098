// A shown parent for grids under test: it records every grid notification (code, row,
// column), answers the edit and display requests, and lays grids out with fixed sizes so
// that cell rectangles are known in advance.
#pragma once
#include <KxControlHost.h>
#include <KxUiGridCtrl2.h>
#include <functional>
#include <vector>

struct GridNote {
    int code;
    int row;
    int col;
    bool operator==(const GridNote& o) const { return code == o.code && row == o.row && col == o.col; }
};

inline std::ostream& operator<<(std::ostream& os, const GridNote& n)
{
    return os << "{" << n.code << ", " << n.row << ", " << n.col << "}";
}

class GridHost : public ControlHost {
public:
    std::vector<GridNote> notes;
    LRESULT beginEditAnswer = 0;
    LRESULT endEditAnswer = 0;
    // Fills a display request; without it the request is only recorded.
    std::function<void(GV2_DISPINFO*)> onDispInfo;
    std::vector<KxUiCellRange2> cacheHints;

    // Every cell 50 x 20 pixels: cell (r, c) of an unscrolled grid covers
    // x 50c .. 50c+49 and y 20r .. 20r+19.
    static void UniformSizes(KxUiGridCtrl2& grid)
    {
        for (int c = 0; c < grid.GetColumnCount(); ++c)
            grid.SetColumnWidth(c, 50);
        for (int r = 0; r < grid.GetRowCount(); ++r)
            grid.SetRowHeight(r, 20);
    }

    BOOL AddGrid(KxUiGridCtrl2& grid, int rows, int cols, int fixedRows, int fixedCols, CRect rc = CRect(0, 0, 400, 240))
    {
        if (!grid.Create(rc, this, 100, WS_CHILD | WS_VISIBLE | WS_TABSTOP))
            return FALSE;
        grid.SetColumnCount(cols);
        grid.SetRowCount(rows);
        grid.SetFixedRowCount(fixedRows);
        grid.SetFixedColumnCount(fixedCols);
        UniformSizes(grid);
        for (int r = 0; r < rows; ++r)
            for (int c = 0; c < cols; ++c) {
                CString s;
                s.Format(L"r%dc%d", r, c);
                grid.SetItemText(r, c, s);
            }
        grid.SetFocus();
        return TRUE;
    }

    std::vector<int> Codes() const
    {
        std::vector<int> v;
        for (const GridNote& n : notes)
            v.push_back(n.code);
        return v;
    }

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override
    {
        const NMHDR* hdr = reinterpret_cast<const NMHDR*>(lParam);
        const int code = static_cast<int>(hdr->code);
        if (code == GVN_GETDISPINFO) {
            GV2_DISPINFO* info = reinterpret_cast<GV2_DISPINFO*>(lParam);
            notes.push_back({code, info->item.row, info->item.col});
            if (onDispInfo)
                onDispInfo(info);
            *pResult = 0;
            return TRUE;
        }
        if (code == GVN_ODCACHEHINT) {
            cacheHints.push_back(reinterpret_cast<const GV2_CACHEHINT*>(lParam)->range);
            *pResult = 0;
            return TRUE;
        }
        const NM_GRIDVIEW2* nm = reinterpret_cast<const NM_GRIDVIEW2*>(lParam);
        notes.push_back({code, nm->iRow, nm->iColumn});
        *pResult = code == GVN_BEGINLABELEDIT ? beginEditAnswer : code == GVN_ENDLABELEDIT ? endEditAnswer : 0;
        (void)wParam;
        return TRUE;
    }
};
