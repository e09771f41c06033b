// LayoutStretchRow: the one-pass protocol between a row and its stretchy operators.
#include "tavi/math/layout/layoutstretchrow.h"

#include <memory>

#include "tavi/geometry/boxtree.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

namespace {

long const free_size = 0x7fffffff;

}  // namespace

LayoutStretchRow::~LayoutStretchRow() = default;

BoxTree *LayoutStretchRow::request(GlyphContext &glyph_context, BoxTree const &constraint)
{
    MathNodeContext &context = math_context(glyph_context);
    BoxTreeNode *node = request_non_ops(context, constraint);
    if (node == nullptr)
        return nullptr;
    Box along;
    Box across;
    request_stretch(node->box(), constraint, along, across);
    request_ops(context, constraint, along, *node);
    node->updateLinearChildrenLayout(context);
    return node;
}

void LayoutStretchRow::request_stretch(MathNodeContext &context, BoxTree const &constraint, Box &along, Box &across)
{
    std::unique_ptr<BoxTreeNode> node(request_non_ops(context, constraint));
    request_stretch(node != nullptr ? node->box() : Box::zero, constraint, along, across);
}

void LayoutStretchRow::request_stretch(Box const &content, BoxTree const &constraint, Box &along, Box &across)
{
    along.width(constraint.width());
    across.width(free_size);
    long ascent = content.ascent();
    long descent = content.descent();
    if (ascent + descent == 0) {
        ascent = free_size;
        descent = free_size;
    }
    along.ascent(ascent);
    along.descent(descent);
    across.ascent(ascent);
    across.descent(descent);
}

}  // namespace Tavi
