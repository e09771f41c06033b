// MathNumberNode: the category of a number follows from its digits.
#include "tavi/math/mathnumbernode.h"

#include <ostream>

#include "tavi/interchange/contentwriter.h"

#include <climits>

namespace Tavi {

MathNumberNode::MathNumberNode(MathTemplate *templ) : MathAtomNode(templ) {}

Glyph *MathNumberNode::clone(bool) const { return new MathNumberNode(*this); }

long MathNumberNode::cat_type() const
{
    MathString const &t = text();
    if (t.empty())
        return cat_decimal;
    long value = 0;
    for (wchar c : t.chars()) {
        if (c < u'0' || c > u'9')
            return cat_decimal;
        long const digit = c - u'0';
        if (value > (LONG_MAX - digit) / 10)
            return cat_decimal;
        value = value * 10 + digit;
    }
    return cat_whole;
}

std::ostream &MathNumberNode::put_xml(std::ostream &out)
{
    return put_token_element(out, "num", *this, true);
}

}  // namespace Tavi
