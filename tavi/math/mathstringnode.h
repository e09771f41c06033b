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
    long cat_type() const override;
};

}  // namespace Tavi
