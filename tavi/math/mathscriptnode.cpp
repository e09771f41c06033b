// MathScriptNode: which nodes may fill the places of a decorated identifier.
#include "tavi/math/mathscriptnode.h"

#include "tavi/math/mathaccentnode.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathidentnode.h"

namespace Tavi {

namespace {

// What each place of a script node takes.
struct Place
{
    long index;
    bool scripts_too;
};

Place const script_places[] = {
    {0, false},  // the base
    {1, true},   // the script
};

}  // namespace

MathScriptNode::MathScriptNode(MathTemplate *templ) : MathExprNode(templ) {}

MathScriptNode::MathScriptNode(MathScriptNode const &other, WithoutChildren without) : MathExprNode(other, without) {}

long MathScriptNode::cat_type() const { return 20; }

unsigned long MathScriptNode::cat_childs() const { return 0; }

bool MathScriptNode::may_replace(long index, MathNode *node)
{
    for (Place const &p : script_places)
        if (p.index == index)
            return is_identifier_like(node, p.scripts_too);
    return false;
}

bool MathScriptNode::is_identifier_like(MathNode *node, bool scripts_too)
{
    return dynamic_cast<MathIdentNode *>(node) != nullptr || dynamic_cast<MathAccentNode *>(node) != nullptr ||
           dynamic_cast<MathDummyNode *>(node) != nullptr ||
           (scripts_too && dynamic_cast<MathScriptNode *>(node) != nullptr);
}

}  // namespace Tavi
