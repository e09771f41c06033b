// The meaning of a formula read into tokens (from LaTeX or presentation MathML): operators by their
// precedence, applications, big operators with their limits, derivatives written as fractions,
// fences and tables, built into an import tree of the setup file's templates.
#pragma once

#include "tavi/import/importnode.h"
#include "tavi/import/tokens.h"

namespace Tavi {

class MathTemplate;
class TemplateTable;

// Raises ImportError naming the token and its position when the tokens make no formula, and when a
// template that the formula needs is not in `table`.
ImportNodePtr parse_formula(TokenList const &tokens, TemplateTable &table);

// Whether an expression of the template with `operands` children is one the content reader builds:
// a plain template of the setup file (not a table) with room for that many, a script or accent with
// its own count; not an atom, a sum or a table.
bool takes_operands(MathTemplate const &tmpl, std::size_t operands);

// Checks that every template the tree names is in `table` (ImportError otherwise).
void check_templates(ImportNode const &node, TemplateTable &table);

// " at column C", or " at line L, column C" for input with lines.
std::string where(SourcePos const &pos);

}  // namespace Tavi
