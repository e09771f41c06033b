// LayoutStackOp: a vertical bar ("|", "&Verbar;") that stretches by stacking one glyph of the
// extension font as often as the enclosed height needs.
#pragma once

#include "tavi/math/layout/layoutextop.h"

namespace Tavi {

class LayoutStackOp : public LayoutExtOp
{
public:
    LayoutStackOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits, bool accent,
                  long lspace, long rspace);

    Glyph *clone(bool deep) const override;
    using LayoutOp::draw;
    using LayoutOp::request;

    bool stretchy() override;
    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

    wchar stack_char() const { return stackChar; }

protected:
    wchar stackChar;
};

}  // namespace Tavi
