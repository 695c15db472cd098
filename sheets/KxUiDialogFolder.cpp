// KxUiDialogFolder: SHBrowseForFolder with a path edit kept in step with the folder tree.
#include "KxUiDialogFolder.h"
#include "KxUiLayoutManager.h"
#include <shlwapi.h>

IMPLEMENT_DYNAMIC(KxUiDialogFolder, CWnd)

BEGIN_MESSAGE_MAP(KxUiDialogFolder, CWnd)
    ON_EN_CHANGE(KxUiDialogFolder::idPathEdit, &KxUiDialogFolder::OnChangePathEdit)
    ON_BN_CLICKED(IDOK, &KxUiDialogFolder::OnOK)
END_MESSAGE_MAP()

KxUiDialogFolder::KxUiDialogFolder(LPCWSTR initialPath, LPCWSTR title, bool newStyle, CWnd* pParent)
    : m_strInitialPath(initialPath != nullptr ? initialPath : L""), m_strTitle(title != nullptr ? title : L""),
      m_bNewStyle(newStyle), m_hOwner(nullptr), m_bi(), m_hBrowse(nullptr), m_szPath(), m_nOK(0),
      m_bSelChanging(false), m_hook(this), m_bPassToShell(false)
{
    CWnd* pOwner = CWnd::GetSafeOwner(pParent);
    m_hOwner = pOwner != nullptr ? pOwner->GetSafeHwnd() : nullptr;
    m_bi.hwndOwner = m_hOwner;
    m_bi.pidlRoot = nullptr;
    m_bi.pszDisplayName = m_szPath;
    m_bi.lpszTitle = nullptr;
    m_bi.ulFlags = BIF_RETURNONLYFSDIRS | (newStyle ? BIF_NEWDIALOGSTYLE : 0);
    m_bi.lpfn = &KxUiDialogFolder::BrowseCallbackProc;
    m_bi.lParam = reinterpret_cast<LPARAM>(this);
}

KxUiDialogFolder::~KxUiDialogFolder()
{
    // Only while a browse dialog would outlive its object (it never should): let go of its handles;
    // the hook detaches itself as it is destroyed.
    if (m_tree.m_hWnd != nullptr)
        m_tree.Detach();
    if (m_hWnd != nullptr)
        Detach();
}

int KxUiDialogFolder::BrowseHook::windowProc(HWND, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    if (message == WM_NCDESTROY) {
        m_pOwner->OnBrowseNcDestroy();
        return 0;
    }
    if (message != WM_COMMAND || m_pOwner->m_hWnd == nullptr)
        return 0;
    m_pOwner->m_bPassToShell = false;
    if (!m_pOwner->OnWndMsg(message, wParam, lParam, &result))
        return 0;
    // Handled here; the shell's procedure runs too when the handler asked for it.
    return m_pOwner->m_bPassToShell ? 0 : 1;
}

void KxUiDialogFolder::OnBrowseNcDestroy()
{
    m_hBrowse = nullptr;
    if (m_tree.m_hWnd != nullptr)
        m_tree.Detach();
    if (m_hWnd != nullptr)
        Detach();
}

bool KxUiDialogFolder::_pathFileExists(LPCWSTR path)
{
    return path != nullptr && *path != 0 && ::PathFileExistsW(path) != FALSE;
}

