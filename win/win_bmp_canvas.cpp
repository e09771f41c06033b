// Win_Bmp_Canvas: the memory context, its bitmap and its resolution.
#include "win/win_bmp_canvas.h"

namespace Tavi {

Win_Bmp_Canvas::Win_Bmp_Canvas(bool printing, Extension const &extension, std::size_t dpi, Gdi::HBITMAP bitmap)
    : Win_Canvas(printing, extension), bitmap_(bitmap)
{
    Gdi::HDC const screen = gdi_.GetDC(nullptr);
    if (screen == nullptr)
        return;
    long const screen_x = gdi_.GetDeviceCaps(screen, Gdi::logpixelsx);
    long const screen_y = gdi_.GetDeviceCaps(screen, Gdi::logpixelsy);
    dpi_x_ = screen_x;
    bmp_dpi_y_ = screen_y;
    if (dpi != 0) {
        dpi_x_ = static_cast<long>(dpi);
        bmp_dpi_y_ = screen_x == screen_y ? dpi_x_
                                         : Gdi::MulDiv(static_cast<int>(dpi), static_cast<int>(screen_y),
                                                       static_cast<int>(screen_x));
    }
    draw_dc_ = info_dc_ = gdi_.CreateCompatibleDC(screen);
    if (draw_dc_ != nullptr && bitmap_ == nullptr) {
        bitmap_ = gdi_.CreateCompatibleBitmap(screen, static_cast<int>(extension.right() - extension.left()),
                                              static_cast<int>(extension.bottom() - extension.top()));
        owned_ = bitmap_ != nullptr;
    }
    gdi_.ReleaseDC(nullptr, screen);
    if (draw_dc_ == nullptr)
        return;
    if (bitmap_ != nullptr)
        old_bitmap_ = gdi_.SelectObject(draw_dc_, bitmap_);
    place(0, 0, extension);
    screen_mapping(draw_dc_);
    gdi_.SetBrushOrgEx(draw_dc_, static_cast<int>(offset_.x), static_cast<int>(offset_.y), nullptr);
    init_dc();
}

Win_Bmp_Canvas::~Win_Bmp_Canvas()
{
    restore_dc();
    if (draw_dc_ == nullptr)
        return;
    if (old_bitmap_ != nullptr)
        gdi_.SelectObject(draw_dc_, old_bitmap_);
    if (owned_)
        gdi_.DeleteObject(bitmap_);
    gdi_.DeleteDC(draw_dc_);
}

Extent Win_Bmp_Canvas::dpi() { return Extent(dpi_x_, bmp_dpi_y_); }

long Win_Bmp_Canvas::dpi_y() { return bmp_dpi_y_; }

}  // namespace Tavi
