// Option sheets and dialogs: an application's settings in a sheet with a list of pages and icons (shown
// on the page itself, and modal behind "Options..."), a three-page wizard that creates a project, and
// the folder dialog with its path field.
#include "KxUiGalleryPage.h"
#include "KxUiDialogFolder.h"
#include "KxUiSimpleOptionSheet.h"
#include <afxcmn.h>
#include <algorithm>
#include <prsht.h>
#include <vector>

namespace {

enum : UINT {
    IDC_INTRO = 2000,
    IDC_EMBEDDED,
    IDC_OPTIONS,
    IDC_TABS,
    IDC_WIZARD,
    IDC_FOLDER,
    IDC_RESULT,
};

// One control of a settings page, in pixels of the page.
struct Field {
    LPCWSTR className;
    LPCWSTR text;
    DWORD style;
    CRect rect;
    LPCWSTR items;  // combo box entries separated by '|', or NULL
};

// A settings page built from a list of fields; its check boxes and combos keep their values between
// two showings of the sheet (what OnOK would save to the profile in an application).
class CFormPage : public KxUiOptionPage {
public:
    CFormPage(LPCWSTR title, UINT icon, std::vector<Field> fields) : m_fields(std::move(fields))
    {
        SetTitle(title);
        SetIconID(icon, nullptr);  // the system's icons
        SetTemplateSize(CSize(190, 110));
    }

protected:
    BOOL OnInitDialog() override
    {
        KxUiOptionPage::OnInitDialog();
        UINT id = 100;
        for (const Field& f : m_fields) {
            CWnd* pWnd = new CWnd;
            m_controls.emplace_back(pWnd);
            const DWORD exStyle = wcscmp(f.className, L"EDIT") == 0 ? WS_EX_CLIENTEDGE : 0;
            // A leading '-' marks a check box that starts unchecked.
            const bool unchecked = f.text[0] == L'-';
            pWnd->CreateEx(exStyle, f.className, unchecked ? f.text + 1 : f.text, f.style | WS_CHILD | WS_VISIBLE,
                           f.rect, this, id++);
            pWnd->SendMessage(WM_SETFONT, SendMessage(WM_GETFONT), FALSE);
            if (f.items != nullptr) {
                CString items = f.items;
                int pos = 0;
                for (CString item = items.Tokenize(L"|", pos); !item.IsEmpty(); item = items.Tokenize(L"|", pos))
                    pWnd->SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(static_cast<LPCWSTR>(item)));
                pWnd->SendMessage(CB_SETCURSEL, 0);
            }
            if ((f.style & 0xF) == BS_AUTOCHECKBOX && wcscmp(f.className, L"BUTTON") == 0 && !unchecked)
                pWnd->SendMessage(BM_SETCHECK, BST_CHECKED);
        }
        return TRUE;
    }
    // A change in any field enables Apply.
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override
    {
        const UINT code = HIWORD(wParam);
        if (lParam != 0 && (code == BN_CLICKED || code == EN_CHANGE || code == CBN_SELCHANGE))
            SetModified(TRUE);
        return KxUiOptionPage::OnCommand(wParam, lParam);
    }

    std::vector<Field> m_fields;
    std::vector<std::unique_ptr<CWnd>> m_controls;
};

const DWORD kCheck = BS_AUTOCHECKBOX | WS_TABSTOP;
const DWORD kCombo = CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP;
const DWORD kEdit = ES_AUTOHSCROLL | WS_TABSTOP;

