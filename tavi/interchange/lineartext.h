// Linear text: a formula written out on one line of plain Unicode text, such as
// "(-b ± √(b^2 - 4ac))/(2a)", for programs that know nothing of the math content format. The clipboard
// offers it as plain text for nodes that have no text form of their own. It is for reading by people
// and other programs; nothing reads it back.
#pragma once

#include "tavi/kxt/wchar.h"

namespace Tavi {

class MathNode;
class MathString;

// The node and everything below it; empty for null. Each kind of node is written by its template's
// content name, with parentheses only where the reading would otherwise change; a kind that has no
// pattern of its own is written as a call, "name(child, child)".
wstring linear_text(MathNode *node);

// An atom's characters in Unicode, as the linear text writes them: the symbol, extension and
// open-face classes mapped to their Unicode characters, the entity form "&name;" where there is none.
wstring unicode_text(MathString const &text);

}  // namespace Tavi
