#include "simulator/level_of_path.h"

#include <cmath>

namespace morva {

PathLevel DeepestLevel(const MotionPath& of, std::int32_t count) {
  PathLevel level;
  for (std::int32_t i = 1; i < count; ++i) {
    const MotionPoint& point = of.points[i];
    if (point.rapid || point.jump) continue;
    if (!level.known || point.z < level.z) level.z = point.z;
    level.known = true;
  }
  return level;
}

bool LiesInLevel(const PathLevel& level, const MotionPoint& from, const MotionPoint& to) {
  constexpr double kSameLevel = 1e-7;  // display units
  return std::fabs(from.z - level.z) <= kSameLevel && std::fabs(to.z - level.z) <= kSameLevel;
}

}  // namespace morva
