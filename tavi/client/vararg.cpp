// VarArg and its classes: copies, typed reads and the matching of signatures.
#include "tavi/client/vararg.h"

#include <string>

#include "tavi/glyph/subscript.h"
#include "tavi/math/mathnode.h"

namespace Tavi {

namespace {

// What each class is called in a signature and in the host's value system. The tags and the
// cat_childs numbers below are the host's, kept as they are even where they look odd (two classes
// share 36).
struct Kind
{
    char letter;  // 0: the class has no letter, it is matched by its brackets
    int cat_type;
    long cat_childs;  // -1: the class counts its elements
};

//                                 letter  cat_type  cat_childs
constexpr Kind long_kind          {'l',     3,        0};
constexpr Kind double_kind        {'d',     2,        0};
constexpr Kind bool_kind          {'b',    11,        0};
constexpr Kind string_kind        {'s',    10,        0};
constexpr Kind ident_kind         {'i',    20,        0};
constexpr Kind null_kind          {'0',    13,        0};
constexpr Kind nil_kind           {'n',    14,        0};
constexpr Kind list_kind          {0,      23,       -1};
constexpr Kind table_kind         {0,      25,        1};
constexpr Kind client_object_kind {'o',    36,        3};
constexpr Kind domain_kind        {'D',    35,        2};
constexpr Kind math_node_kind     {'m',    36,        2};

// Moves `s` behind the bracket that closes the one it stands on.
bool eat_brackets(char open, char close, char const *&s)
{
    if (s == nullptr || *s != open)
        return false;
    long depth = 0;
    for (char const *p = s; *p != 0; ++p) {
        if (*p == open) {
            ++depth;
        } else if (*p == close && --depth == 0) {
            s = p + 1;
            return true;
        }
    }
    return false;
}

// Matches the elements in order on a pointer of its own behind the opening bracket; on success `s`
// goes behind the closing one.
bool match_elements(std::vector<std::unique_ptr<VarArg>> const &items, char open, char close, char const *&s)
{
    if (s == nullptr || *s != open)
        return false;
    char const *p = s + 1;
    for (auto const &item : items)
        if (!item->match_type(p))
            return false;
    if (*p != close)
        return false;
    s = p + 1;
    return true;
}

}  // namespace

// ---- VarArg ----

VarArg::~VarArg() = default;

bool VarArg::match_type(char const *&s) const { return match_common(s); }

bool VarArg::match_common(char const *&s) const
{
    if (s == nullptr)
        return false;
    switch (*s) {
    case '*': {
        // The star stays where it is after a match, ready for the next value.
        char const *rest = s + 1;
        if (match_type(rest))
            return true;
        ++s;
        return eat_type(s);
    }
    case '+': {
        char const *rest = s + 1;
        if (!match_type(rest))
            return false;
        // The first value is in: what follows is the same item any number of times, asked on a copy
        // so that the caller's pointer doesn't move.
        std::string starred(s);
        starred[0] = '*';
        char const *copy = starred.c_str();
        return match_type(copy);
    }
    case '.':
        ++s;
        return true;
    default:
        return false;
    }
}

bool VarArg::match_letter(char letter, char const *&s) const
{
    if (s != nullptr && *s == letter) {
        ++s;
        return true;
    }
    return match_common(s);
}

bool VarArg::eat_type(char const *&s) const
{
    if (s == nullptr || *s != '.')
        return false;
    ++s;
    return true;
}

bool VarArg::eat_letter(char letter, char const *&s) const
{
    if (s != nullptr && *s == letter) {
        ++s;
        return true;
    }
    return VarArg::eat_type(s);
}

bool VarArg::long_val(long &) const { return false; }
bool VarArg::bool_val(bool &) const { return false; }
bool VarArg::double_val(double &) const { return false; }
bool VarArg::string_val(wchar const *&) const { return false; }
bool VarArg::ident_val(wchar const *&) const { return false; }
bool VarArg::list_val(ListArg const *&) const { return false; }
bool VarArg::table_val(TableArg const *&) const { return false; }
bool VarArg::obj_val(long &) const { return false; }
bool VarArg::domain_val(VarArg *&) const { return false; }
long VarArg::cat_childs() const { return 0; }

// ---- The scalar classes ----

VarArg *LongArg::clone() const { return new LongArg(value_); }
bool LongArg::match_type(char const *&s) const { return match_letter(long_kind.letter, s); }
bool LongArg::eat_type(char const *&s) const { return eat_letter(long_kind.letter, s); }
int LongArg::cat_type() const { return long_kind.cat_type; }
bool LongArg::long_val(long &value) const
{
    value = value_;
    return true;
}

VarArg *DoubleArg::clone() const { return new DoubleArg(value_); }
bool DoubleArg::match_type(char const *&s) const { return match_letter(double_kind.letter, s); }
bool DoubleArg::eat_type(char const *&s) const { return eat_letter(double_kind.letter, s); }
int DoubleArg::cat_type() const { return double_kind.cat_type; }
bool DoubleArg::double_val(double &value) const
{
    value = value_;
    return true;
}

VarArg *BoolArg::clone() const { return new BoolArg(value_); }
bool BoolArg::match_type(char const *&s) const { return match_letter(bool_kind.letter, s); }
bool BoolArg::eat_type(char const *&s) const { return eat_letter(bool_kind.letter, s); }
int BoolArg::cat_type() const { return bool_kind.cat_type; }
bool BoolArg::bool_val(bool &value) const
{
    value = value_;
    return true;
}

StringArg::StringArg(wchar const *text) : text_(text ? text : u"") {}
VarArg *StringArg::clone() const { return new StringArg(text_.c_str()); }
bool StringArg::match_type(char const *&s) const { return match_letter(string_kind.letter, s); }
bool StringArg::eat_type(char const *&s) const { return eat_letter(string_kind.letter, s); }
int StringArg::cat_type() const { return string_kind.cat_type; }
bool StringArg::string_val(wchar const *&value) const
{
    value = text_.c_str();
    return true;
}

IdentArg::IdentArg(wchar const *name) : name_(name ? name : u"") {}
VarArg *IdentArg::clone() const { return new IdentArg(name_.c_str()); }
bool IdentArg::match_type(char const *&s) const { return match_letter(ident_kind.letter, s); }
bool IdentArg::eat_type(char const *&s) const { return eat_letter(ident_kind.letter, s); }
int IdentArg::cat_type() const { return ident_kind.cat_type; }
bool IdentArg::ident_val(wchar const *&value) const
{
    value = name_.c_str();
    return true;
}

VarArg *NullArg::clone() const { return new NullArg; }
bool NullArg::match_type(char const *&s) const { return match_letter(null_kind.letter, s); }
bool NullArg::eat_type(char const *&s) const { return eat_letter(null_kind.letter, s); }
int NullArg::cat_type() const { return null_kind.cat_type; }

VarArg *NilArg::clone() const { return new NilArg; }
bool NilArg::match_type(char const *&s) const { return match_letter(nil_kind.letter, s); }
bool NilArg::eat_type(char const *&s) const { return eat_letter(nil_kind.letter, s); }
int NilArg::cat_type() const { return nil_kind.cat_type; }

// ---- ListArg ----

ListArg::ListArg() = default;
ListArg::~ListArg() = default;

VarArg *ListArg::clone() const
{
    ListArg *copy = new ListArg;
    for (auto const &item : items_)
        copy->push_back(item->clone());
    return copy;
}

bool ListArg::match_type(char const *&s) const
{
    if (match_elements(items_, '[', ']', s))
        return true;
    return match_common(s);
}

bool ListArg::eat_type(char const *&s) const
{
    if (eat_brackets('[', ']', s))
        return true;
    return VarArg::eat_type(s);
}

bool ListArg::list_val(ListArg const *&value) const
{
    value = this;
    return true;
}

int ListArg::cat_type() const { return list_kind.cat_type; }
long ListArg::cat_childs() const { return static_cast<long>(items_.size()); }

VarArg *ListArg::at(std::size_t index) const
{
    check_subscript(static_cast<long>(index), items_.size());
    return items_[index].get();
}

void ListArg::push_back(VarArg *value) { items_.emplace_back(value); }

// ---- TableArg ----

TableArg::TableArg() = default;
TableArg::~TableArg() = default;

VarArg *TableArg::clone() const
{
    TableArg *copy = new TableArg;
    for (std::size_t i = 0; i < size(); ++i)
        copy->push_back(key_at(i)->clone(), value_at(i)->clone());
    return copy;
}

bool TableArg::match_type(char const *&s) const
{
    if (match_elements(items_, '<', '>', s))
        return true;
    return match_common(s);
}

bool TableArg::eat_type(char const *&s) const
{
    if (eat_brackets('<', '>', s))
        return true;
    return VarArg::eat_type(s);
}

bool TableArg::table_val(TableArg const *&value) const
{
    value = this;
    return true;
}

int TableArg::cat_type() const { return table_kind.cat_type; }
long TableArg::cat_childs() const { return table_kind.cat_childs; }

VarArg *TableArg::key_at(std::size_t index) const
{
    check_subscript(static_cast<long>(index), size());
    return items_[2 * index].get();
}

VarArg *TableArg::value_at(std::size_t index) const
{
    check_subscript(static_cast<long>(index), size());
    return items_[2 * index + 1].get();
}

void TableArg::push_back(VarArg *key, VarArg *value)
{
    items_.emplace_back(key);
    items_.emplace_back(value);
}

// ---- Objects and domains ----

VarArg *ClientObjectArg::clone() const { return new ClientObjectArg(id_); }
bool ClientObjectArg::match_type(char const *&s) const { return match_letter(client_object_kind.letter, s); }
bool ClientObjectArg::eat_type(char const *&s) const { return eat_letter(client_object_kind.letter, s); }
int ClientObjectArg::cat_type() const { return client_object_kind.cat_type; }
long ClientObjectArg::cat_childs() const { return client_object_kind.cat_childs; }
bool ClientObjectArg::obj_val(long &value) const
{
    value = id_;
    return true;
}

DomainArg::DomainArg(VarArg *key) : key_(key) {}
DomainArg::~DomainArg() = default;
VarArg *DomainArg::clone() const { return new DomainArg(key_ ? key_->clone() : nullptr); }
bool DomainArg::match_type(char const *&s) const { return match_letter(domain_kind.letter, s); }
bool DomainArg::eat_type(char const *&s) const { return eat_letter(domain_kind.letter, s); }
int DomainArg::cat_type() const { return domain_kind.cat_type; }
long DomainArg::cat_childs() const { return domain_kind.cat_childs; }
bool DomainArg::domain_val(VarArg *&value) const
{
    value = key_.get();
    return true;
}

MathNodeArg::MathNodeArg(MathNode *node) : node_(node)
{
    if (node_)
        node_->ref();
}

MathNodeArg::~MathNodeArg()
{
    if (node_)
        node_->unref();
}

VarArg *MathNodeArg::clone() const { return new MathNodeArg(node_); }
bool MathNodeArg::match_type(char const *&s) const { return match_letter(math_node_kind.letter, s); }
bool MathNodeArg::eat_type(char const *&s) const { return eat_letter(math_node_kind.letter, s); }
int MathNodeArg::cat_type() const { return math_node_kind.cat_type; }
long MathNodeArg::cat_childs() const { return math_node_kind.cat_childs; }

}  // namespace Tavi
