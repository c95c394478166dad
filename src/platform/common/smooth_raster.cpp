#include "platform/common/smooth_raster.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <vector>

#include "platform/common/smooth_blend.h"

// Several bytes at a time where the processor can; the pixels are the same.
#if defined(__x86_64__) && defined(__GNUC__)
#define MORVA_BYTE_LANES 1
#include <immintrin.h>
#endif

namespace platform {
namespace {

// Coverage is kept in bytes, twice: a flat line steps from column to column, a steep one from row
// to row. The axis that it steps along is its major one. The bytes of one step lie side by side
// along the minor axis, so that a line writes those of a step at once.
//
// Both are asked tile by tile, 32 pixels a side. A ring of tiles around the picture takes what
// reaches over its edge and counts as covered.
constexpr int kMargin = kTile;  // minor pixels in front of the visible ones, and behind them
constexpr int kLargestSide = 8192;
constexpr double kOne = 4294967296.0;  // positions are 32.32 fixed point
constexpr int kPixelShift = 32;
constexpr int kTileShift = kPixelShift + 5;

constexpr int kPhaseBits = 6;  // a line is placed to this part of a pixel across
constexpr int kPhases = 1 << kPhaseBits;
constexpr int kSlopes = 32;        // profiles for slopes from 0 to 1
constexpr int kFewLanes = 8;       // bytes of a profile, for thin lines
constexpr int kManyLanes = 16;     // and for thick ones
constexpr int kWhole = 256;        // weight of a step that a line covers from end to end
constexpr int kCovered = 204;      // of 255; what has more is as good as covered
constexpr int kLongRun = 64;       // steps from which a repeated stroke is worth noticing
constexpr int kSeenBits = 14;      // table of strokes already drawn
constexpr int kFirstAsked = 4096;  // strokes that are looked for there in any case
constexpr int kRareRepeats = 64;   // fewer than one in so many are not worth it
constexpr int kVisitsPerCheck = 16;
constexpr int kGroupBits = 3;
constexpr int kGroup = 1 << kGroupBits;  // tiles a side; a stroke passes over a covered group
constexpr int kChunk = 8;                // segments that are taken in their own order
constexpr int kManyStrokes = 4096;

struct Plane {
  int majorPixels = 0;
  int minorPixels = 0;
  int pitch = 0;  // bytes from step to step
  std::vector<std::uint8_t> bytes;
};

enum Touched : std::uint8_t { kByFlat = 1, kBySteep = 2 };

struct Tile {
  std::uint8_t touched = 0;  // of Touched
  std::uint8_t visits = 0;
  std::uint16_t watched = 0;  // row * 32 + column; all pixels in front of it are covered
};

struct Coverage {
  int width = 0;
  int height = 0;
  Plane columns;  // flat lines: major x, minor y
  Plane rows;     // steep lines: major y, minor x
  int tilesAcross = 0;
  int tilesDown = 0;
  int open = 0;  // visible tiles that are not covered
  std::vector<Tile> tiles;
  std::vector<std::uint8_t> covered;  // a tile each, 1 for those that are covered
  std::vector<std::uint8_t> openOf;   // of a block of tiles each, how many are not covered
  std::vector<std::uint64_t> seen;    // long strokes of this batch, empty until there is one
  int asked = 0;                      // of them
  int repeated = 0;
};
Coverage coverage;

// How a pen lies across its steps at one slope.
struct Lie {
  double reach = 0;   // pixels each way of its middle, 0 until its profile is made
  double beyond = 0;  // pixels along the major axis that it reaches over an end
};

struct Pencil {
  double width = 0;
  int lanes = 0;
  std::vector<Lie> lies;  // of each slope
  // What a step covers, for each slope and each place between two pixels.
  std::vector<std::uint8_t> profiles;
};
std::vector<Pencil> pencils;  // one for each width that was asked for, of which there are few

std::ptrdiff_t At(const Plane& plane, int major, int minor) {
  return static_cast<std::ptrdiff_t>(major) * plane.pitch + minor + kMargin;
}

std::size_t TileNumber(int tx, int ty) {
  return static_cast<std::size_t>(ty) * static_cast<std::size_t>(coverage.tilesAcross) +
         static_cast<std::size_t>(tx);
}

int GroupsFor(int tiles) { return (tiles >> kGroupBits) + 1; }

std::uint8_t& OpenOf(int tx, int ty) {
  const int group = (ty >> kGroupBits) * GroupsFor(coverage.tilesAcross) + (tx >> kGroupBits);
  return coverage.openOf[static_cast<std::size_t>(group)];
}

int TilesFor(int pixels) { return (pixels + kTile - 1) / kTile; }

void SizePlane(Plane& plane, int majorPixels, int minorPixels) {
  plane.majorPixels = majorPixels;
  plane.minorPixels = minorPixels;
  // Blocks at the edge are read whole.
  plane.pitch = TilesFor(minorPixels) * kTile + 2 * kMargin;
  plane.bytes.assign(static_cast<std::size_t>(plane.pitch) *
                         static_cast<std::size_t>(TilesFor(majorPixels) * kTile),
                     0);
}

void Resize(int width, int height) {
  if (coverage.width == width && coverage.height == height) return;
  coverage.width = width;
  coverage.height = height;
  SizePlane(coverage.columns, width, height);
  SizePlane(coverage.rows, height, width);
  coverage.tilesAcross = TilesFor(width) + 3;
  coverage.tilesDown = TilesFor(height) + 3;
}

void OpenTiles() {
  const std::size_t all = TileNumber(0, coverage.tilesDown);
  coverage.tiles.assign(all, Tile{});
  coverage.covered.assign(all, 1);
  const int across = TilesFor(coverage.width);
  const int down = TilesFor(coverage.height);
  for (int ty = 1; ty <= down; ++ty) {
    std::fill_n(coverage.covered.begin() + static_cast<std::ptrdiff_t>(TileNumber(1, ty)), across,
                std::uint8_t{0});
  }
  coverage.open = across * down;
  const int groups = GroupsFor(coverage.tilesAcross) * GroupsFor(coverage.tilesDown);
  coverage.openOf.assign(static_cast<std::size_t>(groups), 0);
  for (int ty = 1; ty <= down; ++ty) {
    for (int tx = 1; tx <= across; ++tx) ++OpenOf(tx, ty);
  }
}

// The mean over the width of a step of what lies within `half` of the line's middle.
double CoveredAt(double distance, double half, double slope) {
  constexpr int kSamples = 16;
  double sum = 0;
  for (int i = 0; i < kSamples; ++i) {
    const double along = (i + 0.5) / kSamples - 0.5;
    const double away = std::fabs(distance + slope * along);
    sum += std::clamp(half + 0.5 - away, 0.0, std::min(1.0, 2 * half));
  }
  return sum / kSamples;
}

// From the middle of the line to the first byte of its profile.
constexpr double LanesAbove(int lanes) { return lanes / 2 - 0.5; }

std::uint8_t* ProfileOf(Pencil& pencil, int slopeClass) {
  return pencil.profiles.data() + static_cast<std::ptrdiff_t>(slopeClass) * kPhases * kManyLanes;
}

void MakeProfile(Pencil& pencil, int slopeClass) {
  const double slope = static_cast<double>(slopeClass) / (kSlopes - 1);
  const double half = pencil.width / 2 * std::sqrt(1 + slope * slope);
  const int lanes = pencil.lanes;
  std::uint8_t* const profile = ProfileOf(pencil, slopeClass);
  for (int phase = 0; phase < kPhases; ++phase) {
    for (int lane = 0; lane < lanes; ++lane) {
      const double distance = lane - static_cast<double>(phase) / kPhases - LanesAbove(lanes);
      profile[phase * lanes + lane] =
          static_cast<std::uint8_t>(CoveredAt(distance, half, slope) * 255 + 0.5);
    }
  }
  Lie& lie = pencil.lies[static_cast<std::size_t>(slopeClass)];
  lie.reach = half + 0.5 + slope / 2;
  // Half a pixel at least, so that two segments of a polyline leave no dent where they meet.
  lie.beyond = std::max(0.5, pencil.width / 2 / std::sqrt(1 + slope * slope));
}

Pencil& PencilOf(double width) {
  for (Pencil& pencil : pencils) {
    if (pencil.width == width) return pencil;
  }
  constexpr double kThickest = 1.4143;  // across a slope of 1, times the width
  Pencil& pencil = pencils.emplace_back();
  pencil.width = width;
  pencil.lies.resize(kSlopes);
  pencil.lanes = width / 2 * kThickest + 1 <= LanesAbove(kFewLanes) ? kFewLanes : kManyLanes;
  pencil.profiles.resize(static_cast<std::size_t>(kSlopes) * kPhases * kManyLanes);
  return pencil;
}

// Raises the bytes of a step to those of a profile.
template <int kLanes>
void Raise(std::uint8_t* bytes, const std::uint8_t* profile) {
#ifdef MORVA_BYTE_LANES
  if constexpr (kLanes == kFewLanes) {
    __m128i* at = reinterpret_cast<__m128i*>(bytes);
    const __m128i more = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(profile));
    _mm_storel_epi64(at, _mm_max_epu8(_mm_loadl_epi64(at), more));
  } else {
    __m128i* at = reinterpret_cast<__m128i*>(bytes);
    const __m128i more = _mm_loadu_si128(reinterpret_cast<const __m128i*>(profile));
    _mm_storeu_si128(at, _mm_max_epu8(_mm_loadu_si128(at), more));
  }
#else
  for (int i = 0; i < kLanes; ++i) bytes[i] = std::max(bytes[i], profile[i]);
#endif
}

// Columns of eight bytes become rows.
void Transpose(std::uint64_t (&eights)[kBlock]) {
#ifdef MORVA_BYTE_LANES
  __m128i pairs[4];
  for (int i = 0; i < 4; ++i) {
    pairs[i] =
        _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(&eights[2 * i])),
                          _mm_loadl_epi64(reinterpret_cast<const __m128i*>(&eights[2 * i + 1])));
  }
  const __m128i a = _mm_unpacklo_epi16(pairs[0], pairs[1]);
  const __m128i b = _mm_unpackhi_epi16(pairs[0], pairs[1]);
  const __m128i c = _mm_unpacklo_epi16(pairs[2], pairs[3]);
  const __m128i d = _mm_unpackhi_epi16(pairs[2], pairs[3]);
  __m128i* out = reinterpret_cast<__m128i*>(eights);
  _mm_storeu_si128(out, _mm_unpacklo_epi32(a, c));
  _mm_storeu_si128(out + 1, _mm_unpackhi_epi32(a, c));
  _mm_storeu_si128(out + 2, _mm_unpacklo_epi32(b, d));
  _mm_storeu_si128(out + 3, _mm_unpackhi_epi32(b, d));
