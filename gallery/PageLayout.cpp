// Layout and splitter: a customer list and a details pane share the page through a
// splitter; options below follow the bottom border. Every child follows the page's size
// by constraints, and the splitter position, the check boxes, the combos and the chosen
// tab come back after a restart.
#include "KxUiGalleryPage.h"
#include "KxUiLayoutManagerWndBinary.h"
#include "KxUiSplitter.h"
#include "KxUiWindowBinary.h"
#include <afxcmn.h>

namespace {

enum : UINT {
    IDC_CUSTOMERS_LABEL = 2000,
    IDC_CUSTOMERS,
    IDC_SPLITTER,
    IDC_DETAILS,
    IDC_NOTES,
    IDC_ARCHIVED,
    IDC_CONFIRM,
    IDC_CURRENCY_LABEL,
    IDC_CURRENCY,
    IDC_REGION_LABEL,
    IDC_REGION,
    IDC_HINT,
};

const wchar_t* const kCustomers[] = {
    L"Acme Tools Ltd.", L"Northwind Traders", L"Contoso Pharmaceuticals", L"Fabrikam Fibers",
    L"Adventure Works Cycles", L"Tailspin Toys", L"Wide World Importers", L"Litware Inc.",
    L"Proseware Labs", L"Woodgrove Bank", L"Coho Winery", L"Lucerne Publishing",
};

}  // namespace

class CLayoutPage : public CGalleryPage {
    DECLARE_DYNAMIC(CLayoutPage)

public:
    // The window goes before the layout manager that hooks it.
    ~CLayoutPage() override
    {
        if (GetSafeHwnd())
            DestroyWindow();
    }
    LPCWSTR GetTitle() const override { return L"Layout and splitter"; }
    LPCWSTR GetSlug() const override { return L"layout"; }
    CString GetStatusText() const override
    {
        return L"Resize the window or drag the splitter: every child follows its constraints; "
               L"the state comes back after a restart.";
    }

protected:
    void BuildPage() override
    {
        CRect rc;
        GetClientRect(&rc);
        const int w = rc.Width(), h = rc.Height();
        const int paneBottom = h - 92;
        const int split = 10 + (w - 20) * 2 / 5;

        AddControl(L"STATIC", L"Customers", SS_LEFT, CRect(10, 10, split, 26), IDC_CUSTOMERS_LABEL);
        CWnd* list = AddControl(L"LISTBOX", L"", WS_VSCROLL | WS_TABSTOP | LBS_NOINTEGRALHEIGHT | LBS_NOTIFY,
                                CRect(10, 28, split, paneBottom), IDC_CUSTOMERS, WS_EX_CLIENTEDGE);
        for (const wchar_t* c : kCustomers)
            list->SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(c));
        list->SendMessage(LB_SETCURSEL, 1);

        m_splitter.Create(L"", WS_CHILD | WS_VISIBLE | SS_NOTIFY,
                          CRect(split, 28, split + KxUiSplitter::barThickness, paneBottom), this, IDC_SPLITTER);

