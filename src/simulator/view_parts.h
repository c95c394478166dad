// What the files of the toolpath view share; not for other rooms.
#pragma once

#include <cstdint>

#include "library/view_cube.h"
#include "platform/canvas.h"
#include "simulator/view.h"

namespace morva {

inline constexpr int kReadOutUnits = 200;  // of one read-out or label, terminator included

// The points of the shown path on the screen, one each; kept until path or projection change.
const platform::PointF* ProjectedPoints(const platform::Rect& client);

inline constexpr int kFeedWidth = 2;  // pixels of a cut

// The segments of the shown path that are drawn now, in two runs of one buffer. The pointers
// hold until the next call.
struct PathSegments {
  const platform::Segment* feeds = nullptr;
  const unsigned char* shades = nullptr;  // one for each feed (depth_shade.h); null: all are alike
  double dense = 0;  // above 0 the shades are tones of a dense path, not those of the layer
  int feedCount = 0;
  const platform::Segment* rapids = nullptr;
  int rapidCount = 0;
};
PathSegments VisibleSegments(const platform::Rect& client);

// The layer is on, or an example is shown: that is told by the colours of travel and cut.
bool RapidsAreShown();

// The cuts are coloured by their depth. An example is not: its colours tell travel from cut.
bool ShadesAreShown();

// Points of the shown path that are drawn: up to the head while that is in use.
std::int32_t DrawnPoints();

// The view cube of this view. The plan counts as yaw 0 and elevation 90.
extern ViewCube viewCube;
// The client as the cube takes it: empty where an example plays and the cube would cover half of
// what it shows.
platform::Rect CubeClient(const platform::Rect& client);
ViewAngles ShownAngles();
void TakeAngles(const ViewAngles& angles);
void ViewTimer(int timer);

// The user has turned, shifted or zoomed the view: it is drawn anew, and counts as moving until it
// rests for a moment. While it moves, long paths are drawn thin (thin_path.h).
void ViewMoved();
bool ViewMoves();

// Ends what the pointer and the cube have under way, with the angles and the pan where they are.
void LetGoOfView();
void ResetViewMouse();

}  // namespace morva
