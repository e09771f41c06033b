// Test scaffolding for the stretchy-operator, fraction, radical, script and limit layouts: a recording
// canvas whose ex can be set apart from the other metrics, a math context over it with a chosen font
// size, and helpers that read the painted glyphs back.
//
// With the recording canvas a font of size s has advance 10s/240 per character, ascent 8s/240,
// descent 2s/240, ex 5s/240, X-height 7s/240; real_leading is ascent / 5. The extension font follows the
// text font's size, so with s = 36000 every glyph is 1500 wide, 1200 high above the baseline, and the
// descent D from which the extension operators take their sizes is 300.
#pragma once

#include <string>
#include <vector>

#include "support/math_fixture.h"
#include "tavi/math/layout/mathpolylayout.h"

namespace StretchyTest {

class ExCanvas : public TaviTest::RecordingCanvas
{
public:
    // A non-negative value replaces the canvas's own ex.
    long ex = -1;
    long font_ex() const override { return ex < 0 ? RecordingCanvas::font_ex() : ex; }
};

inline Tavi::MathInfo::Settings settings_of_size(long size)
{
    Tavi::MathInfo::Settings s;
    s.font.size(size);
    return s;
}

struct Context
{
    explicit Context(long size, bool display = true)
        : ctx(Tavi::GlyphContext(nullptr, nullptr, &canvas, nullptr), nullptr, settings_of_size(size))
    {
        ctx.displaystyle(display);
    }
    ExCanvas canvas;
    Tavi::MathNodeContext ctx;
};

// The record of one glyph painted at (x, y).
inline std::string glyph(unsigned code, long x, long y)
{
    Tavi::wchar const c = static_cast<Tavi::wchar>(code);
    return "text(\"" + TaviTest::utf8(&c, 1) + "\"," + std::to_string(x) + "," + std::to_string(y) + ")";
}

// The painted texts among the recorded calls, in order.
inline std::vector<std::string> texts(TaviTest::RecordingCanvas const &canvas)
{
    return TaviTest::calls_starting(canvas, "text(");
}

// What a child layout saw of the context at one call.
struct Seen
{
    long scriptlevel;
    bool display;
    long constraint_width;  // request only
    Tavi::Point at;         // draw only
};

// A child layout of fixed size that shows node child `shows` (as a placeholder would) and writes down
// the style of every request and draw. It answers `op` as its core operator.
class StyleProbe : public Tavi::MathPolyLayout
{
public:
    StyleProbe(long width, long ascent, long descent, long shows = -1)
        : width_(width), ascent_(ascent), descent_(descent), shows_(shows)
    {
    }

    Tavi::LayoutOp *op = nullptr;
    std::vector<Seen> requests;
    std::vector<Seen> draws;

    Tavi::LayoutOp *core_operator() override { return op; }
    Tavi::BoxTree *request(Tavi::GlyphContext &gc, Tavi::BoxTree const &constraint) override
    {
        Tavi::MathNodeContext &c = math_context(gc);
        requests.push_back({c.scriptlevel(), c.displaystyle(), constraint.width(), Tavi::Point(0, 0)});
        return new Tavi::BoxTreeLeaf(width_, ascent_, descent_);
    }
    void draw(Tavi::GlyphContext &gc, Tavi::AllocationTree const &allocation) override
    {
        Tavi::MathNodeContext &c = math_context(gc);
        draws.push_back({c.scriptlevel(), c.displaystyle(), 0, allocation.point()});
    }
    bool has_child_node(Tavi::MathNodeContext &, long index) override { return shows_ >= 0 && index == shows_; }
    bool get_child_node(Tavi::MathNodeContext &, long &index) override
    {
        if (shows_ < 0)
            return false;
        index = shows_;
        return true;
    }

private:
    long width_;
    long ascent_;
    long descent_;
    long shows_;
};

using TaviTest::Held;

}  // namespace StretchyTest
