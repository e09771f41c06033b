// MathSubscriptNode: cloning and the text of an identifier with a subscript, as x_i.
#include "tavi/math/mathsubscriptnode.h"

#include <ostream>

#include "tavi/interchange/contentwriter.h"

#include <memory>

namespace Tavi {

MathSubscriptNode::MathSubscriptNode(MathTemplate *templ) : MathScriptNode(templ) {}

MathSubscriptNode::MathSubscriptNode(MathSubscriptNode const &other, WithoutChildren without) : MathScriptNode(other, without) {}

Glyph *MathSubscriptNode::clone(bool deep) const
{
    if (!deep)
        return new MathSubscriptNode(*this);
    std::unique_ptr<MathSubscriptNode> copy(new MathSubscriptNode(*this, WithoutChildren{}));
    copy->append_clones_of(*this);
    return copy.release();
}

Kxt::FixedString MathSubscriptNode::cat_text() { return Kxt::FixedString(child_text(0) + u"_" + child_text(1)); }

std::ostream &MathSubscriptNode::put_xml(std::ostream &out)
{
    return put_plain_element(out, "isub", *this);
}

}  // namespace Tavi
