// MathIdentNode: an atom whose face follows the slanting of identifiers.
#include "tavi/math/mathidentnode.h"

#include <ostream>

#include "tavi/interchange/contentwriter.h"

#include "tavi/math/mathnodecontext.h"

namespace Tavi {

namespace {

// Sets the italic flag of the context for the life of the scope.
class ItalicScope
{
public:
    ItalicScope(MathInfo &context, bool italic) : context_(context), old_(context.italic_fontstyle())
    {
        context_.italic_fontstyle(italic);
    }
    ~ItalicScope() { context_.italic_fontstyle(old_); }
    ItalicScope(ItalicScope const &) = delete;
    ItalicScope &operator=(ItalicScope const &) = delete;

private:
    MathInfo &context_;
    bool old_;
};

}  // namespace

MathIdentNode::MathIdentNode(MathTemplate *templ) : MathAtomNode(templ) {}

Glyph *MathIdentNode::clone(bool) const { return new MathIdentNode(*this); }

BoxTree *MathIdentNode::request(GlyphContext &context, BoxTree const &constraint)
{
    MathNodeContext *math = math_context(context);
    if (math == nullptr)
        return nullptr;
    ItalicScope scope(*math, italic_fontstyle(*math));
    return MathAtomNode::request(context, constraint);
}

void MathIdentNode::draw(GlyphContext &context, AllocationTree const &allocation)
{
    MathNodeContext *math = math_context(context);
    if (math == nullptr)
        return;
    ItalicScope scope(*math, italic_fontstyle(*math));
    MathAtomNode::draw(context, allocation);
}

long MathIdentNode::cat_type() const { return 20; }

bool MathIdentNode::italic_fontstyle(MathInfo &context)
{
    return context.slanted_identifiers() || context.italic_fontstyle();
}

std::ostream &MathIdentNode::put_xml(std::ostream &out)
{
    return put_token_element(out, "ident", *this, false);
}

}  // namespace Tavi
