// The geometric value classes where a rule hides: merging, intersection, containment and extensions.
#include "support/recording_canvas.h"
#include "tavi/geometry/allocation.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/box.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/geometry/extension.h"
#include "tavi/geometry/point.h"
#include "tavi/geometry/rect.h"

#include <gtest/gtest.h>

using namespace Tavi;

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
    // delta (40, -2): width max(50, 70) = 70; ascent max(5, 4 + 2) = 6; descent max(2, 6 - 2) = 4.
    {Box(50, 5, 2), Box(30, 4, 6), Point(40, -2), Box(70, 6, 4), Point(0, 0), Point(40, -2)},
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

        // The floating form agrees.
        BoxF g(c.self);
        g.merge(BoxF(c.other), PointF(c.delta));
        EXPECT_EQ(g, BoxF(c.merged));
    }
}

TEST(Rect, IntersectsUnlessWhollyToOneSide)
{
    struct Case
    {
        Rect other;
        bool expected;
    } const cases[] = {
        {Rect(10, 10, 20, 20), true},  // touches at the bottom-right corner
        {Rect(0, 11, 10, 20), false},  // one unit right
        {Rect(-9, 0, -1, 10), false},  // above
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
        {Point(10, 2), true}, {Point(0, -5), true}, {Point(11, 0), false}, {Point(5, 3), false},
    };
    for (auto const &c : cases)
        EXPECT_EQ(a.contains(c.p), c.inside) << c.p.x << "," << c.p.y;
}

TEST(Extension, TranslatesAndMerges)
{
    // A cleared extension is not empty: (0, 0) stays inside.
    Extension e(5, 5, 6, 6);
    e.clear();
    e.merge(Extension(10, 10, 20, 20));
    EXPECT_EQ(e, Extension(0, 0, 20, 20));

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
}
