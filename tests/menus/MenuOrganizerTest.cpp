// The menu organizer: attaching to a frame, the recently-used sets and their records in the
// profile, the thread hooks of a menu with hidden items, and customising a menu in the
// popup window with real mouse messages.
#include "KxMenuFixture.h"
#include "KxMsgRecorder.h"
#include "KxInput.h"
#include <KxUiBitmapMenuPopupWnd.h>
#include <afxcmn.h>
#include <algorithm>
#include <random>
#include <set>

namespace {

// Counts what the loaders hand to the virtual adders.
class CountingOrganizer : public KxUiBitmapMenuOrganizer {
public:
    BOOL AddToRecentlyUsed(int nCommandID) override
    {
        commands.push_back(nCommandID);
        return KxUiBitmapMenuOrganizer::AddToRecentlyUsed(nCommandID);
    }
    BOOL AddSubmenuToRecentlyUsed(HMENU hSubmenu) override
    {
        submenus.push_back(hSubmenu);
        return KxUiBitmapMenuOrganizer::AddSubmenuToRecentlyUsed(hSubmenu);
    }
    using KxUiBitmapMenuOrganizer::AddToRecentlyUsed;
    std::vector<int> commands;
    std::vector<HMENU> submenus;
};

std::vector<DWORD> StoredWords(LPCTSTR section, UINT* sizeValue = nullptr)
{
    BYTE* data = nullptr;
    UINT bytes = 0;
    std::vector<DWORD> words;
    if (!KxTestApp::Get().GetProfileBinary(section, L"RUContents", &data, &bytes))
        return words;
    words.resize(bytes / 4);
    memcpy(words.data(), data, words.size() * 4);
    delete[] data;
    if (sizeValue != nullptr)
        *sizeValue = KxTestApp::Get().GetProfileInt(section, L"RUItemsDataSize", -1);
    return words;
}

void StoreBytes(LPCTSTR section, const std::vector<BYTE>& bytes, int declared)
{
    KxTestApp::Get().WriteProfileBinary(section, L"RUContents", const_cast<BYTE*>(bytes.data()),
                                        static_cast<UINT>(bytes.size()));
    KxTestApp::Get().WriteProfileInt(section, L"RUItemsDataSize", declared);
}

std::vector<BYTE> Words(std::initializer_list<DWORD> words)
{
    std::vector<BYTE> bytes(words.size() * 4);
    memcpy(bytes.data(), std::data(words), bytes.size());
    return bytes;
}

}  // namespace

using MenuOrganizer = MenuFixture;

TEST_F(MenuOrganizer, OneOrganizerPerFrameAndDetachingPutsOpenMenusBack)
{
    EXPECT_EQ(&organizer, KxUiBitmapMenuOrganizer::FindOrganizer(hwnd));
    EXPECT_FALSE(organizer.AttachFrameWnd(frame));  // attached already
    KxUiBitmapMenuOrganizer second;
    EXPECT_FALSE(second.AttachFrameWnd(frame));     // the frame has one
    EXPECT_FALSE(second.AttachFrameWnd(nullptr));
    EXPECT_EQ(nullptr, second.DetachFrameWnd());

    const std::vector<ItemSnapshot> before = SnapshotMenu(hFile);
    OpenFile();
    EXPECT_EQ(frame, organizer.DetachFrameWnd());  // while the menu is open
    EXPECT_FALSE(organizer.IsAttached());
    EXPECT_EQ(nullptr, KxUiBitmapMenuOrganizer::FindOrganizer(hwnd));
    EXPECT_EQ(before, SnapshotMenu(hFile));
    // The frame's menu messages no longer reach it.
    ::SendMessageW(hwnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(hFile), 0);
    EXPECT_EQ(nullptr, organizer.FindBitmapMenu(hFile));
    // And it can be attached again.
    EXPECT_TRUE(organizer.AttachFrameWnd(frame));
}

