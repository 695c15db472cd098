#include "KxUiGalleryFrame.h"
#include "KxUiGalleryPage.h"
#include "KxUiGalleryRes.h"
#include "KxUiVersion.h"
#include "KxUiWindowBinary.h"

namespace {

const int kListWidth = 190;
const int kGap = 6;
const UINT kIndicators[] = {ID_SEPARATOR};
const wchar_t kSection[] = L"Gallery";
const wchar_t kPageEntry[] = L"Page";

}  // namespace

const CSize CGalleryFrame::kMinSize(720, 480);

IMPLEMENT_DYNAMIC(CGalleryFrame, CFrameWnd)

BEGIN_MESSAGE_MAP(CGalleryFrame, CFrameWnd)
    ON_WM_CREATE()
    ON_WM_DESTROY()
    ON_LBN_SELCHANGE(IDC_PAGELIST, OnSelectPage)
    ON_COMMAND(ID_VIEW_NEXTPAGE, OnNextPage)
    ON_COMMAND(ID_VIEW_PREVPAGE, OnPrevPage)
    ON_UPDATE_COMMAND_UI(ID_VIEW_NEXTPAGE, OnUpdateNextPage)
    ON_UPDATE_COMMAND_UI(ID_VIEW_PREVPAGE, OnUpdatePrevPage)
    ON_COMMAND(ID_HELP_ABOUT, OnAbout)
    ON_WM_GETMINMAXINFO()
    ON_COMMAND(ID_FILE_EXIT, OnExit)
    ON_MESSAGE(WM_SETMESSAGESTRING, &CGalleryFrame::OnSetMessageString)
END_MESSAGE_MAP()

CGalleryFrame::CGalleryFrame() : m_nCurrent(-1), m_bRestore(true) {}

CGalleryFrame::~CGalleryFrame() = default;

BOOL CGalleryFrame::CreateGallery(const CRect& rect, bool bRestore)
{
    m_bRestore = bRestore;
    if (!Create(nullptr, L"KxUi Gallery", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, rect, nullptr,
                MAKEINTRESOURCEW(IDR_GALLERY)))
        return FALSE;
    // Ctrl+PgDn / Ctrl+PgUp work wherever the focus is: the pages pass key strokes to the
    // frame's accelerators before their own dialog navigation.
    LoadAccelTable(MAKEINTRESOURCEW(IDR_GALLERY));
    return TRUE;
}

int CGalleryFrame::OnCreate(LPCREATESTRUCT lpCreateStruct)
{
    if (CFrameWnd::OnCreate(lpCreateStruct) == -1)
        return -1;
    if (!m_status.Create(this) || !m_status.SetIndicators(kIndicators, 1))
        return -1;
    if (!m_list.Create(WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
                       CRect(0, 0, kListWidth, 100), this, IDC_PAGELIST))
        return -1;
    m_list.ModifyStyleEx(0, WS_EX_CLIENTEDGE, SWP_FRAMECHANGED);
    m_list.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    for (const CGalleryPageEntry& entry : GalleryPages()) {
        std::unique_ptr<CGalleryPage> page(entry.create());
        m_list.AddString(page->GetTitle());
    }
    m_pages.resize(GalleryPages().size());
    // The frame's placement comes back from the profile, and is saved when it closes.
    m_persist.Attach(this);
    if (m_bRestore)
        m_persist.addArchive(this, new KxUiWindowPlacementBinary);
    return 0;
}

void CGalleryFrame::OnDestroy()
{
    if (m_bRestore && m_nCurrent >= 0)
        AfxGetApp()->WriteProfileInt(kSection, kPageEntry, m_nCurrent);
    // Each page saves its state in the profile as its window goes.
    for (auto& page : m_pages)
        if (page && page->GetSafeHwnd()) {
            if (m_bRestore)
                page->SaveState();
            page->DestroyWindow();
        }
    CFrameWnd::OnDestroy();
}

int CGalleryFrame::GetPageCount() const
{
    return static_cast<int>(GalleryPages().size());
}

CGalleryPage* CGalleryFrame::GetPage() const
{
    return m_nCurrent >= 0 && m_nCurrent < static_cast<int>(m_pages.size()) ? m_pages[m_nCurrent].get() : nullptr;
}

CRect CGalleryFrame::PageRect() const
{
    CRect client;
    GetClientRect(&client);
    if (m_status.GetSafeHwnd() && m_status.IsWindowVisible()) {
        CRect bar;
        m_status.GetWindowRect(&bar);
        client.bottom -= bar.Height();
    }
    client.left += kListWidth + kGap;
    return client;
}

