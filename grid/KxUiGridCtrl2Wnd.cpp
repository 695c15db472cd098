// The grid's window: creation, geometry and scrolling, painting, keyboard and mouse.
#include "KxUiGridCtrl2.h"
#include <algorithm>

namespace {

enum : UINT_PTR { kTimerAutoScroll = 1 };
const int kResizeGrip = 3;       // pixels either side of a divider that grab it
const int kMaxBarUnits = 1 << 30;  // scroll-bar positions are 32-bit; stay well inside

bool KeyHeld(int vk)
{
    return ::GetKeyState(vk) < 0;
}

// The module the class is registered for when none is named: the host's current module, the
// one CWnd::CreateEx and dialog templates create their windows with (a class registered for
// this library's own module would not be found by them without CS_GLOBALCLASS).
HINSTANCE DefaultInstance()
{
    return AfxGetInstanceHandle();
}

}  // namespace

BEGIN_MESSAGE_MAP(KxUiGridCtrl2, CWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
    ON_WM_SIZE()
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
    ON_WM_KEYDOWN()
    ON_WM_CHAR()
    ON_WM_GETDLGCODE()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_RBUTTONDOWN()
    ON_WM_MOUSEMOVE()
    ON_WM_MOUSELEAVE()
    ON_WM_MOUSEWHEEL()
    ON_WM_TIMER()
    ON_WM_CAPTURECHANGED()
    ON_WM_SETCURSOR()
    ON_WM_SETFOCUS()
    ON_WM_KILLFOCUS()
    ON_WM_SETTINGCHANGE()
    ON_WM_SYSCOLORCHANGE()
    ON_MESSAGE(WM_SETFONT, &KxUiGridCtrl2::OnSetFont)
    ON_MESSAGE(WM_GETFONT, &KxUiGridCtrl2::OnGetFont)
END_MESSAGE_MAP()

// ---------------------------------------------------------------------------------------------
// Creation

BOOL KxUiGridCtrl2::RegisterWindowClass(HINSTANCE hInst)
{
    if (hInst == NULL)
        hInst = DefaultInstance();
    WNDCLASSW wndcls;
    if (::GetClassInfoW(hInst, KXUIGRIDCTRL2_CLASSNAME, &wndcls))
        return TRUE;
    memset(&wndcls, 0, sizeof(wndcls));
    wndcls.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
    wndcls.lpfnWndProc = ::DefWindowProcW;
    wndcls.hInstance = hInst;
    wndcls.hIcon = NULL;
    wndcls.hCursor = ::LoadCursor(NULL, IDC_ARROW);
    wndcls.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_3DFACE + 1));
    wndcls.lpszMenuName = NULL;
    wndcls.lpszClassName = KXUIGRIDCTRL2_CLASSNAME;
    return ::RegisterClassW(&wndcls) != 0;
}

BOOL KxUiGridCtrl2::Create(const RECT& rect, CWnd* pParentWnd, UINT nID, DWORD dwStyle)
{
    if (m_hInstance == NULL)
        m_hInstance = DefaultInstance();
    if (!RegisterWindowClass(m_hInstance))
        return FALSE;
    m_bInCreate = TRUE;
    const BOOL bOk = CWnd::CreateEx(0, KXUIGRIDCTRL2_CLASSNAME, NULL, dwStyle, rect, pParentWnd, nID);
    m_bInCreate = FALSE;
    return bOk;
}

BOOL KxUiGridCtrl2::PreCreateWindow(CREATESTRUCT& cs)
{
    // The window is created with the instance its class was registered for.
    if (m_hInstance != NULL)
        cs.hInstance = m_hInstance;
    return CWnd::PreCreateWindow(cs);
}

void KxUiGridCtrl2::PreSubclassWindow()
{
    CWnd::PreSubclassWindow();
    // A grid placed on a dialog is set up here; one made by Create in OnCreate.
    if (!m_bInCreate)
        Initialise();
}

int KxUiGridCtrl2::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (CWnd::OnCreate(lpCreateStruct) == -1)
        return -1;
    Initialise();
    return 0;
}

BOOL KxUiGridCtrl2::Initialise()
{
    if (GetSafeHwnd() == NULL)
        return FALSE;
    m_nTopRow = ClampTopRow(m_nTopRow);
    m_nLeftCol = ClampLeftCol(m_nLeftCol);
    ResetScrollBars();
    return TRUE;
}

void KxUiGridCtrl2::OnDestroy()
{
    EndEditing();
    if (m_nTimerID != 0) {
        KillTimer(m_nTimerID);
        m_nTimerID = 0;
    }
    if (m_titleTip.GetSafeHwnd() != NULL)
        m_titleTip.DestroyWindow();
    m_MouseMode = MOUSE_NOTHING;
    CWnd::OnDestroy();
}

void KxUiGridCtrl2::ReadWheelSetting()
{
    m_nRowsPerWheelNotch = 3;
    OSVERSIONINFOW vi = {};
    vi.dwOSVersionInfoSize = sizeof(vi);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    const BOOL bVersion = ::GetVersionExW(&vi);
#pragma GCC diagnostic pop
    if (bVersion && vi.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS && vi.dwMinorVersion == 0) {
        // The first consumer 32-bit system keeps the setting only in the registry.
        HKEY hKey;
        if (::RegOpenKeyExW(HKEY_CURRENT_USER, L"Control Panel\\Desktop", 0, KEY_QUERY_VALUE, &hKey) == ERROR_SUCCESS) {
            wchar_t buf[16] = {};
            DWORD cb = sizeof(buf) - sizeof(wchar_t), type = 0;
            if (::RegQueryValueExW(hKey, L"WheelScrollLines", NULL, &type, reinterpret_cast<LPBYTE>(buf), &cb) ==
                    ERROR_SUCCESS &&
                type == REG_SZ)
                m_nRowsPerWheelNotch = static_cast<UINT>(wcstoul(buf, NULL, 10));
            ::RegCloseKey(hKey);
        }
    } else {
        UINT n = 3;
        if (::SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &n, 0))
            m_nRowsPerWheelNotch = n;
    }
}

void KxUiGridCtrl2::OnSettingChange(UINT uFlags, LPCTSTR lpszSection)
{
    CWnd::OnSettingChange(uFlags, lpszSection);
    ReadWheelSetting();
}

void KxUiGridCtrl2::OnSysColorChange()
{
    CWnd::OnSysColorChange();
    Invalidate(FALSE);
}

LRESULT KxUiGridCtrl2::OnSetFont(WPARAM wParam, LPARAM lParam)
{
    HFONT hFont = reinterpret_cast<HFONT>(wParam);
    LOGFONTW lf;
    if (hFont == NULL || ::GetObjectW(hFont, sizeof(lf), &lf) != sizeof(lf))
        return 0;
    m_hFont = hFont;
    m_cellDefault.SetFont(&lf);
    m_cellFixedColDef.SetFont(&lf);
    m_cellFixedRowDef.SetFont(&lf);
    m_cellFixedRowColDef.SetFont(&lf);
    // Sizes follow the new font, as a fresh grid's would.
    m_rows.SetAllSizes(m_cellDefault.GetHeight());
    m_cols.SetAllSizes(m_cellDefault.GetWidth());
    m_nTopRow = ClampTopRow(m_nTopRow);
    m_nLeftCol = ClampLeftCol(m_nLeftCol);
    ResetScrollBars();
    if (lParam)
        Invalidate(FALSE);
    return 0;
}

LRESULT KxUiGridCtrl2::OnGetFont(WPARAM, LPARAM)
{
    if (m_hFont != NULL)
        return reinterpret_cast<LRESULT>(m_hFont);
    CFont* pFont = m_cellDefault.GetFontObject();
    return pFont != NULL ? reinterpret_cast<LRESULT>(pFont->GetSafeHandle()) : 0;
}

