// Window hooks: two hooks watch one edit control through the window-procedure manager.
// The log shows the order the manager calls them in: the newest hook first, before the
// control's own procedure and again, with the result, after it. The second hook can
// swallow digits before the control ever sees them.
#include "KxUiGalleryPage.h"
#include "KxUiLayoutManagerWndBinary.h"
#include "KxUiWindowBinary.h"
#include "KxUiWndProcMgr.h"
#include <algorithm>
#include <vector>

namespace {

enum : UINT {
    IDC_TARGET_LABEL = 2100,
    IDC_TARGET,
    IDC_SWALLOW,
    IDC_LOG,
    IDC_CLEAR,
};

// The messages worth showing: what typing, clicking and focus produce.
LPCWSTR MessageName(UINT message)
{
    switch (message) {
    case WM_KEYDOWN: return L"WM_KEYDOWN";
    case WM_KEYUP: return L"WM_KEYUP";
    case WM_CHAR: return L"WM_CHAR";
    case WM_SETFOCUS: return L"WM_SETFOCUS";
    case WM_KILLFOCUS: return L"WM_KILLFOCUS";
    case WM_LBUTTONDOWN: return L"WM_LBUTTONDOWN";
    case WM_LBUTTONUP: return L"WM_LBUTTONUP";
    case WM_SETTEXT: return L"WM_SETTEXT";
    case WM_SIZE: return L"WM_SIZE";
    default: return nullptr;
    }
}

}  // namespace

class CHooksPage;

// A hook that writes what it sees into the page's log.
class CLogHook : public KxUiWndProc {
public:
    CLogHook(CHooksPage* page, LPCWSTR name, bool canSwallow) : m_page(page), m_name(name), m_canSwallow(canSwallow) {}
    int windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void windowProcCallBack(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;

private:
    CHooksPage* m_page;
    LPCWSTR m_name;
    bool m_canSwallow;
};

class CHooksPage : public CGalleryPage {
    DECLARE_DYNAMIC(CHooksPage)

public:
    LPCWSTR GetTitle() const override { return L"Window hooks"; }
    LPCWSTR GetSlug() const override { return L"hooks"; }
    CString GetStatusText() const override
    {
        return L"Two hooks on one edit control: the newest is called first, before and after the control.";
    }

