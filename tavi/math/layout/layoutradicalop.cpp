// LayoutRadicalOp: the radical sign and the place of a root's degree.
#include "tavi/math/layout/layoutradicalop.h"

#include "tavi/geometry/boxtree.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutRadicalOp::LayoutRadicalOp() : LayoutRadicalOp(u"&Sqrt;", prefix, false, false, false, false, 0, 0) {}

LayoutRadicalOp::LayoutRadicalOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits,
                                 bool accent, long lspace, long rspace)
    : LayoutFenceOp(text, form, fence, separator, movablelimits, accent, lspace, rspace)
{
}

// A radical that does not reach over its radicand's top looks broken: no tolerance.
long LayoutRadicalOp::round_up(long value, long) { return value; }

// The degree stands above the middle of a ready-made sign, and at 1620/3000 of D above the baseline
// of a sign built from pieces; in both cases one leading higher. It is centred on a quarter of the
// sign's width.
void LayoutRadicalOp::degree_pos(MathNodeContext &context, BoxTree const &constraint, Point &pos, long &r)
{
    wchar ch = 0;
    Box out;
    if (ext_char(context, constraint.box(), ch, out, true))
        pos.y = -(out.descent() + out.ascent()) / 2;
    else
        pos.y = out.descent() * -1620 / 3000;
    pos.y -= context.real_leading();
    pos.x = out.width() / 4;
    r = out.width() / 4;
}

Glyph *LayoutRadicalOp::clone(bool) const { return new LayoutRadicalOp(*this); }

}  // namespace Tavi
