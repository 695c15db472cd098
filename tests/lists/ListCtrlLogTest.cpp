// The log list over a real list view: rows from the lines of a message, the icons of the rows,
// the column that only widens, and the selection on its way to the clipboard or out of the list.
#include "KxControlHost.h"
#include "KxUiListCtrlLog.h"
#include <string>
#include <vector>

namespace {

// Gives the tests the protected members they check against.
class TestLog : public KxUiListCtrlLog {
public:
    using KxUiListCtrlLog::getIndiceOfIconInImageList;
    using KxUiListCtrlLog::getWidthOf;
};

class ListCtrlLogTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(host.Open(400, 300));
        ASSERT_TRUE(log.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | LVS_REPORT | LVS_NOCOLUMNHEADER,
                               CRect(10, 10, 310, 210), &host, 100));
    }

    std::vector<std::wstring> Rows()
    {
        std::vector<std::wstring> rows;
        for (int i = 0; i < log.GetItemCount(); ++i)
            rows.push_back(static_cast<LPCWSTR>(log.GetItemText(i, 0)));
        return rows;
    }

    int ImageOf(int row)
    {
        LVITEMW item = {LVIF_IMAGE};
        item.iItem = row;
        log.GetItem(&item);
        return item.iImage;
    }

    void Select(std::initializer_list<int> rows)
    {
        log.SetItemState(-1, 0, LVIS_SELECTED);
        for (int r : rows)
            log.SetItemState(r, LVIS_SELECTED, LVIS_SELECTED);
    }

    // The bytes of the CF_TEXT block on the clipboard, as many as the block holds.
    std::vector<BYTE> ClipboardBytes(SIZE_T* blockSize = nullptr)
    {
        std::vector<BYTE> bytes;
        if (!::OpenClipboard(nullptr))
            return bytes;
        if (HANDLE h = ::GetClipboardData(CF_TEXT)) {
            const SIZE_T size = ::GlobalSize(h);
            if (blockSize)
                *blockSize = size;
            if (const void* p = ::GlobalLock(h)) {
                bytes.assign(static_cast<const BYTE*>(p), static_cast<const BYTE*>(p) + size);
                ::GlobalUnlock(h);
            }
        }
        ::CloseClipboard();
        return bytes;
    }

    ControlHost host;
    TestLog log;
};

TEST_F(ListCtrlLogTest, EveryLineFeedEndsARowAndNothingElseDoes)
{
    log.putMessageInLog(L"a\nb\n");
    EXPECT_EQ((std::vector<std::wstring>{L"a", L"b"}), Rows()) << "a final line feed gives no empty row";

    log.DeleteAllItems();
    log.putMessageInLog(L"a\n\nb");
    EXPECT_EQ((std::vector<std::wstring>{L"a", L"", L"b"}), Rows());

    log.DeleteAllItems();
    log.putMessageInLog(L"");
    log.putMessageInLog(nullptr);
    log.putMessageInLog(nullptr, IDI_HAND);
    EXPECT_EQ(0, log.GetItemCount());

    // A carriage return stays at the end of its line; a lone one does not end a line.
    log.putMessageInLog(L"first\r\nsecond\rstill second");
    EXPECT_EQ((std::vector<std::wstring>{L"first\r", L"second\rstill second"}), Rows());
}

TEST_F(ListCtrlLogTest, RowsShowTheSystemIconTheyAskForAndUnknownOnesShowTheErrorIcon)
{
    ASSERT_EQ(5, ImageList_GetImageCount(reinterpret_cast<HIMAGELIST>(log.SendMessage(LVM_GETIMAGELIST, LVSIL_SMALL))));
    const LPCWSTR ids[] = {IDI_APPLICATION, IDI_HAND, IDI_QUESTION, IDI_EXCLAMATION, IDI_ASTERISK};
    for (int i = 0; i < 5; ++i)
        log.putMessageInLog(L"line", ids[i]);
    log.putMessageInLog(L"unknown\nicon", MAKEINTRESOURCEW(12345));
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(i, ImageOf(i)) << "row " << i;
    EXPECT_EQ(1, ImageOf(5));
    EXPECT_EQ(1, ImageOf(6)) << "every line of a message gets its icon";
    EXPECT_EQ(1, log.getIndiceOfIconInImageList(nullptr));
}