// ---------------------------------------------------------------------------------------------
// Geometry

int KxUiGridCtrl2::ScrollViewHeight() const
{
    CRect rc(0, 0, 0, 0);
    if (GetSafeHwnd())
        GetClientRect(&rc);
    return std::max(0, rc.Height() - GetFixedRowHeight());
}

int KxUiGridCtrl2::ScrollViewWidth() const
{
    CRect rc(0, 0, 0, 0);
    if (GetSafeHwnd())
        GetClientRect(&rc);
    return std::max(0, rc.Width() - GetFixedColumnWidth());
}

int KxUiGridCtrl2::ClampTopRow(int nTop) const
{
    const int nFixed = GetFixedRowCount();
    if (nTop < nFixed)
        nTop = nFixed;
    const int nMax = GetSafeHwnd() ? m_rows.GetMaxTop(ScrollViewHeight()) : std::max(nFixed, GetRowCount() - 1);
    return std::max(nFixed, std::min(nTop, nMax));
}

int KxUiGridCtrl2::ClampLeftCol(int nLeft) const
{
    const int nFixed = GetFixedColumnCount();
    if (nLeft < nFixed)
        nLeft = nFixed;
    const int nMax = GetSafeHwnd() ? m_cols.GetMaxTop(ScrollViewWidth()) : std::max(nFixed, GetColumnCount() - 1);
    return std::max(nFixed, std::min(nLeft, nMax));
}

LONGLONG KxUiGridCtrl2::ColumnX(int nCol) const
{
    if (nCol < GetFixedColumnCount())
        return m_cols.GetStart(nCol);
    return GetFixedColumnWidth() + m_cols.GetStart(nCol) - m_cols.GetStart(m_nLeftCol);
}

LONGLONG KxUiGridCtrl2::RowY(int nRow) const
{
    if (nRow < GetFixedRowCount())
        return m_rows.GetStart(nRow);
    return GetFixedRowHeight() + m_rows.GetStart(nRow) - m_rows.GetStart(m_nTopRow);
}

BOOL KxUiGridCtrl2::GetCellRect(int nRow, int nCol, LPRECT pRect) const
{
    if (pRect == NULL || nRow < 0 || nCol < 0 || nRow >= GetRowCount() || nCol >= GetColumnCount())
        return FALSE;
    if ((nRow >= GetFixedRowCount() && nRow < m_nTopRow) || (nCol >= GetFixedColumnCount() && nCol < m_nLeftCol))
        return FALSE;
    const LONGLONG x = ColumnX(nCol), y = RowY(nRow);
    // Far below or right of the window: not on screen (and beyond what a RECT holds).
    if (x > 0x3FFFFFFF || y > 0x3FFFFFFF)
        return FALSE;
    pRect->left = static_cast<LONG>(x);
    pRect->top = static_cast<LONG>(y);
    pRect->right = pRect->left + GetColumnWidth(nCol);
    pRect->bottom = pRect->top + GetRowHeight(nRow);
    return TRUE;
}

KxUiCellID2 KxUiGridCtrl2::GetTopleftNonFixedCell() const
{
    KxUiCellID2 cell(m_nTopRow, m_nLeftCol);
    if (cell.row >= GetRowCount() || cell.col >= GetColumnCount())
        return KxUiCellID2();
    return cell;
}

KxUiCellID2 KxUiGridCtrl2::GetCellFromPt(CPoint point, BOOL bAllowFixedCellCheck) const
{
    KxUiCellID2 cellID;
    const KxUiCellID2 topLeft = GetTopleftNonFixedCell();
    if (!bAllowFixedCellCheck && !topLeft.IsValid())
        return cellID;

    const int fixedW = GetFixedColumnWidth(), fixedH = GetFixedRowHeight();
    if (point.x < 0 || (!bAllowFixedCellCheck && point.x < fixedW)) {
        cellID.col = -1;
    } else if (point.x < fixedW) {
        cellID.col = m_cols.IndexAt(point.x);
    } else if (m_nLeftCol < GetColumnCount()) {
        const int c = m_cols.IndexAt(m_cols.GetStart(m_nLeftCol) + (point.x - fixedW));
        cellID.col = c >= m_nLeftCol ? c : -1;
    }

    if (point.y < 0) {
        cellID.row = -1;
    } else if (!bAllowFixedCellCheck && point.y < fixedH) {
        cellID.row = -1;
        return cellID;
    } else if (point.y < fixedH) {
        cellID.row = m_rows.IndexAt(point.y);
    } else if (m_nTopRow < GetRowCount()) {
        const int r = m_rows.IndexAt(m_rows.GetStart(m_nTopRow) + (point.y - fixedH));
        cellID.row = r >= m_nTopRow ? r : -1;
    }
    return cellID;
}

KxUiCellRange2 KxUiGridCtrl2::GetVisibleNonFixedCellRange(BOOL bPartial) const
{
    CRect rc;
    GetClientRect(&rc);
    const int nRows = GetRowCount(), nCols = GetColumnCount();
    if (m_nTopRow >= nRows || m_nLeftCol >= nCols)
        return KxUiCellRange2();
    const LONGLONG top = m_rows.GetStart(m_nTopRow), left = m_cols.GetStart(m_nLeftCol);
    const int viewH = ScrollViewHeight(), viewW = ScrollViewWidth();
    int lastRow = m_rows.IndexAt(top + std::max(0, viewH - 1));
    if (lastRow < 0)
        lastRow = nRows - 1;
    else if (!bPartial && m_rows.GetStart(lastRow + 1) - top > viewH && lastRow > m_nTopRow)
        --lastRow;
    int lastCol = m_cols.IndexAt(left + std::max(0, viewW - 1));
    if (lastCol < 0)
        lastCol = nCols - 1;
    else if (!bPartial && m_cols.GetStart(lastCol + 1) - left > viewW && lastCol > m_nLeftCol)
        --lastCol;
    return KxUiCellRange2(m_nTopRow, m_nLeftCol, lastRow, lastCol);
}

BOOL KxUiGridCtrl2::IsCellVisible(int nRow, int nCol) const
{
    if (GetSafeHwnd() == NULL || nRow < 0 || nCol < 0 || nRow >= GetRowCount() || nCol >= GetColumnCount())
        return FALSE;
    CRect rc;
    GetClientRect(&rc);
    const LONGLONG y = RowY(nRow), x = ColumnX(nCol);
    if (nRow >= GetFixedRowCount() && (nRow < m_nTopRow || y + GetRowHeight(nRow) > rc.bottom))
        return FALSE;
    if (nRow < GetFixedRowCount() && y + GetRowHeight(nRow) > rc.bottom)
        return FALSE;
    if (nCol >= GetFixedColumnCount() && (nCol < m_nLeftCol || x + GetColumnWidth(nCol) > rc.right))
        return FALSE;
    if (nCol < GetFixedColumnCount() && x + GetColumnWidth(nCol) > rc.right)
        return FALSE;
    return TRUE;
}

void KxUiGridCtrl2::EnsureVisible(int nRow, int nCol)
{
    if (GetSafeHwnd() == NULL || nRow < 0 || nCol < 0 || nRow >= GetRowCount() || nCol >= GetColumnCount())
        return;
    int top = m_nTopRow, left = m_nLeftCol;
    if (nRow >= GetFixedRowCount()) {
        if (nRow < top) {
            top = nRow;
        } else {
            // The smallest top whose view ends at or after the row's bottom.
            const LONGLONG want = m_rows.GetStart(nRow + 1) - ScrollViewHeight();
            if (want > m_rows.GetStart(top)) {
                int t = m_rows.IndexAt(want);
                if (t < 0 || m_rows.GetStart(t) < want)
                    ++t;
                top = std::min(t, nRow);
            }
        }
    }
    if (nCol >= GetFixedColumnCount()) {
        if (nCol < left) {
            left = nCol;
        } else {
            const LONGLONG want = m_cols.GetStart(nCol + 1) - ScrollViewWidth();
            if (want > m_cols.GetStart(left)) {
                int t = m_cols.IndexAt(want);
                if (t < 0 || m_cols.GetStart(t) < want)
                    ++t;
                left = std::min(t, nCol);
            }
        }
    }
    ScrollTo(top, left);
}

