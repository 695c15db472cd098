// KxUiLayoutManager: keeps the children of a dialog or frame (the container) in place when the
// container is resized, from side constraints.
//
// Each child, named by its control identifier, has up to four side constraints. A side follows the
// container or a side of another child:
//   typeSameSide      the same side of the base plus an offset (with the container as base: top and
//                     left follow 0, bottom and right follow the container's height or width);
//   typeOppositeSide  the base's opposite side plus an offset (top to the base's bottom, ...);
//   typeFraction      offset / fraction base of the way from the base's top (left) to its bottom (right).
// A side without a constraint keeps the child's size and follows the opposite side; a child without any
// constraint on an axis stays where it was first found on that axis. Minimum and maximum sizes widen or
// narrow the size the container is laid out for, one pixel at a time, and the size found is learned as
// the container's limit until constraints, limits or children change. Constraints that would give a
// child a negative width or height give it zero instead (KxUiWndConstraint::GetRect).
//
// The manager watches the container's WM_SIZE through the window-procedure manager and moves all
// children in one deferred batch per layout. The manager may be destroyed before or after its
// container: a manager destroyed first detaches its hook (the container gets its own procedure back
// when no other hook is left).
//
// Typical use in OnInitDialog:
//     m_layout.Attach(this);
//     m_layout.SetConstraint(IDC_LIST, sideTop | sideLeft, typeSameSide, 10, 0);
//     m_layout.SetConstraint(IDC_LIST, sideBottom | sideRight, typeSameSide, -10, 0);
//     m_layout.TieChild(IDOK, sideRight | sideBottom, typeSameSide, 0u);
//     m_layout.RedrawLayout();
#pragma once
#include "KxUiDef.h"
#include "KxUiWndProcMgr.h"
#include "KxArrayPtrDelete.h"
#include <afxtempl.h>

class CWnd;
class CDC;

// One side of a child: the base it follows and how. Both offsets unset: no constraint. Only the near
// offset: the base's near edge (top or left) plus it. Only the far offset: the base's far edge (bottom
// or right) plus it. Both: near edge + (far edge - near edge) * near offset / far offset.
class KXUI_API KxUiSideConstraint {
public:
    enum { unset = 32767, computing = 32766 };

    KxUiSideConstraint() : m_nBaseId(0), m_nNearOffset(unset), m_nFarOffset(unset), m_nPos(unset), m_nBaseIndex(-1) {}
    // No base, no offsets, no computed position.
    void Empty() { m_nBaseId = 0; m_nNearOffset = m_nFarOffset = m_nPos = unset; }
    bool IsEmpty() const { return m_nNearOffset == unset && m_nFarOffset == unset; }

    UINT m_nBaseId;     // control identifier of the base, 0 = the container
    int m_nNearOffset;
    int m_nFarOffset;
    int m_nPos;         // position computed by the last layout, unset or computing
    int m_nBaseIndex;   // cached index of the base in the manager's child list
};

// The constraints of one child: four sides in storage order top, bottom, left, right, and its limits.
// The side bit of storage index i is 1 << i.
class KXUI_API KxUiWndConstraint {
public:
    explicit KxUiWndConstraint(UINT nId) : m_nId(nId), m_hWnd(nullptr) { Empty(); }
    // Clears the limits and all sides.
    void Empty();
    // (left, top, right, bottom) from the computed positions. Where the constraints put the right
    // side left of the left one (or the bottom above the top), the child gets a width (height) of
    // zero at its left (top): a child is never given a negative size.
    CRect GetRect() const;

    UINT m_nId;
    int m_bMinMax;      // a minimum or maximum component above 0 is set
    CSize m_sizeMin;
    CSize m_sizeMax;
    KxUiSideConstraint m_sides[4];
    HWND m_hWnd;        // the child's window as last found; checked before every layout
    CRect m_rcWindow;   // its rectangle in container client coordinates when the layout began
};

class KXUI_API KxUiLayoutManager : public CObject, public KxUiWndProc {
    DECLARE_DYNCREATE(KxUiLayoutManager)
public:
    // Side bits (combinable) and their storage indexes 0..3 in the same order.
    enum { sideTop = 1, sideBottom = 2, sideLeft = 4, sideRight = 8, sideAll = 15 };
    // Constraint types; typeNone is only reported by GetConstraint.
    enum { typeNone = 0, typeSameSide = 1, typeOppositeSide = 2, typeFraction = 3 };

    KxUiLayoutManager();
    virtual ~KxUiLayoutManager();

    // Overridables (in this order after CObject's).
    // Removes all children, stores the container and hooks its messages.
    virtual void Attach(CWnd* pContainer);
    // Removes all children and forgets the container; the hook stays and does nothing.
    virtual void Detach();
    // Pins the child at its current top-left corner, keeping its size.
    virtual void SetDefaultConstraint(UINT nId);
    // Lays out for the container's client size; with bResizeFrame the container's frame is recalculated.
    virtual int RedrawLayout(bool bResizeFrame = false);
    // Computes and applies the layout for a client size. 1 when there is nothing to do, 0 when the
    // layout fails (children stay where they are), otherwise the result of EndDeferWindowPos.
    virtual int OnSize(int cx, int cy);
    // Called when the container receives WM_DESTROY; does nothing here.
    virtual void OnDestroy();
protected:
    // Handles one message of the container on behalf of the hook: WM_SIZE lays out, WM_DESTROY calls
    // OnDestroy. The result is not used by the hook, which always lets the container's procedure run.
    virtual LRESULT LayoutManagerProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam);
