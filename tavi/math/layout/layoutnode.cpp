// LayoutNode: the text of the node at hand.
#include "tavi/math/layout/layoutnode.h"

#include "tavi/math/mathinfo.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathstring.h"

namespace Tavi {

LayoutNode::~LayoutNode() = default;

Glyph *LayoutNode::clone(bool) const { return new LayoutNode(*this); }

MathString const &LayoutNode::text(MathInfo const &info)
{
    static MathString const empty;
    MathNode *node = info.math_node();
    return node != nullptr ? node->text() : empty;
}

}  // namespace Tavi
