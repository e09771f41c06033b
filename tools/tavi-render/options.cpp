// Parsing of tavi-render's command line.
#include "tools/tavi-render/options.h"

#include <cctype>
#include <cerrno>
#include <cstdlib>

namespace TaviRender {

namespace {

// One unit of length a wrap width may be given in, and its size in points.
struct Unit
{
    char const *suffix;
    double points;
};

Unit const units[] = {
    {"pt", 1.0},
    {"in", 72.0},
    {"cm", 72.0 / 2.54},
    {"mm", 72.0 / 25.4},
};

struct NamedFormat
{
    char const *name;
    char const *suffix;   // the suffix that selects it, or null when only --format does
    Format format;
};

NamedFormat const formats[] = {
    {"png", ".png", Format::png},
    {"svg", ".svg", Format::svg},
    {"pdf", ".pdf", Format::pdf},
    {"eps", ".eps", Format::eps},
    {"svg-writer", nullptr, Format::svg_writer},
    {"mathml", ".mml", Format::mathml},
    {"cmml", ".mml", Format::cmml},     // the suffix it writes; ".mml" is read as mathml
    {"latex", ".tex", Format::latex},
    {"text", ".txt", Format::text},
    {"speech", ".txt", Format::speech}, // the suffix it writes; ".txt" is read as text
};

bool ends_with(std::string const &text, std::string const &end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

std::string lower(std::string text)
{
    for (char &c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

// The whole text as a finite number; blanks and trailing letters are refused.
bool parse_number(std::string const &text, double &value)
{
    if (text.empty() || std::isspace(static_cast<unsigned char>(text[0])))
        return false;
    char *end = nullptr;
    errno = 0;
    value = std::strtod(text.c_str(), &end);
    return errno == 0 && end == text.c_str() + text.size() && value == value;
}

bool parse_int(std::string const &text, int &value)
{
    double v = 0;
    if (!parse_number(text, v) || v != static_cast<double>(static_cast<long>(v)) || v < 1 || v > 10000)
        return false;
    value = static_cast<int>(v);
    return true;
}

// What is wrong with a batch's command line, or nothing.
std::string batch_error(Options const &o, std::vector<std::string> const &inputs, bool output_given)
{
    if (output_given)
        return "-o writes one file: a batch writes into --output-dir, with names from --name";
    if (inputs.empty() && o.files_from.empty())
        return "a batch needs inputs: files, folders, or --files-from LIST";
    for (std::string const &input : inputs)
        if (input == "-")
            return "standard input cannot be one input of a batch: list files with --files-from -";
    std::string const &p = o.name_pattern;
    bool names_each = false;
    for (std::size_t at = p.find('{'); at != std::string::npos; at = p.find('{', at + 1)) {
        std::size_t const end = p.find('}', at);
        std::string const field = end == std::string::npos ? p.substr(at) : p.substr(at, end - at + 1);
        if (field != "{name}" && field != "{ext}" && field != "{index}")
            return "bad name pattern '" + p + "': " + field + " is not {name}, {ext} or {index}";
        names_each = names_each || field != "{ext}";
    }
    if (!names_each)
        return "the name pattern '" + p + "' gives every formula the same file: put {name} or {index} in it";
    return std::string();
}

}  // namespace

bool parse_length(std::string const &text, double &points)
{
    std::string const t = lower(text);
    double factor = 1.0;
    std::string number = t;
    for (Unit const &unit : units) {
        if (ends_with(t, unit.suffix)) {
            factor = unit.points;
            number = t.substr(0, t.size() - std::string(unit.suffix).size());
            break;
        }
    }
    double value = 0;
    if (!parse_number(number, value) || !(value > 0) || value > 1e6)
        return false;
    points = value * factor;
    return true;
}

Format format_named(std::string const &name)
{
    for (NamedFormat const &f : formats)
        if (name == f.name)
            return f.format;
    return Format::none;
}

Format format_of_path(std::string const &path)
{
    std::string const p = lower(path);
    for (NamedFormat const &f : formats)
        if (f.suffix && ends_with(p, f.suffix))
            return f.format;
    return Format::none;
}

char const *format_suffix(Format format)
{
    if (format == Format::svg_writer)
        return ".svg";
    for (NamedFormat const &f : formats)
        if (f.format == format && f.suffix)
            return f.suffix;
    return "";
}

std::string output_name(std::string const &pattern, std::string const &input, Format format, std::size_t index)
{
    std::string name = input;
    while (name.size() > 1 && name.back() == '/')
        name.pop_back();
    std::size_t const slash = name.rfind('/');
    if (slash != std::string::npos)
        name = name.substr(slash + 1);
    std::size_t const dot = name.rfind('.');
    if (dot != std::string::npos && dot > 0)
        name = name.substr(0, dot);
    std::string out;
    for (std::size_t i = 0; i < pattern.size();) {
        if (pattern.compare(i, 6, "{name}") == 0) {
            out += name;
            i += 6;
        } else if (pattern.compare(i, 5, "{ext}") == 0) {
            out += format_suffix(format);
            i += 5;
        } else if (pattern.compare(i, 7, "{index}") == 0) {
            out += std::to_string(index);
            i += 7;
        } else {
            out += pattern[i++];
        }
    }
    return out;
}

char const *format_name(Format format)
{
    for (NamedFormat const &f : formats)
        if (f.format == format)
            return f.name;
    return "none";
}

ParseResult parse_options(std::vector<std::string> const &arguments)
{
    ParseResult result;
    Options &o = result.options;
    std::vector<std::string> positional;
    bool output_given = false;
    bool name_given = false;

    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string arg = arguments[i];
        std::string value;
        bool has_value = false;
        // "--name=value" and "--name value" are the same.
        std::size_t const eq = arg.find('=');
        if (arg.compare(0, 2, "--") == 0 && eq != std::string::npos) {
            value = arg.substr(eq + 1);
            arg = arg.substr(0, eq);
            has_value = true;
        }
        auto take = [&](std::string &out) {
            if (has_value) {
                out = value;
                return true;
            }
            if (i + 1 >= arguments.size()) {
                result.error = "option " + arg + " needs a value";
                return false;
            }
            out = arguments[++i];
            return true;
        };

        std::string v;
        if (arg == "-h" || arg == "--help") {
            o.help = true;
        } else if (arg == "-o" || arg == "--output") {
            if (!take(o.output))
                return result;
            output_given = true;
        } else if (arg == "--output-dir") {
            if (!take(o.output_dir))
                return result;
            if (o.output_dir.empty()) {
                result.error = "--output-dir needs a folder";
                return result;
            }
            o.batch = true;
        } else if (arg == "--name") {
            if (!take(o.name_pattern))
                return result;
            name_given = true;
        } else if (arg == "--files-from") {
            if (!take(o.files_from))
                return result;
        } else if (arg == "-j" || arg == "--jobs") {
            if (!take(v))
                return result;
            if (!parse_int(v, o.jobs)) {
                result.error = "bad number of jobs '" + v + "' (a whole number from 1 to 10000)";
                return result;
            }
        } else if (arg == "-q" || arg == "--quiet") {
            o.quiet = true;
        } else if (arg == "--setup") {
            if (!take(o.setup))
                return result;
        } else if (arg == "-f" || arg == "--format") {
            if (!take(v))
                return result;
            o.format = format_named(v);
            if (o.format == Format::none) {
                result.error = "unknown format '" + v + "' (png, svg, pdf, eps, svg-writer, mathml, cmml, latex, text, speech)";
                return result;
            }
        } else if (arg == "--from") {
            if (!take(v))
                return result;
            if (!Tavi::parse_language(v, o.from)) {
                result.error = "unknown input language '" + v + "' (content, latex, mathml)";
                return result;
            }
            o.from_given = true;
        } else if (arg == "--font-size") {
            if (!take(v))
                return result;
            double size = 0;
            if (!parse_length(v, size) || size > 1000) {
                result.error = "bad font size '" + v + "' (points, e.g. 12 or 10.5)";
                return result;
            }
            o.font_size = size;
        } else if (arg == "--dpi") {
            if (!take(v))
                return result;
            if (!parse_int(v, o.dpi)) {
                result.error = "bad dpi '" + v + "' (a whole number from 1 to 10000)";
                return result;
            }
        } else if (arg == "--width") {
            if (!take(v))
                return result;
            if (!parse_length(v, o.width)) {
                result.error = "bad width '" + v + "' (a length in pt, cm, mm or in, e.g. 8cm)";
                return result;
            }
        } else if (arg.size() > 1 && arg[0] == '-') {
            result.error = "unknown option " + arg;
            return result;
        } else {
            positional.push_back(arg);
        }
    }

    if (o.help)
        return result;
    if (!o.batch) {
        if (positional.size() > 1 || !o.files_from.empty()) {
            result.error = "several inputs are a batch: give --output-dir DIR for their outputs";
            return result;
        }
        if (name_given) {
            result.error = "--name names the outputs of a batch: give --output-dir DIR too";
            return result;
        }
        if (!positional.empty())
            o.input = positional[0];
    } else {
        result.error = batch_error(o, positional, output_given);
        if (!result.error.empty())
            return result;
        if (o.from != Tavi::FormulaLanguage::content) {
            result.error = "--from latex or mathml reads one formula: a batch reads the content format";
            return result;
        }
        o.inputs = positional;
        // Written into files named by suffix, a batch is SVG unless told, as standard output is.
        if (o.format == Format::none)
            o.format = Format::svg;
        return result;
    }
    if (o.format == Format::none) {
        if (o.output == "-") {
            o.format = Format::svg;
        } else {
            o.format = format_of_path(o.output);
            if (o.format == Format::none)
                result.error = "cannot tell the format from '" + o.output + "': give --format";
        }
    }
    return result;
}

std::string usage_text()
{
    return "Usage: tavi-render [OPTIONS] [INPUT]\n"
           "       tavi-render [OPTIONS] --output-dir DIR INPUT... [--files-from LIST]\n"
           "Typesets a formula in the math edit content format (XML), LaTeX or MathML and writes it\n"
           "as SVG, PDF, EPS or PNG.\n"
           "INPUT is a file, or standard input when it is '-' or left out.\n"
           "\n"
           "Options:\n"
           "  -o, --output FILE    where to write; '-' or left out is standard output\n"
           "  -f, --format NAME    png, svg, pdf, eps, svg-writer, mathml, cmml, latex, text or\n"
           "                       speech; else taken from the output's suffix (.png, .svg, .pdf,\n"
           "                       .eps, .mml, .tex, .txt), and svg on standard output\n"
           "      --setup FILE     the setup file; else the installed default mathsetup.xml\n"
           "      --from LANG      the input's language: content, latex or mathml; else told by\n"
           "                       the text (the content format's or MathML's namespace or <math>)\n"
           "      --font-size PT   the text size in points (default 12)\n"
           "      --dpi N          resolution of PNG output (default 96)\n"
           "      --width LENGTH   break the formula into lines of this width, in pt, mm, cm or in\n"
           "                       (e.g. 8cm; a bare number is points)\n"
           "  -h, --help           show this text\n"
           "\n"
           "Many formulas in one run (the setup and the fonts are loaded once, all cores draw):\n"
           "      --output-dir DIR write each input's drawing into DIR (made if missing)\n"
           "      --name PATTERN   the file name in DIR: {name} is the input's name without its\n"
           "                       suffix, {ext} the format's suffix, {index} the input's number\n"
           "                       from 1 (default {name}{ext}); the format is svg unless given\n"
           "      --files-from LIST  take more inputs from LIST, a path a line ('-': standard input)\n"
           "  -j, --jobs N         draw on N threads (default: one per core)\n"
           "  -q, --quiet          no progress bar (it shows on a terminal when a batch takes long)\n"
           "The inputs of a batch are files and folders, whose .xml files are taken in name order.\n"
           "A bad input is named with the reason and the others go on.\n"
           "\n"
           "Formats: png (Qt on a QImage), svg (Qt on a QSvgGenerator, text as outlines: needs no\n"
           "fonts to view), pdf (Qt on a QPdfWriter), eps (the EPS writer: text in the standard\n"
           "PostScript fonts, symbol-font text left out), svg-writer (the SVG writer: text as text).\n"
           "The formula as text, not drawn: mathml (presentation MathML), cmml (content MathML),\n"
           "latex (LaTeX with amsmath and amssymb, without math delimiters), text (the linear text),\n"
           "speech (the spoken text in English words, as a screen reader would say it).\n"
           "\n"
           "Exit status: 0 on success, 1 when the input or setup cannot be read or the output not\n"
           "written (nothing is left behind), or when any input of a batch failed (how many is\n"
           "said on standard error), 2 for a bad command line.\n";
}

}  // namespace TaviRender
