// RecordingCanvas: fixed metrics scaled by the font size, and a written record of every call.
#include "support/recording_canvas.h"

#include <cstdio>

namespace TaviTest {

using namespace Tavi;

namespace {

char const *style_name(Pen::LineStyle s)
{
    switch (s) {
    case Pen::solid:
        return "solid";
    case Pen::dashed:
        return "dashed";
    case Pen::dotted:
        return "dotted";
    }
    return "unknown";
}

std::string flag(bool b) { return b ? "1" : "0"; }

std::string quoted(wchar const *text, long count)
{
    if (text == nullptr)
        return "null";
    return "\"" + utf8(text, count) + "\"";
}

}  // namespace

std::string color_text(Color const &c)
{
    char buf[16];
    if (c.alpha() == 255)
        std::snprintf(buf, sizeof buf, "#%02x%02x%02x", c.red(), c.green(), c.blue());
    else
        std::snprintf(buf, sizeof buf, "#%02x%02x%02x%02x", c.red(), c.green(), c.blue(), c.alpha());
    return buf;
}

std::string pen_text(Pen const &p)
{
    return std::to_string(p.width()) + "/" + color_text(p.color()) + "/" + style_name(p.style());
}

std::string brush_text(Brush const &b)
{
    return std::to_string(static_cast<int>(b.fill_style())) + "/" + color_text(b.color());
}

// UTF-16 to UTF-8; a unit that is half of a broken pair is written as U+FFFD.
std::string utf8(wchar const *text, long count)
{
    std::string out;
    if (text == nullptr)
        return out;
    for (long i = 0; i < count; ++i) {
        unsigned long c = text[i];
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < count && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            c = 0x10000 + ((c - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            ++i;
        } else if (c >= 0xD800 && c <= 0xDFFF) {
            c = 0xFFFD;
        }
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0x800) {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out += static_cast<char>(0xE0 | (c >> 12));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (c >> 18));
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

RecordingCanvas::RecordingCanvas(Extent const &dpi)
    : dpi_(dpi),
      char_set_(cs_unicode),
      angle_(0),
      pen_(0, Color::black, Pen::solid),
      brush_(Brush::solid, Color::black),
      text_color_(Color::black),
      background_(Color::white),
      clipped_(false),
      printing_(false),
      antialias_(false),
      antialias_text_(false)
{
}

RecordingCanvas::~RecordingCanvas() = default;

std::size_t RecordingCanvas::measure_count(std::string const &operation) const
{
    std::size_t n = 0;
    for (std::string const &m : measures_)
        if (m.compare(0, operation.size() + 1, operation + "(") == 0)
            ++n;
    return n;
}

long RecordingCanvas::scaled(long n) const { return n * font_.size() / 240; }

std::string RecordingCanvas::point(Point p) const
{
    translate(p.x, p.y);
    return std::to_string(p.x) + "," + std::to_string(p.y);
}

std::string RecordingCanvas::rect(Rect const &r) const
{
    long left = r.left(), top = r.top(), right = r.right(), bottom = r.bottom();
    translate(left, top);
    translate(right, bottom);
    return std::to_string(top) + "," + std::to_string(left) + "," + std::to_string(bottom) + "," +
           std::to_string(right);
}

std::string RecordingCanvas::points(Point const *pts, std::size_t count) const
{
    std::string out = "[" + std::to_string(count) + "](";
    if (pts == nullptr)
        return out + "null";
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0)
            out += ",";
        out += point(pts[i]);
    }
    return out;
}

// --- Gauge ------------------------------------------------------------------------------------------

Font RecordingCanvas::font() const { return font_; }

void RecordingCanvas::font(Font const &font, CharSet char_set, long angle)
{
    font_ = font;
    char_set_ = char_set;
    angle_ = angle;
    record("font(" + utf8(font.name(), static_cast<long>(std::u16string(font.name()).size())) + "," +
           std::to_string(font.size()) + "," + flag(font.bold()) + "," + flag(font.italic()) +
           ",cs=" + std::to_string(static_cast<int>(char_set)) + ",angle=" + std::to_string(angle) + ")");
}

Gauge::CharSet RecordingCanvas::char_set() { return char_set_; }

long RecordingCanvas::text_angle() const { return angle_; }

Extent RecordingCanvas::text_extent(wchar const *text, long count)
{
    measure("text_extent(" + quoted(text, count) + ")");
    if (text == nullptr || count < 1)
        return Extent(0, 0);
    return Extent(count * scaled(10), scaled(8) + scaled(2));
}

Box RecordingCanvas::text_box(wchar const *text, long count)
{
    measure("text_box(" + quoted(text, count) + ")");
    if (text == nullptr || count < 1)
        return Box::zero;
    return Box(count * scaled(10), scaled(8), scaled(2));
}

void RecordingCanvas::text_metrics(wchar const *text, long count, Box &box, long &left, long &right)
{
    measure("text_metrics(" + quoted(text, count) + ")");
    left = 0;
    right = 0;
    if (text == nullptr || count < 1)
        box = Box::zero;
    else
        box = Box(count * scaled(10), scaled(7), scaled(1));
}

long RecordingCanvas::font_ascent() const
{
    measure("font_ascent()");
    return scaled(8);
}

long RecordingCanvas::font_descent() const
{
    measure("font_descent()");
    return scaled(2);
}

long RecordingCanvas::font_leading() const
{
    measure("font_leading()");
    return 0;
}

long RecordingCanvas::font_em() const
{
    measure("font_em()");
    return scaled(8) + scaled(2);
}

long RecordingCanvas::font_ex() const
{
    measure("font_ex()");
    return scaled(5);
}

long RecordingCanvas::font_X_height() const
{
    measure("font_X_height()");
    return scaled(7);
}

void RecordingCanvas::char_bearing(wchar const *text, long &left, long &right) const
{
    measure("char_bearing(" + quoted(text, text != nullptr && text[0] != 0 ? 1 : 0) + ")");
    left = 0;
    right = 0;
}

Extent RecordingCanvas::dpi() { return dpi_; }

bool RecordingCanvas::printing() const { return printing_; }

Extent RecordingCanvas::twips_to_pixel(Extent const &twips) { return twips_to_device(twips, dpi_); }

// --- Canvas -----------------------------------------------------------------------------------------

Pen RecordingCanvas::pen() const { return pen_; }

void RecordingCanvas::pen(Pen const &pen, bool restart)
{
    pen_ = pen;
    if (restart)
        reset_dash_phase();
    record("pen(" + pen_text(pen) + ",restart=" + flag(restart) + ")");
}

Brush RecordingCanvas::brush() const { return brush_; }

void RecordingCanvas::brush(Brush const &brush)
{
    brush_ = brush;
    record("brush(" + brush_text(brush) + ")");
}

void RecordingCanvas::text_color(Color color)
{
    text_color_ = color;
    record("text_color(" + color_text(color) + ")");
}

void RecordingCanvas::background(Color color)
{
    background_ = color;
    record("background(" + color_text(color) + ")");
}

void RecordingCanvas::line(Point from, Point to, Pen const &pen, bool restart)
{
    if (restart)
        reset_dash_phase();
    record("line(" + point(from) + "," + point(to) + ",pen=" + pen_text(pen) + ",restart=" + flag(restart) + ")");
}

void RecordingCanvas::line(Point from, Point to) { record("line(" + point(from) + "," + point(to) + ")"); }

void RecordingCanvas::poly_line(Point const *pts, std::size_t count, Pen const &pen, bool closed)
{
    reset_dash_phase();
    record("poly_line" + points(pts, count) + ",pen=" + pen_text(pen) + ",closed=" + flag(closed) + ")");
}

void RecordingCanvas::poly_line(Point const *pts, std::size_t count, bool closed)
{
    reset_dash_phase();
    record("poly_line" + points(pts, count) + ",closed=" + flag(closed) + ")");
}

void RecordingCanvas::frame_rect(Rect const &r, Pen const &pen)
{
    reset_dash_phase();
    record("frame_rect(" + rect(r) + ",pen=" + pen_text(pen) + ")");
}

void RecordingCanvas::frame_rect(Rect const &r)
{
    reset_dash_phase();
    record("frame_rect(" + rect(r) + ")");
}

void RecordingCanvas::fill_rect(Rect const &r, Brush const &brush)
{
    record("fill_rect(" + rect(r) + ",brush=" + brush_text(brush) + ")");
}

void RecordingCanvas::fill_rect(Rect const &r) { record("fill_rect(" + rect(r) + ")"); }

void RecordingCanvas::frame_ellipse(Rect const &r, Pen const &pen)
{
    reset_dash_phase();
    record("frame_ellipse(" + rect(r) + ",pen=" + pen_text(pen) + ")");
}

void RecordingCanvas::frame_ellipse(Rect const &r)
{
    reset_dash_phase();
    record("frame_ellipse(" + rect(r) + ")");
}

void RecordingCanvas::fill_ellipse(Rect const &r, Brush const &brush)
{
    record("fill_ellipse(" + rect(r) + ",brush=" + brush_text(brush) + ")");
}

void RecordingCanvas::fill_ellipse(Rect const &r) { record("fill_ellipse(" + rect(r) + ")"); }

void RecordingCanvas::fill_polygon(Point const *pts, std::size_t count, Brush const &brush, bool winding)
{
    record("fill_polygon" + points(pts, count) + ",brush=" + brush_text(brush) + ",winding=" + flag(winding) + ")");
}

void RecordingCanvas::fill_polygon(Point const *pts, std::size_t count, bool winding)
{
    record("fill_polygon" + points(pts, count) + ",winding=" + flag(winding) + ")");
}

void RecordingCanvas::shadow(Rect const &r) { record("shadow(" + rect(r) + ")"); }

void RecordingCanvas::erase(Color color) { record("erase(" + color_text(color) + ")"); }

void RecordingCanvas::erase() { record("erase()"); }

void RecordingCanvas::text(wchar const *text, long count, Point p)
{
    record("text(" + quoted(text, count) + "," + point(p) + ")");
}

bool RecordingCanvas::damaged(Rect const &) const { return true; }
bool RecordingCanvas::damaged(Extension const &) const { return true; }
bool RecordingCanvas::any_real_damage() const { return true; }
bool RecordingCanvas::really_damaged(Rect const &) const { return true; }
bool RecordingCanvas::really_damaged(Extension const &) const { return true; }

bool RecordingCanvas::clip_rect(Rect *r)
{
    if (clipped_ && r != nullptr)
        *r = clip_;
    return clipped_;
}

void RecordingCanvas::clip_rect(Rect const &r)
{
    clipped_ = true;
    clip_ = r;
    record("clip_rect(" + rect(r) + ")");
}

void RecordingCanvas::no_clip_rect()
{
    clipped_ = false;
    record("no_clip_rect()");
}

bool RecordingCanvas::short_coordinates() const { return false; }
bool RecordingCanvas::antialias() const { return antialias_; }

void RecordingCanvas::antialias(bool on)
{
    antialias_ = on;
    record("antialias(" + flag(on) + ")");
}

bool RecordingCanvas::antialias_text() const { return antialias_text_; }

void RecordingCanvas::antialias_text(bool on)
{
    antialias_text_ = on;
    record("antialias_text(" + flag(on) + ")");
}

}  // namespace TaviTest
