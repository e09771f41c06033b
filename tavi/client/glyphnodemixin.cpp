// The glyph mixins: tree walking and changing over a glyph's components, and the client-call tables
// of nodes and elements.
#include "tavi/client/glyphnodemixin.h"

#include <sstream>
#include <string>
#include <typeinfo>

#include "tavi/client/clientcalltable.h"
#include "tavi/client/domexception.h"
#include "tavi/client/flatdommixin.h"
#include "tavi/glyph/glyph.h"
#include "tavi/glyph/glyphscene.h"
#include "tavi/glyph/hint.h"

namespace Tavi {

namespace {

// Keeps a glyph alive while it moves between parents: between leaving one and joining the other,
// nobody else may hold it.
class GlyphHold
{
public:
    explicit GlyphHold(Glyph *glyph) : glyph_(glyph) { glyph_->ref(); }
    ~GlyphHold() { glyph_->unref(); }
    GlyphHold(GlyphHold const &) = delete;
    GlyphHold &operator=(GlyphHold const &) = delete;

private:
    Glyph *glyph_;
};

void tell_scene(GlyphScene *scene)
{
    if (scene != nullptr)
        scene->changed(DOMEditChange::object());
}

std::string xml_of(Glyph *glyph)
{
    std::ostringstream out;
    glyph->put_xml(out);
    return out.str();
}

// ---- The node's client calls ----

using NodeRow = ClientCallRow<GlyphNodeMixin>;
using ElementRow = ClientCallRow<IElement>;

bool node_result(INode *node, DOMObjectMgr &mgr, VarArg *&result)
{
    result = client_object_result(mgr.dom_node_id(node));
    return true;
}

// The node may be freed by this: nothing of it is touched afterwards.
bool call_release(GlyphNodeMixin &node, ClientCall &, DOMObjectMgr &mgr, VarArg *&result)
{
    mgr.external_unref(&node);
    result = nullptr;
    return true;
}

bool call_node_name(GlyphNodeMixin &node, ClientCall &, DOMObjectMgr &, VarArg *&result)
{
    result = new StringArg(node.nodeName());
    return true;
}

bool call_node_type(GlyphNodeMixin &node, ClientCall &, DOMObjectMgr &, VarArg *&result)
{
    result = new LongArg(node.nodeType());
    return true;
}

bool call_parent_node(GlyphNodeMixin &node, ClientCall &, DOMObjectMgr &mgr, VarArg *&result)
{
    return node_result(node.parentNode(), mgr, result);
}

bool call_child_nodes(GlyphNodeMixin &node, ClientCall &, DOMObjectMgr &mgr, VarArg *&result)
{
    result = client_object_result(mgr.dom_node_list_id(node.childNodes()));
    return true;
}

bool call_first_child(GlyphNodeMixin &node, ClientCall &, DOMObjectMgr &mgr, VarArg *&result)
{
    return node_result(node.firstChild(), mgr, result);
}

bool call_last_child(GlyphNodeMixin &node, ClientCall &, DOMObjectMgr &mgr, VarArg *&result)
{
    return node_result(node.lastChild(), mgr, result);
}

bool call_previous_sibling(GlyphNodeMixin &node, ClientCall &, DOMObjectMgr &mgr, VarArg *&result)
{
    return node_result(node.previousSibling(), mgr, result);
}

bool call_next_sibling(GlyphNodeMixin &node, ClientCall &, DOMObjectMgr &mgr, VarArg *&result)
{
    return node_result(node.nextSibling(), mgr, result);
}

bool call_owner_document(GlyphNodeMixin &node, ClientCall &, DOMObjectMgr &mgr, VarArg *&result)
{
    result = client_object_result(mgr.dom_document_id(node.ownerDocument()));
    return true;
}

bool call_insert_before(GlyphNodeMixin &node, ClientCall &call, DOMObjectMgr &mgr, VarArg *&result)
{
    INode *incoming = client_call_object<INode>(call, mgr, 0);
    INode *reference = client_call_object<INode>(call, mgr, 1);
    return incoming && reference && node_result(node.insertBefore(incoming, reference), mgr, result);
}

// A script's null reference arrives as "no object", and the new child is appended.
bool call_insert_at_end(GlyphNodeMixin &node, ClientCall &call, DOMObjectMgr &mgr, VarArg *&result)
{
    INode *incoming = client_call_object<INode>(call, mgr, 0);
    return incoming && node_result(node.insertBefore(incoming, nullptr), mgr, result);
}

bool call_replace_child(GlyphNodeMixin &node, ClientCall &call, DOMObjectMgr &mgr, VarArg *&result)
{
    INode *incoming = client_call_object<INode>(call, mgr, 0);
    INode *old_child = client_call_object<INode>(call, mgr, 1);
    return incoming && old_child && node_result(node.replaceChild(incoming, old_child), mgr, result);
}

bool call_remove_child(GlyphNodeMixin &node, ClientCall &call, DOMObjectMgr &mgr, VarArg *&result)
{
    INode *child = client_call_object<INode>(call, mgr, 0);
    return child && node_result(node.removeChild(child), mgr, result);
}

bool call_append_child(GlyphNodeMixin &node, ClientCall &call, DOMObjectMgr &mgr, VarArg *&result)
{
    INode *child = client_call_object<INode>(call, mgr, 0);
    return child && node_result(node.appendChild(child), mgr, result);
}

bool call_has_child_nodes(GlyphNodeMixin &node, ClientCall &, DOMObjectMgr &, VarArg *&result)
{
    result = new BoolArg(node.hasChildNodes());
    return true;
}

bool call_clone_node(GlyphNodeMixin &node, ClientCall &call, DOMObjectMgr &mgr, VarArg *&result)
{
    bool deep = false;
    return call.at(0)->bool_val(deep) && node_result(node.cloneNode(deep), mgr, result);
}

bool call_equal_node(GlyphNodeMixin &node, ClientCall &call, DOMObjectMgr &mgr, VarArg *&result)
{
    INode *other = client_call_object<INode>(call, mgr, 0);
    if (other == nullptr)
        return false;
    result = new BoolArg(node.equalNode(other));
    return true;
}

bool call_length(GlyphNodeMixin &node, ClientCall &, DOMObjectMgr &, VarArg *&result)
{
    result = new LongArg(static_cast<long>(node.length()));
    return true;
}

bool call_item(GlyphNodeMixin &node, ClientCall &call, DOMObjectMgr &mgr, VarArg *&result)
{
    long index = 0;
    if (!call.at(0)->long_val(index))
        return false;
    return node_result(index < 0 ? nullptr : node.item(static_cast<std::size_t>(index)), mgr, result);
}

const NodeRow node_calls[] = {
    {u"release",         "",   call_release},
    {u"nodeName",        "",   call_node_name},
    {u"nodeType",        "",   call_node_type},
    {u"parentNode",      "",   call_parent_node},
    {u"childNodes",      "",   call_child_nodes},
    {u"firstChild",      "",   call_first_child},
    {u"lastChild",       "",   call_last_child},
    {u"previousSibling", "",   call_previous_sibling},
    {u"nextSibling",     "",   call_next_sibling},
    {u"ownerDocument",   "",   call_owner_document},
    {u"insertBefore",    "oo", call_insert_before},
    {u"insertBefore",    "on", call_insert_at_end},
    {u"replaceChild",    "oo", call_replace_child},
    {u"removeChild",     "o",  call_remove_child},
    {u"appendChild",     "o",  call_append_child},
    {u"hasChildNodes",   "",   call_has_child_nodes},
    {u"cloneNode",       "b",  call_clone_node},
    {u"equalNode",       "o",  call_equal_node},
    {u"length",          "",   call_length},
    {u"item",            "l",  call_item},
};

// ---- The element's client calls ----

wchar const *string_arg(ClientCall &call, long index)
{
    wchar const *text = nullptr;
    VarArg *arg = call.at(index);
    return arg != nullptr && arg->string_val(text) ? text : nullptr;
}

bool call_tag_name(IElement &element, ClientCall &, DOMObjectMgr &, VarArg *&result)
{
    result = new StringArg(element.tagName());
    return true;
}

bool call_get_attribute(IElement &element, ClientCall &call, DOMObjectMgr &, VarArg *&result)
{
    result = element.getAttribute(string_arg(call, 0));
    return true;
}

bool call_set_attribute(IElement &element, ClientCall &call, DOMObjectMgr &, VarArg *&result)
{
    element.setAttribute(string_arg(call, 0), call.at(1));
    result = nullptr;
    return true;
}

bool call_remove_attribute(IElement &element, ClientCall &call, DOMObjectMgr &, VarArg *&result)
{
    element.removeAttribute(string_arg(call, 0));
    result = nullptr;
    return true;
}

const ElementRow element_calls[] = {
    {u"tagName",         "",   call_tag_name},
    {u"getAttribute",    "s",  call_get_attribute},
    {u"setAttribute",    "s.", call_set_attribute},
    {u"removeAttribute", "s",  call_remove_attribute},
};

template <class Element>
VarArg *invoke_element_call(Element &element, ClientCall *call, bool &error)
{
    VarArg *result = nullptr;
    if (call != nullptr &&
        run_client_call_rows(element_calls, static_cast<IElement &>(element), element.client_object_id(), *call, result)) {
        error = false;
        return result;
    }
    return element.GlyphNodeMixin::invoke_client_call(call, error);
}

}  // namespace

// ---- GlyphNodeMixin ----

GlyphNodeMixin::~GlyphNodeMixin() = default;

Glyph *GlyphNodeMixin::glyph_of(INode *node)
{
    GlyphNodeMixin *mixin = dynamic_cast<GlyphNodeMixin *>(node);
    return mixin ? mixin->this_glyph() : nullptr;
}

INode *GlyphNodeMixin::node_of(Glyph *glyph)
{
    if (glyph == nullptr)
        return nullptr;
    if (INode *node = dynamic_cast<INode *>(glyph))
        return node;
    // The root glyph of a scripted scene belongs to the scene, which shows it as its document.
    GlyphScene *scene = glyph->scene();
    if (scene == nullptr || scene->glyph() != glyph)
        return nullptr;
    FlatDOMMixin *flat = dynamic_cast<FlatDOMMixin *>(scene);
    return flat ? dynamic_cast<INode *>(flat->dom_document()) : nullptr;
}

INode *GlyphNodeMixin::parentNode() { return node_of(this_glyph()->parent()); }

INodeList *GlyphNodeMixin::childNodes() { return this; }

INode *GlyphNodeMixin::firstChild()
{
    Glyph *glyph = this_glyph();
    return glyph->count() > 0 ? node_of(glyph->component(0)) : nullptr;
}

INode *GlyphNodeMixin::lastChild()
{
    Glyph *glyph = this_glyph();
    long const n = glyph->count();
    return n > 0 ? node_of(glyph->component(n - 1)) : nullptr;
}

INode *GlyphNodeMixin::previousSibling()
{
    Glyph *glyph = this_glyph();
    Glyph *parent = glyph->parent();
    if (parent == nullptr)
        return nullptr;
    for (long i = 1; i < parent->count(); ++i)
        if (parent->component(i) == glyph)
            return node_of(parent->component(i - 1));
    return nullptr;
}

INode *GlyphNodeMixin::nextSibling()
{
    Glyph *glyph = this_glyph();
    Glyph *parent = glyph->parent();
    if (parent == nullptr)
        return nullptr;
    for (long i = 0; i + 1 < parent->count(); ++i)
        if (parent->component(i) == glyph)
            return node_of(parent->component(i + 1));
    return nullptr;
}

IDocument *GlyphNodeMixin::ownerDocument()
{
    Glyph *top = this_glyph();
    while (top->parent() != nullptr)
        top = top->parent();
    IDocument *document = dynamic_cast<IDocument *>(node_of(top));
    // A document is nobody's owned node, not even its own.
    return document == dynamic_cast<IDocument *>(this) ? nullptr : document;
}

long GlyphNodeMixin::index_of(INode *child)
{
    Glyph *wanted = glyph_of(child);
    if (wanted == nullptr)
        return -1;
    Glyph *glyph = this_glyph();
    for (long i = 0; i < glyph->count(); ++i)
        if (glyph->component(i) == wanted)
            return i;
    return -1;
}

Glyph *GlyphNodeMixin::incoming_glyph(INode *new_child)
{
    Glyph *incoming = glyph_of(new_child);
    if (incoming == nullptr)
        throw DOMException(DOMException::HIERARCHY_REQUEST_ERR);
    for (Glyph *g = this_glyph(); g != nullptr; g = g->parent())
        if (g == incoming)
            throw DOMException(DOMException::HIERARCHY_REQUEST_ERR);
    return incoming;
}

void GlyphNodeMixin::leave_parent(INode *node)
{
    Glyph *parent = glyph_of(node)->parent();
    if (parent == nullptr)
        return;
    INode *parent_node = node_of(parent);
    if (parent_node == nullptr)
        throw DOMException(DOMException::HIERARCHY_REQUEST_ERR);
    parent_node->removeChild(node);
}

INode *GlyphNodeMixin::insertBefore(INode *new_child, INode *ref_child)
{
    Glyph *incoming = incoming_glyph(new_child);
    GlyphHold hold(incoming);
    leave_parent(new_child);
    Glyph *glyph = this_glyph();
    GlyphScene *scene = glyph->scene();
    GlyphNodeMixin *child = dynamic_cast<GlyphNodeMixin *>(new_child);
    if (ref_child != nullptr) {
        long const index = index_of(ref_child);
        if (index < 0)
            throw DOMException(DOMException::NOT_FOUND_ERR);
        if (!may_insert(index, child))
            throw DOMException(DOMException::HIERARCHY_REQUEST_ERR);
        glyph->component(index)->deselect();
        glyph->insert(index, incoming);
    } else {
        if (!may_append(child))
            throw DOMException(DOMException::HIERARCHY_REQUEST_ERR);
        glyph->append(incoming);
    }
    tell_scene(scene);
    return new_child;
}

INode *GlyphNodeMixin::replaceChild(INode *new_child, INode *old_child)
{
    Glyph *incoming = incoming_glyph(new_child);
    if (incoming == glyph_of(old_child) && index_of(old_child) >= 0)
        return old_child;
    GlyphHold hold(incoming);
    leave_parent(new_child);
    Glyph *glyph = this_glyph();
    GlyphScene *scene = glyph->scene();
    long const index = index_of(old_child);
    if (index < 0)
        throw DOMException(DOMException::NOT_FOUND_ERR);
    if (!may_replace(index, dynamic_cast<GlyphNodeMixin *>(new_child)))
        throw DOMException(DOMException::HIERARCHY_REQUEST_ERR);
    glyph->component(index)->deselect();
    glyph->replace(index, incoming);
    tell_scene(scene);
    return old_child;
}

INode *GlyphNodeMixin::removeChild(INode *old_child)
{
    long const index = old_child != nullptr ? index_of(old_child) : -1;
    if (index < 0)
        throw DOMException(DOMException::NOT_FOUND_ERR);
    if (!may_remove(index))
        throw DOMException(DOMException::HIERARCHY_REQUEST_ERR);
    Glyph *glyph = this_glyph();
    GlyphScene *scene = glyph->scene();
    glyph->component(index)->deselect();
    glyph->remove(index);
    tell_scene(scene);
    return old_child;
}

INode *GlyphNodeMixin::appendChild(INode *new_child)
{
    Glyph *incoming = incoming_glyph(new_child);
    GlyphHold hold(incoming);
    leave_parent(new_child);
    if (!may_append(dynamic_cast<GlyphNodeMixin *>(new_child)))
        throw DOMException(DOMException::HIERARCHY_REQUEST_ERR);
    Glyph *glyph = this_glyph();
    GlyphScene *scene = glyph->scene();
    glyph->append(incoming);
    tell_scene(scene);
    return new_child;
}

bool GlyphNodeMixin::hasChildNodes() { return this_glyph()->count() > 0; }

INode *GlyphNodeMixin::cloneNode(bool deep)
{
    Glyph *copy = this_glyph()->clone(deep);
    if (copy == nullptr)
        return nullptr;
    INode *node = dynamic_cast<INode *>(copy);
    if (node == nullptr) {
        // Nobody holds the copy yet: one reference taken and dropped frees it.
        copy->ref();
        copy->unref();
    }
    return node;
}

bool GlyphNodeMixin::equalNode(INode *other)
{
    Glyph *mine = this_glyph();
    Glyph *theirs = glyph_of(other);
    if (theirs == nullptr)
        return false;
    if (mine == theirs)
        return true;
    return typeid(*mine) == typeid(*theirs) && xml_of(mine) == xml_of(theirs);
}

std::size_t GlyphNodeMixin::length()
{
    long const n = this_glyph()->count();
    return n > 0 ? static_cast<std::size_t>(n) : 0;
}

INode *GlyphNodeMixin::item(std::size_t index)
{
    if (index >= length())
        return nullptr;
    return node_of(this_glyph()->component(static_cast<long>(index)));
}

VarArg *GlyphNodeMixin::invoke_client_call(ClientCall *call, bool &error)
{
    VarArg *result = nullptr;
    if (call != nullptr && run_client_call_rows(node_calls, *this, client_object_id_, *call, result)) {
        error = false;
        return result;
    }
    error = true;
    return new StringArg(u"No matching callback function.");
}

bool GlyphNodeMixin::may_remove(long) { return false; }
bool GlyphNodeMixin::may_append(GlyphNodeMixin *) { return false; }
bool GlyphNodeMixin::may_insert(long, GlyphNodeMixin *) { return false; }
bool GlyphNodeMixin::may_replace(long, GlyphNodeMixin *) { return false; }

// ---- AtomGlyphNodeMixin ----

INode *AtomGlyphNodeMixin::firstChild() { return nullptr; }
INode *AtomGlyphNodeMixin::lastChild() { return nullptr; }
bool AtomGlyphNodeMixin::hasChildNodes() { return false; }
std::size_t AtomGlyphNodeMixin::length() { return 0; }
INode *AtomGlyphNodeMixin::item(std::size_t) { return nullptr; }

INode *AtomGlyphNodeMixin::insertBefore(INode *, INode *) { throw DOMException(DOMException::HIERARCHY_REQUEST_ERR); }
INode *AtomGlyphNodeMixin::replaceChild(INode *, INode *) { throw DOMException(DOMException::HIERARCHY_REQUEST_ERR); }
INode *AtomGlyphNodeMixin::removeChild(INode *) { throw DOMException(DOMException::HIERARCHY_REQUEST_ERR); }
INode *AtomGlyphNodeMixin::appendChild(INode *) { throw DOMException(DOMException::HIERARCHY_REQUEST_ERR); }

// ---- The element mixins ----

wchar const *GlyphElementMixin::nodeName() { return tagName(); }
INode::NodeType GlyphElementMixin::nodeType() { return ELEMENT_NODE; }
VarArg *GlyphElementMixin::invoke_client_call(ClientCall *call, bool &error)
{
    return invoke_element_call(*this, call, error);
}

wchar const *AtomGlyphElementMixin::nodeName() { return tagName(); }
INode::NodeType AtomGlyphElementMixin::nodeType() { return ELEMENT_NODE; }
VarArg *AtomGlyphElementMixin::invoke_client_call(ClientCall *call, bool &error)
{
    return invoke_element_call(*this, call, error);
}

}  // namespace Tavi
