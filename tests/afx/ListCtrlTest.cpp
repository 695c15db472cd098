// CListCtrl and CHeaderCtrl over the platform's list view: columns and items round trip,
// owner-data lists ask for their text, owner-drawn items reach DrawItem by reflection.
#include "KxControlHost.h"
#include "KxPixelProbe.h"

#include <string>
#include <vector>

namespace {

const UINT kListId = 101;
const COLORREF kPaint = RGB(200, 30, 90);

std::vector<int> Walk(const CListCtrl& list)
{
    std::vector<int> out;
    for (POSITION pos = list.GetFirstSelectedItemPosition(); pos != nullptr;)
        out.push_back(list.GetNextSelectedItem(pos));
    return out;
}

class ListCtrl : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_host.Open());
        ASSERT_TRUE(m_list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SHOWSELALWAYS, CRect(0, 0, 400, 250),
                                  &m_host, kListId));
    }
    void FillColumns()
    {
        EXPECT_EQ(0, m_list.InsertColumn(0, L"Name", LVCFMT_LEFT, 120));
        EXPECT_EQ(1, m_list.InsertColumn(1, L"Size", LVCFMT_RIGHT, 80));
        EXPECT_EQ(2, m_list.InsertColumn(2, L"Extra"));
    }
    ControlHost m_host;
    CListCtrl m_list;
};

}  // namespace

TEST_F(ListCtrl, ColumnsRoundTrip)
{
    FillColumns();
    wchar_t text[32] = {};
    LVCOLUMN col = {};
    col.mask = LVCF_TEXT | LVCF_FMT | LVCF_WIDTH;
    col.pszText = text;
    col.cchTextMax = 32;
    ASSERT_TRUE(m_list.GetColumn(1, &col));
    EXPECT_STREQ(L"Size", text);
    EXPECT_EQ(LVCFMT_RIGHT, col.fmt & LVCFMT_JUSTIFYMASK);
    EXPECT_EQ(80, col.cx);

    LVCOLUMN rename = {};
    rename.mask = LVCF_TEXT;
    rename.pszText = const_cast<LPWSTR>(L"Bytes");
    ASSERT_TRUE(m_list.SetColumn(1, &rename));
    col.cchTextMax = 32;
    ASSERT_TRUE(m_list.GetColumn(1, &col));
    EXPECT_STREQ(L"Bytes", text);

    EXPECT_EQ(120, m_list.GetColumnWidth(0));
    ASSERT_TRUE(m_list.SetColumnWidth(0, 150));
    EXPECT_EQ(150, m_list.GetColumnWidth(0));
    CHeaderCtrl* header = m_list.GetHeaderCtrl();
    ASSERT_NE(nullptr, header);
    EXPECT_EQ(3, header->GetItemCount());
    CRect rc;
    ASSERT_TRUE(header->GetItemRect(1, &rc));
    EXPECT_EQ(150, rc.left);
    EXPECT_EQ(230, rc.right);

    int order[3] = {2, 0, 1};
    ASSERT_TRUE(m_list.SetColumnOrderArray(3, order));
    int back[3] = {};
    ASSERT_TRUE(m_list.GetColumnOrderArray(back));
    EXPECT_EQ(2, back[0]);
    EXPECT_EQ(1, back[2]);
    EXPECT_EQ(2, header->OrderToIndex(0));
    int headerOrder[3] = {};
    ASSERT_TRUE(header->GetOrderArray(headerOrder));
    EXPECT_EQ(0, headerOrder[1]);

    ASSERT_TRUE(m_list.DeleteColumn(2));
    EXPECT_EQ(2, header->GetItemCount());
    EXPECT_FALSE(m_list.DeleteColumn(9));
    EXPECT_FALSE(m_list.GetColumn(7, &col));
}

