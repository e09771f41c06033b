// LayoutSup: placement of a superscript.
#include "tavi/math/layout/layoutsup.h"

#include <algorithm>

#include "tavi/geometry/boxtree.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

// The superscript follows the base, moved by an operator's slant, with its baseline supShift above the
// base's. Its descent never adds to the box: it stays within the base's height.
BoxTree *LayoutSup::request(GlyphContext &gc, BoxTree const &constraint)
{
    MathNodeContext &context = math_context(gc);
    long const ex = context.real_ex();
    long subSlant = 0;
    long supSlant = 0;
    BoxTree *base = request_base(context, constraint, false, subSlant, supSlant);
    BoxTree *sup = nullptr;
    long D = 0;
    {
        ScriptStyle style(context);
        sup = child(1)->request(context, BoxTree::unconstrained);
        D = x_descent(context);
    }
    long const supShift = sup_shift(*base, *sup, D, ex);
    long const width = base->width() + sup->width() + supSlant;
    long const ascent = std::max(base->ascent(), supShift + sup->ascent());
    long const descent = base->descent();

    BoxTreeAtomicNode *node = new BoxTreeAtomicNode(2);
    node->setChild(1, Point(base->width() + supSlant, -supShift), sup);
    node->setChild(0, Point(0, 0), base);
    node->width(width);
    node->ascent(ascent);
    node->descent(descent);
    return node;
}

bool LayoutSup::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    if (count() < 2)
        return false;
    if (key == Input::key_left && child(1)->has_child_node(context, index))
        return child(0)->get_child_node(context, result);
    if (key == Input::key_right && child(0)->has_child_node(context, index))
        return child(1)->get_child_node(context, result);
    return false;
}

}  // namespace Tavi
