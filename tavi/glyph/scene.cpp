// Scene: everything that concerns the outside goes to the implementation; a scene without one has no
// views and is never modified.
#include "tavi/glyph/scene.h"

#include "tavi/glyph/sceneimp.h"
#include "tavi/glyph/view.h"

namespace Tavi {

Scene::~Scene() = default;

bool Scene::do_command(Command *command)
{
    long const n = view_count();
    for (long i = 0; i < n; ++i) {
        View *v = view_at(i);
        if (v && v->do_command(command))
            return true;
    }
    return false;
}

bool Scene::command_state(Command *command)
{
    long const n = view_count();
    for (long i = 0; i < n; ++i) {
        View *v = view_at(i);
        if (v && v->command_state(command))
            return true;
    }
    return false;
}

bool Scene::key_down(Input::Key, int)
{
    return false;
}

bool Scene::key_up(Input::Key, int)
{
    return false;
}

bool Scene::enter_char(wchar)
{
    return false;
}

int Scene::modifier_state() const
{
    return implementation_ ? implementation_->modifier_state() : 0;
}

void Scene::setup_stage() {}

long Scene::view_count()
{
    return implementation_ ? implementation_->view_count() : 0;
}

View *Scene::view_at(long index)
{
    return implementation_ ? implementation_->view_at(index) : nullptr;
}

void Scene::modified(bool modified)
{
    if (implementation_)
        implementation_->modified(modified);
}

bool Scene::modified() const
{
    return implementation_ ? implementation_->modified() : false;
}

void Scene::damage_all()
{
    if (implementation_)
        implementation_->damage_all();
}

void Scene::damage_content(DamageAspect const &aspect)
{
    long const n = view_count();
    for (long i = 0; i < n; ++i) {
        if (View *v = view_at(i))
            v->damage_content(aspect);
    }
}

bool Scene::busy()
{
    return false;
}

void Scene::implementation(SceneImp *implementation)
{
    implementation_ = implementation;
    if (implementation_)
        implementation_->scene(this);
    setup_stage();
}

}  // namespace Tavi
