// Parts, targets, rings and animation of the view cube.

#include "library/view_cube.h"

#include <algorithm>
#include <cmath>

#include "platform/timer.h"
#include "platform/window.h"
#include "text/codetext.h"
#include "text/series_trig.h"

namespace morva {
namespace {

using platform::PointF;
using platform::Rect;

constexpr int kStepMs = 16;
constexpr double kHomeYaw = -45;
constexpr double kHomeElevation = 28;
constexpr double kQuarter = 90;
constexpr double kFirstCut = 0.24;  // of a face, from its edge cells to its middle
constexpr double kLastCut = 0.76;
constexpr double kLeastFace = 1;  // square pixels; less is a face seen edge on
constexpr double kRingReach = 6;  // pixels either way of a ring
constexpr double kMostElevation = 90;
constexpr int kMiddleFromRight = 84;
constexpr int kMiddleFromTop = 76;

// Keys of the cube by their place from the right edge and the top, edges included.
struct KeyPlace {
  CubePart part;
  int fromRight, toRight;
  int top, bottom;
};
constexpr KeyPlace kKeys[] = {
    {CubePart::RollLeft, 68, 31, 10, 31},        {CubePart::RollRight, 36, 12, 30, 58},
    {CubePart::Home, 152, 124, 6, 30},           {CubePart::YawLeft, 146, 123, 61, 85},
    {CubePart::YawRight, 45, 22, 61, 85},        {CubePart::ElevationUp, 96, 72, 32, 40},
    {CubePart::ElevationDown, 96, 72, 115, 132},
};

constexpr CubeFace kFaces[kCubeFaces] = {
    {0, 1, {0, 1, 0}, {0, 0, 1}, "RIGHT"}, {0, -1, {0, -1, 0}, {0, 0, 1}, "LEFT"},
    {1, 1, {-1, 0, 0}, {0, 0, 1}, "BACK"}, {1, -1, {1, 0, 0}, {0, 0, 1}, "FRONT"},
    {2, 1, {1, 0, 0}, {0, 1, 0}, "TOP"},   {2, -1, {1, 0, 0}, {0, -1, 0}, "BOTTOM"},
};

double Along(const double* axes, const int* direction) {
  return axes[0] * direction[0] + axes[1] * direction[1] + axes[2] * direction[2];
}

int CellOf(double position) { return position < kFirstCut ? -1 : position > kLastCut ? 1 : 0; }

// The position on a face in its two axes, 0 to 1. False: beside it, or seen edge on.
bool OnFace(const CubeAxes& axes, const CubeFace& face, double x, double y, double& across,
            double& up) {
  const double rx = Along(axes.x, face.right) * kCubeHalf;
  const double ry = Along(axes.y, face.right) * kCubeHalf;
  const double ux = Along(axes.x, face.up) * kCubeHalf;
  const double uy = Along(axes.y, face.up) * kCubeHalf;
  const double determinant = rx * uy - ry * ux;
  if (std::fabs(determinant) * 4 < kLeastFace) return false;
  const double px = x - axes.x[face.axis] * face.side * kCubeHalf;
  const double py = y - axes.y[face.axis] * face.side * kCubeHalf;
  across = ((px * uy - py * ux) / determinant + 1) / 2;
  up = ((rx * py - ry * px) / determinant + 1) / 2;
  return across >= 0 && across <= 1 && up >= 0 && up <= 1;
}

bool HitFace(const CubeAxes& axes, double x, double y, CubeHit& hit) {
  int order[kCubeFaces] = {0, 1, 2, 3, 4, 5};
  std::sort(order, order + kCubeFaces, [&axes](int a, int b) {
    return axes.depth[kFaces[a].axis] * kFaces[a].side >
           axes.depth[kFaces[b].axis] * kFaces[b].side;
  });
  for (const int index : order) {
    const CubeFace& face = kFaces[index];
    double across = 0;
    double up = 0;
    if (!OnFace(axes, face, x, y, across, up)) continue;
    const int u = CellOf(across);
    const int v = CellOf(up);
    int direction[3];
    for (int i = 0; i < 3; ++i) direction[i] = face.right[i] * u + face.up[i] * v;
    direction[face.axis] = face.side;
    hit = {CubePart::Face, direction[0], direction[1], direction[2]};
    return true;
  }
  return false;
}

// Counter-clockwise from the right, about the cube's middle.
double RingAngle(const Rect& client, int x, int y) {
  const PointF middle = CubeMiddle(client);
  return AngleDegrees(middle.y - y, x - middle.x);
}

void Refresh(const ViewCube& cube) { platform::Repaint(cube.view); }

// Tilted past a pole the view stands upright again from the other side.
void TurnElevation(ViewAngles& angles, double degrees) {
  angles.elevation += degrees;
  if (angles.elevation > kQuarter) {
    angles.elevation = 180 - angles.elevation;
    angles.yaw += 180;
  } else if (angles.elevation < -kQuarter) {
    angles.elevation = -180 - angles.elevation;
    angles.yaw += 180;
  }
}

void LookFrom(const CubeHit& hit, ViewAngles& angles) {
  angles.roll = 0;
  if (hit.x != 0 || hit.y != 0) angles.yaw = AngleDegrees(-hit.x, -hit.y);
  const double across = std::sqrt(static_cast<double>(hit.x * hit.x + hit.y * hit.y));
  angles.elevation = AngleDegrees(hit.z, across);
}

bool SameHit(const CubeHit& a, const CubeHit& b) {
  return a.part == b.part && a.x == b.x && a.y == b.y && a.z == b.z;
}

}  // namespace

double WithinHalfTurn(double degrees) {
  if (!(degrees > -1e9 && degrees < 1e9)) return 0;  // no direction is left in such an angle
  while (degrees > 180) degrees -= 360;
  while (degrees < -180) degrees += 360;
  return degrees;
}

const CubeFace& FaceOfCube(int index) { return kFaces[index]; }

CubeAxes AxesOfCube(const ViewAngles& angles) {
  const double sinYaw = SeriesSine(angles.yaw * kRadiansPerDegree);
  const double cosYaw = SeriesCosine(angles.yaw * kRadiansPerDegree);
  const double sinTilt = SeriesSine(angles.elevation * kRadiansPerDegree);
  const double cosTilt = SeriesCosine(angles.elevation * kRadiansPerDegree);
  const double sinRoll = SeriesSine(angles.roll * kRadiansPerDegree);
  const double cosRoll = SeriesCosine(angles.roll * kRadiansPerDegree);
  const double u[3] = {cosYaw, -sinYaw, 0};
  const double v[3] = {-sinYaw * sinTilt, -cosYaw * sinTilt, -cosTilt};
  const double depth[3] = {-sinYaw * cosTilt, -cosYaw * cosTilt, sinTilt};
  CubeAxes axes;
  for (int i = 0; i < 3; ++i) {
    axes.x[i] = u[i] * cosRoll - v[i] * sinRoll;
    axes.y[i] = u[i] * sinRoll + v[i] * cosRoll;
    axes.depth[i] = depth[i];
  }
  return axes;
}

PointF CubeMiddle(const Rect& client) {
  return {static_cast<double>(client.right - kMiddleFromRight),
          static_cast<double>(client.top + kMiddleFromTop)};
}

bool CubeFits(const Rect& client) {
  return platform::RectWidth(client) >= kCubeWidth && platform::RectHeight(client) >= kCubeHeight;
}

bool InCubeCorner(const Rect& client, int x, int y) {
  return CubeFits(client) && x >= client.right - kCubeWidth && x < client.right &&
         y >= client.top && y < client.top + kCubeHeight;
}

CubeHit HitCube(const Rect& client, const ViewAngles& angles, int x, int y) {
  CubeHit hit;
  if (!InCubeCorner(client, x, y)) return hit;
  const int fromRight = client.right - x;
  const int fromTop = y - client.top;
  for (const KeyPlace& key : kKeys) {
    if (fromRight <= key.fromRight && fromRight >= key.toRight && fromTop >= key.top &&
        fromTop <= key.bottom) {
      hit.part = key.part;
      return hit;
    }
  }
  const PointF middle = CubeMiddle(client);
  const double dx = x - middle.x;
  const double dy = y - middle.y;
  if (HitFace(AxesOfCube(angles), dx, dy, hit)) return hit;
  const double distance = std::sqrt(dx * dx + dy * dy);
  if (std::fabs(distance - kYawRingRadius) <= kRingReach) hit.part = CubePart::YawRing;
  if (std::fabs(distance - kOuterRingRadius) <= kRingReach) hit.part = CubePart::OuterRing;
  return hit;
}

bool CubeTarget(const CubeHit& hit, const ViewAngles& from, ViewAngles& target) {
  target = from;
  switch (hit.part) {
    case CubePart::RollLeft:
      target.roll -= kQuarter;
      break;
    case CubePart::RollRight:
      target.roll += kQuarter;
      break;
    case CubePart::Home:
      target = {kHomeYaw, kHomeElevation, 0};
      break;
    case CubePart::YawLeft:
      target.yaw -= kQuarter;
      break;
    case CubePart::YawRight:
      target.yaw += kQuarter;
      break;
    case CubePart::ElevationUp:
      TurnElevation(target, kQuarter);
      break;
    case CubePart::ElevationDown:
      TurnElevation(target, -kQuarter);
      break;
    case CubePart::Face:
      LookFrom(hit, target);
      break;
    case CubePart::None:
    case CubePart::YawRing:
    case CubePart::OuterRing:
      return false;
  }
  target.yaw = WithinHalfTurn(target.yaw);
  target.roll = WithinHalfTurn(target.roll);
  return true;
}

bool PressCube(ViewCube& cube, const Rect& client, const ViewAngles& angles, int x, int y) {
  const CubeHit hit = HitCube(client, angles, x, y);
  if (hit.part == CubePart::None) return false;
  StopCube(cube);
  ViewAngles target;
  if (CubeTarget(hit, angles, target)) {
    AnimateCube(cube, angles, target);
  } else {
    cube.ring = hit.part;
    cube.ringAngle = RingAngle(client, x, y);
    platform::CapturePointer(cube.view);
  }
  Refresh(cube);
  return true;
}

bool MoveCube(ViewCube& cube, const Rect& client, ViewAngles& angles, int x, int y) {
  if (cube.ring == CubePart::None) return false;
  const double angle = RingAngle(client, x, y);
  const double turned = WithinHalfTurn(angle - cube.ringAngle);
  cube.ringAngle = angle;
  if (cube.ring == CubePart::YawRing) {
    angles.yaw = WithinHalfTurn(angles.yaw + turned);
  } else if (cube.outerRolls) {
    angles.roll = WithinHalfTurn(angles.roll - turned);  // the picture follows the pointer
  } else {
    angles.elevation = std::clamp(angles.elevation + turned, -kMostElevation, kMostElevation);
  }
  Refresh(cube);
  return true;
}

bool ReleaseCube(ViewCube& cube) {
  if (cube.ring == CubePart::None) return false;
  cube.ring = CubePart::None;
  platform::ReleasePointer();
  Refresh(cube);
  return true;
}

bool HoverCube(ViewCube& cube, const Rect& client, const ViewAngles& angles, int x, int y) {
  const CubeHit over = HitCube(client, angles, x, y);
  if (!SameHit(over, cube.over)) {
    cube.over = over;
    Refresh(cube);
  }
  return InCubeCorner(client, x, y);
}

void AnimateCube(ViewCube& cube, const ViewAngles& from, const ViewAngles& to) {
  cube.start = from;
  cube.end = to;
  cube.step = 0;
  cube.running = true;
  cube.over = CubeHit();  // the cube turns away from under the pointer
  platform::StartTimer(cube.view, cube.timer, kStepMs);
}

void StopCube(ViewCube& cube) {
  if (!cube.running) return;
  cube.running = false;
  platform::StopTimer(cube.view, cube.timer);
}

bool TickCube(ViewCube& cube, ViewAngles& angles) {
  if (!cube.running) {
    platform::StopTimer(cube.view, cube.timer);
    return false;
  }
  Refresh(cube);
  if (++cube.step >= kCubeSteps) {
    StopCube(cube);
    angles = cube.end;
    return true;
  }
  const double t = static_cast<double>(cube.step) / kCubeSteps;
  const double f = t * t * (3 - 2 * t);
  const ViewAngles& a = cube.start;
  const ViewAngles& b = cube.end;
  angles.yaw = a.yaw + f * WithinHalfTurn(b.yaw - a.yaw);
  angles.elevation = a.elevation + f * WithinHalfTurn(b.elevation - a.elevation);
  angles.roll = a.roll + f * WithinHalfTurn(b.roll - a.roll);
  return false;
}

}  // namespace morva
