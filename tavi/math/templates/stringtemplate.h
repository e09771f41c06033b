// StringTemplate: the template "string" of quoted text.
#pragma once

#include "tavi/math/templates/atomtemplate.h"

namespace Tavi {

class StringTemplate : public AtomTemplate
{
public:
    StringTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator);

    using AtomTemplate::create_node;
    // A MathStringNode with the text.
    MathNode *create_node(wchar const *text) override;
};

}  // namespace Tavi
