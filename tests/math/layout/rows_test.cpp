// Tests of rows: operators asked last with the operands' size, the growth of stretchy operators and
// the row's maxima, operator spacing on one baseline, operator rows over a run of node children with
// their break costs, and operators supplied by the template.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "math/layout/layout_probe.h"
#include "support/math_fixture.h"
#include "tavi/math/layout/layoutident.h"
#include "tavi/math/layout/layoutidentnode.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/layout/layoutoperatorrow.h"
#include "tavi/math/layout/layoutrow.h"
#include "tavi/math/layout/layoutrunningplaceholder.h"
#include "tavi/math/layout/layouttemplateoperatorrow.h"
#include "tavi/math/mathnode.h"

namespace {

using namespace Tavi;
using namespace TaviTest;
using LayoutTest::LayoutProbe;

long const free_size = 0x7fffffff;

// An operator of a fixed box that writes down the constraint it was asked with.
class OpProbe : public LayoutOp
{
public:
    OpProbe(bool stretchy, Box box)
        : LayoutOp(u"|", infix, false, false, false, false, 0, 0), stretchy_(stretchy), box_(box)
    {
    }
    BoxTree *request(GlyphContext &, BoxTree const &constraint) override
    {
        seen = constraint.box();
        return new BoxTreeLeaf(box_);
    }
    bool stretchy() override { return stretchy_; }
    Box seen{-99, -99, -99};

private:
    bool stretchy_;
    Box box_;
};

TEST(Rows, OperatorsAreSpacedOnTheBaselineAndAskedLast)
{
    // 144 dpi: "+" with 5 and 5 takes 240 * 10 / 20 = 120 twips = 12 units, 60 twips = 6 on the left.
    MathFixture f(math_settings(), Extent(144, 144));
    Held<LayoutRow> row(new LayoutRow);
    row->append(new LayoutIdent(u"a"));
    row->append(new LayoutOp(u"+", LayoutOp::infix, false, false, false, false, 5, 5));
    row->append(new LayoutIdent(u"b"));

    std::unique_ptr<BoxTree> box(row->request(f.context, BoxTree::unconstrained));
    // The operands are measured before the operator.
    std::vector<std::string> metrics;
    for (std::string const &m : f.canvas.measures())
        if (m.compare(0, 12, "text_metrics") == 0)
            metrics.push_back(m);
    std::vector<std::string> const order{"text_metrics(\"a\")", "text_metrics(\"b\")", "text_metrics(\"+\")"};
    EXPECT_EQ(order, metrics);

    // a (10, 7, 1) at 0, "+" 10 + 12 = 22 wide at 10, b at 32; the font line 8 and 2 beats the ink.
    EXPECT_EQ(Box(42, 8, 2), box->box());
    ASSERT_EQ(3, box->count());
    EXPECT_EQ(Point(0, 0), box->child(0)->offset());
    EXPECT_EQ(Point(10, 0), box->child(1)->offset());
    EXPECT_EQ(Point(32, 0), box->child(2)->offset());

    f.canvas.clear();
    row->draw(f.context, AllocationTree(Point(100, 50), box.get()));
    // The glyph after its left space: 100 + 10 + 6.
    std::vector<Painted> const painted{{"a", 100, 50}, {"+", 116, 50}, {"b", 132, 50}};
    EXPECT_EQ(painted, painted_texts(f.canvas));
}

TEST(Rows, OperatorsStretchToTheOperands)
{
    // The canvas's own font has ex 5, so operators are never asked lower than 3 * 5 / 2 = 7.
    struct Case
    {
        char const *what;
        std::vector<Box> operands;  // before and after the operator
        bool stretchy;
        Box op;                     // what the operator answers
        Box seen;                   // its constraint
        Box op_box;                 // its box in the row
        Box row;
    };
    Case const cases[] = {
        // Operands 30 + 10 wide, 20 high, 9 deep.
        {"tall", {Box(30, 20, 9), Box(10, 4, 3)}, true, Box(10, 5, 5), Box(40, 20, 9), Box(10, 20, 9),
         Box(50, 20, 9)},
        // Low operands: ascent at least 7; the box grows to 7 above and keeps its 5 below.
        {"low", {Box(10, 2, 1)}, true, Box(10, 5, 5), Box(10, 7, 1), Box(10, 7, 5), Box(20, 8, 5)},
        // Nothing to enclose: heights free, and the maxima read them.
        {"flat", {Box(10, 0, 0)}, true, Box(10, 5, 5), Box(10, free_size, free_size),
         Box(10, free_size, free_size), Box(20, free_size, free_size)},
    };
    for (Case const &c : cases) {
        MathFixture f;
        Held<LayoutRow> row(new LayoutRow);
        row->append((new LayoutProbe("left"))->box(c.operands[0].width(), c.operands[0].ascent(),
                                                   c.operands[0].descent()));
        OpProbe *op = new OpProbe(c.stretchy, c.op);
        row->append(op);
        if (c.operands.size() > 1)
            row->append((new LayoutProbe("right"))->box(c.operands[1].width(), c.operands[1].ascent(),
                                                        c.operands[1].descent()));
        std::unique_ptr<BoxTree> box(row->request(f.context, BoxTree::unconstrained));
        EXPECT_EQ(c.seen, op->seen) << c.what;
        EXPECT_EQ(c.op_box, box->child(1)->box()) << c.what;
        EXPECT_EQ(c.row, box->box()) << c.what;
    }
}

// A node of three identifiers under an operator row: "a", "b", "c", each (10, 7, 1).
struct OperatorRowFixture
{
    explicit OperatorRowFixture(MathLayout *row, double priority)
        : f(math_settings(), Extent(144, 144)),
          idents(layout_template(new LayoutIdentNode)),
          templ(layout_template(row, priority)),
          node(expr_node(templ.get(), {ident_node(idents.get(), u"a"), ident_node(idents.get(), u"b"),
                                       ident_node(idents.get(), u"c")}))
    {
    }
    MathFixture f;
    Held<MathTemplate> idents;
    Held<MathTemplate> templ;
    Held<MathNode> node;
};

LayoutOperatorRow *operator_row(LayoutOp *op, bool atomic = false)
{
    LayoutOperatorRow *row = new LayoutOperatorRow(0, -1, atomic);
    row->append(new LayoutRunningPlaceholder(nullptr, 0, 0, -1, LayoutPlaceholder::inherit));
    row->append(op);
    return row;
}

TEST(Rows, AnOperatorRowRepeatsItsOperatorWithTheCostsOfTheTemplate)
{
    LayoutOperatorRow *row = operator_row(new LayoutOp(u"+", LayoutOp::infix, false, false, false, false, 5, 5));
    OperatorRowFixture x(row, 3.0);
    std::unique_ptr<BoxTree> box(request_as(x.f.context, x.node.get(), row));
    // a, +, b, +, c: the operator 10 + 12 = 22 wide (144 dpi), at 10 and 42.
    ASSERT_EQ(5, box->count());
    long const xs[] = {0, 10, 32, 42, 64};
    for (long i = 0; i < 5; ++i)
        EXPECT_EQ(xs[i], box->child(i)->xOffset()) << i;
    EXPECT_EQ(Box(74, 8, 2), box->box());
    // Priority 3 fills the open costs; breaking after costs 2000 more.
    for (long k : {1, 3}) {
        EXPECT_EQ(3.0, box->child(k)->leftBadness()) << k;
        EXPECT_EQ(2003.0, box->child(k)->rightBadness()) << k;
    }
    EXPECT_EQ(nullptr, dynamic_cast<BoxTreeAtomicNode *>(box.get()));

    x.f.canvas.clear();
    draw_as(x.f.context, x.node.get(), row, AllocationTree(Point(0, 10), box.get()));
    // Operators after their 6 units of left space.
    std::vector<Painted> const painted{{"a", 0, 10}, {"+", 16, 10}, {"b", 32, 10}, {"+", 48, 10}, {"c", 64, 10}};
    EXPECT_EQ(painted, painted_texts(x.f.canvas));
}

TEST(Rows, OperatorRowOfFewChildren)
{
    LayoutOperatorRow *row = operator_row(new LayoutOp(u"+", LayoutOp::infix, false, false, false, false, 0, 0));
    OperatorRowFixture x(row, 3.0);
    Held<MathTemplate> other(layout_template(new LayoutIdentNode));

    // No child: an empty row one font line high.
    Held<MathNode> none(expr_node(x.templ.get(), {}));
    std::unique_ptr<BoxTree> empty(request_as(x.f.context, none.get(), row));
    EXPECT_EQ(0, empty->count());
    EXPECT_EQ(Box(0, 8, 2), empty->box());
    // One child: no operator.
    Held<MathNode> one(expr_node(x.templ.get(), {ident_node(other.get(), u"q")}));
    std::unique_ptr<BoxTree> single(request_as(x.f.context, one.get(), row));
    EXPECT_EQ(1, single->count());
    EXPECT_EQ(Box(10, 8, 2), single->box());
}

// A template that puts an operator before each operand: none before the first, a 5-wide box (3 high,
// 3 deep) before the others.
class SignTemplate : public MathTemplate
{
public:
    SignTemplate()
        : MathTemplate(nullptr, u"signs", true, u"", TemplateAccelerator(), 0, true, 0, false, false, false, 0, -1,
                       5.0)
    {
    }
    BoxTree *request_operator(long index, MathNodeContext &, BoxTree const &constraint) override
    {
        seen.push_back(constraint.box());
        return index == 0 ? new BoxTreeLeaf(0, 0, 0) : new BoxTreeLeaf(5, 3, 3);
    }
    void draw_operator(long index, MathNodeContext &, AllocationTree const &allocation) override
    {
        drawn.push_back({index, allocation.point()});
    }
    std::vector<Box> seen;
    std::vector<std::pair<long, Point>> drawn;
};

TEST(Rows, TheTemplateSuppliesTheOperatorBeforeEachOperand)
{
    MathFixture f;
    Held<MathTemplate> idents(layout_template(new LayoutIdentNode));
    Held<SignTemplate> signs(new SignTemplate);
    LayoutTemplateOperatorRow *row = new LayoutTemplateOperatorRow(0, -1);
    row->append(new LayoutRunningPlaceholder(nullptr, 0, 0, -1, LayoutPlaceholder::inherit));
    signs->layout(row);
    Held<MathNode> node(expr_node(signs.get(), {ident_node(idents.get(), u"a"), ident_node(idents.get(), u"b"),
                                                ident_node(idents.get(), u"c")}));
    std::unique_ptr<BoxTree> box(request_as(f.context, node.get(), row));
    // Each operator is asked with the operands' 30 x (7, 1).
    std::vector<Box> const seen(3, Box(30, 7, 1));
    EXPECT_EQ(seen, signs->seen);
    // op0 (0 wide), a, op1, b, op2, c: at 0, 0, 10, 15, 25, 30.
    ASSERT_EQ(6, box->count());
    long const xs[] = {0, 0, 10, 15, 25, 30};
    for (long i = 0; i < 6; ++i)
        EXPECT_EQ(xs[i], box->child(i)->xOffset()) << i;
    // The operators' depth 3 beats the font's 2.
    EXPECT_EQ(Box(40, 8, 3), box->box());

    draw_as(f.context, node.get(), row, AllocationTree(Point(0, 10), box.get()));
    // The empty first operator is skipped.
    std::vector<std::pair<long, Point>> const drawn{{1, Point(10, 10)}, {2, Point(25, 10)}};
    EXPECT_EQ(drawn, signs->drawn);
    std::vector<Painted> const painted{{"a", 0, 10}, {"b", 15, 10}, {"c", 30, 10}};
    EXPECT_EQ(painted, painted_texts(f.canvas));
}

}  // namespace
