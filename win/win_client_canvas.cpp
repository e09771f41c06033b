// Win_Client_Canvas: the window's own context.
#include "win/win_client_canvas.h"

namespace Tavi {

Win_Client_Canvas::Win_Client_Canvas(Gdi::HWND window, Extension const &extension)
    : Win_Canvas(false, extension), window_(window)
{
    draw_dc_ = info_dc_ = gdi_.GetDC(window);
    place(0, 0, extension);
    if (draw_dc_ != nullptr) {
        screen_mapping(draw_dc_);
        gdi_.SetBrushOrgEx(draw_dc_, static_cast<int>(offset_.x), static_cast<int>(offset_.y), nullptr);
    }
    init_dc();
}

Win_Client_Canvas::~Win_Client_Canvas()
{
    restore_dc();
    if (draw_dc_ != nullptr)
        gdi_.ReleaseDC(window_, draw_dc_);
}

void Win_Client_Canvas::change_viewport(Extension const &extension)
{
    place(0, 0, extension);
    damage_.bottom(extension.bottom() - extension.top());
    damage_.right(extension.right() - extension.left());
}

}  // namespace Tavi
