// CArray and the array collections: index errors, editing, element lifetimes, aliasing.
#include "CollTestUtil.h"
#include <vector>

namespace {

template <class A>
std::vector<int> Values(const A& a)
{
    std::vector<int> v;
    for (INT_PTR i = 0; i < a.GetSize(); ++i)
        v.push_back(static_cast<int>(a[i]));
    return v;
}

struct Plain {
    int a;
    double b;
    char c[5];
};

} // namespace

TEST(Array, EveryIndexErrorRaisesInvalidArgument)
{
    CArray<int, int> a;
    a.SetSize(3);
    const CArray<int, int>& ca = a;
    CArray<int, int> other;
    other.Add(1);

    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(a.GetAt(3)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(a.GetAt(-1)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(ca.GetAt(3)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(a.ElementAt(3)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(a[3] = 1));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF((void)ca[-1]));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(a.SetAt(3, 1)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(a.SetAtGrow(-1, 1)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(a.SetSize(-1)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(a.InsertAt(-1, 1)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(a.InsertAt(0, 1, 0)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(a.InsertAt(0, nullptr)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(a.RemoveAt(2, 2)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(a.RemoveAt(-1)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(a.Append(a)));
    // The failed calls changed nothing.
    EXPECT_EQ((std::vector<int>{0, 0, 0}), Values(a));

    CArray<int, int> empty;
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(empty.GetAt(0)));
    EXPECT_EQ("none", KX_EXCEPTION_OF(empty.RemoveAt(0, 0)));
}

TEST(Array, EditingKeepsOrderAndZeroFillsNewSlots)
{
    CArray<int, int> a;
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(i, a.Add(i * 10));
    a.InsertAt(2, 7, 2);                    // 0 10 7 7 20 30 40
    a.RemoveAt(0);                          // 10 7 7 20 30 40
    a.InsertAt(8, 99);                      // past the end: slots 6, 7 default to 0
    EXPECT_EQ((std::vector<int>{10, 7, 7, 20, 30, 40, 0, 0, 99}), Values(a));
    EXPECT_EQ(8, a.GetUpperBound());

    a.SetAtGrow(11, 5);
    EXPECT_EQ((std::vector<int>{10, 7, 7, 20, 30, 40, 0, 0, 99, 0, 0, 5}), Values(a));
    a.SetSize(3);
    a.FreeExtra();
    EXPECT_EQ((std::vector<int>{10, 7, 7}), Values(a));

    CArray<int, int> b;
    b.Add(1);
    b.Add(2);
    EXPECT_EQ(3, a.Append(b));
    a.InsertAt(1, &b);
    EXPECT_EQ((std::vector<int>{10, 1, 2, 7, 7, 1, 2}), Values(a));
    a.InsertAt(0, &a); // an array inserted into itself is copied first
    EXPECT_EQ(14, a.GetSize());
    EXPECT_EQ((std::vector<int>{10, 1, 2, 7, 7, 1, 2, 10, 1, 2, 7, 7, 1, 2}), Values(a));

    b.Copy(a);
    EXPECT_EQ(Values(a), Values(b));
    a.RemoveAll();
    EXPECT_TRUE(a.IsEmpty());
    EXPECT_EQ(nullptr, a.GetData());

    // Plain structures come out of SetSize zeroed.
    CArray<Plain, const Plain&> p;
    p.SetSize(4, 16);
    for (INT_PTR i = 0; i < 4; ++i) {
        EXPECT_EQ(0, p[i].a);
        EXPECT_EQ(0.0, p[i].b);
        EXPECT_EQ(0, p[i].c[4]);
    }
}

TEST(Array, NonTrivialElementsAreConstructedAndDestroyedExactlyOnce)
{
    KxCounted::Reset();
    {
        CArray<KxCounted, const KxCounted&> a;
        a.SetSize(3, 2);
        EXPECT_EQ(3, KxCounted::Live());
        for (int i = 0; i < 100; ++i)
            a.Add(KxCounted(i)); // many reallocations
        EXPECT_EQ(103, KxCounted::Live());
        EXPECT_EQ(0, a[0].value);
        EXPECT_EQ(99, a[102].value);

        a.InsertAt(1, KxCounted(-1), 4);
        a.RemoveAt(50, 10);
        EXPECT_EQ(97, KxCounted::Live());
        EXPECT_EQ(-1, a[4].value);
        EXPECT_EQ(0, a[5].value);
        EXPECT_EQ(53, a[50].value); // values 43..52 were removed

        CArray<KxCounted, const KxCounted&> b;
        b.Copy(a);
        b.Append(a);
        b.InsertAt(10, &a);
        EXPECT_EQ(97 * 4, KxCounted::Live());
        b.SetSize(10);
        b.FreeExtra();
        EXPECT_EQ(97 + 10, KxCounted::Live());
        a.SetAtGrow(200, KxCounted(7));
        EXPECT_EQ(201 + 10, KxCounted::Live());
        EXPECT_EQ(7, a[200].value);
        EXPECT_EQ(0, a[150].value);
    }
    EXPECT_EQ(0, KxCounted::Live());
    EXPECT_GT(KxCounted::constructed, 0);
}

TEST(Array, AddingAnElementOfTheSameArrayWhileItGrows)
{
    // The argument refers into the block that growing moves.
    CArray<CString, const CString&> s;
    s.Add(L"first");
    s.Add(L"second");
    s.FreeExtra();
    s.Add(s[0]);
    s.SetAtGrow(10, s[1]);
    s.InsertAt(0, s[2], 3);
    ASSERT_EQ(14, s.GetSize());
    EXPECT_EQ(CString(L"first"), s[0]);
    EXPECT_EQ(CString(L"first"), s[2]);
    EXPECT_EQ(CString(L"first"), s[5]);
    EXPECT_EQ(CString(L"second"), s[13]);
    EXPECT_TRUE(s[12].IsEmpty());

    CArray<int> n;
    n.Add(42);
    n.FreeExtra();
    for (int i = 0; i < 20; ++i)
        n.Add(n[0]);
    EXPECT_EQ(21, n.GetSize());
    EXPECT_EQ(42, n[20]);
}

TEST(Array, StringArrayOwnsIndependentCopies)
{
    CStringArray a;
    CString text = L"shared";
    a.Add(text);
    a.Add(L"literal");
    a[0] += L"!";
    EXPECT_EQ(CString(L"shared"), text);
    EXPECT_EQ(CString(L"shared!"), a[0]);
    a.InsertAt(1, L"middle");
    a.RemoveAt(0);
    EXPECT_EQ(CString(L"middle"), a.GetAt(0));
    EXPECT_EQ(CString(L"literal"), a.GetAt(1));
    EXPECT_TRUE(a.IsKindOf(RUNTIME_CLASS(CStringArray)));
    EXPECT_TRUE(a.IsKindOf(RUNTIME_CLASS(CObject)));
}

namespace {
class KxArrItem : public CObject {
public:
    explicit KxArrItem(int n) : m_n(n) {}
    int m_n;
};
} // namespace

TEST(Array, TypedPointerArraysHandOutTheirType)
{
    KxArrItem x(1), y(2), z(3);
    CTypedPtrArray<CObArray, KxArrItem*> a;
    a.Add(&x);
    a.Add(&y);
    a[1] = &z; // written through the typed reference
    a.InsertAt(0, &y);
    EXPECT_EQ(2, a[0]->m_n);
    EXPECT_EQ(1, a.GetAt(1)->m_n);
    EXPECT_EQ(3, a.ElementAt(2)->m_n);
    EXPECT_EQ(static_cast<CObject*>(&z), static_cast<CObArray&>(a).GetAt(2));

    CTypedPtrArray<CPtrArray, int*> p;
    int v = 5;
    p.SetAtGrow(3, &v);
    EXPECT_EQ(nullptr, p[0]);
    EXPECT_EQ(5, *p[3]);
}
