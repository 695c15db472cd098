// Bitmap menus and hyperlink actions. A menu bar of three buttons opens owner-drawn menus with
// images (a small icon set drawn here), hot images while an item is highlighted, the check
// mark of checked items, and, on request, only the recently used commands with the chevron
// that shows the rest. The same menus serve a real frame window with the organizer attached.
// Beside them, four hyperlink actions.
#include "KxUiGalleryPage.h"
#include "KxUiBitmapMenuOrganizer.h"
#include "KxUiBitmapMenuPopupWnd.h"
#include "KxUiHyperLinkAction.h"
#include <afxcmn.h>
#include <algorithm>

namespace {

enum : UINT {
    IDC_MENU_FILE = 2400,
    IDC_MENU_EDIT,
    IDC_MENU_VIEW,
    IDC_RECENT_ONLY,
    IDC_CUSTOMIZE,
    IDC_SHOW_FRAME,
    IDC_CHOSEN,
    IDC_LINKS_LABEL,
    IDC_LINK_OPEN,
    IDC_LINK_MAIL,
    IDC_LINK_EXPLORE,
    IDC_LINK_USER,
    IDC_LINK_RESULT,
    IDC_RECENT_LABEL,
};

enum : UINT {
    ID_DEMO_NEW = 3100,
    ID_DEMO_OPEN,
    ID_DEMO_SAVE,
    ID_DEMO_PRINT,
    ID_DEMO_EXIT,
    ID_DEMO_RECENT1,
    ID_DEMO_RECENT2,
    ID_DEMO_UNDO,
    ID_DEMO_CUT,
    ID_DEMO_COPY,
    ID_DEMO_PASTE,
    ID_DEMO_FIND,
    ID_DEMO_WRAP,
    ID_DEMO_TOOLBAR,
    ID_DEMO_STATUSBAR,
    ID_DEMO_ZOOMIN,
    ID_DEMO_ZOOMOUT,
    ID_DEMO_LAST = ID_DEMO_ZOOMOUT,
};

const UINT WM_DEMO_LINK = WM_APP + 40;

// The icon set, in strip order; each icon is drawn plain and hot.
enum Icon { IconNew, IconOpen, IconSave, IconPrint, IconCut, IconCopy, IconPaste, IconFind, IconZoomIn, IconCount };
const COLORREF kMask = RGB(255, 0, 255);

void Box(HDC dc, int l, int t, int r, int b, COLORREF fill, COLORREF line)
{
    HBRUSH brush = ::CreateSolidBrush(fill);
    HPEN pen = ::CreatePen(PS_SOLID, 1, line);
    HGDIOBJ ob = ::SelectObject(dc, brush), op = ::SelectObject(dc, pen);
    ::Rectangle(dc, l, t, r, b);
    ::SelectObject(dc, ob);
    ::SelectObject(dc, op);
    ::DeleteObject(brush);
    ::DeleteObject(pen);
}

void Line(HDC dc, int x1, int y1, int x2, int y2, COLORREF c, int width = 1)
{
    HPEN pen = ::CreatePen(PS_SOLID, width, c);
    HGDIOBJ op = ::SelectObject(dc, pen);
    ::MoveToEx(dc, x1, y1, nullptr);
    ::LineTo(dc, x2, y2);
    ::SelectObject(dc, op);
    ::DeleteObject(pen);
}

void Ellipse(HDC dc, int l, int t, int r, int b, COLORREF fill, COLORREF line)
{
    HBRUSH brush = fill == kMask ? static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH)) : ::CreateSolidBrush(fill);
    HPEN pen = ::CreatePen(PS_SOLID, 1, line);
    HGDIOBJ ob = ::SelectObject(dc, brush), op = ::SelectObject(dc, pen);
    ::Ellipse(dc, l, t, r, b);
    ::SelectObject(dc, ob);
    ::SelectObject(dc, op);
    if (fill != kMask)
        ::DeleteObject(brush);
    ::DeleteObject(pen);
}

