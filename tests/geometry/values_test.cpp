// The geometric value classes: construction rules, merging, containment and extensions.
#include "support/recording_canvas.h"
#include "tavi/geometry/allocation.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/box.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/geometry/extension.h"
#include "tavi/geometry/extent.h"
#include "tavi/geometry/point.h"
#include "tavi/geometry/rect.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Tavi;

TEST(Point, ArithmeticActsOnEachField)
{
    Point p(3, -4);
    p += Point(10, 20);
    EXPECT_EQ(p, Point(13, 16));
    p -= Point(3, 6);
    EXPECT_EQ(p, Point(10, 10));
    EXPECT_EQ(Point(1, 2) + Point(3, 4), Point(4, 6));
    EXPECT_EQ(Point(1, 2) - Point(3, 5), Point(-2, -3));
    EXPECT_EQ(-Point(1, -2), Point(-1, 2));
    EXPECT_EQ(PointF(Point(5, -6)), PointF(5.0, -6.0));
}

TEST(PointF, NaNIsNeverEqual)
{
    PointF const n(std::nan(""), 0.0);
    EXPECT_FALSE(n == n);
    EXPECT_TRUE(n != n);
}

TEST(Extent, FromPointTakesAbsoluteValuesAndBoxHeightIsAscentPlusDescent)
{
    EXPECT_EQ(Extent(Point(5, 10) - Point(8, 14)), Extent(3, 4));
    EXPECT_EQ(ExtentF(PointF(-1.5, -2.0)), ExtentF(1.5, 2.0));
    EXPECT_EQ(Box(10, 7, 3).extent(), Extent(10, 10));
}

namespace {

struct MergeCase
{
    Box self;
    Box other;
    Point delta;
    Box merged;
    Point this_at;
    Point other_at;
};

MergeCase const merge_cases[] = {
    // delta.x -100: this_at.x = 100, other_at.x = 0, shift -100;
    // width max(50, 30 - 100 = -70) + 100 = 150; ascent max(5, 8 - 3) = 5; descent max(2, 1 + 3) = 4.
    {Box(50, 5, 2), Box(30, 8, 1), Point(-100, 3), Box(150, 5, 4), Point(100, 0), Point(0, 3)},
    // delta.x -10 overlapping: width max(50, 30 - 10 = 20) + 10 = 60.
    {Box(50, 5, 2), Box(30, 8, 1), Point(-10, 0), Box(60, 8, 2), Point(10, 0), Point(0, 0)},
    // delta (40, -2): width max(50, 70) = 70; ascent max(5, 4 + 2) = 6; descent max(2, 6 - 2) = 4.
    {Box(50, 5, 2), Box(30, 4, 6), Point(40, -2), Box(70, 6, 4), Point(0, 0), Point(40, -2)},
    // other inside: nothing grows.
    {Box(50, 5, 2), Box(10, 1, 1), Point(5, 0), Box(50, 5, 2), Point(0, 0), Point(5, 0)},
};

}  // namespace

TEST(Box, MergeGrowsAndTellsWhereBothBoxesStand)
{
    for (MergeCase const &c : merge_cases) {
        Box b = c.self;
        Point this_at(-7, -7), other_at(-7, -7);
        b.merge(c.other, c.delta, this_at, other_at);
        EXPECT_EQ(b, c.merged) << "delta " << c.delta.x << "," << c.delta.y;
        EXPECT_EQ(this_at, c.this_at);
        EXPECT_EQ(other_at, c.other_at);

        // The floating forms agree, with and without the output points.
        BoxF f(c.self);
        PointF fthis, fother;
        f.merge(BoxF(c.other), PointF(c.delta), fthis, fother);
        EXPECT_EQ(f, BoxF(c.merged));
        EXPECT_EQ(fthis, PointF(c.this_at));
        EXPECT_EQ(fother, PointF(c.other_at));
        BoxF g(c.self);
        g.merge(BoxF(c.other), PointF(c.delta));
        EXPECT_EQ(g, BoxF(c.merged));
    }
}

TEST(Rect, TwoPointConstructorNormalisesFourNumberOneDoesNot)
{
    Rect const r(Point(10, 20), Point(5, 40));
    EXPECT_EQ(r, Rect(20, 5, 40, 10));
    EXPECT_EQ(r.width(), 5);
    EXPECT_EQ(r.height(), 20);
    EXPECT_EQ(r.top_left(), Point(5, 20));
    EXPECT_EQ(r.bottom_right(), Point(10, 40));

    Rect const raw(40, 10, 20, 5);
    EXPECT_EQ(raw.top(), 40);
    EXPECT_EQ(raw.height(), -20);

    RectF const f(PointF(10.5, 20.0), PointF(5.0, 40.0));
    EXPECT_EQ(f, RectF(20.0, 5.0, 40.0, 10.5));
}

TEST(Rect, ShiftAppliesXToLeftRightAndYToTopBottom)
{
    Rect r(1, 2, 3, 4);
    r += Point(10, 100);
    EXPECT_EQ(r, Rect(101, 12, 103, 14));
    r -= Point(10, 100);
    EXPECT_EQ(r, Rect(1, 2, 3, 4));
    RectF f(1, 2, 3, 4);
    f += PointF(0.5, 0.25);
    EXPECT_EQ(f, RectF(1.25, 2.5, 3.25, 4.5));
}

