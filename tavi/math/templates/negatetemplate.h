// NegateTemplate: the template "negate". There is no node of its own: a negation is a sum whose term 0 has a minus
// sign, so the node it makes belongs to the template "plus".
#pragma once

#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

class NegateTemplate : public MathTemplate
{
public:
    NegateTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator,
                  double priority);

    using MathTemplate::create_node;
    // An empty node of the template "plus".
    MathNode *create_node() override;
    using MathTemplate::create_edit_node;
    // A sum of 1 placeholder(s) whose term 0 is negated.
    MathNode *create_edit_node() override;
};

}  // namespace Tavi
