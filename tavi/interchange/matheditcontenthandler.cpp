// MathEditContentHandler: the reader of the math edit content format.
#include "tavi/interchange/matheditcontenthandler.h"

#include <cstring>
#include <iostream>
#include <string>

#include "tavi/interchange/decimalseparator.h"
#include "tavi/kxt/utf.h"
#include "tavi/kxt/xmltext.h"
#include "tavi/math/mathatomnode.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathplusnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathtablenode.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

char const *BadMathEditContent::what() const noexcept { return "bad math edit content"; }

char const *MathEditContentHandler::nameSpace() { return "http://www.tavi-math.org/xml/MathEditContent"; }

namespace {

// Element and attribute names share one numbering; `expr` is both.
enum NameId : int {
    n_alt = 1,
    n_chr = 2,
    n_coll = 3,
    n_cols = 4,
    n_expr = 5,
    n_frl = 6,
    n_iacc = 7,
    n_ident = 8,
    n_ipop = 9,
    n_isub = 10,
    n_isup = 11,
    n_isubsup = 12,
    n_irow = 13,
    n_math = 14,
    n_kxType = 15,
    n_nm = 16,
    n_num = 17,
    n_plh = 18,
    n_plus = 19,
    n_readonly = 20,
    n_rowl = 21,
    n_rows = 22,
    n_sgn = 23,
    n_str = 24,
    n_style = 25,
    n_tex = 26,
    n_tab = 27,
    n_tmp = 28
};

// The names and their ids; names are few and short, so a walk finds them.
struct Name
{
    NameId id;
    char const *text;
};

Name const names[] = {
    {n_alt, "alt"},
    {n_chr, "chr"},
    {n_coll, "coll"},
    {n_cols, "cols"},
    {n_expr, "expr"},
    {n_frl, "frl"},
    {n_iacc, "iacc"},
    {n_ident, "ident"},
    {n_ipop, "ipop"},
    {n_isub, "isub"},
    {n_isup, "isup"},
    {n_isubsup, "isubsup"},
    {n_irow, "irow"},
    {n_math, "math"},
    {n_kxType, "kxType"},
    {n_nm, "nm"},
    {n_num, "num"},
    {n_plh, "plh"},
    {n_plus, "plus"},
    {n_readonly, "readonly"},
    {n_rowl, "rowl"},
    {n_rows, "rows"},
    {n_sgn, "sgn"},
    {n_str, "str"},
    {n_style, "style"},
    {n_tex, "tex"},
    {n_tab, "tab"},
    {n_tmp, "tmp"},
};

int name_id(char const *text)
{
    for (Name const &name : names)
        if (std::strcmp(name.text, text) == 0)
            return name.id;
    return 0;
}

// The elements that make a node, with the built-in template each one uses; expr, iacc and tab
// name their template in an attribute, and plh uses the table's placeholder template.
struct NodeElement
{
    int id;
    char16_t const *templ;
    char const *missing;  // the message when the template isn't there
};

NodeElement const node_elements[] = {
    {n_ident, u"ci", "template 'ci' missing\n"},
    {n_num, u"cn", "template 'cn' missing\n"},
    {n_str, u"string", "template 'string' missing\n"},
    {n_plus, u"plus", "template 'plus' missing\n"},
    {n_isub, u"subscript", "template 'subscript' missing\n"},
    {n_isup, u"superscript", "template 'superscript' missing\n"},
    {n_isubsup, u"subsupscript", "template 'subsupscript' missing\n"},
    {n_irow, u"joinsymb", "template 'joinsymb' missing\n"},
};

NodeElement const *built_in(int id)
{
    for (NodeElement const &e : node_elements)
        if (e.id == id)
            return &e;
    return nullptr;
}

// A boolean attribute: "1"/"true" and "0"/"false"; any other value counts as absent.
bool read_bool(Xml::Attribute const *attribute, bool &value)
{
    if (attribute == nullptr)
        return false;
    std::string const &v = attribute->value;
    if (v == "1" || v == "true") {
        value = true;
        return true;
    }
    if (v == "0" || v == "false") {
        value = false;
        return true;
    }
    return false;
}

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// A whole number with white space allowed around it; 0 when absent or unreadable.
std::size_t read_count(Xml::Attribute const *attribute)
{
    if (attribute == nullptr)
        return 0;
    std::string const &v = attribute->value;
    std::size_t i = 0;
    while (i < v.size() && is_blank(v[i]))
        ++i;
    std::size_t value = 0;
    std::size_t const digits = i;
    // Beyond a million rows or columns the number is not believed.
    constexpr std::size_t limit = 1000000;
    while (i < v.size() && v[i] >= '0' && v[i] <= '9') {
        value = value * 10 + static_cast<std::size_t>(v[i] - '0');
        if (value > limit)
            return 0;
        ++i;
    }
    if (i == digits)
        return 0;
    while (i < v.size() && is_blank(v[i]))
        ++i;
    return i == v.size() ? value : 0;
}

}  // namespace

