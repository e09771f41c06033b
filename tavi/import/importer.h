// Formulas written in other languages (LaTeX, presentation and content MathML) turned into the math
// edit content format, so that a pasted or loaded formula becomes an expression tree built from the
// setup file's templates and is as editable as one typed in.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace Tavi {

class TemplateTable;

enum class FormulaLanguage { content, latex, mathml };

// What a text is written in: the content format by its namespace (or, without it, by its element
// names), MathML by a <math> element or the MathML namespace, other markup the content format, and
// anything else LaTeX.
FormulaLanguage guess_language(std::string const &text);

// The name of a language as the command line and messages spell it ("content", "latex",
// "mathml"), and back; parse_language answers false for an unknown name.
char const *language_name(FormulaLanguage language);
bool parse_language(std::string const &name, FormulaLanguage &language);

// A formula that cannot be imported: what is wrong and where. `position` counts from 1: the column
// (character) in a LaTeX text, the line and column of the element in MathML (`line` 0 when the
// input has no lines to speak of).
class ImportError : public std::runtime_error {
public:
    ImportError(std::string const &message, std::size_t line, std::size_t column);
    std::size_t line() const { return line_; }
    std::size_t column() const { return column_; }

private:
    std::size_t line_;
    std::size_t column_;
};

// The formula `text`, written in `language`, as a document of the math edit content format (UTF-8).
// Templates are looked up in `table`; a construct the table has no template for, or that has no
// meaning in a formula, raises ImportError naming it and its position. Content format text is
// handed back unchanged.
std::string to_content(FormulaLanguage language, std::string const &text, TemplateTable &table);

}  // namespace Tavi
