// PolyGlyphImpl: the list of children behind PolyGlyph<T>.
#include "tavi/glyph/polyglyph.h"

#include <algorithm>

#include "tavi/glyph/subscript.h"

namespace Tavi {

PolyGlyphImpl::PolyGlyphImpl(long capacity)
{
    if (capacity > 0)
        glyphs_.reserve(static_cast<std::size_t>(capacity));
}

PolyGlyphImpl::PolyGlyphImpl(PolyGlyphImpl const &other) : glyphs_(other.glyphs_)
{
    for (Glyph *g : glyphs_)
        g->ref();
}

PolyGlyphImpl::~PolyGlyphImpl()
{
    for (Glyph *g : glyphs_) {
        g->parent(nullptr);
        g->unref();
    }
}

void PolyGlyphImpl::mixin_append(Glyph *glyph)
{
    glyph->ref();
    glyphs_.push_back(glyph);
}

void PolyGlyphImpl::mixin_prepend(Glyph *glyph)
{
    glyph->ref();
    glyphs_.push_back(glyph);
    std::rotate(glyphs_.begin(), glyphs_.end() - 1, glyphs_.end());
}

void PolyGlyphImpl::mixin_insert(long index, Glyph *glyph)
{
    // index == size is the end of the list: insert then means append.
    check_subscript(index, glyphs_.size() + 1);
    glyph->ref();
    glyphs_.push_back(glyph);
    std::rotate(glyphs_.begin() + index, glyphs_.end() - 1, glyphs_.end());
}

// The new glyph is referenced before the old one is let go, so replacing a glyph by one of its
// own descendants cannot destroy the new glyph on the way.
void PolyGlyphImpl::mixin_replace(long index, Glyph *glyph)
{
    check_subscript(index, glyphs_.size());
    Glyph *old = glyphs_[static_cast<std::size_t>(index)];
    if (old == glyph)
        return;
    glyph->ref();
    old->undraw();
    old->parent(nullptr);
    old->unref();
    glyphs_[static_cast<std::size_t>(index)] = glyph;
}

void PolyGlyphImpl::mixin_remove(long index)
{
    check_subscript(index, glyphs_.size());
    Glyph *old = glyphs_[static_cast<std::size_t>(index)];
    old->undraw();
    old->parent(nullptr);
    // The gap is closed before the reference goes, so that a child dying here is no longer listed.
    glyphs_.erase(glyphs_.begin() + index);
    old->unref();
}

void PolyGlyphImpl::mixin_undraw()
{
    for (Glyph *g : glyphs_)
        g->undraw();
}

Glyph *PolyGlyphImpl::mixin_component(long index) const
{
    check_subscript(index, glyphs_.size());
    return glyphs_[static_cast<std::size_t>(index)];
}

}  // namespace Tavi
