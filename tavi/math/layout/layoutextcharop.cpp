// LayoutExtCharOp: one glyph of the extension font on the baseline.
#include "tavi/math/layout/layoutextcharop.h"

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/extension_codes.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutExtCharOp::LayoutExtCharOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits,
                                 bool accent, long lspace, long rspace)
    : LayoutExtOp(text, form, fence, separator, movablelimits, accent, lspace, rspace)
{
    if (ExtensionCodes::CharCodes const *codes = ExtensionCodes::char_codes(text))
        normalChar = codes->normal;
}

// The glyph stands on the baseline with its ascent and reaches 2/30 D below it.
BoxTree *LayoutExtCharOp::request(GlyphContext &gc, BoxTree const &)
{
    MathNodeContext &context = math_context(gc);
    Box const glyph = request_ext(normalChar, context);
    return new BoxTreeLeaf(glyph.width() + lrspace(context), glyph.ascent(), 2 * glyph.descent() / 30);
}

void LayoutExtCharOp::draw(GlyphContext &gc, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(gc);
    draw_ext(normalChar, context,
             Point(allocation.point().x + lspace(context), allocation.point().y));
}

Glyph *LayoutExtCharOp::clone(bool) const { return new LayoutExtCharOp(*this); }

}  // namespace Tavi
