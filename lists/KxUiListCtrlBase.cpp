// Report list with an owner-drawn header and hideable columns.
#include "KxUiListCtrlBase.h"
#include "KxUiSortHeaderCtrl.h"
#include <afxfile_.h>

IMPLEMENT_DYNAMIC(KxUiListCtrlBase, CListCtrl)

BEGIN_MESSAGE_MAP(KxUiListCtrlBase, CListCtrl)
    ON_WM_CREATE()
    ON_NOTIFY_EX_RANGE(HDN_BEGINTRACKW, 0, 0xFFFF, &KxUiListCtrlBase::OnHeaderBeginTrack)
    ON_NOTIFY_EX_RANGE(HDN_BEGINTRACKA, 0, 0xFFFF, &KxUiListCtrlBase::OnHeaderBeginTrack)
    ON_NOTIFY_EX_RANGE(HDN_DIVIDERDBLCLICKW, 0, 0xFFFF, &KxUiListCtrlBase::OnHeaderBeginTrack)
    ON_NOTIFY_EX_RANGE(NM_RCLICK, 0, 0xFFFF, &KxUiListCtrlBase::OnHeaderRightClick)
END_MESSAGE_MAP()

KxUiListCtrlBase::KxUiListCtrlBase() : m_bShowHideColumnMenu(false) {}

KxUiListCtrlBase::~KxUiListCtrlBase()
{
    // The header object must not outlive its window's subclassing: destroy the list first.
    if (m_hWnd != nullptr)
        DestroyWindow();
}

KxUiXHeaderCtrl* KxUiListCtrlBase::createHeaderCtrl()
{
    return new KxUiXHeaderCtrl;
}

void KxUiListCtrlBase::attachHeader()
{
    if (m_pHeader != nullptr && m_pHeader->m_hWnd != nullptr)
        return;
    HWND hHeader = (HWND)SendMessage(LVM_GETHEADER);
    if (hHeader == nullptr)
        return;
    std::unique_ptr<KxUiXHeaderCtrl> pHeader(createHeaderCtrl());
    if (pHeader != nullptr && pHeader->SubclassWindow(hHeader))
        m_pHeader = std::move(pHeader);
    while (m_hiddenWidths.GetSize() < GetColumnsCount())
        m_hiddenWidths.Add(-1);
}

void KxUiListCtrlBase::PreSubclassWindow()
{
    CListCtrl::PreSubclassWindow();
    // Subclassing an existing control: its header exists already. During creation it does not,
    // and OnCreate attaches it.
    attachHeader();
}

int KxUiListCtrlBase::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (CListCtrl::OnCreate(lpCreateStruct) == -1)
        return -1;
    attachHeader();
    return 0;
}

int KxUiListCtrlBase::GetColumnsCount() const
{
    HWND hHeader = (HWND)SendMessage(LVM_GETHEADER);
    return hHeader != nullptr ? (int)::SendMessageW(hHeader, HDM_GETITEMCOUNT, 0, 0) : 0;
}

int KxUiListCtrlBase::InsertColumn(int nCol, const LVCOLUMN* pColumn)
{
    int n = CListCtrl::InsertColumn(nCol, pColumn);
    attachHeader();  // a list view creates its header with the first column when it has none yet
    if (n >= 0)
        onColumnInserted(n);
    return n;
}

int KxUiListCtrlBase::InsertColumn(int nCol, LPCTSTR lpszColumnHeading, int nFormat, int nWidth, int nSubItem)
{
    LVCOLUMN col = {};
    col.mask = LVCF_TEXT | LVCF_FMT;
    col.pszText = const_cast<LPTSTR>(lpszColumnHeading);
    col.fmt = nFormat;
    if (nWidth != -1) {
        col.mask |= LVCF_WIDTH;
        col.cx = nWidth;
    }
    if (nSubItem != -1) {
        col.mask |= LVCF_SUBITEM;
        col.iSubItem = nSubItem;
    }
    return InsertColumn(nCol, &col);
}

BOOL KxUiListCtrlBase::DeleteColumn(int nCol)
{
    if (!CListCtrl::DeleteColumn(nCol))
        return FALSE;
    onColumnDeleted(nCol);
    return TRUE;
}

