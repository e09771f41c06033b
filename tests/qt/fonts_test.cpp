// The fonts behind the five font classes, drawn on real pixels: every named character lands in the
// font its class names, not in a fallback.
#include "font_drawing.h"

#include "support/external_tools.h"
#include "tavi/canvas/font.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/charnames.h"
#include "tavi/math/mathinfo.h"
#include "tavi/qt/qt_pixmap_canvas.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QRawFont>

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

using namespace Tavi;
using TaviTest::source_font;

namespace {

// 24 points: 32 pixels to the em on the 96-dpi pixmaps that Qt_Pixmap_Canvas makes.
constexpr long size_twips = 480;

// The file each class must be drawn from, and the code that file holds the glyph at, given the
// code a formula stores.
struct ClassFont
{
    MathString::Font cls;
    QString file;
    char32_t (*file_code)(wchar code);
};

char const liberation_serif[] = "/usr/share/fonts/truetype/liberation2/LiberationSerif-Regular.ttf";
// The OpenType file, which keeps the Symbol codes at the codes themselves.
char const standard_symbols[] = "/usr/share/fonts/opentype/urw-base35/StandardSymbolsPS.otf";

char32_t as_is(wchar code) { return code; }
char32_t low_byte(wchar code) { return code & 0xff; }
char32_t private_use(wchar code) { return 0xf000 + (code & 0xff); }

std::vector<ClassFont> const &class_fonts()
{
    static std::vector<ClassFont> const fonts = {
        // class                  file (fonts-liberation2, fonts-urw-base35, the source tree)  code in the file
        {MathString::f_upright,   QString(liberation_serif),                   as_is},
        {MathString::f_text,      QString(liberation_serif),                   as_is},
        {MathString::f_symbol,    QString(standard_symbols),                   low_byte},
        {MathString::f_extension, source_font("kmt-math-ext.ttf"),             private_use},
        {MathString::f_open_face, source_font("kmt-math-open-face.ttf"),       as_is},
    };
    return fonts;
}

std::string describe(char const *name, MathString::Font cls, wchar code)
{
    return std::string(name) + " (class " + std::to_string(int(cls)) + ", code " + std::to_string(code) + ")";
}

}  // namespace

// Characters of the text class that Liberation Serif, the free "Times New Roman", lacks, which the
// generated supplement holds: the double-struck italic letters, the reversed prime, the open box and
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
            QImage const through_canvas =
                TaviTest::draw_through_canvas(font, info.char_set(named.font), &code, 1, size, at);

            // Only the text classes have spaces: in the symbol and extension fonts every code is a sign.
            bool const text_like = named.font != MathString::f_symbol && named.font != MathString::f_extension;
            long const ink = TaviTest::count_ink(through_canvas, 0, 0, size.width(), size.height());
            if (text_like && QChar::isSpace(code))
                EXPECT_EQ(ink, 0) << describe(name, named.font, code);
            else
                EXPECT_GT(ink, 0) << describe(name, named.font, code);

            auto raw = raw_fonts.find(int(named.font));
            if (raw == raw_fonts.end()) {
                raw = raw_fonts.emplace(int(named.font), QRawFont(cf.file, TaviTest::canvas_pixel_size(size_twips))).first;
                ASSERT_TRUE(raw->second.isValid()) << cf.file.toStdString();
            }
            QImage from_file = TaviTest::draw_from_file(raw->second, cf.file_code(code), size, at);
            QString file = cf.file;
            if (from_file.isNull()) {
                EXPECT_EQ(named.font, MathString::f_text)
                    << describe(name, named.font, code) << ": " << cf.file.toStdString() << " has no glyph for it";
                gaps.insert(code);
                file = source_font("kmt-text-supplement.ttf");
                from_file = TaviTest::draw_from_file(QRawFont(file, TaviTest::canvas_pixel_size(size_twips)), code,
                                                     size, at);
                ASSERT_FALSE(from_file.isNull()) << describe(name, named.font, code) << ": not in " << file.toStdString();
            }
            EXPECT_EQ(TaviTest::differing_pixels(through_canvas, from_file), 0)
                << describe(name, named.font, code) << " is not the glyph of " << file.toStdString();
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
