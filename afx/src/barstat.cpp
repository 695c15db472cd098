// CControlBar and CStatusBar: bars placed by their frame; panes on the platform's status control.
#include "afximpl.h"
#include "afxext.h"

IMPLEMENT_DYNAMIC(CControlBar, CWnd)
IMPLEMENT_DYNAMIC(CStatusBar, CControlBar)

BEGIN_MESSAGE_MAP(CControlBar, CWnd)
    ON_MESSAGE(WM_SIZEPARENT, &CControlBar::OnSizeParent)
    ON_MESSAGE(WM_IDLEUPDATECMDUI, &CControlBar::OnIdleUpdateCmdUI)
END_MESSAGE_MAP()

CControlBar::CControlBar()
    : m_cxLeftBorder(0), m_cxRightBorder(0), m_cyTopBorder(0), m_cyBottomBorder(0), m_dwStyle(0), m_nCount(0),
      m_pData(nullptr)
{
}

CControlBar::~CControlBar() = default;

void CControlBar::PostNcDestroy() {}

CSize CControlBar::CalcFixedLayout(BOOL bStretch, BOOL bHorz)
{
    return CSize(bStretch && bHorz ? 32767 : 0, bStretch && !bHorz ? 32767 : 0);
}

LRESULT CControlBar::OnSizeParent(WPARAM, LPARAM lParam)
{
    auto* layout = reinterpret_cast<AFX_SIZEPARENTPARAMS*>(lParam);
    if (!(GetStyle() & WS_VISIBLE) || (m_dwStyle & CBRS_ALIGN_ANY) == 0)
        return 0;
    CRect rect(layout->rect);
    const CSize avail = rect.Size();
    const BOOL horz = (m_dwStyle & CBRS_ORIENT_HORZ) != 0;
    CSize size = CalcFixedLayout(layout->bStretch, horz);
    size.cx = size.cx < avail.cx ? size.cx : avail.cx;
    size.cy = size.cy < avail.cy ? size.cy : avail.cy;
    if (size.cx < 0)
        size.cx = 0;
    if (size.cy < 0)
        size.cy = 0;
    if (horz) {
        layout->sizeTotal.cy += size.cy;
        layout->sizeTotal.cx = layout->sizeTotal.cx > size.cx ? layout->sizeTotal.cx : size.cx;
        if (m_dwStyle & CBRS_ALIGN_TOP) {
            layout->rect.top += size.cy;
        } else {
            rect.top = rect.bottom - size.cy;
            layout->rect.bottom -= size.cy;
        }
    } else {
        layout->sizeTotal.cx += size.cx;
        layout->sizeTotal.cy = layout->sizeTotal.cy > size.cy ? layout->sizeTotal.cy : size.cy;
        if (m_dwStyle & CBRS_ALIGN_LEFT) {
            layout->rect.left += size.cx;
        } else {
            rect.left = rect.right - size.cx;
            layout->rect.right -= size.cx;
        }
    }
    rect.right = rect.left + size.cx;
    rect.bottom = rect.top + size.cy;
    AfxRepositionWindow(layout, m_hWnd, &rect);
    return 0;
}

LRESULT CControlBar::OnIdleUpdateCmdUI(WPARAM wParam, LPARAM)
{
    if (!(GetStyle() & WS_VISIBLE))
        return 0;
    CWnd* owner = GetOwner();
    CFrameWnd* target = owner != nullptr && owner->IsKindOf(RUNTIME_CLASS(CFrameWnd))
                            ? static_cast<CFrameWnd*>(owner)
                            : GetParentFrame();
    if (target != nullptr)
        OnUpdateCmdUI(target, static_cast<BOOL>(wParam));
    return 0;
}

////////////////////////////////////////////////////////////////////////////
// CStatusBar

BEGIN_MESSAGE_MAP(CStatusBar, CControlBar)
    ON_WM_SIZE()
    ON_MESSAGE(WM_SETTEXT, &CStatusBar::OnSetText)
    ON_MESSAGE(WM_GETTEXT, &CStatusBar::OnGetText)
    ON_MESSAGE(WM_GETTEXTLENGTH, &CStatusBar::OnGetTextLength)
END_MESSAGE_MAP()

