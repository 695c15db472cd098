// Handle bookkeeping with real icons, cursors, GDI objects and modules.
#include "KxUiHandleMgr.h"
#include <vector>

namespace {

// Exposes the sorted arrays to check their contents.
class InspectedHandleMgr : public KxUiHandleMgr {
public:
    template <class T>
    static std::vector<T> values(const KxArraySimple<T>& array)
    {
        return std::vector<T>(array.GetData(), array.GetData() + array.GetSize());
    }
    std::vector<HICON> icons() const { return values(m_arrayHICON); }
    std::vector<HCURSOR> cursors() const { return values(m_arrayHCURSOR); }
    std::vector<HGDIOBJ> objects() const { return values(m_arrayHGDIOBJ); }
    std::vector<HMODULE> modules() const { return values(m_arrayHMODULE); }
    using KxUiHandleMgr::free_HGDIOBJs;
};

template <class T>
bool ascending(const std::vector<T>& v)
{
    for (size_t i = 1; i < v.size(); ++i) {
        if (reinterpret_cast<UINT_PTR>(v[i - 1]) > reinterpret_cast<UINT_PTR>(v[i]))
            return false;
    }
    return true;
}

HICON makeIcon(bool asCursor)
{
    BYTE andMask[32 * 4];
    BYTE xorMask[32 * 4];
    memset(andMask, 0xFF, sizeof(andMask));
    memset(xorMask, 0, sizeof(xorMask));
    return asCursor ? CreateCursor(GetModuleHandleW(nullptr), 1, 1, 32, 32, andMask, xorMask)
                    : CreateIcon(GetModuleHandleW(nullptr), 32, 32, 1, 1, andMask, xorMask);
}

bool iconAlive(HICON icon)
{
    ICONINFO info = {};
    if (!GetIconInfo(icon, &info))
        return false;
    DeleteObject(info.hbmMask);
    if (info.hbmColor)
        DeleteObject(info.hbmColor);
    return true;
}

} // namespace

TEST(HandleMgr, IconsAndCursorsAreKeptSortedOnceAndDestroyed)
{
    InspectedHandleMgr mgr;
    std::vector<HICON> icons;
    for (int i = 0; i < 5; ++i)
        icons.push_back(makeIcon(false));
    HCURSOR cursor = makeIcon(true);

    for (HICON icon : icons)
        EXPECT_EQ(icon, mgr.add_HICON(icon));
    EXPECT_EQ(nullptr, mgr.add_HICON(icons[2]));  // the second registration is refused
    EXPECT_EQ(nullptr, mgr.add_HICON(nullptr));
    EXPECT_EQ(cursor, mgr.add_HCURSOR(cursor));
    EXPECT_EQ(nullptr, mgr.add_HCURSOR(cursor));

    EXPECT_EQ(5u, mgr.icons().size());
    EXPECT_TRUE(ascending(mgr.icons()));
    EXPECT_EQ(std::vector<HCURSOR>{cursor}, mgr.cursors());

    mgr.free_All();
    for (HICON icon : icons)
        EXPECT_FALSE(iconAlive(icon));
    EXPECT_FALSE(iconAlive(cursor));
    EXPECT_TRUE(mgr.icons().empty());
    EXPECT_TRUE(mgr.cursors().empty());
}

TEST(HandleMgr, GdiObjectsInAnyOrderEndSortedAndAreDeletedByTheDestructor)
{
    std::vector<HGDIOBJ> objects;
    {
        InspectedHandleMgr mgr;
        for (int i = 0; i < 8; ++i)
            objects.push_back(CreateSolidBrush(RGB(i, 0, 0)));
        objects.push_back(CreatePen(PS_SOLID, 1, 0));
        objects.push_back(CreateRectRgn(0, 0, 5, 5));
        // Added from the last created to the first, then the first again.
        for (auto it = objects.rbegin(); it != objects.rend(); ++it)
            EXPECT_EQ(*it, mgr.add_HGDIOBJ(*it));
        EXPECT_EQ(nullptr, mgr.add_HGDIOBJ(objects[0]));

        const std::vector<HGDIOBJ> held = mgr.objects();
        EXPECT_EQ(objects.size(), held.size());
        EXPECT_TRUE(ascending(held));
        for (HGDIOBJ object : objects)
            EXPECT_NE(0u, GetObjectType(object));
    }
    for (HGDIOBJ object : objects)
        EXPECT_EQ(0u, GetObjectType(object)) << object;
}

TEST(HandleMgr, ModulesMayBeAddedTwiceAndAreFreedOncePerEntry)
{
    const wchar_t* name = L"KxTestU_de_DE.kxx";
    ASSERT_EQ(nullptr, GetModuleHandleW(name)) << "another test left the module loaded";
    HMODULE first = LoadLibraryW(name);
    ASSERT_NE(nullptr, first);
    HMODULE second = LoadLibraryW(name);
    HMODULE kept = LoadLibraryW(name);  // the test's own reference
    ASSERT_EQ(first, second);

    InspectedHandleMgr mgr;
    EXPECT_EQ(first, mgr.add_HMODULE(first));
    EXPECT_EQ(second, mgr.add_HMODULE(second));
    EXPECT_EQ(nullptr, mgr.add_HMODULE(nullptr));
    EXPECT_EQ(2u, mgr.modules().size());

    mgr.free_All();
    EXPECT_TRUE(mgr.modules().empty());
    EXPECT_EQ(kept, GetModuleHandleW(name));  // two references gone, the test's remains
    FreeLibrary(kept);
    EXPECT_EQ(nullptr, GetModuleHandleW(name));
}

