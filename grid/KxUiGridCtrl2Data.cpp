// The grid's conversation with its owner (notifications, display requests, cache hints), the
// editing hooks the cells call, the clipboard and the delimited text files.
#include "KxUiGridCtrl2.h"
#include <afxole.h>
#include <algorithm>

namespace {

// Largest clipboard text a paste reads, in characters: a grid cannot hold more visible text
// than this usefully, and a bigger block is more likely a mistake than a table.
const SIZE_T kMaxPasteChars = 64 * 1024 * 1024;

// Most stored cells Load creates (rows times the longest line's fields).
const ULONGLONG kMaxLoadCells = 20000000;

// Appends bytes to a moveable global block, growing it in 4096-byte steps. The block is freed
// unless Detach hands it on.
class GlobalTextBuffer {
public:
    GlobalTextBuffer() : m_h(NULL), m_nSize(0), m_nUsed(0) {}
    ~GlobalTextBuffer()
    {
        if (m_h != NULL)
            ::GlobalFree(m_h);
    }
    bool Append(const char* p, size_t n)
    {
        if (m_nUsed + n > m_nSize) {
            const SIZE_T nNew = ((m_nUsed + n) / 4096 + 1) * 4096;
            HGLOBAL h = m_h == NULL
                            ? ::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT | GMEM_DDESHARE, nNew)
                            : ::GlobalReAlloc(m_h, nNew, GMEM_MOVEABLE | GMEM_ZEROINIT);
            if (h == NULL)
                return false;
            m_h = h;
            m_nSize = nNew;
        }
        if (n > 0) {
            char* pDst = static_cast<char*>(::GlobalLock(m_h));
            if (pDst == NULL)
                return false;
            memcpy(pDst + m_nUsed, p, n);
            ::GlobalUnlock(m_h);
            m_nUsed += n;
        }
        return true;
    }
    // The block trimmed to what was written; the caller owns it.
    HGLOBAL Detach()
    {
        HGLOBAL h = m_h;
        m_h = NULL;
        if (h != NULL && m_nUsed < m_nSize) {
            HGLOBAL hTrim = ::GlobalReAlloc(h, m_nUsed, GMEM_MOVEABLE);
            if (hTrim != NULL)
                h = hTrim;
        }
        return h;
    }

private:
    HGLOBAL m_h;
    SIZE_T m_nSize;
    SIZE_T m_nUsed;
};

// One line converted to the thread's ANSI code page.
bool AppendAnsi(GlobalTextBuffer& buf, const CString& line)
{
    if (line.IsEmpty())
        return true;
    const int n = ::WideCharToMultiByte(CP_THREAD_ACP, 0, line, line.GetLength(), NULL, 0, NULL, NULL);
    if (n <= 0)
        return false;
    std::vector<char> bytes(static_cast<size_t>(n));
    ::WideCharToMultiByte(CP_THREAD_ACP, 0, line, line.GetLength(), bytes.data(), n, NULL, NULL);
    return buf.Append(bytes.data(), bytes.size());
}

