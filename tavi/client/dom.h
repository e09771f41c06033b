// The DOM face of a scene: nodes, node lists, elements and one document, as interfaces over object
// pointers, and the same operations in a flat form that names every object by its integer id.
// Names are the DOM's own, camelCase included, since hosts call them by those names.
#pragma once

#include <cstddef>

#include "tavi/kxt/wchar.h"

namespace Tavi {

class IDocument;
class INodeList;
class VarArg;

class INode
{
public:
    // The DOM's numbers; the library's nodes report ELEMENT_NODE and DOCUMENT_NODE.
    enum NodeType {
        ELEMENT_NODE = 1,
        ATTRIBUTE_NODE = 2,
        TEXT_NODE = 3,
        CDATA_SECTION_NODE = 4,
        ENTITY_REFERENCE_NODE = 5,
        ENTITY_NODE = 6,
        PROCESSING_INSTRUCTION_NODE = 7,
        COMMENT_NODE = 8,
        DOCUMENT_NODE = 9,
        DOCUMENT_TYPE_NODE = 10,
        DOCUMENT_FRAGMENT_NODE = 11,
        NOTATION_NODE = 12,
    };

    virtual wchar const *nodeName() = 0;
    virtual NodeType nodeType() = 0;
    virtual INode *parentNode() = 0;
    virtual INodeList *childNodes() = 0;
    virtual INode *firstChild() = 0;
    virtual INode *lastChild() = 0;
    virtual INode *previousSibling() = 0;
    virtual INode *nextSibling() = 0;
    virtual IDocument *ownerDocument() = 0;
    // A null ref_child appends.
    virtual INode *insertBefore(INode *new_child, INode *ref_child) = 0;
    // Gives back old_child.
    virtual INode *replaceChild(INode *new_child, INode *old_child) = 0;
    virtual INode *removeChild(INode *old_child) = 0;
    virtual INode *appendChild(INode *new_child) = 0;
    virtual bool hasChildNodes() = 0;
    // A new node in no tree, or null when the node can't be copied.
    virtual INode *cloneNode(bool deep) = 0;
    virtual bool equalNode(INode *other) = 0;
    virtual ~INode();
};

class INodeList
{
public:
    virtual std::size_t length() = 0;
    // Null at or beyond the length.
    virtual INode *item(std::size_t index) = 0;
    virtual ~INodeList();
};

class IElement
{
public:
    virtual wchar const *tagName() = 0;
    // A new value owned by the caller, or null when the element doesn't have the attribute.
    virtual VarArg *getAttribute(wchar const *name) = 0;
    virtual void setAttribute(wchar const *name, VarArg const *value) = 0;
    virtual void removeAttribute(wchar const *name) = 0;
    virtual ~IElement();
};

class IDocument
{
public:
    virtual IElement *documentElement() = 0;
    // A new element in no tree, or null for a name the document doesn't know.
    virtual IElement *createElement(wchar const *tag_name) = 0;
    virtual IElement *selectedElement() = 0;
    virtual void selectElement(IElement *element) = 0;
    virtual ~IDocument();
};

// The operations of the four interfaces, each on the object named by its first argument. An object
// given back is an id that carries one reference, to be given back with release; -1 is no object.
class IFlatDOM
{
public:
    using NodeType = INode::NodeType;

    virtual void release(long id) = 0;

    virtual wchar const *nodeName(long id) = 0;
    virtual NodeType nodeType(long id) = 0;
    virtual long parentNode(long id) = 0;
    virtual long childNodes(long id) = 0;
    virtual long firstChild(long id) = 0;
    virtual long lastChild(long id) = 0;
    virtual long previousSibling(long id) = 0;
    virtual long nextSibling(long id) = 0;
    virtual long ownerDocument(long id) = 0;
    // A ref_child of -1 appends.
    virtual long insertBefore(long id, long new_child, long ref_child) = 0;
    virtual long replaceChild(long id, long new_child, long old_child) = 0;
    virtual long removeChild(long id, long old_child) = 0;
    virtual long appendChild(long id, long new_child) = 0;
    virtual bool hasChildNodes(long id) = 0;
    virtual long cloneNode(long id, bool deep) = 0;
    virtual bool equalNode(long id, long other) = 0;

    virtual std::size_t length(long id) = 0;
    virtual long item(long id, std::size_t index) = 0;

    virtual wchar const *tagName(long id) = 0;
    virtual VarArg *getAttribute(long id, wchar const *name) = 0;
    virtual void setAttribute(long id, wchar const *name, VarArg const *value) = 0;
    virtual void removeAttribute(long id, wchar const *name) = 0;

    virtual long documentElement(long id) = 0;
    virtual long createElement(long id, wchar const *tag_name) = 0;
    virtual long selectedElement(long id) = 0;
    virtual void selectElement(long id, long element) = 0;

    virtual ~IFlatDOM();
};

}  // namespace Tavi
