// The grid's table, geometry, selection and sorting. Window messages, painting and input
// are in KxUiGridCtrl2Wnd.cpp; clipboard and files in KxUiGridCtrl2Data.cpp.
#include "KxUiGridCtrl2.h"
#include <afxole.h>
#include <algorithm>

IMPLEMENT_DYNCREATE(KxUiGridCtrl2, CWnd)

namespace {

// The grid being sorted in virtual mode (one for the process).
KxUiGridCtrl2* s_pVirtualSortGrid = NULL;

// The display-information record virtual cells are filled through (one for the process).
tagGV2_DISPINFO& VirtualDispInfo()
{
    static tagGV2_DISPINFO s_info;
    return s_info;
}

// Bottom-up merge sort that stays inside the array whatever the comparison answers: a
// comparison that is not a strict ordering (the descending negation, or a user function that
// contradicts itself) gives some order, never a read outside the table.
template <class Less>
void RobustSort(int* first, size_t n, Less less)
{
    if (n < 2)
        return;
    std::vector<int> buffer(n);
    int* src = first;
    int* dst = buffer.data();
    for (size_t width = 1; width < n; width *= 2) {
        for (size_t lo = 0; lo < n; lo += 2 * width) {
            const size_t mid = std::min(lo + width, n), hi = std::min(lo + 2 * width, n);
            size_t i = lo, j = mid, k = lo;
            while (i < mid && j < hi)
                dst[k++] = less(src[j], src[i]) ? src[j++] : src[i++];
            while (i < mid)
                dst[k++] = src[i++];
            while (j < hi)
                dst[k++] = src[j++];
        }
        std::swap(src, dst);
    }
    if (src != first)
        std::copy(src, src + n, first);
}

}  // namespace

KxUiGridCtrl2::KxUiGridCtrl2(HINSTANCE hInst, int nRows, int nCols, int nFixedRows, int nFixedCols)
    : m_pRtcDefault(RUNTIME_CLASS(KxUiGridCell2)),
      m_bVirtualMode(FALSE),
      m_pfnCallback(NULL),
      m_lParamCallback(0),
      m_bRemap(TRUE),
      m_hInstance(hInst),
      m_crTextColour(::GetSysColor(COLOR_WINDOWTEXT)),
      m_crTextBkColour(::GetSysColor(COLOR_WINDOW)),
      m_crFixedTextColour(::GetSysColor(COLOR_WINDOWTEXT)),
      m_crFixedBkColour(::GetSysColor(COLOR_3DFACE)),
      m_crGridBkColour(::GetSysColor(COLOR_WINDOW)),
      m_crGridLineColour(RGB(192, 192, 192)),
      m_pImageList(NULL),
      m_bFixedRelief(TRUE),
      m_bGridLines(TRUE),
      m_hFont(NULL),
      m_nSelectionMode(4),
      m_bListMode(FALSE),
      m_bSingleRowSelection(FALSE),
      m_bSingleColSelection(FALSE),
      m_bFixedRowSelection(FALSE),
      m_bFixedColumnSelection(FALSE),
      m_bSelectFixedColumns(FALSE),
      m_bEnableSelection(TRUE),
      m_bTrackFocusCell(TRUE),
      m_bFrameFocus(TRUE),
      m_bHandleTabKey(TRUE),
      m_bQuitFocusOnTab(FALSE),
      m_bHotTracking(TRUE),
      m_bAllowColumnResize(TRUE),
      m_bAllowRowResize(TRUE),
      m_bTitleTips(TRUE),
      m_bEditable(TRUE),
      m_MouseMode(MOUSE_NOTHING),
      m_nResizeIndex(-1),
      m_nResizeGrab(0),
      m_nTimerID(0),
      m_bTrackingLeave(FALSE),
      m_bInCreate(FALSE),
      m_bInScrollReset(FALSE),
      m_nTopRow(0),
      m_nLeftCol(0),
      m_nRowsPerWheelNotch(3),
      m_pfnCompare(NULL),
      m_pfnVirtualCompare(NULL),
      m_nSortColumn(-1),
      m_nVirtualSortColumn(-1),
      m_bAscending(TRUE),
      m_bSortOnClick(FALSE),
      m_sizeBuffer(0, 0)
{
    ReadWheelSetting();
    if (!AfxOleInit())
        AfxMessageBox(_T("OLE initialization failed. Make sure that the OLE libraries are the correct version"));
    SetupDefaultCells();
    m_rows.SetDefaultSize(m_cellDefault.GetHeight());
    m_cols.SetDefaultSize(m_cellDefault.GetWidth());
    SetRowCount(nRows);
    SetColumnCount(nCols);
    SetFixedRowCount(nFixedRows);
    SetFixedColumnCount(nFixedCols);
}

KxUiGridCtrl2::~KxUiGridCtrl2()
{
    if (s_pVirtualSortGrid == this)
        s_pVirtualSortGrid = NULL;
    FreeAllCells();
    if (GetSafeHwnd() != NULL)
        DestroyWindow();
}

void KxUiGridCtrl2::SetupDefaultCells()
{
    KxUiGridDefaultCell2* cells[4] = {&m_cellDefault, &m_cellFixedColDef, &m_cellFixedRowDef, &m_cellFixedRowColDef};
    for (int i = 0; i < 4; ++i) {
        cells[i]->SetGrid(this);
        cells[i]->SetTextClr(i == 0 ? m_crTextColour : m_crFixedTextColour);
        cells[i]->SetBackClr(i == 0 ? m_crTextBkColour : m_crFixedBkColour);
    }
}

KxUiGridDefaultCell2* KxUiGridCtrl2::GetDefaultCell(BOOL bFixedRow, BOOL bFixedCol) const
{
    KxUiGridCtrl2* self = const_cast<KxUiGridCtrl2*>(this);
    if (bFixedRow && bFixedCol)
        return &self->m_cellFixedRowColDef;
    if (bFixedRow)
        return &self->m_cellFixedRowDef;
    if (bFixedCol)
        return &self->m_cellFixedColDef;
    return &self->m_cellDefault;
}

// ---------------------------------------------------------------------------------------------
// Table storage

KxUiGridCellBase2* KxUiGridCtrl2::CreateCell(int nRow, int nCol)
{
    if (m_pRtcDefault == NULL)
        return NULL;
    CObject* pObject = m_pRtcDefault->CreateObject();
    KxUiGridCellBase2* pCell = dynamic_cast<KxUiGridCellBase2*>(pObject);
    if (pCell == NULL) {
        delete pObject;
        return NULL;
    }
    pCell->SetGrid(this);
    pCell->SetCoords(nRow, nCol);
    return pCell;
}

void KxUiGridCtrl2::DestroyCell(int nRow, int nCol)
{
    if (m_bVirtualMode || nRow < 0 || nRow >= static_cast<int>(m_table.size()) || nCol < 0 ||
        nCol >= GetColumnCount())
        return;
    GridRow* pRow = m_table[static_cast<size_t>(nRow)].get();
    const size_t s = static_cast<size_t>(m_colOrder[static_cast<size_t>(nCol)]);
    if (pRow != NULL && s < pRow->size()) {
        delete (*pRow)[s];
        (*pRow)[s] = NULL;
    }
}

