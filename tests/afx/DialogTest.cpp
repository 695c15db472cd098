// Dialogs: modal loops, owners, data exchange, navigation, modeless dialogs and
// in-memory templates.
#include <afxwin.h>
#include <afxdlgs.h>
#include <afxpriv.h>
#include "KxAfxTestRes.h"
#include "KxTestApp.h"

namespace {

const UINT ID_CLOSE_WITH = 0x7001;  // command: EndDialog(wParam's high word... see handler)

// A dialog from the .rc template whose script of actions runs from posted messages.
class CTestDialog : public CDialog {
public:
    CString name = L"Ada";
    int count = 7;
    int check = 1;
    int radio = 2;
    int combo = 1;

    int closeWith = IDOK;         // result of the posted close command
    bool endInInit = false;       // EndDialog during OnInitDialog
    bool typeInvalidCount = false;
    BOOL ownerEnabledInside = TRUE;
    HWND focusAtClose = nullptr;
    CString shownName;
    int shownRadio = -1;
    int shownCheck = -1;
    CWnd* owner = nullptr;

    CTestDialog(CWnd* pParent = nullptr) : CDialog(IDD_TEST_DIALOG, pParent) {}

    void DoDataExchange(CDataExchange* pDX) override
    {
        DDX_Text(pDX, IDC_TEST_NAME, name);
        DDV_MaxChars(pDX, name, 20);
        DDX_Text(pDX, IDC_TEST_COUNT, count);
        DDX_Check(pDX, IDC_TEST_CHECK, check);
        DDX_Radio(pDX, IDC_TEST_RADIO1, radio);
        DDX_CBIndex(pDX, IDC_TEST_COMBO, combo);
    }

    BOOL OnInitDialog() override
    {
        for (const wchar_t* item : {L"zero", L"one", L"two"})
            SendDlgItemMessage(IDC_TEST_COMBO, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
        CDialog::OnInitDialog();  // members to controls
        GetDlgItemText(IDC_TEST_NAME, shownName);
        shownCheck = IsDlgButtonChecked(IDC_TEST_CHECK);
        shownRadio = GetCheckedRadioButton(IDC_TEST_RADIO1, IDC_TEST_RADIO3);
        if (endInInit) {
            EndDialog(55);
            return TRUE;
        }
        // What a user does: edit, tick, choose, then press the button.
        SetDlgItemText(IDC_TEST_NAME, L"Grace");
        SetDlgItemText(IDC_TEST_COUNT, typeInvalidCount ? L"12x" : L"12");
        CheckDlgButton(IDC_TEST_CHECK, BST_UNCHECKED);
        CheckRadioButton(IDC_TEST_RADIO1, IDC_TEST_RADIO3, IDC_TEST_RADIO1);
        SendDlgItemMessage(IDC_TEST_COMBO, CB_SETCURSEL, 2);
        PostMessage(WM_COMMAND, ID_CLOSE_WITH);
        return TRUE;
    }

    afx_msg void OnCloseWith()
    {
        ownerEnabledInside = owner != nullptr ? owner->IsWindowEnabled() : TRUE;
        focusAtClose = ::GetFocus();
        if (closeWith == IDOK)
            OnOK();  // validates: stays open when the data is bad
        else
            EndDialog(closeWith);
        if (m_hWnd != nullptr && ContinueModal())
            PostMessage(WM_COMMAND, IDCANCEL);  // still open: the user gives up
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CTestDialog, CDialog)
    ON_COMMAND(ID_CLOSE_WITH, &CTestDialog::OnCloseWith)
END_MESSAGE_MAP()

// A shown top-level owner with an edit that has the focus.
class DialogTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(owner.CreateEx(0, nullptr, L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 400, 300, nullptr,
                                   nullptr));
        edit = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 100, 20, owner.m_hWnd, nullptr,
                                 nullptr, nullptr);
        ::SetActiveWindow(owner.m_hWnd);
        ::SetFocus(edit);
    }
    CWnd owner;
    HWND edit = nullptr;
};

}  // namespace

TEST_F(DialogTest, ModalDialogClosedByAPostedCommandReturnsItsResultAndReenablesItsOwner)
{
    ASSERT_EQ(edit, ::GetFocus());
    CTestDialog dlg(&owner);
    dlg.owner = &owner;
    dlg.closeWith = 42;
    EXPECT_EQ(42, dlg.DoModal());
    EXPECT_FALSE(dlg.ownerEnabledInside);
    EXPECT_TRUE(owner.IsWindowEnabled());
    EXPECT_EQ(nullptr, dlg.m_hWnd);
    EXPECT_EQ(edit, ::GetFocus());
    // Not OnOK: the members keep their values.
    EXPECT_EQ(CString(L"Ada"), dlg.name);
}

TEST_F(DialogTest, DataExchangeFillsTheControlsAndReadsThemBackOnOK)
{
    CTestDialog dlg(&owner);
    dlg.owner = &owner;
    EXPECT_EQ(IDOK, dlg.DoModal());
    EXPECT_EQ(CString(L"Ada"), dlg.shownName);
    EXPECT_EQ(1, dlg.shownCheck);
    EXPECT_EQ(IDC_TEST_RADIO3, dlg.shownRadio);
    EXPECT_EQ(CString(L"Grace"), dlg.name);
    EXPECT_EQ(12, dlg.count);
    EXPECT_EQ(0, dlg.check);
    EXPECT_EQ(0, dlg.radio);
    EXPECT_EQ(2, dlg.combo);
    EXPECT_TRUE(KxTestApp::Get().Boxes().empty());
}

