// MathTableNode: the expression node of a matrix or an array, a grid of children in row order. It keeps
// the grid's shape, the lines between rows, between columns and around the frame, and the row heights
// and column widths of the last layout, which the table layout writes and reads back when it draws.
// A layout that shows one row at a time narrows the children it sees with a child range.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "tavi/kxt/wchar.h"
#include "tavi/math/mathexprnode.h"

namespace Tavi {

class MathNodeContext;

class MathTableNode : public MathExprNode
{
public:
    // A grid of the given shape with no lines, no sizes and no child range. The children are added by
    // the caller.
    MathTableNode(MathTemplate *templ, std::size_t rows, std::size_t cols);
    // Copies the line strings and the sizes of the last layout, and shares the children.
    MathTableNode(MathTableNode const &other);
    ~MathTableNode() override;

    // Children cloned for a deep copy and shared otherwise.
    Glyph *clone(bool deep) const override;
    // Writes the node in the content format: its element, attributes and children.
    std::ostream &put_xml(std::ostream &out) override;

    std::size_t n_rows() const { return rows_; }
    std::size_t n_cols() const { return cols_; }
    // Null means no lines at all.
    wchar const *row_lines() const { return rowlines_.get(); }
    wchar const *col_lines() const { return columnlines_.get(); }
    wchar const *frame_lines() const { return framelines_.get(); }

    // Makes room for the sizes of a layout of this shape and marks them not valid. Entries that are
    // new hold nothing meaningful until written.
    void dimension(std::size_t rows, std::size_t cols);
    // The sizes of the last layout; no bound is tested.
    virtual int row_ascent(MathNodeContext &context, std::size_t row);
    virtual int row_descent(MathNodeContext &context, std::size_t row);
    virtual int col_width(MathNodeContext &context, std::size_t column);
    virtual void row_ascent(std::size_t row, long value);
    virtual void row_descent(std::size_t row, long value);
    virtual void col_width(std::size_t column, long value);
    bool dimensions_valid() const { return dimensions_valid_; }

    // While a range is set, count and child show only the children first to last.
    void set_child_range(long first, long last);
    void reset_child_range();

    // "Rows", "Cols", "rowlines", "columnlines" and "framelines"; any other key is ignored.
    void attribute(wchar const *key, wchar const *value) override;
    // "Rows" and "Cols", then each line string that is set; the caller owns the list.
    MathAttribList *attribute_list() override;
    using MathNode::attribute_list;
    MathNode *child(int index) override;
    long count() override;
    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    bool is_allocated() override;
    void invalidate_allocation() override;
    // Another table node of the same shape and equal children; the lines don't count.
    bool is_equal(MathNode *other) override;

protected:
    void modified() override;

private:
    // For a deep clone: the same shape, lines and sizes, without children.
    MathTableNode(MathTableNode const &other, WithoutChildren);
    void copy_fields(MathTableNode const &other);

    // A string that shows no line anywhere (empty, or nothing but "n") is kept as null.
    static std::unique_ptr<wchar[]> line_string(wchar const *value);
    static std::unique_ptr<wchar[]> copy_string(wchar const *value);
    // A positive decimal count, or 0 when the text holds none.
    static long parse_count(wchar const *value);

    std::size_t rows_;
    std::size_t cols_;
    std::unique_ptr<wchar[]> rowlines_;
    std::unique_ptr<wchar[]> columnlines_;
    std::unique_ptr<wchar[]> framelines_;
    std::unique_ptr<std::int32_t[]> row_ascents_;
    std::unique_ptr<std::int32_t[]> row_descents_;
    std::unique_ptr<std::int32_t[]> col_widths_;
    bool dimensions_valid_;
    long first_child_;
    long last_child_;
};

}  // namespace Tavi
