// Syntax colouring of source text held in a rich edit control.
#pragma once
#include "KxUiDef.h"
#include <richedit.h>

class CRichEditCtrl;

// Colours keywords, string and character literals and comments of a C/C++-like text in a
// rich edit control. Copies share the character tables and the keyword list with their
// source (reference counted), so a copy sees keywords added through the original.
class KXUI_API KxUiSyntaxColorizer {
public:
    KxUiSyntaxColorizer();
    KxUiSyntaxColorizer(const KxUiSyntaxColorizer& other);
    KxUiSyntaxColorizer& operator=(const KxUiSyntaxColorizer& other);
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
    // end of -1 runs to the end of the text.
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
    struct Keyword;
    struct Shared;
    void release();

    Shared* m_pShared;      // the six tables and the keyword list, shared by copies
    void* m_pSpare;         // application data, copied by value
    CHARFORMATW m_cfComment;
    CHARFORMATW m_cfString;
    CHARFORMATW m_cfDefault;
};
