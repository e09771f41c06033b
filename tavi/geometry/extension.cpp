// Extension: rectangles moved into the coordinates of the whole surface by the gauge's translation.
#include "tavi/geometry/extension.h"

#include "tavi/canvas/gauge.h"
#include "tavi/geometry/allocationtree.h"

#include <algorithm>

namespace Tavi {

namespace {

// The rectangle with each corner, (left, top) and then (right, bottom), moved by the translation.
Rect translated(Gauge const *gauge, Rect const &r)
{
    long left = r.left();
    long top = r.top();
    long right = r.right();
    long bottom = r.bottom();
    gauge->translate(left, top);
    gauge->translate(right, bottom);
    return Rect(top, left, bottom, right);
}

}  // namespace

Extension::Extension(Point const &a, Point const &b)
    : top_(std::min(a.y, b.y)), left_(std::min(a.x, b.x)), bottom_(std::max(a.y, b.y)), right_(std::max(a.x, b.x))
{
}

Extension::Extension(Gauge const *gauge, Rect const &r) : Extension() { set(gauge, r); }

Extension::Extension(Gauge const *gauge, AllocationTree const &a) : Extension() { set(gauge, a); }

void Extension::set(Gauge const *gauge, Rect const &r)
{
    Rect const t = translated(gauge, r);
    top_ = t.top();
    left_ = t.left();
    bottom_ = t.bottom();
    right_ = t.right();
}

void Extension::set(Gauge const *gauge, AllocationTree const &a) { set(gauge, a.rect()); }

void Extension::merge(Extension const &e)
{
    top_ = std::min(top_, e.top_);
    left_ = std::min(left_, e.left_);
    bottom_ = std::max(bottom_, e.bottom_);
    right_ = std::max(right_, e.right_);
}

void Extension::merge(Gauge const *gauge, Rect const &r)
{
    Rect const t = translated(gauge, r);
    merge(Extension(t.top(), t.left(), t.bottom(), t.right()));
}

void Extension::merge(Gauge const *gauge, AllocationTree const &a) { merge(gauge, a.rect()); }

}  // namespace Tavi
