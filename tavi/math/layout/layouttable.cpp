// LayoutTable: measuring, sharing out width, placing and drawing a grid of cells with its lines.
#include "tavi/math/layout/layouttable.h"

#include <algorithm>
#include <vector>

#include "tavi/canvas/canvas.h"
#include "tavi/canvas/pen.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutlists.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathtablenode.h"

namespace Tavi {

namespace {

long const free_size = 0x7fffffff;
// The most cells a grid may have.
std::size_t const max_cells = std::size_t(1) << 20;

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

// The character of position i: the i-th one, or the last one for every position beyond the end. 0 for
// a null or empty text.
wchar char_at(wchar const *text, std::size_t i)
{
    if (text == nullptr || *text == 0)
        return 0;
    std::size_t k = 0;
    while (k < i && text[k + 1] != 0)
        ++k;
    return text[k];
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

// The space between columns (x) and between rows (y): half and a quarter of the text font's size.
Extent spacing(MathNodeContext &context)
{
    long const size = context.real_font_size(MathString::f_text);
    return context.gauge()->twips_to_pixel(Extent(size / 2, size / 4));
}

// The pen of a line: thick lines 30 twips wide, thin ones 10, in the text colour.
Pen line_pen(MathNodeContext &context, wchar kind)
{
    long const twips = kind == u'S' ? 30 : 10;
    return Pen(context.gauge()->twips_to_pixel(Extent(twips, twips)).width(), context.color(), Pen::solid);
}

// Draws one line of the given kind; "n" draws nothing.
void draw_line(MathNodeContext &context, wchar kind, Point from, Point to)
{
    if (kind == u'n')
        return;
    context.canvas()->pen(line_pen(context, kind), true);
    context.canvas()->line(from, to);
}

}  // namespace

// The shape in force and the part of the node's children that the grid shows.
struct LayoutTable::Grid
{
    MathTableNode *table = nullptr;
    std::size_t rows = 0;
    std::size_t cols = 0;
    long first = 0;
    long last = -1;

    // Cells are numbered row by row from 0; cell k shows node child first + k when there is one.
    long index(std::size_t r, std::size_t c) const { return first + static_cast<long>(r * cols + c); }
    bool has_cell(long index) const { return index <= last && index < table->count(); }
};

// Column widths, row ascents and descents of one pass, with the rows' total height.
struct LayoutTable::Sizes
{
    Sizes(std::size_t rows, std::size_t cols) : colW(cols, 0), rowA(rows, 0), rowD(rows, 0) {}

    void sum_rows()
    {
        height = 0;
        for (std::size_t r = 0; r < rowA.size(); ++r)
            height += rowA[r] + rowD[r];
    }

