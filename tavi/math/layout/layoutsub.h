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
};

}  // namespace Tavi
