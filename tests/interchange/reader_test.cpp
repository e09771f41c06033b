// Tests of the content reader: every message it can give, through real documents where one can
// reach it, and the cases of namespaces, tokens, signs, tables and root settings.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "interchange/content_test_util.h"
#include "support/math_fixture.h"
#include "tavi/interchange/content.h"
#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/kxt/utf.h"
#include "tavi/kxt/xmlparser.h"
#include "tavi/math/mathexprnode.h"
#include "tavi/math/mathnumbernode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathtablenode.h"

using namespace Tavi;
using namespace TaviTest;

namespace {

// The document read with the built-in table, and what it wrote to the error stream.
struct Reading
{
    std::unique_ptr<Held<MathRootNode>> root;
    std::string errors;
    std::string written;  // the root written back; empty without a root
};

Reading read(TemplateTable &table, std::string const &text)
{
    Reading r;
    CaptureCerr capture;
    r.root = std::make_unique<Held<MathRootNode>>(read_math_content(table, text));
    r.errors = capture.text();
    if (r.root->get() != nullptr)
        r.written = write_math_content(**r.root);
    return r;
}

}  // namespace

// Each refusal writes "Error in math: " and its reason, and throws; nothing of the broken document
// is left behind (the sanitizer build sees leaks).
TEST(ContentReader, EveryMessageOfABadDocument)
{
    struct Case
    {
        std::string body;
        Change change;
        wchar const *templ;
        std::string message;
    };
    std::vector<Case> const cases = {
        {"<chr nm=\"alpha\"/>", Change::none, nullptr, "illegal <chr>\n"},
        {"<ident>a<ident>b</ident></ident>", Change::none, nullptr, "illegal <ident>\n"},
        {"<str>a<num>1</num></str>", Change::none, nullptr, "illegal <num>\n"},
        {"<num>1<str>a</str></num>", Change::none, nullptr, "illegal <str>\n"},
        // A setup file that makes "cn" or "ci" something without text.
        {"<num/>", Change::plain, u"cn", "illegal <num>\n"},
        {"<ident>x</ident>", Change::plain, u"ci", "illegal <str> or <ident>\n"},
        {"<plus sgn=\"+\"><ident>a</ident></plus>", Change::plain, u"plus", "plus@sgn missing or empty\n"},
        // A token has no place for a child.
        {"<ident>a<plh/></ident>", Change::none, nullptr, "illegal element\n"},
        {"<readonly/>", Change::none, nullptr, "new node expected\n"},
        {"<plus><tmp/></plus>", Change::none, nullptr, "new node expected\n"},
        {"<ident>a<chr/></ident>", Change::none, nullptr, "chr@nm missing\n"},
        {"<ident><chr nm=\"nosuch\"/></ident>", Change::none, nullptr, "chr@nm 'nosuch' unknown\n"},
        {"<ident><chr nm=\"\xc3\xa9t\xc3\xa9\"/></ident>", Change::none, nullptr, "chr@nm '\xc3\xa9t\xc3\xa9' unknown\n"},
        {"<expr><plh/></expr>", Change::none, nullptr, "expr@tmp missing\n"},
        {"<tab rows=\"1\"/>", Change::none, nullptr, "tab@tmp missing\n"},
        {"<tab tmp=\"matrix\"/>", Change::none, nullptr, "tab@tmp 'matrix' unknown\n"},
        {"<iacc><ident>x</ident></iacc>", Change::none, nullptr, "iacc@nm missing\n"},
        {"<iacc nm=\"hat\"><ident>x</ident></iacc>", Change::none, nullptr, "iacc@nm 'hat' unknown\n"},
        {"<ident>x</ident>", Change::drop, u"ci", "template 'ci' missing\n"},
        {"<num>1</num>", Change::drop, u"cn", "template 'cn' missing\n"},
        {"<str>s</str>", Change::drop, u"string", "template 'string' missing\n"},
        {"<plus/>", Change::drop, u"plus", "template 'plus' missing\n"},
        {"<isub/>", Change::drop, u"subscript", "template 'subscript' missing\n"},
        {"<isup/>", Change::drop, u"superscript", "template 'superscript' missing\n"},
        {"<isubsup/>", Change::drop, u"subsupscript", "template 'subsupscript' missing\n"},
        {"<irow/>", Change::drop, u"joinsymb", "template 'joinsymb' missing\n"},
        {"<plus><plh/></plus>", Change::drop, u"dummy", "template 'placeholder' missing\n"},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.body);
        TemplateTable table(nullptr);
        if (c.templ != nullptr)
            change_template(table, c.change, c.templ);
        CaptureCerr capture;
        EXPECT_THROW(read_math_content(table, math_doc(c.body)), BadMathEditContent);
        EXPECT_EQ("Error in math: " + c.message, capture.text());
    }
}

