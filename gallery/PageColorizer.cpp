// Syntax colorizer and shell file operations: C++ source in a rich edit control, coloured by
// keyword, keyword group, comment and string, and coloured again line by line as the user
// types. A button adds a keyword group and then changes its colour. Below, the shell copies,
// renames and deletes files in a scratch folder in one call each.
#include "KxUiGalleryPage.h"
#include "KxUiLayoutManager.h"
#include "KxUiShellFileOp.h"
#include "KxUiSyntaxColorizer.h"
#include "../textshell/KxUiColorizerSample.h"
#include <afxcmn.h>
#include <algorithm>
#include <string>

namespace {

enum : UINT {
    IDC_SOURCE_LABEL = 2200,
    IDC_SOURCE,
    IDC_ADD_GROUP,
    IDC_FILES_LABEL,
    IDC_RUN_FILEOP,
    IDC_FILES_LOG,
};

// The colours the keyword group takes in turn.
const COLORREF groupColours[] = {RGB(128, 0, 0), RGB(0, 128, 128), RGB(128, 0, 128)};

// Characters whose arrival or removal can change the colours of the lines after them:
// comment and string delimiters and the backslash that continues a line comment.
bool affectsLaterLines(const std::wstring& text)
{
    return text.find_first_of(L"/*\"'\\") != std::wstring::npos;
}

}  // namespace

class CColorizerPage : public CGalleryPage {
    DECLARE_DYNAMIC(CColorizerPage)

public:
    ~CColorizerPage() override { RemoveScratch(); }
    LPCWSTR GetTitle() const override { return L"Syntax colorizer and shell"; }
    LPCWSTR GetSlug() const override { return L"colorizer"; }
    CString GetStatusText() const override
    {
        return L"Keywords, a keyword group, comments and strings coloured in a rich edit control "
               L"as you type; shell file operations below.";
    }
    void Animate() override
    {
        // A line typed by the user is coloured at once.
        const long at = long(CurrentText().find(L"int wmain"));
        if (at >= 0) {
            m_source.SetSel(at, at);
            m_source.ReplaceSel(L"static int calls = 0;  // typed, coloured as it came\r\r", TRUE);
        }
        OnAddGroup();
        OnRunFileOperations();
        m_source.SetSel(0, 0);
    }

    // The source as the user left it and the keyword group's colour survive a restart.
    void SaveState() override
    {
        CGalleryPage::SaveState();
        CWinApp* app = AfxGetApp();
        if (!app || !m_source.GetSafeHwnd())
            return;
        const CString section = CString(L"Gallery\\") + GetSlug();
        std::wstring text = CurrentText();
        if (text.size() <= 65536)
            app->WriteProfileBinary(section, L"Source", reinterpret_cast<LPBYTE>(&text[0]),
                                    UINT(text.size() * sizeof(wchar_t)));
        app->WriteProfileInt(section, L"GroupColour", HasGroup() ? m_groupColour : -1);
    }

