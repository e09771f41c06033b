// What the fuzzers share: a scene with the default setup file, the example formulas, and the
// typesetting of a scene's formula on a fixed gauge, as a view would lay it out and draw it.
#pragma once

#include <string>
#include <vector>

namespace Tavi {
class FormulaScene;
}

namespace TaviFuzz {

// Sends the library's messages to nowhere: a fuzzer's output is its findings.
void quiet();
// A scene with the default setup file, made once.
Tavi::FormulaScene &default_scene();
// The documents of data/examples.
std::vector<std::string> const &examples();
// Measures, places and draws the formula: on one line, then broken to a narrow width.
void typeset(Tavi::FormulaScene &scene);

}  // namespace TaviFuzz
