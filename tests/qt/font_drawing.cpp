// Helpers of the font tests: drawing through the canvas and straight from a file.
#include "font_drawing.h"

#include "tavi/canvas/color.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/extension.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/qt/qt_pixmap_canvas.h"

#include <QGlyphRun>
#include <QPainter>
#include <QPixmap>

#include <cstdlib>

namespace TaviTest {

using namespace Tavi;

QString source_font(char const *name)
{
    return QString::fromUtf8(TAVI_SOURCE_DIR "/fonts/") + QString::fromUtf8(name);
}

double canvas_pixel_size(long twips)
{
    Qt_Pixmap_Canvas gauge(Extension(0, 0, 1, 1), nullptr, 0);
    return gauge.dpi().height() * twips / 1440.0;
}

static QImage gray(QImage const &image)
{
    return image.convertToFormat(QImage::Format_Grayscale8);
}

QImage draw_through_canvas(Font const &font, Gauge::CharSet char_set, wchar const *codes, long count,
                           QSize size, Point at)
{
    Qt_Pixmap_Canvas canvas(Extension(0, 0, size.height(), size.width()), nullptr, 0);
    canvas.erase(Color::white);
    canvas.font(font, char_set, 0);
    canvas.text(codes, count, at);
    return gray(canvas.pixmap()->toImage());
}

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

long differing_pixels(QImage const &a, QImage const &b)
{
    if (a.size() != b.size())
        return long(a.width()) * a.height() + long(b.width()) * b.height();
    long count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > 64)
                ++count;
    return count;
}

MathInfo::Settings formula_settings(bool display)
{
    MathInfo::Settings s;
    s.font = Font(u"Times New Roman", 480, false, false);
    s.displaystyle = display;
    s.slanted_identifiers = true;
    return s;
}

PaintedFormula paint_formula(MathNode *node, bool display, long margin)
{
    MathInfo::Settings const settings = formula_settings(display);
    PaintedFormula p;
    Qt_Pixmap_Canvas gauge(Extension(0, 0, 1, 1), nullptr, 0);
    MathNodeContext measuring(GlyphContext(nullptr, nullptr, &gauge, nullptr), nullptr, settings);
    p.box.reset(node->request(measuring, BoxTree::unconstrained));
    long const height = p.box->ascent() + p.box->descent() + 2 * margin;
    Qt_Pixmap_Canvas canvas(Extension(0, 0, height, p.box->width() + 2 * margin), nullptr, 0);
    canvas.erase(Color::white);
    MathNodeContext drawing(GlyphContext(nullptr, nullptr, &canvas, nullptr), nullptr, settings);
    node->draw(drawing, AllocationTree(Point(margin, margin + p.box->ascent()), p.box.get()));
    p.image = canvas.pixmap()->toImage();
    return p;
}

}  // namespace TaviTest
