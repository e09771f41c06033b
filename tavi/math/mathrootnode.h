// MathRootNode: what a scene sees of one formula. It holds the top node of the expression tree and the
// formula's own attributes, builds the math context for every call that comes down from the scene,
// and keeps the measured tree of the formula for one width, so that a repaint of an unchanged formula
// costs no measuring. MathStyleSource is what the root asks of its scene: the style formulas are set in.
// To a host the root is one element without children, with the attributes "readonly" and "content".
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "tavi/client/glyphnodemixin.h"
#include "tavi/geometry/point.h"
#include "tavi/glyph/glyph.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class BoxTree;
class BoxTreeLeaf;
class BoxTreeNode;
class MathNode;
class MathNodeContext;
class MathSelection;
class MathStyle;

// A scene that shows formulas owns their style and says so through this face.
class MathStyleSource
{
public:
    virtual ~MathStyleSource();
    virtual MathStyle *math_style() = 0;
};

class MathRootNode : public Glyph, public AtomGlyphElementMixin
{
public:
    // Takes a reference to the top node, which must not be null, and becomes its parent.
    explicit MathRootNode(MathNode *child);
    MathRootNode(MathRootNode const &) = delete;
    MathRootNode &operator=(MathRootNode const &) = delete;
    ~MathRootNode() override;

    // The glyph's count is the only one: a host's ids hold the root the way its parent does.
    void ref() const override { Glyph::ref(); }
    void unref() const override { Glyph::unref(); }

    MathNode *child() const { return child_; }

    // A new root over the child (cloned when deep, shared otherwise) with copies of the five strings.
    // The root's own read-only setting stays behind.
    Glyph *clone(bool deep) const override;
    // Writes the formula in the content format: the math element with the namespace, the root's own
    // settings and strings, then the top node.
    std::ostream &put_xml(std::ostream &out) override;

    // The measured formula for the width of `limits`, at least one line of text high. The tree stays
    // the root's: the caller must not delete it. Null when no width has ever been given.
    BoxTree *request(GlyphContext &context, BoxTree const &limits) override;
    // The child's allocation of the whole; the index is not looked at.
    AllocationTree *allocate(long index, GlyphContext &context, AllocationTree const &allocation) override;
    using Glyph::allocate;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;
    bool is_allocated() override;
    void invalidate_allocation() override;

    // One child for life: only replace changes it; the others do nothing.
    void append(Glyph *glyph) override;
    void prepend(Glyph *glyph) override;
    void insert(long index, Glyph *glyph) override;
    void remove(long index) override;
    // The index is not looked at. A glyph that is no math node is refused.
    void replace(long index, Glyph *glyph) override;
    long count() override;
    Glyph *component(long index) override;

    // A read-only scene wins; then the root's own setting; then the parent's answer.
    bool read_only() const override;
    void read_only(bool on);
    // The root's own setting, whatever the scene or the parent say.
    bool own_read_only() const { return has_read_only_ && read_only_; }
    bool inherit_read_only() const { return !has_read_only_; }
    void inherit_read_only(bool on) { has_read_only_ = !on; }

    bool cacheValid() const { return cache_ != nullptr; }
    // Drops the measured formula and nothing below it: the nodes keep the boxes they were measured
    // to, each of which holds as long as its content and its measuring stay the same.
    void forget_layout() { invalidateCache(); }

    bool has_ip_operand();
    bool is_equal(MathNode *node);
    bool has_node(MathNode *node);

    // The path leads from the top node (entry 0) through child indices; an empty path only clears.
    void set_ip_operand(std::vector<long> const &path);
    // The path to the flagged node; false, with an empty path, when no node is flagged.
    bool get_ip_operand_path(std::vector<long> &path);

    // The formula is nothing but a placeholder.
    virtual bool empty();
    virtual bool pick(MathSelection *selection, GlyphContext &context, AllocationTree const &allocation, Point point);
    virtual AllocationTree *allocate_selection(MathSelection *selection, std::size_t depth, GlyphContext &context,
                                               AllocationTree const &allocation);

    // The formula's own attributes. A setter keeps a copy; null or empty stores nothing. Each getter
    // may answer null.
    wchar const *style() const { return style_.get(); }
    void style(wchar const *text);
    wchar const *kxType() const { return kxType_.get(); }
    void kxType(wchar const *text);
    wchar const *alt_text() const { return alt_text_.get(); }
    void alt_text(wchar const *text);
    wchar const *expr_text() const { return expr_text_.get(); }
    void expr_text(wchar const *text);
    wchar const *tex_text() const { return tex_text_.get(); }
    void tex_text(wchar const *text);

    // The element face. "readonly" is the root's own setting (a BoolArg, or null while it inherits);
    // "content" is the top node (a MathNodeArg). Setting "content" takes a MathNodeArg or a document
    // in the content format (a StringArg), only in a scene, and is one step of the scene's history;
    // content that can't be read, a value of the wrong kind or an attribute the root doesn't have
    // raises code 3, and a read-only formula code 7.
    wchar const *tagName() override;
    VarArg *getAttribute(wchar const *name) override;
    void setAttribute(wchar const *name, VarArg const *value) override;
    void removeAttribute(wchar const *name) override;

protected:
    void invalidateCache();
    Glyph *this_glyph() override { return this; }

private:
    // The context of one call, from the scene's style (a default style when the scene has none).
    static MathStyle *scene_style(GlyphContext const &context);
    // The allocation the top node is drawn and picked with: the first child of the cached tree.
    AllocationTree child_allocation(AllocationTree const &allocation) const;
    // Breaks a long formula into lines that fit the leaf's width.
    void wrap_lines(MathNodeContext &context, BoxTreeNode &node, BoxTreeLeaf const &limits);

    static std::unique_ptr<wchar[]> copy_text(wchar const *text);

    MathNode *child_;
    std::unique_ptr<wchar[]> style_;
    std::unique_ptr<wchar[]> kxType_;
    std::unique_ptr<wchar[]> alt_text_;
    std::unique_ptr<wchar[]> expr_text_;
    std::unique_ptr<wchar[]> tex_text_;
    std::unique_ptr<BoxTree> cache_;
    long cached_width_;
    bool has_read_only_ : 1;
    bool read_only_ : 1;
};

}  // namespace Tavi
