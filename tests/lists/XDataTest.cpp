// The extended list's cell model and sort helpers, without windows.
#include <XData.h>
#include <oleauto.h>
#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace XControl;
using XData::SUBITEM;
using XData::SUBITEMARRAY;

namespace {

// True when stmt raised the framework's invalid-argument exception (deleted here).
template <class F>
bool RaisesInvalidArg(F f)
{
    try {
        f();
    } catch (CException* e) {
        bool b = dynamic_cast<CInvalidArgException*>(e) != nullptr;
        e->Delete();
        return b;
    }
    return false;
}

CStringArray& Items(CStringArray& a, std::initializer_list<LPCWSTR> list)
{
    a.RemoveAll();
    for (LPCWSTR s : list)
        a.Add(s);
    return a;
}

// A date in the user's locale, written the way the platform writes it.
CString DateText(int y, int m, int d)
{
    SYSTEMTIME st = {};
    st.wYear = (WORD)y;
    st.wMonth = (WORD)m;
    st.wDay = (WORD)d;
    DATE date = 0;
    ::SystemTimeToVariantTime(&st, &date);
    BSTR b = nullptr;
    ::VarBstrFromDate(date, LOCALE_USER_DEFAULT, 0, &b);
    CString s(b);
    ::SysFreeString(b);
    return s;
}

}  // namespace

TEST(XUtil, IsNumberAcceptsASeparatorOnlyBeforeTheFirstDigit)
{
    struct Case { LPCWSTR text; int length; int expected; } cases[] = {
        {L"", -1, 0},     {L"7", -1, 1},    {L"1250", -1, 1}, {L".5", -1, 1},  {L",5", -1, 2},
        {L"1.5", -1, 0},  {L"1,5", -1, 0},  {L",5.", -1, 0},  {L"-5", -1, 0},  {L"5 ", -1, 0},
        {L"12x", 2, 1},   {L"12x", -1, 0},  {L",", -1, 2},    {L"..5", -1, 0}, {L"1e3", -1, 0},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.expected, XUtil::IsNumber(c.text, c.length)) << "\"" << CStringA(c.text).GetString() << "\"";
    EXPECT_EQ(0, XUtil::IsNumber(nullptr));
}

TEST(XUtil, TransformeEntierOuReelDropsTrailingZerosAndABareSeparator)
{
    struct Case { LPCWSTR in, out; } cases[] = {
        {L"12,500", L"12,5"}, {L"12,000", L"12"}, {L"100", L"100"},  {L"0,0", L"0"},
        {L"3.140", L"3.14"},  {L"7.", L"7"},      {L"10,05", L"10,05"}, {L"", L""},
    };
    for (const Case& c : cases) {
        CString s(c.in);
        XUtil::TransformeEntierOuReel(s);
        EXPECT_STREQ(c.out, s) << CStringA(c.in).GetString();
    }
}

TEST(XUtil, NumberAndDateComparisons)
{
    EXPECT_EQ(-1, XUtil::NumberCompare(L"9", L"10"));
    EXPECT_EQ(1, XUtil::NumberCompare(CString(L"2.5"), CString(L"2.25")));
    EXPECT_EQ(0, XUtil::NumberCompare(L"abc", L"0"));
    EXPECT_EQ(-1, XUtil::NumberCompareVariant(L"9", L"10"));
    EXPECT_EQ(0, XUtil::NumberCompareVariant(L"x", L"0"));

    CString early = DateText(2019, 12, 31), late = DateText(2020, 1, 2);
    ASSERT_TRUE(XUtil::isDate(early)) << CStringA(early).GetString();
    EXPECT_FALSE(XUtil::isDate(L"not a date"));
    EXPECT_FALSE(XUtil::isDate(L""));
    EXPECT_EQ(-1, XUtil::DateCompare(early, late));
    EXPECT_EQ(1, XUtil::DateCompare(late, early));
    EXPECT_EQ(0, XUtil::DateCompare(late, late));

    wchar_t sz[8] = {};
    ::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, sz, 8);
    EXPECT_EQ(sz[0], XUtil::getCurrentFractionnalDigit());
}

