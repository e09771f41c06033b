// EditorScene and its selection: change notes for the window, and paste over the whole formula.
#include "tools/tavi-edit/editor_scene.h"

#include <typeinfo>

#include "tavi/glyph/commands.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/qt/qt_systemclipboard.h"

namespace TaviEdit {

using namespace Tavi;

void EditorScene::changed(ChangedAspect const &aspect)
{
    ScriptedFormulaScene::changed(aspect);
    if (listener_)
        listener_();
}

void EditorScene::restyled()
{
    formula()->invalidate_allocation();
    invalidate_selection_extension();
    damage_all();
    scroll_to_selection();
}

Selection *EditorScene::create_selection(long glyph_index) { return new EditorSelection(this, glyph_index); }

bool EditorSelection::pastes_over_expression(Command *command) const
{
    return command != nullptr && typeid(*command) == typeid(PasteCmd) && path_length() == 0;
}

bool EditorSelection::command_state(Command *command)
{
    import_with_own_templates();
    if (!pastes_over_expression(command))
        return MathSelection::command_state(command);
    command->enable(can_paste());
    return true;
}

// Pasted MathML and LaTeX are built from the templates of the window that pastes; every command
// passes here first, so the clipboard never holds the table of a window closed since.
void EditorSelection::import_with_own_templates()
{
    if (MathEditScene *scene = math_scene())
        Qt_SystemClipboard::instance().import_with(scene->template_table());
}

bool EditorSelection::do_command(Command *command)
{
    import_with_own_templates();
    if (!pastes_over_expression(command))
        return MathSelection::do_command(command);
    MathEditScene *scene = math_scene();
    if (scene == nullptr || !can_paste())
        return true;
    MathNode *node = MathNode::get_from_clipboard(*scene->template_table());
    if (node == nullptr)
        return true;
    // The same operation that typing over the whole expression runs, so it is undone the same way.
    run(new_replace_node_op(scene, node));
    node->unref();
    return true;
}

SelectionMemo *EditorSelection::memo() { return new EditorSelectionMemo(glyph_index(), path()); }

Selection *EditorSelectionMemo::revive(Selection *owner)
{
    auto *selection = new EditorSelection(owner, glyph_index());
    for (long index : path())
        selection->path_push_back(index);
    return selection;
}

}  // namespace TaviEdit
