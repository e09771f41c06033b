// The DOM face of a glyph: GlyphNodeMixin shows a glyph and its components as a node and its child
// list, and answers the node's client calls; AtomGlyphNodeMixin shows a glyph that has no children
// for a host; GlyphElementMixin and AtomGlyphElementMixin add the element's attributes. The class
// that joins a mixin to a glyph says which glyph it is (this_glyph), implements ref and unref on the
// glyph's own count, and decides through the may_ hooks which changes of its children it allows.
//
// Every change of the tree made here tells the glyph's scene with DOMEditChange. A node removed or
// replaced lives on only while somebody holds a reference: a host that names it by id does.
#pragma once

#include <cstddef>

#include "tavi/client/clientobjectmgr.h"
#include "tavi/client/dom.h"

namespace Tavi {

class Glyph;

class GlyphNodeMixin : public INode, public INodeList, public IClientObject
{
public:
    GlyphNodeMixin() = default;
    GlyphNodeMixin(GlyphNodeMixin const &) = delete;
    GlyphNodeMixin &operator=(GlyphNodeMixin const &) = delete;
    ~GlyphNodeMixin() override;

    INode *parentNode() override;
    // The node itself, as its own child list.
    INodeList *childNodes() override;
    INode *firstChild() override;
    INode *lastChild() override;
    INode *previousSibling() override;
    INode *nextSibling() override;
    // The document at the top of the tree, or null when the node stands in none.
    IDocument *ownerDocument() override;
    // A new child that is null, not a glyph's node, or this node or one above it raises code 3; a
    // ref_child that is not a child raises code 8, and a change the node refuses code 3. The new child
    // leaves its old parent first.
    INode *insertBefore(INode *new_child, INode *ref_child) override;
    INode *replaceChild(INode *new_child, INode *old_child) override;
    INode *removeChild(INode *old_child) override;
    INode *appendChild(INode *new_child) override;
    bool hasChildNodes() override;
    // A copy of the glyph in no tree; null when the glyph can't be copied.
    INode *cloneNode(bool deep) override;
    // Two nodes are equal when their glyphs are of one class and write the same XML.
    bool equalNode(INode *other) override;

    std::size_t length() override;
    INode *item(std::size_t index) override;

    long client_object_id() const override { return client_object_id_; }
    void client_object_id(long id) override { client_object_id_ = id; }
    // The node's functions; no fit sets `error` and answers "No matching callback function.".
    VarArg *invoke_client_call(ClientCall *call, bool &error) override;

    // The glyph behind a node of this family; null for any other node.
    static Glyph *glyph_of(INode *node);
    // The node face of a glyph. The root glyph of a scene that shows a document is that document.
    static INode *node_of(Glyph *glyph);

protected:
    virtual Glyph *this_glyph() = 0;
    // Whether a child may leave, or a node come in, at an index. All false here.
    virtual bool may_remove(long index);
    virtual bool may_append(GlyphNodeMixin *child);
    virtual bool may_insert(long index, GlyphNodeMixin *child);
    virtual bool may_replace(long index, GlyphNodeMixin *child);

private:
    // The index of the child among this glyph's components; -1 when it isn't one.
    long index_of(INode *child);
    // The glyph of a node about to come in; raises code 3 for one that can't.
    Glyph *incoming_glyph(INode *new_child);
    // Takes a node out of the parent it has; a parent without a node face raises code 3.
    static void leave_parent(INode *node);

    long client_object_id_ = -1;
};

// A glyph whose inside a host doesn't see: no children, and no way to add any (code 3).
class AtomGlyphNodeMixin : public GlyphNodeMixin
{
public:
    INode *firstChild() override;
    INode *lastChild() override;
    INode *insertBefore(INode *new_child, INode *ref_child) override;
    INode *replaceChild(INode *new_child, INode *old_child) override;
    INode *removeChild(INode *old_child) override;
    INode *appendChild(INode *new_child) override;
    bool hasChildNodes() override;
    std::size_t length() override;
    INode *item(std::size_t index) override;
};

// An element with children. Its node name is its tag name.
class GlyphElementMixin : public GlyphNodeMixin, public IElement
{
public:
    wchar const *nodeName() override;
    NodeType nodeType() override;
    // The element's functions, then the node's.
    VarArg *invoke_client_call(ClientCall *call, bool &error) override;
};

// An element without children: what a formula is to a host.
class AtomGlyphElementMixin : public AtomGlyphNodeMixin, public IElement
{
public:
    wchar const *nodeName() override;
    NodeType nodeType() override;
    VarArg *invoke_client_call(ClientCall *call, bool &error) override;
};

}  // namespace Tavi
