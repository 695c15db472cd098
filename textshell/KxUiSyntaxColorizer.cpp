#include "KxUiSyntaxColorizer.h"
#include <afxcmn.h>
#include <algorithm>
#include <memory>

// One keyword of the sorted list.
struct KxUiSyntaxColorizer::Keyword {
    LPWSTR text;          // own copy
    int length;           // in characters
    CHARFORMATW format;
    int group;
    bool isRem;           // "rem" in any case: starts a line comment instead of being coloured
    Keyword* next;
};

// What copies of a colorizer share: the character tables and the keyword list. The last
// copy to go frees them.
struct KxUiSyntaxColorizer::Shared {
    LONG refs;
    WORD* tables[6];
    Keyword* head;
};

namespace {

// Tables: the four tokenizer states and the keyword delimiters.
enum { tabNormal, tabString, tabLiteral, tabLineComment, tabBlockComment, tabDelimiter, tabCount };
const size_t tableEntries = 0x10000;

// Actions found in the state tables.
enum {
    actNone, actStringOpen, actStringClose, actLiteralOpen, actLiteralClose, actSlash,
    actLineEnd, actStar, actKeyword
};

// Entries from U+8000 up carry no action: the tables' upper halves are never consulted.
inline WORD lookup(const WORD* table, wchar_t c)
{
    return static_cast<unsigned>(c) < 0x8000 ? table[c] : 0;
}

// Code-unit order, as the keyword list is sorted.
int compareUnits(LPCWSTR a, LPCWSTR b)
{
    while (*a && *a == *b) {
        ++a;
        ++b;
    }
    return int(static_cast<unsigned>(*a)) - int(static_cast<unsigned>(*b));
}

bool isRemWord(LPCWSTR word)
{
    return _wcsicmp(word, L"rem") == 0;
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

} // namespace

KxUiSyntaxColorizer::KxUiSyntaxColorizer()
    : m_pShared(new Shared{1, {}, nullptr}), m_pSpare(nullptr)
{
    createDefaultCharFormat();
    createTables();
    createDefaultKeywordList();
}

KxUiSyntaxColorizer::KxUiSyntaxColorizer(const KxUiSyntaxColorizer& other)
    : m_pShared(other.m_pShared), m_pSpare(other.m_pSpare), m_cfComment(other.m_cfComment),
      m_cfString(other.m_cfString), m_cfDefault(other.m_cfDefault)
{
    InterlockedIncrement(&m_pShared->refs);
}

KxUiSyntaxColorizer& KxUiSyntaxColorizer::operator=(const KxUiSyntaxColorizer& other)
{
    if (m_pShared != other.m_pShared) {
        InterlockedIncrement(&other.m_pShared->refs);
        release();
        m_pShared = other.m_pShared;
    }
    m_pSpare = other.m_pSpare;
    m_cfComment = other.m_cfComment;
    m_cfString = other.m_cfString;
    m_cfDefault = other.m_cfDefault;
    return *this;
}

KxUiSyntaxColorizer::~KxUiSyntaxColorizer()
{
    release();
}

void KxUiSyntaxColorizer::release()
{
    if (InterlockedDecrement(&m_pShared->refs) == 0) {
        ClearKeywordList();
        deleteTables();
        delete m_pShared;
    }
    m_pShared = nullptr;
}

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
    WORD** t = m_pShared->tables;
    for (int n = 0; n < tabCount; ++n) {
        t[n] = static_cast<WORD*>(calloc(tableEntries, sizeof(WORD)));
        if (!t[n]) {
            deleteTables();
            return;
        }
    }
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
}

void KxUiSyntaxColorizer::deleteTables()
{
    for (WORD*& table : m_pShared->tables) {
        free(table);
        table = nullptr;
    }
}

void KxUiSyntaxColorizer::AddKeyword(LPCWSTR list, COLORREF color, int group)
{
    CHARFORMATW format = m_cfDefault;
    format.crTextColor = color;
    AddKeyword(list, format, group);
}

void KxUiSyntaxColorizer::AddKeyword(LPCWSTR list, CHARFORMATW format, int group)
{
    if (!list || !m_pShared->tables[tabNormal])
        return;
    std::unique_ptr<wchar_t[]> word(new (std::nothrow) wchar_t[wcslen(list) + 1]);
    if (!word)
        return;
    // Words separated by ","; consecutive separators yield no empty word.
    for (LPCWSTR p = list; *p;) {
        size_t n = 0;
        while (p[n] && p[n] != L',')
            ++n;
        if (n > 0) {
            wmemcpy(word.get(), p, n);
            word[n] = 0;
            if (isRemWord(word.get())) {
                // The apostrophe comment of BASIC: a quote span reaching the line's end.
                m_pShared->tables[tabLiteral][L'\n'] = actLineEnd;
                m_pShared->tables[tabLiteral][L'\r'] = actLineEnd;
            }
            addKey(word.get(), format, group);
        }
        p += n;
        if (*p)
            ++p;
    }
}

void KxUiSyntaxColorizer::addKey(LPCWSTR word, CHARFORMATW format, int group)
{
    if (!word || !*word || !m_pShared->tables[tabNormal])
        return;
    Keyword* node = new Keyword{_wcsdup(word), int(wcslen(word)), format, group,
                                isRemWord(word), nullptr};
    if (!node->text) {
        delete node;
        return;
    }
    m_pShared->tables[tabNormal][node->text[0]] = actKeyword;

    // Sorted insertion; an equal text is replaced by the new node.
    Keyword** link = &m_pShared->head;
    while (*link && compareUnits((*link)->text, node->text) < 0)
        link = &(*link)->next;
    if (*link && compareUnits((*link)->text, node->text) == 0) {
        Keyword* old = *link;
        node->next = old->next;
        free(old->text);
        delete old;
    } else {
        node->next = *link;
    }
    *link = node;
}

