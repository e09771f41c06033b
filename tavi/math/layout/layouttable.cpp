// LayoutTable: measuring, sharing out width, placing and drawing a grid of cells with its lines.
#include "tavi/math/layout/layouttable.h"

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutlists.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathtablenode.h"

namespace Tavi {

namespace {

// A private copy of the text; an empty or null text gives null.
std::unique_ptr<wchar[]> copy_or_null(wchar const *text)
{
    if (text == nullptr || *text == 0)
        return nullptr;
    std::size_t n = 0;
    while (text[n] != 0)
        ++n;
    std::unique_ptr<wchar[]> copy(new wchar[n + 1]);
    for (std::size_t i = 0; i <= n; ++i)
        copy[i] = text[i];
    return copy;
}

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

}  // namespace

LayoutTable::LayoutTable(long first, long last, std::size_t rows, std::size_t cols, wchar const *rowlines,
                         wchar const *columnlines, wchar const *framelines, wchar const *columnalign,
                         bool wrapchildren)
    : MathPolyLayout(1),
      LayoutRangeImpl(first, last),
      rowlines_(copy_or_null(rowlines)),
      columnlines_(copy_or_null(columnlines)),
      framelines_(copy_or_null(framelines)),
      columnalign_(copy_or_null(columnalign)),
      rows_(rows),
      cols_(cols),
      wrapchildren_(wrapchildren),
      navigator_(new LayoutLists(first, last, rows, cols))
{
    navigator_->ref();
}

LayoutTable::~LayoutTable() { navigator_->unref(); }

MathLayout *LayoutTable::cell_layout(std::size_t column)
{
    long const n = count();
    if (n <= 0)
        return nullptr;
    long const c = static_cast<long>(column) < n ? static_cast<long>(column) : n - 1;
    return child(c);
}

LayoutTable *LayoutTable::table() { return this; }

BoxTree *LayoutTable::request(GlyphContext &, BoxTree const &) { return new BoxTreeLeaf(0, 0, 0); }

void LayoutTable::draw(GlyphContext &, AllocationTree const &) {}

bool LayoutTable::has_child_node(MathNodeContext &context, long index) { return has_child_node_impl(context, index); }

bool LayoutTable::get_child_node(MathNodeContext &context, long &index) { return get_child_node_impl(context, index); }

bool LayoutTable::child_range(MathNodeContext &context, long &first, long &last)
{
    return child_range_impl(context, first, last);
}

bool LayoutTable::pick(long index, MathSelection *selection, MathNodeContext &context,
                       AllocationTree const &allocation, Point point)
{
    if (!has_child_node(context, index))
        return false;
    TextStyleScope style(context);
    return MathPolyLayout::pick(index, selection, context, allocation, point);
}

AllocationTree *LayoutTable::allocate_selection(long index, MathSelection *selection, std::size_t size,
                                                MathNodeContext &context, AllocationTree const &allocation)
{
    if (!has_child_node(context, index))
        return nullptr;
    TextStyleScope style(context);
    return MathPolyLayout::allocate_selection(index, selection, size, context, allocation);
}

bool LayoutTable::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    return navigator_->get_neighbour_child(context, index, key, result);
}

}  // namespace Tavi
