// KxUiOXEdit: a single-field edit whose text is left literals, a free input area and
// right literals, described by a mask.
#pragma once
#include "KxUiDef.h"
#include <afxwin.h>
#include <afxcmn.h>

// Mask language: "#" marks the input area; "##" is a literal "#"; every other character is
// a literal. Literals before the input area are the left literals, all later ones the right
// literals. "(#)" gives "(" and ")", "##-#" gives the left literals "#-", "# kg" the right
// literals " kg".
//
// Positions: a real position indexes the window text, a logical position the input data.
// With L left literals and N input characters the caret may stand on L..L+N.
//
// Usage:
//     KxUiOXEdit m_phone;
//     m_phone.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP, rect, this, IDC_PHONE);
//     m_phone.SetMask(_T("+44 (0) #"));        // "+44 (0) " stays, the user types after it
//     m_phone.SetInputData(_T("20 7946 0958"));
//     CString typed = m_phone.GetInputData(); // without the literals
//
// A derived control filters keystrokes with one message-map entry and leaves the literals,
// caret and selection to this class:
//     BEGIN_MESSAGE_MAP(CPhoneEdit, KxUiOXEdit)
//         ON_WM_CHAR()
//     END_MESSAGE_MAP()
//     void CPhoneEdit::OnChar(UINT nChar, UINT nRepCnt, UINT nFlags)
//     {
//         if (nChar >= 0x20 && !_istdigit(nChar) && nChar != _T(' '))
//             ValidationError();                       // refused: beeps
//         else
//             KxUiOXEdit::OnChar(nChar, nRepCnt, nFlags);
//     }
class KXUI_API KxUiOXEdit : public CEdit {
    DECLARE_DYNCREATE(KxUiOXEdit)
public:
    KxUiOXEdit();
    ~KxUiOXEdit() override;

    // Creates the native edit and initialises the control.
    BOOL Create(DWORD dwStyle, const RECT& rect, CWnd* pParentWnd, UINT nID);

    // Parses and stores a mask; false (previous mask kept) when it has no input area.
    BOOL SetMask(LPCTSTR lpszMask);
    CString GetMask() const { return m_sMask; }

    // Left literals + input data + right literals: what the window shows.
    CString GetFormattedText() const;
    CString GetLeftLiterals() const { return m_arrLeftLiterals; }
    CString GetRightLiterals() const { return m_arrRightLiterals; }

    // 1 inserts typed characters, 0 overwrites.
    void SetInsertMode(int nInsertMode) { m_nInsertMode = nInsertMode != 0; }
    int GetInsertMode() const { return m_nInsertMode; }

    // Real position to logical position and back; -1 outside the input area.
    int RPtoLP(int nRealPos) const;
    int LPtoRP(int nLogicalPos) const;

    void SetTextColor(COLORREF clrText, BOOL bRedraw = TRUE);
    COLORREF GetTextColor() const { return m_clrText; }
    void SetBkColor(COLORREF clrBack, BOOL bRedraw = TRUE);
    COLORREF GetBkColor() const { return m_clrBack; }

    // The tooltip shows when the mouse rests on the control; an empty text removes it.
    BOOL SetToolTipText(LPCTSTR lpszText);
    CString GetToolTipText() const { return m_sToolTipText; }
    CToolTipCtrl& GetToolTip() { return m_toolTip; }

    // When on, focus keeps a whole-text selection instead of placing the caret at the input.
    void SetHighlightOnSetFocus(BOOL bHighlight) { m_bHighlightOnSetFocus = bHighlight != FALSE; }
    BOOL GetHighlightOnSetFocus() const { return m_bHighlightOnSetFocus; }

