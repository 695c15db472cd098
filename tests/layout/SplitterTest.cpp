// The splitter between two panes of a real dialog: attaching, the restored position, dragging with the
// mouse, the cursors, detaching and destruction.
#include "KxUiLayoutManager.h"
#include "KxUiSplitter.h"
#include "KxTestLayoutDlg.h"

namespace {

typedef KxUiLayoutManager LM;

class TestSplitter : public KxUiSplitter {
public:
    using KxUiSplitter::getPercent;
    using KxUiSplitter::setCurrentPercent;
};

enum { idFirst = 101, idSecond = 102, idBar = 103 };

class Splitter : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dlg.create(400, 300));
        lm.Attach(&dlg);
    }
    void TearDown() override
    {
        if (dlg.GetSafeHwnd())
            dlg.DestroyWindow();
    }

    // Left and right panes around a bar; the panes' outer sides keep 10 pixels from the border.
    void makeHorizontal()
    {
        dlg.addStatic(idFirst, 10, 10, 180, 280);
        dlg.addStatic(idSecond, 210, 10, 180, 280);
        ASSERT_TRUE(bar.Create(L"", WS_CHILD | WS_VISIBLE, CRect(195, 10, 205, 290), &dlg, idBar));
        lm.SetConstraint(idFirst, LM::sideTop | LM::sideLeft, LM::typeSameSide, 10, 0);
        lm.SetConstraint(idFirst, LM::sideBottom, LM::typeSameSide, -10, 0);
        lm.SetConstraint(idSecond, LM::sideTop, LM::typeSameSide, 10, 0);
        lm.SetConstraint(idSecond, LM::sideBottom | LM::sideRight, LM::typeSameSide, -10, 0);
    }
    // Upper and lower panes around a bar.
    void makeVertical()
    {
        dlg.addStatic(idFirst, 10, 10, 380, 130);
        dlg.addStatic(idSecond, 10, 160, 380, 130);
        ASSERT_TRUE(bar.Create(L"", WS_CHILD | WS_VISIBLE, CRect(10, 145, 390, 155), &dlg, idBar));
        lm.SetConstraint(idFirst, LM::sideTop | LM::sideLeft, LM::typeSameSide, 10, 0);
        lm.SetConstraint(idFirst, LM::sideRight, LM::typeSameSide, -10, 0);
        lm.SetConstraint(idSecond, LM::sideLeft, LM::typeSameSide, 10, 0);
        lm.SetConstraint(idSecond, LM::sideBottom | LM::sideRight, LM::typeSameSide, -10, 0);
    }

    // Mouse messages at a point given in the dialog's client coordinates.
    LRESULT mouse(UINT message, int x, int y)
    {
        CRect rc = dlg.childRect(idBar);
        return bar.SendMessage(message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON,
                               MAKELPARAM(static_cast<WORD>(x - rc.left), static_cast<WORD>(y - rc.top)));
    }

    bool constrained(UINT nId, int nSide)
    {
        int nType = -1, nOffset;
        UINT nBase;
        return lm.GetConstraint(nId, nSide, nType, nOffset, nBase) && nType != LM::typeNone;
    }

    KxTestDlg dlg;
    LM lm;
    TestSplitter bar;
};

TEST_F(Splitter, AttachesOnceUntilDetached)
{
    EXPECT_FALSE(bar.attachHorz(&lm, idFirst, idSecond));   // no window yet
    makeHorizontal();
    EXPECT_FALSE(bar.attachHorz(nullptr, idFirst, idSecond));
    EXPECT_FALSE(bar.isAttached());
    ASSERT_TRUE(bar.attachHorz(&lm, idFirst, idSecond));
    EXPECT_FALSE(bar.attachHorz(&lm, idFirst, idSecond));
    EXPECT_FALSE(bar.attachVert(&lm, idFirst, idSecond));
    EXPECT_TRUE(bar.isHorizontal());
    bar.detachConstraint();
    EXPECT_TRUE(bar.attachVert(&lm, idFirst, idSecond));
    EXPECT_FALSE(bar.isHorizontal());
}