#else
  std::uint8_t bytes[kBlock][kBlock];
  std::uint8_t turned[kBlock][kBlock];
  std::memcpy(bytes, eights, sizeof bytes);
  for (int i = 0; i < kBlock; ++i) {
    for (int k = 0; k < kBlock; ++k) turned[k][i] = bytes[i][k];
  }
  std::memcpy(eights, turned, sizeof turned);
#endif
}

// The coverage of eight rows of a tile.
struct Covered {
  alignas(32) std::uint8_t rows[kBlock][kTile];
};

void GatherFlat(Covered& out, int left, int top) {
  const Plane& plane = coverage.columns;
  for (int x = 0; x < kTile; x += kBlock) {
    std::uint64_t eights[kBlock];
    for (int i = 0; i < kBlock; ++i) {
      eights[i] = LoadEight(plane.bytes.data() + At(plane, left + x + i, top));
    }
    Transpose(eights);
    for (int i = 0; i < kBlock; ++i) std::memcpy(&out.rows[i][x], &eights[i], kBlock);
  }
}

void GatherRows(Covered& out, int left, int top, unsigned touched) {
  const Plane& plane = coverage.rows;
  if (touched & kByFlat) GatherFlat(out, left, top);
  if (!(touched & kBySteep)) return;
  for (int i = 0; i < kBlock; ++i) {
    const std::uint8_t* const row = plane.bytes.data() + At(plane, top + i, left);
    if (!(touched & kByFlat)) {
      std::memcpy(out.rows[i], row, kTile);
      continue;
    }
    for (int x = 0; x < kTile; x += kManyLanes) Raise<kManyLanes>(&out.rows[i][x], row + x);
  }
}

