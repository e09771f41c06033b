// Line wrapping of a finished box tree. The atoms (leaves and atomic nodes) are taken in reading order
// and every gap between two of them gets a cost. A walk over the atoms keeps the cheapest break of the
// line being filled and, once the line overflows, goes back to it. Atoms receive their new offsets in
// place, relative to the root of the wrap; an atom too long for any line is asked to lay itself out
// again in pieces, which then stand in the tree where it stood.
#include "tavi/geometry/boxtree.h"

#include "tavi/canvas/gauge.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

namespace Tavi {

namespace {

// Badness values with a meaning of their own.
double const forbidden = 50000.0;  // no break at this gap; as the best cost, no candidate yet
double const forced = -50000.0;    // a break at this gap, whatever it costs
double const costCap = 49999.0;    // the dearest real break, and the fill cost of an overfull line
double const levelCost = 200.0;    // per nesting level of the shallower of the two atoms
double const fillScale = 5000.0;   // of the cubic fill cost

long const freeDimension = 0x7fffffff;

// A line, or the part of one since the last break: its width (with the indent on every line but the
// first), ascent and descent.
struct LineExtent
{
    long width = 0;
    long ascent = 0;
    long descent = 0;

    void add(BoxTree const &atom)
    {
        width += atom.width();
        ascent = std::max(ascent, atom.ascent());
        descent = std::max(descent, atom.descent());
    }
};

// The state of one wrapping run over the atoms of a tree, and its steps.
class LineWrapRun
{
public:
    LineWrapRun(MathNodeContext &context, BoxTree const &constraint, std::vector<BoxTree *> &leaves,
                std::vector<BoxTree *> &parents, std::vector<long> &indices)
        : context_(context), constraint_(constraint), leaves_(leaves), parents_(parents), indices_(indices)
    {
    }

    void measure(BoxTree const &box);
    void fillBadness();
    void walk();
    void finish(BoxTree &box);

private:
    long count() const { return static_cast<long>(leaves_.size()); }
    static BoxTreeLeaf *wrapableLeaf(BoxTree *atom);
    double fillCost(long width) const;
    long newLine(long ascent, long descent);
    long place(long from, long to, long x);
    bool addAtom(long i);
    long breakAtCandidate();
    BoxTreeNode *requestPieces(MathNodeContext &working) const;
    void split(long i, BoxTreeLeaf &leaf);

    MathNodeContext &context_;
    BoxTree const &constraint_;
    // The tree's caches: each atom, the node holding it, and its index there.
    std::vector<BoxTree *> &leaves_;
    std::vector<BoxTree *> &parents_;
    std::vector<long> &indices_;
    // badness_[i] is the cost of a break before atom i.
    std::vector<double> badness_;

    long fontAscent_ = 0;
    long fontDescent_ = 0;
    long gap_ = 0;
    long indent_ = 0;
    long maxWidth_ = 0;

