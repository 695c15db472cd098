// The folder dialog over the shell's real folder browser, driven from inside its modal loop, and the
// caption icon of dialogs.
#include "KxUiDialogFolder.h"
#include "KxUiIconForDlg.h"
#include "KxModalDriver.h"
#include <gtest/gtest.h>
#include <string>

namespace {

using D = KxUiDialogFolder;

CString WindowsDir()
{
    WCHAR dir[MAX_PATH] = {};
    ::GetWindowsDirectoryW(dir, MAX_PATH);
    return dir;
}

CString SelectedTreeText(CTreeCtrl& tree)
{
    HTREEITEM h = tree.GetSelectedItem();
    return h != nullptr ? tree.GetItemText(h) : CString();
}

// Runs the dialog with a script; a dialog still open after the limit is cancelled (and the test fails).
int RunFolder(D& dlg, std::function<void()> script, KxModalDriver& drive)
{
    return drive.Run([&] { return dlg.DoModal(); }, [&] { return dlg.GetBrowseHwnd() != nullptr; },
                     std::move(script), [&] { ::PostMessageW(dlg.GetBrowseHwnd(), WM_COMMAND, IDCANCEL, 0); });
}

TEST(FolderDialog, EditAboveTreeFollowsTheTreeAndOkReturnsThePath)
{
    const CString windows = WindowsDir();
    const CString system = windows + L"\\system32";
    D dlg(windows, L"Choose a folder", false, nullptr);
    EXPECT_EQ(static_cast<UINT>(BIF_RETURNONLYFSDIRS), dlg.GetFlags());
    KxModalDriver drive;
    CString caption, startText, startTree, afterTyping, afterTree;
    CRect edit, tree;
    DWORD editStyle = 0;
    bool titleHidden = false, okAfterTyping = false;
    const int r = RunFolder(dlg, [&] {
        HWND hDlg = dlg.GetBrowseHwnd();
        WCHAR text[256] = {};
        ::GetWindowTextW(hDlg, text, 256);
        caption = text;
        titleHidden = !::IsWindowVisible(::GetDlgItem(hDlg, D::idTitle));
        CWnd* pEdit = dlg.GetDlgItem(D::idPathEdit);
        ASSERT_NE(nullptr, pEdit);
        pEdit->GetWindowRect(&edit);
        dlg.GetTree().GetWindowRect(&tree);
        editStyle = pEdit->GetStyle();
        pEdit->GetWindowText(startText);
        startTree = SelectedTreeText(dlg.GetTree());

        // Typing a folder selects it in the tree and enables OK.
        dlg.GetPathEdit().SetWindowText(system);
        afterTyping = SelectedTreeText(dlg.GetTree());
        okAfterTyping = ::IsWindowEnabled(::GetDlgItem(hDlg, IDOK)) != FALSE;

        // Choosing the parent in the tree writes its path into the edit.
        CTreeCtrl& t = dlg.GetTree();
        t.SelectItem(t.GetParentItem(t.GetSelectedItem()));
        dlg.GetPathEdit().GetWindowText(afterTree);

        ::SendMessageW(hDlg, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    }, drive);
    EXPECT_TRUE(drive.ScriptRan());
    EXPECT_FALSE(drive.Rescued());
    EXPECT_EQ(1, r);
    EXPECT_EQ(CString(L"Choose a folder"), caption);
    EXPECT_TRUE(titleHidden);
    // Just above the tree, as wide, 19 high.
    EXPECT_EQ(tree.top, edit.bottom);
    EXPECT_EQ(19, edit.Height());
    EXPECT_EQ(tree.left, edit.left);
    EXPECT_EQ(tree.right, edit.right);
    // The edit control takes WS_BORDER out of its window style as it is created (it draws the border
    // itself), so only the other bits can be seen.
    EXPECT_EQ(static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL),
              editStyle & (WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL));
    EXPECT_EQ(0, startText.CompareNoCase(windows));
    EXPECT_EQ(0, startTree.CompareNoCase(L"windows"));
    EXPECT_EQ(0, afterTyping.CompareNoCase(L"system32"));
    EXPECT_TRUE(okAfterTyping);
    EXPECT_EQ(0, afterTree.CompareNoCase(windows));
    EXPECT_EQ(0, dlg.GetPathName().CompareNoCase(windows));
    EXPECT_EQ(nullptr, dlg.GetBrowseHwnd());
    EXPECT_EQ(nullptr, dlg.GetSafeHwnd());
}

TEST(FolderDialog, BadPathsDisableOkAndKeepTheDialogOpen)
{
    WCHAR cwd[MAX_PATH] = {};
    ::GetCurrentDirectoryW(MAX_PATH, cwd);
    D dlg(L"C:\\no\\such\\folder", L"", false, nullptr);
    KxModalDriver drive;
    CString startText;
    std::vector<bool> okFor;
    bool stillOpen = false, focusInEdit = false;
    const CString windows = WindowsDir();
    const CString bad[] = {
        L"C:\\no\\such\\folder",
        windows + L"\\win.ini",                 // a file, not a folder
        L"system32",                            // relative
        windows + L"\\" + CString(L'x', 300),  // longer than a path
        L"C:\\bad<name>|?",
    };
    const int r = RunFolder(dlg, [&] {
        HWND hDlg = dlg.GetBrowseHwnd();
        dlg.GetPathEdit().GetWindowText(startText);
        for (const CString& path : bad) {
            dlg.GetPathEdit().SetWindowText(path);
            okFor.push_back(::IsWindowEnabled(::GetDlgItem(hDlg, IDOK)) != FALSE);
        }
        ::SendMessageW(hDlg, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
        stillOpen = ::IsWindow(hDlg) && dlg.GetBrowseHwnd() != nullptr;
        focusInEdit = ::GetFocus() == dlg.GetPathEdit().m_hWnd;
        dlg.GetPathEdit().SetWindowText(windows);  // a good one again
        EXPECT_TRUE(::IsWindowEnabled(::GetDlgItem(hDlg, IDOK)));
        ::SendMessageW(hDlg, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
    }, drive);
    EXPECT_TRUE(drive.ScriptRan());
    EXPECT_FALSE(drive.Rescued());
    EXPECT_EQ(-1, r);  // cancelled
    EXPECT_TRUE(dlg.GetPathName().IsEmpty());
    EXPECT_EQ(0, startText.CompareNoCase(cwd));  // a missing start folder gives the current one
    EXPECT_EQ(std::vector<bool>(5, false), okFor);
    EXPECT_TRUE(stillOpen);
    EXPECT_TRUE(focusInEdit);
}

TEST(FolderDialog, BrowseFolderAndTheNewStyle)
{
    // browseFolder: the chosen folder, or nothing when cancelled; an empty title gives the key text.
    KxModalDriver drive;
    CString caption;
    const CString windows = WindowsDir();
    HWND hBrowse = nullptr;
    auto findBrowse = [&] {
        hBrowse = ::FindWindowW(L"#32770", nullptr);
        return hBrowse != nullptr && ::GetDlgItem(hBrowse, D::idPathEdit) != nullptr;
    };
    CString result = drive.Run([&] { return KxUi::browseFolder(windows, L"", false, nullptr); }, findBrowse, [&] {
        WCHAR text[256] = {};
        ::GetWindowTextW(hBrowse, text, 256);
        caption = text;
        ::SendMessageW(hBrowse, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    }, [&] { ::PostMessageW(hBrowse, WM_COMMAND, IDCANCEL, 0); });
    EXPECT_EQ(CString(L"$$Sélection d'un répertoire..."), caption);
    EXPECT_EQ(0, result.CompareNoCase(windows));
    result = drive.Run([&] { return KxUi::browseFolder(windows, L"Pick", true, nullptr); }, findBrowse,
                       [&] { ::SendMessageW(hBrowse, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0); },
                       [&] { ::PostMessageW(hBrowse, WM_COMMAND, IDCANCEL, 0); });
    EXPECT_TRUE(drive.ScriptRan());
    EXPECT_TRUE(result.IsEmpty());

    // The new style: the flag, and the edit keeps its margins when the dialog grows.
    D dlg(windows, L"New style", true, nullptr);
    EXPECT_EQ(static_cast<UINT>(BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE), dlg.GetFlags());
    CRect before, after;
    RunFolder(dlg, [&] {
        HWND hDlg = dlg.GetBrowseHwnd();
        dlg.GetPathEdit().GetWindowRect(&before);
        RECT rc;
        ::GetWindowRect(hDlg, &rc);
        ::SetWindowPos(hDlg, nullptr, 0, 0, rc.right - rc.left + 60, rc.bottom - rc.top + 40,
                       SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        dlg.GetPathEdit().GetWindowRect(&after);
        ::SendMessageW(hDlg, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
    }, drive);
    EXPECT_EQ(before.left, after.left);
    EXPECT_EQ(before.top, after.top);
    EXPECT_EQ(before.Width() + 60, after.Width());
    EXPECT_EQ(before.Height(), after.Height());
}

// A top-level window of a given style, destroyed with the test.
struct TestWindow {
    explicit TestWindow(DWORD style)
    {
        hWnd = ::CreateWindowExW(0, L"#32770", L"Icon test", style, 0, 0, 200, 100, nullptr, nullptr, nullptr,
                                 nullptr);
    }
    ~TestWindow() { ::DestroyWindow(hWnd); }
    HWND hWnd;
};

TEST(DialogIcon, OnlyDialogsWithSystemMenuAndNoModalFrameGetTheIcon)
{
    HINSTANCE hShell = ::GetModuleHandleW(L"shell32.dll");
    ASSERT_NE(nullptr, hShell);
    TestWindow plain(WS_POPUP | WS_CAPTION | WS_SYSMENU), modal(WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME),
        noMenu(WS_POPUP | WS_CAPTION);
    EXPECT_TRUE(KxUiIconForDlg::canSetIcon(plain.hWnd));
    EXPECT_FALSE(KxUiIconForDlg::canSetIcon(modal.hWnd));
    EXPECT_FALSE(KxUiIconForDlg::canSetIcon(noMenu.hWnd));
    EXPECT_FALSE(KxUiIconForDlg::canSetIcon(nullptr));

    KxUiIconForDlg icon;
    icon.attach(modal.hWnd, hShell, 4);
    icon.attach(noMenu.hWnd, hShell, 4);
    EXPECT_EQ(nullptr, icon.getIcon());
    EXPECT_EQ(0, ::SendMessageW(modal.hWnd, WM_GETICON, ICON_SMALL, 0));

    // Loaded from the module given, 16 x 16, shown as the small caption icon.
    icon.attach(plain.hWnd, hShell, 4);
    HICON first = icon.getIcon();
    ASSERT_NE(nullptr, first);
    EXPECT_EQ(reinterpret_cast<LRESULT>(first), ::SendMessageW(plain.hWnd, WM_GETICON, ICON_SMALL, 0));
    ICONINFO info = {};
    ASSERT_TRUE(::GetIconInfo(first, &info));
    BITMAP bm = {};
    ::GetObjectW(info.hbmColor != nullptr ? info.hbmColor : info.hbmMask, sizeof(bm), &bm);
    EXPECT_EQ(16, bm.bmWidth);
    ::DeleteObject(info.hbmColor);
    ::DeleteObject(info.hbmMask);

    // A second icon replaces the first, which is freed; an icon that cannot be loaded changes nothing.
    icon.attach(plain.hWnd, hShell, 5);
    HICON second = icon.getIcon();
    EXPECT_NE(first, second);
    EXPECT_EQ(reinterpret_cast<LRESULT>(second), ::SendMessageW(plain.hWnd, WM_GETICON, ICON_SMALL, 0));
    EXPECT_FALSE(::GetIconInfo(first, &info));
    icon.attach(plain.hWnd, hShell, 0xFFF0);
    EXPECT_EQ(second, icon.getIcon());

    // attachIcon answers with the icon it replaces.
    EXPECT_EQ(second, KxUiIconForDlg::attachIcon(plain.hWnd, nullptr));
    EXPECT_EQ(nullptr, KxUiIconForDlg::attachIcon(nullptr, second));
}

}  // namespace
