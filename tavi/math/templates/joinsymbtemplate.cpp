// JoinSymbTemplate: joined-symbol nodes, laid out as an unbreakable row of their children.
#include "tavi/math/templates/joinsymbtemplate.h"

#include "tavi/math/layout/layoutop.h"
#include "tavi/math/layout/layoutoperatorrow.h"
#include "tavi/math/layout/layoutrunningplaceholder.h"
#include "tavi/math/mathjoinsymbnode.h"
#include "tavi/math/templates/overlayargs.h"

namespace Tavi {

namespace {

// Just below "never in parentheses": only a child that binds as loosely as possible gets them.
constexpr int join_priority = 2147483646;

}  // namespace

JoinSymbTemplate::JoinSymbTemplate(TemplateTable *table, bool can_enter, wchar const *keyword,
                                   TemplateAccelerator const &accelerator)
    : MathTemplate(table, u"joinsymb", can_enter, keyword, accelerator, 2, true, 2, true, true, false, 0, 0,
                   no_parens_priority)
{
    // All children, joined by an operator of no text and no space, in the font as it stands.
    LayoutOperatorRow *row = new LayoutOperatorRow(0, -1, true);
    row->append(new LayoutRunningPlaceholder(table, join_priority, 0, -1, LayoutPlaceholder::noslantedidents));
    row->append(new LayoutOp(u"", LayoutOp::infix, false, false, false, false, 0, 0));
    layout(row);
}

MathNode *JoinSymbTemplate::create_node() { return new MathJoinSymbNode(this); }

bool JoinSymbTemplate::valid_overlay_arg(MathNode *node) { return is_symbol_like(node); }

}  // namespace Tavi
