// KxUiSplitter: a draggable bar whose position is a fraction constraint of the layout manager.
#include "KxUiPch.h"
#include "KxUiSplitter.h"
#include "KxUiLayoutManager.h"
#include <climits>

IMPLEMENT_DYNCREATE(KxUiSplitter, CStatic)

BEGIN_MESSAGE_MAP(KxUiSplitter, CStatic)
    ON_WM_LBUTTONDOWN()
    ON_WM_MOUSEMOVE()
    ON_WM_LBUTTONUP()
    ON_WM_SETCURSOR()
    ON_WM_CAPTURECHANGED()
    ON_WM_CHAR()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

namespace {
typedef KxUiLayoutManager LM;

// The rectangle of a window in its parent's client coordinates.
CRect rectInParent(HWND hWnd, HWND hParent)
{
    RECT rc = {0, 0, 0, 0};
    ::GetWindowRect(hWnd, &rc);
    ::MapWindowPoints(nullptr, hParent, reinterpret_cast<POINT*>(&rc), 2);
    return CRect(rc);
}
}  // namespace

KxUiSplitter::KxUiSplitter()
    : m_bHorz(true), m_nFirstPane(noPane), m_nSecondPane(noPane), m_pLayoutManager(nullptr), m_nPercent(0),
      m_bPercentSet(false)
{
}

void KxUiSplitter::setCurrentPercent(int nPercent)
{
    m_nPercent = nPercent;
    m_bPercentSet = true;
}

bool KxUiSplitter::init(KxUiLayoutManager* pManager, UINT nFirstPane, UINT nSecondPane, bool bHorizontal)
{
    if (m_pLayoutManager || !pManager || m_nFirstPane != noPane || m_nSecondPane != noPane)
        return false;
    if (!::IsWindow(m_hWnd) || !::GetParent(m_hWnd))
        return false;
    m_pLayoutManager = pManager;
    m_nFirstPane = nFirstPane;
    m_nSecondPane = nSecondPane;
    m_bHorz = bHorizontal;
    // A static control lets the mouse through to its parent unless it notifies; the bar must get the
    // mouse to be dragged.
    ::SetWindowLongW(m_hWnd, GWL_STYLE, ::GetWindowLongW(m_hWnd, GWL_STYLE) | SS_NOTIFY);
    return true;
}

void KxUiSplitter::resizeSplitterWhenAttach()
{
    CRect rc = rectInParent(m_hWnd, ::GetParent(m_hWnd));
    if (m_bHorz)
        rc.right = rc.left + barThickness;
    else
        rc.bottom = rc.top + barThickness;
    ::MoveWindow(m_hWnd, rc.left, rc.top, rc.Width(), rc.Height(), TRUE);
}