TEST_F(ListCtrl, ItemsTextsDataAndStatesRoundTrip)
{
    FillColumns();
    EXPECT_EQ(0, m_list.InsertItem(0, L"alpha"));
    EXPECT_EQ(1, m_list.InsertItem(1, L"beta"));
    EXPECT_EQ(1, m_list.InsertItem(1, L"between"));  // pushes beta down
    EXPECT_EQ(3, m_list.GetItemCount());
    ASSERT_TRUE(m_list.SetItemText(0, 1, L"12 KB"));
    const std::wstring longText(700, L'x');
    ASSERT_TRUE(m_list.SetItemText(2, 2, longText.c_str()));
    EXPECT_STREQ(L"beta", m_list.GetItemText(2, 0));
    EXPECT_STREQ(L"12 KB", m_list.GetItemText(0, 1));
    EXPECT_STREQ(longText.c_str(), m_list.GetItemText(2, 2));  // longer than any first guess
    EXPECT_STREQ(L"", m_list.GetItemText(9, 0));
    wchar_t small[4];
    EXPECT_EQ(3, m_list.GetItemText(1, 0, small, 4));
    EXPECT_STREQ(L"bet", small);

    ASSERT_TRUE(m_list.SetItemData(1, 0xBEEF));
    EXPECT_EQ(0xBEEFu, m_list.GetItemData(1));
    EXPECT_EQ(0u, m_list.GetItemData(42));
    ASSERT_TRUE(m_list.SetItem(0, 0, LVIF_IMAGE | LVIF_STATE, nullptr, 3, LVIS_CUT, LVIS_CUT, 0));
    LVITEM item = {};
    item.mask = LVIF_IMAGE | LVIF_STATE | LVIF_PARAM;
    item.iItem = 0;
    item.stateMask = LVIS_CUT;
    ASSERT_TRUE(m_list.GetItem(&item));
    EXPECT_EQ(3, item.iImage);
    EXPECT_EQ(static_cast<UINT>(LVIS_CUT), item.state & LVIS_CUT);

    EXPECT_EQ(nullptr, m_list.GetFirstSelectedItemPosition());
    ASSERT_TRUE(m_list.SetItemState(0, LVIS_SELECTED, LVIS_SELECTED));
    ASSERT_TRUE(m_list.SetItemState(2, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED));
    EXPECT_EQ(2u, m_list.GetSelectedCount());
    EXPECT_EQ((std::vector<int>{0, 2}), Walk(m_list));
    EXPECT_EQ(static_cast<UINT>(LVIS_SELECTED), m_list.GetItemState(2, LVIS_SELECTED));
    EXPECT_EQ(2, m_list.GetNextItem(-1, LVNI_FOCUSED));

    ASSERT_TRUE(m_list.DeleteItem(1));
    EXPECT_EQ(2, m_list.GetItemCount());
    EXPECT_EQ((std::vector<int>{0, 1}), Walk(m_list));
    EXPECT_FALSE(m_list.DeleteItem(5));
    ASSERT_TRUE(m_list.DeleteAllItems());
    EXPECT_EQ(0, m_list.GetItemCount());
    EXPECT_EQ(nullptr, m_list.GetFirstSelectedItemPosition());
}

TEST_F(ListCtrl, GeometryHitTestingAndScrolling)
{
    FillColumns();
    for (int i = 0; i < 60; ++i) {
        m_list.InsertItem(i, (L"row " + std::to_wstring(i)).c_str());
        m_list.SetItemText(i, 1, L"sub");
    }
    const int perPage = m_list.GetCountPerPage();
    EXPECT_GT(perPage, 3);
    EXPECT_LT(perPage, 60);
    EXPECT_EQ(0, m_list.GetTopIndex());
    ASSERT_TRUE(m_list.EnsureVisible(45, FALSE));
    EXPECT_GT(m_list.GetTopIndex(), 45 - perPage);
    EXPECT_LE(m_list.GetTopIndex(), 45);

    CRect client, row, sub;
    m_list.GetClientRect(&client);
    ASSERT_TRUE(m_list.GetItemRect(45, &row, LVIR_BOUNDS));
    EXPECT_GE(row.top, 0);
    EXPECT_LE(row.bottom, client.bottom);
    ASSERT_TRUE(m_list.GetSubItemRect(45, 1, LVIR_BOUNDS, sub));
    EXPECT_EQ(120, sub.left);
    EXPECT_EQ(200, sub.right);
    EXPECT_EQ(row.top, sub.top);

    UINT flags = 0;
    EXPECT_EQ(45, m_list.HitTest(CPoint(10, row.CenterPoint().y), &flags));
    EXPECT_NE(0u, flags & LVHT_ONITEM);
    EXPECT_EQ(-1, m_list.HitTest(CPoint(10, client.bottom + 50)));
    LVHITTESTINFO hit = {};
    hit.pt = sub.CenterPoint();
    EXPECT_EQ(45, m_list.SubItemHitTest(&hit));
    EXPECT_EQ(1, hit.iSubItem);

    EXPECT_GT(m_list.GetStringWidth(L"WWWWWW"), m_list.GetStringWidth(L"iii"));
    ASSERT_TRUE(m_list.RedrawItems(40, 50));
}

