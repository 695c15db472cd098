// A short C++ source and a keyword group to show the syntax colorizer at work (used by the
// benchmark and ready for a demonstration page).
#pragma once
#include "KxUiSyntaxColorizer.h"

// The sample source, with "\r" line breaks as a rich edit control holds them.
inline LPCWSTR KxUiColorizerSampleSource()
{
    return L"#include <windows.h>\r"
           L"/* A window that counts its clicks.\r"
           L"   Colours: keywords, \"strings\", 'c' literals and comments. */\r"
           L"class CounterWnd {\r"
           L"public:\r"
           L"    int count = 0;    // clicks so far\r"
           L"    void onClick() { ++count; }\r"
           L"    const wchar_t* title() const { return L\"Counter\"; }\r"
           L"    char separator() const { return ','; }\r"
           L"    CString label() const { CString s; s.Format(L\"%d\", count); return s; }\r"
           L"};\r"
           L"\r"
           L"int wmain()\r"
           L"{\r"
           L"    CounterWnd wnd;\r"
           L"    for (int i = 0; i < 3; ++i)\r"
           L"        wnd.onClick();\r"
           L"    return wnd.count == 3 ? 0 : 1;\r"
           L"}\r";
}

// Adds the framework's class names of the sample as keyword group 1, dark red and bold.
inline void KxUiColorizerAddSampleGroup(KxUiSyntaxColorizer& colorizer)
{
    CHARFORMATW format;
    colorizer.GetDefaultStyle(format);
    format.dwEffects = CFE_BOLD;
    format.crTextColor = RGB(128, 0, 0);
    colorizer.AddKeyword(L"CString,CounterWnd,wchar_t,Format", format, 1);
}
