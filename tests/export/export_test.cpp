// The export writers: every example formula in presentation and content MathML that parses as XML,
// validates against the MathML 3 DTD and is read by MathJax (when those are installed), LaTeX of
// every example whose braces and environments balance and that needs no fallback, hand-written
// LaTeX and content MathML for a few examples, the pattern grammar of the setup file row by row, and
// the MathML and LaTeX that a copy puts on the system clipboard.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <expat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "support/external_tools.h"
#include "support/math_fixture.h"
#include "tavi/export/contentmathmlwriter.h"
#include "tavi/export/latexwriter.h"
#include "tavi/export/mathmlwriter.h"
#include "tavi/interchange/clipboard.h"
#include "tavi/interchange/content.h"
#include "tavi/interchange/datasource.h"
#include "tavi/interchange/hostingframe.h"
#include "tavi/kxt/stream.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/templatetable.h"
#include "tavi/qt/qt_hostingframe.h"
#include "tavi/qt/qt_systemclipboard.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

std::string const examples_dir = std::string(TAVI_SOURCE_DIR) + "/data/examples";
std::string const mathml3_dtd = "/usr/share/xml/w3c-sgml-lib/schema/dtd/REC-MathML3-20101021/mathml3.dtd";

struct Example
{
    std::string name;  // the file name without ".xml"
    std::string text;
};

std::vector<Example> const &examples()
{
    static std::vector<Example> const all = [] {
        std::vector<Example> found;
        for (auto const &entry : std::filesystem::directory_iterator(examples_dir))
            if (entry.path().extension() == ".xml")
                found.push_back({entry.path().stem().string(), read_whole_file(entry.path().string())});
        std::sort(found.begin(), found.end(), [](Example const &a, Example const &b) { return a.name < b.name; });
        return found;
    }();
    return all;
}

std::string example_text(std::string const &name)
{
    for (Example const &e : examples())
        if (e.name == name)
            return e.text;
    ADD_FAILURE() << "no example " << name;
    return std::string();
}

// One formula's three exports.
struct Exports
{
    std::string mathml;
    std::string cmml;
    std::string latex;
};

Exports export_formula(TemplateTable &table, std::string const &content)
{
    MathRootNode *read = nullptr;
    try {
        read = read_math_content(table, content);
    } catch (...) {
    }
    if (read == nullptr) {
        ADD_FAILURE() << "does not read: " << content;
        return Exports();
    }
    Held<MathRootNode> root(read);
    return {write_mathml(*root), write_content_mathml(*root), write_latex(*root)};
}

class ExportExamples : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(read_default_setup(table)); }
    Exports exported(std::string const &name) { return export_formula(table, example_text(name)); }

    TemplateTable table{nullptr};
};

bool parses_as_xml(std::string const &text)
{
    XML_Parser parser = XML_ParserCreate(nullptr);
    bool const ok = XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1) == XML_STATUS_OK;
    XML_ParserFree(parser);
    return ok;
}

// Braces and \begin ... \end pairs close in the order they open.
bool balanced(std::string const &tex)
{
    std::vector<std::string> open;
    for (std::size_t i = 0; i < tex.size(); ++i) {
        if (tex[i] == '\\' && i + 1 < tex.size() && (tex[i + 1] == '{' || tex[i + 1] == '}' || tex[i + 1] == '\\'))
            ++i;
        else if (tex[i] == '{')
            open.push_back("{");
        else if (tex[i] == '}' && (open.empty() || open.back() != "{"))
            return false;
        else if (tex[i] == '}')
            open.pop_back();
        else if (tex.compare(i, 7, "\\begin{") == 0 || tex.compare(i, 5, "\\end{") == 0) {
            std::size_t const start = tex.find('{', i) + 1;
            std::string const env = tex.substr(start, tex.find('}', start) - start);
            if (tex[i + 1] == 'b')
                open.push_back(env);
            else if (open.empty() || open.back() != env)
                return false;
            else
                open.pop_back();
            i = tex.find('}', start);
        }
    }
    return open.empty();
}

TEST_F(ExportExamples, EveryExampleIsWellFormedInEachFormat)
{
    ASSERT_GE(examples().size(), 40u);
    for (Example const &e : examples()) {
        Exports const x = export_formula(table, e.text);
        EXPECT_TRUE(parses_as_xml(x.mathml)) << e.name << "\n" << x.mathml;
        EXPECT_TRUE(parses_as_xml(x.cmml)) << e.name << "\n" << x.cmml;
        EXPECT_EQ(x.mathml.rfind("<math xmlns=\"http://www.w3.org/1998/Math/MathML\"", 0), 0u) << e.name;
        // A character written as the text of its entity form ("&amp;OverBar;") has lost its meaning.
        EXPECT_EQ(x.mathml.find("&amp;"), std::string::npos) << e.name << "\n" << x.mathml;
        EXPECT_TRUE(balanced(x.latex)) << e.name << "\n" << x.latex;
        // Every kind of the default setup has a pattern: nothing falls back to a call.
        EXPECT_EQ(x.latex.find("\\operatorname"), std::string::npos) << e.name << "\n" << x.latex;
    }
}

