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
    return base_and_script(base, sup, Point(base->width() + supSlant, -supShift), width, ascent, descent);
}

}  // namespace Tavi
