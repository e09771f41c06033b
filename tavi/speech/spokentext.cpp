// Spoken text: the phrase tables by content name (plain kinds and grids), the spoken names of
// characters, and the walk that reads a tree with them, saying where a root or a fraction ends when
// more follows.
#include "tavi/speech/spokentext.h"

#include <cstddef>
#include <typeinfo>
#include <utility>
#include <vector>

#include "tavi/interchange/decimalseparator.h"
#include "tavi/math/charnames.h"
#include "tavi/math/mathatomnode.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnumbernode.h"
#include "tavi/math/mathplusnode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathtablenode.h"

namespace Tavi {

namespace {

// How tightly a reading holds together, as in the typeset formula: a child that holds less tightly
// than its place asks for is shown in parentheses there, and is read "open paren ... close paren".
// The numbers follow the priorities of the default setup file.
constexpr int sequence = 10;
constexpr int relation = 100;
constexpr int sum = 1000;
constexpr int product = 2000;
constexpr int big_operator = 2100;
constexpr int function = 2500;
constexpr int fraction = 3000;
constexpr int script = 4000;
constexpr int call = 5000;
constexpr int closed = 10000;  // atoms and forms read with their own beginning and end

// A pattern is words with slots for the children:
//   $i      child i as it stands
//   $i:N    child i, in parentheses unless it holds at least N tightly
//   $i*     children i to the last, joined by the row's separator; ":N" may follow
//   $i^     child i as an exponent: "squared", "cubed", or "to the power" and the child
//   $i#     child i as the index of a root: "the square root", "the cube root", "the n-th root"
// `simple` is read instead of `pattern` when every child from `simple_from` on is one word (an atom,
// perhaps with an accent, a minus or a one-word subscript); when it ends with a child, a pause
// follows it if more comes ("1 over 2, m").
// When more follows the reading, `end` is said after it if its last child is more than one word or
// the row has a simple form that was not used; otherwise `pause` asks for a comma there. Where the
// pattern itself goes on with a comma or a closing parenthesis, that ends the child well enough.
struct Phrase
{
    wchar const *name;
    int strength;
    wchar const *pattern;
    wchar const *separator;
    wchar const *simple;
    int simple_from;
    wchar const *end;
    bool pause;
};

constexpr Phrase phrase_table[] = {
    // name                   strength      pattern                                                separator              simple                   from  end                    pause
    {u"seq",                  sequence,     u"$0*",                                                u", ",                 nullptr,                 0,    nullptr,               false},
    {u"times",                product,      u"$0*:2001",                                           u" times ",            nullptr,                 0,    nullptr,               false},
    {u"vectorproduct",        product,      u"$0*:2001",                                           u" cross ",            nullptr,                 0,    nullptr,               false},
    {u"implicit_times",       product,      u"$0*:2001",                                           u" ",                  nullptr,                 0,    nullptr,               false},
    {u"divide",               fraction,     u"the fraction with numerator $0, and denominator $1", nullptr,               u"$0 over $1",           0,    u"end fraction",       false},
    {u"plusminus",            sum,          u"$0:1000 plus or minus $1:1001",                      nullptr,               nullptr,                 0,    nullptr,               false},
    {u"power",                script,       u"$0:4001 $1^",                                        nullptr,               nullptr,                 0,    u"end exponent",       true},
    {u"superscript",          script,       u"$0:4001 superscript $1",                             nullptr,               nullptr,                 0,    u"end superscript",    false},
    {u"subscript",            script,       u"$0:4001 sub $1",                                     nullptr,               nullptr,                 0,    u"end subscript",      false},
    {u"subsupscript",         script,       u"$0:4001 sub $1, $2^",                                nullptr,               nullptr,                 0,    u"end exponent",       true},
    {u"exp",                  script,       u"e $0^",                                              nullptr,               nullptr,                 0,    u"end exponent",       true},
    {u"sqrt",                 closed,       u"the square root of $0",                              nullptr,               nullptr,                 0,    u"end root",           true},
    {u"root",                 closed,       u"$1# of $0",                                          nullptr,               nullptr,                 0,    u"end root",           true},
    {u"factorial",            4500,         u"$0:4501 factorial",                                  nullptr,               nullptr,                 0,    nullptr,               false},
    {u"abs",                  closed,       u"the absolute value of $0",                           nullptr,               nullptr,                 0,    u"end absolute value", true},
    {u"floor",                closed,       u"the floor of $0",                                    nullptr,               nullptr,                 0,    u"end floor",          true},
    {u"ceiling",              closed,       u"the ceiling of $0",                                  nullptr,               nullptr,                 0,    u"end ceiling",        true},
    {u"conjugate",            closed,       u"the complex conjugate of $0",                        nullptr,               u"$0 bar",               0,    u"end conjugate",      true},
    {u"apply",                call,         u"$0:4000 of open paren $1* close paren",              u", ",                 u"$0:4000 of $1*",       1,    nullptr,               false},
    {u"fenced",               closed,       u"open paren $0* close paren",                         u", ",                 nullptr,                 0,    nullptr,               false},
    {u"min",                  closed,       u"the minimum of $0*",                                 u", ",                 nullptr,                 0,    u"end minimum",        true},
    {u"max",                  closed,       u"the maximum of $0*",                                 u", ",                 nullptr,                 0,    u"end maximum",        true},
    {u"binomial",             closed,       u"the binomial coefficient $0, choose $1",             nullptr,               u"$0 choose $1",         0,    u"end binomial",       false},
    {u"sin",                  function,     u"the sine of $0:2001",                                nullptr,               nullptr,                 0,    nullptr,               true},
    {u"cos",                  function,     u"the cosine of $0:2001",                              nullptr,               nullptr,                 0,    nullptr,               true},
    {u"tan",                  function,     u"the tangent of $0:2001",                             nullptr,               nullptr,                 0,    nullptr,               true},
    {u"log",                  function,     u"the log of $0:2001",                                 nullptr,               nullptr,                 0,    nullptr,               true},
    {u"ln",                   function,     u"the natural log of $0:2001",                         nullptr,               nullptr,                 0,    nullptr,               true},
    {u"compose",              2200,         u"$0*:2201",                                           u" composed with ",    nullptr,                 0,    nullptr,               false},
    {u"eq",                   relation,     u"$0*:101",                                            u" equals ",           nullptr,                 0,    nullptr,               false},
    {u"neq",                  relation,     u"$0*:101",                                            u" is not equal to ",  nullptr,                 0,    nullptr,               false},
    {u"lt",                   relation,     u"$0*:101",                                            u" is less than ",     nullptr,                 0,    nullptr,               false},
    {u"gt",                   relation,     u"$0*:101",                                            u" is greater than ",  nullptr,                 0,    nullptr,               false},
    {u"leq",                  relation,     u"$0*:101",                                  u" is less than or equal to ",   nullptr,                 0,    nullptr,               false},
    {u"geq",                  relation,     u"$0*:101",                                  u" is greater than or equal to ",nullptr,                 0,    nullptr,               false},
    {u"approx",               relation,     u"$0*:101",                                  u" is approximately equal to ",  nullptr,                 0,    nullptr,               false},
    {u"equivalent",           relation,     u"$0*:101",                                            u" is equivalent to ", nullptr,                 0,    nullptr,               false},
    {u"tendsto",              relation,     u"$0:101 tends to $1:101",                             nullptr,               nullptr,                 0,    nullptr,               false},
    {u"in",                   relation,     u"$0*:101",                                        u" is an element of ",     nullptr,                 0,    nullptr,               false},
    {u"notin",                relation,     u"$0*:101",                                        u" is not an element of ", nullptr,                 0,    nullptr,               false},
    {u"subset",               relation,     u"$0*:101",                                        u" is a subset of ",       nullptr,                 0,    nullptr,               false},
    {u"prsubset",             relation,     u"$0*:101",                                        u" is a proper subset of ",nullptr,                 0,    nullptr,               false},
    {u"and",                  70,           u"$0*:71",                                             u" and ",              nullptr,                 0,    nullptr,               false},
    {u"or",                   60,           u"$0*:61",                                             u" or ",               nullptr,                 0,    nullptr,               false},
    {u"not",                  120,          u"not $0:121",                                         nullptr,               nullptr,                 0,    nullptr,               false},
    {u"implies",              40,           u"$0*:41",                                             u" implies ",          nullptr,                 0,    nullptr,               false},
    {u"forall",               30,           u"for all $0, $1",                                     nullptr,               nullptr,                 0,    nullptr,               false},
    {u"exists",               30,           u"there exists $0 such that $1",                       nullptr,               nullptr,                 0,    nullptr,               false},
    {u"union",                900,          u"$0*:901",                                            u" union ",            nullptr,                 0,    nullptr,               false},
    {u"intersect",            950,          u"$0*:951",                                            u" intersect ",        nullptr,                 0,    nullptr,               false},
    {u"setdiff",              900,          u"$0:900 set minus $1:901",                            nullptr,               nullptr,                 0,    nullptr,               false},
    {u"set",                  closed,       u"the set $0*",                                        u", ",                 nullptr,                 0,    u"end set",            true},
    {u"setbuilder",           closed,       u"the set of $0 such that $1",                         nullptr,               nullptr,                 0,    u"end set",            true},
    {u"list",                 closed,       u"the list $0*",                                       u", ",                 nullptr,                 0,    u"end list",           true},
    {u"interval",             closed,       u"the closed interval from $0 to $1",                  nullptr,               nullptr,                 0,    u"end interval",       true},
    {u"interval_open",        closed,       u"the open interval from $0 to $1",                    nullptr,               nullptr,                 0,    u"end interval",       true},
    {u"interval_closed_open", closed,       u"the interval from $0 included to $1 excluded",       nullptr,               nullptr,                 0,    nullptr,               false},
    {u"interval_open_closed", closed,       u"the interval from $0 excluded to $1 included",       nullptr,               nullptr,                 0,    nullptr,               false},
    {u"sum",                  big_operator, u"the sum from $1 to $2 of $0:1001",                   nullptr,               nullptr,                 0,    u"end sum",            true},
    {u"product",              big_operator, u"the product from $1 to $2 of $0:1001",               nullptr,               nullptr,                 0,    u"end product",        true},
    {u"int",                  big_operator, u"the integral of $0:1001 d $1",                       nullptr,               nullptr,                 0,    nullptr,               false},
    {u"defint",               big_operator, u"the integral from $2 to $3 of $0:1001 d $1",         nullptr,               nullptr,                 0,    nullptr,               false},
    {u"oint",                 big_operator, u"the contour integral over $2 of $0:1001 d $1",       nullptr,               nullptr,                 0,    nullptr,               false},
    {u"limit",                big_operator, u"the limit as $1 tends to $2 of $0:1001",             nullptr,               nullptr,                 0,    u"end limit",          true},
    {u"diff",                 fraction,     u"the derivative of $0 with respect to $1",            nullptr,               u"d $0 by d $1",         0,    nullptr,               false},
    {u"partialdiff",          fraction,     u"the partial derivative of $0 with respect to $1",    nullptr,           u"partial $0 by partial $1", 0,    nullptr,               false},
    {u"grad",                 function,     u"the gradient of $0:2501",                            nullptr,               nullptr,                 0,    u"end gradient",       true},
    {u"divergence",           function,     u"the divergence of $0:2501",                          nullptr,               nullptr,                 0,    u"end divergence",     true},
    {u"curl",                 function,     u"the curl of $0:2501",                                nullptr,               nullptr,                 0,    u"end curl",           true},
    {u"joinsymb",             closed,       u"$0*",                                                u" ",                  nullptr,                 0,    nullptr,               false},
    {u"missingTemplate",      closed,       u"an unknown element of $0*",                          u", ",                 nullptr,                 0,    u"end unknown element",true},
    // Accents on identifiers.
    {u"prime_accent",         closed,       u"$0 prime",                                           nullptr,               nullptr,                 0,    nullptr,               false},
    {u"ast_accent",           closed,       u"$0 star",                                            nullptr,               nullptr,                 0,    nullptr,               false},
    {u"overbar_accent",       closed,       u"$0 bar",                                             nullptr,               nullptr,                 0,    nullptr,               false},
    {u"underbar_accent",      closed,       u"$0 underbar",                                        nullptr,               nullptr,                 0,    nullptr,               false},
    {u"circ_accent",          closed,       u"$0 hat",                                             nullptr,               nullptr,                 0,    nullptr,               false},
    {u"tilde_accent",         closed,       u"$0 tilde",                                           nullptr,               nullptr,                 0,    nullptr,               false},
    {u"rarr_accent",          closed,       u"vector $0",                                          nullptr,               nullptr,                 0,    nullptr,               false},
    {u"dot_accent",           closed,       u"$0 dot",                                             nullptr,               nullptr,                 0,    nullptr,               false},
    {u"die_accent",           closed,       u"$0 double dot",                                      nullptr,               nullptr,                 0,    nullptr,               false},
    {u"tdot_accent",          closed,       u"$0 triple dot",                                      nullptr,               nullptr,                 0,    nullptr,               false},
};

// Grids: what is said before the cells ("%r" and "%c" are the numbers of rows and columns), how a
// row is read ("%i" is its number, "$k" its cell k, "$*" all its cells joined by commas), what is
// said between rows, and at the end when more follows. A row pattern that names cell k is used
// only when the grid has exactly `columns` columns; otherwise rows are read as "row %i: $*".
struct GridPhrase
{
    wchar const *name;
    wchar const *heading;
    wchar const *row;
    std::size_t columns;
    wchar const *row_separator;
    wchar const *end;
};

constexpr GridPhrase grid_table[] = {
    // name            heading                         row               columns  row separator  end
    {u"matrix",        u"the %r by %c matrix, ",       u"row %i: $*",    0,       u"; ",         u"end matrix"},
    {u"determinant",   u"the %r by %c determinant, ",  u"row %i: $*",    0,       u"; ",         u"end determinant"},
    {u"array",         u"the %r by %c array, ",        u"row %i: $*",    0,       u"; ",         u"end array"},
    {u"vector",        u"the vector ",                 u"$*",            0,       u", ",         u"end vector"},
    {u"piecewise",     u"the cases: ",                 u"$0 if $1",      2,       u"; ",         u"end cases"},
    {u"system",        u"the system of equations: ",   u"$0 equals $1",  2,       u"; ",         u"end system"},
};

// Characters by the name the formula writes them with: Greek letters, signs, the number sets.
struct CharPhrase
{
    wchar const *name;
    wchar const *spoken;
};

constexpr CharPhrase char_table[] = {
    // name       spoken
    {u"alpha",    u"alpha"},
    {u"beta",     u"beta"},
    {u"gamma",    u"gamma"},
    {u"delta",    u"delta"},
    {u"epsilon",  u"epsilon"},
    {u"epsi",     u"epsilon"},
    {u"epsiv",    u"epsilon"},
    {u"varepsilon", u"epsilon"},
    {u"zeta",     u"zeta"},
    {u"eta",      u"eta"},
    {u"theta",    u"theta"},
    {u"thetav",   u"theta"},
    {u"thetasym", u"theta"},
    {u"vartheta", u"theta"},
    {u"iota",     u"iota"},
    {u"kappa",    u"kappa"},
    {u"lambda",   u"lambda"},
    {u"mu",       u"mu"},
    {u"nu",       u"nu"},
    {u"xi",       u"xi"},
    {u"omicron",  u"omicron"},
    {u"pi",       u"pi"},
    {u"piv",      u"pi"},
    {u"varpi",    u"pi"},
    {u"rho",      u"rho"},
    {u"sigma",    u"sigma"},
    {u"sigmaf",   u"sigma"},
    {u"sigmav",   u"sigma"},
    {u"varsigma", u"sigma"},
    {u"tau",      u"tau"},
    {u"upsilon",  u"upsilon"},
    {u"upsi",     u"upsilon"},
    {u"phi",      u"phi"},
    {u"phiv",     u"phi"},
    {u"varphi",   u"phi"},
    {u"straightphi", u"phi"},
    {u"chi",      u"chi"},
    {u"psi",      u"psi"},
    {u"omega",    u"omega"},
    {u"Gamma",    u"capital gamma"},
    {u"Delta",    u"capital delta"},
    {u"Theta",    u"capital theta"},
    {u"Lambda",   u"capital lambda"},
    {u"Xi",       u"capital xi"},
    {u"Pi",       u"capital pi"},
    {u"Sigma",    u"capital sigma"},
    {u"Upsi",     u"capital upsilon"},
    {u"upsih",    u"capital upsilon"},
    {u"Phi",      u"capital phi"},
    {u"Psi",      u"capital psi"},
    {u"Omega",    u"capital omega"},
    {u"ohm",      u"capital omega"},
    {u"infin",    u"infinity"},
    {u"hellip",   u"dot dot dot"},
    {u"dots",     u"dot dot dot"},
    {u"prime",    u"prime"},
    {u"Prime",    u"double prime"},
    {u"part",     u"partial"},
    {u"PartialD", u"partial"},
    {u"nabla",    u"del"},
    {u"Del",      u"del"},
    {u"emptyv",   u"the empty set"},
    {u"varnothing", u"the empty set"},
    {u"aleph",    u"aleph"},
    {u"deg",      u"degrees"},
    {u"plusmn",   u"plus or minus"},
    {u"minus",    u"minus"},
    {u"times",    u"times"},
    {u"sdot",     u"dot"},
    {u"divide",   u"divided by"},
    {u"ang",      u"angle"},
    {u"perp",     u"perpendicular"},
    {u"ee",       u"e"},
    {u"ii",       u"i"},
    {u"dd",       u"d"},
    {u"DD",       u"D"},
    {u"Copf",     u"the complex numbers"},
    {u"Nopf",     u"the natural numbers"},
    {u"Qopf",     u"the rational numbers"},
    {u"Ropf",     u"the real numbers"},
    {u"Zopf",     u"the integers"},
};

// Characters of text runs that have a spoken name; the Greek letters are found by their codes.
struct UnicodePhrase
{
    wchar code;
    wchar const *spoken;
};

constexpr UnicodePhrase unicode_table[] = {
    // code      spoken
    {u'\u00B1',  u"plus or minus"},
    {u'\u00B7',  u"dot"},
    {u'\u00D7',  u"times"},
    {u'\u2026',  u"dot dot dot"},
    {u'\u2032',  u"prime"},
    {u'\u2033',  u"double prime"},
    {u'\u2202',  u"partial"},
    {u'\u2207',  u"del"},
    {u'\u2212',  u"minus"},
    {u'\u221E',  u"infinity"},
    {u'\u2102',  u"the complex numbers"},
    {u'\u2115',  u"the natural numbers"},
    {u'\u211A',  u"the rational numbers"},
    {u'\u211D',  u"the real numbers"},
    {u'\u2124',  u"the integers"},
};

// The Greek alphabet from U+03B1 on; the capitals lie 0x20 lower, where U+03A2 is unassigned.
constexpr wchar const *greek_letters[] = {
    u"alpha", u"beta", u"gamma", u"delta", u"epsilon", u"zeta", u"eta", u"theta", u"iota", u"kappa",
    u"lambda", u"mu", u"nu", u"xi", u"omicron", u"pi", u"rho", u"sigma", u"sigma", u"tau", u"upsilon",
    u"phi", u"chi", u"psi", u"omega",
};

// The ordinals that name the index of a root.
constexpr wchar const *root_ordinals[] = {
    nullptr, nullptr, u"square", u"cube", u"fourth", u"fifth", u"sixth", u"seventh", u"eighth", u"ninth", u"tenth",
};

struct Spoken
{
    wstring text;
    int strength = closed;
    // One word or a short name: an atom, perhaps with an accent, a minus, a one-word subscript or
    // parentheses around it.
    bool word = false;
    // What the reading still owes when more follows it, innermost first: an end cue such as
    // "end root", or an empty text for a comma's pause.
    std::vector<wstring> owed;
};

Spoken read(MathNode *node);

bool ends_with(wstring const &text, wstring const &tail)
{
    return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

wstring spoken_name(wstring const &name)
{
    for (CharPhrase const &row : char_table)
        if (name == row.name)
            return row.spoken;
    // A double-struck capital other than the number sets.
    if (name.size() == 4 && ends_with(name, u"opf"))
        return u"double-struck " + name.substr(0, 1);
    return name;
}

wstring spoken_unicode(wchar code)
{
    if (code >= 0x03B1 && code <= 0x03C9)
        return greek_letters[code - 0x03B1];
    if (code >= 0x0391 && code <= 0x03A9 && code != 0x03A2)
        return u"capital " + wstring(greek_letters[code - 0x0391]);
    for (UnicodePhrase const &row : unicode_table)
        if (row.code == code)
            return row.spoken;
    return wstring(1, code);
}

// An atom's characters: plain ones as they stand, next to each other, and each named one as its
// spoken name, a word of its own.
wstring atom_text(MathNode *node)
{
    if (typeid(*node) == typeid(MathDummyNode))
        return u"blank";
    MathString const &text = node->text();
    wstring out;
    bool after_name = false;
    for (std::size_t run = 0; run < text.run_count(); ++run) {
        MathString::Font const font = text.run_font(run);
        for (std::size_t i = text.run_start(run); i < text.run_end(run); ++i) {
            wchar const code = text.at(i);
            wstring spoken;
            if (font == MathString::f_upright || font == MathString::f_text) {
                spoken = spoken_unicode(code);
            } else {
                wstring const entity = CharNames::entity(font, code);
                spoken = entity.size() > 2 ? spoken_name(entity.substr(1, entity.size() - 2)) : wstring(1, code);
            }
            bool const name = spoken.size() > 1;
            if (!out.empty() && (name || after_name))
                out += u" ";
            out += spoken;
            after_name = name;
        }
    }
    // A number is held with the user's decimal separator; English reads a decimal point, and a
    // comma would read as thousands.
    if (dynamic_cast<MathNumberNode *>(node) != nullptr)
        replace_first(out, decimal_separator(), u'.');
    return out;
}

bool is_digit(wchar c) { return c >= u'0' && c <= u'9'; }

// Puts the cues that a reading owes behind it, because more follows: a comma, and each cue.
void settle(wstring &out, std::vector<wstring> &owed)
{
    if (owed.empty())
        return;
    out += u",";
    for (wstring const &cue : owed)
        if (!cue.empty())
            out += u" " + cue + u",";
    owed.clear();
}

Spoken in_place(Spoken child, int needed)
{
    if (child.strength >= needed)
        return child;
    Spoken out;
    out.text = u"open paren " + child.text + u" close paren";
    return out;
}

// The number in an atom's text, or -1.
long atom_number(MathNode *node)
{
    if (dynamic_cast<MathNumberNode *>(node) == nullptr)
        return -1;
    MathString const &text = node->text();
    long value = 0;
    for (std::size_t i = 0; i < text.length(); ++i) {
        if (!is_digit(text.at(i)) || value > 1000)
            return -1;
        value = value * 10 + (text.at(i) - u'0');
    }
    return text.length() > 0 ? value : -1;
}

wstring exponent_text(MathNode *child, Spoken const &spoken, bool &closed_tail)
{
    long const n = atom_number(child);
    closed_tail = n == 2 || n == 3;
    if (n == 2)
        return u"squared";
    if (n == 3)
        return u"cubed";
    return u"to the power " + spoken.text;
}

wstring root_index_text(MathNode *child, Spoken const &spoken)
{
    long const n = atom_number(child);
    if (n >= 0 && n < static_cast<long>(sizeof root_ordinals / sizeof root_ordinals[0]) && root_ordinals[n])
        return u"the " + wstring(root_ordinals[n]) + u" root";
    if (dynamic_cast<MathAtomNode *>(child) != nullptr && spoken.text.size() == 1)
        return u"the " + spoken.text + u"-th root";
    return u"the root with index " + spoken.text + u",";
}

bool words_from(std::vector<Spoken> const &children, std::size_t first)
{
    for (std::size_t i = first; i < children.size(); ++i)
        if (!children[i].word)
            return false;
    return true;
}

bool closes(wstring const &literal)
{
    return literal[0] == u',' || literal.compare(0, 12, u" close paren") == 0;
}

bool owes(std::vector<wstring> const &owed, wchar const *cue)
{
    if (cue == nullptr)
        return false;
    for (wstring const &c : owed)
        if (c == cue)
            return true;
    return false;
}

Spoken expand(MathNode *node, Phrase const &row)
{
    std::vector<Spoken> children;
    for (long i = 0; i < node->count(); ++i)
        children.push_back(read(node->child(static_cast<int>(i))));
    long const count = static_cast<long>(children.size());
    bool const simple = row.simple != nullptr && words_from(children, static_cast<std::size_t>(row.simple_from));

    Spoken out;
    out.strength = row.strength;
    std::vector<wstring> pending;  // owed by the child read last
    bool last_word = true;
    bool closed_tail = false;
    bool ends_in_child = false;
    for (wchar const *p = simple ? row.simple : row.pattern; *p != 0;) {
        if (*p != u'$') {
            wstring literal;
            while (*p != 0 && *p != u'$')
                literal += *p++;
            // A comma or a closing parenthesis in the pattern ends the child before it clearly
            // enough, unless that child owes the same end as this reading: then the listener needs
            // to hear which one ends.
            if (!closes(literal) || owes(pending, row.end))
                settle(out.text, pending);
            pending.clear();
            out.text += literal;
            ends_in_child = false;
            continue;
        }
        long first = 0;
        for (++p; is_digit(*p); ++p)
            first = first * 10 + (*p - u'0');
        wchar const kind = (*p == u'*' || *p == u'^' || *p == u'#') ? *p++ : u'\0';
        int needed = 0;
        if (*p == u':' && is_digit(p[1]))
            for (++p; is_digit(*p); ++p)
                needed = needed * 10 + (*p - u'0');
        long const last = kind == u'*' ? count - 1 : first;
        for (long i = first; i <= last && i < count; ++i) {
            MathNode *node_i = node->child(static_cast<int>(i));
            if (i > first) {
                // Nothing that ends in a root or a sum reaches over a relation or a logical
                // operator: a pause is enough to part the sides.
                if (row.strength > sequence && row.strength <= relation && !pending.empty())
                    pending.assign(1, wstring());
                settle(out.text, pending);
                // Two numbers side by side are a product, not one longer number.
                bool const digits = row.separator != nullptr && wstring(row.separator) == u" " && !out.text.empty() &&
                                    is_digit(out.text.back()) && !children[i].text.empty() &&
                                    is_digit(children[i].text[0]);
                out.text += digits ? u" times " : row.separator != nullptr ? row.separator : u"";
            }
            // Each child is read into one slot: its reading can be moved there.
            Spoken child = in_place(std::move(children[static_cast<std::size_t>(i)]), needed);
            closed_tail = false;
            if (kind == u'^') {
                out.text += exponent_text(node_i, child, closed_tail);
            } else if (kind == u'#') {
                out.text += root_index_text(node_i, child);
            } else {
                out.text += child.text;
            }
            pending = kind == u'#' ? std::vector<wstring>() : std::move(child.owed);
            last_word = child.word;
            ends_in_child = true;
        }
    }
    out.owed = std::move(pending);
    if (simple) {
        if (ends_in_child)
            out.owed.emplace_back();
    } else if (row.end != nullptr && (!last_word || row.simple != nullptr)) {
        out.owed.emplace_back(row.end);
    } else if (row.pause && !closed_tail) {
        out.owed.emplace_back();
    }
    wstring const name = row.name;
    out.word = (ends_with(name, u"_accent") || name == u"subscript" || name == u"fenced") && words_from(children, 0);
    if (name == u"set" && count == 0)
        out = Spoken{u"the empty set", closed, true, {}};
    return out;
}

// A sum with a sign on every operand; a negation is a sum of one operand signed minus.
Spoken read_sum(MathPlusNode *node)
{
    Spoken out;
    out.strength = sum;
    std::vector<wstring> pending;
    for (long i = 0; i < node->count(); ++i) {
        bool const plus = node->plus_sign(static_cast<std::size_t>(i));
        if (i > 0) {
            settle(out.text, pending);
            out.text += plus ? u" plus " : u" minus ";
        } else if (!plus) {
            out.text += u"minus ";
        }
        Spoken child = in_place(read(node->child(static_cast<int>(i))), sum + 1);
        out.text += child.text;
        pending = std::move(child.owed);
        out.word = node->count() == 1 && !plus && child.word;
    }
    out.owed = std::move(pending);
    return out;
}

wstring number_text(std::size_t n)
{
    wstring digits;
    do {
        digits.insert(digits.begin(), static_cast<wchar>(u'0' + n % 10));
        n /= 10;
    } while (n > 0);
    return digits;
}

// The text with "%r", "%c" and "%i" put in.
wstring fill(wchar const *text, std::size_t rows, std::size_t cols, std::size_t row)
{
    wstring out;
    for (wchar const *p = text; *p != 0; ++p) {
        if (*p == u'%' && (p[1] == u'r' || p[1] == u'c' || p[1] == u'i')) {
            ++p;
            out += number_text(*p == u'r' ? rows : *p == u'c' ? cols : row);
        } else {
            out += *p;
        }
    }
    return out;
}

Spoken read_grid(MathTableNode *node)
{
    wstring const name = node->content_type_name();
    GridPhrase row{nullptr, nullptr, u"row %i: $*", 0, u"; ", nullptr};
    wstring heading = u"the %r by %c " + name + u", ";
    wstring end = u"end " + name;
    for (GridPhrase const &g : grid_table)
        if (name == g.name) {
            row = g;
            heading = g.heading;
            end = g.end;
        }
    std::size_t const cols = node->n_cols() > 0 ? node->n_cols() : 1;
    std::size_t const count = static_cast<std::size_t>(node->count());
    std::size_t const rows = (count + cols - 1) / cols;
    if (row.columns != 0 && row.columns != cols)
        row.row = u"row %i: $*";

    Spoken out;
    out.text = fill(heading.c_str(), node->n_rows(), node->n_cols(), 0);
    std::vector<wstring> pending;
    for (std::size_t r = 0; r < rows; ++r) {
        if (r > 0) {
            settle(out.text, pending);
            out.text += row.row_separator;
        }
        wstring const pattern = fill(row.row, rows, cols, r + 1);
        for (std::size_t k = 0; k < pattern.size(); ++k) {
            if (pattern[k] != u'$' || k + 1 == pattern.size()) {
                settle(out.text, pending);
                out.text += pattern[k];
                continue;
            }
            std::size_t first = 0, last = cols - 1;
            if (pattern[k + 1] != u'*')
                first = last = static_cast<std::size_t>(pattern[k + 1] - u'0');
            ++k;
            for (std::size_t c = first; c <= last && r * cols + c < count; ++c) {
                if (c > first) {
                    settle(out.text, pending);
                    out.text += u", ";
                }
                Spoken cell = read(node->child(static_cast<int>(r * cols + c)));
                out.text += cell.text;
                pending = std::move(cell.owed);
            }
        }
    }
    out.owed = std::move(pending);
    out.owed.push_back(end);
    return out;
}

// A kind the table does not know: a function of its operands, by its content name.
Spoken read_call(MathNode *node)
{
    wstring name = node->content_type_name();
    for (wchar &c : name)
        if (c == u'_')
            c = u' ';
    if (node->count() == 0)
        return Spoken{name, closed, true, {}};
    wstring const simple = name + u" of $0*";
    wstring const full = name + u" of open paren $0* close paren";
    Phrase const row{u"", call, full.c_str(), u", ", simple.c_str(), 0, nullptr, false};
    return expand(node, row);
}

Spoken read(MathNode *node)
{
    if (node == nullptr)
        return Spoken{};
    if (dynamic_cast<MathAtomNode *>(node) != nullptr)
        return Spoken{atom_text(node), closed, true, {}};
    if (auto *plus = dynamic_cast<MathPlusNode *>(node))
        return read_sum(plus);
    if (auto *table = dynamic_cast<MathTableNode *>(node))
        return read_grid(table);
    wstring const name = node->content_type_name();
    for (Phrase const &row : phrase_table)
        if (name == row.name)
            return expand(node, row);
    return read_call(node);
}

// One space between words, none before a comma, no comma twice, none at either end.
wstring tidy(wstring const &text)
{
    wstring out;
    for (wchar c : text) {
        if (c == u' ' && (out.empty() || out.back() == u' '))
            continue;
        if (c == u',') {
            while (!out.empty() && out.back() == u' ')
                out.pop_back();
            if (out.empty() || out.back() == u',' || out.back() == u':' || out.back() == u';')
                continue;
        }
        if ((c == u';' || c == u':') && !out.empty() && out.back() == u',')
            out.pop_back();
        out += c;
    }
    while (!out.empty() && (out.back() == u' ' || out.back() == u','))
        out.pop_back();
    return out;
}

}  // namespace

wstring spoken_text(MathNode *node) { return tidy(read(node).text); }

bool has_spoken_phrase(wstring const &name)
{
    for (Phrase const &row : phrase_table)
        if (name == row.name)
            return true;
    for (GridPhrase const &row : grid_table)
        if (name == row.name)
            return true;
    return false;
}

}  // namespace Tavi