// ---------------------------------------------------------------------------------------------
// Scrolling

int KxUiGridCtrl2::GetScrollScale(int nBar) const
{
    const LONGLONG total =
        nBar == SB_VERT ? m_rows.GetTotal() - m_rows.GetFixedTotal() : m_cols.GetTotal() - m_cols.GetFixedTotal();
    return total <= kMaxBarUnits ? 1 : static_cast<int>((total + kMaxBarUnits - 1) / kMaxBarUnits);
}

void KxUiGridCtrl2::ResetScrollBars()
{
    if (GetSafeHwnd() == NULL || m_bInScrollReset)
        return;
    m_bInScrollReset = TRUE;
    // Showing one bar narrows the view for the other: settle in two passes.
    for (int pass = 0; pass < 2; ++pass) {
        for (int bar = SB_HORZ; bar <= SB_VERT; ++bar) {
            const KxUiGridAxis2& axis = bar == SB_VERT ? m_rows : m_cols;
            const int view = bar == SB_VERT ? ScrollViewHeight() : ScrollViewWidth();
            const LONGLONG scrollable = axis.GetTotal() - axis.GetFixedTotal();
            const int scale = GetScrollScale(bar);
            int& first = bar == SB_VERT ? m_nTopRow : m_nLeftCol;
            first = bar == SB_VERT ? ClampTopRow(first) : ClampLeftCol(first);
            SCROLLINFO si = {};
            si.cbSize = sizeof(si);
            si.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
            if (scrollable > view) {
                si.nMin = 0;
                si.nMax = static_cast<int>((scrollable - 1) / scale);
                si.nPage = static_cast<UINT>(std::max(1, view / scale));
                const int maxTop = axis.GetMaxTop(view);
                si.nPos = first >= maxTop ? si.nMax - static_cast<int>(si.nPage) + 1
                                          : static_cast<int>((axis.GetStart(first) - axis.GetFixedTotal()) / scale);
            }
            SetScrollInfo(bar, &si, TRUE);
        }
    }
    m_bInScrollReset = FALSE;
}

void KxUiGridCtrl2::ScrollTo(int nTopRow, int nLeftCol)
{
    nTopRow = ClampTopRow(nTopRow);
    nLeftCol = ClampLeftCol(nLeftCol);
    if (nTopRow == m_nTopRow && nLeftCol == m_nLeftCol)
        return;
    const bool bRows = nTopRow != m_nTopRow, bCols = nLeftCol != m_nLeftCol;
    m_nTopRow = nTopRow;
    m_nLeftCol = nLeftCol;
    if (GetSafeHwnd() == NULL)
        return;
    ResetScrollBars();
    CRect rc;
    GetClientRect(&rc);
    // Everything but the fixed corner moves.
    if (bRows)
        InvalidateRect(CRect(0, GetFixedRowHeight(), rc.right, rc.bottom), FALSE);
    if (bCols)
        InvalidateRect(CRect(GetFixedColumnWidth(), 0, rc.right, rc.bottom), FALSE);
    if (m_titleTip.GetSafeHwnd() != NULL)
        m_titleTip.SendMessage(TTM_TRACKACTIVATE, FALSE, 0);
}

void KxUiGridCtrl2::OnVScroll(UINT nSBCode, UINT /*nPos*/, CScrollBar* /*pScrollBar*/)
{
    EndEditing();
    const int view = ScrollViewHeight();
    int top = m_nTopRow;
    switch (nSBCode) {
    case SB_LINEDOWN: {
        const int next = m_rows.FirstVisibleFrom(top + 1);
        if (next >= 0)
            top = next;
        break;
    }
    case SB_LINEUP: {
        const int prev = m_rows.LastVisibleFrom(top - 1, GetFixedRowCount());
        if (prev >= 0)
            top = prev;
        break;
    }
    case SB_PAGEDOWN:
        top = m_rows.PageForward(top, view);
        break;
    case SB_PAGEUP:
        top = m_rows.PageBack(top, view);
        break;
    case SB_TOP:
        top = GetFixedRowCount();
        break;
    case SB_BOTTOM:
        top = m_rows.GetMaxTop(view);
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: {
        SCROLLINFO si = {};
        si.cbSize = sizeof(si);
        si.fMask = SIF_ALL;
        if (!GetScrollInfo(SB_VERT, &si, SIF_ALL))
            return;
        // The 32-bit track position (the message's own is 16-bit), scaled back to pixels.
        if (si.nTrackPos >= si.nMax - static_cast<int>(si.nPage) + 1) {
            top = m_rows.GetMaxTop(view);
        } else {
            const LONGLONG offset = m_rows.GetFixedTotal() + static_cast<LONGLONG>(si.nTrackPos) * GetScrollScale(SB_VERT);
            const int r = m_rows.IndexAt(offset);
            if (r >= 0)
                top = r;
        }
        break;
    }
    default:
        return;
    }
    ScrollTo(top, m_nLeftCol);
}

void KxUiGridCtrl2::OnHScroll(UINT nSBCode, UINT /*nPos*/, CScrollBar* /*pScrollBar*/)
{
    EndEditing();
    const int view = ScrollViewWidth();
    int left = m_nLeftCol;
    switch (nSBCode) {
    case SB_LINERIGHT: {
        const int next = m_cols.FirstVisibleFrom(left + 1);
        if (next >= 0)
            left = next;
        break;
    }
    case SB_LINELEFT: {
        const int prev = m_cols.LastVisibleFrom(left - 1, GetFixedColumnCount());
        if (prev >= 0)
            left = prev;
        break;
    }
    case SB_PAGERIGHT:
        left = m_cols.PageForward(left, view);
        break;
    case SB_PAGELEFT:
        left = m_cols.PageBack(left, view);
        break;
    case SB_LEFT:
        left = GetFixedColumnCount();
        break;
    case SB_RIGHT:
        left = m_cols.GetMaxTop(view);
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: {
        SCROLLINFO si = {};
        si.cbSize = sizeof(si);
        si.fMask = SIF_ALL;
        if (!GetScrollInfo(SB_HORZ, &si, SIF_ALL))
            return;
        if (si.nTrackPos >= si.nMax - static_cast<int>(si.nPage) + 1) {
            left = m_cols.GetMaxTop(view);
        } else {
            const LONGLONG offset = m_cols.GetFixedTotal() + static_cast<LONGLONG>(si.nTrackPos) * GetScrollScale(SB_HORZ);
            const int c = m_cols.IndexAt(offset);
            if (c >= 0)
                left = c;
        }
        break;
    }
    default:
        return;
    }
    ScrollTo(m_nTopRow, left);
}

void KxUiGridCtrl2::OnSize(UINT nType, int cx, int cy)
{
    CWnd::OnSize(nType, cx, cy);
    if (!m_bInScrollReset)
        ResetScrollBars();
}

