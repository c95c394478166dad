// 32,768 points in smooth lines of two pixels at 1200 by 800, and at twice the scale, beside a
// plain raster by hand of the same width and smoothness: each step of a segment raises the pixels
// that it covers, then all are blended.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "cpu_time.h"
#include "platform/common/smooth_raster.h"
#include "targets.h"

namespace {

using platform::Segment;

constexpr int kPoints = 32768;
constexpr std::uint32_t kGround = 0xFF021726u;
constexpr std::uint32_t kInk = 0xFF48D3B8u;

// A spiral of circles in short steps.
std::vector<Segment> Spiral(double scale) {
  std::vector<Segment> path;
  auto x = static_cast<float>(600 * scale);
  auto y = static_cast<float>(400 * scale);
  for (int i = 1; i < kPoints; ++i) {
    const double radius = 380.0 * i / kPoints;
    const auto nextX = static_cast<float>((600 + 1.5 * radius * std::cos(i * 0.05)) * scale);
    const auto nextY = static_cast<float>((400 + radius * std::sin(i * 0.05)) * scale);
    path.push_back({x, y, nextX, nextY});
    x = nextX;
    y = nextY;
  }
  return path;
}

struct Plain {
  int width;
  int height;
  std::vector<std::uint8_t> covered =
      std::vector<std::uint8_t>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));

  void Raise(int x, int y, float share) {
    if (x < 0 || y < 0 || x >= width || y >= height) return;
    std::uint8_t& byte = covered[static_cast<std::size_t>(y * width + x)];
    byte = std::max(byte, static_cast<std::uint8_t>(share * 255.0F + 0.5F));
  }

  void Line(const Segment& s, float pen) {
    const bool flat = std::fabs(s.x1 - s.x0) >= std::fabs(s.y1 - s.y0);
    float major0 = flat ? s.x0 : s.y0, minor0 = flat ? s.y0 : s.x0;
    float major1 = flat ? s.x1 : s.y1, minor1 = flat ? s.y1 : s.x1;
    if (major1 < major0) {
      std::swap(major0, major1);
      std::swap(minor0, minor1);
    }
    const float slope = major1 > major0 ? (minor1 - minor0) / (major1 - major0) : 0;
    const float half = pen / 2 * std::sqrt(1 + slope * slope);
    const float low = major0 - pen / 2;
    const float high = major1 + pen / 2;
    for (int i = static_cast<int>(std::floor(low + 0.5F));
         i <= static_cast<int>(std::floor(high + 0.5F)); ++i) {
      const float at = static_cast<float>(i);
      const float part = std::min(at + 0.5F, high) - std::max(at - 0.5F, low);
      const float middle = minor0 + slope * (at - major0);
      const int first = static_cast<int>(std::ceil(middle - half - 0.5F));
      for (int k = first; k < first + static_cast<int>(2 * half) + 2; ++k) {
        const float away = std::fabs(static_cast<float>(k) - middle);
        const float share = std::clamp(half + 0.5F - away, 0.0F, 1.0F) * part;
        if (share > 0) flat ? Raise(i, k, share) : Raise(k, i, share);
      }
    }
  }

  void Blend(std::uint32_t* pixels) {
    for (std::size_t i = 0; i < covered.size(); ++i) {
      if (covered[i] == 0) continue;
      const unsigned part = covered[i] + (covered[i] >> 7);
      std::uint32_t mixed = 0xFF;
      for (int shift = 16; shift >= 0; shift -= 8) {
        const unsigned from = pixels[i] >> shift & 0xFFu;
        const unsigned to = kInk >> shift & 0xFFu;
        mixed = mixed << 8 | (from * (256 - part) + to * part) >> 8;
      }
      pixels[i] = mixed;
      covered[i] = 0;
    }
  }
};

void Frame(benchmark::State& state, double scale, const targets::Goal& goal) {
  const std::vector<Segment> path = Spiral(scale);
  const int width = static_cast<int>(1200 * scale);
  const int height = static_cast<int>(800 * scale);
  const double pen = 2 * scale;
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) *
                                    static_cast<std::size_t>(height));
  Plain plain{width, height};
  std::vector<double> ours;
  std::vector<double> byHand;
  for (auto step : state) {
    std::fill(pixels.begin(), pixels.end(), kGround);
    double from = CpuMilliseconds();
    platform::BlendSegments(pixels.data(), width, width, height, {0, 0, width, height}, path.data(),
                            static_cast<int>(path.size()), kInk & 0xFFFFFFu, pen);
    ours.push_back(CpuMilliseconds() - from);
    state.SetIterationTime(ours.back() * 1e-3);
    std::fill(pixels.begin(), pixels.end(), kGround);
    from = CpuMilliseconds();
    for (const Segment& s : path) plain.Line(s, static_cast<float>(pen));
    plain.Blend(pixels.data());
    byHand.push_back(CpuMilliseconds() - from);
    benchmark::DoNotOptimize(pixels.data());
  }
  targets::Note(goal, targets::Median(ours), targets::Median(byHand));
}

BENCHMARK_CAPTURE(Frame, plain, 1, {"Smooth lines of 32,768 points", "ms", 0, 0, 1.5, "by hand"})
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(50);
BENCHMARK_CAPTURE(Frame, twice, 2,
                  {"Smooth lines of 32,768 points, scale 2", "ms", 0, 0, 1.5, "by hand"})
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(50);

}  // namespace

BENCHMARK_MAIN();
