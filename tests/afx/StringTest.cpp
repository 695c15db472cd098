// CString: formatting, searching, editing, buffers, sharing and aliasing.
#include <string>
#include "../../res/KxUiRes.h"

namespace {

// Expects a CInvalidArgException* from f and deletes it.
template <class F>
bool ThrowsInvalidArg(F f)
{
    try {
        f();
    } catch (CInvalidArgException* e) {
        e->Delete();
        return true;
    }
    return false;
}

}  // namespace

TEST(String, FormatFollowsThePlatformWidePrintfRules)
{
    CString s;
    s.Format(L"%s|%S|%c|%C|%%|%ls|%hs", L"wide", "narrow", L'W', 'n', L"l", "h");
    EXPECT_STREQ(L"wide|narrow|W|n|%|l|h", s);
    s.Format(L"%I64d %I64u %lld %I64x", -1234567890123LL, 18446744073709551615ULL, 9000000000LL, 0xABCDEF0123LL);
    EXPECT_STREQ(L"-1234567890123 18446744073709551615 9000000000 abcdef0123", s);
    s.Format(L"[%5d][%-5d][%05d][%x][%X][%u][%d]", 42, 42, 42, 255, 255, 4000000000u, INT_MIN);
    EXPECT_STREQ(L"[   42][42   ][00042][ff][FF][4000000000][-2147483648]", s);
    s.Format(L"[%.2f][%8.3f][%g][%g][%e]", 3.14159, -2.5, 0.5, 1e20, 12345.678);
    EXPECT_STREQ(L"[3.14][  -2.500][0.5][1e+020][1.234568e+004]", s);
    s.Format(L"[%.3s][%6s][%-6s][%*d]", L"abcdef", L"ab", L"ab", 4, 7);
    EXPECT_STREQ(L"[abc][    ab][ab    ][   7]", s);
}

TEST(String, FormatTakesCStringArgumentsAndLongResults)
{
    CString name(L"Ada"), s;
    s.Format(L"%s has %d chars", name, name.GetLength());
    EXPECT_STREQ(L"Ada has 3 chars", s);

    // Longer than any fixed buffer: the result is complete.
    CString big(L'x', 5000);
    s.Format(L"<%s>%d", big, 12);
    ASSERT_EQ(5004, s.GetLength());
    EXPECT_EQ(L'<', s[0]);
    EXPECT_EQ(L'>', s[5001]);
    EXPECT_STREQ(L"12", s.Right(2));

    // The string itself as an argument.
    s = L"ab";
    s.Format(L"%s-%s", s, s.GetString());
    EXPECT_STREQ(L"ab-ab", s);
    s.AppendFormat(L"+%s", s);
    EXPECT_STREQ(L"ab-ab+ab-ab", s);
    s.AppendFormat(L"%05.1f", 2.25);
    EXPECT_STREQ(L"ab-ab+ab-ab002.3", s);

    EXPECT_TRUE(ThrowsInvalidArg([&] { s.FormatV(nullptr, nullptr); }));
}

TEST(String, FormatMessageUsesNumberedInserts)
{
    CString s, name(L"grid");
    s.FormatMessage(L"%2 has %1!d! rows, %3!s!", 12, name, L"sorted");
    EXPECT_STREQ(L"grid has 12 rows, sorted", s);
    s.FormatMessage(L"%1%1", s);
    EXPECT_STREQ(L"grid has 12 rows, sortedgrid has 12 rows, sorted", s);
    s.FormatMessage(L"");
    EXPECT_TRUE(s.IsEmpty());
}

TEST(String, ConstructsFromNarrowTextCharactersAndCounts)
{
    EXPECT_STREQ(L"plain", CString("plain"));
    EXPECT_STREQ(L"pla", CString("plain", 3));
    EXPECT_STREQ(L"wi", CString(L"wide", 2));
    EXPECT_STREQ(L"zzz", CString(L'z', 3));
    EXPECT_STREQ(L"qq", CString('q', 2));
    EXPECT_TRUE(CString(L'z', -1).IsEmpty());
    EXPECT_TRUE(CString(static_cast<LPCWSTR>(nullptr)).IsEmpty());
    EXPECT_TRUE(CString(static_cast<LPCSTR>(nullptr)).IsEmpty());
    // A count keeps embedded zeros.
    CString z(L"a\0b", 3);
    EXPECT_EQ(3, z.GetLength());
    EXPECT_EQ(L'b', z[2]);
    EXPECT_TRUE(ThrowsInvalidArg([] { CString(L"abc", -1); }));
}