BOOL KxUiGridCtrl2::OnMouseWheel(UINT /*nFlags*/, short zDelta, CPoint /*pt*/)
{
    // Posted, not sent: the scrolling runs after the wheel message has returned.
    if (m_nRowsPerWheelNotch != 0xFFFFFFFF) {
        const int n = static_cast<int>(m_nRowsPerWheelNotch) * zDelta / WHEEL_DELTA;
        const WPARAM code = n >= 1 ? SB_LINEUP : SB_LINEDOWN;
        for (int i = 0; i < std::abs(n); ++i)
            PostMessage(WM_VSCROLL, code, 0);
    } else {
        const int n = zDelta / WHEEL_DELTA;
        const WPARAM code = n >= 1 ? SB_PAGEUP : SB_PAGEDOWN;
        for (int i = 0; i < std::abs(n); ++i)
            PostMessage(WM_VSCROLL, code, 0);
    }
    return TRUE;
}

// ---------------------------------------------------------------------------------------------
// Painting

void KxUiGridCtrl2::InvalidateCell(int nRow, int nCol)
{
    if (GetSafeHwnd() == NULL)
        return;
    CRect rc;
    if (GetCellRect(nRow, nCol, &rc))
        InvalidateRect(&rc, FALSE);
}

void KxUiGridCtrl2::InvalidateRows(int nMinRow, int nMaxRow)
{
    InvalidateRange(KxUiCellRange2(nMinRow, 0, nMaxRow, GetColumnCount() - 1));
}

void KxUiGridCtrl2::InvalidateRange(const KxUiCellRange2& range)
{
    if (GetSafeHwnd() == NULL)
        return;
    const KxUiCellRange2 r = range.Intersect(KxUiCellRange2(0, 0, GetRowCount() - 1, GetColumnCount() - 1));
    if (!r.IsValid())
        return;
    CRect rc;
    GetClientRect(&rc);
    const int fixedW = GetFixedColumnWidth(), fixedH = GetFixedRowHeight();
    auto clampX = [&](int c, bool bEnd) -> LONGLONG {
        LONGLONG x = ColumnX(c) + (bEnd ? GetColumnWidth(c) : 0);
        if (c >= GetFixedColumnCount() && x < fixedW)
            x = fixedW;
        return std::max<LONGLONG>(0, std::min<LONGLONG>(x, rc.right));
    };
    auto clampY = [&](int row, bool bEnd) -> LONGLONG {
        LONGLONG y = RowY(row) + (bEnd ? GetRowHeight(row) : 0);
        if (row >= GetFixedRowCount() && y < fixedH)
            y = fixedH;
        return std::max<LONGLONG>(0, std::min<LONGLONG>(y, rc.bottom));
    };
    // Columns and rows map to the screen in order, fixed ones first: the visible part of
    // the range lies between its first and last edges.
    const CRect area(static_cast<int>(clampX(r.GetMinCol(), false)), static_cast<int>(clampY(r.GetMinRow(), false)),
                     static_cast<int>(clampX(r.GetMaxCol(), true)), static_cast<int>(clampY(r.GetMaxRow(), true)));
    if (!area.IsRectEmpty())
        InvalidateRect(&area, FALSE);
}

BOOL KxUiGridCtrl2::OnEraseBkgnd(CDC*)
{
    return TRUE;  // OnPaint covers every pixel from its buffer
}

void KxUiGridCtrl2::OnPaint()
{
    CPaintDC dc(this);
    CRect rcClient;
    GetClientRect(&rcClient);
    CRect rcPaint(dc.m_ps.rcPaint);
    rcPaint &= rcClient;
    if (rcPaint.IsRectEmpty())
        return;
    // Drawn into a bitmap kept between paints, then copied in one blit: no flicker, and only
    // the cells that meet the invalid area are drawn.
    if (m_bmpBuffer.GetSafeHandle() == NULL || m_sizeBuffer.cx < rcClient.Width() ||
        m_sizeBuffer.cy < rcClient.Height()) {
        m_bmpBuffer.DeleteObject();
        m_sizeBuffer = CSize(std::max(1, rcClient.Width()), std::max(1, rcClient.Height()));
        if (!m_bmpBuffer.CreateCompatibleBitmap(&dc, m_sizeBuffer.cx, m_sizeBuffer.cy)) {
            m_sizeBuffer = CSize(0, 0);
            dc.IntersectClipRect(&rcPaint);
            OnDraw(&dc);
            return;
        }
    }
    CDC memDC;
    if (!memDC.CreateCompatibleDC(&dc)) {
        OnDraw(&dc);
        return;
    }
    CBitmap* pOld = memDC.SelectObject(&m_bmpBuffer);
    memDC.IntersectClipRect(&rcPaint);
    OnDraw(&memDC);
    dc.BitBlt(rcPaint.left, rcPaint.top, rcPaint.Width(), rcPaint.Height(), &memDC, rcPaint.left, rcPaint.top,
              SRCCOPY);
    memDC.SelectObject(pOld);
}

void KxUiGridCtrl2::OnDraw(CDC* pDC)
{
    CRect rcClient, rcClip;
    GetClientRect(&rcClient);
    if (pDC->GetClipBox(&rcClip) == NULLREGION)
        return;
    rcClip &= rcClient;
    pDC->FillSolidRect(&rcClip, m_crGridBkColour);

    const int nRows = GetRowCount(), nCols = GetColumnCount();
    const int nFixedRows = GetFixedRowCount(), nFixedCols = GetFixedColumnCount();
    const int fixedW = GetFixedColumnWidth(), fixedH = GetFixedRowHeight();

    // The rows and columns on screen: the fixed ones, then the scrolled ones from the top
    // and left until the client ends.
    std::vector<std::pair<int, int>> rows, cols;   // index, client position
    for (int r = 0, y = 0; r < nFixedRows && y < rcClient.bottom; y += GetRowHeight(r), ++r)
        rows.emplace_back(r, y);
    for (int r = m_nTopRow, y = fixedH; r < nRows && y < rcClient.bottom; y += GetRowHeight(r), ++r)
        rows.emplace_back(r, y);
    for (int c = 0, x = 0; c < nFixedCols && x < rcClient.right; x += GetColumnWidth(c), ++c)
        cols.emplace_back(c, x);
    for (int c = m_nLeftCol, x = fixedW; c < nCols && x < rcClient.right; x += GetColumnWidth(c), ++c)
        cols.emplace_back(c, x);

    if (m_bVirtualMode && !rows.empty() && !cols.empty())
        SendCacheHintToParent(KxUiCellRange2(rows.front().first, cols.front().first, rows.back().first,
                                             cols.back().first));

    int bottom = 0, right = 0;
    for (const auto& row : rows) {
        const int h = GetRowHeight(row.first);
        bottom = std::max(bottom, row.second + h);
        if (h <= 0 || row.second >= rcClip.bottom || row.second + h <= rcClip.top)
            continue;
        for (const auto& col : cols) {
            const int w = GetColumnWidth(col.first);
            if (w <= 0 || col.second >= rcClip.right || col.second + w <= rcClip.left)
                continue;
            KxUiGridCellBase2* pCell = GetCell(row.first, col.first);
            if (pCell == NULL)
                continue;
            // The cell rectangle leaves the right and bottom pixel to the grid line.
            pCell->Draw(pDC, row.first, col.first, CRect(col.second, row.second, col.second + w - 1, row.second + h - 1));
        }
    }
    for (const auto& col : cols)
        right = std::max(right, col.second + GetColumnWidth(col.first));

    if (m_bVirtualMode && !rows.empty() && !cols.empty())
        SendCacheHintToParent(KxUiCellRange2(-1, -1, -1, -1));

    if (m_bGridLines) {
        CPen pen(PS_SOLID, 1, m_crGridLineColour);
        CPen* pOld = pDC->SelectObject(&pen);
        // Lines on the right and bottom edge of every scrolling cell; fixed cells have their
        // own relief (or lines too when they are drawn flat).
        const int xFrom = m_bFixedRelief ? fixedW : 0, yFrom = m_bFixedRelief ? fixedH : 0;
        for (const auto& col : cols) {
            const int w = GetColumnWidth(col.first);
            if (w <= 0 || (m_bFixedRelief && col.first < nFixedCols))
                continue;
            pDC->MoveTo(col.second + w - 1, yFrom);
            pDC->LineTo(col.second + w - 1, bottom);
        }
        for (const auto& row : rows) {
            const int h = GetRowHeight(row.first);
            if (h <= 0 || (m_bFixedRelief && row.first < nFixedRows))
                continue;
            pDC->MoveTo(xFrom, row.second + h - 1);
            pDC->LineTo(right, row.second + h - 1);
        }
        pDC->SelectObject(pOld);
    }
}

