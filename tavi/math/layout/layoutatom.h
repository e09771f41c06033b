// LayoutAtom: the base of the layouts that show text, either a fixed token of the template or the
// text of the current atom node. The text is measured and painted run by run, each run in the font
// of its class, and a long text can be broken over lines when the constraint asks for it.
#pragma once

#include "tavi/math/layout/mathlayout.h"

namespace Tavi {

class BoxTree;
class Canvas;
class MathInfo;
class MathString;

class LayoutAtom : public MathLayout
{
public:
    LayoutAtom() = default;
    LayoutAtom(LayoutAtom const &) = default;
    ~LayoutAtom() override;

    // Both forward to the forms with quoted false.
    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

    LayoutTable *table() override;
    bool pick(long index, MathSelection *selection, MathNodeContext &context, AllocationTree const &allocation,
              Point point) override;
    AllocationTree *allocate_selection(long index, MathSelection *selection, std::size_t size,
                                       MathNodeContext &context, AllocationTree const &allocation) override;
    AllocationTree *allocate_placeholder(long index, MathNodeContext &context,
                                         AllocationTree const &allocation) override;
    // The text position under the point, with a tolerance of 2 units to the right.
    long caret_pos(MathNodeContext &context, AllocationTree const &allocation, Point point) override;

    // What to show.
    virtual MathString const &text(MathInfo const &info) = 0;
    // quoted puts the text between quotation marks. A constraint that is a BoxTreeNode asks for the
    // text broken over lines: its child 0 gives the room left on the current line, child 1 the room
    // on a new one.
    virtual BoxTree *request(GlyphContext &context, BoxTree const &constraint, bool quoted);
    // The costs of a line break before and after this atom.
    virtual double lbadness();
    virtual double rbadness();
    virtual void draw(GlyphContext &context, AllocationTree const &allocation, bool quoted);

protected:
    // Text is upright unless it is an identifier: saves the italic flag and clears it.
    virtual void set_italic_style(MathNodeContext &context, bool &saved);

    // The text caret, a thin vertical line across the current font's height at the point.
    static void draw_caret(Canvas *canvas, Point const &point);
};

}  // namespace Tavi
