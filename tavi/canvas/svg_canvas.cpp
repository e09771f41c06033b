// SVG_Canvas: the SVG writer. Every call writes its element at once; translation and clip live in
// one auxiliary group that is closed and reopened whenever either changes.
#include "tavi/canvas/svg_canvas.h"

#include "tavi/canvas/hatch_patterns.h"
#include "tavi/kxt/xmltext.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <ostream>

namespace Tavi {

namespace {

// The hatch patterns and the opening of the group that makes the file's coordinates twentieths of a
// point. The patterns' paths carry no stroke colour of their own, so the brush's colour does not reach
// a hatch, and HpD and HpBD trace the same line in opposite directions.
char const *const definition_lines[] = {
    "<defs>",
    "<pattern id=\"HpH\" patternUnits=\"userSpaceOnUse\" patternContentUnits=\"userSpaceOnUse\"",
    "x=\"0\" y=\"0\" width=\"110\" height=\"110\">",
    "<path d=\"M 0 55 H 110\" stroke-width=\"8\"/>",
    "</pattern>",
    "<pattern id=\"HpV\" patternUnits=\"userSpaceOnUse\" patternContentUnits=\"userSpaceOnUse\"",
    "x=\"0\" y=\"0\" width=\"110\" height=\"110\">",
    "<path d=\"M 55 0 V 110\" stroke-width=\"8\"/>",
    "</pattern>",
    "<pattern id=\"HpD\" patternUnits=\"userSpaceOnUse\" patternContentUnits=\"userSpaceOnUse\"",
    "x=\"0\" y=\"0\" width=\"110\" height=\"110\">",
    "<path d=\"M 0 110 L 110 0\" stroke-width=\"8\"/>",
    "</pattern>",
    "<pattern id=\"HpBD\" patternUnits=\"userSpaceOnUse\" patternContentUnits=\"userSpaceOnUse\"",
    "x=\"0\" y=\"0\" width=\"110\" height=\"110\">",
    "<path d=\"M 110 0 L 0 110\" stroke-width=\"8\"/>",
    "</pattern>",
    "<pattern id=\"HpC\" patternUnits=\"userSpaceOnUse\" patternContentUnits=\"userSpaceOnUse\"",
    "x=\"0\" y=\"0\" width=\"110\" height=\"110\">",
    "<path d=\"M 0 55 H 110 M 55 0 V 110\" stroke-width=\"8\"/>",
    "</pattern>",
    "<pattern id=\"HpXC\" patternUnits=\"userSpaceOnUse\" patternContentUnits=\"userSpaceOnUse\"",
    "x=\"0\" y=\"0\" width=\"110\" height=\"110\">",
    "<path d=\"M 0 110 L 110 0 M 110 110 L 0 0\" stroke-width=\"8\"/>",
    "</pattern>",
    "</defs>",
    "<g transform=\"scale(0.05)\">",
};

// The allocation failure of the text copy, with the message of the system's own.
class BadAllocation : public std::bad_alloc
{
public:
    char const *what() const noexcept override { return "bad allocation"; }
};

// A text run is copied with a terminator for the character-data writer; runs that fit in this many
// units (512 bytes) need no allocation.
constexpr long local_text_units = 256;

struct HexColor
{
    Color color;
};

std::ostream &operator<<(std::ostream &out, HexColor const &c)
{
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", static_cast<unsigned>(c.color.red()),
                  static_cast<unsigned>(c.color.green()), static_cast<unsigned>(c.color.blue()));
    return out << text;
}

}  // namespace

SVG_Canvas::SVG_Canvas(std::ostream &stream, Extension const &extension)
    : StreamCanvas(stream, extension, cs_unicode), clip_id_(1)
{
}

SVG_Canvas::~SVG_Canvas() = default;

// --- Font and translation ---

void SVG_Canvas::font(Font const &font, CharSet char_set, long angle)
{
    angle_ = angle;
    char_set_ = char_set;
    gauge()->font(font, char_set == cs_symbol ? cs_unicode : char_set, 0);
}

void SVG_Canvas::translation(Point p)
{
    if (translating() || clipping_)
        stream_ << "</g>\n";
    IntegralCanvas::translation(p);
    if (translating() || clipping_)
        begin_aux_group();
}

void SVG_Canvas::add_translation(Point p)
{
    if (p == Point(0, 0))
        return;
    translation(translation() + p);
}

// --- Attributes: stored, and written with each element ---

void SVG_Canvas::pen(Pen const &pen, bool restart)
{
    pen_ = pen;
    if (restart)
        reset_dash_phase();
}

