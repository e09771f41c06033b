// Win_Bmp_Canvas: draws into a bitmap at a resolution of its own (the screen's, or the one given), in
// a memory context made like the screen's. Without a bitmap of the caller's it makes one of the
// extension's size and deletes it at the end.
#pragma once

#include "win/win_canvas.h"

#include <cstddef>

namespace Tavi {

class Win_Bmp_Canvas : public Win_Canvas
{
public:
    // dpi 0 keeps the screen's resolution.
    Win_Bmp_Canvas(bool printing, Extension const &extension, std::size_t dpi, Gdi::HBITMAP bitmap = nullptr);
    ~Win_Bmp_Canvas() override;

    // The bitmap stands selected in the canvas's context: drawing reaches it.
    bool valid() const { return old_bitmap_ != nullptr; }
    Gdi::HBITMAP bitmap() const { return bitmap_; }

    Extent dpi() override;
    long dpi_y() override;

private:
    Gdi::HBITMAP bitmap_;
    bool owned_ = false;
    Gdi::HGDIOBJ old_bitmap_ = nullptr;
    long dpi_x_ = 0;
    long bmp_dpi_y_ = 0;
};

}  // namespace Tavi
