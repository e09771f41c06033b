// TextGlyphContext.
#include "tavi/glyph/textglyphcontext.h"

namespace Tavi {

TextGlyphContext::~TextGlyphContext() = default;

}  // namespace Tavi
