// KxUiListCtrlLog: rows appended line by line, system icons, a column that only widens,
// selection to the clipboard, cut and delete.
#include "KxUiListCtrlLog.h"

IMPLEMENT_DYNAMIC(KxUiListCtrlLog, CListCtrl)

BEGIN_MESSAGE_MAP(KxUiListCtrlLog, CListCtrl)
    ON_WM_CREATE()
    ON_WM_CONTEXTMENU()
    ON_NOTIFY_REFLECT(LVN_INSERTITEM, &KxUiListCtrlLog::OnInsertitem)
    ON_NOTIFY_REFLECT(LVN_DELETEITEM, &KxUiListCtrlLog::OnDeleteitem)
    ON_WM_SIZE()
END_MESSAGE_MAP()

namespace {

// The system icons of the image list, in image-index order.
const ULONG_PTR kIconIds[] = {
    32512,  // IDI_APPLICATION
    32513,  // IDI_HAND (error)
    32514,  // IDI_QUESTION
    32515,  // IDI_EXCLAMATION (warning)
    32516,  // IDI_ASTERISK (information)
};
const int kErrorIcon = 1;

}  // namespace

KxUiListCtrlLog::KxUiListCtrlLog() : m_bSetUpPending(false) {}

KxUiListCtrlLog::~KxUiListCtrlLog()
{
    // The list view still refers to the image list: the window goes first.
    if (m_hWnd != nullptr)
        DestroyWindow();
}

void KxUiListCtrlLog::PreSubclassWindow()
{
    // A window being created gets here before the list view has initialised itself (its
    // WM_NCCREATE is still to come) and would ignore every message: the set-up then
    // waits for WM_CREATE. A list view that exists keeps the extended style it is given.
    SetExtendedStyle(LVS_EX_FULLROWSELECT);
    if ((GetExtendedStyle() & LVS_EX_FULLROWSELECT) == 0) {
        m_bSetUpPending = true;
        CListCtrl::PreSubclassWindow();
        return;
    }
    SetUpList(true);
}

int KxUiListCtrlLog::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (CListCtrl::OnCreate(lpCreateStruct) == -1)
        return -1;
    if (m_bSetUpPending) {
        m_bSetUpPending = false;
        SetUpList(false);
    }
    return 0;
}

void KxUiListCtrlLog::SetUpList(bool bSubclassing)
{
    SetExtendedStyle(LVS_EX_FULLROWSELECT);
    initImageList();
    if (bSubclassing)
        CListCtrl::PreSubclassWindow();
    InsertColumn(0, L"", LVCFMT_LEFT, -1, -1);
    setColumnWidth(-1);
}

void KxUiListCtrlLog::initImageList()
{
    if (m_imageList.GetSafeHandle() == nullptr) {
        if (!m_imageList.Create(::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON),
                                ILC_COLOR32 | ILC_MASK, 1, 0))
            return;
        for (ULONG_PTR id : kIconIds)
            m_imageList.Add(::LoadIconW(nullptr, MAKEINTRESOURCEW(id)));
    }
    if (m_hWnd != nullptr)
        SetImageList(&m_imageList, LVSIL_SMALL);
}

int KxUiListCtrlLog::getIndiceOfIconInImageList(const wchar_t* icon)
{
    const auto id = reinterpret_cast<ULONG_PTR>(icon);
    for (int i = 0; i < static_cast<int>(sizeof(kIconIds) / sizeof(kIconIds[0])); ++i) {
        if (kIconIds[i] == id)
            return i;
    }
    // Unknown identifiers show as errors: a message with an icon nobody recognises is
    // better flagged than hidden.
    return kErrorIcon;
}

void KxUiListCtrlLog::getAllLigne(const wchar_t* text, CStringArray& lines)
{
    // Lines end at each line feed. A carriage return before it stays with its line, two
    // line feeds in a row give an empty line, a final line feed gives no empty last line
    // and an empty text no line at all. The text is scanned once, so that a message of
    // many lines costs no more than its length.
    lines.RemoveAll();
    if (text == nullptr)
        return;
    const wchar_t* start = text;
    while (*start != L'\0') {
        const wchar_t* end = wcschr(start, L'\n');
        if (end == nullptr) {
            lines.Add(CString(start));
            break;
        }
        lines.Add(CString(start, static_cast<int>(end - start)));
        start = end + 1;
    }
}

void KxUiListCtrlLog::putMessageInLog(const wchar_t* text)
{
    putMessageInLog(text, nullptr);
}

void KxUiListCtrlLog::putMessageInLog(const wchar_t* text, const wchar_t* icon)
{
    CStringArray lines;
    getAllLigne(text, lines);
    for (INT_PTR i = 0; i < lines.GetSize(); ++i)
        addMessageInLog(lines[i], icon);
}

void KxUiListCtrlLog::addMessageInLog(const wchar_t* line)
{
    addMessageInLog(line, nullptr);
}

void KxUiListCtrlLog::addMessageInLog(const wchar_t* line, const wchar_t* icon)
{
    if (m_hWnd == nullptr)
        return;
    if (line == nullptr)
        line = L"";
    LVITEMW item = {};
    item.mask = icon != nullptr ? LVIF_TEXT | LVIF_IMAGE : LVIF_TEXT;
    item.iItem = GetItemCount();
    item.iSubItem = 0;
    item.pszText = const_cast<LPWSTR>(line);
    item.cchTextMax = static_cast<int>(wcslen(line));
    item.iImage = icon != nullptr ? getIndiceOfIconInImageList(icon) : 0;
    InsertItem(&item);
    // The newest row is always in view.
    EnsureVisible(GetItemCount() - 1, FALSE);
    ::InvalidateRect(m_hWnd, nullptr, TRUE);
}

