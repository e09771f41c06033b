// LayoutRadicalOp: the radical sign, a fence that must cover its radicand with no tolerance, and that
// tells a root where its degree goes.
#pragma once

#include "tavi/math/layout/layoutfenceop.h"

namespace Tavi {

class BoxTree;

class LayoutRadicalOp : public LayoutFenceOp
{
public:
    // The square root sign: "&Sqrt;", prefix, no flags, no spaces.
    LayoutRadicalOp();
    LayoutRadicalOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits, bool accent,
                    long lspace, long rspace);

    Glyph *clone(bool deep) const override;

    // Where the degree of a root stands for the sign requested with `constraint`: pos relative to
    // the sign's origin, and r, the width of the notch that the degree may overlap.
    void degree_pos(MathNodeContext &context, BoxTree const &constraint, Point &pos, long &r);

protected:
    long round_up(long value, long ex) override;
};

}  // namespace Tavi
