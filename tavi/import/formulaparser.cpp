// The formula parser: recursive descent over the tokens, one function per binding level, from the
// comma of a sequence down to scripts and primaries. The levels follow the priorities of the
// default setup (sequence, quantifiers, implication, or, and, relations, not, union, intersection,
// sums, products, big operators, functions, quotients, powers, factorials); parentheses the
// priorities ask for only group, those they don't ask for stay as "fenced" nodes.
#include "tavi/import/formulaparser.h"

#include <cctype>
#include <typeinfo>

#include "tavi/import/importer.h"
#include "tavi/import/symbols.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/templates/accenttemplate.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/subscripttemplate.h"
#include "tavi/math/templates/subsupscripttemplate.h"
#include "tavi/math/templates/superscripttemplate.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

namespace {

constexpr double no_parens = MathTemplate::no_parens_priority;
constexpr int max_nesting = 200;

enum class Level { implies, logic_or, logic_and, relation, set_union, set_intersect, times };

struct InfixRow
{
    char const *symbol;
    char const *tmp;
    Level level;
};

// Infix operators and the templates they make. A template of varying arity takes a chain of the
// same operator as one node (a = b = c, a \cdot b \cdot c); the others nest to the left.
constexpr InfixRow infix_operators[] = {
//   symbol            template        level
    {"Rightarrow",     "implies",      Level::implies},
    {"implies",        "implies",      Level::implies},
    {"Longrightarrow", "implies",      Level::implies},
    {"Leftrightarrow", "equivalent",   Level::implies},
    {"iff",            "equivalent",   Level::implies},
    {"vee",            "or",           Level::logic_or},
    {"lor",            "or",           Level::logic_or},
    {"wedge",          "and",          Level::logic_and},
    {"land",           "and",          Level::logic_and},
    {"=",              "eq",           Level::relation},
    {"ne",             "neq",          Level::relation},
    {"neq",            "neq",          Level::relation},
    {"<",              "lt",           Level::relation},
    {">",              "gt",           Level::relation},
    {"le",             "leq",          Level::relation},
    {"leq",            "leq",          Level::relation},
    {"leqslant",       "leq",          Level::relation},
    {"ge",             "geq",          Level::relation},
    {"geq",            "geq",          Level::relation},
    {"geqslant",       "geq",          Level::relation},
    {"approx",         "approx",       Level::relation},
    {"equiv",          "equivalent",   Level::relation},
    {"in",             "in",           Level::relation},
    {"notin",          "notin",        Level::relation},
    {"subseteq",       "subset",       Level::relation},
    {"subset",         "prsubset",     Level::relation},
    {"to",             "tendsto",      Level::relation},
    {"rightarrow",     "tendsto",      Level::relation},
    {"cup",            "union",        Level::set_union},
    {"setminus",       "setdiff",      Level::set_union},
    {"cap",            "intersect",    Level::set_intersect},
    {"cdot",           "times",        Level::times},
    {"cdotp",          "times",        Level::times},
    {"*",              "times",        Level::times},
    {"times",          "vectorproduct",Level::times},
    {"circ",           "compose",      Level::times},
    {"div",            "divide",       Level::times},
};

// Identifiers that a parenthesis after them applies as functions: f(x), \Gamma(z). A decorated
// capital (R_z, F') is one too.
char const *const function_letters[] = {
    "f", "g", "h", "F", "G", "H", "&Gamma;", "&Phi;", "&Psi;", "&phi;", "&varphi;", "&psi;", "&zeta;",
};

// The fences that close each opening one.
struct FenceRow
{
    char const *open;
    char const *close;
};
constexpr FenceRow fences[] = {
    {"(", ")"}, {"(", "]"}, {"[", "]"}, {"[", ")"}, {"{", "}"}, {"|", "|"},
    {"lfloor", "rfloor"}, {"lceil", "rceil"},
};

// Intervals by their two fences.
struct IntervalRow
{
    char const *open;
    char const *close;
    char const *tmp;
};
constexpr IntervalRow intervals[] = {
    {"[", "]", "interval"},
    {"(", ")", "interval_open"},
    {"[", ")", "interval_closed_open"},
    {"(", "]", "interval_open_closed"},
};

// A list that is one group (an mrow of MathML) stands for the group's contents.
TokenList const &flat(TokenList const &list)
{
    TokenList const *l = &list;
    while (l->size() == 1 && (*l)[0].kind == Token::Kind::group)
        l = &(*l)[0].args[0];
    return *l;
}

class Parser
{
public:
    explicit Parser(TemplateTable &table) : table_(table) {}

    ImportNodePtr parse(TokenList const &tokens)
    {
        auto node = sublist(tokens, SourcePos{0, 1});
        settle(node, 0);
        return node;
    }

private:
    TemplateTable &table_;
    TokenList const *list_ = nullptr;
    std::size_t i_ = 0;
    SourcePos end_;
    int abs_depth_ = 0;
    int integral_depth_ = 0;
    int depth_ = 0;

    struct Nesting
    {
        explicit Nesting(Parser &p, SourcePos const &pos) : p_(p)
        {
            if (++p_.depth_ > max_nesting)
                p_.fail("Formula nested too deeply", pos);
        }
        ~Nesting() { --p_.depth_; }
        Parser &p_;
    };

