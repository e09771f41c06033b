// Tests of LayoutSub, LayoutSup and LayoutSubSup: script shifts from ex, X-height and the descent of
// "x", the slants of an operator base, and script style in request and draw.
//
// Font size 2400 on the recording canvas: ex 50 in the base's style, so 2 * 50 / 3 = 33. One level down
// the size is 2400 * 71 / 100 = 1704: X-height 7*1704/240 = 49, descent of "x" 2*1704/240 = 14.
#include <gtest/gtest.h>

#include <memory>

#include "math/layout/stretchy_fixture.h"
#include "tavi/math/layout/layoutintegralop.h"
#include "tavi/math/layout/layoutsub.h"
#include "tavi/math/layout/layoutsubsup.h"
#include "tavi/math/layout/layoutsup.h"

using namespace Tavi;
using namespace StretchyTest;

namespace {

long const F = 0x7fffffff;

template <class L>
Held<L> *scripted(StyleProbe *base, StyleProbe *first, StyleProbe *second = nullptr)
{
    auto *held = new Held<L>(new L);
    (*held)->append(base);
    (*held)->append(first);
    if (second != nullptr)
        (*held)->append(second);
    return held;
}

}  // namespace

// Subscript (50, 30, 8) is raised to the X-height 49. subShift = min(33, 49 - base descent).
//   base (100, 60, 10): min(33, 39) = 33; sub at (100, 49 - 33 = 16); ascent max(60, 33) = 60, descent
//     max(10, 8 - 33 + 49 = 24) = 24.
//   deep base (100, 60, 30): min(33, 19) = 19; sub at (100, 30), its baseline at the base's bottom;
//     descent max(30, 8 - 19 + 49 = 38) = 38.
//   tall subscript (50, 60, 8) keeps its ascent: min(33, 50) = 33; sub at (100, 27); descent
//     max(10, 8 - 33 + 60 = 35) = 35.
TEST(IndicesTest, SubscriptShift)
{
    struct Case
    {
        long baseDescent, subAscent;
        Point at;
        long subBoxAscent;
        Box node;
    } const cases[] = {
        {10, 30, Point(100, 16), 49, Box(150, 60, 24)},
        {30, 30, Point(100, 30), 49, Box(150, 60, 38)},
        {10, 60, Point(100, 27), 60, Box(150, 60, 35)},
    };
    for (Case const &k : cases) {
        Context c(2400);
        StyleProbe *base = new StyleProbe(100, 60, k.baseDescent, 0);
        StyleProbe *sub = new StyleProbe(50, k.subAscent, 8, 1);
        std::unique_ptr<Held<LayoutSub>> l(scripted<LayoutSub>(base, sub));
        std::unique_ptr<BoxTree> box((*l)->request(c.ctx, BoxTree::unconstrained));
        ASSERT_EQ(box->count(), 2);
        EXPECT_EQ(box->box(), k.node) << k.baseDescent << "," << k.subAscent;
        EXPECT_EQ(box->child(0)->offset(), Point(0, 0));
        EXPECT_EQ(box->child(1)->offset(), k.at);
        EXPECT_EQ(box->child(1)->ascent(), k.subBoxAscent);
        EXPECT_EQ(sub->requests[0].scriptlevel, 1);
        EXPECT_FALSE(sub->requests[0].display);
        EXPECT_EQ(base->requests[0].constraint_width, F);
    }
}

// m = max(sup descent, 14); t = base ascent - sup ascent - m, at least ex 50; supShift = t + m.
//   base (100, 60, 10), sup (50, 30, 8): m 14, t = 16 -> 50, shift 64; sup at (100, -64); ascent
//     max(60, 64 + 30) = 94; descent the base's 10.
//   tall base (100, 200, 10): t = 200 - 30 - 14 = 156, shift 170; ascent max(200, 200) = 200.
//   tall base, deep sup (50, 30, 20): m 20 (the sup's own descent now, not "x"'s), t = 200 - 30 - 20 =
//     150, shift 170; the box's descent stays the base's 10.
TEST(IndicesTest, SuperscriptShift)
{
    struct Case
    {
        long baseAscent, supDescent;
        long shift;
        Box node;
    } const cases[] = {
        {60, 8, 64, Box(150, 94, 10)},
        {200, 8, 170, Box(150, 200, 10)},
        {200, 20, 170, Box(150, 200, 10)},
    };
    for (Case const &k : cases) {
        Context c(2400);
        StyleProbe *sup = new StyleProbe(50, 30, k.supDescent, 1);
        std::unique_ptr<Held<LayoutSup>> l(scripted<LayoutSup>(new StyleProbe(100, k.baseAscent, 10, 0), sup));
        std::unique_ptr<BoxTree> box((*l)->request(c.ctx, BoxTree::unconstrained));
        EXPECT_EQ(box->box(), k.node) << k.baseAscent << "," << k.supDescent;
        EXPECT_EQ(box->child(1)->offset(), Point(100, -k.shift));
        EXPECT_EQ(sup->requests[0].scriptlevel, 1);
    }
}

