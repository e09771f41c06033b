// TemplateTable: numbers and identifiers made from plain text, and the made-up names under which
// decorated identifiers travel to a host and come back.
#include <cstdio>
#include <string>
#include <typeinfo>

#include "tavi/kxt/utf.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathidentnode.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathplusnode.h"
#include "tavi/math/templates/decimalpoint.h"
#include "tavi/math/templates/mathidentmapping.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/numberscan.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

namespace {

// The category of nodes that stand for an identifier.
constexpr long identifier_category = 20;

bool is_blank(wchar c) { return c < 33; }
bool is_ascii_letter(wchar c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }
bool is_ascii_digit(wchar c) { return c >= u'0' && c <= u'9'; }

// Frees a node that nothing holds yet.
void discard(MathNode *node)
{
    if (node) {
        node->ref();
        node->unref();
    }
}

}  // namespace

MathNode *TemplateTable::node_of(wchar const *type_name)
{
    MathTemplate *templ = get_template(type_name);
    return templ != nullptr ? templ->create_node() : nullptr;
}

// A negative sign is a sum of one operand signed minus: that is how the editor shows a negation.
// The exponent part is the product of the mantissa and a power of ten.
MathNode *TemplateTable::number_from_string(wchar const *text)
{
    ScannedNumber scanned;
    if (!scan_number(text, decimal_point(), scanned))
        return nullptr;
    MathTemplate *number = get_template(u"cn");
    if (number == nullptr)
        return nullptr;

    auto negate = [this](MathNode *operand) -> MathNode * {
        MathNode *sum = node_of(u"plus");
        auto *plus = dynamic_cast<MathPlusNode *>(sum);
        if (plus == nullptr) {
            discard(sum);
            discard(operand);
            return nullptr;
        }
        plus->append(operand);
        plus->toggle_sign(0);
        return plus;
    };

    MathNode *result = number->create_node(scanned.mantissa.c_str());
    if (result != nullptr && !scanned.exponent.empty()) {
        MathNode *exponent = number->create_node(scanned.exponent.c_str());
        if (scanned.negative_exponent)
            exponent = negate(exponent);
        MathNode *power = node_of(u"power");
        MathNode *times = node_of(u"times");
        if (exponent == nullptr || power == nullptr || times == nullptr) {
            discard(exponent);
            discard(power);
            discard(times);
            discard(result);
            return nullptr;
        }
        power->append(number->create_node(u"10"));
        power->append(exponent);
        times->append(result);
        times->append(power);
        result = times;
    }
    if (result != nullptr && scanned.negative)
        result = negate(result);
    return result;
}

MathNode *TemplateTable::ident_from_string(wchar const *text)
{
    if (text == nullptr)
        return nullptr;
    wchar const *p = text;
    while (*p != 0 && is_blank(*p))
        ++p;
    if (!is_ascii_letter(*p))
        return nullptr;
    wchar const *start = p;
    while (is_ascii_letter(*p) || is_ascii_digit(*p))
        ++p;
    wstring const name(start, p);
    while (*p != 0 && is_blank(*p))
        ++p;
    if (*p != 0)
        return nullptr;
    MathTemplate *ident = get_template(u"ci");
    return ident != nullptr ? ident->create_node(name.c_str()) : nullptr;
}

MathIdentMapping *TemplateTable::find_generated_ident(MathNode *node) const
{
    if (node == nullptr)
        return nullptr;
    for (MathIdentMapping *mapping : ident_mappings_)
        if (mapping->node->is_equal(node))
            return mapping;
    return nullptr;
}

// Only a node that stands for an identifier without being a plain one needs a name; a plain
// identifier goes to the host under its own text.
char const *TemplateTable::generated_ident_name(MathNode *node)
{
    if (node == nullptr || node->cat_type() != identifier_category)
        return nullptr;
    std::type_info const &kind = typeid(*node);
    if (kind == typeid(MathIdentNode) || kind == typeid(MathDummyNode))
        return nullptr;
    if (MathIdentMapping *known = find_generated_ident(node))
        return known->name.c_str();

    ++generated_ident_count_;
    char name[32];
    std::snprintf(name, sizeof name, "-%ld", generated_ident_count_);
    MathNode *copy = static_cast<MathNode *>(node->clone(true));
    ident_mappings_.push_back(new MathIdentMapping(copy, name));
    return ident_mappings_.back()->name.c_str();
}

// Host identifiers never begin with "-", so a name that does can only be one made here.
MathNode *TemplateTable::decorated_ident(wchar const *name)
{
    if (name == nullptr || name[0] != u'-')
        return nullptr;
    for (MathIdentMapping *mapping : ident_mappings_)
        if (Kxt::to_ustring(mapping->name) == name)
            return static_cast<MathNode *>(mapping->node->clone(true));
    return nullptr;
}

}  // namespace Tavi