namespace {

const int CX_PANE_BORDER = 6;  // 3 pixels on each side of a pane's text

// Updates a status-bar pane from command handlers: disabled, popped out (checked), text.
class CStatusCmdUI : public CCmdUI {
public:
    void Enable(BOOL bOn) override
    {
        m_bEnableChanged = TRUE;
        auto* bar = static_cast<CStatusBar*>(m_pOther);
        UINT style = bar->GetPaneStyle(static_cast<int>(m_nIndex)) & ~SBPS_DISABLED;
        if (!bOn)
            style |= SBPS_DISABLED;
        bar->SetPaneStyle(static_cast<int>(m_nIndex), style);
    }
    void SetCheck(int nCheck) override
    {
        auto* bar = static_cast<CStatusBar*>(m_pOther);
        UINT style = bar->GetPaneStyle(static_cast<int>(m_nIndex)) & ~SBPS_POPOUT;
        if (nCheck != 0)
            style |= SBPS_POPOUT;
        bar->SetPaneStyle(static_cast<int>(m_nIndex), style);
    }
    void SetRadio(BOOL bOn) override { SetCheck(bOn ? 1 : 0); }
    void SetText(LPCTSTR lpszText) override
    {
        static_cast<CStatusBar*>(m_pOther)->SetPaneText(static_cast<int>(m_nIndex), lpszText);
    }
};

}  // namespace

CStatusBar::CStatusBar()
{
    m_cyTopBorder = 2;
}

CStatusBar::~CStatusBar()
{
    delete[] static_cast<AFX_STATUSPANE*>(m_pData);
}

BOOL CStatusBar::Create(CWnd* pParentWnd, DWORD dwStyle, UINT nID)
{
    return CreateEx(pParentWnd, 0, dwStyle, nID);
}

BOOL CStatusBar::CreateEx(CWnd* pParentWnd, DWORD dwCtrlStyle, DWORD dwStyle, UINT nID)
{
    if (pParentWnd == nullptr || pParentWnd->m_hWnd == nullptr)
        return FALSE;
    // Bar styles stay with the object; the control places nothing by itself.
    m_dwStyle = dwStyle & CBRS_ALL;
    dwStyle &= ~static_cast<DWORD>(CBRS_ALL);
    dwStyle |= CCS_NOPARENTALIGN | CCS_NOMOVEY | CCS_NODIVIDER | CCS_NORESIZE;
    if (pParentWnd->GetStyle() & WS_THICKFRAME)
        dwStyle |= SBARS_SIZEGRIP;
    dwStyle |= dwCtrlStyle;
    return CWnd::Create(STATUSCLASSNAMEW, nullptr, dwStyle, CRect(0, 0, 0, 0), pParentWnd, nID);
}

AFX_STATUSPANE* CStatusBar::GetPanePtr(int nIndex) const
{
    if (nIndex < 0 || nIndex >= m_nCount)
        return nullptr;
    return static_cast<AFX_STATUSPANE*>(m_pData) + nIndex;
}

BOOL CStatusBar::AllocElements(int nElements)
{
    if (nElements < 0)
        return FALSE;
    delete[] static_cast<AFX_STATUSPANE*>(m_pData);
    m_pData = nullptr;
    m_nCount = 0;
    if (nElements > 0) {
        auto* panes = new AFX_STATUSPANE[nElements];
        for (int i = 0; i < nElements; ++i) {
            panes[i].nID = 0;
            panes[i].nStyle = 0;
            panes[i].cxText = 0;
        }
        m_pData = panes;
        m_nCount = nElements;
    }
    return TRUE;
}

BOOL CStatusBar::SetIndicators(const UINT* lpIDArray, int nIDCount)
{
    if (nIDCount < 0 || (lpIDArray == nullptr && nIDCount > 0) || !AllocElements(nIDCount))
        return FALSE;
    BOOL result = TRUE;
    HDC hdc = ::GetDC(m_hWnd);
    HGDIOBJ oldFont = ::SelectObject(hdc, reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)));
    for (int i = 0; i < nIDCount; ++i) {
        AFX_STATUSPANE* pane = GetPanePtr(i);
        pane->nID = lpIDArray[i];
        if (pane->nID != ID_SEPARATOR) {
            // An indicator shows its string resource and is as wide as that text.
            if (!pane->strText.LoadString(pane->nID)) {
                result = FALSE;
                continue;
            }
            SIZE size = {};
            ::GetTextExtentPoint32W(hdc, pane->strText, pane->strText.GetLength(), &size);
            pane->cxText = size.cx;
        } else {
            pane->cxText = ::GetSystemMetrics(SM_CXSCREEN) / 4;
            if (i == 0)
                pane->nStyle |= SBPS_STRETCH | SBPS_NOBORDERS;
        }
    }
    ::SelectObject(hdc, oldFont);
    ::ReleaseDC(m_hWnd, hdc);
    UpdateAllPanes(TRUE, TRUE);
    return result;
}

