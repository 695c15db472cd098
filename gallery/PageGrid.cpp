// The grid: a stock list with a fixed header row and item column, stock-level markers,
// sorting by header click, selection and copy; under it an order book of ten million rows
// computed on demand (virtual mode), so Ctrl+End answers at once.
#include "KxUiGalleryPage.h"
#include "KxUiGridCtrl2.h"
#include "KxUiLayoutManager.h"
#include <afxcmn.h>

namespace {

enum : UINT {
    IDC_STOCK = 2500,
    IDC_STOCK_NOTE,
    IDC_ORDERS,
    IDC_ORDERS_NOTE,
};

struct StockItem {
    const wchar_t* sku;
    const wchar_t* name;
    const wchar_t* category;
    int quantity;
    int reorderAt;
    double price;
};

const StockItem kStock[] = {
    {L"HW-1001", L"Hex bolt M6 x 30, zinc", L"Fasteners", 4200, 1000, 0.12},
    {L"HW-1002", L"Hex nut M6, zinc", L"Fasteners", 3900, 1000, 0.04},
    {L"HW-1017", L"Washer M6, stainless", L"Fasteners", 640, 800, 0.06},
    {L"HW-1120", L"Wood screw 4 x 40, box of 200", L"Fasteners", 85, 40, 6.90},
    {L"EL-2040", L"Cable tie 200 mm, pack of 100", L"Electrical", 310, 100, 3.45},
    {L"EL-2101", L"Terminal block 12-way", L"Electrical", 0, 25, 2.80},
    {L"EL-2230", L"Heat-shrink kit, 127 pieces", L"Electrical", 48, 20, 8.99},
    {L"EL-2315", L"Multimeter, auto-ranging", L"Electrical", 12, 10, 39.00},
    {L"TL-3002", L"Cordless drill 18 V", L"Tools", 7, 5, 129.00},
    {L"TL-3010", L"Bit set, 32 pieces", L"Tools", 26, 10, 17.50},
    {L"TL-3044", L"Spirit level 600 mm", L"Tools", 3, 8, 14.25},
    {L"TL-3090", L"Utility knife, retractable", L"Tools", 140, 30, 4.60},
    {L"PL-4001", L"PTFE tape 12 m", L"Plumbing", 520, 100, 0.95},
    {L"PL-4022", L"Compression elbow 15 mm", L"Plumbing", 0, 50, 1.70},
    {L"PL-4050", L"Flexible hose 300 mm", L"Plumbing", 66, 40, 5.20},
    {L"PT-5003", L"Masking tape 25 mm", L"Paint", 275, 60, 1.99},
    {L"PT-5018", L"Roller set 230 mm", L"Paint", 19, 15, 11.40},
    {L"PT-5120", L"Wood primer 750 ml", L"Paint", 34, 12, 9.75},
    {L"SF-6001", L"Safety glasses, clear", L"Safety", 88, 30, 3.10},
    {L"SF-6014", L"Work gloves, size L", L"Safety", 22, 40, 4.50},
};
const int kStockRows = sizeof(kStock) / sizeof(kStock[0]);

enum StockImage { imgInStock, imgLow, imgOut };

// Ten million orders computed from the row number: no storage behind the grid at all.
int CALLBACK FillOrder(GV2_DISPINFO* info, LPARAM)
{
    static const wchar_t* const kCustomers[] = {L"Northwind Traders", L"Contoso Ltd", L"Fabrikam Inc",
                                                L"Adventure Works", L"Tailspin Toys", L"Wide World Importers",
                                                L"Alpine Ski House", L"Coho Winery"};
    const int row = info->item.row, col = info->item.col;
    if (row == 0) {
        static const wchar_t* const kHeads[] = {L"Order", L"Date", L"Customer", L"Lines", L"Amount"};
        info->item.strText = kHeads[col];
        return 0;
    }
    const unsigned h = static_cast<unsigned>(row) * 2654435761u;
    switch (col) {
    case 0:
        info->item.strText.Format(L"SO-%08d", row);
        break;
    case 1: {
        const int day = (row / 3000) % 3650;   // about 3,000 orders a day over ten years
        info->item.strText.Format(L"%04d-%02d-%02d", 2016 + day / 365, 1 + (day % 365) / 31 % 12, 1 + day % 28);
        break;
    }
    case 2:
        info->item.strText = kCustomers[h % 8];
        break;
    case 3:
        info->item.strText.Format(L"%u", 1 + (h >> 8) % 12);
        info->item.nFormat = DT_RIGHT | DT_VCENTER | DT_SINGLELINE;
        break;
    default:
        info->item.strText.Format(L"%u.%02u", 20 + (h >> 4) % 4800, (h >> 12) % 100);
        info->item.nFormat = DT_RIGHT | DT_VCENTER | DT_SINGLELINE;
        break;
    }
    return 0;
}

}  // namespace

