// tavi-render with many inputs: the same files byte for byte as one run per formula, whatever the
// number of jobs; bad inputs among good ones named with their reasons while the others are written;
// inputs from a folder and from a list on standard input; output names; bad batch command lines.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <string>
#include <vector>

#include "support/external_tools.h"
#include "tools/render_tool.h"
#include "tools/tavi-render/options.h"
#include "tools/tavi-render/progress.h"

namespace {

using namespace TaviTest;

std::string const ns = "xmlns=\"http://www.tavi-math.org/xml/MathEditContent\"";
std::string math(std::string const &body) { return "<math " + ns + ">" + body + "</math>"; }
std::string const examples = TAVI_SOURCE_DIR "/data/examples";

QByteArray bytes_of(std::string const &path)
{
    QFile f(QString::fromStdString(path));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool contains(std::string const &text, std::string const &part) { return text.find(part) != std::string::npos; }

std::string files_in(std::string const &folder)
{
    return QDir(QString::fromStdString(folder)).entryList(QDir::Files | QDir::Hidden, QDir::Name).join(' ').toStdString();
}

TEST(RenderBatch, TheSameFilesAsOneRunPerFormula)
{
    std::string const folder = fresh_folder("batch-same");
    QStringList const names = QDir(QString::fromStdString(examples)).entryList({"*.xml"}, QDir::Files, QDir::Name);
    ASSERT_GT(names.size(), 40);
    for (char const *format : {"png", "svg"}) {
        for (char const *jobs : {"1", "2", "3"}) {
            std::string const out = folder + "/" + format + "-" + jobs;
            RenderRun const run = run_render({"--output-dir", out, "-f", format, "-j", jobs, examples});
            ASSERT_EQ(0, run.exit_code) << run.errors;
            EXPECT_EQ("", run.errors);
        }
        for (QString const &name : names) {
            std::string const base = name.chopped(4).toStdString() + "." + format;
            std::string const alone = folder + "/alone-" + base;
            ASSERT_EQ(0, run_render({examples + "/" + name.toStdString(), "-o", alone}).exit_code);
            QByteArray const expected = bytes_of(alone);
            ASSERT_FALSE(expected.isEmpty());
            for (char const *jobs : {"1", "2", "3"})
                EXPECT_TRUE(bytes_of(folder + "/" + format + "-" + jobs + "/" + base) == expected) << base << " -j " << jobs;
        }
    }
}

TEST(RenderBatch, BadInputsAreNamedAndTheOthersWritten)
{
    std::string const folder = fresh_folder("batch-bad");
    std::string const in = folder + "/in";
    QDir().mkpath(QString::fromStdString(in));
    struct Case
    {
        char const *file;
        std::string document;
        char const *message;   // a line of standard error, after "tavi-render: <input>"
        bool written;
    };
    std::vector<Case> const cases = {
        {"a-good", math("<plus><num>1</num><num>2</num></plus>"), nullptr, true},
        {"b-malformed", "<math " + ns + "><plus>\n", ":2:0: ", false},
        {"c-refused", math("<ident><chr nm=\"nosuchname\"/></ident>"), ": Error in math: chr@nm 'nosuchname' unknown",
         false},
        {"d-warned", math("<plus><foo/><num>1</num></plus>"), ": unknown element or attribute 'foo'", true},
        {"e-empty", math(""), ": no formula in the document", false},
        {"f-good", math("<num>3</num>"), nullptr, true},
    };
    for (Case const &c : cases)
        ASSERT_TRUE(write_text_file(in + "/" + c.file + ".xml", c.document));
    // The folder, a file that doesn't exist, and a good file once more through the list on
    // standard input, whose output another input takes already.
    std::string const missing = folder + "/missing.xml";
    RenderRun const run = run_render({"--output-dir", folder + "/out", "-f", "png", in, missing, "--files-from", "-"},
                                     in + "/f-good.xml\n");
    EXPECT_EQ(1, run.exit_code);
    std::string expected_files;
    for (Case const &c : cases) {
        SCOPED_TRACE(c.file);
        std::string const input = in + "/" + c.file + ".xml";
        if (c.message != nullptr) {
            EXPECT_TRUE(contains(run.errors, "tavi-render: " + input + c.message))
                << run.errors;
        }
        if (c.written)
            expected_files += std::string(expected_files.empty() ? "" : " ") + c.file + ".png";
    }
    EXPECT_TRUE(contains(run.errors, "tavi-render: " + missing + ": cannot open")) << run.errors;
    EXPECT_TRUE(contains(run.errors, "f-good.png is the output of " + in + "/f-good.xml")) << run.errors;
    EXPECT_TRUE(contains(run.errors, "tavi-render: 5 of 8 formulas failed")) << run.errors;
    // The good ones and nothing else: no temporary, no part of a file.
    EXPECT_EQ(expected_files, files_in(folder + "/out"));
    EXPECT_FALSE(read_png(folder + "/out/a-good.png").isNull());
}

TEST(RenderBatch, OutputNames)
{
    using TaviRender::Format;
    struct Case
    {
        char const *pattern;
        char const *input;
        Format format;
        std::size_t index;
        char const *name;
    };
    Case const cases[] = {
        {"{name}{ext}", "some/folder/quadratic.xml", Format::png, 1, "quadratic.png"},
        {"{name}{ext}", "a.b.xml", Format::svg_writer, 1, "a.b.svg"},
        {"{name}{ext}", "noext", Format::eps, 1, "noext.eps"},
        {"{index}-{name}-12pt{ext}", "dir/.hidden", Format::pdf, 42, "42-.hidden-12pt.pdf"},
        {"sub/{name}", "x.xml", Format::svg, 3, "sub/x"},
    };
    for (Case const &c : cases)
        EXPECT_EQ(c.name, TaviRender::output_name(c.pattern, c.input, c.format, c.index)) << c.pattern << " " << c.input;
}

TEST(RenderBatch, BadBatchCommandLines)
{
    struct Case
    {
        std::vector<std::string> arguments;
        char const *message;
    };
    std::vector<Case> const cases = {
        {{"a.xml", "b.xml"}, "give --output-dir"},
        {{"--files-from", "list"}, "give --output-dir"},
        {{"--name", "{name}.png", "a.xml"}, "give --output-dir DIR too"},
        {{"--output-dir", "out", "-o", "x.png", "a.xml"}, "-o writes one file"},
        {{"--output-dir", "out"}, "a batch needs inputs"},
        {{"--output-dir", "out", "-"}, "standard input cannot be one input"},
        {{"--output-dir", "out", "--name", "{nam}.png", "a.xml"}, "{nam} is not"},
        {{"--output-dir", "out", "--name", "formula{ext}", "a.xml"}, "put {name} or {index} in it"},
        {{"--output-dir", "out", "-j", "0", "a.xml"}, "bad number of jobs '0'"},
    };
    for (Case const &c : cases) {
        TaviRender::ParseResult const parsed = TaviRender::parse_options(c.arguments);
        EXPECT_TRUE(contains(parsed.error, c.message)) << ::testing::PrintToString(c.arguments) << ": " << parsed.error;
    }
    TaviRender::ParseResult const good = TaviRender::parse_options({"--output-dir", "out", "-j", "3", "a.xml", "b"});
    EXPECT_EQ("", good.error);
    EXPECT_TRUE(good.options.batch);
    EXPECT_EQ(TaviRender::Format::svg, good.options.format);
    EXPECT_EQ(3, good.options.jobs);
}

TEST(RenderBatch, ProgressLine)
{
    struct Case
    {
        std::size_t done, failed, total;
        double seconds;
        char const *line;
    };
    Case const cases[] = {
        {0, 0, 40, 0.0, "[........................] 0/40"},
        {10, 0, 40, 2.0, "[######..................] 10/40  5/s  0:06 left"},
        {4000, 0, 5000, 2.0, "[###################.....] 4000/5000  2000/s  0:01 left"},
        {40, 2, 40, 4000.0, "[########################] 40/40  0.01/s  in 1:06:40  2 failed"},
    };
    for (Case const &c : cases)
        EXPECT_EQ(c.line, TaviRender::progress_line(c.done, c.failed, c.total, c.seconds));
}

}  // namespace
