#include "KxEditHost.h"

namespace {

const wchar_t kHostClass[] = L"KxEditTestHost";

void RegisterHostClass()
{
    WNDCLASSW wc = {};
    wc.lpfnWndProc = DefWindowProcW;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = kHostClass;
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    RegisterClassW(&wc);
}

} // namespace

BEGIN_MESSAGE_MAP(EditHost, CWnd)
    ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

EditHost::EditHost()
{
    RegisterHostClass();
    HWND hWnd = CreateWindowExW(0, kHostClass, L"edits", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                400, 200, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    SubclassWindow(hWnd);
}

EditHost::~EditHost()
{
    DestroyWindow();
}

BOOL EditHost::OnCommand(WPARAM wParam, LPARAM lParam)
{
    // What the child reflection lets through reaches the parent's own handling.
    if (CWnd::OnCommand(wParam, lParam))
        return TRUE;
    if (LOWORD(wParam) == kEditId)
        notifications.push_back(HIWORD(wParam));
    return TRUE;
}

HBRUSH EditHost::OnCtlColor(CDC* pDC, CWnd* pWnd, UINT nCtlColor)
{
    return CWnd::OnCtlColor(pDC, pWnd, nCtlColor);
}

std::wstring WindowText(HWND hWnd)
{
    int n = GetWindowTextLengthW(hWnd);
    std::wstring s(n + 1, L'\0');
    GetWindowTextW(hWnd, &s[0], n + 1);
    s.resize(wcslen(s.c_str()));
    return s;
}

std::pair<int, int> Selection(HWND hWnd)
{
    DWORD s = 0, e = 0;
    SendMessageW(hWnd, EM_GETSEL, reinterpret_cast<WPARAM>(&s), reinterpret_cast<LPARAM>(&e));
    return {static_cast<int>(s), static_cast<int>(e)};
}

int Caret(HWND hWnd)
{
    auto sel = Selection(hWnd);
    return sel.first == sel.second ? sel.first : -1;
}

void Select(HWND hWnd, int nStart, int nEnd)
{
    SendMessageW(hWnd, EM_SETSEL, nStart, nEnd);
}

void Type(HWND hWnd, const wchar_t* text)
{
    KxTypeText(hWnd, text);
}

void Key(HWND hWnd, UINT vk, UINT mods)
{
    KxPressKey(hWnd, vk, mods);
}

bool PutClipboard(const std::wstring& text)
{
    if (!OpenClipboard(nullptr))
        return false;
    EmptyClipboard();
    size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    HGLOBAL hMem = GlobalAlloc(GMEM_MOVEABLE, bytes);
    memcpy(GlobalLock(hMem), text.c_str(), bytes);
    GlobalUnlock(hMem);
    bool ok = SetClipboardData(CF_UNICODETEXT, hMem) != nullptr;
    CloseClipboard();
    return ok;
}

std::wstring ClipboardText()
{
    std::wstring s;
    if (!OpenClipboard(nullptr))
        return s;
    if (HANDLE h = GetClipboardData(CF_UNICODETEXT)) {
        s = static_cast<const wchar_t*>(GlobalLock(h));
        GlobalUnlock(h);
    }
    CloseClipboard();
    return s;
}
