// MathDummyNode: an atom without text or caret movement.
#include "tavi/math/mathdummynode.h"

#include <ostream>

#include "tavi/interchange/contentwriter.h"

namespace Tavi {

MathDummyNode::MathDummyNode(MathTemplate *templ) : MathAtomNode(templ) {}

Glyph *MathDummyNode::clone(bool) const { return new MathDummyNode(*this); }

long MathDummyNode::cat_type() const { return 20; }

void MathDummyNode::text(wchar const *) {}

void MathDummyNode::text(MathString const &, long) {}

MathString const &MathDummyNode::text() const
{
    static MathString const nothing;
    return nothing;
}

bool MathDummyNode::pick(MathSelection *, MathNodeContext &, AllocationTree const &, Point) { return false; }

long MathDummyNode::caret_pos() { return 0; }

bool MathDummyNode::increment_caret_pos(bool) { return false; }

void MathDummyNode::set_caret_pos(bool) {}

std::ostream &MathDummyNode::put_xml(std::ostream &out)
{
    out << "<plh";
    put_ipop(out, *this);
    return out << " />";
}

}  // namespace Tavi
