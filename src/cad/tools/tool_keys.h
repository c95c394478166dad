// The keys of the drawing tools, their methods and Snap: what a press starts.
#pragma once

namespace morva {

void RegisterToolKeys();

}  // namespace morva