bool KxUiSplitter::attachHorz(KxUiLayoutManager* pManager, UINT nFirstPane, UINT nSecondPane)
{
    if (!init(pManager, nFirstPane, nSecondPane, true))
        return false;
    resizeSplitterWhenAttach();
    RECT rc;
    ::GetClientRect(m_hWnd, &rc);
    int nPercent = getPercent(CPoint((rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2));
    UINT nId = (UINT)::GetDlgCtrlID(m_hWnd);
    pManager->SetConstraint(nId, LM::sideLeft, LM::typeFraction, nPercent, 0);
    pManager->SetConstraint(nFirstPane, LM::sideRight, LM::typeOppositeSide, 0, nId);
    pManager->SetConstraint(nSecondPane, LM::sideLeft, LM::typeOppositeSide, 0, nId);
    pManager->SetConstraint(nId, LM::sideTop, LM::typeSameSide, 0, 0);
    pManager->SetConstraint(nId, LM::sideBottom, LM::typeSameSide, 0, 0);
    return true;
}

bool KxUiSplitter::attachVert(KxUiLayoutManager* pManager, UINT nFirstPane, UINT nSecondPane)
{
    if (!init(pManager, nFirstPane, nSecondPane, false))
        return false;
    pManager->RedrawLayout(false);
    resizeSplitterWhenAttach();
    RECT rc;
    ::GetClientRect(m_hWnd, &rc);
    int nPercent = getPercent(CPoint((rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2));
    UINT nId = (UINT)::GetDlgCtrlID(m_hWnd);
    pManager->SetConstraint(nId, LM::sideTop, LM::typeFraction, nPercent, 0);
    pManager->SetConstraint(nFirstPane, LM::sideBottom, LM::typeOppositeSide, 0, nId);
    pManager->SetConstraint(nSecondPane, LM::sideTop, LM::typeOppositeSide, 0, nId);
    pManager->SetConstraint(nId, LM::sideLeft, LM::typeSameSide, 0, 0);
    pManager->SetConstraint(nId, LM::sideRight, LM::typeSameSide, 0, 0);
    pManager->RedrawLayout(false);
    return true;
}

void KxUiSplitter::detachConstraint()
{
    if (m_pLayoutManager && ::IsWindow(m_hWnd)) {
        UINT nId = (UINT)::GetDlgCtrlID(m_hWnd);
        if (m_bHorz) {
            m_pLayoutManager->RemoveConstraint(nId, LM::sideLeft);
            m_pLayoutManager->RemoveConstraint(m_nFirstPane, LM::sideRight);
            m_pLayoutManager->RemoveConstraint(m_nSecondPane, LM::sideLeft);
            m_pLayoutManager->RemoveConstraint(nId, LM::sideTop | LM::sideBottom);
        } else {
            m_pLayoutManager->RemoveConstraint(nId, LM::sideTop);
            m_pLayoutManager->RemoveConstraint(m_nFirstPane, LM::sideBottom);
            m_pLayoutManager->RemoveConstraint(m_nSecondPane, LM::sideTop);
            m_pLayoutManager->RemoveConstraint(nId, LM::sideLeft | LM::sideRight);
        }
    }
    m_pLayoutManager = nullptr;
    m_nFirstPane = m_nSecondPane = noPane;
}

int KxUiSplitter::getPercent(CPoint point)
{
    if (m_bPercentSet) {
        m_bPercentSet = false;
        return m_nPercent;
    }
    HWND hParent = ::IsWindow(m_hWnd) ? ::GetParent(m_hWnd) : nullptr;
    HWND hFirst = hParent ? ::GetDlgItem(hParent, (int)m_nFirstPane) : nullptr;
    HWND hSecond = hParent ? ::GetDlgItem(hParent, (int)m_nSecondPane) : nullptr;
    if (!hFirst || !hSecond)
        return 0;

    POINT pt = point;
    ::MapWindowPoints(m_hWnd, hParent, &pt, 1);
    CRect rcFirst = rectInParent(hFirst, hParent);
    CRect rcSecond = rectInParent(hSecond, hParent);
    CRect rcBar = rectInParent(m_hWnd, hParent);
    RECT rcClient;
    ::GetClientRect(hParent, &rcClient);
    m_nPercent = 50;

    int p, nExtent;
    if (m_bHorz) {
        p = pt.x;
        int w = rcBar.Width();
        if (p + w >= rcSecond.right)
            p = rcSecond.right - w;
        else if (p - w <= rcFirst.left)
            p = rcFirst.left + w;
        nExtent = rcClient.right - rcClient.left;
    } else {
        p = pt.y;
        int h = rcBar.Height();
        if (p + h >= rcSecond.bottom)
            p = rcSecond.bottom - h;
        else if (p - h <= rcFirst.top)
            p = rcFirst.top + h;
        nExtent = rcClient.bottom - rcClient.top;
    }
    // A container without extent has no share to give: the bar stays in the middle.
    if (nExtent <= 0)
        return m_nPercent;
    double dPercent = p * 100.0 / nExtent;
    dPercent = dPercent < INT_MIN ? INT_MIN : dPercent > INT_MAX ? INT_MAX : dPercent;
    m_nPercent = (int)dPercent;
    return m_nPercent;
}

void KxUiSplitter::OnLButtonDown(UINT, CPoint)
{
    Default();
    SetCapture();
}

void KxUiSplitter::OnMouseMove(UINT, CPoint point)
{
    Default();
    if (::GetCapture() != m_hWnd)
        return;
    int nPercent = getPercent(point);
    if (m_pLayoutManager) {
        m_pLayoutManager->SetConstraint((UINT)::GetDlgCtrlID(m_hWnd), m_bHorz ? LM::sideLeft : LM::sideTop,
                                        LM::typeFraction, nPercent, 0);
        m_pLayoutManager->RedrawLayout(false);
    }
}

void KxUiSplitter::OnLButtonUp(UINT, CPoint)
{
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
    Default();
}

BOOL KxUiSplitter::OnSetCursor(CWnd*, UINT nHitTest, UINT)
{
    if (nHitTest == HTCLIENT) {
        ::SetCursor(::LoadCursorW(nullptr, m_bHorz ? IDC_SIZEWE : IDC_SIZENS));
        return TRUE;
    }
    return (BOOL)Default();
}

void KxUiSplitter::OnCaptureChanged(CWnd*)
{
    Default();
}

void KxUiSplitter::OnChar(UINT, UINT, UINT)
{
    Default();
}

void KxUiSplitter::OnDestroy()
{
    Default();
    m_bHorz = true;
    m_nFirstPane = m_nSecondPane = noPane;
    m_pLayoutManager = nullptr;
    m_nPercent = 0;
    m_bPercentSet = false;
}
