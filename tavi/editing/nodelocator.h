// NodeLocator: where the nodes of a formula stand, found by walking the road of drawing on a canvas
// that paints nothing. Placed boxes do not remember their nodes, and the layouts place each child
// only while they draw it; so the locator draws, and each node tells it where it came to stand
// (MathNode::draw asks it whether to go on into the node). Two questions are answered: which is the
// deepest node under a point (a click), and where one given node stands (the selection, for
// scrolling to it). The walk goes only into nodes that can hold the answer.
#pragma once

#include <vector>

#include "tavi/canvas/measuringcanvas.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/point.h"

namespace Tavi {

class MathNode;
class MathNodeContext;

class NodeLocator : public MeasuringCanvas
{
public:
    // The deepest node at or under `top` whose box holds the point, `top` itself when no child's box
    // does, or null when not even top's box does. An atom found there gets its caret at the point.
    static MathNode *node_at(MathNode *top, MathNodeContext const &context, AllocationTree const &allocation,
                             Point point);
    // Where `target`, which is `top` or lies below it, stands; false when the walk did not meet it.
    static bool place_of(MathNode *top, MathNodeContext const &context, AllocationTree const &allocation,
                         MathNode *target, AllocationTree &place);

    // For MathNode::draw: takes note of the node standing at the allocation, and answers whether the
    // walk goes on into it.
    bool visit(MathNode *node, MathNodeContext &context, AllocationTree const &allocation);

    // Nothing but the nodes matters to the walk: every other part of the drawing counts as undamaged,
    // so that it is passed over.
    bool damaged(Rect const &r) const override;
    bool damaged(Extension const &e) const override;

private:
    explicit NodeLocator(Gauge *gauge);
    void walk(MathNode *top, MathNodeContext const &context, AllocationTree const &allocation);

    // A point to find the node under, or a node to find the place of.
    bool by_point_ = false;
    Point point_;
    MathNode *target_ = nullptr;
    std::vector<MathNode *> ancestors_;
    MathNode *found_ = nullptr;
    AllocationTree place_;
};

}  // namespace Tavi
