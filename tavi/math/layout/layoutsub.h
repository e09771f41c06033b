// LayoutSub: a base with a subscript.
#pragma once

#include "tavi/math/layout/layoutindexed.h"

namespace Tavi {

class LayoutSub : public LayoutIndexed
{
public:
    // Children: 0 the base, 1 the subscript.
    LayoutSub() = default;

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;

protected:
    // Left from the subscript to the base, right from the base to the subscript.
    bool get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result) override;
};

}  // namespace Tavi
