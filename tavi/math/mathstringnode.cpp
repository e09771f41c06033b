// MathStringNode: an atom of the string category.
#include "tavi/math/mathstringnode.h"

#include <ostream>

#include "tavi/interchange/contentwriter.h"

namespace Tavi {

MathStringNode::MathStringNode(MathTemplate *templ) : MathAtomNode(templ) {}

Glyph *MathStringNode::clone(bool) const { return new MathStringNode(*this); }

long MathStringNode::cat_type() const { return 10; }

std::ostream &MathStringNode::put_xml(std::ostream &out)
{
    return put_token_element(out, "str", *this, false);
}

}  // namespace Tavi
