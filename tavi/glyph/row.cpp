// Row.
#include "tavi/glyph/row.h"

namespace Tavi {

Row::~Row() = default;

BoxTree *Row::request(GlyphContext &, BoxTree const &)
{
    return nullptr;
}

AllocationTree *Row::allocate(long, GlyphContext &, AllocationTree const &)
{
    return nullptr;
}

void Row::draw(GlyphContext &, AllocationTree const &) {}

void Row::replace(long index, Glyph *glyph)
{
    if (component(index) == glyph)
        return;
    PolyGlyph<Glyph>::replace(index, glyph);
}

}  // namespace Tavi
