// Rect and RectF: normalising construction, shifting, merging and the intersection test.
#include "tavi/geometry/rect.h"

#include "tavi/geometry/rounding.h"

#include <algorithm>

namespace Tavi {

Rect::Rect(Point const &a, Point const &b)
    : top_(std::min(a.y, b.y)), left_(std::min(a.x, b.x)), bottom_(std::max(a.y, b.y)), right_(std::max(a.x, b.x))
{
}

Rect &Rect::operator+=(Point const &p)
{
    left_ += p.x;
    right_ += p.x;
    top_ += p.y;
    bottom_ += p.y;
    return *this;
}

Rect &Rect::operator-=(Point const &p)
{
    left_ -= p.x;
    right_ -= p.x;
    top_ -= p.y;
    bottom_ -= p.y;
    return *this;
}

// A coordinate beyond one edge moves that edge; a rectangle is never taken as empty.
void Rect::merge(Point const &p)
{
    if (p.y < top_)
        top_ = p.y;
    else if (p.y > bottom_)
        bottom_ = p.y;
    if (p.x < left_)
        left_ = p.x;
    else if (p.x > right_)
        right_ = p.x;
}

void Rect::merge(Rect const &r)
{
    top_ = std::min(top_, r.top_);
    left_ = std::min(left_, r.left_);
    bottom_ = std::max(bottom_, r.bottom_);
    right_ = std::max(right_, r.right_);
}

// Apart only when the other lies wholly to one side; a shared edge counts as meeting.
bool Rect::intersects(Rect const &r) const
{
    return !(r.right_ < left_ || r.left_ > right_ || r.bottom_ < top_ || r.top_ > bottom_);
}

RectF::RectF(PointF const &a, PointF const &b)
    : top_(std::min(a.y, b.y)), left_(std::min(a.x, b.x)), bottom_(std::max(a.y, b.y)), right_(std::max(a.x, b.x))
{
}

RectF &RectF::operator+=(PointF const &p)
{
    left_ += p.x;
    right_ += p.x;
    top_ += p.y;
    bottom_ += p.y;
    return *this;
}

RectF &RectF::operator-=(PointF const &p)
{
    left_ -= p.x;
    right_ -= p.x;
    top_ -= p.y;
    bottom_ -= p.y;
    return *this;
}

void RectF::merge(PointF const &p)
{
    if (p.y < top_)
        top_ = p.y;
    else if (p.y > bottom_)
        bottom_ = p.y;
    if (p.x < left_)
        left_ = p.x;
    else if (p.x > right_)
        right_ = p.x;
}

void RectF::merge(RectF const &r)
{
    top_ = std::min(top_, r.top_);
    left_ = std::min(left_, r.left_);
    bottom_ = std::max(bottom_, r.bottom_);
    right_ = std::max(right_, r.right_);
}

bool RectF::intersects(RectF const &r) const
{
    return !(r.right_ < left_ || r.left_ > right_ || r.bottom_ < top_ || r.top_ > bottom_);
}

Rect RectF::to_rect() const
{
    return Rect(round_to_long(top_), round_to_long(left_), round_to_long(bottom_), round_to_long(right_));
}

}  // namespace Tavi
