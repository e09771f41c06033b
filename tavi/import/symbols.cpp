// The tables of characters and operators known by name to the LaTeX and MathML importers.
#include "tavi/import/symbols.h"

#include <cstring>
#include <utility>

namespace Tavi {

namespace {

// Identifiers of one named character. Where LaTeX has two commands for one glyph of the symbol
// font (\epsilon, \varepsilon) both are here; the name written back is the content format's.
constexpr NamedSymbol named_symbols[] = {
//   LaTeX          Unicode  name
    {"alpha",       0x03B1, "alpha"},
    {"beta",        0x03B2, "beta"},
    {"gamma",       0x03B3, "gamma"},
    {"delta",       0x03B4, "delta"},
    {"epsilon",     0x03F5, "epsi"},
    {"varepsilon",  0x03B5, "epsilon"},
    {"zeta",        0x03B6, "zeta"},
    {"eta",         0x03B7, "eta"},
    {"theta",       0x03B8, "theta"},
    {"vartheta",    0x03D1, "thetasym"},
    {"iota",        0x03B9, "iota"},
    {"kappa",       0x03BA, "kappa"},
    {"lambda",      0x03BB, "lambda"},
    {"mu",          0x03BC, "mu"},
    {"nu",          0x03BD, "nu"},
    {"xi",          0x03BE, "xi"},
    {"omicron",     0x03BF, "omicron"},
    {"pi",          0x03C0, "pi"},
    {"varpi",       0x03D6, "piv"},
    {"rho",         0x03C1, "rho"},
    {"sigma",       0x03C3, "sigma"},
    {"varsigma",    0x03C2, "sigmaf"},
    {"tau",         0x03C4, "tau"},
    {"upsilon",     0x03C5, "upsi"},
    {"phi",         0x03D5, "phi"},
    {"varphi",      0x03C6, "varphi"},
    {"chi",         0x03C7, "chi"},
    {"psi",         0x03C8, "psi"},
    {"omega",       0x03C9, "omega"},
    {"Gamma",       0x0393, "Gamma"},
    {"Delta",       0x0394, "Delta"},
    {"Theta",       0x0398, "Theta"},
    {"Lambda",      0x039B, "Lambda"},
    {"Xi",          0x039E, "Xi"},
    {"Pi",          0x03A0, "Pi"},
    {"Sigma",       0x03A3, "Sigma"},
    {"Upsilon",     0x03A5, "Upsilon"},
    {"Phi",         0x03A6, "Phi"},
    {"Psi",         0x03A8, "Psi"},
    {"Omega",       0x03A9, "Omega"},
    {"infty",       0x221E, "infin"},
    {"partial",     0x2202, "part"},
    {"emptyset",    0x2205, "emptyv"},
    {"varnothing",  0x2300, "varnothing"},
    {"aleph",       0x2135, "aleph"},
    {"Re",          0x211C, "real"},
    {"Im",          0x2111, "image"},
    {"wp",          0x2118, "weierp"},
    {"angle",       0x2220, "ang"},
    {"bot",         0x22A5, "bottom"},
    {"cdots",       0x22EF, "hellip"},
    {"ldots",       0x2026, "hellip"},
    {"dots",        0x2026, "hellip"},
    {"dotsc",       0x2026, "hellip"},
    {"dotsb",       0x2026, "hellip"},
    {"vdots",       0x22EE, "hellip"},
    {"ddots",       0x22F1, "hellip"},
    {"varrho",      0x03F1, "rho"},
};

// Operators and fences, by the name the formula parser uses for them.
constexpr OperatorSymbol operators[] = {
//   name             Unicode
    {"-",             0x2212},
    {"'",             0x2032},
    {"*",             0x2217},
    {"le",            0x2264},
    {"leq",           0x2264},
    {"leqslant",      0x2A7D},
    {"ge",            0x2265},
    {"geq",           0x2265},
    {"geqslant",      0x2A7E},
    {"ne",            0x2260},
    {"neq",           0x2260},
    {"pm",            0x00B1},
    {"times",         0x00D7},
    {"cdot",          0x22C5},
    {"cdotp",         0x00B7},
    {"div",           0x00F7},
    {"to",            0x2192},
    {"rightarrow",    0x2192},
    {"in",            0x2208},
    {"notin",         0x2209},
    {"subset",        0x2282},
    {"subseteq",      0x2286},
    {"cup",           0x222A},
    {"cap",           0x2229},
    {"setminus",      0x2216},
    {"approx",        0x2248},
    {"equiv",         0x2261},
    {"wedge",         0x2227},
    {"land",          0x2227},
    {"vee",           0x2228},
    {"lor",           0x2228},
    {"neg",           0x00AC},
    {"lnot",          0x00AC},
    {"Rightarrow",    0x21D2},
    {"implies",       0x27F9},
    {"Longrightarrow",0x27F9},
    {"Leftrightarrow",0x21D4},
    {"iff",           0x27FA},
    {"forall",        0x2200},
    {"exists",        0x2203},
    {"nabla",         0x2207},
    {"mid",           0x2223},
    {"circ",          0x2218},
    {"sum",           0x2211},
    {"prod",          0x220F},
    {"int",           0x222B},
    {"oint",          0x222E},
    {"lfloor",        0x230A},
    {"rfloor",        0x230B},
    {"lceil",         0x2308},
    {"rceil",         0x2309},
    {"lvert",         0},
    {"rvert",         0},
    {"lbrace",        0},
    {"rbrace",        0},
    {"applyfunction", 0x2061},
    {",",             0x2063},
};

// Names of functions that LaTeX sets upright.
char const *const function_names[] = {
    "sin", "cos", "tan", "cot", "sec", "csc", "arcsin", "arccos", "arctan", "sinh", "cosh", "tanh",
    "coth", "log", "ln", "lg", "exp", "det", "gcd", "lcm", "dim", "ker", "hom", "arg", "deg", "Pr",
    "sup", "inf", "max", "min", "liminf", "limsup",
};

}  // namespace

NamedSymbol const *named_symbol_by_latex(std::string const &command)
{
    for (auto const &row : named_symbols)
        if (command == row.latex)
            return &row;
    return nullptr;
}

NamedSymbol const *named_symbol_by_code(char32_t code)
{
    for (auto const &row : named_symbols)
        if (code == row.code)
            return &row;
    return nullptr;
}

NamedSymbol const *named_symbol_by_name(std::string const &name)
{
    for (auto const &row : named_symbols)
        if (name == row.name || name == row.latex)
            return &row;
    return nullptr;
}

OperatorSymbol const *operator_by_latex(std::string const &command)
{
    for (auto const &row : operators)
        if (command == row.name)
            return &row;
    return nullptr;
}

OperatorSymbol const *operator_by_code(char32_t code)
{
    if (code == 0)
        return nullptr;
    for (auto const &row : operators)
        if (code == row.code)
            return &row;
    return nullptr;
}

bool is_function_name(std::string const &name)
{
    for (char const *f : function_names)
        if (name == f)
            return true;
    return false;
}

char double_struck_letter(char32_t code)
{
    // The letters Unicode had before its block of double-struck capitals, where that block has holes.
    static constexpr std::pair<char32_t, char> letterlike[] = {
        {0x2102, 'C'}, {0x210D, 'H'}, {0x2115, 'N'}, {0x2119, 'P'}, {0x211A, 'Q'}, {0x211D, 'R'}, {0x2124, 'Z'},
    };
    for (auto const &row : letterlike)
        if (code == row.first)
            return row.second;
    if (code >= 0x1D538 && code < 0x1D538 + 26)
        return static_cast<char>('A' + (code - 0x1D538));
    return 0;
}

char32_t next_code_point(std::string const &text, std::size_t &i)
{
    auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
    unsigned char const c = byte(i);
    int extra = c < 0x80 ? 0 : (c >> 5) == 6 ? 1 : (c >> 4) == 14 ? 2 : (c >> 3) == 30 ? 3 : -1;
    if (extra < 0 || i + extra >= text.size()) {
        ++i;
        return extra == 0 ? c : invalid_code_point;
    }
    char32_t code = extra == 0 ? c : c & (0x3F >> extra);
    for (int k = 1; k <= extra; ++k) {
        if ((byte(i + k) & 0xC0) != 0x80) {
            ++i;
            return invalid_code_point;
        }
        code = (code << 6) | (byte(i + k) & 0x3F);
    }
    // Overlong forms, surrogates and codes past Unicode are broken too.
    static constexpr char32_t least[] = {0, 0x80, 0x800, 0x10000};
    if (code < least[extra] || (code >= 0xD800 && code < 0xE000) || code > 0x10FFFF) {
        ++i;
        return invalid_code_point;
    }
    i += extra + 1;
    return code;
}

void append_code_point(std::string &out, char32_t code)
{
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (code >> 18));
        out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

}  // namespace Tavi
