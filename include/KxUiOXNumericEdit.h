// KxUiOXNumericEdit and KxUiOXCurrencyEdit: masked edits that hold a number.
#pragma once
#include "KxUiOXEdit.h"

// The input area holds digits, one decimal separator and the group separators the control
// inserts itself. The text around the number comes from a display format, one for negative
// and one for non-negative values, in which "1.1" stands for the number: "-1.1", "(1.1)",
// "1.1 -". The value follows every keystroke.
class KXUI_API KxUiOXNumericEdit : public KxUiOXEdit {
    DECLARE_DYNCREATE(KxUiOXNumericEdit)
public:
    KxUiOXNumericEdit();
    ~KxUiOXNumericEdit() override;

    // Settings; each reformats the present input. Refused (false) are separators that are
    // digits, "-", line breaks or equal to the other separator, and negative counts (the
    // decimal digit count takes -1 for "no limit"). Counts above 100 are refused too.
    BOOL SetGroupSeparator(TCHAR chSeparator);
    TCHAR GetGroupSeparator() const { return m_chGroupSeparator; }
    BOOL SetGroupLength(int nLength);
    int GetGroupLength() const { return m_nGroupLength; }
    BOOL SetDecimalSeparator(TCHAR chSeparator);
    TCHAR GetDecimalSeparator() const { return m_chDecimalSeparator; }
    BOOL SetShowLeadingZero(BOOL bShow);
    BOOL GetShowLeadingZero() const { return m_bShowLeadingZero; }
    BOOL SetFractionalDigitCount(int nCount);
    int GetFractionalDigitCount() const { return m_nFractionalDigitCount; }
    // With this on, one spare fractional position is always offered after the last
    // non-zero fractional digit.
    void setInfiniteFractionalDigitCount(bool bInfinite);
    bool getInfiniteFractionalDigitCount() const { return m_bInfiniteFractionalDigitCount; }
    // Maximum number of integer digits, -1 for no limit.
    BOOL SetDecimalDigitCount(int nCount);
    int GetDecimalDigitCount() const { return m_nDecimalDigitCount; }
    CString GetNegativeFormat() const { return m_sNegativeFormat; }
    CString GetPositiveFormat() const { return m_sPositiveFormat; }
    // A typed full stop is taken as the decimal separator whatever that character is.
    void SetFullStopIsSeparator(BOOL bOn) { m_bFullStopIsSeparator = bOn != FALSE; }
    BOOL GetFullStopIsSeparator() const { return m_bFullStopIsSeparator; }

    void SetNegativeTextColor(COLORREF clr, BOOL bRedraw = TRUE);
    COLORREF GetNegativeTextColor() const { return m_clrNegativeText; }

    // Shows a number; false for infinities and NaN.
    BOOL SetValue(double dValue);
    double GetValue() const { return m_dValue; }
    BOOL IsNegative() const { return m_bNegative; }

    // Integer digits, fractional digits, and fractional digits up to the last non-zero one.
    int GetDecimalDigitsInserted() const;
    int GetFractionalDigitsInserted() const;
    int GetFractionalDigitsInsertedDifferentZero() const;
    // Real position of a character of the number, -1 when it has none.
    int FindSymbol(TCHAR ch) const;

    // KxUiOXEdit
    CString GetInputData() const override;
    void EmptyData(BOOL bOnlyInput = FALSE) override;
    BOOL GetLocaleSettings() override;
    int ValidateInput() override;
    void DeleteContents() override;
    BOOL IsInputData(int nPosition) const override;
    int DeleteRange(int& nSelectionStart, int& nSelectionEnd) override;
    int InsertAt(int nSelectionStart, TCHAR chNewChar) override;
    int SetAt(int nSelectionStart, TCHAR chNewChar) override;

    // Overridables added here, in this order.
    // Rebuilds the literals around the number from the applicable format.
    virtual BOOL UpdateMask();
    // Formats must contain "1.1"; otherwise false and nothing changes.
    virtual BOOL SetPositiveFormat(LPCTSTR lpszFormat);
    virtual BOOL SetNegativeFormat(LPCTSTR lpszFormat);
    // Sets the sign and rebuilds the literals; returns the change in the left literals' length.
    virtual int ChangeSign(BOOL bNegative);
    // Maps a typed character onto the number; the position used, or -1 when refused.
    virtual int TranslateSymbol(int nSelectionStart, TCHAR chNewChar, BOOL bOverwrite);

