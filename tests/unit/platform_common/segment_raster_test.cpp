#include "platform/common/segment_raster.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace platform {
namespace {

constexpr std::uint32_t kPaper = 0x11223344u;
constexpr Colour kInk = 0x48D3B8;
constexpr std::uint32_t kInked = 0xFF48D3B8u;

struct Picture {
  int width;
  int height;
  int stride;
  std::vector<std::uint32_t> pixels;
  Picture(int w, int h, int pad = 0)
      : width(w),
        height(h),
        stride(w + pad),
        pixels(static_cast<std::size_t>(stride) * static_cast<std::size_t>(h), kPaper) {}
  std::uint32_t& At(int x, int y) {
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(stride) +
                  static_cast<std::size_t>(x)];
  }
  void Draw(const std::vector<Segment>& segments, int pen) {
    DrawIn(segments, pen, Rect{0, 0, width, height});
  }
  void DrawIn(const std::vector<Segment>& segments, int pen, const Rect& clip) {
    RasteriseSegments(pixels.data(), stride, width, height, clip, segments.data(),
                      static_cast<int>(segments.size()), kInk, pen);
  }
  std::vector<Point> Inked() {
    std::vector<Point> found;
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        if (At(x, y) != kPaper) found.push_back({x, y});
      }
    }
    return found;
  }
};

// The second method: every step of every segment in extended precision, nothing skipped. A
// pixel whose choice hangs on less than 1e-4 of a pixel may be either; the ends of long
// segments are placed to an eighth, so for those it is a sixteenth at each end.
struct Expected {
  int width;
  int height;
  std::vector<std::uint8_t> must;
  std::vector<std::uint8_t> may;
  int doubtful = 0;
  int steps = 0;
  Expected(int w, int h)
      : width(w),
        height(h),
        must(static_cast<std::size_t>(w) * static_cast<std::size_t>(h)),
        may(must.size()) {}

  void Mark(std::vector<std::uint8_t>& set, bool flat, int major, long double minor) {
    if (minor < 0 || minor >= (flat ? height : width)) return;
    const int x = flat ? major : static_cast<int>(minor);
    const int y = flat ? static_cast<int>(minor) : major;
    set[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
        static_cast<std::size_t>(x)] = 1;
  }

  void Add(const Segment& s, int pen) {
    const long double dx = static_cast<long double>(s.x1) - s.x0;
    const long double dy = static_cast<long double>(s.y1) - s.y0;
    const bool flat = std::fabs(dx) >= std::fabs(dy);
    const long double a0 = flat ? s.x0 : s.y0;
    const long double a1 = flat ? s.x1 : s.y1;
    const long double b0 = flat ? s.y0 : s.x0;
    const long double run = flat ? dx : dy;
    const long double rise = flat ? dy : dx;
    const long double low = std::floor(std::min(a0, a1) + 0.5L);
    const long double high = std::floor(std::max(a0, a1) + 0.5L);
    const int size = flat ? width : height;
    const bool isLong = high - low >= 64;
    const long double doubt = isLong ? 0.0626L : 1e-4L;
    for (int major = 0; major < size; ++major) {
      if (major < low || major > high) continue;
      if (!isLong) ++steps;
      const long double minor = run == 0 ? b0 : b0 + rise * (major - a0) / run;
      const long double first = pen == 1 ? minor + 0.5L : minor;
      const long double floor = std::floor(first);
      const bool above = first - floor > 1 - doubt;
      const bool below = first - floor < doubt;
      for (int k = 0; k < pen; ++k) Mark(may, flat, major, floor + k);
      if (above) Mark(may, flat, major, floor + pen);
      if (below) Mark(may, flat, major, floor - 1);
      for (int k = 0; k < pen; ++k) {
        if ((above && k == 0) || (below && k == pen - 1)) {
          if (!isLong) ++doubtful;
          continue;
        }
        Mark(must, flat, major, floor + k);
      }
    }
  }
};

void ExpectSame(const std::vector<Segment>& segments, int width, int height, int pen) {
  Expected expected(width, height);
  for (const Segment& s : segments) expected.Add(s, pen);
  Picture picture(width, height, 7);
  picture.Draw(segments, pen);
  int missing = 0;
  int extra = 0;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const std::size_t i = static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                            static_cast<std::size_t>(x);
      const bool inked = picture.At(x, y) == kInked;
      EXPECT_TRUE(inked || picture.At(x, y) == kPaper);
      if (expected.must[i] && !inked) ++missing;
      if (!expected.may[i] && inked) ++extra;
    }
    for (int x = width; x < picture.stride; ++x) EXPECT_EQ(picture.At(x, y), kPaper);
  }
  EXPECT_EQ(missing, 0);
  EXPECT_EQ(extra, 0);
  EXPECT_LE(expected.doubtful, expected.steps / 100 + 4);
}