        const int right = split + KxUiSplitter::barThickness;
        CWnd* tab = AddControl(WC_TABCONTROLW, L"", WS_TABSTOP | WS_CLIPSIBLINGS, CRect(right, 10, w - 10, paneBottom),
                               IDC_DETAILS);
        const wchar_t* tabs[] = {L"Notes", L"Contacts", L"History"};
        for (int i = 0; i < 3; ++i) {
            TCITEMW item = {TCIF_TEXT};
            item.pszText = const_cast<wchar_t*>(tabs[i]);
            tab->SendMessage(TCM_INSERTITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        }
        CWnd* notes = AddControl(L"EDIT",
                                 L"Prefers delivery on Tuesdays.\r\nInvoices by e-mail to accounts@northwind.example."
                                 L"\r\nCredit limit reviewed in March.",
                                 ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL | WS_TABSTOP,
                                 CRect(right + 8, 38, w - 18, paneBottom - 8), IDC_NOTES, WS_EX_CLIENTEDGE);
        notes->SetWindowPos(&CWnd::wndTop, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);

        AddControl(L"BUTTON", L"Show archived customers", BS_AUTOCHECKBOX | WS_TABSTOP,
                   CRect(10, h - 80, 260, h - 60), IDC_ARCHIVED);
        AddControl(L"BUTTON", L"Confirm before deleting", BS_AUTOCHECKBOX | WS_TABSTOP,
                   CRect(10, h - 54, 260, h - 34), IDC_CONFIRM);
        SendDlgItemMessage(IDC_CONFIRM, BM_SETCHECK, BST_CHECKED);

        AddControl(L"STATIC", L"Currency", SS_RIGHT, CRect(w - 330, h - 78, w - 250, h - 60), IDC_CURRENCY_LABEL);
        CWnd* currency = AddControl(L"COMBOBOX", L"", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP,
                                    CRect(w - 240, h - 82, w - 10, h + 60), IDC_CURRENCY);
        for (const wchar_t* c : {L"Euro (EUR)", L"US dollar (USD)", L"Pound sterling (GBP)", L"Swiss franc (CHF)"})
            currency->SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(c));
        currency->SendMessage(CB_SETCURSEL, 0);
        AddControl(L"STATIC", L"Region", SS_RIGHT, CRect(w - 330, h - 50, w - 250, h - 32), IDC_REGION_LABEL);
        CWnd* region = AddControl(L"COMBOBOX", L"", CBS_DROPDOWN | WS_VSCROLL | WS_TABSTOP,
                                  CRect(w - 240, h - 54, w - 10, h + 80), IDC_REGION);
        for (const wchar_t* r : {L"Europe West", L"Europe North", L"North America", L"Asia Pacific"})
            region->SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(r));
        region->SetWindowText(L"Europe West");

        AddControl(L"STATIC", L"Drag the bar between the panes; resize the window.", SS_LEFT,
                   CRect(10, h - 24, w - 10, h - 6), IDC_HINT);

        // State kept in the profile: restored now, saved when the page closes.
        m_layout.addArchive(new KxUiSplitterPositionArchive(&m_splitter));
        for (UINT id : {IDC_ARCHIVED, IDC_CONFIRM, IDC_CURRENCY, IDC_REGION, IDC_DETAILS})
            m_layout.addArchive(new KxUiWindowStateBinary(id));
        m_layout.Attach(this);

        // Panes: outer sides follow the page; the splitter ties their inner sides.
        const int all = KxUiLayoutManager::sideAll;
        const int same = KxUiLayoutManager::typeSameSide;
        using LM = KxUiLayoutManager;
        m_layout.TieChild(IDC_CUSTOMERS_LABEL, LM::sideTop | LM::sideLeft, same);
        m_layout.TieChild(IDC_CUSTOMERS, LM::sideTop | LM::sideLeft | LM::sideBottom, same);
        m_layout.TieChild(IDC_DETAILS, LM::sideTop | LM::sideRight | LM::sideBottom, same);
        m_layout.TieChild(IDC_NOTES, all, same, IDC_DETAILS);
        m_layout.TieChild(IDC_ARCHIVED, LM::sideLeft | LM::sideBottom, same);
        m_layout.TieChild(IDC_CONFIRM, LM::sideLeft | LM::sideBottom, same);
        for (UINT id : {IDC_CURRENCY_LABEL, IDC_CURRENCY, IDC_REGION_LABEL, IDC_REGION})
            m_layout.TieChild(id, LM::sideRight | LM::sideBottom, same);
        m_layout.TieChild(IDC_HINT, LM::sideLeft | LM::sideRight | LM::sideBottom, same);
        m_splitter.attachHorz(&m_layout, IDC_CUSTOMERS, IDC_DETAILS);
        m_layout.SetMinMax(IDC_CUSTOMERS, CSize(120, 60), CSize(0, 0));
        m_layout.RedrawLayout();
        ShowNotesForTab();
    }

    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override
    {
        const auto* hdr = reinterpret_cast<const NMHDR*>(lParam);
        if (hdr->idFrom == IDC_DETAILS && hdr->code == TCN_SELCHANGE)
            ShowNotesForTab();
        return CGalleryPage::OnNotify(wParam, lParam, pResult);
    }

private:
    // The notes edit belongs to the first tab; the others show their (empty) page.
    void ShowNotesForTab()
    {
        const bool notes = SendDlgItemMessage(IDC_DETAILS, TCM_GETCURSEL) == 0;
        if (CWnd* edit = GetDlgItem(IDC_NOTES))
            edit->ShowWindow(notes ? SW_SHOW : SW_HIDE);
    }

    KxUiSplitter m_splitter;
    KxUiLayoutManagerWndBinary m_layout;
};

IMPLEMENT_DYNAMIC(CLayoutPage, CGalleryPage)
KXGALLERY_PAGE(20, CLayoutPage);
