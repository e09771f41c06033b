// LayoutTools: centering offsets from widths, boxes and allocations, with halving that truncates
// toward zero and the outer allocation's x added when the outer size is placed.
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layouttools.h"

#include <gtest/gtest.h>

using namespace Tavi;

TEST(LayoutTools, HcenterTruncatesTowardZeroInEveryForm)
{
    struct Case
    {
        long outer;
        long inner;
        long offset;  // (outer - inner) / 2, truncated toward zero
    } const cases[] = {
        {10, 4, 3},    // 6 / 2
        {10, 3, 3},    // 7 / 2 = 3.5, truncated
        {3, 10, -3},   // -7 / 2 = -3.5, toward zero: -3, not -4
        {4, 10, -3},   // -6 / 2
        {5, 5, 0},
        {0, 1, 0},     // -1 / 2 = -0.5, toward zero
    };
    long const x = 100;  // where the outer allocation stands
    for (Case const &c : cases) {
        BoxTreeLeaf outer(c.outer, 5, 1);
        BoxTreeLeaf inner(c.inner, 9, 3);
        AllocationTree placed_outer(Point(x, 40), &outer);
        AllocationTree placed_inner(Point(-70, 12), &inner);

        EXPECT_EQ(LayoutTools::hcenter(c.outer, c.inner), c.offset) << c.outer << " " << c.inner;
        EXPECT_EQ(LayoutTools::hcenter(outer, inner), c.offset);
        // A placed inner size adds nothing of its position.
        EXPECT_EQ(LayoutTools::hcenter(outer, placed_inner), c.offset);
        // A placed outer size makes the result absolute.
        EXPECT_EQ(LayoutTools::hcenter(placed_outer, inner), c.offset + x);
        EXPECT_EQ(LayoutTools::hcenter(placed_outer, placed_inner), c.offset + x);
    }
}
