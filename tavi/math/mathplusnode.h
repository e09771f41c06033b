// MathPlusNode: a sum, whose every operand carries a sign. A difference is a sum with a minus on its
// second operand, a negation a sum of one operand signed minus; there are no nodes of their own.
#pragma once

#include "tavi/math/mathexprnode.h"

namespace Tavi {

class MathPlusNode : public MathExprNode
{
public:
    // No operands, no signs.
    explicit MathPlusNode(MathTemplate *templ);
    MathPlusNode(MathPlusNode const &other) = default;

    Glyph *clone(bool deep) const override;
    // Writes the node in the content format: its element, attributes and children.
    std::ostream &put_xml(std::ostream &out) override;

    // The child list keeps the signs in step: a new operand is signed plus, and a removed one takes
    // its sign with it.
    void append(Glyph *glyph) override;
    void prepend(Glyph *glyph) override;
    void insert(long index, Glyph *glyph) override;
    void remove(long index) override;

    // The signs, one "+" or "-" per operand; never null.
    wchar const *signs() const { return signs_.c_str(); }
    // True when the operand at `index` is signed plus; false beyond the last operand.
    bool plus_sign(std::size_t index) const;
    // Swaps the sign of one operand (nothing beyond the last), or of all.
    void toggle_sign(std::size_t index);
    void toggle_all_signs();
    // A negation: exactly one operand, signed minus.
    bool is_negate() const;
    // A difference: exactly two operands, signed plus and minus.
    bool is_minus() const;

    using MathNode::attribute_list;
    // "Signs": the value's characters go to the operands by position, up to the number of operands; a
    // character other than "+" or "-" leaves that operand's sign and still takes its position. Other
    // keys are ignored.
    void attribute(wchar const *key, wchar const *value) override;
    void attribute(char const *key, char const *value);
    // One entry: "Signs" with the signs.
    MathAttribList *attribute_list() override;

    // The base comparison, then the signs.
    bool is_equal(MathNode *other) override;

private:
    // For clone: the same template and flags, no operands and no signs.
    MathPlusNode(MathPlusNode const &other, WithoutChildren without);

    template <class Char>
    void take_signs(Char const *value);

    wstring signs_;
};

}  // namespace Tavi
