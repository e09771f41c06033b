// The node classes: a small formula built in code and asked for its text, attributes, clones and
// equality; the signs of sums through every change of the operand list; the positions of expression
// children; categories; which nodes may fill the places of decorated identifiers; and the texts of
// scripts, accents and joined symbols.
#include "math/node_probe.h"
#include "tavi/math/mathaccentnode.h"
#include "tavi/math/mathattriblist.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathidentnode.h"
#include "tavi/math/mathjoinsymbnode.h"
#include "tavi/math/mathnumbernode.h"
#include "tavi/math/mathplusnode.h"
#include "tavi/math/mathstringnode.h"
#include "tavi/math/mathsubscriptnode.h"
#include "tavi/math/mathsubsupscriptnode.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

using namespace Tavi;
using namespace NodeTest;

namespace {

// The built-in kinds a formula needs, each its own template object.
struct Kinds
{
    HeldProbe ci{u"ci", 0};
    HeldProbe cn{u"cn", 0};
    HeldProbe str{u"string", 0};
    HeldProbe dummy{u"dummy", 0};
    HeldProbe plus{u"plus", 1};
    HeldProbe sub{u"subscript", 2};
    HeldProbe sup{u"superscript", 2};
    HeldProbe subsup{u"subsupscript", 3};
    HeldProbe join{u"joinsymb", 2};
    HeldProbe bar{u"overbar_accent", 1};
    HeldProbe times{u"times", 2};

    MathIdentNode *ident(char16_t const *text) const
    {
        auto *n = new MathIdentNode(ci.get());
        n->text(text);
        return n;
    }
    MathNumberNode *number(char16_t const *text) const
    {
        auto *n = new MathNumberNode(cn.get());
        n->text(text);
        return n;
    }
    MathDummyNode *placeholder() const { return new MathDummyNode(dummy.get()); }
};

std::u16string text_of(MathNode *n) { return n->cat_text().str(); }

}  // namespace

