// Making the fonts that formulas name known to Qt without installing anything: the generated
// "KMT Math Ext" and "KMT Math Open Face" are registered from a folder, and the proprietary families
// of the text and symbol classes are pointed at their free, metric-compatible replacements where
// the system's font configuration doesn't do that already.
#pragma once

#include <QString>

namespace Tavi {

// Registers every TrueType and OpenType file of `folder` (not its subfolders) with the
// application's font database, then calls `substitute_free_faces`. A file that an earlier call
// registered is not registered again. Answers how many files the database holds from this folder
// after the call; 0 for a folder that doesn't exist or holds no font Qt accepts. Needs a
// QGuiApplication, and runs on its thread.
int register_fonts(QString const &folder);

// For each family that formulas name and free systems lack ("Times New Roman", "Symbol"), unless it
// has substitutes already: when Qt knows no font of that name and has its free replacement, the
// replacement becomes its first substitute; a registered supplement ("KMT Text Supplement", the
// characters of the text class that Liberation Serif lacks) comes next, where Qt looks for glyphs
// the face is missing. Answers how many substitutes were added.
int substitute_free_faces();

// The free face that stands in for a family that formulas name, or an empty string when the
// family needs no replacement.
QString free_face_for(QString const &family);

}  // namespace Tavi
