#include "platform/common/smooth_raster.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace platform {
namespace {

constexpr std::uint32_t kPaper = 0xFF000000u;
constexpr Colour kInk = 0xFFFFFF;

// White on black, so that a channel is the coverage.
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
  std::uint32_t& Pixel(int x, int y) {
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(stride) +
                  static_cast<std::size_t>(x)];
  }
  int At(int x, int y) { return static_cast<int>(Pixel(x, y) & 0xFFu); }
  void Draw(const std::vector<Segment>& segments, double pen) {
    DrawIn(segments, pen, Rect{0, 0, width, height});
  }
  void DrawIn(const std::vector<Segment>& segments, double pen, const Rect& clip) {
    BlendSegments(pixels.data(), stride, width, height, clip, segments.data(),
                  static_cast<int>(segments.size()), kInk, pen);
  }
  // In pixels.
  double Area() {
    double sum = 0;
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) sum += At(x, y);
    }
    return sum / 255;
  }
  int Inked() {
    int count = 0;
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) count += At(x, y) != 0 ? 1 : 0;
    }
    return count;
  }
};

Segment Turned(double degrees, double length, float x = 100, float y = 100) {
  const double angle = degrees * std::numbers::pi / 180;
  const auto dx = static_cast<float>(std::cos(angle) * length / 2);
  const auto dy = static_cast<float>(std::sin(angle) * length / 2);
  return {x - dx, y - dy, x + dx, y + dy};
}

std::vector<Segment> RandomSegments(unsigned seed, int count, float low, float high, float reach) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<float> place(low, high);
  std::uniform_real_distribution<float> away(-reach, reach);
  std::vector<Segment> segments;
  for (int i = 0; i < count; ++i) {
    const float x = place(random), y = place(random);
    segments.push_back({x, y, x + away(random), y + away(random)});
  }
  return segments;
}

// The share of a pixel that lies within half the pen of the line through a segment and not beyond
// its ends along the longer axis, by 32 by 32 samples.
double ShareOf(const Segment& s, double pen, int x, int y) {
  constexpr int kSamples = 32;
  const double dx = static_cast<double>(s.x1) - s.x0, dy = static_cast<double>(s.y1) - s.y0;
  const double length = std::hypot(dx, dy);
  const bool flat = std::fabs(dx) >= std::fabs(dy);
  const double major = flat ? std::fabs(dx) : std::fabs(dy);
  const double beyond = std::max(0.5, pen / 2 * (length > 0 ? major / length : 1));
  const double from = std::min(flat ? s.x0 : s.y0, flat ? s.x1 : s.y1) - beyond;
  const double to = std::max(flat ? s.x0 : s.y0, flat ? s.x1 : s.y1) + beyond;
  int inside = 0;
  for (int i = 0; i < kSamples; ++i) {
    for (int k = 0; k < kSamples; ++k) {
      const double px = x - 0.5 + (i + 0.5) / kSamples;
      const double py = y - 0.5 + (k + 0.5) / kSamples;
      const double along = flat ? px : py;
      const double away = length > 0 ? std::fabs((px - s.x0) * dy - (py - s.y0) * dx) / length
                                     : std::fabs(py - s.y0);
      inside += along >= from && along <= to && away <= pen / 2 ? 1 : 0;
    }
  }
  return static_cast<double>(inside) / (kSamples * kSamples);
}

TEST(SmoothRaster, CoversAsMuchAsTheLineIsWideAndLong) {
  for (const double pen : {1.0, 1.5, 2.0, 3.0, 4.0, 6.0, 8.0}) {
    for (int degrees = 0; degrees < 180; degrees += 7) {
      Picture shorter(200, 200);
      shorter.Draw({Turned(degrees, 40)}, pen);
      Picture longer(200, 200);
      longer.Draw({Turned(degrees, 140)}, pen);
      // 100 pixels more, so that the ends do not matter.
      EXPECT_NEAR(longer.Area() - shorter.Area(), 100 * pen, 100 * pen * 0.02)
          << pen << " wide at " << degrees;
    }
  }
}

TEST(SmoothRaster, CoversEveryPixelByItsShareOfTheLine) {
  const double pens[] = {1, 1.5, 2, 3, 4, 6};
  for (unsigned seed = 1; seed <= 60; ++seed) {
    const double pen = pens[seed % 6];
    const std::vector<Segment> segments = RandomSegments(seed, 1, 20, 44, 24);
    Picture picture(64, 64);
    picture.Draw(segments, pen);
    for (int y = 0; y < 64; ++y) {
      for (int x = 0; x < 64; ++x) {
        // Ends that lie askew in a step, and the steps of the placing.
        EXPECT_NEAR(picture.At(x, y) / 255.0, ShareOf(segments[0], pen, x, y), 0.13)
            << "pixel " << x << ", " << y << " of line " << seed << " of " << pen;
      }
    }
  }
}

