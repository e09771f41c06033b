// EPS_Canvas: the Encapsulated PostScript writer. Colour, width, dash and font are written only when
// they change; each shape is one line of the prolog's operators.
#include "tavi/canvas/eps_canvas.h"

#include "tavi/canvas/hatch_patterns.h"
#include "tavi/geometry/rounding.h"

#include <cmath>
#include <ios>
#include <ostream>

namespace Tavi {

namespace {

// The prolog's fonts, four to a family: plain, italic, bold, bold italic.
char const *const ps_font_names[] = {
    "Ti", "TiI", "TiB", "TiBI",  // ps_times, and anything unknown
    "He", "HeI", "HeB", "HeBI",  // ps_helvetica
    "Co", "CoI", "CoB", "CoBI",  // ps_courier
};

// A channel as PostScript wants it, 0 to 1, in single precision: 128 prints as 0.501961.
float channel(unsigned char value) { return static_cast<float>(value) / 255.0f; }

// An ellipse is drawn by scaling a circle by the ratio of its radii; with one radius 0 and not the
// other, that ratio has no value and PostScript would stop the page with an error.
bool degenerate_ellipse(Rect const &r)
{
    return r.width() != r.height() && (r.width() == 0 || r.height() == 0);
}

}  // namespace

// PostScript's standard fonts are Latin-1, so a new page starts in that set.
EPS_Canvas::EPS_Canvas(std::ostream &stream, Extension const &extension)
    : StreamCanvas(stream, extension, cs_ansi), color_(Color::black)
{
}

EPS_Canvas::~EPS_Canvas() = default;

// --- Font and translation ---

void EPS_Canvas::font(Font const &font, CharSet char_set, long angle)
{
    angle_ = angle;
    char_set_ = char_set;
    Font matched;
    PSFont const family = match_font(font, matched);
    if (family == ps_none)
        return;
    if (matched == gauge()->font())
        return;
    gauge()->font(matched, cs_unicode, 0);
    stream_ << '/' << ps_font_name(family, matched) << ' ' << matched.size() << " F\n";
}

// The page's coordinate system moves with the translation, so shapes are written untranslated.
void EPS_Canvas::translation(Point p)
{
    Point const d = p - translation();
    if (d == Point(0, 0))
        return;
    stream_ << d.x << ' ' << d.y << " t\n";
    IntegralCanvas::translation(p);
}

void EPS_Canvas::add_translation(Point p)
{
    if (p == Point(0, 0))
        return;
    stream_ << p.x << ' ' << p.y << " t\n";
    IntegralCanvas::add_translation(p);
}

// --- Attributes ---

// The dash is computed from the width stored before this call: the store comes last. A line writes
// its dash again from the right width in any case.
void EPS_Canvas::pen(Pen const &pen, bool restart)
{
    if (restart)
        reset_dash_phase();
    if (pen.width() != pen_.width())
        stream_ << (pen.width() == 0 ? 1 : pen.width()) << " w\n";
    if (pen.style() != pen_.style()) {
        if (pen.style() == Pen::solid)
            stream_ << "D\n";
        else if (pen.style() == Pen::dashed)
            stream_ << '[' << dash_len() << "] 0 d\n";
        else if (pen.style() == Pen::dotted)
            stream_ << '[' << dot_len() << ' ' << 2.0 * dash_len() - dot_len() << "] 0 d\n";
    }
    pen_ = pen;
}

void EPS_Canvas::set_color(Color const &color)
{
    if (color == color_)
        return;
    color_ = color;
    stream_ << channel(color.red()) << ' ' << channel(color.green()) << ' ' << channel(color.blue()) << " rg\n";
}

void EPS_Canvas::set_pen_color() { set_color(pen_.color()); }

void EPS_Canvas::set_brush_color() { set_color(brush_.color()); }

void EPS_Canvas::set_brush_pattern(bool with_operator)
{
    Color const &color = brush_.color();
    stream_ << channel(color.red()) << ' ' << channel(color.green()) << ' ' << channel(color.blue()) << ' '
            << hatch_pattern_name(brush_.fill_style());
    if (with_operator)
        stream_ << " P\n";
}

char const *EPS_Canvas::ps_font_name(PSFont family, Font const &font)
{
    int index = family == ps_helvetica ? 4 : family == ps_courier ? 8 : 0;
    if (font.italic())
        index += 1;
    if (font.bold())
        index += 2;
    return ps_font_names[index];
}

// --- Saved states ---

void EPS_Canvas::gsave()
{
    state_stack_.push_back(
        SavedState{color_, pen_, brush_, font(), background_, text_color_, angle_, char_set_});
    stream_ << "q\n";
}

void EPS_Canvas::grestore()
{
    stream_ << "Q\n";
    if (state_stack_.empty())
        return;
    SavedState const saved = state_stack_.back();
    state_stack_.pop_back();
    background(saved.background);
    text_color(saved.text_color);
    font(saved.font, saved.char_set, saved.angle);
    brush(saved.brush);
    pen(saved.pen, true);
    set_color(saved.color);
}

// --- Shapes ---

// A dashed line carries its own dash, with the phase left by the line before; the phase then goes
// back by the line's length, modulo the period, and is kept within one period below 0.
void EPS_Canvas::line(Point from, Point to)
{
    bool const dashing = pen_.style() != Pen::solid;
    double const period = 2.0 * dash_len();
    if (pen_.style() == Pen::dashed)
        stream_ << '[' << dash_len() << "] " << -dash_phase() << " d\n";
    else if (pen_.style() == Pen::dotted)
        stream_ << '[' << dot_len() << ' ' << period - dot_len() << "] " << -dash_phase() << " d\n";
    set_pen_color();
    stream_ << from.x << ' ' << from.y << " m " << to.x << ' ' << to.y << " l S\n";
    if (dashing) {
        double const dx = static_cast<double>(to.x - from.x);
        double const dy = static_cast<double>(to.y - from.y);
        double phase = dash_phase() - std::fmod(std::sqrt(dx * dx + dy * dy), period);
        if (phase < -period)
            phase += period;
        dash_phase(phase);
    }
}

void EPS_Canvas::poly_line(Point const *points, std::size_t count, bool closed)
{
    if (points == nullptr || count < 2)
        return;
    reset_dash_phase();
    set_pen_color();
    stream_ << points[0].x << ' ' << points[0].y << " m\n";
    for (std::size_t i = 1; i < count; ++i)
        stream_ << points[i].x << ' ' << points[i].y << " l\n";
    stream_ << (closed ? "s\n" : "S\n");
}

void EPS_Canvas::frame_rect(Rect const &r)
{
    reset_dash_phase();
    set_pen_color();
    stream_ << r.left() << ' ' << r.top() << ' ' << r.width() << ' ' << r.height() << " rs\n";
}

// A hatch sets the pattern colour space, which a gsave around the fill keeps from leaking.
void EPS_Canvas::fill_rect(Rect const &r)
{
    bool const patterned = brush_.fill_style() != Brush::solid;
    if (patterned) {
        gsave();
        set_brush_pattern(true);
    } else {
        set_brush_color();
    }
    stream_ << r.left() << ' ' << r.top() << ' ' << r.width() << ' ' << r.height() << " rf\n";
    if (patterned)
        grestore();
}

// In single precision: rx is half the width, and the centre lies rx from the left; a square gives a
// circle of radius rx. An ellipse is never dashed: a solid copy of the pen strokes it.
void EPS_Canvas::frame_ellipse(Rect const &r)
{
    reset_dash_phase();
    if (degenerate_ellipse(r))
        return;
    Pen const saved = pen_;
    if (pen_.style() != Pen::solid) {
        Pen solid = pen_;
        solid.style(Pen::solid);
        pen(solid, true);
    }
    set_pen_color();
    float const rx = static_cast<float>(r.width()) * 0.5f;
    float const cx = static_cast<float>(r.left()) + rx;
    if (r.width() == r.height()) {
        float const cy = static_cast<float>(r.top()) + rx;
        stream_ << "n " << cx << ' ' << cy << ' ' << rx << " c S\n";
    } else {
        float const ry = static_cast<float>(r.height()) * 0.5f;
        float const cy = static_cast<float>(r.top()) + ry;
        stream_ << cx << ' ' << cy << ' ' << rx << ' ' << ry << " es\n";
    }
    pen(saved, true);
}

// A hatched ellipse goes through `ep`, which saves the state itself.
void EPS_Canvas::fill_ellipse(Rect const &r)
{
    if (degenerate_ellipse(r))
        return;
    bool const patterned = brush_.fill_style() != Brush::solid;
    float const rx = static_cast<float>(r.width()) * 0.5f;
    float const cx = static_cast<float>(r.left()) + rx;
    if (r.width() == r.height()) {
        float const cy = static_cast<float>(r.top()) + rx;
        if (patterned) {
            gsave();
            set_brush_pattern(true);
        } else {
            set_brush_color();
        }
        stream_ << "n " << cx << ' ' << cy << ' ' << rx << " c f\n";
        if (patterned)
            grestore();
        return;
    }
    float const ry = static_cast<float>(r.height()) * 0.5f;
    float const cy = static_cast<float>(r.top()) + ry;
    if (patterned) {
        set_brush_pattern(false);
        stream_ << ' ' << cx << ' ' << cy << ' ' << rx << ' ' << ry << " ep\n";
    } else {
        set_brush_color();
        stream_ << cx << ' ' << cy << ' ' << rx << ' ' << ry << " ef\n";
    }
}

void EPS_Canvas::fill_polygon(Point const *points, std::size_t count, bool winding)
{
    if (points == nullptr || count < 3)
        return;
    bool const patterned = brush_.fill_style() != Brush::solid;
    if (patterned) {
        gsave();
        set_brush_pattern(true);
    } else {
        set_brush_color();
    }
    stream_ << points[0].x << ' ' << points[0].y << " m\n";
    for (std::size_t i = 1; i < count; ++i)
        stream_ << points[i].x << ' ' << points[i].y << " l\n";
    stream_ << "h " << (winding ? "f\n" : "f*\n");
    if (patterned)
        grestore();
}

// --- Text ---

// The fonts are ISO Latin 1, so a unit above 255 has no way into a Unicode run and is dropped. In any
// other set a printable unit is written as its octal code without a backslash: only Unicode text
// comes out readable. Text in a symbol set is left out.
void EPS_Canvas::text(wchar const *text, long count, Point p)
{
    if (char_set_ == cs_symbol || text == nullptr || count < 1)
        return;
    set_color(text_color_);
    if (angle_ == 0)
        stream_ << p.x << ' ' << p.y << " m\n(";
    else
        stream_ << '(';
    bool const unicode = char_set_ == cs_unicode;
    stream_ << std::oct;
    for (long i = 0; i < count; ++i) {
        unsigned const unit = text[i];
        if (unit == '(' || unit == ')' || unit == '\\')
            stream_ << '\\' << static_cast<char>(unit);
        else if (unit >= 32 && unit <= 126) {
            if (unicode)
                stream_ << static_cast<char>(unit);
            else
                stream_ << unit;
        } else if (unit <= 255 || !unicode)
            stream_ << '\\' << unit;
    }
    stream_ << std::dec;
    if (angle_ == 0)
        stream_ << ") Tj\n";
    else
        stream_ << ")\n" << p.x << ' ' << p.y << ' ' << -angle_ << " Tr\n";
}

// --- Clip ---

// A clip lives in a saved state of its own, so that removing it is a grestore; a new clip replaces
// the old one rather than cutting it further.
void EPS_Canvas::clip_rect(Rect const &r)
{
    no_clip_rect();
    clipping_ = true;
    clip_ = r;
    gsave();
    stream_ << r.left() << ' ' << r.top() << ' ' << r.width() << ' ' << r.height() << " rc n\n";
}

void EPS_Canvas::no_clip_rect()
{
    if (!clipping_)
        return;
    grestore();
    clipping_ = false;
}

// --- Document ---

// The bounding box is in points, rounded, in the order left, top, right, bottom. The page is then
// scaled to twentieths of a point with y running downwards from the top of the box.
void EPS_Canvas::put_header(char const *creator)
{
    stream_ << "%!PS-Adobe-2.0 EPSF-2.0\n%%BoundingBox: "
            << round_to_long(static_cast<float>(extension_.left()) / 20.0f) << ' '
            << round_to_long(static_cast<float>(extension_.top()) / 20.0f) << ' '
            << round_to_long(static_cast<float>(extension_.right()) / 20.0f) << ' '
            << round_to_long(static_cast<float>(extension_.bottom()) / 20.0f) << '\n';
    if (creator != nullptr && *creator != '\0')
        stream_ << "%%Creator: " << creator << '\n';
    std::string const date = creation_date();
    if (!date.empty())
        stream_ << "%%CreationDate: " << date << '\n';
    stream_ << "%%EndComments\n%%BeginProlog\n";
    put_prolog();
    stream_ << "%%EndProlog\n%%Page: 1 1\n";
    stream_ << "0.05 -0.05 scale\n0 " << -(extension_.bottom() - extension_.top()) << " translate\n";
    stream_ << "1 setlinecap\n" << (pen_.width() == 0 ? 1 : pen_.width()) << " setlinewidth\n";

    Font const current = gauge()->font();
    Font matched;
    PSFont const family = match_font(current, matched);
    if (family == ps_none)
        return;
    if (!(matched == current))
        gauge()->font(matched, cs_unicode, 0);
    stream_ << '/' << ps_font_name(family, matched) << ' ' << matched.size() << " F\n";
}

void EPS_Canvas::put_footer()
{
    if (clipping_)
        stream_ << "Q\n";
    stream_ << "showpage\n%%EOF\n";
}

}  // namespace Tavi
