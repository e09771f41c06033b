// MeasuringCanvas: a canvas that paints nothing. Every metric is that of another gauge, every drawing
// call is dropped, and everything counts as damaged. A pass that walks the road of drawing for what
// it computes on the way (where each part of a formula stands) runs on one, so that it finds exactly
// the places that drawing would use.
#pragma once

#include "tavi/canvas/brush.h"
#include "tavi/canvas/integralcanvas.h"
#include "tavi/canvas/pen.h"

namespace Tavi {

class MeasuringCanvas : public IntegralCanvas
{
public:
    // The gauge must outlive the canvas.
    explicit MeasuringCanvas(Gauge *gauge);
    ~MeasuringCanvas() override;

    using IntegralCanvas::clip_rect;
    using IntegralCanvas::fill_ellipse;
    using IntegralCanvas::fill_polygon;
    using IntegralCanvas::fill_rect;
    using IntegralCanvas::font;
    using IntegralCanvas::frame_ellipse;
    using IntegralCanvas::frame_rect;
    using IntegralCanvas::line;
    using IntegralCanvas::pen;
    using IntegralCanvas::poly_line;

    // Gauge: the other gauge's answers.
    Font font() const override;
    void font(Font const &font, CharSet char_set, long angle) override;
    CharSet char_set() override;
    long text_angle() const override;
    Extent text_extent(wchar const *text, long count) override;
    Box text_box(wchar const *text, long count) override;
    void text_metrics(wchar const *text, long count, Box &box, long &left, long &right) override;
    long font_ascent() const override;
    long font_descent() const override;
    long font_leading() const override;
    long font_em() const override;
    long font_ex() const override;
    long font_X_height() const override;
    void char_bearing(wchar const *text, long &left, long &right) const override;
    Extent dpi() override;
    bool printing() const override;
    Extent twips_to_pixel(Extent const &twips) override;

    // Canvas: pen and brush are kept so that they read back; nothing is painted.
    Pen pen() const override;
    void pen(Pen const &pen, bool restart) override;
    Brush brush() const override;
    void brush(Brush const &brush) override;
    void text_color(Color color) override;
    void background(Color color) override;
    void line(Point from, Point to, Pen const &pen, bool restart) override;
    void line(Point from, Point to) override;
    void poly_line(Point const *points, std::size_t count, Pen const &pen, bool closed) override;
    void poly_line(Point const *points, std::size_t count, bool closed) override;
    void frame_rect(Rect const &r, Pen const &pen) override;
    void frame_rect(Rect const &r) override;
    void fill_rect(Rect const &r, Brush const &brush) override;
    void fill_rect(Rect const &r) override;
    void frame_ellipse(Rect const &r, Pen const &pen) override;
    void frame_ellipse(Rect const &r) override;
    void fill_ellipse(Rect const &r, Brush const &brush) override;
    void fill_ellipse(Rect const &r) override;
    void fill_polygon(Point const *points, std::size_t count, Brush const &brush, bool winding) override;
    void fill_polygon(Point const *points, std::size_t count, bool winding) override;
    void shadow(Rect const &r) override;
    void erase(Color color) override;
    void erase() override;
    void text(wchar const *text, long count, Point p) override;
    bool damaged(Rect const &r) const override;
    bool damaged(Extension const &e) const override;
    bool any_real_damage() const override;
    bool really_damaged(Rect const &r) const override;
    bool really_damaged(Extension const &e) const override;
    bool clip_rect(Rect *r) override;
    void clip_rect(Rect const &r) override;
    void no_clip_rect() override;
    bool short_coordinates() const override;
    bool antialias() const override;
    void antialias(bool on) override;
    bool antialias_text() const override;
    void antialias_text(bool on) override;

private:
    Gauge *gauge_;
    Pen pen_;
    Brush brush_;
};

}  // namespace Tavi
