// IdentTemplate: the template "ci" of identifiers, laid out as names (a letter slanted, a longer name upright).
#pragma once

#include "tavi/math/templates/atomtemplate.h"

namespace Tavi {

class IdentTemplate : public AtomTemplate
{
public:
    IdentTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator);

    using AtomTemplate::create_node;
    // A MathIdentNode with the text.
    MathNode *create_node(wchar const *text) override;
};

}  // namespace Tavi