    void Log(LPCWSTR hook, LPCWSTR pass, UINT message, WPARAM wParam, LPCWSTR outcome)
    {
        const LPCWSTR name = MessageName(message);
        if (!name || !m_log.GetSafeHwnd())
            return;
        CString detail;
        if (message == WM_CHAR)
            detail.Format(L"'%c'", static_cast<wchar_t>(wParam));
        else if (message == WM_KEYDOWN || message == WM_KEYUP)
            detail.Format(L"vk 0x%02X", static_cast<unsigned>(wParam));
        const int row = static_cast<int>(m_log.SendMessage(LVM_GETITEMCOUNT));
        const CString cols[] = {hook, pass, name, detail, outcome};
        LVITEMW item = {LVIF_TEXT};
        item.iItem = row;
        item.pszText = const_cast<LPWSTR>(static_cast<LPCWSTR>(cols[0]));
        m_log.SendMessage(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        for (int c = 1; c < 5; ++c) {
            item.iSubItem = c;
            item.pszText = const_cast<LPWSTR>(static_cast<LPCWSTR>(cols[c]));
            m_log.SendMessage(LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        }
        m_log.SendMessage(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    }

    bool Swallows() const { return IsDlgButtonChecked(IDC_SWALLOW) == BST_CHECKED; }

    // Whether the message now passing through the hooks was swallowed before the control saw
    // it. Hook B is the newest, so it is called first in both passes and hook A last: B opens
    // the entry in its before pass and A closes it at the end of the after pass. Messages nest
    // (the control sends messages while it handles one), hence a stack.
    void BeginMessage(bool bSwallowed) { m_swallowed.push_back(bSwallowed); }
    bool CurrentSwallowed() const { return !m_swallowed.empty() && m_swallowed.back(); }
    void EndMessage()
    {
        if (!m_swallowed.empty())
            m_swallowed.pop_back();
    }

    void Animate() override
    {
        // What typing "Hi 42" into the control produces; with the second hook swallowing
        // digits, the control shows only "Hi ".
        CWnd* target = GetDlgItem(IDC_TARGET);
        target->SetFocus();
        for (const wchar_t* p = L"Hi 42"; *p; ++p) {
            const SHORT vk = VkKeyScanW(*p);
            target->SendMessage(WM_KEYDOWN, LOBYTE(vk), 1);
            target->SendMessage(WM_CHAR, *p, 1);
            target->SendMessage(WM_KEYUP, LOBYTE(vk), 0xC0000001);
        }
    }

protected:
    void BuildPage() override
    {
        CRect rc;
        GetClientRect(&rc);
        const int w = rc.Width(), h = rc.Height();
        AddControl(L"STATIC", L"Type here: both hooks see every message of this edit control.", SS_LEFT,
                   CRect(10, 10, w - 10, 28), IDC_TARGET_LABEL);
        AddControl(L"EDIT", L"", ES_AUTOHSCROLL | WS_TABSTOP, CRect(10, 30, w - 10, 54), IDC_TARGET, WS_EX_CLIENTEDGE);
        AddControl(L"BUTTON", L"Hook B swallows digits (the control never sees them)", BS_AUTOCHECKBOX | WS_TABSTOP,
                   CRect(10, 62, w - 120, 82), IDC_SWALLOW);
        SendDlgItemMessage(IDC_SWALLOW, BM_SETCHECK, BST_CHECKED);
        AddControl(L"BUTTON", L"Clear log", BS_PUSHBUTTON | WS_TABSTOP, CRect(w - 110, 60, w - 10, 84), IDC_CLEAR);
        m_log.CreateEx(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"",
                       WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_NOSORTHEADER | LVS_SHOWSELALWAYS,
                       CRect(10, 92, w - 10, h - 10), this, IDC_LOG);
        ApplyFont(&m_log);
        m_log.SendMessage(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES,
                          LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES);
        const wchar_t* headers[] = {L"Hook", L"Pass", L"Message", L"Detail", L"Outcome"};
        const int widths[] = {130, 50, 110, 70, 100};  // the last column takes the rest
        for (int c = 0; c < 5; ++c) {
            LVCOLUMNW col = {LVCF_TEXT | LVCF_WIDTH};
            col.cx = widths[c];
            col.pszText = const_cast<wchar_t*>(headers[c]);
            m_log.SendMessage(LVM_INSERTCOLUMNW, static_cast<WPARAM>(c), reinterpret_cast<LPARAM>(&col));
        }

        // Hook A first, hook B second: B is the newest, so it is called first.
        HWND target = GetDlgItem(IDC_TARGET)->GetSafeHwnd();
        kxUiWndProcMgr().attach(target, &m_hookA);
        kxUiWndProcMgr().attach(target, &m_hookB);

        // Whether hook B swallows digits comes back after a restart.
        m_layout.addArchive(new KxUiWindowStateBinary(IDC_SWALLOW));
        using LM = KxUiLayoutManager;
        m_layout.Attach(this);
        m_layout.TieChild(IDC_TARGET_LABEL, LM::sideTop | LM::sideLeft | LM::sideRight, LM::typeSameSide);
        m_layout.TieChild(IDC_TARGET, LM::sideTop | LM::sideLeft | LM::sideRight, LM::typeSameSide);
        m_layout.TieChild(IDC_SWALLOW, LM::sideTop | LM::sideLeft, LM::typeSameSide);
        m_layout.TieChild(IDC_CLEAR, LM::sideTop | LM::sideRight, LM::typeSameSide);
        m_layout.TieChild(IDC_LOG, LM::sideAll, LM::typeSameSide);
        m_layout.RedrawLayout();
        FitLastColumn();
    }

    // The layout manager has already sized the log (it sees WM_SIZE first): the outcome
    // column takes what the others leave, so the list never scrolls sideways.
    afx_msg void OnSize(UINT nType, int cx, int cy)
    {
        CGalleryPage::OnSize(nType, cx, cy);
        FitLastColumn();
    }

    void FitLastColumn()
    {
        // The last column takes what the others leave, with room kept for the vertical
        // scroll bar: the log soon outgrows its height, and a column sized before the bar
        // appeared would then need a horizontal bar too.
        if (!m_log.GetSafeHwnd())
            return;
        CRect rc;
        m_log.GetClientRect(&rc);
        int used = 0;
        for (int col = 0; col < 4; ++col)
            used += static_cast<int>(m_log.SendMessage(LVM_GETCOLUMNWIDTH, col));
        const bool barShown = (m_log.GetStyle() & WS_VSCROLL) != 0;
        const int room = rc.Width() - used - (barShown ? 0 : ::GetSystemMetrics(SM_CXVSCROLL));
        m_log.SendMessage(LVM_SETCOLUMNWIDTH, 4, std::max(room, 60));
    }

    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override
    {
        if (LOWORD(wParam) == IDC_CLEAR && HIWORD(wParam) == BN_CLICKED) {
            m_log.SendMessage(LVM_DELETEALLITEMS);
            return TRUE;
        }
        return CGalleryPage::OnCommand(wParam, lParam);
    }

    DECLARE_MESSAGE_MAP()

private:
    std::vector<bool> m_swallowed;
    CWnd m_log;
    CLogHook m_hookA{this, L"A (attached first)", false};
    CLogHook m_hookB{this, L"B (attached second)", true};
    KxUiLayoutManagerWndBinary m_layout;
};

int CLogHook::windowProc(HWND, UINT message, WPARAM wParam, LPARAM, LRESULT& result)
{
    if (m_canSwallow) {
        const bool swallow = message == WM_CHAR && wParam >= L'0' && wParam <= L'9' && m_page->Swallows();
        m_page->BeginMessage(swallow);
        if (swallow) {
            m_page->Log(m_name, L"before", message, wParam, L"swallowed: hook A and the control are not called");
            result = 0;
            return 1;
        }
    }
    m_page->Log(m_name, L"before", message, wParam, L"passed on");
    return 0;
}

// The after pass runs for every hook, whether or not the control was called.
void CLogHook::windowProcCallBack(HWND, UINT message, WPARAM wParam, LPARAM, LRESULT& result)
{
    CString outcome;
    if (m_page->CurrentSwallowed())
        outcome.Format(L"control not called; result %Id from hook B", static_cast<INT_PTR>(result));
    else
        outcome.Format(L"control returned %Id", static_cast<INT_PTR>(result));
    m_page->Log(m_name, L"after", message, wParam, outcome);
    if (!m_canSwallow)
        m_page->EndMessage();
}

IMPLEMENT_DYNAMIC(CHooksPage, CGalleryPage)

BEGIN_MESSAGE_MAP(CHooksPage, CGalleryPage)
    ON_WM_SIZE()
END_MESSAGE_MAP()
KXGALLERY_PAGE(10, CHooksPage);
