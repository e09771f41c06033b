// AllocationTree: the edges of a placed box, read from its box tree at each call.
#include "tavi/geometry/allocationtree.h"

#include "tavi/geometry/boxtree.h"

namespace Tavi {

long AllocationTree::left() const { return point_.x; }
long AllocationTree::right() const { return point_.x + boxtree_->width(); }
// y grows downward: the ascent lies above the baseline, toward smaller y.
long AllocationTree::top() const { return point_.y - boxtree_->ascent(); }
long AllocationTree::bottom() const { return point_.y + boxtree_->descent(); }
long AllocationTree::width() const { return boxtree_->width(); }
long AllocationTree::height() const { return boxtree_->ascent() + boxtree_->descent(); }
Box AllocationTree::box() const { return boxtree_->box(); }
Rect AllocationTree::rect() const { return Rect(top(), left(), bottom(), right()); }

bool AllocationTree::contains(Point const &p) const
{
    return left() <= p.x && p.x <= right() && top() <= p.y && p.y <= bottom();
}

}  // namespace Tavi
