// Formulas the importers refuse: each gives ImportError with a message that names the construct and
// its place, never a crash or a formula with something silently left out.
#include <gtest/gtest.h>

#include <string>

#include "support/math_fixture.h"
#include "tavi/import/importer.h"
#include "tavi/math/templates/templatetable.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

struct Bad
{
    FormulaLanguage language;
    std::string input;
    char const *message;
};

std::string const deep = std::string(300, '{') + "x" + std::string(300, '}');
std::string const deep_mathml = [] {
    std::string s = "<math>";
    for (int i = 0; i < 300; ++i)
        s += "<mrow>";
    s += "<mi>x</mi>";
    for (int i = 0; i < 300; ++i)
        s += "</mrow>";
    return s + "</math>";
}();

Bad const bad_inputs[] = {
    // unknown commands and constructs
    {FormulaLanguage::latex, "\\foo + 1", "Unknown LaTeX command \\foo at column 1"},
    {FormulaLanguage::latex, "a + \\otimes b", "Unknown LaTeX command \\otimes at column 5"},
    {FormulaLanguage::latex, "\\begin{foo} a \\end{foo}", "Unknown LaTeX environment 'foo' at column 1"},
    {FormulaLanguage::latex, "\\mathbb{xy}", "\\mathbb takes one capital letter at column 1"},
    {FormulaLanguage::latex, "a \\# b", "Unknown LaTeX command \\# at column 3"},
    {FormulaLanguage::latex, "x \\left< y", "Unsupported delimiter '<' after \\left at column 3"},
    // unbalanced braces, fences and environments
    {FormulaLanguage::latex, "x + \\frac{1}{2", "Unbalanced braces: '{' is not closed at column 13"},
    {FormulaLanguage::latex, "x}", "Unbalanced braces: '}' without '{' at column 2"},
    {FormulaLanguage::latex, "(x + 1", "Unbalanced fences: '(' is not closed at column 1"},
    {FormulaLanguage::latex, "x + 1)", "Unbalanced fences: ')' closes nothing at column 6"},
    {FormulaLanguage::latex, "\\begin{pmatrix} a & b", "Environment not ended by \\end at column 1"},
    {FormulaLanguage::latex, "\\end{pmatrix}", "\\end without \\begin at column 1"},
    // wrong nesting
    {FormulaLanguage::latex, "(\\lfloor x)\\rfloor", "Fence \\lfloor closed by ')' at column 11"},
    {FormulaLanguage::latex, "\\begin{pmatrix} a \\end{bmatrix}", "\\begin{pmatrix} ended by \\end{bmatrix} at column 19"},
    {FormulaLanguage::latex, "a & b", "'&' outside a matrix or cases environment at column 3"},
    {FormulaLanguage::latex, "a \\\\ b", "'\\\\' outside a matrix or cases environment at column 3"},
    // missing pieces
    {FormulaLanguage::latex, "x^", "Missing argument of ^ at column 2"},
    {FormulaLanguage::latex, "\\sqrt", "Missing argument of \\sqrt at column 1"},
    {FormulaLanguage::latex, "x +", "Missing operand after '+' at column 3"},
    {FormulaLanguage::latex, "= 1", "Missing operand before '=' at column 1"},
    {FormulaLanguage::latex, "_1", "Script _ without a base at column 1"},
    {FormulaLanguage::latex, "  $ $ ", "An empty formula"},
    {FormulaLanguage::latex, "x + \xF0\x85\x85\x85", "Text that is not UTF-8 at column 5"},
    {FormulaLanguage::latex, "\\text{a\x01}", "A control character at column 8"},
    {FormulaLanguage::latex, deep, "Formula nested too deeply at column 101"},
    {FormulaLanguage::latex, std::string(300, '(') + "x" + std::string(300, ')'), "Formula nested too deeply at column 200"},
    {FormulaLanguage::latex, [] {
         std::string s;
         for (int i = 0; i < 300; ++i)
             s += "\\sqrt";
         return s + " x";
     }(), "Formula nested too deeply at column 996"},
    // MathML
    {FormulaLanguage::mathml, "<math><mi>x</mi>", "Bad XML: no element found at line 1, column 17"},
    {FormulaLanguage::mathml, "<html/>", "Not a MathML document: the top element is <html> at line 1, column 1"},
    {FormulaLanguage::mathml, "<math><mglyph/></math>", "Unsupported MathML element <mglyph> at line 1, column 7"},
    {FormulaLanguage::mathml, "<math>\n<mfrac><mi>x</mi></mfrac></math>", "<mfrac> needs 2 children, not 1 at line 2, column 1"},
    {FormulaLanguage::mathml, "<math><mo>(</mo><mi>x</mi></math>", "Unbalanced fences: <mo>(</mo> is not closed at line 1, column 7"},
    {FormulaLanguage::mathml, "<math><mo>\xE2\x8A\x97</mo><mi>x</mi></math>", "Unknown operator <mo>\xE2\x8A\x97</mo> at line 1, column 7"},
    {FormulaLanguage::mathml, "<math><mi>x<mi>y</mi></mi></math>", "Markup inside <mi> at line 1, column 12"},
    {FormulaLanguage::mathml, "<math><apply><foo/><ci>x</ci></apply></math>", "Unknown content MathML operator <foo> at line 1, column 14"},
    {FormulaLanguage::mathml, "<math><apply><csymbol>nosuch</csymbol><ci>x</ci></apply></math>", "Unknown content MathML operator <nosuch> at line 1, column 14"},
    {FormulaLanguage::mathml, "<math><interval closure='half'><cn>0</cn><cn>1</cn></interval></math>", "Unknown interval closure 'half' at line 1, column 7"},
    {FormulaLanguage::mathml, deep_mathml, "MathML nested too deeply at line 1, column 1207"},
};

TEST(ImportBadInput, EachRefusedWithItsReason)
{
    TemplateTable table(nullptr);
    ASSERT_TRUE(read_default_setup(table));
    for (auto const &b : bad_inputs) {
        SCOPED_TRACE(b.input.substr(0, 80));
        try {
            std::string const made = to_content(b.language, b.input, table);
            ADD_FAILURE() << "imported as " << made;
        } catch (ImportError const &e) {
            EXPECT_EQ(b.message, std::string(e.what()));
        }
    }
}

// A construct whose template the setup lacks is named, not stood in for.
TEST(ImportBadInput, TemplateMissingFromTheSetup)
{
    TemplateTable builtins(nullptr);
    try {
        to_content(FormulaLanguage::latex, "1 + \\frac{1}{2}", builtins);
        ADD_FAILURE() << "imported";
    } catch (ImportError const &e) {
        EXPECT_EQ("The setup has no template 'divide' at column 5", std::string(e.what()));
        EXPECT_EQ(5u, e.column());
    }
}

}  // namespace
