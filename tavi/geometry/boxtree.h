// BoxTree and its family: the measured result of a request (and, passed the other way, the constraint
// of one). One tree node per thing that will be drawn, with its size, its offset inside the parent and
// the line-break preferences of its edges.
#pragma once

#include "tavi/geometry/box.h"
#include "tavi/geometry/extent.h"
#include "tavi/geometry/point.h"

#include <memory>
#include <vector>

namespace Tavi {

class MathNodeContext;

class BoxTree
{
public:
    virtual ~BoxTree();
    BoxTree(BoxTree const &) = delete;
    BoxTree &operator=(BoxTree const &) = delete;

    // Boxes come from the box pool (boxpool.h).
    static void *operator new(std::size_t size);
    static void operator delete(void *block, std::size_t size);

    // Only leaves can be cloned; every other box answers null.
    virtual BoxTree *clone() const;
    // A copy of the whole tree, offsets, levels and flags included, for keeping a measured tree and
    // handing it out again; leaves share their stored context with the original.
    virtual BoxTree *copy() const;
    virtual void append(BoxTree *child);
    virtual long count() const;
    virtual BoxTree *child(long index) const;

    long width() const { return width_; }
    void width(long w) { width_ = w; }
    long ascent() const { return ascent_; }
    void ascent(long a) { ascent_ = a; }
    long descent() const { return descent_; }
    void descent(long d) { descent_ = d; }
    long height() const { return ascent_ + descent_; }
    Box box() const { return Box(width_, ascent_, descent_); }
    Extent extent() const { return Extent(width_, ascent_ + descent_); }

    double leftBadness() const { return leftBadness_; }
    void leftBadness(double b) { leftBadness_ = b; }
    double rightBadness() const { return rightBadness_; }
    void rightBadness(double b) { rightBadness_ = b; }

    // Depth of an atom in the tree, written when the atoms are collected (the root of the collection
    // has depth 1).
    long level() const { return level_; }
    void level(long l) { level_ = l; }

    long xOffset() const { return xOffset_; }
    long yOffset() const { return yOffset_; }
    Point offset() const { return Point(xOffset_, yOffset_); }
    void setOffset(Point const &p)
    {
        xOffset_ = p.x;
        yOffset_ = p.y;
    }
    void setXOffset(long x) { xOffset_ = x; }
    void setYOffset(long y) { yOffset_ = y; }

    bool alternativeLayoutUsed() const { return alternativeLayoutUsed_; }
    void alternativeLayoutUsed(bool used) { alternativeLayoutUsed_ = used; }

    // Breaks this finished tree into lines no wider than the constraint's width. Answers false when
    // nothing was changed (everything already fits, or there is nothing to break).
    bool doLineWrap(MathNodeContext &context, BoxTree const &constraint);
    // Whether the tree has any atom to set on lines: wrapping a tree without one is an index error.
    bool hasWrapAtoms();

    // The constraint that sets no limit: 0x7fffffff in width, ascent and descent.
    static BoxTree const unconstrained;

protected:
    BoxTree(long width, long ascent, long descent, double leftBadness, double rightBadness);
    // Gives `other` this box's size, badnesses, level, offset and flag.
    void copy_box_to(BoxTree &other) const;

    // Atoms are what line wrapping never splits: leaves and atomic nodes.
    virtual bool isAtomForWrapping() const;

    // The atoms of this tree in reading order, gathered once and then kept until a structural change;
    // the node that holds each, and its index in that node.
    std::vector<BoxTree *> const &getBoxTreeLeaves();
    std::vector<BoxTree *> const &atomParents();
    std::vector<long> const &atomIndices();
    // Adds `box` (held by `parent` at `index`, at nesting `depth`) or, for a non-atom, its atoms.
    static void getBoxTreeLeavesInternal(BoxTree *box, BoxTree *parent, long index, std::vector<BoxTree *> &leaves,
                                         std::vector<BoxTree *> &parents, std::vector<long> &indices, long depth);
    void invalidateCache();

