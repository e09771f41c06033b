// Xml::Parser over expat: the events of a namespaced document fed in pieces of any size,
// skipping, and failure that always reaches cleanup and leaves the parser reusable.
#include "tavi/kxt/xmlparser.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using Kxt::Xml::Attribute;

char const *const math_namespace = "http://example.org/xml/MathEditContent";

// One row per name the test documents use; elements and attributes share the table.
struct Name {
    char const *text;
    int id;
};
Name const names[] = {{"math", 1}, {"ident", 2}, {"num", 3}, {"skip", 4}, {"ipop", 5}, {"readonly", 6}};

// Writes every event as a line of text, joining the pieces of one run of character data.
// Each open element holds a heap block that only endElement or cleanup give back, so a
// failure that missed cleanup shows as blocks left over (and as a leak to the sanitizer).
class Recorder : public Kxt::Xml::Handler {
public:
    ~Recorder() override { release_blocks(); }

    bool elementName(char const *ns, char const *name, int &ns_id, int &id) override { return lookup(ns, name, ns_id, id); }
    bool attributeName(char const *ns, char const *name, int &ns_id, int &id) override { return lookup(ns, name, ns_id, id); }

    void startElement(int ns, int name, std::vector<Attribute> &attributes) override
    {
        std::string line = "start " + std::to_string(ns) + ":" + std::to_string(name);
        for (Attribute const &a : attributes)
            line += " " + std::to_string(a.nameSpace) + ":" + std::to_string(a.name) + "=" + a.value;
        events.push_back(line);
        if (name == fail_at)
            error("no numbers here");
        blocks.push_back(new int(name));
        if (name == 4) {
            ignoreElement();
            skip_started = true;
        }
    }
    void endElement(int ns, int name) override
    {
        events.push_back("end " + std::to_string(ns) + ":" + std::to_string(name));
        delete blocks.back();
        blocks.pop_back();
    }
    void characterData(char const *data, int length) override
    {
        if (events.empty() || events.back().compare(0, 5, "text ") != 0)
            events.push_back("text ");
        events.back().append(data, length);
    }
    void endIgnoreElement() override
    {
        events.push_back("end ignored");
        // a skipped element that was started holds a block; one refused by name does not
        if (skip_started) {
            delete blocks.back();
            blocks.pop_back();
            skip_started = false;
        }
    }
    void cleanup() override
    {
        ++cleanups;
        release_blocks();
        skip_started = false;
        Handler::cleanup();
    }

    std::vector<std::string> events;
    std::vector<int *> blocks;
    int cleanups = 0;
    int fail_at = 0;
    bool skip_started = false;

private:
    static bool lookup(char const *ns, char const *name, int &ns_id, int &id)
    {
        if (*ns == '\0')
            ns_id = 0;
        else if (std::strcmp(ns, math_namespace) == 0)
            ns_id = 1;
        else
            return false;
        for (Name const &n : names) {
            if (std::strcmp(n.text, name) == 0) {
                id = n.id;
                return true;
            }
        }
        return false;
    }

    void release_blocks()
    {
        for (int *block : blocks)
            delete block;
        blocks.clear();
    }
};

// Prefixed and default namespace, a prefixed and an unprefixed attribute of one local name,
// an attribute nobody knows, references, text outside the BMP, a skipped element and one
// of an unknown name with content, each holding elements the handler would otherwise see.
std::string const document =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<m:math xmlns:m=\"http://example.org/xml/MathEditContent\" m:readonly=\"1\" readonly=\"0\" other=\"x\">\n"
    "<m:ident ipop=\"1\">a&amp;b &#x1F600;\xC3\xA9</m:ident>"
    "<m:skip><m:ident>hidden</m:ident>gone</m:skip>"
    "<unknown ipop=\"1\"><m:num/>lost</unknown>"
    "<num xmlns=\"http://example.org/xml/MathEditContent\">3.5&lt;2</num>"
    "</m:math>";

// Worked out from the document: namespace id 1 for the math namespace, 0 for none; the
// unknown attribute "other" is left out; &#x1F600; arrives as F0 9F 98 80, and the skipped
// and unknown elements give nothing but their end.
std::vector<std::string> const document_events = {
    "start 1:1 1:6=1 0:6=0",
    "text \n",
    "start 1:2 0:5=1",
    "text a&b \xF0\x9F\x98\x80\xC3\xA9",
    "end 1:2",
    "start 1:4",
    "end ignored",
    "end ignored",
    "start 1:3",
    "text 3.5<2",
    "end 1:3",
    "end 1:1",
};

