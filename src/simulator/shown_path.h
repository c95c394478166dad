// Paths with an owner each, and the one of them that the toolpath view shows.
//
// An owner has a path, a play state, measure picks, a view and stock of its own. Playback, view
// and read-outs work on the owner that is shown. So another owner's path is shown without
// anything being saved, and the program's comes back as it was, at once.
//
// What is set for all paths is no part of it: the layers and modes in `switches`, and the grid.
#pragma once

#include <span>

#include "simulator/motion_path.h"
#include "simulator/playback.h"
#include "simulator/view.h"

namespace morva {

struct OwnedPath {
  MotionPath& path;
  MotionPath* ghosts;  // drawn behind the path, null for none
  Playback& play;
  MeasurePicks& picks;
  ViewState& view;
  StockEnvelope& stock;
};

// The program's are `path`, `ghostPath`, `playback`, `measure`, `view` and `stockEnvelope`.
const OwnedPath& OwnedBy(PathOwner owner);
std::span<const OwnedPath> OwnedPaths();  // in the order of PathOwner

PathOwner ShownOwner();
const OwnedPath& ShownPath();

// From now on the view shows the owner's path, with its head, speed, angles, zoom and stock.
// Only the path that is shown plays: the one that is left halts where its head stands. A turn of
// the view that is under way ends where it is. Nothing happens where the owner is shown already.
void ShowPathOf(PathOwner owner);

// Empty paths, start values for play and picks, no stock; the program is shown. Views stay.
void ResetOwnedPaths();

}  // namespace morva
