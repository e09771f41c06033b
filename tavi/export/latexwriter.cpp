// LaTeX: atoms character by character (Greek letters and signs by their commands, double-struck
// capitals by \mathbb), sums with their signs, tables without a pattern as an array with their lines,
// and every other node by its template's pattern: the setup file's, the built-in kinds' own below,
// or \operatorname{name} applied to the operands.
#include "tavi/export/latexwriter.h"

#include <cstddef>
#include <typeinfo>

#include "tavi/export/exportpattern.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/layout/layouttable.h"
#include "tavi/math/mathatomnode.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathnumbernode.h"
#include "tavi/math/mathplusnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathstringnode.h"
#include "tavi/math/mathtablenode.h"
#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

namespace {

// The kinds that the program builds in, whose patterns a setup file need not give.
struct BuiltinPattern
{
    char16_t const *name;
    char16_t const *pattern;
};

constexpr BuiltinPattern builtin_patterns[] = {
    // name                pattern
    {u"subscript",         u"{#1}_{#2}"},
    {u"superscript",       u"{#1}^{#2}"},
    {u"subsupscript",      u"{#1}_{#2}^{#3}"},
    {u"joinsymb",          u"#1*"},
    {u"overbar_accent",    u"\\overline{#1}"},
    {u"underbar_accent",   u"\\underline{#1}"},
    {u"ast_accent",        u"{#1}^{*}"},
    {u"prime_accent",      u"{#1}'"},
    {u"circ_accent",       u"\\hat{#1}"},
    {u"tilde_accent",      u"\\tilde{#1}"},
    {u"rarr_accent",       u"\\vec{#1}"},
    {u"dot_accent",        u"\\dot{#1}"},
    {u"die_accent",        u"\\ddot{#1}"},
    {u"tdot_accent",       u"\\dddot{#1}"},
};

// Characters of atoms that math mode writes as a command.
struct CharCommand
{
    char32_t code;
    char const *command;
};

constexpr CharCommand char_commands[] = {
    // code     command
    {0x03B1, "\\alpha"},   {0x03B2, "\\beta"},     {0x03B3, "\\gamma"},     {0x03B4, "\\delta"},
    {0x03B5, "\\varepsilon"}, {0x03B6, "\\zeta"},  {0x03B7, "\\eta"},       {0x03B8, "\\theta"},
    {0x03B9, "\\iota"},    {0x03BA, "\\kappa"},    {0x03BB, "\\lambda"},    {0x03BC, "\\mu"},
    {0x03BD, "\\nu"},      {0x03BE, "\\xi"},       {0x03BF, "o"},           {0x03C0, "\\pi"},
    {0x03C1, "\\rho"},     {0x03C2, "\\varsigma"}, {0x03C3, "\\sigma"},     {0x03C4, "\\tau"},
    {0x03C5, "\\upsilon"}, {0x03C6, "\\varphi"},   {0x03C7, "\\chi"},       {0x03C8, "\\psi"},
    {0x03C9, "\\omega"},   {0x03D1, "\\vartheta"}, {0x03D5, "\\phi"},       {0x03D6, "\\varpi"},
    {0x03F1, "\\varrho"},  {0x03F5, "\\epsilon"},
    {0x0393, "\\Gamma"},   {0x0394, "\\Delta"},    {0x0398, "\\Theta"},     {0x039B, "\\Lambda"},
    {0x039E, "\\Xi"},      {0x03A0, "\\Pi"},       {0x03A3, "\\Sigma"},     {0x03A5, "\\Upsilon"},
    {0x03A6, "\\Phi"},     {0x03A8, "\\Psi"},      {0x03A9, "\\Omega"},     {0x03D2, "\\Upsilon"},
    {0x221E, "\\infty"},   {0x2202, "\\partial"},  {0x2207, "\\nabla"},     {0x2135, "\\aleph"},
    {0x2118, "\\wp"},      {0x2111, "\\Im"},       {0x211C, "\\Re"},        {0x2205, "\\emptyset"},
    {0x210F, "\\hbar"},    {0x2113, "\\ell"},      {0x22EF, "\\cdots"},     {0x2026, "\\ldots"},
    {0x2032, "'"},         {0x2033, "''"},         {0x00B1, "\\pm"},        {0x00D7, "\\times"},
    {0x00B7, "\\cdot"},    {0x22C5, "\\cdot"},     {0x00F7, "\\div"},       {0x00B0, "^{\\circ}"},
    {0x2212, "-"},         {0x2192, "\\to"},       {0x2190, "\\leftarrow"}, {0x21D2, "\\Rightarrow"},
    {0x2264, "\\leq"},     {0x2265, "\\geq"},      {0x2260, "\\neq"},       {0x2248, "\\approx"},
    {0x2261, "\\equiv"},   {0x2208, "\\in"},       {0x2209, "\\notin"},     {0x2282, "\\subset"},
    {0x2286, "\\subseteq"}, {0x222A, "\\cup"},     {0x2229, "\\cap"},       {0x2227, "\\wedge"},
    {0x2228, "\\vee"},     {0x00AC, "\\neg"},      {0x2200, "\\forall"},    {0x2203, "\\exists"},
    {0x2218, "\\circ"},    {0x2295, "\\oplus"},    {0x2297, "\\otimes"},    {0x22A5, "\\perp"},
    {0x2220, "\\angle"},   {0x2022, "\\bullet"},   {0x223C, "\\sim"},       {0x221D, "\\propto"},
    {0x2245, "\\cong"},    {0x27E8, "\\langle"},   {0x27E9, "\\rangle"},    {0x2211, "\\sum"},
    {0x220F, "\\prod"},    {0x222B, "\\int"},      {0x222E, "\\oint"},      {0x221A, "\\surd"},
    {0x2216, "\\setminus"}, {0x25A1, "\\square"},  {0x00A0, "~"},
    {'#', "\\#"},          {'$', "\\$"},           {'%', "\\%"},            {'&', "\\&"},
    {'_', "\\_"},          {'{', "\\{"},           {'}', "\\}"},            {'\\', "\\backslash"},
    {'^', "\\hat{}"},      {'~', "\\sim"},
};

// The double-struck capitals of the letterlike block; the others lie from U+1D538 on.
constexpr char32_t open_face_letters[][2] = {
    {U'C', 0x2102}, {U'H', 0x210D}, {U'N', 0x2115}, {U'P', 0x2119}, {U'Q', 0x211A}, {U'R', 0x211D}, {U'Z', 0x2124},
};

bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// The command of one character, or its UTF-8 form where math mode takes it as it stands.
std::string latex_char(char32_t c)
{
    for (CharCommand const &row : char_commands)
        if (row.code == c)
            return row.command;
    for (auto const &row : open_face_letters)
        if (row[1] == c)
            return std::string("\\mathbb{") + static_cast<char>(row[0]) + "}";
    if (c >= 0x1D538 && c <= 0x1D551)
        return std::string("\\mathbb{") + static_cast<char>('A' + (c - 0x1D538)) + "}";
    if (c < 0x80)
        return std::string(1, static_cast<char>(c));
    wstring unit;
    if (c >= 0x10000)
        unit = {static_cast<wchar>(0xD800 + ((c - 0x10000) >> 10)), static_cast<wchar>(0xDC00 + (c & 0x3FF))};
    else
        unit = wstring(1, static_cast<wchar>(c));
    return "\\text{" + Kxt::to_string(unit) + "}";
}

std::string latex_chars(wstring const &text, bool &all_letters)
{
    std::string out;
    all_letters = true;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size())
            c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00);
        all_letters = all_letters && c < 0x80 && is_letter(static_cast<char>(c));
        out += latex_char(c);
    }
    return out;
}

