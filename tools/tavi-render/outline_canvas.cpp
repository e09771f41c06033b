// Text as outlines: the glyphs of the painter's font, sized for the device, become one path that is
// filled; nothing of the font itself reaches the output.
#include "tools/tavi-render/outline_canvas.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>

namespace TaviRender {

using namespace Tavi;

Outline_Canvas::Outline_Canvas(QPainter *painter, Extension const &extension)
    : Qt_Canvas(painter, extension), text_color_(Qt::black)
{
}

void Outline_Canvas::text_color(Color color)
{
    Qt_Canvas::text_color(color);
    text_color_ = QColor(color.red(), color.green(), color.blue(), color.alpha());
}

void Outline_Canvas::text(wchar const *text, long count, Point p)
{
    fill_text(text, count, static_cast<double>(p.x + draw_offset().x), static_cast<double>(p.y + draw_offset().y));
}

void Outline_Canvas::text_f(wchar const *text, long count, PointF p)
{
    fill_text(text, count, p.x + draw_offset_f().x, p.y + draw_offset_f().y);
}

void Outline_Canvas::fill_text(wchar const *text, long count, double x, double y)
{
    if (!text || count < 1)
        return;
    // The font as the device sizes it: a point size means other pixels on a 720 dpi generator than
    // on the screen the path would otherwise be sized for.
    apply_painter_font();
    QFont const font(painter()->font(), painter()->device());
    QPainterPath path;
    path.addText(QPointF(0.0, 0.0), font, qstring(text, count));
    // A text angle turns counter-clockwise about the start of the baseline; y grows downward.
    QTransform placement;
    placement.translate(x, y);
    if (text_angle() != 0)
        placement.rotate(-static_cast<double>(text_angle()));
    painter()->fillPath(placement.map(path), QBrush(text_color_));
}

}  // namespace TaviRender
