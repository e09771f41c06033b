// MathTemplate: installing layouts, the choice between the layout in force and the linear one, the
// parenthesis and flattening tests, and the nodes a plain template creates.
#include "tavi/math/templates/mathtemplate.h"

#include "tavi/math/layoutmemo.h"

#include <limits>

#include "tavi/canvas/gauge.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layouttable.h"
#include "tavi/math/layout/mathlayout.h"
#include "tavi/math/mathexprnode.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathtablenode.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

namespace {

wstring text_or_empty(wchar const *text) { return text != nullptr ? wstring(text) : wstring(); }

// A negative bound counts from the end of a list of n entries.
long resolve(long bound, long n) { return bound < 0 ? bound + n : bound; }

// The number of children of a node that the caller holds as const; counting changes nothing.
long child_count(MathNode const *node) { return const_cast<MathNode *>(node)->count(); }

}  // namespace

MathTemplate::MathTemplate(TemplateTable *table, wchar const *type_name, bool can_enter, wchar const *keyword,
                           TemplateAccelerator const &accelerator, std::size_t arity, bool varying_arity,
                           std::size_t dummies, bool associative, bool flatten_last, bool flatten_seq, long from,
                           long to, double priority)
    : table_(table),
      layout_(nullptr),
      linear_layout_(nullptr),
      table_layout_(nullptr),
      type_name_(text_or_empty(type_name)),
      keyword_(text_or_empty(keyword)),
      accelerator_(accelerator),
      priority_(priority),
      arity_(arity),
      // A kind with no fixed operands that takes any number of them is entered with one placeholder,
      // so that the user has somewhere to type.
      dummies_(arity == 0 && varying_arity && dummies == 0 ? 1 : dummies),
      flatten_seq_from_(from),
      flatten_seq_to_(to),
      can_enter_(can_enter),
      varying_arity_(varying_arity),
      associative_(associative),
      flatten_last_(flatten_last),
      flatten_seq_(flatten_seq)
{
}

MathTemplate::~MathTemplate()
{
    if (layout_)
        layout_->unref();
}

MathNode *MathTemplate::create_node(wchar const *) { return nullptr; }

// A table layout shows a grid of cells and wants a table node; its shape comes later, from the content
// or from the layout.
MathNode *MathTemplate::create_node()
{
    if (table_layout_)
        return new MathTableNode(this, 0, 0);
    return new MathExprNode(this);
}

MathNode *MathTemplate::create_cat_node(wchar const *text) { return create_node(text); }

MathNode *MathTemplate::create_edit_node(MathString const &) { return nullptr; }

namespace {

// Appends `count` placeholders of the dummy template to a new node. A node that is null, or whose
// placeholders cannot all be made, gives null (the node is freed).
MathNode *with_placeholders(MathNode *node, MathTemplate *dummy, std::size_t count)
{
    if (node == nullptr)
        return nullptr;
    for (std::size_t i = 0; i < count; ++i) {
        MathNode *placeholder = dummy->create_node();
        if (placeholder == nullptr) {
            node->ref();
            node->unref();
            return nullptr;
        }
        node->append(placeholder);
    }
    return node;
}

}  // namespace

// The node the user gets on entering the template: a fresh node holding one placeholder, made by the
// table's dummy template, for each operand it starts with. A grid is entered with its shape filled with
// placeholders.
MathNode *MathTemplate::create_edit_node()
{
    if (table_layout_)
        return create_tabular_edit_node(0, 0);
    MathTemplate *dummy = table_ ? table_->get_dummy_template() : nullptr;
    if (dummies_ > 0 && dummy == nullptr)
        return nullptr;
    return with_placeholders(create_node(), dummy, dummies_);
}

// A shape that the table layout fixes wins over the one asked for; what is still open is asked of the
// host, by the template's keyword. The layout's shape also wins over the host's answer, since the
// layout would show the grid in that shape anyway. The grid is filled with placeholders, row by row.
MathNode *MathTemplate::create_tabular_edit_node(std::size_t rows, std::size_t cols)
{
    if (table_layout_ == nullptr || table_ == nullptr)
        return nullptr;
    std::size_t fixed_rows = 0;
    std::size_t fixed_cols = 0;
    table_layout_->dimension(fixed_rows, fixed_cols);
    if (fixed_rows != 0)
        rows = fixed_rows;
    if (fixed_cols != 0)
        cols = fixed_cols;
    if (rows == 0 || cols == 0) {
        if (!table_->query_array_dimensions(rows, cols, keyword()))
            return nullptr;
        if (fixed_rows != 0)
            rows = fixed_rows;
        if (fixed_cols != 0)
            cols = fixed_cols;
        if (rows == 0 || cols == 0)
            return nullptr;
    }
    if (cols > std::numeric_limits<std::size_t>::max() / rows)
        return nullptr;
    MathTemplate *dummy = table_->get_dummy_template();
    if (dummy == nullptr)
        return nullptr;
    return with_placeholders(new MathTableNode(this, rows, cols), dummy, rows * cols);
}

bool MathTemplate::valid_overlay_arg(MathNode *node) { return node != nullptr; }