    [[noreturn]] void fail(std::string const &what, SourcePos const &pos) const
    {
        throw ImportError(what + where(pos), pos.line, pos.column);
    }

    Token const *peek(std::size_t ahead = 0) const
    {
        return i_ + ahead < list_->size() ? &(*list_)[i_ + ahead] : nullptr;
    }

    static bool is(Token const *t, char const *name)
    {
        return t && t->kind == Token::Kind::symbol && t->name == name;
    }

    SourcePos here() const { return peek() ? peek()->pos : end_; }

    MathTemplate *find(std::string const &tmp) const { return table_.get_template(Kxt::to_ustring(tmp).c_str()); }

    double priority(std::string const &tmp) const
    {
        MathTemplate *t = find(tmp);
        return t ? t->priority() : no_parens;
    }

    double priority_of(ImportNode const &node) const
    {
        if (node.kind == ImportNode::Kind::expr)
            return priority(node.name);
        if (node.kind == ImportNode::Kind::plus)
            return priority("plus");
        return no_parens;
    }

    // Parentheses around `node`, now that its place is known: they grouped when the priorities
    // call for them there (and go), and stand for a "fenced" node when they don't and were sized
    // or hold a single operand.
    void settle(ImportNodePtr &node, double required) const
    {
        if (node->parens == ImportNode::Parens::none)
            return;
        auto const parens = node->parens;
        node->parens = ImportNode::Parens::none;
        double const own = priority_of(*node);
        if (own > required && (parens == ImportNode::Parens::sized || own >= no_parens)) {
            SourcePos const pos = node->pos;
            std::vector<ImportNodePtr> kids;
            kids.push_back(std::move(node));
            node = ImportNode::expr("fenced", std::move(kids));
            node->pos = pos;
        }
    }

    ImportNodePtr make(std::string const &tmp, std::vector<ImportNodePtr> kids, double required, SourcePos pos) const
    {
        for (auto &kid : kids)
            settle(kid, required);
        auto node = ImportNode::expr(tmp, std::move(kids));
        node->pos = pos;
        return node;
    }

    ImportNodePtr make(std::string const &tmp, ImportNodePtr a, double required, SourcePos pos) const
    {
        std::vector<ImportNodePtr> kids;
        kids.push_back(std::move(a));
        return make(tmp, std::move(kids), required, pos);
    }

    ImportNodePtr make(std::string const &tmp, ImportNodePtr a, ImportNodePtr b, double required, SourcePos pos) const
    {
        std::vector<ImportNodePtr> kids;
        kids.push_back(std::move(a));
        kids.push_back(std::move(b));
        return make(tmp, std::move(kids), required, pos);
    }

    ImportNodePtr placeholder(SourcePos pos) const
    {
        auto node = ImportNode::placeholder();
        node->pos = pos;
        return node;
    }

    // A list of tokens of its own (braces, an argument, a script, a cell) as one formula.
    ImportNodePtr sublist(TokenList const &list, SourcePos owner)
    {
        Nesting nesting(*this, owner);
        TokenList const *saved_list = list_;
        std::size_t const saved_i = i_;
        int const saved_abs = abs_depth_;
        SourcePos const saved_end = end_;
        list_ = &list;
        i_ = 0;
        abs_depth_ = 0;
        end_ = list.empty() ? owner : list.back().pos;
        ImportNodePtr node;
        if (list.empty()) {
            node = placeholder(owner);
        } else {
            node = sequence();
            if (Token const *t = peek())
                fail(unexpected(*t), t->pos);
        }
        list_ = saved_list;
        i_ = saved_i;
        abs_depth_ = saved_abs;
        end_ = saved_end;
        return node;
    }

    std::string unexpected(Token const &t) const
    {
        if (t.kind == Token::Kind::symbol && (t.role == Token::Role::close || t.name == ")" || t.name == "]" ||
                                              t.name == "}" || t.name == "rfloor" || t.name == "rceil"))
            return "Unbalanced fences: " + t.spelling + " closes nothing";
        return "Unexpected " + t.spelling;
    }

    // Where an operand may be left out: the end, a closing fence, a separator.
    bool at_stop() const
    {
        Token const *t = peek();
        if (!t)
            return true;
        if (t->kind != Token::Kind::symbol)
            return false;
        if (t->role == Token::Role::close)
            return true;
        static char const *const stops[] = {")", "]", "}", "rfloor", "rceil", ",", "mid", ":"};
        for (char const *s : stops)
            if (t->name == s)
                return true;
        return t->name == "|" && abs_depth_ != 0;
    }

    std::vector<ImportNodePtr> items()
    {
        std::vector<ImportNodePtr> out;
        out.push_back(quantified());
        while (is(peek(), ",")) {
            ++i_;
            out.push_back(quantified());
        }
        return out;
    }

