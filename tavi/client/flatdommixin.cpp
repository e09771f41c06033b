// FlatDOMMixin: the operations on ids, each handed to the interface of the object named.
#include "tavi/client/flatdommixin.h"

#include "tavi/client/domexception.h"

namespace Tavi {

long FlatDOMMixin::document_id() { return dom_document_id(dom_document()); }

void FlatDOMMixin::release(long id)
{
    IClientObject *object = get_client_object(id);
    if (object == nullptr)
        throw DOMException(DOMException::NOT_FOUND_ERR);
    external_unref(object);
}

wchar const *FlatDOMMixin::nodeName(long id) { return get_dom_node(id)->nodeName(); }
IFlatDOM::NodeType FlatDOMMixin::nodeType(long id) { return get_dom_node(id)->nodeType(); }
long FlatDOMMixin::parentNode(long id) { return dom_node_id(get_dom_node(id)->parentNode()); }
long FlatDOMMixin::childNodes(long id) { return dom_node_list_id(get_dom_node(id)->childNodes()); }
long FlatDOMMixin::firstChild(long id) { return dom_node_id(get_dom_node(id)->firstChild()); }
long FlatDOMMixin::lastChild(long id) { return dom_node_id(get_dom_node(id)->lastChild()); }
long FlatDOMMixin::previousSibling(long id) { return dom_node_id(get_dom_node(id)->previousSibling()); }
long FlatDOMMixin::nextSibling(long id) { return dom_node_id(get_dom_node(id)->nextSibling()); }
long FlatDOMMixin::ownerDocument(long id) { return dom_document_id(get_dom_node(id)->ownerDocument()); }

long FlatDOMMixin::insertBefore(long id, long new_child, long ref_child)
{
    INode *node = get_dom_node(id);
    INode *incoming = get_dom_node(new_child);
    INode *reference = ref_child == -1 ? nullptr : get_dom_node(ref_child);
    return dom_node_id(node->insertBefore(incoming, reference));
}

long FlatDOMMixin::replaceChild(long id, long new_child, long old_child)
{
    INode *node = get_dom_node(id);
    INode *incoming = get_dom_node(new_child);
    return dom_node_id(node->replaceChild(incoming, get_dom_node(old_child)));
}

long FlatDOMMixin::removeChild(long id, long old_child)
{
    INode *node = get_dom_node(id);
    return dom_node_id(node->removeChild(get_dom_node(old_child)));
}

long FlatDOMMixin::appendChild(long id, long new_child)
{
    INode *node = get_dom_node(id);
    return dom_node_id(node->appendChild(get_dom_node(new_child)));
}

bool FlatDOMMixin::hasChildNodes(long id) { return get_dom_node(id)->hasChildNodes(); }
long FlatDOMMixin::cloneNode(long id, bool deep) { return dom_node_id(get_dom_node(id)->cloneNode(deep)); }

bool FlatDOMMixin::equalNode(long id, long other)
{
    INode *node = get_dom_node(id);
    return node->equalNode(get_dom_node(other));
}

std::size_t FlatDOMMixin::length(long id) { return get_dom_node_list(id)->length(); }
long FlatDOMMixin::item(long id, std::size_t index) { return dom_node_id(get_dom_node_list(id)->item(index)); }

wchar const *FlatDOMMixin::tagName(long id) { return get_dom_element(id)->tagName(); }

VarArg *FlatDOMMixin::getAttribute(long id, wchar const *name) { return get_dom_element(id)->getAttribute(name); }

void FlatDOMMixin::setAttribute(long id, wchar const *name, VarArg const *value)
{
    get_dom_element(id)->setAttribute(name, value);
}

void FlatDOMMixin::removeAttribute(long id, wchar const *name) { get_dom_element(id)->removeAttribute(name); }

long FlatDOMMixin::documentElement(long id) { return dom_element_id(get_dom_document(id)->documentElement()); }

long FlatDOMMixin::createElement(long id, wchar const *tag_name)
{
    return dom_element_id(get_dom_document(id)->createElement(tag_name));
}

long FlatDOMMixin::selectedElement(long id) { return dom_element_id(get_dom_document(id)->selectedElement()); }

void FlatDOMMixin::selectElement(long id, long element)
{
    IDocument *document = get_dom_document(id);
    document->selectElement(get_dom_element(element));
}

}  // namespace Tavi
