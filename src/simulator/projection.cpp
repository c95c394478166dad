// Projection of the toolpath view and the cache of projected points.
//
// A point costs six multiplications; all trigonometry and the fit are done once for a state
// of view, bounds and client area.

#include <algorithm>
#include <cmath>

#include "platform/geometry.h"
#include "simulator/depth_shade.h"
#include "simulator/level_of_path.h"
#include "simulator/path_density.h"
#include "simulator/playback.h"
#include "simulator/preview_state.h"
#include "simulator/shown_path.h"
#include "simulator/thin_path.h"
#include "simulator/view.h"
#include "simulator/view_parts.h"
#include "simulator/view_switches.h"
#include "text/series_trig.h"

namespace morva {
namespace {

using platform::PointF;
using platform::Rect;
using platform::Segment;

constexpr double kFill = 0.86;          // of the usable area at zoom 1
constexpr int kSideMargin = 70;         // pixels of the width that a fit leaves free
constexpr int kBarMargin = 120;         // and of the height
constexpr int kBottomBars = 62;         // the bars below the picture
constexpr double kSmallestSpan = 0.01;  // display units; what is smaller counts as 1

struct ProjectionKey {
  double zoom = 0, yaw = 0, elevation = 0, roll = 0, panX = 0, panY = 0;
  bool topView = false;
  Rect client;
  PathBounds bounds;
};

ProjectionKey known;
Projection projection;
bool projectionKnown = false;
std::uint32_t projectionSerial = 0;

PointF projected[kMaxControlPoints];
std::uint32_t projectedSerial = 0;
PathOwner projectedOwner = PathOwner::Program;
std::uint32_t projectedGeneration = 0;
// Of what was projected last.
bool denseKnown = false;
double dense = 0;
std::int32_t projectedCount = -1;

Segment segments[kMaxControlPoints];
unsigned char shades[kMaxControlPoints];

bool SameBounds(const PathBounds& a, const PathBounds& b) {
  return a.minX == b.minX && a.maxX == b.maxX && a.minY == b.minY && a.maxY == b.maxY &&
         a.minZ == b.minZ && a.maxZ == b.maxZ;
}

bool SameKey(const ProjectionKey& a, const ProjectionKey& b) {
  return a.zoom == b.zoom && a.yaw == b.yaw && a.elevation == b.elevation && a.roll == b.roll &&
         a.panX == b.panX && a.panY == b.panY && a.topView == b.topView &&
         platform::SameRect(a.client, b.client) && SameBounds(a.bounds, b.bounds);
}

// Screen directions of the axes before scaling; screen y grows downwards.
void SetAxes(Projection& p, const ViewState& shown) {
  if (shown.topView) {
    p.ux = 1;
    p.uy = 0;
    p.uz = 0;
    p.vx = 0;
    p.vy = -1;
    p.vz = 0;
  } else {
    const double sinYaw = SeriesSine(shown.yawDegrees * kRadiansPerDegree);
    const double cosYaw = SeriesCosine(shown.yawDegrees * kRadiansPerDegree);
    const double sinTilt = SeriesSine(shown.elevationDegrees * kRadiansPerDegree);
    const double cosTilt = SeriesCosine(shown.elevationDegrees * kRadiansPerDegree);
    p.ux = cosYaw;
    p.uy = -sinYaw;
    p.uz = 0;
    p.vx = -sinYaw * sinTilt;
    p.vy = -cosYaw * sinTilt;
    p.vz = -cosTilt;
  }
  if (shown.rollDegrees == 0) return;
  const double sinRoll = SeriesSine(shown.rollDegrees * kRadiansPerDegree);
  const double cosRoll = SeriesCosine(shown.rollDegrees * kRadiansPerDegree);
  const Projection q = p;
  p.ux = q.ux * cosRoll - q.vx * sinRoll;
  p.uy = q.uy * cosRoll - q.vy * sinRoll;
  p.uz = q.uz * cosRoll - q.vz * sinRoll;
  p.vx = q.ux * sinRoll + q.vx * cosRoll;
  p.vy = q.uy * sinRoll + q.vy * cosRoll;
  p.vz = q.uz * sinRoll + q.vz * cosRoll;
}

double UsableSpan(double span) { return span < kSmallestSpan ? 1 : span; }

// The scale at which the bounds fill the usable area.
double FittedScale(const Projection& p, const PathBounds& b, const Rect& client) {
  double minU = 0, maxU = 0, minV = 0, maxV = 0;
  for (int corner = 0; corner < 8; ++corner) {
    const double dx = ((corner & 1) ? b.maxX : b.minX) - p.centreX;
    const double dy = ((corner & 2) ? b.maxY : b.minY) - p.centreY;
    const double dz = ((corner & 4) ? b.maxZ : b.minZ) - p.centreZ;
    const double u = dx * p.ux + dy * p.uy + dz * p.uz;
    const double v = dx * p.vx + dy * p.vy + dz * p.vz;
    minU = corner ? std::min(minU, u) : u;
    maxU = corner ? std::max(maxU, u) : u;
    minV = corner ? std::min(minV, v) : v;
    maxV = corner ? std::max(maxV, v) : v;
  }
  const double width = std::max(1, platform::RectWidth(client) - kSideMargin);
  const double height = std::max(1, platform::RectHeight(client) - kBarMargin);
  return kFill * std::min(width / UsableSpan(maxU - minU), height / UsableSpan(maxV - minV));
}

void ProjectPath(const Projection& p, const MotionPath& of) {
  // Taken out of the records, so that the loop keeps them in registers.
  const double ux = p.ux, uy = p.uy, uz = p.uz, vx = p.vx, vy = p.vy, vz = p.vz;
  const double x0 = p.centreX, y0 = p.centreY, z0 = p.centreZ;
  const double originX = p.originX, originY = p.originY;
  const MotionPoint* const points = of.points;
  const std::int32_t count = of.count;
  for (std::int32_t i = 0; i < count; ++i) {
    const MotionPoint& point = points[i];
    const double dx = point.x - x0;
    const double dy = point.y - y0;
    const double dz = point.z - z0;
    projected[i].x = dx * ux + dy * uy + dz * uz + originX;
    projected[i].y = dx * vx + dy * vy + dz * vz + originY;
  }
}

}  // namespace

const Projection& ProjectionFor(const Rect& client) {
  const ViewState& shown = ShownPath().view;
  const ProjectionKey key{shown.zoom,        shown.yawDegrees, shown.elevationDegrees,
                          shown.rollDegrees, shown.panX,       shown.panY,
                          shown.topView,     client,           Bounds()};
  if (projectionKnown && SameKey(key, known)) return projection;
  known = key;
  projectionKnown = true;
  ++projectionSerial;
  const PathBounds& b = known.bounds;
  Projection& p = projection;
  p.centreX = (b.minX + b.maxX) / 2;
  p.centreY = (b.minY + b.maxY) / 2;
  p.centreZ = (b.minZ + b.maxZ) / 2;
  SetAxes(p, shown);
  p.scale = shown.zoom * FittedScale(p, b, client);
  p.ux *= p.scale;
  p.uy *= p.scale;
  p.uz *= p.scale;
  p.vx *= p.scale;
  p.vy *= p.scale;
  p.vz *= p.scale;
  p.originX = shown.panX + (client.left + client.right) / 2.0;
  p.originY = shown.panY + (client.top + client.bottom - kBottomBars) / 2.0;
  return p;
}

PointF Project(const Projection& p, double x, double y, double z) {
  const double dx = x - p.centreX;
  const double dy = y - p.centreY;
  const double dz = z - p.centreZ;
  return {dx * p.ux + dy * p.uy + dz * p.uz + p.originX,
          dx * p.vx + dy * p.vy + dz * p.vz + p.originY};
}

const PointF* ProjectedPoints(const Rect& client) {
  const Projection& p = ProjectionFor(client);
  const MotionPath& shown = ShownPath().path;
  if (projectedSerial != projectionSerial || projectedOwner != ShownOwner() ||
      projectedGeneration != shown.generation || projectedCount != shown.count) {
    ProjectPath(p, shown);
    denseKnown = false;
    projectedSerial = projectionSerial;
    projectedOwner = ShownOwner();
    projectedGeneration = shown.generation;
    projectedCount = shown.count;
  }
  return projected;
}

bool ShadesAreShown() { return switches.shadeByDepth && !ExampleIsShown(); }

namespace {

struct {
  PathOwner owner = PathOwner::Program;
  std::uint32_t generation = 0;
  std::int32_t count = -1;
  CutDepths depths;
} knownDepths;

// Of the shown path.
const CutDepths& KnownDepths() {
  const MotionPath& of = ShownPath().path;
  if (knownDepths.owner != ShownOwner() || knownDepths.generation != of.generation ||
      knownDepths.count != of.count) {
    knownDepths = {ShownOwner(), of.generation, of.count, DepthsOf(of)};
  }
  return knownDepths.depths;
}

// How dense the shown path is, 0 to 1. Cuts of one depth have no tones to be told apart by, and the
// colours of an example tell travel from cut.
double DenseNow(const Rect& client) {
  if (ExampleIsShown()) return 0;
  ProjectedPoints(client);
  if (!denseKnown) {
    denseKnown = true;
    dense = PartOfDense(CoveredPart(ShownPath().path, projected, client));
    if (dense > 0 && !HasDepths(KnownDepths())) dense = 0;
  }
  return dense;
}

}  // namespace

bool RapidsAreShown() { return switches.showRapids || ExampleIsShown(); }

std::int32_t DrawnPoints() {
  const OwnedPath& shown = ShownPath();
  if (!shown.play.headInUse) return shown.path.count;
  return std::clamp(shown.play.playHead, 0, shown.path.count);
}

PathSegments VisibleSegments(const Rect& client) {
  const PointF* points = ProjectedPoints(client);
  const MotionPoint* const ends = ShownPath().path.points;
  const std::int32_t count = DrawnPoints();
  const bool showRapids = RapidsAreShown();
  PathLevel layer;
  if (HasLevels() && switches.skimCurrentDepthOnly) layer = DeepestLevel(ShownPath().path, count);
  const double tones = ShadesAreShown() ? 0 : DenseNow(client);
  const bool shaded = ShadesAreShown() || tones > 0;
  const bool coarse = tones > 0 && (ViewMoves() || ShownPath().play.playing);
  ShadeScale scale;
  const bool deep = shaded && HasDepths(KnownDepths());
  if (deep) scale = ScaleOf(KnownDepths());
  // Feeds grow from the front of the buffer and rapids from its end: together they are fewer
  // than the points.
  Segment* feed = segments;
  Segment* rapid = segments + kMaxControlPoints;
  for (std::int32_t i = 1; i < count; ++i) {
    const MotionPoint& to = ends[i];
    if (to.jump || (to.rapid && !showRapids)) continue;
    if (layer.known && !to.rapid && !LiesInLevel(layer, ends[i - 1], to)) continue;
    if (shaded && !to.rapid) {
      const int shade = deep ? ShadeOn(scale, ends[i - 1].z, to.z) : kDepthShades / 2;
      shades[feed - segments] = static_cast<unsigned char>(coarse ? CoarseShade(shade) : shade);
    }
    Segment& segment = to.rapid ? *--rapid : *feed++;
    segment.x0 = static_cast<float>(points[i - 1].x);
    segment.y0 = static_cast<float>(points[i - 1].y);
    segment.x1 = static_cast<float>(points[i].x);
    segment.y1 = static_cast<float>(points[i].y);
  }
  PathSegments result;
  result.feeds = segments;
  if (shaded) result.shades = shades;
  result.dense = tones;
  result.feedCount = static_cast<int>(feed - segments);
  result.rapids = rapid;
  result.rapidCount = static_cast<int>(segments + kMaxControlPoints - rapid);
  if (ViewMoves()) {
    result.feedCount =
        ThinSegments(segments, shaded ? shades : nullptr, result.feedCount, client,
                     coarse ? kCutsWork / 2 : kCutsWork);  // batches lie over each other
    result.rapidCount = ThinSegments(rapid, nullptr, result.rapidCount, client, kOtherWork);
  }
  return result;
}

}  // namespace morva
