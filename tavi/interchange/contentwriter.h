// The pieces that the put_xml operations of the node classes share when they write the math
// edit content format.
#pragma once

#include <iosfwd>

#include "tavi/kxt/wchar.h"

namespace Tavi {

class MathNode;
class MathString;

// ` ipop="1"` when the node is the insertion point's operand; nothing otherwise.
void put_ipop(std::ostream &out, MathNode const &node);

// Every child's put_xml, in index order.
void put_children(std::ostream &out, MathNode &node);

// `<tag ipop>children</tag>`: the whole element of a node whose only attribute is ipop.
std::ostream &put_plain_element(std::ostream &out, char const *tag, MathNode &node);

// The text of a token, run by run. Text runs go out escaped, the first `separator` of each turned
// into a point (a number's decimal separator; a point or 0 changes nothing); every character of
// another run is written as an empty `chr` element when its font's map names it, as itself when
// the map gives a plain character, and not at all when the map knows it not.
void put_token_text(std::ostream &out, MathString const &text, wchar separator);

// `<tag ipop>text</tag>` for ident, num and str; a number's text has the user's decimal separator.
std::ostream &put_token_element(std::ostream &out, char const *tag, MathNode &node, bool number);

}  // namespace Tavi
