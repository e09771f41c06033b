// LayoutIntegralOp: an integral sign. Its slanted glyph overhangs its box, which is narrower than the
// glyph, and its scripts and limits are moved to follow the slant.
#pragma once

#include "tavi/math/layout/layoutdisplayop.h"

namespace Tavi {

class LayoutIntegralOp : public LayoutDisplayOp
{
public:
    LayoutIntegralOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits, bool accent,
                     long lspace, long rspace);

    Glyph *clone(bool deep) const override;
    using LayoutOp::draw;
    using LayoutOp::request;

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void subsup_slant(MathNodeContext &context, Box const &box, long &subSlant, long &supSlant) override;
    void underover_slant(MathNodeContext &context, Box const &box, long &underX, long &overX) override;
};

}  // namespace Tavi
