// LayoutStringNode: the text of a string node between quotation marks, which stay with the text
// when it is broken over lines.
#pragma once

#include "tavi/math/layout/layoutnode.h"

namespace Tavi {

class LayoutStringNode : public LayoutNode
{
public:
    LayoutStringNode() = default;
    LayoutStringNode(LayoutStringNode const &) = default;
    ~LayoutStringNode() override;

    Glyph *clone(bool deep) const override;

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;
    using LayoutAtom::draw;
    using LayoutAtom::request;
};

}  // namespace Tavi
