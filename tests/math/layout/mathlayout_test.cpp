// MathLayout and MathPolyLayout: the generic composite rules (children asked in order, the first that
// shows a node child takes pick and allocate_selection with the allocation unchanged), the template
// pointer reaching every depth, the innermost-first neighbour search, and the child list's ownership.
#include "math/layout/layout_probe.h"
#include "support/recording_canvas.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/math/layout/mathlayout.h"
#include "tavi/math/layout/mathpolylayout.h"
#include "tavi/math/mathnodecontext.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

using namespace Tavi;
using LayoutTest::Journal;
using LayoutTest::LayoutProbe;

namespace {

// A context that measures on a recording canvas, with no style.
struct Fixture
{
    TaviTest::RecordingCanvas canvas;
    GlyphContext glyph_context{nullptr, nullptr, &canvas, nullptr};
    MathNodeContext context{glyph_context, nullptr};
};

// Holds the top of a layout tree with one reference, as a template would.
struct Held
{
    explicit Held(MathLayout *layout) : layout(layout) { layout->ref(); }
    ~Held() { layout->unref(); }
    MathLayout *layout;
};

// Addresses that stand for tables and templates: only compared, never used.
char table_marks[3];
LayoutTable *fake_table(int i) { return reinterpret_cast<LayoutTable *>(&table_marks[i]); }
char template_mark;
MathTemplate *fake_template() { return reinterpret_cast<MathTemplate *>(&template_mark); }

}  // namespace

TEST(MathLayout, PlainLayoutAnswersNothing)
{
    Fixture f;
    Held held(new MathLayout);
    MathLayout &l = *held.layout;
    BoxTreeLeaf box(10, 5, 2);
    AllocationTree at(Point(3, 4), &box);

    EXPECT_EQ(l.core_operator(), nullptr);
    EXPECT_EQ(l.table(), nullptr);
    EXPECT_EQ(l.count(), 0);
    EXPECT_FALSE(l.has_child_node(f.context, 0));
    long index = 42, first = 43, last = 44;
    EXPECT_FALSE(l.get_child_node(f.context, index));
    EXPECT_FALSE(l.child_range(f.context, first, last));
    EXPECT_EQ(index, 42);
    EXPECT_EQ(first, 43);
    EXPECT_EQ(last, 44);
    l.attribute(u"linethickness", u"3");
    EXPECT_EQ(l.allocate_placeholder(0, f.context, at), nullptr);
    EXPECT_EQ(l.allocate(0, f.context, at), nullptr);
    EXPECT_FALSE(l.pick(0, nullptr, f.context, at, Point(3, 4)));
    EXPECT_EQ(l.allocate_selection(0, nullptr, 1, f.context, at), nullptr);
    EXPECT_EQ(l.caret_pos(f.context, at, Point(3, 4)), 0);
    long result = 7;
    EXPECT_FALSE(l.get_neighbour_child(f.context, 0, Input::key_right, result));
    EXPECT_EQ(result, 7);
    EXPECT_EQ(l.templ(), nullptr);
    // A layout reaches its context as a MathNodeContext.
    EXPECT_EQ(l.request(f.context, BoxTree::unconstrained), nullptr);
}

