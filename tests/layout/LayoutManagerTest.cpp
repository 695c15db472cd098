// The layout manager on real dialogs: geometry of the constraint types, failures that leave the
// children in place, the minimum/maximum search, children bookkeeping and the window helpers.
#include "KxUiLayoutManager.h"
#include "KxTestLayoutDlg.h"
#include "KxTestImportProbe.h"
#include "KxLayoutStress.h"
#include <cstdio>
#include <memory>

namespace {

typedef KxUiLayoutManager LM;

class LayoutManager : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dlg.create(300, 200));
        lm.Attach(&dlg);
    }
    void TearDown() override
    {
        if (dlg.GetSafeHwnd())
            dlg.DestroyWindow();
    }
    // Lays the dialog out at a client size: by resizing it, or, when it has that size already and
    // would get no WM_SIZE, by asking the manager.
    void resize(int cx, int cy)
    {
        if (dlg.clientSize() == CSize(cx, cy))
            lm.RedrawLayout();
        else
            dlg.setClientSize(cx, cy);
    }

    KxTestDlg dlg;
    LM lm;
};

TEST_F(LayoutManager, SidesFollowTheContainerAndReadBack)
{
    dlg.addStatic(101, 0, 0, 50, 50);
    ASSERT_EQ(1, lm.SetConstraint(101, LM::sideTop | LM::sideLeft, LM::typeSameSide, 10, 0));
    ASSERT_EQ(1, lm.SetConstraint(101, LM::sideBottom, LM::typeSameSide, -10, 0));
    ASSERT_EQ(1, lm.SetConstraint(101, LM::sideRight, LM::typeOppositeSide, 120, 0));   // right = 0 + 120
    dlg.addStatic(102, 0, 0, 20, 20);
    lm.SetConstraint(102, LM::sideTop, LM::typeOppositeSide, -30, 0);                     // top = height - 30
    lm.SetConstraint(102, LM::sideLeft, LM::typeSameSide, 200, 0);

    resize(300, 200);
    EXPECT_EQ(CRect(10, 10, 120, 190), dlg.childRect(101));
    EXPECT_EQ(CRect(200, 170, 220, 190), dlg.childRect(102));   // size kept below its top
    resize(400, 300);
    EXPECT_EQ(CRect(10, 10, 120, 290), dlg.childRect(101));
    EXPECT_EQ(CRect(200, 270, 220, 290), dlg.childRect(102));

    int nType, nOffset;
    UINT nBase = 77;
    ASSERT_EQ(1, lm.GetConstraint(101, LM::sideBottom, nType, nOffset, nBase));
    EXPECT_EQ(LM::typeSameSide, nType);
    EXPECT_EQ(-10, nOffset);
    EXPECT_EQ(0u, nBase);
    lm.GetConstraint(101, LM::sideRight, nType, nOffset, nBase);
    EXPECT_EQ(LM::typeOppositeSide, nType);
    EXPECT_EQ(120, nOffset);
    lm.GetConstraint(102, LM::sideTop, nType, nOffset, nBase);
    EXPECT_EQ(LM::typeOppositeSide, nType);
    EXPECT_EQ(-30, nOffset);
    lm.GetConstraint(102, LM::sideBottom, nType, nOffset, nBase);
    EXPECT_EQ(LM::typeNone, nType);
    EXPECT_EQ(32767, nOffset);
    EXPECT_EQ(0, lm.GetConstraint(999, LM::sideTop, nType, nOffset, nBase));
    EXPECT_EQ(0, lm.GetConstraint(101, LM::sideTop | LM::sideLeft, nType, nOffset, nBase));
}

