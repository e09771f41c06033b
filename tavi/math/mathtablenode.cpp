// MathTableNode: the grid's shape, its lines, the sizes of the last layout and the child range.
#include "tavi/math/mathtablenode.h"

#include <cerrno>
#include <cstdlib>
#include <ostream>
#include <string>

#include "tavi/geometry/boxtree.h"
#include "tavi/interchange/contentwriter.h"
#include "tavi/kxt/xmltext.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/mathattriblist.h"

namespace Tavi {

namespace {

std::size_t length_of(wchar const *text)
{
    std::size_t n = 0;
    while (text[n] != 0)
        ++n;
    return n;
}

template <class T>
std::unique_ptr<T[]> copy_array(std::unique_ptr<T[]> const &from, std::size_t n)
{
    if (!from || n == 0)
        return nullptr;
    std::unique_ptr<T[]> to(new T[n]);
    for (std::size_t i = 0; i < n; ++i)
        to[i] = from[i];
    return to;
}

}  // namespace

MathTableNode::MathTableNode(MathTemplate *templ, std::size_t rows, std::size_t cols)
    : MathExprNode(templ), rows_(rows), cols_(cols), dimensions_valid_(false), first_child_(-1), last_child_(-1)
{
}

MathTableNode::MathTableNode(MathTableNode const &other)
    : MathExprNode(other), rows_(0), cols_(0), dimensions_valid_(false), first_child_(-1), last_child_(-1)
{
    copy_fields(other);
    dimensions_valid_ = other.dimensions_valid_;
}

MathTableNode::MathTableNode(MathTableNode const &other, WithoutChildren)
    : MathExprNode(other, WithoutChildren{}), rows_(0), cols_(0), dimensions_valid_(false), first_child_(-1),
      last_child_(-1)
{
    copy_fields(other);
}

MathTableNode::~MathTableNode() = default;

void MathTableNode::copy_fields(MathTableNode const &other)
{
    rows_ = other.rows_;
    cols_ = other.cols_;
    rowlines_ = copy_string(other.rowlines_.get());
    columnlines_ = copy_string(other.columnlines_.get());
    framelines_ = copy_string(other.framelines_.get());
    row_ascents_ = copy_array(other.row_ascents_, rows_);
    row_descents_ = copy_array(other.row_descents_, rows_);
    col_widths_ = copy_array(other.col_widths_, cols_);
}

Glyph *MathTableNode::clone(bool deep) const
{
    if (!deep)
        return new MathTableNode(*this);
    std::unique_ptr<MathTableNode> copy(new MathTableNode(*this, WithoutChildren{}));
    copy->append_clones_of(*this);
    return copy.release();
}

std::unique_ptr<wchar[]> MathTableNode::copy_string(wchar const *value)
{
    if (value == nullptr)
        return nullptr;
    std::size_t const n = length_of(value);
    std::unique_ptr<wchar[]> copy(new wchar[n + 1]);
    for (std::size_t i = 0; i <= n; ++i)
        copy[i] = value[i];
    return copy;
}

std::unique_ptr<wchar[]> MathTableNode::line_string(wchar const *value)
{
    if (value == nullptr)
        return nullptr;
    bool all_n = true;
    for (wchar const *p = value; *p != 0 && all_n; ++p)
        all_n = *p == u'n';
    if (all_n)
        return nullptr;
    return copy_string(value);
}

long MathTableNode::parse_count(wchar const *value)
{
    if (value == nullptr)
        return 0;
    std::string const narrow = Kxt::to_string(value);
    char *end = nullptr;
    errno = 0;
    long const n = std::strtol(narrow.c_str(), &end, 10);
    if (end == narrow.c_str() || errno == ERANGE || n <= 0)
        return 0;
    return n;
}

// The arrays are made anew only when the shape differs or they are missing, so a table laid out again
// at the same shape reuses them.
void MathTableNode::dimension(std::size_t rows, std::size_t cols)
{
    if (rows != rows_ || !row_ascents_ || !row_descents_) {
        row_ascents_.reset(rows != 0 ? new std::int32_t[rows] : nullptr);
        row_descents_.reset(rows != 0 ? new std::int32_t[rows] : nullptr);
    }
    if (cols != cols_ || !col_widths_)
        col_widths_.reset(cols != 0 ? new std::int32_t[cols] : nullptr);
    rows_ = rows;
    cols_ = cols;
    dimensions_valid_ = false;
}

int MathTableNode::row_ascent(MathNodeContext &, std::size_t row) { return row_ascents_[row]; }

int MathTableNode::row_descent(MathNodeContext &, std::size_t row) { return row_descents_[row]; }

int MathTableNode::col_width(MathNodeContext &, std::size_t column) { return col_widths_[column]; }

void MathTableNode::row_ascent(std::size_t row, long value) { row_ascents_[row] = static_cast<std::int32_t>(value); }

void MathTableNode::row_descent(std::size_t row, long value)
{
    row_descents_[row] = static_cast<std::int32_t>(value);
}

void MathTableNode::col_width(std::size_t column, long value)
{
    col_widths_[column] = static_cast<std::int32_t>(value);
}

void MathTableNode::set_child_range(long first, long last)
{
    first_child_ = first;
    last_child_ = last;
}

void MathTableNode::reset_child_range()
{
    first_child_ = -1;
    last_child_ = -1;
}

long MathTableNode::count()
{
    if (first_child_ != -1 || last_child_ != -1)
        return last_child_ - first_child_ + 1;
    return MathExprNode::count();
}

MathNode *MathTableNode::child(int index)
{
    if (first_child_ != -1 || last_child_ != -1)
        return MathExprNode::child(static_cast<int>(index + first_child_));
    return MathExprNode::child(index);
}

// A new size that differs from the present one throws the old layout sizes away.
void MathTableNode::attribute(wchar const *key, wchar const *value)
{
    if (key == nullptr)
        return;
    wstring const k(key);
    if (k == u"Rows") {
        long const n = parse_count(value);
        if (n > 0 && static_cast<std::size_t>(n) != rows_) {
            rows_ = static_cast<std::size_t>(n);
            row_ascents_.reset();
            row_descents_.reset();
            dimensions_valid_ = false;
        }
    } else if (k == u"Cols") {
        long const n = parse_count(value);
        if (n > 0 && static_cast<std::size_t>(n) != cols_) {
            cols_ = static_cast<std::size_t>(n);
            col_widths_.reset();
            dimensions_valid_ = false;
        }
    } else if (k == u"rowlines") {
        rowlines_ = line_string(value);
    } else if (k == u"columnlines") {
        columnlines_ = line_string(value);
    } else if (k == u"framelines") {
        framelines_ = line_string(value);
    }
}

MathAttribList *MathTableNode::attribute_list()
{
    MathAttribList *list = new MathAttribList;
    list->push_back(u"Rows", Kxt::to_ustring(std::to_string(rows_)).c_str());
    list->push_back(u"Cols", Kxt::to_ustring(std::to_string(cols_)).c_str());
    if (rowlines_)
        list->push_back(u"rowlines", rowlines_.get());
    if (columnlines_)
        list->push_back(u"columnlines", columnlines_.get());
    if (framelines_)
        list->push_back(u"framelines", framelines_.get());
    return list;
}

BoxTree *MathTableNode::request(GlyphContext &context, BoxTree const &constraint)
{
    BoxTree *box = MathNode::request(context, constraint);
    dimensions_valid_ = true;
    return box;
}

bool MathTableNode::is_allocated()
{
    if (!dimensions_valid_)
        return false;
    return MathExprNode::is_allocated();
}

void MathTableNode::invalidate_allocation()
{
    dimensions_valid_ = false;
    MathExprNode::invalidate_allocation();
}

void MathTableNode::modified()
{
    dimensions_valid_ = false;
    MathExprNode::modified();
}

bool MathTableNode::is_equal(MathNode *other)
{
    MathTableNode *table = dynamic_cast<MathTableNode *>(other);
    if (table == nullptr)
        return false;
    if (!MathNode::is_equal(other))
        return false;
    return rows_ == table->rows_ && cols_ == table->cols_;
}

std::ostream &MathTableNode::put_xml(std::ostream &out)
{
    out << "<tab tmp=\"";
    Kxt::putCData(out, content_type_name());
    out << '"';
    if (rows_ != 0)
        out << " rows=\"" << rows_ << '"';
    if (cols_ != 0)
        out << " cols=\"" << cols_ << '"';
    if (rowlines_)
        out << " rowl=\"" << rowlines_.get() << '"';
    if (columnlines_)
        out << " coll=\"" << columnlines_.get() << '"';
    if (framelines_)
        out << " frl=\"" << framelines_.get() << '"';
    put_ipop(out, *this);
    out << '>';
    put_children(out, *this);
    return out << "</tab>";
}

}  // namespace Tavi
