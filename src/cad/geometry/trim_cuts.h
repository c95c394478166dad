// Where other geometry cuts a line, a circle or a slot. Pure but for the live sketch it reads;
// nothing here allocates, since the hover preview asks at every movement of the pointer.
//
// Cutters are all objects that are not hidden but the target: lines within their length, work
// axes without end, the four edges of rectangles, circles; slots cut slots only. A circle that
// merely touches a line, or another circle, meets it in one place: where the two places would lie
// nearer to each other than a thousandth of its radius. A snapped quadrant is off by less.
#pragma once

#include "app/limits.h"

namespace morva {

struct CutList {
  double values[kMaxCuts];
  int count = 0;
};

// Parameters along the segment from a to b, 0 and 1 among them, ascending.
void CutsOfSegment(int target, double ax, double ay, double bx, double by, CutList& cuts);
// Where others cut a circle: the angle in degrees, 0 to below 360, and the point on the other one.
// A line that ends where it touches cuts with its end, so that what is left of the circle meets it.
struct CircleCut {
  double angle = 0;
  double x = 0, y = 0;
};
struct CircleCuts {
  CircleCut values[kMaxCuts];
  int count = 0;
};
// Ascending, each angle once.
void CutsOfCircle(int target, CircleCuts& cuts);

// A slot as a closed run of 34 steps: 17 points of each cap, the last of a cap joined to the
// first of the other.
inline constexpr int kSlotSteps = 34;
struct SlotRun {
  double xs[kSlotSteps + 1];  // the first point again at the end
  double ys[kSlotSteps + 1];
};
void SlotRunOf(int index, SlotRun& run);
// Positions along the run, 0 to below 34, the whole part being the step; ascending, each once.
void CutsOfSlot(int target, const SlotRun& run, CutList& cuts);

}  // namespace morva
