// LayoutDisplayOp: large operators in text and display size.
#include "tavi/math/layout/layoutdisplayop.h"

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/extension_codes.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutDisplayOp::LayoutDisplayOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits,
                                 bool accent, long lspace, long rspace)
    : LayoutExtOp(text, form, fence, separator, movablelimits, accent, lspace, rspace),
      displayChar(0),
      textAscent(0),
      textDescent(0),
      displayAscent(0),
      displayDescent(0)
{
    if (ExtensionCodes::DisplayCodes const *codes = ExtensionCodes::display_codes(text)) {
        normalChar = codes->normal;
        displayChar = codes->display;
        textAscent = codes->text_ascent;
        textDescent = codes->text_descent;
        displayAscent = codes->display_ascent;
        displayDescent = codes->display_descent;
    }
}

bool LayoutDisplayOp::largeop() { return true; }

bool LayoutDisplayOp::draw_large(MathNodeContext &context) { return context.displaystyle(); }

wchar LayoutDisplayOp::style_char(MathNodeContext &context, long &ascent, long &descent)
{
    if (draw_large(context)) {
        ascent = displayAscent;
        descent = displayDescent;
        return displayChar;
    }
    ascent = textAscent;
    descent = textDescent;
    return normalChar;
}

long LayoutDisplayOp::style_descent(MathNodeContext &context)
{
    long a = 0;
    long d = 0;
    return request_ext(style_char(context, a, d), context).descent();
}

// The glyph's own ink is not measured: its ascent and descent are fixed fractions of D.
BoxTree *LayoutDisplayOp::make_leaf(MathNodeContext &context, long width, long D, long ascent, long descent)
{
    return new BoxTreeLeaf(width + lrspace(context), ascent * D / 3000, descent * D / 3000);
}

BoxTree *LayoutDisplayOp::request(GlyphContext &gc, BoxTree const &)
{
    MathNodeContext &context = math_context(gc);
    long a = 0;
    long d = 0;
    Box const glyph = request_ext(style_char(context, a, d), context);
    return make_leaf(context, glyph.width(), glyph.descent(), a, d);
}

// The glyph hangs from the top of the box.
void LayoutDisplayOp::draw(GlyphContext &gc, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(gc);
    long a = 0;
    long d = 0;
    wchar const ch = style_char(context, a, d);
    draw_ext(ch, context,
             Point(allocation.point().x + lspace(context), allocation.point().y - allocation.box().ascent()));
}

Glyph *LayoutDisplayOp::clone(bool) const { return new LayoutDisplayOp(*this); }

}  // namespace Tavi
