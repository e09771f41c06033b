// MathEditScene: every call is a command sent down the scene's chain.
#include "tavi/editing/matheditscene.h"

#include "tavi/glyph/commands.h"
#include "tavi/kxt/operation.h"

namespace Tavi {

namespace {

// The query pattern of the can_ calls: a fresh, disabled command asked down the chain.
template <class C, class... Args>
bool ask(Scene &scene, Args... args)
{
    C command(args...);
    return scene.command_state(&command) && command.enabled();
}

template <class C, class... Args>
bool run(Scene &scene, Args... args)
{
    C command(args...);
    return scene.do_command(&command);
}

// A toggle answers its state through the command; unhandled, the state is off.
template <class C>
bool ask_toggle(Scene &scene, bool &state)
{
    state = false;
    C command(false);
    if (!scene.command_state(&command))
        return false;
    state = command.is_on();
    return command.enabled();
}

}  // namespace

MathEditScene::MathEditScene() : table_(this) {}

MathEditScene::~MathEditScene()
{
    // The selection refers to nodes whose templates the table owns: it goes first.
    selection(nullptr);
}

TemplateTable *MathEditScene::template_table() { return &table_; }

MathStyle *MathEditScene::math_style() { return &style_; }

bool MathEditScene::do_insert_overlay(wchar const *name) { return run<InsertOverlayCmd>(*this, name); }

bool MathEditScene::do_insert_tabular_overlay(wchar const *name, std::size_t rows, std::size_t columns)
{
    return run<InsertTabularOverlayCmd>(*this, name, rows, columns);
}

bool MathEditScene::do_insert_symbol_overlay(wchar const *name) { return run<InsertSymbolOverlayCmd>(*this, name); }

bool MathEditScene::do_insert_apply_overlay(wchar const *function)
{
    return run<InsertApplyOverlayCmd>(*this, function);
}

bool MathEditScene::do_select_expression() { return run<SelectExprCmd>(*this); }

bool MathEditScene::do_next_operand() { return run<SelectNextCmd>(*this); }

bool MathEditScene::do_prev_operand() { return run<SelectPreviousCmd>(*this); }

bool MathEditScene::do_insert_char_by_name(wchar const *name) { return run<InsertCharByNameCmd>(*this, name); }

bool MathEditScene::do_insert_number(wchar const *text) { return run<InsertNumberCmd>(*this, text); }

bool MathEditScene::do_toggle_read_only() { return run<ToggleReadOnlyCmd>(*this, false); }

bool MathEditScene::do_toggle_inherit_read_only() { return run<ToggleInheritReadOnlyCmd>(*this, false); }

bool MathEditScene::can_insert_overlay() { return ask<InsertOverlayCmd>(*this, u""); }

bool MathEditScene::can_insert_symbol_overlay(wchar const *name)
{
    if (name == nullptr || name[0] == 0)
        return false;
    return ask<InsertSymbolOverlayCmd>(*this, name);
}

bool MathEditScene::can_insert_apply_overlay() { return ask<InsertApplyOverlayCmd>(*this, u""); }

bool MathEditScene::can_select_expression() { return ask<SelectExprCmd>(*this); }

bool MathEditScene::can_insert_char_by_name() { return ask<InsertCharByNameCmd>(*this, u""); }

bool MathEditScene::can_insert_number() { return ask<InsertNumberCmd>(*this, u""); }

bool MathEditScene::can_toggle_read_only(bool &state) { return ask_toggle<ToggleReadOnlyCmd>(*this, state); }

bool MathEditScene::can_toggle_inherit_read_only(bool &state)
{
    return ask_toggle<ToggleInheritReadOnlyCmd>(*this, state);
}

TemplatePosition *MathEditScene::get_first_overlay_info_position()
{
    return template_table()->get_first_template_info_position();
}

void MathEditScene::get_next_overlay_info(MathOverlayTemplateInfo &info, TemplatePosition *&position)
{
    template_table()->get_next_template_info(info, position);
}

void MathEditScene::record_operation(Kxt::Operation *op, bool, EditKind) { delete op; }

}  // namespace Tavi