TEST(String, ComparisonsWorkWithEitherOperandOrder)
{
    CString a(L"apple"), b(L"Banana");
    EXPECT_TRUE(a == L"apple" && L"apple" == a && a != L"apples" && L"Apple" != a);
    EXPECT_TRUE(b < a && a > b && b <= a && a >= b);  // ordinal: 'B' < 'a'
    EXPECT_TRUE(L"b" > a && a < L"b" && L"apple" <= a && L"apple" >= a);
    // Exactly -1, 0 or 1, however far apart the characters are.
    EXPECT_EQ(0, a.CompareNoCase(L"APPLE"));
    EXPECT_EQ(1, b.CompareNoCase(a));  // ignoring case: "banana" > "apple"
    EXPECT_EQ(-1, a.Compare(L"apples"));
    EXPECT_EQ(-1, b.Compare(a));
    EXPECT_EQ(1, CString(L"\u4e00").Compare(L"a"));
    EXPECT_EQ(-1, CString(L"a").Collate(L"b"));
    EXPECT_EQ(1, CString(L"B").CollateNoCase(L"a"));
    EXPECT_TRUE(CString(L'x') == L'x' && L'x' == CString(L'x') && CString(L"xx") != L'x');
    EXPECT_EQ(0, CString().Compare(nullptr));
    // Strings that differ only after an embedded zero are different strings.
    EXPECT_NE(CString(L"a\0b", 3), CString(L"a", 1));
}

TEST(String, ConcatenatesEveryCombination)
{
    CString a(L"ab");
    EXPECT_STREQ(L"abab", a + a);
    EXPECT_STREQ(L"ab!", a + L"!");
    EXPECT_STREQ(L"!ab", L"!" + a);
    EXPECT_STREQ(L"abc", a + L'c');
    EXPECT_STREQ(L"cab", L'c' + a);
    EXPECT_STREQ(L"abn", a + 'n');
    EXPECT_STREQ(L"nab", 'n' + a);
    EXPECT_STREQ(L"ab-ab-ab", a + L"-" + a + L'-' + a);
    EXPECT_STREQ(L"ab", CString() + a);
    EXPECT_STREQ(L"ab", a + static_cast<LPCWSTR>(nullptr));
    CString n;
    n += "narrow";
    n += 'x';
    n += L'y';
    EXPECT_STREQ(L"narrowxy", n);
}

TEST(String, CopiesShareTheBlockUntilOneChanges)
{
    CString a(L"shared text");
    CString b = a;
    CString c;
    c = b;
    EXPECT_EQ(a.GetString(), b.GetString());
    EXPECT_EQ(a.GetString(), c.GetString());

    b.SetAt(0, L'S');
    c += L"!";
    a.MakeUpper();
    EXPECT_STREQ(L"SHARED TEXT", a);
    EXPECT_STREQ(L"Shared text", b);
    EXPECT_STREQ(L"shared text!", c);

    // Every kind of write copies first.
    const CString original(L"keep me");
    auto isolated = [&](auto edit) {
        CString copy = original;
        edit(copy);
        return original == L"keep me";
    };
    EXPECT_TRUE(isolated([](CString& s) { s.Replace(L'e', L'E'); }));
    EXPECT_TRUE(isolated([](CString& s) { s.Replace(L"me", L"you"); }));
    EXPECT_TRUE(isolated([](CString& s) { s.Remove(L'e'); }));
    EXPECT_TRUE(isolated([](CString& s) { s.Insert(0, L"x"); }));
    EXPECT_TRUE(isolated([](CString& s) { s.Delete(0, 2); }));
    EXPECT_TRUE(isolated([](CString& s) { s.MakeReverse(); }));
    EXPECT_TRUE(isolated([](CString& s) { s.Trim(L"kme"); }));
    EXPECT_TRUE(isolated([](CString& s) { s.Truncate(2); }));
    EXPECT_TRUE(isolated([](CString& s) { s.GetBuffer()[0] = L'X'; s.ReleaseBuffer(); }));
    EXPECT_TRUE(isolated([](CString& s) { s.GetBufferSetLength(2); s.ReleaseBuffer(); }));
    EXPECT_TRUE(isolated([](CString& s) { s.AppendFormat(L"%d", 1); }));

    // Moving leaves the source empty and takes the block.
    LPCWSTR block = a.GetString();
    CString moved = std::move(a);
    EXPECT_EQ(block, moved.GetString());
    EXPECT_TRUE(a.IsEmpty());
}

