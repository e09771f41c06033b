// The built-in templates: the accents' marks and layouts, the placeholders an entered node starts
// with, and the sign a sum draws before each term. (The node classes show in the writer's elements,
// the priorities in the default setup's parentheses; a difference and a negation entered as sums in
// the typing tests.)
#include "support/math_fixture.h"
#include "tavi/kxt/utf.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutfixedplaceholder.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/layout/layoutoperatorrow.h"
#include "tavi/math/layout/layoutover.h"
#include "tavi/math/layout/layoutoverbarop.h"
#include "tavi/math/layout/layoutrow.h"
#include "tavi/math/layout/layoutsub.h"
#include "tavi/math/layout/layoutsubsup.h"
#include "tavi/math/layout/layoutsup.h"
#include "tavi/math/layout/layouttemplateoperatorrow.h"
#include "tavi/math/mathaccentnode.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathplusnode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/templates/accenttemplate.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/templatetable.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <typeindex>
#include <typeinfo>
#include <vector>

using namespace Tavi;
using TaviTest::Held;
using TaviTest::MathFixture;

namespace {

std::type_index kind(void const *p, std::type_info const &t) { return p ? std::type_index(t) : typeid(void); }
#define KIND(p) kind((p), (p) ? typeid(*(p)) : typeid(void))

}  // namespace

// Each accent sets its mark, the postfix operator of its text, with the base in the layout its row
// names.
TEST(BuiltinTemplates, AccentsSetTheirMarkWithTheBase)
{
    struct Case
    {
        wchar const *name;
        wchar const *mark;
        std::type_index outer;
        bool accent;  // of LayoutOver and LayoutUnder
        std::type_index op;
    };
    std::vector<Case> const cases = {
        {u"overbar_accent", u"&OverBar;", typeid(LayoutOver), false, typeid(LayoutOverBarOp)},
        {u"prime_accent", u"&prime;", typeid(LayoutRow), false, typeid(LayoutOp)},
        {u"tilde_accent", u"&tilde;", typeid(LayoutOver), true, typeid(LayoutOp)},
        {u"dot_accent", u"&dot;", typeid(LayoutOver), true, typeid(LayoutOp)},
    };
    TemplateTable table(nullptr);
    for (Case const &c : cases) {
        SCOPED_TRACE(Kxt::to_string(c.name));
        auto *t = dynamic_cast<AccentTemplate *>(table.get_template(c.name));
        ASSERT_NE(nullptr, t);
        EXPECT_EQ(std::u16string(c.mark), t->cat_text());
        MathLayout *outer = t->layout();
        EXPECT_EQ(c.outer, KIND(outer));
        if (auto *col = dynamic_cast<LayoutStretchCol *>(outer)) {
            EXPECT_EQ(c.accent, col->accent());
        }
        ASSERT_EQ(2, outer->count());
        auto *base = dynamic_cast<LayoutFixedPlaceholder *>(outer->child(0));
        ASSERT_NE(nullptr, base);
        auto *mark = dynamic_cast<LayoutOp *>(outer->child(1));
        ASSERT_NE(nullptr, mark);
        EXPECT_EQ(c.op, KIND(mark));
        EXPECT_EQ(LayoutOp::postfix, mark->form());
        EXPECT_TRUE(mark->accent());
        EXPECT_EQ(LayoutToken::decode_text(c.mark), mark->text());
        // A placeholder has no text, so the entered node's text is the accent's mark alone.
        Held<MathNode> entered(t->create_edit_node());
        ASSERT_NE(nullptr, entered.get());
        EXPECT_EQ(std::u16string(c.mark), entered->cat_text().str());
    }
}

