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
std::int32_t HeadAtFirst() { return path.count > 0 ? 1 : 0; }

void StartPlayTimer() {
  platform::StartTimer(platform::kMainWindow, kTimerPlay, kTickMilliseconds);
}

// Every command of the player begins here.
void BeginCommand() {
  playback.segmentFraction = 0.0;
  if (path.count < 2) RebuildToolpath();
  playback.headInUse = true;
}

void FollowHead() {
  if (playback.playHead > 0 && playback.playHead <= path.count) {
    HighlightSourceLine(path.points[playback.playHead - 1].sourceLine);
  }
}

// A halted head at a new place, with its line shown.
void JumpTo(std::int32_t head) {
  HaltPlayback();
  playback.playHead = std::clamp(head, HeadAtFirst(), path.count);
  FollowHead();
  platform::Repaint(kViewToolpath);
}

// The 1-based position of the first point at or past a line, 0 for none.
std::int32_t HeadAtLine(std::int32_t line) {
  for (std::int32_t i = 0; i < path.count; ++i) {
    if (path.points[i].sourceLine >= line) return i + 1;
  }
  return 0;
}

void StepOperation(int step) {
  BeginCommand();
  if (path.count == 0) {
    JumpTo(0);
    return;
  }
  const std::int32_t at = std::clamp(playback.playHead, 1, path.count);
  // From outside all features a step back ends at the first point, a step on at feature 0.
  const std::int32_t target = FeatureRowOfLine(path.points[at - 1].sourceLine) + step;
  if (target < 0) {
    JumpTo(1);
  } else if (target >= featureLines.count) {
    JumpTo(path.count);
  } else {
    const std::int32_t head = HeadAtLine(featureLines.rows[target].firstLine);
    JumpTo(head > 0 ? head : step < 0 ? 1 : path.count);
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

void HaltPlayback() {
  playback.playing = false;
  platform::StopTimer(platform::kMainWindow, kTimerPlay);
}

void ResetPlayback() {
  HaltPlayback();
  playback.headInUse = false;
  playback.playHead = path.count;
  playback.segmentFraction = 0.0;
  measure = MeasurePicks{};
}

void PlayPause() {
  BeginCommand();
  playback.playing = !playback.playing;
  if (playback.playing) {
    if (playback.playHead >= path.count) playback.playHead = HeadAtFirst();
    StartPlayTimer();
  } else {
    HaltPlayback();
  }
  platform::SetText(kIdPlay, playback.playing ? u"Pause" : u"Play");
  platform::Repaint(kViewToolpath);
}

void Rewind() {
  constexpr std::int32_t kPointsBack = 10;
  BeginCommand();
  HaltPlayback();
  playback.playHead =
      std::min(std::max(playback.playHead, kPointsBack + 1) - kPointsBack, path.count);
  platform::Repaint(kViewToolpath);
}

void FastForward() {
  BeginCommand();
  if (playback.playHead >= path.count) playback.playHead = HeadAtFirst();
  playback.playing = true;
  SetPlaySpeed(std::max(playback.speedIndex, 3) + 1);
  platform::Repaint(kViewToolpath);
}

void StopPlayback() {
  BeginCommand();
  HaltPlayback();
  playback.playHead = HeadAtFirst();
  platform::Repaint(kViewToolpath);
}

void GoToStart() {
  BeginCommand();
  JumpTo(1);
}

void GoToEnd() {
  BeginCommand();
  JumpTo(path.count);
}

void PreviousOperation() { StepOperation(-1); }

void NextOperation() { StepOperation(1); }

void SetPlaySpeed(int index) {
  playback.speedIndex = std::clamp(index, 0, kSpeedCount - 1);
  if (playback.playing) StartPlayTimer();
  std::u16string text = u"Simulation speed: ";
  text += SpeedWord(playback.speedIndex);
  text += u". Drag left to slow down, right to speed up.";
  ShowStatus(text);
}

void PlayTick() {
  if (!playback.playing) {
    HaltPlayback();
    return;
  }
  playback.playHead = std::clamp(playback.playHead, HeadAtFirst(), path.count);
  playback.segmentFraction +=
      SpeedFactor(playback.speedIndex) * kTickMilliseconds / kPointMilliseconds;
  while (playback.segmentFraction >= 1.0 && playback.playHead < path.count) {
    playback.segmentFraction -= 1.0;
    ++playback.playHead;
    FollowHead();
  }
  if (playback.playHead >= path.count) {
    playback.segmentFraction = 0.0;
    HaltPlayback();
  }
  playback.headInUse = true;
  platform::Repaint(kViewToolpath);
}

void ToggleMeasure() {
  switches.measureMode = !switches.measureMode;
  measure = MeasurePicks{};
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
  if (point < 0 || point >= path.count) return;
  if (measure.a < 0 || measure.b >= 0) {
    measure.a = point;
    measure.b = -1;
  } else {
    measure.b = point;
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
