// KxUiLayoutManager: constraint layout of a container's children.
#include "KxUiLayoutManager.h"
#include <afxwin.h>
#include <algorithm>

namespace {

const int kUnset = KxUiSideConstraint::unset;
const int kComputing = KxUiSideConstraint::computing;

// Storage indexes of the four sides of a child; the side bit of index i is 1 << i.
enum SideIndex : int { kTop = 0, kBottom = 1, kLeft = 2, kRight = 3, kSideCount = 4 };

// Top and bottom measure against the container's height, left and right against its width.
inline bool isVertical(int nSide) { return nSide == kTop || nSide == kBottom; }
// Top and left are the near sides, bottom and right the far ones.
inline bool isNearSide(int nSide) { return nSide == kTop || nSide == kLeft; }
inline int oppositeSide(int nSide) { return isVertical(nSide) ? kTop + kBottom - nSide : kLeft + kRight - nSide; }
inline int sideBit(int nSide) { return 1 << nSide; }

typedef KxUiLayoutManager LM;

// The rectangle of a window in the client coordinates of another.
bool windowRectIn(HWND hWnd, HWND hContainer, CRect& rc)
{
    RECT r;
    if (!hWnd || !::GetWindowRect(hWnd, &r))
        return false;
    ::MapWindowPoints(nullptr, hContainer, reinterpret_cast<POINT*>(&r), 2);
    rc = r;
    return true;
}

inline int sideOf(const CRect& rc, int nSide)
{
    switch (nSide) {
    case kTop: return rc.top;
    case kBottom: return rc.bottom;
    case kLeft: return rc.left;
    default: return rc.right;
    }
}

// Rounds of the minimum/maximum search before it is taken for an oscillation: every pixel of both
// axes once. Two children whose limits pull the same axis in turn would otherwise search forever.
const long kMaxSearchRounds = 2L * 32768L;

}  // namespace

// ---------------------------------------------------------------------------------------------------

void KxUiWndConstraint::Empty()
{
    m_bMinMax = 0;
    m_sizeMin = CSize(0, 0);
    m_sizeMax = CSize(0, 0);
    for (KxUiSideConstraint& side : m_sides)
        side.Empty();
}

CRect KxUiWndConstraint::GetRect() const
{
    // Sides that cross give the child no room on that axis rather than a negative size; the
    // computed positions themselves stay as they are for the children that follow them.
    const int nLeft = m_sides[kLeft].m_nPos, nTop = m_sides[kTop].m_nPos;
    return CRect(nLeft, nTop, std::max(nLeft, m_sides[kRight].m_nPos), std::max(nTop, m_sides[kBottom].m_nPos));
}

// ---------------------------------------------------------------------------------------------------

IMPLEMENT_DYNCREATE(KxUiLayoutManager, CObject)

KxUiLayoutManager::KxUiLayoutManager()
    : m_pContainer(nullptr), m_nFractionBase(100), m_nMinMaxCount(0), m_nWidth(0), m_nHeight(0)
{
    ResetLearnedLimits();
}

KxUiLayoutManager::~KxUiLayoutManager()
{
    RemoveAllChildren();
}

void KxUiLayoutManager::Attach(CWnd* pContainer)
{
    RemoveAllChildren();
    m_pContainer = pContainer;
    if (pContainer && pContainer->GetSafeHwnd())
        kxUiWndProcMgr().attach(pContainer->GetSafeHwnd(), this);
}

void KxUiLayoutManager::Detach()
{
    RemoveAllChildren();
    m_pContainer = nullptr;
}

void KxUiLayoutManager::OnDestroy()
{
}

LRESULT KxUiLayoutManager::LayoutManagerProc(HWND, UINT message, WPARAM, LPARAM lParam)
{
    if (message == WM_SIZE)
        OnSize(LOWORD(lParam), HIWORD(lParam));
    else if (message == WM_DESTROY)
        OnDestroy();
    return 0;
}

int KxUiLayoutManager::windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, LRESULT&)
{
    // A manager detached and attached to another container keeps its hook on the first one; that
    // window's messages are no longer its business.
    if (m_pContainer && m_pContainer->GetSafeHwnd() == hWnd)
        LayoutManagerProc(hWnd, message, wParam, lParam);
    return 0;
}

// --- children --------------------------------------------------------------------------------------