// x - 3.14 + "a&alpha;": an identifier, a number with a decimal point, and a string with a named
// character in a sum whose second operand is signed minus.
TEST(MathNodes, FormulaBuiltInCode)
{
    Kinds k;
    Own<MathPlusNode> sum(new MathPlusNode(k.plus.get()));
    MathIdentNode *x = k.ident(u"x");
    MathNumberNode *pi = k.number(u"3.14");
    auto *quote = new MathStringNode(k.str.get());
    MathString s(u"a", MathString::f_text);
    ASSERT_TRUE(s.append_name(u"alpha"));
    quote->text(s, -1);
    sum->append(x);
    sum->append(pi);
    sum->append(quote);
    sum->toggle_sign(1);

    // alpha is code 97 of the symbol class, which would read back as a plain "a", so it is
    // spelled by name.
    EXPECT_EQ(text_of(quote), u"a&alpha;");

    // Categories: identifier 20, decimal number 2, string 10, expression 36 with the plus template's
    // one operand.
    EXPECT_EQ((std::vector<long>{20, 2, 10, 36}),
              (std::vector<long>{x->cat_type(), pi->cat_type(), quote->cat_type(), sum->cat_type()}));
    EXPECT_EQ(sum->cat_childs(), 1u);

    EXPECT_EQ(sum->attribute_string(), u"Signs=\"+-+\",");
    std::unique_ptr<MathAttribList> list(sum->attribute_list());
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(list->size(), 1u);

    // A deep clone: new operands, equal to the old, owned by the clone, signs copied.
    Own<MathPlusNode> deep(static_cast<MathPlusNode *>(sum->clone(true)));
    ASSERT_EQ(deep->count(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_NE(deep->child(i), sum->child(i)) << i;
        EXPECT_EQ(deep->child(i)->parent(), deep.get()) << i;
        EXPECT_EQ(sum->child(i)->parent(), sum.get()) << i;
    }
    EXPECT_TRUE(deep->is_equal(sum.get()));

    // A shallow clone shares the operands and leaves their parent alone.
    Own<MathPlusNode> shallow(static_cast<MathPlusNode *>(sum->clone(false)));
    EXPECT_EQ(shallow->child(1), sum->child(1));
    EXPECT_EQ(sum->child(1)->parent(), sum.get());

    // Equality follows every part: a sign, a digit.
    shallow->toggle_sign(0);
    EXPECT_FALSE(shallow->is_equal(sum.get()));
    deep->child(1)->text(u"3.15");
    EXPECT_FALSE(deep->is_equal(sum.get()));
}

TEST(MathPlusNode, SignsFollowTheOperandList)
{
    Kinds k;
    Own<MathPlusNode> sum(new MathPlusNode(k.plus.get()));
    MathDummyNode *a = k.placeholder();
    MathDummyNode *b = k.placeholder();
    sum->append(a);
    sum->append(b);
    sum->toggle_sign(1);
    EXPECT_EQ(std::u16string(sum->signs()), u"+-");
    EXPECT_TRUE(sum->is_minus());

    sum->prepend(k.placeholder());
    sum->insert(2, k.placeholder());
    sum->insert(4, k.placeholder());
    EXPECT_EQ(std::u16string(sum->signs()), u"+++-+");

    // A removed operand takes its own sign with it.
    sum->remove(3);
    EXPECT_EQ(std::u16string(sum->signs()), u"++++");
    sum->toggle_sign(0);
    sum->remove(1);
    EXPECT_EQ(std::u16string(sum->signs()), u"-++");

    // A bad index changes neither the operands nor the signs.
    EXPECT_THROW(sum->remove(3), std::out_of_range);
    EXPECT_EQ(std::u16string(sum->signs()), u"-++");

    sum->toggle_all_signs();
    EXPECT_EQ(std::u16string(sum->signs()), u"+--");
}

TEST(MathPlusNode, SignsAttribute)
{
    Kinds k;
    struct Case
    {
        char16_t const *key;
        char16_t const *value;
        char16_t const *signs;
    } const cases[] = {
        // A letter in the second place leaves that sign and still takes the place.
        {u"Signs", u"-x-", u"-+-"},
        {u"Signs", u"--", u"--+"},
        // Characters beyond the operands are ignored.
        {u"Signs", u"---+", u"---"},
        {u"signs", u"---", u"+++"},
    };
    for (Case const &c : cases) {
        Own<MathPlusNode> sum(new MathPlusNode(k.plus.get()));
        for (int i = 0; i < 3; ++i)
            sum->append(k.placeholder());
        sum->attribute(c.key, c.value);
        EXPECT_EQ(std::u16string(sum->signs()), c.signs) << (c.value ? std::string(c.value, c.value + 1) : "null");
    }

    // Negation and difference are exact shapes.
    struct Shape
    {
        char16_t const *signs;
        bool negate;
        bool minus;
    } const shapes[] = {{u"-", true, false}, {u"+-", false, true}, {u"--", false, false}, {u"+-+", false, false}};
    for (Shape const &s : shapes) {
        Own<MathPlusNode> p(new MathPlusNode(k.plus.get()));
        for (std::size_t i = 0; s.signs[i] != 0; ++i)
            p->append(k.placeholder());
        p->attribute(u"Signs", s.signs);
        EXPECT_EQ(p->is_negate(), s.negate) << std::u16string(s.signs).size();
        EXPECT_EQ(p->is_minus(), s.minus) << std::u16string(s.signs).size();
    }
}

// Child positions are placed once, relative to the node, with the template's allocation of each
// child at the origin: the probe puts child i at (10*i + 3, 7*i). A child's allocation is then the
// given point plus that position, whatever point the template gives.
TEST(MathExprNode, ChildPositionsArePlacedOnceAndRelative)
{
    HeldProbe probe;
    Own<MathExprNode> node(new MathExprNode(probe.get()));
    node->append(new MathDummyNode(probe.get()));
    node->append(new MathDummyNode(probe.get()));
    node->append(new MathDummyNode(probe.get()));
    Fixture f;
    BoxTreeLeaf box(30, 8, 2);

    EXPECT_FALSE(node->positions_valid());
    std::unique_ptr<AllocationTree> a(node->allocate(2, f.context, AllocationTree(Point(100, 50), &box)));
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(a->point(), Point(100 + 23, 50 + 14));
    EXPECT_EQ(probe->placements, 3);
    EXPECT_TRUE(node->positions_valid());
    EXPECT_EQ(node->position(1), Point(13, 7));

    // Moving the node moves the children at no cost.
    std::unique_ptr<AllocationTree> b(node->allocate(1, f.context, AllocationTree(Point(-5, 0), &box)));
    EXPECT_EQ(b->point(), Point(-5 + 13, 7));
    EXPECT_EQ(probe->placements, 3);

    // A change of the children places them again.
    node->remove(0);
    EXPECT_FALSE(node->positions_valid());
    std::unique_ptr<AllocationTree> c(node->allocate(0, f.context, AllocationTree(Point(0, 0), &box)));
    EXPECT_EQ(probe->placements, 5);
    // An index outside the children allocates nothing.
    EXPECT_EQ(node->allocate(2, f.context, AllocationTree(Point(0, 0), &box)), nullptr);
}

TEST(MathNumberNode, WholeOrDecimal)
{
    Kinds k;
    struct Case
    {
        char16_t const *text;
        long cat;
    } const cases[] = {
        {u"42", 3},
        {u"3.14", 2},
        {u"3,14", 2},  // the user's separator may be a comma
        {u"9223372036854775807", 3},   // the largest long
        {u"9223372036854775808", 2},   // one more
    };
    for (Case const &c : cases) {
        Own<MathNumberNode> n(k.number(c.text));
        EXPECT_EQ(n->cat_type(), c.cat) << std::string(c.text, c.text + std::u16string(c.text).size());
    }
}

// Which nodes may take a place: an expression takes anything, a script and an accent only
// identifier-like nodes, and a script as a script's script.
TEST(MathNodes, MayReplaceByPlace)
{
    Kinds k;
    Own<MathNode> ident(k.ident(u"x"));
    Own<MathNode> number(k.number(u"1"));
    Own<MathNode> dummy(k.placeholder());
    Own<MathNode> accent(new MathAccentNode(k.bar.get()));
    Own<MathNode> script(new MathSubscriptNode(k.sub.get()));
    Own<MathNode> sum(new MathPlusNode(k.plus.get()));
    MathNode *const kinds[] = {ident.get(), number.get(), dummy.get(), accent.get(), script.get(), sum.get()};

    Own<MathNode> expr(new MathExprNode(k.times.get()));
    Own<MathNode> sub(new MathSubscriptNode(k.sub.get()));
    Own<MathNode> subsup(new MathSubSupscriptNode(k.subsup.get()));
    Own<MathNode> acc(new MathAccentNode(k.bar.get()));
    Own<MathNode> join(new MathJoinSymbNode(k.join.get()));
    Own<MathNode> atom(k.ident(u"y"));

    // One string per parent and place: the answer for ident, number, dummy, accent, script, sum.
    struct Case
    {
        MathNode *parent;
        long index;
        char const *answers;
    } const cases[] = {
        {expr.get(), 5, "YYYYYY"},   {sub.get(), 0, "YNYYNN"},    {sub.get(), 1, "YNYYYN"},
        {sub.get(), 2, "NNNNNN"},    {subsup.get(), 2, "YNYYYN"}, {acc.get(), 0, "YNYYNN"},
        {join.get(), 4, "YNYYYN"},   {atom.get(), 0, "NNNNNN"},
    };
    for (Case const &c : cases) {
        for (int i = 0; i < 6; ++i)
            EXPECT_EQ(c.parent->may_replace(c.index, kinds[i]), c.answers[i] == 'Y')
                << std::string(c.parent->type_name(), c.parent->type_name() + 4) << " place " << c.index
                << " kind " << i;
        if (c.parent != expr.get()) {
            EXPECT_FALSE(c.parent->may_replace(c.index, nullptr));
        }
    }
}

// Decorated identifiers spell themselves as they are written: x_i, x^2, x_i^2, parts side by side,
// and an accent after its operand.
TEST(MathNodes, TextsOfDecoratedIdentifiers)
{
    Kinds k;
    auto two = [&](MathNode *parent, MathNode *a, MathNode *b) {
        parent->append(a);
        parent->append(b);
        return parent;
    };
    Own<MathNode> sub(two(new MathSubscriptNode(k.sub.get()), k.ident(u"x"), k.ident(u"i")));
    EXPECT_EQ(text_of(sub.get()), u"x_i");
    // Scripts nest to the right.
    Own<MathNode> subsup(new MathSubSupscriptNode(k.subsup.get()));
    subsup->append(k.ident(u"x"));
    subsup->append(k.ident(u"i"));
    subsup->append(k.ident(u"2"));
    EXPECT_EQ(text_of(subsup.get()), u"x_i^2");
    Own<MathNode> bar(new MathAccentNode(k.bar.get()));
    bar->append(k.ident(u"v"));
    EXPECT_EQ(text_of(bar.get()), u"v&overbar;");
    // Placeholders contribute nothing; a missing place is empty too.
    Own<MathNode> open(new MathSubscriptNode(k.sub.get()));
    open->append(k.ident(u"x"));
    EXPECT_EQ(text_of(open.get()), u"x_");
    open->append(k.placeholder());
    EXPECT_EQ(text_of(open.get()), u"x_");
}