TEST_F(ListCtrl, StylesColoursImagesSortingAndDragImages)
{
    FillColumns();
    const DWORD before = m_list.GetExtendedStyle();
    EXPECT_EQ(before, m_list.SetExtendedStyle(LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES));
    EXPECT_EQ(static_cast<DWORD>(LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES),
              m_list.GetExtendedStyle() & (LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES));

    const wchar_t* names[] = {L"b", L"d", L"a", L"c"};
    for (int i = 0; i < 4; ++i) {
        m_list.InsertItem(i, names[i]);
        m_list.SetItemData(i, names[i][0]);
    }
    // Descending by the item data.
    ASSERT_TRUE(m_list.SortItems(
        [](LPARAM a, LPARAM b, LPARAM dir) -> int { return static_cast<int>((b - a) * dir); }, 1));
    EXPECT_STREQ(L"d", m_list.GetItemText(0, 0));
    EXPECT_STREQ(L"a", m_list.GetItemText(3, 0));

    CImageList images;
    ASSERT_TRUE(images.Create(16, 16, ILC_COLOR32, 1, 1));
    EXPECT_EQ(nullptr, m_list.SetImageList(&images, LVSIL_SMALL));
    EXPECT_EQ(&images, m_list.GetImageList(LVSIL_SMALL));  // the owner, not a temporary
    CPoint at;
    CImageList* drag = m_list.CreateDragImage(0, &at);
    ASSERT_NE(nullptr, drag);
    EXPECT_EQ(1, drag->GetImageCount());
    delete drag;  // the caller's to free

    ASSERT_TRUE(m_list.SetBkColor(RGB(10, 20, 200)));
    ASSERT_TRUE(m_list.SetTextColor(RGB(250, 250, 0)));
    ASSERT_TRUE(m_list.SetTextBkColor(RGB(10, 20, 200)));
    EXPECT_EQ(RGB(10, 20, 200), m_list.GetBkColor());
    EXPECT_EQ(RGB(250, 250, 0), m_list.GetTextColor());
    EXPECT_EQ(RGB(10, 20, 200), m_list.GetTextBkColor());
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Capture(m_list));
    const RECT below = {0, 150, 400, 240};  // the empty rows, between the grid lines
    EXPECT_GT(probe.Count(RGB(10, 20, 200), &below), 400 * 90 * 3 / 4);
    CRect first;
    m_list.GetItemRect(0, &first, LVIR_LABEL);
    EXPECT_GT(probe.Count(RGB(250, 250, 0), &first), 0);  // the first row's text
    probe.SaveIfFailed();
    m_list.SetImageList(nullptr, LVSIL_SMALL);
}

////////////////////////////////////////////////////////////////////////////
// Owner data: the control asks for the texts it shows.

