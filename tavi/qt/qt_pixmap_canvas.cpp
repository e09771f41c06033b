// Qt_Pixmap_Canvas: a Qt_Canvas that owns its painter and, when it was given no target, its pixmap.
#include "tavi/qt/qt_pixmap_canvas.h"

#include <QPaintEvent>
#include <QPixmap>
#include <QRect>

#include <algorithm>

namespace Tavi {

namespace {

// A pixmap of its own is at least one pixel each way, so that the painter always has a device, and
// starts white rather than with whatever the memory held.
QPixmap *make_pixmap(long width, long height)
{
    QPixmap *pixmap = new QPixmap(static_cast<int>(std::max(width, 1L)), static_cast<int>(std::max(height, 1L)));
    pixmap->fill(Qt::white);
    return pixmap;
}

}  // namespace

// A fixed resolution rules the canvas's units while the device keeps its own; when the device's two
// resolutions differ, the vertical one is scaled in the same proportion: dpi_y * dpi / dpi_x, rounded.
Qt_Pixmap_Canvas::Qt_Pixmap_Canvas(Extension const &extension, QPixmap *target, std::size_t dpi)
    : Qt_Canvas(extension), pixmap_(target), owned_pixmap_(nullptr), pixmap_dpi_x_(0), pixmap_dpi_y_(0)
{
    if (pixmap_ == nullptr) {
        owned_pixmap_ = make_pixmap(extension.right() - extension.left(), extension.bottom() - extension.top());
        pixmap_ = owned_pixmap_;
    }
    begin_painting();
    if (dpi == 0) {
        pixmap_dpi_x_ = device_dpi_x();
        pixmap_dpi_y_ = device_dpi_y();
    } else {
        pixmap_dpi_x_ = static_cast<int>(dpi);
        pixmap_dpi_y_ = static_cast<int>(dpi);
        if (device_dpi_x() != device_dpi_y() && device_dpi_x() != 0)
            pixmap_dpi_y_ = static_cast<int>(static_cast<double>(device_dpi_y()) * static_cast<double>(dpi) /
                                                  static_cast<double>(device_dpi_x()) +
                                              0.5);
    }
    set_painter(&own_painter_);
    reset_dash_phase();
    set_draw_offset(Point(extension.left(), extension.top()));
    own_painter_.setBrushOrigin(QPoint(static_cast<int>(draw_offset().x), static_cast<int>(draw_offset().y)));
    init_font();
}

// The target holds only the event's area: the area's top left is the pixmap's origin, so the offset
// moves by minus that corner, and the damage is the whole pixmap.
Qt_Pixmap_Canvas::Qt_Pixmap_Canvas(QPaintEvent *event, Extension const &extension, QPixmap *target)
    : Qt_Canvas(extension), pixmap_(target), owned_pixmap_(nullptr), pixmap_dpi_x_(0), pixmap_dpi_y_(0)
{
    QRect const area = event != nullptr ? event->rect()
                                        : QRect(0, 0, static_cast<int>(extension.right() - extension.left()),
                                                static_cast<int>(extension.bottom() - extension.top()));
    long const width = static_cast<long>(area.right()) - area.left() + 1;
    long const height = static_cast<long>(area.bottom()) - area.top() + 1;
    if (pixmap_ == nullptr) {
        owned_pixmap_ = make_pixmap(width, height);
        pixmap_ = owned_pixmap_;
    }
    begin_painting();
    pixmap_dpi_x_ = device_dpi_x();
    pixmap_dpi_y_ = device_dpi_y();
    set_damaged(Extension(0, 0, height, width));
    set_painter(&own_painter_);
    reset_dash_phase();
    set_draw_offset(Point(extension.left(), extension.top()));
    move_draw_offset(Point(-area.left(), -area.top()));
    own_painter_.setBrushOrigin(QPoint(static_cast<int>(draw_offset().x), static_cast<int>(draw_offset().y)));
    init_font();
}

Qt_Pixmap_Canvas::~Qt_Pixmap_Canvas()
{
    if (own_painter_.isActive())
        own_painter_.end();
    delete owned_pixmap_;
}

void Qt_Pixmap_Canvas::begin_painting()
{
    own_painter_.begin(pixmap_);
    set_device_dpi(pixmap_->logicalDpiX(), pixmap_->logicalDpiY());
}

Extent Qt_Pixmap_Canvas::dpi() { return Extent(pixmap_dpi_x_, pixmap_dpi_y_); }

}  // namespace Tavi
