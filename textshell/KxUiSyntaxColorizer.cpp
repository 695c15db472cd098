#include "KxUiSyntaxColorizer.h"
#include "KxUiRichEditQuiet.h"
#include <afxcmn.h>
#include <algorithm>
#include <new>
#include <string>
#include <vector>

namespace {

// Tables: the four tokenizer states and the keyword delimiters.
enum { tabNormal, tabString, tabLiteral, tabLineComment, tabBlockComment, tabDelimiter, tabCount };
const size_t tableEntries = 0x10000;

// Actions found in the state tables.
enum : WORD {
    actNone, actStringOpen, actStringClose, actLiteralOpen, actLiteralClose, actSlash,
    actLineEnd, actStar, actKeyword
};

// Entries from U+8000 up carry no action: the tables' upper halves are never consulted.
inline WORD lookup(const WORD* table, wchar_t c)
{
    return static_cast<unsigned>(c) < 0x8000 ? table[c] : 0;
}

bool isRemWord(LPCWSTR word)
{
    return _wcsicmp(word, L"rem") == 0;
}

// The library reports a failed allocation the framework's way, with a CMemoryException that
// the framework's window procedure stops like any other; the standard containers used here
// report it as std::bad_alloc, so their allocations pass through this.
template <class F>
auto allocating(F&& allocate) -> decltype(allocate())
{
    try {
        return allocate();
    } catch (const std::bad_alloc&) {
        AfxThrowMemoryException();
    }
}

// The built-in C/C++ vocabulary: language keywords, preprocessor directives, pragma names.
const wchar_t defaultLanguageKeywords[] =
    L"__asm,else,main,struct,__assume,enum,__multiple_inheritance,switch,auto,__except,"
    L"__single_inheritance,template,__based,explicit,__virtual_inheritance,this,bool,extern,"
    L"mutable,thread,break,false,naked,throw,case,__fastcall,namespace,true,catch,__finally,"
    L"new,try,__cdecl,float,noreturn,__try,char,for,operator,typedef,class,friend,private,"
    L"typeid,const,goto,protected,typename,const_cast,if,public,union,continue,inline,register,"
    L"unsigned,__declspec,__inline,reinterpret_cast,using,declaration,directive,default,int,"
    L"return,uuid,delete,__int8,short,__uuidof,dllexport,__int16,signed,virtual,dllimport,"
    L"__int32,sizeof,void,do,__int64,static,volatile,double,__leave,static_cast,wmain,"
    L"dynamic_cast,long,__stdcall,while";
const wchar_t defaultDirectives[] =
    L"#define,#elif,#else,#endif,#error,#ifdef,#ifndef,#import,#include,#line,#pragma,#undef";
const wchar_t defaultPragmas[] =
    L"alloc_text,comment,init_seg1,optimize,auto_inline,component,inline_depth,pack,bss_seg,"
    L"data_seg,inline_recursion,pointers_to_members1,check_stack,function,intrinsic,setlocale,"
    L"code_seg,hdrstop,message,vtordisp1,const_seg,include_alias,once,warning";

// One keyword of the list.
struct Keyword {
    std::wstring text;
    CHARFORMATW format;
    int group;
    bool isRem;  // "rem" in any case: starts a line comment instead of being coloured
};

// Code-unit order, as the keyword list is sorted.
bool before(const Keyword& k, const std::wstring& text)
{
    return k.text.compare(text) < 0;
}

} // namespace

// What copies of a colorizer share: the character tables and the keyword list, kept sorted
// by code unit so that the keywords of one first character form one run.
struct KxUiSyntaxColorizer::Shared {
    std::vector<WORD> tables[tabCount];  // empty until created
    std::vector<Keyword> keywords;
};

KxUiSyntaxColorizer::KxUiSyntaxColorizer()
    : m_shared(allocating([] { return std::make_shared<Shared>(); }))
{
    createDefaultCharFormat();
    createTables();
    createDefaultKeywordList();
}

KxUiSyntaxColorizer::~KxUiSyntaxColorizer() = default;

