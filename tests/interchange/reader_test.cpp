// Tests of the content reader: every message it gives, through real documents where one reaches
// it, and the cases of names, tokens, signs, tables, numbers and root settings.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "interchange/content_test_util.h"
#include "support/math_fixture.h"
#include "tavi/interchange/content.h"
#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/kxt/xmlparser.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathtablenode.h"

using namespace Tavi;
using namespace TaviTest;

namespace {

// The document read and written back (empty without a node), and what went to the error stream.
std::pair<std::string, std::string> read_back(TemplateTable &table, std::string const &text)
{
    CaptureCerr capture;
    Held<MathRootNode> root(read_math_content(table, text));
    return {root.get() ? write_math_content(*root) : std::string(), capture.text()};
}

}  // namespace

// Each refusal writes "Error in math: " and its reason, and throws; nothing of the broken document
// is left behind (the sanitizer build sees leaks).
// Sums, each holding the next, `depth` elements deep in all.
std::string nested(int depth)
{
    std::string text;
    for (int i = 1; i < depth; ++i)
        text += "<plus><ident>a</ident>";
    text += "<ident>b</ident>";
    for (int i = 1; i < depth; ++i)
        text += "</plus>";
    return text;
}

TEST(ContentReader, EveryMessageOfABadDocument)
{
    struct Case
    {
        std::string body;
        Change change;
        wchar const *templ;
        std::string message;
        std::string before = "";  // what is reported before the failure
    };
    std::vector<Case> const cases = {
        {"<chr nm=\"alpha\"/>", Change::none, nullptr, "illegal <chr>\n"},
        {"<ident>a<ident>b</ident></ident>", Change::none, nullptr, "illegal <ident>\n"},
        {"<str>a<num>1</num></str>", Change::none, nullptr, "illegal <num>\n"},
        {"<num>1<str>a</str></num>", Change::none, nullptr, "illegal <str>\n"},
        // A setup file that makes "cn", "ci" or "plus" something else.
        {"<ident>x</ident>", Change::plain, u"ci", "illegal <str> or <ident>\n"},
        {"<plus sgn=\"+\"><ident>a</ident></plus>", Change::plain, u"plus", "plus@sgn missing or empty\n"},
        // A token has no place for a child.
        {"<ident>a<plh/></ident>", Change::none, nullptr, "illegal element\n"},
        {"<plus><tmp/></plus>", Change::none, nullptr, "new node expected\n"},
        {"<ident>a<chr/></ident>", Change::none, nullptr, "chr@nm missing\n"},
        {"<ident><chr nm=\"\xc3\xa9t\xc3\xa9\"/></ident>", Change::none, nullptr, "chr@nm '\xc3\xa9t\xc3\xa9' unknown\n"},
        {"<expr><plh/></expr>", Change::none, nullptr, "expr@tmp missing\n"},
        {"<tab rows=\"1\"/>", Change::none, nullptr, "tab@tmp missing\n"},
        {"<tab tmp=\"matrix\"/>", Change::none, nullptr, "tab@tmp 'matrix' unknown\n"},
        {"<iacc><ident>x</ident></iacc>", Change::none, nullptr, "iacc@nm missing\n"},
        {"<iacc nm=\"hat\"><ident>x</ident></iacc>", Change::none, nullptr, "iacc@nm 'hat' unknown\n"},
        {"<ident>x</ident>", Change::drop, u"ci", "template 'ci' missing\n"},
        {"<plus/>", Change::drop, u"plus", "template 'plus' missing\n"},
        {"<plus><plh/></plus>", Change::drop, u"dummy", "template 'placeholder' missing\n"},
        // An unknown expression template is reported and stood in for; here the stand-in is missing.
        {"<expr tmp=\"frac\"/>", Change::none, nullptr, "template 'missingTemplate' missing\n",
         "expr@tmp 'frac' unknown\n"},
        // Nesting beyond the depth every walk of a formula can go down.
        {nested(MathEditContentHandler::max_depth + 1), Change::none, nullptr, "elements nested more than 2500 deep\n"},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.body);
        TemplateTable table(nullptr);
        if (c.templ != nullptr)
            change_template(table, c.change, c.templ);
        CaptureCerr capture;
        EXPECT_THROW(read_math_content(table, math_doc(c.body)), BadMathEditContent);
        EXPECT_EQ(c.before + "Error in math: " + c.message, capture.text());
    }
}