// The one failure that doesn't end the reading reports the unknown name first; without a stand-in
// template the reading then ends after all.
TEST(ContentReader, UnknownExpressionTemplate)
{
    std::string const doc = math_doc("<expr tmp=\"frac\"><ident>a</ident><num>2</num></expr>");
    {
        TemplateTable table(nullptr);
        CaptureCerr capture;
        EXPECT_THROW(read_math_content(table, doc), BadMathEditContent);
        EXPECT_EQ("expr@tmp 'frac' unknown\nError in math: template 'missingTemplate' missing\n", capture.text());
    }
    TemplateTable table(nullptr);
    table.add_template(plain_template(&table, u"missingTemplate"));
    Reading const r = read(table, doc);
    EXPECT_EQ("expr@tmp 'frac' unknown\n", r.errors);
    ASSERT_NE(nullptr, r.root->get());
    MathNode *node = (*r.root)->child();
    EXPECT_EQ(u"missingTemplate", wstring(node->type_name()));
    EXPECT_EQ(2, node->count());
    EXPECT_EQ(math_doc("<expr tmp=\"missingTemplate\"><ident>a</ident><num>2</num></expr>"), r.written);

    // A name the table knows is used as it stands.
    table.add_template(plain_template(&table, u"frac"));
    Reading const known = read(table, doc);
    EXPECT_EQ("", known.errors);
    EXPECT_EQ(doc, known.written);
}

// Messages that no well-formed document reaches, since the parser pairs every end tag with its
// start: they are driven through the handler's callbacks.
TEST(ContentReader, EndTagsOutOfOrder)
{
    TemplateTable table(nullptr);
    MathEditContentHandler handler(table);
    char const *ns = MathEditContentHandler::nameSpace();
    auto id = [&](char const *name) {
        int space = -1, element = -1;
        EXPECT_TRUE(handler.elementName(ns, name, space, element));
        EXPECT_EQ(1, space);
        return element;
    };
    struct Case
    {
        char const *element;
        char const *message;
    };
    Case const cases[] = {
        {"plus", "illegal <plus>\n"},
        {"plh", "illegal element\n"},
        {"ident", "illegal <str> or <ident>\n"},
        {"str", "illegal <str> or <ident>\n"},
        {"num", "illegal <num>\n"},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.element);
        handler.reset();
        CaptureCerr capture;
        EXPECT_THROW(handler.endElement(1, id(c.element)), BadMathEditContent);
        EXPECT_EQ(std::string("Error in math: ") + c.message, capture.text());
    }

    // What was built before a failure stays until cleanup.
    handler.reset();
    std::vector<Xml::Attribute> none;
    handler.startElement(1, id("plus"), none);
    CaptureCerr capture;
    EXPECT_THROW(handler.startElement(1, id("chr"), none), BadMathEditContent);
    Held<MathRootNode> kept(handler.node());
    EXPECT_NE(nullptr, kept.get());
    handler.cleanup();
    EXPECT_EQ(nullptr, handler.node());
}