bool KxUiDialogFolder::isExistingFolder(LPCWSTR path)
{
    if (path == nullptr || *path == 0 || ::wcslen(path) >= MAX_PATH || ::PathIsRelativeW(path))
        return false;
    const DWORD attributes = ::GetFileAttributesW(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

int KxUiDialogFolder::DoModal()
{
    m_bi.lpfn = &KxUiDialogFolder::BrowseCallbackProc;
    m_bi.lParam = reinterpret_cast<LPARAM>(this);
    IMalloc* pMalloc = nullptr;
    if (FAILED(::SHGetMalloc(&pMalloc)) || pMalloc == nullptr)
        return -1;
    m_nOK = 0;
    m_strPath.Empty();
    const bool ownerWasEnabled = m_hOwner != nullptr && ::IsWindowEnabled(m_hOwner);
    // The browser needs COM for its tree (the new style for its folder view); a thread that has it
    // already gets S_FALSE or RPC_E_CHANGED_MODE and keeps its own.
    const HRESULT hrCom = ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    LPITEMIDLIST pidl = ::SHBrowseForFolderW(&m_bi);
    if (pidl != nullptr)
        pMalloc->Free(pidl);
    if (SUCCEEDED(hrCom))
        ::CoUninitialize();
    pMalloc->Release();
    OnBrowseNcDestroy();  // handles of a dialog that is gone
    if (ownerWasEnabled && !::IsWindowEnabled(m_hOwner))
        ::EnableWindow(m_hOwner, TRUE);
    return m_nOK ? 1 : -1;
}

int CALLBACK KxUiDialogFolder::BrowseCallbackProc(HWND hWnd, UINT uMsg, LPARAM lParam, LPARAM lpData)
{
    auto* self = reinterpret_cast<KxUiDialogFolder*>(lpData);
    if (self == nullptr)
        return 0;
    // The shell calls this from its dialog procedure: nothing may escape.
    try {
        switch (uMsg) {
        case BFFM_INITIALIZED:
            for (UINT id : {idTitle, idStatus})
                if (HWND hItem = ::GetDlgItem(hWnd, static_cast<int>(id)))
                    ::ShowWindow(hItem, SW_HIDE);
            self->m_hBrowse = hWnd;
            self->OnInitDialog();
            break;
        case BFFM_SELCHANGED:
            self->OnTreeSelChanged(reinterpret_cast<LPCITEMIDLIST>(lParam));
            break;
        case BFFM_VALIDATEFAILEDW:
        case BFFM_VALIDATEFAILEDA:
            return 1;  // keep the dialog open
        default:
            break;
        }
    } catch (CException* e) {
        e->Delete();
    } catch (...) {
    }
    return 0;
}

BOOL KxUiDialogFolder::OnInitDialog()
{
    if (m_hBrowse == nullptr)
        return FALSE;
    if (!m_strTitle.IsEmpty())
        ::SetWindowTextW(m_hBrowse, m_strTitle);
    HWND hTree = ::GetDlgItem(m_hBrowse, static_cast<int>(idTree));
    if (hTree == nullptr)
        return FALSE;
    // The shell owns the dialog and its tree: the objects are attached, not subclassed, and the
    // dialog's messages come through the window-procedure manager's hook.
    if (m_hWnd == nullptr && !Attach(m_hBrowse))
        return FALSE;
    if (m_tree.m_hWnd == nullptr)
        m_tree.Attach(hTree);
    kxUiWndProcMgr().attach(m_hBrowse, &m_hook);

    // The edit lies on the tree's top edge, as wide as the tree.
    CRect tree;
    ::GetWindowRect(hTree, &tree);
    ScreenToClient(&tree);
    const CRect rcEdit(tree.left, tree.top - editHeight, tree.right, tree.top);
    if (!m_edit.CreateEx(0, L"EDIT", nullptr, WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL,
                         rcEdit, this, idPathEdit))
        return FALSE;
    m_edit.SendMessage(WM_SETFONT, SendMessage(WM_GETFONT), TRUE);
    // First in the tab order, before the tree.
    m_edit.SetWindowPos(&CWnd::wndTop, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);

    // The start folder: the one asked for if it exists, else the current directory.
    CString start = m_strInitialPath;
    if (!_pathFileExists(start)) {
        WCHAR cwd[MAX_PATH] = {};
        ::GetCurrentDirectoryW(MAX_PATH, cwd);
        start = cwd;
    }
    m_edit.SetWindowText(start);
    ::SendMessageW(m_hBrowse, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(static_cast<LPCWSTR>(start)));

    // The edit keeps its distance to the top and both sides when the dialog is resized. Its top is
    // kept where it was put, so that it stays on the tree's top edge.
    CRect client;
    GetClientRect(&client);
    m_pLayout.reset(new KxUiLayoutManager);
    m_pLayout->Attach(this);
    m_pLayout->SetConstraint(idPathEdit, KxUiLayoutManager::sideTop, KxUiLayoutManager::typeSameSide, rcEdit.top);
    m_pLayout->SetConstraint(idPathEdit, KxUiLayoutManager::sideLeft, KxUiLayoutManager::typeSameSide, rcEdit.left);
    m_pLayout->SetConstraint(idPathEdit, KxUiLayoutManager::sideRight, KxUiLayoutManager::typeSameSide,
                             rcEdit.right - client.right);
    return TRUE;
}

CString KxUiDialogFolder::ReadEdit() const
{
    if (m_edit.m_hWnd == nullptr || m_edit.GetWindowTextLength() >= MAX_PATH)
        return CString();
    WCHAR text[MAX_PATH] = {};
    ::GetWindowTextW(m_edit.m_hWnd, text, MAX_PATH);
    return text;
}

void KxUiDialogFolder::OnTreeSelChanged(LPCITEMIDLIST pidl)
{
    WCHAR path[MAX_PATH] = {};
    if (pidl == nullptr || !::SHGetPathFromIDListW(pidl, path) || path[0] == 0 || m_edit.m_hWnd == nullptr)
        return;
    CString current;
    m_edit.GetWindowText(current);
    if (current.CompareNoCase(path) == 0)
        return;
    // The edit's change notice must not select in the tree what the tree has just selected.
    m_bSelChanging = true;
    m_edit.SetWindowText(path);
    m_bSelChanging = false;
}

void KxUiDialogFolder::OnChangePathEdit()
{
    const CString path = ReadEdit();
    if (!m_bSelChanging && (isExistingFolder(path) || ::PathIsUNCW(path)))
        ::SendMessageW(m_hWnd, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(static_cast<LPCWSTR>(path)));
    m_bSelChanging = false;
    ::SendMessageW(m_hWnd, BFFM_ENABLEOK, 0, isExistingFolder(path) ? 1 : 0);
}

void KxUiDialogFolder::OnOK()
{
    const CString path = ReadEdit();
    if (!isExistingFolder(path)) {
        m_edit.SetFocus();
        m_edit.SetSel(0, -1);
        return;
    }
    m_strPath = path;
    ::wcsncpy(m_szPath, path, MAX_PATH - 1);
    m_nOK = 1;
    // The shell's own OK ends its dialog with 1 and hands back the item list of the tree's selection,
    // where typing the path has put it.
    m_bPassToShell = true;
}

CString KxUi::browseFolder(CString initialPath, const CString& title, bool newStyle, CWnd* parent)
{
    const CString caption = title.IsEmpty() ? CString(L"$$Sélection d'un répertoire...") : title;
    KxUiDialogFolder dlg(initialPath, caption, newStyle, parent);
    return dlg.DoModal() == 1 ? dlg.GetPathName() : CString();
}
