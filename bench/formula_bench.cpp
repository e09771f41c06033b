// The timed steps. Setup work (building a host, a first layout that a draw reuses) stays outside
// the timed loop, so that each benchmark times its one step.
#include "formula_bench.h"

#include <QBuffer>
#include <QByteArray>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>

#include <malloc.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>

#include "tavi/math/layoutmemo.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/templatetable.h"
#include "tavi/qt/qt_canvas.h"
#include "tools/tavi-render/document.h"
#include "tools/tavi-render/outline_canvas.h"
#include "tools/tavi-render/outputs.h"
#include "tools/tavi-render/render_host.h"

namespace TaviBench {

using namespace Tavi;
using TaviRender::RenderHost;

namespace {

std::unique_ptr<TemplateTable> table;

std::string read_file(std::string const &path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// A new root of the text; aborts the benchmark when the text doesn't read.
MathRootNode *parse(benchmark::State &state, std::string const &text)
{
    std::string error;
    MathRootNode *root = TaviRender::read_formula(*table, text, "formula", error);
    if (!root)
        state.SkipWithError(error.c_str());
    return root;
}

long count_nodes(MathNode *node)
{
    if (node == nullptr)
        return 0;
    long n = 1;
    for (long i = 0; i < node->count(); ++i)
        n += count_nodes(node->child(static_cast<int>(i)));
    return n;
}

// An image of screen resolution that the layout measures on, as on a display.
struct ScreenGauge
{
    ScreenGauge() : image(1, 1, QImage::Format_ARGB32_Premultiplied), painter(&image), canvas(&painter, Extension(0, 0, 1, 1))
    {
    }
    QImage image;
    QPainter painter;
    Qt_Canvas canvas;
};

}  // namespace

std::vector<Formula> examples()
{
    std::vector<Formula> list;
    QDir const dir(TAVI_SOURCE_DIR "/data/examples");
    for (QString const &f : dir.entryList({"*.xml"}, QDir::Files, QDir::Name))
        list.push_back({f.chopped(4).toStdString(), read_file(dir.filePath(f).toStdString())});
    return list;
}

std::string polynomial(long terms)
{
    std::string text = "<math xmlns=\"http://www.tavi-math.org/xml/MathEditContent\"><plus><num>1</num>";
    for (long i = 1; i < terms; ++i)
        text += "<expr tmp=\"times\"><num>" + std::to_string(i + 1) + "</num><isup><ident>x</ident><num>" +
                std::to_string(i) + "</num></isup></expr>";
    return text + "</plus></math>";
}

std::string nested_fractions(long depth)
{
    std::string open;
    std::string close;
    for (long i = 0; i < depth; ++i) {
        open += "<expr tmp=\"divide\"><num>1</num>";
        close += "</expr>";
    }
    return "<math xmlns=\"http://www.tavi-math.org/xml/MathEditContent\">" + open + "<ident>x</ident>" + close +
           "</math>";
}

bool load_setup()
{
    table.reset(new TemplateTable(nullptr));
    std::string error;
    if (!TaviRender::load_setup(*table, TAVI_SOURCE_DIR "/data/mathsetup.xml", error)) {
        std::cerr << error << "\n";
        return false;
    }
    return true;
}

void read(benchmark::State &state, std::string const &text)
{
    for (auto _ : state) {
        MathRootNode *root = parse(state, text);
        if (!root)
            return;
        root->ref();
        root->unref();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void typeset(benchmark::State &state, std::string const &text, double wrap_points)
{
    MathRootNode *root = parse(state, text);
    if (!root)
        return;
    RenderHost host(root);
    host.wrap_width(wrap_points);
    ScreenGauge gauge;
    // Every pass lays out anew: the boxes kept from the pass before are out of date.
    for (auto _ : state) {
        LayoutMemo::new_generation();
        host.typeset(&gauge.canvas);
    }
}

void write_svg(benchmark::State &state, std::string const &text)
{
    MathRootNode *root = parse(state, text);
    if (!root)
        return;
    RenderHost host(root);
    // One layout for the generator's resolution, which every timed draw then reuses.
    auto draw = [&host](bool layout) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        QSvgGenerator generator;
        generator.setOutputDevice(&buffer);
        generator.setResolution(TaviRender::vector_dpi);
        generator.setSize(QSize(2000, 2000));
        TaviRender::OutlineGlyphs glyphs;
        {
            QPainter painter(&generator);
            TaviRender::Outline_Canvas canvas(&painter, Extension(0, 0, 2000, 2000), glyphs);
            if (layout)
                host.print(&canvas);
            else
                host.draw(&canvas);
        }
        return glyphs.finish(bytes).size();
    };
    draw(true);
    for (auto _ : state)
        benchmark::DoNotOptimize(draw(false));
}

void read_polynomial(benchmark::State &state)
{
    read(state, polynomial(state.range(0)));
    state.SetComplexityN(state.range(0));
}

void typeset_polynomial(benchmark::State &state)
{
    typeset(state, polynomial(state.range(0)), 0.0);
    state.SetComplexityN(state.range(0));
}

void wrap_polynomial(benchmark::State &state)
{
    typeset(state, polynomial(state.range(0)), wrap_width_points);
    state.SetComplexityN(state.range(0));
}

void write_svg_polynomial(benchmark::State &state)
{
    write_svg(state, polynomial(state.range(0)));
    state.SetComplexityN(state.range(0));
}

void read_typeset_paint(benchmark::State &state, std::string const &text)
{
    // The image's size, found once: the extent a print covers.
    Extension page;
    {
        MathRootNode *root = parse(state, text);
        if (!root)
            return;
        RenderHost host(root);
        ScreenGauge gauge;
        page = host.print(&gauge.canvas);
    }
    int const width = static_cast<int>(std::max<long>(1, page.right()));
    int const height = static_cast<int>(std::max<long>(1, page.bottom()));
    for (auto _ : state) {
        MathRootNode *root = parse(state, text);
        if (!root)
            return;
        RenderHost host(root);
        QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        Qt_Canvas canvas(&painter, Extension(0, 0, height, width));
        host.print(&canvas);
    }
}

void typeset_nested_fractions(benchmark::State &state)
{
    typeset(state, nested_fractions(state.range(0)), 0.0);
    state.SetComplexityN(state.range(0));
}

void heap_per_node(benchmark::State &state)
{
    std::string const text = polynomial(state.range(0));
    double bytes = 0;
    long nodes = 0;
    for (auto _ : state) {
        std::size_t const before = mallinfo2().uordblks;
        MathRootNode *root = parse(state, text);
        if (!root)
            return;
        RenderHost host(root);
        ScreenGauge gauge;
        host.typeset(&gauge.canvas);
        bytes = static_cast<double>(mallinfo2().uordblks - before);
        nodes = count_nodes(root->child());
    }
    state.counters["nodes"] = static_cast<double>(nodes);
    state.counters["bytes_per_node"] = nodes > 0 ? bytes / static_cast<double>(nodes) : 0.0;
}

}  // namespace TaviBench
