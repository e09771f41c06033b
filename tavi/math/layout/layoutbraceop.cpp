// LayoutBraceOp: the pieces of a stretched brace, with its centre piece.
#include "tavi/math/layout/layoutbraceop.h"

#include "tavi/geometry/allocationtree.h"
#include "tavi/math/layout/extension_codes.h"

namespace Tavi {

namespace {

// The height of the centre piece, in thirtieths of D.
long const center_height = 18;

}  // namespace

LayoutBraceOp::LayoutBraceOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits,
                             bool accent, long lspace, long rspace)
    : LayoutFenceOp(text, form, fence, separator, movablelimits, accent, lspace, rspace),
      centerChar(ExtensionCodes::brace_center(text))
{
}

// The shortest brace is top, centre and bottom; the growth is shared evenly above and below.
void LayoutBraceOp::fit_pieces(long D, long &a, long &d)
{
    long const full = (topHeight + center_height + bottomHeight) * D / 30;
    if (a + d < full) {
        a += (full - a - d) / 2;
        d = full - a;
    }
}

// The centre piece stands at the middle of the box; a column of middle pieces joins the top to it,
// another joins it to the bottom, each closed exactly at its end.
void LayoutBraceOp::draw_pieces(MathNodeContext &context, AllocationTree const &allocation, long x, long D)
{
    Box const box = allocation.box();
    long const pointY = allocation.point().y;
    long const y = pointY - box.ascent();
    long const step = midHeight * D / 30;
    long const bottomY = pointY + box.descent() - bottomHeight * D / 30;
    long const center = (box.descent() + box.ascent()) / 2 - box.ascent() + pointY;
    long const centerH = center_height * D / 30;
    long const centerY = center - centerH / 2;

    draw_ext(topChar, context, Point(x, y));
    draw_column(context, x, y + topHeight * D / 30, centerY, step);
    draw_ext(centerChar, context, Point(x, centerY));
    draw_column(context, x, centerY + centerH, bottomY, step);
    draw_ext(bottomChar, context, Point(x, bottomY));
}

Glyph *LayoutBraceOp::clone(bool) const { return new LayoutBraceOp(*this); }

}  // namespace Tavi
