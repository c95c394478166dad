// The hover hint: help for the control under the pointer, in the status line and over the log.
//
// The help comes when the user has moved the pointer to a control and it lies on the same one at
// two ticks, so that a pointer which only passes covers nothing; where help stands already, that
// of the next control comes at once. It goes when the pointer leaves. A control that comes to lie
// under a pointer which nobody moves says nothing, nor does one whose hint was seen or which was
// pressed, until the pointer has been on another one.
#pragma once

namespace morva {

// One tick of timer 12, every 150 ms.
void HoverTick();
// Suppresses the hint of the key under the pointer after a press; its result stands in the same
// place.
void HoverPressed(int id);
void ResetHover();

}  // namespace morva
