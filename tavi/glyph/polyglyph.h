// PolyGlyph<T>: a glyph of base T with an ordered list of children, each held with one reference.
// The list itself lives in the mixin PolyGlyphImpl; ChildListGlyph joins it to T.
#pragma once

#include <vector>

#include "tavi/glyph/childlistglyph.h"
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
class PolyGlyph : public ChildListGlyph<T, PolyGlyphImpl>
{
public:
    using ChildListGlyph<T, PolyGlyphImpl>::ChildListGlyph;
    PolyGlyph() = default;
    // The copy shares the children of the original (see PolyGlyphImpl).
    PolyGlyph(PolyGlyph const &other) = default;
};

}  // namespace Tavi