    // Creates the control as the extended list sets up its numeric cell editor: no grouping
    // (separator space), the locale's decimal separator, leading zero, no integer limit,
    // formats "1,1" with the locale's separator; shows the text with all of it selected.
    BOOL CreateCellEditor(const RECT& rect, CWnd* pParentWnd, UINT nID, int nFractionalDigitCount,
                          bool bInfiniteFractionalDigits, LPCTSTR lpszText);

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

    // Settings as last read from the locale (or the defaults): a setting is only replaced
    // by a new locale value while the application has left it at the old one.
    struct LocaleSnapshot {
        TCHAR chGroupSeparator;
        int nGroupLength;
        TCHAR chDecimalSeparator;
        int bShowLeadingZero;
        int nFractionalDigitCount;
        CString sNegativeFormat;
        CString sPositiveFormat;
    };
    // A format chosen by a locale number from a table (no table: none).
    struct LocaleFormats {
        LCTYPE type;
        const TCHAR* const* table;
        int count;
    };
    static CString LocaleFormat(const LocaleFormats& formats, const CString& sSnapshot);
    // Reads the locale items given (decimal, group, leading zero, grouping, digits) and the
    // two formats into the settings.
    void ImportLocale(const LCTYPE types[5], const LocaleFormats& negative, const LocaleFormats& positive);
    // Sets the literals from the split format (prefix and suffix around "1.1").
    void SetLiterals(const CString& sBefore, const CString& sAfter);
    // The format that applies to the present sign.
    const CString& CurrentFormat() const { return m_bNegative ? m_sNegativeFormat : m_sPositiveFormat; }
    // Inserts or replaces through KxUiOXEdit; a change is never reported as -1.
    int Place(int nPos, TCHAR ch, bool bReplace);
    // Normalises the input again after a setting changed; the decimal separator in the
    // input is still chOldDecimal.
    void Reformat(TCHAR chOldDecimal);

    TCHAR m_chGroupSeparator;
    int m_nGroupLength;
    TCHAR m_chDecimalSeparator;
    int m_bShowLeadingZero;
    int m_nFractionalDigitCount;
    bool m_bInfiniteFractionalDigitCount;
    int m_nDecimalDigitCount;
    CString m_sNegativeFormat;
    CString m_sPositiveFormat;
    COLORREF m_clrNegativeText;
    double m_dValue;
    int m_bNegative;
    int m_bFullStopIsSeparator;
    LocaleSnapshot m_locale;
};

// A numeric edit with a currency symbol: in its formats "$" stands for the currency name.
class KXUI_API KxUiOXCurrencyEdit : public KxUiOXNumericEdit {
    DECLARE_DYNCREATE(KxUiOXCurrencyEdit)
public:
    KxUiOXCurrencyEdit();
    ~KxUiOXCurrencyEdit() override;

    // False for a null or empty name.
    BOOL SetCurrencyName(LPCTSTR lpszName);
    CString GetCurrencyName() const { return m_sCurrencyName; }

    BOOL GetLocaleSettings() override;
    BOOL UpdateMask() override;

protected:
    CString m_sCurrencyName;
    CString m_sLocaleCurrencyName;
};

// Dialog data exchange of a numeric edit's value: the control with the id must be a
// KxUiOXNumericEdit (or derived) attached to its window; otherwise nothing is exchanged.
// The int form rounds to the nearest integer within the range of int.
KXUI_API void AFXAPI DDX_KXUIOXNumericEdit(CDataExchange* pDX, int nIDC, double& value);
KXUI_API void AFXAPI DDX_KXUIOXNumericEdit(CDataExchange* pDX, int nIDC, float& value);
KXUI_API void AFXAPI DDX_KXUIOXNumericEdit(CDataExchange* pDX, int nIDC, int& value);
