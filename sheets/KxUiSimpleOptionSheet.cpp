// KxUiSimpleOptionSheet: the chooser picked by number.
#include "KxUiSimpleOptionSheet.h"

IMPLEMENT_DYNAMIC(KxUiSimpleOptionSheet, KxUiOptionSheet)

KxUiSimpleOptionSheet::KxUiSimpleOptionSheet() : m_nListType(noList) {}

KxUiSimpleOptionSheet::KxUiSimpleOptionSheet(LPCTSTR lpszTitle, CWnd* pParent, UINT nSelectPage)
    : KxUiOptionSheet(lpszTitle, pParent, nSelectPage), m_nListType(noList)
{
}

KxUiSimpleOptionSheet::KxUiSimpleOptionSheet(UINT nIDTitle, CWnd* pParent, UINT nSelectPage)
    : KxUiOptionSheet(nIDTitle, pParent, nSelectPage), m_nListType(noList)
{
}

KxUiSimpleOptionSheet::~KxUiSimpleOptionSheet()
{
    // The choosers are members: the window and its children go first.
    if (GetSafeHwnd() != nullptr)
        DestroyWindow();
}

void KxUiSimpleOptionSheet::setOptionListType(UINT nType)
{
    switch (nType) {
    case noList:
        SetListControl(nullptr);
        m_nChooserSpacing = 8;
        break;
    case listBox:
        SetListControl(&m_listBox);
        m_nChooserSpacing = 8;
        break;
    case tabCtrl:
        SetListControl(&m_tabCtrl);
        m_nChooserSpacing = 26;
        break;
    default:
        return;
    }
    m_nListType = nType;
}

void KxUiSimpleOptionSheet::setIsResizable(bool bResizable)
{
    if (bResizable)
        m_dwStyle |= WS_THICKFRAME;
    else
        m_dwStyle &= ~static_cast<DWORD>(WS_THICKFRAME);
}

CString KxUiSimpleOptionSheet::getButtonText(UINT nID)
{
    return KxUiOptionSheet::getButtonText(nID);
}