UINT KxUiLayoutManager::ChildId(const CWnd* pChild)
{
    HWND hChild = pChild ? pChild->GetSafeHwnd() : nullptr;
    return hChild ? (UINT)::GetDlgCtrlID(hChild) : 0;
}

UINT KxUiLayoutManager::BaseId(const CWnd* pBase) const
{
    HWND hBase = pBase ? pBase->GetSafeHwnd() : nullptr;
    if (!hBase || (m_pContainer && hBase == m_pContainer->GetSafeHwnd()))
        return 0;
    return (UINT)::GetDlgCtrlID(hBase);
}

int KxUiLayoutManager::FindChild(UINT nId) const
{
    for (INT_PTR i = m_children.GetSize() - 1; i >= 0; --i)
        if (m_children[i]->m_nId == nId)
            return (int)i;
    return -1;
}

int KxUiLayoutManager::FindOrAddChild(UINT nId)
{
    if (nId == 0)
        return -1;
    int nIndex = FindChild(nId);
    if (nIndex < 0) {
        nIndex = (int)m_children.Add(new KxUiWndConstraint(nId));
        ResetLearnedLimits();
    }
    return nIndex;
}

int KxUiLayoutManager::AddChild(UINT nId, int bSetDefault)
{
    int nIndex = FindOrAddChild(nId);
    if (nIndex >= 0 && bSetDefault)
        SetDefaultConstraint(nId);
    return nIndex;
}

int KxUiLayoutManager::AddChild(CWnd* pChild, int bSetDefault)
{
    return AddChild(ChildId(pChild), bSetDefault);
}

void KxUiLayoutManager::AddAllChildren(int bSetDefault)
{
    if (!m_pContainer || !::IsWindow(m_pContainer->GetSafeHwnd()))
        return;
    for (HWND h = ::GetWindow(m_pContainer->GetSafeHwnd(), GW_CHILD); h; h = ::GetWindow(h, GW_HWNDNEXT)) {
        UINT nId = (UINT)::GetDlgCtrlID(h);
        if (nId != 0)
            AddChild(nId, bSetDefault);
    }
}

int KxUiLayoutManager::RemoveChild(UINT nId)
{
    int nIndex = FindChild(nId);
    if (nIndex < 0)
        return 0;
    for (INT_PTR i = 0; i < m_children.GetSize(); ++i)
        for (const KxUiSideConstraint& side : m_children[i]->m_sides)
            if (!side.IsEmpty() && side.m_nBaseId == nId)
                return 0;
    if (m_children[nIndex]->m_bMinMax)
        --m_nMinMaxCount;
    m_children.RemoveAt(nIndex);   // deletes the entry
    ResetLearnedLimits();
    return 1;
}

int KxUiLayoutManager::RemoveChild(CWnd* pChild)
{
    return RemoveChild(ChildId(pChild));
}

void KxUiLayoutManager::RemoveAllChildren()
{
    m_children.RemoveAll();   // deletes the entries
    m_nMinMaxCount = 0;
    ResetLearnedLimits();
}

void KxUiLayoutManager::ResetLearnedLimits()
{
    m_nMinWidth = -1;
    m_nMaxWidth = 32767;
    m_nMinHeight = -1;
    m_nMaxHeight = 32767;
}

// --- constraints -----------------------------------------------------------------------------------

int KxUiLayoutManager::SetConstraint(UINT nId, int nSides, int nType, int nOffset, UINT nBaseId)
{
    if (nId == 0)
        return 0;
    if (nBaseId != 0 && FindChild(nBaseId) < 0)
        FindOrAddChild(nBaseId);
    int nIndex = FindOrAddChild(nId);
    if (nIndex < 0)
        return 0;
    KxUiWndConstraint* pChild = m_children[nIndex];
    for (int i = kTop; i < kSideCount; ++i) {
        if (!(nSides & sideBit(i)))
            continue;
        KxUiSideConstraint& side = pChild->m_sides[i];
        side.m_nBaseId = nBaseId;
        if (nType == typeFraction) {
            side.m_nNearOffset = nOffset;
            side.m_nFarOffset = m_nFractionBase;
        } else if ((isNearSide(i) && nType == typeOppositeSide) || (!isNearSide(i) && nType == typeSameSide)) {
            side.m_nNearOffset = kUnset;
            side.m_nFarOffset = nOffset;
        } else {
            side.m_nNearOffset = nOffset;
            side.m_nFarOffset = kUnset;
        }
    }
    ResetLearnedLimits();
    return 1;
}

