// MathNode and MathAtomNode: the hand-over to the template with the node set in the context, the
// highlight of selected nodes and the insertion-point operand, the subtree walks (flag, equality,
// search), picking, and the text and caret of atoms.
#include "math/node_probe.h"
#include "tavi/glyph/view.h"
#include "tavi/math/mathattriblist.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathexprnode.h"
#include "tavi/math/mathidentnode.h"
#include "tavi/math/mathnumbernode.h"
#include "tavi/math/mathstringnode.h"

#include <gtest/gtest.h>

#include <memory>
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

// A parent that says what read_only is.
class ReadOnlyParent : public Glyph
{
public:
    explicit ReadOnlyParent(bool on) : on_(on) {}
    bool read_only() const override { return on_; }

private:
    bool on_;
};

MathIdentNode *ident(MathTemplate *t, char16_t const *text)
{
    auto *n = new MathIdentNode(t);
    n->text(text);
    return n;
}

}  // namespace

TEST(MathNode, RequestHandsOverWithTheNodeSetAndRestored)
{
    Held<> probe;
    Own<MathExprNode> node(new MathExprNode(probe.get()));
    Own<MathExprNode> outer(new MathExprNode(probe.get()));
    Fixture f;
    f.context.math_node(outer.get());

    std::unique_ptr<BoxTree> box(node->request(f.context, BoxTree::unconstrained));
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->width(), 30);
    ASSERT_EQ(probe->calls.size(), 1u);
    EXPECT_EQ(probe->calls[0].what, "request");
    EXPECT_EQ(probe->calls[0].node, node.get());
    EXPECT_EQ(f.context.math_node(), outer.get());

    // A context that isn't a math context measures nothing and asks nobody.
    GlyphContext plain(nullptr, nullptr);
    EXPECT_EQ(node->request(plain, BoxTree::unconstrained), nullptr);
    EXPECT_EQ(probe->calls.size(), 1u);
}

TEST(MathNode, ReadOnlyComesFromTheParentThroughAnyDepth)
{
    Held<> probe;
    Own<MathExprNode> node(new MathExprNode(probe.get()));
    MathExprNode *kid = new MathExprNode(probe.get());
    node->append(kid);
    ReadOnlyParent yes(true), no(false);
    EXPECT_FALSE(kid->read_only());
    node->parent(&yes);
    EXPECT_TRUE(kid->read_only());
    node->parent(&no);
    EXPECT_FALSE(kid->read_only());
}

// ip_operand(true) on a parent marks the parent alone and clears every descendant; false on the top
// clears the whole tree.
TEST(MathNode, InsertionPointFlagIsClearedBelow)
{
    Held<> probe;
    Own<MathExprNode> top(new MathExprNode(probe.get()));
    MathExprNode *mid = new MathExprNode(probe.get());
    MathIdentNode *leaf = ident(probe.get(), u"x");
    MathIdentNode *other = ident(probe.get(), u"y");
    top->append(mid);
    top->append(other);
    mid->append(leaf);

    EXPECT_FALSE(top->has_ip_operand());
    leaf->ip_operand(true);
    other->ip_operand(true);
    EXPECT_TRUE(top->has_ip_operand());
    EXPECT_TRUE(mid->has_ip_operand());

    mid->ip_operand(true);
    EXPECT_TRUE(mid->ip_operand());
    EXPECT_FALSE(leaf->ip_operand());
    EXPECT_TRUE(other->ip_operand());  // not below mid

    top->ip_operand(false);
    EXPECT_FALSE(top->has_ip_operand());
    EXPECT_FALSE(mid->ip_operand());
    EXPECT_FALSE(other->ip_operand());
}

