// Keyboard and mouse helpers produce the messages, characters and key states of a user.
#include "KxInput.h"
#include "KxMsgRecorder.h"

#include <string>
#include <vector>

namespace {

struct Seen {
    UINT msg;
    WPARAM wp;
    POINT pt;        // client point (mouse) or nothing
    bool shift, ctrl, alt, lbutton;
};
std::vector<Seen> g_seen;

LRESULT CALLBACK RecordProc(HWND h, UINT msg, WPARAM wp, LPARAM lp)
{
    switch (msg) {
    case WM_KEYDOWN: case WM_KEYUP: case WM_CHAR: case WM_SYSKEYDOWN: case WM_SYSKEYUP: case WM_SYSCHAR:
    case WM_LBUTTONDOWN: case WM_LBUTTONUP: case WM_LBUTTONDBLCLK: case WM_RBUTTONDOWN: case WM_RBUTTONUP:
    case WM_MOUSEMOVE: case WM_MOUSEWHEEL: {
        POINT pt = {static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp))};
        if (msg == WM_MOUSEWHEEL)
            ScreenToClient(h, &pt);
        g_seen.push_back({msg, wp, pt, GetKeyState(VK_SHIFT) < 0, GetKeyState(VK_CONTROL) < 0,
                          GetKeyState(VK_MENU) < 0, GetKeyState(VK_LBUTTON) < 0});
        return 0;
    }
    }
    return DefWindowProcW(h, msg, wp, lp);
}

std::vector<UINT> Messages(UINT except = 0)
{
    std::vector<UINT> out;
    for (const Seen& s : g_seen)
        if (s.msg != except)
            out.push_back(s.msg);
    return out;
}

class Input : public testing::Test {
protected:
    void SetUp() override
    {
        g_seen.clear();
        WNDCLASSW wc = {};
        wc.lpfnWndProc = RecordProc;
        wc.hInstance = GetModuleHandleW(nullptr);
        wc.lpszClassName = L"KxInputRecord";
        RegisterClassW(&wc);
        m_wnd = CreateWindowExW(0, wc.lpszClassName, L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 300, 200,
                                nullptr, nullptr, wc.hInstance, nullptr);
        ASSERT_NE(nullptr, m_wnd);
    }
    void TearDown() override
    {
        DestroyWindow(m_wnd);
        UnregisterClassW(L"KxInputRecord", GetModuleHandleW(nullptr));
    }
    HWND m_wnd = nullptr;
};

}  // namespace

TEST_F(Input, KeysAreTranslatedWithTheirModifiersHeld)
{
    KxPressKey(m_wnd, 'A');
    KxPressKey(m_wnd, 'A', KxShift);
    KxPressKey(m_wnd, 'C', KxCtrl);
    ASSERT_EQ((std::vector<UINT>{WM_KEYDOWN, WM_CHAR, WM_KEYUP, WM_KEYDOWN, WM_CHAR, WM_KEYUP, WM_KEYDOWN, WM_CHAR,
                                 WM_KEYUP}),
              Messages());
    EXPECT_EQ(L'a', g_seen[1].wp);
    EXPECT_EQ(L'A', g_seen[4].wp);
    EXPECT_TRUE(g_seen[4].shift);
    EXPECT_FALSE(g_seen[1].shift);
    EXPECT_EQ(3u, g_seen[7].wp);  // Ctrl+C is the control character ETX
    EXPECT_TRUE(g_seen[8].ctrl);  // the modifier is still down when the key comes up
    EXPECT_GE(GetKeyState(VK_SHIFT), 0);
    EXPECT_GE(GetKeyState(VK_CONTROL), 0);
    EXPECT_GE(GetKeyState('A'), 0);
}

TEST_F(Input, AltMakesSystemKeysAndExtendedKeysCarryTheirFlag)
{
    KxPressKey(m_wnd, 'F', KxAlt);
    ASSERT_EQ((std::vector<UINT>{WM_SYSKEYDOWN, WM_SYSCHAR, WM_SYSKEYUP}), Messages());
    EXPECT_TRUE(g_seen[0].alt);
    EXPECT_EQ(L'f', g_seen[1].wp);
    EXPECT_GE(GetKeyState(VK_MENU), 0);

    g_seen.clear();
    KxPressKey(m_wnd, VK_RIGHT, KxShift | KxCtrl);
    ASSERT_EQ((std::vector<UINT>{WM_KEYDOWN, WM_KEYUP}), Messages());  // no character for an arrow
    EXPECT_TRUE(g_seen[0].shift && g_seen[0].ctrl);
}

TEST_F(Input, TypingIntoAnEditAndSelectingWithShift)
{
    HWND edit = CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 5, 5, 200, 24, m_wnd,
                                nullptr, GetModuleHandleW(nullptr), nullptr);
    SetFocus(edit);
    KxTypeText(edit, L"hello ");
    KxPressKey(edit, 'W', KxShift);
    KxPressKey(edit, 'O');
    wchar_t text[32];
    GetWindowTextW(edit, text, 32);
    EXPECT_STREQ(L"hello Wo", text);
    KxPressKey(edit, VK_LEFT, KxShift);
    KxPressKey(edit, VK_LEFT, KxShift);
    DWORD start = 0, end = 0;
    SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(6u, start);
    EXPECT_EQ(8u, end);
}

