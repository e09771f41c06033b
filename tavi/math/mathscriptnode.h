// MathScriptNode: the common base of an identifier with a subscript, a superscript, or both. Such a
// node stands for an identifier (a decorated one), so only identifier-like nodes may fill its places:
// the base is an identifier, an accented identifier or a placeholder, and a script may also be a
// script itself, so that scripts nest to the right.
#pragma once

#include "tavi/math/mathexprnode.h"

namespace Tavi {

class MathScriptNode : public MathExprNode
{
public:
    explicit MathScriptNode(MathTemplate *templ);
    MathScriptNode(MathScriptNode const &other) = default;

    long cat_type() const override;
    unsigned long cat_childs() const override;
    // Index 0 takes a base, index 1 a script; anything above 1 is refused.
    bool may_replace(long index, MathNode *node) override;

    // The nodes that may stand where an identifier is expected: identifiers, accented identifiers and
    // placeholders, and with `scripts_too` also script nodes.
    static bool is_identifier_like(MathNode *node, bool scripts_too);

protected:
    MathScriptNode(MathScriptNode const &other, WithoutChildren without);
};

}  // namespace Tavi