// Feeds the document in pieces of `size` bytes, the last marked final; size 0 feeds it all
// as not final and ends with an empty final piece.
bool feed(Kxt::Xml::Parser &parser, std::string const &text, std::size_t size)
{
    if (size == 0)
        return parser.parse(text.data(), static_cast<int>(text.size()), false) && parser.parse(nullptr, 0, true);
    for (std::size_t at = 0; at < text.size(); at += size) {
        std::size_t const n = std::min(size, text.size() - at);
        if (!parser.parse(text.data() + at, static_cast<int>(n), at + n == text.size()))
            return false;
    }
    return true;
}

TEST(XmlParser, SameEventsWhateverThePieces)
{
    // 1 splits every multi-byte character and every reference; the odd sizes split them
    // at different places.
    std::vector<std::size_t> const sizes = {document.size(), 1, 7, 0};
    Recorder recorder;
    Kxt::Xml::Parser parser(&recorder, true, nullptr);
    for (std::size_t size : sizes) {
        SCOPED_TRACE(testing::Message() << "pieces of " << size);
        recorder.events.clear();
        ASSERT_TRUE(feed(parser, document, size)) << parser.errorString();
        EXPECT_EQ(recorder.events, document_events);
        EXPECT_TRUE(recorder.blocks.empty());
        EXPECT_FALSE(recorder.ignoringElement());
    }
    EXPECT_EQ(recorder.cleanups, 0);
}

struct Malformed {
    char const *name;
    std::string text;
    char const *error;
};

std::vector<Malformed> const malformed = {
    {"mismatched tag", "<math><ident>x</num></math>", "mismatched tag"},
    {"empty", "", "no element found"},
    {"ill-formed UTF-8", "<math>\xFF</math>", "not well-formed (invalid token)"},
    {"undeclared prefix", "<q:math/>", "unbound prefix"},
    {"entity expansion bomb",
     "<!DOCTYPE math [<!ENTITY a \"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\">"
     "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">"
     "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\">"
     "<!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\">"
     "<!ENTITY e \"&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;\">"
     "<!ENTITY f \"&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;\">]>"
     "<math>&f;</math>",
     "limit on input amplification factor (from DTD and entities) breached"},
};

// After any failure the parser must read a good document as if it were new.
void expect_reusable(Kxt::Xml::Parser &parser, Recorder &recorder)
{
    recorder.events.clear();
    ASSERT_TRUE(feed(parser, document, 7)) << parser.errorString();
    EXPECT_EQ(recorder.events, document_events);
    EXPECT_TRUE(parser.errorString().empty());
}

TEST(XmlParser, MalformedDocumentsReachCleanup)
{
    Recorder recorder;
    Kxt::Xml::Parser parser(&recorder, true, nullptr);
    for (Malformed const &m : malformed) {
        SCOPED_TRACE(m.name);
        recorder.cleanups = 0;
        EXPECT_FALSE(feed(parser, m.text, m.text.size() ? m.text.size() : 1) && parser.parse(nullptr, 0, true));
        EXPECT_EQ(recorder.cleanups, 1);
        EXPECT_TRUE(recorder.blocks.empty());
        EXPECT_FALSE(recorder.ignoringElement());
        EXPECT_EQ(parser.errorString(), m.error);
        EXPECT_EQ(parser.errorLine(), 1);
        expect_reusable(parser, recorder);
        EXPECT_EQ(recorder.cleanups, 1);
    }
}

TEST(XmlParser, HandlerFailuresReachCleanup)
{
    Recorder recorder;
    Kxt::Xml::Parser parser(&recorder, true, nullptr);

    // error() from startElement: the document ends there, with the handler's message.
    recorder.fail_at = 3;
    recorder.events.clear();
    EXPECT_FALSE(feed(parser, document, 5));
    EXPECT_EQ(parser.errorString(), "no numbers here");
    EXPECT_EQ(recorder.events.back(), "start 1:3");
    EXPECT_EQ(recorder.cleanups, 1);
    EXPECT_TRUE(recorder.blocks.empty());
    recorder.fail_at = 0;
    expect_reusable(parser, recorder);

    // Bad arguments fail the document in the same way.
    EXPECT_FALSE(parser.parse(nullptr, 4, true));
    EXPECT_EQ(recorder.cleanups, 2);
    expect_reusable(parser, recorder);
}

}  // namespace
