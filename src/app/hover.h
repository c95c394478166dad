// The hover hint: help for the control under the pointer, in the StatusLine and OutputLog.
#pragma once

namespace morva {

// One tick of timer 12. The log doubles as the help area: a hint replaces its whole content.
void HoverTick();
// A key was pressed: where the pointer rests on it, its hint comes no more, because what the
// press leads to is told in the same place.
void HoverPressed(int id);
void ResetHover();

}  // namespace morva
