// tavi-render reading LaTeX and MathML: the language told by the text or given with --from, and the
// importer's reason, naming the input, when it refuses.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tools/render_tool.h"

namespace {

using namespace TaviTest;

TEST(RenderImport, LanguagesByTextOrByOption)
{
    struct Case
    {
        std::vector<std::string> arguments;
        std::string input;
        int exit_code;
        std::string output;  // the whole standard output
        std::string error;   // a line of standard error
    };
    std::vector<Case> const cases = {
        {{"-f", "latex"}, "\\frac{a}{b} + \\sqrt[3]{x}", 0, "\\frac{a}{b} + \\sqrt[3]{x}\n", ""},
        {{"--from", "latex", "-f", "text"}, "$x^2$", 0, "x^2\n", ""},
        {{"-f", "text"}, "<math><mi>x</mi><mo>+</mo><mn>1</mn></math>", 0, "x + 1\n", ""},
        {{"--from=mathml", "-f", "text"}, "<math><apply><plus/><ci>x</ci><cn>1</cn></apply></math>", 0, "x + 1\n", ""},
        {{"-f", "text"}, "x + \\foo", 1, "", "tavi-render: <stdin>: Unknown LaTeX command \\foo at column 5\n"},
        {{"--from", "mathml", "-f", "text"}, "x + 1", 1, "", "tavi-render: <stdin>: Bad XML: syntax error at line 1, column 1\n"},
        {{"--from", "tex"}, "x", 2, "", "tavi-render: unknown input language 'tex' (content, latex, mathml)\n"},
        {{"--from", "latex", "--output-dir", "out", "a.tex"}, "", 2, "",
         "tavi-render: --from latex or mathml reads one formula: a batch reads the content format\n"},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.input);
        RenderRun const run = run_render(c.arguments, c.input);
        if (!run.started)
            GTEST_SKIP() << "tavi-render was not built";
        EXPECT_EQ(c.exit_code, run.exit_code) << run.errors;
        EXPECT_EQ(c.output, run.output);
        if (!c.error.empty()) {
            EXPECT_EQ(0u, run.errors.rfind(c.error, 0)) << run.errors;
        }
    }
}

}  // namespace