// The settings of a small editor: a group "Environment" with three pages, then two pages of its own.
struct EditorSettings {
    CFormPage environment{L"Environment", reinterpret_cast<UINT_PTR>(IDI_APPLICATION), {
        {L"STATIC", L"Settings that apply to every project.", SS_LEFT, CRect(8, 8, 280, 24), nullptr},
        {L"BUTTON", L"Reopen the last project at start-up", kCheck, CRect(8, 32, 280, 52), nullptr},
        {L"BUTTON", L"-Show the start page", kCheck, CRect(8, 56, 280, 76), nullptr},
    }};
    CFormPage general{L"General", reinterpret_cast<UINT_PTR>(IDI_INFORMATION), {
        {L"STATIC", L"Language:", SS_LEFT, CRect(8, 10, 90, 26), nullptr},
        {L"COMBOBOX", L"", kCombo, CRect(96, 6, 280, 160), L"English|Deutsch|Français|Español"},
        {L"BUTTON", L"Check for updates every week", kCheck, CRect(8, 40, 280, 60), nullptr},
        {L"BUTTON", L"-Send anonymous usage data", kCheck, CRect(8, 64, 280, 84), nullptr},
    }};
    CFormPage fonts{L"Fonts and colours", reinterpret_cast<UINT_PTR>(IDI_QUESTION), {
        {L"STATIC", L"Editor font:", SS_LEFT, CRect(8, 10, 90, 26), nullptr},
        {L"COMBOBOX", L"", kCombo, CRect(96, 6, 280, 160), L"Consolas|Courier New|DejaVu Sans Mono"},
        {L"STATIC", L"Size:", SS_LEFT, CRect(8, 42, 90, 58), nullptr},
        {L"EDIT", L"10", kEdit | ES_NUMBER, CRect(96, 38, 150, 60), nullptr},
        {L"COMBOBOX", L"", kCombo, CRect(8, 72, 280, 200), L"Light theme|Dark theme|High contrast"},
    }};
    CFormPage saving{L"Saving", reinterpret_cast<UINT_PTR>(IDI_WARNING), {
        {L"BUTTON", L"Save automatically", kCheck, CRect(8, 8, 280, 28), nullptr},
        {L"STATIC", L"Every (minutes):", SS_LEFT, CRect(24, 36, 130, 52), nullptr},
        {L"EDIT", L"5", kEdit | ES_NUMBER, CRect(136, 32, 190, 54), nullptr},
        {L"BUTTON", L"Keep a backup copy (.bak)", kCheck, CRect(8, 64, 280, 84), nullptr},
    }};
    CFormPage network{L"Network", reinterpret_cast<UINT_PTR>(IDI_SHIELD), {
        {L"BUTTON", L"-Use a proxy server", kCheck, CRect(8, 8, 280, 28), nullptr},
        {L"STATIC", L"Address:", SS_LEFT, CRect(24, 38, 90, 54), nullptr},
        {L"EDIT", L"proxy.example.com:8080", kEdit, CRect(96, 34, 280, 56), nullptr},
    }};

    void AddTo(KxUiOptionSheet& sheet)
    {
        sheet.AddGroup(&environment);
        sheet.AddPage(&general, &environment);
        sheet.AddPage(&fonts, &environment);
        sheet.AddPage(&saving);
        sheet.AddPage(&network);
    }
};

// A wizard page: text and fields, and the wizard buttons it offers.
class CWizardPage : public CFormPage {
public:
    CWizardPage(LPCWSTR title, DWORD buttons, std::vector<Field> fields)
        : CFormPage(title, 0, std::move(fields)), m_buttons(buttons)
    {
    }
    BOOL OnSetActive() override
    {
        if (GetSheet() != nullptr)
            GetSheet()->SetWizardButtons(m_buttons);
        return CFormPage::OnSetActive();
    }

private:
    DWORD m_buttons;
};

// The gallery is the host that translates the sheets' "$$" text keys; its language is English, so the
// key without its prefix is the text.
class CGallerySheet : public KxUiSimpleOptionSheet {
public:
    using KxUiSimpleOptionSheet::KxUiSimpleOptionSheet;
    CString getButtonText(UINT nID) override
    {
        CString text = KxUiSimpleOptionSheet::getButtonText(nID);
        return text.Left(2) == L"$$" ? text.Mid(2) : text;
    }
};

// The sheet embedded in the page stays: OK commits like Apply, Cancel leaves the settings as they are.
class CEmbeddedSheet : public CGallerySheet {
public:
    void OnOK() override { OnApply(); }
    void OnCancel() override {}
};

}  // namespace

