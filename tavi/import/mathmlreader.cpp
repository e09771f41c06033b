// The MathML reader: the document parsed with expat into a small element tree, then presentation
// markup turned into the tokens of the formula parser and content markup mapped onto templates.
#include "tavi/import/mathmlreader.h"

#include <expat.h>

#include <cctype>

#include "tavi/import/formulaparser.h"
#include "tavi/import/importer.h"
#include "tavi/import/symbols.h"
#include "tavi/import/tokens.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

namespace {

constexpr int max_nesting = 200;

// Entities a MathML text may use without a DTD, besides the names of named_symbols.
struct EntityRow
{
    char const *name;
    char32_t code;
};
constexpr EntityRow entities[] = {
    {"InvisibleTimes", 0x2062}, {"it", 0x2062},           {"ApplyFunction", 0x2061},
    {"af", 0x2061},             {"InvisibleComma", 0x2063}, {"ic", 0x2063},
    {"minus", 0x2212},          {"pm", 0x00B1},           {"PlusMinus", 0x00B1},
    {"times", 0x00D7},          {"sdot", 0x22C5},         {"middot", 0x00B7},
    {"le", 0x2264},             {"leq", 0x2264},          {"ge", 0x2265},
    {"geq", 0x2265},            {"ne", 0x2260},           {"NotEqual", 0x2260},
    {"rarr", 0x2192},           {"RightArrow", 0x2192},   {"rArr", 0x21D2},
    {"Implies", 0x21D2},        {"infin", 0x221E},        {"int", 0x222B},
    {"Integral", 0x222B},       {"sum", 0x2211},          {"Sum", 0x2211},
    {"prod", 0x220F},           {"part", 0x2202},         {"PartialD", 0x2202},
    {"nabla", 0x2207},          {"nbsp", 0x00A0},         {"ThinSpace", 0x2009},
    {"isin", 0x2208},           {"notin", 0x2209},        {"sub", 0x2282},
    {"sube", 0x2286},           {"cup", 0x222A},          {"cap", 0x2229},
    {"and", 0x2227},            {"or", 0x2228},           {"not", 0x00AC},
    {"forall", 0x2200},         {"exist", 0x2203},        {"equiv", 0x2261},
    {"approx", 0x2248},         {"hellip", 0x2026},       {"ctdot", 0x22EF},
    {"lfloor", 0x230A},         {"rfloor", 0x230B},       {"lceil", 0x2308},
    {"rceil", 0x2309},          {"prime", 0x2032},        {"compfn", 0x2218},
    {"setminus", 0x2216},       {"mid", 0x2223},          {"OverBar", 0x203E},
    {"macr", 0x00AF},           {"Hat", 0x005E},          {"tilde", 0x02DC},
    {"dot", 0x02D9},            {"die", 0x00A8},          {"tdot", 0x20DB},
    {"UnderBar", 0x005F},        {"LeftFloor", 0x230A},    {"RightFloor", 0x230B},
    {"LeftCeiling", 0x2308},    {"RightCeiling", 0x2309}, {"Backslash", 0x2216},
    {"SmallCircle", 0x2218},    {"CenterDot", 0x22C5},    {"Element", 0x2208},
    {"NotElement", 0x2209},     {"Union", 0x222A},        {"Intersection", 0x2229},
    {"Subset", 0x2282},         {"SubsetEqual", 0x2286},  {"DoubleRightArrow", 0x21D2},
    {"LeftAngleBracket", 0x27E8}, {"RightAngleBracket", 0x27E9}, {"Verbar", 0x2016},
    {"ForAll", 0x2200},         {"Exists", 0x2203},       {"GreaterEqual", 0x2265},
    {"Del", 0x2207},            {"Congruent", 0x2261},    {"Tilde", 0x223C},
    {"TildeTilde", 0x2248},     {"ContourIntegral", 0x222E}, {"Sqrt", 0x221A},
};

// Accents over (and under) a base, by their character.
struct AccentRow
{
    char32_t code;
    char const *accent;  // the accent's name, or "conjugate" for the template of that name
};
constexpr AccentRow accents[] = {
    {0x2192, "rarr"},    {0x20D7, "rarr"},      {0x00AF, "conjugate"}, {0x203E, "conjugate"},
    {0x0305, "conjugate"}, {0x005E, "circ"},      {0x02C6, "circ"},      {0x0302, "circ"},
    {0x007E, "tilde"},   {0x02DC, "tilde"},     {0x0303, "tilde"},     {0x02D9, "dot"},
    {0x0307, "dot"},     {0x00A8, "die"},       {0x0308, "die"},       {0x20DB, "tdot"},
    {0x005F, "UnderBar"}, {0x0332, "UnderBar"}, {0x2032, "prime"},     {0x2217, "ast"},
};

// Content elements that are formulas of their own, not presentation.
char const *const content_elements[] = {
    "apply", "ci", "cn", "cs", "csymbol", "set", "list", "interval", "vector", "matrix", "piecewise",
    "pi", "infinity", "exponentiale", "imaginaryi", "true", "false", "emptyset", "bind",
};

struct Element
{
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<std::unique_ptr<Element>> kids;
    std::string text;
    SourcePos pos;

