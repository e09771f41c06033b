// NumberTemplate: atoms of the "cn" template, made from their text.
#include "tavi/math/templates/numbertemplate.h"

#include "tavi/math/layout/layoutnumbernode.h"
#include "tavi/math/mathnumbernode.h"
#include "tavi/math/templates/decimalpoint.h"

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

// A host writes numbers with "."; the user reads them with the decimal point in force.
MathNode *NumberTemplate::create_cat_node(wchar const *text)
{
    wchar const point = decimal_point();
    if (text == nullptr || point == u'.')
        return create_node(text);
    wstring number(text);
    std::size_t const at = number.find(u'.');
    if (at == wstring::npos)
        return create_node(text);
    number[at] = point;
    return create_node(number.c_str());
}

}  // namespace Tavi
