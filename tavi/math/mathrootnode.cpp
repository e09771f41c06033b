// MathRootNode: the formula's top node, its attributes, the math context of each call and the cache of
// the measured tree.
#include "tavi/math/mathrootnode.h"

#include <ostream>

#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/kxt/xmltext.h"

#include <algorithm>
#include <typeinfo>

#include "tavi/canvas/gauge.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/glyphscene.h"
#include "tavi/math/mathdummynode.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathstyle.h"

namespace Tavi {

namespace {

// A width of all ones in 32 bits (-1) says that the caller has no width to give.
bool is_real_width(long width) { return width >= 0 && width < 4294967295L; }

}  // namespace

MathStyleSource::~MathStyleSource() = default;

MathRootNode::MathRootNode(MathNode *child)
    : child_(child), cached_width_(-1), has_read_only_(false), read_only_(false)
{
    child_->ref();
    child_->parent(this);
}

MathRootNode::~MathRootNode()
{
    cache_.reset();
    if (child_->parent() == this)
        child_->parent(nullptr);
    child_->unref();
}

std::unique_ptr<wchar[]> MathRootNode::copy_text(wchar const *text)
{
    if (text == nullptr || text[0] == 0)
        return nullptr;
    std::size_t n = 0;
    while (text[n] != 0)
        ++n;
    std::unique_ptr<wchar[]> copy(new wchar[n + 1]);
    for (std::size_t i = 0; i <= n; ++i)
        copy[i] = text[i];
    return copy;
}

void MathRootNode::style(wchar const *text) { style_ = copy_text(text); }
void MathRootNode::kxType(wchar const *text) { kxType_ = copy_text(text); }
void MathRootNode::alt_text(wchar const *text) { alt_text_ = copy_text(text); }
void MathRootNode::expr_text(wchar const *text) { expr_text_ = copy_text(text); }
void MathRootNode::tex_text(wchar const *text) { tex_text_ = copy_text(text); }

Glyph *MathRootNode::clone(bool deep) const
{
    MathNode *top = child_;
    if (deep) {
        top = dynamic_cast<MathNode *>(child_->clone(true));
        if (top == nullptr)
            return nullptr;
    }
    MathRootNode *copy = new MathRootNode(top);
    copy->style(style_.get());
    copy->kxType(kxType_.get());
    copy->alt_text(alt_text_.get());
    copy->expr_text(expr_text_.get());
    copy->tex_text(tex_text_.get());
    return copy;
}

MathStyle *MathRootNode::scene_style(GlyphContext const &context)
{
    if (MathStyleSource *source = dynamic_cast<MathStyleSource *>(context.scene()))
        if (MathStyle *style = source->math_style())
            return style;
    // One per thread: a style holds counted fonts, and a counted object belongs to one thread.
    static thread_local MathStyle fallback;
    return &fallback;
}

// The cache holds for one width. A call without a width of its own reuses the last width there was.
// The formula is laid out in the width less one "m" of the text font, the room the caret needs at the
// right, and is never lower than a line of that text.
BoxTree *MathRootNode::request(GlyphContext &glyph_context, BoxTree const &limits)
{
    MathNodeContext context(glyph_context, scene_style(glyph_context));
    if (is_real_width(limits.width())) {
        if (cached_width_ == -1 || cached_width_ != limits.width()) {
            cached_width_ = limits.width();
            invalidateCache();
        }
    } else if (cached_width_ == -1) {
        return nullptr;
    }
    BoxTreeLeaf leaf(cached_width_, limits.ascent(), limits.descent());
    if (!cache_) {
        long font_ascent = 0;
        long font_descent = 0;
        if (Gauge *gauge = context.gauge()) {
            context.select_real_font(MathString::f_text);
            font_ascent = gauge->font_ascent();
            font_descent = gauge->font_descent();
            leaf.width(leaf.width() - gauge->text_box(u"m", 1).width());
        }
        BoxTree *tree = child_->request(context, leaf);
        if (tree == nullptr)
            tree = new BoxTreeLeaf(0, 0, 0);
        std::unique_ptr<BoxTreeNode> node(new BoxTreeNode(1));
        node->setChild(0, tree);
        node->ascent(std::max(tree->ascent(), font_ascent));
        node->descent(std::max(tree->descent(), font_descent));
        cache_ = std::move(node);
        if (context.wrap_lines())
            wrap_lines(context, static_cast<BoxTreeNode &>(*cache_), leaf);
    }
    return cache_.get();
}

// The formula's tree hangs under a node of one child, and that node becomes the box of the lines: the
// atoms get their places relative to it. A formula that shows nothing at all (a template with an empty
// layout) has no atom to put on a line and stays as it is.
void MathRootNode::wrap_lines(MathNodeContext &context, BoxTreeNode &node, BoxTreeLeaf const &limits)
{
    if (node.hasWrapAtoms())
        node.doLineWrap(context, limits);
}

AllocationTree MathRootNode::child_allocation(AllocationTree const &allocation) const
{
    BoxTree const *box = allocation.boxtree();
    if (box != nullptr && box == cache_.get())
        box = box->child(0);
    return AllocationTree(allocation.point(), box);
}

void MathRootNode::draw(GlyphContext &glyph_context, AllocationTree const &allocation)
{
    BoxTree const *box = allocation.boxtree();
    if (box == nullptr || box->count() < 1)
        return;
    MathNodeContext context(glyph_context, scene_style(glyph_context));
    child_->draw(context, AllocationTree(allocation.point(), box->child(0)));
}

AllocationTree *MathRootNode::allocate(long, GlyphContext &context, AllocationTree const &allocation)
{
    return child_->allocate(context, allocation);
}

bool MathRootNode::pick(MathSelection *selection, GlyphContext &glyph_context, AllocationTree const &allocation,
                        Point point)
{
    MathNodeContext context(glyph_context, scene_style(glyph_context));
    return child_->pick(selection, context, child_allocation(allocation), point);
}

AllocationTree *MathRootNode::allocate_selection(MathSelection *selection, std::size_t depth,
                                                 GlyphContext &glyph_context, AllocationTree const &allocation)
{
    MathNodeContext context(glyph_context, scene_style(glyph_context));
    return child_->allocate_selection(selection, depth, context, child_allocation(allocation));
}

bool MathRootNode::is_allocated()
{
    if (!cache_)
        return false;
    return child_->is_allocated();
}

void MathRootNode::invalidate_allocation()
{
    invalidateCache();
    child_->invalidate_allocation();
}

void MathRootNode::invalidateCache() { cache_.reset(); }

void MathRootNode::append(Glyph *) {}
void MathRootNode::prepend(Glyph *) {}
void MathRootNode::insert(long, Glyph *) {}
void MathRootNode::remove(long) {}

void MathRootNode::replace(long, Glyph *glyph)
{
    MathNode *node = dynamic_cast<MathNode *>(glyph);
    if (node == nullptr)
        return;
    MathNode *old = child_;
    old->parent(nullptr);
    node->ref();
    old->unref();
    child_ = node;
    child_->parent(this);
    invalidateCache();
}

long MathRootNode::count() { return 1; }

Glyph *MathRootNode::component(long) { return child_; }

bool MathRootNode::read_only() const
{
    if (GlyphScene *s = const_cast<MathRootNode *>(this)->scene())
        if (s->read_only())
            return true;
    if (has_read_only_)
        return read_only_;
    if (parent() != nullptr)
        return parent()->read_only();
    return false;
}

void MathRootNode::read_only(bool on)
{
    read_only_ = on;
    has_read_only_ = true;
}

bool MathRootNode::has_ip_operand() { return child_->has_ip_operand(); }

bool MathRootNode::is_equal(MathNode *node) { return child_->is_equal(node); }

bool MathRootNode::has_node(MathNode *node) { return child_->has_node(node); }

bool MathRootNode::empty() { return typeid(*child_) == typeid(MathDummyNode); }

// Entry 0 stands for the top node; each further entry picks a child. A path that leads out of the tree
// ends at the last node it reached.
void MathRootNode::set_ip_operand(std::vector<long> const &path)
{
    child_->ip_operand(false);
    if (path.empty())
        return;
    MathNode *node = child_;
    for (std::size_t i = 1; i < path.size(); ++i) {
        long const index = path[i];
        if (index < 0 || index >= node->count())
            break;
        MathNode *next = node->child(static_cast<int>(index));
        if (next == nullptr)
            break;
        node = next;
    }
    node->ip_operand(true);
}

bool MathRootNode::get_ip_operand_path(std::vector<long> &path)
{
    path.clear();
    if (!child_->has_ip_operand())
        return false;
    path.push_back(0);
    MathNode *node = child_;
    while (!node->ip_operand()) {
        MathNode *next = nullptr;
        for (long i = 0; i < node->count() && next == nullptr; ++i) {
            MathNode *c = node->child(static_cast<int>(i));
            if (c != nullptr && c->has_ip_operand()) {
                path.push_back(i);
                next = c;
            }
        }
        if (next == nullptr) {
            path.clear();
            return false;
        }
        node = next;
    }
    return true;
}

// Writes the formula as a math element: the namespace, the root's own read-only setting if it has one,
// the strings that are set (escaped), then the top node.
std::ostream &MathRootNode::put_xml(std::ostream &out)
{
    out << "<math xmlns=\"" << MathEditContentHandler::nameSpace() << '"';
    if (has_read_only_)
        out << " readonly=\"" << (read_only_ ? '1' : '0') << '"';
    struct Named
    {
        char const *name;
        wchar const *value;
    };
    Named const strings[] = {
        {"style", style_.get()},
        {"kxType", kxType_.get()},
        {"alt", alt_text_.get()},
        {"expr", expr_text_.get()},
        {"tex", tex_text_.get()},
    };
    for (Named const &s : strings) {
        if (s.value == nullptr || s.value[0] == 0)
            continue;
        out << ' ' << s.name << "=\"";
        Kxt::putCData(out, s.value);
        out << '"';
    }
    out << '>';
    if (child_ != nullptr)
        child_->put_xml(out);
    return out << "</math>";
}

}  // namespace Tavi
