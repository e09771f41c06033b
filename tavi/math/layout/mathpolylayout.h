// MathPolyLayout: a layout made of an ordered list of child layouts, each held with one reference.
// The list and its operations come from PolyGlyph; the generic child queries, picking and neighbour
// search of MathLayout then walk these children.
#pragma once

#include "tavi/glyph/polyglyph.h"
#include "tavi/math/layout/mathlayout.h"

namespace Tavi {

class MathPolyLayout : public PolyGlyph<MathLayout>
{
public:
    MathPolyLayout();
    // Reserves room for `capacity` child layouts.
    explicit MathPolyLayout(long capacity);
    ~MathPolyLayout() override;
};

}  // namespace Tavi