class CGridPage : public CGalleryPage {
    DECLARE_DYNAMIC(CGridPage)

public:
    LPCWSTR GetTitle() const override { return L"Grid"; }
    LPCWSTR GetSlug() const override { return L"grid"; }
    CString GetStatusText() const override
    {
        return L"Click a header to sort, drag to select, Ctrl+C to copy; the order book below holds ten million rows.";
    }
    void Animate() override
    {
        // Sorted by stock value, a block selected, and the order book at its last row.
        m_stock.SortItems(KxUiGridCtrl2::pfnCellNumericCompare, 6, FALSE);
        m_stock.SetFocusCell(3, 2);
        m_stock.SetSelectedRange(2, 1, 4, 4);
        m_orders.SetFocus();
        m_orders.SetFocusCell(1, 1);
        // Ctrl+End as the keyboard gives it: the grid reads Ctrl from the key state.
        BYTE keys[256], held[256];
        ::GetKeyboardState(keys);
        memcpy(held, keys, sizeof(held));
        held[VK_CONTROL] = 0x80;
        ::SetKeyboardState(held);
        m_orders.SendMessage(WM_KEYDOWN, VK_END, 0);
        ::SetKeyboardState(keys);
        m_stock.SetFocus();
    }

protected:
    void BuildPage() override
    {
        CRect rc;
        GetClientRect(&rc);
        const int w = rc.Width(), h = rc.Height();
        const int split = h * 55 / 100;

        BuildImages();
        m_stock.Create(CRect(10, 10, w - 10, split - 30), this, IDC_STOCK,
                       WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER);
        FillStock();
        AddControl(L"STATIC",
                   L"Amber: below the reorder level. Red: out of stock. Click a header to sort.",
                   SS_LEFT | SS_NOPREFIX, CRect(10, split - 26, w - 10, split - 6), IDC_STOCK_NOTE);

        m_orders.Create(CRect(10, split, w - 10, h - 34), this, IDC_ORDERS,
                        WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER);
        m_orders.SetVirtualMode(TRUE);
        m_orders.SetCallbackFunc(FillOrder, 0);
        m_orders.SetColumnCount(5);
        m_orders.SetRowCount(10000001);
        m_orders.SetFixedRowCount(1);
        m_orders.SetListMode(TRUE);
        const int orderWidths[] = {110, 90, 170, 50, 90};
        for (int c = 0; c < 5; ++c)
            m_orders.SetColumnWidth(c, orderWidths[c]);
        AddControl(L"STATIC",
                   L"Order book: 10,000,000 orders computed on demand. Try Ctrl+End.",
                   SS_LEFT | SS_NOPREFIX, CRect(10, h - 28, w - 10, h - 8), IDC_ORDERS_NOTE);

        using LM = KxUiLayoutManager;
        m_layout.Attach(this);
        m_layout.TieChild(IDC_STOCK, LM::sideTop | LM::sideLeft | LM::sideRight, LM::typeSameSide);
        m_layout.TieChild(IDC_STOCK_NOTE, LM::sideTop | LM::sideLeft | LM::sideRight, LM::typeSameSide);
        m_layout.TieChild(IDC_ORDERS, LM::sideTop | LM::sideLeft | LM::sideRight | LM::sideBottom, LM::typeSameSide);
        m_layout.TieChild(IDC_ORDERS_NOTE, LM::sideBottom | LM::sideLeft | LM::sideRight, LM::typeSameSide);
        m_layout.RedrawLayout();
    }

private:
    // Three 12 x 12 stock markers: a green, an amber and a red disc.
    void BuildImages()
    {
        m_images.Create(12, 12, ILC_COLOR24 | ILC_MASK, 3, 0);
        const COLORREF colours[] = {RGB(46, 160, 67), RGB(230, 150, 20), RGB(210, 40, 40)};
        CClientDC screen(NULL);
        for (COLORREF c : colours) {
            CBitmap bmp;
            bmp.CreateCompatibleBitmap(&screen, 12, 12);
            CDC dc;
            dc.CreateCompatibleDC(&screen);
            CBitmap* old = dc.SelectObject(&bmp);
            dc.FillSolidRect(0, 0, 12, 12, RGB(255, 0, 255));
            CBrush brush(c);
            CPen pen(PS_SOLID, 1, c);
            CBrush* oldBrush = dc.SelectObject(&brush);
            CPen* oldPen = dc.SelectObject(&pen);
            dc.Ellipse(1, 1, 11, 11);
            dc.SelectObject(oldPen);
            dc.SelectObject(oldBrush);
            dc.SelectObject(old);
            m_images.Add(&bmp, RGB(255, 0, 255));
        }
    }