    std::string attribute(char const *key, char const *fallback = "") const
    {
        for (auto const &a : attributes)
            if (a.first == key)
                return a.second;
        return fallback;
    }
};

[[noreturn]] void fail(std::string const &what, SourcePos const &pos)
{
    throw ImportError(what + where(pos), pos.line, pos.column);
}

std::string trim(std::string const &s)
{
    std::size_t b = 0, e = s.size();
    while (b < e && std::isspace(static_cast<unsigned char>(s[b])))
        ++b;
    while (e > b && std::isspace(static_cast<unsigned char>(s[e - 1])))
        --e;
    return s.substr(b, e - b);
}

// Named entities replaced by their characters, so that expat, which knows no DTD here, reads them.
std::string replace_entities(std::string const &text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '&') {
            out += text[i];
            continue;
        }
        std::size_t e = i + 1;
        while (e < text.size() && e - i < 40 && std::isalnum(static_cast<unsigned char>(text[e])))
            ++e;
        std::string const name = text.substr(i + 1, e - i - 1);
        char32_t code = 0;
        if (e < text.size() && text[e] == ';' && !name.empty()) {
            for (auto const &row : entities)
                if (name == row.name)
                    code = row.code;
            if (NamedSymbol const *s = code ? nullptr : named_symbol_by_name(name))
                code = s->code;
        }
        if (code) {
            append_code_point(out, code);
            i = e;
        } else {
            out += '&';
        }
    }
    return out;
}

class TreeBuilder
{
public:
    std::unique_ptr<Element> parse(std::string const &text)
    {
        XML_Parser parser = XML_ParserCreate("UTF-8");
        XML_SetUserData(parser, this);
        XML_SetElementHandler(parser, &TreeBuilder::start, &TreeBuilder::end);
        XML_SetCharacterDataHandler(parser, &TreeBuilder::characters);
        parser_ = parser;
        XML_Status const status = XML_Parse(parser, text.data(), static_cast<int>(text.size()), XML_TRUE);
        SourcePos const pos{static_cast<std::size_t>(XML_GetCurrentLineNumber(parser)),
                            static_cast<std::size_t>(XML_GetCurrentColumnNumber(parser)) + 1};
        std::string const reason = status == XML_STATUS_OK ? std::string() : XML_ErrorString(XML_GetErrorCode(parser));
        XML_ParserFree(parser);
        if (too_deep_)
            fail("MathML nested too deeply", pos);
        if (status != XML_STATUS_OK)
            fail("Bad XML: " + reason, pos);
        if (!root_)
            fail("No MathML element", pos);
        return std::move(root_);
    }

private:
    XML_Parser parser_ = nullptr;
    std::unique_ptr<Element> root_;
    std::vector<Element *> open_;
    bool too_deep_ = false;

    static void XMLCALL start(void *data, XML_Char const *name, XML_Char const **attributes)
    {
        auto *self = static_cast<TreeBuilder *>(data);
        if (self->open_.size() >= static_cast<std::size_t>(max_nesting)) {
            self->too_deep_ = true;
            XML_StopParser(self->parser_, XML_FALSE);
            return;
        }
        auto element = std::make_unique<Element>();
        std::string n = name;
        std::size_t const colon = n.rfind(':');
        element->name = colon == std::string::npos ? n : n.substr(colon + 1);
        for (std::size_t k = 0; attributes[k]; k += 2)
            element->attributes.emplace_back(attributes[k], attributes[k + 1]);
        element->pos = SourcePos{static_cast<std::size_t>(XML_GetCurrentLineNumber(self->parser_)),
                                 static_cast<std::size_t>(XML_GetCurrentColumnNumber(self->parser_)) + 1};
        Element *raw = element.get();
        if (self->open_.empty()) {
            self->root_ = std::move(element);  // expat itself refuses a second top element
        } else {
            // A <sep/> splits the text of a number (e-notation, rationals).
            if (raw->name == "sep")
                self->open_.back()->text += '\x01';
            self->open_.back()->kids.push_back(std::move(element));
        }
        self->open_.push_back(raw);
    }

    static void XMLCALL end(void *data, XML_Char const *)
    {
        auto *self = static_cast<TreeBuilder *>(data);
        if (!self->open_.empty())
            self->open_.pop_back();
    }

    static void XMLCALL characters(void *data, XML_Char const *text, int length)
    {
        auto *self = static_cast<TreeBuilder *>(data);
        if (!self->open_.empty())
            self->open_.back()->text.append(text, static_cast<std::size_t>(length));
    }
};

bool is_content(Element const &e)
{
    for (char const *name : content_elements)
        if (e.name == name)
            return true;
    return false;
}

// The characters of a token as an identifier: named characters by their names, the rest as text.
ImportNodePtr identifier(std::string const &text, SourcePos pos, bool double_struck = false)
{
    auto node = ImportNode::make(ImportNode::Kind::ident);
    node->pos = pos;
    if (double_struck && text.size() == 1 && std::isupper(static_cast<unsigned char>(text[0]))) {
        node->add_char(text + "opf");
        return node;
    }
    for (std::size_t i = 0; i < text.size();) {
        std::size_t const start = i;
        char32_t const code = next_code_point(text, i);
        if (char const letter = double_struck_letter(code))
            node->add_char(std::string(1, letter) + "opf");
        else if (NamedSymbol const *named = named_symbol_by_code(code))
            node->add_char(named->name);
        else if (code == 0x2212)
            node->add_text("-");
        else
            node->add_text(text.substr(start, i - start));
    }
    return node;
}

