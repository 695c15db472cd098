// CList and the list collections: positions, errors, element lifetimes.
#include "CollTestUtil.h"
#include <vector>

namespace {

template <class L>
std::vector<int> Forward(const L& l)
{
    std::vector<int> v;
    for (POSITION pos = l.GetHeadPosition(); pos != nullptr;)
        v.push_back(static_cast<int>(l.GetNext(pos)));
    return v;
}

template <class L>
std::vector<int> Backward(const L& l)
{
    std::vector<int> v;
    for (POSITION pos = l.GetTailPosition(); pos != nullptr;)
        v.insert(v.begin(), static_cast<int>(l.GetPrev(pos)));
    return v;
}

} // namespace

TEST(List, PositionsInsertRemoveAndFind)
{
    CList<int, int> l(3);
    POSITION p2 = l.AddTail(2);
    l.AddHead(1);
    POSITION p4 = l.AddTail(4);
    l.InsertBefore(p4, 3);
    l.InsertAfter(p4, 5);
    l.InsertBefore(nullptr, 0); // null: at the head
    l.InsertAfter(nullptr, 6);  // null: at the tail
    EXPECT_EQ((std::vector<int>{0, 1, 2, 3, 4, 5, 6}), Forward(l));
    EXPECT_EQ(Forward(l), Backward(l));

    l.RemoveAt(p2);
    l.SetAt(p4, 40);
    EXPECT_EQ((std::vector<int>{0, 1, 3, 40, 5, 6}), Forward(l));
    EXPECT_EQ(Forward(l), Backward(l));
    EXPECT_EQ(0, l.RemoveHead());
    EXPECT_EQ(6, l.RemoveTail());
    EXPECT_EQ(1, l.GetHead());
    EXPECT_EQ(5, l.GetTail());
    EXPECT_EQ(Forward(l), Backward(l));

    EXPECT_EQ(p4, l.Find(40));
    EXPECT_EQ(nullptr, l.Find(40, p4)); // searching after it
    EXPECT_EQ(nullptr, l.Find(2));
    EXPECT_EQ(3, l.GetAt(l.FindIndex(1)));
    EXPECT_EQ(nullptr, l.FindIndex(4));
    EXPECT_EQ(nullptr, l.FindIndex(-1));

    // A list appended to itself doubles instead of running forever.
    l.AddTail(&l);
    l.AddHead(&l);
    EXPECT_EQ((std::vector<int>{1, 3, 40, 5, 1, 3, 40, 5, 1, 3, 40, 5, 1, 3, 40, 5}), Forward(l));
    EXPECT_EQ(Forward(l), Backward(l));

    // Emptied node by node, the list is usable again.
    while (!l.IsEmpty())
        l.RemoveAt(l.GetHeadPosition());
    l.AddTail(9);
    EXPECT_EQ((std::vector<int>{9}), Forward(l));
}

TEST(List, EmptyListAndNullPositionsRaiseInvalidArgument)
{
    CList<int, int> l;
    const CList<int, int>& cl = l;
    POSITION none = nullptr;
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(l.GetHead()));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(cl.GetTail()));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(l.RemoveHead()));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(l.RemoveTail()));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(l.GetNext(none)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(l.RemoveAt(nullptr)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(l.SetAt(nullptr, 1)));
    EXPECT_EQ("invalid-arg", KX_EXCEPTION_OF(l.AddTail(static_cast<CList<int, int>*>(nullptr))));
    EXPECT_TRUE(l.IsEmpty());
}

TEST(List, ElementsAreConstructedAndDestroyedExactlyOnce)
{
    KxCounted::Reset();
    {
        CList<KxCounted, const KxCounted&> l(2);
        for (int i = 0; i < 25; ++i)
            l.AddTail(KxCounted(i));
        EXPECT_EQ(25, KxCounted::Live());
        EXPECT_EQ(0, l.RemoveHead().value);
        EXPECT_EQ(24, l.RemoveTail().value);
        EXPECT_EQ(23, KxCounted::Live());
        l.RemoveAt(l.Find(KxCounted(10)));
        EXPECT_EQ(22, KxCounted::Live());
        CList<KxCounted, const KxCounted&> copy;
        copy.AddTail(&l);
        EXPECT_EQ(44, KxCounted::Live());
        l.RemoveAll();
        EXPECT_EQ(22, KxCounted::Live());
        EXPECT_EQ(1, copy.GetHead().value);
    }
    EXPECT_EQ(0, KxCounted::Live());
}

namespace {
class KxListItem : public CObject {
public:
    explicit KxListItem(int n) : m_n(n) {}
    int m_n;
};
} // namespace

TEST(List, StringAndTypedPointerLists)
{
    CStringList s;
    s.AddTail(L"b");
    s.AddHead(CString(L"a"));
    s.AddTail(L"c");
    EXPECT_NE(nullptr, s.Find(L"b"));
    EXPECT_EQ(nullptr, s.Find(L"B"));
    EXPECT_EQ(CString(L"c"), s.GetAt(s.FindIndex(2)));
    EXPECT_TRUE(s.IsKindOf(RUNTIME_CLASS(CStringList)));

    KxListItem one(1), two(2);
    CTypedPtrList<CObList, KxListItem*> t;
    t.AddTail(&one);
    t.AddHead(&two);
    EXPECT_EQ(2, t.GetHead()->m_n);
    EXPECT_EQ(1, t.GetTail()->m_n);
    POSITION pos = t.GetHeadPosition();
    KxListItem* first = t.GetNext(pos);
    EXPECT_EQ(&two, first);
    EXPECT_EQ(&one, t.GetAt(pos));
    EXPECT_EQ(&two, t.RemoveHead());
    EXPECT_EQ(1, t.GetCount());
}