TEST_F(MenuOrganizer, FrameDestroyedWithAMenuOpenLeavesNoHookAndNoOrganizer)
{
    organizer.ShowOnlyRecentlyUsedItems(TRUE);
    organizer.AddToRecentlyUsed(ID_T_NEW);
    OpenFile();
    EXPECT_TRUE(KxUiBitmapMenuOrganizer::AreMenuHooksInstalled());
    ::SetMenu(hwnd, nullptr);  // keep the menu to look at it afterwards
    const std::vector<ItemSnapshot> hidden = SnapshotMenu(hFile);
    ::DestroyWindow(hwnd);
    EXPECT_FALSE(KxUiBitmapMenuOrganizer::AreMenuHooksInstalled());
    EXPECT_FALSE(organizer.IsAttached());
    EXPECT_EQ(nullptr, KxUiBitmapMenuOrganizer::FindOrganizer(hwnd));
    EXPECT_EQ(8, ::GetMenuItemCount(hFile));  // the hidden items came back
    EXPECT_NE(hidden.size(), static_cast<size_t>(::GetMenuItemCount(hFile)));
    ::DestroyMenu(hBar);
}

TEST_F(MenuOrganizer, HooksLiveOnlyWhileARecentlyUsedMenuIsOpen)
{
    OpenFile();
    EXPECT_FALSE(KxUiBitmapMenuOrganizer::AreMenuHooksInstalled());  // everything shown: no hooks
    CloseMenus();
    organizer.ShowOnlyRecentlyUsedItems(TRUE);
    organizer.AddToRecentlyUsed(ID_T_NEW);
    OpenFile();
    ::SendMessageW(hwnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(::GetSubMenu(hBar, 0)), MAKELPARAM(0, FALSE));
    EXPECT_TRUE(KxUiBitmapMenuOrganizer::AreMenuHooksInstalled());
    CloseMenus();
    EXPECT_FALSE(KxUiBitmapMenuOrganizer::AreMenuHooksInstalled());
    {
        KxUiBitmapMenuOrganizer other;
        ASSERT_TRUE(organizer.DetachFrameWnd() != nullptr);
        ASSERT_TRUE(other.AttachFrameWnd(frame));
        other.ShowOnlyRecentlyUsedItems(TRUE);
        other.AddToRecentlyUsed(ID_T_NEW);
        ::SendMessageW(hwnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(hFile), 0);
        EXPECT_TRUE(KxUiBitmapMenuOrganizer::AreMenuHooksInstalled());
    }  // destroyed with its menu open
    EXPECT_FALSE(KxUiBitmapMenuOrganizer::AreMenuHooksInstalled());
    EXPECT_EQ(8, ::GetMenuItemCount(hFile));
}

TEST_F(MenuOrganizer, ChosenCommandsJoinTheSetWithTheSubmenusOnTheWay)
{
    HMENU hRecent = ::GetSubMenu(hFile, 4);
    // Not recording: outside recently-used mode, or with an empty set.
    ::SendMessageW(hwnd, WM_COMMAND, MAKEWPARAM(ID_T_PRINT, 0), 0);
    organizer.ShowOnlyRecentlyUsedItems(TRUE);
    ::SendMessageW(hwnd, WM_COMMAND, MAKEWPARAM(ID_T_PRINT, 0), 0);
    EXPECT_EQ(0, organizer.GetRecentlyUsedCount());

    organizer.AddToRecentlyUsed(ID_T_NEW);
    ::SendMessageW(hwnd, WM_COMMAND, MAKEWPARAM(ID_T_RECENT_B, 0), 0);
    EXPECT_TRUE(organizer.IsRecentlyUsed(ID_T_RECENT_B));
    EXPECT_TRUE(organizer.IsSubmenuRecentlyUsed(hRecent));
    EXPECT_EQ(1, organizer.GetRecentlyUsedSubmenuCount());  // File itself is always shown
    // A control's notification is not a choice.
    ::SendMessageW(hwnd, WM_COMMAND, MAKEWPARAM(ID_T_EXIT, EN_CHANGE), 0);
    EXPECT_FALSE(organizer.IsRecentlyUsed(ID_T_EXIT));

    // Now the submenu shows, and chosen items by position.
    OpenFile();
    EXPECT_EQ((std::vector<UINT>{ID_T_NEW, 0, static_cast<UINT>(-1), ID_KXUI_SHOWALL}),
              [&] {
                  std::vector<UINT> ids;
                  for (int i = 0; i < ::GetMenuItemCount(hFile); ++i)
                      ids.push_back(::GetMenuItemID(hFile, i));
                  return ids;
              }());
    CloseMenus();
    CMenu* file = CMenu::FromHandle(hFile);
    EXPECT_TRUE(organizer.IsRecentlyUsed(file, 4));
    EXPECT_TRUE(organizer.ExcludeFromRecentlyUsed(file, 4));
    EXPECT_FALSE(organizer.IsSubmenuRecentlyUsed(hRecent));
    EXPECT_TRUE(organizer.AddToRecentlyUsed(file, 6));
    EXPECT_TRUE(organizer.IsRecentlyUsed(ID_T_PRINT));
    EXPECT_FALSE(organizer.AddToRecentlyUsed(file, 99));
    EXPECT_FALSE(organizer.IsRecentlyUsed(file, -1));
}

