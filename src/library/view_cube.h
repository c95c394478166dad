// The view cube: turns a view by clicks on a cube and drags of its rings, in the top right corner.
//
// It serves every view with a parallel projection. The owner keeps the angles and hands them in;
// the cube keeps what is under way: an animation, a ring that is held, what the pointer is over.
// Nothing here knows what the view shows.
//
// At yaw a, elevation e and roll 0 a point (x, y, z) lies at u = x cos a - y sin a to the right
// and at (x sin a + y cos a) sin e + z cos e upwards. Yaw 0 with elevation 0 is the front, with
// elevation 90 the plan. A positive roll turns the picture clockwise.
#pragma once

#include "platform/canvas.h"
#include "platform/geometry.h"

namespace morva {

struct ViewAngles {
  double yaw = 0;  // degrees
  double elevation = 0;
  double roll = 0;
};

inline constexpr int kCubeWidth = 172;  // pixels of the corner that the cube fills
inline constexpr int kCubeHeight = 171;
inline constexpr int kCubeSteps = 20;  // of an animation, 16 ms each
inline constexpr const char16_t* kCubeHelp =
    u"View cube: center = face; outer edge / corner = angled view. Arrows rotate 90 degrees; Home "
    u"restores isometric.";

enum class CubePart {
  None,
  RollLeft,
  RollRight,
  Home,
  YawLeft,
  YawRight,
  ElevationUp,
  ElevationDown,
  Face,       // a cell of a face: the face itself, an edge or a corner
  YawRing,    // the inner ring
  OuterRing,  // elevation, or roll where the owner says so
};

// A part of the cube. For a face, the direction that it looks in, outwards, with the offset of
// an edge or corner cell: each of x, y and z is -1, 0 or 1.
struct CubeHit {
  CubePart part = CubePart::None;
  int x = 0;
  int y = 0;
  int z = 0;
};

struct ViewCube {
  int view = 0;             // the view's id: captures the pointer, is repainted, owns the timer
  int timer = 0;            // the animation's timer on that view
  bool outerRolls = false;  // the outer ring turns the roll instead of the elevation

  bool running = false;  // an animation
  int step = 0;          // 0 to kCubeSteps
  ViewAngles start, end;
  CubePart ring = CubePart::None;  // the ring that is held
  double ringAngle = 0;            // degrees, where the pointer last was on it
  CubeHit over;                    // under the pointer
};

// Whether the client is large enough to show a cube at all.
bool CubeFits(const platform::Rect& client);
bool InCubeCorner(const platform::Rect& client, int x, int y);
CubeHit HitCube(const platform::Rect& client, const ViewAngles& angles, int x, int y);
// Where a part takes the view. False: a part that starts no animation.
bool CubeTarget(const CubeHit& hit, const ViewAngles& from, ViewAngles& target);

// A press of the left button. True: a part was hit; a running animation ended where it was, and
// another has begun or a ring is held.
bool PressCube(ViewCube& cube, const platform::Rect& client, const ViewAngles& angles, int x,
               int y);
// A move; the angles follow a held ring. True: a ring is held.
bool MoveCube(ViewCube& cube, const platform::Rect& client, ViewAngles& angles, int x, int y);
// The button is up, or the capture lost. True: a ring was held.
bool ReleaseCube(ViewCube& cube);
// A move with no button down, or one that left the view (x and y -1). True: over the corner.
bool HoverCube(ViewCube& cube, const platform::Rect& client, const ViewAngles& angles, int x,
               int y);

void AnimateCube(ViewCube& cube, const ViewAngles& from, const ViewAngles& to);
// Ends an animation where it is.
void StopCube(ViewCube& cube);
// A tick of the timer. True: the animation has just ended, with the angles at the target.
bool TickCube(ViewCube& cube, ViewAngles& angles);

void PaintCube(platform::Canvas& canvas, const platform::Rect& client, const ViewCube& cube,
               const ViewAngles& angles);

// The angle brought within -180 to 180 degrees.
double WithinHalfTurn(double degrees);

// What hit test and painting share: the cube's axes on the screen, in units of its half side.
// x to the right, y down, depth towards the viewer; of the model's X, Y and Z in turn.
struct CubeAxes {
  double x[3] = {};
  double y[3] = {};
  double depth[3] = {};
};
CubeAxes AxesOfCube(const ViewAngles& angles);
platform::PointF CubeMiddle(const platform::Rect& client);
inline constexpr double kCubeHalf = 24;       // pixels, half a side of the cube
inline constexpr double kYawRingRadius = 50;  // pixels
inline constexpr double kOuterRingRadius = 66;

// A face: its axis and side, and the axes along which its lettering runs right and up.
struct CubeFace {
  int axis;  // 0 X, 1 Y, 2 Z
  int side;  // -1 or 1
  int right[3];
  int up[3];
  const char* name;
};
inline constexpr int kCubeFaces = 6;
const CubeFace& FaceOfCube(int index);

}  // namespace morva
