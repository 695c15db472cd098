// Keyboard and mouse input for tests: the messages a user's actions produce, delivered
// to a window with the modifier keys set in the thread's keyboard state, so that
// GetKeyState/GetKeyboardState in the code under test see them.
#pragma once
#include <windows.h>

// Modifier keys held during an action.
enum KxMod : UINT {
    KxNoMod = 0,
    KxShift = 1,
    KxCtrl = 2,
    KxAlt = 4,
};

// Holds modifier (and mouse button) keys down in the thread's keyboard state for its
// lifetime and restores the previous state afterwards.
class KxKeyState {
public:
    explicit KxKeyState(UINT mods, UINT extraVk = 0);
    ~KxKeyState();
    KxKeyState(const KxKeyState&) = delete;
    KxKeyState& operator=(const KxKeyState&) = delete;

private:
    BYTE m_saved[256];
};

// Presses and releases a virtual key on wnd with the given modifiers: WM_KEYDOWN (or
// WM_SYSKEYDOWN with Alt), the characters the keyboard layout makes of it (WM_CHAR,
// through TranslateMessage), WM_KEYUP. Messages go through DispatchMessage, so the
// window's procedure sees them as if they came from its message loop.
void KxPressKey(HWND wnd, UINT vk, UINT mods = KxNoMod);
// Sends WM_CHAR for every character of text (what typing it produces after translation).
void KxTypeText(HWND wnd, const wchar_t* text);

enum class KxButton { Left, Right, Middle };

// A click at client coordinates (x, y) of wnd: WM_MOUSEMOVE, button down, button up.
// The button-up is queued before the button-down is delivered, so a control that tracks
// the mouse in a modal loop of its own (drag detection) finds it and returns.
void KxClick(HWND wnd, int x, int y, UINT mods = KxNoMod, KxButton button = KxButton::Left);
// A double click: down, up, double-click, up.
void KxDoubleClick(HWND wnd, int x, int y, UINT mods = KxNoMod);
// Presses the left button at from, moves in `steps` equal steps to `to` and releases.
void KxDrag(HWND wnd, POINT from, POINT to, UINT mods = KxNoMod, int steps = 4);
// Turns the wheel by `clicks` notches (positive: away from the user) over client (x, y).
void KxWheel(HWND wnd, int x, int y, int clicks, UINT mods = KxNoMod);

// Dispatches the messages waiting in this thread's queue (no waiting).
void KxPumpMessages();
