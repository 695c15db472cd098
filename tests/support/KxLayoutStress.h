// Random constraint graphs over the real children of a real dialog: sides tied to the container
// or to other children by every type, random offsets and fractions, cycles, bases without a
// window, minimum and maximum sizes, laid out at random container sizes.
//
// After every layout: a layout that fails has moved no child; one that succeeds gives every child
// a width and height of at least zero and puts every child's window exactly at the rectangle it
// computed. The report counts the children whose computed sides crossed (the cases that used to
// end in a negative size).
//
// Header only, without GoogleTest, so the layout suite runs a short fixed-seed form and the
// benchmark program a long one.
#pragma once
#include "KxUiLayoutManager.h"
#include "KxTestLayoutDlg.h"
#include <cstdio>
#include <random>
#include <string>
#include <vector>

class KxLayoutStress {
public:
    struct Report {
        long graphs = 0;
        long layouts = 0;
        long failedLayouts = 0;
        long crossedChildren = 0;   // children whose computed right < left or bottom < top
        long failures = 0;
        std::string firstFailure;

        std::string Summary() const
        {
            char text[256];
            std::snprintf(text, sizeof text,
                          "%ld graphs, %ld layouts (%ld failed as the constraints say), %ld children with "
                          "crossed sides, %ld failures",
                          graphs, layouts, failedLayouts, crossedChildren, failures);
            return text;
        }
    };

    // nGraphs graphs of nChildren children, each laid out nLayouts times.
    static Report Run(unsigned seed, int nGraphs, int nLayouts = 3, int nChildren = 6)
    {
        KxLayoutStress stress(seed);
        KxTestDlg dlg;
        if (!dlg.create(400, 300)) {
            stress.Fail("no dialog");
            return stress.m_report;
        }
        for (int i = 0; i < nChildren; ++i)
            dlg.addStatic(kFirstId + (UINT)i, 0, 0, 10, 10);
        for (int g = 0; g < nGraphs && stress.m_report.failures == 0; ++g)
            stress.Graph(dlg, nLayouts, nChildren);
        dlg.DestroyWindow();
        return stress.m_report;
    }

private:
    enum : UINT { kFirstId = 501, kMissingId = 599 };

    // The computed rectangles are the manager's own business; the stress reads them to compare.
    class Manager : public KxUiLayoutManager {
    public:
        // The rectangle computed for the child at index i, and whether its sides crossed.
        CRect Computed(int i, bool& bCrossed) const
        {
            const KxUiWndConstraint& child = *m_children[i];
            bCrossed = child.m_sides[3].m_nPos < child.m_sides[2].m_nPos ||
                       child.m_sides[1].m_nPos < child.m_sides[0].m_nPos;
            return child.GetRect();
        }
        UINT Id(int i) const { return m_children[i]->m_nId; }
    };

    explicit KxLayoutStress(unsigned seed) : m_random(seed) {}

    int Pick(int n) { return n > 0 ? (int)(m_random() % (unsigned)n) : 0; }
    int Between(int lo, int hi) { return lo + Pick(hi - lo + 1); }

    void Fail(const std::string& what)
    {
        if (m_report.failures++ == 0)
            m_report.firstFailure = "graph " + std::to_string(m_report.graphs) + ": " + what;
    }

    // The platform keeps window coordinates within 16 bits; a child computed beyond them is placed
    // at the edge of that range, which is not the manager's doing.
    static bool InWindowRange(const CRect& rc)
    {
        return rc.left >= -32768 && rc.top >= -32768 && rc.right <= 32767 && rc.bottom <= 32767;
    }

    static std::string Text(const CRect& rc)
    {
        return "(" + std::to_string(rc.left) + "," + std::to_string(rc.top) + ")-(" + std::to_string(rc.right) +
               "," + std::to_string(rc.bottom) + ")";
    }

    void Graph(KxTestDlg& dlg, int nLayouts, int nChildren)
    {
        for (int i = 0; i < nChildren; ++i)
            ::MoveWindow(dlg.item(kFirstId + (UINT)i), Between(0, 300), Between(0, 200), Between(0, 120),
                         Between(0, 90), FALSE);
        Manager lm;
        lm.Attach(&dlg);
        for (int i = 0; i < nChildren; ++i) {
            const UINT nId = kFirstId + (UINT)i;
            lm.AddChild(nId, Pick(3) == 0);
            for (int nSide : {KxUiLayoutManager::sideTop, KxUiLayoutManager::sideBottom, KxUiLayoutManager::sideLeft,
                              KxUiLayoutManager::sideRight}) {
                if (Pick(3) == 0)
                    continue;
                const int nType = Between(KxUiLayoutManager::typeSameSide, KxUiLayoutManager::typeFraction);
                const int nOffset = nType == KxUiLayoutManager::typeFraction ? Between(-20, 120) : Between(-200, 200);
                // Mostly the container or an earlier child; now and then any child (possibly
                // itself: a cycle) or a base without a window.
                UINT nBase = 0;
                const int nBaseKind = Pick(20);
                if (nBaseKind < 7 && i > 0)
                    nBase = kFirstId + (UINT)Pick(i);
                else if (nBaseKind == 7)
                    nBase = kFirstId + (UINT)Pick(nChildren);
                else if (nBaseKind == 8 && Pick(4) == 0)
                    nBase = kMissingId;
                if (Pick(6) == 0)
                    lm.SetFractionBase(Pick(10) == 0 ? Between(-5, 5) : Between(50, 200));
                lm.SetConstraint(nId, nSide, nType, nOffset, nBase);
            }
            if (Pick(8) == 0)
                lm.SetMinMax(nId, CSize(Between(-5, 100), Between(-5, 100)), CSize(Between(-5, 400), Between(-5, 400)));
        }
        for (int l = 0; l < nLayouts && m_report.failures == 0; ++l)
            Layout(dlg, lm, Between(1, 600), Between(1, 450));
        lm.Detach();
        ++m_report.graphs;
    }

    void Layout(KxTestDlg& dlg, Manager& lm, int cx, int cy)
    {
        std::vector<CRect> before;
        for (int i = 0; i < lm.GetChildCount(); ++i)
            before.push_back(dlg.childRect(lm.Id(i)));
        ++m_report.layouts;
        if (lm.OnSize(cx, cy) == 0) {
            ++m_report.failedLayouts;
            for (int i = 0; i < lm.GetChildCount(); ++i) {
                if (dlg.childRect(lm.Id(i)) != before[(size_t)i])
                    Fail("a failed layout moved child " + std::to_string(lm.Id(i)));
            }
            return;
        }
        for (int i = 0; i < lm.GetChildCount(); ++i) {
            const UINT nId = lm.Id(i);
            if (!dlg.item(nId))
                continue;
            bool bCrossed = false;
            const CRect rc = lm.Computed(i, bCrossed);
            m_report.crossedChildren += bCrossed;
            if (rc.Width() < 0 || rc.Height() < 0)
                Fail("child " + std::to_string(nId) + " computed with a negative size " + Text(rc));
            else if (InWindowRange(rc) && dlg.childRect(nId) != rc)
                Fail("child " + std::to_string(nId) + " is at " + Text(dlg.childRect(nId)) + ", computed " + Text(rc));
        }
    }

    std::mt19937 m_random;
    Report m_report;
};
