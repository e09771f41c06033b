// MathSubSupscriptNode: three places, cloning and the text.
#include "tavi/math/mathsubsupscriptnode.h"

#include <ostream>

#include "tavi/interchange/contentwriter.h"

#include <memory>

namespace Tavi {

namespace {

struct Place
{
    long index;
    bool scripts_too;
};

Place const subsup_places[] = {
    {0, false},  // the base
    {1, true},   // the subscript
    {2, true},   // the superscript
};

}  // namespace

MathSubSupscriptNode::MathSubSupscriptNode(MathTemplate *templ) : MathScriptNode(templ) {}

MathSubSupscriptNode::MathSubSupscriptNode(MathSubSupscriptNode const &other, WithoutChildren without)
    : MathScriptNode(other, without)
{
}

Glyph *MathSubSupscriptNode::clone(bool deep) const
{
    if (!deep)
        return new MathSubSupscriptNode(*this);
    std::unique_ptr<MathSubSupscriptNode> copy(new MathSubSupscriptNode(*this, WithoutChildren{}));
    copy->append_clones_of(*this);
    return copy.release();
}

bool MathSubSupscriptNode::may_replace(long index, MathNode *node)
{
    for (Place const &p : subsup_places)
        if (p.index == index)
            return is_identifier_like(node, p.scripts_too);
    return false;
}

Kxt::FixedString MathSubSupscriptNode::cat_text()
{
    return Kxt::FixedString(child_text(0) + u"_" + child_text(1) + u"^" + child_text(2));
}

std::ostream &MathSubSupscriptNode::put_xml(std::ostream &out)
{
    return put_plain_element(out, "isubsup", *this);
}

}  // namespace Tavi