void KxUiSyntaxColorizer::ClearKeywordList()
{
    Keyword* node = m_pShared->head;
    m_pShared->head = nullptr;
    while (node) {
        Keyword* next = node->next;
        if (m_pShared->tables[tabNormal]) {
            m_pShared->tables[tabNormal][node->text[0]] = actNone;
            if (node->isRem) {
                m_pShared->tables[tabLiteral][L'\n'] = actNone;
                m_pShared->tables[tabLiteral][L'\r'] = actNone;
            }
        }
        free(node->text);
        delete node;
        node = next;
    }
}

CString KxUiSyntaxColorizer::GetKeywordList() const
{
    CString result;
    for (const Keyword* k = m_pShared->head; k; k = k->next) {
        if (!result.IsEmpty())
            result += L',';
        result += k->text;
    }
    return result;
}

CString KxUiSyntaxColorizer::GetKeywordList(int group) const
{
    CString result;
    for (const Keyword* k = m_pShared->head; k; k = k->next) {
        if (k->group != group)
            continue;
        if (!result.IsEmpty())
            result += L',';
        result += k->text;
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
    for (Keyword* k = m_pShared->head; k; k = k->next)
        if (k->group == group)
            k->format = format;
}

void KxUiSyntaxColorizer::GetGroupStyle(int group, CHARFORMATW& format) const
{
    if (!m_pShared->head)
        return;
    for (const Keyword* k = m_pShared->head; k; k = k->next) {
        if (k->group == group) {
            format = k->format;
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
    ctrl->SetSel(start, end);
    // The buffer holds at least the selection: an end of -1 selects to the end of the text,
    // and the control may count a line break differently in its length than in its text.
    CHARRANGE sel = {0, 0};
    ctrl->GetSel(sel);
    const long capacity = std::max(length, sel.cpMax - sel.cpMin) + 1;
    std::unique_ptr<wchar_t[]> text(new (std::nothrow) wchar_t[capacity]);
    if (!text)
        return;
    text[0] = 0;
    ctrl->SendMessage(EM_GETSELTEXT, 0, reinterpret_cast<LPARAM>(text.get()));
    ctrl->SetSelectionCharFormat(m_cfDefault);
    colorize(text.get(), ctrl, sel.cpMin);
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
    WORD* const* tables = m_pShared->tables;
    if (!text || !tables[tabNormal])
        return;
    const WORD* const delimiters = tables[tabDelimiter];
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

    const WORD* state = tables[tabNormal];
    long spanStart = 0;
    long i = 0;
    while (text[i]) {
        const wchar_t c = text[i];
        switch (lookup(state, c)) {
        case actStringOpen:
            state = tables[tabString];
            spanStart = offset + i;
            break;
        case actStringClose:
            state = tables[tabNormal];
            sink.applyFormat(spanStart, offset + i + 1, m_cfString);
            break;
        case actLiteralOpen:
            state = tables[tabLiteral];
            spanStart = offset + i;
            break;
        case actLiteralClose:
            // The middle quote of '\'' does not close the literal.
            if (i >= 1 && text[i - 1] == L'\\' && text[i + 1] == L'\'')
                break;
            state = tables[tabNormal];
            sink.applyFormat(spanStart, offset + i + 1, m_cfString);
            break;
        case actSlash:
            if (text[i + 1] == L'/') {
                state = tables[tabLineComment];
                spanStart = offset + i;
                ++i;
            } else if (text[i + 1] == L'*') {
                state = tables[tabBlockComment];
                spanStart = offset + i;
                ++i;
            }
            break;
        case actLineEnd:
            if (endsLine(i)) {
                state = tables[tabNormal];
                sink.applyFormat(spanStart, offset + i + 1, m_cfComment);
            }
            break;
        case actStar:
            if (text[i + 1] == L'/') {
                ++i;
                state = tables[tabNormal];
                sink.applyFormat(spanStart, offset + i + 1, m_cfComment);
            }
            break;
        case actKeyword:
            // The list is sorted by code unit, so the candidates are one run of nodes. After a
            // match the remaining candidates are tried at the advanced position.
            for (const Keyword* k = m_pShared->head; k; k = k->next) {
                if (k->text[0] != c) {
                    if (static_cast<unsigned>(k->text[0]) > static_cast<unsigned>(c))
                        break;
                    continue;
                }
                spanStart = offset + i;
                int n = 0;
                while (n < k->length && text[i + n] == k->text[n])
                    ++n;
                if (n < k->length || !isDelimiter(i - 1) || !isDelimiter(i + n))
                    continue;
                if (k->isRem) {
                    state = tables[tabLineComment];
                } else {
                    i += k->length;
                    sink.applyFormat(spanStart, offset + i, k->format);
                }
            }
            break;
        default:
            break;
        }
        // A keyword may end exactly at the end of the text.
        if (!text[i])
            break;
        ++i;
    }

    if (state == tables[tabString] || state == tables[tabLiteral])
        sink.applyFormat(spanStart, offset + i + 1, m_cfString);
    else if (state == tables[tabLineComment] || state == tables[tabBlockComment])
        sink.applyFormat(spanStart, offset + i + 1, m_cfComment);
}