TEST_F(Input, ClickAndDoubleClickReachTheWindowInOrder)
{
    KxClick(m_wnd, 40, 30, KxCtrl);
    ASSERT_EQ((std::vector<UINT>{WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP}), Messages());
    EXPECT_EQ(40, g_seen[1].pt.x);
    EXPECT_EQ(30, g_seen[1].pt.y);
    EXPECT_EQ(static_cast<WPARAM>(MK_LBUTTON | MK_CONTROL), g_seen[1].wp);
    EXPECT_TRUE(g_seen[1].lbutton && g_seen[1].ctrl);
    EXPECT_FALSE(g_seen[2].lbutton);

    g_seen.clear();
    KxDoubleClick(m_wnd, 10, 12);
    EXPECT_EQ((std::vector<UINT>{WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}),
              Messages(WM_MOUSEMOVE));

    g_seen.clear();
    KxClick(m_wnd, 7, 8, KxNoMod, KxButton::Right);
    EXPECT_EQ((std::vector<UINT>{WM_RBUTTONDOWN, WM_RBUTTONUP}), Messages(WM_MOUSEMOVE));
}

TEST_F(Input, DragMovesWithTheButtonDownAndWheelUsesScreenPoints)
{
    KxDrag(m_wnd, POINT{10, 10}, POINT{50, 30}, KxShift, 2);
    ASSERT_EQ((std::vector<UINT>{WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_MOUSEMOVE, WM_LBUTTONUP}), Messages());
    EXPECT_EQ(30, g_seen[2].pt.x);
    EXPECT_EQ(20, g_seen[2].pt.y);
    EXPECT_TRUE(g_seen[3].lbutton && g_seen[3].shift);
    EXPECT_EQ(static_cast<WPARAM>(MK_LBUTTON | MK_SHIFT), g_seen[3].wp);
    EXPECT_EQ(50, g_seen[4].pt.x);
    EXPECT_EQ(30, g_seen[4].pt.y);

    g_seen.clear();
    KxWheel(m_wnd, 20, 25, -2, KxCtrl);
    ASSERT_EQ(1u, g_seen.size());
    EXPECT_EQ(-2 * WHEEL_DELTA, static_cast<short>(HIWORD(g_seen[0].wp)));
    EXPECT_EQ(MK_CONTROL, LOWORD(g_seen[0].wp));
    EXPECT_EQ(20, g_seen[0].pt.x);
    EXPECT_EQ(25, g_seen[0].pt.y);
}

TEST_F(Input, ClicksSelectListViewItemsThroughItsTrackingLoop)
{
    INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&icc);
    HWND list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT, 0, 0, 280, 150, m_wnd,
                                nullptr, GetModuleHandleW(nullptr), nullptr);
    LVCOLUMNW col = {LVCF_WIDTH};
    col.cx = 200;
    SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&col));
    for (int i = 0; i < 4; ++i) {
        std::wstring text = L"item " + std::to_wstring(i);
        LVITEMW item = {LVIF_TEXT};
        item.iItem = i;
        item.pszText = &text[0];
        SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
    auto center = [&](int i) {
        RECT rc = {LVIR_LABEL};
        SendMessageW(list, LVM_GETITEMRECT, i, reinterpret_cast<LPARAM>(&rc));
        return POINT{(rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2};
    };
    auto selected = [&] {
        std::vector<int> out;
        for (int i = -1; (i = static_cast<int>(SendMessageW(list, LVM_GETNEXTITEM, i, LVNI_SELECTED))) >= 0;)
            out.push_back(i);
        return out;
    };
    POINT p = center(1);
    KxClick(list, p.x, p.y);
    EXPECT_EQ((std::vector<int>{1}), selected());
    p = center(3);
    KxClick(list, p.x, p.y, KxCtrl);
    EXPECT_EQ((std::vector<int>{1, 3}), selected());
    p = center(0);
    KxClick(list, p.x, p.y, KxShift);
    EXPECT_EQ((std::vector<int>{0, 1, 2, 3}), selected());  // the range from the last clicked item
}

TEST_F(Input, DraggingAListViewItemStartsADragWhereAClickDoesNot)
{
    INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&icc);
    HWND list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT, 0, 0, 280, 150, m_wnd,
                                reinterpret_cast<HMENU>(9), GetModuleHandleW(nullptr), nullptr);
    LVCOLUMNW col = {LVCF_WIDTH};
    col.cx = 200;
    SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&col));
    LVITEMW item = {LVIF_TEXT};
    item.pszText = const_cast<LPWSTR>(L"drag me");
    SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    RECT rc = {LVIR_LABEL};
    SendMessageW(list, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&rc));
    const POINT from = {(rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2};

    KxMsgRecorder rec;
    auto count = [&rec](int code) {
        int n = 0;
        for (const KxMsg& m : rec.Log())
            n += m.message == WM_NOTIFY && m.code == code;
        return n;
    };
    rec.Watch(m_wnd, "parent", {WM_NOTIFY});
    KxClick(list, from.x, from.y);
    EXPECT_EQ(1, count(NM_CLICK));
    EXPECT_EQ(0, count(LVN_BEGINDRAG));
    rec.Clear();
    KxDrag(list, from, POINT{from.x + 60, from.y + 40});
    EXPECT_EQ(1, count(LVN_BEGINDRAG));
    rec.Unwatch(m_wnd);
}