    // The items between two fences; when they are one group (MathML's mrow inside the fences), the
    // group's commas still separate them.
    std::vector<ImportNodePtr> grouped_items()
    {
        Token const *g = peek();
        Token const *after = peek(1);
        if (!g || g->kind != Token::Kind::group || !after || after->kind != Token::Kind::symbol ||
            after->role == Token::Role::open || (!at_stop_token(*after) && after->role != Token::Role::close))
            return items();
        Nesting nesting(*this, g->pos);
        TokenList const *saved_list = list_;
        std::size_t const saved_i = i_ + 1;
        SourcePos const saved_end = end_;
        list_ = &g->args[0];
        i_ = 0;
        end_ = list_->empty() ? g->pos : list_->back().pos;
        std::vector<ImportNodePtr> out;
        if (list_->empty())
            out.push_back(placeholder(g->pos));
        else
            out = items();
        if (Token const *rest = peek())
            fail(unexpected(*rest), rest->pos);
        list_ = saved_list;
        i_ = saved_i;
        end_ = saved_end;
        return out;
    }

    bool at_stop_token(Token const &t) const
    {
        static char const *const closers[] = {")", "]", "}", "rfloor", "rceil", "|"};
        for (char const *c : closers)
            if (t.name == c)
                return true;
        return false;
    }

    ImportNodePtr sequence()
    {
        SourcePos const pos = here();
        auto list = items();
        if (list.size() == 1)
            return std::move(list[0]);
        return make("seq", std::move(list), priority("seq"), pos);
    }

    // \forall and \exists: the bound variable with its condition, an optional colon, the body.
    ImportNodePtr quantified()
    {
        Token const *q = peek();
        if (!is(q, "forall") && !is(q, "exists"))
            return implication();
        ++i_;
        auto condition = relation();
        if (is(peek(), ":") || is(peek(), ",") || is(peek(), "mid"))
            ++i_;
        auto body = at_stop() ? placeholder(here()) : quantified();
        std::string const tmp = q->name;
        return make(tmp, std::move(condition), std::move(body), priority(tmp), q->pos);
    }

    InfixRow const *infix(Level level) const
    {
        Token const *t = peek();
        if (!t || t->kind != Token::Kind::symbol)
            return nullptr;
        for (auto const &row : infix_operators)
            if (row.level == level && t->name == row.symbol)
                return &row;
        return nullptr;
    }

    ImportNodePtr combine(ImportNodePtr left, InfixRow const &row, ImportNodePtr right, SourcePos pos) const
    {
        double const p = priority(row.tmp);
        MathTemplate *t = find(row.tmp);
        if (left->is_expr(row.tmp) && left->parens == ImportNode::Parens::none && t && t->varying_arity()) {
            settle(right, p);
            left->kids.push_back(std::move(right));
            return left;
        }
        return make(row.tmp, std::move(left), std::move(right), p, pos);
    }

    ImportNodePtr level(Level level, ImportNodePtr (Parser::*next)())
    {
        auto left = (this->*next)();
        while (InfixRow const *row = infix(level)) {
            SourcePos const pos = peek()->pos;
            ++i_;
            auto right = (this->*next)();
            left = combine(std::move(left), *row, std::move(right), pos);
        }
        return left;
    }

    ImportNodePtr implication() { return level(Level::implies, &Parser::disjunction); }
    ImportNodePtr disjunction() { return level(Level::logic_or, &Parser::conjunction); }
    ImportNodePtr conjunction() { return level(Level::logic_and, &Parser::relation); }
    ImportNodePtr relation() { return level(Level::relation, &Parser::negation); }
    ImportNodePtr set_union() { return level(Level::set_union, &Parser::set_intersection); }
    ImportNodePtr set_intersection() { return level(Level::set_intersect, &Parser::sum); }
    ImportNodePtr product() { return level(Level::times, &Parser::juxtaposition); }

    ImportNodePtr negation()
    {
        Token const *t = peek();
        if (!is(t, "neg") && !is(t, "lnot"))
            return set_union();
        ++i_;
        auto operand = negation();
        return make("not", std::move(operand), priority("not"), t->pos);
    }

    ImportNodePtr finish_sum(std::vector<ImportNodePtr> &terms, std::string const &signs, SourcePos pos) const
    {
        if (terms.size() == 1 && signs == "+")
            return std::move(terms[0]);
        auto node = ImportNode::make(ImportNode::Kind::plus);
        node->sgn = signs;
        node->pos = pos;
        for (auto &term : terms) {
            settle(term, priority("plus"));
            node->kids.push_back(std::move(term));
        }
        return node;
    }

    // Terms with their signs, and \pm between two of them.
    ImportNodePtr sum()
    {
        SourcePos const pos = here();
        auto sign = [](Token const *t) { return is(t, "+") ? '+' : is(t, "-") ? '-' : '\0'; };
        std::vector<ImportNodePtr> terms;
        std::string signs;
        char first = sign(peek());
        if (first)
            ++i_;
        terms.push_back(product());
        signs += first ? first : '+';
        for (;;) {
            Token const *t = peek();
            if (char const c = sign(t)) {
                ++i_;
                terms.push_back(product());
                signs += c;
            } else if (is(t, "pm")) {
                ++i_;
                auto left = finish_sum(terms, signs, pos);
                auto right = product();
                terms.clear();
                terms.push_back(make("plusminus", std::move(left), std::move(right), priority("plusminus"), t->pos));
                signs = "+";
            } else {
                break;
            }
        }
        return finish_sum(terms, signs, pos);
    }