TEST_F(Splitter, HorizontalBarSharesTheWidthBetweenThePanes)
{
    makeHorizontal();
    ASSERT_TRUE(bar.attachHorz(&lm, idFirst, idSecond));
    EXPECT_EQ(CRect(195, 10, 201, 290), dlg.childRect(idBar));   // 6 wide, nothing laid out yet
    EXPECT_EQ(49, bar.getCurrentPercent());                       // centre 198 of 400
    EXPECT_EQ(idFirst, (int)bar.getFirstPane());

    lm.RedrawLayout();
    EXPECT_EQ(CRect(196, 0, 202, 300), dlg.childRect(idBar));
    EXPECT_EQ(CRect(10, 10, 196, 290), dlg.childRect(idFirst));
    EXPECT_EQ(CRect(202, 10, 390, 290), dlg.childRect(idSecond));
    dlg.setClientSize(800, 300);
    EXPECT_EQ(CRect(392, 0, 398, 300), dlg.childRect(idBar));
    EXPECT_EQ(392, dlg.childRect(idFirst).right);
    EXPECT_EQ(398, dlg.childRect(idSecond).left);
}

TEST_F(Splitter, RestoredPositionIsUsedOnceWithoutMeasuring)
{
    makeHorizontal();
    bar.setCurrentPercent(30);
    ASSERT_TRUE(bar.attachHorz(&lm, idFirst, idSecond));
    EXPECT_EQ(30, bar.getCurrentPercent());
    lm.RedrawLayout();
    EXPECT_EQ(120, dlg.childRect(idBar).left);
    EXPECT_EQ(120, dlg.childRect(idFirst).right);
    // The next measure is a real one.
    CRect rcBar = dlg.childRect(idBar);
    EXPECT_EQ(75, bar.getPercent(CPoint(300 - rcBar.left, 5)));
}

TEST_F(Splitter, DraggingRelaysOutAndStaysInsideThePanes)
{
    makeHorizontal();
    ASSERT_TRUE(bar.attachHorz(&lm, idFirst, idSecond));
    lm.RedrawLayout();

    mouse(WM_MOUSEMOVE, 300, 150);   // not dragging: nothing happens
    EXPECT_EQ(196, dlg.childRect(idBar).left);

    mouse(WM_LBUTTONDOWN, 198, 150);
    EXPECT_EQ(bar.GetSafeHwnd(), ::GetCapture());
    mouse(WM_MOUSEMOVE, 100, 150);   // well inside both panes
    EXPECT_EQ(25, bar.getCurrentPercent());
    EXPECT_EQ(CRect(100, 0, 106, 300), dlg.childRect(idBar));
    EXPECT_EQ(100, dlg.childRect(idFirst).right);
    EXPECT_EQ(106, dlg.childRect(idSecond).left);

    mouse(WM_MOUSEMOVE, 395, 150);   // beyond the right pane: one bar width inside its right edge
    EXPECT_EQ(96, bar.getCurrentPercent());   // (390 - 6) of 400
    EXPECT_EQ(CRect(384, 0, 390, 300), dlg.childRect(idBar));
    mouse(WM_MOUSEMOVE, 5, 150);     // beyond the left pane: one bar width inside its left edge
    EXPECT_EQ(4, bar.getCurrentPercent());    // (10 + 6) of 400
    EXPECT_EQ(16, dlg.childRect(idBar).left);

    mouse(WM_LBUTTONUP, 16, 150);
    EXPECT_EQ(nullptr, ::GetCapture());
    mouse(WM_MOUSEMOVE, 200, 150);
    EXPECT_EQ(4, bar.getCurrentPercent());
    EXPECT_EQ(16, dlg.childRect(idBar).left);
}

