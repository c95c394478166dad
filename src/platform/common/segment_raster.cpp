#include "platform/common/segment_raster.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <vector>

// Four steps of a line at a time where the processor can; the pixels are the same.
#if defined(__x86_64__) && defined(__GNUC__)
#define MORVA_WIDE_STEPS 1
#include <immintrin.h>
#endif

namespace platform {
namespace {

// The set of covered pixels is kept twice, for the two kinds of line. A flat line steps from
// column to column, a steep one from row to row; the axis it steps along is its major one.
// Either kind marks one or two neighbouring pixels of the minor axis at each step.
//
// Each set is cut into strips along the major axis. A strip has 64 bits for every step and
// begins 32 bits behind the one before, so that half of it is shared: 32 steps of a line,
// which move it by at most 31 pixels, always lie within one strip and touch memory in order.
constexpr int kTile = 32;
constexpr int kMargin = kTile;  // minor pixels in front of the visible ones
constexpr int kLargestSide = 8192;
constexpr double kOne = 4294967296.0;  // positions are 32.32 fixed point
constexpr int kTileShift = 32 + 5;
constexpr double kTieLift = 1.0 / 16384;

constexpr int kLongRun = 64;   // steps from which a repeated stroke is worth noticing
constexpr int kSeenBits = 14;  // table of strokes already drawn
constexpr int kVisitsPerCheck = 8;
// Up to so many segments those along an axis are cheaper drawn than gathered, even if all of them
// lie over each other.
constexpr int kFewSegments = 1024;

struct Strips {
  int majorPixels = 0;
  int minorPixels = 0;
  int count = 0;                      // strips
  std::vector<std::uint64_t> bits;    // strip by strip, one word a step
  std::vector<std::uint8_t> touched;  // strip by strip, a count of visits for 32 steps
  int bands = 0;
};

// Visible tiles of 32 by 32 pixels, with a ring of tiles around them that count as full.
struct Tiles {
  int across = 0;
  int down = 0;
  int open = 0;  // visible tiles that are not full
  std::vector<std::uint8_t> full;
  std::vector<std::uint16_t> watched;  // a pixel that was free, row * 32 + column
};

struct Coverage {
  int width = 0;
  int height = 0;
  Strips columns;  // flat lines: major x, minor y
  Strips rows;     // steep lines: major y, minor x
  Tiles tiles;
  std::vector<std::uint64_t> seen;
};

Coverage coverage;

std::size_t At(int row, int column, int across) {
  return static_cast<std::size_t>(row) * static_cast<std::size_t>(across) +
         static_cast<std::size_t>(column);
}

int TilesFor(int pixels) { return (pixels + kTile - 1) / kTile; }

void SizeStrips(Strips& strips, int majorPixels, int minorPixels) {
  strips.majorPixels = majorPixels;
  strips.minorPixels = minorPixels;
  strips.count = minorPixels / kTile + 3;
  strips.bands = TilesFor(majorPixels);
  strips.bits.assign(At(strips.count, 0, majorPixels), 0);
  strips.touched.assign(At(strips.count, 0, strips.bands), 0);
}

void Resize(int width, int height) {
  if (coverage.width == width && coverage.height == height) return;
  coverage.width = width;
  coverage.height = height;
  SizeStrips(coverage.columns, width, height);
  SizeStrips(coverage.rows, height, width);
  Tiles& tiles = coverage.tiles;
  tiles.across = width / kTile + 4;
  tiles.down = height / kTile + 4;
}

void OpenTiles() {
  Tiles& tiles = coverage.tiles;
  const std::size_t all = At(tiles.down, 0, tiles.across);
  tiles.full.assign(all, 1);
  tiles.watched.assign(all, 0);
  const int across = TilesFor(coverage.width);
  const int down = TilesFor(coverage.height);
  for (int ty = 1; ty <= down; ++ty) {
    std::fill_n(tiles.full.begin() + static_cast<std::ptrdiff_t>(At(ty, 1, tiles.across)), across,
                std::uint8_t{0});
  }
  tiles.open = across * down;
}

// The 32 minor bits that tile `tile` (1 is the first visible one) has at step `major`.
std::uint32_t TileBits(const Strips& strips, int tile, int major) {
  return static_cast<std::uint32_t>(strips.bits[At(tile, major, strips.majorPixels)]) |
         static_cast<std::uint32_t>(strips.bits[At(tile - 1, major, strips.majorPixels)] >> 32);
}

bool BandTouched(const Strips& strips, int tile, int band) {
  return strips.touched[At(tile, band, strips.bands)] ||
         strips.touched[At(tile - 1, band, strips.bands)];
}

// Bit j of word i becomes bit i of word j.
void Transpose(std::uint32_t (&words)[kTile]) {
  std::uint32_t low = 0x0000FFFFu;
  for (unsigned j = 16; j != 0; j >>= 1, low ^= low << j) {
    for (unsigned k = 0; k < kTile; k = (k + j + 1) & ~j) {
      const std::uint32_t swap = ((words[k] >> j) ^ words[k + j]) & low;
      words[k] ^= swap << j;
      words[k + j] ^= swap;
    }
  }
}

// The covered pixels of a visible tile, a word a row, bit 0 leftmost. Rows and columns beyond
// the picture are empty.
void GatherTile(int tx, int ty, std::uint32_t (&words)[kTile]) {
  const int left = (tx - 1) * kTile;
  const int top = (ty - 1) * kTile;
  std::fill(std::begin(words), std::end(words), 0u);
  if (BandTouched(coverage.columns, ty, tx - 1)) {
    const int steps = std::min(kTile, coverage.width - left);
    for (int i = 0; i < steps; ++i) words[i] = TileBits(coverage.columns, ty, left + i);
    Transpose(words);
  }
  if (BandTouched(coverage.rows, tx, ty - 1)) {
    const int steps = std::min(kTile, coverage.height - top);
    for (int i = 0; i < steps; ++i) words[i] |= TileBits(coverage.rows, tx, top + i);
  }
}

std::uint32_t VisibleColumns(int tx) {
  const int columns = std::min(kTile, coverage.width - (tx - 1) * kTile);
  return columns == kTile ? ~0u : (1u << columns) - 1u;
}

// Looks first at the pixel that was found free last time, which settles most questions.
void CheckTile(int tx, int ty) {
  Tiles& tiles = coverage.tiles;
  const std::size_t tile = At(ty, tx, tiles.across);
  if (tiles.full[tile]) return;
  const int row = tiles.watched[tile] / kTile;
  const int column = tiles.watched[tile] % kTile;
  const int left = (tx - 1) * kTile;
  const int top = (ty - 1) * kTile;
  if (((TileBits(coverage.columns, ty, left + column) >> row) & 1u) == 0 &&
      ((TileBits(coverage.rows, tx, top + row) >> column) & 1u) == 0) {
    return;
  }
  std::uint32_t words[kTile];
  GatherTile(tx, ty, words);
  const std::uint32_t visible = VisibleColumns(tx);
  const int visibleRows = std::min(kTile, coverage.height - top);
  for (int i = 0; i < visibleRows; ++i) {
    const std::uint32_t free = visible & ~words[i];
    if (free) {
      tiles.watched[tile] = static_cast<std::uint16_t>(i * kTile + std::countr_zero(free));
      return;
    }
  }
  tiles.full[tile] = 1;
  --tiles.open;
}

// A segment by its longer axis, going up it; pixels from the corner of the picture.
struct Line {
  bool flat = true;  // major x
  double major0 = 0, major1 = 0;
  double minor0 = 0;
  double slope = 0;  // minor pixels a step, -1 to 1
};

Line LineOf(Segment s, double left, double top) {
  const double width = std::fabs(static_cast<double>(s.x1) - s.x0);
  const double height = std::fabs(static_cast<double>(s.y1) - s.y0);
  Line line;
  line.flat = width >= height;
  if (line.flat ? s.x1 < s.x0 : s.y1 < s.y0) {
    std::swap(s.x0, s.x1);
    std::swap(s.y0, s.y1);
  }
  const double x0 = s.x0 - left, y0 = s.y0 - top;
  const double x1 = s.x1 - left, y1 = s.y1 - top;
  line.major0 = line.flat ? x0 : y0;
  line.major1 = line.flat ? x1 : y1;
  line.minor0 = line.flat ? y0 : x0;
  const double length = line.flat ? width : height;
  const double rise = line.flat ? y1 - y0 : x1 - x0;
  if (length > 0) line.slope = std::clamp(rise / length, -1.0, 1.0);
  return line;
}

// Cuts the steps of a line to those that can reach the picture, a pixel or two too many
// rather than too few; the margins of the set take those.
bool VisibleSteps(const Line& line, int majorPixels, int minorPixels, int& from, int& to) {
  double low = std::max(std::floor(line.major0 + 0.5), 0.0);
  double high = std::min(std::floor(line.major1 + 0.5), majorPixels - 1.0);
  const double nearest = -3.0;
  const double farthest = minorPixels + 2.0;
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
  from = static_cast<int>(low);
  to = static_cast<int>(high);
  // Far away the numbers are too coarse to be trusted.
  const double first = line.minor0 + line.slope * (low - line.major0);
  const double last = line.minor0 + line.slope * (high - line.major0);
  const double limit = minorPixels + kMargin - 2.0;
  return std::min(first, last) > 2.0 - kMargin && std::max(first, last) < limit;
}

void CheckVisited(bool flat, int band, int strip) {
  CheckTile(flat ? band + 1 : strip, flat ? strip : band + 1);
  CheckTile(flat ? band + 1 : strip + 1, flat ? strip + 1 : band + 1);
}

void MarkPlainSteps(std::uint64_t* bits, int count, std::int64_t position, std::int64_t step,
                    std::uint64_t pen) {
  for (int k = 0; k < count; ++k) {
    bits[k] |= pen << (position >> 32);
    position += step;
  }
}

#ifdef MORVA_WIDE_STEPS
__attribute__((target("avx2"))) void MarkWideSteps(std::uint64_t* bits, int count,
                                                   std::int64_t position, std::int64_t step,
                                                   std::uint64_t pen) {
  const __m256i pens = _mm256_set1_epi64x(static_cast<long long>(pen));
  const __m256i stride = _mm256_set1_epi64x(4 * step);
  __m256i places =
      _mm256_setr_epi64x(position, position + step, position + 2 * step, position + 3 * step);
  int k = 0;
  for (; k + 4 <= count; k += 4) {
    __m256i* four = reinterpret_cast<__m256i*>(bits + k);
    const __m256i marks = _mm256_sllv_epi64(pens, _mm256_srli_epi64(places, 32));
    _mm256_storeu_si256(four, _mm256_or_si256(_mm256_loadu_si256(four), marks));
    places = _mm256_add_epi64(places, stride);
  }
  MarkPlainSteps(bits + k, count - k, position + step * k, step, pen);
}
#endif

using StepMarker = void (*)(std::uint64_t*, int, std::int64_t, std::int64_t, std::uint64_t);

StepMarker ChooseMarker() {
#ifdef MORVA_WIDE_STEPS
  if (__builtin_cpu_supports("avx2")) return MarkWideSteps;
#endif
  return MarkPlainSteps;
}

// Marks `count` steps of one strip, the first at `position` within it.
const StepMarker MarkSteps = ChooseMarker();

// The visible part of a line: pixels across at its first step, margin included, and a step.
struct Stroke {
  bool flat = true;
  int from = 0;
  int to = 0;
  double first = 0;
  double slope = 0;
};

// The thin pen takes the pixel whose middle is nearest, the wide one the two around. Ties are
// lifted by more than the steps lose, so that they end alike wherever a line is cut.
std::int64_t FirstPosition(const Stroke& stroke, bool wide) {
  return static_cast<std::int64_t>((stroke.first + (wide ? 0.0 : 0.5) + kTieLift) * kOne);
}

// The picture that is drawn into, from its first visible pixel on.
struct Sheet {
  std::uint32_t* pixels = nullptr;
  std::ptrdiff_t stride = 0;
  std::uint32_t ink = 0;
};

// A stroke along an axis, right into the picture.
void ColourStraight(const Sheet& sheet, const Stroke& stroke, bool wide) {
  const int first = static_cast<int>(FirstPosition(stroke, wide) >> 32) - kMargin;
  const int across = stroke.flat ? coverage.height : coverage.width;
  for (int minor = std::max(first, 0); minor <= std::min(first + (wide ? 1 : 0), across - 1);
       ++minor) {
    if (stroke.flat) {
      std::fill_n(sheet.pixels + minor * sheet.stride + stroke.from, stroke.to - stroke.from + 1,
                  sheet.ink);
      continue;
    }
    for (int y = stroke.from; y <= stroke.to; ++y)
      sheet.pixels[y * sheet.stride + minor] = sheet.ink;
  }
}

void DrawStroke(const Stroke& stroke, bool wide) {
  Strips& strips = stroke.flat ? coverage.columns : coverage.rows;
  const Tiles& tiles = coverage.tiles;
  const std::uint64_t pen = wide ? 3 : 1;
  const int extra = wide ? 1 : 0;
  std::int64_t position = FirstPosition(stroke, wide);
  const std::int64_t step = static_cast<std::int64_t>(stroke.slope * kOne);
  // Neighbouring bands lie one tile apart, neighbouring strips one row of tiles, or reversed.
  const int bandPitch = stroke.flat ? 1 : tiles.across;
  const int stripPitch = stroke.flat ? tiles.across : 1;
  int band = stroke.from / kTile;
  for (int i = stroke.from; i <= stroke.to; ++band) {
    const int end = std::min(stroke.to, i | (kTile - 1));
    const std::int64_t last = position + step * (end - i);
    const std::int64_t lowest = std::min(position, last);
    const std::int64_t highest = std::max(position, last);
    const int strip = static_cast<int>(lowest >> kTileShift);
    const int lastTile = static_cast<int>(((highest >> 32) + extra) >> 5);
    const std::uint8_t* full = &tiles.full[static_cast<std::size_t>((band + 1) * bandPitch)];
    if (!full[strip * stripPitch] || !full[lastTile * stripPitch]) {
      MarkSteps(&strips.bits[At(strip, i, strips.majorPixels)], end - i + 1,
                position - (static_cast<std::int64_t>(strip) << kTileShift), step, pen);
      std::uint8_t& visits = strips.touched[At(strip, band, strips.bands)];
      if ((++visits & (kVisitsPerCheck - 1)) == 0) {
        visits = kVisitsPerCheck;
        CheckVisited(stroke.flat, band, strip);
      }
    }
    position = last + step;
    i = end + 1;
  }
}

// Takes the ends of a long stroke to eighths of a pixel. Programs that repeat a stroke at many
// depths, or lie much closer than the pixels, then repeat it exactly; true when it was drawn
// already, as far as the table remembers.
bool Repeats(Stroke& stroke) {
  const int steps = stroke.to - stroke.from;
  const double last = stroke.first + stroke.slope * steps;
  const double firstEighths = std::floor(stroke.first * 8 + 0.5);
  const double lastEighths = std::floor(last * 8 + 0.5);
  stroke.first = firstEighths / 8;
  stroke.slope = std::clamp((lastEighths - firstEighths) / 8 / steps, -1.0, 1.0);
  std::uint64_t key = stroke.flat ? 3u : 2u;
  key = key << 13 | static_cast<std::uint64_t>(stroke.from);
  key = key << 13 | static_cast<std::uint64_t>(stroke.to);
  key = key << 17 | static_cast<std::uint64_t>(firstEighths);
  key = key << 17 | static_cast<std::uint64_t>(lastEighths);
  std::uint64_t& slot = coverage.seen[(key * 0x9E3779B97F4A7C15u) >> (64 - kSeenBits)];
  if (slot == key) return true;
  slot = key;
  return false;
}

void GatherSegments(const Segment* segments, int count, const Rect& area, bool wide,
                    const Sheet& sheet) {
  coverage.seen.assign(std::size_t{1} << kSeenBits, 0);
  for (int i = 0; i < count && coverage.tiles.open > 0; ++i) {
    const Segment& s = segments[i];
    if (!std::isfinite(s.x0) || !std::isfinite(s.y0) || !std::isfinite(s.x1) ||
        !std::isfinite(s.y1)) {
      continue;
    }
    const Line line = LineOf(s, area.left, area.top);
    const Strips& strips = line.flat ? coverage.columns : coverage.rows;
    Stroke stroke;
    if (!VisibleSteps(line, strips.majorPixels, strips.minorPixels, stroke.from, stroke.to)) {
      continue;
    }
    stroke.flat = line.flat;
    stroke.first = line.minor0 + line.slope * (stroke.from - line.major0) + kMargin;
    stroke.slope = line.slope;
    if (stroke.to - stroke.from >= kLongRun && Repeats(stroke)) continue;
    if (stroke.slope == 0 && count <= kFewSegments) {
      ColourStraight(sheet, stroke, wide);
    } else {
      DrawStroke(stroke, wide);
    }
  }
}

void ColourRow(std::uint32_t* row, std::uint32_t bits, std::uint32_t colour) {
  if (bits == ~0u) {
    std::fill_n(row, kTile, colour);
    return;
  }
  while (bits) {
    const int skip = std::countr_zero(bits);
    bits >>= skip;
    row += skip;
    const int run = std::countr_one(bits);
    std::fill_n(row, run, colour);
    if (run == kTile) return;
    bits >>= run;
    row += run;
  }
}

void ColourTiles(std::uint32_t* pixels, int stridePixels, const Rect& area, std::uint32_t colour) {
  const int across = TilesFor(coverage.width);
  const int down = TilesFor(coverage.height);
  std::uint32_t words[kTile];
  for (int ty = 1; ty <= down; ++ty) {
    const int top = (ty - 1) * kTile;
    const int rowsHere = std::min(kTile, coverage.height - top);
    for (int tx = 1; tx <= across; ++tx) {
      if (coverage.tiles.full[At(ty, tx, coverage.tiles.across)]) {
        std::fill(std::begin(words), std::end(words), ~0u);
      } else if (BandTouched(coverage.columns, ty, tx - 1) ||
                 BandTouched(coverage.rows, tx, ty - 1)) {
        GatherTile(tx, ty, words);
      } else {
        continue;
      }
      const std::uint32_t visible = VisibleColumns(tx);
      std::uint32_t* corner = pixels + static_cast<std::ptrdiff_t>(area.top + top) * stridePixels +
                              area.left + (tx - 1) * kTile;
      for (int i = 0; i < rowsHere; ++i) {
        ColourRow(corner + static_cast<std::ptrdiff_t>(i) * stridePixels, words[i] & visible,
                  colour);
      }
    }
  }
}

void ClearStrips(Strips& strips) {
  for (int strip = 0; strip < strips.count; ++strip) {
    for (int band = 0; band < strips.bands; ++band) {
      std::uint8_t& touched = strips.touched[At(strip, band, strips.bands)];
      if (!touched) continue;
      touched = 0;
      const int steps = std::min(kTile, strips.majorPixels - band * kTile);
      std::fill_n(&strips.bits[At(strip, band * kTile, strips.majorPixels)], steps,
                  std::uint64_t{0});
    }
  }
}

}  // namespace

void RasteriseSegments(std::uint32_t* pixels, int stridePixels, int width, int height,
                       const Rect& clip, const Segment* segments, int count, Colour colour,
                       int penWidth) {
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
  const Sheet sheet{pixels + static_cast<std::ptrdiff_t>(area.top) * stridePixels + area.left,
                    stridePixels, 0xFF000000u | colour};
  GatherSegments(segments, count, area, penWidth >= 2, sheet);
  ColourTiles(pixels, stridePixels, area, 0xFF000000u | colour);
  ClearStrips(coverage.columns);
  ClearStrips(coverage.rows);
}

}  // namespace platform
