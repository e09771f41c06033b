// Every example formula through tavi-render as PNG, SVG and PDF: the SVG (rasterised by rsvg-convert)
// and the PDF (by pdftoppm) must show the same ink as the PNG, cell by cell on a coarse grid, so that
// a glyph left out or put elsewhere by one surface shows up.
#include <gtest/gtest.h>

#include <QDir>

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "support/external_tools.h"
#include "tools/render_tool.h"

namespace {

using namespace TaviTest;

// The resolution tavi-render lays SVG and PDF out at (1/10 point): the PNG is made at the same one,
// so that all three show one layout, since sizes of fences and lines follow the device's pixels.
int const dpi = 720;
// About 9 points a cell: a glyph is one or two cells wide, and the rounding of a glyph advance in
// one surface moves ink by a small part of a cell only.
int const cell = 90;
// A cell is inked from 6 % of its pixels on, and empty below 0.5 %: a glyph cut in half by a cell
// edge still inks its cells, antialiasing alone never does.
double const present = 0.06;
double const absent = 0.005;

std::vector<std::string> example_names()
{
    QDir const dir(TAVI_SOURCE_DIR "/data/examples");
    std::vector<std::string> names;
    for (QString const &f : dir.entryList({"*.xml"}, QDir::Files, QDir::Name))
        names.push_back(f.chopped(4).toStdString());
    return names;
}

std::string example_path(std::string const &name) { return TAVI_SOURCE_DIR "/data/examples/" + name + ".xml"; }

// Renders the formula file in the format into the folder and answers the output's path.
std::string render(std::string const &input, std::string const &folder, std::string const &name, char const *suffix)
{
    std::string const out = folder + "/" + name + suffix;
    RenderRun const run = run_render({input, "--dpi", std::to_string(dpi), "-o", out});
    EXPECT_TRUE(run.started);
    EXPECT_EQ(0, run.exit_code) << suffix << ": " << run.errors;
    // An example must read cleanly: no message of the reader.
    EXPECT_EQ(std::string::npos, run.errors.find("Error in math")) << run.errors;
    EXPECT_EQ(std::string::npos, run.errors.find("unknown")) << run.errors;
    return out;
}

// The two renderings have the size of one drawing and the same ink in every cell.
void expect_same_ink(QImage const &png, QImage const &other, char const *what)
{
    ASSERT_FALSE(other.isNull()) << what;
    // One drawing at one resolution: the sizes differ by the rounding of a few glyph advances only.
    int const slack_w = std::max(4, png.width() / 25);
    int const slack_h = std::max(4, png.height() / 25);
    EXPECT_NEAR(png.width(), other.width(), slack_w) << what;
    EXPECT_NEAR(png.height(), other.height(), slack_h) << what;
    int cols = 0;
    int rows = 0;
    grid_shape(png, cell, cols, rows);
    std::vector<std::string> const bad = ink_mismatches(ink_grid(png, cols, rows), ink_grid(other, cols, rows), present, absent);
    EXPECT_TRUE(bad.empty()) << what << ": cells where one has ink and the other none (png/other): "
                             << ::testing::PrintToString(bad);
}

class RenderExample : public ::testing::TestWithParam<std::string>
{
};

TEST_P(RenderExample, SvgAndPdfShowTheInkOfThePng)
{
    std::string const name = GetParam();
    std::string const folder = fresh_folder("examples/" + name);
    std::string const input = example_path(name);

    QImage const png = read_png(render(input, folder, name, ".png"));
    ASSERT_FALSE(png.isNull());
    EXPECT_GT(count_ink(png, 0, 0, png.width(), png.height()), 20) << "the PNG is blank";

    std::string error;
    std::string const svg_png = rasterise_svg(render(input, folder, name, ".svg"), dpi, error);
    ASSERT_FALSE(svg_png.empty()) << error;
    expect_same_ink(png, read_png(svg_png), "SVG");

    std::string const pdf_png = rasterise_pdf(render(input, folder, name, ".pdf"), dpi, error);
    ASSERT_FALSE(pdf_png.empty()) << error;
    expect_same_ink(png, read_png(pdf_png), "PDF");
}

std::string test_name(::testing::TestParamInfo<std::string> const &info)
{
    std::string n = info.param;
    std::replace_if(n.begin(), n.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return n;
}

INSTANTIATE_TEST_SUITE_P(Examples, RenderExample, ::testing::ValuesIn(example_names()), test_name);

TEST(RenderExamples, ThereAreExamples) { EXPECT_GE(example_names().size(), 1u); }

}  // namespace