bool IsCovered(int x, int y) {
  return coverage.columns.bytes[static_cast<std::size_t>(At(coverage.columns, x, y))] >= kCovered ||
         coverage.rows.bytes[static_cast<std::size_t>(At(coverage.rows, y, x))] >= kCovered;
}

// How many of the first bytes are covered.
int CoveredBytes(const std::uint8_t* bytes, int count) {
  int covered = 0;
#ifdef MORVA_BYTE_LANES
  const __m128i least = _mm_set1_epi8(static_cast<char>(kCovered));
  for (; covered + kManyLanes <= count; covered += kManyLanes) {
    const __m128i some = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + covered));
    if (_mm_movemask_epi8(_mm_cmpeq_epi8(_mm_max_epu8(some, least), some)) != 0xFFFF) break;
  }
#endif
  while (covered < count && bytes[covered] >= kCovered) ++covered;
  return covered;
}

// Goes on where it stopped last time: at the first pixel that was not covered.
void CheckTile(std::size_t number) {
  Tile& tile = coverage.tiles[number];
  const int left = (static_cast<int>(number % TileNumber(0, 1)) - 1) * kTile;
  const int top = (static_cast<int>(number / TileNumber(0, 1)) - 1) * kTile;
  const bool whole = left + kTile <= coverage.width && top + kTile <= coverage.height;
  while (tile.watched < kTile * kTile) {
    const int y = top + tile.watched / kTile;
    const int x = left + tile.watched % kTile;
    const bool outside = x >= coverage.width || y >= coverage.height;
    if (!outside && !IsCovered(x, y)) return;
    if (!whole) {
      ++tile.watched;
      continue;
    }
    constexpr int kBytes = kBlock * kTile;
    const int block = tile.watched / kBytes;
    Covered covered;
    GatherRows(covered, left, top + block * kBlock, tile.touched);
    const int first = CoveredBytes(covered.rows[0], kBytes);
    tile.watched = static_cast<std::uint16_t>(block * kBytes + first);
    if (first < kBytes) return;
  }
  coverage.covered[number] = 1;
  --coverage.open;
  --OpenOf(static_cast<int>(number % TileNumber(0, 1)),
           static_cast<int>(number / TileNumber(0, 1)));
}

