// MathJoinSymbNode: its parts, cloning and the text.
#include "tavi/math/mathjoinsymbnode.h"

#include <ostream>

#include "tavi/interchange/contentwriter.h"

#include <memory>

#include "tavi/math/mathscriptnode.h"

namespace Tavi {

MathJoinSymbNode::MathJoinSymbNode(MathTemplate *templ) : MathExprNode(templ) {}

MathJoinSymbNode::MathJoinSymbNode(MathJoinSymbNode const &other, WithoutChildren without)
    : MathExprNode(other, without)
{
}

Glyph *MathJoinSymbNode::clone(bool deep) const
{
    if (!deep)
        return new MathJoinSymbNode(*this);
    std::unique_ptr<MathJoinSymbNode> copy(new MathJoinSymbNode(*this, WithoutChildren{}));
    copy->append_clones_of(*this);
    return copy.release();
}

long MathJoinSymbNode::cat_type() const { return 20; }

unsigned long MathJoinSymbNode::cat_childs() const { return 0; }

bool MathJoinSymbNode::may_replace(long index, MathNode *node)
{
    return index >= 0 && MathScriptNode::is_identifier_like(node, true);
}

Kxt::FixedString MathJoinSymbNode::cat_text()
{
    wstring text;
    for (long i = 0; i < count(); ++i)
        text += child_text(i);
    return Kxt::FixedString(text);
}

std::ostream &MathJoinSymbNode::put_xml(std::ostream &out)
{
    return put_plain_element(out, "irow", *this);
}

}  // namespace Tavi
