// Playback, stepping, measure: the tool's head on the motion path.
//
// Commands change the records here; the view draws them. The path is never changed. What is said
// of path and head means those that the view shows (shown_path.h).
#pragma once

#include <cstdint>
#include <string>

namespace morva {

inline constexpr int kSpeedCount = 10;
double SpeedFactor(int index);  // index clamped to 0 to 9
const char16_t* SpeedWord(int index);
// The speed that holds and how the slider changes it: tool tip and status line.
std::u16string SpeedHelp();

void PlayPause();
void Rewind();
void FastForward();
void StopPlayback();
void GoToStart();
void GoToEnd();
void PreviousOperation();
void NextOperation();
void SetPlaySpeed(int index);
// The shown path plays from its first point, and begins again at its end until it is left or read
// anew. The status line says nothing of the speed.
void LoopFromStart(int speedIndex);
void PlayTick();  // timer 3
// A pick at a path point, by its index.
void TakeMeasurePick(std::int32_t point);

void RegisterSimulatorCommands();

}  // namespace morva