TEST_F(LayoutManager, FractionsOfTheContainerAndOfAnotherChild)
{
    dlg.addStatic(101, 0, 0, 40, 40);
    lm.SetConstraint(101, LM::sideLeft, LM::typeFraction, 50, 0);
    dlg.addStatic(102, 0, 0, 10, 10);   // base: spans 100..300 horizontally
    lm.SetConstraint(102, LM::sideLeft, LM::typeSameSide, 100, 0);
    lm.SetConstraint(102, LM::sideRight, LM::typeOppositeSide, 300, 0);
    dlg.addStatic(103, 0, 0, 10, 10);
    lm.SetConstraint(103, LM::sideLeft, LM::typeFraction, 25, 102);
    lm.SetConstraint(103, LM::sideRight, LM::typeFraction, 75, 102);

    resize(300, 200);
    EXPECT_EQ(150, dlg.childRect(101).left);
    EXPECT_EQ(40, dlg.childRect(101).Width());
    EXPECT_EQ(CRect(150, 0, 250, 10), dlg.childRect(103));
    resize(201, 200);
    EXPECT_EQ(100, dlg.childRect(101).left);   // 201 * 50 / 100, truncated

    // A later fraction base applies to later constraints; earlier ones keep theirs.
    lm.SetFractionBase(200);
    lm.SetFractionBase(0);
    EXPECT_EQ(200, lm.GetFractionBase());
    lm.SetConstraint(101, LM::sideRight, LM::typeFraction, 150, 0);
    resize(400, 200);
    EXPECT_EQ(CRect(200, 0, 300, 40), dlg.childRect(101));
    int nType, nOffset;
    UINT nBase;
    lm.GetConstraint(101, LM::sideLeft, nType, nOffset, nBase);
    EXPECT_EQ(LM::typeFraction, nType);
    EXPECT_EQ(100, nOffset);   // 50 of 100 read in the current base of 200
}

TEST_F(LayoutManager, ChildrenFollowOtherChildren)
{
    dlg.addStatic(101, 10, 10, 100, 40);
    lm.SetConstraint(101, LM::sideTop | LM::sideLeft, LM::typeSameSide, 10, 0);
    lm.SetConstraint(101, LM::sideBottom, LM::typeFraction, 50, 0);
    lm.SetConstraint(101, LM::sideRight, LM::typeSameSide, -10, 0);
    dlg.addStatic(102, 0, 0, 30, 30);
    lm.SetConstraint(102, LM::sideTop, LM::typeOppositeSide, 5, 101);    // below 101
    lm.SetConstraint(102, LM::sideLeft | LM::sideRight, LM::typeSameSide, 0, 101);
    lm.SetConstraint(102, LM::sideBottom, LM::typeSameSide, -10, 0);

    resize(300, 200);
    EXPECT_EQ(CRect(10, 10, 290, 100), dlg.childRect(101));
    EXPECT_EQ(CRect(10, 105, 290, 190), dlg.childRect(102));
    resize(500, 400);
    EXPECT_EQ(CRect(10, 10, 490, 200), dlg.childRect(101));
    EXPECT_EQ(CRect(10, 205, 490, 390), dlg.childRect(102));
}

TEST_F(LayoutManager, SideWithoutConstraintKeepsTheSize)
{
    dlg.addStatic(101, 30, 20, 60, 40);
    lm.SetConstraint(101, LM::sideBottom, LM::typeSameSide, -10, 0);
    dlg.addStatic(102, 30, 20, 60, 40);
    lm.SetConstraint(102, LM::sideRight, LM::typeFraction, 50, 0);
    dlg.addStatic(103, 7, 9, 11, 13);   // a child without constraints stays where it is
    lm.AddChild(103, FALSE);

    resize(300, 200);
    EXPECT_EQ(CRect(30, 150, 90, 190), dlg.childRect(101));
    EXPECT_EQ(CRect(90, 20, 150, 60), dlg.childRect(102));
    resize(300, 300);
    EXPECT_EQ(CRect(30, 250, 90, 290), dlg.childRect(101));
    resize(500, 300);
    EXPECT_EQ(CRect(190, 20, 250, 60), dlg.childRect(102));
    EXPECT_EQ(CRect(7, 9, 18, 22), dlg.childRect(103));
}

TEST_F(LayoutManager, FailedLayoutLeavesEveryChildInPlace)
{
    dlg.addStatic(101, 10, 10, 50, 50);
    dlg.addStatic(102, 100, 10, 50, 50);
    dlg.addStatic(103, 200, 10, 50, 50);
    lm.SetConstraint(103, LM::sideRight, LM::typeSameSide, -5, 0);   // would move if the layout ran
    lm.SetConstraint(101, LM::sideLeft, LM::typeSameSide, 0, 102);
    lm.SetConstraint(102, LM::sideLeft, LM::typeSameSide, 0, 101);   // a cycle

    EXPECT_EQ(0, lm.OnSize(400, 300));
    resize(400, 300);
    EXPECT_EQ(CRect(10, 10, 60, 60), dlg.childRect(101));
    EXPECT_EQ(CRect(100, 10, 150, 60), dlg.childRect(102));
    EXPECT_EQ(CRect(200, 10, 250, 60), dlg.childRect(103));

    // Broken differently: the base has no window.
    lm.RemoveConstraint(101, LM::sideLeft);
    lm.RemoveConstraint(102, LM::sideLeft);
    lm.SetConstraint(101, LM::sideTop, LM::typeOppositeSide, 0, 555);
    EXPECT_EQ(0, lm.OnSize(400, 300));
    EXPECT_EQ(CRect(200, 10, 250, 60), dlg.childRect(103));
    // Repaired: the layout runs again.
    lm.RemoveConstraint(101, LM::sideTop);
    lm.RemoveChild(555);
    EXPECT_NE(0, lm.OnSize(400, 300));
    EXPECT_EQ(CRect(345, 10, 395, 60), dlg.childRect(103));
}