    void RestoreState() override
    {
        CGalleryPage::RestoreState();
        CWinApp* app = AfxGetApp();
        if (!app)
            return;
        const CString section = CString(L"Gallery\\") + GetSlug();
        LPBYTE data = nullptr;
        UINT bytes = 0;
        if (app->GetProfileBinary(section, L"Source", &data, &bytes) && data) {
            const std::wstring text(reinterpret_cast<const wchar_t*>(data), bytes / sizeof(wchar_t));
            delete[] data;
            m_source.SetWindowText(text.c_str());
            m_source.EmptyUndoBuffer();
            m_text = CurrentText();
        }
        const int colour = int(app->GetProfileInt(section, L"GroupColour", -1));
        if (colour >= 0 && colour < int(std::size(groupColours))) {
            m_groupColour = colour;
            OnAddGroup();
        } else {
            RecolourAll();
        }
        m_source.SetSel(0, 0);
    }

protected:
    void BuildPage() override
    {
        CRect rc;
        GetClientRect(&rc);
        const int w = rc.Width(), h = rc.Height();
        const int logTop = h - 118;
        AddControl(L"STATIC", L"Source (C++), coloured as you type:", SS_LEFT | SS_ENDELLIPSIS,
                   CRect(10, 10, w - 190, 28), IDC_SOURCE_LABEL);
        m_source.CreateEx(WS_EX_CLIENTEDGE,
                          WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
                              ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_NOHIDESEL | ES_WANTRETURN,
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
        m_source.EmptyUndoBuffer();
        m_text = CurrentText();
        m_source.SetEventMask(ENM_CHANGE);
        AddControl(L"BUTTON", L"Add keyword group", BS_PUSHBUTTON | WS_TABSTOP, CRect(w - 180, 4, w - 10, 28),
                   IDC_ADD_GROUP);

        AddControl(L"STATIC", L"Shell file operations in a scratch folder:", SS_LEFT | SS_ENDELLIPSIS,
                   CRect(10, logTop - 26, w - 190, logTop - 8), IDC_FILES_LABEL);
        AddControl(L"BUTTON", L"Copy, rename, delete", BS_PUSHBUTTON | WS_TABSTOP,
                   CRect(w - 180, logTop - 30, w - 10, logTop - 6), IDC_RUN_FILEOP);
        AddControl(L"LISTBOX", L"", WS_VSCROLL | LBS_NOINTEGRALHEIGHT, CRect(10, logTop, w - 10, h - 10),
                   IDC_FILES_LOG, WS_EX_CLIENTEDGE);

        using LM = KxUiLayoutManager;
        m_layout.Attach(this);
        m_layout.TieChild(IDC_SOURCE_LABEL, LM::sideTop | LM::sideLeft | LM::sideRight, LM::typeSameSide);
        m_layout.TieChild(IDC_ADD_GROUP, LM::sideTop | LM::sideRight, LM::typeSameSide);
        m_layout.TieChild(IDC_SOURCE, LM::sideAll, LM::typeSameSide);
        m_layout.TieChild(IDC_FILES_LABEL, LM::sideLeft | LM::sideRight | LM::sideBottom, LM::typeSameSide);
        m_layout.TieChild(IDC_RUN_FILEOP, LM::sideRight | LM::sideBottom, LM::typeSameSide);
        m_layout.TieChild(IDC_FILES_LOG, LM::sideLeft | LM::sideRight | LM::sideBottom, LM::typeSameSide);
        m_layout.RedrawLayout();
    }

    // The first click adds the sample's class names as a bold keyword group; each later
    // click gives the group its next colour.
    afx_msg void OnAddGroup()
    {
        CHARFORMATW format;
        m_colorizer.GetDefaultStyle(format);
        format.dwEffects = CFE_BOLD;
        if (!HasGroup()) {
            KxUiColorizerAddSampleGroup(m_colorizer);
            SetDlgItemText(IDC_ADD_GROUP, L"Next group colour");
        } else {
            m_groupColour = (m_groupColour + 1) % int(std::size(groupColours));
        }
        format.crTextColor = groupColours[m_groupColour];
        m_colorizer.SetGroupStyle(1, format);
        RecolourAll();
    }

    // The user changed the text: the lines the change touched are coloured again, and every
    // line after them when a comment or string delimiter came or went.
    afx_msg void OnSourceChange()
    {
        const std::wstring text = CurrentText();
        const std::wstring& old = m_text;
        size_t prefix = 0;
        const size_t common = std::min(old.size(), text.size());
        while (prefix < common && old[prefix] == text[prefix])
            ++prefix;
        size_t suffix = 0;
        while (suffix < common - prefix && old[old.size() - 1 - suffix] == text[text.size() - 1 - suffix])
            ++suffix;
        const std::wstring removed = old.substr(prefix, old.size() - suffix - prefix);
        const std::wstring inserted = text.substr(prefix, text.size() - suffix - prefix);
        m_text = text;

        // From the start of the first changed line, or of the block comment it lies in.
        size_t start = text.rfind(L'\r', prefix == 0 ? 0 : prefix - 1);
        start = (start == std::wstring::npos || prefix == 0) ? 0 : start + 1;
        const size_t open = start == 0 ? std::wstring::npos : text.rfind(L"/*", start - 1);
        const size_t close = start == 0 ? std::wstring::npos : text.rfind(L"*/", start - 1);
        if (open != std::wstring::npos && (close == std::wstring::npos || close < open))
            start = open;
        // To the end of the last changed line, or of the text.
        long end = -1;
        if (!affectsLaterLines(removed) && !affectsLaterLines(inserted)) {
            const size_t lineEnd = text.find(L'\r', text.size() - suffix);
            if (lineEnd != std::wstring::npos)
                end = long(lineEnd);
        }
        Recolour(long(start), end);
    }

    afx_msg void OnRunFileOperations() { RunFileOperations(); }

    DECLARE_MESSAGE_MAP()

private:
    bool HasGroup() const { return !m_colorizer.GetKeywordList(1).IsEmpty(); }

    // The text as the control counts its characters, each line break one "\r".
    std::wstring CurrentText()
    {
        GETTEXTLENGTHEX how = {GTL_NUMCHARS | GTL_PRECISE, 1200};
        const long count = long(m_source.SendMessage(EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&how), 0));
        std::wstring text(size_t(count) + 1, L'\0');
        GETTEXTEX get = {DWORD(text.size() * sizeof(wchar_t)), GT_DEFAULT, 1200, nullptr, nullptr};
        m_source.SendMessage(EM_GETTEXTEX, reinterpret_cast<WPARAM>(&get), reinterpret_cast<LPARAM>(&text[0]));
        text.resize(wcslen(text.c_str()));
        return text;
    }

