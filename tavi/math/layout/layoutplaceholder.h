// LayoutPlaceholder: the point of a template's layout where a child of the current math node is
// shown. It has no box of its own and hands request, draw and pick to the child, with two additions:
// parentheses around a child that binds less tightly than the position demands, and a change in the
// slant of identifiers while the child is laid out.
#pragma once

#include "tavi/math/layout/layoutop.h"
#include "tavi/math/layout/mathlayout.h"

namespace Tavi {

class MathNode;
class TemplateTable;

class LayoutPlaceholder : public MathLayout
{
public:
    // How identifiers inside the child are slanted.
    enum Slanting : int {
        inherit = 0,         // as around the placeholder
        slanted = 1,         // italic, whatever the style says about identifiers
        unslanted = 2,       // upright, likewise
        noslantedidents = 3  // the font as it stands, without the style's slant of identifiers
    };

    ~LayoutPlaceholder() override;

    // The child's box, or the box of the child in parentheses.
    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;
    bool pick(long index, MathSelection *selection, MathNodeContext &context, AllocationTree const &allocation,
              Point point) override;

    LayoutTable *table() override;
    AllocationTree *allocate_placeholder(long index, MathNodeContext &context,
                                         AllocationTree const &allocation) override;
    AllocationTree *allocate_selection(long index, MathSelection *selection, std::size_t size,
                                       MathNodeContext &context, AllocationTree const &allocation) override;

    // Reaches the parentheses too.
    void templ(MathTemplate *owner) override;
    using MathLayout::templ;

    int priority() const { return priority_; }
    Slanting slanting() const { return slanting_; }
    // The row that puts the child in parentheses; null for a priority of 0.
    MathLayout *parens() const { return parens_; }

protected:
    LayoutPlaceholder(TemplateTable *table, int priority, Slanting slanting);

    // Which child of the node is shown.
    virtual long index(MathNodeContext &context) = 0;

    // Installs the parenthesised form: "(" prefix, the given placeholder (of priority 0), ")" postfix.
    void make_parens(TemplateTable *table, LayoutPlaceholder *inner);

    // Saves the italic flag and the slant of identifiers and applies this placeholder's slanting.
    void set_slant_state(MathNodeContext &context, bool &italic, bool &slanted_identifiers);
    void restore_slant_state(MathNodeContext &context, bool italic, bool slanted_identifiers);

private:
    // An operator for the parentheses, as the table's dictionary gives it.
    static LayoutOp *paren_op(TemplateTable *table, wchar const *text, LayoutOp::Form form);
    // The node's child at i, or null when there is none.
    static MathNode *child_node(MathNodeContext &context, long i);
    // Whether the child at i is shown in parentheses.
    bool use_parens(MathNodeContext &context, long i);

    int priority_;
    Slanting slanting_;
    MathLayout *parens_;
};

}  // namespace Tavi
