#include "KxInput.h"

namespace {

bool IsExtendedKey(UINT vk)
{
    switch (vk) {
    case VK_INSERT: case VK_DELETE: case VK_HOME: case VK_END: case VK_PRIOR: case VK_NEXT:
    case VK_LEFT: case VK_RIGHT: case VK_UP: case VK_DOWN: case VK_RCONTROL: case VK_RMENU:
    case VK_DIVIDE: case VK_NUMLOCK: case VK_SNAPSHOT: case VK_LWIN: case VK_RWIN: case VK_APPS:
        return true;
    default:
        return false;
    }
}

WPARAM MouseKeys(UINT mods)
{
    return ((mods & KxShift) ? MK_SHIFT : 0) | ((mods & KxCtrl) ? MK_CONTROL : 0);
}

LPARAM ClientPoint(int x, int y)
{
    return MAKELPARAM(static_cast<WORD>(static_cast<short>(x)), static_cast<WORD>(static_cast<short>(y)));
}

// Puts the cursor where the action happens, for code that asks GetCursorPos. The move
// the system reports for it is dropped: the helpers deliver their own mouse messages.
void MoveCursorTo(HWND wnd, int x, int y)
{
    POINT pt = {x, y};
    ClientToScreen(wnd, &pt);
    SetCursorPos(pt.x, pt.y);
    MSG msg;
    while (PeekMessageW(&msg, nullptr, WM_MOUSEMOVE, WM_MOUSEMOVE, PM_REMOVE)) {
    }
}

struct ButtonMessages {
    UINT down, up, dbl;
    WPARAM mk;
    UINT vk;
};

ButtonMessages MessagesOf(KxButton b)
{
    switch (b) {
    case KxButton::Right:
        return {WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDBLCLK, MK_RBUTTON, VK_RBUTTON};
    case KxButton::Middle:
        return {WM_MBUTTONDOWN, WM_MBUTTONUP, WM_MBUTTONDBLCLK, MK_MBUTTON, VK_MBUTTON};
    default:
        return {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, MK_LBUTTON, VK_LBUTTON};
    }
}

void SetDown(BYTE* state, UINT vk)
{
    state[vk] |= 0x80;
}

}  // namespace

KxKeyState::KxKeyState(UINT mods, UINT extraVk)
{
    GetKeyboardState(m_saved);
    BYTE state[256];
    memcpy(state, m_saved, sizeof state);
    if (mods & KxShift) {
        SetDown(state, VK_SHIFT);
        SetDown(state, VK_LSHIFT);
    }
    if (mods & KxCtrl) {
        SetDown(state, VK_CONTROL);
        SetDown(state, VK_LCONTROL);
    }
    if (mods & KxAlt) {
        SetDown(state, VK_MENU);
        SetDown(state, VK_LMENU);
    }
    if (extraVk)
        SetDown(state, extraVk & 0xFF);
    SetKeyboardState(state);
}

KxKeyState::~KxKeyState()
{
    SetKeyboardState(m_saved);
}

void KxPumpMessages()
{
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }
}

void KxPressKey(HWND wnd, UINT vk, UINT mods)
{
    KxKeyState held(mods);
    const bool sys = (mods & KxAlt) && !(mods & KxCtrl);
    const UINT scan = MapVirtualKeyW(vk, MAPVK_VK_TO_VSC);
    LPARAM lp = 1 | (static_cast<LPARAM>(scan & 0xFF) << 16);
    if (IsExtendedKey(vk))
        lp |= 1 << 24;
    if (mods & KxAlt)
        lp |= 1 << 29;
    MSG msg = {};
    msg.hwnd = wnd;
    msg.time = GetTickCount();
    GetCursorPos(&msg.pt);
    {
        KxKeyState key(mods, vk);
        msg.message = sys ? WM_SYSKEYDOWN : WM_KEYDOWN;
        msg.wParam = vk;
        msg.lParam = lp;
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
        // The characters TranslateMessage queued for this key.
        MSG ch;
        while (PeekMessageW(&ch, wnd, WM_CHAR, WM_SYSDEADCHAR, PM_REMOVE))
            DispatchMessageW(&ch);
    }
    msg.message = sys ? WM_SYSKEYUP : WM_KEYUP;
    msg.lParam = lp | (1u << 30) | (1u << 31);
    DispatchMessageW(&msg);
}

void KxTypeText(HWND wnd, const wchar_t* text)
{
    for (; text && *text; ++text)
        SendMessageW(wnd, WM_CHAR, *text, 1);
}

void KxClick(HWND wnd, int x, int y, UINT mods, KxButton button)
{
    const ButtonMessages m = MessagesOf(button);
    KxKeyState held(mods);
    MoveCursorTo(wnd, x, y);
    SendMessageW(wnd, WM_MOUSEMOVE, MouseKeys(mods), ClientPoint(x, y));
    PostMessageW(wnd, m.up, MouseKeys(mods), ClientPoint(x, y));
    {
        KxKeyState pressed(mods, m.vk);
        SendMessageW(wnd, m.down, MouseKeys(mods) | m.mk, ClientPoint(x, y));
    }
    KxPumpMessages();
}

void KxDoubleClick(HWND wnd, int x, int y, UINT mods)
{
    KxClick(wnd, x, y, mods);
    KxKeyState held(mods);
    PostMessageW(wnd, WM_LBUTTONUP, MouseKeys(mods), ClientPoint(x, y));
    {
        KxKeyState pressed(mods, VK_LBUTTON);
        SendMessageW(wnd, WM_LBUTTONDBLCLK, MouseKeys(mods) | MK_LBUTTON, ClientPoint(x, y));
    }
    KxPumpMessages();
}

void KxDrag(HWND wnd, POINT from, POINT to, UINT mods, int steps)
{
    if (steps < 1)
        steps = 1;
    KxKeyState held(mods);
    MoveCursorTo(wnd, from.x, from.y);
    SendMessageW(wnd, WM_MOUSEMOVE, MouseKeys(mods), ClientPoint(from.x, from.y));
    {
        // Moves and release are queued first, so a modal tracking loop started by the
        // button-down finds them; the button stays down until they are all delivered.
        KxKeyState pressed(mods, VK_LBUTTON);
        for (int i = 1; i <= steps; ++i) {
            const int x = from.x + (to.x - from.x) * i / steps;
            const int y = from.y + (to.y - from.y) * i / steps;
            PostMessageW(wnd, WM_MOUSEMOVE, MouseKeys(mods) | MK_LBUTTON, ClientPoint(x, y));
        }
        PostMessageW(wnd, WM_LBUTTONUP, MouseKeys(mods), ClientPoint(to.x, to.y));
        SendMessageW(wnd, WM_LBUTTONDOWN, MouseKeys(mods) | MK_LBUTTON, ClientPoint(from.x, from.y));
        KxPumpMessages();
    }
    MoveCursorTo(wnd, to.x, to.y);
}

void KxWheel(HWND wnd, int x, int y, int clicks, UINT mods)
{
    KxKeyState held(mods);
    MoveCursorTo(wnd, x, y);
    POINT pt = {x, y};
    ClientToScreen(wnd, &pt);
    SendMessageW(wnd, WM_MOUSEWHEEL, MAKEWPARAM(MouseKeys(mods), clicks * WHEEL_DELTA),
                 MAKELPARAM(static_cast<WORD>(static_cast<short>(pt.x)), static_cast<WORD>(static_cast<short>(pt.y))));
}