    // Colours [start, end] (end -1: to the end of the text) and gives the user back the
    // selection Colorize moved.
    void Recolour(long start, long end)
    {
        long selStart = 0, selEnd = 0;
        m_source.GetSel(selStart, selEnd);
        if (end >= 0 && end < start)
            end = start;
        m_colorizer.Colorize(start, end, &m_source);
        m_source.SetSel(selStart, selEnd);
    }

    void RecolourAll()
    {
        // (0, -1) is the whole text.
        Recolour(0, -1);
    }

    void Log(const CString& line)
    {
        const int index = int(SendDlgItemMessage(IDC_FILES_LOG, LB_ADDSTRING, 0,
                                                 reinterpret_cast<LPARAM>(static_cast<LPCWSTR>(line))));
        SendDlgItemMessage(IDC_FILES_LOG, LB_SETTOPINDEX, WPARAM(std::max(0, index - 3)), 0);
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
    // originals deleted: one shell call for each step, several files at once. Each run
    // starts from a fresh scratch folder.
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
        CString line;
        line.Format(L"run %d:", ++m_runs);
        Log(line);
        copy.AddFile(1, archive);
        copy.SetFlags(quiet);
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
    }

    CRichEditCtrl m_source;
    KxUiSyntaxColorizer m_colorizer;
    KxUiLayoutManager m_layout;
    std::wstring m_text;    // the source as last coloured, to find what the user changed
    int m_groupColour = 0;  // index of the keyword group's colour
    int m_runs = 0;         // file operation runs so far
    CString m_scratch;
};

IMPLEMENT_DYNAMIC(CColorizerPage, CGalleryPage)

BEGIN_MESSAGE_MAP(CColorizerPage, CGalleryPage)
    ON_BN_CLICKED(IDC_ADD_GROUP, &CColorizerPage::OnAddGroup)
    ON_BN_CLICKED(IDC_RUN_FILEOP, &CColorizerPage::OnRunFileOperations)
    ON_EN_CHANGE(IDC_SOURCE, &CColorizerPage::OnSourceChange)
END_MESSAGE_MAP()

KXGALLERY_PAGE(40, CColorizerPage);
