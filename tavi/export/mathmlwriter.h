// Presentation MathML of a formula: a math element in the MathML namespace whose markup follows the
// layouts of the setup file (each template's layout expression is already written in presentation
// MathML terms), with parentheses where the screen shows them. A template may replace its layout's
// markup by a pattern of its own (the setup attribute mathml, see docs/setup-export.md).
#pragma once

#include <string>

namespace Tavi {

class MathNode;
class MathRootNode;

// The whole formula as a UTF-8 XML document fragment: one <math> element, no XML declaration.
std::string write_mathml(MathRootNode &root);
// A node and everything below it, wrapped in its own <math> element; an empty one for null.
std::string write_mathml(MathNode *node);

}  // namespace Tavi
