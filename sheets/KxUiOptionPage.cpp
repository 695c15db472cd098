// KxUiOptionPage: a child dialog shown by an option sheet.
#include "KxUiOptionSheet.h"
#include <cstring>

IMPLEMENT_DYNAMIC(KxUiOptionPage, CDialog)

namespace {

// Offsets into a dialog template: the extended form starts with version 1 and signature 0xFFFF.
bool IsExTemplate(const WORD* p)
{
    return p[0] == 1 && p[1] == 0xFFFF;
}

// Skips a menu or class field: 0 (none), 0xFFFF followed by an ordinal, or a terminated string.
const WORD* SkipSzOrOrd(const WORD* p)
{
    if (*p == 0)
        return p + 1;
    if (*p == 0xFFFF)
        return p + 2;
    while (*p != 0)
        ++p;
    return p + 1;
}

// The caption and size (dialog units) of a template.
void ReadTemplate(const void* pTemplate, CString* pCaption, CSize* pSize)
{
    const WORD* p = static_cast<const WORD*>(pTemplate);
    const bool ex = IsExTemplate(p);
    const WORD* header = p + (ex ? 9 : 5);  // at the item count
    if (pSize != nullptr)
        *pSize = CSize(static_cast<short>(header[3]), static_cast<short>(header[4]));
    if (pCaption != nullptr) {
        const WORD* q = SkipSzOrOrd(SkipSzOrOrd(header + 5));
        *pCaption = reinterpret_cast<LPCWSTR>(q);
    }
}

// The page's resource template, or NULL (with *pBytes set to its size).
const void* FindPageTemplate(LPCTSTR lpszName, size_t* pBytes)
{
    if (lpszName == nullptr)
        return nullptr;
    HINSTANCE hInst = AfxFindResourceHandle(lpszName, RT_DIALOG);
    HRSRC res = ::FindResourceW(hInst, lpszName, RT_DIALOG);
    HGLOBAL h = res != nullptr ? ::LoadResource(hInst, res) : nullptr;
    if (h == nullptr)
        return nullptr;
    *pBytes = ::SizeofResource(hInst, res);
    return ::LockResource(h);
}

}  // namespace

KxUiOptionPage::KxUiOptionPage()
    : m_pSheet(nullptr), m_bModified(FALSE), m_bFirstSetActive(TRUE), m_nIconID(0),
      m_hIconInstance(AfxGetResourceHandle()),
      m_sizeTemplate(0, 0)
{
}

KxUiOptionPage::KxUiOptionPage(UINT nIDTemplate, CWnd* pParent, UINT nIDCaption)
    : KxUiOptionPage(MAKEINTRESOURCE(nIDTemplate), pParent, nIDCaption)
{
}

KxUiOptionPage::KxUiOptionPage(LPCTSTR lpszTemplateName, CWnd* pParent, UINT nIDCaption) : KxUiOptionPage()
{
    m_lpszTemplateName = lpszTemplateName;
    m_pParentWnd = pParent;
    if (IS_INTRESOURCE(lpszTemplateName))
        m_nIDHelp = LOWORD(reinterpret_cast<DWORD_PTR>(lpszTemplateName));
    if (nIDCaption != 0)
        m_strTitle.LoadString(nIDCaption);
}

KxUiOptionPage::~KxUiOptionPage()
{
    if (m_pSheet != nullptr)
        m_pSheet->RemovePage(this);
    if (GetSafeHwnd() != nullptr)
        DestroyWindow();
}

BOOL KxUiOptionPage::Create(CRect& rect, CWnd* pParent)
{
    if (m_lpszTemplateName != nullptr) {
        size_t nBytes = 0;
        const void* pTemplate = FindPageTemplate(m_lpszTemplateName, &nBytes);
        return pTemplate != nullptr && CreateFromTemplate(pTemplate, nBytes, rect, pParent);
    }
    // No template: an empty page in the dialog font; the page adds its controls in OnInitDialog.
    std::vector<WORD> t(sizeof(DLGTEMPLATE) / sizeof(WORD), 0);
    auto* dt = reinterpret_cast<DLGTEMPLATE*>(t.data());
    dt->style = DS_SETFONT;
    dt->cx = static_cast<short>(m_sizeTemplate.cx);
    dt->cy = static_cast<short>(m_sizeTemplate.cy);
    t.insert(t.end(), {0, 0, 0, 8});  // no menu, default class, no title, 8 points
    for (const wchar_t* f = L"MS Shell Dlg"; *f; ++f)
        t.push_back(static_cast<WORD>(*f));
    t.push_back(0);
    return CreateFromTemplate(t.data(), t.size() * sizeof(WORD), rect, pParent);
}

