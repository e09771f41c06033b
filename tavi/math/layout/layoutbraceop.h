// LayoutBraceOp: a curly brace built from pieces, which unlike the other fences has a centre piece
// (the point of the brace) between two columns of middle pieces.
#pragma once

#include "tavi/math/layout/layoutfenceop.h"

namespace Tavi {

class LayoutBraceOp : public LayoutFenceOp
{
public:
    LayoutBraceOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits, bool accent,
                  long lspace, long rspace);

    Glyph *clone(bool deep) const override;

    wchar center_char() const { return centerChar; }

protected:
    void fit_pieces(long D, long &a, long &d) override;
    void draw_pieces(MathNodeContext &context, AllocationTree const &allocation, long x, long D) override;

    wchar centerChar;
};

}  // namespace Tavi