// One 16x16 icon at x; the hot version is brighter and more saturated.
void DrawIcon16(HDC dc, int x, Icon icon, bool hot)
{
    const COLORREF ink = RGB(40, 40, 40);
    switch (icon) {
    case IconNew:  // a page with a folded corner
        Box(dc, x + 3, 1, x + 13, 15, hot ? RGB(230, 245, 255) : RGB(255, 255, 255), ink);
        Line(dc, x + 9, 1, x + 12, 4, ink);
        Line(dc, x + 5, 6, x + 11, 6, hot ? RGB(0, 120, 215) : RGB(150, 150, 150));
        Line(dc, x + 5, 9, x + 11, 9, hot ? RGB(0, 120, 215) : RGB(150, 150, 150));
        break;
    case IconOpen:  // a folder
        Box(dc, x + 1, 3, x + 7, 6, hot ? RGB(255, 200, 40) : RGB(220, 180, 60), ink);
        Box(dc, x + 1, 5, x + 15, 14, hot ? RGB(255, 215, 70) : RGB(235, 200, 90), ink);
        break;
    case IconSave:  // a diskette
        Box(dc, x + 1, 1, x + 15, 15, hot ? RGB(30, 110, 230) : RGB(50, 80, 160), ink);
        Box(dc, x + 4, 1, x + 12, 6, RGB(235, 235, 235), ink);
        Box(dc, x + 4, 9, x + 12, 15, hot ? RGB(200, 230, 255) : RGB(180, 180, 190), ink);
        break;
    case IconPrint:  // a printer with a sheet
        Box(dc, x + 4, 1, x + 12, 7, RGB(255, 255, 255), ink);
        Box(dc, x + 1, 6, x + 15, 12, hot ? RGB(170, 190, 220) : RGB(160, 160, 160), ink);
        Box(dc, x + 4, 10, x + 12, 15, RGB(255, 255, 255), ink);
        break;
    case IconCut:  // scissors
        Ellipse(dc, x + 1, 10, x + 7, 16, kMask, hot ? RGB(200, 30, 30) : ink);
        Ellipse(dc, x + 9, 10, x + 15, 16, kMask, hot ? RGB(200, 30, 30) : ink);
        Line(dc, x + 5, 10, x + 11, 1, RGB(120, 120, 130), 2);
        Line(dc, x + 11, 10, x + 5, 1, RGB(120, 120, 130), 2);
        break;
    case IconCopy:  // two pages
        Box(dc, x + 1, 1, x + 10, 12, RGB(255, 255, 255), ink);
        Box(dc, x + 6, 4, x + 15, 15, hot ? RGB(230, 245, 255) : RGB(255, 255, 255), ink);
        break;
    case IconPaste:  // a clipboard
        Box(dc, x + 2, 2, x + 14, 15, hot ? RGB(200, 140, 70) : RGB(170, 120, 60), ink);
        Box(dc, x + 5, 1, x + 11, 4, RGB(200, 200, 200), ink);
        Box(dc, x + 5, 6, x + 12, 13, RGB(255, 255, 255), ink);
        break;
    case IconFind:  // a magnifier
        Ellipse(dc, x + 1, 1, x + 11, 11, hot ? RGB(200, 235, 255) : RGB(225, 235, 245), ink);
        Line(dc, x + 9, 9, x + 14, 14, hot ? RGB(160, 90, 20) : ink, 3);
        break;
    case IconZoomIn:  // a magnifier with a plus
        Ellipse(dc, x + 1, 1, x + 11, 11, hot ? RGB(200, 235, 255) : RGB(225, 235, 245), ink);
        Line(dc, x + 9, 9, x + 14, 14, hot ? RGB(160, 90, 20) : ink, 3);
        Line(dc, x + 3, 6, x + 9, 6, hot ? RGB(0, 140, 0) : ink);
        Line(dc, x + 6, 3, x + 6, 9, hot ? RGB(0, 140, 0) : ink);
        break;
    default:
        break;
    }
}