    bool starts_operand(Token const *t) const
    {
        if (!t)
            return false;
        switch (t->kind) {
        case Token::Kind::atom:
        case Token::Kind::group:
        case Token::Kind::command:
        case Token::Kind::table: return true;
        case Token::Kind::sup:
        case Token::Kind::sub: return false;
        case Token::Kind::symbol: break;
        }
        if (t->role != Token::Role::either)
            return t->role == Token::Role::open;
        static char const *const openers[] = {"(", "[", "{", "lfloor", "lceil", "nabla", "operatorname",
                                              "sum", "prod", "int", "oint", "lim"};
        for (char const *o : openers)
            if (t->name == o)
                return true;
        if (t->name == "|")
            return abs_depth_ == 0;
        return is_function_name(t->name);
    }

    static bool is_letter(Token const *t, char const *plain)
    {
        return t && t->kind == Token::Kind::atom && t->atom->kind == ImportNode::Kind::ident && t->atom->plain == plain;
    }

    // The d of dx that ends the body of an integral.
    bool at_differential() const
    {
        return integral_depth_ > 0 && is_letter(peek(), "d") && peek(1) && peek(1)->kind == Token::Kind::atom;
    }

    // Factors side by side: an implicit product.
    ImportNodePtr juxtaposition()
    {
        SourcePos const pos = here();
        std::vector<ImportNodePtr> factors;
        factors.push_back(quotient());
        while (starts_operand(peek()) && !at_differential())
            factors.push_back(quotient());
        if (factors.size() == 1)
            return std::move(factors[0]);
        return make("implicit_times", std::move(factors), priority("implicit_times"), pos);
    }

    ImportNodePtr quotient()
    {
        auto left = postfix();
        while (is(peek(), "/")) {
            SourcePos const pos = peek()->pos;
            ++i_;
            auto right = postfix();
            left = make("divide", std::move(left), std::move(right), priority("divide"), pos);
        }
        return left;
    }

    static bool is_function_head(ImportNode const &node)
    {
        ImportNode const *n = &node;
        bool decorated = false;
        while ((n->kind == ImportNode::Kind::iacc || n->kind == ImportNode::Kind::isub ||
                n->kind == ImportNode::Kind::isup) &&
               !n->kids.empty() && n->parens == ImportNode::Parens::none) {
            n = n->kids[0].get();
            decorated = true;
        }
        if (n->kind != ImportNode::Kind::ident || n->parens != ImportNode::Parens::none)
            return false;
        for (char const *letter : function_letters)
            if (n->plain == letter)
                return true;
        return decorated && n->plain.size() == 1 && std::isupper(static_cast<unsigned char>(n->plain[0]));
    }

    static bool is_call_paren(Token const *t)
    {
        return is(t, "(") && t->role != Token::Role::close;
    }

    // A parenthesis, or a group that is one parenthesis (an mrow of MathML).
    static bool opens_call(Token const *t)
    {
        if (is_call_paren(t))
            return true;
        if (!t || t->kind != Token::Kind::group || t->args[0].size() < 2)
            return false;
        TokenList const &g = t->args[0];
        return is_call_paren(&g.front()) && g.back().kind == Token::Kind::symbol && g.back().name == ")";
    }

    std::vector<ImportNodePtr> call_arguments()
    {
        Token const *t = peek();
        if (t->kind == Token::Kind::group) {
            ++i_;
            TokenList const *saved_list = list_;
            std::size_t const saved_i = i_;
            SourcePos const saved_end = end_;
            list_ = &t->args[0];
            i_ = 0;
            auto args = call_arguments();
            if (Token const *rest = peek())
                fail(unexpected(*rest), rest->pos);
            list_ = saved_list;
            i_ = saved_i;
            end_ = saved_end;
            return args;
        }
        Nesting nesting(*this, t->pos);
        ++i_;
        int const saved_abs = abs_depth_;
        abs_depth_ = 0;
        std::vector<ImportNodePtr> args;
        if (is(peek(), ")"))
            args.push_back(placeholder(t->pos));
        else
            args = grouped_items();
        abs_depth_ = saved_abs;
        Token const *close = peek();
        if (!is(close, ")"))
            fail("Unbalanced fences: " + t->spelling + " is not closed", close ? close->pos : t->pos);
        ++i_;
        for (auto &arg : args)
            settle(arg, 0);
        return args;
    }

