// The extraction in progress, and the one way of its points into a table.
//
// Internal to this room's extraction. A record is good for one run only.
#pragma once

#include <cstdint>

#include "simulator/motion_path.h"

namespace morva {

struct MotionRun {
  MotionPath* out = &path;
  std::int32_t first = 0;  // points of earlier runs that stand before this one's
  bool (*dropsLine)(std::int32_t line) = nullptr;  // the points of which lines; null: of none
  bool jump = false;      // the next point stored is an arrival, not a path
  std::int32_t tool = 0;  // in force, 0 before the first T word
};
extern MotionRun motionRun;
// No run is under way.
void EndMotionRun();

// Whether the filter of the run under way drops the points of a line.
bool RunDropsLine(std::int32_t line);

// Counts a line in the notes of the path under way.
void NoteRunLine(PathNote kind, std::int32_t line);

// The one place where points enter a table: that of the run under way, else the program's.
void AddMotionPoint(double x, double y, double z, bool rapid, std::int32_t sourceLine);

}  // namespace morva