TEST(String, LockedBufferIsNeverShared)
{
    CString a(L"locked");
    LPWSTR p = a.LockBuffer();
    CString b = a;
    EXPECT_NE(p, b.GetString());
    p[0] = L'L';  // writes through the locked pointer reach only a
    EXPECT_STREQ(L"Locked", a);
    EXPECT_STREQ(L"locked", b);
    b = a;
    EXPECT_NE(a.GetString(), b.GetString());
    a.UnlockBuffer();
    CString c = a;
    EXPECT_EQ(a.GetString(), c.GetString());
}

TEST(String, AliasedArgumentsAreSafe)
{
    CString s(L"abc");
    s += s;
    EXPECT_STREQ(L"abcabc", s);
    s = s;
    EXPECT_STREQ(L"abcabc", s);
    s.Append(s.GetString() + 4);
    EXPECT_STREQ(L"abcabcbc", s);
    s.SetString(s.GetString() + 2, 3);
    EXPECT_STREQ(L"cab", s);
    s.Insert(1, s);
    EXPECT_STREQ(L"ccabab", s);
    EXPECT_EQ(1, s.Replace(s, L"x"));
    EXPECT_STREQ(L"x", s);
    s = L"aXa";
    EXPECT_EQ(2, s.Replace(s.Left(1), s));
    EXPECT_STREQ(L"aXaXaXa", s);

    // Growing far past the first block, appending itself each time.
    CString g(L"0123456789");
    for (int i = 0; i < 10; ++i)
        g += g;
    EXPECT_EQ(10240, g.GetLength());
    EXPECT_STREQ(L"0123456789", g.Right(10));
    EXPECT_EQ(1024, g.Replace(L"0", L""));
}

TEST(String, TokenizeSkipsEmptyTokensAndEnds)
{
    auto tokens = [](const CString& s, LPCWSTR delims) {
        std::wstring all;
        int pos = 0;
        for (CString t = s.Tokenize(delims, pos); pos != -1; t = s.Tokenize(delims, pos))
            all += L"[" + std::wstring(t.GetString()) + L"]";
        return all;
    };
    EXPECT_EQ(L"[a][b][c]", tokens(L"a,b,c", L","));
    EXPECT_EQ(L"[a][b]", tokens(L",,a,,;b;;", L",;"));
    EXPECT_EQ(L"", tokens(L",,,", L","));
    EXPECT_EQ(L"", tokens(L"", L","));
    EXPECT_EQ(L"[abc]", tokens(L"abc", L","));
    EXPECT_EQ(L"[ a b ]", tokens(L" a b ", L""));  // no delimiters: the rest is one token
    EXPECT_EQ(L"[ a b ]", tokens(L" a b ", nullptr));

    CString s(L"one two");
    int pos = 0;
    EXPECT_STREQ(L"one", s.Tokenize(L" ", pos));
    EXPECT_EQ(4, pos);
    EXPECT_STREQ(L"two", s.Tokenize(L" ", pos));
    EXPECT_EQ(8, pos);
    EXPECT_STREQ(L"", s.Tokenize(L" ", pos));
    EXPECT_EQ(-1, pos);
    EXPECT_STREQ(L"", s.Tokenize(L" ", pos));  // still done, no error
    EXPECT_EQ(-1, pos);
    pos = 100;
    EXPECT_STREQ(L"", s.Tokenize(L" ", pos));
    EXPECT_EQ(-1, pos);
}

