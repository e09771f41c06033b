// LayoutLists: a table node shown as its rows one after another on a single baseline, each row through
// layout child 0 and a separator, layout child 1, between rows. The row layout sees one row of cells at
// a time: the table node narrows its children to that row while the row is measured or drawn.
#pragma once

#include <cstddef>

#include "tavi/math/layout/layoutrangeimpl.h"
#include "tavi/math/layout/mathpolylayout.h"

namespace Tavi {

class MathTableNode;

class LayoutLists : public MathPolyLayout, public LayoutRangeImpl
{
public:
    // rows or cols of 0 are taken from the table node at each call.
    LayoutLists(long first, long last, std::size_t rows, std::size_t cols);
    ~LayoutLists() override;

    void dimension(std::size_t &rows, std::size_t &cols) const
    {
        rows = rows_;
        cols = cols_;
    }

    // The rows with separators between them, in text style; an all-zero leaf when there is nothing to
    // show.
    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

    bool has_child_node(MathNodeContext &context, long index) override;
    bool get_child_node(MathNodeContext &context, long &index) override;
    bool child_range(MathNodeContext &context, long &first, long &last) override;

    // The generic search, in text style, for an index in the range.
    bool pick(long index, MathSelection *selection, MathNodeContext &context, AllocationTree const &allocation,
              Point point) override;
    AllocationTree *allocate_selection(long index, MathSelection *selection, std::size_t size,
                                       MathNodeContext &context, AllocationTree const &allocation) override;

protected:
    // Arrow keys move through the grid: left and right within a row, up and down within a column.
    bool get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result) override;

private:
    // The table node of the context and the shape in force, with the range resolved; false when there
    // is nothing to show.
    bool grid(MathNodeContext &context, MathTableNode *&table, std::size_t &rows, std::size_t &cols, long &first,
              long &last);
    // Narrows the table node's children to the cells of row r.
    static void show_row(MathTableNode *table, std::size_t r, std::size_t cols, long first, long last);

    std::size_t rows_;
    std::size_t cols_;
};

}  // namespace Tavi
