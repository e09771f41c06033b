// "KMT Math Ext" against the glyph tables of the stretchy and large operators: the font's descent is
// three ems, each glyph is in the font with the depth its table row gives it, and fences built from
// pieces are one unbroken stroke.
#include "font_drawing.h"

#include "support/external_tools.h"
#include "tavi/kxt/utf.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/math/layout/extension_codes.h"
#include "tavi/math/layout/layoutbraceop.h"
#include "tavi/math/layout/layoutradicalop.h"
#include "tavi/math/mathnodecontext.h"
#include "support/math_fixture.h"
#include "tavi/qt/qt_pixmap_canvas.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QPixmap>
#include <QRawFont>

#include <cmath>
#include <string>
#include <vector>

using namespace Tavi;
namespace Codes = Tavi::ExtensionCodes;

namespace {

wchar const *const display_texts[] = {
    u"&Vee;", u"&Wedge;", u"&CirclePlus;", u"&CircleTimes;", u"&CircleDot;", u"&Sum;", u"&prod;",
    u"&coprod;", u"&Intersection;", u"&Union;", u"&UnionPlus;", u"&SquareUnion;", u"&Integral;",
    u"&ContourIntegral;", u"&PrincipalValueIntegral;",
};
wchar const *const big_texts[] = {
    u"/", u"\\", u"(", u")", u"[", u"]", u"{", u"}", u"&LeftCeiling;", u"&RightCeiling;",
    u"&LeftFloor;", u"&RightFloor;", u"&LeftAngleBracket;", u"&RightAngleBracket;", u"&Sqrt;",
};
wchar const *const fence_texts[] = {
    u"(", u")", u"[", u"]", u"{", u"}", u"&LeftCeiling;", u"&RightCeiling;", u"&LeftFloor;",
    u"&RightFloor;", u"&Sqrt;",
};
wchar const *const stack_texts[] = {u"|", u"&Verbar;"};

QRawFont ext_font(double pixel_size)
{
    return QRawFont(TaviTest::source_font("kmt-math-ext.ttf"), pixel_size);
}

// The ink of the glyph at `code`, with y growing downward from the baseline; an empty rectangle
// when the font has no glyph there.
QRectF ink(QRawFont const &raw, wchar code)
{
    char32_t const c = 0xf000 + code;
    QList<quint32> const glyphs = raw.glyphIndexesForString(QString::fromUcs4(&c, 1));
    if (glyphs.size() != 1 || glyphs[0] == 0)
        return QRectF();
    return raw.boundingRect(glyphs[0]);
}

Font ext(long twips)
{
    return Font(u"KMT Math Ext", twips, false, false);
}

}  // namespace

// The unit D of the layouts is the font's descent on the canvas: three ems. 24 points at 96 dpi
// is an em of 24 * 96 / 72 = 32 pixels, so D is 96; the ascent is 0.8 em, 25.6 pixels, which the
// font engine rounds up.
TEST(MathExtFont, DescentIsThreeEms)
{
    Qt_Pixmap_Canvas canvas(Extension(0, 0, 10, 10), nullptr, 0);
    canvas.font(ext(480), Gauge::cs_symbol, 0);
    double const em = canvas.dpi().height() * 480 / 1440.0;
    wchar const paren = 40;
    Box const box = canvas.text_box(&paren, 1);
    EXPECT_EQ(box.descent(), std::lround(3 * em));
    EXPECT_NEAR(box.ascent(), 0.8 * em, 1.0);
    EXPECT_EQ(canvas.font_descent(), box.descent());
}