void KxUiSyntaxColorizer::createDefaultCharFormat()
{
    ZeroMemory(&m_cfDefault, sizeof m_cfDefault);
    m_cfDefault.cbSize = sizeof m_cfDefault;
    m_cfDefault.dwMask = CFM_BOLD | CFM_ITALIC | CFM_UNDERLINE | CFM_STRIKEOUT | CFM_OFFSET |
                         CFM_CHARSET | CFM_FACE | CFM_COLOR | CFM_SIZE;
    m_cfDefault.dwEffects = 0;
    m_cfDefault.yHeight = 200;
    m_cfDefault.yOffset = 0;
    m_cfDefault.crTextColor = RGB(0, 0, 0);
    m_cfDefault.bCharSet = ANSI_CHARSET;
    m_cfDefault.bPitchAndFamily = FIXED_PITCH | FF_MODERN;
    wcscpy_s(m_cfDefault.szFaceName, L"Courier New");
    m_cfComment = m_cfDefault;
    SetCommentColor(RGB(0, 170, 0));
    m_cfString = m_cfDefault;
    SetStringColor(RGB(55, 0, 200));
}

void KxUiSyntaxColorizer::createDefaultKeywordList()
{
    const COLORREF blue = RGB(0, 0, 255);
    AddKeyword(defaultLanguageKeywords, blue, 0);
    AddKeyword(defaultDirectives, blue, 0);
    AddKeyword(defaultPragmas, blue, 0);
}

void KxUiSyntaxColorizer::createTables()
{
    std::vector<WORD>* t = m_shared->tables;
    allocating([t] {
        std::vector<WORD> created[tabCount];
        for (auto& table : created)
            table.assign(tableEntries, actNone);
        for (int n = 0; n < tabCount; ++n)
            t[n].swap(created[n]);
        return 0;
    });
    t[tabNormal][L'"'] = actStringOpen;
    t[tabNormal][L'\''] = actLiteralOpen;
    t[tabNormal][L'/'] = actSlash;
    t[tabString][L'"'] = actStringClose;
    t[tabLiteral][L'\''] = actLiteralClose;
    // A rich edit control reports every line break as a lone '\r', so a line ends at '\r'
    // as well as at '\n'; otherwise no line comment would ever end in such a control.
    t[tabLineComment][L'\n'] = actLineEnd;
    t[tabLineComment][L'\r'] = actLineEnd;
    t[tabBlockComment][L'*'] = actStar;
    for (wchar_t c : {L'\0', L'\t', L'\n', L'\r', L' ', L';', L'(', L')', L'[', L']', L'{', L'}',
                      L'*', L'.'})
        t[tabDelimiter][c] = 1;
    // Keywords already in a shared list keep their entries.
    for (const Keyword& k : m_shared->keywords) {
        t[tabNormal][k.text[0] & 0xFFFF] = actKeyword;
        if (k.isRem) {
            t[tabLiteral][L'\n'] = actLineEnd;
            t[tabLiteral][L'\r'] = actLineEnd;
        }
    }
}

void KxUiSyntaxColorizer::deleteTables()
{
    for (auto& table : m_shared->tables)
        std::vector<WORD>().swap(table);
}

void KxUiSyntaxColorizer::AddKeyword(LPCWSTR list, COLORREF color, int group)
{
    CHARFORMATW format = m_cfDefault;
    format.crTextColor = color;
    AddKeyword(list, format, group);
}

void KxUiSyntaxColorizer::AddKeyword(LPCWSTR list, CHARFORMATW format, int group)
{
    if (!list || m_shared->tables[tabNormal].empty())
        return;
    // Words separated by ","; consecutive separators yield no empty word.
    for (LPCWSTR p = list; *p;) {
        size_t n = 0;
        while (p[n] && p[n] != L',')
            ++n;
        if (n > 0) {
            const std::wstring word = allocating([&] { return std::wstring(p, n); });
            if (isRemWord(word.c_str())) {
                // The apostrophe comment of BASIC: a quote span reaching the line's end.
                m_shared->tables[tabLiteral][L'\n'] = actLineEnd;
                m_shared->tables[tabLiteral][L'\r'] = actLineEnd;
            }
            addKey(word.c_str(), format, group);
        }
        p += n;
        if (*p)
            ++p;
    }
}

void KxUiSyntaxColorizer::addKey(LPCWSTR word, CHARFORMATW format, int group)
{
    if (!word || !*word || m_shared->tables[tabNormal].empty())
        return;
    std::vector<Keyword>& keywords = m_shared->keywords;
    allocating([&] {
        Keyword node{word, format, group, isRemWord(word)};
        // Sorted insertion; an equal text is replaced by the new node.
        auto at = std::lower_bound(keywords.begin(), keywords.end(), node.text, before);
        if (at != keywords.end() && at->text == node.text)
            *at = std::move(node);
        else
            keywords.insert(at, std::move(node));
        return 0;
    });
    m_shared->tables[tabNormal][word[0] & 0xFFFF] = actKeyword;
}

