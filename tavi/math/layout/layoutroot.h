// LayoutRoot: a root with a degree, which stands two script levels smaller in the notch of the
// radical sign. A degree wider than the notch pushes the sign and radicand to the right.
#pragma once

#include "tavi/math/layout/layoutsqrt.h"

namespace Tavi {

class LayoutRoot : public LayoutSqrt
{
public:
    // Child 0 is the radicand, child 1 the degree.
    LayoutRoot();

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;
    bool pick(long index, MathSelection *selection, MathNodeContext &context, AllocationTree const &allocation,
              Point point) override;
    AllocationTree *allocate_selection(long index, MathSelection *selection, std::size_t size,
                                       MathNodeContext &context, AllocationTree const &allocation) override;

protected:
    // Left from the radicand to the degree, right back.
    bool get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result) override;
};

}  // namespace Tavi