// A segment by its longer axis, going up it; pixels from the corner of the picture.
struct Line {
  bool flat = true;  // major x
  double major0 = 0, major1 = 0;
  double minor0 = 0;
  double slope = 0;  // minor pixels a step, -1 to 1
};

inline Line LineOf(const Segment& s, double left, double top, bool flat) {
  const double x0 = s.x0 - left, y0 = s.y0 - top;
  const double x1 = s.x1 - left, y1 = s.y1 - top;
  Line line;
  line.flat = flat;
  line.major0 = flat ? x0 : y0;
  line.major1 = flat ? x1 : y1;
  line.minor0 = flat ? y0 : x0;
  double minor1 = flat ? y1 : x1;
  if (line.major1 < line.major0) {
    std::swap(line.major0, line.major1);
    std::swap(line.minor0, minor1);
  }
  const double length = line.major1 - line.major0;
  if (length > 0) line.slope = std::clamp((minor1 - line.minor0) / length, -1.0, 1.0);
  return line;
}

// The visible part of a line.
struct Stroke {
  bool flat = true;
  int from = 0;  // steps
  int to = 0;
  int fromWeight = kWhole;  // of the first and of the last step, 1 to 256
  int toWeight = kWhole;
  double first = 0;  // where its middle lies at `from`
  double slope = 0;
};

constexpr double kOver = 10;  // pixels, more than the reach of the thickest line

// Cuts the steps to those that can reach the picture, some too many rather than too few; the
// margins take those. False: nothing is left.
bool CutSteps(const Line& line, const Plane& plane, double& low, double& high) {
  const double nearest = -kOver;
  const double farthest = plane.minorPixels + kOver - 1;
  low = std::max(low, 0.0);
  high = std::min(high, plane.majorPixels - 1.0);
  if (line.slope == 0) {
    if (line.minor0 < nearest || line.minor0 > farthest) return false;
  } else {
    double enter = line.major0 + (nearest - line.minor0) / line.slope;
    double leave = line.major0 + (farthest - line.minor0) / line.slope;
    if (enter > leave) std::swap(enter, leave);
    low = std::max(low, std::floor(enter));
    high = std::min(high, std::ceil(leave));
  }
  if (!(low <= high)) return false;
  // Far away the numbers are too coarse to be trusted.
  const double first = line.minor0 + line.slope * (low - line.major0);
  const double last = line.minor0 + line.slope * (high - line.major0);
  return std::min(first, last) > nearest - 3 && std::max(first, last) < farthest + 3;
}

// Ends of a line in 256ths of a step; what lies beyond the picture is cut off.
struct Ends {
  int from = 0;
  int to = 0;
};

inline bool LiesInside(const Line& line, const Plane& plane) {
  const double minor1 = line.minor0 + line.slope * (line.major1 - line.major0);
  return line.major0 >= 0 && line.major1 < plane.majorPixels - 1 &&
         std::min(line.minor0, minor1) >= 0 && std::max(line.minor0, minor1) < plane.minorPixels;
}

bool CutEnds(const Line& line, const Plane& plane, Ends& ends) {
  double low = std::floor(line.major0 + 0.5);
  double high = std::floor(line.major1 + 0.5);
  if (!CutSteps(line, plane, low, high)) return false;
  ends.from = static_cast<int>(std::max(low, line.major0 + 0.5) * kWhole);
  ends.to = static_cast<int>(std::min(high + 1, line.major1 + 0.5) * kWhole);
  return true;
}