// Splits text at line ends ("\r\n", "\n" or a lone "\r") and each line at tabs. A final line
// end does not start another row.
std::vector<std::vector<CString>> SplitTable(const wchar_t* p, size_t n)
{
    std::vector<std::vector<CString>> rows;
    std::vector<CString> row;
    CString field;
    bool bPending = false;   // something of the current row has been read
    for (size_t i = 0; i < n; ++i) {
        const wchar_t ch = p[i];
        if (ch == L'\r' || ch == L'\n') {
            if (ch == L'\r' && i + 1 < n && p[i + 1] == L'\n')
                ++i;
            row.push_back(field);
            rows.push_back(std::move(row));
            row.clear();
            field.Empty();
            bPending = false;
        } else if (ch == L'\t') {
            row.push_back(field);
            field.Empty();
            bPending = true;
        } else {
            field.AppendChar(ch);
            bPending = true;
        }
    }
    if (bPending) {
        row.push_back(field);
        rows.push_back(std::move(row));
    }
    return rows;
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// Notifications

LRESULT KxUiGridCtrl2::SendMessageToParent(int nRow, int nCol, int nMessage) const
{
    if (GetSafeHwnd() == NULL)
        return 0;
    NM_GRIDVIEW2 nm;
    nm.hdr.hwndFrom = m_hWnd;
    nm.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    nm.hdr.code = static_cast<UINT>(nMessage);
    nm.iRow = nRow;
    nm.iColumn = nCol;
    CWnd* pOwner = GetOwner();
    if (pOwner == NULL || !::IsWindow(pOwner->GetSafeHwnd()))
        return 0;
    return pOwner->SendMessage(WM_NOTIFY, nm.hdr.idFrom, reinterpret_cast<LPARAM>(&nm));
}

LRESULT KxUiGridCtrl2::SendDisplayRequestToParent(tagGV2_DISPINFO* pDisplayInfo) const
{
    if (GetSafeHwnd() == NULL || pDisplayInfo == NULL)
        return 0;
    pDisplayInfo->hdr.hwndFrom = m_hWnd;
    pDisplayInfo->hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    pDisplayInfo->hdr.code = static_cast<UINT>(GVN_GETDISPINFO);
    CWnd* pOwner = GetOwner();
    if (pOwner == NULL || !::IsWindow(pOwner->GetSafeHwnd()))
        return 0;
    return pOwner->SendMessage(WM_NOTIFY, pDisplayInfo->hdr.idFrom, reinterpret_cast<LPARAM>(pDisplayInfo));
}

LRESULT KxUiGridCtrl2::SendCacheHintToParent(const KxUiCellRange2& range) const
{
    if (GetSafeHwnd() == NULL)
        return 0;
    GV2_CACHEHINT hint;
    hint.hdr.hwndFrom = m_hWnd;
    hint.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    hint.hdr.code = static_cast<UINT>(GVN_ODCACHEHINT);
    hint.range = range;
    CWnd* pOwner = GetOwner();
    if (pOwner == NULL || !::IsWindow(pOwner->GetSafeHwnd()))
        return 0;
    return pOwner->SendMessage(WM_NOTIFY, hint.hdr.idFrom, reinterpret_cast<LPARAM>(&hint));
}

// ---------------------------------------------------------------------------------------------
// Editing hooks. The cells open their own editors (Edit); the grid asks the owner first and
// stores the result afterwards.

void KxUiGridCtrl2::EndEditing()
{
    if (m_bVirtualMode)
        return;
    // Only the focus cell can hold an open editor, but a sort or delete may have moved it:
    // look at every visible cell that says it is editing.
    const KxUiCellRange2 vis = GetSafeHwnd() ? GetVisibleNonFixedCellRange(TRUE) : KxUiCellRange2();
    if (m_idCurrentCell.IsValid()) {
        KxUiGridCellBase2* pCell = StoredCell(m_idCurrentCell.row, m_idCurrentCell.col);
        if (pCell != NULL && pCell->IsEditing())
            pCell->EndEdit();
    }
    if (!vis.IsValid())
        return;
    for (int r = vis.GetMinRow(); r <= vis.GetMaxRow(); ++r)
        for (int c = vis.GetMinCol(); c <= vis.GetMaxCol(); ++c) {
            KxUiGridCellBase2* pCell = StoredCell(r, c);
            if (pCell != NULL && pCell->IsEditing())
                pCell->EndEdit();
        }
}

void KxUiGridCtrl2::OnEditCell(int nRow, int nCol, CPoint point, UINT nChar)
{
    if (GetSafeHwnd() == NULL || !IsCellEditable(nRow, nCol))
        return;
    KxUiGridCellBase2* pCell = GetCell(nRow, nCol);
    if (pCell == NULL)
        return;
    EnsureVisible(nRow, nCol);
    CRect rect;
    if (!GetCellRect(nRow, nCol, &rect))
        return;
    if (SendMessageToParent(nRow, nCol, GVN_BEGINLABELEDIT) < 0)
        return;
    pCell->Edit(nRow, nCol, rect, point, IDC_KXUI_INPLACE_CONTROL, nChar);
}

void KxUiGridCtrl2::OnEndEditCell(int nRow, int nCol, CString str)
{
    KxUiGridCellBase2* pCell = StoredCell(nRow, nCol);
    if (pCell == NULL)
        return;
    const CString strOld = pCell->GetText();
    pCell->SetText(str);
    pCell->OnEndEdit();
    if (SendMessageToParent(nRow, nCol, GVN_ENDLABELEDIT) >= 0)
        pCell->SetState(pCell->GetState() | GVIS_MODIFIED);
    else
        pCell->SetText(strOld);
    InvalidateCell(nRow, nCol);
}

// ---------------------------------------------------------------------------------------------
// Clipboard

void KxUiGridCtrl2::CutSelectedText()
{
    if (!IsEditable() || m_bVirtualMode)
        return;
    const KxUiCellRange2 sel = GetSelectedCellRange();
    if (!sel.IsValid())
        return;
    for (int r = sel.GetMinRow(); r <= sel.GetMaxRow(); ++r)
        for (int c = sel.GetMinCol(); c <= sel.GetMaxCol(); ++c) {
            if (!SelectionContains(r, c) || !IsCellEditable(r, c))
                continue;
            KxUiGridCellBase2* pCell = StoredCell(r, c);
            if (pCell == NULL || *pCell->GetText() == 0)
                continue;
            pCell->SetText(_T(""));
            pCell->SetState(pCell->GetState() | GVIS_MODIFIED);
            InvalidateCell(r, c);
        }
}

COleDataSource* KxUiGridCtrl2::CopyTextFromGrid()
{
    const KxUiCellRange2 sel = GetSelectedCellRange();
    if (!sel.IsValid())
        return NULL;
    if (m_bVirtualMode)
        SendCacheHintToParent(sel);

    GlobalTextBuffer buf;
    bool bOk = true;
    for (int r = sel.GetMinRow(); r <= sel.GetMaxRow() && bOk; ++r) {
        CString line;
        for (int c = sel.GetMinCol(); c <= sel.GetMaxCol(); ++c) {
            if (SelectionContains(r, c)) {
                if (KxUiGridCellBase2* pCell = GetCell(r, c))
                    line += pCell->GetText();
            }
            if (c != sel.GetMaxCol())
                line += _T("\t");
        }
        if (r != sel.GetMaxRow())
            line += _T("\r\n");
        bOk = AppendAnsi(buf, line);
    }
    if (bOk)
        bOk = buf.Append("", 1);

    if (m_bVirtualMode)
        SendCacheHintToParent(KxUiCellRange2(-1, -1, -1, -1));
    if (!bOk)
        return NULL;
    HGLOBAL h = buf.Detach();
    if (h == NULL)
        return NULL;
    COleDataSource* pSource = new COleDataSource;
    pSource->CacheGlobalData(CF_TEXT, h);
    return pSource;
}

BOOL KxUiGridCtrl2::PasteTextToGrid(KxUiCellID2 cell, COleDataObject* pDataObject, BOOL bSelectPastedCells)
{
    if (pDataObject == NULL || m_bVirtualMode || !IsEditable() || !cell.IsValid() || cell.row >= GetRowCount() ||
        cell.col >= GetColumnCount())
        return FALSE;

    // Unicode when the source offers it (the system converts the other text formats).
    std::vector<wchar_t> text;
    if (HGLOBAL h = pDataObject->GetGlobalData(CF_UNICODETEXT)) {
        const wchar_t* p = static_cast<const wchar_t*>(::GlobalLock(h));
        if (p != NULL) {
            const SIZE_T nMax = std::min<SIZE_T>(::GlobalSize(h) / sizeof(wchar_t), kMaxPasteChars);
            SIZE_T n = 0;
            while (n < nMax && p[n] != 0)
                ++n;
            text.assign(p, p + n);
            ::GlobalUnlock(h);
        }
        ::GlobalFree(h);
    } else if (HGLOBAL hA = pDataObject->GetGlobalData(CF_TEXT)) {
        const char* p = static_cast<const char*>(::GlobalLock(hA));
        if (p != NULL) {
            const SIZE_T nMax = std::min<SIZE_T>(::GlobalSize(hA), kMaxPasteChars);
            SIZE_T n = 0;
            while (n < nMax && p[n] != 0)
                ++n;
            if (n > 0) {
                const int nw = ::MultiByteToWideChar(CP_THREAD_ACP, 0, p, static_cast<int>(n), NULL, 0);
                if (nw > 0) {
                    text.resize(static_cast<size_t>(nw));
                    ::MultiByteToWideChar(CP_THREAD_ACP, 0, p, static_cast<int>(n), text.data(), nw);
                }
            }
            ::GlobalUnlock(hA);
        }
        ::GlobalFree(hA);
    } else {
        return FALSE;
    }

    const std::vector<std::vector<CString>> table = SplitTable(text.data(), text.size());
    if (table.empty())
        return FALSE;

    // Clipped to the grid: rows and columns beyond its counts are dropped, ragged rows fill
    // only as far as they go.
    int nMaxRow = cell.row, nMaxCol = cell.col;
    for (size_t i = 0; i < table.size(); ++i) {
        const int r = cell.row + static_cast<int>(i);
        if (r >= GetRowCount())
            break;
        nMaxRow = r;
        for (size_t j = 0; j < table[i].size(); ++j) {
            const int c = cell.col + static_cast<int>(j);
            if (c >= GetColumnCount())
                break;
            nMaxCol = std::max(nMaxCol, c);
            if (!IsCellEditable(r, c))
                continue;
            KxUiGridCellBase2* pCell = StoredCell(r, c);
            if (pCell == NULL)
                continue;
            pCell->SetText(table[i][j]);
            pCell->SetState(pCell->GetState() | GVIS_MODIFIED);
            InvalidateCell(r, c);
        }
    }
    if (bSelectPastedCells)
        SetSelectedRange(cell.row, cell.col, nMaxRow, nMaxCol, TRUE, TRUE);
    return TRUE;
}

void KxUiGridCtrl2::OnEditCut()
{
    if (!IsEditable())
        return;
    COleDataSource* pSource = CopyTextFromGrid();
    if (pSource == NULL)
        return;
    pSource->SetClipboard();
    CutSelectedText();
}

void KxUiGridCtrl2::OnEditCopy()
{
    COleDataSource* pSource = CopyTextFromGrid();
    if (pSource != NULL)
        pSource->SetClipboard();
}

void KxUiGridCtrl2::OnEditPaste()
{
    if (!m_idCurrentCell.IsValid())
        return;
    COleDataObject obj;
    if (obj.AttachClipboard())
        PasteTextToGrid(m_idCurrentCell, &obj, TRUE);
}

void KxUiGridCtrl2::OnEditSelectAll()
{
    SendMessageToParent(m_idCurrentCell.row, m_idCurrentCell.col, GVN_SELCHANGING);
    SelectAllCells();
    SendMessageToParent(m_idCurrentCell.row, m_idCurrentCell.col, GVN_SELCHANGED);
}

// ---------------------------------------------------------------------------------------------
// Files

BOOL KxUiGridCtrl2::Save(LPCTSTR filename, TCHAR chSeparator)
{
    if (filename == NULL)
        return FALSE;
    CStdioFile file;
    CFileException ex;
    if (!file.Open(filename, CFile::modeCreate | CFile::modeWrite | CFile::typeText, &ex)) {
        ex.ReportError();
        return FALSE;
    }
    const TCHAR sep[2] = {chSeparator, 0};
    try {
        const int nCols = GetColumnCount();
        for (int r = 0; r < GetRowCount(); ++r) {
            CString line;
            for (int c = 0; c < nCols; ++c) {
                line += GetItemText(r, c);
                line += (c + 1 < nCols) ? sep : _T("\n");
            }
            file.WriteString(line);
        }
        file.Close();
    } catch (CFileException* e) {
        AfxMessageBox(_T("Unable to save grid list"));
        e->Delete();
        return FALSE;
    }
    return TRUE;
}

BOOL KxUiGridCtrl2::Load(LPCTSTR filename, TCHAR chSeparator)
{
    if (filename == NULL || m_bVirtualMode)
        return FALSE;
    CStdioFile file;
    CFileException ex;
    if (!file.Open(filename, CFile::modeRead | CFile::typeText, &ex)) {
        ex.ReportError();
        return FALSE;
    }
    // The whole file is read before the grid changes, so a failed read leaves it untouched.
    std::vector<std::vector<CString>> lines;
    size_t nCols = 0;
    try {
        CString line;
        while (file.ReadString(line)) {
            std::vector<CString> fields;
            int start = 0;
            for (;;) {
                const int pos = line.Find(chSeparator, start);
                if (pos < 0) {
                    fields.push_back(line.Mid(start));
                    break;
                }
                fields.push_back(line.Mid(start, pos - start));
                start = pos + 1;
            }
            nCols = std::max(nCols, fields.size());
            lines.push_back(std::move(fields));
            if (lines.size() > static_cast<size_t>(INT_MAX) - 1 || nCols > static_cast<size_t>(INT_MAX) - 1)
                AfxThrowFileException(CFileException::diskFull, -1, filename);
        }
        file.Close();
    } catch (CFileException* e) {
        AfxMessageBox(_T("Unable to load grid data"));
        e->Delete();
        return FALSE;
    }

    // A file whose longest line would make the table absurdly large (one line of a million
    // delimiters under a hundred thousand lines) is refused rather than allocated.
    if (static_cast<ULONGLONG>(lines.size()) * nCols > kMaxLoadCells) {
        AfxMessageBox(_T("Unable to load grid data"));
        return FALSE;
    }

    // One line per row, as many columns as the longest line; shorter lines leave their last
    // cells empty. The fixed counts stay as they were, as far as the new counts allow.
    const int nFixedRows = GetFixedRowCount(), nFixedCols = GetFixedColumnCount();
    DeleteAllItems();
    SetColumnCount(static_cast<int>(nCols));
    SetRowCount(static_cast<int>(lines.size()));
    SetFixedRowCount(std::min(nFixedRows, GetRowCount()));
    SetFixedColumnCount(std::min(nFixedCols, GetColumnCount()));
    for (size_t r = 0; r < lines.size(); ++r)
        for (size_t c = 0; c < lines[r].size(); ++c)
            SetItemText(static_cast<int>(r), static_cast<int>(c), lines[r][c]);
    if (GetSafeHwnd())
        Invalidate();
    return TRUE;
}
