// MathStringNode: an atom of the string category.
#include "tavi/math/mathstringnode.h"

namespace Tavi {

MathStringNode::MathStringNode(MathTemplate *templ) : MathAtomNode(templ) {}

Glyph *MathStringNode::clone(bool) const { return new MathStringNode(*this); }

long MathStringNode::cat_type() const { return 10; }

}  // namespace Tavi