TEST_F(MenuOrganizer, CommandsRoundTripThroughTheProfileWithTheirByteLayout)
{
    for (int id : {ID_T_NEW, ID_T_EXIT, ID_T_RECENT_B})
        organizer.AddToRecentlyUsed(id);
    ASSERT_TRUE(organizer.SaveRUCommandsState(nullptr));
    UINT size = 0;
    const std::vector<DWORD> words = StoredWords(L"RecentlyUsedMenuItems", &size);
    ASSERT_EQ(4u, words.size());
    EXPECT_EQ(16u, size);
    EXPECT_EQ(3u, words[0]);
    EXPECT_EQ((std::set<DWORD>{ID_T_NEW, ID_T_EXIT, ID_T_RECENT_B}), std::set<DWORD>(words.begin() + 1, words.end()));

    CountingOrganizer loaded;
    loaded.AddToRecentlyUsed(999);  // loading replaces the set
    loaded.commands.clear();
    ASSERT_TRUE(loaded.LoadRUCommandsState(L""));
    EXPECT_EQ(3, loaded.GetRecentlyUsedCount());
    EXPECT_FALSE(loaded.IsRecentlyUsed(999));
    EXPECT_EQ((std::set<int>{ID_T_NEW, ID_T_EXIT, ID_T_RECENT_B}), std::set<int>(loaded.commands.begin(), loaded.commands.end()));

    // A named section is a record of its own.
    ASSERT_TRUE(organizer.SaveRUCommandsState(L"Editor menus"));
    EXPECT_EQ(4u, StoredWords(L"Editor menus").size());
}

TEST_F(MenuOrganizer, DamagedCommandRecordsAreRefusedAndLeaveTheSet)
{
    const LPCTSTR section = L"RecentlyUsedMenuItems";
    organizer.AddToRecentlyUsed(ID_T_SAVE);
    EXPECT_FALSE(organizer.LoadRUCommandsState(nullptr));  // nothing stored
    EXPECT_EQ(1, organizer.GetRecentlyUsedCount());

    const struct {
        const char* what;
        std::vector<BYTE> bytes;
        int declared;
    } damaged[] = {
        {"count beyond the data", Words({5, ID_T_NEW, ID_T_OPEN}), 12},
        {"size beyond the data", Words({2, ID_T_NEW, ID_T_OPEN}), 400},
        {"negative size", Words({1, ID_T_NEW}), -3},
        {"half a word", {1, 0, 0, 0, 0x65}, 5},
        {"empty", {}, 0},
    };
    for (const auto& d : damaged) {
        SCOPED_TRACE(d.what);
        StoreBytes(section, d.bytes, d.declared);
        EXPECT_FALSE(organizer.LoadRUCommandsState(nullptr));
        EXPECT_EQ(1, organizer.GetRecentlyUsedCount());
        EXPECT_TRUE(organizer.IsRecentlyUsed(ID_T_SAVE));
    }

    // Fixed-seed noise of any length: loads or is refused, never more ids than words.
    std::mt19937 rng(1907);
    for (int round = 0; round < 300; ++round) {
        std::vector<BYTE> bytes(rng() % 40);
        for (BYTE& b : bytes)
            b = static_cast<BYTE>(rng() % 3 == 0 ? rng() : rng() % 4);
        StoreBytes(section, bytes, static_cast<int>(rng() % 48));
        if (organizer.LoadRUCommandsState(nullptr)) {
            EXPECT_LE(organizer.GetRecentlyUsedCount(), static_cast<int>(bytes.size() / 4));
        }
    }
}