void KxUiSyntaxColorizer::ClearKeywordList()
{
    std::vector<WORD>* t = m_shared->tables;
    if (!t[tabNormal].empty()) {
        for (const Keyword& k : m_shared->keywords) {
            t[tabNormal][k.text[0] & 0xFFFF] = actNone;
            if (k.isRem) {
                t[tabLiteral][L'\n'] = actNone;
                t[tabLiteral][L'\r'] = actNone;
            }
        }
    }
    std::vector<Keyword>().swap(m_shared->keywords);
}

CString KxUiSyntaxColorizer::GetKeywordList() const
{
    CString result;
    for (const Keyword& k : m_shared->keywords) {
        if (!result.IsEmpty())
            result += L',';
        result += k.text.c_str();
    }
    return result;
}

CString KxUiSyntaxColorizer::GetKeywordList(int group) const
{
    CString result;
    for (const Keyword& k : m_shared->keywords) {
        if (k.group != group)
            continue;
        if (!result.IsEmpty())
            result += L',';
        result += k.text.c_str();
    }
    return result;
}

void KxUiSyntaxColorizer::SetCommentColor(COLORREF color)
{
    m_cfComment.dwMask = CFM_COLOR;
    m_cfComment.crTextColor = color;
}

void KxUiSyntaxColorizer::SetStringColor(COLORREF color)
{
    m_cfString.dwMask = CFM_COLOR;
    m_cfString.crTextColor = color;
}

void KxUiSyntaxColorizer::SetGroupStyle(int group, CHARFORMATW format)
{
    for (Keyword& k : m_shared->keywords)
        if (k.group == group)
            k.format = format;
}

void KxUiSyntaxColorizer::GetGroupStyle(int group, CHARFORMATW& format) const
{
    const std::vector<Keyword>& keywords = m_shared->keywords;
    if (keywords.empty())
        return;
    for (const Keyword& k : keywords) {
        if (k.group == group) {
            format = k.format;
            return;
        }
    }
    format = m_cfDefault;
}

void KxUiSyntaxColorizer::SetGroupColor(int group, COLORREF color)
{
    CHARFORMATW format = m_cfDefault;
    GetGroupStyle(group, format);
    format.dwMask = CFM_COLOR;
    format.crTextColor = color;
    SetGroupStyle(group, format);
}

void KxUiSyntaxColorizer::Colorize(CHARRANGE range, CRichEditCtrl* ctrl)
{
    Colorize(range.cpMin, range.cpMax, ctrl);
}

void KxUiSyntaxColorizer::Colorize(long start, long end, CRichEditCtrl* ctrl)
{
    if (!ctrl || !::IsWindow(ctrl->GetSafeHwnd()) || start < 0 || (end != -1 && end < start))
        return;
    long length;
    if (start != 0 || end != -1) {
        length = end - start + 1;
    } else {
        length = ctrl->GetTextLength();
        start = 0;
        end = -1;
    }
    // The selection and format calls below are the whole cost of colouring a large text.
    // Measured with bench/ColorizerBench.cpp: stopping the drawing of a shown control is
    // worth most; undo recording and notifications are suspended too, so that colouring is
    // not undoable and a parent that colours on EN_CHANGE is not called back. The selection
    // display is left alone: with drawing stopped it costs nothing.
    KxUiRichEditQuiet quiet(*ctrl, KxUiRichEditQuiet::undo | KxUiRichEditQuiet::events |
                                       KxUiRichEditQuiet::redraw);
    ctrl->SetSel(start, end);
    // The buffer holds at least the selection: an end of -1 selects to the end of the text,
    // and the control may count a line break differently in its length than in its text.
    CHARRANGE sel = {0, 0};
    ctrl->GetSel(sel);
    const size_t capacity = size_t(std::max(length, sel.cpMax - sel.cpMin)) + 1;
    std::vector<wchar_t> text = allocating([capacity] { return std::vector<wchar_t>(capacity); });
    ctrl->SendMessage(EM_GETSELTEXT, 0, reinterpret_cast<LPARAM>(text.data()));
    ctrl->SetSelectionCharFormat(m_cfDefault);
    colorize(text.data(), ctrl, sel.cpMin);
}

