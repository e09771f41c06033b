// The fonts behind the five font classes, drawn on real pixels: every named character lands in the
// font its class names (not a fallback), the extension font holds every glyph the stretchy operators
// ask for with the metrics they expect, and fences built from pieces show no gaps.
#include "support/external_tools.h"
#include "tavi/canvas/font.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/charnames.h"
#include "tavi/math/mathinfo.h"
#include "tavi/qt/qt_pixmap_canvas.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QFontInfo>
#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QRawFont>

#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <utility>

using namespace Tavi;

namespace {

// 24 points: 32 pixels to the em on the 96-dpi pixmaps that Qt_Pixmap_Canvas makes.
constexpr long size_twips = 480;

QString source_font(char const *name)
{
    return QString::fromUtf8(TAVI_SOURCE_DIR "/fonts/") + QString::fromUtf8(name);
}

// The file each class must be drawn from, and the code that file holds the glyph at, given the
// code a formula stores.
struct ClassFont
{
    MathString::Font cls;
    QString file;
    char const *package;  // where the file comes from, for the message when it is missing
    char32_t (*file_code)(wchar code);
};

char32_t as_is(wchar code) { return code; }
char32_t low_byte(wchar code) { return code & 0xff; }
char32_t private_use(wchar code) { return 0xf000 + (code & 0xff); }

std::vector<ClassFont> const &class_fonts()
{
    static std::vector<ClassFont> const fonts = {
        // class                 file                                                              from                 code in the file
        {MathString::f_upright,    "/usr/share/fonts/truetype/liberation2/LiberationSerif-Regular.ttf", "fonts-liberation2", as_is},
        {MathString::f_text,       "/usr/share/fonts/truetype/liberation2/LiberationSerif-Regular.ttf", "fonts-liberation2", as_is},
        {MathString::f_symbol,     "/usr/share/fonts/opentype/urw-base35/StandardSymbolsPS.otf",         "fonts-urw-base35",  low_byte},
        {MathString::f_extension,  source_font("kmt-math-ext.ttf"),                                      "the source tree",   private_use},
        {MathString::f_open_face,  source_font("kmt-math-open-face.ttf"),                                "the source tree",   as_is},
    };
    return fonts;
}

double pixel_size(Qt_Pixmap_Canvas &canvas, long twips)
{
    return canvas.dpi().height() * twips / 1440.0;
}

QImage gray(QImage const &image)
{
    return image.convertToFormat(QImage::Format_Grayscale8);
}

// One character drawn through the canvas, as a formula draws it: the class's font and char set.
QImage draw_through_canvas(Font const &font, Gauge::CharSet char_set, wchar code, QSize size, Point at)
{
    Qt_Pixmap_Canvas canvas(Extension(0, 0, size.height(), size.width()), nullptr, 0);
    canvas.erase(Color::white);
    canvas.font(font, char_set, 0);
    canvas.text(&code, 1, at);
    return gray(canvas.pixmap()->toImage());
}

// The glyph of `code` drawn straight from the font file, at the same place; null if the file has no
// glyph for the code.
QImage draw_from_file(QRawFont const &raw, char32_t code, QSize size, Point at)
{
    QList<quint32> const glyphs = raw.glyphIndexesForString(QString::fromUcs4(&code, 1));
    if (glyphs.size() != 1 || glyphs[0] == 0)
        return QImage();
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QGlyphRun run;
    run.setRawFont(raw);
    run.setGlyphIndexes(glyphs);
    run.setPositions({QPointF(0, 0)});
    painter.drawGlyphRun(QPointF(at.x, at.y), run);
    painter.end();
    return gray(image);
}

// Pixels that differ by more than a quarter of the grey scale.
long differing_pixels(QImage const &a, QImage const &b)
{
    long count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > 64)
                ++count;
    return count;
}

std::string describe(char const *name, MathString::Font cls, wchar code)
{
    return std::string(name) + " (class " + std::to_string(int(cls)) + ", code " + std::to_string(code) + ")";
}

}  // namespace

TEST(Fonts, FontFilesArePresent)
{
    for (ClassFont const &font : class_fonts())
        EXPECT_TRUE(QFileInfo::exists(font.file))
            << font.file.toStdString() << " is missing; it comes from " << font.package;
}

// Characters of the text class that Liberation Serif, the free "Times New Roman", lacks: Qt draws
// them from a fallback font. The double-struck italic letters, the reversed prime, the open box and
// the medium mathematical space.
std::set<wchar> const text_face_gaps = {0x2035, 0x205F, 0x2145, 0x2146, 0x2147, 0x2148, 0x2423};