// Whether text ends in a control word (a backslash and letters), which a following letter would join.
bool ends_in_control_word(std::string const &text)
{
    std::size_t i = text.size();
    while (i > 0 && is_letter(text[i - 1]))
        --i;
    return i < text.size() && i > 0 && text[i - 1] == '\\' && (i < 2 || text[i - 2] != '\\');
}

// Parentheses that grow with what they hold, where that may be taller than a line.
bool is_tall(std::string const &text)
{
    for (char const *command :
         {"\\frac", "\\begin", "\\sum", "\\prod", "\\int", "\\oint", "\\sqrt", "\\left", "\\binom"})
        if (text.find(command) != std::string::npos)
            return true;
    return false;
}

// The character of a table string (lines, alignment) for position i: the last one repeats past the
// end, and an empty or missing string gives `none`.
wchar position_char(wchar const *text, long i, wchar none)
{
    if (text == nullptr || *text == 0)
        return none;
    wstring const s(text);
    return i < static_cast<long>(s.size()) ? s[static_cast<std::size_t>(i)] : s.back();
}

class LatexWriter : public PatternWriter
{
public:
    std::string node(MathNode *node);
    std::string child(MathNode *parent, long index) override;
    void append(std::string &out, std::string const &piece) override;

private:
    std::string atom(MathNode *node);
    std::string sum(MathPlusNode *node);
    std::string array(MathNode *node);
};

