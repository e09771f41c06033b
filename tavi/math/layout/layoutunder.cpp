// LayoutUnder: placement of a script under a base.
#include "tavi/math/layout/layoutunder.h"

#include <algorithm>

#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutindexed.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/layout/layoutsub.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutUnder::LayoutUnder(bool accent) : LayoutStretchCol(accent) {}

MathLayout *LayoutUnder::limits_layout() { return limits() != nullptr ? limits() : keep_limits(new LayoutSub); }

// Base and script are centred on each other, the script moved by the operator's slant; the script's
// top stands a leading below the base's bottom. The column starts at the leftmost of the two.
BoxTree *LayoutUnder::request(GlyphContext &gc, BoxTree const &constraint)
{
    MathNodeContext &context = math_context(gc);
    if (move_limits(context))
        return limits_layout()->request(context, constraint);

    Box along;
    Box across;
    request_stretch(context, constraint, along, across);
    LayoutOp *op = child(0)->core_operator();
    if (op == nullptr)
        along = Box::unconstrained;
    if (child(1)->core_operator() == nullptr)
        across = Box::unconstrained;

    BoxTreeLeaf baseConstraint(along);
    BoxTree *base = child(0)->request(context, baseConstraint);
    long underX = 0;
    if (op != nullptr) {
        long ignored = 0;
        op->underover_slant(context, along, underX, ignored);
    }
    long const gap = context.real_leading();
    BoxTree *under = nullptr;
    {
        LayoutIndexed::ScriptStyle style(context, !accent());
        BoxTreeLeaf underConstraint(across);
        under = child(1)->request(context, underConstraint);
    }

    long baseX = -(base->width() / 2);
    underX -= under->width() / 2;
    long const shift = -std::min(baseX, underX);
    baseX += shift;
    underX += shift;

    long const descent = under->descent() + under->ascent() + gap + base->descent();
    long const width = std::max(baseX + base->width(), underX + under->width());
    BoxTreeAtomicNode *node = new BoxTreeAtomicNode(2);
    node->setChild(0, Point(baseX, 0), base);
    node->setChild(1, Point(underX, under->ascent() + gap + base->descent()), under);
    node->descent(descent);
    node->width(width);
    return node;
}

bool LayoutUnder::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    if (count() < 2)
        return false;
    if (key == Input::key_down && child(0)->has_child_node(context, index))
        return child(1)->get_child_node(context, result);
    if (key == Input::key_up && child(1)->has_child_node(context, index))
        return child(0)->get_child_node(context, result);
    return false;
}

}  // namespace Tavi