TEST_F(LayoutManager, MinimumWidthIsSearchedAndLearned)
{
    dlg.addStatic(101, 0, 0, 10, 10);
    lm.SetConstraint(101, LM::sideTop | LM::sideLeft, LM::typeSameSide, 10, 0);
    lm.SetConstraint(101, LM::sideBottom | LM::sideRight, LM::typeSameSide, -10, 0);
    ASSERT_EQ(1, lm.SetMinMax(101, CSize(100, 0), CSize(0, 0)));

    resize(100, 200);   // 80 wide without the limit
    EXPECT_EQ(CRect(10, 10, 110, 190), dlg.childRect(101));
    EXPECT_EQ(CSize(120, -1), lm.GetLearnedMinSize());
    EXPECT_EQ(CSize(32767, 32767), lm.GetLearnedMaxSize());
    resize(60, 200);    // clamped to the learned width at once
    EXPECT_EQ(CRect(10, 10, 110, 190), dlg.childRect(101));
    resize(300, 200);
    EXPECT_EQ(CRect(10, 10, 290, 190), dlg.childRect(101));

    // Any change forgets what was learned.
    lm.SetConstraint(101, LM::sideLeft, LM::typeSameSide, 20, 0);
    EXPECT_EQ(CSize(-1, -1), lm.GetLearnedMinSize());

    // Maximum height: the container is laid out as if it were lower.
    lm.SetMinMax(101, CSize(0, 0), CSize(0, 50));
    resize(300, 200);
    EXPECT_EQ(CRect(20, 10, 290, 60), dlg.childRect(101));
    EXPECT_EQ(CSize(32767, 70), lm.GetLearnedMaxSize());
    CSize sizeMin, sizeMax;
    ASSERT_EQ(1, lm.GetMinMax(101, sizeMin, sizeMax));
    EXPECT_EQ(CSize(0, 50), sizeMax);
    EXPECT_EQ(0, lm.GetMinMax(999, sizeMin, sizeMax));
}

TEST_F(LayoutManager, ImpossibleLimitsFailWithoutMoving)
{
    dlg.addStatic(101, 5, 5, 10, 10);
    lm.SetConstraint(101, LM::sideLeft, LM::typeSameSide, 10, 0);
    lm.SetConstraint(101, LM::sideRight, LM::typeSameSide, -10, 0);
    dlg.addStatic(102, 5, 50, 10, 10);
    lm.SetConstraint(102, LM::sideLeft, LM::typeSameSide, 10, 0);
    lm.SetConstraint(102, LM::sideRight, LM::typeSameSide, -10, 0);
    lm.SetMinMax(101, CSize(200, 0), CSize(0, 0));
    lm.SetMinMax(102, CSize(0, 0), CSize(100, 0));   // cannot be both over 200 and under 100 wide

    EXPECT_EQ(0, lm.OnSize(300, 200));
    EXPECT_EQ(CRect(5, 5, 15, 15), dlg.childRect(101));
    EXPECT_EQ(CRect(5, 50, 15, 60), dlg.childRect(102));

    // A child whose width does not follow the container: the search runs out of sizes and fails.
    lm.RemoveAllChildren();
    dlg.addStatic(103, 5, 80, 10, 10);
    lm.AddChild(103, TRUE);
    lm.SetMinMax(103, CSize(50, 0), CSize(0, 0));
    EXPECT_EQ(0, lm.OnSize(300, 200));
    EXPECT_EQ(CRect(5, 80, 15, 90), dlg.childRect(103));
}

