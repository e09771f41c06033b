// DOMObjectMgr: the object manager of a DOM face. It turns node, list, element and document
// pointers into ids (each id handed out carries one reference) and ids back into pointers, raising
// DOMException code 8 for an id that names no object of the kind wanted.
#pragma once

#include "tavi/client/clientobjectmgr.h"

namespace Tavi {

class ClientCall;
class IDocument;
class IElement;
class INode;
class INodeList;

class DOMObjectMgr : public ClientObjectMgr
{
public:
    virtual INode *get_dom_node(long id);
    virtual INodeList *get_dom_node_list(long id);
    virtual IElement *get_dom_element(long id);
    virtual IDocument *get_dom_document(long id);

    // -1 for null; an object that can't be addressed by id raises code 8.
    long dom_node_id(INode *node);
    long dom_node_list_id(INodeList *list);
    long dom_element_id(IElement *element);
    long dom_document_id(IDocument *document);

    // Hands a call to the object it is addressed to; code 8 when the id names nothing. The result,
    // which may be null, is the caller's; `error` as IClientObject::invoke_client_call sets it.
    VarArg *dispatch(ClientCall &call, bool &error);

private:
    template <class T>
    T *get_dom_object(long id);
    template <class T>
    long dom_object_id(T *object);
};

}  // namespace Tavi