KxUiGridCtrl2::GridRow* KxUiGridCtrl2::NewRow(int nRow)
{
    const int nCols = GetColumnCount();
    std::unique_ptr<GridRow> pRow(new GridRow(static_cast<size_t>(nCols), NULL));
    for (int c = 0; c < nCols; ++c)
        (*pRow)[static_cast<size_t>(m_colOrder[static_cast<size_t>(c)])] = CreateCell(nRow, c);
    return pRow.release();
}

void KxUiGridCtrl2::FreeRow(int nRow)
{
    GridRow* pRow = m_table[static_cast<size_t>(nRow)].get();
    if (pRow == NULL)
        return;
    for (int c = GetColumnCount() - 1; c >= 0; --c)
        DestroyCell(nRow, c);
    m_table[static_cast<size_t>(nRow)].reset();
}

void KxUiGridCtrl2::FreeAllCells()
{
    for (int r = static_cast<int>(m_table.size()) - 1; r >= 0; --r)
        FreeRow(r);
    m_table.clear();
}

KxUiGridCellBase2* KxUiGridCtrl2::StoredCell(int nRow, int nCol) const
{
    if (nRow < 0 || nCol < 0 || nRow >= GetRowCount() || nCol >= GetColumnCount() ||
        nRow >= static_cast<int>(m_table.size()))
        return NULL;
    const GridRow* pRow = m_table[static_cast<size_t>(nRow)].get();
    if (pRow == NULL)
        return NULL;
    const size_t s = static_cast<size_t>(m_colOrder[static_cast<size_t>(nCol)]);
    if (s >= pRow->size())
        AfxThrowInvalidArgException();
    return (*pRow)[s];
}

void KxUiGridCtrl2::SyncState(KxUiGridCellBase2* pCell, int nRow, int nCol) const
{
    // The selected, focused and fixed bits follow the grid; the others are the cell's own.
    DWORD state = pCell->GetState() & ~(GVIS_SELECTED | GVIS_FOCUSED | GVIS_FIXED | GVIS_FIXEDROW | GVIS_FIXEDCOL);
    if (nRow < GetFixedRowCount())
        state |= GVIS_FIXED | GVIS_FIXEDROW;
    if (nCol < GetFixedColumnCount())
        state |= GVIS_FIXED | GVIS_FIXEDCOL;
    if (SelectionContains(nRow, nCol))
        state |= GVIS_SELECTED;
    if (m_idCurrentCell.row == nRow && m_idCurrentCell.col == nCol)
        state |= GVIS_FOCUSED;
    if (state != pCell->GetState())
        pCell->SetState(state);
}

KxUiGridCellBase2* KxUiGridCtrl2::GetCell(int nRow, int nCol) const
{
    if (nRow < 0 || nCol < 0 || nRow >= GetRowCount() || nCol >= GetColumnCount())
        return NULL;
    if (!m_bVirtualMode) {
        KxUiGridCellBase2* pCell = StoredCell(nRow, nCol);
        if (pCell != NULL)
            SyncState(pCell, nRow, nCol);
        return pCell;
    }

    KxUiGridCtrl2* self = const_cast<KxUiGridCtrl2*>(this);
    KxUiGridCellBase2* pCell = self->GetVirtualCellType(nRow, nCol);
    if (pCell == NULL)
        return NULL;
    const BOOL bFixedRow = nRow < GetFixedRowCount(), bFixedCol = nCol < GetFixedColumnCount();
    KxUiGridDefaultCell2* pDefault = GetDefaultCell(bFixedRow, bFixedCol);
    tagGV2_DISPINFO& info = VirtualDispInfo();
    info.hdr.hwndFrom = m_hWnd;
    info.hdr.idFrom = m_hWnd != NULL ? static_cast<UINT_PTR>(GetDlgCtrlID()) : 0;
    info.hdr.code = static_cast<UINT>(GVN_GETDISPINFO);
    info.item.row = m_bRemap ? GetStoredRow(nRow) : nRow;
    info.item.col = m_bRemap ? GetStoredColumn(nCol) : nCol;
    info.item.mask = 0xFFFFFFFF;
    UINT state = GVIS_HOT;
    if (SelectionContains(nRow, nCol))
        state |= GVIS_SELECTED;
    if (bFixedRow)
        state |= GVIS_FIXED | GVIS_FIXEDROW;
    if (bFixedCol)
        state |= GVIS_FIXED | GVIS_FIXEDCOL;
    if (m_idCurrentCell.row == nRow && m_idCurrentCell.col == nCol)
        state |= GVIS_FOCUSED;
    info.item.nState = state;
    info.item.nFormat = pDefault->GetFormat();
    info.item.iImage = pDefault->GetImage();
    info.item.crBkClr = pDefault->GetBackClr();
    info.item.crFgClr = pDefault->GetTextClr();
    info.item.lParam = pDefault->GetData();
    const LOGFONT* plfDefault = pDefault->GetFont();
    if (plfDefault != NULL)
        info.item.lfFont = *plfDefault;
    else
        memset(&info.item.lfFont, 0, sizeof(info.item.lfFont));
    info.item.nMargin = pDefault->GetMargin();
    info.item.strText.Empty();

    if (m_pfnCallback != NULL)
        m_pfnCallback(&info, m_lParamCallback);
    else
        SendDisplayRequestToParent(&info);

    pCell->SetState(info.item.nState);
    pCell->SetFormat(info.item.nFormat);
    pCell->SetImage(info.item.iImage);
    pCell->SetBackClr(info.item.crBkClr);
    pCell->SetTextClr(info.item.crFgClr);
    pCell->SetData(info.item.lParam);
    // The default font handed back unchanged stays the default: the cell then draws with the
    // default cell's font object instead of building one per cell.
    if (plfDefault != NULL && memcmp(plfDefault, &info.item.lfFont, sizeof(LOGFONT)) == 0)
        pCell->SetFont(NULL);
    else
        pCell->SetFont(&info.item.lfFont);
    pCell->SetMargin(info.item.nMargin);
    pCell->SetText(info.item.strText);
    pCell->SetGrid(self);
    return pCell;
}

KxUiGridCellBase2* KxUiGridCtrl2::GetVirtualCellType(int /*nRow*/, int /*nCol*/)
{
    if (m_pVirtualCell == NULL || m_pVirtualCell->GetRuntimeClass() != m_pRtcDefault) {
        CObject* pObject = m_pRtcDefault != NULL ? m_pRtcDefault->CreateObject() : NULL;
        KxUiGridCellBase2* pCell = dynamic_cast<KxUiGridCellBase2*>(pObject);
        if (pCell == NULL) {
            delete pObject;
            return m_pVirtualCell.get();
        }
        m_pVirtualCell.reset(pCell);
    }
    m_pVirtualCell->SetGrid(this);
    return m_pVirtualCell.get();
}

