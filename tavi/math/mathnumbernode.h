// MathNumberNode: a number. It holds the user's decimal separator, and reports to the host whether it
// is a whole number or a decimal one.
#pragma once

#include "tavi/math/mathatomnode.h"

namespace Tavi {

class MathNumberNode : public MathAtomNode
{
public:
    // The categories of the host's value system that a number takes.
    static constexpr long cat_whole = 3;    // a whole number that fits a long
    static constexpr long cat_decimal = 2;  // anything else: a decimal point, an exponent, a huge value

    explicit MathNumberNode(MathTemplate *templ);
    MathNumberNode(MathNumberNode const &other) = default;

    Glyph *clone(bool deep) const override;
    // Writes the node in the content format: its element, attributes and children.
    std::ostream &put_xml(std::ostream &out) override;
    // cat_whole when the text is one or more decimal digits whose value fits a long; cat_decimal
    // otherwise.
    long cat_type() const override;
};

}  // namespace Tavi