int KxUiLayoutManager::SetConstraint(CWnd* pChild, int nSides, int nType, int nOffset, CWnd* pBase)
{
    return SetConstraint(ChildId(pChild), nSides, nType, nOffset, BaseId(pBase));
}

int KxUiLayoutManager::GetConstraint(UINT nId, int nSide, int& nType, int& nOffset, UINT& nBaseId) const
{
    int nIndex = FindChild(nId);
    int i = kTop;
    while (i < kSideCount && nSide != sideBit(i))
        ++i;
    if (nIndex < 0 || i == kSideCount)
        return 0;
    const KxUiSideConstraint& side = m_children[nIndex]->m_sides[i];
    nBaseId = side.m_nBaseId;
    bool bNear = side.m_nNearOffset != kUnset, bFar = side.m_nFarOffset != kUnset;
    if (!bNear && !bFar) {
        nType = typeNone;
        nOffset = kUnset;
    } else if (bNear && bFar) {
        nType = typeFraction;
        nOffset = (int)((long long)side.m_nNearOffset * m_nFractionBase / side.m_nFarOffset);
    } else if (bFar) {
        nType = isNearSide(i) ? typeOppositeSide : typeSameSide;
        nOffset = side.m_nFarOffset;
    } else {
        nType = isNearSide(i) ? typeSameSide : typeOppositeSide;
        nOffset = side.m_nNearOffset;
    }
    return 1;
}

int KxUiLayoutManager::RemoveConstraint(UINT nId, int nSides)
{
    int nIndex = FindChild(nId);
    if (nIndex < 0)
        return 0;
    for (int i = kTop; i < kSideCount; ++i)
        if (nSides & sideBit(i))
            m_children[nIndex]->m_sides[i].Empty();
    ResetLearnedLimits();
    return 1;
}

int KxUiLayoutManager::RemoveConstraint(CWnd* pChild, int nSides)
{
    return RemoveConstraint(ChildId(pChild), nSides);
}

int KxUiLayoutManager::SetMinMax(UINT nId, CSize sizeMin, CSize sizeMax)
{
    // Like SetConstraint, an unknown child is added, so that limits and constraints may be given in
    // any order.
    int nIndex = FindOrAddChild(nId);
    if (nIndex < 0)
        return 0;
    KxUiWndConstraint* pChild = m_children[nIndex];
    int bMinMax = sizeMin.cx > 0 || sizeMin.cy > 0 || sizeMax.cx > 0 || sizeMax.cy > 0;
    m_nMinMaxCount += bMinMax - (pChild->m_bMinMax ? 1 : 0);
    pChild->m_bMinMax = bMinMax;
    pChild->m_sizeMin = sizeMin;
    pChild->m_sizeMax = sizeMax;
    ResetLearnedLimits();
    return 1;
}

int KxUiLayoutManager::SetMinMax(CWnd* pChild, CSize sizeMin, CSize sizeMax)
{
    return SetMinMax(ChildId(pChild), sizeMin, sizeMax);
}

int KxUiLayoutManager::GetMinMax(UINT nId, CSize& sizeMin, CSize& sizeMax) const
{
    int nIndex = FindChild(nId);
    if (nIndex < 0)
        return 0;
    sizeMin = m_children[nIndex]->m_sizeMin;
    sizeMax = m_children[nIndex]->m_sizeMax;
    return 1;
}

bool KxUiLayoutManager::GetChildRect(UINT nId, CRect& rc) const
{
    if (!m_pContainer || nId == 0)
        return false;
    HWND hContainer = m_pContainer->GetSafeHwnd();
    return hContainer && windowRectIn(::GetDlgItem(hContainer, (int)nId), hContainer, rc);
}