// Both scripts, each by its own rule, on a base (100, 60, 10): sub (50, 30, 8) at (100, 16), sup
// (70, 30, 8) at (100, -64). Width max(100 + 50, 100 + 70) = 170, ascent 94, descent 24.
TEST(IndicesTest, SubSupTogether)
{
    Context c(2400);
    StyleProbe *sub = new StyleProbe(50, 30, 8, 1);
    StyleProbe *sup = new StyleProbe(70, 30, 8, 2);
    std::unique_ptr<Held<LayoutSubSup>> l(scripted<LayoutSubSup>(new StyleProbe(100, 60, 10, 0), sub, sup));
    std::unique_ptr<BoxTree> box((*l)->request(c.ctx, BoxTree::unconstrained));
    ASSERT_EQ(box->count(), 3);
    EXPECT_EQ(box->box(), Box(170, 94, 24));
    EXPECT_EQ(box->child(1)->offset(), Point(100, 16));
    EXPECT_EQ(box->child(2)->offset(), Point(100, -64));

    // Drawn at (1000, 500): the base in its style, both scripts one level down.
    (*l)->draw(c.ctx, AllocationTree(Point(1000, 500), box.get()));
    ASSERT_EQ(sub->draws.size(), 1u);
    ASSERT_EQ(sup->draws.size(), 1u);
    EXPECT_EQ(sub->draws[0].at, Point(1100, 516));
    EXPECT_EQ(sup->draws[0].at, Point(1100, 436));
    EXPECT_EQ(sub->draws[0].scriptlevel, 1);
    EXPECT_FALSE(sup->draws[0].display);
}

// An operator base moves its scripts by its slants and receives the constraint. At size 36000 (ex 750,
// 2 * 750 / 3 = 500; one level down 25560: X-height 7*25560/240 = 745, "x" descent 2*25560/240 = 213) an
// integral in display style slants the subscript by 300 * -445 / 3000 = -44. Base probe (100, 141, 81),
// sub (500, 300, 100) raised to 745, sup (400, 300, 100):
//   subShift = min(500, 745 - 81) = 500: sub at (100 - 44, 745 - 500) = (56, 245);
//   m = 213, t = 141 - 300 - 213 below 750: supShift 963: sup at (100, -963);
//   width max(100 + 500 - 44, 100 + 400) = 556; ascent max(141, 963 + 300) = 1263; descent
//   max(81, 100 - 500 + 745) = 345.
TEST(IndicesTest, OperatorBaseSlants)
{
    Context c(36000);
    Held<LayoutIntegralOp> integral(new LayoutIntegralOp(u"&Integral;", LayoutOp::prefix, false, false, false,
                                                         false, 0, 0));
    StyleProbe *base = new StyleProbe(100, 141, 81, 0);
    base->op = integral.get();
    std::unique_ptr<Held<LayoutSubSup>> l(
        scripted<LayoutSubSup>(base, new StyleProbe(500, 300, 100, 1), new StyleProbe(400, 300, 100, 2)));
    BoxTreeLeaf constraint(777, 20, 30);
    std::unique_ptr<BoxTree> box((*l)->request(c.ctx, constraint));
    EXPECT_EQ(box->box(), Box(556, 1263, 345));
    EXPECT_EQ(box->child(1)->offset(), Point(56, 245));
    EXPECT_EQ(box->child(2)->offset(), Point(100, -963));
    EXPECT_EQ(base->requests[0].constraint_width, 777);
    EXPECT_EQ((*l)->core_operator(), integral.get());
}
