// The command classes. Their destructors are defined here so that each class's type information
// lives once, in the library: handlers compare exact classes, also across module boundaries.
#include "tavi/glyph/commands.h"

namespace Tavi {

UndoCmd::~UndoCmd() = default;
RedoCmd::~RedoCmd() = default;
CopyCmd::~CopyCmd() = default;
PasteCmd::~PasteCmd() = default;
DeleteCmd::~DeleteCmd() = default;
SelectAllCmd::~SelectAllCmd() = default;
SelectOutCmd::~SelectOutCmd() = default;
SelectInCmd::~SelectInCmd() = default;
SelectNextCmd::~SelectNextCmd() = default;
SelectPreviousCmd::~SelectPreviousCmd() = default;
SelectExprCmd::~SelectExprCmd() = default;
ToggleReadOnlyCmd::~ToggleReadOnlyCmd() = default;
ToggleInheritReadOnlyCmd::~ToggleInheritReadOnlyCmd() = default;
InsertOverlayCmd::~InsertOverlayCmd() = default;
InsertSymbolOverlayCmd::~InsertSymbolOverlayCmd() = default;
InsertCharByNameCmd::~InsertCharByNameCmd() = default;
InsertNumberCmd::~InsertNumberCmd() = default;
InsertApplyOverlayCmd::~InsertApplyOverlayCmd() = default;
InsertTabularOverlayCmd::~InsertTabularOverlayCmd() = default;

}  // namespace Tavi
