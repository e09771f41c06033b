// Outline_Canvas: a Qt_Canvas that draws text as glyph outlines instead of as text. On a QSvgGenerator
// this makes an SVG file that shows the same on any machine, with no font installed: each text run is
// a mark on the generator, which OutlineGlyphs::finish turns into uses of outlines kept once each.
#pragma once

#include "tavi/qt/qt_canvas.h"
#include "tools/tavi-render/outline_glyphs.h"

#include <QColor>

namespace TaviRender {

class Outline_Canvas : public Tavi::Qt_Canvas
{
public:
    // The painter draws on a QSvgGenerator; `glyphs` collects the outlines for that file.
    Outline_Canvas(QPainter *painter, Tavi::Extension const &extension, OutlineGlyphs &glyphs);

    using Tavi::Qt_Canvas::text_color;
    void text_color(Tavi::Color color) override;
    void text(Tavi::wchar const *text, long count, Tavi::Point p) override;
    void text_f(Tavi::wchar const *text, long count, Tavi::PointF p) override;

private:
    // The run's mark at (x, y) of the device, turned by the text angle, in the text colour.
    void fill_text(Tavi::wchar const *text, long count, double x, double y);

    OutlineGlyphs &glyphs_;
    QColor text_color_;
};

}  // namespace TaviRender
