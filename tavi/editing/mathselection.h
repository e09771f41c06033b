// MathSelection: the selection inside one formula, and the editor of it. Exactly one node is selected,
// named by a path of child indices from the formula's top node down (the empty path selects the whole
// expression); when that node is an atom with text, the atom's own caret gives the place in the text.
// The scene hands keys, typed characters, commands and clicks to it, and it turns them into navigation
// or into edit operations, which it makes through virtual factories so that a host can supply its own.
//
// Its work is spread over three files: the selection model and navigation (mathselection.cpp),
// typed entry and overlays (mathselection_entry.cpp), and commands with their bodies
// (mathselection_commands.cpp).
#pragma once

#include <cstddef>
#include <vector>

#include "tavi/editing/matheditop.h"
#include "tavi/glyph/glyphselection.h"
#include "tavi/glyph/input.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class MathEditScene;
class MathNode;
class MathNodeContext;
class MathRootNode;
class MathString;
class MathTemplate;

class MathSelection : public GlyphSelection
{
public:
    // The formula is the component at `glyph_index` of the owner's glyph; the selection holds a
    // reference on it for its whole life. The path starts empty.
    MathSelection(Selection *owner, long glyph_index);
    ~MathSelection() override;
    MathSelection(MathSelection const &) = delete;
    MathSelection &operator=(MathSelection const &) = delete;

    // ---- Selection ----
    bool do_command(Command *command) override;
    bool command_state(Command *command) override;
    bool key_down(Input::Key key, int modifiers) override;
    // Nothing is done on a key release.
    bool key_up(Input::Key key, int modifiers) override;
    // The typed character, a 16-bit unit: edits an atom's text, replaces the selected node or enters
    // a template. False when the character was not used, so that the host may use it.
    bool enter_char(wchar c) override;
    bool select_at(GlyphContext &context, AllocationTree const &allocation, Point point) override;
    wchar const *type_name() override;
    SelectionMemo *memo() override;
    void clear() override;
    void highlight() override;
    Glyph *glyph() override;
    Glyph *selected_element() override;
    bool select_default() override;
    AllocationTree *allocate(GlyphContext &context, AllocationTree const &allocation) override;
    long count() override;
    Glyph *component(long index) override;
    bool deselect(Glyph *glyph) override;
    bool contains(Glyph *glyph) override;
    bool select(Glyph *glyph) override;

    // ---- The path ----
    // The node the path leads to; the top node for an empty path. A path that no longer fits the
    // tree leads as far as it fits.
    MathNode *selected_node() const;
    // The node one step short of the selected one; null for an empty path.
    MathNode *selected_parent() const;
    long path_at(std::size_t index) const { return path_[index]; }
    std::size_t path_length() const { return path_.size(); }
    std::vector<long> const &path() const { return path_; }
    void path_push_back(long index) { path_.push_back(index); }
    // Takes off the last index and answers it; the path must not be empty.
    long path_pop_back();
    // Whether every index of the path names a child that exists.
    bool path_valid() const;

    MathRootNode *root_node() const { return root_; }
    MathEditScene *math_scene();
    // The whole expression is selected and it is nothing but a placeholder.
    bool is_empty_root_selected();
    // Whether the formula may not be changed.
    bool read_only() const;
    // A fresh placeholder of the scene's template table (no reference taken), or null.
    MathNode *new_placeholder();

    // Marks the operand of the insertion point: the selected node, or for an identifier-like node the
    // top of the chain of identifier-like nodes it stands in. Its path goes to `out`.
    void fix_ip_operand(std::vector<long> &out);
    void unfix_ip_operand();

    // ---- What hosts and the scene's calls reach ----
    virtual bool can_paste();
    virtual bool can_delete();
    virtual void do_copy();
    virtual void do_paste();
    virtual void do_delete();
    virtual bool can_insert_overlay(wchar const *name);
    virtual void do_insert_overlay(wchar const *name);
    virtual void do_insert_tabular_overlay(wchar const *name, std::size_t rows, std::size_t cols);
    virtual void do_insert_apply_overlay(wchar const *function);
    virtual void do_insert_char_by_name(wchar const *name);
    virtual void do_insert_number(wchar const *text);
    virtual bool do_select_in_out(bool in);
    virtual bool do_select_expression();
    virtual bool do_tabbing(bool forward);
    virtual bool do_arrow_key(MathNodeContext &context, Input::Key key, std::size_t depth);
    virtual bool do_caret_move(MathNodeContext &context, bool forward);

protected:
    // Decides how a node made from a template joins the tree; takes the node over.
    virtual bool do_overlay_operation(MathNode *node);
    virtual bool do_replace_node_operation(MathNode *node);
    virtual bool do_insert_char_operation(wchar c, long position);
    virtual bool enter_shortcut(wchar c);

    // The operation factories. Each answers a new operation that the caller runs.
    virtual MathEditOp *new_append_child_op(MathEditScene *scene, MathNode *node);
    virtual MathEditOp *new_insert_sibling_op(MathEditScene *scene, MathNode *node);
    virtual MathEditOp *new_append_negative_child_op(MathEditScene *scene, MathNode *node);
    virtual MathEditOp *new_insert_negative_sibling_op(MathEditScene *scene, MathNode *node);
    virtual MathEditOp *new_toggle_sign_op(MathEditScene *scene);
    virtual MathEditOp *new_toggle_all_signs_op(MathEditScene *scene);
    virtual MathEditOp *new_overlay_op(MathEditScene *scene, MathNode *node, long index);
    virtual MathEditOp *new_delete_node_op(MathEditScene *scene);
    virtual MathEditOp *new_flatten_unary_op(MathEditScene *scene);
    virtual MathEditOp *new_flatten_unary_parent_op(MathEditScene *scene);
    virtual MathEditOp *new_replace_node_op(MathEditScene *scene, MathNode *node);
    virtual MathEditOp *new_insert_char_op(MathEditScene *scene, MathString const &text, long position);
    virtual MathEditOp *new_delete_char_op(MathEditScene *scene, long position, bool forward);

    // Runs an operation and hands it to the scene, which keeps it in its history or frees it.
    bool run(Kxt::Operation *op, EditKind kind = EditKind::edit);

private:
    // The frame of every navigation step: highlight off, the path changed by `step`, the new node's
    // caret placed (unless `caret` is 0: -1 start, 1 end), highlight on, the change told.
    template <class Step>
    bool navigate(Step step, int caret);
    MathNode *walk(std::size_t length, bool strict) const;
    // A template by name that exists and may be entered, or null.
    MathTemplate *enterable(wchar const *name) const;
    // The template exists, may be entered and accepts the selected node as its argument.
    bool usable(MathTemplate *templ);
    // The index of the selected node in its parent; -1 for an empty path.
    long selected_index() const { return path_.empty() ? -1 : path_.back(); }
    // The parent lets `node` take the selected node's place (true for an empty path).
    bool parent_may_replace(MathNode *node);
    // A typed character as the text it stands for; false for one that cannot be decoded.
    static bool decode_typed(wchar c, MathString &out);
    // A character beyond 16 bits, typed as its two units: text like a letter.
    bool enter_pair(wchar high, wchar low);
    static bool is_digit(wchar c) { return c >= u'0' && c <= u'9'; }

    MathRootNode *root_;
    std::vector<long> path_;
    // How the next operation run from typed entry joins the history.
    EditKind entry_kind_ = EditKind::edit;
    // The first half of a character typed as two units, until the second comes.
    wchar pending_high_ = 0;
};

}  // namespace Tavi
