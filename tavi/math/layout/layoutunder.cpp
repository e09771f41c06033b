// LayoutUnder: placement of a script under a base.
#include "tavi/math/layout/layoutunder.h"

#include "tavi/math/layout/layoutsub.h"

namespace Tavi {

LayoutUnder::LayoutUnder(bool accent) : LayoutStretchCol(accent) {}

MathLayout *LayoutUnder::limits_layout() { return limits() != nullptr ? limits() : keep_limits(new LayoutSub); }

BoxTree *LayoutUnder::request(GlyphContext &gc, BoxTree const &constraint)
{
    return request_script(gc, constraint, false);
}

bool LayoutUnder::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    return column_neighbour(context, index, key, result, {0, 1});
}

}  // namespace Tavi