BOOL KxUiGridCtrl2::RedrawCell(int nRow, int nCol, CDC* pDC)
{
    CRect rc;
    if (GetSafeHwnd() == NULL || !GetCellRect(nRow, nCol, &rc))
        return FALSE;
    if (pDC == NULL) {
        InvalidateRect(&rc, FALSE);
        UpdateWindow();
        return TRUE;
    }
    KxUiGridCellBase2* pCell = GetCell(nRow, nCol);
    return pCell != NULL && pCell->Draw(pDC, nRow, nCol, CRect(rc.left, rc.top, rc.right - 1, rc.bottom - 1));
}

// ---------------------------------------------------------------------------------------------
// Keyboard

UINT KxUiGridCtrl2::OnGetDlgCode()
{
    UINT code = DLGC_WANTARROWS | DLGC_WANTCHARS;
    if (m_bHandleTabKey || m_bQuitFocusOnTab)
        code |= DLGC_WANTTAB;
    return code;
}

void KxUiGridCtrl2::ScrollLineForKey(UINT nChar)
{
    const bool bShift = KeyHeld(VK_SHIFT);
    switch (nChar) {
    case VK_DOWN:
        SendMessage(WM_VSCROLL, SB_LINEDOWN, 0);
        break;
    case VK_UP:
        SendMessage(WM_VSCROLL, SB_LINEUP, 0);
        break;
    case VK_RIGHT:
        SendMessage(WM_HSCROLL, SB_LINERIGHT, 0);
        break;
    case VK_LEFT:
        SendMessage(WM_HSCROLL, SB_LINELEFT, 0);
        break;
    case VK_TAB:
        SendMessage(WM_HSCROLL, bShift ? SB_LINELEFT : SB_LINERIGHT, 0);
        break;
    default:
        break;
    }
}

void KxUiGridCtrl2::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    const bool bCtrl = KeyHeld(VK_CONTROL), bShift = KeyHeld(VK_SHIFT);
    if (bCtrl) {
        switch (nChar) {
        case 'C':
        case VK_INSERT:
            OnEditCopy();
            return;
        case 'X':
            OnEditCut();
            return;
        case 'V':
            OnEditPaste();
            return;
        case 'A':
            OnEditSelectAll();
            return;
        case VK_ADD:
            AutoSizeColumns();
            Invalidate(FALSE);
            return;
        default:
            break;
        }
    } else if (bShift && nChar == VK_INSERT) {
        OnEditPaste();
        return;
    }
    if (!m_idCurrentCell.IsValid()) {
        CWnd::OnKeyDown(nChar, nRepCnt, nFlags);
        return;
    }

    const KxUiCellID2 cur = m_idCurrentCell;
    KxUiCellID2 next = cur;
    const int nFixedRows = GetFixedRowCount(), nFixedCols = GetFixedColumnCount();
    const int nRows = GetRowCount(), nCols = GetColumnCount();
    int nChangeLine = 0;   // a Tab wrap: +1 to the next row, -1 to the previous

    if (nChar == VK_TAB && m_bQuitFocusOnTab) {
        if (CWnd* pParent = GetParent())
            pParent->SendMessage(WM_NEXTDLGCTL, bShift ? 1 : 0, 0);
        return;
    }
    switch (nChar) {
    case VK_DELETE:
        CutSelectedText();
        return;
    case VK_DOWN: {
        const int r = m_rows.FirstVisibleFrom(cur.row + 1);
        if (r >= 0)
            next.row = r;
        break;
    }
    case VK_UP: {
        const int r = m_rows.LastVisibleFrom(cur.row - 1, nFixedRows);
        if (r >= 0)
            next.row = r;
        break;
    }
    case VK_RIGHT:
    case VK_TAB:
        if (nChar == VK_TAB && bShift) {
            const int c = m_cols.LastVisibleFrom(cur.col - 1, nFixedCols);
            if (c >= 0) {
                next.col = c;
            } else {
                const int r = m_rows.LastVisibleFrom(cur.row - 1, nFixedRows);
                const int last = m_cols.LastVisibleFrom(nCols - 1, nFixedCols);
                if (r >= 0 && last >= 0) {
                    next = KxUiCellID2(r, last);
                    nChangeLine = -1;
                }
            }
            break;
        }
        {
            const int c = m_cols.FirstVisibleFrom(cur.col + 1);
            if (c >= 0) {
                next.col = c;
            } else if (nChar == VK_TAB) {
                const int r = cur.row < nRows - 1 ? m_rows.FirstVisibleFrom(cur.row + 1) : -1;
                const int first = m_cols.FirstVisibleFrom(nFixedCols);
                if (r < 0 || first < 0) {
                    CWnd::OnKeyDown(nChar, nRepCnt, nFlags);
                    return;
                }
                next = KxUiCellID2(r, first);
                nChangeLine = 1;
            }
        }
        break;
    case VK_LEFT: {
        const int c = m_cols.LastVisibleFrom(cur.col - 1, nFixedCols);
        if (c >= 0)
            next.col = c;
        break;
    }
    case VK_NEXT: {
        const int oldTop = m_nTopRow;
        SendMessage(WM_VSCROLL, SB_PAGEDOWN, 0);
        const int moved = m_nTopRow - oldTop;
        next.row = moved != 0 ? std::min(cur.row + moved, nRows - 1) : nRows - 1;
        break;
    }
    case VK_PRIOR: {
        const int oldTop = m_nTopRow;
        SendMessage(WM_VSCROLL, SB_PAGEUP, 0);
        const int moved = oldTop - m_nTopRow;
        next.row = moved != 0 ? std::max(cur.row - moved, nFixedRows) : nFixedRows;
        break;
    }
    case VK_HOME: {
        SendMessage(WM_HSCROLL, SB_LEFT, 0);
        const int c = m_cols.FirstVisibleFrom(nFixedCols);
        if (c >= 0)
            next.col = c;
        if (bCtrl) {
            SendMessage(WM_VSCROLL, SB_TOP, 0);
            const int r = m_rows.FirstVisibleFrom(nFixedRows);
            next.row = r >= 0 ? r : std::min(nFixedRows, nRows - 1);
        }
        break;
    }
    case VK_END: {
        SendMessage(WM_HSCROLL, SB_RIGHT, 0);
        // Hidden columns at the end are passed over, but the walk stops one above the fixed
        // count (Home's bound is the fixed count itself).
        int c = nCols - 1;
        while (c > nFixedCols + 1 && GetColumnWidth(c) == 0)
            --c;
        next.col = c;
        if (bCtrl) {
            SendMessage(WM_VSCROLL, SB_BOTTOM, 0);
            int r = nRows - 1;
            while (r > nFixedRows + 1 && GetRowHeight(r) == 0)
                --r;
            next.row = r;
        }
        break;
    }
    case VK_F2:
        OnEditCell(cur.row, cur.col, CPoint(-1, -1), VK_LBUTTON);
        return;
    default:
        CWnd::OnKeyDown(nChar, nRepCnt, nFlags);
        return;
    }

    if (next == cur || !next.IsValid())
        return;
    if (m_MouseMode == MOUSE_NOTHING) {
        if (!bShift || nChar == VK_TAB)
            m_SelectionStartCell = next;
        m_nSelectionMode = m_bListMode ? 3 : 4;
        if (!bShift || nChar == VK_TAB)
            m_keptSel.clear();
        SendMessageToParent(next.row, next.col, GVN_SELCHANGING);
        OnSelecting(next);
        SendMessageToParent(next.row, next.col, GVN_SELCHANGED);
    }
    SetFocusCell(next);
    if (!IsCellVisible(next.row, next.col)) {
        if (nChangeLine != 0) {
            SendMessage(WM_VSCROLL, nChangeLine > 0 ? SB_LINEDOWN : SB_LINEUP, 0);
            SendMessage(WM_HSCROLL, nChangeLine > 0 ? SB_LEFT : SB_RIGHT, 0);
        } else {
            ScrollLineForKey(nChar);
        }
        // One line is enough for a neighbour; a jump past hidden rows may need more.
        if (!IsCellVisible(next.row, next.col))
            EnsureVisible(next);
    }
}

