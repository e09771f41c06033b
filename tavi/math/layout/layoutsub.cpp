// LayoutSub: placement of a subscript.
#include "tavi/math/layout/layoutsub.h"

#include <algorithm>

#include "tavi/geometry/boxtree.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

// The subscript follows the base, pulled in by an operator's slant, with its baseline subShift below
// the base's. Its box keeps the X-height as least ascent.
BoxTree *LayoutSub::request(GlyphContext &gc, BoxTree const &constraint)
{
    MathNodeContext &context = math_context(gc);
    long const ex = context.real_ex();
    long subSlant = 0;
    long supSlant = 0;
    BoxTree *base = request_base(context, constraint, false, subSlant, supSlant);
    BoxTree *sub = nullptr;
    {
        ScriptStyle style(context);
        sub = child(1)->request(context, BoxTree::unconstrained);
        raise_to_x_height(context, *sub);
    }
    long const subShift = sub_shift(*base, *sub, ex);
    long const width = base->width() + sub->width() + subSlant;
    long const ascent = std::max(base->ascent(), subShift);
    long const descent = std::max(base->descent(), sub->descent() - subShift + sub->ascent());
    Point const at(base->width() + subSlant, sub->ascent() - subShift);
    return base_and_script(base, sub, at, width, ascent, descent);
}

}  // namespace Tavi
