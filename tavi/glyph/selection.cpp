// Selection: the defaults of the interface.
#include "tavi/glyph/selection.h"

#include "tavi/geometry/allocationtree.h"
#include "tavi/glyph/glyph.h"

namespace Tavi {

Selection::~Selection() = default;

bool Selection::select_at(GlyphContext &, AllocationTree const &, Point)
{
    return false;
}

Selection *Selection::focus()
{
    return this;
}

void Selection::clear() {}

void Selection::highlight() {}

Glyph *Selection::selected_element()
{
    return nullptr;
}

bool Selection::select_default()
{
    return false;
}

AllocationTree *Selection::allocate(GlyphContext &context, AllocationTree const &allocation)
{
    Glyph *g = glyph();
    return g ? g->allocate(context, allocation) : nullptr;
}

long Selection::count()
{
    return 0;
}

Glyph *Selection::component(long)
{
    return nullptr;
}

}  // namespace Tavi
