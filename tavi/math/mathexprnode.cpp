// MathExprNode: children with relative positions, placed once per layout.
#include "tavi/math/mathexprnode.h"

#include <ostream>

#include "tavi/interchange/contentwriter.h"
#include "tavi/kxt/xmltext.h"

#include <memory>

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathstring.h"

namespace Tavi {

MathExprNode::MathExprNode(MathTemplate *templ) : AllocGlyph<MathNode>(0, templ), positions_valid_(false) {}

MathExprNode::MathExprNode(MathExprNode const &other)
    : AllocGlyph<MathNode>(other), positions_valid_(other.positions_valid_)
{
}

MathExprNode::MathExprNode(MathExprNode const &other, WithoutChildren)
    : AllocGlyph<MathNode>(other.mixin_count(), static_cast<MathNode const &>(other)), positions_valid_(false)
{
}

void MathExprNode::append_clones_of(MathExprNode const &other)
{
    for (long i = 0; i < other.mixin_count(); ++i) {
        Glyph *copy = other.mixin_component(i)->clone(true);
        if (copy != nullptr)
            append(copy);
    }
}

wstring MathExprNode::child_text(long index)
{
    if (index < 0 || index >= count())
        return wstring();
    MathNode *c = child(static_cast<int>(index));
    return c != nullptr ? c->cat_text().str() : wstring();
}

Glyph *MathExprNode::clone(bool deep) const
{
    if (!deep)
        return new MathExprNode(*this);
    std::unique_ptr<MathExprNode> copy(new MathExprNode(*this, WithoutChildren{}));
    copy->append_clones_of(*this);
    return copy.release();
}

// Positions are placed with the template's allocation of each child at the origin and unconstrained,
// and kept relative to this node; the allocation asked for is then the template's, moved to the
// given point plus the child's position.
AllocationTree *MathExprNode::allocate(long index, GlyphContext &context, AllocationTree const &allocation)
{
    MathNodeContext *math = math_context(context);
    if (math == nullptr || templ() == nullptr || index < 0 || index >= count())
        return nullptr;
    AsMathNode scope(*math, this);
    if (!positions_valid_) {
        AllocationTree const origin(Point(0, 0), &BoxTree::unconstrained);
        for (long i = 0; i < count(); ++i) {
            std::unique_ptr<AllocationTree> placed(templ()->allocate(i, *math, origin));
            if (placed != nullptr)
                position(i, placed->point());
        }
        positions_valid_ = true;
    }
    AllocationTree *result = templ()->allocate(index, *math, allocation);
    if (result != nullptr) {
        Point const offset = position(index);
        result->point(Point(allocation.point().x + offset.x, allocation.point().y + offset.y));
    }
    return result;
}

bool MathExprNode::is_allocated()
{
    if (!positions_valid_)
        return false;
    if (templ() != nullptr && !templ()->is_allocated())
        return false;
    return Glyph::is_allocated();
}

void MathExprNode::invalidate_allocation()
{
    positions_valid_ = false;
    if (templ() != nullptr)
        templ()->invalidate_allocation();
    Glyph::invalidate_allocation();
}

void MathExprNode::text(wchar const *) {}

void MathExprNode::text(MathString const &, long) {}

MathString const &MathExprNode::text() const
{
    static MathString const nothing;
    return nothing;
}

long MathExprNode::cat_type() const { return 36; }

unsigned long MathExprNode::cat_childs() const
{
    return templ() != nullptr ? static_cast<unsigned long>(templ()->arity()) : 0;
}

bool MathExprNode::may_replace(long, MathNode *) { return true; }

void MathExprNode::modified()
{
    positions_valid_ = false;
    MathNode::modified();
}

std::ostream &MathExprNode::put_xml(std::ostream &out)
{
    out << "<expr tmp=\"";
    Kxt::putCData(out, content_type_name());
    out << '"';
    put_ipop(out, *this);
    out << '>';
    put_children(out, *this);
    return out << "</expr>";
}

}  // namespace Tavi