// A width of 0 is the thinnest line, 1. Dashes are given as an array of one period and an offset
// that carries the phase left by the line before.
void SVG_Canvas::put_pen_attr(double phase)
{
    Color const &color = pen_.color();
    stream_ << "stroke=\"" << HexColor{color} << "\" stroke-width=\"" << (pen_.width() == 0 ? 1 : pen_.width())
            << "\" ";
    if (color.alpha() < 255)
        stream_ << "stroke-opacity=\"" << color.alpha() / 255.0 << "\" ";
    if (pen_.style() == Pen::dashed) {
        double const d = dash_len();
        stream_ << "stroke-dasharray=\"" << d << ',' << d << "\" stroke-dashoffset=\"" << -phase << "\" ";
    } else if (pen_.style() == Pen::dotted) {
        double const d = dash_len();
        double const w = dot_len();
        stream_ << "stroke-dasharray=\"" << w << ',' << 2.0 * d - w << "\" stroke-dashoffset=\"" << -phase
                << "\" ";
    }
}

void SVG_Canvas::put_brush_attr()
{
    Color const &color = brush_.color();
    if (brush_.fill_style() != Brush::solid)
        stream_ << "stroke=\"none\" fill=\"url(#" << hatch_pattern_name(brush_.fill_style()) << ")\" ";
    else
        stream_ << "stroke=\"none\" fill=\"" << HexColor{color} << "\" ";
    if (color.alpha() != 255)
        stream_ << "fill-opacity=\"" << color.alpha() / 255.0 << "\" ";
}

// --- Shapes ---

// A dashed line starts where the line before left off: the phase goes back by the line's length,
// modulo the period, and is kept within one period below 0.
void SVG_Canvas::line(Point from, Point to)
{
    bool const dashing = pen_.style() != Pen::solid;
    stream_ << "<line ";
    put_pen_attr(dashing ? dash_phase() : 0.0);
    if (dashing) {
        double const dx = static_cast<double>(to.x - from.x);
        double const dy = static_cast<double>(to.y - from.y);
        double const period = 2.0 * dash_len();
        double phase = dash_phase() - std::fmod(std::sqrt(dx * dx + dy * dy), period);
        if (phase < -period)
            phase += period;
        dash_phase(phase);
    }
    stream_ << "x1=\"" << from.x << "\" y1=\"" << from.y << "\" x2=\"" << to.x << "\" y2=\"" << to.y << "\"/>\n";
}

void SVG_Canvas::poly_line(Point const *points, std::size_t count, bool closed)
{
    if (points == nullptr || count < 2)
        return;
    reset_dash_phase();
    stream_ << (closed ? "<polygon fill=\"none\" " : "<polyline fill=\"none\" ");
    put_pen_attr(0.0);
    stream_ << "points=\"";
    for (std::size_t i = 0; i < count; ++i)
        stream_ << points[i].x << ',' << points[i].y << ' ';
    stream_ << "\"/>\n";
}

void SVG_Canvas::frame_rect(Rect const &r)
{
    reset_dash_phase();
    stream_ << "<rect fill=\"none\" ";
    put_pen_attr(0.0);
    stream_ << "x=\"" << r.left() << "\" y=\"" << r.top() << "\" width=\"" << r.width() << "\" height=\""
            << r.height() << "\"/>\n";
}

void SVG_Canvas::fill_rect(Rect const &r)
{
    stream_ << "<rect ";
    put_brush_attr();
    stream_ << "x=\"" << r.left() << "\" y=\"" << r.top() << "\" width=\"" << r.width() << "\" height=\""
            << r.height() << "\"/>\n";
}

namespace {

// The centre and radii of the ellipse in a rectangle, in single precision: a circle when the
// rectangle is square.
void put_ellipse_geometry(std::ostream &out, Rect const &r)
{
    float const rx = static_cast<float>(r.width()) * 0.5f;
    float const cx = static_cast<float>(r.left()) + rx;
    if (r.width() == r.height()) {
        float const cy = static_cast<float>(r.top()) + rx;
        out << "cx=\"" << cx << "\" cy=\"" << cy << "\" r=\"" << rx << "\"/>\n";
    } else {
        float const ry = static_cast<float>(r.height()) * 0.5f;
        float const cy = static_cast<float>(r.top()) + ry;
        out << "cx=\"" << cx << "\" cy=\"" << cy << "\" rx=\"" << rx << "\" ry=\"" << ry << "\"/>\n";
    }
}

char const *ellipse_element(Rect const &r) { return r.width() == r.height() ? "<circle " : "<ellipse "; }

}  // namespace

// An ellipse is never dashed: it is written with a solid copy of the pen.
void SVG_Canvas::frame_ellipse(Rect const &r)
{
    reset_dash_phase();
    Pen const saved = pen_;
    Pen solid = pen_;
    solid.style(Pen::solid);
    pen(solid, true);
    stream_ << ellipse_element(r) << "fill=\"none\" ";
    put_pen_attr(0.0);
    put_ellipse_geometry(stream_, r);
    pen(saved, true);
}

void SVG_Canvas::fill_ellipse(Rect const &r)
{
    stream_ << ellipse_element(r);
    put_brush_attr();
    put_ellipse_geometry(stream_, r);
}

void SVG_Canvas::fill_polygon(Point const *points, std::size_t count, bool winding)
{
    if (points == nullptr || count < 3)
        return;
    stream_ << "<polygon ";
    put_brush_attr();
    stream_ << "fill-rule=\"" << (winding ? "nonzero" : "evenodd") << "\" points=\"";
    for (std::size_t i = 0; i < count; ++i)
        stream_ << points[i].x << ',' << points[i].y << ' ';
    stream_ << "\"/>\n";
}