BOOL KxUiGridCtrl2::SetCell(int nRow, int nCol, KxUiGridCellBase2* pCell)
{
    if (m_bVirtualMode || nRow < 0 || nCol < 0 || nRow >= GetRowCount() || nCol >= GetColumnCount())
        return FALSE;
    std::unique_ptr<GridRow>& rowPtr = m_table[static_cast<size_t>(nRow)];
    if (rowPtr == NULL)
        rowPtr.reset(new GridRow(static_cast<size_t>(GetColumnCount()), NULL));
    const size_t s = static_cast<size_t>(m_colOrder[static_cast<size_t>(nCol)]);
    if (s >= rowPtr->size())
        AfxThrowInvalidArgException();
    if (pCell != NULL)
        pCell->SetCoords(nRow, nCol);
    (*rowPtr)[s] = pCell;
    return TRUE;
}

BOOL KxUiGridCtrl2::SetCellType(int nRow, int nCol, CRuntimeClass* pRuntimeClass)
{
    if (pRuntimeClass == NULL || m_bVirtualMode || !pRuntimeClass->IsDerivedFrom(RUNTIME_CLASS(KxUiGridCellBase2)))
        return FALSE;
    KxUiGridCellBase2* pOld = GetCell(nRow, nCol);
    if (pOld == NULL)
        return FALSE;
    KxUiGridCellBase2* pNew = dynamic_cast<KxUiGridCellBase2*>(pRuntimeClass->CreateObject());
    if (pNew == NULL)
        return FALSE;
    *pNew = *pOld;
    SetCell(nRow, nCol, pNew);
    delete pOld;
    return TRUE;
}

BOOL KxUiGridCtrl2::SetDefaultCellType(CRuntimeClass* pRuntimeClass)
{
    if (pRuntimeClass == NULL || !pRuntimeClass->IsDerivedFrom(RUNTIME_CLASS(KxUiGridCellBase2)) ||
        pRuntimeClass->m_pfnCreateObject == NULL)
        return FALSE;
    m_pRtcDefault = pRuntimeClass;
    return TRUE;
}

int KxUiGridCtrl2::GetStoredRow(int nRow) const
{
    if (nRow >= 0 && static_cast<size_t>(nRow) < m_rowOrder.size())
        return m_rowOrder[static_cast<size_t>(nRow)];
    return nRow;
}

int KxUiGridCtrl2::GetStoredColumn(int nCol) const
{
    if (nCol >= 0 && static_cast<size_t>(nCol) < m_colOrder.size())
        return m_colOrder[static_cast<size_t>(nCol)];
    return nCol;
}

BOOL KxUiGridCtrl2::SetColumnOrder(const std::vector<int>& order)
{
    if (order.size() != m_colOrder.size())
        return FALSE;
    std::vector<char> seen(order.size(), 0);
    for (int s : order) {
        if (s < 0 || static_cast<size_t>(s) >= order.size() || seen[static_cast<size_t>(s)])
            return FALSE;
        seen[static_cast<size_t>(s)] = 1;
    }
    m_colOrder = order;
    if (GetSafeHwnd())
        Invalidate(FALSE);
    return TRUE;
}

// ---------------------------------------------------------------------------------------------
// Counts, rows and columns

BOOL KxUiGridCtrl2::SetRowCount(int nRows)
{
    if (nRows < 0)
        return FALSE;
    const int nOld = GetRowCount();
    if (nRows == nOld)
        return TRUE;
    EndEditing();
    if (!m_bVirtualMode) {
        if (nRows < nOld) {
            for (int r = nOld - 1; r >= nRows; --r)
                FreeRow(r);
            m_table.resize(static_cast<size_t>(nRows));
        } else {
            m_table.reserve(static_cast<size_t>(nRows));
            m_rows.SetCount(nRows);  // cells are told rows that exist
            for (int r = nOld; r < nRows; ++r)
                m_table.emplace_back(NewRow(r));
        }
    }
    m_rows.SetCount(nRows);
    if (m_rowOrder.size() > 0) {
        const size_t old = m_rowOrder.size();
        m_rowOrder.resize(static_cast<size_t>(nRows));
        for (size_t i = old; i < m_rowOrder.size(); ++i)
            m_rowOrder[i] = static_cast<int>(i);
        // A shrunk table may refer to rows that are gone: start again from identity.
        for (int s : m_rowOrder)
            if (s >= nRows) {
                m_rowOrder.clear();
                break;
            }
    }
    if (m_rows.GetFixedCount() > nRows)
        m_rows.SetFixedCount(nRows);
    if (m_idCurrentCell.row >= nRows)
        m_idCurrentCell = KxUiCellID2();
    if (m_idHotCell.row >= nRows)
        m_idHotCell = KxUiCellID2();
    if (nRows < nOld) {
        const KxUiCellRange2 all(0, 0, nRows - 1, GetColumnCount() - 1);
        m_curSel = m_curSel.Intersect(all);
        for (KxUiCellRange2& r : m_keptSel)
            r = r.Intersect(all);
    }
    m_nTopRow = ClampTopRow(m_nTopRow);
    if (GetSafeHwnd()) {
        ResetScrollBars();
        Invalidate(FALSE);
    }
    return TRUE;
}

BOOL KxUiGridCtrl2::SetColumnCount(int nCols)
{
    if (nCols < 0)
        return FALSE;
    const int nOld = GetColumnCount();
    if (nCols == nOld)
        return TRUE;
    EndEditing();
    if (nCols < nOld) {
        for (int c = nOld - 1; c >= nCols; --c)
            DeleteColumn(c);
        return TRUE;
    }
    m_cols.SetCount(nCols);
    for (int c = nOld; c < nCols; ++c)
        m_colOrder.push_back(c);
    if (!m_bVirtualMode) {
        for (size_t r = 0; r < m_table.size(); ++r) {
            GridRow* pRow = m_table[r].get();
            if (pRow == NULL)
                continue;
            pRow->resize(static_cast<size_t>(nCols), NULL);
            for (int c = nOld; c < nCols; ++c)
                (*pRow)[static_cast<size_t>(c)] = CreateCell(static_cast<int>(r), c);
        }
    }
    m_nLeftCol = ClampLeftCol(m_nLeftCol);
    if (GetSafeHwnd()) {
        ResetScrollBars();
        Invalidate(FALSE);
    }
    return TRUE;
}

BOOL KxUiGridCtrl2::SetFixedRowCount(int nFixedRows)
{
    if (nFixedRows < 0)
        return FALSE;
    if (nFixedRows > GetRowCount() && !SetRowCount(nFixedRows))
        return FALSE;
    m_rows.SetFixedCount(nFixedRows);
    if (m_nTopRow < nFixedRows)
        m_nTopRow = nFixedRows;
    m_nTopRow = ClampTopRow(m_nTopRow);
    if (GetSafeHwnd()) {
        ResetScrollBars();
        Invalidate(FALSE);
    }
    return TRUE;
}