TEST_F(MenuOrganizer, SubmenusArePersistedByPathAndFoundAgainInANewMenu)
{
    HMENU hRecent = ::GetSubMenu(hFile, 4);
    CountingOrganizer saver;
    ASSERT_TRUE(saver.AddSubmenuToRecentlyUsed(hRecent));
    HMENU orphan = ::CreatePopupMenu();  // not reachable from the frame's menu
    ASSERT_TRUE(saver.AddSubmenuToRecentlyUsed(orphan));
    ASSERT_TRUE(saver.SaveRUSubmenusState(hBar, nullptr));
    const std::vector<DWORD> words = StoredWords(L"RecentlyUsedSubmenuItems");
    // Count 2, then in map order: the path File(0) > Recent(4) with its terminator, and the
    // terminator alone for the orphan.
    ASSERT_EQ(5u, words.size());
    EXPECT_EQ(2u, words[0]);
    std::vector<DWORD> rest(words.begin() + 1, words.end());
    const std::vector<DWORD> a = {0, 4, 0xFFFFFFFF, 0xFFFFFFFF}, b = {0xFFFFFFFF, 0, 4, 0xFFFFFFFF};
    EXPECT_TRUE(rest == a || rest == b);
    ::DestroyMenu(orphan);

    // The next run builds the menu again: new handles, same places.
    HMENU bar2 = ::CreateMenu();
    HMENU file2 = BuildFileMenu();
    ::AppendMenuW(bar2, MF_POPUP, reinterpret_cast<UINT_PTR>(file2), L"&File");
    CountingOrganizer loader;
    ASSERT_TRUE(loader.LoadRUSubmenusState(bar2, nullptr));
    ASSERT_EQ(1u, loader.submenus.size());
    EXPECT_EQ(::GetSubMenu(file2, 4), loader.submenus[0]);
    EXPECT_TRUE(loader.IsSubmenuRecentlyUsed(::GetSubMenu(file2, 4)));

    // Paths that no longer lead anywhere are skipped; the rest still load.
    StoreBytes(L"RecentlyUsedSubmenuItems", Words({3, 0, 9, 0xFFFFFFFF, 7, 0xFFFFFFFF, 0, 4, 0xFFFFFFFF}), 36);
    loader.submenus.clear();
    EXPECT_TRUE(loader.LoadRUSubmenusState(bar2, nullptr));
    EXPECT_EQ((std::vector<HMENU>{::GetSubMenu(file2, 4)}), loader.submenus);
    // A truncated path is refused and the set is kept.
    StoreBytes(L"RecentlyUsedSubmenuItems", Words({1, 0, 4}), 12);
    EXPECT_FALSE(loader.LoadRUSubmenusState(bar2, nullptr));
    EXPECT_TRUE(loader.IsSubmenuRecentlyUsed(::GetSubMenu(file2, 4)));
    ::DestroyMenu(bar2);

    // The frame saves and loads its own menu's submenus on request.
    organizer.AddSubmenuToRecentlyUsed(hRecent);
    EXPECT_TRUE(::SendMessageW(hwnd, KXUI_WM_SAVERUSUBMENUS, 0, reinterpret_cast<LPARAM>(L"Frame menus")));
    EXPECT_EQ(4u, StoredWords(L"Frame menus").size());
    organizer.ExcludeSubmenuFromRecentlyUsed(hRecent);
    EXPECT_TRUE(::SendMessageW(hwnd, KXUI_WM_LOADRUSUBMENUS, 0, reinterpret_cast<LPARAM>(L"Frame menus")));
    EXPECT_TRUE(organizer.IsSubmenuRecentlyUsed(hRecent));
}

