// MathLayout: the innermost-first neighbour search of the generic composite. (MathPolyLayout's child
// list is PolyGlyph's, tested with the glyph containers.)
#include "math/layout/layout_probe.h"
#include "support/math_fixture.h"
#include "tavi/math/layout/mathpolylayout.h"

#include <gtest/gtest.h>

using namespace Tavi;
using LayoutTest::Journal;
using LayoutTest::LayoutProbe;
using TaviTest::Held;

TEST(MathLayout, NeighbourSearchAsksTheInnermostLayoutFirst)
{
    TaviTest::MathFixture f;
    Journal journal;
    // A fraction F over a row R of children 0 and 1 and a denominator d of child 2. The row moves
    // left and right; the fraction moves down from either and up from the denominator.
    auto *row = new LayoutProbe("R", &journal);
    row->add((new LayoutProbe("a", &journal))->shows(0))->add((new LayoutProbe("b", &journal))->shows(1));
    row->neighbour(0, Input::key_right, 1)->neighbour(1, Input::key_left, 0);
    auto *fraction = new LayoutProbe("F", &journal);
    fraction->add(row)->add((new LayoutProbe("d", &journal))->shows(2));
    fraction->neighbour(0, Input::key_down, 2)->neighbour(1, Input::key_down, 2)->neighbour(2, Input::key_up, 0);
    Held<MathLayout> held(fraction);

    struct Case
    {
        long from;
        Input::Key key;
        bool found;
        long to;
        Journal asked;
    } const cases[] = {
        // The row answers; the fraction's own rule and the denominator are never asked.
        {0, Input::key_right, true, 1, {"neighbour:a", "neighbour:b", "neighbour:R"}},
        // The row has no answer: every child is asked, then the fraction.
        {1, Input::key_down, true, 2, {"neighbour:a", "neighbour:b", "neighbour:R", "neighbour:d", "neighbour:F"}},
        {2, Input::key_right, false, -5,
         {"neighbour:a", "neighbour:b", "neighbour:R", "neighbour:d", "neighbour:F"}},
    };
    for (Case const &c : cases) {
        journal.clear();
        long result = -5;
        EXPECT_EQ(fraction->get_neighbour_child(f.context, c.from, c.key, result), c.found) << c.from;
        EXPECT_EQ(result, c.to) << c.from << " key " << c.key;
        EXPECT_EQ(journal, c.asked) << c.from << " key " << c.key;
    }
}
