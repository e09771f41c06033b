// Running a whole script on a scene: the script sees the scene's document as the global
// `document`, and console.log for messages. The script runs in a fresh engine of its own, and
// whatever ids it still holds at its end are given back.
#pragma once

#include <QString>

namespace Tavi {

class FlatDOMMixin;
class FormulaScene;
class ScriptedFormulaScene;

// False when the script doesn't parse or ends in an uncaught exception; `error` is then
// "file:line: name: message", with " (code N)" behind a DOMException.
bool run_script(FlatDOMMixin &dom, QString const &program, QString const &file_name, QString &error);
// The same for a UTF-8 file; a file that can't be read gives false too.
bool run_script_file(FlatDOMMixin &dom, QString const &path, QString &error);
// For a host that holds its scene as a FormulaScene: only a ScriptedFormulaScene can be scripted,
// any other gives false with a message.
bool run_script_file(FormulaScene &scene, QString const &path, QString &error);
bool run_script_file(ScriptedFormulaScene &scene, QString const &path, QString &error);

}  // namespace Tavi
