// XData: the cells and rows of the extended list, independent of any window.
//
// SUBITEM is one cell: its type code (XControl::Type), its definition (owned, cloned on copy), its
// text, tooltip, colours, bold flag and the two image indexes of the image kinds. Every setter
// takes a final bool, define: true builds a new definition from the arguments, false keeps the
// cell's present definition and only sets the type and the text (so SetCheckbox(1, false) on an
// unchecked cell leaves it unchecked; callers that change a value pass true).
//
// SUBITEMARRAY is one row: the cells, one per column, plus the row's saved list-view state bits,
// its application value and its enabled flag.
//
//     XData::SUBITEMARRAY row;
//     row.SetSize(2);
//     row[0].SetItemText(L"Bolts", true);
//     CStringArray states;  states.Add(L"Open");  states.Add(L"Shipped");
//     row[1].SetComboBox(states, L"Shipped", true);     // selection 1, text "Shipped"
//     int order = row.compareTo(other, 1, true);        // -1, 0 or 1
#pragma once
#include "XControl.h"
#include "XUtil.h"

namespace XData {

struct KXUI_API SUBITEM {
    SUBITEM();
    SUBITEM(const SUBITEM& src);
    SUBITEM& operator=(const SUBITEM& src);
    ~SUBITEM();

    // Stores the type, the definition (deleting a different previous one) and the text; 1.
    int setControl(const CString& strText, int nType, XControl::TagDefine* pDefine);
    // Replaces the definition, deleting the previous one when it is another object.
    void setDefineControl(XControl::TagDefine* pDefine);

    // Type 0; define true drops the definition.
    int SetItemText(const CString& strText, bool bDefine);
    // Type 1; no definition.
    int SetEditText(const CString& strText, bool bDefine);
    // Type 2 with a DefineEditNum.
    int SetEditNum(const CString& strText, bool bIntegerOnly, bool bDefine);
    // Type 2, integer only, the value as "%d".
    int SetEditNum(int nValue, bool bDefine);
    // Type 2, not integer only, the value as the platform's variant conversion writes it.
    int SetEditNum(double dValue, bool bDefine);
    // Type 3 with a DefineOxEditNum.
    int SetOxEditNum(const CString& strText, bool bInfinite, UINT nFractionalDigits, bool bDefine);
    // Type 4; a selection outside the items becomes -1; the text is the selected item's.
    int SetComboBox(const CStringArray& items, int nLines, int nSel, bool bDefine);
    // Type 4; selects the first item equal to strText (-1 when none); lines = item count.
    int SetComboBox(const CStringArray& items, const CString& strText, bool bDefine);
    // Type 5 with the text of items[nSel]; a bad nSel raises the invalid-argument exception.
    int SetComboBoxEdit(const CStringArray& items, int nSel, bool bDefine);
    // Type 5 with a DefineComboBoxEdit (selection -1) holding the text.
    int SetComboBoxEdit(const CStringArray& items, int nLines, const CString& strText, bool bDefine);
    // Type 8; the state's low byte; empty text.
    int SetCheckbox(int nState, bool bDefine);
    // Type 9; the image indexes are stored whatever define says.
    int SetCheckboxBitmap(int nState, int nBitmap1, int nBitmap2, bool bDefine);
    // Type 10; as SetCheckboxBitmap.
    int SetBitmap(int nState, int nBitmap1, int nBitmap2, bool bDefine);
    // Type 13 (vertical radio family).
    int SetRadioButtonV(int nState, bool bDefine);
    // Type 14 (horizontal radio family).
    int SetRadioButtonH(int nState, bool bDefine);
    // Type 11.
    int SetColorDialog(bool bDefine);
    // Type 15; the caption is the text; no definition.
    int SetButton(const CString& strCaption, bool bDefine);

    const CString& GetItemText() const { return m_strText; }
    // The text an editor starts from: the check state as "%d" for types 8, 9 and 10.
    CString getText() const;
    // The check state of types 8, 9, 13 and 14; -1 otherwise or without a definition.
    int GetCheckbox() const;
    // The selection of a type-4 cell; -1 otherwise.
    int GetInitialComboSel() const;
    // The text with "," read as "." by wcstod (0 when not a number).
    double GetEditNumValue() const;
    // -1, 0 or 1: as numbers, dates or texts, by the two cells' kinds (see the list's sort).
    int compareTo(const SUBITEM& other) const;
    // The text and class this cell is compared by.
    XUtil::TextCompareType getCompareText(CString& strText) const;

    bool m_bEnabled;                   // the cell takes input
    int m_nType;                       // XControl::Type
    XControl::TagDefine* m_pDefine;    // owned; may be null
    CString m_strText;                 // the text (numbers as text, a combo's selected entry)
    CString m_strToolTip;              // tooltip shown by the list
    COLORREF m_clrText;                // COLOR_WINDOWTEXT when the cell was made
    COLORREF m_clrBk;                  // COLOR_WINDOW when the cell was made
    bool m_bBold;                      // drawn in bold
    int m_nBitmap1;                    // image of the first state (types 9, 10), -1 none
    int m_nBitmap2;                    // image of the second state, -1 none

private:
    // With define true installs pDefine (or null when it could not be allocated), else deletes it
    // and keeps the present definition; then stores type and text.
    int define(const CString& strText, int nType, XControl::TagDefine* pDefine, bool bDefine);
    int setState(int nType, int nState, bool bDefine);
};

struct KXUI_API SUBITEMARRAY : public CArray<SUBITEM, SUBITEM&> {
    SUBITEMARRAY() : m_nState(0), m_nItemValue(0), m_bEnabled(true) {}
    SUBITEMARRAY(const SUBITEMARRAY& src);
    // Copies the three fields, then the cells (each definition cloned).
    SUBITEMARRAY& operator=(const SUBITEMARRAY& src);
    ~SUBITEMARRAY() override;

    // The cells at nCol compared, sign reversed when bAscending is false; a column outside either
    // row raises the invalid-argument exception.
    XUtil::CompareResult compareTo(const SUBITEMARRAY& other, int nCol, bool bAscending) const;
    bool getEnabled() const { return m_bEnabled; }
    void setEnabled(bool bEnabled) { m_bEnabled = bEnabled; }

    UINT m_nState;             // list-view state bits given at insertion or saved by a sort
    DWORD_PTR m_nItemValue;    // the application's value of the row
    bool m_bEnabled;           // the row takes input
};

}  // namespace XData
