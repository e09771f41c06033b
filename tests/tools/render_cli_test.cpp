// tavi-render as a user meets it: bad documents and bad command lines (messages, exit status, and
// no output file left behind), the output format from the suffix or --format, the options that
// change the drawing (--font-size, --dpi, --width), and tables with lines in PNG, SVG and PDF.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "support/external_tools.h"
#include "tools/render_tool.h"

namespace {

using namespace TaviTest;

std::string const ns = "xmlns=\"http://www.tavi-math.org/xml/MathEditContent\"";

std::string math(std::string const &body) { return "<math " + ns + ">" + body + "</math>"; }

std::string read_all(std::string const &path)
{
    QFile f(QString::fromStdString(path));
    if (!f.open(QIODevice::ReadOnly))
        return std::string();
    return f.readAll().toStdString();
}


bool contains(std::string const &text, std::string const &part) { return text.find(part) != std::string::npos; }

TEST(RenderCli, BadDocuments)
{
    struct Case
    {
        char const *name;
        std::string document;
        int exit_code;
        char const *message;   // a part of what must reach standard error
        bool output_written;   // reading went on, so that a formula was drawn
    };
    std::vector<Case> const cases = {
        // Not XML at all: our message with the line and column expat stopped at.
        {"malformed", "<math " + ns + "><plus><num>1</num>", 1, "tavi-render: <stdin>:1:", false},
        // A name the format doesn't have: the reader says so and leaves the element out.
        {"unknown element", math("<plus><foo/><num>1</num><num>2</num></plus>"), 0,
         "unknown element or attribute 'foo'", true},
        {"unknown character", math("<ident><chr nm=\"nosuchname\"/></ident>"), 1,
         "Error in math: chr@nm 'nosuchname' unknown", false},
        // An unknown template of expr is reported and stood in for by "missingTemplate".
        {"unknown expr template", math("<expr tmp=\"nosuchtemplate\"><num>1</num><num>2</num></expr>"), 0,
         "expr@tmp 'nosuchtemplate' unknown", true},
        {"no formula", math(""), 1, "tavi-render: <stdin>: no formula", false},
    };
    std::string const folder = fresh_folder("bad-documents");
    for (Case const &c : cases) {
        SCOPED_TRACE(c.name);
        std::string const out = folder + "/out.png";
        RenderRun const run = run_render({"-o", out}, c.document);
        ASSERT_TRUE(run.started);
        EXPECT_EQ(c.exit_code, run.exit_code) << run.errors;
        EXPECT_TRUE(contains(run.errors, c.message)) << run.errors;
        EXPECT_EQ(c.output_written, file_exists(out));
        if (c.output_written) {
            EXPECT_FALSE(read_png(out).isNull());
        }
        // Nothing half-written stays beside the target either.
        QStringList const left = QDir(QString::fromStdString(folder)).entryList({"out*"}, QDir::Files | QDir::Hidden);
        EXPECT_EQ(c.output_written ? 1 : 0, static_cast<int>(left.size())) << left.join(' ').toStdString();
        if (c.output_written)
            QFile::remove(QString::fromStdString(out));
    }
}

TEST(RenderCli, AFailedRunLeavesAnExistingOutputAsItWas)
{
    std::string const folder = fresh_folder("kept-output");
    std::string const out = folder + "/formula.svg";
    ASSERT_TRUE(write_text_file(out, "old"));
    // A malformed file is named in the message, with the line and column where reading stopped:
    // the end of the text, line 2, column 0, after the line end.
    ASSERT_TRUE(write_text_file(folder + "/bad.xml", "<math " + ns + "><plus>\n"));
    RenderRun const run = run_render({folder + "/bad.xml", "-o", out});
    EXPECT_EQ(1, run.exit_code);
    EXPECT_TRUE(contains(run.errors, "tavi-render: " + folder + "/bad.xml:2:0: ")) << run.errors;
    EXPECT_EQ("old", read_all(out));
    RenderRun const missing = run_render({folder + "/no-such-file.xml", "-o", out});
    EXPECT_EQ(1, missing.exit_code);
    EXPECT_TRUE(contains(missing.errors, "cannot open")) << missing.errors;
    EXPECT_EQ("old", read_all(out));
}

// Inputs made to hurt: each ends within the run's time allowed, in a drawing or in the system's own
// error with status 1 and no file; outside the sanitizer builds, within 4 GB of address space.
TEST(RenderCli, HostileInputs)
{
    auto nest = [](int depth, std::string const &open, std::string const &close) {
        std::string text;
        for (int i = 1; i < depth; ++i)
            text += open;
        text += "<ident>b</ident>";
        for (int i = 1; i < depth; ++i)
            text += close;
        return math(text);
    };
    std::string const sums = "<plus><ident>a</ident>";
    std::string const fraction = "<expr tmp=\"divide\"><ident>a</ident>";
    std::string const script = "<expr tmp=\"power\"><ident>a</ident>";
    std::string big = "<math " + ns + "><plus>";
    for (long i = 0; big.size() < 10'000'000; ++i)
        big += "<expr tmp=\"times\"><num>" + std::to_string(i) + "</num><ident>x</ident></expr>";
    big += "</plus></math>";
    std::string columns;
    for (int i = 0; i < 10'000; ++i)
        columns += "<num>" + std::to_string(i) + "</num>";
    std::string const example = read_all(std::string(TAVI_SOURCE_DIR) + "/data/examples/quadratic-formula.xml");
    std::string binary;
    for (int i = 0; i < 4096; ++i)
        binary += static_cast<char>((i * 7919 + 13) % 256);
    struct Case
    {
        char const *name;
        std::string document;
        char const *format;
        char const *message;   // empty: drawn
    };
    std::vector<Case> const cases = {
        {"sums at the depth limit", nest(2500, sums, "</plus>"), "svg-writer", ""},
        {"fractions at the depth limit", nest(2500, fraction, "</expr>"), "svg-writer", ""},
        {"fractions beyond it", nest(2501, fraction, "</expr>"), "svg-writer", "nested more than 2500 deep"},
        {"scripts far beyond it", nest(50'000, script, "</expr>"), "png", "nested more than 2500 deep"},
        {"a 10 MB formula", big, "png", "larger than 30000 pixels"},
        {"10,000 columns", math("<tab tmp=\"matrix\" rows=\"1\" cols=\"10000\">" + columns + "</tab>"), "svg-writer", ""},
        {"100,000 digits", math("<num>" + std::string(100'000, '7') + "</num>"), "svg-writer", ""},
        {"truncated", example.substr(0, example.size() / 2), "png", "tavi-render: "},
        {"binary", binary, "png", "tavi-render: "},
    };
    std::string const folder = fresh_folder("hostile");
    for (Case const &c : cases) {
        SCOPED_TRACE(c.name);
        std::string const in = folder + "/in.xml";
        std::string const out = folder + "/out";
        ASSERT_TRUE(write_text_file(in, c.document));
        std::vector<std::string> arguments = {TAVI_RENDER_PROGRAM, in, "-f", c.format, "-o", out};
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
        arguments.insert(arguments.begin(), "--as=4294967296");
        RenderRun const run = run_tool("prlimit", arguments);
#else
        RenderRun const run = run_tool(arguments.front(), {arguments.begin() + 1, arguments.end()});
#endif
        ASSERT_TRUE(run.started) << run.errors;
        bool const drawn = *c.message == '\0';
        EXPECT_EQ(drawn ? 0 : 1, run.exit_code) << run.errors.substr(0, 500);
        EXPECT_TRUE(contains(run.errors, c.message)) << run.errors.substr(0, 500);
        EXPECT_EQ(drawn, file_exists(out));
        QStringList const left = QDir(QString::fromStdString(folder)).entryList({"out*"}, QDir::Files | QDir::Hidden);
        EXPECT_EQ(drawn ? 1 : 0, static_cast<int>(left.size())) << left.join(' ').toStdString();
        QFile::remove(QString::fromStdString(out));
    }
}

TEST(RenderCli, BadCommandLines)
{
    struct Case
    {
        std::vector<std::string> arguments;
        int exit_code;
        char const *message;
    };
    std::vector<Case> const cases = {
        {{"--format", "gif"}, 2, "unknown format 'gif'"},
        {{"--width", "8parsecs"}, 2, "bad width '8parsecs'"},
        {{"--dpi"}, 2, "option --dpi needs a value"},
        {{"-o", "formula.gif"}, 2, "cannot tell the format"},
        {{"--setup", "/nonexistent/mathsetup.xml"}, 1, "cannot open /nonexistent/mathsetup.xml"},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(::testing::PrintToString(c.arguments));
        RenderRun const run = run_render(c.arguments, math("<num>1</num>"));
        ASSERT_TRUE(run.started);
        EXPECT_EQ(c.exit_code, run.exit_code);
        EXPECT_TRUE(contains(run.errors, c.message)) << run.errors;
        EXPECT_TRUE(run.output.empty());
    }
}

TEST(RenderCli, TheFormatComesFromTheSuffixOrFromFormat)
{
    struct Case
    {
        std::vector<std::string> arguments;  // the output's name is added
        char const *file;
        char const *starts_with;             // the first bytes of the format
    };
    std::vector<Case> const cases = {
        {{}, "f.PDF", "%PDF-"}, {{}, "f.eps", "%!PS-Adobe"}, {{"--format", "png"}, "f.svg", "\x89PNG"},
        {{"--format", "svg-writer"}, "f.out", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg version=\"1.1\" baseProfile=\"tiny\""},
        {{"--format=pdf"}, "g.out", "%PDF-"},
    };
    std::string const folder = fresh_folder("formats");
    for (Case c : cases) {
        SCOPED_TRACE(c.file);
        c.arguments.insert(c.arguments.end(), {"-o", folder + "/" + c.file});
        RenderRun const run = run_render(c.arguments, math("<num>1</num>"));
        EXPECT_EQ(0, run.exit_code) << run.errors;
        EXPECT_EQ(0u, read_all(folder + "/" + c.file).rfind(c.starts_with, 0));
    }
    // With no output file the SVG goes to standard output.
    RenderRun const out = run_render({}, math("<num>1</num>"));
    EXPECT_EQ(0, out.exit_code);
    EXPECT_TRUE(contains(out.output, "<svg")) << out.output.substr(0, 200);
}

// The width of the formula's ink box in a PNG of the document, and its height.
QSize png_size(std::vector<std::string> args, std::string const &document, std::string const &path)
{
    args.push_back("-o");
    args.push_back(path);
    RenderRun const run = run_render(args, document);
    EXPECT_EQ(0, run.exit_code) << run.errors;
    return read_png(path).size();
}

// --font-size and --dpi scale the picture; --width breaks a long sum into a tall narrow one.
TEST(RenderCli, FontSizeDpiAndWidth)
{
    std::string const folder = fresh_folder("scale");
    std::string const doc = math("<plus><ident>x</ident><num>12345</num></plus>");
    // The margin is 2 pt on each side: 3 pixels at 96 dpi (2 * 96 / 72 = 2.67, rounded), 5 at 192.
    QSize const base = png_size({"--dpi", "96"}, doc, folder + "/base.png");
    QSize const big = png_size({"--dpi", "96", "--font-size", "24"}, doc, folder + "/big.png");
    QSize const fine = png_size({"--dpi", "192"}, doc, folder + "/fine.png");
    double const w = base.width() - 6;
    EXPECT_NEAR(2.0, (big.width() - 6) / w, 0.15);
    EXPECT_NEAR(2.0, (fine.width() - 10) / w, 0.15);
    EXPECT_NEAR(2.0, (big.height() - 6.0) / (base.height() - 6.0), 0.2);

    std::string body;
    for (char c = 'a'; c <= 'z'; ++c)
        body += std::string("<ident>") + c + "</ident>";
    std::string const sum = math("<plus>" + body + "</plus>");
    QSize const line = png_size({"--dpi", "96"}, sum, folder + "/line.png");
    QSize const narrow = png_size({"--dpi", "96", "--width", "4cm"}, sum, folder + "/narrow.png");
    // 4 cm is 4 / 2.54 * 96 = 151 pixels, plus 6 of margin.
    ASSERT_GT(line.width(), 300) << "the sum must be far wider than the wrap width";
    EXPECT_LE(narrow.width(), 151 + 6 + 2);
    // 26 terms of about 20 pixels (a letter and a sign) in lines of 151: at least three lines.
    EXPECT_GE(narrow.height(), 3 * (line.height() - 6));
    // The same width given in points makes the same picture.
    EXPECT_EQ(narrow, png_size({"--dpi", "96", "--width", "113.39pt"}, sum, folder + "/points.png"));
}

// The lines of the part of a drawing from `from` to `to` (pixel rows for lines down, columns for
// lines across) that cover more than four fifths of that part, which no row of text does: for each,
// the first and last pixel it takes up, so that a thick line counts once.
using Lines = std::vector<std::pair<int, int>>;

Lines long_lines(QImage const &image, bool across, int from, int to)
{
    int const n = across ? image.height() : image.width();
    int const length = to - from;
    Lines lines;
    for (int i = 0; i < n; ++i) {
        long const ink = across ? count_ink(image, from, i, to, i + 1) : count_ink(image, i, from, i + 1, to);
        if (ink * 5 <= static_cast<long>(length) * 4)
            continue;
        if (!lines.empty() && lines.back().second == i - 1)
            lines.back().second = i;
        else
            lines.emplace_back(i, i);
    }
    return lines;
}

TEST(RenderCli, TableLinesAppearInPngSvgAndPdf)
{
    std::string cells;
    for (int i = 1; i <= 9; ++i)
        cells += "<num>" + std::to_string(i * 111) + "</num>";
    // A 3 by 3 grid with thin lines between the rows and columns and a thick frame: four lines
    // across (frame top, two between rows, frame bottom) and four down.
    std::string const doc = math("<tab tmp=\"array\" rows=\"3\" cols=\"3\" rowl=\"s\" coll=\"s\" frl=\"S\">" + cells + "</tab>");
    std::string const folder = fresh_folder("table-lines");
    ASSERT_TRUE(write_text_file(folder + "/table.xml", doc));
    std::string error;
    for (char const *suffix : {".png", ".svg", ".pdf"}) {
        SCOPED_TRACE(suffix);
        std::string const out = folder + "/table" + suffix;
        RenderRun const run = run_render({folder + "/table.xml", "--dpi", "96", "-o", out});
        ASSERT_EQ(0, run.exit_code) << run.errors;
        std::string const kind = suffix;
        std::string const png = kind == ".svg" ? rasterise_svg(out, 96, error)
                                : kind == ".pdf" ? rasterise_pdf(out, 96, error) : out;
        ASSERT_FALSE(png.empty()) << error;
        QImage const image = read_png(png);
        ASSERT_FALSE(image.isNull());
        // Across: the frame's top and bottom and the two lines between rows.
        Lines const across = long_lines(image, true, 0, image.width());
        ASSERT_EQ(4u, across.size()) << ::testing::PrintToString(across);
        // Down, over the frame's height: its left and right and the two lines between columns.
        Lines const down = long_lines(image, false, across.front().first, across.back().second + 1);
        EXPECT_EQ(4u, down.size()) << ::testing::PrintToString(down);
    }
}

}  // namespace
