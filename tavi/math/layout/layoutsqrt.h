// LayoutSqrt: a square root: the radical sign, sized to the radicand plus a leading, and a bar from
// the sign's top over the radicand. The result is atomic.
#pragma once

#include "tavi/geometry/box.h"
#include "tavi/math/layout/mathpolylayout.h"

namespace Tavi {

class BoxTree;
class LayoutOverBarOp;
class LayoutRadicalOp;

class LayoutSqrt : public MathPolyLayout
{
public:
    // Child 0 is the radicand.
    LayoutSqrt();
    ~LayoutSqrt() override;

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

protected:
    // The three measured parts: radicand, bar, sign. `wanted` is the size the sign was asked for.
    struct Parts
    {
        BoxTree *radicand;
        BoxTree *bar;
        BoxTree *radical;
        Box wanted;
    };
    Parts request_parts(MathNodeContext &context);
    // Radicand, bar and sign drawn from box children 0, 1, 2.
    void draw_parts(MathNodeContext &context, AllocationTree const &allocation);

    LayoutRadicalOp *radical_;
    LayoutOverBarOp *bar_;

private:
    LayoutSqrt(LayoutSqrt const &) = delete;
    LayoutSqrt &operator=(LayoutSqrt const &) = delete;
};

}  // namespace Tavi
