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

// ---- reading the recorded calls ----

long count_characters(std::string const &text)
{
    long n = 0;
    for (unsigned char ch : text)
        if ((ch & 0xC0) != 0x80)
            ++n;
    return n;
}

// font(<name>,<size>,<bold>,<italic>,cs=..,angle=..): the name may not hold a comma, the rest are read
// from the end.
bool read_font(std::string const &call, std::string &name, long &size)
{
    if (call.compare(0, 5, "font(") != 0)
        return false;
    std::vector<std::size_t> commas;
    for (std::size_t i = call.size(); i-- > 5;)
        if (call[i] == ',' && commas.size() < 5)
            commas.push_back(i);
    if (commas.size() < 5)
        return false;
    std::size_t const name_end = commas[4];
    std::size_t const size_end = commas[3];
    name = call.substr(5, name_end - 5);
    size = std::stol(call.substr(name_end + 1, size_end - name_end - 1));
    return true;
}

// text("<utf-8>",x,y), the numbers read from the end.
bool read_text(std::string const &call, std::string &text, long &x, long &y)
{
    if (call.compare(0, 6, "text(\"") != 0)
        return false;
    std::size_t const close = call.rfind(')');
    std::size_t const comma_y = call.rfind(',', close);
    std::size_t const comma_x = call.rfind(',', comma_y - 1);
    text = call.substr(6, comma_x - 1 - 6);
    x = std::stol(call.substr(comma_x + 1, comma_y - comma_x - 1));
    y = std::stol(call.substr(comma_y + 1, close - comma_y - 1));
    return true;
}

// ---- the checker around each node's layout ----

struct Log
{
    RecordingCanvas *canvas = nullptr;
    FormulaBuilder const *builder = nullptr;  // names the nodes in messages
    std::vector<std::string> faults;
    long narrow_rules = 0;  // rule glyphs wider than their rule: see the test of their own below
    long draws = 0;
    long texts = 0;

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
        check_texts(name, allocation, first, text8(font.name()), font.size());
    }

private:
    // Every text painted since call `first` lies inside the allocation's box.
    void check_texts(std::string const &name, AllocationTree const &allocation, std::size_t first,
                     std::string font_name, long font_size)
    {
        long const left = allocation.point().x;
        long const right = left + allocation.boxtree()->width();
        long const top = allocation.point().y - allocation.boxtree()->ascent();
        long const bottom = allocation.point().y + allocation.boxtree()->descent();
        auto const &calls = log_->canvas->calls();
        for (std::size_t i = first; i < calls.size(); ++i) {
            std::string text;
            long x = 0, y = 0;
            if (read_font(calls[i], font_name, font_size))
                continue;
            if (!read_text(calls[i], text, x, y))
                continue;
            ++log_->texts;
            bool inside;
            if (font_name == "KMT Math Ext") {
                inside = left <= x && x < right && top <= y && y <= bottom;
            } else {
                long const advance = count_characters(text) * (10 * font_size / 240);
                inside = left <= x && x + advance <= right && top <= y - 7 * font_size / 240 &&
                         y + font_size / 240 <= bottom;
            }
            if (!inside && font_name == "KMT Math Ext" && text == "\u00C5" && x < left) {
                ++log_->narrow_rules;
            } else if (!inside) {
                std::ostringstream out;
                out << "draw of " << name << " painted " << calls[i] << " in " << font_name << " " << font_size
                    << " outside its box: left " << left << " right " << right << " top " << top << " bottom "
                    << bottom;
                log_->faults.push_back(out.str());
            }
        }
    }

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
    long texts = 0;
    long narrow_rules = 0;
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
    out.narrow_rules = log.narrow_rules;
    out.texts = log.texts;
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
        EXPECT_GT(o.texts, 0) << "seed " << seed << ": " << o.formula;
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

// A rule narrower than one rule glyph, the one fault the sweep above counts apart. In text style at
// size 2400 the parts of frac(1, 2) are one level down, 10 * 1704 / 240 = 71 wide, so the rule is 71
// long while its glyph, at the fraction's size, is 100 wide; the last glyph ends where the rule ends:
// x = 11 + 71 - 100 = -18 for a fraction at x 0 (the gap is 56 / 5 = 11).
TEST(GeneratedTrees, ARuleGlyphWiderThanItsRuleEndsWhereTheRuleEnds)
{
    MathInfo::Settings settings = math_settings(2400);
    settings.displaystyle = false;
    MathFixture f(settings);
    Log log;
    log.canvas = &f.canvas;
    FormulaBuilder b([&log](MathLayout *layout) -> MathLayout * { return new Checked(layout, &log); });
    Held<MathNode> root(b.node("frac", {b.number(u"1"), b.number(u"2")}));
    std::unique_ptr<BoxTree> box(root->request(f.context, BoxTree::unconstrained));
    root->draw(f.context, AllocationTree(Point(0, 500), box.get()));
    std::vector<Painted> rules;
    for (Painted const &p : painted_texts(f.canvas))
        if (p.text == "\u00C5")
            rules.push_back(p);
    ASSERT_EQ(rules.size(), 1u);
    EXPECT_EQ(rules[0].x, -18);
    EXPECT_EQ(log.narrow_rules, 1);
    EXPECT_TRUE(log.faults.empty());
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
        std::size_t texts = 0;
        for (std::string const &call : f.canvas.calls())
            texts += call.rfind("text(", 0) == 0;
        EXPECT_LT(texts, 20u);
    }
    std::unique_ptr<BoxTree> box(alone->request(f.context, BoxTree::unconstrained));
    EXPECT_EQ(0x7fffffff, box->ascent());
    EXPECT_EQ(0x7fffffff, box->descent());
}

}  // namespace
