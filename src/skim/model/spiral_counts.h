// How many points a spiral of the guided skim has: its turns times the segments of its outermost
// one. One more than kMaxSpiralPoints stands for all that is above.
#pragma once

namespace morva {

// Straight segments of a circle of this radius, in the plan's unit, that keep its chords within
// 0.004 inch or 0.08 mm: at least 73.
int CircleSegments(double radius, bool metric);
// Points of a spiral that loses `step` of its radius in each turn.
int SpiralPoints(double radius, double step, bool metric);

}  // namespace morva
