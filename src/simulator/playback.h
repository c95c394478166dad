// Playback, stepping, measure: the tool's head on the motion path.
//
// Commands change the records here; the view draws them. The path is never changed. What is said
// of path and head means those that the view shows (shown_path.h).
#pragma once

#include <cstdint>
#include <string>

#include "simulator/motion_path.h"

namespace morva {

struct Playback {
  bool playing = false;
  bool headInUse = false;       // draw only up to playHead
  std::int32_t playHead = 0;    // points drawn: 0 to playHead - 1
  double segmentFraction = 0;   // 0 to 1 along the next segment
  std::int32_t speedIndex = 3;  // 0 to 9
  bool loops = false;           // at the end it begins again
};
extern Playback playback;  // of the program's path

struct ViewSwitches {
  bool showRapids = false;
  bool showOverlap = false;
  bool showDrawingPaths = true;
  bool showCutSurface = true;
  bool skimCurrentDepthOnly = true;
  bool showExtents = false;
  bool measureMode = false;
  bool panMode = false;
};
extern ViewSwitches switches;

struct MeasurePicks {
  std::int32_t a = -1;
  std::int32_t b = -1;
};
extern MeasurePicks measure;  // of the program's path

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
void PlayTick();  // timer 3
// After an extraction: head at the end and not in use, nothing playing, picks cleared.
void ResetPlayback(PathOwner owner);
// Playing ends where the head stands; key and picks stay.
void HaltPlayback(PathOwner owner);
// Clears the picks of every path: the mode is one for all.
void ToggleMeasure();
void ToggleExtents();
void TogglePan();
// A pick at a path point, by its index.
void TakeMeasurePick(std::int32_t point);

// Makes a program line current in the feature list, the editor and the words view; negative
// lines are ignored.
void HighlightSourceLine(std::int32_t line);
// The feature that the program's playing path is in, 0 for none.
std::int32_t HighlightedFeature();
// No line and no feature is current any more: the path they belonged to is gone.
void ForgetHighlight();

void RegisterSimulatorCommands();

}  // namespace morva