    std::vector<long> colW;
    std::vector<long> rowA;
    std::vector<long> rowD;
    long height = 0;
};

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
    long const c = column < static_cast<std::size_t>(n) ? static_cast<long>(column) : n - 1;
    return child(c);
}

LayoutTable *LayoutTable::table() { return this; }

bool LayoutTable::has_child_node(MathNodeContext &context, long index) { return has_child_node_impl(context, index); }

bool LayoutTable::get_child_node(MathNodeContext &context, long &index) { return get_child_node_impl(context, index); }

bool LayoutTable::child_range(MathNodeContext &context, long &first, long &last)
{
    return child_range_impl(context, first, last);
}

bool LayoutTable::grid(MathNodeContext &context, Grid &g)
{
    g.table = dynamic_cast<MathTableNode *>(context.math_node());
    if (g.table == nullptr || count() == 0 || context.gauge() == nullptr || !child_range(context, g.first, g.last))
        return false;
    g.rows = rows_ != 0 ? rows_ : g.table->n_rows();
    g.cols = cols_ != 0 ? cols_ : g.table->n_cols();
    // A shape read from content may be absurd; a grid too large to hold is shown as nothing rather
    // than failing for want of memory.
    return g.rows != 0 && g.cols != 0 && g.cols <= max_cells / g.rows;
}

wchar LayoutTable::line_char(wchar const *own, wchar const *node, std::size_t i)
{
    wchar const *text = own != nullptr ? own : node;
    wchar const c = char_at(text, i);
    return c != 0 ? c : u'n';
}

wchar LayoutTable::align_char(std::size_t column) const
{
    wchar const c = char_at(columnalign_.get(), column);
    return c != 0 ? c : u'c';
}

BoxTree *LayoutTable::request_cell(MathNodeContext &context, Grid const &g, std::size_t r, std::size_t c,
                                   BoxTree const &constraint)
{
    long const idx = g.index(r, c);
    if (!g.has_cell(idx))
        return nullptr;
    context.child_index(idx);
    BoxTree *cell = cell_layout(c)->request(context, constraint);
    return cell != nullptr ? cell : new BoxTreeLeaf(0, 0, 0);
}

// A cell is wrapped as the only child of a node of its own, from which it is taken back with the
// size of the wrapped lines. A cell that shows nothing has no lines and is kept as it is.
BoxTree *LayoutTable::wrap_cell(MathNodeContext &context, BoxTree *cell, BoxTree const &constraint)
{
    std::unique_ptr<BoxTreeNode> holder(new BoxTreeNode(1));
    holder->setChild(0, cell);
    if (!holder->hasWrapAtoms())
        return holder->extractChild(0);
    holder->doLineWrap(context, constraint);
    BoxTree *wrapped = holder->extractChild(0);
    wrapped->width(holder->width());
    wrapped->ascent(holder->ascent());
    wrapped->descent(holder->descent());
    return wrapped;
}

// Every cell gets the free constraint. A column is as wide as its widest cell, a row as high as its
// highest ascent and deepest descent.
BoxTreeAtomicNode *LayoutTable::natural_pass(MathNodeContext &context, Grid const &g, BoxTree const &constraint,
                                             Sizes &sizes)
{
    std::unique_ptr<BoxTreeAtomicNode> node(new BoxTreeAtomicNode(static_cast<long>(g.rows * g.cols)));
    for (std::size_t r = 0; r < g.rows; ++r) {
        for (std::size_t c = 0; c < g.cols; ++c) {
            BoxTree *cell = request_cell(context, g, r, c, constraint);
            if (cell == nullptr)
                continue;
            sizes.rowA[r] = std::max(sizes.rowA[r], cell->ascent());
            sizes.rowD[r] = std::max(sizes.rowD[r], cell->descent());
            sizes.colW[c] = std::max(sizes.colW[c], cell->width());
            node->setChild(static_cast<long>(r * g.cols + c), cell);
        }
    }
    return node.release();
}

// The table is too wide for `avail`. Each column can shrink to its least width, that of its cells
// wrapped to two "m". Columns no wider than a fair share (avail / cols) keep their natural width;
// the width still free beyond the least widths goes to the others in proportion to how much they
// would like beyond their least width. The cells are then measured column by column against their
// column's share, and what a column leaves unused goes in equal parts to the columns on its right.
BoxTreeAtomicNode *LayoutTable::wrapping_pass(MathNodeContext &context, Grid const &g, BoxTreeLeaf &constraint,
                                              long avail, long m, Sizes &sizes)
{
    std::size_t const rows = g.rows;
    std::size_t const cols = g.cols;
    std::vector<long> const natural = sizes.colW;
    long natural_sum = 0;
    for (long w : natural)
        natural_sum += w;

    // Least widths.
    constraint.width(2 * m);
    std::vector<long> least(cols, 0);
    {
        std::unique_ptr<BoxTreeAtomicNode> narrow(new BoxTreeAtomicNode(static_cast<long>(rows * cols)));
        for (std::size_t r = 0; r < rows; ++r) {
            for (std::size_t c = 0; c < cols; ++c) {
                BoxTree *cell = request_cell(context, g, r, c, constraint);
                if (cell == nullptr)
                    continue;
                if (cell->width() > constraint.width())
                    cell = wrap_cell(context, cell, constraint);
                least[c] = std::max(least[c], cell->width());
                narrow->setChild(static_cast<long>(r * cols + c), cell);
            }
        }
    }
    long least_sum = 0;
    for (long w : least)
        least_sum += w;

    // Shares.
    long extra = std::max(avail - least_sum, 0L);
    long demand = natural_sum - least_sum;
    std::vector<long> share(cols, 0);
    std::vector<bool> shared(cols, false);
    long const fair = avail / static_cast<long>(cols);
    for (std::size_t c = 0; c < cols; ++c) {
        if (natural[c] <= fair) {
            share[c] = natural[c];
            shared[c] = true;
            extra -= natural[c] - least[c];
            demand -= natural[c] - least[c];
        }
    }
    if (demand == 0)
        demand = 1;
    for (std::size_t c = 0; c < cols; ++c) {
        if (!shared[c])
            share[c] = std::min(least[c] + (natural[c] - least[c]) * extra / demand, avail);
    }

    // Final pass, column by column.
    Sizes final_sizes(rows, cols);
    std::unique_ptr<BoxTreeAtomicNode> node(new BoxTreeAtomicNode(static_cast<long>(rows * cols)));
    for (std::size_t c = 0; c < cols; ++c) {
        constraint.width(share[c]);
        for (std::size_t r = 0; r < rows; ++r) {
            BoxTree *cell = request_cell(context, g, r, c, constraint);
            if (cell == nullptr)
                continue;
            if (cell->width() > constraint.width())
                cell = wrap_cell(context, cell, constraint);
            final_sizes.rowA[r] = std::max(final_sizes.rowA[r], cell->ascent());
            final_sizes.rowD[r] = std::max(final_sizes.rowD[r], cell->descent());
            final_sizes.colW[c] = std::max(final_sizes.colW[c], cell->width());
            node->setChild(static_cast<long>(r * cols + c), cell);
        }
        if (final_sizes.colW[c] < share[c] && c + 1 < cols) {
            std::size_t const left_over = static_cast<std::size_t>(share[c] - final_sizes.colW[c]);
            long const part = static_cast<long>(left_over / (cols - 1 - c));
            for (std::size_t k = c + 1; k < cols; ++k)
                share[k] += part;
        }
    }
    sizes.colW = final_sizes.colW;
    sizes.rowA = final_sizes.rowA;
    sizes.rowD = final_sizes.rowD;
    return node.release();
}

// Columns stand colspacing apart, half of it before the first; rows stand rowspacing plus half a text
// line apart. The baseline of the table is that of its middle row, or midway between the two middle
// rows for an even count; a table lower than half a text line is raised to that height, a quarter of
// a line above the baseline. A table higher than two text lines keeps only half a colspacing of room
// on its right.
BoxTree *LayoutTable::request(GlyphContext &glyph_context, BoxTree const &constraint)
{
    MathNodeContext &context = math_context(glyph_context);
    Grid g;
    if (!grid(context, g))
        return new BoxTreeLeaf(0, 0, 0);
    MathTableNode *table = g.table;
    std::size_t const rows = g.rows;
    std::size_t const cols = g.cols;
    table->dimension(rows, cols);
    TextStyleScope style(context);

    Extent const space = spacing(context);
    long const cs = space.width();
    long const rs = space.height();
    long avail = constraint.width() - cs * static_cast<long>(cols);
    context.select_real_font(MathString::f_text);
    Gauge *gauge = context.gauge();
    long const m = gauge->text_box(u"m", 1).width();
    long const fontH = gauge->font_ascent() + gauge->font_descent();
    long const halfH = fontH / 2;
    avail = std::max(avail, static_cast<long>(cols) * m * 2);

    BoxTreeLeaf C(free_size, free_size, free_size);
    Sizes sizes(rows, cols);
    std::unique_ptr<BoxTreeAtomicNode> node(natural_pass(context, g, C, sizes));
    long natural = 0;
    for (long w : sizes.colW)
        natural += w;
    if (wrapchildren_ && context.wrap_lines() && avail < natural)
        node.reset(wrapping_pass(context, g, C, avail, m, sizes));
    sizes.sum_rows();
    for (std::size_t r = 0; r < rows; ++r) {
        table->row_ascent(r, sizes.rowA[r]);
        table->row_descent(r, sizes.rowD[r]);
    }
    for (std::size_t c = 0; c < cols; ++c)
        table->col_width(c, sizes.colW[c]);

    // Rows are placed, and the centre is found, with half a line of text between them whether or not
    // a row is tall; the height counts the same pitch, so that the last row stays inside the box
    // (and inside a frame or fences around it).
    long const gaps = static_cast<long>(rows) - 1;
    long height = sizes.height + (rs + halfH) * gaps;

    // Vertical centre. The row pitch here counts half a line whether or not a row is tall.
    long ascent = 0;
    long y = 0;
    for (std::size_t r = 0; r < rows; ++r) {
        long const a = table->row_ascent(context, r);
        long const d = table->row_descent(context, r);
        if (r == (rows - 1) / 2)
            ascent = a + y;
        if (rows % 2 == 0 && r == rows / 2)
            ascent = (a + y + ascent) / 2;
        y += a + d;
        if (r + 1 < rows)
            y += rs + halfH;
    }
    if (height < halfH) {
        ascent = fontH / 4;
        height = halfH;
    }
    // Cells start half a column gap from the left edge, and the last column ends as far from the
    // right edge, so that fences and frames stand as far from the cells on both sides.
    long width = cs * (static_cast<long>(cols) - 1) + 2 * (cs / 2);
    for (long w : sizes.colW)
        width += w;

    // Placement: each cell on its row's baseline, aligned in its column.
    y = -ascent;
    for (std::size_t r = 0; r < rows; ++r) {
        long const a = table->row_ascent(context, r);
        long const d = table->row_descent(context, r);
        long x = cs / 2;
        for (std::size_t c = 0; c < cols; ++c) {
            long const w = table->col_width(context, c);
            BoxTree *cell = node->child(static_cast<long>(r * cols + c));
            if (cell != nullptr) {
                wchar const align = align_char(c);
                long const dx = align == u'l' ? x : align == u'r' ? w - cell->width() + x : (w - cell->width()) / 2 + x;
                cell->setOffset(Point(dx, y + a));
            }
            x += w + cs;
        }
        y += a + d;
        if (r + 1 < rows)
            y += halfH + rs;
    }
    // A framed top or bottom gets the room that half a gap between rows has, so that the frame stands
    // as far from the cells as the lines between them do (the sides have half a column gap already).
    wchar const *frame = table->frame_lines();
    long const gap_room = (rs + halfH) / 2;
    long const pad_top = line_char(framelines_.get(), frame, 0) != u'n' ? gap_room : 0;
    long const pad_bottom = line_char(framelines_.get(), frame, 2) != u'n' ? gap_room : 0;
    node->width(width);
    node->ascent(ascent + pad_top);
    node->descent(height - ascent + pad_bottom);
    return node.release();
}

// The cells where request put them; then a line in the middle of each gap between rows whose
// character says so (rows stand a rowspacing and half a line of text apart), a line in the middle of
// each gap between columns, and the frame, top, left, bottom and right, on the box's edges.
void LayoutTable::draw(GlyphContext &glyph_context, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(glyph_context);
    BoxTree const *box = allocation.boxtree();
    Grid g;
    if (box == nullptr || !grid(context, g) || box->count() != static_cast<long>(g.rows * g.cols))
        return;
    TextStyleScope style(context);
    MathTableNode *table = g.table;
    Point const origin = allocation.point();
    Extent const space = spacing(context);
    long const cs = space.width();
    long const rs = space.height();
    context.select_real_font(MathString::f_text);
    long const halfH = (context.gauge()->font_ascent() + context.gauge()->font_descent()) / 2;
    long const left = origin.x;
    long const right = origin.x + box->width();
    long const top = origin.y - box->ascent();
    long const bottom = origin.y + box->descent();
    Canvas *canvas = context.canvas();
    Pen const old_pen = canvas != nullptr ? canvas->pen() : Pen();

    for (std::size_t r = 0; r < g.rows; ++r) {
        long deepest = 0;
        long cell_y = 0;
        bool any = false;
        for (std::size_t c = 0; c < g.cols; ++c) {
            long const k = static_cast<long>(r * g.cols + c);
            BoxTree const *cell = k < box->count() ? box->child(k) : nullptr;
            if (cell == nullptr)
                continue;
            context.child_index(g.index(r, c));
            cell_layout(c)->draw(context, AllocationTree(origin + cell->offset(), cell));
            deepest = std::max(deepest, cell->descent());
            cell_y = origin.y + cell->yOffset();
            any = true;
        }
        if (canvas != nullptr && any && r + 1 < g.rows) {
            long const y = (rs + halfH) / 2 + cell_y + deepest;
            draw_line(context, line_char(rowlines_.get(), table->row_lines(), r), Point(left, y), Point(right, y));
        }
    }
    if (canvas != nullptr) {
        long x = left;
        for (std::size_t c = 0; c + 1 < g.cols; ++c) {
            x += table->col_width(context, c) + cs;
            draw_line(context, line_char(columnlines_.get(), table->col_lines(), c), Point(x, top), Point(x, bottom));
        }
        wchar const *frame = table->frame_lines();
        draw_line(context, line_char(framelines_.get(), frame, 0), Point(left, top), Point(right, top));
        draw_line(context, line_char(framelines_.get(), frame, 1), Point(left, top), Point(left, bottom));
        draw_line(context, line_char(framelines_.get(), frame, 2), Point(left, bottom), Point(right, bottom));
        draw_line(context, line_char(framelines_.get(), frame, 3), Point(right, top), Point(right, bottom));
        if (canvas->pen() != old_pen)
            canvas->pen(old_pen, true);
    }
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

// The list layout of the same range and shape knows how to move through a grid row by row.
bool LayoutTable::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    return navigator_->get_neighbour_child(context, index, key, result);
}

}  // namespace Tavi