TEST_F(DialogTest, InvalidNumberKeepsTheDialogOpenAndTellsTheUser)
{
    CTestDialog dlg(&owner);
    dlg.typeInvalidCount = true;
    EXPECT_EQ(IDCANCEL, dlg.DoModal());
    EXPECT_EQ(7, dlg.count);
    ASSERT_EQ(1u, KxTestApp::Get().Boxes().size());
    EXPECT_EQ(CString(L"Please enter an integer."), KxTestApp::Get().Boxes()[0].text);
}

TEST_F(DialogTest, EndDialogDuringInitialisationEndsAtOnce)
{
    CTestDialog dlg(&owner);
    dlg.endInInit = true;
    EXPECT_EQ(55, dlg.DoModal());
    EXPECT_EQ(nullptr, dlg.m_hWnd);
    EXPECT_TRUE(owner.IsWindowEnabled());
}

namespace {

// Tab in the modal loop moves the focus (dialog navigation through PreTranslateMessage).
class CNavDialog : public CDialog {
public:
    int focusAfterTab = 0;  // id of the focused control
    CNavDialog(LPCDLGTEMPLATE tmpl, CWnd* parent) { InitModalIndirect(tmpl, parent); }
    BOOL OnInitDialog() override
    {
        CDialog::OnInitDialog();
        GotoDlgCtrl(GetDlgItem(101));
        PostMessage(WM_APP);
        return FALSE;  // the focus is set already
    }
    afx_msg LRESULT OnStart(WPARAM, LPARAM)
    {
        // Keys arrive at the focused control through the thread's message queue.
        HWND first = ::GetFocus();
        ::PostMessageW(first, WM_KEYDOWN, VK_TAB, 0x000F0001);
        ::PostMessageW(first, WM_KEYUP, VK_TAB, static_cast<LPARAM>(0xC00F0001));
        PostMessage(WM_APP + 1);
        return 0;
    }
    afx_msg LRESULT OnCheck(WPARAM, LPARAM)
    {
        focusAfterTab = ::GetDlgCtrlID(::GetFocus());
        EndDialog(IDOK);
        return 0;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CNavDialog, CDialog)
    ON_MESSAGE(WM_APP, &CNavDialog::OnStart)
    ON_MESSAGE(WM_APP + 1, &CNavDialog::OnCheck)
END_MESSAGE_MAP()

}  // namespace

TEST_F(DialogTest, InMemoryTemplateMakesADialogWhoseTabKeyMovesTheFocus)
{
    CDialogTemplateBuilder tmpl(L"Built", WS_POPUP | WS_CAPTION | WS_VISIBLE | DS_MODALFRAME, CRect(0, 0, 160, 80));
    tmpl.AddItem(L"EDIT", L"first", WS_TABSTOP | WS_BORDER, CRect(10, 10, 100, 24), 101);
    tmpl.AddItem(L"EDIT", L"second", WS_TABSTOP | WS_BORDER, CRect(10, 30, 100, 44), 102);
    tmpl.AddItem(L"BUTTON", L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON, CRect(110, 60, 150, 74), IDOK);
    EXPECT_EQ(3, tmpl.GetItemCount());

    CNavDialog dlg(tmpl.GetTemplate(), &owner);
    EXPECT_EQ(IDOK, dlg.DoModal());
    EXPECT_EQ(102, dlg.focusAfterTab);
}

TEST_F(DialogTest, ModelessDialogLivesUntilDestroyedAndEndDialogHidesIt)
{
    CTestDialog dlg;
    dlg.endInInit = false;
    ASSERT_TRUE(dlg.Create(IDD_TEST_DIALOG, &owner));
    EXPECT_TRUE(::IsWindow(dlg.m_hWnd));
    EXPECT_EQ(CString(L"Ada"), dlg.shownName);
    EXPECT_TRUE(owner.IsWindowEnabled());
    dlg.ShowWindow(SW_SHOW);
    // Map a dialog-unit rectangle: the template's font makes units larger than zero.
    CRect r(0, 0, 4, 8);
    dlg.MapDialogRect(&r);
    EXPECT_GT(r.Width(), 0);
    dlg.SetDefID(IDC_TEST_BUTTON);
    EXPECT_EQ(static_cast<DWORD>(IDC_TEST_BUTTON), LOWORD(dlg.GetDefID()));
    dlg.EndDialog(IDOK);
    EXPECT_FALSE(dlg.IsWindowVisible());
    EXPECT_TRUE(dlg.DestroyWindow());
    EXPECT_EQ(nullptr, dlg.m_hWnd);
}

TEST(FileDialog, IsACommonDialogWithTheFileNameParts)
{
    CFileDialog dlg(TRUE, L"txt", L"C:\\data\\report.final.txt", OFN_HIDEREADONLY, L"Text (*.txt)|*.txt||");
    EXPECT_TRUE(dlg.IsKindOf(RUNTIME_CLASS(CCommonDialog)));
    EXPECT_TRUE(dlg.IsKindOf(RUNTIME_CLASS(CDialog)));
    EXPECT_FALSE(dlg.IsKindOf(RUNTIME_CLASS(CFrameWnd)));
    EXPECT_EQ(CString(L"C:\\data\\report.final.txt"), dlg.GetPathName());
    EXPECT_EQ(CString(L"report.final.txt"), dlg.GetFileName());
    EXPECT_EQ(CString(L"txt"), dlg.GetFileExt());
    EXPECT_EQ(CString(L"report.final"), dlg.GetFileTitle());
    // The filter is the platform's list of zero-terminated pairs.
    EXPECT_STREQ(L"Text (*.txt)", dlg.m_ofn.lpstrFilter);
    EXPECT_STREQ(L"*.txt", dlg.m_ofn.lpstrFilter + 13);
}