// Names: the format's namespace or none; anything else is reported and skipped with its content.
TEST(ContentReader, NamesAndNamespaces)
{
    struct Case
    {
        std::string doc;
        std::string written;
        std::string errors;
    };
    std::string const y = math_doc("<ident>y</ident>");
    std::vector<Case> const cases = {
        {"<math><ident>y</ident></math>", y, ""},
        {math_doc("<q:w xmlns:q=\"urn:x\"><num>1</num></q:w><ident>y</ident>"), y, "unknown namespace 'urn:x'"},
        {math_doc("<bogus><num>1</num></bogus><ident>y</ident>"), y, "unknown element or attribute 'bogus'"},
        {math_doc("<ident q:a=\"1\" xmlns:q=\"urn:x\">y</ident>"), y, "unknown namespace 'urn:x'"},
        {math_doc("<ident size=\"2\">y</ident>"), y, "unknown element or attribute 'size'"},
        // Two top-level nodes: the second replaces the first.
        {math_doc("<ident>a</ident><ident>y</ident>"), y, ""},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.doc);
        TemplateTable table(nullptr);
        Reading const r = read(table, c.doc);
        EXPECT_EQ(c.written, r.written);
        EXPECT_EQ(c.errors, r.errors);
    }
    TemplateTable table(nullptr);
    EXPECT_EQ(nullptr, read(table, math_doc("")).root->get());
    EXPECT_EQ(nullptr, read(table, "<math><ident>y</math>").root->get());  // not well-formed
}

// Documents read and written back: white space between elements is dropped and kept inside
// tokens, signs are matched to the operands at the end of the sum, accents map their names.
TEST(ContentReader, DocumentsWrittenBack)
{
    struct Case
    {
        std::string body;
        std::string written;
    };
    std::vector<Case> const cases = {
        {"\n <plus sgn=\"+-\">\n  <ident>a</ident> <ident>b</ident>\n </plus>\n",
         "<plus sgn=\"+-\"><ident>a</ident><ident>b</ident></plus>"},
        {"<ident> a b </ident>", "<ident> a b </ident>"},
        // One sign for two operands: the second keeps the plus it got when it was appended.
        {"<plus sgn=\"-\"><ident>a</ident><ident>b</ident></plus>",
         "<plus sgn=\"-+\"><ident>a</ident><ident>b</ident></plus>"},
        {"<plus><ident>a</ident></plus>", "<plus sgn=\"+\"><ident>a</ident></plus>"},
        {"<iacc nm=\"OverBar\"><ident>x</ident></iacc>", "<iacc nm=\"OverBar\"><ident>x</ident></iacc>"},
        {"<iacc nm=\"UnderBar\"><plh/></iacc>", "<iacc nm=\"UnderBar\"><plh /></iacc>"},
        {"<iacc nm=\"prime\"><ident>f</ident></iacc>", "<iacc nm=\"prime\"><ident>f</ident></iacc>"},
        {"<isub ipop=\"true\"><ident>x</ident><num ipop=\"0\">1</num></isub>",
         "<isub ipop=\"1\"><ident>x</ident><num>1</num></isub>"},
        {"<isup><ident ipop=\"yes\">x</ident><num>2</num></isup>", "<isup><ident>x</ident><num>2</num></isup>"},
        {"<irow><ident>a</ident><isubsup><ident>b</ident><num>1</num><plh ipop=\"1\"/></isubsup></irow>",
         "<irow><ident>a</ident><isubsup><ident>b</ident><num>1</num><plh ipop=\"1\" /></isubsup></irow>"},
        {"<str>a &amp; &lt;b&gt;</str>", "<str>a &amp; &lt;b&gt;</str>"},
        // Named characters: a symbol, a nothing, an extension character that writes as itself.
        {"<ident>a<chr nm=\"alpha\"/>b</ident>", "<ident>a<chr nm=\"alpha\"/>b</ident>"},
        {"<ident>a<chr nm=\"InvisibleTimes\"/></ident>", "<ident>a</ident>"},
        {"<ident><chr nm=\"lpar\"/></ident>", "<ident>(</ident>"},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.body);
        TemplateTable table(nullptr);
        Reading const r = read(table, math_doc(c.body));
        EXPECT_EQ("", r.errors);
        EXPECT_EQ(math_doc(c.written), r.written);
    }
}

