// Tests of LayoutOver and LayoutUnderOver: centring and alignment, the leading between
// base and scripts, operators stretched across the column, integral slants, limits that move to script
// positions in text style, script style and accents.
//
// Font size 2400 on the recording canvas: a leading of 80 / 5 = 16; one script level down the X-height
// is 49 and the descent of "x" 14; ex 50. At size 36000 the leading is 1200 / 5 = 240 and D = 300.
#include <gtest/gtest.h>

#include <memory>

#include "math/layout/stretchy_fixture.h"
#include "tavi/math/layout/layoutdisplayop.h"
#include "tavi/math/layout/layoutintegralop.h"
#include "tavi/math/layout/layoutover.h"
#include "tavi/math/layout/layoutoverbarop.h"
#include "tavi/math/layout/layoutunderover.h"

using namespace Tavi;
using namespace StretchyTest;

namespace {

long const F = 0x7fffffff;

template <class L>
void add(Held<L> &layout, std::initializer_list<MathLayout *> children)
{
    for (MathLayout *c : children)
        layout->append(c);
}

}  // namespace

// Base (300, 60, 10), script (100, 30, 8): base x -150, script x -50, both moved right by 150: base at
// (0, 0), script at (100, -(8 + 16 + 60)) = (100, -84). Ascent 30 + 8 + 16 + 60 = 114, width max(300,
// 200) = 300, descent the larger child descent 10. The script is measured one level down, the base in
// its style, neither with a constraint; with accent the script keeps the base's style.
TEST(UnderOverTest, OverCentresScript)
{
    for (bool accent : {false, true}) {
        Context c(2400);
        Held<LayoutOver> over(new LayoutOver(accent));
        StyleProbe *base = new StyleProbe(300, 60, 10, 0);
        StyleProbe *script = new StyleProbe(100, 30, 8, 1);
        add(over, {base, script});
        std::unique_ptr<BoxTree> box(over->request(c.ctx, BoxTree::unconstrained));
        ASSERT_EQ(box->count(), 2);
        EXPECT_EQ(box->box(), Box(300, 114, 10));
        EXPECT_EQ(box->child(0)->offset(), Point(0, 0));
        EXPECT_EQ(box->child(1)->offset(), Point(100, -84));
        ASSERT_FALSE(script->requests.empty());
        EXPECT_EQ(script->requests.back().scriptlevel, accent ? 0 : 1);
        EXPECT_EQ(script->requests.back().display, accent);
        EXPECT_EQ(script->requests.back().constraint_width, F);
        EXPECT_EQ(base->requests.back().constraint_width, F);
    }
}

// An operator child stretches across to the widest other child. The bar glyph at size 2400 is 100 wide
// with D = 20, so u = 20*40/3000 = 0 and its box is (width, 0, 0).
//   base bar under... over script (500, 30, 8): w = 500, the bar base gets width 500; both x -250, moved
//     to 0; script at (0, -(8 + 16 + 0)) = (0, -24); ascent 30 + 8 + 16 + 0 = 54.
//   narrow script (50, 30, 8): w = 50, the bar keeps its glyph width 100; base x -50, script x -25:
//     base at 0, script at 25.
//   a bar script over a base (300, 60, 10): w = 300, the bar is 300 wide at (0, -(0 + 16 + 60)).
TEST(UnderOverTest, OperatorsStretchAcrossTheColumn)
{
    struct Case
    {
        bool barBase;
        long scriptWidth;
        long baseWidth, barWidth;
        Point script;
        long ascent;
    } const cases[] = {
        {true, 500, 500, 500, Point(0, -24), 54},
        {true, 50, 100, 100, Point(25, -24), 54},
        {false, 0, 300, 300, Point(0, -76), 76},
    };
    for (Case const &k : cases) {
        Context c(2400);
        Held<LayoutOver> over(new LayoutOver(false));
        if (k.barBase)
            add(over, {new LayoutOverBarOp, new StyleProbe(k.scriptWidth, 30, 8, 1)});
        else
            add(over, {new StyleProbe(300, 60, 10, 0), new LayoutOverBarOp});
        std::unique_ptr<BoxTree> box(over->request(c.ctx, BoxTree::unconstrained));
        EXPECT_EQ(box->child(0)->width(), k.baseWidth);
        EXPECT_EQ(box->child(k.barBase ? 0 : 1)->width(), k.barWidth);
        EXPECT_EQ(box->child(1)->offset(), k.script);
        EXPECT_EQ(box->ascent(), k.ascent);
    }
}

