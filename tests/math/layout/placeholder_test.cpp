// Tests of placeholders: which child is shown (counted from the end when negative), parentheses for
// children that bind no tighter than the position, and the slant of identifiers inside.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/math_fixture.h"
#include "tavi/math/layout/layoutfixedplaceholder.h"
#include "tavi/math/layout/layoutidentnode.h"
#include "tavi/math/mathnode.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

// A node whose template shows `layout`, with identifier children of the given texts, all on one
// identifier template of priority `child_priority`.
struct PlaceholderFixture
{
    PlaceholderFixture(MathLayout *layout, std::vector<wchar const *> const &texts,
                       double child_priority = MathTemplate::no_parens_priority)
        : idents(layout_template(new LayoutIdentNode, child_priority)),
          templ(layout_template(layout)),
          node(expr_node(templ.get(), children(texts)))
    {
    }
    std::vector<MathNode *> children(std::vector<wchar const *> const &texts)
    {
        std::vector<MathNode *> out;
        for (wchar const *t : texts)
            out.push_back(ident_node(idents.get(), t));
        return out;
    }
    // Measures and paints at (0, 10); the painted texts.
    std::vector<Painted> show(MathLayout *layout, Box *box_out = nullptr)
    {
        std::unique_ptr<BoxTree> box(request_as(f.context, node.get(), layout));
        if (box_out)
            *box_out = box->box();
        f.canvas.clear();
        draw_as(f.context, node.get(), layout, AllocationTree(Point(0, 10), box.get()));
        return painted_texts(f.canvas);
    }
    MathFixture f;
    Held<MathTemplate> idents;
    Held<MathTemplate> templ;
    Held<MathNode> node;
};

TEST(Placeholder, AFixedIndexCountsFromTheEndWhenNegative)
{
    struct Case
    {
        long index;
        std::vector<wchar const *> children;
        std::string shown;
        long resolved;
    };
    Case const cases[] = {
        {-1, {u"a", u"bb"}, "bb", 1},
        {-3, {u"a", u"bb", u"ccc"}, "a", 0},
    };
    for (Case const &c : cases) {
        LayoutFixedPlaceholder *p = new LayoutFixedPlaceholder(nullptr, 0, c.index, LayoutPlaceholder::inherit);
        PlaceholderFixture x(p, c.children);
        Box box;
        std::vector<Painted> const expected{{c.shown, 0, 10}};
        EXPECT_EQ(expected, x.show(p, &box)) << c.index;
        // The child's own box: 10 a character, ink 7 and 1.
        EXPECT_EQ(Box(10 * static_cast<long>(c.shown.size()), 7, 1), box);

        x.f.context.math_node(x.node.get());
        EXPECT_TRUE(p->has_child_node(x.f.context, c.resolved));
        EXPECT_FALSE(p->has_child_node(x.f.context, c.resolved + 1));
        long i = -9;
        EXPECT_TRUE(p->get_child_node(x.f.context, i));
        EXPECT_EQ(c.resolved, i);
        x.f.context.math_node(nullptr);
    }
}

TEST(Placeholder, ChildrenThatBindNoTighterGetParentheses)
{
    struct Case
    {
        int position;           // what the placeholder demands
        double child_priority;  // the child's template
        bool parens;
    };
    Case const cases[] = {
        {5, 4.0, true},
        // Equal priority is enough: the comparison is "at least".
        {5, 5.0, true},
        {5, 6.0, false},
        // A position of 0 never adds them.
        {0, -1.0, false},
    };
    for (Case const &c : cases) {
        LayoutFixedPlaceholder *p = new LayoutFixedPlaceholder(nullptr, c.position, 0, LayoutPlaceholder::inherit);
        EXPECT_EQ(c.position > 0, p->parens() != nullptr);
        PlaceholderFixture x(p, {u"ab"}, c.child_priority);
        Box box;
        std::vector<Painted> painted = x.show(p, &box);
        if (c.parens) {
            // "(" 10, "ab" 20, ")" 10 on the font line 8 and 2.
            std::vector<Painted> const expected{{"(", 0, 10}, {"ab", 10, 10}, {")", 30, 10}};
            EXPECT_EQ(expected, painted) << c.child_priority;
            EXPECT_EQ(Box(40, 8, 2), box);
        } else {
            std::vector<Painted> const expected{{"ab", 0, 10}};
            EXPECT_EQ(expected, painted) << c.child_priority;
            EXPECT_EQ(Box(20, 7, 1), box);
        }
    }
}

TEST(Placeholder, SlantingChangesIdentifiersInsideOnly)
{
    struct Case
    {
        LayoutPlaceholder::Slanting slanting;
        bool italic;               // the context's flag before
        bool slanted_identifiers;  // and its slant of identifiers
        bool shown_italic;
    };
    Case const cases[] = {
        {LayoutPlaceholder::inherit, false, true, true},
        {LayoutPlaceholder::inherit, true, false, true},
        {LayoutPlaceholder::slanted, false, false, true},
        {LayoutPlaceholder::unslanted, true, true, false},
        {LayoutPlaceholder::noslantedidents, false, true, false},
    };
    for (Case const &c : cases) {
        LayoutFixedPlaceholder *p = new LayoutFixedPlaceholder(nullptr, 0, 0, c.slanting);
        PlaceholderFixture x(p, {u"x"});
        x.f.context.italic_fontstyle(c.italic);
        x.f.context.slanted_identifiers(c.slanted_identifiers);
        x.show(p);
        std::vector<std::string> fonts = calls_starting(x.f.canvas, "font(");
        ASSERT_FALSE(fonts.empty());
        std::string const flag = c.shown_italic ? ",1,cs" : ",0,cs";
        EXPECT_NE(std::string::npos, fonts.back().find(flag)) << c.slanting << " " << fonts.back();
        // Both come back.
        EXPECT_EQ(c.italic, x.f.context.italic_fontstyle());
        EXPECT_EQ(c.slanted_identifiers, x.f.context.slanted_identifiers());
    }
}

}  // namespace
