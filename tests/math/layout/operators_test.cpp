// Tests of operators: line-break costs by form and for the invisible operators, the spacing
// arithmetic in and out of scripts with its single rounding, the box and paint offsets, and the
// slant of subscripts.
#include <gtest/gtest.h>

#include <memory>

#include "support/math_fixture.h"
#include "tavi/math/layout/layoutop.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

double const forbidden = 50000.0;

TEST(Operators, BreakCostsFollowTheFormAndTheInvisibleOperators)
{
    struct Case
    {
        wchar const *text;
        LayoutOp::Form form;
        double left, right;
    };
    Case const cases[] = {
        {u"+", LayoutOp::infix, 0.0, 0.0},
        {u"-", LayoutOp::prefix, 0.0, forbidden},
        {u"!", LayoutOp::postfix, forbidden, 0.0},
        // These glue both sides whatever the form.
        {u"&InvisibleTimes;", LayoutOp::prefix, forbidden, forbidden},
        {u"&NonBreakingSpace;", LayoutOp::infix, forbidden, forbidden},
        // Only the whole entity text counts.
        {u"&InvisibleTimes", LayoutOp::infix, 0.0, 0.0},
    };
    for (Case const &c : cases) {
        Held<LayoutOp> op(new LayoutOp(c.text, c.form, false, false, false, false, 0, 0));
        MathFixture f;
        std::unique_ptr<BoxTree> box(op->request(f.context, BoxTree::unconstrained));
        EXPECT_EQ(c.left, box->leftBadness());
        EXPECT_EQ(c.right, box->rightBadness());
    }
}

TEST(Operators, SpacesAreConvertedAsOneSum)
{
    struct Case
    {
        long size;        // text font, twips
        long level;       // script level
        long dpi;
        long lspace, rspace;
        long width;       // box width
        long paint_x;     // where the glyph is painted, from 0
    };
    Case const cases[] = {
        // 240 * (5 + 5) / 20 = 120 twips = 120 units at 1440 dpi; glyph 10; left 240 * 5 / 20 = 60.
        {240, 0, 1440, 5, 5, 130, 60},
        // The sum 240 * 7 / 20 = 84 twips = 8.4 + 0.5 -> 8, while left 36 twips = 4.1 -> 4 and right
        // 48 twips = 5.3 -> 5 would make 9: the sum is rounded once.
        {240, 0, 144, 3, 4, 18, 4},
        // Level 1 of a 225 font: 225 * 71 / 100 = 159, raised to the least script size 160. Both
        // spaces collapse to 3: 6 * 160 / 20 = 48; the glyph is 10 * 160 / 240 = 6 wide; left
        // 3 * 160 / 20 = 24.
        {225, 1, 1440, 5, 5, 54, 24},
        // In a script only the spaces that are not 0 count: 3 * 160 / 20 = 24, all to the right.
        {225, 1, 1440, 0, 7, 30, 0},
    };
    for (Case const &c : cases) {
        MathInfo::Settings settings = math_settings(c.size);
        settings.scriptlevel = c.level;
        MathFixture f(settings, Extent(c.dpi, c.dpi));
        Held<LayoutOp> op(new LayoutOp(u"+", LayoutOp::infix, false, false, false, false, c.lspace, c.rspace));
        std::unique_ptr<BoxTree> box(op->request(f.context, BoxTree::unconstrained));
        EXPECT_EQ(c.width, box->width()) << c.lspace << "," << c.rspace << " at " << c.dpi;
        f.canvas.clear();
        op->draw(f.context, AllocationTree(Point(0, 10), box.get()));
        std::vector<Painted> const painted{{"+", c.paint_x, 10}};
        EXPECT_EQ(painted, painted_texts(f.canvas)) << c.lspace << "," << c.rspace << " at " << c.dpi;
    }
}

// A canvas on which every character's right bearing is -4 in the symbol set and -1 otherwise.
class BearingCanvas : public RecordingCanvas
{
public:
    void char_bearing(wchar const *, long &left, long &right) const override
    {
        left = 0;
        right = const_cast<BearingCanvas *>(this)->char_set() == cs_symbol ? -4 : -1;
    }
};

TEST(Operators, SubscriptsArePulledInByTheLastCharacter)
{
    BearingCanvas canvas;
    MathNodeContext context(GlyphContext(nullptr, nullptr, &canvas, nullptr), nullptr, math_settings());
    Box const any;
    long sub = 99;
    long sup = 99;

    Held<LayoutOp> plain(new LayoutOp(u"ab", LayoutOp::infix, false, false, false, false, 0, 0));
    plain->subsup_slant(context, any, sub, sup);
    EXPECT_EQ(-1, sub);
    EXPECT_EQ(0, sup);

    // The last character's class picks the character set: "Sum" is in the math extension, read
    // in the symbol set, after a text character.
    Held<LayoutOp> mixed(new LayoutOp(u"a&Sum;", LayoutOp::infix, false, false, false, false, 0, 0));
    ASSERT_EQ(MathString::f_extension, mixed->text().font_at(1));
    mixed->subsup_slant(context, any, sub, sup);
    EXPECT_EQ(-4, sub);
    EXPECT_EQ(0, sup);
}

}  // namespace
