// Tests over many generated formulas whose templates hold the real layouts. Every node's layout is
// wrapped in a checker that compares the whole math context before and after each request and draw,
// and checks that every text a draw paints lies inside that node's allocation.
//
// On the recording canvas a run of n characters of size s is n * (10s/240) wide from its point, its ink
// 7s/240 above and s/240 below the baseline. Extension glyphs hang from their point with heights the
// canvas does not know: for those only the point itself is checked.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "support/formula_builder.h"
#include "support/math_fixture.h"
#include "tavi/math/layout/mathpolylayout.h"
#include "tavi/math/mathnode.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

// ---- the whole context as a comparable record ----

std::string text8(wchar const *text)
{
    return text == nullptr ? std::string() : utf8(text, static_cast<long>(std::u16string(text).size()));
}

std::string font_text(Font const &f)
{
    return text8(f.name()) + "/" + std::to_string(f.size()) + "/" + (f.bold() ? "b" : "") + (f.italic() ? "i" : "");
}

std::string context_state(MathNodeContext const &c)
{
    std::ostringstream out;
    out << "node=" << static_cast<void const *>(c.math_node()) << " child=" << c.child_index()
        << " level=" << c.scriptlevel() << " display=" << c.displaystyle() << " italic=" << c.italic_fontstyle()
        << " slanted=" << c.slanted_identifiers() << " wrap=" << c.wrap_lines() << " sel=" << c.in_selection()
        << " caret=" << c.caret_pos() << " color=" << color_text(c.color());
    for (int cls = 0; cls <= 4; ++cls) {
        MathString::Font const f = static_cast<MathString::Font>(cls);
        out << " font" << cls << "=" << font_text(c.font(f)) << "/cs" << static_cast<int>(c.char_set(f));
    }
    return out.str();
}

// ---- the checker around each node's layout ----

struct Log
{
    RecordingCanvas *canvas = nullptr;
    FormulaBuilder const *builder = nullptr;  // names the nodes in messages
    std::vector<std::string> faults;
    long draws = 0;

    std::string name_of(MathNode const *node) const
    {
        return builder ? builder->name_of(node) : "?";
    }
};

class Checked : public MathPolyLayout
{
public:
    Checked(MathLayout *inner, Log *log) : log_(log) { append(inner); }

    LayoutOp *core_operator() override { return child(0)->core_operator(); }

    BoxTree *request(GlyphContext &gc, BoxTree const &constraint) override
    {
        MathNodeContext &c = math_context(gc);
        std::string const before = context_state(c);
        BoxTree *box = child(0)->request(gc, constraint);
        std::string const after = context_state(c);
        if (before != after)
            log_->faults.push_back("request of " + log_->name_of(c.math_node()) + " changed the context\n  before " +
                                   before + "\n  after  " + after);
        return box;
    }

    void draw(GlyphContext &gc, AllocationTree const &allocation) override
    {
        MathNodeContext &c = math_context(gc);
        std::string const before = context_state(c);
        std::size_t const first = log_->canvas->calls().size();
        Font const font = log_->canvas->font();
        child(0)->draw(gc, allocation);
        ++log_->draws;
        std::string const after = context_state(c);
        std::string const name = log_->name_of(c.math_node());
        if (before != after)
            log_->faults.push_back("draw of " + name + " changed the context\n  before " + before + "\n  after  " +
                                   after);
        for (std::string const &out :
             painted_outside(*log_->canvas, first, allocation.point(), *allocation.boxtree(), font)) {
            // A rule glyph wider than its rule ends where the rule ends, left of the box.
            long x = 0;
            bool const rule = out.find(" in KMT Math Ext") != std::string::npos &&
                              std::sscanf(out.c_str(), "text(\"\u00C5\",%ld", &x) == 1 && x < allocation.point().x;
            if (!rule)
                log_->faults.push_back("draw of " + name + " painted " + out + " outside its box");
        }
    }

private:
    Log *log_;
};

// ---- the kinds of node ----

wchar const *const ident_texts[] = {u"x", u"y", u"ab", u"f", u"&alpha;", u"&Sum;"};
wchar const *const number_texts[] = {u"1", u"42", u"3.14"};
// No empty string: its box is deliberately of no height while its quotation marks are painted, and
// as the only content of a fence it leaves the fence a free height (see the test at the end).
wchar const *const string_texts[] = {u"if", u"q"};

// A small generator of its own, so that a seed gives the same formula on every platform.
class Random
{
public:
    explicit Random(std::uint32_t seed) : state_(seed * 2654435761u + 1) {}
    int below(int n)
    {
        state_ = state_ * 1664525u + 1013904223u;
        return static_cast<int>((state_ >> 8) % static_cast<std::uint32_t>(n));
    }

private:
    std::uint32_t state_;
};

