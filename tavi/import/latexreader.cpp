// The LaTeX lexer: commands, braces, scripts and environments into tokens, each with its column.
#include "tavi/import/latexreader.h"

#include <cctype>

#include "tavi/import/importer.h"
#include "tavi/import/symbols.h"

namespace Tavi {

namespace {

// Commands that only space or size things: they leave nothing in the formula.
char const *const ignored_commands[] = {
    ",", ";", ":", "!", " ", "quad", "qquad", "displaystyle", "textstyle", "scriptstyle",
    "scriptscriptstyle", "big", "Big", "bigg", "Bigg", "bigl", "bigr", "Bigl", "Bigr", "biggl",
    "biggr", "Biggl", "Biggr", "bigm", "Bigm", "limits", "nolimits", "thinspace", "medspace",
    "thickspace", "enspace", "nonumber", "notag",
};

// Accents and the accent template each stands for ("conjugate" is a template of its own).
struct AccentRow
{
    char const *latex;
    char const *accent;
};
constexpr AccentRow accents[] = {
    {"vec",               "rarr"},
    {"overrightarrow",    "rarr"},
    {"underline",         "UnderBar"},
    {"hat",               "circ"},
    {"widehat",           "circ"},
    {"tilde",             "tilde"},
    {"widetilde",         "tilde"},
    {"dot",               "dot"},
    {"ddot",              "die"},
    {"dddot",             "tdot"},
};

// Environments that make tables, and the fences they stand between.
struct EnvironmentRow
{
    char const *name;
    char const *fences;
};
constexpr EnvironmentRow environments[] = {
    {"matrix",      ""},
    {"smallmatrix", ""},
    {"array",       ""},
    {"pmatrix",     "("},
    {"bmatrix",     "["},
    {"Bmatrix",     "{"},
    {"vmatrix",     "|"},
    {"cases",       "{"},
    {"aligned",     ""},
    {"gathered",    ""},
    {"split",       ""},
};

constexpr int max_nesting = 200;

template <class Row>
Row const *find_row(Row const *begin, Row const *end, std::string const &name)
{
    for (Row const *row = begin; row != end; ++row)
        if (name == row->name)
            return row;
    return nullptr;
}

class Lexer
{
public:
    explicit Lexer(std::string const &text) : text_(text) {}

    TokenList read_all()
    {
        TokenList list = read_list(Stop::end);
        return list;
    }

private:
    enum class Stop { end, brace, bracket, cell };

    std::string const &text_;
    std::size_t i_ = 0;
    int depth_ = 0;

    [[noreturn]] void fail(std::string const &what, std::size_t at) const
    {
        throw ImportError(what + " at column " + std::to_string(column(at)), 0, column(at));
    }

    std::size_t column(std::size_t at) const
    {
        std::size_t col = 1;
        for (std::size_t k = 0; k < at && k < text_.size(); ++k)
            if ((static_cast<unsigned char>(text_[k]) & 0xC0) != 0x80)
                ++col;
        return col;
    }

    SourcePos pos(std::size_t at) const { return SourcePos{0, column(at)}; }

    bool at_end() const { return i_ >= text_.size(); }

    void skip_space()
    {
        while (!at_end()) {
            char const c = text_[i_];
            if (c == '%') {
                while (!at_end() && text_[i_] != '\n')
                    ++i_;
            } else if (std::isspace(static_cast<unsigned char>(c))) {
                ++i_;
            } else {
                break;
            }
        }
    }

    // A command's name after the backslash at `i_`: letters, or one other character.
    std::string command_name()
    {
        std::size_t const start = i_;
        while (!at_end() && std::isalpha(static_cast<unsigned char>(text_[i_])))
            ++i_;
        if (i_ == start && !at_end())
            ++i_;
        return text_.substr(start, i_ - start);
    }

    // The tokens up to the stop: the end of the text, a closing brace or bracket, or in a table the
    // end of a cell (&, \\, \end, \hline).
    TokenList read_list(Stop stop, std::size_t open_at = 0)
    {
        if (++depth_ > max_nesting)
            fail("Formula nested too deeply", i_);
        TokenList list;
        for (;;) {
            skip_space();
            if (at_end()) {
                if (stop == Stop::brace)
                    fail("Unbalanced braces: '{' is not closed", open_at);
                if (stop == Stop::bracket)
                    fail("Unbalanced brackets: '[' is not closed", open_at);
                if (stop == Stop::cell)
                    fail("Environment not ended by \\end", open_at);
                break;
            }
            char const c = text_[i_];
            if (c == '}') {
                if (stop != Stop::brace)
                    fail("Unbalanced braces: '}' without '{'", i_);
                ++i_;
                break;
            }
            if (c == ']' && stop == Stop::bracket) {
                ++i_;
                break;
            }
            if (stop == Stop::cell && (c == '&' || starts_cell_end()))
                break;
            if (!read_token(list))
                break;
        }
        --depth_;
        return list;
    }

