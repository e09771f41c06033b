// LayoutTable: a table node's children shown as a grid. Every cell is measured, the columns take the
// width of their widest cell and the rows the height of their tallest, and the sizes are kept in the
// table node for drawing. Optional lines go between rows, between columns and around the frame. When
// cells may be wrapped and the grid is too wide, the width is shared out among the columns and the
// cells that have to give way are broken into lines.
#pragma once

#include <cstddef>
#include <memory>

#include "tavi/kxt/wchar.h"
#include "tavi/math/layout/layoutrangeimpl.h"
#include "tavi/math/layout/mathpolylayout.h"

namespace Tavi {

class BoxTree;
class BoxTreeAtomicNode;
class BoxTreeLeaf;
class LayoutLists;
class MathTableNode;

class LayoutTable : public MathPolyLayout, public LayoutRangeImpl
{
public:
    // rows or cols of 0 are taken from the table node at each call. Each string holds one character
    // per position (the last one repeating beyond its end); an empty or null string is kept as null.
    // Line characters: "n" no line, "S" a thick line, any other a thin one. Alignment: "l", "r", and
    // centred for any other.
    LayoutTable(long first, long last, std::size_t rows, std::size_t cols, wchar const *rowlines,
                wchar const *columnlines, wchar const *framelines, wchar const *columnalign, bool wrapchildren);
    ~LayoutTable() override;

    void dimension(std::size_t &rows, std::size_t &cols) const
    {
        rows = rows_;
        cols = cols_;
    }
    wchar const *row_lines() const { return rowlines_.get(); }
    wchar const *col_lines() const { return columnlines_.get(); }
    wchar const *frame_lines() const { return framelines_.get(); }
    wchar const *column_align() const { return columnalign_.get(); }
    bool wrap_children() const { return wrapchildren_; }

    // The cell layout of column c: child c, or the last child past the end; null without children.
    MathLayout *cell_layout(std::size_t column);

    LayoutTable *table() override;

    // The grid in text style; an all-zero leaf when there is nothing to show.
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
    // Arrow keys move through the grid as they do in a list of rows.
    bool get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result) override;

private:
    struct Grid;
    struct Sizes;

    // The table node of the context and the shape in force, with the range resolved; false when there
    // is nothing to show.
    bool grid(MathNodeContext &context, Grid &g);
    // The cell of row r and column c measured with the constraint, the child index pointing at its
    // node child; null for a cell that the node does not have.
    BoxTree *request_cell(MathNodeContext &context, Grid const &g, std::size_t r, std::size_t c,
                          BoxTree const &constraint);
    // Every cell, row by row, at its natural size.
    BoxTreeAtomicNode *natural_pass(MathNodeContext &context, Grid const &g, BoxTree const &constraint,
                                    Sizes &sizes);
    // Shares `avail` out among the columns and measures the cells again, wrapping those that have to
    // give way; `sizes` holds the natural sizes on entry and the final ones on return.
    BoxTreeAtomicNode *wrapping_pass(MathNodeContext &context, Grid const &g, BoxTreeLeaf &constraint, long avail,
                                     long m, Sizes &sizes);
    // Breaks a cell into lines no wider than the constraint; the cell keeps the size of the result.
    static BoxTree *wrap_cell(MathNodeContext &context, BoxTree *cell, BoxTree const &constraint);
    // The line character of position i in the layout's string, else in the node's; "n" when neither
    // has one.
    static wchar line_char(wchar const *own, wchar const *node, std::size_t i);
    wchar align_char(std::size_t column) const;

    std::unique_ptr<wchar[]> rowlines_;
    std::unique_ptr<wchar[]> columnlines_;
    std::unique_ptr<wchar[]> framelines_;
    std::unique_ptr<wchar[]> columnalign_;
    std::size_t rows_;
    std::size_t cols_;
    bool wrapchildren_;
    // Walks the grid for the arrow keys; it has no children and is shared by nothing else.
    LayoutLists *navigator_;
};

}  // namespace Tavi