class Reader
{
public:
    explicit Reader(TemplateTable &table) : table_(table) {}

    ImportNodePtr read(Element const &root)
    {
        if (root.name != "math")
            fail("Not a MathML document: the top element is <" + root.name + ">", root.pos);
        Element const *first = first_formula(root);
        if (!first)
            fail("An empty formula", root.pos);
        if (is_content(*first)) {
            auto node = content(*first);
            check_templates(*node, table_);
            return node;
        }
        TokenList tokens = row(root);
        if (tokens.empty())
            fail("An empty formula", root.pos);
        return parse_formula(tokens, table_);
    }

private:
    TemplateTable &table_;
    int depth_ = 0;

    struct Nesting
    {
        Nesting(int &depth, SourcePos const &pos) : depth_(depth)
        {
            if (++depth_ > max_nesting)
                fail("MathML nested too deeply", pos);
        }
        ~Nesting() { --depth_; }
        int &depth_;
    };

    static Element const *first_formula(Element const &e)
    {
        for (auto const &kid : e.kids) {
            if (kid->name == "semantics")
                return first_formula(*kid);
            if (kid->name != "annotation" && kid->name != "annotation-xml")
                return kid.get();
        }
        return nullptr;
    }

    // ---- presentation markup ----

    Token symbol(std::string const &name, Element const &e, std::string const &spelling,
                 Token::Role role = Token::Role::either) const
    {
        Token t;
        t.kind = Token::Kind::symbol;
        t.name = name;
        t.pos = e.pos;
        t.spelling = spelling;
        t.role = role;
        return t;
    }

    Token atom(ImportNodePtr node, Element const &e) const
    {
        Token t;
        t.kind = Token::Kind::atom;
        t.pos = e.pos;
        t.spelling = "<" + e.name + ">";
        node->pos = e.pos;
        t.atom = std::move(node);
        return t;
    }

    Token group(TokenList list, Element const &e) const
    {
        Token t;
        t.kind = Token::Kind::group;
        t.pos = e.pos;
        t.spelling = "<" + e.name + ">";
        t.args.push_back(std::move(list));
        return t;
    }

    TokenList row(Element const &e)
    {
        Nesting nesting(depth_, e.pos);
        TokenList out;
        for (auto const &kid : e.kids)
            convert(*kid, out);
        // (a over b without a line), in parentheses, is a binomial coefficient.
        for (std::size_t k = 0; k + 2 < out.size(); ++k) {
            if (out[k + 1].kind == Token::Kind::command && out[k + 1].name == "binom" &&
                out[k].kind == Token::Kind::symbol && out[k].name == "(" && out[k + 2].kind == Token::Kind::symbol &&
                out[k + 2].name == ")") {
                out.erase(out.begin() + static_cast<long>(k) + 2);
                out.erase(out.begin() + static_cast<long>(k));
            }
        }
        return out;
    }

    // The tokens of one child element, as one argument.
    TokenList argument(Element const &e)
    {
        TokenList out;
        convert(e, out);
        return out;
    }

    Element const &child(Element const &e, std::size_t k, std::size_t count)
    {
        std::size_t const n = e.kids.size();
        if (n != count)
            fail("<" + e.name + "> needs " + std::to_string(count) + " children, not " + std::to_string(n), e.pos);
        return *e.kids[k];
    }

    // A token's text; a character name written out as text ("&OverBar;", as setup files write
    // their operators) is its character.
    static std::string token_text(Element const &e)
    {
        if (!e.kids.empty())
            fail("Markup inside <" + e.name + ">", e.kids[0]->pos);
        std::string const text = trim(e.text);
        if (text.size() > 2 && text.front() == '&' && text.back() == ';') {
            std::string const named = replace_entities(text);
            if (named != text)
                return named;
        }
        return text;
    }

    void operator_token(Element const &e, TokenList &out)
    {
        std::string const text = token_text(e);
        std::string const spelled = "<mo>" + text + "</mo>";
        if (text.empty())
            return;
        if (is_function_name(text) || text == "lim") {
            out.push_back(symbol(text, e, spelled));
            return;
        }
        std::size_t i = 0;
        char32_t const code = next_code_point(text, i);
        if (i != text.size()) {
            if (text == "...")
                out.push_back(atom(identifier("\xE2\x80\xA6", e.pos), e));
            else
                fail("Unknown operator " + spelled, e.pos);
            return;
        }
        if (code == 0x2062 || code == 0x2009 || code == 0x00A0 || code == 0x200B)
            return;  // invisible times and spaces: side by side is a product anyway
        static std::string const plain = "+-=<>,;:!()[]|/*'.{}";
        // A MathML writer puts parentheses where they are seen, so those that the priorities
        // don't call for are kept (as LaTeX's \left( \right) are).
        Token::Role const role = code == '(' || code == '[' || code == '{'   ? Token::Role::open
                                 : code == ')' || code == ']' || code == '}' ? Token::Role::close
                                                                             : Token::Role::either;
        if (code < 0x80 && plain.find(static_cast<char>(code)) != std::string::npos) {
            out.push_back(symbol(std::string(1, static_cast<char>(code)), e, spelled, role));
            return;
        }
        if (OperatorSymbol const *op = operator_by_code(code)) {
            out.push_back(symbol(op->name, e, spelled, role));
            return;
        }
        if (code == 0x2223)
            return out.push_back(symbol("mid", e, spelled));
        if (code == '\\')
            return out.push_back(symbol("setminus", e, spelled));
        if (named_symbol_by_code(code)) {
            out.push_back(atom(identifier(text, e.pos), e));
            return;
        }
        fail("Unknown operator " + spelled, e.pos);
    }

