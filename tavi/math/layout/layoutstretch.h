// LayoutStretch: a composite whose operators stretch to what it holds. It can tell the size that its
// stretchy parts are to cover without keeping the boxes it measured for that.
#pragma once

#include "tavi/geometry/box.h"
#include "tavi/math/layout/mathpolylayout.h"

namespace Tavi {

class BoxTree;

class LayoutStretch : public MathPolyLayout
{
public:
    LayoutStretch() = default;
    ~LayoutStretch() override;

    // The size wanted of stretchy parts: `along` for operators laid along the content (a fence beside
    // a row), `across` for those laid across it. The first form measures the content itself; the
    // second works from a box already measured. Open to other composites, which ask their children.
    virtual void request_stretch(MathNodeContext &context, BoxTree const &constraint, Box &along, Box &across) = 0;
    virtual void request_stretch(Box const &content, BoxTree const &constraint, Box &along, Box &across) = 0;
};

}  // namespace Tavi
