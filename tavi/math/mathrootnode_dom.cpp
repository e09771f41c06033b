// MathRootNode as a host sees it: an element named "math" with the attributes "readonly" and
// "content". A new content swaps the formula's top node through an operation that the scene's
// history keeps, so that the user can take a script's change back like any edit.
#include <memory>
#include <string>

#include "tavi/client/domexception.h"
#include "tavi/client/vararg.h"
#include "tavi/editing/mathcontentop.h"
#include "tavi/editing/matheditscene.h"
#include "tavi/glyph/glyphscene.h"
#include "tavi/glyph/hint.h"
#include "tavi/interchange/content.h"
#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"

namespace Tavi {

namespace {

enum class RootAttribute { none, readonly, content };

struct NamedAttribute
{
    char16_t const *name;
    RootAttribute attribute;
};

const NamedAttribute root_attributes[] = {
    {u"readonly", RootAttribute::readonly},
    {u"content",  RootAttribute::content},
};

RootAttribute attribute_named(wchar const *name)
{
    if (name == nullptr)
        return RootAttribute::none;
    for (NamedAttribute const &entry : root_attributes)
        if (std::u16string(name) == entry.name)
            return entry.attribute;
    return RootAttribute::none;
}

[[noreturn]] void refuse() { throw DOMException(DOMException::HIERARCHY_REQUEST_ERR); }

// The top node of a document in the content format, read with the scene's templates, with one
// reference for the caller.
MathNode *read_top_node(MathEditScene &scene, wchar const *text)
{
    MathRootNode *parsed = nullptr;
    try {
        parsed = read_math_content(*scene.template_table(), Kxt::to_string(text));
    } catch (BadMathEditContent const &) {
        refuse();
    }
    if (parsed == nullptr)
        refuse();
    parsed->ref();
    MathNode *top = parsed->child();
    top->ref();
    parsed->unref();
    return top;
}

// The node a value asks for, with one reference for the caller. A host's node is copied: it may
// stand in a tree, or be kept by the history for an undo, and one node can't be in two places.
MathNode *content_node(GlyphScene &scene, VarArg const *value)
{
    wchar const *text = nullptr;
    if (auto const *arg = dynamic_cast<MathNodeArg const *>(value)) {
        MathNode *node = arg->math_node() ? dynamic_cast<MathNode *>(arg->math_node()->clone(true)) : nullptr;
        if (node == nullptr)
            refuse();
        node->ref();
        return node;
    }
    if (value != nullptr && value->string_val(text)) {
        MathEditScene *edit = dynamic_cast<MathEditScene *>(&scene);
        if (edit == nullptr)
            refuse();
        return read_top_node(*edit, text);
    }
    refuse();
}

}  // namespace

wchar const *MathRootNode::tagName() { return u"math"; }

VarArg *MathRootNode::getAttribute(wchar const *name)
{
    switch (attribute_named(name)) {
    case RootAttribute::readonly:
        return has_read_only_ ? new BoolArg(read_only_) : nullptr;
    case RootAttribute::content:
        return new MathNodeArg(child_);
    case RootAttribute::none:
        break;
    }
    return nullptr;
}

void MathRootNode::setAttribute(wchar const *name, VarArg const *value)
{
    switch (attribute_named(name)) {
    case RootAttribute::readonly: {
        bool on = false;
        if (value == nullptr || !value->bool_val(on))
            refuse();
        read_only(on);
        if (GlyphScene *s = scene())
            s->changed(DOMEditChange::object());
        return;
    }
    case RootAttribute::content: {
        GlyphScene *s = scene();
        if (s == nullptr)
            return;
        if (read_only())
            throw DOMException(DOMException::NO_MODIFICATION_ALLOWED_ERR);
        MathNode *node = content_node(*s, value);
        std::unique_ptr<MathContentOp> op(new MathContentOp(this, node));
        node->unref();
        bool const done = op->doit();
        if (MathEditScene *edit = dynamic_cast<MathEditScene *>(s))
            edit->record_operation(op.release(), done, EditKind::edit);
        return;
    }
    case RootAttribute::none:
        break;
    }
    refuse();
}

void MathRootNode::removeAttribute(wchar const *name)
{
    switch (attribute_named(name)) {
    case RootAttribute::readonly:
        has_read_only_ = false;
        read_only_ = false;
        if (GlyphScene *s = scene())
            s->changed(DOMEditChange::object());
        return;
    case RootAttribute::content:
        refuse();
    case RootAttribute::none:
        break;
    }
}

}  // namespace Tavi
