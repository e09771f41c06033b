// MeasuringCanvas: the other gauge's metrics, and no paint.
#include "tavi/canvas/measuringcanvas.h"

namespace Tavi {

MeasuringCanvas::MeasuringCanvas(Gauge *gauge) : gauge_(gauge) {}

MeasuringCanvas::~MeasuringCanvas() = default;

Font MeasuringCanvas::font() const { return gauge_->font(); }
void MeasuringCanvas::font(Font const &font, CharSet char_set, long angle) { gauge_->font(font, char_set, angle); }
Gauge::CharSet MeasuringCanvas::char_set() { return gauge_->char_set(); }
long MeasuringCanvas::text_angle() const { return gauge_->text_angle(); }
Extent MeasuringCanvas::text_extent(wchar const *text, long count) { return gauge_->text_extent(text, count); }
Box MeasuringCanvas::text_box(wchar const *text, long count) { return gauge_->text_box(text, count); }
void MeasuringCanvas::text_metrics(wchar const *text, long count, Box &box, long &left, long &right)
{
    gauge_->text_metrics(text, count, box, left, right);
}
long MeasuringCanvas::font_ascent() const { return gauge_->font_ascent(); }
long MeasuringCanvas::font_descent() const { return gauge_->font_descent(); }
long MeasuringCanvas::font_leading() const { return gauge_->font_leading(); }
long MeasuringCanvas::font_em() const { return gauge_->font_em(); }
long MeasuringCanvas::font_ex() const { return gauge_->font_ex(); }
long MeasuringCanvas::font_X_height() const { return gauge_->font_X_height(); }
void MeasuringCanvas::char_bearing(wchar const *text, long &left, long &right) const
{
    gauge_->char_bearing(text, left, right);
}
Extent MeasuringCanvas::dpi() { return gauge_->dpi(); }
bool MeasuringCanvas::printing() const { return gauge_->printing(); }
Extent MeasuringCanvas::twips_to_pixel(Extent const &twips) { return gauge_->twips_to_pixel(twips); }

Pen MeasuringCanvas::pen() const { return pen_; }
void MeasuringCanvas::pen(Pen const &pen, bool) { pen_ = pen; }
Brush MeasuringCanvas::brush() const { return brush_; }
void MeasuringCanvas::brush(Brush const &brush) { brush_ = brush; }
void MeasuringCanvas::text_color(Color) {}
void MeasuringCanvas::background(Color) {}
void MeasuringCanvas::line(Point, Point, Pen const &, bool) {}
void MeasuringCanvas::line(Point, Point) {}
void MeasuringCanvas::poly_line(Point const *, std::size_t, Pen const &, bool) {}
void MeasuringCanvas::poly_line(Point const *, std::size_t, bool) {}
void MeasuringCanvas::frame_rect(Rect const &, Pen const &) {}
void MeasuringCanvas::frame_rect(Rect const &) {}
void MeasuringCanvas::fill_rect(Rect const &, Brush const &) {}
void MeasuringCanvas::fill_rect(Rect const &) {}
void MeasuringCanvas::frame_ellipse(Rect const &, Pen const &) {}
void MeasuringCanvas::frame_ellipse(Rect const &) {}
void MeasuringCanvas::fill_ellipse(Rect const &, Brush const &) {}
void MeasuringCanvas::fill_ellipse(Rect const &) {}
void MeasuringCanvas::fill_polygon(Point const *, std::size_t, Brush const &, bool) {}
void MeasuringCanvas::fill_polygon(Point const *, std::size_t, bool) {}
void MeasuringCanvas::shadow(Rect const &) {}
void MeasuringCanvas::erase(Color) {}
void MeasuringCanvas::erase() {}
void MeasuringCanvas::text(wchar const *, long, Point) {}
bool MeasuringCanvas::damaged(Rect const &) const { return true; }
bool MeasuringCanvas::damaged(Extension const &) const { return true; }
bool MeasuringCanvas::any_real_damage() const { return true; }
bool MeasuringCanvas::really_damaged(Rect const &) const { return true; }
bool MeasuringCanvas::really_damaged(Extension const &) const { return true; }
bool MeasuringCanvas::clip_rect(Rect *) { return false; }
void MeasuringCanvas::clip_rect(Rect const &) {}
void MeasuringCanvas::no_clip_rect() {}
bool MeasuringCanvas::short_coordinates() const { return false; }
bool MeasuringCanvas::antialias() const { return false; }
void MeasuringCanvas::antialias(bool) {}
bool MeasuringCanvas::antialias_text() const { return false; }
void MeasuringCanvas::antialias_text(bool) {}

}  // namespace Tavi
