// LayoutOp: a token that acts as an operator. Besides its text it has a form (infix, prefix,
// postfix), space on either side in twentieths of the font size, the flags of the operator dictionary,
// and the cost of a line break before and after it. Stretchy, large and accent operators derive
// from it.
#pragma once

#include "tavi/geometry/box.h"
#include "tavi/math/layout/layouttoken.h"

namespace Tavi {

class LayoutOp : public LayoutToken
{
public:
    enum Form : int { infix = 0, prefix = 1, postfix = 2 };

    // The badness that forbids a line break.
    static constexpr double forbidden_break = 50000.0;

    // A prefix operator may not be parted from what follows it, a postfix one from what precedes it;
    // the invisible operators (and the non-breaking space) may not be parted from either side.
    LayoutOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits, bool accent,
             long lspace, long rspace);
    LayoutOp(LayoutOp const &) = default;
    ~LayoutOp() override;

    // Text, spaces, form, flags and both badnesses.
    Glyph *clone(bool deep) const override;

    // The text's box widened by the space on both sides; the operator's own badnesses, where set,
    // replace those of the box.
    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    // The text after the left space.
    void draw(GlyphContext &context, AllocationTree const &allocation) override;
    using LayoutAtom::draw;
    using LayoutAtom::request;

    LayoutOp *core_operator() override;

    double lbadness() override { return lbadness_; }
    double rbadness() override { return rbadness_; }

    virtual bool stretchy();
    virtual bool largeop();
    virtual void lbadness(double badness);
    virtual void rbadness(double badness);
    // Shifts of limits set under and over the operator; 0 and 0 here.
    virtual void underover_slant(MathNodeContext &context, Box const &box, long &under, long &over);
    // Shifts of a subscript and a superscript: the subscript is pulled in by the right bearing of the
    // operator's last character, the superscript stays.
    virtual void subsup_slant(MathNodeContext &context, Box const &box, long &subSlant, long &supSlant);
    // Shifts of an accent over the operator; 0 and 0 here.
    virtual void accent_shift(MathNodeContext &context, Box const &box, long &a, long &b);

    Form form() const { return form_; }
    bool fence() const { return fence_; }
    bool separator() const { return separator_; }
    bool movablelimits() const { return movablelimits_; }
    bool accent() const { return accent_; }
    long lspace() const { return lspace_; }
    long rspace() const { return rspace_; }
    // Replaces both spaces: a template's own use of a dictionary operator may set it closer or wider
    // than the dictionary does (a factorial's "!" against its operand).
    void spaces(long lspace, long rspace)
    {
        lspace_ = lspace;
        rspace_ = rspace;
    }

    // The same form and an equal text.
    bool is_op(MathString const &text, Form form) const;

protected:
    // Whether the operator is drawn in its large form; no here.
    virtual bool draw_large(MathNodeContext &context);

    // The space before the glyph in canvas units. In a script every space that is not 0 is 3/20 of
    // the script's font size.
    long lspace(GlyphContext &context);
    // Both spaces together, converted as one sum (so it may differ by a unit from the two converted
    // apart).
    long lrspace(GlyphContext &context);

private:
    long lspace_;
    long rspace_;
    Form form_;
    bool fence_ : 1;
    bool separator_ : 1;
    bool movablelimits_ : 1;
    bool accent_ : 1;
    double lbadness_;
    double rbadness_;
};

}  // namespace Tavi
