// LayoutFenceOp: delimiters built from pieces when no ready-made size is large enough.
#include "tavi/math/layout/layoutfenceop.h"

#include "tavi/canvas/canvas.h"

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/extension_codes.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutFenceOp::LayoutFenceOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits,
                             bool accent, long lspace, long rspace)
    : LayoutBigOp(text, form, fence, separator, movablelimits, accent, lspace, rspace),
      topChar(0),
      midChar(0),
      bottomChar(0),
      topHeight(0),
      midHeight(0),
      bottomHeight(0),
      xShift(0)
{
    if (ExtensionCodes::FenceCodes const *codes = ExtensionCodes::fence_codes(text)) {
        topChar = codes->top;
        midChar = codes->mid;
        bottomChar = codes->bottom;
        topHeight = codes->top_height;
        midHeight = codes->mid_height;
        bottomHeight = codes->bottom_height;
        xShift = codes->x_shift;
    }
}

// A column is never shorter than its pieces: below top, middle and bottom together the wanted box
// grows to that height, and below top and bottom alone (a column with no room for a middle) to those
// two. The growth is shared evenly above and below.
void LayoutFenceOp::fit_pieces(long D, long &a, long &d)
{
    long const full = (topHeight + midHeight + bottomHeight) * D / 30;
    long const ends = (topHeight + bottomHeight) * D / 30;
    if (a + d < full) {
        long const target = a + d < ends ? ends : full;
        a += (target - a - d) / 2;
        d = target - a;
    }
}

BoxTree *LayoutFenceOp::request(GlyphContext &gc, BoxTree const &constraint)
{
    MathNodeContext &context = math_context(gc);
    wchar ch = 0;
    Box out;
    Box const wanted = constraint.box();
    if (ext_char(context, wanted, ch, out, true))
        return request_sized(context, wanted, ch, out);

    Box const top = request_ext(topChar, context);
    long a = constraint.ascent();
    long d = constraint.descent();
    fit_pieces(top.descent(), a, d);
    return new BoxTreeLeaf(top.width() + lrspace(context), a, d, lbadness(), rbadness());
}

// The first piece selects the font and colour, the others only stand further down: a tall fence is
// many pieces.
void LayoutFenceOp::draw_column(MathNodeContext &context, long x, long y, long limit, long step)
{
    Canvas *canvas = context.canvas();
    bool selected = false;
    while (step > 0 && y + step < limit) {
        if (selected && canvas != nullptr) {
            canvas->text(&midChar, 1, Point(x, y));
        } else {
            draw_ext(midChar, context, Point(x, y));
            selected = true;
        }
        y += step;
    }
    if (selected && canvas != nullptr)
        canvas->text(&midChar, 1, Point(x, limit - step));
    else
        draw_ext(midChar, context, Point(x, limit - step));
}

// Top piece at the box's top, bottom piece ending at the box's bottom, middle pieces between.
void LayoutFenceOp::draw_pieces(MathNodeContext &context, AllocationTree const &allocation, long x, long D)
{
    Box const box = allocation.box();
    long const y = allocation.point().y - box.ascent();
    draw_ext(topChar, context, Point(x, y));
    long const bottomY = allocation.point().y + box.descent() - bottomHeight * D / 30;
    draw_column(context, x, y + topHeight * D / 30, bottomY, midHeight * D / 30);
    draw_ext(bottomChar, context, Point(x, bottomY));
}

void LayoutFenceOp::draw(GlyphContext &gc, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(gc);
    wchar ch = 0;
    Box out;
    if (ext_char(context, allocation.box(), ch, out, true)) {
        draw_sized(context, allocation, ch, out);
        return;
    }
    // Out still holds the normal glyph, whose descent is the font's D. The pieces sit xShift
    // thousandths of D/3 right of the glyph's origin.
    long const D = out.descent();
    long const x = allocation.point().x + lspace(context) + xShift * D / 3000;
    draw_pieces(context, allocation, x, D);
}

Glyph *LayoutFenceOp::clone(bool) const { return new LayoutFenceOp(*this); }

}  // namespace Tavi
