// LayoutOver: placement of a script over a base.
#include "tavi/math/layout/layoutover.h"

#include <algorithm>

#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutindexed.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/layout/layoutsup.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutOver::LayoutOver(bool accent) : LayoutStretchCol(accent) {}

MathLayout *LayoutOver::limits_layout() { return limits() != nullptr ? limits() : keep_limits(new LayoutSup); }

// Base and script are centred on each other, the script moved by the operator's slant; the script's
// bottom stands a leading above the base's top. The column starts at the leftmost of the two.
BoxTree *LayoutOver::request(GlyphContext &gc, BoxTree const &constraint)
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
    long overX = 0;
    if (op != nullptr) {
        long ignored = 0;
        op->underover_slant(context, along, ignored, overX);
    }
    long const gap = context.real_leading();
    BoxTree *over = nullptr;
    {
        LayoutIndexed::ScriptStyle style(context, !accent());
        BoxTreeLeaf overConstraint(across);
        over = child(1)->request(context, overConstraint);
    }

    long baseX = -(base->width() / 2);
    overX -= over->width() / 2;
    long const shift = -std::min(baseX, overX);
    baseX += shift;
    overX += shift;

    long const ascent = over->ascent() + over->descent() + gap + base->ascent();
    long const width = std::max(baseX + base->width(), overX + over->width());
    BoxTreeAtomicNode *node = new BoxTreeAtomicNode(2);
    node->setChild(0, Point(baseX, 0), base);
    node->setChild(1, Point(overX, -(over->descent() + gap + base->ascent())), over);
    node->ascent(ascent);
    node->width(width);
    return node;
}

bool LayoutOver::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    if (count() < 2)
        return false;
    if (key == Input::key_down && child(1)->has_child_node(context, index))
        return child(0)->get_child_node(context, result);
    if (key == Input::key_up && child(0)->has_child_node(context, index))
        return child(1)->get_child_node(context, result);
    return false;
}

}  // namespace Tavi