    ImportNodePtr postfix()
    {
        auto node = primary();
        for (;;) {
            Token const *t = peek();
            if (!t)
                break;
            if (is(t, "'")) {
                ++i_;
                node = accent("prime", std::move(node), t->pos);
            } else if (t->kind == Token::Kind::sub) {
                ++i_;
                auto script = sublist(t->args[0], t->pos);
                node = script_node(ImportNode::Kind::isub, std::move(node), std::move(script), t->pos);
            } else if (t->kind == Token::Kind::sup) {
                ++i_;
                auto script = sublist(t->args[0], t->pos);
                node = superscript(std::move(node), std::move(script), t->pos);
            } else if (is(t, "!")) {
                ++i_;
                node = make("factorial", std::move(node), priority("factorial"), t->pos);
            } else {
                break;
            }
        }
        bool const marked = is(peek(), "applyfunction");
        if (marked)
            ++i_;
        if ((marked || is_function_head(*node)) && opens_call(peek())) {
            SourcePos const pos = peek()->pos;
            auto args = call_arguments();
            args.insert(args.begin(), std::move(node));
            node = make("apply", std::move(args), 0, pos);
        } else if (marked) {
            SourcePos const pos = here();
            auto arg = postfix();
            node = make("apply", std::move(node), std::move(arg), no_parens - 1, pos);
        }
        return node;
    }

    ImportNodePtr script_node(ImportNode::Kind kind, ImportNodePtr base, ImportNodePtr script, SourcePos pos) const
    {
        settle(base, no_parens - 1);
        settle(script, 0);
        auto node = ImportNode::make(kind);
        node->pos = pos;
        node->kids.push_back(std::move(base));
        node->kids.push_back(std::move(script));
        return node;
    }

    ImportNodePtr accent(std::string const &name, ImportNodePtr base, SourcePos pos) const
    {
        settle(base, no_parens - 1);
        auto node = ImportNode::make(ImportNode::Kind::iacc, name);
        node->pos = pos;
        node->kids.push_back(std::move(base));
        return node;
    }

    // x^n is a power, e^x the exponential, and a function letter with an order in parentheses
    // (f^{(n)}) a decorated name.
    ImportNodePtr superscript(ImportNodePtr base, ImportNodePtr script, SourcePos pos) const
    {
        if (base->kind == ImportNode::Kind::ident && base->plain == "e" && base->parens == ImportNode::Parens::none)
            return make("exp", std::move(script), 0, pos);
        if (is_function_head(*base) && script->parens != ImportNode::Parens::none)
            return script_node(ImportNode::Kind::isup, std::move(base), std::move(script), pos);
        settle(base, priority("power"));
        settle(script, 0);
        std::vector<ImportNodePtr> kids;
        kids.push_back(std::move(base));
        kids.push_back(std::move(script));
        auto node = ImportNode::expr("power", std::move(kids));
        node->pos = pos;
        return node;
    }

    ImportNodePtr primary()
    {
        Token const *t = peek();
        if (!t) {
            if (i_ > 0)
                fail("Missing operand after " + (*list_)[i_ - 1].spelling, (*list_)[i_ - 1].pos);
            fail("Missing operand", end_);
        }
        Nesting nesting(*this, t->pos);
        switch (t->kind) {
        case Token::Kind::atom: {
            ++i_;
            auto node = clone_atom(*t->atom);
            node->pos = t->pos;
            return node;
        }
        case Token::Kind::group: ++i_; return sublist(t->args[0], t->pos);
        case Token::Kind::table: ++i_; return table(*t);
        case Token::Kind::command: ++i_; return command(*t);
        case Token::Kind::sup:
        case Token::Kind::sub: fail("Script " + t->spelling + " without a base", t->pos);
        case Token::Kind::symbol: break;
        }
        std::string const &name = t->name;
        if (t->role == Token::Role::open || name == "(" || name == "[" || name == "{" || name == "lfloor" ||
            name == "lceil" || (name == "|" && t->role != Token::Role::close && abs_depth_ <= 0))
            return bracket();
        if (name == "-" || name == "+") {
            ++i_;
            auto operand = postfix();
            if (name == "+")
                return operand;
            auto node = ImportNode::make(ImportNode::Kind::plus);
            node->sgn = "-";
            node->pos = t->pos;
            settle(operand, priority("plus"));
            node->kids.push_back(std::move(operand));
            return node;
        }
        if (name == "neg" || name == "lnot") {
            ++i_;
            return make("not", postfix(), priority("not"), t->pos);
        }
        if (name == "nabla")
            return nabla();
        if (name == "sum" || name == "prod" || name == "int" || name == "oint" || name == "lim")
            return big_operator();
        if (name == "operatorname" || is_function_name(name))
            return function();
        if (name == "applyfunction")
            fail("Function application without a function", t->pos);
        fail(infix_name(*t) ? "Missing operand before " + t->spelling : unexpected(*t), t->pos);
    }

    static bool infix_name(Token const &t)
    {
        for (auto const &row : infix_operators)
            if (t.name == row.symbol)
                return true;
        return t.name == "pm" || t.name == "/" || t.name == "," || t.name == "!" || t.name == "'";
    }

    static bool closes(std::string const &open, Token const &close)
    {
        for (auto const &row : fences)
            if (open == row.open && close.name == row.close)
                return true;
        return false;
    }

