// LayoutStackOp: bars stacked from repeated glyphs.
#include "tavi/math/layout/layoutstackop.h"

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/extension_codes.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

namespace {

long const free_size = 0x7fffffff;

bool is_free(Box const &box) { return box.ascent() >= free_size || box.descent() >= free_size; }

}  // namespace

LayoutStackOp::LayoutStackOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits,
                             bool accent, long lspace, long rspace)
    : LayoutExtOp(text, form, fence, separator, movablelimits, accent, lspace, rspace), stackChar(0)
{
    if (ExtensionCodes::StackCodes const *codes = ExtensionCodes::stack_codes(text)) {
        normalChar = codes->normal;
        stackChar = codes->stack;
    }
}

bool LayoutStackOp::stretchy() { return true; }

// With nothing to enclose the normal glyph stands, reaching 2/30 D below the baseline. Otherwise the
// bar takes the wanted ascent and descent, but is at least one stacked piece (6/30 D) high, grown
// evenly above and below.
BoxTree *LayoutStackOp::request(GlyphContext &gc, BoxTree const &constraint)
{
    MathNodeContext &context = math_context(gc);
    if (is_free(constraint.box())) {
        Box const glyph = request_ext(normalChar, context);
        return new BoxTreeLeaf(glyph.width() + lrspace(context), glyph.ascent(), 2 * glyph.descent() / 30,
                               lbadness(), rbadness());
    }
    Box const glyph = request_ext(stackChar, context);
    long const h = glyph.descent() * 6 / 30;
    long a = constraint.ascent();
    long d = constraint.descent();
    if (a + d < h) {
        long const grow = (h - a - d) / 2;
        a += grow;
        d += grow;
    }
    return new BoxTreeLeaf(glyph.width() + lrspace(context), a, d, lbadness(), rbadness());
}

// Pieces every h from the top down; the last one is placed to end exactly at the bottom, overlapping
// the one before it.
void LayoutStackOp::draw(GlyphContext &gc, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(gc);
    Box const box = allocation.box();
    long const x = allocation.point().x + lspace(context);
    long const pointY = allocation.point().y;
    if (is_free(box)) {
        draw_ext(normalChar, context, Point(x, pointY));
        return;
    }
    long const h = request_ext(stackChar, context).descent() * 6 / 30;
    if (h <= 0)
        return;
    long const a = box.ascent();
    long const d = box.descent();
    long const pad = h > d + a ? (h - d - a) / 2 : 0;
    long const last = pointY + d - h + pad;
    for (long y = pointY - a - pad; y < last; y += h)
        draw_ext(stackChar, context, Point(x, y));
    draw_ext(stackChar, context, Point(x, last));
}

Glyph *LayoutStackOp::clone(bool) const { return new LayoutStackOp(*this); }

}  // namespace Tavi
