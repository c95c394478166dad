// The hover hint: help for the control under the pointer, in the StatusLine and OutputLog.
#pragma once

namespace morva {

// The playback bar speaks with one voice: its keys and its slider share this hint.
inline constexpr const char16_t* kPlaybackHint =
    u"Playback: start | previous operation | rewind | play/pause | fast forward | next operation "
    u"| end | stop. Slider: slower / faster simulation (0.125x\u201364x); center = 1x.";

// One tick of timer 12. The log doubles as the help area: a hint replaces its whole content.
void HoverTick();
// A key was pressed: where the pointer rests on it, its hint comes no more, because what the
// press leads to is told in the same place.
void HoverPressed(int id);
void ResetHover();

}  // namespace morva
