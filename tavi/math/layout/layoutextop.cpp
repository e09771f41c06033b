// LayoutExtOp: measuring and painting single glyphs of the math extension font.
#include "tavi/math/layout/layoutextop.h"

#include "tavi/canvas/canvas.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutExtOp::LayoutExtOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits,
                         bool accent, long lspace, long rspace)
    : LayoutOp(text, form, fence, separator, movablelimits, accent, lspace, rspace),
      normalChar(0),
      key_(text != nullptr ? wstring(text) : wstring())
{
}

void LayoutExtOp::subsup_slant(MathNodeContext &, Box const &, long &subSlant, long &supSlant)
{
    subSlant = 0;
    supSlant = 0;
}

Box LayoutExtOp::request_ext(wchar ch, MathNodeContext &context)
{
    context.select_real_font(MathString::f_extension);
    Gauge *gauge = context.gauge();
    return gauge != nullptr ? gauge->text_box(&ch, 1) : Box::zero;
}

// Each piece sets colour and font afresh: a stretched symbol is a run of single glyphs, and any
// surface may have been changed between two of them.
void LayoutExtOp::draw_ext(wchar ch, MathNodeContext &context, Point const &p)
{
    Canvas *canvas = context.canvas();
    if (canvas == nullptr)
        return;
    canvas->text_color(context.color());
    context.select_real_font(MathString::f_extension);
    canvas->text(&ch, 1, p);
}

void LayoutExtOp::copy_to(LayoutExtOp *other) const
{
    other->text(key_.c_str());
    other->key_ = key_;
    other->normalChar = normalChar;
}

}  // namespace Tavi
