// Win_Draw_Canvas: one paint pass on a device context. Given a PAINTSTRUCT on the screen it draws
// into a memory bitmap of the painted area and copies that out at the end, so that the window never
// shows a half-drawn formula; printing, or given a bare context, it draws on the context itself.
#pragma once

#include "win/win_canvas.h"

namespace Tavi {

class Win_Draw_Canvas : public Win_Canvas
{
public:
    // The painted area is the PAINTSTRUCT's; the drawing's origin lands on (x, y) of the window.
    Win_Draw_Canvas(Gdi::PAINTSTRUCT *paint, int x, int y, bool printing, Extension const &extension);
    Win_Draw_Canvas(Gdi::HDC dc, int x, int y, bool printing, Extension const &extension);
    ~Win_Draw_Canvas() override;

    void flush_buff() override;
    // What the system says of the context: whether anything of it needs painting at all.
    bool any_real_damage() const override;
    bool really_damaged(Rect const &r) const override;
    bool really_damaged(Extension const &e) const override;

    bool buffered() const { return buffer_dc_ != nullptr; }

private:
    Gdi::HDC dc_;
    Gdi::RECT paint_;
    Gdi::HDC buffer_dc_ = nullptr;
    Gdi::HBITMAP buffer_ = nullptr;
    Gdi::HGDIOBJ old_bitmap_ = nullptr;
};

}  // namespace Tavi
