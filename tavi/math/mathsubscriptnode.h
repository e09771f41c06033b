// MathSubscriptNode: an identifier with a subscript, as x_i.
#pragma once

#include "tavi/math/mathscriptnode.h"

namespace Tavi {

class MathSubscriptNode : public MathScriptNode
{
public:
    explicit MathSubscriptNode(MathTemplate *templ);
    MathSubscriptNode(MathSubscriptNode const &other) = default;

    Glyph *clone(bool deep) const override;
    // Writes the node in the content format: its element, attributes and children.
    std::ostream &put_xml(std::ostream &out) override;
    // base_script, as "x_i": the form in which an identifier with an underscore reads back as a
    // subscript.
    Kxt::FixedString cat_text() override;

private:
    MathSubscriptNode(MathSubscriptNode const &other, WithoutChildren without);
};

}  // namespace Tavi
