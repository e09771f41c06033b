// Tests of the text atoms: boxes from the ink of each run, overhangs, line breaking of long text, caret
// hit testing and the caret line.
//
// Recording canvas at 240 twips: 10 units a character, ink ascent 7 and descent 1 from text_metrics,
// font ascent 8 and descent 2, bearings 0 unless the test's canvas says otherwise.
#include <gtest/gtest.h>

#include <memory>

#include "support/math_fixture.h"
#include "tavi/math/layout/layoutidentnode.h"
#include "tavi/math/layout/layoutnumbernode.h"
#include "tavi/math/layout/layoutstringnode.h"
#include "tavi/math/layout/layouttext.h"
#include "tavi/math/mathnode.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

// A canvas on which "f" overhangs by 3 on the left and by 2 on the right.
class OverhangCanvas : public RecordingCanvas
{
public:
    void text_metrics(wchar const *text, long count, Box &box, long &left, long &right) override
    {
        RecordingCanvas::text_metrics(text, count, box, left, right);
        if (text != nullptr && count > 0) {
            left = text[0] == u'f' ? -3 : 0;
            right = text[count - 1] == u'f' ? -2 : 0;
        }
    }
    void char_bearing(wchar const *text, long &left, long &right) const override
    {
        left = text != nullptr && text[0] == u'f' ? -3 : 0;
        right = text != nullptr && text[0] == u'f' ? -2 : 0;
    }
};

// A constraint that asks for text broken over lines: room on this line, room on a new one.
std::unique_ptr<BoxTreeNode> line_request(long room, long next_room)
{
    std::unique_ptr<BoxTreeNode> node(new BoxTreeNode);
    node->append(new BoxTreeLeaf(room, 0, 0));
    node->append(new BoxTreeLeaf(next_room, 0, 0));
    return node;
}

// An identifier node of two runs, "ab" as text and "cd" as symbols, measured.
struct TwoRuns
{
    TwoRuns() : t(layout_template(new LayoutIdentNode)), node(ident_node(t.get(), u"x")), layout(new LayoutIdentNode)
    {
        MathString s(u"ab", MathString::f_text);
        s.append(u"cd", 2, MathString::f_symbol);
        node->text(s, -1);
        box.reset(request_as(f.context, node.get(), layout.get()));
    }
    MathFixture f;
    Held<MathTemplate> t;
    Held<MathNode> node;
    Held<LayoutIdentNode> layout;
    std::unique_ptr<BoxTree> box;
};

TEST(Tokens, TextIsMeasuredRunByRunInTheFontOfEachClass)
{
    TwoRuns x;
    MathFixture &f = x.f;
    BoxTree *box = x.box.get();
    // Width 20 + 20; ink ascent 7 and descent 1 of both runs.
    EXPECT_EQ(Box(40, 7, 1), box_of(box));
    // A node of an atom can be laid out again in pieces.
    ASSERT_NE(nullptr, dynamic_cast<BoxTreeLeaf *>(box));
    EXPECT_TRUE(static_cast<BoxTreeLeaf *>(box)->isWrapable());

    f.canvas.clear();
    draw_as(f.context, x.node.get(), x.layout.get(), AllocationTree(Point(5, 20), box));
    // The second run starts after the 20 units of the first.
    std::vector<Painted> const expected{{"ab", 5, 20}, {"cd", 25, 20}};
    EXPECT_EQ(expected, painted_texts(f.canvas));
    // Each run in its class's character set: unicode for text, symbol for symbols.
    std::vector<std::string> fonts = calls_starting(f.canvas, "font(");
    ASSERT_GE(fonts.size(), 2u);
    EXPECT_NE(std::string::npos, fonts.front().find("cs=1"));
    EXPECT_NE(std::string::npos, fonts.back().find("cs=2"));
}

