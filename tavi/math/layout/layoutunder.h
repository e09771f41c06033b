// LayoutUnder: a script stacked under a base, centred on it (an operator base may shift it).
#pragma once

#include "tavi/math/layout/layoutstretchcol.h"

namespace Tavi {

class LayoutUnder : public LayoutStretchCol
{
public:
    // Children: 0 the base, 1 the script under it.
    explicit LayoutUnder(bool accent);

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;

protected:
    MathLayout *limits_layout() override;
    // Down from the base to the script, up from the script to the base.
    bool get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result) override;
};

}  // namespace Tavi