TEST(Rect, MergeWidensAndAllZeroIsNotEmpty)
{
    Rect r(0, 0, 0, 0);
    r.merge(Point(5, 7));
    EXPECT_EQ(r, Rect(0, 0, 7, 5));
    r.merge(Point(-2, -3));
    EXPECT_EQ(r, Rect(-3, -2, 7, 5));
    r.merge(Rect(1, -10, 20, 2));
    EXPECT_EQ(r, Rect(-3, -10, 20, 5));

    RectF f(0, 0, 0, 0);
    f.merge(PointF(5.5, 7.5));
    f.merge(RectF(-1, -1, 1, 1));
    EXPECT_EQ(f, RectF(-1, -1, 7.5, 5.5));
}

TEST(Rect, IntersectsUnlessWhollyToOneSide)
{
    struct Case
    {
        Rect other;
        bool expected;
    } const cases[] = {
        {Rect(5, 5, 6, 6), true},      // inside
        {Rect(10, 10, 20, 20), true},  // touches at the bottom-right corner
        {Rect(0, 10, 10, 20), true},   // shares the right edge
        {Rect(0, 11, 10, 20), false},  // one unit right
        {Rect(0, -9, 10, -1), false},  // left
        {Rect(-9, 0, -1, 10), false},  // above
        {Rect(11, 0, 20, 10), false},  // below
        {Rect(-5, -5, 15, 15), true},  // covers
    };
    Rect const r(0, 0, 10, 10);
    for (auto const &c : cases) {
        EXPECT_EQ(r.intersects(c.other), c.expected) << c.other.top() << "," << c.other.left();
        EXPECT_EQ(RectF(r).intersects(RectF(c.other)), c.expected);
    }
}

TEST(Allocation, EdgesAndInclusiveContainment)
{
    Allocation const a(0, 0, 10, 5, 2);
    EXPECT_EQ(a.rect(), Rect(-5, 0, 2, 10));
    struct Case
    {
        Point p;
        bool inside;
    } const cases[] = {
        {Point(10, 2), true}, {Point(0, -5), true}, {Point(11, 0), false},
        {Point(5, 3), false}, {Point(-1, 0), false}, {Point(5, -6), false},
    };
    for (auto const &c : cases)
        EXPECT_EQ(a.contains(c.p), c.inside) << c.p.x << "," << c.p.y;

    // An empty box contains its own point and nothing else.
    Allocation const z(Point(3, 4), Box::zero);
    EXPECT_TRUE(z.contains(Point(3, 4)));
    EXPECT_FALSE(z.contains(Point(4, 4)));
    EXPECT_FALSE(z.contains(Point(3, 3)));

    AllocationF const f(a);
    EXPECT_EQ(f.to_allocation(), a);
    EXPECT_EQ(f.box(), BoxF(10, 5, 2));
}

TEST(AllocationTree, ReadsTheBoxAtEachCall)
{
    BoxTreeLeaf leaf(10, 5, 2);
    AllocationTree a(Point(100, 50), &leaf);
    EXPECT_EQ(a.rect(), Rect(45, 100, 52, 110));
    EXPECT_EQ(a.height(), 7);
    EXPECT_TRUE(a.contains(Point(110, 52)));
    EXPECT_FALSE(a.contains(Point(111, 52)));
    leaf.width(20);
    leaf.ascent(9);
    EXPECT_EQ(a.right(), 120);
    EXPECT_EQ(a.top(), 41);
    EXPECT_EQ(a.box(), Box(20, 9, 2));

    EXPECT_NE(a, AllocationTree());
}

TEST(Extension, TranslatesAndMerges)
{
    // A cleared extension is not empty: (0, 0) stays inside.
    Extension e(5, 5, 6, 6);
    e.clear();
    e.merge(Extension(10, 10, 20, 20));
    EXPECT_EQ(e, Extension(0, 0, 20, 20));
    EXPECT_EQ(e.rect(), Rect(0, 0, 20, 20));

    EXPECT_EQ(Extension(Point(10, 20), Point(5, 40)), Extension(20, 5, 40, 10));

    // The gauge's translation (5, 7) is added: x to left and right, y to top and bottom.
    TaviTest::RecordingCanvas canvas;
    canvas.translation(Point(5, 7));
    Extension t(&canvas, Rect(1, 2, 3, 4));
    EXPECT_EQ(t, Extension(8, 7, 10, 9));
    t.merge(&canvas, Rect(-10, 0, 0, 1));  // translated (-3, 5, 7, 6)
    EXPECT_EQ(t, Extension(-3, 5, 10, 9));

    // From an allocation: its rect (45, 100, 52, 110) then the translation.
    BoxTreeLeaf leaf(10, 5, 2);
    AllocationTree const a(Point(100, 50), &leaf);
    Extension x(&canvas, a);
    EXPECT_EQ(x, Extension(52, 105, 59, 115));
    x.set(&canvas, Rect(0, 0, 0, 0));
    EXPECT_EQ(x, Extension(7, 5, 7, 5));
    x.merge(&canvas, a);
    EXPECT_EQ(x, Extension(7, 5, 59, 115));
}
