// Extent and ExtentF: a size with no baseline, integral and fractional.
#pragma once

#include "tavi/geometry/point.h"
#include "tavi/geometry/rounding.h"

#include <cmath>
#include <cstdlib>

namespace Tavi {

class Extent
{
public:
    constexpr Extent() : width_(0), height_(0) {}
    constexpr Extent(long width, long height) : width_(width), height_(height) {}
    // The size spanned by a point from the origin: a difference of two points never gives a negative
    // extent, whichever way round it was taken.
    explicit Extent(Point const &p) : width_(std::labs(p.x)), height_(std::labs(p.y)) {}

    long width() const { return width_; }
    void width(long w) { width_ = w; }
    long height() const { return height_; }
    void height(long h) { height_ = h; }

private:
    long width_;
    long height_;
};

inline bool operator==(Extent const &a, Extent const &b)
{
    return a.width() == b.width() && a.height() == b.height();
}
inline bool operator!=(Extent const &a, Extent const &b) { return !(a == b); }

class ExtentF
{
public:
    constexpr ExtentF() : width_(0.0), height_(0.0) {}
    constexpr ExtentF(double width, double height) : width_(width), height_(height) {}
    ExtentF(Extent const &e)
        : width_(static_cast<double>(e.width())), height_(static_cast<double>(e.height()))
    {
    }
    explicit ExtentF(PointF const &p) : width_(std::fabs(p.x)), height_(std::fabs(p.y)) {}

    double width() const { return width_; }
    void width(double w) { width_ = w; }
    double height() const { return height_; }
    void height(double h) { height_ = h; }

    Extent to_extent() const
    {
        long const h = round_to_long(height_);
        long const w = round_to_long(width_);
        return Extent(w, h);
    }

private:
    double width_;
    double height_;
};

inline bool operator==(ExtentF const &a, ExtentF const &b)
{
    return a.width() == b.width() && a.height() == b.height();
}
inline bool operator!=(ExtentF const &a, ExtentF const &b) { return !(a == b); }

}  // namespace Tavi