// Each example's presentation MathML into a file of its own, for MathJax.
std::vector<std::string> write_examples(TemplateTable &table)
{
    std::vector<std::string> paths;
    for (Example const &e : examples()) {
        paths.push_back(artefact_path("export", e.name + ".mml"));
        EXPECT_TRUE(write_text_file(paths.back(), export_formula(table, e.text).mathml));
    }
    return paths;
}

// The DTD is read once for all examples: their MathML goes into one math element, the content of
// example i on line i + 2, which the checker's messages name.
TEST_F(ExportExamples, MathmlValidatesAgainstTheMathml3Dtd)
{
    std::string const xmllint = find_tool("xmllint");
    if (xmllint.empty() || !std::filesystem::exists(mathml3_dtd))
        GTEST_SKIP() << "xmllint (libxml2-utils) or the MathML 3 DTD (w3c-sgml-lib) is not installed";
    for (bool content : {false, true}) {
        std::string all = "<math xmlns=\"http://www.w3.org/1998/Math/MathML\">\n";
        std::string lines;
        for (std::size_t i = 0; i < examples().size(); ++i) {
            Exports const x = export_formula(table, examples()[i].text);
            std::string const &math = content ? x.cmml : x.mathml;
            std::size_t const start = math.find('>') + 1;
            all += math.substr(start, math.rfind("</math>") - start) + "\n";
            lines += std::to_string(i + 2) + " " + examples()[i].name + "\n";
        }
        std::string const path = artefact_path("export", content ? "content.xml" : "presentation.xml");
        ASSERT_TRUE(write_text_file(path, all + "</math>\n"));
        ToolRun const run = run_tool(xmllint, {"--noout", "--nonet", "--dtdvalid", mathml3_dtd, path});
        ASSERT_TRUE(run.started);
        EXPECT_EQ(run.exit_code, 0) << run.errors << "Lines of " << path << ":\n" << lines;
    }
}

TEST_F(ExportExamples, MathJaxReadsEveryExample)
{
    char const *given = std::getenv("TAVI_MATHJAX_DIR");
    std::string const prefix = given != nullptr ? given : std::string(TAVI_TEST_OUTPUT_DIR) + "/../mathjax";
    std::string const node = find_tool("node");
    if (node.empty() || !std::filesystem::exists(prefix + "/node_modules/mathjax-full/js/mathjax.js"))
        GTEST_SKIP() << "node or MathJax is not installed: scripts/install-mathjax.sh BUILD_DIR puts "
                        "mathjax-full into BUILD_DIR/mathjax (or set TAVI_MATHJAX_DIR)";
    std::vector<std::string> arguments = {std::string(TAVI_SOURCE_DIR) + "/tests/export/mathjax_svg.js", prefix};
    for (std::string const &path : write_examples(table))
        arguments.push_back(path);
    ToolRun const run = run_tool(node, arguments);
    ASSERT_TRUE(run.started);
    EXPECT_EQ(run.exit_code, 0) << run.output << run.errors;
    EXPECT_EQ(static_cast<std::size_t>(std::count(run.output.begin(), run.output.end(), '\n')), examples().size());
}

struct ExpectedExport
{
    char const *example;
    char const *expected;
};

TEST_F(ExportExamples, LatexOfSomeExamples)
{
    ExpectedExport const rows[] = {
        {"quadratic-formula",       "x = \\frac{-b \\pm \\sqrt{b^{2} - 4 a c}}{2 a}"},
        {"binomial-square",         "(a + b)^{2} = a^{2} + 2 a b + b^{2}"},
        {"determinant",             "\\begin{vmatrix} a & b & c \\\\ d & e & f \\\\ g & h & i \\end{vmatrix} = "
                                    "a (e i - f h) - b (d i - f g) + c (d h - e g)"},
        {"number-sets",             "\\mathbb{N} \\subset \\mathbb{Z} \\subset \\mathbb{Q} \\subset \\mathbb{R} "
                                    "\\subset \\mathbb{C}"},
        {"magic-square-with-lines", "\\begin{array}{|c|c|c|} \\hline 2 & 7 & 6 \\\\ \\hline 9 & 5 & 1 \\\\ \\hline "
                                    "4 & 3 & 8 \\\\ \\hline \\end{array}"},
        {"matrix-3x3-rotation",     "R_{z}(\\theta) = \\begin{pmatrix} \\cos \\theta & -\\sin \\theta & 0 \\\\ "
                                    "\\sin \\theta & \\cos \\theta & 0 \\\\ 0 & 0 & 1 \\end{pmatrix}"},
        {"scientific-notation",     "N_{A} \\approx 6.022 \\cdot 10^{23} \\cdot \\mathit{mol}^{-1}"},
        {"limit-of-e",              "e = \\lim_{n \\to \\infty} \\left(1 + \\frac{1}{n}\\right)^{n}"},
    };
    for (ExpectedExport const &row : rows)
        EXPECT_EQ(exported(row.example).latex, row.expected) << row.example;
}

