// KxUiXComboBoxEdit: the editor of an editable combo cell of the extended list.
//
// A drop-down combo box (CBS_DROPDOWN) over the cell: the user types a text or picks an entry.
// The list filters the keys of its edit part: Return, Up and Down commit (XM_VK_RETURN to the
// list, wParam the key, lParam 1), Escape cancels (XM_VK_ESCAPE), focus leaving the combo for
// another window commits (wParam 0).
//
//     KxUiXComboBoxEdit* pCombo = list.createComboBoxEdit(row, col, rect);  // the list owns it
//     pCombo->setItems(items, 8);
//     pCombo->SetWindowText(L"typed");
#pragma once
#include "KxUiDef.h"
#include <afxcoll.h>
#include <afxwin.h>

class KXUI_API KxUiXComboBoxEdit : public CComboBox {
    DECLARE_DYNAMIC(KxUiXComboBoxEdit)
public:
    KxUiXComboBoxEdit();
    ~KxUiXComboBoxEdit() override;

    // Replaces the entries; the drop-down shows nLines of them (at least one).
    void setItems(const CStringArray& items, int nLines);
    // The combo's edit part, or null.
    HWND getEditPart() const;

protected:
    DECLARE_MESSAGE_MAP()
};
