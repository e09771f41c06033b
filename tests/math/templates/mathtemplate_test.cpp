// MathTemplate: the constructor's invariant, how layouts are installed and released, the choice of
// the linear layout by width and the later calls that follow the box's flag, the parenthesis,
// flattening and deletion rules over a node's children, and the defaults of a plain template.
//
// The recording canvas gives each character an advance of 10*s/240 for a font of s twips, so "m" is
// 10 wide in the default 240-twip text font and 7 wide (1700/240, truncated) at script level 1, where
// the font is 240*71/100 = 170 twips.
#include "math/layout/layout_probe.h"
#include "support/recording_canvas.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/polyglyph.h"
#include "tavi/math/layout/mathlayout.h"
#include "tavi/math/mathexprnode.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/templates/mathtemplate.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <typeinfo>
#include <vector>

using namespace Tavi;
using LayoutTest::Journal;
using LayoutTest::LayoutProbe;

namespace {

struct Fixture
{
    TaviTest::RecordingCanvas canvas;
    GlyphContext glyph_context{nullptr, nullptr, &canvas, nullptr};
    MathNodeContext context{glyph_context, nullptr};
};

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

TEST(MathTemplate, ConstructorKeepsItsArgumentsAndGivesVaryingNullaryKindsAPlaceholder)
{
    struct Case
    {
        std::size_t arity;
        bool varying;
        std::size_t dummies;
        std::size_t expected;
    } const cases[] = {
        {0, true, 0, 1},  // raised: somewhere to type
        {0, true, 3, 3},  // a given number stays
        {0, false, 0, 0},
        {2, true, 0, 0},  // only a kind of no fixed operands is raised
        {1, false, 1, 1},
    };
    for (Case const &c : cases) {
        Templ t(new MathTemplate(nullptr, u"k", true, u"K", TemplateAccelerator(), c.arity, c.varying, c.dummies,
                                 false, false, false, 0, 0, 1.0));
        EXPECT_EQ(t->dummies(), c.expected) << c.arity << " " << c.varying << " " << c.dummies;
        EXPECT_EQ(t->arity(), c.arity);
        EXPECT_EQ(t->varying_arity(), c.varying);
    }

    char table_place;
    auto *table = reinterpret_cast<TemplateTable *>(&table_place);
    TemplateAccelerator const ctrl_n(Input::key_n, Input::modifier_control);
    Templ t(new MathTemplate(table, u"fenced", false, u"Fence", ctrl_n, 1, false, 1, true, true, true, 1, -1, 250.0));
    EXPECT_EQ(t->table(), table);
    EXPECT_EQ(wstring(t->type_name()), u"fenced");
    EXPECT_EQ(wstring(t->keyword()), u"Fence");
    EXPECT_FALSE(t->can_enter());
    EXPECT_EQ(t->accelerator(), ctrl_n);
    EXPECT_TRUE(t->associative());
    EXPECT_TRUE(t->flatten_last());
    EXPECT_EQ(t->priority(), 250.0);
    EXPECT_EQ(t->layout(), nullptr);
    EXPECT_EQ(t->linear_layout(), nullptr);
    EXPECT_FALSE(t->has_linear_layout());
    EXPECT_EQ(t->table_layout(), nullptr);
    EXPECT_FALSE(t->is_sequence());

    // The setters of what the setup file may change later.
    t->can_enter(true);
    t->priority(0.0);
    t->accelerator(TemplateAccelerator(u'|'));
    t->keyword(u"Fences");
    EXPECT_TRUE(t->can_enter());
    EXPECT_EQ(t->priority(), 0.0);
    EXPECT_EQ(t->accelerator(), TemplateAccelerator(u'|'));
    EXPECT_EQ(wstring(t->keyword()), u"Fences");
    t->keyword(wstring(u"Brackets"));
    EXPECT_EQ(wstring(t->keyword()), u"Brackets");
    t->keyword(static_cast<wchar const *>(nullptr));
    EXPECT_EQ(wstring(t->keyword()), u"");

    Templ nameless(new MathTemplate(nullptr, nullptr, true, nullptr, TemplateAccelerator(), 0, false, 0, false,
                                    false, false, 0, 0, 1.0));
    EXPECT_EQ(wstring(nameless->type_name()), u"");
    EXPECT_EQ(wstring(nameless->keyword()), u"");
}

TEST(MathTemplate, IsSequenceOnlyForTheExactName)
{
    struct Case
    {
        wchar const *name;
        bool sequence;
    } const cases[] = {{u"seq", true}, {u"Seq", false}, {u"seq ", false}, {u"se", false}, {u"", false}};
    for (Case const &c : cases)
        EXPECT_EQ(Templ(plain(c.name))->is_sequence(), c.sequence);
}

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
        // The layout tree knows its template down to its leaves, and a table inside makes it a table.
        EXPECT_EQ(first->templ(), t);
        EXPECT_EQ(inner->templ(), t);
        EXPECT_EQ(t->table_layout(), fake_table());

