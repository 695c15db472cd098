// KxUiOptionSheet: pages, chooser, button row and the wizard's moves.
#include "KxUiOptionSheet.h"
#include "KxUiLayoutManager.h"
#include <afxcmn.h>
#include <algorithm>
#include <prsht.h>

UINT KXUIM_ENABLE = ::RegisterWindowMessageW(L"KXUIM_ENABLE");

IMPLEMENT_DYNAMIC(KxUiOptionSheet, CDialog)

BEGIN_MESSAGE_MAP(KxUiOptionSheet, CDialog)
    ON_WM_DESTROY()
    ON_COMMAND(KxUiOptionSheet::idApply, &KxUiOptionSheet::OnApply)
    ON_COMMAND(KxUiOptionSheet::idBack, &KxUiOptionSheet::OnBack)
    ON_COMMAND(KxUiOptionSheet::idNext, &KxUiOptionSheet::OnNext)
    ON_COMMAND(KxUiOptionSheet::idFinish, &KxUiOptionSheet::OnFinish)
    ON_COMMAND(KxUiOptionSheet::idHelp, &KxUiOptionSheet::OnHelp)
    ON_COMMAND(KxUiOptionSheet::idCustom, &KxUiOptionSheet::OnCustom)
    ON_REGISTERED_MESSAGE(KXUIM_ENABLE, &KxUiOptionSheet::OnEnableButton)
    ON_MESSAGE(WM_HELP, &KxUiOptionSheet::OnHelpMessage)
END_MESSAGE_MAP()

namespace {

const int kButtonGap = 6;      // between two buttons
const int kButtonBottom = 6;   // from the row's bottom to the client bottom
const int kTabInset = 4;       // page inside a tab control, left, right and bottom

bool IsTabChooser(CWnd* pWnd)
{
    return pWnd != nullptr && pWnd->IsKindOf(RUNTIME_CLASS(CTabCtrl));
}

}  // namespace

KxUiOptionSheet::KxUiOptionSheet()
    : m_pList(nullptr), m_nActive(-1), m_nSelectPage(0), m_dwFlags(0), m_dwStyle(0), m_dwState(0),
      m_dwWizardButtons(0), m_bModified(FALSE), m_bModal(false), m_bLeaveAgreed(false), m_pParent(nullptr), m_nButtonHeight(23),
      m_nMargin(7), m_nListWidth(150), m_nChooserSpacing(8), m_nNextPageId(idFirstPage)
{
}

KxUiOptionSheet::KxUiOptionSheet(LPCTSTR lpszTitle, CWnd* pParent, UINT nSelectPage) : KxUiOptionSheet()
{
    Construct(lpszTitle, pParent, nSelectPage);
}

KxUiOptionSheet::KxUiOptionSheet(UINT nIDTitle, CWnd* pParent, UINT nSelectPage) : KxUiOptionSheet()
{
    Construct(nIDTitle, pParent, nSelectPage);
}

KxUiOptionSheet::~KxUiOptionSheet()
{
    // The layout hook and the buttons are members: the window goes first.
    if (GetSafeHwnd() != nullptr)
        DestroyWindow();
    for (const PageInfo& info : m_pages)
        info.m_pPage->m_pSheet = nullptr;
}

void KxUiOptionSheet::Construct(LPCTSTR lpszTitle, CWnd* pParent, UINT nSelectPage)
{
    m_strTitle = lpszTitle != nullptr ? lpszTitle : L"";
    m_pParent = pParent;
    m_pParentWnd = pParent;
    m_nSelectPage = nSelectPage;
}

void KxUiOptionSheet::Construct(UINT nIDTitle, CWnd* pParent, UINT nSelectPage)
{
    CString title;
    title.LoadString(nIDTitle);
    Construct(title, pParent, nSelectPage);
}

////////////////////////////////////////////////////////////////////////////
// Pages

int KxUiOptionSheet::GetPageIndex(const KxUiOptionPage* pPage) const
{
    for (size_t i = 0; i < m_pages.size(); ++i)
        if (m_pages[i].m_pPage == pPage)
            return static_cast<int>(i);
    return -1;
}

KxUiOptionPage* KxUiOptionSheet::GetPage(int nPage) const
{
    return nPage >= 0 && nPage < GetPageCount() ? m_pages[static_cast<size_t>(nPage)].m_pPage : nullptr;
}

KxUiOptionPage* KxUiOptionSheet::GetPageGroup(int nPage) const
{
    return nPage >= 0 && nPage < GetPageCount() ? m_pages[static_cast<size_t>(nPage)].m_pGroup : nullptr;
}

BOOL KxUiOptionSheet::IsGroup(int nPage) const
{
    return nPage >= 0 && nPage < GetPageCount() && m_pages[static_cast<size_t>(nPage)].m_bIsGroup;
}

