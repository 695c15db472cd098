// The extended list: an order-entry table whose cells carry their own editors (quantities in
// numeric editors, a status drop-down, a carrier combo, paid check boxes under a header check,
// colour tags, a push button per row), sortable by a header click, column widths kept in the
// profile from one run to the next.
#include "KxUiGalleryPage.h"
#include "KxUiCtrlColumnProfileBinary.h"
#include "KxUiLayoutManager.h"
#include "KxUiSortHeaderCtrl.h"
#include "KxUiXListCtrl.h"

namespace {

enum : UINT {
    IDC_ORDERS = 2600,
    IDC_LAST_EVENT,
    IDC_NOTE,
};

enum Column { colItem, colQty, colPrice, colStatus, colCarrier, colPaid, colTag, colAction, colCount };

// The order list: a push button ships the row (the page hears of it through XM_BOUTONDOWN).
class COrderList : public KxUiSortXListCtrl {
public:
    bool onClickButton(int nRow, int, CUIntArray&) override
    {
        return GetItemText(nRow, colStatus) != L"Shipped";
    }
};

}  // namespace

class CXListPage : public CGalleryPage {
    DECLARE_DYNAMIC(CXListPage)

public:
    LPCWSTR GetTitle() const override { return L"Extended list"; }
    LPCWSTR GetSlug() const override { return L"xlist"; }
    CString GetStatusText() const override
    {
        return L"Click a cell to edit it; Return writes the value into every selected row of the same kind.";
    }
    void Animate() override
    {
        // Two orders selected and the status list opened over the first of them.
        m_list.SetFocus();
        m_list.SelectAll(false);
        m_list.SetItemState(1, LVIS_SELECTED, LVIS_SELECTED);
        m_list.SetItemState(3, LVIS_SELECTED, LVIS_SELECTED);
        m_list.createCtrl(1, colStatus);
    }

protected:
    void BuildPage() override
    {
        CRect rc;
        GetClientRect(&rc);
        m_list.setStrEmptyText(L"No orders");
        m_list.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | LVS_SHOWSELALWAYS,
                      CRect(10, 10, rc.right - 10, rc.bottom - 86), this, IDC_ORDERS);
        ApplyFont(&m_list);
        struct ColumnDef {
            const wchar_t* title;
            int format;
            int width;
        } columns[colCount] = {
            {L"Item", LVCFMT_LEFT, 130},    {L"Qty", LVCFMT_RIGHT, 50},      {L"Unit price", LVCFMT_RIGHT, 75},
            {L"Status", LVCFMT_LEFT, 80},   {L"Carrier", LVCFMT_LEFT, 80},   {L"Paid", LVCFMT_CENTER, 60},
            {L"Tag", LVCFMT_CENTER, 40},    {L"", LVCFMT_CENTER, 60},
        };
        for (int i = 0; i < colCount; ++i)
            m_list.InsertColumn(i, columns[i].title, columns[i].format, columns[i].width);
        m_list.SetHeaderCheckedState(colPaid, 1);

        CStringArray states, carriers;
        for (const wchar_t* s : {L"Open", L"Packed", L"Shipped", L"Cancelled"})
            states.Add(s);
        for (const wchar_t* s : {L"Post", L"Courier", L"Pick-up"})
            carriers.Add(s);
        struct Order {
            const wchar_t* item;
            int qty;
            const wchar_t* price;
            int status;
            const wchar_t* carrier;
            int paid;
            COLORREF tag;
        } orders[] = {
            {L"Hex bolts M8 x 40", 250, L"0.12", 0, L"Post", 0, RGB(220, 60, 60)},
            {L"Wing nuts M6", 120, L"0.35", 1, L"Courier", 1, RGB(60, 160, 80)},
            {L"Spring washers", 1000, L"0.02", 2, L"Post", 1, RGB(60, 100, 200)},
            {L"Threaded rod 1 m", 12, L"4.90", 0, L"Pick-up", 0, RGB(230, 170, 30)},
            {L"Cable ties 200 mm", 500, L"0.04", 3, L"Courier", 0, RGB(150, 80, 180)},
            {L"Anchor plugs 10 mm", 80, L"0.18", 1, L"Post", 1, RGB(60, 160, 80)},
        };
        TCHAR sep = XUtil::getCurrentFractionnalDigit();
        int row = 0;
        for (const Order& o : orders) {
            m_list.InsertItem(row, o.item);
            m_list.SetEditText(row, colItem, o.item);
            m_list.SetEditNum(row, colQty, o.qty);
            CString price(o.price);
            price.Replace(_T('.'), sep);
            m_list.SetOxEditNum(row, colPrice, price, false, 2);
            m_list.SetComboBox(row, colStatus, states, 4, o.status);
            m_list.SetComboBoxEdit(row, colCarrier, carriers, 3, o.carrier);
            m_list.SetCheckbox(row, colPaid, o.paid);
            m_list.SetColorDialog(row, colTag);
            m_list.SetBkColor(row, colTag, o.tag);
            m_list.SetButton(row, colAction, L"Ship");
            m_list.SetItemToolTipText(row, colItem, L"Click to rename the item");
            ++row;
        }
        m_list.SetBold(4, colStatus, true);  // cancelled orders stand out
        m_list.SetHeaderCheckedState(colPaid, m_list.CountCheckedItems(colPaid) == row ? 2 : 1);

