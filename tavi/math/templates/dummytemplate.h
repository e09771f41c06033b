// DummyTemplate: the template "dummy" of placeholders, the empty operands of a freshly entered node.
#pragma once

#include "tavi/math/mathstring.h"
#include "tavi/math/templates/atomtemplate.h"

namespace Tavi {

class DummyTemplate : public AtomTemplate
{
public:
    DummyTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator);

    using AtomTemplate::create_node;
    // A placeholder, whatever the text.
    MathNode *create_node(wchar const *text) override;

    // The placeholder character, the text that stands for a placeholder.
    MathString const &text() const { return text_; }

private:
    MathString text_;
};

}  // namespace Tavi