// The visible steps of a line; false for none.
inline bool Visible(const Line& line, const Plane& plane, Stroke& stroke) {
  Ends ends;
  if (LiesInside(line, plane)) {
    ends.from = static_cast<int>((line.major0 + 0.5) * kWhole);
    ends.to = static_cast<int>((line.major1 + 0.5) * kWhole);
  } else if (!CutEnds(line, plane, ends)) {
    return false;
  }
  if (ends.to <= ends.from) return false;
  stroke.flat = line.flat;
  stroke.from = ends.from / kWhole;
  stroke.to = (ends.to - 1) / kWhole;
  stroke.slope = line.slope;
  stroke.first = line.minor0 + line.slope * (stroke.from - line.major0);
  if (stroke.from == stroke.to) {
    stroke.fromWeight = stroke.toWeight = ends.to - ends.from;
  } else {
    stroke.fromWeight = kWhole - ends.from % kWhole;
    stroke.toWeight = ends.to - stroke.to * kWhole;
  }
  return true;
}

// Takes the ends of a long stroke to eighths of a pixel. Programs that repeat a stroke at many
// depths, or lie much closer than the pixels, then repeat it exactly; true when it was drawn
// already, as far as the table remembers.
bool Repeats(Stroke& stroke) {
  const int steps = stroke.to - stroke.from;
  const double last = stroke.first + stroke.slope * steps;
  const int firstEighths = static_cast<int>((stroke.first + kMargin) * 8 + 0.5);
  const int lastEighths = static_cast<int>((last + kMargin) * 8 + 0.5);
  stroke.first = firstEighths / 8.0 - kMargin;
  stroke.slope = std::clamp((lastEighths - firstEighths) / 8.0 / steps, -1.0, 1.0);
  constexpr int kWeightStep = kWhole / 4;
  stroke.fromWeight = (stroke.fromWeight + kWeightStep - 1) / kWeightStep * kWeightStep;
  stroke.toWeight = (stroke.toWeight + kWeightStep - 1) / kWeightStep * kWeightStep;
  std::uint64_t key = static_cast<std::uint64_t>(stroke.from * 4 + stroke.fromWeight / kWeightStep);
  key = key << 15 | static_cast<std::uint64_t>(stroke.to * 4 + stroke.toWeight / kWeightStep);
  key = key << 17 | static_cast<std::uint64_t>(firstEighths);
  key = key << 17 | static_cast<std::uint64_t>(lastEighths);
  // The table costs more than it spares where hardly any stroke comes again.
  if (coverage.asked >= kFirstAsked && coverage.repeated < coverage.asked / kRareRepeats) {
    return false;
  }
  ++coverage.asked;
  std::vector<std::uint64_t>& seen = coverage.seen;
  if (seen.empty()) seen.assign(std::size_t{2} << kSeenBits, 0);
  const std::uint64_t place = (key * 0x9E3779B97F4A7C15u) >> (64 - kSeenBits);
  std::uint64_t& slot = seen[place * 2 + (stroke.flat ? 0 : 1)];
  if (slot == key) {
    ++coverage.repeated;
    return true;
  }
  slot = key;
  return false;
}

// `weight` in 256 of the bytes of a profile.
template <int kLanes>
void WeighLanes(std::uint8_t* part, const std::uint8_t* profile, int weight) {
#ifdef MORVA_BYTE_LANES
  const __m128i zero = _mm_setzero_si128();
  const __m128i weights = _mm_set1_epi16(static_cast<short>(weight));
  const auto weighed = [&](__m128i words) {
    return _mm_srli_epi16(_mm_mullo_epi16(words, weights), 8);
  };
  __m128i* at = reinterpret_cast<__m128i*>(part);
  if constexpr (kLanes == kFewLanes) {
    const __m128i lanes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(profile));
    _mm_storel_epi64(at, _mm_packus_epi16(weighed(_mm_unpacklo_epi8(lanes, zero)), zero));
  } else {
    const __m128i lanes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(profile));
    _mm_storeu_si128(at, _mm_packus_epi16(weighed(_mm_unpacklo_epi8(lanes, zero)),
                                          weighed(_mm_unpackhi_epi8(lanes, zero))));
  }
#else
  for (int i = 0; i < kLanes; ++i) part[i] = static_cast<std::uint8_t>(profile[i] * weight >> 8);
#endif
}

// Steps of one line, the first at `position` across, in fixed point.
struct Steps {
  std::uint8_t* bytes = nullptr;
  int pitch = 0;
  std::int64_t position = 0;
  std::int64_t step = 0;
  const std::uint8_t* profile = nullptr;
};

template <int kLanes>
const std::uint8_t* LanesAt(const Steps& steps, std::int64_t position) {
  const auto phase =
      static_cast<std::size_t>(position >> (kPixelShift - kPhaseBits)) & (kPhases - 1);
  return steps.profile + phase * kLanes;
}