TEST_F(LayoutManager, ChildrenAreAddedOnceAndBasesCannotBeRemoved)
{
    dlg.addStatic(101, 10, 20, 30, 40);
    dlg.addStatic(102, 50, 20, 30, 40);
    dlg.addStatic(0, 90, 20, 30, 40);   // no identifier: not a child of the layout
    EXPECT_EQ(-1, lm.AddChild(0u, TRUE));
    EXPECT_EQ(-1, lm.AddChild(static_cast<CWnd*>(nullptr), TRUE));
    lm.AddAllChildren(TRUE);
    EXPECT_EQ(2, lm.GetChildCount());
    EXPECT_EQ(1, lm.AddChild(102, TRUE));   // already there: same index
    EXPECT_EQ(2, lm.GetChildCount());

    int nType, nOffset;
    UINT nBase;
    lm.GetConstraint(101, LM::sideLeft, nType, nOffset, nBase);   // default: pinned at its corner
    EXPECT_EQ(LM::typeSameSide, nType);
    EXPECT_EQ(10, nOffset);

    lm.SetConstraint(102, LM::sideTop, LM::typeOppositeSide, 0, 101);
    EXPECT_EQ(0, lm.RemoveChild(101));   // the base of 102
    EXPECT_EQ(2, lm.GetChildCount());
    resize(300, 200);
    EXPECT_EQ(CRect(50, 60, 80, 100), dlg.childRect(102));

    lm.SetConstraint(101, LM::sideBottom, LM::typeOppositeSide, 40, 101);   // its own base
    EXPECT_EQ(0, lm.RemoveChild(101));
    EXPECT_EQ(0, lm.RemoveChild(777));
    EXPECT_EQ(1, lm.RemoveChild(102));
    lm.RemoveConstraint(101, LM::sideBottom);
    EXPECT_EQ(1, lm.RemoveChild(CWnd::FromHandle(dlg.item(101))));
    EXPECT_EQ(0, lm.GetChildCount());
    EXPECT_EQ(0, lm.RemoveConstraint(101, LM::sideAll));
}

TEST_F(LayoutManager, TieChildKeepsTheCurrentGeometry)
{
    dlg.addStatic(101, 20, 30, 100, 50);
    dlg.addStatic(102, 20, 100, 100, 50);
    lm.AddChild(101, TRUE);
    lm.AddChild(102, TRUE);
    ASSERT_EQ(1, lm.TieChild(101, LM::sideRight | LM::sideBottom, LM::typeSameSide, 0u));
    ASSERT_EQ(1, lm.TieChild(102, LM::sideTop, LM::typeOppositeSide, 101u));
    ASSERT_EQ(1, lm.TieChild(102, LM::sideRight, LM::typeSameSide, 101u));
    EXPECT_EQ(0, lm.TieChild(102, LM::sideLeft, LM::typeFraction, 0u));
    EXPECT_EQ(0, lm.TieChild(102, LM::sideLeft, LM::typeSameSide, 555u));
    EXPECT_EQ(1, lm.TieChild(CWnd::FromHandle(dlg.item(102)), LM::sideBottom, LM::typeSameSide, &dlg));

    resize(300, 200);   // nothing changes at the size the ties were taken at
    EXPECT_EQ(CRect(20, 30, 120, 80), dlg.childRect(101));
    EXPECT_EQ(CRect(20, 100, 120, 150), dlg.childRect(102));
    resize(400, 260);
    EXPECT_EQ(CRect(20, 30, 220, 140), dlg.childRect(101));
    EXPECT_EQ(CRect(20, 160, 220, 210), dlg.childRect(102));
}

TEST_F(LayoutManager, DetachedManagerLeavesTheContainerAlone)
{
    dlg.addStatic(101, 0, 0, 10, 10);
    lm.SetConstraint(101, LM::sideRight, LM::typeSameSide, -10, 0);
    EXPECT_NE(0, lm.RedrawLayout());
    EXPECT_EQ(290, dlg.childRect(101).right);
    lm.Detach();
    EXPECT_FALSE(lm.IsAttached());
    EXPECT_EQ(0, lm.GetChildCount());
    resize(400, 200);
    EXPECT_EQ(290, dlg.childRect(101).right);
    EXPECT_EQ(0, lm.RedrawLayout());
    EXPECT_EQ(1, lm.OnSize(400, 200));

    // A manager made by its run-time class lays out a second dialog.
    std::unique_ptr<CObject> pObject(RUNTIME_CLASS(KxUiLayoutManager)->CreateObject());
    ASSERT_TRUE(pObject && pObject->IsKindOf(RUNTIME_CLASS(KxUiLayoutManager)));
    LM* pOther = static_cast<LM*>(pObject.get());
    KxTestDlg other;
    ASSERT_TRUE(other.create(200, 100));
    other.addStatic(5, 0, 0, 10, 10);
    pOther->Attach(&other);
    pOther->SetConstraint(5, LM::sideBottom, LM::typeSameSide, 0, 0);
    other.setClientSize(200, 150);
    EXPECT_EQ(CRect(0, 140, 10, 150), other.childRect(5));
    other.DestroyWindow();
}

