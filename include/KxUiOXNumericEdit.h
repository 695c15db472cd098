// KxUiOXNumericEdit and KxUiOXCurrencyEdit: masked edits that hold a number.
#pragma once
#include "KxUiOXEdit.h"
#include "KxUiNumberModel.h"

// The input area holds digits, one decimal separator and the group separators the control
// inserts itself. The text around the number comes from a display format, one for negative
// and one for non-negative values, in which "1.1" stands for the number: "-1.1", "(1.1)",
// "1.1 -". The value follows every keystroke.
//
// The number itself (settings, formats, parsing, normalising, the value) is a
// KxUiNumberModel; this class is the window layer over it: it maps keystrokes and caret
// positions onto the number and shows the model's text between the format's literals.
//
// A new control starts with the documented defaults (group ",", groups of 3, decimal ".",
// 2 fractional digits, formats "1.1" and "-1.1"), whatever the user's locale is. Call
// GetLocaleSettings() to take the user's locale instead; it keeps what the application set.
//
//     KxUiOXNumericEdit m_amount;
//     m_amount.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP, rect, this, IDC_AMOUNT);
//     m_amount.GetLocaleSettings();            // the user's separators and formats
//     m_amount.SetDecimalDigitCount(7);        // at most 7 integer digits
//     m_amount.SetValue(1234.5);               // "1,234.50" in an English locale
//     double d = m_amount.GetValue();
//
// Derived controls override the overridables below, or add handlers with one message-map
// entry: the keystroke filter (OnChar) is a protected handler like the masked edit's.
class KXUI_API KxUiOXNumericEdit : public KxUiOXEdit {
    DECLARE_DYNCREATE(KxUiOXNumericEdit)
public:
    KxUiOXNumericEdit();
    ~KxUiOXNumericEdit() override;

    // Settings; each reformats the present input (see KxUiNumberModel for what is refused).
    // Two equal separators are never refused: the other separator takes the old value of
    // the one being set.
    BOOL SetGroupSeparator(TCHAR chSeparator);
    TCHAR GetGroupSeparator() const { return m_number.GetGroupSeparator(); }
    BOOL SetGroupLength(int nLength);
    int GetGroupLength() const { return m_number.GetGroupLength(); }
    BOOL SetDecimalSeparator(TCHAR chSeparator);
    TCHAR GetDecimalSeparator() const { return m_number.GetDecimalSeparator(); }
    BOOL SetShowLeadingZero(BOOL bShow);
    BOOL GetShowLeadingZero() const { return m_number.GetShowLeadingZero(); }
    BOOL SetFractionalDigitCount(int nCount);
    int GetFractionalDigitCount() const { return m_number.GetFractionalDigitCount(); }
    // With this on, the fractional digit count follows the digits typed (at least 1), and a
    // digit typed into the fraction is inserted (over the lone "0" of "1.0" it replaces it).
    void setInfiniteFractionalDigitCount(bool bInfinite);
    bool getInfiniteFractionalDigitCount() const { return m_number.GetInfiniteFractionalDigitCount(); }
    // Maximum number of integer digits, -1 for no limit (beyond KxUiNumberModel's
    // kMaxIntegerDigits, the most a double holds, the first digits go).
    BOOL SetDecimalDigitCount(int nCount);
    int GetDecimalDigitCount() const { return m_number.GetDecimalDigitCount(); }
    CString GetNegativeFormat() const { return m_number.GetNegativeFormat(); }
    CString GetPositiveFormat() const { return m_number.GetPositiveFormat(); }
    // A typed full stop is taken as the decimal separator whatever that character is.
    void SetFullStopIsSeparator(BOOL bOn) { m_number.SetFullStopIsSeparator(bOn != FALSE); }
    BOOL GetFullStopIsSeparator() const { return m_number.GetFullStopIsSeparator(); }

    void SetNegativeTextColor(COLORREF clr, BOOL bRedraw = TRUE);
    COLORREF GetNegativeTextColor() const { return m_clrNegativeText; }

    // Shows a number; false for infinities, NaN and magnitudes of 1e308 or more.
    BOOL SetValue(double dValue);
    // Never infinite: the integer part holds at most 308 digits.
    double GetValue() const { return m_number.GetValue(); }
    BOOL IsNegative() const { return m_number.IsNegative(); }
    // The number behind the control (read-only: change it through the setters above).
    const KxUiNumberModel& GetNumberModel() const { return m_number; }

    // Integer digits, fractional digits, and fractional digits up to the last non-zero one.
    int GetDecimalDigitsInserted() const { return m_number.GetIntegerDigitCount(); }
    int GetFractionalDigitsInserted() const { return m_number.GetFractionalDigitsShown(); }
    int GetFractionalDigitsInsertedDifferentZero() const { return m_number.GetSignificantFractionalDigits(); }
    // Real position of a character of the number, -1 when it has none.
    int FindSymbol(TCHAR ch) const;

