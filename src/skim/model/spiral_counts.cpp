#include "skim/model/spiral_counts.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "app/limits.h"

namespace morva {

namespace {

constexpr double kTolerance = 0.004;  // inch
constexpr double kToleranceMm = 0.08;
constexpr double kFullTurn = 6.28318530718;
constexpr double kLeastSegments = 72;

// The next whole number, unless there are too many.
int Counted(double count) {
  return count <= kMaxSpiralPoints ? static_cast<int>(count) + 1 : kMaxSpiralPoints + 1;
}

}  // namespace

int CircleSegments(double radius, bool metric) {
  const double q = (metric ? kToleranceMm : kTolerance) / radius;
  const double segments =
      q > 0 ? kFullTurn / std::sqrt(q) : std::numeric_limits<double>::infinity();
  return Counted(std::max(segments, kLeastSegments));
}

int SpiralPoints(double radius, double step, bool metric) {
  return Counted(std::max(radius / step * CircleSegments(radius, metric), 0.0));
}

}  // namespace morva