TEST(SmoothRaster, DrawsALevelLineOnAPixelsMiddleSharp) {
  Picture picture(60, 40);
  picture.Draw({{10, 20, 40, 20}}, 1);
  for (int x = 10; x <= 40; ++x) {
    EXPECT_EQ(picture.At(x, 20), 255) << x;
    EXPECT_EQ(picture.At(x, 19), 0) << x;
    EXPECT_EQ(picture.At(x, 21), 0) << x;
  }
  EXPECT_EQ(picture.Inked(), 31);
}

TEST(SmoothRaster, SharesALineBetweenPixelsEvenly) {
  Picture picture(60, 40);
  picture.Draw({{10, 20.5f, 40, 20.5f}}, 1);
  for (int x = 10; x <= 40; ++x) {
    EXPECT_NEAR(picture.At(x, 20), 128, 3) << x;
    EXPECT_NEAR(picture.At(x, 21), 128, 3) << x;
  }
}

TEST(SmoothRaster, LooksTheSameMirroredAndTurned) {
  // In a square of 65 the middle is a pixel.
  for (unsigned seed = 1; seed <= 40; ++seed) {
    const std::vector<Segment> segments = RandomSegments(seed, 3, 8, 56, 30);
    std::vector<Segment> mirrored, turned, reversed;
    for (const Segment& s : segments) {
      mirrored.push_back({64 - s.x0, s.y0, 64 - s.x1, s.y1});
      turned.push_back({s.y0, s.x0, s.y1, s.x1});
      reversed.push_back({s.x1, s.y1, s.x0, s.y0});
    }
    Picture plain(65, 65), mirror(65, 65), turn(65, 65), back(65, 65);
    plain.Draw(segments, 2);
    mirror.Draw(mirrored, 2);
    turn.Draw(turned, 2);
    back.Draw(reversed, 2);
    for (int y = 0; y < 65; ++y) {
      for (int x = 0; x < 65; ++x) {
        ASSERT_NEAR(plain.At(x, y), mirror.At(64 - x, y), 8) << seed;
        ASSERT_NEAR(plain.At(x, y), turn.At(y, x), 8) << seed;
        ASSERT_NEAR(plain.At(x, y), back.At(x, y), 8) << seed;
      }
    }
  }
}

TEST(SmoothRaster, LeavesNoDentWhereSegmentsOfAPolylineMeet) {
  for (const double pen : {1.0, 2.0, 4.0}) {
    // A circle in chords of three pixels and a half.
    std::vector<Segment> chords;
    constexpr int kChords = 180;
    const auto at = [](int i, double radius) {
      const double angle = 2 * std::numbers::pi * i / kChords;
      return PointF{150 + radius * std::cos(angle), 150 + radius * std::sin(angle)};
    };
    for (int i = 0; i < kChords; ++i) chords.push_back(SegmentOf(at(i, 100), at(i + 1, 100)));
    Picture picture(300, 300);
    picture.Draw(chords, pen);
    // A thin line between two pixels leaves each of them half.
    for (int i = 0; i < kChords; ++i) {
      double most = 0;
      for (int k = -8; k <= 8; ++k) {
        const PointF p = at(i, 100 + k / 8.0);
        most = std::max(most, picture.At(static_cast<int>(std::lround(p.x)),
                                         static_cast<int>(std::lround(p.y))) /
                                  255.0);
      }
      EXPECT_GT(most, pen < 2 ? 0.49 : 0.99) << "joint " << i << " of " << pen;
    }
    EXPECT_NEAR(picture.Area(), 2 * std::numbers::pi * 100 * pen,
                2 * std::numbers::pi * 100 * pen * 0.05)
        << pen;
  }
}

TEST(SmoothRaster, LaysColourOnOnceWhereLinesRepeat) {
  Picture once(300, 200), often(300, 200);
  const std::vector<Segment> lines = {{20, 31.3f, 280, 97.7f}, {100.2f, 10, 140.9f, 190}};
  once.Draw(lines, 2);
  std::vector<Segment> repeated;
  for (int i = 0; i < 50; ++i) repeated.insert(repeated.end(), lines.begin(), lines.end());
  often.Draw(repeated, 2);
  EXPECT_EQ(once.pixels, often.pixels);
}

TEST(SmoothRaster, LooksTheSameInAnyOrder) {
  std::vector<Segment> segments = RandomSegments(5, 300, 0, 200, 60);
  Picture one(200, 200), other(200, 200);
  one.Draw(segments, 2);
  std::reverse(segments.begin(), segments.end());
  other.Draw(segments, 2);
  EXPECT_EQ(one.pixels, other.pixels);
}