// An end tag that no well-formed document puts out of order reaches the handler directly; what was
// built before a failure stays until cleanup.
TEST(ContentReader, EndTagsOutOfOrder)
{
    TemplateTable table(nullptr);
    MathEditContentHandler handler(table);
    auto id = [&handler](char const *name) {
        int space = -1, element = -1;
        EXPECT_TRUE(handler.elementName(MathEditContentHandler::nameSpace(), name, space, element));
        EXPECT_EQ(1, space);
        return element;
    };
    CaptureCerr capture;
    EXPECT_THROW(handler.endElement(1, id("plus")), BadMathEditContent);
    EXPECT_EQ("Error in math: illegal <plus>\n", capture.text());
    handler.reset();
    std::vector<Xml::Attribute> none;
    handler.startElement(1, id("plus"), none);
    EXPECT_THROW(handler.startElement(1, id("chr"), none), BadMathEditContent);
    Held<MathRootNode> kept(handler.node());
    EXPECT_NE(nullptr, kept.get());
    handler.cleanup();
    EXPECT_EQ(nullptr, handler.node());
}

// Documents read and written back, with what the reader reported on the way: names outside the
// format are skipped with their content, white space counts inside tokens only, the signs meet the
// operands at the end of the sum, the second top-level node wins.
TEST(ContentReader, DocumentsWrittenBack)
{
    struct Case
    {
        std::string doc;
        std::string written;  // the body
        std::string errors;
    };
    std::vector<Case> const cases = {
        {math_doc("<q:w xmlns:q=\"urn:x\"><num>1</num></q:w><ident>y</ident>"), "<ident>y</ident>",
         "unknown namespace 'urn:x'"},
        {math_doc("<bogus><num>1</num></bogus><ident>y</ident>"), "<ident>y</ident>",
         "unknown element or attribute 'bogus'"},
        {math_doc("\n <plus sgn=\"+-\">\n  <ident> a </ident> <ident>b</ident>\n </plus>\n"),
         "<plus sgn=\"+-\"><ident> a </ident><ident>b</ident></plus>", ""},
        // One sign for two operands: the second keeps the plus it got when it was appended.
        {math_doc("<plus sgn=\"-\"><ident>a</ident><ident>b</ident></plus>"),
         "<plus sgn=\"-+\"><ident>a</ident><ident>b</ident></plus>", ""},
        {math_doc("<isub ipop=\"true\"><ident>x</ident><num ipop=\"0\">1</num></isub>"),
         "<isub ipop=\"1\"><ident>x</ident><num>1</num></isub>", ""},
        // A character that stands for nothing; an extension fence that writes as itself.
        {math_doc("<ident>a<chr nm=\"InvisibleTimes\"/><chr nm=\"lpar\"/></ident>"), "<ident>a(</ident>", ""},
        {math_doc("<expr tmp=\"frac\"><ident>a</ident><num>2</num></expr>"),
         "<expr tmp=\"missingTemplate\"><ident>a</ident><num>2</num></expr>", "expr@tmp 'frac' unknown\n"},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.doc);
        TemplateTable table(nullptr);
        table.add_template(plain_template(&table, u"missingTemplate"));
        auto const r = read_back(table, c.doc);
        EXPECT_EQ(c.written.empty() ? "" : math_doc(c.written), r.first);
        EXPECT_EQ(c.errors, r.second);
    }
    TemplateTable table(nullptr);
    EXPECT_EQ(nullptr, read_math_content(table, "<math><ident>y</math>"));  // not well-formed
    // Nested as deep as a formula may be: read whole.
    MathRootNode *deep = read_math_content(table, math_doc(nested(MathEditContentHandler::max_depth)));
    ASSERT_NE(nullptr, deep);
    deep->ref();
    deep->unref();
}

