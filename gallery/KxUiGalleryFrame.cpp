#include "KxUiGalleryFrame.h"
#include "KxUiGalleryPage.h"
#include "KxUiGalleryRes.h"
#include "KxUiWindowBinary.h"

namespace {

const int kListWidth = 190;
const int kGap = 6;
const UINT kIndicators[] = {ID_SEPARATOR};
const wchar_t kSection[] = L"Gallery";
const wchar_t kPageEntry[] = L"Page";

}  // namespace

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
    ON_COMMAND(ID_FILE_EXIT, OnExit)
    ON_MESSAGE(WM_SETMESSAGESTRING, &CGalleryFrame::OnSetMessageString)
END_MESSAGE_MAP()

CGalleryFrame::CGalleryFrame() : m_nCurrent(-1), m_bRestore(true) {}

CGalleryFrame::~CGalleryFrame() = default;

BOOL CGalleryFrame::CreateGallery(const CRect& rect, bool bRestore)
{
    m_bRestore = bRestore;
    return Create(nullptr, L"KxUi Gallery", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, rect, nullptr,
                  MAKEINTRESOURCEW(IDR_GALLERY));
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
    if (m_pPage && m_pPage->GetSafeHwnd())
        m_pPage->DestroyWindow();
    CFrameWnd::OnDestroy();
}

int CGalleryFrame::GetPageCount() const
{
    return static_cast<int>(GalleryPages().size());
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
    if (m_pPage && m_pPage->GetSafeHwnd())
        m_pPage->MoveWindow(page);
}

bool CGalleryFrame::ShowPage(int nIndex)
{
    if (nIndex < 0 || nIndex >= GetPageCount())
        return false;
    if (nIndex == m_nCurrent && m_pPage)
        return true;
    if (m_pPage && m_pPage->GetSafeHwnd())
        m_pPage->DestroyWindow();
    m_pPage.reset(GalleryPages()[static_cast<size_t>(nIndex)].create());
    m_nCurrent = nIndex;
    if (!m_pPage->CreatePage(this, PageRect(), IDC_PAGE)) {
        m_pPage.reset();
        return false;
    }
    m_pPage->ShowWindow(SW_SHOW);
    m_list.SetCurSel(nIndex);
    CString title;
    title.Format(L"KxUi Gallery - %s", m_pPage->GetTitle());
    SetWindowText(title);
    SetMessageText(m_pPage->GetStatusText());
    return true;
}

BOOL CGalleryFrame::PreTranslateMessage(MSG* pMsg)
{
    if (pMsg->message == WM_KEYDOWN && (GetKeyState(VK_CONTROL) & 0x8000)) {
        if (pMsg->wParam == VK_NEXT) {
            OnNextPage();
            return TRUE;
        }
        if (pMsg->wParam == VK_PRIOR) {
            OnPrevPage();
            return TRUE;
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
    AfxMessageBox(L"KxUi Gallery\n\nOne page for each capability of the KxUi library.", MB_ICONINFORMATION);
}

// The idle message of the status bar is the shown page's description.
LRESULT CGalleryFrame::OnSetMessageString(WPARAM wParam, LPARAM lParam)
{
    if (lParam == 0 && wParam == AFX_IDS_IDLEMESSAGE && m_pPage) {
        const CString text = m_pPage->GetStatusText();
        return CFrameWnd::OnSetMessageString(0, reinterpret_cast<LPARAM>(static_cast<LPCWSTR>(text)));
    }
    return CFrameWnd::OnSetMessageString(wParam, lParam);
}

void CGalleryFrame::OnExit()
{
    PostMessage(WM_CLOSE);
}
