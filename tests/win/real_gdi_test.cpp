// The Win_* canvases on the system's GDI (Windows, or Wine): every example formula drawn through
// Win_Bmp_Canvas keeps its ink inside its box, and its metafile from Win_Metafile_Canvas, played
// back into a bitmap of the same size, puts the same ink in the same places.
#ifdef _WIN32

#include <gtest/gtest.h>

#include "tavi/interchange/matheditcontenthandler.h"
#include "tools/tavi-emf/formula_drawing.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

using namespace Tavi;
using TaviEmf::Pixels;

namespace {

constexpr int margin = 8;

std::vector<std::filesystem::path> examples()
{
    std::vector<std::filesystem::path> found;
    for (auto const &entry : std::filesystem::directory_iterator(TAVI_SOURCE_DIR "/data/examples"))
        if (entry.path().extension() == ".xml")
            found.push_back(entry.path());
    std::sort(found.begin(), found.end());
    return found;
}

bool read_example(FormulaScene &scene, std::filesystem::path const &path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return scene.read_content(text.str());
}

class RealGdiTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(TaviEmf::load_setup(scene, TAVI_SOURCE_DIR "/data/mathsetup.xml")); }

    FormulaScene scene;
};

// The ink may stand a pixel beyond the box, where a glyph's outline is rounded otherwise than its
// metrics (the integral signs). The magic square's outer rules are four pixels wide and centred on
// the box's edge, so that half of each lies outside: it is left out here.
TEST_F(RealGdiTest, EveryExampleDrawnOnABitmapKeepsItsInkInsideItsBox)
{
    auto const all = examples();
    ASSERT_GT(all.size(), 20u);
    for (auto const &path : all) {
        SCOPED_TRACE(path.filename().string());
        if (path.filename() == "magic-square-with-lines.xml")
            continue;
        ASSERT_TRUE(read_example(scene, path));
        Box box;
        Pixels const p = TaviEmf::draw_bitmap(scene, 96, margin, box);
        ASSERT_FALSE(p.data.empty());
        long const right = margin + box.width();
        long const bottom = margin + box.ascent() + box.descent();
        long ink = 0;
        long outside = 0;
        for (int y = 0; y < p.height; ++y)
            for (int x = 0; x < p.width; ++x)
                if (p.ink(x, y)) {
                    ++ink;
                    if (x < margin - 1 || x > right || y < margin - 1 || y > bottom)
                        ++outside;
                }
        EXPECT_GT(ink, 20);
        EXPECT_EQ(outside, 0) << "box " << box.width() << " by " << box.ascent() << " + " << box.descent();
    }
}

// Each of a 4 by 4 grid over the box holds about as much ink in the played-back metafile as in the
// bitmap: the metafile is written in twips and scaled down, so the pixels differ, the places do not.
// At 384 dpi the thinnest rules are still some pixels wide after the scaling.
TEST_F(RealGdiTest, EveryExamplesMetafilePlaysBackWithTheInkOfItsBitmap)
{
    std::string const emf = "tavi-real-gdi-test.emf";
    for (auto const &path : examples()) {
        SCOPED_TRACE(path.filename().string());
        ASSERT_TRUE(read_example(scene, path));
        Box twips;
        ASSERT_TRUE(TaviEmf::write_metafile(scene, std::wstring(emf.begin(), emf.end()), twips));
        Box box;
        Pixels const drawn = TaviEmf::draw_bitmap(scene, 384, margin, box);
        Pixels const played = TaviEmf::play_metafile(std::wstring(emf.begin(), emf.end()), drawn.width, drawn.height,
                                                     margin);
        ASSERT_EQ(played.data.size(), drawn.data.size());
        int const cells = 4;
        long const width = box.width();
        long const height = box.ascent() + box.descent();
        for (int cy = 0; cy < cells; ++cy)
            for (int cx = 0; cx < cells; ++cx) {
                long a = 0;
                long b = 0;
                for (long y = cy * height / cells; y < (cy + 1) * height / cells; ++y)
                    for (long x = cx * width / cells; x < (cx + 1) * width / cells; ++x) {
                        a += drawn.ink(static_cast<int>(x + margin), static_cast<int>(y + margin));
                        b += played.ink(static_cast<int>(x + margin), static_cast<int>(y + margin));
                    }
                long const area = std::max(1L, (width / cells) * (height / cells));
                EXPECT_LE(std::abs(a - b), std::max(area / 10, std::max(a, b) / 2))
                    << "cell " << cx << "," << cy << ": " << a << " pixels of ink drawn, " << b << " played back";
            }
    }
    std::remove(emf.c_str());
}

}  // namespace

#endif
