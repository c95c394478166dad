// Colours of the cuts by their depth: what lies highest is light and what lies deepest dark.
//
// The level that is cut first is the highest one of nearly every program, so it stands out.
#pragma once

#include <algorithm>

#include "platform/geometry.h"
#include "simulator/motion_path.h"

namespace morva {

inline constexpr int kDepthShades = 15;  // odd, so that the colour of cuts is the middle one

// The depths between which a path cuts: of the ends of its feeds along X or Y, and of all its feeds
// where none moves so.
struct CutDepths {
  bool known = false;
  double low = 0;  // display units
  double high = 0;
};
CutDepths DepthsOf(const MotionPath& of);
bool HasDepths(const CutDepths& depths);  // more than one

// The shade of a feed between two heights, by the middle of what lies within the depths. 0 is the
// deepest, kDepthShades - 1 the highest; all of one depth have the middle one.
int ShadeBetween(const CutDepths& depths, double fromZ, double toZ);

// The same for many feeds: the depths made ready once.
struct ShadeScale {
  double low = 0;
  double high = 0;
  double perHeight = 0;  // shades an inch or a millimetre of the sum of both heights
};
ShadeScale ScaleOf(const CutDepths& depths);
// A height that is no number counts as the deepest.
inline int ShadeOn(const ShadeScale& scale, double fromZ, double toZ) {
  const double from = std::min(std::max(scale.low, fromZ), scale.high);
  const double to = std::min(std::max(scale.low, toZ), scale.high);
  return static_cast<int>((from + to - 2 * scale.low) * scale.perHeight + 0.5);
}
platform::Colour ColourOfShade(int shade);

// One of kCoarseShades of them in place of each: a picture that moves is drawn in fewer batches.
inline constexpr int kCoarseShades = 4;
int CoarseShade(int shade);

// The tone of a cut of a dense path: the colour of cuts for the nearest shade, kDepthShades - 1,
// and darker the farther it lies; the darker the more of `dense`, 0 to 1.
platform::Colour ToneOfShade(int shade, double dense);

}  // namespace morva