TEST_F(LayoutManager, OneLayoutMovesAllChildrenInOneDeferredBatch)
{
    for (UINT id = 1; id <= 6; ++id) {
        dlg.addStatic(id, 10, 10 * id, 20, 8);
        lm.SetConstraint(id, LM::sideRight, LM::typeSameSide, -5, 0);
    }
    dlg.addStatic(7, 0, 0, 5, 5);
    lm.AddChild(7, TRUE);
    lm.SetConstraint(8, LM::sideAll, LM::typeSameSide, 0, 0);   // computed without a window, not moved
    resize(300, 200);

    KxTestImportProbe probe(L"KxUiDllU.dll");
    ASSERT_TRUE(probe.imports(KxTestImportProbe::beginDefer) && probe.imports(KxTestImportProbe::defer) &&
                probe.imports(KxTestImportProbe::endDefer) && probe.imports(KxTestImportProbe::setWindowPos));
    resize(320, 200);
    EXPECT_EQ(1, probe.count(KxTestImportProbe::beginDefer));
    EXPECT_EQ(7, probe.count(KxTestImportProbe::defer));
    EXPECT_EQ(1, probe.count(KxTestImportProbe::endDefer));
    EXPECT_EQ(0, probe.count(KxTestImportProbe::setWindowPos));
    EXPECT_EQ(0, probe.count(KxTestImportProbe::moveWindow));
    EXPECT_EQ(315, dlg.childRect(6).right);
}

TEST_F(LayoutManager, WindowHelpers)
{
    HWND hButton = dlg.addChild(101, L"BUTTON", 10, 20, 50, 20, BS_PUSHBUTTON);
    dlg.addStatic(102, 100, 5, 30, 30);
    HWND hHidden = dlg.addStatic(103, 250, 150, 10, 10);
    ::ShowWindow(hHidden, SW_HIDE);
    EXPECT_EQ(CString(L"Button"), LM::_getWndName(*CWnd::FromHandle(hButton)));
    EXPECT_EQ(CString(L"#32770"), LM::_getWndName(dlg));
    EXPECT_TRUE(LM::_getWndName(CWnd()).IsEmpty());

    EXPECT_EQ(CRect(10, 5, 130, 40), LM::_getRectOfChildrens(dlg));
    LM::_resizeParentWithChildrens(dlg);
    CRect rcWnd;
    dlg.GetWindowRect(&rcWnd);
    EXPECT_EQ(CSize(132, 42), rcWnd.Size());
    KxTestDlg empty;
    ASSERT_TRUE(empty.create(50, 50));
    EXPECT_TRUE(LM::_getRectOfChildrens(empty).IsRectNull());
    LM::_resizeParentWithChildrens(empty);
    EXPECT_EQ(CSize(50, 50), empty.clientSize());
    empty.DestroyWindow();
}