// The strip: every icon plain, then every icon hot (index + IconCount).
void DrawIconStrip(CBitmap& strip)
{
    HDC screen = ::GetDC(nullptr);
    strip.Attach(::CreateCompatibleBitmap(screen, 16 * IconCount * 2, 16));
    HDC dc = ::CreateCompatibleDC(screen);
    ::ReleaseDC(nullptr, screen);
    HGDIOBJ old = ::SelectObject(dc, strip.GetSafeHandle());
    RECT all = {0, 0, 16 * IconCount * 2, 16};
    HBRUSH mask = ::CreateSolidBrush(kMask);
    ::FillRect(dc, &all, mask);
    ::DeleteObject(mask);
    for (int i = 0; i < IconCount; ++i) {
        DrawIcon16(dc, 16 * i, static_cast<Icon>(i), false);
        DrawIcon16(dc, 16 * (i + IconCount), static_cast<Icon>(i), true);
    }
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
}

// A frame of its own with the page's menus in its menu bar and the organizer attached.
class CMenuPreviewFrame : public CFrameWnd {
public:
    CMenuPreviewFrame() { m_bAutoMenuEnable = FALSE; }
};

}  // namespace

class CMenusPage : public CGalleryPage {
    DECLARE_DYNAMIC(CMenusPage)

public:
    ~CMenusPage() override
    {
        if (GetSafeHwnd())
            DestroyWindow();
    }
    LPCWSTR GetTitle() const override { return L"Bitmap menus"; }
    LPCWSTR GetSlug() const override { return L"menus"; }
    CString GetStatusText() const override
    {
        return L"Owner-drawn menus with images, hot images and recently used commands; hyperlink actions.";
    }

    void Animate() override
    {
        // The File menu open with Open... highlighted (its hot image) and Save checked.
        ShowMenu(0);
        const CRect item = m_popup.GetItemRect(1);
        m_popup.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(item.CenterPoint().x, item.CenterPoint().y));
        m_popup.UpdateWindow();
    }

