// The editor of an editable combo cell of the extended list.
#include "KxUiXComboBoxEdit.h"
#include <algorithm>

IMPLEMENT_DYNAMIC(KxUiXComboBoxEdit, CComboBox)

BEGIN_MESSAGE_MAP(KxUiXComboBoxEdit, CComboBox)
END_MESSAGE_MAP()

KxUiXComboBoxEdit::KxUiXComboBoxEdit() = default;

KxUiXComboBoxEdit::~KxUiXComboBoxEdit()
{
    if (m_hWnd != nullptr)
        DestroyWindow();
}

void KxUiXComboBoxEdit::setItems(const CStringArray& items, int nLines)
{
    ResetContent();
    for (INT_PTR i = 0; i < items.GetSize(); ++i)
        AddString(items[i]);
    // A CBS_NOINTEGRALHEIGHT combo drops down to its window's height: make room for nLines.
    int nShown = std::max(1, nLines);
    int cyEdit = GetItemHeight(-1) + 6;
    int cyItem = std::max(1, GetItemHeight(0));
    CRect rc;
    GetWindowRect(&rc);
    SetWindowPos(nullptr, 0, 0, rc.Width(), cyEdit + nShown * cyItem + 2, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

HWND KxUiXComboBoxEdit::getEditPart() const
{
    COMBOBOXINFO info = {};
    info.cbSize = sizeof(info);
    if (!::GetComboBoxInfo(m_hWnd, &info))
        return nullptr;
    return info.hwndItem;
}
