// SceneImp.
#include "tavi/glyph/sceneimp.h"

#include "tavi/glyph/view.h"

namespace Tavi {

SceneImp::~SceneImp() = default;

void SceneImp::damage_all()
{
    long const n = view_count();
    for (long i = 0; i < n; ++i) {
        if (View *v = view_at(i))
            v->damage_all();
    }
}

}  // namespace Tavi
