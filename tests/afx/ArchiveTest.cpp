// CArchive: round trips of every type, the stored layout, objects and classes, rejection of
// truncated or corrupt data, and persistence of the collections.
#include "CollTestUtil.h"
#include <functional>
#include <set>
#include <vector>

// Serializable test classes (global: the archive finds classes by name).
class KxShape : public CObject {
    DECLARE_SERIAL(KxShape)
public:
    KxShape() = default;
    KxShape(int x, LPCTSTR name) : m_x(x), m_name(name) {}
    void Serialize(CArchive& ar) override
    {
        CObject::Serialize(ar);
        if (ar.IsStoring()) {
            ar << m_x << m_name;
            ar << m_pPeer;
        } else {
            ar >> m_x >> m_name;
            ar >> m_pPeer;
        }
    }
    int m_x = 0;
    CString m_name;
    KxShape* m_pPeer = nullptr;
};
IMPLEMENT_SERIAL(KxShape, CObject, 1)

class KxCircle : public KxShape {
    DECLARE_SERIAL(KxCircle)
public:
    KxCircle() = default;
    void Serialize(CArchive& ar) override
    {
        KxShape::Serialize(ar);
        if (ar.IsStoring())
            ar << m_r;
        else
            ar >> m_r;
    }
    double m_r = 0;
};
IMPLEMENT_SERIAL(KxCircle, KxShape, 1)

class KxVersioned : public CObject {
    DECLARE_SERIAL(KxVersioned)
public:
    void Serialize(CArchive& ar) override
    {
        if (ar.IsStoring()) {
            ar << m_value;
        } else {
            m_loadedSchema = ar.GetObjectSchema();
            ar >> m_value;
        }
    }
    int m_value = 0;
    UINT m_loadedSchema = 0;
};
IMPLEMENT_SERIAL(KxVersioned, CObject, VERSIONABLE_SCHEMA | 2)

class KxNotSerial : public CObject {
    DECLARE_DYNAMIC(KxNotSerial)
};
IMPLEMENT_DYNAMIC(KxNotSerial, CObject)

