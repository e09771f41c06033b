// Placement: a list of glyphs at explicit positions, in the placement's own coordinates. Each
// child is measured afresh at every draw and painted at its stored position; a new child stands
// at (0, 0) until it is given another.
#pragma once

#include <vector>

#include "tavi/geometry/point.h"
#include "tavi/glyph/polyglyph.h"

namespace Tavi {

class Placement : public PolyGlyph<Glyph>
{
public:
    explicit Placement(long capacity = 0);
    ~Placement() override;

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    AllocationTree *allocate(long index, GlyphContext &context, AllocationTree const &allocation) override;
    // Marks the placement allocated and gives back a copy of the allocation, as Glyph does.
    AllocationTree *allocate(GlyphContext &context, AllocationTree const &allocation) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;
    bool is_allocated() override;
    void invalidate_allocation() override;

    // These keep the positions aligned with the children. A new child, and a child put in by
    // replace, stands at (0, 0); replacing a child by itself keeps its position.
    void append(Glyph *glyph) override;
    void prepend(Glyph *glyph) override;
    void insert(long index, Glyph *glyph) override;
    void replace(long index, Glyph *glyph) override;
    void remove(long index) override;

    virtual void position(long index, Point p);
    Point position(long index) const;

protected:
    void modified() override;

private:
    std::vector<Point> positions_;
    bool allocated_ = false;
};

}  // namespace Tavi