TEST(String, TrimRemovesOnlyTheEnds)
{
    CString s(L" \t\r\n a b \n\t ");
    EXPECT_STREQ(L"a b \n\t ", CString(s).TrimLeft());
    EXPECT_STREQ(L" \t\r\n a b", CString(s).TrimRight());
    EXPECT_STREQ(L"a b", CString(s).Trim());
    EXPECT_STREQ(L"", CString(L" \t \n").Trim());
    EXPECT_STREQ(L"", CString().Trim());
    EXPECT_STREQ(L"bxb", CString(L"xxbxbxx").Trim(L'x'));
    EXPECT_STREQ(L"b.-b", CString(L"-.-b.-b.-").Trim(L".-"));
    EXPECT_STREQ(L"b.-b.-", CString(L"-.-b.-b.-").TrimLeft(L"-."));
    EXPECT_STREQ(L"-.-b.-b", CString(L"-.-b.-b.-").TrimRight(L"-."));
    EXPECT_STREQ(L" a ", CString(L" a ").Trim(L""));
    EXPECT_STREQ(L" a ", CString(L" a ").Trim(static_cast<LPCWSTR>(nullptr)));
    // Nothing to trim leaves a shared block shared.
    CString a(L"abc");
    CString b = a;
    b.Trim();
    EXPECT_EQ(a.GetString(), b.GetString());
}

TEST(String, SearchesClampToTheString)
{
    CString s(L"abcabc");
    EXPECT_EQ(1, s.Find(L'b'));
    EXPECT_EQ(4, s.Find(L'b', 2));
    EXPECT_EQ(-1, s.Find(L'b', 5));
    EXPECT_EQ(-1, s.Find(L'a', 6));
    EXPECT_EQ(-1, s.Find(L'a', -1));
    EXPECT_EQ(3, s.Find(L"abc", 1));
    EXPECT_EQ(-1, s.Find(L"abc", 4));
    EXPECT_EQ(-1, s.Find(L"abc", 7));
    EXPECT_EQ(6, s.Find(L"", 6));
    EXPECT_EQ(-1, s.Find(static_cast<LPCWSTR>(nullptr)));
    EXPECT_EQ(4, s.ReverseFind(L'b'));
    EXPECT_EQ(-1, s.ReverseFind(L'z'));
    EXPECT_EQ(2, s.FindOneOf(L"xyc"));
    EXPECT_EQ(-1, s.FindOneOf(L"xyz"));
    EXPECT_EQ(-1, s.FindOneOf(L""));
    EXPECT_EQ(L'c', s[size_t{5}]);
    EXPECT_EQ(L'c', s[5u]);
    EXPECT_EQ(L'c', s[DWORD{5}]);
    EXPECT_EQ(L'c', s[5LL]);
    EXPECT_TRUE(ThrowsInvalidArg([&] { s[-1LL]; }));
    EXPECT_TRUE(ThrowsInvalidArg([&] { s[size_t{1} << 40]; }));
    EXPECT_EQ(L'\0', s.GetAt(6));  // the terminator is readable
    EXPECT_TRUE(ThrowsInvalidArg([&] { s.GetAt(7); }));
    EXPECT_TRUE(ThrowsInvalidArg([&] { s.GetAt(-1); }));
    EXPECT_TRUE(ThrowsInvalidArg([&] { s.SetAt(6, L'x'); }));
}

TEST(String, ExtractionClampsCountsAndPositions)
{
    CString s(L"abcdef");
    EXPECT_STREQ(L"abc", s.Left(3));
    EXPECT_STREQ(L"abcdef", s.Left(100));
    EXPECT_STREQ(L"", s.Left(-2));
    EXPECT_STREQ(L"ef", s.Right(2));
    EXPECT_STREQ(L"abcdef", s.Right(100));
    EXPECT_STREQ(L"", s.Right(-1));
    EXPECT_STREQ(L"cd", s.Mid(2, 2));
    EXPECT_STREQ(L"cdef", s.Mid(2));
    EXPECT_STREQ(L"ab", s.Mid(-5, 2));
    EXPECT_STREQ(L"ef", s.Mid(4, 100));
    EXPECT_STREQ(L"", s.Mid(10));
    EXPECT_STREQ(L"", s.Mid(2, -1));
    EXPECT_STREQ(L"def", s.Mid(3, INT_MAX));
    EXPECT_STREQ(L"abc", s.SpanIncluding(L"cba"));
    EXPECT_STREQ(L"", s.SpanIncluding(L"xyz"));
    EXPECT_STREQ(L"abc", s.SpanExcluding(L"dz"));
    EXPECT_STREQ(L"abcdef", s.SpanExcluding(L"xyz"));
}