std::vector<Segment> RandomSegments(unsigned seed, int count, float low, float high, float reach) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> place(low, high);
  std::uniform_real_distribution<float> step(-reach, reach);
  std::vector<Segment> segments;
  for (int i = 0; i < count; ++i) {
    const float x = place(random);
    const float y = place(random);
    segments.push_back({x, y, x + step(random), y + step(random)});
  }
  return segments;
}

TEST(SegmentRaster, DrawsAThinHorizontalLineWithBothEnds) {
  Picture picture(20, 10);
  picture.Draw({{3, 4, 6, 4}}, 1);
  const std::vector<Point> inked = picture.Inked();
  ASSERT_EQ(inked.size(), 4u);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(inked[static_cast<std::size_t>(i)].x, 3 + i);
    EXPECT_EQ(inked[static_cast<std::size_t>(i)].y, 4);
  }
  EXPECT_EQ(picture.At(3, 4), kInked);
}

TEST(SegmentRaster, DrawsAWideLineAsTwoPixelsAcross) {
  Picture picture(20, 10);
  picture.Draw({{3, 4, 3, 6}}, 2);
  const std::vector<Point> inked = picture.Inked();
  ASSERT_EQ(inked.size(), 6u);
  for (int y = 4; y <= 6; ++y) {
    EXPECT_EQ(picture.At(3, y), kInked);
    EXPECT_EQ(picture.At(4, y), kInked);
  }
}

TEST(SegmentRaster, RoundsToTheNearestPixelMiddle) {
  Picture picture(20, 10);
  // 4.4 and 4.6 round to 4 and 5; a slope of one rises a row with every column.
  picture.Draw({{2, 4.4f, 3, 4.4f}, {8, 4.6f, 9, 4.6f}, {12, 1, 14, 3}}, 1);
  EXPECT_EQ(picture.At(2, 4), kInked);
  EXPECT_EQ(picture.At(8, 5), kInked);
  EXPECT_EQ(picture.At(12, 1), kInked);
  EXPECT_EQ(picture.At(13, 2), kInked);
  EXPECT_EQ(picture.At(14, 3), kInked);
  EXPECT_EQ(picture.Inked().size(), 7u);
}

TEST(SegmentRaster, DrawsAPointForASegmentWithoutLength) {
  Picture picture(20, 10);
  picture.Draw({{7, 7, 7, 7}}, 1);
  ASSERT_EQ(picture.Inked().size(), 1u);
  EXPECT_EQ(picture.At(7, 7), kInked);
}

TEST(SegmentRaster, AgreesWithPlainSteppingOnShortSegments) {
  for (int pen = 1; pen <= 2; ++pen) {
    ExpectSame(RandomSegments(11, 4000, -40, 640, 9), 600, 410, pen);
  }
}

TEST(SegmentRaster, AgreesWithPlainSteppingOnLongSegments) {
  for (int pen = 1; pen <= 2; ++pen) {
    ExpectSame(RandomSegments(12, 60, -800, 1500, 1600), 613, 407, pen);
  }
}

TEST(SegmentRaster, AgreesWithPlainSteppingWhereTilesFillUp) {
  // Enough lines that most tiles are full, and thus skipped, long before the last.
  for (int pen = 1; pen <= 2; ++pen) {
    ExpectSame(RandomSegments(13, 3000, -100, 300, 700), 201, 131, pen);
  }
}

TEST(SegmentRaster, AgreesWithPlainSteppingOnSmallPictures) {
  for (int width : {1, 2, 31, 32, 33, 64, 65}) {
    for (int height : {1, 32, 63}) {
      ExpectSame(RandomSegments(14, 40, -10, 70, 60), width, height, 1);
      ExpectSame(RandomSegments(15, 40, -10, 70, 60), width, height, 2);
    }
  }
}

TEST(SegmentRaster, DrawsARepeatedSegmentLikeASingleOne) {
  std::vector<Segment> segments(700, Segment{-20, 11, 900.37f, 333.21f});
  for (std::size_t i = 0; i < segments.size(); i += 2) segments[i] = {900.37f, 333.21f, -20, 11};
  ExpectSame(segments, 640, 400, 1);
}

TEST(SegmentRaster, DrawsTheVisiblePartOfFarSegments) {
  // Through the middle at 45 degrees, ends 4,096 pixels off: exact in single precision.
  ExpectSame({{-4096 + 100, -4096 + 50, 4096 + 100, 4096 + 50}}, 200, 100, 1);
  // Level and upright from a billion pixels off.
  Picture picture(200, 100);
  picture.Draw({{-1e9f, 30, 1e9f, 30}, {77, 1e9f, 77, -1e9f}}, 1);
  EXPECT_EQ(picture.Inked().size(), 200u + 100u - 1u);
  EXPECT_EQ(picture.At(0, 30), kInked);
  EXPECT_EQ(picture.At(199, 30), kInked);
  EXPECT_EQ(picture.At(77, 0), kInked);
  EXPECT_EQ(picture.At(77, 99), kInked);
}