BOOL KxUiGridCtrl2::SetFixedColumnCount(int nFixedCols)
{
    if (nFixedCols < 0)
        return FALSE;
    if (nFixedCols > GetColumnCount() && !SetColumnCount(nFixedCols))
        return FALSE;
    m_cols.SetFixedCount(nFixedCols);
    if (m_nLeftCol < nFixedCols)
        m_nLeftCol = nFixedCols;
    m_nLeftCol = ClampLeftCol(m_nLeftCol);
    if (GetSafeHwnd()) {
        ResetScrollBars();
        Invalidate(FALSE);
    }
    return TRUE;
}

int KxUiGridCtrl2::InsertRow(LPCTSTR strHeading, int nRow)
{
    const int nCount = GetRowCount();
    if (nRow < -1 || nRow > nCount)
        return -1;
    if (nRow == -1)
        nRow = nCount;
    if (GetColumnCount() < 1)
        return -1;
    EndEditing();
    if (!m_bVirtualMode) {
        m_table.insert(m_table.begin() + nRow, std::unique_ptr<GridRow>());
        m_rows.Insert(nRow, m_rows.GetDefaultSize());
        m_table[static_cast<size_t>(nRow)].reset(NewRow(nRow));
        for (int r = nRow + 1; r <= nCount; ++r)
            for (int c = 0; c < GetColumnCount(); ++c)
                if (KxUiGridCellBase2* pCell = StoredCell(r, c))
                    pCell->SetCoords(r, c);
        if (strHeading != NULL && *strHeading)
            SetItemText(nRow, 0, strHeading);
    } else {
        m_rows.Insert(nRow, m_rows.GetDefaultSize());
    }
    if (!m_rowOrder.empty()) {
        for (int& s : m_rowOrder)
            if (s >= nRow)
                ++s;
        m_rowOrder.insert(m_rowOrder.begin() + nRow, nRow);
    }
    // Positions below the new row move down with their rows.
    if (m_idCurrentCell.IsValid() && m_idCurrentCell.row >= nRow)
        m_idCurrentCell.row++;
    ResetSelectedRange();
    if (GetSafeHwnd()) {
        ResetScrollBars();
        Invalidate(FALSE);
    }
    return nRow;
}

int KxUiGridCtrl2::InsertColumn(LPCTSTR strHeading, UINT nFormat, int nCol)
{
    const int nCount = GetColumnCount();
    if (nCol < -1 || nCol > nCount)
        return -1;
    if (nCol == -1)
        nCol = nCount;
    EndEditing();
    m_cols.Insert(nCol, m_cols.GetDefaultSize());
    // The new column takes the next storage slot at the end of every row.
    m_colOrder.insert(m_colOrder.begin() + nCol, nCount);
    if (!m_bVirtualMode) {
        for (size_t r = 0; r < m_table.size(); ++r) {
            GridRow* pRow = m_table[r].get();
            if (pRow == NULL)
                continue;
            pRow->push_back(CreateCell(static_cast<int>(r), nCol));
        }
        if (GetRowCount() > 0 && GetFixedRowCount() > 0 && strHeading != NULL)
            SetItemText(0, nCol, strHeading);
        for (int r = 0; r < GetRowCount(); ++r)
            if (KxUiGridCellBase2* pCell = StoredCell(r, nCol))
                pCell->SetFormat(nFormat);
    }
    if (m_idCurrentCell.IsValid() && m_idCurrentCell.col >= nCol)
        m_idCurrentCell.col++;
    ResetSelectedRange();
    if (GetSafeHwnd()) {
        ResetScrollBars();
        Invalidate(FALSE);
    }
    return nCol;
}

BOOL KxUiGridCtrl2::DeleteRow(int nRow)
{
    if (nRow < 0 || nRow >= GetRowCount())
        return FALSE;
    EndEditing();
    if (!m_bVirtualMode) {
        FreeRow(nRow);
        m_table.erase(m_table.begin() + nRow);
    }
    m_rows.Remove(nRow);
    if (!m_rowOrder.empty()) {
        const int s = m_rowOrder[static_cast<size_t>(nRow)];
        m_rowOrder.erase(m_rowOrder.begin() + nRow);
        for (int& v : m_rowOrder)
            if (v > s)
                --v;
    }
    if (m_rows.GetFixedCount() > GetRowCount())
        m_rows.SetFixedCount(GetRowCount());
    if (m_idCurrentCell.row == nRow)
        m_idCurrentCell = KxUiCellID2();
    else if (m_idCurrentCell.row > nRow)
        m_idCurrentCell.row--;
    m_idHotCell = KxUiCellID2();
    ResetSelectedRange();
    m_nTopRow = ClampTopRow(m_nTopRow);
    if (GetSafeHwnd()) {
        ResetScrollBars();
        Invalidate(FALSE);
    }
    return TRUE;
}

BOOL KxUiGridCtrl2::DeleteColumn(int nCol)
{
    if (nCol < 0 || nCol >= GetColumnCount())
        return FALSE;
    EndEditing();
    const int s = m_colOrder[static_cast<size_t>(nCol)];
    if (!m_bVirtualMode) {
        for (size_t r = 0; r < m_table.size(); ++r) {
            GridRow* pRow = m_table[r].get();
            if (pRow == NULL || static_cast<size_t>(s) >= pRow->size())
                continue;
            delete (*pRow)[static_cast<size_t>(s)];
            pRow->erase(pRow->begin() + s);
        }
    }
    m_colOrder.erase(m_colOrder.begin() + nCol);
    for (int& v : m_colOrder)
        if (v > s)
            --v;
    m_cols.Remove(nCol);
    if (m_cols.GetFixedCount() > GetColumnCount())
        m_cols.SetFixedCount(GetColumnCount());
    if (m_idCurrentCell.col == nCol)
        m_idCurrentCell = KxUiCellID2();
    else if (m_idCurrentCell.col > nCol)
        m_idCurrentCell.col--;
    if (m_nSortColumn == nCol)
        m_nSortColumn = -1;
    m_idHotCell = KxUiCellID2();
    ResetSelectedRange();
    m_nLeftCol = ClampLeftCol(m_nLeftCol);
    if (GetSafeHwnd()) {
        ResetScrollBars();
        Invalidate(FALSE);
    }
    return TRUE;
}

BOOL KxUiGridCtrl2::DeleteAllItems()
{
    EndEditing();
    FreeAllCells();
    m_rows.SetFixedCount(0);
    m_cols.SetFixedCount(0);
    m_rows.SetCount(0);
    m_cols.SetCount(0);
    m_colOrder.clear();
    m_rowOrder.clear();
    m_idCurrentCell = m_idHotCell = m_SelectionStartCell = KxUiCellID2();
    m_curSel = KxUiCellRange2();
    m_keptSel.clear();
    m_nTopRow = m_nLeftCol = 0;
    m_nSortColumn = -1;
    if (GetSafeHwnd()) {
        ResetScrollBars();
        Invalidate(FALSE);
    }
    return TRUE;
}

BOOL KxUiGridCtrl2::DeleteNonFixedRows()
{
    return SetRowCount(GetFixedRowCount());
}

