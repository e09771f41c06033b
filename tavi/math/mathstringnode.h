// MathStringNode: a quoted string of plain text in a formula; every character typed into it is text.
#pragma once

#include "tavi/math/mathatomnode.h"

namespace Tavi {

class MathStringNode : public MathAtomNode
{
public:
    explicit MathStringNode(MathTemplate *templ);
    MathStringNode(MathStringNode const &other) = default;

    Glyph *clone(bool deep) const override;
    // Writes the node in the content format: its element, attributes and children.
    std::ostream &put_xml(std::ostream &out) override;
    long cat_type() const override;
};

}  // namespace Tavi
