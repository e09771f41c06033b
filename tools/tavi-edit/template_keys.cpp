// Listing the enterable templates, and the keys in and out of the library's numbering.
#include "tools/tavi-edit/template_keys.h"

#include "tavi/editing/matheditscene.h"
#include "tavi/glyph/input.h"
#include "tavi/math/templates/mathoverlaytemplateinfo.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/templateaccelerator.h"
#include "tavi/math/templates/templatetable.h"
#include "tavi/qt/qt_viewimp.h"

namespace TaviEdit {

using namespace Tavi;

namespace {

QString from_wide(wchar const *text) { return text ? QString::fromUtf16(text) : QString(); }

// The library's key numbers that have no Qt key of the same number.
struct KeyName
{
    int key;
    Qt::Key qt_key;
};

KeyName const named_keys[] = {
    {Input::key_backspace, Qt::Key_Backspace},
    {Input::key_tab, Qt::Key_Tab},
    {Input::key_return, Qt::Key_Return},
    {Input::key_escape, Qt::Key_Escape},
    {Input::key_space, Qt::Key_Space},
    {Input::key_page_up, Qt::Key_PageUp},
    {Input::key_page_down, Qt::Key_PageDown},
    {Input::key_end, Qt::Key_End},
    {Input::key_home, Qt::Key_Home},
    {Input::key_left, Qt::Key_Left},
    {Input::key_up, Qt::Key_Up},
    {Input::key_right, Qt::Key_Right},
    {Input::key_down, Qt::Key_Down},
    {Input::key_insert, Qt::Key_Insert},
    {Input::key_delete, Qt::Key_Delete},
    {Input::key_multiply, Qt::Key_Asterisk},
    {Input::key_add, Qt::Key_Plus},
    {Input::key_subtract, Qt::Key_Minus},
    {Input::key_decimal, Qt::Key_Period},
    {Input::key_divide, Qt::Key_Slash},
};

// The combinations the scene answers itself, before any template is asked.
struct EditingKey
{
    Input::Key key;
    int modifiers;
};

EditingKey const editing_keys[] = {
    {Input::key_c, Input::modifier_control},  // copy
    {Input::key_v, Input::modifier_control},  // paste
    {Input::key_x, Input::modifier_control},  // cut
};

Qt::Key qt_key_of(int key)
{
    if ((key >= Input::key_0 && key <= Input::key_9) || (key >= Input::key_a && key <= Input::key_z))
        return static_cast<Qt::Key>(key);  // digits and capitals share their numbers
    if (key >= Input::key_f1 && key <= Input::key_f12)
        return static_cast<Qt::Key>(Qt::Key_F1 + (key - Input::key_f1));
    for (KeyName const &k : named_keys)
        if (k.key == key)
            return k.qt_key;
    return Qt::Key_unknown;
}

}  // namespace

QString accelerator_text(TemplateAccelerator const &accelerator)
{
    if (accelerator.is_void())
        return QString();
    if (accelerator.is_character())
        return QString(QChar(static_cast<char16_t>(accelerator.key())));
    Qt::Key const key = qt_key_of(accelerator.key());
    if (key == Qt::Key_unknown)
        return QString();
    Qt::KeyboardModifiers modifiers;
    if (accelerator.modifiers() & Input::modifier_control)
        modifiers |= Qt::ControlModifier;
    if (accelerator.modifiers() & Input::modifier_shift)
        modifiers |= Qt::ShiftModifier;
    return QKeySequence(QKeyCombination(modifiers, key)).toString(QKeySequence::NativeText);
}

std::vector<TemplateEntry> enterable_templates(MathEditScene &scene)
{
    std::vector<TemplateEntry> entries;
    TemplateTable const &table = *scene.template_table();
    TemplatePosition *position = scene.get_first_overlay_info_position();
    while (position != nullptr) {
        MathOverlayTemplateInfo info;
        scene.get_next_overlay_info(info, position);
        if (!info.can_enter || info.name == nullptr || info.name[0] == 0)
            continue;
        TemplateEntry entry{from_wide(info.name), from_wide(info.keyword), QString()};
        if (entry.keyword.isEmpty())
            entry.keyword = entry.name;
        if (MathTemplate const *templ = table.get_template(info.name))
            entry.key = accelerator_text(templ->accelerator());
        entries.push_back(entry);
    }
    return entries;
}

bool formula_takes(TemplateTable const &table, QKeySequence const &keys)
{
    if (keys.isEmpty())
        return false;
    QKeyCombination const combination = keys[0];
    // Alt and meta never reach the library: a combination with them is the window's.
    if (combination.keyboardModifiers() & (Qt::AltModifier | Qt::MetaModifier))
        return false;
    Input::Key const key = translate_key(combination.key());
    int const modifiers = modifier_state(combination.keyboardModifiers());
    if (key == Input::key_none)
        return false;
    for (EditingKey const &k : editing_keys)
        if (k.key == key && k.modifiers == modifiers)
            return true;
    return table.get_template(TemplateAccelerator(key, modifiers)) != nullptr;
}

}  // namespace TaviEdit