// The depth of every glyph, measured at 1000 pixels to the em so that a pixel is a thousandth of
// an em and D is 3000. Pieces hang from the baseline and fill their cells of height thirtieths of
// D, stacked bars reach from one copy to the next, the four sizes fill exactly k/30 of D below the
// baseline for k = 12, 18, 24, 30 (cmex10's own stand 0.04 em higher), and the normal sizes stand
// on the baseline within the box of a normal character: 0.8 em up, 0.2 em down, give or take
// cmex10's 0.05 em of overshoot.
TEST(MathExtFont, GlyphsHaveTheDepthsTheLayoutsExpect)
{
    QRawFont const raw = ext_font(1000);
    ASSERT_TRUE(raw.isValid());
    double const D = 3000;

    for (wchar const *text : fence_texts) {
        Codes::FenceCodes const *row = Codes::fence_codes(text);
        struct Piece
        {
            wchar code;
            long height;
        } const pieces[] = {{row->top, row->top_height}, {row->mid, row->mid_height}, {row->bottom, row->bottom_height}};
        for (Piece const &piece : pieces) {
            QRectF const r = ink(raw, piece.code);
            double const cell = piece.height * D / 30;
            SCOPED_TRACE(Kxt::to_string(text) + " piece " + std::to_string(piece.code));
            EXPECT_LE(r.top(), 0.0);      // reaches the top of its cell
            EXPECT_GE(r.top(), -50.0);    // and not much beyond
            EXPECT_NEAR(r.bottom(), cell, 20);
        }
    }
    // The brace's centre piece fills 18/30 of D, 1800.
    QRectF const centre = ink(raw, Codes::brace_center(u"{"));
    EXPECT_LE(centre.top(), 0.0);
    EXPECT_NEAR(centre.bottom(), 1800, 20);

    // A stacked bar repeats its glyph every 6/30 of D, 600: each copy must reach the next.
    for (wchar const *text : stack_texts)
        EXPECT_GE(ink(raw, Codes::stack_codes(text)->stack).bottom(), 600.0) << Kxt::to_string(text);

    int const sizes[] = {12, 18, 24, 30};
    for (wchar const *text : big_texts) {
        Codes::BigCodes const *row = Codes::big_codes(text);
        for (int k = 0; k < 4; ++k) {
            QRectF const r = ink(raw, row->big[k]);
            double const depth = sizes[k] * D / 30;
            SCOPED_TRACE(Kxt::to_string(text) + " size " + std::to_string(k + 1));
            EXPECT_NEAR(r.top(), 0.0, 2.0);  // hangs from the baseline
            EXPECT_NEAR(r.bottom(), depth, 2.0);
        }
        QRectF const r = ink(raw, row->normal);
        EXPECT_GE(r.top(), -810.0) << Kxt::to_string(text);
        EXPECT_LE(r.bottom(), 260.0) << Kxt::to_string(text);
    }

    // The codes whose depth is not pinned above are in the font: the display operators at both
    // sizes, the normal sizes of the big operators, the small circle.
    std::vector<wchar> codes = {Codes::char_codes(u"&SmallCircle;")->normal};
    for (wchar const *text : display_texts) {
        Codes::DisplayCodes const *row = Codes::display_codes(text);
        ASSERT_NE(row, nullptr) << Kxt::to_string(text);
        codes.insert(codes.end(), {row->normal, row->display});
    }
    for (wchar const *text : big_texts)
        codes.push_back(Codes::big_codes(text)->normal);
    for (wchar code : codes)
        EXPECT_FALSE(ink(raw, code).isEmpty()) << code;

    // The overbar piece: a rule from the baseline to 0.04 em below it, inside the bar's box (which
    // reaches u = 40/3000 of D below the baseline), as wide as its advance, so that copies side by
    // side make one line.
    QRectF const bar = ink(raw, Codes::overbar_char);
    char32_t const bar_char = 0xf000 + Codes::overbar_char;
    QList<quint32> const bar_glyph = raw.glyphIndexesForString(QString::fromUcs4(&bar_char, 1));
    double const advance = raw.advancesForGlyphIndexes(bar_glyph).value(0).x();
    EXPECT_NEAR(bar.bottom(), 40, 1);
    EXPECT_NEAR(bar.left(), 0, 1);
    EXPECT_NEAR(bar.right(), advance, 1);
}

