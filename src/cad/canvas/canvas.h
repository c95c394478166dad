// The CAD canvas as a whole: a view that paints and answers pointer, keys and timer.
#pragma once

namespace morva {

void RegisterCanvas();
void ResetCanvas();

}  // namespace morva