    // Overridables, in this order (the numeric edits override them).
    virtual CString GetInputData() const;
    // Places text at a logical position (inserting or overwriting by the insert mode),
    // validates and refreshes; false for a position outside 0..N.
    virtual BOOL SetInputData(LPCTSTR lpszInputData, int nBeginPos = 0);
    // true empties the input; false empties literals too (the mask is lost).
    virtual void EmptyData(BOOL bOnlyInput = FALSE);
    // Reports a refused keystroke.
    virtual void ValidationError();
    virtual BOOL GetLocaleSettings();
    // Initialisation after creation or subclassing: the present window text becomes the input.
    virtual void InitControl();
    // Called after every change of the input data; returns the caret shift it caused.
    virtual int ValidateInput();
    virtual void DeleteContents();
    // A typed character lies at the real position.
    virtual BOOL IsInputData(int nPosition) const;
    // The caret may stand at the real position.
    virtual BOOL IsInputPosition(int nPosition) const;
    // Removes the input characters of [nStart, nEnd); zero when nothing could be removed.
    // Derived edits may move the range; nStart is where the caret belongs afterwards.
    virtual int DeleteRange(int& nSelectionStart, int& nSelectionEnd);
    // Insert or replace one character at a real position; the result is the position used
    // plus the caret shift, -1 when refused.
    virtual int InsertAt(int nSelectionStart, TCHAR chNewChar);
    virtual int SetAt(int nSelectionStart, TCHAR chNewChar);
    virtual int GetNextInputLocation(int nSelectionStart);
    virtual int GetPreviousInputLocation(int nSelectionStart);

protected:
    void PreSubclassWindow() override;

    // Message handlers. A derived control adds or overrides one with one map entry; each
    // falls back to the native edit (Default) where the control has nothing to add.
    // Typed characters go into the input area through InsertAt and SetAt.
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    // Delete, caret keys kept in the input area, Insert toggling the mode.
    afx_msg void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    afx_msg void OnLButtonDown(UINT nFlags, CPoint point);
    afx_msg void OnSetFocus(CWnd* pOldWnd);
    // A text set from outside becomes the input; the control's own text goes through.
    afx_msg LRESULT OnSetText(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnSetFont(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnCut(WPARAM wParam, LPARAM lParam);
    afx_msg LRESULT OnClear(WPARAM wParam, LPARAM lParam);
    // Paste and EM_REPLACESEL: the native edit inserts, then the input is read back.
    afx_msg LRESULT OnPaste(WPARAM wParam, LPARAM lParam);
    // WM_UNDO and EM_UNDO are refused: the native undo would restore a text the input
    // data knows nothing of.
    afx_msg LRESULT OnUndo(WPARAM wParam, LPARAM lParam);
    // The native edit's EN_UPDATE and EN_CHANGE while the control writes its own text are
    // swallowed; the control sends its own once the text is in place.
    afx_msg BOOL OnNativeUpdate();
    // Text and background colours (a disabled control keeps the system's look).
    afx_msg HBRUSH CtlColor(CDC* pDC, UINT nCtlColor);
    DECLARE_MESSAGE_MAP()

    // Writes the formatted text into the window; a caret of -1 leaves the caret alone.
    void Update(int nCaret = -1);
    // Splits a mask into literals without validating; false when it has no input area.
    BOOL ParseMask(LPCTSTR lpszMask);
    // Removes the characters of the input area within [nStart, nEnd); true when any went.
    BOOL RemoveInput(int nStart, int nEnd);
    void SetCaret(int nPos);
    void GetSelection(int& nStart, int& nEnd) const;
    // Keeps a copy of the font given to the control.
    void SaveFont(HFONT hFont);

    CFont m_font;
    COLORREF m_clrText;
    COLORREF m_clrBack;
    CString m_sMask;
    CString m_arrLeftLiterals;
    CString m_arrRightLiterals;
    CString m_arrInputData;
    int m_nInsertMode;
    CString m_sToolTipText;
    CToolTipCtrl m_toolTip;
    int m_nUpdateDepth;
    int m_bNotifyChange;
    int m_bHighlightOnSetFocus;
    int m_bSettingFont;

private:
    // The text the window shows now.
    CString ShownText() const;
    // The native cut or clear, then the same characters out of the input data.
    LRESULT CutOrClear(bool bCut);
    void NotifyParent(UINT nCode);
    int DeleteMoving(int nStart, int nEnd, int nStep, int nLimit);
    void AttachToolTip();

    CBrush m_brBack;
    bool m_bCreating = false;
    bool m_bOwnNotify = false;
};
