// Tests of the stretchy operators of the extension font: size selection at and past each threshold,
// centring, pieces of fences and braces, stacked bars, and spaces around a glyph.
//
// All cases use a font of size 36000 on the recording canvas: every glyph is 1500 wide with ascent 1200
// and descent D = 300. The ex is set on the canvas so that the tolerance of half an ex is easy to see.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "math/layout/stretchy_fixture.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutbigop.h"
#include "tavi/math/layout/layoutbraceop.h"
#include "tavi/math/layout/layoutfenceop.h"
#include "tavi/math/layout/layoutradicalop.h"
#include "tavi/math/layout/layoutstackop.h"

using namespace Tavi;
using StretchyTest::Context;
using StretchyTest::Held;
using StretchyTest::glyph;
using StretchyTest::texts;

namespace {

long const size = 36000;
long const F = 0x7fffffff;

template <class Op>
Op *make(wchar const *text, LayoutOp::Form form = LayoutOp::prefix)
{
    return new Op(text, form, true, false, false, false, 0, 0);
}

std::unique_ptr<BoxTree> request(MathLayout &op, Context &c, long w, long a, long d)
{
    BoxTreeLeaf constraint(w, a, d);
    return std::unique_ptr<BoxTree>(op.request(c.ctx, constraint));
}

struct SizeCase
{
    long a, d;            // wanted ascent and descent
    long width, ascent, descent;
    const char *why;
};

void expect_sizes(MathLayout &op, std::vector<SizeCase> const &cases)
{
    Context c(size);
    c.canvas.ex = 20;  // tolerance ex / 2 = 10
    for (SizeCase const &k : cases) {
        auto box = request(op, c, F, k.a, k.d);
        EXPECT_EQ(box->width(), k.width) << k.why;
        EXPECT_EQ(box->ascent(), k.ascent) << k.why;
        EXPECT_EQ(box->descent(), k.descent) << k.why;
    }
}

// Every run of pieces is painted right after the colour and the extension font (in the symbol
// character set) are set, whatever was selected for measuring before.
void expect_colour_and_font_before_each_piece(TaviTest::RecordingCanvas const &canvas)
{
    auto const &calls = canvas.calls();
    for (std::size_t i = 0; i < calls.size(); ++i) {
        if (calls[i].compare(0, 5, "text(") != 0)
            continue;
        std::size_t first = i;
        while (first > 0 && calls[first - 1].compare(0, 5, "text(") == 0)
            --first;
        ASSERT_GE(first, 2u);
        EXPECT_EQ(calls[first - 2], "text_color(#000000)");
        EXPECT_EQ(calls[first - 1], "font(KMT Math Ext,36000,0,0,cs=2,angle=0)");
    }
}

}  // namespace

// The normal glyph serves up to its ascent 1200 and a descent of 2/30 D = 20, each plus 10. The ready-made
// sizes are h = 12, 18, 24, 30 thirtieths of D: 120, 180, 240, 300, each taken while the wanted total is
// at most h + 10. A chosen glyph is centred: offset (h - a - d) / 2, ascent a + offset (not below 0),
// descent h - ascent.
TEST(StretchyTest, FenceSizeAtAndPastEachThreshold)
{
    Held<LayoutFenceOp> paren(make<LayoutFenceOp>(u"("));
    expect_sizes(*paren, {
        {F, 5, 1500, 1200, 20, "free ascent: normal glyph, descent 2*300/30"},
        {1210, 30, 1500, 1200, 20, "normal at both tolerances 1200+10, 20+10"},
        {99, 31, 1500, 94, 26, "total 130 = 120+10: size 1; offset (120-130)/2 = -5, 99-5 = 94, 120-94"},
        {100, 31, 1500, 124, 56, "total 131: size 2; offset (180-131)/2 = 24, 100+24, 180-124"},
        {220, 31, 1500, 244, 56, "total 251: size 4 (h 300); offset 24"},
        {279, 31, 1500, 274, 26, "total 310: still size 4"},
        // Pieces: full (18+6+18)*300/30 = 420, ends (18+18)*300/30 = 360.
        {280, 31, 1500, 304, 56, "total 311 below ends: 280 + (360-311)/2 = 304, 360-304"},
        {320, 60, 1500, 340, 80, "total 380 below full: 320 + (420-380)/2 = 340, 420-340"},
        {400, 100, 1500, 400, 100, "total 500: pieces at the wanted size"},
    });
}