template <int kLanes>
void RaiseSteps(const Steps& steps, int from, int to) {
  std::int64_t position = steps.position + steps.step * from;
  std::uint8_t* bytes = steps.bytes + static_cast<std::ptrdiff_t>(from) * steps.pitch;
  for (int i = from; i < to; ++i) {
    Raise<kLanes>(bytes + (position >> kPixelShift), LanesAt<kLanes>(steps, position));
    position += steps.step;
    bytes += steps.pitch;
  }
}

// A step that the line covers in part only.
template <int kLanes>
inline void RaisePart(const Steps& steps, int at, int weight) {
  const std::int64_t position = steps.position + steps.step * at;
  const std::uint8_t* const lanes = LanesAt<kLanes>(steps, position);
  std::uint8_t* const bytes =
      steps.bytes + static_cast<std::ptrdiff_t>(at) * steps.pitch + (position >> kPixelShift);
  alignas(16) std::uint8_t part[kLanes];
  WeighLanes<kLanes>(part, lanes, weight);
  Raise<kLanes>(bytes, part);
}

// Notes that a line has drawn in a tile.
void Visit(std::size_t number, std::uint8_t by) {
  Tile& tile = coverage.tiles[number];
  tile.touched |= by;
  if (++tile.visits < kVisitsPerCheck) return;
  tile.visits = 0;
  if (!coverage.covered[number]) CheckTile(number);
}

// The steps `i` to `end` of a stroke, whose first one is that of `steps`.
template <int kLanes>
inline void DrawBand(const Stroke& stroke, const Steps& steps, int i, int end) {
  int first = 0;
  int behind = end - i + 1;
  if (i == stroke.from && stroke.fromWeight < kWhole) {
    RaisePart<kLanes>(steps, first++, stroke.fromWeight);
  }
  if (end == stroke.to && stroke.toWeight < kWhole) {
    RaisePart<kLanes>(steps, --behind, stroke.toWeight);
  }
  RaiseSteps<kLanes>(steps, first, behind);
}

// From the first byte of a step to the first and the last that a line reaches, in fixed point.
struct Reach {
  std::int64_t first = 0;
  std::int64_t last = 0;
};

// The lowest and the highest of something of 2 to the power of `shift` that a line reaches between
// two positions.
struct Span {
  std::size_t low = 0;
  std::size_t high = 0;
};

inline Span SpanOf(std::int64_t position, std::int64_t last, const Reach& reach, int shift) {
  return {static_cast<std::size_t>((std::min(position, last) + reach.first) >> shift),
          static_cast<std::size_t>((std::max(position, last) + reach.last) >> shift)};
}

// How far apart neighbours along a stroke and across it lie.
struct Pitches {
  std::size_t along = 0;
  std::size_t across = 0;
};

inline Pitches PitchesOf(bool flat, std::size_t row) {
  return flat ? Pitches{1, row} : Pitches{row, 1};
}

// Whether a band of a stroke has anything to cover. It reaches three tiles at most.
inline bool BandIsOpen(std::size_t band, const Span& tiles, const Pitches& pitches) {
  const std::uint8_t* const covered = &coverage.covered[band * pitches.along];
  return !(covered[tiles.low * pitches.across] &
           covered[(tiles.low + tiles.high) / 2 * pitches.across] &
           covered[tiles.high * pitches.across]);
}

// The same of all its bands in a group, which reach three groups at most.
inline bool GroupIsOpen(std::size_t group, const Span& groups, const Pitches& pitches) {
  const std::uint8_t* const open = &coverage.openOf[group * pitches.along];
  return (open[groups.low * pitches.across] |
          open[(groups.low + groups.high) / 2 * pitches.across] |
          open[groups.high * pitches.across]) != 0;
}

// The first step behind those in the group of step `i`. The ring is one tile wide, so that groups
// begin one tile early.
inline int BehindGroup(int i) {
  const int group = (i / kTile + 1) >> kGroupBits;
  return ((group + 1) * kGroup - 1) * kTile;
}

