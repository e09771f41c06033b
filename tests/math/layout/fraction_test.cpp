// Tests of LayoutFraction: placement of numerator, rule and denominator from ex, leading and X-height,
// the style of the parts, the rule and its absence, and the thickness attribute.
//
// Font size 2400 on the recording canvas: ex 50, X-height 70, ascent 80, so a leading of 80 / 5 = 16.
// One script level down the size is 2400 * 71 / 100 = 1704: ascent 8*1704/240 = 56, leading 56 / 5 =
// 11, X-height 7*1704/240 = 49. The axis is 2 * 50 / 3 = 33 in both cases, read before the change.
#include <gtest/gtest.h>

#include <memory>

#include "math/layout/stretchy_fixture.h"
#include "tavi/math/layout/layoutfraction.h"

using namespace Tavi;
using namespace StretchyTest;

namespace {

long const F = 0x7fffffff;

struct Fraction
{
    Fraction(long thickness, StyleProbe *num, StyleProbe *den) : layout(new LayoutFraction(thickness))
    {
        numerator = num;
        denominator = den;
        layout->append(num);
        layout->append(den);
    }
    Held<LayoutFraction> layout;
    StyleProbe *numerator;
    StyleProbe *denominator;
};

}  // namespace

// Display style: gap 16; denominator ascent 50 below X-height 70, so denomShift = 16 + 20 = 36.
// Bar width 300, total 300 + 2*16 = 332. Numerator at ((332-300)/2, -(10+16+33)) = (16, -59); rule mark at
// (16, -33); denominator at ((332-200)/2, 50-33+36) = (66, 53). Ascent 60+10+16+33 = 119, descent
// 15-33+36+50 = 68.
// Text style: one level down: gap 11, denomShift 11 + (49-40) = 20, total 322. Numerator at (11, -54),
// mark at (11, -33), denominator at (61, 40-33+20) = (61, 27). Ascent 60+10+11+33 = 114, descent
// 15-33+20+40 = 42.
// A denominator of ascent 80, above the X-height, gets the gap alone: (66, 80-33+16) = (66, 63), descent
// 15-33+16+80 = 78.
TEST(FractionTest, Geometry)
{
    struct Case
    {
        bool display;
        long denAscent;
        Point num, mark, den;
        long width, ascent, descent;
        long partLevel;
    } const cases[] = {
        {true, 50, Point(16, -59), Point(16, -33), Point(66, 53), 332, 119, 68, 0},
        {false, 40, Point(11, -54), Point(11, -33), Point(61, 27), 322, 114, 42, 1},
        {true, 80, Point(16, -59), Point(16, -33), Point(66, 63), 332, 119, 78, 0},
    };
    for (Case const &k : cases) {
        Context c(2400, k.display);
        Fraction f(1, new StyleProbe(300, 60, 10, 0), new StyleProbe(200, k.denAscent, 15, 1));
        std::unique_ptr<BoxTree> box(f.layout->request(c.ctx, BoxTree::unconstrained));
        ASSERT_EQ(box->count(), 3);
        EXPECT_EQ(box->box(), Box(k.width, k.ascent, k.descent));
        EXPECT_EQ(box->child(0)->offset(), k.num);
        EXPECT_EQ(box->child(1)->offset(), k.mark);
        EXPECT_EQ(box->child(1)->box(), Box(300, F, F));
        EXPECT_EQ(box->child(2)->offset(), k.den);
        // Both parts out of display style; only text style shrinks them.
        for (StyleProbe *part : {f.numerator, f.denominator}) {
            ASSERT_EQ(part->requests.size(), 1u);
            EXPECT_EQ(part->requests[0].scriptlevel, k.partLevel);
            EXPECT_FALSE(part->requests[0].display);
        }
    }
}

// Drawn at (1000, 500) in text style, the parts are drawn one level down at their box children, and
// the rule in the fraction's own style at the mark (1011, 467): the bar glyph (100 wide at size 2400)
// every 100 while below 1011 + 300 - 100 = 1211, then at 1211. With thickness 0 no rule is painted, and
// the geometry stays the same.
TEST(FractionTest, DrawPartsAndRule)
{
    for (long thickness : {1L, 0L}) {
        Context c(2400, false);
        Fraction f(thickness, new StyleProbe(300, 60, 10, 0), new StyleProbe(200, 40, 15, 1));
        std::unique_ptr<BoxTree> box(f.layout->request(c.ctx, BoxTree::unconstrained));
        EXPECT_EQ(box->box(), Box(322, 114, 42));
        c.canvas.clear();
        f.layout->draw(c.ctx, AllocationTree(Point(1000, 500), box.get()));
        ASSERT_EQ(f.numerator->draws.size(), 1u);
        ASSERT_EQ(f.denominator->draws.size(), 1u);
        EXPECT_EQ(f.numerator->draws[0].at, Point(1011, 446));
        EXPECT_EQ(f.denominator->draws[0].at, Point(1061, 527));
        EXPECT_EQ(f.numerator->draws[0].scriptlevel, 1);
        if (thickness != 0) {
            EXPECT_EQ(texts(c.canvas), (std::vector<std::string>{glyph(197, 1011, 467), glyph(197, 1111, 467),
                                                                  glyph(197, 1211, 467)}));
            // The rule is drawn at the fraction's size, not the parts'.
            EXPECT_NE(std::find(c.canvas.calls().begin(), c.canvas.calls().end(),
                                "font(KMT Math Ext,2400,0,0,cs=2,angle=0)"),
                      c.canvas.calls().end());
        } else {
            EXPECT_TRUE(texts(c.canvas).empty());
        }
    }
}

// The thickness is read with atoi rules; only zero and non-zero matter.
TEST(FractionTest, LinethicknessAttribute)
{
    struct Case
    {
        wchar const *name;
        wchar const *value;
        long thickness;
    } const cases[] = {
        {u"linethickness", u"  -3px", -3}, {u"linethickness", u"junk", 0}, {u"thickness", u"0", 5},
    };
    for (auto const &k : cases) {
        Held<LayoutFraction> f(new LayoutFraction(5));
        f->attribute(k.name, k.value);
        EXPECT_EQ(f->linethickness(), k.thickness);
    }
}