void LatexWriter::append(std::string &out, std::string const &piece)
{
    if (!piece.empty() && is_letter(piece.front()) && ends_in_control_word(out))
        out += ' ';
    out += piece;
}

std::string LatexWriter::child(MathNode *parent, long index)
{
    std::string const text = node(child_at(parent, index));
    if (!child_in_parens(parent, index))
        return text;
    return is_tall(text) ? "\\left(" + text + "\\right)" : "(" + text + ")";
}

std::string LatexWriter::atom(MathNode *node)
{
    if (typeid(*node) == typeid(MathDummyNode))
        return "\\square";
    wstring const text = atom_unicode(node);
    if (typeid(*node) == typeid(MathStringNode)) {
        std::string out;
        for (char c : Kxt::to_string(text))
            out += c == '\\' ? std::string("\\textbackslash{}")
                   : std::string("{}#$%&_").find(c) != std::string::npos ? std::string("\\") + c
                                                                           : std::string(1, c);
        return "\\text{" + out + "}";
    }
    bool all_letters = false;
    std::string const out = latex_chars(text, all_letters);
    if (typeid(*node) == typeid(MathNumberNode) || !all_letters || text.size() < 2)
        return out;
    // A name of several letters is one identifier, not a product of letters.
    MathString const &string = node->text();
    bool upright = string.run_count() > 0;
    for (std::size_t run = 0; run < string.run_count(); ++run)
        upright = upright && string.run_font(run) == MathString::f_upright;
    return (upright ? "\\mathrm{" : "\\mathit{") + out + "}";
}

std::string LatexWriter::sum(MathPlusNode *node)
{
    std::string out;
    for (long i = 0; i < node->count(); ++i) {
        bool const positive = node->plus_sign(static_cast<std::size_t>(i));
        if (i > 0)
            out += positive ? " + " : " - ";
        else if (!positive)
            out += "-";
        append(out, child(node, i));
    }
    return out;
}

// A table that its template gives no pattern: an array with the table's lines and alignment.
std::string LatexWriter::array(MathNode *node)
{
    auto *grid = static_cast<MathTableNode *>(node);
    LayoutTable *layout = node->templ() != nullptr ? node->templ()->table_layout() : nullptr;
    long const cols = grid->n_cols() > 0 ? static_cast<long>(grid->n_cols()) : 1;
    long const count = node->count();
    long const rows = (count + cols - 1) / cols;
    wchar const *col_lines = layout != nullptr ? layout->col_lines() : nullptr;
    wchar const *row_lines = layout != nullptr ? layout->row_lines() : nullptr;
    wchar const *frame_lines = layout != nullptr ? layout->frame_lines() : nullptr;
    wchar const *align = layout != nullptr ? layout->column_align() : nullptr;
    // The node's own lines win over its layout's; "n" is no line.
    auto line = [](wchar const *own, wchar const *fallback, long i) {
        return position_char(own != nullptr ? own : fallback, i, u'n') != u'n';
    };
    bool const frame = line(grid->frame_lines(), frame_lines, 0);
    std::string spec = frame ? "|" : "";
    for (long c = 0; c < cols; ++c) {
        wchar const a = position_char(align, c, u'c');
        spec += a == u'l' ? "l" : a == u'r' ? "r" : "c";
        if (c + 1 < cols && line(grid->col_lines(), col_lines, c))
            spec += "|";
    }
    spec += frame ? "|" : "";
    std::string out = "\\begin{array}{" + spec + "}" + (frame ? " \\hline" : "");
    for (long r = 0; r < rows; ++r) {
        out += " ";
        for (long c = 0; c < cols && r * cols + c < count; ++c)
            out += (c > 0 ? " & " : "") + child(node, r * cols + c);
        if (r + 1 < rows || frame)
            out += " \\\\";
        if ((r + 1 < rows && line(grid->row_lines(), row_lines, r)) || (r + 1 == rows && frame))
            out += " \\hline";
    }
    return out + " \\end{array}";
}

