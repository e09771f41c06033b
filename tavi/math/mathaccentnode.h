// MathAccentNode: an identifier with an accent over, under or after it (a bar, a hat, a prime). Which
// accent it is follows from its template; the node holds the one accented operand.
#pragma once

#include "tavi/math/mathexprnode.h"

namespace Tavi {

class MathAccentNode : public MathExprNode
{
public:
    explicit MathAccentNode(MathTemplate *templ);
    MathAccentNode(MathAccentNode const &other) = default;

    Glyph *clone(bool deep) const override;
    // Writes the node in the content format: its element, attributes and children.
    std::ostream &put_xml(std::ostream &out) override;
    long cat_type() const override;
    unsigned long cat_childs() const override;
    // The one operand, at index 0, is an identifier, another accented identifier or a placeholder.
    bool may_replace(long index, MathNode *node) override;
    // The operand's text followed by the accent in entity form, as "x&OverBar;": the form in which an
    // identifier that ends in an accent character reads back as an accented one.
    Kxt::FixedString cat_text() override;

protected:
    // The accent in entity form. Templates don't tell their accent character yet, so it is made from
    // the template's name: "overbar_accent" gives "&overbar;".
    virtual wstring accent_text() const;

private:
    MathAccentNode(MathAccentNode const &other, WithoutChildren without);
};

}  // namespace Tavi
