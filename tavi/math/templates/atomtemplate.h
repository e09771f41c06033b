// AtomTemplate: the base of the templates whose nodes hold text instead of operands (identifiers,
// numbers, strings, placeholders). An atom has no children, so none can be deleted.
#pragma once

#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

class AtomTemplate : public MathTemplate
{
public:
    AtomTemplate(TemplateTable *table, wchar const *type_name, bool can_enter, wchar const *keyword,
                 TemplateAccelerator const &accelerator);

    // The node of the empty text.
    MathNode *create_node() override;
    // No node here; each kind of atom makes its own.
    MathNode *create_node(wchar const *text) override;
    using MathTemplate::create_edit_node;
    // An entered node with the text `text` and the caret after it.
    MathNode *create_edit_node(MathString const &text) override;
    // An atom is entered bare: its node, no placeholders.
    MathNode *create_edit_node() override;
    DeleteOp delete_child_op(MathNode const *node, std::size_t child) override;
};

}  // namespace Tavi
