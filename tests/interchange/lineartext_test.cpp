// Linear text of formulas read with the default setup file: operators and their signs, where
// parentheses appear and where they don't, juxtaposition, named characters in Unicode, grids, and a
// kind without a pattern of its own.
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "interchange/content_test_util.h"
#include "support/math_fixture.h"
#include "tavi/interchange/content.h"
#include "tavi/interchange/lineartext.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/templatetable.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

struct SetupTable
{
    SetupTable() : table(nullptr)
    {
        read = read_default_setup(table);
        // A kind that the linear text has no pattern for.
        table.add_template(plain_template(&table, u"gcd"));
    }
    TemplateTable table;
    bool read = false;
};

std::string linear(TemplateTable &table, std::string const &body)
{
    Held<MathRootNode> root(read_math_content(table, math_doc(body)));
    return root.get() != nullptr ? Kxt::to_string(linear_text(root->child()).c_str()) : "<unread>";
}

// Content elements: an expression of a template, a sum with its signs, and the atoms.
std::string x(std::string const &tmp, std::initializer_list<std::string> children)
{
    std::string out = "<expr tmp='" + tmp + "'>";
    for (std::string const &child : children)
        out += child;
    return out + "</expr>";
}
std::string sum(std::string const &signs, std::initializer_list<std::string> children)
{
    std::string out = "<plus sgn='" + signs + "'>";
    for (std::string const &child : children)
        out += child;
    return out + "</plus>";
}
std::string id(std::string const &text) { return "<ident>" + text + "</ident>"; }
std::string num(std::string const &text) { return "<num>" + text + "</num>"; }

}  // namespace

TEST(LinearText, Formulas)
{
    struct Row
    {
        std::string body;
        char const *expected;
    };
    std::string const b2 = x("power", {id("b"), num("2")}), x2 = x("power", {id("x"), num("2")});
    std::string const b2_4ac = sum("+-", {b2, x("implicit_times", {num("4"), id("a"), id("c")})});
    Row const rows[] = {
        {x("divide", {x("plusminus", {sum("-", {id("b")}), x("sqrt", {b2_4ac})}),
                      x("implicit_times", {num("2"), id("a")})}),
         "(-b ± √(b^2 - 4ac))/(2a)"},
        {sum("+-", {id("a"), sum("++", {id("b"), id("c")})}), "a - (b + c)"},
        {x("implicit_times", {num("2"), sum("-", {id("b")})}), "2(-b)"},
        {x("divide", {x("implicit_times", {id("n"), sum("++", {id("n"), num("1")})}), num("2")}), "n(n + 1)/2"},
        {x("times", {x("power", {x("divide", {id("a"), id("b")}), num("2")}), x("power", {x2, num("3")})}),
         "(a/b)^2 · (x^2)^3"},
        {x("power", {id("e"), sum("++", {id("x"), num("1")})}), "e^(x + 1)"},
        // Juxtaposition: a dot between numbers, a space after a script.
        {x("implicit_times", {num("2"), num("3"), x2, id("y")}), "2·3x^2 y"},
        {x("eq", {x("sum", {id("k"), x("eq", {id("k"), num("1")}), id("n")}), id("s")}), "∑_(k = 1)^n k = s"},
        {x("defint", {x2, id("x"), num("0"), num("1")}), "∫_0^1 x^2 dx"},
        {x("setdiff", {x("interval", {num("0"), num("1")}), x("set", {num("0")})}), "[0, 1] ∖ {0}"},
        {x("apply", {id("f"), id("x"), id("y")}), "f(x, y)"},
        {x("tendsto", {id("n"), x("vectorproduct", {id("u"), sum("++", {id("v"), id("w")})})}), "n → u × (v + w)"},
        {x("in", {id("<chr nm='alpha'/>"), id("<chr nm='Ropf'/>")}), "α ∈ ℝ"},
        {"<tab tmp='determinant' rows='2' cols='2'>" + id("a") + id("b") + id("c") + id("d") + "</tab>",
         "determinant([a, b], [c, d])"},
        {x("gcd", {num("12"), sum("++", {id("a"), num("1")})}), "gcd(12, a + 1)"},
        {x("and", {x("lt", {num("0"), id("x")}), x("or", {id("p"), id("q")})}), "0 < x ∧ (p ∨ q)"},
    };
    SetupTable s;
    ASSERT_TRUE(s.read);
    for (Row const &row : rows)
        EXPECT_EQ(row.expected, linear(s.table, row.body)) << row.body;
}

TEST(LinearText, NullIsEmpty) { EXPECT_TRUE(linear_text(nullptr).empty()); }
