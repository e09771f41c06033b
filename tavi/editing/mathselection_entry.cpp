// MathSelection: typed characters and the joining of a template's new node to the tree.
//
// A formula is edited as a tree, not as text. A typed character edits the text of the selected atom
// (identifier, number or string) at its caret, or replaces the selected node by a new atom, or enters
// a template whose new node is laid over the selection. Read-only formulas swallow characters without
// a sound; characters refused for reasons of structure answer false, so the host may use them.
#include "tavi/editing/mathselection.h"

#include <typeinfo>

#include "tavi/editing/matheditscene.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathidentnode.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnumbernode.h"
#include "tavi/math/mathplusnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathscriptnode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathstringnode.h"
#include "tavi/math/templates/decimalpoint.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/templateaccelerator.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

namespace {

constexpr wchar backspace = 8;

// A node made only as a signal: it never joins the tree.
void drop(MathNode *node)
{
    node->ref();
    node->unref();
}

bool is_placeholder(MathNode *node) { return node != nullptr && typeid(*node) == typeid(MathDummyNode); }

// While it lives, operations run from typed entry join the history as `kind`.
class EntryKind
{
public:
    EntryKind(EditKind &slot, EditKind kind) : slot_(slot), old_(slot) { slot_ = kind; }
    ~EntryKind() { slot_ = old_; }
    EntryKind(EntryKind const &) = delete;
    EntryKind &operator=(EntryKind const &) = delete;

private:
    EditKind &slot_;
    EditKind old_;
};

}  // namespace

// A character typed alone: a surrogate half or a non-character has no meaning of its own.
bool MathSelection::decode_typed(wchar c, MathString &out)
{
    if ((c >= 0xd800 && c <= 0xdfff) || c == 0xfffe || c == 0xffff)
        return false;
    return MathString::from_char(c, out);
}

bool MathSelection::enter_char(wchar c)
{
    if (!root_)
        return false;
    // A character beyond 16 bits arrives as two units: the first waits for the second.
    if (c >= 0xd800 && c <= 0xdbff) {
        pending_high_ = c;
        return true;
    }
    if (c >= 0xdc00 && c <= 0xdfff) {
        wchar const high = pending_high_;
        pending_high_ = 0;
        return high != 0 && enter_pair(high, c);
    }
    pending_high_ = 0;
    MathNode *selected = selected_node();
    long const caret = selected->caret_pos();
    MathEditScene *s = math_scene();

    if (c == u' ' && (modifier_state() & Input::modifier_control))
        return do_select_expression();
    if (enter_shortcut(c))
        return true;

    if (c == backspace) {
        if (caret == 0)
            return true;
        if (caret > 0) {
            if (read_only())
                return true;
            if (selected->text().char_count() < 2)
                run(new_replace_node_op(s, new_placeholder()));
            else
                run(new_delete_char_op(s, caret, false));
            return true;
        }
        if (is_empty_root_selected())
            return false;
        if (read_only())
            return true;
        do_delete();
        return true;
    }
    if (c < 32)
        return false;

    // In a string every character is text, the space included.
    if (dynamic_cast<MathStringNode *>(selected)) {
        if (read_only())
            return true;
        EntryKind typing(entry_kind_, EditKind::typing);
        return do_insert_char_operation(c, caret);
    }
    // Space walks the tree: outward, or inward with shift.
    if (c == u' ')
        return do_select_in_out((modifier_state() & Input::modifier_shift) != 0);
    if (read_only())
        return true;

    if (dynamic_cast<MathIdentNode *>(selected)) {
        EntryKind typing(entry_kind_, EditKind::typing);
        return do_insert_char_operation(c, caret);
    }
    // A number takes digits and one decimal point, and nothing else: typing never turns it into
    // something that is not a number.
    if (dynamic_cast<MathNumberNode *>(selected)) {
        MathString const &text = selected->text();
        bool const point = c == decimal_point() && text.run_count() == 1 &&
                           text.chars().find(decimal_point()) == wstring::npos;
        if (!is_digit(c) && !point)
            return false;
        EntryKind typing(entry_kind_, EditKind::typing);
        return do_insert_char_operation(c, caret);
    }

    MathNode *node = nullptr;
    MathNode *parent = selected_parent();
    if (dynamic_cast<MathScriptNode *>(parent)) {
        // The base and the scripts of an identifier's script hold identifiers only: a digit there is
        // identifier text, and the base is never a number.
        MathTemplate *ci = enterable(u"ci");
        if (ci == nullptr)
            return false;
        if (is_digit(c) && selected_index() == 0)
            return false;
        MathString text;
        if (!decode_typed(c, text))
            return false;
        node = ci->create_edit_node(text);
    } else if (c == u'"') {
        MathTemplate *string = enterable(u"string");
        if (string == nullptr)
            return false;
        node = string->create_edit_node();
    } else if (c == decimal_point()) {
        MathTemplate *cn = enterable(u"cn");
        if (cn == nullptr)
            return false;
        MathString text(u"0", MathString::f_text);
        text.append(c, MathString::f_text);
        node = cn->create_edit_node(text);
    } else {
        MathTemplate *templ = enterable(is_digit(c) ? u"cn" : u"ci");
        MathString text;
        if (templ == nullptr || !decode_typed(c, text))
            return false;
        node = templ->create_edit_node(text);
    }
    if (node != nullptr) {
        EntryKind typing(entry_kind_, EditKind::typing_start);
        do_replace_node_operation(node);
    }
    return true;
}

