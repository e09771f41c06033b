// LayoutDisplayOp: a large operator (sum, product, union, ...) with one glyph for text style and a
// larger one for display style, each with the ascent and descent it stands for.
#pragma once

#include "tavi/math/layout/layoutextop.h"

namespace Tavi {

class LayoutDisplayOp : public LayoutExtOp
{
public:
    LayoutDisplayOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits, bool accent,
                    long lspace, long rspace);

    Glyph *clone(bool deep) const override;
    using LayoutOp::draw;
    using LayoutOp::request;

    bool largeop() override;
    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

    wchar display_char() const { return displayChar; }

protected:
    // Display style decides the glyph.
    bool draw_large(MathNodeContext &context) override;

    // The glyph for the present style, with its ascent and descent in thousandths of D/3.
    wchar style_char(MathNodeContext &context, long &ascent, long &descent);
    // The font's descent D, read from the glyph of the present style.
    long style_descent(MathNodeContext &context);
    // The leaf of the operator, `width` being the width before the spaces.
    BoxTree *make_leaf(MathNodeContext &context, long width, long D, long ascent, long descent);

    wchar displayChar;
    long textAscent;
    long textDescent;
    long displayAscent;
    long displayDescent;
};

}  // namespace Tavi
