// Canvas: a Gauge that also draws. Pens, brushes, shapes, text, damage and clipping; every shape in an
// integral form and an _f form on doubles. It also holds the dash geometry that every surface shares,
// so that a dashed or dotted line looks the same everywhere and runs on across the segments of a path.
#pragma once

#include "tavi/canvas/brush.h"
#include "tavi/canvas/color.h"
#include "tavi/canvas/gauge.h"
#include "tavi/canvas/pen.h"
#include "tavi/geometry/extension.h"
#include "tavi/geometry/point.h"
#include "tavi/geometry/rect.h"
#include "tavi/kxt/wchar.h"

#include <cstddef>

namespace Tavi {

class Canvas : public Gauge
{
public:
    ~Canvas() override;

    virtual Pen pen() const = 0;
    // restart true also sets the dash phase back to 0.
    virtual void pen(Pen const &pen, bool restart) = 0;
    virtual Brush brush() const = 0;
    virtual void brush(Brush const &brush) = 0;
    virtual void text_color(Color color) = 0;
    virtual void background(Color color) = 0;
    // With this pen; the current pen comes back afterwards.
    virtual void line(Point from, Point to, Pen const &pen, bool restart) = 0;
    virtual void line(Point from, Point to) = 0;
    virtual void line_f(PointF from, PointF to, Pen const &pen, bool restart) = 0;
    virtual void line_f(PointF from, PointF to) = 0;
    // closed joins the last point to the first.
    virtual void poly_line(Point const *points, std::size_t count, Pen const &pen, bool closed) = 0;
    virtual void poly_line(Point const *points, std::size_t count, bool closed) = 0;
    virtual void poly_line_f(PointF const *points, std::size_t count, Pen const &pen, bool closed) = 0;
    virtual void poly_line_f(PointF const *points, std::size_t count, bool closed) = 0;
    virtual void frame_rect(Rect const &r, Pen const &pen) = 0;
    virtual void frame_rect(Rect const &r) = 0;
    virtual void frame_rect_f(RectF const &r, Pen const &pen) = 0;
    virtual void frame_rect_f(RectF const &r) = 0;
    virtual void fill_rect(Rect const &r, Brush const &brush) = 0;
    virtual void fill_rect(Rect const &r) = 0;
    virtual void fill_rect_f(RectF const &r, Brush const &brush) = 0;
    virtual void fill_rect_f(RectF const &r) = 0;
    virtual void frame_ellipse(Rect const &r, Pen const &pen) = 0;
    virtual void frame_ellipse(Rect const &r) = 0;
    virtual void frame_ellipse_f(RectF const &r, Pen const &pen) = 0;
    virtual void frame_ellipse_f(RectF const &r) = 0;
    virtual void fill_ellipse(Rect const &r, Brush const &brush) = 0;
    virtual void fill_ellipse(Rect const &r) = 0;
    virtual void fill_ellipse_f(RectF const &r, Brush const &brush) = 0;
    virtual void fill_ellipse_f(RectF const &r) = 0;
    // winding true is the non-zero rule, false the even-odd rule.
    virtual void fill_polygon(Point const *points, std::size_t count, Brush const &brush, bool winding) = 0;
    virtual void fill_polygon(Point const *points, std::size_t count, bool winding) = 0;
    virtual void fill_polygon_f(PointF const *points, std::size_t count, Brush const &brush, bool winding) = 0;
    virtual void fill_polygon_f(PointF const *points, std::size_t count, bool winding) = 0;
    // Grey hatching over a disabled or shaded area; nothing on the print surfaces.
    virtual void shadow(Rect const &r) = 0;
    virtual void shadow_f(RectF const &r) = 0;
    virtual void erase(Color color) = 0;
    virtual void erase() = 0;
    // The point is the left end of the baseline.
    virtual void text(wchar const *text, long count, Point p) = 0;
    virtual void text_f(wchar const *text, long count, PointF p) = 0;
    virtual bool damaged(Rect const &r) const = 0;
    virtual bool damaged(Extension const &e) const = 0;
    virtual bool any_real_damage() const = 0;
    virtual bool really_damaged(Rect const &r) const = 0;
    virtual bool really_damaged(Extension const &e) const = 0;
    // True if a clip is active; copies it out when the pointer is not null.
    virtual bool clip_rect(Rect *r) = 0;
    // Replaces any earlier clip.
    virtual void clip_rect(Rect const &r) = 0;
    virtual void no_clip_rect() = 0;
    virtual bool short_coordinates() const = 0;
    virtual bool antialias() const = 0;
    virtual void antialias(bool on) = 0;
    virtual bool antialias_text() const = 0;
    virtual void antialias_text(bool on) = 0;

    // Dash geometry shared by all surfaces.
    //
    // The dash length D is five pen widths, but never less than the equivalent of 120 twips (six
    // points). The comparison is made in twips: D * 1440 / dpi_x below 120 makes D = dpi_x * 120 / 1440.
    // On the 1440-dpi surfaces that is max(5 * width, 120).
    static double dash_length(long pen_width, Extent const &dpi);

    // One period of a dashed or dotted stroke: on for `on`, then off for `off`; period = on + off = 2 D.
    // A dashed line is on for D and off for D; a dotted line is on for the pen's width (the dot) and
    // off for the rest of the period. A solid pen gives all three 0.
    struct DashPattern
    {
        double on;
        double off;
        double period;
    };
    static DashPattern dash_pattern(Pen const &pen, Extent const &dpi);

protected:
    Canvas();
    Canvas(Canvas const &) = default;
    Canvas &operator=(Canvas const &) = default;

    // Where the next dashed segment starts inside its period, kept across line calls so that a chain of
    // lines dashes as one path. 0 at construction; pen(..., true), line(..., pen, true), poly_line,
    // frame_rect and frame_ellipse set it back to 0. Each surface advances it as it strokes.
    double dash_phase() const { return dash_phase_; }
    void dash_phase(double phase) { dash_phase_ = phase; }
    void reset_dash_phase() { dash_phase_ = 0.0; }

private:
    double dash_phase_;
};

}  // namespace Tavi
