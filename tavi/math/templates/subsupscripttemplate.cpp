// SubSupscriptTemplate: script nodes laid out by LayoutSubSup over the node's children in order.
#include "tavi/math/templates/subsupscripttemplate.h"

#include "tavi/math/layout/layoutfixedplaceholder.h"
#include "tavi/math/layout/layoutsubsup.h"
#include "tavi/math/mathsubsupscriptnode.h"
#include "tavi/math/templates/overlayargs.h"

namespace Tavi {

SubSupscriptTemplate::SubSupscriptTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator)
    : MathTemplate(table, u"subsupscript", can_enter, keyword, accelerator, 3, false, 3, false, true, false, 0, 0,
                   no_parens_priority)
{
    LayoutSubSup *scripts = new LayoutSubSup;
    for (long i = 0; i < 3; ++i)
        scripts->append(new LayoutFixedPlaceholder(table, 0, i, LayoutPlaceholder::inherit));
    layout(scripts);
}

MathNode *SubSupscriptTemplate::create_node() { return new MathSubSupscriptNode(this); }

bool SubSupscriptTemplate::valid_overlay_arg(MathNode *node) { return is_name_like(node); }

}  // namespace Tavi