TEST(Tokens, AnOverhangWidensTheBoxAndShiftsThePaint)
{
    OverhangCanvas canvas;
    MathNodeContext context(GlyphContext(nullptr, nullptr, &canvas, nullptr), nullptr, math_settings());
    Held<LayoutText> layout(new LayoutText(u"fxf"));
    std::unique_ptr<BoxTree> box(layout->request(context, BoxTree::unconstrained));
    // 30 of advance, plus 3 overhanging left and 2 right.
    EXPECT_EQ(Box(35, 7, 1), box_of(box.get()));
    layout->draw(context, AllocationTree(Point(0, 10), box.get()));
    // The pen moves right by the left overhang.
    std::vector<Painted> const expected{{"fxf", 3, 10}};
    EXPECT_EQ(expected, painted_texts(canvas));
}

TEST(Tokens, LongTextBreaksOverLines)
{
    MathFixture f;
    Held<MathTemplate> t(layout_template(new LayoutNumberNode));
    Held<MathNode> node(number_node(t.get(), u"123456789"));
    Held<LayoutNumberNode> layout(new LayoutNumberNode);
    std::unique_ptr<BoxTreeNode> lines_wanted(line_request(45, 35));
    std::unique_ptr<BoxTree> box(request_as(f.context, node.get(), layout.get(), *lines_wanted));
    // W = 10 (the backslash), Q = 0, room 45 then 35 (both above 2 "m" = 20).
    // Line 1: 3 chars give 30 + W = 40 < 45; 4 chars give 50 >= 45: [0,3), width 40.
    // Line 2: 2 chars give 30 < 35; 3 give 40: [3,5), width 30. Line 3 likewise [5,7), 30.
    // Line 4: "89", the end of the text, closes with Q = 0: 20 < 35: [7,9), width 20.
    // Every line 8 high and 2 deep (the font line beats the ink 7 and 1).
    ASSERT_NE(nullptr, dynamic_cast<BoxTreeNode *>(box.get()));
    struct Line
    {
        long start, end, width;
    };
    Line const expected[] = {{0, 3, 40}, {3, 5, 30}, {5, 7, 30}, {7, 9, 20}};
    ASSERT_EQ(4, box->count());
    for (long i = 0; i < 4; ++i) {
        auto *leaf = dynamic_cast<BoxTreeLeaf *>(box->child(i));
        ASSERT_NE(nullptr, leaf);
        EXPECT_EQ(expected[i].start, leaf->startIdx()) << i;
        EXPECT_EQ(expected[i].end, leaf->endIdx()) << i;
        EXPECT_EQ(Box(expected[i].width, 8, 2), leaf->box()) << i;
    }
    // Stacked: lines 10 apart (no gap, each as high as the font), later lines indented by "m" = 10.
    // Width max(40, 10 + 30, 10 + 20) = 40; descent 4*10 - 8 = 32.
    EXPECT_EQ(Box(40, 8, 32), box->box());

    draw_as(f.context, node.get(), layout.get(), AllocationTree(Point(0, 10), box.get()));
    // Each line's backslash at its start + its width - W.
    std::vector<Painted> const painted{{"123", 0, 10}, {"\\", 30, 10}, {"45", 10, 20}, {"\\", 30, 20},
                                       {"67", 10, 30}, {"\\", 30, 30}, {"89", 10, 40}};
    EXPECT_EQ(painted, painted_texts(f.canvas));
}

