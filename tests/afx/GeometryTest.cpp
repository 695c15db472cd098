// CPoint, CSize and CRect: the operations whose edge cases layout code depends on.

TEST(Geometry, PointsAndSizesFromMessageParametersAreSigned)
{
    CPoint p(MAKELPARAM(static_cast<WORD>(-5), 7));
    EXPECT_EQ(-5, p.x);
    EXPECT_EQ(7, p.y);
    CSize s(static_cast<DWORD>(MAKELONG(static_cast<WORD>(-3), 4)));
    EXPECT_EQ(-3, s.cx);
    EXPECT_EQ(4, s.cy);

    CPoint a(10, 20), b(3, 4);
    EXPECT_EQ(CSize(7, 16), a - b);  // point minus point is a size
    EXPECT_EQ(CPoint(13, 24), a + CSize(3, 4));
    EXPECT_EQ(CPoint(-10, -20), -a);
    a.Offset(CSize(1, 1));
    a -= CPoint(1, 1);
    EXPECT_EQ(CPoint(10, 20), a);
    EXPECT_EQ(CPoint(13, 24), CSize(3, 4) + CPoint(10, 20));
    EXPECT_EQ(CSize(-1, 2), -CSize(1, -2));
}

TEST(Geometry, RectangleEmptinessAndHitTestingUseHalfOpenEdges)
{
    CRect r(10, 20, 110, 70);
    EXPECT_EQ(100, r.Width());
    EXPECT_EQ(50, r.Height());
    EXPECT_EQ(CSize(100, 50), r.Size());
    EXPECT_EQ(CPoint(60, 45), r.CenterPoint());
    EXPECT_TRUE(r.PtInRect(CPoint(10, 20)));
    EXPECT_FALSE(r.PtInRect(CPoint(110, 45)));  // right and bottom edges are outside
    EXPECT_FALSE(r.PtInRect(CPoint(60, 70)));
    EXPECT_TRUE(CRect(5, 5, 5, 10).IsRectEmpty());
    EXPECT_TRUE(CRect(10, 0, 0, 10).IsRectEmpty());  // inverted counts as empty
    EXPECT_FALSE(CRect(10, 0, 0, 10).IsRectNull());
    EXPECT_TRUE(CRect().IsRectNull());
    EXPECT_TRUE(CRect(static_cast<LPCRECT>(nullptr)).IsRectNull());

    r.TopLeft() = CPoint(0, 0);
    r.BottomRight().x = 5;
    EXPECT_EQ(CRect(0, 0, 5, 70), r);

    CRect n(30, 40, 10, 20);
    n.NormalizeRect();
    EXPECT_EQ(CRect(10, 20, 30, 40), n);
    n.MoveToXY(0, 0);
    EXPECT_EQ(CRect(0, 0, 20, 20), n);
}

TEST(Geometry, IntersectionUnionAndSubtraction)
{
    CRect a(0, 0, 100, 100), b(50, 50, 150, 150), away(200, 200, 300, 300), r;
    EXPECT_TRUE(r.IntersectRect(a, b));
    EXPECT_EQ(CRect(50, 50, 100, 100), r);
    EXPECT_FALSE(r.IntersectRect(a, away));
    EXPECT_TRUE(r.IsRectNull());  // no overlap: the result is set empty
    EXPECT_FALSE(r.IntersectRect(a, CRect(100, 0, 200, 100)));  // touching edges do not overlap
    EXPECT_EQ(CRect(50, 50, 100, 100), a & b);
    EXPECT_EQ(CRect(0, 0, 150, 150), a | b);

    // The union ignores empty rectangles.
    EXPECT_TRUE(r.UnionRect(a, CRect(500, 500, 500, 600)));
    EXPECT_EQ(a, r);
    EXPECT_FALSE(r.UnionRect(CRect(), CRect(3, 3, 3, 3)));

    // Subtraction only shrinks when the result is still a rectangle.
    EXPECT_TRUE(r.SubtractRect(a, CRect(0, 0, 100, 30)));
    EXPECT_EQ(CRect(0, 30, 100, 100), r);
    r.SubtractRect(a, CRect(40, 40, 60, 60));
    EXPECT_EQ(a, r);
    EXPECT_FALSE(r.SubtractRect(a, CRect(-10, -10, 110, 110)));

    CRect c = a;
    c &= away;
    EXPECT_TRUE(c.IsRectEmpty());
    c = a;
    c |= away;
    EXPECT_EQ(CRect(0, 0, 300, 300), c);
}

TEST(Geometry, InflateDeflateOffsetAndOperators)
{
    CRect r(10, 10, 20, 20);
    r.InflateRect(2, 3);
    EXPECT_EQ(CRect(8, 7, 22, 23), r);
    r.DeflateRect(2, 3);
    EXPECT_EQ(CRect(10, 10, 20, 20), r);
    r.InflateRect(1, 2, 3, 4);
    EXPECT_EQ(CRect(9, 8, 23, 24), r);
    r.DeflateRect(CRect(1, 2, 3, 4));
    EXPECT_EQ(CRect(10, 10, 20, 20), r);
    RECT border = {1, 1, 2, 2};
    EXPECT_EQ(CRect(9, 9, 22, 22), r + &border);  // + a rectangle inflates by its sides
    EXPECT_EQ(CRect(11, 11, 18, 18), r - &border);
    EXPECT_EQ(CRect(15, 5, 25, 15), r + CPoint(5, -5));
    EXPECT_EQ(CRect(5, 15, 15, 25), r - CSize(5, -5));
    r.OffsetRect(-10, -10);
    EXPECT_EQ(CRect(0, 0, 10, 10), r);
    r += CPoint(1, 1);
    r -= CSize(2, 2);
    EXPECT_EQ(CRect(-1, -1, 9, 9), r);
    EXPECT_EQ(CRect(0, 0, 20, 40), CRect(0, 0, 10, 20).MulDiv(4, 2));

    // Converts to the platform's pointers.
    RECT out;
    CopyRect(&out, CRect(1, 2, 3, 4));
    EXPECT_EQ(CRect(1, 2, 3, 4), out);
    CRect target;
    SetRect(target, 5, 6, 7, 8);
    EXPECT_EQ(CRect(5, 6, 7, 8), target);
}
