// A formula built in code from the built-in templates, shown by a windowless host brought up in the
// host's order (scene and RenderSceneImp, GlyphView and RenderViewImp, final_construct), printed
// through View::on_print to the Qt-measured EPS and SVG writers, and rendered for real by Ghostscript
// and rsvg-convert.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "support/external_tools.h"
#include "support/math_fixture.h"
#include "tavi/glyph/glyphscene.h"
#include "tavi/glyph/glyphview.h"
#include "tavi/glyph/rendersceneimp.h"
#include "tavi/glyph/renderviewimp.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstyle.h"
#include "tavi/math/templates/templatetable.h"
#include "tavi/qt/qt_eps_canvas.h"
#include "tavi/qt/qt_svg_canvas.h"

namespace {

using namespace Tavi;
using TaviTest::Held;

// x² + 1, entered as a sum whose first term is a superscript.
MathNode *x_squared_plus_one(TemplateTable &table)
{
    MathNode *power = table.get_template(u"superscript")->create_node();
    power->append(table.get_template(u"ci")->create_node(u"x"));
    power->append(table.get_template(u"cn")->create_node(u"2"));
    MathNode *sum = table.get_template(u"plus")->create_node();
    sum->append(power);
    sum->append(table.get_template(u"cn")->create_node(u"1"));
    return sum;
}

struct PrintHost
{
    PrintHost() : root(new MathRootNode(x_squared_plus_one(table)))
    {
        scene.root = root.get();
        scene.implementation(&scene_imp);
        view_imp.scene(&scene);
        view.implementation(&view_imp);
        scene_imp.view(&view);
        view.final_construct();
    }
    ~PrintHost() { scene.root = nullptr; }

    TemplateTable table{nullptr};
    Held<MathRootNode> root;
    TaviTest::StyledScene scene;
    RenderSceneImp scene_imp;
    RenderViewImp view_imp;
    GlyphView view;
};

// The page: 4 by 2 inches in twentieths of a point; the formula starts one inch right, half an inch down.
Extension const page(0, 0, 2880, 5760);

template <class C>
std::string print(PrintHost &host)
{
    std::ostringstream out;
    {
        C canvas(out, page);
        canvas.put_header("tavi formula print test");
        canvas.translation(Point(1440, 720));
        host.view.on_print(&canvas);
        canvas.put_footer();
    }
    return out.str();
}

TEST(PrintFormula, ToEpsRendersWithGhostscript)
{
    PrintHost host;
    std::string const eps = print<Qt_EPS_Canvas>(host);
    // The scene extension is the formula's, moved by the translation.
    Extension const e = host.view.scene_extension();
    EXPECT_EQ(1440, e.left());
    EXPECT_GT(e.right(), e.left());
    EXPECT_GT(e.bottom(), e.top());

    // The writer places glyphs by metrics partly in the measuring pixmap's units, so only the presence
    // of the formula's ink is asserted here, not its exact place.
    QImage const image = TaviTest::render_eps(eps, "math", "formula");
    EXPECT_GT(TaviTest::count_ink(image, 0, 0, image.width(), image.height()), 20);
    for (char const *text : {"(x) Tj", "(2) Tj", "(1) Tj"})
        EXPECT_NE(eps.find(text), std::string::npos) << text;
}

TEST(PrintFormula, ToSvgParsesAndRendersWithRsvg)
{
    PrintHost host;
    std::string const svg = print<Qt_SVG_Canvas>(host);
    // Every character of the formula is in the file as text.
    for (char const *text : {">x</text>", ">2</text>", ">1</text>"})
        EXPECT_NE(svg.find(text), std::string::npos) << text << "\n" << svg;

    EXPECT_GT(TaviTest::count_ink(TaviTest::render_svg(svg, "math", "formula"), 0, 0, 288, 144), 0);
}

}  // namespace
