// MathIdentNode: an identifier, such as x or sin. Its text is set in the italic face while identifiers
// are slanted, and in whatever face the context carries otherwise.
#pragma once

#include "tavi/math/mathatomnode.h"

namespace Tavi {

class MathIdentNode : public MathAtomNode
{
public:
    explicit MathIdentNode(MathTemplate *templ);
    MathIdentNode(MathIdentNode const &other) = default;

    Glyph *clone(bool deep) const override;
    // Writes the node in the content format: its element, attributes and children.
    std::ostream &put_xml(std::ostream &out) override;
    // Both set the context's italic flag for this identifier around the base operation, and put the
    // old flag back.
    BoxTree *request(GlyphContext &context, BoxTree const &constraint) override;
    void draw(GlyphContext &context, AllocationTree const &allocation) override;

    long cat_type() const override;

protected:
    // The italic flag for this identifier: on while the context slants identifiers, else the flag that
    // the context carries (a placeholder above may have set it).
    virtual bool italic_fontstyle(MathInfo &context);
};

}  // namespace Tavi
