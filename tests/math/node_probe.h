// NodeProbe: a template for node tests that answers every protocol call from fixed rules and writes
// down what it was asked, with the context's math node at the time. A damage-limited recording canvas
// and a fixture of a math context go with it.
//
// Rules of the probe:
//   request               a new leaf of 30 x (8, 2)
//   allocate(i, origin)   for the unconstrained box at the origin: the point (10*i + 3, 7*i)
//   allocate(i, other)    the point (999, 999) with the given box: the node must move it
//   pick                  true
#pragma once

#include "support/math_fixture.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/geometry/extension.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/templates/mathtemplate.h"

#include <string>
#include <vector>

namespace NodeTest {

using namespace Tavi;

class NodeProbe : public MathTemplate
{
public:
    explicit NodeProbe(wchar const *name = u"probe", std::size_t arity = 2)
        : MathTemplate(nullptr, name, true, u"Probe", TemplateAccelerator(), arity, true, 0, true, false, true, 1,
                       -1, no_parens_priority)
    {
    }

    BoxTree *request(MathNodeContext &context, BoxTree const &) override
    {
        note("request", context);
        return new BoxTreeLeaf(30, 8, 2);
    }
    AllocationTree *allocate(long index, MathNodeContext &context, AllocationTree const &allocation) override
    {
        note("allocate", context);
        if (allocation.boxtree() == &BoxTree::unconstrained && allocation.point() == Point(0, 0)) {
            ++placements;
            return new AllocationTree(Point(10 * index + 3, 7 * index), &BoxTree::unconstrained);
        }
        return new AllocationTree(Point(999, 999), allocation.boxtree());
    }
    void draw(MathNodeContext &context, AllocationTree const &) override
    {
        note("draw", context);
        in_selection_seen.push_back(context.in_selection());
    }
    bool pick(long, MathSelection *, MathNodeContext &context, AllocationTree const &, Point) override
    {
        note("pick", context);
        return true;
    }

    // What was called, in order, each with the math node that the context held at the call.
    struct Call
    {
        std::string what;
        MathNode const *node;
    };
    std::vector<Call> calls;
    std::vector<bool> in_selection_seen;
    int placements = 0;

private:
    void note(char const *what, MathNodeContext &context) { calls.push_back({what, context.math_node()}); }
};

// A probe template held as a table would hold it, and a node as a parent would: one reference each
// for the test's life.
struct HeldProbe : TaviTest::Held<NodeProbe>
{
    explicit HeldProbe(wchar const *name = u"probe", std::size_t arity = 2) : Held(new NodeProbe(name, arity)) {}
};
template <class N>
using Own = TaviTest::Held<N>;

// A recording canvas whose damage is one rectangle (in surface coordinates), or everything.
class DamageCanvas : public TaviTest::RecordingCanvas
{
public:
    bool damaged(Extension const &e) const override
    {
        if (!limited)
            return true;
        return e.left() <= damage.right() && damage.left() <= e.right() && e.top() <= damage.bottom() &&
               damage.top() <= e.bottom();
    }
    bool limited = false;
    Rect damage;
};

// A math context that draws on a damage canvas.
struct Fixture
{
    DamageCanvas canvas;
    GlyphContext glyph_context{nullptr, nullptr, &canvas, nullptr};
    MathNodeContext context{glyph_context, nullptr};
};

}  // namespace NodeTest
