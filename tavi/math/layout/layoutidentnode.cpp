// LayoutIdentNode: copying, and the slant left alone.
#include "tavi/math/layout/layoutidentnode.h"

#include "tavi/math/mathnodecontext.h"

namespace Tavi {

LayoutIdentNode::~LayoutIdentNode() = default;

Glyph *LayoutIdentNode::clone(bool) const { return new LayoutIdentNode(*this); }

void LayoutIdentNode::set_italic_style(MathNodeContext &context, bool &saved) { saved = context.italic_fontstyle(); }

}  // namespace Tavi
