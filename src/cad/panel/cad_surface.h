// The workspace as a surface of the window: what it is told while it is up, and what reaches the
// tools from any of its controls.
#pragma once

namespace morva {

void RegisterCadSurface();  // the window of the workspace too

}  // namespace morva