void KxUiGridCtrl2::OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
{
    if (!KeyHeld(VK_CONTROL) && m_MouseMode == MOUSE_NOTHING && nChar != VK_ESCAPE) {
        const bool bTabToWindow = nChar == VK_TAB && m_bHandleTabKey;
        if (!bTabToWindow && m_idCurrentCell.IsValid())
            OnEditCell(m_idCurrentCell.row, m_idCurrentCell.col, CPoint(-1, -1), nChar);
    }
    CWnd::OnChar(nChar, nRepCnt, nFlags);
}

void KxUiGridCtrl2::OnSetFocus(CWnd* pOldWnd)
{
    CWnd::OnSetFocus(pOldWnd);
    InvalidateCell(m_idCurrentCell.row, m_idCurrentCell.col);
}

void KxUiGridCtrl2::OnKillFocus(CWnd* pNewWnd)
{
    CWnd::OnKillFocus(pNewWnd);
    InvalidateCell(m_idCurrentCell.row, m_idCurrentCell.col);
}

// ---------------------------------------------------------------------------------------------
// Mouse

int KxUiGridCtrl2::ColumnDividerAt(CPoint point) const
{
    if (point.y < 0 || point.y >= GetFixedRowHeight())
        return -1;
    const KxUiCellID2 cell = GetCellFromPt(point, TRUE);
    if (cell.col < 0)
        return -1;
    CRect rc;
    if (!GetCellRect(cell.row, cell.col, &rc))
        return -1;
    if (point.x >= rc.right - kResizeGrip)
        return cell.col;
    if (point.x < rc.left + kResizeGrip) {
        // The divider on the left belongs to the previous shown column.
        const int lowest = cell.col >= GetFixedColumnCount() && cell.col == m_nLeftCol ? cell.col : 0;
        return lowest == cell.col ? -1 : m_cols.LastVisibleFrom(cell.col - 1, 0);
    }
    return -1;
}

int KxUiGridCtrl2::RowDividerAt(CPoint point) const
{
    if (point.x < 0 || point.x >= GetFixedColumnWidth())
        return -1;
    const KxUiCellID2 cell = GetCellFromPt(point, TRUE);
    if (cell.row < 0)
        return -1;
    CRect rc;
    if (!GetCellRect(cell.row, cell.col, &rc))
        return -1;
    if (point.y >= rc.bottom - kResizeGrip)
        return cell.row;
    if (point.y < rc.top + kResizeGrip) {
        const int lowest = cell.row >= GetFixedRowCount() && cell.row == m_nTopRow ? cell.row : 0;
        return lowest == cell.row ? -1 : m_rows.LastVisibleFrom(cell.row - 1, 0);
    }
    return -1;
}

void KxUiGridCtrl2::SetHot(KxUiCellID2 cell)
{
    if (m_idHotCell.IsValid() && m_idHotCell != cell) {
        const KxUiCellID2 old = m_idHotCell;
        if (KxUiGridCellBase2* pOld = GetCell(old.row, old.col))
            pOld->OnMouseLeave(old.row, old.col);
        InvalidateCell(old.row, old.col);
        m_idHotCell = KxUiCellID2();
    }
    KxUiGridCellBase2* pCell = cell.IsValid() ? GetCell(cell.row, cell.col) : NULL;
    if (pCell != NULL) {
        if (!m_idHotCell.IsValid()) {
            pCell->OnMouseEnter(cell.row, cell.col);
            InvalidateCell(cell.row, cell.col);
        } else {
            pCell->OnMouseOver(cell.row, cell.col);
        }
        m_idHotCell = cell;
    }
}

void KxUiGridCtrl2::UpdateHot(CPoint point)
{
    if (!m_bHotTracking)
        return;
    SetHot(GetCellFromPt(point, TRUE));
    if (!m_bTrackingLeave) {
        TRACKMOUSEEVENT tme = {sizeof(tme), TME_LEAVE, m_hWnd, 0};
        m_bTrackingLeave = ::TrackMouseEvent(&tme);
    }
}

void KxUiGridCtrl2::OnMouseLeave()
{
    m_bTrackingLeave = FALSE;
    if (m_MouseMode == MOUSE_NOTHING)
        SetHot(KxUiCellID2());
    if (m_titleTip.GetSafeHwnd() != NULL)
        m_titleTip.SendMessage(TTM_TRACKACTIVATE, FALSE, 0);
    m_idTipCell = KxUiCellID2();
}

void KxUiGridCtrl2::UpdateTitleTip(CPoint point)
{
    if (!m_bTitleTips)
        return;
    const KxUiCellID2 cell = GetCellFromPt(point, TRUE);
    if (cell == m_idTipCell)
        return;
    m_idTipCell = cell;
    if (m_titleTip.GetSafeHwnd() != NULL)
        m_titleTip.SendMessage(TTM_TRACKACTIVATE, FALSE, 0);
    KxUiGridCellBase2* pCell = cell.IsValid() ? GetCell(cell.row, cell.col) : NULL;
    CRect rcCell;
    if (pCell == NULL || !GetCellRect(cell.row, cell.col, &rcCell))
        return;
    LPCTSTR tip = pCell->GetTipText();
    if (tip == NULL || *tip == 0)
        return;
    // Only text the cell clips gets a tip.
    CRect rcText(rcCell);
    rcText.DeflateRect(static_cast<int>(pCell->GetMargin()), 0);
    if (!pCell->GetTipTextRect(&rcText))
        return;
    const CSize extent = pCell->GetTextExtent(tip);
    if (extent.cx <= rcText.Width() + 2 * static_cast<int>(pCell->GetMargin()) + 1 || (pCell->GetFormat() & DT_WORDBREAK))
        return;
    if (m_titleTip.GetSafeHwnd() == NULL) {
        if (!m_titleTip.Create(this, TTS_NOPREFIX | TTS_ALWAYSTIP))
            return;
        TOOLINFOW ti = {};
        ti.cbSize = sizeof(ti);
        ti.uFlags = TTF_TRACK | TTF_ABSOLUTE | TTF_TRANSPARENT;
        ti.hwnd = m_hWnd;
        ti.uId = 1;
        ti.lpszText = const_cast<LPWSTR>(L"");
        m_titleTip.SendMessage(TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&ti));
    }
    TOOLINFOW ti = {};
    ti.cbSize = sizeof(ti);
    ti.hwnd = m_hWnd;
    ti.uId = 1;
    ti.lpszText = const_cast<LPWSTR>(tip);
    m_titleTip.SendMessage(TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&ti));
    CPoint pt(rcText.left, rcCell.top);
    ClientToScreen(&pt);
    m_titleTip.SendMessage(TTM_TRACKPOSITION, 0, MAKELPARAM(pt.x, pt.y));
    m_titleTip.SendMessage(TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&ti));
}