// Entering any built-in gives the node that create_node makes, holding as many placeholders, each made
// by the dummy template, as the kind starts with; sums, scripts and joined symbols have their layouts.
TEST(BuiltinTemplates, EnteringATemplateFillsItsOperandsWithPlaceholders)
{
    // In the table's order: the atoms and the placeholder, sum, difference, negation, three scripts,
    // joined symbols, ten accents.
    std::string const placeholders = "00002212232" "1111111111";
    // The layouts that set sums, scripts and joined symbols.
    std::map<std::u16string, std::type_index> const layouts = {
        {u"plus", typeid(LayoutTemplateOperatorRow)}, {u"subscript", typeid(LayoutSub)},
        {u"superscript", typeid(LayoutSup)},          {u"subsupscript", typeid(LayoutSubSup)},
        {u"joinsymb", typeid(LayoutOperatorRow)}};
    TemplateTable table(nullptr);
    ASSERT_EQ(placeholders.size(), table.template_count());
    for (std::size_t i = 0; i < table.template_count(); ++i) {
        MathTemplate *t = table.template_at(i);
        SCOPED_TRACE(Kxt::to_string(t->type_name()));
        auto const layout = layouts.find(t->type_name());
        if (layout != layouts.end()) {
            EXPECT_EQ(layout->second, KIND(t->layout()));
        }
        Held<MathNode> fresh(t->create_node());
        Held<MathNode> entered(t->create_edit_node());
        ASSERT_NE(nullptr, entered.get());
        EXPECT_EQ(KIND(fresh.get()), KIND(entered.get()));
        ASSERT_EQ(placeholders[i] - '0', entered->count());
        for (long c = 0; c < entered->count(); ++c)
            EXPECT_EQ(std::type_index(typeid(MathDummyNode)), KIND(entered->component(c))) << c;
    }
}

// The sign before each term, on the recording canvas at 240 twips: every character is 10 wide, an
// operator stands on its ink (ascent 7, descent 1), and a space of n twentieths is 240*n/20 = 12n
// units.
//   leading plus:   nothing, an empty box;
//   leading minus:  "-" prefix, spaces 3 and 4: 10 + 12*7 = 94 wide, drawn 12*3 = 36 right;
//   other terms:    "+" or "-" infix, spaces 5 and 5: 10 + 12*10 = 130 wide, drawn 60 right.
// Every box gets a break cost of 1000 before the sign and 50000 after it.
TEST(BuiltinTemplates, SumDrawsTheSignOfEachTerm)
{
    TemplateTable table(nullptr);
    MathTemplate *plus = table.get_template(u"plus");
    Held<MathNode> node(plus->create_node());
    auto *sum = static_cast<MathPlusNode *>(node.get());
    for (int i = 0; i < 3; ++i)
        sum->append(table.get_dummy_template()->create_node());
    // Signs: -, +, -.
    sum->toggle_sign(0);
    sum->toggle_sign(2);

    struct Case
    {
        long index;
        bool leading_plus;  // toggle term 0 back to plus first
        long width;
        long ascent, descent;
        char const *painted;  // null: nothing
        long x;
    };
    std::vector<Case> const cases = {
        {0, false, 94, 7, 1, "-", 36},
        {1, false, 130, 7, 1, "+", 60},
        {0, true, 0, 0, 0, nullptr, 0},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.index);
        if (c.leading_plus && !sum->plus_sign(0))
            sum->toggle_sign(0);
        MathFixture f;
        f.context.math_node(sum);
        BoxTree *box = plus->request_operator(c.index, f.context, BoxTree::unconstrained);
        ASSERT_NE(nullptr, box);
        EXPECT_EQ(Box(c.width, c.ascent, c.descent), box->box());
        EXPECT_DOUBLE_EQ(1000.0, box->leftBadness());
        EXPECT_DOUBLE_EQ(50000.0, box->rightBadness());

        f.canvas.clear();
        AllocationTree const at(Point(100, 50), box);
        plus->draw_operator(c.index, f.context, at);
        std::vector<TaviTest::Painted> const painted = TaviTest::painted_texts(f.canvas);
        if (c.painted == nullptr) {
            EXPECT_TRUE(painted.empty());
        } else {
            ASSERT_EQ(1u, painted.size());
            EXPECT_EQ((TaviTest::Painted{c.painted, 100 + c.x, 50}), painted[0]);
        }
        delete box;
    }
}
