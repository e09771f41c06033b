// LayoutMemo: the box tree a node was last measured to, kept with everything the measuring depended
// on, so that the node can answer the same request again with a copy instead of laying itself out.
// After an edit only the changed node and its ancestors are laid out again; every other node of the
// formula hands back its kept tree. That keeps a keystroke in a long formula cheap.
//
// What a node's box depends on: its own content (a change drops the memo of the node and of every
// ancestor), the typesetting state it is requested in (the fonts of the style, the italic flag, script
// level, display style, slant of identifiers, wrapping, script sizes), the constraint's size, the
// surface that measures (its kind, resolution and whether it prints), and the layout rules of the
// templates (a change of any template's rules counts as a new generation of all of them).
#pragma once

#include <memory>
#include <typeinfo>

#include "tavi/canvas/font.h"
#include "tavi/geometry/extent.h"

namespace Tavi {

class BoxTree;
class MathNodeContext;

class LayoutMemo
{
public:
    // Boxes a kept tree may have at most: a large subtree is laid out again rather than kept, so
    // that deep formulas do not keep a copy of their trees at every level.
    static constexpr long largest_tree = 512;

    // A memo of a copy of `tree`, or null when the tree is too large to keep.
    static std::unique_ptr<LayoutMemo> make(MathNodeContext const &context, BoxTree const &constraint,
                                            BoxTree const &tree);
    ~LayoutMemo();
    LayoutMemo(LayoutMemo const &) = delete;
    LayoutMemo &operator=(LayoutMemo const &) = delete;

    // Whether a request in this context and under this constraint would measure what is kept.
    bool fits(MathNodeContext const &context, BoxTree const &constraint) const;
    // A new copy of the kept tree, owned by the caller.
    BoxTree *copy() const;

    // The generation of the layout rules; every change of a template's rules starts a new one.
    static unsigned long generation();
    static void new_generation();

private:
    struct Key
    {
        Font upright;
        Font text;
        long scriptlevel = 0;
        long scriptminsize = 0;
        long multiplier = 0;
        bool displaystyle = false;
        bool slanted_identifiers = false;
        bool wrap_lines = false;
        long width = 0;
        long ascent = 0;
        long descent = 0;
        std::type_info const *gauge = nullptr;
        Extent dpi;
        bool printing = false;
        unsigned long generation = 0;

        bool operator==(Key const &other) const;
    };

    static Key key_of(MathNodeContext const &context, BoxTree const &constraint);

    LayoutMemo() = default;

    Key key_;
    std::unique_ptr<BoxTree> tree_;
};

}  // namespace Tavi
