// StreamCanvas: the state, metrics and answers that the SVG and EPS writers share.
#include "tavi/canvas/streamcanvas.h"

#include <cstdio>
#include <ctime>

namespace Tavi {

StreamCanvas::StreamCanvas(std::ostream &stream, Extension const &extension, CharSet char_set)
    : stream_(stream),
      extension_(extension),
      clipping_(false),
      clip_(),
      pen_(0, Color::black, Pen::solid),
      brush_(Brush::solid, Color::black),
      background_(Color::white),
      text_color_(Color::black),
      angle_(0),
      char_set_(char_set)
{
}

StreamCanvas::~StreamCanvas() = default;

// asctime's own format, in the C locale whatever the process's, with the names fixed in English.
std::string StreamCanvas::creation_date()
{
    static char const days[7][4] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static char const months[12][4] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::time_t const now = std::time(nullptr);
    std::tm local;
    if (now == static_cast<std::time_t>(-1) || localtime_r(&now, &local) == nullptr)
        return std::string();
    if (local.tm_wday < 0 || local.tm_wday > 6 || local.tm_mon < 0 || local.tm_mon > 11)
        return std::string();
    char text[64];
    std::snprintf(text, sizeof text, "%.3s %.3s%3d %.2d:%.2d:%.2d %d", days[local.tm_wday], months[local.tm_mon],
                  local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec, 1900 + local.tm_year);
    return text;
}

// --- Gauge: metrics come from the subclass's gauge ---

Font StreamCanvas::font() const { return gauge()->font(); }

Gauge::CharSet StreamCanvas::char_set() { return char_set_; }

long StreamCanvas::text_angle() const { return angle_; }

Extent StreamCanvas::text_extent(wchar const *text, long count) { return gauge()->text_extent(text, count); }

Box StreamCanvas::text_box(wchar const *text, long count) { return gauge()->text_box(text, count); }

void StreamCanvas::text_metrics(wchar const *text, long count, Box &box, long &left, long &right)
{
    gauge()->text_metrics(text, count, box, left, right);
}

long StreamCanvas::font_ascent() const { return gauge()->font_ascent(); }

long StreamCanvas::font_descent() const { return gauge()->font_descent(); }

long StreamCanvas::font_leading() const { return gauge()->font_leading(); }

long StreamCanvas::font_em() const { return gauge()->font_em(); }

long StreamCanvas::font_ex() const { return gauge()->font_ex(); }

long StreamCanvas::font_X_height() const { return gauge()->font_X_height(); }

void StreamCanvas::char_bearing(wchar const *text, long &left, long &right) const
{
    gauge()->char_bearing(text, left, right);
}

Extent StreamCanvas::dpi() { return Extent(1440, 1440); }

bool StreamCanvas::printing() const { return true; }

Extent StreamCanvas::twips_to_pixel(Extent const &twips) { return twips; }

// --- Attributes ---

Pen StreamCanvas::pen() const { return pen_; }

Brush StreamCanvas::brush() const { return brush_; }

void StreamCanvas::brush(Brush const &brush) { brush_ = brush; }

void StreamCanvas::text_color(Color color) { text_color_ = color; }

void StreamCanvas::background(Color color) { background_ = color; }

double StreamCanvas::dash_len() const { return Canvas::dash_length(pen_.width(), Extent(1440, 1440)); }

double StreamCanvas::dot_len() const { return static_cast<double>(pen_.width()); }

// --- Shapes with a pen or brush of their own ---

void StreamCanvas::line(Point from, Point to, Pen const &pen, bool restart)
{
    if (restart)
        reset_dash_phase();
    Pen const saved = pen_;
    this->pen(pen, false);
    line(from, to);
    this->pen(saved, false);
}

void StreamCanvas::poly_line(Point const *points, std::size_t count, Pen const &pen, bool closed)
{
    Pen const saved = pen_;
    this->pen(pen, false);
    poly_line(points, count, closed);
    this->pen(saved, false);
}

void StreamCanvas::frame_rect(Rect const &r, Pen const &pen)
{
    Pen const saved = pen_;
    this->pen(pen, false);
    frame_rect(r);
    this->pen(saved, false);
}

void StreamCanvas::fill_rect(Rect const &r, Brush const &brush)
{
    Brush const saved = brush_;
    this->brush(brush);
    fill_rect(r);
    this->brush(saved);
}

void StreamCanvas::frame_ellipse(Rect const &r, Pen const &pen)
{
    Pen const saved = pen_;
    this->pen(pen, false);
    frame_ellipse(r);
    this->pen(saved, false);
}

void StreamCanvas::fill_ellipse(Rect const &r, Brush const &brush)
{
    Brush const saved = brush_;
    this->brush(brush);
    fill_ellipse(r);
    this->brush(saved);
}

void StreamCanvas::fill_polygon(Point const *points, std::size_t count, Brush const &brush, bool winding)
{
    Brush const saved = brush_;
    this->brush(brush);
    fill_polygon(points, count, winding);
    this->brush(saved);
}

void StreamCanvas::shadow(Rect const &) {}

void StreamCanvas::erase(Color color) { fill_rect(extension_.rect(), Brush(Brush::solid, color)); }

void StreamCanvas::erase() { erase(background_); }

// --- Damage, clip and hints: a file has no damage, and rendering hints do not apply ---

bool StreamCanvas::damaged(Rect const &) const { return true; }

bool StreamCanvas::damaged(Extension const &) const { return true; }

bool StreamCanvas::any_real_damage() const { return true; }

bool StreamCanvas::really_damaged(Rect const &) const { return true; }

bool StreamCanvas::really_damaged(Extension const &) const { return true; }

bool StreamCanvas::clip_rect(Rect *r)
{
    if (r != nullptr && clipping_)
        *r = clip_;
    return clipping_;
}

bool StreamCanvas::short_coordinates() const { return false; }

bool StreamCanvas::antialias() const { return false; }

void StreamCanvas::antialias(bool) {}

bool StreamCanvas::antialias_text() const { return false; }

void StreamCanvas::antialias_text(bool) {}

}  // namespace Tavi
