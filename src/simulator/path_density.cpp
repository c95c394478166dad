#include "simulator/path_density.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "simulator/view_parts.h"

namespace morva {
namespace {

using platform::PointF;
using platform::Rect;

// Narrows the part of a segment that lies inside, from `first` to `last` of it, by one edge: `out`
// is how far the start lies beyond the edge, `along` how much of that the segment makes good.
bool Narrow(double out, double along, double& first, double& last) {
  if (along == 0) return out <= 0;
  const double at = out / along;
  if (along > 0) {
    first = std::max(first, at);
  } else {
    last = std::min(last, at);
  }
  return first < last;
}

// Cuts a segment to what lies inside; false where nothing does.
bool ClipTo(const Rect& client, PointF& from, PointF& to) {
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  double first = 0, last = 1;
  if (!Narrow(client.left - from.x, dx, first, last) ||
      !Narrow(from.x - client.right, -dx, first, last) ||
      !Narrow(client.top - from.y, dy, first, last) ||
      !Narrow(from.y - client.bottom, -dy, first, last)) {
    return false;
  }
  to = {from.x + last * dx, from.y + last * dy};
  from = {from.x + first * dx, from.y + first * dy};
  return true;
}

// Each step is 1 to `widest`, a power of two, in no rhythm that the path could share.
std::int32_t StepAt(std::int32_t index, unsigned widest) {
  const unsigned mixed = static_cast<unsigned>(index) * 2654435761U;
  return 1 + static_cast<std::int32_t>((mixed >> 16) & (widest - 1));
}

}  // namespace

double CoveredPart(const MotionPath& of, const PointF* points, const Rect& client) {
  constexpr std::int32_t kEnough = 8192;  // points that stand for all
  unsigned widest = 1;
  while (of.count / static_cast<std::int32_t>(widest) > kEnough) widest *= 2;
  double length = 0;
  double minX = client.right, maxX = client.left, minY = client.bottom, maxY = client.top;
  std::int32_t looked = 0;
  for (std::int32_t i = 1; i < of.count; i += StepAt(i, widest)) {
    ++looked;
    if (of.points[i].rapid || of.points[i].jump) continue;
    PointF from = points[i - 1];
    PointF to = points[i];
    if (!ClipTo(client, from, to)) continue;
    length += std::hypot(to.x - from.x, to.y - from.y);
    minX = std::min({minX, from.x, to.x});
    maxX = std::max({maxX, from.x, to.x});
    minY = std::min({minY, from.y, to.y});
    maxY = std::max({maxY, from.y, to.y});
  }
  if (looked == 0 || !(length > 0)) return 0;
  constexpr double kLeastArea = 1024;  // pixels: a speck has no lines to tell apart
  const double area = std::max((maxX - minX) * (maxY - minY), kLeastArea);
  return length * kFeedWidth / area * (of.count - 1) / looked;
}

double PartOfDense(double covered) {
  return std::clamp((covered - kSparse) / (kDense - kSparse), 0.0, 1.0);
}

}  // namespace morva