bool KxUiOptionSheet::InsertRecord(int nIndex, const PageInfo& info)
{
    nIndex = std::clamp(nIndex, 0, GetPageCount());
    m_pages.insert(m_pages.begin() + nIndex, info);
    info.m_pPage->m_pSheet = this;
    if (m_nActive >= nIndex)
        ++m_nActive;
    if (m_pList != nullptr && m_pList->GetControlWnd() != nullptr &&
        m_pList->GetControlWnd()->GetSafeHwnd() != nullptr) {
        if (nIndex == GetPageCount() - 1) {
            if (info.m_bIsGroup)
                m_pList->AddGroup(info.m_pPage);
            else
                m_pList->AddPage(info.m_pPage, info.m_pGroup);
        } else {
            m_pList->InsertPage(nIndex, info.m_pPage);
        }
    }
    // A sheet shown without pages shows the first one that comes.
    if (m_hWnd != nullptr && m_nActive < 0)
        SetActivePage(nIndex);
    return true;
}

bool KxUiOptionSheet::AddGroup(KxUiOptionPage* pGroup)
{
    if (pGroup == nullptr || GetPageIndex(pGroup) >= 0 || pGroup->m_pSheet != nullptr)
        return false;
    return InsertRecord(GetPageCount(), PageInfo{pGroup, nullptr, TRUE});
}

bool KxUiOptionSheet::AddPage(KxUiOptionPage* pPage, KxUiOptionPage* pGroup)
{
    if (pPage == nullptr || pPage == pGroup || GetPageIndex(pPage) >= 0 || pPage->m_pSheet != nullptr)
        return false;
    if (pGroup == nullptr)
        return InsertRecord(GetPageCount(), PageInfo{pPage, nullptr, FALSE});
    int nGroup = GetPageIndex(pGroup);
    if (nGroup < 0) {
        if (!AddGroup(pGroup))
            return false;
        nGroup = GetPageCount() - 1;
    } else if (!m_pages[static_cast<size_t>(nGroup)].m_bIsGroup) {
        return false;  // a page cannot hold pages
    }
    // After the group's last page, so that sheet order is the order the chooser shows.
    int nAt = nGroup + 1;
    while (nAt < GetPageCount() && m_pages[static_cast<size_t>(nAt)].m_pGroup == pGroup)
        ++nAt;
    return InsertRecord(nAt, PageInfo{pPage, pGroup, FALSE});
}

bool KxUiOptionSheet::InsertPage(int nIndex, KxUiOptionPage* pPage, KxUiOptionPage* pGroup)
{
    if (pPage == nullptr || pPage == pGroup || GetPageIndex(pPage) >= 0 || pPage->m_pSheet != nullptr)
        return false;
    if (pGroup != nullptr) {
        const int nGroup = GetPageIndex(pGroup);
        if (nGroup < 0 || !m_pages[static_cast<size_t>(nGroup)].m_bIsGroup)
            return false;
        // Inside the group's block.
        int nEnd = nGroup + 1;
        while (nEnd < GetPageCount() && m_pages[static_cast<size_t>(nEnd)].m_pGroup == pGroup)
            ++nEnd;
        nIndex = std::clamp(nIndex, nGroup + 1, nEnd);
    }
    return InsertRecord(nIndex, PageInfo{pPage, pGroup, FALSE});
}

bool KxUiOptionSheet::RemovePage(int nPage)
{
    return RemovePage(GetPage(nPage));
}

bool KxUiOptionSheet::RemovePage(KxUiOptionPage* pPage)
{
    const int nPage = GetPageIndex(pPage);
    if (nPage < 0)
        return false;
    if (nPage == m_nActive) {
        // The page goes whatever it thinks: show a neighbour without asking it.
        m_nActive = -1;
        if (pPage->m_hWnd != nullptr)
            pPage->ShowWindow(SW_HIDE);
        // The nearest page that can be shown, the following one first.
        for (int d = 1; m_hWnd != nullptr && m_nActive < 0 && d < GetPageCount(); ++d)
            for (int i : {nPage + d, nPage - d})
                if (i >= 0 && i < GetPageCount() && SetActivePage(i))
                    break;
    }
    if (m_pList != nullptr && m_pList->GetControlWnd() != nullptr && m_pList->GetControlWnd()->GetSafeHwnd())
        m_pList->RemovePage(pPage);
    if (pPage->m_hWnd != nullptr && pPage->GetParent() == this) {
        if (m_pLayout)
            m_pLayout->RemoveChild(static_cast<UINT>(pPage->GetDlgCtrlID()));
        pPage->DestroyWindow();
    }
    m_pages.erase(m_pages.begin() + nPage);
    if (m_nActive > nPage)
        --m_nActive;
    for (PageInfo& info : m_pages)
        if (info.m_pGroup == pPage)
            info.m_pGroup = nullptr;  // the group's pages stay, at the top level
    pPage->m_pSheet = nullptr;
    if (m_hWnd != nullptr)
        UpdateAllButtonsState();
    return true;
}

