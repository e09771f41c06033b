// LayoutBigOp: size selection among the ready-made delimiter glyphs.
#include "tavi/math/layout/layoutbigop.h"

#include <algorithm>

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/extension_codes.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

namespace {

long const free_size = 0x7fffffff;

// The ready-made sizes, as heights in thirtieths of the normal glyph's descent D.
long const size_steps[4] = {12, 18, 24, 30};

}  // namespace

LayoutBigOp::LayoutBigOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits,
                         bool accent, long lspace, long rspace)
    : LayoutExtOp(text, form, fence, separator, movablelimits, accent, lspace, rspace), bigChar{0, 0, 0, 0}
{
    if (ExtensionCodes::BigCodes const *codes = ExtensionCodes::big_codes(text)) {
        normalChar = codes->normal;
        std::copy(codes->big, codes->big + 4, bigChar);
    }
}

bool LayoutBigOp::stretchy() { return true; }

long LayoutBigOp::round_up(long value, long ex) { return value + ex / 2; }

// The normal glyph serves while the wanted box fits its ascent and a descent of 2/30 D, within the
// tolerance; then the first ready-made glyph whose height covers the wanted total; beyond the largest,
// pieces. A wanted size at or past the free mark is free: a row of operands with no height hands the mark
// up through its maxima, and a box around such a row adds to it.
bool LayoutBigOp::ext_char(MathNodeContext &context, Box const &wanted, wchar &ch, Box &out, bool noFallback)
{
    out = request_ext(normalChar, context);
    long const d = out.descent();
    long const small = 2 * d / 30;
    long const ex = context.real_ex();
    if (wanted.ascent() >= free_size || wanted.descent() >= free_size ||
        (wanted.ascent() <= round_up(out.ascent(), ex) && wanted.descent() <= round_up(small, ex))) {
        out.descent(small);
        ch = normalChar;
        return true;
    }
    long const total = wanted.ascent() + wanted.descent();
    for (int i = 0; i < 4; ++i) {
        long const h = d * size_steps[i] / 30;
        if (total <= round_up(h, ex)) {
            ch = bigChar[i];
            out = request_ext(ch, context);
            out.descent(h);
            out.ascent(0);
            return true;
        }
    }
    if (noFallback) {
        ch = 0;
        return false;
    }
    ch = bigChar[3];
    out = request_ext(ch, context);
    out.descent(d * size_steps[3] / 30);
    out.ascent(0);
    return false;
}

// A larger glyph is centred on the wanted box: the half of the surplus height goes above it, but the
// glyph never reaches below the baseline by more than its height.
BoxTree *LayoutBigOp::request_sized(MathNodeContext &context, Box const &wanted, wchar ch, Box const &out)
{
    long ascent = out.ascent();
    long descent = out.descent();
    if (ch != normalChar) {
        long const offset = (out.descent() - wanted.ascent() - wanted.descent()) / 2;
        ascent = std::max(0L, wanted.ascent() + offset);
        descent = out.descent() - ascent > 0 ? out.descent() - ascent : 0;
    }
    return new BoxTreeLeaf(out.width() + lrspace(context), ascent, descent, lbadness(), rbadness());
}

BoxTree *LayoutBigOp::request(GlyphContext &gc, BoxTree const &constraint)
{
    MathNodeContext &context = math_context(gc);
    wchar ch = 0;
    Box out;
    Box const wanted = constraint.box();
    ext_char(context, wanted, ch, out, false);
    return request_sized(context, wanted, ch, out);
}

// The normal glyph stands on the baseline; a larger one hangs from a top that centres it in the box.
void LayoutBigOp::draw_sized(MathNodeContext &context, AllocationTree const &allocation, wchar ch, Box const &out)
{
    Box const box = allocation.box();
    Point p(allocation.point().x + lspace(context), allocation.point().y);
    if (ch != normalChar)
        p.y = allocation.point().y - box.ascent() - (out.descent() - box.descent() - box.ascent()) / 2;
    draw_ext(ch, context, p);
}

void LayoutBigOp::draw(GlyphContext &gc, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(gc);
    wchar ch = 0;
    Box out;
    ext_char(context, allocation.box(), ch, out, false);
    draw_sized(context, allocation, ch, out);
}

Glyph *LayoutBigOp::clone(bool) const { return new LayoutBigOp(*this); }

}  // namespace Tavi
