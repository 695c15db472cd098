// Syntax colorizer and shell file operations: C++ source in a rich edit control, coloured
// by keyword group, comment, string and number; a button adds a keyword group. Below, the
// shell copies, renames and deletes files in a scratch folder in one call each.
#include "KxUiGalleryPage.h"
#include "KxUiLayoutManager.h"
#include "KxUiShellFileOp.h"
#include "KxUiSyntaxColorizer.h"
#include "../textshell/KxUiColorizerSample.h"
#include <afxcmn.h>

namespace {

enum : UINT {
    IDC_SOURCE_LABEL = 2200,
    IDC_SOURCE,
    IDC_ADD_GROUP,
    IDC_FILES_LABEL,
    IDC_RUN_FILEOP,
    IDC_FILES_LOG,
};

}  // namespace

class CColorizerPage : public CGalleryPage {
    DECLARE_DYNAMIC(CColorizerPage)

public:
    ~CColorizerPage() override
    {
        RemoveScratch();
    }
    LPCWSTR GetTitle() const override { return L"Syntax colorizer and shell"; }
    LPCWSTR GetSlug() const override { return L"colorizer"; }
    CString GetStatusText() const override
    {
        return L"Keywords by group, comments, strings and numbers coloured in a rich edit control.";
    }
    void Animate() override
    {
        AddGroup();
        RunFileOperations();
    }

protected:
    void BuildPage() override
    {
        CRect rc;
        GetClientRect(&rc);
        const int w = rc.Width(), h = rc.Height();
        const int logTop = h - 118;
        AddControl(L"STATIC", L"Source (C++), coloured as it is loaded:", SS_LEFT, CRect(10, 10, w - 190, 28),
                   IDC_SOURCE_LABEL);
        m_source.CreateEx(WS_EX_CLIENTEDGE,
                          WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
                              ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_NOHIDESEL,
                          CRect(10, 30, w - 10, logTop - 36), this, IDC_SOURCE);
        CHARFORMATW base = {};
        base.cbSize = sizeof base;
        base.dwMask = CFM_FACE | CFM_SIZE;
        base.yHeight = 180;
        lstrcpynW(base.szFaceName, L"Courier New", LF_FACESIZE);
        m_source.SetDefaultCharFormat(base);
        m_source.SetWindowText(KxUiColorizerSampleSource());
        m_colorizer.Colorize(0, -1, &m_source);
        m_source.SetSel(0, 0);
        AddControl(L"BUTTON", L"Add keyword group", BS_PUSHBUTTON | WS_TABSTOP, CRect(w - 180, 4, w - 10, 28),
                   IDC_ADD_GROUP);

        AddControl(L"STATIC", L"Shell file operations in a scratch folder:", SS_LEFT,
                   CRect(10, logTop - 26, w - 190, logTop - 8), IDC_FILES_LABEL);
        AddControl(L"BUTTON", L"Copy, rename, delete", BS_PUSHBUTTON | WS_TABSTOP,
                   CRect(w - 180, logTop - 30, w - 10, logTop - 6), IDC_RUN_FILEOP);
        AddControl(L"LISTBOX", L"", WS_VSCROLL | LBS_NOINTEGRALHEIGHT, CRect(10, logTop, w - 10, h - 10),
                   IDC_FILES_LOG, WS_EX_CLIENTEDGE);

        using LM = KxUiLayoutManager;
        m_layout.Attach(this);
        m_layout.TieChild(IDC_SOURCE_LABEL, LM::sideTop | LM::sideLeft, LM::typeSameSide);
        m_layout.TieChild(IDC_ADD_GROUP, LM::sideTop | LM::sideRight, LM::typeSameSide);
        m_layout.TieChild(IDC_SOURCE, LM::sideAll, LM::typeSameSide);
        m_layout.TieChild(IDC_FILES_LABEL, LM::sideLeft | LM::sideBottom, LM::typeSameSide);
        m_layout.TieChild(IDC_RUN_FILEOP, LM::sideRight | LM::sideBottom, LM::typeSameSide);
        m_layout.TieChild(IDC_FILES_LOG, LM::sideLeft | LM::sideRight | LM::sideBottom, LM::typeSameSide);
        m_layout.RedrawLayout();
    }

    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override
    {
        if (HIWORD(wParam) == BN_CLICKED && LOWORD(wParam) == IDC_ADD_GROUP) {
            AddGroup();
            return TRUE;
        }
        if (HIWORD(wParam) == BN_CLICKED && LOWORD(wParam) == IDC_RUN_FILEOP) {
            RunFileOperations();
            return TRUE;
        }
        return CGalleryPage::OnCommand(wParam, lParam);
    }

private:
    void AddGroup()
    {
        KxUiColorizerAddSampleGroup(m_colorizer);
        m_colorizer.Colorize(0, -1, &m_source);
        m_source.SetSel(0, 0);
        GetDlgItem(IDC_ADD_GROUP)->EnableWindow(FALSE);
    }

