// The characters and operators the importers know by name: a LaTeX command, the Unicode character
// MathML writes for it, and what it becomes in the content format (a named character of an
// identifier, or an operator symbol of the formula parser).
#pragma once

#include <string>

namespace Tavi {

// A character that stands as an identifier of its own: Greek letters, infinity, the partial sign.
struct NamedSymbol
{
    char const *latex;  // without the backslash
    char32_t code;      // Unicode
    char const *name;   // the character name of the content format
};

// A symbol the formula parser knows, by its parser name (a LaTeX command without the backslash, or
// an ASCII character) and its Unicode character.
struct OperatorSymbol
{
    char const *name;
    char32_t code;
};

NamedSymbol const *named_symbol_by_latex(std::string const &command);
NamedSymbol const *named_symbol_by_code(char32_t code);
// By the character name or the LaTeX name (MathML entities are mostly one of the two).
NamedSymbol const *named_symbol_by_name(std::string const &name);
OperatorSymbol const *operator_by_latex(std::string const &command);
OperatorSymbol const *operator_by_code(char32_t code);

// Function names (\sin, \log, \max): the parser looks for a template of the same name and writes an
// application of the name where the setup has none.
bool is_function_name(std::string const &name);

// The capital letter of a double-struck character (ℝ, U+1D538 ...), or 0.
char double_struck_letter(char32_t code);

// What next_code_point gives for a broken sequence: no character at all.
constexpr char32_t invalid_code_point = 0x110000;

// The first character of a UTF-8 text at `i`, with `i` moved past it; a broken sequence gives
// invalid_code_point and moves by one byte.
char32_t next_code_point(std::string const &text, std::size_t &i);
void append_code_point(std::string &out, char32_t code);

}  // namespace Tavi
