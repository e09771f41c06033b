// MathSubSupscriptNode: an identifier with both a subscript and a superscript, as x_i^2.
#pragma once

#include "tavi/math/mathscriptnode.h"

namespace Tavi {

class MathSubSupscriptNode : public MathScriptNode
{
public:
    explicit MathSubSupscriptNode(MathTemplate *templ);
    MathSubSupscriptNode(MathSubSupscriptNode const &other) = default;

    Glyph *clone(bool deep) const override;
    // Writes the node in the content format: its element, attributes and children.
    std::ostream &put_xml(std::ostream &out) override;
    // Index 0 takes a base, 1 and 2 a script each; anything above 2 is refused.
    bool may_replace(long index, MathNode *node) override;
    // base_sub^sup, as "x_i^2".
    Kxt::FixedString cat_text() override;

private:
    MathSubSupscriptNode(MathSubSupscriptNode const &other, WithoutChildren without);
};

}  // namespace Tavi
