// Qt_SceneImp: the registered views, the modified mark, and the keyboard state from Qt.
#include "tavi/qt/qt_sceneimp.h"

#include <algorithm>

#include "tavi/glyph/view.h"
#include "tavi/qt/qt_viewimp.h"

namespace Tavi {

Qt_SceneImp::~Qt_SceneImp() = default;

void Qt_SceneImp::add_view(View *view)
{
    if (view != nullptr && std::find(views_.begin(), views_.end(), view) == views_.end())
        views_.push_back(view);
}

void Qt_SceneImp::remove_view(View *view) { views_.erase(std::remove(views_.begin(), views_.end(), view), views_.end()); }

long Qt_SceneImp::view_count() { return static_cast<long>(views_.size()); }

View *Qt_SceneImp::view_at(long index)
{
    if (index < 0 || index >= view_count())
        return nullptr;
    return views_[static_cast<std::size_t>(index)];
}

void Qt_SceneImp::modified(bool modified)
{
    bool const was = modified_;
    modified_ = modified;
    // Every edit sets the mark again; the host wants to hear of real changes only (a title bar).
    if (was != modified && listener_)
        listener_(modified);
}

bool Qt_SceneImp::modified() const { return modified_; }

void Qt_SceneImp::damage_all()
{
    for (View *view : views_)
        view->damage_all();
}

int Qt_SceneImp::modifier_state() { return Tavi::modifier_state(); }

}  // namespace Tavi