TEST(SmoothRaster, ShowsEvenASegmentWithoutLength) {
  Picture picture(40, 40);
  picture.Draw({{10, 10, 10, 10}}, 2);
  EXPECT_EQ(picture.At(10, 10), 255);
  EXPECT_NEAR(picture.Area(), 4, 0.2);
}

TEST(SmoothRaster, BlendsIntoWhatStandsThere) {
  Picture picture(20, 20);
  for (std::uint32_t& pixel : picture.pixels) pixel = 0x12204060u;
  const std::vector<Segment> line = {{0, 10.5f, 19, 10.5f}};
  BlendSegments(picture.pixels.data(), 20, 20, 20, {0, 0, 20, 20}, line.data(), 1, 0xE0C0A0, 1);
  // Half of each, opaque; what is not covered keeps every bit.
  for (const int y : {10, 11}) {
    const std::uint32_t pixel = picture.Pixel(7, y);
    EXPECT_EQ(pixel >> 24, 0xFFu);
    EXPECT_NEAR(static_cast<int>(pixel >> 16 & 0xFF), 0x80, 3);
    EXPECT_NEAR(static_cast<int>(pixel >> 8 & 0xFF), 0x80, 3);
    EXPECT_NEAR(static_cast<int>(pixel & 0xFF), 0x80, 3);
  }
  EXPECT_EQ(picture.Pixel(7, 9), 0x12204060u);
}

TEST(SmoothRaster, LeavesEverythingOutsideTheClipAlone) {
  Picture picture(200, 100, 7);
  const Rect clip{41, 30, 110, 77};
  picture.DrawIn(RandomSegments(16, 3000, -50, 250, 90), 3, clip);
  int inside = 0;
  for (int y = 0; y < 100; ++y) {
    for (int x = 0; x < 207; ++x) {
      const bool inked = picture.Pixel(x, y) != kPaper;
      ASSERT_TRUE(!inked || RectHolds(clip, x, y)) << x << ", " << y;
      inside += inked ? 1 : 0;
    }
  }
  EXPECT_GT(inside, 3000);
}

TEST(SmoothRaster, DrawsShortSegmentsTheSameInsideAnyClip) {
  const std::vector<Segment> segments = RandomSegments(17, 200, -50, 250, 40);
  Picture whole(200, 100), part(200, 100);
  whole.Draw(segments, 2);
  const Rect clip{33, 21, 140, 90};
  part.DrawIn(segments, 2, clip);
  for (int y = clip.top; y < clip.bottom; ++y) {
    for (int x = clip.left; x < clip.right; ++x) {
      // A place is taken to the 64th of a pixel from where a line enters.
      ASSERT_NEAR(whole.At(x, y), part.At(x, y), 8) << x << ", " << y;
    }
  }
}

TEST(SmoothRaster, DrawsTheVisiblePartOfFarSegments) {
  Picture picture(200, 100);
  picture.Draw({{-1e9f, 30, 1e9f, 30}, {77, 1e9f, 77, -1e9f}}, 1);
  EXPECT_EQ(picture.Inked(), 200 + 100 - 1);
  EXPECT_EQ(picture.At(0, 30), 255);
  EXPECT_EQ(picture.At(199, 30), 255);
  EXPECT_EQ(picture.At(77, 0), 255);
  EXPECT_EQ(picture.At(77, 99), 255);
  // Its middle lies above the picture, its lower edge in it.
  Picture edge(40, 40);
  edge.Draw({{-5, -1.5f, 50, -1.5f}}, 4);
  EXPECT_EQ(edge.At(20, 0), 255);
  EXPECT_EQ(edge.At(20, 1), 0);
}

TEST(SmoothRaster, SurvivesCoordinatesThatAreNoPlaces) {
  const float inf = std::numeric_limits<float>::infinity();
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float most = std::numeric_limits<float>::max();
  Picture picture(70, 64);
  picture.Draw({{nan, 1, 2, 3}, {1, nan, 2, 3}, {1, 1, inf, 3}, {-inf, 1, 2, -inf}}, 2);
  EXPECT_EQ(picture.Inked(), 0);
  const float values[] = {-most, -1e30f, -1e9f, -13,   -1,   0,     0.5f,
                          63,    75,     1e9f,  1e30f, most, 1e-40f};
  std::vector<Segment> segments;
  for (float a : values) {
    for (float b : values) {
      for (float c : values) {
        for (float d : values) segments.push_back({a, b, c, d});
      }
    }
  }
  for (const double pen : {0.0, 1.0, 2.0, 4.0, 9.0, 1000.0}) {
    for (const Segment& s : segments) {
      picture.DrawIn({s}, pen, {0, 0, 70, 64});
      picture.DrawIn({s}, pen, {60, 3, 69, 5});
    }
    picture.Draw(segments, pen);
  }
}

