// The pieces a formula is read into before its meaning is worked out, shared by the LaTeX and the
// presentation MathML readers: atoms (identifiers, numbers, text), operator and fence symbols,
// groups, scripts, commands with their arguments (fractions, roots, accents) and tables.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tavi/import/importnode.h"

namespace Tavi {

struct Token;
using TokenList = std::vector<Token>;

struct Token
{
    enum class Kind {
        atom,     // `atom`: an identifier, number or text, ready made
        symbol,   // `name`: an operator, fence, function or big operator by its LaTeX name ("le",
                  // "sum", "sin") or its own character ("+", "(", "|")
        group,    // args[0]: a sub-formula in braces (LaTeX) or an mrow (MathML)
        command,  // `name` with args: "frac", "binom", "sqrt" (args[1] the index, if any),
                  // "accent" (`detail` the accent's name), "conjugate"
        sup,      // args[0]: a superscript of what stands before
        sub,      // args[0]: a subscript of what stands before
        table     // `cells`, row by row; `name` says the fences ("(", "[", "|", "{", or none)
    };
    // Fences written with \left and \right (or stretched in MathML) open or close for certain.
    enum class Role { either, open, close };

    Kind kind = Kind::symbol;
    std::string name;
    std::string detail;
    std::string spelling;  // how the input wrote it, for messages
    Role role = Role::either;
    std::shared_ptr<ImportNode const> atom;
    std::vector<TokenList> args;
    std::vector<std::vector<TokenList>> cells;
    std::string rowl, coll, frl;  // a table's lines, as the content format writes them
    SourcePos pos;
};

// A copy of a ready-made atom, for the tree being built.
ImportNodePtr clone_atom(ImportNode const &atom);

}  // namespace Tavi
