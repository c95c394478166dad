#include "simulator/thin_path.h"

#include <algorithm>
#include <cmath>

namespace morva {
namespace {

using platform::Rect;
using platform::Segment;

constexpr float kShort = 2;     // pixels along either axis, below which pieces are joined
constexpr float kPenReach = 8;  // pixels, more than a pen reaches over the rim on any screen

// Pixels along its longer axis inside the picture, -1 for a segment outside it and for one with a
// coordinate that is no number.
float VisibleLength(const Segment& s, const Rect& client) {
  const auto left = static_cast<float>(client.left) - kPenReach;
  const auto top = static_cast<float>(client.top) - kPenReach;
  const auto right = static_cast<float>(client.right) + kPenReach;
  const auto bottom = static_cast<float>(client.bottom) + kPenReach;
  const float across = std::min(std::max(s.x0, s.x1), right) - std::max(std::min(s.x0, s.x1), left);
  const float down = std::min(std::max(s.y0, s.y1), bottom) - std::max(std::min(s.y0, s.y1), top);
  return across >= 0 && down >= 0 ? std::max(across, down) : -1;
}

bool IsTooMuch(const Segment* segments, int count, const Rect& client, std::int64_t mostWork) {
  std::int64_t work = kSegmentWork * count;
  for (int i = 0; i < count && work <= mostWork; ++i) {
    work += static_cast<std::int64_t>(std::max(VisibleLength(segments[i], client), 0.0F));
  }
  return work > mostWork;
}

bool IsShort(const Segment& s) {
  return std::fabs(s.x1 - s.x0) < kShort && std::fabs(s.y1 - s.y0) < kShort;
}

// Whether `next` goes on where `s` ends, both of them short.
bool Joins(const Segment& s, const Segment& next) {
  return s.x1 == next.x0 && s.y1 == next.y0 && IsShort(s) && IsShort(next);
}

// The same for a segment in every frame, without a rhythm that a path could share.
bool IsKept(int index, unsigned oneIn) {
  const unsigned mixed = (static_cast<unsigned>(index) + 1) * 2654435761U;
  return ((mixed >> 16) & (oneIn - 1)) == 0;
}

struct Thinned {
  int count = 0;
  std::int64_t work = 0;
};

// Joins what is short, leaves out what is not seen, and keeps one in so many of the rest. With
// `moves` those that are kept go to the front.
Thinned Thin(Segment* segments, unsigned char* shades, int count, const Rect& client,
             unsigned oneIn, bool moves) {
  Thinned kept;
  for (int i = 0; i < count;) {
    const int first = i;
    Segment s = segments[i++];
    for (; i < count && Joins(s, segments[i]); ++i) {
      if (shades && shades[i] != shades[first]) break;
      s.x1 = segments[i].x1;
      s.y1 = segments[i].y1;
    }
    if (!IsKept(first, oneIn)) continue;
    const float length = VisibleLength(s, client);
    if (length < 0) continue;
    kept.work += kSegmentWork + static_cast<std::int64_t>(length);
    if (moves) {
      segments[kept.count] = s;
      if (shades) shades[kept.count] = shades[first];
    }
    ++kept.count;
  }
  return kept;
}

}  // namespace

int ThinSegments(Segment* segments, unsigned char* shades, int count, const Rect& client,
                 std::int64_t mostWork) {
  if (!IsTooMuch(segments, count, client, mostWork)) return count;
  const Thinned joined = Thin(segments, shades, count, client, 1, false);
  unsigned oneIn = 1;
  while (joined.work / oneIn > mostWork) oneIn *= 2;
  return Thin(segments, shades, count, client, oneIn, true).count;
}

}  // namespace morva
