// StringTemplate: atoms of the "string" template, made from their text.
#include "tavi/math/templates/stringtemplate.h"

#include "tavi/math/layout/layoutstringnode.h"
#include "tavi/math/mathstringnode.h"

namespace Tavi {

StringTemplate::StringTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator)
    : AtomTemplate(table, u"string", can_enter, keyword, accelerator)
{
    layout(new LayoutStringNode);
}

MathNode *StringTemplate::create_node(wchar const *text)
{
    MathStringNode *node = new MathStringNode(this);
    node->text(text);
    return node;
}

}  // namespace Tavi
