// LayoutExtCharOp: an operator shown with one fixed glyph of the extension font ("&SmallCircle;").
#pragma once

#include "tavi/math/layout/layoutextop.h"

namespace Tavi {

class LayoutExtCharOp : public LayoutExtOp
{
public:
    LayoutExtCharOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits, bool accent,
                    long lspace, long rspace);

    Glyph *clone(bool deep) const override;
    using LayoutOp::draw;
    using LayoutOp::request;

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;
};

}  // namespace Tavi