void KxUiSyntaxColorizer::colorize(LPWSTR text, CRichEditCtrl* ctrl, long offset)
{
    // Each span becomes a selection and a character format on the control.
    struct RichEditSink : FormatSink {
        explicit RichEditSink(CRichEditCtrl* c) : ctrl(c) {}
        void applyFormat(long start, long end, const CHARFORMATW& format) override
        {
            CHARFORMATW cf = format;
            ctrl->SetSel(start, end);
            ctrl->SetSelectionCharFormat(cf);
        }
        CRichEditCtrl* ctrl;
    };
    if (!ctrl)
        return;
    RichEditSink sink(ctrl);
    colorize(static_cast<LPCWSTR>(text), sink, offset);
}

void KxUiSyntaxColorizer::colorize(LPCWSTR text, FormatSink& sink, long offset)
{
    const std::vector<WORD>* tables = m_shared->tables;
    if (!text || tables[tabNormal].empty())
        return;
    const WORD* const normal = tables[tabNormal].data();
    const WORD* const string = tables[tabString].data();
    const WORD* const literal = tables[tabLiteral].data();
    const WORD* const lineComment = tables[tabLineComment].data();
    const WORD* const blockComment = tables[tabBlockComment].data();
    const WORD* const delimiters = tables[tabDelimiter].data();
    const std::vector<Keyword>& keywords = m_shared->keywords;
    // The character before the first one counts as a delimiter.
    auto isDelimiter = [&](long at) { return at < 0 || lookup(delimiters, text[at]) != 0; };
    // Line breaks come as "\n", as a lone "\r" (what a rich edit control reports) or as
    // "\r\n", which is one break: its "\r" leaves the span open so that the "\n" closes it
    // and both characters belong to the comment. A backslash right before the break, in any
    // of the three forms, continues the comment onto the next line.
    auto endsLine = [&](long at) {
        if (text[at] == L'\r' && text[at + 1] == L'\n')
            return false;
        const long before = (text[at] == L'\n' && at >= 1 && text[at - 1] == L'\r') ? at - 2 : at - 1;
        return before < 0 || text[before] != L'\\';
    };

    const WORD* state = normal;
    long spanStart = 0;
    long i = 0;
    while (text[i]) {
        const wchar_t c = text[i];
        switch (lookup(state, c)) {
        case actStringOpen:
            state = string;
            spanStart = offset + i;
            break;
        case actStringClose:
            state = normal;
            sink.applyFormat(spanStart, offset + i + 1, m_cfString);
            break;
        case actLiteralOpen:
            state = literal;
            spanStart = offset + i;
            break;
        case actLiteralClose:
            // The middle quote of '\'' does not close the literal.
            if (i >= 1 && text[i - 1] == L'\\' && text[i + 1] == L'\'')
                break;
            state = normal;
            sink.applyFormat(spanStart, offset + i + 1, m_cfString);
            break;
        case actSlash:
            if (text[i + 1] == L'/') {
                state = lineComment;
                spanStart = offset + i;
                ++i;
            } else if (text[i + 1] == L'*') {
                state = blockComment;
                spanStart = offset + i;
                ++i;
            }
            break;
        case actLineEnd:
            if (endsLine(i)) {
                state = normal;
                sink.applyFormat(spanStart, offset + i + 1, m_cfComment);
            }
            break;
        case actStar:
            if (text[i + 1] == L'/') {
                ++i;
                state = normal;
                sink.applyFormat(spanStart, offset + i + 1, m_cfComment);
            }
            break;
        case actKeyword: {
            // The keywords starting with c are one run of the sorted list. After a match the
            // remaining ones are tried at the advanced position.
            auto k = std::lower_bound(keywords.begin(), keywords.end(), c,
                                      [](const Keyword& node, wchar_t first) {
                                          return static_cast<unsigned>(node.text[0]) <
                                                 static_cast<unsigned>(first);
                                      });
            for (; k != keywords.end() && k->text[0] == c; ++k) {
                spanStart = offset + i;
                const long length = long(k->text.size());
                long n = 0;
                while (n < length && text[i + n] == k->text[size_t(n)])
                    ++n;
                if (n < length || !isDelimiter(i - 1) || !isDelimiter(i + n))
                    continue;
                if (k->isRem) {
                    state = lineComment;
                } else {
                    i += length;
                    sink.applyFormat(spanStart, offset + i, k->format);
                }
            }
            break;
        }
        default:
            break;
        }
        // A keyword may end exactly at the end of the text.
        if (!text[i])
            break;
        ++i;
    }

    if (state == string || state == literal)
        sink.applyFormat(spanStart, offset + i + 1, m_cfString);
    else if (state == lineComment || state == blockComment)
        sink.applyFormat(spanStart, offset + i + 1, m_cfComment);
}
