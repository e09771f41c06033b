// MathSelection: the selection model (path, highlight, selecting by glyph and by point), navigation
// by keys, the insertion-point operand, and the operation factories.
#include "tavi/editing/mathselection.h"

#include <typeinfo>

#include "tavi/editing/matheditscene.h"
#include "tavi/editing/mathchildops.h"
#include "tavi/editing/mathdeletenodeop.h"
#include "tavi/editing/mathoverlayop.h"
#include "tavi/editing/mathselectionmemo.h"
#include "tavi/editing/mathtextops.h"
#include "tavi/editing/mathtoggleops.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/glyphiterator.h"
#include "tavi/glyph/glyphscene.h"
#include "tavi/glyph/hint.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/templateaccelerator.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

MathSelection::MathSelection(Selection *owner, long glyph_index)
    : GlyphSelection(owner, glyph_index), root_(dynamic_cast<MathRootNode *>(GlyphSelection::glyph()))
{
    if (root_)
        root_->ref();
}

MathSelection::~MathSelection()
{
    if (root_)
        root_->unref();
}

// ---- The path ----

// Follows the first `length` indices of the path from the top node. Where an index names no child,
// the walk stops there (lenient) or gives null (strict).
MathNode *MathSelection::walk(std::size_t length, bool strict) const
{
    if (!root_)
        return nullptr;
    MathNode *node = root_->child();
    for (std::size_t i = 0; i < length && i < path_.size(); ++i) {
        long const index = path_[i];
        MathNode *next = index >= 0 && index < node->count() ? node->child(static_cast<int>(index)) : nullptr;
        if (next == nullptr)
            return strict ? nullptr : node;
        node = next;
    }
    return node;
}

MathNode *MathSelection::selected_node() const { return walk(path_.size(), false); }

MathNode *MathSelection::selected_parent() const { return path_.empty() ? nullptr : walk(path_.size() - 1, false); }

long MathSelection::path_pop_back()
{
    long const index = path_.back();
    path_.pop_back();
    return index;
}

bool MathSelection::path_valid() const { return walk(path_.size(), true) != nullptr; }

MathEditScene *MathSelection::math_scene() { return dynamic_cast<MathEditScene *>(scene()); }

bool MathSelection::is_empty_root_selected() { return root_ && path_.empty() && root_->empty(); }

bool MathSelection::read_only() const { return root_ && root_->read_only(); }

MathNode *MathSelection::new_placeholder()
{
    MathEditScene *s = math_scene();
    MathTemplate *dummy = s ? s->template_table()->get_dummy_template() : nullptr;
    return dummy ? dummy->create_node() : nullptr;
}

MathTemplate *MathSelection::enterable(wchar const *name) const
{
    MathEditScene *s = const_cast<MathSelection *>(this)->math_scene();
    MathTemplate *t = s ? s->template_table()->get_template(name) : nullptr;
    return t && t->can_enter() ? t : nullptr;
}

bool MathSelection::usable(MathTemplate *templ)
{
    return templ != nullptr && templ->can_enter() && templ->valid_overlay_arg(selected_node());
}

bool MathSelection::parent_may_replace(MathNode *node)
{
    MathNode *parent = selected_parent();
    return parent == nullptr || parent->may_replace(selected_index(), node);
}

// ---- Selection ----

bool MathSelection::key_up(Input::Key, int) { return false; }

wchar const *MathSelection::type_name() { return u"MathSelection"; }

SelectionMemo *MathSelection::memo() { return new MathSelectionMemo(glyph_index(), path_); }

void MathSelection::clear()
{
    if (GlyphScene *s = scene())
        s->damage_content(DamageSelection::object());
    if (MathNode *node = selected_node())
        node->selected(false);
}

void MathSelection::highlight()
{
    if (MathNode *node = selected_node())
        node->selected(true);
    if (GlyphScene *s = scene())
        s->damage_content(DamageSelection::object());
}

Glyph *MathSelection::glyph() { return root_; }

Glyph *MathSelection::selected_element() { return root_; }

bool MathSelection::select_default()
{
    path_.clear();
    return true;
}

