// MathTemplate: the constructor's invariant, how layouts are installed and released, the choice of
// the linear layout by width and the drawing that follows the box's flag, and the parenthesis and
// deletion rules over a node's children.
//
// The recording canvas gives each character an advance of 10*s/240 for a font of s twips, so "m" is
// 10 wide in the default 240-twip text font and 7 wide (1700/240, truncated) at script level 1, where
// the font is 240*71/100 = 170 twips.
#include "math/layout/layout_probe.h"
#include "support/math_fixture.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/polyglyph.h"
#include "tavi/math/layout/mathlayout.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/templates/mathtemplate.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <vector>

using namespace Tavi;
using LayoutTest::Journal;
using LayoutTest::LayoutProbe;

namespace {

using Fixture = TaviTest::MathFixture;

// A template held as the table would hold it. A template never gives back its linear layout, so the
// holder does that once the template is gone.
struct Templ
{
    explicit Templ(MathTemplate *t) : t(t) { t->ref(); }
    ~Templ()
    {
        MathLayout *linear = t->ref_count() == 1 ? t->linear_layout() : nullptr;
        t->unref();
        if (linear)
            linear->unref();
    }
    MathTemplate *operator->() const { return t; }
    MathTemplate *t;
};

MathTemplate *plain(wchar const *name = u"plain", double priority = MathTemplate::no_parens_priority)
{
    return new MathTemplate(nullptr, name, true, u"Plain", TemplateAccelerator(), 2, false, 2, false, true, false,
                            0, 0, priority);
}

// A node with a plain list of children, standing for any expression node.
class ListNode : public PolyGlyph<MathNode>
{
public:
    explicit ListNode(MathTemplate *t) : PolyGlyph<MathNode>(0, t) {}
    Glyph *clone(bool) const override { return nullptr; }
    void text(wchar const *) override {}
    void text(MathString const &, long) override {}
    MathString const &text() const override { return empty_; }
    long cat_type() const override { return 36; }
    unsigned long cat_childs() const override { return 0; }
    bool may_replace(long, MathNode *) override { return true; }

private:
    MathString empty_;
};

// A node of template t with one child of each of the given templates.
std::unique_ptr<ListNode, void (*)(ListNode *)> node_of(MathTemplate *t, std::vector<MathTemplate *> const &kids)
{
    auto *n = new ListNode(t);
    n->ref();
    for (MathTemplate *k : kids)
        n->append(new ListNode(k));
    return {n, [](ListNode *p) { p->unref(); }};
}

char table_mark;
LayoutTable *fake_table() { return reinterpret_cast<LayoutTable *>(&table_mark); }

}  // namespace

TEST(MathTemplate, FirstOfTwoLayoutsBecomesLinearAndOutlivesTheTemplate)
{
    int deaths = 0;
    auto *first = new LayoutProbe("first", nullptr, &deaths);
    auto *inner = new LayoutProbe("inner", nullptr, &deaths);
    first->add(inner->with_table(fake_table()));
    auto *second = new LayoutProbe("second", nullptr, &deaths);
    auto *third = new LayoutProbe("third", nullptr, &deaths);
    first->ref();  // the test's own hold, to see the template's reference on it
    MathTemplate *t = plain();
    t->ref();
    {
        t->layout(first);
        EXPECT_EQ(t->layout(), first);
        EXPECT_EQ(t->linear_layout(), nullptr);
        EXPECT_EQ(first->ref_count(), 2);
        // A table inside the layout tree makes it a table.
        EXPECT_EQ(t->table_layout(), fake_table());

        t->layout(second);
        EXPECT_EQ(t->layout(), second);
        EXPECT_EQ(t->linear_layout(), first);
        EXPECT_TRUE(t->has_linear_layout());
        EXPECT_EQ(first->ref_count(), 2);  // moved aside, not released
        EXPECT_EQ(second->ref_count(), 1);
        EXPECT_EQ(t->table_layout(), nullptr);

        // A third replaces the one in force only.
        t->layout(third);
        EXPECT_EQ(deaths, 1);  // second
        EXPECT_EQ(t->layout(), third);
        EXPECT_EQ(t->linear_layout(), first);

        // The same layout again is taken before it is let go, and its table is looked up anew.
        third->with_table(fake_table());
        t->layout(third);
        EXPECT_EQ(deaths, 1);
        EXPECT_EQ(third->ref_count(), 1);
        EXPECT_EQ(t->table_layout(), fake_table());
        // Null releases the one in force and clears the table branch.
        t->layout(nullptr);
        EXPECT_EQ(deaths, 2);  // third
        EXPECT_EQ(t->layout(), nullptr);
        EXPECT_EQ(t->table_layout(), nullptr);
        EXPECT_EQ(t->linear_layout(), first);
    }
    t->unref();
    // The template is gone; its reference on the linear layout was never given back.
    EXPECT_EQ(deaths, 2);
    EXPECT_EQ(first->ref_count(), 2);
    first->unref();
    first->unref();
    EXPECT_EQ(deaths, 4);  // first and inner
}