TEST_F(ExportExamples, ContentMathmlOfSomeExamples)
{
    std::string const math = "<math xmlns=\"http://www.w3.org/1998/Math/MathML\">";
    ExpectedExport const rows[] = {
        {"mass-energy",   "<apply><eq/><ci>E</ci><apply><times/><ci>m</ci><apply><power/><ci>c</ci><cn>2</cn>"
                          "</apply></apply></apply>"},
        {"sum-display",   "<apply><eq/><apply><sum/><bvar><ci>k</ci></bvar><lowlimit><cn>1</cn></lowlimit>"
                          "<uplimit><ci>n</ci></uplimit><ci>k</ci></apply><apply><divide/><apply><times/><ci>n</ci>"
                          "<apply><plus/><ci>n</ci><cn>1</cn></apply></apply><cn>2</cn></apply></apply>"},
        {"intervals",     "<apply><eq/><apply><setdiff/><interval closure=\"closed\"><cn>0</cn><cn>1</cn></interval>"
                          "<set><cn>0</cn></set></apply><interval closure=\"open-closed\"><cn>0</cn><cn>1</cn>"
                          "</interval></apply>"},
        {"piecewise-abs", "<apply><eq/><apply><abs/><ci>x</ci></apply><piecewise><piece><ci>x</ci><apply><geq/>"
                          "<ci>x</ci><cn>0</cn></apply></piece><piece><apply><minus/><ci>x</ci></apply><apply><lt/>"
                          "<ci>x</ci><cn>0</cn></apply></piece></piecewise></apply>"},
        {"euler-identity", "<apply><eq/><apply><plus/><apply><exp/><apply><times/><ci>i</ci>"
                           "<ci>π</ci></apply></apply><cn>1</cn></apply><cn>0</cn></apply>"},
        {"epsilon-delta",  "<apply><forall/><bvar><ci>ε</ci></bvar><condition><apply><gt/><ci>ε</ci><cn>0</cn>"
                           "</apply></condition><apply><exists/><bvar><ci>δ</ci></bvar><condition><apply><gt/>"
                           "<ci>δ</ci><cn>0</cn></apply></condition><apply><implies/><apply><lt/><apply><abs/>"
                           "<apply><minus/><ci>x</ci><ci>a</ci></apply></apply><ci>δ</ci></apply><apply><lt/>"
                           "<apply><abs/><apply><minus/><apply><ci>f</ci><ci>x</ci></apply>"
                           "<apply><ci>f</ci><ci>a</ci></apply></apply></apply><ci>ε</ci>"
                           "</apply></apply></apply></apply>"},
    };
    for (ExpectedExport const &row : rows)
        EXPECT_EQ(exported(row.example).cmml, math + row.expected + "</math>") << row.example;
}

// A copied formula goes onto the system clipboard as MathML and LaTeX besides its own formats; text
// does not.
TEST_F(ExportExamples, CopyOffersMathmlAndLatex)
{
    HostingFrame *const old_frame = HostingFrame::install(&install_system_clipboard());
    Held<MathRootNode> root(read_math_content(table, example_text("quadratic-formula")));
    Clipboard::object().data(new MathNodeDataSource(root->child()));
    QMimeData const *mime = QGuiApplication::clipboard()->mimeData();
    ASSERT_NE(nullptr, mime);
    EXPECT_EQ(mime->data("application/mathml+xml").toStdString(), write_mathml(root->child()));
    EXPECT_EQ(mime->data("text/x-latex").toStdString(), "x = \\frac{-b \\pm \\sqrt{b^{2} - 4 a c}}{2 a}");
    EXPECT_EQ(mime->text().toStdString(), "x = (-b ± √(b^2 - 4ac))/(2a)");
    EXPECT_TRUE(mime->hasFormat("x-application/kalex-math-edit-content"));

    Clipboard::object().data(new TextSource(u"ab"));
    mime = QGuiApplication::clipboard()->mimeData();
    ASSERT_NE(nullptr, mime);
    EXPECT_FALSE(mime->hasFormat("application/mathml+xml"));
    EXPECT_FALSE(mime->hasFormat("text/x-latex"));
    HostingFrame::install(old_frame);
}