BOOL KxUiOptionSheet::SetActivePage(int nPage)
{
    return SetActivePage(GetPage(nPage));
}

BOOL KxUiOptionSheet::SetActivePage(KxUiOptionPage* pPage)
{
    const int nPage = GetPageIndex(pPage);
    if (nPage < 0)
        return FALSE;
    if (m_hWnd == nullptr) {
        m_nSelectPage = static_cast<UINT>(nPage);  // shown first when the sheet is created
        return TRUE;
    }
    KxUiOptionPage* pOld = GetActivePage();
    if (pOld == pPage && pPage->m_hWnd != nullptr)
        return TRUE;
    // The chooser has asked the page already when it agreed to the change.
    const bool leaveAgreed = m_bLeaveAgreed;
    m_bLeaveAgreed = false;
    if (!leaveAgreed && pOld != nullptr && pOld->m_hWnd != nullptr && !pOld->OnKillActive())
        return FALSE;
    if (pPage->m_hWnd == nullptr && !CreatePageWindow(pPage))
        return FALSE;
    if (!pPage->OnSetActive())
        return FALSE;
    if (pOld != nullptr && pOld->m_hWnd != nullptr && pOld != pPage)
        pOld->ShowWindow(SW_HIDE);
    m_nActive = nPage;
    // Above the chooser, which a tab control's pages overlap.
    pPage->SetWindowPos(&CWnd::wndTop, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
    if (m_pList != nullptr && m_pList->GetControlWnd() != nullptr && m_pList->GetControlWnd()->GetSafeHwnd())
        m_pList->SetSelection(pPage);
    OnSetActivePage(pPage);
    UpdateAllButtonsState();
    return TRUE;
}

void KxUiOptionSheet::OnSetActivePage(KxUiOptionPage*) {}

BOOL KxUiOptionSheet::CreatePageWindow(KxUiOptionPage* pPage)
{
    CRect rc = getPageRect();
    pPage->m_pSheet = this;
    if (!pPage->Create(rc, this) || pPage->m_hWnd == nullptr)
        return FALSE;
    const UINT nId = m_nNextPageId++;
    pPage->SetDlgCtrlID(static_cast<int>(nId));
    pPage->MoveWindow(rc, FALSE);
    if (m_pLayout && m_pLayout->IsAttached()) {
        CRect client;
        GetClientRect(&client);
        using L = KxUiLayoutManager;
        m_pLayout->SetConstraint(nId, L::sideTop, L::typeSameSide, rc.top);
        m_pLayout->SetConstraint(nId, L::sideLeft, L::typeSameSide, rc.left);
        m_pLayout->SetConstraint(nId, L::sideBottom, L::typeSameSide, rc.bottom - client.bottom);
        m_pLayout->SetConstraint(nId, L::sideRight, L::typeSameSide, rc.right - client.right);
    }
    return TRUE;
}

////////////////////////////////////////////////////////////////////////////
// Look

void KxUiOptionSheet::SetTitle(LPCTSTR lpszText, UINT nStyle)
{
    CString text = lpszText != nullptr ? lpszText : L"";
    m_strTitle = (nStyle & PSH_PROPTITLE) ? L"Options for " + text : text;
    if (m_hWnd != nullptr)
        SetWindowText(m_strTitle);
}

void KxUiOptionSheet::SetTitle(UINT nIDText, UINT nStyle)
{
    CString text;
    text.LoadString(nIDText);
    SetTitle(text, nStyle);
}

void KxUiOptionSheet::SetFinishText(LPCTSTR lpszText)
{
    m_strFinishText = lpszText != nullptr ? lpszText : L"";
    if (CButton* pFinish = GetButton(idFinish)) {
        pFinish->SetWindowText(m_strFinishText.IsEmpty() ? getButtonText(idFinish) : m_strFinishText);
        // A wizard whose Finish stands in for Next: the last page shows Finish and no Back.
        if (!(m_dwFlags & flagWizardHasFinish)) {
            SetWizardButtons(PSWIZB_FINISH);
            if (CButton* pBack = GetButton(idBack))
                pBack->ShowWindow(SW_HIDE);
        }
    }
}

void KxUiOptionSheet::SetWizardMode()
{
    SetFlags(flagWizard);
    SetWizardButtons(PSWIZB_BACK | PSWIZB_NEXT | PSWIZB_FINISH);
}

void KxUiOptionSheet::SetWizardButtons(DWORD dwFlags)
{
    m_dwWizardButtons = dwFlags;
    // Without flagWizardHasFinish, Finish stands in for Next on a page that offers to finish and not to
    // go on (PSWIZB_FINISH or PSWIZB_DISABLEDFINISH without PSWIZB_NEXT). SetWizardMode gives all three
    // bits, and the wizard must then still show Next with Finish hidden.
    const bool finish = (dwFlags & (PSWIZB_FINISH | PSWIZB_DISABLEDFINISH)) != 0 && !(dwFlags & PSWIZB_NEXT);
    // Finish is disabled when it is shown without PSWIZB_FINISH; a hidden Finish is not disabled, so
    // that PressButton(btnFinish) still finishes.
    const bool shown = (m_dwFlags & flagWizardHasFinish) || finish;
    if (shown && !(dwFlags & PSWIZB_FINISH))
        m_dwState |= stateFinishDisabled;
    else
        m_dwState &= ~stateFinishDisabled;
    if (m_hWnd == nullptr || !IsWizardMode())
        return;
    CButton* pBack = GetButton(idBack);
    CButton* pNext = GetButton(idNext);
    CButton* pFinish = GetButton(idFinish);
    if (pBack != nullptr) {
        pBack->EnableWindow((dwFlags & PSWIZB_BACK) != 0);
        pBack->ShowWindow(SW_SHOW);
    }
    if (pNext != nullptr)
        pNext->EnableWindow((dwFlags & PSWIZB_NEXT) != 0);
    if (pFinish != nullptr && pNext != nullptr && !(m_dwFlags & flagWizardHasFinish)) {
        // Finish takes Next's place while the page offers to finish.
        if (finish) {
            CRect rc;
            pNext->GetWindowRect(&rc);
            ScreenToClient(&rc);
            pFinish->MoveWindow(rc);
            if (m_pLayout && m_pLayout->IsAttached())
                m_pLayout->TieChild(idFinish, KxUiLayoutManager::sideRight | KxUiLayoutManager::sideBottom,
                                    KxUiLayoutManager::typeSameSide);
            pNext->ShowWindow(SW_HIDE);
            pFinish->ShowWindow(SW_SHOW);
        } else {
            pFinish->ShowWindow(SW_HIDE);
            pNext->ShowWindow(SW_SHOW);
        }
    }
    UpdateAllButtonsState();
}

void KxUiOptionSheet::SetModified(BOOL bChanged)
{
    m_bModified = bChanged;
    if (m_hWnd != nullptr)
        UpdateAllButtonsState();
}

CWnd* KxUiOptionSheet::GetListControlWnd() const
{
    return m_pList != nullptr ? m_pList->GetControlWnd() : nullptr;
}

CRect KxUiOptionSheet::getPageRect() const
{
    CRect client(0, 0, 0, 0);
    if (m_hWnd != nullptr)
        GetClientRect(&client);
    CRect area(m_nMargin, m_nMargin, client.right - m_nMargin, client.bottom - kButtonBottom - m_nButtonHeight - m_nMargin);
    CWnd* pChooser = GetListControlWnd();
    if (pChooser == nullptr || pChooser->GetSafeHwnd() == nullptr)
        return area;
    if (IsTabChooser(pChooser))
        return CRect(area.left + kTabInset, area.top + m_nChooserSpacing, area.right - kTabInset, area.bottom - kTabInset);
    return CRect(area.left + m_nListWidth + m_nChooserSpacing, area.top, area.right, area.bottom);
}

////////////////////////////////////////////////////////////////////////////
// Creation

void KxUiOptionSheet::CreateDlgTemplate()
{
    // The caption is set in OnInitDialog, the real size as well: the template only carries the style
    // and the font.
    m_template.assign(sizeof(DLGTEMPLATE) / sizeof(WORD), 0);
    auto* dt = reinterpret_cast<DLGTEMPLATE*>(m_template.data());
    dt->style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_3DLOOK | DS_SETFONT | WS_CLIPCHILDREN | m_dwStyle;
    dt->dwExtendedStyle = WS_EX_CONTROLPARENT | WS_EX_DLGMODALFRAME;
    dt->cx = 300;
    dt->cy = 200;
    m_template.insert(m_template.end(), {0, 0, 0, 8});  // no menu, default class, no title, 8 points
    for (const wchar_t* f = L"MS Shell Dlg"; *f; ++f)
        m_template.push_back(static_cast<WORD>(*f));
    m_template.push_back(0);
}

INT_PTR KxUiOptionSheet::DoModal()
{
    if (m_pages.empty() || m_hWnd != nullptr)
        return -1;
    CreateDlgTemplate();
    m_lpszTemplateName = nullptr;
    m_hDialogTemplate = nullptr;
    InitModalIndirect(reinterpret_cast<LPCDLGTEMPLATE>(m_template.data()), m_pParent);
    m_bModal = true;
    const INT_PTR result = CDialog::DoModal();
    m_bModal = false;
    return result;
}

BOOL KxUiOptionSheet::Create(CWnd* pParent, DWORD dwStyle, DWORD dwExStyle)
{
    if (m_pages.empty() || m_hWnd != nullptr)
        return FALSE;
    if (pParent != nullptr)
        m_pParent = pParent;
    const bool show = dwStyle == 0 || (dwStyle & WS_VISIBLE);
    CreateDlgTemplate();
    auto* dt = reinterpret_cast<DLGTEMPLATE*>(m_template.data());
    if (dwStyle != 0) {
        dt->style = (dwStyle & ~static_cast<DWORD>(WS_VISIBLE)) | DS_SETFONT | DS_3DLOOK | WS_CLIPCHILDREN | m_dwStyle;
        if (dwStyle & WS_CHILD)
            dt->style |= DS_CONTROL;
        dt->dwExtendedStyle = dwExStyle | WS_EX_CONTROLPARENT;
    } else {
        dt->dwExtendedStyle |= dwExStyle;
    }
    m_bModal = false;
    if (!CreateIndirect(reinterpret_cast<LPCDLGTEMPLATE>(m_template.data()), m_pParent))
        return FALSE;
    if (show)
        ShowWindow(SW_SHOW);
    return TRUE;
}

void KxUiOptionSheet::EndDialog(int nResult)
{
    m_nModalResult = nResult;
    if (m_bModal)
        CDialog::EndDialog(nResult);
    else if (m_hWnd != nullptr)
        DestroyWindow();
}

BOOL KxUiOptionSheet::OnInitDialog()
{
    CDialog::OnInitDialog();
    m_nActive = -1;
    m_nNextPageId = idFirstPage;
    m_dwState &= stateFinishDisabled;
    // The sheet font: the dialog's, kept as an object of the sheet's own for the buttons.
    LOGFONT lf = {};
    HFONT hFont = reinterpret_cast<HFONT>(SendMessage(WM_GETFONT));
    if (hFont == nullptr || ::GetObjectW(hFont, sizeof(lf), &lf) == 0)
        ::GetObjectW(::GetStockObject(DEFAULT_GUI_FONT), sizeof(lf), &lf);
    m_font.DeleteObject();
    m_font.CreateFontIndirect(&lf);
    CalcSpacing(m_font);
    SetWindowText(m_strTitle);

    if (m_pList != nullptr && m_pList->Create(this, idChooser)) {
        m_pList->GetControlWnd()->SetFont(&m_font, FALSE);
        FillChooser();
    }
    SizeToPages();
    AddButtons();
    attachLayoutManager();
    if (IsWizardMode())
        SetWizardButtons(m_dwWizardButtons);
    UpdateAllButtonsState();

    // The page asked for, else the first one that agrees to be shown.
    if (!SetActivePage(static_cast<int>(m_nSelectPage)))
        for (int i = 0; i < GetPageCount() && m_nActive < 0; ++i)
            SetActivePage(i);
    if (!(GetStyle() & WS_CHILD))
        CenterWindow();
    return TRUE;
}

void KxUiOptionSheet::OnDestroy()
{
    if (m_pLayout)
        m_pLayout->Detach();
    for (INT_PTR i = 0; i < m_buttons.GetSize(); ++i)
        m_buttons[i]->DestroyWindow();
    m_buttons.RemoveAll();
    m_nActive = -1;
    CDialog::OnDestroy();
}

void KxUiOptionSheet::FillChooser()
{
    for (const PageInfo& info : m_pages) {
        if (info.m_bIsGroup)
            m_pList->AddGroup(info.m_pPage);
        else
            m_pList->AddPage(info.m_pPage, info.m_pGroup);
    }
}

void KxUiOptionSheet::CalcSpacing(CFont& font)
{
    // Room for the text with a 5-pixel border above and below, never smaller than the system's
    // usual 23-pixel push button.
    CClientDC dc(this);
    CFont* pOld = dc.SelectObject(&font);
    TEXTMETRIC tm = {};
    dc.GetTextMetrics(&tm);
    dc.SelectObject(pOld);
    m_nButtonHeight = std::max<int>(23, tm.tmHeight + 10);
    m_nMargin = std::max<int>(7, tm.tmAveCharWidth);
}

void KxUiOptionSheet::SizeToPages()
{
    // The largest page, in pixels of the sheet's dialog units.
    CSize page(0, 0);
    for (const PageInfo& info : m_pages) {
        CSize dlu = info.m_pPage->GetTemplateSize();
        CRect rc(0, 0, dlu.cx, dlu.cy);
        MapDialogRect(&rc);
        page.cx = std::max<int>(page.cx, rc.Width());
        page.cy = std::max<int>(page.cy, rc.Height());
    }
    if (page.cx <= 0 || page.cy <= 0) {
        CRect rc(0, 0, 250, 150);
        MapDialogRect(&rc);
        page.cx = std::max<int>(page.cx, rc.Width());
        page.cy = std::max<int>(page.cy, rc.Height());
    }
    CSize client(page.cx + 2 * m_nMargin, page.cy + 2 * m_nMargin + m_nButtonHeight + kButtonBottom);
    CWnd* pChooser = GetListControlWnd();
    if (pChooser != nullptr && pChooser->GetSafeHwnd() != nullptr) {
        if (IsTabChooser(pChooser)) {
            client.cx += 2 * kTabInset;
            client.cy += m_nChooserSpacing + kTabInset;
        } else {
            client.cx += m_nListWidth + m_nChooserSpacing;
        }
    }
    // Wide enough for the buttons.
    int buttons = 0;
    for (UINT id : {idBack, idNext, idFinish, idOK, idApply, idCancel, idHelp, idCustom})
        if (int w = getButtonWidth(id); w > 0)
            buttons += w + kButtonGap;
    client.cx = std::max<int>(client.cx, buttons - kButtonGap + 2 * m_nMargin);

    CRect rc(0, 0, client.cx, client.cy);
    ::AdjustWindowRectEx(&rc, GetStyle(), FALSE, GetExStyle());
    SetWindowPos(nullptr, 0, 0, rc.Width(), rc.Height(), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    // The chooser fills the height of the page area.
    if (pChooser != nullptr && pChooser->GetSafeHwnd() != nullptr) {
        CRect area(m_nMargin, m_nMargin, client.cx - m_nMargin,
                   client.cy - kButtonBottom - m_nButtonHeight - m_nMargin);
        if (!IsTabChooser(pChooser))
            area.right = area.left + m_nListWidth;
        pChooser->MoveWindow(area, FALSE);
    }
}

void KxUiOptionSheet::attachLayoutManager()
{
    using L = KxUiLayoutManager;
    m_pLayout.reset(new KxUiLayoutManager);
    m_pLayout->Attach(this);
    CRect client;
    GetClientRect(&client);
    if (CWnd* pChooser = GetListControlWnd(); pChooser != nullptr && pChooser->GetSafeHwnd() != nullptr) {
        CRect rc;
        pChooser->GetWindowRect(&rc);
        ScreenToClient(&rc);
        m_pLayout->SetConstraint(idChooser, L::sideTop, L::typeSameSide, rc.top);
        m_pLayout->SetConstraint(idChooser, L::sideLeft, L::typeSameSide, rc.left);
        m_pLayout->SetConstraint(idChooser, L::sideBottom, L::typeSameSide, rc.bottom - client.bottom);
        // A list keeps its width; tabs span the sheet.
        if (IsTabChooser(pChooser))
            m_pLayout->SetConstraint(idChooser, L::sideRight, L::typeSameSide, rc.right - client.right);
    }
    for (INT_PTR i = 0; i < m_buttons.GetSize(); ++i)
        m_pLayout->TieChild(static_cast<UINT>(m_buttons[i]->GetDlgCtrlID()), L::sideRight | L::sideBottom,
                            L::typeSameSide);
}

////////////////////////////////////////////////////////////////////////////
// Buttons

CString KxUiOptionSheet::getButtonText(UINT nID)
{
    switch (nID) {
    case idOK: return L"$$OK";
    case idCancel: return L"$$Cancel";
    case idHelp: return L"$$Help";
    case idCustom: return L"$$Custom";
    case idApply: return L"$$Apply";
    case idBack: return L"$$< Back";
    case idNext: return L"$$Next >";
    case idFinish: return L"$$Finish";
    default: return L"$$No Text Button, see KxUiOptionSheet::getButtonText";
    }
}

int KxUiOptionSheet::getButtonWidth(UINT nID)
{
    return GetButtonWidth(nID);
}

int KxUiOptionSheet::GetButtonWidth(UINT nID)
{
    bool shown = false;
    switch (nID) {
    case idBack:
    case idNext: shown = IsWizardMode(); break;
    case idFinish: shown = IsWizardMode() && (m_dwFlags & flagWizardHasFinish); break;
    case idOK: shown = !IsWizardMode(); break;
    case idApply: shown = !IsWizardMode() && !(m_dwFlags & flagNoApply); break;
    case idCancel: shown = true; break;
    case idHelp: shown = (m_dwFlags & flagHelp) != 0; break;
    case idCustom: shown = (m_dwFlags & flagCustom) != 0; break;
    default: break;
    }
    return shown ? 100 : 0;
}

void KxUiOptionSheet::AddButtons()
{
    struct Plan {
        UINT id;
        BOOL visible;
    };
    std::vector<Plan> plan;
    if (IsWizardMode()) {
        plan.push_back({idBack, TRUE});
        plan.push_back({idNext, TRUE});
        plan.push_back({idFinish, (m_dwFlags & flagWizardHasFinish) != 0});
    } else {
        plan.push_back({idOK, TRUE});
        if (!(m_dwFlags & flagNoApply))
            plan.push_back({idApply, TRUE});
    }
    plan.push_back({idCancel, TRUE});
    if (m_dwFlags & flagHelp)
        plan.push_back({idHelp, TRUE});
    if (m_dwFlags & flagCustom)
        plan.push_back({idCustom, TRUE});

    // Right-aligned, left to right in creation order; a button of width 0 takes no room.
    std::vector<int> widths;
    int total = 0;
    for (const Plan& p : plan) {
        widths.push_back(std::max(0, getButtonWidth(p.id)));
        if (widths.back() > 0)
            total += widths.back() + kButtonGap;
    }
    total = std::max(0, total - kButtonGap);
    CRect client;
    GetClientRect(&client);
    int x = client.right - m_nMargin - total;
    for (size_t i = 0; i < plan.size(); ++i) {
        AddButton(x, widths[i], plan[i].id, plan[i].visible);
        if (widths[i] > 0)
            x += widths[i] + kButtonGap;
    }
}

CButton* KxUiOptionSheet::AddButton(int x, int nWidth, UINT nID, BOOL bVisible)
{
    CRect client;
    GetClientRect(&client);
    const CRect rc(x, client.bottom - kButtonBottom - m_nButtonHeight, x + nWidth, client.bottom - kButtonBottom);
    CString text = nID == idFinish && !m_strFinishText.IsEmpty() ? m_strFinishText : getButtonText(nID);
    auto* pButton = new CButton;
    const DWORD style = WS_CHILD | WS_TABSTOP | BS_DEFPUSHBUTTON | (bVisible ? WS_VISIBLE : 0);
    if (!pButton->Create(text, style, rc, this, nID)) {
        delete pButton;
        return nullptr;
    }
    pButton->SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(m_font.GetSafeHandle()), TRUE);
    m_buttons.Add(pButton);
    return pButton;
}

CButton* KxUiOptionSheet::GetButton(UINT nID) const
{
    for (INT_PTR i = 0; i < m_buttons.GetSize(); ++i)
        if (m_buttons[i]->GetSafeHwnd() != nullptr && static_cast<UINT>(m_buttons[i]->GetDlgCtrlID()) == nID)
            return m_buttons[i];
    return nullptr;
}

void KxUiOptionSheet::UpdateAllButtonsState()
{
    if (m_hWnd == nullptr)
        return;
    if (CButton* pApply = GetButton(idApply)) {
        BOOL modified = m_bModified;
        for (const PageInfo& info : m_pages)
            modified = modified || info.m_pPage->m_bModified;
        pApply->EnableWindow(modified);
    }
    if (CButton* pFinish = GetButton(idFinish))
        pFinish->EnableWindow(!(m_dwState & stateFinishDisabled));
}

BOOL KxUiOptionSheet::PressButton(int nButton)
{
    static const UINT ids[] = {idBack, idNext, idFinish, idOK, idApply, idCancel, idHelp, idCustom};
    if (m_hWnd == nullptr || nButton < 0 || nButton > btnCustom)
        return FALSE;
    if (nButton <= btnFinish && !IsWizardMode())
        return FALSE;
    if (nButton == btnCustom && !(m_dwFlags & flagCustom))
        return FALSE;
    const UINT id = ids[nButton];
    CWnd* pButton = GetDlgItem(static_cast<int>(id));
    SendMessage(WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(CWnd::SafeHwnd(pButton)));
    return TRUE;
}

LRESULT KxUiOptionSheet::OnEnableButton(WPARAM wParam, LPARAM lParam)
{
    const UINT id = static_cast<UINT>(wParam);
    if (id == idFinish) {
        if (lParam)
            m_dwState &= ~stateFinishDisabled;
        else
            m_dwState |= stateFinishDisabled;
    }
    if (CWnd* pButton = GetDlgItem(static_cast<int>(id)))
        pButton->EnableWindow(lParam != 0);
    return 0;
}

////////////////////////////////////////////////////////////////////////////
// Commands

void KxUiOptionSheet::OnOK()
{
    KxUiOptionPage* pActive = GetActivePage();
    if (pActive != nullptr && pActive->m_hWnd != nullptr && !pActive->OnKillActive())
        return;
    for (const PageInfo& info : m_pages)
        info.m_pPage->OnOK();
    EndDialog(IDOK);
}

void KxUiOptionSheet::OnCancel()
{
    KxUiOptionPage* pActive = GetActivePage();
    if (pActive != nullptr && pActive->m_hWnd != nullptr && !pActive->OnQueryCancel())
        return;
    for (const PageInfo& info : m_pages)
        info.m_pPage->OnReset();
    EndDialog(IDCANCEL);
}

void KxUiOptionSheet::OnApply()
{
    KxUiOptionPage* pActive = GetActivePage();
    if (pActive != nullptr && pActive->m_hWnd != nullptr && !pActive->OnKillActive())
        return;
    // Every page that has been shown commits its settings; one that fails is shown and stays modified.
    for (const PageInfo& info : m_pages) {
        KxUiOptionPage* pPage = info.m_pPage;
        if (pPage->m_hWnd == nullptr)
            continue;
        if (!pPage->OnApply()) {
            SetActivePage(pPage);
            UpdateAllButtonsState();
            return;
        }
        pPage->m_bModified = FALSE;
    }
    m_bModified = FALSE;
    UpdateAllButtonsState();
}

void KxUiOptionSheet::OnFinish()
{
    if (m_dwState & stateFinishDisabled)
        return;
    KxUiOptionPage* pActive = GetActivePage();
    if (pActive != nullptr && pActive->m_hWnd != nullptr && !pActive->OnWizardFinish())
        return;
    for (const PageInfo& info : m_pages)
        info.m_pPage->OnOK();
    EndDialog(idFinish);
}

void KxUiOptionSheet::OnNext()
{
    goToNextPage();
}

void KxUiOptionSheet::OnBack()
{
    goToPreviousPage();
}

void KxUiOptionSheet::goToNextPage()
{
    CWnd* pNext = GetButton(idNext);
    KxUiOptionPage* pActive = GetActivePage();
    if (pNext == nullptr || !pNext->IsWindowEnabled() || pActive == nullptr)
        return;
    const LRESULT r = pActive->OnWizardNext();
    if (r == -1)
        return;
    const int target = r == 0 ? m_nActive + 1 : static_cast<int>(r);
    if (target >= 0 && target < GetPageCount())
        SetActivePage(target);
}

void KxUiOptionSheet::goToPreviousPage()
{
    CWnd* pBack = GetButton(idBack);
    KxUiOptionPage* pActive = GetActivePage();
    if (pBack == nullptr || !pBack->IsWindowEnabled() || pActive == nullptr)
        return;
    const LRESULT r = pActive->OnWizardBack();
    if (r == -1)
        return;
    const int target = r == 0 ? m_nActive - 1 : static_cast<int>(r);
    if (target >= 0 && target < GetPageCount())
        SetActivePage(target);
}

void KxUiOptionSheet::OnCustom()
{
    AfxMessageBox(L"KxUiOptionSheet::OnCustom");
}

void KxUiOptionSheet::OnHelp()
{
    // The active page answers Help with its own command handler.
    if (KxUiOptionPage* pActive = GetActivePage(); pActive != nullptr && pActive->m_hWnd != nullptr)
        pActive->SendMessage(WM_COMMAND, MAKEWPARAM(IDHELP, BN_CLICKED), 0);
}

LRESULT KxUiOptionSheet::OnHelpMessage(WPARAM wParam, LPARAM lParam)
{
    const LRESULT result = Default();
    // F1 on one of the sheet's own controls (a button, the chooser): the page explains itself.
    static bool s_bInHelp = false;
    KxUiOptionPage* pActive = GetActivePage();
    HWND hFocus = ::GetFocus();
    if (!s_bInHelp && pActive != nullptr && pActive->m_hWnd != nullptr && hFocus != nullptr &&
        ::GetParent(hFocus) == m_hWnd) {
        if (HWND hFirst = ::GetWindow(pActive->m_hWnd, GW_CHILD)) {
            s_bInHelp = true;
            ::SendMessageW(hFirst, WM_HELP, wParam, lParam);
            s_bInHelp = false;
        }
    }
    return result;
}

void KxUiOptionSheet::ListSelectionChanging(NMHDR*, LRESULT* pResult)
{
    KxUiOptionPage* pActive = GetActivePage();
    const bool refuse = pActive != nullptr && pActive->m_hWnd != nullptr && !pActive->OnKillActive();
    m_bLeaveAgreed = !refuse;
    if (pResult != nullptr)
        *pResult = refuse ? TRUE : FALSE;
}

void KxUiOptionSheet::ListSelectionChanged(NMHDR*, LRESULT* pResult)
{
    if (pResult != nullptr)
        *pResult = 0;
    if (m_pList == nullptr)
        return;
    KxUiOptionPage* pChosen = m_pList->GetSelection();
    if (pChosen == GetActivePage())
        m_bLeaveAgreed = false;
    // The chooser shows the active page again when the chosen one cannot be shown.
    if (pChosen == nullptr || !SetActivePage(pChosen)) {
        if (KxUiOptionPage* pActive = GetActivePage())
            m_pList->SetSelection(pActive);
    }
}