template <int kLanes>
inline void DrawStroke(const Stroke& stroke, double reach, const std::uint8_t* profile) {
  Plane& plane = stroke.flat ? coverage.columns : coverage.rows;
  constexpr double kHalfPhase = 0.5 / kPhases;
  constexpr double kAbove = LanesAbove(kLanes);
  Steps steps;
  steps.pitch = plane.pitch;
  steps.profile = profile;
  steps.step = static_cast<std::int64_t>(stroke.slope * kOne);
  std::int64_t position =
      static_cast<std::int64_t>((stroke.first + kMargin - kAbove + kHalfPhase) * kOne);
  const Reach reached = {static_cast<std::int64_t>((kAbove - reach) * kOne),
                         static_cast<std::int64_t>((kAbove + reach) * kOne)};
  const Pitches tiles = PitchesOf(stroke.flat, TileNumber(0, 1));
  const Pitches groups =
      PitchesOf(stroke.flat, static_cast<std::size_t>(GroupsFor(coverage.tilesAcross)));
  // A short one is through before it pays.
  int nextGroup = stroke.to - stroke.from >= kLongRun ? stroke.from : stroke.to + 1;
  for (int i = stroke.from; i <= stroke.to;) {
    const auto band = static_cast<std::size_t>(i / kTile + 1);
    if (i >= nextGroup) {
      nextGroup = std::min(stroke.to + 1, BehindGroup(i));
      const std::int64_t there = position + steps.step * (nextGroup - 1 - i);
      const Span span = SpanOf(position, there, reached, kTileShift + kGroupBits);
      if (!GroupIsOpen(band >> kGroupBits, span, groups)) {
        position = there + steps.step;
        i = nextGroup;
        continue;
      }
    }
    const int end = std::min(stroke.to, i | (kTile - 1));
    const std::int64_t last = position + steps.step * (end - i);
    const Span span = SpanOf(position, last, reached, kTileShift);
    if (BandIsOpen(band, span, tiles)) {
      steps.bytes = plane.bytes.data() + static_cast<std::ptrdiff_t>(i) * plane.pitch;
      steps.position = position;
      DrawBand<kLanes>(stroke, steps, i, end);
      for (std::size_t across = span.low; across <= span.high; ++across) {
        Visit(band * tiles.along + across * tiles.across, stroke.flat ? kByFlat : kBySteep);
      }
    }
    position = last + steps.step;
    i = end + 1;
  }
}

bool IsPlace(const Segment& s) {
  return std::isfinite(s.x0) && std::isfinite(s.y0) && std::isfinite(s.x1) && std::isfinite(s.y1);
}

template <int kLanes>
inline void GatherLine(Line line, Pencil& pencil) {
  const int slopeClass = static_cast<int>(std::fabs(line.slope) * (kSlopes - 1) + 0.5);
  const Lie& lie = pencil.lies[static_cast<std::size_t>(slopeClass)];
  if (lie.reach == 0) MakeProfile(pencil, slopeClass);
  line.major0 -= lie.beyond;
  line.major1 += lie.beyond;
  line.minor0 -= line.slope * lie.beyond;
  Stroke stroke;
  if (!Visible(line, line.flat ? coverage.columns : coverage.rows, stroke)) return;
  if (stroke.to - stroke.from >= kLongRun && Repeats(stroke)) return;
  DrawStroke<kLanes>(stroke, lie.reach, ProfileOf(pencil, slopeClass));
}

// How far apart chunks are taken, coprime to their number. Neighbours come late then, and strokes
// that lie side by side cover their tiles early.
int ChunkStep(int chunks) {
  int step = static_cast<int>(chunks * 0.618);
  const auto divides = [](int a, int b) {
    while (b != 0) {
      const int rest = a % b;
      a = b;
      b = rest;
    }
    return a != 1;
  };
  while (step > 1 && divides(chunks, step)) --step;
  return std::max(step, 1);
}

bool IsFlat(const Segment& s) { return std::fabs(s.x1 - s.x0) >= std::fabs(s.y1 - s.y0); }

// Whether most segments are long, by some of them.
bool MostAreLong(const Segment* segments, int count) {
  constexpr int kAsked = 64;
  int isLong = 0;
  for (int i = 0; i < kAsked; ++i) {
    const Segment& s = segments[static_cast<std::ptrdiff_t>(count) * i / kAsked];
    isLong += std::max(std::fabs(s.x1 - s.x0), std::fabs(s.y1 - s.y0)) >= kLongRun ? 1 : 0;
  }
  return isLong > kAsked / 2;
}

// Many long strokes: of each kind by itself, so that one set of bytes is in use at a time, and
// out of their order.
template <int kLanes>
void GatherLong(const Segment* segments, int count, const Rect& area, Pencil& pencil) {
  const int chunks = (count + kChunk - 1) / kChunk;
  const int step = ChunkStep(chunks);
  for (const bool flat : {true, false}) {
    int chunk = 0;
    for (int i = 0; i < chunks && coverage.open > 0; ++i) {
      const int end = std::min(count, (chunk + 1) * kChunk);
      for (int k = chunk * kChunk; k < end; ++k) {
        const Segment& s = segments[k];
        if (!IsPlace(s) || IsFlat(s) != flat) continue;
        GatherLine<kLanes>(LineOf(s, area.left, area.top, flat), pencil);
      }
      chunk += step;
      if (chunk >= chunks) chunk -= chunks;
    }
  }
}

