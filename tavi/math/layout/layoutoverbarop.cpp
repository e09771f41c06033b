// LayoutOverBarOp: a bar of repeated glyphs.
#include "tavi/math/layout/layoutoverbarop.h"

#include "tavi/canvas/canvas.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/extension_codes.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

namespace {

long const free_size = 0x7fffffff;

}  // namespace

LayoutOverBarOp::LayoutOverBarOp() : LayoutOverBarOp(u"&OverBar;", postfix, false, false, false, true, 0, 0) {}

LayoutOverBarOp::LayoutOverBarOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits,
                                 bool accent, long lspace, long rspace)
    : LayoutExtOp(text, form, fence, separator, movablelimits, accent, lspace, rspace)
{
    normalChar = ExtensionCodes::overbar_char;
}

// With u = 40/3000 D the bar's box reaches 3u above and u below the baseline; it is as wide as the
// glyph, or as the constraint when that is given and wider.
BoxTree *LayoutOverBarOp::request(GlyphContext &gc, BoxTree const &constraint)
{
    MathNodeContext &context = math_context(gc);
    Box const glyph = request_ext(normalChar, context);
    long const u = glyph.descent() * 40 / 3000;
    long width = glyph.width();
    if (constraint.width() != free_size && constraint.width() > width)
        width = constraint.width();
    return new BoxTreeLeaf(width, 3 * u, u);
}

// Glyphs side by side from the left; the last one ends exactly at the box's right edge.
void LayoutOverBarOp::draw(GlyphContext &gc, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(gc);
    Point const p = allocation.point();
    long const boxWidth = allocation.box().width();
    if (boxWidth >= free_size) {
        draw_ext(normalChar, context, p);
        return;
    }
    long const glyphWidth = request_ext(normalChar, context).width();
    if (glyphWidth <= 0)
        return;
    long const last = p.x + boxWidth - glyphWidth;
    Canvas *canvas = context.canvas();
    if (canvas == nullptr || glyphWidth >= boxWidth) {
        draw_ext(normalChar, context, Point(last, p.y));
        return;
    }
    // The first piece selects the font and colour; the others only stand further along. A bar over a
    // wide formula is many pieces, and selecting the font again for each of them showed.
    draw_ext(normalChar, context, p);
    for (long x = p.x + glyphWidth; x < last; x += glyphWidth)
        canvas->text(&normalChar, 1, Point(x, p.y));
    canvas->text(&normalChar, 1, Point(last, p.y));
}

// An accent over the bar is raised by 100/800 of the glyph's ascent.
void LayoutOverBarOp::accent_shift(MathNodeContext &context, Box const &, long &a, long &b)
{
    a = 0;
    b = request_ext(normalChar, context).ascent() * 100 / 800;
}

Glyph *LayoutOverBarOp::clone(bool) const { return new LayoutOverBarOp(*this); }

}  // namespace Tavi