    static bool big_operator(TokenList const &base)
    {
        if (base.size() != 1 || base[0].kind != Token::Kind::symbol)
            return false;
        std::string const &n = base[0].name;
        return n == "sum" || n == "prod" || n == "int" || n == "oint" || n == "lim" || n == "max" || n == "min";
    }

    static char const *accent_of(Element const &e)
    {
        if (e.name != "mo" && e.name != "mi")
            return nullptr;
        std::string const text = token_text(e);
        std::size_t i = 0;
        if (text.empty())
            return nullptr;
        char32_t const code = next_code_point(text, i);
        if (i != text.size())
            return nullptr;
        for (auto const &row : accents)
            if (row.code == code)
                return row.accent;
        return nullptr;
    }

    void script(Token::Kind kind, Element const &e, TokenList &out)
    {
        Token t;
        t.kind = kind;
        t.pos = e.pos;
        t.spelling = kind == Token::Kind::sub ? "<msub>" : "<msup>";
        t.args.push_back(argument(e));
        out.push_back(std::move(t));
    }

    void accent(char const *name, Element const &base, Element const &e, TokenList &out)
    {
        Token t;
        t.kind = Token::Kind::command;
        t.pos = e.pos;
        t.spelling = "<" + e.name + ">";
        if (std::string(name) == "conjugate") {
            t.name = "conjugate";
        } else {
            t.name = "accent";
            t.detail = name;
        }
        t.args.push_back(argument(base));
        out.push_back(std::move(t));
    }

    void under_over(Element const &e, TokenList &out)
    {
        bool const under = e.name == "munder", over = e.name == "mover";
        std::size_t const count = under || over ? 2 : 3;
        Element const &base = child(e, 0, count);
        TokenList b = argument(base);
        if (big_operator(b)) {
            out.insert(out.end(), b.begin(), b.end());
            if (!over)
                script(Token::Kind::sub, *e.kids[1], out);
            if (!under)
                script(Token::Kind::sup, *e.kids[count - 1], out);
            return;
        }
        if (count == 2)
            if (char const *name = accent_of(*e.kids[1]))
                if (under == (std::string(name) == "UnderBar"))
                    return accent(name, base, e, out);
        fail("Unsupported <" + e.name + "> (neither limits of a big operator nor an accent)", e.pos);
    }

    static std::string lines(std::string const &words)
    {
        std::string out;
        std::size_t i = 0;
        while (i < words.size()) {
            while (i < words.size() && std::isspace(static_cast<unsigned char>(words[i])))
                ++i;
            std::size_t const b = i;
            while (i < words.size() && !std::isspace(static_cast<unsigned char>(words[i])))
                ++i;
            if (i > b)
                out += words.compare(b, i - b, "none") == 0 ? 'n' : words.compare(b, i - b, "dashed") == 0 ? 'd' : 's';
        }
        if (out.find_first_not_of('n') == std::string::npos)
            return std::string();
        if (out.find_first_not_of(out[0]) == std::string::npos)
            out.resize(1);
        return out;
    }

    void table(Element const &e, TokenList &out)
    {
        Token t;
        t.kind = Token::Kind::table;
        t.pos = e.pos;
        t.spelling = "<mtable>";
        for (auto const &r : e.kids) {
            if (r->name != "mtr" && r->name != "mlabeledtr")
                fail("<" + r->name + "> in a table", r->pos);
            std::vector<TokenList> cells;
            bool skip_label = r->name == "mlabeledtr";
            for (auto const &c : r->kids) {
                if (skip_label) {
                    skip_label = false;
                    continue;
                }
                if (c->name != "mtd")
                    fail("<" + c->name + "> in a table row", c->pos);
                cells.push_back(row(*c));
            }
            t.cells.push_back(std::move(cells));
        }
        if (t.cells.empty())
            fail("An empty table", e.pos);
        t.rowl = lines(e.attribute("rowlines"));
        t.coll = lines(e.attribute("columnlines"));
        std::string const frame = e.attribute("frame");
        if (frame == "solid")
            t.frl = "S";
        else if (frame == "dashed")
            t.frl = "d";
        out.push_back(std::move(t));
    }

