// LayoutOverBarOp: the bar over a formula (and the rule of a fraction, the top of a radical): one
// glyph of the extension font repeated to the width it is asked for.
#pragma once

#include "tavi/math/layout/layoutextop.h"

namespace Tavi {

class LayoutOverBarOp : public LayoutExtOp
{
public:
    // "&OverBar;", postfix, accent.
    LayoutOverBarOp();
    LayoutOverBarOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits, bool accent,
                    long lspace, long rspace);

    Glyph *clone(bool deep) const override;
    using LayoutOp::draw;
    using LayoutOp::request;

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;
    void accent_shift(MathNodeContext &context, Box const &box, long &a, long &b) override;
};

}  // namespace Tavi