// --- Text ---

// Text in a symbol set has no meaning in this format and is left out. A turned run is drawn at the
// origin of a group that moves and turns it.
void SVG_Canvas::text(wchar const *text, long count, Point p)
{
    if (char_set_ == cs_symbol || text == nullptr || count < 1)
        return;

    // The copy is made first: a run too long to copy writes nothing at all.
    wchar local[local_text_units];
    std::unique_ptr<wchar[]> heap;
    wchar *buffer = local;
    if (count >= local_text_units) {
        if (static_cast<unsigned long>(count) >= static_cast<unsigned long>(PTRDIFF_MAX) / sizeof(wchar) - 1)
            throw BadAllocation();
        try {
            heap.reset(new wchar[static_cast<std::size_t>(count) + 1]);
        } catch (std::bad_alloc const &) {
            throw BadAllocation();
        }
        buffer = heap.get();
    }
    std::copy(text, text + count, buffer);
    buffer[count] = 0;

    long x = p.x;
    long y = p.y;
    if (angle_ != 0) {
        stream_ << "<g transform=\"translate(" << x << ',' << y << ") rotate(" << -angle_ << ")\">\n";
        x = 0;
        y = 0;
    }
    Font const font = gauge()->font();
    stream_ << "<text x=\"" << x << "\" y=\"" << y << "\"" << " font-family=\"";
    Kxt::putCData(stream_, font.name());
    stream_ << "\" font-size=\"" << font.size() << "\"";
    if (font.bold())
        stream_ << " font-weight=\"bold\"";
    if (font.italic())
        stream_ << " font-style=\"italic\"";
    stream_ << " stroke=\"none\" fill=\"" << HexColor{text_color_} << "\"";
    if (text_color_.alpha() != 255)
        stream_ << " fill-opacity=\"" << text_color_.alpha() / 255.0 << "\"";
    stream_ << ">";
    Kxt::putCData(stream_, buffer);
    stream_ << "</text>\n";
    if (angle_ != 0)
        stream_ << "</g>\n";
}

// --- Clip ---

// The clip path stands outside the group that it serves, in the scale group's coordinates, so its
// rectangle is written untranslated. Each clip gets a new id.
void SVG_Canvas::clip_rect(Rect const &r)
{
    if (translating() || clipping_)
        stream_ << "</g>\n";
    stream_ << "<clipPath id=\"CR" << clip_id_ << "\">\n"
            << "<rect x=\"" << r.left() << "\" y=\"" << r.top() << "\" width=\"" << r.width() << "\" height=\""
            << r.height() << "\"/>\n"
            << "</clipPath>\n";
    clipping_ = true;
    clip_ = r;
    begin_aux_group();
    ++clip_id_;
}

void SVG_Canvas::no_clip_rect()
{
    if (!clipping_)
        return;
    stream_ << "</g>\n";
    clipping_ = false;
    if (translating())
        begin_aux_group();
}

// --- Document ---

bool SVG_Canvas::translating()
{
    Point const t = translation();
    return t.x != 0 || t.y != 0;
}

void SVG_Canvas::begin_aux_group()
{
    stream_ << "<g";
    if (translating()) {
        Point const t = translation();
        stream_ << " transform=\"translate(" << t.x << ',' << t.y << ")\" ";
    }
    if (clipping_)
        stream_ << " clip-path=\"url(#CR" << clip_id_ << ")\" ";
    stream_ << ">\n";
}

// The size is given in points; the view box in whole points, rounded, so that it fits the scale
// group, which maps the file's twentieths of a point onto points.
void SVG_Canvas::put_header(char const *creator)
{
    long const width = extension_.right() - extension_.left();
    long const height = extension_.bottom() - extension_.top();
    stream_ << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            << "<svg version=\"1.1\" baseProfile=\"tiny\" xmlns=\"http://www.w3.org/2000/svg\" width=\""
            << width / 20.0 << "pt\" height=\"" << height / 20.0 << "pt\" viewBox=\""
            << static_cast<long>(extension_.left() / 20.0 + 0.5) << ' '
            << static_cast<long>(extension_.top() / 20.0 + 0.5) << ' ' << static_cast<long>(width / 20.0 + 0.5)
            << ' ' << static_cast<long>(height / 20.0 + 0.5)
            << "\" stroke-linecap=\"round\" stroke-linejoin=\"miter\">\n";

    stream_ << "<!--";
    if (creator != nullptr && *creator != '\0')
        stream_ << " Creator: " << creator;
    std::string const date = creation_date();
    if (!date.empty())
        stream_ << " CreationDate: " << date;
    stream_ << " -->\n";

    for (char const *line : definition_lines)
        stream_ << line << '\n';

    if (translating() || clipping_)
        begin_aux_group();
}

void SVG_Canvas::put_footer()
{
    if (translating() || clipping_)
        stream_ << "</g>\n";
    stream_ << "</g>\n</svg>\n";
}

}  // namespace Tavi
