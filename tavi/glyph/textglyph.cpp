// TextGlyph.
#include "tavi/glyph/textglyph.h"

#include "tavi/canvas/canvas.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/glyph/textglyphcontext.h"

namespace Tavi {

TextGlyph::TextGlyph(wchar const *text) : text_(text ? text : u"") {}

TextGlyph::~TextGlyph() = default;

BoxTree *TextGlyph::request(GlyphContext &, BoxTree const &)
{
    return nullptr;
}

void TextGlyph::draw(GlyphContext &context, AllocationTree const &allocation)
{
    auto *text_context = dynamic_cast<TextGlyphContext *>(&context);
    if (!text_context)
        return;
    Canvas *canvas = context.canvas();
    if (!canvas)
        return;
    canvas->font(text_context->font(), text_context->char_set(), 0);
    canvas->text_color(text_context->color());
    canvas->text(text_.c_str(), static_cast<long>(text_.size()), allocation.point());
}

}  // namespace Tavi