// An integral in display style at size 36000: box (100, 141, 81), limits moved by s = 300*300/3000 = 30.
// Under (500, 300, 100), over (400, 300, 100), leading 240.
//   centred: base x -50, under x -30 - 250 = -280, over x 30 - 200 = -170; moved right by 280: base 230,
//     under 0, over 110. Under at (0, 300 + 240 + 81) = (0, 621), over at (110, -(100 + 240 + 141)) =
//     (110, -481). Ascent 300 + 100 + 240 + 141 = 781, descent 100 + 300 + 240 + 81 = 721, width
//     max(330, 500, 510) = 510.
//   'l': all at 0, slants dropped; width 500.
//   'r': base -100, under -30 - 500 = -530, over 30 - 400 = -370; moved by 530: 430, 0, 160; width
//     max(530, 500, 560) = 560.
TEST(UnderOverTest, IntegralLimitsFollowTheSlant)
{
    struct Case
    {
        char align;
        long baseX, underX, overX, width;
    } const cases[] = {{'c', 230, 0, 110, 510}, {'l', 0, 0, 0, 500}, {'r', 430, 0, 160, 560}};
    for (Case const &k : cases) {
        Context c(36000);
        Held<LayoutUnderOver> uo(new LayoutUnderOver(false, k.align));
        add(uo, {new LayoutIntegralOp(u"&Integral;", LayoutOp::prefix, false, false, false, false, 0, 0),
                 new StyleProbe(500, 300, 100, 1), new StyleProbe(400, 300, 100, 2)});
        std::unique_ptr<BoxTree> box(uo->request(c.ctx, BoxTree::unconstrained));
        ASSERT_EQ(box->count(), 3);
        EXPECT_EQ(box->child(0)->box(), Box(100, 141, 81));
        EXPECT_EQ(box->child(0)->offset(), Point(k.baseX, 0)) << k.align;
        EXPECT_EQ(box->child(1)->offset(), Point(k.underX, 621)) << k.align;
        EXPECT_EQ(box->child(2)->offset(), Point(k.overX, -481)) << k.align;
        EXPECT_EQ(box->box(), Box(k.width, 781, 721)) << k.align;
    }
}

// A sum with movable limits: "&Sum;" at size 2400 has D = 20 and is 100 wide.
// Display style, stacked: glyph 88, box (100, 1000*20/3000 = 6, 400*20/3000 = 2); under (50, 30, 8),
//   over (70, 30, 8); base x -50, under -25, over -35, moved by 50: 0, 25, 15. Under at (25, 30 + 16 + 2)
//   = (25, 48), over at (15, -(8 + 16 + 6)) = (15, -30); ascent 30 + 8 + 16 + 6 = 60, descent
//   8 + 30 + 16 + 2 = 56, width 100.
// Text style, as scripts: glyph 80, box (100, 800*20/3000 = 5, 200*20/3000 = 1); the under script is a
//   subscript raised to 49 with shift min(33, 49 - 1) = 33 at (100, 16), the over script a superscript
//   with m = 14, t = 5 - 30 - 14 below 50, shift 64, at (100, -64); width max(150, 170) = 170, ascent
//   max(5, 64 + 30) = 94, descent max(1, 8 - 33 + 49) = 24.
TEST(UnderOverTest, MovableLimitsBecomeScriptsInTextStyle)
{
    struct Case
    {
        bool display;
        Point under, over;
        Box node;
    } const cases[] = {
        {true, Point(25, 48), Point(15, -30), Box(100, 60, 56)},
        {false, Point(100, 16), Point(100, -64), Box(170, 94, 24)},
    };
    for (Case const &k : cases) {
        Context c(2400, k.display);
        Held<LayoutUnderOver> uo(new LayoutUnderOver(false, 'c'));
        StyleProbe *underScript = new StyleProbe(50, 30, 8, 1);
        StyleProbe *overScript = new StyleProbe(70, 30, 8, 2);
        add(uo, {new LayoutDisplayOp(u"&Sum;", LayoutOp::prefix, false, false, true, false, 0, 0), underScript,
                 overScript});
        std::unique_ptr<BoxTree> box(uo->request(c.ctx, BoxTree::unconstrained));
        ASSERT_EQ(box->count(), 3);
        EXPECT_EQ(box->box(), k.node) << k.display;
        EXPECT_EQ(box->child(0)->offset(), Point(0, 0));
        EXPECT_EQ(box->child(1)->offset(), k.under);
        EXPECT_EQ(box->child(2)->offset(), k.over);

        // Drawing takes the same road: the scripts land on their boxes, one level down, and the sum's
        // glyph is the one of the style, hanging from the top of its box.
        c.canvas.clear();
        uo->draw(c.ctx, AllocationTree(Point(0, 0), box.get()));
        ASSERT_EQ(underScript->draws.size(), 1u);
        EXPECT_EQ(underScript->draws[0].at, k.under);
        EXPECT_EQ(overScript->draws[0].at, k.over);
        EXPECT_EQ(overScript->draws[0].scriptlevel, 1);
        EXPECT_EQ(texts(c.canvas),
                  std::vector<std::string>{glyph(k.display ? 88 : 80, 0, -box->child(0)->ascent())});
    }
}
