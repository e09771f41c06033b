// IntegralCanvas: the base of surfaces whose geometry is in whole device units. It keeps the
// translation and gives the whole floating-point half of the canvas contract by rounding each double
// (round_to_long) and forwarding to the integral operation of the same name through the virtual table,
// so a surface writes only the integral operations.
#pragma once

#include "tavi/canvas/canvas.h"

namespace Tavi {

class IntegralCanvas : public Canvas
{
public:
    void translate(long &x, long &y) const override;
    void translate_f(double &x, double &y) const override;
    void translation(Point p) override;
    Point translation() override;
    // Rounds, then stores.
    void translation_f(PointF const &p) override;
    PointF translation_f() override;
    void add_translation(Point p) override;
    // Rounds the increment alone, so fractions of repeated additions do not accumulate.
    void add_translation_f(PointF const &p) override;
    // Rounds both components and converts with twips_to_pixel: not finer than the integral form.
    ExtentF twips_to_pixel_f(ExtentF const &twips) override;
    void line_f(PointF from, PointF to, Pen const &pen, bool restart) override;
    void line_f(PointF from, PointF to) override;
    void poly_line_f(PointF const *points, std::size_t count, Pen const &pen, bool closed) override;
    void poly_line_f(PointF const *points, std::size_t count, bool closed) override;
    void frame_rect_f(RectF const &r, Pen const &pen) override;
    void frame_rect_f(RectF const &r) override;
    void fill_rect_f(RectF const &r, Brush const &brush) override;
    void fill_rect_f(RectF const &r) override;
    void frame_ellipse_f(RectF const &r, Pen const &pen) override;
    void frame_ellipse_f(RectF const &r) override;
    void fill_ellipse_f(RectF const &r, Brush const &brush) override;
    void fill_ellipse_f(RectF const &r) override;
    void fill_polygon_f(PointF const *points, std::size_t count, Brush const &brush, bool winding) override;
    void fill_polygon_f(PointF const *points, std::size_t count, bool winding) override;
    void shadow_f(RectF const &r) override;
    void text_f(wchar const *text, long count, PointF p) override;

protected:
    IntegralCanvas();
    ~IntegralCanvas() override;

private:
    Point translation_;
};

}  // namespace Tavi
