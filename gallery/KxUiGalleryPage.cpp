#include "KxUiGalleryPage.h"
#include <algorithm>

std::vector<CGalleryPageEntry>& GalleryPages()
{
    static std::vector<CGalleryPageEntry> pages;
    return pages;
}

CGalleryPageRegistrar::CGalleryPageRegistrar(int order, CGalleryPageFactory create)
{
    auto& pages = GalleryPages();
    pages.push_back({order, create});
    std::sort(pages.begin(), pages.end(),
              [](const CGalleryPageEntry& a, const CGalleryPageEntry& b) { return a.order < b.order; });
}

IMPLEMENT_DYNAMIC(CGalleryPage, CDialog)

CGalleryPage::~CGalleryPage()
{
    if (GetSafeHwnd())
        DestroyWindow();
}

namespace {

// An empty child dialog template in the system's dialog font; the page adds its controls in
// code. The template is a DLGTEMPLATE followed by empty menu, class and title arrays, the
// point size and the typeface.
std::vector<WORD> ChildDialogTemplate()
{
    std::vector<WORD> t(sizeof(DLGTEMPLATE) / sizeof(WORD), 0);
    auto* dt = reinterpret_cast<DLGTEMPLATE*>(t.data());
    dt->style = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | DS_CONTROL | DS_SETFONT;
    dt->dwExtendedStyle = WS_EX_CONTROLPARENT;
    dt->cdit = 0;
    t.push_back(0);  // no menu
    t.push_back(0);  // default class
    t.push_back(0);  // no title
    t.push_back(8);  // point size
    for (const wchar_t* f = L"MS Shell Dlg"; *f; ++f)
        t.push_back(static_cast<WORD>(*f));
    t.push_back(0);
    return t;
}

}  // namespace

BOOL CGalleryPage::CreatePage(CWnd* pParent, const CRect& rect, UINT nId)
{
    const std::vector<WORD> tmpl = ChildDialogTemplate();
    m_rectInitial = rect;
    if (!CreateIndirect(reinterpret_cast<LPCDLGTEMPLATE>(tmpl.data()), pParent))
        return FALSE;
    SetDlgCtrlID(static_cast<int>(nId));
    return TRUE;
}

BOOL CGalleryPage::OnInitDialog()
{
    CDialog::OnInitDialog();
    // The children are built for the page's real size, so that their constraints keep it.
    MoveWindow(m_rectInitial);
    BuildPage();
    return TRUE;
}

void CGalleryPage::ApplyFont(CWnd* pWnd)
{
    pWnd->SendMessage(WM_SETFONT, SendMessage(WM_GETFONT), FALSE);
}

CWnd* CGalleryPage::AddControl(LPCWSTR className, LPCWSTR text, DWORD style, const CRect& rect, UINT nId,
                               DWORD exStyle)
{
    auto* pWnd = new CWnd;
    m_owned.emplace_back(pWnd);
    if (!pWnd->CreateEx(exStyle, className, text, style | WS_CHILD | WS_VISIBLE, rect, this, nId))
        return pWnd;
    ApplyFont(pWnd);
    return pWnd;
}
