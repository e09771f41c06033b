// LayoutUnderOver: scripts stacked both under and over a base, aligned left, right or centred.
#pragma once

#include "tavi/math/layout/layoutstretchcol.h"

namespace Tavi {

class LayoutUnderOver : public LayoutStretchCol
{
public:
    // Children: 0 the base, 1 under it, 2 over it. align 'l' or 'r' aligns the three left or right;
    // any other value centres them.
    LayoutUnderOver(bool accent, char align);

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    // Not an operator, whatever its base.
    LayoutOp *core_operator() override;

    char align() const { return align_; }

protected:
    MathLayout *limits_layout() override;
    // Down: over to base, base to under. Up: under to base, base to over.
    bool get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result) override;

private:
    char align_;
};

}  // namespace Tavi
