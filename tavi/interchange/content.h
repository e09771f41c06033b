// Whole formulas to and from the math edit content format in one call, for callers that hold the
// complete text (clipboard data, a stored formula, a test).
#pragma once

#include <cstddef>
#include <string>

namespace Tavi {

class MathRootNode;
class TemplateTable;

// Parses one whole document with a MathEditContentHandler on `table` (namespace processing on).
//
// Answers a new MathRootNode with a reference count of 0 (take it with ref()), or null when the
// text is not well-formed XML or holds no node. Content that is well-formed but refused by the
// reader (an unknown character name, a chr outside a token, a missing built-in template, ...)
// raises BadMathEditContent after its message went to std::cerr; nothing built for it is left
// behind.
MathRootNode *read_math_content(TemplateTable &table, char const *data, std::size_t length);
MathRootNode *read_math_content(TemplateTable &table, std::string const &text);

// The formula as put_xml writes it, UTF-8.
std::string write_math_content(MathRootNode &root);

}  // namespace Tavi
