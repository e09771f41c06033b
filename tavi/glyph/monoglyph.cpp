// MonoGlyph: forwarding to the body, falling back to Glyph when there is none.
#include "tavi/glyph/monoglyph.h"

namespace Tavi {

MonoGlyph::MonoGlyph(Glyph *body) : body_(body)
{
    if (body_) {
        body_->ref();
        body_->parent(this);
    }
}

MonoGlyph::MonoGlyph(MonoGlyph const &other) : Glyph(other), body_(other.body_)
{
    if (body_)
        body_->ref();
}

MonoGlyph::~MonoGlyph()
{
    if (body_) {
        body_->parent(nullptr);
        body_->unref();
    }
}

void MonoGlyph::margins(GlyphContext &context, long &left, long &top, long &right, long &bottom)
{
    if (body_)
        body_->margins(context, left, top, right, bottom);
    else
        Glyph::margins(context, left, top, right, bottom);
}

BoxTree *MonoGlyph::request(GlyphContext &context, BoxTree const &constraint)
{
    return body_ ? body_->request(context, constraint) : Glyph::request(context, constraint);
}

AllocationTree *MonoGlyph::allocate(long index, GlyphContext &context, AllocationTree const &allocation)
{
    return body_ ? body_->allocate(index, context, allocation) : Glyph::allocate(index, context, allocation);
}

AllocationTree *MonoGlyph::allocate(GlyphContext &context, AllocationTree const &allocation)
{
    return body_ ? body_->allocate(context, allocation) : Glyph::allocate(context, allocation);
}

void MonoGlyph::draw(GlyphContext &context, AllocationTree const &allocation)
{
    if (body_)
        body_->draw(context, allocation);
    else
        Glyph::draw(context, allocation);
}

void MonoGlyph::print(GlyphContext &context, AllocationTree const &allocation)
{
    if (body_)
        body_->print(context, allocation);
    else
        Glyph::print(context, allocation);
}

void MonoGlyph::undraw()
{
    if (body_)
        body_->undraw();
    else
        Glyph::undraw();
}

bool MonoGlyph::is_allocated()
{
    return body_ ? body_->is_allocated() : Glyph::is_allocated();
}

void MonoGlyph::invalidate_allocation()
{
    if (body_)
        body_->invalidate_allocation();
    else
        Glyph::invalidate_allocation();
}

void MonoGlyph::append(Glyph *glyph)
{
    if (body_)
        body_->append(glyph);
    else
        Glyph::append(glyph);
}

void MonoGlyph::prepend(Glyph *glyph)
{
    if (body_)
        body_->prepend(glyph);
    else
        Glyph::prepend(glyph);
}

void MonoGlyph::insert(long index, Glyph *glyph)
{
    if (body_)
        body_->insert(index, glyph);
    else
        Glyph::insert(index, glyph);
}

void MonoGlyph::replace(long index, Glyph *glyph)
{
    if (body_)
        body_->replace(index, glyph);
    else
        Glyph::replace(index, glyph);
}

void MonoGlyph::remove(long index)
{
    if (body_)
        body_->remove(index);
    else
        Glyph::remove(index);
}

long MonoGlyph::count()
{
    return body_ ? body_->count() : Glyph::count();
}

Glyph *MonoGlyph::component(long index)
{
    return body_ ? body_->component(index) : Glyph::component(index);
}

void MonoGlyph::change(long index)
{
    if (body_)
        body_->change(index);
    else
        Glyph::change(index);
}

Glyph *MonoGlyph::body() const
{
    return body_;
}

void MonoGlyph::body(Glyph *glyph)
{
    if (glyph == body_)
        return;
    glyph->ref();
    Glyph *old = body_;
    if (old) {
        old->undraw();
        old->parent(nullptr);
    }
    // The new body is in place before the old one can die, so that nothing reached from the
    // dying glyph finds this one holding it.
    body_ = glyph;
    if (old)
        old->unref();
    glyph->parent(this);
}

}  // namespace Tavi
