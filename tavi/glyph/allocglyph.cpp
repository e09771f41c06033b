// AllocGlyphImpl: the list of positioned children behind AllocGlyph<T>.
#include "tavi/glyph/allocglyph.h"

#include <algorithm>

#include "tavi/glyph/subscript.h"

namespace Tavi {

AllocGlyphImpl::Element::Element(Glyph *glyph) : glyph_(glyph), position_(0, 0)
{
    if (glyph_)
        glyph_->ref();
}

AllocGlyphImpl::Element::Element(Element const &other) : glyph_(other.glyph_), position_(other.position_)
{
    if (glyph_)
        glyph_->ref();
}

AllocGlyphImpl::Element::Element(Element &&other) noexcept : glyph_(other.glyph_), position_(other.position_)
{
    other.glyph_ = nullptr;
}

AllocGlyphImpl::Element &AllocGlyphImpl::Element::operator=(Element const &other)
{
    if (other.glyph_)
        other.glyph_->ref();
    Glyph *old = glyph_;
    glyph_ = other.glyph_;
    position_ = other.position_;
    drop(old);
    return *this;
}

AllocGlyphImpl::Element &AllocGlyphImpl::Element::operator=(Element &&other) noexcept
{
    if (this != &other) {
        Glyph *old = glyph_;
        glyph_ = other.glyph_;
        position_ = other.position_;
        other.glyph_ = nullptr;
        drop(old);
    }
    return *this;
}

AllocGlyphImpl::Element::~Element()
{
    drop(glyph_);
}

Glyph *AllocGlyphImpl::Element::release()
{
    Glyph *g = glyph_;
    glyph_ = nullptr;
    return g;
}

void AllocGlyphImpl::Element::adopt(Glyph *glyph)
{
    glyph_ = glyph;
    position_ = Point(0, 0);
}

void AllocGlyphImpl::Element::drop(Glyph *glyph)
{
    if (glyph) {
        glyph->parent(nullptr);
        glyph->unref();
    }
}

AllocGlyphImpl::AllocGlyphImpl(long capacity)
{
    if (capacity > 0)
        elements_.reserve(static_cast<std::size_t>(capacity));
}

// The elements would go in reverse order if the vector were left to destroy them.
AllocGlyphImpl::~AllocGlyphImpl()
{
    for (Element &e : elements_)
        Element::drop(e.release());
}

void AllocGlyphImpl::mixin_append(Glyph *glyph)
{
    elements_.emplace_back(glyph);
}

void AllocGlyphImpl::mixin_prepend(Glyph *glyph)
{
    elements_.emplace_back(glyph);
    std::rotate(elements_.begin(), elements_.end() - 1, elements_.end());
}

void AllocGlyphImpl::mixin_insert(long index, Glyph *glyph)
{
    // index == size is the end of the list: insert then means append.
    check_subscript(index, elements_.size() + 1);
    elements_.emplace_back(glyph);
    std::rotate(elements_.begin() + index, elements_.end() - 1, elements_.end());
}

// The new glyph is referenced before the old one is let go, so replacing a glyph by one of its
// own descendants cannot destroy the new glyph on the way.
void AllocGlyphImpl::mixin_replace(long index, Glyph *glyph)
{
    check_subscript(index, elements_.size());
    Element &e = elements_[static_cast<std::size_t>(index)];
    if (e.glyph() == glyph)
        return;
    glyph->ref();
    Glyph *old = e.release();
    old->undraw();
    old->parent(nullptr);
    old->unref();
    e.adopt(glyph);
}

void AllocGlyphImpl::mixin_remove(long index)
{
    check_subscript(index, elements_.size());
    Glyph *old = elements_[static_cast<std::size_t>(index)].release();
    old->undraw();
    old->parent(nullptr);
    // The gap is closed before the reference goes, so that a child dying here is no longer listed.
    elements_.erase(elements_.begin() + index);
    old->unref();
}

void AllocGlyphImpl::mixin_undraw()
{
    for (Element &e : elements_)
        e.glyph()->undraw();
}

Glyph *AllocGlyphImpl::mixin_component(long index) const
{
    check_subscript(index, elements_.size());
    return elements_[static_cast<std::size_t>(index)].glyph();
}

Point AllocGlyphImpl::mixin_position(long index) const
{
    check_subscript(index, elements_.size());
    return elements_[static_cast<std::size_t>(index)].position();
}

void AllocGlyphImpl::mixin_position(long index, Point const &p)
{
    check_subscript(index, elements_.size());
    elements_[static_cast<std::size_t>(index)].position(p);
}

}  // namespace Tavi
