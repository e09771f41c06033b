// LayoutAtom: measuring, painting, line breaking and caret hit testing of text, run by run.
#include "tavi/math/layout/layoutatom.h"

#include <algorithm>
#include <memory>

#include "tavi/canvas/canvas.h"
#include "tavi/canvas/pen.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/geometry/extension.h"
#include "tavi/geometry/rect.h"
#include "tavi/math/mathatomnode.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathstring.h"

namespace Tavi {

namespace {

wchar const quote_mark[] = u"\"";
wchar const line_mark[] = u"\\";

// The pen of the text caret: the thinnest solid line, inverting what lies under it so that it shows
// on the highlight as on the paper.
Pen const caret_pen(0, Color::black, Pen::solid, true);

// Ink and bearings of a run of characters in the font selected on the gauge.
struct Ink
{
    Box box;
    long left = 0;
    long right = 0;
};

Ink ink_of(Gauge *gauge, wchar const *text, long count)
{
    Ink ink;
    gauge->text_metrics(text, count, ink.box, ink.left, ink.right);
    return ink;
}

// The width of the quotation mark in the class 1 font (selects that font).
long quote_width(MathNodeContext &context)
{
    context.select_real_font(MathString::f_text);
    return ink_of(context.gauge(), quote_mark, 1).box.width();
}

long run_length(MathString const &text, std::size_t run)
{
    return static_cast<long>(text.run_end(run) - text.run_start(run));
}

// Puts the italic flag back when the atom is done with the context.
class ItalicScope
{
public:
    explicit ItalicScope(MathNodeContext &context) : context_(context), saved_(context.italic_fontstyle()) {}
    ~ItalicScope() { context_.italic_fontstyle(saved_); }
    ItalicScope(ItalicScope const &) = delete;
    ItalicScope &operator=(ItalicScope const &) = delete;
    bool &saved() { return saved_; }

private:
    MathNodeContext &context_;
    bool saved_;
};

}  // namespace

LayoutAtom::~LayoutAtom() = default;

BoxTree *LayoutAtom::request(GlyphContext &context, BoxTree const &constraint)
{
    return request(context, constraint, false);
}

void LayoutAtom::draw(GlyphContext &context, AllocationTree const &allocation) { draw(context, allocation, false); }

LayoutTable *LayoutAtom::table() { return nullptr; }

bool LayoutAtom::pick(long, MathSelection *, MathNodeContext &, AllocationTree const &, Point) { return false; }

AllocationTree *LayoutAtom::allocate_selection(long, MathSelection *, std::size_t, MathNodeContext &,
                                               AllocationTree const &)
{
    return nullptr;
}

AllocationTree *LayoutAtom::allocate_placeholder(long, MathNodeContext &, AllocationTree const &) { return nullptr; }

double LayoutAtom::lbadness() { return 0.0; }

double LayoutAtom::rbadness() { return 0.0; }

void LayoutAtom::set_italic_style(MathNodeContext &context, bool &saved)
{
    saved = context.italic_fontstyle();
    context.italic_fontstyle(false);
}

BoxTree *LayoutAtom::request(GlyphContext &glyph_context, BoxTree const &constraint, bool quoted)
{
    MathNodeContext &context = math_context(glyph_context);
    Gauge *gauge = context.gauge();
    if (gauge == nullptr)
        return new BoxTreeLeaf(0, 0, 0, lbadness(), rbadness());

    // The quotation marks and the text line of the class 1 font bound everything else.
    context.select_real_font(MathString::f_text);
    long const font_ascent = gauge->font_ascent();
    long const font_descent = gauge->font_descent();
    long const q = quoted ? ink_of(gauge, quote_mark, 1).box.width() : 0;

    MathString const &text = this->text(context);
    if (text.run_count() == 0)
        return new BoxTreeLeaf(2 * q, 0, 0, lbadness(), rbadness());

    ItalicScope italic(context);
    set_italic_style(context, italic.saved());

    wchar const *chars = text.data();
    context.select_real_font(text.run_font(0));
    Ink const first = ink_of(gauge, chars + text.run_start(0), run_length(text, 0));

    BoxTreeNode const *lines = dynamic_cast<BoxTreeNode const *>(&constraint);
    if (lines == nullptr) {
        // One line: the runs side by side; an overhang of the first glyph to the left and of the last
        // to the right widens the box.
        long width = first.box.width();
        if (first.left < 0)
            width -= first.left;
        long ascent = first.box.ascent();
        long descent = first.box.descent();
        long right = first.right;
        for (std::size_t run = 1; run < text.run_count(); ++run) {
            context.select_real_font(text.run_font(run));
            Ink const ink = ink_of(gauge, chars + text.run_start(run), run_length(text, run));
            width += ink.box.width();
            ascent = std::max(ascent, ink.box.ascent());
            descent = std::max(descent, ink.box.descent());
            right = ink.right;
        }
        if (right < 0)
            width -= right;
        BoxTreeLeaf *leaf = new BoxTreeLeaf(width + 2 * q, ascent, descent, lbadness(), rbadness());
        // Only the text of an atom node can be laid out again in pieces, and only line wrapping does
        // that: without it the leaf keeps no context, which is most of what a leaf weighs.
        if (context.wrap_lines() && dynamic_cast<MathAtomNode *>(context.math_node()) != nullptr)
            leaf->setMathNodeContext(&context);
        return leaf;
    }

    // Broken over lines, from the first run only. Every line but the last ends in a backslash, the
    // last in the closing quotation mark; no line is narrower than two "m".
    Ink const slash = ink_of(gauge, line_mark, 1);
    long const w = slash.box.width() - (slash.right < 0 ? slash.right : 0);
    long const fixed_ascent = std::max(font_ascent, slash.box.ascent());
    long const fixed_descent = std::max(font_descent, slash.box.descent());
    long const two_m = 2 * gauge->text_box(u"m", 1).width();
    auto room_in = [lines](long i) {
        BoxTree const *c = lines->count() > i ? lines->child(i) : nullptr;
        return c != nullptr ? c->width() : 0L;
    };
    long room = std::max(room_in(0), two_m);
    long const next_room = std::max(room_in(1), two_m);

    long const seg_start = static_cast<long>(text.run_start(0));
    long const seg_end = static_cast<long>(text.run_end(0));
    long const text_end = static_cast<long>(text.length());

    // The width of the characters start..end on a line: the opening quotation mark on the first line,
    // a left overhang, and the mark that closes the line.
    auto line_width = [&](long start, long end, Ink &ink) {
        ink = ink_of(gauge, chars + start, end - start);
        long width = ink.box.width();
        if (start == seg_start)
            width += q;
        if (ink.left < 0)
            width -= ink.left;
        long const mark = end < seg_end ? w : q;
        return mark + width;
    };

    std::unique_ptr<BoxTreeNode> node(new BoxTreeNode);
    long start = seg_start;
    while (start < seg_end) {
        long end = start;
        long line_end = seg_end;
        Ink ink;
        while (end < seg_end) {
            if (room <= line_width(start, end + 1, ink)) {
                room = next_room;
                line_end = end > start ? end : end + 1;
                break;
            }
            ++end;
        }
        long const width = line_width(start, line_end, ink);
        BoxTreeLeaf *leaf = new BoxTreeLeaf(width, std::max(fixed_ascent, ink.box.ascent()),
                                            std::max(fixed_descent, ink.box.descent()), 0.0, 0.0);
        leaf->setStartIdx(start);
        leaf->setEndIdx(line_end);
        node->append(leaf);
        start = line_end;
        room = next_room;
    }

    BoxTreeLeaf const *first_line = node->count() > 0 ? dynamic_cast<BoxTreeLeaf const *>(node->child(0)) : nullptr;
    if (first_line == nullptr || first_line->endIdx() >= text_end)
        return new BoxTreeLeaf(2 * q, 0, 0, lbadness(), rbadness());
    node->updateLineWrappedChildrenLayout(context);
    return node.release();
}

void LayoutAtom::draw(GlyphContext &glyph_context, AllocationTree const &allocation, bool quoted)
{
    MathNodeContext &context = math_context(glyph_context);
    Canvas *canvas = context.canvas();
    BoxTree const *box = allocation.boxtree();
    if (canvas == nullptr || box == nullptr)
        return;
    // Text outside the damage is not painted. Ink may stand out of the box (slant, overhang), so the
    // box counts widened by its height all round.
    long const margin = std::max(0L, box->height());
    if (!canvas->damaged(Extension(canvas, Rect(allocation.top() - margin, allocation.left() - margin,
                                                 allocation.bottom() + margin, allocation.right() + margin))))
        return;

    MathString const &text = this->text(context);
    ItalicScope italic(context);
    set_italic_style(context, italic.saved());
    canvas->text_color(context.color());
    long caret = context.caret_pos();
    Point const at = allocation.point();

    if (text.run_count() == 0) {
        if (quoted) {
            context.select_real_font(MathString::f_text);
            canvas->text(u"\"\"", 2, at);
        }
        return;
    }

    wchar const *chars = text.data();
    // Paints the characters from..to of a run at the pen, with the caret when it falls there.
    auto paint = [&](long from, long to, long x, long y) {
        canvas->text(chars + from, to - from, Point(x, y));
        long const local = caret - from;
        if (caret >= 0 && local >= 0 && local <= to - from && !canvas->printing()) {
            long const cx = x + canvas->text_extent(chars + from, local).width();
            canvas->line(Point(cx, y - canvas->font_ascent()), Point(cx, y + canvas->font_descent()), caret_pen,
                         true);
            caret = -1;
        }
    };

    // A left overhang of a line's first glyph moves the pen right by it.
    auto overhang = [&](long index) {
        long left = 0;
        long right = 0;
        canvas->char_bearing(chars + index, left, right);
        return left < 0 ? -left : 0;
    };

    long const q = quoted ? quote_width(context) : 0;
    context.select_real_font(text.run_font(0));

    if (BoxTreeNode const *lines = dynamic_cast<BoxTreeNode const *>(box)) {
        long slash_left = 0;
        long slash_right = 0;
        Box slash;
        canvas->text_metrics(line_mark, 1, slash, slash_left, slash_right);
        long const w = slash.width() - (slash_right < 0 ? slash_right : 0);
        for (long i = 0; i < lines->count(); ++i) {
            BoxTreeLeaf const *line = dynamic_cast<BoxTreeLeaf const *>(lines->child(i));
            if (line == nullptr || line->startIdx() == line->endIdx())
                continue;
            bool const first_line = i == 0;
            bool const last_line = i + 1 == lines->count();
            long const line_x = at.x + line->xOffset() + overhang(line->startIdx());
            long const y = at.y + line->yOffset();
            long x = line_x;
            if (first_line && quoted) {
                context.select_real_font(MathString::f_text);
                canvas->text(quote_mark, 1, Point(x, y));
                x += q;
                context.select_real_font(text.run_font(0));
            }
            paint(line->startIdx(), line->endIdx(), x, y);
            if (last_line) {
                if (quoted) {
                    context.select_real_font(MathString::f_text);
                    canvas->text(quote_mark, 1, Point(line_x + line->width() - q, y));
                    context.select_real_font(text.run_font(0));
                }
            } else {
                canvas->text(line_mark, 1, Point(line_x + line->width() - w, y));
            }
        }
        return;
    }

    long x = at.x + overhang(static_cast<long>(text.run_start(0)));
    if (quoted) {
        context.select_real_font(MathString::f_text);
        canvas->text(quote_mark, 1, Point(x, at.y));
        x += q;
    }
    long const text_start = x;
    for (std::size_t run = 0; run < text.run_count(); ++run) {
        context.select_real_font(text.run_font(run));
        long const from = static_cast<long>(text.run_start(run));
        long const to = static_cast<long>(text.run_end(run));
        paint(from, to, x, at.y);
        x += canvas->text_extent(chars + from, to - from).width();
    }
    if (quoted) {
        context.select_real_font(MathString::f_text);
        canvas->text(quote_mark, 1, Point(text_start + box->width() - 2 * q, at.y));
    }
}

void LayoutAtom::draw_caret(Canvas *canvas, Point const &point)
{
    if (canvas == nullptr)
        return;
    canvas->line(Point(point.x, point.y - canvas->font_ascent()), Point(point.x, point.y + canvas->font_descent()),
                 caret_pen, true);
}

// A point counts for the position right of a character boundary from 2 units before it on.
long LayoutAtom::caret_pos(MathNodeContext &context, AllocationTree const &allocation, Point point)
{
    MathString const &text = this->text(context);
    Gauge *gauge = context.gauge();
    if (text.run_count() == 0 || gauge == nullptr)
        return 0;
    ItalicScope italic(context);
    set_italic_style(context, italic.saved());

    wchar const *chars = text.data();
    long const px = point.x + 2;
    long x = allocation.point().x;
    context.select_real_font(text.run_font(0));
    long left = 0;
    long right = 0;
    gauge->char_bearing(chars + text.run_start(0), left, right);
    if (left < 0)
        x -= left;

    for (std::size_t run = 0; run < text.run_count(); ++run) {
        context.select_real_font(text.run_font(run));
        long const from = static_cast<long>(text.run_start(run));
        long const length = run_length(text, run);
        long const end = x + gauge->text_extent(chars + from, length).width();
        if (px >= end) {
            x = end;
            continue;
        }
        for (long k = length - 1; k >= 1; --k) {
            if (px >= x + gauge->text_extent(chars + from, k).width())
                return from + k;
        }
        return from;
    }
    return static_cast<long>(text.descriptor(text.run_count() - 1) & MathString::end_mask);
}

}  // namespace Tavi
