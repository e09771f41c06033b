// The pieces that the put_xml operations of the node classes share when they write the math
// edit content format.
#pragma once

#include <iosfwd>

namespace Tavi {

class MathNode;
class MathString;

// ` ipop="1"` when the node is the insertion point's operand; nothing otherwise.
void put_ipop(std::ostream &out, MathNode const &node);

// Every child's put_xml, in index order.
void put_children(std::ostream &out, MathNode &node);

// `<tag ipop>children</tag>`: the whole element of a node whose only attribute is ipop.
std::ostream &put_plain_element(std::ostream &out, char const *tag, MathNode &node);

// The text of a token, run by run. Text runs go out escaped (a number's first decimal separator
// turned into a point when the user's separator isn't one); every character of another run is
// written as an empty `chr` element when its font's map names it, as itself when the map gives a
// plain character, and not at all when the map knows it not.
void put_token_text(std::ostream &out, MathString const &text, bool number);

// `<tag ipop>text</tag>` for ident, num and str.
std::ostream &put_token_element(std::ostream &out, char const *tag, MathNode &node, bool number);

}  // namespace Tavi
