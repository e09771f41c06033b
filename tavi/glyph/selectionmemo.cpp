// SelectionMemo.
#include "tavi/glyph/selectionmemo.h"

namespace Tavi {

SelectionMemo::~SelectionMemo() = default;

}  // namespace Tavi
