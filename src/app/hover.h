// The hover hint: help for the control under the pointer, in the StatusLine and OutputLog.
#pragma once

namespace morva {

// One tick of timer 12. The log doubles as the help area: a hint replaces its whole content.
void HoverTick();
// Suppresses the hint of the key under the pointer after a press; its result stands in the same
// place.
void HoverPressed(int id);
void ResetHover();

}  // namespace morva
