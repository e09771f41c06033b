// AccentTemplate: a template that sets a fixed mark with its one operand: a bar, hat, tilde, dot or
// arrow over or under it, or a star or prime after it. The mark is an operator of the table's
// dictionary, looked up by its text in postfix form.
#pragma once

#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

class AccentTemplate : public MathTemplate
{
public:
    // Where the mark stands.
    enum Layout : int {
        over = 0,          // over the base, as a script (LayoutOver(false))
        over_accent = 1,   // over the base, as an accent, close to it (LayoutOver(true))
        under = 2,         // under the base, as a script (LayoutUnder(false))
        under_accent = 3,  // under the base, as an accent (LayoutUnder(true))
        sup = 4,           // as a superscript (LayoutSup)
        row = 5            // after the base on its line (LayoutRow)
    };

    // A layout value outside the list sets the mark after the base.
    AccentTemplate(TemplateTable *table, wchar const *type_name, bool can_enter, wchar const *keyword,
                   TemplateAccelerator const &accelerator, wchar const *cat_text, Layout where);

    using MathTemplate::create_node;
    MathNode *create_node() override;
    // A name, an accented name or a placeholder.
    bool valid_overlay_arg(MathNode *node) override;

    // The operator text of the mark.
    wchar const *cat_text() const { return cat_text_.c_str(); }

private:
    wstring cat_text_;
};

}  // namespace Tavi