MathEditContentHandler::MathEditContentHandler(TemplateTable &table)
    : table_(table), messages_(&std::cerr), separator_(decimal_separator())
{
}

MathEditContentHandler::~MathEditContentHandler()
{
    if (root_ != nullptr)
        root_->unref();
}

void MathEditContentHandler::fail(char const *message)
{
    *messages_ << "Error in math: " << message;
    throw BadMathEditContent();
}

void MathEditContentHandler::fail(char const *before, wstring const &name, char const *after)
{
    *messages_ << "Error in math: " << before << name.c_str() << after;
    throw BadMathEditContent();
}

bool MathEditContentHandler::map_name(char const *nameSpace, char const *localName, int &nameSpaceId, int &nameId)
{
    if (nameSpace == nullptr || nameSpace[0] == 0) {
        nameSpaceId = 0;
    } else if (std::strcmp(nameSpace, MathEditContentHandler::nameSpace()) == 0) {
        nameSpaceId = 1;
    } else {
        *messages_ << "unknown namespace '" << nameSpace << "'";
        return false;
    }
    int const id = localName != nullptr ? name_id(localName) : 0;
    if (id == 0) {
        *messages_ << "unknown element or attribute '" << (localName != nullptr ? localName : "") << "'";
        return false;
    }
    nameId = id;
    return true;
}

bool MathEditContentHandler::elementName(char const *nameSpace, char const *localName, int &nameSpaceId, int &nameId)
{
    return map_name(nameSpace, localName, nameSpaceId, nameId);
}

bool MathEditContentHandler::attributeName(char const *nameSpace, char const *localName, int &nameSpaceId,
                                           int &nameId)
{
    return map_name(nameSpace, localName, nameSpaceId, nameId);
}

MathNode *MathEditContentHandler::make_table(std::vector<Xml::Attribute> &attributes)
{
    Xml::Attribute const *tmp = Xml::findAttribute(attributes, n_tmp);
    if (tmp == nullptr)
        fail("tab@tmp missing\n");
    wstring const name = Kxt::to_ustring(tmp->value);
    MathTemplate *templ = table_.get_template(name.c_str());
    if (templ == nullptr)
        fail("tab@tmp '", name, "' unknown\n");
    auto *node = new MathTableNode(templ, read_count(Xml::findAttribute(attributes, n_rows)),
                                   read_count(Xml::findAttribute(attributes, n_cols)));
    struct Lines
    {
        int attribute;
        char16_t const *key;
    };
    static Lines const lines[] = {
        {n_rowl, u"rowlines"},
        {n_coll, u"columnlines"},
        {n_frl, u"framelines"},
    };
    for (Lines const &l : lines)
        if (Xml::Attribute const *a = Xml::findAttribute(attributes, l.attribute))
            node->attribute(l.key, Kxt::to_ustring(a->value).c_str());
    return node;
}

