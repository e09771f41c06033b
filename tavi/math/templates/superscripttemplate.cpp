// SuperscriptTemplate: script nodes laid out by LayoutSup over the node's children in order.
#include "tavi/math/templates/superscripttemplate.h"

#include "tavi/math/layout/layoutfixedplaceholder.h"
#include "tavi/math/layout/layoutsup.h"
#include "tavi/math/mathsuperscriptnode.h"
#include "tavi/math/templates/overlayargs.h"

namespace Tavi {

SuperscriptTemplate::SuperscriptTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator)
    : MathTemplate(table, u"superscript", can_enter, keyword, accelerator, 2, false, 2, false, true, false, 0, 0,
                   no_parens_priority)
{
    LayoutSup *scripts = new LayoutSup;
    for (long i = 0; i < 2; ++i)
        scripts->append(new LayoutFixedPlaceholder(table, 0, i, LayoutPlaceholder::inherit));
    layout(scripts);
}

MathNode *SuperscriptTemplate::create_node() { return new MathSuperscriptNode(this); }

bool SuperscriptTemplate::valid_overlay_arg(MathNode *node) { return is_name_like(node); }

}  // namespace Tavi