int KxUiLayoutManager::TieChild(UINT nId, int nSides, int nType, UINT nBaseId)
{
    if (nType != typeSameSide && nType != typeOppositeSide)
        return 0;
    if (!m_pContainer || !::IsWindow(m_pContainer->GetSafeHwnd()))
        return 0;
    CRect rcBase, rcChild;
    if (nBaseId == 0)
        m_pContainer->GetClientRect(&rcBase);
    else if (!GetChildRect(nBaseId, rcBase))
        return 0;
    if (!GetChildRect(nId, rcChild))
        return 0;
    bool bSame = nType == typeSameSide;
    int bResult = 1;
    if (bResult && (nSides & sideTop))
        bResult = SetConstraint(nId, sideTop, nType, rcChild.top - (bSame ? rcBase.top : rcBase.bottom), nBaseId);
    if (bResult && (nSides & sideLeft))
        bResult = SetConstraint(nId, sideLeft, nType, rcChild.left - (bSame ? rcBase.left : rcBase.right), nBaseId);
    if (bResult && (nSides & sideBottom))
        bResult = SetConstraint(nId, sideBottom, nType, rcChild.bottom - (bSame ? rcBase.bottom : rcBase.top), nBaseId);
    if (bResult && (nSides & sideRight))
        bResult = SetConstraint(nId, sideRight, nType, rcChild.right - (bSame ? rcBase.right : rcBase.left), nBaseId);
    return bResult;
}

int KxUiLayoutManager::TieChild(CWnd* pChild, int nSides, int nType, CWnd* pBase)
{
    return TieChild(ChildId(pChild), nSides, nType, BaseId(pBase));
}

void KxUiLayoutManager::SetDefaultConstraint(UINT nId)
{
    CRect rc;
    if (!GetChildRect(nId, rc))
        return;
    SetConstraint(nId, sideTop, typeSameSide, rc.top, 0);
    SetConstraint(nId, sideLeft, typeSameSide, rc.left, 0);
    RemoveConstraint(nId, sideBottom | sideRight);
}

// --- layout ----------------------------------------------------------------------------------------

// Searching the container's children for every child at every layout costs a walk of the window list
// per child; the window found last time is checked instead, which keeps a layout linear in the number
// of children.
void KxUiLayoutManager::FindChildWindows()
{
    HWND hContainer = m_pContainer->GetSafeHwnd();
    for (INT_PTR i = 0; i < m_children.GetSize(); ++i) {
        KxUiWndConstraint& child = *m_children[i];
        HWND h = child.m_hWnd;
        if (!h || !::IsWindow(h) || ::GetAncestor(h, GA_PARENT) != hContainer || (UINT)::GetDlgCtrlID(h) != child.m_nId)
            child.m_hWnd = ::GetDlgItem(hContainer, (int)child.m_nId);
        // Nothing moves while the layout is computed: the rectangle is read once, not in every
        // round of the minimum/maximum search.
        if (!windowRectIn(child.m_hWnd, hContainer, child.m_rcWindow))
            child.m_hWnd = nullptr;
    }
}

int KxUiLayoutManager::CalcSideConstraint(KxUiWndConstraint& child, int nSide)
{
    KxUiSideConstraint& side = child.m_sides[nSide];
    if (side.m_nPos == kComputing)
        return kUnset;   // a cycle
    if (side.m_nPos != kUnset)
        return side.m_nPos;

    if (side.IsEmpty()) {
        if (!child.m_hWnd)
            return kUnset;
        const CRect& rc = child.m_rcWindow;
        int nOpposite = oppositeSide(nSide);
        if (child.m_sides[nOpposite].IsEmpty()) {
            side.m_nPos = sideOf(rc, nSide);
        } else {
            int nOther = CalcSideConstraint(child, nOpposite);
            if (nOther == kUnset)
                return kUnset;
            int nSize = isVertical(nSide) ? rc.Height() : rc.Width();
            side.m_nPos = isNearSide(nSide) ? nOther - nSize : nOther + nSize;
        }
        return side.m_nPos;
    }

    long long nNear = 0, nFar = 0;
    if (side.m_nBaseId != 0) {
        side.m_nPos = kComputing;
        int nBase = side.m_nBaseIndex;
        if (nBase < 0 || nBase >= m_children.GetSize() || m_children[nBase]->m_nId != side.m_nBaseId) {
            nBase = FindChild(side.m_nBaseId);
            if (nBase < 0)
                return kUnset;
            side.m_nBaseIndex = nBase;
        }
        KxUiWndConstraint& base = *m_children[nBase];
        const int nBaseNear = isVertical(nSide) ? kTop : kLeft;
        const int nBaseFar = oppositeSide(nBaseNear);
        if (side.m_nNearOffset != kUnset) {
            nNear = CalcSideConstraint(base, nBaseNear);
            if (nNear == kUnset)
                return kUnset;
        }
        if (side.m_nFarOffset != kUnset) {
            nFar = CalcSideConstraint(base, nBaseFar);
            if (nFar == kUnset)
                return kUnset;
        }
    } else {
        nFar = isVertical(nSide) ? m_nHeight : m_nWidth;
    }

    long long nPos;
    if (side.m_nNearOffset == kUnset)
        nPos = nFar + side.m_nFarOffset;
    else if (side.m_nFarOffset != kUnset)
        nPos = nNear + (nFar - nNear) * side.m_nNearOffset / side.m_nFarOffset;
    else
        nPos = nNear + side.m_nNearOffset;
    side.m_nPos = (int)nPos;
    return side.m_nPos;
}