MathNode *MathEditContentHandler::make_node(int name, std::vector<Xml::Attribute> &attributes)
{
    switch (name) {
    case n_ident:
    case n_num:
    case n_str:
        if (in_token_)
            fail(name == n_ident ? "illegal <ident>\n" : name == n_num ? "illegal <num>\n" : "illegal <str>\n");
        [[fallthrough]];
    case n_plus:
    case n_isub:
    case n_isup:
    case n_isubsup:
    case n_irow: {
        NodeElement const *e = built_in(name);
        MathTemplate *templ = table_.get_template(e->templ);
        if (templ == nullptr)
            fail(e->missing);
        MathNode *node = templ->create_node();
        if (name == n_ident || name == n_num || name == n_str) {
            in_token_ = true;
            number_ = name == n_num;
        }
        if (name == n_plus) {
            Xml::Attribute const *sgn = Xml::findAttribute(attributes, n_sgn);
            signs_.push_back(sgn != nullptr ? Kxt::to_ustring(sgn->value) : wstring());
        }
        return node;
    }
    case n_plh: {
        MathTemplate *templ = table_.get_dummy_template();
        if (templ == nullptr)
            fail("template 'placeholder' missing\n");
        return templ->create_node();
    }
    case n_expr: {
        Xml::Attribute const *tmp = Xml::findAttribute(attributes, n_tmp);
        if (tmp == nullptr)
            fail("expr@tmp missing\n");
        wstring const name = Kxt::to_ustring(tmp->value);
        MathTemplate *templ = table_.get_template(name.c_str());
        if (templ == nullptr) {
            // A formula from a richer setup file keeps its children under a stand-in.
            *messages_ << "expr@tmp '" << name.c_str() << "' unknown\n";
            templ = table_.get_template(u"missingTemplate");
            if (templ == nullptr)
                fail("template 'missingTemplate' missing\n");
        }
        return templ->create_node();
    }
    case n_iacc: {
        Xml::Attribute const *nm = Xml::findAttribute(attributes, n_nm);
        if (nm == nullptr)
            fail("iacc@nm missing\n");
        wstring const given = Kxt::to_ustring(nm->value);
        wstring name = given;
        if (name == u"OverBar")
            name = u"overbar";
        else if (name == u"UnderBar")
            name = u"underbar";
        MathTemplate *templ = table_.get_template((name + u"_accent").c_str());
        if (templ == nullptr)
            fail("iacc@nm '", given, "' unknown\n");
        return templ->create_node();
    }
    case n_tab:
        return make_table(attributes);
    default:
        fail("new node expected\n");
    }
}

void MathEditContentHandler::read_math(std::vector<Xml::Attribute> &attributes)
{
    has_read_only_ = read_bool(Xml::findAttribute(attributes, n_readonly), read_only_);
    if (!has_read_only_)
        read_only_ = false;
    struct Text
    {
        int attribute;
        OptionalText MathEditContentHandler::*field;
    };
    static Text const texts[] = {
        {n_style, &MathEditContentHandler::style_}, {n_kxType, &MathEditContentHandler::kxType_},
        {n_alt, &MathEditContentHandler::alt_},     {n_expr, &MathEditContentHandler::expr_},
        {n_tex, &MathEditContentHandler::tex_},
    };
    for (Text const &t : texts) {
        OptionalText &field = this->*t.field;
        field.clear();
        Xml::Attribute const *a = Xml::findAttribute(attributes, t.attribute);
        if (a != nullptr && !a->value.empty()) {
            field.present = true;
            field.value = Kxt::to_ustring(a->value);
        }
    }
}

void MathEditContentHandler::read_chr(std::vector<Xml::Attribute> &attributes)
{
    auto *atom = dynamic_cast<MathAtomNode *>(current_);
    if (!in_token_ || atom == nullptr)
        fail("illegal <chr>\n");
    flush();
    Xml::Attribute const *nm = Xml::findAttribute(attributes, n_nm);
    if (nm == nullptr)
        fail("chr@nm missing\n");
    wstring const name = Kxt::to_ustring(nm->value);
    MathString named;
    if (!named.append_name(name.c_str()))
        fail("chr@nm '", name, "' unknown\n");
    MathString text = atom->text();
    text.append(named);
    atom->text(text, -1);
}

// The text gathered since the last flush goes to the end of the token's text as one run of plain
// text. In a number the user's separator stands for the format's point.
void MathEditContentHandler::flush()
{
    if (buffer_.empty())
        return;
    if (number_ && separator_ != u'.')
        replace_first(buffer_, u'.', separator_);
    MathString text = current_->text();
    text.append(buffer_.data(), buffer_.size(), MathString::f_text);
    current_->text(text, -1);
    buffer_.clear();
}

