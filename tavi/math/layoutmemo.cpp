// LayoutMemo.
#include "tavi/math/layoutmemo.h"

#include <atomic>

#include "tavi/canvas/gauge.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

namespace {

std::atomic<unsigned long> rules_generation{0};

// The number of boxes in a tree, counting no further than `limit`.
long boxes(BoxTree const &tree, long limit)
{
    long n = 1;
    for (long i = 0, c = tree.count(); i < c && n <= limit; ++i)
        if (BoxTree const *child = tree.child(i))
            n += boxes(*child, limit - n);
    return n;
}

}  // namespace

unsigned long LayoutMemo::generation() { return rules_generation.load(std::memory_order_relaxed); }

void LayoutMemo::new_generation() { rules_generation.fetch_add(1, std::memory_order_relaxed); }

LayoutMemo::~LayoutMemo() = default;

LayoutMemo::Key LayoutMemo::key_of(MathNodeContext const &context, BoxTree const &constraint)
{
    Key k;
    k.upright = context.font(MathString::f_upright);
    k.text = context.font(MathString::f_text);
    k.scriptlevel = context.scriptlevel();
    k.scriptminsize = context.scriptminsize();
    k.multiplier = context.scriptsizemultiplier();
    k.displaystyle = context.displaystyle();
    k.slanted_identifiers = context.slanted_identifiers();
    k.wrap_lines = context.wrap_lines();
    k.width = constraint.width();
    k.ascent = constraint.ascent();
    k.descent = constraint.descent();
    if (Gauge *gauge = context.gauge()) {
        k.gauge = &typeid(*gauge);
        k.dpi = gauge->dpi();
        k.printing = gauge->printing();
    }
    k.generation = generation();
    return k;
}

bool LayoutMemo::Key::operator==(Key const &o) const
{
    return scriptlevel == o.scriptlevel && scriptminsize == o.scriptminsize && multiplier == o.multiplier &&
           displaystyle == o.displaystyle && slanted_identifiers == o.slanted_identifiers &&
           wrap_lines == o.wrap_lines && width == o.width && ascent == o.ascent && descent == o.descent &&
           gauge == o.gauge && dpi == o.dpi && printing == o.printing && generation == o.generation &&
           text == o.text && upright == o.upright;
}

std::unique_ptr<LayoutMemo> LayoutMemo::make(MathNodeContext const &context, BoxTree const &constraint,
                                             BoxTree const &tree)
{
    if (context.gauge() == nullptr || boxes(tree, largest_tree) > largest_tree)
        return nullptr;
    BoxTree *copy = tree.copy();
    if (copy == nullptr)
        return nullptr;
    std::unique_ptr<LayoutMemo> memo(new LayoutMemo);
    memo->key_ = key_of(context, constraint);
    memo->tree_.reset(copy);
    return memo;
}

bool LayoutMemo::fits(MathNodeContext const &context, BoxTree const &constraint) const
{
    return context.gauge() != nullptr && key_of(context, constraint) == key_;
}

BoxTree *LayoutMemo::copy() const { return tree_->copy(); }

}  // namespace Tavi