// quickSort against an independent ordering of the same strings (std::stable_sort on ordinal
// comparison), on fixed-seed random arrays full of duplicates.
TEST(XUtil, QuickSortOrdersIndexesLikeAnOrdinalSort)
{
    std::mt19937 rng(1234);
    for (int round = 0; round < 300; ++round) {
        int n = (int)(rng() % 40);
        CStringArray strings;
        std::vector<std::wstring> plain;
        for (int i = 0; i < n; ++i) {
            std::wstring s;
            int len = (int)(rng() % 3);
            for (int k = 0; k < len; ++k)
                s += (wchar_t)(L"aAb0 "[rng() % 5]);
            strings.Add(s.c_str());
            plain.push_back(s);
        }
        for (int mode : {0, 1}) {
            CUIntArray indexes;
            indexes.Add(99);  // reset: whatever the array held before
            XUtil::quickSort(indexes, strings, mode);
            ASSERT_EQ(n, indexes.GetSize());
            std::vector<std::wstring> got;
            std::vector<bool> seen(n, false);
            for (int i = 0; i < n; ++i) {
                ASSERT_LT(indexes[i], (UINT)n);
                ASSERT_FALSE(seen[indexes[i]]) << "index used twice";
                seen[indexes[i]] = true;
                got.push_back(plain[indexes[i]]);
            }
            std::vector<std::wstring> want = plain;
            if (mode == 0)
                std::sort(want.begin(), want.end(), std::greater<std::wstring>());
            else
                std::sort(want.begin(), want.end());
            ASSERT_EQ(want, got) << "round " << round << " mode " << mode;
        }
    }
}

TEST(XDataSubItem, ANewCellIsEnabledPlainTextInSystemColours)
{
    SUBITEM c;
    EXPECT_TRUE(c.m_bEnabled);
    EXPECT_EQ(TypeText, c.m_nType);
    EXPECT_EQ(nullptr, c.m_pDefine);
    EXPECT_EQ(::GetSysColor(COLOR_WINDOWTEXT), c.m_clrText);
    EXPECT_EQ(::GetSysColor(COLOR_WINDOW), c.m_clrBk);
    EXPECT_FALSE(c.m_bBold);
    EXPECT_EQ(-1, c.m_nBitmap1);
    EXPECT_EQ(-1, c.m_nBitmap2);
    EXPECT_EQ(-1, c.GetCheckbox());
    EXPECT_EQ(-1, c.GetInitialComboSel());
}

TEST(XDataSubItem, ComboSelectionOutsideTheItemsBecomesNone)
{
    CStringArray items;
    Items(items, {L"Open", L"Shipped", L"Closed"});
    SUBITEM c;
    for (int sel : {7, 3, -2, -1}) {
        EXPECT_EQ(1, c.SetComboBox(items, 5, sel, true));
        EXPECT_EQ(-1, c.GetInitialComboSel()) << sel;
        EXPECT_STREQ(L"", c.GetItemText()) << sel;
    }
    c.SetComboBox(items, 5, 2, true);
    EXPECT_EQ(TypeComboBox, c.m_nType);
    EXPECT_EQ(2, c.GetInitialComboSel());
    EXPECT_STREQ(L"Closed", c.GetItemText());
    auto* def = dynamic_cast<DefineComboBox*>(c.m_pDefine);
    ASSERT_NE(nullptr, def);
    EXPECT_EQ(5, def->m_nLines);
    ASSERT_EQ(3, def->m_items.GetSize());

    c.SetComboBox(items, L"x", true);
    EXPECT_EQ(-1, c.GetInitialComboSel());
    c.SetComboBox(items, L"Shipped", true);
    EXPECT_EQ(1, c.GetInitialComboSel());
    EXPECT_EQ(3, dynamic_cast<DefineComboBox*>(c.m_pDefine)->m_nLines);
    EXPECT_STREQ(L"Shipped", c.GetItemText());
    c.SetComboBoxEdit(items, 1, true);  // the selection is reported for type-4 cells only
    EXPECT_EQ(-1, c.GetInitialComboSel());
}

