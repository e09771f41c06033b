// Box and BoxF: merging two boxes and rounding back to integers.
#include "tavi/geometry/box.h"

#include "tavi/geometry/rounding.h"

#include <algorithm>

namespace Tavi {

// `other` stands with its origin at `delta` from this box's origin. The merged box keeps this box's
// baseline; only its left end can move, when delta.x is negative: then the old box is shifted right
// by -delta.x and `other` starts at 0.
void Box::merge(Box const &other, Point const &delta, Point &this_at, Point &other_at)
{
    this_at.y = 0;
    other_at.y = delta.y;
    long shift;
    if (delta.x < 0) {
        this_at.x = -delta.x;
        other_at.x = 0;
        shift = delta.x;
    } else {
        this_at.x = 0;
        other_at.x = delta.x;
        shift = 0;
    }
    width_ = std::max(width_, other.width_ + delta.x) - shift;
    ascent_ = std::max(ascent_, other.ascent_ - delta.y);
    descent_ = std::max(descent_, other.descent_ + delta.y);
}

Box BoxF::to_box() const
{
    return Box(round_to_long(width_), round_to_long(ascent_), round_to_long(descent_));
}

void BoxF::merge(BoxF const &other, PointF const &delta, PointF &this_at, PointF &other_at)
{
    this_at.y = 0.0;
    other_at.y = delta.y;
    double shift;
    if (delta.x < 0.0) {
        this_at.x = -delta.x;
        other_at.x = 0.0;
        shift = delta.x;
    } else {
        this_at.x = 0.0;
        other_at.x = delta.x;
        shift = 0.0;
    }
    width_ = std::max(width_, other.width_ + delta.x) - shift;
    ascent_ = std::max(ascent_, other.ascent_ - delta.y);
    descent_ = std::max(descent_, other.descent_ + delta.y);
}

void BoxF::merge(BoxF const &other, PointF const &delta)
{
    double const shift = std::min(0.0, delta.x);
    width_ = std::max(width_, other.width_ + delta.x) - shift;
    ascent_ = std::max(ascent_, other.ascent_ - delta.y);
    descent_ = std::max(descent_, other.descent_ + delta.y);
}

}  // namespace Tavi
