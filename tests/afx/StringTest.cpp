// CString: formatting, searching, editing, buffers, sharing and aliasing.
#include <climits>

TEST(String, FormatFollowsThePlatformWidePrintfRules)
{
    CString s;
    s.Format(L"%s|%S|%c|%C|%%", L"wide", "narrow", L'W', 'n');
    EXPECT_STREQ(L"wide|narrow|W|n|%", s);
    s.Format(L"%I64d %I64u %lld %I64x", -1234567890123LL, 18446744073709551615ULL, 9000000000LL, 0xABCDEF0123LL);
    EXPECT_STREQ(L"-1234567890123 18446744073709551615 9000000000 abcdef0123", s);
    s.Format(L"[%5d][%-5d][%05d][%x][%X][%u]", 42, 42, 42, 255, 255, 4000000000u);
    EXPECT_STREQ(L"[   42][42   ][00042][ff][FF][4000000000]", s);
    s.Format(L"[%.2f][%8.3f][%g][%g][%e]", 3.14159, -2.5, 0.5, 1e20, 12345.678);
    EXPECT_STREQ(L"[3.14][  -2.500][0.5][1e+020][1.234568e+004]", s);
    s.Format(L"[%.3s][%6s][%-6s]", L"abcdef", L"ab", L"ab");
    EXPECT_STREQ(L"[abc][    ab][ab    ]", s);
}
