// The head on the path: commands, the tick, the source line that goes with it.
#include "simulator/playback.h"

#include <algorithm>
#include <string>

#include "app/app_state.h"
#include "app/command_ids.h"
#include "app/outlets.h"
#include "documents/feature_operations.h"
#include "documents/insertion.h"
#include "platform/control.h"
#include "platform/editor.h"
#include "platform/listing.h"
#include "platform/timer.h"
#include "platform/window.h"
#include "simulator/motion_path.h"
#include "simulator/shown_path.h"

namespace morva {

Playback playback;
ViewSwitches switches;
MeasurePicks measure;

namespace {

constexpr int kTickMilliseconds = 16;
constexpr double kPointMilliseconds = 240.0;  // a segment at 1x takes fifteen ticks
constexpr platform::Colour kLineBand = platform::Rgb(0x0A, 0x3A, 0x52);

struct Speed {
  double factor;
  const char16_t* word;
};
constexpr Speed kSpeeds[kSpeedCount] = {
    {0.125, u"0.125x"}, {0.25, u"0.25x"}, {0.5, u"0.5x"}, {1.0, u"1x"},   {2.0, u"2x"},
    {4.0, u"4x"},       {8.0, u"8x"},     {16.0, u"16x"}, {32.0, u"32x"}, {64.0, u"64x"},
};

std::int32_t highlightedFeature = 0;

// The first point, or nothing on an empty path.
std::int32_t HeadAtFirst(const OwnedPath& shown) { return shown.path.count > 0 ? 1 : 0; }

void StartPlayTimer() {
  platform::StartTimer(platform::kMainWindow, kTimerPlay, kTickMilliseconds);
}

// Lines, features and operations are those of the program; other paths have none in the editor.
bool ProgramIsShown() { return ShownOwner() == PathOwner::Program; }

// Every command of the player begins here.
const OwnedPath& BeginCommand() {
  const OwnedPath& shown = ShownPath();
  shown.play.segmentFraction = 0.0;
  if (shown.path.count < 2 && ProgramIsShown()) RebuildToolpath();
  shown.play.headInUse = true;
  return shown;
}

// The program's head shows its line.
void FollowHead() {
  if (playback.playHead > 0 && playback.playHead <= path.count) {
    HighlightSourceLine(path.points[playback.playHead - 1].sourceLine);
  }
}

// A halted head at a new place, with its line shown.
void JumpTo(const OwnedPath& shown, std::int32_t head) {
  HaltPlayback(ShownOwner());
  shown.play.playHead = std::clamp(head, HeadAtFirst(shown), shown.path.count);
  if (ProgramIsShown()) FollowHead();
  platform::Repaint(kViewToolpath);
}

// The 1-based position of the program's first point at or past a line, 0 for none.
std::int32_t HeadAtLine(std::int32_t line) {
  for (std::int32_t i = 0; i < path.count; ++i) {
    if (path.points[i].sourceLine >= line) return i + 1;
  }
  return 0;
}

void StepOperation(int step) {
  const OwnedPath& shown = BeginCommand();
  const std::int32_t count = shown.path.count;
  if (count == 0) {
    JumpTo(shown, 0);
    return;
  }
  const std::int32_t at = std::clamp(shown.play.playHead, 1, count);
  const std::int32_t operations = ProgramIsShown() ? featureLines.count : 0;
  const std::int32_t row =
      operations > 0 ? FeatureRowOfLine(shown.path.points[at - 1].sourceLine) : -1;
  // From outside all features a step back ends at the first point, a step on at feature 0.
  const std::int32_t target = row + step;
  if (target < 0) {
    JumpTo(shown, 1);
  } else if (target >= operations) {
    JumpTo(shown, count);
  } else {
    const std::int32_t head = HeadAtLine(featureLines.rows[target].firstLine);
    JumpTo(shown, head > 0 ? head : step < 0 ? 1 : count);
  }
}

// The name box follows, or RENAME would give this block the name of the one before.
void SelectPlayedRow(std::int32_t id) {
  const int rows = platform::RowCount(kIdFeatureList);
  for (int row = 0; row < rows; ++row) {
    if (platform::RowData(kIdFeatureList, row) == id) {
      platform::SelectRow(kIdFeatureList, row);
      UpdateFeatureCaptions();
      return;
    }
  }
}

// The text may have become shorter than the path remembers it.
void MarkInEditor(std::int32_t line) {
  if (line >= platform::EditorLineCount(kIdEditor)) {
    platform::MarkEditorLine(kIdEditor, -1, kLineBand);
    return;
  }
  platform::MarkEditorLine(kIdEditor, line, kLineBand);
  const int top = platform::FirstVisibleLine(kIdEditor);
  const int shown = platform::VisibleLineCount(kIdEditor);
  if (line >= top && line < top + shown) return;
  platform::ScrollToLine(kIdEditor, std::max(0, line - shown / 2));
  platform::Repaint(kViewGutter);
}

void SelectInWords(std::int32_t line) {
  if (!app.commandWordsActive || line >= platform::EditorLineCount(kIdWordsEditor)) return;
  const int from = platform::EditorLineStart(kIdWordsEditor, line);
  const int to = from + platform::EditorLineLength(kIdWordsEditor, line);
  platform::SetEditorSelection(kIdWordsEditor, {from, to});
  platform::ScrollCaretIntoView(kIdWordsEditor);
}

}  // namespace

double SpeedFactor(int index) { return kSpeeds[std::clamp(index, 0, kSpeedCount - 1)].factor; }

const char16_t* SpeedWord(int index) { return kSpeeds[std::clamp(index, 0, kSpeedCount - 1)].word; }

std::u16string SpeedHelp() {
  return std::u16string(u"Simulation speed: ") + SpeedWord(ShownPath().play.speedIndex) +
         u". Drag left to slow down, right to speed up.";
}

// The timer runs for the path that is shown.
void HaltPlayback(PathOwner owner) {
  OwnedBy(owner).play.playing = false;
  if (owner == ShownOwner()) platform::StopTimer(platform::kMainWindow, kTimerPlay);
}

void ResetPlayback(PathOwner owner) {
  const OwnedPath& owned = OwnedBy(owner);
  HaltPlayback(owner);
  owned.play.headInUse = false;
  owned.play.playHead = owned.path.count;
  owned.play.segmentFraction = 0.0;
  owned.picks = MeasurePicks{};
}

void PlayPause() {
  const OwnedPath& shown = BeginCommand();
  Playback& play = shown.play;
  play.playing = !play.playing;
  if (play.playing) {
    if (play.playHead >= shown.path.count) play.playHead = HeadAtFirst(shown);
    StartPlayTimer();
  } else {
    HaltPlayback(ShownOwner());
  }
  platform::SetText(kIdPlay, play.playing ? u"Pause" : u"Play");
  platform::Repaint(kViewToolpath);
}

void Rewind() {
  constexpr std::int32_t kPointsBack = 10;
  const OwnedPath& shown = BeginCommand();
  HaltPlayback(ShownOwner());
  const std::int32_t back = std::max(shown.play.playHead, kPointsBack + 1) - kPointsBack;
  shown.play.playHead = std::min(back, shown.path.count);
  platform::Repaint(kViewToolpath);
}

void FastForward() {
  const OwnedPath& shown = BeginCommand();
  Playback& play = shown.play;
  if (play.playHead >= shown.path.count) play.playHead = HeadAtFirst(shown);
  play.playing = true;
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

void PlayTick() {
  const OwnedPath& shown = ShownPath();
  Playback& play = shown.play;
  if (!play.playing) {
    HaltPlayback(ShownOwner());
    return;
  }
  const bool inEditor = ProgramIsShown();
  const std::int32_t& count = shown.path.count;
  play.playHead = std::clamp(play.playHead, HeadAtFirst(shown), count);
  play.segmentFraction += SpeedFactor(play.speedIndex) * kTickMilliseconds / kPointMilliseconds;
  while (play.segmentFraction >= 1.0 && play.playHead < count) {
    play.segmentFraction -= 1.0;
    ++play.playHead;
    if (inEditor) FollowHead();
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

void ToggleMeasure() {
  switches.measureMode = !switches.measureMode;
  for (const OwnedPath& owned : OwnedPaths()) owned.picks = MeasurePicks{};
  platform::Repaint(kViewToolpath);
}

void ToggleExtents() {
  switches.showExtents = !switches.showExtents;
  platform::Repaint(kViewToolpath);
}

void TogglePan() {
  switches.panMode = !switches.panMode;
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

void HighlightSourceLine(std::int32_t line) {
  if (line < 0) return;
  const int row = FeatureRowOfLine(line);
  const std::int32_t id = row < 0 ? 0 : featureLines.rows[row].id;
  if (id != highlightedFeature) {
    highlightedFeature = id;
    if (id != 0 && editLink.kind == 0) SelectPlayedRow(id);
    platform::Repaint(kIdFeatureList);
  }
  MarkInEditor(line);
  SelectInWords(line);
}

std::int32_t HighlightedFeature() { return highlightedFeature; }

void ForgetHighlight() {
  platform::MarkEditorLine(kIdEditor, -1, kLineBand);
  if (highlightedFeature == 0) return;
  highlightedFeature = 0;
  platform::Repaint(kIdFeatureList);
}

}  // namespace morva
