// PlusTemplate: sum nodes, their layout as a row of terms, and the sign drawn before each term.
#include "tavi/math/templates/plustemplate.h"

#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/layout/layoutrunningplaceholder.h"
#include "tavi/math/layout/layouttemplateoperatorrow.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathplusnode.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

namespace {

LayoutOp *held(LayoutOp *op)
{
    op->ref();
    return op;
}

// A break before a sign costs little, one after it is forbidden.
constexpr double sign_lbadness = 1000.0;
constexpr double sign_rbadness = 50000.0;

}  // namespace

PlusTemplate::PlusTemplate(TemplateTable *table, bool can_enter, wchar const *keyword,
                           TemplateAccelerator const &accelerator, double priority)
    : MathTemplate(table, u"plus", can_enter, keyword, accelerator, 1, true, 2, true, true, false, 0, 0, priority),
      plus_(held(table->get_layout_op(u"+", LayoutOp::infix, 0, 0))),
      minus_(held(table->get_layout_op(u"-", LayoutOp::infix, 0, 0))),
      leading_minus_(held(table->get_layout_op(u"-", LayoutOp::prefix, 0, 0)))
{
    // Every term, in parentheses when it binds no tighter than the sum.
    LayoutTemplateOperatorRow *row = new LayoutTemplateOperatorRow(0, -1);
    row->append(new LayoutRunningPlaceholder(table, static_cast<int>(priority), 0, -1, LayoutPlaceholder::inherit));
    layout(row);
}

PlusTemplate::~PlusTemplate()
{
    plus_->unref();
    minus_->unref();
    leading_minus_->unref();
}

MathNode *PlusTemplate::create_node() { return new MathPlusNode(this); }

MathTemplate::DeleteOp PlusTemplate::delete_child_op(MathNode const *node, std::size_t)
{
    long const n = const_cast<MathNode *>(node)->count();
    return n < 3 ? delete_flatten : delete_child;
}

LayoutOp *PlusTemplate::sign_operator(long index, MathNodeContext &context) const
{
    auto *node = dynamic_cast<MathPlusNode *>(context.math_node());
    bool const plus = node == nullptr || index < 0 || node->plus_sign(static_cast<std::size_t>(index));
    if (index != 0)
        return plus ? plus_ : minus_;
    return plus ? nullptr : leading_minus_;
}

BoxTree *PlusTemplate::request_operator(long index, MathNodeContext &context, BoxTree const &constraint)
{
    LayoutOp *op = sign_operator(index, context);
    // A leading plus takes no room.
    BoxTree *box = op != nullptr ? op->request(context, constraint) : new BoxTreeLeaf(0, 0, 0);
    if (box) {
        box->leftBadness(sign_lbadness);
        box->rightBadness(sign_rbadness);
    }
    return box;
}

void PlusTemplate::draw_operator(long index, MathNodeContext &context, AllocationTree const &allocation)
{
    if (LayoutOp *op = sign_operator(index, context))
        op->draw(context, allocation);
}

}  // namespace Tavi
