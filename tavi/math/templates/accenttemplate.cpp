// AccentTemplate: accent nodes, and the layout that puts the mark with the base.
#include "tavi/math/templates/accenttemplate.h"

#include "tavi/math/layout/layoutfixedplaceholder.h"
#include "tavi/math/layout/layoutover.h"
#include "tavi/math/layout/layoutrow.h"
#include "tavi/math/layout/layoutsup.h"
#include "tavi/math/layout/layoutunder.h"
#include "tavi/math/mathaccentnode.h"
#include "tavi/math/templates/overlayargs.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

namespace {

MathLayout *outer_layout(AccentTemplate::Layout where)
{
    switch (where) {
    case AccentTemplate::over: return new LayoutOver(false);
    case AccentTemplate::over_accent: return new LayoutOver(true);
    case AccentTemplate::under: return new LayoutUnder(false);
    case AccentTemplate::under_accent: return new LayoutUnder(true);
    case AccentTemplate::sup: return new LayoutSup;
    case AccentTemplate::row: break;
    }
    return new LayoutRow;
}

}  // namespace

AccentTemplate::AccentTemplate(TemplateTable *table, wchar const *type_name, bool can_enter, wchar const *keyword,
                               TemplateAccelerator const &accelerator, wchar const *cat_text, Layout where)
    : MathTemplate(table, type_name, can_enter, keyword, accelerator, 1, false, 1, false, true, false, 0, 0,
                   no_parens_priority),
      cat_text_(cat_text != nullptr ? cat_text : u"")
{
    // The base, then the mark.
    MathLayout *outer = outer_layout(where);
    outer->append(new LayoutFixedPlaceholder(table, 0, 0, LayoutPlaceholder::inherit));
    outer->append(table->get_layout_op(cat_text_.c_str(), LayoutOp::postfix, 0, 0));
    layout(outer);
}

MathNode *AccentTemplate::create_node() { return new MathAccentNode(this); }

bool AccentTemplate::valid_overlay_arg(MathNode *node) { return is_name_like(node); }

}  // namespace Tavi