TEST(HandleMgr, FreeingOneKindLeavesTheOthers)
{
    InspectedHandleMgr mgr;
    HGDIOBJ brush = CreateSolidBrush(0);
    HICON icon = makeIcon(false);
    mgr.add_HGDIOBJ(brush);
    mgr.add_HICON(icon);
    mgr.free_HGDIOBJs();
    EXPECT_EQ(0u, GetObjectType(brush));
    EXPECT_TRUE(iconAlive(icon));
    EXPECT_EQ(1u, mgr.icons().size());
}

TEST(HandleMgr, FreeingSingleHandles)
{
    EXPECT_FALSE(KxUiHandleMgr::_free_HICON(nullptr));
    EXPECT_FALSE(KxUiHandleMgr::_free_HCURSOR(nullptr));
    EXPECT_FALSE(KxUiHandleMgr::_free_HGDIOBJ(nullptr));
    EXPECT_FALSE(KxUiHandleMgr::_free_HMODULE(nullptr));
    HGDIOBJ brush = CreateSolidBrush(0);
    EXPECT_TRUE(KxUiHandleMgr::_free_HGDIOBJ(brush));
    EXPECT_FALSE(KxUiHandleMgr::_free_HGDIOBJ(brush));  // already gone: the platform says no
}

TEST(HandleMgr, SortedArrayPlacesEqualValuesFirstWhenAllowed)
{
    KxArraySimple<UINT_PTR> unique;
    KxArraySimple<UINT_PTR> repeated(true);
    const UINT_PTR values[] = {50, 10, 40, 10, 0xFFFFFFFF00000000ull, 30, 40};
    for (UINT_PTR v : values) {
        unique.insertSorted(v);
        repeated.insertSorted(v);
    }
    EXPECT_EQ(5, unique.GetSize());
    EXPECT_EQ(7, repeated.GetSize());
    const UINT_PTR expected[] = {10, 10, 30, 40, 40, 50, 0xFFFFFFFF00000000ull};
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(expected[i], repeated[i]) << i;
    bool found = false;
    EXPECT_EQ(3, repeated.search(40, found));  // the first of the equal ones
    EXPECT_TRUE(found);
    EXPECT_EQ(2, repeated.search(20, found));  // the first larger one
    EXPECT_FALSE(found);
    EXPECT_EQ(-1, repeated.search(0xFFFFFFFF00000001ull, found));  // all smaller
    EXPECT_EQ(-1, unique.find(20));
    EXPECT_EQ(-1, KxArraySimple<UINT_PTR>().search(1, found));
}

namespace {

const wchar_t kGdiKey[] = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Windows";

// Sets the system's GDI quota value for the length of a test and puts back what was there.
class QuotaValue {
public:
    QuotaValue()
    {
        m_had = RegGetValueW(HKEY_LOCAL_MACHINE, kGdiKey, L"GDIProcessHandleQuota", RRF_RT_ANY, &m_type, m_old,
                             &m_oldSize) == ERROR_SUCCESS;
    }
    ~QuotaValue()
    {
        if (m_had)
            RegSetKeyValueW(HKEY_LOCAL_MACHINE, kGdiKey, L"GDIProcessHandleQuota", m_type, m_old, m_oldSize);
        else
            RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, kGdiKey, L"GDIProcessHandleQuota");
    }
    bool set(DWORD type, const void* data, DWORD size)
    {
        return RegSetKeyValueW(HKEY_LOCAL_MACHINE, kGdiKey, L"GDIProcessHandleQuota", type, data, size)
            == ERROR_SUCCESS;
    }
    void remove() { RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, kGdiKey, L"GDIProcessHandleQuota"); }

private:
    bool m_had = false;
    DWORD m_type = 0;
    BYTE m_old[64] = {};
    DWORD m_oldSize = sizeof(m_old);
};

} // namespace

TEST(HandleMgr, GdiQuotaReadFromTheRegistryByType)
{
    QuotaValue quota;
    quota.remove();
    EXPECT_EQ(0u, KxUiHandleMgr::_countGDIObject(KxUiHandleMgr::GUI_GDI_QUOTA));

    const DWORD tenThousand = 10000;
    ASSERT_TRUE(quota.set(REG_DWORD, &tenThousand, sizeof(tenThousand)));
    EXPECT_EQ(10000u, KxUiHandleMgr::_countGDIObject(KxUiHandleMgr::GUI_GDI_QUOTA));
    ASSERT_TRUE(quota.set(REG_BINARY, &tenThousand, sizeof(tenThousand)));
    EXPECT_EQ(10000u, KxUiHandleMgr::_countGDIObject(KxUiHandleMgr::GUI_GDI_QUOTA));
    ASSERT_TRUE(quota.set(REG_DWORD_BIG_ENDIAN, &tenThousand, sizeof(tenThousand)));
    EXPECT_EQ(10000u, KxUiHandleMgr::_countGDIObject(KxUiHandleMgr::GUI_GDI_QUOTA));
    ASSERT_TRUE(quota.set(REG_SZ, L"10000", 12));
    EXPECT_EQ(0u, KxUiHandleMgr::_countGDIObject(KxUiHandleMgr::GUI_GDI_QUOTA));
    const DWORD pair[2] = {1, 2};  // too large for the 4 bytes read
    ASSERT_TRUE(quota.set(REG_BINARY, pair, sizeof(pair)));
    EXPECT_EQ(0u, KxUiHandleMgr::_countGDIObject(KxUiHandleMgr::GUI_GDI_QUOTA));

    EXPECT_EQ(0u, KxUiHandleMgr::_countGDIObject(static_cast<KxUiHandleMgr::GUIObjectType>(2)));
}