    // A fenced part: parentheses and brackets (grouping, an interval, a list, a matrix), bars
    // (absolute value), floors and ceilings, braces (a set or a set builder).
    ImportNodePtr bracket()
    {
        Token const &open = *peek();
        ++i_;
        bool const sized = open.role == Token::Role::open;
        std::string const o = open.name;
        int const saved_abs = abs_depth_;
        // Inside braces a bar separates a set builder's condition; elsewhere it opens |x|.
        abs_depth_ = o == "|" ? 1 : o == "{" ? -1 : 0;
        std::vector<ImportNodePtr> inner;
        ImportNodePtr condition;
        Token const *c = peek();
        bool const empty = c && c->kind == Token::Kind::symbol && c->role != Token::Role::open &&
                           (c->role == Token::Role::close || closes(o, *c));
        if (!empty) {
            inner = grouped_items();
            if (o == "{" && (is(peek(), "mid") || is(peek(), ":") || is(peek(), "|"))) {
                ++i_;
                condition = sequence();
            }
        }
        abs_depth_ = saved_abs;
        c = peek();
        // Cases in MathML: a brace before a table, closed by nothing.
        if (!c && o == "{" && inner.size() == 1 && inner[0]->bare_table)
            return decide_table(std::move(inner[0]), "{");
        if (!c)
            fail("Unbalanced fences: " + open.spelling + " is not closed", open.pos);
        bool const matches = c->kind == Token::Kind::symbol && c->role != Token::Role::open &&
                             (sized ? c->role == Token::Role::close || closes(o, *c) : closes(o, *c));
        if (!matches)
            fail("Fence " + open.spelling + " closed by " + c->spelling, c->pos);
        ++i_;
        std::string const close = c->name;
        if (inner.empty())
            fail("Nothing between " + open.spelling + " and " + c->spelling, open.pos);
        if (condition) {
            if (inner.size() != 1)
                fail("A set builder with a list before its condition", open.pos);
            return make("setbuilder", std::move(inner[0]), std::move(condition), 0, open.pos);
        }
        if (o == "{" && close != "}" && inner.size() == 1 && inner[0]->bare_table)
            return decide_table(std::move(inner[0]), "{");
        if (o == "{")
            return make("set", std::move(inner), 0, open.pos);
        if (inner.size() == 1) {
            auto node = std::move(inner[0]);
            if (node->bare_table && (o == "(" || o == "[" || o == "|"))
                return decide_table(std::move(node), o);
            if (o == "|")
                return make("abs", std::move(node), 0, open.pos);
            if (o == "lfloor")
                return make("floor", std::move(node), 0, open.pos);
            if (o == "lceil")
                return make("ceiling", std::move(node), 0, open.pos);
            if (o == ".")
                return node;
            settle(node, 0);
            node->parens = sized ? ImportNode::Parens::sized : ImportNode::Parens::plain;
            return node;
        }
        if (inner.size() == 2)
            for (auto const &row : intervals)
                if (o == row.open && close == row.close)
                    return make(row.tmp, std::move(inner), 0, open.pos);
        if (o == "(" && close == ")")
            return make("list", std::move(inner), 0, open.pos);
        fail("A list of " + std::to_string(inner.size()) + " between " + open.spelling + " and " + c->spelling, open.pos);
    }

    ImportNodePtr table(Token const &t)
    {
        std::size_t cols = 0;
        for (auto const &row : t.cells)
            cols = std::max(cols, row.size());
        auto node = ImportNode::make(ImportNode::Kind::tab);
        node->pos = t.pos;
        node->rows = t.cells.size();
        node->cols = cols;
        node->rowl = t.rowl;
        node->coll = t.coll;
        node->frl = t.frl;
        std::vector<std::vector<TokenList>> rows = t.cells;
        bool aligned = cols > 1;
        for (auto const &row : rows)
            for (std::size_t c = 1; c < row.size(); ++c)
                aligned = aligned && !flat(row[c]).empty() && relation_symbol(flat(row[c])[0]);
        if (aligned) {
            // Alignment points before the relations (lhs &= rhs): each row is one equation.
            for (auto &row : rows) {
                if (row.empty())
                    continue;  // a row of no cells gets its placeholder below
                TokenList joined = flat(row[0]);
                for (std::size_t c = 1; c < row.size(); ++c)
                    joined.insert(joined.end(), flat(row[c]).begin(), flat(row[c]).end());
                row.assign(1, std::move(joined));
            }
            cols = 1;
        }
        node->cols = cols;
        for (auto const &row : rows) {
            for (std::size_t c = 0; c < cols; ++c) {
                auto cell = c < row.size() ? sublist(row[c], t.pos) : placeholder(t.pos);
                settle(cell, 0);
                node->kids.push_back(std::move(cell));
            }
        }
        return decide_table(std::move(node), t.name);
    }

    static bool relation_symbol(Token const &t)
    {
        if (t.kind != Token::Kind::symbol)
            return false;
        for (auto const &row : infix_operators)
            if (row.level == Level::relation && t.name == row.symbol)
                return true;
        return false;
    }

