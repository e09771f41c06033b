// Win_Client_Canvas: measuring and drawing on a window's client area outside a paint pass (a caret,
// a quick highlight). It takes the window's context for its life and gives it back at the end.
#pragma once

#include "win/win_canvas.h"

namespace Tavi {

class Win_Client_Canvas : public Win_Canvas
{
public:
    Win_Client_Canvas(Gdi::HWND window, Extension const &extension);
    ~Win_Client_Canvas() override;

    // The drawing now shows this extension: the offset and the damaged area follow.
    void change_viewport(Extension const &extension);

private:
    Gdi::HWND window_;
};

}  // namespace Tavi
