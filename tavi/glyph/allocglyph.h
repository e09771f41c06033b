// AllocGlyph<T>: a glyph of base T whose children each come with a Point, the position the node
// gives the child. The list lives in the mixin AllocGlyphImpl as elements that hold their glyph
// with one reference; ChildListGlyph joins it to T.
#pragma once

#include <vector>

#include "tavi/geometry/point.h"
#include "tavi/glyph/childlistglyph.h"
#include "tavi/glyph/glyph.h"

namespace Tavi {

class AllocGlyphImpl
{
public:
    // One child and its position, initially (0, 0). A copy adds a reference; destruction clears
    // the child's parent and drops the reference. A move hands the reference over.
    class Element
    {
    public:
        explicit Element(Glyph *glyph);
        Element(Element const &other);
        Element(Element &&other) noexcept;
        Element &operator=(Element const &other);
        Element &operator=(Element &&other) noexcept;
        ~Element();

        Glyph *glyph() const { return glyph_; }
        Point const &position() const { return position_; }
        void position(Point const &p) { position_ = p; }

        // Gives up the glyph without touching it: the caller takes over its reference.
        Glyph *release();
        // Takes over a reference the caller already holds, on an element left empty by release;
        // the position starts again at (0, 0).
        void adopt(Glyph *glyph);
        // Clears the parent of a glyph and drops one reference to it.
        static void drop(Glyph *glyph);

    private:

        Glyph *glyph_;
        Point position_;
    };

    AllocGlyphImpl &operator=(AllocGlyphImpl const &) = delete;

protected:
    explicit AllocGlyphImpl(long capacity);
    // A copy shares the children, each element adding a reference; positions are copied.
    AllocGlyphImpl(AllocGlyphImpl const &other) = default;
    // Clears the parent of every child and drops the references in index order.
    ~AllocGlyphImpl();

    void mixin_append(Glyph *glyph);
    void mixin_prepend(Glyph *glyph);
    // The child ends up in front of the entry that had this index; size() appends.
    void mixin_insert(long index, Glyph *glyph);
    // Does nothing when the entry already holds the glyph; otherwise the position becomes (0, 0).
    void mixin_replace(long index, Glyph *glyph);
    void mixin_remove(long index);
    void mixin_undraw();

    long mixin_count() const { return static_cast<long>(elements_.size()); }
    Glyph *mixin_component(long index) const;
    Point mixin_position(long index) const;
    void mixin_position(long index, Point const &p);

private:
    std::vector<Element> elements_;
};

template <class T>
class AllocGlyph : public ChildListGlyph<T, AllocGlyphImpl>
{
public:
    using ChildListGlyph<T, AllocGlyphImpl>::ChildListGlyph;
    AllocGlyph() = default;
    // The copy shares the children of the original (see AllocGlyphImpl).
    AllocGlyph(AllocGlyph const &other) = default;

    Point position(long index) const { return this->mixin_position(index); }
    void position(long index, Point p) { this->mixin_position(index, p); }
};

}  // namespace Tavi