namespace {

// The fence layout of the text, of the class the operator table gives it.
MathLayout *fence_op(wchar const *text, bool brace)
{
    if (std::u16string(text) == u"&Sqrt;")
        return new LayoutRadicalOp;
    if (brace)
        return new LayoutBraceOp(text, LayoutOp::postfix, true, false, false, false, 0, 0);
    return new LayoutFenceOp(text, LayoutOp::prefix, true, false, false, false, 0, 0);
}

// A pixel of the stroke: darker than three quarters of the grey scale. A hairline between two
// pieces shows as a pixel near white, even where the edges are smoothed.
bool dark(QImage const &image, int x, int y)
{
    return qGray(image.pixel(x, y)) < 192;
}

// How many 8-connected groups of dark pixels the image holds.
int dark_components(QImage const &image)
{
    int const w = image.width();
    int const h = image.height();
    std::vector<char> seen(std::size_t(w) * h, 0);
    int components = 0;
    std::vector<QPoint> stack;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            if (seen[std::size_t(y) * w + x] || !dark(image, x, y))
                continue;
            ++components;
            stack.push_back(QPoint(x, y));
            seen[std::size_t(y) * w + x] = 1;
            while (!stack.empty()) {
                QPoint const p = stack.back();
                stack.pop_back();
                for (int dy = -1; dy <= 1; ++dy)
                    for (int dx = -1; dx <= 1; ++dx) {
                        int const nx = p.x() + dx;
                        int const ny = p.y() + dy;
                        if (nx < 0 || ny < 0 || nx >= w || ny >= h)
                            continue;
                        std::size_t const i = std::size_t(ny) * w + nx;
                        if (!seen[i] && dark(image, nx, ny)) {
                            seen[i] = 1;
                            stack.push_back(QPoint(nx, ny));
                        }
                    }
            }
        }
    return components;
}

}  // namespace

// Fences built from pieces by the fence layouts at three heights: just past the shortest the pieces
// allow (past the largest ready-made size too), that plus 1.3 ems, and three times the shortest. Each
// is one stroke, one group of dark pixels (a hairline where two pieces meet would part it), and its
// ink spans the height asked for. The drawings are kept for a person to look at.
TEST(MathExtFont, FencesBuiltFromPiecesAreUnbroken)
{
    QDir().mkpath(TAVI_TEST_OUTPUT_DIR "/fonts");
    struct Case
    {
        wchar const *text;
        char const *file;
        bool brace;
    } const cases[] = {
        {u"(", "paren-left", false},  {u"]", "bracket-right", false}, {u"}", "brace-right", true},
        {u"&RightFloor;", "floor-right", false}, {u"&Sqrt;", "radical", false},
    };
    // 12 and 36 points: 16 and 48 pixels to the em, D = 48 and 144.
    for (long const twips : {240L, 720L})
    for (Case const &c : cases) {
        Codes::FenceCodes const &row = *Codes::fence_codes(c.text);
        TaviTest::Held<MathLayout> op(fence_op(c.text, c.brace));
        for (int variant = 0; variant < 3; ++variant) {
            QSize const size(160, 900);
            Qt_Pixmap_Canvas canvas(Extension(0, 0, size.height(), size.width()), nullptr, 0);
            canvas.erase(Color::white);
            canvas.font(ext(twips), Gauge::cs_symbol, 0);
            long const D = canvas.font_descent();
            double const em = D / 3.0;
            // The shortest fence: top, one middle (the closing one) and bottom; a brace's centre
            // takes 18/30 of D besides.
            long const full = (row.top_height + row.bottom_height + (c.brace ? 18 : row.mid_height)) * D / 30 + 1;
            long const total = variant == 0 ? full : variant == 1 ? full + long(1.3 * em) : 3 * full;
            long const a = total / 2;
            long const d = total - a;
            long const y0 = 40 + a;
            MathInfo::Settings settings;
            settings.font = Font(u"Times New Roman", twips, false, false);
            MathNodeContext context(GlyphContext(nullptr, nullptr, &canvas, nullptr), nullptr, settings);
            BoxTreeLeaf const box(D, a, d);
            op->draw(context, AllocationTree(Point(40, y0), &box));
            QImage const image = canvas.pixmap()->toImage().convertToFormat(QImage::Format_Grayscale8);
            std::string const name = std::string(c.file) + "-" + std::to_string(twips / 20) + "pt-" + std::to_string(variant);
            image.save(QString::fromStdString(TAVI_TEST_OUTPUT_DIR "/fonts/fence-" + name + ".png"));
            SCOPED_TRACE(name);

            EXPECT_EQ(dark_components(image), 1);

            // The ink's first and last rows: the top and bottom of the box, within two pixels.
            int first = -1;
            int last = -1;
            for (int y = 0; y < image.height(); ++y)
                if (TaviTest::count_ink(image, 0, y, image.width(), y + 1) > 0) {
                    if (first < 0)
                        first = y;
                    last = y;
                }
            EXPECT_NEAR(first, y0 - a, 2);
            EXPECT_NEAR(last, y0 + d - 1, 2);
        }
    }
}