TEST(MathLayout, ChildQueriesTakeTheFirstChildThatAnswers)
{
    Fixture f;
    Journal journal;
    // R = [A = [], B shows 2, C shows 5, D = [E shows 7]]
    auto *r = new LayoutProbe("R", &journal);
    r->add(new LayoutProbe("A", &journal))
        ->add((new LayoutProbe("B", &journal))->shows(2))
        ->add((new LayoutProbe("C", &journal))->shows(5))
        ->add((new LayoutProbe("D", &journal))->add((new LayoutProbe("E", &journal))->shows(7)));
    Held held(r);

    struct Case
    {
        long index;
        bool shown;
        Journal asked;
    } const cases[] = {
        {2, true, {"has:B/2"}},
        {5, true, {"has:B/5", "has:C/5"}},
        {7, true, {"has:B/7", "has:C/7", "has:E/7"}},
        {3, false, {"has:B/3", "has:C/3", "has:E/3"}},
    };
    for (Case const &c : cases) {
        journal.clear();
        EXPECT_EQ(r->has_child_node(f.context, c.index), c.shown) << c.index;
        EXPECT_EQ(journal, c.asked) << c.index;
    }

    // The first child with an answer gives it: B, not C or E.
    long index = -9;
    EXPECT_TRUE(r->get_child_node(f.context, index));
    EXPECT_EQ(index, 2);
    long first = -9, last = -9;
    EXPECT_TRUE(r->child_range(f.context, first, last));
    EXPECT_EQ(first, 2);
    EXPECT_EQ(last, 2);

    // Deeper answers count too: D finds E.
    MathLayout *d = r->child(3);
    EXPECT_TRUE(d->get_child_node(f.context, index));
    EXPECT_EQ(index, 7);
}

TEST(MathLayout, PickAndSelectionGoToTheFirstChildShowingTheIndexWithTheSameAllocation)
{
    Fixture f;
    Journal journal;
    // Two children show child 3; the first one's answer stands even when it is false.
    auto *first = (new LayoutProbe("P", &journal))->shows(3);
    auto *second = (new LayoutProbe("Q", &journal))->shows(3);
    auto *other = (new LayoutProbe("S", &journal))->shows(4);
    auto *r = new LayoutProbe("R", &journal);
    r->add(first)->add(second)->add(other);
    Held held(r);
    BoxTreeLeaf box(30, 8, 2);
    AllocationTree at(Point(100, 50), &box);

    first->pick_result = false;
    EXPECT_FALSE(r->pick(3, nullptr, f.context, at, Point(101, 49)));
    EXPECT_EQ(journal, (Journal{"has:P/3", "pick:P/3@100,50"}));

    journal.clear();
    EXPECT_TRUE(r->pick(4, nullptr, f.context, at, Point(101, 49)));
    EXPECT_EQ(journal, (Journal{"has:P/4", "has:Q/4", "has:S/4", "pick:S/4@100,50"}));

    journal.clear();
    EXPECT_FALSE(r->pick(9, nullptr, f.context, at, Point(101, 49)));
    EXPECT_EQ(journal, (Journal{"has:P/9", "has:Q/9", "has:S/9"}));

    journal.clear();
    std::unique_ptr<AllocationTree> selected(r->allocate_selection(3, nullptr, 1, f.context, at));
    ASSERT_NE(selected, nullptr);
    EXPECT_EQ(*selected, at);
    EXPECT_EQ(journal, (Journal{"has:P/3", "allocate_selection:P/3@100,50"}));

    EXPECT_EQ(r->allocate_selection(9, nullptr, 1, f.context, at), nullptr);
}

TEST(MathLayout, TemplateReachesLayoutsAtAnyDepth)
{
    auto *leaf = new LayoutProbe("leaf");
    auto *middle = new LayoutProbe("middle");
    middle->add(new LayoutProbe("sibling"))->add(leaf);
    auto *top = new LayoutProbe("top");
    top->add(middle);
    Held held(top);

    top->templ(fake_template());
    EXPECT_EQ(top->templ(), fake_template());
    EXPECT_EQ(middle->templ(), fake_template());
    EXPECT_EQ(middle->child(0)->templ(), fake_template());
    EXPECT_EQ(leaf->templ(), fake_template());

    // Telling a subtree leaves the layouts above it alone.
    middle->templ(nullptr);
    EXPECT_EQ(top->templ(), fake_template());
    EXPECT_EQ(leaf->templ(), nullptr);
}

