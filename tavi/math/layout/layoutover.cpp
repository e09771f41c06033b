// LayoutOver: placement of a script over a base.
#include "tavi/math/layout/layoutover.h"

#include "tavi/math/layout/layoutsup.h"

namespace Tavi {

LayoutOver::LayoutOver(bool accent) : LayoutStretchCol(accent) {}

MathLayout *LayoutOver::limits_layout() { return limits() != nullptr ? limits() : keep_limits(new LayoutSup); }

BoxTree *LayoutOver::request(GlyphContext &gc, BoxTree const &constraint)
{
    return request_script(gc, constraint, true);
}

bool LayoutOver::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    return column_neighbour(context, index, key, result, {1, 0});
}

}  // namespace Tavi
