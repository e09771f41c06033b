// Spoken text: a formula read out in English words, as a person reads it aloud, for screen readers
// and other speech output: "x equals the fraction with numerator minus b plus or minus the square
// root of b squared minus 4 a c, and denominator 2 a". Nothing reads it back.
#pragma once

#include "tavi/kxt/wchar.h"

namespace Tavi {

class MathNode;

// The node and everything below it, in words; empty for null. Each kind of node is read by its
// template's content name from a table of phrases; a kind the table does not know is read as a
// function of its operands, "name of a, b". Parentheses that the typeset formula shows are read as
// "open paren" and "close paren"; where the end of a root, a fraction, an exponent or the like would
// otherwise be unclear, the reading says so ("end root") or pauses with a comma.
wstring spoken_text(MathNode *node);

// Whether the phrase table has a reading of its own for this content name (plain or grid kind).
bool has_spoken_phrase(wstring const &name);

}  // namespace Tavi