TEST(SmoothRaster, SurvivesClipsAndBatchesWithoutAnything) {
  Picture picture(20, 20);
  const int far = std::numeric_limits<int>::max();
  picture.DrawIn({{0, 5, 19, 5}}, 1, {10, 10, 10, 20});
  picture.DrawIn({{0, 5, 19, 5}}, 1, {30, 0, 40, 20});
  picture.Draw({}, 1);
  EXPECT_EQ(picture.Inked(), 0);
  picture.DrawIn({{0, 5, 19, 5}}, 1, {-far, -far, far, far});
  EXPECT_EQ(picture.Inked(), 20);
}

TEST(SmoothRaster, ForgetsOneBatchBeforeTheNext) {
  Picture first(300, 200);
  first.Draw(RandomSegments(18, 5000, -20, 320, 80), 2);
  // The same size, another size, and back.
  Picture second(300, 200);
  second.Draw({{10, 10, 20, 10}}, 1);
  EXPECT_EQ(second.Inked(), 11);
  Picture third(150, 60);
  third.Draw({{10, 10, 10, 20}}, 1);
  EXPECT_EQ(third.Inked(), 11);
  Picture fourth(300, 200);
  fourth.Draw({{10, 10, 20, 10}}, 1);
  EXPECT_EQ(fourth.Inked(), 11);
}

TEST(SmoothRaster, DrawsManyLongStrokesLikeFewOnes) {
  // So thin on the picture that no part of it is covered whole. Short segments outside make the
  // batch one that is taken in its own order.
  std::vector<Segment> segments = RandomSegments(9, 5000, 0, 2400, 200);
  std::erase_if(segments, [](const Segment& s) {
    return std::max(std::fabs(s.x1 - s.x0), std::fabs(s.y1 - s.y0)) < 80;
  });
  segments.insert(segments.end(), segments.begin(), segments.begin() + 2500);
  ASSERT_GT(segments.size(), 4096u);
  Picture one(2400, 2400), other(2400, 2400);
  one.Draw(segments, 2);
  segments.resize(3 * segments.size(), Segment{-500, -500, -490, -490});
  other.Draw(segments, 2);
  EXPECT_EQ(one.pixels, other.pixels);
}

TEST(SmoothRaster, GoesOnBehindWhatIsCovered) {
  // The left part is covered whole, and strokes of all slopes run from there into the right one.
  constexpr int kWidth = 1100;
  constexpr int kHeight = 900;
  constexpr int kLeft = 480;  // where a group of tiles ends
  std::mt19937 random(17);
  std::uniform_real_distribution<float> down(-50, kHeight + 50);
  std::uniform_real_distribution<float> left(0, kLeft);
  std::uniform_real_distribution<float> right(kLeft, kWidth);
  std::vector<Segment> strokes;
  for (int i = 0; i < 300; ++i) {
    const Segment s = {left(random), down(random), right(random), down(random)};
    strokes.push_back(i % 2 ? s : Segment{s.x1, s.y1, s.x0, s.y0});
  }
  std::vector<Segment> both;
  // Twice, since a tile is asked now and then whether it is covered.
  for (int i = 0; i < 2 * kLeft; ++i) {
    const float x = static_cast<float>(i % kLeft) + (i < kLeft ? 0 : 0.5F);
    both.push_back({x, -5, x, kHeight + 5});
  }
  both.insert(both.end(), strokes.begin(), strokes.end());
  Picture alone(kWidth, kHeight), behind(kWidth, kHeight);
  alone.Draw(strokes, 2);
  behind.Draw(both, 2);
  int missing = 0;
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const bool covered = x < kLeft - 1;  // the last line reaches over the edge
      const int wanted = covered ? 255 : alone.At(x, y);
      missing += x < kLeft + 3 && !covered ? 0 : behind.At(x, y) != wanted;
    }
  }
  EXPECT_EQ(missing, 0);
}

TEST(SmoothRaster, CoversAPictureWholeUnderMoreLinesThanItCanShow) {
  std::mt19937 random(3);
  std::uniform_real_distribution<float> place(0, 200);
  std::vector<Segment> segments;
  for (int i = 0; i < 9000; ++i) {
    const float a = place(random), b = place(random);
    segments.push_back(i % 2 ? Segment{-10, a, 210, b} : Segment{a, -10, b, 210});
  }
  Picture picture(200, 200);
  picture.Draw(segments, 2);
  int dim = 0;
  for (int y = 20; y < 180; ++y) {
    for (int x = 20; x < 180; ++x) dim += picture.At(x, y) < 200 ? 1 : 0;
  }
  EXPECT_EQ(dim, 0);
}

}  // namespace
}  // namespace platform