BOOL KxUiGridCtrl2::SetRowHeight(int nRow, int height)
{
    if (!m_rows.SetSize(nRow, height))
        return FALSE;
    m_nTopRow = ClampTopRow(m_nTopRow);
    if (GetSafeHwnd()) {
        ResetScrollBars();
        Invalidate(FALSE);
    }
    return TRUE;
}

BOOL KxUiGridCtrl2::SetColumnWidth(int nCol, int width)
{
    if (!m_cols.SetSize(nCol, width))
        return FALSE;
    m_nLeftCol = ClampLeftCol(m_nLeftCol);
    if (GetSafeHwnd()) {
        ResetScrollBars();
        Invalidate(FALSE);
    }
    return TRUE;
}

void KxUiGridCtrl2::SetVirtualMode(BOOL bVirtual)
{
    bVirtual = bVirtual ? TRUE : FALSE;
    if (bVirtual == m_bVirtualMode)
        return;
    EndEditing();
    FreeAllCells();
    m_rowOrder.clear();
    m_bVirtualMode = bVirtual;
    if (!m_bVirtualMode) {
        m_table.reserve(static_cast<size_t>(GetRowCount()));
        for (int r = 0; r < GetRowCount(); ++r)
            m_table.emplace_back(NewRow(r));
    }
    ResetSelectedRange();
    if (GetSafeHwnd())
        Invalidate(FALSE);
}

void KxUiGridCtrl2::SetCallbackFunc(GRIDCALLBACK2 pCallback, LPARAM lParam)
{
    m_pfnCallback = pCallback;
    m_lParamCallback = lParam;
    if (GetSafeHwnd())
        Invalidate(FALSE);
}

// ---------------------------------------------------------------------------------------------
// Items

BOOL KxUiGridCtrl2::SetItem(const _GV2_ITEM* pItem)
{
    if (pItem == NULL || m_bVirtualMode)
        return FALSE;
    KxUiGridCellBase2* pCell = GetCell(pItem->row, pItem->col);
    if (pCell == NULL)
        return FALSE;
    const UINT mask = pItem->mask;
    if (mask & GVIF_TEXT)
        pCell->SetText(pItem->strText);
    if (mask & GVIF_PARAM)
        pCell->SetData(pItem->lParam);
    if (mask & GVIF_IMAGE)
        pCell->SetImage(pItem->iImage);
    if (mask & GVIF_STATE)
        SetItemState(pItem->row, pItem->col, pItem->nState);
    if (mask & GVIF_FORMAT)
        pCell->SetFormat(pItem->nFormat);
    if (mask & GVIF_BKCLR)
        pCell->SetBackClr(pItem->crBkClr);
    if (mask & GVIF_FGCLR)
        pCell->SetTextClr(pItem->crFgClr);
    if (mask & GVIF_FONT)
        pCell->SetFont(&pItem->lfFont);
    if (mask & GVIF_MARGIN)
        pCell->SetMargin(pItem->nMargin);
    InvalidateCell(pItem->row, pItem->col);
    return TRUE;
}

BOOL KxUiGridCtrl2::GetItem(_GV2_ITEM* pItem)
{
    if (pItem == NULL)
        return FALSE;
    KxUiGridCellBase2* pCell = GetCell(pItem->row, pItem->col);
    if (pCell == NULL)
        return FALSE;
    const UINT mask = pItem->mask;
    if (mask & GVIF_TEXT)
        pItem->strText = pCell->GetText();
    if (mask & GVIF_IMAGE)
        pItem->iImage = pCell->GetImage();
    if (mask & GVIF_PARAM)
        pItem->lParam = pCell->GetData();
    if (mask & GVIF_STATE)
        pItem->nState = pCell->GetState();
    if (mask & GVIF_FORMAT)
        pItem->nFormat = pCell->GetFormat();
    if (mask & GVIF_BKCLR)
        pItem->crBkClr = pCell->GetBackClr();
    if (mask & GVIF_FGCLR)
        pItem->crFgClr = pCell->GetTextClr();
    if (mask & GVIF_FONT) {
        if (const LOGFONT* plf = pCell->GetFont())
            pItem->lfFont = *plf;
    }
    if (mask & GVIF_MARGIN)
        pItem->nMargin = pCell->GetMargin();
    return TRUE;
}

BOOL KxUiGridCtrl2::SetItemText(int nRow, int nCol, LPCTSTR str)
{
    if (m_bVirtualMode)
        return FALSE;
    KxUiGridCellBase2* pCell = GetCell(nRow, nCol);
    if (pCell == NULL)
        return FALSE;
    pCell->SetText(str);
    InvalidateCell(nRow, nCol);
    return TRUE;
}

CString KxUiGridCtrl2::GetItemText(int nRow, int nCol) const
{
    KxUiGridCellBase2* pCell = GetCell(nRow, nCol);
    return pCell != NULL ? CString(pCell->GetText()) : CString();
}

BOOL KxUiGridCtrl2::SetItemData(int nRow, int nCol, LPARAM lParam)
{
    KxUiGridCellBase2* pCell = m_bVirtualMode ? NULL : GetCell(nRow, nCol);
    if (pCell == NULL)
        return FALSE;
    pCell->SetData(lParam);
    return TRUE;
}

LPARAM KxUiGridCtrl2::GetItemData(int nRow, int nCol) const
{
    KxUiGridCellBase2* pCell = GetCell(nRow, nCol);
    return pCell != NULL ? pCell->GetData() : 0;
}

BOOL KxUiGridCtrl2::SetItemImage(int nRow, int nCol, int iImage)
{
    KxUiGridCellBase2* pCell = m_bVirtualMode ? NULL : GetCell(nRow, nCol);
    if (pCell == NULL)
        return FALSE;
    pCell->SetImage(iImage);
    InvalidateCell(nRow, nCol);
    return TRUE;
}

int KxUiGridCtrl2::GetItemImage(int nRow, int nCol) const
{
    KxUiGridCellBase2* pCell = GetCell(nRow, nCol);
    return pCell != NULL ? pCell->GetImage() : -1;
}

BOOL KxUiGridCtrl2::SetItemFormat(int nRow, int nCol, UINT nFormat)
{
    KxUiGridCellBase2* pCell = m_bVirtualMode ? NULL : GetCell(nRow, nCol);
    if (pCell == NULL)
        return FALSE;
    pCell->SetFormat(nFormat);
    InvalidateCell(nRow, nCol);
    return TRUE;
}

UINT KxUiGridCtrl2::GetItemFormat(int nRow, int nCol) const
{
    KxUiGridCellBase2* pCell = GetCell(nRow, nCol);
    return pCell != NULL ? pCell->GetFormat() : 0;
}

BOOL KxUiGridCtrl2::SetItemBkColour(int nRow, int nCol, COLORREF cr)
{
    KxUiGridCellBase2* pCell = m_bVirtualMode ? NULL : GetCell(nRow, nCol);
    if (pCell == NULL)
        return FALSE;
    pCell->SetBackClr(cr);
    InvalidateCell(nRow, nCol);
    return TRUE;
}