    bool starts_cell_end() const
    {
        if (text_.compare(i_, 2, "\\\\") == 0)
            return true;
        return text_.compare(i_, 4, "\\end") == 0 && (i_ + 4 >= text_.size() || !std::isalpha(static_cast<unsigned char>(text_[i_ + 4])));
    }

    Token symbol(std::string name, std::size_t at, std::string spelling)
    {
        Token t;
        t.kind = Token::Kind::symbol;
        t.name = std::move(name);
        t.spelling = std::move(spelling);
        t.pos = pos(at);
        return t;
    }

    Token atom(ImportNodePtr node, std::size_t at, std::string spelling)
    {
        Token t;
        t.kind = Token::Kind::atom;
        node->pos = pos(at);
        t.atom = std::move(node);
        t.spelling = std::move(spelling);
        t.pos = pos(at);
        return t;
    }

    // One argument of a command or script: a braced group, or a single token.
    TokenList read_argument(std::string const &of, std::size_t at)
    {
        skip_space();
        if (at_end() || text_[i_] == '}' || text_[i_] == '&')
            fail("Missing argument of " + of, at);
        if (text_[i_] == '{')
            return read_list(Stop::brace, i_++);
        TokenList list;
        if (!read_token(list) || list.empty())
            fail("Missing argument of " + of, at);
        return list;
    }

    // The raw text of a braced argument, braces inside it balanced.
    std::string read_raw_argument(std::string const &of, std::size_t at)
    {
        skip_space();
        if (at_end() || text_[i_] != '{')
            fail("Missing argument of " + of, at);
        std::size_t const start = ++i_;
        int level = 1;
        while (!at_end()) {
            if (text_[i_] == '\\' && i_ + 1 < text_.size()) {
                i_ += 2;
                continue;
            }
            if (text_[i_] == '{')
                ++level;
            else if (text_[i_] == '}' && --level == 0)
                return text_.substr(start, i_++ - start);
            ++i_;
        }
        fail("Unbalanced braces: '{' is not closed", start - 1);
    }

    // Reads one token at `i_` into `list` (or nothing, for spacing). False at a stop that the
    // caller handles (a stray & or \\ outside a table raise here).
    bool read_token(TokenList &list)
    {
        // Arguments nest without braces too (\sqrt\sqrt x, x^^): the depth is counted per token.
        struct Depth
        {
            explicit Depth(Lexer &l) : l_(l)
            {
                if (++l_.depth_ > max_nesting)
                    l_.fail("Formula nested too deeply", l_.i_);
            }
            ~Depth() { --l_.depth_; }
            Lexer &l_;
        } depth(*this);
        return read_one(list);
    }

