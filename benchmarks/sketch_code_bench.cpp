// A full drawing of circles as G-code, beside a loop that only prints its numbers.
#include <benchmark/benchmark.h>

#include <string>

#include "cad/model/sketch.h"
#include "cad/panel/sketch_code.h"
#include "cpu_time.h"
#include "targets.h"
#include "text/codetext.h"

namespace {

constexpr int kRounds = 50;
constexpr int kNumbersOfCircle = 2 + 2 + 16 * 4 + 1 + 1;  // rapid, plunge, arcs, their F, retract

void BM_SketchCode(benchmark::State& state) {
  morva::ResetSketch();
  for (int i = 0; i < morva::kMaxItems; ++i) {
    morva::AppendSketchObject(
        {morva::kTypeCircle, 0, i * 0.537 - 25, i * -0.251 + 12, 0.5 + i * 0.01, 0, 0});
  }
  for (auto _ : state) {
    const double start = CpuMilliseconds();
    for (int i = 0; i < kRounds; ++i) {
      benchmark::DoNotOptimize(morva::SketchCode({-0.1, 10, 0.5}));
    }
    const double code = (CpuMilliseconds() - start) / kRounds;
    const double middle = CpuMilliseconds();
    for (int i = 0; i < kRounds * morva::kMaxItems * kNumbersOfCircle; ++i) {
      char16_t number[64];
      morva::FormatFixed(i % 977 * 0.0137 - 6, 3, number, 64);
      benchmark::DoNotOptimize(number);
    }
    const double numbers = (CpuMilliseconds() - middle) / kRounds;
    targets::Note({"G-code of 96 circles", "ms", 0, 1, 0, "its numbers alone"}, code, numbers);
  }
  state.counters["units"] = static_cast<double>(morva::SketchCode({-0.1, 10, 0.5}).size());
}
BENCHMARK(BM_SketchCode)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
