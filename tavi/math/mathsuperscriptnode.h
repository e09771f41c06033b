// MathSuperscriptNode: an identifier with a superscript, as x^*.
#pragma once

#include "tavi/math/mathscriptnode.h"

namespace Tavi {

class MathSuperscriptNode : public MathScriptNode
{
public:
    explicit MathSuperscriptNode(MathTemplate *templ);
    MathSuperscriptNode(MathSuperscriptNode const &other) = default;

    Glyph *clone(bool deep) const override;
    // Writes the node in the content format: its element, attributes and children.
    std::ostream &put_xml(std::ostream &out) override;
    // base^script, as "x^2".
    Kxt::FixedString cat_text() override;

private:
    MathSuperscriptNode(MathSuperscriptNode const &other, WithoutChildren without);
};

}  // namespace Tavi