int KxUiLayoutManager::CalcLayout()
{
    const INT_PTR nCount = m_children.GetSize();
    for (INT_PTR i = 0; i < nCount; ++i) {
        KxUiSideConstraint* sides = m_children[i]->m_sides;
        if (!sides[kTop].IsEmpty() || !sides[kBottom].IsEmpty())
            sides[kTop].m_nPos = sides[kBottom].m_nPos = kUnset;
        if (!sides[kLeft].IsEmpty() || !sides[kRight].IsEmpty())
            sides[kLeft].m_nPos = sides[kRight].m_nPos = kUnset;
    }
    for (INT_PTR i = 0; i < nCount; ++i)
        for (int nSide = kTop; nSide < kSideCount; ++nSide)
            if (CalcSideConstraint(*m_children[i], nSide) == kUnset)
                return layoutFails;
    if (m_nMinMaxCount == 0)
        return layoutFits;

    int nMask = 0;
    for (INT_PTR i = 0; i < nCount; ++i) {
        const KxUiWndConstraint& child = *m_children[i];
        if (!child.m_bMinMax)
            continue;
        CRect rc = child.GetRect();
        int cx = rc.Width(), cy = rc.Height();
        if (child.m_sizeMin.cx > 0 && cx < child.m_sizeMin.cx) {
            if (nMask & shrinkWidth)
                return layoutFails;
            nMask |= growWidth;
        }
        if (child.m_sizeMax.cx > 0 && cx > child.m_sizeMax.cx) {
            if (nMask & growWidth)
                return layoutFails;
            nMask |= shrinkWidth;
        }
        if (child.m_sizeMin.cy > 0 && cy < child.m_sizeMin.cy) {
            if (nMask & shrinkHeight)
                return layoutFails;
            nMask |= growHeight;
        }
        if (child.m_sizeMax.cy > 0 && cy > child.m_sizeMax.cy) {
            if (nMask & growHeight)
                return layoutFails;
            nMask |= shrinkHeight;
        }
    }
    return nMask;
}

int KxUiLayoutManager::OnSize(int cx, int cy)
{
    if (!m_pContainer || !::IsWindow(m_pContainer->GetSafeHwnd()) || cx == 0 || cy == 0 || m_children.GetSize() == 0)
        return 1;
    FindChildWindows();

    int w = std::max(cx, m_nMinWidth);
    if (w >= m_nMaxWidth)
        w = m_nMaxWidth;
    int h = std::max(cy, m_nMinHeight);
    if (h >= m_nMaxHeight)
        h = m_nMaxHeight;

    // The corrections of all rounds are kept together: a round that fixes the width while the height
    // still needs growing must not lose the width that was learned.
    int nCorrections = 0;
    for (long nRound = 0;; ++nRound) {
        if (w < 1 || w > 32767 || h < 1 || h > 32767 || nRound > kMaxSearchRounds)
            return 0;
        m_nWidth = w;
        m_nHeight = h;
        int nResult = CalcLayout();
        if (nResult == layoutFails)
            return 0;
        if (nResult == layoutFits)
            break;
        nCorrections |= nResult;
        if (nResult & growWidth)
            ++w;
        else if (nResult & shrinkWidth)
            --w;
        if (nResult & growHeight)
            ++h;
        else if (nResult & shrinkHeight)
            --h;
    }
    if (nCorrections & growWidth)
        m_nMinWidth = w;
    else if (nCorrections & shrinkWidth)
        m_nMaxWidth = w;
    if (nCorrections & growHeight)
        m_nMinHeight = h;
    else if (nCorrections & shrinkHeight)
        m_nMaxHeight = h;

    HDWP hdwp = ::BeginDeferWindowPos((int)m_children.GetSize());
    if (!hdwp)
        return 0;
    for (INT_PTR i = 0; i < m_children.GetSize(); ++i) {
        HWND hChild = m_children[i]->m_hWnd;
        if (!hChild)
            continue;
        CRect rc = m_children[i]->GetRect();
        hdwp = ::DeferWindowPos(hdwp, hChild, nullptr, rc.left, rc.top, rc.Width(), rc.Height(), SWP_NOZORDER);
        if (!hdwp)
            return 0;   // the batch has been freed by the platform
    }
    return ::EndDeferWindowPos(hdwp);
}