// Text before a named character is flushed as a run of its own, so the runs stay in order.
// alpha and pi are the Symbol font's 'a' (0x61) and 'p' (0x70).
TEST(ContentReader, NamedCharactersSplitTheRuns)
{
    using Runs = std::vector<std::pair<MathString::Font, wstring>>;
    std::pair<std::string, Runs> const cases[] = {
        {"<num>2<chr nm=\"pi\"/></num>", {{MathString::f_text, u"2"}, {MathString::f_symbol, u"p"}}},
        {"<ident>a<chr nm=\"alpha\"/>b</ident>",
         {{MathString::f_text, u"a"}, {MathString::f_symbol, u"a"}, {MathString::f_text, u"b"}}},
    };
    for (auto const &c : cases) {
        SCOPED_TRACE(c.first);
        TemplateTable table(nullptr);
        Held<MathRootNode> root(read_math_content(table, math_doc(c.first)));
        MathString const &text = root->child()->text();
        Runs runs;
        for (std::size_t i = 0; i < text.run_count(); ++i)
            runs.emplace_back(text.run_font(i), text.chars().substr(text.run_start(i), text.run_end(i) - text.run_start(i)));
        EXPECT_EQ(c.second, runs);
        EXPECT_EQ(math_doc(c.first), write_math_content(*root));
    }
}

// readonly counts only as one of four words; the strings of math are kept when not empty.
TEST(ContentReader, RootSettings)
{
    // value, whether the root has a setting of its own, the setting
    std::tuple<char const *, bool, bool> const cases[] = {
        {"true", true, true}, {"0", true, false}, {"TRUE", false, false}, {"", false, false},
    };
    TemplateTable table(nullptr);
    for (auto const &[value, own, read_only] : cases) {
        Held<MathRootNode> root(read_math_content(table, std::string("<math readonly=\"") + value + "\"><plh/></math>"));
        EXPECT_EQ(!own, root->inherit_read_only()) << value;
        EXPECT_EQ(read_only, root->read_only()) << value;
    }
    Held<MathRootNode> root(read_math_content(table, "<math kxType=\"\" alt=\"a &amp; &#955;\"><plh/></math>"));
    EXPECT_EQ(nullptr, root->kxType());
    EXPECT_EQ(u"a & \u03bb", wstring(root->alt_text()));
}

// Tables: rows and cols are whole numbers with white space allowed around them, anything else
// giving 0; the line strings become the node's attributes.
TEST(ContentReader, Tables)
{
    std::pair<char const *, std::size_t> const cases[] = {
        {"\t12\n", 12}, {"3x", 0}, {"-2", 0}, {"2000000", 0},
    };
    TemplateTable table(nullptr);
    table.add_template(plain_template(&table, u"matrix"));
    for (auto const &c : cases) {
        SCOPED_TRACE(c.first);
        Held<MathRootNode> root(read_math_content(
            table, math_doc(std::string("<tab tmp=\"matrix\" rows=\"") + c.first +
                            "\" cols=\"1\" rowl=\"solid\" coll=\"dashed\" frl=\"solid\"><num>1</num></tab>")));
        auto *tab = dynamic_cast<MathTableNode *>(root->child());
        ASSERT_NE(nullptr, tab);
        EXPECT_EQ(c.second, tab->n_rows());
        EXPECT_EQ(u"dashed", wstring(tab->col_lines()));
    }
}

// Numbers are held with the user's separator: the first point of a number's text becomes it.
TEST(ContentReader, DecimalSeparatorOfNumbers)
{
    std::tuple<wchar, std::string, wstring> const cases[] = {
        {u',', "<num>1.2.3</num>", u"1,2.3"}, {u'.', "<num>3.25</num>", u"3.25"},
        {u',', "<str>3.25</str>", u"3.25"},
    };
    TemplateTable table(nullptr);
    for (auto const &[separator, body, held] : cases) {
        MathEditContentHandler handler(table);
        handler.number_separator(separator);
        Xml::Parser parser(&handler);
        std::string const doc = math_doc(body);
        ASSERT_TRUE(parser.parse(doc.data(), static_cast<int>(doc.size()), true));
        Held<MathRootNode> root(handler.node());
        EXPECT_EQ(held, root->child()->text().chars()) << body;
    }
}
