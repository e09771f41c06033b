// RenderSceneImp.
#include "tavi/glyph/rendersceneimp.h"

namespace Tavi {

RenderSceneImp::~RenderSceneImp() = default;

long RenderSceneImp::view_count()
{
    return view_ ? 1 : 0;
}

View *RenderSceneImp::view_at(long)
{
    return view_;
}

void RenderSceneImp::modified(bool) {}

bool RenderSceneImp::modified() const
{
    return false;
}

// Nothing is on screen, so nothing can be stale.
void RenderSceneImp::damage_all() {}

int RenderSceneImp::modifier_state()
{
    return 0;
}

void RenderSceneImp::view(View *view)
{
    view_ = view;
}

}  // namespace Tavi
