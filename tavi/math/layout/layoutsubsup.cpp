// LayoutSubSup: placement of both scripts.
#include "tavi/math/layout/layoutsubsup.h"

#include <algorithm>

#include "tavi/geometry/boxtree.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

BoxTree *LayoutSubSup::request(GlyphContext &gc, BoxTree const &constraint)
{
    MathNodeContext &context = math_context(gc);
    long const ex = context.real_ex();
    long subSlant = 0;
    long supSlant = 0;
    BoxTree *base = request_base(context, constraint, true, subSlant, supSlant);
    BoxTree *sub = nullptr;
    BoxTree *sup = nullptr;
    long D = 0;
    {
        ScriptStyle style(context);
        D = x_descent(context);
        sub = child(1)->request(context, BoxTree::unconstrained);
        sup = child(2)->request(context, BoxTree::unconstrained);
        raise_to_x_height(context, *sub);
    }
    long const supShift = sup_shift(*base, *sup, D, ex);
    long const subShift = sub_shift(*base, *sub, ex);
    long const width = std::max(base->width() + sub->width() + subSlant, base->width() + sup->width() + supSlant);
    long const ascent = std::max(base->ascent(), supShift + sup->ascent());
    long const descent = std::max(base->descent(), sub->descent() - subShift + sub->ascent());

    BoxTreeAtomicNode *node = new BoxTreeAtomicNode(3);
    node->setChild(1, Point(base->width() + subSlant, sub->ascent() - subShift), sub);
    node->setChild(2, Point(base->width() + supSlant, -supShift), sup);
    node->setChild(0, Point(0, 0), base);
    node->width(width);
    node->ascent(ascent);
    node->descent(descent);
    return node;
}

bool LayoutSubSup::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    if (count() < 3)
        return false;
    bool const inBase = child(0)->has_child_node(context, index);
    bool const inSub = child(1)->has_child_node(context, index);
    bool const inSup = child(2)->has_child_node(context, index);
    switch (key) {
    case Input::key_left:
        return (inSub || inSup) && child(0)->get_child_node(context, result);
    case Input::key_right:
        return inBase && (child(2)->get_child_node(context, result) || child(1)->get_child_node(context, result));
    case Input::key_up:
        return inSub && child(2)->get_child_node(context, result);
    case Input::key_down:
        return inSup && child(1)->get_child_node(context, result);
    default:
        return false;
    }
}

}  // namespace Tavi
