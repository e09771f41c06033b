// Allocation and AllocationF: a Box placed with its left end at (x) and its baseline at (y).
#pragma once

#include "tavi/geometry/box.h"
#include "tavi/geometry/point.h"
#include "tavi/geometry/rect.h"

namespace Tavi {

class Allocation
{
public:
    constexpr Allocation() : x_(0), y_(0), width_(0), ascent_(0), descent_(0) {}
    constexpr Allocation(long x, long y, long width, long ascent, long descent)
        : x_(x), y_(y), width_(width), ascent_(ascent), descent_(descent)
    {
    }
    Allocation(Point const &p, Box const &b)
        : x_(p.x), y_(p.y), width_(b.width()), ascent_(b.ascent()), descent_(b.descent())
    {
    }

    long x() const { return x_; }
    void x(long v) { x_ = v; }
    long y() const { return y_; }
    void y(long v) { y_ = v; }
    long width() const { return width_; }
    void width(long v) { width_ = v; }
    long ascent() const { return ascent_; }
    void ascent(long v) { ascent_ = v; }
    long descent() const { return descent_; }
    void descent(long v) { descent_ = v; }

    Point point() const { return Point(x_, y_); }
    void point(Point const &p)
    {
        x_ = p.x;
        y_ = p.y;
    }
    Box box() const { return Box(width_, ascent_, descent_); }
    void box(Box const &b)
    {
        width_ = b.width();
        ascent_ = b.ascent();
        descent_ = b.descent();
    }

    // y grows downward, so the ascent lies toward smaller y.
    long left() const { return x_; }
    long right() const { return x_ + width_; }
    long top() const { return y_ - ascent_; }
    long bottom() const { return y_ + descent_; }
    Rect rect() const { return Rect(top(), left(), bottom(), right()); }

    // All four edges are inclusive.
    bool contains(Point const &p) const
    {
        return left() <= p.x && p.x <= right() && top() <= p.y && p.y <= bottom();
    }

private:
    long x_;
    long y_;
    long width_;
    long ascent_;
    long descent_;
};

inline bool operator==(Allocation const &a, Allocation const &b)
{
    return a.x() == b.x() && a.y() == b.y() && a.width() == b.width() && a.ascent() == b.ascent() &&
           a.descent() == b.descent();
}
inline bool operator!=(Allocation const &a, Allocation const &b) { return !(a == b); }

class AllocationF
{
public:
    constexpr AllocationF() : x_(0.0), y_(0.0), width_(0.0), ascent_(0.0), descent_(0.0) {}
    constexpr AllocationF(double x, double y, double width, double ascent, double descent)
        : x_(x), y_(y), width_(width), ascent_(ascent), descent_(descent)
    {
    }
    AllocationF(PointF const &p, BoxF const &b)
        : x_(p.x), y_(p.y), width_(b.width()), ascent_(b.ascent()), descent_(b.descent())
    {
    }
    AllocationF(Allocation const &a)
        : x_(static_cast<double>(a.x())),
          y_(static_cast<double>(a.y())),
          width_(static_cast<double>(a.width())),
          ascent_(static_cast<double>(a.ascent())),
          descent_(static_cast<double>(a.descent()))
    {
    }

    double x() const { return x_; }
    void x(double v) { x_ = v; }
    double y() const { return y_; }
    void y(double v) { y_ = v; }
    double width() const { return width_; }
    void width(double v) { width_ = v; }
    double ascent() const { return ascent_; }
    void ascent(double v) { ascent_ = v; }
    double descent() const { return descent_; }
    void descent(double v) { descent_ = v; }

    PointF point() const { return PointF(x_, y_); }
    void point(PointF const &p)
    {
        x_ = p.x;
        y_ = p.y;
    }
    BoxF box() const { return BoxF(width_, ascent_, descent_); }
    void box(BoxF const &b)
    {
        width_ = b.width();
        ascent_ = b.ascent();
        descent_ = b.descent();
    }

    // Each of the five fields rounds on its own.
    Allocation to_allocation() const
    {
        return Allocation(round_to_long(x_), round_to_long(y_), round_to_long(width_), round_to_long(ascent_),
                          round_to_long(descent_));
    }

private:
    double x_;
    double y_;
    double width_;
    double ascent_;
    double descent_;
};

inline bool operator==(AllocationF const &a, AllocationF const &b)
{
    return a.x() == b.x() && a.y() == b.y() && a.width() == b.width() && a.ascent() == b.ascent() &&
           a.descent() == b.descent();
}
inline bool operator!=(AllocationF const &a, AllocationF const &b) { return !(a == b); }

}  // namespace Tavi
