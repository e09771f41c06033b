// BoxTree, its leaves and nodes: construction, ownership, the atom collection for line wrapping and
// the three ways a node recomputes its size from its children.
#include "tavi/geometry/boxtree.h"

#include "tavi/canvas/gauge.h"
#include "tavi/geometry/boxpool.h"
#include "tavi/math/mathnodecontext.h"

#include <algorithm>
#include <stdexcept>

namespace Tavi {

namespace {

[[noreturn]] void throw_subscript()
{
    throw std::out_of_range("invalid vector<T> subscript");
}

// Measures of the text font at the present script level, as the row layouts use them.
struct TextFont
{
    long ascent;
    long descent;
    Gauge *gauge;
};

TextFont select_text_font(MathNodeContext &context)
{
    context.select_real_font(MathString::f_text);
    Gauge *gauge = context.gauge();
    if (gauge == nullptr)
        return TextFont{0, 0, nullptr};
    return TextFont{gauge->font_ascent(), gauge->font_descent(), gauge};
}

}  // namespace

// ---------------------------------------------------------------------------------------------------
// BoxTree

BoxTree const BoxTree::unconstrained(0x7fffffff, 0x7fffffff, 0x7fffffff, 0.0, 0.0);

BoxTree::BoxTree(long width, long ascent, long descent, double leftBadness, double rightBadness)
    : width_(width),
      ascent_(ascent),
      descent_(descent),
      leftBadness_(leftBadness),
      rightBadness_(rightBadness),
      level_(0),
      xOffset_(-1),
      yOffset_(-1),
      alternativeLayoutUsed_(false)
{
}

BoxTree::~BoxTree() { invalidateCache(); }

void *BoxTree::operator new(std::size_t size) { return BoxPool::allocate(size); }

void BoxTree::operator delete(void *block, std::size_t size) { BoxPool::release(block, size); }

BoxTree *BoxTree::copy() const { return nullptr; }

void BoxTree::copy_box_to(BoxTree &other) const
{
    other.width_ = width_;
    other.ascent_ = ascent_;
    other.descent_ = descent_;
    other.leftBadness_ = leftBadness_;
    other.rightBadness_ = rightBadness_;
    other.level_ = level_;
    other.xOffset_ = xOffset_;
    other.yOffset_ = yOffset_;
    other.alternativeLayoutUsed_ = alternativeLayoutUsed_;
}

BoxTree *BoxTree::clone() const { return nullptr; }

void BoxTree::append(BoxTree *) { invalidateCache(); }

long BoxTree::count() const { return 0; }

BoxTree *BoxTree::child(long) const { return nullptr; }

bool BoxTree::isAtomForWrapping() const { return false; }

void BoxTree::invalidateCache() { atoms_.reset(); }

BoxTree::AtomCache &BoxTree::atoms()
{
    if (!atoms_) {
        atoms_.reset(new AtomCache);
        getBoxTreeLeavesInternal(this, this, 0, atoms_->leaves, atoms_->parents, atoms_->indices, 1);
    }
    return *atoms_;
}

std::vector<BoxTree *> const &BoxTree::getBoxTreeLeaves() { return atoms().leaves; }

std::vector<BoxTree *> const &BoxTree::atomParents() { return atoms().parents; }

std::vector<long> const &BoxTree::atomIndices() { return atoms().indices; }

void BoxTree::getBoxTreeLeavesInternal(BoxTree *box, BoxTree *parent, long index, std::vector<BoxTree *> &leaves,
                                       std::vector<BoxTree *> &parents, std::vector<long> &indices, long depth)
{
    if (box->isAtomForWrapping()) {
        leaves.push_back(box);
        parents.push_back(parent);
        indices.push_back(index);
        box->level_ = depth;
        return;
    }
    box->xOffset_ = 0;
    long const n = box->count();
    for (long j = 0; j < n; ++j) {
        if (BoxTree *c = box->child(j))
            getBoxTreeLeavesInternal(c, box, j, leaves, parents, indices, depth + 1);
    }
}

// ---------------------------------------------------------------------------------------------------
// BoxTreeLeaf

BoxTreeLeaf::BoxTreeLeaf() : BoxTree(-1, -1, -1, 0.0, 0.0), mathNodeContext_(nullptr), startIdx_(-1), endIdx_(-1)
{
}

BoxTreeLeaf::BoxTreeLeaf(long width, long ascent, long descent, double leftBadness, double rightBadness)
    : BoxTree(width, ascent, descent, leftBadness, rightBadness),
      mathNodeContext_(nullptr),
      startIdx_(-1),
      endIdx_(-1)
{
}

BoxTreeLeaf::BoxTreeLeaf(Box const &box, double leftBadness, double rightBadness)
    : BoxTreeLeaf(box.width(), box.ascent(), box.descent(), leftBadness, rightBadness)
{
}

BoxTreeLeaf::~BoxTreeLeaf() = default;

// Offsets, level and index range are deliberately left at their initial values.
BoxTree *BoxTreeLeaf::clone() const
{
    BoxTreeLeaf *copy = new BoxTreeLeaf(width_, ascent_, descent_, leftBadness_, rightBadness_);
    if (mathNodeContext_ != nullptr)
        copy->mathNodeContext_.reset(mathNodeContext_->clone());
    return copy;
}

BoxTree *BoxTreeLeaf::copy() const
{
    BoxTreeLeaf *copy = new BoxTreeLeaf();
    copy_box_to(*copy);
    copy->mathNodeContext_ = mathNodeContext_;
    copy->startIdx_ = startIdx_;
    copy->endIdx_ = endIdx_;
    return copy;
}

void BoxTreeLeaf::setMathNodeContext(MathNodeContext const *context)
{
    mathNodeContext_.reset(context != nullptr ? context->clone() : nullptr);
}

bool BoxTreeLeaf::isAtomForWrapping() const { return true; }

// ---------------------------------------------------------------------------------------------------
// BoxTreeNode

BoxTreeNode::BoxTreeNode() : BoxTree(-1, -1, -1, 0.0, 0.0) {}

BoxTreeNode::BoxTreeNode(long n) : BoxTree(-1, -1, -1, 0.0, 0.0), children_(n > 0 ? n : 0, nullptr) {}

BoxTreeNode::~BoxTreeNode()
{
    for (BoxTree *c : children_)
        delete c;
}

BoxTree *BoxTreeNode::clone() const { return nullptr; }

BoxTree *BoxTreeNode::copy() const
{
    BoxTreeNode *copy = new BoxTreeNode();
    copy_box_to(*copy);
    copy_children_to(*copy);
    return copy;
}

void BoxTreeNode::copy_children_to(BoxTreeNode &other) const
{
    other.children_.reserve(children_.size());
    for (BoxTree const *c : children_)
        other.children_.push_back(c != nullptr ? c->copy() : nullptr);
}

long BoxTreeNode::count() const { return static_cast<long>(children_.size()); }

BoxTree *BoxTreeNode::child(long index) const
{
    if (index < 0 || index >= count())
        throw_subscript();
    return children_[static_cast<std::size_t>(index)];
}

// The child goes on the baseline right after what is there.
void BoxTreeNode::append(BoxTree *c)
{
    invalidateCache();
    if (width_ == -1)
        width_ = 0;
    c->setOffset(Point(width_, 0));
    width_ += c->width();
    ascent_ = std::max(ascent_, c->ascent());
    descent_ = std::max(descent_, c->descent());
    children_.push_back(c);
}

void BoxTreeNode::prepend(BoxTree *c)
{
    invalidateCache();
    if (width_ == -1)
        width_ = 0;
    children_.insert(children_.begin(), c);
}

// The old child's width stays added in: only the update operations recompute from scratch.
void BoxTreeNode::setChild(long index, BoxTree *c, bool keepCache)
{
    if (index < 0 || index >= count())
        throw_subscript();
    if (!keepCache)
        invalidateCache();
    if (width_ == -1)
        width_ = 0;
    BoxTree *&slot = children_[static_cast<std::size_t>(index)];
    delete slot;
    slot = c;
    if (c == nullptr)
        return;
    if (c->width() != -1)
        width_ += c->width();
    if (c->ascent() != -1)
        ascent_ = std::max(ascent_, c->ascent());
    if (c->descent() != -1)
        descent_ = std::max(descent_, c->descent());
}

void BoxTreeNode::setChild(long index, Point const &offset, BoxTree *c, bool keepCache)
{
    setChild(index, c, keepCache);
    if (c != nullptr)
        c->setOffset(offset);
}

BoxTree *BoxTreeNode::extractChild(long index)
{
    BoxTree *c = child(index);
    children_[static_cast<std::size_t>(index)] = nullptr;
    return c;
}

// One baseline: each child starts where the one before ended. The node is at least one line of the
// text font high, so an empty row still has the height of text.
bool BoxTreeNode::layOutLinearly(long fontAscent, long fontDescent)
{
    width_ = 0;
    ascent_ = fontAscent;
    descent_ = fontDescent;
    for (BoxTree *c : children_) {
        if (c == nullptr || c->width() == -1)
            return false;
        c->setOffset(Point(width_, 0));
        width_ += c->width();
        ascent_ = std::max(ascent_, c->ascent());
        descent_ = std::max(descent_, c->descent());
    }
    return true;
}

bool BoxTreeNode::updateLinearChildrenLayout(MathNodeContext &context)
{
    TextFont const f = select_text_font(context);
    return layOutLinearly(f.ascent, f.descent);
}

// Each child is a line. Lines of plain text height touch; when the row laid out on one baseline is
// taller than one font line, a blank font height (gap) separates the lines. Every line but the first
// is indented by the width of "m". A line advances y by its own ascent plus descent plus gap (not by
// this descent plus the next ascent). The node's ascent is that of the first line, its descent what
// lies below the first baseline.
bool BoxTreeNode::updateLineWrappedChildrenLayout(MathNodeContext &context)
{
    TextFont const f = select_text_font(context);
    if (!layOutLinearly(f.ascent, f.descent))
        return false;
    long const fontHeight = f.ascent + f.descent;
    long const gap = ascent_ + descent_ > fontHeight ? fontHeight : 0;
    long indent = 0;
    if (f.gauge != nullptr) {
        static wchar const m[] = u"m";
        indent = f.gauge->text_box(m, 1).width();
    }

    width_ = 0;
    ascent_ = 0;
    descent_ = 0;
    long y = 0;
    bool first = true;
    for (BoxTree *c : children_) {
        long lineWidth;
        if (first) {
            c->setXOffset(0);
            ascent_ = std::max(0L, c->ascent());
            lineWidth = c->width();
            first = false;
        } else {
            c->setXOffset(indent);
            lineWidth = indent + c->width();
        }
        width_ = std::max(width_, lineWidth);
        c->setYOffset(y);
        y += c->descent() + c->ascent() + gap;
    }
    descent_ = y - gap - ascent_;
    return true;
}

// From children already placed. The y offset is added to the ascent and subtracted from the descent,
// the opposite sense to the stacked lines above; later wrapping stages rely on exactly this.
bool BoxTreeNode::updateBoundingBox(MathNodeContext &)
{
    width_ = 0;
    ascent_ = 0;
    descent_ = 0;
    for (BoxTree *c : children_) {
        if (c == nullptr || c->width() == -1)
            return false;
        ascent_ = std::max(ascent_, c->ascent() + c->yOffset());
        descent_ = std::max(descent_, c->descent() - c->yOffset());
        width_ = std::max(width_, c->xOffset() + c->width());
    }
    return true;
}

// ---------------------------------------------------------------------------------------------------
// BoxTreeAtomicNode

BoxTreeAtomicNode::BoxTreeAtomicNode() = default;

BoxTreeAtomicNode::BoxTreeAtomicNode(long n) : BoxTreeNode(n) {}

BoxTree *BoxTreeAtomicNode::clone() const { return nullptr; }

BoxTree *BoxTreeAtomicNode::copy() const
{
    BoxTreeAtomicNode *copy = new BoxTreeAtomicNode();
    copy_box_to(*copy);
    copy_children_to(*copy);
    return copy;
}

bool BoxTreeAtomicNode::isAtomForWrapping() const { return true; }

}  // namespace Tavi
