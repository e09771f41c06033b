// Colours, pens and brushes: what their comparisons look at and in which order.
#include "tavi/canvas/brush.h"
#include "tavi/canvas/color.h"
#include "tavi/canvas/pen.h"

#include <gtest/gtest.h>

using namespace Tavi;

TEST(Color, AlphaPlaysNoPartInComparison)
{
    EXPECT_TRUE(Color(1, 2, 3, 0) == Color(1, 2, 3, 255));
    EXPECT_FALSE(Color(1, 2, 3, 0) != Color(1, 2, 3, 255));
    EXPECT_FALSE(Color(1, 2, 3, 0) < Color(1, 2, 3, 255));
    EXPECT_FALSE(Color(1, 2, 3, 255) < Color(1, 2, 3, 0));

    // red, then green, then blue
    struct Case
    {
        Color a, b;
        bool less;
    } const cases[] = {
        {Color(1, 9, 9), Color(2, 0, 0), true},   {Color(2, 0, 0), Color(1, 9, 9), false},
        {Color(1, 1, 9), Color(1, 2, 0), true},   {Color(1, 2, 0), Color(1, 1, 9), false},
        {Color(1, 1, 1), Color(1, 1, 2), true},   {Color(1, 1, 2), Color(1, 1, 1), false},
        {Color(255, 0, 0), Color(0, 255, 255), false},
    };
    for (auto const &c : cases)
        EXPECT_EQ(c.a < c.b, c.less) << int(c.a.red()) << "," << int(c.a.green()) << "," << int(c.a.blue());
}

TEST(Color, GrayLeavesAlphaAlone)
{
    Color c;
    c.rgb(10, 20, 30, 40);
    c.gray(128);
    EXPECT_EQ(c, Color(128, 128, 128));
    EXPECT_EQ(c.alpha(), 40);
}

TEST(Pen, ComparesWidthThenColourThenStyle)
{
    Pen const base(2, Color(10, 10, 10), Pen::dashed);
    EXPECT_EQ(base, Pen(2, Color(10, 10, 10, 0), Pen::dashed));  // alpha ignored through Color
    EXPECT_NE(base, Pen(2, Color(10, 10, 10), Pen::dotted));
    EXPECT_TRUE(Pen(1, Color(255, 0, 0), Pen::dotted) < base);   // width decides
    EXPECT_TRUE(Pen(2, Color(9, 99, 99), Pen::dotted) < base);   // then colour
    EXPECT_FALSE(base < Pen(2, Color(9, 99, 99), Pen::solid));
    EXPECT_TRUE(Pen(2, Color(10, 10, 10), Pen::solid) < base);   // then style: solid 0 < dashed 1
    EXPECT_FALSE(base < base);
}

TEST(Brush, ComparesFillStyleThenColour)
{
    EXPECT_EQ(Brush(Color(1, 2, 3)), Brush(Brush::solid, Color(1, 2, 3)));
    EXPECT_NE(Brush(Brush::cross, Color(1, 2, 3)), Brush(Brush::solid, Color(1, 2, 3)));
    EXPECT_TRUE(Brush(Brush::solid, Color::white) < Brush(Brush::horizontal, Color::black));
    EXPECT_TRUE(Brush(Brush::cross, Color::black) < Brush(Brush::cross, Color::white));
}