TEST_F(MenuOrganizer, ImagesFromMissingResourcesOrOddListsAreRefused)
{
    EXPECT_FALSE(organizer.SetMenuBitmap(ID_T_NEW, 31999u));
    EXPECT_FALSE(organizer.SetMenuIcon(ID_T_NEW, L"NO_SUCH_ICON"));
    EXPECT_FALSE(organizer.SetMenuImage(ID_T_NEW, static_cast<HICON>(nullptr)));
    CBitmap empty;
    EXPECT_FALSE(organizer.SetMenuImage(ID_T_NEW, &empty, RGB(0, 255, 0), 0));
    EXPECT_EQ(nullptr, organizer.GetMenuImage(ID_T_NEW));

    // A 40 x 16 strip holds two whole 16-pixel images; the third index does not exist.
    HDC screen = ::GetDC(nullptr);
    CBitmap strip;
    strip.Attach(::CreateCompatibleBitmap(screen, 40, 16));
    ::ReleaseDC(nullptr, screen);
    EXPECT_TRUE(organizer.SetMenuImage(ID_T_OPEN, &strip, RGB(0, 255, 0), 1));
    EXPECT_FALSE(organizer.SetMenuImage(ID_T_SAVE, &strip, RGB(0, 255, 0), 2));
    ASSERT_NE(nullptr, organizer.GetMenuImage(ID_T_OPEN));
    EXPECT_EQ(1, organizer.GetMenuImage(ID_T_OPEN)->GetIndex());
    EXPECT_FALSE(organizer.GetMenuImage(ID_T_OPEN)->IsDefaultImgList());

    // An icon, with a hot icon that joins the normal image's list.
    HICON icon = ::LoadIconW(nullptr, IDI_INFORMATION);
    EXPECT_TRUE(organizer.SetMenuImage(ID_T_PRINT, icon));
    EXPECT_TRUE(organizer.SetMenuHotImage(ID_T_PRINT, ::LoadIconW(nullptr, IDI_WARNING)));
    KxUiImageInfo* print = organizer.GetMenuImage(ID_T_PRINT);
    ASSERT_NE(nullptr, print);
    EXPECT_EQ(1, print->GetHotIndex());
    EXPECT_EQ(2, print->GetImageList()->GetImageCount());
}