public:
    // The hook: calls LayoutManagerProc for the container's messages and returns 0, so the
    // container's own procedure runs after the children have been moved.
    int windowProc(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;

    int IsAttached() const { return m_pContainer != nullptr; }
    CWnd* GetContainer() const { return m_pContainer; }

    // Children. AddChild returns the child's index (-1 for identifier 0 or no window).
    int AddChild(UINT nId, int bSetDefault = TRUE);
    int AddChild(CWnd* pChild, int bSetDefault = TRUE);
    // Every direct child of the container with a non-zero identifier, in window-list order.
    void AddAllChildren(int bSetDefault = TRUE);
    // 0 for an unknown child or one that is the base of any side.
    int RemoveChild(UINT nId);
    int RemoveChild(CWnd* pChild);
    void RemoveAllChildren();
    int GetChildCount() const { return (int)m_children.GetSize(); }

    // Constraints. nSides is a mask of side bits; nBaseId 0 (or a null or the container window) is the
    // container. A base that is not a child yet is added.
    int SetConstraint(UINT nId, int nSides, int nType, int nOffset, UINT nBaseId = 0);
    int SetConstraint(CWnd* pChild, int nSides, int nType, int nOffset, CWnd* pBase = nullptr);
    // Reads one side (a single side bit) back; 0 for an unknown child or side.
    int GetConstraint(UINT nId, int nSide, int& nType, int& nOffset, UINT& nBaseId) const;
    int RemoveConstraint(UINT nId, int nSides);
    int RemoveConstraint(CWnd* pChild, int nSides);
    // Size limits; a component of 0 or less means none. An unknown child is added.
    int SetMinMax(UINT nId, CSize sizeMin, CSize sizeMax);
    int SetMinMax(CWnd* pChild, CSize sizeMin, CSize sizeMax);
    int GetMinMax(UINT nId, CSize& sizeMin, CSize& sizeMax) const;
    // Ties sides with typeSameSide or typeOppositeSide so that the current geometry is kept.
    int TieChild(UINT nId, int nSides, int nType, UINT nBaseId = 0);
    int TieChild(CWnd* pChild, int nSides, int nType, CWnd* pBase = nullptr);

    // Denominator of typeFraction offsets for constraints set from now on; 0 is ignored.
    int GetFractionBase() const { return m_nFractionBase; }
    void SetFractionBase(int nBase) { if (nBase != 0) m_nFractionBase = nBase; }

    // The size limits the container has learned (-1 and 32767 when none).
    CSize GetLearnedMinSize() const { return CSize(m_nMinWidth, m_nMinHeight); }
    CSize GetLearnedMaxSize() const { return CSize(m_nMaxWidth, m_nMaxHeight); }

    // Window helpers.
    // The platform class name of the window ("Button", "#32770"), at most 63 characters; empty for a
    // window object without a window.
    static CString _getWndName(const CWnd& wnd);
    // The union of the window rectangles of the window's visible direct children, in the window's
    // client coordinates; an empty rectangle (0,0,0,0) when there is none.
    static CRect _getRectOfChildrens(CWnd& wnd);
    // Sizes the window to reach 2 pixels beyond the right and bottom of that union, keeping its
    // position: SetWindowPos(0, 0, right + 2, bottom + 2, SWP_NOMOVE). Does nothing without a visible
    // child.
    static void _resizeParentWithChildrens(CWnd& wnd);
    // Excludes from the DC's clipping region the rectangles (in pWnd's client coordinates, the DC's
    // origin) of pWnd's direct children that are visible, have every style bit of dwStyle (0: any
    // style) and are opaque: group boxes and WS_EX_TRANSPARENT children are drawn over the container's
    // background and are kept. Call it before the container paints its background. False for a null
    // window, a DC without handle or a failed exclusion.
    static bool _excludeClipRectOfAllChidren(CWnd* pWnd, CDC& dc, unsigned long dwStyle = 0);

protected:
    int FindChild(UINT nId) const;           // index searched from the end, -1 when unknown
    int FindOrAddChild(UINT nId);
    void ResetLearnedLimits();
    // Results of CalcLayout: the layout fits, fails, or asks for a mask of corrections of the size
    // the container is laid out for.
    enum { layoutFits = 0, layoutFails = 1, growWidth = 2, growHeight = 4, shrinkWidth = 8, shrinkHeight = 16 };
    // The control identifier of a child window; 0 for null or no window.
    static UINT ChildId(const CWnd* pChild);
    // The identifier of a base window; 0 (the container) for null, no window or the container itself.
    UINT BaseId(const CWnd* pBase) const;
    // 32767 when the side (a storage index) cannot be computed (cycle, unknown base, missing window).
    int CalcSideConstraint(KxUiWndConstraint& child, int nSide);
    // layoutFits, layoutFails or a mask of corrections.
    int CalcLayout();
    // Finds the children's windows for a layout: the window found last time when it is still the
    // container's child of that identifier, otherwise the container's dialog item.
    // Each window's rectangle is read once, for the whole layout.
    void FindChildWindows();
    // The child's (or base's) rectangle in container client coordinates; false without a window.
    bool GetChildRect(UINT nId, CRect& rc) const;

    CWnd* m_pContainer;
    int m_nFractionBase;
    int m_nMinMaxCount;
    int m_nWidth;           // container size the last layout was computed for
    int m_nHeight;
    int m_nMinWidth;        // learned container limits
    int m_nMaxWidth;
    int m_nMinHeight;
    int m_nMaxHeight;
    KxArrayPtrDelete<CArray<KxUiWndConstraint*, KxUiWndConstraint*>> m_children;   // in order of addition
};