    void fenced(Element const &e, TokenList &out)
    {
        std::string const open = e.attribute("open", "("), close = e.attribute("close", ")");
        std::string separators;
        for (char c : e.attribute("separators", ","))
            if (!std::isspace(static_cast<unsigned char>(c)))
                separators += c;
        auto fence = [&](std::string const &text, Token::Role role) {
            Element mo;
            mo.name = "mo";
            mo.text = text;
            mo.pos = e.pos;
            TokenList one;
            operator_token(mo, one);
            if (one.empty())
                return out.push_back(symbol(".", e, "<mfenced>", role));
            one[0].role = role;
            out.push_back(one[0]);
        };
        fence(open, Token::Role::open);
        for (std::size_t k = 0; k < e.kids.size(); ++k) {
            if (k > 0 && !separators.empty())
                out.push_back(symbol(std::string(1, separators[std::min(k - 1, separators.size() - 1)]), e, "<mfenced>"));
            out.push_back(group(argument(*e.kids[k]), *e.kids[k]));
        }
        fence(close, Token::Role::close);
    }

    void convert(Element const &e, TokenList &out)
    {
        Nesting nesting(depth_, e.pos);
        std::string const &n = e.name;
        if (n == "mrow" || n == "mstyle" || n == "mpadded" || n == "math") {
            TokenList inner = row(e);
            if (inner.size() == 1 && inner[0].kind != Token::Kind::symbol)
                out.push_back(std::move(inner[0]));
            else if (!inner.empty())
                out.push_back(group(std::move(inner), e));
        } else if (n == "semantics" || n == "maction") {
            if (!e.kids.empty())
                convert(*e.kids[0], out);
        } else if (n == "mphantom" || n == "mspace" || n == "annotation" || n == "annotation-xml" || n == "none") {
        } else if (n == "mi") {
            std::string const text = token_text(e);
            if (text.empty())
                return;
            if (is_function_name(text) || text == "lim")
                out.push_back(symbol(text, e, "<mi>" + text + "</mi>"));
            else
                out.push_back(atom(identifier(text, e.pos, e.attribute("mathvariant") == "double-struck"), e));
        } else if (n == "mn") {
            std::string const text = token_text(e);
            auto node = ImportNode::make(ImportNode::Kind::num);
            node->add_text(text);
            out.push_back(atom(std::move(node), e));
        } else if (n == "mtext" || n == "ms") {
            std::string const text = token_text(e);
            if (text.empty())
                return;
            if (n == "mtext" && is_function_name(text))
                return out.push_back(symbol(text, e, "<mtext>" + text + "</mtext>"));
            auto node = ImportNode::make(ImportNode::Kind::str);
            node->add_text(text);
            out.push_back(atom(std::move(node), e));
        } else if (n == "mo") {
            operator_token(e, out);
        } else if (n == "mfrac") {
            Token t;
            t.kind = Token::Kind::command;
            std::string const thickness = trim(e.attribute("linethickness"));
            t.name = thickness == "0" || thickness == "0px" || thickness == "0pt" || thickness == "0em" ? "binom" : "frac";
            t.pos = e.pos;
            t.spelling = "<mfrac>";
            t.args.push_back(argument(child(e, 0, 2)));
            t.args.push_back(argument(child(e, 1, 2)));
            out.push_back(std::move(t));
        } else if (n == "msqrt" || n == "mroot") {
            Token t;
            t.kind = Token::Kind::command;
            t.name = "sqrt";
            t.pos = e.pos;
            t.spelling = "<" + n + ">";
            if (n == "msqrt") {
                t.args.push_back(row(e));
            } else {
                t.args.push_back(argument(child(e, 0, 2)));
                t.args.push_back(argument(child(e, 1, 2)));
            }
            out.push_back(std::move(t));
        } else if (n == "msub" || n == "msup" || n == "msubsup") {
            std::size_t const count = n == "msubsup" ? 3 : 2;
            Element const &base = child(e, 0, count);
            if (n == "msup")
                if (char const *name = accent_of(*e.kids[1]))
                    if (std::string(name) == "prime") {
                        TokenList b = argument(base);
                        out.insert(out.end(), b.begin(), b.end());
                        out.push_back(symbol("'", e, "<msup>"));
                        return;
                    }
            TokenList b = argument(base);
            if (b.empty())
                fail("<" + n + "> without a base", e.pos);
            out.insert(out.end(), b.begin(), b.end());
            if (n != "msup")
                script(Token::Kind::sub, *e.kids[1], out);
            if (n != "msub")
                script(Token::Kind::sup, *e.kids[count - 1], out);
        } else if (n == "munder" || n == "mover" || n == "munderover") {
            under_over(e, out);
        } else if (n == "mtable") {
            table(e, out);
        } else if (n == "mfenced") {
            fenced(e, out);
        } else if (n == "menclose" && e.attribute("notation") == "radical") {
            Token t;
            t.kind = Token::Kind::command;
            t.name = "sqrt";
            t.pos = e.pos;
            t.spelling = "<menclose>";
            t.args.push_back(row(e));
            out.push_back(std::move(t));
        } else if (n == "merror") {
            fail("The formula holds an error (<merror>)", e.pos);
        } else if (is_content(e)) {
            fail("Content markup <" + n + "> inside presentation markup", e.pos);
        } else {
            fail("Unsupported MathML element <" + n + ">", e.pos);
        }
    }