    long width_;
    long ascent_;
    long descent_;
    double leftBadness_;
    double rightBadness_;
    long level_;
    long xOffset_;
    long yOffset_;
    bool alternativeLayoutUsed_;

private:
    // Not owned: each atom, the node that holds it, and its index in that node. Made only for a tree
    // that is wrapped, so that the boxes of every other tree stay small.
    struct AtomCache
    {
        std::vector<BoxTree *> leaves;
        std::vector<BoxTree *> parents;
        std::vector<long> indices;
    };
    AtomCache &atoms();
    std::unique_ptr<AtomCache> atoms_;
};

class BoxTreeLeaf : public BoxTree
{
public:
    // Not measured yet: width, ascent and descent -1.
    BoxTreeLeaf();
    BoxTreeLeaf(long width, long ascent, long descent, double leftBadness = 0.0, double rightBadness = 0.0);
    BoxTreeLeaf(Box const &box, double leftBadness = 0.0, double rightBadness = 0.0);
    ~BoxTreeLeaf() override;

    // Size, badnesses and a private copy of the context; offsets and index range are not carried over.
    BoxTree *clone() const override;
    BoxTree *copy() const override;

    // The context the leaf was measured in. Copies of a leaf share it; its scene, view and surface
    // are those of that measuring, so a user puts the present ones in first.
    MathNodeContext *mathNodeContext() const { return mathNodeContext_.get(); }
    // Stores a clone of the argument (or nothing for null); the caller's pointer is never kept.
    void setMathNodeContext(MathNodeContext const *context);
    // A leaf with a context can be laid out again in pieces.
    bool isWrapable() const { return mathNodeContext_ != nullptr; }

    long startIdx() const { return startIdx_; }
    void setStartIdx(long i) { startIdx_ = i; }
    long endIdx() const { return endIdx_; }
    void setEndIdx(long i) { endIdx_ = i; }

protected:
    bool isAtomForWrapping() const override;

private:

    std::shared_ptr<MathNodeContext> mathNodeContext_;
    long startIdx_;
    long endIdx_;
};

class BoxTreeNode : public BoxTree
{
public:
    BoxTreeNode();
    // n null children.
    explicit BoxTreeNode(long n);
    ~BoxTreeNode() override;

    BoxTree *clone() const override;
    BoxTree *copy() const override;
    // Places the child after the present width, on the baseline.
    void append(BoxTree *child) override;
    long count() const override;
    // An index outside the list throws std::out_of_range("invalid vector<T> subscript").
    BoxTree *child(long index) const override;

    // Hands the child to the caller and leaves null in its place; the size is not touched.
    virtual BoxTree *extractChild(long index);

    // Stores the child first without placing anything: run updateLinearChildrenLayout afterwards.
    void prepend(BoxTree *child);
    // Replaces (and deletes) the child at index, then adds the new child's width and takes the larger
    // ascent and descent. The old child's width is not subtracted.
    void setChild(long index, BoxTree *child, bool keepCache = false);
    void setChild(long index, Point const &offset, BoxTree *child, bool keepCache = false);

    // Each answers false, leaving the node half updated, on a null or unmeasured child.
    // All children on one baseline, one after another; an empty row is one font line high.
    bool updateLinearChildrenLayout(MathNodeContext &context);
    // Each child a line of its own, every line but the first indented by the width of "m".
    bool updateLineWrappedChildrenLayout(MathNodeContext &context);
    // Size recomputed from children already placed.
    bool updateBoundingBox(MathNodeContext &context);

protected:
    // Copies of the children into `other`, which has none yet.
    void copy_children_to(BoxTreeNode &other) const;

private:
    bool layOutLinearly(long fontAscent, long fontDescent);

    std::vector<BoxTree *> children_;
};

// A node that line wrapping must keep whole.
class BoxTreeAtomicNode : public BoxTreeNode
{
public:
    BoxTreeAtomicNode();
    explicit BoxTreeAtomicNode(long n);

    BoxTree *clone() const override;
    BoxTree *copy() const override;

protected:
    bool isAtomForWrapping() const override;
};

}  // namespace Tavi
