// The command line of tavi-render: what to read, how to typeset it and where to write what, and the
// parsing of the lengths and sizes it is given.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tavi/import/importer.h"

namespace TaviRender {

// What the output is and which surface draws it.
enum class Format {
    none,        // not given, and the output's name has no suffix that says
    png,         // a bitmap drawn by Qt_Canvas on a QImage
    svg,         // SVG drawn by Qt_Canvas on a QSvgGenerator, text as filled outlines
    pdf,         // PDF drawn by Qt_Canvas on a QPdfWriter
    eps,         // the EPS writer (Qt_EPS_Canvas)
    svg_writer,  // the SVG writer (Qt_SVG_Canvas): text as text elements
    mathml,      // presentation MathML, written from the expression tree (no drawing)
    cmml,        // content MathML
    latex,       // LaTeX with amsmath
    text,        // the linear text of the clipboard, such as "(a + b)^2"
    speech       // the spoken text in English words, such as "open paren a plus b close paren squared"
};

struct Options
{
    std::string input = "-";        // "-" is standard input
    std::string output = "-";       // "-" is standard output
    std::string setup;              // empty: the installed default
    bool from_given = false;        // --from: the input's language; else told by its text
    Tavi::FormulaLanguage from = Tavi::FormulaLanguage::content;
    Format format = Format::none;
    double font_size = 12.0;        // points
    int dpi = 96;                   // PNG only
    double width = 0.0;             // wrap width in points; 0 means no wrapping
    bool help = false;

    // A batch: many inputs, each written to a file of its own in one folder. `inputs` are files
    // and folders (whose .xml files are taken); `files_from` is a file ("-" standard input) that
    // lists more, a path a line.
    bool batch = false;             // set by --output-dir, which every batch needs
    std::vector<std::string> inputs;
    std::string files_from;
    std::string output_dir;
    std::string name_pattern = "{name}{ext}";
    int jobs = 0;                   // 0: one per core
    bool quiet = false;             // no progress bar
};

struct ParseResult
{
    Options options;
    std::string error;              // empty when the line was understood
};

// Reads the arguments after the program's name. A format not given by --format is taken from the
// output's suffix; standard output with no format is SVG.
ParseResult parse_options(std::vector<std::string> const &arguments);

// A length such as "8cm", "3.5in", "20mm", "200pt" or a bare number of points, in points; false
// for anything else, and for a length that is not above zero.
bool parse_length(std::string const &text, double &points);

// The format of a --format name ("png", "svg", "pdf", "eps", "svg-writer"), or none.
Format format_named(std::string const &name);
// The format that an output file's suffix stands for (".png", ".svg", ".pdf", ".eps"), or none.
Format format_of_path(std::string const &path);
char const *format_name(Format format);

// The suffix written for the format: ".png", ".svg" (both SVG formats), ".pdf", ".eps".
char const *format_suffix(Format format);

// The output file's name for an input in a batch: the pattern with "{name}" replaced by the input's
// file name without its suffix, "{ext}" by the format's suffix and "{index}" by the input's number
// in the batch, from 1.
std::string output_name(std::string const &pattern, std::string const &input, Format format, std::size_t index);

// The text of --help.
std::string usage_text();

}  // namespace TaviRender