    // ---- content markup ----

    ImportNodePtr placeholder(SourcePos pos) const
    {
        auto node = ImportNode::placeholder();
        node->pos = pos;
        return node;
    }

    ImportNodePtr expr(std::string const &tmp, std::vector<ImportNodePtr> kids, SourcePos pos) const
    {
        auto node = ImportNode::expr(tmp, std::move(kids));
        node->pos = pos;
        return node;
    }

    ImportNodePtr number(std::string const &text, SourcePos pos) const
    {
        std::string t = trim(text);
        bool negative = false;
        if (t.compare(0, 1, "-") == 0 || t.compare(0, 3, "\xE2\x88\x92") == 0) {
            negative = true;
            t = trim(t.substr(t[0] == '-' ? 1 : 3));
        }
        if (t.empty())
            fail("An empty <cn>", pos);
        auto node = ImportNode::make(ImportNode::Kind::num);
        node->add_text(t);
        node->pos = pos;
        if (!negative)
            return node;
        auto plus = ImportNode::make(ImportNode::Kind::plus);
        plus->sgn = "-";
        plus->pos = pos;
        plus->kids.push_back(std::move(node));
        return plus;
    }

    ImportNodePtr cn(Element const &e) const
    {
        std::string const type = e.attribute("type");
        std::size_t const sep = e.text.find('\x01');
        if (sep != std::string::npos) {
            auto a = number(e.text.substr(0, sep), e.pos);
            auto b = number(e.text.substr(sep + 1), e.pos);
            std::vector<ImportNodePtr> kids;
            if (type == "rational") {
                kids.push_back(std::move(a));
                kids.push_back(std::move(b));
                return expr("divide", std::move(kids), e.pos);
            }
            if (type == "e-notation") {
                std::vector<ImportNodePtr> power;
                power.push_back(number("10", e.pos));
                power.push_back(std::move(b));
                kids.push_back(std::move(a));
                kids.push_back(expr("power", std::move(power), e.pos));
                return expr("times", std::move(kids), e.pos);
            }
            fail("A <cn> of type '" + type + "' with <sep/>", e.pos);
        }
        return number(e.text, e.pos);
    }

    struct Applied
    {
        std::string head;
        Element const *head_element = nullptr;
        std::vector<Element const *> bvars;
        Element const *lowlimit = nullptr, *uplimit = nullptr, *condition = nullptr, *degree = nullptr,
                      *domain = nullptr;
        std::vector<Element const *> args;
    };

    static Element const *only_child(Element const &e)
    {
        if (e.kids.size() != 1)
            fail("<" + e.name + "> needs one child", e.pos);
        return e.kids[0].get();
    }

    Applied split(Element const &e) const
    {
        Applied a;
        for (auto const &kid : e.kids) {
            Element const *k = kid.get();
            if (!a.head_element) {
                a.head_element = k;
                a.head = k->name == "csymbol" ? trim(k->text) : k->name;
            } else if (k->name == "bvar") {
                a.bvars.push_back(only_child(*k));
            } else if (k->name == "lowlimit") {
                a.lowlimit = only_child(*k);
            } else if (k->name == "uplimit") {
                a.uplimit = only_child(*k);
            } else if (k->name == "condition") {
                a.condition = only_child(*k);
            } else if (k->name == "degree") {
                a.degree = only_child(*k);
            } else if (k->name == "domainofapplication" || k->name == "logbase") {
                a.domain = only_child(*k);
            } else {
                a.args.push_back(k);
            }
        }
        if (!a.head_element)
            fail("An empty <apply>", e.pos);
        return a;
    }

    ImportNodePtr optional(Element const *e, SourcePos pos)
    {
        return e ? content(*e) : placeholder(pos);
    }

    ImportNodePtr body(Applied const &a, SourcePos pos)
    {
        if (a.args.size() > 1)
            fail("<" + a.head + "> with more than one operand", pos);
        return a.args.empty() ? placeholder(pos) : content(*a.args[0]);
    }

    static bool is_negation(ImportNode const &n)
    {
        return n.kind == ImportNode::Kind::plus && n.sgn == "-" && n.kids.size() == 1;
    }