// Without pieces the largest glyph is stretched no further: it stays 300 high, centred.
TEST(StretchyTest, BigOpFallsBackToLargestGlyph)
{
    Held<LayoutBigOp> slash(make<LayoutBigOp>(u"/", LayoutOp::infix));
    expect_sizes(*slash, {
        {280, 31, 1500, 275, 25, "total 311: size 4 again; offset (300-311)/2 = -5, 280-5, 300-275"},
        {1000, 1000, 1500, 150, 150, "offset (300-2000)/2 = -850: 1000-850 = 150, 300-150"},
    });
}

// A radical takes no tolerance: sizes end exactly at 120, 180, 240, 300, and the normal glyph at a
// descent of 20.
TEST(StretchyTest, RadicalSizesHaveNoTolerance)
{
    Held<LayoutRadicalOp> radical(new LayoutRadicalOp);
    expect_sizes(*radical, {
        {0, 21, 1500, 49, 71, "descent 21: size 1; offset (120-21)/2 = 49, 120-49"},
        {0, 120, 1500, 0, 120, "total 120 exactly: size 1"},
        {0, 125, 1500, 27, 153, "within half an ex of size 1, still size 2: offset (180-125)/2 = 27"},
        {0, 301, 1500, 0, 301, "pieces: full (6+6+18)*300/30 = 300, nothing to grow"},
    });
    // The same wanted total 125 is size 1 for a parenthesis, half an ex being tolerated there:
    // offset (120-125)/2 = -2, ascent 0, descent 120.
    Held<LayoutFenceOp> paren(make<LayoutFenceOp>(u"("));
    expect_sizes(*paren, {{0, 125, 1500, 0, 120, "size 1 with tolerance"}});
}

// A chosen glyph hangs from y = point.y - box ascent - (h - box descent - box ascent) / 2. The box is
// the one a row leaves: the leaf of request grown to at least the wanted size. Each glyph is painted
// after setting the colour and the extension font in the symbol character set.
TEST(StretchyTest, FenceDrawsTheChosenGlyphCentred)
{
    Context c(size);
    c.canvas.ex = 20;
    Held<LayoutFenceOp> paren(make<LayoutFenceOp>(u"("));
    struct Case
    {
        long a, d;
        std::string painted;
    } const cases[] = {
        // Normal glyph on the baseline.
        {1200, 20, glyph(40, 1000, 2000)},
        // Wanted (99, 31), leaf (94, 26), grown to (99, 31): total 130, size 1, code 161;
        // y = 2000 - 99 - (120 - 31 - 99) / 2 = 2000 - 99 + 5 = 1906.
        {99, 31, glyph(161, 1000, 1906)},
    };
    for (Case const &k : cases) {
        c.canvas.clear();
        BoxTreeLeaf box(1500, k.a, k.d);
        paren->draw(c.ctx, AllocationTree(Point(1000, 2000), &box));
        EXPECT_EQ(texts(c.canvas), std::vector<std::string>{k.painted});
        expect_colour_and_font_before_each_piece(c.canvas);
    }
}

// Pieces of "(": x shifts by 291 * 300 / 3000 = 29. For the box (400, 100) at (1000, 2000): top 48 at
// y = 1600; middles 66 from 1600 + 18*300/30 = 1780 every 6*300/30 = 60 while y + 60 < bottomY =
// 2000 + 100 - 180 = 1920, so at 1780 and 1840; the closing one at 1920 - 60 = 1860; bottom 64 at 1920.
TEST(StretchyTest, FenceBuiltFromPieces)
{
    Context c(size);
    c.canvas.ex = 20;
    Held<LayoutFenceOp> paren(make<LayoutFenceOp>(u"("));
    auto leaf = request(*paren, c, F, 400, 100);
    EXPECT_EQ(leaf->leftBadness(), 0.0);
    EXPECT_EQ(leaf->rightBadness(), 50000.0);  // a prefix operator keeps what follows
    c.canvas.clear();
    paren->draw(c.ctx, AllocationTree(Point(1000, 2000), leaf.get()));
    EXPECT_EQ(texts(c.canvas), (std::vector<std::string>{glyph(48, 1029, 1600), glyph(66, 1029, 1780),
                                                          glyph(66, 1029, 1840), glyph(66, 1029, 1860),
                                                          glyph(64, 1029, 1920)}));
    expect_colour_and_font_before_each_piece(c.canvas);

    // "&LeftCeiling;": top 50, middle and bottom both 54, heights 18, 6, 6, no shift. Box (300, 100) at
    // the origin: top at -300; middles from -300 + 180 = -120 every 60 below bottomY = 100 - 60 = 40:
    // -120, -60 (0 + 60 is not below 40); closing at -20; bottom at 40.
    Held<LayoutFenceOp> ceiling(make<LayoutFenceOp>(u"&LeftCeiling;"));
    c.canvas.clear();
    BoxTreeLeaf box(1500, 300, 100);
    ceiling->draw(c.ctx, AllocationTree(Point(0, 0), &box));
    EXPECT_EQ(texts(c.canvas), (std::vector<std::string>{glyph(50, 0, -300), glyph(54, 0, -120),
                                                          glyph(54, 0, -60), glyph(54, 0, -20),
                                                          glyph(54, 0, 40)}));
}

