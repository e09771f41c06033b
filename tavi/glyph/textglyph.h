// TextGlyph: a string drawn with the font, colour and character set of a TextGlyphContext. It
// measures nothing, so it is drawn only at an allocation that someone else gives it.
#pragma once

#include "tavi/glyph/glyph.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class TextGlyph : public Glyph
{
public:
    // Keeps a copy of the text; null gives the empty string.
    explicit TextGlyph(wchar const *text);
    ~TextGlyph() override;

    using Glyph::allocate;

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    // The allocation's point is the left end of the baseline. A context that is not a
    // TextGlyphContext, or carries no canvas, draws nothing.
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

    wstring const &text() const { return text_; }

private:
    wstring text_;
};

}  // namespace Tavi
