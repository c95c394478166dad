// The playback speed slider: a track of 220 pixels with 1x in its middle.
//
// The place on the track chooses one of ten speeds; the record is the simulator's.
#pragma once

#include "platform/canvas.h"
#include "platform/events.h"

namespace morva {

inline constexpr int kSliderTrack = 220;  // pixels

// Speed 0 to 9 for a place on the track, 0 to 220; places outside count as its ends.
int SpeedIndexAt(int x);
// Place of the thumb for a speed.
int ThumbPlace(int index);

void PaintSpeedSlider(platform::Canvas& canvas);
bool SpeedSliderPointer(const platform::PointerEvent& event);
// Arrow keys one step, Home and End the ends. True: handled.
bool SpeedSliderKey(const platform::KeyEvent& key);

void RegisterSpeedSlider();
// The slider anew where the speed changed since the last call, and its tool tip.
void RefreshSpeedSlider();
void ResetSpeedSlider();

}  // namespace morva
