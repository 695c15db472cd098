// KxUiSplitter: a draggable bar whose position is a fraction constraint of the layout manager.
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

// What differs between a bar that moves left and right and one that moves up and down.
struct Orientation {
    int nBarSide;            // the bar's side held at the fraction of the container
    int nCrossSides;         // the bar's sides that span the container
    int nFirstPaneSide;      // the first pane's inner side, at the bar's far side
    int nSecondPaneSide;     // the second pane's inner side, at the bar's near side
    LONG POINT::*pAlong;     // the coordinate along the bar's movement
    LONG RECT::*pNear;       // the edge of a rectangle where the movement starts
    LONG RECT::*pFar;        // and where it ends
    LPCWSTR pszCursor;
    bool bLayoutAround;      // lay out before and after attaching
};

const Orientation kHorizontal = {LM::sideLeft, LM::sideTop | LM::sideBottom, LM::sideRight, LM::sideLeft,
                                 &POINT::x, &RECT::left, &RECT::right, IDC_SIZEWE, false};
const Orientation kVertical = {LM::sideTop, LM::sideLeft | LM::sideRight, LM::sideBottom, LM::sideTop,
                               &POINT::y, &RECT::top, &RECT::bottom, IDC_SIZENS, true};

const Orientation& orientation(bool bHorizontal)
{
    return bHorizontal ? kHorizontal : kVertical;
}

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
    const Orientation& o = orientation(m_bHorz);
    CRect rc = rectInParent(m_hWnd, ::GetParent(m_hWnd));
    rc.*o.pFar = rc.*o.pNear + barThickness;
    ::MoveWindow(m_hWnd, rc.left, rc.top, rc.Width(), rc.Height(), TRUE);
}

bool KxUiSplitter::attach(KxUiLayoutManager* pManager, UINT nFirstPane, UINT nSecondPane, bool bHorizontal)
{
    if (!init(pManager, nFirstPane, nSecondPane, bHorizontal))
        return false;
    const Orientation& o = orientation(bHorizontal);
    if (o.bLayoutAround)
        pManager->RedrawLayout(false);
    resizeSplitterWhenAttach();
    RECT rc;
    ::GetClientRect(m_hWnd, &rc);
    int nPercent = getPercent(CPoint((rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2));
    UINT nId = (UINT)::GetDlgCtrlID(m_hWnd);
    pManager->SetConstraint(nId, o.nBarSide, LM::typeFraction, nPercent, 0);
    pManager->SetConstraint(nFirstPane, o.nFirstPaneSide, LM::typeOppositeSide, 0, nId);
    pManager->SetConstraint(nSecondPane, o.nSecondPaneSide, LM::typeOppositeSide, 0, nId);
    for (int nSide : {o.nCrossSides & (LM::sideTop | LM::sideLeft), o.nCrossSides & (LM::sideBottom | LM::sideRight)})
        pManager->SetConstraint(nId, nSide, LM::typeSameSide, 0, 0);
    if (o.bLayoutAround)
        pManager->RedrawLayout(false);
    return true;
}

bool KxUiSplitter::attachHorz(KxUiLayoutManager* pManager, UINT nFirstPane, UINT nSecondPane)
{
    return attach(pManager, nFirstPane, nSecondPane, true);
}

bool KxUiSplitter::attachVert(KxUiLayoutManager* pManager, UINT nFirstPane, UINT nSecondPane)
{
    return attach(pManager, nFirstPane, nSecondPane, false);
}

void KxUiSplitter::detachConstraint()
{
    if (m_pLayoutManager && ::IsWindow(m_hWnd)) {
        const Orientation& o = orientation(m_bHorz);
        UINT nId = (UINT)::GetDlgCtrlID(m_hWnd);
        m_pLayoutManager->RemoveConstraint(nId, o.nBarSide);
        m_pLayoutManager->RemoveConstraint(m_nFirstPane, o.nFirstPaneSide);
        m_pLayoutManager->RemoveConstraint(m_nSecondPane, o.nSecondPaneSide);
        m_pLayoutManager->RemoveConstraint(nId, o.nCrossSides);
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

    const Orientation& o = orientation(m_bHorz);
    int p = pt.*o.pAlong;
    const int nThickness = rcBar.*o.pFar - rcBar.*o.pNear;
    if (p + nThickness >= rcSecond.*o.pFar)
        p = rcSecond.*o.pFar - nThickness;
    else if (p - nThickness <= rcFirst.*o.pNear)
        p = rcFirst.*o.pNear + nThickness;
    const int nExtent = rcClient.*o.pFar - rcClient.*o.pNear;
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
        m_pLayoutManager->SetConstraint((UINT)::GetDlgCtrlID(m_hWnd), orientation(m_bHorz).nBarSide,
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
        ::SetCursor(::LoadCursorW(nullptr, orientation(m_bHorz).pszCursor));
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