TEST_F(Splitter, VerticalBarLaysOutWhenAttachingAndShowsItsCursor)
{
    makeVertical();
    ASSERT_TRUE(bar.attachVert(&lm, idFirst, idSecond));
    EXPECT_EQ(49, bar.getCurrentPercent());   // centre 148 of 300
    EXPECT_EQ(CRect(0, 147, 400, 153), dlg.childRect(idBar));
    EXPECT_EQ(CRect(10, 10, 390, 147), dlg.childRect(idFirst));
    EXPECT_EQ(CRect(10, 153, 390, 290), dlg.childRect(idSecond));

    mouse(WM_LBUTTONDOWN, 200, 150);
    mouse(WM_MOUSEMOVE, 200, 75);
    mouse(WM_LBUTTONUP, 200, 75);
    EXPECT_EQ(25, bar.getCurrentPercent());
    EXPECT_EQ(75, dlg.childRect(idFirst).bottom);

    EXPECT_TRUE(bar.SendMessage(WM_SETCURSOR, (WPARAM)bar.GetSafeHwnd(), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE)));
    EXPECT_EQ(::LoadCursorW(nullptr, IDC_SIZENS), ::GetCursor());
    bar.detachConstraint();
    ASSERT_TRUE(bar.attachHorz(&lm, idFirst, idSecond));
    bar.SendMessage(WM_SETCURSOR, (WPARAM)bar.GetSafeHwnd(), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(::LoadCursorW(nullptr, IDC_SIZEWE), ::GetCursor());
}

TEST_F(Splitter, DetachRemovesOnlyTheAttachConstraints)
{
    makeHorizontal();
    ASSERT_TRUE(bar.attachHorz(&lm, idFirst, idSecond));
    ASSERT_TRUE(constrained(idBar, LM::sideLeft) && constrained(idFirst, LM::sideRight));
    bar.detachConstraint();
    EXPECT_FALSE(bar.isAttached());
    EXPECT_EQ(KxUiSplitter::noPane, bar.getFirstPane());
    EXPECT_EQ(KxUiSplitter::noPane, bar.getSecondPane());
    for (int nSide : {LM::sideLeft, LM::sideTop, LM::sideBottom})
        EXPECT_FALSE(constrained(idBar, nSide)) << nSide;
    EXPECT_FALSE(constrained(idFirst, LM::sideRight));
    EXPECT_FALSE(constrained(idSecond, LM::sideLeft));
    EXPECT_TRUE(constrained(idFirst, LM::sideLeft));
    EXPECT_TRUE(constrained(idSecond, LM::sideRight));
    EXPECT_EQ(1, lm.RemoveChild(idBar));   // no longer the base of a pane
}

TEST_F(Splitter, DestroyResetsTheSplitterButNotTheLayout)
{
    makeVertical();
    bar.setCurrentPercent(40);
    ASSERT_TRUE(bar.attachVert(&lm, idFirst, idSecond));
    EXPECT_EQ(40, bar.getCurrentPercent());
    bar.setCurrentPercent(60);
    bar.DestroyWindow();
    EXPECT_EQ(0, bar.getCurrentPercent());
    EXPECT_TRUE(bar.isHorizontal());
    EXPECT_FALSE(bar.isAttached());
    EXPECT_EQ(KxUiSplitter::noPane, bar.getFirstPane());
    EXPECT_TRUE(constrained(idBar, LM::sideTop));
    // The mark of the position set from outside is gone too: a new bar, freed of the old bar's
    // constraints, measures where it is.
    lm.RemoveConstraint(idBar, LM::sideAll);
    ASSERT_TRUE(bar.Create(L"", WS_CHILD | WS_VISIBLE, CRect(10, 222, 390, 228), &dlg, idBar));
    ASSERT_TRUE(bar.attachVert(&lm, idFirst, idSecond));
    EXPECT_EQ(75, bar.getCurrentPercent());
}

}  // namespace
