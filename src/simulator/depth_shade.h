// Colours of the cuts by their depth: what lies highest is light and what lies deepest dark.
//
// The level that is cut first is the highest one of nearly every program, so it stands out.
#pragma once

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

// The shade of a feed between two heights, by the middle of what lies within the depths. 0 is the
// deepest, kDepthShades - 1 the highest; all of one depth have the middle one.
int ShadeBetween(const CutDepths& depths, double fromZ, double toZ);
platform::Colour ColourOfShade(int shade);

}  // namespace morva
