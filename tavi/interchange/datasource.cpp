// TextSource and MathNodeDataSource: the formats they offer and how each is written.
#include "tavi/interchange/datasource.h"

#include <typeinfo>

#include "tavi/interchange/clipboard.h"
#include "tavi/kxt/fixedstring.h"
#include "tavi/kxt/stdstream.h"
#include "tavi/math/mathidentnode.h"
#include "tavi/math/mathnumbernode.h"
#include "tavi/math/mathrootnode.h"

namespace Tavi {

wchar const math_edit_content_format[] = u"x-application/kalex-math-edit-content";
wchar const plain_text_format[] = u"text/plain";

DataSource::~DataSource() = default;

void DataSource::put_on_clipboard() { Clipboard::object().data(this); }

TextSource::TextSource(wchar const *text) : text_(text != nullptr ? text : u"") {}

wchar const *TextSource::format(std::size_t index) const { return index == 0 ? plain_text_format : nullptr; }

bool TextSource::serialize(std::size_t index, Kxt::KTmemoryStream &stream)
{
    if (index != 0)
        return false;
    std::size_t const bytes = (text_.size() + 1) * sizeof(wchar);
    std::size_t written = 0;
    return stream.write(text_.c_str(), bytes, written) == Kxt::KTstream::Ok && written == bytes;
}

void TextSource::copy() {}

MathNodeDataSource::MathNodeDataSource(MathNode *node) : node_(node)
{
    if (node_ != nullptr)
        node_->ref();
}

MathNodeDataSource::MathNodeDataSource(MathNodeDataSource const &other) : DataSource(other), node_(other.node_)
{
    if (node_ != nullptr)
        node_->ref();
}

MathNodeDataSource::~MathNodeDataSource()
{
    if (node_ != nullptr)
        node_->unref();
}

bool MathNodeDataSource::has_text_form() const
{
    std::type_info const &kind = typeid(*node_);
    return kind == typeid(MathNumberNode) || kind == typeid(MathIdentNode);
}

wchar const *MathNodeDataSource::format(std::size_t index) const
{
    if (node_ == nullptr)
        return nullptr;
    if (index == 0)
        return math_edit_content_format;
    if (index == 1 && has_text_form())
        return plain_text_format;
    return nullptr;
}

bool MathNodeDataSource::serialize(std::size_t index, Kxt::KTmemoryStream &stream)
{
    wchar const *name = format(index);
    if (name == nullptr)
        return false;
    if (name == math_edit_content_format) {
        // A root around the node writes it as a whole formula. The root takes the node's parent
        // link for the while; the node may still sit in a document, so the link is put back.
        Glyph *parent = node_->parent();
        {
            KTstreamStdStream out(stream);
            auto *root = new MathRootNode(node_);
            root->ref();
            root->put_xml(out);
            root->unref();
        }
        node_->parent(parent);
        return true;
    }
    // Plain text: the text and the first byte of its terminator, one byte short of the whole
    // terminator, as the receivers of this format expect.
    Kxt::FixedString const text = node_->cat_text();
    std::size_t written = 0;
    Kxt::KTstream::Status status;
    if (text.length() > 0) {
        status = stream.write(text.c_str(), (text.length() + 1) * sizeof(wchar) - 1, written);
    } else {
        unsigned char const zero = 0;
        status = stream.write(&zero, 1, written);
    }
    return status == Kxt::KTstream::Ok;
}

void MathNodeDataSource::copy()
{
    if (node_ == nullptr)
        return;
    auto *clone = dynamic_cast<MathNode *>(node_->clone(true));
    if (clone == nullptr)
        return;
    clone->ref();
    node_->unref();
    node_ = clone;
}

}  // namespace Tavi
