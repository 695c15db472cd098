// Layout and splitter: a customer list and a details pane share a split area through a
// splitter; options below follow the bottom border. Every child follows the page's size by
// constraints, the details follow the chosen customer, and the splitter position, the check
// boxes, the combos and the chosen tab come back after a restart.
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
    IDC_SPLITAREA,
};

// The narrowest each pane may become; the bar stops there.
const int kMinCustomers = 140;
const int kMinDetails = 220;

struct Customer {
    const wchar_t* name;
    const wchar_t* notes;
    const wchar_t* contacts;
    const wchar_t* history;
};

const Customer kCustomers[] = {
    {L"Acme Tools Ltd.", L"Key account since 2014.\r\nPays within 14 days; 2% early-payment discount.",
     L"Jane Doe, purchasing - +44 20 7946 0018\r\nMark Lee, warehouse - +44 20 7946 0021",
     L"2026-10-02  Order 48213, 120 drill bits\r\n2026-08-17  Order 47790, 40 hammers\r\n2026-05-03  Credit note 1182"},
    {L"Northwind Traders", L"Prefers delivery on Tuesdays.\r\nInvoices by e-mail to accounts@northwind.example."
                           L"\r\nCredit limit reviewed in March.",
     L"Nancy Davolio, buyer - +1 206 555 9857\r\nAndrew Fuller, finance - +1 206 555 9482",
     L"2026-11-12  Order 48377, 18 cases of tea\r\n2026-09-30  Order 48101, 6 crates of coffee"},
    {L"Contoso Pharmaceuticals", L"Cold-chain shipments only.\r\nEvery delivery needs a batch certificate.",
     L"Dr. Olivia Chen, quality - +1 425 555 0142", L"2026-11-20  Order 48402, 300 sample kits"},
    {L"Fabrikam Fibers", L"Samples before every bulk order.", L"Tomas Novak, design - +420 2 5555 1212",
     L"2026-07-09  Order 47511, 2,000 m of yarn\r\n2026-03-14  Return 233, colour mismatch"},
    {L"Adventure Works Cycles", L"Seasonal peak from March to June.", L"Rachel Adams, fleet - +1 312 555 0171",
     L"2026-04-22  Order 46980, 45 helmets"},
    {L"Tailspin Toys", L"Toy-safety certificates must travel with each pallet.",
     L"Ben Miller, logistics - +1 503 555 0107", L"2026-10-28  Order 48290, 1,200 kites"},
    {L"Wide World Importers", L"Consolidated invoice at month end.", L"Ana Souza, imports - +55 11 5555 0190",
     L"2026-11-01  Order 48311, 14 containers"},
    {L"Litware Inc.", L"Software licences renewed every January.", L"Sam Patel, IT - +1 650 555 0163",
     L"2026-01-15  Renewal 2026, 250 seats"},
    {L"Proseware Labs", L"Quotes in CHF; VAT number on every invoice.", L"Lea Meier, lab - +41 44 555 01 33",
     L"2026-06-02  Order 47302, lab glassware"},
    {L"Woodgrove Bank", L"Deliveries to the loading dock, gate 3, before 10 am.",
     L"Karen Berg, facilities - +1 212 555 0135", L"2026-09-05  Order 47950, 80 office chairs"},
    {L"Coho Winery", L"Fragile goods: double packing.", L"Luis Ortega, cellar - +34 91 555 0126",
     L"2026-09-21  Order 48060, 500 cases"},
    {L"Lucerne Publishing", L"Paper stock reserved every quarter.", L"Mia Wong, production - +1 617 555 0118",
     L"2026-10-10  Order 48230, 40 t of paper"},
};

// The splitter of the page stops where either pane would become narrower than its minimum,
// while it is dragged and when the window shrinks. The bar's place is a whole percentage of
// the container's width, so the limits are whole percentages too: the first one that leaves
// the left pane its minimum, the last one that leaves the right pane its minimum. Clamping
// in pixels instead would let the percentage round down below a pane's minimum, and the
// layout manager would then push the right pane past the container's edge.
class CBoundedSplitter : public KxUiSplitter {
public:
    int m_nMinFirst = 0;
    int m_nMinSecond = 0;