    bool read_one(TokenList &list)
    {
        std::size_t const at = i_;
        std::size_t j = i_;
        char32_t const code = next_code_point(text_, j);
        char const c = text_[i_];
        if (std::isalpha(static_cast<unsigned char>(c))) {
            ++i_;
            auto node = ImportNode::make(ImportNode::Kind::ident);
            node->add_text(std::string(1, c));
            list.push_back(atom(std::move(node), at, std::string(1, c)));
            return true;
        }
        if (std::isdigit(static_cast<unsigned char>(c)) ||
            (c == '.' && i_ + 1 < text_.size() && std::isdigit(static_cast<unsigned char>(text_[i_ + 1])))) {
            std::size_t const start = i_;
            while (!at_end() && std::isdigit(static_cast<unsigned char>(text_[i_])))
                ++i_;
            if (i_ + 1 < text_.size() && text_[i_] == '.' && std::isdigit(static_cast<unsigned char>(text_[i_ + 1]))) {
                ++i_;
                while (!at_end() && std::isdigit(static_cast<unsigned char>(text_[i_])))
                    ++i_;
            }
            if (i_ == start)
                fail("A number must begin with a digit", at);
            auto node = ImportNode::make(ImportNode::Kind::num);
            node->add_text(text_.substr(start, i_ - start));
            list.push_back(atom(std::move(node), at, text_.substr(start, i_ - start)));
            return true;
        }
        switch (c) {
        case '{': {
            ++i_;
            Token t;
            t.kind = Token::Kind::group;
            t.pos = pos(at);
            t.spelling = "{";
            t.args.push_back(read_list(Stop::brace, at));
            list.push_back(std::move(t));
            return true;
        }
        case '^':
        case '_': {
            ++i_;
            Token t;
            t.kind = c == '^' ? Token::Kind::sup : Token::Kind::sub;
            t.pos = pos(at);
            t.spelling = std::string(1, c);
            t.args.push_back(read_argument(std::string(1, c), at));
            list.push_back(std::move(t));
            return true;
        }
        case '&':
            fail("'&' outside a matrix or cases environment", at);
        case '~':
            ++i_;
            return true;
        case '#':
        case '$':
            fail(std::string("Unexpected character '") + c + "'", at);
        case '\\':
            ++i_;
            return read_command(list, at);
        default: break;
        }
        if (code < 0x80) {
            static std::string const plain = "+-=<>,;:!()[]|/*'.?";
            if (plain.find(c) == std::string::npos)
                fail(std::string("Unexpected character '") + c + "'", at);
            ++i_;
            list.push_back(symbol(std::string(1, c), at, std::string("'") + c + "'"));
            return true;
        }
        i_ = j;
        std::string const spelled = text_.substr(at, j - at);
        if (char const letter = double_struck_letter(code)) {
            auto node = ImportNode::make(ImportNode::Kind::ident);
            node->add_char(std::string(1, letter) + "opf");
            list.push_back(atom(std::move(node), at, spelled));
        } else if (NamedSymbol const *named = named_symbol_by_code(code)) {
            auto node = ImportNode::make(ImportNode::Kind::ident);
            node->add_char(named->name);
            list.push_back(atom(std::move(node), at, spelled));
        } else if (OperatorSymbol const *op = operator_by_code(code)) {
            list.push_back(symbol(op->name, at, spelled));
        } else if (code == invalid_code_point) {
            fail("Text that is not UTF-8", at);
        } else {
            auto node = ImportNode::make(ImportNode::Kind::ident);
            node->add_text(spelled);
            list.push_back(atom(std::move(node), at, spelled));
        }
        return true;
    }

    bool read_command(TokenList &list, std::size_t at)
    {
        if (at_end())
            fail("A lone backslash", at);
        std::string const name = command_name();
        std::string const spelled = "\\" + name;
        for (char const *ignored : ignored_commands)
            if (name == ignored)
                return true;
        if (name == "{" || name == "lbrace")
            return list.push_back(symbol("{", at, spelled)), true;
        if (name == "}" || name == "rbrace")
            return list.push_back(symbol("}", at, spelled)), true;
        if (name == "lvert" || name == "rvert" || name == "vert") {
            Token t = symbol("|", at, spelled);
            t.role = name == "lvert" ? Token::Role::open : name == "rvert" ? Token::Role::close : Token::Role::either;
            list.push_back(std::move(t));
            return true;
        }
        if (name == "\\")
            fail("'\\\\' outside a matrix or cases environment", at);
        if (name == "hline")
            fail("\\hline outside an array", at);
        if (NamedSymbol const *named = named_symbol_by_latex(name)) {
            auto node = ImportNode::make(ImportNode::Kind::ident);
            node->add_char(named->name);
            list.push_back(atom(std::move(node), at, spelled));
            return true;
        }
        if (operator_by_latex(name) || is_function_name(name) || name == "lim") {
            list.push_back(symbol(name, at, spelled));
            return true;
        }
        if (name == "frac" || name == "dfrac" || name == "tfrac" || name == "cfrac" || name == "binom" ||
            name == "dbinom" || name == "tbinom") {
            Token t;
            t.kind = Token::Kind::command;
            t.name = name.find("frac") != std::string::npos ? "frac" : "binom";
            t.pos = pos(at);
            t.spelling = spelled;
            t.args.push_back(read_argument(spelled, at));
            t.args.push_back(read_argument(spelled, at));
            list.push_back(std::move(t));
            return true;
        }
        if (name == "sqrt") {
            Token t;
            t.kind = Token::Kind::command;
            t.name = "sqrt";
            t.pos = pos(at);
            t.spelling = spelled;
            skip_space();
            TokenList index;
            bool const has_index = !at_end() && text_[i_] == '[';
            if (has_index)
                index = read_list(Stop::bracket, i_++);
            t.args.push_back(read_argument(spelled, at));
            if (has_index)
                t.args.push_back(std::move(index));
            list.push_back(std::move(t));
            return true;
        }
        if (name == "bar" || name == "overline") {
            Token t;
            t.kind = Token::Kind::command;
            t.name = "conjugate";
            t.pos = pos(at);
            t.spelling = spelled;
            t.args.push_back(read_argument(spelled, at));
            list.push_back(std::move(t));
            return true;
        }
        for (auto const &row : accents) {
            if (name == row.latex) {
                Token t;
                t.kind = Token::Kind::command;
                t.name = "accent";
                t.detail = row.accent;
                t.pos = pos(at);
                t.spelling = spelled;
                t.args.push_back(read_argument(spelled, at));
                list.push_back(std::move(t));
                return true;
            }
        }
        if (name == "text" || name == "textrm" || name == "textit" || name == "textbf" || name == "mbox") {
            auto node = ImportNode::make(ImportNode::Kind::str);
            node->add_text(read_raw_argument(spelled, at));
            list.push_back(atom(std::move(node), at, spelled));
            return true;
        }
        if (name == "mathrm" || name == "mathit" || name == "mathbf" || name == "mathsf" || name == "mathtt" ||
            name == "mathnormal") {
            list.push_back(atom(styled_identifier(read_raw_argument(spelled, at), at), at, spelled));
            return true;
        }
        if (name == "mathbb") {
            std::string const letter = read_raw_argument(spelled, at);
            std::size_t k = 0;
            while (k < letter.size() && std::isspace(static_cast<unsigned char>(letter[k])))
                ++k;
            std::size_t e = letter.size();
            while (e > k && std::isspace(static_cast<unsigned char>(letter[e - 1])))
                --e;
            if (e != k + 1 || !std::isupper(static_cast<unsigned char>(letter[k])))
                fail("\\mathbb takes one capital letter", at);
            auto node = ImportNode::make(ImportNode::Kind::ident);
            node->add_char(std::string(1, letter[k]) + "opf");
            list.push_back(atom(std::move(node), at, spelled));
            return true;
        }
        if (name == "operatorname" || name == "operatorname*") {
            skip_space();
            if (!at_end() && text_[i_] == '*')
                ++i_;
            Token t = symbol("operatorname", at, spelled);
            t.detail = read_raw_argument(spelled, at);
            list.push_back(std::move(t));
            return true;
        }
        if (name == "left" || name == "right")
            return read_sized_fence(list, at, name == "left");
        if (name == "begin") {
            list.push_back(read_environment(at));
            return true;
        }
        if (name == "end")
            fail("\\end without \\begin", at);
        fail("Unknown LaTeX command " + spelled, at);
    }