template <int kLanes>
void GatherSegments(const Segment* segments, int count, const Rect& area, Pencil& pencil) {
  if (count >= kManyStrokes && MostAreLong(segments, count)) {
    return GatherLong<kLanes>(segments, count, area, pencil);
  }
  for (int i = 0; i < count && coverage.open > 0; ++i) {
    const Segment& s = segments[i];
    if (IsPlace(s)) GatherLine<kLanes>(LineOf(s, area.left, area.top, IsFlat(s)), pencil);
  }
}

// The picture that is drawn into.
struct Sheet {
  std::uint32_t* pixels = nullptr;  // its first visible pixel
  std::ptrdiff_t stride = 0;
  std::uint32_t ink = 0;
};

// Eight rows of a tile, or those that the picture has.
void BlendRows(const Sheet& sheet, int left, int top, unsigned touched) {
  Covered covered;
  GatherRows(covered, left, top, touched);
  const int count = std::min(kTile, coverage.width - left);
  const int rows = std::min(kBlock, coverage.height - top);
  for (int i = 0; i < rows; ++i) {
    std::uint32_t* const pixels = sheet.pixels + (top + i) * sheet.stride + left;
    if (count == kTile) {
      BlendRow(pixels, covered.rows[i], sheet.ink);
    } else {
      BlendPixels(pixels, covered.rows[i], count, sheet.ink);
    }
  }
}

void FillRows(const Sheet& sheet, int left, int top) {
  const int count = std::min(kTile, coverage.width - left);
  const int rows = std::min(kBlock, coverage.height - top);
  for (int i = 0; i < rows; ++i) {
    std::fill_n(sheet.pixels + (top + i) * sheet.stride + left, count, sheet.ink);
  }
}

void ClearTile(Plane& plane, int major, int minor) {
  for (int i = 0; i < kTile; ++i) {
    std::memset(plane.bytes.data() + At(plane, major + i, minor), 0, kTile);
  }
}

// Eight rows across the picture at a time, so that its memory is gone through in few streams.
void BlendRowOfTiles(const Sheet& sheet, int ty) {
  const int top = (ty - 1) * kTile;
  const int bottom = std::min(top + kTile, coverage.height);
  for (int y = top; y < bottom; y += kBlock) {
    for (int tx = 1; tx <= TilesFor(coverage.width); ++tx) {
      const std::size_t number = TileNumber(tx, ty);
      const unsigned touched = coverage.tiles[number].touched;
      const int left = (tx - 1) * kTile;
      if (touched == 0) continue;
      if (coverage.covered[number]) {
        FillRows(sheet, left, y);
      } else {
        BlendRows(sheet, left, y, touched);
      }
    }
  }
}

// Right behind the blending, while the bytes are at hand.
void ClearRowOfTiles(int ty) {
  for (int tx = 1; tx <= TilesFor(coverage.width); ++tx) {
    const unsigned touched = coverage.tiles[TileNumber(tx, ty)].touched;
    const int left = (tx - 1) * kTile;
    const int top = (ty - 1) * kTile;
    if (touched & kByFlat) ClearTile(coverage.columns, left, top);
    if (touched & kBySteep) ClearTile(coverage.rows, top, left);
  }
}

}  // namespace

void BlendSegments(std::uint32_t* pixels, int stridePixels, int width, int height, const Rect& clip,
                   const Segment* segments, int count, Colour colour, double penWidth) {
  Rect area;
  area.left = std::max(clip.left, 0);
  area.top = std::max(clip.top, 0);
  area.right = std::min(clip.right, width);
  area.bottom = std::min(clip.bottom, height);
  if (area.left >= area.right || area.top >= area.bottom || count <= 0) return;
  area.right = area.left + std::min(RectWidth(area), kLargestSide);
  area.bottom = area.top + std::min(RectHeight(area), kLargestSide);
  Resize(RectWidth(area), RectHeight(area));
  OpenTiles();
  coverage.seen.clear();
  coverage.asked = 0;
  coverage.repeated = 0;
  Pencil& pencil = PencilOf(std::clamp(penWidth, 1.0, kWidestSmoothPen));
  if (pencil.lanes == kFewLanes) {
    GatherSegments<kFewLanes>(segments, count, area, pencil);
  } else {
    GatherSegments<kManyLanes>(segments, count, area, pencil);
  }
  Sheet sheet;
  sheet.stride = stridePixels;
  sheet.pixels = pixels + area.top * sheet.stride + area.left;
  sheet.ink = 0xFF000000u | colour;
  for (int ty = 1; ty <= TilesFor(coverage.height); ++ty) {
    BlendRowOfTiles(sheet, ty);
    ClearRowOfTiles(ty);
  }
}

}  // namespace platform
