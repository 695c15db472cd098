// CMap and the map collections: hashing rules, iteration, lifetimes, growth.
#include "CollTestUtil.h"
#include <map>
#include <set>

TEST(Map, HashRulesAndDefaultTableSize)
{
    // Pointer-sized keys hash to their value shifted right by 4.
    EXPECT_EQ(0x1234u, HashKey<void*>(reinterpret_cast<void*>(0x12345)));
    EXPECT_EQ(0x0FFFFFFFu, HashKey<UINT_PTR>(0xFFFFFFFFu));
    EXPECT_EQ(0x10000000u, HashKey<HWND>(reinterpret_cast<HWND>(0x100000000ULL)));
    // Text keys hash their characters, whatever form the text comes in.
    CString s = L"Window";
    EXPECT_EQ(HashKey<LPCTSTR>(L"Window"), HashKey<const CString&>(s));
    EXPECT_NE(HashKey<LPCTSTR>(L"Window"), HashKey<LPCTSTR>(L"window"));
    EXPECT_EQ(0u, HashKey<LPCTSTR>(nullptr));
    // 32-bit integers spread over the table instead of falling into one bucket per 16 keys.
    std::set<UINT> buckets;
    for (int k = 0; k < 16; ++k)
        buckets.insert(HashKey<int>(k) % 17);
    EXPECT_GT(buckets.size(), 8u);

    CMap<int, int, int, int> m;
    EXPECT_EQ(17u, m.GetHashTableSize());
    m.InitHashTable(101);
    EXPECT_EQ(101u, m.GetHashTableSize());
    CMapPtrToPtr p;
    EXPECT_EQ(17u, p.GetHashTableSize());
}

TEST(Map, IterationVisitsEveryEntryOnceAfterInsertsAndRemovals)
{
    CMap<int, int, int, int> m;
    std::map<int, int> expected;
    for (int i = 0; i < 2000; ++i) {
        m[i * 7] = i;
        expected[i * 7] = i;
    }
    for (int i = 0; i < 2000; i += 3) {
        EXPECT_TRUE(m.RemoveKey(i * 7));
        expected.erase(i * 7);
    }
    EXPECT_FALSE(m.RemoveKey(0));
    for (int i = 0; i < 500; ++i) {
        m.SetAt(-i - 1, i);
        expected[-i - 1] = i;
    }
    ASSERT_EQ(static_cast<INT_PTR>(expected.size()), m.GetCount());

    std::map<int, int> seen;
    POSITION pos = m.GetStartPosition();
    while (pos != nullptr) {
        int k, v;
        m.GetNextAssoc(pos, k, v);
        EXPECT_TRUE(seen.emplace(k, v).second) << "key visited twice: " << k;
    }
    EXPECT_EQ(expected, seen);

    std::map<int, int> seenPairs;
    for (const auto* p = m.PGetFirstAssoc(); p != nullptr; p = m.PGetNextAssoc(p))
        seenPairs.emplace(p->key, p->value);
    EXPECT_EQ(expected, seenPairs);

    // Removing the entry just returned does not disturb the walk.
    INT_PTR visited = 0;
    pos = m.GetStartPosition();
    while (pos != nullptr) {
        int k, v;
        m.GetNextAssoc(pos, k, v);
        ++visited;
        if (k % 2 == 0)
            m.RemoveKey(k);
    }
    EXPECT_EQ(static_cast<INT_PTR>(expected.size()), visited);
    for (const auto& kv : expected) {
        int v = -1;
        EXPECT_EQ(kv.first % 2 != 0, m.Lookup(kv.first, v) != FALSE);
    }

    int k, v;
    POSITION none = nullptr;
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(m.GetNextAssoc(none, k, v)));
}

TEST(Map, GrowsItsTableAndKeepsEveryEntry)
{
    CMap<int, int, int, int> m;
    const int n = 100000;
    for (int i = 0; i < n; ++i)
        m.SetAt(i, ~i);
    EXPECT_GE(m.GetHashTableSize(), static_cast<UINT>(n / 2));
    for (int i = 0; i < n; ++i) {
        const CMap<int, int, int, int>::CPair* p = m.PLookup(i);
        ASSERT_NE(nullptr, p) << i;
        EXPECT_EQ(~i, p->value);
    }
    EXPECT_EQ(nullptr, m.PLookup(n));
    m.PLookup(5)->value = 55;
    int v = 0;
    EXPECT_TRUE(m.Lookup(5, v));
    EXPECT_EQ(55, v);

    // A table size chosen up front holds, and entries already in the map survive a new size.
    CMap<int, int, int, int> sized;
    sized.InitHashTable(1009);
    for (int i = 0; i < 1000; ++i)
        sized[i] = i;
    EXPECT_EQ(1009u, sized.GetHashTableSize());
    sized.InitHashTable(7);
    for (int i = 0; i < 1000; ++i)
        ASSERT_TRUE(sized.Lookup(i, v));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(sized.InitHashTable(0)));
}

