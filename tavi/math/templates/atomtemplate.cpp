// AtomTemplate: nodes of text, entered with their text and the caret at its end.
#include "tavi/math/templates/atomtemplate.h"

#include "tavi/math/mathnode.h"
#include "tavi/math/mathstring.h"

namespace Tavi {

AtomTemplate::AtomTemplate(TemplateTable *table, wchar const *type_name, bool can_enter, wchar const *keyword,
                           TemplateAccelerator const &accelerator)
    : MathTemplate(table, type_name, can_enter, keyword, accelerator, 0, false, 0, false, false, false, 0, 0,
                   no_parens_priority)
{
}

MathNode *AtomTemplate::create_node() { return create_node(u""); }

MathNode *AtomTemplate::create_node(wchar const *) { return nullptr; }

MathNode *AtomTemplate::create_edit_node(MathString const &text)
{
    MathNode *node = create_edit_node();
    if (node)
        node->text(text, -1);
    return node;
}

MathNode *AtomTemplate::create_edit_node() { return create_node(); }

MathTemplate::DeleteOp AtomTemplate::delete_child_op(MathNode const *, std::size_t) { return delete_none; }

}  // namespace Tavi
