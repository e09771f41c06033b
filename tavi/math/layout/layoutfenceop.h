// LayoutFenceOp: a delimiter that, past its largest ready-made glyph, is built from pieces of the
// extension font: a top, a column of repeated middle pieces and a bottom, stretched to any height and
// centred on what it encloses.
#pragma once

#include "tavi/math/layout/layoutbigop.h"

namespace Tavi {

class LayoutFenceOp : public LayoutBigOp
{
public:
    LayoutFenceOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits, bool accent,
                  long lspace, long rspace);

    Glyph *clone(bool deep) const override;
    using LayoutOp::draw;
    using LayoutOp::request;

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

    wchar top_char() const { return topChar; }
    wchar mid_char() const { return midChar; }
    wchar bottom_char() const { return bottomChar; }

protected:
    // Grows the wanted ascent a and descent d so that the pieces fit, keeping the column centred.
    virtual void fit_pieces(long D, long &a, long &d);
    // Paints the column of pieces for the allocation's box, x already at the glyph's left.
    virtual void draw_pieces(MathNodeContext &context, AllocationTree const &allocation, long x, long D);
    // Paints middle pieces from y downward while a whole one fits above limit, then one more ending
    // exactly at limit, which closes the column.
    void draw_column(MathNodeContext &context, long x, long y, long limit, long step);

    wchar topChar;
    wchar midChar;
    wchar bottomChar;
    long topHeight;
    long midHeight;
    long bottomHeight;
    long xShift;
};

}  // namespace Tavi
