// LayoutStringNode: the node's text, always quoted.
#include "tavi/math/layout/layoutstringnode.h"

namespace Tavi {

LayoutStringNode::~LayoutStringNode() = default;

Glyph *LayoutStringNode::clone(bool) const { return new LayoutStringNode(*this); }

BoxTree *LayoutStringNode::request(GlyphContext &context, BoxTree const &constraint)
{
    return LayoutAtom::request(context, constraint, true);
}

void LayoutStringNode::draw(GlyphContext &context, AllocationTree const &allocation)
{
    LayoutAtom::draw(context, allocation, true);
}

}  // namespace Tavi
