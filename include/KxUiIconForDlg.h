// KxUiIconForDlg: a small icon in a dialog's caption.
//
// The object owns the icon it loaded and frees it when it loads another or is destroyed; the dialog gets
// the icon with WM_SETICON (ICON_SMALL). Only a dialog that shows a system menu and has no modal frame
// shows a caption icon, so other dialogs are left alone.
//
//     // in CMyDialog::OnInitDialog, m_icon being a KxUiIconForDlg member
//     m_icon.attach(m_hWnd, hLanguageModule, IDI_EXPORT);   // NULL module: the current resources
//
// Overridables: loadIcon.
#pragma once
#include "KxUiDef.h"
#include <windows.h>

class KXUI_API KxUiIconForDlg {
public:
    KxUiIconForDlg();
    virtual ~KxUiIconForDlg();
    KxUiIconForDlg(const KxUiIconForDlg&) = delete;
    KxUiIconForDlg& operator=(const KxUiIconForDlg&) = delete;

    // Loads icon iconId (from module when given, else from the current resource module) and makes it the
    // dialog's small caption icon, freeing the one loaded before. Nothing when canSetIcon is false or
    // the icon cannot be loaded.
    void attach(HWND hDialog, HINSTANCE hModule, UINT iconId);
    // The icon loaded last (owned), NULL for none.
    HICON getIcon() const { return m_hIcon; }

    // True when the window has WS_SYSMENU and not DS_MODALFRAME.
    static bool canSetIcon(HWND hWnd);
    // Sets the small caption icon; the icon it replaces.
    static HICON attachIcon(HWND hWnd, HICON hIcon);

    // ---- overridables ----
    // The icon at 16 x 16 from the current resource module; the caller owns it.
    virtual HICON loadIcon(UINT id);

protected:
    HICON m_hIcon;
};
