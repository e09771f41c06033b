// Point and PointF: a position in device units, integral and fractional.
#pragma once

#include "tavi/geometry/rounding.h"

namespace Tavi {

class Point
{
public:
    constexpr Point() : x(0), y(0) {}
    constexpr Point(long x_, long y_) : x(x_), y(y_) {}

    void xy(long x_, long y_)
    {
        x = x_;
        y = y_;
    }

    Point &operator+=(Point const &p)
    {
        x += p.x;
        y += p.y;
        return *this;
    }
    Point &operator-=(Point const &p)
    {
        x -= p.x;
        y -= p.y;
        return *this;
    }

    long x;
    long y;
};

inline bool operator==(Point const &a, Point const &b) { return a.x == b.x && a.y == b.y; }
inline bool operator!=(Point const &a, Point const &b) { return !(a == b); }
inline Point operator+(Point const &a, Point const &b) { return Point(a.x + b.x, a.y + b.y); }
inline Point operator-(Point const &a, Point const &b) { return Point(a.x - b.x, a.y - b.y); }
inline Point operator-(Point const &a) { return Point(-a.x, -a.y); }

class PointF
{
public:
    constexpr PointF() : x(0.0), y(0.0) {}
    constexpr PointF(double x_, double y_) : x(x_), y(y_) {}
    constexpr PointF(Point const &p) : x(static_cast<double>(p.x)), y(static_cast<double>(p.y)) {}

    void xy(double x_, double y_)
    {
        x = x_;
        y = y_;
    }

    // Each coordinate rounds on its own (y first, which does not show in the result).
    Point to_point() const
    {
        long const ry = round_to_long(y);
        long const rx = round_to_long(x);
        return Point(rx, ry);
    }

    PointF &operator+=(PointF const &p)
    {
        x += p.x;
        y += p.y;
        return *this;
    }
    PointF &operator-=(PointF const &p)
    {
        x -= p.x;
        y -= p.y;
        return *this;
    }

    double x;
    double y;
};

// Exact comparison: no tolerance, and a NaN field makes the points unequal.
inline bool operator==(PointF const &a, PointF const &b) { return a.x == b.x && a.y == b.y; }
inline bool operator!=(PointF const &a, PointF const &b) { return !(a == b); }
inline PointF operator+(PointF const &a, PointF const &b) { return PointF(a.x + b.x, a.y + b.y); }
inline PointF operator-(PointF const &a, PointF const &b) { return PointF(a.x - b.x, a.y - b.y); }
inline PointF operator-(PointF const &a) { return PointF(-a.x, -a.y); }

}  // namespace Tavi
