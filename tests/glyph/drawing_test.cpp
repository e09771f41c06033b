// Drawing through the small glyphs: TextGlyph paints its string with the font, colour and character
// set of a TextGlyphContext and nothing without one; Placement paints its children at their
// positions inside a translation that it adds and takes away again, measuring each child afresh.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/recording_canvas.h"
#include "tavi/canvas/font.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/placement.h"
#include "tavi/glyph/textglyph.h"
#include "tavi/glyph/textglyphcontext.h"

namespace {

using namespace Tavi;
using TaviTest::RecordingCanvas;
using Calls = std::vector<std::string>;

std::string const font_call = "font(Serif,200,1,0,cs=2,angle=0)";
std::string const color_call = "text_color(#0a141e)";

struct Painting
{
    RecordingCanvas canvas;
    GlyphContext plain{nullptr, nullptr, &canvas, nullptr};
    TextGlyphContext context{plain, Font(u"Serif", 200, true, false), Color(10, 20, 30), Gauge::cs_symbol};
};

// Nothing is drawn without a text context; with one, the font, the colour, then the text at the
// baseline point, a character outside the BMP whole.
TEST(TextGlyph, DrawsItsStringAtTheBaselinePoint)
{
    wchar const surrogates[] = {u'x', 0xD835, 0xDC00, 0};
    Painting p;
    auto *glyph = new TextGlyph(surrogates);
    glyph->ref();
    glyph->draw(p.plain, AllocationTree(Point(1, 1), nullptr));
    EXPECT_TRUE(p.canvas.calls().empty());
    glyph->draw(p.context, AllocationTree(Point(-5, 7), nullptr));
    EXPECT_EQ(p.canvas.calls(), (Calls{font_call, color_call, "text(\"x\xF0\x9D\x90\x80\",-5,7)"}));
    glyph->unref();
}

// A leaf of fixed size that notes how it was asked and where it was drawn, and whose box trees
// count their own destruction.
class Measured : public Glyph
{
public:
    struct Tree : BoxTreeLeaf
    {
        Tree(int *deaths) : BoxTreeLeaf(4, 3, 1), deaths(deaths) {}
        ~Tree() override { ++*deaths; }
        int *deaths;
    };

    BoxTree *request(GlyphContext &, BoxTree const &constraint) override
    {
        ++requests;
        unconstrained = &constraint == &BoxTree::unconstrained;
        auto *tree = new Tree(&trees_freed);
        last_tree = tree;
        return tree;
    }
    void draw(GlyphContext &context, AllocationTree const &a) override
    {
        same_tree = a.boxtree() == last_tree;
        at = a.point();
        translation = context.canvas()->translation();
    }

    int requests = 0;
    int trees_freed = 0;
    bool unconstrained = false;
    bool same_tree = false;
    BoxTree const *last_tree = nullptr;
    Point at, translation;
};

TEST(Placement, DrawsChildrenAtTheirPositionsInsideATranslation)
{
    Painting p;
    p.canvas.translation(Point(10, 20));
    Placement placement;
    placement.ref();
    auto *text = new TextGlyph(u"ab");
    auto *measured = new Measured;
    auto *origin = new TextGlyph(u"o");
    placement.append(text);
    placement.append(measured);
    placement.append(origin);
    placement.position(0, Point(5, 7));
    placement.position(1, Point(-3, 2));

    placement.draw(p.context, AllocationTree(Point(100, 50), nullptr));

    // The canvas stood at (10, 20) + (100, 50) = (110, 70) during the walk.
    EXPECT_EQ(measured->translation, Point(110, 70));
    EXPECT_EQ(measured->at, Point(-3, 2));  // in the placement's own coordinates
    EXPECT_TRUE(measured->unconstrained);
    EXPECT_TRUE(measured->same_tree);
    EXPECT_EQ(measured->trees_freed, 1);
    // Text at (5, 7) lands at (115, 77); the child left at (0, 0) lands at (110, 70).
    EXPECT_EQ(p.canvas.calls(), (Calls{font_call, color_call, "text(\"ab\",115,77)", font_call, color_call,
                                       "text(\"o\",110,70)"}));
    // And the translation is back where it was.
    EXPECT_EQ(p.canvas.translation(), Point(10, 20));

    // Every draw measures afresh, and frees what it measured.
    placement.draw(p.context, AllocationTree(Point(0, 0), nullptr));
    EXPECT_EQ(measured->requests, 2);
    EXPECT_EQ(measured->trees_freed, 2);
}

}  // namespace
