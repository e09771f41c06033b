// Content MathML of a formula: the expression tree as applications of operators to operands. A
// template's name is its content MathML operator unless the setup file gives a pattern (the setup
// attribute cmml, see docs/setup-export.md); a name that content MathML does not know becomes a
// csymbol.
#pragma once

#include <string>

namespace Tavi {

class MathNode;
class MathRootNode;

// The whole formula as one <math> element of the MathML namespace holding content markup, UTF-8.
std::string write_content_mathml(MathRootNode &root);
// A node and everything below it, wrapped in its own <math> element; an empty one for null.
std::string write_content_mathml(MathNode *node);

}  // namespace Tavi
