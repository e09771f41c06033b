// The default setup file on real pixels: what it sets against its operand stands there (a factorial's
// "!", a quantifier's bound variable, the parenthesis after a function's name), and an integral in
// display style carries its limits beside the sign while a sum keeps them above and below. Each
// formula is read from the content format, typeset with the real fonts at 24 points on 96 dpi (32
// pixels to the em) and painted; gaps are measured between columns of ink.
#include <gtest/gtest.h>

#include <QImage>

#include <string>

#include "font_drawing.h"
#include "support/external_tools.h"
#include "support/math_fixture.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/interchange/content.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/templatetable.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

long const em = 32;
long const margin = 8;

// The formula `body` (content elements) read with the default setup, measured and painted.
PaintedFormula paint(std::string const &body, bool display)
{
    TemplateTable table(nullptr);
    EXPECT_TRUE(read_default_setup(table));
    Held<MathRootNode> root(read_math_content(
        table, "<math xmlns=\"http://www.tavi-math.org/xml/MathEditContent\">" + body + "</math>"));
    return paint_formula(root->child(), display, margin);
}

bool ink_column(QImage const &image, int x) { return count_ink(image, x, 0, x + 1, image.height()) > 0; }

// The blank columns between the last ink before column `x` and the first ink at or after it.
long gap_at(QImage const &image, long x)
{
    long left = x - 1;
    while (left > 0 && !ink_column(image, static_cast<int>(left)))
        --left;
    long right = x;
    while (right < image.width() && !ink_column(image, static_cast<int>(right)))
        ++right;
    return right - left - 1;
}

}  // namespace

// The operand and what the setup sets against it meet with no more blank than the two glyphs' own
// side bearings, 3/16 of an em at most. The dictionary's spaces (3/20 of an em before "!", 4/20 after
// "max", 6/20 after a quantifier, 3/20 and 4/20 around a negation) leave 7 to 13 pixels here.
TEST(SetupSpacingPng, OperatorsStandAgainstTheirOperands)
{
    struct Case
    {
        char const *name;
        char const *body;
        long child;  // the child of the top box that starts at the gap
    };
    Case const cases[] = {
        {"factorial", R"(<expr tmp="factorial"><ident>n</ident></expr>)", 1},
        {"max", R"(<expr tmp="max"><ident>a</ident><ident>b</ident></expr>)", 1},
        {"forall", R"(<expr tmp="forall"><ident><chr nm="epsilon"/></ident><ident>P</ident></expr>)", 1},
        {"exists", R"(<expr tmp="exists"><ident><chr nm="delta"/></ident><ident>P</ident></expr>)", 1},
        {"not", R"(<expr tmp="not"><ident>p</ident></expr>)", 1},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.name);
        PaintedFormula const p = paint(c.body, true);
        ASSERT_GT(p.box->count(), c.child);
        long const x = margin + p.box->child(c.child)->offset().x;
        long const gap = gap_at(p.image, x);
        EXPECT_LE(gap, em * 3 / 16) << "a gap of " << gap << " pixels at x " << x;
        p.image.save(QString::fromStdString(artefact_path("setup-spacing", std::string(c.name) + ".png")));
    }
}

// The first row of the image that holds ink in columns [left, right).
int top_ink_row(QImage const &image, int left, int right)
{
    for (int y = 0; y < image.height(); ++y)
        if (count_ink(image, left, y, right, y + 1) > 0)
            return y;
    return image.height();
}

// In display style an integral's limits stand beside the sign, the upper one below its top, while a
// sum's stand above and below it. Boxes: the limits' offsets; pixels: whose ink is the highest.
TEST(SetupSpacingPng, IntegralLimitsBesideTheSignAndSumLimitsAboveIt)
{
    PaintedFormula const integral = paint(R"(<expr tmp="defint"><ident>x</ident><ident>x</ident><num>0</num><num>1</num></expr>)",
                                   true);
    BoxTree const *limits = integral.box->child(0);
    ASSERT_EQ(limits->count(), 3);
    BoxTree const *sign = limits->child(0);
    for (long i : {1L, 2L})
        EXPECT_GE(limits->child(i)->offset().x, sign->width() / 2) << "limit " << i << " is not beside the sign";
    BoxTree const *upper = limits->child(2);
    EXPECT_GT(upper->offset().y + upper->descent(), -sign->ascent()) << "the upper limit stands above the sign";
    int const sign_left = static_cast<int>(margin + limits->offset().x);
    int const sign_right = sign_left + static_cast<int>(sign->width());
    EXPECT_EQ(top_ink_row(integral.image, sign_left, sign_right), top_ink_row(integral.image, 0, integral.image.width()))
        << "ink above the integral sign";
    integral.image.save(QString::fromStdString(artefact_path("setup-spacing", "integral.png")));

    PaintedFormula const sum = paint(R"(<expr tmp="sum"><ident>k</ident><num>1</num><ident>n</ident></expr>)", true);
    BoxTree const *stack = sum.box->child(0);
    ASSERT_EQ(stack->count(), 3);
    BoxTree const *over = stack->child(2);
    EXPECT_LT(over->offset().y + over->descent(), -stack->child(0)->ascent()) << "the upper limit is not above the sign";
    long const sign_top = margin + sum.box->ascent() - stack->child(0)->ascent();
    EXPECT_LT(top_ink_row(sum.image, 0, sum.image.width()), sign_top) << "no ink above the sum's sign";
    sum.image.save(QString::fromStdString(artefact_path("setup-spacing", "sum.png")));
}
