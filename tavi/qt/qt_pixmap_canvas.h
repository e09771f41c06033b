// Qt_Pixmap_Canvas: a Qt_Canvas with a paint target and a painter of its own, and a resolution that the
// caller may fix. With no target it paints on a pixmap it makes, which also makes it a gauge that needs
// no window: the vector canvases measure through one.
#pragma once

#include "tavi/qt/qt_canvas.h"

#include <QPainter>

#include <cstddef>

class QPixmap;
class QPaintEvent;

namespace Tavi {

class Qt_Pixmap_Canvas : public Qt_Canvas
{
public:
    // With a null target the canvas makes a pixmap the size of the extension. A dpi of 0 takes the
    // pixmap's own resolution; any other value is what dpi() answers (the vertical one scaled when the
    // pixmap's two resolutions differ).
    Qt_Pixmap_Canvas(Extension const &extension, QPixmap *target, std::size_t dpi);
    // Paints the event's area on the target, whose top left stands for the event's top left: a back
    // buffer for one paint event. With a null target the canvas makes one of the event's size.
    Qt_Pixmap_Canvas(QPaintEvent *event, Extension const &extension, QPixmap *target);
    // Ends the painter and deletes a pixmap of its own making.
    ~Qt_Pixmap_Canvas() override;

    Qt_Pixmap_Canvas(Qt_Pixmap_Canvas const &) = delete;
    Qt_Pixmap_Canvas &operator=(Qt_Pixmap_Canvas const &) = delete;

    Extent dpi() override;
    QPixmap *pixmap() const { return pixmap_; }

private:
    // Starts the own painter on the target and reads the device's resolution.
    void begin_painting();

    QPixmap *pixmap_;
    QPixmap *owned_pixmap_;
    QPainter own_painter_;
    int pixmap_dpi_x_;
    int pixmap_dpi_y_;
};

}  // namespace Tavi
