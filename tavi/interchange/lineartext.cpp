// Linear text: the table of patterns by content name, the rules for parentheses, and the way atoms'
// characters of the symbol, extension and open-face classes become Unicode.
#include "tavi/interchange/lineartext.h"

#include <cstddef>
#include <typeinfo>

#include "tavi/math/charnames.h"
#include "tavi/math/mathatomnode.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathplusnode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathtablenode.h"
#include "tavi/qt/symbol_tables.h"

namespace Tavi {

namespace {

// How tightly a written form holds together. A child is put in parentheses when it holds less tightly
// than its place asks for. The numbers follow the priorities of the setup file where the linear
// form reads alike; a fraction, written with a slash, binds like a product here.
constexpr int sequence = 10;
constexpr int sum = 1000;
constexpr int product = 2000;
constexpr int script = 4000;
constexpr int call = 5000;     // name(arguments): tight, but not bracketed on both sides
constexpr int closed = 10000;  // atoms, and forms bracketed on both sides: never in parentheses

// The separator of juxtaposition, the invisible times: children stand side by side, with a dot
// between two numbers and a space after a form that would swallow what follows.
constexpr wchar juxtaposition[] = u"\u2062";

// A pattern is literal text with slots for the children:
//   $i      child i as it stands
//   $i:N    child i, in parentheses unless it holds at least N tightly
//   $i!     child i, in parentheses unless it is closed
//   $i*     children i to the last, joined by the row's separator; ":N" or "!" may follow
// A number ends at the first character that is not a digit; a colon without digits is literal text.
struct Pattern
{
    wchar const *name;
    int strength;
    wchar const *pattern;
    wchar const *separator;
};

constexpr Pattern pattern_table[] = {
    // name                     strength  pattern                          separator
    {u"seq",                    sequence, u"$0*",                          u", "},
    {u"times",                   product, u"$0*:2001",                     u" · "},
    {u"vectorproduct",           product, u"$0*:2001",                     u" × "},
    {u"implicit_times",          product, u"$0*:2001",                     juxtaposition},
    {u"divide",                  product, u"$0:2000/$1:2001",              nullptr},
    {u"plusminus",                   sum, u"$0:1000 ± $1:1001",            nullptr},
    {u"power",                    script, u"$0:4001^$1!",                  nullptr},
    {u"superscript",              script, u"$0:4001^$1!",                  nullptr},
    {u"subscript",                script, u"$0:4001_$1!",                  nullptr},
    {u"subsupscript",             script, u"$0:4001_$1!^$2!",              nullptr},
    {u"exp",                      script, u"e^$0!",                        nullptr},
    {u"sqrt",                     script, u"√$0!",                         nullptr},
    {u"root",                     script, u"$0:4001^(1/$1:2001)",          nullptr},
    {u"factorial",                  4500, u"$0:4501!",                     nullptr},
    {u"abs",                      closed, u"|$0|",                         nullptr},
    {u"floor",                    closed, u"⌊$0⌋",                         nullptr},
    {u"ceiling",                  closed, u"⌈$0⌉",                         nullptr},
    {u"conjugate",                closed, u"$0!\u0305",                    nullptr},
    {u"apply",                      call, u"$0:5000($1*)",                 u", "},
    {u"fenced",                   closed, u"($0*)",                        u", "},
    {u"min",                        call, u"min($0*)",                     u", "},
    {u"max",                        call, u"max($0*)",                     u", "},
    {u"binomial",                   call, u"binom($0, $1)",                nullptr},
    {u"sin",                        call, u"sin($0)",                      nullptr},
    {u"cos",                        call, u"cos($0)",                      nullptr},
    {u"tan",                        call, u"tan($0)",                      nullptr},
    {u"log",                        call, u"log($0)",                      nullptr},
    {u"ln",                         call, u"ln($0)",                       nullptr},
    {u"compose",                    2200, u"$0*:2201",                     u" ∘ "},
    {u"eq",                          100, u"$0*:101",                      u" = "},
    {u"neq",                         100, u"$0*:101",                      u" ≠ "},
    {u"lt",                          100, u"$0*:101",                      u" < "},
    {u"gt",                          100, u"$0*:101",                      u" > "},
    {u"leq",                         100, u"$0*:101",                      u" ≤ "},
    {u"geq",                         100, u"$0*:101",                      u" ≥ "},
    {u"approx",                      100, u"$0*:101",                      u" ≈ "},
    {u"equivalent",                  100, u"$0*:101",                      u" ≡ "},
    {u"tendsto",                     100, u"$0:101 → $1:101",              nullptr},
    {u"in",                          100, u"$0*:101",                      u" ∈ "},
    {u"notin",                       100, u"$0*:101",                      u" ∉ "},
    {u"subset",                      100, u"$0*:101",                      u" ⊆ "},
    {u"prsubset",                    100, u"$0*:101",                      u" ⊂ "},
    {u"and",                          70, u"$0*:71",                       u" ∧ "},
    {u"or",                           60, u"$0*:61",                       u" ∨ "},
    {u"not",                         120, u"¬$0:121",                      nullptr},
    {u"implies",                      40, u"$0*:41",                       u" ⇒ "},
    {u"forall",                       30, u"∀$0: $1",                      nullptr},
    {u"exists",                       30, u"∃$0: $1",                      nullptr},
    {u"union",                       900, u"$0*:901",                      u" ∪ "},
    {u"intersect",                   950, u"$0*:951",                      u" ∩ "},
    {u"setdiff",                     900, u"$0:900 ∖ $1:901",              nullptr},
    {u"set",                      closed, u"{$0*}",                        u", "},
    {u"setbuilder",               closed, u"{$0 | $1}",                    nullptr},
    {u"list",                     closed, u"[$0*]",                        u", "},
    {u"interval",                 closed, u"[$0, $1]",                     nullptr},
    {u"interval_open",            closed, u"($0, $1)",                     nullptr},
    {u"interval_closed_open",     closed, u"[$0, $1)",                     nullptr},
    {u"interval_open_closed",     closed, u"($0, $1]",                     nullptr},
    {u"sum",                        2100, u"∑_$1!^$2! $0:1001",            nullptr},
    {u"product",                    2100, u"∏_$1!^$2! $0:1001",            nullptr},
    {u"int",                        2100, u"∫ $0:1001 d$1!",               nullptr},
    {u"defint",                     2100, u"∫_$2!^$3! $0:1001 d$1!",       nullptr},
    {u"oint",                       2100, u"∮_$2! $0:1001 d$1!",           nullptr},
    {u"limit",                      2100, u"lim_($1 → $2) $0:1001",        nullptr},
    {u"diff",                    product, u"d$0!/d$1!",                    nullptr},
    {u"partialdiff",             product, u"∂$0!/∂$1!",                    nullptr},
    {u"grad",                       2500, u"∇$0:2501",                     nullptr},
    {u"divergence",                 2500, u"∇·$0:2501",                    nullptr},
    {u"curl",                       2500, u"∇×$0:2501",                    nullptr},
    {u"joinsymb",                 closed, u"$0*",                          u""},
    {u"missingTemplate",          closed, u"?[$0*]",                       u", "},
    // Accents on identifiers: a combining mark, or a sign after the letter.
    {u"prime_accent",             closed, u"$0!′",                         nullptr},
    {u"ast_accent",               closed, u"$0!*",                         nullptr},
    {u"overbar_accent",           closed, u"$0!\u0305",                    nullptr},
    {u"underbar_accent",          closed, u"$0!\u0332",                    nullptr},
    {u"circ_accent",              closed, u"$0!\u0302",                    nullptr},
    {u"tilde_accent",             closed, u"$0!\u0303",                    nullptr},
    {u"rarr_accent",              closed, u"$0!\u20D7",                    nullptr},
    {u"dot_accent",               closed, u"$0!\u0307",                    nullptr},
    {u"die_accent",               closed, u"$0!\u0308",                    nullptr},
    {u"tdot_accent",              closed, u"$0!\u20DB",                    nullptr},
};

// Characters of the extension class that have a Unicode form of their own; its nine ASCII codes
// ( ) / [ \ ] { | } stand for themselves.
struct ExtensionChar
{
    wchar code;
    wchar unicode;
};

constexpr ExtensionChar extension_table[] = {
    // code  unicode
    {70,     u'⨆'},
    {72,     u'∮'},
    {74,     u'⨀'},
    {76,     u'⨁'},
    {78,     u'⨂'},
    {80,     u'∑'},
    {81,     u'∏'},
    {82,     u'∫'},
    {83,     u'⋃'},
    {84,     u'⋂'},
    {85,     u'⨄'},
    {86,     u'⋀'},
    {87,     u'⋁'},
    {96,     u'∐'},
};

// The double-struck capitals that Unicode keeps in the letterlike block; the others lie from
// U+1D538 on.
struct OpenFaceChar
{
    wchar letter;
    wchar unicode;
};

constexpr OpenFaceChar open_face_table[] = {
    // letter  unicode
    {u'C',     u'ℂ'},
    {u'H',     u'ℍ'},
    {u'N',     u'ℕ'},
    {u'P',     u'ℙ'},
    {u'Q',     u'ℚ'},
    {u'R',     u'ℝ'},
    {u'Z',     u'ℤ'},
};

bool is_private_use(wchar c) { return c >= 0xE000 && c <= 0xF8FF; }

// One character of an atom in Unicode; the entity form "&name;" when there is none, and the unit as
// it stands when even that is missing.
wstring unicode_char(MathString::Font font, wchar code)
{
    wchar found = 0;
    switch (font) {
    case MathString::f_upright:
    case MathString::f_text:
        return wstring(1, code);
    case MathString::f_symbol: {
        // The symbol font's upper half is stored from 0xFF00 on.
        unsigned const byte = code >= 0xFF00 ? code - 0xFF00u : code;
        if (byte < 256)
            found = standard_symbols_code_points[byte];
        break;
    }
    case MathString::f_extension:
        if (code == u'(' || code == u')' || code == u'/' || code == u'[' || code == u'\\' || code == u']' ||
            code == u'{' || code == u'|' || code == u'}')
            found = code;
        for (ExtensionChar const &row : extension_table)
            if (row.code == code)
                found = row.unicode;
        break;
    case MathString::f_open_face:
        if (code >= u'A' && code <= u'Z') {
            for (OpenFaceChar const &row : open_face_table)
                if (row.letter == code)
                    return wstring(1, row.unicode);
            char32_t const c = 0x1D538 + (code - u'A') - 0x10000;
            return wstring{static_cast<wchar>(0xD800 + (c >> 10)), static_cast<wchar>(0xDC00 + (c & 0x3FF))};
        }
        break;
    }
    if (found != 0 && !is_private_use(found))
        return wstring(1, found);
    wstring const entity = CharNames::entity(font, code);
    return entity.empty() ? wstring(1, code) : entity;
}

struct Written
{
    wstring text;
    int strength;
};

Written write(MathNode *node);

wstring atom_text(MathNode *node)
{
    // A placeholder shows the empty box it is drawn as.
    if (typeid(*node) == typeid(MathDummyNode))
        return u"□";
    return unicode_text(node->text());
}

wstring in_place(Written const &child, int needed)
{
    return child.strength >= needed ? child.text : u"(" + child.text + u")";
}

bool is_digit(wchar c) { return c >= u'0' && c <= u'9'; }

bool is_alnum(wchar c) { return is_digit(c) || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c > 0x7F; }

// Puts `next` behind `text` with nothing between, unless the two would run together into another
// reading: "2" and "3" give "2·3", "x^2" and "y" give "x^2 y".
void juxtapose(wstring &text, Written const &previous, wstring const &next)
{
    if (!text.empty() && !next.empty()) {
        if (is_digit(text.back()) && is_digit(next.front()))
            text += u"·";
        else if (previous.strength < closed && is_alnum(next.front()) && text.back() != u')')
            text += u" ";
    }
    text += next;
}

// Reads a slot's rule after its index: the strength a child needs to stand without parentheses.
int slot_rule(wchar const *&p)
{
    if (*p == u'!') {
        ++p;
        return closed;
    }
    if (*p != u':' || !is_digit(p[1]))
        return 0;
    int needed = 0;
    for (++p; is_digit(*p); ++p)
        needed = needed * 10 + (*p - u'0');
    return needed;
}

Written expand(MathNode *node, Pattern const &row)
{
    long const count = node->count();
    wstring out;
    for (wchar const *p = row.pattern; *p != 0;) {
        if (*p != u'$') {
            out += *p++;
            continue;
        }
        long first = 0;
        for (++p; is_digit(*p); ++p)
            first = first * 10 + (*p - u'0');
        bool const many = *p == u'*';
        if (many)
            ++p;
        int const needed = slot_rule(p);
        long const last = many ? count - 1 : first;
        Written previous{wstring(), closed};
        for (long i = first; i <= last && i < count; ++i) {
            Written const child = write(node->child(static_cast<int>(i)));
            wstring const text = in_place(child, needed);
            if (i == first)
                out += text;
            else if (row.separator != nullptr && wstring(row.separator) == juxtaposition)
                juxtapose(out, previous, text);
            else
                out += (row.separator != nullptr ? row.separator : u"") + text;
            previous = child;
        }
    }
    return {out, row.strength};
}

// A sum with a sign on every operand; a negation is a sum of one operand signed minus. A later
// operand that is itself a sum keeps its parentheses, so "a - (b + c)" stays what it is.
Written write_sum(MathPlusNode *node)
{
    wstring out;
    for (long i = 0; i < node->count(); ++i) {
        bool const plus = node->plus_sign(static_cast<std::size_t>(i));
        if (i > 0)
            out += plus ? u" + " : u" - ";
        else if (!plus)
            out += u"-";
        out += in_place(write(node->child(static_cast<int>(i))), sum + 1);
    }
    return {out, sum};
}

// A grid as its name with one bracketed list a row: "matrix([a, b], [c, d])".
Written write_table(MathTableNode *node)
{
    wstring out = wstring(node->content_type_name()) + u"(";
    std::size_t const cols = node->n_cols() > 0 ? node->n_cols() : 1;
    long const count = node->count();
    for (long i = 0; i < count; ++i) {
        std::size_t const column = static_cast<std::size_t>(i) % cols;
        if (column == 0)
            out += i == 0 ? u"[" : u"], [";
        else
            out += u", ";
        out += write(node->child(static_cast<int>(i))).text;
    }
    out += count > 0 ? u"])" : u")";
    return {out, call};
}

Written write_call(MathNode *node)
{
    wstring out = wstring(node->content_type_name()) + u"(";
    for (long i = 0; i < node->count(); ++i)
        out += (i > 0 ? u", " : u"") + write(node->child(static_cast<int>(i))).text;
    return {out + u")", call};
}

Written write(MathNode *node)
{
    if (node == nullptr)
        return {wstring(), closed};
    if (auto *atom = dynamic_cast<MathAtomNode *>(node))
        return {atom_text(atom), closed};
    if (auto *plus = dynamic_cast<MathPlusNode *>(node))
        return write_sum(plus);
    if (auto *table = dynamic_cast<MathTableNode *>(node))
        return write_table(table);
    wstring const name = node->content_type_name();
    for (Pattern const &row : pattern_table)
        if (name == row.name)
            return expand(node, row);
    return write_call(node);
}

}  // namespace

wstring linear_text(MathNode *node) { return write(node).text; }

wstring unicode_text(MathString const &text)
{
    wstring out;
    for (std::size_t run = 0; run < text.run_count(); ++run)
        for (std::size_t i = text.run_start(run); i < text.run_end(run); ++i)
            out += unicode_char(text.run_font(run), text.at(i));
    return out;
}

}  // namespace Tavi