    void Log(const CString& line)
    {
        SendDlgItemMessage(IDC_FILES_LOG, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(static_cast<LPCWSTR>(line)));
    }

    void RemoveScratch()
    {
        if (m_scratch.IsEmpty())
            return;
        KxUiShellFileOp op(nullptr, FO_DELETE, m_scratch, CString(), FOF_NOCONFIRMATION | FOF_SILENT | FOF_NOERRORUI,
                           CString());
        m_scratch.Empty();
    }

    // Three report files are copied into an archive folder, renamed there and the
    // originals deleted: one shell call for each step, several files at once.
    void RunFileOperations()
    {
        RemoveScratch();
        wchar_t tmp[MAX_PATH];
        GetTempPathW(MAX_PATH, tmp);
        m_scratch.Format(L"%skxui-gallery-%lu", tmp, GetCurrentProcessId());
        CreateDirectoryW(m_scratch, nullptr);
        const CString archive = m_scratch + L"\\archive";
        CreateDirectoryW(archive, nullptr);
        const wchar_t* names[] = {L"report-january.txt", L"report-february.txt", L"report-march.txt"};
        KxUiShellFileOp copy, rename, remove;
        for (const wchar_t* name : names) {
            const CString path = m_scratch + L"\\" + name;
            HANDLE f = CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
            if (f != INVALID_HANDLE_VALUE) {
                DWORD written = 0;
                WriteFile(f, "monthly figures\r\n", 17, &written, nullptr);
                CloseHandle(f);
            }
            copy.AddFile(0, path);
            remove.AddFile(0, path);
        }
        const WORD quiet = FOF_NOCONFIRMATION | FOF_SILENT | FOF_NOERRORUI | FOF_NOCONFIRMMKDIR;
        copy.AddFile(1, archive);
        copy.SetFlags(quiet);
        CString line;
        line.Format(L"copy 3 files to archive\\: result %ld", copy.CopyFiles());
        Log(line);
        rename.AddFile(0, archive + L"\\report-march.txt");
        rename.AddFile(1, archive + L"\\report-q1-final.txt");
        rename.SetFlags(quiet);
        line.Format(L"rename report-march.txt to report-q1-final.txt: result %ld", rename.RenameFiles());
        Log(line);
        remove.SetFlags(quiet);
        line.Format(L"delete the 3 originals: result %ld", remove.DeleteFiles());
        Log(line);
        CString found = L"archive\\ now holds:";
        WIN32_FIND_DATAW fd;
        HANDLE h = FindFirstFileW(archive + L"\\*.txt", &fd);
        if (h != INVALID_HANDLE_VALUE) {
            do {
                found += L" ";
                found += fd.cFileName;
            } while (FindNextFileW(h, &fd));
            FindClose(h);
        }
        Log(found);
        GetDlgItem(IDC_RUN_FILEOP)->EnableWindow(FALSE);
    }

    CRichEditCtrl m_source;
    KxUiSyntaxColorizer m_colorizer;
    KxUiLayoutManager m_layout;
    CString m_scratch;
};

IMPLEMENT_DYNAMIC(CColorizerPage, CGalleryPage)
KXGALLERY_PAGE(40, CColorizerPage);