bool MathSelection::enter_pair(wchar high, wchar low)
{
    wchar const units[2] = {high, low};
    MathString text;
    if (!MathString::decode(units, 2, text))
        return false;
    MathNode *selected = selected_node();
    MathEditScene *s = math_scene();
    if (dynamic_cast<MathStringNode *>(selected) || dynamic_cast<MathIdentNode *>(selected)) {
        if (read_only())
            return true;
        return run(new_insert_char_op(s, text, selected->caret_pos()), EditKind::typing);
    }
    if (dynamic_cast<MathNumberNode *>(selected))
        return false;
    if (read_only())
        return true;
    MathTemplate *ci = enterable(u"ci");
    MathNode *node = ci ? ci->create_edit_node(text) : nullptr;
    if (node == nullptr)
        return false;
    EntryKind typing(entry_kind_, EditKind::typing_start);
    return do_replace_node_operation(node);
}

bool MathSelection::enter_shortcut(wchar c)
{
    MathEditScene *s = math_scene();
    if (s == nullptr)
        return false;
    TemplateTable *table = s->template_table();
    MathNode *selected = selected_node();
    MathTemplate *templ = nullptr;
    // "(" on a placeholder opens parentheses, wherever "(" leads elsewhere.
    if (c == u'(' && is_placeholder(selected))
        templ = table->get_template(u"fenced");
    if (templ == nullptr)
        templ = table->get_template(TemplateAccelerator(c));
    if (templ == nullptr || !templ->can_enter())
        return false;
    // From here the key is the template's, whether or not it applies here.
    if (!read_only() && templ->valid_overlay_arg(selected))
        if (MathNode *node = templ->create_edit_node())
            do_overlay_operation(node);
    return true;
}

bool MathSelection::do_replace_node_operation(MathNode *node)
{
    run(new_replace_node_op(math_scene(), node), entry_kind_);
    return true;
}

bool MathSelection::do_insert_char_operation(wchar c, long position)
{
    MathString text;
    if (c == u' ')
        text = MathString(&c, 1, MathString::f_text);
    else if (!decode_typed(c, text))
        return false;
    return run(new_insert_char_op(math_scene(), text, position), entry_kind_);
}

// How a new node joins the tree: a comma in an argument list adds a slot; an operator typed again
// extends the node it already forms (a sum gets another term, signed minus for "-"); a minus or
// negation on a sum or its term works the signs; anything else is laid over the selection.
bool MathSelection::do_overlay_operation(MathNode *node)
{
    if (node == nullptr)
        return false;
    MathEditScene *s = math_scene();
    MathNode *selected = selected_node();
    MathNode *parent = selected_parent();
    MathTemplate *templ = node->templ();

    if (templ && templ->is_sequence() && parent && parent->flatten_sequence(selected_index())) {
        drop(node);
        return run(new_insert_sibling_op(s, new_placeholder()));
    }

    if (templ && templ->associative()) {
        auto *plus = dynamic_cast<MathPlusNode *>(node);
        if (plus == nullptr || (!plus->is_negate() && !plus->is_minus())) {
            if (selected->same_type(node)) {
                drop(node);
                return run(new_append_child_op(s, new_placeholder()));
            }
            if (parent && parent->same_type(node)) {
                drop(node);
                return run(new_insert_sibling_op(s, new_placeholder()));
            }
        } else if (plus->is_minus()) {
            if (is_placeholder(selected)) {
                drop(node);
                MathTemplate *negate = s->template_table()->get_template(u"negate");
                MathNode *negation = negate ? negate->create_edit_node() : nullptr;
                return negation != nullptr && do_overlay_operation(negation);
            }
            if (dynamic_cast<MathPlusNode *>(selected)) {
                drop(node);
                return run(new_append_negative_child_op(s, new_placeholder()));
            }
            if (dynamic_cast<MathPlusNode *>(parent)) {
                drop(node);
                return run(new_insert_negative_sibling_op(s, new_placeholder()));
            }
        } else {
            if (auto *sum = dynamic_cast<MathPlusNode *>(selected)) {
                drop(node);
                return run(sum->is_negate() ? new_flatten_unary_op(s) : new_toggle_all_signs_op(s));
            }
            if (auto *sum = dynamic_cast<MathPlusNode *>(parent)) {
                drop(node);
                return run(sum->is_negate() ? new_flatten_unary_parent_op(s) : new_toggle_sign_op(s));
            }
        }
    }

    if (!parent_may_replace(node)) {
        drop(node);
        return false;
    }
    return run(new_overlay_op(s, node, 0));
}

}  // namespace Tavi