void MathEditContentHandler::set_root(MathNode *node)
{
    node->ref();
    if (root_ != nullptr)
        root_->unref();
    root_ = node;
}

void MathEditContentHandler::startElement(int, int name, std::vector<Xml::Attribute> &attributes)
{
    done_ = false;
    if (name == n_math) {
        read_math(attributes);
        return;
    }
    if (name == n_chr) {
        read_chr(attributes);
        return;
    }
    if (++depth_ > max_depth)
        fail("elements nested more than 2500 deep\n");
    MathNode *node = make_node(name, attributes);
    bool ipop = false;
    read_bool(Xml::findAttribute(attributes, n_ipop), ipop);
    if (node == nullptr)
        return;
    if (ipop)
        node->ip_operand(true);
    if (current_ == nullptr) {
        set_root(node);
    } else {
        current_->append(node);
        // A node that has no place for children (a token, a placeholder) refuses it.
        if (node->parent() != current_) {
            node->ref();
            node->unref();
            fail("illegal element\n");
        }
    }
    current_ = node;
}

void MathEditContentHandler::endElement(int, int name)
{
    done_ = false;
    switch (name) {
    case n_chr:
        return;
    case n_math:
        done_ = true;
        return;
    case n_ident:
    case n_str:
        if (!in_token_)
            fail("illegal <str> or <ident>\n");
        in_token_ = false;
        if (!buffer_.empty()) {
            if (dynamic_cast<MathAtomNode *>(current_) == nullptr)
                fail("illegal <str> or <ident>\n");
            flush();
        }
        break;
    case n_num:
        if (!in_token_ || dynamic_cast<MathAtomNode *>(current_) == nullptr)
            fail("illegal <num>\n");
        in_token_ = false;
        flush();
        number_ = false;
        break;
    case n_plus: {
        if (signs_.empty())
            fail("illegal <plus>\n");
        auto *plus = dynamic_cast<MathPlusNode *>(current_);
        if (plus == nullptr)
            fail("plus@sgn missing or empty\n");
        // Only now are all operands there for the signs to be matched against.
        plus->attribute(u"Signs", signs_.back().c_str());
        signs_.pop_back();
        break;
    }
    default:
        break;
    }
    --depth_;
    if (current_ == nullptr)
        fail("illegal element\n");
    current_ = dynamic_cast<MathNode *>(current_->parent());
}

void MathEditContentHandler::characterData(char const *data, int length)
{
    if (!in_token_ || data == nullptr || length <= 0)
        return;
    buffer_ += Kxt::to_ustring(data, static_cast<std::size_t>(length));
}

void MathEditContentHandler::cleanup()
{
    current_ = nullptr;
    if (root_ != nullptr) {
        root_->unref();
        root_ = nullptr;
    }
    in_token_ = false;
    number_ = false;
    // What the broken document left half done must not reach the next one.
    signs_.clear();
    buffer_.clear();
    depth_ = 0;
    Xml::Handler::cleanup();
}

MathRootNode *MathEditContentHandler::node()
{
    if (root_ == nullptr)
        return nullptr;
    auto *root = new MathRootNode(root_);
    if (has_read_only_)
        root->read_only(read_only_);
    root->style(style_.get());
    root->kxType(kxType_.get());
    root->alt_text(alt_.get());
    root->expr_text(expr_.get());
    root->tex_text(tex_.get());
    return root;
}

wchar const *MathEditContentHandler::expr() const { return expr_.get(); }

wchar const *MathEditContentHandler::tex() const { return tex_.get(); }

void MathEditContentHandler::reset()
{
    if (root_ != nullptr) {
        root_->unref();
        root_ = nullptr;
    }
    current_ = nullptr;
    style_.clear();
    kxType_.clear();
    alt_.clear();
    expr_.clear();
    tex_.clear();
    has_read_only_ = false;
    read_only_ = false;
    signs_.clear();
    buffer_.clear();
    depth_ = 0;
    in_token_ = false;
    number_ = false;
    done_ = false;
}

}  // namespace Tavi
