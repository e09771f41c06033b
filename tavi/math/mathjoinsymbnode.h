// MathJoinSymbNode: identifier-like parts set side by side as one symbol, such as a name made of an
// accented letter and a subscripted one. It stands for an identifier as a whole.
#pragma once

#include "tavi/math/mathexprnode.h"

namespace Tavi {

class MathJoinSymbNode : public MathExprNode
{
public:
    explicit MathJoinSymbNode(MathTemplate *templ);
    MathJoinSymbNode(MathJoinSymbNode const &other) = default;

    Glyph *clone(bool deep) const override;
    // Writes the node in the content format: its element, attributes and children.
    std::ostream &put_xml(std::ostream &out) override;
    long cat_type() const override;
    unsigned long cat_childs() const override;
    // Every place takes an identifier, an accented identifier, a placeholder or a script node.
    bool may_replace(long index, MathNode *node) override;
    // The parts' texts one after the other.
    Kxt::FixedString cat_text() override;

private:
    MathJoinSymbNode(MathJoinSymbNode const &other, WithoutChildren without);
};

}  // namespace Tavi
