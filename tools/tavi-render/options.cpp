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
        } else if (arg == "--setup") {
            if (!take(o.setup))
                return result;
        } else if (arg == "-f" || arg == "--format") {
            if (!take(v))
                return result;
            o.format = format_named(v);
            if (o.format == Format::none) {
                result.error = "unknown format '" + v + "' (png, svg, pdf, eps, svg-writer)";
                return result;
            }
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

    if (positional.size() > 1) {
        result.error = "more than one input file";
        return result;
    }
    if (!positional.empty()) {
        o.input = positional[0];
    }
    if (o.help)
        return result;
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
           "Typesets a formula in the math edit content format (XML) and writes it as SVG, PDF, EPS or PNG.\n"
           "INPUT is a file, or standard input when it is '-' or left out.\n"
           "\n"
           "Options:\n"
           "  -o, --output FILE    where to write; '-' or left out is standard output\n"
           "  -f, --format NAME    png, svg, pdf, eps or svg-writer; else taken from the output's\n"
           "                       suffix (.png, .svg, .pdf, .eps), and svg on standard output\n"
           "      --setup FILE     the setup file; else the installed default mathsetup.xml\n"
           "      --font-size PT   the text size in points (default 12)\n"
           "      --dpi N          resolution of PNG output (default 96)\n"
           "      --width LENGTH   break the formula into lines of this width, in pt, mm, cm or in\n"
           "                       (e.g. 8cm; a bare number is points)\n"
           "  -h, --help           show this text\n"
           "\n"
           "Formats: png (Qt on a QImage), svg (Qt on a QSvgGenerator, text as outlines: needs no\n"
           "fonts to view), pdf (Qt on a QPdfWriter), eps (the EPS writer: text in the standard\n"
           "PostScript fonts, symbol-font text left out), svg-writer (the SVG writer: text as text).\n"
           "\n"
           "Exit status: 0 on success, 1 when the input or setup cannot be read or the output not\n"
           "written (nothing is left behind), 2 for a bad command line.\n";
}

}  // namespace TaviRender