TEST(Tokens, LineBreakingEdgeCases)
{
    MathFixture f;
    Held<MathTemplate> t(layout_template(new LayoutNumberNode));
    Held<LayoutNumberNode> layout(new LayoutNumberNode);

    // Room below one character: the room becomes 2 "m" = 20; one character and its backslash reach
    // it (10 + 10 = 20), yet each line takes its character; the last closes with Q = 0.
    Held<MathNode> tight(number_node(t.get(), u"123"));
    std::unique_ptr<BoxTreeNode> narrow(line_request(5, 5));
    std::unique_ptr<BoxTree> lines(request_as(f.context, tight.get(), layout.get(), *narrow));
    ASSERT_EQ(3, lines->count());
    long const widths[] = {20, 20, 10};
    for (long i = 0; i < 3; ++i) {
        auto *leaf = static_cast<BoxTreeLeaf *>(lines->child(i));
        EXPECT_EQ(i, leaf->startIdx());
        EXPECT_EQ(i + 1, leaf->endIdx());
        EXPECT_EQ(widths[i], leaf->width());
    }

    // Quoted text: the opening mark counts on the first line, the closing one on the last.
    Held<LayoutStringNode> quoted(new LayoutStringNode);
    Held<MathNode> str(string_node(t.get(), u"abcd"));
    std::unique_ptr<BoxTreeNode> wanted(line_request(40, 40));
    std::unique_ptr<BoxTree> qbox(request_as(f.context, str.get(), quoted.get(), *wanted));
    // Line 1: "ab" gives 20 + Q 10 + W 10 = 40 >= 40, so "a" alone: 10 + 10 + 10 = 30.
    // Line 2: "bc" gives 20 + 10 = 30; "bcd" ends the text: 30 + Q 10 = 40 >= 40: [1,3), 30.
    // Line 3: "d" + Q = 20.
    ASSERT_EQ(3, qbox->count());
    long const qwidths[] = {30, 30, 20};
    for (long i = 0; i < 3; ++i)
        EXPECT_EQ(qwidths[i], qbox->child(i)->width()) << i;
    draw_as(f.context, str.get(), quoted.get(), AllocationTree(Point(0, 10), qbox.get()));
    // Opening mark then "a" on line 1 with the backslash at 0 + 30 - 10; the closing mark on the
    // last line at its start 10 + 20 - Q.
    std::vector<Painted> const painted{{"\"", 0, 10},  {"a", 10, 10}, {"\\", 20, 10}, {"bc", 10, 20},
                                       {"\\", 30, 20}, {"d", 10, 30}, {"\"", 20, 30}};
    EXPECT_EQ(painted, painted_texts(f.canvas));
}

TEST(Tokens, CaretPositionHasATolerance)
{
    TwoRuns x;
    AllocationTree const at(Point(100, 10), x.box.get());
    // Boundaries at 110 and 120 in the first run, 130 and 140 in the second. A point counts for a
    // boundary from 2 units before it.
    struct Case
    {
        long x;
        long position;
    };
    Case const cases[] = {
        {50, 0}, {107, 0}, {108, 1}, {117, 1},
        {118, 2},  // 120 ends run 1: the second run's first index
        {127, 2}, {128, 3}, {300, 4},
    };
    x.f.context.math_node(x.node.get());
    for (Case const &c : cases)
        EXPECT_EQ(c.position, x.layout->caret_pos(x.f.context, at, Point(c.x, 0))) << c.x;
    x.f.context.math_node(nullptr);
}

TEST(Tokens, TheCaretIsDrawnOnceInItsRun)
{
    TwoRuns x;
    MathFixture &f = x.f;
    // Position 3: one character into the second run, which starts at 20 + 20.
    f.context.caret_pos(3);
    draw_as(f.context, x.node.get(), x.layout.get(), AllocationTree(Point(20, 30), x.box.get()));
    std::vector<std::string> lines = calls_starting(f.canvas, "line(");
    // x = 40 + 10, from 30 - 8 to 30 + 2.
    std::vector<std::string> const expected{"line(50,22,50,32,pen=0/#000000/solid,restart=1)"};
    EXPECT_EQ(expected, lines);

    // At a run boundary the first run takes it, and only one caret is drawn.
    f.canvas.clear();
    f.context.caret_pos(2);
    draw_as(f.context, x.node.get(), x.layout.get(), AllocationTree(Point(20, 30), x.box.get()));
    std::vector<std::string> const boundary{"line(40,22,40,32,pen=0/#000000/solid,restart=1)"};
    EXPECT_EQ(boundary, calls_starting(f.canvas, "line("));
}

}  // namespace