BOOL KxUiGridCtrl2::OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message)
{
    if (nHitTest != HTCLIENT)
        return CWnd::OnSetCursor(pWnd, nHitTest, message);
    CPoint pt;
    ::GetCursorPos(&pt);
    ScreenToClient(&pt);
    if (m_MouseMode == MOUSE_SIZING_COL || (m_bAllowColumnResize && ColumnDividerAt(pt) >= 0)) {
        ::SetCursor(::LoadCursor(NULL, IDC_SIZEWE));
        return TRUE;
    }
    if (m_MouseMode == MOUSE_SIZING_ROW || (m_bAllowRowResize && RowDividerAt(pt) >= 0)) {
        ::SetCursor(::LoadCursor(NULL, IDC_SIZENS));
        return TRUE;
    }
    const KxUiCellID2 cell = GetCellFromPt(pt, TRUE);
    if (KxUiGridCellBase2* pCell = cell.IsValid() ? GetCell(cell.row, cell.col) : NULL)
        return pCell->OnSetCursor();
    return CWnd::OnSetCursor(pWnd, nHitTest, message);
}

void KxUiGridCtrl2::OnLButtonDown(UINT nFlags, CPoint point)
{
    CWnd::OnLButtonDown(nFlags, point);
    if (::GetFocus() != m_hWnd)
        SetFocus();
    EndEditing();
    m_ptDown = m_ptLastMouse = point;
    if (m_titleTip.GetSafeHwnd() != NULL)
        m_titleTip.SendMessage(TTM_TRACKACTIVATE, FALSE, 0);

    // The divider follows the pointer at the distance it was grabbed from.
    if (m_bAllowColumnResize && (m_nResizeIndex = ColumnDividerAt(point)) >= 0) {
        m_nResizeGrab = static_cast<int>(point.x - (ColumnX(m_nResizeIndex) + GetColumnWidth(m_nResizeIndex)));
        m_MouseMode = MOUSE_SIZING_COL;
        SetCapture();
        return;
    }
    if (m_bAllowRowResize && (m_nResizeIndex = RowDividerAt(point)) >= 0) {
        m_nResizeGrab = static_cast<int>(point.y - (RowY(m_nResizeIndex) + GetRowHeight(m_nResizeIndex)));
        m_MouseMode = MOUSE_SIZING_ROW;
        SetCapture();
        return;
    }

    m_LeftClickDownCell = GetCellFromPt(point, TRUE);
    const KxUiCellID2 cell = m_LeftClickDownCell;
    KxUiGridCellBase2* pCell = cell.IsValid() ? GetCell(cell.row, cell.col) : NULL;
    if (pCell == NULL)
        return;
    CRect rc;
    GetCellRect(cell.row, cell.col, &rc);
    pCell->OnClickDown(CPoint(point.x - rc.left, point.y - rc.top));

    const int nFixedRows = GetFixedRowCount(), nFixedCols = GetFixedColumnCount();
    const bool bFixedRow = cell.row < nFixedRows, bFixedCol = cell.col < nFixedCols;
    if (m_bSortOnClick && bFixedRow && !bFixedCol) {
        // The sort runs on release over the same header.
        m_MouseMode = MOUSE_PREPARE_SORT;
        return;
    }
    if (!m_bEnableSelection)
        return;

    int mode;
    KxUiCellID2 focus = cell;
    if (bFixedRow && bFixedCol) {
        mode = 1;
        focus = KxUiCellID2(m_nTopRow, m_nLeftCol);
    } else if (bFixedRow) {
        if (!m_bFixedRowSelection)
            return;
        mode = 2;
        focus = KxUiCellID2(m_nTopRow, cell.col);
    } else if (bFixedCol) {
        if (!m_bFixedColumnSelection)
            return;
        mode = 3;
        focus = KxUiCellID2(cell.row, m_nLeftCol);
    } else {
        mode = m_bListMode ? 3 : 4;
    }

    SendMessageToParent(cell.row, cell.col, GVN_SELCHANGING);
    const bool bShift = (nFlags & MK_SHIFT) != 0, bCtrl = (nFlags & MK_CONTROL) != 0;
    if (bCtrl && !bShift) {
        // Ctrl keeps what was selected and starts a new range beside it.
        if (m_curSel.IsValid())
            m_keptSel.push_back(m_curSel);
        m_curSel = KxUiCellRange2();
    } else if (!bCtrl) {
        InvalidateSelection();
        m_keptSel.clear();
    }
    if (!bShift || !m_SelectionStartCell.IsValid())
        m_SelectionStartCell = (mode == 2) ? KxUiCellID2(nFixedRows, cell.col)
                             : (mode == 3) ? KxUiCellID2(cell.row, nFixedCols)
                                           : cell;
    m_nSelectionMode = mode;
    OnSelecting(mode == 2 ? KxUiCellID2(nFixedRows, cell.col) : mode == 3 ? KxUiCellID2(cell.row, nFixedCols) : cell);
    if (focus.row < GetRowCount() && focus.col < GetColumnCount())
        SetFocusCell(focus);
    m_MouseMode = static_cast<MouseMode>(MOUSE_SELECT_ALL + (mode - 1));
    SetCapture();
}

void KxUiGridCtrl2::OnMouseMove(UINT nFlags, CPoint point)
{
    CWnd::OnMouseMove(nFlags, point);
    if (m_MouseMode == MOUSE_NOTHING || m_MouseMode == MOUSE_PREPARE_SORT) {
        UpdateHot(point);
        UpdateTitleTip(point);
        return;
    }
    if (!(nFlags & MK_LBUTTON)) {
        // The button went up somewhere we did not see.
        OnLButtonUp(nFlags, point);
        return;
    }
    m_ptLastMouse = point;
    if (m_MouseMode == MOUSE_SIZING_COL) {
        CRect rc;
        if (GetCellRect(GetFixedRowCount() > 0 ? 0 : m_nTopRow, m_nResizeIndex, &rc) || m_nResizeIndex < GetColumnCount()) {
            const LONGLONG left = ColumnX(m_nResizeIndex);
            SetColumnWidth(m_nResizeIndex, static_cast<int>(std::max<LONGLONG>(0, point.x - m_nResizeGrab - left)));
            UpdateWindow();
        }
        return;
    }
    if (m_MouseMode == MOUSE_SIZING_ROW) {
        const LONGLONG top = RowY(m_nResizeIndex);
        SetRowHeight(m_nResizeIndex, static_cast<int>(std::max<LONGLONG>(0, point.y - m_nResizeGrab - top)));
        UpdateWindow();
        return;
    }

    // Selecting: outside the scrolling area the timer scrolls; inside, the range follows.
    CRect rc;
    GetClientRect(&rc);
    const bool bOutside = point.y < GetFixedRowHeight() || point.y >= rc.bottom || point.x < GetFixedColumnWidth() ||
                          point.x >= rc.right;
    if (bOutside && m_nTimerID == 0)
        m_nTimerID = SetTimer(kTimerAutoScroll, 50, NULL);
    CPoint pt(std::max<LONG>(GetFixedColumnWidth(), std::min<LONG>(point.x, rc.right - 1)),
              std::max<LONG>(GetFixedRowHeight(), std::min<LONG>(point.y, rc.bottom - 1)));
    KxUiCellID2 cell = GetCellFromPt(pt, TRUE);
    if (m_nSelectionMode == 2)
        cell.row = std::max(cell.row, GetFixedRowCount());
    if (m_nSelectionMode == 3)
        cell.col = std::max(cell.col, GetFixedColumnCount());
    if (!cell.IsValid() || cell == m_idCurrentCell)
        return;
    OnSelecting(cell);
    if (m_nSelectionMode == 4 || m_nSelectionMode == 3)
        SetFocusCell(cell);
}