// Text before a named character is flushed as a run of its own, so the runs stay in order.
TEST(ContentReader, NamedCharactersSplitTheRuns)
{
    struct Run
    {
        MathString::Font font;
        wstring text;
    };
    struct Case
    {
        std::string body;
        std::vector<Run> runs;
    };
    // alpha and pi are the Symbol font's 'a' (0x61) and 'p' (0x70).
    std::vector<Case> const cases = {
        {"<num>2<chr nm=\"pi\"/></num>", {{MathString::f_text, u"2"}, {MathString::f_symbol, u"p"}}},
        {"<ident>a<chr nm=\"alpha\"/>b</ident>",
         {{MathString::f_text, u"a"}, {MathString::f_symbol, u"a"}, {MathString::f_text, u"b"}}},
        {"<ident><chr nm=\"alpha\"/><chr nm=\"pi\"/></ident>", {{MathString::f_symbol, u"ap"}}},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.body);
        TemplateTable table(nullptr);
        Reading const r = read(table, math_doc(c.body));
        ASSERT_NE(nullptr, r.root->get());
        MathString const &text = (*r.root)->child()->text();
        ASSERT_EQ(c.runs.size(), text.run_count());
        for (std::size_t i = 0; i < c.runs.size(); ++i) {
            EXPECT_EQ(c.runs[i].font, text.run_font(i));
            EXPECT_EQ(c.runs[i].text, text.chars().substr(text.run_start(i), text.run_end(i) - text.run_start(i)));
        }
    }
}

// The root's settings: readonly only from the four words, the strings only when not empty.
TEST(ContentReader, RootSettings)
{
    struct Case
    {
        char const *value;
        bool own;
        bool read_only;
        char const *written;  // the attribute as written back
    };
    Case const cases[] = {
        {"1", true, true, " readonly=\"1\""},    {"true", true, true, " readonly=\"1\""},
        {"0", true, false, " readonly=\"0\""},   {"false", true, false, " readonly=\"0\""},
        {"yes", false, false, ""},               {"TRUE", false, false, ""},
        {"", false, false, ""},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.value);
        TemplateTable table(nullptr);
        Reading const r = read(table, "<math xmlns=\"" + content_namespace + "\" readonly=\"" + c.value +
                                          "\"><plh/></math>");
        ASSERT_NE(nullptr, r.root->get());
        EXPECT_EQ(!c.own, (*r.root)->inherit_read_only());
        EXPECT_EQ(c.read_only, (*r.root)->read_only());
        EXPECT_EQ("<math xmlns=\"" + content_namespace + "\"" + c.written + "><plh /></math>", r.written);
    }

    TemplateTable table(nullptr);
    std::string const doc = "<math xmlns=\"" + content_namespace +
                            "\" tex=\"\\frac{a}{b}\" style=\"s\" kxType=\"\" alt=\"a &amp; &#955;\" expr=\"e\">"
                            "<plh/></math>";
    MathEditContentHandler handler(table);
    Xml::Parser parser(&handler);
    ASSERT_TRUE(parser.parse(doc.data(), static_cast<int>(doc.size()), true));
    EXPECT_TRUE(handler.done());
    EXPECT_EQ(u"e", wstring(handler.expr()));
    EXPECT_EQ(u"\\frac{a}{b}", wstring(handler.tex()));
    Held<MathRootNode> root(handler.node());
    EXPECT_EQ(u"s", wstring(root->style()));
    EXPECT_EQ(nullptr, root->kxType());
    EXPECT_EQ(u"a & \u03bb", wstring(root->alt_text()));
    // Written in the order style, kxType, alt, expr, tex, escaped.
    EXPECT_EQ("<math xmlns=\"" + content_namespace +
                  "\" style=\"s\" alt=\"a &amp; \xce\xbb\" expr=\"e\" tex=\"\\frac{a}{b}\"><plh /></math>",
              write_math_content(*root));
    handler.reset();
    EXPECT_EQ(nullptr, handler.node());
    EXPECT_EQ(nullptr, handler.expr());
    EXPECT_FALSE(handler.done());
}

