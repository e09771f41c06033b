// Formulas built in code, typeset with the real fonts and painted on a Qt_Pixmap_Canvas: each is kept
// as a PNG under the test artefacts ("typesetting/"), and must have ink inside the box that its request
// gave and none outside it. The fences are chosen to show each ready-made size and the one built from
// pieces.
#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "font_drawing.h"
#include "support/external_tools.h"
#include "support/formula_builder.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutfenceop.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/qt/qt_pixmap_canvas.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

using Maker = std::function<MathNode *(FormulaBuilder &)>;

long const margin = 12;

// Glyph outlines stand at fractions of a pixel, and their antialiased edges may darken the pixel
// next to a box's edge.
int const tolerance = 1;

// Keeps the picture as typesetting/<name>.png and checks that it has ink inside the box and
// none outside it (beyond the tolerance).
void expect_ink_inside_only(PaintedFormula const &r, std::string const &name, std::string const &formula)
{
    ASSERT_FALSE(r.image.isNull()) << name;
    std::string const path = artefact_path("typesetting", name + ".png");
    EXPECT_TRUE(r.image.save(QString::fromStdString(path))) << path;
    int const left = static_cast<int>(margin) - tolerance, top = left;
    int const right = static_cast<int>(margin + r.box->width()) + tolerance;
    int const bottom = static_cast<int>(margin + r.box->ascent() + r.box->descent()) + tolerance;
    long const all = count_ink(r.image, 0, 0, r.image.width(), r.image.height());
    long const inside = count_ink(r.image, left, top, right, bottom);
    EXPECT_GT(inside, 0) << name << ": " << formula;
    EXPECT_EQ(all - inside, 0) << name << ": " << formula << " has ink outside its box (" << left << ", " << top
                           << ") - (" << right << ", " << bottom << ") in " << path;
}

struct Case
{
    char const *name;
    bool display;
    Maker make;
};

Maker ident(wchar const *text) { return [text](FormulaBuilder &b) { return b.ident(text); }; }
Maker number(wchar const *text) { return [text](FormulaBuilder &b) { return b.number(text); }; }
Maker node(char const *kind, std::vector<Maker> const &children)
{
    return [kind, children](FormulaBuilder &b) {
        std::vector<MathNode *> made;
        for (Maker const &c : children)
            made.push_back(c(b));
        return b.node(kind, made);
    };
}

// Draws the made formula and checks it; gives the formula's name.
std::string draw_case(Case const &c)
{
    FormulaBuilder b;
    Held<MathNode> root(c.make(b));
    std::string const formula = b.name_of(root.get());
    expect_ink_inside_only(paint_formula(root.get(), c.display, margin), c.name, formula);
    return formula;
}

std::vector<Case> formulas()
{
    Maker const a_plus_b = node("plus", {ident(u"a"), ident(u"b")});
    Maker const sum_body = node("sum", {node("equals", {ident(u"k"), number(u"1")}), ident(u"n"),
                                        node("sub", {ident(u"a"), ident(u"k")})});
    return {
        {"fraction_of_sums", true, node("frac", {a_plus_b, node("plus", {ident(u"c"), number(u"1")})})},
        {"sqrt_of_fraction", true, node("sqrt", {node("frac", {number(u"1"), ident(u"x")})})},
        {"root_with_degree", true, node("root", {node("plus", {ident(u"x"), number(u"1")}), number(u"3")})},
        {"x_sub_sup", true, node("subsup", {ident(u"x"), ident(u"i"), number(u"2")})},
        {"sum_display", true, sum_body},
        {"sum_text", false, sum_body},
        {"integral_limits", true,
         node("int", {number(u"0"), number(u"1"), node("sup", {ident(u"x"), number(u"2")})})},
        {"integral_stacked_limits", true,
         node("intlim", {number(u"0"), ident(u"&infin;"), node("sup", {ident(u"e"), ident(u"x")})})},
        {"overbar_sum", true, node("overbar", {a_plus_b})},
        {"brace_fraction", true, node("brace", {node("frac", {ident(u"x"), ident(u"y")})})},
    };
}

TEST(TypesettingPng, FormulasHaveInkInsideTheirBoxesOnly)
{
    for (Case const &c : formulas())
        draw_case(c);
}

// Fences around fractions: of candidates of growing height, the first that makes the parenthesis
// take each ready-made size, and the first that builds it from pieces. The glyph is the one that
// LayoutBigOp::ext_char picks for the box that the row gave the fence, as its draw does.
TEST(TypesettingPng, FencesAroundFractionsAtEachSizeAndFromPieces)
{
    Maker const x = ident(u"x");
    std::vector<Maker> const parts = {
        x,
        node("sup", {x, number(u"2")}),
        node("sqrt", {x}),
        node("frac", {number(u"1"), number(u"2")}),
        node("sqrt", {node("frac", {number(u"1"), x})}),
        node("frac", {node("frac", {number(u"1"), number(u"2")}), number(u"3")}),
        node("frac", {node("frac", {number(u"1"), number(u"2")}), node("frac", {number(u"3"), number(u"4")})}),
        node("frac", {node("frac", {node("frac", {number(u"1"), number(u"2")}), number(u"3")}), number(u"4")}),
        node("frac", {node("frac", {node("frac", {number(u"1"), number(u"2")}), number(u"3")}),
                      node("frac", {number(u"4"), node("frac", {number(u"5"), number(u"6")})})}),
    };
    Held<LayoutFenceOp> paren(new LayoutFenceOp(u"(", LayoutOp::prefix, true, false, false, false, 0, 0));
    // Slot 0 to 3 for the ready-made sizes, 4 for pieces.
    std::string found[5];
    Case chosen[5];
    bool have[5] = {false, false, false, false, false};
    for (bool display : {false, true}) {
        for (Maker const &num : parts) {
            for (Maker const &den : parts) {
                Case const c{"", display, node("paren", {node("frac", {num, den})})};
                FormulaBuilder b;
                Held<MathNode> root(c.make(b));
                Qt_Pixmap_Canvas gauge(Extension(0, 0, 1, 1), nullptr, 0);
                MathNodeContext ctx(GlyphContext(nullptr, nullptr, &gauge, nullptr), nullptr, formula_settings(display));
                std::unique_ptr<BoxTree> box(root->request(ctx, BoxTree::unconstrained));
                ASSERT_EQ(box->count(), 3);
                wchar ch = 0;
                Box out;
                int slot = 4;
                if (paren->ext_char(ctx, box->child(0)->box(), ch, out, true)) {
                    slot = -1;
                    for (int i = 0; i < 4; ++i)
                        if (ch == paren->big_char(i))
                            slot = i;
                }
                if (slot >= 0 && !have[slot]) {
                    have[slot] = true;
                    chosen[slot] = c;
                    found[slot] = b.name_of(root.get());
                }
            }
        }
    }
    char const *const names[5] = {"fence_size1", "fence_size2", "fence_size3", "fence_size4", "fence_pieces"};
    for (int i = 0; i < 5; ++i) {
        ASSERT_TRUE(have[i]) << "no candidate gives " << names[i];
        chosen[i].name = names[i];
        std::string const formula = draw_case(chosen[i]);
        EXPECT_EQ(formula, found[i]);
    }
}

}  // namespace
