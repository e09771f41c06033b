// LayoutUnderOver: placement of scripts under and over a base.
#include "tavi/math/layout/layoutunderover.h"

#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutindexed.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/layout/layoutsubsup.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutUnderOver::LayoutUnderOver(bool accent, char align) : LayoutStretchCol(accent), align_(align) {}

LayoutOp *LayoutUnderOver::core_operator() { return nullptr; }

MathLayout *LayoutUnderOver::limits_layout()
{
    return limits() != nullptr ? limits() : keep_limits(new LayoutSubSup);
}

// An operator script stretches to the base's width. The three are aligned at their left ends, their
// right ends, or their centres (where an operator base's slants move the scripts); the column starts
// at the leftmost. The scripts stand a leading above the base's top and below its bottom.
BoxTree *LayoutUnderOver::request(GlyphContext &gc, BoxTree const &constraint)
{
    MathNodeContext &context = math_context(gc);
    if (move_limits(context))
        return limits_layout()->request(context, constraint);

    Box along;
    Box across;
    request_stretch(context, constraint, along, across);
    BoxTreeLeaf baseConstraint(along);
    BoxTree *base = child(0)->request(context, baseConstraint);
    Box const underWanted = child(1)->core_operator() != nullptr ? base->box() : Box::unconstrained;
    Box const overWanted = child(2)->core_operator() != nullptr ? base->box() : Box::unconstrained;

    long underX = 0;
    long overX = 0;
    if (LayoutOp *op = child(0)->core_operator())
        op->underover_slant(context, along, underX, overX);

    long const gap = context.real_leading();
    BoxTree *under = nullptr;
    BoxTree *over = nullptr;
    {
        LayoutIndexed::ScriptStyle style(context, !accent());
        BoxTreeLeaf underConstraint(underWanted);
        under = child(1)->request(context, underConstraint);
        BoxTreeLeaf overConstraint(overWanted);
        over = child(2)->request(context, overConstraint);
    }

    return stack(align_, gap, base, under, underX, over, overX);
}

bool LayoutUnderOver::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    return column_neighbour(context, index, key, result, {2, 0, 1});
}

}  // namespace Tavi