int KxUiListCtrlLog::getWidthOf(const wchar_t* text)
{
    if (m_hWnd == nullptr || text == nullptr)
        return 0;
    // Measured in the paint context's own font (the control's font is not selected), so a
    // line is measured as the platform's default font sets it.
    try {
        CPaintDC dc(this);
        SIZE size = {};
        ::GetTextExtentPoint32W(dc.m_hDC, text, static_cast<int>(wcslen(text)), &size);
        return size.cx;
    } catch (CException* e) {
        e->Delete();
        return 0;
    }
}

void KxUiListCtrlLog::setColumnWidth(int width)
{
    if (m_hWnd == nullptr)
        return;
    CHeaderCtrl* header = GetHeaderCtrl();
    if (header == nullptr || header->GetItemCount() <= 0)
        return;
    LVCOLUMNW column = {};
    GetColumn(0, &column);
    column.mask |= LVCF_WIDTH;
    if (width == -1) {
        CRect client;
        GetClientRect(&client);
        width = client.Width();
    }
    // Both the client width and a measured text lose 2 pixels: a column widened for a
    // line ends just short of it, which the log has always done and users' layouts expect.
    column.cx = width - 2;
    SetColumn(0, &column);
}

void KxUiListCtrlLog::OnInsertitem(NMHDR* pNMHDR, LRESULT* pResult)
{
    const auto* nm = reinterpret_cast<const NMLISTVIEW*>(pNMHDR);
    const CString text = GetItemText(nm->iItem, nm->iSubItem);
    const int textWidth = getWidthOf(text);
    if (textWidth > GetColumnWidth(nm->iSubItem))
        setColumnWidth(textWidth);
    *pResult = 0;
}

void KxUiListCtrlLog::OnDeleteitem(NMHDR*, LRESULT* pResult)
{
    *pResult = 0;
}

void KxUiListCtrlLog::OnSize(UINT nType, int cx, int cy)
{
    CListCtrl::OnSize(nType, cx, cy);
}

void KxUiListCtrlLog::selectAll()
{
    if (m_hWnd == nullptr)
        return;
    const int count = GetItemCount();
    for (int i = 0; i < count; ++i)
        SetItemState(i, LVIS_SELECTED, LVIS_SELECTED);
}

CString KxUiListCtrlLog::getStringForClipBoard()
{
    CString text;
    if (m_hWnd == nullptr)
        return text;
    for (int i = GetNextItem(-1, LVNI_SELECTED); i != -1; i = GetNextItem(i, LVNI_SELECTED)) {
        text += GetItemText(i, 0);
        text += L'\n';
    }
    return text;
}

void KxUiListCtrlLog::copy()
{
    if (m_hWnd == nullptr)
        return;
    const CString text = getStringForClipBoard();
    if (!::OpenClipboard(m_hWnd))
        return;
    ::EmptyClipboard();
    // The log has always published its UTF-16 text under format 1 (CF_TEXT) in a block of
    // (length + 2) bytes, and the applications reading it rely on exactly that block; both
    // rules are kept. Such a block holds only the first (length + 2) / 2 - 1 characters and
    // their terminator, so the copy is bounded by the block instead of running past it.
    const SIZE_T bytes = static_cast<SIZE_T>(text.GetLength()) + 2;
    HGLOBAL block = ::GlobalAlloc(GMEM_DDESHARE, bytes);
    if (block != nullptr) {
        auto* dst = static_cast<wchar_t*>(::GlobalLock(block));
        if (dst != nullptr) {
            ::lstrcpynW(dst, text, static_cast<int>(bytes / sizeof(wchar_t)));
            ::GlobalUnlock(block);
            if (::SetClipboardData(CF_TEXT, block) == nullptr)
                ::GlobalFree(block);
        } else {
            ::GlobalFree(block);
        }
    }
    ::CloseClipboard();
}

void KxUiListCtrlLog::suppression()
{
    if (m_hWnd == nullptr)
        return;
    CArray<int, int> selected;
    for (int i = GetNextItem(-1, LVNI_SELECTED); i != -1; i = GetNextItem(i, LVNI_SELECTED))
        selected.Add(i);
    // From the last to the first, so the indexes still to delete stay valid.
    for (INT_PTR i = selected.GetSize() - 1; i >= 0; --i)
        DeleteItem(selected[i]);
}

void KxUiListCtrlLog::cut()
{
    copy();
    suppression();
}

void KxUiListCtrlLog::OnContextMenu(CWnd*, CPoint point)
{
    // From the keyboard the point is (-1, -1); the menu is shown there as it is.
    PopupMenu(&point);
}

void KxUiListCtrlLog::PopupMenu(CPoint* point)
{
    CWnd* parent = GetParent();
    if (parent == nullptr || point == nullptr)
        return;
    HMENU menu = ::GetMenu(parent->m_hWnd);
    if (menu == nullptr)
        return;
    HMENU popup = ::GetSubMenu(menu, 0);
    if (popup == nullptr)
        return;
    // The parent owns the menu: its commands go to the parent.
    ::TrackPopupMenu(popup, TPM_RIGHTBUTTON, point->x, point->y, 0, parent->m_hWnd, nullptr);
}
