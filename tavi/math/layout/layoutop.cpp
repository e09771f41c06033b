// LayoutOp: operator spacing, line-break costs and the slant of scripts.
#include "tavi/math/layout/layoutop.h"

#include <memory>

#include "tavi/canvas/gauge.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/kxt/wchar.h"
#include "tavi/math/mathnodecontext.h"

namespace Tavi {

namespace {

// Operators that glue their neighbours together, whatever their form.
wchar const *const unbreakable_operators[] = {
    u"&NonBreakingSpace;",
    u"&ApplyFunction;",
    u"&InvisibleComma;",
    u"&InvisibleTimes;",
};

bool is_unbreakable(wchar const *text)
{
    if (text == nullptr)
        return false;
    wstring const t(text);
    for (wchar const *name : unbreakable_operators)
        if (t == name)
            return true;
    return false;
}

// A space of n twentieths of the font size in canvas units.
long space_to_canvas(MathNodeContext &context, long n)
{
    Gauge *gauge = context.gauge();
    if (gauge == nullptr)
        return 0;
    long const size = context.real_font_size(MathString::f_text);
    return gauge->twips_to_pixel(Extent(size * n / 20, 0)).width();
}

}  // namespace

LayoutOp::LayoutOp(wchar const *text, Form form, bool fence, bool separator, bool movablelimits, bool accent,
                   long lspace, long rspace)
    : LayoutToken(text),
      lspace_(lspace),
      rspace_(rspace),
      form_(form),
      fence_(fence),
      separator_(separator),
      movablelimits_(movablelimits),
      accent_(accent),
      lbadness_(form == postfix ? forbidden_break : 0.0),
      rbadness_(form == prefix ? forbidden_break : 0.0)
{
    if (is_unbreakable(text)) {
        lbadness_ = forbidden_break;
        rbadness_ = forbidden_break;
    }
}

LayoutOp::~LayoutOp() = default;

Glyph *LayoutOp::clone(bool) const { return new LayoutOp(*this); }

LayoutOp *LayoutOp::core_operator() { return this; }

bool LayoutOp::stretchy() { return false; }

bool LayoutOp::largeop() { return false; }

void LayoutOp::lbadness(double badness) { lbadness_ = badness; }

void LayoutOp::rbadness(double badness) { rbadness_ = badness; }

bool LayoutOp::draw_large(MathNodeContext &) { return false; }

bool LayoutOp::is_op(MathString const &text, Form form) const { return form == form_ && text == this->text(); }

long LayoutOp::lspace(GlyphContext &glyph_context)
{
    if (lspace_ == 0)
        return 0;
    MathNodeContext &context = math_context(glyph_context);
    long const n = context.scriptlevel() != 0 ? 3 : lspace_;
    return space_to_canvas(context, n);
}

long LayoutOp::lrspace(GlyphContext &glyph_context)
{
    if (lspace_ == 0 && rspace_ == 0)
        return 0;
    MathNodeContext &context = math_context(glyph_context);
    long n = lspace_ + rspace_;
    if (context.scriptlevel() != 0)
        n = (lspace_ != 0 ? 3 : 0) + (rspace_ != 0 ? 3 : 0);
    return space_to_canvas(context, n);
}

BoxTree *LayoutOp::request(GlyphContext &context, BoxTree const &constraint)
{
    BoxTree *box = LayoutAtom::request(context, constraint);
    if (box == nullptr)
        return nullptr;
    box->width(box->width() + lrspace(context));
    if (lbadness_ != 0.0)
        box->leftBadness(lbadness_);
    if (rbadness_ != 0.0)
        box->rightBadness(rbadness_);
    return box;
}

// The right space is only the room left in the box.
void LayoutOp::draw(GlyphContext &context, AllocationTree const &allocation)
{
    Point const at(allocation.point().x + lspace(context), allocation.point().y);
    LayoutAtom::draw(context, AllocationTree(at, allocation.boxtree()));
}

void LayoutOp::underover_slant(MathNodeContext &, Box const &, long &under, long &over)
{
    under = 0;
    over = 0;
}

void LayoutOp::accent_shift(MathNodeContext &, Box const &, long &a, long &b)
{
    a = 0;
    b = 0;
}

void LayoutOp::subsup_slant(MathNodeContext &context, Box const &, long &subSlant, long &supSlant)
{
    subSlant = 0;
    supSlant = 0;
    MathString const &t = text();
    Gauge *gauge = context.gauge();
    if (t.empty() || gauge == nullptr)
        return;
    std::size_t const last = t.length() - 1;
    context.select_real_font(t.font_at(last));
    long left = 0;
    long right = 0;
    gauge->char_bearing(t.data() + last, left, right);
    subSlant = right;
}

}  // namespace Tavi
