// LayoutFraction: numerator over denominator, stacked around a rule on the math axis. In text style
// the parts shrink by one script level; in display style they keep the size and only leave display
// style. The result is atomic: a line is never broken inside a fraction.
#pragma once

#include "tavi/math/layout/mathpolylayout.h"

namespace Tavi {

class LayoutOverBarOp;

class LayoutFraction : public MathPolyLayout
{
public:
    // Children: 0 the numerator, 1 the denominator. A thickness of 0 draws no rule; any other value
    // draws the bar glyph, whose own thickness is fixed.
    explicit LayoutFraction(long linethickness);
    ~LayoutFraction() override;

    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

    // An operator as numerator makes the fraction count as that operator.
    LayoutOp *core_operator() override;
    // "linethickness" is read as a decimal integer (junk gives 0); other names are ignored.
    void attribute(wchar const *name, wchar const *value) override;

    MathLayout *numerator() { return child(0); }
    MathLayout *denominator() { return child(1); }
    long linethickness() const { return linethickness_; }

protected:
    // Down from the numerator to the denominator, up the other way.
    bool get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result) override;

private:
    LayoutFraction(LayoutFraction const &) = delete;
    LayoutFraction &operator=(LayoutFraction const &) = delete;

    LayoutOverBarOp *bar_;
    long linethickness_;
};

}  // namespace Tavi