TEST(Map, KeysAndValuesAreConstructedAndDestroyedExactlyOnce)
{
    KxCounted::Reset();
    {
        CMap<int, int, KxCounted, const KxCounted&> m(4);
        for (int i = 0; i < 50; ++i)
            m.SetAt(i, KxCounted(i));
        EXPECT_EQ(50, KxCounted::Live());
        EXPECT_EQ(7, m[7].value);
        m[100].value = 3; // a new entry, default-constructed
        EXPECT_EQ(51, KxCounted::Live());
        for (int i = 0; i < 50; i += 2)
            m.RemoveKey(i);
        EXPECT_EQ(26, KxCounted::Live());
        KxCounted out;
        EXPECT_TRUE(m.Lookup(9, out));
        EXPECT_EQ(9, out.value);
        EXPECT_FALSE(m.Lookup(8, out));
        EXPECT_EQ(27, KxCounted::Live());
    }
    EXPECT_EQ(0, KxCounted::Live());

    {
        CMap<CString, LPCTSTR, KxCounted, const KxCounted&> m;
        m[L"a"] = KxCounted(1);
        m[L"b"] = KxCounted(2);
        m.RemoveAll();
        EXPECT_EQ(0, KxCounted::Live());
        m[L"c"] = KxCounted(3); // usable again after RemoveAll
        EXPECT_EQ(3, m[L"c"].value);
    }
    EXPECT_EQ(0, KxCounted::Live());
}

TEST(Map, StringMapsLookUpByTextAndCase)
{
    CMapStringToString m;
    m.SetAt(L"Name", L"Value");
    m[L"name"] = L"lower";
    CString key = L"Name";
    CString v;
    EXPECT_TRUE(m.Lookup(key, v));
    EXPECT_EQ(CString(L"Value"), v);
    EXPECT_TRUE(m.Lookup(L"name", v));
    EXPECT_EQ(CString(L"lower"), v);
    EXPECT_FALSE(m.Lookup(L"NAME", v));
    EXPECT_TRUE(m[L"missing"].IsEmpty());
    EXPECT_EQ(3, m.GetCount());
    EXPECT_TRUE(m.RemoveKey(L"missing"));
    EXPECT_FALSE(m.RemoveKey(L"missing"));

    CMapStringToPtr p;
    int a = 1;
    p[L"x"] = &a;
    void* out = nullptr;
    EXPECT_TRUE(p.Lookup(L"x", out));
    EXPECT_EQ(&a, out);
    EXPECT_TRUE(p.IsKindOf(RUNTIME_CLASS(CMapStringToPtr)));
}

TEST(Map, TypedPointerMapOverPointerMap)
{
    int values[3] = {10, 20, 30};
    CTypedPtrMap<CMapPtrToPtr, HWND, int*> m;
    for (int i = 0; i < 3; ++i)
        m.SetAt(reinterpret_cast<HWND>(static_cast<INT_PTR>(0x1000 * (i + 1))), &values[i]);
    int* p = nullptr;
    EXPECT_TRUE(m.Lookup(reinterpret_cast<HWND>(0x2000), p));
    EXPECT_EQ(20, *p);
    m[reinterpret_cast<HWND>(0x2000)] = &values[2];
    EXPECT_TRUE(m.Lookup(reinterpret_cast<HWND>(0x2000), p));
    EXPECT_EQ(30, *p);
    EXPECT_TRUE(m.RemoveKey(reinterpret_cast<HWND>(0x1000)));

    int total = 0;
    POSITION pos = m.GetStartPosition();
    while (pos != nullptr) {
        HWND k;
        int* v;
        m.GetNextAssoc(pos, k, v);
        total += *v;
    }
    EXPECT_EQ(60, total);
}
