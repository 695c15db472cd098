// KxUiDialogFolder: the shell's folder browser with an editable path above its folder tree.
//
// Model. DoModal runs SHBrowseForFolder with a callback that, once the browse dialog exists, attaches
// this object to it and m_tree to its folder tree (item 14145) and hooks the dialog through the
// window-procedure manager (the shell owns the dialog), so that the dialog's commands reach this
// object's message map before the shell's own procedure sees them. It hides the title and the
// status texts (items 14146 and 14147) and puts a path edit (id 0x1111) just above the tree. Edit and
// tree are kept in step both ways: choosing a folder in the tree writes its path into the edit; typing
// or pasting a path that exists (or a UNC path) selects it in the tree, and OK is enabled exactly while
// the edit holds an existing folder. OK reads the edit: the dialog ends only on an existing folder, and
// GetPathName gives it. The edit follows the dialog's width through a layout manager when the dialog is
// resized (new-style browser).
//
//     CString path = KxUi::browseFolder(L"C:\\Projects", L"Where should the project go?", true, this);
//     if (!path.IsEmpty()) ...
//
//     KxUiDialogFolder dlg(L"C:\\Projects", L"Export to", false, this);
//     if (dlg.DoModal() == 1) use(dlg.GetPathName());
//
// Overridables in order: DoModal, OnInitDialog.
#pragma once
#include "KxUiDef.h"
#include "KxUiWndProcMgr.h"
#include <afxwin.h>
#include <afxcmn.h>
#include <memory>
#include <shlobj.h>

class KxUiLayoutManager;

class KXUI_API KxUiDialogFolder : public CWnd {
    DECLARE_DYNAMIC(KxUiDialogFolder)
public:
    // Identifiers of the browse dialog's items and of the path edit.
    enum : UINT { idTree = 14145, idTitle = 14146, idStatus = 14147, idPathEdit = 0x1111 };
    // Height of the path edit in pixels.
    enum { editHeight = 19 };

    // initialPath: the folder shown first (the current directory when it does not exist); title: the
    // dialog's caption (none: the shell's); newStyle: the resizable browser (BIF_NEWDIALOGSTYLE);
    // pParent: its owner is the dialog's owner.
    KxUiDialogFolder(LPCWSTR initialPath, LPCWSTR title, bool newStyle, CWnd* pParent = NULL);
    ~KxUiDialogFolder() override;

    // ---- overridables ----
    // Runs the browser: 1 when the user confirmed an existing folder, else -1.
    virtual int DoModal();
    // The browse dialog exists: caption, subclassing, the path edit, the start folder, the layout.
    virtual BOOL OnInitDialog();

    // ---- results and state ----
    // The folder confirmed with OK (empty before).
    CString GetPathName() const { return m_strPath; }
    // The browse flags: BIF_RETURNONLYFSDIRS, with BIF_NEWDIALOGSTYLE for the new style.
    UINT GetFlags() const { return m_bi.ulFlags; }
    // The owner of the browse dialog (the safe owner of the parent given), NULL for none.
    HWND GetOwnerHwnd() const { return m_hOwner; }
    // The browse dialog while it runs, NULL otherwise.
    HWND GetBrowseHwnd() const { return m_hBrowse; }
    CEdit& GetPathEdit() { return m_edit; }
    CTreeCtrl& GetTree() { return m_tree; }

    // Whether the path names an existing file or folder.
    static bool _pathFileExists(LPCWSTR path);
    // Whether the path names an existing folder given in full (a drive or UNC root, not relative), no
    // longer than MAX_PATH - 1 characters.
    static bool isExistingFolder(LPCWSTR path);

protected:
    static int CALLBACK BrowseCallbackProc(HWND hWnd, UINT uMsg, LPARAM lParam, LPARAM lpData);
    // BFFM_SELCHANGED: the tree's new folder into the edit.
    void OnTreeSelChanged(LPCITEMIDLIST pidl);
    // The edit's text; empty when it is longer than a path can be.
    CString ReadEdit() const;

    afx_msg void OnChangePathEdit();
    afx_msg void OnOK();
    // The dialog is going: the window objects let go of its handles.
    void OnBrowseNcDestroy();

    // The hook on the shell's dialog: its messages go through this object's message map first.
    class BrowseHook : public KxUiWndProc {
    public:
        explicit BrowseHook(KxUiDialogFolder* pOwner) : m_pOwner(pOwner) {}
        int windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;

    private:
        KxUiDialogFolder* m_pOwner;
    };
    friend class BrowseHook;

    CString m_strInitialPath;
    CString m_strTitle;
    bool m_bNewStyle;
    HWND m_hOwner;
    BROWSEINFOW m_bi;
    HWND m_hBrowse;
    WCHAR m_szPath[MAX_PATH];     // display name buffer of the browser, then the path chosen
    int m_nOK;                    // set when OK accepted the path
    bool m_bSelChanging;          // the edit is being written from the tree
    CString m_strPath;
    CEdit m_edit;
    CTreeCtrl m_tree;
    std::unique_ptr<KxUiLayoutManager> m_pLayout;
    BrowseHook m_hook;
    bool m_bPassToShell;          // the handler wants the shell's own procedure to run as well

    DECLARE_MESSAGE_MAP()
};

namespace KxUi {
// Runs a KxUiDialogFolder: the folder chosen, or an empty string. An empty title becomes
// "$$Sélection d'un répertoire...", a key the host translates like every "$$" text.
KXUI_API CString browseFolder(CString initialPath, const CString& title, bool newStyle, CWnd* parent);
}  // namespace KxUi
