// MathInfo and MathNodeContext: class fonts and character sets, the script-size arithmetic and
// the measures of the present text font.
//
// The recording canvas measures a font of s twips with ascent 8*s/240, x-height 5*s/240 and
// X-height 7*s/240.
#include "support/recording_canvas.h"
#include "tavi/math/mathinfo.h"
#include "tavi/math/mathnodecontext.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>

using namespace Tavi;
using TaviTest::RecordingCanvas;

namespace {

MathInfo::Settings settings(long size, long multiplier, long minsize)
{
    MathInfo::Settings s;
    s.font = Font(u"Times New Roman", size, false, false);
    s.scriptsizemultiplier = multiplier;
    s.scriptminsize = minsize;
    return s;
}

std::u16string name(Font const &f) { return f.name(); }

}  // namespace

TEST(MathInfo, ClassFontsWithoutAStyle)
{
    MathInfo info(nullptr);
    struct Case
    {
        int cls;
        char16_t const *family;
        Gauge::CharSet char_set;
    } const cases[] = {
        {0, u"Times New Roman", Gauge::cs_ansi},   {1, u"Times New Roman", Gauge::cs_unicode},
        {2, u"Symbol", Gauge::cs_symbol},          {3, u"KMT Math Ext", Gauge::cs_symbol},
        {4, u"KMT Math Open Face", Gauge::cs_ansi},
        // Outside 0 to 4: the class 1 font and Unicode.
        {7, u"Times New Roman", Gauge::cs_unicode},
    };
    for (auto const &c : cases) {
        MathString::Font const cls = static_cast<MathString::Font>(c.cls);
        EXPECT_EQ(name(info.font(cls)), c.family) << c.cls;
        EXPECT_EQ(info.font(cls).size(), 240) << c.cls;
        EXPECT_FALSE(info.font(cls).bold());
        EXPECT_FALSE(info.font(cls).italic());
        EXPECT_EQ(info.char_set(cls), c.char_set) << c.cls;
    }
}

namespace {

struct SizeCase
{
    long base, multiplier, minsize, level, expected;
};

SizeCase const size_cases[] = {
    // Multipliers of 71: 71, 50, 35, 24, 17 (each the one before * 71 / 100, truncated).
    {240, 71, 160, 1, 170},   // 240 * 71 / 100 = 170.4
    {240, 71, 160, 2, 160},   // 240 * 50 / 100 = 120, below the minimum
    {100, 71, 160, 1, 160},   // 71 < 160
    // Level 6: 71 -> 50 -> 35 -> 24 -> 17 -> 12 (five steps); 240 * 12 / 100 = 28.8.
    {240, 71, 0, 6, 28},
    {240, 71, 0, 7, 19},      // 12 * 71 / 100 = 8; 240 * 8 / 100 = 19.2
    // Negative levels: start 10000 / 71 = 140; -2: 140 * 140 / 100 = 196; -3: 196 * 140 / 100 = 274.
    {240, 71, 0, -3, 657},    // 240 * 274 / 100 = 657.6
    {240, 71, 500, -1, 500},  // the minimum holds on negative levels too
    {1000, 50, 0, -1, 2000},  // start 10000 / 50 = 200
    // A multiplier of 0 cannot grow a negative level: taken as no scaling.
    {240, 0, 0, -1, 240},
    {240, 0, 10, 1, 10},
    // Absurd levels end quickly without overflow: the factor stops growing at 10^9.
    {240, 71, 160, LONG_MAX - 1, 160},
    {240, 71, 0, LONG_MIN + 1, 2400000000L},  // 240 * 10^9 / 100
};

}  // namespace

TEST(MathInfo, RealFontSizeAtEachScriptLevel)
{
    for (SizeCase const &c : size_cases) {
        MathInfo info(nullptr, settings(c.base, c.multiplier, c.minsize));
        info.add_scriptlevel(c.level);
        EXPECT_EQ(info.real_font_size(MathString::f_text), c.expected)
            << "base " << c.base << " multiplier " << c.multiplier << " min " << c.minsize << " level " << c.level;
        // Every class scales alike, and real_font carries that size and nothing else changed.
        EXPECT_EQ(info.real_font_size(MathString::f_extension), c.expected);
        Font const f = info.real_font(MathString::f_symbol);
        EXPECT_EQ(f.size(), c.expected);
        EXPECT_EQ(name(f), u"Symbol");
        EXPECT_EQ(info.font(MathString::f_symbol).size(), c.base);
    }
}

TEST(MathNodeContext, MeasuresOfThePresentTextFont)
{
    struct Case
    {
        long size;
        long level;
        long ex, X, leading, em_twips;
        char const *font;
    } const cases[] = {
        // 240 twips: ex 5, X-height 7, ascent 8 -> leading 8 / 5 = 1.
        {240, 0, 5, 7, 1, 240, "font(Times New Roman,240,0,0,cs=1,angle=0)"},
        // 120 twips: ascent 4 -> leading 0, raised to 1; ex 2 (2.5); X 3 (3.5).
        {120, 0, 2, 3, 1, 120, "font(Times New Roman,120,0,0,cs=1,angle=0)"},
        // Level 1 of 480: 480 * 71 / 100 = 340; ascent 11 (11.3) -> 2; ex 7 (7.08); X 9 (9.9).
        {480, 1, 7, 9, 2, 340, "font(Times New Roman,340,0,0,cs=1,angle=0)"},
    };
    for (auto const &c : cases) {
        RecordingCanvas canvas;
        MathNodeContext context(GlyphContext(nullptr, nullptr, &canvas, nullptr), nullptr, settings(c.size, 71, 160));
        context.add_scriptlevel(c.level);
        EXPECT_EQ(context.real_ex(), c.ex) << c.size;
        EXPECT_EQ(context.real_X_height(), c.X) << c.size;
        EXPECT_EQ(context.real_leading(), c.leading) << c.size;
        EXPECT_EQ(context.real_em_twips(), c.em_twips) << c.size;
        // Each of the three gauge measures selects the font anew; real_em_twips asks no gauge.
        EXPECT_EQ(canvas.calls(), std::vector<std::string>(3, c.font)) << c.size;
        EXPECT_EQ(canvas.measure_count(), 3u);
    }

    // Without a gauge nothing is measured.
    MathNodeContext bare(GlyphContext(nullptr, nullptr), nullptr);
    EXPECT_EQ(bare.real_ex(), 0);
    EXPECT_EQ(bare.real_leading(), 1);
    EXPECT_EQ(bare.real_em_twips(), 240);
}