AllocationTree *MathSelection::allocate(GlyphContext &context, AllocationTree const &allocation)
{
    return root_ ? root_->allocate_selection(this, 0, context, allocation) : nullptr;
}

long MathSelection::count() { return 1; }

Glyph *MathSelection::component(long) { return root_; }

bool MathSelection::contains(Glyph *g)
{
    if (!root_ || g == nullptr)
        return false;
    for (std::size_t length = 0; length <= path_.size(); ++length) {
        MathNode *node = walk(length, true);
        if (node == nullptr)
            return false;
        if (node == g)
            return true;
    }
    return g == root_;
}

// A glyph deeper in the formula is found but not selected: the path stays empty.
bool MathSelection::select(Glyph *g)
{
    select_default();
    if (!root_ || g == nullptr)
        return false;
    if (g == root_ || g == root_->child())
        return true;
    for (GlyphIterator it(root_->child()); !it.at_end(); it.next())
        if (it.glyph() == g)
            return true;
    return false;
}

bool MathSelection::deselect(Glyph *g)
{
    if (!root_)
        return false;
    if (g == root_ || g == root_->child())
        return true;
    // A node on the path takes the path back to its parent.
    for (std::size_t length = 1; length <= path_.size(); ++length) {
        MathNode *node = walk(length, true);
        if (node == nullptr)
            break;
        if (node == g) {
            path_.resize(length - 1);
            break;
        }
    }
    return false;
}

bool MathSelection::select_at(GlyphContext &context, AllocationTree const &allocation, Point point)
{
    if (!root_ || !allocation.contains(point))
        return false;
    path_.clear();
    root_->pick(this, context, allocation, point);
    return true;
}

// ---- Navigation ----

template <class Step>
bool MathSelection::navigate(Step step, int caret)
{
    clear();
    step();
    if (caret != 0)
        selected_node()->set_caret_pos(caret > 0);
    highlight();
    changed(SelectionChange::object());
    return true;
}

bool MathSelection::do_select_in_out(bool in)
{
    if (!root_)
        return false;
    if (in) {
        if (selected_node()->count() == 0)
            return false;
        return navigate([this] { path_.push_back(0); }, 1);
    }
    if (path_.empty())
        return false;
    return navigate([this] { path_.pop_back(); }, 1);
}

bool MathSelection::do_select_expression()
{
    if (path_.empty())
        return false;
    return navigate([this] { path_.clear(); }, 0);
}

bool MathSelection::do_tabbing(bool forward)
{
    if (path_.empty())
        return false;
    return navigate(
        [this, forward] {
            long const i = path_pop_back();
            long const n = selected_node()->count();
            long next = forward ? i + 1 : i - 1;
            if (next >= n)
                next = 0;
            if (next < 0)
                next = n - 1;
            path_.push_back(next);
        },
        1);
}

bool MathSelection::do_caret_move(MathNodeContext &, bool forward)
{
    MathNode *node = selected_node();
    if (node == nullptr || node->caret_pos() < 0 || !node->increment_caret_pos(forward))
        return false;
    return navigate([] {}, 0);
}

// A neighbour is asked of the parent; when it has none the step is tried one level up, and the
// selection then stands at that level.
bool MathSelection::do_arrow_key(MathNodeContext &context, Input::Key key, std::size_t depth)
{
    if (path_.empty())
        return false;
    if (depth == 0)
        clear();
    long const i = path_pop_back();
    long next = 0;
    if (selected_node()->get_neighbour_child(context, i, key, next) && next >= 0 &&
        next < selected_node()->count()) {
        path_.push_back(next);
        // Going right enters a node at the start of its text; every other way at the end.
        selected_node()->set_caret_pos(key != Input::key_right);
        highlight();
        changed(SelectionChange::object());
        return true;
    }
    if (do_arrow_key(context, key, depth + 1))
        return true;
    path_.push_back(i);
    if (depth == 0)
        highlight();
    return false;
}

