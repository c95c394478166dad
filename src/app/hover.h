// The hover hint: help for the control under the pointer, in the StatusLine and OutputLog.
#pragma once

namespace morva {

// One tick of timer 12. The log doubles as the help area: a hint replaces its whole content.
void HoverTick();
void ResetHover();

}  // namespace morva
