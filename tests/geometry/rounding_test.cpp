// The rounding of floating coordinates: out-of-range values clamped, and halves toward positive
// infinity on both sides of zero in every conversion.
#include "tavi/geometry/allocation.h"
#include "tavi/geometry/box.h"
#include "tavi/geometry/point.h"
#include "tavi/geometry/rect.h"
#include "tavi/geometry/rounding.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Tavi;

TEST(Rounding, OutOfRangeValuesAreClampedNotUndefined)
{
    EXPECT_EQ(round_to_long(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(round_to_long(1e300), std::numeric_limits<long>::max());
    EXPECT_EQ(round_to_long(-std::numeric_limits<double>::infinity()), std::numeric_limits<long>::min());
}

// Every to_ conversion rounds each field on its own by the rule, floor(value + 0.5): halves toward
// positive infinity on both sides of zero.
TEST(Rounding, ConversionsRoundEachField)
{
    EXPECT_EQ(PointF(-2.5, 2.5).to_point(), Point(-2, 3));
    EXPECT_EQ(BoxF(0.49, -2.5, -0.5).to_box(), Box(0, -2, 0));
    // top -2.5 -> -2, left 0.49 -> 0, bottom 2.5 -> 3, right -2.6 -> -3
    EXPECT_EQ(RectF(-2.5, 0.49, 2.5, -2.6).to_rect(), Rect(-2, 0, 3, -3));
    EXPECT_EQ(AllocationF(-2.5, 2.5, -0.5, 0.49, -2.6).to_allocation(), Allocation(-2, 3, 0, 0, -3));
}