    void FillStock()
    {
        KxUiGridCtrl2& g = m_stock;
        g.SetImageList(&m_images);
        g.SetColumnCount(7);
        g.SetRowCount(kStockRows + 1);
        g.SetFixedRowCount(1);
        g.SetFixedColumnCount(1);
        g.SetHeaderSort(TRUE);
        g.SetFixedRowSelection(TRUE);
        g.SetFixedColumnSelection(TRUE);
        const wchar_t* heads[] = {L"SKU", L"Item", L"Category", L"In stock", L"Reorder at", L"Unit price", L"Value"};
        const int widths[] = {70, 184, 84, 66, 74, 72, 80};
        for (int c = 0; c < 7; ++c) {
            g.SetItemText(0, c, heads[c]);
            g.SetColumnWidth(c, widths[c]);
            if (c >= 3)
                g.SetItemFormat(0, c, DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
        }
        for (int i = 0; i < kStockRows; ++i) {
            const StockItem& s = kStock[i];
            const int r = i + 1;
            CString t;
            g.SetItemText(r, 0, s.sku);
            g.SetItemText(r, 1, s.name);
            g.SetItemText(r, 2, s.category);
            t.Format(L"%d", s.quantity);
            g.SetItemText(r, 3, t);
            t.Format(L"%d", s.reorderAt);
            g.SetItemText(r, 4, t);
            t.Format(L"%.2f", s.price);
            g.SetItemText(r, 5, t);
            t.Format(L"%.2f", s.quantity * s.price);
            g.SetItemText(r, 6, t);
            for (int c = 3; c < 7; ++c)
                g.SetItemFormat(r, c, DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
            const int img = s.quantity == 0 ? imgOut : s.quantity < s.reorderAt ? imgLow : imgInStock;
            g.SetItemImage(r, 1, img);
            if (img == imgOut) {
                g.SetItemFgColour(r, 3, RGB(190, 20, 20));
                g.SetItemBkColour(r, 3, RGB(255, 232, 232));
            } else if (img == imgLow) {
                g.SetItemBkColour(r, 3, RGB(255, 244, 214));
            }
        }
        g.GetDefaultCell(TRUE, FALSE)->SetFormat(DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    }

    KxUiGridCtrl2 m_stock;
    KxUiGridCtrl2 m_orders;
    CImageList m_images;
    KxUiLayoutManager m_layout;
};

IMPLEMENT_DYNAMIC(CGridPage, CGalleryPage)
KXGALLERY_PAGE(50, CGridPage);
