// SubscriptTemplate: script nodes laid out by LayoutSub over the node's children in order.
#include "tavi/math/templates/subscripttemplate.h"

#include "tavi/math/layout/layoutfixedplaceholder.h"
#include "tavi/math/layout/layoutsub.h"
#include "tavi/math/mathsubscriptnode.h"
#include "tavi/math/templates/overlayargs.h"

namespace Tavi {

SubscriptTemplate::SubscriptTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator)
    : MathTemplate(table, u"subscript", can_enter, keyword, accelerator, 2, false, 2, false, true, false, 0, 0,
                   no_parens_priority)
{
    LayoutSub *scripts = new LayoutSub;
    for (long i = 0; i < 2; ++i)
        scripts->append(new LayoutFixedPlaceholder(table, 0, i, LayoutPlaceholder::inherit));
    layout(scripts);
}

MathNode *SubscriptTemplate::create_node() { return new MathSubscriptNode(this); }

bool SubscriptTemplate::valid_overlay_arg(MathNode *node) { return is_name_like(node); }

}  // namespace Tavi