TEST(String, EditsReturnCountsAndClampPositions)
{
    CString s(L"a-b-c");
    EXPECT_EQ(2, s.Replace(L'-', L'+'));
    EXPECT_STREQ(L"a+b+c", s);
    EXPECT_EQ(0, s.Replace(L'+', L'+'));
    EXPECT_EQ(2, s.Replace(L"+", L"<->"));
    EXPECT_STREQ(L"a<->b<->c", s);
    EXPECT_EQ(2, s.Replace(L"<->", nullptr));
    EXPECT_STREQ(L"abc", s);
    EXPECT_EQ(0, s.Replace(L"", L"x"));
    CString aaa(L"aaaa");
    EXPECT_EQ(2, aaa.Replace(L"aa", L"b"));  // non-overlapping, left to right
    EXPECT_STREQ(L"bb", aaa);

    EXPECT_EQ(2, CString(L"x.y.").Remove(L'.'));
    EXPECT_EQ(4, s.Insert(-3, L'<'));
    EXPECT_EQ(5, s.Insert(99, L'>'));
    EXPECT_EQ(7, s.Insert(2, L"[]"));
    EXPECT_STREQ(L"<a[]bc>", s);
    EXPECT_EQ(4, s.Delete(2, 3));
    EXPECT_STREQ(L"<ac>", s);
    EXPECT_EQ(2, s.Delete(-1, 2));
    EXPECT_EQ(1, s.Delete(1, 50));
    EXPECT_EQ(1, s.Delete(5));
    EXPECT_STREQ(L"c", s);

    CString u(L"Straße Ärger");
    EXPECT_STREQ(L"STRAßE ÄRGER", CString(u).MakeUpper());
    EXPECT_STREQ(L"straße ärger", CString(u).MakeLower());
    EXPECT_STREQ(L"regrÄ eßartS", CString(u).MakeReverse());
}

TEST(String, BufferAccessFollowsTheFrameworkProtocol)
{
    CString s(L"abc");
    LPWSTR p = s.GetBuffer(10);
    EXPECT_GE(s.GetAllocLength(), 10);
    EXPECT_STREQ(L"abc", p);  // contents kept
    wcscpy(p, L"longer!");
    s.ReleaseBuffer();  // -1: up to the first zero
    EXPECT_EQ(7, s.GetLength());
    EXPECT_STREQ(L"longer!", s);

    p = s.GetBuffer(0);
    p[2] = 0;
    s.ReleaseBuffer(5);  // an explicit length keeps the zero inside
    EXPECT_EQ(5, s.GetLength());
    EXPECT_EQ(L'g', s[3]);

    p = s.GetBufferSetLength(3);
    EXPECT_EQ(3, s.GetLength());
    p[0] = L'X';
    s.ReleaseBuffer();
    EXPECT_EQ(2, s.GetLength());  // up to the zero written at 2 before
    EXPECT_STREQ(L"Xo", s);

    CString e;
    wcscpy(e.GetBuffer(20), L"filled by an API");
    e.ReleaseBuffer();
    EXPECT_STREQ(L"filled by an API", e);
    e.FreeExtra();
    EXPECT_EQ(e.GetLength(), e.GetAllocLength());

    EXPECT_TRUE(ThrowsInvalidArg([&] { e.ReleaseBuffer(1000); }));
    EXPECT_TRUE(ThrowsInvalidArg([&] { e.GetBufferSetLength(-1); }));
    EXPECT_TRUE(ThrowsInvalidArg([&] { e.Truncate(100); }));
    e.Truncate(6);
    EXPECT_STREQ(L"filled", e);
    CString never;
    never.ReleaseBuffer();  // nothing to release: stays empty
    EXPECT_TRUE(never.IsEmpty());
}

