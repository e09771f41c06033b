// MathNode and MathAtomNode: the highlight of selected nodes and the insertion-point operand, painting
// within the damage, the subtree walks (equality, search) and the caret of atoms.
#include "math/node_probe.h"
#include "tavi/glyph/view.h"
#include "tavi/math/mathexprnode.h"
#include "tavi/math/mathidentnode.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Tavi;
using namespace NodeTest;

namespace {

// A view that says whether it has the focus.
class FocusView : public View
{
public:
    explicit FocusView(bool focus) : focus_(focus) {}
    bool focus() const override { return focus_; }

private:
    bool focus_;
};

MathIdentNode *ident(MathTemplate *t, char16_t const *text)
{
    auto *n = new MathIdentNode(t);
    n->text(text);
    return n;
}

}  // namespace

TEST(MathNode, EqualityAndSearch)
{
    HeldProbe probe, other_probe(u"other");
    auto build = [&](MathTemplate *t, char16_t const *a, char16_t const *b) {
        auto *n = new MathExprNode(t);
        n->append(ident(probe.get(), a));
        n->append(ident(probe.get(), b));
        return n;
    };
    Own<MathExprNode> one(build(probe.get(), u"x", u"y"));
    Own<MathExprNode> two(build(probe.get(), u"x", u"y"));
    Own<MathExprNode> swapped(build(probe.get(), u"y", u"x"));
    Own<MathExprNode> retyped(build(other_probe.get(), u"x", u"y"));

    EXPECT_TRUE(one->is_equal(two.get()));
    EXPECT_FALSE(one->is_equal(swapped.get()));
    EXPECT_FALSE(one->is_equal(retyped.get()));

    // has_node compares by equality, not only by identity, at any depth.
    Own<MathExprNode> outer(new MathExprNode(probe.get()));
    outer->append(build(probe.get(), u"x", u"y"));
    EXPECT_TRUE(outer->has_node(one.get()));
    EXPECT_TRUE(outer->has_node(two->child(1)));  // an equal "y", not the same object
    EXPECT_FALSE(outer->has_node(swapped.get()));
}

// Damage-free nodes paint nothing and don't descend.
TEST(MathNode, NothingIsPaintedOutsideTheDamage)
{
    HeldProbe probe;
    Own<MathExprNode> node(new MathExprNode(probe.get()));
    node->selected(true);
    Fixture f;
    BoxTreeLeaf box(30, 8, 2);
    AllocationTree at(Point(100, 50), &box);  // covers x 100..130, y 42..52

    f.canvas.limited = true;
    f.canvas.damage = Rect(0, 0, 10, 10);
    node->draw(f.context, at);
    EXPECT_TRUE(f.canvas.calls().empty());
    EXPECT_TRUE(probe->calls.empty());

    f.canvas.damage = Rect(50, 129, 60, 200);  // touches the bottom right corner
    node->draw(f.context, at);
    EXPECT_FALSE(f.canvas.calls().empty());
    ASSERT_EQ(probe->calls.size(), 1u);
    EXPECT_EQ(probe->calls[0].what, "draw");
    EXPECT_EQ(probe->calls[0].node, node.get());
}

// The highlight of a node by surface, flags and the view's focus. The allocation at (100, 50) with a
// box of 30 x (8, 2) covers top 42, left 100, bottom 52, right 130; 10 by 20 twips at 1440 dpi are 10
// by 20 units, so the highlight covers (42 - 20, 100 - 10, 52 + 20, 130 + 10) = (22, 90, 72, 140).
TEST(MathNode, HighlightBySurfaceFlagsAndFocus)
{
    std::string const yellow_frame[] = {"pen(0/#ffff00/solid,restart=1)", "frame_rect(22,90,72,140)"};
    std::string const yellow = "fill_rect(22,90,72,140,brush=0/#ffff00)";
    std::string const cyan = "fill_rect(22,90,72,140,brush=0/#00ffff)";
    std::string const green = "fill_rect(22,90,72,140,brush=0/#00ff00)";
    using Calls = std::vector<std::string>;
    struct Case
    {
        bool printing;
        bool selected;
        bool ip_operand;
        bool inside_selection;
        bool focus;
        Calls calls;
    } const cases[] = {
        // A selected node: filled yellow with the focus, framed without.
        {false, true, false, false, true, {yellow}},
        {false, true, false, false, false, {yellow_frame[0], yellow_frame[1]}},
        // Selected and the insertion point's operand: cyan with the focus, green without.
        {false, true, true, false, true, {cyan}},
        {false, true, true, false, false, {green}},
        // The operand alone: cyan only inside a selected node of a focused view.
        {false, false, true, true, true, {cyan}},
        {false, false, true, false, true, {green}},
        // Printing shows the insertion point in green and never the selection.
        {true, true, true, false, true, {green}},
        {true, true, false, false, true, {}},
    };
    for (Case const &c : cases) {
        HeldProbe probe;
        Own<MathExprNode> node(new MathExprNode(probe.get()));
        node->selected(c.selected);
        node->ip_operand(c.ip_operand);
        FocusView view(c.focus);
        DamageCanvas canvas;
        canvas.set_printing(c.printing);
        GlyphContext glyph_context(nullptr, &view, &canvas, nullptr);
        MathNodeContext context(glyph_context, nullptr);
        context.in_selection(c.inside_selection);
        BoxTreeLeaf box(30, 8, 2);
        node->draw(context, AllocationTree(Point(100, 50), &box));

        std::string const label = std::to_string(&c - cases);
        EXPECT_EQ(canvas.calls(), c.calls) << "case " << label;
        // The template paints with in_selection set inside a selected node, and it is put back.
        ASSERT_EQ(probe->in_selection_seen.size(), 1u) << label;
        EXPECT_EQ(probe->in_selection_seen[0], c.selected || c.inside_selection) << label;
        EXPECT_EQ(context.in_selection(), c.inside_selection) << label;
        EXPECT_EQ(context.math_node(), nullptr) << label;
    }
}

TEST(MathAtomNode, TextAndCaret)
{
    HeldProbe probe;
    Own<MathIdentNode> x(new MathIdentNode(probe.get()));
    // A caret of -1 stands after the last character; one beyond the end is taken as the end.
    struct Case
    {
        long given;
        long stored;
    } const cases[] = {{-1, 4}, {2, 2}, {9, 4}};
    MathString const s(u"a\xD835\xDC00" u"b", MathString::f_text);  // a, one pair, b: 4 units
    for (Case const &c : cases) {
        x->text(s, c.given);
        EXPECT_EQ(x->caret_pos(), c.stored) << c.given;
    }

    // The caret moves over whole characters: the pair is one step.
    x->text(s, 0);
    long const forward[] = {1, 3, 4};
    for (long expected : forward) {
        EXPECT_TRUE(x->increment_caret_pos(true));
        EXPECT_EQ(x->caret_pos(), expected);
    }
    EXPECT_FALSE(x->increment_caret_pos(true));
    EXPECT_EQ(x->caret_pos(), 4);
    EXPECT_TRUE(x->increment_caret_pos(false));
    EXPECT_EQ(x->caret_pos(), 3);  // back over the whole pair
}
