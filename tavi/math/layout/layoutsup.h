// LayoutSup: a base with a superscript.
#pragma once

#include "tavi/math/layout/layoutindexed.h"

namespace Tavi {

class LayoutSup : public LayoutIndexed
{
public:
    // Children: 0 the base, 1 the superscript.
    LayoutSup() = default;

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
};

}  // namespace Tavi