    ImportNodePtr apply(Element const &e)
    {
        Applied const a = split(e);
        SourcePos const pos = e.pos;
        std::string const &h = a.head;
        std::vector<ImportNodePtr> kids;
        if (h == "plus" || h == "minus") {
            auto node = ImportNode::make(ImportNode::Kind::plus);
            node->pos = pos;
            for (std::size_t k = 0; k < a.args.size(); ++k) {
                auto arg = content(*a.args[k]);
                bool negative = h == "minus" && (k > 0 || a.args.size() == 1);
                if (h == "plus" && is_negation(*arg) && k > 0) {
                    arg = std::move(arg->kids[0]);
                    negative = true;
                }
                node->sgn += negative ? '-' : '+';
                node->kids.push_back(std::move(arg));
            }
            if (node->kids.empty() || (h == "minus" && node->kids.size() > 2))
                fail("<" + h + "> with " + std::to_string(node->kids.size()) + " operands", pos);
            return node;
        }
        if (h == "root") {
            kids.push_back(body(a, pos));
            if (!a.degree)
                return expr("sqrt", std::move(kids), pos);
            kids.push_back(content(*a.degree));
            return expr("root", std::move(kids), pos);
        }
        if (h == "sum" || h == "product") {
            kids.push_back(body(a, pos));
            if (a.lowlimit && !a.bvars.empty()) {
                std::vector<ImportNodePtr> eq;
                eq.push_back(content(*a.bvars[0]));
                eq.push_back(content(*a.lowlimit));
                kids.push_back(expr("eq", std::move(eq), pos));
            } else {
                kids.push_back(optional(a.condition ? a.condition : a.lowlimit ? a.lowlimit
                                                     : a.bvars.empty()  ? nullptr
                                                                        : a.bvars[0],
                                        pos));
            }
            kids.push_back(optional(a.uplimit, pos));
            return expr(h, std::move(kids), pos);
        }
        if (h == "int" || h == "oint") {
            kids.push_back(body(a, pos));
            kids.push_back(optional(a.bvars.empty() ? nullptr : a.bvars[0], pos));
            if (h == "oint" || a.domain) {
                kids.push_back(optional(a.domain ? a.domain : a.condition, pos));
                return expr("oint", std::move(kids), pos);
            }
            if (!a.lowlimit && !a.uplimit)
                return expr("int", std::move(kids), pos);
            kids.push_back(optional(a.lowlimit, pos));
            kids.push_back(optional(a.uplimit, pos));
            return expr("defint", std::move(kids), pos);
        }
        if (h == "limit") {
            kids.push_back(body(a, pos));
            kids.push_back(optional(a.bvars.empty() ? nullptr : a.bvars[0], pos));
            ImportNodePtr target = optional(a.lowlimit ? a.lowlimit : a.condition, pos);
            if (target->is_expr("tendsto") && target->kids.size() == 2)
                target = std::move(target->kids[1]);
            kids.push_back(std::move(target));
            return expr("limit", std::move(kids), pos);
        }
        if (h == "diff" || h == "partialdiff") {
            kids.push_back(body(a, pos));
            kids.push_back(optional(a.bvars.empty() ? nullptr : a.bvars[0], pos));
            return expr(h, std::move(kids), pos);
        }
        if (h == "forall" || h == "exists") {
            kids.push_back(optional(a.condition ? a.condition : a.bvars.empty() ? nullptr : a.bvars[0], pos));
            kids.push_back(body(a, pos));
            return expr(h, std::move(kids), pos);
        }
        std::string const &head_name = a.head_element->name;
        if (head_name == "ci" || head_name == "apply" || head_name == "mi" || h == "apply") {
            if (h == "apply" && head_name == "csymbol") {
                for (Element const *arg : a.args)
                    kids.push_back(content(*arg));
                return expr("apply", std::move(kids), pos);
            }
            kids.push_back(content(*a.head_element));
            for (Element const *arg : a.args)
                kids.push_back(content(*arg));
            return expr("apply", std::move(kids), pos);
        }
        for (Element const *arg : a.args)
            kids.push_back(content(*arg));
        MathTemplate *tmpl = table_.get_template(Kxt::to_ustring(h).c_str());
        if (!tmpl)
            fail("Unknown content MathML operator <" + h + ">", a.head_element->pos);
        // A table template applied to a matrix is that table (a determinant, a system).
        if (kids.size() == 1 && kids[0]->kind == ImportNode::Kind::tab && tmpl->table_layout()) {
            kids[0]->name = h;
            return std::move(kids[0]);
        }
        if (!takes_operands(*tmpl, kids.size()))
            fail("<" + h + "> with " + std::to_string(kids.size()) + " operand" + (kids.size() == 1 ? "" : "s"),
                 a.head_element->pos);
        return expr(h, std::move(kids), pos);
    }

    ImportNodePtr table_node(std::string const &tmp, std::vector<std::vector<ImportNodePtr>> rows, SourcePos pos) const
    {
        auto node = ImportNode::make(ImportNode::Kind::tab, tmp);
        node->pos = pos;
        std::size_t cols = 0;
        for (auto const &r : rows)
            cols = std::max(cols, r.size());
        node->rows = rows.size();
        node->cols = cols;
        for (auto &r : rows)
            for (std::size_t c = 0; c < cols; ++c)
                node->kids.push_back(c < r.size() ? std::move(r[c]) : placeholder(pos));
        return node;
    }

