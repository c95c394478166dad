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

bool HasDepths(const CutDepths& depths) { return depths.high - depths.low > kOneDepth; }

ShadeScale ScaleOf(const CutDepths& depths) {
  return {depths.low, depths.high, (kDepthShades - 1) / 2.0 / (depths.high - depths.low)};
}

int ShadeBetween(const CutDepths& depths, double fromZ, double toZ) {
  if (!HasDepths(depths)) return kDepthShades / 2;
  return ShadeOn(ScaleOf(depths), fromZ, toZ);
}

Colour ColourOfShade(int shade) {
  constexpr double kMiddle = kDepthShades / 2;
  const double above = shade / kMiddle - 1;  // -1 to 1
  return above < 0 ? Between(kPathFeed, kPathDeepest, -above)
                   : Between(kPathFeed, kPathHighest, above);
}

int CoarseShade(int shade) {
  const int step = shade * kCoarseShades / kDepthShades;
  return step * (kDepthShades - 1) / (kCoarseShades - 1);
}

Colour ToneOfShade(int shade, double dense) {
  const double below = 1 - shade / static_cast<double>(kDepthShades - 1);
  return Between(kPathFeed, kPathFeedLow, below * dense);
}

}  // namespace morva
