// Rect and RectF: an edge-described rectangle (top first, then left, bottom, right).
#pragma once

#include "tavi/geometry/extent.h"
#include "tavi/geometry/point.h"

namespace Tavi {

class Rect
{
public:
    constexpr Rect() : top_(0), left_(0), bottom_(0), right_(0) {}
    // Taken as given, not normalised.
    constexpr Rect(long top, long left, long bottom, long right)
        : top_(top), left_(left), bottom_(bottom), right_(right)
    {
    }
    // Any two opposite corners: the coordinates are sorted into the edges.
    Rect(Point const &a, Point const &b);

    long top() const { return top_; }
    void top(long v) { top_ = v; }
    long left() const { return left_; }
    void left(long v) { left_ = v; }
    long bottom() const { return bottom_; }
    void bottom(long v) { bottom_ = v; }
    long right() const { return right_; }
    void right(long v) { right_ = v; }

    Point top_left() const { return Point(left_, top_); }
    void top_left(Point const &p)
    {
        left_ = p.x;
        top_ = p.y;
    }
    Point bottom_right() const { return Point(right_, bottom_); }
    void bottom_right(Point const &p)
    {
        right_ = p.x;
        bottom_ = p.y;
    }

    long width() const { return right_ - left_; }
    long height() const { return bottom_ - top_; }
    Extent extent() const { return Extent(width(), height()); }

    Rect &operator+=(Point const &p);
    Rect &operator-=(Point const &p);

    // Widens the rectangle to hold the point or the other rectangle. An all-zero rectangle is not
    // treated as empty.
    void merge(Point const &p);
    void merge(Rect const &r);
    // Rectangles that only touch along an edge intersect.
    bool intersects(Rect const &r) const;

private:
    long top_;
    long left_;
    long bottom_;
    long right_;
};

inline bool operator==(Rect const &a, Rect const &b)
{
    return a.top() == b.top() && a.left() == b.left() && a.bottom() == b.bottom() && a.right() == b.right();
}
inline bool operator!=(Rect const &a, Rect const &b) { return !(a == b); }

class RectF
{
public:
    constexpr RectF() : top_(0.0), left_(0.0), bottom_(0.0), right_(0.0) {}
    constexpr RectF(double top, double left, double bottom, double right)
        : top_(top), left_(left), bottom_(bottom), right_(right)
    {
    }
    RectF(PointF const &a, PointF const &b);
    RectF(Rect const &r)
        : top_(static_cast<double>(r.top())),
          left_(static_cast<double>(r.left())),
          bottom_(static_cast<double>(r.bottom())),
          right_(static_cast<double>(r.right()))
    {
    }

    double top() const { return top_; }
    void top(double v) { top_ = v; }
    double left() const { return left_; }
    void left(double v) { left_ = v; }
    double bottom() const { return bottom_; }
    void bottom(double v) { bottom_ = v; }
    double right() const { return right_; }
    void right(double v) { right_ = v; }

    PointF top_left() const { return PointF(left_, top_); }
    void top_left(PointF const &p)
    {
        left_ = p.x;
        top_ = p.y;
    }
    PointF bottom_right() const { return PointF(right_, bottom_); }
    void bottom_right(PointF const &p)
    {
        right_ = p.x;
        bottom_ = p.y;
    }

    double width() const { return right_ - left_; }
    double height() const { return bottom_ - top_; }
    ExtentF extent() const { return ExtentF(width(), height()); }

    RectF &operator+=(PointF const &p);
    RectF &operator-=(PointF const &p);

    void merge(PointF const &p);
    void merge(RectF const &r);
    bool intersects(RectF const &r) const;

    Rect to_rect() const;

private:
    double top_;
    double left_;
    double bottom_;
    double right_;
};

inline bool operator==(RectF const &a, RectF const &b)
{
    return a.top() == b.top() && a.left() == b.left() && a.bottom() == b.bottom() && a.right() == b.right();
}
inline bool operator!=(RectF const &a, RectF const &b) { return !(a == b); }

}  // namespace Tavi
