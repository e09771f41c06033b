// A host without a window: a scene and a view brought up in the host's order with RenderSceneImp and
// RenderViewImp, printed through View::on_print to the SVG and EPS writers, and the files rendered for
// real by rsvg-convert and Ghostscript, with ink where the formula stands and nowhere else.
#include <gtest/gtest.h>

#include <QPixmap>

#include <sstream>
#include <string>

#include "scene_fixtures.h"
#include "support/external_tools.h"
#include "tavi/glyph/glyphview.h"
#include "tavi/glyph/rendersceneimp.h"
#include "tavi/glyph/renderviewimp.h"
#include "tavi/qt/qt_eps_canvas.h"
#include "tavi/qt/qt_svg_canvas.h"

namespace {

using namespace Tavi;
using namespace SceneTest;

// The page: 4 by 2 inches in twentieths of a point, 288 by 144 pixels at 72 dpi.
Extension const page(0, 0, 2880, 5760);
// The formula's top left corner is moved to one inch right and half an inch down.
Point const offset(1440, 720);

// The host's order: the scene and its implementation, the view and its implementation, then
// final_construct. The render implementations also need to know each other's side.
struct PrintHost
{
    // scale: twentieths of a point for each unit of the canvas's metrics.
    explicit PrintHost(long scale_numerator = 1, long scale_denominator = 1)
        : root(new Root(new Label(u"x+y=1", Font(u"DejaVu Serif", 960, false, false), scale_numerator,
                                  scale_denominator))),
          scene(root)
    {
        scene.implementation(&scene_imp);
        view_imp.scene(&scene);
        view.implementation(&view_imp);
        scene_imp.view(&view);
        view.final_construct();
    }
    Root *root;
    TestScene scene;
    RenderSceneImp scene_imp;
    RenderViewImp view_imp;
    GlyphView view;
};

// Prints the host's view on the canvas between header and footer.
template <class C>
std::string print(PrintHost &host, Extension &scene_extension)
{
    std::ostringstream out;
    {
        C canvas(out, page);
        canvas.put_header("tavi scene tests");
        canvas.translation(offset);
        host.view.on_print(&canvas);
        canvas.put_footer();
    }
    scene_extension = host.view.scene_extension();
    return out.str();
}

// The formula's box in pixels at 72 dpi (twentieths of a point / 20) carries ink; the page outside
// it, grown by 3 pixels for antialiasing and glyphs that overhang their advance, carries none.
void expect_ink_in_box_only(QImage const &image, Extension const &box, char const *what)
{
    ASSERT_EQ(image.width(), 288) << what;
    ASSERT_EQ(image.height(), 144) << what;
    int const left = static_cast<int>(box.left() / 20);
    int const top = static_cast<int>(box.top() / 20);
    int const right = static_cast<int>(box.right() / 20);
    int const bottom = static_cast<int>(box.bottom() / 20);
    EXPECT_GT(TaviTest::count_ink(image, left, top, right, bottom), 100) << what;
    long const all = TaviTest::count_ink(image, 0, 0, 288, 144);
    long const near = TaviTest::count_ink(image, left - 3, top - 3, right + 3, bottom + 3);
    EXPECT_EQ(all, near) << what << ": ink outside the formula";
}

// The scene extension is the label's box moved by the translation: it starts at the offset, and a
// 48-point line of five characters is some hundreds of twentieths of a point wide and high.
void expect_plausible_extension(Extension const &e)
{
    EXPECT_EQ(e.left(), offset.x);
    EXPECT_EQ(e.top(), offset.y);
    EXPECT_GT(e.right() - e.left(), 960);
    EXPECT_LT(e.right() - e.left(), 5 * 960);
    EXPECT_GT(e.bottom() - e.top(), 600);
    EXPECT_LT(e.bottom() - e.top(), 2 * 960);
}

TEST(Print, OnPrintToSvgRendersTheFormulaWithRsvg)
{
    // The SVG writer measures in the screen pixels of its Qt gauge and draws in twentieths of a point:
    // the label scales what it measures by 1440 / screen dpi, as the EPS writer does for its callers.
    PrintHost host(1440, QPixmap(1, 1).logicalDpiX());
    Extension extension;
    std::string const svg = print<Qt_SVG_Canvas>(host, extension);
    expect_plausible_extension(extension);
    EXPECT_NE(svg.find(">x+y=1</text>"), std::string::npos) << svg;
    // Printing measures afresh.
    EXPECT_EQ(host.root->invalidations, 1);

    expect_ink_in_box_only(TaviTest::render_svg(svg, "glyph", "print"), extension, "svg");
}

TEST(Print, OnPrintToEpsRendersTheFormulaWithGhostscript)
{
    PrintHost host;
    Extension extension;
    std::string const eps = print<Qt_EPS_Canvas>(host, extension);
    expect_plausible_extension(extension);
    EXPECT_EQ(eps.rfind("%!PS-Adobe-2.0 EPSF-2.0\n%%BoundingBox: 0 0 288 144\n", 0), 0u);

    expect_ink_in_box_only(TaviTest::render_eps(eps, "glyph", "print"), extension, "eps");
}

}  // namespace