bool MathSelection::key_down(Input::Key key, int modifiers)
{
    if (!root_)
        return false;
    if (key == Input::key_tab && (modifiers == 0 || modifiers == Input::modifier_shift))
        return do_tabbing(modifiers == 0);

    bool const arrow = key == Input::key_left || key == Input::key_right || key == Input::key_up ||
                       key == Input::key_down;
    if (arrow && modifiers == 0) {
        MathEditScene *s = math_scene();
        GlyphContext glyph_context(scene(), nullptr, static_cast<Gauge *>(nullptr), root_);
        MathNodeContext context(glyph_context, s ? s->math_style() : nullptr);
        if ((key == Input::key_left || key == Input::key_right) && do_caret_move(context, key == Input::key_right))
            return true;
        return do_arrow_key(context, key, 0);
    }

    if (key == Input::key_delete && modifiers == 0) {
        if (!is_empty_root_selected())
            return false;
        do_delete();
        return true;
    }

    MathEditScene *s = math_scene();
    MathTemplate *templ = s ? s->template_table()->get_template(TemplateAccelerator(key, modifiers)) : nullptr;
    if (templ == nullptr || !templ->can_enter())
        return false;
    if (!read_only() && templ->valid_overlay_arg(selected_node()))
        if (MathNode *node = templ->create_edit_node())
            do_overlay_operation(node);
    return true;
}

// ---- The insertion-point operand ----

void MathSelection::fix_ip_operand(std::vector<long> &out)
{
    if (!root_)
        return;
    // An identifier-like node hands the mark up to the top of the chain of such nodes it stands in.
    if (selected_node()->cat_type() == 20) {
        while (!path_.empty()) {
            long const i = path_pop_back();
            if (selected_node()->cat_type() != 20) {
                path_.push_back(i);
                break;
            }
        }
    }
    if (!path_.empty())
        selected_node()->ip_operand(true);
    if (GlyphScene *s = scene())
        s->damage_all();
    out = path_;
}

void MathSelection::unfix_ip_operand()
{
    if (root_ && !path_.empty())
        selected_node()->ip_operand(false);
}

// ---- Operations ----

bool MathSelection::run(Kxt::Operation *op, EditKind kind)
{
    if (op == nullptr)
        return false;
    bool const done = op->doit();
    if (MathEditScene *s = math_scene())
        s->record_operation(op, done, kind);
    else
        delete op;
    return done;
}

MathEditOp *MathSelection::new_append_child_op(MathEditScene *scene, MathNode *node)
{
    return new MathAppendChildOp(scene, node);
}

MathEditOp *MathSelection::new_insert_sibling_op(MathEditScene *scene, MathNode *node)
{
    return new MathInsertSiblingOp(scene, node);
}

MathEditOp *MathSelection::new_append_negative_child_op(MathEditScene *scene, MathNode *node)
{
    return new MathAppendNegativeChildOp(scene, node);
}

MathEditOp *MathSelection::new_insert_negative_sibling_op(MathEditScene *scene, MathNode *node)
{
    return new MathInsertNegativeSiblingOp(scene, node);
}

MathEditOp *MathSelection::new_toggle_sign_op(MathEditScene *scene) { return new MathToggleSignOp(scene); }

MathEditOp *MathSelection::new_toggle_all_signs_op(MathEditScene *scene) { return new MathToggleAllSignsOp(scene); }

MathEditOp *MathSelection::new_overlay_op(MathEditScene *scene, MathNode *node, long index)
{
    return new MathOverlayOp(scene, node, index);
}

MathEditOp *MathSelection::new_delete_node_op(MathEditScene *scene) { return new MathDeleteNodeOp(scene); }

MathEditOp *MathSelection::new_flatten_unary_op(MathEditScene *scene) { return new MathFlattenUnaryOp(scene); }

MathEditOp *MathSelection::new_flatten_unary_parent_op(MathEditScene *scene)
{
    return new MathFlattenUnaryParentOp(scene);
}

MathEditOp *MathSelection::new_replace_node_op(MathEditScene *scene, MathNode *node)
{
    return new MathReplaceNodeOp(scene, node);
}

MathEditOp *MathSelection::new_insert_char_op(MathEditScene *scene, MathString const &text, long position)
{
    return new MathInsertCharOp(scene, text, position);
}

MathEditOp *MathSelection::new_delete_char_op(MathEditScene *scene, long position, bool forward)
{
    return new MathDeleteCharOp(scene, position, forward);
}

}  // namespace Tavi
