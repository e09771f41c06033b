// ChildListGlyph<T, List>: the child-list operations of a glyph of base T whose children live in the
// mixin List (PolyGlyphImpl for plain children, AllocGlyphImpl for children with positions). The
// mixin keeps the list and the references; this template joins it to T, sets the parent of each child
// it takes and calls modified after every change of the list.
#pragma once

#include <utility>

#include "tavi/glyph/glyph.h"

namespace Tavi {

template <class T, class List>
class ChildListGlyph : public T, public List
{
public:
    ChildListGlyph() : T(), List(0) {}
    // Reserves room for capacity children; any further arguments go to the constructor of T.
    template <class... Args>
    explicit ChildListGlyph(long capacity, Args &&...args) : T(std::forward<Args>(args)...), List(capacity)
    {
    }
    // The copy shares the children of the original, as the mixin's copy does.
    ChildListGlyph(ChildListGlyph const &other) : T(other), List(other) {}
    ChildListGlyph &operator=(ChildListGlyph const &) = delete;

    void undraw() override { this->mixin_undraw(); }

    void append(Glyph *glyph) override
    {
        this->mixin_append(glyph);
        glyph->parent(this);
        modified();
    }
    void prepend(Glyph *glyph) override
    {
        this->mixin_prepend(glyph);
        glyph->parent(this);
        modified();
    }
    void insert(long index, Glyph *glyph) override
    {
        this->mixin_insert(index, glyph);
        glyph->parent(this);
        modified();
    }
    void replace(long index, Glyph *glyph) override
    {
        this->mixin_replace(index, glyph);
        glyph->parent(this);
        modified();
    }
    void remove(long index) override
    {
        this->mixin_remove(index);
        modified();
    }
    long count() override { return this->mixin_count(); }
    Glyph *component(long index) override { return this->mixin_component(index); }
    void change(long) override { modified(); }

protected:
    // Called after every change of the child list; nothing to do here.
    virtual void modified() {}
};

}  // namespace Tavi
