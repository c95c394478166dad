// The extraction in progress: what the point table and the line scanner share.
//
// Internal to this room's extraction. A record is good for one run only.
#pragma once

#include <cstdint>
#include <string_view>

#include "simulator/motion_path.h"

namespace morva {

struct MotionRun {
  MotionPath* out = &path;
  std::int32_t first = 0;  // points of earlier runs that stand before this one's
  bool filtered = false;   // the active tab isolates or hides something
  bool jump = false;       // the next point stored is an arrival, not a path
  std::int32_t tool = 0;   // in force, 0 before the first T word
};
extern MotionRun motionRun;

// Whether the feature filter drops the points of a line. Lines are asked in rising order
// mostly, so the answer is kept for as long as it holds.
bool LineIsDropped(std::int32_t line);

// Walks the text line by line and adds its points. Linear in the text, allocates nothing.
void ScanMotion(std::u16string_view text, bool metric);

}  // namespace morva
