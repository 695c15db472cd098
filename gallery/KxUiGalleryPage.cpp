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

BOOL CreateChildDialog(CDialog& dlg, CWnd* pParent, const CRect& rect, UINT nId)
{
    const std::vector<WORD> tmpl = ChildDialogTemplate();
    if (!dlg.CreateIndirect(reinterpret_cast<LPCDLGTEMPLATE>(tmpl.data()), pParent))
        return FALSE;
    dlg.SetDlgCtrlID(static_cast<int>(nId));
    dlg.MoveWindow(rect);
    return TRUE;
}

BOOL CGalleryPage::CreatePage(CWnd* pParent, const CRect& rect, UINT nId)
{
    m_rectInitial = rect;
    return CreateChildDialog(*this, pParent, rect, nId);
}

BOOL CGalleryPage::OnInitDialog()
{
    CDialog::OnInitDialog();
    // The children are built for the page's real size, so that their constraints keep it.
    MoveWindow(m_rectInitial);
    BuildPage();
    RestoreState();
    return TRUE;
}

namespace {

// The fields whose text the page keeps: edit controls the user can type in, named by their
// control id, prefixed with the id of the panel that holds them when they sit in one.
struct SavedField {
    HWND hWnd;
    CString name;
};

std::vector<SavedField> EditableFields(HWND hPage)
{
    std::vector<SavedField> fields;
    std::vector<HWND> all;
    ::EnumChildWindows(hPage, [](HWND h, LPARAM lp) -> BOOL {
        reinterpret_cast<std::vector<HWND>*>(lp)->push_back(h);
        return TRUE;
    }, reinterpret_cast<LPARAM>(&all));
    for (HWND h : all) {
        wchar_t cls[16] = {};
        ::GetClassNameW(h, cls, 16);
        const LONG style = ::GetWindowLongW(h, GWL_STYLE);
        const int id = ::GetDlgCtrlID(h);
        if (_wcsicmp(cls, L"Edit") != 0 || (style & (ES_READONLY | ES_PASSWORD)) || id <= 0)
            continue;
        // An edit inside a combo box belongs to the combo, which keeps its own state.
        HWND parent = ::GetParent(h);
        wchar_t parentCls[16] = {};
        ::GetClassNameW(parent, parentCls, 16);
        if (_wcsicmp(parentCls, L"ComboBox") == 0)
            continue;
        CString name;
        if (parent != hPage)
            name.Format(L"Field%d.%d", ::GetDlgCtrlID(parent), id);
        else
            name.Format(L"Field%d", id);
        fields.push_back({h, name});
    }
    return fields;
}

CString StateSection(const CGalleryPage& page)
{
    return CString(L"Gallery\\") + page.GetSlug();
}

}  // namespace

void CGalleryPage::SaveState()
{
    CWinApp* app = AfxGetApp();
    if (!app || !GetSafeHwnd())
        return;
    const CString section = StateSection(*this);
    for (const SavedField& f : EditableFields(m_hWnd)) {
        // A profile string is no place for a document; very long texts are not kept.
        if (::GetWindowTextLengthW(f.hWnd) > 4096)
            continue;
        CString text;
        CWnd::FromHandle(f.hWnd)->GetWindowText(text);
        app->WriteProfileString(section, f.name, text);
    }
}

void CGalleryPage::RestoreState()
{
    CWinApp* app = AfxGetApp();
    if (!app)
        return;
    const CString section = StateSection(*this);
    // A marker that can never be a saved text tells "never saved" from "saved empty".
    const wchar_t kUnset[] = L"\x01";
    for (const SavedField& f : EditableFields(m_hWnd)) {
        const CString text = app->GetProfileString(section, f.name, kUnset);
        if (text != kUnset)
            CWnd::FromHandle(f.hWnd)->SetWindowText(text);
    }
}

BOOL CGalleryPage::PreTranslateMessage(MSG* pMsg)
{
    for (CFrameWnd* frame = GetParentFrame(); frame != nullptr; frame = frame->GetParentFrame())
        if (frame->PreTranslateMessage(pMsg))
            return TRUE;
    return CDialog::PreTranslateMessage(pMsg);
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