    // The template of a table by the fences around it: a matrix (a vector when it is one column),
    // a determinant, cases (a system when every row is an equation), a bare array.
    ImportNodePtr decide_table(ImportNodePtr node, std::string const &fence) const
    {
        node->bare_table = false;
        if (fence == "(" || fence == "[") {
            node->name = node->rows > 1 && node->cols == 1 ? "vector" : "matrix";
        } else if (fence == "|") {
            node->name = "determinant";
        } else if (fence == "{") {
            bool equations = node->cols == 1;
            for (auto const &cell : node->kids)
                equations = equations && cell->is_expr("eq") && cell->kids.size() == 2;
            node->name = equations ? "system" : "piecewise";
            if (equations) {
                std::vector<ImportNodePtr> cells;
                for (auto &cell : node->kids)
                    for (auto &side : cell->kids)
                        cells.push_back(std::move(side));
                node->kids = std::move(cells);
                node->cols = 2;
            }
        } else {
            node->name = "array";
            node->bare_table = true;
        }
        return node;
    }

    ImportNodePtr command(Token const &t)
    {
        if (t.name == "frac") {
            if (auto derivative = derivative_fraction(t))
                return derivative;
            return make("divide", sublist(t.args[0], t.pos), sublist(t.args[1], t.pos), 0, t.pos);
        }
        if (t.name == "binom")
            return make("binomial", sublist(t.args[0], t.pos), sublist(t.args[1], t.pos), 0, t.pos);
        if (t.name == "sqrt") {
            if (t.args.size() > 1)
                return make("root", sublist(t.args[0], t.pos), sublist(t.args[1], t.pos), 0, t.pos);
            return make("sqrt", sublist(t.args[0], t.pos), 0, t.pos);
        }
        if (t.name == "accent")
            return accent(t.detail, sublist(t.args[0], t.pos), t.pos);
        if (t.name == "conjugate")
            return make("conjugate", sublist(t.args[0], t.pos), 0, t.pos);
        fail("Unexpected " + t.spelling, t.pos);
    }

    // d/dx and the partial ∂/∂x as fractions: \frac{d f}{dx}, \frac{d}{dx} f.
    ImportNodePtr derivative_fraction(Token const &t)
    {
        auto differential = [](Token const &d) {
            if (d.kind != Token::Kind::atom || d.atom->kind != ImportNode::Kind::ident)
                return 0;
            return d.atom->plain == "d" ? 1 : d.atom->plain == "&part;" ? 2 : 0;
        };
        TokenList const &num = flat(t.args[0]);
        TokenList const &den = flat(t.args[1]);
        if (den.size() != 2 || !differential(den[0]) || den[1].kind != Token::Kind::atom ||
            den[1].atom->kind != ImportNode::Kind::ident || num.empty() || differential(num[0]) != differential(den[0]))
            return nullptr;
        char const *tmp = differential(den[0]) == 1 ? "diff" : "partialdiff";
        auto var = clone_atom(*den[1].atom);
        TokenList const rest(num.begin() + 1, num.end());
        ImportNodePtr body;
        if (!rest.empty())
            body = sublist(rest, t.pos);
        else if (starts_operand(peek()))
            body = postfix();
        else
            body = placeholder(t.pos);
        return make(tmp, std::move(body), std::move(var), 0, t.pos);
    }

    ImportNodePtr nabla()
    {
        Token const &n = *peek();
        ++i_;
        char const *tmp = "grad";
        if (is(peek(), "cdot")) {
            tmp = "divergence";
            ++i_;
        } else if (is(peek(), "times")) {
            tmp = "curl";
            ++i_;
        }
        return make(tmp, postfix(), priority(tmp), n.pos);
    }

    // \sum, \prod, \int, \oint and \lim with their limits, and the body that follows.
    ImportNodePtr big_operator()
    {
        Token const &op = *peek();
        ++i_;
        ImportNodePtr lower, upper;
        for (;;) {
            Token const *t = peek();
            if (t && t->kind == Token::Kind::sub && !lower) {
                ++i_;
                lower = sublist(t->args[0], t->pos);
            } else if (t && t->kind == Token::Kind::sup && !upper) {
                ++i_;
                upper = sublist(t->args[0], t->pos);
            } else {
                break;
            }
        }
        std::string const &name = op.name;
        auto limit_or_placeholder = [&](ImportNodePtr &limit) { return limit ? std::move(limit) : placeholder(op.pos); };
        if (name == "lim") {
            if (upper)
                fail("An upper limit on " + op.spelling, op.pos);
            ImportNodePtr var, target;
            if (lower && lower->is_expr("tendsto") && lower->kids.size() == 2) {
                var = std::move(lower->kids[0]);
                target = std::move(lower->kids[1]);
            } else {
                var = limit_or_placeholder(lower);
                target = placeholder(op.pos);
            }
            auto body = at_stop() ? placeholder(op.pos) : product();
            std::vector<ImportNodePtr> kids;
            kids.push_back(std::move(body));
            kids.push_back(std::move(var));
            kids.push_back(std::move(target));
            return make("limit", std::move(kids), priority("limit"), op.pos);
        }
        if (name == "sum" || name == "prod") {
            char const *tmp = name == "sum" ? "sum" : "product";
            auto body = at_stop() ? placeholder(op.pos) : product();
            std::vector<ImportNodePtr> kids;
            kids.push_back(std::move(body));
            kids.push_back(limit_or_placeholder(lower));
            kids.push_back(limit_or_placeholder(upper));
            return make(tmp, std::move(kids), priority(tmp), op.pos);
        }
        ++integral_depth_;
        auto body = at_stop() || at_differential() ? placeholder(op.pos) : product();
        ImportNodePtr var;
        if (at_differential()) {
            ++i_;
            var = clone_atom(*peek()->atom);
            var->pos = peek()->pos;
            ++i_;
        } else {
            var = placeholder(op.pos);
        }
        --integral_depth_;
        std::vector<ImportNodePtr> kids;
        kids.push_back(std::move(body));
        kids.push_back(std::move(var));
        char const *tmp = "int";
        if (name == "oint") {
            if (upper)
                fail("An upper limit on " + op.spelling, op.pos);
            tmp = "oint";
            kids.push_back(limit_or_placeholder(lower));
        } else if (lower || upper) {
            tmp = "defint";
            kids.push_back(limit_or_placeholder(lower));
            kids.push_back(limit_or_placeholder(upper));
        }
        return make(tmp, std::move(kids), priority(tmp), op.pos);
    }

