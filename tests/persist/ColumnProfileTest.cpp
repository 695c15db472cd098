// Column profiles of lists in a real dialog, through the test application's registry: the bytes
// of the list format, profiles of another column count, the list's own state record, and the
// first-time fit to headers and contents.
#include "KxUiCtrlColumnProfileBinary.h"
#include "KxUiListCtrlBase.h"
#include "KxTestLayoutDlg.h"
#include "KxTestApp.h"
#include <afxcmn.h>
#include <vector>

namespace {

typedef std::vector<BYTE> Bytes;

enum { idList = 2001, idEdit = 2002 };

bool readProfile(const CString& strSection, Bytes& bytes)
{
    CString strKey = KxTestApp::Get().ProfileKeyPath() + L"\\" + strSection;
    DWORD nSize = 0;
    if (::RegGetValueW(HKEY_CURRENT_USER, strKey, L"SIZECOLUMN", RRF_RT_REG_BINARY, nullptr, nullptr, &nSize) !=
        ERROR_SUCCESS)
        return false;
    bytes.resize(nSize);
    return ::RegGetValueW(HKEY_CURRENT_USER, strKey, L"SIZECOLUMN", RRF_RT_REG_BINARY, nullptr, bytes.data(),
                          &nSize) == ERROR_SUCCESS;
}

Bytes ints(std::initializer_list<int> values)
{
    Bytes bytes;
    for (int v : values)
        bytes.insert(bytes.end(), reinterpret_cast<const BYTE*>(&v), reinterpret_cast<const BYTE*>(&v) + 4);
    return bytes;
}

template <class LIST>
class ProfileFixture : public ::testing::Test {
protected:
    KxTestDlg dlg;
    LIST list;

    void SetUp() override
    {
        ASSERT_TRUE(dlg.create(500, 300, WS_POPUP | WS_VISIBLE));
        ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, CRect(10, 10, 490, 290), &dlg, idList));
        const int widths[] = {100, 80, 80, 200};
        const wchar_t* titles[] = {L"Name", L"Size", L"Type", L"A rather long heading"};
        for (int i = 0; i < 4; ++i)
            list.InsertColumn(i, titles[i], LVCFMT_LEFT, widths[i]);
    }

    void TearDown() override
    {
        list.DestroyWindow();
        dlg.DestroyWindow();
    }

    std::vector<int> Widths()
    {
        std::vector<int> w;
        for (int i = 0; i < 4; ++i)
            w.push_back(list.GetColumnWidth(i));
        return w;
    }

    void Store(const Bytes& bytes)
    {
        KxUiCtrlColumnProfileBinary profile(idList);
        ASSERT_TRUE(AfxGetApp()->WriteProfileBinary(profile.getSectionName(&dlg), L"SIZECOLUMN",
                                                    const_cast<BYTE*>(bytes.data()), (UINT)bytes.size()));
    }
};

using ListProfile = ProfileFixture<CListCtrl>;
using BaseListProfile = ProfileFixture<KxUiListCtrlBase>;

}  // namespace

TEST_F(ListProfile, StoresTheCountAndEveryWidth)
{
    KxUiCtrlColumnProfileBinary profile(idList);
    EXPECT_STREQ(L"SIZECOLUMN", profile.getEntryName());
    ASSERT_TRUE(profile.saveData(&dlg));
    Bytes bytes;
    ASSERT_TRUE(readProfile(profile.getSectionName(&dlg), bytes));
    const Bytes want = {4, 0, 0, 0, 0x64, 0, 0, 0, 0x50, 0, 0, 0, 0x50, 0, 0, 0, 0xC8, 0, 0, 0};
    EXPECT_EQ(want, bytes);

    // Read back into changed columns: all four again, and loaded.
    for (int i = 0; i < 4; ++i)
        list.SetColumnWidth(i, 33);
    EXPECT_TRUE(profile.loadData(&dlg));
    EXPECT_TRUE(profile.getLoaded());
    EXPECT_EQ((std::vector<int>{100, 80, 80, 200}), Widths());
}

TEST_F(ListProfile, AnotherColumnCountIsAppliedInPartAndReportedAsFailure)
{
    Store(ints({3, 11, 12, 13}));
    KxUiCtrlColumnProfileBinary fewer(idList);
    EXPECT_FALSE(fewer.loadData(&dlg));
    EXPECT_FALSE(fewer.getLoaded());
    EXPECT_EQ((std::vector<int>{11, 12, 13, 200}), Widths());

    Store(ints({5, 21, 22, 23, 24, 25}));
    KxUiCtrlColumnProfileBinary more(idList);
    EXPECT_FALSE(more.loadData(&dlg));
    EXPECT_EQ((std::vector<int>{21, 22, 23, 24}), Widths());

    // A count promising more than the value holds stops at the end of the data.
    Store(ints({4, 31, 32}));
    KxUiCtrlColumnProfileBinary cut(idList);
    EXPECT_FALSE(cut.loadData(&dlg));
    EXPECT_EQ((std::vector<int>{31, 32, 23, 24}), Widths());
    // Fewer than four bytes: no columns.
    Store(Bytes{7, 0});
    KxUiCtrlColumnProfileBinary tiny(idList);
    EXPECT_FALSE(tiny.loadData(&dlg));
    EXPECT_EQ((std::vector<int>{31, 32, 23, 24}), Widths());
}

