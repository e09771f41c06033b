// Glyph: the base behaviour of the protocol, which walks the components wherever a call concerns
// the content.
#include "tavi/glyph/glyph.h"

#include <ostream>

#include "tavi/geometry/allocationtree.h"
#include "tavi/glyph/glyphscene.h"

namespace Tavi {

Glyph::Glyph(Glyph const &other) : Kxt::RefCounted<Kxt::IResource>(other), parent_(nullptr) {}

Glyph &Glyph::operator=(Glyph const &other)
{
    Kxt::RefCounted<Kxt::IResource>::operator=(other);
    return *this;
}

Glyph::~Glyph() = default;

Glyph *Glyph::clone(bool) const
{
    return nullptr;
}

void Glyph::margins(GlyphContext &, long &left, long &top, long &right, long &bottom)
{
    left = top = right = bottom = 0;
}

BoxTree *Glyph::request(GlyphContext &, BoxTree const &)
{
    return nullptr;
}

AllocationTree *Glyph::allocate(long, GlyphContext &, AllocationTree const &)
{
    return nullptr;
}

AllocationTree *Glyph::allocate(GlyphContext &, AllocationTree const &allocation)
{
    return new AllocationTree(allocation);
}

void Glyph::draw(GlyphContext &, AllocationTree const &) {}

void Glyph::print(GlyphContext &context, AllocationTree const &allocation)
{
    draw(context, allocation);
}

void Glyph::undraw()
{
    long const n = count();
    for (long i = 0; i < n; ++i)
        if (Glyph *g = component(i))
            g->undraw();
}

// A glyph is allocated when all of its components are; one without components always is.
bool Glyph::is_allocated()
{
    long const n = count();
    for (long i = 0; i < n; ++i) {
        Glyph *g = component(i);
        if (g && !g->is_allocated())
            return false;
    }
    return true;
}

void Glyph::invalidate_allocation()
{
    long const n = count();
    for (long i = 0; i < n; ++i)
        if (Glyph *g = component(i))
            g->invalidate_allocation();
}

void Glyph::append(Glyph *) {}

void Glyph::prepend(Glyph *) {}

void Glyph::insert(long, Glyph *) {}

void Glyph::replace(long, Glyph *) {}

void Glyph::remove(long) {}

long Glyph::count()
{
    return 0;
}

Glyph *Glyph::component(long)
{
    return nullptr;
}

void Glyph::change(long) {}

GlyphScene *Glyph::scene()
{
    return parent_ ? parent_->scene() : nullptr;
}

void Glyph::deselect()
{
    if (GlyphScene *s = scene())
        s->deselect(this);
}

std::ostream &Glyph::put_xml(std::ostream &out)
{
    return out;
}

bool Glyph::read_only() const
{
    return false;
}

}  // namespace Tavi
