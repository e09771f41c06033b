// LayoutFraction: the geometry of a fraction and its style change.
#include "tavi/math/layout/layoutfraction.h"

#include <algorithm>

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/math/layout/layoutoverbarop.h"
#include "tavi/math/layout/layouttools.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

namespace {

long const free_size = 0x7fffffff;

AllocationTree child_allocation(AllocationTree const &allocation, long index)
{
    BoxTree const *child = allocation.boxtree()->child(index);
    return AllocationTree(allocation.point() + child->offset(), child);
}

// The parts of a fraction leave display style; only a fraction in text style shrinks them by a script
// level. The object undoes exactly what it did.
class FractionStyle
{
public:
    explicit FractionStyle(MathNodeContext &context)
        : context_(context), display_(context.displaystyle(false))
    {
        if (!display_)
            context_.add_scriptlevel(1);
    }
    ~FractionStyle()
    {
        if (!display_)
            context_.add_scriptlevel(-1);
        context_.displaystyle(display_);
    }
    FractionStyle(FractionStyle const &) = delete;
    FractionStyle &operator=(FractionStyle const &) = delete;

private:
    MathNodeContext &context_;
    bool display_;
};

// The decimal integer at the start of the text, after blanks and an optional sign, as atoi reads it.
long read_integer(wchar const *text)
{
    if (text == nullptr)
        return 0;
    while (*text == u' ' || (*text >= u'\t' && *text <= u'\r'))
        ++text;
    bool negative = false;
    if (*text == u'+' || *text == u'-')
        negative = *text++ == u'-';
    long value = 0;
    for (; *text >= u'0' && *text <= u'9'; ++text) {
        if (value > 100000000L)
            break;  // far beyond any thickness; only zero and non-zero matter
        value = value * 10 + (*text - u'0');
    }
    return negative ? -value : value;
}

bool same_text(wchar const *a, wchar const *b)
{
    while (*a != 0 && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b;
}

}  // namespace

LayoutFraction::LayoutFraction(long linethickness) : bar_(new LayoutOverBarOp), linethickness_(linethickness)
{
    bar_->ref();
}

LayoutFraction::~LayoutFraction() { bar_->unref(); }

LayoutOp *LayoutFraction::core_operator()
{
    MathLayout *num = count() > 0 ? child(0) : nullptr;
    return num != nullptr ? num->core_operator() : nullptr;
}

void LayoutFraction::attribute(wchar const *name, wchar const *value)
{
    if (name != nullptr && same_text(name, u"linethickness"))
        linethickness_ = read_integer(value);
}

// The rule lies on the math axis, 2/3 ex above the baseline. The numerator stands a leading above it,
// the denominator a leading below it, and lower still when its ascent is less than the X-height, so
// that a low denominator gets the room of a capital. The rule reaches a leading beyond the wider part
// on either side; each part is centred in that width.
BoxTree *LayoutFraction::request(GlyphContext &gc, BoxTree const &constraint)
{
    MathNodeContext &context = math_context(gc);
    long const axis = 2 * context.real_ex() / 3;
    BoxTree *num = nullptr;
    BoxTree *den = nullptr;
    long gap = 0;
    long denomShift = 0;
    {
        FractionStyle style(context);
        MathLayout *numerator = child(0);
        num = numerator->request(context, numerator->core_operator() != nullptr ? constraint : BoxTree::unconstrained);
        gap = context.real_leading();
        den = child(1)->request(context, BoxTree::unconstrained);
        denomShift = gap;
        long const xHeight = context.real_X_height();
        if (xHeight > den->ascent())
            denomShift += xHeight - den->ascent();
    }
    long const barWidth = std::max(num->width(), den->width());
    long const total = barWidth + 2 * gap;
    long const ascent = num->ascent() + num->descent() + gap + axis;
    long const descent = den->descent() - axis + denomShift + den->ascent();

    BoxTreeAtomicNode *node = new BoxTreeAtomicNode(3);
    node->setChild(0, Point(LayoutTools::hcenter(total, num->width()), -(num->descent() + gap + axis)), num);
    // Marks where the rule goes; the bar takes its width from it.
    node->setChild(1, Point(gap, -axis), new BoxTreeLeaf(barWidth, free_size, free_size));
    node->setChild(2, Point(LayoutTools::hcenter(total, den->width()), den->ascent() - axis + denomShift), den);
    node->width(total);
    node->ascent(ascent);
    node->descent(descent);
    return node;
}

void LayoutFraction::draw(GlyphContext &gc, AllocationTree const &allocation)
{
    MathNodeContext &context = math_context(gc);
    {
        FractionStyle style(context);
        child(0)->draw(context, child_allocation(allocation, 0));
        child(1)->draw(context, child_allocation(allocation, 2));
    }
    if (linethickness_ != 0)
        bar_->draw(context, child_allocation(allocation, 1));
}

bool LayoutFraction::get_my_neighbour_child(MathNodeContext &context, long index, Input::Key key, long &result)
{
    if (count() < 2)
        return false;
    if (key == Input::key_down && child(0)->has_child_node(context, index))
        return child(1)->get_child_node(context, result);
    if (key == Input::key_up && child(1)->has_child_node(context, index))
        return child(0)->get_child_node(context, result);
    return false;
}

}  // namespace Tavi
