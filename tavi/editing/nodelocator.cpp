// NodeLocator.
#include "tavi/editing/nodelocator.h"

#include <algorithm>

#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

NodeLocator::NodeLocator(Gauge *gauge) : MeasuringCanvas(gauge) {}

void NodeLocator::walk(MathNode *top, MathNodeContext const &context, AllocationTree const &allocation)
{
    MathNodeContext walking(context);
    walking.canvas(this);
    top->draw(walking, allocation);
}

MathNode *NodeLocator::node_at(MathNode *top, MathNodeContext const &context, AllocationTree const &allocation,
                               Point point)
{
    if (top == nullptr || context.gauge() == nullptr || allocation.boxtree() == nullptr)
        return nullptr;
    NodeLocator locator(context.gauge());
    locator.by_point_ = true;
    locator.point_ = point;
    locator.walk(top, context, allocation);
    return locator.found_;
}

bool NodeLocator::place_of(MathNode *top, MathNodeContext const &context, AllocationTree const &allocation,
                           MathNode *target, AllocationTree &place)
{
    if (top == nullptr || target == nullptr || context.gauge() == nullptr || allocation.boxtree() == nullptr)
        return false;
    NodeLocator locator(context.gauge());
    locator.target_ = target;
    for (Glyph *g = target->parent(); g != nullptr; g = g->parent()) {
        if (MathNode *n = dynamic_cast<MathNode *>(g))
            locator.ancestors_.push_back(n);
        if (g == top)
            break;
    }
    locator.walk(top, context, allocation);
    if (locator.found_ == nullptr)
        return false;
    place = locator.place_;
    return true;
}

bool NodeLocator::damaged(Rect const &) const { return false; }

bool NodeLocator::damaged(Extension const &) const { return false; }

bool NodeLocator::visit(MathNode *node, MathNodeContext &context, AllocationTree const &allocation)
{
    if (by_point_) {
        // A box that misses the point holds nothing that could be under it.
        if (!allocation.contains(point_))
            return false;
        found_ = node;
        if (node->count() == 0)
            node->pick(nullptr, context, allocation, point_);
        return true;
    }
    if (found_ != nullptr)
        return false;
    if (node == target_) {
        found_ = node;
        place_ = allocation;
        return false;
    }
    return std::find(ancestors_.begin(), ancestors_.end(), node) != ancestors_.end();
}

}  // namespace Tavi