BOOL KxUiOptionPage::CreateFromTemplate(const void* pTemplate, size_t nBytes, const CRect& rect, CWnd* pParent)
{
    // A dialog template holds at most 65535 items of a few hundred bytes: anything larger is not one.
    if (pTemplate == nullptr || nBytes < sizeof(DLGTEMPLATE) || nBytes > 0x1000000 || m_hWnd != nullptr)
        return FALSE;
    // A copy, aligned for the dialog manager, with the style of a child that takes part in the sheet's
    // keyboard navigation.
    std::vector<DWORD> copy((nBytes + 3) / 4, 0);
    std::memcpy(copy.data(), pTemplate, nBytes);
    WORD* p = reinterpret_cast<WORD*>(copy.data());
    DWORD* pStyle;
    DWORD* pExStyle;
    if (IsExTemplate(p)) {
        pExStyle = reinterpret_cast<DWORD*>(p + 4);
        pStyle = reinterpret_cast<DWORD*>(p + 6);
    } else {
        pStyle = reinterpret_cast<DWORD*>(p);
        pExStyle = reinterpret_cast<DWORD*>(p + 2);
    }
    const DWORD dwRemove = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX |
                           WS_VISIBLE | WS_DISABLED | WS_BORDER | DS_MODALFRAME | DS_CENTER | DS_CENTERMOUSE |
                           DS_ABSALIGN | DS_SYSMODAL;
    *pStyle = (*pStyle & ~dwRemove) | WS_CHILD | WS_CLIPSIBLINGS | DS_CONTROL | DS_3DLOOK;
    *pExStyle = (*pExStyle & ~static_cast<DWORD>(WS_EX_DLGMODALFRAME | WS_EX_WINDOWEDGE | WS_EX_CLIENTEDGE |
                                                  WS_EX_APPWINDOW | WS_EX_TOOLWINDOW)) |
                WS_EX_CONTROLPARENT;
    m_bFirstSetActive = TRUE;
    if (!CreateIndirect(reinterpret_cast<LPCDLGTEMPLATE>(copy.data()), pParent))
        return FALSE;
    MoveWindow(rect, FALSE);
    return TRUE;
}

BOOL KxUiOptionPage::OnApply()
{
    OnOK();
    return TRUE;
}

void KxUiOptionPage::OnReset()
{
    OnCancel();
}

void KxUiOptionPage::OnOK() {}

void KxUiOptionPage::OnCancel() {}

BOOL KxUiOptionPage::OnSetActive()
{
    if (m_bFirstSetActive) {
        m_bFirstSetActive = FALSE;
        return TRUE;
    }
    return UpdateData(FALSE);
}

BOOL KxUiOptionPage::OnKillActive()
{
    return UpdateData(TRUE);
}

BOOL KxUiOptionPage::OnQueryCancel()
{
    return TRUE;
}

LRESULT KxUiOptionPage::OnWizardBack()
{
    return 0;
}

LRESULT KxUiOptionPage::OnWizardNext()
{
    return 0;
}

BOOL KxUiOptionPage::OnWizardFinish()
{
    return TRUE;
}

void KxUiOptionPage::SetModified(BOOL bChanged)
{
    m_bModified = bChanged;
    if (m_pSheet != nullptr)
        m_pSheet->UpdateAllButtonsState();
}

UINT KxUiOptionPage::GetIconID()
{
    return m_nIconID;
}

HINSTANCE KxUiOptionPage::GetIconResourceHandle()
{
    return m_hIconInstance;
}

HICON KxUiOptionPage::CreatePageIcon(int nSize)
{
    const UINT id = GetIconID();
    if (id == 0 || nSize <= 0)
        return nullptr;
    HINSTANCE hInst = GetIconResourceHandle();
    if (hInst != nullptr)
        return static_cast<HICON>(::LoadImageW(hInst, MAKEINTRESOURCEW(id), IMAGE_ICON, nSize, nSize, 0));
    // The system's icons are shared (never destroyed): a copy at the size asked for is the caller's.
    HICON hShared = static_cast<HICON>(::LoadImageW(nullptr, MAKEINTRESOURCEW(id), IMAGE_ICON, nSize, nSize, LR_SHARED));
    return hShared != nullptr ? static_cast<HICON>(::CopyImage(hShared, IMAGE_ICON, nSize, nSize, 0)) : nullptr;
}

CString KxUiOptionPage::GetTitle()
{
    if (!m_strTitle.IsEmpty())
        return m_strTitle;
    CString caption;
    size_t nBytes = 0;
    if (const void* pTemplate = FindPageTemplate(m_lpszTemplateName, &nBytes))
        ReadTemplate(pTemplate, &caption, nullptr);
    else if (m_hWnd != nullptr)
        GetWindowText(caption);
    return caption;
}

CSize KxUiOptionPage::GetTemplateSize() const
{
    size_t nBytes = 0;
    CSize size = m_sizeTemplate;
    if (const void* pTemplate = FindPageTemplate(m_lpszTemplateName, &nBytes))
        ReadTemplate(pTemplate, nullptr, &size);
    return size;
}
