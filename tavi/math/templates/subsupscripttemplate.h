// SubSupscriptTemplate: the template "subsupscript", a base with a subscript and a superscript. Only a name, an accented name or a
// placeholder may carry the script as an overlay.
#pragma once

#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

class SubSupscriptTemplate : public MathTemplate
{
public:
    SubSupscriptTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator);

    using MathTemplate::create_node;
    MathNode *create_node() override;
    bool valid_overlay_arg(MathNode *node) override;
};

}  // namespace Tavi
