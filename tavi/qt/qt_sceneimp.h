// Qt_SceneImp: the scene implementation of a Qt program. It knows the views that show the scene (a
// host registers each one), keeps the scene's modified mark and tells the host when the mark
// changes, and reads the keyboard's modifiers from Qt.
//
// A host brings a scene up with it in this order:
//     scene.implementation(&scene_imp);
//     scene_imp.add_view(&view);
//     scroll_view->widget()->setupStage(&scene, &view);
// and takes the view out (remove_view) before the view goes.
#pragma once

#include <functional>
#include <vector>

#include "tavi/glyph/sceneimp.h"

namespace Tavi {

class Qt_SceneImp : public SceneImp
{
public:
    // Told the new state whenever the modified mark changes (not when it is set to what it was).
    using ModifiedListener = std::function<void(bool modified)>;

    Qt_SceneImp() = default;
    ~Qt_SceneImp() override;

    // The views are not owned. A view added twice is kept once; removing an unknown view does nothing.
    void add_view(View *view);
    void remove_view(View *view);

    long view_count() override;
    // Null past the end.
    View *view_at(long index) override;
    void modified(bool modified) override;
    bool modified() const override;
    // Every registered view, whole.
    void damage_all() override;
    // The keyboard as Qt sees it now.
    int modifier_state() override;

    void modified_listener(ModifiedListener listener) { listener_ = std::move(listener); }

private:
    std::vector<View *> views_;
    bool modified_ = false;
    ModifiedListener listener_;
};

}  // namespace Tavi
