// A parent window for the edits under test, and helpers that act on an edit the way a user
// does and read back what it shows.
#pragma once
#include <afxwin.h>
#include <string>
#include <vector>
#include "KxInput.h"

// Records the notifications its child edits let through to it (after reflection), and
// reflects the colour messages to its controls' objects.
class EditHost : public CWnd {
public:
    EditHost();
    ~EditHost() override;

    // Notification codes received from the control with the id, in order.
    std::vector<UINT> notifications;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    // The colour messages go to the child's object first (CWnd's reflection).
    afx_msg HBRUSH OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor);
    DECLARE_MESSAGE_MAP()
};

// Counts refused keystrokes (the control's own beep cannot be observed).
template <class TEdit>
class Counting : public TEdit {
public:
    int refusals = 0;
    void ValidationError() override
    {
        ++refusals;
    }
};

constexpr UINT kEditId = 101;

// Creates an edit child of host: 200 x 24 at (10, 10), visible, with a border.
template <class TEdit>
bool CreateEdit(TEdit& edit, EditHost& host, DWORD extraStyle = 0)
{
    RECT rc = {10, 10, 210, 34};
    return edit.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL | extraStyle, rc, &host,
                       kEditId) != FALSE;
}

std::wstring WindowText(HWND hWnd);
// Selection as (start, end); equal for a caret.
std::pair<int, int> Selection(HWND hWnd);
int Caret(HWND hWnd);
void Select(HWND hWnd, int nStart, int nEnd);
// Types text as WM_CHAR messages.
void Type(HWND hWnd, const wchar_t* text);
// A key with its modifiers, through the message loop (so Backspace makes its WM_CHAR).
void Key(HWND hWnd, UINT vk, UINT mods = KxNoMod);
// Puts text on the clipboard; false when the clipboard cannot be opened.
bool PutClipboard(const std::wstring& text);
std::wstring ClipboardText();