TEST(MathLayout, NeighbourSearchAsksTheInnermostLayoutFirst)
{
    Fixture f;
    Journal journal;
    // A fraction F over a row R of children 0 and 1 and a denominator d of child 2. The row moves
    // left and right; the fraction moves down from either and up from the denominator.
    auto *row = new LayoutProbe("R", &journal);
    row->add((new LayoutProbe("a", &journal))->shows(0))->add((new LayoutProbe("b", &journal))->shows(1));
    row->neighbour(0, Input::key_right, 1)->neighbour(1, Input::key_left, 0);
    auto *fraction = new LayoutProbe("F", &journal);
    fraction->add(row)->add((new LayoutProbe("d", &journal))->shows(2));
    fraction->neighbour(0, Input::key_down, 2)->neighbour(1, Input::key_down, 2)->neighbour(2, Input::key_up, 0);
    Held held(fraction);

    struct Case
    {
        long from;
        Input::Key key;
        bool found;
        long to;
        Journal asked;
    } const cases[] = {
        // The row answers; the fraction's own rule and the denominator are never asked.
        {0, Input::key_right, true, 1, {"neighbour:a", "neighbour:b", "neighbour:R"}},
        {1, Input::key_left, true, 0, {"neighbour:a", "neighbour:b", "neighbour:R"}},
        // The row has no answer: every child is asked, then the fraction.
        {1, Input::key_down, true, 2, {"neighbour:a", "neighbour:b", "neighbour:R", "neighbour:d", "neighbour:F"}},
        {2, Input::key_up, true, 0, {"neighbour:a", "neighbour:b", "neighbour:R", "neighbour:d", "neighbour:F"}},
        {2, Input::key_right, false, -5,
         {"neighbour:a", "neighbour:b", "neighbour:R", "neighbour:d", "neighbour:F"}},
    };
    for (Case const &c : cases) {
        journal.clear();
        long result = -5;
        EXPECT_EQ(fraction->get_neighbour_child(f.context, c.from, c.key, result), c.found) << c.from;
        EXPECT_EQ(result, c.to) << c.from << " key " << c.key;
        EXPECT_EQ(journal, c.asked) << c.from << " key " << c.key;
    }
}

TEST(MathLayout, TableIsTheFirstFoundAmongTheChildren)
{
    // R = [A = [], B = [C has table 1], D has table 2]: the search goes depth first in child order.
    auto *b = new LayoutProbe("B");
    b->add((new LayoutProbe("C"))->with_table(fake_table(1)));
    auto *r = new LayoutProbe("R");
    r->add(new LayoutProbe("A"))->add(b)->add((new LayoutProbe("D"))->with_table(fake_table(2)));
    Held held(r);
    EXPECT_EQ(r->table(), fake_table(1));
    EXPECT_EQ(r->child(0)->table(), nullptr);
    EXPECT_EQ(r->child(2)->table(), fake_table(2));
}

TEST(MathLayout, RequestSeesTheCallersContext)
{
    Fixture f;
    Held held(new LayoutProbe("P"));
    auto *probe = static_cast<LayoutProbe *>(held.layout);
    GlyphContext &as_glyph_context = f.context;
    std::unique_ptr<BoxTree> box(probe->request(as_glyph_context, BoxTree::unconstrained));
    EXPECT_EQ(probe->seen_context, &f.context);
}

TEST(MathPolyLayout, HoldsEachChildWithOneReference)
{
    int deaths = 0;
    auto *shared = new LayoutProbe("shared", nullptr, &deaths);
    shared->ref();
    {
        auto *poly = new MathPolyLayout(2);
        Held held(poly);
        auto *own = new LayoutProbe("own", nullptr, &deaths);
        poly->append(own);
        poly->prepend(shared);
        EXPECT_EQ(poly->count(), 2);
        EXPECT_EQ(poly->child(0), shared);
        EXPECT_EQ(poly->child(1), own);
        EXPECT_EQ(own->parent(), poly);
        EXPECT_EQ(shared->ref_count(), 2);
        EXPECT_THROW(poly->child(2), std::out_of_range);
    }
    // The composite took its child with it, and let go of the shared one, which is still held.
    EXPECT_EQ(deaths, 1);
    EXPECT_EQ(shared->ref_count(), 1);
    EXPECT_EQ(shared->parent(), nullptr);
    shared->unref();
    EXPECT_EQ(deaths, 2);
}