    // Takes the user's locale: separators, grouping, leading zero, fractional digits and
    // the formats (the currency edit its currency items), keeping what the application set.
    BOOL GetLocaleSettings() override;

    // KxUiOXEdit
    CString GetInputData() const override;
    void EmptyData(BOOL bOnlyInput = FALSE) override;
    int ValidateInput() override;
    void DeleteContents() override;
    BOOL IsInputData(int nPosition) const override;
    int DeleteRange(int& nSelectionStart, int& nSelectionEnd) override;
    int InsertAt(int nSelectionStart, TCHAR chNewChar) override;
    int SetAt(int nSelectionStart, TCHAR chNewChar) override;

    // Overridables added here, in this order.
    // Rebuilds the literals around the number from the applicable format, each part passed
    // through ExpandFormatLiteral.
    virtual BOOL UpdateMask();
    // Formats must contain "1.1"; otherwise false and nothing changes.
    virtual BOOL SetPositiveFormat(LPCTSTR lpszFormat);
    virtual BOOL SetNegativeFormat(LPCTSTR lpszFormat);
    // Sets the sign and rebuilds the literals; returns the change in the left literals' length.
    virtual int ChangeSign(BOOL bNegative);
    // Maps a typed character onto the number; the position used, or -1 when refused.
    virtual int TranslateSymbol(int nSelectionStart, TCHAR chNewChar, BOOL bOverwrite);
    // The literal text shown for a part of a format (before or after "1.1"); the base shows
    // it as it stands, the currency edit puts its name where "$" stands.
    virtual CString ExpandFormatLiteral(const CString& sFormatPart) const;

    // Creates the control as the extended list sets up its numeric cell editor: no grouping
    // (separator space), the locale's decimal separator, leading zero, no integer limit,
    // formats "1,1" with the locale's separator; shows the text with all of it selected.
    BOOL CreateCellEditor(const RECT& rect, CWnd* pParentWnd, UINT nID, int nFractionalDigitCount,
                          bool bInfiniteFractionalDigits, LPCTSTR lpszText);

protected:
    // A model of the given kind (the currency edit's defaults and locale items).
    explicit KxUiOXNumericEdit(KxUiNumberModel::Kind kind);

    // Refuses, before anything changes, a character the number can never take typed over a
    // selection (so that it cannot delete the selection); the rest as the masked edit.
    afx_msg void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    // The masked edit's colours, with the negative text colour while the value is negative.
    afx_msg HBRUSH CtlColor(CDC* pDC, UINT nCtlColor);
    DECLARE_MESSAGE_MAP()

    // Shows the model's text again after a setting changed; bChanged false (the model
    // refused the setting) changes nothing. Returns bChanged.
    BOOL Reformat(bool bChanged);
    // Sets the literals around the number directly: a "#" in them is a literal on its own
    // side, which a mask cannot always say (a right literal starting with "#").
    void SetLiterals(const CString& sBefore, const CString& sAfter);
    // Inserts or replaces through KxUiOXEdit; a change is never reported as -1.
    int Place(int nPos, TCHAR ch, bool bReplace);

    KxUiNumberModel m_number;
    COLORREF m_clrNegativeText;
};

// A numeric edit with a currency symbol: in its formats "$" stands for the currency name.
// Its defaults are the formats "$1.1" and "($1.1)"; GetLocaleSettings() reads the locale's
// currency items (the currency name is never taken from the locale).
class KXUI_API KxUiOXCurrencyEdit : public KxUiOXNumericEdit {
    DECLARE_DYNCREATE(KxUiOXCurrencyEdit)
public:
    KxUiOXCurrencyEdit();
    ~KxUiOXCurrencyEdit() override;

    // False for a null or empty name.
    BOOL SetCurrencyName(LPCTSTR lpszName);
    CString GetCurrencyName() const { return m_sCurrencyName; }

    // The currency name where the format has "$".
    CString ExpandFormatLiteral(const CString& sFormatPart) const override;

protected:
    CString m_sCurrencyName;
};

// Dialog data exchange of a numeric edit's value: the control with the id must be a
// KxUiOXNumericEdit (or derived) attached to its window; otherwise nothing is exchanged.
// The int form rounds to the nearest integer within the range of int.
KXUI_API void AFXAPI DDX_KXUIOXNumericEdit(CDataExchange* pDX, int nIDC, double& value);
KXUI_API void AFXAPI DDX_KXUIOXNumericEdit(CDataExchange* pDX, int nIDC, float& value);
KXUI_API void AFXAPI DDX_KXUIOXNumericEdit(CDataExchange* pDX, int nIDC, int& value);