// A formula of at most `depth` levels; the root is never an atom when depth > 0.
MathNode *grow(FormulaBuilder &b, Random &r, int depth, bool root = false)
{
    if (depth == 0 || (!root && r.below(3) == 0)) {
        switch (r.below(5)) {
        case 0:
            return b.number(number_texts[r.below(3)]);
        case 1:
            return b.string(string_texts[r.below(2)]);
        default:
            return b.ident(ident_texts[r.below(6)]);
        }
    }
    std::size_t const k = static_cast<std::size_t>(r.below(static_cast<int>(formula_kinds().size())));
    FormulaKind const &kind = formula_kinds()[k];
    int const count = kind.min_children + r.below(kind.max_children - kind.min_children + 1);
    std::vector<MathNode *> children;
    for (int i = 0; i < count; ++i)
        children.push_back(grow(b, r, depth - 1));
    return b.node(k, children);
}

struct Outcome
{
    std::string formula;
    std::vector<std::string> faults;
    long draws = 0;
    std::size_t texts = 0;
};

// Builds the formula of one seed, measures and draws it at (13, ascent + 7), and gives what the
// checkers found.
Outcome run_seed(std::uint32_t seed)
{
    Random r(seed);
    long const sizes[] = {240, 480, 2400};
    MathInfo::Settings settings = math_settings(sizes[r.below(3)]);
    settings.displaystyle = r.below(2) == 0;
    settings.slanted_identifiers = r.below(2) == 0;
    MathFixture f(settings);
    Log log;
    log.canvas = &f.canvas;
    Outcome out;
    {
        FormulaBuilder builder([&log](MathLayout *layout) -> MathLayout * { return new Checked(layout, &log); });
        log.builder = &builder;
        Held<MathNode> root(grow(builder, r, 1 + r.below(5), true));
        out.formula = builder.name_of(root.get()) + (settings.displaystyle ? " in display style" : " in text style") +
                      " at size " + std::to_string(settings.font.size());

        std::string const before = context_state(f.context);
        std::unique_ptr<BoxTree> box(root->request(f.context, BoxTree::unconstrained));
        f.canvas.clear();
        root->draw(f.context, AllocationTree(Point(13, box->ascent() + 7), box.get()));
        if (context_state(f.context) != before)
            log.faults.push_back("the context differs after the whole formula");
    }
    out.faults = log.faults;
    out.draws = log.draws;
    out.texts = painted_texts(f.canvas).size();
    return out;
}

// ---- the tests ----

// Many seeds, each a formula of depth 1 to 5 at a random size and style: no draw or request may leave
// the context changed, and no text may fall outside the box of the node that painted it. The checkers
// must have seen every node drawn and some text in each formula.
TEST(GeneratedTrees, DrawsKeepTheContextAndPaintInsideTheirBoxes)
{
    long total_draws = 0;
    for (std::uint32_t seed = 1; seed <= 400; ++seed) {
        Outcome const o = run_seed(seed);
        EXPECT_GT(o.draws, 0) << "seed " << seed << ": " << o.formula;
        EXPECT_GT(o.texts, 0u) << "seed " << seed << ": " << o.formula;
        total_draws += o.draws;
        if (!o.faults.empty()) {
            std::string all;
            for (std::size_t i = 0; i < o.faults.size() && i < 5; ++i)
                all += o.faults[i] + "\n";
            ADD_FAILURE() << "seed " << seed << ": " << o.formula << "\n" << all;
        }
    }
    // 400 formulas of one node at least each, most of several.
    EXPECT_GT(total_draws, 1200);
}

// Fences around content of no height. A row whose operands have no height gives its operators the
// free mark, 0x7fffffff, and its own ascent and descent read that mark through the maxima; a row
// around such a row adds to it. Every fence must still take its normal glyph and draw a handful of
// glyphs, never a run of pieces down to the mark.
TEST(GeneratedTrees, FencesAroundNothingDrawTheirNormalGlyphs)
{
    MathFixture f;
    FormulaBuilder b;
    Held<MathNode> alone(b.node("paren", {b.string(u"")}));
    Held<MathNode> nested(b.node("paren", {b.node("frac", {b.node("paren", {b.string(u"")}), b.number(u"2")})}));
    for (MathNode *root : {alone.get(), nested.get()}) {
        f.canvas.clear();
        std::unique_ptr<BoxTree> box(root->request(f.context, BoxTree::unconstrained));
        ASSERT_NE(nullptr, box);
        root->draw(f.context, AllocationTree(Point(0, 500), box.get()));
        EXPECT_LT(painted_texts(f.canvas).size(), 20u);
    }
    std::unique_ptr<BoxTree> box(alone->request(f.context, BoxTree::unconstrained));
    EXPECT_EQ(0x7fffffff, box->ascent());
    EXPECT_EQ(0x7fffffff, box->descent());
}

}  // namespace
