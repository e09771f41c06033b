// Xml::Parser: a SAX parser over expat that hands names to its handler as ids.
#pragma once

#include "tavi/kxt/xmlhandler.h"

#include <memory>
#include <string>

namespace Kxt {
namespace Xml {

// Parses documents given in pieces and reports them to a Handler, which it does not own.
//
// A document runs from the first `parse` to the one with `final` set, or to the first failure.
// Each document gets an expat parser of its own, made at its first piece and freed at its end,
// so after a success, a failure or `reset` the next `parse` starts a new document and nothing
// of the old one is kept.
//
// `namespaces` turns on namespace processing: element and attribute names then reach the
// handler as namespace name and local name, and xmlns attributes are consumed. `encoding`
// overrides the document's own declaration; null leaves it to the document.
//
// External entities are never loaded, and expat's limits on entity expansion apply.
class Parser {
public:
    explicit Parser(Handler *handler, bool namespaces = true, char const *encoding = nullptr);
    ~Parser();
    Parser(Parser const &) = delete;
    Parser &operator=(Parser const &) = delete;

    // Parses the next `length` bytes of the document; `final` marks its last piece. The answer
    // is false when the document failed: malformed XML, an `error` from the handler, a
    // negative length or no handler. The handler's `cleanup` has then run. An exception thrown
    // by the handler runs `cleanup` too, and then goes on to the caller.
    bool parse(char const *data, int length, bool final);

    // Drops the document in progress, if any, without telling the handler.
    void reset();

    Handler *handler() const;
    bool namespaces() const;

    // Why the last failed document failed, and where; empty and 0 when none failed.
    std::string const &errorString() const;
    long errorLine() const;
    long errorColumn() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace Xml
}  // namespace Kxt
