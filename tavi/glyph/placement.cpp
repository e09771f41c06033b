// Placement.
#include "tavi/glyph/placement.h"

#include <memory>

#include "tavi/canvas/canvas.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/subscript.h"

namespace Tavi {

Placement::Placement(long capacity) : PolyGlyph<Glyph>(capacity)
{
    if (capacity > 0)
        positions_.reserve(static_cast<std::size_t>(capacity));
}

Placement::~Placement() = default;

BoxTree *Placement::request(GlyphContext &, BoxTree const &)
{
    return nullptr;
}

AllocationTree *Placement::allocate(long, GlyphContext &, AllocationTree const &)
{
    return nullptr;
}

AllocationTree *Placement::allocate(GlyphContext &context, AllocationTree const &allocation)
{
    allocated_ = true;
    return Glyph::allocate(context, allocation);
}

// The children paint in the placement's own coordinates: the canvas is moved to the allocation's
// point for the time of the walk and moved back afterwards.
void Placement::draw(GlyphContext &context, AllocationTree const &allocation)
{
    Canvas *canvas = context.canvas();
    if (!canvas)
        return;
    Point const origin = allocation.point();
    canvas->add_translation(origin);
    long const n = count();
    for (long i = 0; i < n; ++i) {
        Glyph *child = component(i);
        std::unique_ptr<BoxTree> tree(child->request(context, BoxTree::unconstrained));
        child->draw(context, AllocationTree(positions_[static_cast<std::size_t>(i)], tree.get()));
    }
    canvas->add_translation(-origin);
}

bool Placement::is_allocated()
{
    return allocated_ && Glyph::is_allocated();
}

void Placement::invalidate_allocation()
{
    allocated_ = false;
    Glyph::invalidate_allocation();
}

void Placement::append(Glyph *glyph)
{
    positions_.emplace_back(0, 0);
    PolyGlyph<Glyph>::append(glyph);
}

void Placement::prepend(Glyph *glyph)
{
    positions_.insert(positions_.begin(), Point(0, 0));
    PolyGlyph<Glyph>::prepend(glyph);
}

void Placement::insert(long index, Glyph *glyph)
{
    check_subscript(index, positions_.size() + 1);
    positions_.insert(positions_.begin() + index, Point(0, 0));
    PolyGlyph<Glyph>::insert(index, glyph);
}

void Placement::replace(long index, Glyph *glyph)
{
    if (component(index) != glyph)
        positions_[static_cast<std::size_t>(index)] = Point(0, 0);
    PolyGlyph<Glyph>::replace(index, glyph);
}

void Placement::remove(long index)
{
    check_subscript(index, positions_.size());
    positions_.erase(positions_.begin() + index);
    PolyGlyph<Glyph>::remove(index);
}

void Placement::position(long index, Point p)
{
    check_subscript(index, positions_.size());
    positions_[static_cast<std::size_t>(index)] = p;
}

Point Placement::position(long index) const
{
    check_subscript(index, positions_.size());
    return positions_[static_cast<std::size_t>(index)];
}

void Placement::modified()
{
    allocated_ = false;
}

}  // namespace Tavi
