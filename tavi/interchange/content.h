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

// The same read as a host reports it to a user: null, with a reason in `error` that begins with
// `source` (the document's name), when the text is not well-formed ("source:line:column: what
// expat says"), holds no formula, or is refused by the reader, which raises nothing here. The
// reader's own messages are gathered in `messages`, each ending in a line end, when it is given,
// and go to std::cerr otherwise; a formula that was read may have some too (a name the format
// doesn't know is left out, an unknown template stood in for).
MathRootNode *read_math_document(TemplateTable &table, std::string const &text, std::string const &source,
                                 std::string &error, std::string *messages = nullptr);

// The formula as put_xml writes it, UTF-8.
std::string write_math_content(MathRootNode &root);

}  // namespace Tavi
