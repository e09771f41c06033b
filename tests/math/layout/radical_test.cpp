// Tests of LayoutSqrt and LayoutRoot: sign sized to the radicand plus a leading, bar over the radicand,
// the degree in the notch and the push to the right of a wide degree, and the degree's style.
//
// Font size 36000 on the recording canvas: every glyph 1500 wide, ascent 1200, D = 300, a leading of
// 1200 / 5 = 240. The bar glyph 197 gives u = 300*40/3000 = 4: the bar's box is (width, 12, 4).
#include <gtest/gtest.h>

#include <memory>

#include "math/layout/stretchy_fixture.h"
#include "tavi/math/layout/layoutroot.h"
#include "tavi/math/layout/layoutsqrt.h"

using namespace Tavi;
using namespace StretchyTest;

namespace {

long const size = 36000;

}  // namespace

// Radicand (3000, 1000, 100): the sign is asked for (1240, 100), total 1340, beyond the largest size
// 300: pieces, at the wanted size (full (6+6+18)*300/30 = 300 is less). Sign (1500, 1240, 100) at the
// origin, radicand at (1500, 0), bar (3000, 12, 4) at (1500, -1240). Width 1500 + 3000, ascent the
// larger of 1000 + 240 and 1240, descent 100.
// Radicand (600, 0, 50): the sign is asked for (240, 50), total 290 <= 300: size 4 (code 115), offset
// (300 - 290) / 2 = 5, sign box (1500, 245, 55). The bar keeps its glyph's width 1500, wider than the
// radicand: width 1500 + 1500 = 3000; ascent max(0 + 240, 245) = 245, descent max(50, 55) = 55.
TEST(RadicalTest, SqrtGeometry)
{
    struct Case
    {
        long w, a, d;
        Box sign, node;
    } const cases[] = {
        {3000, 1000, 100, Box(1500, 1240, 100), Box(4500, 1240, 100)},
        {600, 0, 50, Box(1500, 245, 55), Box(3000, 245, 55)},
    };
    for (Case const &k : cases) {
        Context c(size);
        Held<LayoutSqrt> sqrt(new LayoutSqrt);
        sqrt->append(new StyleProbe(k.w, k.a, k.d, 0));
        std::unique_ptr<BoxTree> box(sqrt->request(c.ctx, BoxTree::unconstrained));
        ASSERT_EQ(box->count(), 3);
        EXPECT_EQ(box->box(), k.node);
        EXPECT_EQ(box->child(0)->offset(), Point(1500, 0));
        EXPECT_EQ(box->child(1)->offset(), Point(1500, -k.sign.ascent()));
        EXPECT_EQ(box->child(1)->box(), Box(std::max(k.w, 1500L), 12, 4));
        EXPECT_EQ(box->child(2)->offset(), Point(0, 0));
        EXPECT_EQ(box->child(2)->box(), k.sign);
    }
}

// Drawn at (0, 2000): radicand at (1500, 2000); bar glyphs at y = 2000 - 1240 = 760 from 1500 every 1500
// while below 1500 + 3000 - 1500 = 3000, then at 3000. The sign of pieces: x = 702*300/3000 = 70; top 118
// at 760; middles 117 from 760 + 60 = 820 every 60 while y + 60 < bottomY = 2000 + 100 - 180 = 1920, i.e.
// 820 ... 1840 (18 pieces), then the closing one at 1860; bottom 116 at 1920.
TEST(RadicalTest, SqrtDraw)
{
    Context c(size);
    Held<LayoutSqrt> sqrt(new LayoutSqrt);
    StyleProbe *radicand = new StyleProbe(3000, 1000, 100, 0);
    sqrt->append(radicand);
    std::unique_ptr<BoxTree> box(sqrt->request(c.ctx, BoxTree::unconstrained));
    c.canvas.clear();
    sqrt->draw(c.ctx, AllocationTree(Point(0, 2000), box.get()));
    ASSERT_EQ(radicand->draws.size(), 1u);
    EXPECT_EQ(radicand->draws[0].at, Point(1500, 2000));
    std::vector<std::string> want{glyph(197, 1500, 760), glyph(197, 3000, 760), glyph(118, 70, 760)};
    for (long y = 820; y <= 1840; y += 60)
        want.push_back(glyph(117, 70, y));
    want.push_back(glyph(117, 70, 1860));
    want.push_back(glyph(116, 70, 1920));
    EXPECT_EQ(want.size(), 3u + 18u + 2u);
    EXPECT_EQ(texts(c.canvas), want);
}

// Radicand (3000, 1000, 100) as above: sign of pieces (1500, 1240, 100). Degree place: y =
// 300 * -1620 / 3000 - 240 = -402, x = r = 1500 / 4 = 375.
// Narrow degree (400, 300, 50): half 200 <= r, x = 375 - 200 = 175; y = -402 + (100 - 50) = -352. The
// merge keeps the sign at the origin: width max(1500, 400 + 175) = 1500, ascent max(1240, 300 + 352).
// Node width 3000 + 1500, ascent 1240, descent 100; degree at (175, -352).
// Wide degree (1000, 300, 50): half 500 > r, x = 375 - 500 - 500 + 375 = -250. The merge moves the sign
// right by a.x = 250: width max(1500, 1000 - 250) + 250 = 1750. Radicand at (1500 + 250, 0), bar at
// (1750, -1240), sign at (250, 0), degree at (0, -352); width 3000 + 1750.
TEST(RadicalTest, RootGeometry)
{
    struct Case
    {
        long w, a;
        Point radicand, bar, sign, degree;
        Box node;
    } const cases[] = {
        {400, 300, Point(1500, 0), Point(1500, -1240), Point(0, 0), Point(175, -352), Box(4500, 1240, 100)},
        {1000, 300, Point(1750, 0), Point(1750, -1240), Point(250, 0), Point(0, -352), Box(4750, 1240, 100)},
    };
    for (Case const &k : cases) {
        Context c(size);
        Held<LayoutRoot> root(new LayoutRoot);
        StyleProbe *degree = new StyleProbe(k.w, k.a, 50, 1);
        root->append(new StyleProbe(3000, 1000, 100, 0));
        root->append(degree);
        std::unique_ptr<BoxTree> box(root->request(c.ctx, BoxTree::unconstrained));
        ASSERT_EQ(box->count(), 4);
        EXPECT_EQ(box->box(), k.node) << k.w;
        EXPECT_EQ(box->child(0)->offset(), k.radicand);
        EXPECT_EQ(box->child(1)->offset(), k.bar);
        EXPECT_EQ(box->child(2)->offset(), k.sign);
        EXPECT_EQ(box->child(3)->offset(), k.degree);
        // The degree is measured two levels down, out of display style.
        ASSERT_EQ(degree->requests.size(), 1u);
        EXPECT_EQ(degree->requests[0].scriptlevel, 2);
        EXPECT_FALSE(degree->requests[0].display);
    }
}
