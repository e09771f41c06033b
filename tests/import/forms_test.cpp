// Forms the examples lack, each imported to its tree: applications, derivatives, lists, sets and
// intervals, scripts together, sized and plain parentheses, and the MathML markup of invisible
// operators, prefixed names and content numbers.
#include <gtest/gtest.h>

#include <string>

#include "interchange/content_test_util.h"
#include "support/math_fixture.h"
#include "tavi/import/importer.h"
#include "tavi/interchange/content.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/templatetable.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

std::string expr(std::string const &tmp, std::string const &kids)
{
    return "<expr tmp=\"" + tmp + "\">" + kids + "</expr>";
}
std::string ident(std::string const &name) { return "<ident>" + name + "</ident>"; }
std::string num(std::string const &n) { return "<num>" + n + "</num>"; }

struct Form
{
    FormulaLanguage language;
    char const *input;
    std::string body;
};

Form const forms[] = {
    {FormulaLanguage::latex, "\\operatorname{sgn}(x)", expr("apply", ident("sgn") + ident("x"))},
    {FormulaLanguage::latex, "\\sin^2 x", expr("power", expr("sin", ident("x")) + num("2"))},
    {FormulaLanguage::latex, "\\int f(x)\\,dx", expr("int", expr("apply", ident("f") + ident("x")) + ident("x"))},
    {FormulaLanguage::latex, "\\frac{d}{dx} f(x)", expr("diff", expr("apply", ident("f") + ident("x")) + ident("x"))},
    {FormulaLanguage::latex, "f(x, y)", expr("apply", ident("f") + ident("x") + ident("y"))},
    {FormulaLanguage::latex, "x_1^2", expr("power", "<isub>" + ident("x") + num("1") + "</isub>" + num("2"))},
    {FormulaLanguage::latex, "a \\cdot b \\cdot c = d = e",
     expr("eq", expr("times", ident("a") + ident("b") + ident("c")) + ident("d") + ident("e"))},
    {FormulaLanguage::latex, "(a, b) \\cup \\{1, 2, 3\\}",
     expr("union", expr("interval_open", ident("a") + ident("b")) + expr("set", num("1") + num("2") + num("3")))},
    {FormulaLanguage::latex, "\\left( \\frac{1}{2} \\right) + (\\frac{1}{2})",
     "<plus sgn=\"++\">" + expr("fenced", expr("divide", num("1") + num("2"))) + expr("divide", num("1") + num("2")) +
         "</plus>"},
    {FormulaLanguage::latex, "\\left\\{ \\begin{array}{ll} 1 & x > 0 \\\\ 0 & x \\le 0 \\end{array} \\right.",
     "<tab tmp=\"piecewise\" rows=\"2\" cols=\"2\">" + num("1") + expr("gt", ident("x") + num("0")) + num("0") +
         expr("leq", ident("x") + num("0")) + "</tab>"},
    {FormulaLanguage::latex, "\\text{if } x \\in \xE2\x84\x9D",
     expr("in", expr("implicit_times", "<str>if </str>" + ident("x")) + "<ident><chr nm=\"Ropf\"/></ident>")},
    {FormulaLanguage::mathml, "<math><mi>f</mi><mo>&ApplyFunction;</mo><mi>x</mi></math>",
     expr("apply", ident("f") + ident("x"))},
    {FormulaLanguage::mathml, "<math><mn>2</mn><mo>&InvisibleTimes;</mo><mi>x</mi></math>",
     expr("implicit_times", num("2") + ident("x"))},
    {FormulaLanguage::mathml, "<m:math xmlns:m=\"http://www.w3.org/1998/Math/MathML\"><m:mi>&alpha;</m:mi></m:math>",
     "<ident><chr nm=\"alpha\"/></ident>"},
    {FormulaLanguage::mathml, "<math><cn type=\"e-notation\">1.5<sep/>3</cn></math>",
     expr("times", num("1.5") + expr("power", num("10") + num("3")))},
    {FormulaLanguage::mathml, "<math><apply><minus/><cn>1</cn></apply></math>", "<plus sgn=\"-\">" + num("1") + "</plus>"},
    {FormulaLanguage::mathml, "<math><semantics><apply><ci>g</ci><ci>x</ci></apply><annotation>g(x)</annotation></semantics></math>",
     expr("apply", ident("g") + ident("x"))},
};

TEST(ImportForms, EachGivesItsTree)
{
    TemplateTable table(nullptr);
    ASSERT_TRUE(read_default_setup(table));
    for (Form const &f : forms) {
        SCOPED_TRACE(f.input);
        try {
            std::string const content = to_content(f.language, f.input, table);
            CaptureCerr cerr;
            Held<MathRootNode> root(read_math_content(table, content));
            ASSERT_NE(nullptr, root.get()) << content;
            EXPECT_EQ(math_doc(f.body), write_math_content(*root.get()));
        } catch (ImportError const &e) {
            ADD_FAILURE() << e.what();
        }
    }
}

}  // namespace
