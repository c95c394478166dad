#include "simulator/depth_shade.h"

#include <algorithm>
#include <cstdint>

#include "app/palette.h"

namespace morva {
namespace {

using platform::Colour;

constexpr double kOneDepth = 1e-7;  // display units; depths that differ by less are one

void Take(CutDepths& depths, double z) {
  depths.low = depths.known ? std::min(depths.low, z) : z;
  depths.high = depths.known ? std::max(depths.high, z) : z;
  depths.known = true;
}

// `part` of 0 is the first colour, 1 the second.
Colour Between(Colour first, Colour second, double part) {
  const auto mix = [part](unsigned a, unsigned b) {
    return static_cast<unsigned>(a + (static_cast<double>(b) - a) * part + 0.5);
  };
  return platform::Rgb(mix(platform::RedOf(first), platform::RedOf(second)),
                       mix(platform::GreenOf(first), platform::GreenOf(second)),
                       mix(platform::BlueOf(first), platform::BlueOf(second)));
}

}  // namespace

CutDepths DepthsOf(const MotionPath& of) {
  CutDepths across, all;
  for (std::int32_t i = 1; i < of.count; ++i) {
    const MotionPoint& from = of.points[i - 1];
    const MotionPoint& to = of.points[i];
    if (to.rapid || to.jump) continue;
    Take(all, to.z);
    if (from.x != to.x || from.y != to.y) Take(across, to.z);
  }
  return across.known ? across : all;
}

int ShadeBetween(const CutDepths& depths, double fromZ, double toZ) {
  constexpr int kMiddle = kDepthShades / 2;
  const double span = depths.high - depths.low;
  if (!(span > kOneDepth)) return kMiddle;
  const double from = std::clamp(fromZ, depths.low, depths.high);
  const double to = std::clamp(toZ, depths.low, depths.high);
  const double part = ((from + to) / 2 - depths.low) / span;
  return std::clamp(static_cast<int>(part * (kDepthShades - 1) + 0.5), 0, kDepthShades - 1);
}

Colour ColourOfShade(int shade) {
  constexpr double kMiddle = kDepthShades / 2;
  const double above = shade / kMiddle - 1;  // -1 to 1
  return above < 0 ? Between(kPathFeed, kPathDeepest, -above)
                   : Between(kPathFeed, kPathHighest, above);
}

}  // namespace morva