TEST(XDataSubItem, EditableComboTakesTheChosenItemsTextAndRejectsABadIndex)
{
    CStringArray items;
    Items(items, {L"red", L"green"});
    SUBITEM c;
    c.SetComboBoxEdit(items, 1, true);
    EXPECT_EQ(TypeComboBoxEdit, c.m_nType);
    EXPECT_STREQ(L"green", c.GetItemText());
    auto* def = dynamic_cast<DefineComboBoxEdit*>(c.m_pDefine);
    ASSERT_NE(nullptr, def);
    EXPECT_EQ(-1, def->m_nSel);
    EXPECT_STREQ(L"green", def->m_strText);
    EXPECT_EQ(2, def->m_nLines);

    EXPECT_TRUE(RaisesInvalidArg([&] { c.SetComboBoxEdit(items, 2, true); }));
    EXPECT_TRUE(RaisesInvalidArg([&] { c.SetComboBoxEdit(items, -1, true); }));
    EXPECT_STREQ(L"green", c.GetItemText());  // the cell is untouched
    // The cell's own edited text passed back in survives replacing the definition.
    c.SetComboBoxEdit(def->m_items, 4, def->m_strText, true);
    EXPECT_STREQ(L"green", c.GetItemText());
}

TEST(XDataSubItem, DefineFalseKeepsThePresentDefinition)
{
    SUBITEM fresh;
    fresh.SetCheckbox(1, false);
    EXPECT_EQ(TypeCheckBox, fresh.m_nType);
    EXPECT_EQ(nullptr, fresh.m_pDefine);
    EXPECT_EQ(-1, fresh.GetCheckbox());

    SUBITEM c;
    c.SetCheckbox(0, true);
    XControl::TagDefine* before = c.m_pDefine;
    c.SetCheckbox(1, false);
    EXPECT_EQ(before, c.m_pDefine);
    EXPECT_EQ(0, c.GetCheckbox());
    c.SetCheckbox(1, true);
    EXPECT_EQ(1, c.GetCheckbox());

    // The value reaches a radio cell only with define true; its text is empty either way.
    c.m_strText = L"x";
    c.SetRadioButtonH(0, false);
    EXPECT_EQ(TypeRadioH, c.m_nType);
    EXPECT_EQ(1, c.GetCheckbox());
    EXPECT_STREQ(L"", c.GetItemText());

    // Plain text drops the definition with true, keeps it with false.
    c.SetItemText(L"a", false);
    EXPECT_NE(nullptr, c.m_pDefine);
    c.SetItemText(L"a", true);
    EXPECT_EQ(nullptr, c.m_pDefine);

    // Text edits and buttons never carry one.
    c.SetCheckbox(1, true);
    c.SetEditText(L"t", false);
    EXPECT_EQ(nullptr, c.m_pDefine);
    c.SetCheckbox(1, true);
    c.SetButton(L"Go", false);
    EXPECT_EQ(TypeButton, c.m_nType);
    EXPECT_EQ(nullptr, c.m_pDefine);
    EXPECT_STREQ(L"Go", c.GetItemText());
}

TEST(XDataSubItem, CheckStatesByKind)
{
    SUBITEM c;
    c.SetCheckbox(0x101, true);  // the low byte only
    EXPECT_EQ(1, c.GetCheckbox());
    c.SetCheckbox(-1, true);
    EXPECT_EQ(-1, c.GetCheckbox());
    EXPECT_STREQ(L"-1", c.getText());

    c.SetBitmap(1, 3, 4, true);
    EXPECT_EQ(TypeBitmap, c.m_nType);
    EXPECT_EQ(-1, c.GetCheckbox());  // a bitmap has a state but is no check box
    EXPECT_EQ(1, dynamic_cast<DefineRadioButton*>(c.m_pDefine)->m_cState);

    // Image indexes are stored whatever define says.
    c.SetCheckboxBitmap(1, 5, 6, false);
    EXPECT_EQ(5, c.m_nBitmap1);
    EXPECT_EQ(6, c.m_nBitmap2);
    EXPECT_EQ(1, c.GetCheckbox());
    EXPECT_STREQ(L"1", c.getText());

    c.SetRadioButtonV(1, true);
    EXPECT_EQ(1, c.GetCheckbox());
    c.SetColorDialog(true);
    EXPECT_EQ(TypeColorDialog, c.m_nType);
    EXPECT_NE(nullptr, dynamic_cast<DefineColorDialog*>(c.m_pDefine));
    EXPECT_EQ(-1, c.GetCheckbox());
}

