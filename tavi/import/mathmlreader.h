// MathML formulas, presentation and content markup, read into the import tree: presentation markup
// goes through the formula parser as LaTeX does, content markup maps onto the templates of the same
// names directly.
#pragma once

#include <string>

#include "tavi/import/importnode.h"

namespace Tavi {

class TemplateTable;

// The formula of a MathML document (a <math> element, with or without the MathML namespace).
// Raises ImportError with the line and column of the element at fault.
ImportNodePtr read_mathml(std::string const &text, TemplateTable &table);

}  // namespace Tavi
