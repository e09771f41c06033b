// LayoutIndexed: the common part of the layouts that attach scripts to a base (LayoutSub, LayoutSup,
// LayoutSubSup): the style of scripts, the measuring of the base with the slants of an operator base,
// and the rules that shift a subscript down and a superscript up. All of them give atomic boxes.
#pragma once

#include "tavi/geometry/box.h"
#include "tavi/math/layout/mathpolylayout.h"

namespace Tavi {

class BoxTree;

class LayoutIndexed : public MathPolyLayout
{
public:
    // Scripts are set one script level down and out of display style; the object undoes that when it
    // goes. With active false it changes nothing (a script that keeps the base's style).
    class ScriptStyle
    {
    public:
        explicit ScriptStyle(MathNodeContext &context, bool active = true);
        ~ScriptStyle();
        ScriptStyle(ScriptStyle const &) = delete;
        ScriptStyle &operator=(ScriptStyle const &) = delete;

    private:
        MathNodeContext &context_;
        bool active_;
        bool display_;
    };

    LayoutIndexed() = default;

    // An operator with scripts still counts as that operator.
    LayoutOp *core_operator() override;
    // The base is picked in its own style, the scripts in script style.
    bool pick(long index, MathSelection *selection, MathNodeContext &context, AllocationTree const &allocation,
              Point point) override;
    // None: scripts have no selection geometry of their own.
    AllocationTree *allocate_selection(long index, MathSelection *selection, std::size_t size,
                                       MathNodeContext &context, AllocationTree const &allocation) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

protected:
    // With one script (children 0 the base, 1 the script): left from the script to the base, right
    // from the base to the script. LayoutSubSup, with two scripts, moves on its own.
    bool get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result) override;
    // The atomic box of a base at the origin and one script at `at`, with the given size.
    static BoxTree *base_and_script(BoxTree *base, BoxTree *script, Point at, long width, long ascent, long descent);
    // Measures child 0. An operator base is asked for its slants and measured with the constraint
    // (asLeaf: with a leaf holding the constraint's size); any other base has no slants and no limit.
    BoxTree *request_base(MathNodeContext &context, BoxTree const &constraint, bool asLeaf, long &subSlant,
                          long &supSlant);
    // The descent of the font of "x" in the present (script) style.
    static long x_descent(MathNodeContext &context);
    // In the present (script) style: a subscript lower than the X-height is given that height as ascent.
    static void raise_to_x_height(MathNodeContext &context, BoxTree &sub);
    // How far the subscript's baseline lies below the base's: 2/3 ex, less when the subscript is short
    // against a deep base.
    static long sub_shift(BoxTree const &base, BoxTree const &sub, long ex);
    // How far the superscript's baseline lies above the base's: its bottom (or the descent D of "x",
    // whichever is lower) is level with the base's top, but at least ex above the base's baseline.
    static long sup_shift(BoxTree const &base, BoxTree const &sup, long D, long ex);
};

}  // namespace Tavi