TEST(XDataSubItem, NumericSettersAndValue)
{
    SUBITEM c;
    c.SetEditNum(-42, true);
    EXPECT_STREQ(L"-42", c.GetItemText());
    ASSERT_NE(nullptr, dynamic_cast<DefineEditNum*>(c.m_pDefine));
    EXPECT_TRUE(dynamic_cast<DefineEditNum*>(c.m_pDefine)->m_bIntegerOnly);

    c.SetEditNum(2.5, true);
    EXPECT_FALSE(dynamic_cast<DefineEditNum*>(c.m_pDefine)->m_bIntegerOnly);
    VARIANT v;
    ::VariantInit(&v);
    v.vt = VT_R8;
    v.dblVal = 2.5;
    ASSERT_EQ(S_OK, ::VariantChangeType(&v, &v, 0, VT_BSTR));
    EXPECT_STREQ(v.bstrVal, c.GetItemText());
    ::VariantClear(&v);
    EXPECT_DOUBLE_EQ(2.5, c.GetEditNumValue());

    c.SetOxEditNum(L"1,25", true, 3, true);
    EXPECT_EQ(TypeOxEditNum, c.m_nType);
    auto* ox = dynamic_cast<DefineOxEditNum*>(c.m_pDefine);
    ASSERT_NE(nullptr, ox);
    EXPECT_TRUE(ox->m_bInfiniteFractionalDigit);
    EXPECT_EQ(3u, ox->m_nFractionalDigitCount);
    EXPECT_DOUBLE_EQ(1.25, c.GetEditNumValue());
    c.m_strText = L"abc";
    EXPECT_DOUBLE_EQ(0.0, c.GetEditNumValue());
}

TEST(XDataSubItem, CopiesCloneTheDefinition)
{
    CStringArray items;
    Items(items, {L"a", L"b"});
    SUBITEMARRAY row;
    row.SetSize(2);
    row[0].SetComboBoxEdit(items, 7, L"typed", true);
    row[1].SetCheckbox(1, true);
    row[1].m_bBold = true;
    row[1].m_strToolTip = L"tip";
    row.m_nState = LVIS_SELECTED;
    row.m_nItemValue = 77;
    row.setEnabled(false);

    SUBITEMARRAY copy(row);
    EXPECT_EQ((UINT)LVIS_SELECTED, copy.m_nState);
    EXPECT_EQ(77u, copy.m_nItemValue);
    EXPECT_FALSE(copy.getEnabled());
    ASSERT_EQ(2, copy.GetSize());
    EXPECT_NE(row[0].m_pDefine, copy[0].m_pDefine);
    auto* def = dynamic_cast<DefineComboBoxEdit*>(copy[0].m_pDefine);
    ASSERT_NE(nullptr, def);  // the clone keeps the concrete kind and all its fields
    EXPECT_EQ(7, def->m_nLines);
    EXPECT_STREQ(L"typed", def->m_strText);
    def->m_items.SetAt(0, L"changed");
    EXPECT_STREQ(L"a", dynamic_cast<DefineComboBoxEdit*>(row[0].m_pDefine)->m_items[0]);
    EXPECT_TRUE(copy[1].m_bBold);
    EXPECT_STREQ(L"tip", copy[1].m_strToolTip);
    EXPECT_EQ(1, copy[1].GetCheckbox());

    SUBITEMARRAY assigned;
    assigned.SetSize(5);
    assigned = row;
    EXPECT_EQ(2, assigned.GetSize());
    assigned = assigned;  // self-assignment keeps everything
    EXPECT_EQ(1, assigned[1].GetCheckbox());

    SUBITEM c = row[1];
    c = c;
    EXPECT_EQ(1, c.GetCheckbox());
}

