// Cell definitions of the extended list and its registered messages.
#include "XControl.h"
#include <new>

namespace XControl {

// Obtained while the library loads, before any window can send them.
UINT XM_BEGINEDIT = ::RegisterWindowMessageW(L"XM_BEGINEDIT");
UINT XM_ENDEDIT = ::RegisterWindowMessageW(L"XM_ENDEDIT");
UINT XM_SELECTION_2 = ::RegisterWindowMessageW(L"XM_SELECTION");
UINT XM_CHECKBOX_CLICKED_2 = ::RegisterWindowMessageW(L"XM_CHECKBOX_CLICKED");
UINT XM_BOUTONDOWN_2 = ::RegisterWindowMessageW(L"XM_BOUTONDOWN");
UINT XM_VK_RETURN = ::RegisterWindowMessageW(L"XM_VK_RETURN");
UINT XM_VK_ESCAPE = ::RegisterWindowMessageW(L"XM_VK_ESCAPE");
UINT XM_SETFOCUS = ::RegisterWindowMessageW(L"XM_SETFOCUS");
UINT XM_CREATE = ::RegisterWindowMessageW(L"XM_CREATE");

TagDefine::~TagDefine() = default;

// clone builds a default object of the concrete kind and assigns into it, so a kind that adds
// fields only has to extend assign.
template <class T>
static TagDefine* cloneOf(const T& src)
{
    T* p = new (std::nothrow) T;
    if (p != nullptr)
        p->assign(src);
    return p;
}

void DefineRadioButton::assign(const TagDefine& src)
{
    if (const DefineRadioButton* p = dynamic_cast<const DefineRadioButton*>(&src))
        m_cState = p->m_cState;
}

TagDefine* DefineRadioButton::clone() const
{
    return cloneOf(*this);
}

DefineComboBox::DefineComboBox(const DefineComboBox& src) : TagDefine(src), m_nLines(src.m_nLines), m_nSel(src.m_nSel)
{
    m_items.Copy(src.m_items);
}

DefineComboBox& DefineComboBox::operator=(const DefineComboBox& src)
{
    if (this != &src) {
        m_items.Copy(src.m_items);
        m_nLines = src.m_nLines;
        m_nSel = src.m_nSel;
    }
    return *this;
}

void DefineComboBox::assign(const TagDefine& src)
{
    if (const DefineComboBox* p = dynamic_cast<const DefineComboBox*>(&src))
        DefineComboBox::operator=(*p);
}

TagDefine* DefineComboBox::clone() const
{
    return cloneOf(*this);
}

void DefineComboBoxEdit::assign(const TagDefine& src)
{
    DefineComboBox::assign(src);
    if (const DefineComboBoxEdit* p = dynamic_cast<const DefineComboBoxEdit*>(&src))
        m_strText = p->m_strText;
}

TagDefine* DefineComboBoxEdit::clone() const
{
    return cloneOf(*this);
}

void DefineEditNum::assign(const TagDefine& src)
{
    if (const DefineEditNum* p = dynamic_cast<const DefineEditNum*>(&src))
        m_bIntegerOnly = p->m_bIntegerOnly;
}

TagDefine* DefineEditNum::clone() const
{
    return cloneOf(*this);
}

void DefineOxEditNum::assign(const TagDefine& src)
{
    if (const DefineOxEditNum* p = dynamic_cast<const DefineOxEditNum*>(&src)) {
        m_bInfiniteFractionalDigit = p->m_bInfiniteFractionalDigit;
        m_nFractionalDigitCount = p->m_nFractionalDigitCount;
    }
}

TagDefine* DefineOxEditNum::clone() const
{
    return cloneOf(*this);
}

void DefineColorDialog::assign(const TagDefine&) {}

TagDefine* DefineColorDialog::clone() const
{
    return cloneOf(*this);
}

}  // namespace XControl

UINT WM_RESIZE_COLUMN_XLISTCTRL = ::RegisterWindowMessageW(L"WM_RESIZE_COLUMN_XLISTCTRL");
UINT WM_SETVISIBLE_COLUMN_XLISTCTRL = ::RegisterWindowMessageW(L"WM_SETVISIBLE_COLUMN_XLISTCTRL");
