// AllocationTree: where a measured box stands on the canvas. A point and a borrowed BoxTree; the
// placed children are made on demand while descending, never stored.
#pragma once

#include "tavi/geometry/box.h"
#include "tavi/geometry/point.h"
#include "tavi/geometry/rect.h"

namespace Tavi {

class BoxTree;

class AllocationTree
{
public:
    AllocationTree() : point_(0, 0), boxtree_(nullptr) {}
    // The box tree is not owned and must outlive the value.
    AllocationTree(Point const &point, BoxTree const *boxtree) : point_(point), boxtree_(boxtree) {}

    Point const &point() const { return point_; }
    void point(Point const &p) { point_ = p; }
    BoxTree const *boxtree() const { return boxtree_; }
    void boxtree(BoxTree const *b) { boxtree_ = b; }

    // All read the box tree at each call, so a change of it shows at once.
    long left() const;
    long right() const;
    long top() const;
    long bottom() const;
    long width() const;
    long height() const;
    Box box() const;
    Rect rect() const;
    // All four edges are inclusive.
    bool contains(Point const &p) const;

private:
    Point point_;
    BoxTree const *boxtree_;
};

inline bool operator==(AllocationTree const &a, AllocationTree const &b)
{
    return a.point() == b.point() && a.boxtree() == b.boxtree();
}
inline bool operator!=(AllocationTree const &a, AllocationTree const &b) { return !(a == b); }

}  // namespace Tavi
