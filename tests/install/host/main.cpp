// An example host: it knows Tavi only through the installed headers and the exported CMake package.
// It draws a line of text inside a frame on a pixmap through the glyph protocol, saves the picture as
// example-host.png and fails when nothing was drawn.
#include "tavi/canvas/font.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/extension.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/placement.h"
#include "tavi/glyph/textglyph.h"
#include "tavi/glyph/textglyphcontext.h"
#include "tavi/qt/qt_pixmap_canvas.h"

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>

#include <cstdio>

using namespace Tavi;

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    QPixmap pixmap(360, 90);
    pixmap.fill(Qt::white);

    long width = 0;
    {
        Qt_Pixmap_Canvas canvas(Extension(0, 0, 90, 360), &pixmap, 0);
        GlyphContext base(nullptr, nullptr, &canvas, nullptr);
        Font font(u"DejaVu Serif", 360, false, true);  // 18 points, italic
        TextGlyphContext context(base, font, Color(0, 0, 128, 255), Gauge::cs_unicode);

        static wchar const text[] = u"E = mc\u00b2 \u2260 \u03c0r\u00b2";
        Placement *line = new Placement;
        line->ref();
        line->append(new TextGlyph(text));
        line->position(0, Point(20, 55));
        line->draw(context, AllocationTree(Point(0, 0), nullptr));
        line->unref();

        canvas.font(font, Gauge::cs_unicode, 0);
        width = canvas.text_box(text, sizeof text / sizeof text[0] - 1).width();
        canvas.frame_rect(Rect(10, 10, 80, 350), Pen(2, Color(128, 0, 0, 255), Pen::solid));
    }

    QImage image = pixmap.toImage();
    long ink = 0;
    for (int y = 15; y < 75; ++y)
        for (int x = 15; x < 345; ++x)
            ink += image.pixelColor(x, y) != QColor(Qt::white);
    pixmap.save("example-host.png");
    std::printf("example host: text %ld pixels wide, %ld pixels of ink, picture in example-host.png\n", width, ink);
    return ink > 0 && width > 0 ? 0 : 1;
}
