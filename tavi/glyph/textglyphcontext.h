// TextGlyphContext: a GlyphContext that also says in which font, colour and character set a
// TextGlyph paints its string.
#pragma once

#include "tavi/canvas/color.h"
#include "tavi/canvas/font.h"
#include "tavi/canvas/gauge.h"
#include "tavi/glyph/glyphcontext.h"

namespace Tavi {

class TextGlyphContext : public GlyphContext
{
public:
    // The font is copied, which shares its description.
    TextGlyphContext(GlyphContext &context, Font const &font, Color color, Gauge::CharSet char_set)
        : GlyphContext(context), font_(font), color_(color), char_set_(char_set)
    {
    }
    ~TextGlyphContext() override;

    Font const &font() const { return font_; }
    Color color() const { return color_; }
    Gauge::CharSet char_set() const { return char_set_; }

private:
    Font font_;
    Color color_;
    Gauge::CharSet char_set_;
};

}  // namespace Tavi
