// MathNode: one node of a formula's expression tree. A node knows its content (text or children) but
// not how it looks: it points to a MathTemplate, shared by every node of its kind, and hands measuring,
// drawing and picking to it with itself set as the context's math node. Two flags mark the node for
// editing: it lies in the selection, or it is the operand that the next operator entered will take.
#pragma once

#include <cstddef>
#include <memory>

#include "tavi/geometry/point.h"
#include "tavi/glyph/glyph.h"
#include "tavi/glyph/input.h"
#include "tavi/kxt/fixedstring.h"
#include "tavi/kxt/wchar.h"
#include "tavi/math/layoutmemo.h"
#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

class AllocationTree;
class BoxTree;
class GlyphContext;
class MathAttribList;
class MathInfo;
class MathNodeContext;
class MathSelection;
class MathString;
class TemplateTable;

class MathNode : public Glyph
{
public:
    // Takes one reference on the template for the node's whole life.
    explicit MathNode(MathTemplate *templ);
    // Shares the template (one more reference) and copies both flags; the copy is in no tree.
    MathNode(MathNode const &other);
    MathNode &operator=(MathNode const &) = delete;
    ~MathNode() override;

    // Every node class makes its own copies: children cloned for a deep copy, shared otherwise.
    Glyph *clone(bool deep) const override = 0;
    // The context must be a MathNodeContext: the template works with this node as its math node, which
    // is put back afterwards. Any other context measures nothing. A request that the node was measured
    // for before, with no change since, is answered with a copy of the kept tree.
    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    // Paints nothing, and doesn't descend, outside the canvas's damage. A node of the selection, or the
    // insertion point's operand, gets a highlight behind it first.
    void draw(GlyphContext &context, AllocationTree const &allocation) override;
    // Read-only state comes down from the root: the parent's answer, false without a parent.
    bool read_only() const override;

    // The template's type name.
    virtual wchar const *type_name() const;
    // Hands the pick to the template for the child whose allocation holds the point; false when no
    // child holds it, and the node itself is then the pick.
    virtual bool pick(MathSelection *selection, MathNodeContext &context, AllocationTree const &allocation,
                      Point point);
    // The allocation of the selected node, found through the template; `depth` is this node's depth on
    // the selection's path. A node that the path ends at gives its own allocation.
    virtual AllocationTree *allocate_selection(MathSelection *selection, std::size_t depth,
                                               MathNodeContext &context, AllocationTree const &allocation);
    // The text of an atom; expression nodes have none.
    virtual void text(wchar const *text) = 0;
    virtual void text(MathString const &text, long caret) = 0;
    virtual MathString const &text() const = 0;
    // Equal content: the same node, or the same template, the same number of children and equal
    // children in order.
    virtual bool is_equal(MathNode *other);
    // The node's category for the host's value system, and the number of children that category
    // expects (0 for any).
    virtual long cat_type() const = 0;
    virtual unsigned long cat_childs() const = 0;
    // The node's text in its text form (see MathString::text_form); empty without text.
    virtual Kxt::FixedString cat_text();
    // The template's name as the content format writes it.
    virtual wchar const *content_type_name() const;
    // A new list owned by the caller, or null: no attributes here.
    virtual MathAttribList *attribute_list();
    // Takes one attribute; unknown keys are ignored (all of them here).
    virtual void attribute(wchar const *key, wchar const *value);
    // Whether `node` may take the place of the child at `index`.
    virtual bool may_replace(long index, MathNode *node) = 0;
    virtual MathNode *child(int index);
    // What deleting the child does, as the template says.
    virtual MathTemplate::DeleteOp delete_child_op(std::size_t index);
    // The text caret: negative for a node without one.
    virtual long caret_pos();
    // Moves the caret by one character; false when it can't move that way.
    virtual bool increment_caret_pos(bool forward);
    // Puts the caret at the end of the text, or at its start.
    virtual void set_caret_pos(bool at_end);

    MathTemplate *templ() { return templ_; }
    MathTemplate const *templ() const { return templ_; }

    bool selected() const { return selected_; }
    void selected(bool on) { selected_ = on; }

    bool ip_operand() const { return ip_operand_; }
    // Clears the flag on every descendant first, whatever the argument, then sets this node's: so only
    // this node can end up marked, and false clears a whole subtree.
    void ip_operand(bool on);
    // This node's flag or any descendant's.
    bool has_ip_operand();
    // The node itself, or a node equal to it (is_equal), here or anywhere below.
    bool has_node(MathNode *node);
    // The same template object.
    bool same_type(MathNode const *node) const;
    bool associative() const;
    bool is_sequence() const;
    bool flatten_sequence(long index) const;
    // The child to move to from `index` with an arrow key, as the template's layouts say.
    bool get_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result);

    // Applies each attribute of the list in order through attribute(key, value). Null does nothing;
    // the list stays the caller's.
    void attribute_list(MathAttribList *list);
    // Every attribute as key="value", each followed by a comma; empty without attributes. For display
    // and comparison: nothing is escaped.
    wstring attribute_string();

    // Whether the clipboard offers something a node can be made from: the content format or text.
    static bool is_on_clipboard();
    // A node made from the clipboard with the templates of `table`, holding one reference that the
    // caller gives back; null when the clipboard offers nothing usable. The content format wins
    // over text; text becomes a number, an identifier or else a string.
    static MathNode *get_from_clipboard(TemplateTable &table);

    // The node's content changed: the boxes kept for it and for every ancestor no longer hold.
    void forget_layout();

protected:
    // Called after every change of the content: the kept boxes up to the root go.
    virtual void modified();

    // While one lives, the context's math node is the given node; the one before comes back when it
    // goes, also when an exception passes.
    class AsMathNode
    {
    public:
        AsMathNode(MathInfo &context, MathNode *node);
        ~AsMathNode();
        AsMathNode(AsMathNode const &) = delete;
        AsMathNode &operator=(AsMathNode const &) = delete;

    private:
        MathInfo &context_;
        MathNode *old_;
    };

    // The context as the math context it must be, or null.
    static MathNodeContext *math_context(GlyphContext &context);

private:
    // Whether the view of the context has the keyboard focus.
    static bool view_has_focus(GlyphContext const &context);
    // Seams towards the selection, which this node reaches only through these.
    // The child index that the selection's path holds at `depth`; false when the path ends before.
    static bool path_entry(MathSelection const *selection, std::size_t depth, long &index);
    // Tells the selection that the pick goes on into the child at `index`.
    static void enter_child(MathSelection *selection, long index);

    MathTemplate *templ_;
    // The last box tree this node was measured to, kept for the same request (see LayoutMemo).
    std::unique_ptr<LayoutMemo> layout_memo_;
    bool selected_ : 1;
    bool ip_operand_ : 1;
};

}  // namespace Tavi