TEST_F(MenuOrganizer, AutoSetMenuImageTakesTheToolBarsButtons)
{
    HWND tb = ::CreateWindowExW(0, TOOLBARCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE, 0, 0, 200, 28, hwnd, nullptr,
                                nullptr, nullptr);
    ASSERT_NE(nullptr, tb);
    ::SendMessageW(tb, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    HIMAGELIST list = ImageList_Create(16, 16, ILC_COLOR32 | ILC_MASK, 3, 1);
    HDC screen = ::GetDC(nullptr);
    HBITMAP bmp = ::CreateCompatibleBitmap(screen, 48, 16);
    ::ReleaseDC(nullptr, screen);
    ImageList_Add(list, bmp, nullptr);
    ::DeleteObject(bmp);
    ::SendMessageW(tb, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(list));
    TBBUTTON buttons[] = {
        {0, static_cast<int>(ID_T_NEW), TBSTATE_ENABLED, BTNS_BUTTON, {}, 0, 0},
        {0, 0, TBSTATE_ENABLED, BTNS_SEP, {}, 0, 0},
        {2, static_cast<int>(ID_T_PRINT), TBSTATE_ENABLED, BTNS_BUTTON, {}, 0, 0},
    };
    ::SendMessageW(tb, TB_ADDBUTTONSW, 3, reinterpret_cast<LPARAM>(buttons));

    EXPECT_TRUE(organizer.AutoSetMenuImage());
    ASSERT_NE(nullptr, organizer.GetMenuImage(ID_T_PRINT));
    EXPECT_EQ(2, organizer.GetMenuImage(ID_T_PRINT)->GetIndex());
    EXPECT_EQ(0, organizer.GetMenuImage(ID_T_NEW)->GetIndex());
    EXPECT_EQ(nullptr, organizer.GetMenuImage(ID_T_OPEN));
    // The organizer keeps its own copy: the tool bar may go.
    ::DestroyWindow(tb);
    ImageList_Destroy(list);
    EXPECT_EQ(3, organizer.GetMenuImage(ID_T_PRINT)->GetImageList()->GetImageCount());

    KxUiBitmapMenuOrganizer detached;
    EXPECT_FALSE(detached.AutoSetMenuImage());
}

// The popup window in customisation mode, driven by the mouse.
class MenuCustomizing : public MenuFixture {
protected:
    void SetUp() override
    {
        MenuFixture::SetUp();
        menu.Attach(hFile);
        organizer.ConvertBitmapMenu(&menu, FALSE);
        ASSERT_TRUE(receiver.Create(nullptr, L"customise", WS_CHILD | WS_VISIBLE, CRect(0, 0, 10, 10), frame, 77));
        menu.SetCutomizationMode(TRUE, receiver.m_hWnd);
        ASSERT_TRUE(popup.TrackPopupMenu(&menu, TPM_LEFTALIGN, 40, 40, frame));
    }
    void TearDown() override
    {
        popup.ResetPopupMenu();
        popup.DestroyWindow();
        organizer.RestoreBitmapMenu(&menu);
        menu.Detach();
        MenuFixture::TearDown();
    }
    CPoint Centre(int pos) const { return popup.GetItemRect(pos).CenterPoint(); }

    // Answers the customisation notifications with m_veto and records their commands.
    class Receiver : public CWnd {
    public:
        std::vector<UINT> commands;
        std::vector<HWND> from;
        LRESULT veto = 0;

    protected:
        afx_msg BOOL OnCustomize(UINT, NMHDR* hdr, LRESULT* result)
        {
            commands.push_back(reinterpret_cast<KXUI_NMBMCUSTOMIZE*>(hdr)->nCommand);
            from.push_back(hdr->hwndFrom);
            *result = veto;
            return TRUE;
        }
        DECLARE_MESSAGE_MAP()
    };

    KxUiBitmapMenu menu;
    KxUiBitmapMenuPopupWnd popup;
    Receiver receiver;
};

BEGIN_MESSAGE_MAP(MenuCustomizing::Receiver, CWnd)
    ON_NOTIFY_EX(KXUI_BMN_CUSTOMIZE, 77, &MenuCustomizing::Receiver::OnCustomize)
END_MESSAGE_MAP()

TEST_F(MenuCustomizing, DraggingAnItemMovesItWhereTheInsertMarkShowed)
{
    // Exit's upper half: the mark goes before Exit (position 7).
    const CRect exit = popup.GetItemRect(7);
    KxDrag(popup.m_hWnd, Centre(0), CPoint(exit.left + 10, exit.top + 2));
    EXPECT_EQ((std::vector<UINT>{ID_T_OPEN, 0, ID_T_SAVE, static_cast<UINT>(-1), 0, ID_T_PRINT, ID_T_NEW, ID_T_EXIT}),
              [&] {
                  std::vector<UINT> ids;
                  for (int i = 0; i < ::GetMenuItemCount(hFile); ++i)
                      ids.push_back(::GetMenuItemID(hFile, i));
                  return ids;
              }());
    EXPECT_EQ(6, menu.GetCustomizedItem());
    EXPECT_EQ(-1, menu.GetInsertMark());
    EXPECT_EQ(-1, menu.GetDraggedItem());

    // A click without movement only selects.
    KxClick(popup.m_hWnd, Centre(2).x, Centre(2).y);
    EXPECT_EQ(2, menu.GetCustomizedItem());
    EXPECT_EQ(ID_T_SAVE, ::GetMenuItemID(hFile, 2));
}

TEST_F(MenuCustomizing, ContextCommandsNotifyTheReceiverWhichMayVeto)
{
    KxClick(popup.m_hWnd, Centre(6).x, Centre(6).y, KxNoMod, KxButton::Middle);  // highlight only
    EXPECT_EQ(-1, menu.GetCustomizedItem());
    ::SendMessageW(popup.m_hWnd, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(Centre(6).x, Centre(6).y));
    ASSERT_EQ(6, menu.GetCustomizedItem());  // Print

    ::SendMessageW(popup.m_hWnd, WM_COMMAND, ID_KXUI_CUST_SEPARATOR_BEFORE, 0);
    ASSERT_EQ(9, ::GetMenuItemCount(hFile));
    EXPECT_EQ(0u, ::GetMenuItemID(hFile, 6));
    EXPECT_EQ(7, menu.GetCustomizedItem());  // Print moved down
    EXPECT_EQ(ID_T_PRINT, ::GetMenuItemID(hFile, 7));
    EXPECT_FALSE(popup.GetItemRect(8).IsRectEmpty());  // laid out again

    receiver.veto = 1;
    ::SendMessageW(popup.m_hWnd, WM_COMMAND, ID_KXUI_CUST_DELETE, 0);
    EXPECT_EQ(ID_T_PRINT, ::GetMenuItemID(hFile, 7));
    receiver.veto = 0;
    ::SendMessageW(popup.m_hWnd, WM_COMMAND, ID_KXUI_CUST_APPEARANCE, 0);
    ::SendMessageW(popup.m_hWnd, WM_COMMAND, ID_KXUI_CUST_DELETE, 0);
    EXPECT_EQ(8, ::GetMenuItemCount(hFile));
    EXPECT_EQ(ID_T_EXIT, ::GetMenuItemID(hFile, 7));
    EXPECT_EQ(-1, menu.GetCustomizedItem());

    EXPECT_EQ((std::vector<UINT>{ID_KXUI_CUST_SEPARATOR_BEFORE, ID_KXUI_CUST_DELETE, ID_KXUI_CUST_APPEARANCE,
                                 ID_KXUI_CUST_DELETE}),
              receiver.commands);
    for (HWND h : receiver.from)
        EXPECT_EQ(popup.m_hWnd, h);
}

TEST_F(MenuCustomizing, ReservedItemsHaveNoContextMenuAndAClickOutsideCustomisingChooses)
{
    ::AppendMenuW(hFile, MF_STRING, 0xE110, L"&1 old.txt");
    ::AppendMenuW(hFile, MF_STRING, 0xFF10, L"Reserved");
    EXPECT_FALSE(menu.DisplayCustomizeItemContextMenu(8, CPoint(50, 50)));
    EXPECT_FALSE(menu.DisplayCustomizeItemContextMenu(9, CPoint(50, 50)));
    EXPECT_FALSE(menu.DisplayCustomizeItemContextMenu(42, CPoint(50, 50)));
    ::DeleteMenu(hFile, 9, MF_BYPOSITION);
    ::DeleteMenu(hFile, 8, MF_BYPOSITION);

    menu.SetCutomizationMode(FALSE);
    KxMsgRecorder rec;
    rec.Watch(hwnd, "frame", {WM_COMMAND});
    KxClick(popup.m_hWnd, Centre(3).x, Centre(3).y);  // Save is grayed: nothing
    KxClick(popup.m_hWnd, Centre(6).x, Centre(6).y);
    KxPumpMessages();
    EXPECT_TRUE(rec.Matches({KxMsg("frame", WM_COMMAND, MAKEWPARAM(ID_T_PRINT, 0))}));
    EXPECT_FALSE(popup.IsWindowVisible());
    EXPECT_EQ(nullptr, popup.GetBitmapMenu());
}

TEST_F(MenuCustomizing, RecentlyUsedToggleAndSeparatorAfterShowInThePopup)
{
    organizer.ShowOnlyRecentlyUsedItems(TRUE);
    ::SendMessageW(popup.m_hWnd, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(Centre(6).x, Centre(6).y));
    ASSERT_EQ(6, menu.GetCustomizedItem());  // Print
    ::SendMessageW(popup.m_hWnd, WM_COMMAND, ID_KXUI_CUST_RECENTLY_USED, 0);
    EXPECT_TRUE(organizer.IsRecentlyUsed(ID_T_PRINT));
    ::SendMessageW(popup.m_hWnd, WM_COMMAND, ID_KXUI_CUST_RECENTLY_USED, 0);
    EXPECT_FALSE(organizer.IsRecentlyUsed(ID_T_PRINT));

    ::SendMessageW(popup.m_hWnd, WM_COMMAND, ID_KXUI_CUST_SEPARATOR_AFTER, 0);
    ASSERT_EQ(9, ::GetMenuItemCount(hFile));
    EXPECT_EQ(0u, ::GetMenuItemID(hFile, 7));
    EXPECT_EQ(6, menu.GetCustomizedItem());  // Print stays where it was
    const CRect sep = popup.GetItemRect(7);
    ASSERT_EQ(8, sep.Height());
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Capture(popup.m_hWnd));
    EXPECT_EQ(::GetSysColor(COLOR_BTNSHADOW), probe.Pixel(sep.CenterPoint().x, sep.top + 3));
    EXPECT_EQ(::GetSysColor(COLOR_BTNHIGHLIGHT), probe.Pixel(sep.CenterPoint().x, sep.top + 4));
    // The customised item wears its frame.
    const CRect print = popup.GetItemRect(6);
    EXPECT_EQ(::GetSysColor(COLOR_MENUTEXT), probe.Pixel(print.CenterPoint().x, print.top));
    probe.SaveIfFailed();
    EXPECT_EQ((std::vector<UINT>{ID_KXUI_CUST_RECENTLY_USED, ID_KXUI_CUST_RECENTLY_USED, ID_KXUI_CUST_SEPARATOR_AFTER}),
              receiver.commands);
}
