// What one frame of the toolpath view costs: from 32,768 points to segments, and from segments
// to pixels of a picture of 1200 by 740.
//
// Each figure stands beside its bound: building beside a bare walk over the points, pixels
// beside filling the picture once. "crossing" programs have no segment that ends inside the
// picture, as after a far zoom; they are the worst there is.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "cpu_time.h"
#include "platform/common/segment_raster.h"
#include "platform/common/smooth_raster.h"
#include "simulator/motion_path.h"
#include "simulator/shown_path.h"
#include "simulator/toolpath.h"
#include "simulator/view.h"
#include "simulator/view_parts.h"
#include "simulator/view_switches.h"

namespace {

using platform::Rect;
using platform::Segment;

constexpr int kWidth = 1200;
constexpr int kHeight = 740;
constexpr Rect kArea{0, 0, kWidth, kHeight};
constexpr int kCount = morva::kMaxMotionPoints;

// Times every round for its median and its 99th percentile, in milliseconds of the processor, so
// that a busy machine changes them little.
class Rounds {
 public:
  explicit Rounds(benchmark::State& state) : state_(state) {}
  template <typename Work>
  void Time(const Work& work) {
    const double start = CpuMilliseconds();
    work();
    times_.push_back(CpuMilliseconds() - start);
  }
  ~Rounds() {
    if (times_.empty()) return;
    std::sort(times_.begin(), times_.end());
    state_.counters["median_ms"] = times_[times_.size() / 2];
    state_.counters["p99_ms"] = times_[times_.size() * 99 / 100];
  }