TEST(String, LoadsStringResourcesAndMakesBstrs)
{
    HMODULE lib = GetModuleHandleW(L"KxUiDllU.dll");
    ASSERT_NE(nullptr, lib);
    CString s(L"unchanged");
    EXPECT_TRUE(s.LoadString(lib, IDS_KXUI_VERSION));
    EXPECT_STREQ(L"KxUi 0.1", s);
    s = L"unchanged";
    EXPECT_FALSE(s.LoadString(lib, 0xFFF0));
    EXPECT_STREQ(L"unchanged", s);

    CString z(L"a\0b", 3);
    BSTR b = z.AllocSysString();
    ASSERT_NE(nullptr, b);
    EXPECT_EQ(3u, SysStringLen(b));
    EXPECT_EQ(L'b', b[2]);
    CString(L"replaced").SetSysString(&b);
    EXPECT_STREQ(L"replaced", b);
    SysFreeString(b);
}

TEST(String, SharedBlocksSurviveCopiesOnManyThreads)
{
    CString shared(L"shared between threads");
    struct Work {
        const CString* src;
        int mismatches;
    };
    auto worker = [](LPVOID p) -> DWORD {
        auto* w = static_cast<Work*>(p);
        for (int i = 0; i < 20000; ++i) {
            CString a = *w->src;  // count up and down concurrently
            CString b = a;
            b += L'!';  // a private copy; the shared block must stay as it is
            if (a != *w->src || b.GetLength() != w->src->GetLength() + 1)
                ++w->mismatches;
        }
        return 0;
    };
    Work work[4];
    HANDLE threads[4];
    for (int i = 0; i < 4; ++i) {
        work[i] = {&shared, 0};
        threads[i] = CreateThread(nullptr, 0, worker, &work[i], 0, nullptr);
        ASSERT_NE(nullptr, threads[i]);
    }
    WaitForMultipleObjects(4, threads, TRUE, INFINITE);
    for (int i = 0; i < 4; ++i) {
        CloseHandle(threads[i]);
        EXPECT_EQ(0, work[i].mismatches);
    }
    // Only the original holds the block now: a write changes it in place.
    LPCWSTR block = shared.GetString();
    shared.SetAt(0, L'S');
    EXPECT_EQ(block, shared.GetString());
    EXPECT_STREQ(L"Shared between threads", shared);
}

TEST(String, NarrowStringConvertsBothWays)
{
    CStringA a("narrow");
    CString w(a);
    EXPECT_STREQ(L"narrow", w);
    CStringA back(w);
    EXPECT_STREQ("narrow", back);
    CStringA fromWide = L"wide text";
    EXPECT_STREQ("wide text", fromWide);
    w = a;
    EXPECT_STREQ(L"narrow", w);

    // Mixed expressions keep their CString meaning.
    CString s(L"abc");
    EXPECT_TRUE(s == CString("abc"));
    EXPECT_STREQ(L"abcdef", s + "def");
    EXPECT_TRUE(s == "abc");

    a.Format("%s=%d %S", "n", 5, L"w");
    EXPECT_STREQ("n=5 w", a);
    a.AppendFormat(" %s", CStringA("more"));
    EXPECT_STREQ("n=5 w more", a);
    w.Format(L"%S", a);  // a narrow CString argument to a wide format
    EXPECT_STREQ(L"n=5 w more", w);

    a += a;
    EXPECT_STREQ("n=5 w moren=5 w more", a);
    EXPECT_EQ(2, a.Replace("more", "x"));
    EXPECT_STREQ("n=5 w xn=5 w x", a);
    EXPECT_EQ(7, a.Find('n', 1));
    EXPECT_EQ(7, a.Find("n=5", 1));
    EXPECT_EQ(-1, a.Find("n=5", 8));
    EXPECT_STREQ(" x", a.Right(2));
    EXPECT_STREQ("", a.Mid(99));
    EXPECT_STREQ("t", CStringA("  t  ").Trim());
    EXPECT_STREQ("ABC", CStringA("abc").MakeUpper());

    char* p = a.GetBuffer(40);
    strcpy(p, "filled");
    a.ReleaseBuffer();
    EXPECT_EQ(6, a.GetLength());
    EXPECT_TRUE(a == "filled" && "filled" == a && a != "other");
    CStringA moved = std::move(a);
    EXPECT_TRUE(a.IsEmpty());
    EXPECT_STREQ("filled", moved);
    EXPECT_TRUE(ThrowsInvalidArg([&] { moved.GetAt(7); }));
}
