// Extension: a rectangle in the coordinates of the whole drawing surface, with the gauge's translation
// already added. It is the unit of damage and of a canvas's visible area.
#pragma once

#include "tavi/geometry/point.h"
#include "tavi/geometry/rect.h"

namespace Tavi {

class Gauge;
class AllocationTree;

class Extension
{
public:
    constexpr Extension() : top_(0), left_(0), bottom_(0), right_(0) {}
    // Taken as given, not normalised.
    constexpr Extension(long top, long left, long bottom, long right)
        : top_(top), left_(left), bottom_(bottom), right_(right)
    {
    }
    // Any two opposite corners.
    Extension(Point const &a, Point const &b);
    // The rectangle moved by the gauge's present translation.
    Extension(Gauge const *gauge, Rect const &r);
    Extension(Gauge const *gauge, AllocationTree const &a);

    void set(Gauge const *gauge, Rect const &r);
    void set(Gauge const *gauge, AllocationTree const &a);

    long top() const { return top_; }
    void top(long v) { top_ = v; }
    long left() const { return left_; }
    void left(long v) { left_ = v; }
    long bottom() const { return bottom_; }
    void bottom(long v) { bottom_ = v; }
    long right() const { return right_; }
    void right(long v) { right_ = v; }

    void clear() { top_ = left_ = bottom_ = right_ = 0; }
    Rect rect() const { return Rect(top_, left_, bottom_, right_); }

    // Field by field: the smaller top and left, the larger bottom and right. A cleared extension is
    // not empty: merging into one keeps (0, 0) inside the result.
    void merge(Extension const &e);
    void merge(Gauge const *gauge, Rect const &r);
    void merge(Gauge const *gauge, AllocationTree const &a);

private:
    long top_;
    long left_;
    long bottom_;
    long right_;
};

inline bool operator==(Extension const &a, Extension const &b)
{
    return a.top() == b.top() && a.left() == b.left() && a.bottom() == b.bottom() && a.right() == b.right();
}
inline bool operator!=(Extension const &a, Extension const &b) { return !(a == b); }

}  // namespace Tavi