 private:
  benchmark::State& state_;
  std::vector<double> times_;
};

// Pockets cleared in chords of a spiral, level by level, with rapids between them.
void MakeProgram() {
  morva::ResetSimulator();
  for (int i = 0; i < kCount; ++i) {
    const int pocket = i / 2048;
    const int step = i % 2048;
    const double turn = step * 0.0785;
    const double radius = step * 0.0003;
    morva::MotionPoint& point = morva::path.points[i];
    point.x = (pocket % 4) * 1.5 + radius * std::cos(turn);
    point.y = (pocket / 4 % 2) * 1.5 + radius * std::sin(turn);
    point.z = step < 2 ? 0.5 : -0.1 * (1 + pocket / 8);
    point.rapid = step < 2;
  }
  morva::path.count = kCount;
  ++morva::path.generation;
  morva::playback.headInUse = false;
  morva::switches.showRapids = true;
  morva::SetViewIsometric();
}

std::vector<Segment> FittedProgram() {
  MakeProgram();
  const morva::PathSegments visible = morva::VisibleSegments(kArea);
  return {visible.feeds, visible.feeds + visible.feedCount};
}

std::vector<Segment> CrossingAtRandom() {
  std::mt19937 random(7);
  std::uniform_real_distribution<float> across(0, kWidth);
  std::uniform_real_distribution<float> down(0, kHeight);
  std::vector<Segment> segments;
  for (int i = 0; i < kCount; ++i) {
    if (i % 2) {
      segments.push_back({-10, down(random), kWidth + 10, down(random)});
    } else {
      segments.push_back({across(random), -10, across(random), kHeight + 10});
    }
  }
  return segments;
}

// Strokes side by side at a slant, twenty-five to a pixel.
std::vector<Segment> CrossingSideBySide() {
  std::vector<Segment> segments;
  for (int i = 0; i < kCount; ++i) {
    const float y = -600 + static_cast<float>(i) * (1340.0f / kCount);
    segments.push_back({-10, y, kWidth + 10, y + 600});
  }
  return segments;
}

// A hundred strokes at hundreds of depths, seen from above.
std::vector<Segment> CrossingRepeated() {
  std::vector<Segment> segments;
  for (int i = 0; i < kCount; ++i) {
    const float y = -600 + static_cast<float>(i % 100) * 13.4f;
    segments.push_back({-10, y, kWidth + 10, y + 600});
  }
  return segments;
}

void BM_WalkPoints(benchmark::State& state) {
  MakeProgram();
  Rounds rounds(state);
  for (auto _ : state) {
    rounds.Time([] {
      double sum = 0;
      for (int i = 0; i < kCount; ++i) {
        const morva::MotionPoint& point = morva::path.points[i];
        sum += point.x + point.y + point.z;
      }
      benchmark::DoNotOptimize(sum);
    });
  }
}

// An orbit: every frame projects all points anew.
void BM_BuildSegments(benchmark::State& state) {
  MakeProgram();
  Rounds rounds(state);
  for (auto _ : state) {
    morva::view.yawDegrees += 0.55;
    rounds.Time([] { benchmark::DoNotOptimize(morva::VisibleSegments(kArea)); });
  }
}

// Playing: the projection stands, only the head moves.
void BM_BuildSegmentsAgain(benchmark::State& state) {
  MakeProgram();
  Rounds rounds(state);
  for (auto _ : state) {
    rounds.Time([] { benchmark::DoNotOptimize(morva::VisibleSegments(kArea)); });
  }
}

void BM_PickPoint(benchmark::State& state) {
  MakeProgram();
  Rounds rounds(state);
  int x = 0;
  for (auto _ : state) {
    x = (x + 37) % kWidth;
    rounds.Time([x] { benchmark::DoNotOptimize(morva::PickPathPoint(kArea, x, 300)); });
  }
}

void BM_FillPicture(benchmark::State& state) {
  std::vector<std::uint32_t> pixels(kWidth * kHeight);
  Rounds rounds(state);
  std::uint32_t colour = 0;
  for (auto _ : state) {
    ++colour;
    rounds.Time([&] {
      std::fill(pixels.begin(), pixels.end(), colour);
      benchmark::DoNotOptimize(pixels.data());
    });
  }
}

void BM_Raster(benchmark::State& state, std::vector<Segment> (*make)(), int pen) {
  const std::vector<Segment> segments = make();
  std::vector<std::uint32_t> pixels(kWidth * kHeight);
  Rounds rounds(state);
  for (auto _ : state) {
    rounds.Time([&] {
      platform::RasteriseSegments(pixels.data(), kWidth, kWidth, kHeight, kArea, segments.data(),
                                  static_cast<int>(segments.size()), 0x48D3B8, pen);
    });
  }
  state.counters["segments"] = static_cast<double>(segments.size());
}

// On a screen with `scale` device pixels to a pixel.
void BM_Smooth(benchmark::State& state, std::vector<Segment> (*make)(), int pen, int scale) {
  std::vector<Segment> segments = make();
  for (Segment& s : segments) {
    const auto grow = static_cast<float>(scale);
    s = {s.x0 * grow, s.y0 * grow, s.x1 * grow, s.y1 * grow};
  }
  const int width = kWidth * scale;
  const int height = kHeight * scale;
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width * height));
  Rounds rounds(state);
  for (auto _ : state) {
    rounds.Time([&] {
      platform::BlendSegments(pixels.data(), width, width, height, Rect{0, 0, width, height},
                              segments.data(), static_cast<int>(segments.size()), 0x48D3B8,
                              pen * scale);
    });
  }
  state.counters["segments"] = static_cast<double>(segments.size());
}

BENCHMARK(BM_WalkPoints)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildSegments)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BuildSegmentsAgain)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PickPoint)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FillPicture)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Raster, fitted, FittedProgram, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Raster, crossing_random, CrossingAtRandom, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Raster, crossing_random_thin, CrossingAtRandom, 1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Raster, crossing_side_by_side, CrossingSideBySide, 2)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Raster, crossing_repeated, CrossingRepeated, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Smooth, fitted, FittedProgram, 2, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Smooth, fitted_at_scale_2, FittedProgram, 2, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Smooth, crossing_random, CrossingAtRandom, 2, 1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Smooth, crossing_random_thin, CrossingAtRandom, 1, 1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Smooth, crossing_side_by_side, CrossingSideBySide, 2, 1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Smooth, crossing_repeated, CrossingRepeated, 2, 1)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