// A brace has a centre piece 18*300/30 = 180 high. Its shortest column is (9+18+9)*300/30 = 360: the
// wanted (200, 150), total 350, grows to ascent 200 + (360-350)/2 = 205, descent 155.
// Drawn in the box (400, 300) at the origin: x = 384*300/3000 = 38; top 56 at -400; centre at
// (300+400)/2 - 400 = -50, its piece 60 at -50 - 90 = -140. Middles 62 every 3*300/30 = 30 from
// -400 + 90 = -310 while y + 30 < -140: -310 ... -190, closing at -170. From -140 + 180 = 40 while
// y + 30 < bottomY = 300 - 90 = 210: 40 ... 160, closing at 180. Bottom 58 at 210.
TEST(StretchyTest, BraceBuiltFromPiecesWithCentre)
{
    Context c(size);
    c.canvas.ex = 20;
    Held<LayoutBraceOp> brace(make<LayoutBraceOp>(u"{"));
    auto leaf = request(*brace, c, F, 200, 150);
    EXPECT_EQ(leaf->box(), Box(1500, 205, 155));

    c.canvas.clear();
    BoxTreeLeaf box(1500, 400, 300);
    brace->draw(c.ctx, AllocationTree(Point(0, 0), &box));
    std::vector<std::string> want{glyph(56, 38, -400)};
    for (long y : {-310, -280, -250, -220, -190, -170})
        want.push_back(glyph(62, 38, y));
    want.push_back(glyph(60, 38, -140));
    for (long y : {40, 70, 100, 130, 160, 180})
        want.push_back(glyph(62, 38, y));
    want.push_back(glyph(58, 38, 210));
    EXPECT_EQ(texts(c.canvas), want);
}

// A bar from a free constraint is the normal glyph (124 for "|"), descent 2*300/30 = 20. Otherwise it
// takes the wanted size but is at least one piece, 6*300/30 = 60, high.
TEST(StretchyTest, StackedBar)
{
    Context c(size);
    Held<LayoutStackOp> bar(make<LayoutStackOp>(u"|", LayoutOp::infix));
    EXPECT_EQ(request(*bar, c, F, F, F)->box(), Box(1500, 1200, 20));
    // 10 + 20 below 60: both grow by (60 - 30) / 2 = 15.
    EXPECT_EQ(request(*bar, c, F, 10, 20)->box(), Box(1500, 25, 35));

    // Box (100, 50) at the origin: pieces of 175 from -100 every 60 while below 50 - 60 = -10: -100,
    // -40; the last at -10.
    c.canvas.clear();
    BoxTreeLeaf box(1500, 100, 50);
    bar->draw(c.ctx, AllocationTree(Point(0, 0), &box));
    EXPECT_EQ(texts(c.canvas),
              (std::vector<std::string>{glyph(175, 0, -100), glyph(175, 0, -40), glyph(175, 0, -10)}));
}

namespace {

// A bracket whose middle pieces have no height, as a font could define one.
class FlatMiddleBracket : public LayoutFenceOp
{
public:
    FlatMiddleBracket() : LayoutFenceOp(u"[", LayoutOp::prefix, true, false, false, false, 0, 0) { midHeight = 0; }
};

}  // namespace

// With a middle height of 0 no middle loop runs, but the closing piece is still painted, at bottomY - 0.
// "[" has top 50, middle 54, bottom 52, heights 18 and 18, no shift. Box (300, 100) at the origin: top
// at -300, bottomY = 100 - 180 = -80: the closing middle and the bottom both at -80.
TEST(StretchyTest, FlatMiddleStillClosesTheColumn)
{
    Context c(size);
    c.canvas.ex = 20;
    Held<FlatMiddleBracket> bracket(new FlatMiddleBracket);
    BoxTreeLeaf box(1500, 300, 100);
    bracket->draw(c.ctx, AllocationTree(Point(0, 0), &box));
    EXPECT_EQ(texts(c.canvas), (std::vector<std::string>{glyph(50, 0, -300), glyph(54, 0, -80), glyph(52, 0, -80)}));
}
