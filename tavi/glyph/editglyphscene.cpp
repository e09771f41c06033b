// EditGlyphScene.
#include "tavi/glyph/editglyphscene.h"

#include "tavi/glyph/commands.h"

namespace Tavi {

EditGlyphScene::~EditGlyphScene() = default;

bool EditGlyphScene::key_down(Input::Key key, int modifiers)
{
    if (use_standard_accelerators()) {
        if (key == Input::key_v && modifiers == Input::modifier_control) {
            do_paste();
            return true;
        }
        if (key == Input::key_x && modifiers == Input::modifier_control) {
            do_cut();
            return true;
        }
        if (key == Input::key_delete && modifiers == 0) {
            do_delete();
            return true;
        }
    }
    return GlyphScene::key_down(key, modifiers);
}

bool EditGlyphScene::can_cut()
{
    return can_copy() && can_delete();
}

bool EditGlyphScene::can_paste()
{
    PasteCmd command;
    return command_state(&command) && command.enabled();
}

bool EditGlyphScene::can_delete()
{
    DeleteCmd command;
    return command_state(&command) && command.enabled();
}

bool EditGlyphScene::do_cut()
{
    if (!can_cut())
        return false;
    do_copy();
    return do_delete();
}

bool EditGlyphScene::do_paste()
{
    PasteCmd command;
    return do_command(&command);
}

bool EditGlyphScene::do_delete()
{
    DeleteCmd command;
    return do_command(&command);
}

}  // namespace Tavi
