// LayoutIntegralOp: integral signs with their narrow box and slanted scripts.
#include "tavi/math/layout/layoutintegralop.h"

#include "tavi/geometry/boxtree.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutIntegralOp::LayoutIntegralOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits,
                                   bool accent, long lspace, long rspace)
    : LayoutDisplayOp(text, form, fence, separator, movablelimits, accent, lspace, rspace)
{
}

// The box is 1000/3000 of D wide in display style and 650/3000 in text style, whatever the glyph's
// advance.
BoxTree *LayoutIntegralOp::request(GlyphContext &gc, BoxTree const &)
{
    MathNodeContext &context = math_context(gc);
    long a = 0;
    long d = 0;
    Box const glyph = request_ext(style_char(context, a, d), context);
    long const D = glyph.descent();
    long const width = D * (draw_large(context) ? 1000 : 650) / 3000;
    return make_leaf(context, width, D, a, d);
}

// The subscript tucks under the slant, left by 445/3000 D in display style and 250/3000 in text style;
// the superscript stays.
void LayoutIntegralOp::subsup_slant(MathNodeContext &context, Box const &, long &subSlant, long &supSlant)
{
    long const D = style_descent(context);
    subSlant = D * (draw_large(context) ? -445 : -250) / 3000;
    supSlant = 0;
}

// Limits follow the slant: the upper one right by s, the lower one left by s.
void LayoutIntegralOp::underover_slant(MathNodeContext &context, Box const &, long &underX, long &overX)
{
    long const D = style_descent(context);
    long const s = D * (draw_large(context) ? 300 : 175) / 3000;
    overX = s;
    underX = -s;
}

Glyph *LayoutIntegralOp::clone(bool) const { return new LayoutIntegralOp(*this); }

}  // namespace Tavi
