// tavi-render's text formats: the formula written as presentation MathML, content MathML, LaTeX or
// linear text, to standard output, to a file whose suffix names the format, and into a batch's folder.
#include <gtest/gtest.h>

#include <QFile>

#include <string>
#include <vector>

#include "tools/render_tool.h"

namespace {

using namespace TaviTest;

std::string const formula =
    "<math xmlns=\"http://www.tavi-math.org/xml/MathEditContent\"><expr tmp=\"eq\"><ident>E</ident>"
    "<expr tmp=\"implicit_times\"><ident>m</ident><expr tmp=\"power\"><ident>c</ident><num>2</num></expr></expr>"
    "</expr></math>";
std::string const mathml = "<math xmlns=\"http://www.w3.org/1998/Math/MathML\"";

std::string read_all(std::string const &path)
{
    QFile f(QString::fromStdString(path));
    return f.open(QIODevice::ReadOnly) ? f.readAll().toStdString() : std::string();
}

TEST(RenderFormats, EachTextFormatOnStandardOutputAndInAFile)
{
    struct Case
    {
        char const *format;
        char const *file;          // an output whose suffix says the format, or null
        std::string starts_with;   // the output's first bytes
    };
    std::vector<Case> const cases = {
        {"latex",  "f.tex",   "E = m c^{2}\n"},
        {"text",   "f.txt",   "E = mc^2\n"},
        {"mathml", "f.mml",   mathml + " display=\"block\"><mrow><mi>E</mi><mo>=</mo>"},
        {"cmml",   nullptr,   mathml + "><apply><eq/><ci>E</ci><apply><times/>"},
        {"speech", nullptr,   "E equals m c squared\n"},
    };
    std::string const folder = fresh_folder("text-formats");
    for (Case const &c : cases) {
        SCOPED_TRACE(c.format);
        RenderRun const out = run_render({"--format", c.format}, formula);
        EXPECT_EQ(0, out.exit_code) << out.errors;
        EXPECT_EQ(0u, out.output.rfind(c.starts_with, 0)) << out.output;
        if (c.file == nullptr)
            continue;
        std::string const path = folder + "/" + c.file;
        RenderRun const saved = run_render({"-o", path}, formula);
        EXPECT_EQ(0, saved.exit_code) << saved.errors;
        EXPECT_EQ(read_all(path), out.output);
    }
}

TEST(RenderFormats, ABatchWritesTextFormatsUnderTheirSuffix)
{
    std::string const folder = fresh_folder("text-batch");
    std::string const input = folder + "/mass.xml";
    QFile f(QString::fromStdString(input));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(formula.data(), static_cast<qint64>(formula.size()));
    f.close();
    for (char const *format : {"mathml", "latex"}) {
        RenderRun const run = run_render({"--quiet", "--format", format, "--output-dir", folder + "/out", input});
        EXPECT_EQ(0, run.exit_code) << run.errors;
    }
    EXPECT_EQ(0u, read_all(folder + "/out/mass.mml").rfind(mathml, 0));
    EXPECT_EQ(read_all(folder + "/out/mass.tex"), "E = m c^{2}\n");
}

}  // namespace
