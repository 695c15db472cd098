#include "KxMenuFixture.h"

std::vector<ItemSnapshot> SnapshotMenu(HMENU hMenu)
{
    std::vector<ItemSnapshot> items;
    const int n = ::GetMenuItemCount(hMenu);
    for (int i = 0; i < n; ++i) {
        wchar_t text[300] = {};
        MENUITEMINFOW mii{};
        mii.cbSize = sizeof(mii);
        mii.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_DATA | MIIM_STRING;
        mii.dwTypeData = text;
        mii.cch = 300;
        ::GetMenuItemInfoW(hMenu, i, TRUE, &mii);
        items.push_back({mii.fType, mii.fState, mii.wID, mii.hSubMenu, mii.dwItemData, text});
    }
    return items;
}

void PrintTo(const ItemSnapshot& s, std::ostream* os)
{
    *os << "{type " << std::hex << s.fType << " state " << s.fState << std::dec << " id " << s.wID << " sub "
        << s.hSubMenu << " data " << s.data << " \"" << std::string(s.text.begin(), s.text.end()) << "\"}";
}

HMENU BuildFileMenu()
{
    HMENU file = ::CreatePopupMenu();
    HMENU recent = ::CreatePopupMenu();
    ::AppendMenuW(recent, MF_STRING, ID_T_RECENT_A, L"&1 report.txt");
    ::AppendMenuW(recent, MF_STRING, ID_T_RECENT_B, L"&2 notes.txt");
    ::AppendMenuW(file, MF_STRING, ID_T_NEW, L"&New\tCtrl+N");
    ::AppendMenuW(file, MF_STRING | MF_CHECKED, ID_T_OPEN, L"&Open...\tCtrl+O");
    ::AppendMenuW(file, MF_SEPARATOR, 0, nullptr);
    ::AppendMenuW(file, MF_STRING | MF_GRAYED, ID_T_SAVE, L"&Save");
    ::AppendMenuW(file, MF_POPUP, reinterpret_cast<UINT_PTR>(recent), L"Recen&t");
    ::AppendMenuW(file, MF_SEPARATOR, 0, nullptr);
    ::AppendMenuW(file, MF_STRING, ID_T_PRINT, L"&Print");
    ::AppendMenuW(file, MF_STRING, ID_T_EXIT, L"E&xit");
    MENUITEMINFOW mii{};
    mii.cbSize = sizeof(mii);
    mii.fMask = MIIM_DATA;
    mii.dwItemData = 0x5151;  // the application's own item data survives conversion
    ::SetMenuItemInfoW(file, 1, TRUE, &mii);
    return file;
}

void MenuFixture::SetUp()
{
    frame = new MenuFrame;
    ASSERT_TRUE(frame->Create(nullptr, L"menus", WS_OVERLAPPEDWINDOW, CRect(0, 0, 400, 300)));
    hwnd = frame->m_hWnd;
    hBar = ::CreateMenu();
    hFile = BuildFileMenu();
    ::AppendMenuW(hBar, MF_POPUP, reinterpret_cast<UINT_PTR>(hFile), L"&File");
    ::SetMenu(hwnd, hBar);
    KxTestApp::Get().m_pMainWnd = frame;
    ASSERT_TRUE(organizer.AttachFrameWnd(frame));
}

void MenuFixture::TearDown()
{
    organizer.DetachFrameWnd();
    KxTestApp::Get().m_pMainWnd = nullptr;
    if (::IsWindow(hwnd))
        ::DestroyWindow(hwnd);  // the frame deletes itself, and its menu goes with it
}

KxUiBitmapMenu* MenuFixture::OpenFile()
{
    ::SendMessageW(hwnd, WM_ENTERMENULOOP, 0, 0);
    ::SendMessageW(hwnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(hFile), MAKELPARAM(0, FALSE));
    return organizer.FindBitmapMenu(hFile);
}

void MenuFixture::CloseMenus()
{
    ::SendMessageW(hwnd, WM_EXITMENULOOP, 0, 0);
}

void MenuFixture::DrawItemAt(KxUiBitmapMenu* menu, int pos, const CRect& rect, UINT state, KxPixelProbe& probe)
{
    MENUITEMINFOW mii{};
    mii.cbSize = sizeof(mii);
    mii.fMask = MIIM_ID | MIIM_DATA | MIIM_FTYPE;
    ::GetMenuItemInfoW(menu->m_hMenu, pos, TRUE, &mii);
    DRAWITEMSTRUCT dis{};
    dis.CtlType = ODT_MENU;
    dis.itemID = (mii.fType & MFT_SEPARATOR) ? 0 : mii.wID;
    dis.itemAction = ODA_DRAWENTIRE;
    dis.itemState = state;
    dis.hwndItem = reinterpret_cast<HWND>(menu->m_hMenu);
    dis.hDC = probe.Dc();
    dis.rcItem = rect;
    dis.itemData = mii.dwItemData;
    // Through the frame, as the system delivers it.
    ::SendMessageW(hwnd, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&dis));
}
