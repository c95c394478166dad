// The head on the path: commands, the tick, the source line that goes with it.
#include "simulator/playback.h"

#include <algorithm>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/outlets.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "simulator/feature_lines.h"
#include "simulator/line_highlight.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view_switches.h"

namespace morva {

namespace {

constexpr int kTickMilliseconds = 16;
constexpr double kPointMilliseconds = 240.0;  // a segment at 1x takes fifteen ticks
struct Speed {
  double factor;
  const char16_t* word;
};
constexpr Speed kSpeeds[kSpeedCount] = {
    {0.125, u"0.125x"}, {0.25, u"0.25x"}, {0.5, u"0.5x"}, {1.0, u"1x"},   {2.0, u"2x"},
    {4.0, u"4x"},       {8.0, u"8x"},     {16.0, u"16x"}, {32.0, u"32x"}, {64.0, u"64x"},
};

// The first point, or nothing on an empty path.
std::int32_t HeadAtFirst(const OwnedPath& shown) { return shown.path.count > 0 ? 1 : 0; }

void StartPlayTimer() {
  platform::StartTimer(platform::kMainWindow, kTimerPlay, kTickMilliseconds);
}

// Every command of the player begins here.
const OwnedPath& BeginCommand() {
  const OwnedPath& shown = ShownPath();
  shown.play.segmentFraction = 0.0;
  if (shown.path.count < 2 && EditorPathIsShown()) RebuildToolpath();
  shown.play.headInUse = true;
  return shown;
}

// Play begins with the text as it stands. A path that lagged behind is built anew and played
// from its start, because what stood at the head may be elsewhere now.
void BeginPlay(const OwnedPath& shown) {
  if (EditorPathIsShown() && PathIsStale()) RebuildToolpath();
  shown.play.headInUse = true;
  if (shown.play.playHead >= shown.path.count) shown.play.playHead = HeadAtFirst(shown);
  shown.play.playing = true;
}

// The head shows its line of the program.
void FollowHead(const OwnedPath& shown) {
  const std::int32_t head = shown.play.playHead;
  if (head > 0 && head <= shown.path.count) {
    HighlightSourceLine(shown.path.points[head - 1].sourceLine);
  }
}

// A halted head at a new place, with its line shown.
void JumpTo(const OwnedPath& shown, std::int32_t head) {
  HaltPlayback(ShownOwner());
  shown.play.playHead = std::clamp(head, HeadAtFirst(shown), shown.path.count);
  if (EditorPathIsShown()) FollowHead(shown);
  platform::Repaint(kViewToolpath);
}

// The 1-based position of the first point of an operation, or of the first one behind it in the
// text; 0 for none. A run that jumps may come to later lines first, so its own ones count before.
std::int32_t HeadOf(const MotionPath& of, const FeatureLines& operation) {
  std::int32_t behind = 0;
  for (std::int32_t i = 0; i < of.count; ++i) {
    const std::int32_t line = of.points[i].sourceLine;
    if (line < operation.firstLine) continue;
    if (line <= operation.lastLine) return i + 1;
    if (behind == 0) behind = i + 1;
  }
  return behind;
}

// The head goes on by so many seconds of the machine.
void PassTime(const OwnedPath& shown, double seconds) {
  Playback& play = shown.play;
  while (play.playHead < shown.path.count) {
    const std::int32_t head = play.playHead;
    const double whole = head > 0 ? shown.seconds[head] - shown.seconds[head - 1] : 0;
    const double rest = whole * (1 - play.segmentFraction);
    if (seconds < rest) {
      play.segmentFraction += seconds / whole;
      return;
    }
    seconds -= rest;
    play.segmentFraction = 0;
    ++play.playHead;
  }
}

void StepOperation(int step) {
  const OwnedPath& shown = BeginCommand();
  const std::int32_t count = shown.path.count;
  if (count == 0) {
    JumpTo(shown, 0);
    return;
  }
  const std::int32_t at = std::clamp(shown.play.playHead, 1, count);
  const std::int32_t operations = EditorPathIsShown() ? featureLines.count : 0;
  const std::int32_t row =
      operations > 0 ? FeatureRowOfLine(shown.path.points[at - 1].sourceLine) : -1;
  // From outside all features a step back ends at the first point, a step on at feature 0.
  const std::int32_t target = row + step;
  if (target < 0) {
    JumpTo(shown, 1);
  } else if (target >= operations) {
    JumpTo(shown, count);
  } else {
    const std::int32_t head = HeadOf(shown.path, featureLines.rows[target]);
    JumpTo(shown, head > 0 ? head : step < 0 ? 1 : count);
  }
}

}  // namespace

double SpeedFactor(int index) { return kSpeeds[std::clamp(index, 0, kSpeedCount - 1)].factor; }

const char16_t* SpeedWord(int index) { return kSpeeds[std::clamp(index, 0, kSpeedCount - 1)].word; }

std::u16string SpeedHelp() {
  return std::u16string(u"Simulation speed: ") + SpeedWord(ShownPath().play.speedIndex) +
         u". Drag left to slow down, right to speed up.";
}

void PlayPause() {
  const OwnedPath& shown = BeginCommand();
  Playback& play = shown.play;
  if (!play.playing) {
    BeginPlay(shown);
    StartPlayTimer();
  } else {
    HaltPlayback(ShownOwner());
  }
  ShowPlayWords(!play.playing);
  platform::Repaint(kViewToolpath);
}

void Rewind() {
  constexpr std::int32_t kPointsBack = 10;
  const OwnedPath& shown = BeginCommand();
  JumpTo(shown, std::max(shown.play.playHead, kPointsBack + 1) - kPointsBack);
}

void FastForward() {
  const OwnedPath& shown = BeginCommand();
  Playback& play = shown.play;
  if (!play.playing) BeginPlay(shown);
  if (play.playHead >= shown.path.count) play.playHead = HeadAtFirst(shown);
  SetPlaySpeed(std::max(play.speedIndex, 3) + 1);
  platform::Repaint(kViewToolpath);
}

void StopPlayback() {
  const OwnedPath& shown = BeginCommand();
  HaltPlayback(ShownOwner());
  shown.play.playHead = HeadAtFirst(shown);
  platform::Repaint(kViewToolpath);
}

void GoToStart() { JumpTo(BeginCommand(), 1); }

void GoToEnd() {
  const OwnedPath& shown = BeginCommand();
  JumpTo(shown, shown.path.count);
}

void PreviousOperation() { StepOperation(-1); }

void NextOperation() { StepOperation(1); }

void SetPlaySpeed(int index) {
  Playback& play = ShownPath().play;
  play.speedIndex = std::clamp(index, 0, kSpeedCount - 1);
  if (play.playing) StartPlayTimer();
  ShowStatus(SpeedHelp());
}

void LoopFromStart(int speedIndex) {
  const OwnedPath& shown = ShownPath();
  Playback& play = shown.play;
  play.speedIndex = std::clamp(speedIndex, 0, kSpeedCount - 1);
  play.segmentFraction = 0.0;
  play.playHead = HeadAtFirst(shown);
  play.headInUse = true;
  play.loops = true;
  play.playing = true;
  StartPlayTimer();
  ShowPlayWords();
  platform::Repaint(kViewToolpath);
}

void PlayTick() {
  const OwnedPath& shown = ShownPath();
  Playback& play = shown.play;
  if (!play.playing) {
    HaltPlayback(ShownOwner());
    return;
  }
  const bool inEditor = EditorPathIsShown();
  const std::int32_t& count = shown.path.count;
  play.playHead = std::clamp(play.playHead, HeadAtFirst(shown), count);
  if (switches.playByTime && shown.seconds) {
    const std::int32_t before = play.playHead;
    PassTime(shown, SpeedFactor(play.speedIndex) * kTickMilliseconds / 1000);
    if (play.playHead != before) FollowHead(shown);
  } else {
    play.segmentFraction += SpeedFactor(play.speedIndex) * kTickMilliseconds / kPointMilliseconds;
    while (play.segmentFraction >= 1.0 && play.playHead < count) {
      play.segmentFraction -= 1.0;
      ++play.playHead;
      if (inEditor) FollowHead(shown);
    }
  }
  if (play.playHead >= count) {
    play.segmentFraction = 0.0;
    if (play.loops && count > 1) {
      play.playHead = 1;
    } else {
      HaltPlayback(ShownOwner());
    }
  }
  play.headInUse = true;
  platform::Repaint(kViewToolpath);
}

void TakeMeasurePick(std::int32_t point) {
  const OwnedPath& shown = ShownPath();
  if (point < 0 || point >= shown.path.count) return;
  MeasurePicks& picks = shown.picks;
  if (picks.a < 0 || picks.b >= 0) {
    picks.a = point;
    picks.b = -1;
  } else {
    picks.b = point;
  }
  platform::Repaint(kViewToolpath);
}

}  // namespace morva
