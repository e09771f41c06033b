// MinusTemplate: a difference entered as a sum with a negated term.
#include "tavi/math/templates/minustemplate.h"

#include "tavi/math/mathplusnode.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

MinusTemplate::MinusTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator,
                             double priority)
    : MathTemplate(table, u"minus", can_enter, keyword, accelerator, 2, false, 2, true, true, false, 0, 0, priority)
{
}

MathNode *MinusTemplate::create_node() { return table()->get_template(u"plus")->create_node(); }

MathNode *MinusTemplate::create_edit_node()
{
    auto *node = static_cast<MathPlusNode *>(create_node());
    MathTemplate *dummy = table()->get_dummy_template();
    for (int i = 0; i < 2; ++i)
        node->append(dummy->create_node());
    node->toggle_sign(1);
    return node;
}

}  // namespace Tavi
