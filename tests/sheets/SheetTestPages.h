// Pages and sheets for the sheet tests: pages that log what the sheet asks of them and can be told to
// refuse, and a sheet that exposes its flags.
#pragma once
#include "KxUiSimpleOptionSheet.h"
#include "KxModalDriver.h"
#include <string>
#include <vector>

using Log = std::vector<std::string>;

class LogPage : public KxUiOptionPage {
public:
    LogPage(const char* name, Log* log, CSize dlu = CSize(180, 100)) : m_name(name), m_log(log)
    {
        SetTitle(CString(name));
        SetTemplateSize(dlu);
    }

    bool refuseLeave = false;     // OnKillActive answers FALSE
    bool refuseShow = false;      // OnSetActive answers FALSE
    bool refuseCancel = false;    // OnQueryCancel answers FALSE
    bool refuseApply = false;     // OnApply answers FALSE
    bool refuseFinish = false;    // OnWizardFinish answers FALSE
    LRESULT next = 0;             // OnWizardNext's answer
    LRESULT back = 0;
    DWORD wizardButtons = 0;      // given to the sheet on activation when not 0

    BOOL OnSetActive() override
    {
        Note("SetActive");
        if (wizardButtons != 0 && GetSheet() != nullptr)
            GetSheet()->SetWizardButtons(wizardButtons);
        return refuseShow ? FALSE : KxUiOptionPage::OnSetActive();
    }
    BOOL OnKillActive() override
    {
        Note("KillActive");
        return refuseLeave ? FALSE : KxUiOptionPage::OnKillActive();
    }
    void OnOK() override { Note("OK"); }
    void OnCancel() override { Note("Cancel"); }
    BOOL OnApply() override
    {
        Note("Apply");
        return refuseApply ? FALSE : TRUE;
    }
    BOOL OnQueryCancel() override
    {
        Note("QueryCancel");
        return refuseCancel ? FALSE : TRUE;
    }
    LRESULT OnWizardNext() override
    {
        Note("WizardNext");
        return next;
    }
    LRESULT OnWizardBack() override
    {
        Note("WizardBack");
        return back;
    }
    BOOL OnWizardFinish() override
    {
        Note("WizardFinish");
        return refuseFinish ? FALSE : TRUE;
    }

protected:
    BOOL OnInitDialog() override
    {
        KxUiOptionPage::OnInitDialog();
        // A field across the page, so that the page has a first child and something to show.
        m_edit.CreateEx(WS_EX_CLIENTEDGE, L"EDIT", CString(m_name.c_str()), WS_CHILD | WS_VISIBLE | WS_TABSTOP,
                        CRect(10, 10, 160, 32), this, 100);
        return TRUE;
    }

    void Note(const char* what)
    {
        if (m_log != nullptr)
            m_log->push_back(m_name + "." + what);
    }

    std::string m_name;
    Log* m_log;
    CEdit m_edit;
};

class TestSheet : public KxUiSimpleOptionSheet {
public:
    using KxUiSimpleOptionSheet::KxUiSimpleOptionSheet;
    using KxUiOptionSheet::ClearFlags;
    using KxUiOptionSheet::SetFlags;

    // A hidden modeless popup: enough for everything but the modal loop.
    bool open()
    {
        return Create(nullptr, WS_POPUP | WS_CAPTION | WS_SYSMENU) != FALSE;
    }
    // Runs DoModal with a script run from inside its loop; a sheet still open after the time limit is
    // ended with -2.
    INT_PTR runModal(std::function<void()> script, KxModalDriver* pDriver = nullptr)
    {
        KxModalDriver local;
        KxModalDriver& drive = pDriver != nullptr ? *pDriver : local;
        return drive.Run([&] { return DoModal(); }, [&] { return GetSafeHwnd() != nullptr && IsWindowVisible(); },
                         std::move(script), [&] { CDialog::EndDialog(-2); });
    }
    CRect rectOf(UINT nId) const
    {
        CRect rc(0, 0, 0, 0);
        if (CWnd* pWnd = GetDlgItem(static_cast<int>(nId))) {
            pWnd->GetWindowRect(&rc);
            ScreenToClient(&rc);
        }
        return rc;
    }
    CRect pageRect(KxUiOptionPage& page) const
    {
        CRect rc;
        page.GetWindowRect(&rc);
        ScreenToClient(&rc);
        return rc;
    }
};
