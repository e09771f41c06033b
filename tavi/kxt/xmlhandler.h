// Xml::Handler: the receiver of the events of Xml::Parser, and the attributes it is given.
#pragma once

#include <string>
#include <vector>

namespace Kxt {
namespace Xml {

// One attribute as a handler sees it: its name as the two ids that `attributeName` gave, and
// its value in UTF-8, with references already resolved.
struct Attribute {
    int nameSpace;
    int name;
    std::string value;
};

// The first attribute of the given local name id, in whatever namespace; null if none.
Attribute const *findAttribute(std::vector<Attribute> const &attributes, int name);
// The first attribute of the given namespace and local name ids; null if none.
Attribute const *findAttribute(std::vector<Attribute> const &attributes, int nameSpace, int name);

// The events of one document, in document order. Names reach the handler once, as text, through
// `elementName` and `attributeName`, which turn them into small ids; every other event carries
// the ids only.
//
// Skipping: a handler that wants nothing of an element calls `ignoreElement` from its
// `startElement`. The parser then delivers nothing from inside that element, not even its end
// tag, and calls `endIgnoreElement` when the element closes. An element whose name
// `elementName` refuses is skipped the same way.
//
// Failure: a callback may call `error`, which ends the document after the callback returns,
// or throw, which ends it and reaches the caller of `parse`. Either way, and whenever the XML
// is malformed, the parser calls `cleanup` before `parse` returns, so that the handler can drop
// what it built for the broken document.
class Handler {
public:
    virtual ~Handler();

    // Maps a name to its ids; false for a name the handler doesn't know, which skips the element
    // or leaves the attribute out. `nameSpace` is the namespace name, empty for none, and always
    // empty when the parser does no namespace processing (then `localName` is the whole
    // qualified name, prefix and all). Both are UTF-8 and never null.
    virtual bool elementName(char const *nameSpace, char const *localName, int &nameSpaceId, int &nameId) = 0;
    virtual bool attributeName(char const *nameSpace, char const *localName, int &nameSpaceId, int &nameId) = 0;

    virtual void startElement(int nameSpace, int name, std::vector<Attribute> &attributes) = 0;
    virtual void endElement(int nameSpace, int name) = 0;
    // A piece of text in UTF-8, not NUL-terminated. One run of text may come in several pieces,
    // split anywhere between characters. The default drops it.
    virtual void characterData(char const *data, int length);

    // Called by the parser when a document fails. Overrides must call this one last.
    virtual void cleanup();

    // Skips the rest of the element now open (from `startElement`: all of that element).
    void ignoreElement();
    bool ignoringElement() const { return ignore_depth_ > 0; }
    // Called when the skipped element closes. The default does nothing.
    virtual void endIgnoreElement();
    // The parser's entry for an end tag: while skipping it counts the skipped element out and
    // calls `endIgnoreElement` at its end; otherwise it calls `endElement`. Overrides must call
    // this one for the end tags they don't take over.
    virtual void onEndElement(int nameSpace, int name);

protected:
    Handler() = default;
    Handler(Handler const &) = default;
    Handler &operator=(Handler const &) = default;

    // Ends the document as failed once the current callback returns; `parse` answers false and
    // the parser's `errorString` gives `message`.
    void error(char const *message);

private:
    friend class Parser;

    void begin_document();

    int ignore_depth_ = 0;  // elements open since the skipping began, the skipped one included
    bool failed_ = false;
    std::string message_;
};

}  // namespace Xml
}  // namespace Kxt

namespace Tavi {
namespace Xml = Kxt::Xml;
}  // namespace Tavi