// Tables: the shape from rows and cols (white space around the number allowed, anything else
// giving 0), the line strings as attributes of the node.
TEST(ContentReader, Tables)
{
    struct Case
    {
        char const *rows;
        std::size_t expected;
    };
    Case const cases[] = {
        {" 3 ", 3}, {"3", 3}, {"\t12\n", 12}, {"3x", 0}, {"", 0}, {"-2", 0}, {"x3", 0}, {"2000000", 0},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.rows);
        TemplateTable table(nullptr);
        table.add_template(plain_template(&table, u"matrix"));
        Reading const r = read(table, math_doc(std::string("<tab tmp=\"matrix\" rows=\"") + c.rows +
                                               "\" cols=\"1\"><num>1</num></tab>"));
        ASSERT_NE(nullptr, r.root->get());
        auto *tab = dynamic_cast<MathTableNode *>((*r.root)->child());
        ASSERT_NE(nullptr, tab);
        EXPECT_EQ(c.expected, tab->n_rows());
        EXPECT_EQ(1u, tab->n_cols());
    }

    TemplateTable table(nullptr);
    table.add_template(plain_template(&table, u"matrix"));
    std::string const body = "<tab tmp=\"matrix\" rows=\"2\" cols=\"2\" rowl=\"solid\" coll=\"dashed\" "
                             "frl=\"solid\" ipop=\"1\"><num>1</num><num>2</num><ident>x</ident><plh/></tab>";
    Reading const r = read(table, math_doc(body));
    ASSERT_NE(nullptr, r.root->get());
    auto *tab = dynamic_cast<MathTableNode *>((*r.root)->child());
    ASSERT_NE(nullptr, tab);
    EXPECT_EQ(u"solid", wstring(tab->row_lines()));
    EXPECT_EQ(u"dashed", wstring(tab->col_lines()));
    EXPECT_EQ(u"solid", wstring(tab->frame_lines()));
    EXPECT_EQ(4, tab->count());
    EXPECT_TRUE(tab->ip_operand());
    EXPECT_EQ(math_doc("<tab tmp=\"matrix\" rows=\"2\" cols=\"2\" rowl=\"solid\" coll=\"dashed\" frl=\"solid\" "
                       "ipop=\"1\"><num>1</num><num>2</num><ident>x</ident><plh /></tab>"),
              r.written);
}

// Numbers are held with the user's separator: the first point of the text read becomes it.
TEST(ContentReader, DecimalSeparatorOfNumbers)
{
    struct Case
    {
        wchar separator;
        std::string text;
        wstring held;
    };
    Case const cases[] = {
        {u',', "3.25", u"3,25"}, {u',', "1.2.3", u"1,2.3"}, {u',', "12", u"12"}, {u'.', "3.25", u"3.25"},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.text);
        TemplateTable table(nullptr);
        MathEditContentHandler handler(table);
        handler.number_separator(c.separator);
        Xml::Parser parser(&handler);
        std::string const doc = math_doc("<num>" + c.text + "</num>");
        ASSERT_TRUE(parser.parse(doc.data(), static_cast<int>(doc.size()), true));
        Held<MathRootNode> root(handler.node());
        EXPECT_EQ(c.held, root->child()->text().chars());
    }
    // Identifiers and strings keep their points.
    TemplateTable table(nullptr);
    MathEditContentHandler handler(table);
    handler.number_separator(u',');
    Xml::Parser parser(&handler);
    std::string const doc = math_doc("<str>3.25</str>");
    ASSERT_TRUE(parser.parse(doc.data(), static_cast<int>(doc.size()), true));
    Held<MathRootNode> root(handler.node());
    EXPECT_EQ(u"3.25", root->child()->text().chars());
}