        t->layout(second);
        EXPECT_EQ(t->layout(), second);
        EXPECT_EQ(t->linear_layout(), first);
        EXPECT_TRUE(t->has_linear_layout());
        EXPECT_EQ(first->ref_count(), 2);  // moved aside, not released
        EXPECT_EQ(second->ref_count(), 1);
        EXPECT_EQ(second->templ(), t);
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

TEST(MathTemplate, DestructorReleasesTheLayoutInForce)
{
    int deaths = 0;
    {
        Templ t(plain());
        t->layout(nullptr);  // nothing in force: nothing moves aside
        EXPECT_EQ(t->linear_layout(), nullptr);
        t->layout(new LayoutProbe("only", nullptr, &deaths));
        EXPECT_EQ(t->linear_layout(), nullptr);
    }
    EXPECT_EQ(deaths, 1);
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
        {true, true, 0, INT_MAX, false, {"request:P/2147483647"}},
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

TEST(MathTemplate, LaterCallsGoToTheLayoutThatMadeTheBox)
{
    Fixture f;
    Journal journal;
    Templ t(plain());
    auto *linear = (new LayoutProbe("L", &journal))->shows(0);
    auto *main = (new LayoutProbe("P", &journal))->shows(0);
    linear->caret = 4;
    main->caret = 9;
    t->layout(linear);
    t->layout(main);

    BoxTreeLeaf by_linear(60, 6, 1);
    by_linear.alternativeLayoutUsed(true);
    BoxTreeLeaf by_main(100, 8, 2);
    struct Case
    {
        BoxTree const *box;
        char const *name;
        long caret;
    } const cases[] = {{&by_linear, "L", 4}, {&by_main, "P", 9}};
    for (Case const &c : cases) {
        std::string const n = c.name;
        AllocationTree const at(Point(7, 30), c.box);
        journal.clear();
        t->draw(f.context, at);
        EXPECT_TRUE(t->pick(0, nullptr, f.context, at, Point(8, 29)));
        EXPECT_EQ(t->caret_pos(f.context, at, Point(8, 29)), c.caret);
        std::unique_ptr<AllocationTree> selection(t->allocate_selection(0, nullptr, 1, f.context, at));
        ASSERT_NE(selection, nullptr);
        EXPECT_EQ(*selection, at);
        // A child's allocation is asked with the same point and a box that constrains nothing.
        std::unique_ptr<AllocationTree> placed(t->allocate(1, f.context, at));
        ASSERT_NE(placed, nullptr);
        EXPECT_EQ(placed->point(), Point(7, 30));
        EXPECT_EQ(placed->boxtree(), &BoxTree::unconstrained);
        EXPECT_EQ(journal, (Journal{"draw:" + n + "@7,30", "pick:" + n + "/0@7,30", "caret_pos:" + n + "@7,30",
                                    "allocate_selection:" + n + "/0@7,30", "allocate_placeholder:" + n + "/1@7,30"}));
    }

    // A flag without a linear layout to go with it leaves the layout in force.
    Templ single(plain());
    single->layout((new LayoutProbe("S", &journal))->shows(0));
    journal.clear();
    single->draw(f.context, AllocationTree(Point(1, 2), &by_linear));
    EXPECT_EQ(journal, Journal{"draw:S@1,2"});
}

TEST(MathTemplate, InvalidationReachesBothLayoutsOtherQuestionsOnlyTheOneInForce)
{
    Fixture f;
    Journal journal;
    Templ t(plain());
    auto *linear = (new LayoutProbe("L", &journal))->neighbour(0, Input::key_right, 1);
    auto *main = (new LayoutProbe("P", &journal))->neighbour(1, Input::key_left, 0);
    t->layout(linear);
    t->layout(main);

    t->invalidate_allocation();
    EXPECT_EQ(journal, (Journal{"invalidate:L", "invalidate:P"}));

    journal.clear();
    linear->allocated = true;
    main->allocated = false;
    EXPECT_FALSE(t->is_allocated());
    t->change(3);
    EXPECT_EQ(journal, (Journal{"is_allocated:P", "change:P/3"}));

    long result = -1;
    EXPECT_FALSE(t->get_neighbour_child(f.context, 0, Input::key_right, result));
    EXPECT_EQ(result, -1);
    EXPECT_TRUE(t->get_neighbour_child(f.context, 1, Input::key_left, result));
    EXPECT_EQ(result, 0);
}

TEST(MathTemplate, WithoutALayoutNothingIsMeasuredOrDrawn)
{
    Fixture f;
    Templ t(plain());
    BoxTreeLeaf box(10, 5, 1);
    AllocationTree const at(Point(0, 0), &box);
    EXPECT_EQ(t->request(f.context, BoxTree::unconstrained), nullptr);
    t->draw(f.context, at);
    EXPECT_FALSE(t->pick(0, nullptr, f.context, at, Point(0, 0)));
    EXPECT_EQ(t->caret_pos(f.context, at, Point(0, 0)), 0);
    EXPECT_EQ(t->allocate_selection(0, nullptr, 1, f.context, at), nullptr);
    EXPECT_EQ(t->allocate(0, f.context, at), nullptr);
    EXPECT_TRUE(t->is_allocated());
    t->invalidate_allocation();
    long result = 3;
    EXPECT_FALSE(t->get_neighbour_child(f.context, 0, Input::key_up, result));
    EXPECT_TRUE(f.canvas.calls().empty());
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
        {2000.0, 0, true},
        {2000.0, 1, false},
        {2147483647.0, 1, true},
        // No such child: nothing to put in parentheses.
        {5000.0, 2, false},
        {5000.0, -1, false},
    };
    for (Case const &c : cases)
        EXPECT_EQ(parent->set_parens(f.context, c.prio, c.child), c.parens) << c.prio << " " << c.child;

    f.context.math_node(nullptr);
    EXPECT_FALSE(parent->set_parens(f.context, 5000.0, 0));
}

TEST(MathTemplate, FlattenSequenceResolvesTheRangeAgainstTheNode)
{
    Templ child(plain(u"ci"));
    struct Case
    {
        bool flatten;
        long from;
        long to;
        std::size_t children;
        std::vector<bool> flattened;  // for child indices 0, 1, ...
    } const cases[] = {
        {true, 1, -1, 3, {false, true, true, false}},            // 1 to 3 - 1 = 2
        {true, 1, -1, 5, {false, true, true, true, true, false}},
        {true, -2, -1, 3, {false, true, true, false}},           // 3 - 2 = 1 to 2
        {true, 0, 0, 3, {true, false, false}},
        {false, 0, -1, 3, {false, false, false, false}},
    };
    for (Case const &c : cases) {
        Templ t(new MathTemplate(nullptr, u"seq", true, u"Sequence", TemplateAccelerator(), 2, true, 2, true, true,
                                 c.flatten, c.from, c.to, 1.0));
        auto node = node_of(t.t, std::vector<MathTemplate *>(c.children, child.t));
        for (std::size_t i = 0; i < c.flattened.size(); ++i)
            EXPECT_EQ(t->flatten_sequence(node.get(), static_cast<long>(i)), c.flattened[i])
                << c.from << ".." << c.to << " of " << c.children << " at " << i;
    }
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
        {2, true, true, false, 2, MathTemplate::delete_flatten},
        {2, false, true, false, 2, MathTemplate::delete_flatten},
        {1, false, true, false, 1, MathTemplate::delete_flatten},
        {3, false, true, false, 3, MathTemplate::delete_none},   // more than 2 never collapses
        {2, false, false, false, 3, MathTemplate::delete_none},
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

TEST(MathTemplate, PlainTemplateDefaults)
{
    Fixture f;
    Templ t(plain());
    EXPECT_EQ(t->create_node(u"x"), nullptr);
    EXPECT_EQ(t->create_cat_node(u"x"), nullptr);
    EXPECT_EQ(t->create_edit_node(MathString()), nullptr);
    EXPECT_EQ(t->request_operator(0, f.context, BoxTree::unconstrained), nullptr);
    BoxTreeLeaf box(10, 5, 1);
    t->draw_operator(0, f.context, AllocationTree(Point(0, 0), &box));
    EXPECT_TRUE(f.canvas.calls().empty());

    EXPECT_FALSE(t->valid_overlay_arg(nullptr));
    auto node = node_of(t.t, {});
    EXPECT_TRUE(t->valid_overlay_arg(node.get()));

    // create_cat_node goes through create_node(text), whatever a subclass makes of it.
    struct Maker : MathTemplate
    {
        Maker() : MathTemplate(nullptr, u"m", true, u"M", TemplateAccelerator(), 0, false, 0, false, false, false, 0, 0,
                               1.0)
        {
        }
        MathNode *create_node(wchar const *text) override
        {
            seen = text;
            return nullptr;
        }
        using MathTemplate::create_node;
        wchar const *seen = nullptr;
    };
    Templ maker(new Maker);
    wchar const *text = u"12";
    maker->create_cat_node(text);
    EXPECT_EQ(static_cast<Maker *>(maker.t)->seen, text);
}

TEST(MathTemplate, PlainTemplateMakesBareExpressionNodes)
{
    Templ t(plain());
    std::unique_ptr<MathNode, void (*)(MathNode *)> node(t->create_node(), [](MathNode *n) {
        if (n)
            n->unref();
    });
    ASSERT_NE(node, nullptr);
    node->ref();
    EXPECT_EQ(typeid(*node), typeid(MathExprNode));
    EXPECT_EQ(node->templ(), t.t);
    EXPECT_EQ(node->count(), 0);
    EXPECT_EQ(t.t->ref_count(), 2);  // the node holds its template
}