    // An identifier set in a font of its own (\mathrm{d}, \mathit{mol}): its letters and named
    // characters as one identifier, or a number when it is all digits.
    ImportNodePtr styled_identifier(std::string const &raw, std::size_t at)
    {
        bool digits = !raw.empty();
        auto node = ImportNode::make(ImportNode::Kind::ident);
        for (std::size_t k = 0; k < raw.size();) {
            char const c = raw[k];
            if (std::isspace(static_cast<unsigned char>(c))) {
                ++k;
            } else if (c == '\\') {
                std::size_t e = ++k;
                while (e < raw.size() && std::isalpha(static_cast<unsigned char>(raw[e])))
                    ++e;
                NamedSymbol const *named = named_symbol_by_latex(raw.substr(k, e - k));
                if (!named)
                    fail("Unknown LaTeX command \\" + raw.substr(k, e - k) + " in a font command", at);
                node->add_char(named->name);
                digits = false;
                k = e;
            } else if (std::isalnum(static_cast<unsigned char>(c)) || static_cast<unsigned char>(c) >= 0x80) {
                digits = digits && std::isdigit(static_cast<unsigned char>(c));
                node->add_text(std::string(1, c));
                ++k;
            } else {
                fail(std::string("Unexpected character '") + c + "' in a font command", at);
            }
        }
        if (node->plain.empty())
            fail("An empty font command", at);
        if (digits)
            node->kind = ImportNode::Kind::num;
        return node;
    }

    bool read_sized_fence(TokenList &list, std::size_t at, bool left)
    {
        skip_space();
        std::string const which = left ? "\\left" : "\\right";
        if (at_end())
            fail("Missing delimiter after " + which, at);
        std::string name;
        if (text_[i_] == '\\') {
            ++i_;
            name = command_name();
            static char const *const fences[][2] = {
                {"{", "{"}, {"}", "}"}, {"lbrace", "{"}, {"rbrace", "}"}, {"lfloor", "lfloor"},
                {"rfloor", "rfloor"}, {"lceil", "lceil"}, {"rceil", "rceil"}, {"vert", "|"},
                {"lvert", "|"}, {"rvert", "|"},
            };
            std::string found;
            for (auto const &row : fences)
                if (name == row[0])
                    found = row[1];
            if (found.empty())
                fail("Unsupported delimiter \\" + name + " after " + which, at);
            name = found;
        } else {
            char const c = text_[i_++];
            if (std::string("()[]|.").find(c) == std::string::npos)
                fail(std::string("Unsupported delimiter '") + c + "' after " + which, at);
            name = std::string(1, c);
        }
        Token t = symbol(name, at, which + name);
        t.role = left ? Token::Role::open : Token::Role::close;
        list.push_back(std::move(t));
        return true;
    }

