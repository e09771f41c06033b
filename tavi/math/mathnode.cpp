// MathNode: the hand-over to the template, the highlight of selected nodes, and the walks over the
// subtree (insertion-point flag, equality, search).
#include "tavi/math/mathnode.h"

#include <memory>
#include <vector>

#include "tavi/canvas/brush.h"
#include "tavi/canvas/canvas.h"
#include "tavi/canvas/pen.h"
#include "tavi/editing/mathselection.h"
#include "tavi/editing/nodelocator.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/geometry/extension.h"
#include "tavi/glyph/view.h"
#include "tavi/math/mathattriblist.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathstring.h"

namespace Tavi {

namespace {

Color const yellow(255, 255, 0);
Color const cyan(0, 255, 255);
Color const green(0, 255, 0);

// The highlight behind a node, by the state of the node and of the surface. `lit` is the colour and
// fill used when the view has the focus (and, where the row says so, the node lies inside a selected
// node); `unlit` otherwise. A state that no row matches has no highlight.
enum Match { no, yes, any };

struct HighlightRule
{
    Match printing;
    Match selected;
    Match ip_operand;
    bool lit_needs_selection;
    Color lit;
    bool lit_filled;
    Color unlit;
    bool unlit_filled;
};

HighlightRule const highlight_rules[] = {
    // printing selected ip_operand  needs sel.  lit     filled  unlit   filled
    {no, yes, no, false, yellow, true, yellow, false},
    {no, yes, yes, false, cyan, true, green, true},
    {no, no, yes, true, cyan, true, green, true},
    {yes, any, yes, false, green, true, green, true},
};

bool matches(Match m, bool value) { return m == any || (m == yes) == value; }

struct Highlight
{
    bool on = false;
    Color color;
    bool filled = false;
};

Highlight choose_highlight(bool printing, bool selected, bool ip_operand, bool focus, bool in_selection)
{
    Highlight h;
    for (HighlightRule const &r : highlight_rules) {
        if (!matches(r.printing, printing) || !matches(r.selected, selected) || !matches(r.ip_operand, ip_operand))
            continue;
        bool const lit = focus && (!r.lit_needs_selection || in_selection);
        h.on = true;
        h.color = lit ? r.lit : r.unlit;
        h.filled = lit ? r.lit_filled : r.unlit_filled;
        break;
    }
    return h;
}

}  // namespace

// ---- Construction ----

MathNode::MathNode(MathTemplate *templ) : templ_(templ), selected_(false), ip_operand_(false)
{
    if (templ_)
        templ_->ref();
}

MathNode::MathNode(MathNode const &other)
    : Glyph(other), templ_(other.templ_), selected_(other.selected_), ip_operand_(other.ip_operand_)
{
    if (templ_)
        templ_->ref();
}

MathNode::~MathNode()
{
    if (templ_)
        templ_->unref();
}

MathNode::AsMathNode::AsMathNode(MathInfo &context, MathNode *node) : context_(context), old_(context.math_node())
{
    context_.math_node(node);
}

MathNode::AsMathNode::~AsMathNode() { context_.math_node(old_); }

MathNodeContext *MathNode::math_context(GlyphContext &context) { return dynamic_cast<MathNodeContext *>(&context); }

// ---- Seams ----

// The view's focus decides between the bright and the quiet highlight; without a view there is none.
bool MathNode::view_has_focus(GlyphContext const &context)
{
    View const *view = context.view();
    return view != nullptr && view->focus();
}

bool MathNode::path_entry(MathSelection const *selection, std::size_t depth, long &index)
{
    if (selection == nullptr || depth >= selection->path_length())
        return false;
    index = selection->path_at(depth);
    return true;
}

void MathNode::enter_child(MathSelection *selection, long index)
{
    if (selection != nullptr)
        selection->path_push_back(index);
}

// ---- Glyph protocol ----

BoxTree *MathNode::request(GlyphContext &context, BoxTree const &constraint)
{
    MathNodeContext *math = math_context(context);
    if (math == nullptr || templ_ == nullptr)
        return nullptr;
    if (layout_memo_ && layout_memo_->fits(*math, constraint))
        return layout_memo_->copy();
    BoxTree *tree = nullptr;
    {
        AsMathNode scope(*math, this);
        tree = templ_->request(*math, constraint);
    }
    // An atom measures its text again about as fast as its tree would be copied: only nodes with
    // children keep theirs.
    if (tree != nullptr && count() > 0)
        layout_memo_ = LayoutMemo::make(*math, constraint, *tree);
    else
        layout_memo_.reset();
    return tree;
}

// The highlight is widened by 10 twips left and right and 20 twips up and down, so that it shows
// around the ink of the node and not only under it.
void MathNode::draw(GlyphContext &context, AllocationTree const &allocation)
{
    MathNodeContext *math = math_context(context);
    Canvas *canvas = context.canvas();
    if (math == nullptr || canvas == nullptr || templ_ == nullptr || allocation.boxtree() == nullptr)
        return;

    // A walk that only locates nodes decides for itself where it goes.
    if (auto *locator = dynamic_cast<NodeLocator *>(canvas)) {
        if (!locator->visit(this, *math, allocation))
            return;
    } else if (!canvas->damaged(Extension(canvas, allocation))) {
        // A node's own allocation is the one it is drawn at (the copy Glyph::allocate would make).
        return;
    }

    bool const was_in_selection = math->in_selection();
    if (selected_)
        math->in_selection(true);

    Highlight const h =
        choose_highlight(canvas->printing(), selected_, ip_operand_, view_has_focus(context), was_in_selection);
    if (h.on) {
        Extent const margin = canvas->twips_to_pixel(Extent(10, 20));
        Rect const r(allocation.top() - margin.height(), allocation.left() - margin.width(),
                     allocation.bottom() + margin.height(), allocation.right() + margin.width());
        if (h.filled) {
            canvas->fill_rect(r, Brush(h.color));
        } else {
            canvas->pen(Pen(0, h.color), true);
            canvas->frame_rect(r);
        }
    }

    // The selected atom shows its text caret; everything inside a selected expression has none.
    long const was_caret = math->caret_pos();
    if (selected_)
        math->caret_pos(caret_pos());
    {
        AsMathNode scope(*math, this);
        templ_->draw(*math, allocation);
    }
    math->caret_pos(was_caret);
    math->in_selection(was_in_selection);
}

bool MathNode::read_only() const
{
    Glyph const *p = parent();
    return p != nullptr && p->read_only();
}

// ---- Node operations ----

wchar const *MathNode::type_name() const { return templ_ ? templ_->type_name() : u""; }

wchar const *MathNode::content_type_name() const { return type_name(); }

// Placed boxes do not remember their nodes: the locator walks the road of drawing to find the deepest
// node under the point, with the context set on the way as for drawing (script sizes, slant), so that
// an atom found there places its caret right. The path from this node down to it goes to the
// selection.
bool MathNode::pick(MathSelection *selection, MathNodeContext &context, AllocationTree const &allocation, Point point)
{
    MathNode *found = NodeLocator::node_at(this, context, allocation, point);
    if (found == nullptr || found == this)
        return false;
    std::vector<long> path;
    for (MathNode *n = found; n != this;) {
        MathNode *parent = dynamic_cast<MathNode *>(n->parent());
        if (parent == nullptr)
            return false;
        long index = 0;
        while (index < parent->count() && parent->child(static_cast<int>(index)) != n)
            ++index;
        path.push_back(index);
        n = parent;
    }
    for (auto it = path.rbegin(); it != path.rend(); ++it)
        enter_child(selection, *it);
    return true;
}

// The selected node is found by the path from this node's depth on, and its place by the locator.
AllocationTree *MathNode::allocate_selection(MathSelection *selection, std::size_t depth, MathNodeContext &context,
                                             AllocationTree const &allocation)
{
    MathNode *target = this;
    long index = 0;
    for (std::size_t d = depth; path_entry(selection, d, index); ++d) {
        if (index < 0 || index >= target->count())
            break;
        target = target->child(static_cast<int>(index));
    }
    if (target == this)
        return Glyph::allocate(context, allocation);
    AllocationTree place;
    if (!NodeLocator::place_of(this, context, allocation, target, place))
        return Glyph::allocate(context, allocation);
    return new AllocationTree(place);
}

bool MathNode::is_equal(MathNode *other)
{
    if (other == this)
        return true;
    if (other == nullptr || other->templ_ != templ_ || other->count() != count())
        return false;
    for (long i = 0; i < count(); ++i) {
        MathNode *mine = child(static_cast<int>(i));
        MathNode *theirs = other->child(static_cast<int>(i));
        if (mine == nullptr || theirs == nullptr ? mine != theirs : !mine->is_equal(theirs))
            return false;
    }
    return true;
}

Kxt::FixedString MathNode::cat_text()
{
    MathString const &t = text();
    if (t.run_count() == 0 || t.run_end(t.run_count() - 1) == 0)
        return Kxt::FixedString(u"");
    return Kxt::FixedString(t.text_form());
}

MathAttribList *MathNode::attribute_list() { return nullptr; }

void MathNode::attribute(wchar const *, wchar const *) {}

MathNode *MathNode::child(int index) { return static_cast<MathNode *>(component(index)); }

MathTemplate::DeleteOp MathNode::delete_child_op(std::size_t index)
{
    return templ_ ? templ_->delete_child_op(this, index) : MathTemplate::delete_none;
}

long MathNode::caret_pos() { return -1; }

bool MathNode::increment_caret_pos(bool) { return false; }

void MathNode::set_caret_pos(bool) {}

void MathNode::modified() { forget_layout(); }

// A node with children keeps a tree only when its subtree is small, and a request of a node requests
// all of its children: so a node with children but without a kept tree has no ancestor with one, and
// the walk ends there (an atom keeps none and always passes the change on). That
// keeps building a deep formula, child under child, from walking up the whole path at every step.
void MathNode::forget_layout()
{
    layout_memo_.reset();
    for (Glyph *g = parent(); g != nullptr; g = g->parent()) {
        MathNode *node = dynamic_cast<MathNode *>(g);
        if (node == nullptr || !node->layout_memo_)
            break;
        node->layout_memo_.reset();
    }
}

// ---- Walks and template questions ----

void MathNode::ip_operand(bool on)
{
    for (long i = 0; i < count(); ++i)
        if (MathNode *c = child(static_cast<int>(i)))
            c->ip_operand(false);
    ip_operand_ = on;
}

bool MathNode::has_ip_operand()
{
    if (ip_operand_)
        return true;
    for (long i = 0; i < count(); ++i)
        if (MathNode *c = child(static_cast<int>(i)); c != nullptr && c->has_ip_operand())
            return true;
    return false;
}

bool MathNode::has_node(MathNode *node)
{
    if (node == this || is_equal(node))
        return true;
    for (long i = 0; i < count(); ++i)
        if (MathNode *c = child(static_cast<int>(i)); c != nullptr && c->has_node(node))
            return true;
    return false;
}

bool MathNode::same_type(MathNode const *node) const { return node != nullptr && node->templ_ == templ_; }

bool MathNode::associative() const { return templ_ && templ_->associative(); }

bool MathNode::is_sequence() const { return templ_ && templ_->is_sequence(); }

bool MathNode::flatten_sequence(long index) const { return templ_ && templ_->flatten_sequence(this, index); }

bool MathNode::get_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    if (templ_ == nullptr)
        return false;
    AsMathNode scope(context, this);
    return templ_->get_neighbour_child(context, index, key, result);
}

// ---- Attributes ----

void MathNode::attribute_list(MathAttribList *list)
{
    if (list == nullptr)
        return;
    for (MathAttribute const *a : *list)
        attribute(a->key(), a->value());
}

wstring MathNode::attribute_string()
{
    std::unique_ptr<MathAttribList> list(attribute_list());
    wstring out;
    if (list == nullptr)
        return out;
    for (MathAttribute const *a : *list) {
        if (a->key())
            out += a->key();
        out += u"=\"";
        if (a->value())
            out += a->value();
        out += u"\",";
    }
    return out;
}

}  // namespace Tavi