    ImportNodePtr content(Element const &e)
    {
        Nesting nesting(depth_, e.pos);
        std::string const &n = e.name;
        SourcePos const pos = e.pos;
        if (n == "semantics") {
            Element const *first = first_formula(e);
            if (!first)
                fail("An empty <semantics>", pos);
            return content(*first);
        }
        if (n == "ci") {
            if (!e.kids.empty()) {
                TokenList tokens = row(e);
                return parse_formula(tokens, table_);
            }
            return identifier(trim(e.text), pos);
        }
        if (n == "cn")
            return cn(e);
        if (n == "cs") {
            auto node = ImportNode::make(ImportNode::Kind::str);
            node->add_text(e.text);
            node->pos = pos;
            return node;
        }
        if (n == "csymbol")
            return identifier(trim(e.text), pos);
        static char const *const constants[][2] = {
            {"pi", "\xCF\x80"}, {"infinity", "\xE2\x88\x9E"}, {"exponentiale", "e"}, {"imaginaryi", "i"},
            {"emptyset", "\xE2\x88\x85"},
        };
        for (auto const &c : constants)
            if (n == c[0])
                return identifier(c[1], pos);
        if (n == "true" || n == "false") {
            auto node = ImportNode::make(ImportNode::Kind::ident);
            node->add_char(n);
            node->pos = pos;
            return node;
        }
        if (n == "apply")
            return apply(e);
        if (n == "set" || n == "list") {
            Applied const a = split_container(e);
            if (n == "set" && a.condition) {
                ImportNodePtr condition = content(*a.condition);
                std::vector<ImportNodePtr> kids;
                if (condition->is_expr("and") && condition->kids.size() == 2) {
                    kids.push_back(std::move(condition->kids[0]));
                    kids.push_back(std::move(condition->kids[1]));
                } else {
                    Element const *element = a.bvars.empty() ? (a.args.size() == 1 ? a.args[0] : nullptr) : a.bvars[0];
                    kids.push_back(optional(element, pos));
                    kids.push_back(std::move(condition));
                }
                return expr("setbuilder", std::move(kids), pos);
            }
            std::vector<ImportNodePtr> kids;
            bool equations = n == "list" && !a.args.empty();
            for (Element const *arg : a.args) {
                kids.push_back(content(*arg));
                equations = equations && kids.back()->is_expr("eq") && kids.back()->kids.size() == 2;
            }
            if (equations) {
                // A list of equations is a system of them.
                std::vector<std::vector<ImportNodePtr>> rows;
                for (auto &eq : kids) {
                    rows.emplace_back();
                    rows.back().push_back(std::move(eq->kids[0]));
                    rows.back().push_back(std::move(eq->kids[1]));
                }
                return table_node("system", std::move(rows), pos);
            }
            return expr(n, std::move(kids), pos);
        }
        if (n == "interval") {
            std::string const closure = e.attribute("closure", "closed");
            static char const *const closures[][2] = {
                {"closed", "interval"}, {"open", "interval_open"}, {"closed-open", "interval_closed_open"},
                {"open-closed", "interval_open_closed"},
            };
            for (auto const &c : closures) {
                if (closure == c[0]) {
                    if (e.kids.size() != 2)
                        fail("<interval> needs two ends", pos);
                    std::vector<ImportNodePtr> kids;
                    kids.push_back(content(*e.kids[0]));
                    kids.push_back(content(*e.kids[1]));
                    return expr(c[1], std::move(kids), pos);
                }
            }
            fail("Unknown interval closure '" + closure + "'", pos);
        }
        if (n == "vector") {
            std::vector<std::vector<ImportNodePtr>> rows;
            for (auto const &kid : e.kids) {
                rows.emplace_back();
                rows.back().push_back(content(*kid));
            }
            if (rows.empty())
                fail("An empty <vector>", pos);
            return table_node("vector", std::move(rows), pos);
        }
        if (n == "matrix") {
            std::vector<std::vector<ImportNodePtr>> rows;
            for (auto const &r : e.kids) {
                if (r->name != "matrixrow")
                    fail("<" + r->name + "> in a <matrix>", r->pos);
                rows.emplace_back();
                for (auto const &c : r->kids)
                    rows.back().push_back(content(*c));
            }
            if (rows.empty())
                fail("An empty <matrix>", pos);
            return table_node("matrix", std::move(rows), pos);
        }
        if (n == "piecewise") {
            std::vector<std::vector<ImportNodePtr>> rows;
            for (auto const &p : e.kids) {
                rows.emplace_back();
                if (p->name == "piece" && p->kids.size() == 2) {
                    rows.back().push_back(content(*p->kids[0]));
                    rows.back().push_back(content(*p->kids[1]));
                } else if (p->name == "otherwise" && p->kids.size() == 1) {
                    rows.back().push_back(content(*p->kids[0]));
                } else {
                    fail("<" + p->name + "> in a <piecewise>", p->pos);
                }
            }
            if (rows.empty())
                fail("An empty <piecewise>", pos);
            return table_node("piecewise", std::move(rows), pos);
        }
        if (n == "bind")
            fail("Unsupported content MathML element <bind>", pos);
        fail("Unknown content MathML element <" + n + ">", pos);
    }

    Applied split_container(Element const &e) const
    {
        Applied a;
        for (auto const &kid : e.kids) {
            if (kid->name == "bvar")
                a.bvars.push_back(only_child(*kid));
            else if (kid->name == "condition")
                a.condition = only_child(*kid);
            else
                a.args.push_back(kid.get());
        }
        return a;
    }
};

}  // namespace

ImportNodePtr read_mathml(std::string const &text, TemplateTable &table)
{
    auto root = TreeBuilder().parse(replace_entities(text));
    return Reader(table).read(*root);
}

}  // namespace Tavi
