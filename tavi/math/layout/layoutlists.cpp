// LayoutLists: the rows of a table node on one baseline, with a separator between rows.
#include "tavi/math/layout/layoutlists.h"

#include <algorithm>
#include <memory>

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathtablenode.h"

namespace Tavi {

namespace {

// While one lives, the context is in text style and its child index is free to change; both come back
// when it goes.
class TextStyleScope
{
public:
    explicit TextStyleScope(MathNodeContext &context)
        : context_(context), displaystyle_(context.displaystyle(false)), child_index_(context.child_index())
    {
    }
    ~TextStyleScope()
    {
        context_.child_index(child_index_);
        context_.displaystyle(displaystyle_);
    }
    TextStyleScope(TextStyleScope const &) = delete;
    TextStyleScope &operator=(TextStyleScope const &) = delete;

private:
    MathNodeContext &context_;
    bool displaystyle_;
    long child_index_;
};

// The table node shows all its children again when this goes, also when an exception passes.
class ChildRangeScope
{
public:
    explicit ChildRangeScope(MathTableNode *table) : table_(table) {}
    ~ChildRangeScope() { table_->reset_child_range(); }
    ChildRangeScope(ChildRangeScope const &) = delete;
    ChildRangeScope &operator=(ChildRangeScope const &) = delete;

private:
    MathTableNode *table_;
};

}  // namespace

LayoutLists::LayoutLists(long first, long last, std::size_t rows, std::size_t cols)
    : MathPolyLayout(2), LayoutRangeImpl(first, last), rows_(rows), cols_(cols)
{
}

LayoutLists::~LayoutLists() = default;

bool LayoutLists::has_child_node(MathNodeContext &context, long index) { return has_child_node_impl(context, index); }

bool LayoutLists::get_child_node(MathNodeContext &context, long &index) { return get_child_node_impl(context, index); }

bool LayoutLists::child_range(MathNodeContext &context, long &first, long &last)
{
    return child_range_impl(context, first, last);
}

bool LayoutLists::grid(MathNodeContext &context, MathTableNode *&table, std::size_t &rows, std::size_t &cols,
                       long &first, long &last)
{
    table = dynamic_cast<MathTableNode *>(context.math_node());
    if (table == nullptr || !child_range(context, first, last))
        return false;
    rows = rows_ != 0 ? rows_ : table->n_rows();
    cols = cols_ != 0 ? cols_ : table->n_cols();
    return rows != 0 && cols != 0;
}

// Row r holds the cells first + r * cols onward, as far as the range reaches; a row past the range
// shows no cells at all.
void LayoutLists::show_row(MathTableNode *table, std::size_t r, std::size_t cols, long first, long last)
{
    long const start = first + static_cast<long>(r * cols);
    long const end = std::min(start + static_cast<long>(cols) - 1, last);
    table->set_child_range(start, std::max(end, start - 1));
}

// The rows go on one baseline with a copy of the separator in each gap. The separator is measured once,
// before any row, with the constraint of the whole.
BoxTree *LayoutLists::request(GlyphContext &glyph_context, BoxTree const &constraint)
{
    MathNodeContext &context = math_context(glyph_context);
    MathTableNode *table = nullptr;
    std::size_t rows = 0;
    std::size_t cols = 0;
    long first = 0;
    long last = -1;
    if (!grid(context, table, rows, cols, first, last) || child(0) == nullptr)
        return new BoxTreeLeaf(0, 0, 0);
    table->dimension(rows, cols);

    TextStyleScope style(context);
    std::unique_ptr<BoxTree> sep(child(1) != nullptr ? child(1)->request(context, constraint) : nullptr);
    if (!sep)
        sep.reset(new BoxTreeLeaf(0, 0, 0));
    std::unique_ptr<BoxTreeNode> node(new BoxTreeNode(static_cast<long>(2 * rows - 1)));
    {
        ChildRangeScope range(table);
        for (std::size_t r = 0; r < rows; ++r) {
            show_row(table, r, cols, first, last);
            BoxTree *row = child(0)->request(context, constraint);
            node->setChild(static_cast<long>(2 * r), row != nullptr ? row : new BoxTreeLeaf(0, 0, 0));
            if (r + 1 < rows) {
                BoxTree *copy = sep->clone();
                node->setChild(static_cast<long>(2 * r + 1), copy != nullptr ? copy : new BoxTreeLeaf(sep->box()));
            }
        }
    }
    node->updateLinearChildrenLayout(context);
    return node.release();
}

void LayoutLists::draw(GlyphContext &glyph_context, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(glyph_context);
    BoxTree const *box = allocation.boxtree();
    MathTableNode *table = nullptr;
    std::size_t rows = 0;
    std::size_t cols = 0;
    long first = 0;
    long last = -1;
    if (box == nullptr || !grid(context, table, rows, cols, first, last) || child(0) == nullptr)
        return;
    auto at = [&](std::size_t k) {
        BoxTree const *b = static_cast<long>(k) < box->count() ? box->child(static_cast<long>(k)) : nullptr;
        return AllocationTree(allocation.point() + (b != nullptr ? b->offset() : Point()), b);
    };
    TextStyleScope style(context);
    ChildRangeScope range(table);
    for (std::size_t r = 0; r < rows; ++r) {
        AllocationTree const row = at(2 * r);
        if (row.boxtree() == nullptr)
            break;
        show_row(table, r, cols, first, last);
        child(0)->draw(context, row);
        if (r + 1 < rows && child(1) != nullptr) {
            AllocationTree const gap = at(2 * r + 1);
            if (gap.boxtree() != nullptr)
                child(1)->draw(context, gap);
        }
    }
}

bool LayoutLists::pick(long index, MathSelection *selection, MathNodeContext &context,
                       AllocationTree const &allocation, Point point)
{
    if (!has_child_node(context, index))
        return false;
    TextStyleScope style(context);
    return MathPolyLayout::pick(index, selection, context, allocation, point);
}

AllocationTree *LayoutLists::allocate_selection(long index, MathSelection *selection, std::size_t size,
                                                MathNodeContext &context, AllocationTree const &allocation)
{
    if (!has_child_node(context, index))
        return nullptr;
    TextStyleScope style(context);
    return MathPolyLayout::allocate_selection(index, selection, size, context, allocation);
}

// The position counts from the start of the range, row by row: row = position / cols, column =
// position % cols. A move that would leave the grid is refused; a key that is no arrow stays put.
bool LayoutLists::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    MathTableNode *table = nullptr;
    std::size_t rows = 0;
    std::size_t cols = 0;
    long first = 0;
    long last = -1;
    if (!grid(context, table, rows, cols, first, last))
        return false;
    long const n_rows = static_cast<long>(rows);
    long const n_cols = static_cast<long>(cols);
    long const position = index - first;
    long row = position / n_cols;
    long column = position % n_cols;
    switch (key) {
    case Input::key_left:
        if (column <= 0)
            return false;
        --column;
        break;
    case Input::key_up:
        if (row <= 0)
            return false;
        --row;
        break;
    case Input::key_right:
        if (column + 1 >= n_cols)
            return false;
        ++column;
        break;
    case Input::key_down:
        if (row + 1 >= n_rows)
            return false;
        ++row;
        break;
    default:
        break;
    }
    result = n_cols * row + column + first;
    return true;
}

}  // namespace Tavi
