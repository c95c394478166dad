// The ground that a cutter sweeps, as a grid of cells: swept once, or again after it had been away.
//
// An illustration of the cutter's outside diameter on the plane, nothing that is removed: the cells
// are square, 128 along the longer side of what the feeds reach. A cell counts by its middle.
// Forward play stamps only what is new.
#pragma once

#include <cstdint>

#include "simulator/level_of_path.h"
#include "simulator/motion_path.h"

namespace morva {

inline constexpr int kCoverageCells = 128;

enum class Swept : unsigned char { Never, Once, Again };

struct Coverage {
  double minX = 0, minY = 0;  // of the first cell, display units
  double cell = 0;            // side of a cell
  double z = 0;               // where the cutter's end stands
  int columns = 0;
  int rows = 0;
  Swept cells[kCoverageCells][kCoverageCells] = {};  // a row is one Y from the least up
};

// Of the feeds among the shown path's drawn points; cut level by level, of those in the deepest
// level alone. Null where the preview tells no cutter or no feed is drawn. Good until the next
// call.
const Coverage* CoverageNow();

}  // namespace morva