    long lineStart_ = -1;  // first atom of the line being filled; -1 while on the first line
    LineExtent line_;
    double best_ = forbidden;
    long bestIndex_ = 0;
    LineExtent bestLine_;  // the line as it would end at the candidate
    long endX_ = 0;        // where the previous line ended
    long prevAscent_ = 0;
    long prevDescent_ = 0;
    long y_ = 0;       // baseline of the line being placed
    long height_ = 0;  // depth below the first baseline of everything placed so far
    long firstAscent_ = 0;
    long widest_ = 0;
};

// Lines are set in the text font. Taller lines (a box higher than one text line) are kept apart by a
// blank text line, every line but the first is indented by an "m", and no line is narrower than four
// "m". In display style a margin of one ex is kept at either side.
void LineWrapRun::measure(BoxTree const &box)
{
    context_.select_real_font(MathString::f_text);
    Gauge *gauge = context_.gauge();
    long ex = 0;
    if (gauge != nullptr) {
        fontAscent_ = gauge->font_ascent();
        fontDescent_ = gauge->font_descent();
        static wchar const m[] = u"m";
        indent_ = gauge->text_box(m, 1).width();
        if (context_.displaystyle())
            ex = gauge->font_ex();
    }
    long const fontHeight = fontAscent_ + fontDescent_;
    gap_ = box.ascent() + box.descent() > fontHeight ? fontHeight : 0;
    maxWidth_ = std::max(constraint_.width() - 2 * ex, 4 * indent_);
}

// Before the first atom there is no break. A forced break on either side wins over a forbidden one on
// the other. Otherwise the two sides' costs add up, and a break deep inside the tree costs more than
// one near the top, by the depth of the shallower atom.
void LineWrapRun::fillBadness()
{
    badness_.assign(leaves_.size(), forbidden);
    for (long i = 1; i < count(); ++i) {
        BoxTree const *before = leaves_[static_cast<std::size_t>(i - 1)];
        BoxTree const *after = leaves_[static_cast<std::size_t>(i)];
        double const p = before->rightBadness();
        double const q = after->leftBadness();
        double &b = badness_[static_cast<std::size_t>(i)];
        if (p == forced || q == forced)
            b = forced;
        else if (p == forbidden || q == forbidden)
            b = forbidden;
        else
            b = std::min(p + q + levelCost * static_cast<double>(std::min(before->level(), after->level())), costCap);
    }
}

BoxTreeLeaf *LineWrapRun::wrapableLeaf(BoxTree *atom)
{
    BoxTreeLeaf *leaf = dynamic_cast<BoxTreeLeaf *>(atom);
    return leaf != nullptr && leaf->isWrapable() ? leaf : nullptr;
}

// The emptier the line left behind a break, the dearer the break: the cube of the unused fraction of
// the line. A line already too wide costs as much as any real break can.
double LineWrapRun::fillCost(long width) const
{
    if (width > maxWidth_)
        return costCap;
    double const used = maxWidth_ > 0 ? static_cast<double>(width) / static_cast<double>(maxWidth_) : 1.0;
    double const unused = 1.0 - used;
    return fillScale * unused * unused * unused;
}

// Starts a line of the given ascent and descent and gives the x where its atoms begin. The first line
// sets the ascent of the whole box and starts at 0. Every later line has its baseline its own ascent
// and one gap below everything placed so far, and is indented.
long LineWrapRun::newLine(long ascent, long descent)
{
    if (lineStart_ == -1) {
        firstAscent_ = ascent;
        height_ = descent;
        lineStart_ = 0;
        return 0;
    }
    y_ = height_ + ascent + gap_;
    height_ += descent + ascent + gap_;
    return indent_;
}

// Atoms from..to-1 one after another on the present baseline, from x; gives the x where they end.
long LineWrapRun::place(long from, long to, long x)
{
    for (long k = from; k < to; ++k) {
        BoxTree *atom = leaves_[static_cast<std::size_t>(k)];
        atom->setOffset(Point(x, y_));
        x += atom->width();
    }
    return x;
}

// The atom joins the line. The gap behind it becomes the candidate if it is not forbidden and costs
// no more than the candidate so far, so of equal costs the later gap wins; a forced break is taken at
// the next atom. Answers true after the last atom.
bool LineWrapRun::addAtom(long i)
{
    line_.add(*leaves_[static_cast<std::size_t>(i)]);
    if (i + 1 == count())
        return true;
    double c = badness_[static_cast<std::size_t>(i + 1)];
    if (c < forbidden) {
        if (c != forced)
            c = std::min(fillCost(line_.width) + c, costCap);
        if (best_ == forbidden || best_ >= c) {
            best_ = c;
            bestIndex_ = i + 1;
            bestLine_ = line_;
        }
    }
    return false;
}

// Ends the line at the candidate and gives the index of the atom that begins the next one; the atoms
// after the candidate will be walked again. A short piece that fits behind the previous line and is
// no taller goes there, on its baseline, instead of starting a line of its own; the gap still counts
// in the height then.
long LineWrapRun::breakAtCandidate()
{
    long const next = bestIndex_;
    line_ = bestLine_;
    long x;
    if (endX_ != 0 && bestLine_.width + endX_ <= maxWidth_ && bestLine_.ascent <= prevAscent_) {
        line_.ascent = prevAscent_;
        line_.descent = std::max(bestLine_.descent, prevDescent_);
        widest_ = std::max(widest_, bestLine_.width + endX_);
        if (lineStart_ == -1) {
            firstAscent_ = line_.ascent;
            height_ = line_.descent;
            lineStart_ = 0;
        } else {
            height_ += line_.descent - prevDescent_ + gap_;
        }
        x = endX_;
    } else {
        widest_ = std::max(widest_, bestLine_.width);
        line_.ascent = std::max(fontAscent_, bestLine_.ascent);
        line_.descent = std::max(fontDescent_, bestLine_.descent);
        x = newLine(line_.ascent, line_.descent);
    }
    endX_ = place(lineStart_, next, x);
    prevAscent_ = line_.ascent;
    prevDescent_ = line_.descent;
    lineStart_ = next;
    line_ = LineExtent{indent_, 0, 0};
    best_ = forbidden;
    return next;
}

// Asks the atom's node, in the context the atom was measured in, to lay its text out again as lines:
// the constraint's first child gives the room left on the present line, the second the room on a
// fresh, indented line. Anything but a node of at least two pieces means that the text cannot be
// broken.
BoxTreeNode *LineWrapRun::requestPieces(MathNodeContext &working) const
{
    MathNode *node = working.math_node();
    if (node == nullptr)
        return nullptr;

    std::unique_ptr<BoxTreeNode> lines(new BoxTreeNode(2));
    lines->setChild(0, new BoxTreeLeaf(maxWidth_ - line_.width, freeDimension, freeDimension));
    BoxTree *fresh = constraint_.clone();
    if (fresh == nullptr)
        fresh = new BoxTreeLeaf(constraint_.box());
    fresh->width(maxWidth_ - indent_);
    lines->setChild(1, fresh);

    BoxTree *answer = node->request(working, *lines);
    BoxTreeNode *pieces = dynamic_cast<BoxTreeNode *>(answer);
    bool whole = pieces != nullptr && pieces->count() >= 2;
    for (long k = 0; whole && k < pieces->count(); ++k)
        whole = pieces->child(k) != nullptr;
    if (!whole) {
        delete answer;
        return nullptr;
    }
    return pieces;
}

// An atom that can be laid out again and is too long for the room is split. Its first piece ends the
// present line, every middle piece is a line of its own at the indent, and the last piece stands for
// the atom in the rest of the walk. An atom that cannot be split loses its context and is then taken
// whole.
void LineWrapRun::split(long i, BoxTreeLeaf &leaf)
{
    std::size_t const at = static_cast<std::size_t>(i);
    BoxTreeNode *parent = dynamic_cast<BoxTreeNode *>(parents_[at]);
    bool const held = parent != nullptr && indices_[at] >= 0 && indices_[at] < parent->count() &&
                      parent->child(indices_[at]) == &leaf;
    // The leaf keeps the typesetting state it was measured in; the scene, view and surface are this
    // wrap's, since a kept tree may have been measured on a surface that is gone.
    MathNodeContext working(*leaf.mathNodeContext());
    static_cast<GlyphContext &>(working) = static_cast<GlyphContext const &>(context_);
    BoxTreeNode *pieces = held ? requestPieces(working) : nullptr;
    if (pieces == nullptr) {
        leaf.setMathNodeContext(nullptr);
        return;
    }

    // The pieces take the atom's place in its parent; the atom (and with it the context the pieces
    // were made in) lives until the parent has been measured again.
    std::unique_ptr<BoxTree> atom(parent->extractChild(indices_[at]));
    parent->setChild(indices_[at], pieces, true);
    // The pieces get offsets relative to the root of the wrap, like every atom, so the node that
    // holds them must not move them: its offset is (0, 0), not just its x.
    pieces->setOffset(Point(0, 0));
    parent->updateBoundingBox(working);

    BoxTree *first = pieces->child(0);
    line_.width += first->width();
    widest_ = std::max(widest_, line_.width);
    long x = newLine(std::max({line_.ascent, first->ascent(), fontAscent_}),
                     std::max({line_.descent, first->descent(), fontDescent_}));
    x = place(lineStart_, i, x);
    first->setOffset(Point(x, y_));

    long const last = pieces->count() - 1;
    for (long k = 1; k < last; ++k) {
        BoxTree *middle = pieces->child(k);
        widest_ = std::max(widest_, middle->width());
        newLine(std::max(middle->ascent(), fontAscent_), std::max(middle->descent(), fontDescent_));
        middle->setOffset(Point(indent_, y_));
    }

    BoxTree *tail = pieces->child(last);
    if (BoxTreeLeaf *tailLeaf = wrapableLeaf(tail))
        tailLeaf->setMathNodeContext(nullptr);  // a piece is never split again
    leaves_[at] = tail;
    parents_[at] = pieces;
    indices_[at] = last;
    lineStart_ = i;
    line_ = LineExtent{indent_, 0, 0};
    best_ = forbidden;
}

// An atom leaves the line when a forced break is pending, or when it would overflow the line and
// there is a candidate to go back to; with no candidate it stays and the line overflows. An atom that
// can be split and is wider than the room of a line is split even then.
void LineWrapRun::walk()
{
    long i = 0;
    while (i < count()) {
        BoxTree *atom = leaves_[static_cast<std::size_t>(i)];
        BoxTreeLeaf *leaf = wrapableLeaf(atom);
        long const room = lineStart_ != -1 ? maxWidth_ - indent_ : maxWidth_;
        // This also covers an atom wider than a whole line at the very start.
        bool const tooLong = leaf != nullptr && atom->width() > room;
        bool const overflows = atom->width() + line_.width > maxWidth_ && best_ != forbidden;
        if (tooLong) {
            split(i, *leaf);
            continue;
        }
        if (best_ <= forced || overflows)
            i = breakAtCandidate();
        if (addAtom(i))
            return;
        ++i;
    }
}

// The last line, then the size of the whole: as wide as the widest line, as high as the first line
// above the first baseline, and everything else below it.
void LineWrapRun::finish(BoxTree &box)
{
    long x = newLine(std::max(fontAscent_, line_.ascent), std::max(fontDescent_, line_.descent));
    x = place(lineStart_, count(), x);
    box.width(std::max(widest_, x));
    box.ascent(firstAscent_);
    box.descent(height_);
}

}  // namespace

bool BoxTree::hasWrapAtoms()
{
    return isAtomForWrapping() || !atoms().leaves.empty();
}

bool BoxTree::doLineWrap(MathNodeContext &context, BoxTree const &constraint)
{
    if (isAtomForWrapping())
        return false;
    AtomCache &cache = atoms();
    if (cache.leaves.empty())
        throw std::out_of_range("invalid vector<T> subscript");

    LineWrapRun run(context, constraint, cache.leaves, cache.parents, cache.indices);
    run.measure(*this);
    run.fillBadness();
    run.walk();
    run.finish(*this);
    return true;
}

}  // namespace Tavi
