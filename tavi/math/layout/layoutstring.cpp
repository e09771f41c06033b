// LayoutString: the text between two quotation marks of the class 1 font.
#include "tavi/math/layout/layoutstring.h"

#include <algorithm>
#include <memory>

#include "tavi/canvas/canvas.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

namespace {

wchar const quote_mark[] = u"\"";

}  // namespace

LayoutString::LayoutString(wchar const *text) : LayoutToken(text) {}

LayoutString::~LayoutString() = default;

Glyph *LayoutString::clone(bool) const { return new LayoutString(*this); }

// The box is the text's, widened by a quotation mark on each side and as high as the marks.
BoxTree *LayoutString::request(GlyphContext &glyph_context, BoxTree const &)
{
    MathNodeContext &context = math_context(glyph_context);
    std::unique_ptr<BoxTree> inner(LayoutAtom::request(context, BoxTree::unconstrained));
    Gauge *gauge = context.gauge();
    if (gauge == nullptr || inner == nullptr)
        return inner.release();
    context.select_real_font(MathString::f_text);
    Box quote;
    long left = 0;
    long right = 0;
    gauge->text_metrics(quote_mark, 1, quote, left, right);
    return new BoxTreeLeaf(inner->width() + 2 * quote.width(), std::max(inner->ascent(), quote.ascent()),
                           std::max(inner->descent(), quote.descent()), lbadness(), rbadness());
}

void LayoutString::draw(GlyphContext &glyph_context, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(glyph_context);
    Canvas *canvas = context.canvas();
    if (canvas == nullptr || allocation.boxtree() == nullptr)
        return;
    canvas->text_color(context.color());
    context.select_real_font(MathString::f_text);
    Box quote;
    long left = 0;
    long right = 0;
    canvas->text_metrics(quote_mark, 1, quote, left, right);
    long const q = quote.width();
    Point const at = allocation.point();
    canvas->text(quote_mark, 1, at);
    LayoutAtom::draw(context, AllocationTree(Point(at.x + q, at.y), allocation.boxtree()), false);
    long const inner_width = allocation.boxtree()->width() - 2 * q;
    context.select_real_font(MathString::f_text);
    canvas->text(quote_mark, 1, Point(at.x + q + inner_width, at.y));
}

}  // namespace Tavi
