// Paths with an owner each, and the one of them that the toolpath view shows.
//
// An owner has a path, a play state, measure picks, a view and stock of its own. Playback, view
// and read-outs work on the owner that is shown. So another owner's path is shown without
// anything being saved, and the program's comes back as it was, at once.
//
// What is set for all paths is no part of it: the layers and modes in `switches`, and the grid.
#pragma once

#include <cstdint>
#include <span>

#include "simulator/motion_path.h"
#include "simulator/stock_envelope.h"

namespace morva {

// Whose path it is. Each owner has a table of its own.
enum class PathOwner : unsigned char {
  Program,  // the program in the editor, as it is written
  Builder,  // the builder that is open: its example, or a preview of its code
  Machine,  // the program in the editor, as the control runs it
};

struct Playback {
  bool playing = false;
  bool headInUse = false;       // draw only up to playHead
  std::int32_t playHead = 0;    // points drawn: 0 to playHead - 1
  double segmentFraction = 0;   // 0 to 1 along the next segment
  std::int32_t speedIndex = 3;  // 0 to 9
  bool loops = false;           // at the end it begins again
};
extern Playback playback;  // of the program's path

struct MeasurePicks {
  std::int32_t a = -1;
  std::int32_t b = -1;
};
extern MeasurePicks measure;  // of the program's path

struct ViewState {
  double zoom = 1;  // 0.05 to 50
  double yawDegrees = -45;
  double elevationDegrees = 28;  // orbit holds it to -89 to 89
  double rollDegrees = 0;
  double panX = 0;  // pixels
  double panY = 0;
  bool topView = false;
  // The grid is one for all paths: of these fields only those of `view` count.
  bool gridOn = true;
  std::int32_t gridColour = 0;  // 0 to 5
  std::int32_t gridScale = 0;   // -6 to 6, power of 2 on the automatic spacing
};
extern ViewState view;  // of the program's path

struct OwnedPath {
  MotionPath& path;
  // Drawn behind the path, its feeds alone: excluded code behind the program's, the program and
  // its drawings behind a preview.
  MotionPath& context;
  Playback& play;
  MeasurePicks& picks;
  ViewState& view;
  StockEnvelope& stock;
  const double* seconds = nullptr;  // since the start, of each point; null: nobody knows
};

// The program's are `path`, `ghostPath`, `playback`, `measure`, `view` and `stockEnvelope`. The
// machine's has view and stock of the program's.
const OwnedPath& OwnedBy(PathOwner owner);
std::span<const OwnedPath> OwnedPaths();  // in the order of PathOwner

PathOwner ShownOwner();
const OwnedPath& ShownPath();
// Whether the path that is shown is one of the program in the editor.
bool EditorPathIsShown();

// Over the path that the view shows; where that is empty, over its context.
const PathBounds& Bounds();

// Whether an example plays in the view: it begins again at its end and has no text in the editor.
bool ExampleIsShown();

// Playing ends where the head stands; key and picks stay.
void HaltPlayback(PathOwner owner);
// Clears the picks of every path.
void ForgetMeasurePicks();
// The path is drawn whole, wherever its head stands.
void ForgetHead(PathOwner owner);
// After an extraction: head at the end and not in use, nothing playing or looping, picks cleared.
void ResetPlayback(PathOwner owner);

// After the same text was read again: play goes on, the head stays within the path, or at its end
// where it is not in use. Picks are cleared unless `keepPicks`.
void SettlePlayback(PathOwner owner, bool keepPicks);

// Out of the table of speeds.
void SetSpeedOf(PathOwner owner, std::int32_t speedIndex);

// The stock that an owner's path stands in.
void SetStockOf(PathOwner owner, const StockEnvelope& stock);

// The other owner's path is the one that is shown. Nothing else changes: ShowPathOf of toolpath.h
// also ends what is under way.
void SetShownOwner(PathOwner owner);

// Empty paths, start values for play and picks, no stock; the program is shown. Views stay.
void ResetOwnedPaths();

}  // namespace morva