// Paints a 60x60 surface after excluding the children and reads back which pixels were painted.
TEST_F(LayoutManager, ExcludedChildrenAreNotPaintedOver)
{
    dlg.addStatic(101, 10, 10, 10, 10);
    dlg.addChild(102, L"BUTTON", 30, 10, 10, 10, BS_GROUPBOX);      // transparent frame: kept
    dlg.addChild(103, L"BUTTON", 10, 30, 10, 10, BS_AUTOCHECKBOX);
    ::ShowWindow(dlg.addStatic(104, 30, 30, 10, 10), SW_HIDE);       // hidden: kept

    BITMAPINFO bmi = {};
    bmi.bmiHeader = {sizeof(BITMAPINFOHEADER), 60, -60, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* pBits = nullptr;
    HBITMAP hbm = ::CreateDIBSection(nullptr, &bmi, DIB_RGB_COLORS, &pBits, nullptr, 0);
    ASSERT_NE(nullptr, hbm);
    CDC dc;
    ASSERT_TRUE(dc.CreateCompatibleDC(nullptr));
    HGDIOBJ hOld = ::SelectObject(dc.GetSafeHdc(), hbm);
    auto paint = [&](unsigned long dwStyle) {
        ::SelectClipRgn(dc.GetSafeHdc(), nullptr);
        dc.FillSolidRect(0, 0, 60, 60, RGB(0, 0, 0));
        bool bResult = LM::_excludeClipRectOfAllChidren(&dlg, dc, dwStyle);
        dc.FillSolidRect(0, 0, 60, 60, RGB(255, 255, 255));
        return bResult;
    };
    auto painted = [&](int x, int y) {
        return (static_cast<const DWORD*>(pBits)[y * 60 + x] & 0xFFFFFF) == 0xFFFFFF;
    };

    ASSERT_TRUE(paint(0));
    EXPECT_FALSE(painted(15, 15));   // static
    EXPECT_FALSE(painted(15, 35));   // check box
    EXPECT_TRUE(painted(35, 15));    // group box
    EXPECT_TRUE(painted(35, 35));    // hidden
    EXPECT_TRUE(painted(5, 5));
    EXPECT_TRUE(painted(20, 20));    // right and bottom edges are outside a child

    ASSERT_TRUE(paint(BS_AUTOCHECKBOX));   // only children with these style bits
    EXPECT_TRUE(painted(15, 15));
    EXPECT_FALSE(painted(15, 35));

    EXPECT_FALSE(LM::_excludeClipRectOfAllChidren(nullptr, dc, 0));
    ::SelectObject(dc.GetSafeHdc(), hOld);
    dc.DeleteDC();
    ::DeleteObject(hbm);
    CDC none;
    EXPECT_FALSE(LM::_excludeClipRectOfAllChidren(&dlg, none, 0));
}

}  // namespace

namespace {

// The container's procedure as the platform has it, compared with the manager's hook.
LONG_PTR procedureOf(const CWnd& wnd)
{
    return ::GetWindowLongPtrW(wnd.GetSafeHwnd(), GWLP_WNDPROC);
}

}  // namespace

// A manager deleted while its container lives detaches itself: the next WM_SIZE reaches the
// remaining hooks and the container, never the freed manager, and the container's own procedure
// is back once no hook is left.
TEST(LayoutManagerLifetime, ManagerDeletedBeforeItsContainerDetachesItself)
{
    KxTestDlg dlg;
    ASSERT_TRUE(dlg.create(300, 200));
    dlg.addStatic(101, 0, 0, 50, 50);
    dlg.addStatic(102, 0, 60, 50, 50);
    const LONG_PTR own = procedureOf(dlg);

    auto first = std::make_unique<LM>();
    auto second = std::make_unique<LM>();
    first->Attach(&dlg);
    first->SetConstraint(101, LM::sideRight, LM::typeSameSide, -10, 0);
    second->Attach(&dlg);
    second->SetConstraint(102, LM::sideRight, LM::typeSameSide, -20, 0);
    ASSERT_NE(own, procedureOf(dlg));

    first.reset();
    dlg.setClientSize(400, 250);
    EXPECT_EQ(CRect(0, 0, 50, 50), dlg.childRect(101));      // nobody moves it any more
    EXPECT_EQ(CRect(330, 60, 380, 110), dlg.childRect(102));
    EXPECT_NE(own, procedureOf(dlg));

    second.reset();
    EXPECT_EQ(own, procedureOf(dlg));
    dlg.setClientSize(200, 150);
    EXPECT_EQ(CRect(330, 60, 380, 110), dlg.childRect(102));
    dlg.DestroyWindow();
}

// Random constraint graphs laid out at random sizes: a failed layout moves nothing, a successful one
// never gives a child a negative size and puts every child where it computed it.
TEST(LayoutManagerStress, RandomConstraintGraphsNeverGiveANegativeSize)
{
    const KxLayoutStress::Report report = KxLayoutStress::Run(20261124, 200);
    EXPECT_EQ(0, report.failures) << report.firstFailure;
    EXPECT_EQ(200, report.graphs);
    EXPECT_GT(report.crossedChildren, 100);                       // the clamp was needed
    EXPECT_GT(report.failedLayouts, 100);                         // and cycles were met
    EXPECT_GT(report.layouts - report.failedLayouts, 120);        // and many layouts ran
    std::printf("[ stress   ] %s\n", report.Summary().c_str());
}