TEST(MathNode, EqualityAndSearch)
{
    Held<> probe, other_probe(u"other");
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
    Own<MathExprNode> shorter(new MathExprNode(probe.get()));
    shorter->append(ident(probe.get(), u"x"));

    EXPECT_TRUE(one->is_equal(one.get()));
    EXPECT_TRUE(one->is_equal(two.get()));
    EXPECT_TRUE(two->is_equal(one.get()));
    EXPECT_FALSE(one->is_equal(swapped.get()));
    EXPECT_FALSE(one->is_equal(retyped.get()));
    EXPECT_FALSE(one->is_equal(shorter.get()));
    EXPECT_FALSE(shorter->is_equal(one.get()));
    EXPECT_FALSE(one->is_equal(nullptr));
    EXPECT_TRUE(one->same_type(two.get()));
    EXPECT_FALSE(one->same_type(retyped.get()));

    // has_node compares by equality, not only by identity, at any depth.
    Own<MathExprNode> outer(new MathExprNode(probe.get()));
    outer->append(build(probe.get(), u"x", u"y"));
    EXPECT_TRUE(outer->has_node(outer.get()));
    EXPECT_TRUE(outer->has_node(one.get()));
    EXPECT_TRUE(outer->has_node(two->child(1)));  // an equal "y", not the same object
    EXPECT_FALSE(outer->has_node(swapped.get()));
    Own<MathIdentNode> z(ident(probe.get(), u"z"));
    EXPECT_FALSE(outer->has_node(z.get()));
}

