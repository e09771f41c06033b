// Box and BoxF: a measured size around a baseline (width, ascent above it, descent below it).
#pragma once

#include "tavi/geometry/extent.h"
#include "tavi/geometry/point.h"

namespace Tavi {

class Box
{
public:
    constexpr Box() : width_(0), ascent_(0), descent_(0) {}
    constexpr Box(long width, long ascent, long descent) : width_(width), ascent_(ascent), descent_(descent) {}

    long width() const { return width_; }
    void width(long w) { width_ = w; }
    long ascent() const { return ascent_; }
    void ascent(long a) { ascent_ = a; }
    long descent() const { return descent_; }
    void descent(long d) { descent_ = d; }

    long height() const { return ascent_ + descent_; }
    Extent extent() const { return Extent(width_, ascent_ + descent_); }

    // Grows this box to cover `other` placed with its origin at `delta` from this box's origin.
    // On return this_at and other_at say where the old box and `other` stand inside the merged box.
    void merge(Box const &other, Point const &delta, Point &this_at, Point &other_at);

    static Box const zero;
    // No limit: compared for, never computed with.
    static Box const unconstrained;

private:
    long width_;
    long ascent_;
    long descent_;
};

inline const Box Box::zero{0, 0, 0};
inline const Box Box::unconstrained{0x7fffffff, 0x7fffffff, 0x7fffffff};

inline bool operator==(Box const &a, Box const &b)
{
    return a.width() == b.width() && a.ascent() == b.ascent() && a.descent() == b.descent();
}
inline bool operator!=(Box const &a, Box const &b) { return !(a == b); }

class BoxF
{
public:
    constexpr BoxF() : width_(0.0), ascent_(0.0), descent_(0.0) {}
    constexpr BoxF(double width, double ascent, double descent)
        : width_(width), ascent_(ascent), descent_(descent)
    {
    }
    BoxF(Box const &b)
        : width_(static_cast<double>(b.width())),
          ascent_(static_cast<double>(b.ascent())),
          descent_(static_cast<double>(b.descent()))
    {
    }

    double width() const { return width_; }
    void width(double w) { width_ = w; }
    double ascent() const { return ascent_; }
    void ascent(double a) { ascent_ = a; }
    double descent() const { return descent_; }
    void descent(double d) { descent_ = d; }

    double height() const { return ascent_ + descent_; }
    ExtentF extent() const { return ExtentF(width_, ascent_ + descent_); }

    Box to_box() const;

    void merge(BoxF const &other, PointF const &delta, PointF &this_at, PointF &other_at);
    // The same growth without telling where the two boxes ended up.
    void merge(BoxF const &other, PointF const &delta);

    static BoxF const zero;

private:
    double width_;
    double ascent_;
    double descent_;
};

inline const BoxF BoxF::zero{0.0, 0.0, 0.0};

inline bool operator==(BoxF const &a, BoxF const &b)
{
    return a.width() == b.width() && a.ascent() == b.ascent() && a.descent() == b.descent();
}
inline bool operator!=(BoxF const &a, BoxF const &b) { return !(a == b); }

}  // namespace Tavi
