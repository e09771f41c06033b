// Pieces shared by the tests of the SVG and EPS writers: a canvas whose header is written and whose
// later output is taken piece by piece, and the creation date made comparable. (The writers are
// rendered for real through the Qt-measured writers' sample drawing, tests/qt.)
#pragma once

#include "tavi/canvas/canvas.h"
#include "tavi/geometry/extension.h"

#include <regex>
#include <sstream>
#include <string>

namespace CanvasTest {

// `take` answers what was written since the last take, the header excepted.
template <class C>
struct Drawing
{
    explicit Drawing(Tavi::Extension const &extension) : canvas(out, extension)
    {
        canvas.put_header("Tavi tests");
        taken = out.str().size();
    }
    std::string take()
    {
        std::string const all = out.str();
        std::string const part = all.substr(taken);
        taken = all.size();
        return part;
    }

    std::ostringstream out;
    C canvas;
    std::size_t taken = 0;
};

// The asctime date varies: a date of the form "Www Mmm dd hh:mm:ss yyyy" becomes DATE. A text of
// another form stays, and fails the comparison.
inline std::string with_fixed_date(std::string const &text)
{
    static std::regex const date("CreationDate: [A-Z][a-z]{2} [A-Z][a-z]{2} [ 0-9][0-9] [0-9]{2}:[0-9]{2}:[0-9]{2} [0-9]{4}");
    return std::regex_replace(text, date, "CreationDate: DATE", std::regex_constants::format_first_only);
}

}  // namespace CanvasTest