TEST(XDataCompare, CellsCompareAsNumbersDatesOrTextsByKind)
{
    auto text = [](LPCWSTR s) { SUBITEM c; c.SetItemText(s, true); return c; };
    auto num = [](LPCWSTR s) { SUBITEM c; c.SetEditNum(CString(s), false, true); return c; };
    // Plain texts that are numbers compare as numbers.
    EXPECT_EQ(-1, text(L"9").compareTo(text(L"10")));
    EXPECT_EQ(1, text(L"10").compareTo(text(L"9")));
    // "1.5" is not a number by the separator rule: texts.
    int n = ::lstrcmpW(L"1.5", L"10");
    EXPECT_EQ(n < 0 ? -1 : 1, text(L"1.5").compareTo(text(L"10")));
    // A numeric column reads "," as "." whatever the separator's place.
    EXPECT_EQ(1, num(L"1,5").compareTo(num(L"1.25")));
    EXPECT_EQ(-1, num(L"2").compareTo(num(L"10")));
    // A number against a text falls back to text order.
    n = ::lstrcmpW(L"10", L"abc");
    EXPECT_EQ(n < 0 ? -1 : 1, num(L"10").compareTo(text(L"abc")));
    // Dates.
    EXPECT_EQ(1, text(DateText(2020, 1, 2)).compareTo(text(DateText(2019, 12, 31))));
    // Check boxes by their state text.
    SUBITEM on, off;
    on.SetCheckbox(1, true);
    off.SetCheckbox(0, true);
    EXPECT_EQ(1, on.compareTo(off));
    EXPECT_EQ(0, on.compareTo(on));
}

TEST(XDataCompare, RowsCompareAtAColumnAndRejectAMissingOne)
{
    SUBITEMARRAY a, b;
    a.SetSize(2);
    b.SetSize(1);
    a[0].SetEditNum(3, true);
    b[0].SetEditNum(12, true);
    EXPECT_EQ(XUtil::CompareLess, a.compareTo(b, 0, true));
    EXPECT_EQ(XUtil::CompareGreater, a.compareTo(b, 0, false));
    EXPECT_EQ(XUtil::CompareEqual, a.compareTo(a, 0, false));
    EXPECT_TRUE(RaisesInvalidArg([&] { a.compareTo(b, 1, true); }));
    EXPECT_TRUE(RaisesInvalidArg([&] { a.compareTo(b, -1, true); }));
}

TEST(XControl, RegisteredMessagesAreObtainedFromTheirTexts)
{
    struct Case { UINT msg; LPCWSTR text; } cases[] = {
        {XM_BEGINEDIT, L"XM_BEGINEDIT"},          {XM_ENDEDIT, L"XM_ENDEDIT"},
        {XM_SELECTION_2, L"XM_SELECTION"},        {XM_CHECKBOX_CLICKED_2, L"XM_CHECKBOX_CLICKED"},
        {XM_BOUTONDOWN_2, L"XM_BOUTONDOWN"},      {XM_VK_RETURN, L"XM_VK_RETURN"},
        {XM_VK_ESCAPE, L"XM_VK_ESCAPE"},          {XM_SETFOCUS, L"XM_SETFOCUS"},
        {XM_CREATE, L"XM_CREATE"},
        {WM_RESIZE_COLUMN_XLISTCTRL, L"WM_RESIZE_COLUMN_XLISTCTRL"},
        {WM_SETVISIBLE_COLUMN_XLISTCTRL, L"WM_SETVISIBLE_COLUMN_XLISTCTRL"},
    };
    for (const Case& c : cases) {
        EXPECT_GE(c.msg, 0xC000u) << CStringA(c.text).GetString();
        EXPECT_EQ(::RegisterWindowMessageW(c.text), c.msg) << CStringA(c.text).GetString();
    }
}
