// LayoutNumberNode: copying.
#include "tavi/math/layout/layoutnumbernode.h"

namespace Tavi {

LayoutNumberNode::~LayoutNumberNode() = default;

Glyph *LayoutNumberNode::clone(bool) const { return new LayoutNumberNode(*this); }

}  // namespace Tavi
