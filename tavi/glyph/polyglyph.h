// PolyGlyph<T>: a glyph of base T with an ordered list of children, each held with one reference.
// The list itself lives in the mixin PolyGlyphImpl; the template joins it to T, sets the parent
// of each child it takes and calls modified after every change of the list.
#pragma once

#include <utility>
#include <vector>

#include "tavi/glyph/glyph.h"

namespace Tavi {

class PolyGlyphImpl
{
public:
    PolyGlyphImpl &operator=(PolyGlyphImpl const &) = delete;

protected:
    explicit PolyGlyphImpl(long capacity);
    // A copy shares the children: it adds a reference to each and leaves their parent alone.
    PolyGlyphImpl(PolyGlyphImpl const &other);
    // Clears the parent of every child and drops the references in index order.
    ~PolyGlyphImpl();

    void mixin_append(Glyph *glyph);
    void mixin_prepend(Glyph *glyph);
    // The child ends up in front of the entry that had this index; size() appends.
    void mixin_insert(long index, Glyph *glyph);
    // Does nothing when the entry already holds the glyph.
    void mixin_replace(long index, Glyph *glyph);
    void mixin_remove(long index);
    void mixin_undraw();

    long mixin_count() const { return static_cast<long>(glyphs_.size()); }
    Glyph *mixin_component(long index) const;

private:
    std::vector<Glyph *> glyphs_;
};

template <class T>
class PolyGlyph : public T, public PolyGlyphImpl
{
public:
    PolyGlyph() : T(), PolyGlyphImpl(0) {}
    // Reserves room for capacity children; any further arguments go to the constructor of T.
    template <class... Args>
    explicit PolyGlyph(long capacity, Args &&...args) : T(std::forward<Args>(args)...), PolyGlyphImpl(capacity)
    {
    }
    // The copy shares the children of the original (see PolyGlyphImpl).
    PolyGlyph(PolyGlyph const &other) : T(other), PolyGlyphImpl(other) {}
    PolyGlyph &operator=(PolyGlyph const &) = delete;

    void undraw() override { mixin_undraw(); }

    void append(Glyph *glyph) override
    {
        mixin_append(glyph);
        glyph->parent(this);
        modified();
    }
    void prepend(Glyph *glyph) override
    {
        mixin_prepend(glyph);
        glyph->parent(this);
        modified();
    }
    void insert(long index, Glyph *glyph) override
    {
        mixin_insert(index, glyph);
        glyph->parent(this);
        modified();
    }
    void replace(long index, Glyph *glyph) override
    {
        mixin_replace(index, glyph);
        glyph->parent(this);
        modified();
    }
    void remove(long index) override
    {
        mixin_remove(index);
        modified();
    }
    long count() override { return mixin_count(); }
    Glyph *component(long index) override { return mixin_component(index); }
    void change(long) override { modified(); }

protected:
    // Called after every change of the child list; nothing to do here.
    virtual void modified() {}
};

}  // namespace Tavi
