// Rect and RectF: normalising construction, shifting, merging and the intersection test.
#include "tavi/geometry/rect.h"

#include "tavi/geometry/rounding.h"

#include <algorithm>
#include <functional>

namespace Tavi {

namespace {

// The operations below are the same for both coordinate types: each is written once over the
// rectangle R (Rect or RectF) and its point P, through the edge accessors.

template <class R, class P>
R from_corners(P const &a, P const &b)
{
    return R(std::min(a.y, b.y), std::min(a.x, b.x), std::max(a.y, b.y), std::max(a.x, b.x));
}

// Every edge moved by the point, op being addition or subtraction.
template <class R, class P, class Op>
R &shift(R &r, P const &p, Op op)
{
    r.left(op(r.left(), p.x));
    r.right(op(r.right(), p.x));
    r.top(op(r.top(), p.y));
    r.bottom(op(r.bottom(), p.y));
    return r;
}

// A coordinate beyond one edge moves that edge; a rectangle is never taken as empty.
template <class R, class P>
void merge_point(R &r, P const &p)
{
    if (p.y < r.top())
        r.top(p.y);
    else if (p.y > r.bottom())
        r.bottom(p.y);
    if (p.x < r.left())
        r.left(p.x);
    else if (p.x > r.right())
        r.right(p.x);
}

template <class R>
void merge_rect(R &r, R const &o)
{
    r.top(std::min(r.top(), o.top()));
    r.left(std::min(r.left(), o.left()));
    r.bottom(std::max(r.bottom(), o.bottom()));
    r.right(std::max(r.right(), o.right()));
}

// Apart only when the other lies wholly to one side; a shared edge counts as meeting.
template <class R>
bool meet(R const &r, R const &o)
{
    return !(o.right() < r.left() || o.left() > r.right() || o.bottom() < r.top() || o.top() > r.bottom());
}

}  // namespace

Rect::Rect(Point const &a, Point const &b) : Rect(from_corners<Rect>(a, b)) {}

Rect &Rect::operator+=(Point const &p) { return shift(*this, p, std::plus<long>()); }

Rect &Rect::operator-=(Point const &p) { return shift(*this, p, std::minus<long>()); }

void Rect::merge(Point const &p) { merge_point(*this, p); }

void Rect::merge(Rect const &r) { merge_rect(*this, r); }

bool Rect::intersects(Rect const &r) const { return meet(*this, r); }

RectF::RectF(PointF const &a, PointF const &b) : RectF(from_corners<RectF>(a, b)) {}

RectF &RectF::operator+=(PointF const &p) { return shift(*this, p, std::plus<double>()); }

RectF &RectF::operator-=(PointF const &p) { return shift(*this, p, std::minus<double>()); }

void RectF::merge(PointF const &p) { merge_point(*this, p); }

void RectF::merge(RectF const &r) { merge_rect(*this, r); }

bool RectF::intersects(RectF const &r) const { return meet(*this, r); }

Rect RectF::to_rect() const
{
    return Rect(round_to_long(top_), round_to_long(left_), round_to_long(bottom_), round_to_long(right_));
}

}  // namespace Tavi