namespace {

// Runs store() into a memory file and returns the bytes.
std::vector<BYTE> Store(const std::function<void(CArchive&)>& store, int nBufSize = 4096)
{
    CMemFile f;
    {
        CArchive ar(&f, CArchive::store, nBufSize);
        store(ar);
        ar.Close();
    }
    std::vector<BYTE> bytes(static_cast<size_t>(f.GetLength()));
    f.SeekToBegin();
    if (!bytes.empty())
        f.Read(bytes.data(), static_cast<UINT>(bytes.size()));
    return bytes;
}

// Runs load() on exactly these bytes (a fixed memory file cannot hand out more).
void Load(std::vector<BYTE> bytes, const std::function<void(CArchive&)>& load, int nBufSize = 4096)
{
    bytes.push_back(0); // a valid pointer for an empty block; not part of the file
    CMemFile f(bytes.data(), static_cast<UINT>(bytes.size() - 1));
    CArchive ar(&f, CArchive::load, nBufSize);
    load(ar);
}

std::vector<BYTE> B(std::initializer_list<int> v)
{
    return std::vector<BYTE>(v.begin(), v.end());
}

std::vector<BYTE> Head(const std::vector<BYTE>& v, size_t n)
{
    return std::vector<BYTE>(v.begin(), v.begin() + static_cast<ptrdiff_t>(n < v.size() ? n : v.size()));
}

std::vector<BYTE> Cat(std::vector<BYTE> a, const std::vector<BYTE>& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

struct AllTypes {
    BYTE by = 0;
    WORD w = 0;
    LONG l = 0;
    DWORD dw = 0;
    int i = 0;
    unsigned u = 0;
    short sh = 0;
    char ch = 0;
    wchar_t wch = 0;
    bool b = false;
    float f = 0;
    double d = 0;
    LONGLONG ll = 0;
    ULONGLONG ull = 0;
    CString s1, s2, s3, s4;

    void Serialize(CArchive& ar)
    {
        if (ar.IsStoring())
            ar << by << w << l << dw << i << u << sh << ch << wch << b << f << d << ll << ull << s1
               << s2 << s3 << s4;
        else
            ar >> by >> w >> l >> dw >> i >> u >> sh >> ch >> wch >> b >> f >> d >> ll >> ull >> s1 >>
                s2 >> s3 >> s4;
    }
};

AllTypes Sample()
{
    AllTypes t;
    t.by = 0xAB;
    t.w = 0xFEDC;
    t.l = -123456789;
    t.dw = 0xDEADBEEF;
    t.i = -7;
    t.u = 4000000000u;
    t.sh = -12345;
    t.ch = 'Q';
    t.wch = L'\u20ac';
    t.b = true;
    t.f = 1.5f;
    t.d = -2.25e300;
    t.ll = -0x123456789ABCLL;
    t.ull = 0xFEDCBA9876543210ULL;
    t.s1 = L"";
    t.s2 = L"\u00fcber \u4e2d\u6587";
    t.s3 = CString(L'x', 300);    // 16-bit length
    t.s4 = CString(L'y', 70000);  // 32-bit length
    return t;
}

} // namespace

TEST(Archive, EveryTypeRoundTripsAcrossBufferBoundaries)
{
    for (int nBuf : {128, 4096}) {
        AllTypes in = Sample();
        std::vector<BYTE> bytes = Store([&](CArchive& ar) { in.Serialize(ar); }, nBuf);
        AllTypes out;
        Load(bytes, [&](CArchive& ar) { out.Serialize(ar); }, nBuf);
        EXPECT_EQ(in.by, out.by);
        EXPECT_EQ(in.w, out.w);
        EXPECT_EQ(in.l, out.l);
        EXPECT_EQ(in.dw, out.dw);
        EXPECT_EQ(in.i, out.i);
        EXPECT_EQ(in.u, out.u);
        EXPECT_EQ(in.sh, out.sh);
        EXPECT_EQ(in.ch, out.ch);
        EXPECT_EQ(in.wch, out.wch);
        EXPECT_EQ(in.b, out.b);
        EXPECT_EQ(in.f, out.f);
        EXPECT_EQ(in.d, out.d);
        EXPECT_EQ(in.ll, out.ll);
        EXPECT_EQ(in.ull, out.ull);
        EXPECT_EQ(in.s1, out.s1);
        EXPECT_EQ(in.s2, out.s2);
        EXPECT_EQ(in.s3, out.s3);
        EXPECT_EQ(in.s4, out.s4);
        // Fixed-size values take their size, little-endian, in order.
        EXPECT_EQ(B({0xAB, 0xDC, 0xFE}), Head(bytes, 3));
    }
}

TEST(Archive, StoredLayoutOfStringsAndCounts)
{
    auto str = [](const CString& s) { return Store([&](CArchive& ar) { ar << s; }); };
    EXPECT_EQ(B({0xFF, 0xFE, 0xFF, 0x00}), str(L""));
    EXPECT_EQ(B({0xFF, 0xFE, 0xFF, 0x02, 'a', 0, 'b', 0}), str(L"ab"));
    // A literal is stored as text, not as a pointer converted to bool.
    EXPECT_EQ(str(L"ab"), Store([](CArchive& ar) { ar << L"ab"; }));
    EXPECT_EQ(B({0xFF, 0xFE, 0xFF, 0xFE}), Head(str(CString(L'z', 254)), 4));
    EXPECT_EQ(B({0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0x00}), Head(str(CString(L'z', 255)), 6));
    EXPECT_EQ(B({0xFF, 0xFE, 0xFF, 0xFF, 0xFD, 0xFF}), Head(str(CString(L'z', 0xFFFD)), 6));
    EXPECT_EQ(B({0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}),
              Head(str(CString(L'z', 0xFFFE)), 10));

    auto count = [](DWORD_PTR n) { return Store([&](CArchive& ar) { ar.WriteCount(n); }); };
    EXPECT_EQ(B({0xFE, 0xFF}), count(0xFFFE));
    EXPECT_EQ(B({0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}), count(0xFFFF));
    EXPECT_EQ(B({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 1, 0, 0, 0}), count(0x100000000ULL));
    for (DWORD_PTR n : {DWORD_PTR(0), DWORD_PTR(0xFFFE), DWORD_PTR(0xFFFF), DWORD_PTR(0xFFFFFFFF),
                        DWORD_PTR(0x123456789ULL)}) {
        DWORD_PTR back = 0;
        Load(count(n), [&](CArchive& ar) { back = ar.ReadCount(); });
        EXPECT_EQ(n, back);
    }

    // Narrow text (no 0xFFFE marker) loads through the ANSI code page; longer prefixes escalate.
    CString narrow;
    Load(B({3, 'a', 'b', 'c'}), [&](CArchive& ar) { ar >> narrow; });
    EXPECT_EQ(CString(L"abc"), narrow);
    std::vector<BYTE> longNarrow = B({0xFF, 0x2C, 0x01});
    longNarrow.resize(3 + 300, 'n');
    Load(longNarrow, [&](CArchive& ar) { ar >> narrow; });
    EXPECT_EQ(CString(L'n', 300), narrow);
}

TEST(Archive, ObjectsKeepTheirClassAndSharedReferences)
{
    KxShape a(1, L"A"), b(2, L"B");
    KxCircle c;
    c.m_x = 3;
    c.m_name = L"C";
    c.m_r = 0.5;
    c.m_pPeer = &a;
    b.m_pPeer = &b; // refers to itself

    std::vector<BYTE> bytes = Store([&](CArchive& ar) {
        ar << &a << &a << static_cast<CObject*>(nullptr) << &c << &b;
    });
    // The first object brings its class record: new-class tag, schema, name length, name.
    EXPECT_EQ(Cat(B({0xFF, 0xFF, 1, 0, 7, 0}), B({'K', 'x', 'S', 'h', 'a', 'p', 'e'})),
              Head(bytes, 13));

    CObject* loaded[5] = {};
    Load(bytes, [&](CArchive& ar) {
        for (CObject*& p : loaded)
            ar >> p;
    });
    ASSERT_NE(nullptr, loaded[0]);
    EXPECT_EQ(loaded[0], loaded[1]); // stored twice, loaded once
    EXPECT_EQ(nullptr, loaded[2]);
    ASSERT_TRUE(loaded[3]->IsKindOf(RUNTIME_CLASS(KxCircle)));
    auto* a2 = STATIC_DOWNCAST(KxShape, loaded[0]);
    auto* c2 = STATIC_DOWNCAST(KxCircle, loaded[3]);
    auto* b2 = DYNAMIC_DOWNCAST(KxShape, loaded[4]);
    ASSERT_NE(nullptr, b2);
    EXPECT_FALSE(loaded[0]->IsKindOf(RUNTIME_CLASS(KxCircle)));
    EXPECT_EQ(1, a2->m_x);
    EXPECT_EQ(CString(L"A"), a2->m_name);
    EXPECT_EQ(nullptr, a2->m_pPeer);
    EXPECT_EQ(0.5, c2->m_r);
    EXPECT_EQ(a2, c2->m_pPeer);
    EXPECT_EQ(b2, b2->m_pPeer);
    EXPECT_EQ(CString(L"B"), b2->m_name);
    delete a2;
    delete c2;
    delete b2;

    // A typed extraction checks the class.
    KxShape* typed = nullptr;
    std::vector<BYTE> circle = Store([&](CArchive& ar) { ar << &c; });
    EXPECT_EQ(KxArchiveCause(CArchiveException::badClass), KX_EXCEPTION_OF(Load(bytes, [&](CArchive& ar) {
                  CObject* p = ar.ReadObject(RUNTIME_CLASS(KxCircle));
                  delete p;
              })));
    Load(circle, [&](CArchive& ar) { ar >> typed; });
    ASSERT_NE(nullptr, typed);
    EXPECT_TRUE(typed->IsKindOf(RUNTIME_CLASS(KxCircle)));
    delete typed->m_pPeer;
    delete typed;

    KxNotSerial ns;
    EXPECT_EQ("not-supported", KX_EXCEPTION_OF(Store([&](CArchive& ar) { ar << &ns; })));
}

TEST(Archive, VersionableClassesReadTheSchemaInTheData)
{
    auto craft = [](WORD schema) {
        return Store([&](CArchive& ar) {
            ar << WORD(0xFFFF) << schema << WORD(11);
            ar.Write("KxVersioned", 11);
            ar << 77;
        });
    };
    CObject* p = nullptr;
    Load(craft(1), [&](CArchive& ar) { ar >> p; });
    auto* v = DYNAMIC_DOWNCAST(KxVersioned, p);
    ASSERT_NE(nullptr, v);
    EXPECT_EQ(1u, v->m_loadedSchema);
    EXPECT_EQ(77, v->m_value);
    delete v;

    KxVersioned current;
    Load(Store([&](CArchive& ar) { ar << &current; }), [&](CArchive& ar) { ar >> p; });
    EXPECT_EQ(2u, STATIC_DOWNCAST(KxVersioned, p)->m_loadedSchema);
    delete p;
}

TEST(Archive, TruncatedDataRaisesEndOfFileAtEveryCut)
{
    AllTypes in = Sample();
    in.s4 = L"short"; // keeps the number of cuts reasonable
    KxShape a(1, L"A");
    KxCircle c;
    c.m_pPeer = &a;
    std::vector<BYTE> bytes = Store([&](CArchive& ar) {
        in.Serialize(ar);
        ar << &a << &c;
    });

    for (size_t cut = 0; cut < bytes.size(); ++cut) {
        std::set<CObject*> owned;
        std::string result = KX_EXCEPTION_OF(Load(Head(bytes, cut), [&](CArchive& ar) {
            AllTypes out;
            out.Serialize(ar);
            CObject* p = nullptr;
            ar >> p;
            owned.insert(p);
            ar >> p;
            owned.insert(p);
        }, 128));
        for (CObject* p : owned)
            delete p;
        ASSERT_EQ(KxArchiveCause(CArchiveException::endOfFile), result) << "cut at " << cut;
    }
}

TEST(Archive, CorruptReferencesAndClassesAreRejected)
{
    KxShape a(1, L"A");
    std::vector<BYTE> one = Store([&](CArchive& ar) { ar << &a; }); // class #1, object #2
    auto loadTwo = [](const std::vector<BYTE>& bytes) {
        return KX_EXCEPTION_OF(Load(bytes, [](CArchive& ar) {
            CObject* first = nullptr;
            CObject* second = nullptr;
            try {
                ar >> first >> second;
            } catch (...) {
                delete first;
                throw;
            }
            delete first;
        }));
    };
    EXPECT_EQ("none", loadTwo(Cat(one, B({0x02, 0x00})))); // a valid back reference
    EXPECT_EQ(KxArchiveCause(CArchiveException::badIndex), loadTwo(Cat(one, B({0x50, 0x00}))));
    EXPECT_EQ(KxArchiveCause(CArchiveException::badIndex), loadTwo(Cat(one, B({0x01, 0x00}))));
    EXPECT_EQ(KxArchiveCause(CArchiveException::badIndex), loadTwo(Cat(one, B({0x02, 0x80}))));
    EXPECT_EQ(KxArchiveCause(CArchiveException::badIndex), loadTwo(Cat(one, B({0x30, 0x80}))));
    EXPECT_EQ(KxArchiveCause(CArchiveException::badIndex),
              loadTwo(Cat(one, B({0xFF, 0x7F, 0x10, 0, 0, 0}))));

    auto classRecord = [](WORD schema, const char* name) {
        return Store([&](CArchive& ar) {
            WORD n = static_cast<WORD>(strlen(name));
            ar << WORD(0xFFFF) << schema << n;
            ar.Write(name, n);
            ar << 0;
        });
    };
    EXPECT_EQ(KxArchiveCause(CArchiveException::badClass), loadTwo(classRecord(1, "KxNoSuchClass")));
    EXPECT_EQ(KxArchiveCause(CArchiveException::badClass),
              loadTwo(classRecord(1, "KxShapeKxShapeKxShapeKxShapeKxShapeKxShapeKxShapeKxShapeKxShapeKxShape")));
    EXPECT_EQ(KxArchiveCause(CArchiveException::badSchema), loadTwo(classRecord(7, "KxShape")));

    // A corrupt element count meets the end of the data instead of a huge allocation.
    std::vector<BYTE> hugeCount = B({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 1, 0, 0, 0});
    CArray<int, int> ints;
    EXPECT_EQ(KxArchiveCause(CArchiveException::endOfFile),
              KX_EXCEPTION_OF(Load(hugeCount, [&](CArchive& ar) { ints.Serialize(ar); })));
    CString s;
    EXPECT_EQ(KxArchiveCause(CArchiveException::endOfFile),
              KX_EXCEPTION_OF(Load(B({0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0x10, 'a', 0}),
                                   [&](CArchive& ar) { ar >> s; })));
}

TEST(Archive, ModesBuffersAndTextLines)
{
    CMemFile f;
    f.Write("\x01\x00\x00\x00\x02\x00\x00\x00", 8);
    f.SeekToBegin();
    {
        CArchive ar(&f, CArchive::load);
        EXPECT_TRUE(ar.IsLoading());
        EXPECT_EQ(&f, ar.GetFile());
        int v = 0;
        ar >> v;
        EXPECT_EQ(1, v);
        EXPECT_EQ(KxArchiveCause(CArchiveException::readOnly), KX_EXCEPTION_OF(ar << 5));
        ar.Close();
    }
    // The buffer read ahead; closing gives back what was not consumed.
    EXPECT_EQ(4u, f.GetPosition());

    {
        CArchive ar(&f, CArchive::store);
        int v;
        EXPECT_EQ(KxArchiveCause(CArchiveException::writeOnly), KX_EXCEPTION_OF(ar >> v));
        ar.WriteString(L"one\r\ntwo\n\nfour\n");
        // Large blocks pass the buffer.
        std::vector<BYTE> big(10000, 0x5A);
        ar.Write(big.data(), static_cast<UINT>(big.size()));
    } // the destructor flushes
    EXPECT_EQ(4u + 30u + 10000u, f.GetLength());

    f.Seek(4, CFile::begin);
    CArchive ar(&f, CArchive::load, 128);
    CString line;
    std::vector<CString> lines;
    for (int i = 0; i < 4 && ar.ReadString(line); ++i)
        lines.push_back(line);
    EXPECT_EQ((std::vector<CString>{L"one", L"two", L"", L"four"}), lines);
    std::vector<BYTE> rest(20000);
    EXPECT_EQ(10000u, ar.Read(rest.data(), static_cast<UINT>(rest.size())));
    EXPECT_EQ(0x5A, rest[9999]);
    EXPECT_EQ(0u, ar.Read(rest.data(), 1));
}

TEST(Archive, CollectionsRoundTrip)
{
    CStringArray strings;
    strings.Add(L"alpha");
    strings.Add(L"");
    strings.Add(L"\u03b3");
    CObArray objects;
    KxShape a(5, L"five");
    objects.Add(&a);
    objects.Add(nullptr);
    objects.Add(&a);
    CMapStringToString dict;
    dict[L"k1"] = L"v1";
    dict[L"k2"] = L"v2";
    CStringList list;
    list.AddTail(L"x");
    list.AddTail(L"y");
    CArray<int, int> ints;
    for (int i = 0; i < 70000; ++i)
        ints.Add(i * 3);
    CMap<int, int, CString, LPCTSTR> idToName;
    idToName[7] = L"seven";
    idToName[-1] = L"minus";
    CList<double, double> doubles;
    doubles.AddTail(1.25);
    doubles.AddTail(-8);
    CByteArray bytesArr;
    bytesArr.Add(9);
    CWordArray words;
    words.Add(0xBEEF);
    CDWordArray dwords;
    dwords.Add(0xCAFEBABE);

    std::vector<BYTE> bytes = Store([&](CArchive& ar) {
        strings.Serialize(ar);
        objects.Serialize(ar);
        dict.Serialize(ar);
        list.Serialize(ar);
        ints.Serialize(ar);
        idToName.Serialize(ar);
        doubles.Serialize(ar);
        bytesArr.Serialize(ar);
        words.Serialize(ar);
        dwords.Serialize(ar);
        ar << &strings; // a collection as an object: created again by class name
    });

    CStringArray strings2;
    CObArray objects2;
    CMapStringToString dict2;
    CStringList list2;
    CArray<int, int> ints2;
    CMap<int, int, CString, LPCTSTR> idToName2;
    CList<double, double> doubles2;
    CByteArray bytesArr2;
    CWordArray words2;
    CDWordArray dwords2;
    CObject* pStrings = nullptr;
    Load(bytes, [&](CArchive& ar) {
        strings2.Serialize(ar);
        objects2.Serialize(ar);
        dict2.Serialize(ar);
        list2.Serialize(ar);
        ints2.Serialize(ar);
        idToName2.Serialize(ar);
        doubles2.Serialize(ar);
        bytesArr2.Serialize(ar);
        words2.Serialize(ar);
        dwords2.Serialize(ar);
        ar >> pStrings;
    });

    ASSERT_EQ(3, strings2.GetSize());
    EXPECT_EQ(CString(L"\u03b3"), strings2[2]);
    ASSERT_EQ(3, objects2.GetSize());
    EXPECT_EQ(nullptr, objects2[1]);
    EXPECT_EQ(objects2[0], objects2[2]);
    EXPECT_EQ(5, STATIC_DOWNCAST(KxShape, objects2[0])->m_x);
    delete objects2[0];
    CString v;
    EXPECT_TRUE(dict2.Lookup(L"k2", v));
    EXPECT_EQ(CString(L"v2"), v);
    EXPECT_EQ(2, dict2.GetCount());
    EXPECT_EQ(CString(L"y"), list2.GetTail());
    ASSERT_EQ(70000, ints2.GetSize());
    EXPECT_EQ(69999 * 3, ints2[69999]);
    EXPECT_EQ(CString(L"minus"), idToName2[-1]);
    EXPECT_EQ(-8.0, doubles2.GetTail());
    EXPECT_EQ(9, bytesArr2[0]);
    EXPECT_EQ(0xBEEF, words2[0]);
    EXPECT_EQ(0xCAFEBABEu, dwords2[0]);
    auto* s3 = DYNAMIC_DOWNCAST(CStringArray, pStrings);
    ASSERT_NE(nullptr, s3);
    EXPECT_EQ(CString(L"alpha"), s3->GetAt(0));
    delete s3;
}

TEST(Archive, OnAFileOnDisk)
{
    KxTempDir dir;
    CString path = dir.Path(L"doc.bin");
    CStringArray lines;
    for (int i = 0; i < 5000; ++i) {
        CString s;
        s.Format(L"line %d", i);
        lines.Add(s);
    }
    KxShape shape(9, L"nine");
    {
        CFile f(path, CFile::modeCreate | CFile::modeWrite | CFile::shareExclusive);
        CArchive ar(&f, CArchive::store);
        EXPECT_EQ(path, ar.m_strFileName);
        lines.Serialize(ar);
        ar << &shape << 1234567890123LL;
    }

    CStringArray back;
    CObject* p = nullptr;
    LONGLONG tail = 0;
    {
        CFile f(path, CFile::modeRead);
        CArchive ar(&f, CArchive::load);
        back.Serialize(ar);
        ar >> p >> tail;
        ar.Close();
        EXPECT_EQ(f.GetLength(), f.GetPosition()); // everything consumed, nothing more
    }
    ASSERT_EQ(5000, back.GetSize());
    EXPECT_EQ(CString(L"line 4999"), back[4999]);
    EXPECT_EQ(1234567890123LL, tail);
    auto* s = DYNAMIC_DOWNCAST(KxShape, p);
    ASSERT_NE(nullptr, s);
    EXPECT_EQ(CString(L"nine"), s->m_name);
    delete s;

    // The same file cut short: the error names the file.
    {
        CFile f(path, CFile::modeReadWrite);
        f.SetLength(f.GetLength() - 3);
    }
    CFile f(path, CFile::modeRead);
    CArchive ar(&f, CArchive::load);
    std::string cause;
    CString name;
    p = nullptr;
    try {
        back.Serialize(ar);
        ar >> p >> tail;
    } catch (CArchiveException* e) {
        cause = KxArchiveCause(e->m_cause);
        name = e->m_strFileName;
        e->Delete();
    }
    delete p;
    EXPECT_EQ(KxArchiveCause(CArchiveException::endOfFile), cause);
    EXPECT_EQ(path, name);
}

TEST(Archive, LongLinesAcrossTheReadChunks)
{
    // Lines at, around and far beyond the 128-character steps ReadString reads in.
    std::vector<CString> written = {CString(L'a', 127), CString(L'b', 128), CString(L'c', 129),
                                    CString(L'd', 300), L"", CString(L'e', 256)};
    std::vector<BYTE> bytes = Store([&](CArchive& ar) {
        for (size_t i = 0; i < written.size(); ++i) {
            ar.WriteString(written[i]);
            ar.WriteString(i % 2 ? L"\r\n" : L"\n");
        }
    });
    std::vector<CString> read;
    Load(bytes, [&](CArchive& ar) {
        CString line;
        while (ar.ReadString(line))
            read.push_back(line);
    }, 128);
    EXPECT_EQ(written, read);

    // The buffer form stops at nMax characters and leaves the rest for the next call.
    Load(bytes, [&](CArchive& ar) {
        wchar_t buf[101];
        ASSERT_NE(nullptr, ar.ReadString(buf, 100));
        EXPECT_EQ(100, lstrlenW(buf));
        ASSERT_NE(nullptr, ar.ReadString(buf, 100));
        EXPECT_EQ(27, lstrlenW(buf));
        ASSERT_NE(nullptr, ar.ReadString(buf, 100));
        EXPECT_EQ(CString(L'b', 100), CString(buf));
    });
}