TEST(SegmentRaster, SurvivesCoordinatesThatAreNoPlaces) {
  const float inf = std::numeric_limits<float>::infinity();
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float most = std::numeric_limits<float>::max();
  Picture picture(64, 64);
  picture.Draw({{nan, 1, 2, 3}, {1, nan, 2, 3}, {1, 1, inf, 3}, {-inf, 1, 2, -inf}}, 2);
  EXPECT_TRUE(picture.Inked().empty());
  const float values[] = {-most, -1e30f, -1e9f, -1, 0, 0.5f, 63, 64, 1e9f, 1e30f, most, 1e-40f};
  std::vector<Segment> segments;
  for (float a : values) {
    for (float b : values) {
      for (float c : values) {
        for (float d : values) segments.push_back({a, b, c, d});
      }
    }
  }
  picture.Draw(segments, 1);
  picture.Draw(segments, 2);
  SUCCEED();
}

TEST(SegmentRaster, LeavesEverythingOutsideTheClipAlone) {
  Picture picture(200, 100);
  const Rect clip{40, 30, 110, 77};
  picture.DrawIn(RandomSegments(16, 2000, -50, 250, 90), 2, clip);
  for (const Point& p : picture.Inked()) EXPECT_TRUE(RectHolds(clip, p.x, p.y));
  EXPECT_GT(picture.Inked().size(), 3000u);
}

TEST(SegmentRaster, DrawsShortSegmentsTheSameInsideAnyClip) {
  const std::vector<Segment> segments = RandomSegments(17, 300, -50, 250, 60);
  Picture whole(200, 100);
  whole.Draw(segments, 2);
  const Rect clip{33, 21, 140, 90};
  Picture part(200, 100);
  part.DrawIn(segments, 2, clip);
  int different = 0;
  for (int y = clip.top; y < clip.bottom; ++y) {
    for (int x = clip.left; x < clip.right; ++x) {
      if (whole.At(x, y) != part.At(x, y)) ++different;
    }
  }
  EXPECT_EQ(different, 0);
}

TEST(SegmentRaster, TakesAClipLargerThanThePicture) {
  Picture picture(50, 40);
  const int far = std::numeric_limits<int>::max();
  picture.DrawIn({{-5, 10, 500, 10}}, 1, Rect{-far, -far, far, far});
  EXPECT_EQ(picture.Inked().size(), 50u);
  picture.DrawIn({{0, 20, 50, 20}}, 1, Rect{far, 0, far, 40});
  EXPECT_EQ(picture.Inked().size(), 50u);
}

TEST(SegmentRaster, StartsEveryBatchAfresh) {
  Picture first(300, 200);
  first.Draw(RandomSegments(18, 500, 0, 300, 80), 2);
  // The same size again, another size, and back: nothing of an earlier batch may show.
  Picture second(300, 200);
  second.Draw({{10, 10, 20, 10}}, 1);
  EXPECT_EQ(second.Inked().size(), 11u);
  Picture third(150, 60);
  third.Draw({{10, 10, 10, 20}}, 1);
  EXPECT_EQ(third.Inked().size(), 11u);
  Picture fourth(300, 200);
  fourth.Draw({}, 1);
  EXPECT_TRUE(fourth.Inked().empty());
}

// Few segments along an axis take another way into the picture than many.
TEST(SegmentRaster, DrawsLinesAlongAnAxisTheSameInSmallAndInLargeBatches) {
  std::mt19937 random(23);
  std::uniform_real_distribution<float> place(-20, 320);
  for (int round = 0; round < 40; ++round) {
    std::vector<Segment> few;
    for (int i = 0; i < 20; ++i) {
      float at = place(random);
      if (round % 2) at = std::floor(at * 2) / 2;  // on the middles of pixels and on their edges
      const float from = place(random), to = place(random);
      few.push_back(i % 2 ? Segment{from, at, to, at} : Segment{at, from, at, to});
    }
    std::vector<Segment> many;
    while (many.size() <= 1024) many.insert(many.end(), few.begin(), few.end());
    for (const int pen : {1, 2}) {
      Picture first(300, 200, 7);
      Picture second(300, 200, 7);
      const Rect clip = round % 3 ? Rect{0, 0, 300, 200} : Rect{33, 17, 251, 160};
      first.DrawIn(few, pen, clip);
      second.DrawIn(many, pen, clip);
      ASSERT_FALSE(first.Inked().empty());
      ASSERT_EQ(first.pixels, second.pixels) << "round " << round << ", pen " << pen;
    }
  }
}

TEST(SegmentRaster, FillsAPictureThatIsCoveredWhole) {
  Picture picture(97, 45);
  std::vector<Segment> segments;
  for (int y = 0; y < 45; ++y) {
    segments.push_back({-10, static_cast<float>(y), 200, static_cast<float>(y)});
  }
  for (int i = 0; i < 50; ++i) segments.push_back({0, 0, 96, 44});
  picture.Draw(segments, 1);
  EXPECT_EQ(picture.Inked().size(), 97u * 45u);
}

}  // namespace
}  // namespace platform