// The layout in force is tried first. When lines are wrapped and a linear layout exists, its box must
// leave room for three "m" of the text font beside the constraint's width, or the linear layout
// replaces it.
BoxTree *MathTemplate::request(MathNodeContext &context, BoxTree const &constraint)
{
    if (layout_ == nullptr)
        return nullptr;
    BoxTree *box = layout_->request(context, constraint);

    long m_width = 0;
    if (Gauge *gauge = context.gauge()) {
        context.select_real_font(MathString::f_text);
        m_width = gauge->text_box(u"m", 1).width();
    }
    if (box == nullptr || !context.wrap_lines() || linear_layout_ == nullptr)
        return box;
    if (3 * m_width + box->width() <= constraint.width())
        return box;

    delete box;
    box = linear_layout_->request(context, constraint);
    if (box)
        box->alternativeLayoutUsed(true);
    return box;
}

MathLayout *MathTemplate::layout_for(BoxTree const *box) const
{
    if (box != nullptr && box->alternativeLayoutUsed() && linear_layout_ != nullptr)
        return linear_layout_;
    return layout_;
}

// The layout is asked where the node child stands; the box it is given is no constraint at all.
AllocationTree *MathTemplate::allocate(long index, MathNodeContext &context, AllocationTree const &allocation)
{
    MathLayout *l = layout_for(allocation.boxtree());
    if (l == nullptr)
        return nullptr;
    AllocationTree const free_box(allocation.point(), &BoxTree::unconstrained);
    return l->allocate_placeholder(index, context, free_box);
}

void MathTemplate::draw(MathNodeContext &context, AllocationTree const &allocation)
{
    if (MathLayout *l = layout_for(allocation.boxtree()))
        l->draw(context, allocation);
}

bool MathTemplate::is_allocated() { return layout_ == nullptr || layout_->is_allocated(); }

void MathTemplate::invalidate_allocation()
{
    if (linear_layout_)
        linear_layout_->invalidate_allocation();
    if (layout_)
        layout_->invalidate_allocation();
}

void MathTemplate::change(long index)
{
    if (layout_)
        layout_->change(index);
}

bool MathTemplate::pick(long index, MathSelection *selection, MathNodeContext &context,
                        AllocationTree const &allocation, Point point)
{
    MathLayout *l = layout_for(allocation.boxtree());
    return l != nullptr && l->pick(index, selection, context, allocation, point);
}

long MathTemplate::caret_pos(MathNodeContext &context, AllocationTree const &allocation, Point point)
{
    MathLayout *l = layout_for(allocation.boxtree());
    return l != nullptr ? l->caret_pos(context, allocation, point) : 0;
}

AllocationTree *MathTemplate::allocate_selection(long index, MathSelection *selection, std::size_t size,
                                                 MathNodeContext &context, AllocationTree const &allocation)
{
    MathLayout *l = layout_for(allocation.boxtree());
    return l != nullptr ? l->allocate_selection(index, selection, size, context, allocation) : nullptr;
}

bool MathTemplate::get_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    return layout_ != nullptr && layout_->get_neighbour_child(context, index, key, result);
}

// A child of a node that may have more than `arity` children can go while there are more; otherwise
// it can go only by collapsing the node, and only when the node flattens and is down to two.
MathTemplate::DeleteOp MathTemplate::delete_child_op(MathNode const *node, std::size_t)
{
    if (node == nullptr)
        return delete_none;
    long const n = child_count(node);
    if (table_layout_ == nullptr && varying_arity_ && n > static_cast<long>(arity_))
        return delete_child;
    if (!flatten_last_ || n > 2)
        return delete_none;
    return delete_flatten;
}

BoxTree *MathTemplate::request_operator(long, MathNodeContext &, BoxTree const &) { return nullptr; }

void MathTemplate::draw_operator(long, MathNodeContext &, AllocationTree const &) {}

// The first layout given moves aside as the linear one when the second arrives; from then on a new
// layout only replaces the one in force.
void MathTemplate::priority(double priority)
{
    priority_ = priority;
    LayoutMemo::new_generation();
}

void MathTemplate::layout(MathLayout *layout)
{
    // Boxes kept for nodes were measured by the rules before.
    LayoutMemo::new_generation();
    if (layout)
        layout->ref();
    if (linear_layout_) {
        if (layout_)
            layout_->unref();
    } else {
        linear_layout_ = layout_;
    }
    layout_ = layout;
    if (layout_ == nullptr) {
        table_layout_ = nullptr;
        return;
    }
    layout_->templ(this);
    table_layout_ = layout_->table();
}

void MathTemplate::keyword(wchar const *keyword) { keyword_ = text_or_empty(keyword); }

void MathTemplate::keyword(wstring const &keyword) { keyword_ = keyword; }

bool MathTemplate::is_sequence() const { return type_name_ == u"seq"; }

// A child binds no tighter than the position demands when its template's priority is at most prio.
bool MathTemplate::set_parens(MathNodeContext &context, double prio, long child) const
{
    MathNode *node = context.math_node();
    if (node == nullptr || child < 0 || child >= node->count())
        return false;
    MathNode *c = node->child(static_cast<int>(child));
    if (c == nullptr || c->templ() == nullptr)
        return false;
    return prio >= c->templ()->priority();
}

bool MathTemplate::flatten_sequence(MathNode const *node, long i) const
{
    if (!flatten_seq_ || node == nullptr)
        return false;
    long const n = child_count(node);
    return resolve(flatten_seq_from_, n) <= i && i <= resolve(flatten_seq_to_, n);
}

}  // namespace Tavi