BOOL KxUiGridCtrl2::SetItemFgColour(int nRow, int nCol, COLORREF cr)
{
    KxUiGridCellBase2* pCell = m_bVirtualMode ? NULL : GetCell(nRow, nCol);
    if (pCell == NULL)
        return FALSE;
    pCell->SetTextClr(cr);
    InvalidateCell(nRow, nCol);
    return TRUE;
}

BOOL KxUiGridCtrl2::SetItemState(int nRow, int nCol, UINT state)
{
    if (nRow < 0 || nCol < 0 || nRow >= GetRowCount() || nCol >= GetColumnCount())
        return FALSE;
    if (!m_bVirtualMode) {
        KxUiGridCellBase2* pCell = StoredCell(nRow, nCol);
        if (pCell == NULL)
            return FALSE;
        pCell->SetState(state);
    }
    // Selection and focus are the grid's.
    const BOOL bSelected = SelectionContains(nRow, nCol);
    if ((state & GVIS_SELECTED) && !bSelected) {
        m_keptSel.push_back(KxUiCellRange2(nRow, nCol, nRow, nCol));
    } else if (!(state & GVIS_SELECTED) && bSelected) {
        // Cut the cell out of every range that holds it.
        std::vector<KxUiCellRange2> ranges(m_keptSel);
        if (m_curSel.IsValid())
            ranges.push_back(m_curSel);
        m_keptSel.clear();
        m_curSel = KxUiCellRange2();
        for (const KxUiCellRange2& r : ranges) {
            if (!r.InRange(nRow, nCol)) {
                m_keptSel.push_back(r);
                continue;
            }
            const KxUiCellRange2 parts[4] = {
                KxUiCellRange2(r.GetMinRow(), r.GetMinCol(), nRow - 1, r.GetMaxCol()),
                KxUiCellRange2(nRow + 1, r.GetMinCol(), r.GetMaxRow(), r.GetMaxCol()),
                KxUiCellRange2(nRow, r.GetMinCol(), nRow, nCol - 1),
                KxUiCellRange2(nRow, nCol + 1, nRow, r.GetMaxCol())};
            for (const KxUiCellRange2& p : parts)
                if (p.IsValid())
                    m_keptSel.push_back(p);
        }
    }
    if ((state & GVIS_FOCUSED) && m_idCurrentCell != KxUiCellID2(nRow, nCol))
        SetFocusCell(nRow, nCol);
    else if (!(state & GVIS_FOCUSED) && m_idCurrentCell == KxUiCellID2(nRow, nCol))
        SetFocusCell(-1, -1);
    InvalidateCell(nRow, nCol);
    return TRUE;
}

UINT KxUiGridCtrl2::GetItemState(int nRow, int nCol) const
{
    KxUiGridCellBase2* pCell = GetCell(nRow, nCol);
    return pCell != NULL ? pCell->GetState() : 0;
}

BOOL KxUiGridCtrl2::IsCellFixed(int nRow, int nCol) const
{
    return nRow < GetFixedRowCount() || nCol < GetFixedColumnCount();
}

BOOL KxUiGridCtrl2::IsCellEditable(int nRow, int nCol) const
{
    if (!IsEditable() || IsCellFixed(nRow, nCol))
        return FALSE;
    KxUiGridCellBase2* pCell = GetCell(nRow, nCol);
    return pCell != NULL && !pCell->IsReadOnly();
}

void KxUiGridCtrl2::SetModified(BOOL bModified, int nRow, int nCol)
{
    if (m_bVirtualMode)
        return;
    for (int r = 0; r < GetRowCount(); ++r) {
        if (nRow >= 0 && r != nRow)
            continue;
        for (int c = 0; c < GetColumnCount(); ++c) {
            if (nCol >= 0 && c != nCol)
                continue;
            if (KxUiGridCellBase2* pCell = StoredCell(r, c)) {
                const DWORD s = pCell->GetState();
                pCell->SetState(bModified ? (s | GVIS_MODIFIED) : (s & ~GVIS_MODIFIED));
            }
        }
    }
}

BOOL KxUiGridCtrl2::GetModified(int nRow, int nCol) const
{
    if (m_bVirtualMode)
        return FALSE;
    for (int r = 0; r < GetRowCount(); ++r) {
        if (nRow >= 0 && r != nRow)
            continue;
        for (int c = 0; c < GetColumnCount(); ++c) {
            if (nCol >= 0 && c != nCol)
                continue;
            KxUiGridCellBase2* pCell = StoredCell(r, c);
            if (pCell != NULL && pCell->IsModified())
                return TRUE;
        }
    }
    return FALSE;
}

// ---------------------------------------------------------------------------------------------
// Colours

void KxUiGridCtrl2::SetTextColor(COLORREF clr)
{
    m_crTextColour = clr;
    m_cellDefault.SetTextClr(clr);
    if (GetSafeHwnd())
        Invalidate(FALSE);
}

void KxUiGridCtrl2::SetTextBkColor(COLORREF clr)
{
    m_crTextBkColour = clr;
    m_cellDefault.SetBackClr(clr);
    if (GetSafeHwnd())
        Invalidate(FALSE);
}

void KxUiGridCtrl2::SetFixedTextColor(COLORREF clr)
{
    m_crFixedTextColour = clr;
    m_cellFixedRowDef.SetTextClr(clr);
    m_cellFixedColDef.SetTextClr(clr);
    m_cellFixedRowColDef.SetTextClr(clr);
    if (GetSafeHwnd())
        Invalidate(FALSE);
}

void KxUiGridCtrl2::SetFixedBkColor(COLORREF clr)
{
    m_crFixedBkColour = clr;
    m_cellFixedRowDef.SetBackClr(clr);
    m_cellFixedColDef.SetBackClr(clr);
    m_cellFixedRowColDef.SetBackClr(clr);
    if (GetSafeHwnd())
        Invalidate(FALSE);
}

void KxUiGridCtrl2::SetGridBkColor(COLORREF clr)
{
    m_crGridBkColour = clr;
    if (GetSafeHwnd())
        Invalidate(FALSE);
}

void KxUiGridCtrl2::SetGridLineColor(COLORREF clr)
{
    m_crGridLineColour = clr;
    if (GetSafeHwnd())
        Invalidate(FALSE);
}

// ---------------------------------------------------------------------------------------------
// Selection and focus

BOOL KxUiGridCtrl2::SelectionContains(int nRow, int nCol) const
{
    if (m_curSel.InRange(nRow, nCol))
        return TRUE;
    for (const KxUiCellRange2& r : m_keptSel)
        if (r.InRange(nRow, nCol))
            return TRUE;
    return FALSE;
}

BOOL KxUiGridCtrl2::IsCellSelected(int nRow, int nCol) const
{
    return SelectionContains(nRow, nCol);
}

