// LayoutUnderOver: placement of scripts under and over a base.
#include "tavi/math/layout/layoutunderover.h"

#include <algorithm>

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

    long baseX = 0;
    if (align_ == 'l') {
        underX = 0;
        overX = 0;
    } else if (align_ == 'r') {
        baseX = -base->width();
        underX -= under->width();
        overX -= over->width();
    } else {
        baseX = -(base->width() / 2);
        underX -= under->width() / 2;
        overX -= over->width() / 2;
    }
    long const shift = -std::min({baseX, underX, overX});
    baseX += shift;
    underX += shift;
    overX += shift;

    long const ascent = over->ascent() + over->descent() + gap + base->ascent();
    long const descent = under->descent() + under->ascent() + gap + base->descent();
    long const width =
        std::max({baseX + base->width(), underX + under->width(), overX + over->width()});
    BoxTreeAtomicNode *node = new BoxTreeAtomicNode(3);
    node->setChild(0, Point(baseX, 0), base);
    node->setChild(1, Point(underX, under->ascent() + gap + base->descent()), under);
    node->setChild(2, Point(overX, -(over->descent() + gap + base->ascent())), over);
    node->ascent(ascent);
    node->descent(descent);
    node->width(width);
    return node;
}

bool LayoutUnderOver::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    if (count() < 3)
        return false;
    if (key == Input::key_down) {
        if (child(2)->has_child_node(context, index))
            return child(0)->get_child_node(context, result);
        if (child(0)->has_child_node(context, index))
            return child(1)->get_child_node(context, result);
    } else if (key == Input::key_up) {
        if (child(1)->has_child_node(context, index))
            return child(0)->get_child_node(context, result);
        if (child(0)->has_child_node(context, index))
            return child(2)->get_child_node(context, result);
    }
    return false;
}

}  // namespace Tavi
