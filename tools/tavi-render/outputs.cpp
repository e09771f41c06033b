// Drawing the formula on each output surface: SVG here, as glyph outlines on a QSvgGenerator, the
// other formats by the library, which also gives the page the SVG is drawn on.
#include "tools/tavi-render/outputs.h"

#include <QBuffer>
#include <QPainter>
#include <QSvgGenerator>

#include <cstdio>

#include "tavi/qt/formulaoutput.h"
#include "tools/tavi-render/outline_canvas.h"
#include "tools/tavi-render/render_host.h"

namespace TaviRender {

using namespace Tavi;

namespace {

void setup_svg(QSvgGenerator &generator, QBuffer &buffer, long width, long height)
{
    generator.setOutputDevice(&buffer);
    generator.setResolution(vector_dpi);
    generator.setSize(QSize(static_cast<int>(width), static_cast<int>(height)));
    generator.setViewBox(QRect(0, 0, static_cast<int>(width), static_cast<int>(height)));
    generator.setTitle("Formula");
    generator.setDescription("Typeset by tavi-render");
}

bool render_svg(RenderHost &host, QByteArray &out)
{
    // An image of the generator's resolution measures as the generator does.
    OutputPage const page(ink_extent(host, vector_dpi), vector_dpi);
    OutlineGlyphs glyphs;
    QByteArray marked;
    QBuffer buffer(&marked);
    QSvgGenerator generator;
    setup_svg(generator, buffer, page.width, page.height);
    {
        QPainter painter(&generator);
        Outline_Canvas canvas(&painter, page.extension(), glyphs);
        canvas.useInheritAliasing(true);
        canvas.printing(true);
        canvas.translation(page.offset);
        host.print(&canvas);
    }
    out = glyphs.finish(marked);
    return true;
}

}  // namespace

bool render(RenderHost &host, Format format, int dpi, QByteArray &out, std::string &error)
{
    out.clear();
    switch (format) {
    case Format::png:
        return render_formula(host, OutputFormat::png, dpi, out, error);
    case Format::svg:
        return render_svg(host, out);
    case Format::pdf:
        return render_formula(host, OutputFormat::pdf, dpi, out, error);
    case Format::eps:
        return render_formula(host, OutputFormat::eps, dpi, out, error);
    case Format::svg_writer:
        return render_formula(host, OutputFormat::svg_writer, dpi, out, error);
    case Format::none:
        break;
    }
    error = "no output format";
    return false;
}

bool write_output(std::string const &path, QByteArray const &data, std::string &error)
{
    if (path == "-") {
        std::size_t const n = std::fwrite(data.constData(), 1, static_cast<std::size_t>(data.size()), stdout);
        if (n != static_cast<std::size_t>(data.size()) || std::fflush(stdout) != 0) {
            error = "standard output could not be written";
            return false;
        }
        return true;
    }
    return save_output(path, data, error);
}

}  // namespace TaviRender
