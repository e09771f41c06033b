// DOMObjectMgr: the casts between the DOM interfaces and the client objects behind them.
#include "tavi/client/domobjectmgr.h"

#include "tavi/client/clientcall.h"
#include "tavi/client/dom.h"
#include "tavi/client/domexception.h"

namespace Tavi {

template <class T>
T *DOMObjectMgr::get_dom_object(long id)
{
    T *object = dynamic_cast<T *>(get_client_object(id));
    if (object == nullptr)
        throw DOMException(DOMException::NOT_FOUND_ERR);
    return object;
}

template <class T>
long DOMObjectMgr::dom_object_id(T *object)
{
    if (object == nullptr)
        return -1;
    IClientObject *client = dynamic_cast<IClientObject *>(object);
    if (client == nullptr)
        throw DOMException(DOMException::NOT_FOUND_ERR);
    external_ref(client);
    return client->client_object_id();
}

INode *DOMObjectMgr::get_dom_node(long id) { return get_dom_object<INode>(id); }
INodeList *DOMObjectMgr::get_dom_node_list(long id) { return get_dom_object<INodeList>(id); }
IElement *DOMObjectMgr::get_dom_element(long id) { return get_dom_object<IElement>(id); }
IDocument *DOMObjectMgr::get_dom_document(long id) { return get_dom_object<IDocument>(id); }

long DOMObjectMgr::dom_node_id(INode *node) { return dom_object_id(node); }
long DOMObjectMgr::dom_node_list_id(INodeList *list) { return dom_object_id(list); }
long DOMObjectMgr::dom_element_id(IElement *element) { return dom_object_id(element); }
long DOMObjectMgr::dom_document_id(IDocument *document) { return dom_object_id(document); }

VarArg *DOMObjectMgr::dispatch(ClientCall &call, bool &error)
{
    IClientObject *object = call.object_mgr() == this ? call.object() : nullptr;
    if (object == nullptr)
        throw DOMException(DOMException::NOT_FOUND_ERR);
    return object->invoke_client_call(&call, error);
}

}  // namespace Tavi
