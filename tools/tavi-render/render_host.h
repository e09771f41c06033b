// The windowless host of tavi-render is the library's (tavi/qt/renderhost.h), which a host that
// draws formulas into files can use as well; these names keep the tool's code as it was.
#pragma once

#include "tavi/qt/renderhost.h"

namespace TaviRender {

using Tavi::RenderHost;
using Tavi::RenderScene;

}  // namespace TaviRender