    // Moves the bar back inside its limits after the container changed size.
    void KeepWithinLimits()
    {
        int lo = 0, hi = 0;
        const int extent = ContainerWidth();
        if (!m_pLayoutManager || !Limits(extent, lo, hi))
            return;
        const int percent = m_nPercent < lo ? lo : (m_nPercent > hi ? hi : m_nPercent);
        if (percent == m_nPercent)
            return;
        m_nPercent = percent;
        m_pLayoutManager->SetConstraint(static_cast<UINT>(GetDlgCtrlID()), KxUiLayoutManager::sideLeft,
                                        KxUiLayoutManager::typeFraction, percent, 0);
        m_pLayoutManager->RedrawLayout(false);
    }

protected:
    int ContainerWidth() const
    {
        CRect area;
        GetParent()->GetClientRect(&area);
        return area.Width();
    }

    bool Limits(int extent, int& lo, int& hi) const
    {
        if (extent <= 0)
            return false;
        lo = (m_nMinFirst * 100 + extent - 1) / extent;
        hi = (extent - m_nMinSecond - barThickness) * 100 / extent;
        return lo <= hi;
    }

    afx_msg void OnMouseMove(UINT nFlags, CPoint point)
    {
        int lo = 0, hi = 0;
        const int extent = ContainerWidth();
        if (::GetCapture() == m_hWnd && Limits(extent, lo, hi)) {
            CPoint pt = point;
            MapWindowPoints(GetParent(), &pt, 1);
            int percent = pt.x < 0 ? 0 : pt.x * 100 / extent;
            percent = percent < lo ? lo : (percent > hi ? hi : percent);
            // The first pixel of that percentage, so that the bar computes the same one back.
            pt.x = (percent * extent + 99) / 100;
            GetParent()->MapWindowPoints(this, &pt, 1);
            point = pt;
        }
        KxUiSplitter::OnMouseMove(nFlags, point);
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(CBoundedSplitter, KxUiSplitter)
    ON_WM_MOUSEMOVE()
END_MESSAGE_MAP()

}  // namespace

// The split area: the customers and the details on either side of the splitter. It is a window
// of its own so that the bar spans the panes only, not the option rows below them.
class CLayoutSplitArea : public CDialog {
    DECLARE_DYNAMIC(CLayoutSplitArea)

public:
    void Build()
    {
        CRect rc;
        GetClientRect(&rc);
        const int w = rc.Width(), h = rc.Height();
        const int split = w * 2 / 5;

        Add(m_label, L"STATIC", L"Customers", SS_LEFT | SS_NOPREFIX, CRect(0, 0, split, 16), IDC_CUSTOMERS_LABEL);
        Add(m_list, L"LISTBOX", L"", WS_VSCROLL | WS_TABSTOP | LBS_NOINTEGRALHEIGHT | LBS_NOTIFY,
            CRect(0, 18, split, h), IDC_CUSTOMERS, WS_EX_CLIENTEDGE);
        for (const Customer& c : kCustomers)
            m_list.SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(c.name));
        m_list.SendMessage(LB_SETCURSEL, 1);

        m_splitter.m_nMinFirst = kMinCustomers;
        m_splitter.m_nMinSecond = kMinDetails;
        m_splitter.Create(L"", WS_CHILD | WS_VISIBLE | SS_NOTIFY,
                          CRect(split, 0, split + KxUiSplitter::barThickness, h), this, IDC_SPLITTER);

