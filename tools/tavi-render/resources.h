// Where tavi-render finds what it needs besides its input: the default setup file and the folder of
// the formula fonts, looked for next to the program, in the install's share folder, and in the
// source tree the program was built from, in that order.
#pragma once

#include <QString>
#include <QStringList>

namespace TaviRender {

// The places the default setup file is looked for, first first.
QStringList setup_file_candidates();
// The first candidate that exists, or an empty string.
QString default_setup_file();

// The folders that may hold the formula fonts, first first.
QStringList font_folder_candidates();
// Registers the fonts of the first candidate that holds any; false when none does.
bool register_formula_fonts();

}  // namespace TaviRender
