// NegateTemplate: a negation entered as a sum with a negated term.
#include "tavi/math/templates/negatetemplate.h"

#include "tavi/math/mathplusnode.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

NegateTemplate::NegateTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator,
                             double priority)
    : MathTemplate(table, u"negate", can_enter, keyword, accelerator, 1, false, 1, true, true, false, 0, 0, priority)
{
}

MathNode *NegateTemplate::create_node() { return table()->get_template(u"plus")->create_node(); }

MathNode *NegateTemplate::create_edit_node()
{
    auto *node = static_cast<MathPlusNode *>(create_node());
    MathTemplate *dummy = table()->get_dummy_template();
    for (int i = 0; i < 1; ++i)
        node->append(dummy->create_node());
    node->toggle_sign(0);
    return node;
}

}  // namespace Tavi
