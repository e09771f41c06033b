// Reading what tavi-render typesets: the setup file into a template table, and a formula in the
// content format into a root node, with the reader's own messages passed on to the standard error
// stream whole and a message of our own for XML that is not well-formed.
#pragma once

#include <string>

#include "tavi/import/importer.h"

namespace Tavi {
class MathRootNode;
class TemplateTable;
}

namespace TaviRender {

// The whole file, or standard input for "-". False, with the reason, when it cannot be read.
bool read_input(std::string const &path, std::string &data, std::string &error);

// Reads the setup file into the table. False, with the reason, when the file cannot be read or the
// table refuses it.
bool load_setup(Tavi::TemplateTable &table, std::string const &path, std::string &error);

// The formula of the document, a new root with a reference count of 0; null, with the reason, when
// the document is not well-formed XML, holds no formula, or is refused by the reader (whose own
// message has gone to the standard error stream by then). `source` names the document in messages.
// With `messages`, the reader's own messages are gathered there, one a line, instead of going to the
// standard error stream: a window shows them, and a formula that was read may still have some.
// A formula in LaTeX or MathML is imported first: in the language `from` when it is given, else in
// the one its text shows; the importer's reason names the source.
Tavi::MathRootNode *read_formula(Tavi::TemplateTable &table, std::string const &text, std::string const &source,
                                 std::string &error, std::string *messages = nullptr,
                                 Tavi::FormulaLanguage const *from = nullptr);

}  // namespace TaviRender