TEST_F(ListCtrlLogTest, TheNewestRowIsAlwaysInView)
{
    // Six times as many rows as the list shows.
    for (int i = 0; i < 45; ++i)
        log.putMessageInLog(L"compiling unit\nlinking");
    const int last = log.GetItemCount() - 1;
    ASSERT_EQ(89, last);
    ASSERT_LT(log.GetCountPerPage() * 5, last);
    CRect row, client;
    ASSERT_TRUE(log.GetItemRect(last, &row, LVIR_BOUNDS));
    log.GetClientRect(&client);
    EXPECT_GE(row.top, client.top);
    EXPECT_LE(row.bottom, client.bottom) << "the last row is shown whole";
}

TEST_F(ListCtrlLogTest, TheColumnStartsAtTheClientWidthAndOnlyWidensForWiderLines)
{
    CRect client;
    log.GetClientRect(&client);
    EXPECT_EQ(client.Width() - 2, log.GetColumnWidth(0));

    // A line wider than the column widens it to the line's measured width less 2 pixels.
    const std::wstring wide(120, L'W');
    const int measured = log.getWidthOf(wide.c_str());
    ASSERT_GT(measured, client.Width());
    log.putMessageInLog(wide.c_str());
    EXPECT_EQ(measured - 2, log.GetColumnWidth(0));

    // Narrower lines leave it as it is.
    log.putMessageInLog(L"short");
    EXPECT_EQ(measured - 2, log.GetColumnWidth(0));
    log.DeleteAllItems();
    EXPECT_EQ(measured - 2, log.GetColumnWidth(0)) << "the column never narrows";
}

TEST_F(ListCtrlLogTest, CopyPublishesTheSelectedRowsInItsOwnBlockAndEmptiesTheClipboardFirst)
{
    log.putMessageInLog(L"r0\nr1\nr2\nr3\nr4");
    Select({1, 3});
    log.copy();
    // The block is (length + 2) bytes for the 6 characters "r1\nr3\n" under CF_TEXT, and holds
    // as much of the UTF-16 text as fits with its terminator.
    SIZE_T size = 0;
    const std::vector<BYTE> bytes = ClipboardBytes(&size);
    ASSERT_GE(size, 8u);
    const wchar_t expected[] = L"r1\n";
    EXPECT_EQ(0, memcmp(expected, bytes.data(), sizeof expected));

    // Nothing selected: the clipboard is emptied and holds an empty text.
    Select({});
    log.copy();
    const std::vector<BYTE> empty = ClipboardBytes();
    ASSERT_GE(empty.size(), 2u);
    EXPECT_EQ(0, empty[0]);
    EXPECT_EQ(0, empty[1]);
}

TEST_F(ListCtrlLogTest, CutAndDeleteRemoveTheSelectionAndKeepTheOtherRowsInOrder)
{
    log.putMessageInLog(L"r0\nr1\nr2\nr3\nr4\nr5\nr6");
    Select({0, 2, 5});
    log.cut();
    EXPECT_EQ((std::vector<std::wstring>{L"r1", L"r3", L"r4", L"r6"}), Rows());

    log.selectAll();
    EXPECT_EQ(4u, log.GetSelectedCount());
    log.suppression();
    EXPECT_EQ(0, log.GetItemCount());
}

TEST(ListCtrlLogSubclass, AListViewFromADialogIsSetUpWhenSubclassed)
{
    ControlHost host;
    ASSERT_TRUE(host.Open());
    HWND list = ::CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT, 0, 0, 200, 100,
                                  host.m_hWnd, reinterpret_cast<HMENU>(7), nullptr, nullptr);
    ASSERT_NE(nullptr, list);
    KxUiListCtrlLog log;
    ASSERT_TRUE(log.SubclassWindow(list));
    EXPECT_EQ(1, log.GetHeaderCtrl()->GetItemCount());
    EXPECT_TRUE(log.GetExtendedStyle() & LVS_EX_FULLROWSELECT);
    log.putMessageInLog(L"ready", IDI_ASTERISK);
    EXPECT_EQ(1, log.GetItemCount());
}

TEST(ListCtrlLogWindowless, OperationsWithoutAWindowDoNothing)
{
    KxUiListCtrlLog log;
    log.putMessageInLog(L"a\nb", IDI_HAND);
    log.selectAll();
    log.copy();
    log.cut();
    log.suppression();
    EXPECT_EQ(nullptr, log.GetSafeHwnd());
}

}  // namespace
