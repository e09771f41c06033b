// Scene: the document side of what is shown. It reaches the window system only through a SceneImp
// that the host supplies, and talks to its views through that implementation. Commands that the
// scene does not know are offered to each view in turn.
#pragma once

#include "tavi/glyph/inputhandler.h"

namespace Tavi {

class DamageAspect;
class SceneImp;
class View;

class Scene : public IInputHandler
{
public:
    Scene() = default;
    Scene(Scene const &) = delete;
    Scene &operator=(Scene const &) = delete;

    // Each view in turn, up to the first that answers true.
    bool do_command(Command *command) override;
    bool command_state(Command *command) override;
    ~Scene() override;
    // The plain scene takes no keys and no characters.
    bool key_down(Input::Key key, int modifiers) override;
    bool key_up(Input::Key key, int modifiers) override;
    bool enter_char(wchar character) override;
    int modifier_state() const override;
    // The subclass's hook for work that needs the implementation; called by implementation(SceneImp *).
    virtual void setup_stage();
    virtual long view_count();
    virtual View *view_at(long index);
    virtual void modified(bool modified);
    virtual bool modified() const;
    virtual void damage_all();
    // Tells every view.
    virtual void damage_content(DamageAspect const &aspect);
    virtual bool busy();

    // Joins the scene to its implementation (which it does not own), then runs setup_stage.
    void implementation(SceneImp *implementation);
    SceneImp *implementation() const { return implementation_; }

private:
    SceneImp *implementation_ = nullptr;
};

}  // namespace Tavi
