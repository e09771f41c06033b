// MathSuperscriptNode: cloning and the text of an identifier with a superscript, as x^*.
#include "tavi/math/mathsuperscriptnode.h"

#include <ostream>

#include "tavi/interchange/contentwriter.h"

#include <memory>

namespace Tavi {

MathSuperscriptNode::MathSuperscriptNode(MathTemplate *templ) : MathScriptNode(templ) {}

MathSuperscriptNode::MathSuperscriptNode(MathSuperscriptNode const &other, WithoutChildren without) : MathScriptNode(other, without) {}

Glyph *MathSuperscriptNode::clone(bool deep) const
{
    if (!deep)
        return new MathSuperscriptNode(*this);
    std::unique_ptr<MathSuperscriptNode> copy(new MathSuperscriptNode(*this, WithoutChildren{}));
    copy->append_clones_of(*this);
    return copy.release();
}

Kxt::FixedString MathSuperscriptNode::cat_text() { return Kxt::FixedString(child_text(0) + u"^" + child_text(1)); }

std::ostream &MathSuperscriptNode::put_xml(std::ostream &out)
{
    return put_plain_element(out, "isup", *this);
}

}  // namespace Tavi
