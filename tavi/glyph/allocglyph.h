// AllocGlyph<T>: a glyph of base T whose children each come with a Point, the position the node
// gives the child. The list lives in the mixin AllocGlyphImpl as elements that hold their glyph
// with one reference; the template joins it to T, sets the parent of each child it takes and calls
// modified after every change of the list.
#pragma once

#include <utility>
#include <vector>

#include "tavi/geometry/point.h"
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
class AllocGlyph : public T, public AllocGlyphImpl
{
public:
    AllocGlyph() : T(), AllocGlyphImpl(0) {}
    // Reserves room for capacity children; any further arguments go to the constructor of T.
    template <class... Args>
    explicit AllocGlyph(long capacity, Args &&...args) : T(std::forward<Args>(args)...), AllocGlyphImpl(capacity)
    {
    }
    // The copy shares the children of the original (see AllocGlyphImpl).
    AllocGlyph(AllocGlyph const &other) : T(other), AllocGlyphImpl(other) {}
    AllocGlyph &operator=(AllocGlyph const &) = delete;

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

    Point position(long index) const { return mixin_position(index); }
    void position(long index, Point p) { mixin_position(index, p); }

protected:
    // Called after every change of the child list; nothing to do here.
    virtual void modified() {}
};

}  // namespace Tavi