TEST(MathTemplate, RequestFallsBackToTheLinearLayoutWhenThreeEmsDoNotFit)
{
    // The layout in force gives a box 100 wide, the linear one 60.
    struct Case
    {
        bool wrap_lines;
        bool has_linear;
        long scriptlevel;
        long constraint;
        bool linear;
        Journal requests;
    } const cases[] = {
        // 3 * 10 + 100 = 130 fits in 130 ("at most"), not in 129.
        {true, true, 0, 130, false, {"request:P/130"}},
        {true, true, 0, 129, true, {"request:P/129", "request:L/129"}},
        // At script level 1 "m" is 7: 3 * 7 + 100 = 121.
        {true, true, 1, 121, false, {"request:P/121"}},
        {true, true, 1, 120, true, {"request:P/120", "request:L/120"}},
        // No wrapping, or nothing to fall back on: the layout in force, however narrow the room.
        {false, true, 0, 50, false, {"request:P/50"}},
        {true, false, 0, 50, false, {"request:P/50"}},
    };
    for (Case const &c : cases) {
        Fixture f;
        Journal journal;
        Templ t(plain());
        if (c.has_linear)
            t->layout((new LayoutProbe("L", &journal))->box(60, 6, 1));
        t->layout((new LayoutProbe("P", &journal))->box(100, 8, 2));
        f.context.wrap_lines(c.wrap_lines);
        f.context.add_scriptlevel(c.scriptlevel);

        BoxTreeLeaf constraint(c.constraint, INT_MAX, INT_MAX);
        std::unique_ptr<BoxTree> box(t->request(f.context, constraint));
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(journal, c.requests) << c.constraint;
        EXPECT_EQ(box->width(), c.linear ? 60 : 100) << c.constraint;
        EXPECT_EQ(box->alternativeLayoutUsed(), c.linear) << c.constraint;
        // "m" is measured in the text font at the present level, with the Unicode character set.
        EXPECT_EQ(f.canvas.measure_count("text_box"), 1u);
        ASSERT_FALSE(f.canvas.calls().empty());
        EXPECT_EQ(f.canvas.calls().back(), c.scriptlevel == 0 ? "font(Times New Roman,240,0,0,cs=1,angle=0)"
                                                                : "font(Times New Roman,170,0,0,cs=1,angle=0)");

        // Drawing follows the box: the linear layout draws what it measured.
        journal.clear();
        t->draw(f.context, AllocationTree(Point(5, 20), box.get()));
        EXPECT_EQ(journal, Journal{c.linear ? "draw:L@5,20" : "draw:P@5,20"});
    }
}

TEST(MathTemplate, ParenthesesWhenThePositionBindsAtLeastAsTightlyAsTheChild)
{
    Fixture f;
    Templ sum(plain(u"plus", 1000.0));
    Templ atom(plain(u"ci"));
    Templ parent(plain(u"times", 2000.0));
    auto node = node_of(parent.t, {sum.t, atom.t});
    f.context.math_node(node.get());

    struct Case
    {
        double prio;
        long child;
        bool parens;
    } const cases[] = {
        {1000.0, 0, true},  // equal priority: "at least", so parentheses
        {999.0, 0, false},
        {2000.0, 1, false},
        {2147483647.0, 1, true},
        // No such child: nothing to put in parentheses.
        {5000.0, 2, false},
    };
    for (Case const &c : cases)
        EXPECT_EQ(parent->set_parens(f.context, c.prio, c.child), c.parens) << c.prio << " " << c.child;

    f.context.math_node(nullptr);
    EXPECT_FALSE(parent->set_parens(f.context, 5000.0, 0));
}

TEST(MathTemplate, DeleteChildOpByCountArityAndFlattening)
{
    Templ child(plain(u"ci"));
    struct Case
    {
        std::size_t arity;
        bool varying;
        bool flatten_last;
        bool table;
        std::size_t children;
        MathTemplate::DeleteOp op;
    } const cases[] = {
        {2, true, true, false, 3, MathTemplate::delete_child},   // more than arity may go
        {2, true, false, false, 2, MathTemplate::delete_none},   // exactly arity, no flattening
        {2, false, true, false, 2, MathTemplate::delete_flatten},
        {3, false, true, false, 3, MathTemplate::delete_none},   // more than 2 never collapses
        // A table's cells are never removed one by one.
        {1, true, true, true, 3, MathTemplate::delete_none},
        {1, true, true, true, 2, MathTemplate::delete_flatten},
    };
    for (Case const &c : cases) {
        Templ t(new MathTemplate(nullptr, u"k", true, u"K", TemplateAccelerator(), c.arity, c.varying, c.arity, false,
                                 c.flatten_last, false, 0, 0, 1.0));
        if (c.table)
            t->layout((new LayoutProbe("T"))->with_table(fake_table()));
        auto node = node_of(t.t, std::vector<MathTemplate *>(c.children, child.t));
        EXPECT_EQ(t->delete_child_op(node.get(), 0), c.op)
            << c.arity << " " << c.varying << " " << c.flatten_last << " " << c.table << " " << c.children;
        // The node asks its template.
        EXPECT_EQ(node->delete_child_op(0), c.op);
    }
}
