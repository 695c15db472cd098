// CString against std::wstring: appending, concatenation, copies and formatting.
#include <afx.h>
#include <cwchar>
#include <string>
#include <vector>
#include "KxBench.h"

KXBENCH_SINK

namespace {

const int kAppends = 1000000;

}  // namespace

int main()
{
    using namespace KxBench;
    Header("CString vs std::wstring (best of 7, alternating)", "CString", "std::wstring");

    Compare("append 1,000,000 short strings",
           [] {
               CString s;
               for (int i = 0; i < kAppends; ++i)
                   s += L"abc";
               Keep(s.GetLength());
           },
           [] {
               std::wstring s;
               for (int i = 0; i < kAppends; ++i)
                   s += L"abc";
               Keep(s.size());
           });

    Compare("append 1,000,000 characters",
           [] {
               CString s;
               for (int i = 0; i < kAppends; ++i)
                   s += static_cast<wchar_t>(L'a' + i % 26);
               Keep(s.GetLength());
           },
           [] {
               std::wstring s;
               for (int i = 0; i < kAppends; ++i)
                   s += static_cast<wchar_t>(L'a' + i % 26);
               Keep(s.size());
           });

    const CString name(L"column");
    const std::wstring wname(L"column");
    Compare("a + L\"-\" + b + L'!' (1,000,000 times)",
           [&] {
               for (int i = 0; i < kAppends; ++i) {
                   CString s = name + L"-" + name + L'!';
                   Keep(s.GetLength());
               }
           },
           [&] {
               for (int i = 0; i < kAppends; ++i) {
                   std::wstring s = wname + L"-" + wname + L'!';
                   Keep(s.size());
               }
           });

    const CString longText(L'x', 200);
    const std::wstring wlongText(200, L'x');
    Compare("copy a 200-character string (1,000,000)",
           [&] {
               std::vector<CString> v(1000);
               for (int i = 0; i < kAppends; ++i)
                   v[i % 1000] = longText;
               Keep(v[0].GetLength());
           },
           [&] {
               std::vector<std::wstring> v(1000);
               for (int i = 0; i < kAppends; ++i)
                   v[i % 1000] = wlongText;
               Keep(v[0].size());
           });

    // Same printf engine on both sides (the C runtime's); the baseline formats into a
    // stack buffer and assigns the result.
    const int kFormats = kAppends / 4;
    Compare("Format \"%d: %s (%.2f)\" (250,000 times)",
           [&] {
               CString s;
               for (int i = 0; i < kFormats; ++i) {
                   s.Format(L"%d: %s (%.2f)", i, name, i * 0.5);
                   Keep(s.GetLength());
               }
           },
           [&] {
               std::wstring s;
               wchar_t buf[128];
               for (int i = 0; i < kFormats; ++i) {
                   int n = _snwprintf(buf, 128, L"%d: %s (%.2f)", i, wname.c_str(), i * 0.5);
                   s.assign(buf, n);
                   Keep(s.size());
               }
           });

    Compare("Replace and Find in a 10,000-char string (x200)",
           [&] {
               for (int r = 0; r < 200; ++r) {
                   CString s;
                   for (int i = 0; i < 1000; ++i)
                       s += L"key=value;";
                   s.Replace(L"value", L"v");
                   Keep(static_cast<size_t>(s.Find(L"key=v;", 5000)));
               }
           },
           [&] {
               for (int r = 0; r < 200; ++r) {
                   std::wstring s;
                   for (int i = 0; i < 1000; ++i)
                       s += L"key=value;";
                   std::wstring out;
                   out.reserve(s.size());
                   size_t from = 0;
                   for (size_t at; (at = s.find(L"value", from)) != std::wstring::npos; from = at + 5)
                       out.append(s, from, at - from).append(L"v");
                   out.append(s, from, std::wstring::npos);
                   Keep(out.find(L"key=v;", 5000));
               }
           });
    return 0;
}
