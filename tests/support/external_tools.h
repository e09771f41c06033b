// Running the external programs that check the library's output for real (renderers, converters),
// and reading what they make: a PNG, and how much ink it has in a rectangle.
#pragma once

#include <QImage>

#include <string>
#include <vector>

namespace TaviTest {

struct ToolRun
{
    bool started = false;    // the program was found and ran to its end within the time allowed
    int exit_code = -1;
    std::string output;      // what it wrote to stdout
    std::string errors;      // what it wrote to stderr
};

// The full path of a program found on PATH, or empty.
std::string find_tool(std::string const &name);

// Runs the program with these arguments, without a shell, and waits for it.
ToolRun run_tool(std::string const &program, std::vector<std::string> const &arguments,
                 int timeout_ms = 120000);

// TAVI_TEST_OUTPUT_DIR/<folder>/<name>, with the folder made if needed.
std::string artefact_path(std::string const &folder, std::string const &name);

// Writes the bytes to the file; false if it cannot.
bool write_text_file(std::string const &path, std::string const &text);

// The SVG or EPS text written to TAVI_TEST_OUTPUT_DIR/<folder>/<name>.svg (.eps) and rendered on white
// at the dpi by rsvg-convert or Ghostscript (cropped to the bounding box) into <name>_svg.png
// (_eps.png). A missing tool, a failed run or an error the tool reports fails the test and gives a
// null image.
QImage render_svg(std::string const &svg, std::string const &folder, std::string const &name, int dpi = 72);
QImage render_eps(std::string const &eps, std::string const &folder, std::string const &name, int dpi = 72);

// The image in a 32-bit ARGB format; a null image if the file cannot be read.
QImage read_png(std::string const &path);

// How many pixels with x in [left, right) and y in [top, bottom) carry ink: opaque enough (alpha
// above 128) and darker than near-white in at least one channel (below 200). The rectangle is
// clipped to the image.
long count_ink(QImage const &image, int left, int top, int right, int bottom);

}  // namespace TaviTest
