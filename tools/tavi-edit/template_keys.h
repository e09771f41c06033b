// The templates a user can enter, as tavi-edit lists them in its Insert menu and its palette, the
// text of the key that enters each one, and the test that keeps the window's own shortcuts off the
// keys that the formula needs.
#pragma once

#include <QKeySequence>
#include <QString>

#include <vector>

namespace Tavi {
class MathEditScene;
class TemplateAccelerator;
class TemplateTable;
}  // namespace Tavi

namespace TaviEdit {

struct TemplateEntry
{
    QString name;     // the type name, which insertion asks for
    QString keyword;  // what the user reads
    QString key;      // the key that enters it, as a menu shows a shortcut; empty for none
};

// Every template of the scene's table that the user may enter, in the table's order.
std::vector<TemplateEntry> enterable_templates(Tavi::MathEditScene &scene);

// "/" for a typed character, "Ctrl+Shift+S" for a combination; empty for a void accelerator.
QString accelerator_text(Tavi::TemplateAccelerator const &accelerator);

// Whether the formula itself takes this key combination: a template is entered by it, or it is one
// of the library's own editing keys (copy, cut, paste). A window shortcut on such a key would take it
// away from the formula.
bool formula_takes(Tavi::TemplateTable const &table, QKeySequence const &keys);

}  // namespace TaviEdit