    // \sin x, \log(xy), \max(a, b), \sin^2 x, \operatorname{name}(x): the template of the name, or
    // the name applied when the setup has no template of it.
    ImportNodePtr function()
    {
        Token const &f = *peek();
        ++i_;
        std::string name = f.name == "operatorname" ? f.detail : f.name;
        while (!name.empty() && std::isspace(static_cast<unsigned char>(name.back())))
            name.pop_back();
        while (!name.empty() && std::isspace(static_cast<unsigned char>(name.front())))
            name.erase(0, 1);
        if (name.empty())
            fail("An empty function name", f.pos);
        ImportNodePtr exponent;
        if (peek() && peek()->kind == Token::Kind::sup) {
            exponent = sublist(peek()->args[0], peek()->pos);
            ++i_;
        }
        if (peek() && peek()->kind == Token::Kind::sub)
            fail("A subscript on " + f.spelling, peek()->pos);
        if (is(peek(), "applyfunction"))
            ++i_;
        std::vector<ImportNodePtr> args;
        if (opens_call(peek())) {
            args = call_arguments();
        } else {
            if (at_stop())
                fail("Missing argument of " + f.spelling, f.pos);
            args.push_back(postfix());
        }
        ImportNodePtr node;
        MathTemplate *tmpl = is_function_name(name) || f.name == "operatorname" ? find(name) : nullptr;
        if (tmpl && tmpl->type_name() != Kxt::to_ustring("apply") && typeid(*tmpl) == typeid(MathTemplate) &&
            !tmpl->table_layout()) {
            if (!takes_operands(*tmpl, args.size()))
                fail(f.spelling + " takes " + std::to_string(tmpl->arity()) + " argument" +
                         (tmpl->arity() == 1 ? "" : "s"),
                     f.pos);
            node = make(name, std::move(args), tmpl->priority(), f.pos);
        } else {
            auto head = ImportNode::make(ImportNode::Kind::ident);
            head->add_text(name);
            head->pos = f.pos;
            args.insert(args.begin(), std::move(head));
            node = make("apply", std::move(args), 0, f.pos);
        }
        if (exponent)
            node = superscript(std::move(node), std::move(exponent), f.pos);
        return node;
    }
};

}  // namespace

ImportNodePtr clone_atom(ImportNode const &atom)
{
    auto node = ImportNode::make(atom.kind, atom.name);
    node->text = atom.text;
    node->plain = atom.plain;
    node->pos = atom.pos;
    return node;
}

std::string where(SourcePos const &pos)
{
    if (pos.column == 0)
        return std::string();
    if (pos.line == 0)
        return " at column " + std::to_string(pos.column);
    return " at line " + std::to_string(pos.line) + ", column " + std::to_string(pos.column);
}

bool takes_operands(MathTemplate const &tmpl, std::size_t operands)
{
    std::type_info const &kind = typeid(tmpl);
    if (kind == typeid(SubscriptTemplate) || kind == typeid(SuperscriptTemplate))
        return operands == 2;
    if (kind == typeid(SubSupscriptTemplate))
        return operands == 3;
    if (kind == typeid(AccentTemplate))
        return operands == 1;
    if (kind != typeid(MathTemplate) || tmpl.table_layout())
        return false;
    return operands >= tmpl.arity() && (tmpl.varying_arity() || operands == tmpl.arity());
}

void check_templates(ImportNode const &node, TemplateTable &table)
{
    std::string name;
    if (node.kind == ImportNode::Kind::expr || node.kind == ImportNode::Kind::tab)
        name = node.name;
    else if (node.kind == ImportNode::Kind::iacc)
        name = (node.name == "OverBar" ? "overbar" : node.name == "UnderBar" ? "underbar" : node.name) + "_accent";
    if (!name.empty() && !table.get_template(Kxt::to_ustring(name).c_str()))
        throw ImportError("The setup has no template '" + name + "'" + where(node.pos), node.pos.line, node.pos.column);
    for (auto const &kid : node.kids)
        check_templates(*kid, table);
}

ImportNodePtr parse_formula(TokenList const &tokens, TemplateTable &table)
{
    auto node = Parser(table).parse(tokens);
    check_templates(*node, table);
    return node;
}

}  // namespace Tavi
