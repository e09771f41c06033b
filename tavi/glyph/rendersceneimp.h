// RenderSceneImp: the scene implementation for drawing with no window: one view at most, never
// modified, no keyboard.
#pragma once

#include "tavi/glyph/sceneimp.h"

namespace Tavi {

class RenderSceneImp : public SceneImp
{
public:
    RenderSceneImp() = default;
    ~RenderSceneImp() override;

    // 1 once a view is set, else 0.
    long view_count() override;
    // The one view, whatever the index.
    View *view_at(long index) override;
    void modified(bool modified) override;
    bool modified() const override;
    void damage_all() override;
    int modifier_state() override;
    // The view is not owned.
    virtual void view(View *view);

    View *view() const { return view_; }

private:
    View *view_ = nullptr;
};

}  // namespace Tavi
