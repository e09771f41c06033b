// The cost of one keystroke in an editor: the character entered through the view, the formula laid
// out again and the view drawn again on an 800 by 600 image, as a host's paint event would. Over
// polynomials of 10 to 10,000 terms, with the caret in the first, the middle or the last term.
// Keystrokes alternate between typing a letter and taking it back with backspace, so that the
// formula stays the same size.
#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>

#include <fstream>
#include <iterator>
#include <string>

#include "formula_bench.h"
#include "tavi/editing/formulascene.h"
#include "tavi/editing/mathselection.h"
#include "tavi/glyph/glyphview.h"
#include "tavi/glyph/rendersceneimp.h"
#include "tavi/glyph/renderviewimp.h"
#include "tavi/kxt/stream.h"
#include "tavi/math/mathnode.h"
#include "tavi/qt/qt_canvas.h"

namespace TaviBench {

using namespace Tavi;

namespace {

// A windowless editor of one formula, brought up in the host's order.
struct Editor
{
    Editor() : image(800, 600, QImage::Format_ARGB32_Premultiplied)
    {
        image.setDotsPerMeterX(3780);
        image.setDotsPerMeterY(3780);
        std::ifstream in(TAVI_SOURCE_DIR "/data/mathsetup.xml", std::ios::binary);
        std::string const setup((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        Kxt::KTmemoryStream stream(setup.data(), setup.size());
        scene.template_table()->init(stream);
        scene.implementation(&scene_imp);
        view_imp.scene(&scene);
        view.implementation(&view_imp);
        scene_imp.view(&view);
        view.final_construct();
    }
    ~Editor() { scene_imp.view(nullptr); }

    void draw()
    {
        QPainter painter(&image);
        Qt_Canvas canvas(&painter, Extension(0, 0, image.height(), image.width()));
        view.on_draw(&canvas, false);
    }

    FormulaScene scene;
    RenderSceneImp scene_imp;
    RenderViewImp view_imp;
    GlyphView view;
    QImage image;
};

}  // namespace

void keystroke(benchmark::State &state)
{
    long const terms = state.range(0);
    long const where = state.range(1);  // 0 first term, 1 middle, 2 last
    Editor editor;
    if (!editor.scene.read_content(polynomial(terms))) {
        state.SkipWithError("the polynomial does not read");
        return;
    }
    // The x of the chosen term: term k is times(k + 1, x^k), so x stands at [k, 1, 0].
    long const term = where == 0 ? 1 : where == 1 ? terms / 2 : terms - 1;
    auto *selection = dynamic_cast<MathSelection *>(editor.scene.focus());
    selection->clear();
    for (long index : {term, 1L, 0L})
        selection->path_push_back(index);
    selection->selected_node()->set_caret_pos(true);
    selection->highlight();
    editor.draw();
    bool typed = false;
    for (auto _ : state) {
        editor.view.enter_char(typed ? char16_t(8) : u'y');
        typed = !typed;
        editor.draw();
    }
    state.SetComplexityN(terms);
}

}  // namespace TaviBench
