// The level that a skim cuts now: the deepest feed of the path so far.
#pragma once

#include <cstdint>

#include "simulator/motion_path.h"

namespace morva {

struct PathLevel {
  bool known = false;  // a feed was among the points
  double z = 0;        // display units
};

// Of the first `count` points.
PathLevel DeepestLevel(const MotionPath& of, std::int32_t count);
// Whether a move lies in a level at both of its ends.
bool LiesInLevel(const PathLevel& level, const MotionPoint& from, const MotionPoint& to);

}  // namespace morva
