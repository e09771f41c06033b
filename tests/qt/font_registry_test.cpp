// Registering the fonts of a folder with Qt, and the free faces of the families formulas name.
#include "tavi/qt/font_registry.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QFontInfo>

using namespace Tavi;

TEST(FontRegistry, RegistersTheFontsOfAFolderOnceAndNothingElse)
{
    // The test main registered the source tree's fonts already: the three files are held, and the
    // database knows no more families after a second call than after the first.
    QString const folder = TAVI_SOURCE_DIR "/fonts";
    QStringList const before = QFontDatabase::families();
    EXPECT_EQ(register_fonts(folder), 3);
    EXPECT_EQ(register_fonts(folder), 3);
    EXPECT_EQ(QFontDatabase::families(), before);
    EXPECT_TRUE(QFontDatabase::hasFamily("KMT Text Supplement"));

    // Folders without fonts give nothing.
    EXPECT_EQ(register_fonts(TAVI_SOURCE_DIR "/no such folder"), 0);

    // A file named like a font that isn't one is refused by the database and not counted.
    QString const bogus_folder = TAVI_TEST_OUTPUT_DIR "/font-registry";
    QDir().mkpath(bogus_folder);
    QFile bogus(bogus_folder + "/bogus.ttf");
    ASSERT_TRUE(bogus.open(QIODevice::WriteOnly));
    bogus.write("not a font");
    bogus.close();
    EXPECT_EQ(register_fonts(bogus_folder), 0);
}

TEST(FontRegistry, FreeFacesOfTheNamedFamilies)
{
    EXPECT_EQ(free_face_for("Times New Roman"), "Liberation Serif");
    EXPECT_EQ(free_face_for("KMT Math Ext"), QString());
    EXPECT_EQ(free_face_for("times new roman"), QString());  // names compare in full, with case

    // After the substitutions, each named family draws its free face.
    substitute_free_faces();
    EXPECT_EQ(QFontInfo(QFont("Times New Roman")).family(), "Liberation Serif");
    EXPECT_TRUE(QFontInfo(QFont("Symbol")).family().startsWith("Standard Symbols PS"));
    // The supplement stands behind the text face, where Qt looks for the glyphs that face lacks.
    EXPECT_TRUE(QFont::substitutes("Times New Roman").contains("kmt text supplement", Qt::CaseInsensitive));
    // Nothing is added twice: the substitutes stand already, or the system resolves the names.
    EXPECT_EQ(substitute_free_faces(), 0);
}