// Damage-free nodes paint nothing and don't descend.
TEST(MathNode, NothingIsPaintedOutsideTheDamage)
{
    Held<> probe;
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
        {false, false, true, true, false, {green}},
        // Neither: nothing, whatever the rest.
        {false, false, false, true, true, {}},
        // Printing shows the insertion point in green and never the selection.
        {true, true, true, false, true, {green}},
        {true, false, true, true, true, {green}},
        {true, true, false, false, true, {}},
    };
    for (Case const &c : cases) {
        Held<> probe;
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

TEST(MathNode, DrawWithoutACanvasOrAMathContextDoesNothing)
{
    Held<> probe;
    Own<MathExprNode> node(new MathExprNode(probe.get()));
    BoxTreeLeaf box(30, 8, 2);
    AllocationTree at(Point(0, 0), &box);
    TaviTest::RecordingCanvas canvas;
    GlyphContext measuring(nullptr, nullptr, static_cast<Gauge *>(&canvas), nullptr);
    MathNodeContext no_canvas(measuring, nullptr);
    node->draw(no_canvas, at);
    GlyphContext plain(nullptr, nullptr, &canvas, nullptr);
    node->draw(plain, at);
    Fixture f;
    node->draw(f.context, AllocationTree(Point(0, 0), nullptr));
    EXPECT_TRUE(probe->calls.empty());
    EXPECT_TRUE(canvas.calls().empty());
}

TEST(MathNode, TemplateQuestions)
{
    Held<> probe(u"seq", 3);
    Own<MathExprNode> node(new MathExprNode(probe.get()));
    for (int i = 0; i < 3; ++i)
        node->append(new MathDummyNode(probe.get()));
    EXPECT_EQ(std::u16string(node->type_name()), u"seq");
    EXPECT_EQ(std::u16string(node->content_type_name()), u"seq");
    EXPECT_TRUE(node->is_sequence());
    EXPECT_TRUE(node->associative());
    // The probe flattens children 1 to -1: with 3 children, 1 and 2 but not 0.
    EXPECT_FALSE(node->flatten_sequence(0));
    EXPECT_TRUE(node->flatten_sequence(1));
    EXPECT_TRUE(node->flatten_sequence(2));
    EXPECT_EQ(node->delete_child_op(1), MathTemplate::delete_child);
    EXPECT_EQ(node->cat_childs(), 3u);

    Fixture f;
    long result = 0;
    EXPECT_TRUE(node->get_neighbour_child(f.context, 4, Input::key_right, result));
    EXPECT_EQ(result, 5);
    ASSERT_FALSE(probe->calls.empty());
    EXPECT_EQ(probe->calls.back().what, "get_neighbour_child");
    EXPECT_EQ(probe->calls.back().node, node.get());
    EXPECT_EQ(f.context.math_node(), nullptr);

    // An expression node has no caret and no attributes.
    EXPECT_EQ(node->caret_pos(), -1);
    EXPECT_FALSE(node->increment_caret_pos(true));
    EXPECT_EQ(node->attribute_list(), nullptr);
    EXPECT_EQ(node->attribute_string(), u"");
    node->attribute_list(nullptr);
    EXPECT_EQ(node->cat_text(), u"");
}

// The child whose allocation holds the point takes the pick. With the parent at (0, 50) and a box of
// 30 x (8, 2), child i stands at (10*i + 3, 50 + 7*i) with the same box: child 0 covers x 3..33,
// y 42..52; child 1 covers x 13..43, y 49..59.
TEST(MathNode, PickGoesToTheChildUnderThePoint)
{
    Held<> probe;
    Own<MathExprNode> node(new MathExprNode(probe.get()));
    node->append(new MathDummyNode(probe.get()));
    node->append(new MathDummyNode(probe.get()));
    Fixture f;
    BoxTreeLeaf box(30, 8, 2);
    AllocationTree at(Point(0, 50), &box);

    struct Case
    {
        Point point;
        bool picked;
        long child;
    } const cases[] = {{Point(5, 45), true, 0}, {Point(40, 58), true, 1}, {Point(200, 200), false, -1}};
    for (Case const &c : cases) {
        probe->picked.clear();
        EXPECT_EQ(node->pick(nullptr, f.context, at, c.point), c.picked) << c.point.x;
        if (c.picked) {
            ASSERT_EQ(probe->picked.size(), 1u);
            EXPECT_EQ(probe->picked[0], c.child);
        } else {
            EXPECT_TRUE(probe->picked.empty());
        }
        EXPECT_EQ(f.context.math_node(), nullptr);
    }

    // Where no selection path leads further, the node's own allocation is the selection's.
    std::unique_ptr<AllocationTree> own(node->allocate_selection(nullptr, 0, f.context, at));
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(own->point(), Point(0, 50));
    EXPECT_EQ(own->boxtree(), &box);
}

TEST(MathAtomNode, TextAndCaret)
{
    Held<> probe;
    Own<MathIdentNode> x(new MathIdentNode(probe.get()));
    EXPECT_EQ(x->caret_pos(), 0);
    EXPECT_TRUE(x->text().empty());

    x->text(u"abc");
    EXPECT_EQ(x->caret_pos(), 3);
    EXPECT_EQ(x->text(), MathString(u"abc", MathString::f_text));
    x->text(nullptr);
    EXPECT_TRUE(x->text().empty());
    EXPECT_EQ(x->caret_pos(), 0);

    // A caret of -1 stands after the last character; one beyond the end is taken as the end.
    struct Case
    {
        long given;
        long stored;
    } const cases[] = {{-1, 4}, {-7, 4}, {0, 0}, {2, 2}, {4, 4}, {9, 4}};
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
    long const back[] = {3, 1, 0};
    for (long expected : back) {
        EXPECT_TRUE(x->increment_caret_pos(false));
        EXPECT_EQ(x->caret_pos(), expected);
    }
    EXPECT_FALSE(x->increment_caret_pos(false));
    x->set_caret_pos(true);
    EXPECT_EQ(x->caret_pos(), 4);
    x->set_caret_pos(false);
    EXPECT_EQ(x->caret_pos(), 0);
}

TEST(MathAtomNode, ProtocolOfANodeWithoutComponents)
{
    Held<> probe;
    Own<MathNumberNode> n(new MathNumberNode(probe.get()));
    Fixture f;
    BoxTreeLeaf box(30, 8, 2);
    AllocationTree at(Point(0, 0), &box);
    EXPECT_EQ(n->allocate(0, f.context, at), nullptr);
    EXPECT_FALSE(n->may_replace(0, n.get()));
    EXPECT_EQ(n->cat_childs(), 0u);

    probe->allocated = true;
    EXPECT_TRUE(n->is_allocated());
    probe->allocated = false;
    EXPECT_FALSE(n->is_allocated());
    n->invalidate_allocation();
    EXPECT_EQ(probe->invalidations, 1);

    // A pick puts the caret where the template says, within the text.
    n->text(u"1234");
    struct Case
    {
        long from_template;
        long caret;
    } const cases[] = {{2, 2}, {0, 0}, {4, 4}, {17, 4}, {-3, 0}};
    for (Case const &c : cases) {
        probe->caret = c.from_template;
        EXPECT_TRUE(n->pick(nullptr, f.context, at, Point(1, 1)));
        EXPECT_EQ(n->caret_pos(), c.caret) << c.from_template;
        EXPECT_EQ(probe->calls.back().what, "caret_pos");
        EXPECT_EQ(probe->calls.back().node, n.get());
    }
    EXPECT_EQ(f.context.math_node(), nullptr);
}

// Identifiers are measured and painted in italic while the context slants identifiers; otherwise in
// the face the context carries. The context's flag is put back either way.
TEST(MathIdentNode, ItalicWhileIdentifiersAreSlanted)
{
    struct Case
    {
        bool slanted;
        bool italic_before;
        bool italic_seen;
    } const cases[] = {{true, false, true}, {true, true, true}, {false, false, false}, {false, true, true}};
    for (Case const &c : cases) {
        Held<> probe;
        Own<MathIdentNode> x(ident(probe.get(), u"x"));
        Fixture f;
        f.context.slanted_identifiers(c.slanted);
        f.context.italic_fontstyle(c.italic_before);
        BoxTreeLeaf box(10, 8, 2);
        std::unique_ptr<BoxTree> measured(x->request(f.context, BoxTree::unconstrained));
        x->draw(f.context, AllocationTree(Point(0, 0), &box));
        ASSERT_EQ(probe->italic_seen.size(), 2u);
        EXPECT_EQ(probe->italic_seen[0], c.italic_seen) << c.slanted << c.italic_before;
        EXPECT_EQ(probe->italic_seen[1], c.italic_seen) << c.slanted << c.italic_before;
        EXPECT_EQ(f.context.italic_fontstyle(), c.italic_before);
    }
}

TEST(MathDummyNode, IgnoresTextAndCaret)
{
    Held<> probe;
    Own<MathDummyNode> d(new MathDummyNode(probe.get()));
    d->text(u"abc");
    d->text(MathString(u"xyz", MathString::f_text), -1);
    EXPECT_TRUE(d->text().empty());
    EXPECT_EQ(d->cat_text(), u"");
    EXPECT_EQ(d->caret_pos(), 0);
    EXPECT_FALSE(d->increment_caret_pos(true));
    EXPECT_FALSE(d->increment_caret_pos(false));
    d->set_caret_pos(true);
    EXPECT_EQ(d->caret_pos(), 0);
    Fixture f;
    BoxTreeLeaf box(10, 8, 2);
    EXPECT_FALSE(d->pick(nullptr, f.context, AllocationTree(Point(0, 0), &box), Point(1, 1)));
    EXPECT_TRUE(probe->calls.empty());
    // All placeholders share the one empty text.
    Own<MathDummyNode> e(new MathDummyNode(probe.get()));
    EXPECT_EQ(&d->text(), &e->text());
    EXPECT_TRUE(d->is_equal(e.get()));
}

TEST(MathAtomNode, EqualityLooksAtTheText)
{
    Held<> probe;
    Own<MathIdentNode> a(ident(probe.get(), u"x"));
    Own<MathIdentNode> b(ident(probe.get(), u"x"));
    Own<MathIdentNode> c(ident(probe.get(), u"y"));
    EXPECT_TRUE(a->is_equal(b.get()));
    EXPECT_FALSE(a->is_equal(c.get()));
    // The same characters in another class are other text.
    Own<MathIdentNode> d(new MathIdentNode(probe.get()));
    d->text(MathString(u"x", MathString::f_symbol), -1);
    EXPECT_FALSE(a->is_equal(d.get()));
    // Nodes of different classes on the same template: the text decides, and a string isn't an atom
    // of another text.
    Own<MathStringNode> s(new MathStringNode(probe.get()));
    s->text(u"x");
    EXPECT_TRUE(a->is_equal(s.get()));
    s->text(u"xx");
    EXPECT_FALSE(a->is_equal(s.get()));
}
