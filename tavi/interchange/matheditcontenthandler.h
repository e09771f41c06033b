// MathEditContentHandler: reads the math edit content format (the XML that put_xml writes) into a
// tree of math nodes, and BadMathEditContent, the one exception that bad content raises.
#pragma once

#include <exception>
#include <iosfwd>
#include <vector>

#include "tavi/kxt/wchar.h"
#include "tavi/kxt/xmlhandler.h"

namespace Tavi {

class MathNode;
class MathRootNode;
class TemplateTable;

// Raised by the reader on content it refuses, after the reason went to its message stream.
class BadMathEditContent : public std::exception
{
public:
    char const *what() const noexcept override;
};

// The handler of one parse at a time. Every element finds its template by name in the table, and
// the template makes the node, so a setup file decides what a name means. Text inside a token is
// gathered in a buffer and joined to the token's text when a named character or the end of the
// token comes ("flushing"), so that the token's runs stay in order.
//
// Errors write "Error in math: " and the reason to the message stream (std::cerr unless set) and
// throw BadMathEditContent out of the callback; the parser then calls `cleanup`. An unknown
// template in `expr` is the exception: it is reported, "missingTemplate" takes its place and
// reading goes on.
class MathEditContentHandler : public Xml::Handler
{
public:
    explicit MathEditContentHandler(TemplateTable &table);
    ~MathEditContentHandler() override;
    MathEditContentHandler(MathEditContentHandler const &) = delete;
    MathEditContentHandler &operator=(MathEditContentHandler const &) = delete;

    // The namespace name of the format, UTF-8.
    static char const *nameSpace();
    // How deep elements may nest: every walk of a formula goes down it by recursion, and deeper
    // content is refused rather than let run the stack out.
    static constexpr int max_depth = 2500;

    bool elementName(char const *nameSpace, char const *localName, int &nameSpaceId, int &nameId) override;
    bool attributeName(char const *nameSpace, char const *localName, int &nameSpaceId, int &nameId) override;
    void startElement(int nameSpace, int name, std::vector<Xml::Attribute> &attributes) override;
    void endElement(int nameSpace, int name) override;
    void characterData(char const *data, int length) override;
    // Drops what was built for the failed document.
    void cleanup() override;

    // A new root (reference count 0, as every new glyph) over the node read, with the read-only
    // setting if the document gave one and the five strings of `math`; null when no node was read.
    // Each call makes another root over the same node.
    MathRootNode *node();
    // The `expr` and `tex` strings of `math`; null when absent or empty.
    wchar const *expr() const;
    wchar const *tex() const;
    // The end of `math` was the last element seen.
    bool done() const { return done_; }
    // Forgets everything of the last document.
    void reset();

    // The decimal separator that numbers are held with in memory: the user's unless set here. The
    // format itself always has a point.
    wchar number_separator() const { return separator_; }
    void number_separator(wchar separator) { separator_ = separator; }

    // Where the reasons go; the stream must outlive the parse. A caller that reads formulas on
    // several threads at once gives each handler a stream of its own, since redirecting std::cerr
    // would change it for every thread.
    void message_stream(std::ostream &out) { messages_ = &out; }

private:
    // A string attribute of `math`: whether it was there (and not empty) and its value.
    struct OptionalText
    {
        bool present = false;
        wstring value;
        wchar const *get() const { return present ? value.c_str() : nullptr; }
        void clear()
        {
            present = false;
            value.clear();
        }
    };

    // Writes the reason and throws.
    [[noreturn]] void fail(char const *message);
    [[noreturn]] void fail(char const *before, wstring const &name, char const *after);

    // Maps either kind of name: the same table serves both.
    bool map_name(char const *nameSpace, char const *localName, int &nameSpaceId, int &nameId);

    MathNode *make_node(int name, std::vector<Xml::Attribute> &attributes);
    MathNode *make_table(std::vector<Xml::Attribute> &attributes);
    void read_chr(std::vector<Xml::Attribute> &attributes);
    void read_math(std::vector<Xml::Attribute> &attributes);
    void flush();
    void set_root(MathNode *node);

    TemplateTable &table_;
    std::ostream *messages_;
    MathNode *root_ = nullptr;     // counted
    MathNode *current_ = nullptr;  // not owning
    std::vector<wstring> signs_;
    wstring buffer_;
    OptionalText style_;
    OptionalText kxType_;
    OptionalText alt_;
    OptionalText expr_;
    OptionalText tex_;
    bool has_read_only_ = false;
    bool read_only_ = false;
    bool in_token_ = false;
    bool number_ = false;  // the open token is a number
    wchar separator_;
    bool done_ = false;
    int depth_ = 0;  // node elements open now
};

}  // namespace Tavi