void CStatusBar::UpdateAllPanes(BOOL bUpdateRects, BOOL bUpdateText)
{
    if (m_hWnd == nullptr)
        return;
    if (bUpdateRects) {
        int borders[3] = {0, 0, 0};
        DefWindowProc(SB_GETBORDERS, 0, reinterpret_cast<LPARAM>(borders));
        CRect rect;
        GetClientRect(&rect);
        if ((GetStyle() & SBARS_SIZEGRIP) && !::IsZoomed(::GetParent(m_hWnd)))
            rect.right -= ::GetSystemMetrics(SM_CXVSCROLL);
        // The stretching panes share what the others leave.
        int extra = rect.Width() + borders[2];
        int stretchy = 0;
        for (int i = 0; i < m_nCount; ++i) {
            const AFX_STATUSPANE* pane = GetPanePtr(i);
            if (pane->nStyle & SBPS_STRETCH)
                ++stretchy;
            extra -= pane->cxText + CX_PANE_BORDER + borders[2];
        }
        int* rights = new int[m_nCount > 0 ? m_nCount : 1];
        int right = borders[0];
        for (int i = 0; i < m_nCount; ++i) {
            const AFX_STATUSPANE* pane = GetPanePtr(i);
            right += pane->cxText + CX_PANE_BORDER;
            if ((pane->nStyle & SBPS_STRETCH) && extra > 0) {
                const int add = extra / stretchy;
                right += add;
                --stretchy;
                extra -= add;
            }
            rights[i] = right;
            right += borders[2];
        }
        DefWindowProc(SB_SETPARTS, static_cast<WPARAM>(m_nCount), reinterpret_cast<LPARAM>(rights));
        delete[] rights;
    }
    if (bUpdateText) {
        for (int i = 0; i < m_nCount; ++i) {
            const AFX_STATUSPANE* pane = GetPanePtr(i);
            // A disabled pane keeps its text but shows none.
            LPCTSTR shown = (pane->nStyle & SBPS_DISABLED) ? L"" : static_cast<LPCTSTR>(pane->strText);
            DefWindowProc(SB_SETTEXTW, static_cast<WPARAM>(i) | (pane->nStyle & 0xFF00), reinterpret_cast<LPARAM>(shown));
        }
    }
}

int CStatusBar::CommandToIndex(UINT nIDFind) const
{
    for (int i = 0; i < m_nCount; ++i) {
        if (GetPanePtr(i)->nID == nIDFind)
            return i;
    }
    return -1;
}

UINT CStatusBar::GetItemID(int nIndex) const
{
    const AFX_STATUSPANE* pane = GetPanePtr(nIndex);
    return pane != nullptr ? pane->nID : 0;
}

void CStatusBar::GetItemRect(int nIndex, LPRECT lpRect) const
{
    ::SetRectEmpty(lpRect);
    if (GetPanePtr(nIndex) != nullptr)
        ::SendMessageW(m_hWnd, SB_GETRECT, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(lpRect));
}

void CStatusBar::GetPaneInfo(int nIndex, UINT& nID, UINT& nStyle, int& cxWidth) const
{
    const AFX_STATUSPANE* pane = GetPanePtr(nIndex);
    nID = pane != nullptr ? pane->nID : 0;
    nStyle = pane != nullptr ? pane->nStyle : 0;
    cxWidth = pane != nullptr ? pane->cxText : 0;
}

void CStatusBar::SetPaneInfo(int nIndex, UINT nID, UINT nStyle, int cxWidth)
{
    AFX_STATUSPANE* pane = GetPanePtr(nIndex);
    if (pane == nullptr)
        return;
    pane->nID = nID;
    const bool resize = cxWidth != pane->cxText || ((pane->nStyle ^ nStyle) & SBPS_STRETCH);
    pane->cxText = cxWidth < 0 ? 0 : cxWidth;
    pane->nStyle = nStyle;
    UpdateAllPanes(resize, TRUE);
}

UINT CStatusBar::GetPaneStyle(int nIndex) const
{
    const AFX_STATUSPANE* pane = GetPanePtr(nIndex);
    return pane != nullptr ? pane->nStyle : 0;
}

void CStatusBar::SetPaneStyle(int nIndex, UINT nStyle)
{
    AFX_STATUSPANE* pane = GetPanePtr(nIndex);
    if (pane == nullptr || pane->nStyle == nStyle)
        return;
    const bool resize = ((pane->nStyle ^ nStyle) & SBPS_STRETCH) != 0;
    pane->nStyle = nStyle;
    if (resize)
        UpdateAllPanes(TRUE, FALSE);
    // The drawing style travels with the text.
    LPCTSTR shown = (nStyle & SBPS_DISABLED) ? L"" : static_cast<LPCTSTR>(pane->strText);
    DefWindowProc(SB_SETTEXTW, static_cast<WPARAM>(nIndex) | (nStyle & 0xFF00), reinterpret_cast<LPARAM>(shown));
}

