// LayoutStretchCol: the common part of the layouts that stack scripts under or over a base
// (LayoutUnder, LayoutOver, LayoutUnderOver). Operator children stretch across the column to the
// widest of the other children. An operator base with movable limits, in text style, hands the whole
// layout over to a script layout of the same children.
#pragma once

#include <initializer_list>

#include "tavi/math/layout/layoutstretch.h"

namespace Tavi {

class LayoutStretchCol : public LayoutStretch
{
public:
    // With accent set, scripts keep the base's size and style.
    explicit LayoutStretchCol(bool accent);
    ~LayoutStretchCol() override;

    bool accent() const { return accent_; }
    LayoutOp *core_operator() override;
    // The script layout of moved limits belongs to the same template.
    void templ(MathTemplate *owner) override;
    using MathLayout::templ;

    // along: the width w of the widest non-operator child with the constraint's ascent and descent;
    // across: w with free ascent and descent. A w of 0 (nothing but operators) is free as well.
    void request_stretch(MathNodeContext &context, BoxTree const &constraint, Box &along, Box &across) override;
    void request_stretch(Box const &content, BoxTree const &constraint, Box &along, Box &across) override;

    // The script children are picked in script style; with moved limits the script layout answers.
    bool pick(long index, MathSelection *selection, MathNodeContext &context, AllocationTree const &allocation,
              Point point) override;
    AllocationTree *allocate_selection(long index, MathSelection *selection, std::size_t size,
                                       MathNodeContext &context, AllocationTree const &allocation) override;
    // The base in its style, then the scripts in script style; with moved limits the script layout draws.
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

protected:
    // The script layout that shows the same children when limits move, made on first use.
    virtual MathLayout *limits_layout() = 0;
    // True in text style when the base is an operator with movable limits.
    bool move_limits(MathNodeContext &context);
    // Keeps the script layout made by a subclass (taking a reference) after giving it this layout's
    // children, and answers it; later calls answer the kept one.
    MathLayout *keep_limits(MathLayout *made);
    MathLayout *limits() const { return limits_; }

    // The placed box child `index`.
    static AllocationTree child_allocation(AllocationTree const &allocation, long index);

    // The request of a column of two, base (child 0) and one script (child 1) over it or under it.
    BoxTree *request_script(GlyphContext &context, BoxTree const &constraint, bool over);
    // The column placed: the base, then the under script and the over script where not null, as its
    // children in that order. underX and overX are the scripts' slants; align is 'l', 'r' or centred.
    static BoxTree *stack(char align, long gap, BoxTree *base, BoxTree *under, long underX, BoxTree *over,
                          long overX);
    // Down and up between neighbours of a column whose children stand in the order `top_down`.
    bool column_neighbour(MathNodeContext &context, long index, Input::Key key, long &result,
                          std::initializer_list<long> top_down);

private:
    LayoutStretchCol(LayoutStretchCol const &) = delete;
    LayoutStretchCol &operator=(LayoutStretchCol const &) = delete;

    MathLayout *limits_;
    bool accent_;
};

}  // namespace Tavi