TEST_F(ListProfile, OtherControlsStoreNothingAndDoNotSizeTheFirstTime)
{
    dlg.addChild(idEdit, L"EDIT", 10, 10, 100, 20);
    KxUiCtrlColumnProfileBinary edit(idEdit, 6);
    ASSERT_TRUE(edit.saveData(&dlg));
    Bytes bytes;
    EXPECT_TRUE(!readProfile(edit.getSectionName(&dlg), bytes) || bytes.empty());
    EXPECT_FALSE(KxUiCtrlColumnProfileBinary(idEdit, 6).initializeWhenNoStream(&dlg));
    // A list with flags below 2 keeps its widths and stays not loaded.
    KxUiCtrlColumnProfileBinary none(idList, 1);
    EXPECT_FALSE(none.loadData(&dlg));
    EXPECT_FALSE(none.getLoaded());
    EXPECT_EQ((std::vector<int>{100, 80, 80, 200}), Widths());
}

TEST_F(ListProfile, FirstTimeSizingFitsHeadersContentsOrTheLarger)
{
    list.InsertItem(0, L"a-much-longer-file-name.txt");
    list.SetItemText(0, 1, L"1");
    list.SetItemText(0, 3, L"x");
    // The two fits measured by the list itself, column by column.
    std::vector<int> header, contents;
    for (int i = 0; i < 4; ++i) {
        list.SetColumnWidth(i, LVSCW_AUTOSIZE_USEHEADER);
        header.push_back(list.GetColumnWidth(i));
        list.SetColumnWidth(i, LVSCW_AUTOSIZE);
        contents.push_back(list.GetColumnWidth(i));
    }
    // The header fit covers the contents too (the list view takes the larger), so the long
    // name gives equal fits and "Size" over "1" a wider header fit: both branches of the rule.
    ASSERT_EQ(contents[0], header[0]);
    ASSERT_GT(header[1], contents[1]);

    // (The header fit of the last column fills what is left of the list, so it is checked
    // only for being the larger one.)
    KxUiCtrlColumnProfileBinary both(idList, 6);
    EXPECT_TRUE(both.loadData(&dlg));
    for (int i = 0; i < 3; ++i) {
        int want = header[i] > contents[i] ? header[i] + 1 : contents[i];
        EXPECT_EQ(want, list.GetColumnWidth(i)) << "column " << i;
    }
    EXPECT_GT(list.GetColumnWidth(3), contents[3] + 1);
    for (int i = 0; i < 4; ++i)
        list.SetColumnWidth(i, 300);
    KxUiCtrlColumnProfileBinary headers(idList, 2);
    EXPECT_TRUE(headers.initializeWhenNoStream(&dlg));
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(header[i], list.GetColumnWidth(i)) << "column " << i;
    // Contents alone: a column wider than its contents keeps its width, one pixel more.
    for (int i = 0; i < 4; ++i)
        list.SetColumnWidth(i, 300);
    KxUiCtrlColumnProfileBinary fit(idList, 4);
    EXPECT_TRUE(fit.initializeWhenNoStream(&dlg));
    EXPECT_EQ((std::vector<int>{301, 301, 301, 301}), Widths());
}

TEST_F(BaseListProfile, TheListsOwnStateIsUsedWhenItOffersTheColumnMenu)
{
    list.setColumnVisible(1, false);
    KxUiCtrlColumnProfileBinary plain(idList);
    ASSERT_TRUE(plain.saveData(&dlg));
    Bytes bytes;
    ASSERT_TRUE(readProfile(plain.getSectionName(&dlg), bytes));
    EXPECT_EQ(ints({4, 100, 0, 80, 200}), bytes);  // the list format: a hidden column is width 0

    list.setShowHideColumnMenu(true);
    ASSERT_TRUE(plain.saveData(&dlg));
    ASSERT_TRUE(readProfile(plain.getSectionName(&dlg), bytes));
    EXPECT_EQ(ints({4, 100, 1, 80, 0, 80, 1, 200, 1}), bytes);  // width and visibility per column
    list.setColumnVisible(1, true);
    list.SetColumnWidth(0, 10);
    KxUiCtrlColumnProfileBinary again(idList);
    EXPECT_TRUE(again.loadData(&dlg));
    EXPECT_FALSE(list.isColumnVisible(1));
    EXPECT_EQ(100, list.GetColumnWidth(0));
}