class CSheetsPage : public CGalleryPage {
    DECLARE_DYNAMIC(CSheetsPage)

public:
    LPCWSTR GetTitle() const override { return L"Option sheets and dialogs"; }
    LPCWSTR GetSlug() const override { return L"sheets"; }
    CString GetStatusText() const override
    {
        return L"Choose a page in the list; change a setting to enable Apply. The buttons open the modal "
               L"sheet, a wizard and the folder dialog.";
    }
    void Animate() override
    {
        // The second page of the group is chosen and the mouse rests over "Saving".
        m_embedded.SetActivePage(&m_settings.general);
        KxUiOptionListBox& list = m_embedded.GetListBox();
        list.highLightItem(3);
    }

protected:
    void BuildPage() override
    {
        CRect rc;
        GetClientRect(&rc);
        AddControl(L"STATIC",
                   L"An application's settings: pages grouped under \"Environment\", chosen from a list with icons.",
                   SS_LEFT, CRect(10, 10, rc.right - 10, 28), IDC_INTRO);

        // The same sheet as the modal one, embedded in the page.
        m_embedded.SetTitle(L"Editor", PSH_PROPTITLE);
        m_embedded.setOptionListType(KxUiSimpleOptionSheet::listBox);
        m_settings.AddTo(m_embedded);
        if (m_embedded.Create(this, WS_CHILD | WS_VISIBLE | WS_TABSTOP, WS_EX_CONTROLPARENT)) {
            m_embedded.SetDlgCtrlID(IDC_EMBEDDED);
            CRect sheet;
            m_embedded.GetWindowRect(&sheet);
            m_embedded.SetWindowPos(nullptr, 10, 34, sheet.Width(), sheet.Height(), SWP_NOZORDER);
        }
        CRect sheet;
        m_embedded.GetWindowRect(&sheet);
        ScreenToClient(&sheet);
        // The buttons two by two under the sheet, the results below them.
        const int w = 160, top = sheet.bottom + 10;
        const struct {
            UINT id;
            LPCWSTR text;
        } buttons[] = {{IDC_OPTIONS, L"Options..."},
                       {IDC_TABS, L"Options with tabs..."},
                       {IDC_WIZARD, L"New project wizard..."},
                       {IDC_FOLDER, L"Choose a folder..."}};
        for (int i = 0; i < 4; ++i) {
            const int x = 10 + (i % 2) * (w + 8), y = top + (i / 2) * 32;
            AddControl(L"BUTTON", buttons[i].text, BS_PUSHBUTTON | WS_TABSTOP, CRect(x, y, x + w, y + 26),
                       buttons[i].id);
        }
        const int x = 10 + 2 * (w + 8) + 8;
        AddControl(L"STATIC", L"The results of the dialogs appear here.", SS_LEFT,
                   CRect(x, top + 4, std::max<int>(x + 120, rc.right - 10), top + 58), IDC_RESULT);
    }

    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override
    {
        if (HIWORD(wParam) == BN_CLICKED) {
            switch (LOWORD(wParam)) {
            case IDC_OPTIONS: RunOptions(KxUiSimpleOptionSheet::listBox); return TRUE;
            case IDC_TABS: RunOptions(KxUiSimpleOptionSheet::tabCtrl); return TRUE;
            case IDC_WIZARD: RunWizard(); return TRUE;
            case IDC_FOLDER: ChooseFolder(); return TRUE;
            default: break;
            }
        }
        return CGalleryPage::OnCommand(wParam, lParam);
    }

private:
    void ShowResult(const CString& text) { SetDlgItemText(IDC_RESULT, text); }

    void RunOptions(UINT chooser)
    {
        EditorSettings settings;
        CGallerySheet sheet(L"", this);
        sheet.SetTitle(L"Editor", PSH_PROPTITLE);
        sheet.setOptionListType(chooser);
        sheet.setIsResizable(true);
        settings.AddTo(sheet);
        const INT_PTR r = sheet.DoModal();
        ShowResult(r == IDOK ? L"Options: OK, every page saved its settings." : L"Options: cancelled.");
    }

    void RunWizard()
    {
        CWizardPage name(L"Name", PSWIZB_NEXT, {
            {L"STATIC", L"What is the project called?", SS_LEFT, CRect(8, 8, 280, 24), nullptr},
            {L"EDIT", L"Inventory", kEdit, CRect(8, 30, 280, 52), nullptr},
        });
        CWizardPage kind(L"Kind", PSWIZB_BACK | PSWIZB_NEXT, {
            {L"STATIC", L"Which kind of project?", SS_LEFT, CRect(8, 8, 280, 24), nullptr},
            {L"COMBOBOX", L"", kCombo, CRect(8, 30, 280, 160), L"Desktop application|Library (DLL)|Console tool"},
        });
        CWizardPage ready(L"Ready", PSWIZB_BACK | PSWIZB_FINISH, {
            {L"STATIC", L"Press Finish to create the project.", SS_LEFT, CRect(8, 8, 280, 24), nullptr},
            {L"BUTTON", L"Open the project when it is created", kCheck, CRect(8, 34, 280, 54), nullptr},
        });
        CGallerySheet wizard(L"New project", this);
        wizard.SetWizardMode();
        wizard.AddPage(&name);
        wizard.AddPage(&kind);
        wizard.AddPage(&ready);
        const INT_PTR r = wizard.DoModal();
        ShowResult(r == KxUiOptionSheet::idFinish ? L"Wizard: finished, the project was created."
                                                  : L"Wizard: cancelled.");
    }

    void ChooseFolder()
    {
        WCHAR cwd[MAX_PATH] = {};
        ::GetCurrentDirectoryW(MAX_PATH, cwd);
        const CString path = KxUi::browseFolder(cwd, L"Where should the project go?", true, this);
        ShowResult(path.IsEmpty() ? CString(L"Folder: none chosen.") : L"Folder: " + path);
    }

    EditorSettings m_settings;
    CEmbeddedSheet m_embedded;
};

IMPLEMENT_DYNAMIC(CSheetsPage, CGalleryPage)
KXGALLERY_PAGE(90, CSheetsPage);