        const int right = split + KxUiSplitter::barThickness;
        Add(m_tab, WC_TABCONTROLW, L"", WS_TABSTOP | WS_CLIPSIBLINGS, CRect(right, 0, w, h), IDC_DETAILS);
        const wchar_t* tabs[] = {L"Notes", L"Contacts", L"History"};
        for (int i = 0; i < 3; ++i) {
            TCITEMW item = {TCIF_TEXT};
            item.pszText = const_cast<wchar_t*>(tabs[i]);
            m_tab.SendMessage(TCM_INSERTITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        }
        Add(m_notes, L"EDIT", L"", ES_MULTILINE | ES_AUTOVSCROLL | ES_READONLY | WS_VSCROLL | WS_TABSTOP,
            CRect(right + 8, 28, w - 8, h - 8), IDC_NOTES, WS_EX_CLIENTEDGE);
        m_notes.SetWindowPos(&CWnd::wndTop, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);

        // The splitter position and the chosen tab are kept in the profile.
        m_layout.addArchive(new KxUiSplitterPositionArchive(&m_splitter));
        m_layout.addArchive(new KxUiWindowStateBinary(IDC_DETAILS));
        m_layout.Attach(this);

        using LM = KxUiLayoutManager;
        const int same = LM::typeSameSide;
        m_layout.TieChild(IDC_CUSTOMERS_LABEL, LM::sideTop | LM::sideLeft, same);
        m_layout.TieChild(IDC_CUSTOMERS, LM::sideTop | LM::sideLeft | LM::sideBottom, same);
        m_layout.TieChild(IDC_DETAILS, LM::sideTop | LM::sideRight | LM::sideBottom, same);
        m_layout.TieChild(IDC_NOTES, LM::sideAll, same, IDC_DETAILS);
        m_splitter.attachHorz(&m_layout, IDC_CUSTOMERS, IDC_DETAILS);
        // The label follows its pane: its right side ends where the bar begins.
        m_layout.SetConstraint(IDC_CUSTOMERS_LABEL, LM::sideRight, LM::typeOppositeSide, 0, IDC_SPLITTER);
        m_layout.SetMinMax(IDC_CUSTOMERS, CSize(kMinCustomers, 60), CSize(0, 0));
        m_layout.SetMinMax(IDC_DETAILS, CSize(kMinDetails, 60), CSize(0, 0));
        m_layout.RedrawLayout();
        m_splitter.KeepWithinLimits();
        ShowDetails();
    }

    // Drags the bar as the mouse would, to the target left or the target right of the area.
    void DragSplitterToEnd(bool bRight)
    {
        CRect rc;
        GetClientRect(&rc);
        CPoint target(bRight ? rc.right + 500 : rc.left - 500, rc.Height() / 2);
        MapWindowPoints(&m_splitter, &target, 1);
        m_splitter.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
        m_splitter.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(static_cast<short>(target.x), static_cast<short>(target.y)));
        m_splitter.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(static_cast<short>(target.x), static_cast<short>(target.y)));
    }

    // The details pane shows the chosen customer's notes, contacts or history.
    void ShowDetails()
    {
        const int customer = static_cast<int>(m_list.SendMessage(LB_GETCURSEL));
        const int tab = static_cast<int>(m_tab.SendMessage(TCM_GETCURSEL));
        if (customer < 0 || customer >= static_cast<int>(std::size(kCustomers))) {
            m_notes.SetWindowText(L"");
            return;
        }
        const Customer& c = kCustomers[customer];
        m_notes.SetWindowText(tab == 1 ? c.contacts : tab == 2 ? c.history : c.notes);
    }

protected:
    void OnOK() override {}
    void OnCancel() override {}
    afx_msg void OnCustomerChanged() { ShowDetails(); }
    // The layout manager has laid the panes out for the new size; a narrower window may have
    // left a pane below its minimum, so the bar moves back inside its limits.
    afx_msg void OnSize(UINT nType, int cx, int cy)
    {
        CDialog::OnSize(nType, cx, cy);
        if (m_splitter.GetSafeHwnd())
            m_splitter.KeepWithinLimits();
    }
    afx_msg void OnTabChanged(NMHDR*, LRESULT* pResult)
    {
        ShowDetails();
        *pResult = 0;
    }
    DECLARE_MESSAGE_MAP()

private:
    void Add(CWnd& wnd, LPCWSTR cls, LPCWSTR text, DWORD style, const CRect& rc, UINT id, DWORD exStyle = 0)
    {
        wnd.CreateEx(exStyle, cls, text, style | WS_CHILD | WS_VISIBLE, rc, this, id);
        wnd.SendMessage(WM_SETFONT, SendMessage(WM_GETFONT), FALSE);
    }

    CWnd m_label, m_list, m_tab, m_notes;
    CBoundedSplitter m_splitter;
    KxUiLayoutManagerWndBinary m_layout;
};

IMPLEMENT_DYNAMIC(CLayoutSplitArea, CDialog)

