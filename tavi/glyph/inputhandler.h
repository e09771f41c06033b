// IInputHandler: a command handler that also takes keys and characters. Scenes, views and
// selections are input handlers, and a key runs down the same chain as a command.
#pragma once

#include "tavi/glyph/commandhandler.h"
#include "tavi/glyph/input.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class IInputHandler : public ICommandHandler
{
public:
    // Each answers whether the input was taken.
    virtual bool key_down(Input::Key key, int modifiers) = 0;
    virtual bool key_up(Input::Key key, int modifiers) = 0;
    virtual bool enter_char(wchar character) = 0;
    // The modifier word (Input::modifier_shift, Input::modifier_control) for the present state.
    virtual int modifier_state() const = 0;
};

}  // namespace Tavi
