// LaTeX formulas (the math mode of everyday papers, with amsmath's matrices and cases) read into
// the pieces of tokens.h; the formula parser makes the expression out of them.
#pragma once

#include <string>

#include "tavi/import/tokens.h"

namespace Tavi {

// The tokens of a formula in math mode, without $ or \[ \] around it. Raises ImportError for an
// unknown command or environment, unbalanced braces and environments, and a missing argument, with
// the column of the culprit.
TokenList read_latex_tokens(std::string const &text);

}  // namespace Tavi
