// IdentTemplate: atoms of the "ci" template, made from their text.
#include "tavi/math/templates/identtemplate.h"

#include "tavi/math/layout/layoutidentnode.h"
#include "tavi/math/mathidentnode.h"

namespace Tavi {

IdentTemplate::IdentTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator)
    : AtomTemplate(table, u"ci", can_enter, keyword, accelerator)
{
    layout(new LayoutIdentNode);
}

MathNode *IdentTemplate::create_node(wchar const *text)
{
    MathIdentNode *node = new MathIdentNode(this);
    node->text(text);
    return node;
}

}  // namespace Tavi
