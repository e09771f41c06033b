// JoinSymbTemplate: the template "joinsymb", symbols set one after another with nothing between
// them and kept whole on a line, such as a name joined to a scripted name.
#pragma once

#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

class JoinSymbTemplate : public MathTemplate
{
public:
    JoinSymbTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator);

    using MathTemplate::create_node;
    MathNode *create_node() override;
    // A name, an accented name, a placeholder or a scripted name.
    bool valid_overlay_arg(MathNode *node) override;
};

}  // namespace Tavi
