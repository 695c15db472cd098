// A frame with a File menu built in code and an organizer attached, for the menu tests.
#pragma once
#include "KxTestApp.h"
#include "KxPixelProbe.h"
#include <KxUiBitmapMenuOrganizer.h>
#include <afxwin.h>
#include <string>
#include <vector>

enum : UINT {
    ID_T_NEW = 101,
    ID_T_OPEN = 102,
    ID_T_SAVE = 103,
    ID_T_EXIT = 104,
    ID_T_PRINT = 105,
    ID_T_RECENT_A = 201,
    ID_T_RECENT_B = 202,
};

// Everything a menu item is, for comparing a menu before and after.
struct ItemSnapshot {
    UINT fType, fState, wID;
    HMENU hSubMenu;
    ULONG_PTR data;
    std::wstring text;
    bool operator==(const ItemSnapshot& o) const
    {
        return fType == o.fType && fState == o.fState && wID == o.wID && hSubMenu == o.hSubMenu &&
               data == o.data && text == o.text;
    }
};
std::vector<ItemSnapshot> SnapshotMenu(HMENU hMenu);
void PrintTo(const ItemSnapshot& s, std::ostream* os);

// File: &New\tCtrl+N | &Open...\tCtrl+O (checked, data 0x5151) | --- | &Save (grayed) |
// Recen&t > (A, B) | --- | &Print | E&xit
HMENU BuildFileMenu();

class MenuFrame : public CFrameWnd {
public:
    MenuFrame() { m_bAutoMenuEnable = FALSE; }
};

class MenuFixture : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    // The organizer's bitmap menu for hFile after WM_INITMENUPOPUP.
    KxUiBitmapMenu* OpenFile();
    void CloseMenus();
    // Draws item pos of an open bitmap menu into the probe at rect with the given state.
    void DrawItemAt(KxUiBitmapMenu* menu, int pos, const CRect& rect, UINT state, KxPixelProbe& probe);

    MenuFrame* frame = nullptr;
    HWND hwnd = nullptr;
    HMENU hBar = nullptr;
    HMENU hFile = nullptr;
    KxUiBitmapMenuOrganizer organizer;
};
