// FormulaBuilder: formulas made in code for tests of the layouts together. It holds one template for
// each kind of node that the layouts make possible (atoms, sums and operator rows, fractions, roots,
// scripts, fences of every family, limits, bars, slanted children), each around the real layout
// classes, and makes nodes on them. Every node keeps a readable name such as "frac(x, sqrt(2))" for
// messages.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "support/math_fixture.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {
class MathLayout;
class MathNode;
class MathTemplate;
}  // namespace Tavi

namespace TaviTest {

// One kind of node: its name, how many children it takes, the priority of its template (which decides
// parentheses around it), and a maker of a fresh layout for its template.
struct FormulaKind
{
    char const *name;
    int min_children;
    int max_children;
    double priority;
    Tavi::MathLayout *(*make)();
};

std::vector<FormulaKind> const &formula_kinds();

class FormulaBuilder
{
public:
    // `wrap`, when given, receives every template's layout and gives the layout to install instead.
    using Wrap = std::function<Tavi::MathLayout *(Tavi::MathLayout *)>;
    explicit FormulaBuilder(Wrap const &wrap = Wrap());
    ~FormulaBuilder();
    FormulaBuilder(FormulaBuilder const &) = delete;
    FormulaBuilder &operator=(FormulaBuilder const &) = delete;

    // Atoms; the text is decoded, so "&alpha;" names a character.
    Tavi::MathNode *ident(Tavi::wchar const *text);
    Tavi::MathNode *number(Tavi::wchar const *text);
    Tavi::MathNode *string(Tavi::wchar const *text);
    // A node of the kind of that name (or index in formula_kinds()) with these children; the node
    // takes a reference on each. The caller holds the answer (Held).
    Tavi::MathNode *node(std::string const &kind, std::vector<Tavi::MathNode *> const &children);
    Tavi::MathNode *node(std::size_t kind, std::vector<Tavi::MathNode *> const &children);

    std::string name_of(Tavi::MathNode const *node) const;

private:
    std::unique_ptr<Held<Tavi::MathTemplate>> ident_, number_, string_;
    std::vector<std::unique_ptr<Held<Tavi::MathTemplate>>> templates_;
    std::map<Tavi::MathNode const *, std::string> names_;
};

}  // namespace TaviTest
