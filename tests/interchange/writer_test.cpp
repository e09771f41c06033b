// Tests of the content writers: the exact text of each node class and of the root, and token texts
// run by run. (The round trip of whole formulas is the examples' test.)
#include <gtest/gtest.h>

#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

#include "interchange/content_test_util.h"
#include "support/math_fixture.h"
#include "tavi/interchange/content.h"
#include "tavi/interchange/contentwriter.h"
#include "tavi/math/mathaccentnode.h"
#include "tavi/math/mathplusnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathtablenode.h"

using namespace Tavi;
using namespace TaviTest;

namespace {

// Formulas of the built-in templates, plus "frac" (a plain expression) and "matrix" (a table),
// which a setup file would bring.
class Formulas
{
public:
    Formulas() : table(nullptr)
    {
        table.add_template(plain_template(&table, u"frac"));
        table.add_template(plain_template(&table, u"matrix"));
    }

    MathNode *atom(wchar const *templ, wchar const *text) { return table.get_template(templ)->create_node(text); }
    MathNode *ident(wchar const *text) { return atom(u"ci", text); }
    MathNode *num(wchar const *text) { return atom(u"cn", text); }
    MathNode *plh() { return table.get_dummy_template()->create_node(); }
    MathNode *node(wchar const *templ, std::initializer_list<MathNode *> children)
    {
        return with(table.get_template(templ)->create_node(), children);
    }
    MathNode *matrix(std::size_t rows, std::size_t cols, std::initializer_list<MathNode *> children)
    {
        return with(new MathTableNode(table.get_template(u"matrix"), rows, cols), children);
    }
    static MathNode *with(MathNode *parent, std::initializer_list<MathNode *> children)
    {
        for (MathNode *c : children)
            parent->append(c);
        return parent;
    }

    TemplateTable table;
};

std::string written(MathNode *node)
{
    Held<MathRootNode> root(new MathRootNode(node));
    return write_math_content(*root);
}

}  // namespace

// The text of each element as the writer gives it: attributes in their order, ipop last, no white
// space, a blank in the empty placeholder.
TEST(ContentWriter, ElementsOfEachNodeClass)
{
    Formulas f;
    MathNode *signed_sum = f.node(u"plus", {f.ident(u"a"), f.ident(u"b"), f.num(u"1")});
    static_cast<MathPlusNode *>(signed_sum)->toggle_sign(1);
    MathNode *marked_sum = f.node(u"plus", {f.ident(u"a")});
    marked_sum->ip_operand(true);
    MathNode *marked_plh = f.plh();
    marked_plh->ip_operand(true);
    MathNode *lined = f.matrix(1, 2, {f.num(u"1"), f.num(u"2")});
    lined->attribute(u"rowlines", u"solid");
    lined->attribute(u"framelines", u"dashed");
    lined->ip_operand(true);
    // Accent nodes on templates that are no accent templates name the accent after the template:
    // "&" + 70 letters + ";" cut to 64 characters, less its first and last, leaves 62 letters.
    Held<MathTemplate> long_accent(plain_template(&f.table, (std::u16string(70, u'w') + u"_accent").c_str()));

    struct Case
    {
        MathNode *node;
        std::string xml;
    };
    std::vector<Case> const cases = {
        {f.atom(u"string", u"a \"b\" & c"), "<str>a &quot;b&quot; &amp; c</str>"},
        {marked_plh, "<plh ipop=\"1\" />"},
        {signed_sum, "<plus sgn=\"+-+\"><ident>a</ident><ident>b</ident><num>1</num></plus>"},
        {marked_sum, "<plus sgn=\"+\" ipop=\"1\"><ident>a</ident></plus>"},
        {f.node(u"subscript", {f.ident(u"x"), f.num(u"1")}), "<isub><ident>x</ident><num>1</num></isub>"},
        {f.node(u"joinsymb", {f.ident(u"d"), f.ident(u"x")}), "<irow><ident>d</ident><ident>x</ident></irow>"},
        {f.node(u"overbar_accent", {f.ident(u"x")}), "<iacc nm=\"OverBar\"><ident>x</ident></iacc>"},
        {Formulas::with(new MathAccentNode(long_accent.get()), {f.plh()}),
         "<iacc nm=\"" + std::string(62, 'w') + "\"><plh /></iacc>"},
        {f.node(u"frac", {f.num(u"1"), f.ident(u"n")}), "<expr tmp=\"frac\"><num>1</num><ident>n</ident></expr>"},
        {lined, "<tab tmp=\"matrix\" rows=\"1\" cols=\"2\" rowl=\"solid\" frl=\"dashed\" ipop=\"1\"><num>1</num>"
                "<num>2</num></tab>"},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.xml);
        EXPECT_EQ(math_doc(c.xml), written(c.node));
    }
}

// Token texts: text runs escaped, named characters as chr, plain characters of other fonts as
// themselves, characters without a name dropped; a number's separator turned into a point.
TEST(ContentWriter, TokenTextRunByRun)
{
    struct Case
    {
        std::vector<std::pair<MathString::Font, wstring>> runs;
        wchar separator;
        std::string xml;
    };
    std::vector<Case> const cases = {
        {{{MathString::f_text, u"a<"}, {MathString::f_symbol, u"a"}}, 0, "a&lt;<chr nm=\"alpha\"/>"},
        // Upright text has no map: its characters are lost.
        {{{MathString::f_upright, u"Q"}, {MathString::f_text, u"b"}}, 0, "b"},
        // The extension font's fences are its own plain characters.
        {{{MathString::f_extension, u"("}, {MathString::f_text, u"x"}, {MathString::f_extension, u")"}}, 0,
         "(x)"},
        {{{MathString::f_text, u"3,25"}}, u',', "3.25"},
        {{{MathString::f_text, u"1,5"}, {MathString::f_symbol, u"p"}, {MathString::f_text, u"2,5"}}, u',',
         "1.5<chr nm=\"pi\"/>2.5"},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.xml);
        MathString text;
        for (auto const &run : c.runs)
            text.append(run.second.data(), run.second.size(), run.first);
        std::ostringstream out;
        put_token_text(out, text, c.separator);
        EXPECT_EQ(c.xml, out.str());
    }
}

// The root: the namespace always, readonly only for a setting of its own, the strings that are set
// in their order, escaped.
TEST(ContentWriter, RootAttributes)
{
    Formulas f;
    Held<MathRootNode> root(new MathRootNode(f.plh()));
    root->tex_text(u"x<y");
    root->kxType(u"Eq");
    root->alt_text(u"");
    root->style(u"a\"b");
    root->expr_text(u"&");
    std::string const strings = " style=\"a&quot;b\" kxType=\"Eq\" expr=\"&amp;\" tex=\"x&lt;y\"><plh /></math>";
    std::string const ns = "<math xmlns=\"" + content_namespace + "\"";
    EXPECT_EQ(ns + strings, write_math_content(*root));
    root->read_only(false);
    EXPECT_EQ(ns + " readonly=\"0\"" + strings, write_math_content(*root));
}
