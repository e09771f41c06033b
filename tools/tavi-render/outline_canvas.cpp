// Text as outlines: the glyphs of the painter's font, sized for the device, are shaped and kept by the
// glyph table; the generator gets a mark of the run in its colour and place.
#include "tools/tavi-render/outline_canvas.h"

#include <QFont>
#include <QPainter>
#include <QTransform>

namespace TaviRender {

using namespace Tavi;

Outline_Canvas::Outline_Canvas(QPainter *painter, Extension const &extension, OutlineGlyphs &glyphs)
    : Qt_Canvas(painter, extension), glyphs_(glyphs), text_color_(Qt::black)
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
    // on the screen the outlines would otherwise be sized for.
    apply_painter_font();
    QString const mark = QString::number(glyphs_.run(QFont(painter()->font(), painter()->device()), qstring(text, count)));
    QPen const saved = painter()->pen();
    painter()->setPen(text_color_);
    // A text angle turns counter-clockwise about the start of the baseline; y grows downward.
    if (text_angle() != 0) {
        QTransform const matrix = painter()->worldTransform();
        painter()->translate(x, y);
        painter()->rotate(-static_cast<double>(text_angle()));
        painter()->drawText(QPointF(0.0, 0.0), mark);
        painter()->setWorldTransform(matrix);
    } else {
        painter()->drawText(QPointF(x, y), mark);
    }
    painter()->setPen(saved);
}

}  // namespace TaviRender
