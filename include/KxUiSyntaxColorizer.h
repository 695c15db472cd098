// Syntax colouring of source text held in a rich edit control.
#pragma once
#include "KxUiDef.h"
#include <richedit.h>
#include <memory>

class CRichEditCtrl;

// Colours keywords, string and character literals and comments of a C/C++-like text in a
// rich edit control.
//
// Model: six character tables (the tokenizer's four states, normal text, keyword
// delimiters), a keyword list sorted by code unit, and three character formats (comment,
// string, default). Copies share the tables and the keyword list with their source (a
// keyword added through one is seen by all); the formats are each copy's own.
//
//   KxUiSyntaxColorizer colorizer;                      // C/C++ keywords in blue
//   colorizer.AddKeyword(L"CString,CWnd", RGB(128, 0, 0), 1);
//   colorizer.Colorize(0, -1, &richEdit);               // the whole text
//
// While Colorize runs the control records no undo action, sends its parent no
// notification and draws nothing; all of it is back when Colorize returns, by any way out.
// Memory: a failed allocation raises the framework's memory exception (CMemoryException)
// and leaves the colorizer and the control as they were.
class KXUI_API KxUiSyntaxColorizer {
public:
    // The default formats (Courier New, 10 points; comments green, strings violet) and the
    // C/C++ keywords, directives and pragma names in blue, group 0.
    KxUiSyntaxColorizer();
    // Shares the tables and the keyword list; copies the formats and the spare field.
    KxUiSyntaxColorizer(const KxUiSyntaxColorizer& other) = default;
    KxUiSyntaxColorizer& operator=(const KxUiSyntaxColorizer& other) = default;
    // The last colorizer sharing them frees the tables and the keyword list.
    virtual ~KxUiSyntaxColorizer();

    // Keywords: every comma-separated word of the list, in the default format recoloured or
    // in a whole format. A word already in the list is replaced. "rem" (any case) makes
    // "rem" and an apostrophe span reaching the end of a line comments.
    void AddKeyword(LPCWSTR list, COLORREF color, int group);
    void AddKeyword(LPCWSTR list, CHARFORMATW format, int group);
    void ClearKeywordList();
    // All keywords (or those of one group) in list order, joined by ",".
    CString GetKeywordList() const;
    CString GetKeywordList(int group) const;

    // Comment and string colours: the format then changes the colour alone.
    void SetCommentColor(COLORREF color);
    void SetStringColor(COLORREF color);
    void SetCommentStyle(CHARFORMATW format) { m_cfComment = format; }
    void SetStringStyle(CHARFORMATW format) { m_cfString = format; }
    void SetDefaultStyle(CHARFORMATW format) { m_cfDefault = format; }
    void GetCommentStyle(CHARFORMATW& format) const { format = m_cfComment; }
    void GetStringStyle(CHARFORMATW& format) const { format = m_cfString; }
    void GetDefaultStyle(CHARFORMATW& format) const { format = m_cfDefault; }

    // Keyword groups: the format of every keyword of a group.
    void SetGroupStyle(int group, CHARFORMATW format);
    // The format of the group's first keyword; the default format when the group has no
    // keyword; the caller's structure untouched when the list is empty.
    void GetGroupStyle(int group, CHARFORMATW& format) const;
    void SetGroupColor(int group, COLORREF color);

    // Colours the characters [start, end] of the control; (0, -1) is the whole text and an
    // end of -1 runs to the end of the text. The selection is left on the last span
    // coloured; the scroll position stays where it was.
    void Colorize(CHARRANGE range, CRichEditCtrl* ctrl);
    void Colorize(long start, long end, CRichEditCtrl* ctrl);

protected:
    // Receives each coloured span [start, end) with its format. The rich edit target
    // selects the span and applies the format; other targets (a benchmark) may count.
    struct FormatSink {
        virtual void applyFormat(long start, long end, const CHARFORMATW& format) = 0;
    protected:
        ~FormatSink() = default;
    };

    void createDefaultCharFormat();
    void createDefaultKeywordList();
    void createTables();
    void deleteTables();
    void addKey(LPCWSTR word, CHARFORMATW format, int group);
    // Runs the tokenizer over text (NUL-terminated) whose first character is at offset in
    // the control.
    void colorize(LPWSTR text, CRichEditCtrl* ctrl, long offset);
    void colorize(LPCWSTR text, FormatSink& sink, long offset);

private:
    struct Shared;

    std::shared_ptr<Shared> m_shared;  // the six tables and the keyword list, shared by copies
    void* m_pSpare = nullptr;          // application data, copied by value
    CHARFORMATW m_cfComment;
    CHARFORMATW m_cfString;
    CHARFORMATW m_cfDefault;
};