int KxUiLayoutManager::RedrawLayout(bool bResizeFrame)
{
    if (!m_pContainer || !::IsWindow(m_pContainer->GetSafeHwnd()))
        return 0;
    HWND hContainer = m_pContainer->GetSafeHwnd();
    RECT rc;
    ::GetClientRect(hContainer, &rc);
    int nResult = OnSize(rc.right - rc.left, rc.bottom - rc.top);
    if (bResizeFrame) {
        ::GetWindowRect(hContainer, &rc);
        ::SetWindowPos(hContainer, nullptr, 0, 0, rc.right - rc.left, rc.bottom - rc.top,
                       SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    }
    return nResult;
}

// --- window helpers --------------------------------------------------------------------------------

CString KxUiLayoutManager::_getWndName(const CWnd& wnd)
{
    WCHAR szName[64] = L"";
    if (wnd.GetSafeHwnd())
        ::GetClassNameW(wnd.GetSafeHwnd(), szName, 64);
    return CString(szName);
}

CRect KxUiLayoutManager::_getRectOfChildrens(CWnd& wnd)
{
    CRect rcAll(0, 0, 0, 0);
    HWND hWnd = wnd.GetSafeHwnd();
    if (!::IsWindow(hWnd))
        return rcAll;
    bool bFirst = true;
    for (HWND h = ::GetWindow(hWnd, GW_CHILD); h; h = ::GetWindow(h, GW_HWNDNEXT)) {
        CRect rc;
        if (!(::GetWindowLongW(h, GWL_STYLE) & WS_VISIBLE) || !windowRectIn(h, hWnd, rc))
            continue;
        if (bFirst)
            rcAll = rc;
        else
            rcAll.UnionRect(&rcAll, &rc);
        bFirst = false;
    }
    return rcAll;
}

void KxUiLayoutManager::_resizeParentWithChildrens(CWnd& wnd)
{
    CRect rc = _getRectOfChildrens(wnd);
    if (rc.IsRectNull())
        return;
    ::SetWindowPos(wnd.GetSafeHwnd(), nullptr, 0, 0, rc.right + 2, rc.bottom + 2, SWP_NOMOVE);
}

bool KxUiLayoutManager::_excludeClipRectOfAllChidren(CWnd* pWnd, CDC& dc, unsigned long dwStyle)
{
    HWND hWnd = pWnd ? pWnd->GetSafeHwnd() : nullptr;
    if (!::IsWindow(hWnd) || !dc.GetSafeHdc())
        return false;
    bool bResult = true;
    for (HWND h = ::GetWindow(hWnd, GW_CHILD); h; h = ::GetWindow(h, GW_HWNDNEXT)) {
        DWORD style = (DWORD)::GetWindowLongW(h, GWL_STYLE);
        if (!(style & WS_VISIBLE) || (style & dwStyle) != dwStyle)
            continue;
        if (::GetWindowLongW(h, GWL_EXSTYLE) & WS_EX_TRANSPARENT)
            continue;
        if ((style & BS_TYPEMASK) == BS_GROUPBOX) {
            WCHAR szClass[8] = L"";
            ::GetClassNameW(h, szClass, 8);
            if (::lstrcmpiW(szClass, L"Button") == 0)
                continue;
        }
        CRect rc;
        if (windowRectIn(h, hWnd, rc) && ::ExcludeClipRect(dc.GetSafeHdc(), rc.left, rc.top, rc.right, rc.bottom) == ERROR)
            bResult = false;
    }
    return bResult;
}
