// IntegralCanvas: translation, and the floating-point operations rounded onto the integral ones.
#include "tavi/canvas/integralcanvas.h"

#include "tavi/geometry/rounding.h"

#include <memory>

namespace Tavi {

namespace {

// The point arrays of the path operations: up to this many points are converted in the caller's frame,
// so the usual brace and radical outlines cost no allocation.
constexpr std::size_t local_points = 256;

// Converts `count` points into `local`, or into a heap block when they do not fit; the block is freed
// by `heap` however the caller leaves. A null array stays null.
Point const *round_points(PointF const *points, std::size_t count, Point (&local)[local_points],
                          std::unique_ptr<Point[]> &heap)
{
    if (points == nullptr)
        return nullptr;
    Point *target = local;
    if (count > local_points) {
        heap.reset(new Point[count]);
        target = heap.get();
    }
    for (std::size_t i = 0; i < count; ++i)
        target[i] = points[i].to_point();
    return target;
}

}  // namespace

IntegralCanvas::IntegralCanvas() : translation_(0, 0) {}

IntegralCanvas::~IntegralCanvas() = default;

void IntegralCanvas::translate(long &x, long &y) const
{
    x += translation_.x;
    y += translation_.y;
}

void IntegralCanvas::translate_f(double &x, double &y) const
{
    x += static_cast<double>(translation_.x);
    y += static_cast<double>(translation_.y);
}

void IntegralCanvas::translation(Point p) { translation_ = p; }

Point IntegralCanvas::translation() { return translation_; }

void IntegralCanvas::translation_f(PointF const &p) { translation_ = p.to_point(); }

PointF IntegralCanvas::translation_f() { return PointF(translation_); }

void IntegralCanvas::add_translation(Point p) { translation_ += p; }

// Only the increment is rounded: three additions of 0.4 add nothing.
void IntegralCanvas::add_translation_f(PointF const &p) { translation_ += p.to_point(); }

ExtentF IntegralCanvas::twips_to_pixel_f(ExtentF const &twips) { return ExtentF(twips_to_pixel(twips.to_extent())); }

void IntegralCanvas::line_f(PointF from, PointF to, Pen const &pen, bool restart)
{
    line(from.to_point(), to.to_point(), pen, restart);
}

void IntegralCanvas::line_f(PointF from, PointF to) { line(from.to_point(), to.to_point()); }

void IntegralCanvas::poly_line_f(PointF const *points, std::size_t count, Pen const &pen, bool closed)
{
    Point local[local_points] = {};
    std::unique_ptr<Point[]> heap;
    poly_line(round_points(points, count, local, heap), count, pen, closed);
}

void IntegralCanvas::poly_line_f(PointF const *points, std::size_t count, bool closed)
{
    Point local[local_points] = {};
    std::unique_ptr<Point[]> heap;
    poly_line(round_points(points, count, local, heap), count, closed);
}

void IntegralCanvas::frame_rect_f(RectF const &r, Pen const &pen) { frame_rect(r.to_rect(), pen); }

void IntegralCanvas::frame_rect_f(RectF const &r) { frame_rect(r.to_rect()); }

void IntegralCanvas::fill_rect_f(RectF const &r, Brush const &brush) { fill_rect(r.to_rect(), brush); }

void IntegralCanvas::fill_rect_f(RectF const &r) { fill_rect(r.to_rect()); }

void IntegralCanvas::frame_ellipse_f(RectF const &r, Pen const &pen) { frame_ellipse(r.to_rect(), pen); }

void IntegralCanvas::frame_ellipse_f(RectF const &r) { frame_ellipse(r.to_rect()); }

void IntegralCanvas::fill_ellipse_f(RectF const &r, Brush const &brush) { fill_ellipse(r.to_rect(), brush); }

void IntegralCanvas::fill_ellipse_f(RectF const &r) { fill_ellipse(r.to_rect()); }

void IntegralCanvas::fill_polygon_f(PointF const *points, std::size_t count, Brush const &brush, bool winding)
{
    Point local[local_points] = {};
    std::unique_ptr<Point[]> heap;
    fill_polygon(round_points(points, count, local, heap), count, brush, winding);
}

void IntegralCanvas::fill_polygon_f(PointF const *points, std::size_t count, bool winding)
{
    Point local[local_points] = {};
    std::unique_ptr<Point[]> heap;
    fill_polygon(round_points(points, count, local, heap), count, winding);
}

void IntegralCanvas::shadow_f(RectF const &r) { shadow(r.to_rect()); }

void IntegralCanvas::text_f(wchar const *text, long count, PointF p) { this->text(text, count, p.to_point()); }

}  // namespace Tavi
