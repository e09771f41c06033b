// NumberTemplate: the template "cn" of numbers. A number handed over with "." is shown with the decimal
// point in force (see decimalpoint.h).
#pragma once

#include "tavi/math/templates/atomtemplate.h"

namespace Tavi {

class NumberTemplate : public AtomTemplate
{
public:
    NumberTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator);

    using AtomTemplate::create_node;
    // A MathNumberNode with the text.
    MathNode *create_node(wchar const *text) override;
    // A number from text that uses "." as decimal point: the first "." becomes the decimal point in
    // force when that is another character.
    MathNode *create_cat_node(wchar const *text) override;
};

}  // namespace Tavi