protected:
    void BuildPage() override
    {
        BuildMenus();
        DrawIconStrip(m_strip);
        const struct {
            UINT id;
            Icon icon;
        } images[] = {
            {ID_DEMO_NEW, IconNew},   {ID_DEMO_OPEN, IconOpen},   {ID_DEMO_SAVE, IconSave},
            {ID_DEMO_PRINT, IconPrint}, {ID_DEMO_CUT, IconCut},   {ID_DEMO_COPY, IconCopy},
            {ID_DEMO_PASTE, IconPaste}, {ID_DEMO_FIND, IconFind}, {ID_DEMO_ZOOMIN, IconZoomIn},
        };
        for (const auto& image : images)
            m_organizer.SetMenuImage(image.id, &m_strip, kMask, image.icon, image.icon + IconCount);
        // Commands used so far in this made-up session.
        for (UINT id : {ID_DEMO_NEW, ID_DEMO_OPEN, ID_DEMO_SAVE, ID_DEMO_EXIT, ID_DEMO_COPY, ID_DEMO_PASTE,
                        ID_DEMO_TOOLBAR, ID_DEMO_ZOOMIN})
            m_organizer.AddToRecentlyUsed(static_cast<int>(id));

        CRect rc;
        GetClientRect(&rc);
        const int w = rc.Width();
        AddControl(L"BUTTON", L"&File", BS_PUSHBUTTON | WS_TABSTOP, CRect(10, 10, 70, 34), IDC_MENU_FILE);
        AddControl(L"BUTTON", L"&Edit", BS_PUSHBUTTON | WS_TABSTOP, CRect(72, 10, 132, 34), IDC_MENU_EDIT);
        AddControl(L"BUTTON", L"&View", BS_PUSHBUTTON | WS_TABSTOP, CRect(134, 10, 194, 34), IDC_MENU_VIEW);
        // The menus open below the buttons, in the left column; the right column holds the
        // options, the hyperlink actions and the recently-used preview.
        const int x = std::max(240, w - 300);
        AddControl(L"BUTTON", L"Show only recently used commands", BS_AUTOCHECKBOX | WS_TABSTOP,
                   CRect(x, 8, w - 10, 26), IDC_RECENT_ONLY);
        AddControl(L"BUTTON", L"Customise (drag, right-click)", BS_AUTOCHECKBOX | WS_TABSTOP,
                   CRect(x, 28, w - 10, 46), IDC_CUSTOMIZE);
        AddControl(L"BUTTON", L"Open these menus in a frame", BS_PUSHBUTTON | WS_TABSTOP,
                   CRect(10, 260, 220, 286), IDC_SHOW_FRAME);
        AddControl(L"STATIC", L"Choose a command from a menu.", SS_LEFT, CRect(10, 292, 220, 328), IDC_CHOSEN);

        AddControl(L"STATIC", L"Hyperlink actions:", SS_LEFT, CRect(x, 58, w - 10, 76), IDC_LINKS_LABEL);
        AddControl(L"BUTTON", L"Open https://example.org/", BS_PUSHBUTTON | WS_TABSTOP, CRect(x, 78, w - 10, 102),
                   IDC_LINK_OPEN);
        AddControl(L"BUTTON", L"E-mail support@example.org", BS_PUSHBUTTON | WS_TABSTOP,
                   CRect(x, 104, w - 10, 128), IDC_LINK_MAIL);
        AddControl(L"BUTTON", L"Explore a missing folder", BS_PUSHBUTTON | WS_TABSTOP,
                   CRect(x, 130, w - 10, 154), IDC_LINK_EXPLORE);
        AddControl(L"BUTTON", L"User defined: a message to this page", BS_PUSHBUTTON | WS_TABSTOP,
                   CRect(x, 156, w - 10, 180), IDC_LINK_USER);
        AddControl(L"STATIC", L"", SS_LEFT, CRect(x, 184, w - 10, 234), IDC_LINK_RESULT);
        m_links[0].Set(KxUiHyperLinkAction::ActionOpen, L"https://example.org/", nullptr, nullptr, SW_SHOWNORMAL, 0,
                       nullptr);
        m_links[1].Set(KxUiHyperLinkAction::ActionEmail, L"support@example.org", nullptr, nullptr, SW_SHOWNORMAL, 0,
                       nullptr);
        m_links[2].Set(KxUiHyperLinkAction::ActionExplore, L"C:\\Projects\\No such folder", nullptr, nullptr,
                       SW_SHOWNORMAL, 0, nullptr);
        m_links[3].Set(KxUiHyperLinkAction::ActionUserDefined, nullptr, nullptr, nullptr, SW_SHOWNORMAL, WM_DEMO_LINK,
                       m_hWnd);
        for (auto& link : m_links)
            link.SetOwnerWnd(m_hWnd);

        AddControl(L"STATIC", L"Edit, recently used commands only:", SS_LEFT, CRect(x, 240, w - 10, 258),
                   IDC_RECENT_LABEL);
        ShowRecentPreview();
    }

    afx_msg void OnDestroy()
    {
        CloseMenu();
        if (m_pFrame != nullptr && ::IsWindow(m_pFrame->GetSafeHwnd())) {
            ::SetMenu(m_pFrame->m_hWnd, nullptr);  // the bar is the page's
            m_pFrame->DestroyWindow();             // detaches the organizer, deletes itself
        }
        m_pFrame = nullptr;
        for (CMenu& menu : m_menus)
            menu.Detach();
        m_recentPopup.ResetPopupMenu();
        if (m_recentPopup.GetSafeHwnd() != nullptr)
            m_recentPopup.DestroyWindow();
        m_organizer.RestoreBitmapMenu(&m_recentMenu);
        m_recentMenu.DestroyMenu();
        if (m_hBar != nullptr)
            ::DestroyMenu(m_hBar);
        m_hBar = nullptr;
        CGalleryPage::OnDestroy();
    }

    afx_msg void OnMenuButton(UINT nID) { ShowMenu(static_cast<int>(nID - IDC_MENU_FILE)); }

    afx_msg void OnOptionChanged()
    {
        m_organizer.ShowOnlyRecentlyUsedItems(IsDlgButtonChecked(IDC_RECENT_ONLY) == BST_CHECKED);
        if (m_nShown >= 0)
            ShowMenu(m_nShown);
    }

    afx_msg void OnDemoCommand(UINT nID)
    {
        // As the organizer does for a frame: a command chosen joins the recently used ones.
        if (m_organizer.IsShowOnlyRecentlyUsedItems())
            m_organizer.AddToRecentlyUsed(static_cast<int>(nID));
        CloseMenu();  // the menu is put back first, so its texts are plain again
        wchar_t name[128] = {};
        ::GetMenuStringW(m_hBar, nID, name, 128, MF_BYCOMMAND);
        CString text(name);
        text.Remove(L'&');
        if (text.Find(L'\t') >= 0)
            text = text.Left(text.Find(L'\t'));
        SetDlgItemText(IDC_CHOSEN, L"Chosen: " + text);
        if (m_recentPopup.GetBitmapMenu() == nullptr)
            ShowRecentPreview();  // chosen there: it shows the recently used commands again
    }

    afx_msg void OnShowAll()
    {
        // A chevron was chosen: that menu again with every item.
        if (m_recentPopup.GetBitmapMenu() == nullptr) {
            m_organizer.RestoreBitmapMenu(&m_recentMenu);
            m_organizer.ConvertBitmapMenu(&m_recentMenu, FALSE);
            TrackRecentPreview();
            return;
        }
        const int shown = m_nShown;
        CloseMenu();
        if (shown >= 0)
            ShowMenu(shown, FALSE);
    }

    afx_msg void OnLink(UINT nID)
    {
        KxUiHyperLinkAction& link = m_links[nID - IDC_LINK_OPEN];
        const BOOL ok = link.ExecuteIt(TRUE);
        CString text;
        text.Format(L"%s: %s", KxUiHyperLinkAction::GetActionName(link.GetAction()),
                    ok ? L"done" : static_cast<LPCWSTR>(link.GetErrorText(link.GetError())));
        SetDlgItemText(IDC_LINK_RESULT, text);
    }

    afx_msg LRESULT OnLinkMessage(WPARAM, LPARAM lParam)
    {
        // lParam is the action that sent the message.
        auto* link = reinterpret_cast<KxUiHyperLinkAction*>(lParam);
        SetDlgItemText(IDC_CHOSEN, link == &m_links[3] ? L"The page received the user-defined action's message."
                                                       : L"A user-defined message arrived.");
        return 1;
    }

    afx_msg void OnShowFrame()
    {
        CloseMenu();
        if (m_pFrame == nullptr || !::IsWindow(m_pFrame->GetSafeHwnd())) {
            m_pFrame = new CMenuPreviewFrame;
            CRect rect;
            GetWindowRect(&rect);
            if (!m_pFrame->Create(nullptr, L"Bitmap menus in a frame", WS_OVERLAPPEDWINDOW,
                                  CRect(rect.left + 40, rect.top + 40, rect.left + 520, rect.top + 320))) {
                m_pFrame = nullptr;  // a failed frame deletes itself
                return;
            }
            ::SetMenu(m_pFrame->m_hWnd, m_hBar);
            m_organizer.AttachFrameWnd(m_pFrame);
        }
        m_pFrame->ShowWindow(SW_SHOW);
        m_pFrame->SetForegroundWindow();
    }

    DECLARE_MESSAGE_MAP()