void KxUiListCtrlBase::onColumnInserted(int nCol)
{
    if (nCol <= m_hiddenWidths.GetSize())
        m_hiddenWidths.InsertAt(nCol, -1);
    while (m_hiddenWidths.GetSize() < GetColumnsCount())
        m_hiddenWidths.Add(-1);
    // A new column starts with no header check.
    if (CHeaderCtrl* pHeader = GetHeaderCtrl()) {
        HDITEM hdi = {};
        hdi.mask = HDI_IMAGE;
        hdi.iImage = 0;
        pHeader->SetItem(nCol, &hdi);
    }
}

void KxUiListCtrlBase::onColumnDeleted(int nCol)
{
    if (nCol >= 0 && nCol < m_hiddenWidths.GetSize())
        m_hiddenWidths.RemoveAt(nCol);
}

bool KxUiListCtrlBase::isColumnVisible(int nCol) const
{
    if (nCol < 0 || nCol >= GetColumnsCount())
        return false;
    return nCol >= m_hiddenWidths.GetSize() || m_hiddenWidths[nCol] < 0;
}

bool KxUiListCtrlBase::setColumnVisible(int nCol, bool bVisible)
{
    if (nCol < 0 || nCol >= GetColumnsCount())
        return false;
    while (m_hiddenWidths.GetSize() < GetColumnsCount())
        m_hiddenWidths.Add(-1);
    if (bVisible == isColumnVisible(nCol))
        return true;
    if (bVisible) {
        int cx = m_hiddenWidths[nCol];
        m_hiddenWidths[nCol] = -1;
        SetColumnWidth(nCol, cx);
    } else {
        m_hiddenWidths[nCol] = GetColumnWidth(nCol);
        SetColumnWidth(nCol, 0);
    }
    return true;
}

void KxUiListCtrlBase::SaveState(CFile& stream) const
{
    int n = GetColumnsCount();
    stream.Write(&n, 4);
    for (int i = 0; i < n; ++i) {
        bool bVisible = isColumnVisible(i);
        int cx = bVisible ? GetColumnWidth(i) : m_hiddenWidths[i];
        int nVisible = bVisible ? 1 : 0;
        stream.Write(&cx, 4);
        stream.Write(&nVisible, 4);
    }
}

bool KxUiListCtrlBase::RestoreState(CFile& stream)
{
    int n = 0;
    if (stream.Read(&n, 4) != 4)
        return false;
    int nCount = GetColumnsCount();
    for (int i = 0; i < n && i < nCount; ++i) {
        int pair[2];
        if (stream.Read(pair, 8) != 8)
            return false;
        setColumnVisible(i, true);
        SetColumnWidth(i, pair[0]);
        setColumnVisible(i, pair[1] != 0);
    }
    return n == nCount;
}

// A hidden column cannot be widened by dragging or double-clicking its divider.
BOOL KxUiListCtrlBase::OnHeaderBeginTrack(UINT, NMHDR* pNMHDR, LRESULT* pResult)
{
    const NMHEADERW* pHdr = reinterpret_cast<const NMHEADERW*>(pNMHDR);
    if (pHdr->hdr.hwndFrom != (HWND)SendMessage(LVM_GETHEADER) || isColumnVisible(pHdr->iItem))
        return FALSE;
    *pResult = TRUE;
    return TRUE;
}

BOOL KxUiListCtrlBase::OnHeaderRightClick(UINT, NMHDR* pNMHDR, LRESULT* pResult)
{
    if (!m_bShowHideColumnMenu || pNMHDR->hwndFrom != (HWND)SendMessage(LVM_GETHEADER))
        return FALSE;
    int n = GetColumnsCount();
    CMenu menu;
    if (n == 0 || !menu.CreatePopupMenu())
        return FALSE;
    for (int i = 0; i < n; ++i) {
        WCHAR sz[128] = {};
        HDITEM hdi = {};
        hdi.mask = HDI_TEXT;
        hdi.pszText = sz;
        hdi.cchTextMax = 128;
        GetHeaderCtrl()->GetItem(i, &hdi);
        menu.AppendMenu(MF_STRING | (isColumnVisible(i) ? MF_CHECKED : MF_UNCHECKED), i + 1, sz);
    }
    CPoint pt;
    ::GetCursorPos(&pt);
    int nCmd = (int)menu.TrackPopupMenu(TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, pt.x, pt.y, this);
    if (nCmd > 0)
        toggleColumnVisible(nCmd - 1);
    *pResult = 1;
    return TRUE;
}
