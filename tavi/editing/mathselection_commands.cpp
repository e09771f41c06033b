// MathSelection: the commands it answers, and the bodies of the scene's do_ calls (clipboard,
// deletion, templates by name, characters by name, numbers).
//
// Commands are told apart by their exact class. A command that needs a path or children answers
// "not handled" where they are missing, so that it runs on down the chain untouched.
#include "tavi/editing/mathselection.h"

#include <memory>
#include <typeinfo>

#include "tavi/editing/matheditscene.h"
#include "tavi/editing/mathtoggleops.h"
#include "tavi/glyph/commands.h"
#include "tavi/interchange/clipboard.h"
#include "tavi/interchange/datasource.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathidentnode.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnumbernode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathstringnode.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

namespace {

template <class C>
bool is(Command *command)
{
    return typeid(*command) == typeid(C);
}

bool is_placeholder(MathNode *node) { return node != nullptr && typeid(*node) == typeid(MathDummyNode); }

// Frees a node that never joined the tree.
void drop(MathNode *node)
{
    node->ref();
    node->unref();
}

}  // namespace

bool MathSelection::command_state(Command *c)
{
    if (!root_ || c == nullptr)
        return false;
    bool const editable = !read_only();
    bool const has_path = !path_.empty();
    if (is<CopyCmd>(c)) {
        c->enable(true);
    } else if (is<PasteCmd>(c)) {
        if (!has_path)
            return false;
        c->enable(can_paste());
    } else if (is<DeleteCmd>(c)) {
        if (!has_path && root_->empty())
            return false;
        c->enable(can_delete());
    } else if (is<InsertOverlayCmd>(c) || is<InsertTabularOverlayCmd>(c) || is<InsertApplyOverlayCmd>(c) ||
               is<InsertNumberCmd>(c)) {
        c->enable(editable);
    } else if (is<InsertSymbolOverlayCmd>(c)) {
        c->enable(editable && can_insert_overlay(static_cast<InsertSymbolOverlayCmd *>(c)->name()));
    } else if (is<SelectInCmd>(c)) {
        if (selected_node()->count() == 0)
            return false;
        c->enable(true);
    } else if (is<SelectOutCmd>(c) || is<SelectExprCmd>(c) || is<SelectNextCmd>(c) || is<SelectPreviousCmd>(c)) {
        if (!has_path)
            return false;
        c->enable(true);
    } else if (is<InsertCharByNameCmd>(c)) {
        c->enable(editable && dynamic_cast<MathNumberNode *>(selected_node()) == nullptr);
    } else if (is<ToggleReadOnlyCmd>(c)) {
        auto *toggle = static_cast<ToggleReadOnlyCmd *>(c);
        toggle->turn_on(root_->read_only());
        toggle->enable(!root_->inherit_read_only());
    } else if (is<ToggleInheritReadOnlyCmd>(c)) {
        auto *toggle = static_cast<ToggleInheritReadOnlyCmd *>(c);
        toggle->turn_on(root_->inherit_read_only());
        toggle->enable(true);
    } else {
        return false;
    }
    return true;
}

bool MathSelection::do_command(Command *c)
{
    if (!root_ || c == nullptr)
        return false;
    bool const has_path = !path_.empty();
    if (is<CopyCmd>(c)) {
        do_copy();
    } else if (is<PasteCmd>(c)) {
        if (!has_path)
            return false;
        do_paste();
    } else if (is<DeleteCmd>(c)) {
        if (!has_path && root_->empty())
            return false;
        do_delete();
    } else if (is<InsertOverlayCmd>(c)) {
        do_insert_overlay(static_cast<InsertOverlayCmd *>(c)->name());
    } else if (is<InsertTabularOverlayCmd>(c)) {
        auto *t = static_cast<InsertTabularOverlayCmd *>(c);
        do_insert_tabular_overlay(t->name(), t->rows(), t->columns());
    } else if (is<InsertSymbolOverlayCmd>(c)) {
        do_insert_overlay(static_cast<InsertSymbolOverlayCmd *>(c)->name());
    } else if (is<InsertApplyOverlayCmd>(c)) {
        do_insert_apply_overlay(static_cast<InsertApplyOverlayCmd *>(c)->function());
    } else if (is<SelectInCmd>(c)) {
        return do_select_in_out(true);
    } else if (is<SelectOutCmd>(c)) {
        return do_select_in_out(false);
    } else if (is<SelectExprCmd>(c)) {
        return do_select_expression();
    } else if (is<SelectNextCmd>(c)) {
        return do_tabbing(true);
    } else if (is<SelectPreviousCmd>(c)) {
        return do_tabbing(false);
    } else if (is<InsertCharByNameCmd>(c)) {
        do_insert_char_by_name(static_cast<InsertCharByNameCmd *>(c)->name());
    } else if (is<InsertNumberCmd>(c)) {
        do_insert_number(static_cast<InsertNumberCmd *>(c)->number());
    } else if (is<ToggleReadOnlyCmd>(c)) {
        if (root_->inherit_read_only())
            return false;
        run(new ToggleReadOnlyOp(math_scene()), EditKind::mode);
    } else if (is<ToggleInheritReadOnlyCmd>(c)) {
        run(new ToggleInheritReadOnlyOp(math_scene()), EditKind::mode);
    } else {
        return false;
    }
    return true;
}

// ---- Clipboard ----