void KxUiGridCtrl2::OnTimer(UINT_PTR nIDEvent)
{
    if (nIDEvent != kTimerAutoScroll) {
        CWnd::OnTimer(nIDEvent);
        return;
    }
    if (m_MouseMode < MOUSE_SELECT_ALL || m_MouseMode > MOUSE_SELECT_CELLS) {
        KillTimer(m_nTimerID);
        m_nTimerID = 0;
        return;
    }
    CPoint pt;
    ::GetCursorPos(&pt);
    ScreenToClient(&pt);
    CRect rc;
    GetClientRect(&rc);
    bool bScrolled = false;
    if (pt.y >= rc.bottom) {
        SendMessage(WM_VSCROLL, SB_LINEDOWN, 0);
        bScrolled = true;
    } else if (pt.y < GetFixedRowHeight()) {
        SendMessage(WM_VSCROLL, SB_LINEUP, 0);
        bScrolled = true;
    }
    if (pt.x >= rc.right) {
        SendMessage(WM_HSCROLL, SB_LINERIGHT, 0);
        bScrolled = true;
    } else if (pt.x < GetFixedColumnWidth()) {
        SendMessage(WM_HSCROLL, SB_LINELEFT, 0);
        bScrolled = true;
    }
    if (!bScrolled) {
        KillTimer(m_nTimerID);
        m_nTimerID = 0;
        return;
    }
    OnMouseMove(MK_LBUTTON, pt);
}

void KxUiGridCtrl2::OnLButtonUp(UINT nFlags, CPoint point)
{
    CWnd::OnLButtonUp(nFlags, point);
    const MouseMode mode = m_MouseMode;
    m_MouseMode = MOUSE_NOTHING;
    if (m_nTimerID != 0) {
        KillTimer(m_nTimerID);
        m_nTimerID = 0;
    }
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();

    if (mode == MOUSE_SIZING_COL || mode == MOUSE_SIZING_ROW) {
        ResetScrollBars();
        Invalidate(FALSE);
        return;
    }
    const KxUiCellID2 down = m_LeftClickDownCell;
    m_LeftClickDownCell = KxUiCellID2();
    if (!down.IsValid())
        return;
    if (mode == MOUSE_PREPARE_SORT) {
        if (GetCellFromPt(point, TRUE) == down) {
            const BOOL bAscending = down.col == m_nSortColumn ? !m_bAscending : TRUE;
            SortItems(down.col, bAscending);
        }
    } else if (mode != MOUSE_NOTHING) {
        SendMessageToParent(m_idCurrentCell.row, m_idCurrentCell.col, GVN_SELCHANGED);
    }
    if (KxUiGridCellBase2* pCell = GetCell(down.row, down.col)) {
        CRect rc;
        GetCellRect(down.row, down.col, &rc);
        pCell->OnClick(CPoint(point.x - rc.left, point.y - rc.top));
    }
    SendMessageToParent(down.row, down.col, GVN_CLICK);
}

void KxUiGridCtrl2::OnLButtonDblClk(UINT nFlags, CPoint point)
{
    CWnd::OnLButtonDblClk(nFlags, point);
    const int nDivider = m_bAllowColumnResize ? ColumnDividerAt(point) : -1;
    if (nDivider >= 0) {
        AutoSizeColumn(nDivider);
        return;
    }
    const int nRowDivider = m_bAllowRowResize ? RowDividerAt(point) : -1;
    if (nRowDivider >= 0) {
        AutoSizeRow(nRowDivider);
        return;
    }
    const KxUiCellID2 cell = GetCellFromPt(point, TRUE);
    KxUiGridCellBase2* pCell = cell.IsValid() ? GetCell(cell.row, cell.col) : NULL;
    if (pCell == NULL)
        return;
    m_LeftClickDownCell = KxUiCellID2();   // the release that follows is not a click
    SendMessageToParent(cell.row, cell.col, GVN_DBLCLK);
    CRect rc;
    GetCellRect(cell.row, cell.col, &rc);
    if (KxUiGridCellBase2* p = GetCell(cell.row, cell.col))
        p->OnDblClick(CPoint(point.x - rc.left, point.y - rc.top));
    if (IsCellEditable(cell.row, cell.col))
        OnEditCell(cell.row, cell.col, point, VK_LBUTTON);
}

void KxUiGridCtrl2::OnRButtonDown(UINT nFlags, CPoint point)
{
    CWnd::OnRButtonDown(nFlags, point);
    const KxUiCellID2 cell = GetCellFromPt(point, TRUE);
    KxUiGridCellBase2* pCell = cell.IsValid() ? GetCell(cell.row, cell.col) : NULL;
    if (pCell == NULL)
        return;
    CRect rc;
    GetCellRect(cell.row, cell.col, &rc);
    pCell->OnRClick(CPoint(point.x - rc.left, point.y - rc.top));
}

void KxUiGridCtrl2::OnCaptureChanged(CWnd* pWnd)
{
    if (pWnd != this && m_MouseMode != MOUSE_NOTHING) {
        m_MouseMode = MOUSE_NOTHING;
        if (m_nTimerID != 0) {
            KillTimer(m_nTimerID);
            m_nTimerID = 0;
        }
    }
    CWnd::OnCaptureChanged(pWnd);
}

// ---------------------------------------------------------------------------------------------
// Auto-sizing

BOOL KxUiGridCtrl2::AutoSizeColumn(int nCol)
{
    if (nCol < 0 || nCol >= GetColumnCount())
        return FALSE;
    CClientDC dc(GetSafeHwnd() ? this : NULL);
    int width = 0;
    auto measure = [&](int r) {
        if (KxUiGridCellBase2* pCell = GetCell(r, nCol))
            width = std::max(width, static_cast<int>(pCell->GetCellExtent(&dc).cx));
    };
    // A virtual grid measures what is on screen; a stored one every row.
    for (int r = 0; r < GetFixedRowCount(); ++r)
        measure(r);
    if (m_bVirtualMode) {
        const KxUiCellRange2 vis = GetSafeHwnd() ? GetVisibleNonFixedCellRange() : KxUiCellRange2();
        for (int r = vis.GetMinRow(); vis.IsValid() && r <= vis.GetMaxRow(); ++r)
            measure(r);
    } else {
        for (int r = GetFixedRowCount(); r < GetRowCount(); ++r)
            measure(r);
    }
    return SetColumnWidth(nCol, width);
}

BOOL KxUiGridCtrl2::AutoSizeRow(int nRow)
{
    if (nRow < 0 || nRow >= GetRowCount())
        return FALSE;
    CClientDC dc(GetSafeHwnd() ? this : NULL);
    int height = 0;
    for (int c = 0; c < GetColumnCount(); ++c)
        if (KxUiGridCellBase2* pCell = GetCell(nRow, c))
            height = std::max(height, static_cast<int>(pCell->GetCellExtent(&dc).cy));
    return SetRowHeight(nRow, height);
}

void KxUiGridCtrl2::AutoSizeColumns()
{
    for (int c = 0; c < GetColumnCount(); ++c)
        AutoSizeColumn(c);
}

void KxUiGridCtrl2::AutoSizeRows()
{
    if (m_bVirtualMode)
        return;   // one height per visible row would defeat the uniform virtual rows
    for (int r = 0; r < GetRowCount(); ++r)
        AutoSizeRow(r);
}

void KxUiGridCtrl2::AutoSize()
{
    AutoSizeColumns();
    AutoSizeRows();
}
