// Drawing the formula on each output surface: SVG here, as glyph outlines on a QSvgGenerator, the
// other formats by the library, which also gives the page the SVG is drawn on.
#include "tools/tavi-render/outputs.h"

#include <QBuffer>
#include <QPainter>
#include <QSvgGenerator>

#include <cstdio>

#include "tavi/export/contentmathmlwriter.h"
#include "tavi/export/latexwriter.h"
#include "tavi/export/mathmlwriter.h"
#include "tavi/interchange/lineartext.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/qt/formulaoutput.h"
#include "tavi/speech/spokentext.h"
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

// The formula written out in one of the text formats, with a line feed at its end.
std::string export_text(Tavi::MathRootNode &root, Format format)
{
    switch (format) {
    case Format::mathml:
        return Tavi::write_mathml(root) + "\n";
    case Format::cmml:
        return Tavi::write_content_mathml(root) + "\n";
    case Format::latex:
        return Tavi::write_latex(root) + "\n";
    case Format::speech:
        return Kxt::to_string(Tavi::spoken_text(root.child())) + "\n";
    default:
        return Kxt::to_string(Tavi::linear_text(root.child())) + "\n";
    }
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
    case Format::mathml:
    case Format::cmml:
    case Format::latex:
    case Format::text:
    case Format::speech:
        out = QByteArray::fromStdString(export_text(*host.root(), format));
        return true;
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
