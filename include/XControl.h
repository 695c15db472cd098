// XControl: what a cell of the extended list carries beside its text.
//
// A cell's kind is a type code (XControl::Type). Kinds that need parameters keep them in a
// definition object derived from TagDefine (the check state of a check box, the items of a
// combo box, the digits of a numeric edit). The cell owns its definition; copying a cell clones
// it. The list control keeps one TafFcts triple per type code: the functions that open the
// cell's editor, write the editor's value back and paint the cell.
//
// The cells talk to the list and to its parent through the registered messages declared here,
// obtained when the library is loaded.
//
//     XControl::DefineComboBox* pDef = new XControl::DefineComboBox;
//     pDef->m_items.Add(L"Open");
//     XControl::TagDefine* pCopy = pDef->clone();   // an independent DefineComboBox
#pragma once
#include "KxUiDef.h"
#include <afxcoll.h>

class CDC;
class KxUiXListCtrl;

namespace XControl {

// Cell type codes.
enum Type {
    TypeText = 0,            // plain text, no editor
    TypeEdit = 1,            // text edit
    TypeEditNum = 2,         // numeric edit (DefineEditNum)
    TypeOxEditNum = 3,       // masked numeric edit (DefineOxEditNum)
    TypeComboBox = 4,        // drop-down list (DefineComboBox)
    TypeComboBoxEdit = 5,    // editable combo (DefineComboBoxEdit)
    TypeReserved6 = 6,       // reserved, compared as a number
    TypeReserved7 = 7,       // reserved, compared as a number
    TypeCheckBox = 8,        // check box (DefineRadioButton)
    TypeCheckBoxBitmap = 9,  // check box drawn from two images (DefineRadioButton)
    TypeBitmap = 10,         // image chosen by a state (DefineRadioButton)
    TypeColorDialog = 11,    // colour chosen in the colour dialog (DefineColorDialog)
    TypeReserved12 = 12,     // reserved, compared by state
    TypeRadioV = 13,         // radio button, family = the column (DefineRadioButton)
    TypeRadioH = 14,         // radio button, family = adjacent cells of the row (DefineRadioButton)
    TypeButton = 15,         // push button, the caption is the cell text
};

// Root of the per-kind parameters. Concrete kinds copy their own fields in assign.
struct KXUI_API TagDefine {
    TagDefine() = default;
    TagDefine(const TagDefine&) = default;
    TagDefine& operator=(const TagDefine&) = default;
    virtual ~TagDefine();
    // Copies the fields of src, which is of the same concrete kind (other kinds: nothing).
    virtual void assign(const TagDefine& src) = 0;
    // A new object of the same concrete kind holding the same fields; the caller owns it.
    virtual TagDefine* clone() const = 0;
};

// Check state of kinds 8, 9, 10, 13, 14: 0, 1, or -1 (no state, a click does nothing).
struct KXUI_API DefineRadioButton : public TagDefine {
    explicit DefineRadioButton(signed char cState = 0) : m_cState(cState) {}
    void assign(const TagDefine& src) override;
    TagDefine* clone() const override;
    signed char m_cState;  // the state's low byte
};

// Items of a drop-down list cell.
struct KXUI_API DefineComboBox : public TagDefine {
    DefineComboBox() : m_nLines(10), m_nSel(-1) {}
    DefineComboBox(const DefineComboBox& src);
    DefineComboBox& operator=(const DefineComboBox& src);
    void assign(const TagDefine& src) override;
    TagDefine* clone() const override;
    CStringArray m_items;  // the entries
    int m_nLines;          // lines shown when the list drops down
    int m_nSel;            // selected entry, -1 for none
};

// Items and edited text of an editable combo cell.
struct KXUI_API DefineComboBoxEdit : public DefineComboBox {
    DefineComboBoxEdit() = default;
    void assign(const TagDefine& src) override;
    TagDefine* clone() const override;
    CString m_strText;  // the text as edited
};

// Numeric edit cell.
struct KXUI_API DefineEditNum : public TagDefine {
    explicit DefineEditNum(bool bIntegerOnly = false) : m_bIntegerOnly(bIntegerOnly) {}
    void assign(const TagDefine& src) override;
    TagDefine* clone() const override;
    bool m_bIntegerOnly;  // no fractional part
};

// Masked numeric edit cell.
struct KXUI_API DefineOxEditNum : public TagDefine {
    DefineOxEditNum(bool bInfinite = false, UINT nDigits = 0)
        : m_bInfiniteFractionalDigit(bInfinite), m_nFractionalDigitCount(nDigits) {}
    void assign(const TagDefine& src) override;
    TagDefine* clone() const override;
    bool m_bInfiniteFractionalDigit;  // any number of fractional digits
    UINT m_nFractionalDigitCount;     // fractional digits otherwise
};

// Colour dialog cell (no parameters: the colour is the cell's background).
struct KXUI_API DefineColorDialog : public TagDefine {
    void assign(const TagDefine& src) override;
    TagDefine* clone() const override;
};

// Opens the cell's editor (or performs its click action) for the selected rows of the same type.
typedef void (*FctCreate)(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol, CString strText);
// Writes the open editor's value back into the cell of every row in rows.
typedef void (*FctEndEdit)(KxUiXListCtrl* pList, CUIntArray& rows, int nRow, int nCol);
// Paints the cell.
typedef void (*FctDraw)(KxUiXListCtrl* pList, int nRow, int nCol, CDC* pDC, COLORREF clrText, COLORREF clrBk,
                        const RECT& rect);

// The three handlers of one type code; a null member means none.
struct TafFcts {
    FctCreate create;
    FctEndEdit endEdit;
    FctDraw draw;
};

// Registered messages (see the list control for their parameters). The variables of three carry
// "_2" while their registered texts do not.
extern KXUI_API UINT XM_BEGINEDIT;           // "XM_BEGINEDIT": a write-back starts
extern KXUI_API UINT XM_ENDEDIT;             // "XM_ENDEDIT": the write-back is done
extern KXUI_API UINT XM_SELECTION_2;         // "XM_SELECTION": an editor changed a cell
extern KXUI_API UINT XM_CHECKBOX_CLICKED_2;  // "XM_CHECKBOX_CLICKED": a check or radio cell changed
extern KXUI_API UINT XM_BOUTONDOWN_2;        // "XM_BOUTONDOWN": a push-button cell was pressed
extern KXUI_API UINT XM_VK_RETURN;           // "XM_VK_RETURN": an editor asks to close (lParam 1: commit)
extern KXUI_API UINT XM_VK_ESCAPE;           // "XM_VK_ESCAPE": an editor asks to close without commit
extern KXUI_API UINT XM_SETFOCUS;            // "XM_SETFOCUS": the list takes the focus back
extern KXUI_API UINT XM_CREATE;              // "XM_CREATE": open the editor of cell (wParam, lParam)

}  // namespace XControl

// Sent by the list's header while a divider is dragged: the list closes its editor.
extern KXUI_API UINT WM_RESIZE_COLUMN_XLISTCTRL;
// Sent by a header that shows or hides columns (wParam: non-zero when shown).
extern KXUI_API UINT WM_SETVISIBLE_COLUMN_XLISTCTRL;