KxUiCellRange2 KxUiGridCtrl2::GetSelectedCellRange() const
{
    KxUiCellRange2 box;
    auto add = [&box](const KxUiCellRange2& r) {
        if (!r.IsValid())
            return;
        if (!box.IsValid()) {
            box = r;
            return;
        }
        box.Set(std::min(box.GetMinRow(), r.GetMinRow()), std::min(box.GetMinCol(), r.GetMinCol()),
                std::max(box.GetMaxRow(), r.GetMaxRow()), std::max(box.GetMaxCol(), r.GetMaxCol()));
    };
    add(m_curSel);
    for (const KxUiCellRange2& r : m_keptSel)
        add(r);
    return box;
}

int KxUiGridCtrl2::GetSelectedCount() const
{
    // Exact for the usual single range; overlapping kept ranges are counted cell by cell only
    // over their bounding box.
    if (m_keptSel.empty()) {
        const LONGLONG n = m_curSel.Count();
        return n > INT_MAX ? INT_MAX : static_cast<int>(n);
    }
    const KxUiCellRange2 box = GetSelectedCellRange();
    LONGLONG n = 0;
    for (int r = box.GetMinRow(); r <= box.GetMaxRow(); ++r)
        for (int c = box.GetMinCol(); c <= box.GetMaxCol(); ++c)
            if (SelectionContains(r, c) && ++n >= INT_MAX)
                return INT_MAX;
    return static_cast<int>(n);
}

void KxUiGridCtrl2::InvalidateSelection()
{
    if (GetSafeHwnd() == NULL)
        return;
    InvalidateRange(m_curSel);
    for (const KxUiCellRange2& r : m_keptSel)
        InvalidateRange(r);
}

void KxUiGridCtrl2::ResetSelectedRange()
{
    InvalidateSelection();
    m_curSel = KxUiCellRange2();
    m_keptSel.clear();
}

void KxUiGridCtrl2::SetSelectedRange(const KxUiCellRange2& Range, BOOL bForceRepaint, BOOL bSelectCells)
{
    SetSelectedRange(Range.GetMinRow(), Range.GetMinCol(), Range.GetMaxRow(), Range.GetMaxCol(), bForceRepaint,
                     bSelectCells);
}

void KxUiGridCtrl2::SetSelectedRange(int nMinRow, int nMinCol, int nMaxRow, int nMaxCol, BOOL bForceRepaint,
                                     BOOL bSelectCells)
{
    if (!m_bEnableSelection)
        return;
    KxUiCellRange2 range(nMinRow, nMinCol, nMaxRow, nMaxCol);
    range = range.Intersect(KxUiCellRange2(0, 0, GetRowCount() - 1, GetColumnCount() - 1));
    if (!bSelectCells)
        range = KxUiCellRange2();
    if (range == m_curSel && !bForceRepaint)
        return;
    if (GetSafeHwnd()) {
        // Only the cells whose state changes are drawn again.
        InvalidateRange(m_curSel);
        InvalidateRange(range);
    }
    m_curSel = range;
    if (bForceRepaint && GetSafeHwnd())
        UpdateWindow();
}

void KxUiGridCtrl2::SelectAllCells()
{
    if (!m_bEnableSelection)
        return;
    m_keptSel.clear();
    SetSelectedRange(GetFixedRowCount(), GetFixedColumnCount(), GetRowCount() - 1, GetColumnCount() - 1);
}

void KxUiGridCtrl2::EnableSelection(BOOL bEnable)
{
    ResetSelectedRange();
    m_bEnableSelection = bEnable;
}

void KxUiGridCtrl2::SetListMode(BOOL bEnableListMode)
{
    ResetSelectedRange();
    m_bListMode = bEnableListMode;
    m_nSelectionMode = bEnableListMode ? 3 : 4;
}

void KxUiGridCtrl2::SelectRows(KxUiCellID2 currentCell, BOOL bForceRedraw, BOOL bSelectCells)
{
    if (!m_bEnableSelection || !currentCell.IsValid() || currentCell.row < GetFixedRowCount() ||
        currentCell.row >= GetRowCount())
        return;
    const int nMinCol = m_bSelectFixedColumns ? 0 : GetFixedColumnCount();
    int nMinRow = currentCell.row, nMaxRow = currentCell.row;
    if (!(m_bSingleRowSelection && m_bListMode) && m_SelectionStartCell.row >= 0) {
        nMinRow = std::min(m_SelectionStartCell.row, currentCell.row);
        nMaxRow = std::max(m_SelectionStartCell.row, currentCell.row);
    }
    SetSelectedRange(nMinRow, nMinCol, nMaxRow, GetColumnCount() - 1, bForceRedraw, bSelectCells);
}

void KxUiGridCtrl2::SelectColumns(KxUiCellID2 currentCell, BOOL bForceRedraw, BOOL bSelectCells)
{
    if (!m_bEnableSelection || !currentCell.IsValid() || currentCell.col < GetFixedColumnCount() ||
        currentCell.col >= GetColumnCount())
        return;
    int nMinCol = currentCell.col, nMaxCol = currentCell.col;
    if (!m_bSingleColSelection && m_SelectionStartCell.col >= 0) {
        nMinCol = std::min(m_SelectionStartCell.col, currentCell.col);
        nMaxCol = std::max(m_SelectionStartCell.col, currentCell.col);
    }
    SetSelectedRange(GetFixedRowCount(), nMinCol, GetRowCount() - 1, nMaxCol, bForceRedraw, bSelectCells);
}

void KxUiGridCtrl2::SelectCells(KxUiCellID2 currentCell, BOOL bForceRedraw, BOOL bSelectCells)
{
    if (!m_bEnableSelection || !currentCell.IsValid() || currentCell.row < GetFixedRowCount() ||
        currentCell.col < GetFixedColumnCount())
        return;
    KxUiCellID2 anchor = m_SelectionStartCell.IsValid() ? m_SelectionStartCell : currentCell;
    SetSelectedRange(std::min(anchor.row, currentCell.row), std::min(anchor.col, currentCell.col),
                     std::max(anchor.row, currentCell.row), std::max(anchor.col, currentCell.col), bForceRedraw,
                     bSelectCells);
}

void KxUiGridCtrl2::OnSelecting(const KxUiCellID2& currentCell)
{
    if (!IsSelectable())
        return;
    switch (m_nSelectionMode) {
    case 1:
        SelectAllCells();
        break;
    case 2:
        SelectColumns(currentCell);
        break;
    case 3:
        SelectRows(currentCell);
        break;
    case 4:
        SelectCells(currentCell);
        break;
    default:
        break;
    }
}

KxUiCellID2 KxUiGridCtrl2::SetFocusCell(KxUiCellID2 cell)
{
    const KxUiCellID2 prev = m_idCurrentCell;
    if (cell == prev)
        return prev;
    if (!(cell.IsValid() && cell.row < GetRowCount() && cell.col < GetColumnCount()))
        cell = KxUiCellID2();
    InvalidateCell(prev.row, prev.col);
    if (m_bTrackFocusCell && GetSafeHwnd()) {
        // The sunken headers follow the focus row and column.
        InvalidateRange(KxUiCellRange2(prev.row, 0, prev.row, GetFixedColumnCount() - 1));
        InvalidateRange(KxUiCellRange2(0, prev.col, GetFixedRowCount() - 1, prev.col));
        InvalidateRange(KxUiCellRange2(cell.row, 0, cell.row, GetFixedColumnCount() - 1));
        InvalidateRange(KxUiCellRange2(0, cell.col, GetFixedRowCount() - 1, cell.col));
    }
    m_idCurrentCell = cell;
    InvalidateCell(cell.row, cell.col);
    return prev;
}