        AddControl(L"STATIC", L"", SS_LEFT | SS_NOPREFIX, CRect(10, rc.bottom - 80, rc.right - 10, rc.bottom - 62),
                   IDC_LAST_EVENT);
        AddControl(L"STATIC",
                   L"Ctrl-click rows, then edit one of them: the value goes to every selected row. Up and Down "
                   L"move the editor, Escape cancels. A header click sorts; the Paid header checks all.",
                   SS_LEFT, CRect(10, rc.bottom - 58, rc.right - 10, rc.bottom - 4), IDC_NOTE);

        using LM = KxUiLayoutManager;
        m_layout.Attach(this);
        m_layout.TieChild(IDC_ORDERS, LM::sideLeft | LM::sideTop | LM::sideRight | LM::sideBottom, LM::typeSameSide);
        m_layout.TieChild(IDC_LAST_EVENT, LM::sideLeft | LM::sideRight | LM::sideBottom, LM::typeSameSide);
        m_layout.TieChild(IDC_NOTE, LM::sideLeft | LM::sideRight | LM::sideBottom, LM::typeSameSide);
        m_layout.RedrawLayout();
    }

    // Column widths from the last run, kept as the list's column profile.
    void SaveState() override
    {
        CGalleryPage::SaveState();
        KxUiCtrlColumnProfileBinary(IDC_ORDERS).saveData(this);
    }
    void RestoreState() override
    {
        CGalleryPage::RestoreState();
        KxUiCtrlColumnProfileBinary(IDC_ORDERS).loadData(this);
    }

    void showEvent(const wchar_t* what, LPARAM lParam)
    {
        const XData::CELLNOTIFY* p = reinterpret_cast<const XData::CELLNOTIFY*>(lParam);
        CString text;
        CString value = p->cell.m_strText;
        if (p->cell.GetCheckbox() != -1)
            value = p->cell.GetCheckbox() ? L"checked" : L"cleared";
        text.Format(L"%s: row %d, %s = %s", what, p->nRow + 1, (LPCWSTR)m_list.getColumnText(p->nCol),
                    (LPCWSTR)value);
        SetDlgItemText(IDC_LAST_EVENT, text);
    }
    afx_msg LRESULT OnCellChanged(WPARAM, LPARAM lParam)
    {
        showEvent(L"Changed", lParam);
        return 0;
    }
    afx_msg LRESULT OnCellChecked(WPARAM, LPARAM lParam)
    {
        showEvent(L"Check", lParam);
        return 0;
    }
    afx_msg LRESULT OnButton(WPARAM, LPARAM lParam)
    {
        // Shipping an order sets its status.
        const XData::CELLNOTIFY* p = reinterpret_cast<const XData::CELLNOTIFY*>(lParam);
        CStringArray states;
        for (const wchar_t* s : {L"Open", L"Packed", L"Shipped", L"Cancelled"})
            states.Add(s);
        m_list.SetComboBox(p->nRow, colStatus, states, 4, 2);
        m_list.UpdateSubItem(p->nRow, colStatus);
        CString text;
        text.Format(L"Shipped: %s", (LPCWSTR)m_list.GetItemText(p->nRow, colItem));
        SetDlgItemText(IDC_LAST_EVENT, text);
        return 0;
    }
    DECLARE_MESSAGE_MAP()

private:
    COrderList m_list;
    KxUiLayoutManager m_layout;
};

IMPLEMENT_DYNAMIC(CXListPage, CGalleryPage)

BEGIN_MESSAGE_MAP(CXListPage, CGalleryPage)
    ON_REGISTERED_MESSAGE(XControl::XM_SELECTION_2, &CXListPage::OnCellChanged)
    ON_REGISTERED_MESSAGE(XControl::XM_CHECKBOX_CLICKED_2, &CXListPage::OnCellChecked)
    ON_REGISTERED_MESSAGE(XControl::XM_BOUTONDOWN_2, &CXListPage::OnButton)
END_MESSAGE_MAP()

KXGALLERY_PAGE(60, CXListPage);
