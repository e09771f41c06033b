// MathString: the text of an atom, a wide string cut into runs, each run with a font class.
#pragma once

namespace Tavi {

class MathString
{
public:
    // The font class of a run. The numbers cross into setup data.
    enum Font {
        f_upright = 0,    // upright text
        f_text = 1,       // text: plain characters; the class that italic_fontstyle acts on
        f_symbol = 2,     // symbols
        f_extension = 3,  // math extension: the pieces of stretched symbols
        f_open_face = 4   // open face (double-struck letters)
    };
};

}  // namespace Tavi
