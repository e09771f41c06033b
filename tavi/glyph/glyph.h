// Glyph: the reference-counted base of everything that is measured, placed and drawn. Drawing is a
// conversation in three steps, always in this order: request measures (limits in, sizes out as a
// BoxTree), allocate places (an AllocationTree, a point plus a box tree), draw paints at an
// allocation. A container holds each child with one reference; the child's parent is a plain back
// pointer that owns nothing.
#pragma once

#include <iosfwd>

#include "tavi/kxt/resource.h"

namespace Tavi {

class AllocationTree;
class BoxTree;
class GlyphContext;
class GlyphScene;

class Glyph : public Kxt::RefCounted<Kxt::IResource>
{
public:
    // A new glyph has a count of 0 and no parent.
    Glyph() = default;
    // A copy is a new object in no container: its count starts at 0 and its parent is null.
    Glyph(Glyph const &other);
    // Assignment keeps the target's count and parent.
    Glyph &operator=(Glyph const &other);
    ~Glyph() override;

    // Null in the base: a glyph that cannot be cloned says so.
    virtual Glyph *clone(bool deep) const;
    // Space a glyph wants kept free around it; zero in the base.
    virtual void margins(GlyphContext &context, long &left, long &top, long &right, long &bottom);
    // A new tree owned by the caller, or null.
    virtual BoxTree *request(GlyphContext &context, BoxTree const &constraint);
    // The allocation of one component; a new object owned by the caller, or null.
    virtual AllocationTree *allocate(long index, GlyphContext &context, AllocationTree const &allocation);
    // The allocation of the whole; the base gives back a copy of the argument.
    virtual AllocationTree *allocate(GlyphContext &context, AllocationTree const &allocation);
    virtual void draw(GlyphContext &context, AllocationTree const &allocation);
    virtual void print(GlyphContext &context, AllocationTree const &allocation);
    // Tells the glyph it is leaving the screen; the base tells every component.
    virtual void undraw();
    virtual bool is_allocated();
    virtual void invalidate_allocation();
    virtual void append(Glyph *glyph);
    virtual void prepend(Glyph *glyph);
    virtual void insert(long index, Glyph *glyph);
    virtual void replace(long index, Glyph *glyph);
    virtual void remove(long index);
    virtual long count();
    virtual Glyph *component(long index);
    virtual void change(long index);
    // The scene that shows this glyph: asked of the parent, so only a root needs to know it.
    virtual GlyphScene *scene();
    virtual void deselect();
    virtual std::ostream &put_xml(std::ostream &out);
    virtual bool read_only() const;

    // Neither adds a reference nor tells the old parent.
    Glyph *parent() const { return parent_; }
    void parent(Glyph *parent) { parent_ = parent; }

private:
    Glyph *parent_ = nullptr;
};

}  // namespace Tavi
