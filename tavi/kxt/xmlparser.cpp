// Xml::Parser on expat: a parser per document, name mapping through the handler, and a
// failure path that always reaches the handler's cleanup.
#include "tavi/kxt/xmlparser.h"

#include <expat.h>

#include <exception>
#include <utility>
#include <vector>

namespace Kxt {
namespace Xml {

namespace {

// Expat joins namespace name and local name with this character. No XML 1.0 name or URI can
// contain it, so the split below is never fooled.
constexpr XML_Char namespace_separator = '\x01';

}  // namespace

struct Parser::State {
    State(Handler *handler, bool namespaces, char const *encoding)
        : handler(handler), namespaces(namespaces), encoding(encoding ? encoding : ""), has_encoding(encoding)
    {
    }

    Handler *handler;
    bool namespaces;
    std::string encoding;
    bool has_encoding;

    XML_Parser expat = nullptr;
    bool stopping = false;           // a callback ended the document; expat may still call us
    bool in_parse = false;
    std::exception_ptr exception;    // thrown by the handler, waiting to reach the caller
    std::vector<std::pair<int, int>> open;  // ids of the open elements, for their end tags
    std::vector<Attribute> attributes;
    std::string name_space, local_name;

    std::string error;
    long error_line = 0;
    long error_column = 0;

    bool begin_document();
    void end_document();
    bool fail(std::string message);
    void stop();
    void after_callback();
    void split(XML_Char const *name);

    static void XMLCALL on_start(void *data, XML_Char const *name, XML_Char const **attributes);
    static void XMLCALL on_end(void *data, XML_Char const *name);
    static void XMLCALL on_text(void *data, XML_Char const *text, int length);
};

bool Parser::State::begin_document()
{
    char const *const override = has_encoding ? encoding.c_str() : nullptr;
    expat = namespaces ? XML_ParserCreateNS(override, namespace_separator) : XML_ParserCreate(override);
    if (!expat)
        return false;
    XML_SetUserData(expat, this);
    XML_SetElementHandler(expat, on_start, on_end);
    XML_SetCharacterDataHandler(expat, on_text);
    stopping = false;
    open.clear();
    error.clear();
    error_line = error_column = 0;
    handler->begin_document();
    return true;
}

void Parser::State::end_document()
{
    if (expat) {
        XML_ParserFree(expat);
        expat = nullptr;
    }
    open.clear();
    attributes.clear();
    stopping = false;
}

// Ends the document as failed and lets the handler drop what it built. An exception from the
// handler goes to the caller once cleanup has run; it wins over one from cleanup itself.
bool Parser::State::fail(std::string message)
{
    error = std::move(message);
    end_document();
    std::exception_ptr pending = std::exchange(exception, nullptr);
    handler->ignore_depth_ = 0;
    try {
        handler->cleanup();
    } catch (...) {
        if (!pending)
            throw;
    }
    if (pending)
        std::rethrow_exception(pending);
    return false;
}

void Parser::State::stop()
{
    if (!stopping) {
        stopping = true;
        XML_StopParser(expat, XML_FALSE);
    }
}

void Parser::State::after_callback()
{
    if (handler->failed_)
        stop();
}

// Expat gives "namespace<separator>local", or the bare name when there is no namespace.
void Parser::State::split(XML_Char const *name)
{
    name_space.clear();
    local_name = name;
    std::string::size_type const at = local_name.find(namespace_separator);
    if (at != std::string::npos) {
        name_space.assign(local_name, 0, at);
        local_name.erase(0, at + 1);
    }
}

void XMLCALL Parser::State::on_start(void *data, XML_Char const *name, XML_Char const **pairs)
{
    State &state = *static_cast<State *>(data);
    if (state.stopping)
        return;
    Handler &handler = *state.handler;
    try {
        if (handler.ignore_depth_ > 0) {
            ++handler.ignore_depth_;
            state.open.emplace_back(-1, -1);
            return;
        }
        int name_space = 0, id = 0;
        state.split(name);
        if (!handler.elementName(state.name_space.c_str(), state.local_name.c_str(), name_space, id)) {
            handler.ignore_depth_ = 1;
            state.open.emplace_back(-1, -1);
            state.after_callback();
            return;
        }
        state.attributes.clear();
        for (; pairs[0]; pairs += 2) {
            int attribute_space = 0, attribute = 0;
            state.split(pairs[0]);
            if (handler.attributeName(state.name_space.c_str(), state.local_name.c_str(), attribute_space, attribute))
                state.attributes.push_back(Attribute{attribute_space, attribute, pairs[1]});
        }
        state.open.emplace_back(name_space, id);
        // A handler that failed while naming gets no start for the element.
        if (handler.failed_) {
            state.stop();
            return;
        }
        handler.startElement(name_space, id, state.attributes);
    } catch (...) {
        state.exception = std::current_exception();
        state.stop();
        return;
    }
    state.after_callback();
}

void XMLCALL Parser::State::on_end(void *data, XML_Char const *)
{
    State &state = *static_cast<State *>(data);
    if (state.stopping || state.open.empty())
        return;
    std::pair<int, int> const ids = state.open.back();
    state.open.pop_back();
    try {
        state.handler->onEndElement(ids.first, ids.second);
    } catch (...) {
        state.exception = std::current_exception();
        state.stop();
        return;
    }
    state.after_callback();
}

void XMLCALL Parser::State::on_text(void *data, XML_Char const *text, int length)
{
    State &state = *static_cast<State *>(data);
    if (state.stopping || state.handler->ignoringElement())
        return;
    try {
        state.handler->characterData(text, length);
    } catch (...) {
        state.exception = std::current_exception();
        state.stop();
        return;
    }
    state.after_callback();
}

Parser::Parser(Handler *handler, bool namespaces, char const *encoding)
    : state_(new State(handler, namespaces, encoding))
{
}

Parser::~Parser() { state_->end_document(); }

bool Parser::parse(char const *data, int length, bool final)
{
    State &state = *state_;
    if (state.in_parse) {
        // A handler feeding its own parser would corrupt expat's state; refuse without
        // touching the document in progress.
        return false;
    }
    if (!state.handler) {
        state.error = "no handler";
        return false;
    }
    if (!state.expat && !state.begin_document())
        return state.fail("out of memory");
    if (length < 0 || (!data && length > 0))
        return state.fail("invalid data");

    state.in_parse = true;
    XML_Status const status = XML_Parse(state.expat, data, length, final ? XML_TRUE : XML_FALSE);
    state.in_parse = false;

    if (status != XML_STATUS_OK || state.stopping || state.exception) {
        state.error_line = static_cast<long>(XML_GetCurrentLineNumber(state.expat));
        state.error_column = static_cast<long>(XML_GetCurrentColumnNumber(state.expat));
        std::string message;
        if (state.exception)
            message = "exception in handler";
        else if (state.handler->failed_)
            message = state.handler->message_;
        else
            message = XML_ErrorString(XML_GetErrorCode(state.expat));
        return state.fail(std::move(message));
    }
    if (final)
        state.end_document();
    return true;
}

void Parser::reset()
{
    if (state_->in_parse)
        return;
    state_->end_document();
    if (state_->handler)
        state_->handler->ignore_depth_ = 0;
}

Handler *Parser::handler() const { return state_->handler; }
bool Parser::namespaces() const { return state_->namespaces; }
std::string const &Parser::errorString() const { return state_->error; }
long Parser::errorLine() const { return state_->error_line; }
long Parser::errorColumn() const { return state_->error_column; }

}  // namespace Xml
}  // namespace Kxt