// ---------------------------------------------------------------------------------------------
// Sorting

int CALLBACK KxUiGridCtrl2::pfnCellTextCompare(LPARAM lParam1, LPARAM lParam2, LPARAM)
{
    const KxUiGridCellBase2* p1 = reinterpret_cast<const KxUiGridCellBase2*>(lParam1);
    const KxUiGridCellBase2* p2 = reinterpret_cast<const KxUiGridCellBase2*>(lParam2);
    if (p1 == NULL || p2 == NULL)
        return 0;
    return wcscmp(p1->GetText(), p2->GetText());
}

int CALLBACK KxUiGridCtrl2::pfnCellNumericCompare(LPARAM lParam1, LPARAM lParam2, LPARAM)
{
    const KxUiGridCellBase2* p1 = reinterpret_cast<const KxUiGridCellBase2*>(lParam1);
    const KxUiGridCellBase2* p2 = reinterpret_cast<const KxUiGridCellBase2*>(lParam2);
    if (p1 == NULL || p2 == NULL)
        return 0;
    const long n1 = _wtol(p1->GetText()), n2 = _wtol(p2->GetText());
    return n1 < n2 ? -1 : (n1 > n2 ? 1 : 0);
}

KxUiGridCtrl2* KxUiGridCtrl2::GetVirtualSortGrid()
{
    return s_pVirtualSortGrid;
}

void KxUiGridCtrl2::SetSortColumn(int nCol)
{
    if (GetSafeHwnd() && m_nSortColumn >= 0)
        InvalidateCell(0, m_nSortColumn);
    m_nSortColumn = nCol;
    if (GetSafeHwnd() && nCol >= 0)
        InvalidateCell(0, nCol);
}

BOOL KxUiGridCtrl2::SortTextItems(int nCol, BOOL bAscending, LPARAM data)
{
    return SortCommon(pfnCellTextCompare, nCol, bAscending, data);
}

BOOL KxUiGridCtrl2::SortItems(int nCol, BOOL bAscending, LPARAM data)
{
    return SortCommon(m_pfnCompare != NULL ? m_pfnCompare : pfnCellTextCompare, nCol, bAscending, data);
}

BOOL KxUiGridCtrl2::SortItems(PFNLVCOMPARE2 pfnCompare, int nCol, BOOL bAscending, LPARAM data)
{
    return SortCommon(pfnCompare, nCol, bAscending, data);
}

BOOL KxUiGridCtrl2::SortCommon(PFNLVCOMPARE2 pfnCompare, int nCol, BOOL bAscending, LPARAM data)
{
    if (nCol < 0 || nCol >= GetColumnCount())
        return FALSE;
    EndEditing();
    SetSortColumn(nCol);
    m_bAscending = bAscending;
    ResetSelectedRange();
    SetFocusCell(-1, -1);
    const int low = GetFixedRowCount(), high = GetRowCount() - 1;
    if (high - low < 1)
        return FALSE;
    if (m_bVirtualMode) {
        if (m_pfnVirtualCompare == NULL)
            return FALSE;
        m_nVirtualSortColumn = GetStoredColumn(nCol);
        s_pVirtualSortGrid = this;
        if (m_rowOrder.size() != static_cast<size_t>(GetRowCount())) {
            m_rowOrder.resize(static_cast<size_t>(GetRowCount()));
            for (size_t i = 0; i < m_rowOrder.size(); ++i)
                m_rowOrder[i] = static_cast<int>(i);
        }
        PFNVIRTUALCOMPARE2 less = m_pfnVirtualCompare;
        int* first = m_rowOrder.data() + low;
        const size_t n = static_cast<size_t>(high - low + 1);
        if (bAscending)
            RobustSort(first, n, [less](int a, int b) { return less(a, b); });
        else
            RobustSort(first, n, [less](int a, int b) { return !less(a, b); });
    } else {
        if (pfnCompare == NULL)
            return FALSE;
        QuickSortRows(pfnCompare, nCol, bAscending, data, low, high);
    }
    if (GetSafeHwnd())
        Invalidate(FALSE);
    return TRUE;
}

void KxUiGridCtrl2::SwapRows(int r1, int r2)
{
    std::swap(m_table[static_cast<size_t>(r1)], m_table[static_cast<size_t>(r2)]);
    // Exchanging the rows exchanges every column's cell: each is told its new row.
    const int nCols = GetColumnCount();
    for (int c = 0; c < nCols; ++c) {
        if (KxUiGridCellBase2* p = StoredCell(r1, c))
            p->SetCoords(r1, c);
        if (KxUiGridCellBase2* p = StoredCell(r2, c))
            p->SetCoords(r2, c);
    }
    m_rows.Swap(r1, r2);
}

void KxUiGridCtrl2::QuickSortRows(PFNLVCOMPARE2 pfnCompare, int nCol, BOOL bAscending, LPARAM data, int low,
                                  int high)
{
    // Recursion on the smaller part, a loop on the larger: the stack stays logarithmic
    // whatever the data; the exchanges are those of the plain recursive form.
    while (low < high) {
        int lo = low, hi = high;
        const LPARAM pivot = reinterpret_cast<LPARAM>(StoredCell((low + high) / 2, nCol));
        while (lo <= hi) {
            if (bAscending) {
                while (lo < high && pfnCompare(reinterpret_cast<LPARAM>(StoredCell(lo, nCol)), pivot, data) < 0)
                    ++lo;
                while (hi > low && pfnCompare(reinterpret_cast<LPARAM>(StoredCell(hi, nCol)), pivot, data) > 0)
                    --hi;
            } else {
                while (lo < high && pfnCompare(reinterpret_cast<LPARAM>(StoredCell(lo, nCol)), pivot, data) > 0)
                    ++lo;
                while (hi > low && pfnCompare(reinterpret_cast<LPARAM>(StoredCell(hi, nCol)), pivot, data) < 0)
                    --hi;
            }
            if (lo <= hi) {
                if (pfnCompare(reinterpret_cast<LPARAM>(StoredCell(lo, nCol)),
                               reinterpret_cast<LPARAM>(StoredCell(hi, nCol)), data) != 0)
                    SwapRows(lo, hi);
                ++lo;
                --hi;
            }
        }
        if (hi - low < high - lo) {
            if (low < hi)
                QuickSortRows(pfnCompare, nCol, bAscending, data, low, hi);
            low = lo;
        } else {
            if (lo < high)
                QuickSortRows(pfnCompare, nCol, bAscending, data, lo, high);
            high = hi;
        }
    }
}