void CGalleryFrame::RecalcLayout(BOOL bNotify)
{
    CFrameWnd::RecalcLayout(bNotify);
    if (!m_list.GetSafeHwnd())
        return;
    const CRect page = PageRect();
    m_list.MoveWindow(0, page.top, kListWidth, page.Height());
    // Hidden pages follow too, so a page shown again is laid out for the current size.
    for (auto& p : m_pages)
        if (p && p->GetSafeHwnd())
            p->MoveWindow(page);
}

bool CGalleryFrame::ShowPage(int nIndex)
{
    if (nIndex < 0 || nIndex >= GetPageCount())
        return false;
    if (nIndex == m_nCurrent && GetPage())
        return true;
    std::unique_ptr<CGalleryPage>& slot = m_pages[static_cast<size_t>(nIndex)];
    if (!slot) {
        slot.reset(GalleryPages()[static_cast<size_t>(nIndex)].create());
        if (!slot->CreatePage(this, PageRect(), IDC_PAGE)) {
            slot.reset();
            return false;
        }
    }
    if (CGalleryPage* old = GetPage())
        old->ShowWindow(SW_HIDE);
    m_nCurrent = nIndex;
    slot->MoveWindow(PageRect());
    slot->ShowWindow(SW_SHOW);
    m_list.SetCurSel(nIndex);
    CString title;
    title.Format(L"KxUi Gallery - %s", slot->GetTitle());
    SetWindowText(title);
    SetMessageText(slot->GetStatusText());
    return true;
}

BOOL CGalleryFrame::PreTranslateMessage(MSG* pMsg)
{
    // Tab and Shift+Tab from the page list move into the page, to its first (or last) control,
    // selecting an edit's text as dialog navigation does.
    if (pMsg->message == WM_KEYDOWN && pMsg->wParam == VK_TAB && pMsg->hwnd == m_list.GetSafeHwnd() &&
        !(GetKeyState(VK_CONTROL) & 0x8000)) {
        if (CGalleryPage* page = GetPage()) {
            const BOOL bBack = (GetKeyState(VK_SHIFT) & 0x8000) != 0;
            if (CWnd* target = page->GetNextDlgTabItem(nullptr, bBack)) {
                page->GotoDlgCtrl(target);
                return TRUE;
            }
        }
    }
    return CFrameWnd::PreTranslateMessage(pMsg);
}

void CGalleryFrame::OnSelectPage()
{
    ShowPage(m_list.GetCurSel());
}

void CGalleryFrame::OnNextPage()
{
    ShowPage(m_nCurrent + 1);
}

void CGalleryFrame::OnPrevPage()
{
    ShowPage(m_nCurrent - 1);
}

void CGalleryFrame::OnUpdateNextPage(CCmdUI* pCmdUI)
{
    pCmdUI->Enable(m_nCurrent + 1 < GetPageCount());
}

void CGalleryFrame::OnUpdatePrevPage(CCmdUI* pCmdUI)
{
    pCmdUI->Enable(m_nCurrent > 0);
}

void CGalleryFrame::OnAbout()
{
    const DWORD v = KxUiGetVersion();
    CString text;
    text.Format(L"KxUi Gallery\nKxUi library version %u.%u.%u\n\nOne page for each capability of the KxUi library.",
                (v >> 24) & 0xFF, (v >> 16) & 0xFF, v & 0xFFFF);
    AfxMessageBox(text, MB_ICONINFORMATION);
}

void CGalleryFrame::OnGetMinMaxInfo(MINMAXINFO* lpMMI)
{
    CFrameWnd::OnGetMinMaxInfo(lpMMI);
    lpMMI->ptMinTrackSize.x = kMinSize.cx;
    lpMMI->ptMinTrackSize.y = kMinSize.cy;
}

// The idle message of the status bar is the shown page's description.
LRESULT CGalleryFrame::OnSetMessageString(WPARAM wParam, LPARAM lParam)
{
    if (lParam == 0 && wParam == AFX_IDS_IDLEMESSAGE && GetPage()) {
        const CString text = GetPage()->GetStatusText();
        return CFrameWnd::OnSetMessageString(0, reinterpret_cast<LPARAM>(static_cast<LPCWSTR>(text)));
    }
    return CFrameWnd::OnSetMessageString(wParam, lParam);
}

void CGalleryFrame::OnExit()
{
    PostMessage(WM_CLOSE);
}
