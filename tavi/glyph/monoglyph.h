// MonoGlyph: a glyph that wraps one child, its body, and passes every call about the content to
// it. Without a body it behaves as a plain Glyph. Subclasses override the calls they decorate.
#pragma once

#include "tavi/glyph/glyph.h"

namespace Tavi {

class MonoGlyph : public Glyph
{
public:
    // The body may be null here; a body given is referenced and gets this glyph as its parent.
    explicit MonoGlyph(Glyph *body = nullptr);
    // A copy shares the body: it adds a reference and leaves the body's parent alone.
    MonoGlyph(MonoGlyph const &other);
    MonoGlyph &operator=(MonoGlyph const &) = delete;
    // Clears the body's parent, then drops it.
    ~MonoGlyph() override;

    void margins(GlyphContext &context, long &left, long &top, long &right, long &bottom) override;
    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    AllocationTree *allocate(long index, GlyphContext &context, AllocationTree const &allocation) override;
    AllocationTree *allocate(GlyphContext &context, AllocationTree const &allocation) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;
    void print(GlyphContext &context, AllocationTree const &allocation) override;
    void undraw() override;
    bool is_allocated() override;
    void invalidate_allocation() override;
    void append(Glyph *glyph) override;
    void prepend(Glyph *glyph) override;
    void insert(long index, Glyph *glyph) override;
    void replace(long index, Glyph *glyph) override;
    void remove(long index) override;
    long count() override;
    Glyph *component(long index) override;
    void change(long index) override;

    virtual Glyph *body() const;
    // Takes a reference on the new body first, then undraws, unparents and drops the old one.
    // Giving the body already held does nothing. The new body must not be null.
    virtual void body(Glyph *glyph);

private:
    Glyph *body_;
};

}  // namespace Tavi
