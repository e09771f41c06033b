// Win_Draw_Canvas: the paint pass and its double buffer.
#include "win/win_draw_canvas.h"

namespace Tavi {

Win_Draw_Canvas::Win_Draw_Canvas(Gdi::PAINTSTRUCT *paint, int x, int y, bool printing, Extension const &extension)
    : Win_Canvas(printing, extension), dc_(paint->hdc), paint_(paint->rcPaint)
{
    draw_dc_ = info_dc_ = dc_;
    place(x, y, extension);
    damage_ = Rect(paint_.top, paint_.left, paint_.bottom, paint_.right);
    long const width = paint_.right - paint_.left;
    long const height = paint_.bottom - paint_.top;
    // On the screen the pass is drawn off screen first; without the buffer it goes straight on.
    if (!printing && width > 0 && height > 0) {
        buffer_dc_ = gdi_.CreateCompatibleDC(dc_);
        if (buffer_dc_ != nullptr)
            buffer_ = gdi_.CreateCompatibleBitmap(dc_, static_cast<int>(width), static_cast<int>(height));
        if (buffer_ != nullptr)
            old_bitmap_ = gdi_.SelectObject(buffer_dc_, buffer_);
        if (old_bitmap_ == nullptr) {
            if (buffer_ != nullptr)
                gdi_.DeleteObject(buffer_);
            if (buffer_dc_ != nullptr)
                gdi_.DeleteDC(buffer_dc_);
            buffer_ = nullptr;
            buffer_dc_ = nullptr;
        } else {
            draw_dc_ = buffer_dc_;
            Point const corner(paint_.left, paint_.top);
            offset_ -= corner;
            damage_ -= corner;
        }
    }
    screen_mapping(dc_);
    if (draw_dc_ != dc_)
        screen_mapping(draw_dc_);
    gdi_.SetBrushOrgEx(draw_dc_, static_cast<int>(offset_.x), static_cast<int>(offset_.y), nullptr);
    init_dc();
}

Win_Draw_Canvas::Win_Draw_Canvas(Gdi::HDC dc, int x, int y, bool printing, Extension const &extension)
    : Win_Canvas(printing, extension), dc_(dc), paint_{0, 0, 0, 0}
{
    draw_dc_ = info_dc_ = dc_;
    place(x, y, extension);
    damage_ = Rect(y, x, y + extension.bottom() - extension.top(), x + extension.right() - extension.left());
    if (dc_ != nullptr) {
        screen_mapping(dc_);
        gdi_.SetBrushOrgEx(dc_, static_cast<int>(offset_.x), static_cast<int>(offset_.y), nullptr);
    }
    init_dc();
}

Win_Draw_Canvas::~Win_Draw_Canvas()
{
    restore_dc();
    if (buffer_dc_ != nullptr) {
        gdi_.SelectObject(buffer_dc_, old_bitmap_);
        gdi_.DeleteObject(buffer_);
        gdi_.DeleteDC(buffer_dc_);
    }
}

void Win_Draw_Canvas::flush_buff()
{
    if (buffer_dc_ == nullptr)
        return;
    screen_mapping(dc_);
    screen_mapping(buffer_dc_);
    gdi_.BitBlt(dc_, static_cast<int>(paint_.left), static_cast<int>(paint_.top),
                static_cast<int>(paint_.right - paint_.left), static_cast<int>(paint_.bottom - paint_.top), buffer_dc_,
                0, 0, Gdi::srccopy);
}

bool Win_Draw_Canvas::any_real_damage() const
{
    Gdi::RECT box{0, 0, 0, 0};
    int const kind = gdi_.GetClipBox(dc_, &box);
    return kind != Gdi::error_region && kind != Gdi::null_region;
}

// Asked of the context given to the constructor, in its own coordinates: the buffer's corner goes
// back on.
bool Win_Draw_Canvas::really_damaged(Rect const &r) const
{
    Gdi::RECT d = device_rect(r);
    if (buffer_dc_ != nullptr) {
        d.left += paint_.left;
        d.right += paint_.left;
        d.top += paint_.top;
        d.bottom += paint_.top;
    }
    return gdi_.RectVisible(dc_, &d);
}

bool Win_Draw_Canvas::really_damaged(Extension const &e) const
{
    Rect r = e.rect();
    Point translation(0, 0);
    translate(translation.x, translation.y);
    r -= translation;
    return really_damaged(r);
}

}  // namespace Tavi
