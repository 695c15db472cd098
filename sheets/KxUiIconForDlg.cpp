// KxUiIconForDlg: loads an icon and puts it into a dialog's caption.
#include "KxUiIconForDlg.h"
#include "KxUiSwitchResource.h"
#include <afxwin.h>

KxUiIconForDlg::KxUiIconForDlg() : m_hIcon(nullptr) {}

KxUiIconForDlg::~KxUiIconForDlg()
{
    if (m_hIcon != nullptr)
        ::DestroyIcon(m_hIcon);
}

bool KxUiIconForDlg::canSetIcon(HWND hWnd)
{
    if (hWnd == nullptr || !::IsWindow(hWnd))
        return false;
    const LONG style = ::GetWindowLongW(hWnd, GWL_STYLE);
    return (style & WS_SYSMENU) != 0 && (style & DS_MODALFRAME) == 0;
}

HICON KxUiIconForDlg::attachIcon(HWND hWnd, HICON hIcon)
{
    if (hWnd == nullptr)
        return nullptr;
    return reinterpret_cast<HICON>(
        ::SendMessageW(hWnd, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(hIcon)));
}

HICON KxUiIconForDlg::loadIcon(UINT id)
{
    return static_cast<HICON>(::LoadImageW(AfxGetResourceHandle(), MAKEINTRESOURCEW(id), IMAGE_ICON, 16, 16, 0));
}

void KxUiIconForDlg::attach(HWND hDialog, HINSTANCE hModule, UINT iconId)
{
    if (!canSetIcon(hDialog))
        return;
    HICON hNew = nullptr;
    {
        // The module given is the resource module while the icon loads.
        KxUiSwitchResource use(hModule);
        hNew = loadIcon(iconId);
    }
    if (hNew == nullptr)
        return;
    HICON hOld = m_hIcon;
    m_hIcon = hNew;
    HICON hReplaced = attachIcon(hDialog, hNew);
    // The icon loaded before is freed once the window no longer shows it. An icon the dialog had from
    // elsewhere (its class, the host) is not ours to free.
    if (hOld != nullptr)
        ::DestroyIcon(hOld);
    (void)hReplaced;
}
