// Win_* canvases: pens and brushes that cannot be made, hatches, the font cache, measuring and the
// metafile's text.
#include "tests/win/win_fixture.h"

#include "win/win_draw_canvas.h"
#include "win/win_metafile_canvas.h"

using namespace Tavi;
using Strings = std::vector<std::string>;

namespace TaviTest {

namespace {

Extension const area(0, 0, 300, 400);

}  // namespace

TEST_F(WinCanvasTest, APenOrBrushThatCannotBeMadeOrSelectedLeavesTheOldOneInForce)
{
    struct Row
    {
        char const *failing;
        bool pen;  // else a brush
        char const *selected;
    };
    Row const rows[] = {
        {"", true, "pen2"},          {"CreatePen", true, "pen1"},
        {"SelectObject", true, "pen1"}, {"", false, "brush2"},
        {"CreateHatchBrush", false, "brush1"}, {"SelectObject", false, "brush1"},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(std::string(row.failing) + (row.pen ? " pen" : " brush"));
        fresh();
        Gdi::HDC dc = context();
        Win_Draw_Canvas canvas(dc, 0, 0, false, area);
        gdi().fail(row.failing);
        Pen const red(2, Color(255, 0, 0), Pen::dashed);
        Brush const hatched(Brush::cross, Color(0, 0, 255));
        bool const taken = *row.failing == 0;
        if (row.pen) {
            canvas.pen(red, false);
            EXPECT_EQ(canvas.pen() == red, taken);
            EXPECT_EQ(gdi().selected(dc, "pen"), row.selected);
        } else {
            canvas.brush(hatched);
            EXPECT_EQ(canvas.brush() == hatched, taken);
            EXPECT_EQ(gdi().selected(dc, "brush"), row.selected);
        }
        // The context, the font, the pen and the brush in force: what failed to select was deleted.
        EXPECT_EQ(gdi().live_objects(), 4u);
    }
    // What the canvas made went with it: the context and the cached font are left.
    EXPECT_EQ(gdi().live_objects(), 2u);
}

TEST_F(WinCanvasTest, PensAreAlwaysSolidOnTheDeviceAndBrushesHatchByGdisStyles)
{
    Gdi::HDC dc = context();
    Win_Draw_Canvas canvas(dc, 0, 0, false, area);
    calls();
    canvas.pen(Pen(3, Color(1, 2, 3, 0), Pen::dotted), false);
    for (int style = Brush::solid; style <= Brush::diagonal_cross; ++style)
        canvas.brush(Brush(static_cast<Brush::FillStyle>(style), Color(0x10, 0x20, 0x30)));
    EXPECT_EQ(calls({"Create"}), (Strings{
                                     "CreatePen(0,3,030201)=pen2",  // alpha dropped, blue high
                                     "CreateSolidBrush(302010)=brush2",
                                     "CreateHatchBrush(0,302010)=brush3",  // horizontal
                                     "CreateHatchBrush(1,302010)=brush4",  // vertical
                                     "CreateHatchBrush(3,302010)=brush5",  // diagonal: HS_BDIAGONAL
                                     "CreateHatchBrush(2,302010)=brush6",  // back diagonal: HS_FDIAGONAL
                                     "CreateHatchBrush(4,302010)=brush7",  // cross
                                     "CreateHatchBrush(5,302010)=brush8",  // diagonal cross
                                 }));
}

TEST_F(WinCanvasTest, TheFontCacheFindsEqualFontsAndMakesEachFontOnce)
{
    Gdi::HDC dc = context();
    Font const times(u"Times New Roman", 240, false, false);
    std::size_t const first = Win_FontCache::lookup(times, Gauge::cs_unicode, 16, 0);
    struct Row
    {
        Font font;
        Gauge::CharSet char_set;
        long height;
        long angle;
        bool same;
    };
    Row const rows[] = {
        {Font(u"Times New Roman", 240, false, false), Gauge::cs_unicode, 16, 0, true},  // equal, not the same spec
        {Font(u"Times New Roman", 240, true, false), Gauge::cs_unicode, 16, 0, false},
        {Font(u"Times New Roman", 240, false, false), Gauge::cs_symbol, 16, 0, false},
        {Font(u"Times New Roman", 240, false, false), Gauge::cs_unicode, 17, 0, false},
        {Font(u"Times New Roman", 240, false, false), Gauge::cs_unicode, 16, 90, false},
        {Font(u"Times New Romans", 240, false, false), Gauge::cs_unicode, 16, 0, false},
    };
    for (Row const &row : rows)
        EXPECT_EQ(Win_FontCache::lookup(row.font, row.char_set, row.height, row.angle) == first, row.same);

    // Two canvases with the same font share its handle; the use count follows them.
    {
        Win_Draw_Canvas one(dc, 0, 0, false, area);
        Win_Draw_Canvas two(dc, 0, 0, false, area);
        one.font(Font(u"Symbol", 300, true, true), Gauge::cs_symbol, 90);
        two.font(Font(u"Symbol", 300, true, true), Gauge::cs_symbol, 90);
        std::size_t const symbol = Win_FontCache::lookup(Font(u"Symbol", 300, true, true), Gauge::cs_symbol, 20, 90);
        EXPECT_EQ(Win_FontCache::uses(symbol), 2);
    }
    EXPECT_EQ(calls({"CreateFontIndirectW"}),
              (Strings{"CreateFontIndirectW(Arial,-16,0,400,0,1)=font1",
                       // height MulDiv(300, 96, 1440) = 20; escapement in tenths of a degree; symbol set 2
                       "CreateFontIndirectW(Symbol,-20,900,700,1,2)=font2"}));
    EXPECT_EQ(Win_FontCache::uses(0), 0);
}

TEST_F(WinCanvasTest, TheFontCacheAnswersEntryZeroAtItsLimit)
{
    Font const font;
    for (long height = 0; height < static_cast<long>(Win_FontCache::limit); ++height)
        ASSERT_EQ(Win_FontCache::lookup(font, Gauge::cs_unicode, height, 0), static_cast<std::size_t>(height));
    EXPECT_EQ(Win_FontCache::lookup(font, Gauge::cs_unicode, -1, 0), 0u);
    EXPECT_EQ(Win_FontCache::lookup(font, Gauge::cs_unicode, 7, 0), 7u);
    EXPECT_EQ(Win_FontCache::size(), Win_FontCache::limit);
}

TEST_F(WinCanvasTest, AFontThatCannotBeMadeIsTriedAgainWithoutTheUnusedHandles)
{
    Gdi::HDC dc = context();
    Win_Draw_Canvas canvas(dc, 0, 0, false, area);
    canvas.font(Font(u"Unused", 240, false, false), Gauge::cs_unicode, 0);
    canvas.font(Font(u"Held", 240, false, false), Gauge::cs_unicode, 0);
    calls();
    // The first failure drops the handles no canvas holds (Arial and Unused) and tries again.
    gdi().fail("CreateFontIndirectW");
    canvas.font(Font(u"Retried", 240, false, false), Gauge::cs_unicode, 0);
    EXPECT_EQ(calls({"CreateFontIndirectW", "DeleteObject"}),
              (Strings{"CreateFontIndirectW(Retried,-16,0,400,0,1)=null", "DeleteObject(font1)", "DeleteObject(font2)",
                       "CreateFontIndirectW(Retried,-16,0,400,0,1)=font4"}));
    EXPECT_EQ(gdi().selected(dc, "font"), "font4");
    // Failing twice, the font stays as it was.
    gdi().fail("CreateFontIndirectW", 2);
    canvas.font(Font(u"Never", 240, false, false), Gauge::cs_unicode, 0);
    EXPECT_EQ(gdi().selected(dc, "font"), "font4");
    EXPECT_EQ(std::u16string(canvas.font().name()), u"Retried");
}

TEST_F(WinCanvasTest, TextMetricsTakeTheInkOfEachGlyphAndABlankIsOneByOne)
{
    Gdi::HDC dc = context();
    Win_Draw_Canvas canvas(dc, 0, 0, false, area);
    canvas.font(Font(u"Arial", 300, false, false), Gauge::cs_unicode, 0);  // 20 pixels: glyphs 10 wide
    struct Row
    {
        char16_t const *text;
        Box box;
        long left, right;
    };
    Row const rows[] = {
        {u" ", Box(10, 1, 0), 0, 9},       // no ink: a pixel on the baseline
        {u"a", Box(10, 10, 0), 1, 1},      // x height 20 / 2
        {u"ag", Box(20, 10, 4), 1, 1},     // g falls 20 / 5
        {u"X a", Box(30, 14, 0), 1, 1},    // a capital rises 7 tenths
        {u"a ", Box(20, 10, 0), 1, 9},     // the blank's bearing ends the run
    };
    for (Row const &row : rows) {
        Box box;
        long left = -1;
        long right = -1;
        canvas.text_metrics(row.text, static_cast<long>(std::char_traits<char16_t>::length(row.text)), box, left, right);
        EXPECT_EQ(box, row.box);
        EXPECT_EQ(left, row.left);
        EXPECT_EQ(right, row.right);
    }
    EXPECT_EQ(canvas.font_ex(), 10);
    EXPECT_EQ(canvas.font_X_height(), 14);
    // A glyph the system cannot measure: the line box and no bearings.
    gdi().fail("GetGlyphOutlineW");
    Box box;
    long left = -1;
    long right = -1;
    canvas.text_metrics(u"ag", 2, box, left, right);
    EXPECT_EQ(box, Box(20, RecordingGdi::ascent(20), 20 - RecordingGdi::ascent(20)));
    EXPECT_EQ(left + right, 0);
}

// A unit of the symbol set is its low byte, read for the symbol font in force.
TEST_F(WinCanvasTest, SymbolCodesAreReadForTheSymbolFontSelected)
{
    struct Row
    {
        char16_t const *family;
        char const *drawn;
    };
    Row const rows[] = {
        {u"Symbol", "a"},                  // Adobe's codes as they stand
        {u"Some Symbol Font", "a"},        // and for any font not known otherwise
        {u"KMT Math Ext", "\\uf061"},      // the private-use page
        {u"Standard Symbols L", "\\u03b1"},  // Unicode, by the URW table
        {u"OpenSymbol", "\\ue0b7"},        // OpenSymbol's own letters
    };
    Gdi::HDC dc = context();
    Win_Draw_Canvas canvas(dc, 0, 0, false, area);
    for (Row const &row : rows) {
        canvas.font(Font(row.family, 240, false, false), Gauge::cs_symbol, 0);
        calls();
        canvas.text(u"\u0161", 1, Point(0, 0));  // above 0xFF: the low byte counts
        EXPECT_EQ(calls({"TextOutW"}), Strings{"TextOutW(dc1,0,0," + std::string(row.drawn) + ")"});
    }
    canvas.font(Font(u"KMT Math Ext", 240, false, false), Gauge::cs_unicode, 0);
    calls();
    canvas.text(u"\u0161", 1, Point(0, 0));
    EXPECT_EQ(calls({"TextOutW"}), Strings{"TextOutW(dc1,0,0,\\u0161)"});
}

TEST_F(WinCanvasTest, BearingsAreAskedForTheCharactersUnicode)
{
    struct Row
    {
        Gauge::CharSet char_set;
        char16_t unit;
        Strings asked;
        long left;
    };
    Row const rows[] = {
        {Gauge::cs_unicode, u'\u20ac', {"GetCharABCWidthsW(dc1,8364,8364)"}, 1},
        {Gauge::cs_ansi, 0x180, {"GetCharABCWidthsW(dc1,8364,8364)"}, 1},  // the euro of Windows-1252
        {Gauge::cs_ansi, 0x81, {}, 0},                                     // undefined there
        {Gauge::cs_symbol, 0x61, {"GetCharABCWidthsW(dc1,97,97)"}, 1},
    };
    Gdi::HDC dc = context();
    Win_Draw_Canvas canvas(dc, 0, 0, false, area);
    for (Row const &row : rows) {
        canvas.font(Font(u"Symbol", 240, false, false), row.char_set, 0);
        calls();
        long left = -1;
        long right = -1;
        canvas.char_bearing(&row.unit, left, right);
        EXPECT_EQ(calls({"GetCharABC"}), row.asked);
        EXPECT_EQ(left, row.left);
        EXPECT_EQ(right, row.left);
    }
}

TEST_F(WinCanvasTest, TheMetafileNamesGenericFamiliesAndWritesTextACharacterAtATime)
{
    struct Row
    {
        char16_t const *name;
        char const *face;
    };
    Row const rows[] = {
        {u"Generic Serif", "Times New Roman"},
        {u"My Generic Serif Bold", "Times New Roman"},
        {u"Generic Sans-Serif", "Arial"},
        {u"Generic Monospace", "Courier New"},
        {u"Generic serif", "Generic serif"},  // the names are matched as written
    };
    Gdi::HDC file = context();
    Gdi::HDC reference = context();
    Win_Metafile_Canvas canvas(file, reference, 0, 0, true, area);
    calls();
    for (Row const &row : rows) {
        canvas.font(Font(row.name, 240, false, false), Gauge::cs_unicode, 0);
        std::u16string const name = canvas.font().name();
        EXPECT_EQ(std::string(name.begin(), name.end()), row.face);
    }
    EXPECT_EQ(calls({"CreateFontIndirectW"}),
              (Strings{"CreateFontIndirectW(Times New Roman,-240,0,400,0,1)=font2",
                       // Arial at 240 twips is the set-up's font1
                       "CreateFontIndirectW(Courier New,-240,0,400,0,1)=font3",
                       "CreateFontIndirectW(Generic serif,-240,0,400,0,1)=font4"}));
    // 240 twips, measured on the reference: 120 a character.
    canvas.text(u"ab", 2, Point(10, 300));
    EXPECT_EQ(calls({"TextOutW"}), (Strings{"TextOutW(dc1,10,300,a)", "TextOutW(dc1,130,300,b)"}));
    EXPECT_EQ(canvas.text_extent(u"ab", 2).width(), 240);
    canvas.font(canvas.font(), Gauge::cs_unicode, 45);
    canvas.text(u"ab", 2, Point(10, 300));
    EXPECT_EQ(calls({"TextOutW"}), (Strings{"TextOutW(dc1,10,300,ab)"}));
    // The leading of the font goes above the ink: 240 / 10.
    Box box;
    long left = 0;
    long right = 0;
    canvas.text_metrics(u"a", 1, box, left, right);
    EXPECT_EQ(box.ascent(), 120 + 24);
}

}  // namespace TaviTest