BEGIN_MESSAGE_MAP(CLayoutSplitArea, CDialog)
    ON_WM_SIZE()
    ON_LBN_SELCHANGE(IDC_CUSTOMERS, &CLayoutSplitArea::OnCustomerChanged)
    ON_NOTIFY(TCN_SELCHANGE, IDC_DETAILS, &CLayoutSplitArea::OnTabChanged)
END_MESSAGE_MAP()

class CLayoutPage : public CGalleryPage {
    DECLARE_DYNAMIC(CLayoutPage)

public:
    LPCWSTR GetTitle() const override { return L"Layout and splitter"; }
    LPCWSTR GetSlug() const override { return L"layout"; }
    int GetExtremeCount() const override { return 2; }
    void ShowExtreme(int nIndex) override { m_area.DragSplitterToEnd(nIndex == 1); }
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

        CreateChildDialog(m_area, this, CRect(10, 10, w - 10, paneBottom), IDC_SPLITAREA);
        m_area.Build();
        m_area.ShowWindow(SW_SHOWNA);

        AddControl(L"BUTTON", L"Show archived customers", BS_AUTOCHECKBOX | WS_TABSTOP,
                   CRect(10, h - 80, 200, h - 60), IDC_ARCHIVED);
        AddControl(L"BUTTON", L"Confirm before deleting", BS_AUTOCHECKBOX | WS_TABSTOP,
                   CRect(10, h - 54, 200, h - 34), IDC_CONFIRM);
        SendDlgItemMessage(IDC_CONFIRM, BM_SETCHECK, BST_CHECKED);

        AddControl(L"STATIC", L"Currency", SS_RIGHT, CRect(w - 280, h - 78, w - 216, h - 60), IDC_CURRENCY_LABEL);
        CWnd* currency = AddControl(L"COMBOBOX", L"", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP,
                                    CRect(w - 210, h - 82, w - 10, h + 60), IDC_CURRENCY);
        for (const wchar_t* c : {L"Euro (EUR)", L"US dollar (USD)", L"Pound sterling (GBP)", L"Swiss franc (CHF)"})
            currency->SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(c));
        currency->SendMessage(CB_SETCURSEL, 0);
        AddControl(L"STATIC", L"Region", SS_RIGHT, CRect(w - 280, h - 50, w - 216, h - 32), IDC_REGION_LABEL);
        CWnd* region = AddControl(L"COMBOBOX", L"", CBS_DROPDOWN | WS_VSCROLL | WS_TABSTOP,
                                  CRect(w - 210, h - 54, w - 10, h + 80), IDC_REGION);
        for (const wchar_t* r : {L"Europe West", L"Europe North", L"North America", L"Asia Pacific"})
            region->SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(r));
        region->SetWindowText(L"Europe West");

        AddControl(L"STATIC", L"Drag the bar between the panes; resize the window.", SS_LEFT,
                   CRect(10, h - 24, w - 10, h - 6), IDC_HINT);

        // State kept in the profile: restored now, saved when the page closes.
        for (UINT id : {IDC_ARCHIVED, IDC_CONFIRM, IDC_CURRENCY, IDC_REGION})
            m_layout.addArchive(new KxUiWindowStateBinary(id));
        m_layout.Attach(this);

        using LM = KxUiLayoutManager;
        const int same = LM::typeSameSide;
        m_layout.TieChild(IDC_SPLITAREA, LM::sideAll, same);
        m_layout.TieChild(IDC_ARCHIVED, LM::sideLeft | LM::sideBottom, same);
        m_layout.TieChild(IDC_CONFIRM, LM::sideLeft | LM::sideBottom, same);
        for (UINT id : {IDC_CURRENCY_LABEL, IDC_CURRENCY, IDC_REGION_LABEL, IDC_REGION})
            m_layout.TieChild(id, LM::sideRight | LM::sideBottom, same);
        m_layout.TieChild(IDC_HINT, LM::sideLeft | LM::sideRight | LM::sideBottom, same);
        m_layout.RedrawLayout();
    }

private:
    CLayoutSplitArea m_area;
    KxUiLayoutManagerWndBinary m_layout;
};

IMPLEMENT_DYNAMIC(CLayoutPage, CGalleryPage)
KXGALLERY_PAGE(20, CLayoutPage);