    std::string environment_name(std::size_t at)
    {
        std::string const name = read_raw_argument("\\begin", at);
        return name;
    }

    // \begin{name} ... \end{name}: rows of cells, with the lines of an array.
    Token read_environment(std::size_t at)
    {
        std::string const name = environment_name(at);
        EnvironmentRow const *env = nullptr;
        for (auto const &row : environments)
            if (name == row.name)
                env = &row;
        if (!env)
            fail("Unknown LaTeX environment '" + name + "'", at);
        Token t;
        t.kind = Token::Kind::table;
        t.name = env->fences;
        t.detail = name;
        t.pos = pos(at);
        t.spelling = "\\begin{" + name + "}";
        std::string preamble;
        if (name == "array")
            preamble = read_raw_argument("\\begin{array}", at);
        std::vector<bool> hlines{false};
        std::vector<TokenList> row;
        for (;;) {
            skip_space();
            while (text_.compare(i_, 6, "\\hline") == 0) {
                i_ += 6;
                hlines.back() = true;
                skip_space();
            }
            row.push_back(read_list(Stop::cell, at));
            if (text_[i_] == '&') {
                ++i_;
                continue;
            }
            t.cells.push_back(std::move(row));
            row.clear();
            if (text_.compare(i_, 2, "\\\\") == 0) {
                i_ += 2;
                hlines.push_back(false);
                continue;
            }
            std::size_t const end_at = i_;
            i_ += 4;
            std::string const closing = read_raw_argument("\\end", end_at);
            if (closing != name)
                fail("\\begin{" + name + "} ended by \\end{" + closing + "}", end_at);
            break;
        }
        // A last row left empty by a closing \\ is no row.
        // (hlines holds the line above each row; the one above that row is the bottom line.)
        if (t.cells.size() > 1 && t.cells.back().size() == 1 && t.cells.back()[0].empty())
            t.cells.pop_back();
        else
            hlines.push_back(false);
        table_lines(t, preamble, hlines);
        return t;
    }

    // The lines of an array in the content format: one character per gap ("s" a line, "n" none,
    // one character when all gaps agree), and a full frame as "S".
    static void table_lines(Token &t, std::string const &preamble, std::vector<bool> const &hlines)
    {
        std::vector<bool> vlines{false};
        for (char c : preamble) {
            if (c == '|')
                vlines.back() = true;
            else if (c == 'c' || c == 'l' || c == 'r')
                vlines.push_back(false);
        }
        auto gaps = [](std::vector<bool> const &lines) {
            std::string s;
            for (std::size_t k = 1; k + 1 < lines.size(); ++k)
                s += lines[k] ? 's' : 'n';
            if (s.find('s') == std::string::npos)
                return std::string();
            if (s.find('n') == std::string::npos)
                return std::string("s");
            return s;
        };
        t.rowl = gaps(hlines);
        t.coll = gaps(vlines);
        bool const frame[4] = {hlines.front(), vlines.front(), hlines.size() > 1 && hlines.back(),
                               vlines.size() > 1 && vlines.back()};
        if (frame[0] && frame[1] && frame[2] && frame[3]) {
            t.frl = "S";
        } else if (frame[0] || frame[1] || frame[2] || frame[3]) {
            for (bool f : frame)
                t.frl += f ? 's' : 'n';
        }
    }
};

}  // namespace

TokenList read_latex_tokens(std::string const &text)
{
    // The content format is XML: its text holds no control characters and only whole UTF-8.
    for (std::size_t i = 0, column = 1; i < text.size(); ++column) {
        char32_t const code = next_code_point(text, i);
        if (code == invalid_code_point || code == 0xFFFE || code == 0xFFFF)
            throw ImportError("Text that is not UTF-8 at column " + std::to_string(column), 0, column);
        if (code < 0x20 && code != '\t' && code != '\n' && code != '\r')
            throw ImportError("A control character at column " + std::to_string(column), 0, column);
    }
    return Lexer(text).read_all();
}

}  // namespace Tavi
