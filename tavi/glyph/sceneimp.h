// SceneImp: the host's side of a scene, which knows its views and the window system's state (the
// modified mark, the keyboard's modifiers).
#pragma once

namespace Tavi {

class Scene;
class View;

class SceneImp
{
public:
    SceneImp() = default;
    SceneImp(SceneImp const &) = delete;
    SceneImp &operator=(SceneImp const &) = delete;

    virtual ~SceneImp();
    virtual long view_count() = 0;
    virtual View *view_at(long index) = 0;
    virtual void modified(bool modified) = 0;
    virtual bool modified() const = 0;
    // Damages every view whole.
    virtual void damage_all();
    virtual int modifier_state() = 0;

    Scene *scene() const { return scene_; }
    // Set by Scene::implementation; the scene is not owned.
    void scene(Scene *scene) { scene_ = scene; }

private:
    Scene *scene_ = nullptr;
};

}  // namespace Tavi