namespace {

class DataHost : public ControlHost {
public:
    std::vector<int> asked;
    afx_msg void OnGetDispInfo(NMHDR* pNMHDR, LRESULT* pResult)
    {
        auto* info = reinterpret_cast<NMLVDISPINFO*>(pNMHDR);
        if (info->item.mask & LVIF_TEXT) {
            asked.push_back(info->item.iItem);
            swprintf(info->item.pszText, info->item.cchTextMax, L"row %d col %d", info->item.iItem,
                     info->item.iSubItem);
        }
        *pResult = 0;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(DataHost, ControlHost)
    ON_NOTIFY(LVN_GETDISPINFO, kListId, &DataHost::OnGetDispInfo)
END_MESSAGE_MAP()

// Answers its own requests through reflection; the parent never hears of them.
class SelfDataList : public CListCtrl {
public:
    int answered = 0;
    afx_msg void OnGetDispInfo(NMHDR* pNMHDR, LRESULT* pResult)
    {
        auto* info = reinterpret_cast<NMLVDISPINFO*>(pNMHDR);
        if (info->item.mask & LVIF_TEXT) {
            ++answered;
            lstrcpynW(info->item.pszText, L"mine", info->item.cchTextMax);
        }
        *pResult = 0;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(SelfDataList, CListCtrl)
    ON_NOTIFY_REFLECT(LVN_GETDISPINFO, &SelfDataList::OnGetDispInfo)
END_MESSAGE_MAP()

}  // namespace

TEST(ListCtrlOwnerData, ParentIsAskedForTheTextsShown)
{
    DataHost host;
    ASSERT_TRUE(host.Open());
    CListCtrl list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA, CRect(0, 0, 300, 200), &host,
                            kListId));
    list.InsertColumn(0, L"A", LVCFMT_LEFT, 140);
    list.InsertColumn(1, L"B", LVCFMT_LEFT, 140);
    list.SetItemCount(100000);
    EXPECT_EQ(100000, list.GetItemCount());
    EXPECT_STREQ(L"row 54321 col 1", list.GetItemText(54321, 1));
    ASSERT_FALSE(host.asked.empty());
    EXPECT_EQ(54321, host.asked.back());

    // Drawing asks for the visible rows only.
    host.asked.clear();
    KxPixelProbe probe;
    ASSERT_TRUE(probe.Capture(list));
    ASSERT_FALSE(host.asked.empty());
    for (int item : host.asked)
        EXPECT_LT(item, list.GetTopIndex() + list.GetCountPerPage() + 1);
    EXPECT_EQ(0, host.asked.front());
}

TEST(ListCtrlOwnerData, AControlTakesItsOwnReflectedRequests)
{
    DataHost host;
    ASSERT_TRUE(host.Open());
    SelfDataList list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA, CRect(0, 0, 300, 200), &host,
                            kListId));
    list.InsertColumn(0, L"A", LVCFMT_LEFT, 140);
    list.SetItemCount(10);
    EXPECT_STREQ(L"mine", list.GetItemText(3, 0));
    EXPECT_GT(list.answered, 0);
    EXPECT_TRUE(host.asked.empty());
}

////////////////////////////////////////////////////////////////////////////
// Owner-drawn header items

namespace {

class PaintedHeader : public CHeaderCtrl {
public:
    std::vector<UINT> drawn;
    void DrawItem(LPDRAWITEMSTRUCT dis) override
    {
        drawn.push_back(dis->itemID);
        CDC* dc = CDC::FromHandle(dis->hDC);
        dc->FillSolidRect(&dis->rcItem, kPaint);
    }
};

}  // namespace

TEST_F(ListCtrl, OwnerDrawnHeaderItemsReachDrawItemThroughReflection)
{
    FillColumns();
    PaintedHeader header;
    ASSERT_TRUE(header.SubclassWindow(m_list.GetHeaderCtrl()->GetSafeHwnd()));
    HDITEM hdi = {};
    hdi.mask = HDI_FORMAT;
    ASSERT_TRUE(header.GetItem(1, &hdi));
    hdi.fmt |= HDF_OWNERDRAW;
    ASSERT_TRUE(header.SetItem(1, &hdi));

    KxPixelProbe probe;
    ASSERT_TRUE(probe.Capture(m_list));
    ASSERT_FALSE(header.drawn.empty());
    for (UINT id : header.drawn)
        EXPECT_EQ(1u, id);
    CRect item;
    header.GetItemRect(1, &item);
    header.MapWindowPoints(&m_list, &item);
    EXPECT_EQ(static_cast<RECT>(item), probe.BoundingBox(kPaint));
    probe.SaveIfFailed();
    header.UnsubclassWindow();
}