CString CStatusBar::GetPaneText(int nIndex) const
{
    const AFX_STATUSPANE* pane = GetPanePtr(nIndex);
    return pane != nullptr ? pane->strText : CString();
}

void CStatusBar::GetPaneText(int nIndex, CString& rString) const
{
    rString = GetPaneText(nIndex);
}

BOOL CStatusBar::SetPaneText(int nIndex, LPCTSTR lpszNewText, BOOL bUpdate)
{
    AFX_STATUSPANE* pane = GetPanePtr(nIndex);
    if (pane == nullptr)
        return FALSE;
    pane->strText = lpszNewText != nullptr ? lpszNewText : L"";
    if (bUpdate && m_hWnd != nullptr) {
        LPCTSTR shown = (pane->nStyle & SBPS_DISABLED) ? L"" : static_cast<LPCTSTR>(pane->strText);
        DefWindowProc(SB_SETTEXTW, static_cast<WPARAM>(nIndex) | (pane->nStyle & 0xFF00),
                      reinterpret_cast<LPARAM>(shown));
    }
    return TRUE;
}

int CStatusBar::GetTextHeight() const
{
    HDC hdc = ::GetDC(m_hWnd);
    HGDIOBJ oldFont = ::SelectObject(hdc, reinterpret_cast<HFONT>(::SendMessageW(m_hWnd, WM_GETFONT, 0, 0)));
    TEXTMETRICW tm = {};
    ::GetTextMetricsW(hdc, &tm);
    ::SelectObject(hdc, oldFont);
    ::ReleaseDC(m_hWnd, hdc);
    return tm.tmHeight;
}

CSize CStatusBar::CalcFixedLayout(BOOL bStretch, BOOL bHorz)
{
    CSize size = CControlBar::CalcFixedLayout(bStretch, bHorz);
    int borders[3] = {0, 0, 0};
    ::SendMessageW(m_hWnd, SB_GETBORDERS, 0, reinterpret_cast<LPARAM>(borders));
    size.cy = GetTextHeight() + borders[1] * 2 + ::GetSystemMetrics(SM_CYBORDER) * 2 + m_cyTopBorder + m_cyBottomBorder;
    return size;
}

void CStatusBar::OnUpdateCmdUI(CFrameWnd* pTarget, BOOL)
{
    CStatusCmdUI state;
    state.m_pOther = this;
    state.m_nIndexMax = static_cast<UINT>(m_nCount);
    for (state.m_nIndex = 0; state.m_nIndex < state.m_nIndexMax; ++state.m_nIndex) {
        state.m_nID = GetPanePtr(static_cast<int>(state.m_nIndex))->nID;
        // The bar's own handlers first, then the frame's routing.
        if (CWnd::OnCmdMsg(state.m_nID, static_cast<int>(CN_UPDATE_COMMAND_UI), &state, nullptr))
            continue;
        state.DoUpdate(pTarget, FALSE);
    }
}

void CStatusBar::OnSize(UINT nType, int cx, int cy)
{
    CControlBar::OnSize(nType, cx, cy);
    UpdateAllPanes(TRUE, FALSE);
}

LRESULT CStatusBar::OnSetText(WPARAM, LPARAM lParam)
{
    // The window text is the first plain pane's text.
    const int index = CommandToIndex(ID_SEPARATOR);
    if (index < 0)
        return FALSE;
    return SetPaneText(index, reinterpret_cast<LPCTSTR>(lParam));
}

LRESULT CStatusBar::OnGetText(WPARAM wParam, LPARAM lParam)
{
    const int index = CommandToIndex(ID_SEPARATOR);
    if (index < 0 || wParam == 0 || lParam == 0)
        return 0;
    const CString& text = GetPanePtr(index)->strText;
    const int n = text.GetLength() < static_cast<int>(wParam) - 1 ? text.GetLength() : static_cast<int>(wParam) - 1;
    auto* out = reinterpret_cast<LPTSTR>(lParam);
    wmemcpy(out, text, static_cast<size_t>(n));
    out[n] = 0;
    return n;
}

LRESULT CStatusBar::OnGetTextLength(WPARAM, LPARAM)
{
    const int index = CommandToIndex(ID_SEPARATOR);
    return index < 0 ? 0 : GetPanePtr(index)->strText.GetLength();
}
