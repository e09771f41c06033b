// The tree an imported formula is built as before it is written out in the math edit content format:
// one node per element of that format, with the template names of the setup file, and the few
// facts the readers need while they build it (parentheses seen around a node, where it came from).
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace Tavi {

class TemplateTable;

// Where a piece of the input stands; `line` is 0 for input read as one line (LaTeX).
struct SourcePos
{
    std::size_t line = 0;
    std::size_t column = 0;
};

struct ImportNode;
using ImportNodePtr = std::unique_ptr<ImportNode>;

struct ImportNode
{
    // The elements of the content format that carry a node.
    enum class Kind { ident, num, str, plh, expr, plus, isub, isup, isubsup, irow, iacc, tab };
    // Parentheses written around the node: the readers decide later whether they only grouped or
    // stand for a "fenced" node of their own.
    enum class Parens { none, plain, sized };

    Kind kind = Kind::plh;
    std::string name;    // the template (expr, tab) or the accent's name (iacc)
    std::string text;    // a token's text as content XML: escaped characters and <chr nm=".."/>
    std::string plain;   // the same text as the source spelled it, for telling letters apart ("d")
    std::string sgn;     // the signs of a plus, one per child
    std::size_t rows = 0, cols = 0;
    std::string rowl, coll, frl;
    std::vector<ImportNodePtr> kids;
    Parens parens = Parens::none;
    bool bare_table = false;  // a table with no fences around it yet: "array" unless fences come
    SourcePos pos;

    static ImportNodePtr make(Kind kind, std::string name = std::string());
    static ImportNodePtr expr(std::string const &name, std::vector<ImportNodePtr> kids);
    static ImportNodePtr placeholder();

    // Appends plain text (escaped when written) or a named character to a token.
    void add_text(std::string const &utf8);
    void add_char(std::string const &name);

    bool is_token() const { return kind == Kind::ident || kind == Kind::num || kind == Kind::str; }
    bool is_expr(char const *tmp) const { return kind == Kind::expr && name == tmp; }
};

// The tree as a whole document of the content format.
std::string write_content_document(ImportNode const &node);

}  // namespace Tavi
