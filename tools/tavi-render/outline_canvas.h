// Outline_Canvas: a Qt_Canvas that draws text as filled glyph outlines instead of as text. On a
// QSvgGenerator this makes an SVG file that shows the same on any machine, with no font installed.
#pragma once

#include "tavi/qt/qt_canvas.h"

#include <QColor>

namespace TaviRender {

class Outline_Canvas : public Tavi::Qt_Canvas
{
public:
    Outline_Canvas(QPainter *painter, Tavi::Extension const &extension);

    using Tavi::Qt_Canvas::text_color;
    void text_color(Tavi::Color color) override;
    void text(Tavi::wchar const *text, long count, Tavi::Point p) override;
    void text_f(Tavi::wchar const *text, long count, Tavi::PointF p) override;

private:
    // The run's outline at (x, y) of the device, turned by the text angle, filled in the text colour.
    void fill_text(Tavi::wchar const *text, long count, double x, double y);

    QColor text_color_;
};

}  // namespace TaviRender