private:
    void BuildMenus()
    {
        m_hBar = ::CreateMenu();
        HMENU file = ::CreatePopupMenu(), edit = ::CreatePopupMenu(), view = ::CreatePopupMenu();
        // A second Edit menu stays open beside the bar, showing only the recently used commands.
        m_recentMenu.CreatePopupMenu();
        FillEditMenu(m_recentMenu.m_hMenu);
        HMENU recent = ::CreatePopupMenu(), zoom = ::CreatePopupMenu();
        ::AppendMenuW(recent, MF_STRING, ID_DEMO_RECENT1, L"&1 Quarterly report.docx");
        ::AppendMenuW(recent, MF_STRING, ID_DEMO_RECENT2, L"&2 Budget 2027.xlsx");
        ::AppendMenuW(file, MF_STRING, ID_DEMO_NEW, L"&New\tCtrl+N");
        ::AppendMenuW(file, MF_STRING, ID_DEMO_OPEN, L"&Open...\tCtrl+O");
        ::AppendMenuW(file, MF_STRING, ID_DEMO_SAVE, L"&Save\tCtrl+S");
        ::AppendMenuW(file, MF_SEPARATOR, 0, nullptr);
        ::AppendMenuW(file, MF_POPUP, reinterpret_cast<UINT_PTR>(recent), L"Recent &Files");
        ::AppendMenuW(file, MF_SEPARATOR, 0, nullptr);
        ::AppendMenuW(file, MF_STRING, ID_DEMO_PRINT, L"&Print...\tCtrl+P");
        ::AppendMenuW(file, MF_SEPARATOR, 0, nullptr);
        ::AppendMenuW(file, MF_STRING, ID_DEMO_EXIT, L"E&xit");
        FillEditMenu(edit);
        ::AppendMenuW(zoom, MF_STRING, ID_DEMO_ZOOMIN, L"Zoom &In\tCtrl++");
        ::AppendMenuW(zoom, MF_STRING, ID_DEMO_ZOOMOUT, L"Zoom &Out\tCtrl+-");
        ::AppendMenuW(view, MF_STRING | MF_CHECKED, ID_DEMO_TOOLBAR, L"&Toolbar");
        ::AppendMenuW(view, MF_STRING | MF_CHECKED, ID_DEMO_STATUSBAR, L"&Status Bar");
        ::AppendMenuW(view, MF_SEPARATOR, 0, nullptr);
        ::AppendMenuW(view, MF_POPUP, reinterpret_cast<UINT_PTR>(zoom), L"&Zoom");
        ::AppendMenuW(m_hBar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), L"&File");
        ::AppendMenuW(m_hBar, MF_POPUP, reinterpret_cast<UINT_PTR>(edit), L"&Edit");
        ::AppendMenuW(m_hBar, MF_POPUP, reinterpret_cast<UINT_PTR>(view), L"&View");
        // Save is shown checked, to show the sunken button of a checked image.
        ::CheckMenuItem(file, ID_DEMO_SAVE, MF_BYCOMMAND | MF_CHECKED);
        for (int i = 0; i < 3; ++i)
            m_menus[i].Attach(::GetSubMenu(m_hBar, i));
        m_organizer.AddSubmenuToRecentlyUsed(zoom);
    }

    static void FillEditMenu(HMENU edit)
    {
        ::AppendMenuW(edit, MF_STRING | MF_GRAYED, ID_DEMO_UNDO, L"&Undo\tCtrl+Z");
        ::AppendMenuW(edit, MF_SEPARATOR, 0, nullptr);
        ::AppendMenuW(edit, MF_STRING, ID_DEMO_CUT, L"Cu&t\tCtrl+X");
        ::AppendMenuW(edit, MF_STRING, ID_DEMO_COPY, L"&Copy\tCtrl+C");
        ::AppendMenuW(edit, MF_STRING, ID_DEMO_PASTE, L"&Paste\tCtrl+V");
        ::AppendMenuW(edit, MF_SEPARATOR, 0, nullptr);
        ::AppendMenuW(edit, MF_STRING, ID_DEMO_FIND, L"&Find...\tCtrl+F");
        ::AppendMenuW(edit, MF_STRING | MF_CHECKED, ID_DEMO_WRAP, L"&Word Wrap");
    }

    void ShowRecentPreview()
    {
        // Converted once with hiding on: the items not used recently wait behind the chevron.
        const BOOL was = m_organizer.IsShowOnlyRecentlyUsedItems();
        m_organizer.RestoreBitmapMenu(&m_recentMenu);
        m_organizer.ShowOnlyRecentlyUsedItems(TRUE);
        m_organizer.ConvertBitmapMenu(&m_recentMenu, TRUE);
        m_organizer.ShowOnlyRecentlyUsedItems(was);
        TrackRecentPreview();
    }

    void TrackRecentPreview()
    {
        CRect label;
        GetDlgItem(IDC_RECENT_LABEL)->GetWindowRect(&label);
        ScreenToClient(&label);
        m_recentPopup.TrackPopupMenu(&m_recentMenu, KXUI_TPM_CHILDWINDOW | TPM_LEFTALIGN, label.left,
                                     label.bottom + 4, this);
    }

    void ShowMenu(int index, BOOL bHide = TRUE)
    {
        CloseMenu();
        KxUiBitmapMenu& menu = m_menus[index];
        const BOOL customise = IsDlgButtonChecked(IDC_CUSTOMIZE) == BST_CHECKED;
        m_organizer.SetCutomizationMode(customise, m_hWnd);
        m_organizer.ConvertBitmapMenu(&menu, bHide);
        menu.SetCutomizationMode(customise, m_hWnd);
        CRect button;
        GetDlgItem(IDC_MENU_FILE + index)->GetWindowRect(&button);
        ScreenToClient(&button);
        m_popup.TrackPopupMenu(&menu, KXUI_TPM_CHILDWINDOW | TPM_LEFTALIGN, button.left, button.bottom + 2, this);
        m_nShown = index;
    }

    void CloseMenu()
    {
        m_popup.ResetPopupMenu();
        if (m_popup.GetSafeHwnd() != nullptr)
            m_popup.DestroyWindow();
        for (KxUiBitmapMenu& menu : m_menus) {
            if (menu.m_hMenu != nullptr)
                m_organizer.RestoreBitmapMenu(&menu);
        }
        m_nShown = -1;
    }

    KxUiBitmapMenuOrganizer m_organizer;
    HMENU m_hBar = nullptr;
    KxUiBitmapMenu m_menus[3];
    KxUiBitmapMenuPopupWnd m_popup;
    KxUiBitmapMenu m_recentMenu;
    KxUiBitmapMenuPopupWnd m_recentPopup;
    CBitmap m_strip;
    CMenuPreviewFrame* m_pFrame = nullptr;  // deletes itself when destroyed
    int m_nShown = -1;
    KxUiHyperLinkAction m_links[4];
};

BEGIN_MESSAGE_MAP(CMenusPage, CGalleryPage)
    ON_WM_DESTROY()
    ON_COMMAND_RANGE(IDC_MENU_FILE, IDC_MENU_VIEW, &CMenusPage::OnMenuButton)
    ON_BN_CLICKED(IDC_RECENT_ONLY, &CMenusPage::OnOptionChanged)
    ON_BN_CLICKED(IDC_CUSTOMIZE, &CMenusPage::OnOptionChanged)
    ON_BN_CLICKED(IDC_SHOW_FRAME, &CMenusPage::OnShowFrame)
    ON_COMMAND_RANGE(ID_DEMO_NEW, ID_DEMO_LAST, &CMenusPage::OnDemoCommand)
    ON_COMMAND(ID_KXUI_SHOWALL, &CMenusPage::OnShowAll)
    ON_COMMAND_RANGE(IDC_LINK_OPEN, IDC_LINK_USER, &CMenusPage::OnLink)
    ON_MESSAGE(WM_DEMO_LINK, &CMenusPage::OnLinkMessage)
END_MESSAGE_MAP()

IMPLEMENT_DYNAMIC(CMenusPage, CGalleryPage)
KXGALLERY_PAGE(80, CMenusPage);