// Every character of the character table, drawn in its class's font and char set, has ink (unless
// it is a space) and is pixel for pixel the glyph of the file that the class stands for: a character
// that Qt had to take from another font would differ.
TEST(Fonts, EveryNamedCharacterIsDrawnFromItsOwnFont)
{
    MathInfo const info(nullptr);
    QSize const size(96, 128);
    Point const at(24, 80);  // baseline well below the top: the extension glyphs hang below it

    std::map<int, QRawFont> raw_fonts;
    std::set<std::pair<int, wchar>> seen;
    std::set<wchar> gaps;
    std::map<int, int> drawn;
    for (int number = 0; number < CharNames::name_count; ++number) {
        char const *name = CharNames::name(number);
        ASSERT_NE(name, nullptr) << number;
        NamedChar named;
        ASSERT_TRUE(CharNames::find(Kxt::to_ustring(name).c_str(), named)) << name;
        for (std::size_t i = 0; i < named.length; ++i) {
            wchar const code = named.text[i];
            if (!seen.insert({int(named.font), code}).second)
                continue;
            ++drawn[named.font];
            ClassFont const &cf = class_fonts().at(named.font);
            Font const font(info.font(named.font).name(), size_twips, false, false);
            QImage const through_canvas = draw_through_canvas(font, info.char_set(named.font), code, size, at);

            // Only the text classes have spaces: in the symbol and extension fonts every code is a sign.
            bool const text_like = named.font != MathString::f_symbol && named.font != MathString::f_extension;
            long const ink = TaviTest::count_ink(through_canvas, 0, 0, size.width(), size.height());
            if (text_like && QChar::isSpace(code))
                EXPECT_EQ(ink, 0) << describe(name, named.font, code);
            else
                EXPECT_GT(ink, 0) << describe(name, named.font, code);

            auto raw = raw_fonts.find(int(named.font));
            if (raw == raw_fonts.end()) {
                Qt_Pixmap_Canvas gauge(Extension(0, 0, 1, 1), nullptr, 0);
                raw = raw_fonts.emplace(int(named.font), QRawFont(cf.file, pixel_size(gauge, size_twips))).first;
                ASSERT_TRUE(raw->second.isValid()) << cf.file.toStdString();
            }
            QImage const from_file = draw_from_file(raw->second, cf.file_code(code), size, at);
            if (from_file.isNull()) {
                EXPECT_EQ(named.font, MathString::f_text)
                    << describe(name, named.font, code) << ": " << cf.file.toStdString() << " has no glyph for it";
                gaps.insert(code);
                continue;
            }
            EXPECT_EQ(differing_pixels(through_canvas, from_file), 0)
                << describe(name, named.font, code) << " is not the glyph of " << cf.file.toStdString();
        }
    }
    EXPECT_EQ(gaps, text_face_gaps);
    // Every class is reached. Counted in the table: the 26 open-face capitals, and 35 distinct codes
    // of the extension class: 8 of ( ) [ \ ] { | }, 15 large operators in text size, 2 wide accents,
    // the double bar, the overbar, 4 floors and ceilings, 2 angle brackets, the radical and the small
    // circle: 8 + 15 + 2 + 1 + 1 + 4 + 2 + 1 + 1 = 35.
    EXPECT_EQ(drawn[MathString::f_open_face], 26);
    EXPECT_EQ(drawn[MathString::f_extension], 35);
    EXPECT_GT(drawn[MathString::f_upright] + drawn[MathString::f_text], 0);
    EXPECT_GT(drawn[MathString::f_symbol], 0);
}

// The families that the classes name reach their fonts: the name Qt settles on for each.
TEST(Fonts, ClassFamiliesResolveToTheIntendedFaces)
{
    struct Case
    {
        MathString::Font cls;
        char const *resolved;
    };
    Case const cases[] = {
        {MathString::f_upright,   "Liberation Serif"},
        {MathString::f_text,      "Liberation Serif"},
        {MathString::f_symbol,    "Standard Symbols PS"},
        {MathString::f_extension, "KMT Math Ext"},
        {MathString::f_open_face, "KMT Math Open Face"},
    };
    MathInfo const info(nullptr);
    for (Case const &c : cases) {
        Font const &font = info.font(c.cls);
        QFont qfont(QString::fromUtf16(font.name()));
        QString const family = QFontInfo(qfont).family();
        EXPECT_TRUE(family.startsWith(QLatin1String(c.resolved)))
            << int(c.cls) << ": " << family.toStdString();
    }
}
