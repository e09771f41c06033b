// MathNode: a node made from what the clipboard offers, for pasting.
#include <memory>

#include "tavi/interchange/clipboard.h"
#include "tavi/interchange/content.h"
#include "tavi/interchange/datasource.h"
#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/kxt/stream.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

namespace {

wchar const *const paste_formats[] = {math_edit_content_format, plain_text_format};

// The clipboard's content format read as a formula; its top node, with a reference.
MathNode *node_from_content(TemplateTable &table, Clipboard &clipboard, int index)
{
    Kxt::KTheapStream stream(512, 512);
    if (!clipboard.get_data(index, stream))
        return nullptr;
    stream.rewind();
    MathRootNode *root = nullptr;
    try {
        root = read_math_content(table, reinterpret_cast<char const *>(stream.data()), stream.length());
    } catch (BadMathEditContent const &) {
        return nullptr;
    }
    if (root == nullptr)
        return nullptr;
    root->ref();
    MathNode *node = root->child();
    node->ref();
    root->unref();
    return node;
}

// Plain text: a number or an identifier when it reads as one, otherwise the text as a string.
MathNode *node_from_text(TemplateTable &table)
{
    std::unique_ptr<wchar[]> text(Clipboard::text());
    if (!text)
        return nullptr;
    MathNode *node = table.number_from_string(text.get());
    if (node == nullptr)
        node = table.ident_from_string(text.get());
    if (node == nullptr)
        if (MathTemplate *string = table.get_template(u"string"))
            node = string->create_node(text.get());
    if (node != nullptr)
        node->ref();
    return node;
}

}  // namespace

bool MathNode::is_on_clipboard() { return Clipboard::object().provides(paste_formats, 2) != 0; }

MathNode *MathNode::get_from_clipboard(TemplateTable &table)
{
    Clipboard &clipboard = Clipboard::object();
    std::size_t const which = clipboard.provides(paste_formats, 2);
    if (which == 1)
        return node_from_content(table, clipboard, 1);
    if (which == 2)
        return node_from_text(table);
    return nullptr;
}

}  // namespace Tavi
