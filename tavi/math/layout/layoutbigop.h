// LayoutBigOp: a delimiter that grows with what it encloses, by choosing among the normal glyph and
// four ready-made larger glyphs of the extension font the first that covers the wanted height. The
// chosen glyph is centred on the wanted box.
#pragma once

#include "tavi/math/layout/layoutextop.h"

namespace Tavi {

class LayoutBigOp : public LayoutExtOp
{
public:
    LayoutBigOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits, bool accent,
                long lspace, long rspace);

    Glyph *clone(bool deep) const override;
    using LayoutOp::draw;
    using LayoutOp::request;

    bool stretchy() override;
    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

    // The glyph for a wanted box: true with a ready-made size (ch and its box in out, whose descent is
    // then the glyph's whole height), false when it must be built from pieces (ch 0 with noFallback,
    // else the largest glyph).
    bool ext_char(MathNodeContext &context, Box const &wanted, wchar &ch, Box &out, bool noFallback);

    wchar big_char(int i) const { return bigChar[i]; }

protected:
    // The tolerance with which a size still counts as large enough: half an ex.
    virtual long round_up(long value, long ex);

    // Leaf for a glyph chosen by ext_char, centred on the wanted box when it is not the normal one.
    BoxTree *request_sized(MathNodeContext &context, Box const &wanted, wchar ch, Box const &out);
    // Paints a glyph chosen by ext_char for the box of the allocation.
    void draw_sized(MathNodeContext &context, AllocationTree const &allocation, wchar ch, Box const &out);

    wchar bigChar[4];
};

}  // namespace Tavi