// A setup of two plain kinds, "f" with the patterns of the row and "g" without, and a formula.
struct PatternRow
{
    char const *attributes;  // on the content element of "f"
    std::string formula;     // the node inside <math>
    std::string Exports::*format;
    char const *expected;    // inside <math> for the MathML forms
};

std::string const a = "<ident>a</ident>";
std::string const b = "<ident>b</ident>";

TEST(ExportPatterns, SlotsAndFallbacks)
{
    std::string const f_ab = "<expr tmp=\"f\">" + a + b + "</expr>";
    std::string const f_g = "<expr tmp=\"f\"><expr tmp=\"g\">" + a + b + "</expr></expr>";
    std::string const sub = "<isub>" + a + b + "</isub>";
    std::vector<PatternRow> const rows = {
        {"latex=\"[#2*{;}]\"",             "<expr tmp=\"f\">" + a + b + a + "</expr>", &Exports::latex, "[b;a]"},
        {"latex=\"#1*\"",                  f_ab,  &Exports::latex, "ab"},
        {"latex=\"#1.2\"",                 f_g,   &Exports::latex, "b"},
        {"latex=\"##1 #2 \\alpha#1\"",     f_ab,  &Exports::latex, "#1 b \\alpha a"},
        // A slot for a child that is not there, a grandchild of an atom, an unclosed separator:
        {"latex=\"#3\"",                   f_ab,  &Exports::latex, "\\operatorname{f}\\left(a, b\\right)"},
        {"latex=\"#1.1\"",                 f_ab,  &Exports::latex, "\\operatorname{f}\\left(a, b\\right)"},
        {"latex=\"#1*{,\"",                f_ab,  &Exports::latex, "\\operatorname{f}\\left(a, b\\right)"},
        {"cmml=\"&lt;list>#1*&lt;/list>\"", f_ab, &Exports::cmml, "<list><ci>a</ci><ci>b</ci></list>"},
        {"latex=\"#1.1#|#2#|#1\"",         f_ab,          &Exports::latex, "b"},
        {"latex=\"##|#1\"",               f_ab,          &Exports::latex, "#|a"},
        {"",                               f_ab,  &Exports::cmml,
         "<apply><csymbol>f</csymbol><ci>a</ci><ci>b</ci></apply>"},
        {"mathml=\"&lt;mi>F&lt;/mi>#2\"",  f_ab,  &Exports::mathml, "<mrow><mi>F</mi><mi>b</mi></mrow>"},
        // The built-in kinds have forms of their own, which a changecontent replaces.
        {"",                               sub,   &Exports::latex, "a_{b}"},
    };
    for (PatternRow const &row : rows) {
        std::string const setup = std::string("<mathsetup><content id=\"f\" arity=\"1*\" ") + row.attributes +
                                  "/><content id=\"g\" arity=\"2\"/></mathsetup>";
        TemplateTable table(nullptr);
        Kxt::KTmemoryStream stream(setup.data(), setup.size());
        ASSERT_TRUE(table.init(stream)) << setup;
        std::string const content =
            std::string("<math xmlns=\"http://www.tavi-math.org/xml/MathEditContent\">") + row.formula + "</math>";
        std::string const out = export_formula(table, content).*row.format;
        std::string const math = row.format == &Exports::cmml ? "<math xmlns=\"http://www.w3.org/1998/Math/MathML\">"
                                 : row.format == &Exports::mathml
                                     ? "<math xmlns=\"http://www.w3.org/1998/Math/MathML\" display=\"block\">"
                                     : "";
        std::string const end = math.empty() ? "" : "</math>";
        EXPECT_EQ(out, math + row.expected + end) << row.attributes << " on " << row.formula;
    }
}

TEST(ExportPatterns, ChangecontentGivesABuiltInKindAnotherForm)
{
    std::string const setup =
        "<mathsetup><changecontent id=\"subscript\" latex=\"#1[#2]\" cmml=\"&lt;ci>#1#2&lt;/ci>\"/></mathsetup>";
    TemplateTable table(nullptr);
    Kxt::KTmemoryStream stream(setup.data(), setup.size());
    ASSERT_TRUE(table.init(stream));
    Exports const x = export_formula(
        table, "<math xmlns=\"http://www.tavi-math.org/xml/MathEditContent\"><isub>" + a + b + "</isub></math>");
    EXPECT_EQ(x.latex, "a[b]");
    EXPECT_EQ(x.cmml, "<math xmlns=\"http://www.w3.org/1998/Math/MathML\"><ci><ci>a</ci><ci>b</ci></ci></math>");
}

}  // namespace