std::string LatexWriter::node(MathNode *node)
{
    if (node == nullptr)
        return "";
    if (dynamic_cast<MathAtomNode *>(node) != nullptr)
        return atom(node);
    if (auto *plus = dynamic_cast<MathPlusNode *>(node))
        return sum(plus);
    MathTemplate *templ = node->templ();
    wstring pattern = templ != nullptr ? templ->export_pattern(MathTemplate::export_latex) : wstring();
    for (BuiltinPattern const &row : builtin_patterns)
        if (pattern.empty() && row.name == wstring(node->content_type_name()))
            pattern = row.pattern;
    std::string out;
    if (!pattern.empty() && expand_pattern(pattern, node, *this, out))
        return out;
    if (dynamic_cast<MathTableNode *>(node) != nullptr)
        return array(node);
    out = "\\operatorname{";
    for (char c : Kxt::to_string(node->content_type_name()))
        out += c == '_' ? std::string("\\_") : std::string(1, c);
    out += "}\\left(";
    for (long i = 0; i < node->count(); ++i)
        out += (i > 0 ? ", " : "") + child(node, i);
    return out + "\\right)";
}

// The end of the group that opens at `open` (the index of its closing character), or npos: braces
// when `open` is "{", parentheses when it is "(".
std::size_t group_end(std::string const &tex, std::size_t open)
{
    char const first = tex[open];
    char const last = first == '{' ? '}' : ')';
    int depth = 0;
    for (std::size_t i = open; i < tex.size(); ++i) {
        if (tex[i] == '\\' && first == '{') {
            ++i;  // \{ and \} are characters, not braces
            continue;
        }
        if (tex[i] == first)
            ++depth;
        else if (tex[i] == last && --depth == 0)
            return i;
    }
    return std::string::npos;
}

// Whether the text is one unit that a script may follow without braces: a letter, a number, a
// command with at most one argument, a parenthesised group, or a \left ... \right pair.
bool is_one_unit(std::string const &x)
{
    if (x.empty())
        return false;
    if (x.find_first_not_of("0123456789.") == std::string::npos)
        return x.front() != '.';
    if (x.size() == 1)
        return is_letter(x[0]);
    if (x.front() == '(')
        return group_end(x, 0) == x.size() - 1;
    // One pair of \left and \right around the whole, closed by one delimiter: a character or a command.
    if (x.compare(0, 5, "\\left") == 0 && x.find("\\left", 1) == std::string::npos) {
        std::size_t const right = x.find("\\right");
        std::size_t end = right + 6;
        if (right != std::string::npos && end < x.size() && x[end] == '\\')
            for (++end; end < x.size() && is_letter(x[end]);)
                ++end;
        else if (right != std::string::npos)
            ++end;
        return right != std::string::npos && end == x.size();
    }
    if (x.front() != '\\')
        return false;
    std::size_t i = 1;
    while (i < x.size() && is_letter(x[i]))
        ++i;
    if (i == 1)
        return false;
    return i == x.size() || (x[i] == '{' && group_end(x, i) == x.size() - 1);
}

// The patterns of scripts brace their base, "{#1}^{#2}", so that any base reads as one; a base that
// is one unit needs no braces, and "{x}^{2}" becomes "x^{2}". Braces that are a command's argument
// ("\mathbb{R}^{n}", "\frac{a}{b}") stay.
std::string unbrace_bases(std::string const &tex)
{
    std::string out;
    for (std::size_t i = 0; i < tex.size(); ++i) {
        char const before = i > 0 ? tex[i - 1] : ' ';
        // A group after a command, another group or a script sign is an argument.
        bool const argument = is_letter(before) || before == '}' || before == ']' || before == '\\' ||
                              before == '_' || before == '^';
        std::size_t const end = tex[i] == '{' && !argument ? group_end(tex, i) : std::string::npos;
        if (end != std::string::npos && end + 1 < tex.size() &&
            (tex[end + 1] == '^' || tex[end + 1] == '_' || tex[end + 1] == '\''))
        {
            std::string const inner = tex.substr(i + 1, end - i - 1);
            if (is_one_unit(inner)) {
                out += unbrace_bases(inner);
                i = end;
                continue;
            }
        }
        out += tex[i];
    }
    return out;
}

}  // namespace

std::string write_latex(MathNode *node) { return unbrace_bases(LatexWriter().node(node)); }

std::string write_latex(MathRootNode &root) { return write_latex(root.child()); }

}  // namespace Tavi
