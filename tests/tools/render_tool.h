// Running tavi-render as a user does, and looking at what it made: its output rasterised by the
// usual renderers, and the ink of an image counted on a coarse grid of cells, so that two renderings
// of one formula can be compared glyph by glyph without caring about antialiasing or a pixel of
// rounding.
#pragma once

#include <QImage>

#include "support/external_tools.h"

#include <string>
#include <vector>

namespace TaviTest {

// What the run gave: started, exit status, standard output and error (see external_tools.h).
using RenderRun = ToolRun;

// Runs tavi-render with the arguments, feeding `input` to its standard input.
RenderRun run_render(std::vector<std::string> const &arguments, std::string const &input = std::string());

// A folder of its own for one test's files, emptied first: TAVI_TEST_OUTPUT_DIR/tools/<name>.
std::string fresh_folder(std::string const &name);

bool file_exists(std::string const &path);

// The SVG or PDF as a PNG at the dpi, by rsvg-convert or pdftoppm; the PNG's path, or an empty
// string with the reason in `error`.
std::string rasterise_svg(std::string const &svg, int dpi, std::string &error);
std::string rasterise_pdf(std::string const &pdf, int dpi, std::string &error);

// How much of each cell of a cols x rows grid laid over the whole image is ink, from 0 to 1. Cell
// edges fall at the same fractions of the width and height in every image, so images of one
// drawing at slightly different sizes give comparable grids.
struct InkGrid
{
    int cols = 0;
    int rows = 0;
    std::vector<double> ink;
    double at(int col, int row) const { return ink[static_cast<std::size_t>(row * cols + col)]; }
};
InkGrid ink_grid(QImage const &image, int cols, int rows);

// The cells where one grid has ink (at least `present`) and the other next to none (at most
// `absent`): where a glyph is missing from one, or stands somewhere else. Each as "col,row a/b".
std::vector<std::string> ink_mismatches(InkGrid const &a, InkGrid const &b, double present, double absent);

// The number of columns and rows that give cells of about `cell` pixels on this image.
void grid_shape(QImage const &image, int cell, int &cols, int &rows);

}  // namespace TaviTest