bool MathSelection::can_paste()
{
    if (read_only())
        return false;
    wchar const *const formats[] = {math_edit_content_format, plain_text_format};
    return Clipboard::object().provides(formats, 2) != 0;
}

// The source is made independent of the document at once: later edits must not change what was
// copied.
void MathSelection::do_copy()
{
    if (!root_)
        return;
    auto *source = new MathNodeDataSource(selected_node());
    source->copy();
    source->put_on_clipboard();
}

void MathSelection::do_paste()
{
    MathEditScene *s = math_scene();
    if (read_only() || s == nullptr || path_.empty())
        return;
    MathNode *node = MathNode::get_from_clipboard(*s->template_table());
    if (node == nullptr)
        return;
    if (parent_may_replace(node))
        run(new_replace_node_op(s, node));
    node->unref();
}

// ---- Deletion ----

bool MathSelection::can_delete()
{
    if (!root_ || read_only())
        return false;
    if (path_.empty())
        return !root_->empty();
    MathNode *selected = selected_node();
    if (!is_placeholder(selected))
        return true;
    return selected_parent()->delete_child_op(static_cast<std::size_t>(selected_index())) !=
           MathTemplate::delete_none;
}

// Inside a text the character at the caret goes; a filled slot becomes a placeholder, and a
// placeholder goes from its parent where the parent's template allows.
void MathSelection::do_delete()
{
    if (!root_)
        return;
    MathNode *selected = selected_node();
    long const caret = selected->caret_pos();
    long const length = static_cast<long>(selected->text().length());
    if (caret >= 0 && length > 0) {
        if (caret >= length)
            return;
        if (selected->text().char_count() > 1) {
            if (!read_only())
                run(new_delete_char_op(math_scene(), caret, true));
            return;
        }
    }
    if (!can_delete())
        return;
    if (!path_.empty() && is_placeholder(selected)) {
        run(new_delete_node_op(math_scene()));
        return;
    }
    if (MathNode *dummy = new_placeholder())
        do_replace_node_operation(dummy);
}

// ---- Templates, characters and numbers by name ----

bool MathSelection::can_insert_overlay(wchar const *name)
{
    if (!root_ || read_only() || name == nullptr)
        return false;
    MathEditScene *s = math_scene();
    return s != nullptr && usable(s->template_table()->get_template(name));
}

void MathSelection::do_insert_overlay(wchar const *name)
{
    if (!can_insert_overlay(name))
        return;
    if (MathNode *node = math_scene()->template_table()->get_template(name)->create_edit_node())
        do_overlay_operation(node);
}

void MathSelection::do_insert_tabular_overlay(wchar const *name, std::size_t rows, std::size_t cols)
{
    if (!can_insert_overlay(name))
        return;
    if (MathNode *node = math_scene()->template_table()->get_template(name)->create_tabular_edit_node(rows, cols))
        do_overlay_operation(node);
}

// A function applied to the selection: the selected node becomes the argument (child 1) of a new
// application whose child 0 is the function's name.
void MathSelection::do_insert_apply_overlay(wchar const *function)
{
    if (!root_ || read_only() || function == nullptr)
        return;
    MathEditScene *s = math_scene();
    MathTemplate *apply = enterable(u"apply");
    MathTemplate *ci = enterable(u"ci");
    if (s == nullptr || apply == nullptr || ci == nullptr || !apply->valid_overlay_arg(selected_node()))
        return;
    MathString name;
    if (!MathString::decode(function, name))
        return;
    MathNode *f = ci->create_edit_node(name);
    if (f == nullptr)
        return;
    MathNode *a = apply->create_edit_node();
    if (a == nullptr) {
        drop(f);
        return;
    }
    if (a->count() < 1) {
        drop(f);
        drop(a);
        return;
    }
    a->replace(0, f);
    if (a->count() < 2 || !parent_may_replace(a)) {
        drop(a);
        return;
    }
    run(new_overlay_op(s, a, 1));
}

void MathSelection::do_insert_char_by_name(wchar const *name)
{
    if (!root_ || read_only() || name == nullptr)
        return;
    MathNode *selected = selected_node();
    if (dynamic_cast<MathNumberNode *>(selected))
        return;
    // "&alpha;", "alpha;" and "alpha" all name the same character.
    wstring bare(name);
    if (!bare.empty() && bare.front() == u'&')
        bare.erase(0, 1);
    if (!bare.empty() && bare.back() == u';')
        bare.pop_back();
    MathString text;
    if (!text.append_name(bare.c_str(), bare.size()) || text.empty())
        return;
    if (dynamic_cast<MathIdentNode *>(selected) || dynamic_cast<MathStringNode *>(selected)) {
        run(new_insert_char_op(math_scene(), text, selected->caret_pos()));
        return;
    }
    if (MathTemplate *ci = enterable(u"ci"))
        if (MathNode *node = ci->create_edit_node(text))
            do_replace_node_operation(node);
}

void MathSelection::do_insert_number(wchar const *text)
{
    MathEditScene *s = math_scene();
    if (!root_ || read_only() || s == nullptr || text == nullptr)
        return;
    MathNode *node = s->template_table()->number_from_string(text);
    if (node == nullptr)
        return;
    if (!parent_may_replace(node)) {
        drop(node);
        return;
    }
    do_replace_node_operation(node);
}

}  // namespace Tavi
