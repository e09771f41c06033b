// LaTeX (with amsmath) of a formula, for pasting into a document's math mode: each template is
// written by its LaTeX pattern from the setup file (the setup attribute latex, such as
// "\frac{#1}{#2}", see docs/setup-export.md), a template without one as \operatorname{name} applied
// to its operands, and parentheses go where the screen shows them.
#pragma once

#include <string>

namespace Tavi {

class MathNode;
class MathRootNode;

// The formula's LaTeX in UTF-8, without math delimiters ($ or \[ \]).
std::string write_latex(MathRootNode &root);
// A node and everything below it; empty for null.
std::string write_latex(MathNode *node);

}  // namespace Tavi
