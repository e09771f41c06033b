// NumberTemplate: atoms of the "cn" template, made from their text.
#include "tavi/math/templates/numbertemplate.h"

#include <clocale>

#include "tavi/kxt/utf.h"
#include "tavi/math/layout/layoutnumbernode.h"
#include "tavi/math/mathnumbernode.h"

namespace Tavi {

NumberTemplate::NumberTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator)
    : AtomTemplate(table, u"cn", can_enter, keyword, accelerator)
{
    layout(new LayoutNumberNode);
}

MathNode *NumberTemplate::create_node(wchar const *text)
{
    MathNumberNode *node = new MathNumberNode(this);
    node->text(text);
    return node;
}

MathNode *NumberTemplate::create_cat_node(wchar const *text)
{
    char const *point = std::localeconv()->decimal_point;
    wstring const dot = point != nullptr ? Kxt::to_ustring(point) : wstring(u".");
    if (text == nullptr || dot == u".")
        return create_node(text);
    wstring number(text);
    std::size_t const at = number.find(u'.');
    if (at == wstring::npos)
        return create_node(text);
    number.replace(at, 1, dot);
    return create_node(number.c_str());
}

}  // namespace Tavi
