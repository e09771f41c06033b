// Data sources: what a copy hands to the clipboard. A source names the formats it can give and
// writes any of them to a stream when asked, so nothing is converted that no one pastes.
#pragma once

#include <cstddef>

#include "tavi/kxt/stream.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class MathNode;

// The two formats of the library, by the names they travel under.
extern wchar const math_edit_content_format[];  // "x-application/kalex-math-edit-content": UTF-8 XML
extern wchar const plain_text_format[];          // "text/plain": 16-bit text

class DataSource
{
public:
    virtual ~DataSource();

    // The name of the format at `index`, or null past the last; callers walk up from 0.
    virtual wchar const *format(std::size_t index) const = 0;
    // Writes the format at `index` to the stream; whether it did.
    virtual bool serialize(std::size_t index, Kxt::KTmemoryStream &stream) = 0;
    // Makes the source independent of later changes of the document it came from.
    virtual void copy() = 0;

    // Hands the source to the clipboard of the hosting frame.
    void put_on_clipboard();

protected:
    DataSource() = default;
    DataSource(DataSource const &) = default;
    DataSource &operator=(DataSource const &) = default;
};

// Plain text, copied in when made.
class TextSource : public DataSource
{
public:
    // A null text is taken as empty.
    explicit TextSource(wchar const *text);

    wchar const *format(std::size_t index) const override;
    // Format 0: the 16-bit units and the terminator, (length + 1) * 2 bytes; true when the
    // stream took them all.
    bool serialize(std::size_t index, Kxt::KTmemoryStream &stream) override;
    // The text is private already.
    void copy() override;

    wchar const *text() const { return text_.c_str(); }

private:
    wstring text_;
};

// A math subtree: the content format for every node, and plain text as well for numbers and
// identifiers.
class MathNodeDataSource : public DataSource
{
public:
    // Takes a reference on the node, which may be null.
    explicit MathNodeDataSource(MathNode *node);
    // Shares the node, with a reference of its own.
    MathNodeDataSource(MathNodeDataSource const &other);
    MathNodeDataSource &operator=(MathNodeDataSource const &) = delete;
    ~MathNodeDataSource() override;

    wchar const *format(std::size_t index) const override;
    // The content format: the node as a whole formula, whatever the stream did with it. Plain
    // text: the node's text and one byte of the terminator, (length + 1) * 2 - 1 bytes, or a
    // single zero byte for no text; true when the stream reports Ok.
    bool serialize(std::size_t index, Kxt::KTmemoryStream &stream) override;
    // Replaces the node by a deep clone of it.
    void copy() override;

    MathNode *node() const { return node_; }

private:
    // Numbers and identifiers have a plain-text form; other nodes have none.
    bool has_text_form() const;

    MathNode *node_;
};

}  // namespace Tavi
