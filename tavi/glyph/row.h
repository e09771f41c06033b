// Row: a plain ordered list of glyphs. It measures and draws nothing itself; it is the list that
// other code walks.
#pragma once

#include "tavi/glyph/polyglyph.h"

namespace Tavi {

class Row : public PolyGlyph<Glyph>
{
public:
    explicit Row(long capacity = 0) : PolyGlyph<Glyph>(capacity) {}
    ~Row() override;

    using Glyph::allocate;

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    AllocationTree *allocate(long index, GlyphContext &context, AllocationTree const &allocation) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;
    // Putting in the glyph that is already there changes nothing and tells nobody.
    void replace(long index, Glyph *glyph) override;
};

}  // namespace Tavi
